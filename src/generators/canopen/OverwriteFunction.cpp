#include "generators/canopen/OverwriteFunction.h"

#include "generators/CodeWriter.h"
#include "generators/canopen/StackInitContext.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView nodeIdMark{"$NODEID+"};

/** Services of one kind, whose objects hold their COB-IDs from sub-index 1 on. */
struct CobIdObjects
{
    quint16 first;
    quint16 last;
    quint8 cobIds;
    bool mayNameNode; ///< a COB-ID that counts from the node-ID is computed when the function runs
    QStringView comment;
    QStringView multiLineComment;
};

// CiA 301. The first SDO server always has the COB-IDs of the predefined connection set.
constexpr std::array<CobIdObjects, 4> cobIdObjects{{
    {0x1201, 0x127F, 2, false, u"SDO server COB IDs", u"SDO server COB IDs starting at 2nd SDO server"},
    {0x1280, 0x12FF, 2, false, u"SDO client COB IDs", u"SDO client COB IDs"},
    {0x1400, 0x15FF, 1, true, u"RxPDO COB IDs", u"RxPDO COB IDs"},
    {0x1800, 0x19FF, 1, true, u"TxPDO COB IDs", u"TxPDO COB IDs"},
}};

/** A COB-ID of the project. */
struct CobId
{
    quint16 index;
    quint8 sub;
    bool countsFromNode;
    CValues::Bits number; ///< the whole, or what is added to the node-ID
};

QList<CobId> cobIds(const DictionaryLine &line, const CobIdObjects &kind)
{
    QList<CobId> result;
    for (const DictionaryObject &object : line.objectRange(kind.first, kind.last))
        for (quint8 number = 1; number <= kind.cobIds; ++number) {
            const DictionarySubIndex *sub = object.subIndex(number);
            const bool namesNode = sub && sub->defaultValue.contains(nodeIdMark, Qt::CaseInsensitive);
            result.append({.index = object.index,
                           .sub = number,
                           .countsFromNode = kind.mayNameNode && namesNode,
                           .number = sub ? sub->defaultNumber() : 0});
        }
    return result;
}

/** Writes the function with one block of COB-IDs for each line. */
class OverwriteFunction
{
public:
    explicit OverwriteFunction(const StackInitContext &context);

    void write(CodeWriter &out) const;

private:
    bool needsAny(bool (*matches)(const CobId &cobId)) const;
    void writeVariables(CodeWriter &out) const;
    void writeLine(CodeWriter &out, const StackInitLine &line) const;
    void writeCobIds(CodeWriter &out, const StackInitLine &line) const;
    void writeCobId(CodeWriter &out, const CobId &cobId, quint8 line) const;

    /** The line as the first argument of a call. */
    QString lineArgument(quint8 line) const { return m_isMultiLine ? u"%1, "_s.arg(line) : QString(); }

    bool m_isMultiLine;
    QList<StackInitLine> m_lines; ///< that ask for the function
};

OverwriteFunction::OverwriteFunction(const StackInitContext &context) : m_isMultiLine(context.isMultiLine())
{
    const ObjectDictionaryView &view = context.view;
    const QList<quint8> lines = m_isMultiLine ? view.generatorLines : QList<quint8>{view.onlyLine()};
    for (const quint8 line : lines)
        if (context.settings.line(line).overwritesCobIds)
            m_lines.append(StackInitLine(context, line));
}

bool OverwriteFunction::needsAny(bool (*matches)(const CobId &cobId)) const
{
    return std::ranges::any_of(m_lines, [=](const StackInitLine &line) {
        return std::ranges::any_of(cobIdObjects, [&](const CobIdObjects &kind) {
            return std::ranges::any_of(cobIds(line.dictionary, kind), matches);
        });
    });
}

void OverwriteFunction::write(CodeWriter &out) const
{
    static const TemplateText function(uR"(#ifdef GEN_OVERWRITE_PREDEF_CONN_SET
/* Please be careful - this function overwrite the COB-Ids of the
* predefined connection set with values setting up by the VEX
* It can be passed as load indication function to coCanOpenStackInit()
*/
RET_T genLoadIndication($line$UNSIGNED8 subIndex)
{
	RET_T ret = RET_OK;
$variables$
$lines$
	return ret;
}
#endif /* GEN_OVERWRITE_PREDEF_CONN_SET */
)"_s);
    const auto variables = [this](CodeWriter &block) { writeVariables(block); };
    const auto lines = [this](CodeWriter &block) {
        for (const StackInitLine &line : m_lines)
            writeLine(block, line);
    };
    if (!m_lines.isEmpty())
        out.fill(function,
                 {{u"line", m_isMultiLine ? u"UNSIGNED8 canLine, " : u""},
                  {u"variables", variables},
                  {u"lines", lines}});
}

/** A variable that nothing uses would be a warning in C. */
void OverwriteFunction::writeVariables(CodeWriter &out) const
{
    if (needsAny([](const CobId &) { return true; }))
        out << u"\tUNSIGNED32 cobId = 0ul;\n";
    if (!needsAny([](const CobId &cobId) { return cobId.countsFromNode; }))
        return;
    if (m_isMultiLine)
        out << u"\tUNSIGNED8 nodeId = 0x00;\n";
    else
        out << u"\tUNSIGNED8 nodeId = coNmtGetNodeId();\n";
}

void OverwriteFunction::writeLine(CodeWriter &out, const StackInitLine &line) const
{
    static const TemplateText singleLine(uR"(	if ((subIndex == 1) || (subIndex == 2)) {
$cobIds$
	}
)"_s);
    static const TemplateText multiLine(
        uR"(	if (((subIndex == 1) || (subIndex == 2)) && (canLine ==$line$)) {
$node$
$cobIds$
	}
)"_s);
    const auto node = [&](CodeWriter &block) {
        if (needsAny([](const CobId &cobId) { return cobId.countsFromNode; }))
            block << u"\t\tnodeId = coNmtGetNodeId(" << line.number << u");\n";
    };
    const auto cobIdLines = [&](CodeWriter &block) { writeCobIds(block, line); };
    if (m_isMultiLine)
        out.fill(multiLine, {{u"line", line.number}, {u"node", node}, {u"cobIds", cobIdLines}});
    else
        out.fill(singleLine, {{u"cobIds", cobIdLines}});
}

void OverwriteFunction::writeCobIds(CodeWriter &out, const StackInitLine &line) const
{
    for (const CobIdObjects &kind : cobIdObjects) {
        out << u"\n\t\t/* " << (m_isMultiLine ? kind.multiLineComment : kind.comment) << u" */\n";
        const QList<CobId> list = cobIds(line.dictionary, kind);
        for (const CobId &cobId : list)
            writeCobId(out, cobId, line.number);
    }
}

void OverwriteFunction::writeCobId(CodeWriter &out, const CobId &cobId, quint8 line) const
{
    static const TemplateText computed(uR"(		cobId = $nodeId$0x$number$u;
		ret = coOdSetCobid($line$0x$index$, $sub$, cobId);
)"_s);
    static const TemplateText fixed(
        uR"(		ret = coOdGetDefaultVal_u32($line$0x$index$, $sub$, &cobId);
		if (ret == RET_OK) {
			ret = coOdSetCobid($line$0x$index$, $sub$, cobId);
		}
)"_s);
    constexpr int hexadecimal = 16;
    const QString index = u"%1"_s.arg(cobId.index, 4, hexadecimal, '0'_L1);
    const QString argument = lineArgument(line);
    if (cobId.countsFromNode)
        out.fill(computed,
                 {{u"nodeId", m_isMultiLine ? u"(UNSIGNED32)nodeId + (UNSIGNED32)" : u"nodeId + "},
                  {u"number", QString::number(cobId.number, hexadecimal)},
                  {u"line", argument},
                  {u"index", index},
                  {u"sub", cobId.sub}});
    else
        out.fill(fixed, {{u"line", argument}, {u"index", index}, {u"sub", cobId.sub}});
}

} // namespace

void writeOverwriteFunction(CodeWriter &out, const StackInitContext &context)
{
    OverwriteFunction(context).write(out);
}
