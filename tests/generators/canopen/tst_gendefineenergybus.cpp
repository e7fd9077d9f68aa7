#include "DefineDesk.h"

using namespace Qt::StringLiterals;

namespace {

struct LocalRow
{
    const char *kind;
    const char *count;
    const char *offsetKey;
    const char *offset;
};

constexpr LocalRow localRows[] = {
    {"Load Monitoring Device", "EB_LMD_CNT", "int_offset_lmd", "EB_LOCAL_LMD_SUBIDX_OFFS"},
    {"Security Device/Extension", "EB_SECURITY_CNT", "int_offset_sec", "EB_LOCAL_SECURITY_SUBIDX_OFFS"},
    {"Battery", "EB_BATTERY_CNT", "int_offset_bat", "EB_LOCAL_BATTERY_SUBIDX_OFFS"},
    {"Display", "EB_HMI_CNT", "int_offset_hmi", "EB_LOCAL_HMI_SUBIDX_OFFS"},
    {"Manufacturer specific device (passive)", "EB_MANU_P_CNT", "int_offset_manup",
     "EB_LOCAL_MANU_P_SUBIDX_OFFS"},
    {"Manufacturer specific device (active)", "EB_MANU_A_CNT", "int_offset_manua",
     "EB_LOCAL_MANU_A_SUBIDX_OFFS"},
    {"Motor Controller Unit", "EB_MCU_CNT", "int_offset_mcu", "EB_LOCAL_MCU_SUBIDX_OFFS"},
    {"Voltage Converter", "EB_VOLT_CONV_CNT", "int_offset_vc", "EB_LOCAL_VOLT_CONV_SUBIDX_OFFS"},
};

struct NetworkRow
{
    const char *key;
    const char *macro;
    bool isOffset = false;
};

constexpr NetworkRow networkRows[] = {
    {"ebc_max_dev_number", "EB_NETWORK_VIRTUAL_DEV_CNT"},
    {"ebc_max_bat_number", "EB_NETWORK_BATTERY_CNT"},
    {"ebc_max_mcu_number", "EB_NETWORK_MCU_CNT"},
    {"ebc_max_hmi_number", "EB_NETWORK_HMI_CNT"},
    {"ebc_max_manup_number", "EB_NETWORK_MANU_P_CNT"},
    {"ebc_max_manua_number", "EB_NETWORK_MANU_A_CNT"},
    {"ebc_max_sec_number", "EB_NETWORK_SECURITY_CNT"},
    {"ebc_max_vc_number", "EB_NETWORK_VOLT_CONV_CNT"},
    {"ebc_max_lmd_number", "EB_NETWORK_LOAD_MONITORING_CNT"},
    {"ext_start_pos_bat", "EB_NETWORK_BATTERY_SUBIDX_OFFS", true},
    {"ext_start_pos_sec", "EB_NETWORK_SECURITY_SUBIDX_OFFS", true},
    {"ext_start_pos_vc", "EB_NETWORK_VOLT_CONV_SUBIDX_OFFS", true},
    {"ext_start_pos_hmi", "EB_NETWORK_HMI_SUBIDX_OFFS", true},
    {"ext_start_pos_lmd", "EB_NETWORK_LOAD_MONITORING_SUBIDX_OFFS", true},
    {"ext_start_pos_manua", "EB_NETWORK_MANU_A_SUBIDX_OFFS", true},
    {"ext_start_pos_manup", "EB_NETWORK_MANU_P_SUBIDX_OFFS", true},
    {"ext_start_pos_mcu", "EB_NETWORK_MCU_SUBIDX_OFFS", true},
};

void addDevices(DefineDesk &desk, const QStringList &kinds, int first = 0)
{
    desk.setEnergyBus(u"device_cnt"_s, QString::number(kinds.size()));
    for (int i = 0; i < kinds.size(); ++i)
        desk.setEnergyBus(u"device_%1"_s.arg(first + i), kinds.at(i));
}

} // namespace

/** Defines of the virtual devices of an EnergyBus device. */
class TestGenDefineEnergyBus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void init() { QCoreApplication::setApplicationName(u"EnergyBus NodeGuide"_s); }
    void otherEditionsHaveNone();
    void devicesOfAKindAreCounted_data();
    void devicesOfAKindAreCounted();
    void allDevicesAreCounted();
    void aListThatBeginsAtOneIsRead();
    void theControllersNetworkIsTold_data();
    void theControllersNetworkIsTold();
    void onlyAControllerHasANetwork();
    void aToolNeedsASecurityDevice_data();
    void aToolNeedsASecurityDevice();
    void theSectionStandsBetweenServicesAndIndications();
};

void TestGenDefineEnergyBus::otherEditionsHaveNone()
{
    DefineDesk desk;
    addDevices(desk, {u"EnergyBus Controller"_s, u"Battery"_s});
    QVERIFY(desk.text().contains(u"/* EnergyBus Defines */\n#define EB_VIRTUAL_DEV_CNT\t2u\n"_s));
    for (const QString &name : {u"CANopen NodeSmith"_s, u"J1939 NodeSmith"_s, u"CAN NodeSmith"_s}) {
        QCoreApplication::setApplicationName(name);
        QVERIFY(!desk.text().contains(u"EB_"_s));
        QVERIFY(!desk.text().contains(u"EnergyBus"_s));
    }
}

void TestGenDefineEnergyBus::devicesOfAKindAreCounted_data()
{
    QTest::addColumn<int>("row");
    for (std::size_t i = 0; i < std::size(localRows); ++i)
        QTest::newRow(localRows[i].kind) << int(i);
}

void TestGenDefineEnergyBus::devicesOfAKindAreCounted()
{
    QFETCH(int, row);
    const LocalRow &data = localRows[row];
    const QString kind = QString::fromLatin1(data.kind);
    const QString count = QString::fromLatin1(data.count);
    const QString offset = QString::fromLatin1(data.offset);
    DefineDesk desk;
    desk.setEnergyBus(QString::fromLatin1(data.offsetKey), u"6"_s);
    QCOMPARE(desk.define(count), QString());
    QCOMPARE(desk.define(offset), QString());
    addDevices(desk, {kind, u"EnergyBus Controller"_s, QString(kind + u" 2"_s)});
    QVERIFY(desk.text().contains(u"#define %1\t2u\n#define %2\t6u\n"_s.arg(count, offset)));
    for (const LocalRow &other : localRows)
        if (&other != &data)
            QCOMPARE(desk.define(QString::fromLatin1(other.count)), QString());
    desk.setEnergyBus(QString::fromLatin1(data.offsetKey), u"0"_s);
    QCOMPARE(desk.value(offset), u"0u"_s);
}

void TestGenDefineEnergyBus::allDevicesAreCounted()
{
    DefineDesk desk;
    addDevices(desk, {u"EnergyBus Controller"_s, u"Battery"_s, u"Battery"_s, u"Display"_s});
    desk.setEnergyBus(u"device_4"_s, u"Battery"_s); // behind the count
    QCOMPARE(desk.value(u"EB_VIRTUAL_DEV_CNT"_s), u"4u"_s);
    QCOMPARE(desk.value(u"EB_EBC_CNT"_s), u"1u"_s);
    QCOMPARE(desk.value(u"EB_BATTERY_CNT"_s), u"2u"_s);
    QCOMPARE(desk.value(u"EB_HMI_CNT"_s), u"1u"_s);
}

void TestGenDefineEnergyBus::aListThatBeginsAtOneIsRead()
{
    DefineDesk desk;
    addDevices(desk, {u"Battery"_s, u"Battery"_s}, 1);
    QCOMPARE(desk.value(u"EB_BATTERY_CNT"_s), u"2u"_s);
}

void TestGenDefineEnergyBus::theControllersNetworkIsTold_data()
{
    QTest::addColumn<int>("row");
    for (std::size_t i = 0; i < std::size(networkRows); ++i)
        QTest::newRow(networkRows[i].key) << int(i);
}

void TestGenDefineEnergyBus::theControllersNetworkIsTold()
{
    QFETCH(int, row);
    const NetworkRow &data = networkRows[row];
    const QString macro = QString::fromLatin1(data.macro);
    DefineDesk desk;
    addDevices(desk, {u"EnergyBus Controller"_s});
    QCOMPARE(desk.define(macro), QString());
    desk.setEnergyBus(QString::fromLatin1(data.key), u"3"_s);
    QCOMPARE(desk.define(macro), u"#define %1\t3u"_s.arg(macro));
    desk.setEnergyBus(QString::fromLatin1(data.key), u"0"_s);
    QCOMPARE(desk.value(macro), data.isOffset ? u"0u"_s : QString()); // the first place is one, too
}

void TestGenDefineEnergyBus::onlyAControllerHasANetwork()
{
    DefineDesk desk;
    for (const NetworkRow &row : networkRows)
        desk.setEnergyBus(QString::fromLatin1(row.key), u"3"_s);
    desk.setEnergyBus(u"ebc_tool_supported"_s, u"1"_s);
    addDevices(desk, {u"Battery"_s});
    QVERIFY(!desk.text().contains(u"EB_NETWORK_"_s));
}

void TestGenDefineEnergyBus::aToolNeedsASecurityDevice_data()
{
    QTest::addColumn<QString>("tool");
    QTest::addColumn<QString>("number");
    QTest::addColumn<QStringList>("defines");
    const QString tool = u"#define EB_NETWORK_PC_TOOL_CNT\t1u"_s;
    const QString one = u"#define EB_NETWORK_SECURITY_CNT\t1u"_s;
    const QString two = u"#define EB_NETWORK_SECURITY_CNT\t2u"_s;
    QTest::newRow("no tool") << u"0"_s << u"0"_s << QStringList();
    QTest::newRow("tool") << u"1"_s << u"0"_s << QStringList{one, tool};
    QTest::newRow("tool and others") << u"1"_s << u"2"_s << QStringList{two, tool};
    QTest::newRow("others") << u"0"_s << u"2"_s << QStringList{two};
}

void TestGenDefineEnergyBus::aToolNeedsASecurityDevice()
{
    QFETCH(QString, tool);
    QFETCH(QString, number);
    DefineDesk desk;
    addDevices(desk, {u"EnergyBus Controller"_s});
    desk.setEnergyBus(u"ebc_tool_supported"_s, tool);
    desk.setEnergyBus(u"ebc_max_sec_number"_s, number);
    QTEST(desk.lines().filter(u"EB_NETWORK_"_s), "defines");
}

void TestGenDefineEnergyBus::theSectionStandsBetweenServicesAndIndications()
{
    DefineDesk desk;
    desk.set(u"sdo_split"_s, u"1"_s);
    desk.set(u"fct_nmt"_s, u"f"_s);
    addDevices(desk, {u"Battery"_s});
    QVERIFY(desk.text().contains(u"#define CO_SDO_SPLIT_INDICATION\t1u\n/* EnergyBus Defines */\n"
                                 "#define EB_VIRTUAL_DEV_CNT\t1u\n#define EB_BATTERY_CNT\t1u\n"
                                 "#define EB_LOCAL_BATTERY_SUBIDX_OFFS\t0u\n"
                                 "#define CO_EVENT_STATIC_NMT\t1u\n"_s));
}

QTEST_GUILESS_MAIN(TestGenDefineEnergyBus)
#include "tst_gendefineenergybus.moc"
