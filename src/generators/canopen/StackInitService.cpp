#include "generators/canopen/StackInitService.h"

#include "generators/CodeWriter.h"
#include "generators/Dialect.h"
#include "generators/canopen/StackInitContext.h"
#include "generators/canopen/StackInitDictionary.h"
#include "generators/canopen/StackInitNmt.h"
#include "generators/canopen/StackInitPdos.h"
#include "generators/canopen/StackInitSdos.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

// the objects of CiA 301, CiA 302 and CiA 304 that services are known by
constexpr quint16 syncCobId = 0x1005;
constexpr quint16 syncPeriod = 0x1006;
constexpr quint16 guardTime = 0x100C;
constexpr quint16 timeCobId = 0x1012;
constexpr quint16 emergencyCobId = 0x1014;
constexpr quint16 heartbeatConsumers = 0x1016;
constexpr quint16 heartbeatProducer = 0x1017;
constexpr quint16 syncCounter = 0x1019;
constexpr quint16 emergencyConsumers = 0x1028;
constexpr quint16 firstSdoClient = 0x1280;
constexpr quint16 failSafeCommand = 0x1300;
constexpr quint16 firstSrdo = 0x1301;
constexpr quint16 lastSrdo = 0x1340;
constexpr quint16 sdoRequestingDevice = 0x1F10;
constexpr quint16 slaveAssignment = 0x1F81;

// --- When a line has a service --------------------------------------------------------------------

bool always(const StackInitLine &)
{
    return true;
}

template <quint16 index>
bool has(const StackInitLine &line)
{
    return line.has(index);
}

bool hasLeds(const StackInitLine &line)
{
    return line.context.settings.hasLeds;
}

bool isCanFd(const StackInitLine &line)
{
    return line.context.isCanFd();
}

bool isClassicalCan(const StackInitLine &line)
{
    return !line.context.isCanFd();
}

bool hasUsdoClient(const StackInitLine &line)
{
    return line.settings.hasUsdoClient;
}

bool isGuardedOnly(const StackInitLine &line)
{
    return line.has(guardTime) && !line.has(heartbeatProducer);
}

std::size_t srdoCount(const StackInitLine &line)
{
    return line.dictionary.objectRange(firstSrdo, lastSrdo).size();
}

bool hasSrdos(const StackInitLine &line)
{
    return srdoCount(line) > 0;
}

bool hasIsoTp(const StackInitLine &line)
{
    return line.settings.hasIsoTp;
}

bool hasIdNegotiation(const StackInitLine &line)
{
    return line.context.settings.hasIdNegotiation;
}

bool guardsSlaves(const StackInitLine &line)
{
    return line.context.settings.hasBootupManager || line.has(slaveAssignment);
}

// --- With what it is started ----------------------------------------------------------------------

QString constant(const StackInitLine &line, quint16 index)
{
    return line.constant(index, 0, u"0"_s);
}

/** The entries of an object; sub-index 0, which counts them, is none. */
QString entryCount(const StackInitLine &line, quint16 index)
{
    const DictionaryObject *object = line.dictionary.object(index);
    const qsizetype count = object
        ? std::ranges::count_if(object->subIndices, [](const auto &sub) { return sub.number != 0; })
        : 0;
    return QString::number(count);
}

QString heartbeatArguments(const StackInitLine &line)
{
    return constant(line, heartbeatProducer) + u", "_s + entryCount(line, heartbeatConsumers);
}

QString guardingArguments(const StackInitLine &line)
{
    return u"0, "_s + entryCount(line, heartbeatConsumers);
}

QString syncArguments(const StackInitLine &line)
{
    return constant(line, syncCobId) + u", "_s + constant(line, syncPeriod) + u", "_s
        + constant(line, syncCounter);
}

QString emergencyConsumerArguments(const StackInitLine &line)
{
    return entryCount(line, emergencyConsumers);
}

/** CiA 301: the COB-ID of the time stamp tells in two bits whether the device consumes and produces it. */
QString timeArguments(const StackInitLine &line)
{
    constexpr CValues::Bits consumes = 1U << 31;
    constexpr CValues::Bits produces = 1U << 30;
    const DictionarySubIndex *cobId = line.dictionary.subIndex(timeCobId, 0);
    const CValues::Bits value = cobId ? cobId->defaultNumber() : 0;
    const auto truth = [](bool isTrue) { return isTrue ? u"CO_TRUE"_s : u"CO_FALSE"_s; };
    return truth((value & consumes) != 0) + u", "_s + truth((value & produces) != 0);
}

QString failSafeArguments(const StackInitLine &)
{
    return u"CO_TRUE, CO_TRUE"_s;
}

QString srdoArguments(const StackInitLine &line)
{
    return QString::number(srdoCount(line));
}

// --- How, where it is more than one call ------------------------------------------------------------

void writeLedInit(CodeWriter &out, const StackInitLine &line)
{
    static const TemplateText text(uR"(    /* initialization of LED module */
    coLedInit($arguments$);

)"_s);
    out.fill(text, {{u"arguments", line.context.lineCalls().arguments()}});
}

void writeIdNegotiationInit(CodeWriter &out, const StackInitLine &line)
{
    static const TemplateText text(uR"(    /* initialization of ID negotiation module */
    coIdNegoInit($arguments$);
)"_s);
    out.fill(text, {{u"arguments", line.context.lineCalls().arguments()}});
}

void writeLoad(CodeWriter &out, const StackInitLine &line)
{
    writeLoadFunction(out, line.context);
}

// --- In which order -------------------------------------------------------------------------------

/** The forms that have a service at this place. */
enum class Form : quint8 {
    Both,
    SingleLine,
    MultiLine,
};

struct Service
{
    bool (*isUsed)(const StackInitLine &line);
    QStringView comment = {};
    QStringView function = {};
    QString (*arguments)(const StackInitLine &line) = nullptr; ///< behind that of the line
    void (*write)(CodeWriter &out, const StackInitLine &line) = nullptr; ///< if it is more than one call
    Form form = Form::Both;
};

constexpr std::array<Service, 23> services{{
    {.isUsed = always, .write = writeObjectDictionaryInit},
    {.isUsed = hasLeds, .write = writeLedInit, .form = Form::SingleLine},
    {.isUsed = isCanFd, .write = writeFdServerInit},
    {.isUsed = isClassicalCan, .write = writeSdoServerInit},
    {.isUsed = hasUsdoClient, .write = writeUsdoClientInit},
    {.isUsed = has<firstSdoClient>, .write = writeSdoClientInit},
    {has<heartbeatProducer>, u"/* initialize error control */", u"coErrorCtrlInit", heartbeatArguments},
    {isGuardedOnly, u"/* initialize error control (Node Guarding) */", u"coErrorCtrlInit", guardingArguments},
    {has<emergencyCobId>, u"/* initialize emergency */", u"coEmcyProducerInit"},
    {has<syncCobId>, u"/* initialize sync */", u"coSyncInit", syncArguments},
    {has<emergencyConsumers>, u"/* initialize EMCY consumer */", u"coEmcyConsumerInit",
     emergencyConsumerArguments},
    {has<timeCobId>, u"/* initialize Time service */", u"coTimeInit", timeArguments},
    {.isUsed = always, .write = writeTransmitPdoInit},
    {.isUsed = always, .write = writeReceivePdoInit},
    {has<sdoRequestingDevice>, u"/* initialize SDO Requesting Device (SRD) */", u"coSrdInit"},
    {has<failSafeCommand>, u"/* initialize  GFC Producer - Consumer */", u"coGfcInit", failSafeArguments},
    {hasSrdos, u"/* initialize SRDO  */", u"coSrdoInit", srdoArguments},
    {.isUsed = hasLeds, .write = writeLedInit, .form = Form::MultiLine},
    {hasIsoTp, u"/* initialize ISO-TP */", u"isoTpInit"},
    {.isUsed = hasIdNegotiation, .write = writeIdNegotiationInit},
    {guardsSlaves, u"/* initialization of node guarding master*/", u"coGuardingInit"},
    {.isUsed = always, .write = writeLoad, .form = Form::SingleLine},
    {.isUsed = always, .write = writeNetworkManagementInit},
}};

void writeCall(CodeWriter &out, const StackInitLine &line, const Service &service)
{
    out << QString(StackCalls::functionBody, u' ') << service.comment << u"\n";
    line.context.lineCalls().writeChecked(out, service.function,
                                          service.arguments ? service.arguments(line) : QString());
}

} // namespace

void writeStackServices(CodeWriter &out, const StackInitContext &context, quint8 line)
{
    const StackInitLine sources(context, line);
    const Form otherForm = context.isMultiLine() ? Form::SingleLine : Form::MultiLine;
    for (const Service &service : services) {
        if (service.form == otherForm || !service.isUsed(sources))
            continue;
        if (service.write)
            service.write(out, sources);
        else
            writeCall(out, sources, service);
    }
}

void writeLoadFunction(CodeWriter &out, const StackInitContext &context)
{
    static const TemplateText text(uR"(
    /* initialize load parameter function */
#if defined(CO_EVENT_DYNAMIC_STORE) || defined(CO_EVENT_PROFILE_STORE)
$registration$
#else
$refusal$
#endif /* CO_EVENT_DYNAMIC_STORE || CO_EVENT_PROFILE_STORE */
)"_s);
    static const DialectTemplate refusalText(uR"(    if (pLoadFunction != NULL) {
        return(RET_PARAMETER_INVALID);
    }
)"_s);
    const auto registration = [&](CodeWriter &block) {
        context.calls().writeChecked(block, u"coEventRegister_LOAD_PARA", u"pLoadFunction"_s);
    };
    const auto refusal = [&](CodeWriter &block) {
        if (context.settings.hasStaticLoadFunction)
            block << u"    (void)pLoadFunction;\n";
        else
            block.fill(refusalText.in(context.dialect));
    };
    out.fill(text, {{u"registration", registration}, {u"refusal", refusal}});
}
