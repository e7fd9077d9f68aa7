#include "forms/output/TextSearch.h"

namespace {

bool isWordCharacter(const QString &text, qsizetype at)
{
    return at >= 0 && at < text.size() && (text.at(at).isLetterOrNumber() || text.at(at) == u'_');
}

} // namespace

qsizetype TextSearch::indexIn(const QString &where, qsizetype from) const
{
    if (text.isEmpty())
        return -1;
    qsizetype at = where.indexOf(text, from, cases);
    while (wholeWords && at >= 0
           && (isWordCharacter(where, at - 1) || isWordCharacter(where, at + text.size())))
        at = where.indexOf(text, at + 1, cases);
    return at;
}
