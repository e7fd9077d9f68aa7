#include "app/BoxAnswerer.h"
#include "app/TestHome.h"
#include "app/WindowPlacement.h"
#include "app/WindowTest.h"
#include "support/DialogUser.h"
#include "widgets/KorvelBaseApplication.h"

#include <QFileDialog>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr auto waiting = "the program waits for an answer to this box, which no display shows";

} // namespace

/** The start of the window and the command-line actions it carries out. */
class TestMainWindow : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void theConstructorReadsTheOptions_data();
    void theConstructorReadsTheOptions();
    void theEditionFlagsCompareTheWholeName_data();
    void theEditionFlagsCompareTheWholeName();
    void theStoredPlaceIsTakenButNeverMaximizedWhenHidden_data();
    void theStoredPlaceIsTakenButNeverMaximizedWhenHidden();
    void startOpensTheLastProjectOnlyWhenWishedAndThere_data();
    void startOpensTheLastProjectOnlyWhenWishedAndThere();
    void startPreparesReferenceLineAndImportAction();
    void aWindowOffAllScreensIsMovedAtStartWithoutProject_data();
    void aWindowOffAllScreensIsMovedAtStartWithoutProject();
    void aPositionIsVisibleWhenAnyScreenHasIt();
    void aHiddenRunGoesOnBehindTheAnsweredBox();
    void aHiddenQuestionIsLoggedAsItStands();
    void aHiddenSaveWithoutFileTellsThatItWaits();
    void whatTheCommandLineChangesCountsAsModified_data();
    void whatTheCommandLineChangesCountsAsModified();
    void theNetworkToolLocksActionsAndNamesTheNode_data();
    void theNetworkToolLocksActionsAndNamesTheNode();
    void saveComesBeforeGenerationAndAgainBehindTheCorrection();
    void aCorrectionOutsideABatchRunIsAlwaysSaved();
    void aCorrectionInABatchRunIsSavedOnlyWithTheOption();
    void generationTellsItsStartAndItsEnd();
    void importProgressIsLogged();
    void theJ1939EditionHidesHelp();
};

void TestMainWindow::theConstructorReadsTheOptions_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("noInfoDialogs");
    QTest::addColumn<bool>("managed");
    QTest::addColumn<bool>("hidden");
    QTest::newRow("none") << QStringList{u"a.vexp"_s} << false << false << false;
    QTest::newRow("-now") << QStringList{u"a.vexp"_s, u"-now"_s} << true << false << false;
    QTest::newRow("-lvx") << QStringList{u"a.vexp"_s, u"-lvx"_s} << true << true << false;
    QTest::newRow("-hidden") << QStringList{u"a.vexp"_s, u"-s"_s, u"-hidden"_s} << false << false << true;
    QTest::newRow("-hidden first") << QStringList{u"-hidden"_s} << false << false << true;
    QTest::newRow("other letter case") << QStringList{u"-NOW"_s, u"-LVX"_s} << false << false << false;
}

void TestMainWindow::theConstructorReadsTheOptions()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const bool, noInfoDialogs);
    QFETCH(const bool, managed);
    QFETCH(const bool, hidden);
    const VexMainWindow window(QStringList{u"program"_s} + arguments);
    QCOMPARE(window.noInfoDialogs(), noInfoDialogs);
    QCOMPARE(window.managedByNetworkTool(), managed);
    QCOMPARE(window.hiddenRun(), hidden);
    QCOMPARE(window.commandLine().arguments(), QStringList{u"program"_s} + arguments);
}

void TestMainWindow::theEditionFlagsCompareTheWholeName_data()
{
    QTest::addColumn<bool>("j1939");
    QTest::addColumn<bool>("can");
    QTest::newRow("CANopen NodeSmith") << false << false;
    QTest::newRow("J1939 NodeSmith") << true << false;
    QTest::newRow("CAN NodeSmith") << false << true;
    QTest::newRow("CAN NodeSmith beta") << false << false;
    QTest::newRow("EnergyBus NodeGuide") << false << false;
}

void TestMainWindow::theEditionFlagsCompareTheWholeName()
{
    QFETCH(const bool, j1939);
    QFETCH(const bool, can);
    QCoreApplication::setApplicationName(QString::fromLatin1(QTest::currentDataTag()));
    const VexMainWindow window({u"program"_s});
    QCOMPARE(window.isJ1939Edition(), j1939);
    QCOMPARE(window.isCanEdition(), can);
}

void TestMainWindow::theStoredPlaceIsTakenButNeverMaximizedWhenHidden_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("maximized");
    QTest::newRow("shown") << QStringList{} << true;
    QTest::newRow("hidden") << QStringList{u"a.vexp"_s, u"-hidden"_s} << false;
}

void TestMainWindow::theStoredPlaceIsTakenButNeverMaximizedWhenHidden()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const bool, maximized);
    {
        const VexMainWindow fresh({u"program"_s});
        QCOMPARE(fresh.size(), QSize(400, 400));
        QCOMPARE(fresh.pos(), QPoint(200, 200));
        QVERIFY(!fresh.isMaximized());
    }
    UserSettings().setValue("Geometry/size"_L1, QSize(610, 520));
    UserSettings().setValue("Geometry/pos"_L1, QPoint(31, 47));
    UserSettings().setValue("Geometry/maximized"_L1, true);
    const VexMainWindow window(QStringList{u"program"_s} + arguments);
    QCOMPARE(window.size(), QSize(610, 520));
    QCOMPARE(window.pos(), QPoint(31, 47));
    QCOMPARE(window.isMaximized(), maximized);
}

void TestMainWindow::startOpensTheLastProjectOnlyWhenWishedAndThere_data()
{
    QTest::addColumn<QVariant>("wished");
    QTest::addColumn<QString>("lastProject");
    QTest::addColumn<QString>("baseName");
    QTest::newRow("nothing stored") << QVariant() << QString() << u"newproject"_s;
    QTest::newRow("wished and there") << QVariant(1) << u"a.vexp"_s << u"a"_s;
    QTest::newRow("not wished") << QVariant(0) << u"a.vexp"_s << u"newproject"_s;
    QTest::newRow("wished but gone") << QVariant(true) << u"gone.vexp"_s << u"newproject"_s;
}

void TestMainWindow::startOpensTheLastProjectOnlyWhenWishedAndThere()
{
    QFETCH(const QVariant, wished);
    QFETCH(const QString, lastProject);
    QFETCH(const QString, baseName);
    QVERIFY(!saveProject().isEmpty());
    if (wished.isValid()) {
        UserSettings().setValue("General/loadlastproject"_L1, wished);
        UserSettings().setValue("General/lastproject"_L1, path(lastProject));
    }
    const auto window = makeWindow();
    window->doThingsAfterStartup();
    QCOMPARE(window->project().projectBaseName(), baseName);
    QVERIFY(!window->isModified());
}

void TestMainWindow::startPreparesReferenceLineAndImportAction()
{
    const auto window = makeWindow();
    QVERIFY(!action(*window, u"action_Import_File"_s)->isEnabled());
    window->doThingsAfterStartup();
    QVERIFY(action(*window, u"action_Import_File"_s)->isEnabled());
    QVERIFY(m_reference->nodeExists(255));
    QVERIFY(m_reference->addIndex(255, 0x1000, ObjectDataBase::INDEX_DATA_T()));
    window->loadReferenceProfile(u":/codb/v301.codb"_s);
    QVERIFY(m_reference->nodeExists(255));
    QVERIFY(!m_store->nodeExists(255));
}

void TestMainWindow::aWindowOffAllScreensIsMovedAtStartWithoutProject_data()
{
    QTest::addColumn<QPoint>("stored");
    QTest::addColumn<bool>("withProject");
    QTest::addColumn<QPoint>("expected");
    const QPoint off(-5000, 7000);
    QTest::newRow("off, start-up logic") << off << false << QPoint(100, 30);
    QTest::newRow("off, project given") << off << true << off;
    QTest::newRow("on a screen, start-up logic") << QPoint(40, 50) << false << QPoint(40, 50);
}

void TestMainWindow::aWindowOffAllScreensIsMovedAtStartWithoutProject()
{
    QFETCH(const QPoint, stored);
    QFETCH(const bool, withProject);
    QFETCH(const QPoint, expected);
    UserSettings().setValue("Geometry/pos"_L1, stored);
    const auto window = makeWindow();
    if (withProject)
        window->openProject(saveProject());
    else
        window->doThingsAfterStartup();
    QCOMPARE(window->pos(), expected);
}

void TestMainWindow::aPositionIsVisibleWhenAnyScreenHasIt()
{
    const QList<QRect> screens{{0, 0, 100, 100}, {200, -50, 100, 100}};
    QVERIFY(WindowPlacement::isVisibleOn(screens, {0, 0}));
    QVERIFY(WindowPlacement::isVisibleOn(screens, {250, -50}));
    QVERIFY(!WindowPlacement::isVisibleOn(screens, {100, 50}));
    QVERIFY(!WindowPlacement::isVisibleOn({}, {0, 0}));
}

void TestMainWindow::aHiddenRunGoesOnBehindTheAnsweredBox()
{
    const QString missing = path(u"missing.vexp"_s);
    const auto window = makeWindow({missing, u"-hidden"_s, u"-g"_s});
    const BoxAnswerer answerer(QMessageBox::Ok);
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(u"^Cannot open project file .*missing.vexp\\. \\S.*\\S$"_s));
    QTest::ignoreMessage(QtWarningMsg, waiting);
    window->openProject(missing);
    QCOMPARE(answerer.texts.size(), 1);
    QVERIFY(!window->isVisible());
    QCOMPARE(window->project().projectBaseName(), u"newproject"_s);
    QCOMPARE(m_store->getLines(), QList<quint8>{0});
    QTimer::singleShot(0, window.get(), &VexMainWindow::doThingsAfter1Second);
    QCOMPARE(QCoreApplication::exec(), 0);
}

void TestMainWindow::aHiddenQuestionIsLoggedAsItStands()
{
    const auto window = makeWindow({u"a.vexp"_s, u"-hidden"_s});
    openAndChange(*window);
    const BoxAnswerer answerer(QMessageBox::Cancel);
    QTest::ignoreMessage(QtWarningMsg,
                         "The current project contains 2 unsaved modifications. "
                         "Do you want to save your changes?");
    QTest::ignoreMessage(QtWarningMsg, waiting);
    action(*window, u"actionNew_Project"_s)->trigger();
    QCOMPARE(answerer.texts.size(), 1);
}

void TestMainWindow::aHiddenSaveWithoutFileTellsThatItWaits()
{
    const auto window = makeWindow({u"-j1939"_s, u"-hidden"_s, u"-s"_s});
    window->doThingsAfterStartup();
    QTest::ignoreMessage(QtWarningMsg, "Save Project: a file name is asked for");
    QTest::ignoreMessage(QtWarningMsg, waiting);
    bool waited = false;
    const DialogUser<QFileDialog> user([&waited](QFileDialog &dialog) {
        waited = true;
        dialog.reject();
    });
    window->doThingsAfter1Second();
    QVERIFY(waited);
}

void TestMainWindow::whatTheCommandLineChangesCountsAsModified_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("name");
    QTest::newRow("-j") << u"-j"_s << u"other.vexp"_s;
    QTest::newRow("--importfile") << u"--importfile"_s << u"import.ini"_s;
    QTest::newRow("-dbmod") << u"-dbmod"_s << u"settings.mod"_s;
}

void TestMainWindow::whatTheCommandLineChangesCountsAsModified()
{
    QFETCH(const QString, option);
    QFETCH(const QString, name);
    ObjectDataBase other;
    QVERIFY(TestProject::fill(other, {0}, u"1"_s));
    QVERIFY(other.addIndex(0, 0x2000, {}));
    QVERIFY(other.saveProject(path(u"a.vexp"_s)));
    QVERIFY(other.addPGN(0, 65226, TestProject::pgn(u"DM1"_s, ObjectDataBase::Transmit)));
    QVERIFY(other.saveProject(path(u"other.vexp"_s)));
    QVERIFY(TestProject::write(path(u"import.ini"_s),
                               "[Projects]\n1=other.vexp\n[Actions]\n1=delete 0:0x2000\n"));
    QVERIFY(TestProject::write(path(u"settings.mod"_s), "GeneralSettings:co_node_id:5\n"));
    const auto window = makeWindow({path(u"a.vexp"_s), option, path(name)});
    window->openProject(path(u"a.vexp"_s));
    QVERIFY(!window->isModified());
    QTimer::singleShot(0, window.get(), &VexMainWindow::doThingsAfter1Second);
    QTest::qWait(300); // the merge alone waits for 200 ms
    QVERIFY(window->isModified());
}

void TestMainWindow::theNetworkToolLocksActionsAndNamesTheNode_data()
{
    QTest::addColumn<QStringList>("further");
    QTest::addColumn<QString>("node");
    QTest::addColumn<QString>("network");
    QTest::addColumn<QString>("titleEnd");
    QTest::addColumn<bool>("generates");
    QTest::newRow("decimal") << QStringList{} << u"32"_s << u"0"_s << u"Node 32"_s << false;
    QTest::newRow("hexadecimal, network")
        << QStringList{} << u"0x20"_s << u"0x11"_s << u"Node 32 (network 17)"_s << false;
    QTest::newRow("nothing set") << QStringList{} << QString() << QString() << u"Node 0"_s << false;
    QTest::newRow("low byte zero") << QStringList{} << u"5"_s << u"0x100"_s << u"Node 5"_s << false;
    QTest::newRow("with -g") << QStringList{u"-g"_s} << u"010"_s << u"0"_s << u"Node 8"_s << true;
}

void TestMainWindow::theNetworkToolLocksActionsAndNamesTheNode()
{
    QFETCH(const QStringList, further);
    QFETCH(const QString, node);
    QFETCH(const QString, network);
    QFETCH(const QString, titleEnd);
    QFETCH(const bool, generates);
    UserSettings().setValue("General/disablecheck"_L1, true);
    const auto window = makeWindow(QStringList{saveProject(), u"-lvx"_s} + further);
    QVERIFY(m_store->setGeneralSetting(u"co_node_id"_s, node));
    QVERIFY(m_store->setGeneralSetting(u"co_network_id"_s, network));
    QTimer::singleShot(0, window.get(), [&window] {
        window->doThingsAfter1Second();
        QCoreApplication::exit(0);
    });
    QCOMPARE(QCoreApplication::exec(), 0);
    const QString start =
        u"Korvel embedded communication - CANopen NodeSmith 4.3.2 invoked by CANopen LinkSmith for "_s;
    QCOMPARE(window->windowTitle(), QString(start + titleEnd));
    for (const QString &name :
         {u"actionNew_Project"_s, u"actionOpen_Project"_s, u"actionClose_Project"_s, u"actionEum"_s})
        QVERIFY2(!action(*window, name)->isEnabled(), qPrintable(name));
    QCOMPARE(action(*window, u"actionGenerate_Output"_s)->isEnabled(), generates);
    QVERIFY(action(*window, u"actionSave_Project"_s)->isEnabled());
}

void TestMainWindow::saveComesBeforeGenerationAndAgainBehindTheCorrection()
{
    UserSettings().setValue("General/disablecheck"_L1, true);
    const QString file = saveProject();
    const QString backup = path(u"a.vexp.bak"_s);
    const auto window = makeWindow({file, u"-hidden"_s, u"-g"_s, u"-s"_s});
    window->openProject(file);
    bool savedBeforeGeneration = false;
    connect(window.get(), &VexMainWindow::sigInstrumentFunctions, this, [&](bool enable) {
        if (enable) {
            savedBeforeGeneration = QFile::exists(backup);
            QVERIFY(QFile::remove(backup));
        } else {
            window->projectCorrectionDone();
        }
    });
    QTimer::singleShot(0, window.get(), &VexMainWindow::doThingsAfter1Second);
    QCOMPARE(QCoreApplication::exec(), 0);
    QVERIFY(savedBeforeGeneration);
    QVERIFY(QFile::exists(backup));
}

void TestMainWindow::aCorrectionOutsideABatchRunIsAlwaysSaved()
{
    const auto window = makeWindow();
    openAndChange(*window);
    window->projectCorrectionDone();
    QVERIFY(!window->isModified());
    ObjectDataBase reader;
    QVERIFY(reader.openDataBase(path(u"a.vexp"_s)));
    QCOMPARE(reader.getGeneralSetting(u"co_node_id"_s), u"3"_s);
}

void TestMainWindow::aCorrectionInABatchRunIsSavedOnlyWithTheOption()
{
    UserSettings().setValue("General/disablecheck"_L1, true);
    const QString file = saveProject();
    const auto window = makeWindow({file, u"-hidden"_s, u"-g"_s});
    window->openProject(file);
    QVERIFY(!window->cliGeneration());
    QTimer::singleShot(0, window.get(), &VexMainWindow::doThingsAfter1Second);
    QCOMPARE(QCoreApplication::exec(), 0);
    QVERIFY(window->cliGeneration());
    QVERIFY(m_store->setGeneralSetting(u"co_node_id"_s, u"3"_s));
    window->projectCorrectionDone();
    QVERIFY(!QFile::exists(path(u"a.vexp.bak"_s)));
}

void TestMainWindow::generationTellsItsStartAndItsEnd()
{
    UserSettings().setValue("General/disablecheck"_L1, true);
    const auto window = makeWindow();
    window->openProject(saveProject());
    const QSignalSpy told(window.get(), &VexMainWindow::sigInstrumentFunctions);
    action(*window, u"actionGenerate_Output"_s)->trigger();
    QTRY_COMPARE(told.count(), 2);
    QCOMPARE(told.at(0).at(0).toBool(), true);
    QCOMPARE(told.at(1).at(0).toBool(), false);
}

void TestMainWindow::importProgressIsLogged()
{
    const auto window = makeWindow();
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(u"importPogress.* 100$"_s));
    window->importPogress(100);
}

void TestMainWindow::theJ1939EditionHidesHelp()
{
    QCoreApplication::setApplicationName(u"J1939 NodeSmith"_s);
    const auto window = makeWindow({u"-j1939"_s});
    QVERIFY(action(*window, u"action_Hel_p"_s)->isVisible());
    window->doThingsAfter1Second();
    QVERIFY(!action(*window, u"action_Hel_p"_s)->isVisible());
}

int main(int argc, char **argv)
{
    const TestHome home;
    KorvelBaseApplication application(argc, argv, u"CANopen NodeSmith"_s, u"4.3.2"_s);
    QCoreApplication::setOrganizationName(u"korvel"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    TestMainWindow test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_mainwindow.moc"
