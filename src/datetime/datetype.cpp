// The handlers of LmDate (id 12) and its descriptor record.
//
// Disk form, 4 bytes at every factory level: the year in two's complement, high
// byte first for store format 2 and low byte first for every other nibble; then
// month and day. Null goes to disk as it is (00 80 80 80 low first).
#include "dtcommon.h"
#include "dthandlers.h"
#include "lmdate.h"
#include "scalarread.h"

namespace {

using namespace lmdatetime;
constexpr unsigned kWidth = 4;

inline bool HighFirst(unsigned char format) { return (format & 15u) == LmFormatBig; }

int16_t DiskYear(const unsigned char* p, bool highFirst) {
    const unsigned hi = highFirst ? p[0] : p[1];
    const unsigned lo = highFirst ? p[1] : p[0];
    return static_cast<int16_t>(hi << 8 | lo);
}

unsigned DateStore(void* dest, const void* src, unsigned char format, unsigned count) {
    auto* d = static_cast<unsigned char*>(dest);
    const auto* s = static_cast<const unsigned char*>(src);
    const bool high = HighFirst(format);
    for (unsigned i = 0; i < count; ++i, d += kWidth, s += kWidth) {
        const auto year = static_cast<uint16_t>(Read<LmDate>(s).year);
        d[high ? 0 : 1] = static_cast<unsigned char>(year >> 8);
        d[high ? 1 : 0] = static_cast<unsigned char>(year);
        d[2] = s[2];
        d[3] = s[3];
    }
    return kWidth * count;
}

unsigned DateLoad(void* dest, const void* src, unsigned char format, unsigned count) {
    auto* d = static_cast<unsigned char*>(dest);
    const auto* s = static_cast<const unsigned char*>(src);
    const bool high = HighFirst(format);
    for (unsigned i = 0; i < count; ++i, d += kWidth, s += kWidth) {
        Write(d, LmDate(DiskYear(s, high), static_cast<char>(s[2]), static_cast<char>(s[3])));
    }
    return kWidth * count;
}

unsigned DateTranslate(void* dest, unsigned char destFormat, unsigned destLen, void* src, unsigned char srcFormat,
                       unsigned srcLen, unsigned count) {
    return TranslateByForm<kWidth, DateStore, DateLoad>(
        dest, destFormat, destLen, src, srcFormat, srcLen, count,
        [](void* d, const void* s, unsigned n) { Assignment<LmDate>(d, const_cast<void*>(s), n, 0); });
}

// The element word: (year << 16) + (month << 8) + day in wrapping 32-bit arithmetic
// on the sign-extended fields. Only the memory form reads the year directly; every
// other format, 1 too, reads it as ShortStoreOne gives it: swapped for nibble 2, as it
// stands for every other nibble.
unsigned DateHash(unsigned char format, unsigned len, void* value, unsigned count, int& status) {
    const bool high = (format & 15u) != LmFormatMemory && HighFirst(format);
    return lmscalar::HashLoop(kWidth, len, value, count, status, [high](const unsigned char* p) {
        return (static_cast<uint32_t>(int32_t{DiskYear(p, high)}) << 16) +
               (static_cast<uint32_t>(int32_t{static_cast<int8_t>(p[2])}) << 8) +
               static_cast<uint32_t>(int32_t{static_cast<int8_t>(p[3])});
    });
}

// Four equal bytes are equal values in every form, whatever the wildcards.
inline bool SameBytes(const unsigned char* a, const unsigned char* b) { return std::memcmp(a, b, kWidth) == 0; }

void Today(LmDate& d) { d.Today(); }

}  // namespace

// Memory form: the field difference of LmDate::Compare, wildcards on both sides.
// Disk forms: -1, 0 or 1; a field of the second value that is -1 (year) or FF (month,
// day) matches anything unless option bit 0x10 is set, while the same bytes as first
// value are plain numbers. The year wildcard compared against is always -1.
int LmDateCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short option,
                  unsigned count, int& status) {
    if ((format & 15u) == LmFormatMemory) {
        return lmscalar::CompareLoop(kWidth, len1, value1, len2, value2, count, status,
                                     [option](const unsigned char* a, const unsigned char* b) {
                                         if (SameBytes(a, b)) return 0;
                                         const LmDate x = Read<LmDate>(a), y = Read<LmDate>(b);
                                         return lmdatetime::CompareFields(x.year, x.month, x.day, y.year, y.month,
                                                                          y.day, (option & LM_CMP_NO_WILDCARD) == 0);
                                     });
    }
    const bool high = HighFirst(format);
    const bool wildcards = (option & LM_CMP_NO_WILDCARD) == 0;
    return lmscalar::CompareLoop(kWidth, len1, value1, len2, value2, count, status,
                                 [high, wildcards](const unsigned char* a, const unsigned char* b) {
                                     if (SameBytes(a, b)) return 0;
                                     const int y1 = DiskYear(a, high), y2 = DiskYear(b, high);
                                     if (y1 != y2 && (!wildcards || y2 != -1)) return y1 < y2 ? -1 : 1;
                                     for (int i = 2; i < 4; ++i) {
                                         if (wildcards && b[i] == 0xFF) continue;
                                         const int f1 = static_cast<int8_t>(a[i]), f2 = static_cast<int8_t>(b[i]);
                                         if (f1 != f2) return f1 < f2 ? -1 : 1;
                                     }
                                     return 0;
                                 });
}

constinit LmTypeDesc LmDesc_LmDate = {"LmDate",
                                      "LmDATE_T",
                                      Create<LmDate>,
                                      Delete<LmDate>,
                                      DateStore,
                                      DateLoad,
                                      NullSizeGet<kWidth>,
                                      SizeGet<kWidth>,
                                      SizeGetFromMemFile<kWidth>,
                                      LmDateCompare,
                                      IllegalEvalAndBound,  // index bounds of dates are still to come
                                      DateHash,
                                      ConvertTo<LmDate>,
                                      ConvertFrom<LmDate, Create<LmDate>>,
                                      Constructor<LmDate>,
                                      Destructor,
                                      Assignment<LmDate>,
                                      Assignment<LmDate>,
                                      DateTranslate,
                                      IsNull<LmDate>,
                                      SetNull<LmDate>,
                                      "%a %e.%b %Y",
                                      PrintToString<LmDate>,
                                      ScanFromString<LmDate>,
                                      kWidth,
                                      1,
                                      DefaultValue<LmDate, Create<LmDate>, ConvertFrom<LmDate, Create<LmDate>>>,
                                      GetValue<LmDate, Today>,
                                      nullptr};
