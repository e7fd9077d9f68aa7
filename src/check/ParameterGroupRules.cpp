// J1939 parameter groups and their signals (SAE J1939-21, safety messages SAE J1939-76).

#include "canopen/CANopenTypes.h"
#include "check/CheckFindings.h"
#include "check/LineCheck.h"
#include "check/ProjectRules.h"
#include "check/SignalLayout.h"
#include "store/ObjectDataBase.h"

#include <QHash>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

// The first placeholder is the number of the group, the second the same in hexadecimal digits.
constexpr QLatin1StringView reserved{
    "<strong>Error: </strong>Special PGN %1/0x%2 is handled by the J1939 stack directly and may not be "
    "included in the signal definitions.\n"};
constexpr QLatin1StringView groupUnnamed{"<strong>Warning: </strong>The PGN %1 des not have a name."};
constexpr QLatin1StringView withoutSpn{"<strong>Error: </strong>PG (%1/0x%2) does not contain any SPNs."};
constexpr QLatin1StringView safetyTypeMissing{
    "<strong>Error: </strong>PG (%1/0x%2) A safety type needs to be assigned to this PGN."};
constexpr QLatin1StringView safetyTypeNeedsFd{
    "<strong>Error: </strong>PG (%1/0x%2) This safety type is not supported with classical CAN."};
constexpr QLatin1StringView managedInSafety{
    "<strong>Error: </strong>PG (%1/0x%2) transmitted as SDM may not contain managed variables."};
constexpr QLatin1StringView typeNotPacked{
    "<strong>Error: </strong>PG (%1/0x%2) contains unsuppported data types."};
constexpr QLatin1StringView safetyDisabled{
    "<strong>Warning: </strong>PG (%1/0x%2) shall be transmitted as SDM but SHM support is not activated."};
constexpr QLatin1StringView safetyTooLong{
    "<strong>Error: </strong>PG (%1/0x%2) transmitted as SDM may not exceed 64 bit."};
constexpr QLatin1StringView noTransport{
    "<strong>Error: </strong>Neither BAM nor TP.CMDT supported but PGNs with length > 64 bit defined."};
constexpr QLatin1StringView noTransportPackets{
    "<strong>Error: </strong>CMDT packet count should not be 0 in J1939 configuration."};

// The first placeholder is the number of the signal, the second that of its group.
constexpr QLatin1StringView variableMissing{
    "<strong>Error: </strong>The SPN %1 in PGN %2 needs a variable name."};
constexpr QLatin1StringView signalUnnamed{"<strong>Warning: </strong>The SPN %1 in PGN %2 needs a name."};
constexpr QLatin1StringView startsWithDigit{
    "<strong>Warning: </strong>The name of SPN %1 in PGN %2 should not start with a number."};
constexpr QLatin1StringView notAscending{
    "<strong>Error: </strong>The SPN %1 in PGN %2: position not in ascending order."};
constexpr QLatin1StringView overlapping{
    "<strong>Warning: </strong>SPN %1 in PGN %2 overlaps in bit position with another SPN in the same PGN."};
constexpr QLatin1StringView variableTaken{
    "<strong>Warning: </strong>SPN %1 in PGN %2: variable name '%3' is already used by SPN %4 in PGN %5."};

/** Bits of a classical CAN frame; longer groups need a transport protocol. */
constexpr qint64 frameBits = 64;
constexpr int noSafetyType = 0;
/** The functional safety profile, whose trailer only CAN FD frames hold. */
constexpr int fdSafetyType = 3;
constexpr int pgnDigits = 4;

/** What the code that packs and unpacks safety messages knows; it works on plain bytes. */
constexpr std::array packedTypes{
    CAN::Boolean,    CAN::Unsigned2,  CAN::Unsigned3,  CAN::Unsigned4,  CAN::Unsigned5,
    CAN::Unsigned6,  CAN::Unsigned7,  CAN::Unsigned8,  CAN::Unsigned10, CAN::Unsigned12,
    CAN::Unsigned14, CAN::Unsigned16, CAN::Unsigned24, CAN::Unsigned32,
};

using Spn = ObjectDataBase::SPN;

/** One line, with the settings that all its groups share. */
struct J1939Line
{
    ObjectDataBase &store;
    CheckFindings &findings;
    const quint8 line;
    const QList<quint32> &reservedPgns;
    bool bam = false;
    bool cmdt = false;
    bool safety = false;
    bool canFd = false;
    quint64 cmdtPackets = 0;
    QHash<QString, SignalPlace> variables{}; ///< application variables and the first signal that uses each
};

struct Group
{
    quint32 number = 0;
    quint8 direction = 0;
    ObjectDataBase::PGN pgn{};
    QList<std::pair<quint32, Spn>> spns{}; ///< by position
    qint64 bits = 0;
};

Group readGroup(ObjectDataBase &store, quint8 line, quint32 number, quint8 direction)
{
    Group group{.number = number, .direction = direction};
    store.getPGN(line, number, direction, group.pgn);
    const QList<quint32> spnNumbers = store.getSPNList(line, number, direction);
    for (const quint32 spnNumber : spnNumbers) {
        Spn spn;
        store.getSPN(line, number, direction, spnNumber, spn);
        group.bits += signalBits(spn.datatype, spn.bitsize);
        group.spns.append({spnNumber, spn});
    }
    return group;
}

bool anyOf(const Group &group, bool (*holds)(const Spn &))
{
    return std::any_of(group.spns.begin(), group.spns.end(),
                       [&](const auto &numbered) { return holds(numbered.second); });
}

bool isManaged(const Spn &spn)
{
    return spn.implementation == CANopen::ManagedVariable;
}

bool cannotBePacked(const Spn &spn)
{
    return std::find(packedTypes.begin(), packedTypes.end(), spn.datatype) == packedTypes.end();
}

/** A finding and when it is told of a group or signal. */
template <typename... Subject>
struct Rule
{
    bool (*applies)(const Subject &...);
    QLatin1StringView text;
    bool isError = true;
};

using GroupRule = Rule<J1939Line, Group>;

constexpr bool warning = false;

constexpr std::array<GroupRule, 11> groupRules{{
    {[](const J1939Line &line, const Group &group) { return line.reservedPgns.contains(group.number); },
     reserved},
    {[](const J1939Line &, const Group &group) { return group.pgn.name.isEmpty(); }, groupUnnamed, warning},
    {[](const J1939Line &, const Group &group) { return group.spns.isEmpty(); }, withoutSpn},
    {[](const J1939Line &, const Group &group) {
         return group.pgn.issafe && group.pgn.safetytype == noSafetyType;
     },
     safetyTypeMissing},
    {[](const J1939Line &line, const Group &group) {
         return group.pgn.issafe && group.pgn.safetytype == fdSafetyType && !line.canFd;
     },
     safetyTypeNeedsFd},
    {[](const J1939Line &, const Group &group) { return group.pgn.issafe && anyOf(group, isManaged); },
     managedInSafety},
    {[](const J1939Line &, const Group &group) { return group.pgn.issafe && anyOf(group, cannotBePacked); },
     typeNotPacked},
    {[](const J1939Line &line, const Group &group) { return group.pgn.issafe && !line.safety; },
     safetyDisabled, warning},
    {[](const J1939Line &, const Group &group) { return group.pgn.issafe && group.bits > frameBits; },
     safetyTooLong},
    {[](const J1939Line &line, const Group &group) {
         return group.bits > frameBits && !line.bam && !line.cmdt;
     },
     noTransport},
    {[](const J1939Line &line, const Group &) { return line.cmdt && line.cmdtPackets == 0; },
     noTransportPackets},
}};

void report(CheckFindings &findings, bool isError, const QString &text, const ProjectLocation &where)
{
    if (isError)
        findings.error(text, where);
    else
        findings.note(text, where);
}

/** The numbers stand in some texts once or not at all, which arg() would complain of. */
QString filled(QLatin1StringView text, const QString &first, const QString &second)
{
    return QString(text).replace("%1"_L1, first).replace("%2"_L1, second);
}

void checkGroup(const J1939Line &line, const Group &group)
{
    const QString number = QString::number(group.number);
    const QString digits = u"%1"_s.arg(group.number, pgnDigits, 16, QChar(u'0'));
    const ProjectLocation where = ProjectLocation::ofPgn(line.line, group.number, group.direction);
    for (const GroupRule &rule : groupRules)
        if (rule.applies(line, group))
            report(line.findings, rule.isError, filled(rule.text, number, digits), where);
}

using SpnRule = Rule<Spn>;

constexpr std::array<SpnRule, 3> spnRules{{
    {[](const Spn &spn) {
         return spn.implementation == CANopen::ApplicationVariable && spn.varname.trimmed().isEmpty();
     },
     variableMissing},
    {[](const Spn &spn) { return spn.name.isEmpty(); }, signalUnnamed, warning},
    {[](const Spn &spn) { return !spn.name.isEmpty() && spn.name.front().isDigit(); }, startsWithDigit,
     warning},
}};

void checkVariable(J1939Line &line, const Group &group, quint32 number, const Spn &spn)
{
    const QString name = spn.varname.trimmed();
    if (spn.implementation != CANopen::ApplicationVariable || name.isEmpty())
        return;
    const auto owner = line.variables.constFind(name);
    if (owner == line.variables.constEnd())
        line.variables.insert(name, {.message = group.number, .signal = number});
    else
        line.findings.note(variableTaken.arg(QString::number(number), QString::number(group.number),
                                             name.toHtmlEscaped(), QString::number(owner->signal),
                                             QString::number(owner->message)),
                           ProjectLocation::ofSpn(line.line, group.number, group.direction, number));
}

void checkSignals(J1939Line &line, const Group &group)
{
    OccupiedBits occupied;
    const Spn *previous = nullptr;
    for (const auto &[number, spn] : group.spns) {
        const ProjectLocation where =
            ProjectLocation::ofSpn(line.line, group.number, group.direction, number);
        const auto text = [number = number, &group](QLatin1StringView message) {
            return message.arg(QString::number(number), QString::number(group.number));
        };
        for (const SpnRule &rule : spnRules)
            if (rule.applies(spn))
                report(line.findings, rule.isError, text(rule.text), where);
        if (previous && spn.bitposition < previous->bitposition)
            line.findings.error(text(notAscending), where);
        if (!occupied.take(spn.bitposition, signalBits(spn.datatype, spn.bitsize)))
            line.findings.note(text(overlapping), where);
        checkVariable(line, group, number, spn);
        previous = &spn;
    }
}

bool isOn(const QString &value)
{
    return unsignedValue(value) > 0;
}

} // namespace

void checkParameterGroups(ObjectDataBase &store, CheckFindings &findings, quint8 line,
                          const QList<quint32> &reservedPgns)
{
    store.cacheAllSpns(line);
    J1939Line check{.store = store,
                    .findings = findings,
                    .line = line,
                    .reservedPgns = reservedPgns,
                    .bam = isOn(store.getJ1939Setting(u"bamsupport"_s)),
                    .cmdt = isOn(store.getJ1939Setting(u"cmdtsupport"_s)),
                    .safety = isOn(store.getJ1939Setting(u"safetysupport"_s)),
                    .canFd = unsignedValue(store.getGeneralSetting(u"canfd_supported"_s)) == 1,
                    .cmdtPackets = unsignedValue(store.getJ1939Setting(u"cmdtpackets"_s))};
    for (const quint8 direction : {ObjectDataBase::Receive, ObjectDataBase::Transmit}) {
        const QList<quint32> numbers = store.getPGNList(line, direction);
        for (const quint32 number : numbers) {
            const Group group = readGroup(store, line, number, direction);
            checkGroup(check, group);
            checkSignals(check, group);
        }
    }
}
