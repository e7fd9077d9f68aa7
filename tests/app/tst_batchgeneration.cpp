#include "app/BatchTest.h"
#include "check/CheckProject.h"

#include <QSettings>

using namespace Qt::StringLiterals;

/** Check and generation as a build script sees them: what is told on which channel, and which files are left.
 */
class TestBatchGeneration : public BatchTest
{
    Q_OBJECT

private Q_SLOTS:
    void aValidProjectOfEveryLineTypeIsGenerated_data();
    void aValidProjectOfEveryLineTypeIsGenerated();
    void severalLinesAreToldOneByOne();
    void errorsStopTheRunAndStayInTheErrorLog();
    void aDisabledCheckGoesOnAndKeepsTheLogAsBackup();
    void aCorrectionIsSavedOnlyWithTheOption_data();
    void aCorrectionIsSavedOnlyWithTheOption();
    void aTransmittedAddressClaimLeavesTheProject();
    void aProjectThatWasNeverSavedIsNotGenerated();
    void anyFolderNameIsGeneratedInto_data();
    void anyFolderNameIsGeneratedInto();
    void theCommandBehindTheRunIsTold();

private:
    void useCheck() const;
    QStringList lines(const QString &text) const { return text.split(u'\n', Qt::SkipEmptyParts); }
};

/** A run with errors waits behind a box that nobody answers; these tests end it themselves. */
void TestBatchGeneration::useCheck() const
{
    QSettings settings(path(u"home/.config/korvel/CANopen NodeSmith 4.conf"_s), QSettings::IniFormat);
    settings.remove("General/disablecheck"_L1);
}

void TestBatchGeneration::aValidProjectOfEveryLineTypeIsGenerated_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("edition");
    QTest::addColumn<int>("type");
    const auto row = [](const char *name, const QString &program, const QString &edition, int type) {
        QTest::newRow(name) << program << edition << type;
    };
    row("CANopen", u"canopen-nodesmith"_s, u"CANopen NodeSmith"_s, CheckTest::CANopenLine);
    row("J1939", u"j1939-nodesmith"_s, u"J1939 NodeSmith"_s, CheckTest::J1939Line);
    row("raw CAN", u"can-nodesmith"_s, u"CAN NodeSmith"_s, CheckTest::RawCanLine);
    row("CANopen and J1939", u"can-nodesmith"_s, u"CAN NodeSmith"_s, CheckTest::CANopenAndJ1939);
    row("CANopen and raw CAN", u"can-nodesmith"_s, u"CAN NodeSmith"_s, CheckTest::CANopenAndRawCan);
    row("J1939 and raw CAN", u"can-nodesmith"_s, u"CAN NodeSmith"_s, CheckTest::J1939AndRawCan);
}

void TestBatchGeneration::aValidProjectOfEveryLineTypeIsGenerated()
{
    QFETCH(const QString, program);
    QFETCH(const QString, edition);
    QFETCH(const int, type);
    QCoreApplication::setApplicationName(edition);
    const CheckTest::Project project(type);
    QVERIFY(project.store->saveProject(path(u"a.vexp"_s)));
    const Result result = run(program, {path(u"a.vexp"_s), u"-hidden"_s, u"-now"_s, u"-g"_s});
    QVERIFY2(result.ended, qPrintable(result.log));
    QCOMPARE(result.exitCode, 0);
    const QStringList told = lines(result.output);
    QCOMPARE(told.value(0), u"Check of model consistency started"_s);
    QVERIFY2(told.contains(u"Check of model consistency finished."_s), qPrintable(result.output));
    QVERIFY(told.contains(u"Generation finished."_s));
    QVERIFY(told.contains(u"Generation completed."_s));
    QCOMPARE(told.last(), u"Result: the generation is complete"_s);
    QVERIFY2(!result.log.contains("Error"_L1), qPrintable(result.log));
    QVERIFY(!QFile::exists(path(u"__vexerrorlog.txt"_s)));
    QVERIFY(QFile::exists(path(u"__vexerrorlog.txt.bak"_s)));
}

void TestBatchGeneration::severalLinesAreToldOneByOne()
{
    QCoreApplication::setApplicationName(u"CAN NodeSmith"_s);
    CheckTest::Project project(CheckTest::CANopenLine);
    project.addLine(3, CheckTest::RawCanLine);
    QVERIFY(project.store->saveProject(path(u"a.vexp"_s)));
    const Result result = run(u"can-nodesmith"_s, {path(u"a.vexp"_s), u"-hidden"_s, u"-g"_s});
    const QStringList told = lines(result.output);
    const QString rule(40, u'_');
    const qsizetype first = told.indexOf(QString(rule + " Checking line 0 "_L1 + rule));
    const qsizetype second = told.indexOf(QString(rule + " Checking line 3 "_L1 + rule));
    QVERIFY2(first > 0 && second > first, qPrintable(result.output));
}

void TestBatchGeneration::errorsStopTheRunAndStayInTheErrorLog()
{
    useCheck();
    QCoreApplication::setApplicationName(u"CANopen NodeSmith"_s);
    const CheckTest::Project project;
    project.remove(0x1001);
    QVERIFY(project.store->saveProject(path(u"a.vexp"_s)));
    const auto process = start(canopen, {path(u"a.vexp"_s), u"-hidden"_s, u"-g"_s});
    const QString told = logUntil(*process, u"the program waits for an answer to this box"_s);
    const QString error =
        u"Error: Object 0x1001 (Error Register) does not exist, but it is mandatory according "
        "to CANopen specification."_s;
    QVERIFY2(told.contains(error), qPrintable(told));
    QVERIFY(told.contains("ABORT - Check of model consistency finished: failed (1 errors)"_L1));
    QVERIFY(!told.contains("Generation finished."_L1));
    process->terminate();
    QVERIFY(process->waitForFinished(runTimeoutMs));
    QFile log(path(u"__vexerrorlog.txt"_s));
    QVERIFY(log.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(log.readAll());
    QVERIFY2(text.contains(error), qPrintable(text));
    QVERIFY2(!text.contains(u'<'), qPrintable(text));
}

void TestBatchGeneration::aDisabledCheckGoesOnAndKeepsTheLogAsBackup()
{
    QCoreApplication::setApplicationName(u"CANopen NodeSmith"_s);
    const CheckTest::Project project;
    project.remove(0x1001);
    QVERIFY(project.store->saveProject(path(u"a.vexp"_s)));
    const Result result = run(canopen, {path(u"a.vexp"_s), u"-hidden"_s, u"-g"_s});
    QVERIFY(result.ended);
    QVERIFY2(result.log.contains("Object 0x1001"_L1), qPrintable(result.log));
    QVERIFY(result.output.contains("Generation finished."_L1));
    QVERIFY(!QFile::exists(path(u"__vexerrorlog.txt"_s)));
    QVERIFY(QFile::exists(path(u"__vexerrorlog.txt.bak"_s)));
}

void TestBatchGeneration::aCorrectionIsSavedOnlyWithTheOption_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("value");
    QTest::newRow("-g") << QStringList{u"-g"_s} << u"9"_s;
    QTest::newRow("-g -s") << QStringList{u"-g"_s, u"-s"_s} << u"4"_s;
}

void TestBatchGeneration::aCorrectionIsSavedOnlyWithTheOption()
{
    QFETCH(const QStringList, options);
    QFETCH(const QString, value);
    QCoreApplication::setApplicationName(u"CANopen NodeSmith"_s);
    const CheckTest::Project project;
    project.array(0x2100, {u"1"_s, u"2"_s, u"3"_s, u"4"_s});
    project.value(0x2100, 0, u"9"_s);
    QVERIFY(project.store->saveProject(path(u"a.vexp"_s)));
    const Result result = run(canopen, QStringList{path(u"a.vexp"_s), u"-hidden"_s} + options);
    QVERIFY(result.ended);
    QVERIFY2(result.output.contains(
                 "Corrected: Object 0x2100: The value of subindex 0 does not fit to the highest "
                 "subindex."_L1),
             qPrintable(result.output));
    QCOMPARE(CheckTest::Project(path(u"a.vexp"_s)).get(0x2100, 0).defaultvalue, value);
}

void TestBatchGeneration::aTransmittedAddressClaimLeavesTheProject()
{
    QCoreApplication::setApplicationName(u"J1939 NodeSmith"_s);
    const CheckTest::Project project(CheckTest::J1939Line);
    project.pgn(60928, ObjectDataBase::Transmit);
    QVERIFY(project.store->saveProject(path(u"a.vexp"_s)));
    const Result result = run(u"j1939-nodesmith"_s, {path(u"a.vexp"_s), u"-hidden"_s, u"-g"_s});
    QVERIFY(result.ended);
    QVERIFY2(!result.log.contains("Special PGN"_L1), qPrintable(result.log));
}

// The first argument would be a project, were it not this one.
void TestBatchGeneration::aProjectThatWasNeverSavedIsNotGenerated()
{
    const Result result = run(canopen, {u"-j1939"_s, u"-hidden"_s, u"-now"_s, u"-g"_s});
    QVERIFY2(result.ended, qPrintable(result.log));
    QVERIFY2(result.log.contains("ABORT - The output folder  is not writeable.\n"_L1),
             qPrintable(result.log));
    QCOMPARE(lines(result.output).constLast(),
             u"Result: the output folder is not writable, the generation is not complete"_s);
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList({u"home"_s, u"tmp"_s}));
}

void TestBatchGeneration::anyFolderNameIsGeneratedInto_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("umlauts") << u"Gerät für Größen"_s;
    QTest::newRow("blanks and percent signs") << u"a  100% %1 %D"_s;
    QTest::newRow("emoji") << u"\U0001F600"_s;
}

void TestBatchGeneration::anyFolderNameIsGeneratedInto()
{
    QFETCH(const QString, name);
    QVERIFY(QDir(m_folder->path()).mkdir(name));
    const QString folder = path(name);
    const QString file = folder + u'/' + name + ".vexp"_L1;
    QCoreApplication::setApplicationName(u"CANopen NodeSmith"_s);
    QVERIFY(CheckTest::Project().store->saveProject(file));
    const Result result = run(canopen, {file, u"-hidden"_s, u"-now"_s, u"-g"_s});
    QVERIFY2(result.ended, qPrintable(result.log));
    QCOMPARE(lines(result.output).constLast(), u"Result: the generation is complete"_s);
    QVERIFY(QFile::exists(folder + "/__vexerrorlog.txt.bak"_L1));
}

void TestBatchGeneration::theCommandBehindTheRunIsTold()
{
    QCoreApplication::setApplicationName(u"CANopen NodeSmith"_s);
    const CheckTest::Project project;
    project.setMisc(u"postGenEnabled"_s, u"1"_s);
    project.setMisc(u"postgencmd"_s, u"/bin/sh"_s);
    project.setMisc(u"postgencmdargs"_s, u"-c echo;exit${IFS}3"_s);
    project.setMisc(u"postGenWait"_s, u"1"_s);
    QVERIFY(project.store->saveProject(path(u"a.vexp"_s)));
    const Result result = run(canopen, {path(u"a.vexp"_s), u"-hidden"_s, u"-now"_s, u"-g"_s});
    QVERIFY2(result.ended, qPrintable(result.log));
    const QStringList output = lines(result.output);
    QCOMPARE(output.last(3),
             QStringList({u"Post generation process finished with code 3"_s,
                          u"Warning: Generation completed, but post gen process returned 3."_s,
                          u"Result: the generation is complete"_s}));
}

int main(int argc, char **argv)
{
    const BatchHome home;
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(NODESMITH_VERSION));
    TestBatchGeneration test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_batchgeneration.moc"
