// String operations: number texts and casts, comparison, search with its appended
// asterisk, pieces, changes in place, trims, the list splitter and the doubled buffer
// of the case transform. Every expected value is worked out from the rules by hand.
#include <gtest/gtest.h>

#include <bit>
#include <climits>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "lumotypes.h"

namespace {

using Units = std::vector<uint16_t>;
Units UnitsOf(const LmString& s) {
    Units u(s.Len());
    std::memcpy(u.data(), s.StrGet(), u.size() * 2);
    return u;
}
LmString Wide(const char16_t* text) { return LmString(reinterpret_cast<const unsigned short*>(text)); }

// Sets the manager's option bits and the default compare option; restores both.
struct Defaults {
    Defaults(int options, unsigned short cmpOp)
        : oldOptions(___LmTypeMgrOptions()), oldCmpOp(LmString::GetDefaultCmpOp()) {
        ___LmTypeMgrOptions() = options;
        LmString::SetDefaultCmpOp(cmpOp);
    }
    ~Defaults() {
        ___LmTypeMgrOptions() = oldOptions;
        LmString::SetDefaultCmpOp(oldCmpOp);
    }
    int oldOptions;
    unsigned short oldCmpOp;
};

TEST(StringOpsNumbers, CleaningAndTextHelpers) {
    char buf[32];
    EXPECT_STREQ(LmNumberTextClean("  -000x1F", buf, 32), "-0x1F");  // run collapsed, zero kept before x
    EXPECT_STREQ(LmNumberTextClean("+00-00 007", buf, 32), "+0-0 007");  // a sign ends a run; a blank begins
    EXPECT_STREQ(LmNumberTextClean("123456", buf, 4), "123");
    const uint16_t wide[] = {0x09, '0', '0', '4', '2', 0x263A, '9', 0};  // tab skipped, stop at U+263A
    EXPECT_STREQ(LmNumberTextClean(wide, buf, 32), "042");
    EXPECT_EQ(LmStrToLong(wide), 34);
    EXPECT_EQ(LmStrToLong("  -000x1F"), -31);
    EXPECT_EQ(LmStrToLong("+0010"), 8);
    EXPECT_EQ(LmStrToLong("99999999999"), INT32_MAX);
    EXPECT_EQ(LmStrToLong("-0x80000001"), INT32_MIN);
    EXPECT_EQ(LmStrToInt64("0x7fffffffffffffff"), LLONG_MAX);
    // 40 zeros then 12: collapsed to "012" the number fits the 31 characters, octal 10.
    EXPECT_EQ(LmStrToInt64((std::string(40, '0') + "12").c_str()), 10);

    const uint16_t ab[] = {'a', 'b', 0}, ad[] = {'a', 'd', 0}, empty[] = {0};
    EXPECT_EQ((std::vector<int>{LmWStrCmp(nullptr, nullptr), LmWStrCmp(nullptr, empty), LmWStrCmp(empty, nullptr),
                                LmWStrCmp(ab, ad), LmWStrCmp(ab, empty), LmWStrNCmp(ab, ad, 1), LmWStrNCmp(ad, ab, 2)}),
              (std::vector<int>{0, -1, 1, -2, 'a', 0, 2}));
    uint16_t out[4] = {9, 9, 9, 9};
    EXPECT_EQ(LmWStrCpy(out, ab), out + 3);
    EXPECT_EQ(Units(out, out + 4), (Units{'a', 'b', 0, 9}));
    uint16_t part[4] = {9, 9, 9, 9};
    LmWStrNCpy(part, ad, 1);
    EXPECT_EQ(Units(part, part + 4), (Units{'a', 9, 9, 9}));
    EXPECT_EQ(std::bit_cast<uint64_t>(LmQuietNaN()), 0xFFF8000000000000ull);
    EXPECT_EQ(std::bit_cast<uint64_t>(LmPositiveInfinity()), 0x7FF0000000000000ull);
    EXPECT_EQ(std::bit_cast<uint64_t>(LmNegativeInfinity()), 0xFFF0000000000000ull);
}

TEST(StringOpsNumbers, CastsAndAtol) {
    const LmString octal("010"), hex("0x1A"), big("0x1FFFFFFFF"), none, wideHex = Wide(u"  0x10");
    {
        Defaults clear(0, 0);
        EXPECT_EQ(static_cast<int>(octal), 8);
        EXPECT_EQ(static_cast<short>(hex), 26);
        EXPECT_EQ(static_cast<int>(big), INT32_MAX);  // a 32-bit strtol saturates
        EXPECT_EQ(static_cast<long long>(big), 0x1FFFFFFFFll);
        EXPECT_EQ(static_cast<int>(none), 0);
        EXPECT_EQ(static_cast<double>(none), 0.0);
        EXPECT_EQ(static_cast<double>(LmString("2.5")), 2.5);
        EXPECT_EQ(static_cast<double>(LmString("iNfInItY")), LmPositiveInfinity());
        EXPECT_EQ(static_cast<double>(LmString("abc")), 0.0);  // nothing read: the value stays 0
    }
    {
        Defaults decimal(1, 0);
        EXPECT_EQ(static_cast<int>(octal), 10);
        EXPECT_EQ(static_cast<long long>(hex), 0);  // atoll stops at the x
        EXPECT_EQ(static_cast<int>(LmString("4294967297")), 1);  // narrowed to 32 bits
        // 16-bit text goes by the narrowed text with base 0 whatever the option says.
        EXPECT_EQ(static_cast<int>(wideHex), 16);
        EXPECT_EQ(static_cast<long long>(Wide(u"010")), 8);
    }
    // {result, number}: the number is reset to 0 when the text starts with neither a digit nor '-'.
    using Got = std::pair<int, long long>;
    auto atol = [](const LmString& t) { int n = 7; return Got(t.Atol(n), n); };
    auto strtol = [](const LmString& t) { int n = 7; return Got(t.Strtol(n), n); };
    auto atoll = [](const LmString& t) { long long n = 7; return Got(t.Atoll(n), n); };
    auto strtoll = [](const LmString& t) { long long n = 7; return Got(t.Strtoll(n), n); };
    EXPECT_EQ(atol(LmString("-5")), Got(0, -5));
    EXPECT_EQ(atol(LmString("x")), Got(-1, 0));
    EXPECT_EQ(atol(wideHex), Got(-1, 0));  // the first character is a blank
    EXPECT_EQ(atol(LmString("0x10")), Got(0, 0));
    EXPECT_EQ(strtol(LmString("0x10")), Got(0, 16));
    EXPECT_EQ(atol(Wide(u"077")), Got(0, 63));  // 16-bit: the narrowed text with base 0
    EXPECT_EQ(strtoll(LmString("-0x10")), Got(0, -16));
    EXPECT_EQ(atoll(LmString("12abc")), Got(0, 12));
    EXPECT_EQ(strtoll(none), Got(-1, 0));
}

TEST(StringOps, ComparisonAndFind) {
    Defaults all(0, 0);  // every level, wildcards active
    const LmString abc("abc"), pattern("a*"), upper("ABC");
    EXPECT_LT(abc.Compare(LmString("abd")), 0);
    EXPECT_EQ(abc == pattern, 1);  // the right operand is the pattern
    EXPECT_EQ(pattern == abc, 0);
    EXPECT_EQ(abc == abc, 1);
    EXPECT_NE(abc != upper, 0);
    EXPECT_EQ(abc.Compare(upper, -1, LM_CMP_IGNORE_CASE), 0);
    EXPECT_EQ(abc < upper, 1);  // lower case sorts first at the case level
    EXPECT_EQ(upper >= abc, 1);
    LmString german("abc");
    german.SetLanguage(LM_LANGUAGE_GERMAN);
    EXPECT_EQ(abc.EqualsIgnoreLanguage(german), 1);
    EXPECT_EQ(abc.EqualsIgnoreLanguage(upper), 0);

    const LmString s("abcabc"), wide = Wide(u"abcabc");
    struct Case {
        const char* pattern;
        uint16_t start;
        unsigned short option;
        short expected;
    } cases[] = {
        {"bc", 0, LM_CMP_DEFAULT, 1}, {"bc", 2, LM_CMP_DEFAULT, 4}, {"bcd", 4, LM_CMP_DEFAULT, -1},
        {"ca", 0, 0, 2},  // with the appended asterisk "ca*" matches a prefix of the rest
        {"CA", 0, LM_CMP_IGNORE_CASE, 2}, {"a?c", 0, 0, 0}, {"a?c", 1, 0, 3},
        {"a?c", 0, LM_CMP_NO_WILDCARD, -1},  // the question mark is a plain character
        {"c*b", 0, LM_CMP_DEFAULT, 2},       // default wildcards read within three characters
        {"", 2, LM_CMP_DEFAULT, 2}, {"x", 7, 0, -1},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(s.Find(LmString(c.pattern), c.start, c.option), c.expected) << c.pattern << " " << c.start;
        EXPECT_EQ(wide.Find(LmString(c.pattern), c.start, c.option), c.expected) << "16-bit " << c.pattern;
    }
    EXPECT_EQ(s.Find('c'), 2);
    EXPECT_EQ(s.Find(static_cast<unsigned short>('c'), 3), 5);
    EXPECT_EQ(s.Find(static_cast<unsigned short>(0), 3), 3);  // a pattern without buffer matches at start
    EXPECT_EQ(s.SubStringPos(LmString("cab")), 2);
    EXPECT_EQ(LmString().Find(LmString("")), -1);
    EXPECT_EQ(LmString("").Find(LmString("")), -1);
}

TEST(StringOps, AccessAndPieces) {
    LmString s("abcdef");
    EXPECT_EQ(s[1].GetValue(), 'b');
    EXPECT_EQ(s[6].IsPointerForm(), 1);  // the terminator can be reached
    EXPECT_EQ(s[7].GetCodeSet(), 253);  // beyond: the value-form zero character
    EXPECT_EQ(s[-1].IsPointerForm(), 0);
    s[0] = 'X';
    EXPECT_STREQ(s.StrGet(), "Xbcdef");
    s.SetLanguage(LM_LANGUAGE_GERMAN);
    EXPECT_STREQ(s.Copy(2, 3).StrGet(), "cde");
    EXPECT_EQ(s.Copy(2, 3).GetLanguage(), LM_LANGUAGE_GERMAN);
    EXPECT_STREQ(s.Copy(4).StrGet(), "ef");
    EXPECT_STREQ(s.Left(2).StrGet(), "Xb");
    EXPECT_STREQ(s.Left(99).StrGet(), "Xbcdef");
    EXPECT_STREQ(s.Right(2).StrGet(), "ef");
    EXPECT_STREQ(s.Right(99).StrGet(), "Xbcdef");
    EXPECT_EQ(s.Right(0).GetSize(), 1);
    const LmString wide = Wide(u"abc");
    const LmString emptyRange = wide.Copy(3), noCount = wide.Copy(1, 0);
    EXPECT_EQ(std::pair(emptyRange.GetCodeSet(), emptyRange.GetSize()), std::pair(uint8_t{1}, uint16_t{1}));
    // Count 0 at a position below Len: an empty text in this string's code set.
    EXPECT_EQ(std::pair(noCount.GetCodeSet(), noCount.GetSize()), std::pair(uint8_t{253}, uint16_t{2}));
    EXPECT_EQ(UnitsOf(wide.Right(2)), (Units{'b', 'c'}));
}

TEST(StringOps, ChangesInPlace) {
    Defaults all(0, 0);
    LmString s("abcdef"), w = Wide(u"ab");
    EXPECT_STREQ(s.Cut(1, 2).StrGet(), "adef");
    EXPECT_STREQ(s.Cut(3, 100).StrGet(), "ade");
    EXPECT_STREQ(s.Cut(3).StrGet(), "ade");
    EXPECT_EQ(s.Cut(0, 65535).GetSize(), 1);  // an empty text with a buffer of one width
    EXPECT_EQ(w.Cut(0, 65535).GetSize(), 2);

    LmString t("abc");
    EXPECT_STREQ(t.Insert(LmString("XY"), 3).StrGet(), "abcXY");  // at Len: appends
    EXPECT_STREQ(t.Insert(LmString("Q"), 6).StrGet(), "abcXY");
    EXPECT_STREQ(t.Insert(t, 1).StrGet(), "aabcXYbcXY");
    LmString r("abcdef");
    EXPECT_STREQ(r.Replace(LmString("XYZ"), 4).StrGet(), "abcdXY");  // never grows
    EXPECT_STREQ(r.Replace(LmString("Q"), 6).StrGet(), "abcdXY");
    EXPECT_STREQ(r.Replace(LmString("Q"), 0).StrGet(), "QbcdXY");

    LmString a("abca"), b("banana"), c("banana"), e("abc");
    EXPECT_STREQ(a.ReplaceAll(LmString("a"), LmString("aa")).StrGet(), "aabcaa");  // resumes behind "aa"
    EXPECT_STREQ(b.ReplaceAll('a', '\0').StrGet(), "bnn");
    EXPECT_STREQ(c.ReplaceAll(LmString("an"), LmString("AN"), 2).StrGet(), "banANa");
    EXPECT_STREQ(e.ReplaceAll(LmString(""), LmString("x")).StrGet(), "abc");
    LmString u = Wide(u"aba");
    EXPECT_EQ(UnitsOf(u.ReplaceAll(static_cast<unsigned short>('a'), static_cast<unsigned short>(0x263A))),
              (Units{0x263A, 'b', 0x263A}));
    {
        Defaults ignoreCase(0, LM_CMP_IGNORE_CASE);
        LmString d("bAnana");
        EXPECT_STREQ(d.ReplaceAll(LmString("an"), LmString("x")).StrGet(), "bxxa");
    }

    LmString x("ab");
    EXPECT_STREQ(x.Expand(5, '.').StrGet(), "ab...");
    EXPECT_STREQ(x.Expand(1, '.').StrGet(), "ab...");
    LmString y("ab");
    EXPECT_STREQ(y.Expand(3, static_cast<unsigned short>(0xE9)).StrGet(), "ab\xE9");  // mapped to Latin-1
    EXPECT_EQ(y.GetCodeSet(), 1);
    EXPECT_STREQ(y.Fill(3, 'z').StrGet(), "zzz");
    EXPECT_EQ(y.Fill(0, 'z').GetSize(), 1);
    LmString v = Wide(u"ab");
    EXPECT_EQ(UnitsOf(v.Fill(2, static_cast<unsigned short>(0x263A))), (Units{0x263A, 0x263A}));
}

TEST(StringOps, TrimsSplitAndTransform) {
    Defaults all(0, 0);
    LmString l("   "), r("   "), both("  a b  "), w = Wide(u"  x  ");
    EXPECT_EQ(l.LeftTrim().GetSize(), 1);
    EXPECT_STREQ(r.RightTrim().StrGet(), " ");  // the first character is never examined
    EXPECT_STREQ(both.Trim().StrGet(), "a b");
    EXPECT_EQ(UnitsOf(w.Trim()), (Units{'x'}));
    // A buffer larger than its text is trimmed from the buffer's end: "a b", a zero,
    // the terminator. The walk passes the two zeros and stops at b, keeping Len+1-2.
    LmString inner("a b");
    inner.Expand(4, '\0');
    EXPECT_EQ(inner.GetSize(), 5);
    EXPECT_STREQ(inner.RightTrim().StrGet(), "a ");

    auto split = [](const char* list, const char* separator) {
        LmString text(list), item;
        std::vector<std::string> items;
        unsigned short position = 0;
        int rc;
        while ((rc = LmSplitList(text, item, LmString(separator), position)) == 0) items.push_back(item.StrGet());
        EXPECT_EQ(rc, LM_ERR_BAD_POSITION);
        return items;
    };
    EXPECT_EQ(split(",a, b ,,c", ","), (std::vector<std::string>{"a", "b", "", "c"}));
    EXPECT_EQ(split("a::b:c", "::"), (std::vector<std::string>{"a", ":b:c"}));  // one character skipped
    EXPECT_EQ(split(nullptr, ","), std::vector<std::string>{});  // no buffer

    LmString sharp = Wide(u"\u00DFa");
    EXPECT_EQ(UnitsOf(sharp.ToUpper()), (Units{'S', 'S', 'A'}));
    // The doubled size is 16-bit: 32768 bytes double to 0, which holds only the
    // terminator; 40000 double to 14464, and the text is cut to fit.
    LmString wrap(std::string(32767, 'a').c_str()), cut(std::string(39999, 'a').c_str());
    EXPECT_EQ(wrap.ToUpper().GetSize(), 1);
    EXPECT_EQ(cut.ToUpper().GetSize(), 14464);
    EXPECT_EQ(cut.Len(), 14463);
    EXPECT_EQ(cut[14462].GetValue(), 'A');
}

}  // namespace
