// The disk forms of LmString and the one function that moves strings between memory
// and any of them.
//
// Current form, one record per string: the length word L (bytes behind it, in store
// byte order), code set, language, the characters (16-bit units in store byte order)
// and 00 FF, L + 2 bytes in all. The last byte is 0xFF in every byte order; the old
// form ends in 0x00, and that byte is all that tells the two apart.
// Old form (legacy table): one length word T for a whole array of texts, each closed
// by a zero byte; no labels, no 16-bit characters.
// Order form (index keys): the shape of a record with code set 254, the collation
// family of the text as language (top bit: the text changed family and the key was
// cut there) and order words instead of characters. A key cut at a capacity of 256
// bytes or less has no 00 FF, yet its L counts them.
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "lmchar.h"
#include "lmstrslots.h"

namespace {

constexpr unsigned char kClosing[2] = {0x00, 0xFF};  // the last two bytes of a record, in every byte order
constexpr unsigned kKeyBufferBytes = 260;            // the local copy of a truncated key, its zero included
constexpr unsigned kCutKeyCapacity = 256;            // keys built into at most this many bytes are cut short
constexpr unsigned kUnknownRecord = 65535;           // size assumed for a record behind the end of a MemFile
constexpr unsigned kMemoryStringBytes = 16;          // an LmString in memory

// "oldIndexUnicodeOrder" (section "debug"): -1 undecided, 0 off, 1 on. When on, a
// Unicode text copied into a key is narrowed to one byte per unit. Decided at the
// first need and kept for the life of the process.
int unicodeNarrowing = -1;

inline unsigned Min(unsigned a, unsigned b) { return a < b ? a : b; }

inline void WriteWord(unsigned char* p, uint16_t word, unsigned char format) { ShortStoreOne(p, &word, format); }

inline bool IsMemory(unsigned char format) { return (format & LmFormatMemory) != 0; }

inline unsigned char Nibble(unsigned char format) { return static_cast<unsigned char>(format & 0x0F); }

// The code set a target records: 254 stays; bit 0x20 writes any other non-zero set as
// 0; then bit 0x40 writes 0 as the native set.
unsigned char EffectiveCodeSet(unsigned char codeSet, unsigned char targetFormat) {
    if (codeSet == LM_CODESET_ORDER) return codeSet;
    if ((targetFormat & LM_STRFMT_CODESET_ZERO) != 0 && codeSet != LM_CODESET_NATIVE) return LM_CODESET_NATIVE;
    if ((targetFormat & LM_STRFMT_CODESET_NATIVE) != 0 && codeSet == LM_CODESET_NATIVE)
        return LmLanguageContext::GetNativeCodeSet();
    return codeSet;
}

// The room a text needs once turned into order words: four bytes per byte of a 1-byte
// text, two per byte of a 2-byte one. A text that stays in its code set needs no more.
unsigned OrderFactor(unsigned char codeSet, unsigned char targetFormat) {
    if ((targetFormat & LM_STRFMT_ORDER) == 0) return 1;
    const unsigned char effective = EffectiveCodeSet(codeSet, targetFormat);
    if (effective == LM_CODESET_NATIVE || effective == LM_CODESET_ORDER) return 1;
    return codeSet < LM_CODESET_FIRST_WIDE ? 4 : 2;
}

// B: the text and the closing pair of a string's record. It follows from `size`, so
// the bytes behind an inner zero are stored too.
unsigned BodyBytes(const LmString& s) {
    const unsigned size = s.GetSize();
    if (size == 0) return 2;
    return s.GetCodeSet() < LM_CODESET_FIRST_WIDE ? size + 1 : size;
}

bool UnicodeNarrowing() {
    if (unicodeNarrowing < 0) {
        uint16_t value = 0;
        const LmConfig* config = DefaultConfig(-1);
        const int found = config != nullptr ? config->QueryValue("debug", "oldIndexUnicodeOrder", value) : 0;
        unicodeNarrowing = found != 0 && value != 0 ? 0 : 1;
    }
    return unicodeNarrowing == 1;
}

// A target that takes bytes up to a limit: a record cut at targetLength keeps what fits.
struct Target {
    unsigned char* base;
    unsigned limit;

    void Put(unsigned at, const void* bytes, unsigned n) const {
        if (at >= limit || n == 0) return;
        std::memmove(base + at, bytes, Min(n, limit - at));
    }
    void PutByte(unsigned at, unsigned char byte) const {
        if (at < limit) base[at] = byte;
    }
    void PutWord(unsigned at, uint16_t word, unsigned char format) const {
        unsigned char bytes[2];
        WriteWord(bytes, word, format);
        Put(at, bytes, 2);
    }
    // Characters in the target's byte order: 16-bit units are swapped for format 2.
    void PutText(unsigned at, const void* text, unsigned width, unsigned char format, unsigned n) const {
        if (at >= limit || n == 0) return;
        const unsigned fit = Min(n, limit - at);
        LmCopyChars(base + at, text, width, format, fit);
        // A cut through a swapped unit keeps its first stored byte, the high one.
        if (width == 2 && Nibble(format) == LmFormatBig && (fit & 1) != 0)
            base[at + fit - 1] = static_cast<const unsigned char*>(text)[fit];
    }
};

// The current form of `count` strings, in one pass. Answers the size of the whole
// records, which may exceed what the target took.
unsigned StoreRecords(const Target& target, const LmString* strings, unsigned char format, unsigned count) {
    unsigned at = 0;
    for (unsigned i = 0; i < count; ++i) {
        const LmString& s = strings[i];
        const unsigned body = BodyBytes(s);
        const unsigned length = body + 2;
        target.PutWord(at, static_cast<uint16_t>(length), format);
        target.PutByte(at + 2, s.GetCodeSet());
        target.PutByte(at + 3, s.GetLanguage());
        target.PutText(at + 4, s.StrGet(), s.Width(), format, body > 2 ? body - 2 : 0);
        target.Put(at + length, kClosing, 2);
        at += body + 4;
    }
    return at;
}

// The old form of `count` strings: their texts from offset 2, each closed by a zero,
// then the total T in front. A string gives Len bytes, as the legacy size counts them.
unsigned StoreOldForm(const Target& target, const LmString* strings, unsigned char format, unsigned count) {
    unsigned at = 2;
    for (unsigned i = 0; i < count; ++i) {
        const unsigned n = strings[i].Len();
        target.Put(at, strings[i].StrGet(), n);
        target.PutByte(at + n, 0);
        at += n + 1;
    }
    target.PutWord(0, static_cast<uint16_t>(at - 2), format);
    return at;
}

// Fills a string from the text of a record with length word L. A record without
// characters loads as a string without buffer, its labels kept.
void LoadRecord(LmString& s, const unsigned char* text, unsigned length, unsigned char codeSet, unsigned char language,
                unsigned char format) {
    s.Destroy();
    s.SetCodeSet(codeSet);
    s.SetLanguage(language);
    unsigned chars = 0;
    if (length >= 4) chars = codeSet < LM_CODESET_FIRST_WIDE ? length - 4 : (length - 4) / 2;
    LmStringAssignRaw(s, text, codeSet, static_cast<uint16_t>(chars), Nibble(format));
}

// An old-form array of T bytes: each text is assigned as a plain text (default 8-bit
// code set and language). Strings for which the array holds no text get none.
unsigned LoadOldForm(LmString* strings, const unsigned char* src, unsigned total, unsigned count) {
    const char* text = reinterpret_cast<const char*>(src + 2);
    const char* end = text + total;  // the zero at offset T + 1 closes the last text
    for (unsigned i = 0; i < count; ++i) {
        if (text < end) {
            strings[i] = text;
            text += strings[i].GetSize();
        } else {
            strings[i] = static_cast<const char*>(nullptr);
        }
    }
    return total + 2;
}

// Keys that may be cut (a record claiming more than sourceLength holds) are read from
// a zero-closed local copy, and no record is taken past sourceLength.
unsigned LoadTruncatedKeys(LmString* strings, const unsigned char* src, unsigned char format, unsigned sourceLength,
                           unsigned count, unsigned char codeSet, unsigned char language) {
    if (sourceLength >= kKeyBufferBytes) {
        // Keys of 260 bytes and more never come this way: a caller that sends one is broken.
        std::fprintf(stderr, "lumotypes: string key of %u bytes exceeds the %u-byte key buffer\n", sourceLength,
                     kKeyBufferBytes - 1);
        std::abort();
    }
    unsigned char key[kKeyBufferBytes] = {};  // also the zero that closes the copy
    std::memcpy(key, src, sourceLength);
    unsigned consumed = 0;
    unsigned i = 0;
    for (; i < count && consumed + 5 < sourceLength; ++i) {
        unsigned length = ReadWord(key + consumed, format);
        if (consumed + length > sourceLength) length = sourceLength - consumed;
        codeSet = key[consumed + 2];
        language = key[consumed + 3];
        LoadRecord(strings[i], key + consumed + 4, length, codeSet, language, format);
        consumed += length + 2;
    }
    const unsigned leftOver = count - i;
    for (; i < count; ++i) {
        strings[i].Destroy();
        strings[i].SetCodeSet(codeSet);
        strings[i].SetLanguage(language);
    }
    return consumed + 6 * leftOver;
}

// The order form, written straight into the target. One record per string while the
// count lasts and at least 5 bytes of the target remain.
//
// Two reads and one write reach past the lengths given, because the rules ask for them:
// a word is written whole, so an odd room lets the last word end one byte behind
// targetLength; the collation iterator peeks one character ahead for a contraction, so
// a text cut by sourceLength may read (and join) the character right behind it; and the
// header of the first disk record is read whatever sourceLength says.
unsigned BuildKeys(unsigned char* dest, unsigned char targetFormat, unsigned targetLength, unsigned char* src,
                   unsigned char sourceFormat, unsigned sourceLength, unsigned count, bool oldForm) {
    const bool sourceMemory = IsMemory(sourceFormat);
    const bool cutShort = targetLength <= kCutKeyCapacity;
    unsigned out = 0;                 // start of the record being built
    unsigned in = oldForm ? 2u : 0u;  // disk: start of the source record, or of the old-form text
    for (unsigned i = 0; i < count && targetLength >= out + 5; ++i) {
        // 1. The text, its code set and language.
        const unsigned char* text;
        unsigned char codeSet = LM_CODESET_NATIVE;
        unsigned char language = 0;
        bool isNull = false;
        unsigned char* closing = nullptr;  // the final 0xFF of a whole disk record
        unsigned next = 0;
        if (sourceMemory) {
            const LmString& s = reinterpret_cast<const LmString*>(src)[i];
            text = reinterpret_cast<const unsigned char*>(s.StrGet());
            codeSet = s.GetCodeSet();
            language = s.GetLanguage();
            isNull = s.IsNullValue() != 0;
        } else if (oldForm) {
            if (i > 0 && in >= sourceLength) break;
            text = src + in;
            const void* zero = std::memchr(text, 0, sourceLength > in ? sourceLength - in : 0);
            next = zero != nullptr ? static_cast<unsigned>(static_cast<const unsigned char*>(zero) - src) + 1
                                   : sourceLength;
        } else {
            if (i > 0 && in + 4 > sourceLength) break;
            const unsigned length = ReadWord(src + in, sourceFormat);
            codeSet = src[in + 2];
            language = src[in + 3];
            text = src + in + 4;
            isNull = language == LM_LANGUAGE_NULL || (codeSet == LM_CODESET_ORDER && language == 0);
            next = in + length + 2;
            // A whole record: its final 0xFF becomes 0 for the walk, so that a 16-bit
            // text ends at its closing pair.
            if (next <= sourceLength) closing = src + in + length + 1;
        }
        const unsigned char saved = closing != nullptr ? *closing : 0;
        if (closing != nullptr) *closing = 0;

        // 2, 3. The walk over the text and the family of the key.
        LmStringIterator source(reinterpret_cast<const char*>(text), EffectiveCodeSet(codeSet, targetFormat), language,
                                Nibble(sourceFormat));
        // Used up when not one whole character is left before sourceLength.
        const unsigned width = LmCodeSetWidth(source.GetCodeSet());
        const auto used = [&]() {
            return !sourceMemory &&
                   static_cast<unsigned>(source.GetPosition() - reinterpret_cast<const char*>(src)) + width >
                       sourceLength;
        };
        unsigned char family = isNull ? 0 : source.GetFamily();
        unsigned char* record = dest + out;
        const unsigned room = targetLength - out;
        unsigned at = 4;  // bytes of this record so far
        bool complete = false;
        for (;;) {
            // 4. A source that is used up reads as the end of its text.
            uint16_t order = used() ? 0 : source.GetNextOrder(1);
            if (source.GetFamily() != family) {
                if (at > 4) {  // the key ends at the first change of family, with its mark
                    family = static_cast<unsigned char>(family | LM_FAMILY_MIX);
                    order = 0;
                } else if (order != 0) {
                    family = source.GetFamily();
                }
            }
            // 5. The word in the target's byte order; the end of the text closes the record.
            WriteWord(record + at, order, targetFormat);
            at += 2;
            if (order == 0) {
                std::memcpy(record + at - 2, kClosing, 2);
                complete = true;
                break;
            }
            // 6. A full target or a used-up source: a small key is cut short, a larger one
            // gives its last word for the closing pair.
            if (at >= room || used()) {
                if (!cutShort) {
                    std::memcpy(record + at - 2, kClosing, 2);
                    complete = true;
                }
                break;
            }
        }
        if (closing != nullptr) *closing = saved;

        // 7. L, counting the closing pair also where a cut key lacks it.
        const unsigned length = complete ? at - 2 : at;
        const auto stored = static_cast<uint16_t>(length);
        if (stored != length) LUMO_assert("(o_u4b)_nLen == nLen", "src\\lmtypes", __LINE__);
        WriteWord(record, stored, targetFormat);
        record[2] = LM_CODESET_ORDER;
        record[3] = family;

        // 8. The bytes held, which for a cut key is L itself.
        out += at;
        in = next;
    }
    return out;
}

// Records copied as they stand (a block move), with the effective code set at offset
// 2; a Unicode text narrowed to one byte per unit while "oldIndexUnicodeOrder" allows
// it. Nothing is read behind sourceLength: what it does not hold reads as zeros. At
// least the first record is moved. Answers the bytes written, up to targetLength.
unsigned CopyRecords(unsigned char* dest, unsigned char targetFormat, unsigned targetLength, const unsigned char* src,
                     unsigned char sourceFormat, unsigned sourceLength, unsigned count) {
    unsigned out = 0;
    unsigned in = 0;
    const unsigned records = count == 0 ? 1 : count;
    for (unsigned i = 0; i < records; ++i) {
        if (i > 0 && (out >= targetLength || in + 4 > sourceLength)) break;
        const unsigned length = ReadWord(src + in, sourceFormat);
        const unsigned char codeSet = src[in + 2];
        const unsigned char effective = EffectiveCodeSet(codeSet, targetFormat);
        const unsigned have = sourceLength > in ? sourceLength - in : 0;
        const unsigned room = targetLength > out ? targetLength - out : 0;
        unsigned char* record = dest + out;
        const Target target{record, room};
        if (codeSet == LM_CODESET_UNICODE && UnicodeNarrowing()) {
            // Each 16-bit unit gives its first byte; the language byte takes the code set too.
            const unsigned chars = length >= 4 ? (length - 4) / 2 : 0;
            const unsigned narrowed = chars + 4;
            target.PutWord(0, static_cast<uint16_t>(narrowed), targetFormat);
            target.PutByte(2, effective);
            target.PutByte(3, effective);
            for (unsigned k = 0; k < chars && 4 + k < room; ++k) {
                const unsigned from = 4 + 2 * k;
                record[4 + k] = from < have ? src[in + from] : 0;
            }
            if (narrowed + 2 <= room) {
                target.Put(narrowed, kClosing, 2);
            } else if (narrowed < room) {
                std::memset(record + narrowed, 0, room - narrowed);  // no closing pair on a cut record
            }
            out += narrowed + 2;
        } else {
            const unsigned n = Min(length + 2, room);
            const unsigned held = Min(n, have);
            if (held != 0) std::memmove(record, src + in, held);
            if (n > held) std::memset(record + held, 0, n - held);
            target.PutByte(2, effective);
            out += length + 2;
        }
        in += length + 2;
    }
    const unsigned written = Min(out, targetLength);
    if (written < targetLength) std::memset(dest + written, 0, targetLength - written);
    return written;
}

// An old-form source becomes one current record: L + 3, the effective code set and
// language 0; the old closing zero and a new 0xFF end it. Answers n, the record less
// that 0xFF.
unsigned UpgradeOldForm(unsigned char* dest, unsigned char targetFormat, unsigned targetLength,
                        const unsigned char* src, unsigned sourceLength, unsigned length) {
    std::memset(dest, 0, targetLength);
    const unsigned n = Min(sourceLength + 2, targetLength);
    const Target target{dest, targetLength};
    target.PutWord(0, static_cast<uint16_t>(length + 3), targetFormat);
    target.PutByte(2, EffectiveCodeSet(LM_CODESET_NATIVE, targetFormat));
    target.PutByte(3, 0);
    if (n > 4) std::memmove(dest + 4, src + 2, n - 4);
    if (sourceLength + 3 <= targetLength) target.PutByte(length + 4, 0xFF);
    return n;
}

// Memory to disk without order: the target is zeroed behind what the store writes.
unsigned StoreInto(unsigned char* dest, unsigned targetLength, const LmString* strings, unsigned char targetFormat,
                   unsigned count, int legacy) {
    const Target target{dest, targetLength};
    const unsigned total = legacy != 0 ? StoreOldForm(target, strings, targetFormat, count)
                                       : StoreRecords(target, strings, targetFormat, count);
    const unsigned written = Min(total, targetLength);
    if (written < targetLength) std::memset(dest + written, 0, targetLength - written);
    return written;
}

unsigned AssignStrings(void* dest, const void* src, unsigned count) {
    auto* target = static_cast<LmString*>(dest);
    const auto* source = static_cast<const LmString*>(src);
    for (unsigned i = 0; i < count; ++i) target[i] = source[i];
    return count * kMemoryStringBytes;
}

}  // namespace

// ---- Current form. ----

unsigned StringStore(void* dest, const void* src, unsigned char format, unsigned count) {
    return StoreRecords(Target{static_cast<unsigned char*>(dest), UINT_MAX}, static_cast<const LmString*>(src), format,
                        count);
}

unsigned StringLoad(void* dest, const void* src, unsigned char format, unsigned count) {
    auto* strings = static_cast<LmString*>(dest);
    const auto* bytes = static_cast<const unsigned char*>(src);
    const unsigned first = ReadWord(bytes, format);
    if (first == 0) return 0;
    if (bytes[first + 1] == 0) return LoadOldForm(strings, bytes, first, count);
    unsigned at = 0;
    for (unsigned i = 0; i < count; ++i) {
        const unsigned length = ReadWord(bytes + at, format);
        LoadRecord(strings[i], bytes + at + 4, length, bytes[at + 2], bytes[at + 3], format);
        at += length + 2;
    }
    return at;
}

unsigned StringNullSizeGet(unsigned count) { return count * 6; }

unsigned StringSizeGet(const void* src, unsigned char sourceFormat, unsigned char targetFormat, unsigned count) {
    unsigned total = 0;
    if (IsMemory(sourceFormat)) {
        const auto* strings = static_cast<const LmString*>(src);
        for (unsigned i = 0; i < count; ++i)
            total += BodyBytes(strings[i]) * OrderFactor(strings[i].GetCodeSet(), targetFormat) + 4;
        return total;
    }
    // A disk image is read in the target's byte order.
    const auto* bytes = static_cast<const unsigned char*>(src);
    unsigned at = 0;
    for (unsigned i = 0; i < count; ++i) {
        unsigned length = ReadWord(bytes + at, targetFormat);
        if ((targetFormat & LM_STRFMT_ORDER) == 0 && bytes[at + length + 1] == 0) return length + 2;
        // The scaled length also steps to the next record; only several order-form
        // strings notice.
        length = static_cast<uint16_t>(length * OrderFactor(bytes[at + 2], targetFormat));
        total += length + 2;
        at += length + 2;
    }
    return total;
}

namespace {
// The bytes at the file's position and how many of them the file holds; null when
// not even a length word can be had.
const unsigned char* FileBytes(MemFile* file, unsigned& available) {
    uint32_t granted = 0;
    const unsigned char* bytes = file->Seek(0, MemFile::FromCurrent, 2, granted);
    if (bytes == nullptr || granted < 2) return nullptr;
    available = file->Length() - file->Position();
    return bytes;
}
}  // namespace

unsigned StringSizeGetFromMemFile(MemFile* file, unsigned char format, unsigned count) {
    unsigned available = 0;
    const unsigned char* bytes = FileBytes(file, available);
    if (bytes == nullptr) return 0;
    unsigned total = 0;
    unsigned at = 0;
    for (unsigned i = 0; i < count; ++i) {
        // What lies behind the end of the file cannot be read: 65535 a string is safe.
        if (at + 2 > available) return (count - i) * kUnknownRecord;
        unsigned length = ReadWord(bytes + at, format);
        if ((format & LM_STRFMT_ORDER) == 0) {
            if (i + 1 < count) {
                if (at + length + 2 > available) return (count - i) * kUnknownRecord;
                if (bytes[at + length + 1] == 0) return length + 2;  // the old form: one record for all
            }
        } else {
            if (at + 3 > available) return (count - i) * kUnknownRecord;
            length = static_cast<uint16_t>(length * OrderFactor(bytes[at + 2], format));
        }
        total += length + 2;
        at += length + 2;
    }
    return total;
}

unsigned StringTranslate(void* dest, unsigned char targetFormat, unsigned targetLength, void* src,
                         unsigned char sourceFormat, unsigned sourceLength, unsigned count) {
    const bool sourceMemory = IsMemory(sourceFormat);
    auto* bytes = static_cast<unsigned char*>(src);
    unsigned length = 0;  // L of the first disk record
    bool oldForm = false;
    unsigned char codeSet = LM_CODESET_NATIVE;
    unsigned char language = 0;
    if (!sourceMemory) {
        length = ReadWord(bytes, sourceFormat);
        oldForm = length + 2 <= sourceLength && bytes[length + 1] == 0;
        if (!oldForm) {
            codeSet = bytes[2];
            language = bytes[3];
        }
    } else if (count != 0) {
        codeSet = static_cast<const LmString*>(src)->GetCodeSet();
    }

    if (IsMemory(targetFormat)) {
        if (sourceMemory) return AssignStrings(dest, src, count);
        if ((sourceFormat & LM_STRFMT_ORDER) == 0 || (length + 2 <= sourceLength && count <= 1))
            return StringLoad(dest, src, sourceFormat, count);
        return LoadTruncatedKeys(static_cast<LmString*>(dest), bytes, sourceFormat, sourceLength, count, codeSet,
                                 language);
    }

    auto* out = static_cast<unsigned char*>(dest);
    if ((targetFormat & LM_STRFMT_ORDER) == 0) {
        // The memory source's code set is stored as it is.
        if (sourceMemory)
            return StoreInto(out, targetLength, static_cast<const LmString*>(src), targetFormat, count, 0);
        if (targetFormat != sourceFormat) {
            LUMO_assert("format combination not supported", "src\\lmtypes", __LINE__);
            return 0;
        }
        if (oldForm) return UpgradeOldForm(out, targetFormat, targetLength, bytes, sourceLength, length);
        return CopyRecords(out, targetFormat, targetLength, bytes, sourceFormat, sourceLength, count);
    }

    const unsigned char effective = EffectiveCodeSet(codeSet, targetFormat);
    if (effective != LM_CODESET_NATIVE && effective != LM_CODESET_ORDER)
        return BuildKeys(out, targetFormat, targetLength, bytes, sourceFormat, sourceLength, count, oldForm);
    if (oldForm) return UpgradeOldForm(out, targetFormat, targetLength, bytes, sourceLength, length);
    if (!sourceMemory) return CopyRecords(out, targetFormat, targetLength, bytes, sourceFormat, sourceLength, count);

    // A memory source is copied from an image of itself in the target's byte order.
    if (count == 0) {
        std::memset(out, 0, targetLength);
        return 0;
    }
    auto* image = new unsigned char[StringSizeGet(src, sourceFormat, targetFormat, count)];
    const unsigned stored = StringStore(image, src, targetFormat, count);
    const unsigned written = CopyRecords(out, targetFormat, targetLength, image, targetFormat, stored, count);
    delete[] image;
    return written;
}

// ---- Old form, the legacy table. ----

unsigned StringStoreLegacy(void* dest, const void* src, unsigned char format, unsigned count) {
    return StoreOldForm(Target{static_cast<unsigned char*>(dest), UINT_MAX}, static_cast<const LmString*>(src), format,
                        count);
}

unsigned StringSizeGetLegacy(const void* src, unsigned char sourceFormat, unsigned char targetFormat, unsigned count) {
    if (!IsMemory(sourceFormat)) return ReadWord(static_cast<const unsigned char*>(src), targetFormat) + 2u;
    const auto* strings = static_cast<const LmString*>(src);
    unsigned total = 2 + count;
    for (unsigned i = 0; i < count; ++i) total += strings[i].Len();
    return total;
}

unsigned StringSizeGetFromMemFileLegacy(MemFile* file, unsigned char format, unsigned count) {
    unsigned available = 0;
    const unsigned char* bytes = FileBytes(file, available);
    if (bytes == nullptr) return 0;
    unsigned total = 0;
    unsigned at = 0;
    for (unsigned i = 0; i < count; ++i) {
        if (at + 2 > available) return (count - i) * kUnknownRecord;
        const unsigned length = ReadWord(bytes + at, format);
        total += length + 2;
        at += length + 2;
    }
    return total;
}

unsigned StringTranslateLegacy(void* dest, unsigned char targetFormat, unsigned targetLength, void* src,
                               unsigned char sourceFormat, unsigned sourceLength, unsigned count) {
    if (IsMemory(targetFormat)) {
        if (IsMemory(sourceFormat)) return AssignStrings(dest, src, count);
        return StringLoad(dest, src, sourceFormat, count);
    }
    auto* out = static_cast<unsigned char*>(dest);
    if (IsMemory(sourceFormat))
        return StoreInto(out, targetLength, static_cast<const LmString*>(src), targetFormat, count, 1);

    // Disk to disk. A whole current record loses its labels on the way down; a 16-bit
    // text stays as it is.
    const auto* bytes = static_cast<const unsigned char*>(src);
    unsigned length = ReadWord(bytes, sourceFormat);
    const unsigned char* text = bytes + 2;
    unsigned n = sourceLength;
    if (length >= 4 && length + 2 <= sourceLength && bytes[length + 1] == 0xFF) {
        length -= 3;
        text += 2;
        n -= 3;
    }
    if (n > targetLength) {
        n = targetLength;
    } else if (n < targetLength) {
        std::memset(out, 0, targetLength);
    }
    Target{out, targetLength}.PutWord(0, static_cast<uint16_t>(length), targetFormat);
    if (n > 2) std::memmove(out + 2, text, n - 2);
    return n;
}
