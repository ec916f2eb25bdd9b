// LmClassId (id 16): a class of the schema and its version, two 16-bit words. The
// null value is both words 0xFFFF, and it sorts below every other value in memory
// and on disk. Its disk form is the two words in the byte order of the format.
#include "idcommon.h"

namespace {

// The format of PrintToLmString, ScanFromLmString and of the slots when none is given.
const char* const kClassIdFormat = "(%Cv%V)";

LmClassId Read(const void* p) {
    LmClassId v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

bool AllOnes(const unsigned char* p) { return lmidentity::Little32(p) == 0xFFFFFFFFu; }

}  // namespace

static_assert(sizeof(LmClassId) == 4, "the memory length of id 16");

int LmClassId::operator!=(const LmClassId& other) const {
    if (IsNullValue() != 0) return other.IsNullValue() != 0 ? 0 : -1;
    if (other.IsNullValue() != 0) return 1;
    if (classNumber != other.classNumber) return classNumber < other.classNumber ? -1 : 1;
    if (version != other.version) return version < other.version ? -1 : 1;
    return 0;
}

int LmClassId::operator>(const LmClassId& other) const { return (*this != other) > 0 ? 1 : 0; }

int LmClassId::SetNullValue() {
    classNumber = 0xFFFF;
    version = 0xFFFF;
    return 0;
}

LmString& LmClassId::PrintToLmString(LmString& out, const char* format) const {
    return PrintToString(out, const_cast<LmClassId*>(this), format != nullptr ? format : kClassIdFormat, 1);
}

LmClassId* LmClassId::ScanFromLmString(const LmString& text, const char* format) {
    ScanFromString(this, const_cast<LmString&>(text), format != nullptr ? format : kClassIdFormat, 1);
    return this;
}

// ---- Slots. ----

void* LmClassId::Create(unsigned count) { return lmidentity::CreateRecords<LmClassId>(count); }
void* LmClassId::Delete(void* value, unsigned) { return lmidentity::DeleteRecords(value); }
void LmClassId::Constructor(void* array, unsigned count, unsigned) {
    lmidentity::ConstructRecords<LmClassId>(array, count);
}
void LmClassId::Destructor(void*, unsigned, unsigned) {}
void LmClassId::Assignment(void* dest, void* src, unsigned count, int replicate) {
    lmidentity::AssignRecords<LmClassId>(dest, src, count, replicate);
}
void LmClassId::Copy(void* dest, void* src, unsigned count, int replicate) {
    lmidentity::AssignRecords<LmClassId>(dest, src, count, replicate);
}

// Memory and disk hold the same two words; only their byte order may differ.
unsigned LmClassId::Store(void* dest, const void* src, unsigned char format, unsigned count) {
    return ShortStore(dest, src, format, 2 * count);
}
unsigned LmClassId::Load(void* dest, const void* src, unsigned char format, unsigned count) {
    return ShortStore(dest, src, format, 2 * count);
}

unsigned LmClassId::NullSizeGet(unsigned count) { return DiskSize * count; }
unsigned LmClassId::SizeGet(const void*, unsigned char, unsigned char, unsigned count) { return DiskSize * count; }
unsigned LmClassId::SizeGetFromMemFile(MemFile*, unsigned char, unsigned count) { return DiskSize * count; }

unsigned LmClassId::Translate(void* dest, unsigned char destFormat, unsigned destLen, void* src,
                              unsigned char srcFormat, unsigned srcLen, unsigned count) {
    return TranslateByForm<sizeof(LmClassId), Store, Load>(
        dest, destFormat, destLen, src, srcFormat, srcLen, count,
        [](void* d, const void* s, unsigned n) { Assignment(d, const_cast<void*>(s), n, 0); });
}

// Format 8: by operator!=. Any other: the bytes 1, 0, 3, 2 in this order, whatever
// the byte order; a difference then becomes -1 if the first element of the left
// operand is all ones, else 1 if the first of the right one is.
int LmClassId::Compare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short,
                       unsigned count, int& status) {
    if (format == LmFormatMemory) {
        return lmidentity::CompareLoop<sizeof(LmClassId)>(
            len1, value1, len2, value2, count, status,
            [](const unsigned char* a, const unsigned char* b) { return Read(a) != Read(b); });
    }
    const auto* left = static_cast<const unsigned char*>(value1);
    const auto* right = static_cast<const unsigned char*>(value2);
    return lmidentity::CompareLoop<DiskSize>(
        len1, value1, len2, value2, count, status, [left, right](const unsigned char* a, const unsigned char* b) {
            const auto key = [](const unsigned char* p) {
                return static_cast<uint64_t>(lmidentity::Little16(p)) << 16 | lmidentity::Little16(p + 2);
            };
            const int d = lmidentity::FirstByteDifference(key(a), key(b));
            if (d == 0) return 0;
            if (AllOnes(left)) return -1;
            return AllOnes(right) ? 1 : d;
        });
}

// The XOR of classNumber and version of every element, read least significant byte
// first in every form.
unsigned LmClassId::Hash(unsigned char, unsigned len, void* value, unsigned count, int& status) {
    return lmidentity::HashLoop<DiskSize>(len, value, count, status, [](const unsigned char* p) {
        return static_cast<uint32_t>(lmidentity::Little16(p) ^ lmidentity::Little16(p + 2));
    });
}

LmTypeConvertData* LmClassId::ConvertTo(void* value, unsigned count) {
    return lmidentity::ConvertToText<LmClassId>(LmDesc_LmClassId, value, count);
}
void* LmClassId::ConvertFrom(LmTypeConvertData* data, unsigned count) {
    return lmidentity::ConvertFromText<LmClassId>(LmDesc_LmClassId, data, count);
}
void* LmClassId::DefaultValue(unsigned count, int asNull) {
    return lmidentity::DefaultFromTextOrNull<LmClassId>(count, asNull);
}

int LmClassId::IsNull(void* value) { return Read(value).IsNullValue(); }
int LmClassId::SetNull(void* value) {
    std::memset(value, 0xFF, sizeof(LmClassId));
    return 0;
}

LmString& LmClassId::PrintToString(LmString& out, void* value, const char* format, unsigned) {
    return lmidentity::PrintIdentity(out, value, IsNull(value) != 0, format != nullptr ? format : kClassIdFormat,
                                     lmidentity::ClassIdLanguage);
}
void* LmClassId::ScanFromString(void* value, LmString& text, const char* format, unsigned) {
    return lmidentity::ScanIdentity(value, text, format != nullptr ? format : kClassIdFormat,
                                    lmidentity::ClassIdLanguage);
}

constinit LmTypeDesc LmDesc_LmClassId = IdentityRow<LmClassId>("LmClassId", "LmCLID_T", "(%Cv%V)", RefuseGetValue);
