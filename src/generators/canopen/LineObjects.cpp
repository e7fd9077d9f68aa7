#include "generators/canopen/LineObjects.h"

#include "canopen/CANopenTypes.h"
#include "store/ObjectDataBase.h"

#include <algorithm>
#include <array>
#include <span>

using namespace Qt::StringLiterals;

namespace {

using SubIndex = LineObjects::SubIndex;

constexpr quint16 firstObject = 0x1000; // CiA 301: below are the data types
constexpr quint16 lastObject = 0xFFFF;

constexpr std::array implementations{CANopen::ManagedVariable, CANopen::ManagedConst,
                                     CANopen::ApplicationVariable, CANopen::VirtualObject};

quint32 place(const SubIndex &sub)
{
    return quint32(sub.index) << 8 | sub.number;
}

std::span<const SubIndex> subIndicesOf(const QList<SubIndex> &all, quint16 index)
{
    const auto first = std::ranges::lower_bound(all, index, {}, &SubIndex::index);
    return {first, std::ranges::upper_bound(first, all.end(), index, {}, &SubIndex::index)};
}

} // namespace

LineObjects::LineObjects(ObjectDataBase &store, quint8 line)
    : m_indices(store.getIndexList(line, firstObject, lastObject))
{
    for (const auto implementation : implementations) {
        const auto found =
            store.findSubIndices(line, u"implementation"_s, QString::number(implementation), false);
        for (const ObjectDataBase::SubAddress &address : found)
            if (address.first >= firstObject)
                m_subIndices.append({address.first, address.second, implementation});
    }
    std::ranges::sort(m_subIndices, {}, place);
}

bool LineObjects::has(quint16 index) const
{
    return std::ranges::binary_search(m_indices, index);
}

bool LineObjects::has(quint16 index, quint8 subIndex) const
{
    return std::ranges::binary_search(m_subIndices, place({index, subIndex, 0}), {}, place);
}

QList<quint16> LineObjects::range(quint16 first, quint16 last) const
{
    const auto begin = std::ranges::lower_bound(m_indices, first);
    const auto end = std::ranges::upper_bound(m_indices, last);
    return begin < end ? QList<quint16>(begin, end) : QList<quint16>();
}

QList<quint8> LineObjects::subIndices(quint16 index) const
{
    QList<quint8> numbers;
    for (const SubIndex &sub : subIndicesOf(m_subIndices, index))
        numbers.append(sub.number);
    return numbers;
}

QList<quint8> LineObjects::entries(quint16 index) const
{
    QList<quint8> numbers = subIndices(index);
    numbers.removeOne(quint8(0));
    return numbers;
}
