// The splice and its helpers: the three modes, the limits with the cut text, the
// "String overflow" report, raw assignment, byte order, conversion between code sets.
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

std::string TextOf(const LmString& s) { return std::string(s.StrGet()); }

uint16_t UnitAt(const LmString& s, unsigned i) {
    uint16_t unit;
    std::memcpy(&unit, s.StrGet() + 2 * i, 2);
    return unit;
}

constexpr unsigned char kLatin1 = 1;
constexpr unsigned char kUnicode = 253;

// Records the reports of LUMO_assert while it lives; switches the "stringOverflow"
// option on when asked, and restores both at the end.
struct OverflowWatch {
    struct Report {
        std::string message;
        std::string stem;
        int line;
    };
    static std::vector<Report>& Reports() {
        static std::vector<Report> reports;
        return reports;
    }
    static void Handler(const char* message, const char* stem, int line) { Reports().push_back({message, stem, line}); }

    explicit OverflowWatch(bool enabled) {
        Reports().clear();
        previous = LmSetAssertHandler(Handler);
        if (enabled) DefaultConfig(-1)->SetValue("debug", "stringOverflow", 1);
    }
    ~OverflowWatch() {
        DefaultConfig(-1)->RemoveValue("debug", "stringOverflow");
        LmSetAssertHandler(previous);
    }
    LmAssertHandler previous;
};

TEST(StringSplice, ThreeModes) {
    LmString s("abcdef");
    LmStringSplice(s, "XY", kLatin1, 2, 0, 2, 1, LM_SPLICE_REPLACE, 1);
    EXPECT_EQ(BufferOf(s), (Bytes{'a', 'b', 'X', 'Y', 'e', 'f', 0}));

    LmString t("abc");
    LmStringSplice(t, "XY", kLatin1, 1, 0, 2, 1, LM_SPLICE_INSERT, 1);
    EXPECT_EQ(BufferOf(t), (Bytes{'a', 'X', 'Y', 'b', 'c', 0}));
    // Inserting at the end appends.
    LmStringSplice(t, "!", kLatin1, 5, 0, 1, 1, LM_SPLICE_INSERT, 1);
    EXPECT_EQ(TextOf(t), "aXYbc!");

    // Assign cuts at the position: position 0 assigns, position Len appends.
    LmString u("abcdef");
    LmStringSplice(u, "XY", kLatin1, 2, 0, 2, 1, LM_SPLICE_ASSIGN, 1);
    EXPECT_EQ(BufferOf(u), (Bytes{'a', 'b', 'X', 'Y', 0}));
    LmStringSplice(u, "Q", kLatin1, 0, 0, 1, 1, LM_SPLICE_ASSIGN, 1);
    EXPECT_EQ(BufferOf(u), (Bytes{'Q', 0}));
    // The source start picks a piece of the source.
    LmStringSplice(u, "012345", kLatin1, 1, 2, 3, 1, LM_SPLICE_ASSIGN, 255);
    EXPECT_EQ(TextOf(u), "Q234");
    // Without source the text is only cut.
    LmStringSplice(u, nullptr, kLatin1, 2, 0, 0, 1, LM_SPLICE_ASSIGN, 1);
    EXPECT_EQ(BufferOf(u), (Bytes{'Q', '2', 0}));

    // The string can be its own source: the splice writes to a new buffer.
    LmString own("abcde");
    LmStringSplice(own, own.StrGet(), kLatin1, 1, 3, 2, 1, LM_SPLICE_ASSIGN, 1);
    EXPECT_EQ(BufferOf(own), (Bytes{'a', 'd', 'e', 0}));

    // A 16-bit string: positions and counts stay in characters.
    const unsigned short wide[] = {'a', 'b', 'c', 0};
    const unsigned short two[] = {0x263A, 0x263B, 0};
    LmString w(wide);
    LmStringSplice(w, two, kUnicode, 1, 0, 2, 1, LM_SPLICE_INSERT, 1);
    EXPECT_EQ(w.Len(), 5);
    EXPECT_EQ(w.GetSize(), 12);
    EXPECT_EQ(UnitAt(w, 0), 'a');
    EXPECT_EQ(UnitAt(w, 1), 0x263A);
    EXPECT_EQ(UnitAt(w, 2), 0x263B);
    EXPECT_EQ(UnitAt(w, 3), 'b');
    LmStringSplice(w, two, kUnicode, 3, 1, 1, 1, LM_SPLICE_REPLACE, 1);
    EXPECT_EQ(UnitAt(w, 3), 0x263B);
    EXPECT_EQ(UnitAt(w, 4), 'c');
}

TEST(StringSplice, EmptySourcesAndBadModes) {
    // Replace and insert return at once for a null or empty source: the buffer stays.
    LmString s("abc");
    const char* before = s.StrGet();
    LmStringSplice(s, "", kLatin1, 1, 0, 0, 1, LM_SPLICE_INSERT, 1);
    LmStringSplice(s, nullptr, kLatin1, 1, 0, 1, 1, LM_SPLICE_REPLACE, 1);
    const unsigned short wideEmpty[] = {0, 'x'};
    LmStringSplice(s, wideEmpty, kUnicode, 1, 0, 1, 1, LM_SPLICE_INSERT, 1);
    EXPECT_EQ(s.StrGet(), before);
    EXPECT_EQ(TextOf(s), "abc");
    // An unknown mode changes nothing either.
    LmStringSplice(s, "x", kLatin1, 0, 0, 1, 1, 4, 1);
    LmStringSplice(s, "x", kLatin1, 0, 0, 1, 1, 0, 1);
    EXPECT_EQ(s.StrGet(), before);
    EXPECT_EQ(s.GetSize(), 4);
}

TEST(StringSplice, RepeatFillsWithTheFirstCharacter) {
    LmString s("ab");
    // sourceStart plays no part in the fill: the first character is repeated.
    LmStringSplice(s, "xyz", kLatin1, 2, 1, 1, 3, LM_SPLICE_ASSIGN, 1);
    EXPECT_EQ(BufferOf(s), (Bytes{'a', 'b', 'x', 'x', 'x', 0}));
    LmStringSplice(s, "-", kLatin1, 0, 0, 1, 0, LM_SPLICE_ASSIGN, 1);
    EXPECT_EQ(BufferOf(s), (Bytes{0}));  // repeat 0 leaves an empty text

    const unsigned short star[] = {0x2605, 0};
    LmString w(kUnicode, 1);
    LmStringSplice(w, star, kUnicode, 0, 0, 1, 2, LM_SPLICE_ASSIGN, 1);
    EXPECT_EQ(BufferOf(w), (Bytes{0x05, 0x26, 0x05, 0x26, 0, 0}));

    // A fill beyond the limit is cut there.
    OverflowWatch watch(false);
    LmString big("");
    LmStringSplice(big, "z", kLatin1, 0, 0, 1, 65535, LM_SPLICE_ASSIGN, 1);
    EXPECT_EQ(big.GetSize(), LM_STRING_MAX_BYTES);
    EXPECT_EQ(big.Len(), 65531);
    EXPECT_EQ(big.StrGet()[65530], 'z');
    EXPECT_TRUE(OverflowWatch::Reports().empty());
}

TEST(StringSplice, SourceInOtherCodeSetIsConverted) {
    LmString s("[]");
    const unsigned short wide[] = {0xE9, 0x263A, 0};
    LmStringSplice(s, wide, kUnicode, 1, 0, 2, 1, LM_SPLICE_INSERT, 1);
    EXPECT_EQ(BufferOf(s), (Bytes{'[', 0xE9, 0x1A, ']', 0}));

    LmString w(wide);
    LmStringSplice(w, "\xC4", kLatin1, 0, 0, 1, 1, LM_SPLICE_REPLACE, 1);
    EXPECT_EQ(UnitAt(w, 0), 0xC4);
    EXPECT_EQ(UnitAt(w, 1), 0x263A);
}

TEST(StringSplice, BigEndianSourceAndCopyChars) {
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
}

TEST(StringSplice, AssignRaw) {
    LmString a(kLatin1, 1);
    LmStringAssignRaw(a, nullptr, kLatin1, 3, 1);
    EXPECT_EQ(a.GetSize(), 0);
    LmStringAssignRaw(a, "abc", kLatin1, 0, 1);
    EXPECT_EQ(a.GetSize(), 0);
    LmStringAssignRaw(a, "abc", kLatin1, 65535, 1);
    EXPECT_EQ(BufferOf(a), (Bytes{'a', 'b', 'c', 0}));

    // A counted source keeps bytes behind an inner zero.
    LmString b(kLatin1, 1);
    LmStringAssignRaw(b, "a\0b", kLatin1, 3, 1);
    EXPECT_EQ(BufferOf(b), (Bytes{'a', 0, 'b', 0}));
    EXPECT_EQ(b.Len(), 1);
}

TEST(StringLimits, OneByteStringStopsAt65531) {
    OverflowWatch watch(false);
    const std::string text(65531, 'a');
    LmString s(text.c_str());
    EXPECT_EQ(s.GetSize(), LM_STRING_MAX_BYTES);
    EXPECT_EQ(s.Len(), 65531);
    s += LmString("b");
    EXPECT_EQ(s.GetSize(), LM_STRING_MAX_BYTES);
    EXPECT_EQ(s.Len(), 65531);
    EXPECT_EQ(s.StrGet()[65530], 'a');
    EXPECT_EQ(s.StrGet()[65531], 0);
    EXPECT_TRUE(OverflowWatch::Reports().empty());  // silent unless configured

    // A longer text is clipped before the splice, so nothing overflows there.
    const std::string longer(70000, 'c');
    LmString t(longer.c_str());
    EXPECT_EQ(t.Len(), 65531);
    EXPECT_EQ(t.GetSize(), LM_STRING_MAX_BYTES);
    LmString u(longer.c_str(), 65535);
    EXPECT_EQ(u.Len(), 65531);
    EXPECT_TRUE(OverflowWatch::Reports().empty());

    // Inserting into a full string: the source comes first, the old tail gives way.
    LmStringSplice(s, "XY", kLatin1, 0, 0, 2, 1, LM_SPLICE_INSERT, 1);
    EXPECT_EQ(s.GetSize(), LM_STRING_MAX_BYTES);
    EXPECT_EQ(s.Len(), 65531);
    EXPECT_EQ(std::string(s.StrGet(), 4), "XYaa");
    // Replacing with a repeated character that outgrows the limit: the head stays.
    LmStringSplice(s, "r", kLatin1, 1, 0, 1, 3, LM_SPLICE_REPLACE, 1);
    EXPECT_EQ(s.Len(), 65531);
    EXPECT_EQ(std::string(s.StrGet(), 5), "Xrrra");
}

TEST(StringLimits, TwoByteStringStopsAt32765) {
    OverflowWatch watch(false);
    std::vector<unsigned short> text(32770, 0x263A);
    text.back() = 0;
    LmString w(text.data());
    EXPECT_EQ(w.Len(), 32765);
    EXPECT_EQ(w.GetSize(), LM_STRING_MAX_BYTES);
    w << static_cast<unsigned short>('A');
    EXPECT_EQ(w.Len(), 32765);
    EXPECT_EQ(UnitAt(w, 32764), 0x263A);
    EXPECT_EQ(UnitAt(w, 32765), 0);

    // Conversion to 16 bits is cut at the limit as well.
    const std::string narrow(40000, 'q');
    LmString n(narrow.c_str());
    n.SetCodeSet(kUnicode);
    EXPECT_EQ(n.GetSize(), LM_STRING_MAX_BYTES);
    EXPECT_EQ(n.Len(), 32765);
    EXPECT_EQ(UnitAt(n, 32764), 'q');
    EXPECT_TRUE(OverflowWatch::Reports().empty());
}

TEST(StringLimits, OverflowIsReportedWhenConfigured) {
    OverflowWatch watch(true);
    const std::string text(65531, 'a');
    LmString s(text.c_str());
    EXPECT_TRUE(OverflowWatch::Reports().empty());  // at the limit, not above it
    s << 'b';
    ASSERT_EQ(OverflowWatch::Reports().size(), 1u);
    EXPECT_EQ(OverflowWatch::Reports()[0].message, "String overflow");
    EXPECT_EQ(OverflowWatch::Reports()[0].stem, "src\\lmstring");
    EXPECT_GT(OverflowWatch::Reports()[0].line, 0);
    // The operation went on: the text is cut as without the option.
    EXPECT_EQ(s.Len(), 65531);

    // The conversion reports too.
    const std::string narrow(40000, 'q');
    LmString n(narrow.c_str());
    n.SetCodeSet(kUnicode);
    EXPECT_EQ(OverflowWatch::Reports().size(), 2u);
    EXPECT_EQ(n.Len(), 32765);

    // A value of 0 is off.
    DefaultConfig(-1)->SetValue("debug", "stringOverflow", 0);
    s << 'c';
    EXPECT_EQ(OverflowWatch::Reports().size(), 2u);
}

TEST(StringText, LengthsAndFill) {
    EXPECT_EQ(LmStrLen(kLatin1, "abc"), 3u);
    EXPECT_EQ(LmStrLen(kLatin1, nullptr), 0u);
    EXPECT_EQ(LmStrLen(224, "ab"), 2u);
    const uint8_t wide[] = {'a', 0, 0, 'b', 0, 0};  // a zero byte inside a unit does not end it
    EXPECT_EQ(LmStrLen(225, wide), 2u);
    EXPECT_EQ(LmStrLen(kUnicode, wide), 2u);
    EXPECT_EQ(LmStrLen(LM_CODESET_NATIVE, wide), 1u);
    EXPECT_EQ(LmWStrLen(nullptr), 0u);

    uint16_t units[4] = {1, 1, 1, 1};
    EXPECT_EQ(LmWMemSet(units, 0x2605, 3), units);
    EXPECT_EQ(units[0], 0x2605);
    EXPECT_EQ(units[2], 0x2605);
    EXPECT_EQ(units[3], 1);
}

TEST(StringConvert, BufferAndInto) {
    unsigned char* out = nullptr;
    EXPECT_EQ(LmStringConvertBuffer(kLatin1, kUnicode, "A\xE9", out), 6u);
    EXPECT_EQ(Bytes(out, out + 6), (Bytes{'A', 0, 0xE9, 0, 0, 0}));
    delete[] out;
    // Code set 0 is the native code set on either side.
    EXPECT_EQ(LmStringConvertBuffer(kUnicode, LM_CODESET_NATIVE, u"\u00C4\u263A", out), 3u);
    EXPECT_EQ(Bytes(out, out + 3), (Bytes{0xC4, 0x1A, 0}));
    delete[] out;
    EXPECT_EQ(LmStringConvertBuffer(kLatin1, kLatin1, nullptr, out), 1u);
    EXPECT_EQ(out[0], 0);
    delete[] out;

    // Into: the count is the argument; a large enough buffer is kept.
    unsigned char* buffer = new unsigned char[10];
    std::memset(buffer, 'x', 10);
    uint16_t size = 10;
    unsigned char* kept = buffer;
    EXPECT_EQ(LmStringConvertInto(kLatin1, kUnicode, "abc", 2, buffer, size), 2);
    EXPECT_EQ(buffer, kept);
    EXPECT_EQ(size, 10);
    EXPECT_EQ(Bytes(buffer, buffer + 10), (Bytes{'a', 0, 'b', 0, 0, 0, 0, 0, 0, 0}));
    // The source ends before n: only what is there is converted.
    EXPECT_EQ(LmStringConvertInto(kLatin1, kUnicode, "abcdefgh", 8, buffer, size), 8);
    EXPECT_EQ(size, 18);  // replaced by one of (8 + 1) * 2 bytes
    EXPECT_EQ(LmStringConvertInto(kLatin1, kLatin1, "ab", 5, buffer, size), 2);
    EXPECT_EQ(size, 18);
    delete[] buffer;
}

}  // namespace
