// Decoding of collation order words: the character and escape text of
// LmConvertOrderToChar, the descriptions of LmConvertOrderToString, and the fields of
// the LmExtract... functions. Words are built by hand from the bit layout:
// letter 01 cc aaaaa lllll ee, digit 0x3F00 + 10 * digit + expand, symbol 80 + index.
#include "testkit.h"

namespace {

constexpr unsigned char kLatin = 1, kHan = 20, kMix = 0x80;

constexpr uint16_t Letter(int letterCase, int accent, int letter, int extension = 0) {
    return static_cast<uint16_t>(0x4000 | letterCase << 12 | accent << 7 | letter << 2 | extension);
}
constexpr int kA = 3, kE = 7, kO = 17, kS = 21, kY = 27, kZ = 28;
constexpr int kAcute = 2, kGrave = 3, kDiaeresis = 6, kRing = 7, kCaron = 9, kDoubleAcute = 14;

// The character and the name; the name starts as a marker so that "left null" is seen.
std::pair<int, std::string> ToChar(uint16_t order, unsigned char family = kLatin, int searchAccents = 1) {
    static const char marker[] = "(untouched)";
    unsigned char c = 0;
    const char* name = marker;
    EXPECT_EQ(LmConvertOrderToChar(order, family, c, searchAccents, &name), 0);
    return {c, name == nullptr ? "(null)" : name};
}

std::string ToText(uint16_t order, unsigned char family = kLatin) {
    LmString text("previous");
    EXPECT_EQ(LmConvertOrderToString(order, family, text), 0);
    return text.StrGet();
}

using P = std::pair<int, std::string>;

TEST(OrderDecode, AccentedLetterBuiltFromItsBits) {
    // Lower e with accent acute: 0x4000 | 1 << 12 | 2 << 7 | 7 << 2 = 0x511C, the order of
    // 0xE9 in code set 1; decoded both ways, with and without the accent search.
    const uint16_t eAcute = Letter(1, kAcute, kE);
    ASSERT_EQ(eAcute, 0x511C);
    EXPECT_EQ(LmCharOrder(LmChar(static_cast<unsigned short>(0xE9), 1, 1)), eAcute);
    EXPECT_EQ(ToChar(eAcute), P(0xE9, "\\'e"));
    EXPECT_EQ(ToChar(eAcute, kLatin, 0), P('e', "(null)"));
    EXPECT_EQ(ToText(eAcute), "lower letter e with accent acute");
    int letterCase = -1, accent = -1, letter = -1, extension = -1;
    EXPECT_EQ(LmExtractLetterFromOrder(eAcute, letterCase, accent, letter, extension), 0);
    EXPECT_EQ(std::make_tuple(letterCase, accent, letter, extension), std::make_tuple(1, kAcute, kE, 0));
    unsigned char c = 0;
    EXPECT_EQ(LmConvertOrderToChar(eAcute, kLatin, c, 1, nullptr), 0);  // no name wanted
    EXPECT_EQ(c, 0xE9);

    // More rows of the escape table, each found through its order word.
    EXPECT_EQ(ToChar(Letter(0, kGrave, kA)), P(0xC0, "\\`A"));
    EXPECT_EQ(ToChar(Letter(0, kRing, kA)), P(0xC5, "\\AA"));
    EXPECT_EQ(ToChar(Letter(0, 8, kO)), P(0xD8, "\\-O"));  // stroke
    EXPECT_EQ(ToChar(Letter(1, kDiaeresis, kY)), P(0xFF, "\\\"y"));
    EXPECT_EQ(ToChar(Letter(1, 24, kA)), P(0xAA, ""));  // feminine ordinal: an empty entry
    // An accent no character of code set 1 carries: the base letter, the name left null.
    EXPECT_EQ(ToChar(Letter(1, kCaron, kE)), P('e', "(null)"));
    EXPECT_EQ(ToChar(Letter(1, kDoubleAcute, kO)), P('o', "(null)"));
    // Without accent there is no search, whatever the word would find: thorn is T with an
    // extension, sharp s is s with one.
    EXPECT_EQ(ToChar(0x4059), P('T', "(null)"));
    EXPECT_EQ(ToChar(0x5055), P('s', "(null)"));

    // Every accented letter of the upper half decodes to itself, and its escape ends with
    // its base letter: a shifted table row would break both.
    for (unsigned v = 0xC0; v <= 0xFF; ++v) {
        const uint16_t order = LmCharOrder(LmChar(static_cast<unsigned short>(v), 1, 1));
        if ((order & 0xC000) != 0x4000 || ((order >> 7) & 31) == 0) continue;  // accented letters only
        const P got = ToChar(order);
        EXPECT_EQ(got.first, static_cast<int>(v)) << v;
        ASSERT_GE(got.second.size(), 3u) << v;
        EXPECT_EQ(got.second[0], '\\') << v;
        EXPECT_EQ(got.second.back(), ToChar(order, kLatin, 0).first) << v;
    }
}

TEST(OrderDecode, CharactersByClass) {
    const struct {
        uint16_t order;
        unsigned char family;
        int c;
    } cases[] = {// Han by the top bit of the word or by the family; the mix flag is no family. Space
                 // class: the blank, the undefined ordering indicator 13 included. Symbols: by the
                 // table, 7 without entry or ASCII form, a dot as substitute. Digits: the expand bit
                 // does not change the character. Letters: field + 62, 32 more for any non-zero case.
                 {0x8000, kLatin, 127},
                 {0xFFFF, kLatin, 127},
                 {Letter(0, 0, kA), kHan, 127},
                 {Letter(0, 0, kA), kMix | kHan, 127},
                 {Letter(0, 0, kA), kMix | kLatin, 'A'},
                 {Letter(0, 0, kA), 19, 'A'},
                 {0, kLatin, ' '},
                 {13, kLatin, ' '},
                 {79, kLatin, ' '},
                 {80, kLatin, 7},
                 {111, kLatin, 7},
                 {112, kLatin, '_'},
                 {113, kLatin, 7},
                 {124, kLatin, '/'},
                 {126, kLatin, '.'},
                 {132, kLatin, '\''},
                 {135, kLatin, '"'},
                 {138, kLatin, '.'},
                 {159, kLatin, '*'},
                 {168, kLatin, '\''},
                 {179, kLatin, 7},
                 {187, kLatin, '|'},
                 {190, kLatin, 7},
                 {219, kLatin, 7},
                 {220, kLatin, 7},
                 {0x3EFF, kLatin, 7},
                 {0x3F00, kLatin, '0'},
                 {0x3F0B, kLatin, '1'},
                 {0x3F5A, kLatin, '9'},
                 {Letter(0, 0, kA), kLatin, 'A'},
                 {Letter(0, 0, kZ, 3), kLatin, 'Z'},
                 {Letter(1, 0, kZ), kLatin, 'z'},
                 {Letter(2, 0, kA), kLatin, 'a'},
                 {Letter(3, 0, kA), kLatin, 'a'},
                 {Letter(1, kAcute, kE), kLatin, 'e'}};
    for (const auto& t : cases) EXPECT_EQ(ToChar(t.order, t.family, 0), P(t.c, "(null)")) << t.order;
    // The symbol texts never reach the name: only an accented letter has one.
    EXPECT_EQ(ToChar(138), P('.', "(null)"));
}

TEST(OrderDecode, Descriptions) {
    const struct {
        uint16_t order;
        unsigned char family;
        const char* text;
    } cases[] = {{0x8000, kLatin, "HAN character 0x8000\n"},
                 {0x4E2D, kHan, "HAN character 0x4e2d\n"},
                 {0x400C, kMix | kHan, "HAN character 0x400c\n"},
                 {0x400C, kMix | kLatin, "upper letter A"},
                 {0, kLatin, "space"},
                 {13, kLatin, "undefined ordering indicator"},
                 {79, kLatin, "space"},
                 {80, kLatin, "symbol "},
                 {112, kLatin, "symbol _"},
                 {113, kLatin, "symbol "},
                 {135, kLatin, "symbol \""},
                 {138, kLatin, "symbol left pointing o_double angle quotation mark"},
                 {139, kLatin, "symbol right pointing o_double angle quotation mark"},
                 {168, kLatin, "symbol '"},
                 {179, kLatin, "symbol multiplication sign"},
                 {187, kLatin, "symbol |"},
                 {190, kLatin, "symbol micron sign"},
                 {219, kLatin, "symbol inverted question mark"},
                 {220, kLatin, "symbol "},
                 {0x3EFF, kLatin, "symbol "},
                 {0x3F00, kLatin, "digit 0"},
                 {0x3F0B, kLatin, "digit 1 with expand"},
                 {0x3F5A, kLatin, "digit 9"},
                 {Letter(1, 0, kA, 1), kLatin, "lower letter a with extension"},
                 {Letter(1, 0, kZ, 3), kLatin, "lower letter z with extension"},
                 {Letter(2, 0, kA), kLatin, "lower letter a"},
                 {Letter(1, 1, 5), kLatin, "lower letter c with cedilla"},
                 {Letter(0, 13, kE, 2), kLatin, "upper letter E with ogonek with extension"},
                 // Accent values above 14 have no name: " with " stands alone (German sharp s).
                 {Letter(1, 28, kS), kLatin, "lower letter s with "},
                 {Letter(1, 15, kS, 1), kLatin, "lower letter s with  with extension"}};
    for (const auto& t : cases) EXPECT_EQ(ToText(t.order, t.family), t.text) << t.order;

    // Every accent name, in the order of its value.
    const char* accents[] = {"cedilla",      "accent acute", "accent grave", "accent circumflex",    "tilde",
                             "diaeresis",    "ring above",   "stroke",       "accent caron",         "accent macron",
                             "accent breve", "dot above",    "ogonek",       "accent o_double acute"};
    for (int a = 1; a <= 14; ++a)
        EXPECT_EQ(ToText(Letter(0, a, kA)), std::string("upper letter A with ") + accents[a - 1]) << a;
}

TEST(OrderDecode, Fields) {
    int digit = -1, expand = -1;
    EXPECT_EQ(LmExtractDigitFromOrder(0x3F0B, digit, expand), 0);
    EXPECT_EQ(std::make_pair(digit, expand), std::make_pair(1, 1));
    EXPECT_EQ(LmExtractDigitFromOrder(0x3F5A, digit, expand), 0);
    EXPECT_EQ(std::make_pair(digit, expand), std::make_pair(9, 0));
    // Outside the digit range: refused, the fields left as they were.
    EXPECT_EQ(LmExtractDigitFromOrder(0x4000, digit, expand), LM_ERR_BAD_ARGUMENT);
    EXPECT_EQ(LmExtractDigitFromOrder(0x3EFF, digit, expand), LM_ERR_BAD_ARGUMENT);
    EXPECT_EQ(std::make_pair(digit, expand), std::make_pair(9, 0));

    int symbol = -1;
    EXPECT_EQ(LmExtractSymbolFromOrder(80, symbol), 0);
    EXPECT_EQ(symbol, 0);
    EXPECT_EQ(LmExtractSymbolFromOrder(0x3EFF, symbol), 0);
    EXPECT_EQ(symbol, 0x3EAF);
    EXPECT_EQ(LmExtractSymbolFromOrder(79, symbol), LM_ERR_BAD_ARGUMENT);
    EXPECT_EQ(LmExtractSymbolFromOrder(0x3F00, symbol), LM_ERR_BAD_ARGUMENT);
    EXPECT_EQ(symbol, 0x3EAF);

    int letterCase = -1, accent = -1, letter = -1, extension = -1;
    auto fields = [&] { return std::make_tuple(letterCase, accent, letter, extension); };
    EXPECT_EQ(LmExtractLetterFromOrder(0x7FFF, letterCase, accent, letter, extension), 0);
    EXPECT_EQ(fields(), std::make_tuple(3, 31, 31, 3));
    EXPECT_EQ(LmExtractLetterFromOrder(0x5073, letterCase, accent, letter, extension), 0);  // Danish aa
    EXPECT_EQ(fields(), std::make_tuple(1, 0, kZ, 3));
    // No class test below the Han range: a space word is taken apart as well.
    EXPECT_EQ(LmExtractLetterFromOrder(0x0020, letterCase, accent, letter, extension), 0);
    EXPECT_EQ(fields(), std::make_tuple(0, 0, 8, 0));
    EXPECT_EQ(LmExtractLetterFromOrder(0x8000, letterCase, accent, letter, extension), LM_ERR_BAD_ARGUMENT);
    EXPECT_EQ(fields(), std::make_tuple(0, 0, 8, 0));
}

}  // namespace
