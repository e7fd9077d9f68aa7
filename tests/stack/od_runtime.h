/*
 * A small object dictionary run-time: takes the generated tables, reads and writes any object by index and
 * sub-index, and keeps the calls that start the services of the stack in their order.
 */
#ifndef OD_RUNTIME_H
#define OD_RUNTIME_H 1

/* The definitions of the device come first: they decide what the stack looks like. */
/* clang-format off */
#include <gen_define.h>
#include <co_canopen.h>
/* clang-format on */

/* The line that a service was called for. */
#ifdef CAN_MULTI_LINE
#define LINE canLine
#else
#define LINE 0u
#endif

/* The numeric types that have tables: in the names of macros and in those of variables. */
#define NUMBERS(X)                                                                                           \
    X(U8, u8)                                                                                                \
    X(U16, u16)                                                                                              \
    X(U24, u24) X(U32, u32) X(U40, u40) X(U48, u48) X(U64, u64) X(I8, i8) X(I16, i16) X(I32, i32) X(R32, r32)

/* Where the values of a type stand. */
typedef enum {
    NO_TABLE,
#define NUMBER_TABLE(name, field) name,
    NUMBERS(NUMBER_TABLE) VISIBLE,
    OCTETS,
    UTF8,
    BLOCK
} TABLE_T;

/* What a line was given. */
typedef struct
{
    const CO_OD_ASSIGN_T *assign;
    UNSIGNED16 assignCnt;
    const CO_OBJECT_DESC_T *descriptions;
    UNSIGNED16 descriptionCnt;
    const CO_OD_DATA_VARIABLES_T *variables;
} OD_T;

/* A sub-index as the tables describe it. */
typedef struct
{
    const OD_T *od;
    const CO_OD_ASSIGN_T *object;
    const CO_OBJECT_DESC_T *row;
    UNSIGNED16 behindRow; /* how far behind the sub-index of the row */
} OD_PLACE_T;

/*
 * Whether coOdInitOdPtr gives all variables of the stack their default values, as the stack does when the
 * tables have no initialisers. CO_TRUE unless the application says otherwise before.
 */
extern BOOL_T odSetsDefaults;

TABLE_T odTable(CORE_DATA_TYPE_T type);
/* Bytes of a number; 0 for a table without numbers. */
size_t odSize(TABLE_T table);

/* Whether the line has the sub-index; the row of a compact array stands for all behind it, too. */
BOOL_T odFind(UNSIGNED8 line, UNSIGNED16 index, UNSIGNED8 sub, OD_PLACE_T *place);
/* Calls the function for all sub-indices of all lines, ascending. */
void odForEach(void (*visit)(const OD_PLACE_T *place, UNSIGNED8 line, UNSIGNED8 sub));
/* Where the value stands; NULL where a service of the stack holds it or the type has no table. */
void *odVariable(const OD_PLACE_T *place);
/* An element of the constants of the type; NULL where the type has no table. */
const void *odConstant(const OD_PLACE_T *place, unsigned at);

/* Adds to the calls so far, which are lines: "call LINE SERVICE ARGUMENTS". */
void odRecord(const char *format, ...);
const char *odCalls(void);

/*
 * Prints the calls, then one line for each sub-index of each line:
 *
 *   od LINE INDEX:SUB CODE HIGHEST/ROWS TYPE SPECIFIER REFERENCE ATTRIBUTES DEFAULT VALUE OWNER LOW HIGH
 *
 * INDEX and ATTRIBUTES are hexadecimal. REFERENCE is what the holding service is known by, or the place of a
 * variable of the stack in its table. Numbers are decimal, a REAL32 is "f" and its bits; a text is "t" and
 * its bytes in hexadecimal, behind its sizes if it is the application's. OWNER is LINE.INDEX:SUB of the first
 * sub-index that has the same variable of the stack. What a sub-index has not is "-".
 */
void odPrint(void);
/* " 7", or " -" where there is none; " 9/4/t61.." for the sizes and bytes of a text of the application. */
void odPrintNumber(TABLE_T table, const void *value);
void odPrintText(const OD_PLACE_T *place, TABLE_T table);

/*
 * Writes to every sub-index as a client of the device does, then reads those that have a variable. Prints
 *
 *   write LINE INDEX:SUB RESULT
 *   read LINE INDEX:SUB VALUE
 *
 * RESULT is ok, or why not: access, const, service (that holds the value), none (no variable), limit.
 */
void odWriteAll(void);

#endif /* OD_RUNTIME_H */
