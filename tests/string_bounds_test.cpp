// EvalAndBound of strings (id 11) and of the fixed-form strings (ids 20, 21): the
// bounds a pattern gives and the share of a key range. Values and range keys are
// order-form keys, as an index holds them, built by Translate. The bounds of a
// pattern are checked against the keys Translate builds of its prefix: the lower
// bound is the prefix's key, the upper bound the key of the prefix and the asterisk
// with the asterisk's word replaced by the high pad 0xFFFE.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "lumotypes.h"

namespace {

using Bytes = std::vector<uint8_t>;
const LmTypeMgr mgr;
constexpr unsigned short EQ = LM_BOUND_EQ, LT = LM_BOUND_LT, GT = LM_BOUND_GT;
constexpr unsigned char kKey = 0x81;  // order form, least significant byte first

// The order-form key of a Latin-1 text in a language, as an index builds it.
Bytes Key(const std::string& text, unsigned char language = 1, unsigned char format = kKey, unsigned room = 254) {
    LmString s(LM_CODESET_LATIN1, language);
    LmStringAssignRaw(s, text.c_str(), LM_CODESET_LATIN1, 65535, LmFormatLittle);
    Bytes key(room);
    key.resize(mgr.Translate(LmSTRING_T, key.data(), format, room, &s, LmFormatMemory, 0, 1));
    return key;
}

// The key of a pattern's prefix with the high pad behind it.
Bytes PaddedKey(const std::string& prefix, unsigned char language) {
    Bytes key = Key(prefix + "*", language);
    const size_t last = key.size() - 4;  // the asterisk's word, before 00 FF
    key[last] = 0xFE;
    key[last + 1] = 0xFF;
    return key;
}

struct Bounds : LmIdxBounds {
    explicit Bounds(uint8_t capacity = 0) : LmIdxBounds{} { keyCapacity = capacity; }
    Bounds(const Bounds&) = delete;
    ~Bounds() {
        std::free(lower);
        std::free(upper);
    }
    Bytes Lower() const { return Take(lower, lowerLen); }
    Bytes Upper() const { return Take(upper, upperLen); }
    static Bytes Take(void* p, unsigned n) {
        return p != nullptr ? Bytes(static_cast<uint8_t*>(p), static_cast<uint8_t*>(p) + n) : Bytes{};
    }
};

// A key as its record says: length word + 2 bytes, or all of it when cut.
Bytes Record(const Bytes& key) {
    const size_t n = std::min<size_t>(key.size(), (key[0] | key[1] << 8) + 2u);
    return Bytes(key.begin(), key.begin() + static_cast<std::ptrdiff_t>(n));
}

float Eval(char id, Bytes value, const Bytes* lower, const Bytes* upper, unsigned short& op, Bounds* out,
           unsigned char format = 1) {
    Bytes lo = lower ? *lower : Bytes{}, hi = upper ? *upper : Bytes{};
    LmIdxBounds range{lo.data(), hi.data(), static_cast<uint8_t>(lo.size()), static_cast<uint8_t>(hi.size()), 0, 0, 0};
    return mgr.EvalAndBound(id, lower ? &range : nullptr, op, value.data(), format, 1, out, nullptr);
}

// One evaluation with an out of the given key capacity: the share, the word handed
// back and both bounds (empty where none was written).
struct Result {
    float share;
    unsigned short op;
    Bytes lower, upper;
};
Result Evaluate(char id, const Bytes& value, const Bytes* lo, const Bytes* hi, unsigned short op, uint8_t capacity = 0,
                unsigned char format = 1) {
    Bounds out(capacity);
    Result r{0, op, {}, {}};
    r.share = Eval(id, value, lo, hi, r.op, &out, format);
    r.lower = out.Lower();
    r.upper = out.Upper();
    return r;
}

// ---- LmString. ----

TEST(StringBounds, PatternsAndTheirBounds) {
    const Bytes lo = Key("Aal"), hi = Key("Zucker");
    // A prefix: the key of the prefix below, the padded one above, inexact.
    const Result prefix = Evaluate(LmSTRING_T, Key("ab*"), &lo, &hi, EQ, 20);
    EXPECT_EQ(prefix.op, EQ | LM_BOUND_INEXACT);
    EXPECT_EQ(Record(prefix.lower), Key("ab"));
    EXPECT_EQ(Record(prefix.upper), PaddedKey("ab", 1));
    EXPECT_GT(prefix.share, 0.0f);
    EXPECT_LT(prefix.share, 0.01f);
    // Literally: the star is data, the two bounds are one key.
    const Result literal = Evaluate(LmSTRING_T, Key("a*c"), &lo, &hi, EQ | LM_CMP_NO_WILDCARD);
    EXPECT_EQ(literal.op, EQ);
    EXPECT_EQ(Record(literal.lower), Key("a*c"));
    EXPECT_EQ(literal.lower, literal.upper);
    // A leading wildcard: no bound, the whole range.
    const Result leading = Evaluate(LmSTRING_T, Key("*abc"), &lo, &hi, EQ);
    EXPECT_EQ(leading.share, 1.0f);
    EXPECT_EQ(leading.op, EQ | LM_BOUND_INEXACT);
    EXPECT_TRUE(leading.lower.empty() && leading.upper.empty());
    // Without out nothing is measured.
    for (const Bytes& v : {Key("abc"), Key("*")}) {
        unsigned short op = EQ;
        EXPECT_EQ(Eval(LmSTRING_T, v, &lo, &hi, op, nullptr), 0.0f);
    }
    // > writes a lower bound only; 0x1000 with a skip option writes no lower bound,
    // and the last character gives way to the pad.
    const Result above = Evaluate(LmSTRING_T, Key("m"), &lo, &hi, GT);
    EXPECT_EQ(Record(above.lower), Key("m"));
    EXPECT_TRUE(above.upper.empty());
    const Result skipping = Evaluate(LmSTRING_T, Key("m"), &lo, &hi, EQ | LM_CMP_SKIP_SPACES | 0x1000);
    EXPECT_TRUE(skipping.lower.empty());
    EXPECT_EQ(Record(skipping.upper), (Bytes{6, 0, 0xFE, 1, 0xFE, 0xFF, 0, 0xFF}));
    // A native record: the bytes are the key, the pad a byte of 0xFF.
    const Result native = Evaluate(LmSTRING_T, {7, 0, 0, 0, 'a', 'b', '*', 0, 0xFF}, nullptr, nullptr, EQ);
    EXPECT_EQ(native.lower, (Bytes{6, 0, 0, 0, 'a', 'b', 0, 0xFF}));
    EXPECT_EQ(native.upper, (Bytes{7, 0, 0, 0, 'a', 'b', 0xFF, 0, 0xFF}));
    // An empty prefix under a skip option: room for one word, 8 bytes.
    const Result empty = Evaluate(LmSTRING_T, Key(""), &lo, &hi, EQ | LM_CMP_SKIP_SYMBOLS);
    EXPECT_EQ(empty.upper, (Bytes{6, 0, 0xFE, 1, 0xFE, 0xFF, 0, 0xFF}));
    EXPECT_EQ(empty.lower, (Bytes{4, 0, 0xFE, 1, 0, 0xFF}));
}

TEST(StringBounds, CaseAndAccentForcedInBuiltKeys) {
    // Ignoring case and accents, the lower key has every case bit set and no accent,
    // the upper one every accent bit and no case bit, so that all variants lie between.
    const Result r =
        Evaluate(LmSTRING_T, Key("\xE9t\xE9*"), nullptr, nullptr, EQ | LM_CMP_IGNORE_CASE | LM_CMP_IGNORE_ACCENT);
    ASSERT_GE(r.lower.size(), 10u);
    for (size_t at = 4; at + 2 <= 10; at += 2) {
        const uint16_t l = static_cast<uint16_t>(r.lower[at] | r.lower[at + 1] << 8);
        const uint16_t u = static_cast<uint16_t>(r.upper[at] | r.upper[at + 1] << 8);
        EXPECT_EQ(l & 0x3F80, 0x3000) << at;
        EXPECT_EQ(u & 0x3F80, 0x0F80) << at;
        EXPECT_EQ(l & 0x407F, u & 0x407F) << at;
    }
    for (const char* variant : {"ETE", "ete", "\xC9t\xE9", "\xE9T\xC9xyz"}) {
        Bytes k = Key(variant), lower = r.lower, upper = r.upper;
        EXPECT_GE(mgr.Cmp(LmSTRING_T, k.data(), lower.data(), LM_CMP_NO_WILDCARD, 1, kKey), 0) << variant;
        EXPECT_LE(mgr.Cmp(LmSTRING_T, k.data(), upper.data(), LM_CMP_NO_WILDCARD, 1, kKey), 0) << variant;
    }
    // A key of the Han family has no letters to force: its words stay.
    const Bytes han = {8, 0, 0xFE, LM_FAMILY_HAN, 0x23, 0x41, 0x9F, 0x00, 0, 0xFF};
    EXPECT_EQ(Evaluate(LmSTRING_T, han, nullptr, nullptr, EQ | LM_CMP_IGNORE_CASE).lower,
              (Bytes{6, 0, 0xFE, LM_FAMILY_HAN, 0x23, 0x41, 0, 0xFF}));
}

TEST(StringBounds, KeysTheLineCannotTellApart) {
    // A range of two keys equal to the value: the common prefix runs to the end, the
    // positions are all 0, and = covers the one unit of the range.
    const Bytes k = Key("Kaffee");
    EXPECT_EQ(Evaluate(LmSTRING_T, k, &k, &k, EQ).share, 1.0f);
    // Longer than the capacity of the index, and the same as far as the cut key goes.
    const Bytes cut = Key("Kaffeetasse", 1, kKey, 10);  // three words, cut short
    EXPECT_EQ(Evaluate(LmSTRING_T, Key("Kaffeetasse"), &cut, &cut, EQ).share, 1.0f);
    EXPECT_EQ(Evaluate(LmSTRING_T, Key("Kaffeetante"), &cut, &cut, EQ).share, 1.0f);
    // A plain value (not a key) longer than the cut upper key of the range and equal
    // to it as far as it goes: the numbers put it above, the texts add one unit.
    const Bytes aal = Key("Aal");
    for (const char* value : {"Kaffeetasse", "Kaxfeetasse"}) {
        LmString text(value);
        text.SetLanguage(2);  // German: above the keys of family 1 on the line
        Bytes record(20);
        record.resize(mgr.Store(LmSTRING_T, record.data(), &text, LmFormatLittle, 1));
        const float above = Evaluate(LmSTRING_T, record, &aal, &cut, EQ | GT).share;
        EXPECT_EQ(above > 0.0f, value[2] == 'f') << value;
        EXPECT_LT(above, 0.001f);
    }
    // Equal to both range keys, > adds the unit of the one key the texts cannot place.
    EXPECT_EQ(Evaluate(LmSTRING_T, k, &k, &k, GT).share, 1.0f);
    // Native keys: characters above 0x7F are all 127 on the line; = adds a unit.
    const Bytes nat = {6, 0, 0, 0, 0xE4, 'x', 0, 0xFF}, val = {6, 0, 0, 0, 0xF6, 'y', 0, 0xFF};
    EXPECT_EQ(Evaluate(LmSTRING_T, val, &nat, &nat, EQ).share, 1.0f);
    EXPECT_EQ(Evaluate(LmSTRING_T, val, &nat, &nat, LT).share, 1.0f);  // the value lies above, by the line
    EXPECT_EQ(Evaluate(LmSTRING_T, val, &nat, &nat, GT).share, 0.0f);
}

TEST(StringBounds, LongValuesAndBadKeys) {
    // A value of more than 254 key bytes: the bounds are cut at 254 bytes, the lower
    // one without a closing pair (its last word still one of 'q').
    const Result cut = Evaluate(LmSTRING_T, Key(std::string(300, 'q'), 1, kKey, 700), nullptr, nullptr, EQ, 30);
    ASSERT_EQ(cut.lower.size(), 254u);
    EXPECT_EQ(cut.upper.size(), 254u);
    EXPECT_EQ(cut.lower[0] | cut.lower[1] << 8, 254);
    EXPECT_EQ(Bytes(cut.lower.begin() + 252, cut.lower.end()), Bytes(cut.lower.begin() + 4, cut.lower.begin() + 6));
    // A value of exactly 254 key bytes: whole, closed by 00 FF.
    const Bytes full = Evaluate(LmSTRING_T, Key(std::string(124, 'q')), nullptr, nullptr, EQ).lower;
    ASSERT_EQ(full.size(), 254u);
    EXPECT_EQ(full[252] << 8 | full[253], 0x00FF);
    // A prefix of 65531 characters in code set 0: bounds of 254 bytes, no read beyond.
    std::vector<uint8_t> big(2 + 2 + 65531 + 2, 'b');
    big[0] = big[1] = 0xFF;  // L = 65535
    big[2] = big[3] = 0;
    big[2 + 2 + 65530] = '*';
    big[big.size() - 2] = 0;
    big[big.size() - 1] = 0xFF;
    const Result prefix = Evaluate(LmSTRING_T, big, nullptr, nullptr, EQ);
    EXPECT_EQ(prefix.lower.size(), 254u);
    EXPECT_EQ(prefix.op, EQ | LM_BOUND_INEXACT);
    // Range keys cut short, missing, or shorter than their header are read no further
    // than their lengths; an escape at the end and a value of wildcards only.
    const Bytes whole = Key("Kaffee"), tiny(whole.begin(), whole.begin() + 3);
    for (const Bytes& value : {Key("K*"), Key("\\"), Key("**?"), Key("")}) {
        for (const Bytes* range : {&tiny, &whole}) {
            const float share = Evaluate(LmSTRING_T, value, range, &whole, EQ | LT).share;
            EXPECT_TRUE(share >= 0.0f && share <= 1.0f);
        }
    }
}

// Golden bounds of a pattern in each language with a tailoring: for every language
// the relation to the keys of the prefix, and the bytes of German "Mü*".
TEST(StringBounds, TailoredLanguages) {
    struct Case {
        unsigned char language;
        const char* prefix;
    };
    const Case cases[] = {
        {2, "Ma\xDF"}, {2, "M\xFC"}, {3, "\xC5s"}, {3, "\xD6"},  {4, "Ch"},  {4, "ll"},   {5, "Aa"},
        {5, "\xD8"},   {6, "\xE6"},  {7, "\xC4"},  {12, "\xD1"}, {13, "Cs"}, {13, "Dzs"}, {13, "\xF5"},
    };
    const Bytes lo = Key("A"), hi = Key("\xFF\xFF\xFF");
    for (const Case& c : cases) {
        const Result r = Evaluate(LmSTRING_T, Key(std::string(c.prefix) + "*", c.language), &lo, &hi, EQ);
        EXPECT_EQ(Record(r.lower), Key(c.prefix, c.language)) << int(c.language) << " " << c.prefix;
        EXPECT_EQ(Record(r.upper), PaddedKey(c.prefix, c.language)) << int(c.language) << " " << c.prefix;
    }
    // Without a wildcard a key of one family is exact in every language.
    EXPECT_EQ(Evaluate(LmSTRING_T, Key("M\xFC", 2), &lo, &hi, EQ).op, EQ);
    // Frozen: M 0x403C, u with diaeresis 0x535C, the pad 0xFFFE.
    const Result mu = Evaluate(LmSTRING_T, Key("M\xFC*", 2), nullptr, nullptr, EQ);
    EXPECT_EQ(mu.lower, (Bytes{8, 0, 0xFE, 1, 0x3C, 0x40, 0x5C, 0x53, 0, 0xFF}));
    EXPECT_EQ(mu.upper, (Bytes{10, 0, 0xFE, 1, 0x3C, 0x40, 0x5C, 0x53, 0xFE, 0xFF, 0, 0xFF}));
    // A record in most significant byte first order: the words and the length swap.
    // The bounds are sized by the value's bytes, a character for a word: the lower
    // bound holds M, the upper one M and the pad (an order key reads its words low
    // byte first in every byte order, so a pattern goes to the evaluator as a record).
    LmString text(LM_CODESET_LATIN1, 2);
    text = "M\xFC*";
    Bytes record(16);
    record.resize(mgr.Store(LmSTRING_T, record.data(), &text, LmFormatBig, 1));
    const Result big = Evaluate(LmSTRING_T, record, nullptr, nullptr, EQ, 0, LmFormatBig);
    EXPECT_EQ(big.op, EQ | LM_BOUND_INEXACT);
    EXPECT_EQ(big.lower, (Bytes{0, 6, 0xFE, 1, 0x40, 0x3C, 0, 0xFF}));
    EXPECT_EQ(big.upper, (Bytes{0, 8, 0xFE, 1, 0x40, 0x3C, 0xFF, 0xFE, 0}));
}

// The string line worked out from a key's words: behind `skip` shared words, the next
// three letters by their base, the family in front.
double Line(const Bytes& key, size_t skip) {
    uint32_t w[3] = {0, 0, 0};
    for (size_t i = 0; i < 3 && 4 + 2 * (skip + i) + 2 <= key.size() - 2; ++i)
        w[i] = (key[4 + 2 * (skip + i)] | key[5 + 2 * (skip + i)] << 8) & 0x407F;
    return (w[0] | (key[3] & 0x7Fu) << 16) * 4294967296.0 + (w[1] << 16 | w[2]);
}

TEST(StringBounds, ShareOnTheLineBehindTheCommonPrefix) {
    // "Kakao" between "Kaffee" and "Katze": all three share "Ka"; the line measures the
    // rest. Below: (value - lower) / (upper - lower + one unit of 2^20).
    const Bytes lo = Key("Kaffee"), hi = Key("Katze");
    for (const char* value : {"Kakao", "Kaiser", "Kasse"}) {
        const Bytes v = Key(value);
        const double expected = (Line(v, 2) - Line(lo, 2)) / (Line(hi, 2) - Line(lo, 2) + 1048576.0);
        EXPECT_FLOAT_EQ(Evaluate(LmSTRING_T, v, &lo, &hi, LT).share, float(expected)) << value;
    }
    // Without a shared start, the first letters count.
    const Bytes a = Key("Aal"), z = Key("Zucker"), m = Key("Maus");
    EXPECT_FLOAT_EQ(Evaluate(LmSTRING_T, m, &a, &z, GT).share,
                    float((Line(z, 0) - Line(m, 0)) / (Line(z, 0) - Line(a, 0) + 1048576.0)));
}

// Between the bounds, by the string's own Cmp (a missing bound is no limit).
bool Within(Bytes k, Result& r) {
    return (r.lower.empty() || mgr.Cmp(LmSTRING_T, k.data(), r.lower.data(), LM_CMP_NO_WILDCARD, 1, kKey) >= 0) &&
           (r.upper.empty() || mgr.Cmp(LmSTRING_T, k.data(), r.upper.data(), LM_CMP_NO_WILDCARD, 1, kKey) <= 0);
}

// Every key that matches a pattern lies within its bounds by the string's own Cmp,
// and the share of < grows with the value (one unit of slack, which the comparison of
// texts may add where the line cannot tell a key from the range's end).
TEST(StringBounds, PropertiesOverWords) {
    std::vector<Bytes> keys;
    std::vector<std::string> words;
    std::string list = "Aachen Aal Abend Ahorn Apfel B\xE4r Baum Birne Ch\xE2teau Dach Eule Fa\xDF Fass Fasser Gans ";
    list +=
        "Hund Igel Kaffee Katze Masse Ma\xDF"
        "e Massel M\xFC"
        "ller Mueller Muller Nacht \xD6l Ofen Quelle ";
    list +=
        "Stra\xDF"
        "e \xDC"
        "ber Uhr Zucker";
    for (size_t at = 0, end; at < list.size(); at = end + 1) {
        end = std::min(list.find(' ', at), list.size());
        words.push_back(list.substr(at, end - at));
        keys.push_back(Key(words.back(), 2));
    }
    std::sort(keys.begin(), keys.end(), [](Bytes a, Bytes b) {
        return mgr.Cmp(LmSTRING_T, a.data(), b.data(), LM_CMP_NO_WILDCARD, 1, kKey) < 0;
    });
    const Bytes lo = keys.front(), hi = keys.back();
    for (const std::string& w : words) {
        for (size_t n = 0; n <= w.size(); ++n) {
            for (const std::string& pattern : {w.substr(0, n) + "*", w.substr(0, n)}) {
                Bytes v = Key(pattern, 2);
                Result r = Evaluate(LmSTRING_T, v, &lo, &hi, EQ);
                for (Bytes k : keys) {
                    int status = 0;
                    const bool matches = mgr.Cmp(LmSTRING_T, 0, k.data(), 0, v.data(), 0, 1, kKey, status) == 0;
                    EXPECT_TRUE(!matches || Within(k, r)) << pattern;
                }
            }
        }
    }
    float last = 0;
    for (const Bytes& k : keys) {
        const float share = Evaluate(LmSTRING_T, k, &lo, &hi, LT).share;
        EXPECT_GE(share + 1.0f / 65536, last);
        EXPECT_LE(share, 1.0f);
        last = share;
    }
}

// ---- The fixed-form strings. ----

Bytes Fixed(const std::string& sortBytes, unsigned char flag = 0xC0) {
    Bytes b(sortBytes.size() + 4, 0);
    b[0] = flag;
    b[1] = static_cast<uint8_t>((sortBytes.size() + 1) & 0xFF);
    b[2] = static_cast<uint8_t>((sortBytes.size() + 1) >> 8);
    std::memcpy(b.data() + 3, sortBytes.data(), sortBytes.size());
    return b;
}

TEST(FixedStringBounds, PrefixNumbersAndKeys) {
    // LmCaseIString "ABC": sort bytes 54 5B 5E; three bytes stand for every longer key.
    const Bytes lo = Fixed("\x54"), hi = Fixed("\xB7");  // A .. Z
    const double width = double(0xB7000000u - 0x54000000u + 1);
    const Result abc = Evaluate(LmCASEISTRING_T, Fixed("abc", 0x40), &lo, &hi, EQ);
    EXPECT_FLOAT_EQ(abc.share, float(256 / width));
    EXPECT_EQ(abc.op, EQ);
    EXPECT_EQ(abc.lower, Fixed("\x54\x5B\x5E"));
    EXPECT_EQ(abc.upper, Fixed("\x54\x5B\x5E"));
    // A wildcard: inexact, the upper bound with the pad 0xFF; < counts from A up.
    const Result wild = Evaluate(LmCASEISTRING_T, Fixed("ab*", 0x40), &lo, &hi, LT | EQ);
    EXPECT_FLOAT_EQ(wild.share, float((0x5B0001 + 1 + 0xFF00) / width));
    EXPECT_EQ(wild.op, LT | EQ | LM_BOUND_INEXACT);
    EXPECT_TRUE(wild.lower.empty());
    EXPECT_EQ(wild.upper, Fixed("\x54\x5B\xFF"));
    // LmIString keeps lower case apart: 'a' is 0x4E, below the range; > covers it all.
    EXPECT_FLOAT_EQ(Evaluate(LmISTRING_T, Fixed("a", 0x40), &lo, &hi, GT).share, 1.0f);
    // A leading wildcard covers everything and builds nothing.
    for (const char id : {LmCASEISTRING_T, LmISTRING_T}) {
        const Result none = Evaluate(id, Fixed("?x", 0x40), &lo, &hi, EQ);
        EXPECT_EQ(none.share, 1.0f);
        EXPECT_EQ(none.op, EQ | LM_BOUND_INEXACT);
        EXPECT_TRUE(none.lower.empty() && none.upper.empty());
    }
    // Without a range: width 1, the numbers clamp to 1 and = covers it.
    EXPECT_EQ(Evaluate(LmISTRING_T, Fixed("abcd", 0x40), nullptr, nullptr, EQ).share, 1.0f);
    EXPECT_EQ(Evaluate(LmISTRING_T, Fixed("abcd", 0x40), nullptr, nullptr, GT).share, 0.0f);
}

TEST(FixedStringBounds, SharedPrefixAndCaps) {
    // LmCaseIString reads the numbers behind the bytes the value and both range keys
    // share: "ABCDE" between "ABCDA" and "ABCDZ" lies a quarter of the way.
    const Bytes lo = Fixed("\x54\x5B\x5E\x61\x54"), hi = Fixed("\x54\x5B\x5E\x61\xB7");
    EXPECT_FLOAT_EQ(Evaluate(LmCASEISTRING_T, Fixed("ABCDE", 0x40), &lo, &hi, LT).share,
                    float(double(0x69000000u - 0x54000000u + 1) / double(0xB7000000u - 0x54000000u + 1)));
    EXPECT_EQ(Evaluate(LmISTRING_T, Fixed("ABCDE", 0x40), &lo, &hi, LT).share, 1.0f);  // no skip: one number
    // LmCaseIString caps a bound at 254 bytes, the upper one ending in the pad, and
    // allocates at least the key capacity; LmIString takes the exact size.
    const Result capped = Evaluate(LmCASEISTRING_T, Fixed(std::string(300, 'x'), 0x40), nullptr, nullptr, EQ, 40);
    ASSERT_EQ(capped.lower.size(), 254u);
    EXPECT_EQ(capped.upper[252], 0xFF);
    EXPECT_EQ(capped.lower[252], 0xAF);
    const Result fits = Evaluate(LmCASEISTRING_T, Fixed(std::string(250, 'x'), 0x40), nullptr, nullptr, EQ);
    ASSERT_EQ(fits.upper.size(), 254u);  // exactly 254 bytes: not cut, no pad
    EXPECT_EQ(fits.upper[252], 0xAF);
    EXPECT_EQ(Evaluate(LmISTRING_T, Fixed("ab", 0x40), nullptr, nullptr, EQ, 40).lower, Fixed("\x4E\x5A"));
}

}  // namespace
