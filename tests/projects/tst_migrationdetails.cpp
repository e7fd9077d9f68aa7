// What an open makes of files that earlier programs wrote, column by column.

#include "projects/FormerFiles.h"

using namespace FormerFiles;

class tst_MigrationDetails : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void version104NumbersSignalsWhosePositionsWereNeverWorkedOut_data();
    void version104NumbersSignalsWhosePositionsWereNeverWorkedOut();
    void sizesBeyondAnyMessageDoNoHarm();
    void anEmptyOutputPathBecomesTheRootOfTheDrive();
    void theCurrentFolderFollowsAProjectFileAlone_data();
    void theCurrentFolderFollowsAProjectFileAlone();
    void theProgramThatMadeTheFileDecidesAnEmptyLineType_data();
    void theProgramThatMadeTheFileDecidesAnEmptyLineType();
    void connectionsGetAPriority();
    void aFileWithoutServicesGetsTheSeventeenWithTheirSessions();
    void twoLinesAreMigratedAtOnce();
    void aBrokenStatementIsLoggedAndTheOpenGoesOn();
    void columnsThatAreThereAlreadyAreNotLogged();
    void countsOfSignalsAreThoseOfEachDirection();

private:
    QString path(const QString &name = QStringLiteral("old.vexp")) const { return m_folder->filePath(name); }
    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_MigrationDetails::initTestCase()
{
    StoreTest::prepareApplication();
}

void tst_MigrationDetails::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void tst_MigrationDetails::version104NumbersSignalsWhosePositionsWereNeverWorkedOut_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<QList<int>>("before");
    QTest::addColumn<QList<int>>("after");
    QTest::newRow("never worked out") << 104 << QList<int>{0, 0, 0} << QList<int>{0, 16, 20};
    QTest::newRow("the first two alike") << 104 << QList<int>{0, 0, 40} << QList<int>{0, 16, 20};
    QTest::newRow("worked out") << 104 << QList<int>{0, 8, 40} << QList<int>{0, 8, 40};
    QTest::newRow("not at 0") << 104 << QList<int>{8, 8, 8} << QList<int>{8, 8, 8};
    QTest::newRow("a younger file") << 105 << QList<int>{0, 0, 40} << QList<int>{0, 0, 40};
}

void tst_MigrationDetails::version104NumbersSignalsWhosePositionsWereNeverWorkedOut()
{
    QFETCH(int, version);
    QFETCH(QList<int>, before);
    QFETCH(QList<int>, after);
    QStringList statements = {
        QStringLiteral("insert into GeneralSettings values ('line0type','5')"),
        QStringLiteral("insert into PGNs0 values (65280,0,6,0,0,0,85,3,1),(65280,0,6,0,0,0,119,3,1)")};
    const QList<int> sizes = {16, 4, 8};
    // The order of the signals is that of their pos, not that of the rows.
    for (int signal = 2; signal >= 0; --signal) {
        for (const int direction : {85, 119})
            statements.append(
                QStringLiteral("insert into SPNs0 values (65280,%1,5,0,'','',3,1,%2,%3,%4,0,%5)")
                    .arg(100 - signal)
                    .arg(signal)
                    .arg(sizes.at(signal))
                    .arg(direction)
                    .arg(before.at(signal)));
    }
    QVERIFY(makeFile(path(), version, {0}, statements));
    ObjectDataBase store;
    QVERIFY2(store.openDataBase(path()), qPrintable(store.lastError()));
    for (const quint8 direction : {ObjectDataBase::Transmit, ObjectDataBase::Receive}) {
        QList<int> positions;
        for (const quint32 number : store.getSPNList(0, 65280, direction)) {
            ObjectDataBase::SPN spn;
            QVERIFY(store.getSPN(0, 65280, direction, number, spn));
            positions.append(spn.bitposition);
        }
        QCOMPARE(positions, after);
    }
}

void tst_MigrationDetails::sizesBeyondAnyMessageDoNoHarm()
{
    QVERIFY(makeFile(path(), 104, {0},
                     {QStringLiteral("insert into PGNs0 values (1,0,6,0,0,0,85,3,1)"),
                      QStringLiteral("insert into SPNs0 values (1,1,5,0,'','',3,1,0,2147483647,85,0,0),"
                                     "(1,2,5,0,'','',3,1,1,2147483647,85,0,0),"
                                     "(1,3,5,0,'','',3,1,2,8,85,0,0)")}));
    ObjectDataBase store;
    QVERIFY(store.openDataBase(path()));
    ObjectDataBase::SPN spn;
    QVERIFY(store.getSPN(0, 1, ObjectDataBase::Transmit, 3, spn));
    QCOMPARE(spn.bitposition, std::numeric_limits<int>::max());
}

void tst_MigrationDetails::anEmptyOutputPathBecomesTheRootOfTheDrive()
{
    QVERIFY(makeFile(path(), 106, {0, 1},
                     {QStringLiteral("alter table Nodes add outputpath text"),
                      QStringLiteral("update Nodes set outputpath = 'gen/it''s' where nodeId = 1")}));
    ObjectDataBase store;
    QVERIFY(store.openDataBase(path()));
    ObjectDataBase::NODE_DATA_T node;
    QVERIFY(store.getNode(0, node));
    QCOMPARE(node.outputpath, QStringLiteral("C:/"));
    QCOMPARE(node.name, QStringLiteral("node"));
    QVERIFY(store.getNode(1, node));
    QCOMPARE(node.outputpath, QStringLiteral("gen/it's"));
}

void tst_MigrationDetails::theCurrentFolderFollowsAProjectFileAlone_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("follows");
    QTest::newRow("project") << QStringLiteral("old.vexp") << true;
    QTest::newRow("template") << QStringLiteral("old.data") << false;
    QTest::newRow("profile") << QStringLiteral("old.codb") << false;
    QTest::newRow("backup") << QStringLiteral("old.vexp.bak") << false;
    QTest::newRow("no ending") << QStringLiteral("old") << false;
}

void tst_MigrationDetails::theCurrentFolderFollowsAProjectFileAlone()
{
    QFETCH(QString, name);
    QFETCH(bool, follows);
    const QString before = QDir::currentPath();
    const auto goBack = qScopeGuard([&before] { QDir::setCurrent(before); });
    QVERIFY(makeFile(path(name), 106, {0}, {}));
    ObjectDataBase store;
    QVERIFY(store.openDataBase(path(name)));
    QCOMPARE(QDir::currentPath(), follows ? QDir(m_folder->path()).canonicalPath() : before);
}

void tst_MigrationDetails::theProgramThatMadeTheFileDecidesAnEmptyLineType_data()
{
    QTest::addColumn<QString>("creator");
    QTest::addColumn<bool>("hasObjects");
    QTest::addColumn<QString>("type");
    QTest::newRow("J1939, with objects") << QStringLiteral("J1939 NodeSmith") << true << QStringLiteral("2");
    QTest::newRow("CANopen, with groups")
        << QStringLiteral("CANopen NodeSmith") << false << QStringLiteral("1");
    QTest::newRow("a version, with objects") << QStringLiteral("3.1.0") << true << QStringLiteral("1");
    QTest::newRow("a version, with groups") << QStringLiteral("3.1.0") << false << QStringLiteral("2");
}

void tst_MigrationDetails::theProgramThatMadeTheFileDecidesAnEmptyLineType()
{
    QFETCH(QString, creator);
    QFETCH(bool, hasObjects);
    QVERIFY(
        makeFile(path(), 106, {0},
                 {QStringLiteral("insert into MiscSettings values ('CreateToolVersion','%1')").arg(creator),
                  hasObjects ? QStringLiteral("insert into Objects0 values (4096,2,7,7,1,0)")
                             : QStringLiteral("insert into PGNs0 values (1,0,6,0,0,0,85,3,1)")}));
    ObjectDataBase store;
    QVERIFY(store.openDataBase(path()));
    QTEST(store.getGeneralSetting(QStringLiteral("line0type")), "type");
}

void tst_MigrationDetails::connectionsGetAPriority()
{
    QVERIFY(makeFile(path(), 98, {0}, {QStringLiteral("insert into Connections values (1,2,3,4,5,6)")}));
    ObjectDataBase store;
    QVERIFY(store.openDataBase(path()));
    QVERIFY(store.executeSql(QStringLiteral("update Connections set priority = 7")));
    QVERIFY(store.executeSql(QStringLiteral("select consub, priority from Connections")));
    QCOMPARE(store.sqlResult(), QStringList{QStringLiteral("6 7 ")});
}

void tst_MigrationDetails::aFileWithoutServicesGetsTheSeventeenWithTheirSessions()
{
    QVERIFY(makeFile(path(), 106, {0}, {}));
    ObjectDataBase store;
    QVERIFY(store.openDataBase(path()));
    const QList<int> inAllSessions = {16, 17, 62, 34, 46, 35, 61, 20, 25, 49};
    const QList<int> inOthers = {39, 40, 47, 52, 53, 54, 55};
    QList<int> services;
    for (const UDS::SID sid : store.getUDSActiveServices(0))
        services.append(int(sid));
    QCOMPARE(services, inAllSessions + inOthers);
    for (const int sid : inAllSessions)
        QCOMPARE(store.getUDSServiceSessions(0, UDS::SID(sid)), QStringLiteral("1,2,3,4"));
    for (const int sid : inOthers)
        QCOMPARE(store.getUDSServiceSessions(0, UDS::SID(sid)), QStringLiteral("2,3,4"));
}

void tst_MigrationDetails::twoLinesAreMigratedAtOnce()
{
    QStringList statements = {QStringLiteral("insert into GeneralSettings values ('line0type','5')"),
                              QStringLiteral("insert into GeneralSettings values ('line1type','2')"),
                              QStringLiteral("insert into SPNs1 values (1,9,5,0,'','',3,1,0,8,NULL,0,0)"),
                              QStringLiteral("insert into PGNs1 values (1,0,6,0,0,0,119,3,1)")};
    for (const int line : {0, 1}) {
        statements.append(QStringLiteral("insert into Objects%1 values (4096,2,7,7,1,0)").arg(line));
        statements.append(
            QStringLiteral("insert into SubObjects%1 (objectindex,subindex,name,datatype) values "
                           "(4096,0,3,7),(4096,0,2,7)")
                .arg(line));
    }
    QVERIFY(makeFile(path(), 98, {0, 1}, statements));
    ObjectDataBase store;
    QVERIFY2(store.openDataBase(path()), qPrintable(store.lastError()));
    for (const quint8 line : {0, 1}) {
        QCOMPARE(store.getSubIndexList(line, 4096), QList<quint8>{0});
        ObjectDataBase::SUBINDEX_DATA_T sub;
        QVERIFY(store.getSubIndex(line, 4096, 0, sub));
        sub.nvstorage = true;
        sub.denotation = QStringLiteral("kind");
        sub.metadata.insert(QStringLiteral("unit"), QStringLiteral("rpm"));
        QVERIFY(store.addSubIndex(line, 4096, 0, sub));
        ObjectDataBase::SUBINDEX_DATA_T back;
        QVERIFY(store.getSubIndex(line, 4096, 0, back));
        QVERIFY(back == sub);
        ObjectDataBase::PGN pgn = StoreTest::samplePgn(ObjectDataBase::Transmit);
        pgn.FD_DataID = 4;
        QVERIFY(store.addPGN(line, 2, pgn));
        ObjectDataBase::PGN pgnBack;
        QVERIFY(store.getPGN(line, 2, ObjectDataBase::Transmit, pgnBack));
        QVERIFY(pgnBack == pgn);
        QVERIFY(store.setUDSAuthentication(line, UDS::SID(34), QStringLiteral("x")));
        QCOMPARE(store.getUDSAuthentication(line, UDS::SID(34)), QStringLiteral("x"));
    }
    QCOMPARE(store.getSPNList(1, 1, ObjectDataBase::Receive), QList<quint32>{9});
}

void tst_MigrationDetails::aBrokenStatementIsLoggedAndTheOpenGoesOn()
{
    QVERIFY(makeFile(path(), 106, {0, 1}, {QStringLiteral("drop table DataElements1")}));
    const CaughtMessages messages;
    ObjectDataBase store;
    QVERIFY2(store.openDataBase(path()), qPrintable(store.lastError()));
    const QStringList failed = messages.containing(QStringLiteral("migration statement failed:"));
    QCOMPARE(failed.size(), 1);
    QVERIFY2(failed.first().contains(QStringLiteral("migrationExec"))
                 && failed.first().contains(QStringLiteral("alter table DataElements1 add bitpos integer"))
                 && failed.first().contains(QStringLiteral("no such table")),
             qPrintable(failed.first()));
    QCOMPARE(store.getUDSActiveServices(1).size(), 17);
}

void tst_MigrationDetails::columnsThatAreThereAlreadyAreNotLogged()
{
    {
        StoreTest::NewStore store;
        store.setGeneralSetting(QStringLiteral("line0type"), QStringLiteral("1"));
        QVERIFY(store.saveProject(path()));
    }
    const CaughtMessages messages;
    ObjectDataBase store;
    QVERIFY(store.openDataBase(path()));
    QCOMPARE(messages.containing(QStringLiteral("migration statement failed:")), QStringList());
    QCOMPARE(messages.containing(QStringLiteral("duplicate column")), QStringList());
}

void tst_MigrationDetails::countsOfSignalsAreThoseOfEachDirection()
{
    QVERIFY(makeFile(path(), 106, {0, 1},
                     {QStringLiteral("insert into GeneralSettings values ('line0type','2')"),
                      QStringLiteral("insert into PGNs0 values (1,0,6,0,0,9,85,3,1),(1,0,6,0,0,9,119,3,1),"
                                     "(2,0,6,0,0,9,85,3,1),(3,0,6,0,0,9,7,3,1)"),
                      QStringLiteral("insert into SPNs0 values (1,1,5,0,'','',3,1,0,8,85,0,0),"
                                     "(1,2,5,0,'','',3,1,1,8,85,0,8),(1,1,5,0,'','',3,1,0,8,119,0,0)"),
                      QStringLiteral("insert into PGNs1 values (1,0,6,0,0,9,85,3,1)")}));
    ObjectDataBase store;
    QVERIFY(store.openDataBase(path()));
    QCOMPARE(store.getPGNMappingCount(0, 1, ObjectDataBase::Transmit), 2);
    QCOMPARE(store.getPGNMappingCount(0, 1, ObjectDataBase::Receive), 1);
    QCOMPARE(store.getPGNMappingCount(0, 2, ObjectDataBase::Transmit), 0);
    QCOMPARE(store.getPGNMappingCount(0, 3, 7), 9);
    QCOMPARE(store.getPGNMappingCount(1, 1, ObjectDataBase::Transmit), 0);
    store.setWriteLock(true);
    QVERIFY(!store.updateMappingCounts());
    store.setWriteLock(false);
    QVERIFY(store.updateMappingCounts());
}

QTEST_GUILESS_MAIN(tst_MigrationDetails)
#include "tst_migrationdetails.moc"
