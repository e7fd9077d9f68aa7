#pragma once

#include <QFile>
#include <QTemporaryDir>

/** A folder of small shell scripts that stand for the user's programs. */
class ScriptFolder
{
public:
    /** An executable script; its path. */
    QString script(const QString &name, const QByteArray &body) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write("#!/bin/sh\n" + body + "\n") < 0)
            qFatal("cannot write %s", qPrintable(file.fileName()));
        file.close();
        file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        return path(name);
    }
    QString path(const QString &name) const { return m_folder.filePath(name); }
    bool exists(const QString &name) const { return QFile::exists(path(name)); }
    QByteArray read(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
    }

private:
    QTemporaryDir m_folder;
};
