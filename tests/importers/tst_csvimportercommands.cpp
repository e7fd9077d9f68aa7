#include "importers/CsvDesk.h"

using namespace Qt::StringLiterals;
using CsvCommands::Address;
using CsvCommands::Copy;

namespace {

constexpr const char *header = "index,sub,edsname,objectcode,size\n";

/** An array of two elements, and a variable. */
const QByteArray &objects()
{
    static const QByteArray rows("0x2000,0,Count,ARRAY\n0x2000,1,First,ARRAY\n0x2000,2,Second,ARRAY\n"
                                 "0x2010,0,Single,VARIABLE\n");
    return rows;
}

QString nameOf(const Address &address)
{
    const QString index = QString::number(address.index, 16);
    return address.subIndex ? index + u':' + QString::number(*address.subIndex) : index;
}

QStringList namesOf(const QList<Copy> &copies)
{
    QStringList names;
    for (const Copy &copy : copies)
        names.append(nameOf(copy.first) + u">"_s + nameOf(copy.second));
    return names;
}

QStringList namesOf(const QList<Address> &addresses)
{
    QStringList names;
    for (const Address &address : addresses)
        names.append(nameOf(address));
    return names;
}

} // namespace

/** The copy and delete commands of a table: which are taken, and what they do when they are carried out. */
class TestCsvImporterCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { ImporterTest::prepareApplication(); }
    void everyFormIsTaken_data();
    void everyFormIsTaken();
    void everythingElseIsRefused_data();
    void everythingElseIsRefused();
    void commandsUseTheSeparatorOfTheFile();
    void aSpreadsheetMayFillACommandUpToTheTable_data();
    void aSpreadsheetMayFillACommandUpToTheTable();
    void aDataLineThatBeginsWithASmallCIsACommand();
    void aDeleteWaitsUntilTheCommandsAreCarriedOut();
    void aCopiedObjectBringsItsSubIndices();
    void aCopyReplacesItsDestination();
    void aCopiedSubIndexStaysInItsObject();
    void aSubIndexIsDeleted();
    void copiesComeBeforeDeletes();
    void copiesFollowTheOrderOfTheFile();
    void commandsWorkOnTheLineThatIsAsked();
    void aFailingCommandIsToldAndTheOthersGoOn_data();
    void aFailingCommandIsToldAndTheOthersGoOn();
    void aLockedStoreRefusesTheCommands();
    void theNextReadForgetsTheCommands();
    void anImporterWithoutCommandsSucceeds();
};

void TestCsvImporterCommands::everyFormIsTaken_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QString>("copy");
    QTest::addColumn<QString>("removal");
    QTest::newRow("copy object") << QByteArray("c,0x2000,0x2100") << u"2000>2100"_s << QString();
    QTest::newRow("copy sub-index") << QByteArray("c,0x2000,1,5") << u"2000:1>2000:5"_s << QString();
    QTest::newRow("copy sub-index 0") << QByteArray("c,0x2000,0,255") << u"2000:0>2000:255"_s << QString();
    QTest::newRow("delete object") << QByteArray("d,0x2000") << QString() << u"2000"_s;
    QTest::newRow("delete sub-index") << QByteArray("d,0x2000,0x10") << QString() << u"2000:16"_s;
    QTest::newRow("decimal") << QByteArray("c,8192,8448") << u"2000>2100"_s << QString();
    QTest::newRow("blanks") << QByteArray("d , 0x2000 ") << QString() << u"2000"_s;
}

void TestCsvImporterCommands::everyFormIsTaken()
{
    QFETCH(QByteArray, command);
    CsvDesk desk;
    QVERIFY(desk.importBytes(header + command + "\n"));
    QTEST(namesOf(desk.importer().copyCommands()).join(u' '), "copy");
    QTEST(namesOf(desk.importer().deleteCommands()).join(u' '), "removal");
    QCOMPARE(desk.rows(), QStringList());
    QCOMPARE(desk.remarks(), QStringList());
}

void TestCsvImporterCommands::everythingElseIsRefused_data()
{
    QTest::addColumn<QByteArray>("command");
    for (const char *command : {"c",
                                "c,0x2000",
                                "c,0x2000,1,2,3",
                                "c,0x2000,0x2100,,,",
                                "c,0,0x2100",
                                "c,0x2000,0",
                                "c,0,1,2",
                                "c,0x2000,1,1",
                                "c,0x2000,0x01,1",
                                "c,0x2000,x,1",
                                "c,0x2000,1,",
                                "c,0x2000,1,256",
                                "c,2000h,0x2100",
                                "c,0x12000,0x2100",
                                "c,0x2000,-1",
                                "c,,",
                                "copy,0x2000,0x2100",
                                "d",
                                "d,",
                                "d,0",
                                "d,0,1",
                                "d,x",
                                "d,0x2000,x",
                                "d,0x2000,",
                                "d,0x2000,256",
                                "d,0x10000",
                                "d,0x2000,1,2",
                                "delete,0x2000",
                                "description"})
        QTest::newRow(command) << QByteArray(command);
}

void TestCsvImporterCommands::everythingElseIsRefused()
{
    QFETCH(QByteArray, command);
    CsvDesk desk;
    QVERIFY(desk.importBytes(header + command + "\n"));
    QVERIFY(desk.importer().copyCommands().isEmpty());
    QVERIFY(desk.importer().deleteCommands().isEmpty());
    QCOMPARE(desk.remarks(), QStringList{u"2: the command is refused"_s});
    QCOMPARE(desk.errors(), QStringList());
    QCOMPARE(desk.rows(), QStringList());
}

void TestCsvImporterCommands::commandsUseTheSeparatorOfTheFile()
{
    CsvDesk desk;
    QVERIFY(desk.importBytes("index;sub\nc;0x2000;0x2100\nd;0x2000;1\nc,0x2000,0x2200\n"));
    QCOMPARE(namesOf(desk.importer().copyCommands()), QStringList{u"2000>2100"_s});
    QCOMPARE(namesOf(desk.importer().deleteCommands()), QStringList{u"2000:1"_s});
    QCOMPARE(desk.remarks(), QStringList{u"4: the command is refused"_s});
}

void TestCsvImporterCommands::aSpreadsheetMayFillACommandUpToTheTable_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<bool>("taken");
    QTest::newRow("to the width of the table") << QByteArray("d,0x2000,,,") << true;
    QTest::newRow("not to its width") << QByteArray("d,0x2000,,") << false;
    QTest::newRow("wider than the table") << QByteArray("d,0x2000,,,,") << false;
    QTest::newRow("a field at the end") << QByteArray("d,0x2000,,,1") << false;
}

void TestCsvImporterCommands::aSpreadsheetMayFillACommandUpToTheTable()
{
    QFETCH(QByteArray, command);
    QFETCH(bool, taken);
    CsvDesk desk;
    QVERIFY(desk.importBytes(header + command + "\n"));
    QCOMPARE(namesOf(desk.importer().deleteCommands()), taken ? QStringList{u"2000"_s} : QStringList());
}

void TestCsvImporterCommands::aDataLineThatBeginsWithASmallCIsACommand()
{
    CsvDesk desk;
    QVERIFY(desk.importBytes("edsname,index,sub\ncurrent,0x2000,1\nCurrent,0x2001,1\n"));
    QCOMPARE(desk.rows(), QStringList{u"2001:01"_s});
    QCOMPARE(desk.remarks(), QStringList{u"2: the command is refused"_s});
}

void TestCsvImporterCommands::aDeleteWaitsUntilTheCommandsAreCarriedOut()
{
    CsvDesk desk;
    QVERIFY(desk.importBytes(header + objects() + "d,0x2000\n"));
    QVERIFY(desk.store().indexExists(CsvDesk::line, 0x2000));
    QVERIFY(desk.importer().carryOutCommands(CsvDesk::line));
    QCOMPARE(desk.rows(), QStringList{u"2010:00"_s});
    QVERIFY(!desk.store().indexExists(CsvDesk::line, 0x2000));
}

void TestCsvImporterCommands::aCopiedObjectBringsItsSubIndices()
{
    CsvDesk desk;
    QVERIFY(desk.importBytes(header + objects() + "c,0x2000,0x2001\n"));
    QVERIFY(desk.importer().carryOutCommands(CsvDesk::line));
    for (const quint8 sub : {quint8(0), quint8(1), quint8(2)})
        QVERIFY(desk.sub(0x2001, sub) == desk.sub(0x2000, sub));
    QVERIFY(desk.object(0x2001) == desk.object(0x2000));
    QCOMPARE(desk.rows().size(), 7);
}

void TestCsvImporterCommands::aCopyReplacesItsDestination()
{
    CsvDesk desk;
    QVERIFY(desk.importBytes(header + objects() + "c,0x2010,0x2000\n"));
    QVERIFY(desk.importer().carryOutCommands(CsvDesk::line));
    QCOMPARE(desk.rows(), (QStringList{u"2000:00"_s, u"2010:00"_s}));
    QCOMPARE(desk.sub(0x2000).name, u"Single"_s);
}

void TestCsvImporterCommands::aCopiedSubIndexStaysInItsObject()
{
    CsvDesk desk;
    QVERIFY(desk.importBytes(header + objects() + "c,0x2000,1,2\nc,0x2000,1,9\n"));
    QVERIFY(desk.importer().carryOutCommands(CsvDesk::line));
    QCOMPARE(desk.sub(0x2000, 2).name, u"First"_s);
    QCOMPARE(desk.sub(0x2000, 9).name, u"First"_s);
    QCOMPARE(desk.rows().size(), 5);
}

void TestCsvImporterCommands::aSubIndexIsDeleted()
{
    CsvDesk desk;
    QVERIFY(desk.importBytes(header + objects() + "d,0x2000,1\n"));
    QVERIFY(desk.importer().carryOutCommands(CsvDesk::line));
    QCOMPARE(desk.rows(), (QStringList{u"2000:00"_s, u"2000:02"_s, u"2010:00"_s}));
}

void TestCsvImporterCommands::copiesComeBeforeDeletes()
{
    CsvDesk desk;
    QVERIFY(desk.importBytes(header + QByteArray("d,0x2010\nc,0x2010,0x2020\n") + objects()));
    QVERIFY(desk.importer().carryOutCommands(CsvDesk::line));
    QVERIFY(desk.store().indexExists(CsvDesk::line, 0x2020));
    QVERIFY(!desk.store().indexExists(CsvDesk::line, 0x2010));
}

void TestCsvImporterCommands::copiesFollowTheOrderOfTheFile()
{
    CsvDesk desk;
    QVERIFY(desk.importBytes(header + objects() + "c,0x2010,0x2020\nc,0x2020,0x2030\nc,0x2000,0x2020\n"));
    QVERIFY(desk.importer().carryOutCommands(CsvDesk::line));
    QCOMPARE(desk.sub(0x2030).name, u"Single"_s);
    QCOMPARE(desk.sub(0x2020).name, u"Count"_s);
}

void TestCsvImporterCommands::commandsWorkOnTheLineThatIsAsked()
{
    CsvDesk desk;
    QVERIFY(desk.importBytes(header + objects() + "c,0x2000,0x2001\nd,0x2010\n"));
    QVERIFY(desk.store().addIndex(0, 0x2000, {.name = u"of line 0"_s}));
    QVERIFY(desk.store().addIndex(0, 0x2010, {}));
    const QStringList staged = desk.rows();
    QVERIFY(desk.importer().carryOutCommands(0));
    QCOMPARE(desk.store().getIndexList(0), (QList<quint16>{0x2000, 0x2001}));
    QCOMPARE(desk.store().getIndexName(0, 0x2001), u"of line 0"_s);
    QCOMPARE(desk.rows(), staged);
}

void TestCsvImporterCommands::aFailingCommandIsToldAndTheOthersGoOn_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QString>("text");
    QTest::newRow("copy of no object")
        << QByteArray("c,0x3000,0x3001") << u"Cannot copy 0x3000 to 0x3001 on line 255."_s;
    QTest::newRow("copy of no sub-index")
        << QByteArray("c,0x2000,7,8") << u"Cannot copy 0x2000:7 to 0x2000:8 on line 255."_s;
    QTest::newRow("delete of no object") << QByteArray("d,0x3000") << u"Cannot delete 0x3000 on line 255."_s;
    QTest::newRow("delete of no sub-index")
        << QByteArray("d,0x2000,7") << u"Cannot delete 0x2000:7 on line 255."_s;
}

void TestCsvImporterCommands::aFailingCommandIsToldAndTheOthersGoOn()
{
    QFETCH(QByteArray, command);
    QFETCH(QString, text);
    CsvDesk desk;
    QVERIFY(desk.importBytes(header + objects() + command + "\nd,0x2010\n"));
    const ImporterTest::DebugLines lines;
    QVERIFY(!desk.importer().carryOutCommands(CsvDesk::line));
    QVERIFY2(ImporterTest::DebugLines::all().contains(text),
             qPrintable(ImporterTest::DebugLines::all().join(u'\n')));
    QCOMPARE(desk.store().getIndexList(CsvDesk::line), QList<quint16>{0x2000});
}

void TestCsvImporterCommands::aLockedStoreRefusesTheCommands()
{
    CsvDesk desk;
    QVERIFY(desk.importBytes(header + objects() + "c,0x2000,0x2001\nc,0x2000,1,5\nd,0x2010\n"));
    const QStringList before = desk.rows();
    desk.store().setWriteLock(true);
    QVERIFY(!desk.importer().carryOutCommands(CsvDesk::line));
    desk.store().setWriteLock(false);
    QCOMPARE(desk.rows(), before);
}

void TestCsvImporterCommands::theNextReadForgetsTheCommands()
{
    CsvDesk desk;
    QVERIFY(desk.importBytes(header + QByteArray("c,0x2000,0x2001\nd,0x2000\n")));
    QVERIFY(desk.importBytes(header + objects()));
    QVERIFY(desk.importer().copyCommands().isEmpty());
    QVERIFY(desk.importer().deleteCommands().isEmpty());
}

void TestCsvImporterCommands::anImporterWithoutCommandsSucceeds()
{
    CsvImporter importer;
    QVERIFY(importer.carryOutCommands(0));
    CsvDesk desk;
    QVERIFY(desk.importBytes(header + objects()));
    QVERIFY(desk.importer().carryOutCommands(CsvDesk::line));
    QCOMPARE(desk.rows().size(), 4);
}

QTEST_GUILESS_MAIN(TestCsvImporterCommands)
#include "tst_csvimportercommands.moc"
