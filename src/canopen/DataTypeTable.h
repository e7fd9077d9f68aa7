#pragma once

#include "canopen/CANTypes.h"

#include <array>

/** Whether the values of a type have a natural range, and of which kind. */
enum class DataTypeRange : quint8 {
    None,
    Unsigned,
    Signed,
};

/** Everything that is known of one data type. */
struct DataTypeRow
{
    quint16 number;
    const char *name;
    const char *shortName;
    quint8 bits; ///< 0 where the size belongs to the value
    DataTypeRange range;
};

/** All data types that have a name, by ascending number. */
inline constexpr std::array<DataTypeRow, 49> dataTypeTable{{
    {CAN::Boolean, "BOOLEAN", "B", 1, DataTypeRange::Unsigned},
    {CAN::Integer8, "INTEGER8", "I8", 8, DataTypeRange::Signed},
    {CAN::Integer16, "INTEGER16", "I16", 16, DataTypeRange::Signed},
    {CAN::Integer32, "INTEGER32", "I32", 32, DataTypeRange::Signed},
    {CAN::Unsigned8, "UNSIGNED8", "U8", 8, DataTypeRange::Unsigned},
    {CAN::Unsigned16, "UNSIGNED16", "U16", 16, DataTypeRange::Unsigned},
    {CAN::Unsigned32, "UNSIGNED32", "U32", 32, DataTypeRange::Unsigned},
    {CAN::Real32, "REAL32", "R32", 32, DataTypeRange::None},
    {CAN::VisibleString, "VISIBLE_STRING", "VS", 0, DataTypeRange::None},
    {CAN::OctetString, "OCTET_STRING", "OS", 0, DataTypeRange::None},
    {CAN::UnicodeString, "UNICODE_STRING", "US", 0, DataTypeRange::None},
    {CAN::TimeOfDay, "TIME_OF_DAY", "TOD", 48, DataTypeRange::None},
    {CAN::TimeDifference, "TIME_DIFFERENCE", "TD", 48, DataTypeRange::None},
    {CAN::Domain, "DOMAIN", "DOMAIN", 0, DataTypeRange::None},
    {CAN::Integer24, "INTEGER24", "I24", 24, DataTypeRange::Signed},
    {CAN::Real64, "REAL64", "R64", 64, DataTypeRange::None},
    {CAN::Integer40, "INTEGER40", "I40", 40, DataTypeRange::Signed},
    {CAN::Integer48, "INTEGER48", "I48", 48, DataTypeRange::Signed},
    {CAN::Integer56, "INTEGER56", "I56", 56, DataTypeRange::Signed},
    {CAN::Integer64, "INTEGER64", "I64", 64, DataTypeRange::Signed},
    {CAN::Unsigned24, "UNSIGNED24", "U24", 24, DataTypeRange::Unsigned},
    {CAN::Unsigned40, "UNSIGNED40", "U40", 40, DataTypeRange::Unsigned},
    {CAN::Unsigned48, "UNSIGNED48", "U48", 48, DataTypeRange::Unsigned},
    {CAN::Unsigned56, "UNSIGNED56", "U56", 56, DataTypeRange::Unsigned},
    {CAN::Unsigned64, "UNSIGNED64", "U64", 64, DataTypeRange::Unsigned},
    {CAN::Bit3, "BIT3", "BIT3", 3, DataTypeRange::Unsigned},
    {CAN::Bit4, "BIT4", "BIT4", 4, DataTypeRange::Unsigned},
    {CAN::Bit5, "BIT5", "BIT5", 5, DataTypeRange::Unsigned},
    {CAN::Bit6, "BIT6", "BIT6", 6, DataTypeRange::Unsigned},
    {CAN::Unsigned2, "UNSIGNED2", "U2", 2, DataTypeRange::Unsigned},
    {CAN::Unsigned3, "UNSIGNED3", "U3", 3, DataTypeRange::Unsigned},
    {CAN::Unsigned4, "UNSIGNED4", "U4", 4, DataTypeRange::Unsigned},
    {CAN::Unsigned5, "UNSIGNED5", "U5", 5, DataTypeRange::Unsigned},
    {CAN::Unsigned6, "UNSIGNED6", "U6", 6, DataTypeRange::Unsigned},
    {CAN::Unsigned7, "UNSIGNED7", "U7", 7, DataTypeRange::Unsigned},
    {CAN::Unsigned9, "UNSIGNED9", "U9", 9, DataTypeRange::Unsigned},
    {CAN::Unsigned10, "UNSIGNED10", "U10", 10, DataTypeRange::Unsigned},
    {CAN::Unsigned11, "UNSIGNED11", "U11", 11, DataTypeRange::Unsigned},
    {CAN::Unsigned12, "UNSIGNED12", "U12", 12, DataTypeRange::Unsigned},
    {CAN::Unsigned13, "UNSIGNED13", "U13", 13, DataTypeRange::Unsigned},
    {CAN::Unsigned14, "UNSIGNED14", "U14", 14, DataTypeRange::Unsigned},
    {CAN::Unsigned15, "UNSIGNED15", "U15", 15, DataTypeRange::Unsigned},
    {CAN::Unsigned19, "UNSIGNED19", "U19", 19, DataTypeRange::Unsigned},
    {CAN::Unsigned18, "UNSIGNED18", "U18", 18, DataTypeRange::Unsigned},
    {CAN::Unsigned21, "UNSIGNED21", "U21", 21, DataTypeRange::Unsigned},
    {CAN::VisStringNull, "VIS_STRING_NULL", "STRING_NULL", 0, DataTypeRange::None},
    {CAN::VisStringAsteriks, "VIS_STRING_ASTERIKS", "STRING_ASTERIKS", 0, DataTypeRange::None},
    {CAN::Utf8String, "UTF8_STRING", "UTF8", 0, DataTypeRange::None},
    {CAN::Unsigned29, "UNSIGNED29", "U29", 29, DataTypeRange::Unsigned},
}};

/** The row of a type, or nullptr for a number without name. */
constexpr const DataTypeRow *dataTypeRow(quint16 number)
{
    for (const DataTypeRow &row : dataTypeTable)
        if (row.number == number)
            return &row;
    return nullptr;
}
