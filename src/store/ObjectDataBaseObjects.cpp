// Objects of the object dictionary.

#include "store/ObjectDataBasePrivate.h"
#include "store/RowIo.h"

#include <QDebug>

namespace {

ObjectDataBase::ChangeSet indexChange(int type, quint8 line, quint16 index)
{
    return {.type = type, .index = index, .line = line};
}

} // namespace

bool ObjectDataBase::addIndex(quint8 line, quint16 index, const INDEX_DATA_T &data)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    // Files number their texts in this order: description first, then name and class.
    addString(data.description);
    const bool success = d->insertOrUpdateRow(line, {index}, {index}, data);
    if (!data.metadata.isEmpty())
        setObjectMetadata(line, index, data.metadata);
    d->notify(indexChange(IndexChanged, line, index));
    return success;
}

bool ObjectDataBase::getIndex(quint8 line, quint16 index, INDEX_DATA_T &data)
{
    return d->readRow(line, {index}, data);
}

void ObjectDataBase::visitIndices(quint8 line, const IndexVisitor &visit)
{
    StoreQuery query(d->connection, Schema::sql<INDEX_DATA_T>().selectAll.constData(), line);
    RowIo::Reader<INDEX_DATA_T> reader(d->texts());
    INDEX_DATA_T data;
    while (query.next()) {
        if (!query.holds<quint16>(0))
            continue;
        reader.read(query, 1, data);
        visit(quint16(query.number(0)), data);
    }
}

QString ObjectDataBase::getIndexName(quint8 line, quint16 index)
{
    StoreQuery query(d->connection, "select name from Objects%1 where objectindex = ?", line);
    query.bind(qint64(index));
    return query.next() ? getString(int(query.number(0))) : QString();
}

QList<quint16> ObjectDataBase::getIndexList(quint8 line, quint16 from, quint16 to)
{
    QList<quint16> indices;
    StoreQuery query(
        d->connection,
        "select objectindex from Objects%1 where objectindex between ? and ? order by objectindex asc", line);
    query.bind(qint64(from)).bind(qint64(to));
    while (query.next())
        indices.append(quint16(query.number(0)));
    return indices;
}

bool ObjectDataBase::indexExists(quint8 line, quint16 index)
{
    return d->rowExists<INDEX_DATA_T>(line, {index});
}

bool ObjectDataBase::removeIndex(quint8 line, quint16 index)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    const bool subsRemoved = StoreQuery(d->connection, "delete from SubObjects%1 where objectindex = ?", line)
                                 .bind(qint64(index))
                                 .exec();
    const bool removed = StoreQuery(d->connection, "delete from Objects%1 where objectindex = ?", line)
                             .bind(qint64(index))
                             .exec();
    d->dropObjectFromCaches(line, index);
    d->notify(indexChange(IndexRemoved, line, index));
    return subsRemoved && removed;
}

bool ObjectDataBase::renameIndex(quint8 line, quint16 index, const QString &name)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    const int id = addString(name);
    StoreQuery query(d->connection, "update Objects%1 set name = ? where objectindex = ?", line);
    return query.bind(qint64(id)).bind(qint64(index)).exec();
}

bool ObjectDataBase::copyIndex(quint8 fromLine, quint16 fromIndex, quint8 toLine, quint16 toIndex)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    if (fromLine == toLine && fromIndex == toIndex)
        return true;
    INDEX_DATA_T data;
    if (!getIndex(fromLine, fromIndex, data))
        return false;
    removeIndex(toLine, toIndex);
    if (!addIndex(toLine, toIndex, data))
        return false;
    cacheAllSubs(fromLine, fromIndex);
    cacheSubNames(fromLine, fromIndex);
    const bool success = d->copySubIndices(*this, fromLine, fromIndex, toLine, toIndex);
    clearSubCache();
    clearSubNameCache();
    return success;
}

bool ObjectDataBase::copyIndexFrom(ObjectDataBase &source, quint8 line, quint16 index, quint8 toLine,
                                   quint16 toIndex, bool withSubs)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    if (&source == this && line == toLine && index == toIndex)
        return true;
    INDEX_DATA_T data;
    if (!source.getIndex(line, index, data))
        return false;
    if (withSubs)
        removeIndex(toLine, toIndex);
    if (!addIndex(toLine, toIndex, data))
        return false;
    return !withSubs || d->copySubIndices(source, line, index, toLine, toIndex);
}

// Runs inside the caller's lease: the notifications follow together when the whole object stands.
bool ObjectDataBase::Private::copySubIndices(ObjectDataBase &source, quint8 line, quint16 index,
                                             quint8 toLine, quint16 toIndex)
{
    bool success = true;
    const QList<quint8> subIndices = source.getSubIndexList(line, index);
    for (const quint8 subindex : subIndices) {
        SUBINDEX_DATA_T sub;
        success = source.getSubIndex(line, index, subindex, sub)
            && q->addSubIndex(toLine, toIndex, subindex, sub) && success;
    }
    return success;
}

bool ObjectDataBase::copyToClipboard(quint8 line, quint16 index)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease || !indexExists(line, index))
        return false;
    if (nodeExists(ClipboardLine))
        removeLine(ClipboardLine);
    return addNode(ClipboardLine, NODE_DATA_T()) && copyIndex(line, index, ClipboardLine, ClipboardIndex);
}

bool ObjectDataBase::pasteFromClipboard(quint8 line, quint16 index)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease || !nodeExists(ClipboardLine) || !indexExists(ClipboardLine, ClipboardIndex))
        return false;
    return copyIndex(ClipboardLine, ClipboardIndex, line, index);
}

bool ObjectDataBase::peekClipboard(INDEX_DATA_T &data)
{
    return nodeExists(ClipboardLine) && getIndex(ClipboardLine, ClipboardIndex, data);
}
