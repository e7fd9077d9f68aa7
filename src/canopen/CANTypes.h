#pragma once

#include <QtGlobal>

namespace CAN {

/**
 * Number of a variable's data type, as the project file stores it.
 *
 * Up to 27 these are the static data types of CiA 301 (14 and 23 are reserved there). 50 to 53 are bit
 * types of ETG.1020, numbers from 100 are widths and texts that J1939, NMEA 2000 and raw CAN signals need.
 * Any other number may stand in a project or in a device description; it is carried, but has no name.
 */
enum CANopenDataType : quint16 {
    NoDataType = 0,
    Boolean = 1,
    Integer8 = 2,
    Integer16 = 3,
    Integer32 = 4,
    Unsigned8 = 5,
    Unsigned16 = 6,
    Unsigned32 = 7,
    Real32 = 8,
    VisibleString = 9,
    OctetString = 10,
    UnicodeString = 11,
    TimeOfDay = 12,
    TimeDifference = 13,
    Domain = 15,
    Integer24 = 16,
    Real64 = 17,
    Integer40 = 18,
    Integer48 = 19,
    Integer56 = 20,
    Integer64 = 21,
    Unsigned24 = 22,
    Unsigned40 = 24,
    Unsigned48 = 25,
    Unsigned56 = 26,
    Unsigned64 = 27,
    Bit3 = 50,
    Bit4 = 51,
    Bit5 = 52,
    Bit6 = 53,
    Unsigned2 = 100,
    Unsigned3 = 101,
    Unsigned4 = 102,
    Unsigned5 = 103,
    Unsigned6 = 104,
    Unsigned7 = 105,
    Unsigned9 = 106,
    Unsigned10 = 107,
    Unsigned11 = 108,
    Unsigned12 = 109,
    Unsigned13 = 110,
    Unsigned14 = 111,
    Unsigned15 = 112,
    Unsigned19 = 117,
    Unsigned18 = 118,
    Unsigned21 = 119,
    VisStringNull = 120, ///< text that ends with a zero byte
    VisStringAsteriks = 121, ///< text that ends with "*" (SAE J1939-71 variable length)
    Utf8String = 124,
    Unsigned29 = 129,
};

} // namespace CAN
