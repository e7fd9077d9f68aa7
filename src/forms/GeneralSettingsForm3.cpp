#include "forms/GeneralSettingsForm3.h"

#include <QCoreApplication>

namespace {

using Kind = SettingRow::Kind;

constexpr SettingRow settingRows[] = {
    {Kind::Heading, "",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Queue & Buffers: line-dependent settings")},
    {Kind::Text, "receivebuffersize", QT_TRANSLATE_NOOP("GeneralSettingsForm3", "CAN receive buffer size")},
    {Kind::Text, "transmitbuffersize", QT_TRANSLATE_NOOP("GeneralSettingsForm3", "CAN transmit buffer size")},
    {Kind::Heading, "",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Queue & Buffers: line-independent settings")},
    {Kind::Text, "additional_cob_count", QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Additional COB objects")},
    {Kind::Text, "user_tx_cob",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Additional user transmit messages")},
    {Kind::Text, "user_rx_cob",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Additional user receive messages")},
    {Kind::Tick, "canfd_supported", QT_TRANSLATE_NOOP("GeneralSettingsForm3", "CAN FD supported")},
    {Kind::Heading, "", QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Generation")},
    {Kind::Tick, "init_static_variables",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Initialization of managed variables")},
    {Kind::Text, "init_default_value",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Initizalization value for managed variables")},
    {Kind::Tick, "compact_array_description",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Use compact array definitions if applicable")},
    {Kind::Tick, "generate_generation_counter",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Generate generation counter in gen_define.h")},
    {Kind::Text, "static_memory_specifier",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Memory specifier after static variables in gen_*.c")},
    {Kind::Tick, "generate_string_defaults",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Generate default values for variable strings")},
    {Kind::Tick, "special_virtual_objects",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Special virtual object definition")},
    {Kind::Tick, "generate_cpp_output",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Generate cpp output file")},
    {Kind::Text, "use_core_headers",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Generation Format (internally)")},
    {Kind::Text, "applicationheader",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Application header file(s)")},
    {Kind::Tick, "gen_csharp_props",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Generate MSBuild property files for the C# wrapper")},
    {Kind::Heading, "", QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Hardware/Target")},
    {Kind::Tick, "all_targets",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Include all targets in gen_define.h")},
    {Kind::Text, "co_timer_interval",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Interval of CPU timer in µs")},
    {Kind::Choice, "endian", QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Endianess (Byte-Order)"),
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Little Endian|Big Endian")},
    {Kind::Tick, "drv_filter", QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Enable CAN Filter (FullCAN)")},
    {Kind::Tick, "drv_group_filter",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Enable CAN Group Filter  (deprecated)")},
    {Kind::Text, "target_id",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Target define  (only if multiple targets are used)")},
    {Kind::Text, "hw_defines", QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Target specific defines")},
    {Kind::Text, "user_defines",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Additional application-specific defines:")},
    {Kind::Heading, "", QT_TRANSLATE_NOOP("GeneralSettingsForm3", "ISO-TP Support")},
    {Kind::Tick, "isotp_supported", QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Enable ISO-TP")},
    {Kind::Text, "isotp_client_con",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "No of ISO-TP Client Connections")},
    {Kind::Text, "isotp_server_con",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "No of ISO-TP Server Connections")},
    {Kind::Text, "isotp_dyn_server_ind",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "No of Dynamic Server Indications")},
    {Kind::Text, "isotp_dyn_client_ind",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "No of Dynamic Client Indications")},
    {Kind::Text, "isotp_dyn_client_txack_ind",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "No of Dynamic Client TX Ack Indications")},
    {Kind::Text, "isotp_dyn_split_ind",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "No of Dynamic Split Indications")},
    {Kind::Heading, "", QT_TRANSLATE_NOOP("GeneralSettingsForm3", "UDS Server Support")},
    {Kind::Tick, "udsserver_supported", QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Enable UDS Server")},
    {Kind::Text, "uds_server_active", QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Server active")},
    {Kind::Text, "uds_seedkey_length", QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Security Seed/Key Length")},
    {Kind::Text, "uds_session_timeout", QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Session Timeout (ms)")},
    {Kind::Text, "uds_physical_request_id",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Physical address request CAN-ID")},
    {Kind::Text, "uds_physical_response_id",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Physical address response CAN-ID")},
    {Kind::Text, "uds_functional_request_id",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Functional address request CAN-ID")},
    {Kind::Text, "uds_ext_addressing", QT_TRANSLATE_NOOP("GeneralSettingsForm3", "ISO-TP address format")},
    {Kind::Text, "uds_physical_request_ext_addr",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Physical address request: device address")},
    {Kind::Text, "uds_physical_response_ext_addr",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Physical address response: tool address")},
    {Kind::Text, "uds_functional_request_ext_addr",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Functional address request: device address")},
    {Kind::Text, "uds_rdbip_canid",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Read Data by Periodic Identifier CAN-ID")},
    {Kind::Tick, "uds_only_appl_session_check",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Application Session Check only")},
    {Kind::Tick, "uds_only_appl_security_check",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Application Security Level Check only")},
    {Kind::Text, "udsserver_version", QT_TRANSLATE_NOOP("GeneralSettingsForm3", "UDS Server API Version")},
    {Kind::Text, "uds_bl_setting", QT_TRANSLATE_NOOP("GeneralSettingsForm3", "UDS Bootloader Config")},
    {Kind::Heading, "", QT_TRANSLATE_NOOP("GeneralSettingsForm3", "UDS Client Support")},
    {Kind::Tick, "udsclient_supported", QT_TRANSLATE_NOOP("GeneralSettingsForm3", "Enable UDS Client")},
    {Kind::Text, "uds_client_cnt", QT_TRANSLATE_NOOP("GeneralSettingsForm3", "No of UDS Clients")},
    {Kind::Tick, "uds_client_partial_download",
     QT_TRANSLATE_NOOP("GeneralSettingsForm3", "partial Download Callback")},
};

} // namespace

GeneralSettingsForm3::GeneralSettingsForm3(QWidget *parent) : SettingsForm(parent) { }

QList<RowsModel::Row> GeneralSettingsForm3::readRows(ObjectDataBase &store) const
{
    return readTable(store, settingRows, &ObjectDataBase::getGeneralSetting);
}

int GeneralSettingsForm3::changeType() const
{
    return ObjectDataBase::GeneralSettingChanged;
}
