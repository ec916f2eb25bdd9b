// LmSeal, type id 39: the members that are not inline, its handlers and its
// descriptor record.
//
// The disk form is 6 bytes per element, high, middle and low, each most significant
// byte first, whatever the format; so the two disk formats give the same bytes and
// the format byte plays no part in Store and Load.
#include "lmseal.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "lmbounds.h"
#include "lmcompare.h"
#include "lmconvert.h"
#include "lmidentity.h"
#include "lmint64.h"
#include "lmslots.h"
#include "lmstring.h"
#include "scalarread.h"

using namespace lmscalar;

// ---- Members. ----

void LmSeal::ConvertFrom(const LmInt64& value) noexcept {
    low = static_cast<uint16_t>(value.low);
    middle = static_cast<uint16_t>(value.low >> 16);
    high = static_cast<uint16_t>(value.high);
}

void LmSeal::ConvertFrom(const LmObjId& id) noexcept {
    low = static_cast<uint16_t>(id.low);
    middle = static_cast<uint16_t>(id.low >> 16);
    high = id.high;
}

void LmSeal::ConvertFrom(const long long& value) noexcept { ConvertFrom(LmInt64(value)); }

void LmSeal::ConvertTo(LmInt64& value) const noexcept {
    value = LmInt64(static_cast<unsigned>(middle) << 16 | low, static_cast<int>(high));
}

void LmSeal::ConvertTo(long long& value) const noexcept {
    LmInt64 v;
    ConvertTo(v);
    value = v.Get8b();
}

LmString& LmSeal::PrintToLmString(LmString& target) const {
    LmInt64 v;
    ConvertTo(v);
    return v.PrintToLmString(target, "%S");
}

LmSeal& LmSeal::ScanFromLmString(const LmString& text) {
    *this = LmSeal();
    if (text.Len() == 0) return *this;
    LmInt64 v;
    v.ScanFromLmString(text, "%S");
    ConvertFrom(v);
    return *this;
}

// ---- Handlers. ----

namespace {

constexpr unsigned kWidth = 6;

// Every array the slots of the seal hand out has one 8-byte word in front of its
// elements: kSealArray for seals, the count for the strings of ConvertTo. The
// wrapper of ConvertTo carries the id of the seal, so its destructor releases the
// strings through the Delete slot of the seal, which reads that word to destroy
// them. A count is below 2^32 and never equals kSealArray.
constexpr uint64_t kSealArray = 0x5345414C00000000ULL;
constexpr size_t kHeader = sizeof(uint64_t);

unsigned char* NewArray(uint64_t word, size_t bytes) {
    auto* block = static_cast<unsigned char*>(::operator new(kHeader + bytes, std::nothrow));
    if (block == nullptr) return nullptr;
    std::memcpy(block, &word, kHeader);
    return block + kHeader;
}

void* SealCreate(unsigned count) {
    const size_t bytes = static_cast<size_t>(count) * kWidth;
    unsigned char* seals = NewArray(kSealArray, bytes);
    if (seals != nullptr && bytes != 0) std::memset(seals, 0, bytes);
    return seals;
}

void* SealDelete(void* value, unsigned) {
    if (value == nullptr) return nullptr;
    unsigned char* block = static_cast<unsigned char*>(value) - kHeader;
    uint64_t word = 0;
    std::memcpy(&word, block, kHeader);
    if (word != kSealArray) {
        auto* strings = static_cast<LmString*>(value);
        for (uint64_t i = word; i > 0; --i) strings[i - 1].~LmString();
    }
    ::operator delete(block);
    return nullptr;
}

inline void PutWord(unsigned char* p, uint16_t w) {
    p[0] = static_cast<unsigned char>(w >> 8);
    p[1] = static_cast<unsigned char>(w);
}

inline uint16_t GetWord(const unsigned char* p) { return static_cast<uint16_t>(p[0] << 8 | p[1]); }

unsigned SealStore(void* dest, const void* src, unsigned char, unsigned count) {
    auto* out = static_cast<unsigned char*>(dest);
    const auto* in = static_cast<const unsigned char*>(src);
    for (unsigned i = 0; i < count; ++i, out += kWidth, in += sizeof(LmSeal)) {
        LmSeal s;
        std::memcpy(&s, in, sizeof s);
        PutWord(out, s.high);
        PutWord(out + 2, s.middle);
        PutWord(out + 4, s.low);
    }
    return count * kWidth;
}

unsigned SealLoad(void* dest, const void* src, unsigned char, unsigned count) {
    auto* out = static_cast<unsigned char*>(dest);
    const auto* in = static_cast<const unsigned char*>(src);
    for (unsigned i = 0; i < count; ++i, out += sizeof(LmSeal), in += kWidth) {
        LmSeal s;
        s.high = GetWord(in);
        s.middle = GetWord(in + 2);
        s.low = GetWord(in + 4);
        std::memcpy(out, &s, sizeof s);
    }
    return count * kWidth;
}

unsigned SealSize(const void*, unsigned char, unsigned char, unsigned count) { return count * kWidth; }
unsigned SealNullSize(unsigned count) { return count * kWidth; }
unsigned SealSizeFromMemFile(MemFile*, unsigned char, unsigned count) { return count * kWidth; }

unsigned SealTranslate(void* dest, unsigned char destFormat, unsigned destLen, void* src, unsigned char srcFormat,
                       unsigned srcLen, unsigned count) {
    return TranslateByForm<kWidth, SealStore, SealLoad>(
        dest, destFormat, destLen, src, srcFormat, srcLen, count,
        [](void* d, const void* s, unsigned n) { ScalarAssignment<LmSeal>(d, const_cast<void*>(s), n, 0); });
}

// The word of an element is the XOR of its three words, from the value: the memory
// form is read in place, a disk image through Load, so every form hashes alike.
unsigned SealHash(unsigned char format, unsigned len, void* value, unsigned count, int& status) {
    return HashLoop(kWidth, len, value, count, status, [format](const unsigned char* p) {
        LmSeal s;
        if ((format & 15u) == 8)
            std::memcpy(&s, p, sizeof s);
        else
            SealLoad(&s, p, format, 1);
        return static_cast<uint32_t>(s.high ^ s.middle ^ s.low);
    });
}

LmString& SealPrintToString(LmString& out, void* value, const char*, unsigned) {
    LmSeal s;
    std::memcpy(&s, value, sizeof s);
    return s.PrintToLmString(out);
}

void* SealScanFromString(void* value, LmString& text, const char*, unsigned) {
    if (value == nullptr) return nullptr;
    LmSeal s;
    s.ScanFromLmString(text);
    std::memcpy(value, &s, sizeof s);
    return value;
}

// The strings carry the seal's id, not that of a string, as the type always made
// them: GetString of the wrapper answers null, and a ConvertFrom of it reads every
// element as missing.
LmTypeConvertData* SealConvertToLmString(void* value, unsigned count) {
    auto* strings = reinterpret_cast<LmString*>(NewArray(count, static_cast<size_t>(count) * sizeof(LmString)));
    if (strings == nullptr) return nullptr;
    for (unsigned i = 0; i < count; ++i) new (&strings[i]) LmString();  // all built before any text
    CreatedArray owned(strings, SealDelete, count);
    const auto* in = static_cast<const unsigned char*>(value);
    for (unsigned i = 0; i < count; ++i) {
        LmSeal s;
        std::memcpy(&s, in + static_cast<size_t>(i) * sizeof s, sizeof s);
        s.PrintToLmString(strings[i]);
    }
    return owned.Wrap(LmSEAL_T);
}

// A missing or null string leaves the created seal, all zero.
void* SealConvertFromLmString(LmTypeConvertData* data, unsigned count) {
    auto* seals = static_cast<LmSeal*>(SealCreate(count));
    if (seals == nullptr) return nullptr;
    for (unsigned i = 0; i < count; ++i) {
        const LmString* text = data != nullptr ? data->GetString(static_cast<int>(i)) : nullptr;
        if (text != nullptr && text->IsNullValue() == 0) seals[i].ScanFromLmString(*text);
    }
    return seals;
}

// The order of two elements: in form 8 the first difference of the words, else the
// first difference of the stored bytes as unsigned numbers.
int ElementOrder(unsigned char format, const unsigned char* a, const unsigned char* b) {
    if (format == LmFormatMemory) {
        LmSeal x, y;
        std::memcpy(&x, a, sizeof x);
        std::memcpy(&y, b, sizeof y);
        return x != y;
    }
    for (unsigned i = 0; i < kWidth; ++i)
        if (a[i] != b[i]) return a[i] - b[i];
    return 0;
}

}  // namespace

// Sets no status and stops at the first nonzero result. An element is compared only
// if it lies whole within both lengths (0 stands for count elements); a shorter
// operand ends the walk with the result so far, 0.
int SealCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short,
                unsigned count, int&) {
    const size_t all = static_cast<size_t>(count) * kWidth;
    const size_t end = std::min<size_t>(len1 != 0 ? len1 : all, len2 != 0 ? len2 : all);
    const auto* a = static_cast<const unsigned char*>(value1);
    const auto* b = static_cast<const unsigned char*>(value2);
    for (size_t at = 0; at + kWidth <= end && at < all; at += kWidth) {
        const int result = ElementOrder(format, a + at, b + at);
        if (result != 0) return result;
    }
    return 0;
}

constinit LmTypeDesc LmDesc_LmSeal = {
    "LmSeal",
    "LmSEAL_T",
    SealCreate,
    SealDelete,
    SealStore,
    SealLoad,
    SealNullSize,
    SealSize,
    SealSizeFromMemFile,
    SealCompare,
    SealEvalAndBound,
    SealHash,
    SealConvertToLmString,
    SealConvertFromLmString,
    ScalarConstructor<LmSeal>,  // a six-byte family of its own, in the shapes of the plain numbers
    ScalarDestructor,
    ScalarAssignment<LmSeal>,
    ScalarAssignment<LmSeal>,
    SealTranslate,
    NeverNullValue,
    nullptr,
    "noop",
    SealPrintToString,
    SealScanFromString,
    kWidth,
    1,
    DefaultValueFromText<SealConvertFromLmString>,
    RefuseGetValue,
    nullptr,
};
