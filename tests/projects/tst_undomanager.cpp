#include "projects/UndoDesk.h"
#include "support/Worker.h"

using namespace UndoDesk;

class tst_UndoManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void theStateAtAttachIsTheFirstSnapshot();
    void aBurstOfWritesGivesOneSnapshotHalfASecondAfterItsEnd();
    void undoAndRedoChangeTheStateAndAnnounceIt();
    void undoFinishesAnOpenBurst();
    void redoIsRefusedWhileABurstIsOpen();
    void anEditAfterAnUndoDeletesTheRedoFilesAtItsFirstWrite();
    void twentyOneEditsLeaveTwentyUndos();
    void depthComesFromTheSettingsAndIsAtLeastOne_data();
    void depthComesFromTheSettingsAndIsAtLeastOne();
    void nothingIsTakenOrUndoneWhilePaused();
    void aBurstThatMeetsAPauseIsKeptAfterIt();
    void resumeNeverGoesBelowZero();
    void undoAndRedoAreRefusedUnderTheWriteLock();
    void aLockedStorePutsTheSnapshotOff();
    void withoutAStoreNothingHappens();
    void clearForgetsAllSnapshots();
    void writesOfAWorkerThreadAreSeen();
};

void tst_UndoManager::initTestCase()
{
    prepareApplication();
}

void tst_UndoManager::init()
{
    setDepth(20);
}

void tst_UndoManager::theStateAtAttachIsTheFirstSnapshot()
{
    Desk desk;
    QCOMPARE(snapshotFiles(), QStringList{QStringLiteral("snap_1.db")});
    QVERIFY(!desk.mayUndo());
    QVERIFY(!desk.mayRedo());
    desk.undo.undo();
    QCOMPARE(desk.restored.size(), 0);
    const StoreTest::DatabaseFile file(snapshotFolder() + QStringLiteral("/snap_1.db"));
    QCOMPARE(file.count(QStringLiteral("Nodes")), 1);
}

void tst_UndoManager::aBurstOfWritesGivesOneSnapshotHalfASecondAfterItsEnd()
{
    Desk desk;
    for (int write = 0; write < 5; ++write)
        desk.write(QString::number(write));
    QTest::qWait(250);
    desk.write(QStringLiteral("last"));
    QElapsedTimer sinceLastWrite;
    sinceLastWrite.start();
    QCOMPARE(snapshotFiles().size(), 1);
    QTRY_COMPARE(snapshotFiles().size(), 2);
    QVERIFY2(sinceLastWrite.elapsed() >= 450, qPrintable(QString::number(sinceLastWrite.elapsed())));
    QTRY_VERIFY(desk.mayUndo());
    desk.undo.handleDebounceTimeout();
    QCOMPARE(snapshotFiles().size(), 2);
}

void tst_UndoManager::undoAndRedoChangeTheStateAndAnnounceIt()
{
    Desk desk;
    desk.edit(QStringLiteral("1"));
    desk.edit(QStringLiteral("2"));
    QVERIFY(desk.mayUndo());
    desk.undo.undo();
    QCOMPARE(desk.value(), QStringLiteral("1"));
    QVERIFY(desk.mayUndo());
    QVERIFY(desk.mayRedo());
    desk.undo.undo();
    QCOMPARE(desk.value(), QString());
    QVERIFY(!desk.mayUndo());
    desk.undo.undo();
    QCOMPARE(desk.restored.size(), 2);
    desk.undo.redo();
    desk.undo.redo();
    QCOMPARE(desk.value(), QStringLiteral("2"));
    QVERIFY(!desk.mayRedo());
    QVERIFY(desk.mayUndo());
    desk.undo.redo();
    QCOMPARE(desk.restored.size(), 4);
    QVERIFY(desk.store->setGeneralSetting(QStringLiteral("co_node_id"), QStringLiteral("3")));
}

void tst_UndoManager::undoFinishesAnOpenBurst()
{
    Desk desk;
    desk.edit(QStringLiteral("1"));
    desk.write(QStringLiteral("2"));
    desk.undo.undo();
    QCOMPARE(desk.value(), QStringLiteral("1"));
    desk.undo.redo();
    QCOMPARE(desk.value(), QStringLiteral("2"));
}

void tst_UndoManager::redoIsRefusedWhileABurstIsOpen()
{
    Desk desk;
    desk.edit(QStringLiteral("1"));
    desk.undo.undo();
    desk.write(QStringLiteral("2"));
    desk.undo.redo();
    QCOMPARE(desk.value(), QStringLiteral("2"));
}

void tst_UndoManager::anEditAfterAnUndoDeletesTheRedoFilesAtItsFirstWrite()
{
    Desk desk;
    desk.edit(QStringLiteral("1"));
    desk.edit(QStringLiteral("2"));
    desk.undo.undo();
    desk.undo.undo();
    QCOMPARE(snapshotFiles().size(), 3);
    desk.write(QStringLiteral("3"));
    QCOMPARE(snapshotFiles(), QStringList{QStringLiteral("snap_1.db")});
    QVERIFY(!desk.mayRedo());
    desk.undo.handleDebounceTimeout();
    QCOMPARE(snapshotFiles().size(), 2);
}

void tst_UndoManager::twentyOneEditsLeaveTwentyUndos()
{
    Desk desk;
    for (int edit = 1; edit <= 20; ++edit)
        desk.edit(QString::number(edit));
    QCOMPARE(desk.limit.size(), 0);
    QVERIFY(snapshotFiles().contains(QStringLiteral("snap_1.db")));
    desk.edit(QStringLiteral("21"));
    QCOMPARE(desk.limit.size(), 1);
    QVERIFY(!snapshotFiles().contains(QStringLiteral("snap_1.db")));
    QCOMPARE(snapshotFiles().size(), 21);
    for (int step = 0; step < 25; ++step)
        desk.undo.undo();
    QCOMPARE(desk.restored.size(), 20);
    QCOMPARE(desk.value(), QStringLiteral("1"));
}

void tst_UndoManager::depthComesFromTheSettingsAndIsAtLeastOne_data()
{
    QTest::addColumn<QVariant>("depth");
    QTest::addColumn<int>("undos");
    QTest::newRow("three") << QVariant(3) << 3;
    QTest::newRow("one") << QVariant(1) << 1;
    QTest::newRow("zero") << QVariant(0) << 1;
    QTest::newRow("negative") << QVariant(-4) << 1;
    QTest::newRow("no number") << QVariant(QStringLiteral("many")) << 1;
}

void tst_UndoManager::depthComesFromTheSettingsAndIsAtLeastOne()
{
    QFETCH(QVariant, depth);
    QFETCH(int, undos);
    setDepth(depth);
    Desk desk;
    for (int edit = 0; edit < 5; ++edit)
        desk.edit(QString::number(edit));
    QCOMPARE(desk.limit.size(), 5 - undos);
    for (int step = 0; step < 6; ++step)
        desk.undo.undo();
    QCOMPARE(desk.restored.size(), undos);
}

void tst_UndoManager::nothingIsTakenOrUndoneWhilePaused()
{
    Desk desk;
    desk.edit(QStringLiteral("1"));
    desk.edit(QStringLiteral("2"));
    desk.undo.undo();
    desk.undo.pause();
    desk.undo.pause();
    desk.undo.resume();
    desk.edit(QStringLiteral("paused"));
    QCOMPARE(snapshotFiles().size(), 3);
    desk.undo.undo();
    desk.undo.redo();
    QCOMPARE(desk.restored.size(), 1);
    QCOMPARE(desk.value(), QStringLiteral("paused"));
    desk.undo.resume();
    desk.undo.redo();
    QCOMPARE(desk.value(), QStringLiteral("2"));
}

void tst_UndoManager::aBurstThatMeetsAPauseIsKeptAfterIt()
{
    Desk desk;
    desk.write(QStringLiteral("1"));
    desk.undo.pause();
    desk.undo.handleDebounceTimeout();
    QCOMPARE(snapshotFiles().size(), 1);
    desk.undo.resume();
    desk.undo.undo();
    QCOMPARE(desk.value(), QString());
    QCOMPARE(desk.restored.size(), 1);
}

void tst_UndoManager::resumeNeverGoesBelowZero()
{
    Desk desk;
    desk.undo.resume();
    desk.undo.resume();
    desk.undo.pause();
    desk.edit(QStringLiteral("1"));
    QCOMPARE(snapshotFiles().size(), 1);
}

void tst_UndoManager::undoAndRedoAreRefusedUnderTheWriteLock()
{
    Desk desk;
    desk.edit(QStringLiteral("1"));
    desk.edit(QStringLiteral("2"));
    desk.undo.undo();
    desk.store->setWriteLock(true);
    desk.undo.undo();
    desk.undo.redo();
    QVERIFY(!desk.store->restoreSnapshot(snapshotFolder() + QStringLiteral("/snap_1.db")));
    desk.store->setWriteLock(false);
    QCOMPARE(desk.restored.size(), 1);
    QCOMPARE(desk.value(), QStringLiteral("1"));
}

void tst_UndoManager::aLockedStorePutsTheSnapshotOff()
{
    Desk desk;
    desk.write(QStringLiteral("1"));
    desk.store->setWriteLock(true);
    desk.undo.handleDebounceTimeout();
    QVERIFY(desk.store->isWriteLocked());
    QCOMPARE(snapshotFiles().size(), 1);
    desk.store->setWriteLock(false);
    QTRY_COMPARE(snapshotFiles().size(), 2);
}

void tst_UndoManager::withoutAStoreNothingHappens()
{
    UndoManager undo;
    QVERIFY(!undo.takeSnapshot());
    undo.handleDatabaseWrite();
    undo.handleDebounceTimeout();
    undo.undo();
    undo.redo();
    undo.setDataBase({});
    QVERIFY(snapshotFiles().isEmpty());
}

void tst_UndoManager::clearForgetsAllSnapshots()
{
    Desk desk;
    desk.edit(QStringLiteral("1"));
    desk.edit(QStringLiteral("2"));
    desk.undo.undo();
    desk.write(QStringLiteral("3"));
    desk.undo.clear();
    QVERIFY(snapshotFiles().isEmpty());
    QVERIFY(!desk.mayUndo());
    QVERIFY(!desk.mayRedo());
    desk.undo.handleDebounceTimeout();
    QVERIFY(snapshotFiles().isEmpty());
}

void tst_UndoManager::writesOfAWorkerThreadAreSeen()
{
    Desk desk;
    Worker worker([&desk] {
        desk.store->setWriteLock(true);
        desk.store->setWriteLock(false);
        desk.write(QStringLiteral("worker"));
    });
    QVERIFY(worker.wait());
    QCOMPARE(snapshotFiles().size(), 1);
    QCoreApplication::processEvents();
    desk.undo.undo();
    QCOMPARE(desk.value(), QString());
}

QTEST_GUILESS_MAIN(tst_UndoManager)
#include "tst_undomanager.moc"
