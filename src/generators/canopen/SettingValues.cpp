#include "generators/canopen/SettingValues.h"

#include "store/ObjectDataBase.h"

#include <algorithm>

namespace {

constexpr QChar separator = u',';

template <typename Read>
QHash<QString, QString> readAll(const QStringList &keys, const Read &read)
{
    QHash<QString, QString> values;
    values.reserve(keys.size());
    for (const QString &key : keys)
        values.insert(key, read(key));
    return values;
}

} // namespace

SettingValues SettingValues::general(ObjectDataBase &store)
{
    SettingValues settings;
    settings.m_values = readAll(store.getGeneralSettingKeys(),
                                [&](const QString &key) { return store.getGeneralSetting(key); });
    return settings;
}

SettingValues SettingValues::j1939(ObjectDataBase &store)
{
    SettingValues settings;
    settings.m_values =
        readAll(store.getJ1939SettingKeys(), [&](const QString &key) { return store.getJ1939Setting(key); });
    return settings;
}

SettingValues SettingValues::energyBus(ObjectDataBase &store)
{
    SettingValues settings;
    settings.m_values = readAll(store.getEnergyBusSettingKeys(),
                                [&](const QString &key) { return store.getEnergyBusSetting(key); });
    return settings;
}

QString SettingValues::forLine(const QString &key, quint8 line) const
{
    const QStringList elements = value(key).split(separator);
    return (line < elements.size() ? elements.at(line) : elements.last()).simplified();
}

QString SettingValues::entry(const QString &key, quint8 line) const
{
    return value(key).split(separator).value(line).simplified();
}

// As everywhere else in the project: what one file takes for a number, the others must, too.
quint32 SettingValues::toNumber(const QString &text)
{
    return quint32(std::max(text.toInt(), 0));
}
