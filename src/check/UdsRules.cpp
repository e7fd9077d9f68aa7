// Unified diagnostic services (ISO 14229-1).

#include "check/CheckFindings.h"
#include "check/LineCheck.h"
#include "check/ProjectRules.h"
#include "store/ObjectDataBase.h"

#include <QMap>

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView serverAndClient{
    "<strong><font color='red'>Error: </font></strong>UDS server and UDS client together on one line is not "
    "possible."};
constexpr QLatin1StringView noCallback{
    "<strong>Warning: </strong>Static UDS indication is enabled but no service has a function name; no "
    "callback will be wired up."};
constexpr QLatin1StringView sharedCallback{
    "<strong><font color='red'>Error: </font></strong>The function name '%1' is used for more than one UDS "
    "static indication service; each service needs its own callback (different signature)."};

/** Settings that hold the callbacks' names. */
constexpr std::array<QLatin1StringView, 12> callbackKeys{
    "uds_fct_check_req_session"_L1, "uds_fct_clear_dtc_info"_L1,    "uds_fct_dtc_info"_L1,
    "uds_fct_id_data_transmit"_L1,  "uds_fct_mem_data_transmit"_L1, "uds_fct_sec_access_req_key"_L1,
    "uds_fct_req_commgt"_L1,        "uds_fct_authent_req"_L1,       "uds_fct_ioctrl"_L1,
    "uds_fct_routine_ctrl"_L1,      "uds_fct_data_transfer"_L1,     "uds_fct_generic"_L1,
};

void checkServerAndClient(ObjectDataBase &store, CheckFindings &findings)
{
    const QList<quint8> lines = projectLines(store);
    for (const quint8 line : lines)
        if (unsignedValue(store.getGeneralSettingForLine(u"uds_server_active"_s, line)) != 0
            && unsignedValue(store.getGeneralSettingForLine(u"uds_client_cnt"_s, line)) != 0)
            findings.error(serverAndClient, ProjectLocation::ofLine(line));
}

void checkCallbacks(ObjectDataBase &store, CheckFindings &findings)
{
    QMap<QString, int> uses;
    for (const QLatin1StringView key : callbackKeys) {
        const QString name = store.getGeneralSetting(key).trimmed();
        // The second use of a name is told; further ones add nothing.
        if (!name.isEmpty() && ++uses[name] == 2)
            findings.error(sharedCallback.arg(name.toHtmlEscaped()), ProjectLocation::ofSetting(key));
    }
    if (uses.isEmpty())
        findings.note(noCallback, ProjectLocation::ofSetting(u"uds_static_indication"_s));
}

} // namespace

void checkUds(ObjectDataBase &store, CheckFindings &findings)
{
    checkServerAndClient(store, findings);
    if (unsignedValue(store.getGeneralSetting(u"uds_static_indication"_s)) == 1)
        checkCallbacks(store, findings);
}
