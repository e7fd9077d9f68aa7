#pragma once

#include "tools/ProjectDiff.h"

#include <QFlags>

#include <optional>

/**
 * The texts of the items in the trees of a comparison, and what can be read back from them.
 *
 * An item carries its number as the first word and its state behind the last " - ", so that whoever sees
 * the tree and whoever acts on it read the same. What stands between is a name and may hold anything.
 */
namespace DiffItemText {

enum class Part { Object, SubIndex, Pgn, Spn, CanId, DataElement };

/** After an Apply of the EnergyBus configuration the states speak of removing and adding. */
QString text(Part part, const ProjectDiff::Item &item, bool isAfterApply = false);

/** The state that a text tells; a text without a state word tells Equal. */
ProjectDiff::State state(const QString &text);
/** True for an object, PGN or CAN-ID, false for what belongs to one. */
bool isParent(const QString &text);
/** The number in front of the first blank; nothing when there is none. */
std::optional<quint32> number(const QString &text);

QString directionText(quint8 direction);

/** What may be done with an item of the object tree. */
enum class Action { Import = 1, ImportComplete = 2, Delete = 4 };
Q_DECLARE_FLAGS(Actions, Action)

Actions actions(const QString &text);

} // namespace DiffItemText

Q_DECLARE_OPERATORS_FOR_FLAGS(DiffItemText::Actions)
