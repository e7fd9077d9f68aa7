#include "app/VexMainWindow.h"

#include "app/EditActions.h"
#include "app/Edition.h"
#include "app/GUIOutputHandler.h"
#include "app/GUIPostGenProgressHandler.h"
#include "app/LinesComboBox.h"
#include "app/MainPages.h"
#include "app/WindowPlacement.h"
#include "forms/output/GeneratorOutputForm.h"
#include "importers/CODBImporter.h"
#include "store/UndoManager.h"
#include "ui_VexMainWindow.h"
#include "widgets/ElidedLabel.h"
#include "widgets/GuiHelper.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QToolButton>

#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int pathShare = 60; // percent of the status bar that the path may take from its messages

} // namespace

VexMainWindow::VexMainWindow(const QStringList &arguments, QWidget *parent)
    : QMainWindow(parent), m_commandLine(arguments), m_isJ1939Edition(Edition::isJ1939()),
      m_isCanEdition(Edition::isCan()),
      m_noInfoDialogs(m_commandLine.contains("-now"_L1) || m_commandLine.contains("-lvx"_L1)),
      m_managedByNetworkTool(m_commandLine.contains("-lvx"_L1)),
      m_hiddenRun(m_commandLine.contains("-hidden"_L1)), m_ui(std::make_unique<Ui::VexMainWindow>()),
      m_messages(this, m_hiddenRun), m_profileImporter(std::make_unique<CODBImporter>())
{
    connect(m_profileImporter.get(), &CODBImporter::progress, this, &VexMainWindow::importPogress);
    m_ui->setupUi(this);
    setupToolBar();
    setupStatusBar();
    setupPages();
    setupEditActions();
    setupMenus();
    setupUpdateCheck();
    setupUndo();
    setupGeneration();
    setupEdition();
    setProjectTitle(QString());
    m_finishOpenTimer.setSingleShot(true);
    m_finishOpenTimer.setInterval(5ms);
    connect(&m_finishOpenTimer, &QTimer::timeout, this, &VexMainWindow::finishOpenProcedure);
    WindowPlacement::restore(*this, m_hiddenRun);
}

// The focus moves while QWidget takes the children down, when this object is no main window any more.
VexMainWindow::~VexMainWindow()
{
    delete m_editActions;
}

void VexMainWindow::setupToolBar()
{
    const QList<QAction *> actions = m_ui->mainToolBar->actions();
    for (QAction *action : actions)
        if (!action->shortcut().isEmpty())
            action->setToolTip(QString(action->toolTip() + " ("_L1
                                       + action->shortcut().toString(QKeySequence::NativeText) + u')'));
    m_linesComboBox = new LinesComboBox(this);
    m_linesComboBox->setObjectName(u"linesComboBox"_s);
    m_linesComboBox->setToolTip(tr("CAN line"));
    m_linesComboBox->setAccessibleName(tr("CAN line"));
    m_linesComboBox->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    connect(m_linesComboBox, &QComboBox::activated, this, &VexMainWindow::handleLineChanged);
    m_ui->mainToolBar->addSeparator();
    m_ui->mainToolBar->addWidget(m_linesComboBox);
    setupProtocolButton();
}

void VexMainWindow::setupProtocolButton()
{
    m_protocolButton = new QToolButton(this);
    m_protocolButton->setObjectName(u"protocolButton"_s);
    m_protocolButton->setEnabled(false);
    makeProtocolReadable();
    m_ui->mainToolBar->addWidget(m_protocolButton);
}

/** The button cannot be pressed, but it is there to be read. */
void VexMainWindow::makeProtocolReadable()
{
    QPalette colours;
    colours.setColor(QPalette::Disabled, QPalette::ButtonText,
                     palette().color(QPalette::Active, QPalette::ButtonText));
    m_protocolButton->setPalette(colours);
}

void VexMainWindow::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_protocolButton) // the desktop turns dark or light
        makeProtocolReadable();
}

void VexMainWindow::setupStatusBar()
{
    m_pathLabel = new ElidedLabel(this);
    m_pathLabel->setObjectName(u"pathLabel"_s);
    m_pathLabel->setContentsMargins(6, 0, 6, 0);
    statusBar()->addPermanentWidget(m_pathLabel);
}

void VexMainWindow::setupPages()
{
    m_pages = new MainPages(m_ui->tbMain);
    m_ui->tbMain->setItemIcon(m_ui->tbMain->indexOf(m_ui->projectPage), GuiHelper::icon(u"file"_s));
    m_currentTab = m_ui->tbMain->currentIndex();
    connect(m_ui->tbMain, &QToolBox::currentChanged, this, &VexMainWindow::newCurrentTabActivated);
    connect(this, &VexMainWindow::saveRequest, m_pages, &MainPages::commitCurrent);
    connect(this, &VexMainWindow::expertModeChanged, m_pages, &MainPages::setExpertMode);
    connect(m_pages->output(), &GeneratorOutputForm::locationActivated, this, &VexMainWindow::openLocation);
}

void VexMainWindow::setupEditActions()
{
    m_editActions = new EditActions([this] { return m_pages->current(); }, this);
    using Command = EditActions::Command;
    m_editActions->setAction(Command::Cut, m_ui->actionCut);
    m_editActions->setAction(Command::Copy, m_ui->actionCopy);
    m_editActions->setAction(Command::Paste, m_ui->actionPaste);
    m_editActions->setAction(Command::Delete, m_ui->actionDelete);
    m_editActions->setAction(Command::Duplicate, m_ui->actionDuplicate);
    connect(m_ui->menuEdit, &QMenu::aboutToShow, m_editActions, &EditActions::updateEnabling);
    connect(m_pages, &MainPages::editStateChanged, m_editActions, &EditActions::updateEnabling);
}

void VexMainWindow::setupUndo()
{
    m_undo = new UndoManager(this);
    connect(m_undo, &UndoManager::canUndoChanged, m_ui->actionUndo, &QAction::setEnabled);
    connect(m_undo, &UndoManager::canRedoChanged, m_ui->actionRedo, &QAction::setEnabled);
    connect(m_undo, &UndoManager::historyLimitReached, this, &VexMainWindow::handleUndoLimitReached);
    connect(m_undo, &UndoManager::restored, this, [this] { setModified(true); });
}

/** The EnergyBus edition keeps what its wizard has made locked until the user wants otherwise. */
void VexMainWindow::setupEdition()
{
    if (!Edition::isEnergyBus())
        return;
    m_ui->mainToolBar->insertAction(m_ui->actionGenerate_Output, m_ui->actionEnable_Expert_Mode);
    m_ui->actionEnable_Expert_Mode->setChecked(false);
}

void VexMainWindow::setDataBase(const QSharedPointer<ObjectDataBase> &dataBase)
{
    if (m_dataBase)
        disconnect(m_dataBase.get(), nullptr, this, nullptr);
    m_dataBase = dataBase;
    m_project.setDataBase(dataBase.get());
    m_ui->projectPage->setDataBase(dataBase.get());
    m_pages->setDataBase(dataBase);
    if (m_dataBase) {
        connect(m_dataBase.get(), &ObjectDataBase::updateNotify, this, &VexMainWindow::projectModified);
        updateLinesComboBox();
    }
}

void VexMainWindow::setReferenceDataBase(const QSharedPointer<ObjectDataBase> &dataBase)
{
    m_referenceDataBase = dataBase;
}

void VexMainWindow::newCurrentTabActivated(int index)
{
    // The page that is left has still what the user entered there last.
    if (auto *left = qobject_cast<BaseMainForm *>(m_ui->tbMain->widget(m_currentTab)))
        left->commit();
    m_currentTab = index;
    m_editActions->updateEnabling();
}

void VexMainWindow::leaveCurrentTab()
{
    Q_EMIT saveRequest();
}

void VexMainWindow::on_actionQuit_triggered()
{
    close();
}

void VexMainWindow::closeEvent(QCloseEvent *event)
{
    leaveCurrentTab();
    if (m_generating || !mayReplaceProject()) {
        event->ignore();
        return;
    }
    WindowPlacement::store(*this);
    event->accept();
    // Queued, so that the window is closed when the application looks for windows that are not.
    QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
}

void VexMainWindow::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    if (!std::exchange(m_wasShown, true))
        WindowPlacement::growAtFirstStart(*this);
    watchForUndo(); // a hidden run has kept no steps until somebody can undo them
}

void VexMainWindow::resizeEvent(QResizeEvent *event)
{
    QMainWindow::resizeEvent(event);
    m_pathLabel->setMaximumWidth(width() * pathShare / 100);
}

void VexMainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls() && m_ui->actionOpen_Project->isEnabled() && !m_generating)
        event->acceptProposedAction();
}

void VexMainWindow::dropEvent(QDropEvent *event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.isEmpty())
        return;
    const QString path = urls.first().toLocalFile();
    if (!QFileInfo(path).isFile())
        return;
    event->acceptProposedAction();
    leaveCurrentTab();
    if (mayReplaceProject())
        openProject(path);
}

void VexMainWindow::projectModified(const ObjectDataBase::ChangeSet &modification)
{
    setModified(true);
    switch (modification.type) {
    case ObjectDataBase::ProjectChanged:
        showLineType();
        followLines();
        break;
    case ObjectDataBase::NodeChanged:
    case ObjectDataBase::LineRemoved:
        if (modification.line < ObjectDataBase::ClipboardLine) // an import fills the ones above
            followLines();
        break;
    case ObjectDataBase::GeneralSettingChanged:
        showLineType();
        break;
    case ObjectDataBase::J1939SettingChanged:
        if (modification.line == m_currentLine)
            showLineType();
        break;
    default:
        break;
    }
}

bool VexMainWindow::isModified() const
{
    return m_pathLabel->font().italic();
}

void VexMainWindow::setModified(bool modified)
{
    QFont font = m_pathLabel->font();
    font.setItalic(modified);
    m_pathLabel->setFont(font);
}

void VexMainWindow::setProjectTitle(const QString &name)
{
    const QString product =
        QCoreApplication::applicationName() + u' ' + QCoreApplication::applicationVersion();
    setWindowTitle(name.isEmpty() ? product : QString(name + " - "_L1 + product));
}
