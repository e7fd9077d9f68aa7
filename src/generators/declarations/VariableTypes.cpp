#include "generators/declarations/VariableTypes.h"

#include "canopen/DataTypeTable.h"
#include "generators/CValues.h"

#include <bit>

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView character = u"char";
constexpr QStringView byte = u"UNSIGNED8";

/** The width of the native C type that holds so many bits, at most 32 of them. */
int nativeWidth(uint bits)
{
    constexpr uint smallest = 8;
    return int(std::bit_ceil(qMax(bits, smallest)));
}

} // namespace

QString VariableTypes::ofObject(int dataType)
{
    switch (const CValues::Table table = CValues::table(dataType)) {
    case CValues::Table::VisString:
    case CValues::Table::Utf8String:
        return character.toString();
    case CValues::Table::OctetString:
        return byte.toString();
    default:
        return CValues::form(table).type.toString();
    }
}

QString VariableTypes::ofSignal(int dataType)
{
    constexpr int largestNative = 32; // bits; the stack has types of its own for more
    if (isArray(dataType)) {
        const bool isText = dataType != CAN::OctetString && dataType != CAN::Domain;
        return (isText ? character : byte).toString();
    }
    if (dataType == CAN::Boolean)
        return u"BOOL_T"_s;
    if (dataType == CAN::TimeOfDay || dataType == CAN::TimeDifference)
        return u"UNSIGNED48"_s;
    const DataTypeRow *row = dataTypeRow(quint16(dataType));
    if (!row || row->bits == 0)
        return {};
    if (row->bits > largestNative || row->range == DataTypeRange::None)
        return QString::fromLatin1(row->name);
    const bool isSigned = row->range == DataTypeRange::Signed;
    return (isSigned ? u"INTEGER%1"_s : u"UNSIGNED%1"_s).arg(nativeWidth(row->bits));
}

bool VariableTypes::isArray(int dataType)
{
    switch (dataType) {
    case CAN::VisibleString:
    case CAN::OctetString:
    case CAN::Domain:
    case CAN::VisStringNull:
    case CAN::VisStringAsteriks:
    case CAN::Utf8String:
        return true;
    default:
        return false;
    }
}
