#include "forms/RowsModel.h"

#include <QFont>

#include <algorithm>

RowsModel::RowsModel(QList<Column> columns, QObject *parent)
    : QAbstractTableModel(parent), m_columns(std::move(columns))
{
}

// Most changes touch one row or insert a few: what lies before and behind the differing rows stays.
void RowsModel::setRows(QList<Row> rows)
{
    const auto [oldFirst, newFirst] = std::ranges::mismatch(m_rows, rows);
    const qsizetype first = std::distance(m_rows.cbegin(), QList<Row>::const_iterator(oldFirst));
    const qsizetype longest = qMin(m_rows.size(), rows.size()) - first;
    qsizetype tail = 0;
    while (tail < longest && m_rows.at(m_rows.size() - 1 - tail) == rows.at(rows.size() - 1 - tail))
        ++tail;
    const qsizetype oldCount = m_rows.size() - first - tail;
    QList<Row> differing = rows.mid(first, rows.size() - first - tail);
    if (oldCount == 0 && differing.isEmpty())
        return;
    if (oldCount == differing.size())
        updateRows(first, std::move(differing));
    else
        replaceRows(first, oldCount, differing);
}

void RowsModel::updateRows(qsizetype first, QList<Row> rows)
{
    const qsizetype last = first + rows.size() - 1;
    std::ranges::move(rows, m_rows.begin() + first);
    Q_EMIT dataChanged(index(int(first), 0), index(int(last), int(m_columns.size()) - 1));
}

void RowsModel::replaceRows(qsizetype first, qsizetype count, const QList<Row> &rows)
{
    if (count > 0) {
        beginRemoveRows({}, int(first), int(first + count - 1));
        m_rows.remove(first, count);
        endRemoveRows();
    }
    if (rows.isEmpty())
        return;
    beginInsertRows({}, int(first), int(first + rows.size() - 1));
    QList<Row> all;
    all.reserve(m_rows.size() + rows.size());
    all << m_rows.mid(0, first) << rows << m_rows.mid(first);
    m_rows = std::move(all);
    endInsertRows();
}

int RowsModel::rowOf(const ProjectLocation &place) const
{
    const auto row = std::ranges::find(m_rows, place, &Row::place);
    return row == m_rows.end() ? -1 : int(std::distance(m_rows.begin(), row));
}

int RowsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int RowsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_columns.size());
}

QVariant RowsModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row &row = m_rows.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return row.cells.value(index.column());
    case Qt::ToolTipRole:
        return row.toolTip.isEmpty() ? QVariant() : QVariant(row.toolTip);
    case Qt::TextAlignmentRole:
        return int(m_columns.at(index.column()).alignment | Qt::AlignVCenter);
    case Qt::FontRole: {
        if (!row.isHeading)
            return {};
        QFont font;
        font.setBold(true);
        return font;
    }
    default:
        return {};
    }
}

QVariant RowsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= m_columns.size())
        return {};
    if (role == Qt::DisplayRole)
        return m_columns.at(section).title;
    if (role == Qt::TextAlignmentRole)
        return int(m_columns.at(section).alignment | Qt::AlignVCenter);
    return {};
}

Qt::ItemFlags RowsModel::flags(const QModelIndex &index) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return Qt::NoItemFlags;
    const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    return m_rows.at(index.row()).isHeading ? flags : flags | Qt::ItemIsSelectable;
}
