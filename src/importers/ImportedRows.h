#pragma once

#include "store/ProjectRecords.h"

/** Builds the rows that importers write, so that all formats leave the same traces in a project. */
namespace ImportedRows {

/** A sub-index that allows every access type and names no variable. */
ProjectRecords::SubIndexData blank();

/** A default value, which is written into device descriptions too unless it is empty. */
void setDefaultValue(ProjectRecords::SubIndexData &sub, const QString &value);

/**
 * The limits that a file gives; an empty one is that of the data type. Without any the natural range of
 * the type stands there, unchecked.
 */
void setLimits(ProjectRecords::SubIndexData &sub, const QString &low, const QString &high);

/** Sub-index 0 of an array or record whose last sub-index is `highest`. */
ProjectRecords::SubIndexData count(int highest);

/**
 * The implementation that "managed variables" means for the value; a variable that stays with the
 * application gets a name from its place.
 */
void setManaged(ProjectRecords::SubIndexData &sub, quint16 index, quint8 subIndex);

/** Keeps the number of a data type that CiA 301 does not have for the device descriptions written later. */
void keepForeignDataType(ProjectRecords::SubIndexData &sub);

/** "v_201803": the variable of a sub-index that stays with the application. */
QString variableName(quint16 index, quint8 subIndex);

} // namespace ImportedRows
