#pragma once

#include <QString>

#include <array>
#include <utility>

/** Error kinds that a CAN (ISO 11898-1) controller reports, number to text. */
inline constexpr std::array<std::pair<quint8, const char *>, 8> canErrorMap{{
    {1, "Stuff error"},
    {2, "Form error"},
    {3, "Acknowledgment error"},
    {4, "Bit error"},
    {5, "Fast data bit error"},
    {6, "CRC error"},
    {7, "Data length error"},
    {8, "unspecified error"},
}};

/** Text of an error number; empty for a number without meaning. */
inline QString canErrorText(quint8 number)
{
    for (const auto &[known, text] : canErrorMap)
        if (known == number)
            return QString::fromLatin1(text);
    return {};
}
