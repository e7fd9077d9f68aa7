// Raw CAN messages and their signals.

#include "store/ObjectDataBaseMessages.h"

bool ObjectDataBase::addCANID(quint8 line, quint32 id, const CANID &canid)
{
    return d->addMessage<RawCanMessages>(line, id, canid);
}

bool ObjectDataBase::getCANID(quint8 line, quint32 id, quint8 direction, CANID &canid)
{
    return d->readRow(line, {id, direction}, canid);
}

QString ObjectDataBase::getCANIDName(quint8 line, quint32 id, quint8 direction)
{
    return d->pooledName("select name from CANIDs%1 where id = ? and direction = ?", line, {id, direction});
}

QList<quint32> ObjectDataBase::getCANIDList(quint8 line, quint8 direction)
{
    if (direction == BothDirections)
        return d->numberList("select id from CANIDs%1 order by id asc", line, {});
    return d->numberList("select id from CANIDs%1 where direction = ? order by id asc", line, {direction});
}

bool ObjectDataBase::removeCANID(quint8 line, quint32 id, quint8 direction)
{
    return d->removeMessage<RawCanMessages>(line, id, direction);
}

bool ObjectDataBase::addDataElement(quint8 line, quint32 canid, quint8 direction, quint32 number,
                                    const DataElement &data)
{
    return d->addSignal<RawCanMessages>(line, canid, direction, number, data);
}

bool ObjectDataBase::getDataElement(quint8 line, quint32 canid, quint8 direction, quint32 number,
                                    DataElement &data)
{
    const ConnectionGate::Lease lease(d->connection.gate);
    if (const DataElement *cached =
            d->cachedSignal(d->elementCache, line, Private::messageKey(canid, direction), number)) {
        data = *cached;
        return true;
    }
    return d->readRow(line, {canid, number, direction}, data);
}

QString ObjectDataBase::getDataElementName(quint8 line, quint32 canid, quint8 direction, quint32 number)
{
    const ConnectionGate::Lease lease(d->connection.gate);
    if (const DataElement *cached =
            d->cachedSignal(d->elementCache, line, Private::messageKey(canid, direction), number))
        return cached->name;
    return d->pooledName("select name from DataElements%1 where canid = ? and number = ? and direction = ?",
                         line, {canid, number, direction});
}

QList<quint32> ObjectDataBase::getDataElementList(quint8 line, quint32 canid, quint8 direction)
{
    const ConnectionGate::Lease lease(d->connection.gate);
    if (const auto *cached = d->cachedLine(d->elementCache, line))
        return cached->messages.value(Private::messageKey(canid, direction)).numbers;
    return d->numberList(
        "select number from DataElements%1 where canid = ? and direction = ? order by number asc", line,
        {canid, direction});
}

bool ObjectDataBase::removeDataElement(quint8 line, quint32 canid, quint8 direction, quint32 number)
{
    return d->removeSignal<RawCanMessages>(line, canid, direction, number);
}

bool ObjectDataBase::copyCANIDs(ObjectDataBase &source, quint8 fromLine, quint8 toLine, quint32 fromId,
                                quint32 toId, quint8 direction)
{
    return d->copyMessages<RawCanMessages>(source, fromLine, toLine, fromId, toId, direction);
}

void ObjectDataBase::cacheAllDataElements(quint8 line)
{
    d->fillSignalCache<RawCanMessages>(line);
}

void ObjectDataBase::clearDataElementCache()
{
    const ConnectionGate::Lease lease(d->connection.gate);
    d->elementCache.clear();
}
