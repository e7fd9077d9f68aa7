#include "importers/CsvLine.h"

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace CsvLine {

namespace {

constexpr QChar quote(u'"');
constexpr QChar lineBreak(u'\n');

/** Where a quoted field ends: the place of its closing quote. */
struct Closing
{
    QuoteEnd end = QuoteEnd::None;
    qsizetype place = 0;
};

Closing closingQuote(QStringView line, qsizetype from, QChar separator)
{
    for (;;) {
        const qsizetype place = line.indexOf(quote, from);
        if (place < 0)
            return {QuoteEnd::None, line.size()};
        if (place + 1 == line.size() || line[place + 1] == separator)
            return {QuoteEnd::Closed, place};
        if (line[place + 1] != quote)
            return {QuoteEnd::Broken, place};
        from = place + 2;
    }
}

bool needsQuotes(QStringView text, QChar separator)
{
    return std::any_of(text.begin(), text.end(),
                       [separator](QChar c) { return c == separator || c == quote || c == lineBreak; });
}

/** The field behind the opening quote at `begin`; nothing where the quotes are text. */
std::optional<QStringView> quotedField(QStringView line, qsizetype begin, QChar separator, Quoting quoting,
                                       bool &isOpen)
{
    const Closing closing = closingQuote(line, begin + 1, separator);
    isOpen |= closing.end == QuoteEnd::None;
    if (closing.end != QuoteEnd::Closed)
        return {};
    const QStringView text = line.mid(begin + 1, closing.place - begin - 1);
    if (quoting == Quoting::WhereNeeded && !needsQuotes(text, separator))
        return {};
    return text;
}

} // namespace

Fields split(QStringView line, QChar separator, Quoting quoting)
{
    Fields fields;
    for (qsizetype begin = 0; begin <= line.size();) {
        std::optional<QStringView> quoted;
        // A quote that has no end once has none for the fields behind it either.
        if (begin < line.size() && line[begin] == quote && !fields.hasOpenQuote)
            quoted = quotedField(line, begin, separator, quoting, fields.hasOpenQuote);
        if (quoted) {
            fields.texts.append(quoted->toString().replace("\"\""_L1, "\""_L1));
            begin += quoted->size() + 3; // both quotes and the separator
            continue;
        }
        const qsizetype end = line.indexOf(separator, begin);
        const qsizetype length = (end < 0 ? line.size() : end) - begin;
        fields.texts.append(line.mid(begin, length).toString());
        begin += length + 1;
    }
    return fields;
}

QuoteEnd quoteEnd(QStringView line, QChar separator)
{
    return closingQuote(line, 0, separator).end;
}

QChar separatorOf(QStringView header)
{
    return !header.contains(u',') && header.contains(u';') ? u';' : u',';
}

bool isPadding(const QStringList &fields, qsizetype from)
{
    return std::all_of(fields.begin() + std::min(from, fields.size()), fields.end(),
                       [](const QString &field) { return field.isEmpty(); });
}

} // namespace CsvLine
