/*
 * Stand-in for the EnergyBus part of the embedded stack (CiA 454): generated code includes it and calls
 * nothing of it.
 */
#ifndef EB_ENERGYBUS_H
#define EB_ENERGYBUS_H 1

#include <co_canopen.h>

#endif /* EB_ENERGYBUS_H */
