// CANopen services: what the object dictionary and the settings say that the stack shall have.

#include "generators/canopen/DefineSections.h"
#include "generators/canopen/DefineView.h"
#include "generators/canopen/DefineWriter.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

// --- Numbers of the view -------------------------------------------------------------------------

template <quint16 index>
quint32 hasObject(const DefineView &view)
{
    return view.hasObject(index) ? 1 : 0;
}

template <quint32 DefineLine::*number>
quint32 total(const DefineView &view)
{
    return view.total(number);
}

template <bool MultiplexedPdos::*property>
quint32 multiplexedPdo(const DefineView &view)
{
    return view.multiplexedPdos.*property ? 1 : 0;
}

quint32 nmtMaster(const DefineView &view)
{
    return view.any(&DefineLine::isNmtMaster) ? 1 : 0;
}

quint32 lssMaster(const DefineView &view)
{
    return view.general.isOn(u"lss_supported"_s) ? nmtMaster(view) : 0;
}

/** A line whose role is chosen when the stack starts needs both sides of the service. */
quint32 lssSlave(const DefineView &view)
{
    return view.general.isOn(u"lss_supported"_s) && view.any(&DefineLine::isNmtSlave) ? 1 : 0;
}

quint32 receiveTimer(const DefineView &view)
{
    return view.any(&DefineLine::hasReceiveTimer) ? 1 : 0;
}

quint32 mappingEntries(const DefineView &view)
{
    return view.largest(&DefineLine::mappingEntries);
}

/** Lengths in mapping tables are bits only where some mapping has more than one entry. */
quint32 bitMapping(const DefineView &view)
{
    const bool isAsked = view.general.value(u"bitwise_mapping"_s).toInt() != 0;
    return isAsked && mappingEntries(view) > 1 ? 1 : 0;
}

quint32 store(const DefineView &view)
{
    return view.hasObject(0x1010) || view.hasObject(0x1011) ? 1 : 0;
}

quint32 activeErrorList(const DefineView &view)
{
    return view.hasObject(0x1032) ? view.total(&DefineLine::activeErrors) : 0;
}

// --- Tables --------------------------------------------------------------------------------------

using Form = DefineForm;

constexpr std::array<DefineRow, 11> managementRows{{
    {u"CO_NMT_MASTER", nmtMaster},
    {u"CO_FLYING_MASTER_SUPPORTED", hasObject<0x1F80>},
    {u"CO_LSS_MASTER_SUPPORTED", lssMaster},
    {u"CO_LSS_SUPPORTED", lssSlave},
    {u"CO_LSS_INQUIRY_SERVICES", "lss_inquiry_supported"_L1, Form::Switch},
    {u"CO_IDNEGO_SUPPORTED", "idnego_supported"_L1, Form::Switch},
    {u"CO_GFC_SUPPORTED", hasObject<0x1300>},
    {u"CO_DYNAMIC_OBJDIC", "dynod"_L1, Form::Switch},
    {u"CO_EVENT_CSDO_DOMAIN_WRITE", "csdo_write_special"_L1, Form::Switch},
    {u"CO_EMCY_NETWORKING", "emcy_routing"_L1, Form::Switch},
    {u"CO_SDO_NETWORKING", "sdo_routing"_L1, Form::Switch},
}};

constexpr std::array<DefineRow, 2> sdoCountRows{{
    {u"CO_SDO_SERVER_CNT", total<&DefineLine::sdoServers>},
    {u"CO_SDO_CLIENT_CNT", total<&DefineLine::sdoClients>},
}};

constexpr std::array<DefineRow, 8> usdoServerRows{{
    {u"CO_SUSDO_DOMAIN_CNT", "usdo_server_domain_write_ind_size"_L1, Form::Count},
    {u"CO_USDO_SPLIT_INDICATION", "usdo_split_indication_supported"_L1, Form::Switch},
    {u"CO_EVENT_STATIC_USDO_SERVER_READ", "usdo_server_read_ind_function"_L1, Form::SpacedFunction},
    {u"CO_EVENT_STATIC_SUSDO_READ_FINISHED", "usdo_server_read_finished_ind_function"_L1,
     Form::SpacedFunction},
    {u"CO_EVENT_STATIC_USDO_SERVER_WRITE", "usdo_server_write_ind_function"_L1, Form::SpacedFunction},
    {u"CO_EVENT_STATIC_USDO_CHECK_WRITE", "usdo_server_ind_check_write_function"_L1, Form::SpacedFunction},
    {u"CO_EVENT_STATIC_SUSDO_DOMAIN_WRITE", "usdo_server_domain_write_ind_function"_L1, Form::SpacedFunction},
    {u"CO_EVENT_STATIC_SUSDO_DOMAIN_READ", "usdo_server_domain_read_ind_function"_L1, Form::SpacedFunction},
}};

constexpr std::array<DefineRow, 4> usdoClientRows{{
    {u"CO_EVENT_STATIC_CUSDO_CLIENT_READ", "usdo_client_read_ind_function"_L1, Form::SpacedFunction},
    {u"CO_EVENT_STATIC_CUSDO_CLIENT_WRITE", "usdo_client_write_ind_function"_L1, Form::SpacedFunction},
    {u"CO_EVENT_STATIC_CUSDO_DOMAIN_WRITE", "usdo_client_domain_write_ind_function"_L1, Form::SpacedFunction},
    {u"CO_EVENT_STATIC_CUSDO_DOMAIN_READ", "usdo_client_domain_read_ind_function"_L1, Form::SpacedFunction},
}};

constexpr std::array<DefineRow, 3> pdoRows{{
    {u"CO_PDO_TRANSMIT_CNT", total<&DefineLine::transmitPdos>},
    {u"CO_PDO_RECEIVE_CNT", total<&DefineLine::receivePdos>},
    {u"CO_PDO_REC_TIMER_SUPPORTED", receiveTimer},
}};

struct SrdoVariableRow
{
    QStringView macro;
    CValues::Table table;
};

constexpr std::array<SrdoVariableRow, 8> srdoVariableRows{{
    {u"SRDO_OD_ENTRY_U8_CNT", CValues::Table::U8},
    {u"SRDO_OD_ENTRY_U16_CNT", CValues::Table::U16},
    {u"SRDO_OD_ENTRY_U32_CNT", CValues::Table::U32},
    {u"SRDO_OD_ENTRY_U64_CNT", CValues::Table::U64},
    {u"SRDO_OD_ENTRY_I8_CNT", CValues::Table::I8},
    {u"SRDO_OD_ENTRY_I16_CNT", CValues::Table::I16},
    {u"SRDO_OD_ENTRY_I32_CNT", CValues::Table::I32},
    {u"SRDO_OD_ENTRY_R32_CNT", CValues::Table::R32},
}};

constexpr std::array<DefineRow, 8> mappingRows{{
    {u"CO_MPDO_PRODUCER", multiplexedPdo<&MultiplexedPdos::isProducer>},
    {u"CO_MPDO_CONSUMER", multiplexedPdo<&MultiplexedPdos::isConsumer>},
    {u"CO_MPDO_SAM", multiplexedPdo<&MultiplexedPdos::bySource>},
    {u"CO_MPDO_DAM", multiplexedPdo<&MultiplexedPdos::byDestination>},
    {u"CO_MAX_MAP_ENTRIES", mappingEntries},
    {u"CO_TR_PDO_DYN_MAP_ENTRIES", total<&DefineLine::dynamicTransmitPdos>},
    {u"CO_REC_PDO_DYN_MAP_ENTRIES", total<&DefineLine::dynamicReceivePdos>},
    {u"CO_PDO_BIT_MAPPING", bitMapping},
}};

constexpr std::array<DefineRow, 5> bootupRows{{
    {u"CO_HB_CONSUMER_CNT", total<&DefineLine::heartbeatConsumers>},
    {u"CO_SYNC_SUPPORTED", hasObject<0x1005>},
    {u"CO_BOOTUP_MANAGER", "bootup_manager"_L1, Form::Switch},
    {u"CO_SLAVE_ASSIGNMENT_CNT", total<&DefineLine::slaveAssignments>},
    {u"CO_MAX_SLAVE_ASSIGNMENT_CNT", total<&DefineLine::maxSlaveAssignments>},
}};

constexpr std::array<DefineRow, 6> managerRows{{
    {u"CO_CFG_MANAGER", "config_manager"_L1, Form::Switch},
    {u"CO_EMCY_PRODUCER", hasObject<0x1014>},
    {u"CO_SRD_SUPPORTED", hasObject<0x1F10>},
    {u"CO_GUARDING_SLAVE", hasObject<0x100C>},
    {u"CO_AUTO_STORE_HANDLED_BY_APPLICATION", "1010autostore_by_application"_L1, Form::Switch},
    {u"CO_STORE_SUPPORTED", store},
}};

constexpr std::array<DefineRow, 4> errorRows{{
    {u"CO_EMCY_CONSUMER_CNT", total<&DefineLine::emcyConsumers>},
    {u"CO_EMCY_ERROR_HISTORY", total<&DefineLine::errorHistory>},
    {u"CO_EMCY_ACTIVE_ERROR_LIST", activeErrorList},
    {u"CO_TIME_SUPPORTED", hasObject<0x1012>},
}};

constexpr std::array<DefineRow, 10> sdoRows{{
    {u"CO_SDO_BLOCK", "sdo_blocktransfer_supported"_L1, Form::Switch},
    {u"CO_SDO_BLOCK_SIZE", "sdo_blocktransfer_block_size"_L1, Form::Count},
    {u"CO_SDO_BLOCK_MIN_SIZE", "sdo_blocktransfer_min_data"_L1, Form::Count},
    {u"CO_SDO_BLOCK_CRC", "sdo_blocktransfer_crc_supported"_L1, Form::Switch},
    {u"CO_SDO_QUEUE", "sdo_client_queue_supported"_L1, Form::Switch},
    {u"CO_SDO_QUEUE_LEN", "sdo_client_queue_size"_L1, Form::Count},
    {u"CO_SDOQUEUE_INTERNAL_ACCESS", "sdo_client_queue_internal_access_supported"_L1, Form::Switch},
    {u"CO_CONFIG_LIMIT_CHECK", "limit_check"_L1, Form::Switch},
    {u"CO_SSDO_DOMAIN_CNT", "event_ssdo_domain_counter"_L1, Form::Count},
    {u"CO_SDO_SPLIT_INDICATION", "sdo_split"_L1, Form::Switch},
}};

// --- What is more than a row ---------------------------------------------------------------------

void writeProfiles(DefineWriter &out, const DefineView &view)
{
    QStringList macros;
    for (const DeviceProfile &profile : view.profiles)
        macros.append(u"CO_PROFILE_"_s + profile.number);
    macros.removeDuplicates();
    for (const QString &macro : std::as_const(macros))
        out.flag(macro);
    if (!macros.isEmpty() && view.hasObject(0x1010))
        out.flag(u"CO_EVENT_PROFILE_STORE");
    constexpr auto carAddOnDevices = "447"_L1;
    for (const DeviceProfile &profile : view.profiles)
        if (profile.number == carAddOnDevices && !profile.group.isEmpty())
            out.flag(QString(u"CO_P447_VDFG_"_s + profile.group));
}

/** Mapping tables have a column for the routing wherever its object is, even without an entry. */
void writeRouting(DefineWriter &out, const DefineView &view)
{
    const quint32 routings = view.total(&DefineLine::routings);
    if (routings == 0 && !view.hasObject(0x1F2C))
        return;
    out.list(u"CO_NETWORK_ROUTING_COUNTS", view, &DefineLine::routings);
    out.number(u"CO_NETWORK_ROUTING_CNT", routings);
}

void writeUsdoServer(DefineWriter &out, const DefineView &view, quint32 connections)
{
    out.number(u"CO_USDO_SERVER_MAX_CONN_CNT", connections);
    out.list(u"CO_USDO_SERVER_MAX_CONN_COUNTS", view, &DefineLine::usdoServers);
    out.rows(usdoServerRows, view);
}

void writeUsdoClient(DefineWriter &out, const DefineView &view, quint32 connections)
{
    out.flag(u"CO_USDO_CLIENT_SUPPORTED");
    out.number(u"CO_USDO_CLIENT_MAX_CONN_CNT", connections);
    out.list(u"CO_USDO_CLIENT_MAX_CONN_COUNTS", view, &DefineLine::usdoClients);
    out.rows(usdoClientRows, view);
}

void writeUsdo(DefineWriter &out, const DefineView &view)
{
    const quint32 servers = view.total(&DefineLine::usdoServers);
    const quint32 clients = view.total(&DefineLine::usdoClients);
    if (servers > 0 || clients > 0)
        out.flag(u"CO_USDO_SUPPORTED");
    if (servers > 0)
        writeUsdoServer(out, view, servers);
    if (clients > 0)
        writeUsdoClient(out, view, clients);
}

void writeSrdo(DefineWriter &out, const DefineView &view)
{
    const quint32 srdos = view.total(&DefineLine::srdos);
    if (srdos > 0) {
        out.flag(u"CO_SRDO_SUPPORTED");
        out.list(u"CO_SRDO_COUNTS", view, &DefineLine::srdos);
        out.number(u"CO_SRDO_CNT", srdos);
    }
    if (view.general.isOn(u"ignore_srdo_data_validation"_s))
        out.flag(u"CO_SRDO_IGNORE_DATA_STATE");
    if (srdos == 0 || view.general.number(u"static_srdo_data"_s) != 1)
        return;
    for (const SrdoVariableRow &row : srdoVariableRows)
        out.number(row.macro, view.srdoVariables[row.table]);
}

/** Guarding has a place for every slave that can be assigned. */
void writeGuarding(DefineWriter &out, const DefineView &view)
{
    if (view.total(&DefineLine::maxSlaveAssignments) > 0)
        out.text(u"#define CO_GUARDING_CNT CO_MAX_SLAVE_ASSIGNMENT_CNT\n"_s);
}

/** The define of the entries in non-volatile memory; empty where there are none. */
QString getNVSDefine(const DefineView &view)
{
    if (view.total(&DefineLine::nonVolatile) == 0)
        return {};
    QString define = u"#define CO_STORE_NVS_CNT\t"_s;
    for (const DefineLine &line : view.lines)
        define += u"%1u,"_s.arg(line.nonVolatile);
    return define + u'\n';
}

} // namespace

void DefineSections::services(DefineWriter &out, const DefineView &view)
{
    if (!view.hasCANopen)
        return;
    out.text(u"/* Definition of numbers of CANopen services */\n"_s);
    writeProfiles(out, view);
    out.rows(managementRows, view);
    writeRouting(out, view);
    out.rows(sdoCountRows, view);
    writeUsdo(out, view);
    out.rows(pdoRows, view);
    writeSrdo(out, view);
    out.rows(mappingRows, view);
    out.rows(bootupRows, view);
    writeGuarding(out, view);
    out.rows(managerRows, view);
    out.plain(getNVSDefine(view));
    out.rows(errorRows, view);
    out.rows(sdoRows, view);
}
