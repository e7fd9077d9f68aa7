#include "generators/canopen/DictionaryDesk.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using Generated::column;
using Generated::columns;
using Generated::Constant;
using Generated::descriptions;
using Generated::Specifier;
using Generated::Value;

QString position(int number)
{
    return u"(UNSIGNED16)%1u"_s.arg(number);
}

} // namespace

/** Which service of the stack a row of od_description refers to, and how. */
class TestObjDictServices : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void servicesHaveTheirSpecifier_data();
    void servicesHaveTheirSpecifier();
    void withoutAServiceTheImplementationDecides_data();
    void withoutAServiceTheImplementationDecides();
    void constantsOfServicesStayConstants();
    void servicesAreReferredToByIndexOrNumber_data();
    void servicesAreReferredToByIndexOrNumber();
    void variablesAreReferredToByPosition();
    void staticSrdoVariablesAreReferredToByIndex();
    void staticSrdoVariablesAreThoseOfTheGeneratedLines();
};

void TestObjDictServices::servicesHaveTheirSpecifier_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QStringList>("words"); // of sub-indices 0, 1 and 2
    const QString none = u"_VAR"_s;
    const auto all = [](const QString &word) { return QStringList{word, word, word}; };
    const auto butZero = [&](const QString &word) { return QStringList{none, word, word}; };
    const auto add = [](int index, const QStringList &words) {
        QTest::addRow("%04x %s", uint(index), qPrintable(words.at(1))) << index << words;
    };
    for (const int index : {0x1005, 0x1006, 0x1019})
        add(index, all(u"_SYNC"_s));
    for (const int index : {0x1003, 0x1014, 0x1015, 0x1032})
        add(index, all(u"_EMCY"_s));
    add(0x1028, butZero(u"_EMCY"_s));
    add(0x1016, butZero(u"_ERRCTRL"_s));
    for (const int index : {0x100C, 0x100D, 0x1017})
        add(index, all(u"_ERRCTRL"_s));
    add(0x1029, {none, u"_ERRCTRL"_s, none});
    for (const int index : {0x1010, 0x1011})
        add(index, butZero(u"_STORE"_s));
    add(0x1012, all(u"_TIME"_s));
    add(0x102A, all(u"_NMT"_s));
    for (const int index : {0x1200, 0x127F})
        add(index, butZero(u"_SDO_SERVER"_s));
    for (const int index : {0x1280, 0x12FF})
        add(index, butZero(u"_SDO_CLIENT"_s));
    add(0x1300, all(u"_GFC"_s));
    for (const int index : {0x1301, 0x13F0})
        add(index, butZero(u"_SRDO"_s));
    for (const int index : {0x13FE, 0x13FF})
        add(index, all(u"_SRDO"_s));
    for (const int index : {0x1400, 0x15FF})
        add(index, butZero(u"_RPDO"_s));
    for (const int index : {0x1600, 0x17FF})
        add(index, all(u"_RMAP"_s));
    for (const int index : {0x1800, 0x19FF})
        add(index, butZero(u"_TPDO"_s));
    for (const int index : {0x1A00, 0x1BFF})
        add(index, all(u"_TMAP"_s));
    for (const int index : {0x1F10, 0x1F11})
        add(index, all(u"_SRD"_s));
    add(0x1F2C, butZero(u"_NETWORK"_s));
    for (const int index : {0x1F80, 0x1F81, 0x1F82})
        add(index, all(u"_NMT"_s));
    add(0x1F90, all(u"_FLYMA"_s));
    for (const int index : {0x1000, 0x1004, 0x1007, 0x100E, 0x1013, 0x1018, 0x101A, 0x102B, 0x11FF, 0x13F1,
                            0x13FD, 0x1C00, 0x1F0F, 0x1F12, 0x1F7F, 0x1F83, 0x1F8F, 0x1F91, 0x2000})
        add(index, all(none));
}

void TestObjDictServices::servicesHaveTheirSpecifier()
{
    QFETCH(int, index);
    QFETCH(QStringList, words);
    DictionaryDesk desk;
    desk.object(quint16(index), {{}, {}, {}});
    const QString text = desk.generate();
    for (int sub = 0; sub < words.size(); ++sub)
        QCOMPARE(column(text, u"0x%1:%2"_s.arg(index, 4, 16, '0'_L1).arg(sub), Specifier),
                 u"CO_DSPEC"_s + words.at(sub));
}

void TestObjDictServices::withoutAServiceTheImplementationDecides_data()
{
    QTest::addColumn<int>("implementation");
    QTest::addColumn<QString>("ownObject");
    QTest::addColumn<QString>("service");
    QTest::newRow("managed") << 0 << u"CO_DSPEC_VAR"_s << u"CO_DSPEC_ERRCTRL"_s;
    QTest::newRow("constant") << 1 << u"CO_DSPEC_CONST"_s << u"CO_DSPEC_CONST"_s;
    QTest::newRow("application") << 2 << u"CO_DSPEC_PTR"_s << u"CO_DSPEC_ERRCTRL"_s;
}

void TestObjDictServices::withoutAServiceTheImplementationDecides()
{
    QFETCH(int, implementation);
    DictionaryDesk desk;
    for (const quint16 index : {0x1017, 0x2000})
        desk.variable(index, {.implementation = implementation, .variable = u"v"_s});
    QTEST(column(desk.generate(), u"0x2000:0"_s, Specifier), "ownObject");
    QTEST(column(desk.generate(), u"0x1017:0"_s, Specifier), "service");
}

void TestObjDictServices::constantsOfServicesStayConstants()
{
    DictionaryDesk desk;
    desk.object(0x1600,
                {{.value = u"9"_s, .implementation = CANopen::ManagedConst},
                 {.value = u"8"_s, .implementation = CANopen::ManagedConst}});
    const QString text = desk.generate();
    QCOMPARE(column(text, u"0x1600:1"_s, Specifier), u"CO_DSPEC_CONST"_s);
    QCOMPARE(column(text, u"0x1600:1"_s, Value), position(1));
    QCOMPARE(column(text, u"0x1600:1"_s, Constant), position(1));
}

void TestObjDictServices::servicesAreReferredToByIndexOrNumber_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QList<int>>("values"); // of sub-indices 0, 1 and 2, where no position stands
    const int place = -1;
    const auto all = [](int value) { return QList<int>{value, value, value}; };
    const auto butZero = [&](int value) { return QList<int>{place, value, value}; };
    const auto add = [](int index, const QList<int> &values) {
        QTest::addRow("%04x", uint(index)) << index << values;
    };
    for (const int index : {0x1003, 0x1005, 0x1006, 0x100C, 0x100D, 0x102A, 0x1301, 0x1380, 0x13FF, 0x1017,
                            0x1014, 0x1015, 0x1019, 0x1032, 0x1F80, 0x1F81, 0x1F82})
        add(index, all(index));
    for (const int index : {0x1016, 0x1010, 0x1011, 0x1028, 0x1F90, 0x1F2C})
        add(index, butZero(index));
    add(0x1029, {place, 0x1029, place});
    add(0x1200, butZero(1));
    add(0x127F, butZero(0x80));
    add(0x1280, butZero(1));
    add(0x12FF, butZero(0x80));
    add(0x1400, butZero(1));
    add(0x15FF, butZero(0x200));
    add(0x1600, all(1));
    add(0x17FF, all(0x200));
    add(0x1800, butZero(1));
    add(0x19FF, butZero(0x200));
    add(0x1A00, all(1));
    add(0x1BFF, all(0x200));
    for (const int index : {0x1000, 0x1300, 0x1012, 0x1F10, 0x1F11, 0x2000})
        add(index, all(place));
}

void TestObjDictServices::servicesAreReferredToByIndexOrNumber()
{
    QFETCH(int, index);
    QFETCH(QList<int>, values);
    constexpr int positionOfTheFirst = 3;
    const QList<int> heldWithoutReference{0x1012, 0x1016, 0x1300, 0x1F10, 0x1F11};
    const bool isHeld = heldWithoutReference.contains(index);
    DictionaryDesk desk;
    desk.object(0x2fff, {{}, {}, {}});
    desk.object(quint16(index), {{}, {}, {}}, CANopen::Record, 1);
    const QString text = desk.generate();
    int next = positionOfTheFirst;
    for (int sub = 0; sub < values.size(); ++sub) {
        const bool isPlace = values.at(sub) < 0;
        const int expected = !isPlace ? values.at(sub) : isHeld ? 0 : next++;
        QCOMPARE(column(text, u"1-0x%1:%2"_s.arg(index, 4, 16, '0'_L1).arg(sub), Value), position(expected));
    }
}

void TestObjDictServices::variablesAreReferredToByPosition()
{
    DictionaryDesk desk;
    desk.object(
        0x2000,
        {{.implementation = CANopen::ApplicationVariable, .variable = u"a"_s},
         {},
         {.implementation = CANopen::ApplicationVariable, .variable = u"b"_s},
         {},
         {.type = CAN::Unsigned16},
         {.type = CAN::VisibleString, .implementation = CANopen::ApplicationVariable, .variable = u"c"_s},
         {.type = CAN::VisibleString, .implementation = CANopen::ApplicationVariable, .variable = u"d"_s},
         {.type = CAN::Domain, .implementation = CANopen::ApplicationVariable, .variable = u"e"_s}});
    QStringList positions;
    for (const QString &row : descriptions(desk.generate()))
        positions.append(columns(row).at(Value));
    QCOMPARE(positions,
             (QStringList{position(0), position(0), position(1), position(1), position(0), position(0),
                          position(1), position(0)}));
}

void TestObjDictServices::staticSrdoVariablesAreReferredToByIndex()
{
    DictionaryDesk desk;
    desk.set(u"static_srdo_data"_s, u"1"_s);
    desk.object(0x1381, {{.value = u"2"_s}, {.type = CAN::Unsigned32, .value = u"0x20000108"_s}});
    desk.object(0x2000,
                {{.implementation = CANopen::ApplicationVariable, .variable = u"a"_s},
                 {.implementation = CANopen::ApplicationVariable, .variable = u"b"_s},
                 {.implementation = CANopen::ApplicationVariable, .variable = u"c"_s}});
    const QString text = desk.generate();
    QCOMPARE(Generated::rows(text, u"static UNSIGNED8 CORE_CONST_STORAGE_CLASS * "_s),
             (QStringList{u"\t&(a) /* 0x2000:0 */,"_s, u"\t&(c) /* 0x2000:2 */"_s}));
    QCOMPARE(column(text, u"0x2000:1"_s, Specifier), u"CO_DSPEC_SRDO"_s);
    QCOMPARE(column(text, u"0x2000:1"_s, Value), position(0x2000));
    QCOMPARE(column(text, u"0x2000:2"_s, Specifier), u"CO_DSPEC_PTR"_s);
    QCOMPARE(column(text, u"0x2000:2"_s, Value), position(1));
    desk.set(u"static_srdo_data"_s, u"0"_s);
    QCOMPARE(column(desk.generate(), u"0x2000:1"_s, Specifier), u"CO_DSPEC_PTR"_s);
}

void TestObjDictServices::staticSrdoVariablesAreThoseOfTheGeneratedLines()
{
    DictionaryDesk desk;
    desk.set(u"static_srdo_data"_s, u"1"_s);
    for (const quint8 line : {0, 1, 2}) {
        desk.object(0x2000, {{.value = u"1"_s}, {}}, CANopen::Record, line);
        desk.object(0x1380, {{.type = CAN::Unsigned32, .value = u"0x20000108"_s}}, CANopen::Record, line);
        desk.object(0x13B1, {{.type = CAN::Unsigned32, .value = u"0x20000008"_s}}, CANopen::Record, line);
    }
    QVERIFY(desk.store.removeIndex(2, 0x2000));
    QVERIFY(desk.store.removeIndex(2, 0x13B1));
    const QString text = desk.generate();
    QCOMPARE(column(text, u"0-0x2000:1"_s, Specifier), u"CO_DSPEC_SRDO"_s);
    QCOMPARE(column(text, u"1-0x2000:1"_s, Specifier), u"CO_DSPEC_SRDO"_s);
    QCOMPARE(column(text, u"1-0x2000:0"_s, Specifier), u"CO_DSPEC_VAR"_s);
}

QTEST_GUILESS_MAIN(TestObjDictServices)
#include "tst_objdictservices.moc"
