#include "tools/DiffTest.h"
#include "tools/ProjectDiff.h"

#include <QElapsedTimer>
#include <QSignalBlocker>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace DiffTest;
using ProjectDiff::Item;
using ProjectDiff::LineDifferences;
using ProjectDiff::State;

namespace {

constexpr quint8 transmit = ObjectDataBase::Transmit;
constexpr quint8 receive = ObjectDataBase::Receive;

Item item(quint32 number, const QString &name, State state, const QList<Item> &children = {},
          quint8 direction = 0)
{
    return {.number = number, .direction = direction, .name = name, .state = state, .children = children};
}

LineDifferences compare(ObjectDataBase &current, ObjectDataBase &other, quint8 line = 0)
{
    return ProjectDiff::compareLine(current, other, line, {});
}

} // namespace

class TestProjectDiff : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void twoIdenticalProjectsDoNotDiffer();
    void objectsOnOneSideStandThereWithAllSubIndices();
    void anObjectWithADifferentFieldDiffersItself();
    void anObjectWithADifferentSubIndexIsEqualItself();
    void subIndicesOfOneSideStandBelowTheirObject();
    void objectsStandInAscendingOrder();
    void dataTypeObjectsAreNotCompared();
    void theNameIsThatOfTheCurrentProject();
    void aFieldThatDoesNotCountMakesNoDifference();
    void pgnsOfBothDirectionsAreCompared();
    void signalsInAnotherOrderAreFoundAgain();
    void canIdsAreComparedWithTheirElements();
    void aLineThatOneSideLacksStandsOnTheOtherSide();
    void linesOfBothProjectsCountButReservedOnesDoNot();
    void generalSettingsOfTheCurrentProjectAreCompared();
    void j1939SettingsAreCompared();
    void everyListedItemCounts();
    void afterAnApplyOnlyManagedObjectsAreCompared_data();
    void afterAnApplyOnlyManagedObjectsAreCompared();
    void neitherProjectIsWritten();
    void noReadCacheIsLeftBehind();
    void theWorkGrowsWithTheNumberOfObjects();
};

void TestProjectDiff::twoIdenticalProjectsDoNotDiffer()
{
    const auto current = makeStore();
    const auto other = makeStore();
    for (const auto &store : {current, other}) {
        QVERIFY(addObject(*store, 0x2000, u"Object"_s, 3));
        QVERIFY(addPgn(*store, 0xfeca, transmit, u"DM1"_s, {190, 91}));
        QVERIFY(addCanId(*store, 0x123, receive, u"Message"_s, {1, 2}));
        QVERIFY(store->setGeneralSetting(u"co_node_id"_s, u"3"_s));
        QVERIFY(store->setJ1939Setting(u"j1939_name"_s, u"7"_s));
    }
    QCOMPARE(compare(*current, *other), LineDifferences());
    QCOMPARE(ProjectDiff::compareGeneralSettings(*current, *other), QList<ProjectDiff::Setting>());
    QCOMPARE(ProjectDiff::compareJ1939Settings(*current, *other), QList<ProjectDiff::Setting>());
}

void TestProjectDiff::objectsOnOneSideStandThereWithAllSubIndices()
{
    const auto current = makeStore();
    const auto other = makeStore();
    QVERIFY(addObject(*current, 0x2000, u"Mine"_s, 2));
    QVERIFY(addObject(*other, 0x2001, u"Yours"_s, 1));
    const LineDifferences differences = compare(*current, *other);
    QCOMPARE(
        differences.objects,
        QList<Item>({item(0x2000, u"Mine"_s, State::OnlyCurrent,
                          {item(0, u"Sub 0"_s, State::OnlyCurrent), item(1, u"Sub 1"_s, State::OnlyCurrent)}),
                     item(0x2001, u"Yours"_s, State::OnlyOther, {item(0, u"Sub 0"_s, State::OnlyOther)})}));
}

void TestProjectDiff::anObjectWithADifferentFieldDiffersItself()
{
    const auto current = makeStore();
    const auto other = makeStore();
    QVERIFY(addObject(*current, 0x2000, u"Object"_s));
    QVERIFY(addObject(*other, 0x2000, u"Renamed"_s));
    QCOMPARE(compare(*current, *other).objects, QList<Item>{item(0x2000, u"Object"_s, State::Different)});
}

void TestProjectDiff::anObjectWithADifferentSubIndexIsEqualItself()
{
    const auto current = makeStore();
    const auto other = makeStore();
    for (const auto &store : {current, other})
        QVERIFY(addObject(*store, 0x2000, u"Object"_s, 3));
    QVERIFY(setValue(*current, 0x2000, 1, u"5"_s));
    QCOMPARE(compare(*current, *other).objects,
             QList<Item>{item(0x2000, u"Object"_s, State::Equal, {item(1, u"Sub 1"_s, State::Different)})});
}

void TestProjectDiff::subIndicesOfOneSideStandBelowTheirObject()
{
    const auto current = makeStore();
    const auto other = makeStore();
    for (const auto &store : {current, other})
        QVERIFY(addObject(*store, 0x2000, u"Object"_s));
    QVERIFY(current->addSubIndex(0, 0x2000, 2, sub(u"Mine"_s)));
    QVERIFY(other->addSubIndex(0, 0x2000, 1, sub(u"Yours"_s)));
    QCOMPARE(
        compare(*current, *other).objects,
        QList<Item>{item(0x2000, u"Object"_s, State::Equal,
                         {item(1, u"Yours"_s, State::OnlyOther), item(2, u"Mine"_s, State::OnlyCurrent)})});
}

void TestProjectDiff::objectsStandInAscendingOrder()
{
    const auto current = makeStore();
    const auto other = makeStore();
    for (const quint16 index : {0x3000, 0x2000, 0x2500})
        QVERIFY(addObject(*current, index, u"Mine"_s));
    for (const quint16 index : {0x6000, 0x2600, 0x1800})
        QVERIFY(addObject(*other, index, u"Yours"_s));
    QList<quint32> indices;
    const QList<Item> objects = compare(*current, *other).objects;
    for (const Item &object : objects)
        indices.append(object.number);
    QCOMPARE(indices, QList<quint32>({0x1800, 0x2000, 0x2500, 0x2600, 0x3000, 0x6000}));
}

void TestProjectDiff::dataTypeObjectsAreNotCompared()
{
    const auto current = makeStore();
    const auto other = makeStore();
    QVERIFY(addObject(*current, 0x0FFF, u"Type"_s));
    QVERIFY(addObject(*other, 0x1000, u"Device type"_s));
    const QList<Item> objects = compare(*current, *other).objects;
    QCOMPARE(objects.size(), 1);
    QCOMPARE(objects.first().number, quint32(0x1000));
}

void TestProjectDiff::theNameIsThatOfTheCurrentProject()
{
    const auto current = makeStore();
    const auto other = makeStore();
    QVERIFY(addPgn(*current, 1, transmit, u"Mine"_s));
    QVERIFY(addPgn(*other, 1, transmit, u"Yours"_s));
    QVERIFY(addPgn(*other, 2, transmit, u"New"_s));
    QCOMPARE(compare(*current, *other).pgns,
             QList<Item>({item(1, u"Mine"_s, State::Different, {}, transmit),
                          item(2, u"New"_s, State::OnlyOther, {}, transmit)}));
}

void TestProjectDiff::aFieldThatDoesNotCountMakesNoDifference()
{
    const auto current = makeStore();
    const auto other = makeStore();
    for (const auto &store : {current, other})
        QVERIFY(addObject(*store, 0x2000, u"Object"_s, 2));
    QVERIFY(setValue(*current, 0x2000, 1, u"5"_s));
    ProjectDiff::Options options;
    const qsizetype field = DiffFields::titles(DiffLevel::SubIndex).indexOf("DefaultValue"_L1);
    options.selection.setCounting(DiffLevel::SubIndex, field, false);
    QCOMPARE(ProjectDiff::compareLine(*current, *other, 0, options), LineDifferences());
    options.selection.setCounting(DiffLevel::SubIndex, field, true);
    QCOMPARE(ProjectDiff::compareLine(*current, *other, 0, options).objects.size(), 1);
}

void TestProjectDiff::pgnsOfBothDirectionsAreCompared()
{
    const auto current = makeStore();
    const auto other = makeStore();
    QVERIFY(addPgn(*current, 0xfeca, receive, u"DM1"_s, {190}));
    QVERIFY(addPgn(*current, 0xfecb, transmit, u"DM2"_s));
    QVERIFY(addPgn(*other, 0xfeca, transmit, u"DM1"_s, {190}));
    QVERIFY(addPgn(*other, 0xfecb, transmit, u"DM2"_s, {91}));
    QCOMPARE(compare(*current, *other).pgns,
             QList<Item>({item(0xfeca, u"DM1"_s, State::OnlyOther,
                               {item(190, u"Signal 190"_s, State::OnlyOther, {}, transmit)}, transmit),
                          item(0xfecb, u"DM2"_s, State::Equal,
                               {item(91, u"Signal 91"_s, State::OnlyOther, {}, transmit)}, transmit),
                          item(0xfeca, u"DM1"_s, State::OnlyCurrent,
                               {item(190, u"Signal 190"_s, State::OnlyCurrent, {}, receive)}, receive)}));
}

void TestProjectDiff::signalsInAnotherOrderAreFoundAgain()
{
    const auto current = makeStore();
    const auto other = makeStore();
    QVERIFY(addPgn(*current, 1, transmit, u"Group"_s, {190, 91, 5}));
    QVERIFY(addPgn(*other, 1, transmit, u"Group"_s, {5, 190, 91}));
    QCOMPARE(compare(*current, *other), LineDifferences());
}

void TestProjectDiff::canIdsAreComparedWithTheirElements()
{
    const auto current = makeStore();
    const auto other = makeStore();
    for (const auto &store : {current, other})
        QVERIFY(addCanId(*store, 0x123, receive, u"Message"_s, {1, 2}));
    QVERIFY(addCanId(*current, 0x124, transmit, u"Mine"_s));
    ObjectDataBase::DataElement element;
    element.name = u"Renamed"_s;
    QVERIFY(current->addDataElement(0, 0x123, receive, 2, element));
    QCOMPARE(compare(*current, *other).canIds,
             QList<Item>({item(0x124, u"Mine"_s, State::OnlyCurrent, {}, transmit),
                          item(0x123, u"Message"_s, State::Equal,
                               {item(2, u"Renamed"_s, State::Different, {}, receive)}, receive)}));
}

void TestProjectDiff::aLineThatOneSideLacksStandsOnTheOtherSide()
{
    const auto current = makeStore({0, 3});
    const auto other = makeStore({0, 4});
    QVERIFY(addObject(*current, 0x2000, u"Mine"_s, 1, 3));
    QVERIFY(addObject(*other, 0x2000, u"Yours"_s, 1, 4));
    QCOMPARE(
        compare(*current, *other, 3).objects,
        QList<Item>{item(0x2000, u"Mine"_s, State::OnlyCurrent, {item(0, u"Sub 0"_s, State::OnlyCurrent)})});
    QCOMPARE(
        compare(*current, *other, 4).objects,
        QList<Item>{item(0x2000, u"Yours"_s, State::OnlyOther, {item(0, u"Sub 0"_s, State::OnlyOther)})});
    QCOMPARE(compare(*current, *other, 7), LineDifferences());
}

void TestProjectDiff::linesOfBothProjectsCountButReservedOnesDoNot()
{
    const auto current = makeStore({0, 3, ObjectDataBase::ClipboardLine});
    const auto other = makeStore({0, 1, ObjectDataBase::ReferenceLine});
    QCOMPARE(ProjectDiff::lines(*current, *other), QList<quint8>({0, 1, 3}));
}

void TestProjectDiff::generalSettingsOfTheCurrentProjectAreCompared()
{
    const auto current = makeStore();
    const auto other = makeStore();
    QVERIFY(current->setGeneralSetting(u"b_changed"_s, u"1"_s));
    QVERIFY(other->setGeneralSetting(u"b_changed"_s, u"2"_s));
    QVERIFY(current->setGeneralSetting(u"a_new"_s, u"x"_s));
    QVERIFY(current->setGeneralSetting(u"c_empty"_s, QString()));
    QVERIFY(other->setGeneralSetting(u"d_theirs"_s, u"y"_s));
    QCOMPARE(
        ProjectDiff::compareGeneralSettings(*current, *other),
        QList<ProjectDiff::Setting>({{u"a_new"_s, u"x"_s, QString()}, {u"b_changed"_s, u"1"_s, u"2"_s}}));
}

void TestProjectDiff::j1939SettingsAreCompared()
{
    const auto current = makeStore();
    const auto other = makeStore();
    QVERIFY(current->setJ1939Setting(u"address"_s, u"1"_s));
    QVERIFY(other->setJ1939Setting(u"address"_s, u"2"_s));
    QCOMPARE(ProjectDiff::compareJ1939Settings(*current, *other),
             QList<ProjectDiff::Setting>({{u"address"_s, u"1"_s, u"2"_s}}));
    QCOMPARE(ProjectDiff::compareGeneralSettings(*current, *other), QList<ProjectDiff::Setting>());
}

void TestProjectDiff::everyListedItemCounts()
{
    const auto current = makeStore();
    const auto other = makeStore();
    for (const auto &store : {current, other})
        QVERIFY(addObject(*store, 0x2000, u"Object"_s, 3));
    QVERIFY(setValue(*current, 0x2000, 1, u"5"_s));
    QCOMPARE(ProjectDiff::count(compare(*current, *other)), 2); // the sub-index and the object that holds it
    QVERIFY(addObject(*current, 0x2001, u"Mine"_s, 3));
    QCOMPARE(ProjectDiff::count(compare(*current, *other)), 6);
    QVERIFY(addPgn(*other, 1, transmit, u"Group"_s, {190}));
    QVERIFY(addCanId(*current, 1, transmit, u"Message"_s));
    QCOMPARE(ProjectDiff::count(compare(*current, *other)), 9);
}

void TestProjectDiff::afterAnApplyOnlyManagedObjectsAreCompared_data()
{
    QTest::addColumn<quint16>("index");
    QTest::addColumn<QString>("currentClass");
    QTest::addColumn<QString>("otherClass");
    QTest::addColumn<bool>("compared");
    const auto row = [](const char *name, quint16 index, const QString &current, const QString &other,
                        bool compared) { QTest::newRow(name) << index << current << other << compared; };
    row("communication", 0x1018, {}, {}, true);
    row("last before the manufacturer's", 0x1FFF, {}, {}, true);
    row("first of the manufacturer", 0x2000, u"ebc"_s, u"ebc"_s, false);
    row("last of the manufacturer", 0x5FFE, {}, {}, false);
    row("behind the manufacturer's", 0x5FFF, {}, {}, true);
    row("device profile", 0x6000, {}, {}, true);
    row("own PDO", 0x1400, {}, {}, false);
    row("last own mapping", 0x1BFF, {}, {}, false);
    row("behind the PDOs", 0x1C00, {}, {}, true);
    row("RPDO of the device", 0x1400, u"ebc,rpdo"_s, u"ebc,rpdo"_s, true);
    row("TPDO of the device", 0x1A00, u"tpdo"_s, u"tpdo"_s, true);
    row("PDO that becomes the device's", 0x1401, {}, u"rpdo"_s, true);
    row("PDO that was the device's", 0x1401, u"rpdo"_s, {}, true);
}

void TestProjectDiff::afterAnApplyOnlyManagedObjectsAreCompared()
{
    QFETCH(const quint16, index);
    QFETCH(const QString, currentClass);
    QFETCH(const QString, otherClass);
    QFETCH(const bool, compared);
    const auto current = makeStore();
    const auto other = makeStore();
    ObjectDataBase::INDEX_DATA_T object;
    object.name = u"before"_s;
    object.device_class = currentClass;
    QVERIFY(current->addIndex(0, index, object));
    object.name = u"after"_s;
    object.device_class = otherClass;
    QVERIFY(other->addIndex(0, index, object));
    const auto differences =
        ProjectDiff::compareLine(*current, *other, 0, {.selection = {}, .isAfterApply = true});
    QCOMPARE(differences.objects.size(), compared ? 1 : 0);
    QCOMPARE(compare(*current, *other).objects.size(), 1);
}

void TestProjectDiff::neitherProjectIsWritten()
{
    const auto current = makeStore();
    const auto other = makeStore({0, 1});
    QVERIFY(addObject(*current, 0x2000, u"Mine"_s));
    QVERIFY(addObject(*other, 0x2001, u"Yours"_s));
    const QString currentHash = current->contentHash();
    const QString otherHash = other->contentHash();
    const QSignalSpy currentTold(current.get(), &ObjectDataBase::updateNotify);
    const QSignalSpy otherTold(other.get(), &ObjectDataBase::updateNotify);
    for (const quint8 line : {0, 1})
        compare(*current, *other, line);
    ProjectDiff::compareGeneralSettings(*current, *other);
    QCOMPARE(current->contentHash(), currentHash);
    QCOMPARE(other->contentHash(), otherHash);
    QCOMPARE(currentTold.count(), 0);
    QCOMPARE(otherTold.count(), 0);
}

void TestProjectDiff::noReadCacheIsLeftBehind()
{
    const auto current = makeStore();
    const auto other = makeStore();
    QVERIFY(addObject(*current, 0x2000, u"Mine"_s));
    compare(*current, *other);
    QVERIFY(current->executeSql(u"update SubObjects0 set defaultvalue = '9'"_s));
    ObjectDataBase::SUBINDEX_DATA_T data;
    QVERIFY(current->getSubIndex(0, 0x2000, 0, data));
    QCOMPARE(data.defaultvalue, u"9"_s);
}

void TestProjectDiff::theWorkGrowsWithTheNumberOfObjects()
{
    const auto fill = [](ObjectDataBase &store, int count, const QString &value) {
        const QSignalBlocker quiet(store);
        QList<ObjectDataBase::SubEntry> entries;
        bool ok = true;
        ObjectDataBase::INDEX_DATA_T object;
        object.name = u"Object"_s;
        for (int number = 0; number < count; ++number) {
            const auto index = quint16(0x2000 + number);
            ok = ok && store.addIndex(0, index, object);
            for (const quint8 subindex : {0, 1})
                entries.append(
                    {.line = 0, .index = index, .subindex = subindex, .data = sub(u"Sub"_s, value)});
        }
        return ok && store.addSubIndices(entries);
    };
    const auto duration = [&](int count) {
        const auto current = makeStore();
        const auto other = makeStore();
        if (!fill(*current, count, u"1"_s) || !fill(*other, count, u"2"_s))
            return qint64(-1);
        qint64 best = std::numeric_limits<qint64>::max();
        for (int run = 0; run < 3; ++run) {
            QElapsedTimer timer;
            timer.start();
            if (compare(*current, *other).objects.size() != count)
                return qint64(-1);
            best = std::min(best, timer.nsecsElapsed());
        }
        return best;
    };
    const qint64 small = duration(2500);
    const qint64 large = duration(20000); // eight times as many; 64 times the work would be quadratic
    QVERIFY(small > 0 && large > 0);
    qInfo("20000 objects: %lld ms", large / 1000000);
    QVERIFY2(large < 24 * small, qPrintable(u"%1 ns against %2 ns"_s.arg(large).arg(small)));
}

QTEST_GUILESS_MAIN(TestProjectDiff)
#include "tst_projectdiff.moc"
