#pragma once

#include "store/ObjectDataBase.h"

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QVariant>

using ChangeSet = ObjectDataBase::ChangeSet;

namespace ProjectRecords {

/** How QCOMPARE shows a notification. */
inline char *toString(const ChangeSet &set)
{
    return qstrdup(qPrintable(QStringLiteral("type %1 line %2 index %3 sub %4 pgn %5 spn %6 canid %7 "
                                             "element %8 direction %9")
                                  .arg(set.type)
                                  .arg(set.line)
                                  .arg(set.index)
                                  .arg(set.subindex)
                                  .arg(set.pgn)
                                  .arg(set.spn)
                                  .arg(set.canid)
                                  .arg(set.element)
                                  .arg(set.direction)));
}

} // namespace ProjectRecords

/** What the tests of the store share. */
namespace StoreTest {

/** Keeps working files out of the user's folders and names the edition. */
inline void prepareApplication()
{
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setApplicationName(QStringLiteral("CANopen NodeSmith"));
    QCoreApplication::setApplicationVersion(QStringLiteral("4.3.2"));
}

/** A store with an empty project: line 0 only. */
class NewStore : public ObjectDataBase
{
public:
    NewStore()
    {
        if (!createNewDataBase())
            qFatal("the store cannot make a new database");
    }
};

/** An SQLite file read by a connection of its own, so that no cache of a store stands between. */
class DatabaseFile
{
public:
    explicit DatabaseFile(const QString &path)
    {
        static int number = 0;
        m_name = QStringLiteral("reader%1").arg(++number);
        m_db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name);
        m_db.setDatabaseName(path);
        if (!m_db.open())
            qFatal("cannot read %s", qPrintable(path));
    }
    ~DatabaseFile()
    {
        m_db.close();
        m_db = QSqlDatabase();
        QSqlDatabase::removeDatabase(m_name);
    }
    Q_DISABLE_COPY_MOVE(DatabaseFile)

    QList<QVariantList> rows(const QString &sql) const
    {
        QList<QVariantList> result;
        QSqlQuery query(m_db);
        query.setForwardOnly(true);
        if (!query.exec(sql))
            qWarning("%s: %s", qPrintable(sql), qPrintable(query.lastError().text()));
        while (query.next()) {
            QVariantList row;
            for (int column = 0; column < query.record().count(); ++column)
                row.append(query.value(column));
            result.append(row);
        }
        return result;
    }
    /** First column of all rows, as texts. */
    QStringList column(const QString &sql) const
    {
        QStringList result;
        for (const QVariantList &row : rows(sql))
            result.append(row.value(0).toString());
        return result;
    }
    QVariant value(const QString &sql) const { return rows(sql).value(0).value(0); }
    int count(const QString &from) const
    {
        return value(QStringLiteral("select count(*) from ") + from).toInt();
    }
    bool execute(const QString &sql) const { return QSqlQuery(m_db).exec(sql); }

private:
    QString m_name;
    QSqlDatabase m_db;
};

/** The present content of a store, as a file. */
class Snapshot
{
public:
    explicit Snapshot(ObjectDataBase &store)
    {
        const QString path = m_folder.filePath(QStringLiteral("snapshot"));
        if (!store.executeSql(QStringLiteral("VACUUM INTO '%1'").arg(path)))
            qFatal("cannot copy the store: %s", qPrintable(store.sqlResult().join(u' ')));
        m_file = std::make_unique<DatabaseFile>(path);
    }
    const DatabaseFile *operator->() const { return m_file.get(); }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<DatabaseFile> m_file;
};

/** The notifications of a store since its construction or the last take(). */
class RecordedChanges : public QObject
{
public:
    explicit RecordedChanges(ObjectDataBase &store)
    {
        connect(&store, &ObjectDataBase::updateNotify, this,
                [this](const ChangeSet &set) { m_sets.append(set); });
    }
    QList<ChangeSet> all() const { return m_sets; }
    QList<ChangeSet> ofType(int type) const
    {
        QList<ChangeSet> result;
        for (const ChangeSet &set : m_sets) {
            if (set.type == type)
                result.append(set);
        }
        return result;
    }
    void clear() { m_sets.clear(); }

private:
    QList<ChangeSet> m_sets;
};

inline ObjectDataBase::INDEX_DATA_T sampleIndex(const QString &name = QStringLiteral("Device type"))
{
    return {.name = name,
            .datatype = 7,
            .objecttype = 9,
            .description = QStringLiteral("what the device is"),
            .category = 1,
            .device_class = QStringLiteral("class"),
            .fwsupported = 1,
            .metadata = {}};
}

inline ObjectDataBase::SUBINDEX_DATA_T sampleSub(const QString &name = QStringLiteral("Vendor"))
{
    ObjectDataBase::SUBINDEX_DATA_T sub;
    sub.name = name;
    sub.datatype = 7;
    sub.accesstype = QStringLiteral("rw");
    sub.defaultvalue = QStringLiteral("0x10");
    sub.currentvalue = QStringLiteral("17");
    sub.pdomapping = PDOMapping(PDOMapping::TPDO);
    sub.lowlimit = QStringLiteral("0");
    sub.uplimit = QStringLiteral("4294967295");
    sub.size = 4;
    sub.allowedaccesstypes = QStringLiteral("const,ro,rw,wo,rww,rwr");
    sub.implementation = 2;
    sub.description = QStringLiteral("the vendor's number");
    sub.varname = QStringLiteral("vendor");
    sub.denotation = QStringLiteral("Vendor of this device");
    return sub;
}

inline ObjectDataBase::PGN samplePgn(int direction, const QString &name = QStringLiteral("EEC1"))
{
    ObjectDataBase::PGN pgn;
    pgn.name = name;
    pgn.desc = QStringLiteral("engine controller");
    pgn.priority = 3;
    pgn.cycletime_ms = 20;
    pgn.direction = direction;
    return pgn;
}

inline ObjectDataBase::SPN sampleSpn(int pos, const QString &name = QStringLiteral("Engine speed"))
{
    ObjectDataBase::SPN spn;
    spn.name = name;
    spn.desc = QStringLiteral("revolutions");
    spn.datatype = 6;
    spn.pos = pos;
    spn.bitsize = 16;
    return spn;
}

inline ObjectDataBase::CANID sampleCanId(int direction, const QString &name = QStringLiteral("Status"))
{
    return {.name = name,
            .desc = QStringLiteral("cyclic status"),
            .cycletime_ms = 100,
            .inhibittime_ms = 10,
            .mappingcount = 0,
            .direction = direction};
}

inline ObjectDataBase::DataElement sampleElement(int pos, const QString &name = QStringLiteral("Counter"))
{
    ObjectDataBase::DataElement element;
    element.name = name;
    element.desc = QStringLiteral("alive counter");
    element.datatype = 5;
    element.pos = pos;
    element.bitsize = 8;
    return element;
}

} // namespace StoreTest
