/*
 * Stand-in for the diagnostic services of the embedded stack (ISO 14229).
 */
#ifndef UDS_UDS_H
#define UDS_UDS_H 1

#include <core_common.h>
#include <core_isotp.h>

#endif /* UDS_UDS_H */
