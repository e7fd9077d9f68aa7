#include "generators/VirtualObjects.h"

#include "canopen/CANopenTypes.h"
#include "store/ObjectDataBase.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr quint16 firstObject = 0x1000; // CiA 301: below are the data types

} // namespace

bool hasVirtualObjects(ObjectDataBase &store, const QList<quint8> &lines)
{
    if (store.getGeneralSetting(u"special_virtual_objects"_s).toInt() == 0)
        return false;
    const QString virtualObject = QString::number(int(CANopen::VirtualObject));
    const auto isOfObject = [](const ObjectDataBase::SubAddress &address) {
        return address.first >= firstObject;
    };
    return std::any_of(lines.begin(), lines.end(), [&](quint8 line) {
        const auto found = store.findSubIndices(line, u"implementation"_s, virtualObject, false);
        return std::any_of(found.begin(), found.end(), isOfObject);
    });
}
