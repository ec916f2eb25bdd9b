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
#include <optional>
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

// A text of the disk form with its labels. Order words (current form, code set 254)
// are read in place, as far as the record's length and the bytes given allow; any
// other text is copied and closed by zero bytes (on the stack up to the length of
// any key), as LmStringIterator and LmStrCmp need a terminated text.
class Text {
public:
    unsigned char codeSet = LM_CODESET_NATIVE;
    unsigned char language = 0;

    Text() = default;
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;

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
        size = std::min(textBytes, available - header);
        bytes = key + header;
        closed = codeSet != LM_CODESET_ORDER ? Close() : nullptr;
    }
    // The words of an order text in place (`Size` bytes), or the closed copy.
    const unsigned char* Bytes() const { return bytes; }
    unsigned Size() const { return size; }
    bool Empty() const { return size == 0 || bytes[0] == 0; }
    // The text closed by zero bytes, copied at the first need.
    const char* Chars() {
        if (closed == nullptr) closed = Close();
        return reinterpret_cast<const char*>(closed);
    }

private:
    const unsigned char* Close() {
        static constexpr unsigned kClosing = 3;  // a zero unit of either width, also behind an odd byte
        unsigned char* to = local;
        if (size + kClosing > sizeof local) {
            heap.resize(size + kClosing);
            to = heap.data();
        }
        std::memcpy(to, bytes, size);
        std::memset(to + size, 0, kClosing);
        bytes = to;
        return to;
    }

    static constexpr unsigned char kEmpty[4] = {0, 0, 0, 0};
    unsigned char local[260];  // written before it is read
    std::vector<unsigned char> heap;
    const unsigned char* bytes = kEmpty;
    unsigned size = 0;
    const unsigned char* closed = kEmpty;
};

// The walks over a text for the common prefix and the string line. An order-form
// text (code set 254) holds its order words already, low byte first in every byte
// order, as LmStringIterator reads them: WordWalk reads them in place and stays at
// the end. IterWalk takes any text through an LmStringIterator. Both give order
// words in order mode, and characters in a plain walk (code set 0).
class WordWalk {
public:
    WordWalk(Text& t, unsigned char)
        : words(t.Bytes()),
          end(t.Bytes() + t.Size() / 2 * 2),
          language(t.language == LM_LANGUAGE_DEFAULT ? LmString::GetDefaultLanguage() : t.language) {}
    static bool OrderMode() { return true; }
    unsigned char Language() const { return language; }
    bool AtEnd() const { return words == end || Word() == 0; }
    uint16_t NextOrder() {
        if (AtEnd()) return 0;
        const uint16_t w = Word();
        words += 2;
        return w;
    }
    static uint16_t NextChar() { return 0; }

private:
    uint16_t Word() const { return static_cast<uint16_t>(words[0] | words[1] << 8); }

    const unsigned char* words;
    const unsigned char* end;
    unsigned char language;
};

class IterWalk {
public:
    IterWalk(Text& t, unsigned char format) : it(t.Chars(), t.codeSet, t.language, format) {}
    bool OrderMode() const { return it.GetCodeSet() != LM_CODESET_NATIVE; }
    unsigned char Language() const { return it.GetLanguage(); }
    bool AtEnd() const { return it.IsEOS() != 0; }
    uint16_t NextOrder() { return it.GetNextOrder(1); }
    uint16_t NextChar() {
        if (it.IsEOS() != 0) return 0;
        const uint16_t c = (*it).GetValue();
        if (c != 0) ++it;
        return c;
    }

private:
    LmStringIterator it;
};

// One element of the common-prefix walk. Case and accent bits of letters are taken
// out under the options that ignore them.
template <class Walk>
uint16_t NextElement(Walk& w, uint16_t mask) {
    if (!w.OrderMode()) return w.NextChar();
    if (w.AtEnd()) return 0;
    const uint16_t o = w.NextOrder();
    return (o & 0xC000) == 0x4000 ? static_cast<uint16_t>(o & ~mask) : o;
}

// The string line. In order mode: the first three significant order words of the
// walk (spaces and symbols are passed over, a letter counts by its base), at most
// `limit` characters read; the family goes in front. A plain text: four characters,
// each capped at 127, in base 128.
template <class Walk>
double StringKeyPosition(Walk& w, unsigned limit) {
    if (w.OrderMode()) {
        uint32_t words[3] = {0, 0, 0};
        const unsigned char language = w.Language();
        for (unsigned kept = 0, read = 0; kept < 3 && read < limit && !w.AtEnd(); ++read) {
            uint16_t o = w.NextOrder();
            if (o == 0) break;
            if (o < LM_ORDER_FIRST_DIGIT) continue;
            if ((o & 0xC000) == 0x4000 && language != LM_FAMILY_HAN) o &= 0x407F;
            words[kept++] = o;
        }
        return static_cast<double>(words[0] | (language & 0x7Fu) << 16) * 4294967296.0 +
               static_cast<double>(words[1] << 16 | words[2]);
    }
    uint32_t c[4] = {0, 0, 0, 0};
    for (unsigned i = 0; i < std::min(limit, 4u); ++i) {
        const uint16_t ch = w.NextChar();
        if (ch == 0) break;
        c[i] = ch > 127 ? 127 : ch;
    }
    return static_cast<double>(((c[0] * 128 + c[1]) * 128 + c[2]) * 128 + c[3]);
}

// The four texts of the walk: low text, high text, range.lower, range.upper; their
// character limits; and the places on the line found behind their common prefix.
struct Places {
    Text* text[4];
    unsigned chars[4];
    double pos[4] = {0, 0, 0, 0};

    // `count` is the smallest limit (0xFFFF takes part only when all are); 0 skips
    // the walk and leaves all four places at 0. The walk stops at the first element
    // that tells the four apart, or at a change of language in the first round.
    template <class Walk>
    void Find(unsigned char format, uint16_t mask) {
        unsigned count = kNone;
        for (const unsigned limit : chars)
            if (limit != kNone) count = count == kNone ? limit : std::min(count, limit);
        if (count == 0) return;
        Walk it[4] = {Walk(*text[0], format), Walk(*text[1], format), Walk(*text[2], format), Walk(*text[3], format)};
        Walk saved[4] = {it[0], it[1], it[2], it[3]};
        unsigned consumed = 0;
        for (bool first = true;; first = false) {
            if (!first) std::copy(it, it + 4, saved);
            uint16_t e[4];
            for (int k = 0; k < 4; ++k) e[k] = NextElement(it[k], mask);
            if (first && !(it[0].Language() == it[1].Language() && it[0].Language() == it[2].Language() &&
                           it[0].Language() == it[3].Language()))
                break;
            if (e[0] != e[1] || e[0] != e[2] || e[0] != e[3]) break;
            ++consumed;
            if (count != kNone) --count;
            if (e[0] == 0 || count == 0) {  // the prefix ran out
                std::copy(it, it + 4, saved);
                break;
            }
        }
        // 13. Each text's place behind the prefix: the range keys within their own
        // limits, the value's texts within the smaller of theirs and the range's.
        const unsigned limits[4] = {std::min(chars[0], chars[2]), std::min(chars[1], chars[3]), chars[2], chars[3]};
        for (int k = 0; k < 4; ++k) {
            const unsigned limit = limits[k];
            pos[k] = StringKeyPosition(saved[k], limit == kNone ? limit : (limit > consumed ? limit - consumed : 0u));
        }
    }
};

// The first wildcard of the value: its character index, and its byte offset in
// byteOff; 0xFFFF for none. Order words are matched against the wildcard orders in
// place, as LmFindWildcard matches them through an iterator.
uint16_t FindWildcard(Text& v, uint16_t& byteOff, unsigned char format) {
    if (v.codeSet != LM_CODESET_ORDER)
        return LmFindWildcard(v.codeSet, v.language, v.Chars(), 0, kNone, &byteOff, format);
    byteOff = kNone;
    const uint16_t asterisk = LmWildcardOrderGet(LM_WILDCARD_ASTERISK);
    const uint16_t question = LmWildcardOrderGet(LM_WILDCARD_QUESTION);
    const unsigned char* p = v.Bytes();
    for (unsigned n = 0; 2 * n + 2 <= v.Size() && n < kNone - 1u; ++n) {
        const auto o = static_cast<uint16_t>(p[2 * n] | p[2 * n + 1] << 8);
        if (o == 0) break;
        if (o == asterisk || o == question) {
            byteOff = static_cast<uint16_t>(2 * n);
            return static_cast<uint16_t>(n);
        }
    }
    return kNone;
}

// A zero-filled key buffer of at least `size` bytes and the index's key capacity,
// rounded up to even; null (with the memory handler told) when there is no memory.
unsigned char* NewKey(unsigned size, unsigned capacity, unsigned& allocated) {
    allocated = std::max(size, capacity);
    allocated += allocated & 1;
    // malloc and a fill: the allocator's small-block cache serves malloc, not calloc.
    auto* key = static_cast<unsigned char*>(std::malloc(allocated));
    if (key != nullptr) std::memset(key, 0, allocated);
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

    // Translates the first `sourceLength` bytes of the value into an order-form key
    // in a zero-filled buffer of at least `room` bytes. An order-form value is its own
    // key: Translate's copy path moves the record cut to the room, and what the source
    // length does not hold reads as zeros, which the buffer holds already.
    unsigned KeyOf(unsigned char* key, unsigned room, unsigned sourceLength, bool orderValue, unsigned L) const {
        if (orderValue) {
            const unsigned written = std::min(L + 2, room);
            std::memcpy(key, value, std::min(written, sourceLength));
            return written;
        }
        const auto keyFormat = static_cast<unsigned char>((format & 15u) | LM_STRFMT_ORDER);
        return (oldForm ? StringTranslateLegacy : StringTranslate)(
            key, keyFormat, room, const_cast<unsigned char*>(value), format, sourceLength, 1);
    }

    float Run();
};

float Evaluation::Run() {
    const unsigned char nibble = static_cast<unsigned char>(format & 15u);
    const unsigned t = oldForm ? 1 : 2;
    const unsigned L = Load16(value, format);
    Text val, rangeLow, rangeHigh, lowerKey, upperKey;
    val.Read(value, L + 2, format, oldForm);
    Text* low = &val;
    Text* high = &val;
    const unsigned w = LmCodeSetWidth(val.codeSet);

    // 2, 3. The first wildcard. A key of mixed families is known only up to its cut,
    // so it counts as a prefix.
    uint16_t byteOff = kNone, charWildPos = kNone;
    if ((options & LM_CMP_NO_WILDCARD) == 0) {
        charWildPos = FindWildcard(val, byteOff, nibble);
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

    // 7 - 9. No bound for a value that starts with a wildcard; a string evaluation
    // without out measures nothing.
    if (byteOff != 0) {
        if (out == nullptr) return 0.0f;
        const bool wild = byteOff != kNone;
        const unsigned n = wild ? byteOff + (oldForm ? 0u : 2u) : L - t;
        const bool orderValue = !oldForm && val.codeSet == LM_CODESET_ORDER;
        if (out->lower != nullptr) {
            lowerKey.Read(static_cast<const unsigned char*>(out->lower), out->lowerLen, format, oldForm);
            low = &lowerKey;
            lowChars = (out->lowerLen >= 4 ? out->lowerLen - 4u : 0u) / w;
        } else if ((op & LM_BOUND_LT) == 0 && ((options & kNoLowerWhenSkipping) == 0 || !skip)) {
            const unsigned s = n + t + 2;
            const unsigned lowerLen = std::min(s, kKeyLimit);
            unsigned size = 0;
            unsigned char* key = NewKey(lowerLen, out->keyCapacity, size);
            if (key != nullptr) {
                const unsigned room = s > kKeyLimit ? lowerLen : lowerLen - t;
                const unsigned actualLen = std::min(KeyOf(key, room, n + 2, orderValue, L), size);
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
            upperKey.Read(static_cast<const unsigned char*>(out->upper), out->upperLen, format, oldForm);
            high = &upperKey;
            highChars = (out->upperLen >= 4 ? out->upperLen - 4u : 0u) / w;
        } else if ((op & LM_BOUND_GT) == 0) {
            unsigned s = n + 2 + t + (wild ? w : 0);
            const bool cut = s > kKeyLimit;
            if (cut) s = kKeyLimit;
            if (s == 6 && skip) s = 8;  // room for one word behind an empty prefix
            unsigned size = 0;
            unsigned char* key = NewKey(s, out->keyCapacity, size);
            if (key != nullptr) {
                unsigned m = std::min(KeyOf(key, cut ? s : s - t, n + 2 + (wild ? w : 0), orderValue, L), size);
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
                upperKey.Read(key, cut ? m : m + t, format, oldForm);
                high = &upperKey;
                if (wild) highChars = charWildPos + w;
                if (cut) highChars = (m >= 4 ? m - 4 : 0) / w;
            }
        }
    } else if (out == nullptr) {
        return 0.0f;
    }

    // 12, 13. Places on the line behind the prefix that all four texts share. Order
    // texts, and the empty native ones of a missing range (whose place is 0 in
    // either walk), are walked in place.
    Places places{{low, high, &rangeLow, &rangeHigh}, {lowChars, highChars, rangeLowChars, rangeHighChars}};
    const auto mask = static_cast<uint16_t>(caseMask | accentMask);
    if (std::all_of(places.text, places.text + 4, [](const Text* text) {
            return text->codeSet == LM_CODESET_ORDER ||
                   (text->codeSet == LM_CODESET_NATIVE && text->language == 0 && text->Empty());
        })) {
        places.Find<WordWalk>(nibble, mask);
    } else {
        places.Find<IterWalk>(nibble, mask);
    }
    const double valueLow = places.pos[0], valueHigh = places.pos[1];
    const double rangeLowPos = places.pos[2], rangeHighPos = places.pos[3];

    // 14.
    const double unit = val.codeSet == LM_CODESET_NATIVE ? 128.0 : 1048576.0;
    const double valueTotalArea = (rangeHighPos - rangeLowPos) + unit;
    double valueRange = BoundOverlap(op, valueLow, valueHigh, rangeLowPos, rangeHighPos, unit);

    // 15. Keys the numbers cannot tell apart: the texts decide.
    if (valueRange == 0) {
        const auto option = static_cast<unsigned short>(op | options);
        const auto compare = [&](Text& a, Text& b, unsigned chars) {
            return LmStrCmp(a.codeSet, a.language, a.Chars(), b.codeSet, b.language, b.Chars(), option,
                            static_cast<short>(chars), nibble, nullptr);
        };
        const bool lt = (op & LM_BOUND_LT) != 0, gt = (op & LM_BOUND_GT) != 0, eq = (op & LM_BOUND_EQ) != 0;
        const bool a = (lt && rangeLowPos == valueHigh) || (gt && lt && rangeHighPos == valueLow);
        if (a && compare(*high, rangeLow, lowChars) >= 0) valueRange += unit;
        if (gt && (a || rangeHighPos == valueLow) &&
            compare(*low, rangeHigh,
                    rangeHighChars < highChars && rangeHighChars != kNone ? rangeHighChars : highChars) <= 0)
            valueRange += unit;
        // A value longer than the key capacity, equal to the cut key.
        if (valueRange == 0 && eq && valueHigh > rangeHighPos && rangeHighChars < highChars &&
            compare(*high, rangeHigh, rangeHighChars) == 0)
            valueRange += unit;
        // The line caps native characters above 0x7F at 127 and cannot order them.
        if (valueRange == 0 && eq && val.codeSet == LM_CODESET_NATIVE && rangeHigh.codeSet == LM_CODESET_NATIVE &&
            !high->Empty() && high->Bytes()[0] > 0x7F && !rangeHigh.Empty() && rangeHigh.Bytes()[0] > 0x7F)
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
