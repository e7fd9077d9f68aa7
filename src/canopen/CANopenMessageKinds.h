#pragma once

#include <QString>

#include <array>

/** Kinds of CANopen messages; a kind's number is its position. */
inline constexpr std::array<const char *, 17> canOpenMessageKindMap{
    "UNKNOWN", "SDO_REQ",       "SDO_RES", "SDO_SEGSTARTSTOP", "SDO_ABORT", "SYNC",        "SRDO",  "EMCY",
    "NMT_EC",  "NMT_EC_BOOTUP", "TIME",    "LSS_REQ",          "LSS_RES",   "SDO_DYN_REQ", "FLYMA", "INFO",
    "Sleep",
};

/** Name of a message kind; a number behind the list is "UNKNOWN". */
inline QString canOpenMessageKindName(quint8 kind)
{
    return QString::fromLatin1(canOpenMessageKindMap[kind < canOpenMessageKindMap.size() ? kind : 0]);
}
