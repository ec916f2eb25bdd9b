// Basic definitions of the type manager: export macro, type ids, store formats,
// status codes and the plain number types.
#ifndef LMDEFS_H
#define LMDEFS_H

#include <cstdint>

#include "lumobase.h"

#define LM_EXPORT __attribute__((visibility("default")))

// ---------------------------------------------------------------------------
// Type ids. A type id is a plain (signed) char. Ids 100 and up are reserved and
// all resolve to LmRES_T, "illegal".
// ---------------------------------------------------------------------------
constexpr char Lm1B_T = 0;
constexpr char Lm2B_T = 1;
constexpr char Lm4B_T = 2;
constexpr char LmDOUBLE_T = 3;
constexpr char LmFLOAT_T = 4;
constexpr char LmU2B_T = 5;
constexpr char LmU4B_T = 6;
constexpr char LmINT_T = 7;
constexpr char LmUNSIGNED_T = 8;
constexpr char LmENUM_T = 9;
constexpr char LmU1B_T = 10;
constexpr char LmSTRING_T = 11;
constexpr char LmDATE_T = 12;
constexpr char LmTIME_T = 13;
constexpr char LmBLOCKID_T = 14;
constexpr char LmOBJID_T = 15;
constexpr char LmCLID_T = 16;
constexpr char LmREF_T = 17;
constexpr char LmBLOB_T = 18;
constexpr char LmDATIME_T = 19;
constexpr char LmISTRING_T = 20;
constexpr char LmCASEISTRING_T = 21;
constexpr char D_DATE_T = 22;
constexpr char D_TIME_T = 23;
constexpr char D_TIMESTAMP_T = 24;
constexpr char D_INTERVAL_T = 25;
constexpr char LmINT64_T = 26;
constexpr char LmBOOLEAN_T = 27;
constexpr char LmNULL_1B_T = 28;
constexpr char LmNULL_U1B_T = 29;
constexpr char LmNULL_2B_T = 30;
constexpr char LmNULL_U2B_T = 31;
constexpr char LmNULL_INT_T = 32;
constexpr char LmNULL_UNSIGNED_T = 33;
constexpr char LmNULL_4B_T = 34;
constexpr char LmNULL_U4B_T = 35;
constexpr char LmNULL_FLOAT_T = 36;
constexpr char LmNULL_DOUBLE_T = 37;
constexpr char LmNULL_LMINT64_T = 38;
constexpr char LmSEAL_T = 39;
constexpr char LmDATIME_N_T = 40;
constexpr char LmTIMESPAN_T = 41;
constexpr char Lm8B_T = 42;
constexpr char LmU8B_T = 43;
constexpr char LmNULL_8B_T = 44;
constexpr char LmNULL_U8B_T = 45;
constexpr char LmRES_T = 46;

// Number of rows of the current table, and of the legacy table (levels below 4).
constexpr int LmTypeCountCurrent = 47;
constexpr int LmTypeCountLegacy = 28;

// ---------------------------------------------------------------------------
// Store format byte. The low nibble names the form; the three high bits are
// string flags. Scalar code looks only at the low nibble.
// ---------------------------------------------------------------------------
constexpr unsigned char LmFormatLittle = 1;  // disk form, least significant byte first
constexpr unsigned char LmFormatBig = 2;     // disk form, most significant byte first
constexpr unsigned char LmFormatMemory = 8;  // the in-memory value
constexpr unsigned char LM_STRFMT_CODESET_ZERO = 0x20;
constexpr unsigned char LM_STRFMT_CODESET_NATIVE = 0x40;
constexpr unsigned char LM_STRFMT_ORDER = 0x80;

// ---------------------------------------------------------------------------
// Status codes of the whole library.
// ---------------------------------------------------------------------------
constexpr int LM_OK = 0;
constexpr int LM_ERR_NO_NEXT_VALUE = 2091;
constexpr int LM_ERR_OUT_OF_DATA = 2101;
constexpr int LM_NOTE_ORDER_FIRST = 2114;
constexpr int LM_NOTE_ORDER_SECOND = 2115;
constexpr int LM_ERR_BAD_ARGUMENT = -2002;
constexpr int LM_ERR_BAD_POSITION = -2005;
constexpr int LM_ERR_NO_TIMEZONE = -2171;
constexpr int LM_ERR_NOT_SUPPORTED = -2999;
static_assert(LM_ERR_NO_TIMEZONE == LMBASE_NO_TIMEZONE, "the zone status is handed on unchanged");

// ---------------------------------------------------------------------------
// The plain number types. Everything called 32 bits is 32 bits on this LP64
// platform too.
// ---------------------------------------------------------------------------
typedef signed char o_char;
typedef unsigned char o_u1b;
typedef int16_t o_2b;
typedef uint16_t o_u2b;
typedef int32_t o_4b;
typedef uint32_t o_u4b;
typedef int64_t o_8b;
typedef uint64_t o_u8b;
typedef float o_float;
typedef double o_double;
typedef uint32_t BlockId;

#endif
