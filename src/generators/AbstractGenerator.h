#pragma once

#include <QObject>
#include <QPointer>
#include <QThread>

#include <atomic>

class ObjectDataBase;

/** Results of the setters of a generator and of its start. */
enum class GeneratorStatus : quint8 {
    Success = 0,
    NoOutputDir = 1,
    OutputDirNotReadable = 2,
    NoDatabase = 3, ///< none, or one without lines
    UnknownLine = 4,
    Running = 5, ///< nothing was changed
    NotRunning = 6,
};

/**
 * The base of everything that writes one output file of a project.
 *
 * The setters prepare a run, startGeneration lets doJob work on a thread of its own, waitForEnd keeps the
 * caller's events alive until it has ended. A generator serves one run. It has no QObject parent, as it
 * moves to its thread and back, and whoever owns it waits for its end before deleting it.
 */
class AbstractGenerator : public QObject
{
    Q_OBJECT

public:
    AbstractGenerator();
    ~AbstractGenerator() override;

    /** Whether the target can be written: it is not there, or it may be written. Writes nothing. */
    virtual bool isOutputWritable() = 0;
    /** Moves this object to a thread of its own and starts doJob there. */
    virtual GeneratorStatus startGeneration() = 0;
    /** Asks a running job to end at its next object. */
    virtual GeneratorStatus requestStop() = 0;
    /** What the completion message shall tell about the result; mostly nothing. */
    virtual QString resultInfo() const;

    /** Takes the path also where it is no readable folder, so that no target lands anywhere else. */
    GeneratorStatus setOutputDir(const QString &path);
    GeneratorStatus setDatabase(ObjectDataBase *database);
    GeneratorStatus setProjectName(const QString &name);
    /** Needs the database; the line stays as it was where the project does not have it. */
    GeneratorStatus setLine(quint8 line);
    void setMultiLine(bool multiLine) { m_multiLine = multiLine; }
    void setFileSuffix(const QString &suffix) { m_fileSuffix = suffix; }

    /**
     * Returns when the job has ended; events are served, the processor is left alone meanwhile. Where the
     * application quits, its loops with it, the rest of the job is waited for without serving events.
     */
    void waitForEnd();
    /** Known when the job has ended; false until then. */
    bool isFailed() const { return !m_running.load() && m_failed; }
    /** What made the job fail; empty until it has ended. */
    QString errorString() const { return m_running.load() ? QString() : m_errorText; }

Q_SIGNALS:
    /** 100 is the last one: the file is closed and the job over. */
    void progress(quint8 percent);

public Q_SLOTS:
    /** The whole work; runs on the generator's thread. */
    virtual void doJob() = 0;

protected:
    /**
     * The frame of a doJob, to be its first local object: while it lives the store is in generation mode
     * (no writes; other threads wait); its end ends the job, the thread and the progress. What is declared
     * behind it, such as the file, is closed before.
     */
    class JobFrame
    {
    public:
        explicit JobFrame(AbstractGenerator &generator);
        ~JobFrame();
        Q_DISABLE_COPY_MOVE(JobFrame)

    private:
        AbstractGenerator &m_generator;
        QPointer<ObjectDataBase> m_store;
    };

    /** The body of startGeneration; the name is that of the output file and becomes the object's name. */
    GeneratorStatus startThread(const QString &fileName);
    /** The body of requestStop. */
    GeneratorStatus stopThread();
    /** The body of isOutputWritable for a file of the output folder. */
    bool isTargetWritable(const QString &fileName) const;
    QString targetPath(const QString &fileName) const;
    /** Makes the job a failed one with that reason. */
    void fail(const QString &reason);
    /** Reads whether the multi-line form is asked for although the project has one line. */
    void readMultiLineOption();
    bool isMultiLineForm() const { return m_multiLine || m_forceMultiLine; }

    /**
     * The initialiser of a value that has no native C type, as a macro with one byte per argument, the
     * most significant first: 48, 24, 40 and 64 bit types; "0" for every other type code.
     */
    static QString formatExtendedValue(int typeCode, quint64 value);
    /** The trailing comment of a table entry; the key is line << 24 | index << 8 | sub-index. */
    QString objectComment(quint32 key) const;

    quint8 m_line = 0; ///< 0 for generators that cover all lines
    std::atomic_bool m_stopRequested = false;
    std::atomic_bool m_running = false;
    bool m_multiLine = false; ///< the project has more than one line
    QString m_projectName; ///< base name of documents and device descriptions
    QString m_outputDir;
    QPointer<ObjectDataBase> m_database;
    QPointer<QThread> m_thread;
    QString m_version;
    bool m_forceMultiLine = false;
    bool m_failed = false;
    QString m_errorText;
    QString m_fileSuffix; ///< behind the project name in documents of one protocol of a mixed line

private Q_SLOTS:
    void runOnWorker();

private:
    void endJob();
    void joinThread();

    QThread *m_home = nullptr; ///< where the generator lives before and after its job
    std::atomic_bool m_handedBack = true; ///< the worker has made its last access
};
