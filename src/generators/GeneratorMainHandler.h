#pragma once

#include "generators/GeneratorFactories.h"
#include "generators/OutputHandlerBase.h"
#include "generators/PostGenProgressHandler.h"

#include <QObject>
#include <QPointer>
#include <QSharedPointer>

class ModelChecker;
class ObjectDataBase;
class PostGenProcessor;

/**
 * Turns a project into its folder of output files: model check, generators, post generation steps.
 *
 * It has no window: messages go to the output handler, the progress of the post generation steps to the
 * progress handler, both owned by the caller, and either may be missing. Events are served during a run;
 * what they ask of this handler meanwhile (another run, another project) is refused.
 */
class GeneratorMainHandler : public QObject
{
    Q_OBJECT

public:
    enum class GeneratorResult {
        Completed = 0,
        CheckFailed = 2, ///< nothing was generated
        OutputNotWritable = 3,
        SrdoFailed = 4, ///< the run stopped there
    };
    Q_ENUM(GeneratorResult)

    explicit GeneratorMainHandler(QObject *parent = nullptr);
    ~GeneratorMainHandler() override;

    /** The project as a window has it open. False, with nothing changed, while a run is under way. */
    bool setProject(const QSharedPointer<ObjectDataBase> &database, const QString &outputDir,
                    const QString &projectName);
    /** The generators of the next runs; a step whose generator is missing is left out. */
    void setFactories(const GeneratorFactories &factories) { m_factories = factories; }
    void setOutputHandler(OutputHandlerBase *handler);
    void setProgressHandler(PostGenProgressHandler *handler);
    void setSkipEdsCheck(bool skip) { m_skipEdsCheck = skip; }
    /** Nobody watches: no progress dialog, and a run waits for the EDS checks that it has started. */
    void setHidden(bool hidden) { m_hidden = hidden; }
    void setGenerateVirtualObjects(bool generate) { m_generateVirtualObjects = generate; }
    void setGenerateSrdo(bool generate) { m_generateSrdo = generate; }

    QSharedPointer<ObjectDataBase> database() const { return m_database; }
    const QString &outputDir() const { return m_outputDir; }
    const QString &projectName() const { return m_projectName; }
    /** The path given to openProject. */
    const QString &projectFile() const { return m_projectFile; }
    bool isRunning() const { return m_running; }

    /** One whole run in the folder of the project; ends with finished(), whatever the result. */
    void runGeneration(bool ignoreCheckErrors);
    /** The post generation command, the EDS check and the line endings. */
    void runPostGenProcess();

    /** Sends a message of the run to the output handler. */
    void writeMessage(const QVariant &message);
    /** As writeMessage, without a time stamp. */
    void writeRaw(const QVariant &message);

Q_SIGNALS:
    void finished(GeneratorMainHandler::GeneratorResult result);
    /** The model check has changed the project. */
    void doneCorrection();

public Q_SLOTS:
    /** Opens a project file for generation without a window; false, the former project kept, on failure. */
    bool openProject(const QString &filePath);
    /** Passes a message of the model check on, with its place in the project. */
    void handleCheckError(const QString &errorString);
    /** The end of the sending generator's job, when the percentage is 100. */
    void generatorProgress(quint8 progress);

private:
    GeneratorResult generate(bool ignoreCheckErrors);
    void removeAddressClaims(const QList<quint8> &lines);
    void fillCaches(const QList<quint8> &lines);
    void clearCaches();
    int checkModel(const QList<quint8> &lines);
    int checkLine(ModelChecker &checker, quint8 line, int lineCount, bool *changed);
    void correctForEdition(const QSharedPointer<ObjectDataBase> &store) const;
    QString errorLogPath() const;
    void writeErrorLog() const;
    void keepErrorLogAsBackup() const;
    GeneratorResult runGenerators();

    bool m_skipEdsCheck = false;
    bool m_hidden = false;
    QSharedPointer<ObjectDataBase> m_database;
    QString m_outputDir;
    QString m_projectName;
    QString m_projectFile;
    bool m_generateVirtualObjects = false;
    bool m_generateSrdo = true;
    QPointer<OutputHandlerBase> m_outputHandler;
    QPointer<PostGenProgressHandler> m_progressHandler;
    QPointer<PostGenProcessor> m_postGenProcessor;
    GeneratorFactories m_factories;
    const ModelChecker *m_checker = nullptr; ///< only while the model is checked
    bool m_running = false;
};
