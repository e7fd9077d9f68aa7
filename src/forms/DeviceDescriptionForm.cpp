#include "forms/DeviceDescriptionForm.h"

#include <QCoreApplication>
#include <QScopeGuard>

namespace {

using Kind = SettingRow::Kind;

constexpr SettingRow descriptionRows[] = {
    {Kind::Heading, "", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "Device")},
    {Kind::Text, "VendorName", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "Vendor name")},
    {Kind::Text, "ProductName", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "Product name")},
    {Kind::Text, "OrderCode", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "Order code")},
    {Kind::Heading, "", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "File")},
    {Kind::Text, "FileVersion", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "File version")},
    {Kind::Text, "FileRevision", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "File revision")},
    {Kind::Text, "CreatedBy", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "Created by")},
    {Kind::Text, "ModifiedBy", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "Modified by")},
    {Kind::Text, "Comment", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "Comment")},
    {Kind::Text, "AdditionalSections", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "Additional sections")},
    {Kind::Heading, "", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "Bit rates")},
    {Kind::Tick, "BaudRate_10", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "10 kbit/s")},
    {Kind::Tick, "BaudRate_20", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "20 kbit/s")},
    {Kind::Tick, "BaudRate_50", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "50 kbit/s")},
    {Kind::Tick, "BaudRate_125", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "125 kbit/s")},
    {Kind::Tick, "BaudRate_250", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "250 kbit/s")},
    {Kind::Tick, "BaudRate_500", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "500 kbit/s")},
    {Kind::Tick, "BaudRate_800", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "800 kbit/s")},
    {Kind::Tick, "BaudRate_1000", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "1000 kbit/s")},
    {Kind::Heading, "", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "Features")},
    {Kind::Tick, "LSS_Supported", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "LSS supported")},
    {Kind::Tick, "SelfStarting", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "Self-starting device")},
    {Kind::Text, "Granularity", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "Granularity of PDO mapping")},
    {Kind::Heading, "", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "Dummy mapping")},
    {Kind::Tick, "Dummy0001", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "0x0001 - BOOLEAN")},
    {Kind::Tick, "Dummy0002", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "0x0002 - INTEGER8")},
    {Kind::Tick, "Dummy0003", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "0x0003 - INTEGER16")},
    {Kind::Tick, "Dummy0004", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "0x0004 - INTEGER32")},
    {Kind::Tick, "Dummy0005", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "0x0005 - UNSIGNED8")},
    {Kind::Tick, "Dummy0006", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "0x0006 - UNSIGNED16")},
    {Kind::Tick, "Dummy0007", QT_TRANSLATE_NOOP("DeviceDescriptionForm", "0x0007 - UNSIGNED32")},
};

} // namespace

DeviceDescriptionForm::DeviceDescriptionForm(QWidget *parent) : SettingsForm(parent) { }

// The keys of the description settings mean the line that was chosen last, by whomever.
QList<RowsModel::Row> DeviceDescriptionForm::readRows(ObjectDataBase &store) const
{
    const auto chosen =
        qScopeGuard([&store, former = store.descriptionLine()] { store.setDescriptionLine(former); });
    store.setDescriptionLine(line());
    return readTable(store, descriptionRows, &ObjectDataBase::getDescriptionSetting);
}

int DeviceDescriptionForm::changeType() const
{
    return ObjectDataBase::DescriptionSettingChanged;
}
