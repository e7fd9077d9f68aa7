// J1939 parameter groups and signals.

#include "store/ObjectDataBaseMessages.h"

bool ObjectDataBase::addPGN(quint8 line, quint32 number, const PGN &pgn)
{
    return d->addMessage<J1939Messages>(line, number, pgn);
}

bool ObjectDataBase::getPGN(quint8 line, quint32 number, quint8 direction, PGN &pgn)
{
    return d->readRow(line, {number, direction}, pgn);
}

QString ObjectDataBase::getPGNName(quint8 line, quint32 number, quint8 direction)
{
    return d->pooledName("select name from PGNs%1 where number = ? and direction = ?", line,
                         {number, direction});
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
    return d->removeMessage<J1939Messages>(line, number, direction);
}

bool ObjectDataBase::setPGNMappingCount(quint8 line, quint32 number, quint8 direction, int count)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    return d->change("update PGNs%1 SET mappingcount = ? where number = ? AND direction = ?", line,
                     {count, number, direction}, __func__);
}

bool ObjectDataBase::addSPN(quint8 line, quint32 number, quint8 direction, quint32 spn, const SPN &data)
{
    return d->addSignal<J1939Messages>(line, number, direction, spn, data);
}

bool ObjectDataBase::getSPN(quint8 line, quint32 number, quint8 direction, quint32 spn, SPN &data)
{
    const ConnectionGate::Lease lease(d->connection.gate);
    if (const SPN *cached = d->cachedSignal(d->spnCache, line, Private::messageKey(number, direction), spn)) {
        data = *cached;
        return true;
    }
    return d->readRow(line, {number, spn, direction}, data);
}

QString ObjectDataBase::getSPNName(quint8 line, quint32 number, quint8 direction, quint32 spn)
{
    const ConnectionGate::Lease lease(d->connection.gate);
    if (const SPN *cached = d->cachedSignal(d->spnCache, line, Private::messageKey(number, direction), spn))
        return cached->name;
    return d->pooledName("select name from SPNs%1 where pgnnumber = ? and spnnumber = ? and direction = ?",
                         line, {number, spn, direction});
}

int ObjectDataBase::getSPNDatatype(quint8 line, quint32 number, quint8 direction, quint32 spn)
{
    const ConnectionGate::Lease lease(d->connection.gate);
    if (const SPN *cached = d->cachedSignal(d->spnCache, line, Private::messageKey(number, direction), spn))
        return cached->datatype;
    StoreQuery query(d->connection,
                     "select datatype from SPNs%1 where pgnnumber = ? and spnnumber = ? and direction = ?",
                     line);
    return int(query.bind(qint64(number)).bind(qint64(spn)).bind(qint64(direction)).firstNumber());
}

QList<quint32> ObjectDataBase::getSPNList(quint8 line, quint32 number, quint8 direction)
{
    const ConnectionGate::Lease lease(d->connection.gate);
    if (const auto *cached = d->cachedLine(d->spnCache, line))
        return cached->messages.value(Private::messageKey(number, direction)).numbers;
    return d->numberList(
        "select spnnumber from SPNs%1 where pgnnumber = ? and direction = ? order by pos asc, rowid asc",
        line, {number, direction});
}

bool ObjectDataBase::removeSPN(quint8 line, quint32 number, quint8 direction, quint32 spn)
{
    return d->removeSignal<J1939Messages>(line, number, direction, spn);
}

bool ObjectDataBase::copyPGNs(ObjectDataBase &source, quint8 fromLine, quint8 toLine, quint32 fromNumber,
                              quint32 toNumber, quint8 direction)
{
    return d->copyMessages<J1939Messages>(source, fromLine, toLine, fromNumber, toNumber, direction);
}

void ObjectDataBase::cacheAllSpns(quint8 line)
{
    d->fillSignalCache<J1939Messages>(line);
}

void ObjectDataBase::clearSpnCache()
{
    const ConnectionGate::Lease lease(d->connection.gate);
    d->spnCache.clear();
}
