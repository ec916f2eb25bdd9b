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

// ---- LmString. ----

TEST(StringBounds, PatternsAndTheirBounds) {
    const Bytes lo = Key("Aal"), hi = Key("Zucker");
    {  // A prefix: the key of the prefix below, the padded one above, inexact.
        unsigned short op = EQ;
        Bounds out(20);
        const float share = Eval(LmSTRING_T, Key("ab*"), &lo, &hi, op, &out);
        EXPECT_EQ(op, EQ | LM_BOUND_INEXACT);
        EXPECT_EQ(Record(out.Lower()), Key("ab"));
        EXPECT_EQ(Record(out.Upper()), PaddedKey("ab", 1));
        EXPECT_GT(share, 0.0f);
        EXPECT_LT(share, 0.01f);
    }
    {  // Literally: the star is data, the two bounds are one key.
        unsigned short op = EQ | LM_CMP_NO_WILDCARD;
        Bounds out;
        Eval(LmSTRING_T, Key("a*c"), &lo, &hi, op, &out);
        EXPECT_EQ(op, EQ);
        EXPECT_EQ(Record(out.Lower()), Key("a*c"));
        EXPECT_EQ(out.Lower(), out.Upper());
    }
    {  // A leading wildcard: no bound, the whole range.
        unsigned short op = EQ;
        Bounds out;
        EXPECT_EQ(Eval(LmSTRING_T, Key("*abc"), &lo, &hi, op, &out), 1.0f);
        EXPECT_EQ(op, EQ | LM_BOUND_INEXACT);
        EXPECT_EQ(out.lower, nullptr);
        EXPECT_EQ(out.upper, nullptr);
    }
    {  // Without out nothing is measured.
        unsigned short op = EQ;
        EXPECT_EQ(Eval(LmSTRING_T, Key("abc"), &lo, &hi, op, nullptr), 0.0f);
        op = EQ;
        EXPECT_EQ(Eval(LmSTRING_T, Key("*"), &lo, &hi, op, nullptr), 0.0f);
    }
    {  // > and < write one side; 0x1000 with a skip option writes no lower bound.
        unsigned short op = GT;
        Bounds out;
        Eval(LmSTRING_T, Key("m"), &lo, &hi, op, &out);
        EXPECT_EQ(Record(out.Lower()), Key("m"));
        EXPECT_EQ(out.upper, nullptr);
        unsigned short skipping = EQ | LM_CMP_SKIP_SPACES | 0x1000;
        Bounds out2;
        Eval(LmSTRING_T, Key("m"), &lo, &hi, skipping, &out2);
        EXPECT_EQ(out2.lower, nullptr);
        EXPECT_EQ(Record(out2.Upper()), (Bytes{6, 0, 0xFE, 1, 0xFE, 0xFF, 0, 0xFF}));  // "m" gives way to the pad
    }
    {  // A native record: the bytes are the key, the pad a byte of 0xFF.
        unsigned short op = EQ;
        Bounds out;
        Eval(LmSTRING_T, {7, 0, 0, 0, 'a', 'b', '*', 0, 0xFF}, nullptr, nullptr, op, &out);
        EXPECT_EQ(out.Lower(), (Bytes{6, 0, 0, 0, 'a', 'b', 0, 0xFF}));
        EXPECT_EQ(out.Upper(), (Bytes{7, 0, 0, 0, 'a', 'b', 0xFF, 0, 0xFF}));
    }
    {  // An empty prefix under a skip option: room for one word, 8 bytes.
        unsigned short op = EQ | LM_CMP_SKIP_SYMBOLS;
        Bounds out;
        Eval(LmSTRING_T, Key(""), &lo, &hi, op, &out);
        EXPECT_EQ(out.Upper(), (Bytes{6, 0, 0xFE, 1, 0xFE, 0xFF, 0, 0xFF}));
        EXPECT_EQ(out.Lower(), (Bytes{4, 0, 0xFE, 1, 0, 0xFF}));
    }
}

TEST(StringBounds, CaseAndAccentForcedInBuiltKeys) {
    // Ignoring case and accents, the lower key has every case bit set and no accent,
    // the upper one every accent bit and no case bit, so that all variants lie between.
    unsigned short op = EQ | LM_CMP_IGNORE_CASE | LM_CMP_IGNORE_ACCENT;
    Bounds out;
    Eval(LmSTRING_T, Key("\xE9t\xE9*"), nullptr, nullptr, op, &out);
    const Bytes lower = out.Lower(), upper = out.Upper();
    ASSERT_GE(lower.size(), 10u);
    for (size_t at = 4; at + 2 <= 10; at += 2) {
        const uint16_t l = static_cast<uint16_t>(lower[at] | lower[at + 1] << 8);
        const uint16_t u = static_cast<uint16_t>(upper[at] | upper[at + 1] << 8);
        EXPECT_EQ(l & 0x3F80, 0x3000) << at;
        EXPECT_EQ(u & 0x3F80, 0x0F80) << at;
        EXPECT_EQ(l & 0x407F, u & 0x407F) << at;
    }
    for (const char* variant : {"ETE", "ete", "\xC9t\xE9", "\xE9T\xC9xyz"}) {
        Bytes k = Key(variant);
        EXPECT_GE(mgr.Cmp(LmSTRING_T, k.data(), out.lower, LM_CMP_NO_WILDCARD, 1, kKey), 0) << variant;
        EXPECT_LE(mgr.Cmp(LmSTRING_T, k.data(), out.upper, LM_CMP_NO_WILDCARD, 1, kKey), 0) << variant;
    }
    // A key of the Han family has no letters to force: its words stay.
    const Bytes han = {8, 0, 0xFE, LM_FAMILY_HAN, 0x23, 0x41, 0x9F, 0x00, 0, 0xFF};
    op = EQ | LM_CMP_IGNORE_CASE;
    Bounds kept;
    Eval(LmSTRING_T, han, nullptr, nullptr, op, &kept);
    EXPECT_EQ(kept.Lower(), (Bytes{6, 0, 0xFE, LM_FAMILY_HAN, 0x23, 0x41, 0, 0xFF}));
}

TEST(StringBounds, KeysTheLineCannotTellApart) {
    // A range of two keys equal to the value: the common prefix runs to the end, the
    // positions are all 0, and = covers the one unit of the range.
    const Bytes k = Key("Kaffee");
    unsigned short op = EQ;
    Bounds out;
    EXPECT_EQ(Eval(LmSTRING_T, k, &k, &k, op, &out), 1.0f);
    // Longer than the capacity of the index and equal to the cut key: one unit.
    const Bytes cut = Key("Kaffeetasse", 1, kKey, 10);  // three words, cut short
    op = EQ;
    Bounds out2;
    EXPECT_GT(Eval(LmSTRING_T, Key("Kaffeetasse"), &cut, &cut, op, &out2), 0.0f);
    op = EQ;
    Bounds out3;
    EXPECT_EQ(Eval(LmSTRING_T, Key("Kaffeetante"), &cut, &cut, op, &out3), 1.0f);  // the same first characters
    // A plain value (not a key) longer than the cut upper key of the range and equal
    // to it as far as it goes: the numbers put it above, the texts add one unit.
    LmString text(LM_CODESET_LATIN1, 2);
    text = "Kaffeetasse";
    Bytes record(20);
    record.resize(mgr.Store(LmSTRING_T, record.data(), &text, LmFormatLittle, 1));
    const Bytes aal = Key("Aal");
    op = EQ | GT;
    Bounds out7;
    const float above = Eval(LmSTRING_T, record, &aal, &cut, op, &out7);
    EXPECT_GT(above, 0.0f);
    EXPECT_LT(above, 0.001f);
    // Native keys: characters above 0x7F are all 127 on the line; = adds a unit.
    const Bytes nat = {6, 0, 0, 0, 0xE4, 'x', 0, 0xFF};
    const Bytes val = {6, 0, 0, 0, 0xF6, 'y', 0, 0xFF};
    op = EQ;
    Bounds out4;
    EXPECT_EQ(Eval(LmSTRING_T, val, &nat, &nat, op, &out4), 1.0f);
    op = LT;
    Bounds out5;
    EXPECT_EQ(Eval(LmSTRING_T, val, &nat, &nat, op, &out5), 1.0f);  // the value lies above, by the line
    op = GT;
    Bounds out6;
    EXPECT_EQ(Eval(LmSTRING_T, val, &nat, &nat, op, &out6), 0.0f);
}

TEST(StringBounds, LongValuesAndBadKeys) {
    // A value of more than 254 key bytes: the lower bound is cut at 254 bytes and has
    // no closing pair.
    const std::string longText(300, 'q');
    unsigned short op = EQ;
    Bounds out(30);
    Eval(LmSTRING_T, Key(longText, 1, kKey, 700), nullptr, nullptr, op, &out);
    EXPECT_EQ(out.lowerLen, 254);
    EXPECT_EQ(out.upperLen, 254);
    const Bytes lower = out.Lower();
    EXPECT_EQ(lower[0] | lower[1] << 8, 254);
    EXPECT_EQ(lower[252], lower[4]);  // still a word of 'q', not a closing pair
    EXPECT_EQ(lower[253], lower[5]);
    // A prefix of 65531 characters in code set 0: bounds of 254 bytes, no read beyond.
    std::vector<uint8_t> big(2 + 2 + 65531 + 2, 'b');
    big[0] = 0xFF;  // L = 65535
    big[1] = 0xFF;
    big[2] = 0;
    big[3] = 0;
    big[2 + 2 + 65530] = '*';
    big[big.size() - 2] = 0;
    big[big.size() - 1] = 0xFF;
    op = EQ;
    Bounds out2;
    Eval(LmSTRING_T, big, nullptr, nullptr, op, &out2);
    EXPECT_EQ(out2.lowerLen, 254);
    EXPECT_EQ(op, EQ | LM_BOUND_INEXACT);
    // Range keys cut short, missing, or shorter than their header are read no further
    // than their lengths; an escape at the end and a value of wildcards only.
    const Bytes whole = Key("Kaffee");
    const Bytes tiny(whole.begin(), whole.begin() + 3);
    for (const Bytes& value : {Key("K*"), Key("\\"), Key("**?"), Key("")}) {
        for (const Bytes* range : {&tiny, &whole}) {
            op = EQ | LT;
            Bounds bad;
            const float share = Eval(LmSTRING_T, value, range, &whole, op, &bad);
            EXPECT_GE(share, 0.0f);
            EXPECT_LE(share, 1.0f);
        }
    }
}

// Golden bounds of a pattern in each language with a tailoring: the bytes of "Ma\xDF*"
// in German, and for every language the relation to the keys of the prefix.
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
        unsigned short op = EQ;
        Bounds out;
        Eval(LmSTRING_T, Key(std::string(c.prefix) + "*", c.language), &lo, &hi, op, &out);
        EXPECT_EQ(Record(out.Lower()), Key(c.prefix, c.language)) << int(c.language) << " " << c.prefix;
        EXPECT_EQ(Record(out.Upper()), PaddedKey(c.prefix, c.language)) << int(c.language) << " " << c.prefix;
    }
    // Frozen: German "Mü*": M 0x403C, u with diaeresis 0x535C, the pad 0xFFFE.
    unsigned short op = EQ;
    Bounds out;
    Eval(LmSTRING_T, Key("M\xFC*", 2), nullptr, nullptr, op, &out);
    EXPECT_EQ(out.Lower(), (Bytes{8, 0, 0xFE, 1, 0x3C, 0x40, 0x5C, 0x53, 0, 0xFF}));
    EXPECT_EQ(out.Upper(), (Bytes{10, 0, 0xFE, 1, 0x3C, 0x40, 0x5C, 0x53, 0xFE, 0xFF, 0, 0xFF}));
    // A record in most significant byte first order: the words and the length swap.
    // The bounds are sized by the value's bytes, a character for a word: the lower
    // bound holds M, the upper one M and the pad (an order key reads its words low
    // byte first in every byte order, so a pattern goes to the evaluator as a record).
    LmString text(LM_CODESET_LATIN1, 2);
    text = "M\xFC*";
    Bytes record(16);
    record.resize(mgr.Store(LmSTRING_T, record.data(), &text, LmFormatBig, 1));
    op = EQ;
    Bounds big;
    Eval(LmSTRING_T, record, nullptr, nullptr, op, &big, LmFormatBig);
    EXPECT_EQ(op, EQ | LM_BOUND_INEXACT);
    EXPECT_EQ(big.Lower(), (Bytes{0, 6, 0xFE, 1, 0x40, 0x3C, 0, 0xFF}));
    EXPECT_EQ(big.Upper(), (Bytes{0, 8, 0xFE, 1, 0x40, 0x3C, 0xFF, 0xFE, 0}));
}

// Between the bounds, by the string's own Cmp (a missing bound is no limit).
bool Within(Bytes& k, const Bounds& out) {
    return (out.lower == nullptr || mgr.Cmp(LmSTRING_T, k.data(), out.lower, LM_CMP_NO_WILDCARD, 1, kKey) >= 0) &&
           (out.upper == nullptr || mgr.Cmp(LmSTRING_T, k.data(), out.upper, LM_CMP_NO_WILDCARD, 1, kKey) <= 0);
}

// Every key that matches a pattern lies within its bounds by the string's own Cmp,
// and the share of < grows with the value (one unit of slack, which the comparison of
// texts may add where the line cannot tell a key from the range's end).
TEST(StringBounds, PropertiesOverWords) {
    const char* words[] = {"Aachen",
                           "Aal",
                           "Abend",
                           "Ahorn",
                           "Apfel",
                           "B\xE4r",
                           "Baum",
                           "Birne",
                           "Ch\xE2teau",
                           "Dach",
                           "Eule",
                           "Fa\xDF",
                           "Fass",
                           "Fasser",
                           "Gans",
                           "Hund",
                           "Igel",
                           "Kaffee",
                           "Katze",
                           "Masse",
                           "Ma\xDF"
                           "e",
                           "Massel",
                           "M\xFC"
                           "ller",
                           "Mueller",
                           "Muller",
                           "Nacht",
                           "\xD6l",
                           "Ofen",
                           "Quelle",
                           "Stra\xDF"
                           "e",
                           "\xDC"
                           "ber",
                           "Uhr",
                           "Zucker"};
    std::vector<Bytes> keys;
    for (const char* w : words) keys.push_back(Key(w, 2));
    std::sort(keys.begin(), keys.end(), [](Bytes a, Bytes b) {
        return mgr.Cmp(LmSTRING_T, a.data(), b.data(), LM_CMP_NO_WILDCARD, 1, kKey) < 0;
    });
    const Bytes lo = keys.front(), hi = keys.back();
    for (const char* w : words) {
        for (size_t n = 0; n <= std::strlen(w); ++n) {
            for (const std::string& pattern : {std::string(w, n) + "*", std::string(w, n)}) {
                Bytes v = Key(pattern, 2);
                unsigned short op = EQ;
                Bounds out;
                Eval(LmSTRING_T, v, &lo, &hi, op, &out);
                for (Bytes k : keys) {
                    int status = 0;
                    if (mgr.Cmp(LmSTRING_T, 0, k.data(), 0, v.data(), 0, 1, kKey, status) != 0) continue;
                    EXPECT_TRUE(Within(k, out)) << pattern;
                }
            }
        }
    }
    float last = 0;
    for (const Bytes& k : keys) {
        unsigned short op = LT;
        Bounds out;
        const float share = Eval(LmSTRING_T, k, &lo, &hi, op, &out);
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
    unsigned short op = EQ;
    Bounds out;
    EXPECT_FLOAT_EQ(Eval(LmCASEISTRING_T, Fixed("abc", 0x40), &lo, &hi, op, &out), float(256 / width));
    EXPECT_EQ(op, EQ);
    EXPECT_EQ(out.Lower(), Fixed("\x54\x5B\x5E"));
    EXPECT_EQ(out.Upper(), Fixed("\x54\x5B\x5E"));
    // A wildcard: inexact, the upper bound with the pad 0xFF; < counts from A up.
    op = LT | EQ;
    Bounds wild;
    EXPECT_FLOAT_EQ(Eval(LmCASEISTRING_T, Fixed("ab*", 0x40), &lo, &hi, op, &wild),
                    float((0x5B0001 + 1 + 0xFF00) / width));
    EXPECT_EQ(op, LT | EQ | LM_BOUND_INEXACT);
    EXPECT_EQ(wild.lower, nullptr);
    EXPECT_EQ(wild.Upper(), Fixed("\x54\x5B\xFF"));
    // LmIString keeps lower case apart: 'a' is 0x4E, below the range; > covers it all.
    op = GT;
    EXPECT_FLOAT_EQ(Eval(LmISTRING_T, Fixed("a", 0x40), &lo, &hi, op, nullptr), 1.0f);
    // A leading wildcard covers everything and builds nothing.
    op = EQ;
    Bounds none;
    EXPECT_EQ(Eval(LmCASEISTRING_T, Fixed("*x", 0x40), &lo, &hi, op, &none), 1.0f);
    EXPECT_EQ(op, EQ | LM_BOUND_INEXACT);
    EXPECT_EQ(none.lower, nullptr);
    op = EQ;
    EXPECT_EQ(Eval(LmISTRING_T, Fixed("?", 0x40), &lo, &hi, op, &none), 1.0f);
    EXPECT_EQ(none.upper, nullptr);
    // Without a range: width 1, the numbers clamp to 1 and = covers it.
    op = EQ;
    EXPECT_EQ(Eval(LmISTRING_T, Fixed("abcd", 0x40), nullptr, nullptr, op, nullptr), 1.0f);
    op = GT;
    EXPECT_EQ(Eval(LmISTRING_T, Fixed("abcd", 0x40), nullptr, nullptr, op, nullptr), 0.0f);
}

TEST(FixedStringBounds, SharedPrefixAndCaps) {
    // LmCaseIString reads the numbers behind the bytes the value and both range keys
    // share: "ABCDE" between "ABCDA" and "ABCDZ" lies a quarter of the way.
    const Bytes lo = Fixed("\x54\x5B\x5E\x61\x54"), hi = Fixed("\x54\x5B\x5E\x61\xB7");
    unsigned short op = LT;
    const float share = Eval(LmCASEISTRING_T, Fixed("ABCDE", 0x40), &lo, &hi, op, nullptr);
    EXPECT_FLOAT_EQ(share, float(double(0x69000000u - 0x54000000u + 1) / double(0xB7000000u - 0x54000000u + 1)));
    op = LT;
    EXPECT_EQ(Eval(LmISTRING_T, Fixed("ABCDE", 0x40), &lo, &hi, op, nullptr), 1.0f);  // no skip: one number
    // LmCaseIString caps a bound at 254 bytes, the upper one ending in the pad, and
    // allocates at least the key capacity; LmIString takes the exact size.
    const Bytes value = Fixed(std::string(300, 'x'), 0x40);
    op = EQ;
    Bounds capped(40);
    Eval(LmCASEISTRING_T, value, nullptr, nullptr, op, &capped);
    EXPECT_EQ(capped.lowerLen, 254);
    EXPECT_EQ(capped.Upper()[252], 0xFF);
    EXPECT_EQ(capped.Lower()[252], 0xAF);
    op = EQ;
    Bounds exact(40);
    Eval(LmISTRING_T, Fixed("ab", 0x40), nullptr, nullptr, op, &exact);
    EXPECT_EQ(exact.lowerLen, 6);
    EXPECT_EQ(exact.Lower(), Fixed("\x4E\x5A"));
}

}  // namespace
