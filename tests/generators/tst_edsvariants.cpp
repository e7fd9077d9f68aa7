#include "generators/RunDesk.h"

using namespace StoreTest;
using namespace Qt::StringLiterals;

/** Which device descriptions a CANopen line gets. */
class TestEdsVariants : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }

    void oneDescriptionPerVariantInTheOrderOfItsFirstName();
    void variantsDifferInCase();
    void dataTypesNameNoVariant();
    void eachLineHasVariantsOfItsOwn();
    void canFdDoublesEachVariant();
    void onlyLinesWithSeveralVariantsAreWarnedOf();
    void theWarningIsLeftOutWithoutTheGenerator();
};

void TestEdsVariants::oneDescriptionPerVariantInTheOrderOfItsFirstName()
{
    RunDesk desk({1});
    desk.object(0, 0x2001, 0, u"b"_s, u"c"_s);
    desk.object(0, 0x2000, 0, {}, u"a"_s);
    desk.object(0, 0x2002, 0, u"a"_s, u"b"_s);
    desk.object(0, 0x2003, 0, u"d"_s);
    desk.run();
    QCOMPARE(desk.fakes.labels().filter(u"Eds"_s).join(u' '), u"Eds:0 Eds=a:0 Eds=b:0 Eds=c:0 Eds=d:0"_s);
}

void TestEdsVariants::variantsDifferInCase()
{
    RunDesk desk({1});
    desk.object(0, 0x2000, 0, u"small"_s, u"Small"_s);
    desk.run();
    QCOMPARE(desk.fakes.labels().filter(u"Eds"_s).join(u' '), u"Eds:0 Eds=small:0 Eds=Small:0"_s);
}

void TestEdsVariants::dataTypesNameNoVariant()
{
    RunDesk desk({1});
    desk.object(0, 0x0FFF, 0, u"type"_s, u"type"_s);
    desk.object(0, 0x1000, 0, u"first"_s);
    desk.run();
    QCOMPARE(desk.fakes.labels().filter(u"Eds"_s).join(u' '), u"Eds:0 Eds=first:0"_s);
}

void TestEdsVariants::eachLineHasVariantsOfItsOwn()
{
    RunDesk desk({1, 4, 1});
    desk.object(0, 0x2000, 0, u"a"_s);
    desk.object(1, 0x2000, 0, u"x"_s);
    desk.object(2, 0x2000, 0, u"b"_s);
    desk.run();
    QCOMPARE(desk.fakes.labels().filter(u"Eds"_s).join(u' '), u"Eds:0 Eds=a:0 Eds:2 Eds=b:2"_s);
}

void TestEdsVariants::canFdDoublesEachVariant()
{
    RunDesk desk({1});
    desk.set(u"canfd_supported"_s, u"1"_s);
    desk.object(0, 0x2000, 0, u"a"_s);
    desk.run();
    QCOMPARE(desk.fakes.labels().filter(u"Eds"_s).join(u' '),
             u"Eds(fd):0 Eds(classical):0 Eds=a(fd):0 Eds=a(classical):0"_s);
}

void TestEdsVariants::onlyLinesWithSeveralVariantsAreWarnedOf()
{
    const QString warning = u"Warning: multiple different EDS files to be generated.\n"_s;
    RunDesk desk({1, 1});
    desk.set(u"canfd_supported"_s, u"1"_s);
    desk.run();
    QVERIFY(!desk.output.has(warning));
    desk.object(1, 0x2000, 0, u"a"_s);
    desk.output.clear();
    desk.run();
    QCOMPARE(desk.output.all.count(warning), 1);
    const qsizetype last = desk.output.all.lastIndexOf(
        u"Generation of a classical EDS file in %1 started"_s.arg(desk.folder.path()));
    QCOMPARE(desk.output.all.indexOf(warning), last + 2); // behind the completion of that file
}

void TestEdsVariants::theWarningIsLeftOutWithoutTheGenerator()
{
    RunDesk desk({1});
    desk.object(0, 0x2000, 0, u"a"_s);
    desk.handler.setFactories(desk.fakes.factories({GeneratorKind::Define}));
    desk.run();
    QVERIFY(desk.output.containing(u"multiple different"_s).isEmpty());
}

QTEST_GUILESS_MAIN(TestEdsVariants)
#include "tst_edsvariants.moc"
