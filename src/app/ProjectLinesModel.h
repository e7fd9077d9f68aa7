#pragma once

#include "app/LineType.h"

#include <QAbstractTableModel>

class ObjectDataBase;

/** One row for each CAN line of a project: its protocols and how much it holds. */
class ProjectLinesModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { LineColumn, ProtocolColumn, ObjectsColumn, PgnsColumn, CanIdsColumn, ColumnCount };

    explicit ProjectLinesModel(QObject *parent = nullptr);

    /** Reads the store once; the model keeps no reference to it. Without a store it is empty. */
    void readFrom(ObjectDataBase *store);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    struct Row
    {
        quint8 line;
        LineType type;
        qsizetype objects;
        qsizetype pgns;
        qsizetype canIds;

        bool operator==(const Row &) const = default;
    };

    static QList<Row> rowsOf(ObjectDataBase &store);
    static QVariant cell(const Row &row, int column);

    QList<Row> m_rows;
};
