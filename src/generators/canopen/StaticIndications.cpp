#include "generators/canopen/StaticIndications.h"

#include "generators/CodeWriter.h"
#include "generators/Dialect.h"
#include "generators/LineProtocols.h"
#include "generators/canopen/ObjectDictionaryView.h"
#include "generators/canopen/SettingValues.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

/** A setting that may hold the name of a function, and the beginning of the pointer's definition. */
struct Indication
{
    QLatin1StringView key;
    QStringView text;
};

constexpr std::array<Indication, 26> indications{{
    {"fct_sdo_server_read"_L1, u"CORE_CONST CO_EVENT_SDO_SERVER_FUNCTION_T coEventSdoServerReadInd ="},
    {"fct_sdo_server_write"_L1, u"CORE_CONST CO_EVENT_SDO_SERVER_FUNCTION_T coEventSdoServerWriteInd ="},
    {"fct_pdo"_L1, u"CORE_CONST CO_EVENT_PDO_T coEventPdoInd ="},
    {"fct_pdo_update"_L1, u"CORE_CONST CO_EVENT_PDO_UPDATE_T coEventPdoUpdateInd ="},
    {"fct_nmt"_L1, u"CORE_CONST CO_EVENT_NMT_T coEventNmtInd ="},
    {"fct_errctrl"_L1, u"CORE_CONST CO_EVENT_ERRCTRL_T coEventErrCtrlInd ="},
    {"fct_sync"_L1, u"CORE_CONST CO_EVENT_SYNC_T coEventSyncInd ="},
    {"fct_sync_finished"_L1, u"CORE_CONST CO_EVENT_SYNC_FINISHED_T coEventSyncFinishedInd ="},
    {"fct_led_green"_L1, u"CORE_CONST CO_EVENT_LED_T coEventLedGreenInd ="},
    {"fct_led_red"_L1, u"CORE_CONST CO_EVENT_LED_T coEventLedRedInd ="},
    {"fct_can"_L1, u"CORE_CONST CORE_EVENT_CAN_STATE_T coreEventCanStateInd ="},
    {"fct_cfgman"_L1, u"CORE_CONST CO_EVENT_CFG_MANAGER_T coEventCfgManInd ="},
    {"fct_flyma"_L1, u"CORE_CONST CO_EVENT_FLYMA_T coEventFlymaInd ="},
    {"fct_sdo_client_read"_L1, u"CORE_CONST CO_EVENT_SDO_CLIENT_READ_T coEventSdoClientReadInd ="},
    {"fct_sdo_client_write"_L1, u"CORE_CONST CO_EVENT_SDO_CLIENT_WRITE_T coEventSdoClientWriteInd ="},
    {"fct_emcy"_L1, u"CORE_CONST CO_EVENT_EMCY_T coEventEmcyInd ="},
    {"fct_emcy_consumer"_L1, u"CORE_CONST CO_EVENT_EMCY_CONSUMER_T coEventEmcyConsumerInd ="},
    {"fct_time"_L1, u"CORE_CONST CO_EVENT_TIME_T coEventTimeInd ="},
    {"fct_store"_L1, u"CORE_CONST CO_EVENT_STORE_T coEventStoreLoadInd ="},
    {"fct_store_clear"_L1, u"CORE_CONST CO_EVENT_STORE_T coEventStoreClearInd ="},
    {"fct_store_save"_L1, u"CORE_CONST CO_EVENT_STORE_T coEventStoreSaveInd ="},
    {"fct_lss"_L1, u"CORE_CONST CO_EVENT_LSS_T coEventLssInd ="},
    {"fct_lss_master"_L1, u"CORE_CONST CO_EVENT_LSS_MASTER_T coEventLssMasterInd ="},
    {"fct_comm"_L1, u"CORE_CONST CORE_EVENT_COMM_T coreEventCommInd ="},
    {"fct_manager"_L1, u"CORE_CONST CO_EVENT_MANAGER_BOOTUP_T coEventManagerInd ="},
    {"fct_mpdo"_L1, u"CORE_CONST CO_EVENT_MPDO_T coEventMPdoInd ="},
}};

constexpr std::array<Indication, 4> usdoServerIndications{{
    {"usdo_server_read_ind_function"_L1, u"CORE_CONST CO_EVENT_USDO_SERVER_T coEventUsdoServerReadInd ="},
    {"usdo_server_write_ind_function"_L1, u"CORE_CONST CO_EVENT_USDO_SERVER_T coEventUsdoServerWriteInd ="},
    {"usdo_server_domain_read_ind_function"_L1,
     u"CORE_CONST CO_EVENT_USDO_SERVER_DOMAIN_READ_T coEventUsdoServerDomainReadInd ="},
    {"usdo_server_domain_write_ind_function"_L1,
     u"CORE_CONST CO_EVENT_USDO_SERVER_DOMAIN_WRITE_T coEventUsdoServerDomainWriteInd ="},
}};

constexpr std::array<Indication, 4> usdoClientIndications{{
    {"usdo_client_read_ind_function"_L1, u"CORE_CONST CO_EVENT_USDO_CLIENT_T coEventUsdoClientReadInd ="},
    {"usdo_client_write_ind_function"_L1, u"CORE_CONST CO_EVENT_USDO_CLIENT_T coEventUsdoClientWriteInd ="},
    {"usdo_client_domain_read_ind_function"_L1,
     u"CORE_CONST CO_EVENT_USDO_CLIENT_DOMAIN_TRANSFER_T coEventUsdoClientDomainReadInd ="},
    {"usdo_client_domain_write_ind_function"_L1,
     u"CORE_CONST CO_EVENT_USDO_CLIENT_DOMAIN_TRANSFER_T coEventUsdoClientDomainWriteInd ="},
}};

/** USDO is a service of CANopen FD; a line has it or not. */
bool hasUsdo(const SettingValues &general, const ObjectDictionaryView &view, const QString &key)
{
    return view.settings.canFd && std::ranges::any_of(view.projectLines, [&](quint8 line) {
               const quint32 type = general.number(u"line%1type"_s.arg(line));
               return LineProtocols::hasCANopen(int(type)) && general.numberForLine(key, line) > 0;
           });
}

} // namespace

StaticIndications::StaticIndications(const SettingValues &general, const ObjectDictionaryView &view)
{
    const auto add = [&](const auto &table) {
        for (const Indication &row : table)
            if (const QString function = general.text(row.key); !function.isEmpty())
                m_pointers.append({row.text, function});
    };
    if (view.settings.forJ1939Server)
        return;
    add(indications);
    if (hasUsdo(general, view, u"usdo_server_enabled"_s))
        add(usdoServerIndications);
    if (hasUsdo(general, view, u"usdo_client_enabled"_s))
        add(usdoClientIndications);
}

void StaticIndications::write(CodeWriter &out, const Dialect &dialect) const
{
    out << u"/* definition of static indication function pointers */\n";
    for (const Pointer &pointer : m_pointers)
        out << dialect.text(pointer.text.toString()) << pointer.function << u";\n";
}
