#include "generators/CText.h"

#include "canopen/Helper.h"
#include "generators/ObjectKey.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto hexMark = "|x"_L1;

QByteArray hexBytes(QStringView pairs)
{
    QByteArray bytes;
    bytes.reserve(pairs.size() / 2);
    for (qsizetype i = 0; i + 1 < pairs.size(); i += 2)
        bytes += char(pairs.sliced(i, 2).toUInt(nullptr, 16));
    return bytes;
}

void appendHexEscape(QString &text, uchar byte)
{
    text += u"\\x%1"_s.arg(byte, 2, 16, '0'_L1);
}

bool isHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

/** Whether a byte has to be written by its number; a tab may stand in a literal. */
bool needsNumber(char c)
{
    constexpr char deleteCharacter = 0x7F;
    return uchar(c) >= uchar(deleteCharacter) || (uchar(c) < uchar(' ') && c != '\t');
}

/** Writes the bytes of a plain text into a literal, one after the other. */
class LiteralWriter
{
public:
    explicit LiteralWriter(qsizetype size) { m_text.reserve(size + 2); }

    void add(char byte)
    {
        if (byte == '\n')
            m_text += "\\n"_L1;
        else if (byte == '\r')
            m_text += "\\r"_L1;
        else if (needsNumber(byte))
            appendHexEscape(m_text, uchar(byte));
        else
            addPlain(byte);
        m_afterNumber = needsNumber(byte) && byte != '\n' && byte != '\r';
        m_last = byte;
    }
    const QString &text() const { return m_text; }

private:
    void addPlain(char byte)
    {
        if (m_afterNumber && isHexDigit(byte))
            m_text += "\" \""_L1;
        if (byte == '"' || byte == '\\' || (byte == '?' && m_last == '?'))
            m_text += u'\\';
        m_text += QLatin1Char(byte);
    }

    QString m_text;
    char m_last = 0;
    bool m_afterNumber = false;
};

/** Marks that reorder the text around them on a screen; compilers warn of them. */
bool turnsDirection(QChar c)
{
    const char16_t code = c.unicode();
    return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

bool isCommentMark(QChar first, QChar second)
{
    return (first == u'*' && second == u'/') || (first == u'/' && second == u'*');
}

/** Whether a line end behind the text would be swallowed; compilers look past blanks for the backslash. */
bool continuesLine(QStringView text)
{
    while (text.endsWith(u' '))
        text.chop(1);
    constexpr auto trigraphOfBackslash = u"?\?/";
    return text.endsWith(u'\\') || text.endsWith(trigraphOfBackslash);
}

} // namespace

QByteArray CText::stringBytes(const QString &text)
{
    return text.startsWith(hexMark) ? hexBytes(QStringView(text).sliced(hexMark.size())) : text.toUtf8();
}

QString CText::literal(const QString &text)
{
    const QByteArray bytes = stringBytes(text);
    if (text.startsWith(hexMark)) {
        QString escapes;
        for (const char byte : bytes)
            appendHexEscape(escapes, uchar(byte));
        return u'"' + escapes + u'"';
    }
    LiteralWriter writer(bytes.size());
    for (const char byte : bytes)
        writer.add(byte);
    return u'"' + writer.text() + u'"';
}

QString CText::byteElement(quint8 byte)
{
    return u"0x%1"_s.arg(byte, 2, 16, '0'_L1);
}

QString CText::charElement(char byte)
{
    constexpr uchar firstNegative = 0x80;
    const QString number = byteElement(quint8(byte));
    return uchar(byte) < firstNegative ? number : QString(u"(char)"_s + number);
}

QString CText::comment(const QString &text)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (!result.isEmpty() && isCommentMark(result.back(), c))
            result += u' ';
        const bool isLineBreakOfTwo = c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n';
        if (c.unicode() >= u' ' && !turnsDirection(c))
            result += c;
        else if (c.unicode() < u' ' && !isLineBreakOfTwo)
            result += u' ';
    }
    if (continuesLine(result))
        result += u'.';
    return result;
}

QString CText::variableName(const QString &varname, quint32 key)
{
    return Helper::substituteVariables(varname, ObjectKey::index(key), ObjectKey::subIndex(key),
                                       ObjectKey::line(key));
}

bool CText::isExpression(const QString &name)
{
    return name.contains(u'(');
}

QString CText::address(const QString &name, Pointer kind)
{
    if (kind == Pointer::Variable && isExpression(name))
        return name;
    return u"&("_s + name + (kind == Pointer::FirstElement ? "[0])"_L1 : ")"_L1);
}

QString CText::pointer(const QString &name, Pointer kind)
{
    return u'\t' + address(name, kind);
}
