// The part of the main window that runs the check and the generators and shows what they tell.

#include "app/Edition.h"
#include "app/GUIOutputHandler.h"
#include "app/GUIPostGenProgressHandler.h"
#include "app/LocalEventLoop.h"
#include "app/MainPages.h"
#include "app/UserSettings.h"
#include "app/VexMainWindow.h"
#include "check/ProjectLocation.h"
#include "forms/ObjectDictionaryForm.h"
#include "forms/output/GeneratorOutputForm.h"
#include "generators/ConsoleOutputHandler.h"
#include "generators/canopen/CanopenGenerators.h"
#include "generators/declarations/DeclarationGenerators.h"
#include "generators/descriptions/DescriptionGenerators.h"
#include "generators/documents/DocumentGenerators.h"
#include "store/UndoManager.h"
#include "ui_VexMainWindow.h"

#include <QApplication>
#include <QDebug>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

void VexMainWindow::setupGeneration()
{
    m_output = new GUIOutputHandler(this);
    m_output->setOutputForm(m_pages->output());
    m_progress = new GUIPostGenProgressHandler(this, m_hiddenRun);
    m_generator = new GeneratorMainHandler(this);
    m_generator->setOutputHandler(m_output);
    if (m_hiddenRun)
        setupConsole();
    m_generator->setProgressHandler(m_progress);
    GeneratorFactories factories;
    addCanopenGenerators(factories);
    addDeclarationGenerators(factories);
    addDescriptionGenerators(factories);
    addDocumentGenerators(factories);
    m_generator->setFactories(factories);
    connect(m_generator, &GeneratorMainHandler::doneCorrection, this, &VexMainWindow::projectCorrectionDone);
    connect(m_generator, &GeneratorMainHandler::finished, this, &VexMainWindow::generatorFinished);
}

/** A build log tells the whole story of a run; its result is told before a box may wait for an answer. */
void VexMainWindow::setupConsole()
{
    auto *console = new ConsoleOutputHandler(m_output, this);
    m_generator->setOutputHandler(console);
    connect(m_generator, &GeneratorMainHandler::finished, console, &ConsoleOutputHandler::writeResult);
}

void VexMainWindow::on_actionGenerate_Output_triggered()
{
    if (m_generating || !ensureOutputFolder())
        return;
    m_generating = true;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    leaveCurrentTab();
    m_pages->show(m_pages->output());
    runLocalEventLoop(200ms);
    warnAboutUnappliedConfiguration();
    Q_EMIT sigInstrumentFunctions(true);
    m_progress->setLabelText(tr("Generation in progress..."));
    m_progress->setCancelButtonText(QString()); // only the steps behind the generators can be cancelled
    if (!m_hiddenRun)
        m_progress->show();
    if (UserSettings().read(SettingsKeys::clearLogging).toBool())
        m_pages->output()->clear();
    m_generator->setGenerateSrdo(confirmSrdoGeneration());
    runGeneration();
}

/** The files land beside the project's file; a project that has none gets one first. */
bool VexMainWindow::ensureOutputFolder()
{
    if (!m_project.projectDir().isEmpty() || m_hiddenRun || m_cliGeneration)
        return true;
    if (m_messages.question(tr("The files are generated into the folder of the project."),
                            tr("Save the project first?"), QMessageBox::Save | QMessageBox::Cancel,
                            QMessageBox::Save)
        == QMessageBox::Save)
        on_actionSave_Project_as_triggered();
    return !m_project.projectDir().isEmpty();
}

bool VexMainWindow::confirmSrdoGeneration()
{
    if (m_dataBase->getGeneralSetting(u"ask_gen_srdo"_s).toInt() == 0)
        return true;
    return m_messages.question(tr("Do you want to generate gen_srdo.c?"), QString(),
                               QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes)
        == QMessageBox::Yes;
}

void VexMainWindow::runGeneration()
{
    m_generator->setProject(m_dataBase, m_project.projectDir(), m_project.projectBaseName());
    m_generator->setHidden(m_hiddenRun);
    m_generator->setGenerateVirtualObjects(m_dataBase->getGeneralSetting(u"special_virtual_objects"_s).toInt()
                                           != 0);
    const bool ignoreCheckErrors = UserSettings().read(SettingsKeys::disableCheck).toBool();
    m_dataBase->blockSignals(true);
    m_undo->pause();
    m_corrected = false;
    m_generator->runGeneration(ignoreCheckErrors);
    m_undo->resume();
    if (m_corrected) { // the corrections are a step of their own, although the store was silent about them
        m_undo->handleDatabaseWrite();
        m_undo->handleDebounceTimeout();
    }
}

void VexMainWindow::generatorFinished(GeneratorMainHandler::GeneratorResult result)
{
    Q_EMIT sigInstrumentFunctions(false);
    m_progress->hide();
    m_dataBase->blockSignals(false);
    QApplication::restoreOverrideCursor();
    m_generating = false;
    m_pages->readAgain(); // nobody has been told what the run has corrected
    if (result == GeneratorMainHandler::GeneratorResult::CheckFailed) {
        show();
        m_messages.warning(tr("The project contains critical errors. Check Generator Output window."),
                           QString());
    }
}

void VexMainWindow::projectCorrectionDone()
{
    qDebug() << Q_FUNC_INFO << m_cliGeneration << m_commandLine.arguments();
    m_corrected = true;
    if (!m_cliGeneration) {
        on_actionSave_Project_triggered();
        ObjectDataBase::ChangeSet wholeProject;
        wholeProject.type = ObjectDataBase::ProjectChanged;
        m_ui->projectPage->updateData(wholeProject);
        if (m_pages->objectDictionary())
            m_pages->objectDictionary()->updateData(wholeProject);
    }
    if (m_commandLine.contains("-s"_L1))
        on_actionSave_Project_triggered();
}

void VexMainWindow::handleCheckError(const QString &errorString)
{
    m_output->writeMessage(errorString);
}

void VexMainWindow::generatorProgress(quint8 progress)
{
    statusBar()->showMessage(tr("Generation: %1 %").arg(progress), 1000);
}

void VexMainWindow::openLocation(const ProjectLocation &location)
{
    const bool ofProject =
        location.kind == ProjectLocation::Kind::None || location.kind == ProjectLocation::Kind::Setting;
    if (!ofProject && location.line != m_currentLine && m_dataBase->nodeExists(location.line)) {
        leaveCurrentTab();
        showLine(location.line);
    }
    if (!m_pages->goTo(location))
        statusBar()->showMessage(tr("There is no page that shows what this message is about."), 3000);
}

void VexMainWindow::handleGotoIndex(quint8 line, quint16 index)
{
    openLocation(ProjectLocation::ofObject(line, index));
}

void VexMainWindow::handleGoToSubindex(quint8 line, quint16 index, quint8 subindex)
{
    openLocation(ProjectLocation::ofSubIndex(line, index, subindex));
}

void VexMainWindow::searchRequestSlot(const QString &searchString)
{
    statusBar()->showMessage(tr("No setting has been found for \"%1\".").arg(searchString), 3000);
}
