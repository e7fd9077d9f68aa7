#include "StoreTest.h"

using namespace StoreTest;

/** The sub-index, name, string and signal caches. */
class TestStoreCaches : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void aCachedSubIndexIsStaleAfterAnOutsideUpdate();
    void clearSubCacheReadsTheTableAgain();
    void addSubIndexUpdatesTheCache();
    void addSubIndexDropsTheCachedName();
    void addSubIndicesUpdatesTheCache();
    void everyWritingOperationIsSeenThroughTheCache_data();
    void everyWritingOperationIsSeenThroughTheCache();
    void aMissDoesNotFillTheCache();
    void cachingOneObjectLeavesTheOthersToTheTable();
    void cachingAgainReplacesTheLine();
    void aLineWithoutCacheIsReadFromTheTable();
    void namesAreStaleUntilCleared();
    void cachedRecordsAreCopies();
    void theSpnCacheFollowsWrites();
    void theSpnCacheGivesWhatTheTableGives_data();
    void theSpnCacheGivesWhatTheTableGives();
    void openingAnotherProjectForgetsTheCaches();
};

using Sub = ObjectDataBase::SUBINDEX_DATA_T;

namespace {

QString cachedDefault(ObjectDataBase &store, quint8 line = 0, quint16 index = 0x2000, quint8 subindex = 1)
{
    Sub sub;
    return store.getSubIndex(line, index, subindex, sub) ? sub.defaultvalue : QStringLiteral("<missing>");
}

bool changeBehindTheCache(ObjectDataBase &store)
{
    return store.executeSql(QStringLiteral("update SubObjects0 set defaultvalue = 'outside'"));
}

} // namespace

void TestStoreCaches::aCachedSubIndexIsStaleAfterAnOutsideUpdate()
{
    NewStore store;
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    store.cacheAllSubs(0);
    QVERIFY(changeBehindTheCache(store));
    QCOMPARE(cachedDefault(store), QStringLiteral("0x10"));
}

void TestStoreCaches::clearSubCacheReadsTheTableAgain()
{
    NewStore store;
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    store.cacheAllSubs(0);
    QVERIFY(changeBehindTheCache(store));
    store.clearSubCache();
    QCOMPARE(cachedDefault(store), QStringLiteral("outside"));
}

void TestStoreCaches::addSubIndexUpdatesTheCache()
{
    NewStore store;
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    store.cacheAllSubs(0);
    Sub changed = sampleSub(QStringLiteral("new name"));
    changed.defaultvalue = QStringLiteral("5");
    changed.metadata.insert(QStringLiteral("k"), QStringLiteral("v"));
    QVERIFY(store.addSubIndex(0, 0x2000, 1, changed));
    QVERIFY(store.addSubIndex(0, 0x2000, 2, changed));
    QVERIFY(changeBehindTheCache(store));
    for (const quint8 subindex : {1, 2}) {
        Sub read;
        QVERIFY(store.getSubIndex(0, 0x2000, subindex, read));
        QCOMPARE(read, changed);
    }
}

void TestStoreCaches::addSubIndexDropsTheCachedName()
{
    NewStore store;
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    store.cacheAllSubs(0);
    store.cacheSubNames(0);
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub(QStringLiteral("new name"))));
    QCOMPARE(store.getSubIndexName(0, 0x2000, 1), QStringLiteral("new name"));
}

void TestStoreCaches::addSubIndicesUpdatesTheCache()
{
    NewStore store;
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    store.cacheAllSubs(0);
    Sub changed = sampleSub();
    changed.defaultvalue = QStringLiteral("5");
    QVERIFY(store.addSubIndices({{.line = 0, .index = 0x2000, .subindex = 1, .data = changed}}));
    QVERIFY(changeBehindTheCache(store));
    QCOMPARE(cachedDefault(store), QStringLiteral("5"));
}

// What the store itself writes must never come back old: generators and forms share one cache.
void TestStoreCaches::everyWritingOperationIsSeenThroughTheCache_data()
{
    using Change = std::function<bool(ObjectDataBase &)>;
    QTest::addColumn<Change>("change");
    const auto row = [](const char *name, const Change &change) { QTest::newRow(name) << change; };
    row("addSubIndex",
        [](ObjectDataBase &s) { return s.addSubIndex(0, 0x2000, 1, sampleSub(QStringLiteral("n"))); });
    row("renameSubIndex",
        [](ObjectDataBase &s) { return s.renameSubIndex(0, 0x2000, 1, QStringLiteral("n")); });
    row("setSubIndexDefault",
        [](ObjectDataBase &s) { return s.setSubIndexDefault(0, 0x2000, 1, QStringLiteral("9")); });
    row("setSubMetadata", [](ObjectDataBase &s) {
        return s.setSubMetadata(0, 0x2000, 1, {{QStringLiteral("k"), QStringLiteral("v")}});
    });
    row("setSubindexSqlValue", [](ObjectDataBase &s) {
        s.setSubindexSqlValue(QStringLiteral("SubObjects0"), 0x2000, 1, QStringLiteral("currentvalue"), 9);
        return true;
    });
    row("removeSubIndex", [](ObjectDataBase &s) { return s.removeSubIndex(0, 0x2000, 1); });
    row("removeIndex", [](ObjectDataBase &s) { return s.removeIndex(0, 0x2000); });
    row("copyIndex over it", [](ObjectDataBase &s) {
        return s.addIndex(0, 0x3000, sampleIndex()) && s.addSubIndex(0, 0x3000, 1, Sub())
            && s.copyIndex(0, 0x3000, 0, 0x2000);
    });
    row("removeLine", [](ObjectDataBase &s) { return s.removeLine(0); });
}

void TestStoreCaches::everyWritingOperationIsSeenThroughTheCache()
{
    QFETCH(std::function<bool(ObjectDataBase &)>, change);
    NewStore store;
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    store.cacheAllSubs(0);
    store.cacheSubNames(0);
    QVERIFY(change(store));
    Sub throughCache;
    const bool foundThroughCache = store.getSubIndex(0, 0x2000, 1, throughCache);
    const QString nameThroughCache = store.getSubIndexName(0, 0x2000, 1);
    store.clearSubCache();
    store.clearSubNameCache();
    Sub inTable;
    QCOMPARE(foundThroughCache, store.getSubIndex(0, 0x2000, 1, inTable));
    QCOMPARE(throughCache, inTable);
    QCOMPARE(nameThroughCache, store.getSubIndexName(0, 0x2000, 1));
}

void TestStoreCaches::aMissDoesNotFillTheCache()
{
    NewStore store;
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    QCOMPARE(cachedDefault(store), QStringLiteral("0x10"));
    QVERIFY(changeBehindTheCache(store));
    QCOMPARE(cachedDefault(store), QStringLiteral("outside"));
}

void TestStoreCaches::cachingOneObjectLeavesTheOthersToTheTable()
{
    NewStore store;
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    QVERIFY(store.addSubIndex(0, 0x2001, 1, sampleSub()));
    store.cacheAllSubs(0, 0x2000);
    QVERIFY(changeBehindTheCache(store));
    QCOMPARE(cachedDefault(store, 0, 0x2000), QStringLiteral("0x10"));
    QCOMPARE(cachedDefault(store, 0, 0x2001), QStringLiteral("outside"));
}

void TestStoreCaches::cachingAgainReplacesTheLine()
{
    NewStore store;
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    QVERIFY(store.addSubIndex(0, 0x2001, 1, sampleSub()));
    store.cacheAllSubs(0);
    QVERIFY(changeBehindTheCache(store));
    store.cacheAllSubs(0, 0x2001);
    QCOMPARE(cachedDefault(store, 0, 0x2001), QStringLiteral("outside"));
    QCOMPARE(cachedDefault(store, 0, 0x2000), QStringLiteral("outside"));
}

void TestStoreCaches::aLineWithoutCacheIsReadFromTheTable()
{
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    QVERIFY(store.addSubIndex(1, 0x2000, 1, sampleSub()));
    store.cacheAllSubs(1);
    QVERIFY(changeBehindTheCache(store));
    QCOMPARE(cachedDefault(store, 0), QStringLiteral("outside"));
    QCOMPARE(cachedDefault(store, 1), QStringLiteral("0x10"));
}

void TestStoreCaches::namesAreStaleUntilCleared()
{
    NewStore store;
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    store.cacheSubNames(0);
    const int id = store.addString(QStringLiteral("outside"));
    QVERIFY(store.executeSql(QStringLiteral("update SubObjects0 set name = %1").arg(id)));
    QCOMPARE(store.getSubIndexName(0, 0x2000, 1), QStringLiteral("Vendor"));
    store.clearSubNameCache();
    QCOMPARE(store.getSubIndexName(0, 0x2000, 1), QStringLiteral("outside"));
}

void TestStoreCaches::cachedRecordsAreCopies()
{
    NewStore store;
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    store.cacheAllSubs(0);
    Sub mine;
    QVERIFY(store.getSubIndex(0, 0x2000, 1, mine));
    mine.name = QStringLiteral("changed by the caller");
    Sub read;
    QVERIFY(store.getSubIndex(0, 0x2000, 1, read));
    QCOMPARE(read, sampleSub());
    mine.varname.chop(1);
    mine.defaultvalue.clear();
    mine.description[0] = u'X';
    QVERIFY(store.getSubIndex(0, 0x2000, 1, mine));
    QCOMPARE(mine, sampleSub());
}

void TestStoreCaches::theSpnCacheFollowsWrites()
{
    NewStore store;
    QVERIFY(store.addPGN(0, 61444, samplePgn(85)));
    QVERIFY(store.addSPN(0, 61444, 85, 190, sampleSpn(0)));
    QVERIFY(store.addSPN(0, 61444, 85, 191, sampleSpn(1)));
    store.cacheAllSpns(0);
    QVERIFY(store.addSPN(0, 61444, 85, 190, sampleSpn(5, QStringLiteral("moved"))));
    QCOMPARE(store.getSPNName(0, 61444, 85, 190), QStringLiteral("moved"));
    QCOMPARE(store.getSPNList(0, 61444, 85), QList<quint32>({191, 190}));
    QVERIFY(store.removeSPN(0, 61444, 85, 191));
    QCOMPARE(store.getSPNList(0, 61444, 85), QList<quint32>{190});
    ObjectDataBase::SPN spn;
    QVERIFY(!store.getSPN(0, 61444, 85, 191, spn));
}

void TestStoreCaches::theSpnCacheGivesWhatTheTableGives_data()
{
    QTest::addColumn<QString>("change");
    QTest::newRow("nothing else") << QStringLiteral("update SPNs0 set pos = pos");
    QTest::newRow("two rows of one signal") << QStringLiteral(
        "insert into SPNs0 (pgnnumber,spnnumber,direction,varname,pos) values(61444,190,85,'second row',9)");
    QTest::newRow("no direction") << QStringLiteral(
        "update SPNs0 set direction = NULL where spnnumber = 191");
    QTest::newRow("a direction that is none")
        << QStringLiteral("update SPNs0 set direction = 341 where spnnumber = 191");
    QTest::newRow("a group beyond all numbers")
        << QStringLiteral("update SPNs0 set pgnnumber = pgnnumber + 4294967296 where spnnumber = 191");
    QTest::newRow("a number beyond all numbers")
        << QStringLiteral("update SPNs0 set spnnumber = spnnumber + 4294967296 where spnnumber = 191");
}

// Other programs write what no signal of ours is; the cache must not make one of it.
void TestStoreCaches::theSpnCacheGivesWhatTheTableGives()
{
    QFETCH(QString, change);
    NewStore store;
    QVERIFY(store.addSPN(0, 61444, 85, 190, sampleSpn(0, QStringLiteral("first row"))));
    QVERIFY(store.addSPN(0, 61444, 85, 191, sampleSpn(1)));
    QVERIFY(store.executeSql(change));
    const auto readAll = [&store] {
        QList<std::pair<quint32, ObjectDataBase::SPN>> all;
        for (const quint8 direction : {0, 85, 119}) {
            const QList<quint32> numbers = store.getSPNList(0, 61444, direction);
            for (const quint32 number : numbers) {
                ObjectDataBase::SPN spn;
                store.getSPN(0, 61444, direction, number, spn);
                all.append({number, spn});
            }
        }
        return all;
    };
    const auto fromTable = readAll();
    store.cacheAllSpns(0);
    QCOMPARE(readAll(), fromTable);
    QCOMPARE(store.getSPNName(0, 61444, 85, 190), QStringLiteral("first row"));
}

void TestStoreCaches::openingAnotherProjectForgetsTheCaches()
{
    NewStore store;
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    const int id = store.addString(QStringLiteral("only in the first project"));
    store.cacheAllSubs(0);
    store.cacheSubNames(0);
    QVERIFY(store.createNewDataBase());
    QVERIFY(!store.subIndexExists(0, 0x2000, 1));
    QCOMPARE(cachedDefault(store), QStringLiteral("<missing>"));
    QVERIFY(store.getSubIndexName(0, 0x2000, 1).isEmpty());
    QVERIFY(store.getString(id) != QStringLiteral("only in the first project"));
}

QTEST_GUILESS_MAIN(TestStoreCaches)
#include "tst_storecaches.moc"
