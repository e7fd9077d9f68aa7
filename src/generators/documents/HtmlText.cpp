#include "generators/documents/HtmlText.h"

#include "generators/documents/DocumentText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/** XML 1.0 knows no other control characters than tab and line breaks, and not the last two of the plane. */
bool isForbidden(QChar c)
{
    constexpr char16_t lastCharacters = 0xFFFE;
    return (c < u' ' && c != u'\t' && c != u'\n') || c.unicode() >= lastCharacters;
}

bool isSpecial(QChar c)
{
    return c == u'<' || c == u'>' || c == u'&' || c == u'"' || c == u'\n' || isForbidden(c);
}

} // namespace

QString HtmlText::escaped(const QString &text)
{
    if (std::none_of(text.begin(), text.end(), isSpecial))
        return text;
    return DocumentText::lines(text).removeIf(isForbidden).toHtmlEscaped().replace(u'\n', "<br />"_L1);
}

QString HtmlText::comment(const QString &text)
{
    QString result = QString(text).removeIf(isForbidden);
    while (result.contains("--"_L1))
        result.replace("--"_L1, "- -"_L1);
    return result;
}
