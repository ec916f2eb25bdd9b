// Internal: the handler shapes that the date and time classes share: life cycle of
// arrays, assignment, conversion to and from strings, defaults, stepping, and the
// print and scan slots around the classes' own members.
//
// T is a trivially copyable value class with NullValue, IsNullValue, SetNullValue,
// a constructor from int, operator int, prefix ++, operator<, PrintToLmString and
// ScanFromLmString. Elements are read and written through copies, so an unaligned
// value is fine.
#ifndef DTHANDLERS_H
#define DTHANDLERS_H

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <new>

#include "lmconvert.h"
#include "lmslots.h"
#include "lmstring.h"

namespace lmdatetime {

// The count word in front of an array of more than one value.
constexpr size_t kCountWord = 8;

template <typename T>
T Read(const void* p) {
    std::array<unsigned char, sizeof(T)> bytes;
    std::memcpy(bytes.data(), p, sizeof(T));
    return std::bit_cast<T>(bytes);
}

template <typename T>
void Write(void* p, const T& v) {
    std::memcpy(p, &v, sizeof(T));
}

// One value alone for a count of 0 or 1; else a block with the count (a signed
// 64-bit copy) in front of the values, and the address behind it. Each value is built
// by the default constructor, so it holds the present date or time. A size beyond the
// address space saturates, and the allocator refuses it: null.
template <typename T>
void* Create(unsigned count) {
    if (count <= 1) {
        void* raw = ::operator new(sizeof(T), std::nothrow);
        return raw != nullptr ? new (raw) T() : nullptr;
    }
    size_t bytes = 0;
    if (__builtin_mul_overflow(static_cast<size_t>(count), sizeof(T), &bytes) ||
        __builtin_add_overflow(bytes, kCountWord, &bytes)) {
        bytes = SIZE_MAX;
    }
    auto* block = static_cast<unsigned char*>(::operator new(bytes, std::nothrow));
    if (block == nullptr) return nullptr;
    const int64_t n = count;
    std::memcpy(block, &n, sizeof n);
    auto* values = reinterpret_cast<T*>(block + kCountWord);
    for (unsigned i = 0; i < count; ++i) new (values + i) T();
    return values;
}

// The values have nothing to release; the block goes as its count word says.
template <typename T>
void* Delete(void* value, unsigned count) {
    if (value == nullptr) return nullptr;
    if (count <= 1) {
        ::operator delete(value);
    } else {
        ::operator delete(static_cast<unsigned char*>(value) - kCountWord);
    }
    return nullptr;
}

template <typename T>
void Constructor(void* array, unsigned count, unsigned) {
    auto* values = static_cast<T*>(array);
    for (unsigned i = 0; i < count; ++i) new (values + i) T();
}

inline void Destructor(void*, unsigned, unsigned) {}

// Assignment and Copy: element for element, or with broadcast the one value at src
// into every element.
template <typename T>
void Assignment(void* dest, void* src, unsigned count, int broadcast) {
    auto* d = static_cast<unsigned char*>(dest);
    const auto* s = static_cast<const unsigned char*>(src);
    for (unsigned i = 0; i < count; ++i) Write(d + i * sizeof(T), Read<T>(broadcast != 0 ? s : s + i * sizeof(T)));
}

template <unsigned Width>
unsigned NullSizeGet(unsigned count) {
    return Width * count;
}
template <unsigned Width>
unsigned SizeGet(const void*, unsigned char, unsigned char, unsigned count) {
    return Width * count;
}
template <unsigned Width>
unsigned SizeGetFromMemFile(MemFile*, unsigned char, unsigned count) {
    return Width * count;
}

template <typename T>
int IsNull(void* value) {
    return Read<T>(value).IsNullValue();
}

template <typename T>
int SetNull(void* value) {
    Write(value, T::NullValue());
    return 0;
}

// Each value as the decimal text of its number; a null value gives a null string.
template <typename T>
LmTypeConvertData* ConvertTo(void* value, unsigned count) {
    LmString* strings = ConvertStringsCreate(count);
    if (strings == nullptr) return nullptr;
    const auto* values = static_cast<const unsigned char*>(value);
    for (unsigned i = 0; i < count; ++i) {
        const T v = Read<T>(values + i * sizeof(T));
        if (v.IsNullValue() != 0) {
            strings[i].SetNullValue();
        } else {
            strings[i] += LmString(static_cast<int>(v));
        }
    }
    return LmTypeConvertData::Make(LmSTRING_T, count, strings, nullptr);
}

// Each value from the number of its string; a missing or null string gives null.
template <typename T, LmTypeCreateFunc CreateFn>
void* ConvertFrom(LmTypeConvertData* data, unsigned count) {
    void* values = CreateFn(count);
    if (count == 0 || values == nullptr) return values;
    auto* out = static_cast<unsigned char*>(values);
    for (unsigned i = 0; i < count; ++i) {
        const LmString* text = data != nullptr ? data->GetString(static_cast<int>(i)) : nullptr;
        Write(out + i * sizeof(T),
              text == nullptr || text->IsNullValue() != 0 ? T::NullValue() : T(static_cast<int>(*text)));
    }
    return values;
}

// With asNull 0, what the values convert from empty texts; otherwise created values
// each made null.
template <typename T, LmTypeCreateFunc CreateFn, LmTypeConvertFromFunc ConvertFromFn>
void* DefaultValue(unsigned count, int asNull) {
    if (asNull == 0) return DefaultFromText(ConvertFromFn, count);
    void* values = CreateFn(count);
    if (values == nullptr) return nullptr;
    for (unsigned i = 0; i < count; ++i) SetNull<T>(static_cast<unsigned char*>(values) + i * sizeof(T));
    return values;
}

// Memory form only. Mode 2 gives null; 'O' the present (Present); 'M' and 'N' the
// value stepped by prefix ++, kept only when it is greater than the old one.
template <typename T, void (*Present)(T&)>
int GetValue(void* value, unsigned, unsigned char format, unsigned char mode) {
    if (format != LmFormatMemory) return LM_ERR_NOT_SUPPORTED;
    T v = Read<T>(value);
    switch (mode) {
        case 2:
            v.SetNullValue();
            break;
        case 'O':
            Present(v);
            break;
        case 'M':
        case 'N': {
            T next = v;
            ++next;
            if (!(v < next)) return LM_ERR_NO_NEXT_VALUE;
            v = next;
            break;
        }
        default:
            return LM_ERR_NOT_SUPPORTED;
    }
    Write(value, v);
    return LM_OK;
}

// The print and scan slots: the class's members under the given format. The manager
// splits arrays, so one value is printed or scanned.
template <typename T>
LmString& PrintToString(LmString& out, void* value, const char* format, unsigned) {
    return Read<T>(value).PrintToLmString(out, format);
}

template <typename T>
void* ScanFromString(void* value, LmString& text, const char* format, unsigned) {
    if (value == nullptr) return nullptr;
    T v = Read<T>(value);
    const bool ok = v.ScanFromLmString(text, format) != nullptr;
    Write(value, v);
    return ok ? value : nullptr;
}

}  // namespace lmdatetime

#endif
