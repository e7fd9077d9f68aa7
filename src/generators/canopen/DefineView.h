#pragma once

#include "generators/CValues.h"
#include "generators/canopen/SettingValues.h"

#include <QList>
#include <QSet>
#include <QString>

#include <algorithm>
#include <array>
#include <functional>

class ObjectDataBase;

/** What the run tells the definitions, beside what the project itself says. */
struct DefineRequest
{
    bool hasJ1939 = false;
    bool multiProtocol = false; ///< several protocols share one initialisation
    bool forceMultiLine = false; ///< the multi-line form is asked for whatever the lines are
};

/** How a line takes part in network management (CiA 301, CiA 302-2); the stored numbers. */
enum class NmtRole : quint8 {
    Slave = 0,
    Master = 1,
    Dynamic = 2, ///< chosen when the stack starts
};

/** The numbers of one line. Where an object counts by its entries, sub-index 0 is none of them. */
struct DefineLine
{
    quint8 number = 0;
    int type = 0; ///< see LineProtocols
    NmtRole nmtRole = NmtRole::Slave; ///< of a line that carries CANopen

    quint32 receiveBuffers = 0; ///< messages
    quint32 transmitBuffers = 0;
    quint32 objects = 0; ///< rows of the object dictionary's assignment table
    quint32 transmitPdos = 0;
    quint32 receivePdos = 0;
    quint32 dynamicTransmitPdos = 0; ///< whose mapping can be changed over the network
    quint32 dynamicReceivePdos = 0;
    bool hasReceiveTimer = false; ///< some RPDO is watched by its event timer
    quint32 mappingEntries = 0; ///< of the largest PDO mapping
    quint32 sdoServers = 0;
    quint32 sdoClients = 0;
    quint32 usdoServers = 0; ///< connections; 0 where the service is off
    quint32 usdoClients = 0;
    quint32 srdos = 0;
    quint32 slaveAssignments = 0; ///< entries of 0x1F81
    quint32 maxSlaveAssignments = 0;
    quint32 heartbeatConsumers = 0;
    quint32 storeEntries = 0; ///< of 0x1010 or 0x1011, the larger one
    quint32 errorHistory = 0;
    quint32 activeErrors = 0; ///< places in the list of active errors
    quint32 emcyConsumers = 0;
    quint32 routings = 0; ///< entries of the remote network routing list
    quint32 nonVolatile = 0; ///< sub-indices that are kept in non-volatile memory
    quint32 cobs = 0; ///< CAN identifiers that the stack handles on this line

    bool isNmtMaster() const { return nmtRole != NmtRole::Slave; }
    /** A line whose role is chosen at run time may be either. */
    bool isNmtSlave() const { return nmtRole != NmtRole::Master; }
};

/** Multiplexed PDOs (CiA 301): who has some, and how they address. */
struct MultiplexedPdos
{
    bool isProducer = false;
    bool isConsumer = false;
    bool bySource = false; ///< source addressing mode
    bool byDestination = false; ///< destination addressing mode
};

/** Numbers by the value table that the type of a sub-index belongs to. */
struct CountsByTable
{
    std::array<quint32, CValues::tableForms.size()> counts{};

    quint32 &operator[](CValues::Table table) { return counts[std::size_t(table)]; }
    quint32 operator[](CValues::Table table) const { return counts[std::size_t(table)]; }
};

/** The second dictionary, whose objects are served by callbacks. */
struct VirtualDictionary
{
    quint32 objects = 0; ///< that have sub-indices served by callbacks
    quint32 subIndices = 0;
    CountsByTable types;
};

/** A device profile that the stack's profile code shall serve. */
struct DeviceProfile
{
    QString number; ///< "401"
    QString group; ///< of CiA 447: the group of virtual devices; mostly empty
};

/** All that gen_define.h tells of a project: read once, before anything is written. */
struct DefineView
{
    DefineRequest request;
    bool isEnergyBus = false; ///< the edition
    bool hasCANopen = false;
    bool hasRawCan = false;
    bool hasJ1939Server = false; ///< a J1939 device with an object dictionary (CiA 510)
    SettingValues general;
    SettingValues energyBus;

    QList<DefineLine> lines; ///< all lines that the stack knows, ascending
    QSet<quint16> communicationObjects; ///< 0x1000 to 0x1FFF, of any line
    MultiplexedPdos multiplexedPdos;
    QList<DeviceProfile> profiles;
    CountsByTable srdoVariables; ///< mapped into SRDOs
    VirtualDictionary virtualObjects;

    static DefineView read(ObjectDataBase &store, const DefineRequest &request);

    bool hasObject(quint16 index) const { return communicationObjects.contains(index); }
    /** Several lines, or the form that is made for them. */
    bool isMultiLineForm() const { return lines.size() > 1 || request.forceMultiLine; }
    bool hasUds() const;
    /** The structure that the services are started with bears a version. */
    bool hasNewInitStructure() const;
    /** A UDS boot loader, which has buffers but no services. */
    bool isBootloader() const { return isBootloader(general); }
    static bool isBootloader(const SettingValues &general);

    /** A number of all lines together. */
    quint32 total(quint32 DefineLine::*number) const;
    /** A number of the line that has the largest. */
    quint32 largest(quint32 DefineLine::*number) const;
    /** Whether a member says yes for some line. */
    template <typename Member>
    bool any(Member member) const
    {
        return std::ranges::any_of(lines, [=](const DefineLine &line) { return std::invoke(member, line); });
    }
};
