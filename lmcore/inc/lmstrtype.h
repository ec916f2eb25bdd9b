// The exported handlers of the string type (id 11): its disk form and its hash
// functions. The compare functions stand in lmcompare.h with the others.
#ifndef LMSTRTYPE_H
#define LMSTRTYPE_H

#include <cstdint>

#include "lmstring.h"

// The string bits of the store format byte (LM_STRFMT_CODESET_ZERO, _NATIVE,
// _ORDER) stand in lmdefs.h.

// ---- Disk form. A record is the length word L (bytes behind it), code set,
// language, the characters, then 00 FF: L + 2 bytes in all. ----
// Writes `count` strings as records back to back; answers the bytes written.
LM_EXPORT unsigned StringStore(void* dest, const void* src, unsigned char format, unsigned count);
// Reads records (or an old-form array) into `count` strings; answers the bytes read.
LM_EXPORT unsigned StringLoad(void* dest, const void* src, unsigned char format, unsigned count);
// The size of the disk form of `count` strings, from memory or from a disk image.
LM_EXPORT unsigned StringSizeGet(const void* src, unsigned char sourceFormat, unsigned char targetFormat,
                                 unsigned count);

// ---- Hashing. ----
// The collation hash of n order words (-1: the whole text); a null string gives
// 0xFEFE7575, code set 0 hashes the bytes.
LM_EXPORT uint32_t HashString(unsigned char codeSet, unsigned char language, const void* text, int n,
                              unsigned char format);
// h = h * 9 + unit over the text: 16-bit units in code set 253, otherwise signed
// bytes up to the first zero byte.
LM_EXPORT uint32_t HashLmString(const LmString& s);
// The same over unit & 127.
LM_EXPORT uint32_t HashLmString7(const LmString& s);

#endif
