#pragma once

#include "forms/RowsModel.h"

class ObjectDataBase;

/** Objects of a line and their sub-indices as rows of a table, named as a user knows them. */
namespace ObjectRows {

QList<RowsModel::Column> objectColumns();
QList<RowsModel::Column> subIndexColumns();

/** The objects from `from` to `to` inclusive, in ascending order. */
QList<RowsModel::Row> readObjects(ObjectDataBase &store, quint8 line, quint16 from, quint16 to);
QList<RowsModel::Row> readSubIndices(ObjectDataBase &store, quint8 line, quint16 index);

/** Whether a type of change alters objects or sub-indices. */
bool isObjectChange(int changeType);

} // namespace ObjectRows
