#pragma once

#include <QDateTime>
#include <QString>

/** The one source of date and time in generated files. */
namespace GenerationClock {

/**
 * The present local time; where the environment variable SOURCE_DATE_EPOCH holds a number of seconds since
 * 1970, that moment in UTC, so that the same project gives the same bytes on any day.
 */
QDateTime now();

/** now() in the format of the user's setting, with English names of days and months. */
QString stamp();

} // namespace GenerationClock
