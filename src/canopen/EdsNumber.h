#pragma once

#include <QStringView>

#include <optional>

/**
 * A number of an EDS or DCF file (CiA 306): decimal, "0x" and hexadecimal digits, or octal behind a leading
 * zero. "08" and "09", which cannot be octal, count as decimal. Empty for any other text.
 */
std::optional<quint64> edsNumber(QStringView text);
