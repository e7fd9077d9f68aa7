#pragma once

#include "store/Schema.h"

#include <QList>
#include <QStringList>

#include <array>

/** The kinds of records that a comparison of two projects looks into. */
enum class DiffLevel { Object, SubIndex, Pgn, Spn, CanId, DataElement };

inline constexpr std::array diffLevels{DiffLevel::Object, DiffLevel::SubIndex, DiffLevel::Pgn,
                                       DiffLevel::Spn,    DiffLevel::CanId,    DiffLevel::DataElement};

/** Which fields make a difference: all of DiffFields::titles() but those taken out here. */
class DiffSelection
{
public:
    /** The number of a field is its place in DiffFields::titles(). */
    bool counts(DiffLevel level, qsizetype field) const { return (ignored(level) >> field & 1U) == 0; }
    void setCounting(DiffLevel level, qsizetype field, bool counting);

    bool operator==(const DiffSelection &) const = default;

private:
    quint32 ignored(DiffLevel level) const { return m_ignored.at(size_t(level)); }

    std::array<quint32, diffLevels.size()> m_ignored{}; ///< one bit per field
};

/**
 * The fields of the records, each named once: what counts as a difference, what the detail table shows of
 * it and in which words. A column of a table that has no title here is internal: it is shown on demand
 * under its own name and never counts.
 */
namespace DiffFields {

/** Titles of the fields that may count, in the order of the detail table. */
QStringList titles(DiffLevel level);

/**
 * All fields but the program's own marks of sub-indices, which never go into the text form of a project:
 * after a save as text they would differ for good.
 */
DiffSelection fieldsOfTextForm();

/** True when a field that counts has other values. */
template <typename Row>
bool differ(const Row &current, const Row &other, const DiffSelection &selection);

/** One row of a detail table. */
struct Detail
{
    QString title;
    QString current;
    QString other;
    bool differs = false; ///< never where a side is missing

    bool operator==(const Detail &) const = default;
};

/** The fields of both sides; a missing side (nullptr) has empty texts. */
template <typename Row>
QList<Detail> details(const Row *current, const Row *other, bool withInternal);

} // namespace DiffFields
