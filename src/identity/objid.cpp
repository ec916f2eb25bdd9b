// LmObjId (id 15): the identity of an object within a database, a 48-bit number of
// high and low word, and the BlockId where it lies, which is no part of the identity.
// In memory 12 bytes, the last two of them room; on disk 10: blockId, low, high, each
// in the byte order of the format.
#include "idcommon.h"

namespace {

// The format of PrintToLmString, ScanFromLmString and of the slots when none is given.
const char* const kObjIdFormat = "(%H-%L#%B)";

LmObjId Read(const void* p) {
    LmObjId v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

// Greater by the identity: high first, then low.
bool IdentityAbove(const LmObjId& a, const LmObjId& b) {
    return a.high > b.high || (a.high == b.high && a.low > b.low);
}

}  // namespace

static_assert(sizeof(LmObjId) == 12, "the memory length of id 15");

int LmObjId::operator!=(const LmObjId& other) const {
    if (high != other.high) return static_cast<int>(high) - static_cast<int>(other.high);
    if (low != other.low) return low < other.low ? -1 : 1;
    return 0;
}

LmObjId& LmObjId::operator++() {
    if (++low == 0) ++high;
    return *this;
}

LmObjId& LmObjId::operator--() {
    if (low-- == 0) --high;
    return *this;
}

LmObjId& LmObjId::operator+=(short amount) {
    const uint32_t before = low;
    low += static_cast<uint32_t>(static_cast<int32_t>(amount));
    if (amount > 0 && low < before) ++high;
    if (amount < 0 && low > before) --high;
    return *this;
}

int LmObjId::SetNullValue() { return SetNull(this); }

void LmObjId::SetHighestValue() {
    low = 0xFFFFFFFFu;
    high = 0xFFFF;
    blockId = 0;
}

LmString& LmObjId::PrintToLmString(LmString& out, const char* format) const {
    return PrintToString(out, const_cast<LmObjId*>(this), format != nullptr ? format : kObjIdFormat, 1);
}

LmObjId* LmObjId::ScanFromLmString(const LmString& text, const char* format) {
    ScanFromString(this, const_cast<LmString&>(text), format != nullptr ? format : kObjIdFormat, 1);
    return this;
}

// ---- Slots. ----

void* LmObjId::Create(unsigned count) { return lmidentity::CreateRecords<LmObjId>(count); }
void* LmObjId::Delete(void* value, unsigned) { return lmidentity::DeleteRecords(value); }
void LmObjId::Constructor(void* array, unsigned count, unsigned) {
    lmidentity::ConstructRecords<LmObjId>(array, count);
}
void LmObjId::Destructor(void*, unsigned, unsigned) {}
void LmObjId::Assignment(void* dest, void* src, unsigned count, int replicate) {
    lmidentity::AssignRecords<LmObjId>(dest, src, count, replicate);
}
void LmObjId::Copy(void* dest, void* src, unsigned count, int replicate) {
    lmidentity::AssignRecords<LmObjId>(dest, src, count, replicate);
    auto* to = static_cast<LmObjId*>(dest);
    for (unsigned i = 0; i < count; ++i) to[i].room = 0;
}

unsigned LmObjId::Store(void* dest, const void* src, unsigned char format, unsigned count) {
    auto* to = static_cast<unsigned char*>(dest);
    const auto* from = static_cast<const unsigned char*>(src);
    for (unsigned i = 0; i < count; ++i, to += DiskSize, from += sizeof(LmObjId)) {
        LongStore(to, from, format, 2);  // blockId, low
        ShortStoreOne(to + 8, from + 8, format);
    }
    return count * DiskSize;
}

unsigned LmObjId::Load(void* dest, const void* src, unsigned char format, unsigned count) {
    auto* to = static_cast<unsigned char*>(dest);
    const auto* from = static_cast<const unsigned char*>(src);
    for (unsigned i = 0; i < count; ++i, to += sizeof(LmObjId), from += DiskSize) {
        LongStore(to, from, format, 2);
        ShortStoreOne(to + 8, from + 8, format);
    }
    return count * DiskSize;
}

unsigned LmObjId::NullSizeGet(unsigned count) { return DiskSize * count; }
unsigned LmObjId::SizeGet(const void*, unsigned char, unsigned char, unsigned count) { return DiskSize * count; }
unsigned LmObjId::SizeGetFromMemFile(MemFile*, unsigned char, unsigned count) { return DiskSize * count; }

unsigned LmObjId::Translate(void* dest, unsigned char destFormat, unsigned destLen, void* src, unsigned char srcFormat,
                            unsigned srcLen, unsigned count) {
    return TranslateByForm<sizeof(LmObjId), Store, Load>(
        dest, destFormat, destLen, src, srcFormat, srcLen, count,
        [](void* d, const void* s, unsigned n) { Assignment(d, const_cast<void*>(s), n, 0); });
}

// Format 8: by operator!=. Any other: the bytes 9 to 4, from 9 down, whatever the
// byte order; the difference of the first unequal pair.
int LmObjId::Compare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short,
                     unsigned count, int& status) {
    if (format == LmFormatMemory) {
        return lmidentity::CompareLoop<sizeof(LmObjId)>(
            len1, value1, len2, value2, count, status,
            [](const unsigned char* a, const unsigned char* b) { return Read(a) != Read(b); });
    }
    return lmidentity::CompareLoop<DiskSize>(
        len1, value1, len2, value2, count, status, [](const unsigned char* a, const unsigned char* b) {
            const auto key = [](const unsigned char* p) {
                return static_cast<uint64_t>(lmidentity::Little16(p + 8)) << 32 | lmidentity::Little32(p + 4);
            };
            return lmidentity::FirstByteDifference(key(a), key(b));
        });
}

// The XOR of high and low of every element, read least significant byte first in
// every form, so an image in LmFormatBig hashes differently.
unsigned LmObjId::Hash(unsigned char format, unsigned len, void* value, unsigned count, int& status) {
    const auto word = [](const unsigned char* p) {
        return static_cast<uint32_t>(lmidentity::Little16(p + 8)) ^ lmidentity::Little32(p + 4);
    };
    if (format == LmFormatMemory) return lmidentity::HashLoop<sizeof(LmObjId)>(len, value, count, status, word);
    return lmidentity::HashLoop<DiskSize>(len, value, count, status, word);
}

LmTypeConvertData* LmObjId::ConvertTo(void* value, unsigned count) {
    return lmidentity::ConvertToText<LmObjId>(LmDesc_LmObjId, value, count);
}
void* LmObjId::ConvertFrom(LmTypeConvertData* data, unsigned count) {
    return lmidentity::ConvertFromText<LmObjId>(LmDesc_LmObjId, data, count);
}
void* LmObjId::DefaultValue(unsigned count, int asNull) {
    return lmidentity::DefaultFromTextOrNull<LmObjId>(count, asNull);
}

int LmObjId::IsNull(void* value) { return Read(value).IsNullValue(); }
int LmObjId::SetNull(void* value) {
    std::memset(value, 0, DiskSize);  // blockId, low, high
    return 0;
}

LmString& LmObjId::PrintToString(LmString& out, void* value, const char* format, unsigned) {
    return lmidentity::PrintIdentity(out, value, IsNull(value) != 0, format != nullptr ? format : kObjIdFormat,
                                     lmidentity::ObjIdLanguage);
}
void* LmObjId::ScanFromString(void* value, LmString& text, const char* format, unsigned) {
    return lmidentity::ScanIdentity(value, text, format != nullptr ? format : kObjIdFormat, lmidentity::ObjIdLanguage);
}

int LmObjId::GetValue(void* value, unsigned, unsigned char format, unsigned char mode) {
    if (format != LmFormatMemory) return LM_ERR_NOT_SUPPORTED;
    auto* v = static_cast<LmObjId*>(value);
    switch (mode) {
        case 2:
            std::memset(value, 0, sizeof(LmObjId));
            return LM_OK;
        case 'O':
            return LM_OK;
        case 'M':
        case 'N': {
            LmObjId next = Read(value);
            ++next;
            if (!IdentityAbove(next, *v)) return LM_ERR_NO_NEXT_VALUE;
            v->low = next.low;
            v->high = next.high;
            return LM_OK;
        }
        default:
            return LM_ERR_NOT_SUPPORTED;
    }
}

constinit LmTypeDesc LmDesc_LmObjId = IdentityRow<LmObjId>("LmObjId", "LmOBJID_T", "(%H-%L#%B)", LmObjId::GetValue);
