#include "vod_runtime.h"

#include <stdio.h>
#include <string.h>

static const OD_T dictionary = {vod_assign, CO_VOD_ASSIGN_CNT, vod_description, CO_VOBJ_DESC_CNT,
                                &od_data_variables};

/* Bytes of a number; 0 for what is none. */
static unsigned sizeOf(CORE_DATA_TYPE_T type)
{
    switch (type) {
    case CORE_DTYPE_BOOL:
    case CORE_DTYPE_U8:
    case CORE_DTYPE_I8:
        return 1;
    case CORE_DTYPE_U16:
    case CORE_DTYPE_I16:
        return 2;
    case CORE_DTYPE_U24:
    case CORE_DTYPE_I24:
        return 3;
    case CORE_DTYPE_U32:
    case CORE_DTYPE_I32:
    case CORE_DTYPE_R32:
        return 4;
    case CORE_DTYPE_U40:
        return 5;
    case CORE_DTYPE_U48:
        return 6;
    case CORE_DTYPE_U64:
        return 8;
    default:
        return 0;
    }
}

static void printBytes(const UNSIGNED8 *bytes, unsigned size)
{
    unsigned long long value = 0;
    while (size > 0)
        value = value << 8 | bytes[--size];
    printf(" %llu", value);
}

static void printConstant(const OD_PLACE_T *place, unsigned at)
{
    const void *const value = odConstant(place, at);
    UNSIGNED32 bits;
    switch (value == NULL ? CORE_DTYPE_NON_NUMERIC : place->row->dataType) {
    case CORE_DTYPE_NON_NUMERIC:
    case CORE_DTYPE_I24:
        printf(" -");
        break;
    case CORE_DTYPE_U16:
        printf(" %u", (unsigned)*(const UNSIGNED16 *)value);
        break;
    case CORE_DTYPE_U32:
        printf(" %lu", (unsigned long)*(const UNSIGNED32 *)value);
        break;
    case CORE_DTYPE_I8:
        printf(" %d", *(const INTEGER8 *)value);
        break;
    case CORE_DTYPE_I16:
        printf(" %d", *(const INTEGER16 *)value);
        break;
    case CORE_DTYPE_I32:
        printf(" %ld", (long)*(const INTEGER32 *)value);
        break;
    case CORE_DTYPE_R32:
        memcpy(&bits, value, sizeof(bits));
        printf(" %08lx", (unsigned long)bits);
        break;
    default:
        printBytes(value, sizeOf(place->row->dataType));
        break;
    }
}

static void printLimits(const OD_PLACE_T *place)
{
#ifdef CO_CONFIG_LIMIT_CHECK
    if ((place->row->attributes & CO_ATTR_LIMIT) != 0 && (place->row->attributes & CO_ATTR_WRITE) != 0) {
        printConstant(place, place->row->lowLimitPosition);
        printConstant(place, place->row->highLimitPosition);
        return;
    }
#endif
    (void)place;
    printf(" - -");
}

static void printSub(const OD_PLACE_T *place, unsigned sub)
{
#define NAME(name) #name,
    static const char *const types[] = {CO_DATA_TYPE_NAMES(NAME) ""};
    static const char *const specifiers[] = {CO_DSPEC_NAMES(NAME) ""};
    static const char *const codes[] = {"VAR", "ARRAY", "STRUCT", "DOM"};
    const CO_OBJECT_DESC_T *row = place->row;
    const unsigned size = sizeOf(row->dataType);
    printf("vod %04x:%u %s %u %s %s", (unsigned)place->object->index, sub, codes[place->object->objectCode],
           (unsigned)place->object->highestSub, types[row->dataType], specifiers[row->specifier]);
    if (size == 0)
        printf(" - %03x -", (unsigned)row->attributes);
    else
        printf(" %u %03x %u", (unsigned)row->value + place->behindRow, (unsigned)row->attributes, size);
    printConstant(place, row->defaultPosition);
    printLimits(place);
    printf("\n");
}

/* The row of a sub-index of an object; that of a compact array stands for all behind it, too. */
static BOOL_T findSub(const CO_OD_ASSIGN_T *object, unsigned sub, OD_PLACE_T *place)
{
    unsigned k;
    for (k = 0; k < object->rows; k++) {
        const CO_OBJECT_DESC_T *row = &vod_description[object->firstRow + k];
        if (row->subIndex == sub || ((row->attributes & CO_ATTR_COMPACT) != 0 && row->subIndex < sub)) {
            place->od = &dictionary;
            place->object = object;
            place->row = row;
            place->behindRow = (UNSIGNED16)(sub - row->subIndex);
            return CO_TRUE;
        }
    }
    return CO_FALSE;
}

void vodPrint(void)
{
    OD_PLACE_T place;
    unsigned i, sub;
    for (i = 0; i < CO_VOD_ASSIGN_CNT; i++)
        for (sub = 0; sub <= vod_assign[i].highestSub; sub++)
            if (findSub(&vod_assign[i], sub, &place))
                printSub(&place, sub);
}
