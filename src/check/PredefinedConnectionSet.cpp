// The pre-defined connection set (CiA 301): the COB-IDs that the first four PDOs of each direction have
// by default.

#include "check/LineCheck.h"
#include "check/LineRules.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView otherCobId{
    "Warning: Object 0x%1-0x01: The COB-ID for this PDO does not follow the pre-defined connection set."};
constexpr QLatin1StringView overwriteAdvice{
    "Enable CANopen Stack Settings -> Overwrite pre-defined connection set and call "
    "userOverwriteCobIdSettings() to use these COB-ID settings.\n\n"};

constexpr quint8 cobIdSubIndex = 1;

/** A PDO and the COB-ID that it has by default, less the Node-Id, in hexadecimal digits. */
struct PredefinedCobRule
{
    quint16 index;
    QLatin1StringView base;
};

constexpr std::array<PredefinedCobRule, 8> predefinedCobRules{{
    {0x1400, "200"_L1},
    {0x1401, "300"_L1},
    {0x1402, "400"_L1},
    {0x1403, "500"_L1},
    {0x1800, "180"_L1},
    {0x1801, "280"_L1},
    {0x1802, "380"_L1},
    {0x1803, "480"_L1},
}};

/** What may stand before the base: nothing, or the bits "not valid" (31) and "no RTR" (30) of eight digits.
 */
constexpr std::array<QLatin1StringView, 5> allowedForms{
    "$nodeid+0x"_L1, "$nodeid+0x00000"_L1, "$nodeid+0x80000"_L1, "$nodeid+0x40000"_L1, "$nodeid+0xc0000"_L1,
};

bool followsRule(const PredefinedCobRule &rule, const QString &value)
{
    return std::any_of(allowedForms.begin(), allowedForms.end(),
                       [&](QLatin1StringView form) { return value == form + rule.base; });
}

} // namespace

void checkPredefinedConnectionSet(LineCheck &check)
{
    const QString key = u"overwrite_predef"_s;
    if (unsignedValue(check.store.getGeneralSettingForLine(key, check.line)) != 0)
        return;
    bool advise = false;
    for (const PredefinedCobRule &rule : predefinedCobRules) {
        if (!check.exists(rule.index) || followsRule(rule, check.value(rule.index, cobIdSubIndex).toLower()))
            continue;
        check.findings.note(otherCobId.arg(indexText(rule.index)), check.at(rule.index, cobIdSubIndex));
        advise = true;
    }
    if (advise)
        check.findings.note(overwriteAdvice, ProjectLocation::ofSetting(key));
}
