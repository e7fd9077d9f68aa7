#include "DefineProjects.h"
#include "support/GoldenFile.h"

using namespace Qt::StringLiterals;

/** Whole files of one small project for each form. */
class TestGenDefineGolden : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void theFileIsTheGoldenOne_data() { DefineProjects::addRows(); }
    void theFileIsTheGoldenOne();
};

void TestGenDefineGolden::theFileIsTheGoldenOne()
{
    QFETCH(int, number);
    const DefineProject &project = DefineProjects::choose(number);
    DefineDesk desk({0});
    project.build(desk);
    const QString name = u"gen-define-%1/gen_define.h"_s.arg(QLatin1StringView(project.name));
    const QString difference = GoldenFile::difference(name, desk.generate(project.v4));
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

QTEST_GUILESS_MAIN(TestGenDefineGolden)
#include "tst_gendefinegolden.moc"
