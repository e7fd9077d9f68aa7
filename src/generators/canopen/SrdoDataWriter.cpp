#include "generators/canopen/SrdoDataWriter.h"

#include "generators/CodeWriter.h"
#include "generators/ObjectKey.h"
#include "generators/TemplateText.h"

using namespace Qt::StringLiterals;

namespace {

QString hexIndex(quint16 index)
{
    return u"%1"_s.arg(index, 4, 16, '0'_L1);
}

void writeSrdoInit(CodeWriter &out, const Srdo &srdo)
{
    static const TemplateText assignments(uR"(	srdo$id$.direction = $direction$u;
	srdo$id$.refreshTime = $refreshTime$u;
	srdo$id$.srvt = $srvt$u;
	srdo$id$.transType = 254u;
	srdo$id$.cobId1 = $cobId1$;
	srdo$id$.cobId2 = $cobId2$;
	srdo$id$.mapCnt = $mapCnt$u;
	srdo$id$.mapLen = $mapLen$u;
	srdo$id$.dataValid = CO_SRDO_DATA_UNKNOWN;
	srdo$id$.maxMapCnt = $maxMapCnt$u;
	srdo$id$.mapTable = &mapTable$id$[0];
	srdo$id$.signature = 0x$signature$u;
#ifdef CORE_CAN_TIMESTAMP_SUPPORTED
	srdo$id$.timeStamp = 0u;
#endif /* CORE_CAN_TIMESTAMP_SUPPORTED */
)"_s);
    out.fill(assignments,
             {{u"id", srdo.id},
              {u"direction", srdo.direction},
              {u"refreshTime", srdo.refreshTime},
              {u"srvt", srdo.validationTime},
              {u"cobId1", srdo.cobId1},
              {u"cobId2", srdo.cobId2},
              {u"mapCnt", srdo.mapCnt},
              {u"mapLen", srdo.mapLen},
              {u"maxMapCnt", srdo.mapTable.size()},
              {u"signature", hexIndex(quint16(srdo.signature))}});
}

} // namespace

void SrdoDataWriter::writeIncludes(CodeWriter &out) const
{
    if (m_view.applicationHeaders.isEmpty())
        return;
    out << u"\n/* application header file(s) */\n";
    for (const QString &name : m_view.applicationHeaders)
        out << u"#include \"" << name << u"\"\n";
}

void SrdoDataWriter::writeDataDefinition(CodeWriter &out) const
{
    for (const SrdoLine &line : m_view.lines)
        for (const Srdo &srdo : line.srdos) {
            // C has no tables without an element.
            const QList<quint32> entries = srdo.mapTable.isEmpty() ? QList<quint32>{0} : srdo.mapTable;
            out << u"static CO_SRDO_DATA_T\tsrdo" << srdo.id << u";\n";
            out << u"static const UNSIGNED32\tmapTable" << srdo.id << u"[" << entries.size() << u"] = {\n";
            for (const quint32 entry : entries)
                out << u"\t0x%1u,\n"_s.arg(entry, 8, 16, '0'_L1);
            out << u"};\n";
        }
}

std::set<quint8> SrdoDataWriter::linesOfVariables() const
{
    std::set<quint8> lines;
    for (const SrdoLine &line : m_view.lines)
        lines.insert(line.number);
    for (const SrdoVariable &variable : m_view.variables)
        lines.insert(ObjectKey::line(variable.key));
    return lines;
}

void SrdoDataWriter::writeVariables(CodeWriter &out) const
{
    QSet<QString> known;
    const std::set<quint8> lines = linesOfVariables();
    for (const quint8 line : lines) {
        out << u"/* line %1 */\n"_s.arg(line);
        for (const SrdoVariable &variable : m_view.variables)
            if (ObjectKey::line(variable.key) == line)
                writeVariable(out, variable, known);
    }
}

/** One variable may stand for several objects; it is defined once. */
void SrdoDataWriter::writeVariable(CodeWriter &out, const SrdoVariable &variable, QSet<QString> &known) const
{
    const QString place =
        hexIndex(ObjectKey::index(variable.key)) + u":%1 */\n"_s.arg(ObjectKey::subIndex(variable.key));
    const QStringView type = CValues::form(variable.form->table).type;
    if (variable.isDeclared && !known.contains(variable.name))
        out << u"static " << type << u" " << variable.name << u"; /* 0x" << place;
    known.insert(variable.name);
    if (variable.temporary.isEmpty() || known.contains(variable.temporary))
        return;
    known.insert(variable.temporary);
    const bool keepsBits = variable.form->kind == SrdoValueForm::Kind::Real;
    out << u"static " << (keepsBits ? variable.form->word : type) << u" ";
    out << variable.temporary << u"; /* 0x" << place;
}

void SrdoDataWriter::writeOdEntries(CodeWriter &out) const
{
    static const TemplateText head(
        u"static const SRDO_OD_ENTRY_$name$_T\todEntry_$name$[SRDO_OD_ENTRY_$name$_CNT] = {\n"_s);
    for (const CValues::Table table : SrdoView::odEntryTables) {
        const QList<SrdoOdEntry> &entries = m_view.odEntries[table];
        if (entries.isEmpty())
            continue;
        out.fill(head, {{u"name", CValues::form(table).name.toString().toUpper()}});
        for (const SrdoOdEntry &entry : entries) {
            out << u"\t{ ";
            if (m_view.isMultiLineForm)
                out << entry.line << u"u, ";
            out << u"0x" << hexIndex(entry.index) << u"u, " << entry.subIndex << u"u, " << entry.address
                << u" },\n";
        }
        out << u"};\n";
    }
}

void SrdoDataWriter::writeInit(CodeWriter &out) const
{
    for (const SrdoLine &line : m_view.lines) {
        if (m_view.isMultiLineForm)
            out << u"\tif (canLine == " << line.number << u"u) {\n";
        for (const Srdo &srdo : line.srdos)
            writeSrdoInit(out, srdo);
        if (m_view.isMultiLineForm)
            out << u"\t}\n";
    }
    if (!m_view.usesNodeId())
        out << u"\t(void)ownNodeId;\n";
}

void SrdoDataWriter::writeGetDataPtr(CodeWriter &out) const
{
    if (!m_view.isMultiLineForm) {
        writeIndexSwitch(out, m_view.lines.isEmpty() ? QList<Srdo>() : m_view.lines.first().srdos);
        return;
    }
    out << u"\tswitch(canLine) {\n";
    for (const SrdoLine &line : m_view.lines) {
        out << u"\t\tcase " << line.number << u"u:\n";
        writeIndexSwitch(out, line.srdos);
        out << u"\t\tbreak;\n";
    }
    out << u"\t\tdefault:\n\t\tpSrdo = NULL;\n\t\tbreak;\n\t}\n";
}

void SrdoDataWriter::writeIndexSwitch(CodeWriter &out, const QList<Srdo> &srdos) const
{
    out << u"\tswitch(index) {\n";
    for (const Srdo &srdo : srdos) {
        out << u"\t\t\tcase 0x" << hexIndex(srdo.index) << u"u:\n";
        out << u"\t\t\tpSrdo = &srdo" << srdo.id << u";\n" << u"\t\t\tbreak;\n";
    }
    out << u"\t\t\tdefault:\n" << u"\t\t\tpSrdo = NULL;\n\t\t\tbreak;\n\t}\n";
}

void SrdoDataWriter::writeLineList(CodeWriter &out, QStringView element) const
{
    for (qsizetype i = 0; i < m_view.lineCount; ++i)
        out << (i > 0 ? u" " : u"") << element;
}
