// The comparison of texts: LmStrCmp with its collation levels and its wildcard
// matching, the byte matcher of native texts, the search for the first wildcard, and
// the setters of the process-wide wildcard characters.
//
// LmStrCmp runs on collation keys, so two texts in different code sets compare by
// what their characters are. One pass over both texts collects every level: the
// primary difference ends the walk, the accent, case and ignorable differences are
// kept on the way and only decide when the primaries are equal.
#include <climits>
#include <cstring>

#include "lmchar.h"
#include "lmstring.h"
#include "lmstrpriv.h"

namespace {

// Masks on a comparison key: the primary value only, the key without its accent bits,
// the key without its case bits.
constexpr uint32_t kPrimaryMask = ~127u;
constexpr uint32_t kNoAccentMask = ~31u;
constexpr uint32_t kNoCaseMask = ~96u;
constexpr uint32_t kNoLimit = UINT32_MAX;

// Keys are unsigned 32-bit values and a family byte from 128 up (order texts) sets
// their top bit, so a difference is taken wide and cut to an int that keeps its sign.
inline int KeyDiff(uint32_t a, uint32_t b) {
    const int64_t d = static_cast<int64_t>(a) - static_cast<int64_t>(b);
    if (d > INT_MAX) return INT_MAX;
    if (d < -INT_MAX) return -INT_MAX;
    return static_cast<int>(d);
}

// Null value: language 254, or an order text without language.
inline bool IsNullSide(unsigned char codeSet, unsigned char language) {
    return language == LM_LANGUAGE_NULL || (codeSet == LM_CODESET_ORDER && language == 0);
}

// Characters a count allows; -1 is no limit, any other value counts unsigned.
inline uint32_t LimitOf(short count) { return count == -1 ? kNoLimit : static_cast<uint16_t>(count); }

// Both texts native, wildcards off: unsigned bytes up to the limit or the end.
int CompareBytes(const void* text1, const void* text2, uint32_t limit) {
    const auto* a = static_cast<const unsigned char*>(text1);
    const auto* b = static_cast<const unsigned char*>(text2);
    if (a == nullptr) return b == nullptr || *b == 0 ? 0 : -1;
    if (b == nullptr) return *a != 0 ? 1 : 0;
    for (uint32_t i = 0; i < limit; ++i) {
        if (a[i] != b[i]) return static_cast<int16_t>(a[i] - b[i]);
        if (a[i] == 0) break;
    }
    return 0;
}

// Under LM_CMP_EXACT: whole keys, one level, every character counts.
int CompareExact(LmStringIterator& it1, LmStringIterator& it2, uint32_t limit) {
    for (uint32_t n = 1;; ++n) {
        const uint16_t o1 = it1.GetNextOrder(1);
        const uint16_t o2 = it2.GetNextOrder(1);
        const int d = KeyDiff(LmOrderKey(o1, it1.GetFamily()), LmOrderKey(o2, it2.GetFamily()));
        if (d != 0 || o1 == 0 || o2 == 0 || n >= limit) return d;
    }
}

// ---------------------------------------------------------------------------
// The main comparison.
// ---------------------------------------------------------------------------

// What a fetch of one side found.
enum FetchResult { kSignificant, kIgnorable, kWildcard };

struct Held {
    uint16_t order;
    uint32_t key;
};

// The settings of one comparison that every fetch reads.
struct FetchRules {
    uint32_t limit;  // order words a side may take
    int mode;        // argument of GetNextOrder
    bool skipSpaces;
    bool skipSymbols;
    uint16_t asterisk;  // wildcard orders; only read on the pattern side with wildcards active
    uint16_t question;
};

// Moves a side on to its next character worth comparing. Skipped ignorables vanish;
// a noticed one is handed back as kIgnorable. On the pattern side with wildcards
// active an asterisk or question order stops the fetch before the ignorable test
// (both are symbols). Past the limit the side reads as ended, and `pos` passes the
// limit, which tells the caller that the side was cut.
inline FetchResult Fetch(LmStringIterator& it, uint32_t& pos, const FetchRules& rules, bool pattern, Held& held) {
    for (;;) {
        if (pos >= rules.limit) {
            pos = rules.limit + 1;  // never reached without a limit
            held = {0, 0};
            return kSignificant;
        }
        ++pos;
        const uint16_t order = it.GetNextOrder(rules.mode);
        const unsigned char family = it.GetFamily();
        held = {order, LmOrderKey(order, family)};
        if (pattern && (order == rules.asterisk || order == rules.question)) return kWildcard;
        if (order == 0 || order >= LM_ORDER_FIRST_DIGIT || family >= LM_FAMILY_HAN) return kSignificant;
        if (!(order < LM_ORDER_FIRST_SYMBOL ? rules.skipSpaces : rules.skipSymbols)) return kIgnorable;
    }
}

// A further place from which the pattern tail behind an asterisk is tried again: a
// copy of the restart point that walks along the pattern as long as it agrees with
// the text, with the levels and the position the restart point saved.
struct Candidate {
    LmStringIterator it;
    uint32_t pos;
    int caseDiff;
    int accentDiff;
    Candidate* next;
};

// The candidates, oldest first. A node that drops out is kept for reuse until the
// comparison ends, so a long text costs no more allocations than the most
// candidates alive at once.
class CandidateList {
public:
    CandidateList() = default;
    CandidateList(const CandidateList&) = delete;
    CandidateList& operator=(const CandidateList&) = delete;
    ~CandidateList() {
        Clear();
        while (spare != nullptr) {
            Candidate* c = spare;
            spare = c->next;
            delete c;
        }
    }

    Candidate* First() const { return head; }

    void Append(const LmStringIterator& it, uint32_t pos, int caseDiff, int accentDiff) {
        Candidate* c = spare;
        if (c != nullptr) {
            spare = c->next;
            c->it = it;
            c->pos = pos;
            c->caseDiff = caseDiff;
            c->accentDiff = accentDiff;
            c->next = nullptr;
        } else {
            c = new Candidate{it, pos, caseDiff, accentDiff, nullptr};
        }
        *tail = c;
        tail = &c->next;
    }

    // Unlinks the candidate that `link` points to; answers the link to the next one.
    Candidate** Remove(Candidate** link) {
        Candidate* c = *link;
        *link = c->next;
        if (tail == &c->next) tail = link;
        c->next = spare;
        spare = c;
        return link;
    }

    Candidate** HeadLink() { return &head; }

    void Clear() {
        while (head != nullptr) Remove(&head);
    }

private:
    Candidate* head = nullptr;
    Candidate** tail = &head;
    Candidate* spare = nullptr;
};

int CompareLevels(LmStringIterator& it1, LmStringIterator& it2, unsigned short option, uint32_t limit, bool orderText,
                  int* difference) {
    const bool wild = LmWildcardsActive(option);
    const bool ignoreAccent = (option & LM_CMP_IGNORE_ACCENT) != 0;
    const bool ignoreCase = (option & LM_CMP_IGNORE_CASE) != 0;
    const bool skipSpaces = (option & LM_CMP_SKIP_SPACES) != 0;
    FetchRules rules{limit, 1, skipSpaces, (option & LM_CMP_SKIP_SYMBOLS) != 0, 0, 0};
    if (wild) {
        rules.asterisk = LmWildcardOrderGet(LM_WILDCARD_ASTERISK);
        rules.question = LmWildcardOrderGet(LM_WILDCARD_QUESTION);
    }
    uint32_t mask = ~0u;
    if (ignoreAccent && ignoreCase) {
        mask = kPrimaryMask;
    } else if (ignoreAccent) {
        mask = kNoAccentMask;
    } else if (ignoreCase) {
        mask = kNoCaseMask;
    }

    Held h1{0, 0}, h2{0, 0};
    uint32_t pos1 = 0, pos2 = 0;
    int primary = 0, accentDiff = 0, caseDiff = 0, ignoreDiff = 0;

    // The pattern state behind an asterisk. The restart point is a plain copy of the
    // pattern iterator, so a comparison without wildcards builds nothing for it.
    bool targetPending = false, targetIsAny = false;
    uint32_t target = 0;
    LmStringIterator restart(it2);
    uint32_t restartPos = 0;
    int restartCase = 0, restartAccent = 0;
    CandidateList candidates;

    for (;;) {
        // Passes until both sides hold a significant character. Behind an asterisk,
        // or at a wildcard, one pass is all: the text side compares with what it holds.
        bool need1 = true, need2 = true, stoppedAtWildcard = false;
        int cycleIgnore = 0;
        for (;;) {
            uint32_t ignorable1 = 0, ignorable2 = 0;
            bool gaveIgnorable = false;
            if (need1) {
                if (Fetch(it1, pos1, rules, false, h1) == kIgnorable) {
                    ignorable1 = h1.key;
                    gaveIgnorable = true;
                } else {
                    need1 = false;
                }
            }
            if (need2) {
                const FetchResult r = Fetch(it2, pos2, rules, wild, h2);
                if (r == kIgnorable) {
                    ignorable2 = h2.key;
                    gaveIgnorable = true;
                } else {
                    need2 = false;
                    stoppedAtWildcard = r == kWildcard;
                }
            }
            if (stoppedAtWildcard || targetPending) break;
            if (gaveIgnorable && ignorable1 != ignorable2) cycleIgnore = KeyDiff(ignorable1, ignorable2);
            if (!need1 && !need2) break;
        }
        // An order text has no record to take a family from: after the first
        // characters the families stay as they are.
        if (orderText) rules.mode = 0;

        if (targetPending && h1.key != 0 && ((h1.key & mask) == target || (h1.order != 0 && targetIsAny))) {
            candidates.Append(restart, restartPos, restartCase, restartAccent);
        }

        if (wild && h2.order == rules.asterisk) {
            candidates.Clear();
            restartCase = caseDiff;
            restartAccent = accentDiff;
            do {  // a run of asterisks is one
                restart = it2;
                restartPos = pos2;
                Fetch(it2, pos2, rules, true, h2);
            } while (h2.order == rules.asterisk);
            if (h2.order == 0) {  // a trailing asterisk matches the rest of the text
                primary = 0;
                break;
            }
            target = h2.key & mask;
            targetPending = true;
            targetIsAny = h2.order == rules.question;
        }

        // Every candidate takes its next pattern character; those that disagree with
        // the text drop out, a question mark agreeing with any character.
        for (Candidate** link = candidates.HeadLink(); *link != nullptr;) {
            Candidate* c = *link;
            Held ch{0, 0};
            Fetch(c->it, c->pos, rules, true, ch);
            if ((ch.key & mask) != (h1.key & mask) && !(h1.order != 0 && ch.order == rules.question)) {
                link = candidates.Remove(link);
            } else {
                link = &c->next;
            }
        }

        if (!wild || h2.order != rules.question) {
            primary = KeyDiff(h1.key & kPrimaryMask, h2.key & kPrimaryMask);
            // The first case difference decides, with lower case (the higher case
            // bits) first: hence right minus left.
            if (caseDiff == 0) caseDiff = KeyDiff(h2.key & kNoAccentMask, h1.key & kNoAccentMask);
            if ((h1.key & kNoCaseMask) != (h2.key & kNoCaseMask)) {
                accentDiff = KeyDiff(h1.key & kNoCaseMask, h2.key & kNoCaseMask);
            }
            if (cycleIgnore != 0) ignoreDiff = cycleIgnore;
        } else {
            primary = h1.order != 0 ? 0 : -1;  // any one character, but not the end
        }

        if (targetPending && h1.order != 0) {
            bool mismatch;
            if (!ignoreAccent) {
                mismatch = accentDiff != 0 || (!ignoreCase && caseDiff != 0);
            } else if (!ignoreCase) {
                mismatch = caseDiff != 0;
            } else {
                mismatch = primary != 0;
            }
            if (mismatch) {
                // The pattern backs up to the oldest candidate, or behind the asterisk;
                // the text goes on from where it is.
                primary = 0;
                if (Candidate* c = candidates.First(); c != nullptr) {
                    it2 = c->it;
                    pos2 = c->pos;
                    caseDiff = c->caseDiff;
                    accentDiff = c->accentDiff;
                    candidates.Remove(candidates.HeadLink());
                } else {
                    it2 = restart;
                    pos2 = restartPos;
                    caseDiff = restartCase;
                    accentDiff = restartAccent;
                }
            }
        }

        if (difference != nullptr && skipSpaces && pos1 <= limit && pos2 <= limit) *difference = primary;

        if (primary != 0 || h1.order == 0) break;
        if (h2.order == 0 && !targetPending) break;
    }

    if (primary != 0) return primary;
    if (accentDiff != 0 && !ignoreAccent) return accentDiff;
    if (caseDiff != 0 && !ignoreCase) return caseDiff;
    return ignoreDiff;
}

// The order word of one character alone, as the wildcard setters take it.
uint16_t OrderAlone(const LmChar& c) {
    unsigned char text[4] = {0, 0, 0, 0};
    const uint16_t value = c.GetValue();
    if (LmCodeSetWidth(c.GetCodeSet()) == 1) {
        text[0] = static_cast<unsigned char>(value);
    } else {
        LmWriteUnit(text, value);
    }
    LmStringIterator it(reinterpret_cast<const char*>(text), c.GetCodeSet(), c.GetLanguage(), LmFormatLittle);
    return it.GetNextOrder(0);
}

// ---------------------------------------------------------------------------
// The shared start of two texts.
// ---------------------------------------------------------------------------

// Whether a character may open a contraction in this language: a record with
// followers, or one with a variant record for the language, which may have them. A
// character that a code set without table of its own maps through Unicode is only
// known for the ASCII range, which is the same in every 1-byte code set.
bool MayOpenContraction(const LmCollationTable* table, bool mapped, uint16_t unit, uint16_t languageBit) {
    if (mapped && unit >= 0x80) return true;
    const LmCollationRecord* record = table->Find(unit);
    if (record == nullptr) return false;
    return record->hasContraction != 0 || (record->hasLanguageVariants & languageBit) != 0;
}

// Characters at the start of two texts in the same code set, language and byte order
// that are the same units give the same order words and so decide nothing, at any
// level: the walks can begin behind them. The start moves back while one of the two
// characters before it may open a contraction (the longest contractions span three
// characters), so that no contraction is split: a character that may open one must
// not stand in either of the two places before the start. Answers the characters.
unsigned SharedStart(const void* text1, const void* text2, unsigned width, const LmCollationTable* table, bool mapped,
                     uint16_t languageBit, bool big) {
    const auto* a = static_cast<const unsigned char*>(text1);
    const auto* b = static_cast<const unsigned char*>(text2);
    unsigned n = 0;
    if (width == 1) {
        while (a[n] == b[n] && a[n] != 0) ++n;
    } else {
        while (a[2 * n] == b[2 * n] && a[2 * n + 1] == b[2 * n + 1] && (a[2 * n] | a[2 * n + 1]) != 0) ++n;
    }
    if (n == 0 || table == nullptr) return n;  // order words form no contractions
    const auto opens = [&](unsigned i) {
        const uint16_t unit = width == 1 ? a[i]
                              : big      ? static_cast<uint16_t>(a[2 * i] << 8 | a[2 * i + 1])
                                         : static_cast<uint16_t>(a[2 * i] | a[2 * i + 1] << 8);
        return MayOpenContraction(table, mapped, unit, languageBit);
    };
    unsigned safe = n;
    while (safe > 0 && (opens(safe - 1) || (safe >= 2 && opens(safe - 2)))) --safe;
    return safe;
}

// The comparison key of the character at p when GetNextOrder(1) would give it by a
// plain record of the dense range, and that character is significant (not of the
// space or symbol class) or the end of the text. False sends the character to the
// full walk: a contraction, a language variant, a record beyond the dense range.
inline bool PlainKey(const unsigned char* p, unsigned width, bool big, const LmCollationTable& table,
                     uint16_t languageBit, unsigned char textFamily, uint32_t& key) {
    const uint16_t unit = width == 1 ? p[0]
                          : big      ? static_cast<uint16_t>(p[0] << 8 | p[1])
                                     : static_cast<uint16_t>(p[0] | p[1] << 8);
    if (unit == 0) {
        key = 0;
        return true;
    }
    if (unit >= table.lowLimit) return false;
    const LmCollationRecord& record = table.low[unit];
    if ((record.hasLanguageVariants & languageBit) != 0 || record.hasContraction != 0) return false;
    const unsigned char family = record.familySource != nullptr ? *record.familySource : textFamily;
    const uint16_t order = record.order;
    if (order != 0 && order < LM_ORDER_FIRST_DIGIT && family < LM_FAMILY_HAN) return false;
    key = LmOrderKey(order, family);
    return true;
}

}  // namespace

int LmStrCmp(unsigned char codeSet1, unsigned char language1, const void* text1, unsigned char codeSet2,
             unsigned char language2, const void* text2, unsigned short option, short count, unsigned char format,
             int* difference) {
    if (option == LM_CMP_DEFAULT) option = LmLanguageContext::GetDefaultCmpOp();
    const bool wild = LmWildcardsActive(option);

    // A null left operand is a text like any other to a pattern.
    const bool null1 = IsNullSide(codeSet1, language1);
    const bool null2 = IsNullSide(codeSet2, language2);
    if (null1 && null2) return 0;
    if (null2) return 1;
    if (null1 && !wild) return -1;
    if (count == 0) return 0;

    const uint32_t limit = LimitOf(count);
    if (codeSet1 == LM_CODESET_NATIVE && codeSet2 == LM_CODESET_NATIVE) {
        if (wild) {
            return LmByteWildcardCompare(static_cast<const char*>(text2), static_cast<const char*>(text1), count);
        }
        return CompareBytes(text1, text2, limit);
    }
    if (codeSet1 == LM_CODESET_NATIVE) codeSet1 = LmLanguageContext::GetNativeCodeSet();
    if (codeSet2 == LM_CODESET_NATIVE) codeSet2 = LmLanguageContext::GetNativeCodeSet();

    LmStringIterator it1(static_cast<const char*>(text1 != nullptr ? text1 : LmStringZeroText), codeSet1, language1,
                         format);
    if (codeSet1 == codeSet2 && language1 == language2 && text2 != nullptr) {
        const unsigned width = LmCodeSetWidth(codeSet1);
        unsigned skip = 0;
        // Without wildcards and without a count, a shared start decides nothing.
        if (!wild && limit == kNoLimit && text1 != nullptr) {
            const bool big = (format & 0x0F) == LmFormatBig;
            skip = width * SharedStart(text1, text2, width, it1.table, it1.mapped != 0, it1.languageBit, big);
            // The first characters behind the shared start mostly decide at the primary
            // level already: the first cycle of the walk, without the walk. Its first
            // order words are the ones compared; an expansion's further words and every
            // lower level only count when the primaries are equal.
            uint32_t key1 = 0, key2 = 0;
            if ((option & LM_CMP_EXACT) == 0 && it1.mapped == 0 && it1.table != nullptr &&
                PlainKey(it1.position + skip, width, big, *it1.table, it1.languageBit, it1.textFamily, key1) &&
                PlainKey(static_cast<const unsigned char*>(text2) + skip, width, big, *it1.table, it1.languageBit,
                         it1.textFamily, key2) &&
                (key1 & kPrimaryMask) != (key2 & kPrimaryMask)) {
                const int primary = KeyDiff(key1 & kPrimaryMask, key2 & kPrimaryMask);
                if (difference != nullptr && (option & LM_CMP_SKIP_SPACES) != 0) *difference = primary;
                return primary;
            }
        }
        // Same labels: the second walk is a copy of the first on the other text.
        LmStringIterator it2(it1);
        it2.position = static_cast<unsigned char*>(const_cast<void*>(text2)) + skip;
        it1.position += skip;
        if ((option & LM_CMP_EXACT) != 0) return CompareExact(it1, it2, limit);
        return CompareLevels(it1, it2, option, limit, codeSet1 == LM_CODESET_ORDER, difference);
    }
    LmStringIterator it2(static_cast<const char*>(text2 != nullptr ? text2 : LmStringZeroText), codeSet2, language2,
                         format);
    if ((option & LM_CMP_EXACT) != 0) return CompareExact(it1, it2, limit);
    const bool orderText = codeSet1 == LM_CODESET_ORDER || codeSet2 == LM_CODESET_ORDER;
    return CompareLevels(it1, it2, option, limit, orderText, difference);
}

// The pattern's '*' and '?' are these bytes whatever the wildcard orders are. The
// result is text minus pattern in sign.
int LmByteWildcardCompare(const char* pattern, const char* text, short count) {
    if (pattern == nullptr) return text != nullptr && *text != 0 ? 1 : 0;
    if (text == nullptr) return *pattern == 0 ? 0 : -1;
    const auto* p = reinterpret_cast<const unsigned char*>(pattern);
    const auto* t = reinterpret_cast<const unsigned char*>(text);
    const unsigned char* restart = t;
    uint32_t remaining = LimitOf(count);
    uint32_t back = 0;  // pattern bytes matched since the last asterisk
    bool inStar = false;

    while (*p != 0 || inStar) {
        if (remaining == 0) return 0;
        bool backUp = false;
        if (*p != '*') {
            if (*p == '?') {
                if (*t == 0) return -1;
            } else if (*p != *t) {
                if (!inStar) return *t - *p;
                t = restart;
                p -= back;
                backUp = true;
            }
        }
        if (*p == '*' || backUp) {
            while (*p == '*') ++p;
            if (*p == 0) return 0;
            if (*t == 0) return -1;
            restart = t + 1;
            back = 0;
            inStar = true;
            while (*t != 0 && *t != *p) ++t;  // the pattern byte is literal here, '?' too
            if (*t == 0) return -static_cast<int>(*p);
        }
        if (*p != 0) ++p;
        if (*t != 0) {
            ++t;
            --remaining;
        } else {
            inStar = false;
        }
        if (inStar) ++back;
    }
    return remaining == 0 ? 0 : *t;
}

uint16_t LmFindWildcard(unsigned char codeSet, unsigned char language, const void* text, int starOnly, uint16_t count,
                        uint16_t* byteOffset, unsigned char format) {
    if (byteOffset != nullptr) *byteOffset = 0xFFFF;
    if (text == nullptr) return 0xFFFF;
    // A result must fit in 16 bits, and 65535 itself means none.
    const uint32_t limit = count < 0xFFFF ? count : 0xFFFFu - 1;
    if (codeSet == LM_CODESET_NATIVE) {
        const auto* bytes = static_cast<const unsigned char*>(text);
        for (uint32_t i = 0; i < limit && bytes[i] != 0; ++i) {
            if (bytes[i] == '*' || (starOnly == 0 && bytes[i] == '?')) {
                if (byteOffset != nullptr) *byteOffset = static_cast<uint16_t>(i);
                return static_cast<uint16_t>(i);
            }
        }
        return 0xFFFF;
    }
    const uint16_t asterisk = LmWildcardOrderGet(LM_WILDCARD_ASTERISK);
    const uint16_t question = LmWildcardOrderGet(LM_WILDCARD_QUESTION);
    const char* start = static_cast<const char*>(text);
    LmStringIterator it(start, codeSet, language, format == 255 ? LmFormatLittle : format);
    for (uint32_t n = 0; n < limit; ++n) {
        const char* at = it.GetPosition();
        const uint16_t order = it.GetNextOrder(1);
        if (order == 0) break;
        if (order == asterisk || (starOnly == 0 && order == question)) {
            if (byteOffset != nullptr) *byteOffset = static_cast<uint16_t>(at - start);
            return static_cast<uint16_t>(n);
        }
    }
    return 0xFFFF;
}

int LmString::SetAsterisk(const LmChar& c) {
    LmWildcardOrderSet(LM_WILDCARD_ASTERISK, OrderAlone(c));
    return 0;
}

int LmString::SetQuestion(const LmChar& c) {
    LmWildcardOrderSet(LM_WILDCARD_QUESTION, OrderAlone(c));
    return 0;
}

// Kept for completeness: no comparison reads the escape order, so a literal asterisk
// cannot be matched by a pattern.
int LmString::SetEscape(const LmChar& c) {
    LmWildcardOrderSet(LM_WILDCARD_ESCAPE, OrderAlone(c));
    return 0;
}
