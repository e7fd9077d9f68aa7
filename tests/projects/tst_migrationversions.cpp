// What an open adds to files of each former version, and what it leaves alone.

#include "projects/FormerFiles.h"

using namespace FormerFiles;

class tst_MigrationVersions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void eachVersionGetsWhatCameAfterIt_data();
    void eachVersionGetsWhatCameAfterIt();
    void groupsGetTheSafetyColumnsThatTheyLack_data();
    void groupsGetTheSafetyColumnsThatTheyLack();
    void tablesThatFurtherLinesLackAreMade();
    void aSecondModificationIsRecordedBehindTheFirst();

private:
    QString path(const QString &name = QStringLiteral("old.vexp")) const { return m_folder->filePath(name); }
    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_MigrationVersions::initTestCase()
{
    StoreTest::prepareApplication();
}

void tst_MigrationVersions::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void tst_MigrationVersions::eachVersionGetsWhatCameAfterIt_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<bool>("directions"); ///< signals take the direction of their group
    QTest::addColumn<bool>("unique"); ///< sub-indices are rebuilt with a unique key
    QTest::addColumn<bool>("positions"); ///< signals are numbered
    QTest::addColumn<bool>("authentication"); ///< UDS services get the column
    QTest::newRow("none") << 0 << true << true << true << true;
    QTest::newRow("90") << 90 << true << true << true << true;
    QTest::newRow("99") << 99 << true << true << true << true;
    QTest::newRow("100") << 100 << false << true << true << true;
    QTest::newRow("101") << 101 << false << false << true << true;
    QTest::newRow("102") << 102 << false << false << true << true;
    QTest::newRow("104") << 104 << false << false << true << true;
    QTest::newRow("105") << 105 << false << false << false << true;
    QTest::newRow("106") << 106 << false << false << false << true;
    QTest::newRow("107") << 107 << false << false << false << false;
}

void tst_MigrationVersions::eachVersionGetsWhatCameAfterIt()
{
    QFETCH(int, version);
    QVERIFY(makeFile(
        path(), version, {0},
        {QStringLiteral("insert into GeneralSettings values ('line0type','2')"),
         QStringLiteral("insert into SubObjects0 (objectindex,subindex,name,datatype) values (4096,0,3,7)"),
         QStringLiteral("insert into PGNs0 values (1,0,6,0,0,0,85,3,1)"),
         QStringLiteral("insert into SPNs0 values (1,9,5,0,'','',3,1,0,8,NULL,0,0)"),
         QStringLiteral("insert into CANIDs0 values (1,0,0,0,85,3,1)"),
         QStringLiteral("insert into DataElements0 values (1,0,5,0,'','',3,1,0,8,85),"
                        "(1,1,5,0,'','',3,1,1,8,85)"),
         QStringLiteral("create table UDSSettings0 (sid integer not null, active integer, sessions text, "
                        "userlevels text, UNIQUE(sid))"),
         QStringLiteral("insert into UDSSettings0 values (34,1,'1','2')")}));
    ObjectDataBase store;
    QVERIFY2(store.openDataBase(path()), qPrintable(store.lastError()));
    QTEST(!store.getSPNList(0, 1, ObjectDataBase::Transmit).isEmpty(), "directions");
    QVERIFY(store.executeSql(QStringLiteral("select name from pragma_index_list('SubObjects0')")));
    QTEST(!store.sqlResult().isEmpty(), "unique");
    ObjectDataBase::DataElement element;
    QVERIFY(store.getDataElement(0, 1, ObjectDataBase::Transmit, 1, element));
    QTEST(element.bitpos == 8, "positions");
    QVERIFY(store.executeSql(
        QStringLiteral("select name from pragma_table_info('UDSSettings0') where name = 'authentication'")));
    QTEST(!store.sqlResult().isEmpty(), "authentication");
    // Whatever the version, the columns that every former program lacked are there.
    ObjectDataBase::SUBINDEX_DATA_T sub;
    QVERIFY(store.getSubIndex(0, 4096, 0, sub));
    QCOMPARE(sub.name, QStringLiteral("Speed"));
    QCOMPARE(store.getMiscSetting(QStringLiteral("DatabaseVersion")), QString::number(version));
    QVERIFY(store.saveProject(QString()));
    QCOMPARE(store.getMiscSetting(QStringLiteral("DatabaseVersion")), QStringLiteral("107"));
}

void tst_MigrationVersions::groupsGetTheSafetyColumnsThatTheyLack_data()
{
    QTest::addColumn<QStringList>("present");
    QTest::newRow("none") << QStringList();
    QTest::newRow("the first") << QStringList{QStringLiteral("issafe")};
    QTest::newRow("all but the last three") << QStringList{
        QStringLiteral("issafe"), QStringLiteral("srvt_ms"), QStringLiteral("FD_TrailerFormat"),
        QStringLiteral("FD_AssuranceType"), QStringLiteral("FD_AssuranceDataSize")};
    QTest::newRow("all, in the spelling of new files") << QStringList{QStringLiteral("issafe"),
                                                                      QStringLiteral("srvt_ms"),
                                                                      QStringLiteral("FD_TrailerFormat"),
                                                                      QStringLiteral("FD_AssuranceType"),
                                                                      QStringLiteral("FD_AssuranceDataSize"),
                                                                      QStringLiteral("multisourceaddress"),
                                                                      QStringLiteral("safetytype"),
                                                                      QStringLiteral("FD_DataId")};
}

void tst_MigrationVersions::groupsGetTheSafetyColumnsThatTheyLack()
{
    QFETCH(QStringList, present);
    QStringList statements = {QStringLiteral("insert into GeneralSettings values ('line0type','5')"),
                              QStringLiteral("insert into PGNs0 values (1,0,6,0,0,0,85,3,1)")};
    for (const QString &column : std::as_const(present))
        statements.append(QStringLiteral("alter table PGNs0 add %1 integer").arg(column));
    QVERIFY(makeFile(path(), 106, {0}, statements));
    const CaughtMessages messages;
    ObjectDataBase store;
    QVERIFY2(store.openDataBase(path()), qPrintable(store.lastError()));
    QCOMPARE(messages.containing(QStringLiteral("migration statement failed:")), QStringList());
    ObjectDataBase::PGN pgn;
    QVERIFY(store.getPGN(0, 1, ObjectDataBase::Transmit, pgn));
    QCOMPARE(pgn.name, QStringLiteral("Speed"));
    pgn.FD_DataID = 7;
    pgn.safetytype = 2;
    QVERIFY(store.addPGN(0, 1, pgn));
    ObjectDataBase::PGN back;
    QVERIFY(store.getPGN(0, 1, ObjectDataBase::Transmit, back));
    QVERIFY(back == pgn);
    QVERIFY(store.executeSql(QStringLiteral("select count(*) from pragma_table_info('PGNs0')")));
    QCOMPARE(store.sqlResult(), QStringList{QStringLiteral("17 ")});
}

void tst_MigrationVersions::tablesThatFurtherLinesLackAreMade()
{
    QVERIFY(
        makeFile(path(), 106, {0, 3},
                 {QStringLiteral("insert into GeneralSettings values ('line0type','1'),('line3type','1')"),
                  QStringLiteral("drop table PGNs3"), QStringLiteral("drop table SPNs3"),
                  QStringLiteral("drop table CANIDs3"), QStringLiteral("drop table DataElements3")}));
    ObjectDataBase store;
    QVERIFY2(store.openDataBase(path()), qPrintable(store.lastError()));
    QVERIFY(store.addPGN(3, 1, StoreTest::samplePgn(ObjectDataBase::Transmit)));
    QVERIFY(store.addSPN(3, 1, ObjectDataBase::Transmit, 2, {.bitsize = 8, .bitposition = 16}));
    QVERIFY(store.addCANID(3, 1, StoreTest::sampleCanId(ObjectDataBase::Transmit)));
    QVERIFY(store.addDataElement(3, 1, ObjectDataBase::Transmit, 2, {.bitsize = 8, .bitpos = 16}));
    ObjectDataBase::SPN spn;
    QVERIFY(store.getSPN(3, 1, ObjectDataBase::Transmit, 2, spn));
    QCOMPARE(spn.bitposition, 16);
    ObjectDataBase::DataElement element;
    QVERIFY(store.getDataElement(3, 1, ObjectDataBase::Transmit, 2, element));
    QCOMPARE(element.bitpos, 16);
    QVERIFY(store.executeSql(QStringLiteral("select count(*) from sqlite_master where name like '%3'")));
    QCOMPARE(store.sqlResult(), QStringList{QStringLiteral("7 ")});
}

void tst_MigrationVersions::aSecondModificationIsRecordedBehindTheFirst()
{
    const auto touch = [this](int value) {
        const StoreTest::DatabaseFile file(path());
        return file.execute(
            QStringLiteral("insert into GeneralSettings values ('by hand %1','')").arg(value));
    };
    StoreTest::NewStore first;
    first.setGeneralSetting(QStringLiteral("line0type"), QStringLiteral("1"));
    QVERIFY(first.saveProject(path()));
    QString log;
    for (int round = 1; round <= 3; ++round) {
        QVERIFY(touch(round));
        ObjectDataBase store;
        QVERIFY(store.openDataBase(path()));
        QVERIFY(store.isExternallyModified());
        const QString longer = store.getMiscSetting(QStringLiteral("TamperLog"));
        QVERIFY2(longer.startsWith(log), qPrintable(longer));
        QCOMPARE(longer.split(u';').size(), round);
        QVERIFY(QDateTime::fromString(longer.section(u';', -1), Qt::ISODate).isValid());
        log = longer;
        QVERIFY(store.saveProject(QString()));
    }
    ObjectDataBase unchanged;
    QVERIFY(unchanged.openDataBase(path()));
    QVERIFY(!unchanged.isExternallyModified());
    QCOMPARE(unchanged.getMiscSetting(QStringLiteral("TamperLog")), log);
}

QTEST_GUILESS_MAIN(tst_MigrationVersions)
#include "tst_migrationversions.moc"
