#pragma once

#include "store/ObjectDataBase.h"

#include <QCoreApplication>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

/** Project files for tests of open and save. */
namespace ProjectFiles {

inline void nameApplication()
{
    QCoreApplication::setApplicationName(QStringLiteral("CANopen NodeSmith"));
    QCoreApplication::setApplicationVersion(QStringLiteral("4.3.2"));
}

/** A CANopen project of one line with `objects` objects of ten sub-indices each. */
inline bool fill(ObjectDataBase &store, int objects)
{
    if (!store.createNewDataBase()
        || !store.setGeneralSetting(QStringLiteral("line0type"), QStringLiteral("1")))
        return false;
    QList<ObjectDataBase::SubEntry> entries;
    for (int object = 0; object < objects; ++object) {
        ObjectDataBase::INDEX_DATA_T data;
        data.name = QStringLiteral("Object %1").arg(object);
        data.objecttype = 9;
        data.datatype = 7;
        const auto index = quint16(0x2000 + object);
        if (!store.addIndex(0, index, data))
            return false;
        for (quint8 sub = 0; sub < 10; ++sub) {
            ObjectDataBase::SubEntry entry{0, index, sub, {}};
            entry.data.name = QStringLiteral("Object %1 value %2").arg(object).arg(sub);
            entry.data.datatype = 7;
            entry.data.accesstype = QStringLiteral("rw");
            entry.data.defaultvalue = QString::number(object * 10 + sub);
            entries.append(entry);
        }
    }
    return store.addSubIndices(entries);
}

inline bool make(const QString &path, int objects)
{
    ObjectDataBase store;
    return fill(store, objects) && store.saveProject(path);
}

inline QByteArray bytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline bool write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(content) == content.size();
}

/** Lets a scope run without root's rights, which know no unreadable file; working files lie in `folder`. */
class OrdinaryUser
{
public:
    explicit OrdinaryUser(const QString &folder) : m_dataHome(qgetenv("XDG_DATA_HOME"))
    {
        constexpr uid_t nobody = 65534;
        chmod(QFile::encodeName(folder).constData(), 0777);
        qputenv("XDG_DATA_HOME", QFile::encodeName(folder));
        if (geteuid() == 0)
            m_switched = seteuid(nobody) == 0;
    }
    ~OrdinaryUser()
    {
        if (m_switched && seteuid(0) != 0)
            qFatal("cannot become root again");
        qputenv("XDG_DATA_HOME", m_dataHome);
    }
    Q_DISABLE_COPY_MOVE(OrdinaryUser)

private:
    QByteArray m_dataHome;
    bool m_switched = false;
};

/** A plain SQLite connection to a file, gone at the end of the scope. */
class PlainDatabase
{
public:
    explicit PlainDatabase(const QString &path)
    {
        m_db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("plain"));
        m_db.setDatabaseName(path);
        m_db.open();
    }
    ~PlainDatabase()
    {
        m_db.close();
        m_db = QSqlDatabase();
        QSqlDatabase::removeDatabase(QStringLiteral("plain"));
    }
    Q_DISABLE_COPY_MOVE(PlainDatabase)

    bool exec(const QString &sql)
    {
        QSqlQuery query(m_db);
        const bool success = query.exec(sql);
        if (!success)
            qWarning() << sql << query.lastError().text();
        return success;
    }
    QVariantList column(const QString &sql)
    {
        QVariantList values;
        QSqlQuery query(m_db);
        query.exec(sql);
        while (query.next())
            values.append(query.value(0));
        return values;
    }

private:
    QSqlDatabase m_db;
};

} // namespace ProjectFiles
