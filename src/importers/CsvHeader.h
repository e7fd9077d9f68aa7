#pragma once

#include "importers/CsvLine.h"

#include <QString>
#include <QStringList>

#include <array>

/** The columns that a table of objects may have. */
enum class CsvColumn {
    Index,
    Sub,
    ObjectCode,
    DataType,
    EdsName,
    VarName,
    Access,
    Mapable,
    HasDefault,
    DefaultInEds,
    Value,
    Description,
    Size,
    Implementation,
    HasLimit,
    LowLimit,
    UpLimit,
    NvStorage,
    RefuseRead,
    RefuseWrite,
    Line,
    Count,
};

/** The header line of a table: which field of a row belongs to which column. */
class CsvHeader
{
public:
    CsvHeader() = default;
    /** Names in any order and case; an unknown one is skipped, the first of two equal ones counts. */
    explicit CsvHeader(const QString &line);

    /** The fields of another line of the table, split as the header line is. */
    CsvLine::Fields split(const QString &line) const { return CsvLine::split(line, m_separator, m_quoting); }
    QChar separator() const { return m_separator; }
    /** Number of fields of the header line. */
    qsizetype width() const { return m_width; }
    bool has(CsvColumn column) const { return m_positions[std::size_t(column)] >= 0; }
    /** The text of a row in a column: the column's default where the table does not have it, empty behind the
     * end of a short row. */
    QString text(const QStringList &row, CsvColumn column) const;

private:
    std::array<qsizetype, std::size_t(CsvColumn::Count)> m_positions = absentColumns();
    QChar m_separator = u',';
    CsvLine::Quoting m_quoting = CsvLine::Quoting::WhereNeeded;
    qsizetype m_width = 0;
    bool m_hasBlanks = false; ///< typed with a blank behind every separator

    static constexpr std::array<qsizetype, std::size_t(CsvColumn::Count)> absentColumns()
    {
        std::array<qsizetype, std::size_t(CsvColumn::Count)> positions{};
        positions.fill(-1);
        return positions;
    }
};
