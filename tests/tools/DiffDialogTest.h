#pragma once

#include "tools/DiffTest.h"
#include "tools/ProjectDiffDialog.h"

#include <QApplication>
#include <QMenu>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

/** What a user sees of the comparison dialog, and does with it. */
namespace DiffDialogTest {

template <class Widget>
Widget &widget(const QWidget &dialog, const char *name)
{
    auto *found = dialog.findChild<Widget *>(QString::fromLatin1(name));
    if (!found)
        qFatal("the dialog has no %s", name);
    return *found;
}

/** All items of a tree from the top, a blank in front for each level. */
inline void appendTexts(const QTreeWidgetItem &item, const QString &indentation, QStringList &texts)
{
    texts.append(indentation + item.text(0));
    for (int place = 0; place < item.childCount(); ++place)
        appendTexts(*item.child(place), indentation + u' ', texts);
}

inline QStringList treeTexts(const QWidget &dialog, const char *name = "treeWidget")
{
    QStringList texts;
    const auto &tree = widget<QTreeWidget>(dialog, name);
    for (int place = 0; place < tree.topLevelItemCount(); ++place)
        appendTexts(*tree.topLevelItem(place), QString(), texts);
    return texts;
}

/** The item of that text; the program ends without one. */
inline QTreeWidgetItem &item(const QWidget &dialog, const QString &text, const char *name = "treeWidget")
{
    const auto items =
        widget<QTreeWidget>(dialog, name).findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
    if (items.size() != 1)
        qFatal("the tree has %d items %s", int(items.size()), qPrintable(text));
    return *items.first();
}

/** The texts of a table's row, those of the vertical header in front when that is shown. */
inline QStringList rowTexts(const QTableWidget &table, int row)
{
    QStringList texts;
    if (const QTableWidgetItem *header = table.verticalHeaderItem(row))
        texts.append(header->text());
    for (int column = 0; column < table.columnCount(); ++column)
        texts.append(table.item(row, column)->text());
    return texts;
}

/** The rows of a table that stand out, by the text in front. */
inline QStringList emphasisedRows(const QTableWidget &table)
{
    QStringList titles;
    for (int row = 0; row < table.rowCount(); ++row)
        if (table.item(row, 0)->font().bold())
            titles.append(table.verticalHeaderItem(row)->text());
    return titles;
}

inline void clickItem(QTreeWidgetItem &clicked, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTreeWidget &tree = *clicked.treeWidget();
    tree.scrollToItem(&clicked);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, modifiers, tree.visualItemRect(&clicked).center());
}

/** Opens a context menu at a place, triggers the entry of that text (empty: none) and gives all entries. */
inline QStringList useMenu(QAbstractItemView &view, const QPoint &place, const QString &chosen = QString())
{
    QStringList texts;
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &view, [&] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu)
            return;
        QAction *wanted = nullptr;
        const QList<QAction *> actions = menu->actions();
        for (QAction *action : actions) {
            if (!action->isSeparator())
                texts.append(action->text());
            if (!chosen.isEmpty() && action->text() == chosen)
                wanted = action;
        }
        menu->close();
        if (wanted)
            wanted->trigger();
    });
    timer.start();
    Q_EMIT view.customContextMenuRequested(place);
    return texts;
}

/** The entries that an item's menu has beside those of every tree. */
inline QStringList useItemMenu(QTreeWidgetItem &used, const QString &chosen = QString())
{
    QTreeWidget &tree = *used.treeWidget();
    clickItem(used);
    QStringList texts = useMenu(tree, tree.visualItemRect(&used).center(), chosen);
    const QStringList common{QStringLiteral("Collapse all"), QStringLiteral("Expand all"),
                             QStringLiteral("Keyboard navigation")};
    if (texts.mid(texts.size() - common.size()) != common)
        qFatal("the menu lacks the entries of the tree");
    return texts.mid(0, texts.size() - common.size());
}

} // namespace DiffDialogTest
