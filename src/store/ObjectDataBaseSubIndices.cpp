// Sub-indices: reading, writing and their caches.

#include "store/ObjectDataBasePrivate.h"
#include "store/RowIo.h"

#include <QDebug>

bool ObjectDataBase::addSubIndex(quint8 line, quint16 index, quint8 subindex, const SUBINDEX_DATA_T &data)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    if (index == 0x1000 && subindex == 1)
        qDebug() << "ODB:aSI 0x1000:1 = " << data.defaultvalue;
    const bool success = d->writeRow(Schema::sql<SUBINDEX_DATA_T>().replace, line, {index, subindex}, data);
    if (success)
        d->updateSubCaches(line, index, subindex, data);
    d->notify({.type = SubIndexChanged, .index = index, .subindex = subindex, .line = line});
    return success;
}

bool ObjectDataBase::addSubIndices(const QList<SubEntry> &entries)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    d->db.transaction();
    for (const SubEntry &entry : entries) {
        if (d->writeRow(Schema::sql<SUBINDEX_DATA_T>().replace, entry.line, {entry.index, entry.subindex},
                        entry.data))
            d->updateSubCaches(entry.line, entry.index, entry.subindex, entry.data);
    }
    return d->db.commit();
}

void ObjectDataBase::Private::updateSubCaches(quint8 line, quint16 index, quint8 subindex,
                                              const SUBINDEX_DATA_T &data)
{
    const ConnectionGate::Lease lease(connection.gate);
    if (const auto cached = subCache.find(line); cached != subCache.end())
        cached->write(index, subindex, data);
    if (const auto cached = subNameCache.find(line); cached != subNameCache.end())
        cached->remove(SubIndexCache::key(index, subindex));
}

void ObjectDataBase::Private::dropSubFromCaches(quint8 line, quint16 index, quint8 subindex)
{
    const ConnectionGate::Lease lease(connection.gate);
    if (const auto cached = subCache.find(line); cached != subCache.end())
        cached->remove(index, subindex);
    if (const auto cached = subNameCache.find(line); cached != subNameCache.end())
        cached->remove(SubIndexCache::key(index, subindex));
}

void ObjectDataBase::Private::dropObjectFromCaches(quint8 line, quint16 index)
{
    const ConnectionGate::Lease lease(connection.gate);
    for (int subindex = 0; subindex <= 0xFF; ++subindex)
        dropSubFromCaches(line, index, quint8(subindex));
}

void ObjectDataBase::Private::dropLineCaches(quint8 line)
{
    const ConnectionGate::Lease lease(connection.gate);
    subCache.remove(line);
    subNameCache.remove(line);
    spnCache.remove(line);
    elementCache.remove(line);
}

bool ObjectDataBase::getSubIndex(quint8 line, quint16 index, quint8 subindex, SUBINDEX_DATA_T &data)
{
    {
        const ConnectionGate::Lease lease(d->connection.gate);
        const auto cached = d->subCache.constFind(line);
        if (cached != d->subCache.constEnd() && cached->read(index, subindex, data, d->texts()))
            return true;
    }
    return d->readRow(line, {index, subindex}, data);
}

QList<quint8> ObjectDataBase::getSubIndexList(quint8 line, quint16 index)
{
    QList<quint8> subIndices;
    StoreQuery query(d->connection,
                     "select subindex from SubObjects%1 where objectindex = ? order by subindex asc", line);
    query.bind(qint64(index));
    while (query.next())
        subIndices.append(quint8(query.number(0)));
    return subIndices;
}

int ObjectDataBase::getSubIndexDatatype(quint8 line, quint16 index, quint8 subindex)
{
    StoreQuery query(d->connection,
                     "select datatype from SubObjects%1 where objectindex = ? and subindex = ?", line);
    return int(query.bind(qint64(index)).bind(qint64(subindex)).firstNumber());
}

QString ObjectDataBase::getSubIndexDefault(quint8 line, quint16 index, quint8 subindex)
{
    StoreQuery query(d->connection,
                     "select defaultvalue from SubObjects%1 where objectindex = ? and subindex = ?", line);
    return query.bind(qint64(index)).bind(qint64(subindex)).firstText();
}

QString ObjectDataBase::getSubIndexName(quint8 line, quint16 index, quint8 subindex, bool preferDenotation)
{
    const ConnectionGate::Lease lease(d->connection.gate);
    const auto choose = [preferDenotation](const QString &name, const QString &denotation) {
        return preferDenotation && !denotation.isEmpty() ? denotation : name;
    };
    if (const auto cached = d->subNameCache.constFind(line); cached != d->subNameCache.constEnd()) {
        if (const auto entry = cached->constFind(SubIndexCache::key(index, subindex));
            entry != cached->constEnd())
            return choose(entry->name, entry->denotation);
    }
    StoreQuery query(d->connection,
                     "select denotation, name from SubObjects%1 where objectindex = ? and subindex = ?",
                     line);
    query.bind(qint64(index)).bind(qint64(subindex));
    if (!query.next())
        return {};
    return choose(getString(int(query.number(1))), getString(int(query.number(0))));
}

bool ObjectDataBase::subIndexExists(quint8 line, quint16 index, quint8 subindex)
{
    return d->rowExists<SUBINDEX_DATA_T>(line, {index, subindex});
}

bool ObjectDataBase::removeSubIndex(quint8 line, quint16 index, quint8 subindex)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    bool success =
        StoreQuery(d->connection, "delete from SubObjects%1 where objectindex = ? and subindex = ?", line)
            .bind(qint64(index))
            .bind(qint64(subindex))
            .exec();
    success = StoreQuery(d->connection,
                         "delete from Connections where prodnode = ? AND prodindex = ? AND prodsub = ?")
                  .bind(qint64(line))
                  .bind(qint64(index))
                  .bind(qint64(subindex))
                  .exec()
        && success;
    d->dropSubFromCaches(line, index, subindex);
    d->notify({.type = SubIndexRemoved, .index = index, .subindex = subindex, .line = line});
    return success;
}

bool ObjectDataBase::renameSubIndex(quint8 line, quint16 index, quint8 subindex, const QString &name)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    const int id = addString(name);
    d->dropSubFromCaches(line, index, subindex);
    StoreQuery query(d->connection, "update SubObjects%1 set name = ? where objectindex = ? and subindex = ?",
                     line);
    return query.bind(qint64(id)).bind(qint64(index)).bind(qint64(subindex)).exec();
}

bool ObjectDataBase::setSubIndexDefault(quint8 line, quint16 index, quint8 subindex, const QString &value)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    d->dropSubFromCaches(line, index, subindex);
    StoreQuery query(d->connection,
                     "update SubObjects%1 set defaultvalue = ? where objectindex = ? and subindex = ?", line);
    return query.bind(value).bind(qint64(index)).bind(qint64(subindex)).exec();
}

qsizetype ObjectDataBase::Private::rowCount(quint8 line)
{
    return StoreQuery(connection, "select count(*) from SubObjects%1", line).firstNumber();
}

// Index 0 means all objects. What no address can name is left out, as no read of the table finds it either.
void ObjectDataBase::Private::fillSubCache(quint8 line, quint16 index, const SubVisitor &visit)
{
    static const QByteArray all = Schema::sql<SUBINDEX_DATA_T>().selectAll;
    static const QByteArray ofObject =
        QByteArray(all).replace(" order by", " where objectindex = ? order by");
    const ConnectionGate::Lease lease(connection.gate);
    subCache.remove(line);
    SubIndexCache cache;
    if (index == 0)
        cache.reserve(rowCount(line));
    StoreQuery query(connection, (index == 0 ? all : ofObject).constData(), line, "cacheAllSubs");
    if (index != 0)
        query.bind(qint64(index));
    SUBINDEX_DATA_T data;
    while (query.next()) {
        if (!query.holds<quint16>(0) || !query.holds<quint8>(1))
            continue;
        const SubAddress address(quint16(query.number(0)), quint8(query.number(1)));
        if (!cache.append(address.first, address.second, query) || !visit)
            continue;
        cache.readLast(data, texts());
        visit(address.first, address.second, data);
    }
    subCache[line] = std::move(cache);
}

void ObjectDataBase::cacheAllSubs(quint8 line, quint16 index)
{
    d->fillSubCache(line, index, {});
}

void ObjectDataBase::cacheAllSubs(quint8 line, const SubVisitor &visit)
{
    d->fillSubCache(line, 0, visit);
}

void ObjectDataBase::cacheSubNames(quint8 line, quint16 index)
{
    const ConnectionGate::Lease lease(d->connection.gate);
    d->subNameCache.remove(line);
    auto &names = d->subNameCache[line];
    StoreQuery query(d->connection,
                     index == 0 ? "select denotation, name, objectindex, subindex from SubObjects%1 "
                                  "order by objectindex, subindex"
                                : "select denotation, name, objectindex, subindex from SubObjects%1 "
                                  "where objectindex = ? order by subindex",
                     line);
    if (index != 0)
        query.bind(qint64(index));
    while (query.next()) {
        names.insert(SubIndexCache::key(quint16(query.number(2)), quint8(query.number(3))),
                     {getString(int(query.number(1))), getString(int(query.number(0)))});
    }
}

void ObjectDataBase::clearSubCache()
{
    const ConnectionGate::Lease lease(d->connection.gate);
    d->subCache.clear();
}

void ObjectDataBase::clearSubNameCache()
{
    const ConnectionGate::Lease lease(d->connection.gate);
    d->subNameCache.clear();
}
