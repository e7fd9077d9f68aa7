/*
 * Stand-in for the CANopen part of the embedded stack.
 */
#ifndef CO_CANOPEN_H
#define CO_CANOPEN_H 1

#include <core_common.h>

#endif /* CO_CANOPEN_H */
