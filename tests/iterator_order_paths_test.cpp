// GetNextOrder on the ways a text reaches it that the iterator tests leave out: the
// native code set, 16-bit texts in both byte orders, copies and assigned scratch
// iterators, the mode-0 walk after a family change, values beyond the low records,
// a language that shares its variant bit with a tailored one, and texts in a code
// set lumoi18n does not know. Also the variant bits of the collation records, which
// let a character rule out a language variant without searching.
#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "lumotypes.h"

namespace {

using Words = std::vector<uint16_t>;

constexpr unsigned char kNative = 0, kLatin1 = 1, kUnicode = 253;
constexpr unsigned char kGeneric = 1, kGerman = 2, kSwedish = 3;
constexpr unsigned char kLatin = 1, kHan = 20;  // families

// Orders worked out from the layout 01 cc aaaaa lllll ee (letter 3 is A).
constexpr uint16_t kUpperA = 0x400C, kLowerA = 0x500C, kLowerB = 0x5010;
constexpr uint16_t kLowerADiaeresis = 0x5000 | 6 << 7 | 3 << 2;         // generic a with diaeresis
constexpr uint16_t kSwedishADiaeresis = 0x5000 | 6 << 7 | 28 << 2 | 2;  // after z in Swedish
constexpr uint16_t kSharpS = 0x5000 | 21 << 2 | 1, kLowerS = 0x5000 | 21 << 2;
constexpr uint16_t kGermanSharpS = 0x5000 | 28 << 7 | 21 << 2;                // s with accent 28
constexpr uint16_t kHanWord = 0x4E2D, kHyphen = 0x2010, kHyphenOrder = 0xE0;  // U+2010 sorts as symbol 0xE0

Words Orders(LmStringIterator& it, int mode = 1) {
    Words out;
    for (uint16_t w; out.size() < 50 && (w = it.GetNextOrder(mode)) != 0;) out.push_back(w);
    return out;
}

std::pair<int, int> Next(LmStringIterator& it, int mode = 1) {
    const uint16_t word = it.GetNextOrder(mode);
    return {word, it.GetFamily()};
}

TEST(IteratorOrderPaths, CodeSetsAndByteOrders) {
    // Code set 0 is the native one: the orders and family of code set 1.
    LmStringIterator native("Ab\xE4", kNative, kGeneric), latin1("Ab\xE4", kLatin1, kGeneric);
    EXPECT_EQ(native.GetFamily(), kLatin);
    EXPECT_EQ(Orders(native), (Words{kUpperA, kLowerB, kLowerADiaeresis}));
    EXPECT_EQ(Orders(latin1), (Words{kUpperA, kLowerB, kLowerADiaeresis}));

    // 16-bit units: format 2 holds them most significant byte first, 1 and 8 as the machine does.
    const unsigned char big[] = {0x00, 'A', 0x00, 0xE4, 0x4E, 0x2D, 0x00, 0x00};
    const unsigned char little[] = {'A', 0x00, 0xE4, 0x00, 0x2D, 0x4E, 0x00, 0x00};
    const Words expected{kUpperA, kLowerADiaeresis, kHanWord};
    LmStringIterator b(reinterpret_cast<const unsigned short*>(big), kUnicode, kGeneric, LmFormatBig);
    LmStringIterator l(reinterpret_cast<const unsigned short*>(little), kUnicode, kGeneric, LmFormatLittle);
    LmStringIterator m(reinterpret_cast<const unsigned short*>(little), kUnicode, kGeneric, LmFormatMemory);
    EXPECT_EQ(Orders(b), expected);
    EXPECT_EQ(Orders(l), expected);
    EXPECT_EQ(Orders(m), expected);
    EXPECT_EQ(b.GetPosition(), reinterpret_cast<const char*>(big) + 6);

    // A code set lumoi18n does not know maps every character to the substitute 0xFFFD, which
    // has no record; its terminator still ends the text, where the walk stops.
    const char unknown8[] = {'a', 'b', 0, 'c', 0};
    LmStringIterator u8(unknown8, 200, kGeneric);
    EXPECT_EQ(Orders(u8), (Words{0xFFFD, 0xFFFD}));
    EXPECT_EQ(u8.GetPosition(), unknown8 + 2);
    EXPECT_EQ(u8.GetFamily(), 0);  // no code set, and the substitute leaves the family alone
    const unsigned short unknown16[] = {'a', 0, 'c', 0};
    LmStringIterator u16(unknown16, 230, kGeneric);
    EXPECT_EQ(Orders(u16), (Words{0xFFFD}));
    EXPECT_EQ(u16.GetPosition(), reinterpret_cast<const char*>(unknown16) + 2);
}

TEST(IteratorOrderPaths, FamiliesAndValuesBeyondTheLowRecords) {
    // A record of the runs above 0x1FF orders as its record says and sets the family back.
    const unsigned short text[] = {kHanWord, kHyphen, 'a', kHanWord, 'b', 0};
    LmStringIterator it(text, kUnicode, kGeneric);
    EXPECT_EQ(Next(it), std::make_pair(+kHanWord, +kHan));
    EXPECT_EQ(Next(it), std::make_pair(+kHyphenOrder, +kLatin));
    EXPECT_EQ(Next(it), std::make_pair(+kLowerA, +kLatin));
    EXPECT_EQ(Next(it), std::make_pair(+kHanWord, +kHan));
    // Mode 0 leaves the family as the last normal call left it, for a plain letter too.
    EXPECT_EQ(Next(it, 0), std::make_pair(+kLowerB, +kHan));
    EXPECT_EQ(it.GetNextOrder(1), 0);
}

TEST(IteratorOrderPaths, CopiesAndLanguageBits) {
    // A copy carries what the original resolved at construction: Swedish a diaeresis after z.
    const char text[] = "b\xE4\xDF";
    LmStringIterator swedish(text, kLatin1, kSwedish);
    EXPECT_EQ(swedish.GetNextOrder(1), kLowerB);
    LmStringIterator copy(swedish);
    LmStringIterator scratch;  // the comparison engine's form: made first, assigned later
    scratch = swedish;
    const Words rest{kSwedishADiaeresis, kSharpS, kLowerS};
    EXPECT_EQ(Orders(copy), rest);
    EXPECT_EQ(Orders(scratch), rest);
    EXPECT_EQ(Orders(swedish), rest);

    // Language 18 shares German's variant bit (ids 16 apart) but names no language: the
    // search finds nothing and the generic order stands. German itself takes its variant.
    LmStringIterator shared(text + 2, kLatin1, 18), german(text + 2, kLatin1, kGerman);
    EXPECT_EQ(Orders(shared), (Words{kSharpS, kLowerS}));
    EXPECT_EQ(Orders(german), (Words{kGermanSharpS, kLowerS}));

    // Every record with variants holds the bit of each language it lists, and only records
    // with a list hold any bit: the low records of code set 253 and those of its runs.
    const LmCollationTable* table = LmLanguageContext::QueryCodeSet(kUnicode)->collation;
    int variants = 0;
    auto check = [&](const LmCollationRecord& r, unsigned value) {
        EXPECT_EQ(r.hasLanguageVariants != 0, r.languages.count != 0) << value;
        for (int i = 0; i < r.languages.count; ++i, ++variants)
            EXPECT_NE(r.hasLanguageVariants & LmLanguageBit((*r.languages.At(i))->id), 0) << value;
    };
    for (unsigned v = 0; v < table->lowLimit; ++v) check(table->low[v], v);
    for (unsigned k = 0; k < table->rangeCount; ++k)
        for (unsigned i = 0; i < table->ranges[k].count; ++i)
            check(table->ranges[k].records[i], table->ranges[k].first + i);
    EXPECT_GT(variants, 20);
}

}  // namespace
