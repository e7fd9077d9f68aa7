#include "od_runtime.h"

#include <stdio.h>
#include <string.h>

#define LINES 32u
#define MAX_OWNERS 20000u

/* a variable of the stack and the first sub-index that was seen with it */
typedef struct
{
    const void *variable;
    UNSIGNED8 line;
    UNSIGNED16 index;
    UNSIGNED8 sub;
} OWNER_T;

BOOL_T odSetsDefaults = CO_TRUE;

static OD_T ods[LINES];
static OWNER_T owners[MAX_OWNERS];
static unsigned ownerCnt;

/* --- the typed tables --- */

TABLE_T odTable(CORE_DATA_TYPE_T type)
{
    switch (type) {
#define TYPE_OF_TABLE(name, field)                                                                           \
    case CORE_DTYPE_##name:                                                                                  \
        return name;
        NUMBERS(TYPE_OF_TABLE)
    case CORE_DTYPE_BOOL:
        return U8;
    case CORE_DTYPE_STRING_NULL:
        return VISIBLE;
    case CORE_DTYPE_OCTET_STRING:
        return OCTETS;
    case CORE_DTYPE_UTF8:
        return UTF8;
    case CORE_DTYPE_DOMAIN:
        return BLOCK;
    default:
        return NO_TABLE;
    }
}

size_t odSize(TABLE_T table)
{
    const CO_OD_DATA_VARIABLES_T *v = NULL;
    switch (table) {
#define SIZE_OF_ELEMENT(name, field)                                                                         \
    case name:                                                                                               \
        return sizeof(*v->field);
        NUMBERS(SIZE_OF_ELEMENT)
    default:
        (void)v;
        return 0;
    }
}

const void *odConstant(const OD_PLACE_T *place, unsigned at)
{
    const CO_OD_DATA_VARIABLES_T *v = place->od->variables;
    switch (odTable(place->row->dataType)) {
#define CONSTANT(name, field)                                                                                \
    case name:                                                                                               \
        return v->const##name != NULL ? &v->const##name[at] : NULL;
        NUMBERS(CONSTANT)
    default:
        return NULL;
    }
}

static void *managed(const OD_T *od, TABLE_T table, unsigned at)
{
    const CO_OD_DATA_VARIABLES_T *v = od->variables;
    switch (table) {
#define MANAGED(name, field)                                                                                 \
    case name:                                                                                               \
        return v->field != NULL ? &v->field[at] : NULL;
        NUMBERS(MANAGED)
    default:
        return NULL;
    }
}

static void *application(const OD_T *od, TABLE_T table, unsigned at)
{
    const CO_OD_DATA_VARIABLES_T *v = od->variables;
    switch (table) {
#define APPLICATION(name, field)                                                                             \
    case name:                                                                                               \
        return v->ptr##name != NULL ? v->ptr##name[at] : NULL;
        NUMBERS(APPLICATION)
    case VISIBLE:
        return v->visString != NULL ? v->visString[at] : NULL;
    case UTF8:
        return v->utf8String != NULL ? v->utf8String[at] : NULL;
    case OCTETS:
        return v->octetString != NULL ? v->octetString[at] : NULL;
    default:
        return NULL;
    }
}

/* --- finding --- */

/* The row of a sub-index; that of a compact array stands for all behind it, too. */
BOOL_T odFind(UNSIGNED8 line, UNSIGNED16 index, UNSIGNED8 sub, OD_PLACE_T *place)
{
    const OD_T *od = &ods[line];
    const CO_OBJECT_DESC_T *row;
    unsigned i, k;
    for (i = 0; i < od->assignCnt; i++) {
        if (od->assign[i].index != index)
            continue;
        for (k = 0; k < od->assign[i].rows; k++) {
            row = &od->descriptions[od->assign[i].firstRow + k];
            if (od->assign[i].firstRow + k >= od->descriptionCnt)
                return CO_FALSE;
            if (row->subIndex == sub
                || ((row->attributes & CO_ATTR_COMPACT) != 0 && row->subIndex < sub
                    && sub <= od->assign[i].highestSub)) {
                place->od = od;
                place->object = &od->assign[i];
                place->row = row;
                place->behindRow = (UNSIGNED16)(sub - row->subIndex);
                return CO_TRUE;
            }
        }
    }
    return CO_FALSE;
}

void odForEach(void (*visit)(const OD_PLACE_T *place, UNSIGNED8 line, UNSIGNED8 sub))
{
    OD_PLACE_T place;
    UNSIGNED8 line;
    unsigned i, sub;
    for (line = 0; line < LINES; line++)
        for (i = 0; i < ods[line].assignCnt; i++)
            for (sub = 0; sub <= ods[line].assign[i].highestSub; sub++)
                if (odFind(line, ods[line].assign[i].index, (UNSIGNED8)sub, &place))
                    visit(&place, line, (UNSIGNED8)sub);
}

/* Where the value stands; NULL where a service of the stack holds it or the type has no table. */
void *odVariable(const OD_PLACE_T *place)
{
    const TABLE_T table = odTable(place->row->dataType);
    const unsigned at = (unsigned)place->row->value + place->behindRow;
    if (place->row->specifier == CO_DSPEC_VAR)
        return managed(place->od, table, at);
    if (place->row->specifier == CO_DSPEC_PTR)
        return application(place->od, table, at);
    return NULL;
}

static const void *defaultValue(const OD_PLACE_T *place)
{
    return odConstant(place, place->row->defaultPosition);
}

void coOdInitOdPtr(CO_LINE_PARA_AND const CO_OD_ASSIGN_T *pAssign, UNSIGNED16 assignCnt,
                   const CO_OBJECT_DESC_T *pDescriptions, UNSIGNED16 descriptionCnt, const void *pReserved,
                   const CO_OD_DATA_VARIABLES_T *pVariables)
{
    OD_T *od = &ods[LINE];
    OD_PLACE_T place;
    unsigned i, sub;
    const OD_T tables = {pAssign, assignCnt, pDescriptions, descriptionCnt, pVariables};
    *od = tables;
    odRecord("call %u coOdInitOdPtr%s\n", (unsigned)LINE, pReserved == NULL ? "" : " reserved");
    for (i = 0; odSetsDefaults && i < assignCnt; i++)
        for (sub = 0; sub <= pAssign[i].highestSub; sub++)
            if (odFind(LINE, pAssign[i].index, (UNSIGNED8)sub, &place) && place.row->specifier == CO_DSPEC_VAR
                && odVariable(&place) != NULL && defaultValue(&place) != NULL)
                memcpy(odVariable(&place), defaultValue(&place), odSize(odTable(place.row->dataType)));
}

/* --- printing --- */

static void printBytes(char kind, const void *bytes, unsigned size)
{
    unsigned i;
    printf("%c", kind);
    for (i = 0; i < size; i++)
        printf("%02x", (unsigned)((const UNSIGNED8 *)bytes)[i]);
}

static void printWide(const UNSIGNED8 *bytes, size_t size)
{
    unsigned long long value = 0;
    while (size > 0)
        value = value << 8 | bytes[--size];
    printf("%llu", value);
}

void odPrintNumber(TABLE_T table, const void *value)
{
    UNSIGNED32 bits;
    printf(" ");
    switch (value == NULL ? NO_TABLE : table) {
    case U8:
        printf("%u", (unsigned)*(const UNSIGNED8 *)value);
        break;
    case U16:
        printf("%u", (unsigned)*(const UNSIGNED16 *)value);
        break;
    case U32:
        printf("%lu", (unsigned long)*(const UNSIGNED32 *)value);
        break;
    case I8:
        printf("%d", *(const INTEGER8 *)value);
        break;
    case I16:
        printf("%d", *(const INTEGER16 *)value);
        break;
    case I32:
        printf("%ld", (long)*(const INTEGER32 *)value);
        break;
    case R32:
        memcpy(&bits, value, sizeof(bits));
        printf("f%08lx", (unsigned long)bits);
        break;
    case U24:
    case U40:
    case U48:
    case U64:
        printWide(value, odSize(table));
        break;
    default:
        printf("-");
        break;
    }
}

static void printConstantText(const OD_PLACE_T *place)
{
    const CO_OD_DATA_VARIABLES_T *v = place->od->variables;
    const unsigned at = place->row->value;
    printf(" ");
    if (place->row->dataType == CORE_DTYPE_UTF8)
        printBytes('t', v->constUtf8String[at], v->constUtf8StringLen[at]);
    else
        printBytes('t', v->constVisString[at], v->constVisStringLen[at]);
}

void odPrintText(const OD_PLACE_T *place, TABLE_T table)
{
    const CO_OD_DATA_VARIABLES_T *v = place->od->variables;
    const unsigned at = (unsigned)place->row->value + place->behindRow;
    if (table == BLOCK)
        printf(" %lu/%lu/%s", (unsigned long)v->domainLen[at], (unsigned long)v->domainActLen[at],
               v->domain[at] == NULL ? "o" : "?");
    else {
        const UNSIGNED32 *lengths = table == VISIBLE ? v->visStringLen
            : table == UTF8                          ? v->utf8StringLen
                                                     : v->octetStringLen;
        const UNSIGNED32 *actual = table == VISIBLE ? v->visStringActLen
            : table == UTF8                         ? v->utf8StringActLen
                                                    : v->octetStringActLen;
        printf(" %lu/%lu/", (unsigned long)lengths[at], (unsigned long)actual[at]);
        printBytes('t', odVariable(place), lengths[at]);
    }
}

static void printValue(const OD_PLACE_T *place)
{
    const TABLE_T table = odTable(place->row->dataType);
    const BOOL_T isText = table == VISIBLE || table == OCTETS || table == UTF8;
    if (place->row->specifier == CO_DSPEC_CONST && isText)
        printConstantText(place);
    else if (place->row->specifier == CO_DSPEC_CONST)
        odPrintNumber(table, odConstant(place, place->row->value));
    else if (place->row->specifier == CO_DSPEC_PTR && (isText || table == BLOCK))
        odPrintText(place, table);
    else
        odPrintNumber(table, odVariable(place));
}

static void printOwner(const OD_PLACE_T *place, UNSIGNED8 line, UNSIGNED8 sub)
{
    const void *const mine = place->row->specifier == CO_DSPEC_VAR ? odVariable(place) : NULL;
    unsigned i;
    if (mine == NULL) {
        printf(" -");
        return;
    }
    for (i = 0; i < ownerCnt && owners[i].variable != mine; i++)
        ;
    if (i == ownerCnt && ownerCnt < MAX_OWNERS) {
        const OWNER_T owner = {mine, line, place->object->index, sub};
        owners[ownerCnt++] = owner;
    }
    printf(" %u.%04x:%u", (unsigned)owners[i].line, (unsigned)owners[i].index, (unsigned)owners[i].sub);
}

static void printLimits(const OD_PLACE_T *place)
{
#ifdef CO_CONFIG_LIMIT_CHECK
    const TABLE_T table = odTable(place->row->dataType);
    if ((place->row->attributes & CO_ATTR_LIMIT) != 0 && (place->row->attributes & CO_ATTR_WRITE) != 0) {
        odPrintNumber(table, odConstant(place, place->row->lowLimitPosition));
        odPrintNumber(table, odConstant(place, place->row->highLimitPosition));
        return;
    }
    if (place->row->lowLimitPosition != 0 || place->row->highLimitPosition != 0) {
        printf(" stray limits");
        return;
    }
#endif
    (void)place;
    printf(" - -");
}

/* A type without numbers has no default among them; a constant text stands where its default does. */
static void printDefault(const OD_PLACE_T *place)
{
    const CO_OBJECT_DESC_T *row = place->row;
    const TABLE_T table = odTable(row->dataType);
    const UNSIGNED16 expected = row->specifier == CO_DSPEC_CONST ? row->value : 0;
    if (odSize(table) == 0 && row->dataType != CORE_DTYPE_I24 && row->defaultPosition != expected)
        printf(" stray default");
    else
        odPrintNumber(table, defaultValue(place));
}

static void printSub(const OD_PLACE_T *place, UNSIGNED8 line, UNSIGNED8 sub)
{
#define NAME(name) #name,
    static const char *const types[] = {CO_DATA_TYPE_NAMES(NAME) ""};
    static const char *const specifiers[] = {CO_DSPEC_NAMES(NAME) ""};
    static const char *const codes[] = {"VAR", "ARRAY", "STRUCT", "DOM"};
    const CO_OBJECT_DESC_T *row = place->row;
    printf("od %u %04x:%u %s %u/%u %s %s", (unsigned)line, (unsigned)place->object->index, (unsigned)sub,
           codes[place->object->objectCode], (unsigned)place->object->highestSub,
           (unsigned)place->object->rows, types[row->dataType], specifiers[row->specifier]);
    if (row->specifier == CO_DSPEC_CONST || row->specifier == CO_DSPEC_PTR)
        printf(" -");
    else if (row->specifier == CO_DSPEC_VAR && (odVariable(place) != NULL || row->dataType == CORE_DTYPE_I24))
        printf(" %u", (unsigned)row->value + place->behindRow);
    else
        printf(" %u", (unsigned)row->value);
    printf(" %03x", (unsigned)row->attributes);
    printDefault(place);
    printValue(place);
    printOwner(place, line, sub);
    printLimits(place);
    printf("\n");
}

void odPrint(void)
{
    fputs(odCalls(), stdout);
    odForEach(printSub);
}
