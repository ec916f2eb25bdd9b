// Row 46, "illegal": one harmless operation per slot. The reserved ids 100 and up
// resolve to this row. Rows whose type gives a slot no answer of its own (a value
// without a null, an order without key stepping) point at these operations too.
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

