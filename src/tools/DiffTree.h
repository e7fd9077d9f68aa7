#pragma once

#include "tools/DiffItemText.h"

class QPalette;
class QTreeWidget;
class QTreeWidgetItem;

/** The trees of a comparison: their items tell number and state in their texts (see DiffItemText). */
namespace DiffTree {

/** Shows objects with their sub-indices; what was open or current stays so where it is still there. */
void showObjects(QTreeWidget &tree, const QList<ProjectDiff::Item> &objects, bool isAfterApply);

/** What the trees of messages do not have in common. */
struct MessageTexts
{
    DiffItemText::Part message;
    DiffItemText::Part signal;
    QString transmitted; ///< the title of the transmitted messages
    QString received;
};

/** Shows messages with their signals, those of each direction below a title. */
void showMessages(QTreeWidget &tree, const QList<ProjectDiff::Item> &messages, const MessageTexts &texts);

/** Gives all items the colours of their states that can be read on the palette. */
void colour(QTreeWidget &tree, const QPalette &palette);

/** Nothing for a title. */
std::optional<ProjectDiff::Address> address(const QTreeWidgetItem *item);

} // namespace DiffTree
