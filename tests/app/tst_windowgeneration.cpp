#include "app/BoxAnswerer.h"
#include "app/TestHome.h"
#include "app/WindowTest.h"
#include "check/CheckProject.h"
#include "forms/output/GeneratorOutputForm.h"
#include "generators/FakeGenerator.h"
#include "widgets/KorvelBaseApplication.h"

#include <QProgressDialog>
#include <QSignalSpy>
#include <QToolBox>

using namespace Qt::StringLiterals;

using CheckTest::Project;

/** "Generate Files": what the window does around a run, and what it lets nobody do meanwhile. */
class TestWindowGeneration : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void theMessagesAreShownOnTheOutputPage();
    void theProgressDialogStandsBeforeTheWindowDuringTheRun();
    void aHiddenRunShowsNoProgress();
    void theStoreIsSilentDuringTheRun();
    void theLogIsClearedOnRequest_data();
    void theLogIsClearedOnRequest();
    void theSrdoFileIsAskedFor_data();
    void theSrdoFileIsAskedFor();
    void virtualObjectsFollowTheSetting_data();
    void virtualObjectsFollowTheSetting();
    void errorsAreToldInABox();
    void aDisabledCheckGeneratesInSpiteOfErrors();
    void correctionsAreSavedAndAreOneStepToUndo();
    void theProjectStaysDuringTheRun_data();
    void theProjectStaysDuringTheRun();
    void aSecondRunIsNotStartedDuringTheRun();
    void aNeverSavedProjectIsToBeSavedFirst();
    void anUnappliedConfigurationIsWarnedOf_data();
    void anUnappliedConfigurationIsWarnedOf();
    void aMessageLeadsToItsPlace();

private:
    std::unique_ptr<VexMainWindow> open(const Project &project, const QStringList &arguments = {});
    void generate(const VexMainWindow &window) { action(window, u"actionGenerate_Output"_s)->trigger(); }
    void generateWith(const VexMainWindow &window, const std::function<void()> &meanwhile);
    static GeneratorOutputForm *output(const VexMainWindow &window)
    {
        return window.findChild<GeneratorOutputForm *>();
    }
    static QString currentPage(const VexMainWindow &window)
    {
        return window.findChild<QToolBox *>(u"tbMain"_s)->currentWidget()->objectName();
    }

    FakeGenerators m_fakes;
};

/** Opens the saved project in a window whose runs have fake generators. */
std::unique_ptr<VexMainWindow> TestWindowGeneration::open(const Project &project,
                                                          const QStringList &arguments)
{
    if (!project.store->saveProject(path(u"a.vexp"_s)))
        qFatal("cannot save the project");
    auto window = makeWindow(arguments);
    window->openProject(path(u"a.vexp"_s));
    QTest::qWait(20); // all signs of the opening have gone
    m_fakes = {};
    window->findChild<GeneratorMainHandler *>()->setFactories(m_fakes.factories());
    return window;
}

/** A run in the midst of which the action is done. */
void TestWindowGeneration::generateWith(const VexMainWindow &window, const std::function<void()> &meanwhile)
{
    bool done = false;
    m_fakes.plan(GeneratorKind::Define).started = [&](const FakeGenerator &) {
        meanwhile();
        done = true;
    };
    generate(window);
    QVERIFY(done);
}

void TestWindowGeneration::theMessagesAreShownOnTheOutputPage()
{
    const auto window = open(Project());
    generate(*window);
    QCOMPARE(currentPage(*window), u"generatorOutputForm"_s);
    const QStringList log = output(*window)->getLogging().split(u'\n', Qt::SkipEmptyParts);
    QCOMPARE(
        log.first(2),
        QStringList({u"Check of model consistency started"_s, u"Check of model consistency finished."_s}));
    QCOMPARE(log.last(2), QStringList({u"Generation finished."_s, u"Generation completed."_s}));
    QVERIFY(log.contains(QString("Generation of gen_define.h in "_L1 + m_folder->path() + " started"_L1)));
}

void TestWindowGeneration::theProgressDialogStandsBeforeTheWindowDuringTheRun()
{
    const auto window = open(Project());
    window->show();
    const auto *dialog = window->findChild<QProgressDialog *>();
    generateWith(*window, [&] {
        QVERIFY(dialog->isVisible());
        QCOMPARE(dialog->labelText(), u"Generation in progress..."_s);
        QCOMPARE(QApplication::activeModalWidget(), dialog); // the window behind it takes no input
        QVERIFY(QApplication::overrideCursor());
        QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    });
    QVERIFY(!dialog->isVisible());
    QVERIFY(!QApplication::overrideCursor());
}

void TestWindowGeneration::aHiddenRunShowsNoProgress()
{
    const auto window = open(Project(), {u"a.vexp"_s, u"-hidden"_s});
    const auto *dialog = window->findChild<QProgressDialog *>();
    generateWith(*window, [&] { QVERIFY(!dialog->isVisible()); });
    QVERIFY(!window->isVisible());
}

void TestWindowGeneration::theStoreIsSilentDuringTheRun()
{
    const auto window = open(Project());
    generateWith(*window, [&] { QVERIFY(m_store->signalsBlocked()); });
    QVERIFY(!m_store->signalsBlocked());
    QVERIFY(!window->isModified());
}

void TestWindowGeneration::theLogIsClearedOnRequest_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<int>("runs");
    QTest::newRow("never set") << QString() << 2;
    QTest::newRow("switched off") << u"0"_s << 2;
    QTest::newRow("switched on") << u"1"_s << 1;
}

void TestWindowGeneration::theLogIsClearedOnRequest()
{
    QFETCH(const QString, setting);
    QFETCH(const int, runs);
    if (!setting.isEmpty())
        UserSettings().setValue("General/clearlogging"_L1, setting);
    const auto window = open(Project());
    generate(*window);
    generate(*window);
    QCOMPARE(output(*window)->getLogging().count(u"Check of model consistency started"_s), runs);
}

void TestWindowGeneration::theSrdoFileIsAskedFor_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QMessageBox::StandardButton>("answer");
    QTest::addColumn<bool>("asked");
    QTest::addColumn<bool>("generated");
    QTest::newRow("yes") << u"1"_s << QMessageBox::Yes << true << true;
    QTest::newRow("no") << u"1"_s << QMessageBox::No << true << false;
    QTest::newRow("any other number asks") << u"2"_s << QMessageBox::No << true << false;
    QTest::newRow("0 does not ask") << u"0"_s << QMessageBox::No << false << true;
    QTest::newRow("never set") << QString() << QMessageBox::No << false << true;
}

void TestWindowGeneration::theSrdoFileIsAskedFor()
{
    QFETCH(const QString, setting);
    QFETCH(const QMessageBox::StandardButton, answer);
    QFETCH(const bool, asked);
    QFETCH(const bool, generated);
    const Project project;
    project.array(0x1301, {u"1"_s});
    project.array(0x1381, {u"0x20010010"_s});
    project.set(u"ask_gen_srdo"_s, setting);
    const auto window = open(project);
    const BoxAnswerer answerer(answer);
    generate(*window);
    QCOMPARE(answerer.texts, asked ? QStringList{u"Do you want to generate gen_srdo.c?"_s} : QStringList());
    QCOMPARE(answerer.titles, asked ? QStringList{u"CANopen NodeSmith  4.3.2"_s} : QStringList());
    QVERIFY(!answerer.waitCursorSeen);
    QCOMPARE(!m_fakes.requests(GeneratorKind::Srdo).isEmpty(), generated);
    QVERIFY(!m_fakes.requests(GeneratorKind::Define).isEmpty());
}

void TestWindowGeneration::virtualObjectsFollowTheSetting_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<bool>("generated");
    QTest::newRow("switched on") << u"1"_s << true;
    QTest::newRow("switched off") << u"0"_s << false;
    QTest::newRow("never set") << QString() << false;
}

void TestWindowGeneration::virtualObjectsFollowTheSetting()
{
    QFETCH(const QString, setting);
    QFETCH(const bool, generated);
    const Project project;
    project.implementation(0x2001, 0, CANopen::VirtualObject);
    project.set(u"special_virtual_objects"_s, setting);
    const auto window = open(project);
    generate(*window);
    const QList<GeneratorRequest> requests = m_fakes.requests(GeneratorKind::VobjDict);
    QCOMPARE(!requests.isEmpty(), generated);
    QCOMPARE(requests.value(0).generateVirtualObjects, generated);
}

void TestWindowGeneration::errorsAreToldInABox()
{
    const Project project;
    project.remove(0x1001);
    const auto window = open(project);
    const QSignalSpy told(window.get(), &VexMainWindow::sigInstrumentFunctions);
    const BoxAnswerer answerer(QMessageBox::Ok);
    generate(*window);
    QCOMPARE(answerer.texts,
             QStringList{u"The project contains critical errors. Check Generator Output window."_s});
    QVERIFY(window->isVisible());
    QVERIFY(m_fakes.requests().isEmpty());
    QVERIFY(output(*window)->getLogging().endsWith(
        "ABORT - Check of model consistency finished: failed (1 errors)\n"_L1));
    QCOMPARE(told.count(), 2);
    QVERIFY(!m_store->signalsBlocked());
    QVERIFY(!QApplication::overrideCursor());
}

void TestWindowGeneration::aDisabledCheckGeneratesInSpiteOfErrors()
{
    UserSettings().setValue("General/disablecheck"_L1, true);
    const Project project;
    project.remove(0x1001);
    const auto window = open(project);
    const BoxAnswerer answerer(QMessageBox::Ok);
    generate(*window);
    QVERIFY(answerer.texts.isEmpty());
    QVERIFY(!m_fakes.requests().isEmpty());
}

void TestWindowGeneration::correctionsAreSavedAndAreOneStepToUndo()
{
    const Project project;
    project.value(0x2000, 0, u"9"_s);
    project.value(0x1018, 0, u"9"_s);
    const auto window = open(project);
    window->show();
    generate(*window);
    QVERIFY(!window->isModified());
    QCOMPARE(Project(path(u"a.vexp"_s)).get(0x2000, 0).defaultvalue, u"2"_s);
    QCOMPARE(Project(path(u"a.vexp"_s)).get(0x1018, 0).defaultvalue, u"4"_s);
    QVERIFY(action(*window, u"actionUndo"_s)->isEnabled());
    action(*window, u"actionUndo"_s)->trigger();
    QCOMPARE(m_store->getSubIndexDefault(0, 0x2000, 0), u"9"_s);
    QCOMPARE(m_store->getSubIndexDefault(0, 0x1018, 0), u"9"_s);
    QVERIFY(!action(*window, u"actionUndo"_s)->isEnabled());
}

void TestWindowGeneration::theProjectStaysDuringTheRun_data()
{
    QTest::addColumn<QString>("command");
    for (const QString &command :
         {u"actionNew_Project"_s, u"actionOpen_Project"_s, u"actionClose_Project"_s, u"actionQuit"_s})
        QTest::newRow(qPrintable(command)) << command;
}

void TestWindowGeneration::theProjectStaysDuringTheRun()
{
    QFETCH(const QString, command);
    const auto window = open(Project());
    window->show();
    const quint64 project = m_store->projectGeneration();
    generateWith(*window, [&] { action(*window, command)->trigger(); });
    QCOMPARE(m_store->projectGeneration(), project);
    QCOMPARE(window->project().projectFile(), path(u"a.vexp"_s));
    QVERIFY(window->isVisible());
    QVERIFY(output(*window)->getLogging().endsWith("Generation completed.\n"_L1));
}

void TestWindowGeneration::aSecondRunIsNotStartedDuringTheRun()
{
    const auto window = open(Project());
    const QSignalSpy told(window.get(), &VexMainWindow::sigInstrumentFunctions);
    generateWith(*window, [&] { generate(*window); });
    QCOMPARE(told.count(), 2);
    QCOMPARE(m_fakes.requests(GeneratorKind::Define).size(), 1);
}

void TestWindowGeneration::aNeverSavedProjectIsToBeSavedFirst()
{
    const auto window = makeWindow();
    QVERIFY(m_store->createNewDataBase());
    const QSignalSpy told(window.get(), &VexMainWindow::sigInstrumentFunctions);
    const BoxAnswerer answerer(QMessageBox::Cancel);
    generate(*window);
    QCOMPARE(answerer.texts, QStringList{u"The files are generated into the folder of the project."_s});
    QCOMPARE(told.count(), 0);
    QVERIFY(output(*window)->getLogging().isEmpty());
}

void TestWindowGeneration::anUnappliedConfigurationIsWarnedOf_data()
{
    QTest::addColumn<QString>("edition");
    QTest::addColumn<QString>("general");
    QTest::addColumn<QString>("energyBus");
    QTest::addColumn<bool>("warned");
    const QString energyBusEdition = u"EnergyBus NodeGuide"_s;
    QTest::newRow("in the EnergyBus settings") << energyBusEdition << QString() << u"1"_s << true;
    QTest::newRow("in the general settings") << energyBusEdition << u"1"_s << QString() << true;
    QTest::newRow("applied") << energyBusEdition << u"0"_s << u"0"_s << false;
    QTest::newRow("another edition") << u"CANopen NodeSmith"_s << u"1"_s << u"1"_s << false;
}

void TestWindowGeneration::anUnappliedConfigurationIsWarnedOf()
{
    QFETCH(const QString, edition);
    QFETCH(const QString, general);
    QFETCH(const QString, energyBus);
    QFETCH(const bool, warned);
    QCoreApplication::setApplicationName(edition);
    const Project project;
    project.set(u"modificationWithoutApply"_s, general);
    QVERIFY(project.store->setEnergyBusSetting(u"modificationWithoutApply"_s, energyBus));
    const auto window = open(project);
    const BoxAnswerer answerer(QMessageBox::Ok);
    generate(*window);
    const QString text =
        u"The EnergyBus configuration has not yet been applied into the object dictionary."_s;
    QCOMPARE(answerer.texts, warned ? QStringList{text} : QStringList());
    QVERIFY(!m_fakes.requests().isEmpty()); // told, not refused
}

void TestWindowGeneration::aMessageLeadsToItsPlace()
{
    Project project;
    project.addLine(1, CheckTest::CANopenLine);
    const auto window = open(project);
    generate(*window);
    QCOMPARE(window->currentLine(), quint8(0));
    Q_EMIT output(*window)->locationActivated(ProjectLocation::ofSubIndex(1, 0x1018, 2));
    QCOMPARE(window->currentLine(), quint8(1));
    QCOMPARE(currentPage(*window), u"objectDictionaryForm"_s);
    Q_EMIT output(*window)->locationActivated(ProjectLocation::ofObject(0, 0x1000));
    QCOMPARE(window->currentLine(), quint8(0));
    Q_EMIT output(*window)->locationActivated(ProjectLocation::ofSetting(u"co_timer_interval"_s));
    QVERIFY(currentPage(*window) != u"objectDictionaryForm"_s);
    QVERIFY(currentPage(*window) != u"generatorOutputForm"_s);
}

int main(int argc, char **argv)
{
    const TestHome home;
    KorvelBaseApplication application(argc, argv, u"CANopen NodeSmith"_s, u"4.3.2"_s);
    QCoreApplication::setOrganizationName(u"korvel"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    TestWindowGeneration test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_windowgeneration.moc"
