// LmInt64, type id 26: the members that are not inline, its handlers and its
// descriptor record.
//
// The disk form of one element is 8 bytes: the word low, then the word high, each
// by LongStoreOne in the byte order of the format. On this little-endian platform the
// least-significant-first image is the memory form itself, so forms 1 and 8 are read
// in place; a most-significant-first image swaps each word but keeps low in front.
#include "lmint64.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <new>

#include "lmbounds.h"
#include "lmcompare.h"
#include "lmconvert.h"
#include "lmslots.h"
#include "lmstring.h"
#include "lmtext.h"
#include "scalarread.h"

using namespace lmscalar;

// ---- Members. ----

// The number goes through "%E" text, which keeps seven significant digits: one
// before the point and six behind. Each digit behind the point takes 1 from the
// exponent before it is used, and the walk ends when the exponent would go below 0;
// what is left of the exponent then multiplies by 10. So a double of more than seven
// significant digits loses the rest, and a fraction is cut off. Only magnitudes from
// 1.0 to 9223372036854774784.0 are formatted, so the text is at most 12 characters.
LmInt64::LmInt64(double v) noexcept : low(0), high(0) {
    const double magnitude = std::fabs(v);
    if (magnitude > 9223372036854774784.0) {
        *this = LmInt64(0x7FFFFFFFFFFFFFFFLL);
    } else if (magnitude >= 1.0) {
        char text[32];
        std::snprintf(text, sizeof text, "%E", magnitude);
        const char* e = std::strchr(text, 'E');
        if (e == nullptr) return;
        int exponent = 0;
        // The character behind the 'E' is the sign, and is skipped.
        for (const char* p = e + 2; *p >= '0' && *p <= '9'; ++p) exponent = exponent * 10 + (*p - '0');
        LmInt64 value;
        bool behindPoint = false;
        for (const char* p = text; p < e; ++p) {
            if (*p < '0' || *p > '9') {  // the point, whatever the locale spells it
                behindPoint = true;
                continue;
            }
            if (behindPoint && --exponent < 0) break;
            value = value * LmInt64(10) + LmInt64(*p - '0');
        }
        for (; exponent >= 1; --exponent) value = value * LmInt64(10);
        *this = value;
    }
    // The sign comes last, also on the largest value: -1e19 gives -0x7FFFFFFFFFFFFFFF.
    if (v < 0) *this = *this * LmInt64(-1);
}

// The word rule of a division by 0: quotient and remainder 0. The smallest value was
// taken as its complement, one less than its magnitude, and gets that 1 back as a
// remainder, which takes the sign of the dividend.
LmInt64 LmInt64::DivideByZero(int remainder) const noexcept {
    LUMO_assert("LmInt64 divide by zero", "src\\lmint64", __LINE__);
    if (remainder != 0 && GetU8b() == 0x8000000000000000ULL) return LmInt64(-1);
    return LmInt64();
}

LmString& LmInt64::PrintToLmString(LmString& target, const char* format) const {
    return LmInt64PrintText(target, Get8b(), format);
}

LmInt64& LmInt64::ScanFromLmString(const LmString& text, const char* format) {
    long long v = Get8b();
    LmInt64ScanText(v, text, format);
    *this = v;
    return *this;
}

// ---- Handlers. ----

namespace {

constexpr unsigned kWidth = 8;

inline LmInt64 ReadInt64(const void* p) {
    LmInt64 v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

void* Int64Create(unsigned count) {
    void* p = ::operator new(static_cast<size_t>(count) * kWidth, std::nothrow);
    if (p != nullptr && count != 0) std::memset(p, 0, static_cast<size_t>(count) * kWidth);
    return p;
}

void* Int64Delete(void* value, unsigned) {
    ::operator delete(value, std::nothrow);
    return nullptr;
}

// Each element is two 4-byte words, low first, each in the byte order of the format:
// exactly what LongStore does with twice the count, in both directions.
unsigned Int64Store(void* dest, const void* src, unsigned char format, unsigned count) {
    return LongStore(dest, src, format, 2 * count);
}

unsigned Int64SizeGet(const void*, unsigned char, unsigned char, unsigned count) { return kWidth * count; }
unsigned Int64NullSizeGet(unsigned count) { return kWidth * count; }
unsigned Int64SizeGetFromMemFile(MemFile*, unsigned char, unsigned count) { return kWidth * count; }

// One element of a stored array: directly in forms 8 and 1, else through the Load
// of the type into a cleared local.
inline LmInt64 ElementAt(const unsigned char* p, unsigned char format) {
    if (DirectForm(format)) return ReadInt64(p);
    LmInt64 v;
    Int64Store(&v, p, format, 1);
    return v;
}

unsigned Int64Translate(void* dest, unsigned char destFormat, unsigned destLen, void* src, unsigned char srcFormat,
                        unsigned srcLen, unsigned count) {
    return TranslateByForm<kWidth, Int64Store, Int64Store>(
        dest, destFormat, destLen, src, srcFormat, srcLen, count,
        [](void* d, const void* s, unsigned n) { ScalarAssignment<int64_t>(d, const_cast<void*>(s), n, 0); });
}

// The word of an element is low XOR high, from the value, so every form hashes alike.
unsigned Int64Hash(unsigned char format, unsigned len, void* value, unsigned count, int& status) {
    return HashLoop(kWidth, len, value, count, status, [format](const unsigned char* p) {
        const LmInt64 v = ElementAt(p, format);
        return v.low ^ static_cast<uint32_t>(v.high);
    });
}

LmString& Int64PrintToString(LmString& out, void* value, const char* format, unsigned) {
    return ReadInt64(value).PrintToLmString(out, format);
}

void* Int64ScanFromString(void* value, LmString& text, const char* format, unsigned) {
    if (value == nullptr) return nullptr;
    LmInt64 v = ReadInt64(value);
    v.ScanFromLmString(text, format);
    std::memcpy(value, &v, sizeof v);
    return value;
}

// Each value printed with the default format, appended to a new string.
LmTypeConvertData* Int64ConvertToLmString(void* value, unsigned count) {
    auto* strings = static_cast<LmString*>(LmDesc_LmString.Create(count));
    if (strings == nullptr) return nullptr;
    CreatedArray owned(strings, LmDesc_LmString.Delete, count);
    const auto* values = static_cast<const unsigned char*>(value);
    for (unsigned i = 0; i < count; ++i)
        ReadInt64(values + static_cast<size_t>(i) * kWidth).PrintToLmString(strings[i]);
    return owned.Wrap(LmSTRING_T);
}

// Each string scanned with the default format into the created value; a missing or
// null string leaves that value (0), and so does an empty one.
void* Int64ConvertFromLmString(LmTypeConvertData* data, unsigned count) {
    auto* values = static_cast<LmInt64*>(Int64Create(count));
    if (values == nullptr) return nullptr;
    CreatedArray owned(values, Int64Delete, count);
    for (unsigned i = 0; i < count; ++i) {
        const LmString* text = data != nullptr ? data->GetString(static_cast<int>(i)) : nullptr;
        if (text != nullptr && text->IsNullValue() == 0) values[i].ScanFromLmString(*text);
    }
    return owned.Release();
}

// Mode 2 gives 0, not the smallest value; 'M' and 'N' step by the increment and
// keep the result only if it is greater, so the largest value has no successor.
int Int64GetValue(void* value, unsigned, unsigned char format, unsigned char mode) {
    if (format != LmFormatMemory) return LM_ERR_NOT_SUPPORTED;
    switch (mode) {
        case 2: {
            const LmInt64 zero;
            std::memcpy(value, &zero, sizeof zero);
            return LM_OK;
        }
        case 'O':
            return LM_OK;
        case 'M':
        case 'N': {
            const LmInt64 old = ReadInt64(value);
            LmInt64 next = old;
            ++next;
            if (!(old < next)) return LM_ERR_NO_NEXT_VALUE;
            std::memcpy(value, &next, sizeof next);
            return LM_OK;
        }
        default:
            return LM_ERR_NOT_SUPPORTED;
    }
}

}  // namespace

// By LmInt64 less and greater: -1, 0 or 1.
int Int64Compare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short,
                 unsigned count, int& status) {
    return CompareLoop(kWidth, len1, value1, len2, value2, count, status,
                       [format](const unsigned char* a, const unsigned char* b) {
                           const LmInt64 x = ElementAt(a, format);
                           const LmInt64 y = ElementAt(b, format);
                           return x < y ? -1 : (x > y ? 1 : 0);
                       });
}

constinit LmTypeDesc LmDesc_LmInt64 = {
    "LmInt64",
    "LmINT64_T",
    Int64Create,
    Int64Delete,
    Int64Store,
    Int64Store,
    Int64NullSizeGet,
    Int64SizeGet,
    Int64SizeGetFromMemFile,
    Int64Compare,
    Int64EvalAndBound,
    Int64Hash,
    Int64ConvertToLmString,
    Int64ConvertFromLmString,
    ScalarConstructor<int64_t>,  // the life-cycle slots of the 8-byte family
    ScalarDestructor,
    ScalarAssignment<int64_t>,
    ScalarAssignment<int64_t>,
    Int64Translate,
    NeverNullValue,
    nullptr,
    "%S",
    Int64PrintToString,
    Int64ScanFromString,
    kWidth,
    1,
    DefaultValueFromText<Int64ConvertFromLmString>,
    Int64GetValue,
    nullptr,
};
