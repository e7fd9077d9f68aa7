#include "generators/documents/HtmlText.h"

#include "generators/documents/DocumentText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr char16_t lastMark = u'>'; // all marks of HTML stand before the letters
constexpr char16_t firstNonCharacter = 0xFFFE;

/** XML 1.0 knows no other control characters than tab and line breaks, and not the end of the plane. */
bool isForbidden(QChar c)
{
    return (c < u' ' && c != u'\t' && c != u'\n') || c.unicode() >= firstNonCharacter;
}

bool isSpecial(QChar c)
{
    if (c.unicode() > lastMark && c.unicode() < firstNonCharacter)
        return false;
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
