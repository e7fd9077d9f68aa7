#include "generators/CodeWriter.h"
#include "generators/FileGenerator.h"
#include "store/StoreTest.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

/** A generator of one line of text that does on its way what a test asks for. */
class TestGenerator : public FileGenerator
{
    Q_OBJECT

public:
    using AbstractGenerator::formatExtendedValue;
    using AbstractGenerator::objectComment;

    std::function<bool(TestGenerator &)> onPrepare;
    std::function<void(TestGenerator &, CodeWriter &)> onWrite;

    bool isRunning() const { return m_running; }
    bool isStopRequested() const { return m_stopRequested; }
    QString target() const { return targetPath(fileName()); }
    ObjectDataBase &store() const { return *m_database; }
    bool refuse(const QString &reason)
    {
        fail(reason);
        return false;
    }
    void readOptions() { readMultiLineOption(); }

protected:
    QString fileName() const override { return u"gen_test.c"_s; }
    QString jobName() const override { return u"gen_job.c"_s; }
    bool prepare() override { return !onPrepare || onPrepare(*this); }
    void write(CodeWriter &out) override
    {
        out << u"/* generated */\n";
        if (onWrite)
            onWrite(*this, out);
    }
};

QByteArray content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("not there");
}

void put(const QString &path, const QByteArray &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write %s", qPrintable(path));
}

/** A store, a folder and a generator for them. */
struct Run
{
    Run()
    {
        generator.setDatabase(&store);
        generator.setOutputDir(folder.path());
        generator.setProjectName(u"pump"_s);
    }
    void toEnd()
    {
        QCOMPARE(generator.startGeneration(), GeneratorStatus::Success);
        generator.waitForEnd();
    }

    StoreTest::NewStore store;
    QTemporaryDir folder;
    TestGenerator generator;
};

} // namespace

/** The frame that all generators of one file share. */
class TestFileGenerator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void aRunWritesTheFile();
    void theRunHasTheNameOfItsJob();
    void theStoreTakesNoWritesDuringTheRun();
    void theFileIsCompleteWhenTheRunReportsItsEnd();
    void aRunMayBeDrivenWithoutAThread();
    void preparationComesBeforeTheFileIsEmptied();
    void aFailedPreparationLeavesTheFormerFile();
    void anUnwritableFileFailsTheRun();
    void aFullDiskFailsTheRun();
    void theFirstReasonIsTheOneTold();
    void aRunningJobIsToldToStop();
    void aTargetThatIsNotThereIsWritable();
    void extendedValuesAreThoseOfTheTables();
    void commentsNameTheLineInTheMultiLineForm_data();
    void commentsNameTheLineInTheMultiLineForm();
};

void TestFileGenerator::aRunWritesTheFile()
{
    Run run;
    put(run.generator.target(), "an older and longer text\n");
    run.generator.onWrite = [](TestGenerator &generator, CodeWriter &out) {
        out << u"static int lines = " << generator.store().getLines().size() << u";\n";
    };
    run.toEnd();
    QCOMPARE(content(run.generator.target()), QByteArray("/* generated */\nstatic int lines = 1;\n"));
    QVERIFY(!run.generator.isFailed());
    QCOMPARE(run.generator.errorString(), QString());
    QVERIFY(!run.generator.isRunning());
}

void TestFileGenerator::theRunHasTheNameOfItsJob()
{
    Run run;
    run.toEnd();
    QCOMPARE(run.generator.objectName(), u"gen_job.c"_s);
    QVERIFY(QFile::exists(run.folder.filePath(u"gen_test.c"_s)));
}

void TestFileGenerator::theStoreTakesNoWritesDuringTheRun()
{
    Run run;
    QList<bool> taken;
    const auto tryToWrite = [&taken](TestGenerator &generator) {
        taken.append(generator.store().setGeneralSetting(u"key"_s, u"value"_s));
        return true;
    };
    run.generator.onPrepare = tryToWrite;
    run.generator.onWrite = [&](TestGenerator &generator, CodeWriter &) { tryToWrite(generator); };
    run.toEnd();
    QCOMPARE(taken, (QList<bool>{false, false}));
    QCOMPARE(run.store.getGeneralSetting(u"key"_s), QString());
    QVERIFY(run.store.setGeneralSetting(u"key"_s, u"value"_s));
}

void TestFileGenerator::theFileIsCompleteWhenTheRunReportsItsEnd()
{
    Run run;
    run.generator.onWrite = [](TestGenerator &generator, CodeWriter &) { Q_EMIT generator.progress(25); };
    QList<int> percents;
    QByteArray atTheEnd;
    bool ranAtTheEnd = true;
    bool lockedAtTheEnd = true;
    connect(
        &run.generator, &AbstractGenerator::progress, &run.generator,
        [&](quint8 percent) {
            percents.append(percent);
            if (percent < 100)
                return;
            atTheEnd = content(run.generator.target());
            ranAtTheEnd = run.generator.isRunning();
            lockedAtTheEnd = run.store.isWriteLocked();
        },
        Qt::DirectConnection);
    run.toEnd();
    QCOMPARE(percents, (QList<int>{25, 100}));
    QCOMPARE(atTheEnd, QByteArray("/* generated */\n"));
    QVERIFY(!ranAtTheEnd);
    QVERIFY(!lockedAtTheEnd);
}

void TestFileGenerator::aRunMayBeDrivenWithoutAThread()
{
    Run run;
    const QSignalSpy progress(&run.generator, &AbstractGenerator::progress);
    run.generator.doJob();
    QCOMPARE(content(run.generator.target()), QByteArray("/* generated */\n"));
    QCOMPARE(progress.count(), 1);
    QCOMPARE(progress.at(0).at(0).toInt(), 100);
    QVERIFY(!run.store.isWriteLocked());
}

void TestFileGenerator::preparationComesBeforeTheFileIsEmptied()
{
    Run run;
    put(run.generator.target(), "former text\n");
    QByteArray seen;
    run.generator.onPrepare = [&seen](TestGenerator &generator) {
        seen = content(generator.target());
        return true;
    };
    run.toEnd();
    QCOMPARE(seen, QByteArray("former text\n"));
    QCOMPARE(content(run.generator.target()), QByteArray("/* generated */\n"));
}

void TestFileGenerator::aFailedPreparationLeavesTheFormerFile()
{
    Run run;
    put(run.generator.target(), "former text\n");
    run.generator.onPrepare = [](TestGenerator &generator) { return generator.refuse(u"no template"_s); };
    const QSignalSpy progress(&run.generator, &AbstractGenerator::progress);
    run.toEnd();
    QCoreApplication::processEvents();
    QVERIFY(run.generator.isFailed());
    QCOMPARE(run.generator.errorString(), u"no template"_s);
    QCOMPARE(content(run.generator.target()), QByteArray("former text\n"));
    QCOMPARE(progress.count(), 1);
    QVERIFY(!run.store.isWriteLocked());
}

void TestFileGenerator::anUnwritableFileFailsTheRun()
{
    Run run;
    QVERIFY(QDir(run.folder.path()).mkdir(u"gen_test.c"_s));
    bool written = false;
    run.generator.onWrite = [&written](TestGenerator &, CodeWriter &) { written = true; };
    run.toEnd();
    QVERIFY(run.generator.isFailed());
    QVERIFY2(run.generator.errorString().startsWith(
                 u"The file gen_test.c in %1 is not writable"_s.arg(run.folder.path())),
             qPrintable(run.generator.errorString()));
    QVERIFY(!written);
    QVERIFY(!run.store.isWriteLocked());
}

void TestFileGenerator::aFullDiskFailsTheRun()
{
    Run run;
    QVERIFY(QFile::link(u"/dev/full"_s, run.generator.target()));
    run.toEnd();
    QVERIFY(run.generator.isFailed());
    QVERIFY2(run.generator.errorString().startsWith(
                 u"The file gen_test.c in %1 could not be written"_s.arg(run.folder.path())),
             qPrintable(run.generator.errorString()));
}

void TestFileGenerator::theFirstReasonIsTheOneTold()
{
    Run run;
    QVERIFY(QFile::link(u"/dev/full"_s, run.generator.target()));
    run.generator.onWrite = [](TestGenerator &generator, CodeWriter &) {
        generator.refuse(u"no such type"_s);
    };
    run.toEnd();
    QCOMPARE(run.generator.errorString(), u"no such type"_s);
}

void TestFileGenerator::aRunningJobIsToldToStop()
{
    Run run;
    QCOMPARE(run.generator.requestStop(), GeneratorStatus::NotRunning);
    GeneratorStatus inside = GeneratorStatus::NotRunning;
    bool seen = false;
    run.generator.onWrite = [&](TestGenerator &generator, CodeWriter &out) {
        inside = generator.requestStop();
        seen = generator.isStopRequested();
        out << u"as it stands\n";
    };
    run.toEnd();
    QCOMPARE(inside, GeneratorStatus::Success);
    QVERIFY(seen);
    QCOMPARE(content(run.generator.target()), QByteArray("/* generated */\nas it stands\n"));
    QVERIFY(!run.generator.isFailed());
}

void TestFileGenerator::aTargetThatIsNotThereIsWritable()
{
    Run run;
    QVERIFY(run.generator.isOutputWritable());
    QVERIFY(!QFile::exists(run.generator.target()));
    put(run.generator.target(), "former text\n");
    QVERIFY(run.generator.isOutputWritable());
    QCOMPARE(content(run.generator.target()), QByteArray("former text\n"));
}

void TestFileGenerator::extendedValuesAreThoseOfTheTables()
{
    QCOMPARE(TestGenerator::formatExtendedValue(22, 0x010203), u"U24_SET(0x01,0x02,0x03)"_s);
    QCOMPARE(TestGenerator::formatExtendedValue(16, quint64(-1)), u"I24_SET(0xff,0xff,0xff)"_s);
    QCOMPARE(TestGenerator::formatExtendedValue(12, 1), u"U48_SET(0x00,0x00,0x00,0x00,0x00,0x01)"_s);
    QCOMPARE(TestGenerator::formatExtendedValue(7, 5), u"0"_s);
    QCOMPARE(TestGenerator::formatExtendedValue(28, 5), u"0"_s);
}

void TestFileGenerator::commentsNameTheLineInTheMultiLineForm_data()
{
    QTest::addColumn<bool>("multiLine");
    QTest::addColumn<QString>("generateMl");
    QTest::addColumn<QString>("comment");
    QTest::newRow("single line") << false << u"false"_s << u" /* 0x2000:3 */"_s;
    QTest::newRow("several lines") << true << QString() << u" /* 1-0x2000:3 */"_s;
    QTest::newRow("form asked for") << false << u"True"_s << u" /* 1-0x2000:3 */"_s;
}

void TestFileGenerator::commentsNameTheLineInTheMultiLineForm()
{
    QFETCH(bool, multiLine);
    QFETCH(QString, generateMl);
    Run run;
    run.store.setMiscSetting(u"generateML"_s, generateMl);
    run.generator.setMultiLine(multiLine);
    run.generator.readOptions();
    QTEST(run.generator.objectComment(0x01200003), "comment");
}

QTEST_GUILESS_MAIN(TestFileGenerator)
#include "tst_filegenerator.moc"
