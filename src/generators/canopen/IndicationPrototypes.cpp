#include "generators/canopen/IndicationPrototypes.h"

#include "generators/CodeWriter.h"
#include "generators/Dialect.h"
#include "generators/RunFacts.h"
#include "generators/canopen/SettingValues.h"
#include "store/ObjectDataBase.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<IndicationPrototype, 28> indications{{
    {"fct_sdo_server_read"_L1, u"RET_T",
     u"BOOL_T execute, UNSIGNED8 sdoNr, UNSIGNED16 index, UNSIGNED8 subIndex);\n"},
    {"fct_sdo_server_write"_L1, u"RET_T",
     u"BOOL_T execute, UNSIGNED8 sdoNr, UNSIGNED16 index, UNSIGNED8 subIndex);\n"},
    {"fct_sdo_server_check_write"_L1, u"RET_T",
     u"BOOL_T execute, UNSIGNED8 sdoNr, UNSIGNED16 index, UNSIGNED8 subIndex, const UNSIGNED8 *pData);\n"},
    {"fct_pdo"_L1, u"void", u"UNSIGNED16 pdoNr);\n"},
    {"fct_pdo_receive"_L1, u"void", u"UNSIGNED16 pdoNr);\n"},
    {"fct_pdo_sync"_L1, u"void", u"UNSIGNED16 pdoNr);\n"},
    {"fct_nmt"_L1, u"RET_T", u"BOOL_T execute, CO_NMT_STATE_T nmtState);\n"},
    {"fct_errctrl"_L1, u"void", u"UNSIGNED8 nodeId, CO_ERRCTRL_T errCtrlState, CO_NMT_STATE_T nmtState);\n"},
    {"fct_sync"_L1, u"void", u"UNSIGNED8 syncCounter);\n"},
    {"fct_sync_finished"_L1, u"void", u"UNSIGNED8 syncCounter);\n"},
    {"fct_led_green"_L1, u"void", u"BOOL_T ledState);\n"},
    {"fct_led_red"_L1, u"void", u"BOOL_T ledState);\n"},
    {"fct_can"_L1, u"void", u"CO_CAN_STATE_T canState);\n"},
    {"fct_cfgman"_L1, u"void",
     u"CO_CFG_TRANSFER_T type, UNSIGNED8 sdoNr, UNSIGNED16 index, UNSIGNED8 sub, UNSIGNED32 reason);\n"},
    {"fct_flyma"_L1, u"void", u"CO_FLYMA_STATE_T state, UNSIGNED8 node, UNSIGNED8 priority);\n"},
    {"fct_sdo_client_read"_L1, u"void",
     u"UNSIGNED8 sdoNr, UNSIGNED16 index, UNSIGNED8 subIndex, UNSIGNED32 size, UNSIGNED32 result);\n"},
    {"fct_sdo_client_write"_L1, u"void",
     u"UNSIGNED8 sdoNr, UNSIGNED16 index, UNSIGNED8 subIndex, UNSIGNED32 result);\n"},
    {"fct_emcy"_L1, u"void", u"UNSIGNED16 errCode, UNSIGNED8 *addErrorCode);\n"},
    {"fct_emcy_consumer"_L1, u"void",
     u"UNSIGNED8 node, UNSIGNED16 errCode, UNSIGNED8 errorRegister, UNSIGNED8 const *addErrorCode);\n"},
    {"fct_time"_L1, u"void", u"CO_TIME_T *pTime);\n"},
    {"fct_store"_L1, u"RET_T", u"UNSIGNED8 subIndex);\n"},
    {"fct_store_clear"_L1, u"RET_T", u"UNSIGNED8 subIndex);\n"},
    {"fct_store_save"_L1, u"RET_T", u"UNSIGNED8 subIndex);\n"},
    {"fct_lss"_L1, u"RET_T",
     u"CO_LSS_SERVICE_T service, UNSIGNED16 bitrate, UNSIGNED8 *pErrCode, UNSIGNED8 *pErrSpec);\n"},
    {"fct_lss_master"_L1, u"void",
     u"CO_LSS_MASTER_SERVICE_T, UNSIGNED16 errorCode, UNSIGNED8 errorSpec, UNSIGNED32 *pIdentity);\n"},
    {"fct_comm"_L1, u"void", u"CO_COMM_STATE_EVENT_T commEvent);\n"},
    {"fct_manager"_L1, u"void", u"UNSIGNED8 node, CO_MANAGER_EVENT_T event);\n"},
    {"fct_mpdo"_L1, u"void", u"UNSIGNED16 pdoNr, UNSIGNED16 index, UNSIGNED8 subIndex);\n"},
}};

constexpr std::array<IndicationPrototype, 6> usdoServerIndications{{
    {"usdo_server_read_ind_function"_L1, u"RET_T",
     u"BOOL_T execute, UNSIGNED8 nodeId, UNSIGNED16 index, UNSIGNED8 subIndex);\n"},
    {"usdo_server_read_finished_ind_function"_L1, u"void",
     u"UNSIGNED8 nodeId, UNSIGNED16 index, UNSIGNED8 subIndex);\n"},
    {"usdo_server_write_ind_function"_L1, u"RET_T",
     u"BOOL_T execute, UNSIGNED8 nodeId, UNSIGNED16 index, UNSIGNED8 subIndex);\n"},
    {"usdo_server_ind_check_write_function"_L1, u"RET_T",
     u"UNSIGNED8 nodeId, UNSIGNED16 index, UNSIGNED8 subIndex, CORE_CONST UNSIGNED8* pData);\n"},
    {"usdo_server_domain_write_ind_function"_L1, u"void",
     u"UNSIGNED16 index, UNSIGNED8 subIndex, UNSIGNED32 domainBufSize, UNSIGNED32 transferSize);\n"},
    {"usdo_server_domain_read_ind_function"_L1, u"void",
     u"UNSIGNED16 index, UNSIGNED8 subIndex, UNSIGNED32 domainBufSize, UNSIGNED32 transferSize);\n"},
}};

constexpr std::array<IndicationPrototype, 4> usdoClientIndications{{
    {"usdo_client_read_ind_function"_L1, u"void",
     u"UNSIGNED8 nodeId, UNSIGNED16 index, UNSIGNED8 subIndex, RET_T result);\n"},
    {"usdo_client_write_ind_function"_L1, u"void",
     u"UNSIGNED8 nodeId, UNSIGNED16 index, UNSIGNED8 subIndex, RET_T result);\n"},
    {"usdo_client_domain_write_ind_function"_L1, u"void",
     u"UNSIGNED8 nodeId, UNSIGNED16 index, UNSIGNED8 subIndex, UNSIGNED32 domainBufSize, UNSIGNED32 "
     "transferSize);\n"},
    {"usdo_client_domain_read_ind_function"_L1, u"void",
     u"UNSIGNED8 nodeId, UNSIGNED16 index, UNSIGNED8 subIndex, UNSIGNED32 domainBufSize, UNSIGNED32 "
     "transferSize);\n"},
}};

/** A list with one number per line; a service that one line has is a service of the device. */
bool isOnSomewhere(const SettingValues &general, const QList<quint8> &lines, const QString &key)
{
    return std::ranges::any_of(lines, [&](quint8 line) { return general.numberForLine(key, line) > 0; });
}

/** Whether C lets a function bear the name. Compilers know letters beyond ASCII. */
bool isFunctionName(const QString &name)
{
    const auto isPartOfName = [](QChar c) { return c.isLetterOrNumber() || c == u'_'; };
    return !name.at(0).isNumber() && std::ranges::all_of(name, isPartOfName) && name != "NULL"_L1;
}

} // namespace

void IndicationPrototypes::add(const SettingValues &general, std::span<const IndicationPrototype> rows)
{
    for (const IndicationPrototype &row : rows)
        if (const QString name = general.text(row.key); !name.isEmpty())
            m_functions.append({&row, name});
}

IndicationPrototypes IndicationPrototypes::canopen(ObjectDataBase &store)
{
    const SettingValues general = SettingValues::general(store);
    const QList<quint8> lines = RunFacts::projectLines(store);
    IndicationPrototypes prototypes;
    prototypes.add(general, indications);
    if (isOnSomewhere(general, lines, u"usdo_server_enabled"_s))
        prototypes.add(general, usdoServerIndications);
    if (isOnSomewhere(general, lines, u"usdo_client_enabled"_s))
        prototypes.add(general, usdoClientIndications);
    return prototypes;
}

IndicationPrototypes IndicationPrototypes::uds(ObjectDataBase &store,
                                               std::span<const IndicationPrototype> rows)
{
    const SettingValues general = SettingValues::general(store);
    IndicationPrototypes prototypes;
    if (general.number(u"uds_static_indication"_s) == 1)
        prototypes.add(general, rows);
    return prototypes;
}

void IndicationPrototypes::write(CodeWriter &out, const Dialect &dialect, bool multiLine) const
{
    static const TemplateText prototype(u"$return$ $name$($line$$arguments$"_s);
    for (const Function &function : m_functions)
        if (isFunctionName(function.name))
            out.fill(prototype,
                     {{u"return", function.row->returnType},
                      {u"name", function.name},
                      {u"line", multiLine ? u"UNSIGNED8 CO_LINE, " : u""},
                      {u"arguments", dialect.text(function.row->arguments.toString())}});
}
