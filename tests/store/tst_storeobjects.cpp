#include "StoreTest.h"

using namespace StoreTest;

/** Objects and sub-indices: reading, listing, finding, removing. */
class TestStoreObjects : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void addIndexInsertsThenUpdatesTheSameRow();
    void theListOfObjectsIsAscendingWithinItsRange_data();
    void theListOfObjectsIsAscendingWithinItsRange();
    void objectsBelowThe1000AreNotAmongTheObjectsAboveTheDataTypes();
    void theVisitorSeesAllObjectsInAscendingOrder();
    void theVisitorSeesNothingOfALineWithoutObjects_data();
    void theVisitorSeesNothingOfALineWithoutObjects();
    void findIndicesComparesOneColumn_data();
    void findIndicesComparesOneColumn();
    void removeIndexTakesItsSubIndicesAlong();
    void removeSubIndexTakesProducerConnectionsButNotConsumerConnections();
    void renamingChangesTheNameAlone();
    void theDenotationIsPreferredWhenThereIsOne_data();
    void theDenotationIsPreferredWhenThereIsOne();
    void singleColumnReadsGiveTheColumn();
    void setSubIndexDefaultChangesTheDefaultAlone();
    void findSubIndicesComparesTextWhenQuoted_data();
    void findSubIndicesComparesTextWhenQuoted();
    void mappableSubsLeaveTheExcludedValueOut_data();
    void mappableSubsLeaveTheExcludedValueOut();
    void addSubIndexReplacesTheWholeRow();
    void addSubIndicesWritesEveryRow();
    void addSubIndicesGoesOnAfterAFailingRow();
    void linesAreApart();
};

using Index = ObjectDataBase::INDEX_DATA_T;
using Sub = ObjectDataBase::SUBINDEX_DATA_T;
using SubAddress = ObjectDataBase::SubAddress;

void TestStoreObjects::addIndexInsertsThenUpdatesTheSameRow()
{
    NewStore store;
    QVERIFY(store.addIndex(0, 0x1000, sampleIndex()));
    Index changed = sampleIndex(QStringLiteral("Other"));
    changed.datatype = 5;
    QVERIFY(store.addIndex(0, 0x1000, changed));
    Index read;
    QVERIFY(store.getIndex(0, 0x1000, read));
    QCOMPARE(read, changed);
    QCOMPARE(Snapshot(store)->count(QStringLiteral("Objects0")), 1);
    QVERIFY(store.indexExists(0, 0x1000));
    QVERIFY(!store.indexExists(0, 0x1001));
    QCOMPARE(store.getIndexName(0, 0x1000), QStringLiteral("Other"));
}

void TestStoreObjects::theListOfObjectsIsAscendingWithinItsRange_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QList<quint16>>("expected");
    QTest::newRow("all") << 0 << 0xFFFF << QList<quint16>{0x0005, 0x0FFF, 0x1000, 0x2000, 0xFFFF};
    QTest::newRow("both ends belong to it") << 0x0FFF << 0x2000 << QList<quint16>{0x0FFF, 0x1000, 0x2000};
    QTest::newRow("one object") << 0x1000 << 0x1000 << QList<quint16>{0x1000};
    QTest::newRow("none") << 0x3000 << 0x4000 << QList<quint16>{};
    QTest::newRow("turned range") << 0x2000 << 0x1000 << QList<quint16>{};
}

void TestStoreObjects::theListOfObjectsIsAscendingWithinItsRange()
{
    QFETCH(int, from);
    QFETCH(int, to);
    NewStore store;
    for (const quint16 index : {0x2000, 0xFFFF, 0x0005, 0x1000, 0x0FFF})
        QVERIFY(store.addIndex(0, index, sampleIndex()));
    QTEST(store.getIndexList(0, quint16(from), quint16(to)), "expected");
}

void TestStoreObjects::objectsBelowThe1000AreNotAmongTheObjectsAboveTheDataTypes()
{
    NewStore store;
    for (const quint16 index : {0x0005, 0x0FFF, 0x1000, 0xFFFF})
        QVERIFY(store.addIndex(0, index, sampleIndex()));
    QCOMPARE(store.getIndexList(0, 4096, quint16(-1)), QList<quint16>({0x1000, 0xFFFF}));
}

void TestStoreObjects::theVisitorSeesAllObjectsInAscendingOrder()
{
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    Index withMetadata = sampleIndex(QStringLiteral("last"));
    withMetadata.metadata.insert(QStringLiteral("key"), QStringLiteral("value"));
    QVERIFY(store.addIndex(0, 0xFFFF, withMetadata));
    QVERIFY(store.addIndex(0, 0x2000, Index()));
    QVERIFY(store.addIndex(0, 0x0005, sampleIndex(QStringLiteral("first"))));
    QVERIFY(store.addIndex(1, 0x3000, sampleIndex()));
    // What another program wrote outside of the range is no object; no list shows it either.
    QVERIFY(store.executeSql(QStringLiteral("insert into Objects0 values(73728,1,0,0,1,0,1,0,0)")));
    QVERIFY(store.executeSql(QStringLiteral("insert into Objects0 values(-1,1,0,0,1,0,1,0,0)")));
    QList<std::pair<quint16, Index>> seen;
    store.visitIndices(0, [&](quint16 index, const Index &data) { seen.append({index, data}); });
    const QList<std::pair<quint16, Index>> expected{
        {0x0005, sampleIndex(QStringLiteral("first"))}, {0x2000, Index()}, {0xFFFF, withMetadata}};
    QCOMPARE(seen, expected);
}

void TestStoreObjects::theVisitorSeesNothingOfALineWithoutObjects_data()
{
    QTest::addColumn<int>("line");
    QTest::newRow("empty") << 0;
    QTest::newRow("missing") << 9;
}

void TestStoreObjects::theVisitorSeesNothingOfALineWithoutObjects()
{
    QFETCH(int, line);
    NewStore store;
    int objects = 0;
    store.visitIndices(quint8(line), [&](quint16, const Index &) { ++objects; });
    QCOMPARE(objects, 0);
}

void TestStoreObjects::findIndicesComparesOneColumn_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QList<quint16>>("expected");
    QTest::newRow("datatype") << "datatype"
                              << "7" << QList<quint16>{0x1000, 0x1018};
    QTest::newRow("objecttype") << "objecttype"
                                << "8" << QList<quint16>{0x1003};
    QTest::newRow("none has it") << "datatype"
                                 << "99" << QList<quint16>{};
    QTest::newRow("unknown column") << "nocolumn"
                                    << "7" << QList<quint16>{};
}

void TestStoreObjects::findIndicesComparesOneColumn()
{
    QFETCH(QString, column);
    QFETCH(QString, value);
    NewStore store;
    Index array = sampleIndex();
    array.objecttype = 8;
    array.datatype = 6;
    QVERIFY(store.addIndex(0, 0x1000, sampleIndex()));
    QVERIFY(store.addIndex(0, 0x1003, array));
    QVERIFY(store.addIndex(0, 0x1018, sampleIndex()));
    QTEST(store.findIndices(0, column, value), "expected");
}

void TestStoreObjects::removeIndexTakesItsSubIndicesAlong()
{
    NewStore store;
    for (const quint16 index : {0x2000, 0x2001}) {
        QVERIFY(store.addIndex(0, index, sampleIndex()));
        for (const quint8 sub : {0, 1, 255})
            QVERIFY(store.addSubIndex(0, index, sub, sampleSub()));
    }
    QVERIFY(store.removeIndex(0, 0x2000));
    QVERIFY(!store.indexExists(0, 0x2000));
    QCOMPARE(store.getSubIndexList(0, 0x2000), QList<quint8>{});
    QCOMPARE(store.getSubIndexList(0, 0x2001), QList<quint8>({0, 1, 255}));
    QCOMPARE(Snapshot(store)->count(QStringLiteral("SubObjects0")), 3);
}

void TestStoreObjects::removeSubIndexTakesProducerConnectionsButNotConsumerConnections()
{
    NewStore store;
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    QVERIFY(
        store.executeSql(QStringLiteral("insert into Connections values(0,8192,1,1,12288,2,0)"))); // producer
    QVERIFY(
        store.executeSql(QStringLiteral("insert into Connections values(1,12288,2,0,8192,1,1)"))); // consumer
    QVERIFY(store.executeSql(
        QStringLiteral("insert into Connections values(0,8192,2,1,12288,3,2)"))); // other sub
    QVERIFY(store.executeSql(
        QStringLiteral("insert into Connections values(1,8192,1,1,12288,3,3)"))); // other line
    QVERIFY(store.removeSubIndex(0, 0x2000, 1));
    QVERIFY(!store.subIndexExists(0, 0x2000, 1));
    QCOMPARE(Snapshot(store)->column(QStringLiteral("select priority from Connections order by priority")),
             QStringList({"1", "2", "3"}));
}

void TestStoreObjects::renamingChangesTheNameAlone()
{
    NewStore store;
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    QVERIFY(store.renameIndex(0, 0x2000, QStringLiteral("new object's name")));
    QVERIFY(store.renameSubIndex(0, 0x2000, 1, QStringLiteral("new \"sub\" name")));
    Index index;
    Sub sub;
    QVERIFY(store.getIndex(0, 0x2000, index));
    QVERIFY(store.getSubIndex(0, 0x2000, 1, sub));
    QCOMPARE(index, sampleIndex(QStringLiteral("new object's name")));
    QCOMPARE(sub, sampleSub(QStringLiteral("new \"sub\" name")));
}

void TestStoreObjects::theDenotationIsPreferredWhenThereIsOne_data()
{
    QTest::addColumn<bool>("cached");
    QTest::addColumn<bool>("prefer");
    QTest::addColumn<QString>("denotation");
    QTest::addColumn<QString>("expected");
    for (const bool cached : {false, true}) {
        const char *road = cached ? "cache" : "table";
        QTest::addRow("%s, name asked", road) << cached << false << "Oil"
                                              << "Input 1";
        QTest::addRow("%s, denotation asked", road) << cached << true << "Oil"
                                                    << "Oil";
        QTest::addRow("%s, no denotation", road) << cached << true << ""
                                                 << "Input 1";
    }
}

void TestStoreObjects::theDenotationIsPreferredWhenThereIsOne()
{
    QFETCH(bool, cached);
    QFETCH(bool, prefer);
    QFETCH(QString, denotation);
    NewStore store;
    Sub sub = sampleSub(QStringLiteral("Input 1"));
    sub.denotation = denotation;
    QVERIFY(store.addSubIndex(0, 0x6000, 1, sub));
    if (cached)
        store.cacheSubNames(0);
    QTEST(store.getSubIndexName(0, 0x6000, 1, prefer), "expected");
}

void TestStoreObjects::singleColumnReadsGiveTheColumn()
{
    NewStore store;
    QVERIFY(store.addSubIndex(0, 0x6000, 1, sampleSub()));
    QCOMPARE(store.getSubIndexDatatype(0, 0x6000, 1), 7);
    QCOMPARE(store.getSubIndexDefault(0, 0x6000, 1), QStringLiteral("0x10"));
    QVERIFY(store.subIndexExists(0, 0x6000, 1));
    QVERIFY(!store.subIndexExists(0, 0x6000, 2));
}

void TestStoreObjects::setSubIndexDefaultChangesTheDefaultAlone()
{
    NewStore store;
    Sub expected = sampleSub();
    QVERIFY(store.addSubIndex(0, 0x6000, 1, expected));
    QVERIFY(store.addSubIndex(0, 0x6000, 2, expected));
    expected.defaultvalue = QStringLiteral("$NODEID + 'x'");
    QVERIFY(store.setSubIndexDefault(0, 0x6000, 1, expected.defaultvalue));
    Sub read;
    QVERIFY(store.getSubIndex(0, 0x6000, 1, read));
    QCOMPARE(read, expected);
    QCOMPARE(store.getSubIndexDefault(0, 0x6000, 2), QStringLiteral("0x10"));
}

void TestStoreObjects::findSubIndicesComparesTextWhenQuoted_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("quoted");
    QTest::addColumn<QList<SubAddress>>("expected");
    QTest::newRow("number") << "datatype"
                            << "5" << false << QList<SubAddress>{{0x2000, 1}, {0x2001, 0}};
    QTest::newRow("text") << "varname"
                          << "it's" << true << QList<SubAddress>{{0x2000, 2}};
    QTest::newRow("text with no match") << "varname"
                                        << "its" << true << QList<SubAddress>{};
    QTest::newRow("unknown column") << "nocolumn"
                                    << "1" << false << QList<SubAddress>{};
}

void TestStoreObjects::findSubIndicesComparesTextWhenQuoted()
{
    QFETCH(QString, column);
    QFETCH(QString, value);
    QFETCH(bool, quoted);
    NewStore store;
    Sub byte = sampleSub();
    byte.datatype = 5;
    Sub named = sampleSub();
    named.varname = QStringLiteral("it's");
    QVERIFY(store.addSubIndex(0, 0x2001, 0, byte));
    QVERIFY(store.addSubIndex(0, 0x2000, 2, named));
    QVERIFY(store.addSubIndex(0, 0x2000, 1, byte));
    QTEST(store.findSubIndices(0, column, value, quoted), "expected");
}

void TestStoreObjects::mappableSubsLeaveTheExcludedValueOut_data()
{
    QTest::addColumn<int>("excluded");
    QTest::addColumn<QList<SubAddress>>("expected");
    QTest::newRow("forbidden ones left out") << 0 << QList<SubAddress>{{0x2000, 1}, {0x2000, 4}};
    QTest::newRow("RPDO ones left out") << 4 << QList<SubAddress>{{0x1fff, 0}, {0x2000, 1}};
}

void TestStoreObjects::mappableSubsLeaveTheExcludedValueOut()
{
    QFETCH(int, excluded);
    NewStore store;
    const auto add = [&store](quint16 index, quint8 subindex, int mapping) {
        Sub sub = sampleSub();
        sub.pdomapping = PDOMapping(mapping);
        return store.addSubIndex(0, index, subindex, sub);
    };
    QVERIFY(add(0x2000, 4, 4) && add(0x2000, 1, 1) && add(0x1fff, 0, 0));
    QTEST(store.getMappableSubs(0, quint8(excluded)), "expected");
}

void TestStoreObjects::addSubIndexReplacesTheWholeRow()
{
    NewStore store;
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    QVERIFY(store.addSubIndex(0, 0x2000, 1, Sub()));
    Sub read = sampleSub();
    QVERIFY(store.getSubIndex(0, 0x2000, 1, read));
    QCOMPARE(read, Sub());
    QCOMPARE(Snapshot(store)->count(QStringLiteral("SubObjects0")), 1);
}

void TestStoreObjects::addSubIndicesWritesEveryRow()
{
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    QList<ObjectDataBase::SubEntry> entries;
    for (int i = 0; i < 600; ++i)
        entries.append({.line = quint8(i % 2),
                        .index = quint16(0x2000 + i / 256),
                        .subindex = quint8(i),
                        .data = sampleSub(QStringLiteral("sub %1").arg(i))});
    entries[7].data.metadata.insert(QStringLiteral("unit"), QStringLiteral("V"));
    QVERIFY(store.addSubIndices(entries));
    for (const ObjectDataBase::SubEntry &entry : std::as_const(entries)) {
        Sub read;
        QVERIFY(store.getSubIndex(entry.line, entry.index, entry.subindex, read));
        QCOMPARE(read, entry.data);
    }
    QVERIFY(store.addSubIndices({}));
}

void TestStoreObjects::addSubIndicesGoesOnAfterAFailingRow()
{
    NewStore store;
    const ObjectDataBase::SubEntry good{.line = 0, .index = 0x2000, .subindex = 1, .data = sampleSub()};
    ObjectDataBase::SubEntry noSuchLine = good;
    noSuchLine.line = 17;
    ObjectDataBase::SubEntry last = good;
    last.subindex = 2;
    store.addSubIndices({good, noSuchLine, last});
    QCOMPARE(store.getSubIndexList(0, 0x2000), QList<quint8>({1, 2}));
    // No transaction is left open behind it.
    QVERIFY(store.executeSql(QStringLiteral("VACUUM")));
}

void TestStoreObjects::linesAreApart()
{
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    QVERIFY(store.addIndex(1, 0x2000, sampleIndex()));
    QVERIFY(store.addSubIndex(1, 0x2000, 1, sampleSub()));
    QVERIFY(!store.indexExists(0, 0x2000));
    QVERIFY(!store.subIndexExists(0, 0x2000, 1));
    QVERIFY(store.subIndexExists(1, 0x2000, 1));
}

QTEST_GUILESS_MAIN(TestStoreObjects)
#include "tst_storeobjects.moc"
