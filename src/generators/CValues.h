#pragma once

#include <QString>
#include <QStringView>

#include <array>

/**
 * The numbers of generated C tables: which typed table a data type belongs to, how the texts of the
 * project become numbers, and how numbers are written. Nothing here depends on the user's locale.
 */
namespace CValues {

/** The typed value tables of the stack. */
enum class Table : quint8 {
    None, ///< values of this type stand in no table
    U8,
    U16,
    U24,
    U32,
    U40,
    U48,
    U64,
    I8,
    I16,
    I24,
    I32,
    R32,
    VisString,
    Utf8String,
    OctetString,
    Domain,
};

/** How a text becomes a number of a table and the number a text. */
enum class Notation : quint8 {
    None, ///< no numbers
    Unsigned, ///< at most 32 bits
    Wide, ///< unsigned, more than 32 bits
    Signed,
    Real,
};

/** All that is fixed for one table. */
struct TableForm
{
    Table table;
    QStringView name; ///< "u8", as in od_u8, od_const_u8 and od_ptr_u8
    QStringView type; ///< the stack's C type of a number
    QStringView suffix; ///< behind a number of this type
    Notation notation;
    quint8 macroBytes = 0; ///< arguments of the macro that stands for a literal; 0 where C has literals
};

inline constexpr std::array<TableForm, 17> tableForms{{
    {Table::None, u"", u"", u"", Notation::None},
    {Table::U8, u"u8", u"UNSIGNED8", u"u", Notation::Unsigned},
    {Table::U16, u"u16", u"UNSIGNED16", u"u", Notation::Unsigned},
    {Table::U24, u"u24", u"UNSIGNED24", u"", Notation::Unsigned, 3},
    {Table::U32, u"u32", u"UNSIGNED32", u"UL", Notation::Unsigned},
    {Table::U40, u"u40", u"UNSIGNED40", u"", Notation::Wide, 5},
    {Table::U48, u"u48", u"UNSIGNED48", u"", Notation::Wide, 6},
    {Table::U64, u"u64", u"UNSIGNED64", u"", Notation::Wide, 8},
    {Table::I8, u"i8", u"INTEGER8", u"", Notation::Signed},
    {Table::I16, u"i16", u"INTEGER16", u"", Notation::Signed},
    {Table::I24, u"i24", u"INTEGER24", u"", Notation::Signed, 3},
    {Table::I32, u"i32", u"INTEGER32", u"L", Notation::Signed},
    {Table::R32, u"r32", u"REAL32", u"f", Notation::Real},
    {Table::VisString, u"vis_string", u"", u"", Notation::None},
    {Table::Utf8String, u"utf8_string", u"", u"", Notation::None},
    {Table::OctetString, u"octet_string", u"", u"", Notation::None},
    {Table::Domain, u"domain", u"", u"", Notation::None},
}};

constexpr const TableForm &form(Table table)
{
    return tableForms[std::size_t(table)];
}

/** The table of a data type; None for a number that the stack has no table for. */
Table table(int typeCode);
/** The type that a description row names: TIME_OF_DAY is kept as UNSIGNED48. */
int describedType(int typeCode);

/**
 * A number of a table as 64 bits: a signed one in two's complement, a REAL32 as the bits of the float.
 * Two values of one table are the same exactly when their bits are.
 */
using Bits = quint64;

/**
 * The number of a default value text, without the "$nodeid+" that the stack adds at run time. "0x" and a
 * leading zero (octal) count; 0 for a text that is no number of the type's width class and for a type
 * without numbers.
 */
Bits defaultValue(int typeCode, const QString &text);
/** As defaultValue, but limits hold no "$nodeid+", and those of signed types are decimal. */
Bits limitValue(int typeCode, const QString &text);

/** Digits behind the point of a REAL32 in scientific notation. */
enum class RealPrecision : quint8 {
    Variables = 7,
    Constants = 8,
};

/**
 * One value of a table without what follows it in its row: a tab, the cast, the value and its suffix, or a
 * tab and the macro. Empty for a table without numbers.
 */
QString entry(Table table, Bits value, RealPrecision precision);

/** AbstractGenerator::formatExtendedValue. */
QString extendedValue(int typeCode, quint64 value);

} // namespace CValues
