#pragma once

#include "generators/canopen/ObjectDictionaryView.h"

/** A value that functions of the application serve. */
struct VirtualVariable
{
    quint32 key = 0;
    QString name; ///< "V_2000_1": what it is called in C
};

/**
 * The second dictionary of a device, whose values lie where the stack cannot point to.
 *
 * Defaults and limits are those of gen_objdict.c: both files are read from the project in the same way.
 */
struct VirtualDictionaryView
{
    /** Rows and counts of virtual sub-indices; the others are there, but have no rows. */
    ObjectDictionaryView dictionary;
    /** A virtual number's place in its table is the value field of its row. Texts and data have none. */
    ByTable<VirtualVariable> variables;

    /** All virtual sub-indices of the project, whatever its setting for virtual objects says. */
    static VirtualDictionaryView read(ObjectDataBase &store, const ObjectDictionaryRequest &request);

    /** See ObjectDictionaryView::flaw. */
    QString flaw() const;
};
