/*
 * Stand-in for the part of the J1939 stack that serves the object dictionary (CiA 510).
 */
#ifndef J1939_CAM11_CAM21_H
#define J1939_CAM11_CAM21_H 1

#include <core_common.h>

#ifdef CAN_MULTI_LINE
RET_T j1939OdInit(UNSIGNED8 canLine);
#else
RET_T j1939OdInit(void);
#endif

#endif /* J1939_CAM11_CAM21_H */
