// Search by, and writing of, one named column.

#include "store/ObjectDataBasePrivate.h"

#include <QDebug>
#include <QVariant>

namespace {

/** Line number of a table name such as "Objects3"; -1 when the name is none of that kind. */
int lineOfTable(const QString &table, QLatin1StringView kind)
{
    if (!table.startsWith(kind))
        return -1;
    bool isNumber = false;
    const int line = QStringView(table).mid(kind.size()).toInt(&isNumber);
    return isNumber && line >= 0 && line <= 0xFF ? line : -1;
}

MetadataMap toMetadata(const QVariant &value)
{
    if (value.canConvert<MetadataMap>() && value.metaType() == QMetaType::fromType<MetadataMap>())
        return value.value<MetadataMap>();
    if (value.metaType() == QMetaType::fromType<QByteArray>())
        return Metadata::fromBlob(value.toByteArray());
    MetadataMap metadata;
    const QVariantMap entries = value.toMap();
    for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry)
        metadata.insert(entry.key(), entry.value().toString());
    return metadata;
}

/** Binds a value that SQL would have unquoted: a number in decimal or, behind "0x", in hexadecimal. */
void bindUnquoted(StoreQuery &query, const QString &value)
{
    const QString trimmed = value.trimmed();
    const int base = trimmed.startsWith(QStringLiteral("0x"), Qt::CaseInsensitive) ? 16 : 10;
    bool isNumber = false;
    const qlonglong number = trimmed.toLongLong(&isNumber, base);
    if (isNumber)
        query.bind(number);
    else
        query.bind(value);
}

/** The text that a column takes; SQLite turns it into a number where the column holds numbers. */
QString columnText(const QVariant &value)
{
    if (value.metaType() == QMetaType::fromType<bool>())
        return QString::number(int(value.toBool()));
    return value.toString();
}

} // namespace

QList<quint16> ObjectDataBase::findIndices(quint8 line, const QString &column, const QString &value)
{
    QList<quint16> indices;
    const auto *known = Schema::findColumn<INDEX_DATA_T>(column);
    if (!known)
        return indices;
    StoreQuery query(d->connection, Schema::columnSql(*known).find.constData(), line);
    bindUnquoted(query, value);
    while (query.next())
        indices.append(quint16(query.number(0)));
    return indices;
}

QList<ObjectDataBase::SubAddress> ObjectDataBase::findSubIndices(quint8 line, const QString &column,
                                                                 const QString &value, bool quoted)
{
    QList<SubAddress> found;
    const auto *known = Schema::findColumn<SUBINDEX_DATA_T>(column);
    if (!known)
        return found;
    StoreQuery query(d->connection, Schema::columnSql(*known).find.constData(), line);
    if (quoted)
        query.bind(value);
    else
        bindUnquoted(query, value);
    while (query.next())
        found.append({quint16(query.number(0)), quint8(query.number(1))});
    return found;
}

QList<ObjectDataBase::SubAddress> ObjectDataBase::getMappableSubs(quint8 line, quint8 excludedValue)
{
    QList<SubAddress> found;
    StoreQuery query(d->connection,
                     "select objectindex,subindex from SubObjects%1 where pdomapping != ? "
                     "order by objectindex, subindex",
                     line);
    query.bind(qint64(excludedValue));
    while (query.next())
        found.append({quint16(query.number(0)), quint8(query.number(1))});
    return found;
}

// Only names and descriptions come as texts of the pool; other columns take what they are given, so the
// object's class and a sub-index's denotation come as ids.
template <typename Row>
bool ObjectDataBase::Private::writeColumn(int line, const Schema::Column<Row> &column, const QVariant &value,
                                          std::initializer_list<qint64> identity)
{
    const QByteArrayView name(column.name);
    const bool isPoolText =
        column.storage == Schema::Storage::Pool && (name == "name" || name == "description");
    const int id = isPoolText ? q->addString(value.toString()) : 0;
    if (id < 0)
        return false;
    StoreQuery query(connection, Schema::columnSql(column).write.constData(), line);
    if (isPoolText)
        query.bind(qint64(id));
    else if (column.storage == Schema::Storage::Metadata)
        query.bind(Metadata::toBlob(toMetadata(value)));
    else
        query.bind(columnText(value));
    for (const qint64 key : identity)
        query.bind(key);
    return query.exec();
}

template bool ObjectDataBase::Private::writeColumn(int, const Schema::Column<Schema::NodeData> &,
                                                   const QVariant &, std::initializer_list<qint64>);

void ObjectDataBase::setObjectIndexSqlValue(const QString &table, quint16 index, const QString &column,
                                            const QVariant &value)
{
    const int line = lineOfTable(table, QLatin1StringView("Objects"));
    const auto *known = Schema::findColumn<INDEX_DATA_T>(column);
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease || !value.isValid() || line < 0 || !known)
        return;
    bool success = true;
    if (!indexExists(quint8(line), index)) {
        success = StoreQuery(d->connection, "insert into Objects%1 values(?,0,0,0,0,0,0,0,0)", line)
                      .bind(qint64(index))
                      .exec();
    }
    success = d->writeColumn<INDEX_DATA_T>(line, *known, value, {index}) && success;
    if (!success)
        qDebug() << Q_FUNC_INFO << "error" << table << index << column;
}

void ObjectDataBase::setSubindexSqlValue(const QString &table, quint16 index, quint8 subindex,
                                         const QString &column, const QVariant &value)
{
    const int line = lineOfTable(table, QLatin1StringView("SubObjects"));
    const auto *known = Schema::findColumn<SUBINDEX_DATA_T>(column);
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease || !value.isValid() || line < 0 || !known)
        return;
    bool success = true;
    if (!subIndexExists(quint8(line), index, subindex)) {
        success =
            StoreQuery(
                d->connection,
                "insert into SubObjects%1 (objectindex,subindex,name,datatype,accesstype,pdomapping,size,"
                "implementation,description,category,denotation) values(?,?,0,0,'',0,0,0,0,0,0)",
                line)
                .bind(qint64(index))
                .bind(qint64(subindex))
                .exec();
    }
    success = d->writeColumn<SUBINDEX_DATA_T>(line, *known, value, {index, subindex}) && success;
    d->dropSubFromCaches(quint8(line), index, subindex);
    if (!success)
        qDebug() << Q_FUNC_INFO << "error" << table << index << subindex << column;
}
