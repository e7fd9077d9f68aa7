// J1939 parameter groups and signals.

#include "store/ObjectDataBasePrivate.h"
#include "store/RowIo.h"

#include <QDebug>

QList<quint32> ObjectDataBase::Private::numberList(const char *sql, quint8 line,
                                                   std::initializer_list<qint64> values,
                                                   const char *operation)
{
    QList<quint32> numbers;
    StoreQuery query(connection, sql, line, operation);
    for (const qint64 value : values)
        query.bind(value);
    while (query.next())
        numbers.append(quint32(query.number(0)));
    return numbers;
}

bool ObjectDataBase::addPGN(quint8 line, quint32 number, const PGN &pgn)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    const bool success = d->insertOrUpdateRow(line, {number}, {number, pgn.direction}, pgn);
    d->notify({.type = PgnChanged, .line = line, .pgn = number});
    return success;
}

bool ObjectDataBase::getPGN(quint8 line, quint32 number, quint8 direction, PGN &pgn)
{
    return d->readRow(line, {number, direction}, pgn);
}

QString ObjectDataBase::getPGNName(quint8 line, quint32 number, quint8 direction)
{
    StoreQuery query(d->connection, "select name from PGNs%1 where number = ? and direction = ?", line);
    query.bind(qint64(number)).bind(qint64(direction));
    return query.next() ? getString(int(query.number(0))) : QString();
}

int ObjectDataBase::getPGNMappingCount(quint8 line, quint32 number, quint8 direction)
{
    StoreQuery query(d->connection, "select mappingcount from PGNs%1 where number = ? and direction = ?",
                     line);
    return int(query.bind(qint64(number)).bind(qint64(direction)).firstNumber());
}

QList<quint32> ObjectDataBase::getPGNList(quint8 line, quint8 direction, bool safeOnly)
{
    if (direction == BothDirections) {
        return d->numberList(safeOnly ? "select number from PGNs%1 where issafe = 0 or issafe is NULL "
                                        "order by number asc"
                                      : "select number from PGNs%1 order by number asc",
                             line, {});
    }
    return d->numberList(safeOnly ? "select number from PGNs%1 where direction = ? "
                                    "AND (issafe = 0 or issafe is NULL) order by number asc"
                                  : "select number from PGNs%1 where direction = ? order by number asc",
                         line, {direction});
}

bool ObjectDataBase::removePGN(quint8 line, quint32 number, quint8 direction)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    bool success = StoreQuery(d->connection, "delete from SPNs%1 where pgnnumber = ? and direction = ?", line)
                       .bind(qint64(number))
                       .bind(qint64(direction))
                       .exec();
    success = StoreQuery(d->connection, Schema::sql<PGN>().remove.constData(), line)
                  .bind(qint64(number))
                  .bind(qint64(direction))
                  .exec()
        && success;
    d->dropSpnCache(line);
    d->notify({.type = PgnRemoved, .line = line, .pgn = number, .direction = direction});
    return success;
}

bool ObjectDataBase::setPGNMappingCount(quint8 line, quint32 number, quint8 direction, int count)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    return StoreQuery(d->connection, "update PGNs%1 SET mappingcount = ? where number = ? AND direction = ?",
                      line)
        .bind(qint64(count))
        .bind(qint64(number))
        .bind(qint64(direction))
        .exec();
}

bool ObjectDataBase::addSPN(quint8 line, quint32 number, quint8 direction, quint32 spn, const SPN &data)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    const bool success = d->insertOrUpdateRow(line, {number, spn, direction}, {number, spn, direction}, data);
    d->dropSpnCache(line);
    d->notify({.type = SpnChanged, .line = line, .pgn = number, .spn = spn});
    return success;
}

const ObjectDataBase::SPN *ObjectDataBase::Private::cachedSpn(quint8 line, MessageKey key, quint32 spn) const
{
    const auto cached = spnCache.constFind(line);
    if (cached == spnCache.constEnd())
        return nullptr;
    const auto group = cached->records.constFind(key);
    if (group == cached->records.constEnd())
        return nullptr;
    const auto record = group->constFind(spn);
    return record == group->constEnd() ? nullptr : &*record;
}

bool ObjectDataBase::getSPN(quint8 line, quint32 number, quint8 direction, quint32 spn, SPN &data)
{
    const ConnectionGate::Lease lease(d->connection.gate);
    if (const SPN *cached = d->cachedSpn(line, Private::messageKey(number, direction), spn)) {
        data = *cached;
        return true;
    }
    return d->readRow(line, {number, spn, direction}, data);
}

QString ObjectDataBase::getSPNName(quint8 line, quint32 number, quint8 direction, quint32 spn)
{
    const ConnectionGate::Lease lease(d->connection.gate);
    if (const SPN *cached = d->cachedSpn(line, Private::messageKey(number, direction), spn))
        return cached->name;
    StoreQuery query(d->connection,
                     "select name from SPNs%1 where pgnnumber = ? and spnnumber = ? and direction = ?", line);
    query.bind(qint64(number)).bind(qint64(spn)).bind(qint64(direction));
    return query.next() ? getString(int(query.number(0))) : QString();
}

int ObjectDataBase::getSPNDatatype(quint8 line, quint32 number, quint8 direction, quint32 spn)
{
    const ConnectionGate::Lease lease(d->connection.gate);
    if (const SPN *cached = d->cachedSpn(line, Private::messageKey(number, direction), spn))
        return cached->datatype;
    StoreQuery query(d->connection,
                     "select datatype from SPNs%1 where pgnnumber = ? and spnnumber = ? and direction = ?",
                     line);
    return int(query.bind(qint64(number)).bind(qint64(spn)).bind(qint64(direction)).firstNumber());
}

QList<quint32> ObjectDataBase::getSPNList(quint8 line, quint32 number, quint8 direction)
{
    const ConnectionGate::Lease lease(d->connection.gate);
    if (const auto cached = d->spnCache.constFind(line); cached != d->spnCache.constEnd())
        return cached->order.value(Private::messageKey(number, direction));
    return d->numberList(
        "select spnnumber from SPNs%1 where pgnnumber = ? and direction = ? order by pos asc, rowid asc",
        line, {number, direction});
}

bool ObjectDataBase::removeSPN(quint8 line, quint32 number, quint8 direction, quint32 spn)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    const bool success = StoreQuery(d->connection, Schema::sql<SPN>().remove.constData(), line)
                             .bind(qint64(number))
                             .bind(qint64(spn))
                             .bind(qint64(direction))
                             .exec();
    d->dropSpnCache(line);
    d->notify({.type = SpnRemoved, .line = line, .pgn = number, .spn = spn, .direction = direction});
    return success;
}

// Source signals come from the cache and fresh rows are inserted without a look-up: the tables have no key,
// so that every search in them walks all rows.
bool ObjectDataBase::copyPGNs(ObjectDataBase &source, quint8 fromLine, quint8 toLine, quint32 fromNumber,
                              quint32 toNumber, quint8 direction)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    if (&source == this && fromLine == toLine)
        return true;
    bool success = true;
    source.cacheAllSpns(fromLine);
    const QList<quint32> present = getPGNList(toLine, direction);
    const QSet<quint32> replaced(present.begin(), present.end());
    const QList<quint32> numbers = source.getPGNList(fromLine, direction);
    for (const quint32 number : numbers) {
        PGN pgn;
        if (number < fromNumber || number > toNumber || !source.getPGN(fromLine, number, direction, pgn))
            continue;
        if (replaced.contains(number))
            removePGN(toLine, number, direction);
        if (!d->writeRow(Schema::sql<PGN>().insert, toLine, {number}, pgn)) {
            qDebug() << "adPGN() failed: " << number;
            success = false;
        }
        d->notify({.type = PgnChanged, .line = toLine, .pgn = number});
        success = d->copySpns(source, fromLine, toLine, number, direction) && success;
    }
    source.d->dropSpnCache(fromLine);
    d->dropSpnCache(toLine);
    return success;
}

bool ObjectDataBase::Private::copySpns(ObjectDataBase &source, quint8 fromLine, quint8 toLine, quint32 number,
                                       quint8 direction)
{
    bool success = true;
    const QList<quint32> spns = source.getSPNList(fromLine, number, direction);
    for (const quint32 spn : spns) {
        SPN data;
        success = source.getSPN(fromLine, number, direction, spn, data)
            && writeRow(Schema::sql<SPN>().insert, toLine, {number, spn, direction}, data) && success;
        notify({.type = SpnChanged, .line = toLine, .pgn = number, .spn = spn});
    }
    return success;
}

void ObjectDataBase::cacheAllSpns(quint8 line)
{
    const ConnectionGate::Lease lease(d->connection.gate);
    Private::SpnCache cache;
    StoreQuery query(d->connection, Schema::sql<SPN>().selectAll.constData(), line);
    RowIo::Reader<SPN> reader(*this);
    while (query.next()) {
        const auto key = Private::messageKey(quint32(query.number(0)), quint8(query.number(2)));
        const auto spn = quint32(query.number(1));
        cache.order[key].append(spn);
        reader.read(query, 3, cache.records[key][spn]);
    }
    d->spnCache[line] = cache;
}

void ObjectDataBase::clearSpnCache()
{
    const ConnectionGate::Lease lease(d->connection.gate);
    d->spnCache.clear();
}

void ObjectDataBase::Private::dropSpnCache(quint8 line)
{
    const ConnectionGate::Lease lease(connection.gate);
    spnCache.remove(line);
}
