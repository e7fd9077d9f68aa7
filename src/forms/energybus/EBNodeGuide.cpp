#include "forms/energybus/EBNodeGuide.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

using Kind = SettingRow::Kind;

constexpr SettingRow physicalDeviceRows[] = {
    {Kind::Heading, "", QT_TRANSLATE_NOOP("EBNodeGuide", "Physical device configuration")},
    {Kind::Tick, "user_changeable", QT_TRANSLATE_NOOP("EBNodeGuide", "Device changeable by end-user")},
    {Kind::Tick, "manufacturer_functionality",
     QT_TRANSLATE_NOOP("EBNodeGuide", "Manufacturer-specific functionality")},
    {Kind::Tick, "bootloader_support",
     QT_TRANSLATE_NOOP("EBNodeGuide", "Support for Firmware Update via EnergyBus")},
    {Kind::Tick, "modificationWithoutApply",
     QT_TRANSLATE_NOOP("EBNodeGuide", "Modified since it was applied to the object dictionary")},
};

} // namespace

EBNodeGuide::EBNodeGuide(QWidget *parent) : SettingsForm(parent) { }

QList<RowsModel::Row> EBNodeGuide::readRows(ObjectDataBase &store) const
{
    QList<RowsModel::Row> rows = readDevices(store);
    rows.append(readTable(store, physicalDeviceRows, &ObjectDataBase::getEnergyBusSetting));
    return rows;
}

QList<RowsModel::Row> EBNodeGuide::readDevices(ObjectDataBase &store) const
{
    static const QString prefix = u"device_"_s;
    QList<RowsModel::Row> rows{headingRow(tr("Virtual devices"))};
    QStringList keys = store.getEnergyBusSettingKeys();
    keys.sort();
    for (const QString &key : std::as_const(keys)) {
        bool isNumber = false;
        const int number = key.mid(prefix.size()).toInt(&isNumber);
        if (key.startsWith(prefix) && isNumber)
            rows.append(settingRow(key, tr("Virtual device %1").arg(number), store.getEnergyBusSetting(key)));
    }
    if (rows.size() == 1)
        rows.append(settingRow({}, tr("none"), {}));
    return rows;
}

int EBNodeGuide::changeType() const
{
    return ObjectDataBase::EnergyBusSettingChanged;
}
