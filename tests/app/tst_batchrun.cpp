#include "app/BatchTest.h"

#include <QRegularExpression>
#include <QSettings>

using namespace Qt::StringLiterals;

/** The programs as a build script calls them: without a window, a display or anybody to answer. */
class TestBatchRun : public BatchTest
{
    Q_OBJECT

private Q_SLOTS:
    void everyEditionGeneratesHiddenAndEndsWithZero_data();
    void everyEditionGeneratesHiddenAndEndsWithZero();
    void aHiddenRunNeedsNeitherDisplayNorEnvironment_data();
    void aHiddenRunNeedsNeitherDisplayNorEnvironment();
    void theOrderOfOptionsDoesNotMatter();
    void commandsAndModifierReachTheSavedProject_data();
    void commandsAndModifierReachTheSavedProject();
    void saveAloneSavesAndStays();
    void saveWithGenerationSavesAndEnds();
    void anUnknownSwitchAsFirstArgumentIsTakenForAProject();
    void aLongOptionAsFirstArgumentStartsWithTheLastProject();
    void theFileOfALongFirstOptionIsAppliedToTheLastProject();
    void aRelativeProjectAndMergeFileMeanTheLaunchFolder();
    void mergeIsTheSameWithAnyMergeMode_data();
    void mergeIsTheSameWithAnyMergeMode();
    void whatCannotBeDoneStillEndsWithZero_data();
    void whatCannotBeDoneStillEndsWithZero();
};

void TestBatchRun::everyEditionGeneratesHiddenAndEndsWithZero_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("type");
    QTest::newRow("CANopen NodeSmith") << canopen << u"1"_s;
    QTest::newRow("J1939 NodeSmith") << u"j1939-nodesmith"_s << u"2"_s;
    QTest::newRow("CAN NodeSmith") << u"can-nodesmith"_s << u"4"_s;
    QTest::newRow("EnergyBus NodeGuide") << u"energybus-nodeguide"_s << u"1"_s;
}

void TestBatchRun::everyEditionGeneratesHiddenAndEndsWithZero()
{
    QFETCH(const QString, program);
    QFETCH(const QString, type);
    const QString edition = QString::fromLatin1(QTest::currentDataTag());
    QVERIFY(TestProject::save(path(u"a.vexp"_s), edition, type));
    const Result result = run(program, {path(u"a.vexp"_s), u"-hidden"_s, u"-now"_s, u"-g"_s});
    QVERIFY2(result.ended, qPrintable(result.log));
    QCOMPARE(result.exitCode, 0);
    QVERIFY2(!result.log.contains("Cannot open"_L1), qPrintable(result.log));
    QCOMPARE(result.output.count(generated), 1);
    const QSettings settings(path(u"home/.config/korvel/%1 4.conf"_s.arg(edition)), QSettings::IniFormat);
    QCOMPARE(settings.value("General/lastproject"_L1).toString(), path(u"a.vexp"_s));
}

void TestBatchRun::aHiddenRunNeedsNeitherDisplayNorEnvironment_data()
{
    QTest::addColumn<QString>("program");
    QTest::newRow("CANopen") << canopen;
    QTest::newRow("J1939") << u"j1939-nodesmith"_s;
    QTest::newRow("CAN") << u"can-nodesmith"_s;
    QTest::newRow("EnergyBus") << u"energybus-nodeguide"_s;
}

void TestBatchRun::aHiddenRunNeedsNeitherDisplayNorEnvironment()
{
    QFETCH(const QString, program);
    const Result result = run(program, {u"-j1939"_s, u"-g"_s, u"-hidden"_s});
    QVERIFY2(result.ended, qPrintable(result.log));
    QCOMPARE(result.exitCode, 0);
    QVERIFY2(!result.log.contains("Cannot"_L1), qPrintable(result.log));
}

void TestBatchRun::theOrderOfOptionsDoesNotMatter()
{
    const Result result = run(canopen, {canopenProject(u"a.vexp"_s), u"-g"_s, u"-hidden"_s});
    QVERIFY2(result.ended, qPrintable(result.log));
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.output.count(generated), 1);
}

void TestBatchRun::commandsAndModifierReachTheSavedProject_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("deleted");
    QTest::addColumn<QString>("nodeId");
    const QStringList commands{u"--importfile"_s, u"import.ini"_s};
    const QStringList modifier{u"-dbmod"_s, u"settings.mod"_s};
    QTest::newRow("commands") << commands << true << u"3"_s;
    QTest::newRow("modifier") << modifier << false << u"5"_s;
    QTest::newRow("both") << modifier + commands << true << u"5"_s;
}

void TestBatchRun::commandsAndModifierReachTheSavedProject()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const bool, deleted);
    QFETCH(const QString, nodeId);
    ObjectDataBase project;
    QVERIFY(TestProject::fill(project, {0}, u"1"_s));
    QVERIFY(project.setGeneralSetting(u"co_node_id"_s, u"3"_s));
    QVERIFY(project.addIndex(0, 0x2000, {}));
    QVERIFY(project.saveProject(path(u"a.vexp"_s)));
    QVERIFY(TestProject::write(path(u"import.ini"_s),
                               "[Projects]\n1=other.vexp\n[Actions]\n1=delete 0:0x2000\n"));
    QVERIFY(TestProject::write(path(u"settings.mod"_s), "GeneralSettings:co_node_id:5\n"));
    const Result result =
        run(canopen, QStringList{path(u"a.vexp"_s), u"-hidden"_s, u"-s"_s, u"-g"_s} + arguments);
    QVERIFY2(result.ended, qPrintable(result.log));
    QCOMPARE(result.exitCode, 0);
    ObjectDataBase reader;
    QVERIFY(reader.openDataBase(path(u"a.vexp"_s)));
    QCOMPARE(reader.indexExists(0, 0x2000), !deleted);
    QCOMPARE(reader.getGeneralSetting(u"co_node_id"_s), nodeId);
}

void TestBatchRun::saveAloneSavesAndStays()
{
    const auto process = start(canopen, {canopenProject(u"a.vexp"_s), u"-hidden"_s, u"-s"_s});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path(u"a.vexp.bak"_s)), runTimeoutMs);
    QVERIFY(!process->waitForFinished(700)); // twice the time that the save leaves for queued messages
    process->kill();
    QVERIFY(process->waitForFinished(runTimeoutMs));
}

void TestBatchRun::saveWithGenerationSavesAndEnds()
{
    const Result result = run(canopen, {canopenProject(u"a.vexp"_s), u"-g"_s, u"-s"_s, u"-hidden"_s});
    QVERIFY2(result.ended, qPrintable(result.log));
    QCOMPARE(result.exitCode, 0);
    QVERIFY(QFile::exists(path(u"a.vexp.bak"_s)));
}

void TestBatchRun::anUnknownSwitchAsFirstArgumentIsTakenForAProject()
{
    const auto process = start(canopen, {u"-g"_s, u"-hidden"_s});
    QVERIFY(!logUntil(*process, u"Cannot open project file %1."_s.arg(path(u"-g"_s))).isEmpty());
    QVERIFY(!process->waitForFinished(300)); // the box waits for an answer
    process->kill();
    QVERIFY(process->waitForFinished(runTimeoutMs));
}

void TestBatchRun::aLongOptionAsFirstArgumentStartsWithTheLastProject()
{
    const QString project = canopenProject(u"last.vexp"_s);
    {
        QSettings settings(path(u"home/.config/korvel/CANopen NodeSmith 4.conf"_s), QSettings::IniFormat);
        settings.setValue("General/loadlastproject"_L1, 1);
        settings.setValue("General/lastproject"_L1, project);
    }
    m_environment.insert(u"NODESMITH_DEBUG"_s, u"1"_s);
    const Result result =
        run(canopen, {u"--importfile"_s, u"/no/such.txt"_s, u"-hidden"_s, u"-s"_s, u"-g"_s});
    QVERIFY2(result.ended, qPrintable(result.log));
    QCOMPARE(result.exitCode, 0);
    QVERIFY(QFile::exists(path(u"last.vexp.bak"_s)));
    const qsizetype opened = result.log.indexOf("last.vexp true"_L1);
    const qsizetype applied = result.log.indexOf("Import Handler file: /no/such.txt does not exist"_L1);
    QVERIFY2(opened >= 0 && applied > opened, qPrintable(result.log));
}

void TestBatchRun::theFileOfALongFirstOptionIsAppliedToTheLastProject()
{
    ObjectDataBase project;
    QVERIFY(TestProject::fill(project, {0}, u"1"_s));
    QVERIFY(project.addIndex(0, 0x2000, {}));
    QVERIFY(project.addIndex(0, 0x2001, {}));
    QVERIFY(project.saveProject(path(u"last.vexp"_s)));
    QVERIFY(TestProject::write(path(u"import.ini"_s),
                               "[Projects]\n1=other.vexp\n[Actions]\n1=delete 0:0x2000\n"));
    {
        QSettings settings(path(u"home/.config/korvel/CANopen NodeSmith 4.conf"_s), QSettings::IniFormat);
        settings.setValue("General/loadlastproject"_L1, 1);
        settings.setValue("General/lastproject"_L1, path(u"last.vexp"_s));
    }
    const Result result =
        run(canopen, {u"--importfile"_s, path(u"import.ini"_s), u"-hidden"_s, u"-s"_s, u"-g"_s});
    QVERIFY2(result.ended, qPrintable(result.log));
    QCOMPARE(result.exitCode, 0);
    ObjectDataBase reader;
    QVERIFY(reader.openDataBase(path(u"last.vexp"_s)));
    QVERIFY(!reader.indexExists(0, 0x2000));
    QVERIFY(reader.indexExists(0, 0x2001));
}

void TestBatchRun::aRelativeProjectAndMergeFileMeanTheLaunchFolder()
{
    QVERIFY(QDir(m_folder->path()).mkdir(u"sub"_s));
    QVERIFY(!canopenProject(u"sub/a.vexp"_s).isEmpty());
    ObjectDataBase other;
    QVERIFY(TestProject::fill(other, {0}, u"1"_s));
    QVERIFY(other.addPGN(0, 65226, TestProject::pgn(u"DM1"_s, ObjectDataBase::Transmit)));
    QVERIFY(other.saveProject(path(u"other.vexp"_s)));
    const Result result =
        run(canopen, {u"sub/a.vexp"_s, u"-hidden"_s, u"-j"_s, u"other.vexp"_s, u"-s"_s, u"-g"_s});
    QVERIFY2(result.ended, qPrintable(result.log));
    ObjectDataBase reader;
    QVERIFY(reader.openDataBase(path(u"sub/a.vexp"_s)));
    QCOMPARE(reader.getPGNName(0, 65226, ObjectDataBase::Transmit), u"DM1"_s);
}

void TestBatchRun::mergeIsTheSameWithAnyMergeMode_data()
{
    QTest::addColumn<QStringList>("mode");
    QTest::newRow("none") << QStringList{};
    QTest::newRow("replace") << QStringList{u"-o"_s, u"replace"_s};
    QTest::newRow("keep") << QStringList{u"-o"_s, u"keep"_s};
}

void TestBatchRun::mergeIsTheSameWithAnyMergeMode()
{
    QFETCH(const QStringList, mode);
    ObjectDataBase own;
    QVERIFY(TestProject::fill(own, {0}, u"1"_s));
    QVERIFY(own.addPGN(0, 65226, TestProject::pgn(u"own"_s, ObjectDataBase::Receive)));
    QVERIFY(own.saveProject(path(u"a.vexp"_s)));
    ObjectDataBase other;
    QVERIFY(TestProject::fill(other, {0}, u"1"_s));
    QVERIFY(other.addPGN(0, 65226, TestProject::pgn(u"other"_s, ObjectDataBase::Receive)));
    QVERIFY(other.addPGN(0, 61444, TestProject::pgn(u"added"_s, ObjectDataBase::Transmit)));
    QVERIFY(other.saveProject(path(u"other.vexp"_s)));
    const Result result =
        run(canopen,
            QStringList{path(u"a.vexp"_s), u"-hidden"_s, u"-s"_s, u"-g"_s, u"-j"_s, path(u"other.vexp"_s)}
                + mode);
    QVERIFY2(result.ended, qPrintable(result.log));
    ObjectDataBase reader;
    QVERIFY(reader.openDataBase(path(u"a.vexp"_s)));
    QCOMPARE(reader.getPGNName(0, 65226, ObjectDataBase::Receive), u"other"_s);
    QCOMPARE(reader.getPGNName(0, 61444, ObjectDataBase::Transmit), u"added"_s);
}

void TestBatchRun::whatCannotBeDoneStillEndsWithZero_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("logged");
    QTest::newRow("import file missing") << QStringList{u"-i"_s, u"/no/such.eds"_s} << QString();
    QTest::newRow("merge file missing") << QStringList{u"-j"_s, u"/no/such.vexp"_s} << QString();
    QTest::newRow("commands missing") << QStringList{u"--importfile"_s, u"/no/such.txt"_s}
                                      << u"Import Handler file: /no/such.txt does not exist"_s;
    QTest::newRow("modifier missing") << QStringList{u"-dbmod"_s, u"/no/such.mod"_s} << u"/no/such.mod"_s;
    QTest::newRow("modifier empty") << QStringList{u"-dbmod"_s, u""_s} << QString();
    QTest::newRow("modifier as last argument") << QStringList{u"-dbmod"_s} << QString();
    QTest::newRow("unknown option") << QStringList{u"-unknown"_s} << QString();
}

void TestBatchRun::whatCannotBeDoneStillEndsWithZero()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, logged);
    const Result result =
        run(canopen, QStringList{canopenProject(u"a.vexp"_s), u"-hidden"_s, u"-g"_s} + arguments);
    QVERIFY2(result.ended, qPrintable(result.log));
    QCOMPARE(result.exitCode, 0);
    QVERIFY2(result.log.contains(logged), qPrintable(result.log));
    if (logged.isEmpty()) {
        QVERIFY2(!result.log.contains("/no/such"_L1), qPrintable(result.log));
        QVERIFY2(!result.log.contains("applyModifier"_L1), qPrintable(result.log));
    }
}

int main(int argc, char **argv)
{
    const BatchHome home;
    const QCoreApplication application(argc, argv);
    TestBatchRun test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_batchrun.moc"
