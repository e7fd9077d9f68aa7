#include "generators/canopen/DictionaryDesk.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using Generated::assignments;
using Generated::Attributes;
using Generated::column;
using Generated::description;
using Generated::descriptions;
using Generated::places;
using Generated::Type;

/** Equal elements of an array. */
QList<Entry> equalElements(int count)
{
    return QList<Entry>(count, {.type = CAN::Unsigned16, .value = u"7"_s, .mapping = PDOMapping::TPDO});
}

} // namespace

/** od_description and od_assign of gen_objdict.c. */
class TestObjDictDescriptions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void aRowTellsASubIndex();
    void aRowOfTheOlderStackHasItsTypeWords();
    void aRowWithLimitCheckTellsItsLimits();
    void multiLineRowsNameTheirLine();
    void typesHaveTheirMacro_data();
    void typesHaveTheirMacro();
    void accessTypesHaveTheirAttributes_data();
    void accessTypesHaveTheirAttributes();
    void furtherAttributesFollowInOrder();
    void numbersAreMarked_data();
    void numbersAreMarked();
    void aRowWithoutAnyAttributeIsStillC();
    void limitsAreMarkedWithoutALimitCheck();
    void virtualSubIndicesHaveNoRow();
    void anObjectWhoseFirstSubIndexIsVirtualIsNotAssigned();
    void anObjectWithoutSubIndexZeroIsNotAssigned();
    void countsEqualTheRowsWritten();
    void sharedObjectsHaveTheRowsOfLineZero();
    void aSharedObjectThatLineZeroLacksIsNotAssigned();
    void assignmentsTellObjectAndFirstRow();
    void objectCodesHaveTheirMacro_data();
    void objectCodesHaveTheirMacro();
    void linesFollowEachOther();
    void aProjectWithoutObjectsHasNoTables();
};

void TestObjDictDescriptions::aRowTellsASubIndex()
{
    DictionaryDesk desk;
    desk.object(0x2abc, {{.value = u"1"_s}, {.type = CAN::Unsigned16, .value = u"7"_s, .mapping = true}});
    QCOMPARE(descriptions(desk.generate()),
             (QStringList{u"\t{ (UNSIGNED8)0u, CORE_DTYPE_U8, CO_DSPEC_VAR, (UNSIGNED16)0u, "
                          "CO_ATTR_NUM | CO_ATTR_READ | CO_ATTR_WRITE,  (UNSIGNED16)0u},/* 0x2abc:0 */ "_s,
                          u"\t{ (UNSIGNED8)1u, CORE_DTYPE_U16, CO_DSPEC_VAR, (UNSIGNED16)0u, "
                          "CO_ATTR_NUM | CO_ATTR_READ | CO_ATTR_WRITE | CO_ATTR_MAP_TR | CO_ATTR_MAP_REC, "
                          " (UNSIGNED16)0u},/* 0x2abc:1 */ "_s}));
    QVERIFY(desk.generate().contains(
        u"\n\n/* description of the objects */\n"
        "CORE_CONST CO_OBJECT_DESC_T CORE_CONST_STORAGE_CLASS od_description[CO_OBJ_DESC_CNT] = {\n\t{ "_s));
}

void TestObjDictDescriptions::aRowOfTheOlderStackHasItsTypeWords()
{
    DictionaryDesk desk;
    desk.variable(0x2000, {});
    const QString text = desk.generate(false);
    QVERIFY(text.contains(
        u"CO_CONST CO_OBJECT_DESC_T CO_CONST_STORAGE_CLASS od_description[CO_OBJ_DESC_CNT] = {\n"
        "\t{ (UNSIGNED8)0u, CO_DTYPE_U8, CO_DSPEC_VAR, (UNSIGNED16)0u, "
        "CO_ATTR_NUM | CO_ATTR_READ | CO_ATTR_WRITE,  (UNSIGNED16)0u},/* 0x2000:0 */ \n};\n"_s));
    QVERIFY(
        text.contains(u"CO_CONST CO_OD_ASSIGN_T CO_CONST_STORAGE_CLASS od_assign[CO_OD_ASSIGN_CNT] = {\n"_s));
    QVERIFY(!text.contains("CORE_"_L1));
}

void TestObjDictDescriptions::aRowWithLimitCheckTellsItsLimits()
{
    DictionaryDesk desk;
    desk.set(u"limit_check"_s, u"1"_s);
    desk.object(0x2000, {{.value = u"4"_s}, {.value = u"5"_s, .low = u"4"_s, .up = u"6"_s, .limits = true}});
    const QString text = desk.generate();
    QCOMPARE(description(text, u"0x2000:0"_s).section(u",  "_s, 1),
             u"(UNSIGNED16)0u, (UNSIGNED16)0u, (UNSIGNED16)0u},"_s);
    QCOMPARE(description(text, u"0x2000:1"_s).section(u",  "_s, 1),
             u"(UNSIGNED16)1u, (UNSIGNED16)0u, (UNSIGNED16)2u},"_s);
}

void TestObjDictDescriptions::multiLineRowsNameTheirLine()
{
    DictionaryDesk desk;
    desk.variable(0x2000, {}, 0);
    desk.variable(0x2001, {}, 1);
    QCOMPARE(places(desk.generate()), (QStringList{u"0-0x2000:0"_s, u"1-0x2001:0"_s}));
}

void TestObjDictDescriptions::typesHaveTheirMacro_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("word");
    QTest::newRow("BOOLEAN") << 1 << u"BOOL"_s;
    QTest::newRow("INTEGER8") << 2 << u"I8"_s;
    QTest::newRow("INTEGER16") << 3 << u"I16"_s;
    QTest::newRow("INTEGER32") << 4 << u"I32"_s;
    QTest::newRow("UNSIGNED8") << 5 << u"U8"_s;
    QTest::newRow("UNSIGNED16") << 6 << u"U16"_s;
    QTest::newRow("UNSIGNED32") << 7 << u"U32"_s;
    QTest::newRow("REAL32") << 8 << u"R32"_s;
    QTest::newRow("VISIBLE_STRING") << 9 << u"STRING_NULL"_s;
    QTest::newRow("OCTET_STRING") << 10 << u"OCTET_STRING"_s;
    QTest::newRow("TIME_OF_DAY") << 12 << u"U48"_s;
    QTest::newRow("DOMAIN") << 15 << u"DOMAIN"_s;
    QTest::newRow("INTEGER24") << 16 << u"I24"_s;
    QTest::newRow("UNSIGNED24") << 22 << u"U24"_s;
    QTest::newRow("UNSIGNED40") << 24 << u"U40"_s;
    QTest::newRow("UNSIGNED48") << 25 << u"U48"_s;
    QTest::newRow("UNSIGNED64") << 27 << u"U64"_s;
    QTest::newRow("UNSIGNED2") << 100 << u"U8"_s;
    QTest::newRow("UNSIGNED7") << 105 << u"U8"_s;
    QTest::newRow("UTF8_STRING") << 124 << u"UTF8"_s;
    QTest::newRow("no type") << 0 << u"NON_NUMERIC"_s;
    QTest::newRow("unknown type") << 200 << u"NON_NUMERIC"_s;
}

void TestObjDictDescriptions::typesHaveTheirMacro()
{
    QFETCH(int, type);
    QFETCH(QString, word);
    DictionaryDesk desk;
    desk.variable(0x2000, {.type = type});
    QCOMPARE(column(desk.generate(), u"0x2000:0"_s, Type), u"CORE_DTYPE_"_s + word);
    QCOMPARE(column(desk.generate(false), u"0x2000:0"_s, Type), u"CO_DTYPE_"_s + word);
}

void TestObjDictDescriptions::accessTypesHaveTheirAttributes_data()
{
    QTest::addColumn<QString>("access");
    QTest::addColumn<QString>("plain");
    QTest::addColumn<QString>("mappable");
    const QString read = u"CO_ATTR_NUM | CO_ATTR_READ"_s;
    const QString write = u"CO_ATTR_NUM | CO_ATTR_WRITE"_s;
    const QString both = u"CO_ATTR_NUM | CO_ATTR_READ | CO_ATTR_WRITE"_s;
    const QString transmit = u" | CO_ATTR_MAP_TR"_s;
    const QString receive = u" | CO_ATTR_MAP_REC"_s;
    QTest::newRow("const") << u"const"_s << read << QString(read + transmit);
    QTest::newRow("ro") << u"ro"_s << read << QString(read + transmit);
    QTest::newRow("wo") << u"wo"_s << write << QString(write + receive);
    QTest::newRow("rw") << u"rw"_s << both << QString(both + transmit + receive);
    QTest::newRow("rwr") << u"rwr"_s << both << QString(both + transmit);
    QTest::newRow("rww") << u"rww"_s << both << QString(both + receive);
    QTest::newRow("unknown") << u"x"_s << u"CO_ATTR_NUM"_s << u"CO_ATTR_NUM"_s;
}

void TestObjDictDescriptions::accessTypesHaveTheirAttributes()
{
    QFETCH(QString, access);
    QFETCH(QString, mappable);
    for (const auto mapping :
         {PDOMapping::Allowed, PDOMapping::Default, PDOMapping::RPDO, PDOMapping::TPDO}) {
        DictionaryDesk desk;
        desk.object(0x2000, {{.access = access}, {.access = access, .mapping = mapping}});
        QTEST(column(desk.generate(), u"0x2000:0"_s, Attributes), "plain");
        QCOMPARE(column(desk.generate(), u"0x2000:1"_s, Attributes), mappable);
    }
}

void TestObjDictDescriptions::furtherAttributesFollowInOrder()
{
    DictionaryDesk desk;
    desk.variable(0x2000,
                  {.access = u"ro"_s, .limits = true, .defaultInEds = true, .stored = true, .mapping = true});
    QCOMPARE(
        column(desk.generate(), u"0x2000:0"_s, Attributes),
        u"CO_ATTR_NUM | CO_ATTR_READ | CO_ATTR_MAP_TR | CO_ATTR_DEFVAL | CO_ATTR_LIMIT | CO_ATTR_STORE"_s);
}

void TestObjDictDescriptions::numbersAreMarked_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("marked");
    for (const int type : {1, 2, 3, 4, 5, 6, 7, 8, 22})
        QTest::addRow("%d", type) << type << true;
    for (const int type : {9, 10, 12, 15, 16, 24, 25, 27, 100, 105, 124})
        QTest::addRow("%d", type) << type << false;
}

void TestObjDictDescriptions::numbersAreMarked()
{
    QFETCH(int, type);
    QFETCH(bool, marked);
    DictionaryDesk desk;
    desk.variable(0x2000, {.type = type, .access = u"ro"_s});
    QCOMPARE(column(desk.generate(), u"0x2000:0"_s, Attributes),
             marked ? u"CO_ATTR_NUM | CO_ATTR_READ"_s : u"CO_ATTR_READ"_s);
}

void TestObjDictDescriptions::aRowWithoutAnyAttributeIsStillC()
{
    DictionaryDesk desk;
    desk.variable(0x2000, {.type = CAN::Domain, .access = QString()});
    QCOMPARE(column(desk.generate(), u"0x2000:0"_s, Attributes), u"0u"_s);
}

void TestObjDictDescriptions::limitsAreMarkedWithoutALimitCheck()
{
    DictionaryDesk desk;
    desk.set(u"limit_check"_s, u"0"_s);
    desk.variable(0x2000, {.access = u"ro"_s, .limits = true});
    QCOMPARE(column(desk.generate(), u"0x2000:0"_s, Attributes),
             u"CO_ATTR_NUM | CO_ATTR_READ | CO_ATTR_LIMIT"_s);
}

void TestObjDictDescriptions::virtualSubIndicesHaveNoRow()
{
    DictionaryDesk desk;
    desk.object(0x2000, {{}, {.implementation = CANopen::VirtualObject}, {.implementation = 4}, {}});
    const QString text = desk.generate();
    QCOMPARE(places(text), (QStringList{u"0x2000:0"_s, u"0x2000:3"_s}));
    QCOMPARE(assignments(text), QStringList{u"\t{ 0x2000u, 2u, 3u, CO_ODTYPE_STRUCT, 0u },"_s});
}

void TestObjDictDescriptions::anObjectWhoseFirstSubIndexIsVirtualIsNotAssigned()
{
    DictionaryDesk desk;
    desk.object(0x2000, {{.implementation = CANopen::VirtualObject}, {}});
    desk.variable(0x3000, {});
    const QString text = desk.generate();
    QCOMPARE(places(text), (QStringList{u"0x2000:1"_s, u"0x3000:0"_s}));
    QCOMPARE(assignments(text), QStringList{u"\t{ 0x3000u, 1u, 0u, CO_ODTYPE_VAR, 1u },"_s});
}

void TestObjDictDescriptions::anObjectWithoutSubIndexZeroIsNotAssigned()
{
    DictionaryDesk desk;
    desk.object(0x2000, CANopen::Record);
    desk.sub(0x2000, 1, {});
    desk.object(0x2001, CANopen::Record); // no sub-index at all
    QCOMPARE(assignments(desk.generate()), QStringList());
    QVERIFY(desk.generate().contains(u"#define CO_OD_ASSIGN_CNT 0u\n#define CO_OBJ_DESC_CNT 1u\n"_s));
}

void TestObjDictDescriptions::countsEqualTheRowsWritten()
{
    DictionaryDesk desk;
    desk.compactArrays = true;
    desk.array(0x2000, equalElements(9));
    desk.object(0x3000, {{.shared = true}, {}, {.implementation = CANopen::VirtualObject}});
    desk.object(0x3000, {{.shared = true}, {.shared = true}, {.value = u"3"_s}}, CANopen::Record, 1);
    desk.object(0x3001, {{.implementation = CANopen::VirtualObject}, {}}, CANopen::Record, 1);
    const QString text = desk.generate();
    QCOMPARE(descriptions(text).size(), 6);
    QCOMPARE(assignments(text).size(), 3);
    QVERIFY2(text.contains(u"\n/* number of objects */\n"
                           "#define CO_OD_ASSIGN_CNT 3u\n#define CO_OBJ_DESC_CNT 6u\n"_s),
             qPrintable(text));
}

void TestObjDictDescriptions::sharedObjectsHaveTheRowsOfLineZero()
{
    DictionaryDesk desk;
    desk.variable(0x1000, {}, 0);
    desk.variable(0x1000, {}, 1);
    for (const quint8 line : {0, 1}) {
        desk.object(0x2000, {{.shared = true}, {.shared = true}}, CANopen::Array, line);
        desk.variable(0x3000, {}, line);
    }
    const QString text = desk.generate();
    QCOMPARE(places(text),
             (QStringList{u"0-0x1000:0"_s, u"0-0x2000:0"_s, u"0-0x2000:1"_s, u"0-0x3000:0"_s, u"1-0x1000:0"_s,
                          u"1-0x3000:0"_s}));
    QCOMPARE(assignments(text),
             (QStringList{u"\t{ 0x1000u, 1u, 0u, CO_ODTYPE_VAR, 0u },"_s,
                          u"\t{ 0x2000u, 2u, 1u, CO_ODTYPE_ARRAY, 1u },"_s,
                          u"\t{ 0x3000u, 1u, 0u, CO_ODTYPE_VAR, 3u },"_s,
                          u"\t{ 0x1000u, 1u, 0u, CO_ODTYPE_VAR, 4u },"_s,
                          u"\t{ 0x2000u, 2u, 1u, CO_ODTYPE_ARRAY, 1u },"_s,
                          u"\t{ 0x3000u, 1u, 0u, CO_ODTYPE_VAR, 5u },"_s}));
}

void TestObjDictDescriptions::aSharedObjectThatLineZeroLacksIsNotAssigned()
{
    DictionaryDesk desk;
    desk.variable(0x1000, {});
    desk.object(0x2000, {{.shared = true}}, CANopen::Var, 1);
    desk.variable(0x3000, {}, 1);
    QCOMPARE(assignments(desk.generate()),
             (QStringList{u"\t{ 0x1000u, 1u, 0u, CO_ODTYPE_VAR, 0u },"_s,
                          u"\t{ 0x3000u, 1u, 0u, CO_ODTYPE_VAR, 1u },"_s}));
}

void TestObjDictDescriptions::assignmentsTellObjectAndFirstRow()
{
    DictionaryDesk desk;
    desk.object(0x1018, {{}, {}, {}});
    desk.object(0x2abc, CANopen::Array);
    desk.sub(0x2abc, 0, {});
    desk.sub(0x2abc, 254, {});
    desk.variable(0xfffe, {});
    QVERIFY(desk.generate().contains(
        u"};\n\n/* object dictionary assignment */\n"
        "CORE_CONST CO_OD_ASSIGN_T CORE_CONST_STORAGE_CLASS od_assign[CO_OD_ASSIGN_CNT] = {\n"
        "\t{ 0x1018u, 3u, 2u, CO_ODTYPE_STRUCT, 0u },\n"
        "\t{ 0x2abcu, 2u, 254u, CO_ODTYPE_ARRAY, 3u },\n"
        "\t{ 0xfffeu, 1u, 0u, CO_ODTYPE_VAR, 5u },\n"
        "};\n"_s));
}

void TestObjDictDescriptions::objectCodesHaveTheirMacro_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("word");
    QTest::newRow("variable") << 7 << u"CO_ODTYPE_VAR"_s;
    QTest::newRow("array") << 8 << u"CO_ODTYPE_ARRAY"_s;
    QTest::newRow("record") << 9 << u"CO_ODTYPE_STRUCT"_s;
    QTest::newRow("domain") << 2 << u"CO_ODTYPE_DOM"_s;
    QTest::newRow("data type") << 5 << u"invalid"_s;
    QTest::newRow("none") << 0 << u"invalid"_s;
}

void TestObjDictDescriptions::objectCodesHaveTheirMacro()
{
    QFETCH(int, code);
    DictionaryDesk desk;
    desk.object(0x2000, {{}}, code);
    QTEST(assignments(desk.generate()).value(0).section(u", "_s, 3, 3), "word");
}

void TestObjDictDescriptions::linesFollowEachOther()
{
    DictionaryDesk desk;
    desk.variable(0x3000, {}, 31);
    desk.variable(0x3000, {}, 2);
    desk.variable(0x4000, {}, 0);
    desk.variable(0x1000, {}, 0);
    desk.variable(0x1000, {}, 32); // behind the lines that the stack knows
    QCOMPARE(places(desk.generate()),
             (QStringList{u"0-0x1000:0"_s, u"0-0x4000:0"_s, u"2-0x3000:0"_s, u"31-0x3000:0"_s}));
}

void TestObjDictDescriptions::aProjectWithoutObjectsHasNoTables()
{
    DictionaryDesk desk;
    const QString text = desk.generate();
    QVERIFY(text.contains(u"#define CO_OD_ASSIGN_CNT 0u\n#define CO_OBJ_DESC_CNT 0u\n"_s));
    QVERIFY(!text.contains("od_assign["_L1));
    QVERIFY(!text.contains("od_description["_L1));
}

QTEST_GUILESS_MAIN(TestObjDictDescriptions)
#include "tst_objdictdescriptions.moc"
