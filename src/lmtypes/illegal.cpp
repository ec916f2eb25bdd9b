// Row 46, "illegal": one harmless operation per slot. The reserved ids 100 and up
// resolve to this row. The rows of the value types whose handlers are not part of
// the library yet hold the same operations under their own names and lengths.
#include "lmslots.h"

void* IllegalCreate(unsigned) { return nullptr; }
void* IllegalDelete(void*, unsigned) { return nullptr; }
unsigned IllegalStore(void*, const void*, unsigned char, unsigned) { return 0; }
unsigned IllegalNullSizeGet(unsigned) { return 0; }
unsigned IllegalSizeGet(const void*, unsigned char, unsigned char, unsigned) { return 0; }
unsigned IllegalSizeGetFromMemFile(MemFile*, unsigned char, unsigned) { return 0; }
// Leaves status as it was: the caller's variable tells nothing new.
int IllegalCompare(unsigned char, unsigned, void*, unsigned, void*, unsigned short, unsigned, int&) { return 0; }
float IllegalEvalAndBound(LmIdxBounds*, unsigned short&, void*, unsigned char, unsigned, LmIdxBounds*) { return 0.0f; }
unsigned IllegalHash(unsigned char, unsigned, void*, unsigned, int&) { return 0; }
LmTypeConvertData* IllegalConvertTo(void*, unsigned) { return nullptr; }
void* IllegalConvertFrom(LmTypeConvertData*, unsigned) { return nullptr; }
void IllegalConstructor(void*, unsigned, unsigned) {}
void IllegalAssignment(void*, void*, unsigned, int) {}
unsigned IllegalTranslate(void*, unsigned char, unsigned, void*, unsigned char, unsigned, unsigned) { return 0; }
LmString& IllegalPrintToString(LmString& out, void*, const char*, unsigned) { return out; }
void* IllegalScanFromString(void*, LmString&, const char*, unsigned) { return nullptr; }
void* IllegalDefaultValue(unsigned, int) { return nullptr; }

int NeverNullValue(void*) { return 0; }
int RefuseGetValue(void*, unsigned, unsigned char, unsigned char) { return LM_ERR_NOT_SUPPORTED; }

constinit LmTypeDesc LmDesc_illegal = IllegalRow("illegal", "LmRES_T", 0, 1, "illegal");

// Value types whose handlers are still to come.
constinit LmTypeDesc LmDesc_LmDateTime = IllegalRow("LmDateTime", "LmDATIME_T", 8, 1, "%a %e.%b %Y %I:%M:%S %p");
constinit LmTypeDesc LmDesc_d_Date = IllegalRow("d_Date", "D_DATE_T", 4, 1, "%a %b %e");
constinit LmTypeDesc LmDesc_d_Time = IllegalRow("d_Time", "D_TIME_T", 6, 1, "%I:%M:%S %p");
constinit LmTypeDesc LmDesc_d_Timestamp = IllegalRow("d_Timestamp", "D_TIMESTAMP_T", 10, 1, "%a %b %e %I:%M:%S %p");
constinit LmTypeDesc LmDesc_d_Interval =
    IllegalRow("d_Interval", "D_INTERVAL_T", 4, 1, "%e days, %I hours, %M minutes, %S seconds");
constinit LmTypeDesc LmDesc_LmNull_char = IllegalRow("LmNull_char", "LmNULL_1B_T", 2, 1, "%c");
constinit LmTypeDesc LmDesc_LmNull_uchar = IllegalRow("LmNull_uchar", "LmNULL_U1B_T", 2, 1, "%c");
constinit LmTypeDesc LmDesc_LmNull_short = IllegalRow("LmNull_short", "LmNULL_2B_T", 4, 1, "%hd");
constinit LmTypeDesc LmDesc_LmNull_ushort = IllegalRow("LmNull_ushort", "LmNULL_U2B_T", 4, 1, "%hu");
constinit LmTypeDesc LmDesc_LmNull_int = IllegalRow("LmNull_int", "LmNULL_INT_T", 8, 1, "%d");
constinit LmTypeDesc LmDesc_LmNull_unsigned = IllegalRow("LmNull_unsigned", "LmNULL_UNSIGNED_T", 8, 1, "%u");
constinit LmTypeDesc LmDesc_LmNull_long = IllegalRow("LmNull_long", "LmNULL_4B_T", 8, 1, "%ld");
constinit LmTypeDesc LmDesc_LmNull_ulong = IllegalRow("LmNull_ulong", "LmNULL_U4B_T", 8, 1, "%lu");
constinit LmTypeDesc LmDesc_LmNull_float = IllegalRow("LmNull_float", "LmNULL_FLOAT_T", 8, 1, "%.17g");
constinit LmTypeDesc LmDesc_LmNull_double = IllegalRow("LmNull_double", "LmNULL_DOUBLE_T", 16, 1, "%.17g");
constinit LmTypeDesc LmDesc_LmNull_LmInt64 = IllegalRow("LmNull_LmInt64", "LmNULL_LMINT64_T", 12, 1, "%S");
constinit LmTypeDesc LmDesc_LmDateTimeN = IllegalRow("LmDateTimeN", "LmDATIME_N_T", 12, 1, "%X");
constinit LmTypeDesc LmDesc_LmTimeSpan = IllegalRow("LmTimeSpan", "LmTIMESPAN_T", 12, 1, "%V");
constinit LmTypeDesc LmDesc_LmNull_8b = IllegalRow("LmNull_8b", "LmNULL_8B_T", 16, 1, "%I64d");
constinit LmTypeDesc LmDesc_LmNull_u8b = IllegalRow("LmNull_u8b", "LmNULL_U8B_T", 16, 1, "%I64u");
