#pragma once

#include <QStringView>

#include <optional>

/**
 * Value of an integer calculation: + - * / with the usual ranks, signs, parentheses, decimal numbers and
 * hexadecimal ones behind "0x"; blanks do not matter. A quotient is cut towards zero.
 *
 * Empty for a syntax error, a division by zero, a step that leaves 64 bits, and for parentheses that are
 * nested deeper than maxExpressionDepth.
 */
std::optional<qint64> evaluateExpression(QStringView text);

inline constexpr int maxExpressionDepth = 100;
