// LmStringIterator: the walk, the step rule with its overflow entries, IsEOS, the
// collation orders of GetNextOrder (contractions, expansions, language variants, Han,
// order texts, code sets without table) and the character transform.
#include <gtest/gtest.h>

#include <cstring>
#include <tuple>
#include <utility>
#include <vector>

#include "lumotypes.h"

namespace {

using Words = std::vector<uint16_t>;
using Labels = std::tuple<int, int, int, int>;  // code set, language, format, family

constexpr unsigned char kLatin1 = 1, kCp1252 = 2 /* ordered through Unicode */, kUnicode = 253;
constexpr unsigned char kGeneric = 1, kGerman = 2, kSwedish = 3, kSpanishTraditional = 4, kDanish = 5;
constexpr unsigned char kLatin = 1, kHan = 20;  // families

// Letter words, 01 cc aaaaa lllll ee: case 1 is lower, letter 3 is A.
constexpr uint16_t Lower(int letter, int accent = 0, int extension = 0) {
    return static_cast<uint16_t>(0x5000 | accent << 7 | letter << 2 | extension);
}
constexpr uint16_t Upper(int letter, int accent = 0, int extension = 0) {
    return static_cast<uint16_t>(Lower(letter, accent, extension) & ~0x1000);
}
constexpr int kA = 3, kB = 4, kC = 5, kD = 6, kE = 7, kH = 10, kL = 14, kS = 21, kX = 26, kY = 27, kZ = 28;

Labels LabelsOf(const LmStringIterator& it) {
    return {it.GetCodeSet(), it.GetLanguage(), it.GetFormat(), it.GetFamily()};
}

// The next order word with the family after it.
std::pair<int, int> Next(LmStringIterator& it, int mode = 1) {
    const uint16_t word = it.GetNextOrder(mode);
    return {word, it.GetFamily()};
}

Words Orders(LmStringIterator& it) {
    Words out;
    for (uint16_t w; out.size() < 100 && (w = it.GetNextOrder(1)) != 0;) out.push_back(w);
    return out;
}

Words Orders(const char* text, unsigned char codeSet, unsigned char language) {
    LmStringIterator it(text, codeSet, language);
    return Orders(it);
}

// value, code set, pointer form
std::tuple<int, int, int> CharOf(const LmChar& c) { return {c.GetValue(), c.GetCodeSet(), c.IsPointerForm()}; }

LmWCharList ListOf(const uint16_t* items, uint16_t count) {
    LmWCharList list{};
    list.count = count;
    list.items = items;
    return list;
}

TEST(IteratorWalk, ConstructionAndSteps) {
    LmString s("ab");
    LmStringIterator it(s);
    EXPECT_EQ(LabelsOf(it), Labels(kLatin1, kGeneric, LmFormatMemory, kLatin));
    EXPECT_EQ(CharOf(*it), std::make_tuple('a', kLatin1, 1));
    const LmStringIterator before = it++;
    EXPECT_EQ(before.GetPosition(), s.StrGet());
    EXPECT_EQ(it.GetPosition(), s.StrGet() + 1);
    EXPECT_EQ(it == before, 0);
    EXPECT_EQ(--it == before, 1);
    it.Step(1);
    EXPECT_EQ(it.IsEOS(), 0);
    EXPECT_EQ((++it).IsEOS(), 1);
    it.Step(0);
    *it = 'q';  // writing through the iterator's character changes the string
    EXPECT_STREQ(s.StrGet(), "aq");

    const unsigned short wide[] = {0x263A, 0x41, 0};  // 16-bit texts step by two bytes
    LmStringIterator w(wide);
    EXPECT_EQ(LabelsOf(w), Labels(kUnicode, kGeneric, 1, kLatin));
    EXPECT_EQ((*++w).GetValue(), 0x41);
    EXPECT_EQ(w.GetPosition(), reinterpret_cast<const char*>(wide) + 2);
    s.SetLanguage(LM_LANGUAGE_DEFAULT);
    EXPECT_EQ(LmStringIterator(s).GetLanguage(), LmString::GetDefaultLanguage());
    LmString none;  // walked over the shared empty text
    LmStringIterator n(none);
    EXPECT_EQ(n.IsEOS(), 1);
    EXPECT_EQ(n.GetNextOrder(1), 0);

    // The scratch iterator: no position, code set 0, language 0, format 1.
    LmStringIterator scratch;
    EXPECT_EQ(scratch.GetPosition(), nullptr);
    EXPECT_EQ(LabelsOf(scratch), Labels(0, 0, 1, kLatin));
    EXPECT_EQ(scratch.IsEOS(), 1);
    EXPECT_EQ(scratch.GetNextOrder(1), 0);
    EXPECT_EQ((++scratch).GetPosition(), nullptr);
}

TEST(IteratorWalk, StepRuleAndOverflow) {
    const uint16_t entries[] = {'X', 'Y'};
    const LmWCharList list = ListOf(entries, 2);
    LmString s("ab");
    LmStringIterator it(s);
    it.SetOverflow(&list, LM_CODESET_DEFAULT);
    EXPECT_EQ(CharOf(*it), std::make_tuple('X', kLatin1, 0));  // used up by reading; 255: the iterator's code set
    EXPECT_EQ((++it).GetPosition(), s.StrGet());               // entries remain: the position stays
    EXPECT_EQ((*it).GetValue(), 'Y');
    EXPECT_EQ((++it).GetPosition(), s.StrGet() + 1);  // exhausted: dropped, and the position moves
    EXPECT_EQ(CharOf(*it), std::make_tuple('b', kLatin1, 1));
    it.SetOverflow(&list, LM_CODESET_DEFAULT);
    EXPECT_EQ((--it).GetPosition(), s.StrGet());  // stepping back ignores the overflow

    // At the terminator an unexhausted list keeps the text from ending; used up, it is
    // dropped and the position steps past the terminator.
    const char text[] = {'a', 0, 0};
    LmStringIterator end(text + 1, kLatin1, kGeneric);
    ASSERT_EQ(end.IsEOS(), 1);
    end.SetOverflow(&list, kUnicode);
    EXPECT_EQ(end.IsEOS(), 0);
    EXPECT_EQ(CharOf(*end), std::make_tuple('X', kUnicode, 0));
    EXPECT_EQ(CharOf(*++end), std::make_tuple('Y', kUnicode, 0));
    EXPECT_EQ(end.IsEOS(), 0);  // still set, though used up
    EXPECT_EQ((++end).IsEOS(), 1);
    EXPECT_EQ(end.GetPosition(), text + 2);
}

TEST(IteratorWalk, OverCharacter) {
    LmChar c(static_cast<unsigned short>(0xE9), kUnicode, kSwedish);
    LmStringIterator it(c);
    EXPECT_EQ(LabelsOf(it), Labels(kUnicode, kSwedish, 1, kLatin));
    {
        LmStringIterator copy(it), assigned;  // neither owns: the buffer is freed once
        assigned = it;
        EXPECT_EQ(copy.GetPosition(), it.GetPosition());
        EXPECT_EQ(assigned.GetPosition(), it.GetPosition());
    }
    EXPECT_EQ(Orders(it), Words{Lower(kE, 2)});
    LmChar a('a', kLatin1, kGeneric);  // an owning iterator may be destroyed anywhere, and reassigned
    LmStringIterator other(a);
    it = other;
    EXPECT_EQ(it.GetNextOrder(1), Lower(kA));
}

TEST(IteratorOrder, PlainHanAndOrderTexts) {
    const Words expected{Upper(kA), Lower(kB), 0x3F0A, 32, 159};
    const unsigned short wide[] = {'A', 'b', '1', ' ', '*', 0};
    LmString s("Ab1 *");
    LmStringIterator it(s), w(wide);
    EXPECT_EQ(Orders(it), expected);
    EXPECT_EQ(Orders(w), expected);
    EXPECT_EQ(it.GetPosition(), s.StrGet() + 5);  // at the end the position stays and 0 keeps coming
    EXPECT_EQ(it.GetNextOrder(1), 0);
    EXPECT_EQ(it.GetPosition(), s.StrGet() + 5);

    // Without a record the character's code is its order, and the family becomes Han; a
    // record sets the code set's family again. From 0xFFF0 up, and in mode 0, the family stays.
    const unsigned short text[] = {0x4E2D, 'a', 0x0416, 0xFFFD, 0};
    LmStringIterator han(text, kUnicode, kGeneric), quiet(text, kUnicode, kGeneric);
    EXPECT_EQ(Next(han), std::make_pair(0x4E2D, +kHan));
    EXPECT_EQ(Next(han), std::make_pair(+Lower(kA), +kLatin));
    EXPECT_EQ(Next(han), std::make_pair(0x0416, +kHan));
    EXPECT_EQ(Next(han), std::make_pair(0xFFFD, +kHan));
    LmStringIterator tail(text + 3, kUnicode, kGeneric);
    EXPECT_EQ(Next(tail), std::make_pair(0xFFFD, +kLatin));
    EXPECT_EQ(Next(quiet, 0), std::make_pair(0x4E2D, +kLatin));
    LmWildcardOrderSet(LM_WILDCARD_ASTERISK, 0x4E2D);  // the asterisk order is a wildcard, not Han
    LmStringIterator star(text, kUnicode, kGeneric);
    EXPECT_EQ(Next(star), std::make_pair(0x4E2D, +kLatin));
    LmWildcardOrderSet(LM_WILDCARD_ASTERISK, 0);

    // Order words are read low byte first whatever the format says, with no lookup; the family
    // is the language byte, and the end steps past the terminator.
    const uint8_t words[] = {0x0C, 0x40, 0x2D, 0x4E, 0x10, 0x50, 0x00, 0x00};
    LmStringIterator order(reinterpret_cast<const unsigned short*>(words), LM_CODESET_ORDER, 7, LmFormatBig);
    EXPECT_EQ(order.GetFamily(), 7);
    EXPECT_EQ(Orders(order), (Words{0x400C, 0x4E2D, 0x5010}));
    EXPECT_EQ(order.GetFamily(), 7);
    EXPECT_EQ(order.GetPosition(), reinterpret_cast<const char*>(words) + 8);
}

TEST(IteratorOrder, ContractionsExpansionsAndVariants) {
    const struct {
        const char* text;
        unsigned char codeSet, language;
        Words words;
    } cases[] = {
        // Contractions: c before a non-follower is c, and that character is not lost; dz before a
        // character other than s is dz.
        {"chx", kLatin1, kSpanishTraditional, {Lower(kC, 0, 2), Lower(kX)}},
        {"all", kLatin1, kSpanishTraditional, {Lower(kA), Lower(kL, 0, 2)}},
        {"cx", kLatin1, kSpanishTraditional, {Lower(kC), Lower(kX)}},
        {"ch", kLatin1, kGeneric, {Lower(kC), Lower(kH)}},
        {"ch", kCp1252, kSpanishTraditional, {Lower(kC, 0, 2)}},  // through Unicode, the same
        {"dzsa", kLatin1, LM_LANGUAGE_HUNGARIAN, {Lower(kD, 0, 3), Lower(kA)}},
        {"dza", kLatin1, LM_LANGUAGE_HUNGARIAN, {Lower(kD, 0, 2), Lower(kA)}},
        {"Aab", kLatin1, kDanish, {Upper(kZ, 0, 3), Lower(kB)}},
        // Expansions: sharp s is s with extension 1, then s; German marks the first s with accent 28.
        {"\xDF", kLatin1, kGeneric, {Lower(kS, 0, 1), Lower(kS)}},
        {"\xDF", kLatin1, kGerman, {Lower(kS, 28), Lower(kS)}},
        // Language variants: one text, two orders; a language that names nothing is generic.
        {"\xE4", kLatin1, kGeneric, {Lower(kA, 6)}},
        {"\xE4", kLatin1, kSwedish, {Lower(kZ, 6, 2)}},
        {"\xE4", kLatin1, 200, {Lower(kA, 6)}},
        // A code set without table orders through Unicode; in Latin-1 0x80 is a control.
        {"A\x80\x9F",
         kCp1252,
         kGeneric,
         {Upper(kA), LmCharOrder(LmChar(static_cast<unsigned short>(0x20AC))), Upper(kY, 6)}},
        {"\x80", kLatin1, kGeneric, {13}},
    };
    for (const auto& c : cases) EXPECT_EQ(Orders(c.text, c.codeSet, c.language), c.words) << c.text;
    const unsigned short wide[] = {0xDF, 0xE4, 0};
    LmStringIterator w(wide, kUnicode, kSwedish);
    EXPECT_EQ(Orders(w), (Words{Lower(kS, 0, 1), Lower(kS), Lower(kZ, 6, 2)}));
    LmStringIterator cp("\x80", kCp1252, kGeneric);
    EXPECT_EQ(Next(cp).second, kLatin);  // the family still comes from the text's own code set

    // A text ending right after a contraction's first character: its order, then the position
    // stands on the terminator and the next call gives 0.
    const char c[] = "c";
    LmStringIterator it(c, kLatin1, kSpanishTraditional);
    EXPECT_EQ(it.GetNextOrder(1), Lower(kC));
    EXPECT_EQ(it.GetPosition(), c + 1);
    EXPECT_EQ(it.GetNextOrder(1), 0);
    // An expansion holds the position until its further word is delivered.
    const char sharp[] = "\xDFz";
    LmStringIterator ex(sharp, kLatin1, kGeneric);
    EXPECT_EQ(ex.GetNextOrder(1), Lower(kS, 0, 1));
    EXPECT_EQ(ex.GetPosition(), sharp);
    EXPECT_EQ(ex.IsEOS(), 0);
    EXPECT_EQ(ex.GetNextOrder(1), Lower(kS));
    EXPECT_EQ(ex.GetPosition(), sharp + 1);
    // Entries in a character code set are ordered like text characters, in place of the position.
    const uint16_t entries[] = {'b', 0xE9};
    const LmWCharList list = ListOf(entries, 2);
    LmStringIterator over(c, kLatin1, kGeneric);
    over.SetOverflow(&list, kUnicode);
    EXPECT_EQ(Orders(over), (Words{Lower(kB), Lower(kE, 2)}));
    EXPECT_EQ(over.GetPosition(), c + 1);
}

TEST(IteratorTransform, IntoAnotherCodeSet) {
    LmStringIterator source("q\xDFz", kLatin1, kGeneric);
    uint8_t out[12];
    std::memset(out, 0xEE, sizeof out);
    LmStringIterator target(reinterpret_cast<const unsigned short*>(out), kUnicode, kGeneric);
    LmCharToUpper upper;
    source.Transform(target, upper);
    EXPECT_EQ(std::memcmp(out, "Q\0S\0S\0Z\0\0\0\xEE\xEE", sizeof out), 0);
    EXPECT_EQ(target.GetPosition(), reinterpret_cast<const char*>(out) + 10);  // just behind the terminator
}

}  // namespace
