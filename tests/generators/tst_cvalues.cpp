#include "canopen/CANTypes.h"
#include "canopen/DataTypeTable.h"
#include "generators/CValues.h"
#include "generators/LineNames.h"
#include "generators/ObjectKey.h"

#include <QLocale>
#include <QTest>
#include <QTextStream>

#include <bit>

using CValues::Bits;
using CValues::RealPrecision;
using CValues::Table;

/** The numbers of generated tables: from the texts of the project to the rows of C. */
class TestCValues : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void everyTypeCodeHasItsTable_data();
    void everyTypeCodeHasItsTable();
    void codesWithoutATableHaveNone();
    void aTimeOfDayIsDescribedAsUnsigned48();
    void defaultValuesBecomeNumbers_data();
    void defaultValuesBecomeNumbers();
    void limitsOfSignedTypesAreDecimalOnly_data();
    void limitsOfSignedTypesAreDecimalOnly();
    void realValuesBecomeFloats_data();
    void realValuesBecomeFloats();
    void equalValuesOfOneTableHaveEqualBits();
    void rowsAreCastValueAndSuffix_data();
    void rowsAreCastValueAndSuffix();
    void realRowsAreThoseOfAScientificStream_data();
    void realRowsAreThoseOfAScientificStream();
    void tablesWithoutNumbersHaveNoRows_data();
    void tablesWithoutNumbersHaveNoRows();
    void rowsDoNotDependOnTheLocale();
    void wideValuesAreMacrosOfBytes_data();
    void wideValuesAreMacrosOfBytes();
    void everyOtherTypeIsNoMacro();
    void objectKeysHoldLineIndexAndSubIndex_data();
    void objectKeysHoldLineIndexAndSubIndex();
    void commentsNameTheObject_data();
    void commentsNameTheObject();
    void namesOfALineAreQualifiedInTheMultiLineForm();
};

void TestCValues::everyTypeCodeHasItsTable_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("suffix");
    const auto row = [](int code, const char *suffix) {
        QTest::addRow("%d", code) << code << QString::fromLatin1(suffix);
    };
    row(1, "u8");
    row(2, "i8");
    row(3, "i16");
    row(4, "i32");
    row(5, "u8");
    row(6, "u16");
    row(7, "u32");
    row(8, "r32");
    row(9, "vis_string");
    row(10, "octet_string");
    row(12, "u48");
    row(15, "domain");
    row(16, "i24");
    row(22, "u24");
    row(24, "u40");
    row(25, "u48");
    row(27, "u64");
    for (int code = 100; code <= 105; ++code)
        row(code, "u8");
    row(124, "utf8_string");
}

void TestCValues::everyTypeCodeHasItsTable()
{
    QFETCH(int, code);
    QTEST(CValues::form(CValues::table(code)).name.toString(), "suffix");
}

void TestCValues::codesWithoutATableHaveNone()
{
    const QList<int> withTable{1,  2,  3,  4,  5,  6,   7,   8,   9,   10,  12,  15,
                               16, 22, 24, 25, 27, 100, 101, 102, 103, 104, 105, 124};
    for (int code = -2; code < 300; ++code)
        QVERIFY2((CValues::table(code) == Table::None) != withTable.contains(code),
                 qPrintable(QString::number(code)));
    QCOMPARE(CValues::defaultValue(0, QStringLiteral("5")), Bits(0));
    QCOMPARE(CValues::defaultValue(9, QStringLiteral("5")), Bits(0));
    QCOMPARE(CValues::defaultValue(26, QStringLiteral("5")), Bits(0));
}

void TestCValues::aTimeOfDayIsDescribedAsUnsigned48()
{
    QCOMPARE(CValues::describedType(12), 25);
    QCOMPARE(CValues::describedType(13), 13);
    QCOMPARE(CValues::describedType(25), 25);
    QCOMPARE(CValues::describedType(5), 5);
}

void TestCValues::defaultValuesBecomeNumbers_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("value");
    const auto row = [](const char *name, int code, const char *text, qint64 value) {
        QTest::newRow(name) << code << QString::fromLatin1(text) << value;
    };
    row("node-ID and offset", 7, "$nodeid+0x580", 1408);
    row("node-ID in capitals", 7, "$NODEID+0x180", 0x180);
    row("node-ID in mixed case", 7, "$NodeId+384", 384);
    row("node-ID in a signed value", 4, "$NODEID+0x10", 16);
    row("node-ID in a wide value", 27, "$NODEID+0x1122334455", 0x1122334455);
    row("node-ID twice", 7, "$NODEID+$nodeid+5", 5);
    row("node-ID alone", 7, "$NODEID", 0);
    row("node-ID behind the number", 7, "0x180+$NODEID", 0);
    row("decimal", 5, "200", 200);
    row("hexadecimal", 5, "0xFf", 255);
    row("hexadecimal with a capital X", 6, "0XFF", 255);
    row("octal", 6, "0777", 511);
    row("no octal number", 6, "08", 0);
    row("blanks around", 6, " 12 ", 12);
    row("empty", 5, "", 0);
    row("a word", 5, "true", 0);
    row("a fraction", 5, "1.5", 0);
    row("unsigned, negative", 7, "-1", 0);
    row("unsigned, largest", 7, "4294967295", 4294967295);
    row("unsigned, too large", 7, "4294967296", 0);
    row("24 bit, largest", 22, "0xFFFFFF", 0xFFFFFF);
    row("40 bit, largest", 24, "0xFFFFFFFFFF", 0xFFFFFFFFFF);
    row("48 bit", 25, "281474976710655", 281474976710655);
    row("time of day", 12, "0x010203040506", 0x010203040506);
    row("64 bit, largest", 27, "18446744073709551615", -1);
    row("64 bit, too large", 27, "18446744073709551616", 0);
    row("boolean", 1, "1", 1);
    row("bit string", 105, "0x7F", 127);
    row("signed, negative", 2, "-128", -128);
    row("signed, hexadecimal", 3, "0x7FFF", 32767);
    row("signed, negative hexadecimal", 3, "-0x10", -16);
    row("signed, octal", 3, "010", 8);
    row("signed, smallest", 4, "-2147483648", -2147483648LL);
    row("signed, too large", 4, "2147483648", 0);
    row("signed 24 bit", 16, "-1", -1);
}

void TestCValues::defaultValuesBecomeNumbers()
{
    QFETCH(int, code);
    QFETCH(QString, text);
    QFETCH(qint64, value);
    QCOMPARE(qint64(CValues::defaultValue(code, text)), value);
}

void TestCValues::limitsOfSignedTypesAreDecimalOnly_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("value");
    for (const int code : {2, 3, 4, 16}) {
        QTest::addRow("signed %d, decimal", code) << code << QStringLiteral("-100") << qint64(-100);
        QTest::addRow("signed %d, hexadecimal", code) << code << QStringLiteral("0x10") << qint64(0);
        QTest::addRow("signed %d, leading zero", code) << code << QStringLiteral("010") << qint64(10);
    }
    for (const int code : {1, 5, 6, 7, 12, 22, 24, 25, 27, 100}) {
        QTest::addRow("unsigned %d, decimal", code) << code << QStringLiteral("100") << qint64(100);
        QTest::addRow("unsigned %d, hexadecimal", code) << code << QStringLiteral("0x10") << qint64(16);
        QTest::addRow("unsigned %d, octal", code) << code << QStringLiteral("010") << qint64(8);
    }
    QTest::newRow("empty") << 7 << QString() << qint64(0);
    QTest::newRow("signed, empty") << 4 << QString() << qint64(0);
    QTest::newRow("node-ID is no number of a limit") << 7 << QStringLiteral("$NODEID+0x180") << qint64(0);
}

void TestCValues::limitsOfSignedTypesAreDecimalOnly()
{
    QFETCH(int, code);
    QFETCH(QString, text);
    QFETCH(qint64, value);
    QCOMPARE(qint64(CValues::limitValue(code, text)), value);
}

void TestCValues::realValuesBecomeFloats_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<float>("value");
    QTest::newRow("fraction") << QStringLiteral("1.5") << 1.5F;
    QTest::newRow("negative") << QStringLiteral("-2.25") << -2.25F;
    QTest::newRow("exponent") << QStringLiteral("1e3") << 1000.0F;
    QTest::newRow("whole number") << QStringLiteral("7") << 7.0F;
    QTest::newRow("nearest float") << QStringLiteral("0.1") << 0.1F;
    QTest::newRow("node-ID") << QStringLiteral("$NODEID+2") << 2.0F;
    QTest::newRow("decimal comma") << QStringLiteral("1,5") << 0.0F;
    QTest::newRow("hexadecimal") << QStringLiteral("0x10") << 0.0F;
    QTest::newRow("too large") << QStringLiteral("1e39") << 0.0F;
    QTest::newRow("infinity has no literal") << QStringLiteral("inf") << 0.0F;
    QTest::newRow("not a number has no literal") << QStringLiteral("nan") << 0.0F;
    QTest::newRow("negative zero has no sign") << QStringLiteral("-0.0") << 0.0F;
    QTest::newRow("empty") << QString() << 0.0F;
}

void TestCValues::realValuesBecomeFloats()
{
    QFETCH(QString, text);
    QFETCH(float, value);
    QCOMPARE(CValues::defaultValue(8, text), Bits(std::bit_cast<quint32>(value)));
    if (!text.startsWith(u'$'))
        QCOMPARE(CValues::limitValue(8, text), Bits(std::bit_cast<quint32>(value)));
}

void TestCValues::equalValuesOfOneTableHaveEqualBits()
{
    QCOMPARE(CValues::defaultValue(4, QStringLiteral("-1")), CValues::limitValue(4, QStringLiteral("-1")));
    QCOMPARE(CValues::defaultValue(5, QStringLiteral("0x05")), CValues::defaultValue(1, QStringLiteral("5")));
    QCOMPARE(CValues::defaultValue(8, QStringLiteral("1.0")),
             CValues::defaultValue(8, QStringLiteral("1e0")));
    QVERIFY(CValues::defaultValue(2, QStringLiteral("-1"))
            != CValues::defaultValue(2, QStringLiteral("255")));
}

void TestCValues::rowsAreCastValueAndSuffix_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("row");
    const auto row = [](const char *name, int code, const char *text, const char *expected) {
        QTest::newRow(name) << code << QString::fromLatin1(text) << QString::fromLatin1(expected);
    };
    row("u8", 5, "0x10", "\t(UNSIGNED8)16u");
    row("boolean", 1, "1", "\t(UNSIGNED8)1u");
    row("bit string", 102, "3", "\t(UNSIGNED8)3u");
    row("u16", 6, "65535", "\t(UNSIGNED16)65535u");
    row("u32", 7, "0xFFFFFFFF", "\t(UNSIGNED32)4294967295UL");
    row("u32 with node-ID", 7, "$NODEID+0x180", "\t(UNSIGNED32)384UL");
    row("i8", 2, "-128", "\t(INTEGER8)-128");
    row("i16", 3, "-5", "\t(INTEGER16)-5");
    row("i32", 4, "-2147483648", "\t(INTEGER32)-2147483648L");
    row("i24", 16, "-2", "\tI24_SET(0xff,0xff,0xfe)");
    row("u24", 22, "0xABCDEF", "\tU24_SET(0xab,0xcd,0xef)");
    row("u40", 24, "0x0102030405", "\tU40_SET(0x01,0x02,0x03,0x04,0x05)");
    row("u48", 25, "0x010203040506", "\tU48_SET(0x01,0x02,0x03,0x04,0x05,0x06)");
    row("time of day", 12, "1", "\tU48_SET(0x00,0x00,0x00,0x00,0x00,0x01)");
    row("u64", 27, "0x0102030405060708", "\tU64_SET(0x01,0x02,0x03,0x04,0x05,0x06,0x07,0x08)");
    row("r32", 8, "1.5", "\t(REAL32)1.50000000e+00f");
    row("r32 negative", 8, "-0.1", "\t(REAL32)-1.00000001e-01f");
    row("unreadable", 7, "abc", "\t(UNSIGNED32)0UL");
}

void TestCValues::rowsAreCastValueAndSuffix()
{
    QFETCH(int, code);
    QFETCH(QString, text);
    QTEST(CValues::entry(CValues::table(code), CValues::defaultValue(code, text), RealPrecision::Constants),
          "row");
}

void TestCValues::realRowsAreThoseOfAScientificStream_data()
{
    QTest::addColumn<float>("value");
    for (const float value :
         {0.0F, -0.0F, 1.0F, -1.0F, 0.1F, 3.1415927F, 1e-30F, 3.4028235e38F, -1e10F, 1e-45F})
        QTest::addRow("%.9g", double(value)) << value;
}

void TestCValues::realRowsAreThoseOfAScientificStream()
{
    QFETCH(float, value);
    for (const RealPrecision precision : {RealPrecision::Variables, RealPrecision::Constants}) {
        QString expected;
        QTextStream stream(&expected);
        stream.setRealNumberNotation(QTextStream::ScientificNotation);
        stream.setRealNumberPrecision(precision == RealPrecision::Variables ? 7 : 8);
        stream << "\t(REAL32)" << value << "f";
        stream.flush();
        QCOMPARE(CValues::entry(Table::R32, std::bit_cast<quint32>(value), precision), expected);
    }
}

void TestCValues::tablesWithoutNumbersHaveNoRows_data()
{
    QTest::addColumn<int>("code");
    for (const int code : {0, 9, 10, 15, 124, 13, 26, 200})
        QTest::addRow("%d", code) << code;
}

void TestCValues::tablesWithoutNumbersHaveNoRows()
{
    QFETCH(int, code);
    QCOMPARE(CValues::entry(CValues::table(code), 5, RealPrecision::Constants), QString());
}

void TestCValues::rowsDoNotDependOnTheLocale()
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const Bits real = CValues::defaultValue(8, QStringLiteral("1234567.5"));
    QCOMPARE(CValues::entry(Table::R32, real, RealPrecision::Variables),
             QStringLiteral("\t(REAL32)1.2345675e+06f"));
    QCOMPARE(CValues::entry(Table::U32, 1234567, RealPrecision::Variables),
             QStringLiteral("\t(UNSIGNED32)1234567UL"));
    QCOMPARE(CValues::defaultValue(7, QStringLiteral("1.234")), Bits(0));
    QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
    QCOMPARE(CValues::entry(Table::I16, Bits(-12), RealPrecision::Variables),
             QStringLiteral("\t(INTEGER16)-12"));
    QCOMPARE(ObjectKey::comment(ObjectKey::make(1, 0x2001, 12), true), QStringLiteral(" /* 1-0x2001:12 */"));
}

void TestCValues::wideValuesAreMacrosOfBytes_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<quint64>("value");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, int code, quint64 value, const char *text) {
        QTest::newRow(name) << code << value << QString::fromLatin1(text);
    };
    row("time of day", 12, 0x0A0B0C0D0E0F, "U48_SET(0x0a,0x0b,0x0c,0x0d,0x0e,0x0f)");
    row("u48", 25, 0xFFEEDDCCBBAA, "U48_SET(0xff,0xee,0xdd,0xcc,0xbb,0xaa)");
    row("i24", 16, 0x7FFFFF, "I24_SET(0x7f,0xff,0xff)");
    row("i24 negative goes by its low 24 bits", 16, quint64(-8388608LL), "I24_SET(0x80,0x00,0x00)");
    row("u24", 22, 5, "U24_SET(0x00,0x00,0x05)");
    row("u40", 24, 0x123456789A, "U40_SET(0x12,0x34,0x56,0x78,0x9a)");
    row("u64", 27, ~quint64(0), "U64_SET(0xff,0xff,0xff,0xff,0xff,0xff,0xff,0xff)");
    row("more bits than the type has", 22, 0xAA112233, "U24_SET(0x11,0x22,0x33)");
}

void TestCValues::wideValuesAreMacrosOfBytes()
{
    QFETCH(int, code);
    QFETCH(quint64, value);
    QTEST(CValues::extendedValue(code, value), "text");
}

void TestCValues::everyOtherTypeIsNoMacro()
{
    const QList<int> extended{12, 16, 22, 24, 25, 27};
    for (int code = -1; code < 300; ++code)
        if (!extended.contains(code))
            QCOMPARE(CValues::extendedValue(code, 5), QStringLiteral("0"));
}

void TestCValues::objectKeysHoldLineIndexAndSubIndex_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("sub");
    QTest::addColumn<quint32>("key");
    QTest::newRow("zero") << 0 << 0 << 0 << 0U;
    QTest::newRow("each in its place") << 0x12 << 0x3456 << 0x78 << 0x12345678U;
    QTest::newRow("largest") << 255 << 0xFFFF << 255 << 0xFFFFFFFFU;
}

void TestCValues::objectKeysHoldLineIndexAndSubIndex()
{
    QFETCH(int, line);
    QFETCH(int, index);
    QFETCH(int, sub);
    QFETCH(quint32, key);
    QCOMPARE(ObjectKey::make(quint8(line), quint16(index), quint8(sub)), key);
    QCOMPARE(int(ObjectKey::line(key)), line);
    QCOMPARE(int(ObjectKey::index(key)), index);
    QCOMPARE(int(ObjectKey::subIndex(key)), sub);
}

void TestCValues::commentsNameTheObject_data()
{
    QTest::addColumn<quint32>("key");
    QTest::addColumn<bool>("multiLine");
    QTest::addColumn<QString>("comment");
    QTest::newRow("single line") << 0x00200003U << false << QStringLiteral(" /* 0x2000:3 */");
    QTest::newRow("single line leaves the line out")
        << 0x01200003U << false << QStringLiteral(" /* 0x2000:3 */");
    QTest::newRow("multi-line") << 0x1F200003U << true << QStringLiteral(" /* 31-0x2000:3 */");
    QTest::newRow("filled with zeros") << 0x00001A00U << false << QStringLiteral(" /* 0x001a:0 */");
    QTest::newRow("lower case, sub-index decimal")
        << 0x001AFFFFU << false << QStringLiteral(" /* 0x1aff:255 */");
    QTest::newRow("line 0") << 0x00100000U << true << QStringLiteral(" /* 0-0x1000:0 */");
}

void TestCValues::commentsNameTheObject()
{
    QFETCH(quint32, key);
    QFETCH(bool, multiLine);
    QTEST(ObjectKey::comment(key, multiLine), "comment");
}

void TestCValues::namesOfALineAreQualifiedInTheMultiLineForm()
{
    QCOMPARE(LineNames::prefix(3, true), QStringLiteral("l3_"));
    QCOMPARE(LineNames::suffix(3, true), QStringLiteral("_l3"));
    QCOMPARE(LineNames::prefix(3, false), QString());
    QCOMPARE(LineNames::suffix(3, false), QString());
}

QTEST_APPLESS_MAIN(TestCValues)
#include "tst_cvalues.moc"
