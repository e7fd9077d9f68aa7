#include "app/PageSet.h"
#include "app/ProjectLines.h"
#include "app/TestProject.h"

#include <QTest>

using namespace Qt::StringLiterals;

/** Lines of a project as the user adds, duplicates and removes them. */
class TestProjectLines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void theLowestFreeNumberIsTaken();
    void thirtyTwoLinesAreTheMost();
    void reservedLinesDoNotCount();
    void anAddedCANopenLineGetsTheObjectsOfLineZero();
    void anAddedCANopenLineGetsTheBasicObjectsOfTheReference();
    void anAddedLineWithoutCANopenGetsNoObjects();
    void aDuplicateHoldsWhatTheLastLineHolds();
    void aRemovedLineLeavesTheFirstOneToShow();
    void theOnlyLineStays();
    void pagesFollowTheTypeOfTheLine_data();
    void pagesFollowTheTypeOfTheLine();

private:
    static bool addObject(ObjectDataBase &store, quint8 line, quint16 index, const QString &name);

    std::unique_ptr<ObjectDataBase> m_store;
    std::unique_ptr<ObjectDataBase> m_reference;
};

void TestProjectLines::init()
{
    QCoreApplication::setApplicationName(u"CANopen NodeSmith"_s);
    m_store = std::make_unique<ObjectDataBase>();
    QVERIFY(TestProject::fill(*m_store, {0}, u"1"_s));
    m_reference = std::make_unique<ObjectDataBase>();
    QVERIFY(TestProject::fill(*m_reference, {0, ObjectDataBase::ReferenceLine}, u"1"_s));
}

bool TestProjectLines::addObject(ObjectDataBase &store, quint8 line, quint16 index, const QString &name)
{
    ObjectDataBase::INDEX_DATA_T object;
    object.name = name;
    ObjectDataBase::SUBINDEX_DATA_T sub;
    sub.name = name;
    return store.addIndex(line, index, object) && store.addSubIndex(line, index, 0, sub);
}

void TestProjectLines::theLowestFreeNumberIsTaken()
{
    ProjectLines lines(*m_store);
    QCOMPARE(lines.add(LineType::J1939, nullptr), std::optional<quint8>(1));
    QCOMPARE(lines.add(LineType::RawCan, nullptr), std::optional<quint8>(2));
    QVERIFY(lines.remove(1));
    QCOMPARE(lines.nextNumber(), std::optional<quint8>(1));
    QCOMPARE(lines.type(2), LineType::RawCan);
}

void TestProjectLines::thirtyTwoLinesAreTheMost()
{
    ProjectLines lines(*m_store);
    for (int number = 1; number < ObjectDataBase::MaximumLines; ++number)
        QVERIFY(lines.add(LineType::RawCan, nullptr));
    QVERIFY(lines.isFull());
    QVERIFY(!lines.add(LineType::RawCan, nullptr));
    QVERIFY(!lines.duplicateLast());
    QCOMPARE(lines.numbers().size(), 32);
}

void TestProjectLines::reservedLinesDoNotCount()
{
    QVERIFY(m_store->addNode(ObjectDataBase::ClipboardLine, ObjectDataBase::NODE_DATA_T()));
    QVERIFY(m_store->addNode(ObjectDataBase::ReferenceLine, ObjectDataBase::NODE_DATA_T()));
    ProjectLines lines(*m_store);
    QCOMPARE(lines.numbers(), QList<quint8>{0});
    for (int number = 1; number < ObjectDataBase::MaximumLines; ++number)
        QVERIFY(lines.add(LineType::RawCan, nullptr));
    QCOMPARE(lines.numbers().size(), 32);
}

void TestProjectLines::anAddedCANopenLineGetsTheObjectsOfLineZero()
{
    for (const quint16 index : {0x1000, 0x1001, 0x1018, 0x2000, 0x2001, 0x6000})
        QVERIFY(addObject(*m_store, 0, index, u"line 0"_s));
    for (const quint16 index : {0x1000, 0x1017})
        QVERIFY(addObject(*m_reference, ObjectDataBase::ReferenceLine, index, u"reference"_s));
    ProjectLines lines(*m_store);
    QCOMPARE(lines.add(LineType::CANopen, m_reference.get()), std::optional<quint8>(1));
    QCOMPARE(m_store->getIndexList(1), QList<quint16>({0x1000, 0x1001, 0x1018, 0x2000}));
    QCOMPARE(m_store->getIndexName(1, 0x1000), u"reference"_s); // the device type is the line's own
    QCOMPARE(m_store->getIndexName(1, 0x1018), u"line 0"_s);
    QCOMPARE(m_store->getSubIndexName(1, 0x1018, 0), u"line 0"_s);
}

void TestProjectLines::anAddedCANopenLineGetsTheBasicObjectsOfTheReference()
{
    for (const quint16 index : {0x1000, 0x1001, 0x1005, 0x1017, 0x1018, 0x1200})
        QVERIFY(addObject(*m_reference, ObjectDataBase::ReferenceLine, index, u"reference"_s));
    ProjectLines lines(*m_store);
    QCOMPARE(lines.add(LineType::CANopenAndJ1939, m_reference.get()), std::optional<quint8>(1));
    QCOMPARE(m_store->getIndexList(1), QList<quint16>({0x1000, 0x1001, 0x1017, 0x1018, 0x1200}));
    QCOMPARE(m_store->getGeneralSetting(u"line1type"_s), u"5"_s);
}

void TestProjectLines::anAddedLineWithoutCANopenGetsNoObjects()
{
    QVERIFY(addObject(*m_store, 0, 0x1001, u"line 0"_s));
    QVERIFY(addObject(*m_reference, ObjectDataBase::ReferenceLine, 0x1000, u"reference"_s));
    ProjectLines lines(*m_store);
    QCOMPARE(lines.add(LineType::J1939AndRawCan, m_reference.get()), std::optional<quint8>(1));
    QVERIFY(m_store->getIndexList(1).isEmpty());
}

void TestProjectLines::aDuplicateHoldsWhatTheLastLineHolds()
{
    ProjectLines lines(*m_store);
    QCOMPARE(lines.add(LineType::CANopenAndRawCan, nullptr), std::optional<quint8>(1));
    for (const quint16 index : {0x0020, 0x1000, 0xFFFF})
        QVERIFY(addObject(*m_store, 1, index, u"line 1"_s));
    QVERIFY(m_store->addPGN(1, 0xFEF1, TestProject::pgn(u"speed"_s, ObjectDataBase::Receive)));
    ObjectDataBase::CANID message;
    message.name = u"extended"_s;
    message.direction = ObjectDataBase::Transmit;
    QVERIFY(m_store->addCANID(1, 0x9FFFFFFF, message));
    QCOMPARE(lines.duplicateLast(), std::optional<quint8>(2));
    QCOMPARE(lines.type(2), LineType::CANopenAndRawCan);
    QCOMPARE(m_store->getIndexList(2), QList<quint16>({0x1000, 0xFFFF}));
    QCOMPARE(m_store->getPGNName(2, 0xFEF1, ObjectDataBase::Receive), u"speed"_s);
    QCOMPARE(m_store->getCANIDName(2, 0x9FFFFFFF, ObjectDataBase::Transmit), u"extended"_s);
}

void TestProjectLines::aRemovedLineLeavesTheFirstOneToShow()
{
    ProjectLines lines(*m_store);
    QVERIFY(lines.add(LineType::J1939, nullptr));
    QVERIFY(lines.add(LineType::RawCan, nullptr));
    QCOMPARE(lines.remove(0), std::optional<quint8>(1));
    QCOMPARE(lines.numbers(), QList<quint8>({1, 2}));
    QCOMPARE(lines.remove(2), std::optional<quint8>(1));
    QVERIFY(!lines.remove(7));
}

void TestProjectLines::theOnlyLineStays()
{
    QVERIFY(!ProjectLines(*m_store).remove(0));
    QVERIFY(m_store->nodeExists(0));
}

void TestProjectLines::pagesFollowTheTypeOfTheLine_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("canopen");
    QTest::addColumn<bool>("j1939");
    QTest::addColumn<bool>("rawCan");
    QTest::newRow("1") << 1 << true << false << false;
    QTest::newRow("2") << 2 << false << true << false;
    QTest::newRow("4") << 4 << false << false << true;
    QTest::newRow("5") << 5 << true << true << false;
    QTest::newRow("6") << 6 << true << false << true;
    QTest::newRow("7") << 7 << false << true << true;
}

void TestProjectLines::pagesFollowTheTypeOfTheLine()
{
    QFETCH(const int, type);
    QFETCH(const bool, canopen);
    QFETCH(const bool, j1939);
    QFETCH(const bool, rawCan);
    QCOMPARE(isPageEnabled(PageKind::CANopen, LineType(type)), canopen);
    QCOMPARE(isPageEnabled(PageKind::J1939, LineType(type)), j1939);
    QCOMPARE(isPageEnabled(PageKind::RawCan, LineType(type)), rawCan);
    QVERIFY(isPageEnabled(PageKind::Always, LineType(type)));
}

QTEST_GUILESS_MAIN(TestProjectLines)
#include "tst_projectlines.moc"
