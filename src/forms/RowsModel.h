#pragma once

#include "check/ProjectLocation.h"

#include <QAbstractTableModel>
#include <QStringList>

/**
 * Read-only rows of texts, each about one place of the project.
 *
 * A page reads its rows from the store and hands them over; views are told of the rows that differ and no
 * more, so that selection and scroll position outlive a re-read.
 */
class RowsModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    struct Column
    {
        QString title;
        QString sample; ///< a text as wide as most of the column; empty for the one that takes the rest
        Qt::Alignment alignment = Qt::AlignLeft;
    };

    struct Row
    {
        QStringList cells; ///< one per column; missing ones are empty
        ProjectLocation place;
        QString toolTip;
        bool isHeading = false; ///< the title of the rows below it

        bool operator==(const Row &) const = default;
    };

    explicit RowsModel(QList<Column> columns, QObject *parent = nullptr);

    void setRows(QList<Row> rows);
    const QList<Row> &rows() const { return m_rows; }
    const QList<Column> &columns() const { return m_columns; }
    /** Row of a place, -1 for none. */
    int rowOf(const ProjectLocation &place) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    void replaceRows(qsizetype first, qsizetype count, const QList<Row> &rows);
    void updateRows(qsizetype first, QList<Row> rows);

    QList<Column> m_columns;
    QList<Row> m_rows;
};
