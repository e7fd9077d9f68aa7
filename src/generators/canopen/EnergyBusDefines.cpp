// The virtual devices (CiA 454) that an EnergyBus device is composed of, and those of its network.

#include "generators/canopen/DefineSections.h"
#include "generators/canopen/DefineView.h"
#include "generators/canopen/DefineWriter.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView controller{"EnergyBus Controller"};

/** A kind of virtual device in the device itself. */
struct LocalDevice
{
    QLatin1StringView kind; ///< begins the name of a virtual device
    QStringView count;
    QLatin1StringView offsetSetting;
    QStringView offset;
};

constexpr std::array<LocalDevice, 8> localDevices{{
    {"Load Monitoring Device"_L1, u"EB_LMD_CNT", "int_offset_lmd"_L1, u"EB_LOCAL_LMD_SUBIDX_OFFS"},
    {"Security Device/Extension"_L1, u"EB_SECURITY_CNT", "int_offset_sec"_L1,
     u"EB_LOCAL_SECURITY_SUBIDX_OFFS"},
    {"Battery"_L1, u"EB_BATTERY_CNT", "int_offset_bat"_L1, u"EB_LOCAL_BATTERY_SUBIDX_OFFS"},
    {"Display"_L1, u"EB_HMI_CNT", "int_offset_hmi"_L1, u"EB_LOCAL_HMI_SUBIDX_OFFS"},
    {"Manufacturer specific device (passive)"_L1, u"EB_MANU_P_CNT", "int_offset_manup"_L1,
     u"EB_LOCAL_MANU_P_SUBIDX_OFFS"},
    {"Manufacturer specific device (active)"_L1, u"EB_MANU_A_CNT", "int_offset_manua"_L1,
     u"EB_LOCAL_MANU_A_SUBIDX_OFFS"},
    {"Motor Controller Unit"_L1, u"EB_MCU_CNT", "int_offset_mcu"_L1, u"EB_LOCAL_MCU_SUBIDX_OFFS"},
    {"Voltage Converter"_L1, u"EB_VOLT_CONV_CNT", "int_offset_vc"_L1, u"EB_LOCAL_VOLT_CONV_SUBIDX_OFFS"},
}};

/** A number of the controller's network and the setting that holds it. */
struct NetworkRow
{
    QLatin1StringView setting;
    QStringView macro;
};

constexpr QLatin1StringView networkSecurity{"ebc_max_sec_number"};

constexpr std::array<NetworkRow, 9> networkCounts{{
    {"ebc_max_dev_number"_L1, u"EB_NETWORK_VIRTUAL_DEV_CNT"},
    {"ebc_max_bat_number"_L1, u"EB_NETWORK_BATTERY_CNT"},
    {"ebc_max_mcu_number"_L1, u"EB_NETWORK_MCU_CNT"},
    {"ebc_max_hmi_number"_L1, u"EB_NETWORK_HMI_CNT"},
    {"ebc_max_manup_number"_L1, u"EB_NETWORK_MANU_P_CNT"},
    {"ebc_max_manua_number"_L1, u"EB_NETWORK_MANU_A_CNT"},
    {networkSecurity, u"EB_NETWORK_SECURITY_CNT"},
    {"ebc_max_vc_number"_L1, u"EB_NETWORK_VOLT_CONV_CNT"},
    {"ebc_max_lmd_number"_L1, u"EB_NETWORK_LOAD_MONITORING_CNT"},
}};

constexpr std::array<NetworkRow, 8> networkOffsets{{
    {"ext_start_pos_bat"_L1, u"EB_NETWORK_BATTERY_SUBIDX_OFFS"},
    {"ext_start_pos_sec"_L1, u"EB_NETWORK_SECURITY_SUBIDX_OFFS"},
    {"ext_start_pos_vc"_L1, u"EB_NETWORK_VOLT_CONV_SUBIDX_OFFS"},
    {"ext_start_pos_hmi"_L1, u"EB_NETWORK_HMI_SUBIDX_OFFS"},
    {"ext_start_pos_lmd"_L1, u"EB_NETWORK_LOAD_MONITORING_SUBIDX_OFFS"},
    {"ext_start_pos_manua"_L1, u"EB_NETWORK_MANU_A_SUBIDX_OFFS"},
    {"ext_start_pos_manup"_L1, u"EB_NETWORK_MANU_P_SUBIDX_OFFS"},
    {"ext_start_pos_mcu"_L1, u"EB_NETWORK_MCU_SUBIDX_OFFS"},
}};

constexpr quint32 mostDevices = 255; // more than any device can hold

/** Names of the virtual devices; the list of a project that was never corrected may begin at 1. */
QStringList virtualDevices(const SettingValues &settings)
{
    const auto name = [](quint32 device) { return u"device_%1"_s.arg(device); };
    const quint32 count = std::min(settings.number(u"device_cnt"_s), mostDevices);
    const quint32 first = !settings.contains(name(0)) && settings.contains(name(count)) ? 1 : 0;
    QStringList devices;
    for (quint32 device = first; device < first + count; ++device)
        devices.append(settings.text(name(device)));
    return devices;
}

quint32 countOf(const QStringList &devices, QLatin1StringView kind)
{
    return quint32(std::ranges::count_if(
        devices, [=](const QString &device) { return device.startsWith(kind, Qt::CaseInsensitive); }));
}

/** A service tool needs a security device, which may be one of those that the network has anyway. */
quint32 networkCount(const SettingValues &settings, QLatin1StringView setting, bool hasTool)
{
    const quint32 least = hasTool && setting == networkSecurity ? 1 : 0;
    return std::max(settings.number(setting), least);
}

void writeNetwork(DefineWriter &out, const SettingValues &settings)
{
    const bool hasTool = settings.isOn(u"ebc_tool_supported"_s);
    for (const NetworkRow &row : networkCounts)
        out.count(row.macro, networkCount(settings, row.setting, hasTool));
    if (hasTool)
        out.flag(u"EB_NETWORK_PC_TOOL_CNT");
    for (const NetworkRow &row : networkOffsets)
        if (!settings.text(row.setting).isEmpty())
            out.number(row.macro, settings.number(row.setting));
}

} // namespace

void DefineSections::energyBus(DefineWriter &out, const DefineView &view)
{
    if (!view.isEnergyBus)
        return;
    const SettingValues &settings = view.energyBus;
    const QStringList devices = virtualDevices(settings);
    const quint32 controllers = countOf(devices, controller);
    out.text(u"/* EnergyBus Defines */\n"_s);
    out.count(u"EB_VIRTUAL_DEV_CNT", quint32(devices.size()));
    out.count(u"EB_EBC_CNT", controllers);
    for (const LocalDevice &device : localDevices) {
        const quint32 count = countOf(devices, device.kind);
        out.count(device.count, count);
        if (count > 0)
            out.number(device.offset, settings.number(device.offsetSetting));
    }
    if (controllers > 0)
        writeNetwork(out, settings);
}
