#pragma once

#include <QtGlobal>

/** The objects of CiA 301 that every CANopen line starts with. A line without CANopen has no use for them. */
namespace CANopenBasics {

inline constexpr quint16 deviceType = 0x1000;
/** Device type, error register, heartbeat, identity and SDO server. */
inline constexpr quint16 objects[]{deviceType, 0x1001, 0x1017, 0x1018, 0x1200};

} // namespace CANopenBasics
