// The part of the main window behind its menus: recent and example projects, editing, the viewer of
// generated files, settings and help.

#include "app/EditActions.h"
#include "app/ExampleProjects.h"
#include "app/GeneratedFiles.h"
#include "app/MainPages.h"
#include "app/RecentProjects.h"
#include "app/SettingsDialog.h"
#include "app/UserSettings.h"
#include "app/VexMainWindow.h"
#include "forms/output/GeneratorOutputForm.h"
#include "store/UndoManager.h"
#include "tools/ProjectDiffDialog.h"
#include "ui_VexMainWindow.h"
#include "widgets/AboutDialog.h"
#include "widgets/FileViewerDialog.h"
#include "widgets/GuiHelper.h"
#include "widgets/HelpViewerDialog.h"
#include "widgets/ManualHandler.h"
#include "widgets/newUpdateChecker.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QMenu>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView ownProductCode{"01006"};

} // namespace

void VexMainWindow::setupMenus()
{
    connect(m_ui->menuRecent_Projects, &QMenu::aboutToShow, this, &VexMainWindow::fillRecentProjects);
    connect(m_ui->menuExample_Projects, &QMenu::aboutToShow, this, &VexMainWindow::fillExampleProjects);
    connect(m_ui->menuFile_Viewer, &QMenu::aboutToShow, this, &VexMainWindow::createFileViewerMenu);
    m_manualMenu = new QMenu(this);
    m_manuals = new ManualHandler(m_manualMenu, this);
    connect(m_manuals, &ManualHandler::openFailed, this, [this](const QString &path) {
        m_messages.warning(tr("Cannot open the manual %1.").arg(QDir::toNativeSeparators(path)), QString());
    });
    GuiHelper::setIcons(*this);
    applySettings();
}

/** Fills a menu with projects; a menu without any says why. */
void VexMainWindow::fillProjectMenu(QMenu *menu, const QStringList &titles, const QStringList &paths,
                                    const QString &emptyText)
{
    menu->clear();
    menu->setToolTipsVisible(true);
    for (qsizetype number = 0; number < paths.size(); ++number) {
        // An ampersand in a file name is no mark of a short cut.
        QAction *action =
            menu->addAction(QString(titles[number]).replace(u'&', "&&"_L1), this, &VexMainWindow::openRecent);
        action->setData(paths[number]);
        action->setToolTip(QDir::toNativeSeparators(paths[number]));
        action->setStatusTip(action->toolTip());
        action->setEnabled(m_ui->actionOpen_Project->isEnabled());
    }
    if (paths.isEmpty())
        menu->addAction(emptyText)->setEnabled(false);
}

void VexMainWindow::fillRecentProjects()
{
    const QStringList paths = RecentProjects::existing();
    QStringList titles;
    for (const QString &path : paths)
        titles.append(QDir::toNativeSeparators(path));
    fillProjectMenu(m_ui->menuRecent_Projects, titles, paths, tr("No project has been opened yet"));
}

void VexMainWindow::fillExampleProjects()
{
    const QString stackPath = UserSettings().read(SettingsKeys::stackPath).toString();
    QStringList titles;
    QStringList paths;
    const QList<ExampleProjects::Example> examples = ExampleProjects::find(stackPath);
    for (const ExampleProjects::Example &example : examples) {
        titles.append(example.title);
        paths.append(example.path);
    }
    fillProjectMenu(m_ui->menuExample_Projects, titles, paths,
                    stackPath.isEmpty() ? tr("Specify the path to the protocol stack in the settings")
                                        : tr("No example project in %1").arg(stackPath));
}

void VexMainWindow::on_VexMainWindow_customContextMenuRequested(QPoint pos)
{
    m_editActions->updateEnabling();
    QMenu menu(this);
    menu.addActions({m_ui->actionUndo, m_ui->actionRedo});
    menu.addSeparator();
    menu.addActions(
        {m_ui->actionCut, m_ui->actionCopy, m_ui->actionPaste, m_ui->actionDuplicate, m_ui->actionDelete});
    menu.addSeparator();
    menu.addActions({m_ui->actionSave_Project, m_ui->actionGenerate_Output});
    menu.exec(mapToGlobal(pos));
}

void VexMainWindow::on_actionUndo_triggered()
{
    leaveCurrentTab();
    const WaitCursor cursor;
    m_undo->undo();
}

void VexMainWindow::on_actionRedo_triggered()
{
    const WaitCursor cursor;
    m_undo->redo();
}

void VexMainWindow::handleUndoLimitReached()
{
    statusBar()->showMessage(tr("Undo limit reached - the oldest undo step has been dropped."));
}

void VexMainWindow::on_actionCopy_triggered()
{
    m_editActions->run(EditActions::Command::Copy);
}

void VexMainWindow::on_actionCut_triggered()
{
    m_editActions->run(EditActions::Command::Cut);
}

void VexMainWindow::on_actionPaste_triggered()
{
    m_editActions->run(EditActions::Command::Paste);
}

void VexMainWindow::on_actionDelete_triggered()
{
    m_editActions->run(EditActions::Command::Delete);
}

void VexMainWindow::on_actionDuplicate_triggered()
{
    m_editActions->run(EditActions::Command::Duplicate);
}

void VexMainWindow::on_actionSettings_triggered()
{
    SettingsDialog dialog(this, m_isJ1939Edition);
    dialog.setDataBase(m_dataBase);
    if (dialog.exec() == QDialog::Accepted)
        applySettings();
}

void VexMainWindow::on_actionEnable_Expert_Mode_toggled(bool arg1)
{
    Q_EMIT expertModeChanged(arg1);
}

void VexMainWindow::on_actionNext_Page_triggered()
{
    m_pages->showNeighbour(true);
}

void VexMainWindow::on_actionPrevious_Page_triggered()
{
    m_pages->showNeighbour(false);
}

void VexMainWindow::applySettings()
{
    m_ui->actionProjecttransformer->setVisible(UserSettings().read(SettingsKeys::metadata).toBool());
    m_pages->applySettings();
}

void VexMainWindow::on_action_Hel_p_triggered()
{
    auto *help = findChild<HelpViewerDialog *>(QString(), Qt::FindDirectChildrenOnly);
    if (!help || !help->isVisible()) {
        help = new HelpViewerDialog(this);
        help->setAttribute(Qt::WA_DeleteOnClose);
    }
    help->show();
    help->raise();
    help->activateWindow();
}

void VexMainWindow::on_actionChangelog_triggered()
{
    FileViewerDialog::showFile(u":/CHANGELOG.md"_s, this);
}

void VexMainWindow::on_action_About_triggered()
{
    AboutDialog(this).exec();
}

void VexMainWindow::on_actionAbout_Qt_triggered()
{
    QApplication::aboutQt();
}

void VexMainWindow::newVersion(const QString &newVersionString, const QString &productCode, bool newerVersion)
{
    Q_UNUSED(productCode)
    m_updateButton->setVisible(newerVersion);
    statusBar()->showMessage(newerVersion ? tr("New tool version %1 available.").arg(newVersionString)
                                          : tr("No new tool version available."));
}

void VexMainWindow::createFileViewerMenu()
{
    const GeneratedFiles::Place place = generatedFilesPlace();
    const QStringList names = GeneratedFiles::actionNames();
    for (const QString &name : names)
        if (auto *action = findChild<QAction *>(name))
            action->setEnabled(!GeneratedFiles::existingFile(name, place).isEmpty());
}

GeneratedFiles::Place VexMainWindow::generatedFilesPlace() const
{
    return {.outputDir = m_project.projectDir(),
            .projectName = m_project.projectBaseName(),
            .line = m_currentLine};
}

void VexMainWindow::viewFile(const QString &actionName)
{
    const QString path = GeneratedFiles::existingFile(actionName, generatedFilesPlace());
    if (path.isEmpty())
        statusBar()->showMessage(tr("This file has not been generated."), 3000);
    else
        FileViewerDialog::showFile(path, this);
}

void VexMainWindow::setupUpdateCheck()
{
    m_updateButton = new QToolButton(this);
    m_updateButton->setObjectName(u"updateButton"_s);
    m_updateButton->setText(tr("Update available"));
    m_updateButton->setIcon(QIcon(u":/icon/icon/update_1.png"_s));
    m_updateButton->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_updateButton->setAutoRaise(true);
    m_updateButton->hide();
    statusBar()->addPermanentWidget(m_updateButton);
    connect(m_updateButton, &QToolButton::clicked, this,
            &VexMainWindow::on_actionCheck_for_Updates_triggered);
    m_updateChecker = new newUpdateChecker(ownProductCode, QCoreApplication::applicationVersion(), this);
    connect(m_updateChecker, &newUpdateChecker::newVersion, this, &VexMainWindow::newVersion);
    connect(m_updateChecker, &newUpdateChecker::checkFailed, this, [this](const QString &reason) {
        if (m_updateAsked) // the check at the start disturbs nobody
            statusBar()->showMessage(tr("The newest version could not be found out: %1").arg(reason), 5000);
    });
    m_ui->actionCheck_for_Updates->setEnabled(m_updateChecker->isConfigured());
}

void VexMainWindow::on_actionCheck_for_Updates_triggered()
{
    statusBar()->showMessage(tr("Asking for the newest version..."));
    m_updateAsked = true;
    m_updateChecker->check();
}

/** The menu of manuals comes up where the help menu is, for there the action stands. */
void VexMainWindow::on_action_Manual_triggered()
{
    const QRect title = m_ui->menubar->actionGeometry(m_ui->menu_Help->menuAction());
    m_manualMenu->popup(m_ui->menubar->mapToGlobal(title.bottomLeft()));
}

void VexMainWindow::on_actionEum_triggered()
{
    const QStringList manuals = m_manuals->manuals();
    if (manuals.isEmpty())
        on_action_Hel_p_triggered();
    else
        m_manuals->openManual(manuals.first());
}

void VexMainWindow::on_action_Import_File_triggered()
{
    m_messages.information(tr("Files are imported from the command line in this version: see Help, "
                              "\"Command line\"."));
}

void VexMainWindow::on_action_Project_Diff_triggered()
{
    leaveCurrentTab();
    ProjectDiffDialog dialog(this);
    dialog.setDataBase(m_dataBase);
    dialog.setLine(m_currentLine);
    dialog.exec();
}

void VexMainWindow::on_actionProjecttransformer_triggered() { }
