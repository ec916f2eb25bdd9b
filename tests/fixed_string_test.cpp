// LmIString (id 20) and LmCaseIString (id 21): the members, the sort code, the array
// disk form and its sort-form keys, the comparison and match rules, and the slots
// reached through the manager. Sort codes below are read off the type tables by hand:
// LmCaseIString maps 'A' and 'a' to 0x54, 'M' 0x85, 'L' 0x83, 'E' 0x69, 'R' 0x9B,
// 'U' 0x55 .. 'U' 0xA5, 'S' 0x9D, 'T' 0x9F; LmIString keeps lower case apart ('a' 0x4E,
// 'e' 0x64, 'l' 0x82, 'r' 0x9A, 's' 0x9C, 't' 0x9E, 'u' 0xA0). u with diaeresis (252)
// is 0xA5 / 0xA0 with accent 1, sharp s (223) is S S / s s.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "lumotypes.h"

namespace {

using Bytes = std::vector<uint8_t>;
const LmTypeMgr mgr;

Bytes Stored(char id, const std::vector<const char*>& texts, unsigned char format) {
    std::vector<LmCaseIString> c(texts.begin(), texts.end());
    std::vector<LmIString> i(texts.begin(), texts.end());
    void* values = id == LmCASEISTRING_T ? static_cast<void*>(c.data()) : static_cast<void*>(i.data());
    Bytes out(mgr.DiskLenGet(id, values, format, static_cast<unsigned>(texts.size()), LmFormatMemory));
    out.resize(mgr.Store(id, out.data(), values, format, static_cast<unsigned>(texts.size())));
    return out;
}

template <class T>
Bytes Key(const T& value, unsigned targetLength, unsigned char format = 0x81) {
    const char id = std::is_same_v<T, LmCaseIString> ? LmCASEISTRING_T : LmISTRING_T;
    Bytes out(targetLength, 0xEE);
    out.resize(mgr.Translate(id, out.data(), format, targetLength, const_cast<T*>(&value), LmFormatMemory, 0, 1));
    return out;
}

// ---- Members. ----

// Each member's result against the text worked out by hand (null: no buffer).
TEST(FixedStringMembers, ResultsOfEveryMember) {
    const LmCaseIString s("abcdef");
    LmIString self("ab");
    self += self;
    self = self + "c";
    const LmIString& alias = self;
    self = alias;  // onto itself
    const std::pair<LmCaseIString, const char*> cases[] = {
        {LmCaseIString(), nullptr},
        {LmCaseIString(""), nullptr},
        {LmCaseIString('\0'), nullptr},
        {LmCaseIString("abc", 0), nullptr},
        {LmCaseIString("abcdef", 3), "abc"},
        {LmCaseIString("ab", 9), "ab"},
        {LmCaseIString('x'), "x"},
        {LmCaseIString(short{-12}), "-12"},
        {LmCaseIString(4000000000u), "4000000000"},
        {LmCaseIString(1.5), "1.500000"},
        {LmCaseIString(-9223372036854775807LL - 1), "-9223372036854775808"},
        {LmCaseIString(18446744073709551615ULL), "18446744073709551615"},
        {s.Copy(2, 3), "cde"},
        {s.Copy(4, 99), "ef"},
        {s.Copy(7, 1), nullptr},
        {s.Copy(1, 0), nullptr},
        {LmCaseIString(s).Cut(1, 2), "adef"},
        {LmCaseIString(s).Cut(0, 100), nullptr},
        {LmCaseIString(s).Cut(9, 1), "abcdef"},
        {LmCaseIString("ab").Expand(5, '.'), "ab..."},
        {LmCaseIString("abcd").Expand(2, '.'), "abcd"},
        {LmCaseIString("abcd").Fill(2, 'x'), "xxcd"},
        {LmCaseIString("ab").Fill(4, 'x'), "xxxx"},
        {LmCaseIString("ad").Insert(LmCaseIString("bc"), 1), "abcd"},
        {LmCaseIString("ab").Insert(LmCaseIString("cd"), 50), "abcd"},
        {LmCaseIString("abcd").Replace(LmCaseIString("XYZ"), 2), "abXY"},
        {LmCaseIString("abcd").Replace(LmCaseIString("XYZ"), 5), "abcd"},
        {LmCaseIString("a 0 b").SpaceToZero(), "a000b"},
        {LmCaseIString("a 0 b").ZeroToSpace(), "a   b"},
        {LmCaseIString("AZ\xC0\xDE\xD7\xFF\x8C").ToLower(), "az\xE0\xFE\xD7\x9F\x9C"},
        {LmCaseIString("az\xE0\xFE\xD7\x9F\x9C\xF7\xDF").ToUpper(), "AZ\xC0\xDE\xD7\xFF\x8C\xF7\xDF"},
        {LmCaseIString(self.StrGet()), "ababc"},
    };
    for (const auto& [value, text] : cases) {
        EXPECT_EQ(!value, text == nullptr ? 1 : 0) << (&value - &cases[0].first);
        EXPECT_STREQ(value.StrGet(), text != nullptr ? text : "");
    }
    EXPECT_EQ(s.SubStringPos(LmCaseIString("cd")), 2);
    EXPECT_EQ(s.SubStringPos(LmCaseIString("CD")), -1);  // byte-exact
    // Number casts: atoi with a 32-bit long, atof, _atoi64; empty gives 0.
    EXPECT_EQ(static_cast<int>(LmIString()), 0);
    EXPECT_EQ(static_cast<int>(LmIString(" 42xyz")), 42);
    EXPECT_EQ(static_cast<int>(LmIString("99999999999")), 2147483647);
    EXPECT_EQ(static_cast<short>(LmIString("65537")), 1);
    EXPECT_EQ(static_cast<long long>(LmIString("-9000000000")), -9000000000LL);
    EXPECT_DOUBLE_EQ(static_cast<double>(LmIString("2.25e1")), 22.5);
    // A copy and an assignment clear the flag.
    LmCaseIString flagged("k");
    flagged.SetFlag(0xC0);
    EXPECT_EQ(LmCaseIString(flagged).GetFlag(), 0);
    flagged.SetFlag(0x40);
    flagged = "q";
    EXPECT_EQ(flagged.GetFlag(), 0);
}

// ---- Order. ----

TEST(FixedStringOrder, OperatorsFoldCaseOnlyInLmCaseIString) {
    EXPECT_EQ(LmCaseIString("Mueller") == LmCaseIString("MUELLER"), 1);
    EXPECT_EQ(LmIString("Mueller") == LmIString("MUELLER"), 0);
    EXPECT_EQ(LmIString("a") < LmIString("A"), 1);  // lower case just below its upper case
    EXPECT_EQ(LmIString("A") < LmIString("b"), 1);
    // The operators ignore accents; a second letter is a letter of its own.
    EXPECT_EQ(LmCaseIString("\xE9t\xE9") == LmCaseIString("ETE"), 1);
    EXPECT_EQ(LmCaseIString("Stra\xDF"
                            "e") == LmCaseIString("STRASSE"),
              1);
    EXPECT_EQ(LmIString("stra\xDF"
                        "e") == LmIString("strasse"),
              1);
    EXPECT_EQ(LmCaseIString() < LmCaseIString("a"), 1);
    EXPECT_EQ(LmCaseIString() == LmCaseIString(), 1);
}

TEST(FixedStringOrder, SortCompareCodes) {
    // With bit 0x20 an accent mark adds to the primary, a second letter lowers it.
    EXPECT_EQ(LmCaseIStringSortCompare("\xE9", "e", 0, 0x20, 0), 2);
    EXPECT_EQ(LmCaseIStringSortCompare("\xE9", "e", 0, 0, 0), 0);
    EXPECT_EQ(LmCaseIStringSortCompare("\xDF", "s", 0, 0x20, 0), -1);
    EXPECT_EQ(LmCaseIStringSortCompare("\xDF", "ss", 0, 0, 0), 0);
    // A side in sort form is read as it is.
    EXPECT_EQ(LmCaseIStringSortCompare("\x85\xA5", "m\xFC", 0, LM_FIXED_SORT_FORM, 0), 0);
    // Nulls, empties, the limit.
    EXPECT_EQ(LmCaseIStringSortCompare(nullptr, nullptr, 0, 0, 0), 0);
    EXPECT_EQ(LmCaseIStringSortCompare(nullptr, "", 0, 0, 0), -1);
    EXPECT_EQ(LmCaseIStringSortCompare("a", nullptr, 0, 0, 0), 1);
    EXPECT_EQ(LmCaseIStringSortCompare("", "b", 0, 0, 0), -'b');
    EXPECT_EQ(LmCaseIStringSortCompare("abX", "abY", 2, 0, 0), 0);
    // The exceptions of 128..159 and the range rules.
    EXPECT_EQ(LmIStringSortCompare("\x9C", "oe", 0, 0, 0), 0);      // 156: o (0x8A) and 'd' (0x64, e)
    EXPECT_EQ(LmCaseIStringSortCompare("\x9C", "OE", 0, 0, 0), 0);  // 144 'i': O and E
    EXPECT_EQ(LmIStringSortCompare("\x8C", "OE", 0, 0, 0), 0);      // 140 in both types
    EXPECT_EQ(LmCaseIStringSortCompare("\x80", "\xE0", 0, LM_FIXED_SORT_FORM, LM_FIXED_SORT_FORM), -0x60);
    EXPECT_EQ(LmCaseIStringSortCompare("\xA0", "\xB0", 0, 0, LM_FIXED_SORT_FORM), 0);
}

TEST(FixedStringOrder, Match) {
    struct Case {
        const char* pattern;
        const char* text;
        int caseI;
        int plainI;
    };
    const Case cases[] = {
        {"a\\nb", "a\nb", 1, 1}, {"a\\tb\\r", "a\tb\r", 1, 1}, {"ab\\", "ab\\", 0, 0}, {"ab*ab", "abxabab", 1, 1},
        {"a?c", "abc", 1, 1},    {"ab?", "ab", 0, 0},          {"*", "", 1, 1},        {"A*", "abc", 1, 0},
        {"\\*x", "*x", 1, 1},    {"\xE9*", "e", 0, 0},         {"*z", "abc", 0, 0},    {"abc", "ab", 0, 0},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(LmCaseIStringMatch(c.pattern, c.text, 0x40, 0x40), c.caseI) << c.pattern << " " << c.text;
        EXPECT_EQ(LmIStringMatch(c.pattern, c.text, 0x40, 0x40), c.plainI) << c.pattern << " " << c.text;
    }
    // Against a text in sort form: '?' ends the walk with a match, and an accent of
    // the pattern is overlooked, a second letter is not.
    EXPECT_EQ(LmCaseIStringMatch("M?zz", "\x85\xA5", 0, 0xC0), 1);
    EXPECT_EQ(LmCaseIStringMatch("m\xFC*", "\x85\xA5\x83", 0, 0xC0), 1);
    EXPECT_EQ(LmCaseIStringMatch("\xDF", "\x9D\x9D", 0, 0xC0), 0);
    EXPECT_EQ(LmIStringFindWildcard("ab?c*"), 2);
    EXPECT_EQ(LmIStringFindWildcard("a\\"), 1);
    EXPECT_EQ(LmIStringFindWildcard("abc"), -1);
    EXPECT_EQ(LmIStringFindWildcard(nullptr), -1);
}

// ---- Disk form and keys. ----

TEST(FixedStringDisk, GoldenImagesBothOrders) {
    EXPECT_EQ(Stored(LmCASEISTRING_T, {"ab", ""}, 1), (Bytes{0x40, 0x04, 0x00, 'a', 'b', 0, 0}));
    EXPECT_EQ(Stored(LmCASEISTRING_T, {"ab", ""}, 2), (Bytes{0x40, 0x00, 0x04, 'a', 'b', 0, 0}));
    EXPECT_EQ(Stored(LmCASEISTRING_T, {}, 1), (Bytes{0x40, 0x00, 0x00}));
    // Flag 1: any format flag for LmCaseIString, the key bit only for LmIString.
    EXPECT_EQ(Stored(LmCASEISTRING_T, {"x"}, 0x21), (Bytes{0x01, 0x02, 0x00, 'x', 0}));
    EXPECT_EQ(Stored(LmISTRING_T, {"x"}, 0x21), (Bytes{0x40, 0x02, 0x00, 'x', 0}));
    EXPECT_EQ(Stored(LmISTRING_T, {"x"}, 0x82), (Bytes{0x01, 0x00, 0x02, 'x', 0}));

    for (const unsigned char format : {LmFormatLittle, LmFormatBig}) {
        const Bytes image = Stored(LmISTRING_T, {"one", "", "three"}, format);
        LmIString back[3];
        EXPECT_EQ(mgr.Load(LmISTRING_T, back, const_cast<uint8_t*>(image.data()), format, 3), image.size());
        EXPECT_STREQ(back[0].StrGet(), "one");
        EXPECT_EQ(!back[1], 1);
        EXPECT_STREQ(back[2].StrGet(), "three");
        EXPECT_EQ(mgr.DiskLenGet(LmISTRING_T, const_cast<uint8_t*>(image.data()), format, 3, 0), image.size());
    }
    // A T shorter than the strings claim: nothing is read beyond it.
    Bytes cut = {0x40, 0x02, 0x00, 'a', 'b', 'c', 0};
    LmIString two[2];
    EXPECT_EQ(mgr.Load(LmISTRING_T, two, cut.data(), 1, 2), 5u);
    EXPECT_STREQ(two[0].StrGet(), "ab");
    EXPECT_EQ(!two[1], 1);
}

TEST(FixedStringDisk, SizesNullAndHash) {
    LmCaseIString v[2] = {LmCaseIString("Stra\xDF"
                                        "e"),
                          LmCaseIString("ab")};
    EXPECT_EQ(mgr.DiskLenGet(LmCASEISTRING_T, v, 1, 2, LmFormatMemory), 3u + 7 + 3);
    EXPECT_EQ(mgr.DiskLenGet(LmCASEISTRING_T, v, 0x81, 2, LmFormatMemory), 3u + 8 + 3);  // sharp s counts 2
    EXPECT_EQ(mgr.DiskLenGet(LmCASEISTRING_T, v, 0x88, 2, LmFormatMemory), 0u);
    EXPECT_EQ(mgr.Desc(LmCASEISTRING_T)->NullSizeGet(4), 7u);
    int status = 99;
    EXPECT_EQ(mgr.Hash(LmCASEISTRING_T, 0, v, 2, LmFormatMemory, status), 0u);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(mgr.IsNullValue(LmISTRING_T, v), 0);
    EXPECT_EQ(mgr.SetNullPtrGet(LmISTRING_T), nullptr);
    EXPECT_EQ(mgr.GetValue(LmISTRING_T, v, 0, LmFormatMemory, 'N'), LM_ERR_NOT_SUPPORTED);
    const Bytes image = Stored(LmISTRING_T, {"abc"}, 2);
    MemFile file(image.data(), static_cast<uint32_t>(image.size()));
    EXPECT_EQ(mgr.DiskLenGetFromMemFile(LmISTRING_T, &file, 2, 1), 7u);
}

TEST(FixedStringDisk, SortFormKeys) {
    EXPECT_EQ(Key(LmCaseIString("M\xFCller"), 64), (Bytes{0xC0, 0x07, 0x00, 0x85, 0xA5, 0x83, 0x83, 0x69, 0x9B, 0x00}));
    EXPECT_EQ(Key(LmIString("M\xFCller"), 64, 0x82),
              (Bytes{0xC0, 0x00, 0x07, 0x85, 0xA0, 0x82, 0x82, 0x64, 0x9A, 0x00}));
    EXPECT_EQ(Key(LmIString("Stra\xDF"
                            "e"),
                  64),
              (Bytes{0xC0, 0x08, 0x00, 0x9D, 0x9E, 0x9A, 0x4E, 0x9C, 0x9C, 0x64, 0}));
    // targetLength - 4 sort bytes at most; a second letter is not split.
    EXPECT_EQ(Key(LmCaseIString("M\xFCller"), 6), (Bytes{0xC0, 0x03, 0x00, 0x85, 0xA5, 0x00}));
    EXPECT_EQ(Key(LmCaseIString("a\xDF"), 6), (Bytes{0xC0, 0x02, 0x00, 0x54, 0x00}));
    EXPECT_EQ(Key(LmCaseIString("ab"), 3), Bytes{});
    EXPECT_EQ(Key(LmCaseIString("ab"), 4), (Bytes{0xC0, 0x01, 0x00, 0x00}));  // room for the header and the zero
    LmCaseIString two[2] = {LmCaseIString("ab"), LmCaseIString("cd")};  // the first fills the key
    Bytes array(6, 0xEE);
    EXPECT_EQ(mgr.Translate(LmCASEISTRING_T, array.data(), 0x81, 6, two, LmFormatMemory, 0, 2), 6u);
    EXPECT_EQ(array, (Bytes{0xC0, 0x03, 0x00, 0x54, 0x5B, 0x00}));

    // From a stored image: the flag keeps its bits and gains 0xC0; a key is copied.
    Bytes special = Stored(LmCASEISTRING_T, {"ab"}, 0x21);
    Bytes out(16);
    ASSERT_EQ(mgr.Translate(LmCASEISTRING_T, out.data(), 0x81, 16, special.data(), 1, 0, 1), 6u);
    EXPECT_EQ(Bytes(out.begin(), out.begin() + 6), (Bytes{0xC1, 0x03, 0x00, 0x54, 0x5B, 0}));
    Bytes again(16);
    EXPECT_EQ(mgr.Translate(LmCASEISTRING_T, again.data(), 0x81, 16, out.data(), 0x81, 6, 1), 6u);
    EXPECT_EQ(again, out);

    // A key goes back to text through the tables: one representative per code, a
    // second letter (of the sharp s, also at the end) first.
    for (const char* text : {"M\xFCller stra\xDF"
                             "e",
                             "Ma\xDF"}) {
        const Bytes key = Key(LmCaseIString(text), 64);
        LmCaseIString back;
        mgr.Translate(LmCASEISTRING_T, &back, LmFormatMemory, 0, const_cast<uint8_t*>(key.data()), 1, 0, 1);
        EXPECT_STREQ(back.StrGet(), text[1] == 'a' ? "MA\xDF"
                                                   : "MULLER STRA\xDF"
                                                     "E");
        EXPECT_EQ(back == LmCaseIString(text), 1);
    }
}

TEST(FixedStringDisk, TranslateOtherForms) {
    LmIString v("abc");
    Bytes small(5, 0xEE);
    EXPECT_EQ(mgr.Translate(LmISTRING_T, small.data(), 1, 5, &v, LmFormatMemory, 0, 1), 5u);  // cut, not overrun
    EXPECT_EQ(small, (Bytes{0x40, 0x04, 0x00, 'a', 'b'}));
    Bytes wide(9, 0xEE);
    EXPECT_EQ(mgr.Translate(LmISTRING_T, wide.data(), 1, 9, &v, LmFormatMemory, 0, 1), 7u);
    EXPECT_EQ(wide, (Bytes{0x40, 0x04, 0x00, 'a', 'b', 'c', 0, 0, 0}));
    LmIString copy;
    EXPECT_EQ(mgr.Translate(LmISTRING_T, &copy, LmFormatMemory, 0, wide.data(), 1, 9, 1), 7u);
    EXPECT_STREQ(copy.StrGet(), "abc");
    Bytes disk(4, 0xEE);
    EXPECT_EQ(mgr.Translate(LmISTRING_T, disk.data(), 2, 4, wide.data(), 1, 9, 1), 4u);  // moved as it is
    EXPECT_EQ(disk, (Bytes{0x40, 0x04, 0x00, 'a'}));
}

// ---- Comparison by the Cmp slot. ----

struct CmpCase {
    char id;
    Bytes left;
    unsigned len1;
    Bytes right;
    unsigned short option;
    int result;
    int status;
};

TEST(FixedStringCompare, StoredOperands) {
    const Bytes keyABC = {0xC0, 0x04, 0x00, 0x54, 0x5B, 0x5E, 0x00};  // LmCaseIString key of "abc"
    auto plain = [](const char* text) { return Stored(LmISTRING_T, {text}, LmFormatLittle); };
    const CmpCase cases[] = {
        // No wildcard, plain left: the sort comparison with accents (LmCaseIString),
        // then the bytes on equal (LmIString).
        {LmCASEISTRING_T, plain("abc"), 0, plain("ABC"), 0, 0, 0},
        {LmCASEISTRING_T, plain("\xE9"), 0, plain("e"), 0, 2, 0},
        {LmISTRING_T, plain("\xE9"), 0, plain("e"), 0, 0xE9 - 'e', 0},
        {LmISTRING_T, plain("abc"), 0, plain("ABC"), 0, 0x4E - 0x54, 0},
        // A cut left operand: within n - 1 bytes, status 2101.
        {LmCASEISTRING_T, plain("abcdef"), 6, plain("abcxyz"), 0, 0, LM_ERR_OUT_OF_DATA},
        {LmCASEISTRING_T, plain("abcdef"), 6, plain("xbcxyz"), 0, 0x54 - 0xAF, LM_ERR_OUT_OF_DATA},
        // Keys on both sides compare by their bytes; a key on the left only, n - 1 codes.
        {LmCASEISTRING_T, keyABC, 0, keyABC, 0, 0, LM_ERR_OUT_OF_DATA},
        {LmCASEISTRING_T, keyABC, 0, plain("ABCD"), 0, 0, LM_ERR_OUT_OF_DATA},
        // Wildcards in the right operand, plain left.
        {LmCASEISTRING_T, plain("abcd"), 0, plain("AB*"), 0, 0, 0},
        {LmCASEISTRING_T, plain("abd"), 0, plain("abc*"), 0, 0x61 - 0x5E, 0},
        {LmCASEISTRING_T, plain("xyz"), 0, plain("*a"), 0, 1, 0},
        {LmCASEISTRING_T, plain("ab"), 0, plain("ab?"), 0, 1, 0},
        {LmISTRING_T, plain("abcd"), 0, plain("AB*"), 0, 0x4E - 0x54, 0},
        // Wildcards against a key.
        {LmCASEISTRING_T, keyABC, 0, plain("*"), 0, 0, 0},
        {LmCASEISTRING_T, keyABC, 0, plain("abcde*"), 0, 0, LM_ERR_OUT_OF_DATA},
        {LmCASEISTRING_T, keyABC, 0, plain("a*c"), 0, 0, LM_ERR_OUT_OF_DATA},
        {LmCASEISTRING_T, keyABC, 0, plain("abd*"), 0, 0x5E - 0x61, LM_ERR_OUT_OF_DATA},
        {LmCASEISTRING_T, keyABC, 0, plain("x*"), 0, 0x54 - 0xAF, LM_ERR_OUT_OF_DATA},
        {LmCASEISTRING_T, keyABC, 0, plain("abc?"), 0, 1, LM_ERR_OUT_OF_DATA},
        {LmCASEISTRING_T, keyABC, 0, plain("ab?"), 0, 0, LM_ERR_OUT_OF_DATA},
        {LmISTRING_T, keyABC, 0, plain("*"), 0, 0, 0},
        {LmISTRING_T, keyABC, 0, plain("zz*"), 0, 0, LM_ERR_OUT_OF_DATA},
        // Wildcards off: the star is a character.
        {LmCASEISTRING_T, plain("ab*"), 0, plain("AB*"), LM_CMP_NO_WILDCARD, 0, 0},
        {LmCASEISTRING_T, plain("abcd"), 0, plain("ab*"), LM_CMP_NO_WILDCARD, 0x5E - '*', 0},
    };
    for (const CmpCase& c : cases) {
        int status = 99;
        Bytes l = c.left, r = c.right;
        EXPECT_EQ(mgr.Cmp(c.id, c.len1, l.data(), 0, r.data(), c.option, 1, 1, status), c.result)
            << int(c.id) << " " << (&c - cases);
        EXPECT_EQ(status, c.status) << (&c - cases);
    }
}

TEST(FixedStringCompare, ArraysAndLimits) {
    Bytes a = Stored(LmISTRING_T, {"a", "b", "c"}, 2);
    Bytes b = Stored(LmISTRING_T, {"a", "x", "c"}, 2);
    int status = 99;
    EXPECT_LT(mgr.Cmp(LmISTRING_T, 0, a.data(), 0, b.data(), LM_CMP_NO_WILDCARD, 3, 2, status), 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(mgr.Cmp(LmISTRING_T, 0, a.data(), 0, a.data(), LM_CMP_NO_WILDCARD, 4, 2, status), 0);
    EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);  // the fourth element is not there
    EXPECT_EQ(mgr.Cmp(LmISTRING_T, 0, a.data(), 0, a.data(), 0, 0, 2, status), 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(mgr.Cmp(LmISTRING_T, 2, a.data(), 0, a.data(), 0, 1, 2, status), 0);
    EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);  // not even a header
    // A cut operand with 254 bytes or more present is not compared in part.
    Bytes longKey = Stored(LmCASEISTRING_T, {std::string(300, 'q').c_str()}, 1);
    EXPECT_EQ(mgr.Cmp(LmCASEISTRING_T, 3 + 254, longKey.data(), 0, longKey.data(), 0, 1, 1, status), -1);
    EXPECT_EQ(status, LM_ERR_NOT_SUPPORTED);
    EXPECT_EQ(mgr.Cmp(LmCASEISTRING_T, 3 + 253, longKey.data(), 0, longKey.data(), 0, 1, 1, status), 0);
    // In memory, through the short form.
    LmCaseIString m[2] = {LmCaseIString("x"), LmCaseIString("y*")};
    LmCaseIString n[2] = {LmCaseIString("X"), LmCaseIString("Yes")};
    EXPECT_EQ(mgr.Cmp(LmCASEISTRING_T, n, m, 0, 2, LmFormatMemory), 0);
    EXPECT_NE(mgr.Cmp(LmCASEISTRING_T, n, m, LM_CMP_NO_WILDCARD, 2, LmFormatMemory), 0);
    // Two keys in memory compare by their bytes; an empty one lies below.
    LmCaseIString keys[2] = {LmCaseIString(), LmCaseIString("\x54")};
    keys[0].SetFlag(0xC0);
    keys[1].SetFlag(0xC0);
    EXPECT_EQ(mgr.Cmp(LmCASEISTRING_T, &keys[0], &keys[1], 0, 1, LmFormatMemory), -1);
}

// ---- Text and conversion. ----

TEST(FixedStringText, PrintScanConvertDefault) {
    LmCaseIString v("hello");
    LmString out("old");
    mgr.PrintToLmString(LmCASEISTRING_T, out, &v, "[%-7s]", 1);
    EXPECT_STREQ(out.StrGet(), "[hello  ]");
    mgr.PrintToLmString(LmCASEISTRING_T, out, &v, "%d%s", 1);  // not a format of one text
    EXPECT_STREQ(out.StrGet(), "hello");
    LmString wide(LM_CODESET_UNICODE, 1);
    wide += LmString("W\xE4rme");
    EXPECT_EQ(mgr.ScanFromLmString(LmCASEISTRING_T, &v, wide, nullptr, 1), &v);
    EXPECT_STREQ(v.StrGet(), "W\xE4rme");
    EXPECT_EQ(mgr.ScanFromLmString(LmCASEISTRING_T, nullptr, wide, nullptr, 1), nullptr);

    LmIString values[2] = {LmIString("a\xFC"), LmIString()};
    LmTypeConvertData* texts = mgr.ConvertTo(LmISTRING_T, values, 2);
    ASSERT_NE(texts, nullptr);
    EXPECT_EQ(texts->GetString(0)->GetCodeSet(), LM_CODESET_NATIVE);
    EXPECT_STREQ(texts->GetString(0)->StrGet(), "a\xFC");
    EXPECT_EQ(texts->GetString(1)->Len(), 0);
    texts->GetString(1)->SetNullValue();
    auto* back = static_cast<LmIString*>(mgr.ConvertFrom(LmISTRING_T, texts, 3));
    ASSERT_NE(back, nullptr);
    EXPECT_STREQ(back[0].StrGet(), "a\xFC");
    EXPECT_EQ(!back[1], 1);
    EXPECT_EQ(!back[2], 1);
    mgr.Delete(LmISTRING_T, back, 3);
    delete texts;
    auto* defaults = static_cast<LmCaseIString*>(mgr.DefaultValue(LmCASEISTRING_T, 2, 1));
    ASSERT_NE(defaults, nullptr);
    EXPECT_EQ(!defaults[0] && !defaults[1], 1);
    mgr.Delete(LmCASEISTRING_T, defaults, 2);
}

}  // namespace
