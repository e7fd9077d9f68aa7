#pragma once

#include "generators/canopen/DictionaryDesk.h"

/** Small devices that a reader can follow from the project to the generated file. */
namespace SampleDevices {

inline Entry constant(int type, const QString &value)
{
    return {.type = type,
            .value = value,
            .implementation = CANopen::ManagedConst,
            .access = QStringLiteral("const")};
}

inline Entry managed(int type, const QString &value)
{
    return {.type = type, .value = value, .mapping = PDOMapping::Allowed};
}

inline Entry application(int type, const QString &variable)
{
    return {.type = type,
            .implementation = CANopen::ApplicationVariable,
            .variable = variable,
            .mapping = PDOMapping::Allowed};
}

/** What every CANopen device has (CiA 301). */
inline void addIdentity(DictionaryDesk &desk, quint8 line = 0)
{
    desk.variable(0x1000, constant(CAN::Unsigned32, QStringLiteral("0x00020191")), line);
    desk.variable(0x1001, {.access = QStringLiteral("ro")}, line);
    desk.variable(0x1014, {.type = CAN::Unsigned32, .value = QStringLiteral("$NODEID+0x80")}, line);
    desk.variable(0x1017, {.type = CAN::Unsigned16, .value = QStringLiteral("1000")}, line);
    desk.array(0x1018,
               {constant(CAN::Unsigned32, QStringLiteral("0x319")),
                constant(CAN::Unsigned32, QStringLiteral("7")),
                constant(CAN::Unsigned32, QStringLiteral("0x00010002")),
                {.type = CAN::Unsigned32, .access = QStringLiteral("ro")}},
               line);
    desk.array(0x1200,
               {constant(CAN::Unsigned32, QStringLiteral("$NODEID+0x600")),
                constant(CAN::Unsigned32, QStringLiteral("$NODEID+0x580"))},
               line);
}

/** The values of a pump: set points that the generated code keeps, measurements of the application. */
inline void addPump(DictionaryDesk &desk, quint8 line = 0)
{
    Entry speed = managed(CAN::Integer16, QStringLiteral("-120"));
    speed.low = QStringLiteral("-3000");
    speed.up = QStringLiteral("3000");
    speed.limits = true;
    speed.defaultInEds = true;
    speed.stored = true;
    Entry pressure = application(CAN::Real32, QStringLiteral("pressure"));
    pressure.access = QStringLiteral("ro");
    Entry direction = managed(CAN::Boolean, QStringLiteral("1"));
    direction.access = QStringLiteral("rww");
    desk.variable(0x2000, speed, line);
    desk.variable(0x2001, direction, line);
    desk.variable(0x2002, pressure, line);
    desk.array(0x2003, QList<Entry>(4, managed(CAN::Unsigned16, QStringLiteral("500"))), line);
    desk.variable(0x2004, application(CAN::Unsigned24, QStringLiteral("PUMP_ADDRESS(hours)")), line);
}

/** Texts and data of all kinds. */
inline void addTexts(DictionaryDesk &desk)
{
    desk.variable(0x1008, constant(CAN::VisibleString, QStringLiteral("Pump \"P1\"")));
    desk.variable(0x2100, constant(CAN::OctetString, QStringLiteral("|x00a0ff")));
    desk.variable(0x2101, constant(CAN::Utf8String, QStringLiteral("Förderpumpe")));
    Entry place = application(CAN::VisibleString, QStringLiteral("place"));
    place.value = QStringLiteral("basement");
    place.size = 20;
    desk.variable(0x2102, place);
    Entry key = application(CAN::OctetString, QStringLiteral("key"));
    key.value = QStringLiteral("|x0102fe");
    key.size = 8;
    desk.variable(0x2103, key);
    Entry label = application(CAN::Utf8String, QStringLiteral("label"));
    label.size = 16;
    desk.variable(0x2104, label);
    desk.object(0x1F50, {application(CAN::Domain, QStringLiteral("v_1"))}, CANopen::Domain);
}

/** PDOs with fixed mappings, and one whose mapping the network may change. */
inline void addPdos(DictionaryDesk &desk, quint8 line = 0)
{
    desk.pdo(0x1400, {QStringLiteral("0x20000010"), QStringLiteral("0x20010008")}, QStringLiteral("const"),
             line);
    desk.pdo(0x1401, {QStringLiteral("0x20000010"), QStringLiteral("0x20010008")}, QStringLiteral("const"),
             line);
    desk.pdo(0x1800, {QStringLiteral("0x20020020"), QStringLiteral("0x20030110")}, QStringLiteral("const"),
             line);
    desk.pdo(0x1801, {QStringLiteral("0x20030210")}, QStringLiteral("rw"), line);
}

inline void addDevice(DictionaryDesk &desk, quint8 line = 0)
{
    addIdentity(desk, line);
    addPdos(desk, line);
    addPump(desk, line);
    desk.set(QStringLiteral("line%1type").arg(line), QStringLiteral("1"));
}

/** Two lines of a gateway: a value that both have, and values of each. */
inline void addGateway(DictionaryDesk &desk)
{
    for (const quint8 line : {quint8(0), quint8(1)}) {
        addIdentity(desk, line);
        addPdos(desk, line);
        addPump(desk, line);
        Entry shared = managed(CAN::Unsigned32, QStringLiteral("0x12345678"));
        shared.shared = true;
        Entry count = constant(CAN::Unsigned8, QStringLiteral("2"));
        count.shared = true;
        desk.object(0x2200, {count, shared, shared}, CANopen::Array, line);
        desk.set(QStringLiteral("line%1type").arg(line), QStringLiteral("1"));
    }
}

} // namespace SampleDevices
