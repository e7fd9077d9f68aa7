#pragma once

#include "generators/canopen/ObjectDictionaryView.h"
#include "generators/canopen/StackCalls.h"
#include "generators/canopen/StackInitSettings.h"

#include <QString>

class Dialect;

/** What the functions that start the stack are written from. */
struct StackInitContext
{
    const ObjectDictionaryView &view;
    const Dialect &dialect;
    StackInitSettings settings;
    QString commonInit; ///< definition of commonInitVars

    bool isMultiLine() const { return view.settings.isMultiLineForm(); }
    bool isCanFd() const { return view.settings.canFd; }
    /** The multi-line form starts what all protocols share, whatever the structure of the services is. */
    bool hasCommonInit() const { return view.settings.newInitStructure || isMultiLine(); }
    /** Calls of what serves all lines. */
    StackCalls calls() const { return {dialect, false}; }
    /** Calls of what serves one line, and in the multi-line form is told which. */
    StackCalls lineCalls() const { return {dialect, isMultiLine()}; }
};

/** A line and what its services are started from. */
struct StackInitLine
{
    const StackInitContext &context;
    quint8 number;
    const DictionaryLine &dictionary; ///< one without objects where the line has none
    StackInitSettings::Line settings;

    StackInitLine(const StackInitContext &stack, quint8 line);

    bool has(quint16 index) const { return dictionary.hasObject(index); }
    /** "od_const_u16[3]": the default of a sub-index; what is given where the line has no such number. */
    QString constant(quint16 index, quint8 sub, const QString &otherwise) const;
};
