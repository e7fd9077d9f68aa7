#pragma once

#include "store/ProjectRecords.h"

#include <optional>

/**
 * Finds out how few description rows can tell of an object, while its sub-indices are read.
 *
 * Sub-indices at the end of an object that differ in nothing that a row tells need one row only: that of
 * the lowest of them.
 */
class CompactArray
{
public:
    explicit CompactArray(quint16 index) : m_index(index) { }

    /** Takes the next sub-index; they come in ascending order. */
    void add(quint8 number, const ProjectRecords::SubIndexData &data);
    /** The sub-index whose row covers all behind it; noLimit where every sub-index needs its own. */
    int lastDescribed() const;

    static constexpr int noLimit = 255;

private:
    struct Entry
    {
        quint8 number = 0;
        ProjectRecords::SubIndexData data;
    };

    quint16 m_index;
    int m_count = 0;
    std::optional<Entry> m_last;
    quint8 m_runStart = 0; ///< lowest sub-index of the run of equal ones that the last one ends
    bool m_gapBeforeRun = false;
};
