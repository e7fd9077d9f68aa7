#include "generators/StaleFiles.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>

void removeStaleFiles(const QString &folder, std::span<const char *const> names)
{
    const QDir directory(folder);
    for (const char *name : names) {
        const QString path = directory.filePath(QString::fromLatin1(name));
        if (QFileInfo(path).isFile() && !QFile::remove(path))
            qWarning().noquote() << "The outdated file" << path << "cannot be removed";
    }
}
