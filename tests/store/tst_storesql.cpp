#include "StoreTest.h"

#include <QSignalSpy>

using namespace StoreTest;

/** Free statements, and the signal that follows writing ones. */
class TestStoreSql : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void rowsAreTextsWithABlankBehindEachValue_data();
    void rowsAreTextsWithABlankBehindEachValue();
    void aFailureLeavesTheErrorText_data();
    void aFailureLeavesTheErrorText();
    void everyStatementClearsTheResultBefore();
    void aWriteIsAnnouncedOnlyWhileTracking();
    void onlyWritingStatementsAreAnnounced_data();
    void onlyWritingStatementsAreAnnounced();
    void typedOperationsAreAnnouncedAsWrites();
    void readsAreNotAnnouncedAsWrites();
    void theListenerMayReadTheStore();
};

void TestStoreSql::rowsAreTextsWithABlankBehindEachValue_data()
{
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("one value") << "select 1" << QStringList{"1 "};
    QTest::newRow("several columns") << "select 1, 'two', 3.5" << QStringList{"1 two 3.5 "};
    QTest::newRow("several rows") << "select 1 union all select 2" << QStringList{"1 ", "2 "};
    QTest::newRow("ten columns of twelve")
        << "select 0,1,2,3,4,5,6,7,8,9,10,11" << QStringList{"0 1 2 3 4 5 6 7 8 9 "};
    QTest::newRow("no rows") << "select 1 where 0" << QStringList{};
    QTest::newRow("empty text") << "select '', 'b'" << QStringList{" b "};
    QTest::newRow("null is an empty text") << "select NULL, 'b'" << QStringList{" b "};
    QTest::newRow("no result") << "delete from Objects0" << QStringList{};
    QTest::newRow("quotes") << "select 'it''s'" << QStringList{"it's "};
}

void TestStoreSql::rowsAreTextsWithABlankBehindEachValue()
{
    QFETCH(QString, statement);
    NewStore store;
    QVERIFY(store.executeSql(statement));
    QTEST(store.sqlResult(), "expected");
}

void TestStoreSql::aFailureLeavesTheErrorText_data()
{
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QString>("fragment");
    QTest::newRow("unknown table") << "select * from Nowhere"
                                   << "Nowhere";
    QTest::newRow("no SQL") << "make tea"
                            << "syntax error";
    QTest::newRow("not null") << "insert into Objects0(objectindex) values(1)"
                              << "NOT NULL";
}

void TestStoreSql::aFailureLeavesTheErrorText()
{
    QFETCH(QString, statement);
    QFETCH(QString, fragment);
    NewStore store;
    QVERIFY(!store.executeSql(statement));
    QCOMPARE(store.sqlResult().size(), 1);
    QVERIFY2(store.sqlResult().constFirst().contains(fragment), qPrintable(store.sqlResult().constFirst()));
}

void TestStoreSql::everyStatementClearsTheResultBefore()
{
    NewStore store;
    QVERIFY(store.executeSql(QStringLiteral("select 1")));
    QVERIFY(!store.executeSql(QStringLiteral("nonsense")));
    QVERIFY(store.executeSql(QStringLiteral("select 2")));
    QCOMPARE(store.sqlResult(), QStringList{"2 "});
}

void TestStoreSql::aWriteIsAnnouncedOnlyWhileTracking()
{
    NewStore store;
    QSignalSpy writes(&store, &ObjectDataBase::databaseWriteExecuted);
    QVERIFY(store.setGeneralSetting(QStringLiteral("k"), QStringLiteral("1")));
    QVERIFY(store.executeSql(QStringLiteral("delete from Objects0")));
    QCOMPARE(writes.count(), 0);
    store.setTrackWrites(true);
    QVERIFY(store.executeSql(QStringLiteral("delete from Objects0")));
    QCOMPARE(writes.count(), 1);
    store.setTrackWrites(false);
    QVERIFY(store.executeSql(QStringLiteral("delete from Objects0")));
    QCOMPARE(writes.count(), 1);
}

void TestStoreSql::onlyWritingStatementsAreAnnounced_data()
{
    QTest::addColumn<QString>("statement");
    QTest::addColumn<int>("notices");
    QTest::newRow("insert") << "insert into MiscSettings values('a','b')" << 1;
    QTest::newRow("update") << "update MiscSettings set value = 'c'" << 1;
    QTest::newRow("delete") << "delete from MiscSettings" << 1;
    QTest::newRow("replace") << "replace into MiscSettings values('a','c')" << 1;
    QTest::newRow("create") << "create table Extra (a)" << 1;
    QTest::newRow("alter") << "alter table MiscSettings add extra text" << 1;
    QTest::newRow("drop") << "drop table Groups" << 1;
    QTest::newRow("upper case") << "DELETE FROM MiscSettings" << 1;
    QTest::newRow("mixed case behind blanks") << " \t\n DeLeTe from MiscSettings" << 1;
    QTest::newRow("select") << "select * from MiscSettings" << 0;
    QTest::newRow("pragma") << "PRAGMA page_size" << 0;
    QTest::newRow("vacuum") << "VACUUM" << 0;
    QTest::newRow("a failed insert") << "insert into Nowhere values(1)" << 0;
}

void TestStoreSql::onlyWritingStatementsAreAnnounced()
{
    QFETCH(QString, statement);
    NewStore store;
    store.setTrackWrites(true);
    QSignalSpy writes(&store, &ObjectDataBase::databaseWriteExecuted);
    store.executeSql(statement);
    QTEST(int(writes.count()), "notices");
}

void TestStoreSql::typedOperationsAreAnnouncedAsWrites()
{
    NewStore store;
    store.setTrackWrites(true);
    QSignalSpy writes(&store, &ObjectDataBase::databaseWriteExecuted);
    const auto announced = [&writes] {
        const bool any = writes.count() > 0;
        writes.clear();
        return any;
    };
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()) && announced());
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()) && announced());
    QVERIFY(store.addSubIndices({{.line = 0, .index = 0x2000, .subindex = 2, .data = sampleSub()}})
            && announced());
    QVERIFY(store.setSubMetadata(0, 0x2000, 1, {{"k", "v"}}) && announced());
    QVERIFY(store.setGeneralSetting(QStringLiteral("k"), QStringLiteral("v")) && announced());
    QVERIFY(store.addPGN(0, 1, samplePgn(85)) && announced());
    QVERIFY(store.setUDSServiceActive(0, UDS::ECUReset, false) && announced());
    QVERIFY(store.addNode(1, {}) && announced());
    QVERIFY(store.removeLine(1) && announced());
    QVERIFY(store.removeIndex(0, 0x2000) && announced());
}

void TestStoreSql::readsAreNotAnnouncedAsWrites()
{
    NewStore store;
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    store.setTrackWrites(true);
    QSignalSpy writes(&store, &ObjectDataBase::databaseWriteExecuted);
    ObjectDataBase::SUBINDEX_DATA_T sub;
    QVERIFY(store.getSubIndex(0, 0x2000, 1, sub));
    store.getIndexList(0);
    store.cacheAllSubs(0);
    store.contentHash();
    store.loadStrings();
    store.setGeneralSetting(QStringLiteral("absent"), QString());
    const int afterInsert = int(writes.count());
    store.setGeneralSetting(QStringLiteral("absent"), QString()); // unchanged
    QCOMPARE(afterInsert, 1);
    QCOMPARE(int(writes.count()), 1);
}

// An undo snapshot is taken from this signal.
void TestStoreSql::theListenerMayReadTheStore()
{
    QTemporaryDir folder;
    NewStore store;
    store.setTrackWrites(true);
    int snapshots = 0;
    connect(&store, &ObjectDataBase::databaseWriteExecuted, &store, [&] {
        const QString path = folder.filePath(QStringLiteral("snapshot%1").arg(++snapshots));
        if (!store.executeSql(QStringLiteral("VACUUM INTO '%1'").arg(path)))
            QFAIL(qPrintable(store.sqlResult().join(u' ')));
    });
    QVERIFY(store.setGeneralSetting(QStringLiteral("k"), QStringLiteral("v")));
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    QVERIFY(store.removeIndex(0, 0x2000));
    QVERIFY(snapshots >= 3);
}

QTEST_GUILESS_MAIN(TestStoreSql)
#include "tst_storesql.moc"
