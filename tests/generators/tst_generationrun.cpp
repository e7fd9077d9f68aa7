#include "check/CheckProject.h"
#include "generators/RunDesk.h"

#include <QSignalSpy>
#include <QTimer>

using namespace StoreTest;
using namespace Qt::StringLiterals;

/** The course of a generation run: check, error log, results, and what stops it. */
class TestGenerationRun : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }

    void aValidProjectIsGeneratedWithoutErrors_data();
    void aValidProjectIsGeneratedWithoutErrors();
    void errorsEndTheRunBeforeAnythingIsGenerated();
    void aFailedConversionCountsTwice();
    void theErrorsOfAllLinesAddUp();
    void theErrorLogStaysAfterAnAbort();
    void ignoredErrorsLetTheRunGoOn();
    void theErrorLogMovesToItsBackupAlthoughErrorsWereCounted();
    void anExistingBackupStaysAsItIs();
    void theErrorLogIsPlainTextWithOneMessageALine();
    void theErrorLogReplacesTheFormerOne();
    void aFolderInPlaceOfTheErrorLogStopsNothing_data();
    void aFolderInPlaceOfTheErrorLogStopsNothing();
    void theErrorLogHoldsTheFormerMessagesToo();
    void aCorrectionIsToldOnce();
    void aProjectThatNeedsNoCorrectionTellsNone();
    void aCorrectionOfTheSecondLineIsTold();
    void theTransmittedAddressClaimIsTakenOut_data();
    void theTransmittedAddressClaimIsTakenOut();
    void theStacksOwnGroupsAreReserved();
    void theCachesAreEmptyAfterEveryRun_data();
    void theCachesAreEmptyAfterEveryRun();
    void generatorsReadFromFilledCaches();
    void aSecondRunIsRefusedDuringARun();
    void theProjectCannotBeReplacedDuringARun();
    void aFinishedRunMayStartTheNextOne();
    void eventsAreServedDuringARun();
    void aHandlerWithoutListenersRuns();
    void aNewHandlerHasAnEmptyProject();

private:
    static QSharedPointer<ObjectDataBase> invalidProject()
    {
        auto store = QSharedPointer<NewStore>::create();
        store->setGeneralSetting(u"line0type"_s, u"1"_s);
        return store;
    }
    static const QString finishedCheck;
};

const QString TestGenerationRun::finishedCheck = u"\nCheck of model consistency finished.\n"_s;

void TestGenerationRun::aValidProjectIsGeneratedWithoutErrors_data()
{
    QTest::addColumn<int>("type");
    for (const int type : {1, 2, 4, 5, 6, 7})
        QTest::addRow("line type %d", type) << type;
}

void TestGenerationRun::aValidProjectIsGeneratedWithoutErrors()
{
    QFETCH(int, type);
    RunDesk desk(CheckTest::Project(type).store);
    QCOMPARE(desk.runChecked(), RunDesk::Result::Completed);
    QCOMPARE(desk.output.all.first(), u"\nCheck of model consistency started"_s);
    QCOMPARE(desk.output.all.at(1), finishedCheck);
    QVERIFY(!desk.fakes.requests().isEmpty());
    QCOMPARE(desk.output.all.last(), u"finished"_s);
    QCOMPARE(desk.results.size(), 1);
}

void TestGenerationRun::errorsEndTheRunBeforeAnythingIsGenerated()
{
    RunDesk desk(invalidProject());
    desk.setMisc(u"postGenEnabled"_s, u"1"_s);
    desk.setMisc(u"postgencmd"_s, u"/bin/true"_s);
    QCOMPARE(desk.runChecked(), RunDesk::Result::CheckFailed);
    QVERIFY(desk.fakes.requests().isEmpty());
    const QString abort = desk.output.all.at(desk.output.all.size() - 2);
    QVERIFY2(abort.startsWith(u"ABORT - Check of model consistency finished: failed ("_s), qPrintable(abort));
    QVERIFY(!desk.output.has(finishedCheck));
    QVERIFY(!desk.output.has(u"Generation completed."_s));
    QVERIFY(desk.progress.calls.isEmpty());
}

void TestGenerationRun::aFailedConversionCountsTwice()
{
    CheckTest::Project project(1);
    project.type(0x2000, 1, 7, u"no number"_s);
    RunDesk desk(project.store);
    QCOMPARE(desk.runChecked(), RunDesk::Result::CheckFailed);
    QVERIFY(desk.output.has(u"ABORT - Check of model consistency finished: failed (2 errors)"_s));
}

void TestGenerationRun::theErrorsOfAllLinesAddUp()
{
    CheckTest::Project project(1);
    project.rename(0x2001, QString());
    project.addLine(1, 1);
    project.rename(0x2001, QString());
    project.rename(0x2002, QString());
    RunDesk desk(project.store);
    QCOMPARE(desk.runChecked(), RunDesk::Result::CheckFailed);
    QVERIFY(desk.output.has(u"ABORT - Check of model consistency finished: failed (3 errors)"_s));
}

void TestGenerationRun::theErrorLogStaysAfterAnAbort()
{
    RunDesk desk(invalidProject());
    desk.runChecked();
    QVERIFY(desk.exists(u"__vexerrorlog.txt"_s));
    QVERIFY(!desk.exists(u"__vexerrorlog.txt.bak"_s));
}

void TestGenerationRun::ignoredErrorsLetTheRunGoOn()
{
    RunDesk desk(invalidProject());
    QCOMPARE(desk.runChecked(true), RunDesk::Result::Completed);
    QVERIFY(desk.output.has(finishedCheck));
    QVERIFY(!desk.output.containing(u"<strong>Error: </strong>"_s).isEmpty());
    QVERIFY(!desk.fakes.requests().isEmpty());
}

void TestGenerationRun::theErrorLogMovesToItsBackupAlthoughErrorsWereCounted()
{
    RunDesk desk(invalidProject());
    desk.runChecked(true);
    QVERIFY(!desk.exists(u"__vexerrorlog.txt"_s));
    QVERIFY(desk.read(u"__vexerrorlog.txt.bak"_s).contains("Error: "));
}

void TestGenerationRun::anExistingBackupStaysAsItIs()
{
    RunDesk desk({0});
    desk.write(u"__vexerrorlog.txt.bak"_s, "of an earlier run");
    desk.run();
    QVERIFY(!desk.exists(u"__vexerrorlog.txt"_s));
    QCOMPARE(desk.read(u"__vexerrorlog.txt.bak"_s), QByteArray("of an earlier run"));
}

void TestGenerationRun::theErrorLogIsPlainTextWithOneMessageALine()
{
    CheckTest::Project project(1);
    project.rename(0x2001, QString());
    RunDesk desk(project.store);
    desk.runChecked();
    QCOMPARE(desk.read(u"__vexerrorlog.txt"_s),
             QByteArray("Check of model consistency started\n"
                        "Error: Object 0x2001: The object does not have a name. (Required for EDS)\n"));
}

void TestGenerationRun::theErrorLogReplacesTheFormerOne()
{
    RunDesk desk(invalidProject());
    desk.write(u"__vexerrorlog.txt"_s, QByteArray(100000, 'x'));
    desk.runChecked();
    QVERIFY(!desk.read(u"__vexerrorlog.txt"_s).contains("xxx"));
}

void TestGenerationRun::aFolderInPlaceOfTheErrorLogStopsNothing_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("ignoreErrors");
    QTest::addColumn<RunDesk::Result>("result");
    for (const QString &name : {u"__vexerrorlog.txt"_s, u"__vexerrorlog.txt.bak"_s}) {
        QTest::addRow("%s, generated", qPrintable(name)) << name << true << RunDesk::Result::Completed;
        QTest::addRow("%s, aborted", qPrintable(name)) << name << false << RunDesk::Result::CheckFailed;
    }
}

void TestGenerationRun::aFolderInPlaceOfTheErrorLogStopsNothing()
{
    QFETCH(QString, name);
    QFETCH(bool, ignoreErrors);
    RunDesk desk(invalidProject());
    QVERIFY(QDir(desk.folder.path()).mkpath(name + "/kept"_L1));
    QTEST(desk.runChecked(ignoreErrors), "result");
    QVERIFY(desk.exists(name + "/kept"_L1));
}

void TestGenerationRun::theErrorLogHoldsTheFormerMessagesToo()
{
    CheckTest::Project project(1);
    project.rename(0x2001, QString());
    RunDesk desk(project.store);
    desk.output.writeMessage(u"<b>of a former run</b>"_s);
    desk.runChecked();
    QVERIFY(desk.read(u"__vexerrorlog.txt"_s)
                .startsWith("of a former run\nCheck of model consistency started\n"));
}

void TestGenerationRun::aCorrectionIsToldOnce()
{
    CheckTest::Project project(1);
    project.value(0x2000, 0, u"77"_s);
    project.value(0x1018, 0, u"77"_s);
    RunDesk desk(project.store);
    QSignalSpy corrections(&desk.handler, &GeneratorMainHandler::doneCorrection);
    QString seen;
    desk.fakes.plan(GeneratorKind::ObjDict).job = [&] {
        seen = desk.store->getSubIndexDefault(0, 0x1018, 0);
    };
    QCOMPARE(desk.runChecked(), RunDesk::Result::Completed);
    QCOMPARE(corrections.count(), 1);
    QCOMPARE(desk.output.containing(u"<i>Corrected: "_s).size(), 2);
    QCOMPARE(seen, u"4"_s);
}

void TestGenerationRun::aProjectThatNeedsNoCorrectionTellsNone()
{
    RunDesk desk(CheckTest::Project(1).store);
    QSignalSpy corrections(&desk.handler, &GeneratorMainHandler::doneCorrection);
    desk.runChecked();
    QCOMPARE(corrections.count(), 0);
}

void TestGenerationRun::aCorrectionOfTheSecondLineIsTold()
{
    CheckTest::Project project(1);
    project.addLine(1, 1);
    project.line = 0;
    project.value(0x1018, 0, u"77"_s);
    RunDesk desk(project.store);
    QSignalSpy corrections(&desk.handler, &GeneratorMainHandler::doneCorrection);
    desk.run();
    QCOMPARE(corrections.count(), 1); // also where a later line needs none
}

void TestGenerationRun::theTransmittedAddressClaimIsTakenOut_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("taken");
    for (const int type : {1, 2, 4, 5, 6, 7})
        QTest::addRow("line type %d", type) << type << (type == 2 || type == 5 || type == 7);
}

void TestGenerationRun::theTransmittedAddressClaimIsTakenOut()
{
    QFETCH(int, type);
    QFETCH(bool, taken);
    RunDesk desk({type});
    for (const quint8 direction : {ObjectDataBase::Transmit, ObjectDataBase::Receive}) {
        QVERIFY(desk.store->addPGN(0, 60928, samplePgn(direction)));
        QVERIFY(desk.store->addSPN(0, 60928, direction, 2837, sampleSpn(0)));
    }
    QVERIFY(desk.store->addPGN(0, 61444, samplePgn(ObjectDataBase::Transmit)));
    desk.run();
    const auto signalCount = [&](quint8 direction) {
        return desk.store->getSPNList(0, 60928, direction).size();
    };
    QCOMPARE(signalCount(ObjectDataBase::Transmit), taken ? 0 : 1);
    QCOMPARE(desk.store->getPGNList(0, ObjectDataBase::Transmit).contains(60928), !taken);
    QCOMPARE(signalCount(ObjectDataBase::Receive), 1);
    QVERIFY(desk.store->getPGNList(0, ObjectDataBase::Transmit).contains(61444));
}

void TestGenerationRun::theStacksOwnGroupsAreReserved()
{
    for (const quint32 number : {59904U, 60928U, 60416U, 60160U, 59392U, 3584U, 65240U, 9472U}) {
        CheckTest::Project project(2);
        project.pgn(number, ObjectDataBase::Receive);
        RunDesk desk(project.store);
        desk.run();
        const QStringList told = desk.output.containing(u"Special PGN %1/"_s.arg(number));
        QVERIFY2(told.size() == 1, qPrintable(QString::number(number)));
    }
}

void TestGenerationRun::theCachesAreEmptyAfterEveryRun_data()
{
    QTest::addColumn<bool>("ignoreErrors");
    QTest::newRow("completed") << true;
    QTest::newRow("aborted") << false;
}

void TestGenerationRun::theCachesAreEmptyAfterEveryRun()
{
    QFETCH(bool, ignoreErrors);
    CheckTest::Project project(1);
    project.rename(0x2002, QString());
    RunDesk desk(project.store);
    desk.runChecked(ignoreErrors);
    // A statement of its own goes past the cache.
    QVERIFY(desk.store->executeSql(u"update SubObjects0 set defaultvalue='77'"_s));
    QCOMPARE(project.get(0x2000, 1).defaultvalue, u"77"_s);
}

void TestGenerationRun::generatorsReadFromFilledCaches()
{
    CheckTest::Project project(1);
    const QString before = project.get(0x2000, 1).defaultvalue;
    RunDesk desk(project.store);
    QString seen;
    desk.fakes.plan(GeneratorKind::ObjDict).started = [&](const FakeGenerator &) {
        desk.store->executeSql(u"update SubObjects0 set defaultvalue='77' where objectindex = 8192"_s);
    };
    desk.fakes.plan(GeneratorKind::ObjDict).job = [&] { seen = project.get(0x2000, 1).defaultvalue; };
    desk.run();
    QCOMPARE(seen, before);
    QCOMPARE(project.get(0x2000, 1).defaultvalue, u"77"_s);
}

void TestGenerationRun::aSecondRunIsRefusedDuringARun()
{
    RunDesk desk({1});
    bool wasRunning = false;
    desk.fakes.plan(GeneratorKind::Html).started = [&](const FakeGenerator &) {
        wasRunning = desk.handler.isRunning();
        desk.handler.runGeneration(true);
    };
    desk.run();
    QVERIFY(wasRunning);
    QCOMPARE(desk.results.size(), 1);
    QCOMPARE(desk.fakes.requests().size(), 9);
}

void TestGenerationRun::theProjectCannotBeReplacedDuringARun()
{
    RunDesk desk({1});
    const QString other = desk.path(u"other.vexp"_s);
    QVERIFY(desk.store->saveProject(other));
    bool set = true;
    bool opened = true;
    desk.fakes.plan(GeneratorKind::Html).started = [&](const FakeGenerator &) {
        set = desk.handler.setProject(invalidProject(), u"/tmp"_s, u"other"_s);
        opened = desk.handler.openProject(other);
    };
    desk.run();
    QVERIFY(!set);
    QVERIFY(!opened);
    QCOMPARE(desk.handler.database(), desk.store);
    QCOMPARE(desk.handler.projectName(), u"project"_s);
}

void TestGenerationRun::aFinishedRunMayStartTheNextOne()
{
    RunDesk desk({0});
    connect(&desk.handler, &GeneratorMainHandler::finished, this, [&desk] {
        if (desk.results.size() == 1)
            desk.handler.runGeneration(true);
    });
    desk.run();
    QCOMPARE(desk.results.size(), 2);
}

void TestGenerationRun::eventsAreServedDuringARun()
{
    RunDesk desk({1});
    int ticks = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&ticks] { ++ticks; });
    timer.start(5);
    desk.fakes.plan(GeneratorKind::ObjDict).job = [] { QThread::msleep(200); };
    desk.run();
    QVERIFY2(ticks >= 10, qPrintable(QString::number(ticks)));
}

void TestGenerationRun::aHandlerWithoutListenersRuns()
{
    const QTemporaryDir folder;
    GeneratorMainHandler handler;
    QSignalSpy finished(&handler, &GeneratorMainHandler::finished);
    QVERIFY(handler.setProject(CheckTest::Project(1).store, folder.path(), u"project"_s));
    handler.runGeneration(false);
    QCOMPARE(finished.count(), 1);
    QVERIFY(QDir(folder.path()).isEmpty());
}

void TestGenerationRun::aNewHandlerHasAnEmptyProject()
{
    GeneratorMainHandler handler;
    QVERIFY(handler.database());
    QVERIFY(!handler.database()->isOpen());
    QVERIFY(!handler.setProject(nullptr, u"/tmp"_s, u"x"_s));
    QVERIFY(handler.database());
    QSignalSpy finished(&handler, &GeneratorMainHandler::finished);
    handler.runGeneration(true);
    QCOMPARE(finished.count(), 1);
}

QTEST_GUILESS_MAIN(TestGenerationRun)
#include "tst_generationrun.moc"
