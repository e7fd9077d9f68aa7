/* The services of the stack: they do nothing but tell that they were called. */
#include "od_runtime.h"

#include <stdarg.h>
#include <stdio.h>
#include <string.h>

#define MAX_LOG 200000u

static char calls[MAX_LOG];
static size_t callsLength;

const char *odCalls(void)
{
    return calls;
}

void odRecord(const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    callsLength += (size_t)vsnprintf(calls + callsLength, MAX_LOG - callsLength, format, arguments);
    if (callsLength >= MAX_LOG)
        callsLength = MAX_LOG - 1;
    va_end(arguments);
}

/* " 20000108/1": an entry and its length; what does not fit the object dictionary is told behind it */
static void recordEntry(unsigned line, UNSIGNED32 entry, const void *mapped, unsigned length,
                        CORE_DATA_TYPE_T type)
{
    OD_PLACE_T place;
    const void *expected = NULL;
    const UNSIGNED16 index = (UNSIGNED16)(entry >> 16);
    const BOOL_T known = odFind((UNSIGNED8)line, index, (UNSIGNED8)(entry >> 8), &place);
    if (known && place.row->specifier == CO_DSPEC_CONST)
        expected = odConstant(&place, place.row->value);
    else if (known)
        expected = odVariable(&place);
    odRecord(" %08lx/%u%s%s", (unsigned long)entry, length, expected == mapped ? "" : "/address",
             !known || place.row->dataType == type ? "" : "/type");
}

RET_T coreStackInit(const CORE_COMMON_INIT_VAL_T *pInitVals)
{
    unsigned line;
    odRecord("call coreStackInit %u", (unsigned)pInitVals->structVersion);
    for (line = 0; line < CAN_LINE_ARRAY_DECL; line++)
        odRecord(" %u/%u/%u", (unsigned)pInitVals->recBufferCnt[line], (unsigned)pInitVals->trBufferCnt[line],
                 (unsigned)pInitVals->protocolType[line]);
    odRecord("\n");
    return RET_OK;
}

RET_T coCanOpenStackVarInit(const CO_SERVICE_INIT_VAL_T *pServiceInitVals)
{
    unsigned line;
    odRecord("call coCanOpenStackVarInit");
    for (line = 0; line < CAN_LINE_ARRAY_DECL; line++)
        odRecord(" %u/%u/%u/%u/%u/%u", (unsigned)pServiceInitVals->objectCnt[line],
                 (unsigned)pServiceInitVals->transmitPdoCnt[line],
                 (unsigned)pServiceInitVals->receivePdoCnt[line],
                 (unsigned)pServiceInitVals->sdoServerCnt[line],
                 (unsigned)pServiceInitVals->sdoClientCnt[line], (unsigned)pServiceInitVals->nodeId[line]);
    odRecord("\n");
    return RET_OK;
}

#define RECORD(name) odRecord("call %u " name "\n", (unsigned)LINE)
#define RECORD_1(name, a) odRecord("call %u " name " %lu\n", (unsigned)LINE, (unsigned long)(a))
#define RECORD_2(name, a, b)                                                                                 \
    odRecord("call %u " name " %lu %lu\n", (unsigned)LINE, (unsigned long)(a), (unsigned long)(b))
#define RECORD_3(name, a, b, c)                                                                              \
    odRecord("call %u " name " %lu %lu %lu\n", (unsigned)LINE, (unsigned long)(a), (unsigned long)(b),       \
             (unsigned long)(c))

void coLedInit(CO_LINE_PARA)
{
    RECORD("coLedInit");
}
void coIdNegoInit(CO_LINE_PARA)
{
    RECORD("coIdNegoInit");
}

#define SERVICE(name)                                                                                        \
    RET_T name(CO_LINE_PARA)                                                                                 \
    {                                                                                                        \
        RECORD(#name);                                                                                       \
        return RET_OK;                                                                                       \
    }
SERVICE(coUsdoServerInit)
SERVICE(coUsdoClientInit)
SERVICE(coEmcyProducerInit)
SERVICE(coSrdInit)
SERVICE(isoTpInit)
SERVICE(coGuardingInit)
SERVICE(coLssInit)
SERVICE(coLssMasterInit)

#define NUMBERED_SERVICE(name)                                                                               \
    RET_T name(CO_LINE_PARA_AND UNSIGNED8 number)                                                            \
    {                                                                                                        \
        RECORD_1(#name, number);                                                                             \
        return RET_OK;                                                                                       \
    }
NUMBERED_SERVICE(coSdoServerInit)
NUMBERED_SERVICE(coSdoClientInit)
NUMBERED_SERVICE(coEmcyConsumerInit)
NUMBERED_SERVICE(coSrdoInit)
NUMBERED_SERVICE(coNmtInit)

RET_T coErrorCtrlInit(CO_LINE_PARA_AND UNSIGNED16 heartbeatTime, UNSIGNED8 consumerCnt)
{
    RECORD_2("coErrorCtrlInit", heartbeatTime, consumerCnt);
    return RET_OK;
}

RET_T coSyncInit(CO_LINE_PARA_AND UNSIGNED32 cobId, UNSIGNED32 cycleTime, UNSIGNED8 counterOverflow)
{
    RECORD_3("coSyncInit", cobId, cycleTime, counterOverflow);
    return RET_OK;
}

RET_T coTimeInit(CO_LINE_PARA_AND BOOL_T isConsumer, BOOL_T isProducer)
{
    RECORD_2("coTimeInit", isConsumer, isProducer);
    return RET_OK;
}

RET_T coGfcInit(CO_LINE_PARA_AND BOOL_T isProducer, BOOL_T isConsumer)
{
    RECORD_2("coGfcInit", isProducer, isConsumer);
    return RET_OK;
}

RET_T coPdoTransmitInit(CO_LINE_PARA_AND UNSIGNED16 pdoNr, UNSIGNED8 transmissionType, UNSIGNED16 inhibitTime,
                        UNSIGNED16 eventTimer, UNSIGNED8 syncStartValue, const PDO_TR_MAP_TABLE_T *pTable)
{
    unsigned i;
    odRecord("call %u coPdoTransmitInit %u %u %u %u %u", (unsigned)LINE, (unsigned)pdoNr,
             (unsigned)transmissionType, (unsigned)inhibitTime, (unsigned)eventTimer,
             (unsigned)syncStartValue);
    for (i = 0; pTable != NULL && i < pTable->count; i++)
        recordEntry(LINE, pTable->entries[i].entry, pTable->entries[i].pVariable, pTable->entries[i].length,
                    pTable->entries[i].dataType);
    for (; pTable != NULL && i < CO_MAX_MAP_ENTRIES; i++)
        if (pTable->entries[i].pVariable != NULL || pTable->entries[i].length != 0
            || pTable->entries[i].entry != 0 || pTable->entries[i].dataType != CORE_DTYPE_NON_NUMERIC)
            odRecord(" entry %u behind the last", i);
    odRecord("%s\n", pTable == NULL ? " dynamic" : "");
    return RET_OK;
}

/* ">0,2": the TPDO of each line that sends the value on */
static void recordRouting(const PDO_REC_MAP_ENTRY_T *entry)
{
#ifdef CO_NETWORK_ROUTING_CNT
    unsigned line;
    for (line = 0; line < CAN_LINE_ARRAY_DECL; line++)
        odRecord("%c%u", line == 0 ? '>' : ',', (unsigned)entry->sendingPdo[line]);
#else
    (void)entry;
#endif
}

/* Whether some line sends the value on. */
static BOOL_T isRouted(const PDO_REC_MAP_ENTRY_T *entry)
{
#ifdef CO_NETWORK_ROUTING_CNT
    unsigned line;
    for (line = 0; line < CAN_LINE_ARRAY_DECL; line++)
        if (entry->sendingPdo[line] != 0)
            return CO_TRUE;
#endif
    (void)entry;
    return CO_FALSE;
}

RET_T coPdoReceiveInit(CO_LINE_PARA_AND UNSIGNED16 pdoNr, UNSIGNED8 transmissionType, UNSIGNED16 inhibitTime,
                       UNSIGNED16 eventTimer, const PDO_REC_MAP_TABLE_T *pTable)
{
    unsigned i;
    odRecord("call %u coPdoReceiveInit %u %u %u %u", (unsigned)LINE, (unsigned)pdoNr,
             (unsigned)transmissionType, (unsigned)inhibitTime, (unsigned)eventTimer);
    for (i = 0; pTable != NULL && i < pTable->count; i++) {
        recordEntry(LINE, pTable->entries[i].entry, pTable->entries[i].pVariable, pTable->entries[i].length,
                    pTable->entries[i].dataType);
        recordRouting(&pTable->entries[i]);
    }
    for (; pTable != NULL && i < CO_MAX_MAP_ENTRIES; i++)
        if (pTable->entries[i].pVariable != NULL || pTable->entries[i].length != 0
            || pTable->entries[i].entry != 0 || pTable->entries[i].dataType != CORE_DTYPE_NON_NUMERIC
            || isRouted(&pTable->entries[i]))
            odRecord(" entry %u behind the last", i);
    odRecord("%s\n", pTable == NULL ? " dynamic" : "");
    return RET_OK;
}

RET_T coPdoNetworkRouting(void)
{
    odRecord("call coPdoNetworkRouting\n");
    return RET_OK;
}

RET_T coEventRegister_LOAD_PARA(CO_EVENT_STORE_T pFunction)
{
    odRecord("call coEventRegister_LOAD_PARA%s\n", pFunction == NULL ? " NULL" : "");
    return RET_OK;
}

RET_T coOdGetDefaultVal_u32(CO_LINE_PARA_AND UNSIGNED16 index, UNSIGNED8 subIndex, UNSIGNED32 *pValue)
{
    OD_PLACE_T place;
    if (!odFind(LINE, index, subIndex, &place) || place.row->dataType != CORE_DTYPE_U32)
        return RET_IDX_NOT_FOUND;
    memcpy(pValue, odConstant(&place, place.row->defaultPosition), sizeof(*pValue));
    return RET_OK;
}

RET_T coOdSetCobid(CO_LINE_PARA_AND UNSIGNED16 index, UNSIGNED8 subIndex, UNSIGNED32 cobId)
{
    RECORD_3("coOdSetCobid", index, subIndex, cobId);
    return RET_OK;
}

UNSIGNED8 coNmtGetNodeId(CO_LINE_PARA)
{
    return (UNSIGNED8)(LINE + 1u);
}
