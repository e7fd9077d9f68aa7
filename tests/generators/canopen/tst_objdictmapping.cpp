#include "generators/canopen/DictionaryDesk.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/** What stands between the comment of the mapping tables and the next section. */
QString mappingSection(const QString &text)
{
    constexpr auto head = "\n/* static PDO mapping tables */\n"_L1;
    const qsizetype begin = text.indexOf(head);
    if (begin < 0)
        return u"no section"_s;
    const qsizetype end = text.indexOf(u"\n/***"_s, begin);
    return text.sliced(begin + head.size(), end - begin - head.size());
}

const QString mapped8 = u"0x20000108"_s;
const QString mapped16 = u"0x20000210"_s;

/** Something to map: a managed byte, a constant word, a variable and an expression of the application. */
void addMappable(DictionaryDesk &desk, quint8 line = 0)
{
    desk.object(
        0x2000,
        {{.type = CAN::Unsigned32},
         {.type = CAN::Unsigned8},
         {.type = CAN::Unsigned16, .value = u"7"_s, .implementation = CANopen::ManagedConst},
         {.type = CAN::Integer16, .implementation = CANopen::ApplicationVariable, .variable = u"speed_$l"_s},
         {.type = CAN::Integer32,
          .implementation = CANopen::ApplicationVariable,
          .variable = u"ADDR(torque)"_s},
         {.implementation = CANopen::VirtualObject},
         {.type = CAN::Unsigned5},
         {.type = CAN::Unsigned24,
          .implementation = CANopen::ApplicationVariable,
          .variable = u"POSITION(axis)"_s},
         {.type = CAN::TimeOfDay,
          .implementation = CANopen::ApplicationVariable,
          .variable = u"NOW(clock)"_s}},
        CANopen::Record, line);
}

} // namespace

/** The static mapping tables of gen_objdict.c. */
class TestObjDictMapping : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void aStaticTpdoHasATable();
    void tablesOfTheOlderStackHaveItsWords();
    void onlyTheAccessRwMakesAMappingDynamic_data();
    void onlyTheAccessRwMakesAMappingDynamic();
    void aPdoWithoutAMappingObjectIsStaticAndEmpty();
    void aMappingWithoutEntriesIsAComment();
    void aMultiplexedPdoMapsOneObject_data();
    void aMultiplexedPdoMapsOneObject();
    void addressesFollowTheImplementation_data();
    void addressesFollowTheImplementation();
    void tablesAreFilledUpToTheLargestMapping();
    void aFullTableNeedsNoFilling();
    void moreEntriesThanAnyMappingHasAreLeftOut();
    void lengthsAreBytesOrBits_data();
    void lengthsAreBytesOrBits();
    void linesHaveLetters_data();
    void linesHaveLetters();
    void forcedMultiLineHasALetterToo();
    void aLoneLineHasTablesWhateverItsNumber();
    void equalReceiveMappingsShareATable();
    void receiveMappingsOfTwoLinesAreNotShared();
    void mappingsThatDifferInTheCountAreNotShared();
    void withRoutingEveryReceiveMappingHasATable();
    void aRoutedVariableNamesTheTpdosThatSendIt();
    void onlySharedVariablesAreRouted();
    void theJ1939ServerHasNoMappingTables();
    void sharedVariablesAreThoseOfLineZero();
};

void TestObjDictMapping::aStaticTpdoHasATable()
{
    DictionaryDesk desk;
    addMappable(desk);
    desk.pdo(0x1801, {mapped8, mapped16});
    QCOMPARE(mappingSection(desk.generate()),
             u"/* Mapping table TPDO 2 */\n"
             "static CORE_CONST PDO_TR_MAP_TABLE_T CORE_CONST_STORAGE_CLASS\tmapTableTPDO2 = {\n"
             "\t(UNSIGNED8)2u,\n"
             "\t{\n"
             "\t\t{&od_u8[0], 1u, CORE_DTYPE_U8, 0x20000108UL },\n"
             "\t\t{&od_const_u16[0], 2u, CORE_DTYPE_U16, 0x20000210UL },\n"
             "\t}\n"
             "};\n"_s);
}

void TestObjDictMapping::tablesOfTheOlderStackHaveItsWords()
{
    DictionaryDesk desk;
    addMappable(desk);
    desk.pdo(0x1800, {mapped8});
    desk.pdo(0x1400, {mapped8, mapped8});
    QCOMPARE(mappingSection(desk.generate(false)),
             u"/* Mapping table TPDO 1 */\n"
             "static CO_CONST PDO_TR_MAP_TABLE_T CO_CONST_STORAGE_CLASS\tmapTableTPDO1 = {\n"
             "\t(UNSIGNED8)1u,\n"
             "\t{\n"
             "\t\t{&od_u8[0], 1u, CO_DTYPE_U8, 0x20000108UL },\n"
             "\t\t{NULL, (UNSIGNED8)0u, CO_DTYPE_NON_NUMERIC, 0ul}\n"
             "\t}\n"
             "};\n"
             "/* unique rpdo defintion */\n"
             "static CO_CONST PDO_REC_MAP_TABLE_T CO_CONST_STORAGE_CLASS\tmapTableRPDO1 = {\n"
             "\t(UNSIGNED8)2u,\n"
             "\t{\n"
             "\t\t{&od_u8[0], 1u, CO_DTYPE_U8, 0x20000108UL },\n"
             "\t\t{&od_u8[0], 1u, CO_DTYPE_U8, 0x20000108UL },\n"
             "\t}\n"
             "};\n"_s);
}

void TestObjDictMapping::onlyTheAccessRwMakesAMappingDynamic_data()
{
    QTest::addColumn<QString>("access");
    QTest::addColumn<bool>("table");
    for (const char *access : {"const", "ro", "rww", "rwr", "wo", ""})
        QTest::addRow("'%s'", access) << QString::fromLatin1(access) << true;
    QTest::newRow("'rw'") << u"rw"_s << false;
}

void TestObjDictMapping::onlyTheAccessRwMakesAMappingDynamic()
{
    QFETCH(QString, access);
    QFETCH(bool, table);
    DictionaryDesk desk;
    addMappable(desk);
    desk.pdo(0x1800, {mapped8}, access);
    desk.pdo(0x1400, {mapped8}, access);
    const QString section = mappingSection(desk.generate());
    QCOMPARE(section.contains("mapTableTPDO1"_L1), table);
    QCOMPARE(section.contains("mapTableRPDO1"_L1), table);
    QCOMPARE(section.isEmpty(), !table);
}

void TestObjDictMapping::aPdoWithoutAMappingObjectIsStaticAndEmpty()
{
    DictionaryDesk desk;
    desk.array(0x1800, {{}});
    desk.array(0x1400, {{}});
    QCOMPARE(mappingSection(desk.generate()), u"/* Mapping table TPDO 1 */\n/* unique rpdo defintion */\n"_s);
}

void TestObjDictMapping::aMappingWithoutEntriesIsAComment()
{
    DictionaryDesk desk;
    addMappable(desk);
    desk.pdo(0x1800, {mapped8}, u"const"_s, 0, u"0"_s);
    desk.pdo(0x1400, {mapped8}, u"const"_s, 0, u"0"_s);
    desk.pdo(0x1401, {mapped16}, u"const"_s, 0, u"0"_s);
    QCOMPARE(mappingSection(desk.generate()), u"/* Mapping table TPDO 1 */\n/* unique rpdo defintion */\n"_s);
}

void TestObjDictMapping::aMultiplexedPdoMapsOneObject_data()
{
    QTest::addColumn<QString>("count");
    QTest::addColumn<QString>("number");
    QTest::addColumn<int>("entries");
    QTest::newRow("most of a usual PDO") << u"64"_s << u"64"_s << 3;
    QTest::newRow("behind that") << u"65"_s << u"65"_s << 1;
    QTest::newRow("source address mode") << u"0xfe"_s << u"254"_s << 1;
    QTest::newRow("destination address mode") << u"0xff"_s << u"255"_s << 1;
}

void TestObjDictMapping::aMultiplexedPdoMapsOneObject()
{
    QFETCH(QString, count);
    QFETCH(QString, number);
    QFETCH(int, entries);
    DictionaryDesk desk;
    addMappable(desk);
    desk.pdo(0x1800, {mapped8, mapped8, mapped16}, u"const"_s, 0, count);
    const QString section = mappingSection(desk.generate());
    QVERIFY(section.contains(u" = {\n\t(UNSIGNED8)%1u,\n"_s.arg(number)));
    QCOMPARE(section.count("UL },"_L1), entries);
    QCOMPARE(section.count("{NULL"_L1), 3 - entries);
}

void TestObjDictMapping::addressesFollowTheImplementation_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("row");
    QTest::newRow("managed") << mapped8 << u"{&od_u8[0], 1u, CORE_DTYPE_U8, 0x20000108UL },"_s;
    QTest::newRow("constant") << mapped16 << u"{&od_const_u16[1], 2u, CORE_DTYPE_U16, 0x20000210UL },"_s;
    QTest::newRow("application") << u"0x20000310"_s << u"{&(speed_0), 2u, CORE_DTYPE_I16, 0x20000310UL },"_s;
    QTest::newRow("expression") << u"0x20000420"_s << u"{ADDR(torque), 4u, CORE_DTYPE_I32, 0x20000420UL },"_s;
    QTest::newRow("expression of a structure")
        << u"0x20000718"_s << u"{&(POSITION(axis)), 3u, CORE_DTYPE_U24, 0x20000718UL },"_s;
    QTest::newRow("expression of a time of day")
        << u"0x20000830"_s << u"{&(NOW(clock)), 6u, CORE_DTYPE_U48, 0x20000830UL },"_s;
    QTest::newRow("virtual") << u"0x20000508"_s << u"{NULL, 1u, CORE_DTYPE_U8, 0x20000508UL },"_s;
    QTest::newRow("bit string") << u"0x20000605"_s << u"{&od_u8[1], 0u, CORE_DTYPE_U8, 0x20000605UL },"_s;
    QTest::newRow("unknown object") << u"0x30000008"_s << u"{NULL, 1u, CORE_DTYPE_U8, 0x30000008UL },"_s;
    QTest::newRow("unknown sub-index") << u"0x20007F08"_s << u"{NULL, 1u, CORE_DTYPE_U8, 0x20007f08UL },"_s;
    QTest::newRow("dummy entry") << u"0x00070020"_s << u"{NULL, 4u, CORE_DTYPE_U8, 0x00070020UL },"_s;
    QTest::newRow("held by the stack") << u"0x10170010"_s << u"{NULL, 2u, CORE_DTYPE_U16, 0x10170010UL },"_s;
    QTest::newRow("no number") << u"none"_s << u"{NULL, 0u, CORE_DTYPE_U8, 0x00000000UL },"_s;
}

void TestObjDictMapping::addressesFollowTheImplementation()
{
    QFETCH(QString, entry);
    QFETCH(QString, row);
    DictionaryDesk desk;
    desk.variable(0x1017, {.type = CAN::Unsigned16});
    addMappable(desk);
    desk.pdo(0x1800, {entry});
    desk.pdo(0x1400, {entry});
    const QString section = mappingSection(desk.generate());
    QCOMPARE(section.section(u'\n', 4, 4), u"\t\t"_s + row);
    QCOMPARE(section.section(u"/* unique rpdo defintion */"_s, 1).section(u'\n', 4, 4), u"\t\t"_s + row);
}

void TestObjDictMapping::tablesAreFilledUpToTheLargestMapping()
{
    DictionaryDesk desk;
    addMappable(desk);
    desk.pdo(0x1800, {mapped8});
    desk.pdo(0x1801, {mapped8, mapped8, mapped8, mapped8}, u"rw"_s);
    QCOMPARE(mappingSection(desk.generate()).section(u'\n', 3),
             u"\t{\n"
             "\t\t{&od_u8[1], 1u, CORE_DTYPE_U8, 0x20000108UL },\n"
             "\t\t{NULL, (UNSIGNED8)0u, CORE_DTYPE_NON_NUMERIC, 0ul},\n"
             "\t\t{NULL, (UNSIGNED8)0u, CORE_DTYPE_NON_NUMERIC, 0ul},\n"
             "\t\t{NULL, (UNSIGNED8)0u, CORE_DTYPE_NON_NUMERIC, 0ul}\n"
             "\t}\n"
             "};\n"_s);
}

void TestObjDictMapping::aFullTableNeedsNoFilling()
{
    DictionaryDesk desk;
    addMappable(desk);
    desk.pdo(0x1800, {mapped8, mapped16});
    QVERIFY(!mappingSection(desk.generate()).contains("NON_NUMERIC"_L1));
}

void TestObjDictMapping::moreEntriesThanAnyMappingHasAreLeftOut()
{
    DictionaryDesk desk;
    addMappable(desk);
    desk.pdo(0x1800, {mapped8, mapped16}, u"const"_s, 0, u"5"_s);
    const QString section = mappingSection(desk.generate());
    QVERIFY(section.contains("\t(UNSIGNED8)5u,\n"_L1));
    QCOMPARE(section.count("UL },"_L1), 2);
    QVERIFY(!section.contains("NULL"_L1));
}

void TestObjDictMapping::lengthsAreBytesOrBits_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<int>("entries");
    QTest::addColumn<QString>("length");
    QTest::newRow("bytes") << u"0"_s << 2 << u", 2u, "_s;
    QTest::newRow("not set") << QString() << 2 << u", 2u, "_s;
    QTest::newRow("bits") << u"1"_s << 2 << u", 16u, "_s;
    QTest::newRow("one entry only") << u"1"_s << 1 << u", 2u, "_s;
}

void TestObjDictMapping::lengthsAreBytesOrBits()
{
    QFETCH(QString, setting);
    QFETCH(int, entries);
    QFETCH(QString, length);
    DictionaryDesk desk;
    addMappable(desk);
    desk.set(u"bitwise_mapping"_s, setting);
    desk.pdo(0x1800, QStringList(entries, mapped16));
    QVERIFY(mappingSection(desk.generate()).contains(u"&od_const_u16[0]"_s + length));
}

void TestObjDictMapping::linesHaveLetters_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("name");
    QTest::newRow("first") << 0 << u"mapTableTPDOa1"_s;
    QTest::newRow("second") << 1 << u"mapTableTPDOb1"_s;
    QTest::newRow("last letter") << 25 << u"mapTableTPDOz1"_s;
    QTest::newRow("behind the letters") << 26 << u"mapTableTPDOB1"_s;
    QTest::newRow("last line") << 31 << u"mapTableTPDOG1"_s;
}

void TestObjDictMapping::linesHaveLetters()
{
    QFETCH(int, line);
    QFETCH(QString, name);
    DictionaryDesk desk;
    addMappable(desk, 1);
    if (line != 1)
        addMappable(desk, quint8(line));
    desk.pdo(0x1800, {mapped8}, u"const"_s, quint8(line));
    QVERIFY(mappingSection(desk.generate()).contains(u"\t%1 = {\n"_s.arg(name)));
}

void TestObjDictMapping::forcedMultiLineHasALetterToo()
{
    DictionaryDesk desk;
    addMappable(desk);
    desk.setMisc(u"generateML"_s, u"true"_s);
    desk.pdo(0x1800, {mapped8});
    desk.pdo(0x1400, {mapped8});
    const QString section = mappingSection(desk.generate());
    QVERIFY(section.contains("\tmapTableTPDOa1 = {\n"_L1));
    QVERIFY(section.contains("\tmapTableRPDOa1 = {\n"_L1));
}

void TestObjDictMapping::aLoneLineHasTablesWhateverItsNumber()
{
    DictionaryDesk desk;
    addMappable(desk, 5);
    desk.pdo(0x1800, {mapped8}, u"const"_s, 5);
    QVERIFY(desk.store.removeLine(0));
    QVERIFY(mappingSection(desk.generate()).contains("\tmapTableTPDO1 = {\n"_L1));
}

void TestObjDictMapping::equalReceiveMappingsShareATable()
{
    DictionaryDesk desk;
    addMappable(desk);
    desk.pdo(0x1400, {mapped8, mapped16});
    desk.pdo(0x1401, {mapped16, mapped8});
    desk.pdo(0x1402, {u"536871176"_s, u"0x20000210"_s}); // the first one in other words
    desk.pdo(0x1404, {mapped16, mapped8});
    const QString section = mappingSection(desk.generate());
    QCOMPARE(section.count("/* unique rpdo defintion */\nstatic "_L1), 2);
    QVERIFY(section.contains("\tmapTableRPDO1 = {\n\t(UNSIGNED8)2u,\n\t{\n\t\t{&od_u8[0]"_L1));
    QVERIFY(section.contains("\tmapTableRPDO2 = {\n\t(UNSIGNED8)2u,\n\t{\n\t\t{&od_const_u16[0]"_L1));
}

void TestObjDictMapping::receiveMappingsOfTwoLinesAreNotShared()
{
    DictionaryDesk desk;
    for (const quint8 line : {0, 1}) {
        addMappable(desk, line);
        desk.pdo(0x1400, {mapped8}, u"const"_s, line);
    }
    const QString section = mappingSection(desk.generate());
    QVERIFY(section.contains("\tmapTableRPDOa1 = {\n\t(UNSIGNED8)1u,\n\t{\n\t\t{&od_u8[0]"_L1));
    QVERIFY(section.contains("\tmapTableRPDOb1 = {\n\t(UNSIGNED8)1u,\n\t{\n\t\t{&od_u8[2]"_L1));
}

void TestObjDictMapping::mappingsThatDifferInTheCountAreNotShared()
{
    DictionaryDesk desk;
    addMappable(desk);
    desk.pdo(0x1400, {mapped8, mapped8});
    desk.pdo(0x1401, {mapped8, mapped8}, u"const"_s, 0, u"1"_s);
    desk.pdo(0x1402, {mapped8, mapped8}, u"const"_s, 0, u"255"_s);
    QCOMPARE(mappingSection(desk.generate()).count("/* unique rpdo defintion */\nstatic "_L1), 3);
}

void TestObjDictMapping::withRoutingEveryReceiveMappingHasATable()
{
    DictionaryDesk desk;
    addMappable(desk);
    desk.pdo(0x1400, {mapped8});
    desk.pdo(0x1402, {mapped8});
    desk.pdo(0x1403, {mapped8}, u"const"_s, 0, u"0"_s);
    desk.pdo(0x1800, {mapped8, mapped8});
    desk.array(0x1F2C, {{}});
    QCOMPARE(mappingSection(desk.generate()).section(u"/* Mapping table RPDO"_s, 1),
             u" 1 */\n"
             "static CORE_CONST PDO_REC_MAP_TABLE_T CORE_CONST_STORAGE_CLASS\tmapTableRPDO1 = {\n"
             "\t(UNSIGNED8)1u,\n"
             "\t{\n"
             "\t\t{&od_u8[1], 1u, CORE_DTYPE_U8, 0x20000108UL, {0} },\n"
             "\t\t{NULL, (UNSIGNED8)0u, CORE_DTYPE_NON_NUMERIC, 0ul,{0}}\n"
             "\t}\n"
             "};\n"
             "/* Mapping table RPDO 3 */\n"
             "static CORE_CONST PDO_REC_MAP_TABLE_T CORE_CONST_STORAGE_CLASS\tmapTableRPDO3 = {\n"
             "\t(UNSIGNED8)1u,\n"
             "\t{\n"
             "\t\t{&od_u8[1], 1u, CORE_DTYPE_U8, 0x20000108UL, {0} },\n"
             "\t\t{NULL, (UNSIGNED8)0u, CORE_DTYPE_NON_NUMERIC, 0ul,{0}}\n"
             "\t}\n"
             "};\n"
             "/* Mapping table RPDO 4 */\n"_s);
}

void TestObjDictMapping::aRoutedVariableNamesTheTpdosThatSendIt()
{
    DictionaryDesk desk;
    for (const quint8 line : {0, 1, 2})
        desk.object(0x2000, {{.shared = true}, {.shared = true}, {.shared = true}}, CANopen::Record, line);
    desk.addLine(3);
    desk.addLine(32); // no line of the stack
    desk.array(0x1F2C, {{}});
    desk.pdo(0x1400, {u"0x20000108"_s});
    desk.pdo(0x1401, {u"0x20000208"_s});
    desk.pdo(0x1810, {u"0x20000208"_s, u"0x20000108"_s}, u"const"_s, 1);
    desk.pdo(0x1811, {u"0x20000108"_s}, u"rw"_s, 1);
    desk.pdo(0x1800, {u"0x20000108"_s}, u"rw"_s, 2);
    desk.pdo(0x1801, {u"0x20000208"_s}, u"rw"_s, 2, u"0"_s); // not mapped
    const QString section = mappingSection(desk.generate());
    QVERIFY2(section.contains("0x20000108UL, {0,17,1,0} },\n"_L1), qPrintable(section));
    QVERIFY(section.contains("0x20000208UL, {0,17,0,0} },\n"_L1));
    QVERIFY(section.contains("{NULL, (UNSIGNED8)0u, CORE_DTYPE_NON_NUMERIC, 0ul,{0,0,0,0}}"_L1));
    QVERIFY(section.contains("0x20000108UL },\n"_L1)); // a transmit table is not routed
}

void TestObjDictMapping::onlySharedVariablesAreRouted()
{
    DictionaryDesk desk;
    for (const quint8 line : {0, 1})
        addMappable(desk, line);
    desk.array(0x1F2C, {{}}, 1);
    desk.pdo(0x1400, {mapped8, u"0x30000008"_s});
    desk.pdo(0x1800, {mapped8, u"0x30000008"_s}, u"const"_s, 1);
    const QString section = mappingSection(desk.generate());
    QVERIFY(section.contains("0x20000108UL, {0,0} },\n"_L1));
    QVERIFY(section.contains("0x30000008UL, {0,0} },\n"_L1));
}

void TestObjDictMapping::theJ1939ServerHasNoMappingTables()
{
    DictionaryDesk desk;
    desk.forJ1939Server = true;
    addMappable(desk);
    desk.pdo(0x1800, {mapped8});
    const QString text = desk.generate();
    QVERIFY(!text.contains("mapTable"_L1));
    QVERIFY(!text.contains("/* static PDO mapping tables */"_L1));
}

void TestObjDictMapping::sharedVariablesAreThoseOfLineZero()
{
    DictionaryDesk desk;
    for (const quint8 line : {0, 1})
        desk.object(
            0x2000,
            {{},
             {.shared = true},
             {},
             {.implementation = CANopen::ApplicationVariable, .variable = u"speed_$l"_s, .shared = true},
             {.implementation = CANopen::ApplicationVariable, .variable = u"torque_$l"_s}},
            CANopen::Record, line);
    desk.pdo(0x1400, {mapped8, u"0x20000208"_s, u"0x20000308"_s, u"0x20000408"_s}, u"const"_s, 1);
    const QString section = mappingSection(desk.generate());
    QVERIFY(section.contains("{&od_u8[1], 1u, CORE_DTYPE_U8, 0x20000108UL },"_L1));
    QVERIFY(section.contains("{&od_u8[4], 1u, CORE_DTYPE_U8, 0x20000208UL },"_L1));
    QVERIFY(section.contains("{&(speed_0), 1u, CORE_DTYPE_U8, 0x20000308UL },"_L1));
    QVERIFY(section.contains("{&(torque_1), 1u, CORE_DTYPE_U8, 0x20000408UL },"_L1));
}

QTEST_GUILESS_MAIN(TestObjDictMapping)
#include "tst_objdictmapping.moc"
