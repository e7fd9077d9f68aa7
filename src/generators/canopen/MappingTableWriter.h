#pragma once

class CodeWriter;
class Dialect;
struct DictionaryLine;
struct MappingRow;
struct MappingTable;
struct ObjectDictionaryView;

/** Writes the mapping tables of PDOs whose mapping is fixed. */
class MappingTableWriter
{
public:
    MappingTableWriter(const ObjectDictionaryView &view, const Dialect &dialect)
        : m_view(view), m_dialect(dialect)
    {
    }

    void write(CodeWriter &out) const;

private:
    void writeTransmitTable(CodeWriter &out, const MappingTable &table) const;
    void writeReceiveTable(CodeWriter &out, const MappingTable &table) const;
    void writeRows(CodeWriter &out, const MappingTable &table, bool isRouted) const;
    void writeRow(CodeWriter &out, const MappingRow &row, bool isRouted) const;
    void writeFiller(CodeWriter &out, bool isRouted) const;

    const ObjectDictionaryView &m_view;
    const Dialect &m_dialect;
};
