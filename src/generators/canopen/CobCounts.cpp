#include "generators/canopen/CobCounts.h"

#include "generators/LineProtocols.h"
#include "generators/canopen/DefineView.h"
#include "generators/canopen/LineObjects.h"
#include "store/ObjectDataBase.h"

#include <algorithm>
#include <array>
#include <numeric>

using namespace Qt::StringLiterals;

namespace {

/** Gives the CAN identifiers of one service. */
using Source = quint32 (*)(const CobSources &sources);

template <std::size_t size>
quint32 sum(const std::array<Source, size> &table, const CobSources &sources)
{
    return std::accumulate(table.begin(), table.end(), quint32(0),
                           [&](quint32 cobs, Source source) { return cobs + source(sources); });
}

// --- CANopen -------------------------------------------------------------------------------------

bool hasUsdo(const CobSources &sources)
{
    return sources.line.usdoServers > 0 || sources.line.usdoClients > 0;
}

/** A fixed number where the object exists. */
template <quint16 index, quint32 cobs>
quint32 ifPresent(const CobSources &sources)
{
    return sources.objects.has(index) ? cobs : 0;
}

/** A fixed number for each object of a range. */
template <quint16 first, quint16 last, quint32 cobs>
quint32 perObject(const CobSources &sources)
{
    return cobs * sources.objects.count(first, last);
}

quint32 usdo(const CobSources &sources)
{
    if (!hasUsdo(sources))
        return 0;
    const bool isClient = sources.general.numberForLine(u"usdo_client_cnt"_s, sources.line.number) != 0;
    return isClient ? 4 : 2;
}

quint32 emcyConsumers(const CobSources &sources)
{
    return sources.objects.subIndexCount(0x1028);
}

/** The first SDO server is there without an object, too. */
quint32 sdoServers(const CobSources &sources)
{
    const quint32 servers = sources.objects.count(0x1200, 0x127F);
    return servers > 0 ? 2 * servers : ifPresent<0x1000, 2>(sources);
}

quint32 heartbeatConsumers(const CobSources &sources)
{
    const quint32 subIndices = sources.objects.subIndexCount(0x1016);
    if (subIndices <= 1)
        return 0;
    return sources.general.isOn(u"only_one_hb_buffer"_s) ? 1 : subIndices - 1;
}

quint32 lss(const CobSources &sources)
{
    if (!sources.general.isOn(u"lss_supported"_s))
        return 0;
    return hasUsdo(sources) && sources.line.isNmtMaster() ? 3 : 2;
}

quint32 idNegotiation(const CobSources &sources)
{
    return sources.general.isOn(u"idnego_supported"_s) ? 2 : 0;
}

/** CiA 302-2: bit 0 of an entry says that the node is a slave of this master. */
bool isAssigned(const CobSources &sources, quint16 index, quint8 node)
{
    constexpr int byPrefix = 0;
    const QString entry = sources.store.getSubIndexDefault(sources.line.number, index, node);
    return (entry.toUInt(nullptr, byPrefix) & 1) != 0;
}

quint32 slaveAssignments(const CobSources &sources)
{
    constexpr quint16 slaveAssignment = 0x1F81;
    if (!sources.objects.has(slaveAssignment))
        return 0;
    if (const quint32 most = sources.general.number(u"max_slave_assignment"_s))
        return most;
    const QList<quint8> nodes = sources.objects.entries(slaveAssignment);
    return quint32(std::ranges::count_if(
        nodes, [&](quint8 node) { return isAssigned(sources, slaveAssignment, node); }));
}

quint32 sleepMode(const CobSources &sources)
{
    switch (sources.general.number(u"sleep_mode_selection"_s)) {
    case 1: // CiA 447
        return sources.line.isNmtMaster() ? 16 : 2;
    case 2: // CiA 454
        return 3;
    default:
        return 0;
    }
}

constexpr std::array<Source, 18> canopenSources{
    usdo,
    ifPresent<0x1000, 2>, // NMT and error control
    ifPresent<0x1014, 1>, // EMCY producer
    emcyConsumers,
    sdoServers,
    ifPresent<0x1300, 2>, // GFC
    perObject<0x1280, 0x12FF, 2>, // SDO clients
    perObject<0x1A00, 0x1BFF, 1>, // TPDOs
    perObject<0x1600, 0x17FF, 1>, // RPDOs
    ifPresent<0x1005, 1>, // SYNC
    heartbeatConsumers,
    ifPresent<0x1012, 2>, // TIME
    lss,
    idNegotiation,
    slaveAssignments,
    sleepMode,
    ifPresent<0x1F10, 1>, // SDO requesting device
    perObject<0x1301, 0x137F, 2>, // SRDOs
};

// --- J1939 ---------------------------------------------------------------------------------------

constexpr quint32 addressClaimed = 60928;

/** The address claim is among those of the stack, whether or not the project lists it. */
quint32 parameterGroups(const CobSources &sources)
{
    const quint8 line = sources.line.number;
    const QList<quint32> transmitted = sources.store.getPGNList(line, ObjectDataBase::Transmit);
    const auto received = sources.store.getPGNList(line, ObjectDataBase::Receive).size();
    return quint32(received + transmitted.size() - transmitted.count(addressClaimed));
}

/** Address claim, request and acknowledgement (SAE J1939-81, J1939-21), each sent and received. */
quint32 networkManagement(const CobSources &)
{
    return 6;
}

/** TP.CM and TP.DT (SAE J1939-21), each sent and received. */
quint32 transport(const CobSources &sources)
{
    const quint8 line = sources.line.number;
    const bool isUsed = sources.j1939.numberForLine(u"bamsupport"_s, line) > 0
        || sources.j1939.numberForLine(u"cmdtsupport"_s, line) > 0;
    return isUsed ? 4 : 0;
}

constexpr std::array<Source, 3> j1939Sources{parameterGroups, networkManagement, transport};

// --- What any line may have -----------------------------------------------------------------------

bool isOne(const CobSources &sources, const QString &key)
{
    return sources.general.number(key) == 1;
}

quint32 additional(const CobSources &sources)
{
    return sources.general.numberForLine(u"additional_cob_count"_s, sources.line.number);
}

/** Each connection of ISO 15765-2 has an identifier for either direction. */
quint32 isoTp(const CobSources &sources)
{
    if (!isOne(sources, u"isotp_supported"_s))
        return 0;
    return 2 * sources.general.numberForLine(u"isotp_client_con"_s, sources.line.number)
        + 2 * sources.general.numberForLine(u"isotp_server_con"_s, sources.line.number);
}

quint32 udsServer(const CobSources &sources)
{
    const bool isActive = sources.general.forLine(u"uds_server_active"_s, sources.line.number) == "1"_L1;
    return isOne(sources, u"udsserver_supported"_s) && isActive ? 7 : 0;
}

quint32 udsClients(const CobSources &sources)
{
    if (!isOne(sources, u"udsclient_supported"_s))
        return 0;
    return 3 * sources.general.numberForLine(u"uds_client_cnt"_s, sources.line.number);
}

quint32 protocols(const CobSources &sources)
{
    const int type = sources.line.type;
    return (LineProtocols::hasCANopen(type) ? canopenCobCount(sources) : 0)
        + (LineProtocols::hasJ1939(type) ? j1939CobCount(sources) : 0)
        + (LineProtocols::hasRawCan(type) ? rawCanCobCount(sources) : 0);
}

constexpr std::array<Source, 5> lineSources{additional, isoTp, udsServer, udsClients, protocols};

} // namespace

quint32 cobCount(const CobSources &sources)
{
    return sum(lineSources, sources);
}

quint32 canopenCobCount(const CobSources &sources)
{
    return sum(canopenSources, sources);
}

quint32 j1939CobCount(const CobSources &sources)
{
    return sum(j1939Sources, sources);
}

quint32 rawCanCobCount(const CobSources &sources)
{
    const quint8 line = sources.line.number;
    return quint32(sources.store.getCANIDList(line, ObjectDataBase::Transmit).size()
                   + sources.store.getCANIDList(line, ObjectDataBase::Receive).size());
}
