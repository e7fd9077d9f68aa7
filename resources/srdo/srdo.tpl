#define GEN_SRDO_LINE_CNT	(sizeof(genSrdoNmtState) / sizeof(genSrdoNmtState[0]))

/* returns from the calling function when the table has the variable */
#define GEN_SRDO_SEARCH(table, count) \
	for (i = 0u; i < (count); i++) { \
		if (((table)[i].index == index) && ((table)[i].subIndex == subIndex) \
		 && GEN_SRDO_IS_LINE((table)[i])) { \
			return((void *)(table)[i].pVariable); \
		} \
	}

/*
 * Gives the SRDOs of a line their default values. COB-IDs that depend on the node-ID follow ownNodeId, so the
 * function is called again when that has changed.
 */
void coGenSrdoInit(
		GEN_SRDO_LINE_PARA_AND
		UNSIGNED8	ownNodeId
	)
{
__GEN_SRDO_INIT__

	if (GEN_SRDO_LINE < GEN_SRDO_LINE_CNT) {
		genSrdoConfigValid[GEN_SRDO_LINE] = 0u;
		genSrdoConfigReady[GEN_SRDO_LINE] = 0u;
		genSrdoNmtState[GEN_SRDO_LINE] = CO_NMT_STATE_PREOP;
		genSrdoTimer[GEN_SRDO_LINE] = NULL;
	}
}


/* Data of the SRDO with this communication object (0x1301 to 0x1340); NULL when there is none. */
CO_SRDO_DATA_T *coGenSrdoGetDataPtr(
		GEN_SRDO_LINE_PARA_AND
		UNSIGNED16	index
	)
{
CO_SRDO_DATA_T	*pSrdo = NULL;

	(void)index;

__GEN_SRDO_GET_DATA_PTR__

	return(pSrdo);
}


/* Keeps the data of a normal message, up to 8 bytes; the mapped variables do not change yet. */
RET_T coGenSrdoReceiveNormal(
		GEN_SRDO_LINE_PARA_AND
		UNSIGNED16	srdoNr,
		const UNSIGNED8	*pData
	)
{
RET_T		retVal = RET_OK;
UNSIGNED8	tmpU8 = 0u;
UNSIGNED16	tmpU16 = 0u;
UNSIGNED32	tmpU32 = 0u;

	/* which of them are used depends on the mapped variables */
	(void)srdoNr;
	(void)pData;
	(void)tmpU8;
	(void)tmpU16;
	(void)tmpU32;

__GEN_SRDO_RECEIVE_MAPPING1__

	return(retVal);
}


/*
 * Compares an inverted message with the normal one before. The mapped variables take the values only if all
 * bits are inverted; otherwise they stay as they are and an error is returned.
 */
RET_T coGenSrdoReceiveInverted(
		GEN_SRDO_LINE_PARA_AND
		UNSIGNED16	srdoNr,
		const UNSIGNED8	*pData
	)
{
RET_T		retVal = RET_OK;
UNSIGNED8	tmpU8 = 0u;
UNSIGNED16	tmpU16 = 0u;
UNSIGNED32	tmpU32 = 0u;
#ifdef CO_EXTENDED_DATA_TYPES
UNSIGNED64	tmpU64;

	(void)tmpU64;
#endif /* CO_EXTENDED_DATA_TYPES */

	(void)srdoNr;
	(void)pData;
	(void)tmpU8;
	(void)tmpU16;
	(void)tmpU32;

__GEN_SRDO_RECEIVE_MAPPING2__

	return(retVal);
}


/* Takes both messages of an SRDO at once. */
RET_T coGenSrdoReceiveMapping(
		GEN_SRDO_LINE_PARA_AND
		UNSIGNED16	srdoNr,
		const UNSIGNED8	*pNormal,
		const UNSIGNED8	*pInverted
	)
{
RET_T		retVal;

	retVal = coGenSrdoReceiveNormal(GEN_SRDO_LINE_AND srdoNr, pNormal);
	if (retVal == RET_OK) {
		retVal = coGenSrdoReceiveInverted(GEN_SRDO_LINE_AND srdoNr, pInverted);
	}

	return(retVal);
}


/*
 * Fills the normal and the inverted message of an SRDO, 8 bytes each, with the values of the mapped variables.
 * Entries of a mapping alternate: behind a value stands its inverted copy. A copy that is an object of its own
 * is sent as the application keeps it; otherwise the complement is made here. The messages must not be sent
 * when an error is returned.
 */
RET_T coGenSrdoTransmitMapping(
		GEN_SRDO_LINE_PARA_AND
		UNSIGNED16	srdoNr,
		UNSIGNED8	*pBufferNormal,
		UNSIGNED8	*pBufferInverted
	)
{
RET_T		retVal = RET_OK;
UNSIGNED32	tmp = 0u;

	(void)srdoNr;
	(void)pBufferNormal;
	(void)pBufferInverted;
	(void)tmp;

__GEN_SRDO_TRANSMIT_MAPPING__

	return(retVal);
}


/* Address of a mapped variable that stands in this file; NULL when there is none. */
void *coGenSrdoGetVariable(
		GEN_SRDO_LINE_PARA_AND
		UNSIGNED16	index,
		UNSIGNED8	subIndex
	)
{
UNSIGNED16	i = 0u;

	(void)i;
	(void)index;
	(void)subIndex;
#ifdef CAN_MULTI_LINE
	(void)CAN_LINE;
#endif /* CAN_MULTI_LINE */

#if SRDO_OD_ENTRY_U8_CNT > 0
	GEN_SRDO_SEARCH(odEntry_U8, SRDO_OD_ENTRY_U8_CNT)
#endif
#if SRDO_OD_ENTRY_U16_CNT > 0
	GEN_SRDO_SEARCH(odEntry_U16, SRDO_OD_ENTRY_U16_CNT)
#endif
#if SRDO_OD_ENTRY_U32_CNT > 0
	GEN_SRDO_SEARCH(odEntry_U32, SRDO_OD_ENTRY_U32_CNT)
#endif
#if SRDO_OD_ENTRY_U64_CNT > 0
	GEN_SRDO_SEARCH(odEntry_U64, SRDO_OD_ENTRY_U64_CNT)
#endif
#if SRDO_OD_ENTRY_I8_CNT > 0
	GEN_SRDO_SEARCH(odEntry_I8, SRDO_OD_ENTRY_I8_CNT)
#endif
#if SRDO_OD_ENTRY_I16_CNT > 0
	GEN_SRDO_SEARCH(odEntry_I16, SRDO_OD_ENTRY_I16_CNT)
#endif
#if SRDO_OD_ENTRY_I32_CNT > 0
	GEN_SRDO_SEARCH(odEntry_I32, SRDO_OD_ENTRY_I32_CNT)
#endif
#if SRDO_OD_ENTRY_R32_CNT > 0
	GEN_SRDO_SEARCH(odEntry_R32, SRDO_OD_ENTRY_R32_CNT)
#endif

	return(NULL);
}


/* Configuration valid (object 0x13FE): 0xA5 lets the SRDOs start. */
void coGenSrdoSetConfigValid(
		GEN_SRDO_LINE_PARA_AND
		UNSIGNED8	value
	)
{
	if (GEN_SRDO_LINE < GEN_SRDO_LINE_CNT) {
		genSrdoConfigValid[GEN_SRDO_LINE] = value;
	}
}


UNSIGNED8 coGenSrdoGetConfigValid(
		GEN_SRDO_LINE_PARA
	)
{
	return((GEN_SRDO_LINE < GEN_SRDO_LINE_CNT) ? genSrdoConfigValid[GEN_SRDO_LINE] : 0u);
}


/* Whether the signatures of the configuration have been checked. */
void coGenSrdoSetConfigReady(
		GEN_SRDO_LINE_PARA_AND
		UNSIGNED8	value
	)
{
	if (GEN_SRDO_LINE < GEN_SRDO_LINE_CNT) {
		genSrdoConfigReady[GEN_SRDO_LINE] = value;
	}
}


UNSIGNED8 coGenSrdoGetConfigReady(
		GEN_SRDO_LINE_PARA
	)
{
	return((GEN_SRDO_LINE < GEN_SRDO_LINE_CNT) ? genSrdoConfigReady[GEN_SRDO_LINE] : 0u);
}


/* SRDOs are transmitted and received in the state operational only. */
void coGenSrdoSetNmtState(
		GEN_SRDO_LINE_PARA_AND
		CO_NMT_STATE_T	state
	)
{
	if (GEN_SRDO_LINE < GEN_SRDO_LINE_CNT) {
		genSrdoNmtState[GEN_SRDO_LINE] = state;
	}
}


CO_NMT_STATE_T coGenSrdoGetNmtState(
		GEN_SRDO_LINE_PARA
	)
{
	return((GEN_SRDO_LINE < GEN_SRDO_LINE_CNT) ? genSrdoNmtState[GEN_SRDO_LINE] : CO_NMT_STATE_PREOP);
}


/* The SRDO of a line whose time runs out next; NULL when no time runs. */
void coGenSrdoSetTimer(
		GEN_SRDO_LINE_PARA_AND
		CO_SRDO_DATA_T	*pSrdo
	)
{
	if (GEN_SRDO_LINE < GEN_SRDO_LINE_CNT) {
		genSrdoTimer[GEN_SRDO_LINE] = pSrdo;
	}
}


CO_SRDO_DATA_T *coGenSrdoGetTimer(
		GEN_SRDO_LINE_PARA
	)
{
	return((GEN_SRDO_LINE < GEN_SRDO_LINE_CNT) ? genSrdoTimer[GEN_SRDO_LINE] : NULL);
}
