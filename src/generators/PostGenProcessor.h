#pragma once

#include "generators/OutputHandlerBase.h"
#include "generators/PostGenProgressHandler.h"

#include <QList>
#include <QPointer>
#include <QProcess>
#include <QSharedPointer>
#include <QStringDecoder>

class EdsCheckerWrapper;
class ObjectDataBase;
struct PostGenCommand;

/**
 * What follows the generators: the user's command, the EDS checker, the line endings of the files.
 *
 * The steps are a state machine that goes on by proceedGeneration. A command that is waited for ends within
 * start(); EDS checks run on behind it until waitForEnd or the event loop sees their end.
 */
class PostGenProcessor : public QObject
{
    Q_OBJECT

public:
    PostGenProcessor(OutputHandlerBase *outputHandler, PostGenProgressHandler *progressHandler,
                     QObject *parent = nullptr);
    /** Ends EDS checks; a command that nobody waits for goes on. */
    ~PostGenProcessor() override;

    void setProject(const QSharedPointer<ObjectDataBase> &database, const QString &outputDir,
                    const QString &projectName);
    void setSkipEdsCheck(bool skip) { m_skipEdsCheck = skip; }
    void setHidden(bool hidden) { m_hidden = hidden; }

    /** Starts the command and with it all steps. */
    void start();
    /**
     * Serves events until all steps are over. EDS checks that run on after the time are ended, and the steps
     * behind them follow; false then.
     */
    bool waitForEnd(int milliseconds);

Q_SIGNALS:
    void proceedGeneration();
    /** All steps are over. */
    void ended();

public Q_SLOTS:
    void edsCheckFinished();
    void proceedGenerationSlot();
    void startEdsCheck();
    void postGenProcessFinished(int exitCode, QProcess::ExitStatus exitStatus);
    void postGenProcessReadyReadStandardError();
    void postGenProcessReadyReadStandardOutput();
    void cancelPostGenProcess();

private:
    enum class Phase { Idle = 0, CommandOver = 1, EdsCheckOver = 2, AllOver = 3 };

    /** One of the two outputs of the command, told under a heading of its own. */
    struct Channel
    {
        const char *heading;
        bool headed = false;
        QStringDecoder decoder{QStringDecoder::System};
    };

    void proceedAfter(Phase phase);
    bool launch(const PostGenCommand &command);
    void waitForCommand();
    void reportFailedStart(const QString &text, const QString &detail);
    void tellOutput(Channel &channel, const QByteArray &block);
    void checkEds(const QString &program, const QString &suffix, const QString &startedText);
    void dropEdsChecks();
    void convertLineEndings() const;
    void finish();
    void showProgress();
    void write(const QString &message) const;
    void writeRaw(const QString &message) const;
    PostGenProgressHandler &progress() { return m_progress ? *m_progress : m_noProgress; }

    QPointer<OutputHandlerBase> m_output;
    QPointer<PostGenProgressHandler> m_progress;
    PostGenProgressHandler m_noProgress;
    QSharedPointer<ObjectDataBase> m_database;
    QString m_outputDir;
    QString m_projectName;
    bool m_skipEdsCheck = false;
    bool m_hidden = false;
    Phase m_phase = Phase::Idle;
    QProcess *m_process; ///< a child, until it outlives this object
    bool m_wait = false;
    int m_exitCode = 0;
    Channel m_errorOutput{"Post generation process error output:\n"};
    Channel m_standardOutput{"Post generation process standard output:\n"};
    QList<EdsCheckerWrapper *> m_checks;
};
