#include "app/VexMainWindow.h"

#include "app/Edition.h"
#include "app/WindowPlacement.h"
#include "importers/CODBImporter.h"
#include "ui_VexMainWindow.h"
#include "widgets/ElidedLabel.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QToolButton>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

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
    m_finishOpenTimer.setSingleShot(true);
    m_finishOpenTimer.setInterval(5ms);
    connect(&m_finishOpenTimer, &QTimer::timeout, this, &VexMainWindow::finishOpenProcedure);
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
    m_protocolButton->setText(m_dataBase->isOpen() ? LineTypes::title(currentLineType()) : QString());
    m_ui->projectPage->selectLine(line);
}

void VexMainWindow::updateLinesComboBox()
{
    m_linesComboBox->clear();
    if (!m_dataBase->isOpen())
        return;
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

LineType VexMainWindow::currentLineType() const
{
    return LineTypes::fromSetting(m_dataBase->getGeneralSetting(u"line%1type"_s.arg(m_currentLine)));
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
