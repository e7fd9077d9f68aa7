#pragma once

#include "generators/canopen/DictionaryDesk.h"
#include "generators/canopen/IndicationGenerator.h"

/** A project and the header with the prototypes of its indication functions. */
class IndicationDesk : public DictionaryDesk
{
public:
    IndicationDesk()
    {
        qputenv("SOURCE_DATE_EPOCH", "1700000000");
        addLine(0);
    }

    /** The text of gen_indication.h for the V4 stack or the older one. */
    QString header(bool v4 = true)
    {
        const std::unique_ptr<AbstractGenerator> generator =
            makeIndicationGenerator({.kind = GeneratorKind::Indication, .core = v4});
        return header(*generator);
    }
    QString header(AbstractGenerator &generator)
    {
        generator.setDatabase(&store);
        generator.setOutputDir(folder.path());
        generator.setProjectName(QStringLiteral("Pump"));
        generator.setMultiLine(store.getLines().size() > 1);
        if (generator.startGeneration() != GeneratorStatus::Success)
            return QStringLiteral("not started");
        generator.waitForEnd();
        error = generator.errorString();
        return read(QStringLiteral("gen_indication.h"));
    }
    /** What stands between the beginning and the end of the header. */
    static QString prototypes(const QString &header)
    {
        return header.section(QStringLiteral("#define GEN_INDICATION 1\n\n"), 1)
            .section(QStringLiteral("#endif /* GEN_INDICATION*/\n"), 0, 0);
    }
};

/** The functions that a project can name, and the prototypes that the stack expects of them. */
namespace Indications {

struct Prototype
{
    const char *key;
    const char *result;
    const char *arguments; ///< for one line; in the words of the V4 stack
};

inline constexpr Prototype canopen[] = {
    {"fct_sdo_server_read", "RET_T",
     "BOOL_T execute, UNSIGNED8 sdoNr, UNSIGNED16 index, UNSIGNED8 subIndex);\n"},
    {"fct_sdo_server_write", "RET_T",
     "BOOL_T execute, UNSIGNED8 sdoNr, UNSIGNED16 index, UNSIGNED8 subIndex);\n"},
    {"fct_sdo_server_check_write", "RET_T",
     "BOOL_T execute, UNSIGNED8 sdoNr, UNSIGNED16 index, UNSIGNED8 subIndex, const UNSIGNED8 *pData);\n"},
    {"fct_pdo", "void", "UNSIGNED16 pdoNr);\n"},
    {"fct_pdo_receive", "void", "UNSIGNED16 pdoNr);\n"},
    {"fct_pdo_sync", "void", "UNSIGNED16 pdoNr);\n"},
    {"fct_nmt", "RET_T", "BOOL_T execute, CO_NMT_STATE_T nmtState);\n"},
    {"fct_errctrl", "void", "UNSIGNED8 nodeId, CO_ERRCTRL_T errCtrlState, CO_NMT_STATE_T nmtState);\n"},
    {"fct_sync", "void", "UNSIGNED8 syncCounter);\n"},
    {"fct_sync_finished", "void", "UNSIGNED8 syncCounter);\n"},
    {"fct_led_green", "void", "BOOL_T ledState);\n"},
    {"fct_led_red", "void", "BOOL_T ledState);\n"},
    {"fct_can", "void", "CO_CAN_STATE_T canState);\n"},
    {"fct_cfgman", "void",
     "CO_CFG_TRANSFER_T type, UNSIGNED8 sdoNr, UNSIGNED16 index, UNSIGNED8 sub, UNSIGNED32 reason);\n"},
    {"fct_flyma", "void", "CO_FLYMA_STATE_T state, UNSIGNED8 node, UNSIGNED8 priority);\n"},
    {"fct_sdo_client_read", "void",
     "UNSIGNED8 sdoNr, UNSIGNED16 index, UNSIGNED8 subIndex, UNSIGNED32 size, UNSIGNED32 result);\n"},
    {"fct_sdo_client_write", "void",
     "UNSIGNED8 sdoNr, UNSIGNED16 index, UNSIGNED8 subIndex, UNSIGNED32 result);\n"},
    {"fct_emcy", "void", "UNSIGNED16 errCode, UNSIGNED8 *addErrorCode);\n"},
    {"fct_emcy_consumer", "void",
     "UNSIGNED8 node, UNSIGNED16 errCode, UNSIGNED8 errorRegister, UNSIGNED8 const *addErrorCode);\n"},
    {"fct_time", "void", "CO_TIME_T *pTime);\n"},
    {"fct_store", "RET_T", "UNSIGNED8 subIndex);\n"},
    {"fct_store_clear", "RET_T", "UNSIGNED8 subIndex);\n"},
    {"fct_store_save", "RET_T", "UNSIGNED8 subIndex);\n"},
    {"fct_lss", "RET_T",
     "CO_LSS_SERVICE_T service, UNSIGNED16 bitrate, UNSIGNED8 *pErrCode, UNSIGNED8 *pErrSpec);\n"},
    {"fct_lss_master", "void",
     "CO_LSS_MASTER_SERVICE_T, UNSIGNED16 errorCode, UNSIGNED8 errorSpec, UNSIGNED32 *pIdentity);\n"},
    {"fct_comm", "void", "CO_COMM_STATE_EVENT_T commEvent);\n"},
    {"fct_manager", "void", "UNSIGNED8 node, CO_MANAGER_EVENT_T event);\n"},
    {"fct_mpdo", "void", "UNSIGNED16 pdoNr, UNSIGNED16 index, UNSIGNED8 subIndex);\n"},
};

inline constexpr Prototype usdoServer[] = {
    {"usdo_server_read_ind_function", "RET_T",
     "BOOL_T execute, UNSIGNED8 nodeId, UNSIGNED16 index, UNSIGNED8 subIndex);\n"},
    {"usdo_server_read_finished_ind_function", "void",
     "UNSIGNED8 nodeId, UNSIGNED16 index, UNSIGNED8 subIndex);\n"},
    {"usdo_server_write_ind_function", "RET_T",
     "BOOL_T execute, UNSIGNED8 nodeId, UNSIGNED16 index, UNSIGNED8 subIndex);\n"},
    {"usdo_server_ind_check_write_function", "RET_T",
     "UNSIGNED8 nodeId, UNSIGNED16 index, UNSIGNED8 subIndex, CORE_CONST UNSIGNED8* pData);\n"},
    {"usdo_server_domain_write_ind_function", "void",
     "UNSIGNED16 index, UNSIGNED8 subIndex, UNSIGNED32 domainBufSize, UNSIGNED32 transferSize);\n"},
    {"usdo_server_domain_read_ind_function", "void",
     "UNSIGNED16 index, UNSIGNED8 subIndex, UNSIGNED32 domainBufSize, UNSIGNED32 transferSize);\n"},
};

inline constexpr Prototype usdoClient[] = {
    {"usdo_client_read_ind_function", "void",
     "UNSIGNED8 nodeId, UNSIGNED16 index, UNSIGNED8 subIndex, RET_T result);\n"},
    {"usdo_client_write_ind_function", "void",
     "UNSIGNED8 nodeId, UNSIGNED16 index, UNSIGNED8 subIndex, RET_T result);\n"},
    {"usdo_client_domain_write_ind_function", "void",
     "UNSIGNED8 nodeId, UNSIGNED16 index, UNSIGNED8 subIndex, "
     "UNSIGNED32 domainBufSize, UNSIGNED32 transferSize);\n"},
    {"usdo_client_domain_read_ind_function", "void",
     "UNSIGNED8 nodeId, UNSIGNED16 index, UNSIGNED8 subIndex, "
     "UNSIGNED32 domainBufSize, UNSIGNED32 transferSize);\n"},
};

/** The name that nameAll gives a function. */
inline QString functionName(const Prototype &prototype)
{
    return QStringLiteral("my_") + QLatin1StringView(prototype.key);
}

template <std::size_t size>
void nameAll(DictionaryDesk &desk, const Prototype (&table)[size])
{
    for (const Prototype &prototype : table)
        desk.set(QLatin1StringView(prototype.key), functionName(prototype));
}

/** Every function of CANopen and of both sides of USDO, on CAN FD. */
inline void nameEveryFunction(DictionaryDesk &desk)
{
    nameAll(desk, canopen);
    nameAll(desk, usdoServer);
    nameAll(desk, usdoClient);
    for (const QString &key : {QStringLiteral("usdo_server_enabled"), QStringLiteral("usdo_client_enabled"),
                               QStringLiteral("canfd_supported"), QStringLiteral("line0type")})
        desk.set(key, QStringLiteral("1"));
}

/** One prototype as it stands in the header. */
inline QString line(const Prototype &prototype, const QString &name, bool multiLine = false, bool v4 = true)
{
    QString arguments = QString::fromLatin1(prototype.arguments);
    if (!v4)
        arguments.replace(QStringLiteral("CORE_CONST"), QStringLiteral("CO_CONST"));
    return QLatin1StringView(prototype.result) + QStringLiteral(" ") + name + QStringLiteral("(")
        + (multiLine ? QStringLiteral("UNSIGNED8 CO_LINE, ") : QString()) + arguments;
}

/** The prototypes of all functions of a table, as named by nameAll. */
template <std::size_t size>
QString lines(const Prototype (&table)[size], bool multiLine = false, bool v4 = true)
{
    QString text;
    for (const Prototype &prototype : table)
        text += line(prototype, functionName(prototype), multiLine, v4);
    return text;
}

} // namespace Indications
