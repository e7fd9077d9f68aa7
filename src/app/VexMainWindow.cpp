#include "app/VexMainWindow.h"

#include "app/Edition.h"
#include "app/SelectProtocolDialog.h"
#include "app/UserSettings.h"
#include "app/WindowPlacement.h"
#include "importers/CODBImporter.h"
#include "ui_VexMainWindow.h"
#include "widgets/ElidedLabel.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDebug>
#include <QDir>
#include <QFileDialog>
#include <QTimer>
#include <QToolButton>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/** Shows the wait cursor for the life of this object. */
class WaitCursor
{
public:
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
    Q_DISABLE_COPY_MOVE(WaitCursor)
};

QString startFolder()
{
    const QString path = UserSettings().value("General/projectpath"_L1, u"~"_s).toString();
    return path == "~"_L1 ? QDir::homePath() : path;
}

QString productName()
{
    return QCoreApplication::applicationName() + u' ' + QCoreApplication::applicationVersion();
}

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
    setProjectTitle(QString());
    WindowPlacement::restore(*this, m_hiddenRun);
}

VexMainWindow::~VexMainWindow() = default;

void VexMainWindow::setupToolBar()
{
    m_linesComboBox = new QComboBox(this);
    m_linesComboBox->setObjectName(u"linesComboBox"_s);
    m_linesComboBox->setToolTip(tr("CAN line"));
    m_linesComboBox->setAccessibleName(tr("CAN line"));
    m_linesComboBox->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    connect(m_linesComboBox, &QComboBox::activated, this, &VexMainWindow::handleLineChanged);
    m_ui->mainToolBar->addSeparator();
    m_ui->mainToolBar->addWidget(m_linesComboBox);
    m_protocolButton = new QToolButton(this);
    m_protocolButton->setObjectName(u"protocolButton"_s);
    m_protocolButton->setEnabled(false);
    QPalette colours = m_protocolButton->palette(); // it cannot be pressed, but it is there to be read
    colours.setColor(QPalette::Disabled, QPalette::ButtonText,
                     colours.color(QPalette::Active, QPalette::ButtonText));
    m_protocolButton->setPalette(colours);
    m_ui->mainToolBar->addWidget(m_protocolButton);
}

void VexMainWindow::setupStatusBar()
{
    m_pathLabel = new ElidedLabel(this);
    m_pathLabel->setObjectName(u"pathLabel"_s);
    m_pathLabel->setContentsMargins(6, 0, 6, 0);
    statusBar()->addPermanentWidget(m_pathLabel, 1);
}

void VexMainWindow::setDataBase(const QSharedPointer<ObjectDataBase> &dataBase)
{
    if (m_dataBase)
        disconnect(m_dataBase.get(), nullptr, this, nullptr);
    m_dataBase = dataBase;
    m_project.setDataBase(dataBase.get());
    m_ui->projectPage->setDataBase(dataBase.get());
    if (m_dataBase) {
        connect(m_dataBase.get(), &ObjectDataBase::updateNotify, this, &VexMainWindow::projectModified);
        updateLinesComboBox();
    }
}

void VexMainWindow::setReferenceDataBase(const QSharedPointer<ObjectDataBase> &dataBase)
{
    m_referenceDataBase = dataBase;
}

void VexMainWindow::updateFormsForLine(quint8 line, bool force)
{
    if (force)
        m_ui->projectPage->refresh();
    m_currentLine = line;
    m_linesComboBox->setCurrentIndex(qMax(0, m_linesComboBox->findData(line)));
    m_protocolButton->setText(LineTypes::title(currentLineType()));
    m_ui->projectPage->selectLine(line);
}

void VexMainWindow::updateLinesComboBox()
{
    m_linesComboBox->clear();
    const QList<quint8> lines = m_dataBase->getLines();
    for (const quint8 line : lines)
        if (line < ObjectDataBase::ClipboardLine)
            m_linesComboBox->addItem(tr("Line %1").arg(line), line);
}

void VexMainWindow::handleLineChanged(int value)
{
    const auto line = quint8(m_linesComboBox->itemData(value).toUInt());
    updateFormsForLine(line, false);
    Q_EMIT lineChanged(line);
}

void VexMainWindow::on_actionNew_Project_triggered()
{
    if (!mayReplaceProject())
        return;
    bool made = false;
    {
        const WaitCursor cursor;
        made = m_project.newProject([this] { return askForLineType(); });
        updateLinesComboBox();
    }
    if (!made) {
        m_messages.warning(tr("Cannot create new project file."));
        return;
    }
    showNewProject();
}

void VexMainWindow::showNewProject()
{
    m_pathLabel->setText(tr("new project"));
    m_pathLabel->setToolTip(QString());
    setProjectTitle(QString());
    m_ui->projectPage->setProject(tr("New project"), QString());
    updateFormsForLine(0, true);
    setModified(false);
}

LineType VexMainWindow::askForLineType()
{
    // Nobody can answer in a hidden run, and a build must not wait for an answer to a start-up question.
    if (m_hiddenRun)
        return LineType::CANopen;
    SelectProtocolDialog dialog(tr("Select CAN protocol for line %1:").arg(0), this);
    dialog.exec();
    return dialog.lineType();
}

LineType VexMainWindow::currentLineType() const
{
    return LineTypes::fromSetting(m_dataBase->getGeneralSetting(u"line%1type"_s.arg(m_currentLine)));
}

void VexMainWindow::on_actionOpen_Project_triggered()
{
    if (!mayReplaceProject())
        return;
    QFileDialog dialog(this, tr("Open Project"), startFolder(),
                       tr("VEX Projects (*.vexp);;old project files (*.db)")
                           + tr(";;VEXT Projects (*.vext)"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    if (dialog.exec() == QDialog::Accepted)
        openProject(dialog.selectedFiles().constFirst());
}

void VexMainWindow::openProject(const QString &path)
{
    qDebug().noquote() << Q_FUNC_INFO << path;
    m_linesComboBox->setCurrentIndex(0);
    const QString absolute = QFileInfo(path).absoluteFilePath();
    ProjectLifecycle::OpenResult result = ProjectLifecycle::OpenResult::Failed;
    {
        const WaitCursor cursor;
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        result = m_project.openProject(absolute);
    }
    if (result != ProjectLifecycle::OpenResult::Opened) {
        showOpenFailure(absolute);
        if (result == ProjectLifecycle::OpenResult::Failed) {
            setModified(false); // the former project has left the store; there is nothing to ask about
            on_actionNew_Project_triggered();
        }
        return;
    }
    if (mayOpenModifiedFile()) {
        ProjectLifecycle::correctProject(m_dataBase);
        showOpenedProject();
    } else {
        setModified(false);
        on_actionNew_Project_triggered();
    }
}

void VexMainWindow::showOpenFailure(const QString &path)
{
    m_messages.warning(tr("Cannot open project file %1.").arg(QDir::toNativeSeparators(path)),
                       m_dataBase->lastError());
}

bool VexMainWindow::mayOpenModifiedFile()
{
    if (m_managedByNetworkTool || !m_dataBase->isExternallyModified())
        return true;
    return m_messages.question(tr("This project file has been modified outside of the tool."),
                               tr("The modification has been recorded in the project file.\n\n"
                                  "Open the project anyway?"),
                               QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
        == QMessageBox::Yes;
}

void VexMainWindow::showOpenedProject()
{
    m_pathLabel->setText(QDir::toNativeSeparators(m_project.projectFile()));
    m_pathLabel->setToolTip(m_pathLabel->text());
    setProjectTitle(m_project.projectBaseName());
    rememberProjectFile();
    m_ui->projectPage->setProject(m_project.projectBaseName(), m_project.projectFile());
    updateLinesComboBox();
    updateFormsForLine(0, true);
    setModified(false);
    QTimer::singleShot(5ms, this, &VexMainWindow::finishOpenProcedure);
}

void VexMainWindow::finishOpenProcedure()
{
    setModified(false);
}

void VexMainWindow::rememberProjectFile() const
{
    UserSettings settings;
    settings.setValue("General/projectpath"_L1, m_project.projectDir());
    settings.setValue("General/lastproject"_L1, m_project.projectFile());
}

void VexMainWindow::on_actionSave_Project_triggered()
{
    if (m_project.projectDir().isEmpty()) {
        on_actionSave_Project_as_triggered();
        return;
    }
    reportSaveResult(saveToProjectFile());
}

bool VexMainWindow::saveToProjectFile()
{
    const WaitCursor cursor;
    return m_project.save();
}

void VexMainWindow::on_actionSave_Project_as_triggered()
{
    if (m_hiddenRun)
        qWarning("Save Project: the project has no file yet, a file name is asked for");
    QFileDialog dialog(this, tr("Save Project"), startFolder());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters({tr("VEX Projects (*.vexp)"), tr("VEXT Projects (*.vext)")});
    dialog.setDefaultSuffix(u"vexp"_s);
    connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString &filter) {
        dialog.setDefaultSuffix(filter.contains("vext"_L1) ? u"vext"_s : u"vexp"_s);
    });
    dialog.selectFile(m_project.projectBaseName());
    if (dialog.exec() != QDialog::Accepted)
        return;
    const WaitCursor cursor;
    const bool saved = m_project.saveAs(dialog.selectedFiles().constFirst());
    reportSaveResult(saved);
    if (saved)
        showOpenedProject();
}

void VexMainWindow::reportSaveResult(bool saved)
{
    if (saved) {
        setModified(false);
        m_ui->projectPage->refresh();
        statusBar()->showMessage(tr("Project saved."), 3000);
    } else {
        m_messages.warning(tr("Cannot save project file."), m_dataBase->lastError());
    }
}

void VexMainWindow::on_actionClose_Project_triggered()
{
    on_actionNew_Project_triggered();
}

void VexMainWindow::on_actionQuit_triggered()
{
    close();
}

void VexMainWindow::on_action_About_triggered()
{
    QMessageBox::about(
        this, productName(),
        tr("<h3>%1</h3><p>Design tool for CANopen, J1939, raw CAN and UDS devices.</p>").arg(productName()));
}

void VexMainWindow::on_actionAbout_Qt_triggered()
{
    QApplication::aboutQt();
}

bool VexMainWindow::mayReplaceProject()
{
    if (!isModified())
        return true;
    switch (m_messages.question(tr("Do you want to save your changes?"), QString(),
                                QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel,
                                QMessageBox::Save)) {
    case QMessageBox::Save:
        on_actionSave_Project_triggered();
        return !isModified(); // a save that failed or was not finished keeps the project
    case QMessageBox::Discard:
        return true;
    default:
        return false;
    }
}

void VexMainWindow::closeEvent(QCloseEvent *event)
{
    if (!mayReplaceProject()) {
        event->ignore();
        return;
    }
    WindowPlacement::store(*this);
    event->accept();
    // Queued, so that the window is closed when the application looks for windows that are not.
    QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
}

void VexMainWindow::projectModified(const ObjectDataBase::ChangeSet &modification)
{
    setModified(true);
    if (modification.type == ObjectDataBase::GeneralSettingChanged)
        m_protocolButton->setText(LineTypes::title(currentLineType()));
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
    setWindowTitle(name.isEmpty() ? productName() : QString(name + " - "_L1 + productName()));
}
