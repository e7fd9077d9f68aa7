#pragma once

#include "SrdoDesk.h"

/** A device whose SRDOs carry every kind of value, good and bad ones. */
namespace SrdoDevice {

struct Variable
{
    quint16 index;
    int type;
    const char *name; ///< as in the project
    const char *cType; ///< of the application
};

inline constexpr Variable variables[] = {
    {0x2000, CAN::Unsigned8, "u8", "UNSIGNED8"},
    {0x2001, CAN::Unsigned16, "u16", "UNSIGNED16"},
    {0x2002, CAN::Unsigned32, "u32", "UNSIGNED32"},
    {0x2003, CAN::Integer8, "i8", "INTEGER8"},
    {0x2004, CAN::Integer16, "i16", "INTEGER16"},
    {0x2005, CAN::Integer32, "i32", "INTEGER32"},
    {0x2006, CAN::Real32, "r32", "REAL32"},
    {0x2007, CAN::Unsigned64, "u64", "UNSIGNED64"},
    {0x2008, CAN::Unsigned24, "u24", "UNSIGNED24"},
    {0x2009, CAN::Unsigned40, "u40", "UNSIGNED40"},
    {0x200A, CAN::Unsigned48, "u48", "UNSIGNED48"},
    {0x200B, CAN::Integer24, "i24", "INTEGER24"},
    {0x200C, CAN::Boolean, "flag", "UNSIGNED8"},
    {0x2010, CAN::Unsigned16, "level", "UNSIGNED16"},
    {0x2011, CAN::Unsigned16, "levelInverted", "UNSIGNED16"},
    {0x2012, CAN::Real32, "force", "REAL32"},
    {0x2013, CAN::Real32, "forceInverted", "REAL32"},
    {0x2014, CAN::Unsigned24, "hours", "UNSIGNED24"},
    {0x2015, CAN::Unsigned24, "hoursInverted", "UNSIGNED24"},
};

/** Types that the object dictionary finds in gen_srdo.c; variables of others stay the application's. */
inline bool canBeStatic(int type)
{
    return type != CAN::Unsigned24 && type != CAN::Unsigned40 && type != CAN::Unsigned48
        && type != CAN::Integer24;
}

/** The SRDOs whose values can be moved; the order of their variables is that of the message. */
inline void addMovable(SrdoDesk &desk, quint8 line = 0)
{
    for (const Variable &variable : variables)
        desk.mapped(variable.index, variable.type, QString::fromLatin1(variable.name), line);
    const auto srdo = [&desk, line](int number, const QString &entries) {
        desk.srdo(number, entries.split(u' '), line);
    };
    srdo(1, QStringLiteral("0x20000008 0x20010010 0x20020020 0x20030008"));
    srdo(2, QStringLiteral("0x20040010 0x20050020 0x200c0008"));
    srdo(3, QStringLiteral("0x20060020 0x200b0018 0x20000008"));
    srdo(4, QStringLiteral("0x20070040"));
    srdo(5, QStringLiteral("0x20080018 0x20090028"));
    srdo(6, QStringLiteral("0x200a0030 0x20030008 0x20000008"));
    srdo(7, QStringLiteral("0x20100010 0x20110010"));
    srdo(8, QStringLiteral("0x20120020 0x20130020 0x20140018 0x20150018"));
    srdo(9, QStringLiteral("0x20050020 0x20050020 0x20060020 0x20060020"));
}

/** SRDOs that map what cannot be moved; each one fails as a whole. */
inline constexpr int firstFaulty = 20;
inline constexpr int lastFaulty = 29;

inline void addFaulty(SrdoDesk &desk, quint8 line = 0)
{
    desk.mapped(0x2100, CAN::VisibleString, QStringLiteral("text"), line);
    desk.variable(0x2101,
                  {.value = QStringLiteral("7"),
                   .implementation = CANopen::ManagedConst,
                   .access = QStringLiteral("const")},
                  line);
    desk.variable(0x2102, {.implementation = CANopen::VirtualObject}, line);
    const auto srdo = [&desk, line](int number, const QString &entries) {
        desk.srdo(number, entries.split(u' '), line);
    };
    srdo(20, QStringLiteral("0x21000008")); // a text
    srdo(21, QStringLiteral("0x21010008")); // a constant
    srdo(22, QStringLiteral("0x21020008")); // a virtual object
    srdo(23, QStringLiteral("0x30000008")); // no object
    srdo(24, QStringLiteral("0x200c0001 0x20000008")); // parts of a byte
    srdo(25, QStringLiteral("0x20020010")); // half a variable
    srdo(26, QStringLiteral("0x20070040 0x20000008")); // more than a message holds
    srdo(27, QStringLiteral("nonsense"));
    srdo(28, QStringLiteral("0x00050008")); // a dummy entry
    srdo(29, QStringLiteral("0x20000008 0x30000008 0x20010010")); // a good one on either side
}

/** SRDOs without a value. */
inline void addEmpty(SrdoDesk &desk, quint8 line = 0)
{
    desk.srdo(40, {}, line);
    desk.array(0x1301 + 40, {}, line); // without a mapping object
}

/** The header in which an application declares its variables; with static SRDO data few are its own. */
inline QByteArray applicationHeader(bool isStatic)
{
    QString text =
        QStringLiteral("#ifndef VARIABLE\n#define VARIABLE(declaration) extern declaration;\n#endif\n");
    for (const Variable &variable : variables)
        if (!isStatic || !canBeStatic(variable.type))
            text += QStringLiteral("VARIABLE(%1 %2)\n")
                        .arg(QLatin1StringView(variable.cType), QLatin1StringView(variable.name));
    return text.toUtf8();
}

} // namespace SrdoDevice
