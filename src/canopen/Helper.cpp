#include "canopen/Helper.h"

#include "canopen/Expression.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

struct Place
{
    quint16 index;
    quint8 subindex;
    quint8 line;
};

/** The value behind "$" and a letter; a null text for letters that are no variable. */
QString variableValue(QChar letter, const Place &place)
{
    switch (letter.unicode()) {
    case u'i':
        return QString::number(place.index);
    case u'I':
        return QString::number(place.index, 16);
    case u's':
        return QString::number(place.subindex);
    case u'S':
        return QString::number(place.subindex, 16);
    case u'z':
        return QString::number(int(place.subindex) - 1);
    case u'l':
    case u'L':
        return QString::number(place.line);
    default:
        return {};
    }
}

QString replaceVariables(const QString &text, const Place &place)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QString value =
            text[i] == u'$' && i + 1 < text.size() ? variableValue(text[i + 1], place) : QString();
        if (value.isNull()) {
            result += text[i];
        } else {
            result += value;
            ++i;
        }
    }
    return result;
}

QString replaceCalculations(const QString &text)
{
    QString result;
    qsizetype copied = 0;
    qsizetype open = -1;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'{') {
            open = i;
        } else if (text[i] == u'}' && open >= 0) {
            if (const auto value = evaluateExpression(QStringView(text).sliced(open + 1, i - open - 1))) {
                result += QStringView(text).sliced(copied, open - copied);
                result += QString::number(*value);
                copied = i + 1;
            }
            open = -1;
        }
    }
    return result + QStringView(text).sliced(copied);
}

bool isNumber(QStringView text)
{
    const bool hexadecimal = text.startsWith(u"0x", Qt::CaseInsensitive);
    const QStringView digits = hexadecimal ? text.sliced(2) : text;
    return !digits.isEmpty() && std::all_of(digits.begin(), digits.end(), [hexadecimal](QChar c) {
        return (c >= u'0' && c <= u'9')
            || (hexadecimal && ((c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F')));
    });
}

/** Blanks and the braces of an initialiser. */
bool isFrame(QChar c)
{
    return c.isSpace() || c == u'{' || c == u'}';
}

QByteArray withLineEnding(const QByteArray &content, const QByteArray &ending)
{
    QByteArray result;
    result.reserve(content.size());
    for (qsizetype i = 0; i < content.size(); ++i) {
        const char byte = content[i];
        if (byte == '\r' && i + 1 < content.size() && content[i + 1] == '\n')
            ++i;
        if (byte == '\r' || byte == '\n')
            result += ending;
        else
            result += byte;
    }
    return result;
}

} // namespace

QString Helper::substituteVariables(const QString &text, quint16 index, quint8 subindex, quint8 line)
{
    if (!text.contains(u'$') && !text.contains(u'{'))
        return text;
    return replaceCalculations(replaceVariables(text, {index, subindex, line}));
}

QString Helper::addLowerCaseUtoNumberLists(const QString &list)
{
    QString result;
    const QList<QStringView> elements = QStringView(list).split(u',');
    for (qsizetype i = 0; i < elements.size(); ++i) {
        QStringView element = elements[i];
        qsizetype first = 0;
        qsizetype behind = element.size();
        while (first < behind && isFrame(element[first]))
            ++first;
        while (behind > first && isFrame(element[behind - 1]))
            --behind;
        if (i > 0)
            result += u',';
        result += element.first(behind);
        if (isNumber(element.sliced(first, behind - first)))
            result += u'u';
        result += element.sliced(behind);
    }
    return result;
}

QString Helper::UTF8String2ArrayString(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    QString result;
    result.reserve(bytes.size() * 5);
    for (const char byte : bytes) {
        if (!result.isEmpty())
            result += u',';
        result += u"0x%1"_s.arg(uchar(byte), 2, 16, '0'_L1);
    }
    return result;
}

QByteArray Helper::UTF8String2ByteArray(const QString &text)
{
    return text.toUtf8();
}

bool Helper::modifyLineEnding(const QString &file, const QString &ending)
{
    if (!QFileInfo(file).isFile())
        return false;
    if (ending.isEmpty())
        return true;
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly))
        return false;
    const QByteArray content = source.readAll();
    const bool complete = source.error() == QFileDevice::NoError;
    source.close();
    if (!complete)
        return false;
    const QByteArray changed = withLineEnding(content, ending.toUtf8());
    if (changed == content)
        return true;
    QSaveFile target(file);
    return target.open(QIODevice::WriteOnly) && target.write(changed) == changed.size() && target.commit();
}
