// The start of the stack for one line.

#include "generators/CodeWriter.h"
#include "generators/Dialect.h"
#include "generators/canopen/StackInitContext.h"
#include "generators/canopen/StackInitFunctions.h"
#include "generators/canopen/StackInitService.h"
#include "generators/canopen/StackInitVariables.h"

using namespace Qt::StringLiterals;

namespace {

void writeHead(CodeWriter &out, const StackInitContext &context)
{
    static const TemplateText head(uR"(RET_T $name$(
         CO_EVENT_STORE_T pLoadFunction$options$$modes$
    )
)"_s);
    const bool isDynamic = context.settings.line(context.view.onlyLine()).nmtRole == NmtRole::Dynamic;
    out.fill(head,
             {{u"name", isDynamic ? u"coCanOpenStackInitPara" : u"coCanOpenStackInit"},
              {u"options", isDynamic ? u",\n         CO_INIT_OPTION_T *pCoOptions" : u""},
              {u"modes", context.isCanFd() ? u",\n         BOOL_T *pModes" : u""}});
}

/** The modes are kept where the stack reads them: with an older stack in the structure of the services only.
 */
void writeModes(CodeWriter &out, const StackInitContext &context)
{
    static const TemplateText modes(uR"(    if (pModes != NULL) {
        $common$
        serviceInitVars.fdMode[0] = pModes[0];
    }
)"_s);
    const auto common = [&](CodeWriter &block) {
        if (context.hasCommonInit())
            block << u"commonInitVars.fdMode[0] = pModes[0];\n";
    };
    if (context.isCanFd())
        out.fill(modes, {{u"common", common}});
}

void writeCommonInit(CodeWriter &out, const StackInitContext &context)
{
    if (!context.hasCommonInit())
        return;
    out << u"    /* common initialization */\n";
    context.calls().writeChecked(out, context.dialect.text(u"coreStackInit"_s), u"&commonInitVars"_s);
}

} // namespace

void writeSingleLineInit(CodeWriter &out, const StackInitContext &context)
{
    static const TemplateText function(uR"($variables$
$head$
{
    RET_T retVal;


$modes$
$commonInit$
    /* variable initialization */
$variableInit$
$services$
    return(RET_OK);
}
)"_s);
    const auto variables = [&](CodeWriter &block) { writeStackInitVariables(block, context); };
    const auto head = [&](CodeWriter &block) { writeHead(block, context); };
    const auto modes = [&](CodeWriter &block) { writeModes(block, context); };
    const auto commonInit = [&](CodeWriter &block) { writeCommonInit(block, context); };
    const auto variableInit = [&](CodeWriter &block) {
        context.calls().writeChecked(block, u"coCanOpenStackVarInit", u"&serviceInitVars"_s);
    };
    const auto services = [&](CodeWriter &block) {
        writeStackServices(block, context, context.view.onlyLine());
    };
    out.fill(function,
             {{u"variables", variables},
              {u"head", head},
              {u"modes", modes},
              {u"commonInit", commonInit},
              {u"variableInit", variableInit},
              {u"services", services}});
}
