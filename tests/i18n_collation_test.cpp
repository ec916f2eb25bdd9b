// Collation data of lumoi18n: order words of hand-picked characters, worked out by
// hand from the layout of an order word (letters 01 cc aaaaa lllll ee: case 0 upper /
// 1 lower, accent, letter 3 = A .. 28 = Z, extension), expansions, language variants
// and contractions.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string_view>
#include <vector>

#include "lumoi18n.h"

namespace {

using Words = std::vector<uint16_t>;

const LmCollationRecord* Unicode(uint16_t value) {
    return LmLanguageContext::QueryCodeSet(LM_CODESET_UCS2)->collation->lookup(value);
}

uint16_t Order(uint16_t value) { return Unicode(value) != nullptr ? Unicode(value)->order : 0xFFFF; }

Words WordsOf(const LmWCharList& list) {
    Words out;
    for (int i = 0; i < list.count; ++i) out.push_back(*list.At(i));
    return out;
}

// The record a language sees for a character: its variant when it has one.
const LmCollationRecord* ForLanguage(uint16_t value, uint8_t language) {
    const LmCollationRecord* r = Unicode(value);
    for (int i = 0; i < r->languages.count; ++i) {
        const LmLanguage* lang = nullptr;
        EXPECT_EQ(r->languages.GetAt(i, lang), 0);
        if (lang->id == language) return *r->languageRecords.At(i);
    }
    return r;
}

// The successor of a contraction for a following character, or null.
const LmCollationRecord* Successor(const LmCollationRecord* r, uint16_t next) {
    for (int i = 0; i < r->followers.count; ++i) {
        if (*r->followers.At(i) != next) continue;
        const LmCollationRecord* s = nullptr;
        return r->successors.GetAt(i, s) == 0 ? s : nullptr;
    }
    return nullptr;
}

// The word a language gives one character or a contraction of several; 0 when they do not contract.
uint16_t Word(uint8_t language, std::u16string_view chars) {
    const LmCollationRecord* r = ForLanguage(chars[0], language);
    for (size_t i = 1; i < chars.size() && r != nullptr; ++i) r = Successor(r, chars[i]);
    return r != nullptr ? r->order : 0;
}

// The words of the space-separated texts in each language; 0 for texts that do not contract.
void ExpectWords(std::initializer_list<uint8_t> languages, std::u16string_view texts, const Words& words) {
    for (uint8_t lang : languages) {
        std::u16string_view rest = texts;
        for (uint16_t word : words) {
            ASSERT_FALSE(rest.empty());
            const std::u16string_view text = rest.substr(0, rest.find(u' '));
            EXPECT_EQ(Word(lang, text), word) << int(lang) << " " << std::hex << int(text[0]);
            rest.remove_prefix(std::min(rest.size(), text.size() + 1));
        }
        EXPECT_TRUE(rest.empty());
    }
}

void ExpectOrders(std::u16string_view chars, const Words& words) {
    ASSERT_EQ(chars.size(), words.size());
    for (size_t i = 0; i < chars.size(); ++i) EXPECT_EQ(Order(chars[i]), words[i]) << std::hex << int(chars[i]);
}

TEST(I18nCollation, PlainCharactersHaveHandWorkedOrderWords) {
    // Letters 0x4000 | case << 12 | accent << 7 | letter << 2 | extension: A, Z, a, z, a acute (accent 2),
    // A acute, a diaeresis (6), c cedilla (letter 5, accent 1), o stroke (17, 8), o double acute (14),
    // c caron (9), z dot above (12), eth (d with extension 2: a letter after d).
    ExpectOrders(
        u"AZaz\u00E1\u00C1\u00E4\u00E7\u00F8\u0151\u010D\u017C\u00F0",
        {0x400C, 0x4070, 0x500C, 0x5070, 0x510C, 0x410C, 0x530C, 0x5094, 0x5444, 0x5744, 0x5494, 0x5670, 0x501A});
    // Digits 0x3F00 + 10 * digit, bit 0 for superscript two. Spaces below 80: space, tab, no-break
    // space, em space; controls and the zero width joiner are the undefined ordering indicator 13.
    ExpectOrders(u"059\u00B2 \t\u00A0\u2003\u0001\u007F\u009F\u200D",
                 {0x3F00, 0x3F32, 0x3F5A, 0x3F15, 32, 9, 33, 37, 13, 13, 13, 13});
    EXPECT_EQ(Order(0), 0);
    // Symbols at the words of the symbol table (soft hyphen, acute accent, micro, times, inverted ?).
    ExpectOrders(u"\u00AD\u00B4\u00B5\u00D7\u00BF\\_-,;:!?/.'\"()[]{}@$*&#%+`^~<=>|",
                 {115, 168, 190, 179, 219, 160, 112, 116, 117, 118, 119, 120, 122, 124, 126, 132, 135, 140, 142,
                  144, 145, 146, 147, 153, 156, 159, 161, 162, 163, 165, 169, 171, 176, 181, 183, 185, 187});
    // Symbols of the two blocks come after the named ones, in code point order.
    EXPECT_GE(Order(0x2014), 220);
    EXPECT_LT(Order(0x2014), Order(0x201C));
    EXPECT_LT(Order(0x201C), Order(0x20AC));
    EXPECT_LT(Order(0x20AC), 0x3F00);
}

TEST(I18nCollation, ExpansionsCarryTheExtensionBitAndFurtherWords) {
    const struct {
        uint16_t c, word;
        Words further;
    } cases[] = {
        {0xDF, 0x5055, {0x5054}},                 // sharp s: s (letter 21) with extension 1, then s
        {0xE6, 0x500D, {0x501C}},                 // ae: a, then e
        {0xC6, 0x400D, {0x401C}},                 //
        {0x153, 0x5045, {0x501C}},                // oe
        {0xFE, 0x5059, {0x5028}},                 // thorn: t, then h
        {0x1C6, 0x5019, {0x54F0}},                // dz caron: d, then z keeping the caron
        {0xBD, 0x3F0B, {Order(0x2044), 0x3F14}},  // one half: 1 with bit 0, fraction slash, 2
    };
    for (const auto& e : cases) {
        EXPECT_EQ(Unicode(e.c)->order, e.word) << std::hex << e.c;
        EXPECT_EQ(Unicode(e.c)->hasExpansion, 1);
        EXPECT_EQ(WordsOf(Unicode(e.c)->expansion), e.further) << std::hex << e.c;
    }
    // German: sharp s is s with accent 28, equal to s at the primary level, then s.
    EXPECT_EQ(ForLanguage(0xDF, LM_LANGUAGE_GERMAN)->order, 0x5E54);
    EXPECT_EQ(WordsOf(ForLanguage(0xDF, LM_LANGUAGE_GERMAN)->expansion), Words{0x5054});
    // Plain characters take none of the slow paths.
    for (char16_t c : std::u16string_view(u"bB0 \u00E9")) {
        const LmCollationRecord* r = Unicode(c);
        EXPECT_EQ(r->hasExpansion + r->hasContraction + r->hasLanguageVariants, 0) << int(c);
        EXPECT_EQ(r->familySource, nullptr);
    }
}

TEST(I18nCollation, MaskingCaseAndAccentGivesTheBaseLetter) {
    // Dropping the case and accent fields of every accented Latin-1 letter, either case,
    // leaves the plain upper-case letter; the accent field itself is never empty.
    const uint16_t mask = static_cast<uint16_t>(~0x3F80);
    const std::u16string_view accented =
        u"\u00C0\u00C1\u00C2\u00C3\u00C4\u00C5\u00C7\u00C8\u00C9\u00CA\u00CB"
        u"\u00CC\u00CD\u00CE\u00CF\u00D1\u00D2\u00D3\u00D4\u00D5\u00D6\u00D8"
        u"\u00D9\u00DA\u00DB\u00DC\u00DD\u011F\u0142\u0160\u017A";
    const std::u16string_view base = u"AAAAAACEEEEIIIINOOOOOOUUUUYGLSZ";
    ASSERT_EQ(accented.size(), base.size());
    for (size_t i = 0; i < base.size(); ++i) {
        EXPECT_EQ(Order(accented[i]) & mask, Order(base[i])) << std::hex << int(accented[i]);
        EXPECT_NE(Order(accented[i]) & 0x0F80, 0);
        if (accented[i] < 0x100) {
            EXPECT_EQ(Order(static_cast<uint16_t>(accented[i] + 0x20)) & mask, Order(base[i]));  // lower case
        }
    }
    // Decoding searches the characters 128..255 of code set 1 for a word: no two letters share one.
    std::set<uint16_t> seen;
    const LmCollationTable* table = LmLanguageContext::QueryCodeSet(LM_CODESET_LATIN1)->collation;
    for (uint16_t c = 0x80; c <= 0xFF; ++c) {
        const uint16_t w = table->lookup(c)->order;
        if (w < 0x4000 || w > 0x7FFF) continue;
        EXPECT_TRUE(seen.insert(w).second) << "duplicate word for " << std::hex << c;
        EXPECT_GE((w >> 2) & 0x1F, 3);
        EXPECT_LE((w >> 2) & 0x1F, 28);
    }
    EXPECT_GE(seen.size(), 60u);
}

TEST(I18nCollation, TablesCoverTheirRangesAndNothingElse) {
    const LmCollationTable* uni = LmLanguageContext::QueryCodeSet(LM_CODESET_UCS2)->collation;
    const LmCollationTable* latin1 = LmLanguageContext::QueryCodeSet(LM_CODESET_LATIN1)->collation;
    ASSERT_NE(uni, nullptr);
    ASSERT_NE(latin1, nullptr);
    EXPECT_NE(uni, latin1);
    for (uint32_t v = 0; v < 0x200; ++v) ASSERT_NE(uni->lookup(static_cast<uint16_t>(v)), nullptr) << v;
    for (uint16_t v = 0; v < 0x100; ++v) EXPECT_EQ(latin1->lookup(v)->order, uni->lookup(v)->order) << v;
    // Above 0x1FF only General Punctuation and Currency Symbols; Greek, Han and the rest have no record.
    for (char16_t v : std::u16string_view(u"\u0200\u0391\u1FFF\u2065\u20CF\u4E00\uFFFF"))
        EXPECT_EQ(uni->lookup(v), nullptr) << int(v);
    EXPECT_EQ(latin1->lookup(0x100), nullptr);
    EXPECT_EQ(LmLanguageContext::QueryCodeSet(LM_CODESET_CP1252)->collation, nullptr);
    EXPECT_EQ(LmLanguageContext::QueryCodeSet(LM_CODESET_LATIN9)->collation, nullptr);
}

TEST(I18nCollation, LanguageVariantsAndContractions) {
    constexpr uint8_t sv = LM_LANGUAGE_SWEDISH, fi = LM_LANGUAGE_FINNISH, da = LM_LANGUAGE_DANISH,
                      nb = LM_LANGUAGE_NORWEGIAN, trad = LM_LANGUAGE_SPANISH_TRADITIONAL, hu = LM_LANGUAGE_HUNGARIAN;
    // Swedish and Finnish: z + extension 1, 2, 3 for a ring, a diaeresis, o diaeresis, the accent
    // keeping the mark; ae sorts with a diaeresis, o stroke with o diaeresis; no aa.
    ExpectWords({sv, fi}, u"\u00E5 \u00C5 \u00E4 \u00E6 \u00F6 \u00F8 \u00D8 aa",
                {0x53F1, 0x43F1, 0x5372, 0x5072, 0x5373, 0x5473, 0x4473, 0});
    ExpectWords({LM_LANGUAGE_GENERIC, LM_LANGUAGE_GERMAN, LM_LANGUAGE_ENGLISH}, u"\u00E4", {0x530C});
    // Danish and Norwegian: ae (with a diaeresis) z + 1, o stroke z + 2, a ring z + 3; aa, in every
    // case combination with the case of the first letter, as a ring without the mark.
    ExpectWords({da, nb}, u"\u00E6 \u00E4 \u00F8 \u00E5 \u00C5 a aa aA Aa ab aaa",
                {0x5071, 0x5371, 0x5472, 0x53F3, 0x43F3, 0x500C, 0x5073, 0x5073, 0x4073, 0, 0});
    // Traditional Spanish: ch and ll with extension 2 after c and l; both Spanish put n tilde after n.
    ExpectWords({trad}, u"c ch cH Ch cs ll LL", {0x5014, 0x5016, 0x5016, 0x4016, 0, 0x503A, 0x403A});
    ExpectWords({LM_LANGUAGE_SPANISH, trad}, u"\u00F1", {0x52C3});
    ExpectWords({LM_LANGUAGE_SPANISH}, u"ch", {0});
    ExpectWords({LM_LANGUAGE_FRENCH}, u"\u00F1", {0x52C0});
    // Hungarian: dz (d + 2) contracts further to dzs (d + 3); cs, zs; o diaeresis and o double acute
    // (only in code set 253) after o.
    ExpectWords({hu}, u"d dz dzs dzS DZS dzz dzss cs ch zs \u00F6 \u0151",
                {0x5018, 0x501A, 0x501B, 0x501B, 0x401B, 0, 0, 0x5016, 0, 0x5072, 0x5346, 0x5746});
    for (uint8_t lang : {sv, fi, da, nb}) EXPECT_EQ(ForLanguage(0xE6, lang)->hasExpansion, 0);  // ae is one letter
    // List access out of range is refused and leaves the output alone.
    const LmCollationRecord* a = ForLanguage('a', da);
    uint16_t out = 0;
    EXPECT_NE(a->followers.GetAt(a->followers.count, out), 0);
    EXPECT_EQ(out, 0);
    EXPECT_EQ(a->followers.At(-1), nullptr);
}

TEST(I18nCollation, LanguagesFamiliesAndVariantListsAgree) {
    for (uint8_t id = 1; id <= 13; ++id) {
        const LmLanguage* lang = LmLanguageContext::QueryLanguage(id);
        ASSERT_NE(lang, nullptr) << int(id);
        EXPECT_EQ(lang->id, id);
        EXPECT_NE(lang->name, nullptr);
    }
    EXPECT_STREQ(LmLanguageContext::QueryLanguage(LM_LANGUAGE_SWEDISH)->name, "Swedish");
    EXPECT_STREQ(LmLanguageContext::QueryLanguage(LM_LANGUAGE_SPANISH_TRADITIONAL)->tag, "es-trad");
    EXPECT_EQ(LmLanguageContext::QueryLanguage(LM_LANGUAGE_GENERIC)->tailored, 0);
    EXPECT_EQ(LmLanguageContext::QueryLanguage(LM_LANGUAGE_ENGLISH)->tailored, 0);
    EXPECT_NE(LmLanguageContext::QueryLanguage(LM_LANGUAGE_GERMAN)->tailored, 0);
    for (int id : {0, 14, 254, 255}) EXPECT_EQ(LmLanguageContext::QueryLanguage(static_cast<uint8_t>(id)), nullptr);

    // Every variant names a tailored language, and the lists run in parallel.
    int variants = 0;
    for (uint16_t v = 0; v < 0x200; ++v) {
        const LmCollationRecord* r = Unicode(v);
        EXPECT_EQ(r->languages.count, r->languageRecords.count);
        EXPECT_EQ(r->hasLanguageVariants != 0, r->languages.count != 0);
        EXPECT_EQ(r->hasExpansion != 0, r->expansion.count != 0);
        for (int i = 0; i < r->languages.count; ++i, ++variants) EXPECT_NE((*r->languages.At(i))->tailored, 0);
    }
    EXPECT_GT(variants, 40);

    for (uint8_t cs : {uint8_t(0), LM_CODESET_LATIN1, LM_CODESET_CP1252, LM_CODESET_LATIN9, LM_CODESET_UCS2}) {
        for (uint8_t lang : {uint8_t(0), LM_LANGUAGE_GENERIC, LM_LANGUAGE_SWEDISH, uint8_t(200)})
            EXPECT_EQ(LmLanguageContext::QueryCodeSet(cs)->family(lang), LM_FAMILY_LATIN);
    }
    EXPECT_EQ(LM_FAMILY_HAN, 20);
}

}  // namespace
