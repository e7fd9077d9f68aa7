#pragma once

#include <QSet>

class LineObjects;
class ObjectDataBase;
class SettingValues;
struct DefineLine;

/** What the numbers of a line are read from. */
struct DefineLineSources
{
    ObjectDataBase &store;
    const SettingValues &general;
    const SettingValues &j1939;
    const LineObjects &objects;
    const QSet<quint16> &assigned; ///< objects that have a row in the object dictionary's assignment table
};

DefineLine readDefineLine(const DefineLineSources &sources, quint8 line, int type);

/**
 * Objects of a line that have a row in the assignment table: those with a sub-index 0 that is not served
 * by callbacks. One that is shared by all lines takes the rows of line 0, so it has to be among those.
 */
QSet<quint16> assignedObjects(ObjectDataBase &store, quint8 line, const LineObjects &objects,
                              const QSet<quint16> &ofLine0);
