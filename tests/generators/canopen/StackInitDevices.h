#pragma once

#include "generators/canopen/StackInitTexts.h"

#include <functional>

/** Devices that have every service which the stack starts. */
namespace StackInitDevices {

using Build = std::function<void(DictionaryDesk &)>;

inline void addPdos(DictionaryDesk &desk, quint8 line)
{
    desk.variable(0x2000,
                  {.type = CAN::Unsigned16, .value = QStringLiteral("7"), .mapping = PDOMapping::Allowed},
                  line);
    desk.pdo(0x1400, {QStringLiteral("0x20000010")}, QStringLiteral("const"), line);
    desk.pdo(0x1401, {QStringLiteral("0x20000010")}, QStringLiteral("const"), line);
    desk.pdo(0x1800, {QStringLiteral("0x20000010")}, QStringLiteral("const"), line);
    desk.pdo(0x1803, {QStringLiteral("0x20000010")}, QStringLiteral("rw"), line);
    desk.pdo(0x1804, {}, QStringLiteral("const"), line);
    desk.sub(0x1800, 3, {.type = CAN::Unsigned16, .value = QStringLiteral("30")}, line);
    desk.sub(0x1800, 5, {.type = CAN::Unsigned16, .value = QStringLiteral("50")}, line);
    desk.sub(0x1800, 6, {.type = CAN::Unsigned8, .value = QStringLiteral("60")}, line);
}

inline void addServices(DictionaryDesk &desk, quint8 line)
{
    StackInitTexts::addUsualObjects(desk, line);
    const auto number = [](int type, const QString &value) { return Entry{.type = type, .value = value}; };
    desk.variable(0x1005, number(CAN::Unsigned32, QStringLiteral("0x80")), line);
    desk.variable(0x1006, number(CAN::Unsigned32, QStringLiteral("20000")), line);
    desk.variable(0x1012, number(CAN::Unsigned32, QStringLiteral("0x80000100")), line);
    desk.variable(0x1014, number(CAN::Unsigned32, QStringLiteral("$NODEID+0x80")), line);
    desk.array(0x1016, {number(CAN::Unsigned32, QStringLiteral("0x7f0064"))}, line);
    desk.variable(0x1017, number(CAN::Unsigned16, QStringLiteral("1000")), line);
    desk.array(
        0x1028,
        {number(CAN::Unsigned32, QStringLiteral("0x81")), number(CAN::Unsigned32, QStringLiteral("0x82"))},
        line);
    for (const quint16 index : {0x1200, 0x1201, 0x1280})
        desk.array(index,
                   {number(CAN::Unsigned32, QStringLiteral("0x601")),
                    number(CAN::Unsigned32, QStringLiteral("0x581"))},
                   line);
    desk.variable(0x1300, number(CAN::Unsigned8, QStringLiteral("1")), line);
    desk.array(0x1301, {number(CAN::Unsigned8, QStringLiteral("1"))}, line);
    desk.array(0x1F10, {number(CAN::Unsigned32, QStringLiteral("0"))}, line);
    desk.array(0x1F81, {number(CAN::Unsigned32, QStringLiteral("1"))}, line);
    addPdos(desk, line);
    // its tables are no members of the stack's structure
    desk.variable(0x3000, number(CAN::Integer24, QStringLiteral("-5")), line);
    desk.set(QStringLiteral("line%1type").arg(line), QStringLiteral("1"));
}

/** What a device is, beside its objects. */
inline void addSettings(DictionaryDesk &desk)
{
    desk.set(QStringLiteral("co_node_id"), QStringLiteral("3"));
    desk.set(QStringLiteral("event_led"), QStringLiteral("1"));
    desk.set(QStringLiteral("fct_led_green"), QStringLiteral("onGreen"));
    desk.set(QStringLiteral("fct_can"), QStringLiteral("onCan"));
    desk.set(QStringLiteral("idnego_supported"), QStringLiteral("1"));
    desk.set(QStringLiteral("isotp_connection_cnt"), QStringLiteral("1"));
    desk.set(QStringLiteral("lss_supported"), QStringLiteral("1"));
    desk.set(QStringLiteral("overwrite_predef"), QStringLiteral("1"));
    desk.set(QStringLiteral("receivebuffersize"), QStringLiteral("10"));
    desk.set(QStringLiteral("transmitbuffersize"), QStringLiteral("10"));
    desk.set(QStringLiteral("new_init_structure"), QStringLiteral("1"));
}

inline void single(DictionaryDesk &desk)
{
    addServices(desk, 0);
    addSettings(desk);
}

inline void gateway(DictionaryDesk &desk)
{
    for (const quint8 line : {quint8(0), quint8(1)})
        addServices(desk, line);
    addSettings(desk);
    desk.set(QStringLiteral("co_node_id"), QStringLiteral("3,4"));
}

/** Devices on CAN FD have USDO on line 0, both sides of it. */
inline Build onCanFd(const Build &build)
{
    return [=](DictionaryDesk &desk) {
        build(desk);
        desk.set(QStringLiteral("canfd_supported"), QStringLiteral("1"));
        for (const QString &key : {QStringLiteral("usdo_server_enabled"), QStringLiteral("usdo_server_cnt"),
                                   QStringLiteral("usdo_client_enabled"), QStringLiteral("usdo_client_cnt")})
            desk.set(key, QStringLiteral("1,0"));
        desk.set(QStringLiteral("usdo_server_read_ind_function"), QStringLiteral("onUsdoRead"));
    };
}

} // namespace StackInitDevices
