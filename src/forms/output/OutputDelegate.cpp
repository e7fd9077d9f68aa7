#include "forms/output/OutputDelegate.h"

#include "forms/output/MessageColours.h"
#include "forms/output/OutputModel.h"

#include <QApplication>
#include <QPainter>
#include <QTextLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int margin = 6; // pixels between time, text and the borders
/** A line that is longer is drawn up to here; the log and the copy hold all of it. */
constexpr qsizetype longestDrawnText = 4000;
constexpr QLatin1StringView timeFormat{"HH:mm:ss"};
constexpr int tabCharacters = 4;

int timeWidth(const QFont &font)
{
    return QFontMetrics(font).horizontalAdvance("00:00:00"_L1) + 2 * margin;
}

QList<QTextLayout::FormatRange> spanFormats(const MessageText &text)
{
    QList<QTextLayout::FormatRange> formats;
    for (const MessageText::Span &span : text.spans) {
        QTextCharFormat format;
        format.setFontWeight(span.bold ? QFont::Bold : QFont::Normal);
        format.setFontItalic(span.italic);
        formats.append({span.start, span.length, format});
    }
    return formats;
}

QList<QTextLayout::FormatRange> markFormats(const QString &text, const TextSearch &search,
                                            const QPalette &palette)
{
    QTextCharFormat format;
    format.setBackground(palette.highlight());
    format.setForeground(palette.highlightedText());
    QList<QTextLayout::FormatRange> formats;
    const qsizetype length = search.text.size();
    for (qsizetype at = search.indexIn(text); at >= 0; at = search.indexIn(text, at + length))
        formats.append({int(at), int(length), format});
    return formats;
}

void drawText(QPainter *painter, const QRect &area, const QString &text, const QFont &font,
              const QList<QTextLayout::FormatRange> &formats)
{
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    option.setTabStopDistance(tabCharacters * QFontMetricsF(font).horizontalAdvance(u' '));
    QTextLayout layout(text, font);
    layout.setTextOption(option);
    layout.setFormats(formats);
    layout.setCacheEnabled(false);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    layout.endLayout();
    if (line.isValid())
        layout.draw(painter, {qreal(area.left()), area.top() + (area.height() - line.height()) / 2});
}

} // namespace

int OutputDelegate::widthOf(const QString &text, const QFont &font)
{
    QFont widest = font;
    widest.setBold(true);
    return timeWidth(font) + QFontMetrics(widest).horizontalAdvance(text.left(longestDrawnText)) + 2 * margin;
}

void OutputDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                           const QModelIndex &index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    item.text.clear();
    const QStyle *style = item.widget ? item.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);
    painter->save();
    painter->setClipRect(item.rect);
    drawMessage(painter, item, index);
    painter->restore();
}

void OutputDelegate::drawMessage(QPainter *painter, const QStyleOptionViewItem &item,
                                 const QModelIndex &index) const
{
    const bool isSelected = item.state & QStyle::State_Selected;
    const auto group = item.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
    const QColor selectedText = item.palette.color(group, QPalette::HighlightedText);

    const QVariant time = index.data(OutputModel::TimeRole);
    if (time.isValid()) {
        painter->setPen(isSelected ? selectedText : MessageColours::dimmedText(item.palette));
        drawText(painter, item.rect.adjusted(margin, 0, 0, 0), time.toTime().toString(timeFormat), item.font,
                 {});
    }

    MessageText text = index.data(OutputModel::TextRole).value<MessageText>();
    text.text.truncate(longestDrawnText);
    QList<QTextLayout::FormatRange> formats = spanFormats(text);
    if (!isSelected)
        formats += markFormats(text.text, m_marked, item.palette);
    const auto level = MessageLevel(index.data(OutputModel::LevelRole).toInt());
    painter->setPen(isSelected ? selectedText : MessageColours::text(level, item.palette));
    drawText(painter, item.rect.adjusted(timeWidth(item.font), 0, 0, 0), text.text, item.font, formats);
}
