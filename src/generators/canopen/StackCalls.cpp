#include "generators/canopen/StackCalls.h"

#include "generators/CodeWriter.h"
#include "generators/Dialect.h"

using namespace Qt::StringLiterals;

QString StackCalls::arguments(const QString &others) const
{
    if (!m_isMultiLine)
        return others;
    return others.isEmpty() ? u"canLine"_s : u"canLine, "_s + others;
}

void StackCalls::writeChecked(CodeWriter &out, QStringView function, const QString &others, int indent) const
{
    static const TemplateText call(u"$indent$retVal = $function$($arguments$);\n"_s);
    out.fill(
        call,
        {{u"indent", QString(indent, u' ')}, {u"function", function}, {u"arguments", arguments(others)}});
    writeCheck(out, indent);
}

void StackCalls::writeCheck(CodeWriter &out, int indent) const
{
    static const DialectTemplate check(uR"($indent$if (retVal != RET_OK) {
$indent$    return(retVal);
$indent$}
$indent$CORE_HANDLE_WATCHDOG
)"_s);
    out.fill(check.in(m_dialect), {{u"indent", QString(indent, u' ')}});
}
