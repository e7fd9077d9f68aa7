#include "generators/canopen/StackInitDevices.h"
#include "support/GoldenFile.h"

#include <QTest>

using namespace Qt::StringLiterals;
using StackInitDevices::Build;
Q_DECLARE_METATYPE(Build)

/** The whole start of devices with every service, as a reader of the generated file sees it. */
class TestStackInitGolden : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void everyServiceIsStarted_data();
    void everyServiceIsStarted();
};

void TestStackInitGolden::everyServiceIsStarted_data()
{
    QTest::addColumn<Build>("device");
    QTest::newRow("single-line") << Build(StackInitDevices::single);
    QTest::newRow("single-line-can-fd-either-role") << Build([](DictionaryDesk &desk) {
        StackInitDevices::onCanFd(StackInitDevices::single)(desk);
        desk.set(u"nmtmaster"_s, u"2"_s);
    });
    QTest::newRow("gateway") << Build([](DictionaryDesk &desk) {
        StackInitDevices::gateway(desk);
        desk.array(0x1F2C, {{.type = CAN::Unsigned32}});
        desk.set(u"nmtmaster"_s, u"1,0"_s);
    });
    QTest::newRow("gateway-can-fd-either-role") << Build([](DictionaryDesk &desk) {
        StackInitDevices::onCanFd(StackInitDevices::gateway)(desk);
        desk.set(u"nmtmaster"_s, u"0,2"_s);
    });
}

void TestStackInitGolden::everyServiceIsStarted()
{
    QFETCH(Build, device);
    DictionaryDesk desk;
    device(desk);
    const QString functions = StackInitTexts::afterTables(desk.generate());
    QVERIFY(!functions.isEmpty());
    const QString golden = u"stackinit-%1/functions.c"_s.arg(QString::fromLatin1(QTest::currentDataTag()));
    const QString difference = GoldenFile::difference(golden, functions.toUtf8());
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

QTEST_GUILESS_MAIN(TestStackInitGolden)
#include "tst_stackinitgolden.moc"
