// Multi-byte text: 16-bit Unicode strings to and from the early six-byte form of
// UTF-8, through one shared table of sequence rows.
#ifndef LMMBS_H
#define LMMBS_H

#include "lmdefs.h"

class LmString;

// Decodes one sequence of at most n bytes: bytes used, 0 for a null in, -1 on error.
LM_EXPORT int LmMultiByte2WChar(unsigned short* out, char* in, unsigned long long n);
// Decodes n bytes: units decoded (those beyond outLength are counted, not written), -1 on error.
LM_EXPORT int LmMultiByteStr2WCharStr(unsigned short* out, int outLength, char* in, int n);
// Encodes one unit: bytes written, 0 for a null out, -1 when no row takes c.
LM_EXPORT int LmWChar2MultiByte(char* out, wchar_t c);
// Decodes n bytes into out (code set 253): bytes consumed, -1 on a bad sequence,
// -2 when the text is too long for a string.
LM_EXPORT int LmMBS2LmString(const char* in, LmString& out, int n);
LM_EXPORT int LmMultiByteString2LmString(const LmString& in, LmString& out);
LM_EXPORT int LmMultiByteString2LmString(const char* in, LmString& out, int n);
// Bytes needed for the first n characters, -1 on error.
LM_EXPORT int LmMBSLength(const LmString& s, unsigned short n);
// Bytes written, or the negative of a count when out is too short, -1 on error.
LM_EXPORT int LmString2LmMBS(const LmString& s, char* out, int outLength);
// Bytes, -1 on error; allocates out (new[]) when it is null or outLength is not positive.
LM_EXPORT int LmString2MultiByteString(const LmString& s, char*& out, int& outLength);

#endif
