#pragma once

#include <QString>

#include <limits>
#include <optional>

/** A number with the prefix of its base ("0x2000", "8192"); nothing where it is none or does not fit. */
template <typename Number>
std::optional<Number> csvNumber(const QString &text)
{
    constexpr int baseByPrefix = 0;
    bool isNumber = false;
    const uint number = text.trimmed().toUInt(&isNumber, baseByPrefix);
    if (!isNumber || number > uint(std::numeric_limits<Number>::max()))
        return {};
    return Number(number);
}
