#include "generators/canopen/VirtualDevices.h"
#include "support/GoldenFile.h"

#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

using Build = std::function<void(VirtualDesk &)>;
Q_DECLARE_METATYPE(Build)

/** Whole virtual dictionaries of small devices, one for each form. */
class TestVobjDictGolden : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void devicesGiveTheirDictionaries_data();
    void devicesGiveTheirDictionaries();
};

void TestVobjDictGolden::devicesGiveTheirDictionaries_data()
{
    QTest::addColumn<Build>("build");
    QTest::addColumn<bool>("v4");
    QTest::newRow("single-line") << Build(VirtualDevices::logger) << true;
    QTest::newRow("older-stack") << Build(VirtualDevices::logger) << false;
    QTest::newRow("multi-line") << Build(VirtualDevices::gateway) << true;
    QTest::newRow("forced-multi-line") << Build(VirtualDevices::forcedLogger) << true;
    QTest::newRow("compact-arrays-and-limits") << Build(VirtualDevices::compactLogger) << true;
}

void TestVobjDictGolden::devicesGiveTheirDictionaries()
{
    QFETCH(Build, build);
    QFETCH(bool, v4);
    VirtualDesk desk;
    build(desk);
    const QString golden = u"vobjdict-%1/gen_vobjdict.c"_s.arg(QString::fromLatin1(QTest::currentDataTag()));
    const QString difference = GoldenFile::difference(golden, desk.dictionary(v4).toUtf8());
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

QTEST_GUILESS_MAIN(TestVobjDictGolden)
#include "tst_vobjdictgolden.moc"
