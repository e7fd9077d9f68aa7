#include "tools/DiffTables.h"

#include "canopen/COHelper.h"
#include "tools/DiffColours.h"

#include <QHeaderView>
#include <QTableWidget>

using namespace Qt::StringLiterals;

namespace {

/** A value that has no room is in the tool tip as a whole. */
QTableWidgetItem *makeItem(const QString &text)
{
    auto *item = new QTableWidgetItem(text);
    item->setToolTip(text);
    item->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    return item;
}

void emphasise(QTableWidgetItem *item, QFont font, const QPalette &palette)
{
    font.setBold(true);
    item->setFont(font);
    item->setBackground(DiffColours::differingRow(palette));
}

} // namespace

void DiffTables::setUp(QTableWidget &table, const QStringList &titles)
{
    table.setColumnCount(int(titles.size()));
    table.setHorizontalHeaderLabels(titles);
    constexpr int valueColumns = 2;
    const int firstValue = table.columnCount() - valueColumns;
    for (int column = 0; column < table.columnCount(); ++column)
        table.horizontalHeader()->setSectionResizeMode(
            column, column < firstValue ? QHeaderView::Interactive : QHeaderView::Stretch);
    table.horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table.horizontalHeader()->setHighlightSections(false);
    table.verticalHeader()->setHighlightSections(false);
    constexpr int rowMargins = 8; // pixels above and below a line of text
    constexpr int maximumLines = 6;
    const QFontMetrics metrics = table.fontMetrics();
    QHeaderView *rows = table.verticalHeader();
    rows->setSectionResizeMode(QHeaderView::Fixed);
    rows->setMinimumSectionSize(metrics.height() + rowMargins);
    rows->setMaximumSectionSize(metrics.lineSpacing() * maximumLines + rowMargins);
    rows->setDefaultSectionSize(rows->minimumSectionSize());
}

void DiffTables::showDetails(QTableWidget &table, const QList<DiffFields::Detail> &details,
                             const QPalette &palette)
{
    table.setRowCount(0);
    table.setRowCount(int(details.size()));
    int row = 0;
    for (const DiffFields::Detail &detail : details) {
        auto *title = new QTableWidgetItem(detail.title);
        QTableWidgetItem *current = makeItem(detail.current);
        QTableWidgetItem *other = makeItem(detail.other);
        if (detail.differs)
            for (QTableWidgetItem *item : {title, current, other})
                emphasise(item, table.font(), palette);
        table.setVerticalHeaderItem(row, title);
        table.setItem(row, 0, current);
        table.setItem(row, 1, other);
        ++row;
    }
    table.resizeRowsToContents();
}

void DiffTables::showSettings(QTableWidget &table, const QList<ProjectDiff::Setting> &settings)
{
    table.setRowCount(0);
    table.setRowCount(int(settings.size()));
    int row = 0;
    for (const ProjectDiff::Setting &setting : settings) {
        QTableWidgetItem *name = makeItem(COHelper::convertDbNames(setting.key));
        name->setData(keyRole, setting.key);
        table.setItem(row, 0, name);
        table.setItem(row, 1, makeItem(setting.current));
        table.setItem(row, 2, makeItem(setting.other));
        ++row;
    }
    table.resizeColumnToContents(0);
    table.resizeRowsToContents();
}
