// Internal: the slot functions of the string type (id 11) that are not exported.
// The disk-form handlers live in stringdisk.cpp, the others in stringtype.cpp.
#ifndef LMSTRSLOTS_H
#define LMSTRSLOTS_H

#include <cstddef>
#include <vector>

#include "lmcompare.h"
#include "lmstrtype.h"
#include "lmtypedesc.h"

// A 16-bit word of a disk image: only the low nibble 2 is most significant byte
// first. Length words of records are read this way everywhere.
inline uint16_t ReadWord(const unsigned char* p, unsigned char format) {
    return (format & 15u) == LmFormatBig ? static_cast<uint16_t>(p[0] << 8 | p[1])
                                         : static_cast<uint16_t>(p[0] | p[1] << 8);
}

// ---- Disk form (stringdisk.cpp). ----
unsigned StringNullSizeGet(unsigned count);
unsigned StringSizeGetFromMemFile(MemFile* file, unsigned char format, unsigned count);
unsigned StringTranslate(void* dest, unsigned char targetFormat, unsigned targetLength, void* src,
                         unsigned char sourceFormat, unsigned sourceLength, unsigned count);
unsigned StringStoreLegacy(void* dest, const void* src, unsigned char format, unsigned count);
unsigned StringSizeGetLegacy(const void* src, unsigned char sourceFormat, unsigned char targetFormat, unsigned count);
unsigned StringSizeGetFromMemFileLegacy(MemFile* file, unsigned char format, unsigned count);
unsigned StringTranslateLegacy(void* dest, unsigned char targetFormat, unsigned targetLength, void* src,
                               unsigned char sourceFormat, unsigned sourceLength, unsigned count);

// ---- Comparison, hash, print, scan, key step (stringtype.cpp). ----
int StringCompareCore(unsigned char format, unsigned length1, void* value1, unsigned length2, void* value2,
                      unsigned short option, unsigned count, int& status, int legacy);
unsigned StringHashCore(unsigned char format, unsigned length, void* value, unsigned count, int& status, int legacy);
unsigned StringHash(unsigned char format, unsigned length, void* value, unsigned count, int& status);
unsigned StringHashLegacy(unsigned char format, unsigned length, void* value, unsigned count, int& status);
LmString& StringPrintToString(LmString& target, void* value, const char* format, unsigned count);
void* StringScanFromString(void* target, LmString& text, const char* format, unsigned count);
int StringNextKey(void* key, unsigned bufferLength, unsigned char format, unsigned char mode);
// A text formatted into a buffer of `size` bytes (cut there). A format that is not
// one of a single text ("%s" with flags, width, precision) is taken as "%s".
std::vector<char> FormatText(const char* format, const char* text, size_t size);

#endif
