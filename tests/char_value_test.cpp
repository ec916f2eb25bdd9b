// LmChar: the value and pointer forms, write-through, mapping between code sets,
// case, and the classes taken from the collation order words.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "lumotypes.h"

namespace {

using Bytes = std::vector<uint8_t>;

Bytes BufferOf(const LmString& s) {
    const auto* p = reinterpret_cast<const uint8_t*>(s.StrGet());
    return Bytes(p, p + s.GetSize());
}

constexpr unsigned char kLatin1 = 1;
constexpr unsigned char kCp1252 = 2;  // no collation table of its own
constexpr unsigned char kLatin9 = 3;
constexpr unsigned char kUnicode = 253;

// Order words worked out from the layout: letters 01 cc aaaaa lllll ee (case 1 is
// lower, letter 3 is A), digits 0x3F00 + 10 * digit, fixed symbol words.
constexpr uint16_t kOrderUpperA = 0x400C;
constexpr uint16_t kOrderLowerEAcute = 0x5000 | 2 << 7 | 7 << 2;  // 0x511C
constexpr uint16_t kOrderSeven = 0x3F00 + 70;
constexpr uint16_t kOrderAsterisk = 159;
constexpr uint16_t kOrderQuestion = 122;
constexpr uint16_t kOrderBackslash = 160;
constexpr uint16_t kOrderBlank = 32;
constexpr uint16_t kOrderUndefined = 13;  // controls without a word of their own

TEST(CharForms, PointerFormWritesThrough) {
    LmString s("abc");
    LmChar c(s, 1);
    EXPECT_EQ(c.IsPointerForm(), 1);
    EXPECT_EQ(c.GetValue(), 'b');
    EXPECT_EQ(c.GetCodeSet(), kLatin1);
    EXPECT_EQ(c.GetFormat(), 1);
    c = 'X';
    EXPECT_EQ(BufferOf(s), (Bytes{'a', 'X', 'c', 0}));

    // A copy is always a value form: later writes do not reach it.
    LmChar copy(c);
    EXPECT_EQ(copy.IsPointerForm(), 0);
    c = 'Y';
    EXPECT_EQ(copy.GetValue(), 'X');
    EXPECT_EQ(BufferOf(s), (Bytes{'a', 'Y', 'c', 0}));

    // The terminator is a character too.
    LmChar end(s, 3);
    EXPECT_EQ(end.GetValue(), 0);

    // Assigning a character maps it to the target's code set first.
    const unsigned short wide[] = {0x263A, 0xE9, 0};
    LmString w(wide);
    LmChar(s, 0) = LmChar(w, 2);
    LmChar(s, 2) = LmChar(w, 0);
    EXPECT_EQ(BufferOf(s), (Bytes{0xE9, 'Y', 0x1A, 0}));
    LmChar(w, 0) = LmChar('\xC4', kLatin1);
    EXPECT_EQ(BufferOf(w), (Bytes{0xC4, 0, 0xE9, 0, 0, 0}));

    // Plain values are stored as they are, without mapping.
    LmChar(s, 0) = static_cast<unsigned short>(0xA4);
    LmChar(w, 2) = static_cast<unsigned short>(0x2605);  // the offset is in bytes
    LmChar(w, 0) = 'q';
    EXPECT_EQ(BufferOf(s), (Bytes{0xA4, 'Y', 0x1A, 0}));
    EXPECT_EQ(BufferOf(w), (Bytes{'q', 0, 0x05, 0x26, 0, 0}));
}

TEST(CharForms, ByteOrderBehindThePointer) {
    // Big-endian units, as on a disk page.
    uint8_t disk[] = {0x26, 0x3A, 0x00, 0x41, 0, 0};
    const LmChar first(reinterpret_cast<const char*>(disk), kUnicode, 1, LmFormatBig);
    EXPECT_EQ(first.GetValue(), 0x263A);
    EXPECT_EQ(LmChar(first).GetValue(), 0x263A);  // the copy holds the machine's value
    EXPECT_EQ(LmChar(first).GetFormat(), 1);

    LmChar second(reinterpret_cast<const char*>(disk + 2), kUnicode, 1, LmFormatBig);
    second = LmChar(static_cast<unsigned short>(0x00C9), kUnicode);
    EXPECT_EQ(Bytes(disk, disk + 4), (Bytes{0x26, 0x3A, 0x00, 0xC9}));
    second = static_cast<unsigned short>(0x1234);
    EXPECT_EQ(Bytes(disk, disk + 4), (Bytes{0x26, 0x3A, 0x12, 0x34}));
    // From a 1-byte code set the character is mapped, then swapped.
    second = LmChar('\xA4', kLatin9);  // the euro sign
    EXPECT_EQ(Bytes(disk, disk + 4), (Bytes{0x26, 0x3A, 0x20, 0xAC}));
    // The same format on both sides: stored as it stands.
    LmChar little(reinterpret_cast<const char*>(disk), kUnicode, 1, LmFormatLittle);
    little = LmChar(static_cast<unsigned short>(0x0102), kUnicode);
    EXPECT_EQ(Bytes(disk, disk + 2), (Bytes{0x02, 0x01}));
}

TEST(CharForms, ValueFormConstruction) {
    const LmChar a('a');
    EXPECT_EQ(a.IsPointerForm(), 0);
    EXPECT_EQ(a.GetCodeSet(), LmString::GetDefault8CodeSet());
    EXPECT_EQ(a.GetLanguage(), LmString::GetDefaultLanguage());
    EXPECT_EQ(a.GetValue(), 'a');
    EXPECT_EQ(LmChar('\xFF').GetValue(), 0xFF);  // not sign-extended

    const LmChar zero;
    EXPECT_EQ(zero.GetValue(), 0);
    EXPECT_EQ(zero.GetCodeSet(), kUnicode);
    // A 1-byte code set keeps the low byte of a 16-bit value.
    EXPECT_EQ(LmChar(static_cast<unsigned short>(0x1241), kLatin1).GetValue(), 0x41);
    EXPECT_EQ(LmChar(static_cast<unsigned short>(0x1241), 230).GetValue(), 0x1241);
    EXPECT_EQ(LmChar('x', 7, 9).GetLanguage(), 9);
    EXPECT_EQ(LmChar('x', 7, 9).GetCodeSet(), 7);

    // The pointer form with defaults: the 8-bit default set, format 1.
    const char text[] = "q";
    const LmChar p(text);
    EXPECT_EQ(p.IsPointerForm(), 1);
    EXPECT_EQ(p.GetCodeSet(), LmString::GetDefault8CodeSet());
    EXPECT_EQ(p.GetFormat(), 1);
    EXPECT_EQ(p.GetValue(), 'q');

    // A value-form target takes the source whole, labels included.
    LmChar v('a');
    v = LmChar(static_cast<unsigned short>(0x263A), kUnicode, 4);
    EXPECT_EQ(v.GetValue(), 0x263A);
    EXPECT_EQ(v.GetCodeSet(), kUnicode);
    EXPECT_EQ(v.GetLanguage(), 4);
    EXPECT_EQ(v.IsPointerForm(), 0);
    // A language of 255 on a string's character becomes the default in a copy.
    LmString s(kLatin1, LM_LANGUAGE_DEFAULT);
    s = "z";
    s.SetLanguage(LM_LANGUAGE_DEFAULT);
    const LmChar onString(s, 0);
    EXPECT_EQ(onString.GetLanguage(), LM_LANGUAGE_DEFAULT);
    const LmChar copied(onString);
    EXPECT_EQ(copied.GetLanguage(), LmString::GetDefaultLanguage());
}

TEST(CharMap, ThroughUnicode) {
    const LmChar e('\xE9', kLatin1, 5);
    const LmChar u = e.MapTo(kUnicode);
    EXPECT_EQ(u.GetValue(), 0xE9);
    EXPECT_EQ(u.GetCodeSet(), kUnicode);
    EXPECT_EQ(u.GetLanguage(), 5);
    EXPECT_EQ(LmChar('\xA4', kLatin1).MapTo(kLatin9).GetValue(), 0x1A);  // the currency sign is not in Latin-9
    EXPECT_EQ(LmChar('\xA4', kLatin9).MapTo(kUnicode).GetValue(), 0x20AC);
    EXPECT_EQ(LmChar('\x80', kCp1252).MapTo(kLatin9).GetValue(), 0xA4);  // the euro sign in both
    EXPECT_EQ(LmChar(static_cast<unsigned short>(0x263A), kUnicode).MapTo(kLatin1).GetValue(), 0x1A);
    // Code set 0 reads as the native code set.
    EXPECT_EQ(LmChar('\xC4', LM_CODESET_NATIVE).MapTo(kUnicode).GetValue(), 0xC4);

    // Target 0 or the own code set: a copy, labels unchanged.
    const LmChar same = e.MapTo(LM_CODESET_NATIVE);
    EXPECT_EQ(same.GetCodeSet(), kLatin1);
    EXPECT_EQ(same.GetValue(), 0xE9);
    EXPECT_EQ(e.MapTo(kLatin1).GetValue(), 0xE9);
    // The order code set has nothing to map through: the value stays.
    const LmChar order = e.MapTo(LM_CODESET_ORDER);
    EXPECT_EQ(order.GetCodeSet(), LM_CODESET_ORDER);
    EXPECT_EQ(order.GetValue(), 0xE9);
}

TEST(CharCase, LowerAndUpper) {
    EXPECT_EQ(LmChar('\xC9', kLatin1).ToLower().GetValue(), 0xE9);
    EXPECT_EQ(LmChar('\xE9', kLatin1).ToUpper().GetValue(), 0xC9);
    EXPECT_EQ(LmChar('A', kLatin1).ToLower().GetValue(), 'a');
    EXPECT_EQ(LmChar('1', kLatin1).ToUpper().GetValue(), '1');
    EXPECT_EQ(LmChar('\xC9', kLatin1, 6).ToLower().GetLanguage(), 6);
    EXPECT_EQ(LmChar('\xC9', kLatin1).ToLower().GetCodeSet(), kLatin1);

    // The upper case of y with diaeresis lies outside Latin-1.
    EXPECT_EQ(LmChar('\xFF', kLatin1).ToUpper().GetValue(), 0x1A);
    EXPECT_EQ(LmChar(static_cast<unsigned short>(0xFF), kUnicode).ToUpper().GetValue(), 0x178);
    EXPECT_EQ(LmChar(static_cast<unsigned short>(0x178), kUnicode).ToLower().GetValue(), 0xFF);
    // Latin-9 holds it at 0xBE.
    EXPECT_EQ(LmChar('\xFF', kLatin9).ToUpper().GetValue(), 0xBE);

    // Code set 0 goes by the C library.
    const LmChar native = LmChar('q', LM_CODESET_NATIVE).ToUpper();
    EXPECT_EQ(native.GetValue(), 'Q');
    EXPECT_EQ(native.GetCodeSet(), LM_CODESET_NATIVE);
    EXPECT_EQ(LmChar('\xE9', LM_CODESET_NATIVE).ToUpper().GetValue(), 0xE9);
    EXPECT_EQ(LmChar('Q', LM_CODESET_NATIVE).ToLower().GetValue(), 'q');

    // Sharp s: upper case S, the second S through the iterator's overflow only.
    LmString text("\xDF");
    LmStringIterator it(text);
    const LmChar upper = LmChar(text, 0).ToUpper(&it);
    EXPECT_EQ(upper.GetValue(), 'S');
    EXPECT_EQ(LmChar(text, 0).ToUpper().GetValue(), 'S');
    ++it;  // the position holds while the overflow has an entry
    EXPECT_EQ(it.GetPosition(), text.StrGet());
    const LmChar rest = *it;
    EXPECT_EQ(rest.GetValue(), 'S');
    EXPECT_EQ(rest.GetCodeSet(), kLatin1);
    ++it;
    EXPECT_EQ(it.GetPosition(), text.StrGet() + 1);
    EXPECT_EQ(it.IsEOS(), 1);
    // Lowering never expands: sharp s has no lower case of its own.
    LmStringIterator it2(text);
    EXPECT_EQ(LmChar(text, 0).ToLower(&it2).GetValue(), 0xDF);
    ++it2;
    EXPECT_EQ(it2.IsEOS(), 1);

    LmCharToUpper toUpper;
    LmCharToLower toLower;
    EXPECT_EQ(toUpper.Apply(LmChar('b', kLatin1), nullptr).GetValue(), 'B');
    EXPECT_EQ(toLower.Apply(LmChar('B', kLatin1), nullptr).GetValue(), 'b');
    LmCharOperation& op = toUpper;
    EXPECT_EQ(op.Apply(LmChar('\xE0', kLatin1), nullptr).GetValue(), 0xC0);
}

TEST(CharClass, OrderWordsAndClasses) {
    EXPECT_EQ(LmCharOrder(LmChar('A', kLatin1)), kOrderUpperA);
    EXPECT_EQ(LmCharOrder(LmChar('a', kLatin1)), kOrderUpperA | 0x1000);
    EXPECT_EQ(LmCharOrder(LmChar('\xE9', kLatin1)), kOrderLowerEAcute);
    EXPECT_EQ(LmCharOrder(LmChar('7', kLatin1)), kOrderSeven);
    EXPECT_EQ(LmCharOrder(LmChar('*', kLatin1)), kOrderAsterisk);
    EXPECT_EQ(LmCharOrder(LmChar(' ', kLatin1)), kOrderBlank);
    EXPECT_EQ(LmCharOrder(LmChar('\x80', kLatin1)), kOrderUndefined);
    // Code set 0 orders as the native one; a code set without table through Unicode.
    EXPECT_EQ(LmCharOrder(LmChar('A', LM_CODESET_NATIVE)), kOrderUpperA);
    EXPECT_EQ(LmCharOrder(LmChar('\xE9', kCp1252)), kOrderLowerEAcute);
    EXPECT_EQ(LmCharOrder(LmChar('\x80', kCp1252)), LmCharOrder(LmChar(static_cast<unsigned short>(0x20AC))));
    // In Unicode the same letters have the same words.
    EXPECT_EQ(LmCharOrder(LmChar(static_cast<unsigned short>(0xE9), kUnicode)), kOrderLowerEAcute);
    // Without collation data a character orders as its own value.
    EXPECT_EQ(LmCharOrder(LmChar(static_cast<unsigned short>(0x4E2D), kUnicode)), 0x4E2D);
    EXPECT_EQ(LmCharOrder(LmChar(static_cast<unsigned short>(0x0416), kUnicode)), 0x0416);
    // An order-form character is its own word.
    EXPECT_EQ(LmCharOrder(LmChar(static_cast<unsigned short>(0x5E54), LM_CODESET_ORDER)), 0x5E54);

    struct Case {
        LmChar c;
        int alpha, digit, han, space, symbol;
    };
    const Case cases[] = {
        {LmChar('a', kLatin1), 1, 0, 0, 0, 0},
        {LmChar('Z', kLatin1), 1, 0, 0, 0, 0},
        {LmChar('\xDF', kLatin1), 1, 0, 0, 0, 0},
        {LmChar('5', kLatin1), 0, 1, 0, 0, 0},
        {LmChar(' ', kLatin1), 0, 0, 0, 1, 0},
        {LmChar('\t', kLatin1), 0, 0, 0, 1, 0},
        {LmChar('\0', kLatin1), 0, 0, 0, 1, 0},  // the terminator counts as space
        {LmChar('\x80', kLatin1), 0, 0, 0, 1, 0},
        {LmChar('*', kLatin1), 0, 0, 0, 0, 1},
        {LmChar('\x80', kCp1252), 0, 0, 0, 0, 1},  // the euro sign
        {LmChar(static_cast<unsigned short>(0x9F8D), kUnicode), 0, 0, 1, 0, 0},
        // No record and a value below 0x8000: classed by the value as if it were an
        // order word, so a Cyrillic letter is a symbol and a common Han character a letter.
        {LmChar(static_cast<unsigned short>(0x0416), kUnicode), 0, 0, 0, 0, 1},
        {LmChar(static_cast<unsigned short>(0x4E2D), kUnicode), 1, 0, 0, 0, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.c.GetValue());
        EXPECT_EQ(c.c.IsAlpha(), c.alpha);
        EXPECT_EQ(c.c.IsDigit(), c.digit);
        EXPECT_EQ(c.c.IsHan(), c.han);
        EXPECT_EQ(c.c.IsSpace(), c.space);
        EXPECT_EQ(c.c.IsSymbol(), c.symbol);
    }
    // The pointer form reads the character where it lives.
    LmString s("a5");
    EXPECT_EQ(LmChar(s, 0).IsAlpha(), 1);
    EXPECT_EQ(LmChar(s, 1).IsDigit(), 1);
}

TEST(CharClass, WildcardOrders) {
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_ASTERISK), kOrderAsterisk);
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_QUESTION), kOrderQuestion);
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_ESCAPE), kOrderBackslash);
    EXPECT_EQ(LmWildcardOrderGet(3), 0);
    LmWildcardOrderSet(LM_WILDCARD_QUESTION, kOrderBlank);
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_QUESTION), kOrderBlank);
    LmWildcardOrderSet(LM_WILDCARD_QUESTION, 0);  // unset: read lazily again
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_QUESTION), kOrderQuestion);
}

}  // namespace
