#include "store/SafeFile.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <unistd.h>

namespace {

/** A rename is on the disk when the folder is. */
void flushFolder(const QString &path)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    const int descriptor = open(folder.constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    fsync(descriptor);
    close(descriptor);
}

bool flushToDisk(QFile &file)
{
    return file.flush() && fsync(file.handle()) == 0;
}

/** For a backup on another file system than the file itself, beside a link for one. */
bool copyOver(const QString &from, const QString &to)
{
    QFile::remove(to);
    QFile copy(to);
    return QFile::copy(from, to) && copy.open(QIODevice::ReadWrite) && flushToDisk(copy);
}

/** Replaces the target, which QFile::rename refuses. */
bool moveOver(const QString &from, const QString &to, QString *error)
{
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0)
        return true;
    if (errno == EXDEV && copyOver(from, to))
        return true;
    *error = QStringLiteral("The file %1 cannot be renamed to %2: %3")
                 .arg(from, to, QString::fromLocal8Bit(std::strerror(errno)));
    return false;
}

/** The permissions of a former file hold from the first byte on: its content may be for few eyes. */
bool writeWhole(const QString &path, std::optional<QFile::Permissions> permissions,
                const std::function<bool(QFile &)> &write, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        *error = file.errorString();
        return false;
    }
    if (permissions)
        file.setPermissions(*permissions | QFileDevice::WriteOwner);
    if (write(file) && flushToDisk(file))
        return true;
    if (error->isEmpty())
        *error = file.error() != QFileDevice::NoError ? file.errorString()
                                                      : QString::fromLocal8Bit(std::strerror(errno));
    file.close();
    file.remove();
    return false;
}

} // namespace

bool SafeFile::replace(const QString &path, const QString &backup, const std::function<bool(QFile &)> &write,
                       QString *error)
{
    error->clear();
    const QFileInfo info(path);
    // A link stays a link: the file that it names is replaced.
    const QString target = info.isSymLink() && info.exists() ? info.canonicalFilePath() : path;
    if (QFileInfo::exists(target) && !QFileInfo(target).isFile()) {
        *error = QStringLiteral("%1 is no file.").arg(path);
        return false;
    }
    const QString fresh = target + QStringLiteral(".new");
    QString reason;
    const bool replaces = QFile::exists(target);
    const auto permissions = replaces ? std::optional(QFile::permissions(target)) : std::nullopt;
    if (path.isEmpty() || !writeWhole(fresh, permissions, write, &reason)) {
        *error = path.isEmpty() ? QStringLiteral("The project has no file name.")
                                : QStringLiteral("The file %1 cannot be written: %2").arg(path, reason);
        return false;
    }
    const bool keeps = !backup.isEmpty() && replaces;
    if (keeps && !moveOver(target, backup, error)) {
        QFile::remove(fresh);
        return false;
    }
    if (!moveOver(fresh, target, error)) {
        QString ignored;
        if (keeps)
            moveOver(backup, target, &ignored);
        QFile::remove(fresh);
        return false;
    }
    flushFolder(target);
    return true;
}
