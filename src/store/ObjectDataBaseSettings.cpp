// The five key/value tables.

#include "store/ObjectDataBasePrivate.h"

#include <QDebug>

#define SETTINGS_TABLE(name, changeType)                                                                     \
    {                                                                                                        \
        "select value from " name " where item = ?", "update " name " set value = ? where item = ?",         \
            "insert into " name " values(?,?)", "select item from " name " order by item", changeType        \
    }

const ObjectDataBase::Private::SettingsTable ObjectDataBase::Private::general =
    SETTINGS_TABLE("GeneralSettings", GeneralSettingChanged);
const ObjectDataBase::Private::SettingsTable ObjectDataBase::Private::description =
    SETTINGS_TABLE("DescriptionSettings", DescriptionSettingChanged);
const ObjectDataBase::Private::SettingsTable ObjectDataBase::Private::energyBus =
    SETTINGS_TABLE("EnergyBusSettings", EnergyBusSettingChanged);
const ObjectDataBase::Private::SettingsTable ObjectDataBase::Private::j1939 =
    SETTINGS_TABLE("J1939Settings", J1939SettingChanged);
const ObjectDataBase::Private::SettingsTable ObjectDataBase::Private::misc =
    SETTINGS_TABLE("MiscSettings", MiscSettingChanged);

#undef SETTINGS_TABLE

QString ObjectDataBase::Private::setting(const SettingsTable &table, const QString &key)
{
    return StoreQuery(connection, table.select, 0, "getSetting").bind(key).firstText();
}

bool ObjectDataBase::Private::settingExists(const SettingsTable &table, const QString &key)
{
    return StoreQuery(connection, table.select, 0, "settingExists").bind(key).next();
}

bool ObjectDataBase::Private::setSetting(const SettingsTable &table, const QString &key, const QString &value,
                                         quint8 noticeLine)
{
    const ConnectionGate::WriteLease lease(connection.gate);
    if (!lease)
        return false;
    bool success = true;
    if (!settingExists(table, key))
        success = StoreQuery(connection, table.insert, 0, "setSetting").bind(key).bind(value).exec();
    else if (setting(table, key) == value)
        return true;
    else
        success = StoreQuery(connection, table.update, 0, "setSetting").bind(value).bind(key).exec();
    if (success)
        notify({.type = table.changeType, .line = noticeLine});
    return success;
}

QStringList ObjectDataBase::Private::settingKeys(const SettingsTable &table)
{
    QStringList keys;
    StoreQuery query(connection, table.keys, 0, "getSettingKeys");
    while (query.next())
        keys.append(query.text(0));
    return keys;
}

QString ObjectDataBase::getGeneralSetting(const QString &key)
{
    return d->setting(Private::general, key);
}

bool ObjectDataBase::setGeneralSetting(const QString &key, const QString &value)
{
    return d->setSetting(Private::general, key, value);
}

QStringList ObjectDataBase::getGeneralSettingKeys()
{
    return d->settingKeys(Private::general);
}

bool ObjectDataBase::generalSettingExists(const QString &key)
{
    return d->settingExists(Private::general, key);
}

QString ObjectDataBase::Private::descriptionKey(const QString &key) const
{
    return descriptionLine == 0 ? key : key + u'_' + QString::number(descriptionLine);
}

QString ObjectDataBase::getDescriptionSetting(const QString &key)
{
    return d->setting(Private::description, d->descriptionKey(key));
}

bool ObjectDataBase::setDescriptionSetting(const QString &key, const QString &value)
{
    return d->setSetting(Private::description, d->descriptionKey(key), value, d->descriptionLine);
}

QStringList ObjectDataBase::getDescriptionSettingKeys()
{
    return d->settingKeys(Private::description);
}

bool ObjectDataBase::descriptionSettingExists(const QString &key)
{
    return d->settingExists(Private::description, d->descriptionKey(key));
}

void ObjectDataBase::setDescriptionLine(quint8 line)
{
    d->descriptionLine = line;
}

quint8 ObjectDataBase::descriptionLine() const
{
    return d->descriptionLine;
}

QString ObjectDataBase::getEnergyBusSetting(const QString &key)
{
    return d->setting(Private::energyBus, key);
}

bool ObjectDataBase::setEnergyBusSetting(const QString &key, const QString &value)
{
    return d->setSetting(Private::energyBus, key, value);
}

QStringList ObjectDataBase::getEnergyBusSettingKeys()
{
    return d->settingKeys(Private::energyBus);
}

bool ObjectDataBase::energyBusSettingExists(const QString &key)
{
    return d->settingExists(Private::energyBus, key);
}

bool ObjectDataBase::removeEnergyBusSetting(const QString &key)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    return StoreQuery(d->connection, "delete from EnergyBusSettings where item = ?").bind(key).exec();
}

QString ObjectDataBase::getJ1939Setting(const QString &key)
{
    return d->setting(Private::j1939, key);
}

bool ObjectDataBase::setJ1939Setting(const QString &key, const QString &value)
{
    return d->setSetting(Private::j1939, key, value, d->descriptionLine);
}

QStringList ObjectDataBase::getJ1939SettingKeys()
{
    return d->settingKeys(Private::j1939);
}

bool ObjectDataBase::j1939SettingExists(const QString &key)
{
    return d->settingExists(Private::j1939, key);
}

QString ObjectDataBase::getMiscSetting(const QString &key)
{
    return d->setting(Private::misc, key);
}

bool ObjectDataBase::setMiscSetting(const QString &key, const QString &value)
{
    return d->setSetting(Private::misc, key, value);
}

QStringList ObjectDataBase::getMiscSettingKeys()
{
    return d->settingKeys(Private::misc);
}

bool ObjectDataBase::miscSettingExists(const QString &key)
{
    return d->settingExists(Private::misc, key);
}

bool ObjectDataBase::replaceSettingsFrom(ObjectDataBase &other)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease || &other == this)
        return false;
    struct Replacement
    {
        const char *drop;
        const char *create;
        const Private::SettingsTable &table;
    };
    const std::array replacements = std::to_array<Replacement>({
        {"drop table GeneralSettings", "create table GeneralSettings (item text unique, value text)",
         Private::general},
        {"drop table DescriptionSettings", "create table DescriptionSettings (item text unique, value text)",
         Private::description},
    });
    bool success = true;
    for (const Replacement &replacement : replacements) {
        QList<std::pair<QString, QString>> entries;
        const QStringList keys = other.d->settingKeys(replacement.table);
        for (const QString &key : keys)
            entries.append({key, other.d->setting(replacement.table, key)});
        success = executeSql(QLatin1StringView(replacement.drop)) && success;
        success = executeSql(QLatin1StringView(replacement.create)) && success;
        for (const auto &[key, value] : std::as_const(entries))
            success =
                StoreQuery(d->connection, replacement.table.insert).bind(key).bind(value).exec() && success;
    }
    return success;
}
