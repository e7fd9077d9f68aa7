#pragma once

#include "generators/FakeGenerator.h"
#include "store/StoreTest.h"

#include <QSemaphore>

#include <memory>

/** Lets the job of a generator go on when the test says so. */
class Gate
{
public:
    FakePlan plan()
    {
        return {.job = [this] {
            m_reached.release();
            m_open.tryAcquire(1, giveUpMs);
        }};
    }
    bool waitUntilReached() { return m_reached.tryAcquire(1, giveUpMs); }
    void open() { m_open.release(); }

    static constexpr int giveUpMs = 10000; ///< how long a test waits before it calls a hang a failure

private:
    QSemaphore m_reached;
    QSemaphore m_open;
};

/** Tests of a single generator, each with a project and an output folder. */
class GeneratorTest : public QObject
{
    Q_OBJECT

protected:
    void prepare(FakeGenerator &generator)
    {
        QCOMPARE(generator.setOutputDir(m_folder->path()), GeneratorStatus::Success);
        QCOMPARE(generator.setDatabase(&m_store), GeneratorStatus::Success);
        QCOMPARE(generator.setProjectName(QStringLiteral("project")), GeneratorStatus::Success);
    }

    StoreTest::NewStore m_store;
    std::unique_ptr<QTemporaryDir> m_folder;

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }
};
