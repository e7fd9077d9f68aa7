#pragma once

#include "generators/GeneratorFactories.h"
#include "store/ObjectDataBase.h"

#include <QFile>

#include <array>
#include <atomic>

class FakeGenerator;

/** What a fake generator shall do. */
struct FakePlan
{
    bool writable = true;
    QString failure; ///< the job fails with that text
    QString info; ///< goes into the completion message
    QString section; ///< taken over from the former file
    QString fileName = QStringLiteral("fake.c"); ///< name of the job
    bool writesFile = false; ///< of that name, with a line of text
    std::function<void()> job; ///< on the generator's thread, within the frame
    std::function<void(const FakeGenerator &)> started; ///< on the run's thread, when all is set
};

/** A generator without an own output format. */
class FakeGenerator : public AbstractGenerator, public UserSectionKeeper
{
    Q_OBJECT

public:
    explicit FakeGenerator(FakePlan plan = {}) : m_plan(std::move(plan)) { }

    bool isOutputWritable() override { return m_plan.writable && isTargetWritable(m_plan.fileName); }
    GeneratorStatus startGeneration() override
    {
        if (m_plan.started)
            m_plan.started(*this);
        return startThread(m_plan.fileName);
    }
    GeneratorStatus requestStop() override { return stopThread(); }
    QString resultInfo() const override { return m_plan.info; }
    QString userSection() const override { return m_plan.section; }

    void doJob() override
    {
        const JobFrame frame(*this);
        readMultiLineOption();
        workThread = QThread::currentThread();
        if (m_plan.job)
            m_plan.job();
        if (m_plan.writesFile)
            writeFile();
        if (!m_plan.failure.isEmpty())
            fail(m_plan.failure);
    }

    bool isStopRequested() const { return m_stopRequested; }
    bool multiLine() const { return m_multiLine; }
    bool multiLineForm() const { return isMultiLineForm(); }
    bool isRunning() const { return m_running; }
    quint8 line() const { return m_line; }
    QString folder() const { return m_outputDir; }
    QString project() const { return m_projectName; }
    QString suffix() const { return m_fileSuffix; }
    QString version() const { return m_version; }
    ObjectDataBase *store() const { return m_database; }
    QThread *worker() const { return m_thread; }

    std::atomic<QThread *> workThread = nullptr;

private:
    void writeFile()
    {
        QFile file(targetPath(m_plan.fileName));
        if (!file.open(QIODevice::WriteOnly) || file.write("generated\n") < 0)
            fail(file.errorString());
    }

    FakePlan m_plan;
};

/** Makes fakes for every step of a run and keeps what each was asked for. */
class FakeGenerators
{
public:
    static constexpr std::array kinds{
        GeneratorKind::Csv,          GeneratorKind::Dbc,           GeneratorKind::Define,
        GeneratorKind::Eds,          GeneratorKind::ExtDecl,       GeneratorKind::Html,
        GeneratorKind::Icsv,         GeneratorKind::Indication,    GeneratorKind::Indices,
        GeneratorKind::J1939Adapter, GeneratorKind::J1939Html,     GeneratorKind::J1939TextDoc,
        GeneratorKind::MultiPro,     GeneratorKind::ObjDict,       GeneratorKind::Pgn,
        GeneratorKind::RawCanDbc,    GeneratorKind::RawCanTextDoc, GeneratorKind::Sdm,
        GeneratorKind::Srdo,         GeneratorKind::TextDoc,       GeneratorKind::VobjDict,
        GeneratorKind::Xdd,
    };

    /** The plan of one kind; the others do nothing and succeed. */
    FakePlan &plan(GeneratorKind kind) { return m_plans[kind]; }

    GeneratorFactories factories()
    {
        GeneratorFactories result;
        for (const GeneratorKind kind : kinds)
            result.add(kind, [this](const GeneratorRequest &request) { return make(request); });
        return result;
    }
    GeneratorFactories factories(std::initializer_list<GeneratorKind> some)
    {
        GeneratorFactories result;
        for (const GeneratorKind kind : some)
            result.add(kind, [this](const GeneratorRequest &request) { return make(request); });
        return result;
    }

    const QList<GeneratorRequest> &requests() const { return m_requests; }
    QList<GeneratorRequest> requests(GeneratorKind kind) const
    {
        QList<GeneratorRequest> result;
        for (const GeneratorRequest &request : m_requests) {
            if (request.kind == kind)
                result.append(request);
        }
        return result;
    }
    /** The order of the run in words: "Html:0_co", "Eds=small(classical):1". */
    QStringList labels() const
    {
        QStringList result;
        for (const GeneratorRequest &request : m_requests)
            result.append(label(request));
        return result;
    }
    static QString label(const GeneratorRequest &request);
    void forget() { m_requests.clear(); }

private:
    std::unique_ptr<AbstractGenerator> make(const GeneratorRequest &request)
    {
        m_requests.append(request);
        return std::make_unique<FakeGenerator>(m_plans.value(request.kind));
    }

    QMap<GeneratorKind, FakePlan> m_plans;
    QList<GeneratorRequest> m_requests;
};
