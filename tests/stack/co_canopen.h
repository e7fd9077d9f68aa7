/*
 * Stand-in for the CANopen part of the embedded stack: the types of its indications and the functions that
 * start its services, in the shape that generated code calls them. A program that includes this has included
 * gen_define.h before.
 */
#ifndef CO_CANOPEN_H
#define CO_CANOPEN_H 1

#include <co_odaccess.h>
#include <core_common.h>
#include <core_isotp.h>

#ifndef CORE_CONST
#define CORE_CONST const
#endif
#ifndef CO_CONST
#define CO_CONST const
#endif

/* --- start of the stack --- */

typedef struct
{
    UNSIGNED8 master; /* 1: NMT master */
} CO_INIT_OPTION_T;

typedef UNSIGNED8 (*CO_NODE_ID_FUNCTION_T)(CO_LINE_PARA);

/*
 * The structure of the services bears a version if gen_define.h says so. The older stack is not told; with
 * the newer structures it has to be built for them.
 */
#ifdef GEN_CANOPEN_INIT_STRUCT_VERSION
#if GEN_CANOPEN_INIT_STRUCT_VERSION > 0
#define CO_SERVICES_HAVE_VERSION 1u
#endif
#endif

typedef struct
{
#ifdef CO_SERVICES_HAVE_VERSION
    UNSIGNED8 structVersion;
#endif
    UNSIGNED16 objectCnt[CAN_LINE_ARRAY_DECL];
    UNSIGNED16 transmitPdoCnt[CAN_LINE_ARRAY_DECL];
    UNSIGNED16 receivePdoCnt[CAN_LINE_ARRAY_DECL];
#ifdef CO_SRDO_SUPPORTED
    UNSIGNED8 srdoCnt[CAN_LINE_ARRAY_DECL];
#endif
    UNSIGNED8 sdoServerCnt[CAN_LINE_ARRAY_DECL];
    UNSIGNED8 sdoClientCnt[CAN_LINE_ARRAY_DECL];
#ifdef CO_USDO_SERVER_MAX_CONN_CNT
    UNSIGNED8 usdoServerCnt[CAN_LINE_ARRAY_DECL];
#endif
#ifdef CO_USDO_CLIENT_MAX_CONN_CNT
    UNSIGNED8 usdoClientCnt[CAN_LINE_ARRAY_DECL];
#endif
    UNSIGNED8 errorControlCnt[CAN_LINE_ARRAY_DECL];
    UNSIGNED8 errorHistoryCnt[CAN_LINE_ARRAY_DECL];
    UNSIGNED8 activeErrorCnt[CAN_LINE_ARRAY_DECL];
    UNSIGNED8 emergencyConsumerCnt[CAN_LINE_ARRAY_DECL];
#ifdef CO_NETWORK_ROUTING_CNT
    UNSIGNED8 routingCnt[CAN_LINE_ARRAY_DECL];
#endif
    UNSIGNED8 assignmentCnt[CAN_LINE_ARRAY_DECL];
    UNSIGNED8 guardingCnt[CAN_LINE_ARRAY_DECL];
    UNSIGNED8 nodeId[CAN_LINE_ARRAY_DECL];
    CO_NODE_ID_FUNCTION_T nodeIdFunction[CAN_LINE_ARRAY_DECL];
#if defined(CORE_CANFD_SUPPORTED) || defined(CO_CANFD_SUPPORTED)
    BOOL_T fdMode[CAN_LINE_ARRAY_DECL];
#endif
} CO_SERVICE_INIT_VAL_T;

RET_T coCanOpenStackVarInit(const CO_SERVICE_INIT_VAL_T *pServiceInitVals);

/* --- indications --- */

typedef enum {
    CO_NMT_STATE_UNKNOWN,
    CO_NMT_STATE_OPERATIONAL,
    CO_NMT_STATE_STOPPED,
    CO_NMT_STATE_PREOP
} CO_NMT_STATE_T;
typedef enum { CO_ERRCTRL_BOOTUP, CO_ERRCTRL_STARTED, CO_ERRCTRL_FAILURE } CO_ERRCTRL_T;
typedef enum { CO_CAN_STATE_ACTIVE, CO_CAN_STATE_PASSIVE, CO_CAN_STATE_BUSOFF } CO_CAN_STATE_T;
typedef enum { CO_COMM_STATE_EVENT_NEW, CO_COMM_STATE_EVENT_LOST } CO_COMM_STATE_EVENT_T;
typedef enum { CO_CFG_TRANSFER_DONE, CO_CFG_TRANSFER_FAILED } CO_CFG_TRANSFER_T;
typedef enum { CO_FLYMA_STATE_SLAVE, CO_FLYMA_STATE_MASTER } CO_FLYMA_STATE_T;
typedef enum { CO_LSS_SERVICE_STORE, CO_LSS_SERVICE_NEW_BITRATE } CO_LSS_SERVICE_T;
typedef enum { CO_LSS_MASTER_SERVICE_IDENTITY, CO_LSS_MASTER_SERVICE_NODE_ID } CO_LSS_MASTER_SERVICE_T;
typedef enum { CO_MANAGER_EVENT_BOOTUP, CO_MANAGER_EVENT_FAILURE } CO_MANAGER_EVENT_T;
typedef struct
{
    UNSIGNED32 milliseconds;
    UNSIGNED16 days;
} CO_TIME_T;

/* an indication of a stack for several lines is told the line first */
#ifdef CAN_MULTI_LINE
#define CO_EVENT_PARA UNSIGNED8 canLine,
#else
#define CO_EVENT_PARA
#endif

typedef RET_T (*CO_EVENT_SDO_SERVER_FUNCTION_T)(CO_EVENT_PARA BOOL_T execute, UNSIGNED8 sdoNr,
                                                UNSIGNED16 index, UNSIGNED8 subIndex);
typedef RET_T (*CO_EVENT_SDO_SERVER_CHECK_WRITE_T)(CO_EVENT_PARA BOOL_T execute, UNSIGNED8 sdoNr,
                                                   UNSIGNED16 index, UNSIGNED8 subIndex,
                                                   const UNSIGNED8 *pData);
typedef void (*CO_EVENT_PDO_T)(CO_EVENT_PARA UNSIGNED16 pdoNr);
typedef void (*CO_EVENT_PDO_UPDATE_T)(CO_EVENT_PARA UNSIGNED16 pdoNr);
typedef RET_T (*CO_EVENT_NMT_T)(CO_EVENT_PARA BOOL_T execute, CO_NMT_STATE_T nmtState);
typedef void (*CO_EVENT_ERRCTRL_T)(CO_EVENT_PARA UNSIGNED8 nodeId, CO_ERRCTRL_T errCtrlState,
                                   CO_NMT_STATE_T nmtState);
typedef void (*CO_EVENT_SYNC_T)(CO_EVENT_PARA UNSIGNED8 syncCounter);
typedef void (*CO_EVENT_SYNC_FINISHED_T)(CO_EVENT_PARA UNSIGNED8 syncCounter);
typedef void (*CO_EVENT_LED_T)(CO_EVENT_PARA BOOL_T ledState);
typedef void (*CORE_EVENT_CAN_STATE_T)(CO_EVENT_PARA CO_CAN_STATE_T canState);
typedef void (*CO_EVENT_CFG_MANAGER_T)(CO_EVENT_PARA CO_CFG_TRANSFER_T type, UNSIGNED8 sdoNr,
                                       UNSIGNED16 index, UNSIGNED8 sub, UNSIGNED32 reason);
typedef void (*CO_EVENT_FLYMA_T)(CO_EVENT_PARA CO_FLYMA_STATE_T state, UNSIGNED8 node, UNSIGNED8 priority);
typedef void (*CO_EVENT_SDO_CLIENT_READ_T)(CO_EVENT_PARA UNSIGNED8 sdoNr, UNSIGNED16 index,
                                           UNSIGNED8 subIndex, UNSIGNED32 size, UNSIGNED32 result);
typedef void (*CO_EVENT_SDO_CLIENT_WRITE_T)(CO_EVENT_PARA UNSIGNED8 sdoNr, UNSIGNED16 index,
                                            UNSIGNED8 subIndex, UNSIGNED32 result);
typedef void (*CO_EVENT_EMCY_T)(CO_EVENT_PARA UNSIGNED16 errCode, UNSIGNED8 *addErrorCode);
typedef void (*CO_EVENT_EMCY_CONSUMER_T)(CO_EVENT_PARA UNSIGNED8 node, UNSIGNED16 errCode,
                                         UNSIGNED8 errorRegister, UNSIGNED8 const *addErrorCode);
typedef void (*CO_EVENT_TIME_T)(CO_EVENT_PARA CO_TIME_T *pTime);
typedef RET_T (*CO_EVENT_STORE_T)(CO_EVENT_PARA UNSIGNED8 subIndex);
typedef RET_T (*CO_EVENT_LSS_T)(CO_EVENT_PARA CO_LSS_SERVICE_T service, UNSIGNED16 bitrate,
                                UNSIGNED8 *pErrCode, UNSIGNED8 *pErrSpec);
typedef void (*CO_EVENT_LSS_MASTER_T)(CO_EVENT_PARA CO_LSS_MASTER_SERVICE_T service, UNSIGNED16 errorCode,
                                      UNSIGNED8 errorSpec, UNSIGNED32 *pIdentity);
typedef void (*CORE_EVENT_COMM_T)(CO_EVENT_PARA CO_COMM_STATE_EVENT_T commEvent);
typedef void (*CO_EVENT_MANAGER_BOOTUP_T)(CO_EVENT_PARA UNSIGNED8 node, CO_MANAGER_EVENT_T event);
typedef void (*CO_EVENT_MPDO_T)(CO_EVENT_PARA UNSIGNED16 pdoNr, UNSIGNED16 index, UNSIGNED8 subIndex);
typedef RET_T (*CO_EVENT_USDO_SERVER_T)(CO_EVENT_PARA BOOL_T execute, UNSIGNED8 nodeId, UNSIGNED16 index,
                                        UNSIGNED8 subIndex);
typedef void (*CO_EVENT_USDO_SERVER_FINISHED_T)(CO_EVENT_PARA UNSIGNED8 nodeId, UNSIGNED16 index,
                                                UNSIGNED8 subIndex);
typedef RET_T (*CO_EVENT_USDO_SERVER_CHECK_WRITE_T)(CO_EVENT_PARA UNSIGNED8 nodeId, UNSIGNED16 index,
                                                    UNSIGNED8 subIndex, const UNSIGNED8 *pData);
typedef void (*CO_EVENT_USDO_SERVER_DOMAIN_READ_T)(CO_EVENT_PARA UNSIGNED16 index, UNSIGNED8 subIndex,
                                                   UNSIGNED32 domainBufSize, UNSIGNED32 transferSize);
typedef CO_EVENT_USDO_SERVER_DOMAIN_READ_T CO_EVENT_USDO_SERVER_DOMAIN_WRITE_T;
typedef void (*CO_EVENT_USDO_CLIENT_T)(CO_EVENT_PARA UNSIGNED8 nodeId, UNSIGNED16 index, UNSIGNED8 subIndex,
                                       RET_T result);
typedef void (*CO_EVENT_USDO_CLIENT_DOMAIN_TRANSFER_T)(CO_EVENT_PARA UNSIGNED8 nodeId, UNSIGNED16 index,
                                                       UNSIGNED8 subIndex, UNSIGNED32 domainBufSize,
                                                       UNSIGNED32 transferSize);
typedef CORE_EVENT_CAN_STATE_T CO_EVENT_CAN_STATE_T; /* the names of the older stack */
typedef CORE_EVENT_COMM_T CO_EVENT_COMM_T;

/* --- services --- */

RET_T coEventRegister_LOAD_PARA(CO_EVENT_STORE_T pFunction);
void coLedInit(CO_LINE_PARA);
void coIdNegoInit(CO_LINE_PARA);
RET_T coSdoServerInit(CO_LINE_PARA_AND UNSIGNED8 sdoNr);
RET_T coSdoClientInit(CO_LINE_PARA_AND UNSIGNED8 sdoNr);
RET_T coUsdoServerInit(CO_LINE_PARA);
RET_T coUsdoClientInit(CO_LINE_PARA);
RET_T coErrorCtrlInit(CO_LINE_PARA_AND UNSIGNED16 heartbeatTime, UNSIGNED8 consumerCnt);
RET_T coEmcyProducerInit(CO_LINE_PARA);
RET_T coEmcyConsumerInit(CO_LINE_PARA_AND UNSIGNED8 consumerCnt);
RET_T coSyncInit(CO_LINE_PARA_AND UNSIGNED32 cobId, UNSIGNED32 cycleTime, UNSIGNED8 counterOverflow);
RET_T coTimeInit(CO_LINE_PARA_AND BOOL_T isConsumer, BOOL_T isProducer);
RET_T coPdoTransmitInit(CO_LINE_PARA_AND UNSIGNED16 pdoNr, UNSIGNED8 transmissionType, UNSIGNED16 inhibitTime,
                        UNSIGNED16 eventTimer, UNSIGNED8 syncStartValue, const PDO_TR_MAP_TABLE_T *pTable);
RET_T coPdoReceiveInit(CO_LINE_PARA_AND UNSIGNED16 pdoNr, UNSIGNED8 transmissionType, UNSIGNED16 inhibitTime,
                       UNSIGNED16 eventTimer, const PDO_REC_MAP_TABLE_T *pTable);
RET_T coPdoNetworkRouting(void);
RET_T coSrdInit(CO_LINE_PARA);
RET_T coGfcInit(CO_LINE_PARA_AND BOOL_T isProducer, BOOL_T isConsumer);
RET_T coSrdoInit(CO_LINE_PARA_AND UNSIGNED8 srdoCnt);
RET_T coGuardingInit(CO_LINE_PARA);
RET_T coLssInit(CO_LINE_PARA);
RET_T coLssMasterInit(CO_LINE_PARA);
RET_T coNmtInit(CO_LINE_PARA_AND UNSIGNED8 master);
UNSIGNED8 coNmtGetNodeId(CO_LINE_PARA);

#endif /* CO_CANOPEN_H */
