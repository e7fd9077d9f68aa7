// The start of the stack for several lines: all of them, or the ones that the application wants.

#include "generators/CodeWriter.h"
#include "generators/Dialect.h"
#include "generators/canopen/StackInitContext.h"
#include "generators/canopen/StackInitDictionary.h"
#include "generators/canopen/StackInitFunctions.h"
#include "generators/canopen/StackInitService.h"
#include "generators/canopen/StackInitVariables.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/** Writes the functions in the order of the file. */
class MultiLineInit
{
public:
    explicit MultiLineInit(const StackInitContext &context)
        : m_context(context), m_lines(context.view.generatorLines)
    {
    }

    void writeLineTable(CodeWriter &out) const;
    void writeCommonPrototype(CodeWriter &out) const;
    void writeAllLines(CodeWriter &out) const;
    void writeCommon(CodeWriter &out) const;
    void writeChosenLine(CodeWriter &out) const;
    void writeLines(CodeWriter &out) const;
    void writeFinish(CodeWriter &out) const;

private:
    bool isDynamic(quint8 line) const { return m_context.settings.line(line).nmtRole == NmtRole::Dynamic; }
    bool hasOptions() const
    {
        return std::ranges::any_of(m_lines, [this](quint8 line) { return isDynamic(line); });
    }
    /** What stands behind a parameter or argument on CAN FD. */
    QStringView ifFd(QStringView text) const { return m_context.isCanFd() ? text : u""; }

    void writeLineCalls(CodeWriter &out) const;
    void writeModes(CodeWriter &out) const;
    void writeLine(CodeWriter &out, quint8 line) const;

    const StackInitContext &m_context;
    const QList<quint8> &m_lines;
};

void MultiLineInit::writeLineTable(CodeWriter &out) const
{
    out << u"\nUNSIGNED8 canLineTable[CAN_LINE_ARRAY_DECL] = {";
    out.join(m_lines, u", ", [&](quint8 line) { out << line; });
    if (m_lines.isEmpty()) // C knows no empty list of values
        out << 0;
    out << u"};\n";
}

/** It is called before it is defined. */
void MultiLineInit::writeCommonPrototype(CodeWriter &out) const
{
    static const TemplateText prototype(
        u"RET_T coCanOpenStackInit_common(CO_EVENT_STORE_T pLoadFunction$modes$);\n\n"_s);
    out.fill(prototype, {{u"modes", ifFd(u", BOOL_T *pModes")}});
}

void MultiLineInit::writeAllLines(CodeWriter &out) const
{
    static const TemplateText function(uR"(RET_T $name$(
         CO_EVENT_STORE_T pLoadFunction$options$$modes$
    )
{
$noOptions$
    RET_T retVal;
    retVal = coCanOpenStackInit_common(pLoadFunction$modesArgument$);
$lines$
    retVal = coCanOpenStackInit_finish();
    return(retVal);
}
)"_s);
    const auto noOptions = [&](CodeWriter &block) {
        if (!m_lines.isEmpty())
            block << u"    CO_INIT_OPTION_T *pCoInitOpt = NULL;\n";
    };
    const auto lines = [&](CodeWriter &block) { writeLineCalls(block); };
    out.fill(function,
             {{u"name", hasOptions() ? u"coCanOpenStackInitPara" : u"coCanOpenStackInit"},
              {u"options", hasOptions() ? u",\n         CO_INIT_OPTION_T *pCoOptions" : u""},
              {u"modes", ifFd(u", BOOL_T *pModes")},
              {u"noOptions", noOptions},
              {u"modesArgument", ifFd(u", pModes")},
              {u"lines", lines}});
}

void MultiLineInit::writeLineCalls(CodeWriter &out) const
{
    static const TemplateText call(uR"(    if (retVal == RET_OK) {
$options$
        retVal = coCanOpenStackInit_line$line$($line$, pCoInitOpt$modes$);
    }
)"_s);
    for (const quint8 line : m_lines) {
        const auto options = [&](CodeWriter &block) {
            if (hasOptions())
                block << u"        pCoInitOpt = &pCoOptions[" << line << u"];\n";
        };
        out.fill(call, {{u"options", options}, {u"line", line}, {u"modes", ifFd(u", pModes")}});
    }
}

void MultiLineInit::writeCommon(CodeWriter &out) const
{
    static const DialectTemplate function(uR"(RET_T coCanOpenStackInit_common(
         CO_EVENT_STORE_T pLoadFunction$parameter$
    )
{
$counter$
    RET_T retVal = RET_OK;
$modes$
    /* common initialization */
    retVal = coreStackInit(&commonInitVars);
    if (retVal != RET_OK) {
        return (retVal);
    }
    /* multi-line initialization */
    retVal = coCanOpenStackVarInit(&serviceInitVars);
$load$
    return(retVal);
}
)"_s);
    const auto counter = [&](CodeWriter &block) {
        if (m_context.isCanFd())
            block << m_context.dialect.text(u"    CAN_LINE_TYPE    CAN_LINE;\n"_s);
    };
    const auto modes = [&](CodeWriter &block) { writeModes(block); };
    const auto load = [&](CodeWriter &block) { writeLoadFunction(block, m_context); };
    out.fill(function.in(m_context.dialect),
             {{u"parameter", ifFd(u", BOOL_T *pModes")},
              {u"counter", counter},
              {u"modes", modes},
              {u"load", load}});
}

void MultiLineInit::writeModes(CodeWriter &out) const
{
    static const DialectTemplate loop(uR"(    for (CAN_LINE = 0; CAN_LINE < CAN_MULTI_LINE_CNT; CAN_LINE ++)
    {
        commonInitVars.fdMode[CAN_LINE] = CO_TRUE;
        if (pModes != NULL) {
            commonInitVars.fdMode[CAN_LINE] = pModes[CAN_LINE];
        }
        serviceInitVars.fdMode[CAN_LINE] = CO_TRUE;
        if (pModes != NULL) {
            serviceInitVars.fdMode[CAN_LINE] = pModes[CAN_LINE];
        }
    }
)"_s);
    if (m_context.isCanFd())
        out.fill(loop.in(m_context.dialect));
}

void MultiLineInit::writeChosenLine(CodeWriter &out) const
{
    static const DialectTemplate function(uR"(RET_T coCanOpenStackInit_line(
    UNSIGNED8 canLine,
    CO_INIT_OPTION_T *pCoOptions$modes$
)
{
    RET_T retVal;
switch(canLine) {
$cases$
	default:
		retVal = RET_PARAMETER_INVALID;
	break;
    }
    return(retVal);
}
)"_s);
    static const TemplateText branch(uR"(	case $line$:
		retVal = coCanOpenStackInit_line$line$(canLine, pCoOptions$modes$);
		break;
)"_s);
    const auto cases = [&](CodeWriter &block) {
        for (const quint8 line : m_lines)
            block.fill(branch, {{u"line", line}, {u"modes", ifFd(u", pModes")}});
    };
    if (!m_lines.isEmpty())
        out.fill(function.in(m_context.dialect),
                 {{u"modes", ifFd(u",\n    BOOL_T *pModes")}, {u"cases", cases}});
}

void MultiLineInit::writeLines(CodeWriter &out) const
{
    for (const quint8 line : m_lines)
        writeLine(out, line);
}

void MultiLineInit::writeLine(CodeWriter &out, quint8 line) const
{
    static const TemplateText function(uR"(
/* ****************************************************************************************** */
/* Initialize line <<$line$>> */
RET_T coCanOpenStackInit_line$line$(
    UNSIGNED8 canLine,
    CO_INIT_OPTION_T *pCoOptions$modes$
)
{
    RET_T retVal;
$unused$
$services$
    return(RET_OK);
}
)"_s);
    const auto unused = [&](CodeWriter &block) {
        if (!isDynamic(line))
            block << u"    (void) pCoOptions; /* currently unused */\n\n";
    };
    const auto services = [&](CodeWriter &block) { writeStackServices(block, m_context, line); };
    out.fill(function,
             {{u"line", line},
              {u"modes", ifFd(u",\n    BOOL_T *pModes")},
              {u"unused", unused},
              {u"services", services}});
}

void MultiLineInit::writeFinish(CodeWriter &out) const
{
    static const TemplateText function(uR"(RET_T coCanOpenStackInit_finish(void)
{
$body$
    $unplaced$
    return(RET_OK);
}
)"_s);
    static const TemplateText empty(uR"(/*
* Currently this function is only required to initialize PDO Routing.
* Without it the function is empty, but may be used later for additional
* purposes.
*/
)"_s);
    static const DialectTemplate routing(uR"(    RET_T retVal;
    /* initialize PDO routing */ 
$call$
    CORE_HANDLE_WATCHDOG
)"_s);
    const auto call = [&](CodeWriter &block) {
        m_context.calls().writeChecked(block, u"coPdoNetworkRouting");
    };
    const auto body = [&](CodeWriter &block) {
        if (m_context.view.hasNetworkRouting)
            block.fill(routing.in(m_context.dialect), {{u"call", call}});
        else
            block.fill(empty);
    };
    const auto unplaced = [&](CodeWriter &block) {
        if (m_lines.isEmpty())
            writeUnplacedTables(block, m_context);
    };
    out.fill(function, {{u"body", body}, {u"unplaced", unplaced}});
}

} // namespace

void writeMultiLineInit(CodeWriter &out, const StackInitContext &context)
{
    const MultiLineInit init(context);
    init.writeLineTable(out);
    writeStackInitVariables(out, context);
    init.writeCommonPrototype(out);
    init.writeAllLines(out);
    init.writeCommon(out);
    init.writeChosenLine(out);
    init.writeLines(out);
    init.writeFinish(out);
}
