// The descriptor record of a type, the slot shapes and the two descriptor tables.
#ifndef LMTYPEDESC_H
#define LMTYPEDESC_H

#include "lmdefs.h"

class LmString;
class LmTypeMgr;
struct LmTypeConvertData;
struct LmEvalData;

// The pair of keys of an index range, and the bounds an evaluation produces.
struct LmIdxBounds {
    void* lower;          // lowest key in disk form, or null for none
    void* upper;          // highest key in disk form, or null for none
    uint8_t lowerLen;     // byte length of the key behind lower
    uint8_t upperLen;     // byte length of the key behind upper
    uint16_t lowerFlags;  // caller's flag word of the lower key
    uint16_t upperFlags;  // caller's flag word of the upper key
    uint8_t keyCapacity;  // least size of a key buffer of this index
};

// The comparison word of EvalAndBound, in and out. The common operators arrive as
// EQ (=), LT (<), GT (>), 3 (<=), 5 (>=), 6 (not equal) and 7 (everything).
constexpr uint16_t LM_BOUND_EQ = 0x0001;       // in: keys equal to the value qualify
constexpr uint16_t LM_BOUND_LT = 0x0002;       // in: keys below the value qualify
constexpr uint16_t LM_BOUND_GT = 0x0004;       // in: keys above the value qualify
constexpr uint16_t LM_BOUND_INEXACT = 0x0008;  // out: the bounds are a superset; filter what lies between
// Bit 0x0010 (LM_CMP_NO_WILDCARD) takes the value literally; the other compare
// options of strings (0x0020, 0x0040, 0x0080, 0x0200, 0x1000) are read by the string
// evaluators; bit 0x8000 is kept as it came in.

// The one comparison shape: -1, 0 or 1 (some memory forms answer a signed
// difference); status is set to 0 on entry and to LM_ERR_OUT_OF_DATA when an
// operand ends while elements remain.
typedef int (*LmTypeCmpFunc)(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2,
                             unsigned short option, unsigned count, int& status);

typedef void* (*LmTypeCreateFunc)(unsigned count);
typedef void* (*LmTypeDeleteFunc)(void* value, unsigned count);
typedef unsigned (*LmTypeStoreFunc)(void* dest, const void* src, unsigned char format, unsigned count);
typedef unsigned (*LmTypeLoadFunc)(void* dest, const void* src, unsigned char format, unsigned count);
typedef unsigned (*LmTypeNullSizeGetFunc)(unsigned count);
typedef unsigned (*LmTypeSizeGetFunc)(const void* value, unsigned char valueForm, unsigned char format, unsigned count);
typedef unsigned (*LmTypeSizeGetFromMemFileFunc)(MemFile* file, unsigned char format, unsigned count);
typedef float (*LmTypeEvalAndBoundFunc)(LmIdxBounds* bounds, unsigned short& flags, void* value, unsigned char format,
                                        unsigned count, LmIdxBounds* limits);
typedef unsigned (*LmTypeHashFunc)(unsigned char format, unsigned len, void* value, unsigned count, int& status);
typedef LmTypeConvertData* (*LmTypeConvertToFunc)(void* value, unsigned count);
typedef void* (*LmTypeConvertFromFunc)(LmTypeConvertData* data, unsigned count);
typedef void (*LmTypeConstructorFunc)(void* array, unsigned count, unsigned unused);
typedef void (*LmTypeDestructorFunc)(void* array, unsigned count, unsigned unused);
typedef void (*LmTypeAssignmentFunc)(void* dest, void* src, unsigned count, int broadcast);
typedef void (*LmTypeCopyFunc)(void* dest, void* src, unsigned count, int broadcast);
typedef unsigned (*LmTypeTranslateFunc)(void* dest, unsigned char destFormat, unsigned destLen, void* src,
                                        unsigned char srcFormat, unsigned srcLen, unsigned count);
typedef int (*LmTypeIsNullFunc)(void* value);
typedef int (*LmTypeSetNullFunc)(void* value);
typedef LmString& (*LmTypePrintFunc)(LmString& out, void* value, const char* format, unsigned count);
typedef void* (*LmTypeScanFunc)(void* value, LmString& text, const char* format, unsigned count);
typedef void* (*LmTypeDefaultValueFunc)(unsigned count, int asNull);
typedef int (*LmTypeGetValueFunc)(void* value, unsigned len, unsigned char format, unsigned char mode);

// One record per type. Records are static data of the library, shared by every
// manager, and writable through the Exchange members of LmTypeMgr.
struct LmTypeDesc {
    const char* name;
    const char* idName;
    LmTypeCreateFunc Create;
    LmTypeDeleteFunc Delete;
    LmTypeStoreFunc Store;
    LmTypeLoadFunc Load;
    LmTypeNullSizeGetFunc NullSizeGet;
    LmTypeSizeGetFunc SizeGet;
    LmTypeSizeGetFromMemFileFunc SizeGetFromMemFile;
    LmTypeCmpFunc Cmp;
    LmTypeEvalAndBoundFunc EvalAndBound;
    LmTypeHashFunc Hash;
    LmTypeConvertToFunc ConvertTo;
    LmTypeConvertFromFunc ConvertFrom;
    LmTypeConstructorFunc Constructor;
    LmTypeDestructorFunc Destructor;
    LmTypeAssignmentFunc Assignment;
    LmTypeCopyFunc Copy;
    LmTypeTranslateFunc Translate;
    LmTypeIsNullFunc IsNullValue;
    LmTypeSetNullFunc SetNullValue;  // may be empty
    const char* exchangeFormat;
    LmTypePrintFunc PrintToString;
    LmTypeScanFunc ScanFromString;
    uint16_t memLen;
    uint16_t fixed;
    LmTypeDefaultValueFunc DefaultValue;
    LmTypeGetValueFunc GetValue;
    void* reserved;  // always null
};

// The table of factory levels 4 and up (47 rows) and of levels below 4 (28 rows,
// sharing every record but that of id 11).
extern LM_EXPORT LmTypeDesc* LmTypeTableCurrent[LmTypeCountCurrent];
extern LM_EXPORT LmTypeDesc* LmTypeTableLegacy[LmTypeCountLegacy];

#endif
