// LmChar: the value and pointer forms, write-through, mapping between code sets,
// case, and the classes taken from the collation order words.
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "lumotypes.h"

namespace {

using Bytes = std::vector<uint8_t>;
using Fields = std::tuple<int, int, int, int, int>;  // value, code set, language, pointer form, format

Bytes BufferOf(const LmString& s) { return Bytes(s.StrGet(), s.StrGet() + s.GetSize()); }
Fields FieldsOf(const LmChar& c) {
    return {c.GetValue(), c.GetCodeSet(), c.GetLanguage(), c.IsPointerForm(), c.GetFormat()};
}
LmChar Wide(uint16_t value, unsigned char codeSet = 253) { return LmChar(static_cast<unsigned short>(value), codeSet); }

// One letter for each class member that answers 1: a(lpha), d(igit), h(an), s(pace), y for symbol.
std::string ClassOf(const LmChar& c) {
    return std::string(c.IsAlpha() ? "a" : "") + (c.IsDigit() ? "d" : "") + (c.IsHan() ? "h" : "") +
           (c.IsSpace() ? "s" : "") + (c.IsSymbol() ? "y" : "");
}

constexpr unsigned char kLatin1 = 1, kCp1252 = 2 /* no collation table */, kLatin9 = 3, kUnicode = 253;

TEST(CharForms, PointerFormWritesThrough) {
    LmString s("abc");
    LmChar c(s, 1);
    EXPECT_EQ(FieldsOf(c), Fields('b', kLatin1, 1, 1, 1));
    c = 'X';
    EXPECT_EQ(BufferOf(s), (Bytes{'a', 'X', 'c', 0}));
    LmChar copy(c);  // always a value form: later writes do not reach it
    c = 'Y';
    EXPECT_EQ(FieldsOf(copy), Fields('X', kLatin1, 1, 0, 1));
    EXPECT_EQ(LmChar(s, 3).GetValue(), 0);  // the terminator is a character too

    // Assigning a character maps it to the target's code set; the offset is in bytes.
    const unsigned short wide[] = {0x263A, 0xE9, 0};
    LmString w(wide);
    LmChar(s, 0) = LmChar(w, 2);
    LmChar(s, 2) = LmChar(w, 0);
    EXPECT_EQ(BufferOf(s), (Bytes{0xE9, 'Y', 0x1A, 0}));
    LmChar(w, 0) = LmChar('\xC4', kLatin1);
    EXPECT_EQ(BufferOf(w), (Bytes{0xC4, 0, 0xE9, 0, 0, 0}));
    // Plain values are stored as they are, without mapping.
    LmChar(s, 0) = static_cast<unsigned short>(0xA4);
    LmChar(w, 2) = static_cast<unsigned short>(0x2605);
    LmChar(w, 0) = 'q';
    EXPECT_EQ(BufferOf(s), (Bytes{0xA4, 'Y', 0x1A, 0}));
    EXPECT_EQ(BufferOf(w), (Bytes{'q', 0, 0x05, 0x26, 0, 0}));

    // Behind the pointer big-endian units, as on a disk page; a copy holds the machine's value.
    uint8_t disk[] = {0x26, 0x3A, 0x00, 0x41, 0, 0};
    const LmChar first(reinterpret_cast<const char*>(disk), kUnicode, 1, LmFormatBig);
    EXPECT_EQ(first.GetValue(), 0x263A);
    EXPECT_EQ(FieldsOf(LmChar(first)), Fields(0x263A, kUnicode, 1, 0, 1));
    LmChar second(reinterpret_cast<const char*>(disk + 2), kUnicode, 1, LmFormatBig);
    second = Wide(0xC9);
    EXPECT_EQ(Bytes(disk, disk + 4), (Bytes{0x26, 0x3A, 0x00, 0xC9}));
    second = static_cast<unsigned short>(0x1234);
    EXPECT_EQ(Bytes(disk, disk + 4), (Bytes{0x26, 0x3A, 0x12, 0x34}));
    second = LmChar('\xA4', kLatin9);  // the euro sign: mapped, then swapped
    EXPECT_EQ(Bytes(disk, disk + 4), (Bytes{0x26, 0x3A, 0x20, 0xAC}));
    LmChar little(reinterpret_cast<const char*>(disk), kUnicode, 1, LmFormatLittle);
    little = Wide(0x0102);  // equal formats: stored as it stands
    EXPECT_EQ(Bytes(disk, disk + 2), (Bytes{0x02, 0x01}));
}

TEST(CharForms, ValueFormConstruction) {
    const unsigned char cs8 = LmString::GetDefault8CodeSet();
    EXPECT_EQ(FieldsOf(LmChar('a')), Fields('a', cs8, LmString::GetDefaultLanguage(), 0, 1));
    EXPECT_EQ(LmChar('\xFF').GetValue(), 0xFF);  // not sign-extended
    EXPECT_EQ(FieldsOf(LmChar()), Fields(0, kUnicode, 1, 0, 1));
    EXPECT_EQ(Wide(0x1241, kLatin1).GetValue(), 0x41);  // a 1-byte code set keeps the low byte
    EXPECT_EQ(Wide(0x1241, 230).GetValue(), 0x1241);
    EXPECT_EQ(FieldsOf(LmChar('x', 7, 9)), Fields('x', 7, 9, 0, 1));
    EXPECT_EQ(FieldsOf(LmChar("q")), Fields('q', cs8, 1, 1, 1));
    // A value-form target takes the source whole, labels included.
    LmChar v('a');
    v = LmChar(static_cast<unsigned short>(0x263A), kUnicode, 4);
    EXPECT_EQ(FieldsOf(v), Fields(0x263A, kUnicode, 4, 0, 1));
    // A language of 255 on a string's character becomes the default in a copy.
    LmString s("z");
    s.SetLanguage(LM_LANGUAGE_DEFAULT);
    const LmChar onString(s, 0);
    EXPECT_EQ(onString.GetLanguage(), LM_LANGUAGE_DEFAULT);
    EXPECT_EQ(LmChar(onString).GetLanguage(), LmString::GetDefaultLanguage());
}

TEST(CharMap, ThroughUnicode) {
    const LmChar e('\xE9', kLatin1, 5);
    EXPECT_EQ(FieldsOf(e.MapTo(kUnicode)), Fields(0xE9, kUnicode, 5, 0, 1));
    EXPECT_EQ(LmChar('\xA4', kLatin1).MapTo(kLatin9).GetValue(), 0x1A);  // the currency sign is not in Latin-9
    EXPECT_EQ(LmChar('\xA4', kLatin9).MapTo(kUnicode).GetValue(), 0x20AC);
    EXPECT_EQ(LmChar('\x80', kCp1252).MapTo(kLatin9).GetValue(), 0xA4);  // the euro sign in both
    EXPECT_EQ(Wide(0x263A).MapTo(kLatin1).GetValue(), 0x1A);
    EXPECT_EQ(LmChar('\xC4', LM_CODESET_NATIVE).MapTo(kUnicode).GetValue(), 0xC4);
    // Target 0 or the own code set: a copy, labels unchanged. The order code set maps nothing.
    EXPECT_EQ(FieldsOf(e.MapTo(LM_CODESET_NATIVE)), Fields(0xE9, kLatin1, 5, 0, 1));
    EXPECT_EQ(FieldsOf(e.MapTo(kLatin1)), Fields(0xE9, kLatin1, 5, 0, 1));
    EXPECT_EQ(FieldsOf(e.MapTo(LM_CODESET_ORDER)), Fields(0xE9, LM_CODESET_ORDER, 5, 0, 1));
}

TEST(CharCase, LowerAndUpper) {
    // y diaeresis has its upper case U+0178 in Latin-9 (0xBE) but not in Latin-1; code set 0 goes
    // by the C library.
    const struct {
        LmChar result;
        Fields fields;
    } cases[] = {{LmChar('\xC9', kLatin1, 6).ToLower(), {0xE9, kLatin1, 6, 0, 1}},
                 {LmChar('\xE9', kLatin1).ToUpper(), {0xC9, kLatin1, 1, 0, 1}},
                 {LmChar('1', kLatin1).ToUpper(), {'1', kLatin1, 1, 0, 1}},
                 {LmChar('\xFF', kLatin1).ToUpper(), {0x1A, kLatin1, 1, 0, 1}},
                 {LmChar('\xFF', kLatin9).ToUpper(), {0xBE, kLatin9, 1, 0, 1}},
                 {Wide(0xFF).ToUpper(), {0x178, kUnicode, 1, 0, 1}},
                 {Wide(0x178).ToLower(), {0xFF, kUnicode, 1, 0, 1}},
                 {LmChar('q', LM_CODESET_NATIVE, 7).ToUpper(), {'Q', LM_CODESET_NATIVE, 7, 0, 1}},
                 {LmChar('Q', LM_CODESET_NATIVE).ToLower(), {'q', LM_CODESET_NATIVE, 1, 0, 1}},
                 {LmChar('\xE9', LM_CODESET_NATIVE).ToUpper(), {0xE9, LM_CODESET_NATIVE, 1, 0, 1}},
                 {LmCharToLower().Apply(LmChar('B', kLatin1), nullptr), {'b', kLatin1, 1, 0, 1}}};
    for (const auto& c : cases) EXPECT_EQ(FieldsOf(c.result), c.fields);
    LmCharToUpper toUpper;
    LmCharOperation& op = toUpper;  // the transform is reached through its base
    EXPECT_EQ(op.Apply(LmChar('\xE0', kLatin1), nullptr).GetValue(), 0xC0);

    // Sharp s: upper case S, the second S through the iterator's overflow only.
    LmString text("\xDF");
    LmStringIterator it(text), it2(text);
    EXPECT_EQ(LmChar(text, 0).ToUpper(&it).GetValue(), 'S');
    EXPECT_EQ(LmChar(text, 0).ToUpper().GetValue(), 'S');
    EXPECT_EQ((++it).GetPosition(), text.StrGet());  // the position holds while the overflow has an entry
    EXPECT_EQ(FieldsOf(*it), Fields('S', kLatin1, 1, 0, 1));
    EXPECT_EQ((++it).GetPosition(), text.StrGet() + 1);
    EXPECT_EQ(it.IsEOS(), 1);
    // Lowering never expands: sharp s has no lower case of its own.
    EXPECT_EQ(LmChar(text, 0).ToLower(&it2).GetValue(), 0xDF);
    EXPECT_EQ((++it2).IsEOS(), 1);
}

TEST(CharClass, OrderWordsAndClasses) {
    // Letters 01 cc aaaaa lllll ee (case 1 lower, A is letter 3, e is 7 with acute 2), digits
    // 0x3F00 + 10 * digit, controls 13. Code set 0 orders as the native one, a code set without
    // table through Unicode (0x80 is the euro there), and a character without record, and an order
    // word, by its value, which also gives its class: a Cyrillic letter is a symbol, a common Han
    // character a letter. The terminator is a space.
    const struct {
        LmChar c;
        uint16_t order;
        const char* cls;
    } cases[] = {{LmChar('A', kLatin1), 0x400C, "a"},
                 {LmChar('a', kLatin1), 0x500C, "a"},
                 {LmChar('\xE9', kLatin1), 0x511C, "a"},
                 {LmChar('\xDF', kLatin1), 0x5055, "a"},
                 {LmChar('7', kLatin1), 0x3F46, "d"},
                 {LmChar('*', kLatin1), 159, "y"},
                 {LmChar(' ', kLatin1), 32, "s"},
                 {LmChar('\t', kLatin1), 9, "s"},
                 {LmChar('\0', kLatin1), 0, "s"},
                 {LmChar('\x80', kLatin1), 13, "s"},
                 {LmChar('A', LM_CODESET_NATIVE), 0x400C, "a"},
                 {LmChar('\xE9', kCp1252), 0x511C, "a"},
                 {LmChar('\x80', kCp1252), LmCharOrder(Wide(0x20AC)), "y"},
                 {Wide(0xE9), 0x511C, "a"},
                 {Wide(0x9F8D), 0x9F8D, "h"},
                 {Wide(0x4E2D), 0x4E2D, "a"},
                 {Wide(0x0416), 0x0416, "y"},
                 {Wide(0x5E54, LM_CODESET_ORDER), 0x5E54, "a"}};
    for (const auto& c : cases) {
        EXPECT_EQ(LmCharOrder(c.c), c.order) << std::hex << c.c.GetValue();
        EXPECT_EQ(ClassOf(c.c), c.cls) << std::hex << c.c.GetValue();
    }
    LmString s("a5");  // the pointer form reads the character where it lives
    EXPECT_EQ(ClassOf(LmChar(s, 0)) + ClassOf(LmChar(s, 1)), "ad");

    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_ASTERISK), 159);
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_QUESTION), 122);
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_ESCAPE), 160);
    EXPECT_EQ(LmWildcardOrderGet(3), 0);
    LmWildcardOrderSet(LM_WILDCARD_QUESTION, 32);
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_QUESTION), 32);
    LmWildcardOrderSet(LM_WILDCARD_QUESTION, 0);  // unset: read lazily again
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_QUESTION), 122);
}

}  // namespace
