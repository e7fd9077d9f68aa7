#include "StoreTest.h"

using namespace StoreTest;

/** Raw CAN messages and their data elements. */
class TestStoreRawCan : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void aMessageIsKnownByIdentifierAndDirection();
    void addCanIdUpdatesTheSameMessage();
    void listsAreAscendingAndDirection0MeansBoth_data();
    void listsAreAscendingAndDirection0MeansBoth();
    void removeCanIdTakesTheElementsOfItsDirectionAlone();
    void elementsStandInTheOrderOfTheirNumbers();
    void anElementIsKnownByMessageNumberAndDirection();
    void removeDataElementRemovesOneElement();
    void copyCanIdsTakesTheRangeOfOneDirection();
    void copyCanIdsReplacesTheMessageWithItsElements();
    void extendedIdentifiersAreKept();
};

using CanId = ObjectDataBase::CANID;
using Element = ObjectDataBase::DataElement;

void TestStoreRawCan::aMessageIsKnownByIdentifierAndDirection()
{
    NewStore store;
    QVERIFY(store.addCANID(0, 0x123, sampleCanId(85, QStringLiteral("sent"))));
    QVERIFY(store.addCANID(0, 0x123, sampleCanId(119, QStringLiteral("received"))));
    CanId canid;
    QVERIFY(store.getCANID(0, 0x123, 85, canid));
    QCOMPARE(canid, sampleCanId(85, QStringLiteral("sent")));
    QVERIFY(store.getCANID(0, 0x123, 119, canid));
    QCOMPARE(canid, sampleCanId(119, QStringLiteral("received")));
    QVERIFY(!store.getCANID(0, 0x124, 85, canid));
    QCOMPARE(store.getCANIDName(0, 0x123, 85), QStringLiteral("sent"));
    QCOMPARE(store.getCANIDName(0, 0x124, 85), QString());
}

void TestStoreRawCan::addCanIdUpdatesTheSameMessage()
{
    NewStore store;
    QVERIFY(store.addCANID(0, 0x123, sampleCanId(85)));
    CanId changed = sampleCanId(85, QStringLiteral("changed"));
    changed.mappingcount = 3;
    QVERIFY(store.addCANID(0, 0x123, changed));
    CanId canid;
    QVERIFY(store.getCANID(0, 0x123, 85, canid));
    QCOMPARE(canid, changed);
    QCOMPARE(Snapshot(store)->count(QStringLiteral("CANIDs0")), 1);
}

void TestStoreRawCan::listsAreAscendingAndDirection0MeansBoth_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<QList<quint32>>("expected");
    QTest::newRow("transmit") << 85 << QList<quint32>{0x10, 0x7FF};
    QTest::newRow("receive") << 119 << QList<quint32>{0x10, 0x20};
    QTest::newRow("both") << 0 << QList<quint32>{0x10, 0x10, 0x20, 0x7FF};
}

void TestStoreRawCan::listsAreAscendingAndDirection0MeansBoth()
{
    QFETCH(int, direction);
    NewStore store;
    QVERIFY(store.addCANID(0, 0x7FF, sampleCanId(85)));
    QVERIFY(store.addCANID(0, 0x20, sampleCanId(119)));
    QVERIFY(store.addCANID(0, 0x10, sampleCanId(119)));
    QVERIFY(store.addCANID(0, 0x10, sampleCanId(85)));
    QTEST(store.getCANIDList(0, quint8(direction)), "expected");
}

void TestStoreRawCan::removeCanIdTakesTheElementsOfItsDirectionAlone()
{
    NewStore store;
    for (const quint8 direction : {85, 119}) {
        for (const quint32 id : {0x100, 0x101}) {
            QVERIFY(store.addCANID(0, id, sampleCanId(direction)));
            QVERIFY(store.addDataElement(0, id, direction, 0, sampleElement(0)));
            QVERIFY(store.addDataElement(0, id, direction, 1, sampleElement(8)));
        }
    }
    QVERIFY(store.removeCANID(0, 0x100, 85));
    const Snapshot file(store);
    QCOMPARE(file->count(QStringLiteral("DataElements0 where canid = 256 and direction = 85")), 0);
    QCOMPARE(file->count(QStringLiteral("DataElements0 where canid = 256 and direction = 119")), 2);
    QCOMPARE(file->count(QStringLiteral("DataElements0 where canid = 257")), 4);
    QCOMPARE(file->count(QStringLiteral("CANIDs0")), 3);
}

void TestStoreRawCan::elementsStandInTheOrderOfTheirNumbers()
{
    NewStore store;
    QVERIFY(store.addDataElement(0, 0x100, 85, 7, sampleElement(0)));
    QVERIFY(store.addDataElement(0, 0x100, 85, 0, sampleElement(16)));
    QVERIFY(store.addDataElement(0, 0x100, 85, 3, sampleElement(8)));
    QVERIFY(store.addDataElement(0, 0x100, 119, 9, sampleElement(8)));
    QCOMPARE(store.getDataElementList(0, 0x100, 85), QList<quint32>({0, 3, 7}));
    QCOMPARE(store.getDataElementList(0, 0x100, 119), QList<quint32>{9});
    QCOMPARE(store.getDataElementList(0, 0x101, 85), QList<quint32>{});
}

void TestStoreRawCan::anElementIsKnownByMessageNumberAndDirection()
{
    NewStore store;
    const Element first = sampleElement(0, QStringLiteral("sent"));
    const Element second = sampleElement(8, QStringLiteral("received"));
    QVERIFY(store.addDataElement(0, 0x100, 85, 1, second));
    QVERIFY(store.addDataElement(0, 0x100, 119, 1, second));
    QVERIFY(store.addDataElement(0, 0x100, 85, 1, first)); // again: an update
    QCOMPARE(Snapshot(store)->count(QStringLiteral("DataElements0")), 2);
    Element element;
    QVERIFY(store.getDataElement(0, 0x100, 85, 1, element));
    QCOMPARE(element, first);
    QVERIFY(store.getDataElement(0, 0x100, 119, 1, element));
    QCOMPARE(element, second);
    QVERIFY(!store.getDataElement(0, 0x100, 119, 2, element));
    QCOMPARE(store.getDataElementName(0, 0x100, 85, 1), QStringLiteral("sent"));
    QCOMPARE(store.getDataElementName(0, 0x100, 85, 2), QString());
}

void TestStoreRawCan::removeDataElementRemovesOneElement()
{
    NewStore store;
    for (const quint8 direction : {85, 119}) {
        QVERIFY(store.addDataElement(0, 0x100, direction, 0, sampleElement(0)));
        QVERIFY(store.addDataElement(0, 0x100, direction, 1, sampleElement(8)));
    }
    QVERIFY(store.removeDataElement(0, 0x100, 85, 0));
    QCOMPARE(store.getDataElementList(0, 0x100, 85), QList<quint32>{1});
    QCOMPARE(store.getDataElementList(0, 0x100, 119), QList<quint32>({0, 1}));
}

void TestStoreRawCan::copyCanIdsTakesTheRangeOfOneDirection()
{
    NewStore source;
    NewStore target;
    QVERIFY(target.addNode(2, {}));
    target.addString(QStringLiteral("so that pool ids differ"));
    for (const quint32 id : {9, 10, 20, 21}) {
        for (const quint8 direction : {85, 119}) {
            QVERIFY(source.addCANID(0, id, sampleCanId(direction)));
            QVERIFY(source.addDataElement(0, id, direction, 4, sampleElement(3)));
        }
    }
    QVERIFY(target.copyCANIDs(source, 0, 2, 10, 20, 85));
    QCOMPARE(target.getCANIDList(2, 0), QList<quint32>({10, 20}));
    CanId canid;
    QVERIFY(target.getCANID(2, 10, 85, canid));
    QCOMPARE(canid, sampleCanId(85));
    Element element;
    QVERIFY(target.getDataElement(2, 20, 85, 4, element));
    QCOMPARE(element, sampleElement(3));
    QCOMPARE(Snapshot(target)->count(QStringLiteral("DataElements2")), 2);
}

void TestStoreRawCan::copyCanIdsReplacesTheMessageWithItsElements()
{
    NewStore source;
    NewStore target;
    QVERIFY(source.addCANID(0, 10, sampleCanId(85, QStringLiteral("new"))));
    QVERIFY(source.addDataElement(0, 10, 85, 1, sampleElement(0)));
    QVERIFY(target.addCANID(0, 10, sampleCanId(85, QStringLiteral("old"))));
    QVERIFY(target.addDataElement(0, 10, 85, 2, sampleElement(0)));
    QVERIFY(target.copyCANIDs(source, 0, 0, 0, 0xFFFFFFFF, 85));
    QCOMPARE(target.getCANIDName(0, 10, 85), QStringLiteral("new"));
    QCOMPARE(target.getDataElementList(0, 10, 85), QList<quint32>{1});
}

void TestStoreRawCan::extendedIdentifiersAreKept()
{
    NewStore store;
    for (const quint32 id : {0x7FFu, 0x800u, 0x1FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
        QVERIFY(store.addCANID(0, id, sampleCanId(85)));
        QVERIFY(store.addDataElement(0, id, 85, 0xFFFFFFFFu, sampleElement(1)));
        CanId canid;
        QVERIFY(store.getCANID(0, id, 85, canid));
        QCOMPARE(store.getDataElementList(0, id, 85), QList<quint32>{0xFFFFFFFFu});
    }
    QCOMPARE(store.getCANIDList(0, 85), QList<quint32>({0x7FF, 0x800, 0x1FFFFFFF, 0x80000000, 0xFFFFFFFF}));
}

QTEST_GUILESS_MAIN(TestStoreRawCan)
#include "tst_storerawcan.moc"
