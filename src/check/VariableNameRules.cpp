// Two sub-indices of a line share an application variable only by mistake.

#include "canopen/CANopenTypes.h"
#include "check/LineCheck.h"
#include "check/LineRules.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView nameUsedTwice{
    "<strong>Warning: </strong>Object 0x%1-0x%2: Variable name '%3' is already used by object 0x%4-0x%5."};

/** The first sub-index of each variable name. */
using Owners = QHash<QString, const SubIndexEntry *>;

void checkVariableName(const LineCheck &check, Owners &owners, const SubIndexEntry &user)
{
    const QString name = user.variableName.trimmed();
    if (user.implementation != CANopen::ApplicationVariable || name.isEmpty())
        return;
    const SubIndexEntry *&owner = owners[name];
    if (owner)
        check.findings.note(nameUsedTwice.arg(indexText(user.index), subIndexText(user.subIndex),
                                              name.toHtmlEscaped(), indexText(owner->index),
                                              subIndexText(owner->subIndex)),
                            check.at(user.index, user.subIndex));
    else
        owner = &user;
}

} // namespace

void checkVariableNames(LineCheck &check)
{
    Owners owners;
    for (const SubIndexEntry &entry : check.entries())
        checkVariableName(check, owners, entry);
}
