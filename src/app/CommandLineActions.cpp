#include "app/CommandLineActions.h"

#include "app/Edition.h"
#include "app/LocalEventLoop.h"
#include "importers/ImporterFactory.h"
#include "store/ObjectDataBase.h"
#include "store/commands/DatabaseModifier.h"
#include "store/commands/ImportHandler.h"
#include "widgets/TerminationSignals.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QScopeGuard>
#include <QThread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr quint32 highestParameterGroup = 0x3FFFF; // 18 bits: EDP, DP, PF and PS of SAE J1939-21

// The objects of CiA 301 that describe a device: communication, manufacturer and profile segments.
constexpr quint32 firstImportedIndex = 0x1000;
constexpr quint32 lastImportedIndex = 0xBFFF;

/** Waits for the worker's end, or for a termination signal; the program stays alive meanwhile. */
void runToEnd(BaseDataImporter &importer)
{
    QEventLoop loop;
    QObject::connect(&importer, &BaseDataImporter::finished, &loop, &QEventLoop::quit);
    QObject::connect(&importer, &BaseDataImporter::importError, &loop,
                     [](const QString &error) { qWarning().noquote() << "Import error:" << error; });
    if (!importer.startImport())
        return;
    loop.exec();
    while (!importer.isFinished() && TerminationSignals::received() == 0)
        QThread::yieldCurrentThread();
}

} // namespace

struct CommandLineActions::Step
{
    QLatin1StringView option;
    void (CommandLineActions::*run)();
};

const QList<CommandLineActions::Step> &CommandLineActions::steps()
{
    using Self = CommandLineActions;
    static const QList<Step> table{
        {{}, &Self::setNormalCursor},
        {"-i"_L1, &Self::importDescription},
        {"-j"_L1, &Self::mergeParameterGroups},
        {"--importfile"_L1, &Self::applyImportCommands},
        {"-dbmod"_L1, &Self::applyModifier},
        {"-lvx"_L1, &Self::enterNetworkToolMode},
        {"-s"_L1, &Self::save},
        {"-g"_L1, &Self::generateAndQuit},
        {{}, &Self::hideHelp},
    };
    return table;
}

CommandLineActions::CommandLineActions(const CommandLine &commandLine,
                                       const QSharedPointer<ObjectDataBase> &project,
                                       CommandLineTarget &target)
    : m_commandLine(commandLine), m_project(project), m_target(target)
{
}

void CommandLineActions::run()
{
    for (const Step &step : steps()) {
        if (TerminationSignals::received() != 0)
            return; // an aborted run neither saves nor generates what it has done half
        if (step.option.isEmpty() || m_commandLine.contains(step.option))
            (this->*step.run)();
    }
}

QStringList CommandLineActions::stepOptions()
{
    QStringList options;
    for (const Step &step : steps())
        options.append(step.option);
    return options;
}

void CommandLineActions::setNormalCursor()
{
    m_target.setNormalCursor();
}

void CommandLineActions::importDescription()
{
    const QString path = m_commandLine.file("-i"_L1);
    if (!QFileInfo(path).isFile())
        return;
    qDebug().noquote() << "try to import " + path;
    const auto importer = ImporterFactory::make(QFileInfo(path).suffix(), ImporterFactory::Use::Batch);
    if (!importer) {
        qWarning().noquote() << "No importer for" << path;
        return;
    }
    importer->setLine(0);
    importer->setDatabase(m_project);
    importer->setRange(firstImportedIndex, lastImportedIndex);
    if (!importer->setFile(path)) {
        qWarning().noquote() << "File" << path << "is not readable.";
        return;
    }
    runToEnd(*importer);
    if (importer->isFinished())
        importer->carryOutCommands(0);
    runLocalEventLoop(500ms);
    qInfo().noquote() << importer->importedObjects().size() << "objects imported from" << path;
    // The importer keeps the store silent; its rows are everywhere.
    Q_EMIT m_project->updateNotify({.type = ObjectDataBase::ProjectChanged});
}

void CommandLineActions::mergeParameterGroups()
{
    const QString path = m_commandLine.file("-j"_L1);
    m_mergeMode = m_commandLine.contains("-o"_L1) ? m_commandLine.value("-o"_L1) : u"keep"_s;
    if (!QFileInfo(path).isFile())
        return;
    // Opening a project moves the current folder, on which the own project's relative paths depend.
    const auto folder = qScopeGuard([path = QDir::currentPath()] { QDir::setCurrent(path); });
    ObjectDataBase source;
    if (source.openDataBase(path, true))
        copyParameterGroups(source);
    else
        qWarning().noquote() << "Cannot merge from" << path << source.lastError();
    runLocalEventLoop(200ms);
}

void CommandLineActions::copyParameterGroups(ObjectDataBase &source)
{
    const QList<quint8> lines = m_project->getLines();
    for (const quint8 line : lines) {
        if (line >= ObjectDataBase::MaximumLines)
            continue;
        for (const quint8 direction : {ObjectDataBase::Receive, ObjectDataBase::Transmit})
            m_project->copyPGNs(source, line, line, 0, highestParameterGroup, direction);
    }
}

void CommandLineActions::applyImportCommands()
{
    const QString path = m_commandLine.file("--importfile"_L1);
    qDebug().noquote() << "Import Handler file: " + path;
    if (!QFileInfo(path).isFile()) {
        qWarning().noquote() << "Import Handler file: " + path + " does not exist";
        return;
    }
    ImportHandler handler(m_project);
    if (!handler.setFile(path) || !handler.applyImportFile())
        qWarning().noquote() << "Import Handler file error: " + handler.errorString();
}

void CommandLineActions::applyModifier()
{
    const QString path = m_commandLine.file("-dbmod"_L1);
    if (path.isEmpty())
        return;
    DatabaseModifier modifier(m_project);
    modifier.setFile(path);
    if (!modifier.applyModifierFile())
        qWarning().noquote() << Q_FUNC_INFO << modifier.errorString();
}

void CommandLineActions::enterNetworkToolMode()
{
    runLocalEventLoop(500ms);
    m_target.enterNetworkToolMode();
}

void CommandLineActions::save()
{
    m_target.saveProject();
    runLocalEventLoop(300ms);
}

void CommandLineActions::generateAndQuit()
{
    m_target.generateOutput();
    runLocalEventLoop(500ms);
    QCoreApplication::exit(0);
}

void CommandLineActions::hideHelp()
{
    if (Edition::isJ1939())
        m_target.hideHelp();
}
