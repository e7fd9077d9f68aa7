#include "generators/RunDesk.h"
#include "generators/descriptions/DescriptionDesk.h"
#include "generators/descriptions/EDSGenerator.h"
#include "generators/descriptions/StrictEds.h"
#include "generators/descriptions/XDDGenerator.h"

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/** A desk whose runs have the real generators of device descriptions. */
class DescriptionRunDesk : public RunDesk
{
public:
    explicit DescriptionRunDesk(const QList<int> &lineTypes) : RunDesk(lineTypes)
    {
        qputenv("SOURCE_DATE_EPOCH", "1700000000");
        GeneratorFactories factories;
        addDescriptionGenerators(factories);
        handler.setFactories(factories);
    }

    QStringList files() const
    {
        return QDir(folder.path()).entryList({u"*.eds"_s, u"*.xdd"_s}, QDir::Files, QDir::Name);
    }
};

} // namespace

/** Which files of device descriptions a project gives, by the generators and by a whole run. */
class TestDescriptionFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void theRequestChoosesTheForm();
    void theNameTellsLineAndVariant_data();
    void theNameTellsLineAndVariant();
    void aVariantCannotLeaveTheFolder();
    void aFileThatCannotBeWrittenIsTold();
    void aProjectWithoutVariantsGivesOneFile();
    void twoLinesGiveAFileEach();
    void aCanFdDeviceHasAClassicalFileAndAnXdd();
    void variantsHaveFilesOfTheirOwn();
    void linesOfOtherProtocolsHaveNone();
    void theServerOfAJ1939LineIsDescribed();
    void theRunTellsWhatItWrites();
    void aReadOnlyFileIsToldAndTheRunGoesOn();
    void theSameProjectGivesTheSameBytes();
    void everyFileOfARunIsStrict();
};

void TestDescriptionFiles::theRequestChoosesTheForm()
{
    const DescriptionDesk desk;
    for (const bool canFd : {false, true}) {
        const auto generator = desk.factories.create({.kind = GeneratorKind::Eds, .canFd = canFd});
        const auto *const eds = dynamic_cast<const EDSGenerator *>(generator.get());
        QVERIFY(eds);
        QCOMPARE(eds->isFdVariant(), canFd);
    }
    const auto xdd = desk.factories.create(DescriptionDesk::xdd());
    QVERIFY(dynamic_cast<const XDDGenerator *>(xdd.get()));
}

void TestDescriptionFiles::theNameTellsLineAndVariant_data()
{
    QTest::addColumn<bool>("multiLine");
    QTest::addColumn<QString>("variant");
    QTest::addColumn<bool>("classical");
    QTest::addColumn<QString>("eds");
    QTest::addColumn<QString>("xdd");
    QTest::newRow("one line") << false << QString() << false << u"pump.eds"_s << u"pump_0.xdd"_s;
    QTest::newRow("several lines") << true << QString() << false << u"pump_1.eds"_s << u"pump_1.xdd"_s;
    QTest::newRow("classical") << false << QString() << true << u"pump_classical.eds"_s << u"pump_0.xdd"_s;
    QTest::newRow("classical of several lines")
        << true << QString() << true << u"pump_1_classical.eds"_s << u"pump_1.xdd"_s;
    QTest::newRow("variant") << false << u"north"_s << false << u"pump_north.eds"_s << u"pump_0_north.xdd"_s;
    QTest::newRow("variant of several lines")
        << true << u"north"_s << false << u"pump_1_north.eds"_s << u"pump_1_north.xdd"_s;
    QTest::newRow("classical variant")
        << false << u"north"_s << true << u"pump_north.eds"_s << u"pump_0_north.xdd"_s;
}

void TestDescriptionFiles::theNameTellsLineAndVariant()
{
    QFETCH(bool, multiLine);
    QFETCH(QString, variant);
    QFETCH(bool, classical);
    QFETCH(QString, eds);
    QFETCH(QString, xdd);
    DescriptionDesk desk(multiLine ? QList<int>{1, 1} : QList<int>{1});
    const quint8 line = multiLine ? 1 : 0;
    QCOMPARE(desk.run(DescriptionDesk::eds(line, variant, classical)), QString());
    QCOMPARE(desk.files(), QStringList(eds));
    QCOMPARE(desk.run(DescriptionDesk::xdd(line, variant)), QString());
    QVERIFY(desk.files().contains(xdd));
}

void TestDescriptionFiles::aVariantCannotLeaveTheFolder()
{
    DescriptionDesk desk;
    QCOMPARE(desk.run(DescriptionDesk::eds(0, u"../a\\b"_s)), QString());
    QCOMPARE(desk.files(), QStringList(u"pump_.._a_b.eds"_s));
}

void TestDescriptionFiles::aFileThatCannotBeWrittenIsTold()
{
    DescriptionDesk desk;
    QVERIFY(QDir(desk.folder.path()).mkdir(u"pump.eds"_s));
    QVERIFY(desk.run(DescriptionDesk::eds()).contains(u"pump.eds"_s));
    const auto generator = desk.factories.create(DescriptionDesk::xdd());
    generator->setOutputDir(desk.folder.path());
    QCOMPARE(generator->startGeneration(), GeneratorStatus::Success);
    generator->waitForEnd();
    QCOMPARE(generator->errorString(), u"There is no project."_s);
}

void TestDescriptionFiles::aProjectWithoutVariantsGivesOneFile()
{
    DescriptionRunDesk desk({1});
    desk.object(0, 0x2000);
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    QCOMPARE(desk.files(), QStringList(u"project.eds"_s));
}

void TestDescriptionFiles::twoLinesGiveAFileEach()
{
    DescriptionRunDesk desk({1, 6});
    desk.object(0, 0x2000);
    desk.object(1, 0x2001);
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    QCOMPARE(desk.files(), QStringList({u"project_0.eds"_s, u"project_1.eds"_s}));
    QVERIFY(desk.read(u"project_0.eds"_s).contains("[2000]"));
    QVERIFY(desk.read(u"project_1.eds"_s).contains("[2001]"));
}

void TestDescriptionFiles::aCanFdDeviceHasAClassicalFileAndAnXdd()
{
    DescriptionRunDesk desk({1});
    desk.set(u"canfd_supported"_s, u"1"_s);
    desk.object(0, 0x2000);
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    QCOMPARE(desk.files(), QStringList({u"project.eds"_s, u"project_0.xdd"_s, u"project_classical.eds"_s}));
    QCOMPARE(desk.read(u"project_classical.eds"_s), desk.read(u"project.eds"_s));
    QVERIFY(desk.output.all.contains(u"Generation of XDD file completed. "_s));
    QVERIFY(desk.output.all.contains(u"Generation of project_classical.eds completed. "_s));
}

void TestDescriptionFiles::variantsHaveFilesOfTheirOwn()
{
    DescriptionRunDesk desk({1});
    desk.object(0, 0x2000);
    desk.object(0, 0x2001, 0, u"north"_s);
    desk.object(0, 0x2002, 0, {}, u"south"_s);
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    QCOMPARE(desk.files(), QStringList({u"project.eds"_s, u"project_north.eds"_s, u"project_south.eds"_s}));
    QVERIFY(!desk.read(u"project.eds"_s).contains("[2001]"));
    QVERIFY(desk.read(u"project_north.eds"_s).contains("[2001]"));
    QVERIFY(!desk.read(u"project_south.eds"_s).contains("[2001]"));
    QCOMPARE(desk.output.all.count(u"Warning: multiple different EDS files to be generated.\n"_s), 1);
}

void TestDescriptionFiles::linesOfOtherProtocolsHaveNone()
{
    DescriptionRunDesk desk({2, 1, 4});
    desk.object(1, 0x2000);
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    QCOMPARE(desk.files(), QStringList(u"project_1.eds"_s));
}

void TestDescriptionFiles::theServerOfAJ1939LineIsDescribed()
{
    DescriptionRunDesk desk({2});
    desk.setJ1939(u"cia510serversupport"_s, u"1"_s);
    desk.object(0, 0x2000);
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    QCOMPARE(desk.files(), QStringList(u"project.eds"_s));
    QVERIFY(desk.read(u"project.eds"_s).contains("[2000]"));
}

void TestDescriptionFiles::theRunTellsWhatItWrites()
{
    DescriptionRunDesk desk({1});
    desk.object(0, 0x2000);
    desk.run();
    const QStringList messages = desk.messagesOfTheRun();
    QVERIFY(messages.contains(u"Generation of  EDS file in %1 started"_s.arg(desk.folder.path())));
    QVERIFY(messages.contains(u"Generation of project.eds completed. "_s));
}

void TestDescriptionFiles::aReadOnlyFileIsToldAndTheRunGoesOn()
{
    if (geteuid() == 0)
        QSKIP("nothing is read-only for this user");
    DescriptionRunDesk desk({1});
    desk.set(u"canfd_supported"_s, u"1"_s);
    desk.write(u"project.eds"_s, "former");
    QFile(desk.path(u"project.eds"_s)).setPermissions(QFile::ReadOwner);
    desk.run();
    QCOMPARE(desk.read(u"project.eds"_s), "former");
    QVERIFY(desk.output.all.contains(
        u"The EDS file project.eds in %1 is not writable"_s.arg(desk.folder.path())));
    QVERIFY(desk.exists(u"project_0.xdd"_s));
}

void TestDescriptionFiles::theSameProjectGivesTheSameBytes()
{
    DescriptionDesk desk;
    desk.mandatoryObjects();
    const QString eds = desk.edsText();
    const QString xdd = desk.xddText();
    QVERIFY(eds.contains(u"[1018sub3]"_s));
    QTest::qWait(1100);
    QCOMPARE(desk.edsText(), eds);
    QCOMPARE(desk.xddText(), xdd);
}

void TestDescriptionFiles::everyFileOfARunIsStrict()
{
    DescriptionDesk device;
    device.mandatoryObjects();
    device.object(0x2001, u"Array"_s, 8,
                  {{0, DescriptionDesk::sub(u"Number"_s, 5, u"2"_s)},
                   {1, DescriptionDesk::sub(u"First"_s, 6)},
                   {2, DescriptionDesk::sub(u"Second"_s, 6)}});
    device.setMetadata(0x2001, 2, u"eds_define"_s, u"north"_s);
    device.store->setGeneralSetting(u"canfd_supported"_s, u"1"_s);
    RunDesk desk(device.store);
    desk.handler.setFactories(device.factories);
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    const QStringList files = QDir(desk.folder.path()).entryList({u"*.eds"_s}, QDir::Files, QDir::Name);
    QCOMPARE(files, QStringList({u"project.eds"_s, u"project_classical.eds"_s, u"project_north.eds"_s}));
    for (const QString &file : files)
        QCOMPARE(StrictEds(desk.read(file)).errors(), QStringList());
    QCOMPARE(StrictEds(desk.read(u"project.eds"_s)).value(u"2001"_s, u"SubNumber"_s), u"2"_s);
    QCOMPARE(StrictEds(desk.read(u"project_north.eds"_s)).value(u"2001"_s, u"SubNumber"_s), u"3"_s);
}

QTEST_GUILESS_MAIN(TestDescriptionFiles)
#include "tst_descriptionfiles.moc"
