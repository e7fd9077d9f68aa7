#include "app/BoxAnswerer.h"
#include "app/GeneratedFiles.h"
#include "app/RecentProjects.h"
#include "app/TestHome.h"
#include "app/WindowTest.h"
#include "widgets/KorvelBaseApplication.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QSignalSpy>
#include <QStatusBar>
#include <QToolBar>
#include <QToolBox>
#include <QToolButton>

using namespace Qt::StringLiterals;

/** Menus, shortcuts, recent projects, dropped files, undo and the viewer of generated files. */
class TestMainWindowMenus : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void everyActionHasItsTextAndShortcut_data();
    void everyActionHasItsTextAndShortcut();
    void menusHaveTheirTitles_data();
    void menusHaveTheirTitles();
    void everyActionIsInAMenuAndTellsWhatItDoes();

    void anOpenedProjectIsOfferedAgain();
    void aRecentProjectIsOpenedByItsEntry();
    void aRecentProjectIsOpenedOnlyBehindTheQuestion();
    void withoutRecentProjectsTheMenuSaysSo();
    void examplesNeedThePathToTheStack();

    void aDroppedProjectIsOpened();
    void aDroppedProjectIsOpenedOnlyBehindTheQuestion_data();
    void aDroppedProjectIsOpenedOnlyBehindTheQuestion();
    void otherDropsAreIgnored_data();
    void otherDropsAreIgnored();

    void undoTakesAChangeBackAndRedoMakesItAgain();
    void anOpenedProjectHasNothingToUndo();
    void theLimitOfUndoIsTold();

    void theViewerOffersOnlyFilesThatAreThere();
    void everyViewerActionHasItsSlot();
    void documentsAreFoundByLine_data();
    void documentsAreFoundByLine();

    void expertModeIsOnButInTheEnergyBusEdition_data();
    void expertModeIsOnButInTheEnergyBusEdition();
    void theUpdateButtonComesWithANewerVersion();
    void editActionsMeanTheTextWithTheFocus();

private:
    static bool drop(VexMainWindow &window, const QList<QUrl> &urls, const QString &text = {});
    static QMenu *menu(const VexMainWindow &window, const QString &name)
    {
        return window.findChild<QMenu *>(name);
    }
    static QStringList filled(QMenu *menu);
};

void TestMainWindowMenus::everyActionHasItsTextAndShortcut_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shortcut");
    const auto row = [](const char *name, const QString &text, const QString &shortcut = QString()) {
        QTest::newRow(name) << text << shortcut;
    };
    row("actionNew_Project", u"&New Project"_s, u"Ctrl+N"_s);
    row("actionOpen_Project", u"&Open Project"_s, u"Ctrl+O"_s);
    row("actionSave_Project", u"&Save Project"_s, u"Ctrl+S"_s);
    row("actionSave_Project_as", u"Save Project &as"_s);
    row("actionClose_Project", u"&Close Project"_s);
    row("actionGenerate_Output", u"&Generate Files"_s, u"Ctrl+G"_s);
    row("actionQuit", u"&Quit"_s);
    row("actionUndo", u"&Undo"_s, u"Ctrl+Z"_s);
    row("actionRedo", u"&Redo"_s, u"Ctrl+Shift+Z"_s);
    row("actionCopy", u"C&opy"_s, u"Ctrl+C"_s);
    row("actionCut", u"C&ut"_s, u"Ctrl+X"_s);
    row("actionPaste", u"&Paste"_s, u"Ctrl+V"_s);
    row("actionDelete", u"&Delete"_s);
    row("actionDuplicate", u"Duplicate"_s, u"Ctrl+D"_s);
    row("actionSettings", u"&Settings"_s);
    row("action_Import_File", u"&Import File"_s);
    row("actionEnable_Expert_Mode", u"Enable Expert_Mode"_s);
    row("action_Project_Diff", u"&Project Diff"_s);
    row("actionProjecttransformer", u"Project Transformer"_s);
    row("actionSearch_setting", u"Search setting"_s, u"Ctrl+F"_s);
    row("actionSearchReplace", u"Search and replace..."_s);
    row("actionChangelog", u"Changelog"_s);
    row("action_Hel_p", u"&Help"_s);
    row("action_Manual", u"&Manual"_s, u"Ctrl+M"_s);
    row("action_About", u"&About"_s, u"Ctrl+A"_s);
    row("actionAbout_Qt", u"About &Qt"_s);
    row("actionCheck_for_Updates", u"Check for &Updates"_s);
}

void TestMainWindowMenus::everyActionHasItsTextAndShortcut()
{
    QFETCH(const QString, text);
    QFETCH(const QString, shortcut);
    const auto window = makeWindow();
    const QAction *tested = action(*window, QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY(tested);
    QCOMPARE(tested->text(), text);
    if (!shortcut.isEmpty())
        QCOMPARE(tested->shortcut().toString(), shortcut);
}

void TestMainWindowMenus::menusHaveTheirTitles_data()
{
    QTest::addColumn<QString>("title");
    QTest::newRow("menuFile") << u"&File"_s;
    QTest::newRow("menuEdit") << u"&Edit"_s;
    QTest::newRow("menuOptions") << u"&Options"_s;
    QTest::newRow("menuFile_Viewer") << u"File &Viewer"_s;
    QTest::newRow("menu_Help") << u"&Help"_s;
    QTest::newRow("menu_Misc") << u"&Misc"_s;
    QTest::newRow("menuRecent_Projects") << u"&Recent Projects"_s;
    QTest::newRow("menuExample_Projects") << u"&Example Projects"_s;
}

void TestMainWindowMenus::menusHaveTheirTitles()
{
    QFETCH(const QString, title);
    const auto window = makeWindow();
    const QMenu *tested = menu(*window, QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY(tested);
    QCOMPARE(tested->title(), title);
}

void TestMainWindowMenus::everyActionIsInAMenuAndTellsWhatItDoes()
{
    const auto window = makeWindow();
    const QList<QAction *> actions =
        window->findChildren<QAction *>(QRegularExpression(u"^action"_s), Qt::FindDirectChildrenOnly);
    QVERIFY(actions.size() > 40);
    for (const QAction *tested : actions) {
        bool inMenu = false;
        const QList<QObject *> places = tested->associatedObjects();
        for (const QObject *place : places)
            inMenu = inMenu || qobject_cast<const QMenu *>(place);
        QVERIFY2(inMenu, qPrintable(tested->objectName()));
        QVERIFY2(!tested->statusTip().isEmpty(), qPrintable(tested->objectName()));
    }
}

QStringList TestMainWindowMenus::filled(QMenu *menu)
{
    Q_EMIT menu->aboutToShow();
    QStringList texts;
    const QList<QAction *> actions = menu->actions();
    for (const QAction *entry : actions)
        texts.append(entry->text());
    return texts;
}

void TestMainWindowMenus::anOpenedProjectIsOfferedAgain()
{
    const auto window = makeWindow();
    window->openProject(saveProject(u"one.vexp"_s));
    window->openProject(saveProject(u"two & three.vexp"_s));
    QMenu *recent = menu(*window, u"menuRecent_Projects"_s);
    QCOMPARE(filled(recent), QStringList({path(u"two && three.vexp"_s), path(u"one.vexp"_s)}));
    QCOMPARE(recent->actions().constFirst()->data().toString(), path(u"two & three.vexp"_s));
    QVERIFY(QFile::remove(path(u"one.vexp"_s)));
    QCOMPARE(filled(recent), QStringList{path(u"two && three.vexp"_s)});
}

void TestMainWindowMenus::aRecentProjectIsOpenedByItsEntry()
{
    RecentProjects::add(saveProject(u"one.vexp"_s));
    const auto window = makeWindow();
    QMenu *recent = menu(*window, u"menuRecent_Projects"_s);
    filled(recent);
    recent->actions().constFirst()->trigger();
    QCOMPARE(window->project().projectFile(), path(u"one.vexp"_s));
}

void TestMainWindowMenus::aRecentProjectIsOpenedOnlyBehindTheQuestion()
{
    RecentProjects::add(saveProject(u"one.vexp"_s));
    const auto window = makeWindow();
    openAndChange(*window);
    QMenu *recent = menu(*window, u"menuRecent_Projects"_s);
    filled(recent);
    const BoxAnswerer answerer(QMessageBox::Cancel);
    recent->actions().constLast()->trigger();
    QCOMPARE(answerer.texts.size(), 1);
    QCOMPARE(window->project().projectFile(), path(u"a.vexp"_s));
    QVERIFY(window->isModified());
}

void TestMainWindowMenus::withoutRecentProjectsTheMenuSaysSo()
{
    const auto window = makeWindow();
    QMenu *recent = menu(*window, u"menuRecent_Projects"_s);
    QCOMPARE(filled(recent), QStringList{u"No project has been opened yet"_s});
    QVERIFY(!recent->actions().constFirst()->isEnabled());
}

void TestMainWindowMenus::examplesNeedThePathToTheStack()
{
    const auto window = makeWindow();
    QMenu *examples = menu(*window, u"menuExample_Projects"_s);
    QCOMPARE(filled(examples), QStringList{u"Specify the path to the protocol stack in the settings"_s});
    QVERIFY(QDir(m_folder->path()).mkpath(u"co_example_sl/s1"_s));
    const QString example = saveProject(u"co_example_sl/s1/slave.vexp"_s);
    UserSettings().setValue("General/costackpath", m_folder->path());
    QCOMPARE(filled(examples), QStringList{u"co_example_sl/s1/slave.vexp"_s});
    examples->actions().constFirst()->trigger();
    QCOMPARE(window->project().projectFile(), example);
}

/** Drags content over the window and drops it there; true when the window took it. */
bool TestMainWindowMenus::drop(VexMainWindow &window, const QList<QUrl> &urls, const QString &text)
{
    QMimeData content;
    if (!urls.isEmpty())
        content.setUrls(urls);
    if (!text.isEmpty())
        content.setText(text);
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &content, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &enter);
    if (!enter.isAccepted())
        return false;
    QDropEvent dropped(QPointF(50, 50), Qt::CopyAction, &content, Qt::LeftButton, Qt::NoModifier);
    dropped.ignore();
    QCoreApplication::sendEvent(&window, &dropped);
    return dropped.isAccepted();
}

void TestMainWindowMenus::aDroppedProjectIsOpened()
{
    const QString file = saveProject(u"ä dropped 100% file.vexp"_s);
    const auto window = makeWindow();
    QVERIFY(window->acceptDrops());
    QVERIFY(drop(*window, {QUrl::fromLocalFile(file), QUrl::fromLocalFile(u"/nowhere"_s)}));
    QCOMPARE(window->project().projectFile(), file);
}

void TestMainWindowMenus::aDroppedProjectIsOpenedOnlyBehindTheQuestion_data()
{
    QTest::addColumn<QMessageBox::StandardButton>("answer");
    QTest::addColumn<QString>("baseName");
    QTest::addColumn<bool>("saved");
    QTest::newRow("save") << QMessageBox::Save << u"b"_s << true;
    QTest::newRow("discard") << QMessageBox::Discard << u"b"_s << false;
    QTest::newRow("cancel") << QMessageBox::Cancel << u"a"_s << false;
}

void TestMainWindowMenus::aDroppedProjectIsOpenedOnlyBehindTheQuestion()
{
    QFETCH(const QMessageBox::StandardButton, answer);
    QFETCH(const QString, baseName);
    QFETCH(const bool, saved);
    const QString other = saveProject(u"b.vexp"_s);
    const auto window = makeWindow();
    openAndChange(*window);
    const BoxAnswerer answerer(answer);
    QVERIFY(drop(*window, {QUrl::fromLocalFile(other)}));
    QCOMPARE(answerer.texts.size(), 1);
    QCOMPARE(window->project().projectBaseName(), baseName);
    QCOMPARE(QFile::exists(path(u"a.vexp.bak"_s)), saved);
}

void TestMainWindowMenus::otherDropsAreIgnored_data()
{
    QTest::addColumn<QList<QUrl>>("urls");
    QTest::addColumn<QString>("text");
    QTest::newRow("text") << QList<QUrl>{} << u"/tmp/a.vexp"_s;
    QTest::newRow("missing file") << QList<QUrl>{QUrl::fromLocalFile(u"/nowhere/a.vexp"_s)} << QString();
    QTest::newRow("web page") << QList<QUrl>{QUrl(u"http://localhost/a.vexp"_s)} << QString();
}

void TestMainWindowMenus::otherDropsAreIgnored()
{
    QFETCH(const QList<QUrl>, urls);
    QFETCH(const QString, text);
    const auto window = makeWindow();
    window->openProject(saveProject());
    QVERIFY(!drop(*window, urls, text));
    QCOMPARE(window->project().projectFile(), path(u"a.vexp"_s));
}

void TestMainWindowMenus::undoTakesAChangeBackAndRedoMakesItAgain()
{
    const auto window = makeWindow();
    window->show();
    openAndChange(*window);
    QTRY_VERIFY(action(*window, u"actionUndo"_s)->isEnabled());
    action(*window, u"actionSave_Project"_s)->trigger();
    QVERIFY(!window->isModified());
    action(*window, u"actionUndo"_s)->trigger();
    QCOMPARE(m_store->getGeneralSetting(u"co_node_id"_s), QString());
    QVERIFY(window->isModified()); // the store differs from the file now
    QVERIFY(!action(*window, u"actionUndo"_s)->isEnabled());
    QVERIFY(action(*window, u"actionRedo"_s)->isEnabled());
    action(*window, u"actionRedo"_s)->trigger();
    QCOMPARE(m_store->getGeneralSetting(u"co_node_id"_s), u"3"_s);
    QVERIFY(!action(*window, u"actionRedo"_s)->isEnabled());
}

void TestMainWindowMenus::anOpenedProjectHasNothingToUndo()
{
    const auto window = makeWindow();
    window->show();
    openAndChange(*window);
    QTRY_VERIFY(action(*window, u"actionUndo"_s)->isEnabled());
    const BoxAnswerer answerer(QMessageBox::Discard);
    window->openProject(saveProject(u"b.vexp"_s));
    QVERIFY(!action(*window, u"actionUndo"_s)->isEnabled());
    QTest::qWait(600); // nor does the opening itself count as a step
    QVERIFY(!action(*window, u"actionUndo"_s)->isEnabled());
}

void TestMainWindowMenus::theLimitOfUndoIsTold()
{
    const auto window = makeWindow();
    window->handleUndoLimitReached();
    QCOMPARE(window->statusBar()->currentMessage(),
             u"Undo limit reached - the oldest undo step has been dropped."_s);
}

void TestMainWindowMenus::theViewerOffersOnlyFilesThatAreThere()
{
    const auto window = makeWindow();
    QMenu *viewer = menu(*window, u"menuFile_Viewer"_s);
    Q_EMIT viewer->aboutToShow();
    const QStringList names = GeneratedFiles::actionNames();
    for (const QString &name : names)
        QVERIFY2(!action(*window, name)->isEnabled(), qPrintable(name));
    window->openProject(saveProject());
    QVERIFY(TestProject::write(path(u"gen_define.h"_s), "#define A 1\n"));
    QVERIFY(TestProject::write(path(u"a.eds"_s), "[FileInfo]\n"));
    Q_EMIT viewer->aboutToShow();
    for (const QString &name : names)
        QCOMPARE(action(*window, name)->isEnabled(),
                 name == "actionCos_conf_h"_L1 || name == "action_EDS_File"_L1);
}

void TestMainWindowMenus::everyViewerActionHasItsSlot()
{
    const QStringList names = GeneratedFiles::actionNames();
    QCOMPARE(names.size(), 18);
    for (const QString &name : names) {
        const QByteArray slot = "on_" + name.toLatin1() + "_triggered()";
        QVERIFY2(VexMainWindow::staticMetaObject.indexOfSlot(slot) >= 0, slot);
    }
}

void TestMainWindowMenus::documentsAreFoundByLine_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("line");
    QTest::addColumn<bool>("found");
    QTest::newRow("only line") << u"action_EDS_File"_s << u"p.eds"_s << 0 << true;
    QTest::newRow("line 3") << u"action_EDS_File"_s << u"p_3.eds"_s << 3 << true;
    QTest::newRow("of another line") << u"action_EDS_File"_s << u"p_2.eds"_s << 3 << false;
    QTest::newRow("html of a mixed line") << u"action_HTML_Documenation"_s << u"p_co.html"_s << 0 << true;
    QTest::newRow("text of several lines") << u"action_Text_Documentation"_s << u"p_1.txt"_s << 1 << true;
    QTest::newRow("text of the only line") << u"action_Text_Documentation"_s << u"p_doc.txt"_s << 0 << true;
    QTest::newRow("unknown action") << u"actionX"_s << u"p.eds"_s << 0 << false;
}

void TestMainWindowMenus::documentsAreFoundByLine()
{
    QFETCH(const QString, action);
    QFETCH(const QString, file);
    QFETCH(const int, line);
    QFETCH(const bool, found);
    QVERIFY(TestProject::write(path(file), "x"));
    const GeneratedFiles::Place place{
        .outputDir = m_folder->path(), .projectName = u"p"_s, .line = quint8(line)};
    QCOMPARE(GeneratedFiles::existingFile(action, place), found ? path(file) : QString());
}

void TestMainWindowMenus::expertModeIsOnButInTheEnergyBusEdition_data()
{
    QTest::addColumn<QString>("edition");
    QTest::addColumn<bool>("expert");
    QTest::newRow("CANopen") << u"CANopen NodeSmith"_s << true;
    QTest::newRow("J1939") << u"J1939 NodeSmith"_s << true;
    QTest::newRow("CAN") << u"CAN NodeSmith"_s << true;
    QTest::newRow("EnergyBus") << u"EnergyBus NodeGuide"_s << false;
}

void TestMainWindowMenus::expertModeIsOnButInTheEnergyBusEdition()
{
    QFETCH(const QString, edition);
    QFETCH(const bool, expert);
    QCoreApplication::setApplicationName(edition);
    const auto window = makeWindow();
    QAction *mode = action(*window, u"actionEnable_Expert_Mode"_s);
    QCOMPARE(mode->isChecked(), expert);
    QCOMPARE(mode->toolTip(), u"Enable full configuration possiblities in expert mode"_s);
    QCOMPARE(window->findChild<QToolBar *>(u"mainToolBar"_s)->actions().contains(mode), !expert);
    QSignalSpy changed(window.get(), &VexMainWindow::expertModeChanged);
    mode->trigger();
    QCOMPARE(changed.size(), 1);
    QCOMPARE(changed.first().first().toBool(), !expert);
}

void TestMainWindowMenus::theUpdateButtonComesWithANewerVersion()
{
    const auto window = makeWindow();
    auto *button = window->findChild<QToolButton *>(u"updateButton"_s);
    QVERIFY(button);
    QCOMPARE(button->text(), u"Update available"_s);
    QVERIFY(button->isHidden());
    window->newVersion(u"4.3.2"_s, u"01006"_s, false);
    QCOMPARE(window->statusBar()->currentMessage(), u"No new tool version available."_s);
    QVERIFY(button->isHidden());
    window->newVersion(u"4.4.0"_s, u"01006"_s, true);
    QCOMPARE(window->statusBar()->currentMessage(), u"New tool version 4.4.0 available."_s);
    QVERIFY(!button->isHidden());
}

void TestMainWindowMenus::editActionsMeanTheTextWithTheFocus()
{
    const auto window = makeWindow();
    window->show();
    QLineEdit field(window.get());
    field.setText(u"node"_s);
    field.show();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    field.setFocus();
    field.selectAll();
    Q_EMIT menu(*window, u"menuEdit"_s)->aboutToShow();
    QVERIFY(action(*window, u"actionCut"_s)->isEnabled());
    action(*window, u"actionCut"_s)->trigger();
    QCOMPARE(field.text(), QString());
    QVERIFY(!action(*window, u"actionCopy"_s)->isEnabled()); // nothing is selected any more
    QVERIFY(action(*window, u"actionPaste"_s)->isEnabled());
    action(*window, u"actionPaste"_s)->trigger();
    action(*window, u"actionPaste"_s)->trigger();
    QCOMPARE(field.text(), u"nodenode"_s);
    field.clearFocus();
    Q_EMIT menu(*window, u"menuEdit"_s)->aboutToShow();
    QVERIFY(!action(*window, u"actionPaste"_s)->isEnabled());
}

int main(int argc, char **argv)
{
    const TestHome home;
    KorvelBaseApplication application(argc, argv, u"CANopen NodeSmith"_s, u"4.3.2"_s);
    QCoreApplication::setOrganizationName(u"korvel"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    TestMainWindowMenus test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_mainwindowmenus.moc"
