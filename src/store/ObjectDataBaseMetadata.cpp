// Metadata blobs of objects and sub-indices.

#include "store/ObjectDataBasePrivate.h"

#include <QDataStream>
#include <QIODevice>

namespace {

// The version that files carry; a later one would write other bytes.
constexpr int streamVersion = 17;
constexpr qsizetype emptyBlobSize = sizeof(quint32);

} // namespace

QByteArray Metadata::toBlob(const MetadataMap &metadata)
{
    QByteArray blob;
    QDataStream stream(&blob, QIODevice::WriteOnly);
    stream.setVersion(streamVersion);
    stream << quint32(metadata.size());
    for (auto entry = metadata.cbegin(); entry != metadata.cend(); ++entry)
        stream << entry.key() << entry.value();
    return blob;
}

MetadataMap Metadata::fromBlob(const QByteArray &blob)
{
    MetadataMap metadata;
    if (blob.size() <= emptyBlobSize)
        return metadata;
    QDataStream stream(blob);
    stream.setVersion(streamVersion);
    quint32 count = 0;
    stream >> count;
    QString key;
    QString value;
    for (quint32 entry = 0; entry < count; ++entry) {
        stream >> key >> value;
        if (stream.status() != QDataStream::Ok)
            break;
        metadata.insert(key, value);
    }
    return metadata;
}

MetadataMap ObjectDataBase::getObjectMetadata(quint8 line, quint16 index)
{
    StoreQuery query(d->connection, "select metadata from Objects%1 where objectindex = ?", line);
    query.bind(qint64(index));
    return query.next() ? Metadata::fromBlob(query.blob(0)) : MetadataMap();
}

bool ObjectDataBase::setObjectMetadata(quint8 line, quint16 index, const MetadataMap &metadata)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    StoreQuery query(d->connection, "update Objects%1 SET metadata = ? where objectindex = ?", line);
    return query.bind(Metadata::toBlob(metadata)).bind(qint64(index)).exec();
}

QMap<ObjectDataBase::SubAddress, MetadataMap> ObjectDataBase::getAllSubMetadata(quint8 line)
{
    QMap<SubAddress, MetadataMap> all;
    StoreQuery query(d->connection,
                     "select objectindex, subindex, metadata from SubObjects%1 where metadata IS NOT NULL "
                     "order by objectindex, subindex",
                     line);
    while (query.next()) {
        const MetadataMap metadata = Metadata::fromBlob(query.blob(2));
        if (!metadata.isEmpty())
            all.insert({quint16(query.number(0)), quint8(query.number(1))}, metadata);
    }
    return all;
}

bool ObjectDataBase::setSubMetadata(quint8 line, quint16 index, quint8 subindex, const MetadataMap &metadata)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    d->dropSubFromCaches(line, index, subindex);
    StoreQuery query(d->connection,
                     "update SubObjects%1 SET metadata = ? where objectindex = ? and subindex = ?", line);
    return query.bind(Metadata::toBlob(metadata)).bind(qint64(index)).bind(qint64(subindex)).exec();
}
