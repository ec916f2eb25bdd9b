// LmRef (id 17): a reference to an object of any database, with the class of the
// target; and LmLocalRef, a reference within the current database, which has no id
// and goes through the LmRef routines with a databaseId of 0. In memory 16 bytes; on
// disk 14: blockId, low, high, databaseId, classNumber in the byte order of the
// format. The version is not stored.
#include "idcommon.h"

namespace {

// The format of PrintToLmString and ScanFromLmString when none is given; the slots
// take the longer one, which shows the version too.
const char* const kRefFormat = "(%D:%H-%L#%B, %C)";
const char* const kRefSlotFormat = "(%D:%H-%L#%B,%Cv%V)";
const char* const kLocalRefFormat = "(%H-%L#%B,%C)";

LmRef Read(const void* p) {
    LmRef v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

// The three-way order of two identities, as LmObjId's operator!= gives it.
int IdentityOrder(uint16_t high1, uint32_t low1, uint16_t high2, uint32_t low2) {
    if (high1 != high2) return static_cast<int>(high1) - static_cast<int>(high2);
    if (low1 != low2) return low1 < low2 ? -1 : 1;
    return 0;
}

}  // namespace

static_assert(sizeof(LmRef) == 16 && sizeof(LmLocalRef) == 16, "the memory length of id 17");

LmRef& LmRef::operator=(const LmObjId& id) {
    blockId = id.blockId;
    low = id.low;
    high = id.high;
    return *this;
}

LmRef& LmRef::operator=(const LmClassId& cls) {
    classNumber = cls.classNumber;
    version = cls.version;
    return *this;
}

LmRef& LmRef::operator=(const LmLocalRef& local) {
    blockId = local.blockId;
    low = local.low;
    high = local.high;
    databaseId = 0;
    classNumber = local.classNumber;
    version = local.version;
    return *this;
}

LmRef& LmRef::operator=(unsigned short database) {
    databaseId = database;
    return *this;
}

int LmRef::operator!=(const LmRef& other) const {
    const int order = IdentityOrder(high, low, other.high, other.low);
    if (order != 0) return order;
    if (databaseId != other.databaseId) return databaseId < other.databaseId ? -1 : 1;
    return 0;
}

int LmRef::IsValid() const { return (low != 0 || high != 0) && classNumber != 0 && databaseId < 65535 ? 1 : 0; }

int LmRef::IsValidOriginId() const {
    return (low != 0 || high != 0) && (databaseId > 65534 || classNumber != 0) ? 1 : 0;
}

int LmRef::SetNullValue() { return SetNull(this); }

LmString& LmRef::PrintToLmString(LmString& out, const char* format) const {
    return PrintToString(out, const_cast<LmRef*>(this), format != nullptr ? format : kRefFormat, 1);
}

LmRef* LmRef::ScanFromLmString(const LmString& text, const char* format) {
    ScanFromString(this, const_cast<LmString&>(text), format != nullptr ? format : kRefFormat, 1);
    return this;
}

// ---- Slots. ----

void* LmRef::Create(unsigned count) { return lmidentity::CreateRecords<LmRef>(count); }
void* LmRef::Delete(void* value, unsigned) { return lmidentity::DeleteRecords(value); }
void LmRef::Constructor(void* array, unsigned count, unsigned) { lmidentity::ConstructRecords<LmRef>(array, count); }
void LmRef::Destructor(void*, unsigned, unsigned) {}
void LmRef::Assignment(void* dest, void* src, unsigned count, int replicate) {
    lmidentity::AssignRecords<LmRef>(dest, src, count, replicate);
}
void LmRef::Copy(void* dest, void* src, unsigned count, int replicate) {
    lmidentity::AssignRecords<LmRef>(dest, src, count, replicate);
}

unsigned LmRef::Store(void* dest, const void* src, unsigned char format, unsigned count) {
    auto* to = static_cast<unsigned char*>(dest);
    const auto* from = static_cast<const unsigned char*>(src);
    for (unsigned i = 0; i < count; ++i, to += DiskSize, from += sizeof(LmRef)) {
        LongStore(to, from, format, 2);           // blockId, low
        ShortStore(to + 8, from + 8, format, 3);  // high, databaseId, classNumber
    }
    return count * DiskSize;
}

unsigned LmRef::Load(void* dest, const void* src, unsigned char format, unsigned count) {
    auto* to = static_cast<unsigned char*>(dest);
    const auto* from = static_cast<const unsigned char*>(src);
    for (unsigned i = 0; i < count; ++i, to += sizeof(LmRef), from += DiskSize) {
        LongStore(to, from, format, 2);
        ShortStore(to + 8, from + 8, format, 3);
        std::memset(to + 14, 0, 2);  // the version is not on disk
    }
    return count * DiskSize;
}

unsigned LmRef::NullSizeGet(unsigned count) { return DiskSize * count; }
unsigned LmRef::SizeGet(const void*, unsigned char, unsigned char, unsigned count) { return DiskSize * count; }
unsigned LmRef::SizeGetFromMemFile(MemFile*, unsigned char, unsigned count) { return DiskSize * count; }

unsigned LmRef::Translate(void* dest, unsigned char destFormat, unsigned destLen, void* src, unsigned char srcFormat,
                          unsigned srcLen, unsigned count) {
    return TranslateByForm<sizeof(LmRef), Store, Load>(
        dest, destFormat, destLen, src, srcFormat, srcLen, count,
        [](void* d, const void* s, unsigned n) { Assignment(d, const_cast<void*>(s), n, 0); });
}

// Format 8: by operator!=, where databaseId ranks last. Any other: the bytes 11 to 4,
// from 11 down, whatever the byte order, so that on disk databaseId ranks first.
int LmRef::Compare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short,
                   unsigned count, int& status) {
    if (format == LmFormatMemory) {
        return lmidentity::CompareLoop<sizeof(LmRef)>(
            len1, value1, len2, value2, count, status,
            [](const unsigned char* a, const unsigned char* b) { return Read(a) != Read(b); });
    }
    return lmidentity::CompareLoop<DiskSize>(
        len1, value1, len2, value2, count, status, [](const unsigned char* a, const unsigned char* b) {
            return lmidentity::FirstByteDifference(lmidentity::Little64(a + 4), lmidentity::Little64(b + 4));
        });
}

// The XOR of databaseId, high and low of every element, read least significant byte
// first in every form.
unsigned LmRef::Hash(unsigned char format, unsigned len, void* value, unsigned count, int& status) {
    const auto word = [](const unsigned char* p) {
        return static_cast<uint32_t>(lmidentity::Little16(p + 10) ^ lmidentity::Little16(p + 8)) ^
               lmidentity::Little32(p + 4);
    };
    if (format == LmFormatMemory) return lmidentity::HashLoop<sizeof(LmRef)>(len, value, count, status, word);
    return lmidentity::HashLoop<DiskSize>(len, value, count, status, word);
}

LmTypeConvertData* LmRef::ConvertTo(void* value, unsigned count) {
    return lmidentity::ConvertToText<LmRef>(LmDesc_LmRef, value, count);
}
void* LmRef::ConvertFrom(LmTypeConvertData* data, unsigned count) {
    return lmidentity::ConvertFromText<LmRef>(LmDesc_LmRef, data, count);
}
void* LmRef::DefaultValue(unsigned count, int asNull) {
    return lmidentity::DefaultFromTextOrNull<LmRef>(count, asNull);
}

int LmRef::IsNull(void* value) { return Read(value).IsNullValue(); }
int LmRef::SetNull(void* value) {
    std::memset(value, 0, 10);  // blockId, low, high
    return 0;
}

LmString& LmRef::PrintToString(LmString& out, void* value, const char* format, unsigned) {
    return lmidentity::PrintIdentity(out, value, IsNull(value) != 0, format != nullptr ? format : kRefSlotFormat,
                                     lmidentity::RefLanguage);
}
void* LmRef::ScanFromString(void* value, LmString& text, const char* format, unsigned) {
    return lmidentity::ScanIdentity(value, text, format != nullptr ? format : kRefSlotFormat, lmidentity::RefLanguage);
}

int LmRef::GetValue(void* value, unsigned, unsigned char format, unsigned char mode) {
    if (format != LmFormatMemory) return LM_ERR_NOT_SUPPORTED;
    auto* v = static_cast<LmRef*>(value);
    switch (mode) {
        case 2:
            std::memset(value, 0, sizeof(LmRef));
            return LM_OK;
        case 'O':
            return LM_OK;
        case 'M':
        case 'N': {
            LmObjId next{v->blockId, v->low, v->high, 0};
            ++next;
            if (IdentityOrder(next.high, next.low, v->high, v->low) <= 0) return LM_ERR_NO_NEXT_VALUE;
            v->low = next.low;
            v->high = next.high;
            return LM_OK;
        }
        default:
            return LM_ERR_NOT_SUPPORTED;
    }
}

constinit LmTypeDesc LmDesc_LmRef = IdentityRow<LmRef>("LmRef", "LmREF_T", "(%D:%H-%L#%B, %C)", LmRef::GetValue);

// ---- LmLocalRef. ----

LmLocalRef& LmLocalRef::operator=(const LmClassId& cls) {
    classNumber = cls.classNumber;
    version = cls.version;
    return *this;
}

LmLocalRef& LmLocalRef::operator=(const LmObjId& id) {
    blockId = id.blockId;
    low = id.low;
    high = id.high;
    return *this;
}

LmLocalRef& LmLocalRef::operator=(const LmRef& ref) {
    blockId = ref.blockId;
    low = ref.low;
    high = ref.high;
    classNumber = ref.classNumber;
    version = ref.version;
    return *this;
}

int LmLocalRef::operator!=(const LmLocalRef& other) const { return IdentityOrder(high, low, other.high, other.low); }

int LmLocalRef::operator!=(const LmRef& ref) const {
    const int order = IdentityOrder(high, low, ref.high, ref.low);
    if (order != 0) return order;
    return ref.databaseId != 0 ? -1 : 0;
}

LmString& LmLocalRef::PrintToLmString(LmString& out, const char* format) const {
    LmRef ref{};
    ref = *this;
    return LmRef::PrintToString(out, &ref, format != nullptr ? format : kLocalRefFormat, 1);
}

LmLocalRef* LmLocalRef::ScanFromLmString(const LmString& text, const char* format) {
    LmRef ref{};
    LmRef::ScanFromString(&ref, const_cast<LmString&>(text), format != nullptr ? format : kLocalRefFormat, 1);
    *this = ref;
    return this;
}
