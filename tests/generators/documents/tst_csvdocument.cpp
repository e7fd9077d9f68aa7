#include "generators/documents/DocumentDesk.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto header =
    "Index,Sub,EDSname,Datatype,Access,Value,varname,LowLimit,UpLimit,hasDefault,hasLimit,"
    "refuseRead,refuseWrite,defaultInEDS,implementation,Size,ObjectCode,mapable\n"_L1;

/** Which column is which. */
enum Column {
    Index,
    Sub,
    Name,
    DataType,
    Access,
    Value,
    Variable,
    LowLimit,
    UpLimit,
    HasDefault,
    HasLimit,
    RefuseRead,
    RefuseWrite,
    DefaultInEds,
    Implementation,
    Size,
    ObjectCode,
    Mapable,
    Count,
};

} // namespace

/** The table of objects for spreadsheets. */
class TestCsvDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void theHeaderIsFixed();
    void aRowHasEveryField();
    void subIndicesStandInAscendingOrder();
    void dataTypesOfTheDictionaryAreNoObjects();
    void theImplementationIsAWord_data();
    void theImplementationIsAWord();
    void theObjectCodeIsAWord_data();
    void theObjectCodeIsAWord();
    void theMappingIsAWord_data();
    void theMappingIsAWord();
    void flagsAreYesAndNo_data();
    void flagsAreYesAndNo();
    void fieldsAreNotQuoted_data();
    void fieldsAreNotQuoted();
    void aValueWithoutNameBearsTheObjects();
    void everyLineHasItsFile();
    void withoutAProjectTheRunFails();

private:
    static QStringList onlyRow(DocumentDesk &desk);
};

QStringList TestCsvDocument::onlyRow(DocumentDesk &desk)
{
    const QString text = desk.csv();
    if (!text.startsWith(header) || text.count(u'\n') != 2)
        qFatal("not a header and a row: %s", qPrintable(text));
    return text.sliced(header.size()).chopped(1).split(u',');
}

void TestCsvDocument::theHeaderIsFixed()
{
    DocumentDesk desk;
    QCOMPARE(desk.csv(), header);
}

void TestCsvDocument::aRowHasEveryField()
{
    DocumentDesk desk;
    desk.object(0x20A0, {.name = u"Limits"_s, .objecttype = CANopen::Record},
                {{.name = u"Upper limit"_s,
                  .datatype = CAN::Integer16,
                  .accesstype = u"rww"_s,
                  .defaultvalue = u"-5"_s,
                  .pdomapping = PDOMapping::RPDO,
                  .lowlimit = u"-10"_s,
                  .uplimit = u"0x7F"_s,
                  .size = 2,
                  .implementation = CANopen::ApplicationVariable,
                  .varname = u"limits[$s]"_s}});
    QCOMPARE(
        desk.csv(),
        header
            + "0x20a0,0,Upper limit,INTEGER16,rww,-5,limits[$s],-10,0x7F,no,no,no,no,no,Variable,2,RECORD,"
              "RPDO\n"_L1);
}

void TestCsvDocument::subIndicesStandInAscendingOrder()
{
    DocumentDesk desk;
    desk.variable(0x2001, {.name = u"second"_s});
    desk.object(0x2000, {.objecttype = CANopen::Array}, {{.name = u"a"_s}});
    desk.store.addSubIndex(0, 0x2000, 17, {.name = u"c"_s});
    desk.store.addSubIndex(0, 0x2000, 5, {.name = u"b"_s});
    QStringList places;
    const QStringList rows = desk.csv().sliced(header.size()).split(u'\n', Qt::SkipEmptyParts);
    for (const QString &row : rows)
        places.append(row.section(u',', Index, Name));
    QCOMPARE(places, QStringList({u"0x2000,0,a"_s, u"0x2000,5,b"_s, u"0x2000,17,c"_s, u"0x2001,0,second"_s}));
}

void TestCsvDocument::dataTypesOfTheDictionaryAreNoObjects()
{
    DocumentDesk desk;
    desk.variable(0x0005, {.name = u"UNSIGNED8"_s});
    desk.variable(0x0FFF, {.name = u"last"_s});
    QCOMPARE(desk.csv(), header);
    desk.variable(0x1000, {.name = u"first"_s});
    QCOMPARE(onlyRow(desk).at(Index), u"0x1000"_s);
}

void TestCsvDocument::theImplementationIsAWord_data()
{
    QTest::addColumn<int>("stored");
    QTest::addColumn<QString>("word");
    QTest::newRow("managed variable") << 0 << u"ManagedVariable"_s;
    QTest::newRow("managed constant") << 1 << u"ManagedConst"_s;
    QTest::newRow("application variable") << 2 << u"Variable"_s;
    QTest::newRow("virtual object") << 3 << u"VirtualObject"_s;
}

void TestCsvDocument::theImplementationIsAWord()
{
    QFETCH(int, stored);
    QFETCH(QString, word);
    DocumentDesk desk;
    desk.variable(0x2000, {.implementation = stored});
    QCOMPARE(onlyRow(desk).at(Implementation), word);
}

void TestCsvDocument::theObjectCodeIsAWord_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("word");
    QTest::newRow("variable") << int(CANopen::Var) << u"VARIABLE"_s;
    QTest::newRow("array") << int(CANopen::Array) << u"ARRAY"_s;
    QTest::newRow("record") << int(CANopen::Record) << u"RECORD"_s;
    QTest::newRow("domain") << int(CANopen::Domain) << u"VARIABLE"_s;
}

void TestCsvDocument::theObjectCodeIsAWord()
{
    QFETCH(int, code);
    QFETCH(QString, word);
    DocumentDesk desk;
    desk.object(0x2000, {.objecttype = code}, {{}});
    QCOMPARE(onlyRow(desk).at(ObjectCode), word);
}

void TestCsvDocument::theMappingIsAWord_data()
{
    QTest::addColumn<int>("stored");
    QTest::addColumn<QString>("word");
    QTest::newRow("none") << int(PDOMapping::Forbidden) << u"NONE"_s;
    QTest::newRow("any PDO") << int(PDOMapping::Allowed) << u"ALLOWED"_s;
    QTest::newRow("by default") << int(PDOMapping::Default) << u"DEFAULT"_s;
    QTest::newRow("receive PDOs") << int(PDOMapping::RPDO) << u"RPDO"_s;
    QTest::newRow("transmit PDOs") << int(PDOMapping::TPDO) << u"TPDO"_s;
}

void TestCsvDocument::theMappingIsAWord()
{
    QFETCH(int, stored);
    QFETCH(QString, word);
    DocumentDesk desk;
    desk.variable(0x2000, {.pdomapping = PDOMapping(stored)});
    QCOMPARE(onlyRow(desk).at(Mapable), word);
}

void TestCsvDocument::flagsAreYesAndNo_data()
{
    QTest::addColumn<DocumentDesk::Sub>("sub");
    QTest::addColumn<int>("column");
    using Row = DocumentDesk::Sub;
    QTest::newRow("default") << Row{.defaultineds = true} << int(HasDefault);
    QTest::newRow("limits") << Row{.limitineds = true} << int(HasLimit);
    QTest::newRow("read refused") << Row{.refuseread = true} << int(RefuseRead);
    QTest::newRow("write refused") << Row{.refusewrite = true} << int(RefuseWrite);
    QTest::newRow("in the EDS as default") << Row{.writedefaulttoeds = 1} << int(DefaultInEds);
    QTest::newRow("always in the EDS") << Row{.writedefaulttoeds = 2} << int(DefaultInEds);
}

void TestCsvDocument::flagsAreYesAndNo()
{
    QFETCH(DocumentDesk::Sub, sub);
    QFETCH(int, column);
    DocumentDesk desk;
    desk.variable(0x2000, sub);
    const QStringList row = onlyRow(desk);
    for (int flag = HasDefault; flag <= DefaultInEds; ++flag)
        QCOMPARE(row.at(flag), flag == column ? u"yes"_s : u"no"_s);
}

void TestCsvDocument::fieldsAreNotQuoted_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("field");
    QTest::newRow("plain") << u"Set point; 50 %"_s << u"Set point; 50 %"_s;
    QTest::newRow("comma") << u"1,5"_s << u"1;5"_s;
    QTest::newRow("commas at both ends") << u",a,"_s << u";a;"_s;
    QTest::newRow("quote inside") << u"a \"b\""_s << u"a \"b\""_s;
    QTest::newRow("quote at the start") << u"\"a\", b"_s << u"'a\"; b"_s;
    QTest::newRow("line breaks") << u"a\r\nb\nc\rd"_s << u"abcd"_s;
    QTest::newRow("other scripts") << u"Drehzahl für Größe 3 °, 转速"_s << u"Drehzahl für Größe 3 °; 转速"_s;
}

void TestCsvDocument::fieldsAreNotQuoted()
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
                   .varname = stored});
    const QStringList row = onlyRow(desk);
    QCOMPARE(row.size(), int(Count));
    for (const int column : {Name, Access, Value, LowLimit, UpLimit, Variable})
        QCOMPARE(row.at(column), field);
}

void TestCsvDocument::aValueWithoutNameBearsTheObjects()
{
    DocumentDesk desk;
    desk.variable(0x2000, {}, u"Speed"_s);
    QCOMPARE(onlyRow(desk).at(Name), u"Speed"_s);
}

void TestCsvDocument::everyLineHasItsFile()
{
    DocumentDesk desk;
    desk.store.addNode(3, {});
    desk.object(0x2000, {.objecttype = CANopen::Var}, {{.name = u"of line 3"_s}}, 3);
    QCOMPARE(desk.generate({.kind = GeneratorKind::Csv}, u"Pump_0.csv"_s), header);
    QVERIFY(desk.generate({.kind = GeneratorKind::Csv, .line = 3}, u"Pump_3.csv"_s)
                .contains("\n0x2000,0,of line 3,"_L1));
    QVERIFY(!QFile::exists(desk.folder.filePath(u"Pump.csv"_s)));
}

void TestCsvDocument::withoutAProjectTheRunFails()
{
    DocumentDesk desk;
    const auto generator = desk.generator({.kind = GeneratorKind::Csv});
    generator->setDatabase(nullptr);
    QCOMPARE(generator->startGeneration(), GeneratorStatus::Success);
    generator->waitForEnd();
    QVERIFY(generator->isFailed());
    QCOMPARE(generator->errorString(), u"There is no project."_s);
    QCOMPARE(desk.read(u"Pump.csv"_s), u"no file"_s);
}

QTEST_GUILESS_MAIN(TestCsvDocument)
#include "tst_csvdocument.moc"
