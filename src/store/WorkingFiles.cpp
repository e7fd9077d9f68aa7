#include "store/WorkingFiles.h"

#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace {

// Where SQLite locks a database file: the pending byte, the reserved byte and the shared range.
constexpr off_t firstLockedByte = 0x40000000;
constexpr off_t lockedBytes = 512;

QString folder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
}

} // namespace

QString WorkingFiles::create()
{
    if (!QDir().mkpath(folder()))
        qWarning() << Q_FUNC_INFO << "cannot make the folder" << folder();
    while (true) {
        const int first = rand();
        const int second = rand();
        QString name = folder() + QStringLiteral("/wvxdatatemp_%1_%2").arg(first).arg(second);
        QFile file(name);
        // For the owner alone: the project that is copied there may be readable for nobody else.
        if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly,
                      QFileDevice::ReadOwner | QFileDevice::WriteOwner))
            return name;
        if (!file.exists()) {
            qWarning() << Q_FUNC_INFO << name << file.errorString();
            return {};
        }
    }
}

bool WorkingFiles::isInUse(const QString &path)
{
    const int descriptor = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    struct flock probe = {};
    probe.l_type = F_WRLCK;
    probe.l_whence = SEEK_SET;
    probe.l_start = firstLockedByte;
    probe.l_len = lockedBytes;
    const bool inUse = fcntl(descriptor, F_GETLK, &probe) == 0 && probe.l_type != F_UNLCK;
    close(descriptor);
    return inUse;
}

void WorkingFiles::removeStale()
{
    const QDateTime limit = QDateTime::currentDateTime().addDays(-staleAfterDays);
    const QFileInfoList files =
        QDir(folder()).entryInfoList({QStringLiteral("wvxdatatemp_*_*")}, QDir::Files);
    for (const QFileInfo &file : files) {
        if (file.lastModified() < limit && !isInUse(file.filePath()))
            QFile::remove(file.filePath());
    }
}
