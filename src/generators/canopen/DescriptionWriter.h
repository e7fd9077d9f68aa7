#pragma once

class CodeWriter;
class Dialect;
struct DictionaryLine;
struct DictionaryObject;
struct DictionarySubIndex;
struct ObjectDictionaryView;

/** Which of the two dictionaries of a device a view tells of. */
enum class DictionaryKind {
    Addressable, ///< od_assign, od_description: the stack reaches the values by itself
    Virtual, ///< vod_assign, vod_description: functions of the application do
};

/** Writes the descriptions of a dictionary, one row per sub-index, and its assignments, one per object. */
class DescriptionWriter
{
public:
    DescriptionWriter(const ObjectDictionaryView &view, const Dialect &dialect,
                      DictionaryKind kind = DictionaryKind::Addressable)
        : m_view(view), m_dialect(dialect), m_kind(kind)
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
    DictionaryKind m_kind;
};
