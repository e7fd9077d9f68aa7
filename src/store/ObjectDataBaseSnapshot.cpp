// Copies of the working database for undo, and the way back from one.

#include "store/ObjectDataBasePrivate.h"

#include <QFile>
#include <QScopeGuard>

namespace {

constexpr int restoredCacheSize = 64000;

} // namespace

bool ObjectDataBase::vacuumInto(const QString &name)
{
    if (!isOpen()) {
        d->lastError = QStringLiteral("no project is open");
        return false;
    }
    // A write lock blocks the other threads already, and must go on doing so afterwards.
    const bool blocks = !isWriteLocked();
    if (blocks)
        blockUpdates(true);
    bool success = false;
    {
        const ConnectionGate::Lease lease(d->connection.gate);
        success = StoreQuery(d->connection, "VACUUM INTO ?").bind(name).exec();
        if (!success)
            d->lastError = d->connection.statements.lastError();
    }
    if (blocks)
        blockUpdates(false);
    return success;
}

bool ObjectDataBase::restoreSnapshot(const QString &path)
{
    if (!QFile::exists(path)) {
        d->lastError = QStringLiteral("snapshot '%1' does not exist").arg(path);
        return false;
    }
    if (isWriteLocked()) {
        d->lastError = QStringLiteral("snapshot '%1' must wait for a running job").arg(path);
        return false;
    }
    blockUpdates(true);
    const bool restored = d->exchangeWorkingFile(path);
    blockUpdates(false);
    d->notify({.type = ProjectChanged});
    return restored;
}

// The copy is made before the connection closes: what fails there leaves the project as it is.
bool ObjectDataBase::Private::exchangeWorkingFile(const QString &snapshot)
{
    if (!connection.gate.tryEnter(closeTimeoutMs)) {
        lastError = QStringLiteral("a query is still running");
        return false;
    }
    const auto leave = qScopeGuard([this] { connection.gate.leave(); });
    // A query of this thread's own, further up the stack, would lose its statement with the connection.
    if (connection.gate.queriesRunning() > 1) {
        lastError = QStringLiteral("a query is still running");
        return false;
    }
    const QString former = db.databaseName();
    const QString name = copySnapshot(snapshot);
    if (name.isEmpty())
        return false;
    close(closeTimeoutMs);
    // The first read in exclusive mode takes the lock that tells other processes that the file is in use.
    if (openWorkingFile(name, restoredCacheSize) && checkIsProject(snapshot)) {
        discardWorkingFile(former);
        forgetCaches();
        return true;
    }
    close(closeTimeoutMs);
    discardWorkingFile(name);
    if (openWorkingFile(former, restoredCacheSize))
        run("select nodeId from nodes");
    return false;
}

QString ObjectDataBase::Private::copySnapshot(const QString &snapshot)
{
    QString name = newWorkingFile();
    QFile source(snapshot);
    QFile copy(name);
    if (!name.isEmpty() && source.open(QIODevice::ReadOnly) && copy.open(QIODevice::ReadWrite)
        && copyBytes(source, copy)) {
        lastError.clear();
        return name;
    }
    lastError = QStringLiteral("could not copy snapshot '%1'").arg(snapshot);
    discardWorkingFile(name);
    return {};
}

void ObjectDataBase::Private::discardWorkingFile(const QString &name)
{
    if (tempFiles.removeOne(name))
        QFile::remove(name);
}

void ObjectDataBase::Private::forgetCaches()
{
    subCache.clear();
    subNameCache.clear();
    spnCache.clear();
    elementCache.clear();
    // The pool is read again when a text is asked for: most of a step back would be spent on it.
    pool.clear();
    poolLoaded = false;
}
