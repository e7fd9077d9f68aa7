#include "store/ObjectDataBase.h"
#include "store/StoreTest.h"
#include "store/UndoManager.h"
#include "store/WorkingFiles.h"
#include "support/Worker.h"

#include <QDir>
#include <QSettings>
#include <QSignalSpy>

#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const char *const settingsName = "NodeSmith undo test";

QString dataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
}

QString snapshotFolder()
{
    return QStringLiteral("%1/undo_%2").arg(dataFolder()).arg(QCoreApplication::applicationPid());
}

QStringList snapshotFiles()
{
    return QDir(snapshotFolder()).entryList(QDir::Files, QDir::Time | QDir::Reversed);
}

QStringList workingFiles()
{
    return QDir(dataFolder()).entryList({QStringLiteral("wvxdatatemp_*")}, QDir::Files);
}

QSharedPointer<ObjectDataBase> newStore()
{
    auto store = QSharedPointer<ObjectDataBase>::create();
    if (!store->createNewDataBase())
        qFatal("the store cannot make a new database");
    return store;
}

void setDepth(const QVariant &depth)
{
    QSettings settings(QStringLiteral("korvel"), QLatin1StringView(settingsName));
    settings.setValue(QStringLiteral("General/undomaxdepth"), depth);
}

QString makeFolder(const QString &name, int ageInDays)
{
    const QString folder = dataFolder() + u'/' + name;
    QDir().mkpath(folder);
    QFile file(folder + QStringLiteral("/snap_1.db"));
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot write into %s", qPrintable(folder));
    file.close();
    const std::filesystem::path path(QFile::encodeName(folder).toStdString());
    std::filesystem::last_write_time(
        path, std::filesystem::file_time_type::clock::now() - std::chrono::hours(24 * ageInDays));
    return folder;
}

/** What another process sees: its own locks are hidden from a process that asks. */
bool isLockedForOthers(const QString &path)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(WorkingFiles::isInUse(path) ? 1 : 0);
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 1;
}

/** A store with its undo manager and all that they announce. */
struct Desk
{
    QSharedPointer<ObjectDataBase> store = newStore();
    UndoManager undo;
    QSignalSpy canUndo{&undo, &UndoManager::canUndoChanged};
    QSignalSpy canRedo{&undo, &UndoManager::canRedoChanged};
    QSignalSpy limit{&undo, &UndoManager::historyLimitReached};
    QSignalSpy restored{&undo, &UndoManager::restored};

    Desk() { undo.setDataBase(store); }

    void write(const QString &value) const { store->setGeneralSetting(QStringLiteral("co_node_id"), value); }
    /** One edit with the end of its burst, without waiting for the timer. */
    void edit(const QString &value)
    {
        write(value);
        undo.handleDebounceTimeout();
    }
    QString value() const { return store->getGeneralSetting(QStringLiteral("co_node_id")); }
    bool mayUndo() const { return canUndo.last().first().toBool(); }
    bool mayRedo() const { return canRedo.last().first().toBool(); }
};

} // namespace

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
    void anotherStoreBeginsANewHistory();
    void aFormerStoreIsNoLongerWatched();
    void clearForgetsAllSnapshots();
    void aFailedSnapshotSwitchesUndoOffUntilTheNextProject();
    void aMissingSnapshotKeepsStateAndStacks();
    void aDamagedSnapshotKeepsStateAndStacks();
    void restoreRefreshesCachesAndStringPool();
    void restoreSendsProjectChangedAndBlocksMeanwhile();
    void undoLeavesOneWorkingFile();
    void theWorkingFileStaysLockedForOtherProcesses();
    void namesWithQuotesAndUmlautsAreData();
    void aSnapshotNeverOverwritesAFile();
    void writesOfAWorkerThreadAreSeen();
    void oldFoldersOfCrashedProcessesAreRemoved();
    void filesOfACrashedProcessWithThisIdDoNoHarm();
    void theDestructorRemovesTheFolder();
};

void tst_UndoManager::initTestCase()
{
    StoreTest::prepareApplication();
    qApp->setProperty("AppNameWithVersion", QLatin1StringView(settingsName));
    QDir(dataFolder()).removeRecursively();
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

void tst_UndoManager::anotherStoreBeginsANewHistory()
{
    Desk desk;
    desk.edit(QStringLiteral("1"));
    const auto other = newStore();
    desk.undo.setDataBase(other);
    QCOMPARE(snapshotFiles().size(), 1);
    QVERIFY(!desk.mayUndo());
    desk.undo.undo();
    QCOMPARE(desk.restored.size(), 0);
}

void tst_UndoManager::aFormerStoreIsNoLongerWatched()
{
    Desk desk;
    const auto other = newStore();
    desk.undo.setDataBase(other);
    desk.edit(QStringLiteral("1"));
    QCOMPARE(snapshotFiles().size(), 1);
    desk.undo.setDataBase({});
    QVERIFY(other->setGeneralSetting(QStringLiteral("co_node_id"), QStringLiteral("2")));
    desk.undo.handleDebounceTimeout();
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

void tst_UndoManager::aFailedSnapshotSwitchesUndoOffUntilTheNextProject()
{
    Desk desk;
    desk.edit(QStringLiteral("1"));
    QVERIFY(QDir(snapshotFolder()).removeRecursively());
    QTest::ignoreMessage(
        QtWarningMsg,
        QRegularExpression(QStringLiteral("takeSnapshot.* snapshot failed, undo disabled: .+")));
    desk.edit(QStringLiteral("2"));
    QVERIFY(!desk.mayUndo());
    QVERIFY(!desk.store->lastError().isEmpty());
    QVERIFY(QDir().mkpath(snapshotFolder()));
    desk.edit(QStringLiteral("3"));
    desk.undo.undo();
    QVERIFY(snapshotFiles().isEmpty());
    QCOMPARE(desk.value(), QStringLiteral("3"));
    desk.undo.setDataBase(desk.store);
    desk.edit(QStringLiteral("4"));
    desk.undo.undo();
    QCOMPARE(desk.value(), QStringLiteral("3"));
}

void tst_UndoManager::aMissingSnapshotKeepsStateAndStacks()
{
    Desk desk;
    desk.edit(QStringLiteral("1"));
    desk.edit(QStringLiteral("2"));
    const QString missing = snapshotFolder() + QStringLiteral("/snap_2.db");
    QVERIFY(QFile::rename(missing, missing + u'x'));
    desk.undo.undo();
    QCOMPARE(desk.store->lastError(), QStringLiteral("snapshot '%1' does not exist").arg(missing));
    QCOMPARE(desk.value(), QStringLiteral("2"));
    QCOMPARE(desk.restored.size(), 0);
    QVERIFY(desk.mayUndo());
    QVERIFY(QFile::rename(missing + u'x', missing));
    desk.undo.undo();
    QCOMPARE(desk.value(), QStringLiteral("1"));
    const QString redone = snapshotFolder() + QStringLiteral("/snap_3.db");
    QVERIFY(QFile::rename(redone, redone + u'x'));
    desk.undo.redo();
    QVERIFY(desk.mayRedo());
    QCOMPARE(desk.value(), QStringLiteral("1"));
}

void tst_UndoManager::aDamagedSnapshotKeepsStateAndStacks()
{
    Desk desk;
    desk.edit(QStringLiteral("1"));
    desk.edit(QStringLiteral("2"));
    const QStringList before = workingFiles();
    QFile file(snapshotFolder() + QStringLiteral("/snap_2.db"));
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(QByteArray(8192, 'x'));
    file.close();
    desk.undo.undo();
    QVERIFY(!desk.store->lastError().isEmpty());
    QCOMPARE(desk.value(), QStringLiteral("2"));
    QCOMPARE(workingFiles(), before);
    desk.edit(QStringLiteral("3"));
    desk.undo.undo();
    QCOMPARE(desk.value(), QStringLiteral("2"));
}

void tst_UndoManager::restoreRefreshesCachesAndStringPool()
{
    Desk desk;
    QVERIFY(desk.store->addIndex(0, 0x2000, StoreTest::sampleIndex()));
    QVERIFY(desk.store->addSubIndex(0, 0x2000, 1, StoreTest::sampleSub(QStringLiteral("before"))));
    desk.undo.handleDebounceTimeout();
    QVERIFY(desk.store->addSubIndex(0, 0x2000, 1, StoreTest::sampleSub(QStringLiteral("after"))));
    desk.store->cacheAllSubs(0);
    desk.store->cacheSubNames(0);
    QCOMPARE(desk.store->getSubIndexName(0, 0x2000, 1), QStringLiteral("after"));
    const int newId = desk.store->addString(QStringLiteral("only after"));
    desk.undo.undo();
    QCOMPARE(desk.store->getSubIndexName(0, 0x2000, 1), QStringLiteral("before"));
    ObjectDataBase::SUBINDEX_DATA_T sub;
    QVERIFY(desk.store->getSubIndex(0, 0x2000, 1, sub));
    QCOMPARE(sub.name, QStringLiteral("before"));
    QCOMPARE(desk.store->getString(newId), QString());
}

void tst_UndoManager::restoreSendsProjectChangedAndBlocksMeanwhile()
{
    Desk desk;
    desk.edit(QStringLiteral("1"));
    const StoreTest::RecordedChanges changes(*desk.store);
    QSignalSpy blocked(desk.store.data(), &ObjectDataBase::blockStateChanged);
    desk.undo.undo();
    QCOMPARE(changes.all(), QList<ChangeSet>{ChangeSet{.type = ObjectDataBase::ProjectChanged}});
    QCOMPARE(blocked, (QList<QVariantList>{{true}, {false}}));
}

void tst_UndoManager::undoLeavesOneWorkingFile()
{
    const int others = int(workingFiles().size());
    Desk desk;
    for (int edit = 0; edit < 5; ++edit)
        desk.edit(QString::number(edit));
    for (int step = 0; step < 5; ++step) {
        desk.undo.undo();
        desk.undo.undo();
        desk.undo.redo();
    }
    QCOMPARE(workingFiles().size(), others + 1);
}

void tst_UndoManager::theWorkingFileStaysLockedForOtherProcesses()
{
    QDir(dataFolder()).removeRecursively();
    Desk desk;
    desk.edit(QStringLiteral("1"));
    const QString workingFile = dataFolder() + u'/' + workingFiles().value(0);
    QVERIFY(isLockedForOthers(workingFile));
    desk.edit(QStringLiteral("2"));
    QVERIFY(isLockedForOthers(workingFile));
    desk.undo.undo();
    QCOMPARE(workingFiles().size(), 1);
    const QString restoredFile = dataFolder() + u'/' + workingFiles().value(0);
    QVERIFY(restoredFile != workingFile);
    QVERIFY(isLockedForOthers(restoredFile));
    QVERIFY(QFile::resize(snapshotFolder() + QStringLiteral("/snap_3.db"), 100));
    desk.undo.redo();
    QCOMPARE(desk.restored.size(), 1);
    QVERIFY(isLockedForOthers(restoredFile));
}

void tst_UndoManager::namesWithQuotesAndUmlautsAreData()
{
    const QTemporaryDir folder;
    Desk desk;
    const QString name = folder.filePath(QStringLiteral("it's a %1 \"stänkende\" copy; drop table Nodes.db"));
    QVERIFY2(desk.store->vacuumInto(name), qPrintable(desk.store->lastError()));
    desk.write(QStringLiteral("9"));
    QVERIFY(desk.store->restoreSnapshot(name));
    QCOMPARE(desk.value(), QString());
}

void tst_UndoManager::aSnapshotNeverOverwritesAFile()
{
    const QTemporaryDir folder;
    Desk desk;
    const QString name = folder.filePath(QStringLiteral("copy.db"));
    QVERIFY(desk.store->vacuumInto(name));
    QVERIFY(!desk.store->vacuumInto(name));
    QVERIFY(!desk.store->lastError().isEmpty());
    ObjectDataBase closed;
    QVERIFY(!closed.vacuumInto(folder.filePath(QStringLiteral("other.db"))));
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

void tst_UndoManager::oldFoldersOfCrashedProcessesAreRemoved()
{
    const QString old = makeFolder(QStringLiteral("undo_99999901"), 8);
    const QString young = makeFolder(QStringLiteral("undo_99999902"), 6);
    const QString foreign = makeFolder(QStringLiteral("other_99999903"), 80);
    const QString inUse = makeFolder(QStringLiteral("undo_99999904"), 80);
    const int holder = open(QFile::encodeName(inUse).constData(), O_RDONLY | O_DIRECTORY);
    QCOMPARE(flock(holder, LOCK_SH), 0);
    {
        UndoManager undo;
        QVERIFY(!QDir(old).exists());
        QVERIFY(QDir(young).exists());
        QVERIFY(QDir(foreign).exists());
        QVERIFY(QDir(inUse).exists());
    }
    close(holder);
    const UndoManager undo;
    QVERIFY(!QDir(inUse).exists());
    QVERIFY(QDir(young).removeRecursively());
    QVERIFY(QDir(foreign).removeRecursively());
}

void tst_UndoManager::filesOfACrashedProcessWithThisIdDoNoHarm()
{
    makeFolder(QStringLiteral("undo_%1").arg(QCoreApplication::applicationPid()), 1);
    Desk desk;
    desk.edit(QStringLiteral("1"));
    desk.undo.undo();
    QCOMPARE(desk.restored.size(), 1);
    QCOMPARE(desk.value(), QString());
}

void tst_UndoManager::theDestructorRemovesTheFolder()
{
    {
        Desk desk;
        desk.edit(QStringLiteral("1"));
        QVERIFY(QDir(snapshotFolder()).exists());
    }
    QVERIFY(!QDir(snapshotFolder()).exists());
}

QTEST_GUILESS_MAIN(tst_UndoManager)
#include "tst_undomanager.moc"
