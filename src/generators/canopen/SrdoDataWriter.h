#pragma once

#include "generators/canopen/SrdoView.h"

#include <QSet>

#include <set>

class CodeWriter;

/** Writes the blocks of gen_srdo.c that define data: SRDOs, variables, tables and their first values. */
class SrdoDataWriter
{
public:
    explicit SrdoDataWriter(const SrdoView &view) : m_view(view) { }

    /** Application headers, which declare the variables that are not defined here. */
    void writeIncludes(CodeWriter &out) const;
    void writeDataDefinition(CodeWriter &out) const;
    void writeVariables(CodeWriter &out) const;
    /** Tables for the object dictionary; nothing where it finds the variables without them. */
    void writeOdEntries(CodeWriter &out) const;
    /** Assignments of the default values. */
    void writeInit(CodeWriter &out) const;
    /** The choice of an SRDO by line and index. */
    void writeGetDataPtr(CodeWriter &out) const;
    /** One element per line of the project. */
    void writeLineList(CodeWriter &out, QStringView element) const;

private:
    /** Ascending. */
    std::set<quint8> linesOfVariables() const;
    void writeVariable(CodeWriter &out, const SrdoVariable &variable, QSet<QString> &known) const;
    void writeIndexSwitch(CodeWriter &out, const QList<Srdo> &srdos) const;

    const SrdoView &m_view;
};
