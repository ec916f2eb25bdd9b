// The comparison of texts: the entry rules of LmStrCmp, the byte paths of native
// texts, the exact comparison, the levels (accent, case, ignorable characters), the
// wildcards with their backtracking, the process-wide wildcard characters, the search
// for a wildcard, and the LmChar comparison family. Expected values are worked out
// from the order words: a letter's key is family << 24 | (order & 0x407F) << 8 | case
// and accent in the low byte (lower case adds 32), any other key family << 24 | order << 8.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <string>
#include <vector>

#include "lumotypes.h"

// Every allocation of the test program is counted, the library's included, so that a
// test can check that a comparison allocates nothing.
namespace {
long allocations = 0;
}

void* operator new(std::size_t n) {
    ++allocations;
    if (void* p = std::malloc(n != 0 ? n : 1)) return p;
    throw std::bad_alloc();
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }

namespace {

constexpr unsigned char kNative = 0, kLatin1 = 1, kCp1252 = 2, kUnicode = 253, kOrders = 254;
constexpr unsigned char kGeneric = 1, kGerman = 2, kSwedish = 3, kSpanishTraditional = 4;
constexpr unsigned short kAll = 0;  // every level, wildcards active

// Latin-1 texts in the generic language.
int Cmp(const char* left, const char* right, unsigned short option = kAll, short count = -1,
        int* difference = nullptr) {
    return LmStrCmp(kLatin1, kGeneric, left, kLatin1, kGeneric, right, option, count, 1, difference);
}
int Sign(int v) { return (v > 0) - (v < 0); }

// Restores the wildcard orders (0: read again from code set 1) and the default option.
struct ProcessDefaults {
    unsigned short option = LmString::GetDefaultCmpOp();
    ~ProcessDefaults() {
        for (int which = LM_WILDCARD_ASTERISK; which <= LM_WILDCARD_ESCAPE; ++which) LmWildcardOrderSet(which, 0);
        LmString::SetDefaultCmpOp(option);
    }
};

TEST(StrCmpEntry, NullCountAndNativeBytes) {
    // A null side: language 254, or an order text without language.
    EXPECT_EQ(LmStrCmp(kLatin1, 254, "x", kOrders, 0, nullptr, kAll, -1, 1, nullptr), 0);
    EXPECT_EQ(LmStrCmp(kLatin1, kGeneric, "", kLatin1, 254, nullptr, kAll, -1, 1, nullptr), 1);
    EXPECT_EQ(LmStrCmp(kLatin1, kGeneric, "a", kOrders, 0, "\0\0", LM_CMP_EXACT, -1, 1, nullptr), 1);
    EXPECT_EQ(LmStrCmp(kLatin1, 254, nullptr, kLatin1, kGeneric, "", LM_CMP_NO_WILDCARD, -1, 1, nullptr), -1);
    EXPECT_EQ(LmStrCmp(kLatin1, 254, nullptr, kLatin1, kGeneric, "a", LM_CMP_EXACT, 0, 1, nullptr), -1);
    // With wildcards a null left is compared as the text it carries: empty, or "x" here.
    EXPECT_EQ(LmStrCmp(kLatin1, 254, nullptr, kLatin1, kGeneric, "*", kAll, -1, 1, nullptr), 0);
    EXPECT_LT(LmStrCmp(kLatin1, 254, nullptr, kLatin1, kGeneric, "a", kAll, -1, 1, nullptr), 0);
    EXPECT_GT(LmStrCmp(kLatin1, 254, "x", kLatin1, kGeneric, "a", kAll, -1, 1, nullptr), 0);
    // Count 0 compares nothing.
    EXPECT_EQ(Cmp("a", "b", kAll, 0), 0);

    // Both native without wildcards: unsigned bytes, the difference of the first unequal pair.
    auto bytes = [](const char* a, const char* b, short count = -1) {
        return LmStrCmp(kNative, kGeneric, a, kNative, kGeneric, b, LM_CMP_NO_WILDCARD, count, 1, nullptr);
    };
    EXPECT_EQ(bytes("abc", "abd"), 'c' - 'd');
    EXPECT_EQ(bytes("\xE9", "a"), 0xE9 - 'a');  // 136: unsigned, and not the collation order
    EXPECT_EQ(bytes("ab", "abc"), -'c');
    EXPECT_EQ(bytes("abc", "abd", 2), 0);
    EXPECT_EQ(bytes("A", "a"), 'A' - 'a');  // no levels: upper case sorts first here
    EXPECT_EQ(bytes(nullptr, ""), 0);
    EXPECT_EQ(bytes(nullptr, "a"), -1);
    EXPECT_EQ(bytes("a", nullptr), 1);
    EXPECT_EQ(bytes("", nullptr), 0);
    // Both native with wildcards: the byte matcher, pattern on the right.
    EXPECT_EQ(LmStrCmp(kNative, kGeneric, "abc", kNative, kGeneric, "a*", kAll, -1, 1, nullptr), 0);
    EXPECT_EQ(LmStrCmp(kNative, kGeneric, "abc", kNative, kGeneric, "a?", kAll, -1, 1, nullptr), 'c');
    // One side native: it is taken as code set 1 and ordered by collation, with wildcards by order.
    const unsigned short eAcute[] = {0xE9, 0}, pattern[] = {'a', '*', 0};
    EXPECT_EQ(LmStrCmp(kNative, kGeneric, "\xE9", kUnicode, kGeneric, eAcute, kAll, -1, 1, nullptr), 0);
    EXPECT_EQ(LmStrCmp(kNative, kGeneric, "abc", kUnicode, kGeneric, pattern, kAll, -1, 1, nullptr), 0);
    EXPECT_EQ(LmStrCmp(kNative, kGeneric, "\xE9", kLatin1, kGeneric, "f", LM_CMP_NO_WILDCARD, -1, 1, nullptr), -0x400);
}

TEST(StrCmpEntry, ByteWildcardMatcher) {
    EXPECT_EQ(LmByteWildcardCompare(nullptr, nullptr, -1), 0);
    EXPECT_EQ(LmByteWildcardCompare(nullptr, "a", -1), 1);
    EXPECT_EQ(LmByteWildcardCompare(nullptr, "", -1), 0);
    EXPECT_EQ(LmByteWildcardCompare("", nullptr, -1), 0);
    EXPECT_EQ(LmByteWildcardCompare("a", nullptr, -1), -1);
    // Text minus pattern at the first difference; a longer text gives its next byte.
    EXPECT_EQ(LmByteWildcardCompare("abc", "abd", -1), 1);
    EXPECT_EQ(LmByteWildcardCompare("abc", "ab", -1), -'c');
    EXPECT_EQ(LmByteWildcardCompare("ab", "abc", -1), 'c');
    EXPECT_EQ(LmByteWildcardCompare("ab", "abc", 2), 0);
    EXPECT_EQ(LmByteWildcardCompare("abd", "abc", 2), 0);
    EXPECT_EQ(LmByteWildcardCompare("abd", "abc", 3), 'c' - 'd');
    // '?' takes one byte but not the end.
    EXPECT_EQ(LmByteWildcardCompare("a?", "ab", -1), 0);
    EXPECT_EQ(LmByteWildcardCompare("a?", "a", -1), -1);
    // '*': empty text, a pattern byte not found (its negative), backtracking.
    EXPECT_EQ(LmByteWildcardCompare("*", "", -1), 0);
    EXPECT_EQ(LmByteWildcardCompare("a*", "a", -1), 0);
    EXPECT_EQ(LmByteWildcardCompare("*b", "", -1), -1);
    EXPECT_EQ(LmByteWildcardCompare("*x", "abc", -1), -'x');
    EXPECT_EQ(LmByteWildcardCompare("*ab", "aab", -1), 0);
    EXPECT_EQ(LmByteWildcardCompare("a*c", "abbc", -1), 0);
    EXPECT_EQ(LmByteWildcardCompare("a*b*c", "axxbyyc", -1), 0);
    EXPECT_EQ(LmByteWildcardCompare("ab*ab", "abxabab", -1), 0);
    // Behind an asterisk the next pattern byte is searched literally, '?' too.
    EXPECT_EQ(LmByteWildcardCompare("*?", "abc", -1), -'?');
    EXPECT_EQ(LmByteWildcardCompare("*?", "a?", -1), 0);
}

TEST(StrCmpLevels, ExactComparison) {
    // Whole keys: the case bits order as they stand (lower case has the higher key).
    EXPECT_EQ(Cmp("a", "A", LM_CMP_EXACT), 32);
    EXPECT_EQ(Cmp("abc", "abc", LM_CMP_EXACT), 0);
    // Ignorable characters count: space (0x01002000) against b (0x01401020).
    EXPECT_EQ(Cmp("a b", "ab", LM_CMP_EXACT), 0x01002000 - 0x01401020);
    // No wildcards: '*' (0x01009F00) is a symbol like any other.
    EXPECT_EQ(Cmp("abc", "a*", LM_CMP_EXACT), 0x01401020 - 0x01009F00);
    EXPECT_EQ(Cmp("ab", "ac", LM_CMP_EXACT, 1), 0);
    EXPECT_EQ(Cmp("ab", "a", LM_CMP_EXACT), 0x01401020);
    // Languages still give the orders: German sharp s is s with accent 28, then s.
    EXPECT_EQ(LmStrCmp(kLatin1, kGerman, "\xDF", kLatin1, kGerman, "s", LM_CMP_EXACT, -1, 1, nullptr), 28);
}

TEST(StrCmpLevels, PrimaryAccentCaseAndCount) {
    EXPECT_EQ(Cmp("abc", "abc"), 0);
    EXPECT_EQ(Cmp("b", "a"), 0x400);           // letters 4 and 3, two bits up in the word, 8 up in the key
    EXPECT_EQ(Cmp("ab", "abc"), -0x01401400);  // the end against c, primary bits only
    EXPECT_LT(Cmp("1", "a"), 0);               // symbols < digits < letters < characters without record
    EXPECT_LT(Cmp("!", "1", LM_CMP_EXACT), 0);
    const unsigned short zhe[] = {0x0416, 0};
    EXPECT_GT(LmStrCmp(kUnicode, kGeneric, zhe, kLatin1, kGeneric, "z", kAll, -1, 1, nullptr), 0);

    // Accents: the last difference wins. é (2) against è (3), then à (3) against á (2).
    EXPECT_EQ(Cmp("\xE9\xE0", "\xE8\xE1"), 1);
    EXPECT_EQ(Cmp("\xE8\xE1", "\xE9\xE0"), -1);
    EXPECT_EQ(Cmp("\xE9\xE0", "\xE8\xE1", LM_CMP_IGNORE_ACCENT), 0);
    // Case: the first difference wins, right minus left, so lower case sorts first.
    EXPECT_EQ(Cmp("a", "A"), -32);
    EXPECT_EQ(Cmp("A", "a"), 32);
    EXPECT_EQ(Cmp("aB", "Ab"), -32);
    EXPECT_EQ(Cmp("Ab", "aB"), 32);
    EXPECT_EQ(Cmp("ABC", "abc", LM_CMP_IGNORE_CASE), 0);
    // Accent outranks case: a/A gives case -32, é/e gives accent +2.
    EXPECT_EQ(Cmp("a\xE9", "Ae"), 2);
    EXPECT_EQ(Cmp("a\xE9", "Ae", LM_CMP_IGNORE_ACCENT), -32);
    EXPECT_EQ(Cmp("a\xE9", "Ae", LM_CMP_IGNORE_CASE), 2);
    EXPECT_EQ(Cmp("a\xE9", "Ae", LM_CMP_IGNORE_CASE | LM_CMP_IGNORE_ACCENT), 0);
    // A primary difference beats all of them.
    EXPECT_EQ(Cmp("\301b", "ac"), -0x400);  // \301 is Á

    // Count: characters looked at; any negative but -1 counts as unsigned.
    EXPECT_EQ(Cmp("ab", "ac", kAll, 1), 0);
    EXPECT_EQ(Cmp("ab", "ac", kAll, 2), -0x400);
    EXPECT_EQ(Cmp("ab", "ac", kAll, -2), -0x400);
    // 0xFFFF is the process-wide default option.
    ProcessDefaults restore;
    EXPECT_EQ(Cmp("a", "A", 0xFFFF), -32);
    LmString::SetDefaultCmpOp(LM_CMP_IGNORE_CASE);
    EXPECT_EQ(Cmp("a", "A", 0xFFFF), 0);
}

TEST(StrCmpLevels, IgnorableCharacters) {
    // A space never changes the primary level; noticed, it decides last.
    EXPECT_EQ(Cmp("ab c", "abc"), 0x01002000);  // the space against nothing
    EXPECT_EQ(Cmp("abc", "ab c"), -0x01002000);
    EXPECT_EQ(Cmp("ab c", "abc", LM_CMP_SKIP_SPACES), 0);
    EXPECT_EQ(Cmp("a ", "a"), 0x01002000);
    EXPECT_EQ(Cmp("a b", "ac"), -0x400);
    // The symbol class is skipped by its own option only.
    EXPECT_EQ(Sign(Cmp("a-b", "ab")), 1);
    EXPECT_EQ(Sign(Cmp("a-b", "ab", LM_CMP_SKIP_SPACES)), 1);
    EXPECT_EQ(Cmp("a-b", "ab", LM_CMP_SKIP_SYMBOLS), 0);
    EXPECT_EQ(Cmp("a- b", "ab", LM_CMP_SKIP_SYMBOLS | LM_CMP_SKIP_SPACES), 0);
    // Two ignorables in one place: their difference, space (32) against hyphen (116).
    EXPECT_EQ(Cmp("a b", "a-b"), (32 - 116) * 256);
    // The last ignorable difference wins.
    EXPECT_EQ(Sign(Cmp("a b-c", "a-b c")), 1);
    EXPECT_EQ(Sign(Cmp("a-b c", "a b-c")), -1);
    // Case and accents outrank the ignorable level.
    EXPECT_EQ(Cmp("a b", "Ab"), -32);
}

TEST(StrCmpLevels, DifferenceReport) {
    int difference = 99;
    EXPECT_EQ(Cmp("abd", "abc", kAll, -1, &difference), 0x400);
    EXPECT_EQ(difference, 99);  // only with LM_CMP_SKIP_SPACES
    EXPECT_EQ(Cmp("abd", "abc", LM_CMP_SKIP_SPACES, -1, &difference), 0x400);
    EXPECT_EQ(difference, 0x400);
    EXPECT_EQ(Cmp("ab", "Ab", LM_CMP_SKIP_SPACES, -1, &difference), -32);
    EXPECT_EQ(difference, 0);  // the primary, not the result
    // A skipped space uses up the count: the left side is cut and the report stays.
    difference = 99;
    EXPECT_EQ(Cmp(" a", "a", LM_CMP_SKIP_SPACES, 1, &difference), -0x01400C00);
    EXPECT_EQ(difference, 99);
    EXPECT_EQ(Cmp(" a", "a", LM_CMP_SKIP_SPACES, 2, &difference), 0);
    EXPECT_EQ(difference, 0);
}

TEST(StrCmpLevels, CodeSetsLanguagesAndOrderTexts) {
    // The same letters in code sets 1, 253 and 2 (through Unicode) have the same keys; \337 is ß.
    const unsigned short strasse[] = {'S', 't', 'r', 'a', 0xDF, 'e', 0};
    EXPECT_EQ(LmStrCmp(kLatin1, kGeneric, "Stra\337e", kUnicode, kGeneric, strasse, kAll, -1, 1, nullptr), 0);
    EXPECT_EQ(LmStrCmp(kUnicode, kGeneric, strasse, kCp1252, kGeneric, "Stra\337e", kAll, -1, 1, nullptr), 0);
    const unsigned short euro[] = {0x20AC, 0};
    EXPECT_EQ(LmStrCmp(kCp1252, kGeneric, "\x80", kUnicode, kGeneric, euro, kAll, -1, 1, nullptr), 0);
    // 16-bit texts in big-endian order, both read through the one format.
    const unsigned char big1[] = {0, 'a', 0, 'b', 0, 0}, big2[] = {0, 'a', 0, '*', 0, 0};
    EXPECT_EQ(LmStrCmp(kUnicode, kGeneric, big1, kUnicode, kGeneric, big2, kAll, -1, LmFormatBig, nullptr), 0);

    // Each side collates in its own language.
    EXPECT_LT(Cmp("\xE4", "z"), 0);
    EXPECT_GT(LmStrCmp(kLatin1, kSwedish, "\xE4", kLatin1, kSwedish, "z", kAll, -1, 1, nullptr), 0);
    EXPECT_LT(Cmp("chx", "cz"), 0);
    EXPECT_GT(LmStrCmp(kLatin1, kSpanishTraditional, "chx", kLatin1, kSpanishTraditional, "cz", kAll, -1, 1, nullptr),
              0);
    // German: Masse < Maße < Massel.
    auto german = [](const char* a, const char* b) {
        return LmStrCmp(kLatin1, kGerman, a, kLatin1, kGerman, b, kAll, -1, 1, nullptr);
    };
    EXPECT_EQ(german("Ma\337e", "Masse"), 28);
    EXPECT_LT(german("Ma\337e", "Massel"), 0);

    // An order text (language byte = family) against a text: after the first character both
    // keep their families, so the 'a' behind a character without record stays in family 20.
    const unsigned char words[] = {0x2D, 0x4E, 0x0C, 0x50, 0, 0};
    const unsigned short text[] = {0x4E2D, 'a', 0};
    EXPECT_EQ(LmStrCmp(kOrders, 20, words, kUnicode, kGeneric, text, kAll, -1, 1, nullptr), 0);
    EXPECT_EQ(LmStrCmp(kUnicode, kGeneric, text, kOrders, 20, words, kAll, -1, 1, nullptr), 0);
    const unsigned char latin[] = {0x0C, 0x50, 0x10, 0x50, 0, 0};  // a b in family 1
    EXPECT_EQ(LmStrCmp(kOrders, 1, latin, kLatin1, kGeneric, "ab", kAll, -1, 1, nullptr), 0);
    EXPECT_EQ(LmStrCmp(kOrders, 1, latin, kLatin1, kGeneric, "aB", kAll, -1, 1, nullptr), -32);
}

TEST(StrCmpWildcards, AsteriskAndQuestion) {
    // One asterisk matches every text, the empty one too.
    EXPECT_EQ(Cmp("", "*"), 0);
    EXPECT_EQ(Cmp(nullptr, "*"), 0);
    EXPECT_EQ(Cmp("anything at all", "*"), 0);
    EXPECT_EQ(Cmp("abc", "***"), 0);
    // A trailing asterisk may match nothing; a question mark needs a character.
    EXPECT_EQ(Cmp("a", "a*"), 0);
    EXPECT_EQ(Cmp("a", "a?"), -1);
    EXPECT_EQ(Cmp("abc", "a?c"), 0);
    EXPECT_EQ(Cmp("ac", "a?c"), -0x01401400);  // the end of the text against c
    EXPECT_EQ(Cmp("abc", "a?"), 0x01401400);
    // The pattern is on the right only: on the left '*' is an ignorable symbol.
    EXPECT_EQ(Cmp("*", "abc"), -0x01400C00);
    // Without wildcards '*' is a symbol: an ignorable one, compared with b.
    EXPECT_EQ(Cmp("abc", "a*", LM_CMP_NO_WILDCARD), 0x01401000);

    // Backtracking: ab*ab on abxabab finds the last ab.
    EXPECT_EQ(Cmp("abxabab", "ab*ab"), 0);
    EXPECT_EQ(Cmp("abab", "ab*ab"), 0);
    EXPECT_LT(Cmp("abxaba", "ab*ab"), 0);
    EXPECT_EQ(Cmp("axbyc", "a*b*c"), 0);
    EXPECT_EQ(Cmp("aab", "*ab"), 0);
    EXPECT_EQ(Cmp("aaab", "*aab"), 0);
    EXPECT_LT(Cmp("abc", "*x"), 0);
    // A question mark as the target: any character may start the tail.
    EXPECT_EQ(Cmp("abc", "*?c"), 0);
    EXPECT_LT(Cmp("c", "*?c"), 0);
    EXPECT_EQ(Cmp("xaybc", "*a?b?"), 0);
    // Noticed ignorables take part in the match behind an asterisk.
    EXPECT_EQ(Cmp("a b", "*b"), 0);
    EXPECT_EQ(Cmp("a-b", "*-b"), 0);

    // The levels still apply: case ignored, *B matches ab; considered, it does not.
    EXPECT_EQ(Cmp("ab", "*B", LM_CMP_IGNORE_CASE), 0);
    EXPECT_LT(Cmp("ab", "*B"), 0);
    EXPECT_EQ(Cmp("Abc", "a*"), 32);  // the pattern matched, the case difference remains
    EXPECT_EQ(Cmp("Abc", "a*", LM_CMP_IGNORE_CASE), 0);
    // A difference before the asterisk makes every later position a mismatch, yet the
    // candidate noted where the tail matched carries it to the end: case, then accent.
    EXPECT_EQ(Cmp("Abc", "a*c"), 32);
    EXPECT_EQ(Cmp("eabx", "\xE9*x"), -2);
    EXPECT_LT(Cmp("eabxy", "\xE9*x"), 0);
}

TEST(StrCmpWildcards, ProcessWideCharacters) {
    ProcessDefaults restore;
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_ASTERISK), 159);  // '*' in code set 1
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_QUESTION), 122);
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_ESCAPE), 160);

    // The wildcard is an order word: '%' (163) takes the asterisk's part everywhere.
    EXPECT_EQ(LmString::SetAsterisk(LmChar('%')), 0);
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_ASTERISK), 163);
    EXPECT_EQ(Cmp("abc", "a%"), 0);
    EXPECT_GT(Cmp("abc", "a*"), 0);
    const unsigned short percent[] = {'a', '%', 0};
    EXPECT_EQ(LmStrCmp(kLatin1, kGeneric, "abc", kUnicode, kGeneric, percent, kAll, -1, 1, nullptr), 0);
    // Native texts on both sides keep the bytes '*' and '?'.
    EXPECT_EQ(LmStrCmp(kNative, kGeneric, "abc", kNative, kGeneric, "a*", kAll, -1, 1, nullptr), 0);
    EXPECT_EQ(LmStrCmp(kNative, kGeneric, "abc", kNative, kGeneric, "a%", kAll, -1, 1, nullptr), 'b' - '%');
    EXPECT_EQ(LmFindWildcard(kLatin1, kGeneric, "a*b%", 0, 0xFFFF, nullptr, 1), 3);
    EXPECT_EQ(LmFindWildcard(kNative, kGeneric, "a*b%", 0, 0xFFFF, nullptr, 1), 1);
    // A 16-bit character without record is its own order.
    LmString::SetAsterisk(LmChar(static_cast<unsigned short>(0x4E2D), kUnicode));
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_ASTERISK), 0x4E2D);
    const unsigned short han[] = {'a', 0x4E2D, 0};
    EXPECT_EQ(LmStrCmp(kLatin1, kGeneric, "abc", kUnicode, kGeneric, han, kAll, -1, 1, nullptr), 0);

    EXPECT_EQ(LmString::SetQuestion(LmChar('#')), 0);
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_QUESTION), 162);
    EXPECT_EQ(Cmp("abc", "a#c"), 0);
    EXPECT_LT(Cmp("abc", "a?c"), 0);  // '?' is now an ignorable symbol: b meets c

    // The escape order is kept and read by nothing: an asterisk behind it stays a wildcard.
    EXPECT_EQ(LmString::SetEscape(LmChar('!')), 0);
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_ESCAPE), 120);
    LmString::SetAsterisk(LmChar('*'));
    EXPECT_EQ(Cmp("abc", "a!*"), 0);
    EXPECT_EQ(Cmp("a\\bc", "a\\*"), 0);
}

TEST(StrCmpWildcards, FindWildcard) {
    uint16_t offset = 0;
    EXPECT_EQ(LmFindWildcard(kLatin1, kGeneric, "ab*c?", 0, 0xFFFF, &offset, 1), 2);
    EXPECT_EQ(offset, 2);
    EXPECT_EQ(LmFindWildcard(kLatin1, kGeneric, "ab?c*", 1, 0xFFFF, &offset, 1), 4);
    EXPECT_EQ(offset, 4);
    EXPECT_EQ(LmFindWildcard(kLatin1, kGeneric, "ab?c*", 0, 0xFFFF, &offset, 1), 2);
    // Order words are counted: sharp s gives two, so the asterisk is word 2 at byte 1.
    EXPECT_EQ(LmFindWildcard(kLatin1, kGeneric, "\xDF*", 0, 0xFFFF, &offset, 1), 2);
    EXPECT_EQ(offset, 1);
    const unsigned short wide[] = {'a', 'b', '?', 0};
    EXPECT_EQ(LmFindWildcard(kUnicode, kGeneric, wide, 0, 0xFFFF, &offset, 255), 2);
    EXPECT_EQ(offset, 4);
    // The count limits the words looked at.
    EXPECT_EQ(LmFindWildcard(kLatin1, kGeneric, "abc*", 0, 3, &offset, 1), 0xFFFF);
    EXPECT_EQ(offset, 0xFFFF);
    EXPECT_EQ(LmFindWildcard(kLatin1, kGeneric, "abc*", 0, 4, &offset, 1), 3);
    EXPECT_EQ(LmFindWildcard(kLatin1, kGeneric, "abc", 0, 0xFFFF, &offset, 1), 0xFFFF);
    EXPECT_EQ(LmFindWildcard(kLatin1, kGeneric, nullptr, 0, 0xFFFF, &offset, 1), 0xFFFF);
    // Native texts: bytes.
    EXPECT_EQ(LmFindWildcard(kNative, kGeneric, "x?y*", 0, 0xFFFF, &offset, 1), 1);
    EXPECT_EQ(offset, 1);
    EXPECT_EQ(LmFindWildcard(kNative, kGeneric, "x?y*", 1, 0xFFFF, &offset, 1), 3);
    EXPECT_EQ(LmFindWildcard(kNative, kGeneric, "x?y*", 1, 3, &offset, 1), 0xFFFF);
}

TEST(StrCmpChar, OperatorFamily) {
    ProcessDefaults restore;
    const LmChar a('a'), upperA('A'), b('b');
    EXPECT_EQ(a == LmChar('a'), 1);
    EXPECT_EQ(a != upperA, -32);  // the comparison itself, not 1
    EXPECT_EQ(b != a, 0x400);
    EXPECT_EQ(a < upperA, 1);  // lower case first
    EXPECT_EQ(a <= upperA, 1);
    EXPECT_EQ(a > upperA, 0);
    EXPECT_EQ(a >= upperA, 0);
    EXPECT_EQ(a.Compare(upperA, LM_CMP_IGNORE_CASE), 0);
    EXPECT_EQ(a.Compare(upperA, 0xFFFF), -32);
    // The char form is in code set 1, the unsigned short form in code set 253: collation, not values.
    const LmChar eAcute(static_cast<unsigned short>(0xE9), kUnicode);
    EXPECT_EQ(eAcute == '\xE9', 1);
    EXPECT_EQ(eAcute == static_cast<unsigned short>(0xE9), 1);
    EXPECT_EQ(eAcute != 'e', 2);
    EXPECT_EQ(eAcute > 'e', 1);
    EXPECT_EQ(eAcute >= 'f', 0);
    EXPECT_EQ(eAcute < static_cast<unsigned short>('f'), 1);
    EXPECT_EQ(eAcute <= static_cast<unsigned short>('e'), 0);
    EXPECT_EQ(b != static_cast<unsigned short>('a'), 0x400);
    // The operand on the right is the pattern.
    EXPECT_EQ(LmChar('x') == '*', 1);
    EXPECT_EQ(LmChar('*') == 'x', 0);
    // One character only: the first order word of sharp s decides (German: s with accent 28).
    EXPECT_EQ(LmChar('\xDF', kLatin1, kGerman) != LmChar('s', kLatin1, kGerman), 28);
    EXPECT_EQ(LmChar('\xDF') != 's', 0x100);  // generic: s with extension 1
    // A pointer form compares that character alone, in format 1 whatever its own format.
    LmString text("chx");
    text.SetLanguage(kSpanishTraditional);
    EXPECT_EQ(LmChar(text, 0) == LmChar('c', kLatin1, kSpanishTraditional), 1);
    const unsigned char disk[] = {0x00, 0x61, 0, 0};  // 'a' as a big-endian unit
    const LmChar onDisk(reinterpret_cast<const char*>(disk), kUnicode, kGeneric, LmFormatBig);
    EXPECT_EQ(onDisk.GetValue(), 'a');
    EXPECT_EQ(onDisk == static_cast<unsigned short>('a'), 0);
    EXPECT_EQ(onDisk == static_cast<unsigned short>(0x6100), 1);
    // The operators follow the process-wide default option.
    LmString::SetDefaultCmpOp(LM_CMP_IGNORE_CASE);
    EXPECT_EQ(upperA == 'a', 1);
    EXPECT_EQ(upperA == a, 1);
    EXPECT_EQ(upperA.Compare(a, 0), 32);
}

TEST(StrCmpPerformance, NoAllocationWithoutWildcards) {
    const unsigned short wide[] = {'S', 't', 'r', 'a', 0xDF, 'e', 0};
    const long before = allocations;
    int sum = 0;
    sum += Sign(Cmp("Stra\337e und Meer", "strasse-und meer"));
    sum += Sign(LmStrCmp(kLatin1, kGerman, "Stra\337e", kUnicode, kGerman, wide, kAll, -1, 1, nullptr));
    sum += Sign(Cmp("abc", "abd", LM_CMP_EXACT));
    sum += Sign(Cmp("abc", "abc*"));  // a trailing asterisk needs no candidate
    sum += Sign(LmChar('a') != 'b');
    EXPECT_EQ(allocations, before);
    EXPECT_EQ(sum, 1 + 0 - 1 + 0 - 1);
    // The counter does see the library: backtracking over candidates allocates them.
    EXPECT_EQ(Cmp("abxabab", "ab*ab"), 0);
    EXPECT_GT(allocations, before);
}

}  // namespace

namespace {

// A count as large as any text here compares whole texts, but the walk then starts at
// the first character, where a comparison without count starts behind the shared
// start of the two texts. Both must give the same answer.
TEST(StrCmpLevels, SharedStartDecidesNothing) {
    const char* words[] = {"c",    "ch",   "cha",  "chx",  "cz",    "ll",    "lla",   "dz",      "dzs",
                           "dzsa", "dza",  "cs",   "csa",  "aa",    "aab",   "ab",    "Stra\337e", "Strasse",
                           "ma\337", "mass", "a b", "a-b",  "ab c",  "\xE9t\xE9", "ete", "Ete",  ""};
    const unsigned char languages[] = {kGeneric, kGerman, kSwedish, kSpanishTraditional, 5, 13};
    const unsigned short options[] = {LM_CMP_NO_WILDCARD, LM_CMP_NO_WILDCARD | LM_CMP_IGNORE_CASE,
                                      LM_CMP_NO_WILDCARD | LM_CMP_SKIP_SPACES, LM_CMP_EXACT};
    for (unsigned char language : languages) {
        for (unsigned short option : options) {
            for (const char* x : words) {
                for (const char* y : words) {
                    for (const char* prefix : {"", "x", "ac", "dd", "Ma"}) {
                        const std::string a = std::string(prefix) + x, b = std::string(prefix) + y;
                        const int whole = LmStrCmp(kLatin1, language, a.c_str(), kLatin1, language, b.c_str(),
                                                   option, 1000, 1, nullptr);
                        const int skipped = LmStrCmp(kLatin1, language, a.c_str(), kLatin1, language, b.c_str(),
                                                     option, -1, 1, nullptr);
                        EXPECT_EQ(whole, skipped) << a << " / " << b << " language " << int(language);
                        // The same pair as 16-bit text in big-endian order.
                        std::vector<unsigned char> wa, wb;
                        for (unsigned char ch : a) wa.insert(wa.end(), {0, ch});
                        for (unsigned char ch : b) wb.insert(wb.end(), {0, ch});
                        wa.insert(wa.end(), {0, 0});
                        wb.insert(wb.end(), {0, 0});
                        EXPECT_EQ(skipped, LmStrCmp(kUnicode, language, wa.data(), kUnicode, language, wb.data(),
                                                    option, -1, LmFormatBig, nullptr))
                            << a << " / " << b << " language " << int(language) << " in code set 253";
                    }
                }
            }
        }
    }
}

}  // namespace
