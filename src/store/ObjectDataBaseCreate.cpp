// A new working database and the tables of a line.

#include "store/ObjectDataBasePrivate.h"
#include "store/RowIo.h"

#include <QCoreApplication>
#include <QDebug>
#include <QSqlError>
#include <QSqlQuery>

namespace {

constexpr int newDataBaseCacheSize = 16384;

} // namespace

bool ObjectDataBase::createNewDataBase()
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease) {
        d->lastError = QStringLiteral("The project is in use by a running job.");
        return false;
    }
    const QString name = d->newWorkingFile();
    if (name.isEmpty() || !d->resetProject())
        return false;
    if (!d->openWorkingFile(name, newDataBaseCacheSize)) {
        qDebug() << "error sqlDbFile.open()" << d->lastError;
        return false;
    }
    if (!d->createGlobalTables()) {
        d->abandonProject();
        return false;
    }
    const bool success = addNode(0, NODE_DATA_T());
    d->notify({.type = ProjectChanged});
    setMiscSetting(QStringLiteral("CreateToolVersion"), QCoreApplication::applicationVersion());
    setMiscSetting(QStringLiteral("CreateToolName"), QCoreApplication::applicationName());
    setMiscSetting(QStringLiteral("DatabaseVersion"), QString::number(DatabaseVersion));
    return success;
}

quint64 ObjectDataBase::projectGeneration() const
{
    return d->generation;
}

// Leaves nothing of a former project behind but its working file, which the destructor deletes.
bool ObjectDataBase::Private::resetProject()
{
    if (!close(closeTimeoutMs)) {
        lastError = QStringLiteral("The project is still in use.");
        return false;
    }
    const ConnectionGate::Lease lease(connection.gate);
    silenceWrites();
    ++generation;
    lastError.clear();
    textLosses.clear();
    projectPath.clear();
    descriptionLine = 0;
    externallyModified = false;
    subCache.clear();
    subNameCache.clear();
    spnCache.clear();
    elementCache.clear();
    pool.clear();
    poolLoaded = false;
    return true;
}

// What fills a project while it is opened is no edit; ProjectChanged tells of all of it. Those who wait for
// edits hear of the first one behind the open.
void ObjectDataBase::Private::silenceWrites()
{
    if (!connection.trackWrites)
        return;
    connection.trackWrites = false;
    connection.gate.afterLease([this] { connection.trackWrites = true; });
}

// After a failure the store is closed, so that nothing can be saved over the file that was refused.
void ObjectDataBase::Private::abandonProject()
{
    const QString reason = lastError;
    resetProject();
    lastError = reason;
}

bool ObjectDataBase::Private::createGlobalTables()
{
    const ConnectionGate::Lease lease(connection.gate);
    QSqlQuery query(db);
    for (const Schema::GlobalTable &table : Schema::globalTables()) {
        if (execute(query, QString::fromLatin1(table.create)))
            continue;
        lastError = query.lastError().text();
        qDebug().noquote() << "Create" << table.name << lastError;
        return false;
    }
    return true;
}

bool ObjectDataBase::Private::createSubObjectsTable(int line, QSqlQuery &query)
{
    const QString text = QString::fromLatin1(Schema::sql<SUBINDEX_DATA_T>().create).arg(line);
    if (execute(query, text))
        return true;
    qDebug() << Q_FUNC_INFO << text << query.lastError().text();
    return false;
}

void ObjectDataBase::Private::createLineTables(quint8 line)
{
    const ConnectionGate::Lease lease(connection.gate);
    QSqlQuery query(db);
    const auto create = [&](const QByteArray &sql, const char *table) {
        if (!execute(query, QString::fromLatin1(sql).arg(line)))
            qDebug().noquote() << QStringLiteral("create table %1").arg(QLatin1StringView(table)).arg(line)
                               << query.lastError().text();
    };
    create(Schema::sql<INDEX_DATA_T>().create, "Objects%1");
    createSubObjectsTable(line, query);
    create(Schema::sql<PGN>().create, "PGNs%1");
    create(Schema::sql<SPN>().create, "SPNs%1");
    create(Schema::sql<CANID>().create, "CANIDs%1");
    create(Schema::sql<DataElement>().create, "DataElements%1");
}

QStringList ObjectDataBase::Private::tableNames()
{
    QStringList names;
    StoreQuery query(connection, "SELECT name FROM sqlite_master WHERE type='table' ORDER BY name");
    while (query.next())
        names.append(query.text(0));
    return names;
}
