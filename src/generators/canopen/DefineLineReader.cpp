#include "generators/canopen/DefineLineReader.h"

#include "canopen/CANopenTypes.h"
#include "generators/LineProtocols.h"
#include "generators/canopen/CobCounts.h"
#include "generators/canopen/DefineView.h"
#include "generators/canopen/LineObjects.h"
#include "store/ObjectDataBase.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/** CiA 301: where the PDOs of one direction have their parameters. */
struct PdoObjects
{
    quint16 first;
    quint16 last;
    quint16 firstMapping;
    quint16 lastMapping;
};

/** The buffers of a boot loader whose project tells none. */
constexpr quint32 bootloaderReceiveBuffers = 10;
constexpr quint32 bootloaderTransmitBuffers = 5;

constexpr PdoObjects receivePdos{0x1400, 0x15FF, 0x1600, 0x17FF};
constexpr PdoObjects transmitPdos{0x1800, 0x19FF, 0x1A00, 0x1BFF};

/** Fills the numbers of a line, one subject after the other. */
class Reader
{
public:
    Reader(const DefineLineSources &sources, quint8 number, int type) : m_sources(sources)
    {
        m_line.number = number;
        m_line.type = type;
    }

    DefineLine read()
    {
        m_line.receiveBuffers = buffers(u"receivebuffersize"_s, bootloaderReceiveBuffers);
        m_line.transmitBuffers = buffers(u"transmitbuffersize"_s, bootloaderTransmitBuffers);
        m_line.objects = quint32(m_sources.assigned.size());
        readNetworkManagement();
        readPdos();
        readSdos();
        readUsdos();
        readErrors();
        readStorage();
        m_line.cobs = cobCount({m_sources.store, m_sources.general, m_sources.j1939, objects(), m_line});
        return m_line;
    }

private:
    const LineObjects &objects() const { return m_sources.objects; }
    bool hasCANopen() const { return LineProtocols::hasCANopen(m_line.type); }
    quint32 setting(const QString &key) const { return m_sources.general.numberForLine(key, m_line.number); }

    quint32 buffers(const QString &key, quint32 ofBootloader) const
    {
        const bool isTold = m_sources.general.contains(key) || !DefineView::isBootloader(m_sources.general);
        return isTold ? setting(key) : ofBootloader;
    }

    void readNetworkManagement()
    {
        if (hasCANopen())
            m_line.nmtRole = NmtRole(std::min(setting(u"nmtmaster"_s), quint32(NmtRole::Dynamic)));
        m_line.heartbeatConsumers = objects().entryCount(0x1016);
        m_line.slaveAssignments = objects().entryCount(0x1F81);
        m_line.maxSlaveAssignments = m_line.slaveAssignments;
        const quint32 most = m_sources.general.number(u"max_slave_assignment"_s);
        if (objects().has(0x1F81) && most > 0)
            m_line.maxSlaveAssignments = most;
    }

    void readPdos()
    {
        m_line.transmitPdos = objects().count(transmitPdos.first, transmitPdos.last);
        m_line.receivePdos = objects().count(receivePdos.first, receivePdos.last);
        m_line.dynamicTransmitPdos = dynamicPdos(transmitPdos);
        m_line.dynamicReceivePdos = dynamicPdos(receivePdos);
        m_line.mappingEntries = std::max(largestMapping(transmitPdos), largestMapping(receivePdos));
        constexpr quint8 eventTimer = 5; // sub-index of the communication parameters
        const QList<quint16> received = objects().range(receivePdos.first, receivePdos.last);
        m_line.hasReceiveTimer =
            std::ranges::any_of(received, [&](quint16 index) { return objects().has(index, eventTimer); });
    }

    /** A mapping can be changed where its number of entries can. */
    bool isDynamic(quint16 mapping) const
    {
        ObjectDataBase::SUBINDEX_DATA_T count;
        return m_sources.store.getSubIndex(m_line.number, mapping, 0, count) && count.accesstype == "rw"_L1;
    }

    quint32 dynamicPdos(const PdoObjects &kind) const
    {
        const QList<quint16> pdos = objects().range(kind.first, kind.last);
        return quint32(std::ranges::count_if(
            pdos, [&](quint16 index) { return isDynamic(quint16(index - kind.first + kind.firstMapping)); }));
    }

    quint32 largestMapping(const PdoObjects &kind) const
    {
        quint32 most = 1; // sub-index 0, which is no entry
        const QList<quint16> mappings = objects().range(kind.firstMapping, kind.lastMapping);
        for (const quint16 index : mappings)
            most = std::max(most, objects().subIndexCount(index));
        return most - 1;
    }

    /** CiA 510: SDO over J1939, which needs no communication object. */
    bool hasJ1939Sdo(const QString &key) const
    {
        return LineProtocols::hasJ1939(m_line.type) && m_sources.j1939.numberForLine(key, m_line.number) == 1;
    }

    void readSdos()
    {
        const bool hasDefaultServer = hasCANopen() && objects().has(0x1000);
        const bool hasServer = hasDefaultServer || hasJ1939Sdo(u"cia510serversupport"_s);
        m_line.sdoServers = std::max(objects().count(0x1200, 0x127F), quint32(hasServer ? 1 : 0));
        const bool hasClient = hasJ1939Sdo(u"cia510clientsupport"_s);
        m_line.sdoClients = std::max(objects().count(0x1280, 0x12FF), quint32(hasClient ? 1 : 0));
        m_line.srdos = objects().count(0x1301, 0x137F);
        m_line.routings = objects().has(0x1F2C)
            ? objects().entryCount(0x1F2C)
            : m_sources.general.numberForLine(u"routing_counts"_s, m_line.number);
    }

    void readUsdos()
    {
        if (!hasCANopen())
            return;
        if (setting(u"usdo_server_enabled"_s) > 0)
            m_line.usdoServers = setting(u"usdo_server_cnt"_s);
        if (setting(u"usdo_client_enabled"_s) > 0)
            m_line.usdoClients = setting(u"usdo_client_cnt"_s);
    }

    void readErrors()
    {
        m_line.errorHistory = objects().entryCount(0x1003);
        m_line.activeErrors = objects().has(0x1032) ? objects().entryCount(0x1032) : m_line.errorHistory;
        m_line.emcyConsumers = objects().entryCount(0x1028);
    }

    void readStorage()
    {
        m_line.storeEntries = std::max(objects().entryCount(0x1010), objects().entryCount(0x1011));
        m_line.nonVolatile =
            quint32(m_sources.store.findSubIndices(m_line.number, u"nvstorage"_s, u"1"_s, false).size());
    }

    const DefineLineSources &m_sources;
    DefineLine m_line;
};

} // namespace

DefineLine readDefineLine(const DefineLineSources &sources, quint8 line, int type)
{
    return Reader(sources, line, type).read();
}

QSet<quint16> assignedObjects(ObjectDataBase &store, quint8 line, const LineObjects &objects,
                              const QSet<quint16> &ofLine0)
{
    QSet<quint16> shared;
    if (line != 0) {
        const auto found = store.findSubIndices(line, u"sharedlines"_s, u"1"_s, false);
        for (const ObjectDataBase::SubAddress &address : found)
            if (address.second == 0)
                shared.insert(address.first);
    }
    QSet<quint16> assigned;
    for (const LineObjects::SubIndex &sub : objects.allSubIndices()) {
        const bool hasRow = sub.number == 0 && sub.implementation != CANopen::VirtualObject;
        if (hasRow && objects.has(sub.index) && (!shared.contains(sub.index) || ofLine0.contains(sub.index)))
            assigned.insert(sub.index);
    }
    return assigned;
}
