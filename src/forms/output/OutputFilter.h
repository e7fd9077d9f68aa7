#pragma once

#include "forms/output/OutputModel.h"

#include <QSortFilterProxyModel>

struct TextSearch;

/** Lets the messages of the chosen levels through, and finds texts in them. */
class OutputFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    void setShown(MessageLevel level, bool shown);

    /**
     * The row that holds the text, beginning at `start` and going on at the other end; -1 when none does.
     */
    int find(const TextSearch &search, int start, bool backward) const;

    struct Matches
    {
        int all = 0;
        int before = 0; ///< above the row that was asked about
    };
    /** The rows that hold the text. */
    Matches countMatches(const TextSearch &search, int row) const;

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    bool holds(const TextSearch &search, int row) const;

    std::array<bool, OutputModel::levelCount> m_hidden = {};
};
