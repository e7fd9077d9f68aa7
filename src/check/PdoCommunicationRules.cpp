// PDO communication objects (CiA 301): their COB-IDs, times and the functions that serve them.

#include "check/LineCheck.h"
#include "check/LineRules.h"

#include <QHash>

#include <array>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView mappingMissing{
    "<strong>Error: </strong>Object 0x%1: The corresponding PDO mapping object 0x%2 does not exist."};
/** The first placeholder is the index: the sub-index is part of the text. */
constexpr QLatin1StringView cobIdNotInEds{
    "<strong>Hint: </strong>Subindex 1 of 0x%2 should have its default value in the EDS file."};
constexpr QLatin1StringView transmissionTypeNotInEds{
    "<strong>Hint: </strong>Subindex 2 of 0x%2 should have its default value in the EDS file."};
constexpr QLatin1StringView enabledButEmpty{
    "<strong>Error: </strong>Object 0x%1: PDO is enabled but its mapping table (0x%2) is empty (sub 0 = 0)."};
constexpr QLatin1StringView cobIdTaken{
    "<strong>Error: </strong>Object 0x%1: COB-ID '%2' is already used by PDO object 0x%3."};
constexpr QLatin1StringView eventTimerTooShort{
    "<strong>Warning: </strong>Subindex 3 and 5 of 0x%1: Event timer value should be greater than inhibit "
    "time value."};
constexpr QLatin1StringView oneCallbackOnly{
    "<strong>Error: </strong>Both static RPDO and TPDO event indication functions have to be defined."};

using ObjectRange = std::pair<quint16, quint16>;
constexpr ObjectRange transmitObjects{0x1800, 0x19FF};
constexpr std::array<ObjectRange, 2> communicationObjects{{{0x1400, 0x15FF}, transmitObjects}};
/** From a communication object to the mapping object of its PDO. */
constexpr quint16 mappingDistance = 0x200;
constexpr quint8 cobIdSubIndex = 1;
constexpr quint8 transmissionTypeSubIndex = 2;
constexpr quint8 inhibitTimeSubIndex = 3;
constexpr quint8 eventTimerSubIndex = 5;
/** Inhibit times count 100 microseconds, event timers milliseconds. */
constexpr quint64 inhibitTimeUnitsPerMillisecond = 10;
constexpr quint32 cobIdInvalid = 0x80000000;
constexpr quint32 canIdBits = 0x1FFFFFFF;
constexpr QLatin1StringView nodeIdTerm{"$nodeid+"};

/** A CAN-ID as the project can compare it: one that adds the Node-Id never equals one that does not. */
struct CobId
{
    bool addsNodeId = false;
    quint32 canId = 0;

    bool operator==(const CobId &) const = default;
    friend size_t qHash(const CobId &cobId, size_t seed) noexcept
    {
        return qHashMulti(seed, cobId.addsNodeId, cobId.canId);
    }
};

using CobIdOwners = QHash<CobId, quint16>;

/** Empty for a disabled PDO and for a text that is no COB-ID. */
std::optional<CobId> enabledCobId(const QString &text)
{
    QString number = text.trimmed();
    const bool addsNodeId = number.contains(nodeIdTerm, Qt::CaseInsensitive);
    number = number.remove(nodeIdTerm, Qt::CaseInsensitive).trimmed();
    bool isNumber = false;
    const quint32 cobId = number.toUInt(&isNumber, 0);
    if (!isNumber || (cobId & cobIdInvalid))
        return {};
    return CobId{.addsNodeId = addsNodeId, .canId = cobId & canIdBits};
}

void checkMappingObject(const LineCheck &check, quint16 index)
{
    const quint16 mapping = index + mappingDistance;
    if (!check.exists(mapping))
        check.findings.error(mappingMissing.arg(indexText(index), indexText(mapping)), check.at(index));
}

void checkDefaultInEds(const LineCheck &check, quint16 index, quint8 subIndex, QLatin1StringView message)
{
    if (check.exists(index, subIndex) && !check.isDefaultInEds(index, subIndex))
        check.findings.note(QString(message).replace("%2"_L1, indexText(index)), check.at(index, subIndex));
}

void checkMappingInUse(const LineCheck &check, quint16 index)
{
    const quint16 mapping = index + mappingDistance;
    if (check.exists(mapping, 0) && unsignedValue(check.value(mapping, 0)) == 0)
        check.findings.error(enabledButEmpty.arg(indexText(index), indexText(mapping)), check.at(index));
}

void checkCobId(const LineCheck &check, quint16 index, CobIdOwners &owners)
{
    const QString value = check.value(index, cobIdSubIndex);
    const std::optional<CobId> cobId = enabledCobId(value);
    if (!cobId)
        return;
    checkMappingInUse(check, index);
    if (const auto owner = owners.constFind(*cobId); owner != owners.constEnd())
        check.findings.error(cobIdTaken.arg(indexText(index), value.toHtmlEscaped(), indexText(*owner)),
                             check.at(index, cobIdSubIndex));
    else
        owners.insert(*cobId, index);
}

void checkEventTimer(const LineCheck &check, quint16 index)
{
    if (!check.exists(index, inhibitTimeSubIndex) || !check.exists(index, eventTimerSubIndex))
        return;
    const quint64 inhibitTime = unsignedValue(check.value(index, inhibitTimeSubIndex));
    const quint64 eventTimer = unsignedValue(check.value(index, eventTimerSubIndex));
    if (eventTimer != 0 && inhibitTime / inhibitTimeUnitsPerMillisecond >= eventTimer)
        check.findings.note(eventTimerTooShort.arg(indexText(index)), check.at(index, eventTimerSubIndex));
}

} // namespace

// One map for both directions: a receive and a transmit PDO collide as well.
void checkPdoCommunication(LineCheck &check)
{
    CobIdOwners owners;
    for (const auto &[first, last] : communicationObjects) {
        const QList<quint16> indices = check.indices(first, last);
        for (const quint16 index : indices) {
            checkMappingObject(check, index);
            checkDefaultInEds(check, index, cobIdSubIndex, cobIdNotInEds);
            checkDefaultInEds(check, index, transmissionTypeSubIndex, transmissionTypeNotInEds);
            checkCobId(check, index, owners);
        }
    }
}

void checkEventTimers(LineCheck &check)
{
    const QList<quint16> indices = check.indices(transmitObjects.first, transmitObjects.second);
    for (const quint16 index : indices)
        checkEventTimer(check, index);
}

void checkPdoCallbacks(LineCheck &check)
{
    if (check.store.getGeneralSetting(u"use_core_headers"_s) == "V4"_L1)
        return;
    const QString transmitKey = u"fct_pdo"_s;
    const bool hasTransmit = !check.store.getGeneralSetting(transmitKey).trimmed().isEmpty();
    const bool hasReceive = !check.store.getGeneralSetting(u"fct_pdo_receive"_s).trimmed().isEmpty();
    if (hasTransmit != hasReceive)
        check.findings.error(oneCallbackOnly, ProjectLocation::ofSetting(transmitKey));
}
