#include "app/UserSettings.h"

#include <QCoreApplication>

#include <algorithm>

SettingsKeys::Key SettingsKeys::row(QLatin1StringView key)
{
    const auto *found = std::ranges::find(all, key, &Key::name);
    return found == all.end() ? Key{key, Kind::Text} : *found;
}

UserSettings::UserSettings()
    : QSettings(QCoreApplication::organizationName(),
                QCoreApplication::instance()->property("AppNameWithVersion").toString())
{
}

QVariant UserSettings::read(QLatin1StringView key) const
{
    const SettingsKeys::Key row = SettingsKeys::row(key);
    const QVariant stored = value(key, QString(row.standard));
    switch (row.kind) {
    case SettingsKeys::Kind::Switch:
    case SettingsKeys::Kind::Flag:
        return stored.toBool();
    case SettingsKeys::Kind::Number:
        return stored.toInt();
    case SettingsKeys::Kind::Text:
        return stored.toString();
    case SettingsKeys::Kind::Window:
        break;
    }
    return contains(key) ? stored : QVariant();
}

void UserSettings::write(QLatin1StringView key, const QVariant &value)
{
    if (SettingsKeys::row(key).kind == SettingsKeys::Kind::Switch)
        setValue(key, value.toBool() ? 1 : 0);
    else
        setValue(key, value);
}
