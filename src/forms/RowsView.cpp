#include "forms/RowsView.h"

#include "forms/RowsModel.h"

#include <QHeaderView>

namespace {

constexpr int rowSpacing = 8; // between the texts of two rows, in pixels
constexpr int cellMargins = 24; // beside the text of a cell, in pixels

} // namespace

RowsView::RowsView(QWidget *parent) : QTableView(parent)
{
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setSelectionBehavior(SelectRows);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + rowSpacing);
    horizontalHeader()->setHighlightSections(false);
}

void RowsView::setUpColumns(const RowsModel &model)
{
    QFont heading = font();
    heading.setBold(true);
    const QFontMetrics metrics(heading);
    const QList<RowsModel::Column> &columns = model.columns();
    for (int column = 0; column < columns.size(); ++column) {
        const RowsModel::Column &wish = columns.at(column);
        if (wish.sample.isEmpty()) {
            horizontalHeader()->setSectionResizeMode(column, QHeaderView::Stretch);
            continue;
        }
        const int width = qMax(metrics.horizontalAdvance(wish.title), metrics.horizontalAdvance(wish.sample));
        horizontalHeader()->resizeSection(column, width + cellMargins);
    }
}

void RowsView::selectOnly(int row)
{
    const QModelIndex index = model()->index(row, 0);
    setCurrentIndex(index);
    scrollTo(index, EnsureVisible);
}
