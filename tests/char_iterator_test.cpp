// LmStringIterator: the walk, the step rule with its overflow entries, IsEOS, the
// collation orders of GetNextOrder (contractions, expansions, language variants, Han,
// order texts, code sets without table) and the character transform.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

#include "lumotypes.h"

namespace {

constexpr unsigned char kLatin1 = 1;
constexpr unsigned char kCp1252 = 2;  // ordered through Unicode
constexpr unsigned char kUnicode = 253;

constexpr unsigned char kGeneric = 1;
constexpr unsigned char kGerman = 2;
constexpr unsigned char kSwedish = 3;
constexpr unsigned char kSpanishTraditional = 4;
constexpr unsigned char kDanish = 5;

constexpr unsigned char kLatin = 1;  // the family of every code set here
constexpr unsigned char kHan = 20;

// Letter words, 01 cc aaaaa lllll ee: case 1 is lower, letter 3 is A.
constexpr uint16_t Letter(int letter, bool lower, int accent = 0, int extension = 0) {
    return static_cast<uint16_t>(0x4000 | (lower ? 0x1000 : 0) | accent << 7 | letter << 2 | extension);
}
constexpr int kA = 3, kC = 5, kE = 7, kH = 10, kL = 14, kS = 21, kX = 26, kZ = 28;
constexpr int kDiaeresis = 6;

// All order words of a text until the end, with the mode given.
std::vector<uint16_t> Orders(LmStringIterator& it, int mode = 1) {
    std::vector<uint16_t> out;
    for (int guard = 0; guard < 100; ++guard) {
        const uint16_t order = it.GetNextOrder(mode);
        if (order == 0) break;
        out.push_back(order);
    }
    return out;
}

std::vector<uint16_t> Orders(const char* text, unsigned char codeSet, unsigned char language) {
    LmStringIterator it(text, codeSet, language);
    return Orders(it);
}

using Words = std::vector<uint16_t>;

TEST(IteratorWalk, ConstructionAndSteps) {
    LmString s("ab");
    LmStringIterator it(s);
    EXPECT_EQ(it.GetCodeSet(), kLatin1);
    EXPECT_EQ(it.GetLanguage(), kGeneric);
    EXPECT_EQ(it.GetFormat(), LmFormatMemory);
    EXPECT_EQ(it.GetFamily(), kLatin);
    EXPECT_EQ(it.GetPosition(), s.StrGet());
    const LmChar first = *it;
    EXPECT_EQ(first.IsPointerForm(), 1);
    EXPECT_EQ(first.GetValue(), 'a');

    const LmStringIterator before = it++;
    EXPECT_EQ(before.GetPosition(), s.StrGet());
    EXPECT_EQ(it.GetPosition(), s.StrGet() + 1);
    EXPECT_EQ(it == before, 0);
    --it;
    EXPECT_EQ(it == before, 1);
    it.Step(1);
    EXPECT_EQ((*it).GetValue(), 'b');
    EXPECT_EQ(it.IsEOS(), 0);
    ++it;
    EXPECT_EQ(it.IsEOS(), 1);
    it.Step(0);
    EXPECT_EQ((*it).GetValue(), 'b');

    // Writing through the iterator's character changes the string.
    *it = 'q';
    EXPECT_STREQ(s.StrGet(), "aq");

    // 16-bit texts step by two bytes.
    const unsigned short wide[] = {0x263A, 0x41, 0};
    LmStringIterator w(wide);
    EXPECT_EQ(w.GetCodeSet(), kUnicode);
    EXPECT_EQ(w.GetFormat(), 1);
    ++w;
    EXPECT_EQ(w.GetPosition(), reinterpret_cast<const char*>(wide) + 2);
    EXPECT_EQ((*w).GetValue(), 0x41);

    // A language of 255 on the string becomes the default.
    LmString d("x");
    d.SetLanguage(LM_LANGUAGE_DEFAULT);
    EXPECT_EQ(LmStringIterator(d).GetLanguage(), LmString::GetDefaultLanguage());
    // A string without buffer is walked over the shared empty text.
    LmString none;
    LmStringIterator n(none);
    EXPECT_EQ(n.IsEOS(), 1);
    EXPECT_EQ(n.GetNextOrder(1), 0);

    // The scratch iterator: no position, code set 0, language 0, format 1.
    LmStringIterator scratch;
    EXPECT_EQ(scratch.GetPosition(), nullptr);
    EXPECT_EQ(scratch.GetCodeSet(), 0);
    EXPECT_EQ(scratch.GetLanguage(), 0);
    EXPECT_EQ(scratch.GetFormat(), 1);
    EXPECT_EQ(scratch.IsEOS(), 1);
    EXPECT_EQ(scratch.GetNextOrder(1), 0);
    ++scratch;
    EXPECT_EQ(scratch.GetPosition(), nullptr);
}

TEST(IteratorWalk, StepRuleAndOverflow) {
    const uint16_t entries[] = {'X', 'Y'};
    LmWCharList list;
    list.count = 2;
    list.items = entries;

    LmString s("ab");
    LmStringIterator it(s);
    it.SetOverflow(&list, LM_CODESET_DEFAULT);
    const LmChar x = *it;  // the entry is used up by reading it
    EXPECT_EQ(x.IsPointerForm(), 0);
    EXPECT_EQ(x.GetValue(), 'X');
    EXPECT_EQ(x.GetCodeSet(), kLatin1);  // 255: the iterator's code set
    ++it;
    EXPECT_EQ(it.GetPosition(), s.StrGet());  // entries remain: the position stays
    EXPECT_EQ((*it).GetValue(), 'Y');
    ++it;  // exhausted: dropped, and the position moves
    EXPECT_EQ(it.GetPosition(), s.StrGet() + 1);
    EXPECT_EQ((*it).IsPointerForm(), 1);
    EXPECT_EQ((*it).GetValue(), 'b');

    // At the terminator an unexhausted list keeps the text from ending; used up,
    // the list is dropped and the position steps past the terminator.
    const char text[] = {'a', 0, 0};
    LmStringIterator end(text, kLatin1, kGeneric);
    ++end;
    ASSERT_EQ(end.IsEOS(), 1);
    end.SetOverflow(&list, kUnicode);
    EXPECT_EQ(end.IsEOS(), 0);
    EXPECT_EQ((*end).GetCodeSet(), kUnicode);
    ++end;
    EXPECT_EQ(end.IsEOS(), 0);
    EXPECT_EQ((*end).GetValue(), 'Y');
    EXPECT_EQ(end.IsEOS(), 0);  // still set, though used up
    ++end;
    EXPECT_EQ(end.IsEOS(), 1);
    EXPECT_EQ(end.GetPosition(), text + 2);

    // Stepping back ignores the overflow.
    LmStringIterator back(s);
    ++back;
    back.SetOverflow(&list, LM_CODESET_DEFAULT);
    --back;
    EXPECT_EQ(back.GetPosition(), s.StrGet());
}

TEST(IteratorWalk, OverCharacter) {
    LmChar c(static_cast<unsigned short>(0xE9), kUnicode, kSwedish);
    LmStringIterator it(c);
    EXPECT_EQ(it.GetCodeSet(), kUnicode);
    EXPECT_EQ(it.GetLanguage(), kSwedish);
    EXPECT_EQ(it.GetFormat(), 1);
    EXPECT_EQ((*it).GetValue(), 0xE9);
    {
        LmStringIterator copy(it);  // does not own: the buffer is freed once
        LmStringIterator assigned;
        assigned = it;
        EXPECT_EQ(copy.GetPosition(), it.GetPosition());
        EXPECT_EQ(assigned.GetPosition(), it.GetPosition());
    }
    EXPECT_EQ(it.GetNextOrder(1), Letter(kE, true, 2));
    EXPECT_EQ(it.GetNextOrder(1), 0);
    // An owning iterator may be destroyed anywhere, and reassigned.
    LmChar d('a', kLatin1, kGeneric);
    LmStringIterator other(d);
    it = other;
    EXPECT_EQ(it.GetNextOrder(1), Letter(kA, true));
}

TEST(IteratorOrder, PlainCharactersAndFamily) {
    LmString s("Ab1 *");
    LmStringIterator it(s);
    EXPECT_EQ(Orders(it), (Words{Letter(kA, false), Letter(4, true), 0x3F0A, 32, 159}));
    EXPECT_EQ(it.GetFamily(), kLatin);
    // At the end the position stays and 0 keeps coming.
    const char* end = it.GetPosition();
    EXPECT_EQ(end, s.StrGet() + 5);
    EXPECT_EQ(it.GetNextOrder(1), 0);
    EXPECT_EQ(it.GetPosition(), end);

    // Unicode and Latin-1 give the same words for the same letters.
    const unsigned short wide[] = {'A', 'b', '1', ' ', '*', 0};
    LmStringIterator w(wide);
    EXPECT_EQ(Orders(w), (Words{Letter(kA, false), Letter(4, true), 0x3F0A, 32, 159}));
}

TEST(IteratorOrder, HanAndCharactersWithoutRecord) {
    const unsigned short text[] = {0x4E2D, 'a', 0x0416, 0xFFFD, 0};
    LmStringIterator it(text, kUnicode, kGeneric);
    ASSERT_EQ(it.GetFamily(), kLatin);
    EXPECT_EQ(it.GetNextOrder(1), 0x4E2D);  // the character's code is its order
    EXPECT_EQ(it.GetFamily(), kHan);
    EXPECT_EQ(it.GetNextOrder(1), Letter(kA, true));
    EXPECT_EQ(it.GetFamily(), kLatin);  // a record sets the code set's family again
    EXPECT_EQ(it.GetNextOrder(1), 0x0416);
    EXPECT_EQ(it.GetFamily(), kHan);
    LmStringIterator tail(text + 3, kUnicode, kGeneric);
    EXPECT_EQ(tail.GetNextOrder(1), 0xFFFD);  // from 0xFFF0 up the family stays
    EXPECT_EQ(tail.GetFamily(), kLatin);

    // Mode 0 leaves the family alone.
    LmStringIterator quiet(text, kUnicode, kGeneric);
    EXPECT_EQ(quiet.GetNextOrder(0), 0x4E2D);
    EXPECT_EQ(quiet.GetFamily(), kLatin);

    // A value equal to the asterisk order is a wildcard, not a Han character.
    LmWildcardOrderSet(LM_WILDCARD_ASTERISK, 0x4E2D);
    LmStringIterator star(text, kUnicode, kGeneric);
    EXPECT_EQ(star.GetNextOrder(1), 0x4E2D);
    EXPECT_EQ(star.GetFamily(), kLatin);
    LmWildcardOrderSet(LM_WILDCARD_ASTERISK, 0);
}

TEST(IteratorOrder, ContractionsOfTraditionalSpanish) {
    const uint16_t ch = Letter(kC, true, 0, 2);
    EXPECT_EQ(Orders("chx", kLatin1, kSpanishTraditional), (Words{ch, Letter(kX, true)}));
    EXPECT_EQ(Orders("Ch", kLatin1, kSpanishTraditional), (Words{Letter(kC, false, 0, 2)}));
    EXPECT_EQ(Orders("all", kLatin1, kSpanishTraditional), (Words{Letter(kA, true), Letter(kL, true, 0, 2)}));
    // Not a follower: c alone, and the next character is not lost.
    EXPECT_EQ(Orders("cx", kLatin1, kSpanishTraditional), (Words{Letter(kC, true), Letter(kX, true)}));
    // Other languages have no such contraction.
    EXPECT_EQ(Orders("ch", kLatin1, kGeneric), (Words{Letter(kC, true), Letter(kH, true)}));
    // Through Unicode for a code set without table, the same.
    EXPECT_EQ(Orders("ch", kCp1252, kSpanishTraditional), (Words{ch}));

    // A text ending right after the first character: its order, then the
    // position stands on the terminator and the next call gives 0.
    const char text[] = "c";
    LmStringIterator it(text, kLatin1, kSpanishTraditional);
    EXPECT_EQ(it.GetNextOrder(1), Letter(kC, true));
    EXPECT_EQ(it.GetPosition(), text + 1);
    EXPECT_EQ(it.GetNextOrder(1), 0);

    // Hungarian dzs runs through dz; dz before anything else is dz and that character.
    constexpr unsigned char kHungarian = 13;
    constexpr int kD = 6;
    EXPECT_EQ(Orders("dzsa", kLatin1, kHungarian), (Words{Letter(kD, true, 0, 3), Letter(kA, true)}));
    EXPECT_EQ(Orders("dza", kLatin1, kHungarian), (Words{Letter(kD, true, 0, 2), Letter(kA, true)}));

    // Danish: aa is a letter after z.
    EXPECT_EQ(Orders("aab", kLatin1, kDanish), (Words{Letter(kZ, true, 0, 3), Letter(4, true)}));
    EXPECT_EQ(Orders("Aa", kLatin1, kDanish), (Words{Letter(kZ, false, 0, 3)}));
    EXPECT_EQ(Orders("ab", kLatin1, kDanish), (Words{Letter(kA, true), Letter(4, true)}));
}

TEST(IteratorOrder, ExpansionsHoldThePosition) {
    // Sharp s: s with extension 1, then a further s.
    const char text[] =
        "\xDF"
        "a";
    LmStringIterator it(text, kLatin1, kGeneric);
    EXPECT_EQ(it.GetNextOrder(1), Letter(kS, true, 0, 1));
    EXPECT_EQ(it.GetPosition(), text);  // the further word is still to come
    EXPECT_EQ(it.IsEOS(), 0);
    EXPECT_EQ(it.GetNextOrder(1), Letter(kS, true));
    EXPECT_EQ(it.GetPosition(), text + 1);
    EXPECT_EQ(it.GetNextOrder(1), Letter(kA, true));
    EXPECT_EQ(it.GetNextOrder(1), 0);

    // German marks the first s instead.
    EXPECT_EQ(Orders("\xDF", kLatin1, kGerman), (Words{Letter(kS, true, 28), Letter(kS, true)}));
    // The ligature ae: a with extension 1, then e.
    EXPECT_EQ(Orders("\xE6", kLatin1, kGeneric), (Words{Letter(kA, true, 0, 1), Letter(kE, true)}));
    const unsigned short wide[] = {0xDF, 0};
    LmStringIterator w(wide, kUnicode, kGeneric);
    EXPECT_EQ(Orders(w), (Words{Letter(kS, true, 0, 1), Letter(kS, true)}));
}

TEST(IteratorOrder, LanguageVariants) {
    // One text, two languages, two orders for a with diaeresis.
    const char text[] = "\xE4";
    EXPECT_EQ(Orders(text, kLatin1, kGeneric), (Words{Letter(kA, true, kDiaeresis)}));
    EXPECT_EQ(Orders(text, kLatin1, kSwedish), (Words{Letter(kZ, true, kDiaeresis, 2)}));
    EXPECT_EQ(Orders(text, kLatin1, kDanish), (Words{Letter(kZ, true, kDiaeresis, 1)}));
    EXPECT_EQ(Orders("\xC4", kLatin1, kSwedish), (Words{Letter(kZ, false, kDiaeresis, 2)}));
    const unsigned short wide[] = {0xE4, 0};
    LmStringIterator w(wide, kUnicode, kSwedish);
    EXPECT_EQ(Orders(w), (Words{Letter(kZ, true, kDiaeresis, 2)}));
    // A language that names nothing takes the untailored record.
    EXPECT_EQ(Orders(text, kLatin1, 200), (Words{Letter(kA, true, kDiaeresis)}));
}

TEST(IteratorOrder, OrderTextIsDeliveredWordByWord) {
    // Low byte first whatever the format says; the family is the language byte.
    const uint8_t words[] = {0x0C, 0x40, 0x2D, 0x4E, 0x10, 0x50, 0x00, 0x00};
    LmStringIterator it(reinterpret_cast<const unsigned short*>(words), LM_CODESET_ORDER, 7, LmFormatBig);
    EXPECT_EQ(it.GetFamily(), 7);
    EXPECT_EQ(it.GetNextOrder(1), 0x400C);
    EXPECT_EQ(it.GetNextOrder(1), 0x4E2D);  // no lookup: no Han family either
    EXPECT_EQ(it.GetNextOrder(1), 0x5010);
    EXPECT_EQ(it.GetFamily(), 7);
    EXPECT_EQ(it.GetNextOrder(1), 0);
    EXPECT_EQ(it.GetPosition(), reinterpret_cast<const char*>(words) + 8);  // past the terminator
}

TEST(IteratorOrder, CodeSetWithoutTableOrdersThroughUnicode) {
    // Windows-1252: 0x80 is the euro sign, 0x9F Y with diaeresis.
    const char text[] = "A\x80\x9F";
    LmStringIterator it(text, kCp1252, kGeneric);
    EXPECT_EQ(it.GetFamily(), kLatin);
    const unsigned short same[] = {'A', 0x20AC, 0x178, 0};
    LmStringIterator u(same, kUnicode, kGeneric);
    const Words viaUnicode = Orders(u);
    ASSERT_EQ(viaUnicode.size(), 3u);
    EXPECT_EQ(viaUnicode[2], Letter(27, false, kDiaeresis));  // Y is letter 27
    EXPECT_EQ(Orders(it), viaUnicode);
    EXPECT_EQ(it.GetFamily(), kLatin);
    // In Latin-1, 0x80 is a control and orders as the undefined indicator.
    EXPECT_EQ(Orders("\x80", kLatin1, kGeneric), (Words{13}));
}

TEST(IteratorOrder, OverflowOfCharacters) {
    // Entries in a character code set are ordered like text characters.
    const uint16_t entries[] = {'b', 0xE9};
    LmWCharList list;
    list.count = 2;
    list.items = entries;
    const char text[] = "a";
    LmStringIterator it(text, kLatin1, kGeneric);
    it.SetOverflow(&list, kUnicode);
    EXPECT_EQ(it.GetNextOrder(1), Letter(4, true));
    EXPECT_EQ(it.GetNextOrder(1), Letter(kE, true, 2));
    EXPECT_EQ(it.GetPosition(), text + 1);  // the list was used up in place of 'a'
    EXPECT_EQ(it.GetNextOrder(1), 0);
}

// Doubles every character: the first copy as the result, the second through the
// source iterator's overflow, as an upper case of two characters does.
struct Doubler : LmCharOperation {
    uint16_t unit[1] = {0};
    LmWCharList list{};
    LmChar Apply(const LmChar& c, LmStringIterator* source) override {
        if (source != nullptr && c.IsPointerForm()) {
            unit[0] = c.GetValue();
            list.count = 1;
            list.items = unit;
            source->SetOverflow(&list, LM_CODESET_DEFAULT);
        }
        return LmChar(c);
    }
};

TEST(IteratorTransform, IntoAnotherCodeSet) {
    const char text[] =
        "a\xDF"
        "b";
    LmStringIterator source(text, kLatin1, kGeneric);
    uint8_t out[12];
    std::memset(out, 0xEE, sizeof out);
    LmStringIterator target(reinterpret_cast<const unsigned short*>(out), kUnicode, kGeneric);
    LmCharToUpper upper;
    source.Transform(target, upper);
    const uint8_t expected[] = {'A', 0, 'S', 0, 'S', 0, 'B', 0, 0, 0, 0xEE, 0xEE};
    EXPECT_EQ(0, std::memcmp(out, expected, sizeof out));
    EXPECT_EQ(target.GetPosition(), reinterpret_cast<const char*>(out) + 10);  // just behind the terminator

    const char word[] = "xy";
    LmStringIterator from(word, kLatin1, kGeneric);
    char doubled[8];
    std::memset(doubled, '#', sizeof doubled);
    LmStringIterator to(doubled, kLatin1, kGeneric);
    Doubler doubler;
    from.Transform(to, doubler);
    EXPECT_EQ(std::memcmp(doubled, "xxyy\0###", 8), 0);
}

}  // namespace
