// The evaluators of LmString (id 11), in the current and in the old form. A pattern's
// common prefix becomes a pair of order-form keys; the share comes from the string
// line, on which a key stands by its first significant order words behind the
// prefix that it shares with the value and both range keys. Where the numbers cannot
// tell the keys apart, the comparison of the texts decides.
//
// Every text is read from a closed copy: the value as far as its length word says,
// a range key or a caller's bound no further than its length, so that a key cut to
// the capacity of its index is never read beyond its end.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "lmbounds.h"
#include "lmchar.h"
#include "lmstring.h"
#include "lmstrslots.h"

using namespace lmbound;

namespace {

constexpr uint16_t kNone = 0xFFFF;  // no wildcard, no limit
constexpr unsigned short kSkip = LM_CMP_SKIP_SPACES | LM_CMP_SKIP_SYMBOLS;
constexpr unsigned short kNoLowerWhenSkipping = 0x1000;
constexpr unsigned kKeyLimit = 254;  // the longest key an index holds

// A text of the disk form with its labels, copied and closed by zero bytes.
struct Text {
    unsigned char codeSet = LM_CODESET_NATIVE;
    unsigned char language = 0;
    std::vector<unsigned char> bytes = std::vector<unsigned char>(4, 0);

    // The record at `key`: a length word, then (in the current form) code set and
    // language, then the text. At most `available` bytes of the record are read.
    void Read(const unsigned char* key, unsigned available, unsigned char format, bool oldForm) {
        const unsigned header = oldForm ? 2 : 4;
        if (available < header) return;
        const unsigned length = Load16(key, format);
        if (!oldForm) {
            codeSet = key[2];
            language = key[3];
        }
        // The old form's text is closed by its own zero, the current form's by 00 FF.
        const unsigned textBytes = oldForm ? (length > 0 ? length - 1 : 0) : (length > 4 ? length - 4 : 0);
        const unsigned n = std::min(textBytes, available - header);
        bytes.assign(key + header, key + header + n);
        bytes.insert(bytes.end(), 4, 0);  // a zero unit of either width, also behind an odd byte
    }
    const char* Chars() const { return reinterpret_cast<const char*>(bytes.data()); }
    LmStringIterator Iterator(unsigned char format) const {
        return LmStringIterator(Chars(), codeSet, language, format);
    }
};

}  // namespace

// An order-mode iterator walks collation orders; a plain one (code set 0) bytes.
bool OrderMode(const LmStringIterator& it) { return it.GetCodeSet() != LM_CODESET_NATIVE; }

namespace {

// One element of the common-prefix walk. Case and accent bits of letters are taken
// out under the options that ignore them.
uint16_t NextElement(LmStringIterator& it, uint16_t mask) {
    if (OrderMode(it)) {
        if (it.IsEOS() != 0) return 0;
        const uint16_t o = it.GetNextOrder(1);
        return (o & 0xC000) == 0x4000 ? static_cast<uint16_t>(o & ~mask) : o;
    }
    if (it.IsEOS() != 0) return 0;
    const uint16_t c = (*it).GetValue();
    if (c != 0) ++it;
    return c;
}

}  // namespace

// The string line. In order mode: the first three significant order words behind
// the iterator (spaces and symbols are passed over, a letter counts by its base),
// at most `limit` characters read; the family goes in front. A plain text: four
// characters, each capped at 127, in base 128.
double StringKeyPosition(LmStringIterator it, unsigned limit) {
    if (OrderMode(it)) {
        uint32_t words[3] = {0, 0, 0};
        const unsigned char language = it.GetLanguage();
        for (unsigned kept = 0, read = 0; kept < 3 && read < limit && it.IsEOS() == 0; ++read) {
            uint16_t o = it.GetNextOrder(1);
            if (o == 0) break;
            if (o < LM_ORDER_FIRST_DIGIT) continue;
            if ((o & 0xC000) == 0x4000 && language != LM_FAMILY_HAN) o &= 0x407F;
            words[kept++] = o;
        }
        return static_cast<double>(words[0] | (language & 0x7Fu) << 16) * 4294967296.0 +
               static_cast<double>(words[1] << 16 | words[2]);
    }
    uint32_t c[4] = {0, 0, 0, 0};
    for (unsigned i = 0; i < std::min(limit, 4u) && it.IsEOS() == 0; ++i) {
        const uint16_t ch = (*it).GetValue();
        if (ch == 0) break;
        c[i] = ch > 127 ? 127 : ch;
        ++it;
    }
    return static_cast<double>(((c[0] * 128 + c[1]) * 128 + c[2]) * 128 + c[3]);
}

namespace {

// A zero-filled key buffer of at least `size` bytes and the index's key capacity,
// rounded up to even; null (with the memory handler told) when there is no memory.
unsigned char* NewKey(unsigned size, unsigned capacity, unsigned& allocated) {
    allocated = std::max(size, capacity);
    allocated += allocated & 1;
    auto* key = static_cast<unsigned char*>(std::calloc(allocated, 1));
    if (key == nullptr) LmCallMemoryHandler(allocated);
    return key;
}

inline void PutByte(unsigned char* key, unsigned size, unsigned at, unsigned char b) {
    if (at < size) key[at] = b;
}

// The case and accent bits of the letters of a built key: forced so that the key
// sorts below (lower bound) or above (upper bound) every variant of its letters.
void ForceLetters(unsigned char* key, unsigned length, unsigned char format, uint16_t set, uint16_t clear) {
    for (unsigned at = 4; at + 2 <= length; at += 2) {
        const uint16_t word = Load16(key + at, format);
        if ((word & 0xC000) == 0x4000) Store16(key + at, static_cast<uint16_t>((word & ~clear) | set), format);
    }
}

struct Evaluation {
    LmIdxBounds* range;
    unsigned short& op;
    unsigned short options;
    const unsigned char* value;
    unsigned char format;
    LmIdxBounds* out;
    bool oldForm;

    LmTypeTranslateFunc Translate() const { return oldForm ? StringTranslateLegacy : StringTranslate; }

    float Run();
};

float Evaluation::Run() {
    const unsigned char nibble = static_cast<unsigned char>(format & 15u);
    const unsigned t = oldForm ? 1 : 2;
    const unsigned L = Load16(value, format);
    Text low, high, rangeLow, rangeHigh;
    low.Read(value, L + 2, format, oldForm);
    const Text val = low;
    const unsigned w = LmCodeSetWidth(val.codeSet);

    // 2, 3. The first wildcard. A key of mixed families is known only up to its cut,
    // so it counts as a prefix.
    uint16_t byteOff = kNone, charWildPos = kNone;
    if ((options & LM_CMP_NO_WILDCARD) == 0) {
        charWildPos = LmFindWildcard(val.codeSet, val.language, val.Chars(), 0, kNone, &byteOff, nibble);
        if (byteOff == kNone && (val.language & LM_FAMILY_MIX) != 0 && (val.language & 0x7F) != 1 && L >= 4) {
            byteOff = static_cast<uint16_t>(L - 4);
            charWildPos = static_cast<uint16_t>(byteOff / w);
        }
    }
    if (byteOff != kNone) op |= LM_BOUND_INEXACT;

    // 4, 5. Character limits of the value and of the range keys.
    unsigned lowChars = charWildPos, highChars = charWildPos;
    unsigned rangeLowChars = out != nullptr ? out->keyCapacity : kNone;
    unsigned rangeHighChars = rangeLowChars;
    if (RangeUsable(range, oldForm ? 2 : 4)) {
        rangeHigh.Read(static_cast<const unsigned char*>(range->upper), range->upperLen, format, oldForm);
        rangeLow.Read(static_cast<const unsigned char*>(range->lower), range->lowerLen, format, oldForm);
        rangeHighChars = (range->upperLen >= 4 ? range->upperLen - 4u : 0u) / LmCodeSetWidth(rangeHigh.codeSet);
        rangeLowChars = (range->lowerLen >= 4 ? range->lowerLen - 4u : 0u) / LmCodeSetWidth(rangeLow.codeSet);
    }

    // 6. The masks of the ignored levels.
    uint16_t caseMask = 0, accentMask = 0;
    if (val.codeSet != LM_CODESET_NATIVE) {
        if ((options & LM_CMP_IGNORE_CASE) != 0) caseMask = 0x3000;
        if ((options & LM_CMP_IGNORE_ACCENT) != 0) accentMask = 0x0F80;
    }
    const bool letters = (caseMask | accentMask) != 0 && (val.language & 0x7F) < LM_FAMILY_HAN;
    const bool skip = (options & kSkip) != 0;
    high = val;

    // 7 - 9. No bound for a value that starts with a wildcard; a string evaluation
    // without out measures nothing.
    if (byteOff != 0) {
        if (out == nullptr) return 0.0f;
        const bool wild = byteOff != kNone;
        const unsigned n = wild ? byteOff + (oldForm ? 0u : 2u) : L - t;
        const unsigned char keyFormat = static_cast<unsigned char>(nibble | LM_STRFMT_ORDER);
        if (out->lower != nullptr) {
            low.Read(static_cast<const unsigned char*>(out->lower), out->lowerLen, format, oldForm);
            lowChars = (out->lowerLen >= 4 ? out->lowerLen - 4u : 0u) / w;
        } else if ((op & LM_BOUND_LT) == 0 && ((options & kNoLowerWhenSkipping) == 0 || !skip)) {
            const unsigned s = n + t + 2;
            const unsigned lowerLen = std::min(s, kKeyLimit);
            unsigned size = 0;
            unsigned char* key = NewKey(lowerLen, out->keyCapacity, size);
            if (key != nullptr) {
                const unsigned room = s > kKeyLimit ? lowerLen : lowerLen - t;
                const unsigned actualLen = std::min(
                    Translate()(key, keyFormat, room, const_cast<unsigned char*>(value), format, n + 2, 1), size);
                if (letters) ForceLetters(key, actualLen, format, caseMask, accentMask);
                if (s <= kKeyLimit) PutByte(key, size, actualLen, 0);
                if (!oldForm) {
                    Store16(key, static_cast<uint16_t>(actualLen), format);
                    if (s <= kKeyLimit) PutByte(key, size, actualLen + 1, 0xFF);
                }
                if (actualLen + (s > kKeyLimit ? 0 : t) > kKeyLimit)
                    LUMO_assert("actualLen <= 254", "src\\lmtypevl", __LINE__);
                out->lower = key;
                out->lowerLen = static_cast<uint8_t>(lowerLen);
            }
        }
        if (out->upper != nullptr) {
            high.Read(static_cast<const unsigned char*>(out->upper), out->upperLen, format, oldForm);
            highChars = (out->upperLen >= 4 ? out->upperLen - 4u : 0u) / w;
        } else if ((op & LM_BOUND_GT) == 0) {
            unsigned s = n + 2 + t + (wild ? w : 0);
            const bool cut = s > kKeyLimit;
            if (cut) s = kKeyLimit;
            if (s == 6 && skip) s = 8;  // room for one word behind an empty prefix
            unsigned size = 0;
            unsigned char* key = NewKey(s, out->keyCapacity, size);
            if (key != nullptr) {
                unsigned m = std::min(Translate()(key, keyFormat, cut ? s : s - t, const_cast<unsigned char*>(value),
                                                  format, n + 2 + (wild ? w : 0), 1),
                                      size);
                if (letters) ForceLetters(key, m, format, accentMask, caseMask);
                // The high pad: every key that starts with the prefix sorts below. An
                // empty key first grows by one character, its closing byte moved up.
                const unsigned header = oldForm ? 2u : 4u;
                if ((wild || skip) && m >= header) {
                    if (oldForm || key[2] == LM_CODESET_NATIVE) {
                        if (m == header && m + 2 <= size) key[m + 1] = key[m], ++m;
                        if (m > header) key[m - 1] = 0xFF;
                    } else {
                        if (m == header && m + 4 <= size) {
                            std::memcpy(key + m + 2, key + m, 2);
                            m += 2;
                        }
                        if (m > header) Store16(key + m - 2, 0xFFFE, format);
                    }
                }
                if (!oldForm) Store16(key, static_cast<uint16_t>(m), format);
                if (!cut) {
                    PutByte(key, size, m, 0);
                    if (!oldForm) PutByte(key, size, m + 1, 0xFF);
                }
                if (m + (cut ? 0 : t) > kKeyLimit) LUMO_assert("actualLen <= 254", "src\\lmtypevl", __LINE__);
                out->upper = key;
                out->upperLen = static_cast<uint8_t>(s);
                // The high text is the key that was built, read by its own labels.
                high.Read(key, cut ? m : m + t, format, oldForm);
                if (wild) highChars = charWildPos + w;
                if (cut) highChars = (m >= 4 ? m - 4 : 0) / w;
            }
        }
    } else if (out == nullptr) {
        return 0.0f;
    }

    // 12. The prefix that all four share: low text, high text, range keys.
    LmStringIterator it[4] = {low.Iterator(nibble), high.Iterator(nibble), rangeLow.Iterator(nibble),
                              rangeHigh.Iterator(nibble)};
    if (!RangeUsable(range, oldForm ? 2 : 4)) it[2] = it[3] = LmStringIterator();
    LmStringIterator saved[4];
    unsigned count = kNone;
    for (const unsigned limit : {lowChars, highChars, rangeLowChars, rangeHighChars})
        if (limit != kNone) count = count == kNone ? limit : std::min(count, limit);
    unsigned consumed = 0;
    if (count != 0) {
        const auto mask = static_cast<uint16_t>(caseMask | accentMask);
        bool ranOut = false;
        for (bool first = true;; first = false) {
            std::copy(it, it + 4, saved);
            uint16_t e[4];
            for (int k = 0; k < 4; ++k) e[k] = NextElement(it[k], mask);
            if (first && !(it[0].GetLanguage() == it[1].GetLanguage() && it[0].GetLanguage() == it[2].GetLanguage() &&
                           it[0].GetLanguage() == it[3].GetLanguage()))
                break;
            if (e[0] != e[1] || e[0] != e[2] || e[0] != e[3]) break;
            ++consumed;
            if (count != kNone) --count;
            if (e[0] == 0 || count == 0) {
                ranOut = true;
                break;
            }
        }
        if (ranOut) std::copy(it, it + 4, saved);
    }

    // 13, 14. Four places on the line behind the shared prefix.
    const auto behind = [consumed](unsigned limit) {
        return limit == kNone ? limit : (limit > consumed ? limit - consumed : 0u);
    };
    const double rangeHighPos = StringKeyPosition(saved[3], behind(rangeHighChars));
    const double rangeLowPos = StringKeyPosition(saved[2], behind(rangeLowChars));
    const double valueLow = StringKeyPosition(saved[0], behind(std::min(lowChars, rangeLowChars)));
    const double valueHigh = StringKeyPosition(saved[1], behind(std::min(highChars, rangeHighChars)));
    const double unit = val.codeSet == LM_CODESET_NATIVE ? 128.0 : 1048576.0;
    const double valueTotalArea = (rangeHighPos - rangeLowPos) + unit;
    double valueRange = BoundOverlap(op, valueLow, valueHigh, rangeLowPos, rangeHighPos, unit);

    // 15. Keys the numbers cannot tell apart: the texts decide.
    if (valueRange == 0) {
        const auto option = static_cast<unsigned short>(op | options);
        const auto compare = [&](const Text& a, const Text& b, unsigned chars) {
            return LmStrCmp(a.codeSet, a.language, a.Chars(), b.codeSet, b.language, b.Chars(), option,
                            static_cast<short>(chars), nibble, nullptr);
        };
        const bool lt = (op & LM_BOUND_LT) != 0, gt = (op & LM_BOUND_GT) != 0, eq = (op & LM_BOUND_EQ) != 0;
        const bool a = (lt && rangeLowPos == valueHigh) || (gt && lt && rangeHighPos == valueLow);
        if (a && compare(high, rangeLow, lowChars) >= 0) valueRange += unit;
        if (gt && (a || rangeHighPos == valueLow) &&
            compare(low, rangeHigh,
                    rangeHighChars < highChars && rangeHighChars != kNone ? rangeHighChars : highChars) <= 0)
            valueRange += unit;
        // A value longer than the key capacity, equal to the cut key.
        if (valueRange == 0 && eq && valueHigh > rangeHighPos && rangeHighChars < highChars &&
            compare(high, rangeHigh, rangeHighChars) == 0)
            valueRange += unit;
        // The line caps native characters above 0x7F at 127 and cannot order them.
        if (valueRange == 0 && eq && val.codeSet == LM_CODESET_NATIVE && rangeHigh.codeSet == LM_CODESET_NATIVE &&
            high.bytes[0] > 0x7F && rangeHigh.bytes[0] > 0x7F)
            valueRange += unit;
    }

    // 16, 17. A leading wildcard must cover everything.
    if (charWildPos == 0 && valueRange < valueTotalArea)
        LUMO_assert("charWildPos != 0 || valueRange >= valueTotalArea", "src\\lmtypevl", __LINE__);
    return Share(valueRange, valueTotalArea);
}

}  // namespace

float StringEvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned,
                         LmIdxBounds* out, int oldForm) {
    const auto options = static_cast<unsigned short>(op & 0x7FF0);
    op &= 0x800F;
    Evaluation e{range, op, options, static_cast<const unsigned char*>(value), format, out, oldForm != 0};
    return e.Run();
}

float StringEvalAndBoundCurrent(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format,
                                unsigned count, LmIdxBounds* out) {
    return StringEvalAndBound(range, op, value, format, count, out, 0);
}

float StringEvalAndBoundLegacy(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format,
                               unsigned count, LmIdxBounds* out) {
    return StringEvalAndBound(range, op, value, format, count, out, 1);
}
