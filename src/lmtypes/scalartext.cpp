// Print and scan slots of the plain numbers and the boolean, and the print and scan
// languages of the 64-bit integer.
#include "lmslots.h"
#include "lmstring.h"
#include "lmtext.h"

// Placeholders until the text services are written.
LmString& CharPrintToString(LmString& out, void*, const char*, unsigned) { return out; }
void* CharScanFromString(void* value, LmString&, const char*, unsigned) { return value; }
LmString& ShortPrintToString(LmString& out, void*, const char*, unsigned) { return out; }
void* ShortScanFromString(void* value, LmString&, const char*, unsigned) { return value; }
LmString& LongPrintToString(LmString& out, void*, const char*, unsigned) { return out; }
void* LongScanFromString(void* value, LmString&, const char*, unsigned) { return value; }
LmString& IntPrintToString(LmString& out, void*, const char*, unsigned) { return out; }
void* IntScanFromString(void* value, LmString&, const char*, unsigned) { return value; }
LmString& O_8BPrintToString(LmString& out, void*, const char*, unsigned) { return out; }
void* O_8BScanFromString(void* value, LmString&, const char*, unsigned) { return value; }
LmString& DoublePrintToString(LmString& out, void*, const char*, unsigned) { return out; }
void* DoubleScanFromString(void* value, LmString&, const char*, unsigned) { return value; }
LmString& FloatPrintToString(LmString& out, void*, const char*, unsigned) { return out; }
void* FloatScanFromString(void* value, LmString&, const char*, unsigned) { return value; }
LmString& BooleanPrintToString(LmString& out, void*, const char*, unsigned) { return out; }
void* BooleanScanFromString(void* value, LmString&, const char*, unsigned) { return value; }
