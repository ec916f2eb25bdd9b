// Collation data of lumoi18n: order words of hand-picked characters, worked out by
// hand from the layout of an order word (letters 01 cc aaaaa lllll ee: case 0 upper /
// 1 lower, accent, letter 3 = A .. 28 = Z, extension), expansions, language variants
// and contractions.
#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "lumoi18n.h"

namespace {

const LmCollationRecord* Unicode(uint16_t value) {
    return LmLanguageContext::QueryCodeSet(LM_CODESET_UCS2)->collation->lookup(value);
}

uint16_t Order(uint16_t value) {
    const LmCollationRecord* r = Unicode(value);
    return r != nullptr ? r->order : 0xFFFF;
}

std::vector<uint16_t> Words(const LmWCharList& list) {
    std::vector<uint16_t> out;
    for (int i = 0; i < list.count; ++i) out.push_back(*list.At(i));
    return out;
}

// The record a language sees: its variant when the record has one.
const LmCollationRecord* ForLanguage(const LmCollationRecord* r, uint8_t language) {
    if (r->hasLanguageVariants == 0) return r;
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
        if (*r->followers.At(i) == next) {
            const LmCollationRecord* s = nullptr;
            return r->successors.GetAt(i, s) == 0 ? s : nullptr;
        }
    }
    return nullptr;
}

TEST(I18nCollation, PlainCharactersHaveHandWorkedOrderWords) {
    // Letters: 0x4000 | case << 12 | accent << 7 | letter << 2 | extension.
    EXPECT_EQ(Order('A'), 0x400C);  // letter 3, upper
    EXPECT_EQ(Order('a'), 0x500C);  // lower
    EXPECT_EQ(Order('Z'), 0x4070);  // letter 28
    EXPECT_EQ(Order('z'), 0x5070);
    EXPECT_EQ(Order(0xE1), 0x510C);  // a acute: accent 2
    EXPECT_EQ(Order(0xC1), 0x410C);
    EXPECT_EQ(Order(0xE4), 0x530C);   // a diaeresis: accent 6
    EXPECT_EQ(Order(0xE7), 0x5094);   // c cedilla: letter 5, accent 1
    EXPECT_EQ(Order(0xF8), 0x5444);   // o stroke: letter 17, accent 8
    EXPECT_EQ(Order(0x151), 0x5744);  // o double acute: accent 14
    EXPECT_EQ(Order(0x10D), 0x5494);  // c caron: accent 9
    EXPECT_EQ(Order(0x17C), 0x5670);  // z dot above: accent 12
    EXPECT_EQ(Order(0xF0), 0x501A);   // eth: d with extension 2, a letter after d
    // Digits 0x3F00 + 10 * digit; superscripts set bit 0.
    EXPECT_EQ(Order('0'), 0x3F00);
    EXPECT_EQ(Order('5'), 0x3F32);
    EXPECT_EQ(Order('9'), 0x3F5A);
    EXPECT_EQ(Order(0xB2), 0x3F15);  // superscript two
    // Spaces below 80; controls are the undefined ordering indicator.
    EXPECT_EQ(Order(' '), 32);
    EXPECT_EQ(Order('\t'), 9);
    EXPECT_EQ(Order(0xA0), 33);
    EXPECT_EQ(Order(0x01), 13);
    EXPECT_EQ(Order(0x7F), 13);
    EXPECT_EQ(Order(0x9F), 13);
    EXPECT_EQ(Order(0), 0);
    // Symbols at the words of the symbol table.
    EXPECT_EQ(Order('!'), 120);
    EXPECT_EQ(Order('_'), 112);
    EXPECT_EQ(Order('*'), 159);
    EXPECT_EQ(Order('?'), 122);
    EXPECT_EQ(Order('\\'), 160);
    EXPECT_EQ(Order(0xAD), 115);  // soft hyphen
    EXPECT_EQ(Order(0xB4), 168);  // acute accent, the apostrophe form
    EXPECT_EQ(Order(0xB5), 190);  // micro sign
    EXPECT_EQ(Order(0xD7), 179);
    EXPECT_EQ(Order(0xBF), 219);
}

TEST(I18nCollation, EveryLatin1SymbolOfTheSymbolTableDecodesToItsCharacter) {
    // word -> character of the decoding table, for the ASCII symbols.
    const struct {
        uint16_t word;
        char c;
    } table[] = {{112, '_'}, {116, '-'},  {117, ','}, {118, ';'}, {119, ':'}, {120, '!'}, {122, '?'}, {124, '/'},
                 {126, '.'}, {132, '\''}, {135, '"'}, {140, '('}, {142, ')'}, {144, '['}, {145, ']'}, {146, '{'},
                 {147, '}'}, {153, '@'},  {156, '$'}, {159, '*'}, {161, '&'}, {162, '#'}, {163, '%'}, {165, '+'},
                 {169, '`'}, {171, '^'},  {176, '~'}, {181, '<'}, {183, '='}, {185, '>'}, {187, '|'}};
    for (const auto& e : table) EXPECT_EQ(Order(static_cast<uint16_t>(e.c)), e.word) << e.c;
    EXPECT_EQ(Order('\\'), 160);
}

TEST(I18nCollation, ExpansionsCarryTheExtensionBitAndFurtherWords) {
    const LmCollationRecord* sharp = Unicode(0xDF);  // sharp s: s s
    ASSERT_NE(sharp, nullptr);
    EXPECT_EQ(sharp->order, 0x5055);  // s (letter 21) lower, extension 1
    EXPECT_EQ(sharp->hasExpansion, 1);
    EXPECT_EQ(Words(sharp->expansion), std::vector<uint16_t>{0x5054});  // plain s

    EXPECT_EQ(Unicode(0xE6)->order, 0x500D);  // ae: a with extension, then e
    EXPECT_EQ(Words(Unicode(0xE6)->expansion), std::vector<uint16_t>{0x501C});
    EXPECT_EQ(Unicode(0xC6)->order, 0x400D);
    EXPECT_EQ(Words(Unicode(0xC6)->expansion), std::vector<uint16_t>{0x401C});
    EXPECT_EQ(Unicode(0x153)->order, 0x5045);                                   // oe
    EXPECT_EQ(Words(Unicode(0xFE)->expansion), std::vector<uint16_t>{0x5028});  // thorn: t, then h
    EXPECT_EQ(Unicode(0xFE)->order, 0x5059);
    // A digraph keeps the accent of its second letter: dz caron is d, then z caron.
    EXPECT_EQ(Unicode(0x1C6)->order, 0x5019);
    EXPECT_EQ(Words(Unicode(0x1C6)->expansion), std::vector<uint16_t>{0x54F0});
    // Fractions: the first digit with bit 0, then the fraction slash and the second digit.
    const LmCollationRecord* half = Unicode(0xBD);
    EXPECT_EQ(half->order, 0x3F0B);
    ASSERT_EQ(half->expansion.count, 2);
    EXPECT_EQ(half->expansion.items[0], Order(0x2044));
    EXPECT_EQ(half->expansion.items[1], 0x3F14);

    // Plain characters take none of the slow paths.
    for (uint16_t c : {uint16_t('b'), uint16_t('B'), uint16_t('0'), uint16_t(' '), uint16_t(0xE9)}) {
        const LmCollationRecord* r = Unicode(c);
        EXPECT_EQ(r->hasExpansion + r->hasContraction + r->hasLanguageVariants, 0) << c;
        EXPECT_EQ(r->expansion.count, 0);
        EXPECT_EQ(r->familySource, nullptr);
    }
}

TEST(I18nCollation, MaskingCaseAndAccentGivesTheBaseLetter) {
    // The comparison key drops bits 13..12 (case) and 11..7 (accent) of a letter word:
    // every accented or cased form must then equal the plain upper-case letter.
    const uint16_t mask = static_cast<uint16_t>(~0x3F80);
    const char* base = "AAAAAACEEEEIIIINOOOOOOUUUUY";
    const uint16_t upper[] = {0xC0, 0xC1, 0xC2, 0xC3, 0xC4, 0xC5, 0xC7, 0xC8, 0xC9, 0xCA, 0xCB, 0xCC, 0xCD, 0xCE,
                              0xCF, 0xD1, 0xD2, 0xD3, 0xD4, 0xD5, 0xD6, 0xD8, 0xD9, 0xDA, 0xDB, 0xDC, 0xDD};
    for (size_t i = 0; i < sizeof upper / sizeof upper[0]; ++i) {
        const uint16_t b = static_cast<uint16_t>(base[i]);
        EXPECT_EQ(Order(upper[i]) & mask, Order(b)) << std::hex << upper[i];
        EXPECT_EQ(Order(static_cast<uint16_t>(upper[i] + 0x20)) & mask, Order(b)) << std::hex << upper[i] + 0x20;
        EXPECT_NE(Order(upper[i]) & 0x0F80, 0);  // and the accent field is not empty
    }
    // Latin Extended-A: g breve, l stroke, s caron, z acute.
    EXPECT_EQ(Order(0x11F) & mask, Order('G'));
    EXPECT_EQ(Order(0x142) & mask, Order('L'));
    EXPECT_EQ(Order(0x160) & mask, Order('S'));
    EXPECT_EQ(Order(0x17A) & mask, Order('Z'));
}

TEST(I18nCollation, LetterWordsOfLatin1AreUniqueSoThatDecodingFindsTheCharacter) {
    // Decoding an accented letter searches the characters 128..255 of code set 1 for
    // the word: no two characters may share one.
    std::set<uint16_t> seen;
    const LmCollationTable* table = LmLanguageContext::QueryCodeSet(LM_CODESET_LATIN1)->collation;
    for (uint16_t c = 0x80; c <= 0xFF; ++c) {
        const uint16_t w = table->lookup(c)->order;
        if (w < 0x4000 || w > 0x7FFF) continue;
        EXPECT_TRUE(seen.insert(w).second) << "duplicate word for " << std::hex << c;
        const uint16_t letter = (w >> 2) & 0x1F;
        EXPECT_GE(letter, 3);
        EXPECT_LE(letter, 28);
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
    for (uint32_t v = 0; v < 0x100; ++v) {
        // ISO-8859-1 is the first 256 values of Unicode: same words.
        EXPECT_EQ(latin1->lookup(static_cast<uint16_t>(v))->order, uni->lookup(static_cast<uint16_t>(v))->order);
    }
    EXPECT_EQ(latin1->lookup(0x100), nullptr);
    // Above 0x1FF only whole blocks: General Punctuation and Currency Symbols.
    EXPECT_EQ(uni->lookup(0x200), nullptr);
    EXPECT_EQ(uni->lookup(0x391), nullptr);  // Greek
    EXPECT_EQ(uni->lookup(0x1FFF), nullptr);
    EXPECT_EQ(uni->lookup(0x2065), nullptr);  // unassigned inside the block
    EXPECT_EQ(uni->lookup(0x20CF), nullptr);
    EXPECT_EQ(uni->lookup(0x4E00), nullptr);  // Han: no record, orders by its value
    EXPECT_EQ(uni->lookup(0xFFFF), nullptr);
    EXPECT_EQ(Order(0x2003), 37);  // em space: space class
    EXPECT_EQ(Order(0x200D), 13);  // zero width joiner: undefined
    const uint16_t euro = Order(0x20AC);
    const uint16_t dash = Order(0x2014);
    const uint16_t quote = Order(0x201C);
    for (uint16_t w : {euro, dash, quote}) {
        EXPECT_GE(w, 220);  // symbols beyond the named ones
        EXPECT_LT(w, 0x3F00);
    }
    EXPECT_LT(dash, quote);  // in code point order
    EXPECT_LT(quote, euro);
    // The code sets without a table of their own.
    EXPECT_EQ(LmLanguageContext::QueryCodeSet(LM_CODESET_CP1252)->collation, nullptr);
    EXPECT_EQ(LmLanguageContext::QueryCodeSet(LM_CODESET_LATIN9)->collation, nullptr);
}

TEST(I18nCollation, SwedishAndFinnishPutARingADiaeresisODiaeresisAfterZ) {
    // z with extension 1, 2, 3: three letters after z. The accent keeps the mark.
    const struct {
        uint16_t c;
        uint16_t word;
    } swedish[] = {
        {0xE5, 0x53F1},                  // a ring: z + ext 1 + ring (7)
        {0xC5, 0x43F1}, {0xE4, 0x5372},  // a diaeresis: z + ext 2 + diaeresis (6)
        {0xE6, 0x5072},                  // ae sorts with a diaeresis: z + ext 2
        {0xF6, 0x5373},                  // o diaeresis: z + ext 3 + diaeresis
        {0xF8, 0x5473},                  // o stroke sorts with it: z + ext 3 + stroke (8)
        {0xD8, 0x4473},
    };
    for (uint8_t lang : {LM_LANGUAGE_SWEDISH, LM_LANGUAGE_FINNISH}) {
        for (const auto& e : swedish) {
            const LmCollationRecord* generic = Unicode(e.c);
            ASSERT_EQ(generic->hasLanguageVariants, 1) << std::hex << e.c;
            const LmCollationRecord* v = ForLanguage(generic, lang);
            EXPECT_NE(v, generic);
            EXPECT_EQ(v->order, e.word) << std::hex << e.c;
            EXPECT_EQ(v->hasExpansion, 0);  // ae is one letter here
            EXPECT_EQ(v->hasLanguageVariants, 0);
        }
    }
    // The primary order of the three is z < a ring < a diaeresis < o diaeresis.
    const auto primary = [](uint16_t w) { return w & 0x407F; };
    const auto sv = [](uint16_t c) { return ForLanguage(Unicode(c), LM_LANGUAGE_SWEDISH)->order; };
    EXPECT_LT(primary(Order('z')), primary(sv(0xE5)));
    EXPECT_LT(primary(sv(0xE5)), primary(sv(0xE4)));
    EXPECT_LT(primary(sv(0xE4)), primary(sv(0xF6)));
    // German, English and the generic order keep the accented letters.
    for (uint8_t lang : {LM_LANGUAGE_GENERIC, LM_LANGUAGE_GERMAN, LM_LANGUAGE_ENGLISH})
        EXPECT_EQ(ForLanguage(Unicode(0xE4), lang)->order, 0x530C);
}

TEST(I18nCollation, DanishAndNorwegianPutAeOStrokeARingAfterZWithAaAsARing) {
    for (uint8_t lang : {LM_LANGUAGE_DANISH, LM_LANGUAGE_NORWEGIAN}) {
        EXPECT_EQ(ForLanguage(Unicode(0xE6), lang)->order, 0x5071);  // ae: z + ext 1
        EXPECT_EQ(ForLanguage(Unicode(0xE6), lang)->hasExpansion, 0);
        EXPECT_EQ(ForLanguage(Unicode(0xE4), lang)->order, 0x5371);  // a diaeresis with ae
        EXPECT_EQ(ForLanguage(Unicode(0xF8), lang)->order, 0x5472);  // o stroke: z + ext 2 + stroke
        EXPECT_EQ(ForLanguage(Unicode(0xE5), lang)->order, 0x53F3);  // a ring: z + ext 3 + ring
        EXPECT_EQ(ForLanguage(Unicode(0xC5), lang)->order, 0x43F3);

        // aa is a contraction on a: followers a and A, successors in the same order.
        const LmCollationRecord* a = ForLanguage(Unicode('a'), lang);
        ASSERT_EQ(a->hasContraction, 1);
        EXPECT_EQ(a->order, 0x500C);  // alone it stays a
        ASSERT_EQ(a->followers.count, 2);
        EXPECT_EQ(a->successors.count, a->followers.count);
        ASSERT_NE(Successor(a, 'a'), nullptr);
        EXPECT_EQ(Successor(a, 'a')->order, 0x5073);  // z + ext 3, no mark: aa before a ring
        EXPECT_EQ(Successor(a, 'A')->order, 0x5073);
        EXPECT_EQ(Successor(a, 'b'), nullptr);
        EXPECT_EQ(Successor(ForLanguage(Unicode('A'), lang), 'a')->order, 0x4073);  // Aalborg
        EXPECT_EQ(Successor(a, 'a')->hasContraction, 0);
        uint16_t out = 0;
        EXPECT_NE(a->followers.GetAt(2, out), 0);  // out of range: refused, out untouched
        EXPECT_EQ(out, 0);
        EXPECT_EQ(a->followers.At(-1), nullptr);
    }
    // Swedish has no aa contraction.
    EXPECT_EQ(ForLanguage(Unicode('a'), LM_LANGUAGE_SWEDISH)->hasContraction, 0);
}

TEST(I18nCollation, TraditionalSpanishContractsChAndLl) {
    const LmCollationRecord* c = ForLanguage(Unicode('c'), LM_LANGUAGE_SPANISH_TRADITIONAL);
    ASSERT_EQ(c->hasContraction, 1);
    EXPECT_EQ(c->order, 0x5014);                  // c alone
    EXPECT_EQ(Successor(c, 'h')->order, 0x5016);  // ch: c + ext 2, after every c
    EXPECT_EQ(Successor(c, 'H')->order, 0x5016);
    EXPECT_EQ(Successor(c, 'z'), nullptr);
    EXPECT_EQ(Successor(ForLanguage(Unicode('C'), LM_LANGUAGE_SPANISH_TRADITIONAL), 'h')->order, 0x4016);
    const LmCollationRecord* l = ForLanguage(Unicode('l'), LM_LANGUAGE_SPANISH_TRADITIONAL);
    EXPECT_EQ(Successor(l, 'l')->order, 0x503A);  // ll: l (letter 14) + ext 2
    EXPECT_EQ(Successor(ForLanguage(Unicode('L'), LM_LANGUAGE_SPANISH_TRADITIONAL), 'L')->order, 0x403A);
    // Modern Spanish keeps ch and ll apart; both put n tilde after n.
    EXPECT_EQ(ForLanguage(Unicode('c'), LM_LANGUAGE_SPANISH)->hasContraction, 0);
    EXPECT_EQ(ForLanguage(Unicode(0xF1), LM_LANGUAGE_SPANISH)->order, 0x52C3);  // n + ext 3 + tilde
    EXPECT_EQ(ForLanguage(Unicode(0xF1), LM_LANGUAGE_SPANISH_TRADITIONAL)->order, 0x52C3);
    EXPECT_EQ(ForLanguage(Unicode(0xF1), LM_LANGUAGE_FRENCH)->order, 0x52C0);  // generic n tilde
}

TEST(I18nCollation, HungarianChainsDzToDzs) {
    // d -> z gives dz (d + ext 2), which contracts further with s to dzs (d + ext 3).
    const LmCollationRecord* d = ForLanguage(Unicode('d'), LM_LANGUAGE_HUNGARIAN);
    ASSERT_EQ(d->hasContraction, 1);
    EXPECT_EQ(d->order, 0x5018);
    const LmCollationRecord* dz = Successor(d, 'z');
    ASSERT_NE(dz, nullptr);
    EXPECT_EQ(dz->order, 0x501A);
    EXPECT_EQ(dz->hasContraction, 1);
    EXPECT_EQ(Successor(dz, 's')->order, 0x501B);
    EXPECT_EQ(Successor(dz, 'S')->order, 0x501B);
    EXPECT_EQ(Successor(dz, 's')->hasContraction, 0);
    EXPECT_EQ(Successor(dz, 'z'), nullptr);
    // DZS, Dzs: upper case from the first letter.
    EXPECT_EQ(Successor(Successor(ForLanguage(Unicode('D'), LM_LANGUAGE_HUNGARIAN), 'Z'), 'S')->order, 0x401B);
    EXPECT_EQ(Successor(ForLanguage(Unicode('c'), LM_LANGUAGE_HUNGARIAN), 's')->order, 0x5016);  // cs
    EXPECT_EQ(Successor(ForLanguage(Unicode('z'), LM_LANGUAGE_HUNGARIAN), 's')->order, 0x5072);  // zs
    // o double acute (above 0xFF: only in code set 253) is a letter after o.
    EXPECT_EQ(ForLanguage(Unicode(0x151), LM_LANGUAGE_HUNGARIAN)->order, 0x5746);  // o + ext 2 + double acute
    EXPECT_EQ(ForLanguage(Unicode(0xF6), LM_LANGUAGE_HUNGARIAN)->order, 0x5346);   // o + ext 2 + diaeresis
    // Spanish c contracts with h, Hungarian c with s, and neither with the other.
    EXPECT_EQ(Successor(ForLanguage(Unicode('c'), LM_LANGUAGE_HUNGARIAN), 'h'), nullptr);
    EXPECT_EQ(Successor(ForLanguage(Unicode('c'), LM_LANGUAGE_SPANISH_TRADITIONAL), 's'), nullptr);
}

TEST(I18nCollation, GermanSharpSExpandsToPlainSs) {
    const LmCollationRecord* de = ForLanguage(Unicode(0xDF), LM_LANGUAGE_GERMAN);
    EXPECT_NE(de, Unicode(0xDF));
    EXPECT_EQ(de->order, 0x5E54);  // s with accent 28: equal to s at the primary level
    EXPECT_EQ(de->hasExpansion, 1);
    EXPECT_EQ(Words(de->expansion), std::vector<uint16_t>{0x5054});
    EXPECT_EQ(de->order & 0x407F, Order('s') & 0x407F);
}

TEST(I18nCollation, LanguagesAndVariantListsAgree) {
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
    EXPECT_NE(LmLanguageContext::QueryLanguage(LM_LANGUAGE_DANISH)->tailored, 0);
    EXPECT_EQ(LmLanguageContext::QueryLanguage(0), nullptr);
    EXPECT_EQ(LmLanguageContext::QueryLanguage(14), nullptr);
    EXPECT_EQ(LmLanguageContext::QueryLanguage(254), nullptr);
    EXPECT_EQ(LmLanguageContext::QueryLanguage(255), nullptr);

    // Every variant names a tailored language, and the lists run in parallel.
    const LmCollationTable* uni = LmLanguageContext::QueryCodeSet(LM_CODESET_UCS2)->collation;
    int variants = 0;
    for (uint16_t v = 0; v < 0x200; ++v) {
        const LmCollationRecord* r = uni->lookup(v);
        EXPECT_EQ(r->languages.count, r->languageRecords.count);
        EXPECT_EQ(r->hasLanguageVariants != 0, r->languages.count != 0);
        EXPECT_EQ(r->hasExpansion != 0, r->expansion.count != 0);
        for (int i = 0; i < r->languages.count; ++i) {
            EXPECT_NE((*r->languages.At(i))->tailored, 0);
            ++variants;
        }
    }
    EXPECT_GT(variants, 40);
}

TEST(I18nCollation, FamilyIsLatinForEveryCodeSetAndLanguage) {
    for (uint8_t cs : {uint8_t(0), LM_CODESET_LATIN1, LM_CODESET_CP1252, LM_CODESET_LATIN9, LM_CODESET_UCS2}) {
        const LmCodeSet* set = LmLanguageContext::QueryCodeSet(cs);
        ASSERT_NE(set, nullptr);
        for (uint8_t lang : {uint8_t(0), LM_LANGUAGE_GENERIC, LM_LANGUAGE_SWEDISH, uint8_t(200)})
            EXPECT_EQ(set->family(lang), LM_FAMILY_LATIN);
    }
    EXPECT_EQ(LM_FAMILY_HAN, 20);
}

}  // namespace
