/*
 * Stand-in for the transport protocol of the embedded stack (ISO 15765-2). A program that includes this has
 * included gen_define.h before.
 */
#ifndef CORE_ISOTP_H
#define CORE_ISOTP_H 1

#include <core_datatype.h>

#ifdef CAN_MULTI_LINE
RET_T isoTpInit(UNSIGNED8 canLine);
#else
RET_T isoTpInit(void);
#endif

#endif /* CORE_ISOTP_H */
