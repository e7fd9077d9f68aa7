#include "store/UndoManager.h"

#include "store/ApplicationSettings.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

constexpr auto burstPause = 500ms;
constexpr int defaultDepth = 20;
constexpr int staleAfterDays = 7;

QString dataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
}

/** Holds the folder shared as long as the descriptor is open; the kernel lets go when a process dies. */
int lockFolder(const QString &folder)
{
    const int descriptor = open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0)
        flock(descriptor, LOCK_SH | LOCK_NB);
    return descriptor;
}

/** A program may stay idle for weeks: only the lock tells its folder from a left-over. */
bool isInUse(const QString &folder)
{
    const int descriptor = open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    const bool inUse = flock(descriptor, LOCK_EX | LOCK_NB) != 0;
    close(descriptor);
    return inUse;
}

void removeFiles(QStringList &files)
{
    for (const QString &file : std::as_const(files))
        QFile::remove(file);
    files.clear();
}

} // namespace

UndoManager::UndoManager(QObject *parent)
    : QObject(parent),
      m_snapshotDir(QStringLiteral("%1/undo_%2").arg(dataFolder()).arg(QCoreApplication::applicationPid())),
      m_maxDepth(std::max(
          1, ApplicationSettings::value(QStringLiteral("General/undomaxdepth"), defaultDepth).toInt()))
{
    removeStaleFolders();
    createSnapshotFolder();
    m_timer.setSingleShot(true);
    m_timer.setInterval(burstPause);
    connect(&m_timer, &QTimer::timeout, this, &UndoManager::handleDebounceTimeout);
}

// Nobody is told: whoever listens may be half gone itself.
UndoManager::~UndoManager()
{
    dropSnapshots();
    if (m_folderLock >= 0)
        close(m_folderLock);
    QDir(m_snapshotDir).removeRecursively();
}

void UndoManager::removeStaleFolders() const
{
    const QDateTime limit = QDateTime::currentDateTime().addDays(-staleAfterDays);
    const QFileInfoList folders =
        QDir(dataFolder())
            .entryInfoList({QStringLiteral("undo_*")}, QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks);
    for (const QFileInfo &folder : folders) {
        if (folder.lastModified() < limit && !isInUse(folder.filePath()))
            QDir(folder.filePath()).removeRecursively();
    }
}

void UndoManager::createSnapshotFolder()
{
    // For the owner alone, as the working file is.
    QDir().mkpath(dataFolder());
    if (!QDir().mkdir(m_snapshotDir, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner)
        && !QDir(m_snapshotDir).exists())
        qWarning() << Q_FUNC_INFO << "cannot make the folder" << m_snapshotDir;
    m_folderLock = lockFolder(m_snapshotDir);
}

void UndoManager::setDataBase(const QSharedPointer<ObjectDataBase> &store)
{
    if (m_store) {
        disconnect(m_store.data(), nullptr, this, nullptr);
        m_store->setTrackWrites(false);
    }
    clear();
    m_snapshotFailed = false;
    m_store = store;
    if (m_store) {
        connect(m_store.data(), &ObjectDataBase::databaseWriteExecuted, this,
                &UndoManager::handleDatabaseWrite);
        connect(m_store.data(), &ObjectDataBase::updateNotify, this, &UndoManager::handleUpdate);
        beginHistory();
        m_store->setTrackWrites(true);
    }
    announce();
}

void UndoManager::beginHistory()
{
    m_generation = m_store->projectGeneration();
    m_snapshotFailed = false;
    takeSnapshot();
}

// As soon as another project is there: its first edit must find the state before it kept.
void UndoManager::handleUpdate(const ObjectDataBase::ChangeSet &changes)
{
    if (changes.type == ObjectDataBase::ProjectChanged)
        followProject();
}

// True when the snapshots were those of a former project. While paused or locked nothing is taken and
// nothing undone, so that the exchange can wait.
bool UndoManager::followProject()
{
    if (!mayRestore() || m_generation == m_store->projectGeneration())
        return false;
    dropSnapshots();
    if (m_store->isOpen())
        beginHistory();
    announce();
    return true;
}

void UndoManager::pause()
{
    ++m_pauseCount;
}

void UndoManager::resume()
{
    m_pauseCount = std::max(0, m_pauseCount - 1);
    followProject();
}

void UndoManager::clear()
{
    dropSnapshots();
    announce();
}

void UndoManager::dropSnapshots()
{
    ++m_history;
    m_timer.stop();
    m_burstOpen = false;
    removeFiles(m_undoStack);
    removeFiles(m_redoStack);
}

void UndoManager::announce()
{
    Q_EMIT canUndoChanged(m_undoStack.size() >= 2);
    Q_EMIT canRedoChanged(!m_redoStack.isEmpty());
}

// A write that reaches the manager before the project it belongs to is in the first snapshot already.
void UndoManager::handleDatabaseWrite()
{
    if (followProject())
        return;
    if (!m_store || m_pauseCount > 0 || m_snapshotFailed)
        return;
    if (!m_burstOpen) {
        m_burstOpen = true;
        if (!m_redoStack.isEmpty()) {
            removeFiles(m_redoStack);
            announce();
        }
    }
    m_timer.start();
}

void UndoManager::handleDebounceTimeout()
{
    if (followProject() || !m_burstOpen)
        return;
    // A worker that thinks for longer than the pause is not at the end of its burst.
    if (m_pauseCount > 0 || (m_store && m_store->isWriteLocked())) {
        m_timer.start();
        return;
    }
    m_burstOpen = false;
    if (!takeSnapshot()) {
        // The present state is not in the history, so that a step back would lose it for good.
        clear();
        return;
    }
    if (m_undoStack.size() - 1 > m_maxDepth) {
        QFile::remove(m_undoStack.takeFirst());
        Q_EMIT historyLimitReached();
    }
    announce();
}

// A crashed process of the same id may have left files of these names.
QString UndoManager::nextSnapshotName()
{
    QString name;
    do {
        name = QStringLiteral("%1/snap_%2.db").arg(m_snapshotDir).arg(++m_sequence);
    } while (QFile::exists(name));
    return name;
}

bool UndoManager::takeSnapshot()
{
    if (!m_store)
        return false;
    const QString name = nextSnapshotName();
    if (!m_store->vacuumInto(name)) {
        qWarning() << Q_FUNC_INFO << "snapshot failed, undo disabled:" << m_store->lastError();
        m_snapshotFailed = true;
        QFile::remove(name);
        return false;
    }
    m_undoStack.append(name);
    return true;
}

bool UndoManager::mayRestore() const
{
    return m_store && m_pauseCount == 0 && !m_store->isWriteLocked();
}

void UndoManager::undo()
{
    followProject();
    if (!mayRestore())
        return;
    if (m_burstOpen) {
        m_timer.stop();
        handleDebounceTimeout();
    }
    if (m_undoStack.size() >= 2)
        step(Direction::Undo);
}

void UndoManager::redo()
{
    followProject();
    if (mayRestore() && !m_redoStack.isEmpty())
        step(Direction::Redo);
}

// Paused meanwhile: a form that writes while it shows the restored state does not begin a burst. A slot may
// also give the manager another store or forget the history; the snapshot is then of no more use.
void UndoManager::step(Direction direction)
{
    const bool isUndo = direction == Direction::Undo;
    const QSharedPointer<ObjectDataBase> store = m_store;
    const quint64 history = m_history;
    const QString taken = (isUndo ? m_undoStack : m_redoStack).takeLast();
    const QString wanted = isUndo ? m_undoStack.last() : taken;
    pause();
    const bool success = store->restoreSnapshot(wanted);
    if (history == m_history)
        (success == isUndo ? m_redoStack : m_undoStack).append(taken);
    else
        QFile::remove(taken);
    if (!success)
        qWarning() << Q_FUNC_INFO << store->lastError();
    else if (store == m_store && m_generation == store->projectGeneration())
        Q_EMIT restored();
    resume();
    announce();
}
