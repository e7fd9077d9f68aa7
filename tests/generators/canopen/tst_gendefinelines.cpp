#include "DefineDesk.h"
#include "generators/canopen/ObjectDictionaryView.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/** One row of the table of numbers per line: what line 1 of two has to be given, and its number. */
struct Case
{
    const char *macro;
    const char *name;
    void (*build)(DefineDesk &desk, quint8 line);
    int number;
};

const Case cases[] = {
    {"CO_TXPDO_COUNTS", "both ends",
     [](DefineDesk &desk, quint8 line) {
         desk.object(line, 0x1800);
         desk.object(line, 0x19FF);
         desk.object(line, 0x1A00);
     },
     2},
    {"CO_RXPDO_COUNTS", "both ends",
     [](DefineDesk &desk, quint8 line) {
         desk.object(line, 0x1400);
         desk.object(line, 0x15FF);
         desk.object(line, 0x1600);
     },
     2},
    {"CO_SSDO_COUNTS", "both ends",
     [](DefineDesk &desk, quint8 line) {
         desk.object(line, 0x1200);
         desk.object(line, 0x127F);
     },
     2},
    {"CO_SSDO_COUNTS", "the default server", [](DefineDesk &desk, quint8 line) { desk.object(line, 0x1000); },
     1},
    {"CO_SSDO_COUNTS", "no device type", [](DefineDesk &, quint8) {}, 0},
    {"CO_CSDO_COUNTS", "both ends",
     [](DefineDesk &desk, quint8 line) {
         desk.object(line, 0x1280);
         desk.object(line, 0x12FF);
     },
     2},
    {"CO_ASSIGN_COUNTS", "entries of 0x1F81",
     [](DefineDesk &desk, quint8 line) { desk.array(line, 0x1F81, 5); }, 5},
    {"CO_ASSIGN_COUNTS", "whatever the largest number is",
     [](DefineDesk &desk, quint8 line) {
         desk.array(line, 0x1F81, 5);
         desk.set(u"max_slave_assignment"_s, u"20"_s);
     },
     5},
    {"CO_MAX_ASSIGN_COUNTS", "entries of 0x1F81",
     [](DefineDesk &desk, quint8 line) { desk.array(line, 0x1F81, 5); }, 5},
    {"CO_MAX_ASSIGN_COUNTS", "the largest number where it is set",
     [](DefineDesk &desk, quint8 line) {
         desk.array(line, 0x1F81, 5);
         desk.set(u"max_slave_assignment"_s, u"20"_s);
     },
     20},
    {"CO_MAX_ASSIGN_COUNTS", "a largest number of 1",
     [](DefineDesk &desk, quint8 line) {
         desk.array(line, 0x1F81, 5);
         desk.set(u"max_slave_assignment"_s, u"1"_s);
     },
     1},
    {"CO_MAX_ASSIGN_COUNTS", "a largest number of 0",
     [](DefineDesk &desk, quint8 line) {
         desk.array(line, 0x1F81, 5);
         desk.set(u"max_slave_assignment"_s, u"0"_s);
     },
     5},
    {"CO_MAX_ASSIGN_COUNTS", "nothing without the object",
     [](DefineDesk &desk, quint8) { desk.set(u"max_slave_assignment"_s, u"20"_s); }, 0},
    {"CO_ERR_CTRL_COUNTS", "entries of 0x1016",
     [](DefineDesk &desk, quint8 line) { desk.array(line, 0x1016, 4); }, 4},
    {"CO_ERR_HIST_COUNTS", "entries of 0x1003",
     [](DefineDesk &desk, quint8 line) { desk.array(line, 0x1003, 8); }, 8},
    {"CO_ACT_ERR_HIST_COUNTS", "as the history where nothing else is told",
     [](DefineDesk &desk, quint8 line) { desk.array(line, 0x1003, 8); }, 8},
    {"CO_ACT_ERR_HIST_COUNTS", "entries of 0x1032",
     [](DefineDesk &desk, quint8 line) {
         desk.array(line, 0x1003, 8);
         desk.array(line, 0x1032, 3);
     },
     3},
    {"CO_EMCY_CONS_COUNTS", "entries of 0x1028",
     [](DefineDesk &desk, quint8 line) { desk.array(line, 0x1028, 6); }, 6},
};

} // namespace

/** Line settings: buffers, objects and the lists with one number per line. */
class TestGenDefineLines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void everyListHasTheNumberOfItsLine_data();
    void everyListHasTheNumberOfItsLine();
    void everyListHasOneNumberPerLine();
    void objectsBesideTheRangesAreNotCounted();
    void objectsAreThoseOfTheAssignmentTable();
    void aSharedObjectNeedsItsOwnerOnLine0();
    void storeEntriesAreTheMostOfAnyObject_data();
    void storeEntriesAreTheMostOfAnyObject();
    void bufferSizesAreListedPerLine_data();
    void bufferSizesAreListedPerLine();
    void sdoOverJ1939CountsAsOne_data();
    void sdoOverJ1939CountsAsOne();
    void leftoverObjectsOfAJ1939LineNeedNoServer();
    void nodeIdsAreListed_data();
    void nodeIdsAreListed();
    void theNetworkIdStandsWhereItIsSet();
    void severalLinesAreTold_data();
    void severalLinesAreTold();
    void theMultiLineFormCanBeAskedFor();
    void aProjectWithoutCANopenHasNoLineSettings();
    void theOrderIsTheOneTold();
    void theNumbersAgreeWithTheObjectDictionary();
};

void TestGenDefineLines::everyListHasTheNumberOfItsLine_data()
{
    QTest::addColumn<int>("row");
    for (std::size_t i = 0; i < std::size(cases); ++i)
        QTest::addRow("%s, %s", cases[i].macro, cases[i].name) << int(i);
}

void TestGenDefineLines::everyListHasTheNumberOfItsLine()
{
    QFETCH(int, row);
    const Case &data = cases[row];
    const QString macro = QString::fromLatin1(data.macro);
    DefineDesk one;
    data.build(one, 0);
    QCOMPARE(one.define(macro), u"#define %1\t%2u"_s.arg(macro).arg(data.number));
    DefineDesk two({1, 1});
    data.build(two, 1);
    QCOMPARE(two.define(macro), u"#define %1\t0u, %2u"_s.arg(macro).arg(data.number));
}

void TestGenDefineLines::everyListHasOneNumberPerLine()
{
    DefineDesk desk({1, 1, 4});
    desk.set(u"usdo_server_enabled"_s, u"1"_s);
    desk.set(u"usdo_server_cnt"_s, u"2"_s);
    desk.set(u"usdo_client_enabled"_s, u"1"_s);
    desk.set(u"usdo_client_cnt"_s, u"2"_s);
    desk.object(1, 0x1301);
    desk.array(0, 0x1F2C, 2);
    int lists = 0;
    const QStringList lines = desk.lines();
    for (const QString &line : lines) {
        if (!line.startsWith(u"#define "_s) || !line.contains(u"COUNTS"_s)
            || line.startsWith(u"#define CO_GUARDING_COUNTS"_s))
            continue;
        ++lists;
        QCOMPARE(line.count(u", "_s), 2);
    }
    QCOMPARE(lists, 18);
    QCOMPARE(desk.value(u"CO_NODE_IDS"_s).count(u','), 2);
    QCOMPARE(desk.value(u"CO_NODE_ID_FUNCTIONS"_s).count(u','), 2);
}

void TestGenDefineLines::objectsBesideTheRangesAreNotCounted()
{
    DefineDesk desk;
    for (const quint16 index : {0x11FF, 0x1300, 0x1380, 0x13FF, 0x1600, 0x17FF, 0x1A00, 0x1BFF})
        desk.object(0, index);
    for (const char *macro : {"CO_TXPDO_COUNTS", "CO_RXPDO_COUNTS", "CO_SSDO_COUNTS", "CO_CSDO_COUNTS"})
        QCOMPARE(desk.value(QString::fromLatin1(macro)), u"0u"_s);
    QCOMPARE(desk.define(u"CO_SRDO_COUNTS"_s), QString());
}

void TestGenDefineLines::objectsAreThoseOfTheAssignmentTable()
{
    DefineDesk desk({1, 1});
    desk.objects(0, 0x2000, 3);
    desk.object(0, 0x0005); // a data type
    desk.object(0, 0x3000, {{.number = 0, .implementation = 3}}); // served by callbacks
    desk.object(0, 0x3001, {{.number = 0}, {.number = 1, .implementation = 3}});
    desk.object(0, 0x3002, {{.number = 1}}); // nothing leads to it
    desk.object(1, 0x2000);
    QVERIFY(
        desk.text().contains(u"/* Number of objects per line */\n"
                             "#define CO_OBJECTS_LINE_0_CNT\t4u\n"
                             "#define CO_OBJECTS_LINE_1_CNT\t1u\n"
                             "#define CO_OBJECT_COUNTS\tCO_OBJECTS_LINE_0_CNT, CO_OBJECTS_LINE_1_CNT\n"_s));
}

void TestGenDefineLines::aSharedObjectNeedsItsOwnerOnLine0()
{
    DefineDesk desk({1, 1});
    desk.object(0, 0x2000);
    desk.object(1, 0x2000, {{.number = 0, .isShared = true}});
    desk.object(1, 0x2001, {{.number = 0, .isShared = true}});
    QCOMPARE(desk.value(u"CO_OBJECTS_LINE_1_CNT"_s), u"1u"_s);
}

void TestGenDefineLines::storeEntriesAreTheMostOfAnyObject_data()
{
    QTest::addColumn<QList<int>>("entries"); // of 0x1010 and 0x1011 of line 0, then of line 1
    QTest::addColumn<QString>("most");
    QTest::newRow("none") << QList<int>{0, 0, 0, 0} << QString();
    QTest::newRow("store") << QList<int>{3, 1, 0, 0} << u"#define CO_STORE_CNT_MAX\t3u"_s;
    QTest::newRow("restore") << QList<int>{1, 4, 2, 2} << u"#define CO_STORE_CNT_MAX\t4u"_s;
    QTest::newRow("the other line") << QList<int>{1, 4, 2, 5} << u"#define CO_STORE_CNT_MAX\t5u"_s;
}

void TestGenDefineLines::storeEntriesAreTheMostOfAnyObject()
{
    QFETCH(QList<int>, entries);
    DefineDesk desk({1, 1});
    for (int i = 0; i < entries.size(); ++i)
        if (entries.at(i) > 0)
            desk.array(quint8(i / 2), quint16(0x1010 + i % 2), entries.at(i));
    QTEST(desk.define(u"CO_STORE_CNT_MAX"_s), "most");
}

void TestGenDefineLines::bufferSizesAreListedPerLine_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QString>("list");
    QTest::addColumn<QString>("total");
    QTest::newRow("each") << u"10,20,30"_s << u"10u, 20u, 30u"_s << u"60u"_s;
    QTest::newRow("one for all") << u"10"_s << u"10u, 10u, 10u"_s << u"30u"_s;
    QTest::newRow("a gap") << u"10, ,30"_s << u"10u, 0u, 30u"_s << u"40u"_s;
    QTest::newRow("missing") << QString() << u"0u, 0u, 0u"_s << u"0u"_s;
    QTest::newRow("no number") << u"ten"_s << u"0u, 0u, 0u"_s << u"0u"_s;
}

void TestGenDefineLines::bufferSizesAreListedPerLine()
{
    QFETCH(QString, setting);
    DefineDesk desk({1, 1, 1});
    desk.set(u"receivebuffersize"_s, setting);
    desk.set(u"transmitbuffersize"_s, u"1,2,3"_s);
    QTEST(desk.value(u"CORE_REC_BUFFER_COUNTS"_s), "list");
    QCOMPARE(desk.value(u"CORE_TR_BUFFER_COUNTS"_s), u"1u, 2u, 3u"_s);
    QTEST(desk.value(u"CORE_CONFIG_REC_BUFFER_CNT"_s), "total");
    QCOMPARE(desk.value(u"CORE_CONFIG_TRANS_BUFFER_CNT"_s), u"6u"_s);
    QTEST(desk.value(u"CO_REC_BUFFER_COUNTS"_s, false), "list");
}

void TestGenDefineLines::sdoOverJ1939CountsAsOne_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("macro");
    QTest::addColumn<QString>("counts"); // of lines of types 1, 5 and 2
    for (const auto &[key, macro] : {std::pair(u"cia510serversupport"_s, u"CO_SSDO_COUNTS"_s),
                                     std::pair(u"cia510clientsupport"_s, u"CO_CSDO_COUNTS"_s)}) {
        QTest::addRow("%s off", qPrintable(key)) << u"0"_s << key << macro << u"0u, 0u, 0u"_s;
        QTest::addRow("%s on", qPrintable(key)) << u"1"_s << key << macro << u"0u, 1u, 1u"_s;
        QTest::addRow("%s per line", qPrintable(key)) << u"1,0,1"_s << key << macro << u"0u, 0u, 1u"_s;
    }
}

void TestGenDefineLines::sdoOverJ1939CountsAsOne()
{
    QFETCH(QString, setting);
    QFETCH(QString, key);
    QFETCH(QString, macro);
    DefineDesk desk({1, 5, 2});
    desk.setJ1939(key, setting);
    QTEST(desk.value(macro), "counts");
}

void TestGenDefineLines::leftoverObjectsOfAJ1939LineNeedNoServer()
{
    DefineDesk desk({1, 2});
    desk.object(0, 0x1000);
    desk.object(1, 0x1000);
    QCOMPARE(desk.value(u"CO_SSDO_COUNTS"_s), u"1u, 0u"_s);
}

void TestGenDefineLines::nodeIdsAreListed_data()
{
    QTest::addColumn<QString>("ids");
    QTest::addColumn<QString>("functions");
    QTest::addColumn<QString>("idList");
    QTest::addColumn<QString>("functionList");
    QTest::newRow("both") << u"5,0x20,255"_s << u"a,b,c"_s << u"5u, 0x20u, 255u"_s << u"a, b, c"_s;
    QTest::newRow("missing lines are empty")
        << u"5"_s << u"readDip"_s << u"5u, 0u, 0u"_s << u"readDip, NULL, NULL"_s;
    QTest::newRow("gaps are empty") << u", ,7"_s << u" ,b, "_s << u"0u, 0u, 7u"_s << u"NULL, b, NULL"_s;
    QTest::newRow("nothing") << QString() << QString() << u"0u, 0u, 0u"_s << u"NULL, NULL, NULL"_s;
    QTest::newRow("a name") << u"MY_ID"_s << u"&readDip"_s << u"MY_ID, 0u, 0u"_s << u"&readDip, NULL, NULL"_s;
}

void TestGenDefineLines::nodeIdsAreListed()
{
    QFETCH(QString, ids);
    QFETCH(QString, functions);
    DefineDesk desk({1, 1, 1});
    desk.set(u"co_node_id"_s, ids);
    desk.set(u"co_node_id_fct"_s, functions);
    QTEST(desk.value(u"CO_NODE_IDS"_s), "idList");
    QTEST(desk.value(u"CO_NODE_ID_FUNCTIONS"_s), "functionList");
}

void TestGenDefineLines::theNetworkIdStandsWhereItIsSet()
{
    DefineDesk desk;
    QCOMPARE(desk.define(u"CO_NETWORK_ID"_s), QString());
    desk.set(u"co_network_id"_s, u"0x3"_s);
    QCOMPARE(desk.define(u"CO_NETWORK_ID"_s), u"#define CO_NETWORK_ID\t0x3u"_s);
}

void TestGenDefineLines::severalLinesAreTold_data()
{
    QTest::addColumn<int>("lines");
    QTest::addColumn<bool>("v4");
    QTest::addColumn<QString>("text");
    const QString one = u"/* Line Settings */\n#define CANOPEN_SUPPORTED\t1u\n"_s;
    const QString two =
        u"/* Line Settings */\n#define CAN_MULTI_LINE\t1u\n#define CAN_MULTI_LINE_CNT\t2u\n"_s;
    const QString supported = u"#define CANOPEN_SUPPORTED\t1u\n"_s;
    QTest::newRow("one, V4") << 1 << true << one;
    QTest::newRow("one, older") << 1 << false << one;
    QTest::newRow("two, V4") << 2 << true << QString(two + supported);
    QTest::newRow("two, older") << 2 << false
                                << QString(two + u"#define CO_MULTI_LINE_CNT\t2u\n"_s + supported);
}

void TestGenDefineLines::severalLinesAreTold()
{
    QFETCH(int, lines);
    QFETCH(bool, v4);
    QFETCH(QString, text);
    DefineDesk desk(QList<int>(lines, 1));
    QVERIFY(desk.text(v4).contains(text));
}

void TestGenDefineLines::theMultiLineFormCanBeAskedFor()
{
    DefineDesk desk;
    desk.store->setMiscSetting(u"generateML"_s, u"True"_s);
    QCOMPARE(desk.value(u"CAN_MULTI_LINE"_s), u"1u"_s);
    QCOMPARE(desk.value(u"CAN_MULTI_LINE_CNT"_s), u"1u"_s);
    desk.store->setMiscSetting(u"generateML"_s, u"false"_s);
    QCOMPARE(desk.define(u"CAN_MULTI_LINE"_s), QString());
}

void TestGenDefineLines::aProjectWithoutCANopenHasNoLineSettings()
{
    for (const int type : {2, 4, 7}) {
        DefineDesk desk({type});
        const QString text = desk.text();
        QVERIFY(!text.contains(u"/* Line Settings */"_s));
        QVERIFY(!text.contains(u"/* Definition of numbers of CANopen services */"_s));
        QVERIFY(!text.contains(u"CANOPEN"_s));
        QVERIFY(!text.contains(u"CORE_REC_BUFFER_COUNTS"_s));
    }
}

void TestGenDefineLines::theOrderIsTheOneTold()
{
    DefineDesk desk;
    desk.object(0, 0x1010, {{.number = 0}, {.number = 1}});
    desk.set(u"co_network_id"_s, u"1"_s);
    const QString section = desk.text()
                                .section(u"/* Line Settings */\n"_s, 1)
                                .section(u"/* Definition of numbers of CANopen services */"_s, 0, 0);
    QStringList macros;
    const QStringList lines = section.split(u'\n', Qt::SkipEmptyParts);
    for (const QString &line : lines)
        macros.append(line.startsWith(u"#define "_s) ? line.section(u' ', 1, 1).section(u'\t', 0, 0) : line);
    const QStringList expected{
        u"CANOPEN_SUPPORTED"_s,
        u"/* Number of receive/transmit buffer entries per line */"_s,
        u"CORE_REC_BUFFER_COUNTS"_s,
        u"CORE_TR_BUFFER_COUNTS"_s,
        u"/* Number of objects per line */"_s,
        u"CO_OBJECTS_LINE_0_CNT"_s,
        u"CO_OBJECT_COUNTS"_s,
        u"CO_TXPDO_COUNTS"_s,
        u"CO_RXPDO_COUNTS"_s,
        u"CO_SSDO_COUNTS"_s,
        u"CO_CSDO_COUNTS"_s,
        u"CO_ASSIGN_COUNTS"_s,
        u"CO_MAX_ASSIGN_COUNTS"_s,
        u"CO_GUARDING_COUNTS"_s,
        u"CO_ERR_CTRL_COUNTS"_s,
        u"CO_STORE_CNT_MAX"_s,
        u"CO_ERR_HIST_COUNTS"_s,
        u"CO_ACT_ERR_HIST_COUNTS"_s,
        u"CO_EMCY_CONS_COUNTS"_s,
        u"CO_NODE_IDS"_s,
        u"CO_NODE_ID_FUNCTIONS"_s,
        u"CO_NETWORK_ID"_s,
    };
    QCOMPARE(macros, expected);
    QVERIFY(section.contains(u"#define CO_GUARDING_COUNTS\tCO_MAX_ASSIGN_COUNTS\n"_s));
}

// The stack reads gen_objdict.c by these numbers.
void TestGenDefineLines::theNumbersAgreeWithTheObjectDictionary()
{
    DefineDesk desk({1, 1, 2, 1});
    for (const quint8 line : {0, 1, 3}) {
        desk.objects(line, 0x1000, 3 + line);
        desk.object(line, 0x2F00, {{.number = 0, .implementation = 3}});
        desk.object(line, 0x2F01, {{.number = 0, .implementation = 1}, {.number = 2, .implementation = 3}});
        desk.object(line, 0x2F02, {{.number = 1}});
        desk.object(line, 0x2F03, {});
        desk.object(line, 0x2F04, {{.number = 0, .implementation = 2, .isShared = true}});
        for (int pdo = 0; pdo < 4; ++pdo) {
            const QString access = (pdo + line) % 2 == 0 ? u"rw"_s : u"const"_s;
            desk.object(line, quint16(0x1400 + pdo));
            desk.object(line, quint16(0x1800 + pdo));
            desk.object(line, quint16(0x1600 + pdo), {{.number = 0, .value = u"1"_s, .access = access}});
            desk.object(line, quint16(0x1A00 + pdo),
                        {{.number = 0, .value = u"2"_s, .access = access}, {.number = 1}, {.number = 2}});
        }
    }
    desk.object(3, 0x2F05, {{.number = 0, .isShared = true}}); // line 0 does not have it
    desk.set(u"bitwise_mapping"_s, u"1"_s);
    const ObjectDictionaryView view = ObjectDictionaryView::read(*desk.store, {});
    const auto dynamic = [&](QList<DictionaryPdo> DictionaryLine::*pdos) {
        qsizetype count = 0;
        for (const DictionaryLine &line : view.lines)
            count += std::ranges::count(line.*pdos, false, &DictionaryPdo::isStatic);
        return u"%1u"_s.arg(count);
    };
    QCOMPARE(view.lines.size(), 3);
    for (const DictionaryLine &line : view.lines)
        QCOMPARE(desk.value(u"CO_OBJECTS_LINE_%1_CNT"_s.arg(line.number)),
                 u"%1u"_s.arg(line.assignmentCount));
    QCOMPARE(desk.value(u"CO_OBJECTS_LINE_2_CNT"_s), u"0u"_s);
    QCOMPARE(desk.value(u"CO_MAX_MAP_ENTRIES"_s), u"%1u"_s.arg(view.mappingRows));
    QCOMPARE(desk.value(u"CO_PDO_BIT_MAPPING"_s), view.settings.bitwiseMapping ? u"1u"_s : QString());
    QCOMPARE(desk.value(u"CO_TR_PDO_DYN_MAP_ENTRIES"_s), dynamic(&DictionaryLine::transmitPdos));
    QCOMPARE(desk.value(u"CO_REC_PDO_DYN_MAP_ENTRIES"_s), dynamic(&DictionaryLine::receivePdos));
}

QTEST_GUILESS_MAIN(TestGenDefineLines)
#include "tst_gendefinelines.moc"
