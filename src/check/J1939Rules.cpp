// The J1939 settings of a line: the services of the stack and the device's NAME (SAE J1939-81).

#include "check/CheckFindings.h"
#include "check/LineCheck.h"
#include "check/ProjectRules.h"
#include "store/ObjectDataBase.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView sortedCobs{
    "<strong>Error: </strong>Sorted COB list may not used with J1939 projects."};
constexpr QLatin1StringView groupFilter{
    "<strong>Warning: </strong>Group filter is only useful for CANopen or mixed projects."};
constexpr QLatin1StringView dynamicWithoutCobs{
    "<strong>Error: </strong>Additional COBs need to be specific with dynamic PGN support."};
constexpr QLatin1StringView identityNumberMissing{
    "<strong>Error: </strong>Identity number not defined in J1939 configuration tab for line %1."};
constexpr QLatin1StringView manufacturerCodeMissing{
    "<strong>Error: </strong>Manufacturer code not defined in J1939 configuration tab for line %1."};
constexpr QLatin1StringView manufacturerCodeBorrowed{
    "<strong>Warning: The manufacturer code 1207 (Korvel embedded communication GmbH) may not be used for "
    "production. </strong>"};
constexpr QLatin1StringView ecuInstanceMissing{
    "<strong>Error: </strong>ECU instance not defined in J1939 configuration tab for line %1."};
constexpr QLatin1StringView functionInstanceMissing{
    "<strong>Error: </strong>Function instance not defined in J1939 configuration tab for line %1"};
constexpr QLatin1StringView functionMissing{
    "<strong>Error: </strong>Function not defined in J1939 configuration tab for line %1."};
constexpr QLatin1StringView vehicleSystemMissing{
    "<strong>Error: </strong>Vehicle system not defined in J1939 configuration tab for line %1."};
constexpr QLatin1StringView vehicleInstanceMissing{
    "<strong>Error: </strong>Vehicle instance not defined in J1939 configuration tab for line %1."};
constexpr QLatin1StringView industryGroupMissing{
    "<strong>Error: </strong>Industry Group not defined in J1939 configuration tab for line %1."};
constexpr QLatin1StringView addressMissing{
    "<strong>Error: </strong>An address needs to defined in the J1939 configuration for line %1."};

constexpr QLatin1StringView manufacturerCodeKey{"manufacturercode"};
/** The code of the examples, which belongs to the maker of the stack. */
constexpr quint64 stackManufacturerCode = 1207;

/** A field of the NAME and what is told where a line has none. */
struct NameField
{
    QLatin1StringView key;
    QLatin1StringView missing;
};

constexpr std::array<NameField, 8> nameFields{{
    {"identitynumber"_L1, identityNumberMissing},
    {manufacturerCodeKey, manufacturerCodeMissing},
    {"ecuinstance"_L1, ecuInstanceMissing},
    {"functioninstance"_L1, functionInstanceMissing},
    {"function"_L1, functionMissing},
    {"vehiclesystem"_L1, vehicleSystemMissing},
    {"vehicleinstance"_L1, vehicleInstanceMissing},
    {"industrygroup"_L1, industryGroupMissing},
}};

/** The line's entry of a list; behind its end the last one counts. */
QString lineEntry(ObjectDataBase &store, QLatin1StringView key, quint8 line)
{
    const QStringList entries = store.getJ1939Setting(key).split(u',');
    return line < entries.size() ? entries.at(line) : entries.constLast();
}

void checkStackServices(ObjectDataBase &store, CheckFindings &findings, quint8 line)
{
    const QString sortedKey = u"sorted_coblist"_s;
    const QString filterKey = u"drv_group_filter"_s;
    const QString cobKey = u"additional_cob_count"_s;
    if (unsignedValue(store.getGeneralSetting(sortedKey)) > 0)
        findings.error(sortedCobs, ProjectLocation::ofSetting(sortedKey));
    if (unsignedValue(store.getGeneralSetting(filterKey)) == 1)
        findings.note(groupFilter, ProjectLocation::ofSetting(filterKey));
    if (unsignedValue(store.getJ1939Setting(u"dynsupport"_s)) > 0
        && unsignedValue(store.getGeneralSettingForLine(cobKey, line)) == 0)
        findings.error(dynamicWithoutCobs, ProjectLocation::ofSetting(cobKey));
}

void checkName(ObjectDataBase &store, CheckFindings &findings, quint8 line)
{
    for (const NameField &field : nameFields) {
        const QString value = lineEntry(store, field.key, line);
        const ProjectLocation where = ProjectLocation::ofSetting(field.key);
        if (value.isEmpty())
            findings.error(field.missing.arg(QString::number(line)), where);
        if (field.key == manufacturerCodeKey && unsignedValue(value) == stackManufacturerCode)
            findings.note(manufacturerCodeBorrowed, where);
    }
}

void checkAddress(ObjectDataBase &store, CheckFindings &findings, quint8 line)
{
    constexpr QLatin1StringView key = "startaddress"_L1;
    if (lineEntry(store, key, line).trimmed().isEmpty())
        findings.error(addressMissing.arg(QString::number(line)), ProjectLocation::ofSetting(key));
}

} // namespace

void checkJ1939Settings(ObjectDataBase &store, CheckFindings &findings, quint8 line)
{
    checkStackServices(store, findings, line);
    checkName(store, findings, line);
    checkAddress(store, findings, line);
}
