#include "generators/documents/ObjectListView.h"

#include "canopen/CANopenTypes.h"
#include "store/ObjectDataBase.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr quint16 firstObject = 0x1000; // CiA 301: below are the data types

/** A name of nothing but line breaks and other control characters shows as none, and tables cannot hold it.
 */
bool isNameless(const QString &name)
{
    return std::ranges::all_of(name, [](QChar c) { return c < u' '; });
}

QList<ListedSubIndex> readSubIndices(ObjectDataBase &store, quint8 line, quint16 index)
{
    QList<ListedSubIndex> subIndices;
    const QList<quint8> numbers = store.getSubIndexList(line, index);
    subIndices.reserve(numbers.size());
    for (const quint8 number : numbers) {
        ListedSubIndex &sub = subIndices.emplaceBack();
        sub.number = number;
        store.getSubIndex(line, index, number, sub.data);
    }
    return subIndices;
}

} // namespace

QString ListedObject::name() const
{
    return isNameless(data.name) ? u"unnamed object"_s : data.name;
}

QString ListedObject::name(const ListedSubIndex &sub) const
{
    return isNameless(sub.data.name) && !hasEntries() ? name() : sub.data.name;
}

bool ListedObject::hasEntries() const
{
    return data.objecttype == CANopen::Array || data.objecttype == CANopen::Record;
}

// A run has cached the records of the sub-indices: reading the whole table again would cost more than to ask
// for their numbers object by object.
ObjectListView ObjectListView::read(ObjectDataBase &store, quint8 line)
{
    ObjectListView view;
    store.visitIndices(line, [&view](quint16 index, const ProjectRecords::IndexData &data) {
        if (index >= firstObject)
            view.objects.append({.index = index, .data = data, .subIndices = {}});
    });
    for (ListedObject &object : view.objects)
        object.subIndices = readSubIndices(store, line, object.index);
    return view;
}
