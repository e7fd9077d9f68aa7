#pragma once

#include "store/ObjectDataBasePrivate.h"

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

template <typename Row>
void readField(const StoreQuery &query, int position, const Schema::Column<Row> &column, Row &row,
               TextMemo &memo)
{
    std::visit(
        [&](auto member) {
            if constexpr (std::is_same_v<decltype(member), std::monostate>) {
                return;
            } else if constexpr (std::is_same_v<decltype(member), MetadataMap Row::*>) {
                const QByteArray blob = query.blob(position);
                row.*member = blob.isEmpty() ? MetadataMap() : Metadata::fromBlob(blob);
            } else if constexpr (std::is_same_v<decltype(member), PDOMapping Row::*>) {
                row.*member = PDOMapping(quint8(query.number(position)));
            } else if constexpr (std::is_same_v<decltype(member), QString Row::*>) {
                row.*member = memo.read(query.utf8(position));
            } else {
                using Field = std::remove_reference_t<decltype(row.*member)>;
                if constexpr (std::is_same_v<Field, bool>)
                    row.*member = query.number(position) != 0;
                else
                    row.*member = static_cast<Field>(query.number(position));
            }
        },
        column.member);
}

/** Reads the record's fields from the columns that start at `position`. */
template <typename Row>
class Reader
{
public:
    explicit Reader(ObjectDataBase &store) : m_store(store) { }

    void read(const StoreQuery &query, int position, Row &row)
    {
        size_t memo = 0;
        for (const Schema::Column<Row> &column : Schema::Table<Row>::columns) {
            if (column.storage == Schema::Storage::Key)
                continue;
            if (column.storage == Schema::Storage::Pool)
                row.*std::get<QString Row::*>(column.member) = m_store.getString(int(query.number(position)));
            else
                readField(query, position, column, row, m_memos[memo]);
            ++memo;
            ++position;
        }
    }

private:
    ObjectDataBase &m_store;
    std::array<TextMemo, 32> m_memos;
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
    RowIo::Reader<Row>(*q).read(query, 0, row);
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
