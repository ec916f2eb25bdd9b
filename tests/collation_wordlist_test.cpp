// Word lists sorted by the order words that LmStringIterator::GetNextOrder delivers from
// the lumoi18n tables, against the order a speaker of each language expects. The key
// is three-level like a comparison's: primary (class, letter, extension; space and
// symbol words skipped), then the accents, then the case.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "lmchar.h"
#include "lumoi18n.h"

namespace {

struct SortKey {
    std::vector<uint16_t> primary, accent, casing;
    bool operator<(const SortKey& o) const {
        if (primary != o.primary) return primary < o.primary;
        if (accent != o.accent) return accent < o.accent;
        return casing < o.casing;
    }
};

SortKey KeyOf(const std::vector<uint16_t>& words) {
    SortKey k;
    for (uint16_t w : words) {
        if (w < 0x3F00) continue;  // space and symbol class: ignorable
        const bool letter = w >= 0x4000 && w <= 0x7FFF;
        k.primary.push_back(letter ? static_cast<uint16_t>(w & 0x407F) : w);
        k.accent.push_back(letter ? static_cast<uint16_t>((w >> 7) & 0x1F) : 0);
        k.casing.push_back(letter ? static_cast<uint16_t>((w >> 12) & 0x3) : 0);
    }
    return k;
}

std::vector<uint16_t> Drain(LmStringIterator& it) {
    std::vector<uint16_t> words;
    for (int guard = 0; guard < 100; ++guard) {
        const uint16_t w = it.GetNextOrder(1);
        if (w == 0) return words;
        words.push_back(w);
    }
    ADD_FAILURE() << "no end of text";
    return words;
}

// The order words of a word in a code set: 1-byte code sets get the Latin-1 bytes
// (every test word is Latin-1, and those letters sit at the same bytes in 1252).
std::vector<uint16_t> Orders(const std::u16string& word, uint8_t codeSet, uint8_t language) {
    if (codeSet == LM_CODESET_UCS2) {
        std::vector<unsigned short> text(word.begin(), word.end());
        text.push_back(0);
        LmStringIterator it(text.data(), codeSet, language, 1);
        return Drain(it);
    }
    std::string text;
    for (char16_t c : word) text.push_back(static_cast<char>(c));
    LmStringIterator it(text.c_str(), codeSet, language, 1);
    return Drain(it);
}

// Sorts a shuffled copy of `expected` and compares, in code sets 1, 253 and 1252.
void ExpectSorted(const std::vector<std::u16string>& expected, uint8_t language) {
    for (uint8_t cs : {LM_CODESET_LATIN1, LM_CODESET_UCS2, LM_CODESET_CP1252}) {
        std::vector<std::u16string> words(expected.rbegin(), expected.rend());
        std::rotate(words.begin(), words.begin() + static_cast<long>(words.size() / 2), words.end());
        std::stable_sort(words.begin(), words.end(), [&](const std::u16string& a, const std::u16string& b) {
            return KeyOf(Orders(a, cs, language)) < KeyOf(Orders(b, cs, language));
        });
        std::string got;
        for (const auto& w : words) {
            for (char16_t c : w) got += c < 0x80 ? static_cast<char>(c) : '~';
            got += ' ';
        }
        EXPECT_TRUE(words == expected) << "language " << int(language) << ", code set " << int(cs) << ": " << got;
    }
}

TEST(CollationWordlist, SwedishPutsARingADiaeresisODiaeresisAfterZ) {
    // z < å < ä < ö, with æ as ä and ø as ö (each after the native letter).
    ExpectSorted({u"apa", u"zebra", u"zon", u"\u00c5ngstr\u00f6m", u"\u00e5sna", u"\u00e6rt", u"\u00e4rt", u"\u00f6ga",
                  u"\u00f8ga", u"\u00f6sa"},
                 LM_LANGUAGE_SWEDISH);
    ExpectSorted({u"apa", u"zebra", u"\u00e5sna", u"\u00e4rt", u"\u00f6ga"}, LM_LANGUAGE_FINNISH);
    // The generic order keeps them next to a and o.
    ExpectSorted({u"apa", u"\u00e4rt", u"\u00e5sna", u"\u00f6ga", u"\u00f6sa", u"zebra"}, LM_LANGUAGE_GENERIC);
}

TEST(CollationWordlist, DanishPutsAeOStrokeARingAfterZAndReadsAaAsARing) {
    // z < æ < ø < å; aa = å, so Aalborg follows ål; ä sorts as æ, ö as ø.
    ExpectSorted({u"abe", u"zebra", u"\u00e6ble", u"\u00e4ble", u"\u00f6l", u"\u00f8l", u"\u00e5l", u"Aalborg",
                  u"aalegr\u00f8d", u"\u00e5r"},
                 LM_LANGUAGE_DANISH);
    ExpectSorted({u"abe", u"zebra", u"\u00e6ble", u"\u00f8l", u"\u00e5l", u"Aalborg"}, LM_LANGUAGE_NORWEGIAN);
    // Without Danish rules aa is two a's and Aalborg sorts first.
    ExpectSorted({u"Aalborg", u"abe", u"\u00e5l", u"zebra"}, LM_LANGUAGE_GENERIC);
}

TEST(CollationWordlist, TraditionalSpanishContractsChAndLl) {
    ExpectSorted(
        {u"cuna", u"cz", u"chico", u"Chile", u"dama", u"luz", u"lz", u"llama", u"Lleida", u"nube", u"\u00f1u", u"oca"},
        LM_LANGUAGE_SPANISH_TRADITIONAL);
    // Modern Spanish: ch and ll are two letters each, n tilde is still after n.
    ExpectSorted({u"chico", u"cuna", u"cz", u"llama", u"luz", u"nube", u"\u00f1u", u"oca"}, LM_LANGUAGE_SPANISH);
}

TEST(CollationWordlist, HungarianSortsDigraphsAndDzsAfterTheirFirstLetter) {
    // c < cs, d < dz < dzs, g < gy, o < ö, s < sz, z < zs.
    ExpectSorted({u"cukor", u"csak", u"Csongor", u"dzadza", u"Dzs\u00f3", u"dzsungel", u"eb"}, LM_LANGUAGE_HUNGARIAN);
    ExpectSorted({u"dob", u"dudor", u"dzadza", u"dzsem"}, LM_LANGUAGE_HUNGARIAN);
    ExpectSorted({u"gumi", u"gyar", u"olaj", u"\u00f3ra", u"\u00f6k\u00f6r", u"sz\u00f3", u"zab", u"zsir"},
                 LM_LANGUAGE_HUNGARIAN);
    // Generic: the digraphs are two letters.
    ExpectSorted({u"csak", u"cukor", u"dzadza", u"dzsungel"}, LM_LANGUAGE_GENERIC);
}

TEST(CollationWordlist, GermanKeepsUmlautsNextToTheirVowelAndSharpSAsSs) {
    ExpectSorted({u"Apfel", u"\u00c4rger", u"Bar", u"B\u00e4r", u"Bart", u"Zucker"}, LM_LANGUAGE_GERMAN);
    ExpectSorted({u"Mueller", u"M\u00fchle", u"Mull", u"M\u00fcller"}, LM_LANGUAGE_GERMAN);
    ExpectSorted({u"Masse", u"Ma\u00dfe", u"Massel", u"Ma\u00dfstab", u"Mast"}, LM_LANGUAGE_GERMAN);
    // Generic: sharp s is a letter of its own after every s.
    ExpectSorted({u"Masse", u"Massel", u"Mast", u"Ma\u00dfe", u"Ma\u00dfstab"}, LM_LANGUAGE_GENERIC);
}

TEST(CollationWordlist, OrderWordsOfHandPickedTextsThroughTheIterator) {
    // German sharp s: the first s with accent 28, then the plain s of the expansion.
    EXPECT_EQ(Orders(u"a\u00df", LM_CODESET_LATIN1, LM_LANGUAGE_GERMAN),
              (std::vector<uint16_t>{0x500C, 0x5E54, 0x5054}));
    EXPECT_EQ(Orders(u"a\u00df", LM_CODESET_LATIN1, LM_LANGUAGE_GENERIC),
              (std::vector<uint16_t>{0x500C, 0x5055, 0x5054}));
    // Danish aa is one word; a lone a at the end stays a; ab is not contracted.
    EXPECT_EQ(Orders(u"aab", LM_CODESET_LATIN1, LM_LANGUAGE_DANISH), (std::vector<uint16_t>{0x5073, 0x5010}));
    EXPECT_EQ(Orders(u"ba", LM_CODESET_LATIN1, LM_LANGUAGE_DANISH), (std::vector<uint16_t>{0x5010, 0x500C}));
    EXPECT_EQ(Orders(u"ab", LM_CODESET_UCS2, LM_LANGUAGE_DANISH), (std::vector<uint16_t>{0x500C, 0x5010}));
    // Spanish ch through the Windows-1252 path (no table: mapped to 253).
    EXPECT_EQ(Orders(u"Ch!", LM_CODESET_CP1252, LM_LANGUAGE_SPANISH_TRADITIONAL), (std::vector<uint16_t>{0x4016, 120}));
    // Hungarian dzs is one word; dz followed by anything else is dz and that character.
    EXPECT_EQ(Orders(u"dzsa", LM_CODESET_UCS2, LM_LANGUAGE_HUNGARIAN), (std::vector<uint16_t>{0x501B, 0x500C}));
    EXPECT_EQ(Orders(u"dza", LM_CODESET_LATIN1, LM_LANGUAGE_HUNGARIAN), (std::vector<uint16_t>{0x501A, 0x500C}));
    EXPECT_EQ(Orders(u"dz", LM_CODESET_LATIN1, LM_LANGUAGE_HUNGARIAN), (std::vector<uint16_t>{0x501A}));
    // Digits, space, Han (its value).
    EXPECT_EQ(Orders(u"0 9\u4e00", LM_CODESET_UCS2, LM_LANGUAGE_GENERIC),
              (std::vector<uint16_t>{0x3F00, 32, 0x3F5A, 0x4E00}));
}

}  // namespace
