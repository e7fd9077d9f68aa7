#include "DefineDesk.h"

#include <QSet>

#include <span>

using namespace Qt::StringLiterals;

namespace {

struct Row
{
    const char *key;
    const char *macro;
};

constexpr Row staticRows[] = {
    {"fct_sdo_server_read", "CO_EVENT_STATIC_SDO_SERVER_READ"},
    {"fct_sdo_server_write", "CO_EVENT_STATIC_SDO_SERVER_WRITE"},
    {"fct_sdo_server_check_write", "CO_EVENT_STATIC_SDO_SERVER_CHECK_WRITE"},
    {"fct_pdo", "CO_EVENT_STATIC_PDO"},
    {"fct_pdo_received", "CO_EVENT_STATIC_PDO"},
    {"fct_pdo_sync", "CO_EVENT_STATIC_PDO"},
    {"fct_pdo_update", "CO_EVENT_STATIC_PDO_UPDATE"},
    {"fct_nmt", "CO_EVENT_STATIC_NMT"},
    {"fct_errctrl", "CO_EVENT_STATIC_ERRCTRL"},
    {"fct_sync", "CO_EVENT_STATIC_SYNC"},
    {"fct_finished", "CO_EVENT_STATIC_FINISHED"},
    {"fct_led_green", "CO_EVENT_STATIC_LED"},
    {"fct_led_red", "CO_EVENT_STATIC_LED"},
    {"fct_can", "CORE_EVENT_STATIC_CAN"},
    {"fct_cfgman", "CO_EVENT_STATIC_CFG_MAN"},
    {"fct_sdo_client_read", "CO_EVENT_STATIC_SDO_CLIENT_READ"},
    {"fct_sdo_client_write", "CO_EVENT_STATIC_SDO_CLIENT_WRITE"},
    {"fct_emcy", "CO_EVENT_STATIC_EMCY"},
    {"fct_emcy_consumer", "CO_EVENT_STATIC_EMCY_CONSUMER"},
    {"fct_time", "CO_EVENT_STATIC_TIME"},
    {"fct_store", "CO_EVENT_STATIC_STORE_LOAD"},
    {"fct_store_clear", "CO_EVENT_STATIC_STORE_CLEAR"},
    {"fct_store_save", "CO_EVENT_STATIC_STORE_SAVE"},
    {"fct_srd", "CO_EVENT_STATIC_SRD"},
    {"fct_sync_finished", "CO_EVENT_STATIC_SYNC_FINISHED"},
    {"fct_lss", "CO_EVENT_STATIC_LSS"},
    {"fct_lss_master", "CO_EVENT_STATIC_LSS"},
    {"fct_flyma", "CO_EVENT_STATIC_FLYMA"},
    {"fct_manager", "CO_EVENT_STATIC_MANAGER"},
    {"fct_mpdo", "CO_EVENT_STATIC_MPDO"},
};

constexpr Row dynamicRows[] = {
    {"usdo_server_ind_read_cnt", "CO_EVENT_DYNAMIC_USDO_SERVER_READ"},
    {"usdo_server_ind_read_finished_cnt", "CO_EVENT_DYNAMIC_SUSDO_READ_FINISHED"},
    {"usdo_server_ind_write_cnt", "CO_EVENT_DYNAMIC_USDO_SERVER_WRITE"},
    {"usdo_server_ind_domain_write_cnt", "CO_EVENT_DYNAMIC_SUSDO_DOMAIN_WRITE"},
    {"usdo_server_ind_domain_read_cnt", "CO_EVENT_DYNAMIC_SUSDO_DOMAIN_READ"},
    {"usdo_client_ind_read_cnt", "CO_EVENT_DYNAMIC_USDO_CLIENT_READ"},
    {"usdo_client_ind_write_cnt", "CO_EVENT_DYNAMIC_USDO_CLIENT_WRITE"},
    {"usdo_client_ind_domain_read_cnt", "CO_EVENT_DYNAMIC_CUSDO_DOMAIN_READ"},
    {"usdo_client_ind_domain_write_cnt", "CO_EVENT_DYNAMIC_CUSDO_DOMAIN_WRITE"},
    {"event_sdo_server_read", "CO_EVENT_DYNAMIC_SDO_SERVER_READ"},
    {"event_sdo_server_write", "CO_EVENT_DYNAMIC_SDO_SERVER_WRITE"},
    {"event_pdo", "CO_EVENT_DYNAMIC_PDO"},
    {"event_pdo_update", "CO_EVENT_DYNAMIC_PDO_UPDATE"},
    {"event_nmt", "CO_EVENT_DYNAMIC_NMT"},
    {"event_errctrl", "CO_EVENT_DYNAMIC_ERRCTRL"},
    {"event_sync", "CO_EVENT_DYNAMIC_SYNC"},
    {"event_sync_finished", "CO_EVENT_DYNAMIC_SYNC_FINISHED"},
    {"event_finished", "CO_EVENT_DYNAMIC_FINISHED"},
    {"event_led", "CO_EVENT_DYNAMIC_LED"},
    {"event_cfg", "CO_EVENT_DYNAMIC_CFG_MAN"},
    {"event_flyma", "CO_EVENT_DYNAMIC_FLYMA"},
    {"event_sdorouter", "CO_EVENT_DYNAMIC_NETWORK_SDOCLIENT_USER"},
    {"event_can", "CORE_EVENT_DYNAMIC_CAN"},
    {"event_sdo_client_read", "CO_EVENT_DYNAMIC_SDO_CLIENT_READ"},
    {"event_sdo_client_write", "CO_EVENT_DYNAMIC_SDO_CLIENT_WRITE"},
    {"event_emcy", "CO_EVENT_DYNAMIC_EMCY"},
    {"event_emcy_consumer", "CO_EVENT_DYNAMIC_EMCY_CONSUMER"},
    {"event_time", "CO_EVENT_DYNAMIC_TIME"},
    {"event_store", "CO_EVENT_DYNAMIC_STORE"},
    {"event_srd", "CO_EVENT_DYNAMIC_SRD"},
    {"event_lss", "CO_EVENT_DYNAMIC_LSS"},
    {"event_idnego", "CO_EVENT_DYNAMIC_IDNEGO"},
    {"event_manager", "CO_EVENT_DYNAMIC_MANAGER"},
    {"event_mpdo", "CO_EVENT_DYNAMIC_MPDO"},
    {"event_gfc", "CO_EVENT_DYNAMIC_GFC"},
    {"object_changed_event", "CO_EVENT_DYNAMIC_OBJECT_CHANGED"},
    {"event_ssdo_domain_write", "CO_EVENT_DYNAMIC_SSDO_DOMAIN_WRITE"},
    {"event_ssdo_domain_read", "CO_EVENT_DYNAMIC_SSDO_DOMAIN_READ"},
    {"isotp_server_event", "ISOTP_EVENT_DYNAMIC_SERVER"},
    {"isotp_client_event", "ISOTP_EVENT_DYNAMIC_CLIENT"},
};

QString olderName(const QString &macro)
{
    return macro.startsWith(u"CORE_"_s) ? QString(u"CO_"_s + macro.sliced(5)) : macro;
}

void addRows(std::span<const Row> rows)
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("macro");
    for (const Row &row : rows)
        QTest::newRow(row.key) << QString::fromLatin1(row.key) << QString::fromLatin1(row.macro);
}

/** Defines of the indication section in their order, without their values. */
QStringList macrosOf(DefineDesk &desk, const QString &part)
{
    QStringList macros;
    const QStringList lines = desk.lines().filter(part);
    for (const QString &line : lines)
        macros.append(line.section(u' ', 1).section(u'\t', 0, 0));
    return macros;
}

} // namespace

/** Defines of indication functions. */
class TestGenDefineIndications : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void aNamedFunctionIsStatic_data() { addRows(staticRows); }
    void aNamedFunctionIsStatic();
    void functionsOfOneDefineGiveItOnce();
    void staticOnesStandInTheOrderTold();
    void aCountIsDynamic_data() { addRows(dynamicRows); }
    void aCountIsDynamic();
    void dynamicOnesNeedTheirSwitch();
    void dynamicOnesStandInTheOrderTold();
    void aChangedObjectHasASwitchOfItsOwn();
    void sleepModeHasItsDefines_data();
    void sleepModeHasItsDefines();
    void aProjectWithoutCANopenHasNone();
};

void TestGenDefineIndications::aNamedFunctionIsStatic()
{
    QFETCH(QString, key);
    QFETCH(QString, macro);
    DefineDesk desk;
    for (const QString &none : {QString(), u"  "_s}) {
        desk.set(key, none);
        QCOMPARE(desk.define(macro), QString());
    }
    desk.set(key, u" myFunction "_s);
    QCOMPARE(desk.define(macro), u"#define %1\t1u"_s.arg(macro));
    QCOMPARE(desk.define(olderName(macro), false), u"#define %1\t1u"_s.arg(olderName(macro)));
}

void TestGenDefineIndications::functionsOfOneDefineGiveItOnce()
{
    DefineDesk desk;
    for (const Row &row : staticRows)
        desk.set(QString::fromLatin1(row.key), u"f"_s);
    const QStringList macros = macrosOf(desk, u"_EVENT_STATIC_"_s);
    QCOMPARE(macros.size(), QSet<QString>(macros.begin(), macros.end()).size());
}

void TestGenDefineIndications::staticOnesStandInTheOrderTold()
{
    DefineDesk desk;
    QStringList expected;
    for (const Row &row : staticRows) {
        desk.set(QString::fromLatin1(row.key), u"f"_s);
        expected.append(QString::fromLatin1(row.macro));
    }
    expected.removeDuplicates();
    QCOMPARE(macrosOf(desk, u"_EVENT_STATIC_"_s), expected);
}

void TestGenDefineIndications::aCountIsDynamic()
{
    QFETCH(QString, key);
    QFETCH(QString, macro);
    DefineDesk desk;
    desk.set(u"enable_dynamic"_s, u"1"_s);
    for (const QString &none : {QString(), u"0"_s, u"x"_s, u"-1"_s}) {
        desk.set(key, none);
        QCOMPARE(desk.define(macro), QString());
    }
    desk.set(key, u"3"_s);
    QCOMPARE(desk.define(macro), u"#define %1\t3u"_s.arg(macro));
    QCOMPARE(desk.define(olderName(macro), false), u"#define %1\t3u"_s.arg(olderName(macro)));
}

void TestGenDefineIndications::dynamicOnesNeedTheirSwitch()
{
    DefineDesk desk;
    const QString comment = u"/* Definition of number of call-back functions for each service*/\n"_s;
    desk.set(u"event_pdo"_s, u"2"_s);
    desk.set(u"enable_dynamic"_s, u"0"_s);
    QVERIFY(!desk.text().contains(comment));
    QCOMPARE(desk.define(u"CO_EVENT_DYNAMIC_PDO"_s), QString());
    desk.set(u"enable_dynamic"_s, u"1"_s);
    QVERIFY(desk.text().contains(QString(comment + u"#define CO_EVENT_DYNAMIC_PDO\t2u\n"_s)));
}

void TestGenDefineIndications::dynamicOnesStandInTheOrderTold()
{
    DefineDesk desk;
    desk.set(u"enable_dynamic"_s, u"1"_s);
    QStringList expected;
    for (const Row &row : dynamicRows) {
        desk.set(QString::fromLatin1(row.key), u"1"_s);
        expected.append(QString::fromLatin1(row.macro));
    }
    QCOMPARE(macrosOf(desk, u"_EVENT_DYNAMIC_"_s), expected);
}

void TestGenDefineIndications::aChangedObjectHasASwitchOfItsOwn()
{
    DefineDesk desk;
    desk.set(u"enable_dynamic"_s, u"1"_s);
    QVERIFY(!desk.text().contains(u"OBJECT_CHANGED"_s));
    desk.set(u"object_changed_event"_s, u"4"_s);
    QVERIFY(desk.text().contains(
        u"#define CO_EVENT_DYNAMIC_OBJECT_CHANGED\t4u\n#define CORE_OBJECT_CHANGED\t1u\n"_s));
    QVERIFY(desk.text(false).contains(
        u"#define CO_EVENT_DYNAMIC_OBJECT_CHANGED\t4u\n#define CO_OBJECT_CHANGED\t1u\n"_s));
}

void TestGenDefineIndications::sleepModeHasItsDefines_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QString>("defines");
    const QString text = u"#define CO_EVENT_DYNAMIC_SLEEP\t1u\n#define %1\t1u\n"
                         "#define CORE_SLEEP_SUPPORTED\t1u\n#define CO_SLEEP_WAITTIME\t250u\n"_s;
    QTest::newRow("CiA 447") << u"1"_s << text.arg(u"CO_SLEEP_447"_s);
    QTest::newRow("CiA 454") << u"2"_s << text.arg(u"CO_SLEEP_454"_s);
    for (const QString &none : {u"0"_s, u"3"_s, QString()})
        QTest::addRow("mode %s", qPrintable(none)) << none << QString();
}

void TestGenDefineIndications::sleepModeHasItsDefines()
{
    QFETCH(QString, mode);
    QFETCH(QString, defines);
    DefineDesk desk;
    desk.set(u"sleep_mode_selection"_s, mode);
    desk.set(u"sleep_wait_time"_s, u"250"_s);
    if (defines.isEmpty())
        QVERIFY(!desk.text().contains(u"SLEEP"_s));
    else
        QVERIFY(desk.text().contains(defines));
}

void TestGenDefineIndications::aProjectWithoutCANopenHasNone()
{
    DefineDesk desk({2});
    desk.set(u"enable_dynamic"_s, u"1"_s);
    desk.set(u"event_can"_s, u"1"_s);
    desk.set(u"fct_can"_s, u"f"_s);
    desk.set(u"sleep_mode_selection"_s, u"1"_s);
    QVERIFY(!desk.text().contains(u"_EVENT_"_s));
    QVERIFY(!desk.text().contains(u"SLEEP"_s));
}

QTEST_GUILESS_MAIN(TestGenDefineIndications)
#include "tst_gendefineindications.moc"
