#include "generators/canopen/ObjectDictionaryView.h"

#include "generators/canopen/DescriptionRows.h"
#include "generators/canopen/MappingTables.h"
#include "generators/canopen/ObjectDictionaryReader.h"
#include "generators/canopen/ValuePositions.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/** The element of an ascending list with that number; null where there is none. */
template <typename List, typename Number, typename Member>
auto *find(List &list, Number number, Member member)
{
    const auto found = std::ranges::lower_bound(list, number, {}, member);
    return found != list.end() && std::invoke(member, *found) == number ? &*found : nullptr;
}

} // namespace

const DictionarySubIndex *DictionaryObject::subIndex(quint8 number) const
{
    return find(subIndices, number, &DictionarySubIndex::number);
}

const DictionaryObject *DictionaryLine::object(quint16 index) const
{
    return find(objects, index, &DictionaryObject::index);
}

std::span<const DictionaryObject> DictionaryLine::objectRange(quint16 from, quint16 to) const
{
    const auto first = std::ranges::lower_bound(objects, from, {}, &DictionaryObject::index);
    return {first, std::ranges::upper_bound(first, objects.end(), to, {}, &DictionaryObject::index)};
}

const DictionarySubIndex *DictionaryLine::subIndex(quint16 index, quint8 sub) const
{
    const DictionaryObject *found = object(index);
    return found ? found->subIndex(sub) : nullptr;
}

ObjectDictionaryView ObjectDictionaryView::read(ObjectDataBase &store, const ObjectDictionaryRequest &request)
{
    ObjectDictionaryView view;
    readObjectDictionary(store, request, view);
    assignValuePositions(view);
    describeObjects(view);
    addMappingTables(view);
    return view;
}

QString ObjectDictionaryView::flaw() const
{
    for (const CValues::TableForm &form : CValues::tableForms) {
        const qsizetype rows = std::max({managed[form.table].size(), constants[form.table].size(),
                                         constantTexts[form.table].size(), application[form.table].size()});
        if (QString flaw = overflow(form, rows); !flaw.isEmpty())
            return flaw;
    }
    return {};
}

QString ObjectDictionaryView::overflow(const CValues::TableForm &form, qsizetype rows)
{
    constexpr qsizetype positions = 0x10000;
    if (rows <= positions)
        return {};
    return u"There are %1 values of the type %2, and the stack reaches %3 in one table."_s.arg(rows)
        .arg(form.name)
        .arg(positions);
}

const DictionaryLine *ObjectDictionaryView::line(quint8 number) const
{
    return find(lines, number, &DictionaryLine::number);
}

const DictionarySubIndex *ObjectDictionaryView::subIndex(quint8 line, quint16 index, quint8 sub) const
{
    const DictionaryLine *found = this->line(line);
    return found ? found->subIndex(index, sub) : nullptr;
}

QString ObjectDictionaryView::constantElement(quint8 line, quint16 index, quint8 sub) const
{
    const DictionarySubIndex *found = subIndex(line, index, sub);
    if (!found || !found->constantPosition)
        return {};
    const TablePosition &place = *found->constantPosition;
    return u"od_const_%1[%2]"_s.arg(CValues::form(place.table).name).arg(place.position);
}
