#pragma once

#include <QByteArray>
#include <QString>

/** While it lives, no working file can be made: the application's data folder lies below a file. */
class UnusableDataFolder
{
public:
    UnusableDataFolder() { qputenv("XDG_DATA_HOME", path().toLatin1()); }
    ~UnusableDataFolder() { qputenv("XDG_DATA_HOME", m_former); }
    Q_DISABLE_COPY_MOVE(UnusableDataFolder)

    static QString path() { return QStringLiteral("/dev/null/data"); }

private:
    QByteArray m_former = qgetenv("XDG_DATA_HOME");
};
