// Internal: what the three identity classes share. Their element loops for compare
// and hash, the life cycle of fixed plain records, the conversions through their
// print and scan languages, and the engine of those languages (idtext.cpp).
#ifndef IDCOMMON_H
#define IDCOMMON_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "lmconvert.h"
#include "lmidentity.h"
#include "lmslots.h"
#include "lmstring.h"

namespace lmidentity {

// ---- Reading disk words. Compare and hash read least significant byte first
// whatever the format; Store and Load follow the format. ----

inline uint16_t Little16(const unsigned char* p) { return static_cast<uint16_t>(p[0] | p[1] << 8); }
inline uint32_t Little32(const unsigned char* p) {
    uint32_t v;
    std::memcpy(&v, p, sizeof v);  // this platform is little-endian
    return v;
}
inline uint64_t Little64(const unsigned char* p) {
    uint64_t v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

// The difference of the first two unequal bytes, taken from the most significant
// byte of a and b down, as unsigned numbers; 0 if a equals b.
inline int FirstByteDifference(uint64_t a, uint64_t b) {
    const uint64_t x = a ^ b;
    if (x == 0) return 0;
    const int shift = (63 - __builtin_clzll(x)) & ~7;
    return static_cast<int>((a >> shift) & 0xFF) - static_cast<int>((b >> shift) & 0xFF);
}

// The element loop of the identity compares. Status is cleared; the walk stops at
// the first nonzero result. An element is compared only when it lies whole inside
// both operands (a length of 0 is count elements); when one does not while elements
// remain, the status is LM_ERR_OUT_OF_DATA and the result 0: equal as far as the data
// went.
template <size_t Width, typename Order>
inline int CompareLoop(unsigned len1, const void* value1, unsigned len2, const void* value2, unsigned count,
                       int& status, Order order) {
    status = LM_OK;
    if (count == 0) return 0;
    const uint64_t all = static_cast<uint64_t>(count) * Width;
    const uint64_t end1 = len1 != 0 ? len1 : all;
    const uint64_t end2 = len2 != 0 ? len2 : all;
    const auto* p1 = static_cast<const unsigned char*>(value1);
    const auto* p2 = static_cast<const unsigned char*>(value2);
    uint64_t at = 0;
    for (unsigned left = count; left != 0; --left, at += Width) {
        if (at + Width > end1 || at + Width > end2) {
            status = LM_ERR_OUT_OF_DATA;
            return 0;
        }
        const int result = order(p1 + at, p2 + at);
        if (result != 0) return result;
    }
    return 0;
}

// The element loop of the identity hashes: the XOR of the element words, multiplied
// once at the end. An element that does not lie whole inside len stops the walk with
// LM_ERR_OUT_OF_DATA; the hash of the elements before it is returned.
template <size_t Width, typename Word>
inline unsigned HashLoop(unsigned len, const void* value, unsigned count, int& status, Word word) {
    status = LM_OK;
    const uint64_t end = len != 0 ? len : static_cast<uint64_t>(count) * Width;
    const auto* p = static_cast<const unsigned char*>(value);
    uint32_t h = 0;
    uint64_t at = 0;
    for (unsigned left = count; left != 0; --left, at += Width) {
        if (at + Width > end) {
            status = LM_ERR_OUT_OF_DATA;
            break;
        }
        h ^= word(p + at);
    }
    return h * LmIdentityHashMultiplier;
}

// ---- Life cycle of a plain record: zeroed memory, no destructor. ----

template <typename T>
void* CreateRecords(unsigned count) {
    // calloc refuses a product beyond the address space; a count of 0 still gives a
    // pointer that Delete takes back.
    return std::calloc(std::max(count, 1u), sizeof(T));
}

inline void* DeleteRecords(void* value) {
    std::free(value);
    return nullptr;
}

template <typename T>
void ConstructRecords(void* array, unsigned count) {
    if (count != 0) std::memset(array, 0, static_cast<size_t>(count) * sizeof(T));
}

// Element by element by T's operator=, or the one value at src into every target.
template <typename T>
void AssignRecords(void* dest, void* src, unsigned count, int replicate) {
    T* to = static_cast<T*>(dest);
    const T* from = static_cast<const T*>(src);
    for (unsigned i = 0; i < count; ++i) to[i] = replicate != 0 ? from[0] : from[i];
}

// ---- Conversions through the print and scan languages, with the exchange format
// of the type's record. ----

template <typename T>
LmTypeConvertData* ConvertToText(const LmTypeDesc& desc, void* value, unsigned count) {
    LmString* strings = ConvertStringsCreate(count);
    if (strings == nullptr) return nullptr;
    CreatedArray owned(strings, LmDesc_LmString.Delete, count);
    T* values = static_cast<T*>(value);
    for (unsigned i = 0; i < count; ++i) {
        if (T::IsNull(values + i) != 0) {
            strings[i].SetNullValue();
        } else {
            T::PrintToString(strings[i], values + i, desc.exchangeFormat, 1);
        }
    }
    return owned.Wrap(LmSTRING_T);
}

// A missing or null string gives the null value of the type.
template <typename T>
void* ConvertFromText(const LmTypeDesc& desc, LmTypeConvertData* data, unsigned count) {
    T* values = static_cast<T*>(T::Create(count));
    if (values == nullptr) return nullptr;
    CreatedArray owned(values, T::Delete, count);
    for (unsigned i = 0; i < count; ++i) {
        LmString* text = data != nullptr ? data->GetString(static_cast<int>(i)) : nullptr;
        if (text == nullptr || text->IsNullValue() != 0) {
            T::SetNull(values + i);
        } else {
            T::ScanFromString(values + i, *text, desc.exchangeFormat, 1);
        }
    }
    return owned.Release();
}

// With asNull 0 what the type makes of empty texts; otherwise created values, each
// made null.
template <typename T>
void* DefaultFromTextOrNull(unsigned count, int asNull) {
    if (asNull == 0) return DefaultFromText(T::ConvertFrom, count);
    T* values = static_cast<T*>(T::Create(count));
    if (values != nullptr)
        for (T* v = values; v != values + count; ++v) T::SetNull(v);
    return values;
}

// ---- The print and scan languages. ----

// A field of a record: its byte offset and width (2 or 4; 0 for no field).
struct Field {
    uint8_t offset;
    uint8_t width;
};

// How a plain format character meets the text in a scan.
enum class PlainStyle : uint8_t {
    ObjId,    // a match consumes both; a mismatch skips or realigns (see idtext.cpp)
    ClassId,  // skips one text character, matching or not
    Ref,      // the same, after blanks and '(' are skipped on both sides
};

// One class's language: its named directives, its positional ones and the fields
// they stand for in the order of their position.
struct Language {
    const char* letters;     // named directive letters
    Field fields[6];         // the field of each letter, in the same order
    const char* positional;  // the positional letters, "hl" or "h"
    Field positions[5];      // the field of each position; width 0: none
    PlainStyle style;
    unsigned char nullFill;     // the byte a null text fills the record with
    unsigned char recordBytes;  // bytes the null text fills
};

extern const Language ObjIdLanguage;
extern const Language ClassIdLanguage;
extern const Language RefLanguage;

// The value's text under format into out, which it replaces. A null value (isNull)
// gives the null print text.
LmString& PrintIdentity(LmString& out, const void* value, bool isNull, const char* format, const Language& language);
// The text scanned into value under format, as the ScanFromString slots do it.
void* ScanIdentity(void* value, LmString& text, const char* format, const Language& language);

}  // namespace lmidentity

// The descriptor record of an identity class T, its slots from T's static members.
template <typename T>
constexpr LmTypeDesc IdentityRow(const char* name, const char* idName, const char* exchangeFormat,
                                 LmTypeGetValueFunc getValue) {
    LmTypeDesc row = IllegalRow(name, idName, static_cast<uint16_t>(sizeof(T)), 1, exchangeFormat);
    row.Create = T::Create;
    row.Delete = T::Delete;
    row.Store = T::Store;
    row.Load = T::Load;
    row.NullSizeGet = T::NullSizeGet;
    row.SizeGet = T::SizeGet;
    row.SizeGetFromMemFile = T::SizeGetFromMemFile;
    row.Cmp = T::Compare;
    row.Hash = T::Hash;
    row.EvalAndBound = T::EvalAndBound;
    row.ConvertTo = T::ConvertTo;
    row.ConvertFrom = T::ConvertFrom;
    row.Constructor = T::Constructor;
    row.Destructor = T::Destructor;
    row.Assignment = T::Assignment;
    row.Copy = T::Copy;
    row.Translate = T::Translate;
    row.IsNullValue = T::IsNull;
    row.SetNullValue = T::SetNull;
    row.PrintToString = T::PrintToString;
    row.ScanFromString = T::ScanFromString;
    row.DefaultValue = T::DefaultValue;
    row.GetValue = getValue;
    return row;
}

#endif
