// From the working database back to a project file.

#include "store/ObjectDataBasePrivate.h"
#include "store/SafeFile.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

namespace {

constexpr qint64 copyChunk = 1024 * 1024;

} // namespace

bool ObjectDataBase::saveProject(const QString &path)
{
    return Private::isTextPath(path.isEmpty() ? d->projectPath : path) ? saveDatabaseAsText(path)
                                                                       : saveDatabaseAsSql(path);
}

bool ObjectDataBase::saveDatabaseAsSql(const QString &path)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease || !isOpen()) {
        d->lastError = QStringLiteral("The project is in use or not open.");
        return false;
    }
    d->lastError.clear();
    d->textLosses.clear();
    const QString target = Private::absolutePath(path.isEmpty() ? d->projectPath : path);
    if (!d->prepareForSaving(target) || !setMiscSetting(QStringLiteral("FileHash"), contentHash())
        || !d->writeProjectFile(target)) {
        qDebug().noquote() << "ERROR copy " << d->db.databaseName() << "to " << target << d->lastError;
        return false;
    }
    d->projectPath = target;
    return true;
}

// What a saved file must not hold goes, and what it must tell about itself is entered; the hash, which
// differs between the forms of a project, is the caller's.
bool ObjectDataBase::Private::prepareForSaving(const QString &target)
{
    bool success = true;
    const QStringList present = tableNames();
    for (const quint8 line : {ClipboardLine, ReferenceLine}) {
        if (q->nodeExists(line) || present.contains(QStringLiteral("Objects%1").arg(line)))
            success = removeReservedLine(line) && success;
    }
    q->removeUnusedStrings();
    if (QFileInfo(target).completeSuffix().toLower() == QStringLiteral("data")
        && present.contains(QStringLiteral("SubObjects0"))) {
        success = run("update SubObjects0 set changedbyuser=0 where changedbyuser = 1") && success;
        success = run("update SubObjects0 set wizardsource=454 where changedbyuser = 0") && success;
        dropLineCaches(0);
    }
    success = success
        && q->setMiscSetting(QStringLiteral("SaveToolType"), QCoreApplication::applicationName())
        && q->setMiscSetting(QStringLiteral("SaveToolVersion"), QCoreApplication::applicationVersion())
        && q->setMiscSetting(QStringLiteral("DatabaseVersion"), QString::number(DatabaseVersion));
    if (!success)
        lastError = QStringLiteral("The working file %1 cannot be written: %2")
                        .arg(db.databaseName(), connection.statements.lastError());
    return success;
}

// Unlike removeLine it takes a line of which only a part is there, as other programs may have left it.
bool ObjectDataBase::Private::removeReservedLine(quint8 line)
{
    bool success = true;
    for (const char *drop :
         {"drop table if exists Objects%1", "drop table if exists SubObjects%1",
          "drop table if exists PGNs%1", "drop table if exists SPNs%1", "drop table if exists CANIDs%1",
          "drop table if exists DataElements%1", "drop table if exists UDSSettings%1"})
        success = run(drop, line) && success;
    if (q->nodeExists(line)) {
        success =
            StoreQuery(connection, "delete from Nodes where nodeId = ?").bind(qint64(line)).exec() && success;
        notify({.type = LineRemoved, .line = line});
    }
    success = StoreQuery(connection, "delete from Connections where prodnode = ? OR connode = ?")
                  .bind(qint64(line))
                  .bind(qint64(line))
                  .exec()
        && success;
    dropLineCaches(line);
    return success;
}

bool ObjectDataBase::Private::writeProjectFile(const QString &path)
{
    return SafeFile::replace(
        path, path + QStringLiteral(".bak"), [this](QFile &file) { return copyWorkingFile(file); },
        &lastError);
}

// Read through SQLite's own file: opening the working file a second time and closing it again would drop
// the lock that tells other processes that it is in use.
bool ObjectDataBase::Private::copyWorkingFile(QFile &target)
{
    const ConnectionGate::Lease lease(connection.gate);
    sqlite3_file *source = nullptr;
    if (sqlite3_file_control(connection.statements.connection(), "main", SQLITE_FCNTL_FILE_POINTER, &source)
            != SQLITE_OK
        || !source || !source->pMethods)
        return false;
    sqlite3_int64 size = 0;
    if (source->pMethods->xFileSize(source, &size) != SQLITE_OK)
        return false;
    QByteArray chunk(copyChunk, Qt::Uninitialized);
    for (sqlite3_int64 offset = 0; offset < size; offset += copyChunk) {
        const auto length = int(std::min<sqlite3_int64>(copyChunk, size - offset));
        if (source->pMethods->xRead(source, chunk.data(), length, offset) != SQLITE_OK)
            return false;
        if (target.write(chunk.constData(), length) != length)
            return false;
    }
    return true;
}
