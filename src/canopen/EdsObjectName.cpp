#include "canopen/EdsObjectName.h"

#include <QString>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype indexDigits = 4;
constexpr qsizetype mostSubIndexDigits = 3;
constexpr auto prefix = "0x"_L1;
constexpr auto subIndexWord = "sub"_L1;
constexpr QLatin1StringView listWords[] = {"Name"_L1, "Value"_L1, "Denotation"_L1};

bool isHexDigit(QChar c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

/** Takes hexadecimal digits from the front of a text; empty where there are too few. */
std::optional<uint> takeHex(QStringView &text, qsizetype fewest, qsizetype most)
{
    if (text.startsWith(prefix, Qt::CaseInsensitive))
        text = text.sliced(prefix.size());
    qsizetype digits = 0;
    while (digits < text.size() && digits < most && isHexDigit(text[digits]))
        ++digits;
    if (digits < fewest)
        return {};
    const uint number = text.first(digits).toUInt(nullptr, 16);
    text = text.sliced(digits);
    return number;
}

} // namespace

std::optional<EdsObjectName> edsObjectName(QStringView section)
{
    const auto index = takeHex(section, indexDigits, indexDigits);
    if (!index)
        return {};
    EdsObjectName name{quint16(*index), {}};
    if (section.isEmpty())
        return name;
    if (!section.startsWith(subIndexWord, Qt::CaseInsensitive))
        return {};
    section = section.sliced(subIndexWord.size());
    name.subIndex = takeHex(section, 1, mostSubIndexDigits);
    return name.subIndex && section.isEmpty() ? std::optional(name) : std::nullopt;
}

std::optional<quint16> edsListOwner(QStringView section)
{
    const auto index = takeHex(section, indexDigits, indexDigits);
    const bool isList = std::ranges::any_of(listWords, [section](QLatin1StringView word) {
        return section.compare(word, Qt::CaseInsensitive) == 0;
    });
    return index && isList ? std::optional(quint16(*index)) : std::nullopt;
}
