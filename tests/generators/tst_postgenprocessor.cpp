#include "generators/PostGenDesk.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTimer>

#include <ctime>

using namespace StoreTest;
using namespace Qt::StringLiterals;

namespace {

const QString completed = u"Generation completed."_s;

} // namespace

/** The user's command, the EDS checker and the line endings that follow a generation. */
class TestPostGenProcessor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void init() { m_current = QDir::currentPath(); }
    void cleanup() { QDir::setCurrent(m_current); }

    void theProjectSignsFollowFolderAndNameOfTheRun();

    void withoutACommandTheStepsPassAtOnce();
    void theSignalsOfTheStoreAreReleased();
    void aCommandRunsInTheOutputFolderWithItsArguments();
    void theApplicationMovesToTheOutputFolder();
    void aCommandThatIsWaitedForTellsItsExitCode();
    void aFailedCommandIsWarnedOf();
    void aCommandThatCrashesIsWarnedOf();
    void theExitCodeOfAFormerRunIsForgotten();
    void aCommandThatIsNotWaitedForNeverWarns();
    void aCommandThatIsNotWaitedForOutlivesTheProcessor();
    void theOutputsOfTheCommandHaveAHeadingEach();
    void theHeadingsComeOnceARunAndAgainInTheNext();
    void aBlockOfOutputIsOneLine();
    void aCommandThatDoesNotExistIsToldOf();
    void aCommandThatStillRunsIsNotStartedTwice();
    void theProgressOfACommandThatIsWaitedFor();
    void aHiddenRunShowsNoProgress();
    void cancellingEndsTheCommand();
    void cancellingEndsACommandThatWillNotStop();
    void cancellingWithoutACommandChangesNothing();
    void waitingForTheCommandLeavesTheProcessorAlone();
    void aCommandEndsWhenTheApplicationQuits();

    void lineEndingsAreConvertedBehindTheCommand();

private:
    QString m_current;
};

// --- The command's texts -------------------------------------------------------------------------

void TestPostGenProcessor::theProjectSignsFollowFolderAndNameOfTheRun()
{
    PostGenDesk desk;
    const QString opened = desk.scripts.path(u"elsewhere.vexp"_s);
    QVERIFY(desk.store->saveProject(opened));
    QCOMPARE(desk.store->projectPath(), opened);
    desk.command(desk.scripts.script(u"tell"_s, "echo \"$1\""), u"%P"_s, true);
    QVERIFY(desk.runToItsEnd());
    QCOMPARE(desk.output.containing(u"raw:"_s).join(u'|'),
             QString("raw:\t"_L1 + desk.folder.path() + "/project.vexp"_L1));
}

// --- The command ---------------------------------------------------------------------------------

void TestPostGenProcessor::withoutACommandTheStepsPassAtOnce()
{
    PostGenDesk desk;
    QSignalSpy ended(&desk.processor, &PostGenProcessor::ended);
    desk.processor.start();
    QCOMPARE(ended.count(), 1);
    QCOMPARE(desk.output.all, QStringList{completed});
}

void TestPostGenProcessor::theSignalsOfTheStoreAreReleased()
{
    PostGenDesk desk;
    desk.store->blockSignals(true);
    desk.processor.start();
    QVERIFY(!desk.store->signalsBlocked());
}

void TestPostGenProcessor::aCommandRunsInTheOutputFolderWithItsArguments()
{
    PostGenDesk desk;
    desk.command(desk.scripts.script(u"tell"_s, "printf '%s|' \"$(pwd)\" \"$#\" \"$@\" > told"),
                 u"-x %N  y"_s, true);
    QVERIFY(desk.runToItsEnd());
    const QString folder = QFileInfo(desk.folder.path()).canonicalFilePath();
    QCOMPARE(QString::fromUtf8(desk.read(u"told"_s)), QString(folder + "|4|-x|project.vexp||y|"_L1));
}

void TestPostGenProcessor::theApplicationMovesToTheOutputFolder()
{
    PostGenDesk desk;
    desk.processor.start();
    QCOMPARE(QDir::currentPath(), m_current); // no command, no need
    desk.command(desk.scripts.script(u"nothing"_s, "exit 0"), {}, true);
    QVERIFY(desk.runToItsEnd());
    QCOMPARE(QDir::currentPath(), QFileInfo(desk.folder.path()).canonicalFilePath());
}

void TestPostGenProcessor::aCommandThatIsWaitedForTellsItsExitCode()
{
    PostGenDesk desk;
    desk.command(desk.scripts.script(u"well"_s, "exit 0"), {}, true);
    desk.processor.start();
    QCOMPARE(desk.output.all, QStringList({u"Post generation process finished with code 0"_s, completed}));
}

void TestPostGenProcessor::aFailedCommandIsWarnedOf()
{
    PostGenDesk desk;
    desk.command(desk.scripts.script(u"badly"_s, "exit 3"), {}, true);
    desk.processor.start();
    QCOMPARE(desk.output.all,
             QStringList({u"Post generation process finished with code 3"_s,
                          u"<b>Warning: Generation completed, but post gen process returned 3.</b>"_s}));
}

void TestPostGenProcessor::aCommandThatCrashesIsWarnedOf()
{
    PostGenDesk desk;
    desk.command(desk.scripts.script(u"crash"_s, "kill -9 $$"), {}, true);
    QVERIFY(desk.runToItsEnd());
    QVERIFY(!desk.output.has(completed));
    QVERIFY(desk.output.all.last().startsWith(u"<b>Warning: Generation completed, but"_s));
}

void TestPostGenProcessor::theExitCodeOfAFormerRunIsForgotten()
{
    PostGenDesk desk;
    desk.command(desk.scripts.script(u"badly"_s, "exit 3"), {}, true);
    desk.processor.start();
    desk.setMisc(u"postGenEnabled"_s, u"0"_s);
    desk.output.clear();
    desk.processor.start();
    QCOMPARE(desk.output.all, QStringList{completed});
}

void TestPostGenProcessor::aCommandThatIsNotWaitedForNeverWarns()
{
    PostGenDesk desk;
    desk.command(desk.scripts.script(u"badly"_s, "touch '" + desk.path(u"done"_s).toUtf8() + "'; exit 3"), {},
                 false);
    desk.processor.start();
    QCOMPARE(desk.output.all, QStringList{completed});
    QTRY_VERIFY_WITH_TIMEOUT(desk.exists(u"done"_s), PostGenDesk::giveUpMs);
    QTest::qWait(200); // its end arrives, and is nobody's matter
    QCOMPARE(desk.output.all, QStringList{completed});
}

void TestPostGenProcessor::aCommandThatIsNotWaitedForOutlivesTheProcessor()
{
    const ScriptFolder scripts;
    const QByteArray done = scripts.path(u"done"_s).toUtf8();
    {
        PostGenDesk desk;
        desk.command(scripts.script(u"long"_s, "sleep 0.3; touch '" + done + "'"), {}, false);
        desk.processor.start();
    }
    QVERIFY(!scripts.exists(u"done"_s));
    QTRY_VERIFY_WITH_TIMEOUT(scripts.exists(u"done"_s), PostGenDesk::giveUpMs);
}

void TestPostGenProcessor::theOutputsOfTheCommandHaveAHeadingEach()
{
    PostGenDesk desk;
    desk.command(desk.scripts.script(u"talk"_s, "echo to output; sleep 0.2; echo to errors >&2"), {}, true);
    QVERIFY(desk.runToItsEnd());
    QCOMPARE(desk.output.all,
             QStringList({u"Post generation process standard output:\n"_s, u"raw:\tto output"_s,
                          u"Post generation process error output:\n"_s, u"raw:\tto errors"_s,
                          u"Post generation process finished with code 0"_s, completed}));
}

void TestPostGenProcessor::theHeadingsComeOnceARunAndAgainInTheNext()
{
    PostGenDesk desk;
    desk.command(desk.scripts.script(u"talk"_s, "echo one; sleep 0.2; echo two"), {}, true);
    const QString heading = u"Post generation process standard output:\n"_s;
    QVERIFY(desk.runToItsEnd());
    QCOMPARE(desk.output.all.count(heading), 1);
    QVERIFY(desk.output.has(u"raw:\tone"_s));
    QVERIFY(desk.output.has(u"raw:\ttwo"_s));
    QVERIFY(desk.runToItsEnd());
    QCOMPARE(desk.output.all.count(heading), 2);
}

void TestPostGenProcessor::aBlockOfOutputIsOneLine()
{
    PostGenDesk desk;
    desk.command(desk.scripts.script(u"talk"_s, "printf '  a \\n\\n\\tGr\\303\\266\\303\\237e  c\\n'"), {},
                 true);
    QVERIFY(desk.runToItsEnd());
    QVERIFY(desk.output.has(u"raw:\ta Größe c"_s));
}

void TestPostGenProcessor::aCommandThatDoesNotExistIsToldOf()
{
    for (const bool wait : {true, false}) {
        PostGenDesk desk;
        desk.command(desk.scripts.path(u"missing"_s), {}, wait);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^Could not start post gen process\\. "_s));
        desk.processor.start();
        QCOMPARE(desk.progress.calls.first(),
                 u"message CANopen NodeSmith|Could not start post gen process."_s);
        QVERIFY(!desk.progress.details.first().isEmpty());
        QCOMPARE(desk.output.all, QStringList{completed});
    }
}

void TestPostGenProcessor::aCommandThatStillRunsIsNotStartedTwice()
{
    PostGenDesk desk;
    const QByteArray log = desk.path(u"log"_s).toUtf8();
    const QByteArray go = desk.path(u"go"_s).toUtf8();
    desk.command(desk.scripts.script(u"long"_s,
                                     "echo started >> '" + log + "'; while [ ! -e '" + go
                                         + "' ]; do sleep 0.05; done; echo over >> '" + log + "'"),
                 {}, false);
    desk.processor.start();
    QTRY_COMPARE_WITH_TIMEOUT(desk.read(u"log"_s), QByteArray("started\n"), PostGenDesk::giveUpMs);
    desk.setMisc(u"postGenWait"_s, u"1"_s);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"already running"_s));
    desk.progress.calls.clear();
    desk.processor.start();
    QCOMPARE(desk.progress.calls.first(),
             u"message CANopen NodeSmith|Post generation process is already running."_s);
    QCOMPARE(desk.output.all, QStringList({completed, completed}));
    desk.write(u"go"_s, {});
    QTRY_COMPARE_WITH_TIMEOUT(desk.read(u"log"_s), QByteArray("started\nover\n"), PostGenDesk::giveUpMs);
    QTest::qWait(200);
    QCOMPARE(desk.output.all, QStringList({completed, completed})); // its end is not the second run's
}

void TestPostGenProcessor::theProgressOfACommandThatIsWaitedFor()
{
    PostGenDesk desk;
    desk.processor.setHidden(false);
    desk.command(desk.scripts.script(u"well"_s, "exit 0"), {}, true);
    desk.processor.start();
    QCOMPARE(
        desk.progress.calls,
        QStringList({u"show"_s, u"label Post generation process running ... "_s, u"cancel Cancel process"_s,
                     u"show"_s, u"cancel Cancel process"_s, u"adjust"_s, u"label EDS Checker running"_s,
                     u"show"_s, u"label EDS Checker running"_s, u"show"_s, u"hide"_s}));
}

void TestPostGenProcessor::aHiddenRunShowsNoProgress()
{
    PostGenDesk desk;
    desk.command(desk.scripts.script(u"well"_s, "exit 0"), {}, true);
    desk.processor.start();
    QVERIFY(!desk.progress.calls.contains(u"show"_s));
    QVERIFY(desk.progress.calls.contains(u"hide"_s));
}

void TestPostGenProcessor::cancellingEndsTheCommand()
{
    PostGenDesk desk;
    desk.command(desk.scripts.script(u"long"_s, "exec sleep 60"), {}, true);
    QTimer::singleShot(100, &desk.progress, &PostGenProgressHandler::cancelProcessTriggered);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(desk.runToItsEnd());
    QVERIFY(timer.elapsed() < PostGenDesk::giveUpMs);
    QVERIFY(!desk.output.has(completed));
    QVERIFY(desk.output.all.last().startsWith(u"<b>Warning: Generation completed, but"_s));
    QCOMPARE(desk.progress.calls.last(3), QStringList({u"hide"_s, u"cancel Cancel process"_s, u"adjust"_s}));
}

void TestPostGenProcessor::cancellingEndsACommandThatWillNotStop()
{
    PostGenDesk desk;
    desk.command(desk.scripts.script(u"stubborn"_s, "trap '' TERM; while :; do sleep 0.05; done"), {}, true);
    QTimer::singleShot(300, &desk.progress, &PostGenProgressHandler::cancelProcessTriggered);
    QVERIFY(desk.runToItsEnd());
    QVERIFY(desk.output.all.last().startsWith(u"<b>Warning: Generation completed, but"_s));
}

void TestPostGenProcessor::cancellingWithoutACommandChangesNothing()
{
    PostGenDesk desk;
    desk.progress.cancelProcessTriggered();
    QCOMPARE(desk.progress.calls, QStringList({u"cancel Cancel process"_s, u"adjust"_s}));
    QVERIFY(desk.output.all.isEmpty());
}

void TestPostGenProcessor::waitingForTheCommandLeavesTheProcessorAlone()
{
    PostGenDesk desk;
    desk.command(desk.scripts.script(u"long"_s, "sleep 0.6"), {}, true);
    const std::clock_t before = std::clock();
    desk.processor.start();
    const double usedMs = 1000.0 * double(std::clock() - before) / CLOCKS_PER_SEC;
    QVERIFY(desk.output.has(completed));
    QVERIFY2(usedMs < 150, qPrintable(QString::number(usedMs)));
}

void TestPostGenProcessor::aCommandEndsWhenTheApplicationQuits()
{
    PostGenDesk desk;
    desk.command(desk.scripts.script(u"long"_s, "exec sleep 60"), {}, true);
    QElapsedTimer timer;
    timer.start();
    QTimer::singleShot(0, this, [&desk] {
        QTimer::singleShot(100, QCoreApplication::instance(), &QCoreApplication::quit);
        desk.processor.start();
    });
    QCoreApplication::exec();
    QVERIFY(timer.elapsed() < PostGenDesk::giveUpMs);
    QVERIFY(!desk.output.has(completed));
    QVERIFY(desk.output.all.last().startsWith(u"<b>Warning: Generation completed, but"_s));
}

// --- Line endings --------------------------------------------------------------------------------

void TestPostGenProcessor::lineEndingsAreConvertedBehindTheCommand()
{
    PostGenDesk desk;
    RunDesk::setUser(u"General/line_ending_index"_s, 1);
    desk.command(desk.scripts.script(u"write"_s, "echo a > gen_define.h"), {}, true);
    desk.processor.start();
    QCOMPARE(desk.read(u"gen_define.h"_s), QByteArray("a\r\n"));
}

QTEST_GUILESS_MAIN(TestPostGenProcessor)
#include "tst_postgenprocessor.moc"
