// The nullable family, type ids 28 to 38, 44 and 45: the slots of the template of
// _lmnulty.h and the thirteen descriptor records.
//
// Every member calls the handlers of its base number for what the base already
// knows (store and load of the value, sizes, print, scan, conversions, stepping) and
// adds the flag. Compare and hash read the elements themselves, as the base slots
// do: straight from the bytes in forms 8 and 1, through the base's Load otherwise.
// The element word of a hash is the base's own (hash codes are frozen), so a
// non-null element hashes exactly as the base slot hashes its value in form 8.
#include "_lmnulty.h"

#include <cmath>
#include <cstring>
#include <new>
#include <type_traits>
#include <vector>

#include "lmbounds.h"
#include "lmcompare.h"
#include "lmconvert.h"
#include "lmint64.h"
#include "lmslots.h"
#include "lmstring.h"
#include "lmtypemgr.h"
#include "scalarread.h"
#include "scantext.h"

namespace {

// The base type of a member: its record.
template <LmTypeDesc& Record>
struct BaseRow {
    static const LmTypeDesc& Row() { return Record; }
};

// A null XORs this into the hash instead of its value's hash.
constexpr uint32_t kNullHashWord = 0xFEFE7575u;
constexpr uint32_t kHashMultiplier = 1103515245u;

// A base's disk form is as wide as its memory value, for every base number; a
// stored element is the flag and that form.
template <typename T>
constexpr unsigned kElement = sizeof(T) + 1;

// One element as Load with count 1 reads it from a scratch value in the null state.
template <typename T>
struct Element {
    T value;
    bool null;
};

// Reads one stored element of which `have` bytes are present: the flag first on disk
// and behind the value when bit 3 of the format is set. Only a flag of exactly 1 is
// null, and a null's value is 0. The bytes of a cut element that are missing read as
// 0, so a record cut between flag and value has the value 0.
// An element in a form read straight from its bytes: form 1 (flag, then value) or a
// form with bit 3 set (value, then flag).
// A null's value is cleared by a mask, not a branch: the flags of stored keys are
// not predictable.
template <typename T>
[[gnu::always_inline]] inline Element<T> DirectElement(const unsigned char* p, bool valueFirst) {
    using Bits = std::conditional_t<sizeof(T) == 1, uint8_t,
                                    std::conditional_t<sizeof(T) == 2, uint16_t,
                                                       std::conditional_t<sizeof(T) == 4, uint32_t, uint64_t>>>;
    static_assert(sizeof(Bits) == sizeof(T));
    Element<T> e;
    Bits bits;
    std::memcpy(&bits, valueFirst ? p : p + 1, sizeof bits);
    e.null = p[valueFirst ? sizeof(T) : 0] == 1;
    bits &= static_cast<Bits>(Bits{0} - static_cast<Bits>(!e.null));
    std::memcpy(static_cast<void*>(&e.value), &bits, sizeof bits);
    return e;
}

template <typename T, typename Base>
Element<T> ReadCutElement(const unsigned char* p, size_t have, unsigned char format);

// Inlined into the compare and hash loops: their hot path.
template <typename T, typename Base>
[[gnu::always_inline]] inline Element<T> ReadElement(const unsigned char* p, size_t have, unsigned char format) {
    if (have < kElement<T>) [[unlikely]]
        return ReadCutElement<T, Base>(p, have, format);
    if ((format & 8) != 0 || (format & 15) == LmFormatLittle) return DirectElement<T>(p, (format & 8) != 0);
    Element<T> e{};
    Base::Row().Load(&e.value, p + 1, format, 1);
    e.null = p[0] == 1;
    if (e.null) e.value = T{};
    return e;
}

template <typename T, typename Base>
[[gnu::noinline]] Element<T> ReadCutElement(const unsigned char* p, size_t have, unsigned char format) {
    unsigned char whole[kElement<T>] = {};
    std::memcpy(whole, p, have);
    return ReadElement<T, Base>(whole, kElement<T>, format);
}

// The order of two values: integers signed or unsigned by their type, LmInt64 by its
// < and then >, floating values by the index order of their ranks.
template <typename T>
inline int ValueOrder(const T& a, const T& b) {
    if constexpr (std::is_floating_point_v<T>) {
        // Rank 0 is a finite value: two of them compare by the numbers.
        if (std::isfinite(a) && std::isfinite(b)) return b > a ? -1 : (a > b ? 1 : 0);
        const int ra = LmFloatRank(a), rb = LmFloatRank(b);
        if (ra == 0 && rb == 0) return b > a ? -1 : (a > b ? 1 : 0);
        return ra < rb ? -1 : (ra > rb ? 1 : 0);
    } else {
        return a < b ? -1 : (a > b ? 1 : 0);
    }
}

// The base's hash of one value in form 8: its element word times the multiplier.
// The words: small integers sign- or zero-extended, 32-bit values and float bits as
// they are, the two halves of a double XORed, the low half alone of o_8b and o_u8b,
// low XOR high of LmInt64.
template <typename T>
inline uint32_t BaseHashOf(const T& v) {
    uint32_t word;
    if constexpr (std::is_same_v<T, LmInt64>) {
        word = v.low ^ static_cast<uint32_t>(v.high);
    } else if constexpr (std::is_same_v<T, double>) {
        uint64_t bits;
        std::memcpy(&bits, &v, sizeof bits);
        word = static_cast<uint32_t>(bits) ^ static_cast<uint32_t>(bits >> 32);
    } else if constexpr (std::is_same_v<T, float>) {
        std::memcpy(&word, &v, sizeof word);
    } else if constexpr (sizeof(T) == 8 || std::is_unsigned_v<T>) {
        word = static_cast<uint32_t>(v);
    } else {
        word = static_cast<uint32_t>(static_cast<int32_t>(v));
    }
    return word * kHashMultiplier;
}

// The null rule first; the values decide only between two values.
template <typename T>
inline int ElementOrder(const Element<T>& x, const Element<T>& y) {
    const LmNullRelation nr = LmNullRelationOf(x.null, y.null);
    return nr == LmNullRelation::unknown ? ValueOrder(x.value, y.value) : LmNullRelationNumber(nr);
}

// The stride of Cmp and Hash: the memory length in form 8, else one stored element.
template <typename T>
inline size_t Stride(unsigned char format) {
    return (format & 15) == LmFormatMemory ? sizeof(LmNullable<T>) : kElement<T>;
}

inline size_t Present(unsigned len, unsigned count, size_t stride) {
    return len != 0 ? len : static_cast<size_t>(count) * stride;
}

}  // namespace

template <typename T, typename Base>
int CompareWalk(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2, unsigned count,
                int& status);
template <typename T, typename Base>
unsigned HashWalk(unsigned char format, unsigned len, void* value, unsigned count, int& status);

// ---- Life cycle. ----

template <typename T, typename Base>
void* LmNullType<T, Base>::Create(unsigned count) {
    const unsigned n = count < 2 ? 1 : count;
    void* values = ::operator new(static_cast<size_t>(n) * sizeof(Value), std::nothrow);
    if (values != nullptr) Constructor(values, n, 0);
    return values;
}

template <typename T, typename Base>
void* LmNullType<T, Base>::Delete(void* value, unsigned) {
    ::operator delete(value, std::nothrow);
    return nullptr;
}

// The null state, room bytes cleared as well, so that a Copy moves defined bytes.
template <typename T, typename Base>
void LmNullType<T, Base>::Constructor(void* array, unsigned count, unsigned) {
    auto* v = static_cast<Value*>(array);
    if (count != 0) std::memset(static_cast<void*>(v), 0, static_cast<size_t>(count) * sizeof(Value));
    for (unsigned i = 0; i < count; ++i) v[i].isNull = 1;
}

template <typename T, typename Base>
void LmNullType<T, Base>::Destructor(void*, unsigned, unsigned) {}

template <typename T, typename Base>
void LmNullType<T, Base>::Assignment(void* dest, void* src, unsigned count, int replicate) {
    auto* d = static_cast<Value*>(dest);
    const auto* s = static_cast<const Value*>(src);
    for (unsigned i = 0; i < count; ++i) {
        const Value& from = s[replicate != 0 ? 0 : i];
        d[i].value = from.value;
        d[i].isNull = from.isNull;
    }
}

// All memory-length bytes of each element, room included.
template <typename T, typename Base>
void LmNullType<T, Base>::Copy(void* dest, void* src, unsigned count, int replicate) {
    auto* d = static_cast<unsigned char*>(dest);
    const auto* s = static_cast<const unsigned char*>(src);
    for (unsigned i = 0; i < count; ++i)
        std::memcpy(d + static_cast<size_t>(i) * sizeof(Value), s + (replicate != 0 ? 0 : i * sizeof(Value)),
                    sizeof(Value));
}

template <typename T, typename Base>
void* LmNullType<T, Base>::DefaultValue(unsigned count, int) {
    return Create(count);  // the default of a nullable value is null
}

template <typename T, typename Base>
int LmNullType<T, Base>::IsNull(void* value) {
    return static_cast<const Value*>(value)->isNull;
}

template <typename T, typename Base>
int LmNullType<T, Base>::SetNull(void* value) {
    auto* v = static_cast<Value*>(value);
    v->value = T{};
    v->isNull = 1;
    return 0;
}

// ---- Disk form. ----

template <typename T, typename Base>
unsigned LmNullType<T, Base>::Store(void* dest, const void* src, unsigned char format, unsigned count) {
    auto* d = static_cast<unsigned char*>(dest);
    const auto* s = static_cast<const Value*>(src);
    const bool valueFirst = (format & 8) != 0;
    unsigned at = 0;
    for (unsigned i = 0; i < count; ++i) {
        const unsigned char flag = s[i].isNull != 0 ? 1 : 0;
        if (!valueFirst) d[at++] = flag;
        at += Base::Row().Store(d + at, &s[i].value, format, 1);
        if (valueFirst) d[at++] = flag;
    }
    return at;
}

template <typename T, typename Base>
unsigned LmNullType<T, Base>::Load(void* dest, const void* src, unsigned char format, unsigned count) {
    auto* d = static_cast<Value*>(dest);
    const auto* s = static_cast<const unsigned char*>(src);
    const bool valueFirst = (format & 8) != 0;
    unsigned at = 0;
    for (unsigned i = 0; i < count; ++i) {
        unsigned char flag = 0;
        if (!valueFirst) flag = s[at++];
        at += Base::Row().Load(&d[i].value, s + at, format, 1);
        if (valueFirst) flag = s[at++];
        d[i].isNull = flag == 1 ? 1 : 0;
        if (flag == 1) d[i].value = T{};
    }
    return at;
}

template <typename T, typename Base>
unsigned LmNullType<T, Base>::NullSizeGet(unsigned count) {
    return Base::Row().NullSizeGet(count) + count;
}

template <typename T, typename Base>
unsigned LmNullType<T, Base>::SizeGet(const void*, unsigned char valueForm, unsigned char format, unsigned count) {
    return Base::Row().SizeGet(nullptr, valueForm, format, count) + count;
}

template <typename T, typename Base>
unsigned LmNullType<T, Base>::SizeGetFromMemFile(MemFile* file, unsigned char format, unsigned count) {
    return Base::Row().SizeGetFromMemFile(file, format, count) + count;
}

template <typename T, typename Base>
unsigned LmNullType<T, Base>::Translate(void* dest, unsigned char destFormat, unsigned destLen, void* src,
                                        unsigned char srcFormat, unsigned srcLen, unsigned count) {
    return TranslateByForm<sizeof(Value), Store, Load>(
        dest, destFormat, destLen, src, srcFormat, srcLen, count,
        [](void* d, const void* s, unsigned n) { Copy(d, const_cast<void*>(s), n, 0); });
}

// ---- Order and hash. ----

// Nulls below every value, two nulls equal; the walk over the elements is that of
// every compare slot, with the stride of the form.
template <typename T, typename Base>
int LmNullType<T, Base>::Compare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2,
                                 unsigned short, unsigned count, int& status) {
    const auto nibble = static_cast<unsigned char>(format & 15);
    const auto* first1 = static_cast<const unsigned char*>(value1);
    const auto* first2 = static_cast<const unsigned char*>(value2);
    if (count == 1 && (nibble == LmFormatLittle || nibble == LmFormatMemory) &&
        (len1 == 0 || len1 >= kElement<T>) && (len2 == 0 || len2 >= kElement<T>)) {
        // The common case of index code: one whole element on each side in a form
        // read straight from the bytes, status set once. The null rule without a
        // branch: a null holds 0, so both orders can be had and the flags pick one.
        status = LM_OK;
        const Element<T> x = DirectElement<T>(first1, nibble == LmFormatMemory);
        const Element<T> y = DirectElement<T>(first2, nibble == LmFormatMemory);
        const int byValue = ValueOrder(x.value, y.value), byNull = int{y.null} - int{x.null};
        const int anyNull = -int{x.null || y.null};
        return (byNull & anyNull) | (byValue & ~anyNull);
    }
    return CompareWalk<T, Base>(format, len1, value1, len2, value2, count, status);
}

// The walk over several elements, or over a cut one, out of the slot's own frame.
template <typename T, typename Base>
[[gnu::noinline]] int CompareWalk(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2,
                                  unsigned count, int& status) {
    const auto nibble = static_cast<unsigned char>(format & 15);
    const auto* first1 = static_cast<const unsigned char*>(value1);
    const auto* first2 = static_cast<const unsigned char*>(value2);
    const size_t stride = Stride<T>(nibble);
    const size_t end1 = Present(len1, count, stride), end2 = Present(len2, count, stride);
    return lmscalar::CompareLoop(
        stride, len1, value1, len2, value2, count, status, [&](const unsigned char* a, const unsigned char* b) {
            return ElementOrder(ReadElement<T, Base>(a, end1 - static_cast<size_t>(a - first1), nibble),
                                ReadElement<T, Base>(b, end2 - static_cast<size_t>(b - first2), nibble));
        });
}

// The XOR of the elements' hashes, a null's constant for a null; nothing is
// multiplied at the end.
template <typename T, typename Base>
unsigned LmNullType<T, Base>::Hash(unsigned char format, unsigned len, void* value, unsigned count, int& status) {
    const auto nibble = static_cast<unsigned char>(format & 15);
    if (count == 1 && (nibble == LmFormatLittle || nibble == LmFormatMemory) && (len == 0 || len >= kElement<T>)) {
        // One whole element read straight from its bytes, as index code hashes a key.
        status = LM_OK;
        const Element<T> e = DirectElement<T>(static_cast<const unsigned char*>(value), nibble == LmFormatMemory);
        const uint32_t byValue = BaseHashOf(e.value), isNull = 0u - uint32_t{e.null};
        return (kNullHashWord & isNull) | (byValue & ~isNull);
    }
    return HashWalk<T, Base>(format, len, value, count, status);
}

// The walk over several elements, or over a cut one, out of the slot's own frame.
template <typename T, typename Base>
[[gnu::noinline]] unsigned HashWalk(unsigned char format, unsigned len, void* value, unsigned count, int& status) {
    const auto nibble = static_cast<unsigned char>(format & 15);
    const size_t stride = Stride<T>(nibble);
    const auto* first = static_cast<const unsigned char*>(value);
    const size_t end = Present(len, count, stride);
    return lmscalar::HashLoop<1>(stride, len, value, count, status, [&](const unsigned char* p) {
        const Element<T> e = ReadElement<T, Base>(p, end - static_cast<size_t>(p - first), nibble);
        return e.null ? kNullHashWord : BaseHashOf(e.value);
    });
}

// ---- Text. ----

template <typename T, typename Base>
LmString& LmNullType<T, Base>::PrintToString(LmString& out, void* value, const char* format, unsigned) {
    const auto* v = static_cast<const Value*>(value);
    if (v->isNull != 0) {
        out = LmTypeMgr::GetNullPrintString();
        return out;
    }
    T copy = v->value;
    return Base::Row().PrintToString(out, &copy, format, 1);
}

// An empty text, and one that begins with the null print text, give null; any other
// is read by the base's scan into a cleared value, which then stands with flag 0.
template <typename T, typename Base>
void* LmNullType<T, Base>::ScanFromString(void* value, LmString& text, const char* format, unsigned) {
    if (value == nullptr) return nullptr;
    auto* v = static_cast<Value*>(value);
    LmString narrow(LM_CODESET_NATIVE, text.GetLanguage());
    LmString& source = text.IsWide() ? (narrow += text) : text;
    const ScanText nullText(LmTypeMgr::GetNullPrintString());
    const size_t nullLength = std::strlen(nullText.Get());
    if (source.Len() == 0 || std::strncmp(source.StrGet(), nullText.Get(), nullLength) == 0) {
        SetNull(v);
        return value;
    }
    T scratch{};
    Base::Row().ScanFromString(&scratch, source, format, 1);
    v->value = scratch;
    v->isNull = 0;
    return value;
}

// ---- Conversions: the base converts the values, the flags make null strings and
// null values. ----

template <typename T, typename Base>
LmTypeConvertData* LmNullType<T, Base>::ConvertTo(void* value, unsigned count) {
    const auto* v = static_cast<const Value*>(value);
    std::vector<T> plain(count);
    for (unsigned i = 0; i < count; ++i) plain[i] = v[i].value;
    LmTypeConvertData* data = Base::Row().ConvertTo(plain.data(), count);
    if (data == nullptr) return nullptr;
    for (unsigned i = 0; i < count; ++i) {
        LmString* text = v[i].isNull != 0 ? data->GetString(static_cast<int>(i)) : nullptr;
        if (text != nullptr) text->SetNullValue();
    }
    return data;
}

// A missing element or a null string gives null; any other the base's value.
template <typename T, typename Base>
void* LmNullType<T, Base>::ConvertFrom(LmTypeConvertData* data, unsigned count) {
    auto* values = static_cast<Value*>(Create(count));
    if (values == nullptr || count == 0) return values;
    auto* plain = static_cast<T*>(Base::Row().ConvertFrom(data, count));
    if (plain == nullptr) return values;
    for (unsigned i = 0; i < count; ++i) {
        const LmString* text = data != nullptr ? data->GetString(static_cast<int>(i)) : nullptr;
        if (text == nullptr || text->IsNullValue() != 0) continue;
        values[i].value = plain[i];
        values[i].isNull = 0;
    }
    Base::Row().Delete(plain, count);
    return values;
}

// ---- Stepping: a null takes the base's smallest value (mode 2), any other value
// steps by the base's rule; either way the value is no longer null. ----

template <typename T, typename Base>
int LmNullType<T, Base>::GetValue(void* value, unsigned, unsigned char format, unsigned char mode) {
    if (format != LmFormatMemory || (mode != 'M' && mode != 'N')) return LM_ERR_NOT_SUPPORTED;
    auto* v = static_cast<Value*>(value);
    const int status = Base::Row().GetValue(&v->value, sizeof(T), LmFormatMemory, v->isNull != 0 ? 2 : mode);
    v->isNull = 0;
    return status;
}

// ---- Index bounds: the frame of every evaluator, on the base's line. ----

template <typename T, typename Base>
float LmNullType<T, Base>::EvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format,
                                        unsigned count, LmIdxBounds* out) {
    using lmbound::Line;
    const Element<T> v = ReadElement<T, Base>(static_cast<const unsigned char*>(value), kElement<T>, format);
    const bool ranged = lmbound::RangeUsable(range, kElement<T>);
    Element<T> lower{T{}, true}, upper{T{}, true};
    double r = 0;
    if (ranged) {
        upper = ReadElement<T, Base>(static_cast<const unsigned char*>(range->upper), kElement<T>, format);
        lower = ReadElement<T, Base>(static_cast<const unsigned char*>(range->lower), kElement<T>, format);
        r = NullBoundOverlap(op, {Line(v.value), v.null}, {Line(lower.value), lower.null},
                             {Line(upper.value), upper.null});
    }
    BoundFillFromValue(out, value, op, SizeGet(nullptr, LmFormatMemory, format, count));
    if (!ranged) return 0.0f;
    if constexpr (std::is_same_v<T, LmInt64>) {
        // A count of keys, not a share: undivided by the width.
        return static_cast<float>(NullInt64Count(op, r, {Line(v.value), v.null}, {Line(lower.value), lower.null},
                                                 {Line(upper.value), upper.null}, lower.value <= v.value,
                                                 v.value <= upper.value));
    } else {
        const double width = Line(upper.value) - Line(lower.value) + 1.0;
        if constexpr (std::is_same_v<T, double>) {
            if (r == 0) return 0.0f;
            const double share = r / width;
            return static_cast<float>(share > lmbound::kFloatShareFloor ? share : lmbound::kFloatShareFloor);
        } else {
            return lmbound::Share(r, width);
        }
    }
}

// ---- The thirteen records. ----

namespace {

template <typename T, LmTypeDesc& BaseRecord>
constexpr LmTypeDesc NullRow(const char* name, const char* idName, const char* exchangeFormat) {
    using N = LmNullType<T, BaseRow<BaseRecord>>;
    return LmTypeDesc{name,
                      idName,
                      N::Create,
                      N::Delete,
                      N::Store,
                      N::Load,
                      N::NullSizeGet,
                      N::SizeGet,
                      N::SizeGetFromMemFile,
                      N::Compare,
                      N::EvalAndBound,
                      N::Hash,
                      N::ConvertTo,
                      N::ConvertFrom,
                      N::Constructor,
                      N::Destructor,
                      N::Assignment,
                      N::Copy,
                      N::Translate,
                      N::IsNull,
                      N::SetNull,
                      exchangeFormat,
                      N::PrintToString,
                      N::ScanFromString,
                      static_cast<uint16_t>(sizeof(typename N::Value)),
                      1,
                      N::DefaultValue,
                      N::GetValue,
                      nullptr};
}

// The memory lengths of the type table are the records' sizes: LmNull_LmInt64 is 12,
// as its words are 4-byte aligned.
static_assert(sizeof(LmNullable<int8_t>) == 2 && sizeof(LmNullable<int16_t>) == 4 && sizeof(LmNullable<int32_t>) == 8 &&
              sizeof(LmNullable<float>) == 8 && sizeof(LmNullable<double>) == 16 && sizeof(LmNullable<LmInt64>) == 12 &&
              sizeof(LmNullable<int64_t>) == 16);

}  // namespace

constinit LmTypeDesc LmDesc_LmNull_char = NullRow<int8_t, LmDesc_o_char>("LmNull_char", "LmNULL_1B_T", "%c");
constinit LmTypeDesc LmDesc_LmNull_uchar = NullRow<uint8_t, LmDesc_o_u1b>("LmNull_uchar", "LmNULL_U1B_T", "%c");
constinit LmTypeDesc LmDesc_LmNull_short = NullRow<int16_t, LmDesc_o_2b>("LmNull_short", "LmNULL_2B_T", "%hd");
constinit LmTypeDesc LmDesc_LmNull_ushort = NullRow<uint16_t, LmDesc_o_u2b>("LmNull_ushort", "LmNULL_U2B_T", "%hu");
constinit LmTypeDesc LmDesc_LmNull_int = NullRow<int32_t, LmDesc_int>("LmNull_int", "LmNULL_INT_T", "%d");
constinit LmTypeDesc LmDesc_LmNull_unsigned =
    NullRow<uint32_t, LmDesc_unsigned>("LmNull_unsigned", "LmNULL_UNSIGNED_T", "%u");
constinit LmTypeDesc LmDesc_LmNull_long = NullRow<int32_t, LmDesc_o_4b>("LmNull_long", "LmNULL_4B_T", "%ld");
constinit LmTypeDesc LmDesc_LmNull_ulong = NullRow<uint32_t, LmDesc_o_u4b>("LmNull_ulong", "LmNULL_U4B_T", "%lu");
constinit LmTypeDesc LmDesc_LmNull_float = NullRow<float, LmDesc_o_float>("LmNull_float", "LmNULL_FLOAT_T", "%.17g");
constinit LmTypeDesc LmDesc_LmNull_double =
    NullRow<double, LmDesc_o_double>("LmNull_double", "LmNULL_DOUBLE_T", "%.17g");
constinit LmTypeDesc LmDesc_LmNull_LmInt64 =
    NullRow<LmInt64, LmDesc_LmInt64>("LmNull_LmInt64", "LmNULL_LMINT64_T", "%S");
constinit LmTypeDesc LmDesc_LmNull_8b = NullRow<int64_t, LmDesc_o_8b>("LmNull_8b", "LmNULL_8B_T", "%I64d");
constinit LmTypeDesc LmDesc_LmNull_u8b = NullRow<uint64_t, LmDesc_o_u8b>("LmNull_u8b", "LmNULL_U8B_T", "%I64u");
