#pragma once

#include "forms/output/TextSearch.h"

#include <QStyledItemDelegate>

/** Draws a message: its time in a column of its own, the text in the colour of its level. */
class OutputDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /** Marks every place of a text that the user looks for; an empty text for none. */
    void setMarked(const TextSearch &search) { m_marked = search; }
    /** Width of a row with the text, in pixels. */
    static int widthOf(const QString &text, const QFont &font);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

private:
    void drawMessage(QPainter *painter, const QStyleOptionViewItem &item, const QModelIndex &index) const;

    TextSearch m_marked;
};
