// Conversions of values to and from arrays of strings, the wrapper that carries
// them, the manager's conversion members, and the default values built on them.
#include "lmconvert.h"
#include "lmslots.h"
#include "lmstring.h"
#include "lmtypemgr.h"

// Placeholders until the conversions are written.
LmTypeConvertData* CharConvertToLmString(void*, unsigned) { return nullptr; }
void* CharConvertFromLmString(LmTypeConvertData*, unsigned) { return nullptr; }
LmTypeConvertData* ShortConvertToLmString(void*, unsigned) { return nullptr; }
void* ShortConvertFromLmString(LmTypeConvertData*, unsigned) { return nullptr; }
LmTypeConvertData* WordConvertToLmString(void*, unsigned) { return nullptr; }
void* WordConvertFromLmString(LmTypeConvertData*, unsigned) { return nullptr; }
LmTypeConvertData* O_U1BConvertToLmString(void*, unsigned) { return nullptr; }
void* O_U1BConvertFromLmString(LmTypeConvertData*, unsigned) { return nullptr; }
LmTypeConvertData* IntConvertToLmString(void*, unsigned) { return nullptr; }
void* IntConvertFromLmString(LmTypeConvertData*, unsigned) { return nullptr; }
LmTypeConvertData* DwordConvertToLmString(void*, unsigned) { return nullptr; }
void* DwordConvertFromLmString(LmTypeConvertData*, unsigned) { return nullptr; }
LmTypeConvertData* DoubleConvertToLmString(void*, unsigned) { return nullptr; }
void* DoubleConvertFromLmString(LmTypeConvertData*, unsigned) { return nullptr; }
LmTypeConvertData* FloatConvertToLmString(void*, unsigned) { return nullptr; }
void* FloatConvertFromLmString(LmTypeConvertData*, unsigned) { return nullptr; }
LmTypeConvertData* O_8BConvertToLmString(void*, unsigned) { return nullptr; }
void* O_8BConvertFromLmString(LmTypeConvertData*, unsigned) { return nullptr; }
LmTypeConvertData* O_U8BConvertToLmString(void*, unsigned) { return nullptr; }
void* O_U8BConvertFromLmString(LmTypeConvertData*, unsigned) { return nullptr; }
LmTypeConvertData* StringConvertToLmString(void*, unsigned) { return nullptr; }
void* StringConvertFromLmString(LmTypeConvertData*, unsigned) { return nullptr; }
void* DefaultFromText(LmTypeConvertFromFunc, unsigned) { return nullptr; }
void* StringDefaultValue(unsigned, int) { return nullptr; }
