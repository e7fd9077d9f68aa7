#include "generators/GenerationClock.h"

#include "store/ApplicationSettings.h"

using namespace Qt::StringLiterals;

QDateTime GenerationClock::now()
{
    bool isNumber = false;
    const qint64 seconds = qgetenv("SOURCE_DATE_EPOCH").toLongLong(&isNumber);
    const QDateTime fixed = isNumber ? QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC) : QDateTime();
    return fixed.isValid() ? fixed : QDateTime::currentDateTime();
}

QString GenerationClock::stamp()
{
    const QString usual = u"ddd MMM dd yyyy  HH:mm:ss"_s;
    const QString format = ApplicationSettings::value(u"General/date_time_format"_s, usual).toString();
    return now().toString(format.isEmpty() ? usual : format);
}
