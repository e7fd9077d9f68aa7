#include "generators/canopen/DictionaryDesk.h"

#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(std::function<void(ObjectDataBase::SUBINDEX_DATA_T &)>)

namespace {

using Generated::assignments;
using Generated::Attributes;
using Generated::column;
using Generated::description;
using Generated::descriptions;
using Generated::places;

/** Equal elements of an array. */
QList<Entry> equalElements(int count)
{
    return QList<Entry>(count, {.type = CAN::Unsigned16, .value = u"7"_s, .mapping = PDOMapping::TPDO});
}

} // namespace

/** The rows of od_description that equal elements of an array share. */
class TestObjDictCompact : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void equalElementsAreOneRow();
    void anArrayOf254EqualElementsIsTwoRows();
    void withoutTheSettingEveryElementHasItsRow();
    void compactionEndsWhereAnElementDiffers_data();
    void compactionEndsWhereAnElementDiffers();
    void namesOfVariablesCompareSimplified();
    void aGapForbidsCompaction();
    void aGapBelowADifferenceDoesNotMatter();
    void aDifferentLastElementForbidsCompaction();
    void smallObjectsAndLowIndicesAreNotCompacted_data();
    void smallObjectsAndLowIndicesAreNotCompacted();
    void subIndexZeroMayBePartOfTheRun();
    void theLastSubIndexIsNoCompactOne();
    void virtualElementsDoNotCountAsRows();
};

void TestObjDictCompact::equalElementsAreOneRow()
{
    DictionaryDesk desk;
    desk.compactArrays = true;
    QList<Entry> elements = equalElements(6);
    elements[1].value = u"9"_s;
    desk.array(0x2000, elements);
    desk.variable(0x3000, {});
    const QString text = desk.generate();
    QCOMPARE(places(text),
             (QStringList{u"0x2000:0"_s, u"0x2000:1"_s, u"0x2000:2"_s, u"0x2000:3"_s, u"0x3000:0"_s}));
    QVERIFY(column(text, u"0x2000:3"_s, Attributes)
                .endsWith(u" | CO_ATTR_MAP_TR | CO_ATTR_MAP_REC | CO_ATTR_COMPACT"_s));
    QVERIFY(!description(text, u"0x2000:2"_s).contains(u"CO_ATTR_COMPACT"_s));
    QCOMPARE(assignments(text),
             (QStringList{u"\t{ 0x2000u, 4u, 6u, CO_ODTYPE_ARRAY, 0u },"_s,
                          u"\t{ 0x3000u, 1u, 0u, CO_ODTYPE_VAR, 4u },"_s}));
    QVERIFY(text.contains(u"\tod_u16[6];\n"_s)); // the variables are all there
}

void TestObjDictCompact::anArrayOf254EqualElementsIsTwoRows()
{
    DictionaryDesk desk;
    desk.compactArrays = true;
    desk.array(0x2000, equalElements(254));
    const QString text = desk.generate();
    QCOMPARE(places(text), (QStringList{u"0x2000:0"_s, u"0x2000:1"_s}));
    QVERIFY(description(text, u"0x2000:1"_s).contains(u" | CO_ATTR_COMPACT,"_s));
    QCOMPARE(assignments(text), QStringList{u"\t{ 0x2000u, 2u, 254u, CO_ODTYPE_ARRAY, 0u },"_s});
}

void TestObjDictCompact::withoutTheSettingEveryElementHasItsRow()
{
    DictionaryDesk desk;
    desk.array(0x2000, equalElements(254));
    const QString text = desk.generate();
    QCOMPARE(descriptions(text).size(), 255);
    QVERIFY(!text.contains("CO_ATTR_COMPACT"_L1));
    QCOMPARE(assignments(text), QStringList{u"\t{ 0x2000u, 255u, 254u, CO_ODTYPE_ARRAY, 0u },"_s});
}

void TestObjDictCompact::compactionEndsWhereAnElementDiffers_data()
{
    using Data = ObjectDataBase::SUBINDEX_DATA_T;
    QTest::addColumn<std::function<void(Data &)>>("change");
    QTest::addColumn<int>("rows"); // of ten elements, of which the fifth is changed, and sub-index 0
    const auto differs = [](const char *name, const std::function<void(Data &)> &change) {
        QTest::newRow(name) << change << 7;
    };
    const auto same = [](const char *name, const std::function<void(Data &)> &change) {
        QTest::newRow(name) << change << 2;
    };
    differs("data type", [](Data &sub) { sub.datatype = CAN::Integer16; });
    differs("access", [](Data &sub) { sub.accesstype = u"ro"_s; });
    differs("mapping", [](Data &sub) { sub.pdomapping = PDOMapping::RPDO; });
    differs("low limit", [](Data &sub) { sub.lowlimit = u"1"_s; });
    differs("upper limit", [](Data &sub) { sub.uplimit = u"1"_s; });
    differs("size", [](Data &sub) { sub.size = 1; });
    differs("default in EDS", [](Data &sub) { sub.defaultineds = true; });
    differs("limits in EDS", [](Data &sub) { sub.limitineds = true; });
    differs("implementation", [](Data &sub) { sub.implementation = CANopen::ManagedConst; });
    differs("variable name", [](Data &sub) { sub.varname = u"v"_s; });
    differs("default", [](Data &sub) { sub.defaultvalue = u"0x7"_s; });
    differs("storage", [](Data &sub) { sub.nvstorage = true; });
    differs("category", [](Data &sub) { sub.category = CANopen::Mandatory; });
    same("name", [](Data &sub) { sub.name = u"Set point"_s; });
    same("description", [](Data &sub) { sub.description = u"what for"_s; });
    same("current value", [](Data &sub) { sub.currentvalue = u"1"_s; });
    same("nothing", [](Data &) {});
}

void TestObjDictCompact::compactionEndsWhereAnElementDiffers()
{
    QFETCH(std::function<void(ObjectDataBase::SUBINDEX_DATA_T &)>, change);
    DictionaryDesk desk;
    desk.compactArrays = true;
    const QList<Entry> elements = equalElements(10);
    desk.array(0x2000, elements);
    ObjectDataBase::SUBINDEX_DATA_T data = elements.at(4).data();
    change(data);
    QVERIFY(desk.store.addSubIndex(0, 0x2000, 5, data));
    QTEST(int(descriptions(desk.generate()).size()), "rows");
}

void TestObjDictCompact::namesOfVariablesCompareSimplified()
{
    DictionaryDesk desk;
    desk.compactArrays = true;
    const Entry plain{.implementation = CANopen::ApplicationVariable, .variable = u"v [$z]"_s};
    Entry spaced = plain;
    spaced.variable = u" v   [$z] "_s;
    desk.array(0x2000, {plain, spaced, plain});
    QCOMPARE(places(desk.generate()), (QStringList{u"0x2000:0"_s, u"0x2000:1"_s}));
}

void TestObjDictCompact::aGapForbidsCompaction()
{
    DictionaryDesk desk;
    desk.compactArrays = true;
    desk.array(0x2000, equalElements(8));
    QVERIFY(desk.store.removeSubIndex(0, 0x2000, 4));
    QCOMPARE(descriptions(desk.generate()).size(), 8);
}

void TestObjDictCompact::aGapBelowADifferenceDoesNotMatter()
{
    DictionaryDesk desk;
    desk.compactArrays = true;
    QList<Entry> elements = equalElements(8);
    elements[4].value = u"1"_s;
    desk.array(0x2000, elements);
    QVERIFY(desk.store.removeSubIndex(0, 0x2000, 2));
    QCOMPARE(places(desk.generate()),
             (QStringList{u"0x2000:0"_s, u"0x2000:1"_s, u"0x2000:3"_s, u"0x2000:4"_s, u"0x2000:5"_s,
                          u"0x2000:6"_s}));
}

void TestObjDictCompact::aDifferentLastElementForbidsCompaction()
{
    DictionaryDesk desk;
    desk.compactArrays = true;
    QList<Entry> elements = equalElements(8);
    elements[7].value = u"1"_s;
    desk.array(0x2000, elements);
    QCOMPARE(descriptions(desk.generate()).size(), 9);
}

void TestObjDictCompact::smallObjectsAndLowIndicesAreNotCompacted_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("elements");
    QTest::addColumn<int>("rows");
    QTest::newRow("two sub-indices") << 0x2000 << 1 << 2;
    QTest::newRow("three sub-indices") << 0x2000 << 2 << 2;
    QTest::newRow("below the services") << 0x11FF << 5 << 6;
    QTest::newRow("the first service") << 0x1200 << 5 << 2;
}

void TestObjDictCompact::smallObjectsAndLowIndicesAreNotCompacted()
{
    QFETCH(int, index);
    QFETCH(int, elements);
    DictionaryDesk desk;
    desk.compactArrays = true;
    desk.array(quint16(index), equalElements(elements));
    QTEST(int(descriptions(desk.generate()).size()), "rows");
}

void TestObjDictCompact::subIndexZeroMayBePartOfTheRun()
{
    DictionaryDesk desk;
    desk.compactArrays = true;
    desk.object(0x2000, equalElements(4));
    QCOMPARE(places(desk.generate()), QStringList{u"0x2000:0"_s});
}

void TestObjDictCompact::theLastSubIndexIsNoCompactOne()
{
    DictionaryDesk desk;
    desk.compactArrays = true;
    desk.array(0x2000, equalElements(1));
    desk.sub(0x2000, 255, {.type = CAN::Unsigned32});
    const QString text = desk.generate();
    QCOMPARE(places(text), (QStringList{u"0x2000:0"_s, u"0x2000:1"_s, u"0x2000:255"_s}));
    QVERIFY(!text.contains("CO_ATTR_COMPACT"_L1));
}

void TestObjDictCompact::virtualElementsDoNotCountAsRows()
{
    DictionaryDesk desk;
    desk.compactArrays = true;
    QList<Entry> elements = equalElements(6);
    elements[0].implementation = CANopen::VirtualObject;
    desk.array(0x2000, elements);
    QCOMPARE(assignments(desk.generate()), QStringList{u"\t{ 0x2000u, 2u, 6u, CO_ODTYPE_ARRAY, 0u },"_s});
}

QTEST_GUILESS_MAIN(TestObjDictCompact)
#include "tst_objdictcompact.moc"
