// The handlers of LmTime (id 13) and its descriptor record.
//
// Disk form, 3 bytes: hour, minute, second, the same in every store format.
#include "dtcommon.h"
#include "dthandlers.h"
#include "lmtime.h"
#include "scalarread.h"

namespace {

using namespace lmdatetime;
constexpr unsigned kWidth = 3;

// The bytes are the same on disk as in memory, whatever the format.
unsigned TimeStore(void* dest, const void* src, unsigned char, unsigned count) {
    if (count != 0) std::memcpy(dest, src, static_cast<size_t>(kWidth) * count);
    return kWidth * count;
}

unsigned TimeTranslate(void* dest, unsigned char destFormat, unsigned destLen, void* src, unsigned char srcFormat,
                       unsigned srcLen, unsigned count) {
    return TranslateByForm<kWidth, TimeStore, TimeStore>(
        dest, destFormat, destLen, src, srcFormat, srcLen, count,
        [](void* d, const void* s, unsigned n) { Assignment<LmTime>(d, const_cast<void*>(s), n, 0); });
}

// The element word: hour * 65536 + minute * 256 + second on the signed bytes, in
// wrapping 32-bit arithmetic. The format is not looked at.
unsigned TimeHash(unsigned char, unsigned len, void* value, unsigned count, int& status) {
    return lmscalar::HashLoop(kWidth, len, value, count, status, [](const unsigned char* p) {
        return static_cast<uint32_t>(int32_t{static_cast<int8_t>(p[0])}) * 65536u +
               static_cast<uint32_t>(int32_t{static_cast<int8_t>(p[1])}) * 256u +
               static_cast<uint32_t>(int32_t{static_cast<int8_t>(p[2])});
    });
}

void Now(LmTime& t) { t.Now(); }

}  // namespace

// Memory form: the field difference of LmTime::Compare, wildcards on both sides.
// Disk forms: -1, 0 or 1, and a field of the second value that is FF matches anything
// unless option bit 0x10 is set.
int LmTimeCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short option,
                  unsigned count, int& status) {
    if ((format & 15u) == LmFormatMemory) {
        return lmscalar::CompareLoop(kWidth, len1, value1, len2, value2, count, status,
                                     [option](const unsigned char* a, const unsigned char* b) {
                                         return lmdatetime::CompareFields(
                                             static_cast<int8_t>(a[0]), static_cast<int8_t>(a[1]),
                                             static_cast<int8_t>(a[2]), static_cast<int8_t>(b[0]),
                                             static_cast<int8_t>(b[1]), static_cast<int8_t>(b[2]),
                                             (option & LM_CMP_NO_WILDCARD) == 0);
                                     });
    }
    const bool wildcards = (option & LM_CMP_NO_WILDCARD) == 0;
    return lmscalar::CompareLoop(kWidth, len1, value1, len2, value2, count, status,
                                 [wildcards](const unsigned char* a, const unsigned char* b) {
                                     for (int i = 0; i < 3; ++i) {
                                         if (wildcards && b[i] == 0xFF) continue;
                                         const int f1 = static_cast<int8_t>(a[i]), f2 = static_cast<int8_t>(b[i]);
                                         if (f1 != f2) return f1 < f2 ? -1 : 1;
                                     }
                                     return 0;
                                 });
}

constinit LmTypeDesc LmDesc_LmTime = {"LmTime",
                                      "LmTIME_T",
                                      Create<LmTime>,
                                      Delete<LmTime>,
                                      TimeStore,
                                      TimeStore,
                                      NullSizeGet<kWidth>,
                                      SizeGet<kWidth>,
                                      SizeGetFromMemFile<kWidth>,
                                      LmTimeCompare,
                                      IllegalEvalAndBound,  // index bounds of times are still to come
                                      TimeHash,
                                      ConvertTo<LmTime>,
                                      ConvertFrom<LmTime, Create<LmTime>>,
                                      Constructor<LmTime>,
                                      Destructor,
                                      Assignment<LmTime>,
                                      Assignment<LmTime>,
                                      TimeTranslate,
                                      IsNull<LmTime>,
                                      SetNull<LmTime>,
                                      "%I:%M:%S %p",
                                      PrintToString<LmTime>,
                                      ScanFromString<LmTime>,
                                      kWidth,
                                      1,
                                      DefaultValue<LmTime, Create<LmTime>, ConvertFrom<LmTime, Create<LmTime>>>,
                                      GetValue<LmTime, Now>,
                                      nullptr};
