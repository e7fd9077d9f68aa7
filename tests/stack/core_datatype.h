/*
 * Stand-in for the embedded stack's data types, in the shape that generated initialisers imply.
 * The bytes of the wide types stand with the least significant one first.
 */
#ifndef CORE_DATATYPE_H
#define CORE_DATATYPE_H 1

#include <stddef.h>
#include <stdint.h>

typedef uint8_t BOOL_T;
typedef uint8_t UNSIGNED8;
typedef uint16_t UNSIGNED16;
typedef uint32_t UNSIGNED32;
typedef int8_t INTEGER8;
typedef int16_t INTEGER16;
typedef int32_t INTEGER32;
typedef float REAL32;

typedef struct
{
    UNSIGNED8 val[3];
} UNSIGNED24;
typedef struct
{
    UNSIGNED8 val[5];
} UNSIGNED40;
typedef struct
{
    UNSIGNED8 val[6];
} UNSIGNED48;
typedef struct
{
    UNSIGNED8 val[8];
} UNSIGNED64;
typedef struct
{
    UNSIGNED8 val[3];
} INTEGER24;

#define I24_SET(b2, b1, b0)                                                                                  \
    {                                                                                                        \
        {                                                                                                    \
            (b0), (b1), (b2)                                                                                 \
        }                                                                                                    \
    }
#define U24_SET(b2, b1, b0)                                                                                  \
    {                                                                                                        \
        {                                                                                                    \
            (b0), (b1), (b2)                                                                                 \
        }                                                                                                    \
    }
#define U40_SET(b4, b3, b2, b1, b0)                                                                          \
    {                                                                                                        \
        {                                                                                                    \
            (b0), (b1), (b2), (b3), (b4)                                                                     \
        }                                                                                                    \
    }
#define U48_SET(b5, b4, b3, b2, b1, b0)                                                                      \
    {                                                                                                        \
        {                                                                                                    \
            (b0), (b1), (b2), (b3), (b4), (b5)                                                               \
        }                                                                                                    \
    }
#define U64_SET(b7, b6, b5, b4, b3, b2, b1, b0)                                                              \
    {                                                                                                        \
        {                                                                                                    \
            (b0), (b1), (b2), (b3), (b4), (b5), (b6), (b7)                                                   \
        }                                                                                                    \
    }

#define CO_TRUE 1u
#define CO_FALSE 0u

typedef enum {
    RET_OK,
    RET_PARAMETER_INVALID,
    RET_NOT_INITIALIZED,
    RET_SUBIDX_NOT_FOUND,
    RET_IDX_NOT_FOUND,
    RET_MAP_ERROR
} RET_T;

/* the names of the older stack */
#define RET_INVALID_PARAMETER RET_PARAMETER_INVALID
#define RET_SERVICE_NOT_INITIALIZED RET_NOT_INITIALIZED
#define RET_CO_MAP_ERROR RET_MAP_ERROR

#endif /* CORE_DATATYPE_H */
