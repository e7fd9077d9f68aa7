#include "generators/canopen/MappingTableWriter.h"

#include "generators/CodeWriter.h"
#include "generators/Dialect.h"
#include "generators/canopen/ObjectDictionaryView.h"
#include "generators/canopen/TypeNames.h"

using namespace Qt::StringLiterals;

namespace {

/** Numbers by line as an initialiser, without blanks. */
QString lineList(const QList<int> &numbers)
{
    QString list(u'{');
    for (const int number : numbers) {
        if (list.size() > 1)
            list += u',';
        list += QString::number(number);
    }
    return list + u'}';
}

QString hexEntry(quint32 entry)
{
    return u"%1"_s.arg(entry, 8, 16, '0'_L1);
}

} // namespace

void MappingTableWriter::write(CodeWriter &out) const
{
    out << u"\n/* static PDO mapping tables */\n";
    for (const DictionaryLine &line : m_view.lines)
        for (const MappingTable &table : line.transmitTables)
            writeTransmitTable(out, table);
    for (const DictionaryLine &line : m_view.lines)
        for (const MappingTable &table : line.receiveTables)
            writeReceiveTable(out, table);
}

void MappingTableWriter::writeTransmitTable(CodeWriter &out, const MappingTable &table) const
{
    static const DialectTemplate definition(
        uR"(static CORE_CONST PDO_TR_MAP_TABLE_T CORE_CONST_STORAGE_CLASS	$name$ = {
	(UNSIGNED8)$count$u,
	{
$rows$
	}
};
)"_s);
    const auto rows = [&](CodeWriter &list) { writeRows(list, table, false); };
    out << u"/* Mapping table TPDO " << table.number << u" */\n";
    if (!table.rows.isEmpty())
        out.fill(definition.in(m_dialect), {{u"name", table.name}, {u"count", table.count}, {u"rows", rows}});
}

void MappingTableWriter::writeReceiveTable(CodeWriter &out, const MappingTable &table) const
{
    static const DialectTemplate definition(
        uR"(static CORE_CONST PDO_REC_MAP_TABLE_T CORE_CONST_STORAGE_CLASS	$name$ = {
	(UNSIGNED8)$count$u,
	{
$rows$
	}
};
)"_s);
    const bool isRouted = m_view.hasNetworkRouting;
    const auto rows = [&](CodeWriter &list) { writeRows(list, table, isRouted); };
    if (isRouted)
        out << u"/* Mapping table RPDO " << table.number << u" */\n";
    else
        out << u"/* unique rpdo defintion */\n";
    if (!table.rows.isEmpty())
        out.fill(definition.in(m_dialect), {{u"name", table.name}, {u"count", table.count}, {u"rows", rows}});
}

void MappingTableWriter::writeRows(CodeWriter &out, const MappingTable &table, bool isRouted) const
{
    for (const MappingRow &row : table.rows)
        writeRow(out, row, isRouted);
    for (qsizetype i = table.rows.size(); i < m_view.mappingRows; ++i) {
        if (i > table.rows.size())
            out << u",\n";
        writeFiller(out, isRouted);
    }
}

void MappingTableWriter::writeRow(CodeWriter &out, const MappingRow &row, bool isRouted) const
{
    static const TemplateText columns(u"\t\t{$address$, $length$u, $type$, 0x$entry$UL$routing$ },\n"_s);
    out.fill(columns,
             {{u"address", row.address},
              {u"length", row.length},
              {u"type", typeMacro(row.dataType, m_dialect)},
              {u"entry", hexEntry(row.entry)},
              {u"routing", isRouted ? QString(u", "_s + lineList(row.routing)) : QString()}});
}

void MappingTableWriter::writeFiller(CodeWriter &out, bool isRouted) const
{
    static const DialectTemplate columns(
        u"\t\t{NULL, (UNSIGNED8)0u, CORE_DTYPE_NON_NUMERIC, 0ul$routing$}"_s);
    const QString nowhere = lineList(QList<int>(m_view.projectLines.size(), 0));
    out.fill(columns.in(m_dialect), {{u"routing", isRouted ? QString(u',' + nowhere) : QString()}});
}
