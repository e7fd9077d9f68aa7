#include "app/RecentProjects.h"

#include "app/UserSettings.h"

#include <QDateTime>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

struct Entry
{
    QString path;
    QDateTime time;
};

constexpr QLatin1StringView group{"RecentProjects"};

QString pathKey(qsizetype number)
{
    return u"project%1path"_s.arg(number);
}

QString timeKey(qsizetype number)
{
    return u"project%1time"_s.arg(number);
}

/** The list as it is stored, the newest first; an entry without a time counts as the oldest. */
QList<Entry> read(const QSettings &settings)
{
    QList<Entry> entries;
    for (int number = 0; number < RecentProjects::maximum; ++number) {
        const QString path = settings.value(pathKey(number)).toString();
        if (!path.isEmpty())
            entries.append({path, settings.value(timeKey(number)).toDateTime()});
    }
    std::ranges::stable_sort(entries, std::ranges::greater(), &Entry::time);
    return entries;
}

void write(QSettings &settings, const QList<Entry> &entries)
{
    settings.remove(QString());
    for (qsizetype number = 0; number < entries.size(); ++number) {
        settings.setValue(pathKey(number), entries[number].path);
        settings.setValue(timeKey(number), entries[number].time);
    }
}

} // namespace

void RecentProjects::add(const QString &path)
{
    UserSettings settings;
    settings.beginGroup(group);
    QList<Entry> entries = read(settings);
    entries.removeIf([&path](const Entry &entry) { return entry.path == path; });
    entries.prepend({path, QDateTime::currentDateTime()});
    write(settings, entries.first(std::min<qsizetype>(entries.size(), maximum)));
}

QStringList RecentProjects::existing()
{
    UserSettings settings;
    settings.beginGroup(group);
    QStringList paths;
    const QList<Entry> entries = read(settings);
    for (const Entry &entry : entries)
        if (QFileInfo(entry.path).isFile())
            paths.append(entry.path);
    return paths;
}
