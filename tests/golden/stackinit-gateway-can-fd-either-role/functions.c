
UNSIGNED8 canLineTable[CAN_LINE_ARRAY_DECL] = {0, 1};
/* core initialization settings */
CORE_COMMON_INIT_VAL_T    commonInitVars = {
	1u,
	{ CORE_REC_BUFFER_COUNTS },
	{ CORE_TR_BUFFER_COUNTS },
	{ CORE_COB_COUNTS }, 
	{ CORE_PROT_TYPE_CANOPEN, CORE_PROT_TYPE_CANOPEN},
	{ CO_TRUE, CO_TRUE, }
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
   { CO_NODE_ID_FUNCTIONS }, 
   { CO_TRUE, CO_TRUE }
};

RET_T coCanOpenStackInit_common(CO_EVENT_STORE_T pLoadFunction, BOOL_T *pModes);

RET_T coCanOpenStackInitPara(
         CO_EVENT_STORE_T pLoadFunction,
         CO_INIT_OPTION_T *pCoOptions, BOOL_T *pModes
    )
{
    CO_INIT_OPTION_T *pCoInitOpt = NULL;
    RET_T retVal;
    retVal = coCanOpenStackInit_common(pLoadFunction, pModes);
    if (retVal == RET_OK) {
        pCoInitOpt = &pCoOptions[0];
        retVal = coCanOpenStackInit_line0(0, pCoInitOpt, pModes);
    }
    if (retVal == RET_OK) {
        pCoInitOpt = &pCoOptions[1];
        retVal = coCanOpenStackInit_line1(1, pCoInitOpt, pModes);
    }
    retVal = coCanOpenStackInit_finish();
    return(retVal);
}
RET_T coCanOpenStackInit_common(
         CO_EVENT_STORE_T pLoadFunction, BOOL_T *pModes
    )
{
    CAN_LINE_TYPE    CAN_LINE;
    RET_T retVal = RET_OK;
    for (CAN_LINE = 0; CAN_LINE < CAN_MULTI_LINE_CNT; CAN_LINE ++)
    {
        commonInitVars.fdMode[CAN_LINE] = CO_TRUE;
        if (pModes != NULL) {
            commonInitVars.fdMode[CAN_LINE] = pModes[CAN_LINE];
        }
        serviceInitVars.fdMode[CAN_LINE] = CO_TRUE;
        if (pModes != NULL) {
            serviceInitVars.fdMode[CAN_LINE] = pModes[CAN_LINE];
        }
    }
    /* common initialization */
    retVal = coreStackInit(&commonInitVars);
    if (retVal != RET_OK) {
        return (retVal);
    }
    /* multi-line initialization */
    retVal = coCanOpenStackVarInit(&serviceInitVars);

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
    return(retVal);
}
RET_T coCanOpenStackInit_line(
    UNSIGNED8 canLine,
    CO_INIT_OPTION_T *pCoOptions,
    BOOL_T *pModes
)
{
    RET_T retVal;
switch(canLine) {
	case 0:
		retVal = coCanOpenStackInit_line0(canLine, pCoOptions, pModes);
		break;
	case 1:
		retVal = coCanOpenStackInit_line1(canLine, pCoOptions, pModes);
		break;
	default:
		retVal = RET_PARAMETER_INVALID;
	break;
    }
    return(retVal);
}

/* ****************************************************************************************** */
/* Initialize line <<0>> */
RET_T coCanOpenStackInit_line0(
    UNSIGNED8 canLine,
    CO_INIT_OPTION_T *pCoOptions,
    BOOL_T *pModes
)
{
    RET_T retVal;
    (void) pCoOptions; /* currently unused */

    /* initialize object dictionary variables and pointers */
    coOdInitOdPtr(canLine, &od_assign[0], 28, od_description, CO_OBJ_DESC_CNT, NULL, &od_data_variables);
    (void)od_const_i24;
    (void)od_i24;
    /* initialize (u)sdo server(s) */
    if (pModes != NULL) {
    if (pModes[canLine] == CO_TRUE) {
       retVal = coUsdoServerInit(canLine);
       if (retVal != RET_OK) {
           return(retVal);
       }
       CORE_HANDLE_WATCHDOG
#ifdef CO_SDO_SERVER_CNT
    } else {
        retVal = coSdoServerInit(canLine, 1);
        if (retVal != RET_OK) {
            return(retVal);
        }
        CORE_HANDLE_WATCHDOG
#endif /* CO_SDO_SERVER_CNT */
    }
    }
    /* initialize (u)sdo clients(s) */
    if (pModes != NULL) {
    if (pModes[canLine] == CO_TRUE) {
         retVal = coUsdoClientInit(canLine);
         if (retVal != RET_OK) {
             return(retVal);
         }
         CORE_HANDLE_WATCHDOG
    }
    }
    /* initialize sdo clients(s) */
    retVal = coSdoClientInit(canLine, 1u);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize error control */
    retVal = coErrorCtrlInit(canLine, od_const_u16[0], 1);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize emergency */
    retVal = coEmcyProducerInit(canLine);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize sync */
    retVal = coSyncInit(canLine, od_const_u32[1], od_const_u32[2], 0);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize EMCY consumer */
    retVal = coEmcyConsumerInit(canLine, 2);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize Time service */
    retVal = coTimeInit(canLine, CO_TRUE, CO_FALSE);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize TPDO 1 */
    retVal = coPdoTransmitInit(canLine, 1u, od_const_u8[0], od_const_u16[1], od_const_u16[2], od_const_u8[3], &mapTableTPDOa1);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize TPDO 4 */
    retVal = coPdoTransmitInit(canLine, 4u, od_const_u8[0], 0u, 0u, 0u, NULL);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize TPDO 5 */
    retVal = coPdoTransmitInit(canLine, 5u, od_const_u8[0], 0u, 0u, 0u, NULL);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize RPDO 1 */
    retVal = coPdoReceiveInit(canLine, 1u, od_const_u8[0], 0u, 0u, &mapTableRPDOa1);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize RPDO 2 */
    retVal = coPdoReceiveInit(canLine, 2u, od_const_u8[0], 0u, 0u, &mapTableRPDOa1);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize SDO Requesting Device (SRD) */
    retVal = coSrdInit(canLine);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize  GFC Producer - Consumer */
    retVal = coGfcInit(canLine, CO_TRUE, CO_TRUE);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize SRDO  */
    retVal = coSrdoInit(canLine, 1);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialization of LED module */
    coLedInit(canLine);

    /* initialize ISO-TP */
    retVal = isoTpInit(canLine);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialization of ID negotiation module */
    coIdNegoInit(canLine);
    /* initialization of node guarding master*/
    retVal = coGuardingInit(canLine);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize LSS Slave */
    retVal = coLssInit(canLine);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize NMT slave */ 
    retVal = coNmtInit(canLine, 0u);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    return(RET_OK);
}

/* ****************************************************************************************** */
/* Initialize line <<1>> */
RET_T coCanOpenStackInit_line1(
    UNSIGNED8 canLine,
    CO_INIT_OPTION_T *pCoOptions,
    BOOL_T *pModes
)
{
    RET_T retVal;
    /* initialize object dictionary variables and pointers */
    coOdInitOdPtr(canLine, &od_assign[28], 28, od_description, CO_OBJ_DESC_CNT, NULL, &od_data_variables);
    /* initialize (u)sdo server(s) */
    if (pModes != NULL) {
    if (pModes[canLine] == CO_TRUE) {
       retVal = coUsdoServerInit(canLine);
       if (retVal != RET_OK) {
           return(retVal);
       }
       CORE_HANDLE_WATCHDOG
#ifdef CO_SDO_SERVER_CNT
    } else {
        retVal = coSdoServerInit(canLine, 1);
        if (retVal != RET_OK) {
            return(retVal);
        }
        CORE_HANDLE_WATCHDOG
#endif /* CO_SDO_SERVER_CNT */
    }
    }
    /* initialize sdo clients(s) */
    retVal = coSdoClientInit(canLine, 1u);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize error control */
    retVal = coErrorCtrlInit(canLine, od_const_u16[0], 1);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize emergency */
    retVal = coEmcyProducerInit(canLine);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize sync */
    retVal = coSyncInit(canLine, od_const_u32[1], od_const_u32[2], 0);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize EMCY consumer */
    retVal = coEmcyConsumerInit(canLine, 2);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize Time service */
    retVal = coTimeInit(canLine, CO_TRUE, CO_FALSE);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize TPDO 1 */
    retVal = coPdoTransmitInit(canLine, 1u, od_const_u8[0], od_const_u16[1], od_const_u16[2], od_const_u8[3], &mapTableTPDOb1);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize TPDO 4 */
    retVal = coPdoTransmitInit(canLine, 4u, od_const_u8[0], 0u, 0u, 0u, NULL);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize TPDO 5 */
    retVal = coPdoTransmitInit(canLine, 5u, od_const_u8[0], 0u, 0u, 0u, NULL);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize RPDO 1 */
    retVal = coPdoReceiveInit(canLine, 1u, od_const_u8[0], 0u, 0u, &mapTableRPDOb1);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize RPDO 2 */
    retVal = coPdoReceiveInit(canLine, 2u, od_const_u8[0], 0u, 0u, &mapTableRPDOb1);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize SDO Requesting Device (SRD) */
    retVal = coSrdInit(canLine);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize  GFC Producer - Consumer */
    retVal = coGfcInit(canLine, CO_TRUE, CO_TRUE);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialize SRDO  */
    retVal = coSrdoInit(canLine, 1);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialization of LED module */
    coLedInit(canLine);

    /* initialize ISO-TP */
    retVal = isoTpInit(canLine);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* initialization of ID negotiation module */
    coIdNegoInit(canLine);
    /* initialization of node guarding master*/
    retVal = coGuardingInit(canLine);
    if (retVal != RET_OK) {
        return(retVal);
    }
    CORE_HANDLE_WATCHDOG
    /* Check dynamic options for master flag */
    if (pCoOptions->master == 1) {
        /* initialize LSS Master */
        retVal = coLssMasterInit(canLine);
        if (retVal != RET_OK) {
            return(retVal);
        }
        CORE_HANDLE_WATCHDOG
        /* initialize NMT master */ 
        retVal = coNmtInit(canLine, 1u);
        if (retVal != RET_OK) {
            return(retVal);
        }
        CORE_HANDLE_WATCHDOG
    } else {
        /* initialize LSS Slave */
        retVal = coLssInit(canLine);
        if (retVal != RET_OK) {
            return(retVal);
        }
        CORE_HANDLE_WATCHDOG
        /* initialize NMT slave */ 
        retVal = coNmtInit(canLine, 0u);
        if (retVal != RET_OK) {
            return(retVal);
        }
        CORE_HANDLE_WATCHDOG
    }
    return(RET_OK);
}
RET_T coCanOpenStackInit_finish(void)
{
/*
* Currently this function is only required to initialize PDO Routing.
* Without it the function is empty, but may be used later for additional
* purposes.
*/
    return(RET_OK);
}
#ifdef GEN_OVERWRITE_PREDEF_CONN_SET
/* Please be careful - this function overwrite the COB-Ids of the
* predefined connection set with values setting up by the VEX
* It can be passed as load indication function to coCanOpenStackInit()
*/
RET_T genLoadIndication(UNSIGNED8 canLine, UNSIGNED8 subIndex)
{
	RET_T ret = RET_OK;
	UNSIGNED32 cobId = 0ul;
	UNSIGNED8 nodeId = 0x00;
	if (((subIndex == 1) || (subIndex == 2)) && (canLine ==0)) {
		nodeId = coNmtGetNodeId(0);

		/* SDO server COB IDs starting at 2nd SDO server */
		ret = coOdGetDefaultVal_u32(0, 0x1201, 1, &cobId);
		if (ret == RET_OK) {
			ret = coOdSetCobid(0, 0x1201, 1, cobId);
		}
		ret = coOdGetDefaultVal_u32(0, 0x1201, 2, &cobId);
		if (ret == RET_OK) {
			ret = coOdSetCobid(0, 0x1201, 2, cobId);
		}

		/* SDO client COB IDs */
		ret = coOdGetDefaultVal_u32(0, 0x1280, 1, &cobId);
		if (ret == RET_OK) {
			ret = coOdSetCobid(0, 0x1280, 1, cobId);
		}
		ret = coOdGetDefaultVal_u32(0, 0x1280, 2, &cobId);
		if (ret == RET_OK) {
			ret = coOdSetCobid(0, 0x1280, 2, cobId);
		}

		/* RxPDO COB IDs */
		cobId = (UNSIGNED32)nodeId + (UNSIGNED32)0x180u;
		ret = coOdSetCobid(0, 0x1400, 1, cobId);
		cobId = (UNSIGNED32)nodeId + (UNSIGNED32)0x180u;
		ret = coOdSetCobid(0, 0x1401, 1, cobId);

		/* TxPDO COB IDs */
		cobId = (UNSIGNED32)nodeId + (UNSIGNED32)0x180u;
		ret = coOdSetCobid(0, 0x1800, 1, cobId);
		cobId = (UNSIGNED32)nodeId + (UNSIGNED32)0x180u;
		ret = coOdSetCobid(0, 0x1803, 1, cobId);
		cobId = (UNSIGNED32)nodeId + (UNSIGNED32)0x180u;
		ret = coOdSetCobid(0, 0x1804, 1, cobId);
	}
	if (((subIndex == 1) || (subIndex == 2)) && (canLine ==1)) {
		nodeId = coNmtGetNodeId(1);

		/* SDO server COB IDs starting at 2nd SDO server */
		ret = coOdGetDefaultVal_u32(1, 0x1201, 1, &cobId);
		if (ret == RET_OK) {
			ret = coOdSetCobid(1, 0x1201, 1, cobId);
		}
		ret = coOdGetDefaultVal_u32(1, 0x1201, 2, &cobId);
		if (ret == RET_OK) {
			ret = coOdSetCobid(1, 0x1201, 2, cobId);
		}

		/* SDO client COB IDs */
		ret = coOdGetDefaultVal_u32(1, 0x1280, 1, &cobId);
		if (ret == RET_OK) {
			ret = coOdSetCobid(1, 0x1280, 1, cobId);
		}
		ret = coOdGetDefaultVal_u32(1, 0x1280, 2, &cobId);
		if (ret == RET_OK) {
			ret = coOdSetCobid(1, 0x1280, 2, cobId);
		}

		/* RxPDO COB IDs */
		cobId = (UNSIGNED32)nodeId + (UNSIGNED32)0x180u;
		ret = coOdSetCobid(1, 0x1400, 1, cobId);
		cobId = (UNSIGNED32)nodeId + (UNSIGNED32)0x180u;
		ret = coOdSetCobid(1, 0x1401, 1, cobId);

		/* TxPDO COB IDs */
		cobId = (UNSIGNED32)nodeId + (UNSIGNED32)0x180u;
		ret = coOdSetCobid(1, 0x1800, 1, cobId);
		cobId = (UNSIGNED32)nodeId + (UNSIGNED32)0x180u;
		ret = coOdSetCobid(1, 0x1803, 1, cobId);
		cobId = (UNSIGNED32)nodeId + (UNSIGNED32)0x180u;
		ret = coOdSetCobid(1, 0x1804, 1, cobId);
	}
	return ret;
}
#endif /* GEN_OVERWRITE_PREDEF_CONN_SET */
