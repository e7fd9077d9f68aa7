#include "generators/GeneratorMainHandler.h"

#include "check/ModelChecker.h"
#include "generators/GeneratorRun.h"
#include "generators/LineProtocols.h"
#include "generators/PostGenProcessor.h"
#include "store/ObjectDataBase.h"
#include "store/ProjectConverter.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QTime>

using namespace Qt::StringLiterals;

namespace {

constexpr quint8 endOfJob = 100;

// Parameter groups that the J1939 stack serves itself (SAE J1939-21, J1939-81).
constexpr quint32 addressClaimed = 60928;
constexpr quint32 reservedPgns[] = {59904, addressClaimed, 60416, 60160, 59392, 3584, 65240, 9472};

constexpr auto lineHead = "<strong>________________________________________ Checking line %1 "
                          "________________________________________</strong>"_L1;

/** How long a hidden run waits for the EDS checker, which may be a program with a window. */
constexpr int edsCheckTimeoutMs = 60000;

} // namespace

GeneratorMainHandler::GeneratorMainHandler(QObject *parent)
    : QObject(parent), m_database(QSharedPointer<ObjectDataBase>::create())
{
}

GeneratorMainHandler::~GeneratorMainHandler() = default;

// The post generation steps are made with the handlers of their time.
void GeneratorMainHandler::setOutputHandler(OutputHandlerBase *handler)
{
    m_outputHandler = handler;
    delete m_postGenProcessor;
}

void GeneratorMainHandler::setProgressHandler(PostGenProgressHandler *handler)
{
    m_progressHandler = handler;
    delete m_postGenProcessor;
}

bool GeneratorMainHandler::setProject(const QSharedPointer<ObjectDataBase> &database,
                                      const QString &outputDir, const QString &projectName)
{
    if (m_running || !database)
        return false;
    m_database = database;
    m_outputDir = outputDir;
    m_projectName = projectName;
    return true;
}

bool GeneratorMainHandler::openProject(const QString &filePath)
{
    qDebug().noquote() << Q_FUNC_INFO << filePath;
    if (m_running || !QFileInfo::exists(filePath))
        return false;
    const QFileInfo file(QFileInfo(filePath).absoluteFilePath());
    const auto store = QSharedPointer<ObjectDataBase>::create();
    const bool isText = filePath.endsWith("vext"_L1);
    const bool opened =
        isText ? store->loadTextProject(file.filePath()) : store->openDataBase(file.filePath(), true);
    if (!opened)
        return false;
    correctForEdition(store);
    m_database = store;
    m_outputDir = file.absolutePath();
    m_projectName = file.completeBaseName();
    m_projectFile = filePath;
    store->setGeneralSetting(u"new_init_structure"_s, u"1"_s);
    store->setGeneralSetting(u"use_core_headers"_s, u"V4"_s);
    return true;
}

void GeneratorMainHandler::correctForEdition(const QSharedPointer<ObjectDataBase> &store) const
{
    const QString edition = QCoreApplication::applicationName();
    ProjectConverter converter;
    converter.setDataBase(store);
    converter.doGenericCorrection();
    converter.doProjectCorrection();
    if (edition == "EnergyBus NodeGuide"_L1)
        converter.doEnergyBusCorrection();
    if (edition.contains("CAN Node"_L1))
        converter.correctRawCan();
    if (edition.contains("J1939"_L1) || edition.contains("CAN Node"_L1))
        converter.correctJ1939();
}

void GeneratorMainHandler::writeMessage(const QVariant &message)
{
    if (m_outputHandler)
        m_outputHandler->writeMessage(message);
}

void GeneratorMainHandler::writeRaw(const QVariant &message)
{
    if (m_outputHandler)
        m_outputHandler->writeRaw(message);
}

void GeneratorMainHandler::handleCheckError(const QString &errorString)
{
    const ProjectLocation location = m_checker ? m_checker->location() : ProjectLocation();
    writeMessage(QVariant::fromValue(OutputMessage{.text = errorString, .location = location}));
}

void GeneratorMainHandler::generatorProgress(quint8 progress)
{
    const auto *const generator = qobject_cast<const AbstractGenerator *>(sender());
    if (progress != endOfJob || !generator)
        return;
    const QString file = generator->objectName();
    if (generator->isFailed()) {
        writeMessage(u"<b>ERROR - Generation of %1 failed. %2</b>"_s.arg(file, generator->errorString()));
        return;
    }
    const QString info = file.startsWith("gen_sdg.c"_L1) ? u"(%1)"_s.arg(generator->resultInfo()) : QString();
    writeMessage(u"Generation of %1 completed. %2"_s.arg(file, info));
}

void GeneratorMainHandler::runGeneration(bool ignoreCheckErrors)
{
    if (m_running)
        return;
    m_running = true;
    const GeneratorResult result = generate(ignoreCheckErrors);
    clearCaches();
    if (result == GeneratorResult::Completed) {
        writeMessage(u"Generation finished."_s);
        runPostGenProcess();
    }
    m_running = false;
    Q_EMIT finished(result);
}

GeneratorMainHandler::GeneratorResult GeneratorMainHandler::generate(bool ignoreCheckErrors)
{
    const QList<quint8> lines = RunFacts::projectLines(*m_database);
    removeAddressClaims(lines);
    fillCaches(lines);
    writeMessage(u"\nCheck of model consistency started"_s);
    const int errors = checkModel(lines);
    writeErrorLog();
    if (errors > 0 && !ignoreCheckErrors) {
        writeMessage(u"ABORT - Check of model consistency finished: failed (%1 errors)"_s.arg(errors));
        return GeneratorResult::CheckFailed;
    }
    keepErrorLogAsBackup();
    writeMessage(u"\nCheck of model consistency finished.\n"_s);
    const GeneratorResult result =
        GeneratorRun::isFolderWritable(m_outputDir) ? runGenerators() : GeneratorResult::OutputNotWritable;
    if (result == GeneratorResult::OutputNotWritable)
        writeMessage(u"ABORT - The output folder %1 is not writeable."_s.arg(m_outputDir));
    return result;
}

// The generators enter the group anew from the present settings of the project.
void GeneratorMainHandler::removeAddressClaims(const QList<quint8> &lines)
{
    for (const quint8 line : lines) {
        if (LineProtocols::hasJ1939(RunFacts::lineType(*m_database, line)))
            m_database->removePGN(line, addressClaimed, ObjectDataBase::Transmit);
    }
}

void GeneratorMainHandler::fillCaches(const QList<quint8> &lines)
{
    for (const quint8 line : lines) {
        m_database->cacheAllSubs(line);
        m_database->cacheSubNames(line);
    }
    m_database->loadStrings();
}

void GeneratorMainHandler::clearCaches()
{
    m_database->clearSubCache();
    m_database->clearSubNameCache();
    m_database->clearSpnCache();
}

int GeneratorMainHandler::checkModel(const QList<quint8> &lines)
{
    ModelChecker checker;
    connect(&checker, &ModelChecker::newError, this, &GeneratorMainHandler::handleCheckError);
    m_checker = &checker;
    bool changed = false;
    int errors = checker.checkProject(m_database, m_outputDir);
    for (const quint8 line : lines)
        errors += checkLine(checker, line, int(lines.size()), &changed);
    m_checker = nullptr;
    if (changed)
        Q_EMIT doneCorrection();
    return errors;
}

int GeneratorMainHandler::checkLine(ModelChecker &checker, quint8 line, int lineCount, bool *changed)
{
    if (lineCount > 1) {
        writeRaw(QString());
        writeRaw(QString(lineHead).arg(line));
    }
    const int type = RunFacts::lineType(*m_database, line);
    int errors = 0;
    if (LineProtocols::hasCANopen(type)) {
        bool changedHere = false;
        errors += checker.checkCANopenLine(line, m_database, &changedHere);
        *changed = *changed || changedHere;
    }
    if (LineProtocols::hasJ1939(type))
        errors += checker.checkJ1939Line(lineCount, line, m_database,
                                         {std::begin(reservedPgns), std::end(reservedPgns)});
    if (LineProtocols::hasRawCan(type))
        errors += checker.checkRawCanLine(line, m_database);
    if (!LineProtocols::isKnown(type))
        writeMessage(u"Warning line type not set for line %1."_s.arg(line));
    return errors;
}

QString GeneratorMainHandler::errorLogPath() const
{
    return m_outputDir + "/__vexerrorlog.txt"_L1;
}

void GeneratorMainHandler::writeErrorLog() const
{
    // A project that was never saved has no folder, and an empty one would mean the root.
    if (!m_outputHandler || !QFileInfo(m_outputDir).isDir())
        return;
    QFile log(errorLogPath());
    if (!log.open(QIODevice::WriteOnly | QIODevice::Text))
        return;
    QByteArray text = m_outputHandler->getLogging().toUtf8();
    if (!text.isEmpty() && !text.endsWith('\n'))
        text += '\n';
    if (log.write(text) != text.size())
        qWarning().noquote() << "The file" << log.fileName() << "is not complete:" << log.errorString();
}

void GeneratorMainHandler::keepErrorLogAsBackup() const
{
    if (!QFileInfo(m_outputDir).isDir())
        return;
    const QString path = errorLogPath();
    QFile::copy(path, path + ".bak"_L1);
    QFile::remove(path);
}

GeneratorMainHandler::GeneratorResult GeneratorMainHandler::runGenerators()
{
    RunFacts facts = RunFacts::read(*m_database);
    facts.generateVirtualObjects = m_generateVirtualObjects;
    facts.generateSrdo = m_generateSrdo;
    GeneratorRun run(*this, m_factories, {m_database, m_outputDir, m_projectName}, facts);
    switch (run.run()) {
    case GeneratorRun::End::Complete:
        return GeneratorResult::Completed;
    case GeneratorRun::End::FolderNotWritable:
        return GeneratorResult::OutputNotWritable;
    case GeneratorRun::End::GeneratorFailed:
        return GeneratorResult::SrdoFailed;
    }
    return GeneratorResult::Completed;
}

void GeneratorMainHandler::runPostGenProcess()
{
    if (!m_postGenProcessor)
        m_postGenProcessor = new PostGenProcessor(m_outputHandler, m_progressHandler, this);
    qDebug() << Q_FUNC_INFO << QTime::currentTime();
    m_postGenProcessor->setProject(m_database, m_outputDir, m_projectName);
    m_postGenProcessor->setSkipEdsCheck(m_skipEdsCheck);
    m_postGenProcessor->setHidden(m_hidden);
    m_postGenProcessor->start();
    if (m_hidden && !m_postGenProcessor->waitForEnd(edsCheckTimeoutMs))
        qWarning("The EDS checker has not ended, the run goes on without its result");
    qDebug() << Q_FUNC_INFO << QTime::currentTime();
}
