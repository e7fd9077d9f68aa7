#include "generators/VirtualObjects.h"

#include "canopen/CANopenTypes.h"
#include "store/ObjectDataBase.h"

#include <algorithm>

using namespace Qt::StringLiterals;

bool hasVirtualObjects(ObjectDataBase &store, const QList<quint8> &lines)
{
    if (store.getGeneralSetting(u"special_virtual_objects"_s).toInt() == 0)
        return false;
    const QString virtualObject = QString::number(int(CANopen::VirtualObject));
    return std::any_of(lines.begin(), lines.end(), [&](quint8 line) {
        return !store.findSubIndices(line, u"implementation"_s, virtualObject, false).isEmpty();
    });
}
