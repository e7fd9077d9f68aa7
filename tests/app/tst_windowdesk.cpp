#include "app/FileDialogDesk.h"
#include "app/GeneratedFiles.h"
#include "app/TestHome.h"
#include "app/WindowTest.h"
#include "forms/output/GeneratorOutputForm.h"
#include "support/DialogUser.h"
#include "widgets/AboutDialog.h"
#include "widgets/FileViewerDialog.h"
#include "widgets/HelpViewerDialog.h"
#include "widgets/KorvelBaseApplication.h"

#include <QAbstractButton>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStatusBar>
#include <QTableView>
#include <QToolBar>
#include <QToolBox>

using namespace Qt::StringLiterals;

/** Somebody at the window: keys, what the window tells, and the dialogs that it brings up. */
class TestWindowDesk : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void slotsHaveTheirNamesAndParameters_data();
    void slotsHaveTheirNamesAndParameters();

    void keysLeadThroughThePagesOfTheLine();
    void theHeadersOfPagesTakeTheKeyboard();
    void copyFollowsTheSelectionOfThePage();
    void selectAllMeansTheMessages();
    void toolTipsNameTheKeys();
    void aLongPathLeavesRoomForMessages();
    void theFirstWindowIsBigEnoughToWorkIn();
    void aStoredSizeWins();
    void noPageScrollsInTheFirstWindow();
    void theProtocolStaysReadableWhenTheDesktopTurnsDark();

    void aViewerActionShowsItsFile_data();
    void aViewerActionShowsItsFile();
    void helpComesUpOnceAndTheChangelogIsAFile();
    void aboutComesUpByItsKey();
    void aNewProjectWasNeverSaved();

private:
    static QToolBox *pages(const VexMainWindow &window) { return window.findChild<QToolBox *>(u"tbMain"_s); }
    static QString pageName(const VexMainWindow &window)
    {
        return pages(window)->currentWidget()->objectName();
    }
};

void TestWindowDesk::slotsHaveTheirNamesAndParameters_data()
{
    const QByteArrayList names{
        "doThingsAfterStartup()",
        "doThingsAfter1Second()",
        "importPogress(quint8)",
        "on_actionNew_Project_triggered()",
        "on_actionOpen_Project_triggered()",
        "on_actionSave_Project_triggered()",
        "on_actionSave_Project_as_triggered()",
        "on_actionClose_Project_triggered()",
        "on_actionGenerate_Output_triggered()",
        "on_actionQuit_triggered()",
        "on_actionUndo_triggered()",
        "on_actionRedo_triggered()",
        "handleUndoLimitReached()",
        "on_actionCopy_triggered()",
        "on_actionCut_triggered()",
        "on_actionPaste_triggered()",
        "on_actionDelete_triggered()",
        "on_actionDuplicate_triggered()",
        "on_actionSettings_triggered()",
        "on_action_Import_File_triggered()",
        "openRecent()",
        "generatorProgress(quint8)",
        "newCurrentTabActivated(int)",
        "projectModified(ObjectDataBase::ChangeSet)",
        "handleCheckError(QString)",
        "on_actionEnable_Expert_Mode_toggled(bool)",
        "on_action_Project_Diff_triggered()",
        "handleGotoIndex(quint8,quint16)",
        "handleGoToSubindex(quint8,quint16,quint8)",
        "handleLineChanged(int)",
        "updateLinesComboBox()",
        "newVersion(QString,QString,bool)",
        "on_VexMainWindow_customContextMenuRequested(QPoint)",
        "createFileViewerMenu()",
        "on_actionProjecttransformer_triggered()",
        "searchRequestSlot(QString)",
        "generatorFinished(GeneratorMainHandler::GeneratorResult)",
        "projectCorrectionDone()",
        "finishOpenProcedure()",
    };
    QTest::addColumn<QByteArray>("name");
    for (const QByteArray &name : names)
        QTest::newRow(name.constData()) << name;
}

void TestWindowDesk::slotsHaveTheirNamesAndParameters()
{
    QFETCH(const QByteArray, name);
    QVERIFY(VexMainWindow::staticMetaObject.indexOfSlot(name) >= 0);
}

void TestWindowDesk::keysLeadThroughThePagesOfTheLine()
{
    const auto window = makeWindow();
    window->openProject(saveProject());
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    QStringList forward{pageName(*window)};
    do {
        QTest::keyClick(window.get(), Qt::Key_PageDown, Qt::ControlModifier);
        forward.append(pageName(*window));
        const QWidget *focus = QApplication::focusWidget();
        QVERIFY2(focus && window->isAncestorOf(focus), qPrintable(forward.last()));
    } while (forward.last() != forward.first() && forward.size() < 20);
    QCOMPARE(forward,
             QStringList({u"projectPage"_s, u"objectDictionaryForm"_s, u"manufacturerSegmentForm"_s,
                          u"deviceDescriptionForm"_s, u"stackSettingsForm"_s, u"generalSettingsForm"_s,
                          u"targetSettingsForm"_s, u"generatorOutputForm"_s, u"projectPage"_s}));
    QTest::keyClick(window.get(), Qt::Key_PageUp, Qt::ControlModifier);
    QCOMPARE(pageName(*window), u"generatorOutputForm"_s);
    QTest::keyClick(window.get(), Qt::Key_PageUp, Qt::ControlModifier);
    QCOMPARE(pageName(*window), u"targetSettingsForm"_s);
}

void TestWindowDesk::theHeadersOfPagesTakeTheKeyboard()
{
    const auto window = makeWindow();
    window->openProject(saveProject());
    window->show();
    const auto headers = pages(*window)->findChildren<QAbstractButton *>(u"qt_toolbox_toolboxbutton"_s);
    const int page = pages(*window)->indexOf(window->findChild<QWidget *>(u"targetSettingsForm"_s));
    QVERIFY(headers.at(page)->focusPolicy() & Qt::TabFocus);
    headers.at(page)->setFocus();
    QTest::keyClick(headers.at(page), Qt::Key_Space);
    QCOMPARE(pageName(*window), u"targetSettingsForm"_s);
}

void TestWindowDesk::copyFollowsTheSelectionOfThePage()
{
    const auto window = makeWindow();
    window->show();
    window->handleCheckError(u"first"_s);
    window->handleCheckError(u"second"_s);
    auto *output = window->findChild<GeneratorOutputForm *>();
    pages(*window)->setCurrentWidget(output);
    auto *messages = output->findChild<QTableView *>(u"tvMessages"_s);
    QTRY_COMPARE(messages->model()->rowCount(), 2);
    messages->setFocus();
    const QAction *copy = action(*window, u"actionCopy"_s);
    QVERIFY(!copy->isEnabled());
    messages->selectRow(1); // neither the focus nor the clipboard changes
    QVERIFY(copy->isEnabled());
    messages->clearSelection();
    QVERIFY(!copy->isEnabled());
}

void TestWindowDesk::selectAllMeansTheMessages()
{
    const auto window = makeWindow();
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    window->handleCheckError(u"first"_s);
    window->handleCheckError(u"second"_s);
    auto *output = window->findChild<GeneratorOutputForm *>();
    pages(*window)->setCurrentWidget(output);
    auto *messages = output->findChild<QTableView *>(u"tvMessages"_s);
    QTRY_COMPARE(messages->model()->rowCount(), 2);
    messages->setFocus();
    QTest::keyClick(messages, Qt::Key_A, Qt::ControlModifier); // elsewhere this is "About"
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(messages->selectionModel()->selectedRows().size(), 2);
}

void TestWindowDesk::toolTipsNameTheKeys()
{
    const auto window = makeWindow();
    QCOMPARE(action(*window, u"actionNew_Project"_s)->toolTip(), u"New Project (Ctrl+N)"_s);
    QCOMPARE(action(*window, u"actionGenerate_Output"_s)->toolTip(), u"Generate Files (Ctrl+G)"_s);
}

void TestWindowDesk::aLongPathLeavesRoomForMessages()
{
    const QString folder = QString(40, u'f');
    QVERIFY(QDir(m_folder->path()).mkpath(folder + u'/' + folder + u'/' + folder));
    const auto window = makeWindow();
    window->openProject(saveProject(folder + u'/' + folder + u'/' + folder + "/pump.vexp"_L1));
    window->show();
    window->resize(700, 600);
    QTest::qWait(50);
    const auto *label = window->findChild<QLabel *>(u"pathLabel"_s);
    QVERIFY(label->isVisible());
    QVERIFY(label->width() > window->width() / 2); // as much of the path as there is room for
    window->statusBar()->showMessage(u"Project saved."_s);
    QVERIFY(label->isVisible());
    const int textWidth = window->fontMetrics().horizontalAdvance(u"Project saved. Once more."_s);
    QVERIFY2(label->x() > textWidth, qPrintable(u"%1 %2"_s.arg(label->x()).arg(textWidth)));
}

void TestWindowDesk::theFirstWindowIsBigEnoughToWorkIn()
{
    const auto window = makeWindow();
    window->show();
    const QRect screen = window->screen()->availableGeometry();
    QVERIFY(screen.contains(window->frameGeometry()));
    QVERIFY(window->width() >= qMin(1000, screen.width() - 20));
    QVERIFY(window->height() >= qMin(740, screen.height() - 60));
    window->resize(600, 500);
    window->hide();
    window->show(); // only the first time is the first
    QCOMPARE(window->size(), QSize(600, 500));
}

void TestWindowDesk::aStoredSizeWins()
{
    UserSettings().setValue("Geometry/size"_L1, QSize(640, 560));
    const auto window = makeWindow();
    window->show();
    QCOMPARE(window->size(), QSize(640, 560));
}

void TestWindowDesk::noPageScrollsInTheFirstWindow()
{
    const auto window = makeWindow();
    window->openProject(saveProject());
    for (const quint16 index : {0x1000, 0x1001, 0x1017, 0x1018, 0x2000}) // a page of a table, not of a note
        QVERIFY(m_store->addIndex(0, index, {}));
    window->show();
    for (int page = 0; page < pages(*window)->count(); ++page) {
        if (!pages(*window)->isItemEnabled(page))
            continue;
        pages(*window)->setCurrentIndex(page);
        QTest::qWait(50);
        const auto *area =
            qobject_cast<QScrollArea *>(pages(*window)->currentWidget()->parentWidget()->parentWidget());
        QVERIFY(area);
        QVERIFY2(area->verticalScrollBar()->maximum() == 0, qPrintable(pageName(*window)));
    }
}

void TestWindowDesk::theProtocolStaysReadableWhenTheDesktopTurnsDark()
{
    const QPalette light = QApplication::palette();
    const auto window = makeWindow();
    window->show();
    const auto *button = window->findChild<QWidget *>(u"protocolButton"_s);
    QVERIFY(!button->isEnabled());
    QApplication::setPalette(QPalette(QColor(0x40, 0x40, 0x40), QColor(0x2b, 0x2d, 0x30)));
    QTest::qWait(20);
    const QPalette dark = window->palette();
    QVERIFY(dark.color(QPalette::Active, QPalette::ButtonText)
            != light.color(QPalette::Active, QPalette::ButtonText));
    QCOMPARE(button->palette().color(QPalette::Disabled, QPalette::ButtonText),
             dark.color(QPalette::Active, QPalette::ButtonText));
    QApplication::setPalette(light);
}

void TestWindowDesk::aViewerActionShowsItsFile_data()
{
    QTest::addColumn<QString>("name");
    const QStringList names = GeneratedFiles::actionNames();
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << name;
}

void TestWindowDesk::aViewerActionShowsItsFile()
{
    QFETCH(const QString, name);
    const auto window = makeWindow();
    window->openProject(saveProject());
    action(*window, name)->setEnabled(true); // as the menu would if the file were there
    action(*window, name)->trigger();
    QCOMPARE(window->statusBar()->currentMessage(), u"This file has not been generated."_s);
    QVERIFY(!window->findChild<FileViewerDialog *>());
    const QStringList files =
        GeneratedFiles::fileNames(name, {.outputDir = m_folder->path(), .projectName = u"a"_s, .line = 0});
    const QString &file = files.first();
    QVERIFY(TestProject::write(path(file), "content"));
    action(*window, name)->trigger();
    const auto *viewer = window->findChild<FileViewerDialog *>();
    QVERIFY(viewer);
    QVERIFY(viewer->isVisible());
    QCOMPARE(viewer->path(), path(file));
}

void TestWindowDesk::helpComesUpOnceAndTheChangelogIsAFile()
{
    const auto window = makeWindow();
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    QTest::keyClick(window.get(), Qt::Key_F1);
    action(*window, u"action_Hel_p"_s)->trigger();
    QCOMPARE(window->findChildren<HelpViewerDialog *>().size(), 1);
    QVERIFY(window->findChild<HelpViewerDialog *>()->isVisible());
    action(*window, u"actionChangelog"_s)->trigger();
    QVERIFY(window->findChild<FileViewerDialog *>());
}

void TestWindowDesk::aboutComesUpByItsKey()
{
    const auto window = makeWindow();
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    bool seen = false;
    const DialogUser<AboutDialog> user([&seen](AboutDialog &about) {
        seen = true;
        about.reject();
    });
    QTest::keyClick(window.get(), Qt::Key_A, Qt::ControlModifier);
    QVERIFY(seen);
}

void TestWindowDesk::aNewProjectWasNeverSaved()
{
    const auto window = makeWindow();
    window->doThingsAfterStartup();
    QVERIFY(
        m_store->setMiscSetting(u"SaveToolVersion"_s, u"4.3.2"_s)); // as the template of new projects has it
    QVERIFY(m_store->setMiscSetting(u"CreateToolVersion"_s, u"4.3.3"_s));
    QTRY_COMPARE(window->findChild<QLabel *>(u"lblCreated"_s)->text(), u"4.3.3"_s);
    QCOMPARE(window->findChild<QLabel *>(u"lblSaved"_s)->text(), u"not saved yet"_s);
    FileDialogDesk::accepted(action(*window, u"actionSave_Project"_s), path(u"b"_s));
    QCOMPARE(window->findChild<QLabel *>(u"lblSaved"_s)->text(), u"CANopen NodeSmith 4.3.2"_s);
}

int main(int argc, char **argv)
{
    const TestHome home;
    KorvelBaseApplication application(argc, argv, u"CANopen NodeSmith"_s, u"4.3.2"_s);
    QCoreApplication::setOrganizationName(u"korvel"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    TestWindowDesk test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_windowdesk.moc"
