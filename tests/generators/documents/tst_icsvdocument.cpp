#include "generators/documents/DocumentDesk.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto remark = "# This is an importable ICSV file for the Pump project.\n"_L1;
constexpr auto header =
    "index,sub,objectcode,datatype,edsname,varname,access,mapable,hasdefault,defaultineds,"
    "value,description,size,implementation,haslimit,lowlimit,uplimit,nvstorage\n"_L1;
constexpr auto shortHeader =
    "index,sub,objectcode,datatype,edsname,varname,access,mapable,hasdefault,"
    "defaultineds,value,size,implementation,haslimit,lowlimit,uplimit,nvstorage\n"_L1;

QStringList rows(const QString &text)
{
    return text.split(u'\n', Qt::SkipEmptyParts).sliced(2);
}

} // namespace

/** The table of objects that the program imports. */
class TestIcsvDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void theHeaderNamesTheColumns();
    void aRowHasEveryColumn();
    void withoutDocumentationRowsHaveOneColumnLess();
    void objectsOfSeveralValuesHaveAHeadRow_data();
    void objectsOfSeveralValuesHaveAHeadRow();
    void headRowsStandInTheColumnsOfTheHeader();
    void aVariableHasNoHeadRow();
    void anObjectWithoutNameIsUnnamed();
    void aNameOfLineBreaksIsNone();
    void aDescriptionWithALineBreakStaysOneRow();
    void aNameWithALineBreakStaysOneRow();
    void commasAndQuotesAreKept_data();
    void commasAndQuotesAreKept();
    void theImplementationHasTheWordsOfTheCsvFile();
    void everyLineHasItsFile();
    void aProjectNameIsOneLine();
};

void TestIcsvDocument::theHeaderNamesTheColumns()
{
    DocumentDesk desk;
    QCOMPARE(desk.icsv(), remark + header);
    QCOMPARE(desk.icsv(true), remark + shortHeader);
}

void TestIcsvDocument::aRowHasEveryColumn()
{
    DocumentDesk desk;
    desk.variable(0x6040,
                  {.name = u"Controlword"_s,
                   .datatype = CAN::Unsigned16,
                   .accesstype = u"rww"_s,
                   .defaultvalue = u"0x10"_s,
                   .pdomapping = PDOMapping::Default,
                   .lowlimit = u"1"_s,
                   .uplimit = u"0xFF"_s,
                   .size = 2,
                   .defaultineds = true,
                   .limitineds = true,
                   .implementation = CANopen::ApplicationVariable,
                   .description = u"Commands of the drive"_s,
                   .varname = u"controlword"_s,
                   .writedefaulttoeds = 1,
                   .nvstorage = true});
    QCOMPARE(rows(desk.icsv()),
             QStringList(u"0x6040,0,VARIABLE,UNSIGNED16,Controlword,controlword,rww,DEFAULT,yes,yes,0x10,"
                         "Commands of the drive,2,Variable,yes,1,0xFF,yes"_s));
}

void TestIcsvDocument::withoutDocumentationRowsHaveOneColumnLess()
{
    DocumentDesk desk;
    desk.object(0x2000, {.name = u"List"_s, .objecttype = CANopen::Array, .description = u"of texts"_s},
                {{.name = u"Entry"_s, .description = u"a text"_s}});
    const QStringList all = rows(desk.icsv());
    const QStringList shortened = rows(desk.icsv(true));
    QCOMPARE(shortened.size(), 2);
    for (int row = 0; row < 2; ++row) {
        QStringList fields = all.at(row).split(u',');
        QCOMPARE(fields.size(), 18);
        fields.removeAt(11);
        QCOMPARE(shortened.at(row).split(u','), fields);
    }
    QVERIFY(!shortened.join(u'\n').contains("a text"_L1));
}

void TestIcsvDocument::objectsOfSeveralValuesHaveAHeadRow_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("row");
    QTest::newRow("array") << int(CANopen::Array) << u"0x2000,,ARRAY,UNSIGNED32,Counters,,,,,,,,,,,,,"_s;
    QTest::newRow("record") << int(CANopen::Record) << u"0x2000,,RECORD,UNSIGNED32,Counters,,,,,,,,,,,,,"_s;
}

void TestIcsvDocument::objectsOfSeveralValuesHaveAHeadRow()
{
    QFETCH(int, code);
    QFETCH(QString, row);
    DocumentDesk desk;
    desk.object(0x2000, {.name = u"Counters"_s, .datatype = CAN::Unsigned32, .objecttype = code}, {});
    QCOMPARE(rows(desk.icsv()), QStringList(row));
}

void TestIcsvDocument::headRowsStandInTheColumnsOfTheHeader()
{
    DocumentDesk desk;
    desk.object(0x2000, {.name = u"Counters"_s, .datatype = CAN::Unsigned8, .objecttype = CANopen::Array},
                {});
    for (const bool disableDocu : {false, true}) {
        const QStringList lines = desk.icsv(disableDocu).split(u'\n');
        const QStringList columns = lines.at(1).split(u',');
        const QStringList fields = lines.at(2).split(u',');
        QCOMPARE(fields.size(), columns.size());
        for (qsizetype i = 0; i < columns.size(); ++i) {
            const QString expected = columns.at(i) == "index"_L1 ? u"0x2000"_s
                : columns.at(i) == "objectcode"_L1               ? u"ARRAY"_s
                : columns.at(i) == "datatype"_L1                 ? u"UNSIGNED8"_s
                : columns.at(i) == "edsname"_L1                  ? u"Counters"_s
                                                                 : QString();
            QCOMPARE(fields.at(i), expected);
        }
    }
}

void TestIcsvDocument::aVariableHasNoHeadRow()
{
    DocumentDesk desk;
    desk.variable(0x2000, {.name = u"Speed"_s});
    QCOMPARE(rows(desk.icsv()).size(), 1);
    desk.object(0x2001, {.objecttype = CANopen::Domain}, {{.name = u"Program"_s}});
    QCOMPARE(rows(desk.icsv()).size(), 2);
}

void TestIcsvDocument::anObjectWithoutNameIsUnnamed()
{
    DocumentDesk desk;
    desk.object(0x2000, {.objecttype = CANopen::Array}, {{}});
    desk.object(0x2001, {.objecttype = CANopen::Var}, {{}});
    QStringList names;
    const QStringList all = rows(desk.icsv());
    for (const QString &row : all)
        names.append(row.section(u',', 4, 4));
    QCOMPARE(names, QStringList({u"unnamed object"_s, QString(), u"unnamed object"_s}));
}

void TestIcsvDocument::aNameOfLineBreaksIsNone()
{
    DocumentDesk desk;
    const QString breaks = u"\n\r\n"_s + QChar(QChar::Null);
    desk.object(0x2000, {.name = breaks, .objecttype = CANopen::Array}, {{.name = breaks}});
    desk.object(0x2001, {.name = u"Speed"_s, .objecttype = CANopen::Var}, {{.name = breaks}});
    QStringList names;
    const QStringList all = rows(desk.icsv());
    for (const QString &row : all)
        names.append(row.section(u',', 4, 4));
    QCOMPARE(names, QStringList({u"unnamed object"_s, QString(), u"Speed"_s}));
}

void TestIcsvDocument::aDescriptionWithALineBreakStaysOneRow()
{
    DocumentDesk desk;
    desk.variable(0x2000, {.name = u"Speed"_s, .description = u"first\nsecond\r\nthird\rfourth\n"_s});
    const QStringList all = rows(desk.icsv());
    QCOMPARE(all.size(), 1);
    QCOMPARE(all.first().section(u',', 11, 11), u"first<br>second<br>third<br>fourth<br>"_s);
}

void TestIcsvDocument::aNameWithALineBreakStaysOneRow()
{
    DocumentDesk desk;
    desk.object(0x2000, {.name = u"Li\nst"_s, .objecttype = CANopen::Array}, {{.name = u"En\r\ntry"_s}});
    const QStringList all = rows(desk.icsv());
    QCOMPARE(all.size(), 2);
    QCOMPARE(all.at(0).section(u',', 4, 4), u"List"_s);
    QCOMPARE(all.at(1).section(u',', 4, 4), u"Entry"_s);
}

void TestIcsvDocument::commasAndQuotesAreKept_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("field");
    QTest::newRow("comma") << u"1,5"_s << u"\"1,5\""_s;
    QTest::newRow("quotes inside") << u"a \"b\""_s << u"a \"b\""_s;
    QTest::newRow("comma and quotes") << u"a, \"b\""_s << u"\"a, \"\"b\"\"\""_s;
    QTest::newRow("quote at the start") << u"\"a\" b"_s << u"\"\"\"a\"\" b\""_s;
    QTest::newRow("semicolon") << u"a;b"_s << u"a;b"_s;
}

void TestIcsvDocument::commasAndQuotesAreKept()
{
    QFETCH(QString, stored);
    QFETCH(QString, field);
    DocumentDesk desk;
    desk.variable(0x2000,
                  {.name = stored,
                   .accesstype = stored,
                   .defaultvalue = stored,
                   .lowlimit = stored,
                   .uplimit = stored,
                   .description = stored,
                   .varname = stored});
    const QString expected = u"0x2000,0,VARIABLE,,%1,%1,%1,NONE,no,no,%1,%1,0,ManagedVariable,no,%1,%1,no"_s;
    QCOMPARE(rows(desk.icsv()), QStringList(expected.arg(field)));
}

void TestIcsvDocument::theImplementationHasTheWordsOfTheCsvFile()
{
    DocumentDesk desk;
    desk.object(0x2000, {.objecttype = CANopen::Array},
                {{.implementation = 0}, {.implementation = 1}, {.implementation = 2}, {.implementation = 3}});
    QStringList words;
    const QStringList all = rows(desk.icsv()).sliced(1);
    for (const QString &row : all)
        words.append(row.section(u',', 13, 13));
    QCOMPARE(words,
             QStringList({u"ManagedVariable"_s, u"ManagedConst"_s, u"Variable"_s, u"VirtualObject"_s}));
}

void TestIcsvDocument::everyLineHasItsFile()
{
    DocumentDesk desk;
    desk.store.addNode(1, {});
    QCOMPARE(desk.generate({.kind = GeneratorKind::Icsv}, u"Pump_0.icsv"_s), remark + header);
    QCOMPARE(desk.generate({.kind = GeneratorKind::Icsv, .line = 1}, u"Pump_1.icsv"_s), remark + header);
    QVERIFY(!QFile::exists(desk.folder.filePath(u"Pump.icsv"_s)));
}

void TestIcsvDocument::aProjectNameIsOneLine()
{
    DocumentDesk desk;
    desk.projectName = u"Pump,\nlarge"_s;
    const QString text = desk.generate({.kind = GeneratorKind::Icsv}, u"Pump,\nlarge.icsv"_s);
    QVERIFY(text.startsWith("# This is an importable ICSV file for the Pump,large project.\nindex,"_L1));
}

QTEST_GUILESS_MAIN(TestIcsvDocument)
#include "tst_icsvdocument.moc"
