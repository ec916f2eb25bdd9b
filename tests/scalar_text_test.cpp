// Print and scan of the plain numbers by type id, the boolean texts and the print
// and scan languages of the 64-bit integer. Every expectation is worked out by hand
// from the text rules: the 32-bit long of the exchange formats, the spellings of
// infinity and NaN, the character family's hexadecimal form, the 512-byte cut.
#include <cmath>
#include <cstdio>
#include <limits>

#include "testkit.h"

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

std::string Print(char id, const void* value, const char* format, unsigned count = 1) {
    LmString out("old text");
    LmTypeMgr().Desc(id)->PrintToString(out, const_cast<void*>(value), format, count);
    return out.StrGet();
}

template <typename T>
T Scan(char id, const LmString& text, const char* format, T initial) {
    LmString t(text);
    T v = initial;
    EXPECT_EQ(LmTypeMgr().Desc(id)->ScanFromString(&v, t, format, 1), &v);
    return v;
}

LmString Wide(const char16_t* text) { return LmString(reinterpret_cast<const unsigned short*>(text)); }

uint64_t Bits(double d) {
    uint64_t b;
    std::memcpy(&b, &d, sizeof b);
    return b;
}

std::string Int64Print(long long v, const char* format, const char* before = "") {
    LmString out(before);
    return LmInt64PrintText(out, v, format).StrGet();
}

long long Int64Scan(const char* text, const char* format, long long initial = 77) {
    LmString t(text);
    long long v = initial;
    return LmInt64ScanText(v, t, format);
}

TEST(ScalarText, PrintByFamily) {
    const int32_t minusOne = -1, five = 5, twoHundred = 200;
    const uint32_t allOnes = 0xFFFFFFFFu, seven = 7;
    const int16_t minusTwo = -2;
    const uint16_t u16max = 0xFFFF;
    const int64_t i64min = std::numeric_limits<int64_t>::min(), wide = 0x100000001LL;
    const uint64_t u64max = ~0ULL;
    const double half = 0.5, twoHalf = 2.5, tenth = 0.1, posInf = kInf;
    const float f01 = 0.1f, fInf = std::numeric_limits<float>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const unsigned char bytes[] = {0x41, 0x07, 0x20, 0xFF};
    struct Case {
        char id;
        const void* value;
        const char* format;
        const char* expected;
    } cases[] = {
        // Exchange formats: "%ld" and "%lu" are 32 bits, "%I64" 64 bits.
        {Lm4B_T, &minusOne, "%ld", "-1"},
        {LmU4B_T, &allOnes, "%lu", "4294967295"},
        {LmBLOCKID_T, &seven, "#%lu", "#7"},
        {Lm2B_T, &minusTwo, "%hd", "-2"},
        {LmU2B_T, &u16max, "%hu", "65535"},
        {Lm8B_T, &i64min, "%I64d", "-9223372036854775808"},
        {LmU8B_T, &u64max, "%I64u", "18446744073709551615"},
        {LmINT_T, &twoHundred, "%hhd", "-56"},
        {LmINT_T, &minusOne, "%hhu", "255"},
        {LmINT_T, &minusOne, "%u", "4294967295"},
        {Lm8B_T, &wide, "%lu", "1"},
        // A wider conversion gets the 32-bit long sign-extended; a 32-bit one the low word.
        {LmINT_T, &minusOne, "%lld", "-1"},
        {Lm4B_T, &minusOne, "%I64x", "ffffffffffffffff"},
        {Lm8B_T, &wide, "%ld", "1"},
        {Lm2B_T, &minusTwo, "%x", "fffffffe"},
        {LmU2B_T, &u16max, "%d", "-1"},  // the short family reads signed 16 bits
        // Only the first usable conversion takes the value; the rest stays text.
        {LmINT_T, &five, "%d and %d", "5 and %d"},
        {LmINT_T, &five, "%s|%n|%*d|%1$d", "%s|%n|%*d|%1$d"},
        {LmINT_T, &five, "% %n %d", "% %n 5"},  // a '%' as a conversion stays plain text
        {LmINT_T, &five, "[%3d%%]", "[  5%]"},
        {LmDOUBLE_T, &twoHalf, "%d", "2"},
        // Double: "%.17g" with the three words; "ldexp(" only when exact.
        {LmDOUBLE_T, &posInf, "%.17g", "Infinity"},
        {LmDOUBLE_T, &nan, "%.17g", "NaN"},
        {LmDOUBLE_T, &nan, "%f", "nan"},  // any other format: what the formatter prints
        {LmDOUBLE_T, &tenth, "%.17g", "0.10000000000000001"},
        {LmDOUBLE_T, &half, "ldexp(", "ldexp("},
        {LmDOUBLE_T, &half, "ldexp(%g", "ldexp(0.5"},
        {LmDOUBLE_T, &half, "%Lf", "0.500000"},
        // Float widens to double.
        {LmFLOAT_T, &f01, "%.17g", "0.10000000149011612"},
        {LmFLOAT_T, &fInf, "%.17g", "Infinity"},
        // Characters: printable bytes under the format, others as 0x%02x, no separator.
        {LmU1B_T, bytes + 1, "%c", "0x07"},
        {Lm1B_T, bytes + 3, "%c", "0xff"},
        {LmU1B_T, bytes, "%d;", "65;"},
    };
    for (const Case& c : cases) EXPECT_EQ(Print(c.id, c.value, c.format), c.expected) << int(c.id) << " " << c.format;
    // The common decimal formats are written without the C library; the text is its text.
    for (const int64_t n : {0LL, 1LL, -1LL, 255LL, -32769LL, 4294967296LL + 5, -9223372036854775807LL - 1}) {
        char expected[64];
        const auto w = static_cast<int32_t>(n);
        std::snprintf(expected, sizeof expected, "%d|%u|%hd|%hhu", w, static_cast<unsigned>(w), static_cast<short>(w),
                      static_cast<unsigned char>(w));
        EXPECT_EQ(Print(LmINT_T, &w, "%d") + "|" + Print(LmU4B_T, &w, "%lu") + "|" + Print(LmINT_T, &w, "%hd") + "|" +
                      Print(LmINT_T, &w, "%hhu"),
                  expected);
        std::snprintf(expected, sizeof expected, "%lld|%llu", static_cast<long long>(n),
                      static_cast<unsigned long long>(n));
        EXPECT_EQ(Print(Lm8B_T, &n, "%I64d") + "|" + Print(LmU8B_T, &n, "%llu"), expected);
    }
    EXPECT_EQ(Print(Lm1B_T, bytes, "%c", 4), "A0x07 0xff");
    EXPECT_EQ(Print(Lm1B_T, bytes, "%c", 0), "");

    // A result is cut at 511 characters; a format beyond 127 characters is cut too.
    EXPECT_EQ(Print(LmINT_T, &five, "%600d"), std::string(511, ' '));
    EXPECT_EQ(Print(LmDOUBLE_T, &half, "%.600f"), "0.5" + std::string(508, '0'));
    // Widths and precisions of a billion give the same 511 characters (the numbers are
    // capped before the C library sees them, without changing what is kept).
    EXPECT_EQ(Print(LmINT_T, &five, "%1000000000d"), std::string(511, ' '));
    EXPECT_EQ(Print(LmINT_T, &five, "%-1000000000d"), "5" + std::string(510, ' '));
    EXPECT_EQ(Print(LmINT_T, &five, "%.1000000000d"), std::string(511, '0'));
    EXPECT_EQ(Print(LmDOUBLE_T, &half, "%.999999999E"), "5." + std::string(509, '0'));
    EXPECT_EQ(Print(LmDOUBLE_T, &half, "%#.999999999g"), "0.5" + std::string(508, '0'));
    const std::string longFormat = std::string(200, 'a') + "%d";
    EXPECT_EQ(Print(LmINT_T, &five, longFormat.c_str()), std::string(127, 'a'));
    const std::string literal126 = std::string(126, 'b') + "%d";
    EXPECT_EQ(Print(LmINT_T, &five, literal126.c_str()), std::string(126, 'b'));  // a conversion is never split

    // The text replaces out and is labelled like an assigned plain text, whatever out held.
    LmString out = Wide(u"wide old text");
    LmTypeMgr().Desc(LmINT_T)->PrintToString(out, const_cast<int32_t*>(&five), "%d", 1);
    EXPECT_STREQ(out.StrGet(), "5");
    EXPECT_EQ(out.GetCodeSet(), LmString::GetDefault8CodeSet());
    EXPECT_EQ(out.GetLanguage(), LmString::GetDefaultLanguage());
    LmString reused("1234");
    LmTypeMgr().Desc(LmINT_T)->PrintToString(reused, const_cast<int32_t*>(&five), "%d", 1);
    EXPECT_STREQ(reused.StrGet(), "5");
    EXPECT_EQ(reused.Len(), 1);
}

TEST(ScalarText, ScanByFamily) {
    EXPECT_EQ(Scan<int32_t>(LmINT_T, " -17x", "%d", 7), -17);
    EXPECT_EQ(Scan<int32_t>(LmINT_T, "abc", "%d", 7), 7);                   // a mismatch leaves the value
    EXPECT_EQ(Scan<int32_t>(LmINT_T, "99999999999", "%d", 7), 1215752191);  // low 32 bits
    EXPECT_EQ(Scan<int32_t>(LmINT_T, "x=9", "x=%d", 7), 9);
    EXPECT_EQ(Scan<int32_t>(LmINT_T, "ab 9", "%*s %d", 7), 9);
    EXPECT_EQ(Scan<int32_t>(LmINT_T, "abc42", "%*[a-z]%d", 7), 42);  // a skipped set
    EXPECT_EQ(Scan<int32_t>(LmINT_T, "ab]5", "%*[^]]]%d", 7), 5);     // a ']' first belongs to the set
    EXPECT_EQ(Scan<int32_t>(LmINT_T, "abc42", "%*[a-z%d", 7), 7);     // a set without its end reads nothing
    EXPECT_EQ(Scan<int32_t>(LmINT_T, "0x1f", "%i", 7), 31);
    EXPECT_EQ(Scan<uint32_t>(LmU4B_T, "4294967295", "%lu", 7), 0xFFFFFFFFu);
    EXPECT_EQ(Scan<uint32_t>(LmBLOCKID_T, "#12", "#%lu", 7), 12u);
    EXPECT_EQ(Scan<uint32_t>(LmBLOCKID_T, "12", "#%lu", 7), 7u);
    EXPECT_EQ(Scan<int16_t>(Lm2B_T, "70000", "%hd", 7), 4464);
    EXPECT_EQ(Scan<uint16_t>(LmU2B_T, "65535", "%hu", 7), 0xFFFF);
    EXPECT_EQ(Scan<int64_t>(Lm8B_T, "-9223372036854775808", "%I64d", 7), std::numeric_limits<int64_t>::min());
    EXPECT_EQ(Scan<uint64_t>(LmU8B_T, "18446744073709551615", "%I64u", 7), ~0ULL);
    EXPECT_EQ(Scan<int32_t>(LmINT_T, Wide(u" 123"), "%d", 7), 123);
    LmString text("1");
    EXPECT_EQ(LmTypeMgr().Desc(LmINT_T)->ScanFromString(nullptr, text, "%d", 1), nullptr);

    // Whatever the format's width, only the value's own bytes change.
    struct Guarded {
        char id;
        const char* text;
        const char* format;
        std::vector<uint8_t> value;  // bytes expected between the guards
    } guarded[] = {
        {Lm4B_T, "-2", "%ld", {0xFE, 0xFF, 0xFF, 0xFF}},
        {LmINT_T, "4294967297", "%lld", {1, 0, 0, 0}},
        {LmINT_T, "-1", "%hhd", {0xFF, 0xFF, 0xFF, 0xFF}},
        {Lm2B_T, "65537", "%I64d", {1, 0}},
        {LmINT_T, "text", "%s", {0x11, 0x11, 0x11, 0x11}},
        {LmINT_T, "ABCDEFGHIJKL", "%10c", {0x41, 0, 0, 0}},
        {Lm1B_T, "Z", "%2222c", {0x5A}},
        {LmINT_T, "Q", "%999999999c", {0x51, 0, 0, 0}},
        {LmINT_T, "2.75", "%lf", {2, 0, 0, 0}},
        {LmINT_T, "1e300", "%lf", {0xFF, 0xFF, 0xFF, 0x7F}},
        {LmINT_T, "abcdef", "abc%n", {3, 0, 0, 0}},
        {Lm1B_T, "300", "%d", {44}},
        {LmFLOAT_T, "1.5", "%Lf", {0, 0, 0xC0, 0x3F}},
        {LmDOUBLE_T, "5", "%d", {0, 0, 0, 0, 0, 0, 0x14, 0x40}},
    };
    for (const Guarded& g : guarded) {
        uint8_t buffer[24];
        std::memset(buffer, 0xAA, sizeof buffer);
        const unsigned len = LmTypeMgr().MemLenGet(g.id, 1);
        std::memset(buffer + 4, 0x11, len);
        LmString t(g.text);
        LmTypeMgr().Desc(g.id)->ScanFromString(buffer + 4, t, g.format, 1);
        std::vector<uint8_t> expected(sizeof buffer, 0xAA);
        std::copy(g.value.begin(), g.value.end(), expected.begin() + 4);
        EXPECT_EQ(std::vector<uint8_t>(buffer, buffer + sizeof buffer), expected) << g.format;
    }

    // Characters: "0x%x" first, then the format, one text position per element.
    unsigned char chars[5] = {1, 2, 3, 4, 5};
    LmString hex("0x41");
    LmTypeMgr().Desc(Lm1B_T)->ScanFromString(chars, hex, "%c", 5);
    EXPECT_EQ(std::vector<uint8_t>(chars, chars + 5), (std::vector<uint8_t>{'A', 'x', '4', '1', 5}));
    LmString digits("0x1FF 7");
    LmTypeMgr().Desc(LmU1B_T)->ScanFromString(chars, digits, "%d", 3);
    EXPECT_EQ(std::vector<uint8_t>(chars, chars + 3), (std::vector<uint8_t>{0xFF, 'x', 1}));

    // Double and float under "%.17g": strtod, the three words, overflow and underflow.
    EXPECT_EQ(Scan<double>(LmDOUBLE_T, "iNfInItY", "%.17g", 3.0), kInf);
    EXPECT_EQ(Scan<double>(LmDOUBLE_T, "-INFINITY", "%.17g", 3.0), -kInf);
    EXPECT_EQ(Bits(Scan<double>(LmDOUBLE_T, "nan", "%.17g", 3.0)), 0xFFF8000000000000ULL);
    EXPECT_EQ(Scan<double>(LmDOUBLE_T, "inf", "%.17g", 3.0), 0.0);  // only the three whole words
    EXPECT_EQ(Scan<double>(LmDOUBLE_T, "1e999", "%.17g", 3.0), kInf);
    EXPECT_EQ(Scan<double>(LmDOUBLE_T, "1e-999", "%.17g", 3.0), 0.0);
    EXPECT_EQ(Scan<double>(LmDOUBLE_T, "4.9e-324", "%.17g", 3.0), std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(Scan<double>(LmDOUBLE_T, "abc", "%.17g", 3.0), 0.0);
    EXPECT_EQ(Scan<double>(LmDOUBLE_T, " 0.25xyz", "%.17g", 3.0), 0.25);
    EXPECT_EQ(Scan<double>(LmDOUBLE_T, "9", "ldexp(", 3.0), 3.0);
    EXPECT_EQ(Scan<double>(LmDOUBLE_T, "2.5", "%lf", 3.0), 2.5);
    EXPECT_EQ(Scan<double>(LmDOUBLE_T, "abc", "%lf", 3.0), 3.0);
    EXPECT_EQ(Scan<double>(LmDOUBLE_T, "1", "%.17f", 3.0), 3.0);  // no precision in a scan
    EXPECT_EQ(Scan<float>(LmFLOAT_T, "0.1", "%.17g", 3.0f), 0.1f);
    EXPECT_EQ(Scan<float>(LmFLOAT_T, "1e300", "%.17g", 3.0f), std::numeric_limits<float>::infinity());
    EXPECT_EQ(Scan<float>(LmFLOAT_T, "Infinity", "%.17g", 3.0f), std::numeric_limits<float>::infinity());
    EXPECT_EQ(Scan<float>(LmFLOAT_T, "1.25", "%f", 3.0f), 1.25f);
    // Round trips through "%.17g".
    for (const double d : {kInf, -kInf, 0.1, -1.0 / 3.0, 5e-324, 1.7976931348623157e308}) {
        LmString out;
        LmTypeMgr().Desc(LmDOUBLE_T)->PrintToString(out, const_cast<double*>(&d), "%.17g", 1);
        EXPECT_EQ(Scan<double>(LmDOUBLE_T, out, "%.17g", 3.0), d) << out.StrGet();
    }
}

TEST(ScalarText, Boolean) {
    const struct {
        unsigned char value;
        const char* text;
    } prints[] = {{1, "TRUE"}, {0, "FALSE"}, {2, "FALSE"}, {255, "{NULL}"}};
    for (const auto& p : prints) {
        LmString out("x");
        EXPECT_STREQ(LmBooleanPrintText(out, p.value).StrGet(), p.text);
    }
    const struct {
        const char* text;
        unsigned char value;
    } scans[] = {{"yes", 0},   {"{NULL}", 255}, {"{NULL}x", 255}, {"{NULL", 0}, {"1", 1},    {"TRUE", 1},
                 {"TRUE ", 0}, {"t", 1},        {"T", 1},         {"true", 1},  {"True", 0}, {"", 0}};
    for (const auto& s : scans) {
        LmString text(s.text);
        unsigned char v = 9;
        EXPECT_EQ(LmBooleanScanText(v, text), s.value) << s.text;
    }
    LmString wide = Wide(u"true");
    unsigned char v = 9;
    EXPECT_EQ(LmBooleanScanText(v, wide), 1);
}

TEST(ScalarText, Int64Language) {
    const long long smallest = std::numeric_limits<long long>::min();
    EXPECT_EQ(Int64Print(-1, "%S"), "-1");
    EXPECT_EQ(Int64Print(-1, "%x"), "-0x1");
    EXPECT_EQ(Int64Print(-255, "%x"), "-0xff");
    EXPECT_EQ(Int64Print(255, "%X"), "0XFF");
    EXPECT_EQ(Int64Print(8, "%o"), "010");
    EXPECT_EQ(Int64Print(42, nullptr), "42");
    EXPECT_EQ(Int64Print(smallest, "%X"), "0X8000000000000000");
    EXPECT_EQ(Int64Print(smallest, "%o"), "01000000000000000000000");
    // The smallest value keeps its copy, so a second conversion prints it again.
    EXPECT_EQ(Int64Print(smallest, "%d %S"), "-9223372036854775808 -9223372036854775808");
    EXPECT_EQ(Int64Print(5, "%d %d"), "5 0");
    EXPECT_EQ(Int64Print(3, "%q%%d 100%"), "%q%3 100%");
    EXPECT_EQ(Int64Print(7, "=%S", "ab"), "ab=7");

    EXPECT_EQ(Int64Scan("0x1F", "%S"), 31);
    EXPECT_EQ(Int64Scan("0x1F", "%d"), -1);
    EXPECT_EQ(Int64Scan("017", "%o"), 15);
    EXPECT_EQ(Int64Scan("17", "%o"), -1);
    EXPECT_EQ(Int64Scan("0", "%d"), -1);  // a leading 0 is octal
    EXPECT_EQ(Int64Scan("12a", "%S"), -1);
    EXPECT_EQ(Int64Scan("abc", "abd"), -1);
    EXPECT_EQ(Int64Scan("", "%S"), 77);
    EXPECT_EQ(Int64Scan("+42", nullptr), 42);
    EXPECT_EQ(Int64Scan("-0xff", "%x"), -255);
    EXPECT_EQ(Int64Scan("9223372036854775807", "%S"), std::numeric_limits<long long>::max());
    EXPECT_EQ(Int64Scan("x=12;y", "x=%d;z"), -1);
    EXPECT_EQ(Int64Scan("x=12;", "x=%d;"), 12);
    EXPECT_EQ(Int64Scan("12,34", "%S,%S"), 34);
    EXPECT_EQ(Int64Scan("12 34", "%S,%S"), -1);  // ' ' is no digit before the terminator ','
    EXPECT_EQ(Int64Scan("%7", "%%d"), 7);        // '%' before a non-conversion matches itself
    EXPECT_EQ(Int64Scan("%7", "%%%d"), -1);
    // Round trip of every conversion.
    for (const char* f : {"%S", "%d", "%i", "%o", "%x", "%X"})
        for (const long long n : {0LL, 1LL, -1LL, 123456789LL, smallest + 1, std::numeric_limits<long long>::max()}) {
            if (n == 0 && (f[1] == 'd' || f[1] == 'i')) continue;  // "0" reads as octal
            EXPECT_EQ(Int64Scan(Int64Print(n, f).c_str(), f), n) << f << " " << n;
        }
}

}  // namespace
