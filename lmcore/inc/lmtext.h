// Numbers as text: the cleaning of a number text before strtol, the 16-bit text
// helpers, the special floating values, and the print and scan languages of the
// 64-bit integer and of the three-state boolean, which work on plain values so that
// their classes only wire them.
#ifndef LMTEXT_H
#define LMTEXT_H

#include <cstdint>

#include "lmdefs.h"

class LmString;

// Prepares a number text for strtol: leading white space skipped, characters copied
// while below 256 and while fewer than size - 1 are written, a leading run of zeros
// collapsed to one (a following 'x' or 'X' kept behind it). Terminates and answers dest.
LM_EXPORT char* LmNumberTextClean(const char* source, char* dest, unsigned size);
LM_EXPORT char* LmNumberTextClean(const uint16_t* source, char* dest, unsigned size);
// strtol and its 64-bit twin with base 0 on the cleaned text (at most 31 characters),
// with the range of a 32-bit long.
LM_EXPORT int32_t LmStrToLong(const char* text);
LM_EXPORT int32_t LmStrToLong(const uint16_t* text);
LM_EXPORT long long LmStrToInt64(const char* text);

// 16-bit texts. A null text orders below any text; two null texts are equal. The
// result is the difference of the first differing units.
LM_EXPORT int LmWStrCmp(const uint16_t* a, const uint16_t* b);
LM_EXPORT int LmWStrNCmp(const uint16_t* a, const uint16_t* b, unsigned count);
// Copies with the terminator; answers the pointer behind it.
LM_EXPORT uint16_t* LmWStrCpy(uint16_t* dest, const uint16_t* src);
// Copies at most count units, stopping after a terminator; answers dest.
LM_EXPORT uint16_t* LmWStrNCpy(uint16_t* dest, const uint16_t* src, unsigned count);

// The quiet NaN with the bits 0xFFF8000000000000, and the two infinities.
LM_EXPORT double LmQuietNaN();
LM_EXPORT double LmNegativeInfinity();
LM_EXPORT double LmPositiveInfinity();

// The print language of the 64-bit integer: %S, %d, %i, %o, %x, %X; a null format
// is "%S". Appends to out and answers it.
LM_EXPORT LmString& LmInt64PrintText(LmString& out, long long value, const char* format);
// Its scan language; a failure sets value to -1. Answers value.
LM_EXPORT long long& LmInt64ScanText(long long& value, const LmString& text, const char* format);

// The boolean byte: 0 false, 255 null, anything else true. Print gives "TRUE" for
// the byte 1, the null print string for null, "FALSE" otherwise; replaces out.
LM_EXPORT LmString& LmBooleanPrintText(LmString& out, unsigned char value);
// Scan: the null print string at the start gives null; "T", "t", "TRUE", "true" and
// "1" give true (1); any other text false (0). Answers value.
LM_EXPORT unsigned char& LmBooleanScanText(unsigned char& value, const LmString& text);

#endif
