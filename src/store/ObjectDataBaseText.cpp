// Projects as text: save and load.

#include "store/DatabaseTextConverter.h"
#include "store/ObjectDataBasePrivate.h"
#include "store/SafeFile.h"

#include <QDebug>
#include <QFile>
#include <QSignalBlocker>
#include <QTemporaryDir>

bool ObjectDataBase::Private::isTextPath(const QString &path)
{
    return path.endsWith(QLatin1StringView("vext"), Qt::CaseInsensitive);
}

bool ObjectDataBase::saveDatabaseAsText(const QString &path)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease || !isOpen()) {
        d->lastError = QStringLiteral("The project is in use or not open.");
        return false;
    }
    d->lastError.clear();
    d->textLosses.clear();
    const QString target = Private::absolutePath(path.isEmpty() ? d->projectPath : path);
    if (!d->prepareForSaving(target) || !d->writeTextFile(target)) {
        qDebug().noquote() << Q_FUNC_INFO << target << d->lastError;
        return false;
    }
    d->projectPath = target;
    return true;
}

// Made in a folder of its own: QSettings leaves a lock file and rights for the owner alone.
bool ObjectDataBase::Private::writeTextFile(const QString &path)
{
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("project.vext"));
    DatabaseTextConverter converter;
    converter.setDataBase(q, db, &connection.gate);
    converter.setOutputFile(name);
    if (!folder.isValid() || !converter.convertSqlToText() || !converter.isWritten()) {
        lastError = QStringLiteral("The text of %1 cannot be made in %2.").arg(path, folder.path());
        return false;
    }
    QFile text(name);
    if (!text.open(QIODevice::ReadOnly)
        || !SafeFile::replace(
            path, QString(), [&text](QFile &file) { return copyBytes(text, file); }, &lastError))
        return false;
    textLosses = converter.losses();
    return true;
}

QStringList ObjectDataBase::textLosses() const
{
    return d->textLosses;
}

// The text is judged before the present project goes.
bool ObjectDataBase::loadTextProject(const QString &path)
{
    if (path.isEmpty())
        return false;
    d->lastError = Private::fileReason(path);
    if (!d->lastError.isEmpty())
        return false;
    const QString source = Private::absolutePath(path);
    DatabaseTextConverter converter;
    converter.setInputFile(source);
    if (const QString defect = converter.defect(); !defect.isEmpty()) {
        d->lastError = QStringLiteral("%1 is not the text of a project: %2.").arg(path, defect);
        return false;
    }
    const QString expected = converter.storedHash();
    // Without a hash a missing end is the only trace of a cut.
    const bool isSame =
        expected.isEmpty() ? !converter.endsWithinLine() : expected == converter.entriesHash();
    if (!d->readText(converter, source, isSame && !converter.hasBadLines()))
        return false;
    d->notify({.type = ProjectChanged});
    return true;
}

// Forms hear of the result once and not of every entry: what is put off until the lease ends comes while
// the signals are still blocked.
bool ObjectDataBase::Private::readText(DatabaseTextConverter &converter, const QString &path,
                                       bool isUnchanged)
{
    const QSignalBlocker blocker(q);
    const ConnectionGate::WriteLease lease(connection.gate);
    if (!lease) {
        lastError = QStringLiteral("The project is in use by a running job.");
        return false;
    }
    if (!q->createNewDataBase())
        return false;
    projectPath = path;
    // The text tells what the project was made with.
    if (converter.hasGroup(QStringLiteral("MiscSettings")))
        run("delete from MiscSettings");
    converter.setDataBase(q, db, &connection.gate);
    converter.convertTextToSql();
    if (!isUnchanged)
        recordOutsideModification();
    return true;
}
