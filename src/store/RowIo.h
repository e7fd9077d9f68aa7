#pragma once

#include "store/ObjectDataBasePrivate.h"
#include "store/RowFields.h"

#include <algorithm>
#include <type_traits>

/** Binding and reading of whole rows by their column descriptions. */
namespace RowIo {

/** The last text read from a column: neighbouring rows mostly repeat it, and then share one QString. */
struct TextMemo
{
    QByteArray utf8;
    QString text;

    const QString &read(QByteArrayView bytes)
    {
        if (bytes != QByteArrayView(utf8)) {
            utf8.resize(bytes.size());
            std::copy(bytes.begin(), bytes.end(), utf8.begin());
            text = textFromUtf8(bytes);
        }
        return text;
    }
};

template <typename Row>
void bindField(StoreQuery &query, const Schema::Column<Row> &column, const Row &row)
{
    std::visit(
        [&](auto member) {
            if constexpr (std::is_same_v<decltype(member), std::monostate>) {
                query.bindNull();
            } else if constexpr (std::is_same_v<decltype(member), MetadataMap Row::*>) {
                const MetadataMap &metadata = row.*member;
                if (!metadata.isEmpty())
                    query.bind(Metadata::toBlob(metadata));
                else if (Schema::emptyMetadataIsZero<Row>)
                    query.bind(qint64(0));
                else
                    query.bindNull();
            } else if constexpr (std::is_same_v<decltype(member), PDOMapping Row::*>) {
                query.bind(qint64((row.*member).toUInt()));
            } else if constexpr (std::is_same_v<decltype(member), QString Row::*>) {
                query.bind(row.*member);
            } else {
                query.bind(qint64(row.*member));
            }
        },
        column.member);
}

/** Reads the record's fields from the columns that start at `position`. */
template <typename Row>
class Reader
{
public:
    explicit Reader(const PooledTexts &texts) : m_texts(texts) { }

    void read(const StoreQuery &query, int position, Row &row)
    {
        RowFields::forEach<Row>(
            [&](auto field) { row.*field.member = value<decltype(field)>(query, position + field.number); });
    }

private:
    template <typename Field>
    typename Field::Type value(const StoreQuery &query, int column)
    {
        using Type = typename Field::Type;
        if constexpr (Field::storage == Schema::Storage::Pool) {
            return m_texts.text(int(query.number(column)));
        } else if constexpr (std::is_same_v<Type, QString>) {
            return m_memos[Field::number].read(query.utf8(column));
        } else if constexpr (std::is_same_v<Type, MetadataMap>) {
            const QByteArray blob = query.blob(column);
            return blob.isEmpty() ? MetadataMap() : Metadata::fromBlob(blob);
        } else {
            return RowFields::fromNumber<Type>(query.number(column));
        }
    }

    PooledTexts m_texts;
    std::array<TextMemo, RowFields::count<Row>> m_memos;
};

} // namespace RowIo

// The ids of a record's pool texts in column order; false when one could not be entered.
template <typename Row>
bool ObjectDataBase::Private::internTexts(const Row &row, QVarLengthArray<int, 4> &ids)
{
    for (const Schema::Column<Row> &column : Schema::Table<Row>::columns) {
        if (column.storage != Schema::Storage::Pool)
            continue;
        ids.append(q->addString(row.*std::get<QString Row::*>(column.member)));
        if (ids.last() < 0)
            return false;
    }
    return true;
}

template <typename Row>
bool ObjectDataBase::Private::writeRow(const QByteArray &sql, quint8 line, std::initializer_list<qint64> keys,
                                       const Row &row, const char *operation)
{
    QVarLengthArray<int, 4> ids;
    if (!internTexts(row, ids))
        return false;
    StoreQuery query(connection, sql.constData(), line, operation);
    const qint64 *key = keys.begin();
    const int *id = ids.begin();
    for (const Schema::Column<Row> &column : Schema::Table<Row>::columns) {
        if (column.storage == Schema::Storage::Key)
            query.bind(*key++);
        else if (column.storage == Schema::Storage::Pool)
            query.bind(qint64(*id++));
        else
            RowIo::bindField(query, column, row);
    }
    return query.exec();
}

template <typename Row>
bool ObjectDataBase::Private::updateRow(quint8 line, std::initializer_list<qint64> identity, const Row &row,
                                        const char *operation)
{
    QVarLengthArray<int, 4> ids;
    if (!internTexts(row, ids))
        return false;
    StoreQuery query(connection, Schema::sql<Row>().update.constData(), line, operation);
    const int *id = ids.begin();
    for (const Schema::Column<Row> &column : Schema::Table<Row>::columns) {
        if (column.storage == Schema::Storage::Key || !Schema::Table<Row>::updates(column))
            continue;
        if (column.storage == Schema::Storage::Pool)
            query.bind(qint64(*id++));
        else
            RowIo::bindField(query, column, row);
    }
    for (const qint64 value : identity)
        query.bind(value);
    return query.exec();
}

template <typename Row>
bool ObjectDataBase::Private::insertOrUpdateRow(quint8 line, std::initializer_list<qint64> allKeys,
                                                std::initializer_list<qint64> identity, const Row &row,
                                                const char *operation)
{
    if (rowExists<Row>(line, identity, operation))
        return updateRow(line, identity, row, operation);
    return writeRow(Schema::sql<Row>().insert, line, allKeys, row, operation);
}

template <typename Row>
bool ObjectDataBase::Private::readRow(quint8 line, std::initializer_list<qint64> identity, Row &row,
                                      const char *operation)
{
    StoreQuery query(connection, Schema::sql<Row>().select.constData(), line, operation);
    for (const qint64 value : identity)
        query.bind(value);
    if (!query.next())
        return false;
    RowIo::Reader<Row>(texts()).read(query, 0, row);
    return true;
}

template <typename Row>
bool ObjectDataBase::Private::rowExists(quint8 line, std::initializer_list<qint64> identity,
                                        const char *operation)
{
    StoreQuery query(connection, Schema::sql<Row>().exists.constData(), line, operation);
    for (const qint64 value : identity)
        query.bind(value);
    return query.next();
}
