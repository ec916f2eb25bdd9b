// The handlers of LmDateTimeN (id 40) and LmTimeSpan (id 41) and their descriptor
// records. The twins share every handler but the constructor they call and their
// text conversions.
//
// Disk form, 11 bytes: the seven-byte prefix of LmDateTime (year by the store order,
// then month, day, hour, minute, second), then the nanoseconds in 32 bits, high byte
// first for store format 2 and as they stand for every other nibble. In memory the
// nanoseconds lie at offset 8, behind a byte of room.
#include <cmath>
#include <cstddef>

#include "dtcommon.h"
#include "dthandlers.h"
#include "lmbounds.h"
#include "lmdatetimen.h"
#include "lumobase.h"
#include "scalarread.h"

namespace {

using namespace lmdatetime;
constexpr unsigned kWidth = 11;
constexpr unsigned kMemWidth = 12;
constexpr size_t kMemNanos = offsetof(LmDateTimeNRecord, nanoseconds);
static_assert(sizeof(LmDateTimeN) == kMemWidth && sizeof(LmTimeSpan) == kMemWidth);

// The stored nanoseconds as LongStoreOne reads them (swapped for nibble 2 only),
// without a call per element.
inline int32_t DiskNanos(const unsigned char* p, unsigned char format) noexcept {
    uint32_t n = 0;
    std::memcpy(&n, p + 7, 4);
    return static_cast<int32_t>(HighFirst(format) ? __builtin_bswap32(n) : n);
}

unsigned NanoStore(void* dest, const void* src, unsigned char format, unsigned count) {
    auto* d = static_cast<unsigned char*>(dest);
    const auto* s = static_cast<const unsigned char*>(src);
    const bool high = HighFirst(format);
    for (unsigned i = 0; i < count; ++i, d += kWidth, s += kMemWidth) {
        PutDiskYear(d, Read<int16_t>(s), high);
        std::memcpy(d + 2, s + 2, 5);
        LongStoreOne(d + 7, s + kMemNanos, format);
    }
    return kWidth * count;
}

unsigned NanoLoad(void* dest, const void* src, unsigned char format, unsigned count) {
    auto* d = static_cast<unsigned char*>(dest);
    const auto* s = static_cast<const unsigned char*>(src);
    const bool high = HighFirst(format);
    for (unsigned i = 0; i < count; ++i, d += kMemWidth, s += kWidth) {
        const auto c = [s](int k) { return static_cast<char>(s[k]); };
        Write(d, LmDateTimeN(DiskYear(s, high), c(2), c(3), c(4), c(5), c(6), DiskNanos(s, format)));
    }
    return kWidth * count;
}

unsigned NanoTranslate(void* dest, unsigned char destFormat, unsigned destLen, void* src, unsigned char srcFormat,
                       unsigned srcLen, unsigned count) {
    return TranslateByForm<kMemWidth, NanoStore, NanoLoad>(
        dest, destFormat, destLen, src, srcFormat, srcLen, count,
        [](void* d, const void* s, unsigned n) { Assignment<LmDateTimeN>(d, const_cast<void*>(s), n, 0); });
}

// The prefix word of LmDateTime XOR the nanoseconds; 12 bytes a step in memory, 11
// on disk.
unsigned NanoHash(unsigned char format, unsigned len, void* value, unsigned count, int& status) {
    if ((format & 15u) == LmFormatMemory) {
        return lmscalar::HashLoop(kMemWidth, len, value, count, status, [](const unsigned char* p) {
            return DateTimeWord(DiskYear(p, false), p) ^ static_cast<uint32_t>(Read<int32_t>(p + kMemNanos));
        });
    }
    const bool high = HighFirst(format);
    return lmscalar::HashLoop(kWidth, len, value, count, status, [high, format](const unsigned char* p) {
        return DateTimeWord(DiskYear(p, high), p) ^ static_cast<uint32_t>(DiskNanos(p, format));
    });
}

// Memory form only: mode 2 the lowest record (-32768, five fields -128, nanoseconds
// -2^31), 'O' the present moment for a date-time and the value itself for a span,
// 'M' and 'N' one nanosecond on, kept only when it is greater.
template <typename T, bool Span>
int NanoGetValue(void* value, unsigned, unsigned char format, unsigned char mode) {
    if (format != LmFormatMemory) return LM_ERR_NOT_SUPPORTED;
    T v = Read<T>(value);
    switch (mode) {
        case 2:
            v = T(-32768, -128, -128, -128, -128, -128, INT32_MIN);
            break;
        case 'O':
            if constexpr (!Span) v.Now();
            break;
        case 'M':
        case 'N': {
            T next = v;
            next.AddNanoSeconds(1);
            if (next.Compare(v, LM_CMP_NO_WILDCARD) <= 0) return LM_ERR_NO_NEXT_VALUE;
            v = next;
            break;
        }
        default:
            return LM_ERR_NOT_SUPPORTED;
    }
    Write(value, v);
    return LM_OK;
}

// Date number ":" seconds of the day, and "." nanoseconds when there are any.
LmString DateTimeNText(const LmDateTimeN& v) {
    LmString text(LmDate(v.year, static_cast<char>(v.month), static_cast<char>(v.day)).dayabs());
    text += LmString(":");
    text += LmString(
        static_cast<int>(LmTime(static_cast<char>(v.hour), static_cast<char>(v.minute), static_cast<char>(v.second))));
    if (v.nanoseconds > 0) {
        text += LmString(".");
        text += LmString(v.nanoseconds);
    }
    return text;
}

// The total seconds as a double.
LmString TimeSpanText(const LmTimeSpan& v) { return LmString(v.GetTotalSeconds_f()); }

template <typename T, LmString (*Text)(const T&)>
LmTypeConvertData* NanoConvertTo(void* value, unsigned count) {
    LmString* strings = ConvertStringsCreate(count);
    if (strings == nullptr) return nullptr;
    const auto* values = static_cast<const unsigned char*>(value);
    for (unsigned i = 0; i < count; ++i) {
        const T v = Read<T>(values + i * kMemWidth);
        if (v.IsNullValue() != 0) {
            strings[i].SetNullValue();
        } else {
            strings[i] += Text(v);
        }
    }
    return LmTypeConvertData::Make(LmSTRING_T, count, strings, nullptr);
}

// A non-zero first number gives the date by dateabs. Behind a ':' stand the seconds
// of the day (a ':' at the front clears the date), and behind a following '.' the
// nanoseconds; each is set when it or the date is non-zero. A text without a date
// number ends as the zero date-time with its nanoseconds. A date without ':' is at
// midnight. Anything else leaves the created value, null.
void DateTimeNFromText(LmDateTimeN& v, const LmString& text) {
    const int date = static_cast<int>(text);
    if (date != 0) {
        LmDate d(0, 0, 0);
        d.dateabs(date);
        v.year = d.year;
        v.month = d.month;
        v.day = d.day;
    }
    const short colon = text.Find(':');
    if (colon < 0) {
        if (date != 0) v.hour = v.minute = v.second = 0;
        return;
    }
    if (colon == 0) v.year = v.month = v.day = 0;
    const LmString rest = text.Copy(static_cast<uint16_t>(colon + 1));
    const int seconds = static_cast<int>(rest);
    if (seconds != 0 || date != 0) {
        const LmTime t(seconds);
        v.hour = t.hour;
        v.minute = t.minute;
        v.second = t.second;
    }
    if (date == 0) v.SetTotalDays(0);
    const short dot = rest.Find('.');
    if (dot < 0) return;
    const int ns = static_cast<int>(rest.Copy(static_cast<uint16_t>(dot + 1)));
    if (ns != 0 || date != 0) v.nanoseconds = ns;
}

// A non-null text whose number is not 0 gives the total seconds.
void TimeSpanFromText(LmTimeSpan& v, const LmString& text) {
    const double seconds = static_cast<double>(text);
    if (seconds != 0.0) v.SetTotalSeconds(seconds);
}

template <typename T, void (*FromText)(T&, const LmString&)>
void* NanoConvertFrom(LmTypeConvertData* data, unsigned count) {
    void* values = Create<T>(count);
    if (count == 0 || values == nullptr) return values;
    auto* out = static_cast<unsigned char*>(values);
    for (unsigned i = 0; i < count; ++i) {
        const LmString* text = data != nullptr ? data->GetString(static_cast<int>(i)) : nullptr;
        if (text == nullptr || text->IsNullValue() != 0) continue;
        T v = Read<T>(out + i * kMemWidth);
        FromText(v, *text);
        Write(out + i * kMemWidth, v);
    }
    return values;
}

// The default is what Create gives: null values.
template <typename T>
void* NanoDefaultValue(unsigned count, int) {
    return Create<T>(count);
}

// Disk forms: the prefix as LmDateTime's, then the nanoseconds as signed numbers.
// Without option bit 0x10 only the second value's wildcard (-1) counts.
int NanoCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short option,
                unsigned count, int& status) {
    if ((format & 15u) == LmFormatMemory) {
        return lmscalar::CompareLoop(kMemWidth, len1, value1, len2, value2, count, status,
                                     [option](const unsigned char* a, const unsigned char* b) {
                                         // The fields are equal when their bytes are (the byte
                                         // of room at offset 7 is not part of the value).
                                         if (std::memcmp(a, b, 7) == 0 && std::memcmp(a + 8, b + 8, 4) == 0) {
                                             return 0;
                                         }
                                         return CompareNanoRecords(Read<LmDateTimeNRecord>(a),
                                                                   Read<LmDateTimeNRecord>(b), option);
                                     });
    }
    const bool high = HighFirst(format);
    const bool wildcards = (option & LM_CMP_NO_WILDCARD) == 0;
    return lmscalar::CompareLoop(kWidth, len1, value1, len2, value2, count, status,
                                 [high, wildcards, format](const unsigned char* a, const unsigned char* b) {
                                     // Equal bytes are equal values, whatever the wildcards.
                                     if (std::memcmp(a, b, kWidth) == 0) return 0;
                                     const int r = DiskDateTimeOrder(a, b, high, wildcards);
                                     if (r != 0) return r;
                                     const int32_t n2 = DiskNanos(b, format);
                                     if (wildcards && n2 == -1) return 0;
                                     const int32_t n1 = DiskNanos(a, format);
                                     return n1 < n2 ? -1 : (n1 > n2 ? 1 : 0);
                                 });
}

}  // namespace

int LmDateTimeNCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2,
                       unsigned short option, unsigned count, int& status) {
    return NanoCompare(format, len1, value1, len2, value2, option, count, status);
}

int LmTimeSpanCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2,
                      unsigned short option, unsigned count, int& status) {
    return NanoCompare(format, len1, value1, len2, value2, option, count, status);
}

constinit LmTypeDesc LmDesc_LmDateTimeN = {"LmDateTimeN",
                                           "LmDATIME_N_T",
                                           Create<LmDateTimeN>,
                                           Delete<LmDateTimeN>,
                                           NanoStore,
                                           NanoLoad,
                                           NullSizeGet<kWidth>,
                                           SizeGet<kWidth>,
                                           SizeGetFromMemFile<kWidth>,
                                           LmDateTimeNCompare,
                                           DateTimeNanoEvalAndBound,
                                           NanoHash,
                                           NanoConvertTo<LmDateTimeN, DateTimeNText>,
                                           NanoConvertFrom<LmDateTimeN, DateTimeNFromText>,
                                           Constructor<LmDateTimeN>,
                                           Destructor,
                                           Assignment<LmDateTimeN>,
                                           Assignment<LmDateTimeN>,
                                           NanoTranslate,
                                           IsNull<LmDateTimeN>,
                                           SetNull<LmDateTimeN>,
                                           "%X",
                                           PrintToString<LmDateTimeN>,
                                           ScanFromString<LmDateTimeN>,
                                           kMemWidth,
                                           1,
                                           NanoDefaultValue<LmDateTimeN>,
                                           NanoGetValue<LmDateTimeN, false>,
                                           nullptr};

constinit LmTypeDesc LmDesc_LmTimeSpan = {"LmTimeSpan",
                                          "LmTIMESPAN_T",
                                          Create<LmTimeSpan>,
                                          Delete<LmTimeSpan>,
                                          NanoStore,
                                          NanoLoad,
                                          NullSizeGet<kWidth>,
                                          SizeGet<kWidth>,
                                          SizeGetFromMemFile<kWidth>,
                                          LmTimeSpanCompare,
                                          DateTimeNanoEvalAndBound,
                                          NanoHash,
                                          NanoConvertTo<LmTimeSpan, TimeSpanText>,
                                          NanoConvertFrom<LmTimeSpan, TimeSpanFromText>,
                                          Constructor<LmTimeSpan>,
                                          Destructor,
                                          Assignment<LmTimeSpan>,
                                          Assignment<LmTimeSpan>,
                                          NanoTranslate,
                                          IsNull<LmTimeSpan>,
                                          SetNull<LmTimeSpan>,
                                          "%V",
                                          PrintToString<LmTimeSpan>,
                                          ScanFromString<LmTimeSpan>,
                                          kMemWidth,
                                          1,
                                          NanoDefaultValue<LmTimeSpan>,
                                          NanoGetValue<LmTimeSpan, true>,
                                          nullptr};
