// The handlers of LmIString (id 20) and LmCaseIString (id 21): life cycle of
// arrays, the array disk form and its sort-form keys, comparison in memory and in
// place on stored bytes, the constant hash, printing, scanning and conversion; and
// the two descriptor records.
//
// Disk form of an array: a flag byte ('@' for plain text, 1 for text stored under a
// special format, 0xC0 for a key in sort form), the byte count T of the strings in
// store byte order, then the strings back to back, each closed by a zero byte.
#include <cstdint>
#include <cstring>
#include <new>
#include <vector>

#include "fixedsort.h"
#include "lmbounds.h"
#include "lmcompare.h"
#include "lmconvert.h"
#include "lmistring.h"
#include "lmslots.h"
#include "lmstrslots.h"

using namespace lmfixed;

namespace {

static_assert(sizeof(LmIString) == 16 && sizeof(LmCaseIString) == 16, "an array steps by 16 bytes");

constexpr unsigned kHeader = 3;       // flag byte and T
constexpr size_t kCountWord = 8;      // the count word in front of a block of several strings
constexpr unsigned kPartLimit = 254;  // a cut operand with this many bytes present is not compared

inline void PutWord(unsigned char* p, unsigned word, unsigned char format) {
    const auto w = static_cast<uint16_t>(word);
    ShortStoreOne(p, &w, static_cast<unsigned char>(format & 15u));
}

// ---- Life cycle, as for LmString: one value alone from the allocator, several in a
// block with the count in front. ----

template <class T>
void* FixedCreate(unsigned count) {
    if (count <= 1) {
        void* raw = ::operator new(sizeof(T), std::nothrow);
        return raw != nullptr ? new (raw) T() : nullptr;
    }
    size_t bytes = 0;
    if (__builtin_mul_overflow(static_cast<size_t>(count), sizeof(T), &bytes) ||
        __builtin_add_overflow(bytes, kCountWord, &bytes)) {
        bytes = SIZE_MAX;  // refused by the allocator
    }
    auto* block = static_cast<unsigned char*>(::operator new(bytes, std::nothrow));
    if (block == nullptr) return nullptr;
    const uint64_t n = count;
    std::memcpy(block, &n, sizeof n);
    auto* values = reinterpret_cast<T*>(block + kCountWord);
    for (unsigned i = 0; i < count; ++i) new (values + i) T();
    return values;
}

template <class T>
void* FixedDelete(void* value, unsigned count) {
    if (value == nullptr) return nullptr;
    auto* values = static_cast<T*>(value);
    if (count > 1) {
        unsigned char* block = static_cast<unsigned char*>(value) - kCountWord;
        uint64_t n = 0;
        std::memcpy(&n, block, sizeof n);
        for (uint64_t i = n; i > 0; --i) values[i - 1].~T();
        ::operator delete(block);
    } else {
        values->~T();
        ::operator delete(value);
    }
    return nullptr;
}

template <class T>
void FixedConstructor(void* array, unsigned count, unsigned) {
    for (unsigned i = 0; i < count; ++i) new (static_cast<T*>(array) + i) T();
}

template <class T>
void FixedDestructor(void* array, unsigned count, unsigned) {
    for (unsigned i = 0; i < count; ++i) static_cast<T*>(array)[i].~T();
}

template <class T>
void FixedAssignment(void* dest, void* src, unsigned count, int single) {
    auto* to = static_cast<T*>(dest);
    const auto* from = static_cast<const T*>(src);
    for (unsigned i = 0; i < count; ++i) to[i] = single != 0 ? from[0] : from[i];
}

template <class T>
void FixedCopy(void* dest, void* src, unsigned count, int single) {
    auto* to = static_cast<T*>(dest);
    const auto* from = static_cast<const T*>(src);
    for (unsigned i = 0; i < count; ++i) new (to + i) T(single != 0 ? from[0] : from[i]);
}

unsigned FixedNullSizeGet(unsigned count) { return count + kHeader; }

// ---- The strings of a stored array. ----

// The strings region of a stored array: T as stored, and the bytes of it that can
// be read (bounded by a length the caller gave, 0 for none).
struct StoredArray {
    const unsigned char* strings;
    unsigned char flag;
    unsigned total;    // T
    unsigned present;  // bytes of the region that can be read
};

// False when not even the header can be read.
bool ReadArray(const void* src, unsigned length, unsigned char format, StoredArray& a) {
    if (length != 0 && length < kHeader) return false;
    const auto* p = static_cast<const unsigned char*>(src);
    a.flag = p[0];
    a.total = ReadWord(p + 1, format);
    a.strings = p + kHeader;
    a.present = length != 0 && length - kHeader < a.total ? length - kHeader : a.total;
    return true;
}

// Bytes of the string at `at` in a region of `end` bytes, without its zero.
inline unsigned StringBytes(const unsigned char* region, unsigned at, unsigned end) {
    return at < end ? static_cast<unsigned>(strnlen(reinterpret_cast<const char*>(region + at), end - at)) : 0;
}

// ---- Store, load and sizes. ----

template <class T>
unsigned FixedStore(void* dest, const void* src, unsigned char format, unsigned count) {
    auto* out = static_cast<unsigned char*>(dest);
    const auto* values = static_cast<const T*>(src);
    // LmCaseIString marks any format flag; LmIString only the key bit.
    const unsigned flagBits = kFolded<T> ? 0xF0u : 0x80u;
    unsigned at = kHeader;
    for (unsigned i = 0; i < count; ++i) {
        const unsigned n = values[i].Len();
        if (n != 0) std::memcpy(out + at, values[i].StrGet(), n);
        at += n;
        out[at++] = 0;
    }
    out[0] = (format & flagBits) != 0 ? 1 : LM_FIXED_STORED_PLAIN;
    PutWord(out + 1, at - kHeader, format);
    return at;
}

// Each string as by operator=; nothing is read beyond T. A string that T cuts is
// taken as far as it goes, and strings beyond T are empty.
template <class T>
unsigned LoadBounded(T* values, const StoredArray& a, unsigned count) {
    unsigned at = 0;
    for (unsigned i = 0; i < count; ++i) {
        const unsigned n = StringBytes(a.strings, at, a.present);
        values[i] = T(reinterpret_cast<const char*>(a.strings + at), n);
        at = at + n < a.present ? at + n + 1 : a.present;
    }
    return kHeader + at;
}

template <class T>
unsigned FixedLoad(void* dest, const void* src, unsigned char format, unsigned count) {
    StoredArray a{};
    ReadArray(src, 0, format, a);
    return LoadBounded(static_cast<T*>(dest), a, count);
}

template <class T>
unsigned FixedSizeGet(const void* value, unsigned char valueForm, unsigned char format, unsigned count) {
    if ((format & 0x88) == 0x88) return 0;
    const SortTable& table = TableOf(kFolded<T>);
    const bool toKey = (format & LM_STRFMT_ORDER) != 0;
    unsigned size = kHeader;
    if ((valueForm & LmFormatMemory) != 0) {
        const auto* values = static_cast<const T*>(value);
        for (unsigned i = 0; i < count; ++i) {
            const auto* text = reinterpret_cast<const unsigned char*>(values[i].StrGet());
            const unsigned n = values[i].Len();
            // Counted per character, one more for a second letter, and the zero.
            const bool sorted = toKey || (values[i].GetFlag() & LM_FIXED_SORT_FORM) != 0;
            size += (sorted ? static_cast<unsigned>(SortFormLength(table, text, n)) : n) + 1;
        }
        return size;
    }
    StoredArray a{};
    ReadArray(value, 0, format, a);
    if (!toKey && (a.flag & LM_FIXED_SORT_FORM) == 0) return size + a.total;
    for (unsigned i = 0; i < a.total; ++i) size += table.code[a.strings[i]].secondary >= kSecondLetter ? 2 : 1;
    return size;
}

unsigned FixedSizeGetFromMemFile(MemFile* file, unsigned char format, unsigned) {
    uint32_t granted = 0;
    const unsigned char* p = file->Seek(0, MemFile::FromCurrent, kHeader, granted);
    if (p == nullptr || granted < kHeader) return 0;
    return kHeader + ReadWord(p + 1, format);
}

// ---- Translate. ----

// Writes the sort form of each text, each closed by a zero, behind a header of the
// given flag; at most `targetLength` bytes in all. Answers the bytes written.
struct KeyWriter {
    unsigned char* out;
    unsigned capacity;  // bytes of the strings region
    unsigned at = 0;

    bool Add(const SortTable& table, const unsigned char* text, unsigned len) {
        if (at >= capacity) return false;
        at += static_cast<unsigned>(WriteSortForm(table, text, len, out + kHeader + at, capacity - at - 1));
        out[kHeader + at++] = 0;
        return true;
    }
    unsigned Close(unsigned char flag, unsigned char format) {
        out[0] = flag;
        PutWord(out + 1, at, format);
        return kHeader + at;
    }
};

// A disk image moves as it is: n = the smaller length; a shorter image is followed
// by zeros up to the target's length.
unsigned CopyImage(unsigned char* dest, unsigned targetLength, const unsigned char* src, unsigned sourceLength) {
    const unsigned n = targetLength < sourceLength ? targetLength : sourceLength;
    if (n < targetLength) std::memset(dest, 0, targetLength);
    if (n != 0) std::memcpy(dest, src, n);
    return n;
}

template <class T>
unsigned FixedTranslate(void* dest, unsigned char targetFormat, unsigned targetLength, void* src,
                        unsigned char sourceFormat, unsigned sourceLength, unsigned count) {
    const SortTable& table = TableOf(kFolded<T>);
    const bool toMemory = (targetFormat & LmFormatMemory) != 0;
    const bool fromMemory = (sourceFormat & LmFormatMemory) != 0;
    auto* out = static_cast<unsigned char*>(dest);
    if (toMemory && fromMemory) {
        FixedAssignment<T>(dest, src, count, 0);
        return count * static_cast<unsigned>(sizeof(T));
    }
    if (fromMemory) {
        const auto* values = static_cast<const T*>(src);
        if ((targetFormat & LM_STRFMT_ORDER) != 0) {
            if (targetLength < kHeader + 1) return 0;
            KeyWriter key{out, targetLength - kHeader};
            for (unsigned i = 0; i < count; ++i)
                if (!key.Add(table, reinterpret_cast<const unsigned char*>(values[i].StrGet()), values[i].Len())) break;
            return key.Close(LM_FIXED_STORED_KEY, targetFormat);
        }
        // The image is cut at the target's length, never written beyond it.
        const unsigned size =
            FixedSizeGet<T>(src, LmFormatMemory, static_cast<unsigned char>(targetFormat & 15u), count);
        if (size <= targetLength) {
            if (size < targetLength) std::memset(out, 0, targetLength);
            return FixedStore<T>(out, src, targetFormat, count);
        }
        std::vector<unsigned char> image(size);
        FixedStore<T>(image.data(), src, targetFormat, count);
        return CopyImage(out, targetLength, image.data(), size);
    }

    // A disk source: nothing is read beyond sourceLength (0: as far as T says).
    StoredArray a{};
    if (!ReadArray(src, sourceLength, sourceFormat, a)) return 0;
    const auto* bytes = static_cast<const unsigned char*>(src);
    if (toMemory) {
        auto* values = static_cast<T*>(dest);
        if ((a.flag & LM_FIXED_SORT_FORM) == 0) return LoadBounded(values, a, count);
        // A key goes back to a text through the tables.
        unsigned at = 0;
        for (unsigned i = 0; i < count; ++i) {
            const unsigned n = StringBytes(a.strings, at, a.present);
            std::vector<char> text(2 * static_cast<size_t>(n) + 1);
            TextFromSortForm(table, a.strings + at, n, text.data(), text.size());
            values[i] = text.data();
            at = at + n < a.present ? at + n + 1 : a.present;
        }
        return kHeader + at;
    }
    if ((targetFormat & LM_STRFMT_ORDER) == 0 || (a.flag & LM_FIXED_SORT_FORM) != 0)
        return CopyImage(out, targetLength, bytes, sourceLength != 0 ? sourceLength : kHeader + a.total);
    if (targetLength < kHeader + 1) return 0;
    KeyWriter key{out, targetLength - kHeader};
    for (unsigned at = 0, i = 0; i < count && at < a.present; ++i) {
        const unsigned n = StringBytes(a.strings, at, a.present);
        if (!key.Add(table, a.strings + at, n)) break;
        at += n + 1;
    }
    return key.Close(static_cast<unsigned char>(a.flag | LM_FIXED_STORED_KEY), targetFormat);
}

// ---- Comparison. ----

// One element of an operand: its text (terminated; null for a value without text in
// memory), its flag, the bytes present n and the total of the side from the
// element on.
struct Element {
    const char* text;
    unsigned char flag;
    int present;
    int total;
};

// A stored text that the bytes present do not close is copied and closed.
class Closed {
public:
    const char* Hold(const unsigned char* text, unsigned n, unsigned room) {
        if (n < room) return reinterpret_cast<const char*>(text);  // a zero lies within
        char* to = stack;
        if (n >= sizeof stack) {
            heap.assign(n + 1, 0);
            to = heap.data();
        }
        std::memcpy(to, text, n);
        to[n] = 0;
        return to;
    }

private:
    char stack[kPartLimit + 2];
    std::vector<char> heap;
};

// The plain byte comparison: the first unequal bytes as unsigned numbers, stopping
// at a terminator or at the limit (0 for none).
int Bytes(const char* l, const char* r, unsigned limit) {
    if (l == nullptr) return r == nullptr || *r == 0 ? 0 : -1;
    if (r == nullptr) return *l != 0 ? 1 : 0;
    const auto* a = reinterpret_cast<const unsigned char*>(l);
    const auto* b = reinterpret_cast<const unsigned char*>(r);
    for (unsigned i = 0; limit == 0 || i < limit; ++i) {
        if (a[i] != b[i]) return a[i] - b[i];
        if (a[i] == 0) break;
    }
    return 0;
}

inline bool IsOneStar(const char* text) { return text != nullptr && text[0] == '*' && text[1] == 0; }

// The decision for one element. `memory` is format 8, where nothing is clipped.
template <bool Folded>
int CompareElement(const Element& l, const Element& r, bool memory, bool wildcards, int& status) {
    const auto sort = Folded ? LmCaseIStringSortCompare : LmIStringSortCompare;
    const char* L = l.text;
    const char* R = r.text;
    const unsigned char fL = l.flag, fR = r.flag;
    const auto accentsL = static_cast<unsigned char>(fL | 0x20);
    const bool topL = (fL & LM_FIXED_SORT_FORM) != 0;
    const bool topR = (fR & LM_FIXED_SORT_FORM) != 0;
    const int n = l.present;
    const auto cut = static_cast<unsigned>(n - 1);  // the limit of a clipped operand
    const bool clipped = !memory && n != l.total && n < r.total;

    if (!wildcards) {
        const auto order = [&](unsigned limit) {
            return topL && topR ? Bytes(L, R, limit) : sort(L, R, limit, fL, fR);
        };
        if (!clipped) return order(0);
        status = LM_ERR_OUT_OF_DATA;
        return order(cut);
    }

    const int p = LmIStringFindWildcard(R);
    if (p < 0) {
        if (!topL) {
            const unsigned char first = Folded ? accentsL : fL;
            int result = sort(L, R, 0, first, fR);
            if (clipped) {
                status = LM_ERR_OUT_OF_DATA;
                if (result != 0) result = sort(L, R, cut, first, fR);
            }
            if (!Folded && result == 0 && status == LM_OK) result = Bytes(L, R, 0);
            return result;
        }
        if (topR) {
            int result = Bytes(L, R, 0);
            if (!memory && n <= r.total) {
                status = LM_ERR_OUT_OF_DATA;
                if (result != 0) result = Bytes(L, R, cut);
            }
            return result;
        }
        status = LM_ERR_OUT_OF_DATA;
        return sort(L, R, cut, fL, fR);
    }

    if (!topL) {
        // LmIString hands the flags over in the order left, right.
        const int match = Folded ? LmCaseIStringMatch(R, L, fR, fL) : LmIStringMatch(R, L, fL, fR);
        if (match != 0) return 0;
        if (p == 0) return 1;
        const int result = sort(L, R, static_cast<unsigned>(p), Folded ? accentsL : fL, fR);
        return result != 0 ? result : 1;
    }
    if (!Folded) {
        if (p != 0 || !IsOneStar(R)) status = LM_ERR_OUT_OF_DATA;
        return 0;
    }
    if (IsOneStar(R)) return 0;
    if (p >= l.total) {
        status = LM_ERR_OUT_OF_DATA;
        return sort(L, R, cut, fL, fR);
    }
    status = LM_ERR_OUT_OF_DATA;
    const int match = LmCaseIStringMatch(R, L, fR, fL);
    if (match == 0 && l.total != n && p > n - 1) return sort(L, R, cut, fL, fR);
    if (R[p + 1] != 0) return p == 0 ? 0 : sort(L, R, static_cast<unsigned>(p < n - 1 ? p : n - 1), fL, fR);
    if (match == 0 && p >= 1) {
        const int result = sort(L, R, static_cast<unsigned>(p), fL, fR);
        return result != 0 ? result : 1;
    }
    return match != 0 ? 0 : 1;
}

template <class T>
int FixedCompare(unsigned char format, unsigned length1, void* value1, unsigned length2, void* value2,
                 unsigned short option, unsigned count, int& status) {
    status = LM_OK;
    if (count == 0) return 0;
    if (option == LM_CMP_DEFAULT) option = LmString::GetDefaultCmpOp();
    const bool wildcards = LmWildcardsActive(option);
    int result = 0;

    if (format == LmFormatMemory) {
        const auto* a = static_cast<const T*>(value1);
        const auto* b = static_cast<const T*>(value2);
        for (unsigned i = 0; i < count && result == 0 && status == LM_OK; ++i) {
            const auto element = [](const T& v) {
                const int total = static_cast<int>(v.Len()) + 1;
                return Element{!v ? nullptr : v.StrGet(), v.GetFlag(), total, total};
            };
            result = CompareElement<kFolded<T>>(element(a[i]), element(b[i]), true, wildcards, status);
        }
        return result;
    }

    StoredArray x{}, y{};
    if (!ReadArray(value1, length1, format, x) || !ReadArray(value2, length2, format, y)) {
        status = LM_ERR_OUT_OF_DATA;
        return 0;
    }
    // Long keys are not compared in part.
    if ((x.present < x.total && x.present >= kPartLimit) || (y.present < y.total && y.present >= kPartLimit)) {
        status = LM_ERR_NOT_SUPPORTED;
        return -1;
    }
    Closed closed1, closed2;
    for (unsigned i = 0, at1 = 0, at2 = 0;;) {
        const unsigned n1 = StringBytes(x.strings, at1, x.present);
        const unsigned n2 = StringBytes(y.strings, at2, y.present);
        const Element l{closed1.Hold(x.strings + at1, n1, x.present - at1), x.flag, static_cast<int>(x.present - at1),
                        static_cast<int>(x.total - at1)};
        const Element r{closed2.Hold(y.strings + at2, n2, y.present - at2), y.flag, static_cast<int>(y.present - at2),
                        static_cast<int>(y.total - at2)};
        result = CompareElement<kFolded<T>>(l, r, false, wildcards, status);
        if (++i == count || result != 0 || status != LM_OK) return result;
        at1 += n1 + 1;
        at2 += n2 + 1;
        if (at1 >= x.present || at2 >= y.present) {
            status = LM_ERR_OUT_OF_DATA;
            return result;
        }
    }
}

// These two types deliberately do not hash: stored hashes depend on the constant.
unsigned FixedHash(unsigned char, unsigned, void*, unsigned, int& status) {
    status = LM_OK;
    return 0;
}

// ---- Text. ----

template <class T>
LmString& FixedPrintToString(LmString& out, void* value, const char* format, unsigned) {
    const T& v = *static_cast<const T*>(value);
    if (format == nullptr) format = "%s";
    const std::vector<char> text = FormatText(format, v.StrGet(), v.Len() + 512u + std::strlen(format));
    out = text.data();
    return out;
}

// The byte text of a string: 16-bit text is narrowed into the default 8-bit code set.
template <class T>
void AssignNarrow(T& value, const LmString& text) {
    if (text.IsWide() == 0) {
        value = text.StrGet();
        return;
    }
    LmString narrow(LmString::GetDefault8CodeSet(), text.GetLanguage());
    narrow += text;
    value = narrow.StrGet();
}

template <class T>
void* FixedScanFromString(void* value, LmString& text, const char*, unsigned) {
    if (value == nullptr) return nullptr;
    AssignNarrow(*static_cast<T*>(value), text);
    return value;
}

template <class T>
LmTypeConvertData* FixedConvertTo(void* value, unsigned count) {
    auto* strings = static_cast<LmString*>(LmDesc_LmString.Create(count));
    if (strings == nullptr) return nullptr;
    CreatedArray owned(strings, LmDesc_LmString.Delete, count);
    const auto* values = static_cast<const T*>(value);
    for (unsigned i = 0; i < count; ++i) {
        LmString text(LM_CODESET_NATIVE, 0);
        LmStringAssignRaw(text, values[i].StrGet(), LM_CODESET_NATIVE, 65535, LmFormatLittle);
        strings[i].SetCodeSet(LM_CODESET_NATIVE);
        strings[i] += text;
    }
    return owned.Wrap(LmSTRING_T);
}

template <class T>
void* FixedConvertFrom(LmTypeConvertData* data, unsigned count) {
    auto* values = static_cast<T*>(FixedCreate<T>(count));
    if (count == 0 || values == nullptr) return values;
    CreatedArray owned(values, FixedDelete<T>, count);
    for (unsigned i = 0; i < count; ++i) {
        const LmString* text = data != nullptr ? data->GetString(static_cast<int>(i)) : nullptr;
        if (text != nullptr && text->IsNullValue() == 0) AssignNarrow(values[i], *text);
    }
    return owned.Release();
}

template <class T>
constexpr LmTypeDesc FixedRow(const char* name, const char* idName, LmTypeCmpFunc cmp,
                              LmTypeEvalAndBoundFunc evalAndBound) {
    LmTypeDesc row = IllegalRow(name, idName, 16, 0, "%s");
    row.Create = FixedCreate<T>;
    row.Delete = FixedDelete<T>;
    row.Store = FixedStore<T>;
    row.Load = FixedLoad<T>;
    row.NullSizeGet = FixedNullSizeGet;
    row.SizeGet = FixedSizeGet<T>;
    row.SizeGetFromMemFile = FixedSizeGetFromMemFile;
    row.Cmp = cmp;
    row.EvalAndBound = evalAndBound;
    row.Hash = FixedHash;
    row.ConvertTo = FixedConvertTo<T>;
    row.ConvertFrom = FixedConvertFrom<T>;
    row.Constructor = FixedConstructor<T>;
    row.Destructor = FixedDestructor<T>;
    row.Assignment = FixedAssignment<T>;
    row.Copy = FixedCopy<T>;
    row.Translate = FixedTranslate<T>;
    row.PrintToString = FixedPrintToString<T>;
    row.ScanFromString = FixedScanFromString<T>;
    row.DefaultValue = DefaultValueFromText<FixedConvertFrom<T>>;
    return row;
}

}  // namespace

int LmIStringCompare(unsigned char format, unsigned length1, void* value1, unsigned length2, void* value2,
                     unsigned short option, unsigned count, int& status) {
    return FixedCompare<LmIString>(format, length1, value1, length2, value2, option, count, status);
}

int LmCaseIStringCompare(unsigned char format, unsigned length1, void* value1, unsigned length2, void* value2,
                         unsigned short option, unsigned count, int& status) {
    return FixedCompare<LmCaseIString>(format, length1, value1, length2, value2, option, count, status);
}

constinit LmTypeDesc LmDesc_LmIString =
    FixedRow<LmIString>("LmIString", "LmISTRING_T", LmIStringCompare, IStringEvalAndBound);
constinit LmTypeDesc LmDesc_LmCaseIString =
    FixedRow<LmCaseIString>("LmCaseIString", "LmCASEISTRING_T", LmCaseIStringCompare, CaseIStringEvalAndBound);
