#pragma once

#include "canopen/CANTypes.h"
#include "templates/TemplateCells.h"

#include <functional>
#include <span>

/** A word of a template source and the number that the project stores for it. */
struct TemplateWord
{
    const char *word;
    int value;
};

/**
 * Typed access to the cells of one table row. Each accessor reports a cell that it cannot read and then
 * gives the type's zero value; ok() tells whether all cells were good.
 */
class TemplateColumns
{
public:
    using Report = std::function<void(int column, const QString &text)>;

    TemplateColumns(QList<TemplateCell> cells, Report report);

    bool ok() const { return m_ok; }
    /** Checks the number of cells against the heading; a wrong one makes the row unreadable. */
    bool hasColumns(qsizetype needed, qsizetype possible, const QString &heading);
    int column(qsizetype cell) const { return m_cells.at(cell).column; }
    /** Reports against a cell what its reader found out by itself. */
    void fail(qsizetype cell, const QString &text);

    /** A cell that may not be empty. */
    QString text(qsizetype cell, const QString &what);
    /** A cell that may be empty or, at the end of the row, missing. */
    QString optionalText(qsizetype cell) const;
    /** True where nothing is written in the cell; quotes around nothing are something. */
    bool isBlank(qsizetype cell) const;
    /** A decimal number, or a hexadecimal one behind "0x". */
    quint32 number(qsizetype cell, const QString &what, quint32 low, quint32 high);
    int word(qsizetype cell, const QString &what, std::span<const TemplateWord> words);
    /** Any number of words with commas between them; their values ORed. */
    int words(qsizetype cell, const QString &what, std::span<const TemplateWord> words);
    /** A long type name such as UNSIGNED8. */
    CAN::CANopenDataType dataType(qsizetype cell);

private:
    const TemplateWord *find(qsizetype cell, const QString &text, const QString &what,
                             std::span<const TemplateWord> words);

    QList<TemplateCell> m_cells;
    Report m_report;
    bool m_ok = true;
};
