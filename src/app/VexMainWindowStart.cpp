// The part of the main window that runs at the start: first project, profile, command-line actions.

#include "app/Edition.h"
#include "app/LinesComboBox.h"
#include "app/MainPages.h"
#include "app/UserSettings.h"
#include "app/VexMainWindow.h"
#include "app/WindowPlacement.h"
#include "forms/ObjectDictionaryForm.h"
#include "importers/CODBImporter.h"
#include "ui_VexMainWindow.h"

#include <QApplication>
#include <QDebug>
#include <QFileInfo>

using namespace Qt::StringLiterals;

void VexMainWindow::doThingsAfterStartup()
{
    const UserSettings settings;
    const QString lastProject = settings.read(SettingsKeys::lastProject).toString();
    if (settings.read(SettingsKeys::loadLastProject).toBool() && QFileInfo(lastProject).isFile())
        openProject(lastProject);
    else
        on_actionNew_Project_triggered();
    loadReferenceProfile(Edition::referenceProfile());
    m_ui->action_Import_File->setEnabled(true);
    WindowPlacement::moveToConnectedScreen(*this);
    m_linesComboBox->setCurrentIndex(0);
}

void VexMainWindow::loadReferenceProfile(const QString &path)
{
    constexpr quint8 line = ObjectDataBase::ReferenceLine;
    constexpr quint32 firstIndex = 0x1000;
    constexpr quint32 lastIndex = 0x1FFF;
    if (!m_referenceDataBase->isOpen())
        return; // told at the start already
    if (m_referenceDataBase->nodeExists(line))
        m_referenceDataBase->removeLine(line);
    m_referenceDataBase->addNode(line, ObjectDataBase::NODE_DATA_T());
    m_profileImporter->setLine(line);
    m_profileImporter->setDatabase(m_referenceDataBase);
    m_profileImporter->setRange(firstIndex, lastIndex);
    if (!m_profileImporter->setFile(path) || !m_profileImporter->startImport())
        qWarning().noquote() << "The reference profile" << path << "cannot be read";
}

void VexMainWindow::importPogress(quint8 percent)
{
    constexpr quint8 complete = 100;
    qDebug().noquote() << Q_FUNC_INFO << percent;
    if (percent == complete && m_pages->objectDictionary())
        m_pages->objectDictionary()->setImportDone(true);
}

void VexMainWindow::doThingsAfter1Second()
{
    // The actions wait in event loops of their own, where the timer would take their changes for the
    // opening's.
    if (m_finishOpenTimer.isActive())
        finishOpenProcedure();
    CommandLineActions(m_commandLine, m_dataBase, *this).run();
}

void VexMainWindow::setNormalCursor()
{
    while (QApplication::overrideCursor())
        QApplication::restoreOverrideCursor();
}

void VexMainWindow::enterNetworkToolMode()
{
    m_managedByNetworkTool = true;
    for (QAction *action :
         {m_ui->actionNew_Project, m_ui->actionOpen_Project, m_ui->actionClose_Project, m_ui->actionEum})
        action->setEnabled(false);
    if (!m_commandLine.contains("-g"_L1))
        m_ui->actionGenerate_Output->setEnabled(false);
    const uint node = m_dataBase->getGeneralSetting(u"co_node_id"_s).toUInt(nullptr, 0);
    const uint network = m_dataBase->getGeneralSetting(u"co_network_id"_s).toUInt(nullptr, 0);
    QString title = "Korvel embedded communication - CANopen NodeSmith "_L1
        + QCoreApplication::applicationVersion() + " invoked by CANopen LinkSmith for Node "_L1
        + QString::number(node);
    if ((network & 0xFFU) != 0)
        title += tr(" (network %1)").arg(network);
    setWindowTitle(title);
}

void VexMainWindow::saveProject()
{
    on_actionSave_Project_triggered();
}

void VexMainWindow::generateOutput()
{
    m_cliGeneration = true;
    on_actionGenerate_Output_triggered();
}

void VexMainWindow::hideHelp()
{
    m_ui->action_Hel_p->setVisible(false);
}
