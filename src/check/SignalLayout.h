#pragma once

#include "canopen/COHelper.h"

#include <QtGlobal>

#include <algorithm>
#include <iterator>
#include <map>

/** A signal of a message: an SPN of a parameter group, or a data element of a CAN-ID. */
struct SignalPlace
{
    quint32 message = 0;
    quint32 signal = 0;
};

/** Length of a signal in bits: that of its type, or its own where the type has none (texts, blocks). */
inline qint64 signalBits(int dataType, int bitSize)
{
    const quint8 bits = COHelper::getDataLengthBits(static_cast<CAN::CANopenDataType>(dataType));
    return bits != 0 ? bits : std::max(0, bitSize);
}

/** The bits of one message that signals have taken, as ranges that do not touch each other's bits. */
class OccupiedBits
{
public:
    /** Takes a range; false when some of its bits were taken before. A range without bits meets nothing. */
    bool take(qint64 first, qint64 count)
    {
        if (count <= 0)
            return true;
        qint64 end = first + count;
        auto range = m_ranges.upper_bound(first);
        if (range != m_ranges.begin() && std::prev(range)->second > first)
            --range;
        bool free = true;
        while (range != m_ranges.end() && range->first < end) {
            free = false;
            first = std::min(first, range->first);
            end = std::max(end, range->second);
            range = m_ranges.erase(range);
        }
        m_ranges.emplace(first, end);
        return free;
    }

private:
    std::map<qint64, qint64> m_ranges; ///< first bit, and the bit behind the last one
};
