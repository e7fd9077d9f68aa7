#pragma once

#include "generators/canopen/VirtualDesk.h"

/** Small devices with objects in external memory. */
namespace VirtualDevices {

/** The log of a data logger: a setting with limits, a text, records that are all alike. */
inline void addLog(VirtualDesk &desk, quint8 line = 0)
{
    Entry interval = VirtualDesk::value(CAN::Unsigned16, QStringLiteral("1000"));
    interval.low = QStringLiteral("10");
    interval.up = QStringLiteral("60000");
    interval.limits = true;
    interval.defaultInEds = true;
    interval.stored = true;
    Entry newest = VirtualDesk::value(CAN::Real32, QStringLiteral("0"), QStringLiteral("ro"));
    newest.mapping = PDOMapping::Allowed;
    desk.variable(0x1000, {.type = CAN::Unsigned32, .value = QStringLiteral("0x195")}, line);
    desk.variable(0x2000, interval, line);
    desk.variable(0x2001, newest, line);
    desk.variable(0x2002, VirtualDesk::value(CAN::VisibleString, QStringLiteral("log")), line);
    desk.array(0x2003, QList<Entry>(5, VirtualDesk::value(CAN::Integer16, QStringLiteral("-1"))), line);
    desk.array(0x2004, {VirtualDesk::value(CAN::Unsigned8, QStringLiteral("$NODEID+2")), {}}, line);
    desk.set(QStringLiteral("line%1type").arg(line), QStringLiteral("1"));
}

inline void logger(VirtualDesk &desk)
{
    addLog(desk);
}

/** Two lines with logs of their own and one value that both show. */
inline void gateway(VirtualDesk &desk)
{
    addLog(desk);
    addLog(desk, 1);
    Entry total = VirtualDesk::value(CAN::Unsigned64, QStringLiteral("7"));
    desk.variable(0x3000, total);
    total.shared = true;
    desk.variable(0x3000, total, 1);
}

inline void forcedLogger(VirtualDesk &desk)
{
    addLog(desk);
    desk.setMisc(QStringLiteral("generateML"), QStringLiteral("true"));
}

/** A logger whose records are one row, and whose stack checks limits and lets objects come and go. */
inline void compactLogger(VirtualDesk &desk)
{
    addLog(desk);
    desk.compactArrays = true;
    desk.set(QStringLiteral("limit_check"), QStringLiteral("1"));
    desk.set(QStringLiteral("dynod"), QStringLiteral("1"));
}

inline void everyType(VirtualDesk &desk)
{
    QList<Entry> entries = VirtualDesk::everyType();
    for (int i = 0; i < entries.size(); ++i) {
        entries[i].limits = true;
        entries[i].value = QString::number(i + 20);
        entries[i].low = QString::number(i);
        entries[i].up = QString::number(i + 100);
    }
    desk.object(0x2000, entries);
    desk.variable(0x2001, {});
    desk.set(QStringLiteral("limit_check"), QStringLiteral("1"));
    desk.set(QStringLiteral("line0type"), QStringLiteral("1"));
}

} // namespace VirtualDevices
