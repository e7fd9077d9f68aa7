#include "generators/canopen/StackInitVariables.h"

#include "generators/CodeWriter.h"
#include "generators/canopen/InitStructVersions.h"
#include "generators/canopen/StackInitContext.h"

#include <algorithm>

using namespace Qt::StringLiterals;

void writeStackInitVariables(CodeWriter &out, const StackInitContext &context)
{
    static const TemplateText variables(uR"(/* CANopen service initialization variables */
CO_SERVICE_INIT_VAL_T	serviceInitVars = {
$version$
   { CO_OBJECT_COUNTS },
   { CO_TXPDO_COUNTS },
   { CO_RXPDO_COUNTS },
#ifdef CO_SRDO_SUPPORTED
   { CO_SRDO_COUNTS },
#endif /* CO_SRDO_SUPPORTED */
   { CO_SSDO_COUNTS },
   { CO_CSDO_COUNTS },
#ifdef CO_USDO_SERVER_MAX_CONN_CNT
   { CO_USDO_SERVER_MAX_CONN_COUNTS },
#endif /* CO_USDO_SERVER_MAX_CONN_CNT */
#ifdef CO_USDO_CLIENT_MAX_CONN_CNT
   { CO_USDO_CLIENT_MAX_CONN_COUNTS },
#endif /* CO_USDO_CLIENT_MAX_CONN_CNT */
   { CO_ERR_CTRL_COUNTS },
   { CO_ERR_HIST_COUNTS },
   { CO_ACT_ERR_HIST_COUNTS },
   { CO_EMCY_CONS_COUNTS },
#ifdef CO_NETWORK_ROUTING_CNT
   { CO_NETWORK_ROUTING_COUNTS }, 
#endif /* CO_NETWORK_ROUTING_CNT */
   { CO_ASSIGN_COUNTS },
   { CO_GUARDING_COUNTS },
   { CO_NODE_IDS }, 
$lastMembers$
};

)"_s);
    static const TemplateText modes(uR"(   { CO_NODE_ID_FUNCTIONS }, 
   { $modes$ }
)"_s);
    const auto version = [&](CodeWriter &block) {
        if (context.view.settings.newInitStructure)
            block << u"   " << InitStructVersions::canopen << u"u,\n";
    };
    const auto lastMembers = [&](CodeWriter &block) {
        const auto lines = std::max<qsizetype>(context.view.projectLines.size(), 1);
        if (context.isCanFd())
            block.fill(modes, {{u"modes", QStringList(lines, u"CO_TRUE"_s).join(u", "_s)}});
        else
            block << u"   { CO_NODE_ID_FUNCTIONS } \n";
    };
    if (context.hasCommonInit())
        out << context.commonInit;
    out.fill(variables, {{u"version", version}, {u"lastMembers", lastMembers}});
}
