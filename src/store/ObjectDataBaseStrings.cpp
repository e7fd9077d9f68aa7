// The string pool.

#include "store/ObjectDataBasePrivate.h"

#include <QDebug>
#include <QSet>

#include <array>
#include <sqlite3.h>

int ObjectDataBase::addString(const QString &text)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return -1;
    if (!d->poolLoaded)
        loadStrings();
    // A text with a single quote gets a further row at each call and the id of its first row; the
    // superfluous rows go at the next clean-up.
    const int known = d->pool.stringToId(text);
    if (known >= 0 && !text.contains(u'\''))
        return known;
    if (!StoreQuery(d->connection, "insert into Strings values(NULL,?)").bind(text).exec())
        return -1;
    if (known >= 0)
        return known;
    const auto id = int(sqlite3_last_insert_rowid(d->connection.statements.connection()));
    d->pool.add(id, text);
    return id;
}

QString ObjectDataBase::getString(int id)
{
    const ConnectionGate::Lease lease(d->connection.gate);
    if (const QString *known = d->pool.idToString(id))
        return *known;
    StoreQuery query(d->connection, "select string from Strings where id = ?");
    query.bind(qint64(id));
    return query.next() ? d->pool.addText(id, query.text(0)) : QString();
}

void ObjectDataBase::loadStrings()
{
    const ConnectionGate::Lease lease(d->connection.gate);
    d->pool.clear();
    d->pool.reserve(StoreQuery(d->connection, "select count(*) from Strings").firstNumber());
    StoreQuery query(d->connection, "select id, string from Strings order by id");
    while (query.next())
        d->pool.add(int(query.number(0)), query.text(1));
    d->poolLoaded = true;
}

// False when a column could not be read to its end: then nothing may be taken for unused.
bool ObjectDataBase::Private::collectUsedStringIds(QSet<int> &used)
{
    struct Source
    {
        const char *table;
        const char *select;
    };
    static constexpr std::array sources = std::to_array<Source>({
        {"Objects%1", "select name, description, device_class from Objects%1"},
        {"SubObjects%1", "select name, denotation, description from SubObjects%1"},
        {"PGNs%1", "select name, desc, desc from PGNs%1"},
        {"CANIDs%1", "select name, desc, desc from CANIDs%1"},
        {"SPNs%1", "select name, desc, desc from SPNs%1"},
        {"DataElements%1", "select name, desc, desc from DataElements%1"},
    });
    const QStringList present = tableNames();
    const auto collect = [&](const Source &source, quint8 line) {
        if (!present.contains(QString::fromLatin1(SqlStatements::text(source.table, line))))
            return true;
        StoreQuery query(connection, source.select, line, "removeUnusedStrings");
        while (query.next()) {
            for (int column = 0; column < 3; ++column)
                used.insert(int(query.number(column)));
        }
        return !query.failed();
    };
    bool complete = collect({"Signals", "select name, name, name from Signals"}, 0);
    const QList<quint8> lines = q->getLines();
    for (const quint8 line : lines) {
        for (const Source &source : sources)
            complete = collect(source, line) && complete;
    }
    return complete;
}

// Runs of ids that hold no used one: a clean-up deletes few ranges rather than many rows.
QList<std::pair<int, int>> ObjectDataBase::Private::unusedStringRanges(const QSet<int> &used)
{
    QList<std::pair<int, int>> ranges;
    bool continues = false;
    StoreQuery query(connection, "select id from Strings order by id");
    while (query.next()) {
        const int id = int(query.number(0));
        const bool isUnused = !used.contains(id);
        if (isUnused && continues)
            ranges.last().second = id;
        else if (isUnused)
            ranges.append({id, id});
        continues = isUnused;
    }
    return ranges;
}

void ObjectDataBase::removeUnusedStrings()
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return;
    QSet<int> used;
    if (!d->collectUsedStringIds(used)) {
        qWarning() << Q_FUNC_INFO
                   << "the string pool stays as it is:" << d->connection.statements.lastError();
        return;
    }
    d->db.transaction();
    for (const auto &[first, last] : d->unusedStringRanges(used)) {
        StoreQuery(d->connection, "delete from Strings where id between ? and ?")
            .bind(qint64(first))
            .bind(qint64(last))
            .exec();
    }
    d->db.commit();
    loadStrings();
}
