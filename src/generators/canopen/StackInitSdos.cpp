#include "generators/canopen/StackInitSdos.h"

#include "generators/CodeWriter.h"
#include "generators/canopen/StackInitContext.h"

using namespace Qt::StringLiterals;

namespace {

/** CiA 301: the objects of the servers or clients of a line; the first has the number 1. */
struct SdoObjects
{
    quint16 first;
    quint16 last;

    int number(quint16 index) const { return index - first + 1; }
};

constexpr SdoObjects servers{0x1200, 0x127F};
constexpr SdoObjects clients{0x1280, 0x12FF};

QString numberArgument(int number)
{
    return u"%1u"_s.arg(number);
}

/** The structure that knows at run time whether line 0 runs CAN FD. */
QString modeStructure(const StackInitContext &context)
{
    return context.hasCommonInit() ? u"commonInitVars"_s : u"serviceInitVars"_s;
}

void beginFd(CodeWriter &out, const StackInitContext &context)
{
    static const TemplateText singleLine(u"    if ($structure$.fdMode[0] == CO_TRUE) {\n"_s);
    static const TemplateText multiLine(uR"(    if (pModes != NULL) {
    if (pModes[canLine] == CO_TRUE) {
)"_s);
    if (context.isMultiLine())
        out.fill(multiLine);
    else
        out.fill(singleLine, {{u"structure", modeStructure(context)}});
}

void endFd(CodeWriter &out, const StackInitContext &context)
{
    out << u"    }\n";
    if (context.isMultiLine())
        out << u"    }\n";
}

} // namespace

void writeSdoServerInit(CodeWriter &out, const StackInitLine &line)
{
    const StackCalls calls = line.context.lineCalls();
    out << u"    /* initialize sdo server(s) */\n";
    calls.writeChecked(out, u"coSdoServerInit", numberArgument(1));
    for (const DictionaryObject &server : line.dictionary.objectRange(servers.first + 1, servers.last))
        calls.writeChecked(out, u"coSdoServerInit", numberArgument(servers.number(server.index)));
}

void writeFdServerInit(CodeWriter &out, const StackInitLine &line)
{
    static const TemplateText text(uR"(    /* initialize (u)sdo server(s) */
$begin$
$usdo$
#ifdef CO_SDO_SERVER_CNT
    } else {
$sdo$
#endif /* CO_SDO_SERVER_CNT */
$end$
)"_s);
    constexpr int usdoIndent = 7;
    constexpr int sdoIndent = 8;
    const StackCalls calls = line.context.lineCalls();
    const auto begin = [&](CodeWriter &block) { beginFd(block, line.context); };
    const auto usdo = [&](CodeWriter &block) {
        calls.writeChecked(block, u"coUsdoServerInit", {}, usdoIndent);
    };
    const auto sdo = [&](CodeWriter &block) {
        calls.writeChecked(block, u"coSdoServerInit", u"1"_s, sdoIndent);
    };
    const auto end = [&](CodeWriter &block) { endFd(block, line.context); };
    out.fill(text, {{u"begin", begin}, {u"usdo", usdo}, {u"sdo", sdo}, {u"end", end}});
}

void writeUsdoClientInit(CodeWriter &out, const StackInitLine &line)
{
    constexpr int usdoIndent = 9;
    out << u"    /* initialize (u)sdo clients(s) */\n";
    beginFd(out, line.context);
    line.context.lineCalls().writeChecked(out, u"coUsdoClientInit", {}, usdoIndent);
    endFd(out, line.context);
}

void writeSdoClientInit(CodeWriter &out, const StackInitLine &line)
{
    const StackCalls calls = line.context.lineCalls();
    out << u"    /* initialize sdo clients(s) */\n";
    for (const DictionaryObject &client : line.dictionary.objectRange(clients.first, clients.last))
        calls.writeChecked(out, u"coSdoClientInit", numberArgument(clients.number(client.index)));
}
