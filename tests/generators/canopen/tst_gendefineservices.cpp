#include "DefineDesk.h"

using namespace Qt::StringLiterals;

namespace {

/** What has to be in a project of two CANopen lines for a define of a service; without it there is none. */
struct Case
{
    const char *line; ///< as it stands in the file
    const char *name;
    void (*build)(DefineDesk &desk);
};

void slaves(DefineDesk &desk)
{
    desk.array(0, 0x1F81, 3);
    desk.array(1, 0x1F81, 2);
}

/** PDOs with mappings of these access types. */
void pdos(DefineDesk &desk, quint16 communication, const QStringList &accesses)
{
    for (int i = 0; i < accesses.size(); ++i) {
        desk.object(0, quint16(communication + i));
        desk.object(0, quint16(communication + 0x200 + i),
                    {{.number = 0, .value = u"1"_s, .access = accesses.at(i)}, {.number = 1}});
    }
}

template <quint16 index>
void object(DefineDesk &desk)
{
    desk.object(1, index);
}

template <quint16 mapping, int count>
void multiplexed(DefineDesk &desk)
{
    desk.array(1, mapping, 1);
    desk.store->setSubIndexDefault(1, mapping, 0, QString::number(count));
}

const Case cases[] = {
    {"#define CO_NMT_MASTER\t1u", "", [](DefineDesk &desk) { desk.set(u"nmtmaster"_s, u"0,1"_s); }},
    {"#define CO_NMT_MASTER\t1u", "chosen at run time",
     [](DefineDesk &desk) { desk.set(u"nmtmaster"_s, u"2"_s); }},
    {"#define CO_FLYING_MASTER_SUPPORTED\t1u", "", object<0x1F80>},
    {"#define CO_GFC_SUPPORTED\t1u", "", object<0x1300>},
    {"#define CO_NETWORK_ROUTING_COUNTS\t0u, 3u", "", [](DefineDesk &desk) { desk.array(1, 0x1F2C, 3); }},
    {"#define CO_NETWORK_ROUTING_CNT\t5u", "",
     [](DefineDesk &desk) {
         desk.array(0, 0x1F2C, 2);
         desk.array(1, 0x1F2C, 3);
     }},
    {"#define CO_NETWORK_ROUTING_CNT\t0u", "without an entry",
     [](DefineDesk &desk) { desk.array(0, 0x1F2C, 0); }},
    {"#define CO_NETWORK_ROUTING_COUNTS\t4u, 1u", "by the setting",
     [](DefineDesk &desk) { desk.set(u"routing_counts"_s, u"4,1"_s); }},
    {"#define CO_SDO_SERVER_CNT\t3u", "",
     [](DefineDesk &desk) {
         desk.objects(0, 0x1200, 2);
         desk.object(1, 0x1000);
     }},
    {"#define CO_SDO_CLIENT_CNT\t3u", "",
     [](DefineDesk &desk) {
         desk.objects(0, 0x1280, 2);
         desk.object(1, 0x1280);
     }},
    {"#define CO_PDO_TRANSMIT_CNT\t3u", "",
     [](DefineDesk &desk) {
         desk.objects(0, 0x1800, 2);
         desk.object(1, 0x1800);
     }},
    {"#define CO_PDO_RECEIVE_CNT\t3u", "",
     [](DefineDesk &desk) {
         desk.objects(0, 0x1400, 2);
         desk.object(1, 0x1400);
     }},
    {"#define CO_PDO_REC_TIMER_SUPPORTED\t1u", "",
     [](DefineDesk &desk) {
         desk.object(1, 0x1405, {{.number = 0}, {.number = 5}});
     }},
    {"#define CO_SRDO_SUPPORTED\t1u", "", object<0x1301>},
    {"#define CO_SRDO_COUNTS\t2u, 1u", "",
     [](DefineDesk &desk) {
         desk.object(0, 0x1301);
         desk.object(0, 0x137F);
         desk.object(1, 0x1301);
     }},
    {"#define CO_SRDO_CNT\t3u", "",
     [](DefineDesk &desk) {
         desk.objects(0, 0x1301, 2);
         desk.object(1, 0x1301);
     }},
    {"#define CO_MPDO_PRODUCER\t1u", "source addressing", multiplexed<0x1A00, 254>},
    {"#define CO_MPDO_PRODUCER\t1u", "compact source addressing", multiplexed<0x1A00, 253>},
    {"#define CO_MPDO_PRODUCER\t1u", "destination addressing", multiplexed<0x1BFF, 255>},
    {"#define CO_MPDO_CONSUMER\t1u", "source addressing", multiplexed<0x1600, 254>},
    {"#define CO_MPDO_CONSUMER\t1u", "destination addressing", multiplexed<0x17FF, 255>},
    {"#define CO_MPDO_SAM\t1u", "sent", multiplexed<0x1A00, 254>},
    {"#define CO_MPDO_SAM\t1u", "received", multiplexed<0x1600, 254>},
    {"#define CO_MPDO_DAM\t1u", "sent", multiplexed<0x1A00, 255>},
    {"#define CO_MPDO_DAM\t1u", "received", multiplexed<0x1600, 255>},
    {"#define CO_MAX_MAP_ENTRIES\t6u", "",
     [](DefineDesk &desk) {
         desk.array(0, 0x1600, 2);
         desk.array(0, 0x1A00, 4);
         desk.array(1, 0x1BFF, 6);
         for (const quint16 other : {0x15FF, 0x1800, 0x19FF, 0x1C00})
             desk.array(0, other, 9);
     }},
    {"#define CO_TR_PDO_DYN_MAP_ENTRIES\t2u", "",
     [](DefineDesk &desk) {
         pdos(desk, 0x1800, {u"rw"_s, u"const"_s, u"rw"_s, u"ro"_s});
     }},
    {"#define CO_REC_PDO_DYN_MAP_ENTRIES\t1u", "",
     [](DefineDesk &desk) {
         pdos(desk, 0x1400, {u"rw"_s, u"const"_s});
     }},
    {"#define CO_PDO_BIT_MAPPING\t1u", "",
     [](DefineDesk &desk) {
         desk.set(u"bitwise_mapping"_s, u"1"_s);
         desk.array(1, 0x1A00, 2);
     }},
    {"#define CO_PDO_BIT_MAPPING\t1u", "by any number but 0, as in the tables",
     [](DefineDesk &desk) {
         desk.set(u"bitwise_mapping"_s, u"-1"_s);
         desk.array(1, 0x1A00, 2);
     }},
    {"#define CO_HB_CONSUMER_CNT\t5u", "",
     [](DefineDesk &desk) {
         desk.array(0, 0x1016, 2);
         desk.array(1, 0x1016, 3);
     }},
    {"#define CO_SYNC_SUPPORTED\t1u", "", object<0x1005>},
    {"#define CO_SLAVE_ASSIGNMENT_CNT\t5u", "", slaves},
    {"#define CO_MAX_SLAVE_ASSIGNMENT_CNT\t5u", "", slaves},
    {"#define CO_MAX_SLAVE_ASSIGNMENT_CNT\t40u", "by the setting",
     [](DefineDesk &desk) {
         slaves(desk);
         desk.set(u"max_slave_assignment"_s, u"20"_s);
     }},
    {"#define CO_GUARDING_CNT CO_MAX_SLAVE_ASSIGNMENT_CNT", "", slaves},
    {"#define CO_EMCY_PRODUCER\t1u", "", object<0x1014>},
    {"#define CO_SRD_SUPPORTED\t1u", "", object<0x1F10>},
    {"#define CO_GUARDING_SLAVE\t1u", "", object<0x100C>},
    {"#define CO_STORE_SUPPORTED\t1u", "store", object<0x1010>},
    {"#define CO_STORE_SUPPORTED\t1u", "restore", object<0x1011>},
    {"#define CO_STORE_NVS_CNT\t2u,0u,", "",
     [](DefineDesk &desk) {
         desk.object(0, 0x2000, {{.number = 0}, {.number = 1, .isStored = true}});
         desk.object(0, 0x2001, {{.number = 0, .isStored = true}});
     }},
    {"#define CO_EMCY_CONSUMER_CNT\t5u", "",
     [](DefineDesk &desk) {
         desk.array(0, 0x1028, 2);
         desk.array(1, 0x1028, 3);
     }},
    {"#define CO_EMCY_ERROR_HISTORY\t5u", "",
     [](DefineDesk &desk) {
         desk.array(0, 0x1003, 2);
         desk.array(1, 0x1003, 3);
     }},
    {"#define CO_EMCY_ACTIVE_ERROR_LIST\t3u", "", [](DefineDesk &desk) { desk.array(1, 0x1032, 3); }},
    {"#define CO_TIME_SUPPORTED\t1u", "", object<0x1012>},
};

struct SettingRow
{
    const char *key;
    const char *macro;
    bool isCount = false;
};

constexpr SettingRow settingRows[] = {
    {"lss_inquiry_supported", "CO_LSS_INQUIRY_SERVICES"},
    {"idnego_supported", "CO_IDNEGO_SUPPORTED"},
    {"dynod", "CO_DYNAMIC_OBJDIC"},
    {"csdo_write_special", "CO_EVENT_CSDO_DOMAIN_WRITE"},
    {"emcy_routing", "CO_EMCY_NETWORKING"},
    {"sdo_routing", "CO_SDO_NETWORKING"},
    {"ignore_srdo_data_validation", "CO_SRDO_IGNORE_DATA_STATE"},
    {"bootup_manager", "CO_BOOTUP_MANAGER"},
    {"config_manager", "CO_CFG_MANAGER"},
    {"1010autostore_by_application", "CO_AUTO_STORE_HANDLED_BY_APPLICATION"},
    {"sdo_blocktransfer_supported", "CO_SDO_BLOCK"},
    {"sdo_blocktransfer_block_size", "CO_SDO_BLOCK_SIZE", true},
    {"sdo_blocktransfer_min_data", "CO_SDO_BLOCK_MIN_SIZE", true},
    {"sdo_blocktransfer_crc_supported", "CO_SDO_BLOCK_CRC"},
    {"sdo_client_queue_supported", "CO_SDO_QUEUE"},
    {"sdo_client_queue_size", "CO_SDO_QUEUE_LEN", true},
    {"sdo_client_queue_internal_access_supported", "CO_SDOQUEUE_INTERNAL_ACCESS"},
    {"limit_check", "CO_CONFIG_LIMIT_CHECK"},
    {"event_ssdo_domain_counter", "CO_SSDO_DOMAIN_CNT", true},
    {"sdo_split", "CO_SDO_SPLIT_INDICATION"},
};

struct UsdoRow
{
    const char *key;
    const char *value;
    const char *line;
    bool isServer;
};

constexpr UsdoRow usdoRows[] = {
    {"usdo_server_domain_write_ind_size", "4", "#define CO_SUSDO_DOMAIN_CNT\t4u", true},
    {"usdo_split_indication_supported", "1", "#define CO_USDO_SPLIT_INDICATION\t1u", true},
    {"usdo_server_read_ind_function", "f", "#define CO_EVENT_STATIC_USDO_SERVER_READ 1u", true},
    {"usdo_server_read_finished_ind_function", "f", "#define CO_EVENT_STATIC_SUSDO_READ_FINISHED 1u", true},
    {"usdo_server_write_ind_function", "f", "#define CO_EVENT_STATIC_USDO_SERVER_WRITE 1u", true},
    {"usdo_server_ind_check_write_function", "f", "#define CO_EVENT_STATIC_USDO_CHECK_WRITE 1u", true},
    {"usdo_server_domain_write_ind_function", "f", "#define CO_EVENT_STATIC_SUSDO_DOMAIN_WRITE 1u", true},
    {"usdo_server_domain_read_ind_function", "f", "#define CO_EVENT_STATIC_SUSDO_DOMAIN_READ 1u", true},
    {"usdo_client_read_ind_function", "f", "#define CO_EVENT_STATIC_CUSDO_CLIENT_READ 1u", false},
    {"usdo_client_write_ind_function", "f", "#define CO_EVENT_STATIC_CUSDO_CLIENT_WRITE 1u", false},
    {"usdo_client_domain_write_ind_function", "f", "#define CO_EVENT_STATIC_CUSDO_DOMAIN_WRITE 1u", false},
    {"usdo_client_domain_read_ind_function", "f", "#define CO_EVENT_STATIC_CUSDO_DOMAIN_READ 1u", false},
};

void enableUsdo(DefineDesk &desk, bool server, bool client)
{
    desk.set(u"usdo_server_enabled"_s, server ? u"1"_s : u"0"_s);
    desk.set(u"usdo_client_enabled"_s, client ? u"1"_s : u"0"_s);
    desk.set(u"usdo_server_cnt"_s, u"3"_s);
    desk.set(u"usdo_client_cnt"_s, u"2,1"_s);
}

} // namespace

/** Defines of the CANopen services. */
class TestGenDefineServices : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void aServiceIsDefinedWhereTheProjectHasIt_data();
    void aServiceIsDefinedWhereTheProjectHasIt();
    void aSettingIsDefinedWhereItIsOn_data();
    void aSettingIsDefinedWhereItIsOn();
    void lssHasTheSideOfItsLines_data();
    void lssHasTheSideOfItsLines();
    void usdoIsDefinedWhereItIsEnabled_data();
    void usdoIsDefinedWhereItIsEnabled();
    void usdoSettingsBelongToTheirSide_data();
    void usdoSettingsBelongToTheirSide();
    void usdoIsForCANopenLinesOnly();
    void onlyMappingObjectsMarkMultiplexedPdos();
    void bitMappingFollowsTheTables();
    void staticSrdoDataCountsVariablesByType();
    void profilesComeFromTheSetting_data();
    void profilesComeFromTheSetting();
    void profilesComeFromTheDeviceTypesText();
    void profilesWithStoreHaveAnEvent();
    void everyDefineHasItsPlace();
};

void TestGenDefineServices::aServiceIsDefinedWhereTheProjectHasIt_data()
{
    QTest::addColumn<int>("row");
    for (std::size_t i = 0; i < std::size(cases); ++i)
        QTest::addRow("%s %s", cases[i].line, cases[i].name) << int(i);
}

void TestGenDefineServices::aServiceIsDefinedWhereTheProjectHasIt()
{
    QFETCH(int, row);
    const Case &data = cases[row];
    const QString line = QString::fromLatin1(data.line);
    const QString macro = line.section(u' ', 1).section(u'\t', 0, 0).section(u' ', 0, 0);
    DefineDesk desk({1, 1});
    QCOMPARE(desk.define(macro), QString());
    data.build(desk);
    QCOMPARE(desk.define(macro), line);
    QCOMPARE(desk.define(macro, false), line);
}

void TestGenDefineServices::aSettingIsDefinedWhereItIsOn_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("macro");
    QTest::addColumn<bool>("isCount");
    for (const SettingRow &row : settingRows)
        QTest::newRow(row.key) << QString::fromLatin1(row.key) << QString::fromLatin1(row.macro)
                               << row.isCount;
}

void TestGenDefineServices::aSettingIsDefinedWhereItIsOn()
{
    QFETCH(QString, key);
    QFETCH(QString, macro);
    QFETCH(bool, isCount);
    DefineDesk desk;
    for (const QString &off : {QString(), u"0"_s, u"x"_s}) {
        desk.set(key, off);
        QCOMPARE(desk.define(macro), QString());
    }
    desk.set(key, u"7"_s);
    QCOMPARE(desk.define(macro), u"#define %1\t%2u"_s.arg(macro, isCount ? u"7"_s : u"1"_s));
}

void TestGenDefineServices::lssHasTheSideOfItsLines_data()
{
    QTest::addColumn<QString>("roles");
    QTest::addColumn<bool>("master");
    QTest::addColumn<bool>("slave");
    QTest::newRow("slaves") << u"0,0"_s << false << true;
    QTest::newRow("masters") << u"1,1"_s << true << false;
    QTest::newRow("one of each") << u"0,1"_s << true << true;
    QTest::newRow("chosen at run time") << u"2,2"_s << true << true;
}

void TestGenDefineServices::lssHasTheSideOfItsLines()
{
    QFETCH(QString, roles);
    QFETCH(bool, master);
    QFETCH(bool, slave);
    DefineDesk desk({1, 1});
    desk.set(u"nmtmaster"_s, roles);
    desk.set(u"lss_supported"_s, u"0"_s);
    QCOMPARE(desk.define(u"CO_LSS_MASTER_SUPPORTED"_s), QString());
    QCOMPARE(desk.define(u"CO_LSS_SUPPORTED"_s), QString());
    desk.set(u"lss_supported"_s, u"1"_s);
    QCOMPARE(desk.value(u"CO_LSS_MASTER_SUPPORTED"_s), master ? u"1u"_s : QString());
    QCOMPARE(desk.value(u"CO_LSS_SUPPORTED"_s), slave ? u"1u"_s : QString());
}

void TestGenDefineServices::usdoIsDefinedWhereItIsEnabled_data()
{
    QTest::addColumn<bool>("server");
    QTest::addColumn<bool>("client");
    QTest::addColumn<QStringList>("defines");
    const QString supported = u"#define CO_USDO_SUPPORTED\t1u"_s;
    const QStringList serverSide{u"#define CO_USDO_SERVER_MAX_CONN_CNT\t6u"_s,
                                 u"#define CO_USDO_SERVER_MAX_CONN_COUNTS\t3u, 3u"_s};
    const QStringList clientSide{u"#define CO_USDO_CLIENT_SUPPORTED\t1u"_s,
                                 u"#define CO_USDO_CLIENT_MAX_CONN_CNT\t3u"_s,
                                 u"#define CO_USDO_CLIENT_MAX_CONN_COUNTS\t2u, 1u"_s};
    QTest::newRow("off") << false << false << QStringList();
    QTest::newRow("server") << true << false << QStringList(supported) + serverSide;
    QTest::newRow("client") << false << true << QStringList(supported) + clientSide;
    QTest::newRow("both") << true << true << QStringList(supported) + serverSide + clientSide;
}

void TestGenDefineServices::usdoIsDefinedWhereItIsEnabled()
{
    QFETCH(bool, server);
    QFETCH(bool, client);
    DefineDesk desk({1, 1});
    enableUsdo(desk, server, client);
    QTEST(desk.lines().filter(u"CO_USDO"_s), "defines");
}

void TestGenDefineServices::usdoSettingsBelongToTheirSide_data()
{
    QTest::addColumn<int>("row");
    for (std::size_t i = 0; i < std::size(usdoRows); ++i)
        QTest::newRow(usdoRows[i].key) << int(i);
}

void TestGenDefineServices::usdoSettingsBelongToTheirSide()
{
    QFETCH(int, row);
    const UsdoRow &data = usdoRows[row];
    const QString line = QString::fromLatin1(data.line);
    DefineDesk desk;
    enableUsdo(desk, true, true);
    QVERIFY(!desk.lines().contains(line));
    desk.set(QString::fromLatin1(data.key), QString::fromLatin1(data.value));
    QVERIFY(desk.lines().contains(line));
    enableUsdo(desk, data.isServer, !data.isServer);
    QVERIFY(desk.lines().contains(line));
    enableUsdo(desk, !data.isServer, data.isServer);
    QVERIFY(!desk.lines().contains(line));
}

void TestGenDefineServices::usdoIsForCANopenLinesOnly()
{
    DefineDesk one;
    enableUsdo(one, true, true);
    one.set(u"usdo_server_cnt"_s, u"1"_s);
    one.set(u"usdo_client_cnt"_s, u"1"_s);
    QCOMPARE(one.value(u"CO_USDO_SERVER_MAX_CONN_COUNTS"_s), u"1u"_s);
    QCOMPARE(one.value(u"CO_USDO_CLIENT_MAX_CONN_COUNTS"_s), u"1u"_s);
    DefineDesk desk({2, 1, 4});
    enableUsdo(desk, true, true);
    QCOMPARE(desk.value(u"CO_USDO_SERVER_MAX_CONN_COUNTS"_s), u"0u, 3u, 0u"_s);
    QCOMPARE(desk.value(u"CO_USDO_CLIENT_MAX_CONN_COUNTS"_s), u"0u, 1u, 0u"_s);
}

void TestGenDefineServices::onlyMappingObjectsMarkMultiplexedPdos()
{
    DefineDesk desk({1, 1});
    for (const quint16 index : {0x15FF, 0x1800, 0x19FF, 0x1C00})
        desk.object(1, index, {{.number = 0, .value = u"254"_s}});
    for (const quint16 index : {0x1600, 0x17FF, 0x1A00, 0x1BFF})
        desk.object(1, index, {{.number = 0, .value = u"64"_s}, {.number = 1, .value = u"255"_s}});
    QVERIFY(desk.lines().filter(u"MPDO"_s).isEmpty());
}

// Lengths in mapping tables are bytes where no mapping has more than one entry.
void TestGenDefineServices::bitMappingFollowsTheTables()
{
    DefineDesk desk;
    desk.set(u"bitwise_mapping"_s, u"1"_s);
    QCOMPARE(desk.define(u"CO_PDO_BIT_MAPPING"_s), QString());
    desk.array(0, 0x1A00, 1);
    QCOMPARE(desk.define(u"CO_PDO_BIT_MAPPING"_s), QString());
    desk.array(0, 0x1600, 2);
    QCOMPARE(desk.value(u"CO_PDO_BIT_MAPPING"_s), u"1u"_s);
}

void TestGenDefineServices::staticSrdoDataCountsVariablesByType()
{
    DefineDesk desk({1, 1});
    const QList<int> types{5, 5, 1, 6, 7, 27, 2, 3, 4, 8, 9}; // by sub-index of 0x2000
    for (const quint8 line : {0, 1}) {
        QList<DefineSub> variables{{.number = 0}};
        QList<DefineSub> entries{{.number = 0, .value = u"20"_s}};
        for (int i = 0; i < types.size(); ++i) {
            variables.append({.number = quint8(i + 1), .datatype = types.at(i)});
            const QString entry = u"0x2000%1"_s.arg(i + 1, 2, 16, '0'_L1);
            entries.append({.number = quint8(2 * i + 1), .value = QString(entry + u"08"_s)});
            entries.append({.number = quint8(2 * i + 2), .value = QString(entry + u"10"_s)}); // once more
        }
        entries.append({.number = 100, .value = u"0x21000108"_s}); // is not there
        desk.object(line, 0x2000, variables);
        desk.object(line, 0x1301);
        desk.object(line, 0x1381, entries);
        desk.array(line, 0x3000, 1);
        for (const quint16 other : {0x137F, 0x13B1}) // map no SRDO
            desk.array(line, other, 1, u"0x30000108"_s);
    }
    QVERIFY(desk.lines().filter(u"SRDO_OD_ENTRY"_s).isEmpty());
    desk.set(u"static_srdo_data"_s, u"1"_s);
    const QStringList expected{
        u"#define SRDO_OD_ENTRY_U8_CNT\t6u"_s,  u"#define SRDO_OD_ENTRY_U16_CNT\t2u"_s,
        u"#define SRDO_OD_ENTRY_U32_CNT\t2u"_s, u"#define SRDO_OD_ENTRY_U64_CNT\t2u"_s,
        u"#define SRDO_OD_ENTRY_I8_CNT\t2u"_s,  u"#define SRDO_OD_ENTRY_I16_CNT\t2u"_s,
        u"#define SRDO_OD_ENTRY_I32_CNT\t2u"_s, u"#define SRDO_OD_ENTRY_R32_CNT\t2u"_s,
    };
    QCOMPARE(desk.lines().filter(u"SRDO_OD_ENTRY"_s), expected);
}

void TestGenDefineServices::profilesComeFromTheSetting_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QStringList>("defines");
    QTest::newRow("none") << QString() << QStringList();
    QTest::newRow("one") << u"401"_s << QStringList{u"#define CO_PROFILE_401\t1u"_s};
    QTest::newRow("several lines") << u"401\r\nProfile=402\n\n401\n"_s
                                   << QStringList{u"#define CO_PROFILE_401\t1u"_s,
                                                  u"#define CO_PROFILE_402\t1u"_s};
    QTest::newRow("groups of car add-on devices")
        << u"Profile=447,2\n447 TAXI\n"_s
        << QStringList{u"#define CO_PROFILE_447\t1u"_s, u"#define CO_P447_VDFG_2\t1u"_s,
                       u"#define CO_P447_VDFG_TAXI\t1u"_s};
    QTest::newRow("no number") << u"many\nProfile=\nProfile=x\n"_s << QStringList();
}

void TestGenDefineServices::profilesComeFromTheSetting()
{
    QFETCH(QString, setting);
    DefineDesk desk;
    desk.object(0, 0x1000, {{.number = 0, .value = u"0x000F0191"_s}});
    desk.set(u"Profile"_s, setting);
    QTEST(desk.lines().filter(QRegularExpression(u"CO_P(ROFILE|447)_"_s)), "defines");
}

void TestGenDefineServices::profilesComeFromTheDeviceTypesText()
{
    DefineDesk desk({1, 1});
    desk.object(0, 0x1000, {{.number = 0, .value = u"0x191"_s}, {.number = 1, .value = u"Profile=401"_s}});
    desk.object(1, 0x1000, {{.number = 0}, {.number = 1, .value = u"402\nprofile = 410"_s}});
    const QStringList expected{u"#define CO_PROFILE_401\t1u"_s, u"#define CO_PROFILE_410\t1u"_s};
    QCOMPARE(desk.lines().filter(u"CO_PROFILE_"_s), expected);
}

void TestGenDefineServices::profilesWithStoreHaveAnEvent()
{
    DefineDesk desk;
    desk.set(u"Profile"_s, u"401"_s);
    QCOMPARE(desk.define(u"CO_EVENT_PROFILE_STORE"_s), QString());
    desk.object(0, 0x1010);
    QCOMPARE(desk.define(u"CO_EVENT_PROFILE_STORE"_s), u"#define CO_EVENT_PROFILE_STORE\t1u"_s);
    desk.set(u"Profile"_s, QString());
    QCOMPARE(desk.define(u"CO_EVENT_PROFILE_STORE"_s), QString());
}

void TestGenDefineServices::everyDefineHasItsPlace()
{
    DefineDesk desk({1, 1});
    desk.set(u"Profile"_s, u"447 1"_s);
    desk.set(u"nmtmaster"_s, u"0,1"_s);
    desk.set(u"lss_supported"_s, u"1"_s);
    desk.set(u"ignore_srdo_data_validation"_s, u"1"_s);
    desk.set(u"static_srdo_data"_s, u"1"_s);
    desk.set(u"bitwise_mapping"_s, u"1"_s);
    desk.set(u"enable_dynamic"_s, u"0"_s);
    enableUsdo(desk, true, true);
    for (const UsdoRow &row : usdoRows)
        desk.set(QString::fromLatin1(row.key), QString::fromLatin1(row.value));
    for (const SettingRow &row : settingRows)
        desk.set(QString::fromLatin1(row.key), u"1"_s);
    for (const quint16 index :
         {0x1000, 0x1005, 0x100C, 0x1012, 0x1014, 0x1280, 0x1300, 0x1301, 0x1400, 0x1800, 0x1F10, 0x1F80})
        desk.object(0, index);
    desk.object(0, 0x1405, {{.number = 0}, {.number = 5}});
    for (const quint16 index : {0x1003, 0x1010, 0x1016, 0x1028, 0x1032, 0x1F2C, 0x1F81})
        desk.array(0, index, 2);
    pdos(desk, 0x1801, {u"rw"_s});
    pdos(desk, 0x1401, {u"rw"_s});
    multiplexed<0x1A10, 254>(desk);
    multiplexed<0x1610, 255>(desk);
    desk.array(0, 0x1A11, 3);
    desk.object(0, 0x2000, {{.number = 0, .isStored = true}});

    const QString section = desk.text()
                                .section(u"/* Definition of numbers of CANopen services */\n"_s, 1)
                                .section(u"/* Definition of CAN queue sizes */"_s, 0, 0);
    QStringList macros;
    const QStringList lines = section.split(u'\n', Qt::SkipEmptyParts);
    for (const QString &line : lines)
        macros.append(line.section(u' ', 1).section(u'\t', 0, 0).section(u' ', 0, 0));
    const QString expected =
        u"CO_PROFILE_447 CO_EVENT_PROFILE_STORE CO_P447_VDFG_1 CO_NMT_MASTER CO_FLYING_MASTER_SUPPORTED "
        "CO_LSS_MASTER_SUPPORTED CO_LSS_SUPPORTED CO_LSS_INQUIRY_SERVICES CO_IDNEGO_SUPPORTED "
        "CO_GFC_SUPPORTED CO_DYNAMIC_OBJDIC CO_EVENT_CSDO_DOMAIN_WRITE CO_EMCY_NETWORKING CO_SDO_NETWORKING "
        "CO_NETWORK_ROUTING_COUNTS CO_NETWORK_ROUTING_CNT CO_SDO_SERVER_CNT CO_SDO_CLIENT_CNT "
        "CO_USDO_SUPPORTED CO_USDO_SERVER_MAX_CONN_CNT CO_USDO_SERVER_MAX_CONN_COUNTS CO_SUSDO_DOMAIN_CNT "
        "CO_USDO_SPLIT_INDICATION CO_EVENT_STATIC_USDO_SERVER_READ CO_EVENT_STATIC_SUSDO_READ_FINISHED "
        "CO_EVENT_STATIC_USDO_SERVER_WRITE CO_EVENT_STATIC_USDO_CHECK_WRITE "
        "CO_EVENT_STATIC_SUSDO_DOMAIN_WRITE CO_EVENT_STATIC_SUSDO_DOMAIN_READ CO_USDO_CLIENT_SUPPORTED "
        "CO_USDO_CLIENT_MAX_CONN_CNT CO_USDO_CLIENT_MAX_CONN_COUNTS CO_EVENT_STATIC_CUSDO_CLIENT_READ "
        "CO_EVENT_STATIC_CUSDO_CLIENT_WRITE CO_EVENT_STATIC_CUSDO_DOMAIN_WRITE "
        "CO_EVENT_STATIC_CUSDO_DOMAIN_READ CO_PDO_TRANSMIT_CNT CO_PDO_RECEIVE_CNT CO_PDO_REC_TIMER_SUPPORTED "
        "CO_SRDO_SUPPORTED CO_SRDO_COUNTS CO_SRDO_CNT CO_SRDO_IGNORE_DATA_STATE SRDO_OD_ENTRY_U8_CNT "
        "SRDO_OD_ENTRY_U16_CNT SRDO_OD_ENTRY_U32_CNT SRDO_OD_ENTRY_U64_CNT SRDO_OD_ENTRY_I8_CNT "
        "SRDO_OD_ENTRY_I16_CNT SRDO_OD_ENTRY_I32_CNT SRDO_OD_ENTRY_R32_CNT CO_MPDO_PRODUCER CO_MPDO_CONSUMER "
        "CO_MPDO_SAM CO_MPDO_DAM CO_MAX_MAP_ENTRIES CO_TR_PDO_DYN_MAP_ENTRIES CO_REC_PDO_DYN_MAP_ENTRIES "
        "CO_PDO_BIT_MAPPING CO_HB_CONSUMER_CNT CO_SYNC_SUPPORTED CO_BOOTUP_MANAGER CO_SLAVE_ASSIGNMENT_CNT "
        "CO_MAX_SLAVE_ASSIGNMENT_CNT CO_GUARDING_CNT CO_CFG_MANAGER CO_EMCY_PRODUCER CO_SRD_SUPPORTED "
        "CO_GUARDING_SLAVE CO_AUTO_STORE_HANDLED_BY_APPLICATION CO_STORE_SUPPORTED CO_STORE_NVS_CNT "
        "CO_EMCY_CONSUMER_CNT CO_EMCY_ERROR_HISTORY CO_EMCY_ACTIVE_ERROR_LIST CO_TIME_SUPPORTED CO_SDO_BLOCK "
        "CO_SDO_BLOCK_SIZE CO_SDO_BLOCK_MIN_SIZE CO_SDO_BLOCK_CRC CO_SDO_QUEUE CO_SDO_QUEUE_LEN "
        "CO_SDOQUEUE_INTERNAL_ACCESS CO_CONFIG_LIMIT_CHECK CO_SSDO_DOMAIN_CNT CO_SDO_SPLIT_INDICATION"_s;
    QCOMPARE(macros.join(u' '), expected);
}

QTEST_GUILESS_MAIN(TestGenDefineServices)
#include "tst_gendefineservices.moc"
