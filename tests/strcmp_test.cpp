// The comparison of texts: the entry rules of LmStrCmp, the byte paths of native
// texts, the exact comparison, the levels (accent, case, ignorable characters), the
// wildcards with their backtracking, the process-wide wildcard characters, the search
// for a wildcard, and the LmChar comparison family. Expected values are worked out
// from the order words: a letter's key is family << 24 | (order & 0x407F) << 8 | case
// and accent in the low byte (lower case adds 32), any other key family << 24 | order << 8.
#include "testkit.h"

using namespace lmtest;

namespace {

constexpr unsigned char kNative = 0, kLatin1 = 1, kCp1252 = 2, kUnicode = 253, kOrders = 254;
constexpr unsigned char kGeneric = 1, kGerman = 2, kSwedish = 3, kSpanishTraditional = 4;
constexpr unsigned short kAll = 0, kExact = LM_CMP_EXACT, kNoWild = LM_CMP_NO_WILDCARD;
constexpr unsigned short kCase = LM_CMP_IGNORE_CASE, kAccent = LM_CMP_IGNORE_ACCENT;
constexpr unsigned short kSpaces = LM_CMP_SKIP_SPACES, kSymbols = LM_CMP_SKIP_SYMBOLS;
constexpr int kSign = 0x7FFFFFFF;  // in a table: only the sign of `sign` is expected

// Latin-1 texts in one language.
int Cmp(const char* left, const char* right, unsigned short option = kAll, short count = -1,
        unsigned char language = kGeneric, int* difference = nullptr) {
    return LmStrCmp(kLatin1, language, left, kLatin1, language, right, option, count, 1, difference);
}

// Restores the wildcard orders (0: read again from code set 1) and the default option.
struct ProcessDefaults {
    unsigned short option = LmString::GetDefaultCmpOp();
    ~ProcessDefaults() {
        for (int which = LM_WILDCARD_ASTERISK; which <= LM_WILDCARD_ESCAPE; ++which) LmWildcardOrderSet(which, 0);
        LmString::SetDefaultCmpOp(option);
    }
};

struct Row {
    const char *left, *right;
    unsigned short option;
    int expected;
    short count = -1;
    unsigned char language = kGeneric;
    int sign = 0;  // with expected kSign: the sign the result must have
};

void Check(const Row* rows, size_t n) {
    for (const Row* r = rows; r != rows + n; ++r) {
        const int got = Cmp(r->left, r->right, r->option, r->count, r->language);
        if (r->expected == kSign) {
            EXPECT_EQ(Sign(got), r->sign) << (r->left ? r->left : "null") << " / " << r->right;
        } else {
            EXPECT_EQ(got, r->expected) << (r->left ? r->left : "null") << " / " << r->right << " option " << r->option;
        }
    }
}

}  // namespace

TEST(StrCmpEntry, NullCountAndNativeBytes) {
    // A null side: language 254, or an order text without language. With wildcards a
    // null left is compared as the text it carries: empty, or "x" here.
    EXPECT_EQ(LmStrCmp(kLatin1, 254, "x", kOrders, 0, nullptr, kAll, -1, 1, nullptr), 0);
    EXPECT_EQ(LmStrCmp(kLatin1, kGeneric, "", kLatin1, 254, nullptr, kAll, -1, 1, nullptr), 1);
    EXPECT_EQ(LmStrCmp(kLatin1, kGeneric, "a", kOrders, 0, "\0\0", kExact, -1, 1, nullptr), 1);
    EXPECT_EQ(LmStrCmp(kLatin1, 254, nullptr, kLatin1, kGeneric, "", kNoWild, -1, 1, nullptr), -1);
    EXPECT_EQ(LmStrCmp(kLatin1, 254, nullptr, kLatin1, kGeneric, "a", kExact, 0, 1, nullptr), -1);
    EXPECT_EQ(LmStrCmp(kLatin1, 254, nullptr, kLatin1, kGeneric, "*", kAll, -1, 1, nullptr), 0);
    EXPECT_LT(LmStrCmp(kLatin1, 254, nullptr, kLatin1, kGeneric, "a", kAll, -1, 1, nullptr), 0);
    EXPECT_GT(LmStrCmp(kLatin1, 254, "x", kLatin1, kGeneric, "a", kAll, -1, 1, nullptr), 0);
    EXPECT_EQ(Cmp("a", "b", kAll, 0), 0);  // count 0 compares nothing

    // Both native without wildcards: unsigned bytes, the difference of the first unequal
    // pair, no levels; with wildcards the byte matcher, pattern on the right.
    const struct {
        const char *a, *b;
        unsigned short option;
        short count;
        int expected;
    } bytes[] = {{"abc", "abd", kNoWild, -1, 'c' - 'd'},
                 {"\xE9", "a", kNoWild, -1, 0xE9 - 'a'},
                 {"ab", "abc", kNoWild, -1, -'c'},
                 {"abc", "abd", kNoWild, 2, 0},
                 {"A", "a", kNoWild, -1, 'A' - 'a'},
                 {nullptr, "", kNoWild, -1, 0},
                 {nullptr, "a", kNoWild, -1, -1},
                 {"a", nullptr, kNoWild, -1, 1},
                 {"", nullptr, kNoWild, -1, 0},
                 {"abc", "a*", kAll, -1, 0},
                 {"abc", "a?", kAll, -1, 'c'}};
    for (const auto& c : bytes) {
        EXPECT_EQ(LmStrCmp(kNative, kGeneric, c.a, kNative, kGeneric, c.b, c.option, c.count, 1, nullptr), c.expected)
            << (c.a ? c.a : "null") << " / " << (c.b ? c.b : "null");
    }
    // One side native: it is taken as code set 1 and ordered by collation.
    EXPECT_EQ(LmStrCmp(kNative, kGeneric, "\xE9", kUnicode, kGeneric, u"\u00E9", kAll, -1, 1, nullptr), 0);
    EXPECT_EQ(LmStrCmp(kNative, kGeneric, "abc", kUnicode, kGeneric, u"a*", kAll, -1, 1, nullptr), 0);
    EXPECT_EQ(LmStrCmp(kNative, kGeneric, "\xE9", kLatin1, kGeneric, "f", kNoWild, -1, 1, nullptr), -0x400);

    // The byte matcher: text minus pattern at the first difference; '?' takes one byte
    // but not the end; '*' backtracks; behind an asterisk the next pattern byte is
    // searched literally, '?' too.
    const struct {
        const char *pattern, *text;
        int count, expected;
    } matcher[] = {
        {nullptr, nullptr, -1, 0},    {nullptr, "a", -1, 1},       {nullptr, "", -1, 0},    {"a", nullptr, -1, -1},
        {"abc", "abd", -1, 1},        {"abc", "ab", -1, -'c'},     {"ab", "abc", -1, 'c'},  {"ab", "abc", 2, 0},
        {"abd", "abc", 3, 'c' - 'd'}, {"a?", "ab", -1, 0},         {"a?", "a", -1, -1},     {"*", "", -1, 0},
        {"a*", "a", -1, 0},           {"*b", "", -1, -1},          {"*x", "abc", -1, -'x'}, {"*ab", "aab", -1, 0},
        {"a*b*c", "axxbyyc", -1, 0},  {"ab*ab", "abxabab", -1, 0}, {"*?", "abc", -1, -'?'}, {"*?", "a?", -1, 0}};
    for (const auto& m : matcher) {
        EXPECT_EQ(LmByteWildcardCompare(m.pattern, m.text, static_cast<short>(m.count)), m.expected)
            << (m.pattern ? m.pattern : "null") << " / " << (m.text ? m.text : "null");
    }
}

TEST(StrCmpLevels, ExactPrimaryAccentCaseAndIgnorables) {
    ProcessDefaults restore;
    const Row rows[] = {// Exact: whole keys, case bits as they stand (lower case has the higher key);
                        // ignorables count: space 0x01002000 against b 0x01401020; no wildcards: '*'
                        // 0x01009F00 is a symbol; languages still give the orders (German sharp s is s
                        // with accent 28, then s).
                        {"a", "A", kExact, 32},
                        {"a b", "ab", kExact, 0x01002000 - 0x01401020},
                        {"abc", "a*", kExact, 0x01401020 - 0x01009F00},
                        {"ab", "ac", kExact, 0, 1},
                        {"ab", "a", kExact, 0x01401020},
                        {"\xDF", "s", kExact, 28, -1, kGerman},
                        // Primary: letters 4 and 3, two bits up in the word, 8 up in the key; the end
                        // against c; symbols < digits < letters.
                        {"b", "a", kAll, 0x400},
                        {"ab", "abc", kAll, -0x01401400},
                        {"1", "a", kAll, kSign, -1, kGeneric, -1},
                        {"!", "1", kExact, kSign, -1, kGeneric, -1},
                        // Accents: the last difference wins (e acute 2 against e grave 3, then a grave
                        // against a acute). Case: the first difference wins, right minus left, so lower
                        // case sorts first. Accent outranks case; a primary difference beats all of them.
                        {"\xE9\xE0", "\xE8\xE1", kAll, 1},
                        {"\xE8\xE1", "\xE9\xE0", kAll, -1},
                        {"\xE9\xE0", "\xE8\xE1", kAccent, 0},
                        {"a", "A", kAll, -32},
                        {"Ab", "aB", kAll, 32},
                        {"ABC", "abc", kCase, 0},
                        {"a\xE9", "Ae", kAll, 2},
                        {"a\xE9", "Ae", kAccent, -32},
                        {"a\xE9", "Ae", kCase, 2},
                        {"a\xE9", "Ae", kCase | kAccent, 0},
                        {"\301b", "ac", kAll, -0x400},
                        // Count: characters looked at; any negative but -1 counts as unsigned.
                        {"ab", "ac", kAll, 0, 1},
                        {"ab", "ac", kAll, -0x400, 2},
                        {"ab", "ac", kAll, -0x400, -2},
                        {"a", "A", 0xFFFF, -32},  // the process-wide default option
                                                  // A space never changes the primary level; noticed, it decides last.
                                                  // The symbol class is skipped by its own option only. Two ignorables
                                                  // in one place: space (32) against hyphen (116). The last ignorable
                                                  // difference wins; case and accents outrank the ignorable level.
                        {"ab c", "abc", kAll, 0x01002000},
                        {"abc", "ab c", kAll, -0x01002000},
                        {"ab c", "abc", kSpaces, 0},
                        {"a b", "ac", kAll, -0x400},
                        {"a-b", "ab", kSpaces, kSign, -1, kGeneric, 1},
                        {"a-b", "ab", kSymbols, 0},
                        {"a- b", "ab", kSymbols | kSpaces, 0},
                        {"a b", "a-b", kAll, (32 - 116) * 256},
                        {"a b-c", "a-b c", kAll, kSign, -1, kGeneric, 1},
                        {"a-b c", "a b-c", kAll, kSign, -1, kGeneric, -1},
                        {"a b", "Ab", kAll, -32},
                        // Each side collates in its own language: German Masse < Masse with sharp s < Massel.
                        {"\xE4", "z", kAll, kSign, -1, kGeneric, -1},
                        {"\xE4", "z", kAll, kSign, -1, kSwedish, 1},
                        {"chx", "cz", kAll, kSign, -1, kGeneric, -1},
                        {"chx", "cz", kAll, kSign, -1, kSpanishTraditional, 1},
                        {"Ma\337e", "Masse", kAll, 28, -1, kGerman},
                        {"Ma\337e", "Massel", kAll, kSign, -1, kGerman, -1}};
    Check(rows, std::size(rows));
    LmString::SetDefaultCmpOp(kCase);
    EXPECT_EQ(Cmp("a", "A", 0xFFFF), 0);
    EXPECT_GT(LmStrCmp(kUnicode, kGeneric, u"\u0416", kLatin1, kGeneric, "z", kAll, -1, 1, nullptr), 0);

    // The difference report: only with LM_CMP_SKIP_SPACES, the primary difference, not
    // the result. A skipped space uses up the count: the left side is cut and the report stays.
    int difference = 99;
    EXPECT_EQ(Cmp("abd", "abc", kAll, -1, kGeneric, &difference), 0x400);
    EXPECT_EQ(difference, 99);
    EXPECT_EQ(Cmp("abd", "abc", kSpaces, -1, kGeneric, &difference), 0x400);
    EXPECT_EQ(difference, 0x400);
    EXPECT_EQ(Cmp("ab", "Ab", kSpaces, -1, kGeneric, &difference), -32);
    EXPECT_EQ(difference, 0);
    difference = 99;
    EXPECT_EQ(Cmp(" a", "a", kSpaces, 1, kGeneric, &difference), -0x01400C00);
    EXPECT_EQ(difference, 99);
    EXPECT_EQ(Cmp(" a", "a", kSpaces, 2, kGeneric, &difference), 0);
    EXPECT_EQ(difference, 0);
}

TEST(StrCmpLevels, CodeSetsAndOrderTexts) {
    // The same letters in code sets 1, 253 and 2 (through Unicode) have the same keys.
    EXPECT_EQ(LmStrCmp(kLatin1, kGeneric, "Stra\337e", kUnicode, kGeneric, u"Stra\u00DFe", kAll, -1, 1, nullptr), 0);
    EXPECT_EQ(LmStrCmp(kUnicode, kGeneric, u"Stra\u00DFe", kCp1252, kGeneric, "Stra\337e", kAll, -1, 1, nullptr), 0);
    EXPECT_EQ(LmStrCmp(kCp1252, kGeneric, "\x80", kUnicode, kGeneric, u"\u20AC", kAll, -1, 1, nullptr), 0);
    // 16-bit texts in big-endian order, both read through the one format.
    const unsigned char big1[] = {0, 'a', 0, 'b', 0, 0}, big2[] = {0, 'a', 0, '*', 0, 0};
    EXPECT_EQ(LmStrCmp(kUnicode, kGeneric, big1, kUnicode, kGeneric, big2, kAll, -1, LmFormatBig, nullptr), 0);
    // An order text (language byte = family) against a text: after the first character both
    // keep their families, so the 'a' behind a character without record stays in family 20.
    const unsigned char words[] = {0x2D, 0x4E, 0x0C, 0x50, 0, 0}, latin[] = {0x0C, 0x50, 0x10, 0x50, 0, 0};
    EXPECT_EQ(LmStrCmp(kOrders, 20, words, kUnicode, kGeneric, u"\u4E2Da", kAll, -1, 1, nullptr), 0);
    EXPECT_EQ(LmStrCmp(kUnicode, kGeneric, u"\u4E2Da", kOrders, 20, words, kAll, -1, 1, nullptr), 0);
    EXPECT_EQ(LmStrCmp(kOrders, 1, latin, kLatin1, kGeneric, "ab", kAll, -1, 1, nullptr), 0);
    EXPECT_EQ(LmStrCmp(kOrders, 1, latin, kLatin1, kGeneric, "aB", kAll, -1, 1, nullptr), -32);
}

TEST(StrCmpWildcards, AsteriskQuestionAndBacktracking) {
    const Row rows[] = {// One asterisk matches every text, the empty one too; a trailing one may match
                        // nothing; a question mark needs a character. The pattern is on the right only:
                        // on the left '*' is an ignorable symbol; without wildcards too.
                        {"", "*", kAll, 0},
                        {nullptr, "*", kAll, 0},
                        {"abc", "***", kAll, 0},
                        {"a", "a*", kAll, 0},
                        {"a", "a?", kAll, -1},
                        {"abc", "a?c", kAll, 0},
                        {"ac", "a?c", kAll, -0x01401400},
                        {"abc", "a?", kAll, 0x01401400},
                        {"*", "abc", kAll, -0x01400C00},
                        {"abc", "a*", kNoWild, 0x01401000},
                        // Backtracking: ab*ab on abxabab finds the last ab; a question mark as the target
                        // lets any character start the tail; noticed ignorables take part in the match.
                        {"abxabab", "ab*ab", kAll, 0},
                        {"abxaba", "ab*ab", kAll, kSign, -1, kGeneric, -1},
                        {"axbyc", "a*b*c", kAll, 0},
                        {"aaab", "*aab", kAll, 0},
                        {"abc", "*x", kAll, kSign, -1, kGeneric, -1},
                        {"abc", "*?c", kAll, 0},
                        {"c", "*?c", kAll, kSign, -1, kGeneric, -1},
                        {"xaybc", "*a?b?", kAll, 0},
                        {"a b", "*b", kAll, 0},
                        {"a-b", "*-b", kAll, 0},
                        // The levels still apply. A difference before the asterisk makes every later
                        // position a mismatch, yet the candidate noted where the tail matched carries it
                        // to the end: case, then accent.
                        {"ab", "*B", kCase, 0},
                        {"ab", "*B", kAll, kSign, -1, kGeneric, -1},
                        {"Abc", "a*", kAll, 32},
                        {"Abc", "a*", kCase, 0},
                        {"Abc", "a*c", kAll, 32},
                        {"eabx", "\xE9*x", kAll, -2},
                        {"eabxy", "\xE9*x", kAll, kSign, -1, kGeneric, -1}};
    Check(rows, std::size(rows));
}

TEST(StrCmpWildcards, ProcessWideCharactersAndFindWildcard) {
    ProcessDefaults restore;
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_ASTERISK), 159);  // '*' in code set 1
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_QUESTION), 122);
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_ESCAPE), 160);
    // The wildcard is an order word: '%' (163) takes the asterisk's part everywhere but
    // in native texts, which keep the bytes '*' and '?'.
    EXPECT_EQ(LmString::SetAsterisk(LmChar('%')), 0);
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_ASTERISK), 163);
    EXPECT_EQ(Cmp("abc", "a%"), 0);
    EXPECT_GT(Cmp("abc", "a*"), 0);
    EXPECT_EQ(LmStrCmp(kLatin1, kGeneric, "abc", kUnicode, kGeneric, u"a%", kAll, -1, 1, nullptr), 0);
    EXPECT_EQ(LmStrCmp(kNative, kGeneric, "abc", kNative, kGeneric, "a*", kAll, -1, 1, nullptr), 0);
    EXPECT_EQ(LmStrCmp(kNative, kGeneric, "abc", kNative, kGeneric, "a%", kAll, -1, 1, nullptr), 'b' - '%');
    EXPECT_EQ(LmFindWildcard(kLatin1, kGeneric, "a*b%", 0, 0xFFFF, nullptr, 1), 3);
    EXPECT_EQ(LmFindWildcard(kNative, kGeneric, "a*b%", 0, 0xFFFF, nullptr, 1), 1);
    // A 16-bit character without record is its own order.
    LmString::SetAsterisk(LmChar(static_cast<unsigned short>(0x4E2D), kUnicode));
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_ASTERISK), 0x4E2D);
    EXPECT_EQ(LmStrCmp(kLatin1, kGeneric, "abc", kUnicode, kGeneric, u"a\u4E2D", kAll, -1, 1, nullptr), 0);
    EXPECT_EQ(LmString::SetQuestion(LmChar('#')), 0);
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_QUESTION), 162);
    EXPECT_EQ(Cmp("abc", "a#c"), 0);
    EXPECT_LT(Cmp("abc", "a?c"), 0);  // '?' is now an ignorable symbol: b meets c
    // The escape order is kept and read by nothing: an asterisk behind it stays a wildcard.
    EXPECT_EQ(LmString::SetEscape(LmChar('!')), 0);
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_ESCAPE), 120);
    LmString::SetAsterisk(LmChar('*'));
    EXPECT_EQ(Cmp("abc", "a!*"), 0);

    for (int which = LM_WILDCARD_ASTERISK; which <= LM_WILDCARD_ESCAPE; ++which) LmWildcardOrderSet(which, 0);
    // The search: order words are counted (sharp s gives two), the count limits the
    // words looked at, native texts go by bytes; the offset is in bytes.
    const struct {
        unsigned char codeSet;
        const void* text;
        int which;
        uint16_t count, expected, offset;
        unsigned char format = 1;
    } finds[] = {{kLatin1, "ab*c?", 0, 0xFFFF, 2, 2},
                 {kLatin1, "ab?c*", 1, 0xFFFF, 4, 4},
                 {kLatin1, "ab?c*", 0, 0xFFFF, 2, 2},
                 {kLatin1, "\xDF*", 0, 0xFFFF, 2, 1},
                 {kUnicode, u"ab?", 0, 0xFFFF, 2, 4, 255},
                 {kLatin1, "abc*", 0, 3, 0xFFFF, 0xFFFF},
                 {kLatin1, "abc*", 0, 4, 3, 3},
                 {kLatin1, "abc", 0, 0xFFFF, 0xFFFF, 0xFFFF},
                 {kLatin1, nullptr, 0, 0xFFFF, 0xFFFF, 0xFFFF},
                 {kNative, "x?y*", 0, 0xFFFF, 1, 1},
                 {kNative, "x?y*", 1, 0xFFFF, 3, 3},
                 {kNative, "x?y*", 1, 3, 0xFFFF, 0xFFFF}};
    for (const auto& f : finds) {
        uint16_t offset = 7;
        EXPECT_EQ(LmFindWildcard(f.codeSet, kGeneric, f.text, f.which, f.count, &offset, f.format), f.expected)
            << "row " << (&f - finds);
        EXPECT_EQ(offset, f.offset) << "row " << (&f - finds);
    }
}

TEST(StrCmpChar, OperatorFamily) {
    ProcessDefaults restore;
    const LmChar a('a'), upperA('A'), b('b');
    const LmChar eAcute(static_cast<unsigned short>(0xE9), kUnicode);
    const unsigned char disk[] = {0x00, 0x61, 0, 0};  // 'a' as a big-endian unit
    const LmChar onDisk(reinterpret_cast<const char*>(disk), kUnicode, kGeneric, LmFormatBig);
    LmString text("chx");
    text.SetLanguage(kSpanishTraditional);
    // != gives the comparison itself, not 1; lower case first; the char form is in code
    // set 1, the unsigned short form in code set 253: collation, not values. The operand
    // on the right is the pattern. One character only: the first order word of sharp s
    // decides. A pointer form compares that character alone, in format 1 whatever its own.
    const std::pair<int, int> cases[] = {{a == LmChar('a'), 1},
                                         {a != upperA, -32},
                                         {b != a, 0x400},
                                         {a < upperA, 1},
                                         {a <= upperA, 1},
                                         {a > upperA, 0},
                                         {a >= upperA, 0},
                                         {a.Compare(upperA, kCase), 0},
                                         {a.Compare(upperA, 0xFFFF), -32},
                                         {eAcute == '\xE9', 1},
                                         {eAcute == static_cast<unsigned short>(0xE9), 1},
                                         {eAcute != 'e', 2},
                                         {eAcute > 'e', 1},
                                         {eAcute >= 'f', 0},
                                         {eAcute < static_cast<unsigned short>('f'), 1},
                                         {eAcute <= static_cast<unsigned short>('e'), 0},
                                         {a <= static_cast<unsigned short>('a'), 1},
                                         {b != static_cast<unsigned short>('a'), 0x400},
                                         {LmChar('x') == '*', 1},
                                         {LmChar('*') == 'x', 0},
                                         {LmChar('\xDF', kLatin1, kGerman) != LmChar('s', kLatin1, kGerman), 28},
                                         {LmChar('\xDF') != 's', 0x100},
                                         {LmChar(text, 0) == LmChar('c', kLatin1, kSpanishTraditional), 1},
                                         {onDisk == static_cast<unsigned short>('a'), 0},
                                         {onDisk == static_cast<unsigned short>(0x6100), 1}};
    for (size_t i = 0; i < std::size(cases); ++i) EXPECT_EQ(cases[i].first, cases[i].second) << "row " << i;
    // The operators follow the process-wide default option.
    LmString::SetDefaultCmpOp(kCase);
    EXPECT_EQ((upperA == 'a') + (upperA == a), 2);
    EXPECT_EQ(upperA.Compare(a, 0), 32);
}

// A count as large as any text here compares whole texts, but the walk then starts at
// the first character, where a comparison without count starts behind the shared
// start of the two texts. Both must give the same answer, and so must the same pair as
// 16-bit text in big-endian order.
TEST(StrCmpLevels, SharedStartDecidesNothing) {
    const char* words[] = {"c",      "ch",   "cha", "chx", "cz",   "ll",        "lla", "dz",        "dzs",
                           "dzsa",   "dza",  "cs",  "csa", "aa",   "aab",       "ab",  "Stra\337e", "Strasse",
                           "ma\337", "mass", "a b", "a-b", "ab c", "\xE9t\xE9", "ete", "Ete",       ""};
    const unsigned char languages[] = {kGeneric, kGerman, kSwedish, kSpanishTraditional, 5, 13};
    const unsigned short options[] = {kNoWild, kNoWild | kCase, kNoWild | kSpaces, kExact};
    for (unsigned char language : languages) {
        for (unsigned short option : options) {
            for (const char* x : words) {
                for (const char* y : words) {
                    for (const char* prefix : {"", "x", "ac", "dd", "Ma"}) {
                        const std::string a = std::string(prefix) + x, b = std::string(prefix) + y;
                        const int skipped = Cmp(a.c_str(), b.c_str(), option, -1, language);
                        EXPECT_EQ(Cmp(a.c_str(), b.c_str(), option, 1000, language), skipped) << a << " / " << b;
                        Bytes wa, wb;
                        for (unsigned char ch : a) wa.insert(wa.end(), {0, ch});
                        for (unsigned char ch : b) wb.insert(wb.end(), {0, ch});
                        wa.insert(wa.end(), {0, 0});
                        wb.insert(wb.end(), {0, 0});
                        EXPECT_EQ(skipped, LmStrCmp(kUnicode, language, wa.data(), kUnicode, language, wb.data(),
                                                    option, -1, LmFormatBig, nullptr))
                            << a << " / " << b << " language " << int{language} << " in code set 253";
                    }
                }
            }
        }
    }
}
