__GEN_SRDO_VEX_INFORMATION__
/*
 * Safety relevant data objects (EN 50325-5, CiA 304): the data of every SRDO and the functions that move the
 * mapped variables into the two messages of an SRDO and out of them.
 */

#include <stddef.h>
#include <gen_define.h>
#include <co_canopen.h>
#include <co_srdo.h>
__GEN_SRDO_INCLUDES__

/* the bits of a REAL32 are moved by casts between pointers to variables of this file or of the application */
#ifdef __GNUC__
#pragma GCC diagnostic ignored "-Wstrict-aliasing"
#endif /* __GNUC__ */

/* the functions of a stack for several lines are told the line first */
#ifdef CAN_MULTI_LINE
#define GEN_SRDO_LINE_PARA	UNSIGNED8 CAN_LINE
#define GEN_SRDO_LINE_PARA_AND	UNSIGNED8 CAN_LINE,
#define GEN_SRDO_LINE_AND	CAN_LINE,
#define GEN_SRDO_LINE		CAN_LINE
#define GEN_SRDO_IS_LINE(entry)	((entry).canLine == (CAN_LINE))
#else /* CAN_MULTI_LINE */
#define GEN_SRDO_LINE_PARA	void
#define GEN_SRDO_LINE_PARA_AND
#define GEN_SRDO_LINE_AND
#define GEN_SRDO_LINE		0u
#define GEN_SRDO_IS_LINE(entry)	1
#endif /* CAN_MULTI_LINE */

/* --- data of the SRDOs and variables that are mapped into them --- */

__GEN_SRDO_DATA_DEFINITION__

__GEN_SRDO_OD_VARIABLES__

/* --- state of the safety part, one element per line --- */

static UNSIGNED8	genSrdoConfigValid[] = { __GEN_SRDO_INIT_CONFIG_VALID__ };
static UNSIGNED8	genSrdoConfigReady[] = { __GEN_SRDO_INIT_CONFIG_READY__ };
static CO_NMT_STATE_T	genSrdoNmtState[] = { __GEN_SRDO_INIT_NMT_STATE__ };
static CO_SRDO_DATA_T	*genSrdoTimer[] = { __GEN_SRDO_INIT_SRDO_TIMER__ };

/* --- access of the object dictionary to the variables above --- */

__GEN_SRDO_OD_ENTRY__

