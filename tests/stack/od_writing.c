/* Writes into the object dictionary as a client of the device does, and tells what became of it. */
#include "od_runtime.h"

#include <stdio.h>
#include <string.h>

/* a number that fits into every type and differs between neighbours */
static UNSIGNED8 sample(UNSIGNED8 line, UNSIGNED16 index, UNSIGNED8 sub)
{
    return (UNSIGNED8)((line * 29u + index * 7u + sub * 13u) % 113u + 1u);
}

#ifdef CO_CONFIG_LIMIT_CHECK

static BOOL_T isBelow(TABLE_T table, const void *a, const void *b)
{
    size_t i;
    switch (table) {
#define COMPARE(name, type)                                                                                  \
    case name:                                                                                               \
        return *(const type *)a < *(const type *)b;
        COMPARE(U8, UNSIGNED8)
        COMPARE(U16, UNSIGNED16)
        COMPARE(U32, UNSIGNED32)
        COMPARE(I8, INTEGER8)
        COMPARE(I16, INTEGER16)
        COMPARE(I32, INTEGER32)
        COMPARE(R32, REAL32)
    default:
        for (i = odSize(table); i > 0; i--)
            if (((const UNSIGNED8 *)a)[i - 1] != ((const UNSIGNED8 *)b)[i - 1])
                return ((const UNSIGNED8 *)a)[i - 1] < ((const UNSIGNED8 *)b)[i - 1];
        return CO_FALSE;
    }
}

#endif

static const char *writeNumber(const OD_PLACE_T *place, TABLE_T table, UNSIGNED8 byte)
{
    union {
        UNSIGNED8 bytes[8];
        UNSIGNED32 word;
        REAL32 real;
    } value;
    memset(&value, byte, sizeof(value));
    if (table == R32)
        value.real = (REAL32)byte;
#ifdef CO_CONFIG_LIMIT_CHECK
    if ((place->row->attributes & CO_ATTR_LIMIT) != 0
        && (isBelow(table, &value, odConstant(place, place->row->lowLimitPosition))
            || isBelow(table, odConstant(place, place->row->highLimitPosition), &value)))
        return "limit";
#endif
    memcpy(odVariable(place), &value, odSize(table));
    return "ok";
}

/* A text of half the size. */
static const char *writeText(const OD_PLACE_T *place, TABLE_T table, UNSIGNED8 byte)
{
    const CO_OD_DATA_VARIABLES_T *v = place->od->variables;
    const unsigned at = (unsigned)place->row->value + place->behindRow;
    const UNSIGNED32 *lengths = table == VISIBLE ? v->visStringLen
        : table == UTF8                          ? v->utf8StringLen
                                                 : v->octetStringLen;
    UNSIGNED32 *actual = table == VISIBLE ? v->visStringActLen
        : table == UTF8                   ? v->utf8StringActLen
                                          : v->octetStringActLen;
    actual[at] = lengths[at] / 2;
    memset(odVariable(place), byte, actual[at]);
    return "ok";
}

static const char *writeSample(const OD_PLACE_T *place, UNSIGNED8 byte)
{
    const TABLE_T table = odTable(place->row->dataType);
    if ((place->row->attributes & CO_ATTR_WRITE) == 0)
        return "access";
    if (place->row->specifier == CO_DSPEC_CONST)
        return "const";
    if (place->row->specifier != CO_DSPEC_VAR && place->row->specifier != CO_DSPEC_PTR)
        return "service";
    if (odVariable(place) == NULL)
        return "none";
    return odSize(table) > 0 ? writeNumber(place, table, byte) : writeText(place, table, byte);
}

static void writeSub(const OD_PLACE_T *place, UNSIGNED8 line, UNSIGNED8 sub)
{
    const char *result = writeSample(place, sample(line, place->object->index, sub));
    printf("write %u %04x:%u %s\n", (unsigned)line, (unsigned)place->object->index, (unsigned)sub, result);
}

static void readSub(const OD_PLACE_T *place, UNSIGNED8 line, UNSIGNED8 sub)
{
    const TABLE_T table = odTable(place->row->dataType);
    if (odVariable(place) == NULL)
        return;
    printf("read %u %04x:%u", (unsigned)line, (unsigned)place->object->index, (unsigned)sub);
    if (odSize(table) > 0)
        odPrintNumber(table, odVariable(place));
    else
        odPrintText(place, table);
    printf("\n");
}

void odWriteAll(void)
{
    odForEach(writeSub);
    odForEach(readSub);
}
