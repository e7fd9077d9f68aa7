#pragma once

#include "app/CommandLineActions.h"
#include "app/GeneratedFiles.h"
#include "app/ProjectLifecycle.h"
#include "app/UserMessages.h"
#include "generators/GeneratorMainHandler.h"
#include "store/ObjectDataBase.h"

#include <QMainWindow>
#include <QSharedPointer>
#include <QTimer>

#include <memory>
#include <optional>

class CODBImporter;
class EditActions;
class ElidedLabel;
class GUIOutputHandler;
class GUIPostGenProgressHandler;
class LinesComboBox;
class MainPages;
class ManualHandler;
class QMenu;
class QToolButton;
class UndoManager;
class newUpdateChecker;
struct ProjectLocation;
namespace Ui {
class VexMainWindow;
}

/**
 * The frame of the program: it connects menus, pages, the project's lifecycle and the command-line
 * actions.
 *
 * It holds the project and the reference store but neither reads nor writes project files itself
 * (ProjectLifecycle), nor knows the order of a batch call (CommandLineActions) or of a generation run
 * (GeneratorMainHandler). What a page shows is the matter of its form.
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
    /** Whatever is still being entered is to be written to the store now. */
    void saveRequest();
    void lineChanged(quint8 line);
    void expertModeChanged(bool expertModeActive);
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
    /** Opens the project whose path the sending action carries. */
    void openRecent();

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
    void newCurrentTabActivated(int index);

    void handleUndoLimitReached();
    void handleCheckError(const QString &errorString);
    void generatorProgress(quint8 progress);
    void generatorFinished(GeneratorMainHandler::GeneratorResult result);
    /** Shows an object of a line, as a click on a finding asks for it. */
    void handleGotoIndex(quint8 line, quint16 index);
    void handleGoToSubindex(quint8 line, quint16 index, quint8 subindex);
    void searchRequestSlot(const QString &searchString);
    void newVersion(const QString &newVersionString, const QString &productCode, bool newerVersion);
    void createFileViewerMenu();

    void on_VexMainWindow_customContextMenuRequested(QPoint pos);
    void on_actionNew_Project_triggered();
    void on_actionOpen_Project_triggered();
    void on_actionSave_Project_triggered();
    void on_actionSave_Project_as_triggered();
    void on_actionClose_Project_triggered();
    void on_actionGenerate_Output_triggered();
    void on_actionQuit_triggered();
    void on_actionUndo_triggered();
    void on_actionRedo_triggered();
    void on_actionCopy_triggered();
    void on_actionCut_triggered();
    void on_actionPaste_triggered();
    void on_actionDelete_triggered();
    void on_actionDuplicate_triggered();
    void on_actionSettings_triggered();
    void on_action_Import_File_triggered();
    void on_actionEnable_Expert_Mode_toggled(bool arg1);
    void on_actionNext_Page_triggered();
    void on_actionPrevious_Page_triggered();
    void on_action_Project_Diff_triggered();
    void on_actionProjecttransformer_triggered();
    void on_actionChangelog_triggered();
    void on_action_Hel_p_triggered();
    void on_action_Manual_triggered();
    void on_actionEum_triggered();
    void on_action_About_triggered();
    void on_actionAbout_Qt_triggered();
    void on_actionCheck_for_Updates_triggered();

    // The file viewer: each shows one generated file.
    void on_actionCo_objects_c_triggered();
    void on_actionCos_conf_h_triggered();
    void on_actionGen_indication_h_triggered();
    void on_actionGen_pgn_c_triggered();
    void on_actionGen_extern_decl_h_triggered();
    void on_actionGen_srdo_c_triggered();
    void on_actionGen_mp_c_triggered();
    void on_actionGen_vobjdict_c_triggered();
    void on_actiongen_indices_h_triggered();
    void on_actiongen_sdm_c_triggered();
    void on_actiongen_rawcan_c_triggered();
    void on_actiongen_rawcan_doc_txt_triggered();
    void on_action_EDS_File_triggered();
    void on_action_CSV_File_triggered();
    void on_action_HTML_Documenation_triggered();
    void on_action_Text_Documentation_triggered();
    void on_action_dbc_file_triggered();
    void on_action_XDD_File_2_triggered();

protected:
    void closeEvent(QCloseEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    using OpenResult = ProjectLifecycle::OpenResult;
    enum class LineCommand { Add = -1, Duplicate = -2, Delete = -3, ChangeType = -4 };

    void setupToolBar();
    void setupProtocolButton();
    void setupStatusBar();
    void setupPages();
    void setupEditActions();
    void setupMenus();
    void setupUndo();
    void setupGeneration();
    void setupConsole();
    void setupUpdateCheck();
    void setupEdition();
    void makeProtocolReadable();

    void setNormalCursor() override;
    void enterNetworkToolMode() override;
    void saveProject() override;
    void generateOutput() override;
    void hideHelp() override;

    // Lifecycle
    /** Asks about unsaved changes and saves them if wished; false when the action is to stop. */
    bool mayReplaceProject();
    QMessageBox::StandardButton askForSave();
    QMessageBox::StandardButton askForSave(int listedChanges);
    bool mayOpenModifiedFile();
    void showVersionNotices();
    void leaveCurrentTab();
    void warnAboutUnappliedConfiguration();
    bool saveToProjectFile();
    bool saveToOtherFile(const QString &path);
    QString askForOpenPath();
    QString askForSavePath();
    QString withProjectEnding(const QString &path, const QString &ending);
    void showOpenFailure(const QString &path, OpenResult result);
    void leaveProjectBehindFailedOpen(OpenResult result);
    void beginNewProjectUnasked();
    void showOpenedProject();
    void showProjectPlace();
    void showNewProject();
    void showNoProject();
    void rememberProjectFile() const;
    void reportSaveResult(bool saved);
    void showTextLosses();
    void watchForUndo();
    void setProjectTitle(const QString &name);
    void setModified(bool modified);
    std::optional<LineType> askForLineType(quint8 line);

    // Lines
    quint8 existingLine(quint8 line) const;
    void followLines();
    LineType currentLineType() const;
    void showLineType();
    void runLineCommand(LineCommand command);
    void addLine();
    void duplicateLine();
    void deleteLine();
    void changeLineType();
    bool tellWhenLinesAreFull();
    bool confirm(const QString &question, QMessageBox::StandardButton defaultButton = QMessageBox::Yes) const;
    std::optional<LineType> typeOfNewLine(quint8 line);
    void showLine(quint8 line);

    // Menus
    void fillRecentProjects();
    void fillExampleProjects();
    void fillProjectMenu(QMenu *menu, const QStringList &titles, const QStringList &paths,
                         const QString &emptyText);
    GeneratedFiles::Place generatedFilesPlace() const;
    void viewFile(const QString &actionName);
    void openLocation(const ProjectLocation &location);
    void applySettings();

    // Generation
    bool ensureOutputFolder();
    bool confirmSrdoGeneration();
    void runGeneration();

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
    QToolButton *m_updateButton = nullptr;
    LinesComboBox *m_linesComboBox = nullptr;
    MainPages *m_pages = nullptr;
    EditActions *m_editActions = nullptr;
    UndoManager *m_undo = nullptr;
    QMenu *m_manualMenu = nullptr;
    ManualHandler *m_manuals = nullptr;
    newUpdateChecker *m_updateChecker = nullptr;
    GUIOutputHandler *m_output = nullptr;
    GUIPostGenProgressHandler *m_progress = nullptr;
    GeneratorMainHandler *m_generator = nullptr;
    QSharedPointer<ObjectDataBase> m_dataBase;
    QSharedPointer<ObjectDataBase> m_referenceDataBase;
    /** Reads the profile of predefined objects; declared behind the store that it writes to. */
    std::unique_ptr<CODBImporter> m_profileImporter;
    ProjectLifecycle m_project;
    QTimer m_finishOpenTimer;
    quint8 m_currentLine = 0;
    int m_currentTab = -1;
    bool m_updateAsked = false; ///< by the user
    bool m_wasShown = false;
    bool m_generating = false;
    bool m_corrected = false; ///< by the generation run that is under way
};
