#include "generators/RunDesk.h"

using namespace StoreTest;
using namespace Qt::StringLiterals;

/** What stops a run that cannot write, or whose generators fail. */
class TestOutputFolder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }

    void anOutputFolderThatIsMissingAborts();
    void aFileInPlaceOfTheOutputFolderAborts();
    void aProjectWithoutFolderAborts();
    void anOutputFolderThatVanishesDuringTheRunAborts_data();
    void anOutputFolderThatVanishesDuringTheRunAborts();
    void aFileThatTakesTheFoldersPlaceDuringTheRunAborts();
    void aFailedSrdoGeneratorStopsTheRun();
    void aTargetOfTheSrdoGeneratorThatCannotBeWrittenDoesNotStopTheRun();
    void otherFailedGeneratorsDoNotStopTheRun();
};

void TestOutputFolder::anOutputFolderThatIsMissingAborts()
{
    RunDesk desk({1});
    const QString missing = desk.path(u"missing"_s);
    desk.handler.setProject(desk.store, missing, u"project"_s);
    QCOMPARE(desk.run(), RunDesk::Result::OutputNotWritable);
    QVERIFY(desk.output.has("ABORT - The output folder "_L1 + missing + " is not writeable."_L1));
    QVERIFY(desk.fakes.requests().isEmpty());
    QVERIFY(!desk.output.has(u"Generation finished."_s));
    QVERIFY(!desk.output.has(u"Generation completed."_s));
    QVERIFY(!QFile::exists(missing));
}

void TestOutputFolder::aFileInPlaceOfTheOutputFolderAborts()
{
    RunDesk desk({1});
    desk.write(u"file"_s, "content");
    desk.handler.setProject(desk.store, desk.path(u"file"_s), u"project"_s);
    QCOMPARE(desk.run(), RunDesk::Result::OutputNotWritable);
    QVERIFY(
        desk.output.has("ABORT - The output folder "_L1 + desk.path(u"file"_s) + " is not writeable."_L1));
    QCOMPARE(desk.read(u"file"_s), QByteArray("content"));
}

void TestOutputFolder::aProjectWithoutFolderAborts()
{
    RunDesk desk({1});
    desk.handler.setProject(desk.store, QString(), u"newproject"_s);
    QCOMPARE(desk.run(), RunDesk::Result::OutputNotWritable);
    QVERIFY(desk.output.has(u"ABORT - The output folder  is not writeable."_s));
    QVERIFY(!QFile::exists(u"/__vexerrorlog.txt"_s));
    QVERIFY(!QFile::exists(u"/__vexerrorlog.txt.bak"_s));
}

void TestOutputFolder::anOutputFolderThatVanishesDuringTheRunAborts_data()
{
    QTest::addColumn<GeneratorKind>("kind");
    QTest::addColumn<int>("generators");
    QTest::newRow("in the first generator") << GeneratorKind::Indices << 1;
    QTest::newRow("in the midst") << GeneratorKind::Define << 5;
    QTest::newRow("in the last generator") << GeneratorKind::Eds << 9;
}

void TestOutputFolder::anOutputFolderThatVanishesDuringTheRunAborts()
{
    QFETCH(GeneratorKind, kind);
    RunDesk desk({1});
    desk.set(u"generate_cpp_output"_s, u"1"_s);
    const QString folder = desk.path(u"out"_s);
    QVERIFY(QDir().mkpath(folder));
    desk.handler.setProject(desk.store, folder, u"project"_s);
    desk.fakes.plan(kind) = {.writesFile = true, .job = [folder] { QDir(folder).removeRecursively(); }};
    QCOMPARE(desk.run(), RunDesk::Result::OutputNotWritable);
    QTEST(int(desk.fakes.requests().size()), "generators");
    const QStringList told = desk.messagesOfTheRun();
    QCOMPARE(told.at(told.size() - 2), "ABORT - The output folder "_L1 + folder + " is not writeable."_L1);
    QVERIFY(!told.filter(u"<b>ERROR - Generation of fake.c failed."_s).isEmpty());
    QVERIFY(!desk.output.has(u"Generation finished."_s));
    QVERIFY(!desk.output.has(u"Generation completed."_s));
    QVERIFY(!QFile::exists(folder));
}

void TestOutputFolder::aFileThatTakesTheFoldersPlaceDuringTheRunAborts()
{
    RunDesk desk({1});
    const QString folder = desk.path(u"out"_s);
    QVERIFY(QDir().mkpath(folder));
    desk.handler.setProject(desk.store, folder, u"project"_s);
    desk.fakes.plan(GeneratorKind::TextDoc).job = [folder] {
        QDir(folder).removeRecursively();
        QFile(folder).open(QIODevice::WriteOnly);
    };
    QCOMPARE(desk.run(), RunDesk::Result::OutputNotWritable);
    QCOMPARE(desk.fakes.labels().join(u' '), u"Indices:0 TextDoc:0"_s);
}

void TestOutputFolder::aFailedSrdoGeneratorStopsTheRun()
{
    RunDesk desk({1});
    desk.object(0, 0x1301);
    desk.fakes.plan(GeneratorKind::Srdo) = {.failure = u"Template file not found."_s,
                                            .fileName = u"gen_srdo.c"_s};
    QCOMPARE(desk.run(), RunDesk::Result::SrdoFailed);
    const QStringList labels = desk.fakes.labels();
    QCOMPARE(labels.last(), u"Srdo:0"_s);
    const QStringList told = desk.messagesOfTheRun();
    QCOMPARE(told.last(3),
             QStringList({u"<b>ERROR - Generation of gen_srdo.c failed. Template file not found.</b>"_s,
                          u"Template file not found."_s, u"finished"_s}));
    QVERIFY(desk.progress.calls.isEmpty());
}

void TestOutputFolder::aTargetOfTheSrdoGeneratorThatCannotBeWrittenDoesNotStopTheRun()
{
    RunDesk desk({1});
    desk.object(0, 0x1301);
    desk.fakes.plan(GeneratorKind::Srdo).writable = false;
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    QVERIFY(desk.fakes.labels().contains(u"Define:0"_s));
}

void TestOutputFolder::otherFailedGeneratorsDoNotStopTheRun()
{
    RunDesk desk({1});
    for (const GeneratorKind kind : FakeGenerators::kinds)
        desk.fakes.plan(kind).failure = u"broken"_s;
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    QCOMPARE(desk.fakes.requests().size(), 9);
    QCOMPARE(desk.output.containing(u"<b>ERROR - "_s).size(), 9);
}

QTEST_GUILESS_MAIN(TestOutputFolder)
#include "tst_outputfolder.moc"
