#include "generators/GeneratorTest.h"

#include <QElapsedTimer>
#include <QTimer>

#include <ctime>

using namespace StoreTest;
using namespace Qt::StringLiterals;

/** A generator and the thread of its job. */
class TestGeneratorThread : public GeneratorTest
{
    Q_OBJECT

private Q_SLOTS:
    void theJobRunsOnItsOwnThread();
    void theThreadIsAChildOfTheGenerator();
    void theGeneratorIsBackOnItsThreadWhenTheJobHasEnded();
    void progress100IsTheLastProgressAndComesOnce();
    void progress100ComesWhenTheGeneratorRunsNoMore();
    void theProgressReachesTheCallerBeforeTheWaitReturns();
    void theStoreTakesNoWritesWhileTheJobRuns();
    void theStoreTakesWritesWhenTheJobHasEnded();
    void eventsAreServedWhileTheJobRuns();
    void waitingLeavesTheProcessorAlone();
    void waitingReturnsAtOnceWithoutAJob();
    void waitingReturnsAtOnceWhenTheJobHasEnded();
    void aJobIsWaitedForAlthoughTheApplicationQuits();
    void aGeneratorCanStartAgain();
};

void TestGeneratorThread::theJobRunsOnItsOwnThread()
{
    FakeGenerator generator;
    prepare(generator);
    generator.startGeneration();
    generator.waitForEnd();
    QVERIFY(generator.workThread.load() != nullptr);
    QVERIFY(generator.workThread.load() != QThread::currentThread());
    QCOMPARE(generator.workThread.load(), generator.worker());
}

void TestGeneratorThread::theThreadIsAChildOfTheGenerator()
{
    QPointer<QThread> thread;
    {
        FakeGenerator generator;
        prepare(generator);
        generator.startGeneration();
        thread = generator.worker();
        QCOMPARE(thread->parent(), &generator);
        generator.waitForEnd();
        QVERIFY(thread->isFinished());
    }
    QVERIFY(thread.isNull());
}

void TestGeneratorThread::theGeneratorIsBackOnItsThreadWhenTheJobHasEnded()
{
    FakeGenerator generator;
    prepare(generator);
    generator.startGeneration();
    generator.waitForEnd();
    QCOMPARE(generator.thread(), QThread::currentThread());
}

void TestGeneratorThread::progress100IsTheLastProgressAndComesOnce()
{
    FakeGenerator generator({.job = [&generator] {
        for (const quint8 percent : {quint8(25), quint8(50), quint8(75)})
            Q_EMIT generator.progress(percent);
    }});
    prepare(generator);
    QList<int> seen;
    connect(&generator, &AbstractGenerator::progress, this,
            [&seen](quint8 percent) { seen.append(percent); });
    generator.startGeneration();
    generator.waitForEnd();
    QCoreApplication::processEvents();
    QCOMPARE(seen, QList<int>({25, 50, 75, 100}));
}

void TestGeneratorThread::progress100ComesWhenTheGeneratorRunsNoMore()
{
    FakeGenerator generator;
    prepare(generator);
    bool wasRunning = true;
    connect(
        &generator, &AbstractGenerator::progress, &generator,
        [&](quint8) { wasRunning = generator.isRunning(); }, Qt::DirectConnection);
    generator.startGeneration();
    generator.waitForEnd();
    QVERIFY(!wasRunning);
}

void TestGeneratorThread::theProgressReachesTheCallerBeforeTheWaitReturns()
{
    Gate gate;
    FakeGenerator generator(gate.plan());
    prepare(generator);
    int seen = 0;
    connect(&generator, &AbstractGenerator::progress, this, [&seen](quint8) { ++seen; });
    generator.startGeneration();
    QTimer::singleShot(20, this, [&gate] { gate.open(); });
    generator.waitForEnd();
    QCOMPARE(seen, 1);
}

void TestGeneratorThread::theStoreTakesNoWritesWhileTheJobRuns()
{
    bool taken = true;
    QString read;
    m_store.setGeneralSetting(u"before"_s, u"1"_s);
    FakeGenerator generator({.job = [&] {
        taken = m_store.setGeneralSetting(u"during"_s, u"1"_s);
        read = m_store.getGeneralSetting(u"before"_s);
    }});
    prepare(generator);
    generator.startGeneration();
    generator.waitForEnd();
    QVERIFY(!taken);
    QCOMPARE(read, u"1"_s);
    QVERIFY(!m_store.generalSettingExists(u"during"_s));
}

void TestGeneratorThread::theStoreTakesWritesWhenTheJobHasEnded()
{
    FakeGenerator generator;
    prepare(generator);
    generator.startGeneration();
    generator.waitForEnd();
    QVERIFY(!m_store.isWriteLocked());
    QVERIFY(m_store.setGeneralSetting(u"after"_s, u"1"_s));
}

void TestGeneratorThread::eventsAreServedWhileTheJobRuns()
{
    Gate gate;
    FakeGenerator generator(gate.plan());
    prepare(generator);
    generator.startGeneration();
    QVERIFY(gate.waitUntilReached());
    bool served = false;
    QTimer::singleShot(0, this, [&] {
        served = generator.isRunning();
        gate.open(); // without events nobody opens it
    });
    QElapsedTimer timer;
    timer.start();
    generator.waitForEnd();
    QVERIFY(served);
    QVERIFY(timer.elapsed() < Gate::giveUpMs / 2);
}

void TestGeneratorThread::waitingLeavesTheProcessorAlone()
{
    constexpr int sleepMs = 600;
    constexpr double toleratedMs = 150;
    FakeGenerator generator({.job = [] { QThread::msleep(sleepMs); }});
    prepare(generator);
    QElapsedTimer timer;
    timer.start();
    const std::clock_t before = std::clock();
    generator.startGeneration();
    generator.waitForEnd();
    const double usedMs = 1000.0 * double(std::clock() - before) / CLOCKS_PER_SEC;
    QVERIFY(timer.elapsed() >= sleepMs);
    QVERIFY2(usedMs < toleratedMs, qPrintable(QString::number(usedMs)));
}

void TestGeneratorThread::waitingReturnsAtOnceWithoutAJob()
{
    FakeGenerator generator;
    generator.waitForEnd();
    QVERIFY(!generator.isRunning());
}

void TestGeneratorThread::waitingReturnsAtOnceWhenTheJobHasEnded()
{
    FakeGenerator generator;
    prepare(generator);
    generator.startGeneration();
    QVERIFY(generator.worker()->wait(Gate::giveUpMs));
    generator.waitForEnd();
    generator.waitForEnd();
    QVERIFY(!generator.isRunning());
}

void TestGeneratorThread::aJobIsWaitedForAlthoughTheApplicationQuits()
{
    Gate gate;
    std::atomic_bool done = false;
    FakePlan plan = gate.plan();
    plan.job = [inner = plan.job, &done] {
        inner();
        QThread::msleep(50);
        done = true;
    };
    FakeGenerator generator(plan);
    prepare(generator);
    bool doneAfterWaiting = false;
    QTimer::singleShot(0, this, [&] {
        generator.startGeneration();
        QTimer::singleShot(0, this, [&gate] {
            gate.open();
            QCoreApplication::quit();
        });
        generator.waitForEnd();
        doneAfterWaiting = done;
    });
    QCoreApplication::exec();
    QVERIFY(doneAfterWaiting);
}

void TestGeneratorThread::aGeneratorCanStartAgain()
{
    FakeGenerator generator({.failure = u"always"_s});
    prepare(generator);
    int ends = 0;
    connect(&generator, &AbstractGenerator::progress, this, [&ends](quint8) { ++ends; });
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(generator.startGeneration(), GeneratorStatus::Success);
        generator.waitForEnd();
        QVERIFY(generator.isFailed());
    }
    QCoreApplication::processEvents();
    QCOMPARE(ends, 3);
}

QTEST_GUILESS_MAIN(TestGeneratorThread)
#include "tst_generatorthread.moc"
