// LmBlob (id 18): bytes that the type manager stores, compares and copies but never
// interprets, in three states (null, empty, bytes) that survive every operation and
// the disk form. The record and its bytes are two allocations from malloc.
//
// A disk image is page data and not trusted: Load reads nothing beyond the image's
// own total word, and Cmp, Hash and Translate read nothing beyond a length given.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

#include "idcommon.h"
#include "lmblob.h"
#include "lmbounds.h"
#include "lmtypemgr.h"
#include "scantext.h"

namespace {

constexpr uint32_t kNullLength = 0xFFFFFFFFu;  // the length word of a null element
constexpr int64_t kReuseSlack = 128;           // a kept buffer is at most this much too long
constexpr uint32_t kWord = 4;                  // the total and length words
const char* const kBlobFormat = "[BLOB,len=%L]";

// malloc, and the memory handler hears of a refusal.
void* Allocate(size_t n) {
    void* p = std::malloc(n);
    if (p == nullptr) LmCallMemoryHandler(n);
    return p;
}

LmBlobData* NewRecord(void* data, int32_t size) {
    auto* record = static_cast<LmBlobData*>(Allocate(sizeof(LmBlobData)));
    if (record != nullptr) {
        record->data = data;
        record->size = size;
    }
    return record;
}

void FreeRecord(LmBlobData* record) {
    if (record == nullptr) return;
    std::free(record->data);
    std::free(record);
}

// A record of n bytes (none for n 0 or below), copied from p when p is not null;
// null when memory is refused.
LmBlobData* RecordOf(const void* p, int32_t n) {
    if (n < 0) n = 0;
    void* bytes = nullptr;
    if (n != 0) {
        bytes = Allocate(static_cast<size_t>(n));
        if (bytes == nullptr) return nullptr;
        if (p != nullptr) std::memcpy(bytes, p, static_cast<size_t>(n));
    }
    LmBlobData* record = NewRecord(bytes, n);
    if (record == nullptr) std::free(bytes);
    return record;
}

// Gives the record a new buffer of n bytes holding its first `keep` bytes; false,
// and the record as it was, when memory is refused.
bool Rebuffer(LmBlobData* record, int32_t n, int32_t keep) {
    void* bytes = nullptr;
    if (n != 0) {
        bytes = Allocate(static_cast<size_t>(n));
        if (bytes == nullptr) return false;
        if (keep != 0) std::memcpy(bytes, record->data, static_cast<size_t>(keep));
    }
    std::free(record->data);
    record->data = bytes;
    record->size = n;
    return true;
}

// The reuse rule: a buffer of at least n and at most n + 128 bytes keeps its place;
// any other is given back for a new one of n bytes (none for n 0). p may lie in the
// record's own bytes.
void Refill(LmBlobData* record, const void* p, int32_t n) {
    if (record->data != nullptr && record->size >= n && record->size <= static_cast<int64_t>(n) + kReuseSlack) {
        if (n != 0) std::memmove(record->data, p, static_cast<size_t>(n));
        record->size = n;
        return;
    }
    void* bytes = nullptr;
    if (n != 0) {
        bytes = Allocate(static_cast<size_t>(n));
        if (bytes == nullptr) return;  // the old bytes stay
        std::memcpy(bytes, p, static_cast<size_t>(n));
    }
    std::free(record->data);
    record->data = bytes;
    record->size = n;
}

const unsigned char* Bytes(const LmBlobData* record) { return static_cast<const unsigned char*>(record->data); }

uint32_t ReadWord(const void* p, unsigned char format) {
    uint32_t v;
    LongStoreOne(&v, p, static_cast<unsigned char>(format & 15));
    return v;
}

void WriteWord(void* p, uint32_t v, unsigned char format) {
    LongStoreOne(p, &v, static_cast<unsigned char>(format & 15));
}

// The number text of the bytes, as atoi and atof read it.
std::string NumberText(const LmBlobData* record) {
    if (record == nullptr || record->size == 0) return std::string();
    return std::string(reinterpret_cast<const char*>(record->data), static_cast<size_t>(record->size));
}

}  // namespace

static_assert(sizeof(LmBlob) == 8, "the memory length of id 18");

// ---- Construction and assignment. ----

LmBlob::LmBlob() : blob(NewRecord(nullptr, 0)) {}
LmBlob::LmBlob(const LmBlob& other)
    : blob(other.blob != nullptr ? RecordOf(other.blob->data, other.blob->size) : nullptr) {}
LmBlob::LmBlob(int n) : blob(RecordOf(nullptr, n)) {}
LmBlob::LmBlob(const void* p, int n) : blob(p != nullptr ? RecordOf(p, n) : RecordOf(nullptr, 0)) {}
LmBlob::LmBlob(const char* text) : blob(AllocData(static_cast<int>(std::strlen(text)))) {
    if (blob != nullptr) std::memcpy(blob->data, text, static_cast<size_t>(blob->size));
}
LmBlob::~LmBlob() { FreeRecord(blob); }

LmBlobData* LmBlob::AllocData(int n) { return RecordOf(nullptr, n + 1); }

LmBlob& LmBlob::operator=(const LmBlob& other) {
    if (other.blob == blob) return *this;  // both null, or the same record
    if (other.blob == nullptr) {
        SetNullValue();
    } else if (blob == nullptr) {
        blob = RecordOf(other.blob->data, other.blob->size);
    } else {
        Refill(blob, other.blob->data, other.blob->size);
    }
    return *this;
}

LmBlob& LmBlob::operator=(const char* image) {
    int32_t n;
    std::memcpy(&n, image, sizeof n);
    if (n < 0) {
        SetNullValue();
    } else {
        SetTo(image + sizeof n, n);
    }
    return *this;
}

LmBlob::operator short() const { return static_cast<short>(std::atoi(NumberText(blob).c_str())); }
LmBlob::operator int() const { return std::atoi(NumberText(blob).c_str()); }
LmBlob::operator double() const { return std::atof(NumberText(blob).c_str()); }

// ---- Comparison. ----

int LmBlob::operator==(const LmBlob& other) const {
    if (blob == nullptr || other.blob == nullptr) return blob == other.blob ? 1 : 0;
    if (blob->size != other.blob->size) return 0;
    return blob->size == 0 || std::memcmp(blob->data, other.blob->data, static_cast<size_t>(blob->size)) == 0 ? 1 : 0;
}

int LmBlob::operator!=(const LmBlob& other) const {
    if (blob == nullptr) return other.blob == nullptr ? 0 : -2;
    if (other.blob == nullptr) return 2;
    const int32_t n = std::min(blob->size, other.blob->size);
    const int order = n > 0 ? std::memcmp(blob->data, other.blob->data, static_cast<size_t>(n)) : 0;
    if (order != 0) return order;
    return blob->size < other.blob->size ? -1 : (blob->size > other.blob->size ? 1 : 0);
}

// ---- Changes. ----

LmBlob& LmBlob::Append(const LmBlob& other) {
    if (other.blob != nullptr && other.blob->size > 0) Append(other.blob->data, other.blob->size);
    return *this;
}

LmBlob& LmBlob::Append(const void* p, int n) {
    if (n < 1 || p == nullptr) return *this;
    if (blob == nullptr) {
        blob = RecordOf(p, n);
        return *this;
    }
    const int64_t total = static_cast<int64_t>(blob->size) + n;
    if (total > INT32_MAX) {
        LmCallMemoryHandler(static_cast<size_t>(total));  // beyond what a blob can count
        return *this;
    }
    // p may lie in this blob's own bytes: the new buffer is filled before the old goes.
    auto* bytes = static_cast<unsigned char*>(Allocate(static_cast<size_t>(total)));
    if (bytes == nullptr) return *this;
    if (blob->size != 0) std::memcpy(bytes, blob->data, static_cast<size_t>(blob->size));
    std::memcpy(bytes + blob->size, p, static_cast<size_t>(n));
    std::free(blob->data);
    blob->data = bytes;
    blob->size = static_cast<int32_t>(total);
    return *this;
}

LmBlob LmBlob::CopyFrom(int start, int len) const {
    if (blob == nullptr || start < 0 || start > blob->size || len == 0) return LmBlob("");
    const int32_t rest = blob->size - start;
    const int32_t n = len < 0 || len > rest ? rest : len;
    if (start == 0 && n == blob->size) return LmBlob(*this);
    return LmBlob(Bytes(blob) + start, n);
}

void LmBlob::CopyTo(const LmBlob& source, int start, int len) {
    if (blob == nullptr || source.blob == nullptr || len < 1 || start < 0 || start > blob->size) return;
    const int32_t n = std::min({len, blob->size - start, source.blob->size});
    if (n > 0) std::memmove(static_cast<unsigned char*>(blob->data) + start, source.blob->data, static_cast<size_t>(n));
}

void LmBlob::Cut(int start, int len) {
    if (blob == nullptr || start < 0 || start > blob->size || len <= 0) return;
    const int32_t n = std::min(len, blob->size - start);
    if (start == 0 && n == blob->size) {
        Rebuffer(blob, 0, 0);  // all of it: the empty blob
        return;
    }
    const int32_t left = blob->size - n;
    auto* bytes = static_cast<unsigned char*>(Allocate(static_cast<size_t>(left)));
    if (bytes == nullptr) return;
    if (start != 0) std::memcpy(bytes, blob->data, static_cast<size_t>(start));
    if (left != start) std::memcpy(bytes + start, Bytes(blob) + start + n, static_cast<size_t>(left - start));
    std::free(blob->data);
    blob->data = bytes;
    blob->size = left;
}

void LmBlob::Destroy(LmBlob& other) {
    if (&other == this) return;
    FreeRecord(blob);
    blob = other.blob;
    if (other.blob != nullptr) other.blob = NewRecord(nullptr, 0);
}

void LmBlob::Expand(int n) {
    if (n < 0) n = 0;
    if (blob == nullptr) {
        blob = RecordOf(nullptr, n);
        return;
    }
    Rebuffer(blob, n, std::min(n, blob->size));
}

void LmBlob::Resize(unsigned n) {
    const int32_t m = n > static_cast<unsigned>(INT32_MAX) ? 0 : static_cast<int32_t>(n);  // negative as int: 0
    if (blob == nullptr) {
        blob = RecordOf(nullptr, m);
    } else if (m == 0) {
        if (blob->size != 0) Rebuffer(blob, 0, 0);
    } else if (m > blob->size) {
        Rebuffer(blob, m, blob->size);
    } else {
        blob->size = m;  // the buffer keeps its length
    }
}

int LmBlob::Search(const LmBlob& pattern) const {
    constexpr int kNotFound = 65535;
    if (blob == nullptr) return kNotFound;
    if (pattern.blob == nullptr || pattern.blob->size == 0) return 0;
    const int32_t n = pattern.blob->size;
    for (int32_t at = 0; at + n <= blob->size; ++at) {
        if (std::memcmp(Bytes(blob) + at, pattern.blob->data, static_cast<size_t>(n)) == 0) return at;
    }
    return kNotFound;
}

void* LmBlob::Seek(int pos, int len) const {
    if (blob == nullptr || len == 0 || pos < 0 || pos > blob->size) return nullptr;
    const int64_t end = static_cast<int64_t>(pos) + len;
    if (end > blob->size || end < 0 || blob->data == nullptr) return nullptr;
    return static_cast<unsigned char*>(blob->data) + pos;
}

int LmBlob::SetNullValue() {
    FreeRecord(blob);
    blob = nullptr;
    return 0;
}

void LmBlob::SetTo(const void* p, int n) {
    if (n < 0 || p == nullptr) n = 0;
    if (blob == nullptr) {
        blob = RecordOf(p, n);
    } else {
        Refill(blob, p, n);
    }
}

// ---- Slots. ----

void* LmBlob::Create(unsigned count) {
    auto* blobs = static_cast<LmBlob*>(Allocate(std::max(count, 1u) * sizeof(LmBlob)));
    if (blobs != nullptr)
        for (unsigned i = 0; i < count; ++i) new (blobs + i) LmBlob();
    return blobs;
}

void* LmBlob::Delete(void* value, unsigned count) {
    if (value == nullptr) return nullptr;
    auto* blobs = static_cast<LmBlob*>(value);
    for (unsigned i = 0; i < count; ++i) blobs[i].~LmBlob();
    std::free(value);
    return nullptr;
}

void LmBlob::Constructor(void* array, unsigned count, unsigned) {
    auto* blobs = static_cast<LmBlob*>(array);
    for (unsigned i = 0; i < count; ++i) new (blobs + i) LmBlob();
}

void LmBlob::Destructor(void* array, unsigned count, unsigned) {
    auto* blobs = static_cast<LmBlob*>(array);
    for (unsigned i = 0; i < count; ++i) blobs[i].SetNullValue();
}

void LmBlob::Assignment(void* dest, void* src, unsigned count, int replicate) {
    auto* to = static_cast<LmBlob*>(dest);
    const auto* from = static_cast<const LmBlob*>(src);
    for (unsigned i = 0; i < count; ++i) to[i] = from[replicate != 0 ? 0 : i];
}

// The targets are raw memory: each gets a new deep copy and nothing old is freed.
void LmBlob::Copy(void* dest, void* src, unsigned count, int replicate) {
    auto* to = static_cast<LmBlob*>(dest);
    const auto* from = static_cast<const LmBlob*>(src);
    for (unsigned i = 0; i < count; ++i) new (to + i) LmBlob(from[replicate != 0 ? 0 : i]);
}

unsigned LmBlob::Store(void* dest, const void* src, unsigned char format, unsigned count) {
    const auto* blobs = static_cast<const LmBlob*>(src);
    const uint32_t total = SizeGet(src, LmFormatMemory, format, count) - kWord;
    auto* out = static_cast<unsigned char*>(dest);
    WriteWord(out, total, format);
    out += kWord;
    for (unsigned i = 0; i < count; ++i) {
        const LmBlobData* record = blobs[i].blob;
        WriteWord(out, record != nullptr ? static_cast<uint32_t>(record->size) : kNullLength, format);
        out += kWord;
        if (record != nullptr && record->size > 0) {
            std::memcpy(out, record->data, static_cast<size_t>(record->size));
            out += record->size;
        }
    }
    return total + kWord;
}

// Every element is checked against the total word before it is read: a length word
// or bytes that would lie beyond it make the image corrupt (0), and the elements
// loaded before stay.
unsigned LmBlob::Load(void* dest, const void* src, unsigned char format, unsigned count) {
    auto* blobs = static_cast<LmBlob*>(dest);
    const auto* in = static_cast<const unsigned char*>(src);
    const uint32_t total = ReadWord(in, format);
    if (static_cast<int32_t>(total) < 0) return 0;
    uint64_t sum = 0;  // bytes of the elements behind the total word so far
    for (unsigned i = 0; i < count; ++i) {
        if (sum + kWord > total) return 0;
        const uint32_t length = ReadWord(in + kWord + sum, format);
        const unsigned char* bytes = in + kWord + sum + kWord;
        if (length == kNullLength) {
            blobs[i].SetNullValue();
            sum += kWord;
            continue;
        }
        sum += static_cast<uint64_t>(length) + kWord;
        if (static_cast<int32_t>(length) < 0 || sum > total) return 0;
        blobs[i].SetTo(bytes, static_cast<int>(length));
    }
    return total + kWord;
}

unsigned LmBlob::NullSizeGet(unsigned count) { return kWord * count; }

unsigned LmBlob::SizeGet(const void* value, unsigned char valueForm, unsigned char format, unsigned count) {
    if ((valueForm & 8) != 0) {
        const auto* blobs = static_cast<const LmBlob*>(value);
        uint32_t size = kWord;
        for (unsigned i = 0; i < count; ++i) size += kWord + static_cast<uint32_t>(blobs[i].Length());
        return size;
    }
    const uint32_t total = ReadWord(value, format);
    return (total == kNullLength ? 0 : total) + kWord;
}

unsigned LmBlob::SizeGetFromMemFile(MemFile* file, unsigned char format, unsigned) {
    uint32_t granted = 0;
    const unsigned char* at = file->Seek(0, MemFile::FromCurrent, kWord, granted);
    if (at == nullptr || granted < kWord) return 0;  // no total word left in the file
    return SizeGet(at, 0, format, 1);
}

// A length given bounds the image: an image that would not fit in it is not moved.
unsigned LmBlob::Translate(void* dest, unsigned char destFormat, unsigned destLen, void* src, unsigned char srcFormat,
                           unsigned srcLen, unsigned count) {
    const bool destMemory = (destFormat & 8) != 0;
    const bool srcMemory = (srcFormat & 8) != 0;
    if (!destMemory && srcMemory && destLen != 0 && SizeGet(src, srcFormat, destFormat, count) > destLen) return 0;
    if (destMemory && !srcMemory && srcLen != 0 &&
        (srcLen < kWord || SizeGet(src, srcFormat, srcFormat, count) > srcLen))
        return 0;
    return TranslateByForm<sizeof(LmBlob), Store, Load>(
        dest, destFormat, destLen, src, srcFormat, srcLen, count,
        [](void* d, const void* s, unsigned n) { Assignment(d, const_cast<void*>(s), n, 0); });
}

// Format 8: the XOR of the element sizes, null counting 0; the bytes do not enter.
// Any other: from the start of the image, the smaller of the size read at each
// position and what is left less 4, stepping by 4 and that size.
unsigned LmBlob::Hash(unsigned char format, unsigned len, void* value, unsigned count, int& status) {
    status = LM_OK;
    uint32_t h = 0;
    if (format == LmFormatMemory) {
        const auto* blobs = static_cast<const LmBlob*>(value);
        for (unsigned i = 0; i < count; ++i) h ^= static_cast<uint32_t>(blobs[i].Length());
        return h * LmIdentityHashMultiplier;
    }
    if (count == 0) return 0;
    const auto* p = static_cast<const unsigned char*>(value);
    uint64_t rest = len != 0 ? len : SizeGet(p, 0, format, 1);
    for (unsigned left = count; left != 0 && rest != 0; --left) {
        if (rest < kWord) {
            status = LM_ERR_OUT_OF_DATA;  // the next size word is cut
            break;
        }
        const uint32_t s = SizeGet(p, 0, format, 1);
        h ^= static_cast<uint32_t>(std::min<uint64_t>(s, rest - kWord));
        const uint64_t step = static_cast<uint64_t>(kWord) + s;
        rest = rest > step ? rest - step : 0;
        p += rest != 0 ? step : 0;
    }
    return h * LmIdentityHashMultiplier;
}

LmTypeConvertData* LmBlob::ConvertTo(void* value, unsigned count) {
    LmString* strings = ConvertStringsCreate(count);
    if (strings == nullptr) return nullptr;
    CreatedArray owned(strings, LmDesc_LmString.Delete, count);
    const auto* blobs = static_cast<const LmBlob*>(value);
    for (unsigned i = 0; i < count; ++i)
        if (blobs[i].IsNullValue() != 0) strings[i].SetNullValue();  // the bytes are not converted
    return owned.Wrap(LmSTRING_T);
}

// The texts are not taken: an element stays as Create made it, or is null.
void* LmBlob::ConvertFrom(LmTypeConvertData* data, unsigned count) {
    auto* blobs = static_cast<LmBlob*>(Create(count));
    if (blobs == nullptr) return nullptr;
    for (unsigned i = 0; i < count; ++i) {
        const LmString* text = data != nullptr ? data->GetString(static_cast<int>(i)) : nullptr;
        if (text == nullptr || text->IsNullValue() != 0) blobs[i].SetNullValue();
    }
    return blobs;
}

void* LmBlob::DefaultValue(unsigned count, int asNull) {
    return lmidentity::DefaultFromTextOrNull<LmBlob>(count, asNull);
}

int LmBlob::IsNull(void* value) { return static_cast<const LmBlob*>(value)->IsNullValue(); }
int LmBlob::SetNull(void* value) { return static_cast<LmBlob*>(value)->SetNullValue(); }

LmString& LmBlob::PrintToString(LmString& out, void* value, const char* format, unsigned) {
    const auto* b = static_cast<const LmBlob*>(value);
    if (b->IsNullValue() != 0) {
        out = LmTypeMgr::GetNullPrintString();
        return out;
    }
    std::string text;
    for (const char* f = format != nullptr ? format : kBlobFormat; *f != 0; ++f) {
        if (*f != '%') {
            text += *f;
        } else if (f[1] == 'L') {
            text += std::to_string(b->Length());
            ++f;
        } else if (f[1] != 0) {
            text += *++f;  // "%%" and any other: the character behind the '%'
        }
    }
    out += LmString(text.c_str());
    return out;
}

void* LmBlob::ScanFromString(void* value, LmString& text, const char*, unsigned) {
    if (value == nullptr) return nullptr;
    const ScanText narrow(text);
    const ScanText nullText(LmTypeMgr::GetNullPrintString());
    if (std::strcmp(narrow.Get(), nullText.Get()) == 0) static_cast<LmBlob*>(value)->SetNullValue();
    return value;
}

// ---- The compare slot. ----

int BlobCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short,
                unsigned count, int& status) {
    status = LM_OK;
    if (format == LmFormatMemory) {
        const auto* left = static_cast<const LmBlob*>(value1);
        const auto* right = static_cast<const LmBlob*>(value2);
        for (unsigned i = 0; i < count; ++i) {
            const int order = left[i] != right[i];
            if (order != 0) return order;
        }
        return 0;
    }
    if (count == 0) return 0;
    // What lies behind each total word: the length given less 4, or the total itself.
    const auto* p1 = static_cast<const unsigned char*>(value1);
    const auto* p2 = static_cast<const unsigned char*>(value2);
    int64_t rest1 = len1 != 0 ? static_cast<int64_t>(len1) - kWord : LmBlob::SizeGet(p1, 0, format, 1) - int64_t{kWord};
    int64_t rest2 = len2 != 0 ? static_cast<int64_t>(len2) - kWord : LmBlob::SizeGet(p2, 0, format, 1) - int64_t{kWord};
    uint64_t at1 = kWord, at2 = kWord;
    for (unsigned left = count; left != 0; --left) {
        if (rest1 < kWord || rest2 < kWord) {
            status = LM_ERR_OUT_OF_DATA;  // an operand ended while elements remain
            return 0;
        }
        const uint32_t length1 = ReadWord(p1 + at1, format);
        const uint32_t length2 = ReadWord(p2 + at2, format);
        at1 += kWord;
        at2 += kWord;
        rest1 -= kWord;
        rest2 -= kWord;
        if (length1 == kNullLength) {
            if (length2 != kNullLength) return -2;
            continue;  // a null takes no step beyond its length word
        }
        if (length2 == kNullLength) return 2;
        // The compare runs up to four bytes past the element, and the walk steps by its
        // length and 4 more: the disk form's own rule for arrays of several blobs.
        const int64_t a = static_cast<int64_t>(length1) + kWord;
        const int64_t b = static_cast<int64_t>(length2) + kWord;
        const int64_t n = std::min({a, b, rest1, rest2});
        int order = n > 0 ? std::memcmp(p1 + at1, p2 + at2, static_cast<size_t>(n)) : 0;
        if (order == 0) order = a < b ? -1 : (a > b ? 1 : 0);
        if (order != 0) return order;
        at1 += static_cast<uint64_t>(a);
        at2 += static_cast<uint64_t>(b);
        rest1 = std::max<int64_t>(rest1 - a, 0);
        rest2 = std::max<int64_t>(rest2 - b, 0);
    }
    return 0;
}

constinit LmTypeDesc LmDesc_LmBlob = [] {
    LmTypeDesc row = IllegalRow("LmBlob", "LmBLOB_T", sizeof(LmBlob), 0, "[BLOB,len=%L]");
    row.Create = LmBlob::Create;
    row.Delete = LmBlob::Delete;
    row.Store = LmBlob::Store;
    row.Load = LmBlob::Load;
    row.NullSizeGet = LmBlob::NullSizeGet;
    row.SizeGet = LmBlob::SizeGet;
    row.SizeGetFromMemFile = LmBlob::SizeGetFromMemFile;
    row.Cmp = BlobCompare;
    row.Hash = LmBlob::Hash;
    row.EvalAndBound = NoLineEvalAndBound;  // a blob has no line: the whole range, no bound
    row.ConvertTo = LmBlob::ConvertTo;
    row.ConvertFrom = LmBlob::ConvertFrom;
    row.Constructor = LmBlob::Constructor;
    row.Destructor = LmBlob::Destructor;
    row.Assignment = LmBlob::Assignment;
    row.Copy = LmBlob::Copy;
    row.Translate = LmBlob::Translate;
    row.IsNullValue = LmBlob::IsNull;
    row.SetNullValue = LmBlob::SetNull;
    row.PrintToString = LmBlob::PrintToString;
    row.ScanFromString = LmBlob::ScanFromString;
    row.DefaultValue = LmBlob::DefaultValue;
    return row;
}();
