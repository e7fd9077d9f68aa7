#include "StoreTest.h"

using namespace StoreTest;

/** The cache of raw CAN signals: it gives what the table gives, and own writes never leave it behind. */
class TestElementCache : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void cachedReadsAreThoseOfTheTable();
    void cachedReadsAreStaleUntilCleared();
    void cachingAgainReplacesTheLine();
    void aLineWithoutCacheIsReadFromTheTable();
    void aMissIsLookedForInTheTable();
    void everyWritingOperationIsSeenThroughTheCache_data();
    void everyWritingOperationIsSeenThroughTheCache();
    void refusedWritesLeaveTheCache();
    void ofSeveralRowsTheFirstIsFound();
    void rowsThatNoAddressReachesAreLeftOut();
    void aLineThatCannotBeReadStaysWithoutACache();
    void aSnapshotComesWithItsOwnSignals();
    void anotherProjectComesWithItsOwnSignals_data();
    void anotherProjectComesWithItsOwnSignals();
    void theSignalsOfJ1939AreCachedApart();
};

using Element = ObjectDataBase::DataElement;

namespace {

constexpr quint8 Transmit = ObjectDataBase::Transmit;
constexpr quint8 Receive = ObjectDataBase::Receive;
constexpr quint32 message = 0x80000123;

QString nameOf(ObjectDataBase &store, quint32 number = 1, quint8 line = 0)
{
    Element element;
    return store.getDataElement(line, message, Transmit, number, element) ? element.name
                                                                          : QStringLiteral("<missing>");
}

bool renameBehindTheCache(ObjectDataBase &store, const QString &table = QStringLiteral("DataElements0"))
{
    const int id = store.addString(QStringLiteral("outside"));
    return store.executeSql(QStringLiteral("update %1 set name = %2").arg(table).arg(id));
}

bool addMessage(ObjectDataBase &store, quint8 line = 0)
{
    return store.addCANID(line, message, sampleCanId(Transmit))
        && store.addDataElement(line, message, Transmit, 5, sampleElement(0, QStringLiteral("five")))
        && store.addDataElement(line, message, Transmit, 1, sampleElement(1, QStringLiteral("one")))
        && store.addDataElement(line, message, Receive, 1, sampleElement(2, QStringLiteral("received")));
}

/** Everything that the read operations tell about the signals of both directions. */
QStringList readAll(ObjectDataBase &store)
{
    QStringList all;
    for (const quint8 direction : {Receive, Transmit}) {
        const QList<quint32> numbers = store.getDataElementList(0, message, direction);
        for (const quint32 number : numbers) {
            Element element;
            const bool found = store.getDataElement(0, message, direction, number, element);
            all.append(QStringLiteral("%1 %2 %3 %4 %5 %6 %7")
                           .arg(direction)
                           .arg(number)
                           .arg(found)
                           .arg(element.name, store.getDataElementName(0, message, direction, number),
                                element.varname)
                           .arg(element.bitpos));
        }
    }
    return all;
}

} // namespace

void TestElementCache::cachedReadsAreThoseOfTheTable()
{
    NewStore store;
    QVERIFY(addMessage(store));
    const QStringList expected = readAll(store);
    QCOMPARE(expected.size(), 3);
    store.cacheAllDataElements(0);
    QVERIFY(store.executeSql(QStringLiteral("delete from DataElements0")));
    QCOMPARE(readAll(store), expected);
    QCOMPARE(store.getDataElementList(0, message, Transmit), QList<quint32>({1, 5}));
    QCOMPARE(store.getDataElementList(0, message, Receive), QList<quint32>{1});
    QCOMPARE(store.getDataElementList(0, message + 1, Transmit), QList<quint32>{});
    Element element;
    QVERIFY(store.getDataElement(0, message, Transmit, 5, element));
    QCOMPARE(element, sampleElement(0, QStringLiteral("five")));
}

void TestElementCache::cachedReadsAreStaleUntilCleared()
{
    NewStore store;
    QVERIFY(addMessage(store));
    store.cacheAllDataElements(0);
    QVERIFY(renameBehindTheCache(store));
    QCOMPARE(nameOf(store), QStringLiteral("one"));
    QCOMPARE(store.getDataElementName(0, message, Transmit, 1), QStringLiteral("one"));
    store.clearDataElementCache();
    QCOMPARE(nameOf(store), QStringLiteral("outside"));
    QCOMPARE(store.getDataElementName(0, message, Transmit, 1), QStringLiteral("outside"));
}

void TestElementCache::cachingAgainReplacesTheLine()
{
    NewStore store;
    QVERIFY(addMessage(store));
    store.cacheAllDataElements(0);
    QVERIFY(store.executeSql(QStringLiteral("delete from DataElements0 where number = 5")));
    QVERIFY(renameBehindTheCache(store));
    store.cacheAllDataElements(0);
    QCOMPARE(nameOf(store), QStringLiteral("outside"));
    QCOMPARE(store.getDataElementList(0, message, Transmit), QList<quint32>{1});
}

void TestElementCache::aLineWithoutCacheIsReadFromTheTable()
{
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    QVERIFY(addMessage(store) && addMessage(store, 1));
    store.cacheAllDataElements(1);
    QVERIFY(renameBehindTheCache(store) && renameBehindTheCache(store, QStringLiteral("DataElements1")));
    QCOMPARE(nameOf(store, 1, 0), QStringLiteral("outside"));
    QCOMPARE(nameOf(store, 1, 1), QStringLiteral("one"));
}

void TestElementCache::aMissIsLookedForInTheTable()
{
    NewStore store;
    QVERIFY(addMessage(store));
    store.cacheAllDataElements(0);
    QVERIFY(store.executeSql(
        QStringLiteral("update DataElements0 set number = 9 where number = 5 and direction = 85")));
    QCOMPARE(nameOf(store, 9), QStringLiteral("five"));
    QCOMPARE(nameOf(store, 8), QStringLiteral("<missing>"));
}

void TestElementCache::everyWritingOperationIsSeenThroughTheCache_data()
{
    using Change = std::function<bool(ObjectDataBase &)>;
    QTest::addColumn<Change>("change");
    const auto row = [](const char *name, const Change &change) { QTest::newRow(name) << change; };
    row("addDataElement over one", [](ObjectDataBase &s) {
        return s.addDataElement(0, message, Transmit, 1, sampleElement(7, QStringLiteral("changed")));
    });
    row("addDataElement between", [](ObjectDataBase &s) {
        return s.addDataElement(0, message, Transmit, 3, sampleElement(7, QStringLiteral("new")));
    });
    row("addDataElement of the other direction", [](ObjectDataBase &s) {
        return s.addDataElement(0, message, Receive, 5, sampleElement(7, QStringLiteral("new")));
    });
    row("removeDataElement", [](ObjectDataBase &s) { return s.removeDataElement(0, message, Transmit, 1); });
    row("removeCANID", [](ObjectDataBase &s) { return s.removeCANID(0, message, Transmit); });
    row("copyCANIDs over it", [](ObjectDataBase &s) {
        NewStore source;
        return source.addCANID(0, message, sampleCanId(Transmit))
            && source.addDataElement(0, message, Transmit, 2, sampleElement(0, QStringLiteral("copy")))
            && s.copyCANIDs(source, 0, 0, 0, 0xFFFFFFFF, Transmit);
    });
    row("copyCANIDs from another line", [](ObjectDataBase &s) {
        return s.addNode(1, {})
            && s.addDataElement(1, message, Receive, 4, sampleElement(0, QStringLiteral("copy")))
            && s.addCANID(1, message, sampleCanId(Receive)) && s.copyCANIDs(s, 1, 0, 0, 0xFFFFFFFF, Receive);
    });
    row("removeLine", [](ObjectDataBase &s) { return s.removeLine(0); });
    row("createNewDataBase", [](ObjectDataBase &s) { return s.createNewDataBase(); });
}

void TestElementCache::everyWritingOperationIsSeenThroughTheCache()
{
    QFETCH(std::function<bool(ObjectDataBase &)>, change);
    NewStore store;
    QVERIFY(addMessage(store));
    store.cacheAllDataElements(0);
    const QStringList before = readAll(store);
    QVERIFY(change(store));
    const QStringList throughCache = readAll(store);
    store.clearDataElementCache();
    QCOMPARE(throughCache, readAll(store));
    QVERIFY(throughCache != before);
}

void TestElementCache::refusedWritesLeaveTheCache()
{
    NewStore store;
    QVERIFY(addMessage(store));
    store.cacheAllDataElements(0);
    store.setWriteLock(true);
    QVERIFY(!store.removeDataElement(0, message, Transmit, 1));
    QVERIFY(!store.removeCANID(0, message, Transmit));
    QCOMPARE(nameOf(store), QStringLiteral("one"));
    store.setWriteLock(false);
}

// The table has no key; the read of it finds the row that was written first.
void TestElementCache::ofSeveralRowsTheFirstIsFound()
{
    NewStore store;
    QVERIFY(addMessage(store));
    QVERIFY(store.executeSql(QStringLiteral(
        "insert into DataElements0 select * from DataElements0 where number = 1 and direction = 85")));
    const int id = store.addString(QStringLiteral("second row"));
    QVERIFY(store.executeSql(QStringLiteral("update DataElements0 set name = %1, pos = -1 where rowid = "
                                            "(select max(rowid) from DataElements0)")
                                 .arg(id)));
    const QStringList fromTable = readAll(store);
    store.cacheAllDataElements(0);
    QCOMPARE(readAll(store), fromTable);
    QCOMPARE(store.getDataElementList(0, message, Transmit), QList<quint32>({1, 1, 5}));
    QCOMPARE(nameOf(store), QStringLiteral("one"));
}

void TestElementCache::rowsThatNoAddressReachesAreLeftOut()
{
    NewStore store;
    for (const char *outside :
         {"canid = canid + 4294967296", "canid = -2147483357", "direction = 341", "direction = NULL",
          "number = number + 4294967296", "number = -1", "canid = 'text'"}) {
        QVERIFY(store.executeSql(QStringLiteral("delete from DataElements0")));
        QVERIFY(addMessage(store));
        QVERIFY(store.executeSql(
            QStringLiteral("update DataElements0 set %1 where number = 5").arg(QLatin1StringView(outside))));
        const QStringList fromTable = readAll(store);
        store.cacheAllDataElements(0);
        QCOMPARE(readAll(store), fromTable);
        QCOMPARE(nameOf(store, 5), QStringLiteral("<missing>"));
        QVERIFY(store.getDataElementList(0, 0, Transmit).isEmpty());
        store.clearDataElementCache();
    }
}

void TestElementCache::aLineThatCannotBeReadStaysWithoutACache()
{
    NewStore store;
    QVERIFY(addMessage(store));
    store.cacheAllDataElements(1);
    QVERIFY(store.addNode(1, {}));
    QVERIFY(store.executeSql(QStringLiteral("insert into DataElements1 select * from DataElements0")));
    QCOMPARE(store.getDataElementList(1, message, Transmit), QList<quint32>({1, 5}));
    QCOMPARE(nameOf(store, 5, 1), QStringLiteral("five"));
}

void TestElementCache::aSnapshotComesWithItsOwnSignals()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("snapshot"));
    NewStore store;
    QVERIFY(addMessage(store));
    QVERIFY(store.vacuumInto(path));
    QVERIFY(store.addDataElement(0, message, Transmit, 1, sampleElement(1, QStringLiteral("later"))));
    QVERIFY(store.addDataElement(0, message, Transmit, 2, sampleElement(1, QStringLiteral("later"))));
    store.cacheAllDataElements(0);
    QVERIFY(store.restoreSnapshot(path));
    QCOMPARE(nameOf(store), QStringLiteral("one"));
    QCOMPARE(store.getDataElementList(0, message, Transmit), QList<quint32>({1, 5}));
}

void TestElementCache::anotherProjectComesWithItsOwnSignals_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::newRow("project file") << "vexp";
    QTest::newRow("text project") << "vext";
}

void TestElementCache::anotherProjectComesWithItsOwnSignals()
{
    QFETCH(QString, suffix);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("other.") + suffix);
    const bool isText = suffix == QStringLiteral("vext");
    {
        NewStore other;
        QVERIFY(isText ? other.saveDatabaseAsText(path) : other.saveProject(path));
    }
    NewStore store;
    QVERIFY(addMessage(store));
    store.cacheAllDataElements(0);
    QVERIFY(isText ? store.loadTextProject(path) : store.openDataBase(path));
    QCOMPARE(nameOf(store), QStringLiteral("<missing>"));
    QVERIFY(store.getDataElementList(0, message, Transmit).isEmpty());
}

void TestElementCache::theSignalsOfJ1939AreCachedApart()
{
    NewStore store;
    QVERIFY(addMessage(store));
    QVERIFY(store.addSPN(0, message, Transmit, 1, sampleSpn(0, QStringLiteral("speed"))));
    store.cacheAllDataElements(0);
    store.cacheAllSpns(0);
    QVERIFY(renameBehindTheCache(store));
    QVERIFY(store.removeSPN(0, message, Transmit, 1));
    QCOMPARE(nameOf(store), QStringLiteral("one"));
    QCOMPARE(store.getSPNName(0, message, Transmit, 1), QString());
    store.clearSpnCache();
    QCOMPARE(nameOf(store), QStringLiteral("one"));
}

QTEST_GUILESS_MAIN(TestElementCache)
#include "tst_elementcache.moc"
