#include "generators/EdsCheckerWrapper.h"
#include "generators/PostGenProcessor.h"
#include "generators/RunDesk.h"
#include "generators/ScriptFolder.h"

#include <QElapsedTimer>
#include <QSignalSpy>

using namespace StoreTest;
using namespace Qt::StringLiterals;

namespace {

constexpr int giveUpMs = 20000; // how long a test waits before it calls a hang a failure

const QString completed = u"Generation completed."_s;
const QString finishedText = u"EDS Checker finished.\n"_s;

/** A project whose device descriptions are checked by a script. */
class EdsDesk : public RunDesk
{
public:
    explicit EdsDesk(const QByteArray &checker = "echo checked \"$(basename \"$2\")\"") : RunDesk({1})
    {
        setUser(u"EDSChecker/checkeds"_s, true);
        setUser(u"EDSChecker/EDSCheckerPath"_s, scripts.script(u"checker"_s, checker));
        processor.setProject(store, folder.path(), u"project"_s);
        processor.setHidden(true);
    }
    bool runToItsEnd()
    {
        processor.start();
        return processor.waitForEnd(giveUpMs);
    }

    ScriptFolder scripts;
    PostGenProcessor processor{&output, &progress};
};

} // namespace

/** The external check of the generated device descriptions. */
class TestEdsChecker : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }

    void theWrapperTakesAnExistingProgramOnly();
    void aRelativeProgramIsStartedFromItsOwnFolder();
    void theWrapperNeedsTheEdsFile();
    void theWrapperTellsAProgramThatDoesNotStart();
    void theCheckerGetsFileAndProfileAndRunsInItsFolder();
    void theOutputHoldsErrorsToo();
    void theOutputIsLatin1();
    void deletingTheWrapperEndsTheCheck();

    void descriptionsAreCheckedAndTold();
    void theDescriptionsOfLines0To7AreChecked();
    void theStepsGoOnWhenTheLastCheckHasEnded();
    void withoutDescriptionsTheStepsPassAtOnce();
    void theCheckIsSwitchedOffAtFirst();
    void theCheckIsLeftOutOnRequest();
    void aRunHandsTheRequestOn();
    void aCheckerThatIsMissingIsToldForEachFile();
    void aCheckerThatCrashesEndsTheCheck();
    void aNewRunDropsTheChecksOfTheFormerOne();
    void lineEndingsFollowTheCheck();
    void aCheckThatNeverEndsIsGivenUp();
    void aHiddenRunWaitsForItsChecks();
    void aRunWithAWindowDoesNotWaitForItsChecks();
};

// --- The wrapper ---------------------------------------------------------------------------------

void TestEdsChecker::theWrapperTakesAnExistingProgramOnly()
{
    const ScriptFolder scripts;
    const QString eds = scripts.script(u"a.eds"_s, {});
    EdsCheckerWrapper wrapper;
    QVERIFY(!wrapper.start(eds)); // no program yet
    wrapper.setProgram(scripts.path(u"missing"_s));
    QVERIFY(!wrapper.start(eds));
    const QString checker = scripts.script(u"checker"_s, "exit 0");
    wrapper.setProgram(checker);
    wrapper.setProgram(scripts.path(u"missing"_s)); // the former one stays
    QSignalSpy finished(&wrapper, &EdsCheckerWrapper::finished);
    QVERIFY(wrapper.start(eds));
    QVERIFY(finished.wait(giveUpMs));
}

void TestEdsChecker::aRelativeProgramIsStartedFromItsOwnFolder()
{
    const ScriptFolder scripts;
    const QString checker = scripts.script(u"checker"_s, "pwd; echo \"$4\"");
    const QString folder = QFileInfo(checker).absolutePath();
    EdsCheckerWrapper wrapper;
    wrapper.setProgram(QDir().relativeFilePath(checker));
    QSignalSpy finished(&wrapper, &EdsCheckerWrapper::finished);
    QVERIFY(wrapper.start(scripts.script(u"a.eds"_s, {})));
    QVERIFY(finished.wait(giveUpMs));
    QCOMPARE(wrapper.output(),
             QString(QFileInfo(folder).canonicalFilePath() + u'\n' + folder + "/v301.codb\n"_L1));
}

void TestEdsChecker::theWrapperNeedsTheEdsFile()
{
    const ScriptFolder scripts;
    EdsCheckerWrapper wrapper;
    wrapper.setProgram(scripts.script(u"checker"_s, "exit 0"));
    QVERIFY(!wrapper.start(scripts.path(u"missing.eds"_s)));
    QVERIFY(!wrapper.start(QString()));
}

void TestEdsChecker::theWrapperTellsAProgramThatDoesNotStart()
{
    const ScriptFolder scripts;
    QFile text(scripts.path(u"text"_s));
    QVERIFY(text.open(QIODevice::WriteOnly));
    text.close();
    EdsCheckerWrapper wrapper;
    wrapper.setProgram(text.fileName()); // exists, but is no program
    QVERIFY(!wrapper.start(text.fileName()));
}

void TestEdsChecker::theCheckerGetsFileAndProfileAndRunsInItsFolder()
{
    const ScriptFolder scripts;
    const QString eds = scripts.script(u"a b.eds"_s, {});
    EdsCheckerWrapper wrapper;
    wrapper.setProgram(scripts.script(u"checker"_s, "printf '%s|' \"$@\" > told; pwd > where"));
    QSignalSpy finished(&wrapper, &EdsCheckerWrapper::finished);
    QVERIFY(wrapper.start(eds));
    QVERIFY(finished.wait(giveUpMs));
    const QString folder = QFileInfo(eds).absolutePath();
    QCOMPARE(QString::fromUtf8(scripts.read(u"told"_s)),
             QString("-e|"_L1 + eds + "|-d|"_L1 + folder + "/v301.codb|"_L1));
    QCOMPARE(QString::fromUtf8(scripts.read(u"where"_s)).trimmed(), QFileInfo(folder).canonicalFilePath());
}

void TestEdsChecker::theOutputHoldsErrorsToo()
{
    const ScriptFolder scripts;
    EdsCheckerWrapper wrapper;
    wrapper.setProgram(scripts.script(u"checker"_s, "echo found; echo failed >&2"));
    QSignalSpy finished(&wrapper, &EdsCheckerWrapper::finished);
    QVERIFY(wrapper.start(scripts.script(u"a.eds"_s, {})));
    QVERIFY(finished.wait(giveUpMs));
    QCOMPARE(wrapper.output(), u"found\nfailed\n"_s);
}

void TestEdsChecker::theOutputIsLatin1()
{
    const ScriptFolder scripts;
    EdsCheckerWrapper wrapper;
    wrapper.setProgram(scripts.script(u"checker"_s, "printf 'Gr\\366\\337e'"));
    QSignalSpy finished(&wrapper, &EdsCheckerWrapper::finished);
    QVERIFY(wrapper.start(scripts.script(u"a.eds"_s, {})));
    QVERIFY(finished.wait(giveUpMs));
    QCOMPARE(wrapper.output(), u"Größe"_s);
}

void TestEdsChecker::deletingTheWrapperEndsTheCheck()
{
    const ScriptFolder scripts;
    QElapsedTimer timer;
    timer.start();
    {
        EdsCheckerWrapper wrapper;
        wrapper.setProgram(scripts.script(u"checker"_s, "exec sleep 60"));
        QVERIFY(wrapper.start(scripts.script(u"a.eds"_s, {})));
    }
    QVERIFY(timer.elapsed() < giveUpMs);
}

// --- The step ------------------------------------------------------------------------------------

void TestEdsChecker::descriptionsAreCheckedAndTold()
{
    EdsDesk desk;
    desk.write(u"project.eds"_s, "x");
    QVERIFY(desk.runToItsEnd());
    QCOMPARE(desk.output.all,
             QStringList({u"EDS Checker started"_s, u"EDS Checker result:\n\nchecked project.eds\n"_s,
                          finishedText, completed}));
}

void TestEdsChecker::theDescriptionsOfLines0To7AreChecked()
{
    EdsDesk desk;
    for (int line = 0; line < 10; ++line)
        desk.write(u"project_%1.eds"_s.arg(line), "x");
    QVERIFY(desk.runToItsEnd());
    QStringList expected;
    for (int line = 0; line < 8; ++line)
        expected.append(u"EDS Checker started for line %1"_s.arg(line));
    QCOMPARE(desk.output.containing(u"started"_s), expected);
    QCOMPARE(desk.output.all.count(finishedText), 8);
    QVERIFY(desk.output.containing(u"project_8"_s).isEmpty());
}

void TestEdsChecker::theStepsGoOnWhenTheLastCheckHasEnded()
{
    EdsDesk desk("case \"$2\" in *_1.eds) sleep 0.3;; esac");
    desk.write(u"project_0.eds"_s, "x");
    desk.write(u"project_1.eds"_s, "x");
    desk.processor.start();
    QVERIFY(!desk.output.has(completed));
    QVERIFY(desk.processor.waitForEnd(giveUpMs));
    QCOMPARE(desk.output.all.last(2), QStringList({finishedText, completed}));
    QCOMPARE(desk.output.all.count(completed), 1);
}

void TestEdsChecker::withoutDescriptionsTheStepsPassAtOnce()
{
    EdsDesk desk;
    desk.processor.start();
    QCOMPARE(desk.output.all, QStringList{completed});
}

void TestEdsChecker::theCheckIsSwitchedOffAtFirst()
{
    EdsDesk desk;
    QSettings(u"korvel"_s, QCoreApplication::applicationName()).remove(u"EDSChecker/checkeds"_s);
    desk.write(u"project.eds"_s, "x");
    desk.processor.start();
    QCOMPARE(desk.output.all, QStringList{completed});
}

void TestEdsChecker::theCheckIsLeftOutOnRequest()
{
    EdsDesk desk;
    desk.write(u"project.eds"_s, "x");
    desk.processor.setSkipEdsCheck(true);
    desk.processor.start();
    QCOMPARE(desk.output.all, QStringList{completed});
}

void TestEdsChecker::aRunHandsTheRequestOn()
{
    EdsDesk desk;
    desk.write(u"project.eds"_s, "x");
    desk.handler.setHidden(true);
    desk.handler.setSkipEdsCheck(true);
    desk.run();
    QVERIFY(desk.output.containing(u"EDS Checker"_s).isEmpty());
    desk.handler.setSkipEdsCheck(false);
    desk.run();
    QVERIFY(desk.output.has(u"EDS Checker started"_s));
}

void TestEdsChecker::aCheckerThatIsMissingIsToldForEachFile()
{
    EdsDesk desk;
    RunDesk::setUser(u"EDSChecker/EDSCheckerPath"_s, desk.scripts.path(u"missing"_s));
    desk.write(u"project.eds"_s, "x");
    desk.write(u"project_3.eds"_s, "x");
    desk.processor.start();
    const QString failed = u"Start of EDS Checker failed"_s;
    QCOMPARE(desk.output.all, QStringList({failed, failed, completed}));
}

void TestEdsChecker::aCheckerThatCrashesEndsTheCheck()
{
    EdsDesk desk("kill -9 $$");
    desk.write(u"project.eds"_s, "x");
    QVERIFY(desk.runToItsEnd());
    QVERIFY(desk.output.has(finishedText));
    QCOMPARE(desk.output.all.last(), completed);
}

void TestEdsChecker::aNewRunDropsTheChecksOfTheFormerOne()
{
    EdsDesk desk("exec sleep 60");
    desk.write(u"project.eds"_s, "x");
    desk.processor.start();
    RunDesk::setUser(u"EDSChecker/EDSCheckerPath"_s, desk.scripts.script(u"quick"_s, "echo new"));
    QVERIFY(desk.runToItsEnd());
    QCOMPARE(desk.output.all,
             QStringList({u"EDS Checker started"_s, u"EDS Checker started"_s,
                          u"EDS Checker result:\n\nnew\n"_s, finishedText, completed}));
}

void TestEdsChecker::lineEndingsFollowTheCheck()
{
    EdsDesk desk("cat gen_define.h 2>/dev/null; cp \"$(dirname \"$2\")/gen_define.h\" seen");
    RunDesk::setUser(u"General/line_ending_index"_s, 1);
    desk.write(u"project.eds"_s, "x");
    desk.write(u"gen_define.h"_s, "a\n");
    QVERIFY(desk.runToItsEnd());
    QCOMPARE(desk.scripts.read(u"seen"_s), QByteArray("a\n"));
    QCOMPARE(desk.read(u"gen_define.h"_s), QByteArray("a\r\n"));
}

void TestEdsChecker::aCheckThatNeverEndsIsGivenUp()
{
    EdsDesk desk("exec sleep 60");
    RunDesk::setUser(u"General/line_ending_index"_s, 1);
    desk.write(u"project.eds"_s, "x");
    desk.write(u"project_1.eds"_s, "x");
    desk.write(u"gen_define.h"_s, "a\n");
    desk.processor.start();
    QVERIFY(!desk.processor.waitForEnd(100));
    QCOMPARE(desk.output.all,
             QStringList({u"EDS Checker started"_s, u"EDS Checker started for line 1"_s, completed}));
    QCOMPARE(desk.read(u"gen_define.h"_s),
             QByteArray("a\r\n")); // what follows the check is done all the same
    QVERIFY(desk.processor.waitForEnd(0));
    QCOMPARE(desk.output.all.count(completed), 1);
}

void TestEdsChecker::aHiddenRunWaitsForItsChecks()
{
    EdsDesk desk("sleep 0.3; echo late");
    desk.write(u"project.eds"_s, "x");
    desk.handler.setHidden(true);
    desk.run();
    QCOMPARE(desk.output.all.last(4),
             QStringList({u"EDS Checker result:\n\nlate\n"_s, finishedText, completed, u"finished"_s}));
}

void TestEdsChecker::aRunWithAWindowDoesNotWaitForItsChecks()
{
    EdsDesk desk("sleep 0.3; echo late");
    desk.write(u"project.eds"_s, "x");
    desk.run();
    QCOMPARE(desk.output.all.last(2), QStringList({u"EDS Checker started"_s, u"finished"_s}));
    QTRY_COMPARE_WITH_TIMEOUT(desk.output.all.last(), completed, giveUpMs);
}

QTEST_GUILESS_MAIN(TestEdsChecker)
#include "tst_edschecker.moc"
