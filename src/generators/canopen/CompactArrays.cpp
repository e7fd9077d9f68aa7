#include "generators/canopen/CompactArrays.h"

namespace {

/** CiA 301: up to here are objects that the stack knows one by one. */
constexpr quint16 firstCompactIndex = 0x1200;
constexpr int fewestSubIndices = 3;

bool tellTheSame(const ProjectRecords::SubIndexData &a, const ProjectRecords::SubIndexData &b)
{
    return a.datatype == b.datatype && a.accesstype == b.accesstype && a.pdomapping == b.pdomapping
        && a.lowlimit == b.lowlimit && a.uplimit == b.uplimit && a.size == b.size
        && a.defaultineds == b.defaultineds && a.limitineds == b.limitineds
        && a.implementation == b.implementation && a.defaultvalue == b.defaultvalue
        && a.nvstorage == b.nvstorage && a.category == b.category
        && a.varname.simplified() == b.varname.simplified();
}

} // namespace

// A run starts anew at every sub-index that differs from the one before it or leaves a gap to it. The last
// run counts: equality with its neighbour is equality with the highest one.
void CompactArray::add(quint8 number, const ProjectRecords::SubIndexData &data)
{
    const bool isConsecutive = m_last && number == m_last->number + 1;
    if (!isConsecutive || !tellTheSame(m_last->data, data)) {
        m_gapBeforeRun = m_last && !isConsecutive;
        m_runStart = number;
    }
    m_last = Entry{number, data};
    ++m_count;
}

int CompactArray::lastDescribed() const
{
    if (m_index < firstCompactIndex || m_count < fewestSubIndices || m_gapBeforeRun)
        return noLimit;
    return m_runStart == m_last->number ? noLimit : m_runStart;
}
