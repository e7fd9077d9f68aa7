// Settings that must be numbers, alone or in a list with one element per line.

#include "canopen/CANTypes.h"
#include "check/CheckFindings.h"
#include "check/ModelChecker.h"
#include "check/ProjectRules.h"
#include "store/ObjectDataBase.h"

#include <array>
#include <span>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView notNumeric{"<strong>Error: </strong>\"%1\" has non-numeric value \"%2\"."};

struct NumericSettingRule
{
    QLatin1StringView key;
    CAN::CANopenDataType dataType; ///< whose form the value must have
    QLatin1StringView label; ///< what the settings page calls it
};

constexpr std::array<NumericSettingRule, 39> stackSettings{{
    {"additional_cob_count"_L1, CAN::Unsigned16, "Additional COB objects"_L1},
    {"user_tx_cob"_L1, CAN::Unsigned16, "Additional user transmit messages"_L1},
    {"user_rx_cob"_L1, CAN::Unsigned16, "Additional user receive messages"_L1},
    {"sdo_blocktransfer_block_size"_L1, CAN::Unsigned8, "SDO Block Transfer Block Size"_L1},
    {"sdo_blocktransfer_min_data"_L1, CAN::Unsigned16,
     "SDO Block Transfer use for data of [n] bytes or larger"_L1},
    {"sdo_client_queue_size"_L1, CAN::Unsigned16, "SDO Client Queue Length"_L1},
    {"sleep_wait_time"_L1, CAN::Integer32, "Sleep Mode Waiting Time (ms)"_L1},
    {"usdo_server_cnt"_L1, CAN::Unsigned16, "USDO Server Connection count"_L1},
    {"usdo_client_cnt"_L1, CAN::Unsigned16, "USDO Client Connection Count"_L1},
    {"usdo_server_domain_write_ind_size"_L1, CAN::Unsigned16,
     "USDO Domain Indication size in multiple of 60 bytes"_L1},
    {"usdo_server_ind_read_cnt"_L1, CAN::Unsigned16, "USDO Server Read"_L1},
    {"usdo_server_ind_read_finished_cnt"_L1, CAN::Unsigned16, "USDO Server Read Finished"_L1},
    {"usdo_server_ind_write_cnt"_L1, CAN::Unsigned16, "USDO Server Write"_L1},
    {"usdo_server_ind_check_write_cnt"_L1, CAN::Unsigned16, "USDO Server Check Write"_L1},
    {"usdo_server_ind_domain_write_cnt"_L1, CAN::Unsigned16, "USDO Server Domain Write"_L1},
    {"event_ssdo_domain_counter"_L1, CAN::Unsigned16, "SDO Domain Indication Size"_L1},
    {"event_can"_L1, CAN::Unsigned16, "CAN Event"_L1},
    {"event_sdo_server_read"_L1, CAN::Unsigned16, "SDO Server Read"_L1},
    {"event_sdo_server_write"_L1, CAN::Unsigned16, "SDO Server Write"_L1},
    {"event_sdo_server_check_write"_L1, CAN::Unsigned16, "SDO Server Check Write"_L1},
    {"event_ssdo_domain_write"_L1, CAN::Unsigned16, "SDO Server Domain Write"_L1},
    {"event_ssdo_domain_read"_L1, CAN::Unsigned16, "SDO Server Domain Read"_L1},
    {"event_sdo_client_read"_L1, CAN::Unsigned16, "SDO Client Read"_L1},
    {"event_sdo_client_write"_L1, CAN::Unsigned16, "SDO Client Write"_L1},
    {"event_sdorouter"_L1, CAN::Unsigned16, "SDO Network Client Event"_L1},
    {"event_srd"_L1, CAN::Unsigned16, "SDO Requesting Device (SRD) event"_L1},
    {"event_pdo"_L1, CAN::Unsigned16, "PDO Event"_L1},
    {"event_pdo_update"_L1, CAN::Unsigned16, "PDO Update Event"_L1},
    {"event_mpdo"_L1, CAN::Unsigned16, "MPDO Event"_L1},
    {"event_nmt"_L1, CAN::Unsigned16, "NMT Event"_L1},
    {"event_errctrl"_L1, CAN::Unsigned16, "NMT Error Control Event"_L1},
    {"event_store"_L1, CAN::Unsigned16, "Store/Restore/LOAD Event"_L1},
    {"event_gfc"_L1, CAN::Unsigned16, "GFC Event"_L1},
    {"event_sync"_L1, CAN::Unsigned16, "SYNC Event"_L1},
    {"event_sync_finished"_L1, CAN::Unsigned16, "SYNC Event finished"_L1},
    {"event_finished"_L1, CAN::Unsigned16, "SDO Finished Event"_L1},
    {"event_led"_L1, CAN::Unsigned16, "LED Event"_L1},
    {"event_cfg"_L1, CAN::Unsigned16, "Configuration Manager Event"_L1},
    {"event_flyma"_L1, CAN::Unsigned16, "Flying Master Event"_L1},
}};

constexpr std::array<NumericSettingRule, 9> udsSettings{{
    {"uds_seedkey_length"_L1, CAN::Unsigned8, "Security Seed/Key Length"_L1},
    {"uds_session_timeout"_L1, CAN::Unsigned32, "Session Timeout (ms)"_L1},
    {"uds_physical_request_id"_L1, CAN::Unsigned32, "Physical address request CAN-ID"_L1},
    {"uds_physical_response_id"_L1, CAN::Unsigned32, "Physical address response CAN-ID"_L1},
    {"uds_functional_request_id"_L1, CAN::Unsigned32, "Functional address request CAN-ID"_L1},
    {"uds_physical_request_ext_addr"_L1, CAN::Unsigned8, "Physical address request: device address"_L1},
    {"uds_physical_response_ext_addr"_L1, CAN::Unsigned8, "Physical address response: tool address"_L1},
    {"uds_functional_request_ext_addr"_L1, CAN::Unsigned8, "Functional address request: device address"_L1},
    {"uds_rdbip_canid"_L1, CAN::Unsigned32, "Read Data by Periodic Identifier CAN-ID"_L1},
}};

constexpr std::array<NumericSettingRule, 9> j1939Settings{{
    {"startaddress"_L1, CAN::Unsigned8, "Address (start address)"_L1},
    {"identitynumber"_L1, CAN::Unsigned32, "Identity Number"_L1},
    {"manufacturercode"_L1, CAN::Unsigned16, "Manufacturer Code"_L1},
    {"ecuinstance"_L1, CAN::Unsigned8, "ECU Instance"_L1},
    {"functioninstance"_L1, CAN::Unsigned8, "Function Instance"_L1},
    {"function"_L1, CAN::Unsigned8, "Function"_L1},
    {"vehiclesystem"_L1, CAN::Unsigned8, "Vehicle System"_L1},
    {"vehicleinstance"_L1, CAN::Unsigned8, "Vehicle Instance"_L1},
    {"industrygroup"_L1, CAN::Unsigned8, "Industry Group"_L1},
}};

void checkParts(const QString &value, const NumericSettingRule &rule, CheckFindings &findings)
{
    const QStringList parts = value.split(u',');
    for (const QString &part : parts) {
        const QString text = part.trimmed();
        if (!text.isEmpty() && !ModelChecker::isValidValue(rule.dataType, text))
            findings.error(notNumeric.arg(rule.label, text.toHtmlEscaped()),
                           ProjectLocation::ofSetting(rule.key));
    }
}

void checkGeneralSettings(ObjectDataBase &store, std::span<const NumericSettingRule> rules,
                          CheckFindings &findings)
{
    for (const NumericSettingRule &rule : rules)
        checkParts(store.getGeneralSetting(rule.key), rule, findings);
}

} // namespace

void checkNumericSettings(ObjectDataBase &store, CheckFindings &findings)
{
    checkGeneralSettings(store, stackSettings, findings);
    // A boot loader finds its CAN-IDs at run time: names may stand there.
    if (store.getGeneralSetting(u"uds_bl_setting"_s) != "1"_L1)
        checkGeneralSettings(store, udsSettings, findings);
    for (const NumericSettingRule &rule : j1939Settings)
        checkParts(store.getJ1939Setting(rule.key), rule, findings);
}
