/* core initialization settings */
CORE_COMMON_INIT_VAL_T    commonInitVars = {
	1u,
	{ CORE_REC_BUFFER_COUNTS },
	{ CORE_TR_BUFFER_COUNTS },
	{ CORE_COB_COUNTS }, 
	{ CORE_PROT_TYPE_CANOPEN}
};

/* CANopen service initialization variables */
CO_SERVICE_INIT_VAL_T	serviceInitVars = {
   1u,
   { CO_OBJECT_COUNTS },
   { CO_TXPDO_COUNTS },
   { CO_RXPDO_COUNTS },
#ifdef CO_SRDO_SUPPORTED
   { CO_SRDO_COUNTS },
#endif /* CO_SRDO_SUPPORTED */
   { CO_SSDO_COUNTS },
   { CO_CSDO_COUNTS },
#ifdef CO_USDO_SERVER_MAX_CONN_CNT
   { CO_USDO_SERVER_MAX_CONN_COUNTS },
#endif /* CO_USDO_SERVER_MAX_CONN_CNT */
#ifdef CO_USDO_CLIENT_MAX_CONN_CNT
   { CO_USDO_CLIENT_MAX_CONN_COUNTS },
#endif /* CO_USDO_CLIENT_MAX_CONN_CNT */
   { CO_ERR_CTRL_COUNTS },
   { CO_ERR_HIST_COUNTS },
   { CO_ACT_ERR_HIST_COUNTS },
   { CO_EMCY_CONS_COUNTS },
#ifdef CO_NETWORK_ROUTING_CNT
   { CO_NETWORK_ROUTING_COUNTS }, 
#endif /* CO_NETWORK_ROUTING_CNT */
   { CO_ASSIGN_COUNTS },
   { CO_GUARDING_COUNTS },
   { CO_NODE_IDS }, 
   { CO_NODE_ID_FUNCTIONS } 
};

RET_T coCanOpenStackInit(
         CO_EVENT_STORE_T pLoadFunction
    )
{
    RET_T retVal;


    /* common initialization */
    retVal = coreStackInit(&commonInitVars);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* variable initialization */
    retVal = coCanOpenStackVarInit(&serviceInitVars);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize object dictionary variables and pointers */
    coOdInitOdPtr(&od_assign[0], CO_OD_ASSIGN_CNT, &od_description[0], CO_OBJ_DESC_CNT, NULL, &od_data_variables);
    (void)od_const_i24;
    (void)od_i24;
    /* initialization of LED module */
    coLedInit();

    /* initialize sdo server(s) */
    retVal = coSdoServerInit(1u);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    retVal = coSdoServerInit(2u);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize sdo clients(s) */
    retVal = coSdoClientInit(1u);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize error control */
    retVal = coErrorCtrlInit(od_const_u16[0], 1);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize emergency */
    retVal = coEmcyProducerInit();
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize sync */
    retVal = coSyncInit(od_const_u32[1], od_const_u32[2], 0);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize EMCY consumer */
    retVal = coEmcyConsumerInit(2);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize Time service */
    retVal = coTimeInit(CO_TRUE, CO_FALSE);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize TPDO 1 */
    retVal = coPdoTransmitInit(1u, od_const_u8[0], od_const_u16[1], od_const_u16[2], od_const_u8[3], &mapTableTPDO1);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize TPDO 4 */
    retVal = coPdoTransmitInit(4u, od_const_u8[0], 0u, 0u, 0u, NULL);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize TPDO 5 */
    retVal = coPdoTransmitInit(5u, od_const_u8[0], 0u, 0u, 0u, NULL);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize RPDO 1 */
    retVal = coPdoReceiveInit(1u, od_const_u8[0], 0u, 0u, &mapTableRPDO1);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize RPDO 2 */
    retVal = coPdoReceiveInit(2u, od_const_u8[0], 0u, 0u, &mapTableRPDO1);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize SDO Requesting Device (SRD) */
    retVal = coSrdInit();
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize  GFC Producer - Consumer */
    retVal = coGfcInit(CO_TRUE, CO_TRUE);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize SRDO  */
    retVal = coSrdoInit(1);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize ISO-TP */
    retVal = isoTpInit();
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialization of ID negotiation module */
    coIdNegoInit();
    /* initialization of node guarding master*/
    retVal = coGuardingInit();
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG

    /* initialize load parameter function */
#if defined(CO_EVENT_DYNAMIC_STORE) || defined(CO_EVENT_PROFILE_STORE)
    retVal = coEventRegister_LOAD_PARA(pLoadFunction);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
#else
    if (pLoadFunction != NULL) {
        return(RET_PARAMETER_INVALID);
    }
#endif /* CO_EVENT_DYNAMIC_STORE || CO_EVENT_PROFILE_STORE */
    /* initialize LSS Slave */
    retVal = coLssInit();
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize NMT slave */ 
    retVal = coNmtInit(0u);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    return(RET_OK);
}
#ifdef GEN_OVERWRITE_PREDEF_CONN_SET
/* Please be careful - this function overwrite the COB-Ids of the
* predefined connection set with values setting up by the VEX
* It can be passed as load indication function to coCanOpenStackInit()
*/
RET_T genLoadIndication(UNSIGNED8 subIndex)
{
	RET_T ret = RET_OK;
	UNSIGNED32 cobId = 0ul;
	UNSIGNED8 nodeId = coNmtGetNodeId();
	if ((subIndex == 1) || (subIndex == 2)) {

		/* SDO server COB IDs */
		ret = coOdGetDefaultVal_u32(0x1201, 1, &cobId);
		if (ret == RET_OK) {
			ret = coOdSetCobid(0x1201, 1, cobId);
		}
		ret = coOdGetDefaultVal_u32(0x1201, 2, &cobId);
		if (ret == RET_OK) {
			ret = coOdSetCobid(0x1201, 2, cobId);
		}

		/* SDO client COB IDs */
		ret = coOdGetDefaultVal_u32(0x1280, 1, &cobId);
		if (ret == RET_OK) {
			ret = coOdSetCobid(0x1280, 1, cobId);
		}
		ret = coOdGetDefaultVal_u32(0x1280, 2, &cobId);
		if (ret == RET_OK) {
			ret = coOdSetCobid(0x1280, 2, cobId);
		}

		/* RxPDO COB IDs */
		cobId = nodeId + 0x180u;
		ret = coOdSetCobid(0x1400, 1, cobId);
		cobId = nodeId + 0x180u;
		ret = coOdSetCobid(0x1401, 1, cobId);

		/* TxPDO COB IDs */
		cobId = nodeId + 0x180u;
		ret = coOdSetCobid(0x1800, 1, cobId);
		cobId = nodeId + 0x180u;
		ret = coOdSetCobid(0x1803, 1, cobId);
		cobId = nodeId + 0x180u;
		ret = coOdSetCobid(0x1804, 1, cobId);
	}
	return ret;
}
#endif /* GEN_OVERWRITE_PREDEF_CONN_SET */
