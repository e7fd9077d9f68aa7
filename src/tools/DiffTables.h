#pragma once

#include "tools/ProjectDiff.h"

class QPalette;
class QTableWidget;
class QTableWidgetItem;

/** The tables of a comparison. */
namespace DiffTables {

/** The key of the setting that a row is about, in its first item. */
inline constexpr int keyRole = Qt::UserRole;

/** Makes the columns, the values of both projects last; those share the width. */
void setUp(QTableWidget &table, const QStringList &titles);
/** One row per field, with its title in front; rows that differ stand out on the palette. */
void showDetails(QTableWidget &table, const QList<DiffFields::Detail> &details, const QPalette &palette);
/** One row per setting: name, current and other value. */
void showSettings(QTableWidget &table, const QList<ProjectDiff::Setting> &settings);

} // namespace DiffTables
