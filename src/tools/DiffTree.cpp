#include "tools/DiffTree.h"

#include "store/ObjectDataBase.h"
#include "tools/DiffColours.h"

#include <QScrollBar>
#include <QSet>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

using namespace Qt::StringLiterals;
using DiffItemText::Part;
using ProjectDiff::Address;
using ProjectDiff::Item;
using ProjectDiff::State;

namespace {

constexpr int directionRole = Qt::UserRole;

QTreeWidgetItem *makeItem(Part part, Part childPart, const Item &item, bool isAfterApply)
{
    auto *result = new QTreeWidgetItem({DiffItemText::text(part, item, isAfterApply)});
    result->setToolTip(0, result->text(0));
    result->setData(0, directionRole, item.direction);
    for (const Item &child : item.children)
        result->addChild(makeItem(childPart, childPart, child, isAfterApply));
    return result;
}

/** What the user sees of a tree, to be found again in the next content. */
class View
{
public:
    explicit View(const QTreeWidget &tree)
        : m_current(DiffTree::address(tree.currentItem())), m_scrolled(tree.verticalScrollBar()->value())
    {
        for (int place = 0; place < tree.topLevelItemCount(); ++place) {
            const QTreeWidgetItem *item = tree.topLevelItem(place);
            const auto number = DiffItemText::number(item->text(0));
            if (number && item->isExpanded())
                m_open.insert(*number);
            else if (number)
                m_closed.insert(*number);
        }
    }

    void restore(QTreeWidget &tree) const
    {
        for (int place = 0; place < tree.topLevelItemCount(); ++place)
            restore(tree, tree.topLevelItem(place));
        tree.doItemsLayout(); // only now the scroll bar knows its range
        tree.verticalScrollBar()->setValue(m_scrolled);
    }

private:
    /** What only holds differing children is open from the start: they are what there is to be seen. */
    void restore(QTreeWidget &tree, QTreeWidgetItem *item) const
    {
        const quint32 number = DiffItemText::number(item->text(0)).value_or(0);
        const bool isHolder = DiffItemText::state(item->text(0)) == State::Equal;
        item->setExpanded(m_open.contains(number) || (isHolder && !m_closed.contains(number)));
        if (!m_current || m_current->number != number)
            return;
        tree.setCurrentItem(item);
        for (int place = 0; m_current->child && place < item->childCount(); ++place)
            if (DiffTree::address(item->child(place)) == m_current)
                tree.setCurrentItem(item->child(place));
    }

    QSet<quint32> m_open;
    QSet<quint32> m_closed;
    std::optional<Address> m_current;
    int m_scrolled;
};

} // namespace

void DiffTree::showObjects(QTreeWidget &tree, const QList<Item> &objects, bool isAfterApply)
{
    const View view(tree);
    QList<QTreeWidgetItem *> items;
    items.reserve(objects.size());
    for (const Item &object : objects)
        items.append(makeItem(Part::Object, Part::SubIndex, object, isAfterApply));
    tree.clear();
    tree.addTopLevelItems(items);
    view.restore(tree);
    colour(tree, tree.palette());
}

void DiffTree::showMessages(QTreeWidget &tree, const QList<Item> &messages, const MessageTexts &texts)
{
    tree.clear();
    for (const auto &[direction, title] : {std::pair(ObjectDataBase::Transmit, texts.transmitted),
                                           std::pair(ObjectDataBase::Receive, texts.received)}) {
        QList<QTreeWidgetItem *> items;
        for (const Item &message : messages)
            if (message.direction == direction)
                items.append(makeItem(texts.message, texts.signal, message, false));
        if (items.isEmpty())
            continue;
        auto *group = new QTreeWidgetItem(&tree, {title});
        group->addChildren(items);
        group->setExpanded(true);
        for (QTreeWidgetItem *item : std::as_const(items))
            item->setExpanded(DiffItemText::state(item->text(0)) == State::Equal);
    }
    colour(tree, tree.palette());
}

void DiffTree::colour(QTreeWidget &tree, const QPalette &palette)
{
    for (QTreeWidgetItemIterator item(&tree); *item; ++item)
        (*item)->setForeground(0, DiffColours::text(DiffItemText::state((*item)->text(0)), palette));
}

std::optional<Address> DiffTree::address(const QTreeWidgetItem *item)
{
    if (!item)
        return std::nullopt;
    const auto number = DiffItemText::number(item->text(0));
    if (!number)
        return std::nullopt;
    const quint8 direction = quint8(item->data(0, directionRole).toUInt());
    if (DiffItemText::isParent(item->text(0)))
        return Address{.number = *number, .direction = direction, .child = std::nullopt};
    const auto parent = item->parent() ? DiffItemText::number(item->parent()->text(0)) : std::nullopt;
    if (!parent)
        return std::nullopt;
    return Address{.number = *parent, .direction = direction, .child = number};
}
