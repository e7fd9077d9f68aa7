// Connection, execution wrapper, lock and notification.

#include "store/ObjectDataBasePrivate.h"
#include "store/WorkingFiles.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QThread>

#include <cstdlib>
#include <sqlite3.h>

namespace {

constexpr int shownColumns = 10;

QString nextConnectionName()
{
    static std::atomic<int> number = 0;
    return QStringLiteral("db%1").arg(++number);
}

sqlite3 *nativeHandle(const QSqlDatabase &db)
{
    const QVariant handle = db.driver()->handle();
    if (!handle.isValid() || qstrcmp(handle.typeName(), "sqlite3*") != 0)
        return nullptr;
    return *static_cast<sqlite3 *const *>(handle.constData());
}

} // namespace

ObjectDataBase::Private::Private(ObjectDataBase *owner) : q(owner), connectionName(nextConnectionName())
{
    connection.store = owner;
    db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName);
    if (!db.isValid()) {
        qDebug() << QSqlDatabase::drivers();
        qDebug() << "Db last error: " << db.lastError().text();
    }
}

ObjectDataBase::ObjectDataBase(QObject *parent) : QObject(parent), d(std::make_unique<Private>(this))
{
    srand(uint(quintptr(QThread::currentThreadId())));
}

ObjectDataBase::~ObjectDataBase()
{
    // A worker that is still inside must not find its connection gone: its statement is interrupted, and
    // if even that does not bring it out, the connection is left to it rather than taken from under it.
    if (!d->close(Private::closeTimeoutMs)) {
        d->interrupt();
        if (!d->close(Private::closeTimeoutMs)) {
            qCritical() << Q_FUNC_INFO << "a thread still uses the store, its working file stays";
            Q_UNUSED(d.release());
            return;
        }
    }
    for (const QString &file : std::as_const(d->tempFiles))
        QFile::remove(file);
    d->db = QSqlDatabase();
    QSqlDatabase::removeDatabase(d->connectionName);
}

QString ObjectDataBase::Private::absolutePath(const QString &path)
{
    return path.isEmpty() || path.startsWith(u':') ? path : QFileInfo(path).absoluteFilePath();
}

bool ObjectDataBase::Private::openConnection(const QString &fileName)
{
    const ConnectionGate::Lease lease(connection.gate);
    connection.statements.attach(nullptr);
    db.setDatabaseName(QDir::toNativeSeparators(fileName));
    sqlite3 *handle = db.open() ? nativeHandle(db) : nullptr;
    connection.statements.attach(handle);
    open = handle != nullptr;
    if (!open)
        lastError = db.lastError().text();
    return open;
}

void ObjectDataBase::Private::interrupt()
{
    if (open)
        sqlite3_interrupt(connection.statements.connection());
}

bool ObjectDataBase::Private::openWorkingFile(const QString &fileName, int cacheSize)
{
    if (!openConnection(fileName))
        return false;
    applyPragmas(cacheSize);
    return true;
}

void ObjectDataBase::Private::applyPragmas(int cacheSize)
{
    const ConnectionGate::Lease lease(connection.gate);
    QSqlQuery query(db);
    const QString cache = QStringLiteral("PRAGMA cache_size = %1").arg(cacheSize);
    for (const QString &pragma :
         {QStringLiteral("PRAGMA page_size = 4096"), cache, QStringLiteral("PRAGMA temp_store = MEMORY"),
          QStringLiteral("PRAGMA journal_mode = OFF"), QStringLiteral("PRAGMA locking_mode = EXCLUSIVE"),
          QStringLiteral("PRAGMA synchronous  = OFF")}) {
        if (!execute(query, pragma))
            qDebug() << Q_FUNC_INFO << pragma << query.lastError().text();
        query.finish();
    }
}

bool ObjectDataBase::Private::close(int milliseconds)
{
    if (!connection.gate.tryEnter(milliseconds))
        return false;
    open = false;
    connection.statements.attach(nullptr);
    db.close();
    connection.gate.leave();
    return true;
}

void ObjectDataBase::closeDataBase()
{
    if (!d->close(Private::closeTimeoutMs))
        qWarning() << Q_FUNC_INFO << "a query is still running, the store stays open";
}

bool ObjectDataBase::isOpen() const
{
    return d->open;
}

QString ObjectDataBase::Private::newWorkingFile()
{
    const QString name = WorkingFiles::create();
    if (name.isEmpty())
        lastError = QStringLiteral("No working file can be made in the application's data folder.");
    else
        tempFiles.append(name);
    return name;
}

// The caller holds the lease for as long as its query object lives: Qt's driver keeps a list of them.
bool ObjectDataBase::Private::execute(QSqlQuery &query, const QString &text)
{
    const bool success = query.exec(text);
    if (success && SqlStatements::isWriting(text.toUtf8()))
        connection.noteWrite();
    return success;
}

bool ObjectDataBase::Private::run(const char *sql, int line, const char *operation)
{
    return StoreQuery(connection, sql, line, operation).exec();
}

void ObjectDataBase::Private::notify(ChangeSet changes)
{
    connection.gate.afterLease([owner = q, changes] { Q_EMIT owner->updateNotify(changes); });
}

bool ObjectDataBase::executeSql(const QString &statement)
{
    const bool writes = SqlStatements::isWriting(statement.toUtf8());
    if (!writes)
        return d->runStatement(statement);
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    if (statement.contains(u"strings", Qt::CaseInsensitive))
        d->poolLoaded = false;
    return d->runStatement(statement);
}

bool ObjectDataBase::Private::runStatement(const QString &statement)
{
    const ConnectionGate::Lease lease(connection.gate);
    sqlResult.clear();
    QSqlQuery query(db);
    if (!execute(query, statement)) {
        qDebug() << Q_FUNC_INFO << statement << query.lastError().text();
        sqlResult.append(query.lastError().text());
        return false;
    }
    while (query.next()) {
        QString row;
        for (int column = 0; column < shownColumns && query.value(column).isValid(); ++column)
            row += query.value(column).toString() + u' ';
        sqlResult.append(row);
    }
    return true;
}

QStringList ObjectDataBase::sqlResult() const
{
    return d->sqlResult;
}

void ObjectDataBase::setWriteLock(bool locked)
{
    d->connection.gate.setWriteLocked(locked);
    blockUpdates(locked);
}

bool ObjectDataBase::isWriteLocked() const
{
    return d->connection.gate.isWriteLocked();
}

void ObjectDataBase::blockUpdates(bool blocked)
{
    d->connection.gate.setUpdatesBlocked(blocked);
    Q_EMIT blockStateChanged(blocked);
}

void ObjectDataBase::setTrackWrites(bool track)
{
    d->connection.trackWrites = track;
}

int ObjectDataBase::runningQueries() const
{
    return d->connection.gate.queriesRunning();
}

QString ObjectDataBase::lastError() const
{
    return d->lastError;
}

QString ObjectDataBase::projectPath() const
{
    return d->projectPath;
}

bool ObjectDataBase::isExternallyModified() const
{
    return d->externallyModified;
}
