#pragma once

#include "generators/CValues.h"

#include <QStringView>

class CodeWriter;
class Dialect;
struct ObjectDictionaryView;
struct TextTableForm;

/** Writes the typed value tables: managed variables, constants and pointers to variables of the application.
 */
class ValueTableWriter
{
public:
    ValueTableWriter(const ObjectDictionaryView &view, const Dialect &dialect)
        : m_view(view), m_dialect(dialect)
    {
    }

    void writeManagedVariables(CodeWriter &out) const;
    void writeConstants(CodeWriter &out) const;
    void writeApplicationVariables(CodeWriter &out) const;

private:
    void writeManagedTable(CodeWriter &out, CValues::Table table) const;
    void writeInitialisers(CodeWriter &out, CValues::Table table) const;
    void writeConstantTable(CodeWriter &out, CValues::Table table) const;
    void writeConstantTexts(CodeWriter &out, CValues::Table table, QStringView type) const;
    void writePointerTable(CodeWriter &out, CValues::Table table) const;
    void writeTextTables(CodeWriter &out, const TextTableForm &form) const;

    const ObjectDictionaryView &m_view;
    const Dialect &m_dialect;
};
