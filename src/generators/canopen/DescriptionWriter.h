#pragma once

class CodeWriter;
class Dialect;
struct DictionaryLine;
struct DictionaryObject;
struct DictionarySubIndex;
struct ObjectDictionaryView;

/** Writes od_description, one row per sub-index, and od_assign, one row per object. */
class DescriptionWriter
{
public:
    DescriptionWriter(const ObjectDictionaryView &view, const Dialect &dialect)
        : m_view(view), m_dialect(dialect)
    {
    }

    /** The defines of the numbers of rows. */
    void writeCounts(CodeWriter &out) const;
    void writeDescriptions(CodeWriter &out) const;
    void writeAssignments(CodeWriter &out) const;

private:
    void writeDescription(CodeWriter &out, const DictionarySubIndex &sub) const;
    void writeAssignment(CodeWriter &out, const DictionaryObject &object) const;

    const ObjectDictionaryView &m_view;
    const Dialect &m_dialect;
};
