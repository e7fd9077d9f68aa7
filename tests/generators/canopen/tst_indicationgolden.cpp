#include "generators/canopen/IndicationDesk.h"
#include "support/GoldenFile.h"

#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

using Build = std::function<void(IndicationDesk &)>;
Q_DECLARE_METATYPE(Build)

/** Whole headers, one for each form. */
class TestIndicationGolden : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void devicesGiveTheirHeaders_data();
    void devicesGiveTheirHeaders();
};

void TestIndicationGolden::devicesGiveTheirHeaders_data()
{
    QTest::addColumn<Build>("build");
    QTest::addColumn<bool>("v4");
    const Build gateway = [](IndicationDesk &desk) {
        Indications::nameEveryFunction(desk);
        desk.addLine(1);
    };
    QTest::newRow("none") << Build([](IndicationDesk &) {}) << true;
    QTest::newRow("single-line") << Build(Indications::nameEveryFunction) << true;
    QTest::newRow("older-stack") << Build(Indications::nameEveryFunction) << false;
    QTest::newRow("multi-line") << gateway << true;
    QTest::newRow("older-multi-line") << gateway << false;
}

void TestIndicationGolden::devicesGiveTheirHeaders()
{
    QFETCH(Build, build);
    QFETCH(bool, v4);
    IndicationDesk desk;
    build(desk);
    const QString golden =
        u"indication-%1/gen_indication.h"_s.arg(QString::fromLatin1(QTest::currentDataTag()));
    const QString difference = GoldenFile::difference(golden, desk.header(v4).toUtf8());
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

QTEST_GUILESS_MAIN(TestIndicationGolden)
#include "tst_indicationgolden.moc"
