#pragma once

#include "store/ProjectRecords.h"
#include "store/RowFields.h"
#include "store/StringPool.h"

#include <QHash>
#include <QSet>

#include <array>
#include <deque>
#include <vector>

class PooledTexts;
class StoreQuery;

/**
 * The cached sub-indices of one line.
 *
 * What is read from the table is kept as it lies there, a few bytes per field in ascending order, and made a
 * record when it is asked for: a line of many thousand rows is walked again and again, and whole records
 * would not fit into a processor's cache. What is written later stands apart as records.
 */
class SubIndexCache
{
public:
    using Record = ProjectRecords::SubIndexData;

    /** A sub-index within its line, in one number. */
    static quint32 key(quint16 index, quint8 subindex) { return (quint32(index) << 8) | subindex; }

    void reserve(qsizetype count);
    /** Takes the row on which a query over keys and fields stands; false for one that does not come behind
     * the row before, which is left to the table. */
    bool append(quint16 index, quint8 subindex, const StoreQuery &query);

    /** Reads a sub-index; one that is not cached gives false and leaves the record as it is. */
    bool read(quint16 index, quint8 subindex, Record &data, const PooledTexts &texts) const;
    /** Reads the row that was taken last. */
    void readLast(Record &data, const PooledTexts &texts) const;
    void write(quint16 index, quint8 subindex, const Record &data);
    void remove(quint16 index, quint8 subindex);

private:
    using Row = std::array<quint32, RowFields::count<Record>>;
    /** The last text of a column: neighbouring rows mostly repeat it. */
    struct Memo
    {
        QByteArray utf8;
        quint32 place = 0;
    };
    static constexpr size_t nowhere = size_t(-1);

    size_t find(quint16 index, quint8 subindex) const;
    void unpack(const Row &row, Record &data, const PooledTexts &texts) const;
    template <typename Field>
    quint32 word(const StoreQuery &query);
    quint32 textPlace(QByteArrayView utf8, Memo &memo);

    quint32 m_lastKey = 0; ///< of the last row
    quint16 m_firstIndex = 0;
    std::vector<quint32> m_firstRows; ///< of every index from m_firstIndex on
    std::vector<quint8> m_subIndices; ///< of the rows
    /** A word per field: a number, the id of a pool text, or a place in one of the lists below. */
    std::vector<Row> m_rows;
    std::deque<QString> m_texts{1}; ///< the empty one first
    std::deque<MetadataMap> m_metadata{1}; ///< likewise
    std::array<Memo, RowFields::count<Record>> m_memos;

    QHash<quint32, Record> m_written; ///< by index and sub-index; stands before the rows
    QSet<quint32> m_removed; ///< of the rows
};
