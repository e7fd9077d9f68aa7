#include "canopen/EdsParser.h"
#include "generators/descriptions/DescriptionDesk.h"
#include "generators/descriptions/StrictEds.h"

using namespace Qt::StringLiterals;

/** Texts that an EDS file cannot hold as they are: the file stays readable. */
class TestEdsTexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void aBreakInATextBecomesABlank_data();
    void aBreakInATextBecomesABlank();
    void aStringWithBreaksIsToldByItsBytes_data();
    void aStringWithBreaksIsToldByItsBytes();
    void quotationMarksAreAddedOnlyWhereATextNeedsThem_data();
    void quotationMarksAreAddedOnlyWhereATextNeedsThem();
    void everySettingStaysOnItsLine();
    void anAsciiProjectGivesAnAsciiFile();
    void otherLettersAreWrittenAsUtf8WithoutMark();
};

void TestEdsTexts::aBreakInATextBecomesABlank_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("written");
    QTest::newRow("LF") << u"a\nb"_s << u"a b"_s;
    QTest::newRow("CR LF") << u"a\r\nb"_s << u"a b"_s;
    QTest::newRow("CR") << u"a\rb"_s << u"a b"_s;
    QTest::newRow("line separator") << u"a\u2028b\u2029c"_s << u"a b c"_s;
    QTest::newRow("next line") << u"a\u0085b"_s << u"a b"_s;
    QTest::newRow("form feed") << u"a\fb\vc"_s << u"a b c"_s;
    QTest::newRow("end of file of old systems") << u"a\u001Ab"_s << u"a b"_s;
    QTest::newRow("NUL") << QString::fromUtf8("a\0b", 3) << u"a b"_s;
    QTest::newRow("section in the next line") << u"a\n[1018]"_s << u"a [1018]"_s;
}

void TestEdsTexts::aBreakInATextBecomesABlank()
{
    QFETCH(QString, text);
    QFETCH(QString, written);
    DescriptionDesk desk;
    desk.mandatoryObjects();
    DescriptionDesk::Sub sub = DescriptionDesk::sub(text, 7, text, u"rw"_s);
    sub.limitineds = true;
    sub.lowlimit = sub.uplimit = text;
    desk.object(0x2000, text, CANopen::Array, {{0, sub}});
    const QStringList lines = desk.section(u"2000sub0"_s);
    QCOMPARE(desk.section(u"2000"_s).constFirst(), u"ParameterName="_s + written);
    QCOMPARE(lines.value(0), u"ParameterName="_s + written);
    QCOMPARE(
        lines.mid(5),
        QStringList({u"DefaultValue="_s + written, u"LowLimit="_s + written, u"HighLimit="_s + written}));
    const QStringList errors = StrictEds(desk.read(u"pump.eds"_s)).errors();
    QCOMPARE(errors.filter(u"control"_s) + errors.filter(u"entry"_s), QStringList());
}

void TestEdsTexts::aStringWithBreaksIsToldByItsBytes_data()
{
    QTest::addColumn<int>("dataType");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("written");
    QTest::newRow("visible string") << 9 << u"a\nb"_s << u"|x610a62"_s;
    QTest::newRow("octet string") << 10 << u"\u0001ä"_s << u"|x01c3a4"_s;
    QTest::newRow("plain string") << 9 << u"a b"_s << u"a b"_s;
    QTest::newRow("bytes already") << 10 << u"|x0aFF"_s << u"|x0aFF"_s;
    QTest::newRow("bytes with a break") << 10 << u"|x0a\n"_s << u"|x0a "_s;
    QTest::newRow("a type without byte strings") << 11 << u"a\nb"_s << u"a b"_s;
}

void TestEdsTexts::aStringWithBreaksIsToldByItsBytes()
{
    QFETCH(int, dataType);
    QFETCH(QString, value);
    QFETCH(QString, written);
    DescriptionDesk desk;
    desk.var(0x2000, DescriptionDesk::sub(u"Text"_s, dataType, value));
    QCOMPARE(desk.section(u"2000"_s).value(5), u"DefaultValue="_s + written);
}

void TestEdsTexts::quotationMarksAreAddedOnlyWhereATextNeedsThem_data()
{
    QTest::addColumn<int>("dataType");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("written");
    QTest::newRow("plain text") << 9 << u"a \"b\" c"_s << u"a \"b\" c"_s;
    QTest::newRow("quoted text") << 9 << u"\"a\""_s << u"\"\"a\"\""_s;
    QTest::newRow("blank in front") << 9 << u" a"_s << u"\" a\""_s;
    QTest::newRow("blank behind") << 10 << u"a "_s << u"\"a \""_s;
    QTest::newRow("number with blanks") << 7 << u" 5 "_s << u" 5 "_s;
    QTest::newRow("quoted number") << 7 << u"\"5\""_s << u"\"5\""_s;
}

void TestEdsTexts::quotationMarksAreAddedOnlyWhereATextNeedsThem()
{
    QFETCH(int, dataType);
    QFETCH(QString, value);
    QFETCH(QString, written);
    DescriptionDesk desk;
    desk.var(0x2000, DescriptionDesk::sub(u"Text"_s, dataType, value));
    QCOMPARE(desk.section(u"2000"_s).value(5), u"DefaultValue="_s + written);
}

void TestEdsTexts::everySettingStaysOnItsLine()
{
    DescriptionDesk desk;
    desk.mandatoryObjects();
    for (const char *const key : {"VendorName", "ProductName", "OrderCode", "CreatedBy", "ModifiedBy"})
        desk.describe(QString::fromLatin1(key), u"first\n[2000]\n=x"_s);
    desk.describe(u"Comment"_s, u"[2000]\n\n=x"_s);
    desk.store->setSubIndexDefault(0, 0x1018, 1, u"1\n[2001]"_s);
    const StrictEds file(desk.edsText().toUtf8());
    QCOMPARE(file.errors(),
             QStringList(u"VendorNumber of [DeviceInfo] is 1 [2001]"_s)
                 + QStringList(u"DefaultValue of [1018sub1] is 1 [2001]"_s));
    QCOMPARE(file.value(u"DeviceInfo"_s, u"VendorName"_s), u"first [2000] =x"_s);
}

void TestEdsTexts::anAsciiProjectGivesAnAsciiFile()
{
    DescriptionDesk desk;
    desk.mandatoryObjects();
    const QByteArray file = desk.edsText().toUtf8();
    QVERIFY(std::all_of(file.begin(), file.end(),
                        [](char byte) { return byte == '\n' || (byte >= ' ' && byte <= '~'); }));
}

void TestEdsTexts::otherLettersAreWrittenAsUtf8WithoutMark()
{
    DescriptionDesk desk;
    desk.describe(u"VendorName"_s, u"Schönaich"_s);
    QCOMPARE(desk.run(DescriptionDesk::eds()), QString());
    const QByteArray file = desk.read(u"pump.eds"_s);
    QVERIFY(file.startsWith("; EDS file"));
    QVERIFY(file.contains("VendorName=Sch\xC3\xB6naich\n"));
    EdsParser parser;
    QVERIFY(parser.LoadEds(desk.path(u"pump.eds"_s)));
    QCOMPARE(parser.document().section(u"DeviceInfo"_s)->value(u"VendorName"_s), u"Schönaich"_s);
}

QTEST_GUILESS_MAIN(TestEdsTexts)
#include "tst_edstexts.moc"
