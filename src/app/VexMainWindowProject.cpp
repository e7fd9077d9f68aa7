// The part of the main window that runs the project's lifecycle: new, open, save, save as, close.

#include "app/Edition.h"
#include "app/LinesComboBox.h"
#include "app/RecentProjects.h"
#include "app/SelectProtocolDialog.h"
#include "app/UserSettings.h"
#include "app/VersionNotices.h"
#include "app/VexMainWindow.h"
#include "store/UndoManager.h"
#include "tools/ProjectDiffDialog.h"
#include "ui_VexMainWindow.h"
#include "widgets/ElidedLabel.h"
#include "widgets/WaitCursor.h"

#include <QApplication>
#include <QDebug>
#include <QDir>

using namespace Qt::StringLiterals;

namespace {

/** No copy of the store is made, and none is taken back, for the life of this object. */
class UndoPause
{
public:
    explicit UndoPause(UndoManager &undo) : m_undo(undo) { m_undo.pause(); }
    ~UndoPause() { m_undo.resume(); }
    Q_DISABLE_COPY_MOVE(UndoPause)

private:
    UndoManager &m_undo;
};

} // namespace

void VexMainWindow::on_actionNew_Project_triggered()
{
    if (!m_project.projectDir().isEmpty())
        leaveCurrentTab();
    if (!mayReplaceProject())
        return;
    const WaitCursor cursor;
    const bool made = m_project.newProject([this] { return askForLineType(0).value_or(LineType::CANopen); });
    updateLinesComboBox();
    if (made) {
        showNewProject();
    } else {
        showNoProject();
        m_messages.warning(tr("Cannot create new project file."), m_dataBase->lastError());
    }
}

void VexMainWindow::showNewProject()
{
    m_pathLabel->setText(tr("new project"));
    m_pathLabel->setToolTip(QString());
    setProjectTitle(QString());
    m_ui->projectPage->setProject(tr("New project"), QString());
    updateFormsForLine(0, true);
    watchForUndo();
    setModified(false);
}

void VexMainWindow::showNoProject()
{
    m_pathLabel->setText(tr("no project"));
    m_pathLabel->setToolTip(QString());
    setProjectTitle(QString());
    m_ui->projectPage->setProject(tr("No project"), QString());
    updateFormsForLine(0, true);
    setModified(false);
}

std::optional<LineType> VexMainWindow::askForLineType(quint8 line)
{
    // Nobody can answer in a hidden run, and a build must not wait for an answer to a start-up question.
    if (m_hiddenRun)
        return std::nullopt;
    const NormalCursor cursor;
    SelectProtocolDialog dialog(tr("Select CAN protocol for line %1:").arg(line), this);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.lineType();
}

void VexMainWindow::on_actionOpen_Project_triggered()
{
    leaveCurrentTab();
    if (!mayReplaceProject())
        return;
    const QString path = askForOpenPath();
    if (!path.isEmpty())
        openProject(path);
}

void VexMainWindow::openRecent()
{
    const auto *action = qobject_cast<QAction *>(sender());
    if (!action)
        return;
    const QString path = action->data().toString();
    leaveCurrentTab();
    if (mayReplaceProject())
        openProject(path);
}

void VexMainWindow::openProject(const QString &path)
{
    qDebug().noquote() << Q_FUNC_INFO << path;
    const UndoPause pause(*m_undo);
    m_linesComboBox->setCurrentIndex(0);
    const QString absolute = QFileInfo(path).absoluteFilePath();
    const WaitCursor cursor;
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    const OpenResult result = m_project.openProject(absolute);
    if (result != OpenResult::Opened) {
        showOpenFailure(absolute, result);
        leaveProjectBehindFailedOpen(result);
    } else if (mayOpenModifiedFile()) {
        ProjectLifecycle::correctProject(m_dataBase);
        showVersionNotices();
        showOpenedProject();
    } else {
        beginNewProjectUnasked();
    }
}

void VexMainWindow::showOpenFailure(const QString &path, OpenResult result)
{
    // The store has not seen a file of unknown kind: its last error is that of some former failure.
    const QString reason = result == OpenResult::UnknownKind ? tr("Project files end in .vexp or .vext.")
                                                             : m_dataBase->lastError();
    m_messages.warning(tr("Cannot open project file %1.").arg(QDir::toNativeSeparators(path)), reason);
}

/** A store that was not touched keeps its project, but at the start there is none to keep. */
void VexMainWindow::leaveProjectBehindFailedOpen(OpenResult result)
{
    if (result == OpenResult::UnknownKind && m_project.hasProject())
        updateFormsForLine(m_currentLine, false);
    else
        beginNewProjectUnasked();
}

/** The former project has left the store already; there is nothing to ask about. */
void VexMainWindow::beginNewProjectUnasked()
{
    setModified(false);
    on_actionNew_Project_triggered();
}

bool VexMainWindow::mayOpenModifiedFile()
{
    if (m_managedByNetworkTool || !m_dataBase->isExternallyModified())
        return true;
    return m_messages.warning(tr("This project file has been modified outside of the tool."),
                              tr("The modification has been recorded in the project file.\n\n"
                                 "Open the project anyway?"),
                              QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
        == QMessageBox::Yes;
}

void VexMainWindow::showVersionNotices()
{
    const QString savedWith = m_dataBase->getMiscSetting(u"SaveToolVersion"_s);
    if (Edition::isEnergyBus()) {
        if (!savedWith.isEmpty() && savedWith < QCoreApplication::applicationVersion())
            m_messages.information(
                tr("This project has been created by an older version of the EnergyBus NodeGuide. It is "
                   "<strong>required to re-apply EnergyBus settings</strong> to update the project."));
        return;
    }
    const VersionNotices notices(savedWith);
    const QString missingSources = m_noInfoDialogs ? QString() : notices.missingSources();
    if (!missingSources.isEmpty()) {
        m_messages.information(missingSources);
        m_dataBase->setMiscSetting(u"PreviousToolVersion"_s, savedWith);
    }
    const QString copyNotice = m_managedByNetworkTool ? QString() : notices.keepCopy(m_project.projectFile());
    if (!copyNotice.isEmpty())
        m_messages.information(copyNotice);
}

void VexMainWindow::showOpenedProject()
{
    showProjectPlace();
    updateLinesComboBox();
    updateFormsForLine(0, true);
    watchForUndo();
    setModified(false);
    m_finishOpenTimer.start();
}

/** Steps back never reach across an open. Nobody undoes anything in a run that nobody sees. */
void VexMainWindow::watchForUndo()
{
    if (m_dataBase && isVisible())
        m_undo->setDataBase(m_dataBase);
}

/** Where the project lies: all that a save under another name changes. */
void VexMainWindow::showProjectPlace()
{
    m_pathLabel->setText(QDir::toNativeSeparators(m_project.projectFile()));
    m_pathLabel->setToolTip(m_pathLabel->text());
    setProjectTitle(m_project.projectBaseName());
    rememberProjectFile();
    m_ui->projectPage->setProject(m_project.projectBaseName(), m_project.projectFile());
}

void VexMainWindow::finishOpenProcedure()
{
    m_finishOpenTimer.stop();
    setModified(false);
}

void VexMainWindow::rememberProjectFile() const
{
    UserSettings settings;
    settings.setValue(SettingsKeys::projectPath, m_project.projectDir());
    settings.setValue(SettingsKeys::lastProject, m_project.projectFile());
    settings.sync(); // the list of recent projects is read and written by an object of its own
    RecentProjects::add(m_project.projectFile());
}

void VexMainWindow::on_actionSave_Project_triggered()
{
    if (m_project.projectDir().isEmpty()) {
        on_actionSave_Project_as_triggered();
        return;
    }
    leaveCurrentTab();
    warnAboutUnappliedConfiguration();
    reportSaveResult(saveToProjectFile());
}

void VexMainWindow::warnAboutUnappliedConfiguration()
{
    const QString key = u"modificationWithoutApply"_s;
    if (Edition::isEnergyBus()
        && (m_dataBase->getEnergyBusSetting(key) == "1"_L1 || m_dataBase->getGeneralSetting(key) == "1"_L1))
        m_messages.warning(
            tr("The EnergyBus configuration has not yet been applied into the object dictionary."),
            QString());
}

bool VexMainWindow::saveToProjectFile()
{
    const WaitCursor cursor;
    const UndoPause pause(*m_undo);
    return m_project.save();
}

bool VexMainWindow::saveToOtherFile(const QString &path)
{
    const WaitCursor cursor;
    const UndoPause pause(*m_undo);
    return m_project.saveAs(path);
}

void VexMainWindow::on_actionSave_Project_as_triggered()
{
    leaveCurrentTab();
    warnAboutUnappliedConfiguration();
    const QString path = askForSavePath();
    if (path.isEmpty())
        return;
    const bool saved = saveToOtherFile(path);
    if (saved)
        showProjectPlace();
    reportSaveResult(saved);
}

void VexMainWindow::reportSaveResult(bool saved)
{
    if (saved) {
        setModified(false);
        m_ui->projectPage->refresh();
        statusBar()->showMessage(tr("Project saved."), 3000);
        showTextLosses();
    } else {
        m_messages.warning(tr("Cannot save project file."), m_dataBase->lastError());
    }
}

void VexMainWindow::on_actionClose_Project_triggered()
{
    on_actionNew_Project_triggered();
}

/** The text form holds less than a project may hold; what a save has left out must not go unnoticed. */
void VexMainWindow::showTextLosses()
{
    const QStringList losses = m_dataBase->textLosses();
    if (losses.isEmpty())
        return;
    const QString text = tr("The text form does not hold everything of this project.");
    if (m_hiddenRun) // nothing is to be decided, so a batch need not wait for anybody
        qWarning().noquote() << text << losses.join(u' ');
    else
        m_messages.warning(text, losses.join(u'\n'));
}

bool VexMainWindow::mayReplaceProject()
{
    if (m_generating) // from this project, into its folder
        return false;
    switch (askForSave()) {
    case QMessageBox::Save:
        on_actionSave_Project_triggered();
        return !isModified(); // a save that failed or was not finished keeps the project
    case QMessageBox::Discard:
        return true;
    default:
        return false;
    }
}

/** Save, Discard or Cancel; a project without changes is discarded without a question. */
QMessageBox::StandardButton VexMainWindow::askForSave()
{
    if (!isModified())
        return QMessageBox::Discard;
    ProjectDiffDialog changes(this);
    changes.setDataBase(m_dataBase);
    changes.setLine(m_currentLine);
    changes.compareWithFile(m_project.projectFile()); // without a file there is nothing to list
    QMessageBox::StandardButton answer = askForSave(changes.differenceCount());
    while (answer == QMessageBox::NoButton) {
        changes.exec();
        answer = askForSave(changes.differenceCount());
    }
    return answer;
}

/**
 * NoButton when the details are wanted. A project may be modified in what no comparison lists (UDS
 * services, the device description): "0 modifications" would tempt to discard that.
 */
QMessageBox::StandardButton VexMainWindow::askForSave(int listedChanges)
{
    const QMessageBox::StandardButtons buttons =
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel;
    const QString question = tr("Do you want to save your changes?");
    if (listedChanges == 0)
        return m_messages.question(question, QString(), buttons, QMessageBox::Save);
    return m_messages.question(
        tr("The current project contains %1 unsaved modifications.").arg(listedChanges), question, buttons,
        QMessageBox::Save, tr("Show Details"));
}
