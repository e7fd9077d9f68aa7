/*
 * Stand-in for the object dictionary of the embedded stack: the shapes of od_assign, od_description,
 * od_data_variables and of the mapping tables. A program that includes this has included gen_define.h before.
 */
#ifndef CO_ODACCESS_H
#define CO_ODACCESS_H 1

#include <core_common.h>

/* the services of a stack for several lines are told the line first */
#ifdef CAN_MULTI_LINE
#define CO_LINE_PARA UNSIGNED8 canLine
#define CO_LINE_PARA_AND UNSIGNED8 canLine,
#else
#define CO_LINE_PARA void
#define CO_LINE_PARA_AND
#endif

/* this stack has the wide types and UTF-8 texts, which a smaller one leaves out */
#define CO_EXTENDED_DATA_TYPES 1u
#define CO_UTF8_DATA_TYPE 1u

typedef char *VIS_STRING;
typedef char *UTF8_STRING;
typedef UNSIGNED8 OCTET_STRING;
typedef void *CO_DOMAIN_PTR;

/* every name of a data type that a description may bear */
/* clang-format off */
#define CO_DATA_TYPE_NAMES(X) \
    X(NON_NUMERIC) X(BOOL) X(U8) X(U16) X(U24) X(U32) X(U40) X(U48) X(U56) X(U64) \
    X(I8) X(I16) X(I24) X(I32) X(I40) X(I48) X(I56) X(I64) X(R32) X(R64) \
    X(STRING_NULL) X(STRING_ASTERIKS) X(OCTET_STRING) X(UTF8) X(US) X(TD) X(DOMAIN) \
    X(BIT3) X(BIT4) X(BIT5) X(BIT6) X(U9) X(U10) X(U11) X(U12) X(U13) X(U14) X(U15) X(U18) X(U19) X(U21) X(U29)
/* clang-format on */

typedef enum {
#define CO_DATA_TYPE_ENTRY(name) CORE_DTYPE_##name,
    CO_DATA_TYPE_NAMES(CO_DATA_TYPE_ENTRY) CORE_DTYPE_COUNT
} CORE_DATA_TYPE_T;

/* who holds the value of a sub-index */
/* clang-format off */
#define CO_DSPEC_NAMES(X) \
    X(VAR) X(CONST) X(PTR) X(SYNC) X(EMCY) X(ERRCTRL) X(STORE) X(TIME) X(NMT) X(SDO_SERVER) X(SDO_CLIENT) \
    X(GFC) X(SRDO) X(RPDO) X(RMAP) X(TPDO) X(TMAP) X(SRD) X(NETWORK) X(FLYMA)
/* clang-format on */

typedef enum {
#define CO_DSPEC_ENTRY(name) CO_DSPEC_##name,
    CO_DSPEC_NAMES(CO_DSPEC_ENTRY) CO_DSPEC_COUNT
} CO_DSPEC_T;

typedef enum { CO_ODTYPE_VAR, CO_ODTYPE_ARRAY, CO_ODTYPE_STRUCT, CO_ODTYPE_DOM } CO_ODTYPE_T;

#define CO_ATTR_NUM 0x0001u
#define CO_ATTR_READ 0x0002u
#define CO_ATTR_WRITE 0x0004u
#define CO_ATTR_MAP_TR 0x0008u
#define CO_ATTR_MAP_REC 0x0010u
#define CO_ATTR_DEFVAL 0x0020u
#define CO_ATTR_LIMIT 0x0040u
#define CO_ATTR_STORE 0x0080u
#define CO_ATTR_COMPACT 0x0100u
#define CO_ATTR_DYNOD 0x0200u

typedef struct
{
    UNSIGNED8 subIndex;
    CORE_DATA_TYPE_T dataType;
    CO_DSPEC_T specifier;
    UNSIGNED16 value; /* place in a table of variables or constants, or what the service is known by */
    UNSIGNED16 attributes;
    UNSIGNED16 defaultPosition; /* these are places in the constants of the type */
#ifdef CO_CONFIG_LIMIT_CHECK
    UNSIGNED16 lowLimitPosition;
    UNSIGNED16 highLimitPosition;
#endif
} CO_OBJECT_DESC_T;

typedef struct
{
    UNSIGNED16 index;
    UNSIGNED16 rows;
    UNSIGNED8 highestSub;
    CO_ODTYPE_T objectCode;
    UNSIGNED16 firstRow;
} CO_OD_ASSIGN_T;

typedef struct
{
    const UNSIGNED8 *constU8;
    const UNSIGNED16 *constU16;
    const UNSIGNED32 *constU32;
    const REAL32 *constR32;
    const UNSIGNED24 *constU24;
    const UNSIGNED40 *constU40;
    const UNSIGNED48 *constU48;
    const UNSIGNED64 *constU64;
    UNSIGNED8 *u8;
    UNSIGNED16 *u16;
    UNSIGNED32 *u32;
    REAL32 *r32;
    UNSIGNED24 *u24;
    UNSIGNED40 *u40;
    UNSIGNED48 *u48;
    UNSIGNED64 *u64;
    const INTEGER8 *constI8;
    const INTEGER16 *constI16;
    const INTEGER32 *constI32;
    INTEGER8 *i8;
    INTEGER16 *i16;
    INTEGER32 *i32;
    UNSIGNED8 *const *ptrU8;
    UNSIGNED16 *const *ptrU16;
    UNSIGNED32 *const *ptrU32;
    UNSIGNED24 *const *ptrU24;
    UNSIGNED40 *const *ptrU40;
    UNSIGNED48 *const *ptrU48;
    UNSIGNED64 *const *ptrU64;
    INTEGER8 *const *ptrI8;
    INTEGER16 *const *ptrI16;
    INTEGER32 *const *ptrI32;
    REAL32 *const *ptrR32;
    const VIS_STRING *constVisString;
    const UNSIGNED32 *constVisStringLen;
    VIS_STRING *visString;
    UNSIGNED32 *visStringLen;
    UNSIGNED32 *visStringActLen;
    const UTF8_STRING *constUtf8String;
    const UNSIGNED32 *constUtf8StringLen;
    VIS_STRING *utf8String;
    UNSIGNED32 *utf8StringLen;
    UNSIGNED32 *utf8StringActLen;
    OCTET_STRING **octetString;
    UNSIGNED32 *octetStringLen;
    UNSIGNED32 *octetStringActLen;
    CO_DOMAIN_PTR *domain;
    UNSIGNED32 *domainLen;
    UNSIGNED32 *domainActLen;
} CO_OD_DATA_VARIABLES_T;

void coOdInitOdPtr(CO_LINE_PARA_AND const CO_OD_ASSIGN_T *pAssign, UNSIGNED16 assignCnt,
                   const CO_OBJECT_DESC_T *pDescriptions, UNSIGNED16 descriptionCnt, const void *pReserved,
                   const CO_OD_DATA_VARIABLES_T *pVariables);
RET_T coOdGetDefaultVal_u32(CO_LINE_PARA_AND UNSIGNED16 index, UNSIGNED8 subIndex, UNSIGNED32 *pValue);
RET_T coOdSetCobid(CO_LINE_PARA_AND UNSIGNED16 index, UNSIGNED8 subIndex, UNSIGNED32 cobId);

/* --- mapping tables --- */

/* a project without mapped objects has no table that could be longer */
#ifndef CO_MAX_MAP_ENTRIES
#define CO_MAX_MAP_ENTRIES 1u
#endif

typedef struct
{
    const void *pVariable;
    UNSIGNED8 length;
    CORE_DATA_TYPE_T dataType;
    UNSIGNED32 entry;
} PDO_TR_MAP_ENTRY_T;

typedef struct
{
    UNSIGNED8 count;
    PDO_TR_MAP_ENTRY_T entries[CO_MAX_MAP_ENTRIES];
} PDO_TR_MAP_TABLE_T;

typedef struct
{
    void *pVariable; /* written on reception */
    UNSIGNED8 length;
    CORE_DATA_TYPE_T dataType;
    UNSIGNED32 entry;
#ifdef CO_NETWORK_ROUTING_CNT
    UNSIGNED16 sendingPdo[CAN_LINE_ARRAY_DECL];
#endif
} PDO_REC_MAP_ENTRY_T;

typedef struct
{
    UNSIGNED8 count;
    PDO_REC_MAP_ENTRY_T entries[CO_MAX_MAP_ENTRIES];
} PDO_REC_MAP_TABLE_T;

/* the names of the older stack */
#define CO_DTYPE_NON_NUMERIC CORE_DTYPE_NON_NUMERIC
#define CO_DTYPE_BOOL CORE_DTYPE_BOOL
#define CO_DTYPE_U8 CORE_DTYPE_U8
#define CO_DTYPE_U16 CORE_DTYPE_U16
#define CO_DTYPE_U24 CORE_DTYPE_U24
#define CO_DTYPE_U32 CORE_DTYPE_U32
#define CO_DTYPE_U40 CORE_DTYPE_U40
#define CO_DTYPE_U48 CORE_DTYPE_U48
#define CO_DTYPE_U56 CORE_DTYPE_U56
#define CO_DTYPE_U64 CORE_DTYPE_U64
#define CO_DTYPE_I8 CORE_DTYPE_I8
#define CO_DTYPE_I16 CORE_DTYPE_I16
#define CO_DTYPE_I24 CORE_DTYPE_I24
#define CO_DTYPE_I32 CORE_DTYPE_I32
#define CO_DTYPE_I64 CORE_DTYPE_I64
#define CO_DTYPE_R32 CORE_DTYPE_R32
#define CO_DTYPE_R64 CORE_DTYPE_R64
#define CO_DTYPE_STRING_NULL CORE_DTYPE_STRING_NULL
#define CO_DTYPE_OCTET_STRING CORE_DTYPE_OCTET_STRING
#define CO_DTYPE_UTF8 CORE_DTYPE_UTF8
#define CO_DTYPE_DOMAIN CORE_DTYPE_DOMAIN
#define CO_DTYPE_I40 CORE_DTYPE_I40
#define CO_DTYPE_I48 CORE_DTYPE_I48
#define CO_DTYPE_I56 CORE_DTYPE_I56
#define CO_DTYPE_US CORE_DTYPE_US
#define CO_DTYPE_TD CORE_DTYPE_TD
#define CO_DTYPE_BIT3 CORE_DTYPE_BIT3
#define CO_DTYPE_BIT4 CORE_DTYPE_BIT4
#define CO_DTYPE_BIT5 CORE_DTYPE_BIT5
#define CO_DTYPE_BIT6 CORE_DTYPE_BIT6
#define CO_DTYPE_U9 CORE_DTYPE_U9
#define CO_DTYPE_U10 CORE_DTYPE_U10
#define CO_DTYPE_U11 CORE_DTYPE_U11
#define CO_DTYPE_U12 CORE_DTYPE_U12
#define CO_DTYPE_U13 CORE_DTYPE_U13
#define CO_DTYPE_U14 CORE_DTYPE_U14
#define CO_DTYPE_U15 CORE_DTYPE_U15
#define CO_DTYPE_U18 CORE_DTYPE_U18
#define CO_DTYPE_U19 CORE_DTYPE_U19
#define CO_DTYPE_U21 CORE_DTYPE_U21
#define CO_DTYPE_U29 CORE_DTYPE_U29
#define CO_DTYPE_STRING_ASTERIKS CORE_DTYPE_STRING_ASTERIKS

#endif /* CO_ODACCESS_H */
