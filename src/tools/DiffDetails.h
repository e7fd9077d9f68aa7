#pragma once

#include "tools/DiffFields.h"
#include "tools/DiffRecords.h"
#include "tools/ProjectDiff.h"

/** The values that the detail table shows of one item. */
namespace DiffDetails {

/** The record that `read` finds in a store; nothing where the store lacks the line or the record. */
template <typename Row, class Read>
std::optional<Row> record(ObjectDataBase &store, quint8 line, const Read &read)
{
    Row row;
    return store.nodeExists(line) && read(store, row) ? std::optional(row) : std::nullopt;
}

template <typename Row, class Read>
QList<DiffFields::Detail> ofRow(ObjectDataBase &current, ObjectDataBase &other, quint8 line,
                                bool withInternal, const Read &read)
{
    const std::optional<Row> first = record<Row>(current, line, read);
    const std::optional<Row> second = record<Row>(other, line, read);
    return DiffFields::details(first ? &*first : nullptr, second ? &*second : nullptr, withInternal);
}

/** The fields of the item at the address in both projects; the texts of a missing one are empty. */
template <class Records>
QList<DiffFields::Detail> read(ObjectDataBase &current, ObjectDataBase &other, quint8 line,
                               const ProjectDiff::Address &address, bool withInternal)
{
    if (!address.child)
        return ofRow<typename Records::Parent>(
            current, other, line, withInternal, [&](ObjectDataBase &store, auto &row) {
                return Records::read(store, line, address.number, address.direction, row);
            });
    return ofRow<typename Records::Child>(
        current, other, line, withInternal, [&](ObjectDataBase &store, auto &row) {
            return Records::readChild(store, line, address.number, address.direction, *address.child, row);
        });
}

} // namespace DiffDetails
