/*
 * The virtual dictionary of a device: walks the tables of gen_vobjdict.c up to the point where a stack would
 * call the functions of the application.
 */
#ifndef VOD_RUNTIME_H
#define VOD_RUNTIME_H 1

#include "od_runtime.h"

extern CORE_CONST CO_OD_ASSIGN_T vod_assign[CO_VOD_ASSIGN_CNT];
extern CORE_CONST CO_OBJECT_DESC_T vod_description[CO_VOBJ_DESC_CNT];
extern CORE_CONST CO_OD_DATA_VARIABLES_T od_data_variables;

/*
 * Prints one line for each sub-index, in the order of the tables:
 *
 *   vod INDEX:SUB CODE HIGHEST TYPE SPECIFIER PLACE ATTRIBUTES SIZE DEFAULT LOW HIGH
 *
 * INDEX and ATTRIBUTES are hexadecimal. PLACE is the number of the variable among those of its type, SIZE its
 * bytes. Numbers are decimal, a REAL32 is its bits in hexadecimal. What a sub-index has not is "-".
 */
void vodPrint(void);

#endif /* VOD_RUNTIME_H */
