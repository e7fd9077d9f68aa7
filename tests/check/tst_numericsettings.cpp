#include "check/CheckTest.h"

#include <array>

using namespace CheckTest;
using namespace CheckTest::Texts;

/** Settings that hold numbers. */
class TestNumericSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void everySettingOfTheTablesIsANumber_data();
    void everySettingOfTheTablesIsANumber();
    void eachPartOfAListIsTold_data();
    void eachPartOfAListIsTold() { checkProjectRow(); }
    void theSleepTimeIsSigned_data();
    void theSleepTimeIsSigned() { checkProjectRow(); }
    void bootloadersSetTheirUdsNumbersAtRunTime_data();
    void bootloadersSetTheirUdsNumbersAtRunTime();
    void theTablesAreWalkedInTheirOrder();
    void j1939NumbersAreThoseOfTheJ1939Settings();
};

namespace {

struct Setting
{
    const char *key;
    const char *label;
};

constexpr std::array stackSettings = std::to_array<Setting>({
    {"additional_cob_count", "Additional COB objects"},
    {"user_tx_cob", "Additional user transmit messages"},
    {"user_rx_cob", "Additional user receive messages"},
    {"sdo_blocktransfer_block_size", "SDO Block Transfer Block Size"},
    {"sdo_blocktransfer_min_data", "SDO Block Transfer use for data of [n] bytes or larger"},
    {"sdo_client_queue_size", "SDO Client Queue Length"},
    {"sleep_wait_time", "Sleep Mode Waiting Time (ms)"},
    {"usdo_server_cnt", "USDO Server Connection count"},
    {"usdo_client_cnt", "USDO Client Connection Count"},
    {"usdo_server_domain_write_ind_size", "USDO Domain Indication size in multiple of 60 bytes"},
    {"usdo_server_ind_read_cnt", "USDO Server Read"},
    {"usdo_server_ind_read_finished_cnt", "USDO Server Read Finished"},
    {"usdo_server_ind_write_cnt", "USDO Server Write"},
    {"usdo_server_ind_check_write_cnt", "USDO Server Check Write"},
    {"usdo_server_ind_domain_write_cnt", "USDO Server Domain Write"},
    {"event_ssdo_domain_counter", "SDO Domain Indication Size"},
    {"event_can", "CAN Event"},
    {"event_sdo_server_read", "SDO Server Read"},
    {"event_sdo_server_write", "SDO Server Write"},
    {"event_sdo_server_check_write", "SDO Server Check Write"},
    {"event_ssdo_domain_write", "SDO Server Domain Write"},
    {"event_ssdo_domain_read", "SDO Server Domain Read"},
    {"event_sdo_client_read", "SDO Client Read"},
    {"event_sdo_client_write", "SDO Client Write"},
    {"event_sdorouter", "SDO Network Client Event"},
    {"event_srd", "SDO Requesting Device (SRD) event"},
    {"event_pdo", "PDO Event"},
    {"event_pdo_update", "PDO Update Event"},
    {"event_mpdo", "MPDO Event"},
    {"event_nmt", "NMT Event"},
    {"event_errctrl", "NMT Error Control Event"},
    {"event_store", "Store/Restore/LOAD Event"},
    {"event_gfc", "GFC Event"},
    {"event_sync", "SYNC Event"},
    {"event_sync_finished", "SYNC Event finished"},
    {"event_finished", "SDO Finished Event"},
    {"event_led", "LED Event"},
    {"event_cfg", "Configuration Manager Event"},
    {"event_flyma", "Flying Master Event"},
});

constexpr std::array udsSettings = std::to_array<Setting>({
    {"uds_seedkey_length", "Security Seed/Key Length"},
    {"uds_session_timeout", "Session Timeout (ms)"},
    {"uds_physical_request_id", "Physical address request CAN-ID"},
    {"uds_physical_response_id", "Physical address response CAN-ID"},
    {"uds_functional_request_id", "Functional address request CAN-ID"},
    {"uds_physical_request_ext_addr", "Physical address request: device address"},
    {"uds_physical_response_ext_addr", "Physical address response: tool address"},
    {"uds_functional_request_ext_addr", "Functional address request: device address"},
    {"uds_rdbip_canid", "Read Data by Periodic Identifier CAN-ID"},
});

constexpr std::array j1939Settings = std::to_array<Setting>({
    {"startaddress", "Address (start address)"},
    {"identitynumber", "Identity Number"},
    {"manufacturercode", "Manufacturer Code"},
    {"ecuinstance", "ECU Instance"},
    {"functioninstance", "Function Instance"},
    {"function", "Function"},
    {"vehiclesystem", "Vehicle System"},
    {"vehicleinstance", "Vehicle Instance"},
    {"industrygroup", "Industry Group"},
});

/** The settings of both tables that stand in the general settings. */
QList<Setting> generalSettings()
{
    return QList<Setting>(stackSettings.begin(), stackSettings.end())
        + QList<Setting>(udsSettings.begin(), udsSettings.end());
}

QString nonNumeric(const QString &label, const QString &value)
{
    return QStringLiteral("<strong>Error: </strong>\"%1\" has non-numeric value \"%2\".").arg(label, value);
}

} // namespace

void TestNumericSettings::everySettingOfTheTablesIsANumber_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("label");
    QTest::addColumn<bool>("isJ1939");
    const QList<Setting> general = generalSettings();
    for (const Setting &setting : general)
        QTest::newRow(setting.key) << QString(setting.key) << QString(setting.label) << false;
    for (const Setting &setting : j1939Settings)
        QTest::newRow(setting.key) << QString(setting.key) << QString(setting.label) << true;
}

void TestNumericSettings::everySettingOfTheTablesIsANumber()
{
    QFETCH(QString, key);
    QFETCH(QString, label);
    QFETCH(bool, isJ1939);
    const Project project;
    for (const char *valid : {"", "5", "0x1F", "1, 2 ,3", ",", "  ", "1000000"}) {
        if (key == "sdo_blocktransfer_block_size" && QString(valid) == "1000000")
            continue;
        isJ1939 ? project.setJ1939(key, valid) : project.set(key, valid);
        compare(Checker().checkProject(project), {});
    }
    for (const char *text : {"abc", "1.5", "0x", "5 6", "$nodeid", "ä"}) {
        isJ1939 ? project.setJ1939(key, text) : project.set(key, text);
        compare(Checker().checkProject(project), {nonNumeric(label, text)});
    }
}

void TestNumericSettings::eachPartOfAListIsTold_data()
{
    const auto pdo = [](const char *value) {
        return nonNumeric(QStringLiteral("PDO Event"), QString(value));
    };
    const auto list = [](const char *value) { return [=](Project &p) { p.set("event_pdo", value); }; };
    addRows({
        {"second of two", list("1,a"), {pdo("a")}},
        {"both", list("a,b"), {pdo("a"), pdo("b")}},
        {"the same twice", list("a,a"), {pdo("a"), pdo("a")}},
        {"blanks are cut", list(" a b , 1"), {pdo("a b")}},
        {"empty parts", list(",,x,"), {pdo("x")}},
        {"empty parts alone", list(",, ,"), {}},
        {"negative", list("-1"), {pdo("-1")}},
        {"node-ID", list("$NODEID"), {}},
        {"semicolons", list("1;2"), {pdo("1;2")}},
        {"marks of rich text", list("<b>1"), {pdo("&lt;b&gt;1")}},
    });
}

void TestNumericSettings::theSleepTimeIsSigned_data()
{
    const auto sleep = [](const char *value) { return [=](Project &p) { p.set("sleep_wait_time", value); }; };
    const QString label = "Sleep Mode Waiting Time (ms)";
    addRows({
        {"negative", sleep("-1"), {}},
        {"beyond signed 32 bits", sleep("3000000000"), {nonNumeric(label, "3000000000")}},
        {"node-ID", sleep("$NODEID"), {nonNumeric(label, "$NODEID")}},
    });
}

void TestNumericSettings::bootloadersSetTheirUdsNumbersAtRunTime_data()
{
    QTest::addColumn<QString>("bootloader");
    QTest::addColumn<bool>("isChecked");
    QTest::newRow("bootloader") << "1" << false;
    QTest::newRow("none") << "0" << true;
    QTest::newRow("never set") << "" << true;
    QTest::newRow("another text") << "01" << true;
}

void TestNumericSettings::bootloadersSetTheirUdsNumbersAtRunTime()
{
    QFETCH(QString, bootloader);
    QFETCH(bool, isChecked);
    const Project project;
    project.set("uds_bl_setting", bootloader);
    QStringList messages;
    for (const Setting &setting : udsSettings) {
        project.set(setting.key, "function()");
        if (isChecked)
            messages += nonNumeric(setting.label, "function()");
    }
    project.set("event_led", "x");
    messages.prepend(nonNumeric("LED Event", "x"));
    project.setJ1939("startaddress", "x");
    messages += nonNumeric("Address (start address)", "x");
    compare(Checker().checkProject(project), messages);
}

void TestNumericSettings::theTablesAreWalkedInTheirOrder()
{
    const Project project;
    QStringList messages;
    const QList<Setting> general = generalSettings();
    for (const Setting &setting : general) {
        project.set(setting.key, "x");
        messages += nonNumeric(setting.label, "x");
    }
    for (const Setting &setting : j1939Settings) {
        project.setJ1939(setting.key, "x");
        messages += nonNumeric(setting.label, "x");
    }
    compare(Checker().checkProject(project), messages);
}

void TestNumericSettings::j1939NumbersAreThoseOfTheJ1939Settings()
{
    const Project project;
    for (const Setting &setting : j1939Settings)
        project.set(setting.key, "x");
    const QList<Setting> general = generalSettings();
    for (const Setting &setting : general)
        project.setJ1939(setting.key, "x");
    compare(Checker().checkProject(project), {});
}

QTEST_GUILESS_MAIN(TestNumericSettings)
#include "tst_numericsettings.moc"
