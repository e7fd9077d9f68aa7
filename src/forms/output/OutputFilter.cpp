#include "forms/output/OutputFilter.h"

#include "forms/output/TextSearch.h"

void OutputFilter::setShown(MessageLevel level, bool shown)
{
    m_hidden.at(size_t(level)) = !shown;
    invalidateFilter();
}

bool OutputFilter::filterAcceptsRow(int row, const QModelIndex &parent) const
{
    const QModelIndex message = sourceModel()->index(row, 0, parent);
    return !m_hidden.at(message.data(OutputModel::LevelRole).toUInt());
}

bool OutputFilter::holds(const TextSearch &search, int row) const
{
    return search.indexIn(index(row, 0).data().toString()) >= 0;
}

int OutputFilter::find(const TextSearch &search, int start, bool backward) const
{
    const int count = rowCount();
    for (int step = 0; step < count; ++step) {
        const int row = (start + (backward ? count - step : step)) % count;
        if (holds(search, row))
            return row;
    }
    return -1;
}

OutputFilter::Matches OutputFilter::countMatches(const TextSearch &search, int row) const
{
    Matches matches;
    for (int i = 0; i < rowCount(); ++i) {
        if (!holds(search, i))
            continue;
        ++matches.all;
        if (i < row)
            ++matches.before;
    }
    return matches;
}
