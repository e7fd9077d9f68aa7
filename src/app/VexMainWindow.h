#pragma once

#include "app/CommandLineActions.h"
#include "app/ProjectLifecycle.h"
#include "app/UserMessages.h"
#include "store/ObjectDataBase.h"

#include <QMainWindow>
#include <QSharedPointer>
#include <QTimer>

#include <memory>

class CODBImporter;
class ElidedLabel;
class QComboBox;
class QToolButton;
namespace Ui {
class VexMainWindow;
}

/**
 * The frame of the program: it connects menus, the project's lifecycle and the command-line actions.
 *
 * It holds the project and the reference store but neither reads nor writes project files itself
 * (ProjectLifecycle) nor knows the order of a batch call (CommandLineActions).
 */
class VexMainWindow : public QMainWindow, private CommandLineTarget
{
    Q_OBJECT

public:
    /** The list is that of QCoreApplication::arguments(), the program's name first. */
    explicit VexMainWindow(const QStringList &arguments, QWidget *parent = nullptr);
    ~VexMainWindow() override;

    bool isJ1939Edition() const { return m_isJ1939Edition; }
    bool isCanEdition() const { return m_isCanEdition; }
    /** "-hidden": the window is not shown, boxes also go to the log. */
    bool hiddenRun() const { return m_hiddenRun; }
    /** "-now" or "-lvx": notices about projects of older versions are left out. */
    bool noInfoDialogs() const { return m_noInfoDialogs; }
    /** "-lvx": the network tool decides what is opened. */
    bool managedByNetworkTool() const { return m_managedByNetworkTool; }
    /** True from the moment on that "-g" has started a generation run. */
    bool cliGeneration() const { return m_cliGeneration; }
    const CommandLine &commandLine() const { return m_commandLine; }
    const ProjectLifecycle &project() const { return m_project; }
    quint8 currentLine() const { return m_currentLine; }
    /** True while the project differs from its file. */
    bool isModified() const;

    /** Loads the predefined objects of a profile into the reference store. */
    void loadReferenceProfile(const QString &path);

Q_SIGNALS:
    void lineChanged(quint8 line);
    /** A generation run starts (true) or has ended (false). */
    void sigInstrumentFunctions(bool enable);

public Q_SLOTS:
    void setDataBase(const QSharedPointer<ObjectDataBase> &dataBase);
    void setReferenceDataBase(const QSharedPointer<ObjectDataBase> &dataBase);
    /** Shows a line; `force` reads it again even when it is shown already. */
    void updateFormsForLine(quint8 line, bool force);
    /**
     * Opens a project. A failure is told by a message box and leaves a new project; a file of unknown
     * kind leaves the former project as it was.
     */
    void openProject(const QString &path);

    /** Start without a project on the command line: the last project or a new one. */
    void doThingsAfterStartup();
    /** Runs the command-line actions; the first event of the event loop, without any delay. */
    void doThingsAfter1Second();
    void importPogress(quint8 percent);
    /** The generation run has corrected the project. */
    void projectCorrectionDone();
    void projectModified(const ObjectDataBase::ChangeSet &modification);
    /** What the opening itself changes does not count as modified, even when it is told late. */
    void finishOpenProcedure();
    void updateLinesComboBox();
    void handleLineChanged(int value);

    void on_actionNew_Project_triggered();
    void on_actionOpen_Project_triggered();
    void on_actionSave_Project_triggered();
    void on_actionSave_Project_as_triggered();
    void on_actionClose_Project_triggered();
    void on_actionGenerate_Output_triggered();
    void on_actionQuit_triggered();
    void on_action_About_triggered();
    void on_actionAbout_Qt_triggered();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    using OpenResult = ProjectLifecycle::OpenResult;

    void setupToolBar();
    void setupStatusBar();

    void setNormalCursor() override;
    void enterNetworkToolMode() override;
    void saveProject() override;
    void generateOutput() override;
    void hideHelp() override;

    /** Asks about unsaved changes and saves them if wished; false when the action is to stop. */
    bool mayReplaceProject();
    bool mayOpenModifiedFile();
    bool saveToProjectFile();
    bool saveToOtherFile(const QString &path);
    void showOpenFailure(const QString &path, OpenResult result);
    void leaveProjectBehindFailedOpen(OpenResult result);
    void beginNewProjectUnasked();
    void showOpenedProject();
    void showProjectPlace();
    void showNewProject();
    void showNoProject();
    void rememberProjectFile() const;
    void reportSaveResult(bool saved);
    void setProjectTitle(const QString &name);
    void setModified(bool modified);
    LineType askForLineType();
    LineType currentLineType() const;

    CommandLine m_commandLine;
    bool m_isJ1939Edition;
    bool m_isCanEdition;
    bool m_noInfoDialogs;
    bool m_managedByNetworkTool;
    bool m_hiddenRun;
    bool m_cliGeneration = false;

    std::unique_ptr<Ui::VexMainWindow> m_ui;
    UserMessages m_messages;
    ElidedLabel *m_pathLabel = nullptr;
    QToolButton *m_protocolButton = nullptr;
    QComboBox *m_linesComboBox = nullptr;
    QSharedPointer<ObjectDataBase> m_dataBase;
    QSharedPointer<ObjectDataBase> m_referenceDataBase;
    /** Reads the profile of predefined objects; declared behind the store that it writes to. */
    std::unique_ptr<CODBImporter> m_profileImporter;
    ProjectLifecycle m_project;
    QTimer m_finishOpenTimer;
    quint8 m_currentLine = 0;
};
