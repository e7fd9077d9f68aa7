#pragma once

#include <QStringList>

/** Splits the lines of a table into their fields. */
namespace CsvLine {

/**
 * Which quotes enclose a field and are no part of it.
 *
 * Spreadsheets quote only what needs it, so that a text like "abc" with its quotes is that text; other
 * programs quote everything, the header too.
 */
enum class Quoting {
    WhereNeeded, ///< around a separator, a line break or a quote, which is doubled (RFC 4180)
    Everywhere,
};

struct Fields
{
    QStringList texts;
    /** A field begins with a quote that this line does not close; the field is taken as it stands. */
    bool hasOpenQuote = false;
};

/** Splits at the separator, keeping empty fields. A quote that encloses nothing is text. */
Fields split(QStringView line, QChar separator, Quoting quoting);

enum class QuoteEnd {
    None, ///< the quoted field goes on behind this line
    Closed,
    Broken, ///< the quote that opened the field encloses no field
};

/** How a quoted field that an earlier line has opened goes on in a line. */
QuoteEnd quoteEnd(QStringView line, QChar separator);

/** The separator that a header line chooses: the comma where it holds one, otherwise the semicolon. */
QChar separatorOf(QStringView header);

/** Whether all fields from a place on are empty, as spreadsheets fill up short lines. */
bool isPadding(const QStringList &fields, qsizetype from);

} // namespace CsvLine
