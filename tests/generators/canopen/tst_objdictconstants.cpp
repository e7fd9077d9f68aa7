#include "generators/canopen/DictionaryDesk.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using Generated::definition;
using Generated::rows;
using Generated::tableHeads;

constexpr auto constants = "/* definition of constants */"_L1;

} // namespace

/** The constant tables of gen_objdict.c: defaults, limits and texts. */
class TestObjDictConstants : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void constantTablesStandInTheirOrder();
    void constantsOfEveryStorageClassAreKept();
    void equalDefaultsOfOneTypeShareARow();
    void equalValuesOfTwoTypesAreTwoRows();
    void constantsAreSharedAcrossLines();
    void theNodeIdIsAddedAtRunTime();
    void valuesThatAreNoNumbersCountAsZero_data();
    void valuesThatAreNoNumbersCountAsZero();
    void limitsJoinTheConstants();
    void aLimitEqualToADefaultSharesItsRow();
    void limitsNeedAWritableSubIndexThatHasThem_data();
    void limitsNeedAWritableSubIndexThatHasThem();
    void signedLimitsAreDecimal();
    void constantTextsAreNotShared();
    void anEmptyTextHasLengthZero();
    void constantOctetStringsStandAmongVisibleStrings();
    void constantUtf8TextsHaveTablesOfTheirOwn();
    void textsThatWouldBreakCAreEscaped_data();
    void textsThatWouldBreakCAreEscaped();
    void textsTooLongForALiteralAreArrays();
    void moreValuesThanPositionsAreRefused_data();
    void moreValuesThanPositionsAreRefused();
};

void TestObjDictConstants::constantTablesStandInTheirOrder()
{
    DictionaryDesk desk;
    QList<Entry> entries = everyNumber();
    entries.append({.type = CAN::Utf8String, .value = u"b"_s, .implementation = CANopen::ManagedConst});
    entries.append({.type = CAN::VisibleString, .value = u"a"_s, .implementation = CANopen::ManagedConst});
    desk.object(0x2000, entries);
    QCOMPARE(
        tableHeads(desk.generate(), constants),
        (QStringList{
            u"static CORE_CONST UNSIGNED8 CORE_CONST_STORAGE_CLASS\tod_const_u8[1] = {"_s,
            u"static CORE_CONST UNSIGNED16 CORE_CONST_STORAGE_CLASS\tod_const_u16[1] = {"_s,
            u"static CORE_CONST UNSIGNED32 CORE_CONST_STORAGE_CLASS\tod_const_u32[1] = {"_s,
            u"static CORE_CONST UNSIGNED24 CORE_CONST_STORAGE_CLASS\tod_const_u24[1] = {"_s,
            u"static CORE_CONST UNSIGNED40 CORE_CONST_STORAGE_CLASS\tod_const_u40[1] = {"_s,
            u"static CORE_CONST UNSIGNED48 CORE_CONST_STORAGE_CLASS\tod_const_u48[1] = {"_s,
            u"static CORE_CONST UNSIGNED64 CORE_CONST_STORAGE_CLASS\tod_const_u64[1] = {"_s,
            u"static CORE_CONST INTEGER8 CORE_CONST_STORAGE_CLASS\tod_const_i8[1] = {"_s,
            u"static CORE_CONST INTEGER16 CORE_CONST_STORAGE_CLASS\tod_const_i16[1] = {"_s,
            u"static CORE_CONST INTEGER24 CORE_CONST_STORAGE_CLASS\tod_const_i24[1] = {"_s,
            u"static CORE_CONST INTEGER32 CORE_CONST_STORAGE_CLASS\tod_const_i32[1] = {"_s,
            u"static CORE_CONST REAL32 CORE_CONST_STORAGE_CLASS\tod_const_r32[1] = {"_s,
            u"static CORE_CONST VIS_STRING CORE_CONST_STORAGE_CLASS\tod_const_vis_string[1] = {"_s,
            u"static CORE_CONST UNSIGNED32 CORE_CONST_STORAGE_CLASS\tod_const_vis_string_len[1] = {"_s,
            u"static CORE_CONST UTF8_STRING CORE_CONST_STORAGE_CLASS\tod_const_utf8_string[1] = {"_s,
            u"static CORE_CONST UNSIGNED32 CORE_CONST_STORAGE_CLASS\tod_const_utf8_string_len[1] = {"_s}));
    QVERIFY(tableHeads(desk.generate(false), constants)
                .contains(u"static CO_CONST UNSIGNED8 CO_CONST_STORAGE_CLASS\tod_const_u8[1] = {"_s));
}

void TestObjDictConstants::constantsOfEveryStorageClassAreKept()
{
    DictionaryDesk desk;
    for (int implementation = 0; implementation <= 3; ++implementation)
        desk.variable(quint16(0x2000 + implementation),
                      {.value = QString::number(10 + implementation), .implementation = implementation});
    QCOMPARE(definition(desk.generate(), u"static CORE_CONST UNSIGNED8 "_s),
             u"static CORE_CONST UNSIGNED8 CORE_CONST_STORAGE_CLASS\tod_const_u8[4] = {\n"
             "\t(UNSIGNED8)10u,\n\t(UNSIGNED8)11u,\n\t(UNSIGNED8)12u,\n\t(UNSIGNED8)13u\n};\n"_s);
}

void TestObjDictConstants::equalDefaultsOfOneTypeShareARow()
{
    DictionaryDesk desk;
    desk.object(0x2000, {{.value = u"5"_s}, {.value = u"9"_s}, {.value = u"0x05"_s}, {.value = u"05"_s}});
    const QString text = desk.generate();
    QCOMPARE(rows(text, u"static CORE_CONST UNSIGNED8 "_s),
             (QStringList{u"\t(UNSIGNED8)5u,"_s, u"\t(UNSIGNED8)9u"_s}));
    QStringList positions;
    for (const QString &row : Generated::descriptions(text))
        positions.append(row.section(u"(UNSIGNED16)"_s, 2).section(u'u', 0, 0));
    QCOMPARE(positions, (QStringList{u"0"_s, u"1"_s, u"0"_s, u"0"_s}));
}

void TestObjDictConstants::equalValuesOfTwoTypesAreTwoRows()
{
    DictionaryDesk desk;
    desk.object(0x2000, {{.value = u"5"_s}, {.type = CAN::Integer8, .value = u"5"_s}});
    const QString text = desk.generate();
    QCOMPARE(rows(text, u"static CORE_CONST UNSIGNED8 "_s), QStringList{u"\t(UNSIGNED8)5u"_s});
    QCOMPARE(rows(text, u"static CORE_CONST INTEGER8 "_s), QStringList{u"\t(INTEGER8)5"_s});
}

void TestObjDictConstants::constantsAreSharedAcrossLines()
{
    DictionaryDesk desk;
    desk.variable(0x2000, {.value = u"1"_s});
    desk.variable(0x2000, {.value = u"2"_s}, 1);
    desk.variable(0x2001, {.value = u"1"_s}, 1);
    QCOMPARE(rows(desk.generate(), u"static CORE_CONST UNSIGNED8 "_s),
             (QStringList{u"\t(UNSIGNED8)1u,"_s, u"\t(UNSIGNED8)2u"_s}));
}

void TestObjDictConstants::theNodeIdIsAddedAtRunTime()
{
    DictionaryDesk desk;
    desk.object(0x1280,
                {{.type = CAN::Unsigned32, .value = u"$NODEID+0x580"_s},
                 {.type = CAN::Unsigned32, .value = u"$nodeid+0x600"_s}});
    QCOMPARE(rows(desk.generate(), u"static CORE_CONST UNSIGNED32 "_s),
             (QStringList{u"\t(UNSIGNED32)1408UL,"_s, u"\t(UNSIGNED32)1536UL"_s}));
}

void TestObjDictConstants::valuesThatAreNoNumbersCountAsZero_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("empty") << QString();
    QTest::newRow("word") << u"none"_s;
    QTest::newRow("sum") << u"1+1"_s;
    QTest::newRow("negative") << u"-1"_s;
    QTest::newRow("too large") << u"4294967296"_s;
}

void TestObjDictConstants::valuesThatAreNoNumbersCountAsZero()
{
    QFETCH(QString, value);
    DictionaryDesk desk;
    desk.variable(0x2000, {.type = CAN::Unsigned32, .value = value});
    QCOMPARE(rows(desk.generate(), u"static CORE_CONST UNSIGNED32 "_s), QStringList{u"\t(UNSIGNED32)0UL"_s});
}

void TestObjDictConstants::limitsJoinTheConstants()
{
    DictionaryDesk desk;
    desk.set(u"limit_check"_s, u"1"_s);
    desk.object(0x2000,
                {{.value = u"5"_s, .low = u"1"_s, .up = u"9"_s, .limits = true},
                 {.value = u"6"_s, .low = u"0"_s, .up = u"9"_s, .limits = true}});
    const QString text = desk.generate();
    QCOMPARE(rows(text, u"static CORE_CONST UNSIGNED8 "_s),
             (QStringList{u"\t(UNSIGNED8)5u,"_s, u"\t(UNSIGNED8)1u,"_s, u"\t(UNSIGNED8)9u,"_s,
                          u"\t(UNSIGNED8)6u,"_s, u"\t(UNSIGNED8)0u"_s}));
    QVERIFY(Generated::description(text, u"0x2000:0"_s)
                .endsWith(u"  (UNSIGNED16)0u, (UNSIGNED16)1u, (UNSIGNED16)2u},"_s));
    QVERIFY(Generated::description(text, u"0x2000:1"_s)
                .endsWith(u"  (UNSIGNED16)3u, (UNSIGNED16)4u, (UNSIGNED16)2u},"_s));
}

void TestObjDictConstants::aLimitEqualToADefaultSharesItsRow()
{
    DictionaryDesk desk;
    desk.set(u"limit_check"_s, u"1"_s);
    desk.variable(0x2000, {.value = u"5"_s, .low = u"5"_s, .up = u"5"_s, .limits = true});
    const QString text = desk.generate();
    QCOMPARE(rows(text, u"static CORE_CONST UNSIGNED8 "_s), QStringList{u"\t(UNSIGNED8)5u"_s});
    QVERIFY(Generated::description(text, u"0x2000:0"_s)
                .endsWith(u"(UNSIGNED16)0u, (UNSIGNED16)0u, (UNSIGNED16)0u},"_s));
}

void TestObjDictConstants::limitsNeedAWritableSubIndexThatHasThem_data()
{
    QTest::addColumn<QString>("check");
    QTest::addColumn<QString>("access");
    QTest::addColumn<bool>("limits");
    QTest::addColumn<bool>("kept");
    QTest::newRow("read and write") << u"1"_s << u"rw"_s << true << true;
    QTest::newRow("check above 1") << u"2"_s << u"rw"_s << true << true;
    QTest::newRow("rwr") << u"1"_s << u"rwr"_s << true << true;
    QTest::newRow("rww") << u"1"_s << u"rww"_s << true << true;
    QTest::newRow("write") << u"1"_s << u"wo"_s << true << true;
    QTest::newRow("read") << u"1"_s << u"ro"_s << true << false;
    QTest::newRow("constant") << u"1"_s << u"const"_s << true << false;
    QTest::newRow("no limits") << u"1"_s << u"rw"_s << false << false;
    QTest::newRow("no check") << u"0"_s << u"rw"_s << true << false;
}

void TestObjDictConstants::limitsNeedAWritableSubIndexThatHasThem()
{
    QFETCH(QString, check);
    QFETCH(QString, access);
    QFETCH(bool, limits);
    QFETCH(bool, kept);
    DictionaryDesk desk;
    desk.set(u"limit_check"_s, check);
    desk.variable(0x2000, {.value = u"5"_s, .access = access, .low = u"1"_s, .up = u"9"_s, .limits = limits});
    QCOMPARE(rows(desk.generate(), u"static CORE_CONST UNSIGNED8 "_s).size(), kept ? 3 : 1);
}

void TestObjDictConstants::signedLimitsAreDecimal()
{
    DictionaryDesk desk;
    desk.set(u"limit_check"_s, u"1"_s);
    desk.object(
        0x2000,
        {{.type = CAN::Integer8, .value = u"010"_s, .low = u"-010"_s, .up = u"0x10"_s, .limits = true},
         {.value = u"010"_s, .low = u"011"_s, .up = u"0x10"_s, .limits = true}});
    const QString text = desk.generate();
    QCOMPARE(rows(text, u"static CORE_CONST INTEGER8 "_s),
             (QStringList{u"\t(INTEGER8)8,"_s, u"\t(INTEGER8)-10,"_s, u"\t(INTEGER8)0"_s}));
    QCOMPARE(rows(text, u"static CORE_CONST UNSIGNED8 "_s),
             (QStringList{u"\t(UNSIGNED8)8u,"_s, u"\t(UNSIGNED8)9u,"_s, u"\t(UNSIGNED8)16u"_s}));
}

void TestObjDictConstants::constantTextsAreNotShared()
{
    DictionaryDesk desk;
    const Entry text{.type = CAN::VisibleString,
                     .value = u"Pump"_s,
                     .implementation = CANopen::ManagedConst,
                     .access = u"const"_s};
    desk.object(0x2000, {text, text});
    const QString file = desk.generate();
    QCOMPARE(definition(file, u"static CORE_CONST VIS_STRING "_s),
             u"static CORE_CONST VIS_STRING CORE_CONST_STORAGE_CLASS\tod_const_vis_string[2] = {\n"
             "\t\"Pump\",\n\t\"Pump\"\n};\n"_s);
    QCOMPARE(definition(file, u"static CORE_CONST UNSIGNED32 "_s),
             u"static CORE_CONST UNSIGNED32 CORE_CONST_STORAGE_CLASS\tod_const_vis_string_len[2] = {\n"
             "\t4UL,\n\t4UL\n};\n"_s);
    QCOMPARE(Generated::columns(Generated::description(file, u"0x2000:1"_s)).value(3), u"(UNSIGNED16)1u"_s);
}

void TestObjDictConstants::anEmptyTextHasLengthZero()
{
    DictionaryDesk desk;
    desk.variable(0x2000,
                  {.type = CAN::VisibleString,
                   .value = QString(),
                   .implementation = CANopen::ManagedConst,
                   .size = 20});
    const QString file = desk.generate();
    QCOMPARE(rows(file, u"static CORE_CONST VIS_STRING "_s), QStringList{u"\t\"\""_s});
    QCOMPARE(rows(file, u"static CORE_CONST UNSIGNED32 "_s), QStringList{u"\t0UL"_s});
}

void TestObjDictConstants::constantOctetStringsStandAmongVisibleStrings()
{
    DictionaryDesk desk;
    desk.object(0x2000,
                {{.type = CAN::VisibleString, .value = u"a"_s, .implementation = CANopen::ManagedConst},
                 {.type = CAN::OctetString, .value = u"|x00ff"_s, .implementation = CANopen::ManagedConst}});
    const QString file = desk.generate();
    QCOMPARE(rows(file, u"static CORE_CONST VIS_STRING "_s),
             (QStringList{u"\t\"a\","_s, u"\t\"\\x00\\xff\""_s}));
    QCOMPARE(rows(file, u"static CORE_CONST UNSIGNED32 "_s), (QStringList{u"\t1UL,"_s, u"\t2UL"_s}));
    const QStringList row = Generated::columns(Generated::description(file, u"0x2000:1"_s));
    QCOMPARE(row.value(2), u"CO_DSPEC_CONST"_s);
    QCOMPARE(row.value(3), u"(UNSIGNED16)1u"_s);
}

void TestObjDictConstants::constantUtf8TextsHaveTablesOfTheirOwn()
{
    DictionaryDesk desk;
    desk.variable(0x2000,
                  {.type = CAN::Utf8String, .value = u"grün"_s, .implementation = CANopen::ManagedConst});
    const QString file = desk.generate();
    QCOMPARE(rows(file, u"static CORE_CONST UTF8_STRING "_s), QStringList{u"\t\"gr\\xc3\\xbcn\""_s});
    QCOMPARE(rows(file, u"static CORE_CONST UNSIGNED32 "_s), QStringList{u"\t5UL"_s});
}

void TestObjDictConstants::textsThatWouldBreakCAreEscaped_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("row");
    QTest::newRow("marks") << u"a\"b\\c\nd"_s << u"\t\"a\\\"b\\\\c\\nd\""_s;
    QTest::newRow("digit behind an escape") << u"ßb"_s << u"\t(\"\\xc3\\x9f\" \"b\")"_s;
    QTest::newRow("quoted blank") << u"\" \""_s << u"\t\"\\\" \\\"\""_s;
}

void TestObjDictConstants::textsThatWouldBreakCAreEscaped()
{
    QFETCH(QString, value);
    DictionaryDesk desk;
    desk.variable(0x2000,
                  {.type = CAN::VisibleString, .value = value, .implementation = CANopen::ManagedConst});
    QTEST(rows(desk.generate(), u"static CORE_CONST VIS_STRING "_s).join(u'\n'), "row");
}

/** C99 asks compilers for literals of 4095 bytes. */
void TestObjDictConstants::textsTooLongForALiteralAreArrays()
{
    DictionaryDesk desk;
    const auto text = [](int type, const QString &value) {
        return Entry{.type = type, .value = value, .implementation = CANopen::ManagedConst};
    };
    const QString longest(4095, u'a');
    desk.object(0x2000,
                {text(CAN::VisibleString, longest), text(CAN::VisibleString, QString(longest + u'b')),
                 text(CAN::OctetString, u"|xff"_s + u"07"_s.repeated(4095))});
    desk.variable(0x2001, text(CAN::Utf8String, u'c' + longest));
    const QString file = desk.generate();
    QVERIFY(file.contains(QString(u"\t\""_s + longest + u"\",\n\t(VIS_STRING)(const char[]){\n"_s)));
    QVERIFY(file.contains(QString(u"\t\t"_s + u"0x61, "_s.repeated(15) + u"0x62,\n\t\t0x00},\n"_s)));
    QVERIFY(file.contains(u"\t(VIS_STRING)(const char[]){\n\t\t(char)0xff, 0x07, 0x07,"_s));
    QVERIFY(file.contains(u"\t(UTF8_STRING)(const char[]){\n\t\t0x63, 0x61,"_s));
    QVERIFY(file.contains(u"\t4095UL,\n\t4096UL,\n\t4096UL\n"_s));
}

void TestObjDictConstants::moreValuesThanPositionsAreRefused_data()
{
    QTest::addColumn<int>("values");
    QTest::addColumn<bool>("refused");
    QTest::newRow("as many as positions") << 0x10000 << false;
    QTest::newRow("one more") << 0x10001 << true;
}

void TestObjDictConstants::moreValuesThanPositionsAreRefused()
{
    QFETCH(int, values);
    QFETCH(bool, refused);
    constexpr int perObject = 250;
    DictionaryDesk desk;
    QList<ObjectDataBase::SubEntry> entries;
    for (int i = 0; i < values; ++i)
        entries.append({.index = quint16(0x2000 + i / perObject),
                        .subindex = quint8(i % perObject),
                        .data = Entry{.type = CAN::Unsigned32, .value = QString::number(i)}.data()});
    for (int i = 0; i < values; i += perObject)
        desk.object(quint16(0x2000 + i / perObject), CANopen::Record);
    QVERIFY(desk.store.addSubIndices(entries));
    desk.write(u"gen_objdict.c"_s, "of an earlier run");
    const QString text = desk.generate();
    QCOMPARE(text == "of an earlier run"_L1, refused);
    QCOMPARE(desk.error,
             refused ? u"There are 65537 values of the type u32, and the stack reaches 65536 in one table."_s
                     : QString());
}

QTEST_GUILESS_MAIN(TestObjDictConstants)
#include "tst_objdictconstants.moc"
