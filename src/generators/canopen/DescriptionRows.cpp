#include "generators/canopen/DescriptionRows.h"

#include "generators/ObjectKey.h"
#include "generators/canopen/CompactArrays.h"
#include "generators/canopen/ObjectDictionaryView.h"
#include "generators/canopen/StackServices.h"

#include <algorithm>

namespace {

constexpr std::array<QStringView, 3> storageSpecifiers{u"_VAR", u"_CONST", u"_PTR"};

QStringView specifier(const DictionarySubIndex &sub)
{
    if (sub.storage != StorageClass::Constant && sub.isMappedInSrdo)
        return u"_SRDO";
    const QStringView ofService = sub.storage == StorageClass::Constant
        ? QStringView()
        : StackServices::specifier(ObjectKey::index(sub.key), sub.number);
    return ofService.isEmpty() ? storageSpecifiers[std::size_t(sub.storage)] : ofService;
}

/** A sub-index without a table, a domain say, counts as the first of its kind. */
quint32 position(const std::optional<TablePosition> &place)
{
    return place.value_or(TablePosition()).position;
}

quint32 valueField(const DictionarySubIndex &sub)
{
    const quint16 index = ObjectKey::index(sub.key);
    if (sub.storage == StorageClass::Constant)
        return position(sub.constantPosition);
    if (const auto reference = StackServices::reference(index, sub.number))
        return *reference;
    return sub.isMappedInSrdo ? index : position(sub.variablePosition);
}

/** What belongs to a dictionary, and what its rows say. */
struct Contents
{
    bool (*contains)(const DictionarySubIndex &sub);
    QStringView (*specifier)(const DictionarySubIndex &sub);
    quint32 (*valueField)(const DictionarySubIndex &sub);
    /** The sub-index that decides whether the object is reached, and by which rows; null without one. */
    const DictionarySubIndex *(*entrance)(const DictionaryObject &object);
};

constexpr Contents everyObject{
    .contains = [](const DictionarySubIndex &sub) { return sub.storage != StorageClass::None; },
    .specifier = specifier,
    .valueField = valueField,
    .entrance = [](const DictionaryObject &object) { return object.subIndex(0); },
};

// The value is a variable of the virtual dictionary whatever service the object belongs to.
constexpr Contents virtualObjects{
    .contains = [](const DictionarySubIndex &sub) { return sub.isVirtual; },
    .specifier = [](const DictionarySubIndex &) { return storageSpecifiers.front(); },
    .valueField = [](const DictionarySubIndex &sub) { return position(sub.variablePosition); },
    .entrance = [](const DictionaryObject &object) -> const DictionarySubIndex * {
        const auto found = std::ranges::find_if(object.subIndices, &DictionarySubIndex::isVirtual);
        return found == object.subIndices.end() ? nullptr : &*found;
    },
};

/** Gives the rows of all lines their numbers, one object after the other. */
class RowCounter
{
public:
    RowCounter(ObjectDictionaryView &view, const Contents &contents) : m_view(view), m_contents(contents) { }

    void describe(DictionaryLine &line)
    {
        line.firstDescription = m_view.descriptionCount;
        line.firstAssignment = m_view.assignmentCount;
        for (DictionaryObject &object : line.objects) {
            describe(object);
            assign(object, line.number);
        }
        line.descriptionCount = m_view.descriptionCount - line.firstDescription;
        line.assignmentCount = m_view.assignmentCount - line.firstAssignment;
    }

private:
    void describe(DictionaryObject &object)
    {
        object.firstDescription = m_view.descriptionCount;
        for (DictionarySubIndex &sub : object.subIndices) {
            const bool isOfLine0 = sub.isShared && ObjectKey::line(sub.key) != 0;
            if (isOfLine0 || !m_contents.contains(sub) || sub.number > object.lastDescribed)
                continue;
            sub.specifier = m_contents.specifier(sub);
            sub.valueField = m_contents.valueField(sub);
            sub.isCompact =
                object.lastDescribed != CompactArray::noLimit && sub.number == object.lastDescribed;
            sub.isDescribed = true;
            ++m_view.descriptionCount;
        }
        object.descriptionCount = m_view.descriptionCount - object.firstDescription;
    }

    /** A shared object is reached by the rows of line 0. */
    void assign(DictionaryObject &object, quint8 line)
    {
        const DictionarySubIndex *entrance = m_contents.entrance(object);
        if (!entrance || !m_contents.contains(*entrance))
            return;
        if (entrance->isShared && line != 0 && !takeRowsOfLine0(object))
            return;
        object.isAssigned = true;
        ++m_view.assignmentCount;
    }

    bool takeRowsOfLine0(DictionaryObject &object) const
    {
        const DictionaryLine *line0 = m_view.line(0);
        const DictionaryObject *owner = line0 ? line0->object(object.index) : nullptr;
        if (!owner || !owner->isAssigned)
            return false;
        object.firstDescription = owner->firstDescription;
        object.descriptionCount = owner->descriptionCount;
        return true;
    }

    ObjectDictionaryView &m_view;
    const Contents &m_contents;
};

void describe(ObjectDictionaryView &view, const Contents &contents)
{
    RowCounter counter(view, contents);
    for (DictionaryLine &line : view.lines)
        counter.describe(line);
}

} // namespace

void describeObjects(ObjectDictionaryView &view)
{
    describe(view, everyObject);
}

void describeVirtualObjects(ObjectDictionaryView &view)
{
    describe(view, virtualObjects);
}
