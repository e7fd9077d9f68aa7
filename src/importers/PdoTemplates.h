#pragma once

#include "store/ProjectRecords.h"

#include <QMap>

/** Objects for PDOs that a device description declares by their number only; all are switched off. */
namespace PdoTemplates {

/** Communication or mapping objects of one direction (CiA 301). */
constexpr int mostPdos = 512;

struct Object
{
    ProjectRecords::IndexData data;
    QMap<quint8, ProjectRecords::SubIndexData> subs;
};

/** Communication parameters; PDOs are counted from 1. */
Object receiveParameter(int number);
Object transmitParameter(int number);
/** Mapping parameters with room for the eight bytes of a CAN frame, none of them mapped. */
Object mapping();

/** One direction of PDOs. */
struct Kind
{
    const char *setting; ///< description setting and key of [DeviceInfo] that hold the number of PDOs
    quint16 communication; ///< first index
    quint16 mapping; ///< first index
    Object (*parameter)(int number);
};

inline constexpr Kind kinds[] = {
    {"NrOfRXPDO", 0x1400, 0x1600, receiveParameter},
    {"NrOfTXPDO", 0x1800, 0x1A00, transmitParameter},
};

} // namespace PdoTemplates
