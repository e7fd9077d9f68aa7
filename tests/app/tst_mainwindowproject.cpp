#include "app/BoxAnswerer.h"
#include "app/FileDialogDesk.h"
#include "app/SelectProtocolDialog.h"
#include "app/TestHome.h"
#include "app/UnusableDataFolder.h"
#include "app/WindowTest.h"
#include "support/DialogUser.h"
#include "widgets/KorvelBaseApplication.h"

#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTableView>
#include <QTest>
#include <QToolButton>

using namespace Qt::StringLiterals;

/** New, open, save and close as the user of the window sees them. */
class TestMainWindowProject : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void anOpenedProjectIsShownAndRemembered();
    void aProjectThatCannotBeOpenedIsToldByABox_data();
    void aProjectThatCannotBeOpenedIsToldByABox();
    void anUnknownEndingIsNeverExplainedByAFormerFailure();
    void anUnusableFirstArgumentLeavesANewProject();
    void aFileOfUnknownKindLeavesTheProjectAsItIs();
    void aFailedNewProjectShowsNoProject();
    void aProjectOfAnotherEditionTellsWhy();
    void aFileChangedOutsideIsOpenedOnlyAfterAQuestion_data();
    void aFileChangedOutsideIsOpenedOnlyAfterAQuestion();
    void changesAreShownAndAskedForBeforeTheyGo_data();
    void changesAreShownAndAskedForBeforeTheyGo();
    void aNewProjectIsSavedUnderAName();
    void saveAsKeepsTheShownLine();
    void noWaitCursorShowsWhileAFailedSaveAsIsTold();
    void noWaitCursorShowsWhileTheProtocolIsAskedFor();
    void aFailedSaveIsToldAndKeepsTheChanges();
    void closingStoresThePlaceAndEndsTheProgram();
    void aCancelledCloseKeepsEverything();
    void theLineBoxShowsTheLinesAndTheirProtocols();
};

void TestMainWindowProject::anOpenedProjectIsShownAndRemembered()
{
    const auto window = makeWindow();
    window->openProject(saveProject());
    QCOMPARE(window->findChild<QLabel *>(u"pathLabel"_s)->text(), path(u"a.vexp"_s));
    QCOMPARE(window->windowTitle(), u"a - CANopen NodeSmith 4.3.2"_s);
    QCOMPARE(UserSettings().value("General/lastproject"_L1).toString(), path(u"a.vexp"_s));
    QCOMPARE(UserSettings().value("General/projectpath"_L1).toString(), m_folder->path());
    QVERIFY(!window->isModified());
    QCOMPARE(m_store->getGeneralSetting(u"new_init_structure"_s), u"1"_s);
    QCOMPARE(window->findChild<QLabel *>(u"lblName"_s)->text(), u"a"_s);
    QCOMPARE(window->findChild<QLabel *>(u"lblFile"_s)->text(), path(u"a.vexp"_s));
    QCOMPARE(window->findChild<QLabel *>(u"lblSaved"_s)->text(), u"CANopen NodeSmith 4.3.2"_s);
}

void TestMainWindowProject::aProjectThatCannotBeOpenedIsToldByABox_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");
    const QString unknown = u"Project files end in .vexp or .vext."_s;
    QTest::newRow("missing") << u"missing.vexp"_s << u"The file %1 does not exist."_s;
    QTest::newRow("unknown switch") << u"-g"_s << unknown;
    QTest::newRow("other ending") << u"a.db"_s << unknown;
}

void TestMainWindowProject::aProjectThatCannotBeOpenedIsToldByABox()
{
    QFETCH(const QString, name);
    QFETCH(QString, reason);
    const auto window = makeWindow();
    const BoxAnswerer answerer(QMessageBox::Ok);
    window->openProject(path(name));
    QCOMPARE(answerer.texts, QStringList{u"Cannot open project file %1."_s.arg(path(name))});
    QCOMPARE(answerer.titles, QStringList{u"CANopen NodeSmith  4.3.2"_s});
    QCOMPARE(answerer.informativeTexts, QStringList{reason.replace("%1"_L1, path(name))});
    QVERIFY(window->project().projectFile().isEmpty());
    QVERIFY(!UserSettings().contains("General/lastproject"_L1));
}

void TestMainWindowProject::anUnknownEndingIsNeverExplainedByAFormerFailure()
{
    QVERIFY(TestProject::save(path(u"j.vexp"_s), u"J1939 NodeSmith"_s, u"2"_s));
    const auto window = makeWindow();
    QVERIFY(!m_store->openDataBase(path(u"j.vexp"_s)));
    QVERIFY(!m_store->lastError().isEmpty());
    const BoxAnswerer answerer(QMessageBox::Ok);
    window->openProject(path(u"a.db"_s));
    QCOMPARE(answerer.informativeTexts, QStringList{u"Project files end in .vexp or .vext."_s});
}

void TestMainWindowProject::anUnusableFirstArgumentLeavesANewProject()
{
    const auto window = makeWindow({u"-g"_s});
    QVERIFY(m_store->setGeneralSetting(u"co_node_id"_s, u"3"_s));
    QVERIFY(window->isModified());
    const BoxAnswerer answerer(QMessageBox::Ok);
    window->openProject(*window->commandLine().project());
    QCOMPARE(answerer.texts.size(), 1); // about the file, not about changes
    QCOMPARE(window->project().projectBaseName(), u"newproject"_s);
    QCOMPARE(window->findChild<QLabel *>(u"pathLabel"_s)->text(), u"new project"_s);
    QCOMPARE(window->findChild<QLabel *>(u"lblName"_s)->text(), u"New project"_s);
    QCOMPARE(m_store->getGeneralSetting(u"new_init_structure"_s), u"1"_s);
    QVERIFY(!window->isModified());
}

void TestMainWindowProject::aFileOfUnknownKindLeavesTheProjectAsItIs()
{
    ObjectDataBase project;
    QVERIFY(TestProject::fill(project, {0, 3}, u"1"_s));
    QVERIFY(project.saveProject(path(u"two.vexp"_s)));
    const auto window = makeWindow();
    window->openProject(path(u"two.vexp"_s));
    window->updateFormsForLine(3, false);
    QTest::qWait(20); // all signs of the opening have gone
    QVERIFY(m_store->setGeneralSetting(u"co_node_id"_s, u"3"_s));
    const BoxAnswerer answerer(QMessageBox::Ok);
    window->openProject(path(u"a.db"_s));
    QCOMPARE(answerer.texts.size(), 1);
    QCOMPARE(window->project().projectFile(), path(u"two.vexp"_s));
    QVERIFY(window->isModified());
    QCOMPARE(window->currentLine(), quint8(3));
    QCOMPARE(window->findChild<QComboBox *>(u"linesComboBox"_s)->currentData().toInt(), 3);
}

void TestMainWindowProject::aFailedNewProjectShowsNoProject()
{
    const auto window = makeWindow();
    window->openProject(saveProject());
    const UnusableDataFolder folder;
    const BoxAnswerer answerer(QMessageBox::Ok);
    action(*window, u"actionNew_Project"_s)->trigger();
    QCOMPARE(answerer.texts, QStringList{u"Cannot create new project file."_s});
    QCOMPARE(answerer.informativeTexts,
             QStringList{u"No working file can be made in the application's data folder."_s});
    QVERIFY(!answerer.waitCursorSeen);
    QVERIFY(window->project().projectFile().isEmpty());
    QCOMPARE(window->findChild<QLabel *>(u"pathLabel"_s)->text(), u"no project"_s);
    QCOMPARE(window->findChild<QLabel *>(u"pathLabel"_s)->toolTip(), QString());
    QCOMPARE(window->windowTitle(), u"CANopen NodeSmith 4.3.2"_s);
    QCOMPARE(window->findChild<QLabel *>(u"lblName"_s)->text(), u"No project"_s);
    for (const QString &name : {u"lblFile"_s, u"lblCreated"_s, u"lblSaved"_s})
        QCOMPARE(window->findChild<QLabel *>(name)->text(), QString());
    QCOMPARE(window->findChild<QTableView *>(u"tvLines"_s)->model()->rowCount(), 0);
    QCOMPARE(window->findChild<QComboBox *>(u"linesComboBox"_s)->count(), 0);
    QVERIFY(!window->isModified());
}

void TestMainWindowProject::aProjectOfAnotherEditionTellsWhy()
{
    QVERIFY(TestProject::save(path(u"j.vexp"_s), u"J1939 NodeSmith"_s, u"2"_s));
    const auto window = makeWindow();
    const BoxAnswerer answerer(QMessageBox::Ok);
    window->openProject(path(u"j.vexp"_s));
    QCOMPARE(answerer.informativeTexts, QStringList{u"File was not created with this tool."_s});
}

void TestMainWindowProject::aFileChangedOutsideIsOpenedOnlyAfterAQuestion_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QMessageBox::StandardButton>("answer");
    QTest::addColumn<int>("questions");
    QTest::addColumn<QString>("baseName");
    QTest::newRow("yes") << QStringList{} << QMessageBox::Yes << 1 << u"a"_s;
    QTest::newRow("no") << QStringList{} << QMessageBox::No << 1 << u"newproject"_s;
    QTest::newRow("network tool") << QStringList{u"a.vexp"_s, u"-lvx"_s} << QMessageBox::No << 0 << u"a"_s;
}

void TestMainWindowProject::aFileChangedOutsideIsOpenedOnlyAfterAQuestion()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QMessageBox::StandardButton, answer);
    QFETCH(const int, questions);
    QFETCH(const QString, baseName);
    const QString file = saveProject();
    {
        QSqlDatabase editor = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"editor"_s);
        editor.setDatabaseName(file);
        QVERIFY(editor.open());
        QSqlQuery query(editor);
        QVERIFY(query.exec(u"insert into GeneralSettings values('edited', 'outside')"_s));
    }
    QSqlDatabase::removeDatabase(u"editor"_s);
    const auto window = makeWindow(arguments);
    const BoxAnswerer answerer(answer);
    window->openProject(file);
    QCOMPARE(answerer.texts.size(), questions);
    if (questions > 0) {
        QCOMPARE(answerer.icons.first(), QMessageBox::Warning);
        QCOMPARE(answerer.texts.first(), u"This project file has been modified outside of the tool."_s);
        QCOMPARE(answerer.informativeTexts.first(),
                 u"The modification has been recorded in the project file.\n\nOpen the project anyway?"_s);
    }
    QCOMPARE(window->project().projectBaseName(), baseName);
}

void TestMainWindowProject::changesAreShownAndAskedForBeforeTheyGo_data()
{
    QTest::addColumn<QMessageBox::StandardButton>("answer");
    QTest::addColumn<bool>("saved");
    QTest::addColumn<QString>("baseName");
    QTest::newRow("save") << QMessageBox::Save << true << u"newproject"_s;
    QTest::newRow("discard") << QMessageBox::Discard << false << u"newproject"_s;
    QTest::newRow("cancel") << QMessageBox::Cancel << false << u"a"_s;
}

void TestMainWindowProject::changesAreShownAndAskedForBeforeTheyGo()
{
    QFETCH(const QMessageBox::StandardButton, answer);
    QFETCH(const bool, saved);
    QFETCH(const QString, baseName);
    const auto window = makeWindow();
    openAndChange(*window);
    const BoxAnswerer answerer(answer);
    action(*window, u"actionNew_Project"_s)->trigger();
    QCOMPARE(answerer.texts, QStringList{u"The current project contains 2 unsaved modifications."_s});
    QCOMPARE(answerer.informativeTexts, QStringList{u"Do you want to save your changes?"_s});
    QCOMPARE(QFile::exists(path(u"a.vexp.bak"_s)), saved);
    QCOMPARE(window->project().projectBaseName(), baseName);
}

void TestMainWindowProject::saveAsKeepsTheShownLine()
{
    ObjectDataBase project;
    QVERIFY(TestProject::fill(project, {0, 1, 2, 3}, u"1"_s));
    QVERIFY(project.saveProject(path(u"four.vexp"_s)));
    const auto window = makeWindow();
    window->openProject(path(u"four.vexp"_s));
    auto *box = window->findChild<QComboBox *>(u"linesComboBox"_s);
    box->setCurrentIndex(3);
    Q_EMIT box->activated(3);
    FileDialogDesk::accepted(action(*window, u"actionSave_Project_as"_s), path(u"b"_s));
    QCOMPARE(window->currentLine(), quint8(3));
    QCOMPARE(box->currentData().toInt(), 3);
    auto *lines = window->findChild<QTableView *>(u"tvLines"_s);
    QCOMPARE(lines->currentIndex().row(), 3);
    QCOMPARE(window->project().projectFile(), path(u"b.vexp"_s));
    QCOMPARE(window->findChild<QLabel *>(u"pathLabel"_s)->text(), path(u"b.vexp"_s));
    QCOMPARE(window->findChild<QLabel *>(u"lblName"_s)->text(), u"b"_s);
    QCOMPARE(UserSettings().value("General/lastproject"_L1).toString(), path(u"b.vexp"_s));
}

void TestMainWindowProject::noWaitCursorShowsWhileAFailedSaveAsIsTold()
{
    const auto window = makeWindow();
    window->doThingsAfterStartup();
    m_store->closeDataBase();
    const BoxAnswerer answerer(QMessageBox::Ok);
    FileDialogDesk::accepted(action(*window, u"actionSave_Project_as"_s), path(u"b"_s));
    QCOMPARE(answerer.texts, QStringList{u"Cannot save project file."_s});
    QVERIFY(!answerer.waitCursorSeen);
    QVERIFY(!QApplication::overrideCursor());
}

void TestMainWindowProject::noWaitCursorShowsWhileTheProtocolIsAskedFor()
{
    QCoreApplication::setApplicationName(u"CAN NodeSmith"_s);
    const auto window = makeWindow();
    bool asked = false;
    const DialogUser<SelectProtocolDialog> user([&asked](SelectProtocolDialog &dialog) {
        asked = true;
        QVERIFY(!QApplication::overrideCursor());
        dialog.reject();
    });
    action(*window, u"actionNew_Project"_s)->trigger();
    QVERIFY(asked);
    QVERIFY(!QApplication::overrideCursor());
    QCOMPARE(window->project().projectBaseName(), u"newproject"_s);
}

void TestMainWindowProject::aNewProjectIsSavedUnderAName()
{
    const auto window = makeWindow();
    window->doThingsAfterStartup();
    FileDialogDesk::accepted(action(*window, u"actionSave_Project"_s), path(u"b"_s));
    QVERIFY(QFile::exists(path(u"b.vexp"_s)));
    QCOMPARE(window->project().projectFile(), path(u"b.vexp"_s));
    QCOMPARE(window->windowTitle(), u"b - CANopen NodeSmith 4.3.2"_s);
}

void TestMainWindowProject::aFailedSaveIsToldAndKeepsTheChanges()
{
    const auto window = makeWindow();
    openAndChange(*window);
    m_folder.reset(); // the project's folder has gone
    const BoxAnswerer answerer(QMessageBox::Ok);
    action(*window, u"actionSave_Project"_s)->trigger();
    QCOMPARE(answerer.texts, QStringList{u"Cannot save project file."_s});
    QVERIFY(window->isModified());
}

void TestMainWindowProject::closingStoresThePlaceAndEndsTheProgram()
{
    const auto window = makeWindow();
    window->doThingsAfterStartup();
    window->show();
    window->resize(640, 480);
    window->move(60, 70);
    QTimer::singleShot(0, action(*window, u"actionQuit"_s), &QAction::trigger);
    QCOMPARE(QCoreApplication::exec(), 0);
    QCOMPARE(UserSettings().value("Geometry/size"_L1).toSize(), QSize(640, 480));
    QCOMPARE(UserSettings().value("Geometry/pos"_L1).toPoint(), QPoint(60, 70));
    QCOMPARE(UserSettings().value("Geometry/maximized"_L1).toBool(), false);
}

void TestMainWindowProject::aCancelledCloseKeepsEverything()
{
    const auto window = makeWindow();
    openAndChange(*window);
    window->show();
    const BoxAnswerer answerer(QMessageBox::Cancel);
    QVERIFY(!window->close());
    QVERIFY(window->isVisible());
    QVERIFY(window->isModified());
    QCOMPARE(window->project().projectBaseName(), u"a"_s);
    QVERIFY(!UserSettings().contains("Geometry/size"_L1));
}

void TestMainWindowProject::theLineBoxShowsTheLinesAndTheirProtocols()
{
    ObjectDataBase project;
    QVERIFY(TestProject::fill(project, {0, 3}, u"1"_s));
    QVERIFY(project.setGeneralSetting(u"line3type"_s, u"6"_s));
    QVERIFY(project.saveProject(path(u"two.vexp"_s)));
    const auto window = makeWindow();
    window->openProject(path(u"two.vexp"_s));
    auto *box = window->findChild<QComboBox *>(u"linesComboBox"_s);
    QCOMPARE(box->itemText(0), u"Line 0"_s);
    QCOMPARE(box->itemText(1), u"Line 3"_s);
    QCOMPARE(box->findData(4), -1);
    QCOMPARE(window->findChild<QToolButton *>(u"protocolButton"_s)->text(), u"CANopen"_s);
    const QSignalSpy changed(window.get(), &VexMainWindow::lineChanged);
    Q_EMIT box->activated(1);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(window->currentLine(), quint8(3));
    QCOMPARE(window->findChild<QToolButton *>(u"protocolButton"_s)->text(), u"CANopen + CAN"_s);
}

int main(int argc, char **argv)
{
    const TestHome home;
    KorvelBaseApplication application(argc, argv, u"CANopen NodeSmith"_s, u"4.3.2"_s);
    QCoreApplication::setOrganizationName(u"korvel"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    TestMainWindowProject test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_mainwindowproject.moc"
