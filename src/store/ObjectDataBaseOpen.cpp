// From a project file to a working database.

#include "store/ObjectDataBasePrivate.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>

namespace {

constexpr int openedDataBaseCacheSize = 64000;
constexpr quint16 firstCommunicationIndex = 0x1000;

constexpr qint64 copyChunk = 1024 * 1024;

} // namespace

bool ObjectDataBase::Private::copyBytes(QFile &source, QFile &target)
{
    QByteArray chunk(copyChunk, Qt::Uninitialized);
    qint64 length = 0;
    while ((length = source.read(chunk.data(), copyChunk)) > 0) {
        if (target.write(chunk.constData(), length) != length)
            return false;
    }
    return length == 0 && target.flush();
}

QString ObjectDataBase::Private::fileReason(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return QStringLiteral("The file %1 does not exist.").arg(path);
    if (info.isDir())
        return QStringLiteral("%1 is a folder.").arg(path);
    if (info.size() == 0)
        return QStringLiteral("The file %1 is empty.").arg(path);
    return {};
}

bool ObjectDataBase::openDataBase(const QString &path, bool migrate)
{
    if (path.isEmpty())
        return false;
    if (Private::isTextPath(path))
        return loadTextProject(path);
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease) {
        d->lastError = QStringLiteral("The project is in use by a running job.");
        return false;
    }
    d->lastError.clear();
    const QString workingFile = d->copyToWorkingFile(path);
    if (workingFile.isEmpty())
        return false;
    if (d->resetProject() && d->openCopy(workingFile, path, migrate))
        return true;
    d->abandonProject();
    d->discardWorkingFile(workingFile);
    return false;
}

bool ObjectDataBase::Private::openCopy(const QString &workingFile, const QString &path, bool migrate)
{
    if (!openConnection(workingFile) || !checkIsProject(path))
        return false;
    projectPath = absolutePath(path);
    applyPragmas(openedDataBaseCacheSize);
    // Taken before the migration touches anything, or every migrated file would count as modified.
    const bool isUnchanged = matchesFileHash();
    if (migrate)
        migrateSchema();
    if (!checkTool())
        return false;
    if (migrate)
        migrateContent();
    if (QFileInfo(path).suffix().compare(QStringLiteral("vexp"), Qt::CaseInsensitive) == 0)
        QDir::setCurrent(QFileInfo(projectPath).absolutePath());
    completeSettings();
    if (!run("VACUUM"))
        qDebug() << Q_FUNC_INFO << "VACUUM failed";
    notify({.type = ProjectChanged});
    if (!isUnchanged)
        recordOutsideModification();
    return true;
}

/** Copies the file to a new working file; an empty name, with lastError, when that fails. */
QString ObjectDataBase::Private::copyToWorkingFile(const QString &path)
{
    lastError = fileReason(path);
    const QString name = lastError.isEmpty() ? newWorkingFile() : QString();
    if (name.isEmpty())
        return {};
    QFile source(path);
    QFile copy(name);
    // Not WriteOnly, which truncates: a file system may then write all of it back when it is closed.
    if (source.open(QIODevice::ReadOnly) && copy.open(QIODevice::ReadWrite) && copyBytes(source, copy))
        return name;
    const QString reason = source.error() != QFileDevice::NoError ? source.errorString() : copy.errorString();
    qDebug().noquote() << QStringLiteral("Error detected: ")
            + QStringLiteral("\nCopy %1 to %2 %3").arg(path, name, reason);
    lastError = QStringLiteral("The file %1 cannot be copied: %2").arg(path, reason);
    copy.close();
    discardWorkingFile(name);
    return {};
}

bool ObjectDataBase::Private::checkIsProject(const QString &path)
{
    StoreQuery query(connection, "select nodeId from nodes");
    if (query.next())
        return true;
    lastError = query.failed()
        ? QStringLiteral("%1 is not a project file: %2").arg(path, connection.statements.lastError())
        : QStringLiteral("%1 holds no line.").arg(path);
    return false;
}

int ObjectDataBase::Private::fileVersion()
{
    return q->getMiscSetting(QStringLiteral("DatabaseVersion")).toInt();
}

// A file of another edition whose lines carry the other edition's protocol would lose them here.
bool ObjectDataBase::Private::checkTool()
{
    const QString application = QCoreApplication::applicationName();
    const QString savedBy = q->getMiscSetting(QStringLiteral("SaveToolType"));
    if (savedBy.isEmpty() || savedBy == application || application == QStringLiteral("CAN NodeSmith"))
        return true;
    bool hasJ1939ish = false;
    bool hasCanopenish = false;
    const QList<quint8> lines = q->getLines();
    for (const quint8 line : lines) {
        const int type = q->getGeneralSetting(QStringLiteral("line%1type").arg(line)).toInt();
        hasJ1939ish = hasJ1939ish || type == 2 || type == 4 || type == 5;
        hasCanopenish = hasCanopenish || type == 1 || type == 4 || type == 5;
    }
    const bool foreign = (application == QStringLiteral("CANopen NodeSmith") && hasJ1939ish)
        || (application == QStringLiteral("J1939 NodeSmith") && hasCanopenish);
    if (!foreign)
        return true;
    lastError = QStringLiteral("File was not created with this tool.");
    connection.gate.afterLease([owner = q] { Q_EMIT owner->wrongTool(); });
    return false;
}

void ObjectDataBase::Private::decideLineType(quint8 line)
{
    const QString key = QStringLiteral("line%1type").arg(line);
    if (!q->getGeneralSetting(key).isEmpty())
        return;
    // Both comparisons are with the version field, as files of the first versions had the name there.
    const QString creator = q->getMiscSetting(QStringLiteral("CreateToolVersion"));
    bool isJ1939 = creator == QStringLiteral("J1939 NodeSmith");
    if (!isJ1939 && creator != QStringLiteral("CANopen NodeSmith"))
        isJ1939 = q->getIndexList(line, firstCommunicationIndex).size()
            <= q->getPGNList(line, BothDirections).size();
    q->setGeneralSetting(key, isJ1939 ? QStringLiteral("2") : QStringLiteral("1"));
}

void ObjectDataBase::Private::completeSettings()
{
    const QList<quint8> lines = q->getLines();
    for (const quint8 line : lines) {
        NODE_DATA_T node;
        if (q->getNode(line, node) && node.outputpath.isEmpty()) {
            node.outputpath = QStringLiteral("C:/");
            q->addNode(line, node);
        }
    }
    for (const quint8 line : lines)
        q->addDefaultDescriptionSettings(line);
    q->loadStrings();
    if (fileVersion() < 105)
        repairPositions();
    updateMappingCounts();
    repairLineSettings();
}

// Elements behind the highest line belonged to lines that are gone.
void ObjectDataBase::Private::repairLineSettings()
{
    const QList<quint8> lines = q->getLines();
    if (lines.isEmpty())
        return;
    const int highest = lines.last();
    for (const QString &key : perLineSettingKeys()) {
        const QStringList values = q->getGeneralSetting(key).split(u',');
        if (values.size() > highest + 1)
            q->setGeneralSetting(key, values.first(highest + 1).join(u','));
    }
}

bool ObjectDataBase::Private::matchesFileHash()
{
    const QString expected = q->getMiscSetting(QStringLiteral("FileHash"));
    return expected.isEmpty() || expected == q->contentHash();
}

void ObjectDataBase::Private::recordOutsideModification()
{
    externallyModified = true;
    QString log = q->getMiscSetting(QStringLiteral("TamperLog"));
    if (!log.isEmpty())
        log += u';';
    log += QDateTime::currentDateTime().toString(Qt::ISODate);
    q->setMiscSetting(QStringLiteral("TamperLog"), log);
}
