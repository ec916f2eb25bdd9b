// Decoding of order words: the character, the description and the fields of one
// collation order word, for showing index keys in order form. The class of a word
// comes from its value range; a letter word is 01 cc aaaaa lllll ee (case, accent,
// letter 3 = A .. 28 = Z, extension).
#include <cstdio>

#include "lmchar.h"

namespace {

// Characters handed out for words without a character of their own.
constexpr unsigned char kNoChar = 7;
constexpr unsigned char kHanChar = 127;

// Family bytes from this one up are Han; the top bit is the mix flag, no family.
constexpr unsigned kFirstHanFamily = LM_FAMILY_HAN;
constexpr uint16_t kUndefinedOrder = 13;

// The letter field 3 is 'A': the character is the field plus 62, 32 more in lower case.
constexpr int kLetterToUpper = 62;
constexpr int kLowerOffset = 32;

inline bool IsHanWord(uint16_t order, unsigned char family) {
    return (order & 0x8000) != 0 || (family & 0x7Fu) >= kFirstHanFamily;
}
inline int LetterCase(uint16_t order) { return (order >> 12) & 3; }
inline int LetterAccent(uint16_t order) { return (order >> 7) & 31; }
inline int LetterField(uint16_t order) { return (order >> 2) & 31; }
inline int LetterExtension(uint16_t order) { return order & 3; }
inline int DigitOf(uint16_t order) { return (order - LM_ORDER_FIRST_DIGIT) / 10; }

inline unsigned char BaseLetter(uint16_t order) {
    return static_cast<unsigned char>(LetterField(order) + kLetterToUpper +
                                      (LetterCase(order) != 0 ? kLowerOffset : 0));
}

// The named symbols among the words 112 to 219, ascending: the name that follows
// "symbol " in a description and the character, 0 for none (c stays 7). A dot
// stands for every symbol without an ASCII form.
struct SymbolEntry {
    uint16_t order;
    const char* name;
    char c;
};
constexpr SymbolEntry kSymbols[] = {
    {112, "_", '_'},
    {114, "macron sign", '.'},
    {115, "soft hyphen", '.'},
    {116, "-", '-'},
    {117, ",", ','},
    {118, ";", ';'},
    {119, ":", ':'},
    {120, "!", '!'},
    {121, "inverted exclamation mark", '.'},
    {122, "?", '?'},
    {124, "solidus", '/'},
    {126, "full stop", '.'},
    {129, "middle dot", '.'},
    {130, "cedilla", '.'},
    {132, "apostrophe", '\''},
    {135, "\"", '"'},
    {138, "left pointing o_double angle quotation mark", '.'},
    {139, "right pointing o_double angle quotation mark", '.'},
    {140, "(", '('},
    {142, ")", ')'},
    {144, "[", '['},
    {145, "]", ']'},
    {146, "{", '{'},
    {147, "}", '}'},
    {148, "section sign", '.'},
    {149, "pilcrow sign", '.'},
    {150, "copyright sign", '.'},
    {151, "registered sign", '.'},
    {153, "@", '@'},
    {154, "currency sign", '.'},
    {155, "cent sign", '.'},
    {156, "$", '$'},
    {157, "pound sign", '.'},
    {158, "yen sign", '.'},
    {159, "*", '*'},
    {160, "reverse solidus", '.'},
    {161, "&", '&'},
    {162, "#", '#'},
    {163, "%", '%'},
    {165, "+", '+'},
    {167, "plus minus sign", '.'},
    {168, "'", '\''},
    {169, "`", '`'},
    {171, "^", '^'},
    {174, "diaeresis", '.'},
    {176, "~", '~'},
    {178, "division sign", '.'},
    {179, "multiplication sign", 0},
    {181, "<", '<'},
    {183, "=", '='},
    {185, ">", '>'},
    {186, "not sign", 0},
    {187, "|", '|'},
    {188, "broken bar", 0},
    {189, "degree sign", 0},
    {190, "micron sign", 0},
    {219, "inverted question mark", 0},
};

// Accent names by the accent field of a letter word; 0 and 15 up have none.
constexpr const char* kAccentNames[15] = {
    nullptr,         "cedilla",      "accent acute", "accent grave", "accent circumflex",
    "tilde",         "diaeresis",    "ring above",   "stroke",       "accent caron",
    "accent macron", "accent breve", "dot above",    "ogonek",       "accent o_double acute",
};

// The typesetter's escape of each character 128 to 255 of code set 1: backslash,
// accent mark, letter. Characters that are no accented letter have the empty text.
constexpr unsigned kFirstEscaped = 128;
constexpr const char* kEscapes[128] = {
    "",     "",     "",     "",      "",      "",     "",      "",      "", "", "", "", "", "", "", "",
    "",     "",     "",     "",      "",      "",     "",      "",      "", "", "", "", "", "", "", "",
    "",     "",     "",     "",      "",      "",     "",      "",      "", "", "", "", "", "", "", "",
    "",     "",     "",     "",      "",      "",     "",      "",      "", "", "", "", "", "", "", "",  // 128-191
    "\\`A", "\\'A", "\\^A", "\\~A",  "\\\"A", "\\AA", "\\AE",  "\\,C",                                   // 192-199
    "\\`E", "\\'E", "\\^E", "\\\"E", "\\`I",  "\\'I", "\\^I",  "\\\"I",                                  // 200-207
    "\\-D", "\\~N", "\\`O", "\\'O",  "\\^O",  "\\~O", "\\\"O", "",                                       // 208-215
    "\\-O", "\\`U", "\\'U", "\\^U",  "\\\"U", "\\'Y", "\\TH",  "\\ss",                                   // 216-223
    "\\`a", "\\'a", "\\^a", "\\~a",  "\\\"a", "\\aa", "\\ae",  "\\,c",                                   // 224-231
    "\\`e", "\\'e", "\\^e", "\\\"e", "\\`i",  "\\'i", "\\^i",  "\\\"i",                                  // 232-239
    "\\-d", "\\~n", "\\`o", "\\'o",  "\\^o",  "\\~o", "\\\"o", "",                                       // 240-247
    "\\-o", "\\`u", "\\'u", "\\^u",  "\\\"u", "\\'y", "\\th",  "\\\"y",                                  // 248-255
};

// Every row is filled: the last ones are where their characters say.
static_assert(kEscapes[64] != nullptr && kEscapes[127] != nullptr);

inline const SymbolEntry* SymbolOf(uint16_t order) {
    for (const SymbolEntry& entry : kSymbols)
        if (entry.order == order) return &entry;
    return nullptr;
}

}  // namespace

int LmConvertOrderToChar(uint16_t order, unsigned char family, unsigned char& c, int searchAccents, const char** name) {
    c = kNoChar;
    if (name != nullptr) *name = nullptr;  // no escape text unless an accented letter is found
    if (IsHanWord(order, family)) {
        c = kHanChar;
    } else if (order < LM_ORDER_FIRST_SYMBOL) {
        c = ' ';
    } else if (order >= LM_ORDER_FIRST_LETTER) {
        c = BaseLetter(order);
        if (LetterAccent(order) == 0 || searchAccents == 0) return 0;
        // The accented letters live in the upper half of code set 1; the first whose
        // plain order is the word wins. A word no character has keeps the base letter.
        for (unsigned v = kFirstEscaped; v <= 0xFF; ++v) {
            if (LmCharOrder(LmChar(static_cast<unsigned short>(v), LM_CODESET_LATIN1, LM_LANGUAGE_GENERIC)) != order)
                continue;
            c = static_cast<unsigned char>(v);
            if (name != nullptr) *name = kEscapes[v - kFirstEscaped];
            break;
        }
    } else if (order >= LM_ORDER_FIRST_DIGIT) {
        c = static_cast<unsigned char>('0' + DigitOf(order));
    } else if (const SymbolEntry* symbol = SymbolOf(order); symbol != nullptr && symbol->c != 0) {
        c = static_cast<unsigned char>(symbol->c);
    }
    return 0;
}

int LmConvertOrderToString(uint16_t order, unsigned char family, LmString& text) {
    char out[96] = "unknown";
    if (IsHanWord(order, family)) {
        std::snprintf(out, sizeof out, "HAN character 0x%04x\n", static_cast<unsigned>(order));
    } else if (order < LM_ORDER_FIRST_SYMBOL) {
        std::snprintf(out, sizeof out, "%s", order == kUndefinedOrder ? "undefined ordering indicator" : "space");
    } else if (order < LM_ORDER_FIRST_DIGIT) {
        const SymbolEntry* symbol = SymbolOf(order);
        std::snprintf(out, sizeof out, "symbol %s", symbol != nullptr && symbol->name != nullptr ? symbol->name : "");
    } else if (order < LM_ORDER_FIRST_LETTER) {
        std::snprintf(out, sizeof out, "digit %d%s", DigitOf(order), (order & 1) != 0 ? " with expand" : "");
    } else {
        // Accent values 15 and up have no name: " with " stands alone.
        const int accent = LetterAccent(order);
        const char* accentName = accent < 15 && kAccentNames[accent] != nullptr ? kAccentNames[accent] : "";
        std::snprintf(out, sizeof out, "%s letter %c%s%s%s", LetterCase(order) != 0 ? "lower" : "upper",
                      static_cast<char>(BaseLetter(order)), accent != 0 ? " with " : "", accentName,
                      LetterExtension(order) != 0 ? " with extension" : "");
    }
    text = out;
    return 0;
}

int LmExtractDigitFromOrder(uint16_t order, int& digit, int& expand) {
    if (order < LM_ORDER_FIRST_DIGIT || order >= LM_ORDER_FIRST_LETTER) return LM_ERR_BAD_ARGUMENT;
    digit = DigitOf(order);
    expand = order & 1;
    return 0;
}

int LmExtractSymbolFromOrder(uint16_t order, int& symbol) {
    if (order < LM_ORDER_FIRST_SYMBOL || order >= LM_ORDER_FIRST_DIGIT) return LM_ERR_BAD_ARGUMENT;
    symbol = order - LM_ORDER_FIRST_SYMBOL;
    return 0;
}

// Only a Han word is refused; a space, symbol or digit word is taken apart as a letter.
int LmExtractLetterFromOrder(uint16_t order, int& letterCase, int& accent, int& letter, int& extension) {
    if ((order & 0x8000) != 0) return LM_ERR_BAD_ARGUMENT;
    letterCase = LetterCase(order);
    accent = LetterAccent(order);
    letter = LetterField(order);
    extension = LetterExtension(order);
    return 0;
}
