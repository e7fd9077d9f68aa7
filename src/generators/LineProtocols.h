#pragma once

/** What the stored type of a CAN line ("line<n>type") says about the protocols on it. */
namespace LineProtocols {

inline constexpr int CANopen = 1;
inline constexpr int J1939 = 2;
inline constexpr int RawCan = 4;
inline constexpr int CANopenAndJ1939 = 5;
inline constexpr int CANopenAndRawCan = 6;
inline constexpr int J1939AndRawCan = 7;

constexpr bool hasCANopen(int type)
{
    return type == CANopen || type == CANopenAndJ1939 || type == CANopenAndRawCan;
}

constexpr bool hasJ1939(int type)
{
    return type == J1939 || type == CANopenAndJ1939 || type == J1939AndRawCan;
}

constexpr bool hasRawCan(int type)
{
    return type == RawCan || type == CANopenAndRawCan || type == J1939AndRawCan;
}

constexpr bool isKnown(int type)
{
    return hasCANopen(type) || hasJ1939(type) || hasRawCan(type);
}

constexpr bool isMixed(int type)
{
    return type == CANopenAndJ1939 || type == CANopenAndRawCan || type == J1939AndRawCan;
}

} // namespace LineProtocols
