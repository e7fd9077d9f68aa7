#pragma once

#include "generators/CText.h"
#include "generators/CValues.h"

/**
 * How a table takes the address of a number of the application. C has no numbers of more than 32 bits, nor of
 * 24, so that such a variable is a structure: a name that looks like an expression is one of the structure,
 * not of its address.
 */
constexpr CText::Pointer pointerKind(CValues::Table table)
{
    switch (table) {
    case CValues::Table::U24:
    case CValues::Table::U40:
    case CValues::Table::U48:
    case CValues::Table::U64:
        return CText::Pointer::Address;
    default:
        return CText::Pointer::Variable;
    }
}
