#include "generators/canopen/StackInitTexts.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace StackInitTexts;

namespace {

constexpr auto head = "#ifdef GEN_OVERWRITE_PREDEF_CONN_SET\n"
                      "/* Please be careful - this function overwrite the COB-Ids of the\n"
                      "* predefined connection set with values setting up by the VEX\n"
                      "* It can be passed as load indication function to coCanOpenStackInit()\n"
                      "*/\n"_L1;
constexpr auto tail = "\treturn ret;\n"
                      "}\n"
                      "#endif /* GEN_OVERWRITE_PREDEF_CONN_SET */\n"_L1;

void addCobIds(DictionaryDesk &desk, quint16 index, const QStringList &cobIds, quint8 line = 0)
{
    QList<Entry> entries;
    for (const QString &cobId : cobIds)
        entries.append({.type = CAN::Unsigned32, .value = cobId});
    desk.array(index, entries, line);
}

/** From the condition to the end of the file; empty without the function. */
QString overwriteFunction(const QString &text)
{
    const qsizetype begin = text.indexOf(u"#ifdef GEN_OVERWRITE_PREDEF_CONN_SET"_s);
    return begin < 0 ? QString() : text.sliced(begin);
}

/** A COB-ID that the stack has as the default of its sub-index. */
QString fixed(const QString &line, const QString &index, int sub)
{
    return u"\t\tret = coOdGetDefaultVal_u32(%1%2, %3, &cobId);\n"
           "\t\tif (ret == RET_OK) {\n"
           "\t\t\tret = coOdSetCobid(%1%2, %3, cobId);\n"
           "\t\t}\n"_s.arg(line, index)
               .arg(sub);
}

QString comment(const QString &words)
{
    return u"\n\t\t/* "_s + words + u" */\n"_s;
}

} // namespace

/** The function that overwrites the predefined connection set. */
class TestStackInitOverwrite : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void withoutTheOptionThereIsNoFunction_data();
    void withoutTheOptionThereIsNoFunction();
    void cobIdsOfOneLine();
    void withoutTheNodeNothingAsksForIt();
    void theNumberBehindTheMarkIsAdded_data();
    void theNumberBehindTheMarkIsAdded();
    void onlyPdosCountFromTheNode();
    void aDeviceWithoutCobIdsHasNoVariableForThem();
    void theFirstSdoServerIsLeftToTheStack();
    void linesWithTheOptionShareTheFunction();
    void linesThatNeedNoNodeDoNotAskForIt();
    void severalLinesFollowTheirOption();
    void theOlderStackHasTheSameFunction();
};

void TestStackInitOverwrite::withoutTheOptionThereIsNoFunction_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<bool>("hasFunction");
    QTest::newRow("0") << u"0"_s << false;
    QTest::newRow("not set") << QString() << false;
    QTest::newRow("of another line") << u"0,1"_s << false;
    QTest::newRow("1") << u"1"_s << true;
    QTest::newRow("of this line") << u"1,0"_s << true;
}

void TestStackInitOverwrite::withoutTheOptionThereIsNoFunction()
{
    QFETCH(QString, option);
    QFETCH(bool, hasFunction);
    DictionaryDesk desk;
    addUsualObjects(desk, 0);
    desk.set(u"overwrite_predef"_s, option);
    const QString text = desk.generate();
    QCOMPARE(text.contains("genLoadIndication"_L1), hasFunction);
    QCOMPARE(text.contains("GEN_OVERWRITE_PREDEF_CONN_SET"_L1), hasFunction);
}

void TestStackInitOverwrite::cobIdsOfOneLine()
{
    DictionaryDesk desk;
    desk.set(u"overwrite_predef"_s, u"1"_s);
    addCobIds(desk, 0x1200, {u"$NODEID+0x600"_s, u"$NODEID+0x580"_s});
    addCobIds(desk, 0x120a, {u"0x601"_s, u"0x581"_s});
    addCobIds(desk, 0x12ff, {u"0x602"_s, u"0x582"_s});
    addCobIds(desk, 0x1400, {u"$NODEID+0x200"_s});
    addCobIds(desk, 0x15ff, {u"0x201"_s});
    addCobIds(desk, 0x1800, {u"0x181"_s});
    addCobIds(desk, 0x1801, {u"$NODEID+0x280"_s});
    const QString expected = head
        + u"RET_T genLoadIndication(UNSIGNED8 subIndex)\n"
          "{\n"
          "\tRET_T ret = RET_OK;\n"
          "\tUNSIGNED32 cobId = 0ul;\n"
          "\tUNSIGNED8 nodeId = coNmtGetNodeId();\n"
          "\tif ((subIndex == 1) || (subIndex == 2)) {\n"_s
        + comment(u"SDO server COB IDs"_s) + fixed({}, u"0x120a"_s, 1) + fixed({}, u"0x120a"_s, 2)
        + comment(u"SDO client COB IDs"_s) + fixed({}, u"0x12ff"_s, 1) + fixed({}, u"0x12ff"_s, 2)
        + comment(u"RxPDO COB IDs"_s)
        + u"\t\tcobId = nodeId + 0x200u;\n"
          "\t\tret = coOdSetCobid(0x1400, 1, cobId);\n"_s
        + fixed({}, u"0x15ff"_s, 1) + comment(u"TxPDO COB IDs"_s) + fixed({}, u"0x1800"_s, 1)
        + u"\t\tcobId = nodeId + 0x280u;\n"
          "\t\tret = coOdSetCobid(0x1801, 1, cobId);\n"
          "\t}\n"_s
        + tail;
    QCOMPARE(overwriteFunction(desk.generate()), expected);
}

void TestStackInitOverwrite::withoutTheNodeNothingAsksForIt()
{
    DictionaryDesk desk;
    desk.set(u"overwrite_predef"_s, u"1"_s);
    addCobIds(desk, 0x1400, {u"0x201"_s});
    const QString text = overwriteFunction(desk.generate());
    QVERIFY(text.contains("\tUNSIGNED32 cobId = 0ul;\n\tif ((subIndex == 1)"_L1));
    QVERIFY(!text.contains("nodeId"_L1));
}

void TestStackInitOverwrite::theNumberBehindTheMarkIsAdded_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("sum");
    QTest::newRow("hexadecimal") << u"$NODEID+0x180"_s << u"nodeId + 0x180u"_s;
    QTest::newRow("decimal") << u"$NODEID+384"_s << u"nodeId + 0x180u"_s;
    QTest::newRow("small letters") << u"$nodeid+0x180"_s << u"nodeId + 0x180u"_s;
    QTest::newRow("not valid") << u"$NODEID+0x80000180"_s << u"nodeId + 0x80000180u"_s;
    QTest::newRow("no number") << u"$NODEID+pump"_s << u"nodeId + 0x0u"_s;
    QTest::newRow("nothing") << u"$NODEID+"_s << u"nodeId + 0x0u"_s;
}

void TestStackInitOverwrite::theNumberBehindTheMarkIsAdded()
{
    QFETCH(QString, value);
    QFETCH(QString, sum);
    DictionaryDesk desk;
    desk.set(u"overwrite_predef"_s, u"1"_s);
    addCobIds(desk, 0x1800, {value});
    QVERIFY(desk.generate().contains(
        QString(u"\t\tcobId = "_s + sum + u";\n\t\tret = coOdSetCobid(0x1800, 1, cobId);\n"_s)));
}

void TestStackInitOverwrite::onlyPdosCountFromTheNode()
{
    DictionaryDesk desk;
    desk.set(u"overwrite_predef"_s, u"1"_s);
    addCobIds(desk, 0x1201, {u"$NODEID+0x610"_s, u"$NODEID+0x590"_s});
    addCobIds(desk, 0x1280, {u"$NODEID+0x600"_s, u"$NODEID+0x580"_s});
    const QString text = overwriteFunction(desk.generate());
    QVERIFY(!text.contains("nodeId"_L1));
    QVERIFY(text.contains(fixed({}, u"0x1201"_s, 2)));
    QVERIFY(text.contains(fixed({}, u"0x1280"_s, 1)));
}

// Compilers warn of variables that nothing uses.
void TestStackInitOverwrite::aDeviceWithoutCobIdsHasNoVariableForThem()
{
    DictionaryDesk desk;
    desk.set(u"overwrite_predef"_s, u"1"_s);
    addUsualObjects(desk, 0);
    QCOMPARE(overwriteFunction(desk.generate()),
             QString(head
                     + u"RET_T genLoadIndication(UNSIGNED8 subIndex)\n"
                       "{\n"
                       "\tRET_T ret = RET_OK;\n"
                       "\tif ((subIndex == 1) || (subIndex == 2)) {\n"_s
                     + comment(u"SDO server COB IDs"_s) + comment(u"SDO client COB IDs"_s)
                     + comment(u"RxPDO COB IDs"_s) + comment(u"TxPDO COB IDs"_s) + u"\t}\n"_s + tail));
}

void TestStackInitOverwrite::theFirstSdoServerIsLeftToTheStack()
{
    DictionaryDesk desk;
    desk.set(u"overwrite_predef"_s, u"1"_s);
    addCobIds(desk, 0x1200, {u"0x601"_s, u"0x581"_s});
    QVERIFY(!overwriteFunction(desk.generate()).contains("0x1200"_L1));
}

void TestStackInitOverwrite::linesWithTheOptionShareTheFunction()
{
    DictionaryDesk desk;
    desk.set(u"overwrite_predef"_s, u"1"_s);
    for (const quint8 line : {quint8(0), quint8(1)}) {
        addUsualObjects(desk, line);
        addCobIds(desk, 0x1400, {line == 0 ? u"0x201"_s : u"$NODEID+0x200"_s}, line);
    }
    addCobIds(desk, 0x1201, {u"0x601"_s, u"0x581"_s}, 1);
    const QString server = comment(u"SDO server COB IDs starting at 2nd SDO server"_s);
    const QString client = comment(u"SDO client COB IDs"_s);
    const QString receive = comment(u"RxPDO COB IDs"_s);
    const QString transmit = comment(u"TxPDO COB IDs"_s);
    const QString expected = head
        + u"RET_T genLoadIndication(UNSIGNED8 canLine, UNSIGNED8 subIndex)\n"
          "{\n"
          "\tRET_T ret = RET_OK;\n"
          "\tUNSIGNED32 cobId = 0ul;\n"
          "\tUNSIGNED8 nodeId = 0x00;\n"
          "\tif (((subIndex == 1) || (subIndex == 2)) && (canLine ==0)) {\n"
          "\t\tnodeId = coNmtGetNodeId(0);\n"_s
        + server + client + receive + fixed(u"0, "_s, u"0x1400"_s, 1) + transmit
        + u"\t}\n"
          "\tif (((subIndex == 1) || (subIndex == 2)) && (canLine ==1)) {\n"
          "\t\tnodeId = coNmtGetNodeId(1);\n"_s
        + server + fixed(u"1, "_s, u"0x1201"_s, 1) + fixed(u"1, "_s, u"0x1201"_s, 2) + client + receive
        + u"\t\tcobId = (UNSIGNED32)nodeId + (UNSIGNED32)0x200u;\n"
          "\t\tret = coOdSetCobid(1, 0x1400, 1, cobId);\n"_s
        + transmit + u"\t}\n"_s + tail;
    QCOMPARE(overwriteFunction(desk.generate()), expected);
}

void TestStackInitOverwrite::linesThatNeedNoNodeDoNotAskForIt()
{
    DictionaryDesk desk;
    desk.set(u"overwrite_predef"_s, u"1"_s);
    for (const quint8 line : {quint8(0), quint8(1)}) {
        addUsualObjects(desk, line);
        addCobIds(desk, 0x1400, {u"0x201"_s}, line);
    }
    QVERIFY(!overwriteFunction(desk.generate()).contains("nodeId"_L1));
}

void TestStackInitOverwrite::severalLinesFollowTheirOption()
{
    DictionaryDesk desk;
    for (const quint8 line : {quint8(0), quint8(1), quint8(2)})
        addUsualObjects(desk, line);
    desk.set(u"overwrite_predef"_s, u"0,1,0"_s);
    const QString text = overwriteFunction(desk.generate());
    QCOMPARE(text.count(u"canLine =="_s), 1);
    QVERIFY(text.contains("(canLine ==1)"_L1));
    desk.set(u"overwrite_predef"_s, u"0,0,0"_s);
    QCOMPARE(overwriteFunction(desk.generate()), QString());
}

void TestStackInitOverwrite::theOlderStackHasTheSameFunction()
{
    DictionaryDesk desk;
    desk.set(u"overwrite_predef"_s, u"1"_s);
    addCobIds(desk, 0x1400, {u"$NODEID+0x200"_s});
    addCobIds(desk, 0x1280, {u"0x601"_s, u"0x581"_s});
    const QString v4 = overwriteFunction(desk.generate());
    QVERIFY(!v4.isEmpty());
    QCOMPARE(overwriteFunction(desk.generate(false)), v4);
}

QTEST_GUILESS_MAIN(TestStackInitOverwrite)
#include "tst_stackinitoverwrite.moc"
