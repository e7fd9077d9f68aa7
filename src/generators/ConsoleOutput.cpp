#include "generators/ConsoleOutput.h"

#include <QStringList>
#include <QStringView>

#include <algorithm>

namespace {

constexpr QStringView formattingTags[] = {
    u"a",  u"b",  u"body", u"code", u"div",  u"em",    u"font",   u"h1",  u"h2",  u"h3", u"hr", u"html", u"i",
    u"li", u"ol", u"pre",  u"s",    u"span", u"small", u"strong", u"sub", u"sup", u"tt", u"u",  u"ul"};
constexpr QStringView breakingTags[] = {u"br", u"p"};

struct Entity
{
    QStringView name;
    QChar character;
};

constexpr Entity entities[] = {
    {u"amp", u'&'}, {u"lt", u'<'}, {u"gt", u'>'}, {u"quot", u'"'}, {u"apos", u'\''}, {u"nbsp", u' '},
};
constexpr qsizetype longestEntity = 8; // "#1114111"
constexpr uint decimal = 10;
constexpr uint hexadecimal = 16;

template <typename List>
bool contains(const List &tags, QStringView name)
{
    return std::any_of(std::begin(tags), std::end(tags),
                       [name](QStringView tag) { return tag.compare(name, Qt::CaseInsensitive) == 0; });
}

struct Piece
{
    QString text;
    qsizetype length = 0; ///< in the source; 0 where the source holds no such piece
};

/** The tag at the start of the text. */
Piece tag(QStringView text)
{
    const qsizetype close = text.indexOf(u'>');
    if (close < 0)
        return {};
    QStringView inside = text.sliced(1, close - 1);
    if (inside.startsWith(u'/'))
        inside = inside.sliced(1);
    const auto *const end =
        std::find_if_not(inside.begin(), inside.end(), [](QChar c) { return c.isLetterOrNumber(); });
    const QStringView name = inside.first(end - inside.begin());
    const bool ends =
        name.size() == inside.size() || inside[name.size()].isSpace() || inside.sliced(name.size()) == u"/";
    if (!ends)
        return {};
    if (contains(breakingTags, name))
        return {QStringLiteral("\n"), close + 1};
    return {QString(), contains(formattingTags, name) ? close + 1 : 0};
}

QString numericEntity(QStringView name)
{
    const bool isHexadecimal = name.startsWith(u'x', Qt::CaseInsensitive);
    bool ok = false;
    const char32_t code =
        name.sliced(isHexadecimal ? 1 : 0).toUInt(&ok, isHexadecimal ? hexadecimal : decimal);
    return ok && code != 0 && code <= QChar::LastValidCodePoint ? QString::fromUcs4(&code, 1) : QString();
}

/** The entity at the start of the text. */
Piece entity(QStringView text)
{
    const qsizetype end = text.first(std::min(text.size(), longestEntity + 2)).indexOf(u';');
    if (end < 2)
        return {};
    const QStringView name = text.sliced(1, end - 1);
    if (name.startsWith(u'#')) {
        const QString character = numericEntity(name.sliced(1));
        return {character, character.isEmpty() ? 0 : end + 1};
    }
    const auto *const known = std::find_if(std::begin(entities), std::end(entities),
                                           [name](const Entity &e) { return e.name == name; });
    return known == std::end(entities) ? Piece() : Piece{QString(known->character), end + 1};
}

QString withoutMarkup(QStringView text)
{
    QString result;
    result.reserve(text.size());
    while (!text.isEmpty()) {
        const QChar first = text.front();
        const Piece piece = first == u'<' ? tag(text) : first == u'&' ? entity(text) : Piece();
        if (piece.length > 0)
            result += piece.text;
        else
            result += first;
        text = text.sliced(std::max<qsizetype>(1, piece.length));
    }
    return result;
}

} // namespace

QString ConsoleOutput::plainText(const QString &richText)
{
    QString text = withoutMarkup(richText);
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    QStringList lines;
    const QStringList all = text.split(u'\n');
    for (const QString &line : all) {
        if (!line.trimmed().isEmpty())
            lines.append(line.trimmed());
    }
    return lines.join(QStringLiteral(" | "));
}
