#include "generators/canopen/SampleDevices.h"
#include "support/GoldenFile.h"

#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

using Build = std::function<void(DictionaryDesk &)>;
Q_DECLARE_METATYPE(Build)

/** Whole files of small devices, one for each form of the output. */
class TestObjDictGolden : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void devicesGiveTheirFiles_data();
    void devicesGiveTheirFiles();

private:
    static void addForms();
    static void addSettings();
};

void TestObjDictGolden::initTestCase()
{
    StoreTest::prepareApplication();
    qputenv("SOURCE_DATE_EPOCH", "1700000000");
}

void TestObjDictGolden::cleanup()
{
    QCoreApplication::setApplicationName(u"CANopen NodeSmith"_s);
}

void TestObjDictGolden::addForms()
{
    const auto add = [](const char *name, const Build &build) { QTest::newRow(name) << build << true; };
    add("single-line", [](DictionaryDesk &desk) { SampleDevices::addDevice(desk); });
    QTest::newRow("older-stack") << Build([](DictionaryDesk &desk) { SampleDevices::addDevice(desk); })
                                 << false;
    add("multi-line", SampleDevices::addGateway);
    QTest::newRow("older-multi-line") << Build(SampleDevices::addGateway) << false;
    add("forced-multi-line", [](DictionaryDesk &desk) {
        SampleDevices::addDevice(desk);
        desk.setMisc(u"generateML"_s, u"true"_s);
    });
    add("can-fd", [](DictionaryDesk &desk) {
        SampleDevices::addDevice(desk);
        desk.set(u"canfd_supported"_s, u"1"_s);
    });
    add("can-fd-multi-line", [](DictionaryDesk &desk) {
        SampleDevices::addGateway(desk);
        desk.set(u"canfd_supported"_s, u"1"_s);
    });
    add("j1939-server", [](DictionaryDesk &desk) {
        SampleDevices::addDevice(desk);
        desk.set(u"line0type"_s, u"2"_s);
        desk.forJ1939Server = true;
    });
    add("routing", [](DictionaryDesk &desk) {
        SampleDevices::addGateway(desk);
        desk.pdo(0x1402, {u"0x22000120"_s});
        desk.pdo(0x1802, {u"0x22000120"_s}, u"const"_s, 1);
        desk.array(0x1F2C, {SampleDevices::constant(CAN::Unsigned32, u"0x14020101"_s)});
    });
    add("energybus", [](DictionaryDesk &desk) {
        QCoreApplication::setApplicationName(u"EnergyBus NodeGuide"_s);
        SampleDevices::addDevice(desk);
    });
}

void TestObjDictGolden::addSettings()
{
    const auto add = [](const char *name, const Build &build) { QTest::newRow(name) << build << true; };
    add("initialised-variables", [](DictionaryDesk &desk) {
        SampleDevices::addDevice(desk);
        desk.set(u"init_static_variables"_s, u"1"_s);
        desk.set(u"static_memory_specifier"_s, u"PUMP_RAM"_s);
        desk.set(u"applicationheader"_s, u"pump.h"_s);
    });
    add("compact-arrays-and-limits", [](DictionaryDesk &desk) {
        SampleDevices::addDevice(desk);
        desk.set(u"limit_check"_s, u"1"_s);
        desk.compactArrays = true;
    });
    add("texts", [](DictionaryDesk &desk) {
        SampleDevices::addIdentity(desk);
        SampleDevices::addTexts(desk);
        desk.set(u"line0type"_s, u"1"_s);
        desk.set(u"generate_string_defaults"_s, u"1"_s);
    });
    add("bitwise-mapping", [](DictionaryDesk &desk) {
        SampleDevices::addDevice(desk);
        desk.set(u"bitwise_mapping"_s, u"1"_s);
    });
}

void TestObjDictGolden::devicesGiveTheirFiles_data()
{
    QTest::addColumn<Build>("build");
    QTest::addColumn<bool>("v4");
    addForms();
    addSettings();
}

void TestObjDictGolden::devicesGiveTheirFiles()
{
    QFETCH(Build, build);
    QFETCH(bool, v4);
    DictionaryDesk desk;
    desk.set(u"new_init_structure"_s, u"1"_s);
    build(desk);
    desk.generate(v4);
    for (const QString &name : {u"gen_objdict.c"_s, u"gen_user.h"_s}) {
        if (!desk.exists(name))
            continue;
        const QString golden = u"objdict-%1/%2"_s.arg(QString::fromLatin1(QTest::currentDataTag()), name);
        const QString difference = GoldenFile::difference(golden, desk.read(name).toUtf8());
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }
    QCOMPARE(desk.exists(u"gen_user.h"_s),
             QFile::exists(GoldenFile::path(
                 u"objdict-%1/gen_user.h"_s.arg(QString::fromLatin1(QTest::currentDataTag())))));
}

QTEST_GUILESS_MAIN(TestObjDictGolden)
#include "tst_objdictgolden.moc"
