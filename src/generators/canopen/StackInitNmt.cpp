#include "generators/canopen/StackInitNmt.h"

#include "generators/CodeWriter.h"
#include "generators/canopen/StackInitContext.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int branchIndent = 2 * StackCalls::functionBody;

/** Starts one side of network management. */
struct Branch
{
    QStringView lssComment;
    QStringView lssFunction;
    QStringView nmtComment;
    QStringView nmtRole;

    void write(CodeWriter &out, const StackInitContext &context, int indent) const
    {
        const QString blanks(indent, u' ');
        const StackCalls calls = context.lineCalls();
        if (context.settings.hasLss) {
            out << blanks << lssComment << u"\n";
            calls.writeChecked(out, lssFunction, {}, indent);
        }
        out << blanks << nmtComment << u"\n";
        calls.writeChecked(out, u"coNmtInit", nmtRole.toString(), indent);
    }
};

constexpr Branch master{
    .lssComment = u"/* initialize LSS Master */",
    .lssFunction = u"coLssMasterInit",
    .nmtComment = u"/* initialize NMT master */ ",
    .nmtRole = u"1u",
};

constexpr Branch slave{
    .lssComment = u"/* initialize LSS Slave */",
    .lssFunction = u"coLssInit",
    .nmtComment = u"/* initialize NMT slave */ ",
    .nmtRole = u"0u",
};

void writeChoice(CodeWriter &out, const StackInitContext &context)
{
    static const TemplateText text(uR"(    /* Check dynamic options for master flag */
    if (pCoOptions->master == 1) {
$master$
    } else {
$slave$
    }
)"_s);
    const auto writeMaster = [&](CodeWriter &block) { master.write(block, context, branchIndent); };
    const auto writeSlave = [&](CodeWriter &block) { slave.write(block, context, branchIndent); };
    out.fill(text, {{u"master", writeMaster}, {u"slave", writeSlave}});
}

} // namespace

void writeNetworkManagementInit(CodeWriter &out, const StackInitLine &line)
{
    switch (line.settings.nmtRole) {
    case NmtRole::Slave:
        slave.write(out, line.context, StackCalls::functionBody);
        break;
    case NmtRole::Master:
        master.write(out, line.context, StackCalls::functionBody);
        break;
    case NmtRole::Dynamic:
        writeChoice(out, line.context);
        break;
    }
}
