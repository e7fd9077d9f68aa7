#pragma once

#include "DefineDesk.h"

#include <QMap>

/** Small projects, one for each form that gen_define.h can take. */
struct DefineProject
{
    const char *name;
    const char *edition;
    bool v4;
    void (*build)(DefineDesk &desk);
};

namespace DefineProjects {

inline void addSettings(DefineDesk &desk, const QMap<QString, QString> &settings)
{
    for (auto setting = settings.cbegin(); setting != settings.cend(); ++setting)
        desk.set(setting.key(), setting.value());
}

/** An I/O module: PDOs, heartbeat, store, emergency. */
inline void addModule(DefineDesk &desk, quint8 line)
{
    for (const quint16 index : {0x1000, 0x1001, 0x1005, 0x1014, 0x1017, 0x1018, 0x1200, 0x2000})
        desk.object(line, index);
    for (const quint16 index : {0x1003, 0x1010, 0x1011, 0x1016})
        desk.array(line, index, 3);
    for (const quint16 index : {0x1400, 0x1800}) {
        desk.object(line, index, {{.number = 0}, {.number = 1}, {.number = 2}, {.number = 5}});
        desk.object(line, quint16(index + 0x200),
                    {{.number = 0, .value = QStringLiteral("2"), .access = QStringLiteral("rw")},
                     {.number = 1},
                     {.number = 2}});
    }
    desk.object(line, 0x2001, {{.number = 0}, {.number = 1, .isStored = true}});
}

inline void addCommon(DefineDesk &desk)
{
    addSettings(desk,
                {{QStringLiteral("receivebuffersize"), QStringLiteral("20")},
                 {QStringLiteral("transmitbuffersize"), QStringLiteral("10")},
                 {QStringLiteral("co_timer_interval"), QStringLiteral("10000")},
                 {QStringLiteral("enable_dynamic"), QStringLiteral("1")}});
}

inline void buildSlave(DefineDesk &desk)
{
    desk.addLine(0, 1);
    addModule(desk, 0);
    addCommon(desk);
    addSettings(desk,
                {{QStringLiteral("co_node_id"), QStringLiteral("32")},
                 {QStringLiteral("lss_supported"), QStringLiteral("1")},
                 {QStringLiteral("event_nmt"), QStringLiteral("1")},
                 {QStringLiteral("event_pdo"), QStringLiteral("2")},
                 {QStringLiteral("fct_can"), QStringLiteral("canState")},
                 {QStringLiteral("user_defines"), QStringLiteral("#define APPLICATION 7u")}});
    desk.write("/* user-specific section: start */\n#define BY_USER 9u\n/* user-specific section: end */\n");
}

inline void buildMultiLine(DefineDesk &desk)
{
    desk.addLine(0, 1);
    desk.addLine(1, 1);
    addModule(desk, 0);
    desk.object(1, 0x1000);
    desk.object(1, 0x1280);
    desk.array(1, 0x1F81, 4, QStringLiteral("1"));
    desk.array(1, 0x1028, 4);
    desk.array(1, 0x1F2C, 2);
    addCommon(desk);
    addSettings(desk,
                {{QStringLiteral("co_node_id"), QStringLiteral("32,1")},
                 {QStringLiteral("co_node_id_fct"), QString()},
                 {QStringLiteral("nmtmaster"), QStringLiteral("0,1")},
                 {QStringLiteral("lss_supported"), QStringLiteral("1")},
                 {QStringLiteral("canfd_supported"), QStringLiteral("1")},
                 {QStringLiteral("usdo_server_enabled"), QStringLiteral("1")},
                 {QStringLiteral("usdo_server_cnt"), QStringLiteral("2")},
                 {QStringLiteral("usdo_client_enabled"), QStringLiteral("1")},
                 {QStringLiteral("usdo_client_cnt"), QStringLiteral("0,1")},
                 {QStringLiteral("usdo_server_read_ind_function"), QStringLiteral("usdoRead")},
                 {QStringLiteral("overwrite_predef"), QStringLiteral("0,1")}});
}

inline void buildMixed(DefineDesk &desk)
{
    for (const int type : {1, 5, 6, 7})
        desk.addLine(quint8(type == 1 ? 0 : type - 4), type);
    addModule(desk, 0);
    desk.object(1, 0x1000);
    desk.store->addPGN(1, 61444, StoreTest::samplePgn(ObjectDataBase::Transmit));
    desk.store->addCANID(2, 0x100, StoreTest::sampleCanId(ObjectDataBase::Receive));
    desk.store->addCANID(3, 0x101, StoreTest::sampleCanId(ObjectDataBase::Transmit));
    addCommon(desk);
    desk.setJ1939(QStringLiteral("cia510serversupport"), QStringLiteral("1"));
    addSettings(desk,
                {{QStringLiteral("isotp_supported"), QStringLiteral("1")},
                 {QStringLiteral("isotp_client_con"), QStringLiteral("0,0,0,2")},
                 {QStringLiteral("isotp_server_con"), QStringLiteral("0,0,0,1")},
                 {QStringLiteral("additional_cob_count"), QStringLiteral("1,2,3,4")}});
}

inline void buildBootloader(DefineDesk &desk)
{
    desk.addLine(0, 4);
    addSettings(desk,
                {{QStringLiteral("uds_bl_setting"), QStringLiteral("1")},
                 {QStringLiteral("udsserver_supported"), QStringLiteral("1")},
                 {QStringLiteral("uds_server_active"), QStringLiteral("1")},
                 {QStringLiteral("co_timer_interval"), QStringLiteral("1000")}});
}

inline void buildSafety(DefineDesk &desk)
{
    desk.addLine(0, 1);
    addModule(desk, 0);
    for (const quint16 index : {0x1300, 0x1301, 0x13FE, 0x13FF})
        desk.object(0, index);
    desk.array(0, 0x1381, 2, QStringLiteral("0x20000008"));
    desk.object(0, 0x3000, {{.number = 0, .datatype = 5, .implementation = 3}});
    addCommon(desk);
    addSettings(desk,
                {{QStringLiteral("static_srdo_data"), QStringLiteral("1")},
                 {QStringLiteral("co_srdo_interval"), QStringLiteral("500")},
                 {QStringLiteral("special_virtual_objects"), QStringLiteral("1")},
                 {QStringLiteral("sleep_mode_selection"), QStringLiteral("2")},
                 {QStringLiteral("user_tx_cob"), QStringLiteral("3")},
                 {QStringLiteral("sorted_coblist"), QStringLiteral("1")}});
}

inline void buildTargets(DefineDesk &desk)
{
    desk.addLine(0, 1);
    addModule(desk, 0);
    addCommon(desk);
    addSettings(desk,
                {{QStringLiteral("all_targets"), QStringLiteral("1")},
                 {QStringLiteral("targetsettings_cnt"), QStringLiteral("2")},
                 {QStringLiteral("targetsettings_0_targetid"), QStringLiteral("TARGET_ARM")},
                 {QStringLiteral("targetsettings_0_name"), QStringLiteral("Cortex-M4")},
                 {QStringLiteral("targetsettings_0_timer"), QStringLiteral("1000")},
                 {QStringLiteral("targetsettings_0_fullcan"), QStringLiteral("1")},
                 {QStringLiteral("targetsettings_1_name"), QStringLiteral("PowerPC")},
                 {QStringLiteral("targetsettings_1_timer"), QStringLiteral("2000")},
                 {QStringLiteral("targetsettings_1_endianess"), QStringLiteral("1")}});
}

inline void buildEnergyBus(DefineDesk &desk)
{
    desk.addLine(0, 1);
    addModule(desk, 0);
    addCommon(desk);
    const QMap<QString, QString> settings{
        {QStringLiteral("device_cnt"), QStringLiteral("3")},
        {QStringLiteral("device_0"), QStringLiteral("EnergyBus Controller")},
        {QStringLiteral("device_1"), QStringLiteral("Battery")},
        {QStringLiteral("device_2"), QStringLiteral("Voltage Converter")},
        {QStringLiteral("int_offset_vc"), QStringLiteral("2")},
        {QStringLiteral("ebc_max_dev_number"), QStringLiteral("16")},
        {QStringLiteral("ebc_max_bat_number"), QStringLiteral("2")},
        {QStringLiteral("ebc_tool_supported"), QStringLiteral("1")},
        {QStringLiteral("ext_start_pos_bat"), QStringLiteral("1")}};
    for (auto setting = settings.cbegin(); setting != settings.cend(); ++setting)
        desk.setEnergyBus(setting.key(), setting.value());
}

inline void buildJ1939(DefineDesk &desk)
{
    desk.addLine(0, 2);
    desk.store->addPGN(0, 61444, StoreTest::samplePgn(ObjectDataBase::Transmit));
    desk.setJ1939(QStringLiteral("bamsupport"), QStringLiteral("1"));
    addCommon(desk);
}

inline constexpr DefineProject all[] = {
    {"slave", "CANopen NodeSmith", true, buildSlave},
    {"slave-older", "CANopen NodeSmith", false, buildSlave},
    {"multi-line", "CANopen NodeSmith", true, buildMultiLine},
    {"multi-line-older", "CANopen NodeSmith", false, buildMultiLine},
    {"mixed", "CAN NodeSmith", true, buildMixed},
    {"bootloader", "CAN NodeSmith", true, buildBootloader},
    {"safety", "CANopen NodeSmith", true, buildSafety},
    {"targets", "CANopen NodeSmith", true, buildTargets},
    {"energybus", "EnergyBus NodeGuide", true, buildEnergyBus},
    {"j1939", "J1939 NodeSmith", true, buildJ1939},
};

/** Adds a row for each project; the column holds its number. */
inline void addRows()
{
    QTest::addColumn<int>("number");
    for (std::size_t i = 0; i < std::size(all); ++i)
        QTest::newRow(all[i].name) << int(i);
}

/** A project with its edition in force. */
inline const DefineProject &choose(int number)
{
    const DefineProject &project = all[number];
    QCoreApplication::setApplicationName(QString::fromLatin1(project.edition));
    return project;
}

} // namespace DefineProjects
