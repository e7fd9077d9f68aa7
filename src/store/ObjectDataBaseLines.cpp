// Lines, nodes and the connections between their objects.

#include "store/ObjectDataBasePrivate.h"
#include "store/RowIo.h"

#include <QDebug>
#include <QSqlError>
#include <QSqlQuery>

namespace {

/** Reserved lines are buffers: they have tables, but no settings that a file could carry. */
bool isReserved(quint8 line)
{
    return line == ObjectDataBase::ClipboardLine || line == ObjectDataBase::ReferenceLine;
}

// SAE J1939-21: data page and PDU format reach 0x1FFFF without the extended data page.
constexpr quint32 lastCopiedPgn = 0x1FFFF;

} // namespace

QList<quint8> ObjectDataBase::getLines()
{
    QList<quint8> lines;
    StoreQuery query(d->connection, "select nodeId from nodes order by nodeId");
    while (query.next())
        lines.append(quint8(query.number(0)));
    return lines;
}

bool ObjectDataBase::nodeExists(quint8 line)
{
    return d->rowExists<NODE_DATA_T>(0, {line});
}

bool ObjectDataBase::getNode(quint8 line, NODE_DATA_T &node)
{
    return d->readRow(0, {line}, node);
}

bool ObjectDataBase::addNode(quint8 line, const NODE_DATA_T &node)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    if (nodeExists(line)) {
        const bool updated = d->updateRow(0, {line}, node);
        d->notify({.type = NodeChanged, .line = line});
        return updated;
    }
    const bool inserted = d->writeRow(Schema::sql<NODE_DATA_T>().insert, 0, {line}, node);
    d->createLineTables(line);
    if (!isReserved(line)) {
        d->inheritLineSettings(line);
        addDefaultDescriptionSettings(line);
    }
    QSqlQuery query(d->db);
    d->createUDSSettingsTable(line, query);
    d->insertDefaultServices(line);
    d->notify({.type = NodeChanged, .line = line});
    return inserted;
}

void ObjectDataBase::setNodeSqlValue(quint8 line, const QString &column, const QVariant &value)
{
    const auto *known = Schema::findColumn<NODE_DATA_T>(column);
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease || !value.isValid() || !known)
        return;
    if (!d->writeColumn<NODE_DATA_T>(0, *known, value, {line}))
        qDebug() << Q_FUNC_INFO << "error" << line << column;
}

bool ObjectDataBase::removeLine(quint8 line)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    bool success = true;
    for (const char *drop :
         {"drop table Objects%1", "drop table SubObjects%1", "drop table PGNs%1", "drop table SPNs%1",
          "drop table CANIDs%1", "drop table DataElements%1", "drop table UDSSettings%1"})
        success = d->run(drop, line) && success;
    success =
        StoreQuery(d->connection, "delete from Nodes where nodeId = ?").bind(qint64(line)).exec() && success;
    success = StoreQuery(d->connection, "delete from Connections where prodnode = ? OR connode = ?")
                  .bind(qint64(line))
                  .bind(qint64(line))
                  .exec()
        && success;
    d->notify({.type = LineRemoved, .line = line});
    d->dropLineCaches(line);
    return success;
}

bool ObjectDataBase::copyLine(ObjectDataBase &source, quint8 fromLine, quint8 toLine, quint16 indexFrom,
                              quint16 indexTo)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    if (&source == this && fromLine == toLine)
        return true;
    bool success = true;
    source.cacheAllSubs(fromLine, 0);
    const QList<quint16> indices = source.getIndexList(fromLine, indexFrom, indexTo);
    for (const quint16 index : indices) {
        INDEX_DATA_T data;
        success = source.getIndex(fromLine, index, data) && success;
        if (data.name.isEmpty())
            data.name = QStringLiteral("unnamed object");
        removeIndex(toLine, index);
        success = addIndex(toLine, index, data) && success;
        success = d->copySubIndices(source, fromLine, index, toLine, index) && success;
    }
    source.d->dropLineCaches(fromLine);
    success = copyPGNs(source, fromLine, toLine, 0, lastCopiedPgn, Receive) && success;
    success = copyPGNs(source, fromLine, toLine, 0, lastCopiedPgn, Transmit) && success;
    return (&source != this || d->copyUdsSettings(fromLine, toLine)) && success;
}

bool ObjectDataBase::removeConsumerConnection(quint8 line, quint16 index, quint8 subindex)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    return StoreQuery(d->connection,
                      "delete from Connections where connode = ? AND conindex = ? AND consub = ?")
        .bind(qint64(line))
        .bind(qint64(index))
        .bind(qint64(subindex))
        .exec();
}

bool ObjectDataBase::removeConnections(quint8 line, quint16 index)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    return StoreQuery(d->connection,
                      "delete from Connections where (prodnode = ? AND prodindex = ?) OR (connode = ? AND "
                      "conindex = ?)")
        .bind(qint64(line))
        .bind(qint64(index))
        .bind(qint64(line))
        .bind(qint64(index))
        .exec();
}
