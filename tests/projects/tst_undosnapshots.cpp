#include "projects/UndoDesk.h"
#include "store/WorkingFiles.h"

#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace UndoDesk;

namespace {

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

} // namespace

class tst_UndoSnapshots : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void restoreRefreshesCachesAndStringPool();
    void restoreSendsProjectChangedAndBlocksMeanwhile();
    void aFailedSnapshotSwitchesUndoOffUntilTheNextProject();
    void aMissingSnapshotKeepsStateAndStacks();
    void aDamagedSnapshotKeepsStateAndStacks();
    void undoLeavesOneWorkingFile();
    void theWorkingFileStaysLockedForOtherProcesses();
    void namesWithQuotesAndUmlautsAreData();
    void aSnapshotNeverOverwritesAFile();
    void oldFoldersOfCrashedProcessesAreRemoved();
    void filesOfACrashedProcessWithThisIdDoNoHarm();
    void snapshotsAreForTheirOwnerAlone();
    void theDestructorRemovesTheFolder();
};

void tst_UndoSnapshots::initTestCase()
{
    prepareApplication();
}

void tst_UndoSnapshots::init()
{
    setDepth(20);
}

void tst_UndoSnapshots::restoreRefreshesCachesAndStringPool()
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

void tst_UndoSnapshots::restoreSendsProjectChangedAndBlocksMeanwhile()
{
    Desk desk;
    desk.edit(QStringLiteral("1"));
    const StoreTest::RecordedChanges changes(*desk.store);
    QSignalSpy blocked(desk.store.data(), &ObjectDataBase::blockStateChanged);
    desk.undo.undo();
    QCOMPARE(changes.all(), QList<ChangeSet>{ChangeSet{.type = ObjectDataBase::ProjectChanged}});
    QCOMPARE(blocked, (QList<QVariantList>{{true}, {false}}));
}

void tst_UndoSnapshots::aFailedSnapshotSwitchesUndoOffUntilTheNextProject()
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

void tst_UndoSnapshots::aMissingSnapshotKeepsStateAndStacks()
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

void tst_UndoSnapshots::aDamagedSnapshotKeepsStateAndStacks()
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

void tst_UndoSnapshots::undoLeavesOneWorkingFile()
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

void tst_UndoSnapshots::theWorkingFileStaysLockedForOtherProcesses()
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

void tst_UndoSnapshots::namesWithQuotesAndUmlautsAreData()
{
    const QTemporaryDir folder;
    Desk desk;
    const QString name = folder.filePath(QStringLiteral("it's a %1 \"stänkende\" copy; drop table Nodes.db"));
    QVERIFY2(desk.store->vacuumInto(name), qPrintable(desk.store->lastError()));
    desk.write(QStringLiteral("9"));
    QVERIFY(desk.store->restoreSnapshot(name));
    QCOMPARE(desk.value(), QString());
}

void tst_UndoSnapshots::aSnapshotNeverOverwritesAFile()
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

void tst_UndoSnapshots::oldFoldersOfCrashedProcessesAreRemoved()
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

void tst_UndoSnapshots::filesOfACrashedProcessWithThisIdDoNoHarm()
{
    makeFolder(QStringLiteral("undo_%1").arg(QCoreApplication::applicationPid()), 1);
    Desk desk;
    desk.edit(QStringLiteral("1"));
    desk.undo.undo();
    QCOMPARE(desk.restored.size(), 1);
    QCOMPARE(desk.value(), QString());
}

void tst_UndoSnapshots::snapshotsAreForTheirOwnerAlone()
{
    const Desk desk;
    const QFile::Permissions others = QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ExeGroup
        | QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther;
    QCOMPARE(QFile::permissions(snapshotFolder()) & others, QFile::Permissions());
}

void tst_UndoSnapshots::theDestructorRemovesTheFolder()
{
    {
        Desk desk;
        desk.edit(QStringLiteral("1"));
        QVERIFY(QDir(snapshotFolder()).exists());
    }
    QVERIFY(!QDir(snapshotFolder()).exists());
}

QTEST_GUILESS_MAIN(tst_UndoSnapshots)
#include "tst_undosnapshots.moc"
