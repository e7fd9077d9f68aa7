#include "projects/ConverterDesk.h"

using namespace ConverterDesk;

class tst_SignalCorrections : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void repeatedRowsGoAndDifferentOnesStay();
    void mappingCountsAreThoseOfTheSignals();
    void missingBitPositionsFollowTheSizes();
    void deliberateBitPositionsStay();
    void unknownDirectionsAreLoggedAndStay();
    void rawCanTablesAreCorrectedLineByLine();
    void anOldFileWithDoubledRowsIsCorrectedAfterItsMigration();
    void linesWithoutProtocolTablesAreSkipped();
};

void tst_SignalCorrections::initTestCase()
{
    StoreTest::prepareApplication();
    qApp->setProperty("AppNameWithVersion", QLatin1StringView(settingsName));
}

void tst_SignalCorrections::init()
{
    QSettings(QStringLiteral("korvel"), QLatin1StringView(settingsName)).clear();
}

void tst_SignalCorrections::repeatedRowsGoAndDifferentOnesStay()
{
    Desk desk;
    desk.store->addPGN(0, 61444, StoreTest::samplePgn(ObjectDataBase::Receive));
    desk.store->addSPN(0, 61444, ObjectDataBase::Receive, 190, StoreTest::sampleSpn(1));
    for (const char *sql : {"insert into PGNs0 select * from PGNs0", "insert into SPNs0 select * from SPNs0",
                            "insert into SPNs0 select * from SPNs0"})
        QVERIFY(desk.store->executeSql(QLatin1StringView(sql)));
    QVERIFY(desk.store->executeSql(QStringLiteral("insert into PGNs0 select * from PGNs0 limit 1")));
    QVERIFY(desk.store->executeSql(
        QStringLiteral("update PGNs0 set priority = 7 where rowid = (select max(rowid) from PGNs0)")));
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("several different rows of message 61444 119")));
    QVERIFY(desk.converter.correctJ1939());
    QCOMPARE(desk.rows(QStringLiteral("select priority from PGNs0 order by rowid")),
             (QStringList{QStringLiteral("3"), QStringLiteral("7")}));
    QCOMPARE(desk.rows(QStringLiteral("select count(*) from SPNs0")), QStringList{QStringLiteral("1")});
}

void tst_SignalCorrections::mappingCountsAreThoseOfTheSignals()
{
    Desk desk;
    for (const quint8 direction : {ObjectDataBase::Receive, ObjectDataBase::Transmit}) {
        auto pgn = StoreTest::samplePgn(direction);
        pgn.mappingcount = 9;
        desk.store->addPGN(0, 61444, pgn);
        desk.store->addPGN(0, 61445, pgn);
    }
    for (quint32 spn = 1; spn < 4; ++spn)
        desk.store->addSPN(0, 61444, ObjectDataBase::Transmit, spn, StoreTest::sampleSpn(int(spn)));
    desk.store->addSPN(0, 61444, ObjectDataBase::Receive, 1, StoreTest::sampleSpn(1));
    desk.store->cacheAllSpns(0);
    QVERIFY(desk.converter.correctJ1939());
    QCOMPARE(desk.store->getPGNMappingCount(0, 61444, ObjectDataBase::Transmit), 3);
    QCOMPARE(desk.store->getPGNMappingCount(0, 61444, ObjectDataBase::Receive), 1);
    QCOMPARE(desk.store->getPGNMappingCount(0, 61445, ObjectDataBase::Transmit), 0);
}

void tst_SignalCorrections::missingBitPositionsFollowTheSizes()
{
    Desk desk;
    desk.store->addPGN(0, 61444, StoreTest::samplePgn(ObjectDataBase::Receive));
    const QList<int> sizes = {16, 4, 8};
    for (int position = 2; position >= 0; --position) {
        auto spn = StoreTest::sampleSpn(position);
        spn.bitsize = sizes.at(position);
        desk.store->addSPN(0, 61444, ObjectDataBase::Receive, quint32(100 + position), spn);
    }
    QVERIFY(desk.store->executeSql(QStringLiteral("update SPNs0 set bitposition = NULL where pos = 1")));
    QVERIFY(desk.converter.correctJ1939());
    QCOMPARE(desk.rows(QStringLiteral("select bitposition from SPNs0 order by pos")),
             (QStringList{QStringLiteral("0"), QStringLiteral("16"), QStringLiteral("20")}));
}

void tst_SignalCorrections::deliberateBitPositionsStay()
{
    Desk desk;
    desk.store->addPGN(0, 1, StoreTest::samplePgn(ObjectDataBase::Receive));
    desk.store->addPGN(0, 2, StoreTest::samplePgn(ObjectDataBase::Receive));
    const QList<int> positions = {0, 0, 32};
    for (int position = 0; position < 3; ++position) {
        auto spn = StoreTest::sampleSpn(position);
        spn.bitposition = positions.at(position);
        desk.store->addSPN(0, 1, ObjectDataBase::Receive, quint32(position), spn);
    }
    desk.store->addSPN(0, 2, ObjectDataBase::Receive, 9, StoreTest::sampleSpn(0));
    QVERIFY(desk.converter.correctJ1939());
    QCOMPARE(
        desk.rows(QStringLiteral("select bitposition from SPNs0 order by pgnnumber, pos")),
        (QStringList{QStringLiteral("0"), QStringLiteral("0"), QStringLiteral("32"), QStringLiteral("0")}));
}

void tst_SignalCorrections::unknownDirectionsAreLoggedAndStay()
{
    Desk desk;
    desk.store->addPGN(0, 61444, StoreTest::samplePgn(3));
    desk.store->addSPN(0, 61444, 3, 190, StoreTest::sampleSpn(1));
    desk.store->addSPN(0, 61444, 3, 191, StoreTest::sampleSpn(2));
    QVERIFY(
        desk.store->executeSql(QStringLiteral("update SPNs0 set direction = NULL where spnnumber = 191")));
    for (const char *finding : {"message 61444 3$", "signal 61444 190 3$", "signal 61444 191 none$"})
        QTest::ignoreMessage(
            QtWarningMsg,
            QRegularExpression(QStringLiteral("unknown direction of ") + QLatin1StringView(finding)));
    QVERIFY(desk.converter.correctJ1939());
    QCOMPARE(desk.rows(QStringLiteral("select direction from PGNs0")), QStringList{QStringLiteral("3")});
    QCOMPARE(desk.rows(QStringLiteral("select bitposition from SPNs0")),
             (QStringList{QStringLiteral("0"), QStringLiteral("0")}));
}

void tst_SignalCorrections::rawCanTablesAreCorrectedLineByLine()
{
    Desk desk;
    desk.store->addNode(1, ObjectDataBase::NODE_DATA_T());
    for (const quint8 line : {0, 1}) {
        desk.store->addCANID(line, 5, StoreTest::sampleCanId(ObjectDataBase::Transmit));
        for (quint32 number = 0; number < 3; ++number)
            desk.store->addDataElement(line, 5, ObjectDataBase::Transmit, number,
                                       StoreTest::sampleElement(0));
        QVERIFY(desk.store->executeSql(
            QStringLiteral("insert into DataElements%1 select * from DataElements%1").arg(line)));
        QVERIFY(
            desk.store->executeSql(QStringLiteral("insert into CANIDs%1 select * from CANIDs%1").arg(line)));
    }
    QVERIFY(desk.converter.correctRawCan());
    for (const int line : {0, 1}) {
        QCOMPARE(desk.rows(QStringLiteral("select mappingcount from CANIDs%1").arg(line)),
                 QStringList{QStringLiteral("3")});
        QCOMPARE(
            desk.rows(QStringLiteral("select number, bitpos from DataElements%1 order by number").arg(line)),
            (QStringList{QStringLiteral("0 0"), QStringLiteral("1 8"), QStringLiteral("2 16")}));
    }
}

// As the first programs made it: no direction of signals, no sizes, rows that an interrupted save doubled.
void tst_SignalCorrections::anOldFileWithDoubledRowsIsCorrectedAfterItsMigration()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("old.vexp"));
    {
        const StoreTest::DatabaseFile file(path);
        const QString statements = QStringLiteral(
            "create table Strings (id integer primary key, string text);"
            "insert into Strings values (1,''),(2,'EEC1'),(3,'Speed');"
            "create table Nodes (nodeId integer primary key, name text, edspath text, xddpath text);"
            "insert into Nodes values (0,'CAN','','');"
            "create table GeneralSettings (item text unique, value text);"
            "insert into GeneralSettings values ('line0type','2'),('udsserver_version','5');"
            "create table MiscSettings (item text unique, value text);"
            "insert into MiscSettings values ('DatabaseVersion','98');"
            "create table PGNs0 (number integer not null, edp_dp_key integer, priority integer, "
            "cycletime_ms integer, inhibittime_ms integer, mappingcount integer, direction integer, "
            "name integer, desc integer);"
            "insert into PGNs0 values (61444,0,3,20,0,9,119,2,1),(61444,0,3,20,0,9,119,2,1);"
            "create table SPNs0 (pgnnumber integer not null, spnnumber integer not null, datatype integer, "
            "implementation integer, varname text, defaultvalue text, name integer, desc integer);"
            "insert into SPNs0 values (61444,190,6,0,'speed','',3,1),(61444,190,6,0,'speed','',3,1)");
        for (const QString &statement : statements.split(u';'))
            QVERIFY2(file.execute(statement), qPrintable(statement));
    }
    const auto store = QSharedPointer<ObjectDataBase>::create();
    QVERIFY2(store->openDataBase(path), qPrintable(store->lastError()));
    ProjectConverter converter;
    converter.setDataBase(store);
    QVERIFY(converter.doGenericCorrection());
    QVERIFY(converter.doProjectCorrection());
    QVERIFY(converter.correctJ1939());
    QCOMPARE(store->getGeneralSetting(QStringLiteral("udsserver_version")), QStringLiteral("6"));
    QCOMPARE(store->getPGNList(0, ObjectDataBase::Receive), QList<quint32>{61444});
    QCOMPARE(store->getSPNList(0, 61444, ObjectDataBase::Receive), QList<quint32>{190});
    QCOMPARE(store->getPGNMappingCount(0, 61444, ObjectDataBase::Receive), 1);
}

void tst_SignalCorrections::linesWithoutProtocolTablesAreSkipped()
{
    Desk desk;
    desk.store->addNode(1, ObjectDataBase::NODE_DATA_T());
    QVERIFY(desk.store->executeSql(QStringLiteral("drop table CANIDs1")));
    QVERIFY(desk.store->executeSql(QStringLiteral("drop table SPNs1")));
    QVERIFY(desk.converter.correctJ1939());
    QVERIFY(desk.converter.correctRawCan());
}

QTEST_GUILESS_MAIN(tst_SignalCorrections)
#include "tst_signalcorrections.moc"
