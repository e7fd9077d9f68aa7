// Settings that hold one value per line, and what a line inherits or leaves behind.

#include "store/ObjectDataBasePrivate.h"

#include <QDebug>

namespace {

constexpr QChar separator = u',';

struct DefaultSetting
{
    const char *key;
    const char *value;
};

constexpr std::array descriptionDefaults = std::to_array<DefaultSetting>({
    {"BaudRate_10", "0"},  {"BaudRate_20", "0"},  {"BaudRate_50", "0"},       {"BaudRate_125", "1"},
    {"BaudRate_250", "1"}, {"BaudRate_500", "0"}, {"BaudRate_800", "0"},      {"BaudRate_1000", "0"},
    {"Dummy0001", "0"},    {"Dummy0002", "0"},    {"Dummy0003", "0"},         {"Dummy0004", "0"},
    {"Dummy0005", "0"},    {"Dummy0006", "0"},    {"Dummy0007", "0"},         {"LSS_Supported", "0"},
    {"SelfStarting", "0"}, {"VendorName", ""},    {"ProductName", ""},        {"CreatedBy", ""},
    {"ModifiedBy", ""},    {"FileVersion", "1"},  {"FileRevision", "1"},      {"OrderCode", "0815-BUY-ME"},
    {"Granularity", "0"},  {"Comment", ""},       {"AdditionalSections", ""},
});

bool isDefaultKey(const QString &key)
{
    return std::any_of(descriptionDefaults.begin(), descriptionDefaults.end(),
                       [&](const DefaultSetting &setting) { return key == QLatin1StringView(setting.key); });
}

} // namespace

const QStringList &ObjectDataBase::perLineSettingKeys()
{
    static const QStringList keys = {
        QStringLiteral("nmtmaster"),
        QStringLiteral("co_node_id"),
        QStringLiteral("co_node_id_fct"),
        QStringLiteral("overwrite_predef"),
        QStringLiteral("receivebuffersize"),
        QStringLiteral("transmitbuffersize"),
        QStringLiteral("isotp_client_con"),
        QStringLiteral("isotp_server_con"),
        QStringLiteral("uds_physical_request_id"),
        QStringLiteral("uds_physical_response_id"),
        QStringLiteral("uds_functional_request_id"),
    };
    return keys;
}

QString ObjectDataBase::getGeneralSettingForLine(const QString &key, quint8 line)
{
    const QStringList values = getGeneralSetting(key).split(separator);
    return line < values.size() ? values.at(line) : values.last();
}

QString ObjectDataBase::getGeneralSettingEntry(const QString &key, quint8 line)
{
    return getGeneralSetting(key).split(separator).value(line);
}

bool ObjectDataBase::setGeneralSettingForLine(const QString &key, const QString &value, quint8 line)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    QStringList values = getGeneralSetting(key).split(separator);
    while (values.size() <= line)
        values.append(QStringLiteral(" "));
    values[line] = value;
    return setGeneralSetting(key, values.join(separator));
}

void ObjectDataBase::Private::inheritLineSettings(quint8 line)
{
    for (const QString &key : perLineSettingKeys()) {
        const QString value = q->getGeneralSetting(key);
        if (value.isEmpty())
            continue;
        const QStringList values = value.split(separator);
        if (values.size() < line)
            q->setGeneralSettingForLine(key, values.last(), line);
    }
}

void ObjectDataBase::addDefaultDescriptionSettings(quint8 line)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return;
    setDescriptionLine(line);
    for (const DefaultSetting &setting : descriptionDefaults) {
        const QString key = QLatin1StringView(setting.key);
        if (!descriptionSettingExists(key))
            setDescriptionSetting(key, QLatin1StringView(setting.value));
    }
}

// Every value with a comma loses the line's element, whatever its key means: texts such as user_defines
// included.
void ObjectDataBase::Private::removeLineElements(const SettingsTable &table, quint8 line)
{
    const QStringList keys = settingKeys(table);
    for (const QString &key : keys) {
        QStringList values = setting(table, key).split(separator);
        if (values.size() < 2 || values.size() <= line)
            continue;
        values.removeAt(line);
        StoreQuery(connection, table.update, 0, "removeLineSettings")
            .bind(values.join(separator))
            .bind(key)
            .exec();
    }
}

void ObjectDataBase::removeLineSettings(quint8 line)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return;
    const QString typeKey = QStringLiteral("line%1type").arg(line);
    const QStringList keys = getGeneralSettingKeys();
    for (const QString &key : keys) {
        if (key.contains(typeKey))
            StoreQuery(d->connection, "DELETE FROM GeneralSettings WHERE item = ?").bind(key).exec();
    }
    d->removeLineElements(Private::general, line);
    d->removeLineElements(Private::j1939, line);
    // "BaudRate_10" is line 0's own key and not one of line 10.
    const QString suffix = QStringLiteral("_%1").arg(line);
    const QStringList descriptionKeys = getDescriptionSettingKeys();
    for (const QString &key : descriptionKeys) {
        if (key.endsWith(suffix) && !isDefaultKey(key))
            StoreQuery(d->connection, "delete from DescriptionSettings where item = ?").bind(key).exec();
    }
}
