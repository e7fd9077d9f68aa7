#include "generators/canopen/StackInitSettings.h"

#include "generators/canopen/SettingValues.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool hasName(const SettingValues &general, const QString &key)
{
    return !general.text(key).isEmpty();
}

StackInitSettings::Line readLine(const SettingValues &general, quint8 line, bool canFd)
{
    const auto number = [&](const QString &key) { return general.numberForLine(key, line); };
    return {.nmtRole = NmtRole(std::min(number(u"nmtmaster"_s), quint32(NmtRole::Dynamic))),
            .hasUsdoClient =
                canFd && number(u"usdo_client_enabled"_s) > 0 && number(u"usdo_client_cnt"_s) != 0,
            .hasIsoTp = number(u"isotp_connection_cnt"_s) > 0,
            .overwritesCobIds = number(u"overwrite_predef"_s) == 1};
}

} // namespace

StackInitSettings StackInitSettings::read(const SettingValues &general, bool canFd)
{
    StackInitSettings settings{
        .hasLeds = general.isOn(u"event_led"_s) || hasName(general, u"fct_led_green"_s)
            || hasName(general, u"fct_led_red"_s),
        .hasLss = general.isOn(u"lss_supported"_s),
        .hasIdNegotiation = general.isOn(u"idnego_supported"_s),
        .hasBootupManager = general.isOn(u"bootup_manager"_s),
        .hasStaticLoadFunction = hasName(general, u"fct_store"_s),
    };
    for (std::size_t number = 0; number < settings.lines.size(); ++number)
        settings.lines[number] = readLine(general, quint8(number), canFd);
    return settings;
}
