#include "app/ProjectLinesModel.h"

#include "store/ObjectDataBase.h"

using namespace Qt::StringLiterals;

ProjectLinesModel::ProjectLinesModel(QObject *parent) : QAbstractTableModel(parent) { }

void ProjectLinesModel::readFrom(ObjectDataBase *store)
{
    QList<Row> rows = store ? rowsOf(*store) : QList<Row>();
    if (rows == m_rows)
        return;
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

QList<ProjectLinesModel::Row> ProjectLinesModel::rowsOf(ObjectDataBase &store)
{
    QList<Row> rows;
    const QList<quint8> lines = store.getLines();
    for (const quint8 line : lines) {
        if (line >= ObjectDataBase::ClipboardLine)
            continue;
        rows.append({line, LineTypes::fromSetting(store.getGeneralSetting(u"line%1type"_s.arg(line))),
                     store.getIndexList(line).size(),
                     store.getPGNList(line, ObjectDataBase::BothDirections).size(),
                     store.getCANIDList(line, ObjectDataBase::BothDirections).size()});
    }
    return rows;
}

int ProjectLinesModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int ProjectLinesModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant ProjectLinesModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    if (role == Qt::TextAlignmentRole && index.column() >= ObjectsColumn)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    return role == Qt::DisplayRole ? cell(m_rows.at(index.row()), index.column()) : QVariant();
}

QVariant ProjectLinesModel::cell(const Row &row, int column)
{
    switch (column) {
    case LineColumn:
        return row.line;
    case ProtocolColumn:
        return LineTypes::description(row.type);
    case ObjectsColumn:
        return row.objects;
    case PgnsColumn:
        return row.pgns;
    case CanIdsColumn:
        return row.canIds;
    default:
        return {};
    }
}

QVariant ProjectLinesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole && section >= ObjectsColumn)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case LineColumn:
        return tr("Line");
    case ProtocolColumn:
        return tr("Protocols");
    case ObjectsColumn:
        return tr("Objects");
    case PgnsColumn:
        return tr("PGNs");
    case CanIdsColumn:
        return tr("CAN-IDs");
    default:
        return {};
    }
}
