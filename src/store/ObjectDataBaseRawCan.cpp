// Raw CAN messages and their signals.

#include "store/ObjectDataBasePrivate.h"
#include "store/RowIo.h"

#include <QDebug>

bool ObjectDataBase::addCANID(quint8 line, quint32 id, const CANID &canid)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    const bool success = d->insertOrUpdateRow(line, {id}, {id, canid.direction}, canid);
    d->notify({.type = CanIdChanged, .line = line, .canid = id});
    return success;
}

bool ObjectDataBase::getCANID(quint8 line, quint32 id, quint8 direction, CANID &canid)
{
    return d->readRow(line, {id, direction}, canid);
}

QString ObjectDataBase::getCANIDName(quint8 line, quint32 id, quint8 direction)
{
    StoreQuery query(d->connection, "select name from CANIDs%1 where id = ? and direction = ?", line);
    query.bind(qint64(id)).bind(qint64(direction));
    return query.next() ? getString(int(query.number(0))) : QString();
}

QList<quint32> ObjectDataBase::getCANIDList(quint8 line, quint8 direction)
{
    if (direction == BothDirections)
        return d->numberList("select id from CANIDs%1 order by id asc", line, {});
    return d->numberList("select id from CANIDs%1 where direction = ? order by id asc", line, {direction});
}

bool ObjectDataBase::removeCANID(quint8 line, quint32 id, quint8 direction)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    bool success =
        StoreQuery(d->connection, "delete from DataElements%1 where canid = ? and direction = ?", line)
            .bind(qint64(id))
            .bind(qint64(direction))
            .exec();
    success = StoreQuery(d->connection, Schema::sql<CANID>().remove.constData(), line)
                  .bind(qint64(id))
                  .bind(qint64(direction))
                  .exec()
        && success;
    d->notify({.type = CanIdRemoved, .line = line, .canid = id, .direction = direction});
    return success;
}

bool ObjectDataBase::addDataElement(quint8 line, quint32 canid, quint8 direction, quint32 number,
                                    const DataElement &data)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    const bool success =
        d->insertOrUpdateRow(line, {canid, number, direction}, {canid, number, direction}, data);
    d->notify({.type = DataElementChanged, .line = line, .canid = canid, .element = number});
    return success;
}

bool ObjectDataBase::getDataElement(quint8 line, quint32 canid, quint8 direction, quint32 number,
                                    DataElement &data)
{
    return d->readRow(line, {canid, number, direction}, data);
}

QString ObjectDataBase::getDataElementName(quint8 line, quint32 canid, quint8 direction, quint32 number)
{
    StoreQuery query(d->connection,
                     "select name from DataElements%1 where canid = ? and number = ? and direction = ?",
                     line);
    query.bind(qint64(canid)).bind(qint64(number)).bind(qint64(direction));
    return query.next() ? getString(int(query.number(0))) : QString();
}

QList<quint32> ObjectDataBase::getDataElementList(quint8 line, quint32 canid, quint8 direction)
{
    return d->numberList(
        "select number from DataElements%1 where canid = ? and direction = ? order by number asc", line,
        {canid, direction});
}

bool ObjectDataBase::removeDataElement(quint8 line, quint32 canid, quint8 direction, quint32 number)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    const bool success = StoreQuery(d->connection, Schema::sql<DataElement>().remove.constData(), line)
                             .bind(qint64(canid))
                             .bind(qint64(number))
                             .bind(qint64(direction))
                             .exec();
    d->notify({.type = SpnRemoved, .line = line, .canid = canid, .element = number, .direction = direction});
    return success;
}

bool ObjectDataBase::copyCANIDs(ObjectDataBase &source, quint8 fromLine, quint8 toLine, quint32 fromId,
                                quint32 toId, quint8 direction)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    if (&source == this && fromLine == toLine)
        return true;
    bool success = true;
    const QList<quint32> ids = source.getCANIDList(fromLine, direction);
    for (const quint32 id : ids) {
        CANID canid;
        if (id < fromId || id > toId || !source.getCANID(fromLine, id, direction, canid))
            continue;
        removeCANID(toLine, id, direction);
        if (!addCANID(toLine, id, canid)) {
            qDebug() << "addCANID() failed: " << id;
            success = false;
        }
        const QList<quint32> numbers = source.getDataElementList(fromLine, id, direction);
        for (const quint32 number : numbers) {
            if (DataElement data; source.getDataElement(fromLine, id, direction, number, data))
                success = addDataElement(toLine, id, direction, number, data) && success;
        }
    }
    return success;
}
