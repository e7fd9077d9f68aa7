// Update of an object from another store that keeps what the user wrote about it here.

#include "store/ObjectDataBasePrivate.h"

namespace {

template <typename Row>
void keepTexts(Row &row, const Row &existing)
{
    for (const Schema::Column<Row> &column : Schema::Table<Row>::columns) {
        if (column.storage != Schema::Storage::Pool)
            continue;
        const auto member = std::get<QString Row::*>(column.member);
        if (!(existing.*member).isEmpty())
            row.*member = existing.*member;
    }
}

} // namespace

bool ObjectDataBase::mergeIndexFrom(ObjectDataBase &source, quint8 line, quint16 index, quint8 toLine,
                                    quint16 toIndex)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    INDEX_DATA_T data;
    if (!source.getIndex(line, index, data))
        return false;
    if (INDEX_DATA_T existing; getIndex(toLine, toIndex, existing))
        keepTexts(data, existing);
    bool success = addIndex(toLine, toIndex, data);
    const QList<quint8> subIndices = source.getSubIndexList(line, index);
    for (const quint8 subindex : subIndices) {
        SUBINDEX_DATA_T sub;
        if (!source.getSubIndex(line, index, subindex, sub)) {
            success = false;
            continue;
        }
        if (SUBINDEX_DATA_T existing; getSubIndex(toLine, toIndex, subindex, existing)) {
            keepTexts(sub, existing);
            // The application's own variable must not fall back to a template's.
            if (!existing.varname.trimmed().isEmpty())
                sub.varname = existing.varname;
            if (sub.metadata.isEmpty())
                sub.metadata = existing.metadata;
        }
        success = addSubIndex(toLine, toIndex, subindex, sub) && success;
    }
    return success;
}
