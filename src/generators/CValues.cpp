#include "generators/CValues.h"

#include "canopen/CANTypes.h"

#include <algorithm>
#include <bit>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

using CValues::Bits;
using CValues::Notation;
using CValues::Table;
using CValues::TableForm;

/** Type codes from `first` to `last` share a table. */
struct TypeGroup
{
    int first;
    int last;
    Table table;
};

constexpr std::array<TypeGroup, 19> typeGroups{{
    {CAN::Boolean, CAN::Boolean, Table::U8},
    {CAN::Integer8, CAN::Integer8, Table::I8},
    {CAN::Integer16, CAN::Integer16, Table::I16},
    {CAN::Integer32, CAN::Integer32, Table::I32},
    {CAN::Unsigned8, CAN::Unsigned8, Table::U8},
    {CAN::Unsigned16, CAN::Unsigned16, Table::U16},
    {CAN::Unsigned32, CAN::Unsigned32, Table::U32},
    {CAN::Real32, CAN::Real32, Table::R32},
    {CAN::VisibleString, CAN::VisibleString, Table::VisString},
    {CAN::OctetString, CAN::OctetString, Table::OctetString},
    {CAN::TimeOfDay, CAN::TimeOfDay, Table::U48},
    {CAN::Domain, CAN::Domain, Table::Domain},
    {CAN::Integer24, CAN::Integer24, Table::I24},
    {CAN::Unsigned24, CAN::Unsigned24, Table::U24},
    {CAN::Unsigned40, CAN::Unsigned40, Table::U40},
    {CAN::Unsigned48, CAN::Unsigned48, Table::U48},
    {CAN::Unsigned64, CAN::Unsigned64, Table::U64},
    {CAN::Unsigned2, CAN::Unsigned7, Table::U8},
    {CAN::Utf8String, CAN::Utf8String, Table::Utf8String},
}};

constexpr bool formsStandAtTheirTables()
{
    for (std::size_t i = 0; i < CValues::tableForms.size(); ++i)
        if (std::size_t(CValues::tableForms[i].table) != i)
            return false;
    return true;
}
static_assert(formsStandAtTheirTables());

constexpr int byTheirPrefix = 0; // the base for "0x", leading zeros and decimal numbers

QString withoutNodeId(const QString &text)
{
    constexpr auto nodeId = "$nodeid+"_L1;
    return text.contains(nodeId, Qt::CaseInsensitive) ? QString(text).remove(nodeId, Qt::CaseInsensitive)
                                                      : text;
}

// An infinity or "nan" has no literal in C, so it counts as a text that is no number. A negative zero is
// written without its sign and would otherwise be a second row with the same text.
Bits realBits(const QString &text)
{
    bool ok = false;
    const float value = text.toFloat(&ok);
    const bool isUsable = ok && std::isfinite(value) && value != 0.0F;
    return std::bit_cast<quint32>(isUsable ? value : 0.0F);
}

Bits number(Notation notation, const QString &text, int signedBase)
{
    switch (notation) {
    case Notation::None:
        return 0;
    case Notation::Unsigned:
        return text.toUInt(nullptr, byTheirPrefix);
    case Notation::Wide:
        return text.toULongLong(nullptr, byTheirPrefix);
    case Notation::Signed:
        return Bits(qint64(text.toInt(nullptr, signedBase)));
    case Notation::Real:
        return realBits(text);
    }
    return 0;
}

QString digits(Notation notation, Bits value, CValues::RealPrecision precision)
{
    if (notation == Notation::Real)
        return QString::number(double(std::bit_cast<float>(quint32(value))), 'e', int(precision));
    return notation == Notation::Signed ? QString::number(qint64(value)) : QString::number(value);
}

/** The macro with its bytes, the most significant first: "U24_SET(0x01,0x02,0x03)". */
QString macro(const TableForm &form, Bits value)
{
    QString result = form.name.toString().toUpper();
    result += "_SET("_L1;
    for (int byte = form.macroBytes - 1; byte >= 0; --byte) {
        result += u"0x%1"_s.arg(quint8(value >> (8 * byte)), 2, 16, '0'_L1);
        result += byte > 0 ? u',' : u')';
    }
    return result;
}

} // namespace

CValues::Table CValues::table(int typeCode)
{
    const auto found = std::find_if(typeGroups.begin(), typeGroups.end(), [typeCode](const TypeGroup &group) {
        return group.first <= typeCode && typeCode <= group.last;
    });
    return found == typeGroups.end() ? Table::None : found->table;
}

int CValues::describedType(int typeCode)
{
    return typeCode == CAN::TimeOfDay ? int(CAN::Unsigned48) : typeCode;
}

CValues::Bits CValues::defaultValue(int typeCode, const QString &text)
{
    return number(form(table(typeCode)).notation, withoutNodeId(text), byTheirPrefix);
}

CValues::Bits CValues::limitValue(int typeCode, const QString &text)
{
    return number(form(table(typeCode)).notation, text, 10);
}

QString CValues::entry(Table table, Bits value, RealPrecision precision)
{
    const TableForm &row = form(table);
    if (row.macroBytes > 0)
        return u'\t' + macro(row, value);
    if (row.notation == Notation::None)
        return {};
    return u"\t("_s + row.type + u')' + digits(row.notation, value, precision) + row.suffix;
}

QString CValues::extendedValue(int typeCode, quint64 value)
{
    const TableForm &row = form(table(typeCode));
    return row.macroBytes > 0 ? macro(row, value) : u"0"_s;
}
