#include "StoreTest.h"

using namespace StoreTest;

/** Parameter groups and their signals. */
class TestStoreJ1939 : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void aGroupIsKnownByNumberAndDirection();
    void addPgnUpdatesTheSameGroup();
    void listsAreAscendingAndDirection0MeansBoth_data();
    void listsAreAscendingAndDirection0MeansBoth();
    void removePgnTakesTheSignalsOfItsDirectionAlone();
    void setMappingCountChangesTheCountAlone();
    void signalsStandInTheOrderOfTheirPositions_data();
    void signalsStandInTheOrderOfTheirPositions();
    void aSignalIsKnownByGroupNumberAndDirection();
    void removeSpnRemovesOneSignal();
    void singleColumnReadsGiveTheColumn();
    void copyPgnsTakesTheRangeOfOneDirection();
    void copyPgnsReplacesTheGroupWithItsSignals();
    void linesAreApart();
};

using Pgn = ObjectDataBase::PGN;
using Spn = ObjectDataBase::SPN;

void TestStoreJ1939::aGroupIsKnownByNumberAndDirection()
{
    NewStore store;
    QVERIFY(store.addPGN(0, 61444, samplePgn(85, QStringLiteral("sent"))));
    QVERIFY(store.addPGN(0, 61444, samplePgn(119, QStringLiteral("received"))));
    Pgn pgn;
    QVERIFY(store.getPGN(0, 61444, 85, pgn));
    QCOMPARE(pgn, samplePgn(85, QStringLiteral("sent")));
    QVERIFY(store.getPGN(0, 61444, 119, pgn));
    QCOMPARE(pgn, samplePgn(119, QStringLiteral("received")));
    QVERIFY(!store.getPGN(0, 61443, 85, pgn));
    QCOMPARE(store.getPGNName(0, 61444, 119), QStringLiteral("received"));
    QCOMPARE(store.getPGNName(0, 61443, 119), QString());
}

void TestStoreJ1939::addPgnUpdatesTheSameGroup()
{
    NewStore store;
    QVERIFY(store.addPGN(0, 61444, samplePgn(85)));
    Pgn changed = samplePgn(85, QStringLiteral("changed"));
    changed.issafe = true;
    changed.FD_DataID = 77;
    changed.priority = 7;
    QVERIFY(store.addPGN(0, 61444, changed));
    Pgn pgn;
    QVERIFY(store.getPGN(0, 61444, 85, pgn));
    QCOMPARE(pgn, changed);
    QCOMPARE(Snapshot(store)->count(QStringLiteral("PGNs0")), 1);
}

void TestStoreJ1939::listsAreAscendingAndDirection0MeansBoth_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<bool>("withoutSafe");
    QTest::addColumn<QList<quint32>>("expected");
    QTest::newRow("transmit") << 85 << false << QList<quint32>{5, 61444, 131071};
    QTest::newRow("receive") << 119 << false << QList<quint32>{6, 61444};
    QTest::newRow("both") << 0 << false << QList<quint32>{5, 6, 61444, 61444, 131071};
    QTest::newRow("transmit, safe ones left out") << 85 << true << QList<quint32>{61444, 131071};
    QTest::newRow("both, safe ones left out") << 0 << true << QList<quint32>{6, 61444, 61444, 131071};
}

void TestStoreJ1939::listsAreAscendingAndDirection0MeansBoth()
{
    QFETCH(int, direction);
    QFETCH(bool, withoutSafe);
    NewStore store;
    Pgn safe = samplePgn(85);
    safe.issafe = true;
    QVERIFY(store.addPGN(0, 131071, samplePgn(85)));
    QVERIFY(store.addPGN(0, 61444, samplePgn(119)));
    QVERIFY(store.addPGN(0, 61444, samplePgn(85)));
    QVERIFY(store.addPGN(0, 6, samplePgn(119)));
    QVERIFY(store.addPGN(0, 5, safe));
    // Groups of files that are older than the column have no value there.
    QVERIFY(store.executeSql(QStringLiteral("update PGNs0 set issafe = NULL where number = 6")));
    QTEST(store.getPGNList(0, quint8(direction), withoutSafe), "expected");
}

void TestStoreJ1939::removePgnTakesTheSignalsOfItsDirectionAlone()
{
    NewStore store;
    for (const quint8 direction : {85, 119}) {
        for (const quint32 number : {61443, 61444}) {
            QVERIFY(store.addPGN(0, number, samplePgn(direction)));
            QVERIFY(store.addSPN(0, number, direction, 190, sampleSpn(0)));
            QVERIFY(store.addSPN(0, number, direction, 191, sampleSpn(1)));
        }
    }
    QVERIFY(store.removePGN(0, 61444, 85));
    const Snapshot file(store);
    QCOMPARE(file->count(QStringLiteral("SPNs0 where pgnnumber = 61444 and direction = 85")), 0);
    QCOMPARE(file->count(QStringLiteral("SPNs0 where pgnnumber = 61444 and direction = 119")), 2);
    QCOMPARE(file->count(QStringLiteral("SPNs0 where pgnnumber = 61443")), 4);
    QCOMPARE(file->count(QStringLiteral("PGNs0")), 3);
}

void TestStoreJ1939::setMappingCountChangesTheCountAlone()
{
    NewStore store;
    QVERIFY(store.addPGN(0, 61444, samplePgn(85)));
    QVERIFY(store.addPGN(0, 61444, samplePgn(119)));
    QVERIFY(store.setPGNMappingCount(0, 61444, 85, 8));
    QCOMPARE(store.getPGNMappingCount(0, 61444, 85), 8);
    QCOMPARE(store.getPGNMappingCount(0, 61444, 119), 0);
    Pgn expected = samplePgn(85);
    expected.mappingcount = 8;
    Pgn pgn;
    QVERIFY(store.getPGN(0, 61444, 85, pgn));
    QCOMPARE(pgn, expected);
}

void TestStoreJ1939::signalsStandInTheOrderOfTheirPositions_data()
{
    QTest::addColumn<bool>("cached");
    QTest::newRow("from the table") << false;
    QTest::newRow("from the cache") << true;
}

void TestStoreJ1939::signalsStandInTheOrderOfTheirPositions()
{
    QFETCH(bool, cached);
    NewStore store;
    QVERIFY(store.addPGN(0, 61444, samplePgn(85)));
    QVERIFY(store.addSPN(0, 61444, 85, 100, sampleSpn(30)));
    QVERIFY(store.addSPN(0, 61444, 85, 200, sampleSpn(10)));
    QVERIFY(store.addSPN(0, 61444, 85, 300, sampleSpn(20)));
    QVERIFY(store.addSPN(0, 61444, 119, 400, sampleSpn(0)));
    if (cached)
        store.cacheAllSpns(0);
    QCOMPARE(store.getSPNList(0, 61444, 85), QList<quint32>({200, 300, 100}));
    QCOMPARE(store.getSPNList(0, 61444, 119), QList<quint32>{400});
    QCOMPARE(store.getSPNList(0, 61443, 85), QList<quint32>{});
}

void TestStoreJ1939::aSignalIsKnownByGroupNumberAndDirection()
{
    NewStore store;
    const Spn first = sampleSpn(0, QStringLiteral("sent"));
    const Spn second = sampleSpn(1, QStringLiteral("received"));
    QVERIFY(store.addSPN(0, 61444, 85, 190, first));
    QVERIFY(store.addSPN(0, 61444, 119, 190, second));
    QVERIFY(store.addSPN(0, 61444, 85, 190, first)); // again: an update
    QCOMPARE(Snapshot(store)->count(QStringLiteral("SPNs0")), 2);
    for (const bool cached : {false, true}) {
        if (cached)
            store.cacheAllSpns(0);
        Spn spn;
        QVERIFY(store.getSPN(0, 61444, 85, 190, spn));
        QCOMPARE(spn, first);
        QVERIFY(store.getSPN(0, 61444, 119, 190, spn));
        QCOMPARE(spn, second);
        QVERIFY(!store.getSPN(0, 61443, 119, 190, spn));
        QVERIFY(!store.getSPN(0, 61444, 119, 191, spn));
    }
}

void TestStoreJ1939::removeSpnRemovesOneSignal()
{
    NewStore store;
    for (const quint8 direction : {85, 119}) {
        QVERIFY(store.addSPN(0, 61444, direction, 190, sampleSpn(0)));
        QVERIFY(store.addSPN(0, 61444, direction, 191, sampleSpn(1)));
    }
    QVERIFY(store.removeSPN(0, 61444, 85, 190));
    QCOMPARE(store.getSPNList(0, 61444, 85), QList<quint32>{191});
    QCOMPARE(store.getSPNList(0, 61444, 119), QList<quint32>({190, 191}));
}

void TestStoreJ1939::singleColumnReadsGiveTheColumn()
{
    NewStore store;
    QVERIFY(store.addSPN(0, 61444, 85, 190, sampleSpn(0)));
    for (const bool cached : {false, true}) {
        if (cached)
            store.cacheAllSpns(0);
        QCOMPARE(store.getSPNName(0, 61444, 85, 190), QStringLiteral("Engine speed"));
        QCOMPARE(store.getSPNDatatype(0, 61444, 85, 190), 6);
        QCOMPARE(store.getSPNName(0, 61444, 85, 191), QString());
    }
}

void TestStoreJ1939::copyPgnsTakesTheRangeOfOneDirection()
{
    NewStore source;
    NewStore target;
    QVERIFY(target.addNode(2, {}));
    target.addString(QStringLiteral("so that pool ids differ"));
    for (const quint32 number : {9, 10, 20, 21}) {
        for (const quint8 direction : {85, 119}) {
            QVERIFY(source.addPGN(0, number, samplePgn(direction)));
            QVERIFY(source.addSPN(0, number, direction, 190, sampleSpn(3)));
        }
    }
    QVERIFY(target.copyPGNs(source, 0, 2, 10, 20, 119));
    QCOMPARE(target.getPGNList(2, 0), QList<quint32>({10, 20}));
    QCOMPARE(target.getPGNList(2, 119), QList<quint32>({10, 20}));
    Pgn pgn;
    QVERIFY(target.getPGN(2, 10, 119, pgn));
    QCOMPARE(pgn, samplePgn(119));
    Spn spn;
    QVERIFY(target.getSPN(2, 20, 119, 190, spn));
    QCOMPARE(spn, sampleSpn(3));
    QCOMPARE(Snapshot(target)->count(QStringLiteral("SPNs2")), 2);
}

void TestStoreJ1939::copyPgnsReplacesTheGroupWithItsSignals()
{
    NewStore source;
    NewStore target;
    QVERIFY(source.addPGN(0, 10, samplePgn(85, QStringLiteral("new"))));
    QVERIFY(source.addSPN(0, 10, 85, 1, sampleSpn(0)));
    QVERIFY(target.addPGN(0, 10, samplePgn(85, QStringLiteral("old"))));
    QVERIFY(target.addSPN(0, 10, 85, 2, sampleSpn(0)));
    QVERIFY(target.copyPGNs(source, 0, 0, 0, 0x1FFFF, 85));
    QCOMPARE(target.getPGNName(0, 10, 85), QStringLiteral("new"));
    QCOMPARE(target.getSPNList(0, 10, 85), QList<quint32>{1});
}

void TestStoreJ1939::linesAreApart()
{
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    QVERIFY(store.addPGN(1, 10, samplePgn(85)));
    QVERIFY(store.addSPN(1, 10, 85, 1, sampleSpn(0)));
    QCOMPARE(store.getPGNList(0, 0), QList<quint32>{});
    QCOMPARE(store.getSPNList(0, 10, 85), QList<quint32>{});
    QCOMPARE(store.getPGNList(1, 0), QList<quint32>{10});
}

QTEST_GUILESS_MAIN(TestStoreJ1939)
#include "tst_storej1939.moc"
