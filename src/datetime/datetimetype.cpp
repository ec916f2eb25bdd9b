// The handlers of LmDateTime (id 19) and its descriptor record, in both tables.
//
// Disk form, 7 bytes: the year in two's complement, high byte first for store
// format 2 and low byte first for every other nibble; then month, day, hour, minute
// and second. The memory form is the same seven bytes and a byte of room.
#include "dtcommon.h"
#include "dthandlers.h"
#include "lmbounds.h"
#include "lmdatetime.h"
#include "scalarread.h"

namespace {

using namespace lmdatetime;
constexpr unsigned kWidth = 7;
constexpr unsigned kMemWidth = sizeof(LmDateTime);

unsigned DateTimeStore(void* dest, const void* src, unsigned char format, unsigned count) {
    auto* d = static_cast<unsigned char*>(dest);
    const auto* s = static_cast<const unsigned char*>(src);
    const bool high = HighFirst(format);
    for (unsigned i = 0; i < count; ++i, d += kWidth, s += kMemWidth) {
        PutDiskYear(d, Read<int16_t>(s), high);
        std::memcpy(d + 2, s + 2, 5);
    }
    return kWidth * count;
}

unsigned DateTimeLoad(void* dest, const void* src, unsigned char format, unsigned count) {
    auto* d = static_cast<unsigned char*>(dest);
    const auto* s = static_cast<const unsigned char*>(src);
    const bool high = HighFirst(format);
    for (unsigned i = 0; i < count; ++i, d += kMemWidth, s += kWidth) {
        const auto c = [s](int k) { return static_cast<char>(s[k]); };
        Write(d, LmDateTime(DiskYear(s, high), c(2), c(3), c(4), c(5), c(6)));
    }
    return kWidth * count;
}

unsigned DateTimeTranslate(void* dest, unsigned char destFormat, unsigned destLen, void* src, unsigned char srcFormat,
                           unsigned srcLen, unsigned count) {
    return TranslateByForm<kMemWidth, DateTimeStore, DateTimeLoad>(
        dest, destFormat, destLen, src, srcFormat, srcLen, count,
        [](void* d, const void* s, unsigned n) { Assignment<LmDateTime>(d, const_cast<void*>(s), n, 0); });
}

// The year is read directly in memory and by the store order on a disk form; the
// element step is 8 in memory and 7 on disk.
unsigned DateTimeHash(unsigned char format, unsigned len, void* value, unsigned count, int& status) {
    const bool memory = (format & 15u) == LmFormatMemory;
    const bool high = !memory && HighFirst(format);
    return lmscalar::HashLoop(memory ? kMemWidth : kWidth, len, value, count, status,
                              [high](const unsigned char* p) { return DateTimeWord(DiskYear(p, high), p); });
}

// Date number ":" seconds of the day; a null value gives a null string.
LmTypeConvertData* DateTimeConvertTo(void* value, unsigned count) {
    LmString* strings = ConvertStringsCreate(count);
    if (strings == nullptr) return nullptr;
    const auto* values = static_cast<const unsigned char*>(value);
    for (unsigned i = 0; i < count; ++i) {
        const auto v = Read<LmDateTime>(values + i * kMemWidth);
        if (v.IsNullValue() != 0) {
            strings[i].SetNullValue();
            continue;
        }
        strings[i] += LmString(static_cast<const LmDate&>(v).dayabs());
        strings[i] += LmString(":");
        strings[i] += LmString(static_cast<int>(static_cast<const LmTime&>(v)));
    }
    return LmTypeConvertData::Make(LmSTRING_T, count, strings, nullptr);
}

// The number gives the date and the time is midnight; a ':' at the front clears the
// date, and the number behind the first ':' gives the time. No string, or a null
// one, gives the null value.
LmDateTime DateTimeFromText(const LmString* text) {
    if (text == nullptr || text->IsNullValue() != 0) return LmDateTime::NullValue();
    LmDateTime v(LmDate(static_cast<int>(*text)), LmTime(0, 0, 0));
    const short colon = text->Find(':');
    if (colon >= 0) {
        if (colon == 0) static_cast<LmDate&>(v) = LmDate::ClearValue();
        v = LmTime(static_cast<int>(text->Copy(static_cast<uint16_t>(colon + 1))));
    }
    return v;
}

void* DateTimeCreate(unsigned count) { return Create<LmDateTime>(count); }

void* DateTimeConvertFrom(LmTypeConvertData* data, unsigned count) {
    void* values = DateTimeCreate(count);
    if (count == 0 || values == nullptr) return values;
    auto* out = static_cast<unsigned char*>(values);
    for (unsigned i = 0; i < count; ++i) {
        const LmString* text = data != nullptr ? data->GetString(static_cast<int>(i)) : nullptr;
        Write(out + i * kMemWidth, DateTimeFromText(text));
    }
    return values;
}

// Memory form only: mode 2 null, 'O' the present moment, 'M' and 'N' one second on,
// kept only when it is later.
int DateTimeGetValue(void* value, unsigned, unsigned char format, unsigned char mode) {
    if (format != LmFormatMemory) return LM_ERR_NOT_SUPPORTED;
    auto v = Read<LmDateTime>(value);
    switch (mode) {
        case 2:
            v.SetNullValue();
            break;
        case 'O':
            v.Now();
            break;
        case 'M':
        case 'N': {
            LmDateTime next = v;
            next.AddSeconds(1);
            if (next.Compare(v) <= 0) return LM_ERR_NO_NEXT_VALUE;
            v = next;
            break;
        }
        default:
            return LM_ERR_NOT_SUPPORTED;
    }
    Write(value, v);
    return LM_OK;
}

}  // namespace

// Memory form: Compare with the options, a field difference. Disk forms: -1, 0 or 1,
// the first difference of year and then the five bytes; without option bit 0x10 a
// year of -1 or a byte of FF in the second value matches anything.
int LmDateTimeCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2,
                      unsigned short option, unsigned count, int& status) {
    if ((format & 15u) == LmFormatMemory) {
        return lmscalar::CompareLoop(kMemWidth, len1, value1, len2, value2, count, status,
                                     [option](const unsigned char* a, const unsigned char* b) {
                                         return Read<LmDateTime>(a).Compare(Read<LmDateTime>(b), option);
                                     });
    }
    const bool high = HighFirst(format);
    const bool wildcards = (option & LM_CMP_NO_WILDCARD) == 0;
    return lmscalar::CompareLoop(kWidth, len1, value1, len2, value2, count, status,
                                 [high, wildcards](const unsigned char* a, const unsigned char* b) {
                                     // Equal bytes are equal values, whatever the wildcards.
                                     if (std::memcmp(a, b, kWidth) == 0) return 0;
                                     return DiskDateTimeOrder(a, b, high, wildcards);
                                 });
}

constinit LmTypeDesc LmDesc_LmDateTime = {"LmDateTime",
                                          "LmDATIME_T",
                                          DateTimeCreate,
                                          Delete<LmDateTime>,
                                          DateTimeStore,
                                          DateTimeLoad,
                                          NullSizeGet<kWidth>,
                                          SizeGet<kWidth>,
                                          SizeGetFromMemFile<kWidth>,
                                          LmDateTimeCompare,
                                          DateTimeEvalAndBound,
                                          DateTimeHash,
                                          DateTimeConvertTo,
                                          DateTimeConvertFrom,
                                          Constructor<LmDateTime>,
                                          Destructor,
                                          Assignment<LmDateTime>,
                                          Assignment<LmDateTime>,
                                          DateTimeTranslate,
                                          IsNull<LmDateTime>,
                                          SetNull<LmDateTime>,
                                          "%a %e.%b %Y %I:%M:%S %p",
                                          PrintToString<LmDateTime>,
                                          ScanFromString<LmDateTime>,
                                          kMemWidth,
                                          1,
                                          DefaultValue<LmDateTime, DateTimeCreate, DateTimeConvertFrom>,
                                          DateTimeGetValue,
                                          nullptr};
