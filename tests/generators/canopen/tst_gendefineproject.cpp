#include "DefineDesk.h"

using namespace Qt::StringLiterals;

namespace {

/** The hardware section. */
QString hardwareOf(DefineDesk &desk, bool v4 = true)
{
    return desk.text(v4)
        .section(u"/* Hardware settings */\n"_s, 1)
        .section(u"/* COB Definitions */\n"_s, 0, 0);
}

void addTargets(DefineDesk &desk, int count)
{
    desk.set(u"co_timer_interval"_s, u"5000"_s);
    desk.set(u"targetsettings_cnt"_s, QString::number(count));
    desk.set(u"targetsettings_0_targetid"_s, u"TARGET_ARM"_s);
    desk.set(u"targetsettings_0_name"_s, u"Cortex */ M4"_s);
    desk.set(u"targetsettings_0_timer"_s, u"1000"_s);
    desk.set(u"targetsettings_0_endianess"_s, u"0"_s);
    desk.set(u"targetsettings_0_fullcan"_s, u"1"_s);
    desk.set(u"targetsettings_0_groupfilter"_s, u"1"_s);
    desk.set(u"targetsettings_0_defines"_s, u"#define ARM 1"_s);
    desk.set(u"targetsettings_1_name"_s, u"PowerPC"_s);
    desk.set(u"targetsettings_1_timer"_s, u"2000"_s);
    desk.set(u"targetsettings_1_endianess"_s, u"1"_s);
    desk.set(u"targetsettings_1_fullcan"_s, u"0"_s);
    desk.set(u"targetsettings_1_groupfilter"_s, u"0"_s);
}

} // namespace

/** What does not belong to one protocol: buffers, virtual objects, hardware, defines of the user. */
class TestGenDefineProject : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void userMessagesNeedTheExtension_data();
    void userMessagesNeedTheExtension();
    void theBufferSectionHasItsSwitches();
    void canFdIsSupportedWhereItIsOn();
    void theOtherProtocolsHaveTheirHeadings_data();
    void theOtherProtocolsHaveTheirHeadings();
    void aJ1939ServerTellsOfItsLimits_data();
    void aJ1939ServerTellsOfItsLimits();
    void linesWithoutCANopenAreCounted();
    void aBootloaderHasBuffers_data();
    void aBootloaderHasBuffers();
    void virtualObjectsAreCounted();
    void virtualObjectsNeedTheirSetting();
    void oneTargetHasTheProjectsSettings();
    void anOrdinaryTargetHasTheInterval();
    void theIntervalMayBeAName_data();
    void theIntervalMayBeAName();
    void allTargetsStandBehindTheirNames();
    void theActiveTargetIsDefined_data();
    void theActiveTargetIsDefined();
    void severalTargetsWithoutAnActiveOneAreOne_data();
    void severalTargetsWithoutAnActiveOneAreOne();
    void aTargetWithoutAnIntervalHasTheProjectsOne();
    void targetNamesAreMacroNames_data();
    void targetNamesAreMacroNames();
    void theSrdoIntervalStandsBehindTheTargets();
    void userDefinesStandBetweenTheirComments_data();
    void userDefinesStandBetweenTheirComments();
    void generationsAreCounted_data();
    void generationsAreCounted();
    void theConnectionSetIsOverwrittenOnAnyLine_data();
    void theConnectionSetIsOverwrittenOnAnyLine();
};

void TestGenDefineProject::userMessagesNeedTheExtension_data()
{
    QTest::addColumn<QString>("transmit");
    QTest::addColumn<QString>("receive");
    QTest::addColumn<QString>("counts"); // empty for none
    QTest::newRow("both") << u"3"_s << u"4"_s << u"3u 4u"_s;
    QTest::newRow("transmit") << u"3"_s << QString() << u"3u 0u"_s;
    QTest::newRow("receive") << u"0"_s << u"4"_s << u"0u 4u"_s;
    QTest::newRow("neither") << u"0"_s << QString() << QString();
    QTest::newRow("no numbers") << u"a"_s << u"b"_s << QString();
}

void TestGenDefineProject::userMessagesNeedTheExtension()
{
    QFETCH(QString, transmit);
    QFETCH(QString, receive);
    QFETCH(QString, counts);
    DefineDesk desk({4});
    desk.set(u"user_tx_cob"_s, transmit);
    desk.set(u"user_rx_cob"_s, receive);
    const QString text = u"#define USER_TRANSMIT_MSG_CNT\t%1\n#define USER_RECEIVE_MSG_CNT\t%2\n"
                         "#define CORE_USER_EXTENSION_SUPPORTED\t1u\n"_s;
    if (counts.isEmpty())
        QVERIFY(!desk.text().contains(u"USER_"_s));
    else
        QVERIFY(desk.text().contains(text.arg(counts.section(u' ', 0, 0), counts.section(u' ', 1))));
}

void TestGenDefineProject::theBufferSectionHasItsSwitches()
{
    DefineDesk desk({1});
    desk.set(u"receivebuffersize"_s, u"20"_s);
    desk.set(u"transmitbuffersize"_s, u"15"_s);
    const QString queues = u"/* Definition of CAN queue sizes */\n#define CORE_CONFIG_REC_BUFFER_CNT\t20u\n"
                           "#define CORE_CONFIG_TRANS_BUFFER_CNT\t15u\n"_s;
    QVERIFY(desk.text().contains(queues));
    QVERIFY(!desk.text().contains(u"SORTED_LIST"_s));
    QVERIFY(!desk.text().contains(u"ONE_HB"_s));
    desk.set(u"sorted_coblist"_s, u"1"_s);
    desk.set(u"only_one_hb_buffer"_s, u"1"_s);
    const QString switches = u"/* Use of sorted COB list*/\n#define CORE_COB_SORTED_LIST\t1u\n"
                             "#define CO_ONE_HB_CONSUMER_COB\t1u\n"_s;
    QVERIFY(desk.text().contains(QString(switches + queues)));
    QVERIFY(desk.text(false).contains(QString(switches + queues).replace(u"CORE_"_s, u"CO_"_s)));
}

void TestGenDefineProject::canFdIsSupportedWhereItIsOn()
{
    for (const int type : {1, 2, 4}) {
        DefineDesk desk({type});
        QVERIFY(!desk.text().contains(u"CANFD"_s));
        desk.set(u"canfd_supported"_s, u"1"_s);
        QCOMPARE(desk.define(u"CORE_CANFD_SUPPORTED"_s), u"#define CORE_CANFD_SUPPORTED\t1u"_s);
        QCOMPARE(desk.define(u"CO_CANFD_SUPPORTED"_s, false), u"#define CO_CANFD_SUPPORTED\t1u"_s);
    }
}

void TestGenDefineProject::theOtherProtocolsHaveTheirHeadings_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QStringList>("headings");
    const QString j1939 = u"/* J1939 Defines */"_s;
    const QString raw = u"/* CAN RAW Defines */"_s;
    const QString isoTp = u"/* ISO-TP Defines */"_s;
    QTest::newRow("CANopen") << 1 << QString() << QStringList();
    QTest::newRow("J1939") << 2 << QString() << QStringList{j1939};
    QTest::newRow("raw CAN") << 4 << QString() << QStringList{raw};
    QTest::newRow("CANopen and J1939") << 5 << QString() << QStringList{j1939};
    QTest::newRow("CANopen and raw CAN") << 6 << QString() << QStringList{raw};
    QTest::newRow("J1939 and raw CAN") << 7 << QString() << QStringList{j1939, raw};
    for (const char *key : {"isotp_supported", "udsserver_supported", "udsclient_supported"})
        QTest::newRow(key) << 7 << QString::fromLatin1(key) << QStringList{j1939, raw, isoTp};
}

void TestGenDefineProject::theOtherProtocolsHaveTheirHeadings()
{
    QFETCH(int, type);
    QFETCH(QString, setting);
    DefineDesk desk({type});
    if (!setting.isEmpty())
        desk.set(setting, u"1"_s);
    QStringList lines = desk.lines();
    lines = lines.sliced(lines.indexOf(u"/* Definition of CAN queue sizes */"_s) + 1);
    lines = lines.first(lines.indexOf(u"/* Hardware settings */"_s));
    QTEST(lines.filter(u"Defines */"_s), "headings");
    for (qsizetype i = 1; i < lines.size(); ++i)
        if (lines.at(i).contains(u"RAW"_s) || lines.at(i).contains(u"ISO-TP"_s))
            QCOMPARE(lines.at(i - 1), QString());
}

/** What stands between the heading of the J1939 section and that of the hardware. */
static QString j1939Section(DefineDesk &desk, bool v4 = true)
{
    return desk.text(v4).section(u"/* J1939 Defines */\n"_s, 1).section(u"/* Hardware settings */"_s, 0, 0);
}

void TestGenDefineProject::aJ1939ServerTellsOfItsLimits_data()
{
    QTest::addColumn<QList<int>>("types");
    QTest::addColumn<QString>("server");
    QTest::addColumn<QString>("limitCheck");
    QTest::addColumn<QString>("section");
    const QString limits = u"#define CO_CONFIG_LIMIT_CHECK\t1u\n"_s;
    QTest::newRow("server") << QList<int>{2} << u"1"_s << u"1"_s << limits;
    QTest::newRow("without limits") << QList<int>{2} << u"1"_s << u"0"_s << QString();
    QTest::newRow("without a server") << QList<int>{2} << u"0"_s << u"1"_s << QString();
    QTest::newRow("beside raw CAN") << QList<int>{7} << u"1"_s << u"1"_s << u"\n/* CAN RAW Defines */\n"_s;
    QTest::newRow("beside CANopen, whose services tell") << QList<int>{5} << u"1"_s << u"1"_s << QString();
    QTest::newRow("several lines")
        << QList<int>{2, 2} << u"1"_s << u"1"_s
        << QString(u"#define CAN_MULTI_LINE\t1u\n#define CAN_MULTI_LINE_CNT\t2u\n"_s + limits);
}

void TestGenDefineProject::aJ1939ServerTellsOfItsLimits()
{
    QFETCH(QList<int>, types);
    QFETCH(QString, server);
    QFETCH(QString, limitCheck);
    DefineDesk desk(types);
    desk.setJ1939(u"cia510serversupport"_s, server);
    desk.set(u"limit_check"_s, limitCheck);
    QTEST(j1939Section(desk), "section");
}

void TestGenDefineProject::linesWithoutCANopenAreCounted()
{
    DefineDesk desk({2, 2, 2});
    const QString lines = u"#define CAN_MULTI_LINE\t1u\n#define CAN_MULTI_LINE_CNT\t3u\n"_s;
    QCOMPARE(j1939Section(desk), lines);
    QCOMPARE(j1939Section(desk, false), QString(lines + u"#define CO_MULTI_LINE_CNT\t3u\n"_s));
    QCOMPARE(DefineDesk({1, 2}).text().count(u"#define CAN_MULTI_LINE_CNT\t2u\n"_s), 1);
}

void TestGenDefineProject::aBootloaderHasBuffers_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("bootloader");
    QTest::addColumn<QString>("sizes"); // "" where the items are missing
    QTest::addColumn<QString>("expected");
    QTest::newRow("sizes of the project") << 4 << u"1"_s << u"30,20"_s << u"30u 20u"_s;
    QTest::newRow("usual sizes") << 4 << u"1"_s << QString() << u"10u 5u"_s;
    QTest::newRow("no boot loader") << 4 << u"0"_s << u"30,20"_s << u" "_s;
    QTest::newRow("the buffers of a CANopen line") << 1 << u"1"_s << u"30,20"_s << u"30u 20u"_s;
}

void TestGenDefineProject::aBootloaderHasBuffers()
{
    QFETCH(int, type);
    QFETCH(QString, bootloader);
    QFETCH(QString, sizes);
    QFETCH(QString, expected);
    DefineDesk desk({type});
    desk.set(u"uds_bl_setting"_s, bootloader);
    if (!sizes.isEmpty()) {
        desk.set(u"receivebuffersize"_s, sizes.section(u',', 0, 0));
        desk.set(u"transmitbuffersize"_s, sizes.section(u',', 1));
    }
    QCOMPARE(desk.value(u"CORE_REC_BUFFER_COUNTS"_s), expected.section(u' ', 0, 0));
    QCOMPARE(desk.value(u"CORE_TR_BUFFER_COUNTS"_s), expected.section(u' ', 1));
    QVERIFY(desk.text().count(u"CORE_REC_BUFFER_COUNTS"_s) <= 1);
    if (bootloader == "1"_L1) // the queues of its only line
        QCOMPARE(QString(desk.value(u"CORE_CONFIG_REC_BUFFER_CNT"_s) + u' '
                         + desk.value(u"CORE_CONFIG_TRANS_BUFFER_CNT"_s)),
                 expected);
}

void TestGenDefineProject::virtualObjectsAreCounted()
{
    DefineDesk desk({1, 1});
    desk.set(u"special_virtual_objects"_s, u"1"_s);
    QList<DefineSub> subs{{.number = 0, .datatype = 5}};
    const QList<int> types{5, 1, 6, 7, 7, 2, 3, 4, 8, 22, 9, 15};
    for (int i = 0; i < types.size(); ++i)
        subs.append({.number = quint8(i + 1), .datatype = types.at(i), .implementation = 3});
    desk.object(0, 0x2000, subs);
    desk.object(0, 0x2001, {{.number = 0, .datatype = 7, .implementation = 3}});
    desk.object(0, 0x2002);
    desk.object(1, 0x2000,
                {{.number = 0, .datatype = 6, .implementation = 3, .isShared = true},
                 {.number = 1, .datatype = 6, .implementation = 3}});
    QVERIFY(desk.text().contains(u"/* number of virtual objects */\n"
                                 "#define CO_VIRTUAL_INDEX_CNT\t3u\n"
                                 "#define CO_VIRTUAL_U8_CNT\t2u\n"
                                 "#define CO_VIRTUAL_U16_CNT\t2u\n"
                                 "#define CO_VIRTUAL_U32_CNT\t3u\n"
                                 "#define CO_VIRTUAL_I8_CNT\t1u\n"
                                 "#define CO_VIRTUAL_I16_CNT\t1u\n"
                                 "#define CO_VIRTUAL_I32_CNT\t1u\n"
                                 "#define CO_VIRTUAL_R32_CNT\t1u\n"
                                 "#define CO_VIRTUAL_U24_CNT\t1u\n"
                                 "#define CO_VOD_ASSIGN_CNT\t3u\n"
                                 "#define CO_VOBJ_DESC_CNT\t14u\n"
                                 "/* Hardware settings */\n"_s));
}

void TestGenDefineProject::virtualObjectsNeedTheirSetting()
{
    DefineDesk desk;
    desk.object(0, 0x2001, {{.number = 0, .implementation = 3}});
    QVERIFY(!desk.text().contains(u"virtual"_s, Qt::CaseInsensitive));
    desk.set(u"special_virtual_objects"_s, u"0"_s);
    QVERIFY(!desk.text().contains(u"virtual"_s, Qt::CaseInsensitive));
    desk.set(u"special_virtual_objects"_s, u"1"_s);
    QCOMPARE(desk.value(u"CO_VIRTUAL_INDEX_CNT"_s), u"1u"_s);
    DefineDesk without;
    without.set(u"special_virtual_objects"_s, u"1"_s);
    without.object(0, 0x2001);
    QVERIFY(!without.text().contains(u"virtual"_s, Qt::CaseInsensitive));
}

void TestGenDefineProject::oneTargetHasTheProjectsSettings()
{
    DefineDesk desk;
    desk.set(u"targetsettings_cnt"_s, u"1"_s);
    desk.set(u"all_targets"_s, u"1"_s);
    desk.set(u"targetsettings_0_timer"_s, u"1"_s); // not heeded
    desk.set(u"co_timer_interval"_s, u"10000"_s);
    desk.set(u"endian"_s, u"1"_s);
    desk.set(u"drv_filter"_s, u"1"_s);
    desk.set(u"hw_defines"_s, u"#define A 1\r\n#define B 2"_s);
    QCOMPARE(hardwareOf(desk),
             u"#define CORE_TIMER_INTERVAL\t10000u\n#define CORE_BIG_ENDIAN\t1u\n"
             "#define CORE_DRV_FILTER\t1u\n\n/* target-specific defines */\n"
             "#define A 1\n#define B 2\n"_s);
    QCOMPARE(hardwareOf(desk, false),
             u"#define CO_TIMER_INTERVAL\t10000u\n#define CO_BIG_ENDIAN\t1u\n"
             "#define CO_DRV_FILTER\t1u\n\n/* target-specific defines */\n"
             "#define A 1\n#define B 2\n"_s);
}

void TestGenDefineProject::anOrdinaryTargetHasTheInterval()
{
    DefineDesk desk;
    desk.set(u"co_timer_interval"_s, u"1000"_s);
    desk.set(u"endian"_s, u"0"_s);
    desk.set(u"drv_filter"_s, u"0"_s);
    QCOMPARE(hardwareOf(desk), u"#define CORE_TIMER_INTERVAL\t1000u\n"_s);
}

void TestGenDefineProject::theIntervalMayBeAName_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QString>("value");
    QTest::newRow("number") << u"10000"_s << u"10000u"_s;
    QTest::newRow("hexadecimal") << u"0x2710"_s << u"0x2710u"_s;
    QTest::newRow("with suffix") << u"10000ul"_s << u"10000ul"_s;
    QTest::newRow("name") << u"MY_INTERVAL"_s << u"MY_INTERVAL"_s;
    QTest::newRow("calculation") << u"(10 *\n 1000)"_s << u"(10 * 1000)"_s;
    QTest::newRow("missing") << QString() << u"0u"_s;
}

void TestGenDefineProject::theIntervalMayBeAName()
{
    QFETCH(QString, setting);
    DefineDesk desk;
    desk.set(u"co_timer_interval"_s, setting);
    QTEST(desk.value(u"CORE_TIMER_INTERVAL"_s), "value");
}

void TestGenDefineProject::allTargetsStandBehindTheirNames()
{
    DefineDesk desk;
    addTargets(desk, 2);
    desk.set(u"all_targets"_s, u"1"_s);
    QCOMPARE(hardwareOf(desk),
             u"#ifdef TARGET_ARM\n/* Cortex * / M4 */\n#define CORE_TIMER_INTERVAL\t1000u\n"
             "#define CORE_DRV_FILTER\t1u\n#define CORE_DRV_GROUP_FILTER\t1u\n"
             "#define ARM 1\n#endif /* TARGET_ARM */ \n\n"
             "#ifdef TARGET_1\n/* PowerPC */\n#define CORE_TIMER_INTERVAL\t2000u\n"
             "#define CORE_BIG_ENDIAN\t1u\n#endif /* TARGET_1 */ \n\n"_s);
    QVERIFY(hardwareOf(desk, false).contains(u"#define CO_DRV_GROUP_FILTER\t1u\n"_s));
}

void TestGenDefineProject::theActiveTargetIsDefined_data()
{
    QTest::addColumn<QString>("active");
    QTest::addColumn<QString>("section");
    QTest::newRow("first") << u"0"_s
                           << u"#define TARGET_ARM\t1u\n#define CORE_TIMER_INTERVAL\t1000u\n"
                              "#define CORE_DRV_FILTER\t1u\n#define CORE_DRV_GROUP_FILTER\t1u\n"
                              "\n/* target-specific defines */\n#define ARM 1\n"_s;
    QTest::newRow("second") << u"1"_s
                            << u"#define TARGET_1\t1u\n#define CORE_TIMER_INTERVAL\t2000u\n"
                               "#define CORE_BIG_ENDIAN\t1u\n"_s;
}

void TestGenDefineProject::theActiveTargetIsDefined()
{
    QFETCH(QString, active);
    DefineDesk desk;
    addTargets(desk, 2);
    desk.set(u"targetsettings_active"_s, active);
    QTEST(hardwareOf(desk), "section");
}

void TestGenDefineProject::severalTargetsWithoutAnActiveOneAreOne_data()
{
    QTest::addColumn<QString>("active");
    for (const QString &none : {u"2"_s, u"-1"_s, QString()})
        QTest::addRow("active %s", qPrintable(none)) << none;
}

void TestGenDefineProject::severalTargetsWithoutAnActiveOneAreOne()
{
    QFETCH(QString, active);
    DefineDesk desk;
    addTargets(desk, 2);
    desk.set(u"targetsettings_active"_s, active);
    QCOMPARE(hardwareOf(desk), u"#define CORE_TIMER_INTERVAL\t5000u\n"_s);
}

void TestGenDefineProject::aTargetWithoutAnIntervalHasTheProjectsOne()
{
    DefineDesk desk;
    addTargets(desk, 3);
    desk.set(u"targetsettings_active"_s, u"2"_s);
    QCOMPARE(hardwareOf(desk), u"#define TARGET_2\t1u\n#define CORE_TIMER_INTERVAL\t5000u\n"_s);
}

void TestGenDefineProject::targetNamesAreMacroNames_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QString>("macro");
    QTest::newRow("name") << u"STM32_F4"_s << u"STM32_F4"_s;
    QTest::newRow("blanks around") << u" STM32 "_s << u"STM32"_s;
    QTest::newRow("other characters") << u"STM-32 F4/ä"_s << u"STM_32_F4__"_s;
    QTest::newRow("a digit first") << u"32BIT"_s << u"_32BIT"_s;
    QTest::newRow("empty") << u" "_s << u"TARGET_0"_s;
}

void TestGenDefineProject::targetNamesAreMacroNames()
{
    QFETCH(QString, id);
    QFETCH(QString, macro);
    DefineDesk desk;
    addTargets(desk, 2);
    desk.set(u"targetsettings_active"_s, u"0"_s);
    desk.set(u"targetsettings_0_targetid"_s, id);
    QCOMPARE(desk.define(macro), u"#define %1\t1u"_s.arg(macro));
}

void TestGenDefineProject::theSrdoIntervalStandsBehindTheTargets()
{
    DefineDesk desk;
    desk.set(u"co_timer_interval"_s, u"1000"_s);
    desk.set(u"hw_defines"_s, u"#define A 1\n"_s);
    desk.set(u"co_srdo_interval"_s, u"500"_s);
    QVERIFY(hardwareOf(desk).endsWith(u"#define A 1\n#define CO_SRDO_TIMER_INTERVAL\t500u\n"_s));
}

void TestGenDefineProject::userDefinesStandBetweenTheirComments_data()
{
    QTest::addColumn<QString>("defines");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << QString() << QString();
    QTest::newRow("one line") << u"#define A 1"_s << u"#define A 1\n"_s;
    QTest::newRow("ended lines") << u"#define A 1\n#define B 2\n"_s << u"#define A 1\n#define B 2\n"_s;
    QTest::newRow("other line ends") << u"#define A 1\r\n#define B 2\r#define C 3\u2029"_s
                                     << u"#define A 1\n#define B 2\n#define C 3\n"_s;
    QTest::newRow("a continued last line draws nothing in") << u"#define A 1 \\"_s << u"#define A 1 \\\n\n"_s;
    QTest::newRow("blanks behind a backslash go, as compilers warn of them")
        << u"#define A \\ \t\n 1\n#define B 2 \\ "_s << u"#define A \\\n 1\n#define B 2 \\\n\n"_s;
    QTest::newRow("words of the stack stay")
        << u"#define CORE_X CORE_Y /* Größe */"_s << u"#define CORE_X CORE_Y /* Größe */\n"_s;
}

void TestGenDefineProject::userDefinesStandBetweenTheirComments()
{
    QFETCH(QString, defines);
    QFETCH(QString, text);
    DefineDesk desk({4});
    desk.set(u"user_defines"_s, defines);
    for (const bool v4 : {true, false}) {
        if (text.isEmpty())
            QVERIFY(!desk.text(v4).contains(u"application-specific"_s));
        else
            QVERIFY(desk.text(v4).contains(
                QString(u"/* application-specific defines as defined in NodeSmith */\n"_s + text
                        + u"/* end of application-specific defines */\n"_s)));
    }
}

void TestGenDefineProject::generationsAreCounted_data()
{
    QTest::addColumn<QString>("isOn");
    QTest::addColumn<QString>("count");
    QTest::addColumn<QString>("define");
    QTest::newRow("on") << u"1"_s << u"42"_s << u"#define GEN_GENERATION_COUNT\t42u"_s;
    QTest::newRow("none yet") << u"1"_s << QString() << u"#define GEN_GENERATION_COUNT\t0u"_s;
    QTest::newRow("off") << u"0"_s << u"42"_s << QString();
}

void TestGenDefineProject::generationsAreCounted()
{
    QFETCH(QString, isOn);
    QFETCH(QString, count);
    DefineDesk desk;
    desk.set(u"generate_generation_counter"_s, isOn);
    if (!count.isEmpty())
        desk.set(u"lvx_generation_count"_s, count);
    QTEST(desk.define(u"GEN_GENERATION_COUNT"_s), "define");
}

void TestGenDefineProject::theConnectionSetIsOverwrittenOnAnyLine_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<bool>("overwritten");
    QTest::newRow("no line") << u"0,0"_s << false;
    QTest::newRow("first line") << u"1,0"_s << true;
    QTest::newRow("second line") << u"0,1"_s << true;
    QTest::newRow("all lines") << u"1"_s << true;
    QTest::newRow("missing") << QString() << false;
}

void TestGenDefineProject::theConnectionSetIsOverwrittenOnAnyLine()
{
    QFETCH(QString, setting);
    QFETCH(bool, overwritten);
    DefineDesk desk({1, 1});
    desk.set(u"overwrite_predef"_s, setting);
    QCOMPARE(desk.define(u"GEN_OVERWRITE_PREDEF_CONN_SET"_s),
             overwritten ? u"#define GEN_OVERWRITE_PREDEF_CONN_SET\t1u"_s : QString());
}

QTEST_GUILESS_MAIN(TestGenDefineProject)
#include "tst_gendefineproject.moc"
