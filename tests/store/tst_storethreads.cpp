#include "StoreTest.h"
#include "support/Worker.h"

#include <QElapsedTimer>
#include <QSemaphore>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <memory>

using namespace StoreTest;

/** The store between the window's thread and one worker. */
class TestStoreThreads : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void aWorkerReadsOnWhileItHoldsTheLock();
    void theWindowsReadWaitsAndServesEventsMeanwhile();
    void aReadInsideAServedEventWaitsToo();
    void theWindowsWriteIsRefusedWhileTheWorkerHoldsTheLock();
    void aSecondThreadThatBlocksIsExemptToo();
    void aTimerMayReadWhileAWorkerReads20000Times();
    void aTimerMayReadWhileAWorkerWrites();
    void closeWaitsForARunningQuery();
    void closeGivesUpAfter5Seconds();
    void closeOfAnIdleStoreIsImmediate();
    void noQueryRunsWhenNothingIsAsked();
};

namespace {

constexpr int giveUpMs = 10000; // how long a test waits before it calls a hang a failure

QString countingQuery(qint64 rows)
{
    return QStringLiteral("with recursive c(x) as (select 1 union all select x + 1 from c where x < %1) "
                          "select max(x) from c")
        .arg(rows);
}

/** Rows that a counting query needs for about so many milliseconds on this machine. */
qint64 rowsFor(ObjectDataBase &store, qint64 milliseconds)
{
    constexpr qint64 sample = 1'000'000;
    QElapsedTimer timer;
    timer.start();
    store.executeSql(countingQuery(sample));
    return sample * milliseconds / std::max<qint64>(1, timer.elapsed());
}

bool waitForQuery(const ObjectDataBase &store)
{
    QElapsedTimer timer;
    timer.start();
    while (store.runningQueries() == 0 && timer.elapsed() < giveUpMs)
        QThread::msleep(1);
    return store.runningQueries() > 0;
}

} // namespace

void TestStoreThreads::aWorkerReadsOnWhileItHoldsTheLock()
{
    NewStore store;
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
    std::atomic<int> reads = 0;
    Worker worker([&] {
        store.setWriteLock(true);
        for (int i = 0; i < 1000; ++i)
            reads += store.indexExists(0, 0x2000) ? 1 : 0;
        store.setWriteLock(false);
    });
    QVERIFY(worker.wait());
    QCOMPARE(reads.load(), 1000);
    QVERIFY(!store.isWriteLocked());
}

void TestStoreThreads::theWindowsReadWaitsAndServesEventsMeanwhile()
{
    NewStore store;
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
    QSemaphore locked;
    QSemaphore eventServed;
    std::atomic<bool> servedInTime = false;
    std::atomic<bool> released = false;
    Worker worker([&] {
        store.setWriteLock(true);
        locked.release();
        // Released only by the window's event: a wait that serves no events shows as false.
        servedInTime = eventServed.tryAcquire(1, giveUpMs);
        store.getIndexList(0);
        released = true;
        store.setWriteLock(false);
    });
    locked.acquire();
    bool servedWhileLocked = false;
    QTimer::singleShot(20, &store, [&] {
        servedWhileLocked = store.isWriteLocked();
        eventServed.release();
    });
    const bool exists = store.indexExists(0, 0x2000);
    QVERIFY(released); // the read came back behind the lock
    QVERIFY(exists);
    QVERIFY(worker.wait());
    QVERIFY(servedInTime);
    QVERIFY(servedWhileLocked);
}

void TestStoreThreads::aReadInsideAServedEventWaitsToo()
{
    NewStore store;
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
    QSemaphore locked;
    QSemaphore eventServed;
    std::atomic<bool> released = false;
    Worker worker([&] {
        store.setWriteLock(true);
        locked.release();
        eventServed.tryAcquire(1, giveUpMs);
        QThread::msleep(50);
        released = true;
        store.setWriteLock(false);
    });
    locked.acquire();
    bool innerCameAfterTheLock = false;
    QTimer::singleShot(0, &store, [&] {
        eventServed.release();
        const QString name = store.getIndexName(0, 0x2000);
        innerCameAfterTheLock = released && name == sampleIndex().name;
    });
    QCOMPARE(store.getIndexList(0), QList<quint16>{0x2000});
    QVERIFY(innerCameAfterTheLock);
    QVERIFY(worker.wait());
}

void TestStoreThreads::theWindowsWriteIsRefusedWhileTheWorkerHoldsTheLock()
{
    NewStore store;
    QSemaphore locked;
    QSemaphore tried;
    Worker worker([&] {
        store.setWriteLock(true);
        locked.release();
        tried.tryAcquire(1, giveUpMs);
        store.setWriteLock(false);
    });
    locked.acquire();
    RecordedChanges changes(store);
    QElapsedTimer timer;
    timer.start();
    const bool added = store.addIndex(0, 0x2000, sampleIndex());
    const bool set = store.setGeneralSetting(QStringLiteral("k"), QStringLiteral("v"));
    const qint64 elapsed = timer.elapsed();
    tried.release();
    QVERIFY(worker.wait());
    QVERIFY(!added);
    QVERIFY(!set);
    QVERIFY2(elapsed < giveUpMs / 2, "a refused write comes back at once");
    QVERIFY(!store.indexExists(0, 0x2000));
    QCOMPARE(changes.all(), QList<ChangeSet>{});
}

void TestStoreThreads::aSecondThreadThatBlocksIsExemptToo()
{
    NewStore store;
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
    store.blockUpdates(true);
    std::atomic<bool> read = false;
    Worker worker([&] {
        store.blockUpdates(true);
        read = store.indexExists(0, 0x2000);
        store.blockUpdates(false);
    });
    QVERIFY(worker.wait());
    QVERIFY(read);
    // The flag is one for all threads: the worker's release released this thread too.
    QVERIFY(store.indexExists(0, 0x2000));
    store.blockUpdates(false);
}

void TestStoreThreads::aTimerMayReadWhileAWorkerReads20000Times()
{
    NewStore store;
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
    for (int sub = 0; sub < 100; ++sub)
        QVERIFY(store.addSubIndex(0, 0x2000, quint8(sub), sampleSub(QStringLiteral("sub %1").arg(sub))));
    std::atomic<int> wrong = 0;
    int timerReads = 0;
    QTimer timer;
    timer.setInterval(1);
    connect(&timer, &QTimer::timeout, &store, [&] {
        ObjectDataBase::SUBINDEX_DATA_T sub;
        const bool right = store.getSubIndex(0, 0x2000, 42, sub) && sub == sampleSub(QStringLiteral("sub 42"))
            && store.getSubIndexList(0, 0x2000).size() == 100;
        wrong += right ? 0 : 1;
        ++timerReads;
    });
    Worker worker([&] {
        for (int i = 0; i < 20000; ++i) {
            ObjectDataBase::SUBINDEX_DATA_T sub;
            const quint8 number = quint8(i % 100);
            const bool right =
                store.getSubIndex(0, 0x2000, number, sub) && sub.name == QStringLiteral("sub %1").arg(number);
            wrong += right ? 0 : 1;
        }
    });
    timer.start();
    while (worker.isRunning())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    QVERIFY(worker.wait());
    QTRY_VERIFY(timerReads > 0);
    QCOMPARE(wrong.load(), 0);
}

void TestStoreThreads::aTimerMayReadWhileAWorkerWrites()
{
    NewStore store;
    std::atomic<int> wrong = 0;
    QTimer timer;
    timer.setInterval(1);
    connect(&timer, &QTimer::timeout, &store, [&] {
        store.cacheAllSubs(0);
        for (const quint8 number : store.getSubIndexList(0, 0x2000)) {
            ObjectDataBase::SUBINDEX_DATA_T sub;
            const bool right =
                store.getSubIndex(0, 0x2000, number, sub) && sub.name == QStringLiteral("sub %1").arg(number);
            wrong += right ? 0 : 1;
        }
        store.clearSubCache();
    });
    Worker worker([&] {
        for (int i = 0; i < 2000; ++i) {
            const bool right = store.addSubIndex(0, 0x2000, quint8(i % 200),
                                                 sampleSub(QStringLiteral("sub %1").arg(i % 200)));
            wrong += right ? 0 : 1;
        }
    });
    timer.start();
    while (worker.isRunning())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    QVERIFY(worker.wait());
    timer.stop();
    QCOMPARE(wrong.load(), 0);
    QCOMPARE(store.getSubIndexList(0, 0x2000).size(), 200);
}

void TestStoreThreads::closeWaitsForARunningQuery()
{
    NewStore store;
    const QString query = countingQuery(rowsFor(store, 1500));
    std::atomic<bool> success = false;
    QStringList result;
    Worker worker([&] {
        success = store.executeSql(query);
        result = store.sqlResult();
    });
    QVERIFY(waitForQuery(store));
    store.closeDataBase();
    QCOMPARE(store.runningQueries(), 0);
    QVERIFY(!store.isOpen());
    QVERIFY(worker.wait());
    QVERIFY(success); // neither cut off nor failed
    QCOMPARE(result.size(), 1);
}

void TestStoreThreads::closeGivesUpAfter5Seconds()
{
    NewStore store;
    const QString query = countingQuery(rowsFor(store, 14000));
    Worker worker([&] { store.executeSql(query); });
    QVERIFY(waitForQuery(store));
    QElapsedTimer timer;
    timer.start();
    store.closeDataBase();
    const qint64 elapsed = timer.elapsed();
    QVERIFY2(elapsed >= 4500, qPrintable(QString::number(elapsed)));
    QVERIFY2(elapsed < 7000, qPrintable(QString::number(elapsed)));
    QVERIFY(worker.wait());
    QCOMPARE(store.runningQueries(), 0);
}

void TestStoreThreads::closeOfAnIdleStoreIsImmediate()
{
    NewStore store;
    QElapsedTimer timer;
    timer.start();
    store.closeDataBase();
    QVERIFY(timer.elapsed() < 2000);
    QVERIFY(!store.isOpen());
    store.closeDataBase(); // again: nothing to do
    QVERIFY(!store.isOpen());
}

void TestStoreThreads::noQueryRunsWhenNothingIsAsked()
{
    NewStore store;
    QCOMPARE(store.runningQueries(), 0);
    store.getIndexList(0);
    store.executeSql(QStringLiteral("no statement"));
    store.addIndex(17, 1, {});
    QCOMPARE(store.runningQueries(), 0);
}

QTEST_GUILESS_MAIN(TestStoreThreads)
#include "tst_storethreads.moc"
