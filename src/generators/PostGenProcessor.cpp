#include "generators/PostGenProcessor.h"

#include "canopen/Helper.h"
#include "generators/EdsCheckerWrapper.h"
#include "generators/PostGenCommand.h"
#include "store/ApplicationSettings.h"
#include "store/ObjectDataBase.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

constexpr int startTimeoutMs = 30000;
constexpr int terminateTimeoutMs = 100;
constexpr int killTimeoutMs = 5000;
constexpr int checkedLines = 8;

constexpr auto cancelText = "Cancel process"_L1;
constexpr auto edsCheckText = "EDS Checker running"_L1;

constexpr const char *convertedFiles[] = {
    "gen_define.h",      "gen_indication.h",      "gen_indices.h",
    "gen_extern_decl.h", "gen_var_decl.h",        "gen_srdo.c",
    "gen_sdg.c",         "gen_objdict.c",         "gen_pgn.c",
    "gen_define.props",  "Directory.Build.props",
};

// By "line_ending_index"; the first leaves the files as they were written.
constexpr const char *lineEndings[] = {"", "\r\n", "\n", "\r"};

/** Commands that go on when nobody is left who could see their end; destroying one would kill it. */
void leaveRunning(QProcess *process)
{
    static auto *const left = new QList<QProcess *>;
    process->setParent(nullptr);
    left->append(process);
}

} // namespace

PostGenProcessor::PostGenProcessor(OutputHandlerBase *outputHandler, PostGenProgressHandler *progressHandler,
                                   QObject *parent)
    : QObject(parent), m_output(outputHandler), m_progress(progressHandler), m_process(new QProcess(this))
{
    connect(this, &PostGenProcessor::proceedGeneration, this, &PostGenProcessor::proceedGenerationSlot);
    connect(m_process, &QProcess::finished, this, &PostGenProcessor::postGenProcessFinished);
    connect(m_process, &QProcess::readyReadStandardError, this,
            &PostGenProcessor::postGenProcessReadyReadStandardError);
    connect(m_process, &QProcess::readyReadStandardOutput, this,
            &PostGenProcessor::postGenProcessReadyReadStandardOutput);
    if (m_progress)
        connect(m_progress, &PostGenProgressHandler::cancelProcess, this,
                &PostGenProcessor::cancelPostGenProcess);
}

PostGenProcessor::~PostGenProcessor()
{
    dropEdsChecks();
    m_process->disconnect(this);
    if (m_process->state() != QProcess::NotRunning && !m_wait)
        leaveRunning(m_process);
}

void PostGenProcessor::setProject(const QSharedPointer<ObjectDataBase> &database, const QString &outputDir,
                                  const QString &projectName)
{
    m_database = database;
    m_outputDir = outputDir;
    m_projectName = projectName;
}

void PostGenProcessor::write(const QString &message) const
{
    if (m_output)
        m_output->writeMessage(message);
}

void PostGenProcessor::writeRaw(const QString &message) const
{
    if (m_output)
        m_output->writeRaw(message);
}

void PostGenProcessor::showProgress()
{
    if (!m_hidden)
        progress().show();
}

// --- The steps -----------------------------------------------------------------------------------

void PostGenProcessor::proceedAfter(Phase phase)
{
    m_phase = phase;
    Q_EMIT proceedGeneration();
}

void PostGenProcessor::proceedGenerationSlot()
{
    showProgress();
    switch (m_phase) {
    case Phase::Idle:
        break;
    case Phase::CommandOver:
        progress().setCancelButtonText(cancelText);
        progress().adjustSize();
        if (m_skipEdsCheck)
            proceedAfter(Phase::EdsCheckOver);
        else
            startEdsCheck();
        break;
    case Phase::EdsCheckOver:
        progress().setLabelText(edsCheckText);
        convertLineEndings();
        proceedAfter(Phase::AllOver);
        break;
    case Phase::AllOver:
        finish();
        break;
    }
}

void PostGenProcessor::finish()
{
    progress().hide();
    if (m_exitCode != 0)
        write(u"<b>Warning: Generation completed, but post gen process returned %1.</b>"_s.arg(m_exitCode));
    else
        write(u"Generation completed."_s);
    m_phase = Phase::Idle;
    Q_EMIT ended();
}

bool PostGenProcessor::waitForEnd(int milliseconds)
{
    if (m_phase != Phase::Idle) {
        QEventLoop loop;
        connect(this, &PostGenProcessor::ended, &loop, &QEventLoop::quit);
        QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
        loop.exec();
    }
    if (m_phase == Phase::Idle)
        return true;
    dropEdsChecks();
    proceedAfter(Phase::EdsCheckOver);
    return false;
}

void PostGenProcessor::convertLineEndings() const
{
    const int index = ApplicationSettings::value(u"General/line_ending_index"_s, 0).toInt();
    if (index <= 0 || index >= int(std::size(lineEndings)))
        return;
    for (const char *file : convertedFiles)
        Helper::modifyLineEnding(m_outputDir + u'/' + QLatin1StringView(file),
                                 QString::fromLatin1(lineEndings[index]));
}

// --- The command ---------------------------------------------------------------------------------

void PostGenProcessor::start()
{
    dropEdsChecks();
    const PostGenCommand command = PostGenCommand::read(*m_database, m_outputDir, m_projectName);
    m_exitCode = 0;
    m_database->blockSignals(false);
    if (!command.program.isEmpty() && launch(command) && m_wait)
        waitForCommand();
    else
        proceedAfter(Phase::CommandOver);
}

bool PostGenProcessor::launch(const PostGenCommand &command)
{
    QDir::setCurrent(m_outputDir);
    if (m_process->state() != QProcess::NotRunning) {
        reportFailedStart(u"Post generation process is already running."_s, {});
        return false;
    }
    for (Channel *channel : {&m_errorOutput, &m_standardOutput}) {
        channel->headed = false;
        channel->decoder.resetState();
    }
    m_wait = command.wait;
    m_process->setWorkingDirectory(m_outputDir);
    m_process->start(command.program, command.arguments, QIODevice::ReadWrite);
    if (m_process->waitForStarted(startTimeoutMs))
        return true;
    reportFailedStart(u"Could not start post gen process."_s, m_process->errorString());
    return false;
}

void PostGenProcessor::reportFailedStart(const QString &text, const QString &detail)
{
    qWarning().noquote() << text << detail;
    progress().showMessage(this, QCoreApplication::applicationName(), text, detail);
}

void PostGenProcessor::waitForCommand()
{
    showProgress();
    progress().setLabelText(u"Post generation process running ... "_s);
    progress().setCancelButtonText(cancelText);
    QEventLoop loop;
    connect(m_process, &QProcess::finished, &loop, &QEventLoop::quit);
    if (m_process->state() != QProcess::NotRunning)
        loop.exec();
    if (m_process->state() == QProcess::NotRunning)
        return;
    // The application quits, and its loops with it: nobody can wait for the command any more.
    cancelPostGenProcess();
    m_process->waitForFinished(killTimeoutMs);
}

void PostGenProcessor::postGenProcessFinished(int exitCode, QProcess::ExitStatus exitStatus)
{
    qDebug() << Q_FUNC_INFO << exitCode << exitStatus;
    if (!m_wait)
        return;
    m_wait = false;
    m_exitCode = exitCode;
    write(u"Post generation process finished with code %1"_s.arg(exitCode));
    proceedAfter(Phase::CommandOver);
}

void PostGenProcessor::postGenProcessReadyReadStandardError()
{
    tellOutput(m_errorOutput, m_process->readAllStandardError());
}

void PostGenProcessor::postGenProcessReadyReadStandardOutput()
{
    tellOutput(m_standardOutput, m_process->readAllStandardOutput());
}

void PostGenProcessor::tellOutput(Channel &channel, const QByteArray &block)
{
    const QString text = QString(channel.decoder(block)).simplified();
    if (text.isEmpty())
        return;
    if (!channel.headed)
        write(QString::fromLatin1(channel.heading));
    channel.headed = true;
    writeRaw(QString(u'\t' + text));
}

void PostGenProcessor::cancelPostGenProcess()
{
    if (m_process->state() != QProcess::NotRunning) {
        m_process->terminate();
        m_process->waitForFinished(terminateTimeoutMs);
        if (m_process->state() != QProcess::NotRunning)
            m_process->kill();
        progress().hide();
    }
    progress().setCancelButtonText(cancelText);
    progress().adjustSize();
}

// --- The EDS checker -----------------------------------------------------------------------------

void PostGenProcessor::startEdsCheck()
{
    progress().setLabelText(edsCheckText);
    if (ApplicationSettings::value(u"EDSChecker/checkeds"_s, false).toBool()) {
        const QString program = ApplicationSettings::value(u"EDSChecker/EDSCheckerPath"_s).toString();
        checkEds(program, {}, u"EDS Checker started"_s);
        for (int line = 0; line < checkedLines; ++line)
            checkEds(program, u"_%1"_s.arg(line), u"EDS Checker started for line %1"_s.arg(line));
    }
    if (m_checks.isEmpty())
        proceedAfter(Phase::EdsCheckOver);
}

void PostGenProcessor::checkEds(const QString &program, const QString &suffix, const QString &startedText)
{
    const QString file = m_outputDir + u'/' + m_projectName + suffix + ".eds"_L1;
    if (!QFileInfo(file).isFile())
        return;
    auto *const check = new EdsCheckerWrapper(this);
    check->setProgram(program);
    connect(check, &EdsCheckerWrapper::finished, this, &PostGenProcessor::edsCheckFinished);
    if (check->start(file)) {
        m_checks.append(check);
        write(startedText);
    } else {
        delete check;
        write(u"Start of EDS Checker failed"_s);
    }
}

void PostGenProcessor::edsCheckFinished()
{
    auto *const check = qobject_cast<EdsCheckerWrapper *>(sender());
    if (!check || !m_checks.removeOne(check))
        return;
    write(QString("EDS Checker result:\n\n"_L1 + check->output()));
    write(u"EDS Checker finished.\n"_s);
    check->deleteLater();
    if (m_checks.isEmpty())
        proceedAfter(Phase::EdsCheckOver);
}

// Checks of an earlier run; their end would be taken for that of the present one.
void PostGenProcessor::dropEdsChecks()
{
    qDeleteAll(m_checks);
    m_checks.clear();
}
