// Indication functions: those fixed at compile time, and how many may be registered at run time.

#include "generators/canopen/DefineSections.h"
#include "generators/canopen/DefineView.h"
#include "generators/canopen/DefineWriter.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

/** A define that answers the names of some functions: any of them will do. */
struct StaticIndication
{
    QStringView macro;
    std::array<QLatin1StringView, 3> functions; ///< settings
};

constexpr std::array<StaticIndication, 26> staticIndications{{
    {u"CO_EVENT_STATIC_SDO_SERVER_READ", {"fct_sdo_server_read"_L1}},
    {u"CO_EVENT_STATIC_SDO_SERVER_WRITE", {"fct_sdo_server_write"_L1}},
    {u"CO_EVENT_STATIC_SDO_SERVER_CHECK_WRITE", {"fct_sdo_server_check_write"_L1}},
    {u"CO_EVENT_STATIC_PDO", {"fct_pdo"_L1, "fct_pdo_received"_L1, "fct_pdo_sync"_L1}},
    {u"CO_EVENT_STATIC_PDO_UPDATE", {"fct_pdo_update"_L1}},
    {u"CO_EVENT_STATIC_NMT", {"fct_nmt"_L1}},
    {u"CO_EVENT_STATIC_ERRCTRL", {"fct_errctrl"_L1}},
    {u"CO_EVENT_STATIC_SYNC", {"fct_sync"_L1}},
    {u"CO_EVENT_STATIC_FINISHED", {"fct_finished"_L1}},
    {u"CO_EVENT_STATIC_LED", {"fct_led_green"_L1, "fct_led_red"_L1}},
    {u"CORE_EVENT_STATIC_CAN", {"fct_can"_L1}},
    {u"CO_EVENT_STATIC_CFG_MAN", {"fct_cfgman"_L1}},
    {u"CO_EVENT_STATIC_SDO_CLIENT_READ", {"fct_sdo_client_read"_L1}},
    {u"CO_EVENT_STATIC_SDO_CLIENT_WRITE", {"fct_sdo_client_write"_L1}},
    {u"CO_EVENT_STATIC_EMCY", {"fct_emcy"_L1}},
    {u"CO_EVENT_STATIC_EMCY_CONSUMER", {"fct_emcy_consumer"_L1}},
    {u"CO_EVENT_STATIC_TIME", {"fct_time"_L1}},
    {u"CO_EVENT_STATIC_STORE_LOAD", {"fct_store"_L1}},
    {u"CO_EVENT_STATIC_STORE_CLEAR", {"fct_store_clear"_L1}},
    {u"CO_EVENT_STATIC_STORE_SAVE", {"fct_store_save"_L1}},
    {u"CO_EVENT_STATIC_SRD", {"fct_srd"_L1}},
    {u"CO_EVENT_STATIC_SYNC_FINISHED", {"fct_sync_finished"_L1}},
    {u"CO_EVENT_STATIC_LSS", {"fct_lss"_L1, "fct_lss_master"_L1}},
    {u"CO_EVENT_STATIC_FLYMA", {"fct_flyma"_L1}},
    {u"CO_EVENT_STATIC_MANAGER", {"fct_manager"_L1}},
    {u"CO_EVENT_STATIC_MPDO", {"fct_mpdo"_L1}},
}};

using Form = DefineForm;

constexpr std::array<DefineRow, 41> dynamicRows{{
    {u"CO_EVENT_DYNAMIC_USDO_SERVER_READ", "usdo_server_ind_read_cnt"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_SUSDO_READ_FINISHED", "usdo_server_ind_read_finished_cnt"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_USDO_SERVER_WRITE", "usdo_server_ind_write_cnt"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_SUSDO_DOMAIN_WRITE", "usdo_server_ind_domain_write_cnt"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_SUSDO_DOMAIN_READ", "usdo_server_ind_domain_read_cnt"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_USDO_CLIENT_READ", "usdo_client_ind_read_cnt"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_USDO_CLIENT_WRITE", "usdo_client_ind_write_cnt"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_CUSDO_DOMAIN_READ", "usdo_client_ind_domain_read_cnt"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_CUSDO_DOMAIN_WRITE", "usdo_client_ind_domain_write_cnt"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_SDO_SERVER_READ", "event_sdo_server_read"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_SDO_SERVER_WRITE", "event_sdo_server_write"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_PDO", "event_pdo"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_PDO_UPDATE", "event_pdo_update"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_NMT", "event_nmt"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_ERRCTRL", "event_errctrl"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_SYNC", "event_sync"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_SYNC_FINISHED", "event_sync_finished"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_FINISHED", "event_finished"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_LED", "event_led"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_CFG_MAN", "event_cfg"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_FLYMA", "event_flyma"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_NETWORK_SDOCLIENT_USER", "event_sdorouter"_L1, Form::Count},
    {u"CORE_EVENT_DYNAMIC_CAN", "event_can"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_SDO_CLIENT_READ", "event_sdo_client_read"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_SDO_CLIENT_WRITE", "event_sdo_client_write"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_EMCY", "event_emcy"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_EMCY_CONSUMER", "event_emcy_consumer"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_TIME", "event_time"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_STORE", "event_store"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_SRD", "event_srd"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_LSS", "event_lss"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_IDNEGO", "event_idnego"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_MANAGER", "event_manager"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_MPDO", "event_mpdo"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_GFC", "event_gfc"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_OBJECT_CHANGED", "object_changed_event"_L1, Form::Count},
    {u"CORE_OBJECT_CHANGED", "object_changed_event"_L1, Form::Switch},
    {u"CO_EVENT_DYNAMIC_SSDO_DOMAIN_WRITE", "event_ssdo_domain_write"_L1, Form::Count},
    {u"CO_EVENT_DYNAMIC_SSDO_DOMAIN_READ", "event_ssdo_domain_read"_L1, Form::Count},
    {u"ISOTP_EVENT_DYNAMIC_SERVER", "isotp_server_event"_L1, Form::Count},
    {u"ISOTP_EVENT_DYNAMIC_CLIENT", "isotp_client_event"_L1, Form::Count},
}};

void writeStatic(DefineWriter &out, const DefineView &view)
{
    for (const StaticIndication &indication : staticIndications)
        if (std::ranges::any_of(indication.functions, [&](QLatin1StringView function) {
                return !view.general.text(function).isEmpty();
            }))
            out.flag(indication.macro);
}

void writeSleepMode(DefineWriter &out, const DefineView &view)
{
    const quint32 mode = view.general.number(u"sleep_mode_selection"_s);
    if (mode != 1 && mode != 2)
        return;
    out.flag(u"CO_EVENT_DYNAMIC_SLEEP");
    out.flag(mode == 1 ? u"CO_SLEEP_447" : u"CO_SLEEP_454");
    out.flag(u"CORE_SLEEP_SUPPORTED");
    out.number(u"CO_SLEEP_WAITTIME", view.general.number(u"sleep_wait_time"_s));
}

} // namespace

void DefineSections::indications(DefineWriter &out, const DefineView &view)
{
    if (!view.hasCANopen)
        return;
    writeStatic(out, view);
    writeSleepMode(out, view);
    if (!view.general.isOn(u"enable_dynamic"_s))
        return;
    out.text(u"/* Definition of number of call-back functions for each service*/\n"_s);
    out.rows(dynamicRows, view);
}
