#include "generators/documents/ObjectListView.h"

#include "canopen/CANopenTypes.h"
#include "store/ObjectDataBase.h"

using namespace Qt::StringLiterals;

namespace {

constexpr quint16 firstObject = 0x1000; // CiA 301: below are the data types
constexpr quint16 lastObject = 0xFFFF;

ListedObject readObject(ObjectDataBase &store, quint8 line, quint16 index)
{
    ListedObject object{.index = index};
    store.getIndex(line, index, object.data);
    const QList<quint8> numbers = store.getSubIndexList(line, index);
    object.subIndices.reserve(numbers.size());
    for (const quint8 number : numbers) {
        ListedSubIndex &sub = object.subIndices.emplaceBack();
        sub.number = number;
        store.getSubIndex(line, index, number, sub.data);
    }
    return object;
}

} // namespace

QString ListedObject::name() const
{
    return data.name.isEmpty() ? u"unnamed object"_s : data.name;
}

QString ListedObject::name(const ListedSubIndex &sub) const
{
    return sub.data.name.isEmpty() && !hasEntries() ? name() : sub.data.name;
}

bool ListedObject::hasEntries() const
{
    return data.objecttype == CANopen::Array || data.objecttype == CANopen::Record;
}

ObjectListView ObjectListView::read(ObjectDataBase &store, quint8 line)
{
    ObjectListView view;
    const QList<quint16> indices = store.getIndexList(line, firstObject, lastObject);
    view.objects.reserve(indices.size());
    for (const quint16 index : indices)
        view.objects.append(readObject(store, line, index));
    return view;
}
