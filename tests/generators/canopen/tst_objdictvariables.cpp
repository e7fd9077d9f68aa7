#include "generators/canopen/DictionaryDesk.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using Generated::definition;
using Generated::rows;
using Generated::tableHeads;

constexpr auto managed = "/* definition of managed variables */"_L1;
constexpr auto constants = "/* definition of constants */"_L1;
constexpr auto application = "/* definition of application variables */"_L1;

} // namespace

/** The tables of managed variables and of variables of the application. */
class TestObjDictVariables : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void managedTablesStandInTheirOrder();
    void managedRowsHaveValueAndPlace();
    void withoutInitialisationOnlyTheSizeIsWritten();
    void theMemorySpecifierStandsBehindTheSize();
    void rowsOfSigned32HaveABlankMore();
    void multiLineCommentsNameTheLine();
    void valuesThatTheStackHoldsHaveNoVariable_data();
    void valuesThatTheStackHoldsHaveNoVariable();
    void managedTextsHaveNoTable();
    void unlistedTypesHaveNoTable_data();
    void unlistedTypesHaveNoTable();
    void sharedVariablesStandOnLineZeroOnly();
    void linesFollowEachOtherInTheTables();
    void pointerTablesStandInTheirOrder();
    void variablesArePointedTo_data();
    void variablesArePointedTo();
    void variableNamesAreExpanded();
    void applicationTextsHaveTheirLengths();
    void utf8TextsAreVisibleStringsToTheCompiler();
    void octetStringsArePointers();
    void domainsStartWithoutAPlace();
    void realNumbersHaveTheirPrecision();
};

void TestObjDictVariables::managedTablesStandInTheirOrder()
{
    DictionaryDesk desk;
    desk.object(0x2000, everyNumber());
    QCOMPARE(tableHeads(desk.generate(), managed),
             (QStringList{u"static UNSIGNED8 CORE_STORAGE_CLASS\tod_u8[3];"_s,
                          u"static UNSIGNED16 CORE_STORAGE_CLASS\tod_u16[1];"_s,
                          u"static UNSIGNED24 CORE_STORAGE_CLASS\tod_u24[1];"_s,
                          u"static UNSIGNED32 CORE_STORAGE_CLASS\tod_u32[1];"_s,
                          u"static UNSIGNED40 CORE_STORAGE_CLASS\tod_u40[1];"_s,
                          u"static UNSIGNED48 CORE_STORAGE_CLASS\tod_u48[2];"_s,
                          u"static UNSIGNED64 CORE_STORAGE_CLASS\tod_u64[1];"_s,
                          u"static INTEGER8  CORE_STORAGE_CLASS\tod_i8[1];"_s,
                          u"static INTEGER16 CORE_STORAGE_CLASS\tod_i16[1];"_s,
                          u"static INTEGER24 CORE_STORAGE_CLASS\tod_i24[1];"_s,
                          u"static INTEGER32 CORE_STORAGE_CLASS\tod_i32[1];"_s,
                          u"static REAL32 CORE_STORAGE_CLASS\tod_r32[1];"_s}));
    QVERIFY(tableHeads(desk.generate(false), managed)
                .contains(u"static UNSIGNED8 CO_STORAGE_CLASS\tod_u8[3];"_s));
}

void TestObjDictVariables::managedRowsHaveValueAndPlace()
{
    DictionaryDesk desk;
    desk.set(u"init_static_variables"_s, u"1"_s);
    desk.object(0x2000,
                {{.value = u"0x1f"_s},
                 {.type = CAN::Integer16, .value = u"-2"_s},
                 {.value = u"7"_s},
                 {.type = CAN::Unsigned24, .value = u"0x010203"_s}});
    const QString text = desk.generate();
    QCOMPARE(definition(text, u"static UNSIGNED8 "_s),
             u"static UNSIGNED8 CORE_STORAGE_CLASS\tod_u8[2]= {\n"
             "\t(UNSIGNED8)31u /* 0x2000:0 */,\n"
             "\t(UNSIGNED8)7u /* 0x2000:2 */\n"
             "};\n"_s);
    QCOMPARE(rows(text, u"static INTEGER16 "_s), QStringList{u"\t(INTEGER16)-2 /* 0x2000:1 */"_s});
    QCOMPARE(rows(text, u"static UNSIGNED24 "_s), QStringList{u"\tU24_SET(0x01,0x02,0x03) /* 0x2000:3 */"_s});
}

void TestObjDictVariables::withoutInitialisationOnlyTheSizeIsWritten()
{
    DictionaryDesk desk;
    desk.set(u"init_static_variables"_s, u"0"_s);
    desk.variable(0x2000, {.value = u"5"_s});
    QVERIFY(desk.generate().contains(u"\n/* definition of managed variables */\n"
                                     "static UNSIGNED8 CORE_STORAGE_CLASS\tod_u8[1];\n"
                                     "\n/* definition of constants */\n"_s));
}

void TestObjDictVariables::theMemorySpecifierStandsBehindTheSize()
{
    DictionaryDesk desk;
    desk.set(u"static_memory_specifier"_s, u"__far"_s);
    desk.variable(0x2000, {});
    QVERIFY(desk.generate().contains(u"\tod_u8[1] __far ;\n"_s));
    desk.set(u"init_static_variables"_s, u"1"_s);
    QVERIFY(desk.generate().contains(u"\tod_u8[1] __far = {\n\t(UNSIGNED8)0u /* 0x2000:0 */\n};\n"_s));
}

void TestObjDictVariables::rowsOfSigned32HaveABlankMore()
{
    DictionaryDesk desk;
    desk.set(u"init_static_variables"_s, u"1"_s);
    desk.object(0x2000,
                {{.type = CAN::Integer32, .value = u"1"_s}, {.type = CAN::Integer32, .value = u"-1"_s}});
    QCOMPARE(rows(desk.generate(), u"static INTEGER32 "_s),
             (QStringList{u"\t(INTEGER32)1L /* 0x2000:0 */,"_s, u" \t(INTEGER32)-1L /* 0x2000:1 */"_s}));
}

void TestObjDictVariables::multiLineCommentsNameTheLine()
{
    DictionaryDesk desk;
    desk.set(u"init_static_variables"_s, u"1"_s);
    desk.setMisc(u"generateML"_s, u"TRUE"_s);
    desk.variable(0x2abc, {.value = u"5"_s});
    QCOMPARE(rows(desk.generate(), u"static UNSIGNED8 "_s),
             QStringList{u"\t(UNSIGNED8)5u /* 0-0x2abc:0 */"_s});
}

void TestObjDictVariables::valuesThatTheStackHoldsHaveNoVariable_data()
{
    QTest::addColumn<quint16>("index");
    QTest::addColumn<QList<int>>("variables"); // sub-indices of 0, 1, 2
    const QList<int> none;
    const QList<int> all{0, 1, 2};
    for (const int index : {0x1005, 0x1006, 0x1016, 0x1019, 0x100C, 0x100D, 0x1012, 0x1017, 0x102A, 0x1F10,
                            0x1F11, 0x1300, 0x1301, 0x1380, 0x13FF})
        QTest::addRow("%04x is held", uint(index)) << quint16(index) << none;
    for (const int index : {0x1010, 0x1011, 0x1200, 0x12FF, 0x1400, 0x15FF, 0x1600, 0x1800, 0x1A00, 0x1BFF})
        QTest::addRow("%04x is held but for 0", uint(index)) << quint16(index) << QList<int>{0};
    for (const int index :
         {0x1000, 0x1003, 0x1004, 0x1007, 0x100B, 0x100E, 0x1014, 0x1015, 0x1018, 0x1028, 0x1032,
          0x11FF, 0x1C00, 0x1F0F, 0x1F12, 0x1F2C, 0x1F80, 0x1F81, 0x1F82, 0x1F90, 0x2000, 0xFFFF})
        QTest::addRow("%04x", uint(index)) << quint16(index) << all;
    QTest::newRow("1029 is held in 1") << quint16(0x1029) << QList<int>{0, 2};
}

void TestObjDictVariables::valuesThatTheStackHoldsHaveNoVariable()
{
    QFETCH(quint16, index);
    QFETCH(QList<int>, variables);
    DictionaryDesk desk;
    desk.set(u"init_static_variables"_s, u"1"_s);
    desk.object(index, {{}, {}, {}});
    QStringList expected;
    for (const int sub : variables)
        expected.append(u"\t(UNSIGNED8)0u /* 0x%1:%2 */"_s.arg(index, 4, 16, '0'_L1).arg(sub));
    QCOMPARE(rows(desk.generate(), u"static UNSIGNED8 "_s).join(u'\n'), expected.join(u",\n"_s));
}

void TestObjDictVariables::managedTextsHaveNoTable()
{
    DictionaryDesk desk;
    for (const int type : {CAN::VisibleString, CAN::OctetString, CAN::Utf8String, CAN::Domain})
        desk.variable(quint16(0x2000 + type), {.type = type, .value = u"x"_s});
    const QString text = desk.generate();
    QCOMPARE(tableHeads(text, managed), QStringList());
    QCOMPARE(tableHeads(text, constants), QStringList());
    QCOMPARE(tableHeads(text, application), QStringList());
}

void TestObjDictVariables::unlistedTypesHaveNoTable_data()
{
    QTest::addColumn<int>("type");
    for (const int type : {0, 11, 13, 14, 17, 18, 21, 26, 28, 99, 106, 123, 125, 200})
        QTest::addRow("%d", type) << type;
}

void TestObjDictVariables::unlistedTypesHaveNoTable()
{
    QFETCH(int, type);
    DictionaryDesk desk;
    for (int implementation = 0; implementation <= 2; ++implementation)
        desk.variable(quint16(0x2000 + implementation),
                      {.type = type, .value = u"1"_s, .implementation = implementation, .variable = u"v"_s});
    QVERIFY(!desk.generate().contains(u"\tod_"_s));
}

void TestObjDictVariables::sharedVariablesStandOnLineZeroOnly()
{
    DictionaryDesk desk;
    desk.set(u"init_static_variables"_s, u"1"_s);
    for (quint8 line = 0; line < 3; ++line)
        desk.object(0x2000, {{.value = u"1"_s, .shared = true}, {.value = u"2"_s}}, CANopen::Record, line);
    QCOMPARE(rows(desk.generate(), u"static UNSIGNED8 "_s),
             (QStringList{u"\t(UNSIGNED8)1u /* 0-0x2000:0 */,"_s, u"\t(UNSIGNED8)2u /* 0-0x2000:1 */,"_s,
                          u"\t(UNSIGNED8)2u /* 1-0x2000:1 */,"_s, u"\t(UNSIGNED8)2u /* 2-0x2000:1 */"_s}));
}

void TestObjDictVariables::linesFollowEachOtherInTheTables()
{
    DictionaryDesk desk;
    desk.set(u"init_static_variables"_s, u"1"_s);
    desk.variable(0x2000, {.value = u"3"_s}, 31);
    desk.variable(0x2000, {.value = u"9"_s}, 40); // no line of the stack
    desk.variable(0x3000, {.value = u"2"_s}, 1);
    desk.variable(0x2000, {.value = u"1"_s}, 1);
    desk.variable(0x0fff, {.value = u"8"_s}, 1); // a data type
    QCOMPARE(rows(desk.generate(), u"static UNSIGNED8 "_s),
             (QStringList{u"\t(UNSIGNED8)1u /* 1-0x2000:0 */,"_s, u"\t(UNSIGNED8)2u /* 1-0x3000:0 */,"_s,
                          u"\t(UNSIGNED8)3u /* 31-0x2000:0 */"_s}));
}

void TestObjDictVariables::pointerTablesStandInTheirOrder()
{
    DictionaryDesk desk;
    desk.object(0x2000, everyNumber(CANopen::ApplicationVariable));
    QCOMPARE(tableHeads(desk.generate(), application),
             (QStringList{u"static UNSIGNED8 CORE_CONST_STORAGE_CLASS * CORE_CONST \tod_ptr_u8[3] = {"_s,
                          u"static UNSIGNED16 CORE_CONST_STORAGE_CLASS * CORE_CONST \tod_ptr_u16[1] = {"_s,
                          u"static UNSIGNED24 CORE_CONST_STORAGE_CLASS * CORE_CONST \tod_ptr_u24[1] = {"_s,
                          u"static UNSIGNED32 CORE_CONST_STORAGE_CLASS * CORE_CONST \tod_ptr_u32[1] = {"_s,
                          u"static UNSIGNED40 CORE_CONST_STORAGE_CLASS * CORE_CONST \tod_ptr_u40[1] = {"_s,
                          u"static UNSIGNED48 CORE_CONST_STORAGE_CLASS * CORE_CONST \tod_ptr_u48[2] = {"_s,
                          u"static UNSIGNED64 CORE_CONST_STORAGE_CLASS * CORE_CONST \tod_ptr_u64[1] = {"_s,
                          u"static INTEGER8  CORE_CONST_STORAGE_CLASS * CORE_CONST \tod_ptr_i8[1] = {"_s,
                          u"static INTEGER16 CORE_CONST_STORAGE_CLASS * CORE_CONST \tod_ptr_i16[1] = {"_s,
                          u"static INTEGER24 CORE_CONST_STORAGE_CLASS * CORE_CONST \tod_ptr_i24[1] = {"_s,
                          u"static INTEGER32 CORE_CONST_STORAGE_CLASS * CORE_CONST \tod_ptr_i32[1] = {"_s,
                          u"static REAL32 CORE_CONST_STORAGE_CLASS * CORE_CONST \tod_ptr_r32[1] = {"_s}));
    QVERIFY(tableHeads(desk.generate(false), application)
                .contains(u"static UNSIGNED8 CO_CONST_STORAGE_CLASS * CO_CONST \tod_ptr_u8[3] = {"_s));
}

void TestObjDictVariables::variablesArePointedTo_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("row");
    QTest::newRow("variable") << int(CAN::Unsigned8) << u"speed"_s << u"\t&(speed) /* 0x2000:0 */"_s;
    QTest::newRow("member") << int(CAN::Integer32) << u"axis[1].v"_s << u"\t&(axis[1].v) /* 0x2000:0 */"_s;
    QTest::newRow("expression") << int(CAN::Unsigned16) << u"ADDR(speed)"_s
                                << u"\tADDR(speed) /* 0x2000:0 */"_s;
    for (const int type :
         {CAN::Unsigned24, CAN::Unsigned40, CAN::Unsigned48, CAN::Unsigned64, CAN::TimeOfDay})
        QTest::addRow("expression of type %d", type)
            << type << u"ADDR(speed)"_s << u"\t&(ADDR(speed)) /* 0x2000:0 */"_s;
}

void TestObjDictVariables::variablesArePointedTo()
{
    QFETCH(int, type);
    QFETCH(QString, name);
    DictionaryDesk desk;
    desk.variable(0x2000, {.type = type, .implementation = CANopen::ApplicationVariable, .variable = name});
    const QString text = desk.generate();
    const QString head = tableHeads(text, application).value(0);
    QVERIFY(head.contains(u"* CORE_CONST \tod_ptr_"_s));
    QTEST(rows(text, head).join(u'\n'), "row");
}

void TestObjDictVariables::variableNamesAreExpanded()
{
    DictionaryDesk desk;
    const Entry entry{.implementation = CANopen::ApplicationVariable, .variable = u"axis$L_$I[$z]"_s};
    desk.sub(0x2000, 1, entry);
    desk.object(0x2000, CANopen::Array);
    desk.sub(0x2000, 2, entry);
    QCOMPARE(rows(desk.generate(), u"static UNSIGNED8 CORE_CONST_STORAGE_CLASS * "_s),
             (QStringList{u"\t&(axis0_2000[0]) /* 0x2000:1 */,"_s, u"\t&(axis0_2000[1]) /* 0x2000:2 */"_s}));
}

void TestObjDictVariables::applicationTextsHaveTheirLengths()
{
    DictionaryDesk desk;
    const Entry name{.type = CAN::VisibleString,
                     .value = u"x"_s,
                     .implementation = CANopen::ApplicationVariable,
                     .variable = u"deviceName"_s,
                     .size = 20};
    Entry place = name;
    place.variable = u"devicePlace"_s;
    place.size = -1;
    desk.object(0x2000, {name, place});
    const QString text = desk.generate();
    QVERIFY2(text.contains(u"\n/* definition of application variables */\n"
                           "static VIS_STRING\tod_vis_string[2] = {\n"
                           "\t&(deviceName[0]),\n\t&(devicePlace[0])\n};\n"
                           "static UNSIGNED32\tod_vis_string_len[2] = {\n\t20ul,\n\t0ul\n};\n"
                           "static UNSIGNED32\tod_vis_string_actLen[2] = {\n\t20ul,\n\t0ul\n};\n"_s),
             qPrintable(text));
}

void TestObjDictVariables::utf8TextsAreVisibleStringsToTheCompiler()
{
    DictionaryDesk desk;
    desk.variable(0x2000,
                  {.type = CAN::Utf8String,
                   .implementation = CANopen::ApplicationVariable,
                   .variable = u"label"_s,
                   .size = 8});
    QVERIFY(desk.generate().contains(u"static VIS_STRING\tod_utf8_string[1] = {\n\t&(label[0])\n};\n"
                                     "static UNSIGNED32\tod_utf8_string_len[1] = {\n\t8ul\n};\n"
                                     "static UNSIGNED32\tod_utf8_string_actLen[1] = {\n\t8ul\n};\n"_s));
}

void TestObjDictVariables::octetStringsArePointers()
{
    DictionaryDesk desk;
    desk.variable(0x2000,
                  {.type = CAN::OctetString,
                   .implementation = CANopen::ApplicationVariable,
                   .variable = u"key"_s,
                   .size = 16});
    const QString expected =
        u"static OCTET_STRING\t*od_octet_string[1] = {\n\t&(key[0])\n};\n"
        "static UNSIGNED32 CORE_STORAGE_CLASS\tod_octet_string_len[1] = {\n\t16ul\n};\n"
        "static UNSIGNED32 CORE_STORAGE_CLASS\tod_octet_string_actLen[1] = {\n\t16ul\n};\n"_s;
    QVERIFY(desk.generate().contains(expected));
    QVERIFY(desk.generate(false).contains(QString(expected).replace("CORE_"_L1, "CO_"_L1)));
}

void TestObjDictVariables::domainsStartWithoutAPlace()
{
    DictionaryDesk desk;
    const Entry domain{.type = CAN::Domain,
                       .implementation = CANopen::ApplicationVariable,
                       .variable = u"v_1"_s,
                       .size = 99};
    desk.object(0x1F50, {domain, domain});
    QVERIFY(desk.generate().contains(
        u"static CO_DOMAIN_PTR\tod_domain[2] = {\n\tNULL,\n\tNULL\n};\n"
        "static UNSIGNED32 CORE_STORAGE_CLASS\tod_domain_len[2] = {\n\t0ul,\n\t0ul\n};\n"
        "static UNSIGNED32 CORE_STORAGE_CLASS\tod_domain_actLen[2] = {\n\t0ul,\n\t0ul\n};\n"_s));
}

void TestObjDictVariables::realNumbersHaveTheirPrecision()
{
    DictionaryDesk desk;
    desk.set(u"init_static_variables"_s, u"1"_s);
    desk.variable(0x2000, {.type = CAN::Real32, .value = u"1.5"_s});
    const QString text = desk.generate();
    QCOMPARE(rows(text, u"static REAL32 "_s), QStringList{u"\t(REAL32)1.5000000e+00f /* 0x2000:0 */"_s});
    QCOMPARE(rows(text, u"static CORE_CONST REAL32 "_s), QStringList{u"\t(REAL32)1.50000000e+00f"_s});
}

QTEST_GUILESS_MAIN(TestObjDictVariables)
#include "tst_objdictvariables.moc"
