/*
 * Stand-in for what all protocols of the embedded stack share. A program that includes this has included
 * gen_define.h before: its defines decide which groups the common initialisation structure has.
 */
#ifndef CORE_COMMON_H
#define CORE_COMMON_H 1

#include <core_datatype.h>

#ifdef CAN_MULTI_LINE_CNT
#define CAN_LINE_ARRAY_DECL CAN_MULTI_LINE_CNT
#else
#define CAN_LINE_ARRAY_DECL 1u
#endif

typedef UNSIGNED8 CAN_LINE_TYPE;
typedef UNSIGNED8 CORE_PROTOCOL_TYPE_T;

#define CORE_PROT_TYPE_UNKNOWN 0x00u
#define CORE_PROT_TYPE_CANOPEN 0x01u
#define CORE_PROT_TYPE_J1939 0x02u
#define CORE_PROT_TYPE_RAWCAN 0x04u
#define CORE_PROT_TYPE_UDS 0x08u

typedef struct
{
    UNSIGNED8 structVersion;
    UNSIGNED16 recBufferCnt[CAN_LINE_ARRAY_DECL];
    UNSIGNED16 trBufferCnt[CAN_LINE_ARRAY_DECL];
    UNSIGNED16 cobCnt[CAN_LINE_ARRAY_DECL];
    CORE_PROTOCOL_TYPE_T protocolType[CAN_LINE_ARRAY_DECL];
#ifdef ISOTP_CLIENT_COUNTS
    UNSIGNED8 isoTpClientCnt[CAN_LINE_ARRAY_DECL];
    UNSIGNED8 isoTpServerCnt[CAN_LINE_ARRAY_DECL];
#endif
#if defined(CORE_CANFD_SUPPORTED) || defined(CO_CANFD_SUPPORTED)
    BOOL_T fdMode[CAN_LINE_ARRAY_DECL];
#endif
} CORE_COMMON_INIT_VAL_T;

/* takes the structure above of either stack */
RET_T coreStackInit(const CORE_COMMON_INIT_VAL_T *pInitVals);

/* the names of the older stack */
typedef CAN_LINE_TYPE CO_LINE_TYPE;
#define CO_LINE_ARRAY_DECL CAN_LINE_ARRAY_DECL
#define commonStackInit coreStackInit
typedef CORE_COMMON_INIT_VAL_T CO_COMMON_INIT_VAL_T;
typedef CORE_PROTOCOL_TYPE_T MP_PROTOCOL_TYPE_T;

#define MP_PROT_TYPE_UNKNOWN CORE_PROT_TYPE_UNKNOWN
#define MP_PROT_TYPE_CANOPEN CORE_PROT_TYPE_CANOPEN
#define MP_PROT_TYPE_J1939 CORE_PROT_TYPE_J1939
#define MP_PROT_TYPE_RAWCAN CORE_PROT_TYPE_RAWCAN
#define MP_PROT_TYPE_UDS CORE_PROT_TYPE_UDS

#endif /* CORE_COMMON_H */
