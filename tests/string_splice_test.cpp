// The splice and its helpers: the three modes, the limits with the cut text, the
// "String overflow" report, raw assignment, byte order, conversion between code sets.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "lumotypes.h"

namespace {

using Bytes = std::vector<uint8_t>;
using Units = std::vector<uint16_t>;

Bytes BufferOf(const LmString& s) { return Bytes(s.StrGet(), s.StrGet() + s.GetSize()); }
Units UnitsOf(const LmString& s) {
    Units u(s.Len());
    std::memcpy(u.data(), s.StrGet(), u.size() * 2);
    return u;
}

constexpr unsigned char kLatin1 = 1, kUnicode = 253;

// Collects the reports of LUMO_assert while it lives, with "stringOverflow" set as asked.
struct Reports {
    static inline std::vector<std::string> seen;  // message, stem and whether a line came
    static void Handler(const char* message, const char* stem, int line) {
        seen.push_back(std::string(message) + "|" + stem + (line > 0 ? "|line" : "|none"));
    }
    explicit Reports(bool enabled) : previous(LmSetAssertHandler(Handler)) {
        seen.clear();
        if (enabled) DefaultConfig(-1)->SetValue("debug", "stringOverflow", 1);
    }
    ~Reports() {
        DefaultConfig(-1)->RemoveValue("debug", "stringOverflow");
        LmSetAssertHandler(previous);
    }
    LmAssertHandler previous;
};

TEST(StringSplice, ThreeModes) {
    LmString s("abcdef"), t("abc"), u("abcdef"), own("abcde");
    LmStringSplice(s, "XY", kLatin1, 2, 0, 2, 1, LM_SPLICE_REPLACE, 1);
    EXPECT_EQ(BufferOf(s), (Bytes{'a', 'b', 'X', 'Y', 'e', 'f', 0}));
    LmStringSplice(t, "XY", kLatin1, 1, 0, 2, 1, LM_SPLICE_INSERT, 1);
    EXPECT_EQ(BufferOf(t), (Bytes{'a', 'X', 'Y', 'b', 'c', 0}));
    LmStringSplice(t, "!", kLatin1, 5, 0, 1, 1, LM_SPLICE_INSERT, 1);  // at the end: appends
    EXPECT_STREQ(t.StrGet(), "aXYbc!");
    // Assign cuts at the position: position 0 assigns, position Len appends.
    LmStringSplice(u, "XY", kLatin1, 2, 0, 2, 1, LM_SPLICE_ASSIGN, 1);
    EXPECT_EQ(BufferOf(u), (Bytes{'a', 'b', 'X', 'Y', 0}));
    LmStringSplice(u, "Q", kLatin1, 0, 0, 1, 1, LM_SPLICE_ASSIGN, 1);
    EXPECT_EQ(BufferOf(u), (Bytes{'Q', 0}));
    LmStringSplice(u, "012345", kLatin1, 1, 2, 3, 1, LM_SPLICE_ASSIGN, 255);  // sourceStart picks a piece
    EXPECT_STREQ(u.StrGet(), "Q234");
    LmStringSplice(u, nullptr, kLatin1, 2, 0, 0, 1, LM_SPLICE_ASSIGN, 1);  // no source: only cut
    EXPECT_EQ(BufferOf(u), (Bytes{'Q', '2', 0}));
    LmStringSplice(own, own.StrGet(), kLatin1, 1, 3, 2, 1, LM_SPLICE_ASSIGN, 1);  // its own source
    EXPECT_EQ(BufferOf(own), (Bytes{'a', 'd', 'e', 0}));

    // A 16-bit string: positions and counts stay in characters.
    const unsigned short abc[] = {'a', 'b', 'c', 0}, two[] = {0x263A, 0x263B, 0};
    LmString w(abc);
    LmStringSplice(w, two, kUnicode, 1, 0, 2, 1, LM_SPLICE_INSERT, 1);
    EXPECT_EQ(w.GetSize(), 12);
    EXPECT_EQ(UnitsOf(w), (Units{'a', 0x263A, 0x263B, 'b', 'c'}));
    LmStringSplice(w, two, kUnicode, 3, 1, 1, 1, LM_SPLICE_REPLACE, 1);
    EXPECT_EQ(UnitsOf(w), (Units{'a', 0x263A, 0x263B, 0x263B, 'c'}));
    // A source in another code set is converted first.
    LmString n("[]"), m(two);
    LmStringSplice(n, two, kUnicode, 1, 0, 1, 1, LM_SPLICE_INSERT, 1);
    LmStringSplice(n, "\xE9", kLatin1, 1, 0, 1, 1, LM_SPLICE_INSERT, 1);
    EXPECT_EQ(BufferOf(n), (Bytes{'[', 0xE9, 0x1A, ']', 0}));
    LmStringSplice(m, "\xC4", kLatin1, 0, 0, 1, 1, LM_SPLICE_REPLACE, 1);
    EXPECT_EQ(UnitsOf(m), (Units{0xC4, 0x263B}));

    // Replace and insert with a null or empty source, and unknown modes, change nothing.
    const char* before = s.StrGet();
    const unsigned short wideEmpty[] = {0, 'x'};
    LmStringSplice(s, "", kLatin1, 1, 0, 0, 1, LM_SPLICE_INSERT, 1);
    LmStringSplice(s, nullptr, kLatin1, 1, 0, 1, 1, LM_SPLICE_REPLACE, 1);
    LmStringSplice(s, wideEmpty, kUnicode, 1, 0, 1, 1, LM_SPLICE_INSERT, 1);
    LmStringSplice(s, "x", kLatin1, 0, 0, 1, 1, 4, 1);
    LmStringSplice(s, "x", kLatin1, 0, 0, 1, 1, 0, 1);
    EXPECT_EQ(s.StrGet(), before);
    EXPECT_EQ(BufferOf(s), (Bytes{'a', 'b', 'X', 'Y', 'e', 'f', 0}));
}

TEST(StringSplice, RepeatFillsWithTheFirstCharacter) {
    LmString s("ab"), w(kUnicode, 1), big("");
    LmStringSplice(s, "xyz", kLatin1, 2, 1, 1, 3, LM_SPLICE_ASSIGN, 1);  // sourceStart plays no part
    EXPECT_EQ(BufferOf(s), (Bytes{'a', 'b', 'x', 'x', 'x', 0}));
    LmStringSplice(s, "-", kLatin1, 0, 0, 1, 0, LM_SPLICE_ASSIGN, 1);
    EXPECT_EQ(BufferOf(s), (Bytes{0}));
    const unsigned short star[] = {0x2605, 0};
    LmStringSplice(w, star, kUnicode, 0, 0, 1, 2, LM_SPLICE_ASSIGN, 1);
    EXPECT_EQ(BufferOf(w), (Bytes{0x05, 0x26, 0x05, 0x26, 0, 0}));
    // A fill beyond the limit is cut there, silently.
    Reports reports(false);
    LmStringSplice(big, "z", kLatin1, 0, 0, 1, 65535, LM_SPLICE_ASSIGN, 1);
    EXPECT_EQ(big.GetSize(), LM_STRING_MAX_BYTES);
    EXPECT_EQ(big.Len(), 65531);
    EXPECT_EQ(big.StrGet()[65530], 'z');
    EXPECT_TRUE(Reports::seen.empty());
}

TEST(StringSplice, ByteOrderAndRawAssignment) {
    // Disk bytes most significant first come into memory in the machine's order.
    const uint8_t disk[] = {0x00, 0x41, 0x26, 0x3A, 0x00, 0x00};
    LmString w(kUnicode, 2);
    LmStringAssignRaw(w, disk, kUnicode, 2, LmFormatBig);
    EXPECT_EQ(BufferOf(w), (Bytes{0x41, 0x00, 0x3A, 0x26, 0, 0}));
    EXPECT_EQ(w.GetLanguage(), 2);
    uint8_t out[4] = {9, 9, 9, 9};
    LmCopyChars(out, disk, 2, LmFormatBig, 4);
    EXPECT_EQ(Bytes(out, out + 4), (Bytes{0x41, 0x00, 0x3A, 0x26}));
    LmCopyChars(out, disk, 2, LmFormatLittle, 4);
    EXPECT_EQ(Bytes(out, out + 4), (Bytes{0x00, 0x41, 0x26, 0x3A}));
    LmCopyChars(out, disk + 1, 1, LmFormatBig, 2);  // 1-byte characters are never swapped
    EXPECT_EQ(Bytes(out, out + 4), (Bytes{0x41, 0x26, 0x26, 0x3A}));

    // Null source or count 0: no buffer; 65535: to the terminator; an inner zero is kept.
    LmString a(kLatin1, 1), b(kLatin1, 1);
    LmStringAssignRaw(a, nullptr, kLatin1, 3, 1);
    LmStringAssignRaw(a, "abc", kLatin1, 0, 1);
    EXPECT_EQ(a.GetSize(), 0);
    LmStringAssignRaw(a, "abc", kLatin1, 65535, 1);
    EXPECT_EQ(BufferOf(a), (Bytes{'a', 'b', 'c', 0}));
    LmStringAssignRaw(b, "a\0b", kLatin1, 3, 1);
    EXPECT_EQ(BufferOf(b), (Bytes{'a', 0, 'b', 0}));
    EXPECT_EQ(b.Len(), 1);
}

TEST(StringLimits, TextIsCutSilentlyAtTheLimit) {
    Reports reports(false);
    LmString s(std::string(65531, 'a').c_str());
    EXPECT_EQ(s.GetSize(), LM_STRING_MAX_BYTES);
    s += LmString("b");
    EXPECT_EQ(s.GetSize(), LM_STRING_MAX_BYTES);
    EXPECT_EQ(s.Len(), 65531);
    EXPECT_EQ(s.StrGet()[65530], 'a');
    // A longer text is clipped before the splice.
    const std::string longer(70000, 'c');
    EXPECT_EQ(LmString(longer.c_str()).Len(), 65531);
    EXPECT_EQ(LmString(longer.c_str(), 65535).GetSize(), LM_STRING_MAX_BYTES);
    // Into a full string: the source comes first, the old tail gives way; the head stays.
    LmStringSplice(s, "XY", kLatin1, 0, 0, 2, 1, LM_SPLICE_INSERT, 1);
    EXPECT_EQ(s.Len(), 65531);
    EXPECT_EQ(std::string(s.StrGet(), 4), "XYaa");
    LmStringSplice(s, "r", kLatin1, 1, 0, 1, 3, LM_SPLICE_REPLACE, 1);
    EXPECT_EQ(s.Len(), 65531);
    EXPECT_EQ(std::string(s.StrGet(), 5), "Xrrra");

    // A 2-byte string stops at 32765 characters, also when converted to.
    std::vector<unsigned short> text(32770, 0x263A);
    text.back() = 0;
    LmString w(text.data()), n(std::string(40000, 'q').c_str());
    EXPECT_EQ(w.GetSize(), LM_STRING_MAX_BYTES);
    w << static_cast<unsigned short>('A');
    EXPECT_EQ(w.Len(), 32765);
    EXPECT_EQ(UnitsOf(w).back(), 0x263A);
    n.SetCodeSet(kUnicode);
    EXPECT_EQ(n.GetSize(), LM_STRING_MAX_BYTES);
    EXPECT_EQ(n.Len(), 32765);
    EXPECT_EQ(UnitsOf(n).back(), 'q');
    EXPECT_TRUE(Reports::seen.empty());  // silent unless configured
}

TEST(StringLimits, OverflowIsReportedWhenConfigured) {
    Reports reports(true);
    LmString s(std::string(65531, 'a').c_str()), n(std::string(40000, 'q').c_str());
    EXPECT_TRUE(Reports::seen.empty());  // at the limit, not above it
    s << 'b';
    EXPECT_EQ(Reports::seen, (std::vector<std::string>{"String overflow|src\\lmstring|line"}));
    EXPECT_EQ(s.Len(), 65531);  // the operation went on
    n.SetCodeSet(kUnicode);     // the conversion reports too
    EXPECT_EQ(Reports::seen.size(), 2u);
    EXPECT_EQ(n.Len(), 32765);
    DefaultConfig(-1)->SetValue("debug", "stringOverflow", 0);  // 0 is off
    s << 'c';
    EXPECT_EQ(Reports::seen.size(), 2u);
}

TEST(StringText, LengthsFillAndConversion) {
    const uint8_t wide[] = {'a', 0, 0, 'b', 0, 0};  // a zero byte inside a unit does not end it
    EXPECT_EQ(LmStrLen(kLatin1, "abc"), 3u);
    EXPECT_EQ(LmStrLen(kLatin1, nullptr), 0u);
    EXPECT_EQ(LmStrLen(224, "ab"), 2u);
    EXPECT_EQ(LmStrLen(225, wide), 2u);
    EXPECT_EQ(LmStrLen(LM_CODESET_NATIVE, wide), 1u);
    EXPECT_EQ(LmWStrLen(nullptr), 0u);
    uint16_t units[4] = {1, 1, 1, 1};
    EXPECT_EQ(LmWMemSet(units, 0x2605, 3), units);
    EXPECT_EQ(Units(units, units + 4), (Units{0x2605, 0x2605, 0x2605, 1}));

    unsigned char* out = nullptr;
    EXPECT_EQ(LmStringConvertBuffer(kLatin1, kUnicode, "A\xE9", out), 6u);
    EXPECT_EQ(Bytes(out, out + 6), (Bytes{'A', 0, 0xE9, 0, 0, 0}));
    delete[] out;
    EXPECT_EQ(LmStringConvertBuffer(kUnicode, LM_CODESET_NATIVE, u"\u00C4\u263A", out), 3u);  // 0 is native
    EXPECT_EQ(Bytes(out, out + 3), (Bytes{0xC4, 0x1A, 0}));
    delete[] out;
    EXPECT_EQ(LmStringConvertBuffer(kLatin1, kLatin1, nullptr, out), 1u);
    EXPECT_EQ(out[0], 0);
    delete[] out;

    // Into: the count is the argument; a large enough buffer is kept and cleared.
    auto* buffer = new unsigned char[10];
    std::memset(buffer, 'x', 10);
    uint16_t size = 10;
    unsigned char* kept = buffer;
    EXPECT_EQ(LmStringConvertInto(kLatin1, kUnicode, "abc", 2, buffer, size), 2);
    EXPECT_EQ(buffer, kept);
    EXPECT_EQ(Bytes(buffer, buffer + 10), (Bytes{'a', 0, 'b', 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(LmStringConvertInto(kLatin1, kUnicode, "abcdefgh", 8, buffer, size), 8);
    EXPECT_EQ(size, 18);                                                         // replaced by one of (8 + 1) * 2 bytes
    EXPECT_EQ(LmStringConvertInto(kLatin1, kLatin1, "ab", 5, buffer, size), 2);  // the source ends first
    EXPECT_EQ(size, 18);
    delete[] buffer;
}

}  // namespace
