#include "store/SubIndexCache.h"

#include "store/Metadata.h"
#include "store/PooledTexts.h"
#include "store/StoreQuery.h"

#include <algorithm>

using Schema::Storage;

namespace {

// A record that is read into again and again mostly has the text already, and its counter is far away.
void assign(QString &value, const QString &text)
{
    if (!value.isSharedWith(text))
        value = text;
}

} // namespace

void SubIndexCache::reserve(qsizetype count)
{
    m_subIndices.reserve(size_t(count));
    m_rows.reserve(size_t(count));
}

// Files of before the table had a key may hold several rows of one sub-index, of which the table gives the
// first; the index of a damaged file may give them in any order.
bool SubIndexCache::append(quint16 index, quint8 subindex, const StoreQuery &query)
{
    if (m_rows.empty())
        m_firstIndex = index;
    else if (key(index, subindex) <= m_lastKey)
        return false;
    m_lastKey = key(index, subindex);
    while (m_firstRows.size() <= size_t(index - m_firstIndex))
        m_firstRows.push_back(quint32(m_rows.size()));
    m_subIndices.push_back(subindex);
    Row &row = m_rows.emplace_back();
    RowFields::forEach<Record>([&](auto field) { row[field.number] = word<decltype(field)>(query); });
    return true;
}

template <typename Field>
quint32 SubIndexCache::word(const StoreQuery &query)
{
    constexpr int keys = int(Schema::subObjectColumns.size() - RowFields::count<Record>);
    constexpr int column = keys + Field::number;
    if constexpr (Field::storage == Storage::Text) {
        return textPlace(query.utf8(column), m_memos[Field::number]);
    } else if constexpr (Field::storage == Storage::Metadata) {
        const QByteArray blob = query.blob(column);
        if (blob.isEmpty())
            return 0;
        m_metadata.push_back(Metadata::fromBlob(blob));
        return quint32(m_metadata.size() - 1);
    } else if constexpr (std::is_same_v<typename Field::Type, bool>) {
        return query.number(column) != 0;
    } else {
        return quint32(query.number(column));
    }
}

quint32 SubIndexCache::textPlace(QByteArrayView utf8, Memo &memo)
{
    if (utf8.isEmpty())
        return 0;
    if (utf8 != QByteArrayView(memo.utf8)) {
        memo.utf8.resize(utf8.size());
        std::copy(utf8.begin(), utf8.end(), memo.utf8.begin());
        memo.place = quint32(m_texts.size());
        m_texts.push_back(textFromUtf8(utf8));
    }
    return memo.place;
}

bool SubIndexCache::read(quint16 index, quint8 subindex, Record &data, const PooledTexts &texts) const
{
    if (!m_written.isEmpty()) {
        if (const auto written = m_written.constFind(key(index, subindex)); written != m_written.constEnd()) {
            data = *written;
            return true;
        }
    }
    const size_t place = find(index, subindex);
    if (place == nowhere || m_removed.contains(key(index, subindex)))
        return false;
    unpack(m_rows[place], data, texts);
    return true;
}

// Mostly the sub-indices of an object have no gaps.
size_t SubIndexCache::find(quint16 index, quint8 subindex) const
{
    const size_t object = size_t(index) - m_firstIndex;
    if (object >= m_firstRows.size())
        return nowhere;
    const auto begin = m_subIndices.begin() + m_firstRows[object];
    const auto end =
        object + 1 < m_firstRows.size() ? m_subIndices.begin() + m_firstRows[object + 1] : m_subIndices.end();
    if (begin == end || subindex < *begin)
        return nowhere;
    auto row = end - begin > subindex - *begin ? begin + (subindex - *begin) : begin;
    if (*row != subindex)
        row = std::lower_bound(begin, end, subindex);
    return row == end || *row != subindex ? nowhere : size_t(row - m_subIndices.begin());
}

void SubIndexCache::readLast(Record &data, const PooledTexts &texts) const
{
    unpack(m_rows.back(), data, texts);
}

void SubIndexCache::unpack(const Row &row, Record &data, const PooledTexts &texts) const
{
    RowFields::forEach<Record>([&](auto field) {
        const quint32 word = row[field.number];
        auto &value = data.*field.member;
        if constexpr (field.storage == Storage::Text)
            assign(value, m_texts[word]);
        else if constexpr (field.storage == Storage::Pool)
            assign(value, texts.text(int(word)));
        else if constexpr (field.storage == Storage::Metadata)
            value = m_metadata[word];
        else
            value = RowFields::fromNumber<typename decltype(field)::Type>(word);
    });
}

void SubIndexCache::write(quint16 index, quint8 subindex, const Record &data)
{
    m_written.insert(key(index, subindex), data);
}

void SubIndexCache::remove(quint16 index, quint8 subindex)
{
    m_written.remove(key(index, subindex));
    if (find(index, subindex) != nowhere)
        m_removed.insert(key(index, subindex));
}
