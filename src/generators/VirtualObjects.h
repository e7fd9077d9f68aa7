#pragma once

#include <QList>

class ObjectDataBase;

/**
 * Whether some sub-index of the lines is served through virtual object callbacks. Without the project's
 * setting for special virtual objects ("special_virtual_objects") such entries do not count.
 */
bool hasVirtualObjects(ObjectDataBase &store, const QList<quint8> &lines);
