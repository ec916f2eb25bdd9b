// Internal: small helpers that the date and time classes share.
#ifndef DTCOMMON_H
#define DTCOMMON_H

#include <cstdint>

#include "lmdtformat.h"

namespace lmdatetime {

// The low 32 bits of a wider result, as a signed number: the wrapping arithmetic of a
// 32-bit machine, without undefined behaviour.
constexpr int32_t Wrap(int64_t v) noexcept { return static_cast<int32_t>(v); }

// The first non-zero difference of three fields, this minus other. With wildcards a
// field that is -1 in either value is skipped, and the next one decides.
inline int CompareFields(int a0, int a1, int a2, int b0, int b1, int b2, bool wildcards) noexcept {
    if (!(wildcards && (a0 == -1 || b0 == -1)) && a0 != b0) return a0 - b0;
    if (!(wildcards && (a1 == -1 || b1 == -1)) && a1 != b1) return a1 - b1;
    if (!(wildcards && (a2 == -1 || b2 == -1)) && a2 != b2) return a2 - b2;
    return 0;
}

// The seven fields of two nanosecond records as LmDateTime::Compare has them (a field
// difference; wildcards on both sides unless options has 0x10), then the nanoseconds
// as -1, 0 or 1, where a -1 on either side is a wildcard too.
inline int CompareNanoRecords(const LmDateTimeNRecord& a, const LmDateTimeNRecord& b, unsigned short options) noexcept {
    const bool wildcards = (options & 0x10u) == 0;  // LM_CMP_NO_WILDCARD
    int r = CompareFields(a.year, a.month, a.day, b.year, b.month, b.day, wildcards);
    if (r != 0) return r;
    r = CompareFields(a.hour, a.minute, a.second, b.hour, b.minute, b.second, wildcards);
    if (r != 0) return r;
    if (wildcards && (a.nanoseconds == -1 || b.nanoseconds == -1)) return 0;
    return a.nanoseconds < b.nanoseconds ? -1 : (a.nanoseconds > b.nanoseconds ? 1 : 0);
}

// ---- The seven-byte disk prefix that LmDateTime, LmDateTimeN and LmTimeSpan share:
// year (16 bits, high byte first only for store nibble 2), month, day, hour, minute,
// second. ----

inline bool HighFirst(unsigned char format) noexcept { return (format & 15u) == 2u; }

inline int16_t DiskYear(const unsigned char* p, bool highFirst) noexcept {
    const unsigned hi = highFirst ? p[0] : p[1];
    const unsigned lo = highFirst ? p[1] : p[0];
    return static_cast<int16_t>(hi << 8 | lo);
}

inline void PutDiskYear(unsigned char* p, int16_t year, bool highFirst) noexcept {
    const auto y = static_cast<uint16_t>(year);
    p[highFirst ? 0 : 1] = static_cast<unsigned char>(y >> 8);
    p[highFirst ? 1 : 0] = static_cast<unsigned char>(y);
}

// -1, 0 or 1 for two stored prefixes. With wildcards a year of -1 or a byte of FF in
// the second value matches anything; the same bytes in the first value are numbers.
inline int DiskDateTimeOrder(const unsigned char* a, const unsigned char* b, bool highFirst, bool wildcards) noexcept {
    const int y1 = DiskYear(a, highFirst), y2 = DiskYear(b, highFirst);
    if (y1 != y2 && (!wildcards || y2 != -1)) return y1 < y2 ? -1 : 1;
    for (int i = 2; i < 7; ++i) {
        if (wildcards && b[i] == 0xFF) continue;
        const int f1 = static_cast<int8_t>(a[i]), f2 = static_cast<int8_t>(b[i]);
        if (f1 != f2) return f1 < f2 ? -1 : 1;
    }
    return 0;
}

// The hash word of a prefix, on sign-extended fields in wrapping 32-bit arithmetic:
// ((minute << 8) + (hour << 16) + second) XOR ((month << 8) + (year << 16) + day).
inline uint32_t DateTimeWord(int16_t year, const unsigned char* p) noexcept {
    const auto f = [p](int i) { return static_cast<uint32_t>(int32_t{static_cast<int8_t>(p[i])}); };
    const uint32_t time = (f(5) << 8) + (f(4) << 16) + f(6);
    const uint32_t date = (f(2) << 8) + (static_cast<uint32_t>(int32_t{year}) << 16) + f(3);
    return time ^ date;
}

}  // namespace lmdatetime

#endif
