#include "canopen/LegacyText.h"

#include <QStringDecoder>

#include <algorithm>

namespace LegacyText {

namespace {

/** 0x80 to 0x9F of Windows-1252; the five codes without meaning keep their number, as browsers do. */
constexpr char16_t windows1252[] =
    u"\u20AC\x81\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\x8D\u017D\x8F"
    u"\x90\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\x9D\u017E\u0178";

/** 0x80 to 0xFF of code page 850. */
constexpr char16_t codePage850[] =
    u"\u00C7\u00FC\u00E9\u00E2\u00E4\u00E0\u00E5\u00E7\u00EA\u00EB\u00E8\u00EF\u00EE\u00EC\u00C4\u00C5"
    u"\u00C9\u00E6\u00C6\u00F4\u00F6\u00F2\u00FB\u00F9\u00FF\u00D6\u00DC\u00F8\u00A3\u00D8\u00D7\u0192"
    u"\u00E1\u00ED\u00F3\u00FA\u00F1\u00D1\u00AA\u00BA\u00BF\u00AE\u00AC\u00BD\u00BC\u00A1\u00AB\u00BB"
    u"\u2591\u2592\u2593\u2502\u2524\u00C1\u00C2\u00C0\u00A9\u2563\u2551\u2557\u255D\u00A2\u00A5\u2510"
    u"\u2514\u2534\u252C\u251C\u2500\u253C\u00E3\u00C3\u255A\u2554\u2569\u2566\u2560\u2550\u256C\u00A4"
    u"\u00F0\u00D0\u00CA\u00CB\u00C8\u0131\u00CD\u00CE\u00CF\u2518\u250C\u2588\u2584\u00A6\u00CC\u2580"
    u"\u00D3\u00DF\u00D4\u00D2\u00F5\u00D5\u00B5\u00FE\u00DE\u00DA\u00DB\u00D9\u00FD\u00DD\u00AF\u00B4"
    u"\u00AD\u00B1\u2017\u00BE\u00B6\u00A7\u00F7\u00B8\u00B0\u00A8\u00B7\u00B9\u00B3\u00B2\u25A0\u00A0";

static_assert(std::size(windows1252) == 32 + 1);
static_assert(std::size(codePage850) == 128 + 1);

bool isAsciiLetter(uchar byte)
{
    return (byte | 0x20) >= 'a' && (byte | 0x20) <= 'z';
}

/** The accented letters of Western languages stand at 0x80 to 0x9A there, and at 0xC0 to 0xFF in Windows. */
bool looksLikeCodePage850(const QByteArray &bytes)
{
    bool found = false;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const auto byte = uchar(bytes[i]);
        if (byte < 0x80)
            continue;
        const bool besideLetter = (i > 0 && isAsciiLetter(uchar(bytes[i - 1])))
            || (i + 1 < bytes.size() && isAsciiLetter(uchar(bytes[i + 1])));
        if (!besideLetter)
            continue;
        if (byte <= 0x9A && byte != 0x80)
            found = true;
        else if (byte >= 0xC0 && byte != 0xE1) // 0xE1 is a sharp s in code page 850
            return false;
    }
    return found;
}

QString decodeBytes(const QByteArray &bytes, bool dos)
{
    QString text(bytes.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const auto byte = uchar(bytes[i]);
        char16_t character = byte;
        if (dos && byte >= 0x80)
            character = codePage850[byte - 0x80];
        else if (byte >= 0x80 && byte < 0xA0)
            character = windows1252[byte - 0x80];
        text[i] = QChar(character);
    }
    return text;
}

bool isAscii(const QByteArray &bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return uchar(byte) < 0x80; });
}

} // namespace

Decoded decode(const QByteArray &bytes)
{
    if (isAscii(bytes))
        return {QString::fromLatin1(bytes), Encoding::Ascii};
    if (bytes.startsWith("\xFE\xFF") || bytes.startsWith("\xFF\xFE")) {
        QStringDecoder utf16(QStringDecoder::Utf16);
        return {utf16.decode(bytes), Encoding::Utf16};
    }
    QStringDecoder utf8(QStringDecoder::Utf8,
                        QStringConverter::Flag::Stateless); // a cut sequence is an error
    const QString text = utf8.decode(bytes);
    if (!utf8.hasError())
        return {text, Encoding::Utf8};
    const bool dos = looksLikeCodePage850(bytes);
    return {decodeBytes(bytes, dos), dos ? Encoding::CodePage850 : Encoding::Windows1252};
}

QString encodingName(Encoding encoding)
{
    switch (encoding) {
    case Encoding::Ascii:
        return QStringLiteral("ASCII");
    case Encoding::Utf8:
        return QStringLiteral("UTF-8");
    case Encoding::Utf16:
        return QStringLiteral("UTF-16");
    case Encoding::Windows1252:
        return QStringLiteral("Windows-1252");
    case Encoding::CodePage850:
        return QStringLiteral("code page 850");
    }
    return {};
}

} // namespace LegacyText
