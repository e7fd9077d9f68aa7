#pragma once

#include <QTableView>

class RowsModel;

/** The table of a page: whole rows, nothing to edit, columns as wide as their model wishes. */
class RowsView : public QTableView
{
    Q_OBJECT

public:
    explicit RowsView(QWidget *parent = nullptr);

    /** Sets the widths and alignments that the columns of the model ask for; the view shows it or a proxy. */
    void setUpColumns(const RowsModel &model);
    /** Makes a row of the view current and visible, without moving the keyboard's focus. */
    void selectOnly(int row);

    /** No more than it needs, though it takes all there is: a page shall not scroll because its table can. */
    QSize sizeHint() const override { return minimumSizeHint(); }
};
