#include "StoreTest.h"

#include <random>

using namespace StoreTest;

/** The record cache of a line: what it holds, what it shows, and that own writes never leave it behind. */
class TestSubIndexCache : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void everySubIndexOfALineIsFound_data();
    void everySubIndexOfALineIsFound();
    void recordsOfManyKindsAreKeptApart();
    void theVisitorSeesTheWholeLineInOrder();
    void theVisitorSeesTheTableAndNotAFormerCache();
    void theVisitorOfAnEmptyLineSeesNothing_data();
    void theVisitorOfAnEmptyLineSeesNothing();
    void theVisitorMayReadTheStore();
    void aVisitFillsTheCache();
    void rowsThatNoAddressReachesAreLeftOut();
    void ofSeveralRowsOfOneSubIndexTheFirstIsFound();
    void textsOfThePoolOutliveItsReload();
    void writesAndRemovalsInAnyOrderAreSeen();
    void aSnapshotComesWithItsOwnRecords();
    void anotherProjectComesWithItsOwnRecords();
};

using Sub = ObjectDataBase::SUBINDEX_DATA_T;
using SubAddress = ObjectDataBase::SubAddress;

namespace {

Sub numbered(int number)
{
    Sub sub = sampleSub(QStringLiteral("name %1").arg(number % 3));
    sub.defaultvalue = QString::number(number);
    sub.varname = number % 2 == 0 ? QString() : QStringLiteral("variable_%1").arg(number);
    sub.size = -number;
    sub.limitineds = number % 5 == 0;
    sub.wizardsource = quint16(0xFFFF - number);
    if (number % 4 == 0)
        sub.metadata.insert(QStringLiteral("number"), QString::number(number));
    return sub;
}

/** The addresses and records of a line as the visitor sees them. */
QList<std::pair<SubAddress, Sub>> visited(ObjectDataBase &store, quint8 line = 0)
{
    QList<std::pair<SubAddress, Sub>> seen;
    store.cacheAllSubs(line, [&](quint16 index, quint8 subindex, const Sub &data) {
        seen.append({{index, subindex}, data});
    });
    return seen;
}

bool emptyTheTableBehindTheCache(ObjectDataBase &store)
{
    return store.executeSql(QStringLiteral("delete from SubObjects0"));
}

QString defaultOf(ObjectDataBase &store, quint16 index, quint8 subindex)
{
    Sub sub;
    return store.getSubIndex(0, index, subindex, sub) ? sub.defaultvalue : QStringLiteral("<missing>");
}

} // namespace

void TestSubIndexCache::everySubIndexOfALineIsFound_data()
{
    QTest::addColumn<QList<SubAddress>>("present");
    QTest::addColumn<QList<SubAddress>>("missing");
    const auto row = [](const char *name, const QList<SubAddress> &present,
                        const QList<SubAddress> &missing) { QTest::newRow(name) << present << missing; };
    row("one", {{0x2000, 1}}, {{0x2000, 0}, {0x2000, 2}, {0x1FFF, 1}, {0x2001, 1}});
    row("an object without gaps", {{0x2000, 0}, {0x2000, 1}, {0x2000, 2}}, {{0x2000, 3}, {0x2000, 255}});
    row("gaps in an object", {{0x2000, 2}, {0x2000, 4}, {0x2000, 255}},
        {{0x2000, 0}, {0x2000, 3}, {0x2000, 5}, {0x2000, 254}});
    row("gaps between objects", {{0x1000, 0}, {0x1018, 1}, {0x6000, 0}},
        {{0x1001, 0}, {0x1018, 0}, {0x1018, 2}, {0x5FFF, 0}});
    row("both ends", {{0, 0}, {0, 255}, {0xFFFF, 0}, {0xFFFF, 255}}, {{0, 1}, {0xFFFF, 254}, {1, 0}});
}

void TestSubIndexCache::everySubIndexOfALineIsFound()
{
    QFETCH(QList<SubAddress>, present);
    QFETCH(QList<SubAddress>, missing);
    NewStore store;
    int number = 0;
    for (const auto &[index, subindex] : std::as_const(present))
        QVERIFY(store.addSubIndex(0, index, subindex, numbered(++number)));
    store.cacheAllSubs(0);
    QVERIFY(emptyTheTableBehindTheCache(store));
    number = 0;
    Sub sub;
    for (const auto &[index, subindex] : std::as_const(present)) {
        QVERIFY(store.getSubIndex(0, index, subindex, sub));
        QCOMPARE(sub, numbered(++number));
    }
    for (const auto &[index, subindex] : std::as_const(missing)) {
        sub = numbered(99);
        QVERIFY(!store.getSubIndex(0, index, subindex, sub));
        QCOMPARE(sub, numbered(99));
    }
}

void TestSubIndexCache::recordsOfManyKindsAreKeptApart()
{
    NewStore store;
    for (int i = 0; i < 200; ++i)
        QVERIFY(store.addSubIndex(0, quint16(0x2000 + i / 16), quint8(i % 16), numbered(i)));
    QVERIFY(store.addSubIndex(0, 0x3000, 0, Sub()));
    store.cacheAllSubs(0);
    QVERIFY(emptyTheTableBehindTheCache(store));
    Sub sub;
    for (int i = 199; i >= 0; --i) {
        QVERIFY(store.getSubIndex(0, quint16(0x2000 + i / 16), quint8(i % 16), sub));
        QCOMPARE(sub, numbered(i));
    }
    QVERIFY(store.getSubIndex(0, 0x3000, 0, sub));
    QCOMPARE(sub, Sub());
}

void TestSubIndexCache::theVisitorSeesTheWholeLineInOrder()
{
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    QVERIFY(store.addSubIndex(0, 0x3000, 0, numbered(3)));
    QVERIFY(store.addSubIndex(0, 0x2000, 200, numbered(2)));
    QVERIFY(store.addSubIndex(0, 0x2000, 1, numbered(1)));
    QVERIFY(store.addSubIndex(1, 0x2500, 1, numbered(4)));
    const auto seen = visited(store);
    QCOMPARE(seen.size(), 3);
    QCOMPARE(seen.at(0), std::pair(SubAddress(0x2000, 1), numbered(1)));
    QCOMPARE(seen.at(1), std::pair(SubAddress(0x2000, 200), numbered(2)));
    QCOMPARE(seen.at(2), std::pair(SubAddress(0x3000, 0), numbered(3)));
}

void TestSubIndexCache::theVisitorSeesTheTableAndNotAFormerCache()
{
    NewStore store;
    QVERIFY(store.addSubIndex(0, 0x2000, 1, numbered(1)));
    store.cacheAllSubs(0);
    QVERIFY(store.executeSql(QStringLiteral("update SubObjects0 set defaultvalue = 'outside'")));
    const auto seen = visited(store);
    QCOMPARE(seen.size(), 1);
    QCOMPARE(seen.constFirst().second.defaultvalue, QStringLiteral("outside"));
    QCOMPARE(defaultOf(store, 0x2000, 1), QStringLiteral("outside"));
}

void TestSubIndexCache::theVisitorOfAnEmptyLineSeesNothing_data()
{
    QTest::addColumn<int>("line");
    QTest::newRow("no sub-index") << 0;
    QTest::newRow("no such line") << 7;
}

void TestSubIndexCache::theVisitorOfAnEmptyLineSeesNothing()
{
    QFETCH(int, line);
    NewStore store;
    QVERIFY(visited(store, quint8(line)).isEmpty());
}

void TestSubIndexCache::theVisitorMayReadTheStore()
{
    NewStore store;
    for (int i = 0; i < 50; ++i)
        QVERIFY(store.addSubIndex(0, 0x2000, quint8(i), numbered(i)));
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
    int count = 0;
    store.cacheAllSubs(0, [&](quint16 index, quint8 subindex, const Sub &data) {
        Sub read;
        QVERIFY(store.getSubIndex(0, index, subindex, read));
        QCOMPARE(read, data);
        QCOMPARE(store.getIndexName(0, index), QStringLiteral("Device type"));
        ++count;
    });
    QCOMPARE(count, 50);
}

void TestSubIndexCache::aVisitFillsTheCache()
{
    NewStore store;
    QVERIFY(store.addSubIndex(0, 0x2000, 1, numbered(1)));
    QCOMPARE(visited(store).size(), 1);
    QVERIFY(emptyTheTableBehindTheCache(store));
    QCOMPARE(defaultOf(store, 0x2000, 1), QStringLiteral("1"));
}

// Another program may have written any number; none of them may pass for the address that its low bits give.
void TestSubIndexCache::rowsThatNoAddressReachesAreLeftOut()
{
    NewStore store;
    QVERIFY(store.addSubIndex(0, 0x2000, 1, numbered(1)));
    for (const char *outside : {"objectindex = 73728, subindex = 1", "objectindex = -57344, subindex = 1",
                                "objectindex = 8192, subindex = 257", "objectindex = 8192, subindex = -255",
                                "objectindex = 'text', subindex = 1", "objectindex = 8192.5, subindex = 1"}) {
        QVERIFY(store.addSubIndex(0, 0x3000, 1, numbered(2)));
        store.clearSubCache();
        QVERIFY(store.executeSql(QStringLiteral("update SubObjects0 set %1 where objectindex = 12288")
                                     .arg(QLatin1StringView(outside))));
    }
    const auto seen = visited(store);
    QCOMPARE(seen.size(), 1);
    QCOMPARE(seen.constFirst().second, numbered(1));
    QCOMPARE(defaultOf(store, 0x2000, 1), QStringLiteral("1"));
    QCOMPARE(defaultOf(store, 0, 1), QStringLiteral("<missing>"));
}

// Old files have a table without a key.
void TestSubIndexCache::ofSeveralRowsOfOneSubIndexTheFirstIsFound()
{
    NewStore store;
    for (const quint8 subindex : {0, 3})
        QVERIFY(store.addSubIndex(0, 0x2000, subindex, numbered(subindex)));
    QVERIFY(store.executeSql(QStringLiteral("create table Keyless as select * from SubObjects0")));
    QVERIFY(store.executeSql(QStringLiteral("drop table SubObjects0")));
    QVERIFY(store.executeSql(QStringLiteral("alter table Keyless rename to SubObjects0")));
    QVERIFY(store.executeSql(QStringLiteral("insert into SubObjects0 select * from SubObjects0")));
    QVERIFY(
        store.executeSql(QStringLiteral("update SubObjects0 set defaultvalue = 'second' where rowid > 2")));
    const auto defaults = [&store] {
        QStringList all;
        for (const quint8 subindex : {0, 2, 3})
            all.append(defaultOf(store, 0x2000, subindex));
        return all;
    };
    const QStringList fromTable = defaults();
    QCOMPARE(fromTable.count(QStringLiteral("second")), 0);
    store.cacheAllSubs(0);
    QCOMPARE(defaults(), fromTable);
    QVERIFY(emptyTheTableBehindTheCache(store));
    QCOMPARE(defaults(), fromTable);
}

void TestSubIndexCache::textsOfThePoolOutliveItsReload()
{
    NewStore store;
    QVERIFY(store.addSubIndex(0, 0x2000, 1, numbered(1)));
    store.cacheAllSubs(0);
    store.addString(QStringLiteral("not used"));
    store.removeUnusedStrings();
    QVERIFY(emptyTheTableBehindTheCache(store));
    Sub sub;
    QVERIFY(store.getSubIndex(0, 0x2000, 1, sub));
    QCOMPARE(sub, numbered(1));
}

namespace {

/** One random write, the same for both stores. */
void writeAtRandom(std::mt19937 &random, ObjectDataBase &cached, ObjectDataBase &plain)
{
    const auto index = quint16(0x2000 + random() % 6);
    const auto subindex = quint8(random() % 8);
    const int number = int(random() % 1000);
    const auto kind = random() % 9;
    for (ObjectDataBase *store : {&cached, &plain}) {
        switch (kind) {
        case 0:
            store->removeSubIndex(0, index, subindex);
            break;
        case 1:
            store->setSubIndexDefault(0, index, subindex, QString::number(number));
            break;
        case 2:
            store->renameSubIndex(0, index, subindex, QStringLiteral("renamed %1").arg(number));
            break;
        case 3:
            store->copyIndex(0, index, 0, quint16(0x2000 + number % 6));
            break;
        case 4:
            store->setSubMetadata(0, index, subindex, {{QStringLiteral("n"), QString::number(number)}});
            break;
        case 5:
            store->addSubIndices({{.line = 0, .index = index, .subindex = subindex, .data = numbered(number)},
                                  {.line = 0, .index = index, .subindex = 7, .data = numbered(number + 1)}});
            break;
        case 6:
            if (number % 4 == 0)
                store->removeIndex(0, index);
            break;
        default:
            store->addIndex(0, index, sampleIndex());
            store->addSubIndex(0, index, subindex, numbered(number));
        }
    }
    // A copy of an object ends with empty caches.
    if (kind == 3 || number % 10 == 0)
        cached.cacheAllSubs(0, number % 7 == 0 ? index : quint16(0));
}

} // namespace

void TestSubIndexCache::writesAndRemovalsInAnyOrderAreSeen()
{
    NewStore cached;
    NewStore plain;
    std::mt19937 random(306);
    cached.cacheAllSubs(0);
    for (int step = 0; step < 3000; ++step) {
        writeAtRandom(random, cached, plain);
        const auto index = quint16(0x2000 + random() % 6);
        const auto subindex = quint8(random() % 8);
        Sub throughCache;
        Sub fromTable;
        QCOMPARE(cached.getSubIndex(0, index, subindex, throughCache),
                 plain.getSubIndex(0, index, subindex, fromTable));
        QCOMPARE(throughCache, fromTable);
    }
    QCOMPARE(cached.contentHash(), plain.contentHash());
}

void TestSubIndexCache::aSnapshotComesWithItsOwnRecords()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("snapshot"));
    NewStore store;
    QVERIFY(store.addSubIndex(0, 0x2000, 1, numbered(1)));
    QVERIFY(store.vacuumInto(path));
    QVERIFY(store.addSubIndex(0, 0x2000, 1, numbered(2)));
    QVERIFY(store.addSubIndex(0, 0x2000, 2, numbered(3)));
    store.cacheAllSubs(0);
    QVERIFY(store.restoreSnapshot(path));
    QCOMPARE(defaultOf(store, 0x2000, 1), QStringLiteral("1"));
    QCOMPARE(defaultOf(store, 0x2000, 2), QStringLiteral("<missing>"));
    // The pool of the snapshot is read again only where it is asked for.
    QCOMPARE(visited(store).constFirst().second, numbered(1));
}

void TestSubIndexCache::anotherProjectComesWithItsOwnRecords()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("other.vexp"));
    {
        NewStore other;
        QVERIFY(other.addSubIndex(0, 0x2000, 1, numbered(7)));
        QVERIFY(other.saveProject(path));
    }
    NewStore store;
    QVERIFY(store.addSubIndex(0, 0x2000, 1, numbered(1)));
    QVERIFY(store.addSubIndex(0, 0x2000, 2, numbered(2)));
    store.cacheAllSubs(0);
    QVERIFY(store.openDataBase(path));
    QCOMPARE(defaultOf(store, 0x2000, 1), QStringLiteral("7"));
    QCOMPARE(defaultOf(store, 0x2000, 2), QStringLiteral("<missing>"));
}

QTEST_GUILESS_MAIN(TestSubIndexCache)
#include "tst_subindexcache.moc"
