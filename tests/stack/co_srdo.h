/*
 * Stand-in for the safety part of the embedded stack (EN 50325-5): the data of an SRDO in the shape that
 * gen_srdo.c fills it, and the functions of that file. A program that includes this has included gen_define.h
 * before.
 */
#ifndef CO_SRDO_H
#define CO_SRDO_H 1

#include <co_canopen.h>

/* what is known of the data received last */
typedef enum { CO_SRDO_DATA_UNKNOWN, CO_SRDO_DATA_INVALID, CO_SRDO_DATA_VALID } CO_SRDO_DATA_STATE_T;

typedef struct
{
    UNSIGNED8 direction; /* 0: not valid, 1: transmit, 2: receive */
    UNSIGNED16 refreshTime; /* ms; safeguard cycle time when receiving */
    UNSIGNED8 srvt; /* safety related validation time, ms */
    UNSIGNED8 transType;
    UNSIGNED32 cobId1; /* of the normal message */
    UNSIGNED32 cobId2; /* of the inverted message */
    UNSIGNED8 mapCnt; /* entries in use */
    UNSIGNED8 mapLen; /* bytes of a message */
    CO_SRDO_DATA_STATE_T dataValid;
    UNSIGNED8 maxMapCnt; /* entries that the table has */
    const UNSIGNED32 *mapTable;
    UNSIGNED16 signature;
#ifdef CORE_CAN_TIMESTAMP_SUPPORTED
    UNSIGNED32 timeStamp;
#endif
} CO_SRDO_DATA_T;

/* a mapped variable that stands in gen_srdo.c */
#ifdef CAN_MULTI_LINE
#define SRDO_OD_ENTRY_LINE UNSIGNED8 canLine;
#else
#define SRDO_OD_ENTRY_LINE
#endif
#define SRDO_OD_ENTRY(name, type)                                                                            \
    typedef struct                                                                                           \
    {                                                                                                        \
        SRDO_OD_ENTRY_LINE                                                                                   \
        UNSIGNED16 index;                                                                                    \
        UNSIGNED8 subIndex;                                                                                  \
        type *pVariable;                                                                                     \
    } SRDO_OD_ENTRY_##name##_T

SRDO_OD_ENTRY(U8, UNSIGNED8);
SRDO_OD_ENTRY(U16, UNSIGNED16);
SRDO_OD_ENTRY(U32, UNSIGNED32);
SRDO_OD_ENTRY(U64, UNSIGNED64);
SRDO_OD_ENTRY(I8, INTEGER8);
SRDO_OD_ENTRY(I16, INTEGER16);
SRDO_OD_ENTRY(I32, INTEGER32);
SRDO_OD_ENTRY(R32, REAL32);

/* --- gen_srdo.c --- */

void coGenSrdoInit(CO_LINE_PARA_AND UNSIGNED8 ownNodeId);
CO_SRDO_DATA_T *coGenSrdoGetDataPtr(CO_LINE_PARA_AND UNSIGNED16 index);
RET_T coGenSrdoReceiveNormal(CO_LINE_PARA_AND UNSIGNED16 srdoNr, const UNSIGNED8 *pData);
RET_T coGenSrdoReceiveInverted(CO_LINE_PARA_AND UNSIGNED16 srdoNr, const UNSIGNED8 *pData);
RET_T coGenSrdoReceiveMapping(CO_LINE_PARA_AND UNSIGNED16 srdoNr, const UNSIGNED8 *pNormal,
                              const UNSIGNED8 *pInverted);
RET_T coGenSrdoTransmitMapping(CO_LINE_PARA_AND UNSIGNED16 srdoNr, UNSIGNED8 *pBufferNormal,
                               UNSIGNED8 *pBufferInverted);
void *coGenSrdoGetVariable(CO_LINE_PARA_AND UNSIGNED16 index, UNSIGNED8 subIndex);

void coGenSrdoSetConfigValid(CO_LINE_PARA_AND UNSIGNED8 value);
UNSIGNED8 coGenSrdoGetConfigValid(CO_LINE_PARA);
void coGenSrdoSetConfigReady(CO_LINE_PARA_AND UNSIGNED8 value);
UNSIGNED8 coGenSrdoGetConfigReady(CO_LINE_PARA);
void coGenSrdoSetNmtState(CO_LINE_PARA_AND CO_NMT_STATE_T state);
CO_NMT_STATE_T coGenSrdoGetNmtState(CO_LINE_PARA);
void coGenSrdoSetTimer(CO_LINE_PARA_AND CO_SRDO_DATA_T *pSrdo);
CO_SRDO_DATA_T *coGenSrdoGetTimer(CO_LINE_PARA);

#endif /* CO_SRDO_H */
