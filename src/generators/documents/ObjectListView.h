#pragma once

#include "store/ProjectRecords.h"

#include <QList>

class ObjectDataBase;

/** A sub-index of a document. */
struct ListedSubIndex
{
    quint8 number = 0;
    ProjectRecords::SubIndexData data;
};

/** An object of a document with all its sub-indices, ascending. */
struct ListedObject
{
    quint16 index = 0;
    ProjectRecords::IndexData data;
    QList<ListedSubIndex> subIndices;

    /** As stored; "unnamed object" where nothing is. */
    QString name() const;
    /**
     * As stored. The value of an object that has no more than one bears the object's name where it has
     * none of its own.
     */
    QString name(const ListedSubIndex &sub) const;
    /** An object of several values: an ARRAY or RECORD of CiA 301. */
    bool hasEntries() const;
};

/** The object dictionary of a line, from 0x1000 up, as documents list it. */
struct ObjectListView
{
    QList<ListedObject> objects; ///< ascending

    static ObjectListView read(ObjectDataBase &store, quint8 line);
};
