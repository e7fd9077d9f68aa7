// Two sub-indices of a line share an application variable only by mistake.

#include "canopen/CANopenTypes.h"
#include "check/LineCheck.h"
#include "check/LineRules.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView nameUsedTwice{
    "<strong>Warning: </strong>Object 0x%1-0x%2: Variable name '%3' is already used by object 0x%4-0x%5."};

/** A variable in a set of variable names. */
struct Name
{
    const VariableUse *use;
    size_t hash; ///< here as well: most look-ups end without a look at the variable

    bool operator==(const Name &other) const { return hash == other.hash && use->name == other.use->name; }
    friend size_t qHash(const Name &name, size_t /*seed*/ = 0) { return name.hash; }
};

/** The first use of each variable name. */
using Owners = QSet<Name>;

void checkVariableName(const LineCheck &check, Owners &owners, const VariableUse &use)
{
    const SubIndexEntry &user = check.entries()[use.entry];
    if (user.implementation != CANopen::ApplicationVariable) // corrected meanwhile
        return;
    const qsizetype known = owners.size();
    const auto name = owners.insert({.use = &use, .hash = use.hash});
    if (owners.size() > known)
        return;
    const SubIndexEntry &owner = check.entries()[name->use->entry];
    check.findings.note(nameUsedTwice.arg(indexText(user.index), subIndexText(user.subIndex),
                                          use.name.toHtmlEscaped(), indexText(owner.index),
                                          subIndexText(owner.subIndex)),
                        check.at(user.index, user.subIndex));
}

} // namespace

void checkVariableNames(LineCheck &check)
{
    Owners owners;
    owners.reserve(qsizetype(check.variables().size()));
    for (const VariableUse &use : check.variables())
        checkVariableName(check, owners, use);
}
