#include "app/BatchTest.h"
#include "check/CheckProject.h"

#include <QRegularExpression>

#include <csignal>

using namespace Qt::StringLiterals;

/** A batch run as a process: its log, its end by a signal, and what it leaves behind. */
class TestBatchProcess : public BatchTest
{
    Q_OBJECT

private Q_SLOTS:
    void aRunLeavesNoWorkingFiles();
    void aTerminatedRunLeavesNoWorkingFiles_data();
    void aTerminatedRunLeavesNoWorkingFiles();
    void anAbortedRunSavesNothingMore();
    void aStartWithoutDisplayEndsWithOneClearLine_data();
    void aStartWithoutDisplayEndsWithOneClearLine();
    void whatASaveLeavesOutIsToldWithoutWaiting();
    void theLogOfAHiddenRunHasNoNoise();
    void debugLinesComeOnlyWhenAskedFor_data();
    void debugLinesComeOnlyWhenAskedFor();
    void everyLogLineHasTimeAndKind();
};

namespace {

const QString waiting = u"the program waits for an answer to this box, which no display shows"_s;
const QString noDisplay = u"no display; start with -hidden for a run without window"_s;

} // namespace

void TestBatchProcess::aRunLeavesNoWorkingFiles()
{
    const auto process = start(canopen, {canopenProject(u"a.vexp"_s), u"-g"_s, u"-hidden"_s});
    QVERIFY(!logUntil(*process, generated).isEmpty());
    QVERIFY(!workingFiles().isEmpty()); // while it runs there are some
    QVERIFY(process->waitForFinished(runTimeoutMs));
    QCOMPARE(workingFiles(), QStringList());
    QCOMPARE(temporaryFiles(), QStringList());
}

void TestBatchProcess::aTerminatedRunLeavesNoWorkingFiles_data()
{
    const QString idle = u"runEventLoop"_s;
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("reached");
    QTest::addColumn<int>("signal");
    QTest::newRow("idle") << QStringList{u"a.vexp"_s, u"-hidden"_s} << idle << SIGTERM;
    QTest::newRow("interrupt") << QStringList{u"a.vexp"_s, u"-hidden"_s} << idle << SIGINT;
    QTest::newRow("box at the start") << QStringList{u"-g"_s, u"-hidden"_s} << waiting << SIGTERM;
    QTest::newRow("file dialog") << QStringList{u"-j1939"_s, u"-hidden"_s, u"-s"_s} << waiting << SIGTERM;
    QTest::newRow("generation") << QStringList{u"a.vexp"_s, u"-hidden"_s, u"-g"_s} << generated << SIGTERM;
}

/** The exit code of an aborted run is that of the shell: 128 and the signal. */
void TestBatchProcess::aTerminatedRunLeavesNoWorkingFiles()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, reached);
    QFETCH(const int, signal);
    QVERIFY(!canopenProject(u"a.vexp"_s).isEmpty());
    m_environment.insert(u"NODESMITH_DEBUG"_s, u"1"_s);
    const auto process = start(canopen, arguments);
    QVERIFY(!logUntil(*process, reached).isEmpty());
    QVERIFY(!workingFiles().isEmpty());
    if (signal == SIGTERM)
        process->terminate();
    else
        QCOMPARE(kill(pid_t(process->processId()), signal), 0);
    QVERIFY(process->waitForFinished(runTimeoutMs));
    QCOMPARE(process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(process->exitCode(), 128 + signal);
    QCOMPARE(workingFiles(), QStringList());
    QCOMPARE(temporaryFiles(), QStringList());
}

void TestBatchProcess::anAbortedRunSavesNothingMore()
{
    // The network tool's step waits for half a second before the save.
    const QString project = canopenProject(u"a.vexp"_s);
    m_environment.insert(u"NODESMITH_DEBUG"_s, u"1"_s);
    const auto process = start(canopen, {project, u"-hidden"_s, u"-lvx"_s, u"-s"_s, u"-g"_s});
    QVERIFY(!logUntil(*process, u"runEventLoop"_s).isEmpty());
    process->terminate();
    QVERIFY(process->waitForFinished(runTimeoutMs));
    QCOMPARE(process->exitCode(), 128 + SIGTERM);
    QVERIFY(!QFile::exists(path(u"a.vexp.bak"_s)));
    QVERIFY(!QString::fromUtf8(process->readAllStandardError()).contains(generated));
}

void TestBatchProcess::aStartWithoutDisplayEndsWithOneClearLine_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("plain") << QStringList{};
    QTest::newRow("batch without -hidden") << QStringList{u"a.vexp"_s, u"-now"_s, u"-g"_s};
}

void TestBatchProcess::aStartWithoutDisplayEndsWithOneClearLine()
{
    QFETCH(const QStringList, arguments);
    const Result result = run(canopen, arguments);
    QVERIFY2(result.ended, qPrintable(result.log));
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.log.endsWith(QString(" error: "_L1 + noDisplay + u'\n')), qPrintable(result.log));
    QCOMPARE(result.log.count(u'\n'), 1);
}

void TestBatchProcess::whatASaveLeavesOutIsToldWithoutWaiting()
{
    QFile device(path(u"device.dcf"_s));
    QVERIFY(device.open(QIODevice::WriteOnly));
    device.write("[2000]\nParameterName=Speed\nDataType=7\nAccessType=rw\nDenotation=Pump 3\n");
    device.close();
    const Result result = run(
        canopen,
        {canopenProject(u"a.vext"_s), u"-hidden"_s, u"-now"_s, u"-i"_s, u"device.dcf"_s, u"-s"_s, u"-g"_s});
    QVERIFY2(result.ended, qPrintable(result.log));
    QVERIFY2(result.log.contains(u"The text form does not hold everything of this project."_s),
             qPrintable(result.log));
    QVERIFY2(!result.log.contains(waiting), qPrintable(result.log));
}

void TestBatchProcess::theLogOfAHiddenRunHasNoNoise()
{
    const auto process = start(canopen, {u"-g"_s, u"-hidden"_s});
    QString log = logUntil(*process, waiting);
    QVERIFY(!process->waitForFinished(500)); // the box is shown behind its line in the log
    process->terminate();
    QVERIFY(process->waitForFinished(runTimeoutMs));
    log += QString::fromUtf8(process->readAllStandardError());
    QVERIFY2(log.contains("Cannot open project file"_L1), qPrintable(log));
    QVERIFY2(!log.contains("XDG_RUNTIME_DIR"_L1), qPrintable(log));
    QVERIFY2(!log.contains("propagateSizeHints"_L1), qPrintable(log));
}

void TestBatchProcess::debugLinesComeOnlyWhenAskedFor_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("expected");
    QTest::newRow("not set") << QString() << false;
    QTest::newRow("0") << u"0"_s << false;
    QTest::newRow("1") << u"1"_s << true;
}

void TestBatchProcess::debugLinesComeOnlyWhenAskedFor()
{
    QFETCH(const QString, value);
    QFETCH(const bool, expected);
    if (!value.isEmpty())
        m_environment.insert(u"NODESMITH_DEBUG"_s, value);
    const Result result = run(canopen, {u"-j1939"_s, u"-g"_s, u"-hidden"_s});
    QVERIFY(result.ended);
    QCOMPARE(result.log.contains(" debug"_L1), expected);
    QCOMPARE(result.log.contains(QRegularExpression(u"runEventLoop.*Line:"_s)), expected);
}

void TestBatchProcess::everyLogLineHasTimeAndKind()
{
    m_environment.insert(u"NODESMITH_DEBUG"_s, u"1"_s);
    m_environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s); // otherwise Qt itself complains before the log exists
    // What the run itself tells of errors stands on the same channel, without a time.
    CheckTest::Project project;
    QVERIFY(project.store->saveProject(path(u"valid.vexp"_s)));
    const Result result = run(canopen, {path(u"valid.vexp"_s), u"-g"_s, u"-hidden"_s});
    const QRegularExpression form(
        u"^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3} (debug|info|warning|error)( \\+\\d+ ms)?: .*$"_s);
    const QStringList lines = result.log.split(u'\n', Qt::SkipEmptyParts);
    QVERIFY(lines.size() > 2);
    for (const QString &line : lines)
        QVERIFY2(form.match(line).hasMatch(), qPrintable(line));
}

int main(int argc, char **argv)
{
    const BatchHome home;
    const QCoreApplication application(argc, argv);
    TestBatchProcess test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_batchprocess.moc"
