#include "generators/descriptions/EdsText.h"

#include "canopen/CANTypes.h"
#include "canopen/EdsValue.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/** CiA 306 allows lines of 255 characters; a word may begin before this one. */
constexpr qsizetype usualCommentLength = 250;

constexpr auto byteStringMark = "|x"_L1;

/** Readers of text files part lines at more than CR and LF, and old ones end a file at a character. */
bool isUnsafe(QChar c)
{
    return (c.category() == QChar::Other_Control && c != u'\t') || c == QChar::LineSeparator
        || c == QChar::ParagraphSeparator;
}

QString withPlainLineEnds(QString text)
{
    text.replace("\r\n"_L1, "\n"_L1);
    std::ranges::replace_if(
        text,
        [](QChar c) { return c == u'\r' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator; },
        QChar(u'\n'));
    return text;
}

QString quotedWhereNeeded(const QString &text, int dataType)
{
    const bool hasQuotes = text.size() >= 2 && text.startsWith(u'"') && text.endsWith(u'"');
    const bool hasBlanks = !text.isEmpty() && (text.front().isSpace() || text.back().isSpace());
    if (!hasQuotes && !hasBlanks)
        return text;
    const QString quoted = u'"' + text + u'"';
    return normalizedEdsValue(quoted, quint16(dataType)).text == text ? quoted : text;
}

bool isString(int dataType)
{
    return dataType == CAN::VisibleString || dataType == CAN::OctetString;
}

} // namespace

QString EdsText::line(const QString &text)
{
    if (std::ranges::none_of(text, isUnsafe))
        return text;
    QString result = withPlainLineEnds(text);
    std::ranges::replace_if(result, isUnsafe, QChar(u' '));
    return result;
}

QStringList EdsText::lines(const QString &text)
{
    if (text.isEmpty())
        return {};
    QStringList result = withPlainLineEnds(text).split(u'\n');
    for (QString &each : result)
        each = line(each);
    return result;
}

QString EdsText::name(const QString &text)
{
    return quotedWhereNeeded(line(text), CAN::VisibleString);
}

QString EdsText::value(const QString &text, int dataType)
{
    if (isString(dataType) && text.startsWith(byteStringMark))
        return line(text);
    if (isString(dataType) && std::ranges::any_of(text, isUnsafe))
        return byteStringMark + QString::fromLatin1(text.toUtf8().toHex());
    return quotedWhereNeeded(line(text), dataType);
}

QStringList EdsText::comments(const QString &text)
{
    QStringList result;
    const QStringList all = lines(text);
    for (const QString &whole : all) {
        QStringView rest = whole;
        qsizetype blank = rest.indexOf(u' ', usualCommentLength);
        for (; blank >= 0; blank = rest.indexOf(u' ', usualCommentLength)) {
            result.append(u';' + rest.first(blank));
            rest = rest.sliced(blank + 1);
        }
        result.append(u';' + rest);
    }
    return result;
}

QString EdsText::section(const QString &text)
{
    return lines(text).join(u'\n');
}
