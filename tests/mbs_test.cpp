// Multi-byte conversion: single sequences both ways, whole texts into strings with
// their batches and limits, strings into byte texts with short buffers, and a round
// trip of every 16-bit unit. Byte images are worked out from the row table.
#include "testkit.h"

using namespace lmtest;

namespace {

// An exactly sized heap copy, so that a read beyond n is seen by the sanitizer.
std::vector<char> Heap(const Bytes& b) { return std::vector<char>(b.begin(), b.end()); }
LmString Wide(Units u) {
    u.push_back(0);
    LmString s(u.data());
    s.SetCodeSetCode(LM_CODESET_UNICODE);
    return s;
}
Bytes Out(const char* p, int n) { return Bytes(p, p + n); }

TEST(MultiByte, OneSequenceEachWay) {
    const struct {
        Bytes in;
        int used;
        uint16_t unit;
    } decode[] = {{{0x41}, 1, 0x41},
                  {{0xC3, 0xA4}, 2, 0xE4},
                  {{0xE2, 0x82, 0xAC}, 3, 0x20AC},
                  {{0xF0, 0x9F, 0x98, 0x80}, 4, 0xF600},              // 0x1F600 kept in 16 bits
                  {{0xF8, 0x88, 0x80, 0x80, 0x80}, 5, 0x0000},        // 0x200000
                  {{0xFC, 0x84, 0x80, 0x80, 0x80, 0x81}, 6, 0x0001},  // 0x4000001
                  {{0xED, 0xA0, 0x80}, 3, 0xD800},                    // surrogates pass
                  // Overlong forms; no row for 0xFF or 0xFE; a continuation byte first, or one
                  // without its top bits; a sequence that goes on beyond n.
                  {{0xC1, 0x81}, -1, 0},
                  {{0xC0, 0x80}, -1, 0},
                  {{0xE0, 0x80, 0x80}, -1, 0},
                  {{0xF0, 0x8F, 0xBF, 0xBF}, -1, 0},
                  {{0xFF, 0xBF, 0xBF, 0xBF, 0xBF, 0xBF, 0xBF}, -1, 0},
                  {{0xFE, 0xBF, 0xBF, 0xBF, 0xBF, 0xBF, 0xBF}, -1, 0},
                  {{0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80}, -1, 0},
                  {{0xC3, 0x41}, -1, 0},
                  {{0xC3, 0xC3}, -1, 0},
                  {{0xE2, 0x82}, -1, 0}};
    for (const auto& c : decode) {
        std::vector<char> in = Heap(c.in);
        unsigned short unit = 0x5555;
        EXPECT_EQ(LmMultiByte2WChar(&unit, in.data(), in.size()), c.used) << c.in.size();
        EXPECT_EQ(unit, c.used > 0 ? c.unit : 0x5555);
    }
    EXPECT_EQ(LmMultiByte2WChar(nullptr, nullptr, 3), 0);
    char a = 'a';
    EXPECT_EQ(LmMultiByte2WChar(nullptr, &a, 0), -1);

    const struct {
        wchar_t c;
        Bytes out;
    } encode[] = {
        {0x41, {0x41}},
        {0x7F, {0x7F}},
        {0x80, {0xC2, 0x80}},
        {0x7FF, {0xDF, 0xBF}},
        {0x800, {0xE0, 0xA0, 0x80}},
        {0xFFFF, {0xEF, 0xBF, 0xBF}},
        {0x1F600, {0xF0, 0x9F, 0x98, 0x80}},
        {0x7FFFFFFF, {0xFD, 0xBF, 0xBF, 0xBF, 0xBF, 0xBF}},
        {-1, {}},  // no row takes it
    };
    for (const auto& c : encode) {
        char out[6] = {};
        const int n = LmWChar2MultiByte(out, c.c);
        EXPECT_EQ(n, c.out.empty() ? -1 : static_cast<int>(c.out.size()));
        EXPECT_EQ(Out(out, std::max(n, 0)), c.out);
    }
    EXPECT_EQ(LmWChar2MultiByte(nullptr, 0x41), 0);

    // Units beyond outLength are counted, not written; a zero byte is a unit like any other.
    std::vector<char> text = Heap({0x61, 0xC3, 0xA4, 0x00, 0xE2, 0x82, 0xAC});
    unsigned short units[3] = {9, 9, 9};
    EXPECT_EQ(LmMultiByteStr2WCharStr(units, 2, text.data(), 7), 4);
    EXPECT_EQ(Units(units, units + 3), (Units{0x61, 0xE4, 9}));
    EXPECT_EQ(LmMultiByteStr2WCharStr(nullptr, 5, text.data(), 7), 4);
    EXPECT_EQ(LmMultiByteStr2WCharStr(units, 3, text.data(), 6), -1);  // cut inside the euro sign
    EXPECT_EQ(LmMultiByteStr2WCharStr(units, 3, text.data(), 0), 0);
    EXPECT_EQ(LmMultiByteStr2WCharStr(units, 3, nullptr, 4), 1);  // a null in is one empty step
}

TEST(MultiByte, TextIntoString) {
    const struct {
        Bytes in;
        int n, result;
        Units units;
    } cases[] = {
        {{0x61, 0xC3, 0xA4, 0xE2, 0x82, 0xAC, 0xF0, 0x9F, 0x98, 0x80}, 10, 10, {0x61, 0xE4, 0x20AC, 0xF600}},
        {{0x61, 0x62, 0x63}, 2, 2, {0x61, 0x62}},
        {{0x61, 0x62, 0x00, 0x63}, 4, 2, {0x61, 0x62}},        // a zero byte ends the text
        {{0x61, 0xF0, 0x90, 0x80, 0x80, 0x62}, 6, 1, {0x61}},  // so does 0x10000, unit 0
        {{0x61, 0xC3}, 2, -1, {0x61}},                         // the good prefix stays
        {{0x30, 0x31, 0x32, 0x33, 0x34, 0x35, 0x36, 0x37, 0x38, 0x39, 0xC1, 0x81},
         12,
         -1,
         {0x30, 0x31, 0x32, 0x33, 0x34, 0x35, 0x36, 0x37, 0x38, 0x39}},  // overlong after ten
    };
    for (const auto& c : cases) {
        std::vector<char> in = Heap(c.in);
        LmString out("old");
        out.SetLanguage(7);
        EXPECT_EQ(LmMBS2LmString(in.data(), out, c.n), c.result);
        EXPECT_EQ(UnitsOf(out), c.units);
        EXPECT_EQ(out.GetCodeSet(), LM_CODESET_UNICODE);
        EXPECT_EQ(out.GetLanguage(), 7);
    }
    // n 0 or negative leaves no buffer; a null in gives -1 and an empty text.
    LmString out("old");
    EXPECT_EQ(LmMBS2LmString("abc", out, -4), 0);
    EXPECT_EQ(out.GetSize(), 0);
    EXPECT_EQ(LmMBS2LmString(nullptr, out, 3), -1);
    EXPECT_EQ(out.GetSize(), 2);

    // Batches of 256 units: one short of, at, and beyond a batch; two batches for 300.
    for (int n : {255, 256, 257, 513}) {
        std::vector<char> in(static_cast<size_t>(n));
        for (int i = 0; i < n; ++i) in[static_cast<size_t>(i)] = static_cast<char>('a' + i % 26);
        EXPECT_EQ(LmMBS2LmString(in.data(), out, n), n);
        const Units u = UnitsOf(out);
        ASSERT_EQ(u.size(), static_cast<size_t>(n));
        EXPECT_EQ(u[254], 'a' + 254 % 26);
        EXPECT_EQ(u.back(), 'a' + (n - 1) % 26);
    }
    // 32768 bytes are too many for a string: -2. The string itself holds 32765 units.
    const std::vector<char> big(32768, 'x');
    EXPECT_EQ(LmMBS2LmString(big.data(), out, 32768), -2);
    EXPECT_EQ(out.Len(), 32765);
    EXPECT_EQ(LmMBS2LmString(big.data(), out, 32767), 32767);
    EXPECT_EQ(out.Len(), 32765);

    // From a string, and from a string into itself: its text is read before it goes.
    LmString self("h\xE4llo");  // Latin-1, read as bytes: C3 A4 would be needed for 'ä'
    EXPECT_EQ(LmMultiByteString2LmString(self, self), -1);
    EXPECT_EQ(UnitsOf(self), (Units{'h'}));
    LmString utf8("h\xC3\xA4llo");
    EXPECT_EQ(LmMultiByteString2LmString(utf8, utf8), 6);
    EXPECT_EQ(UnitsOf(utf8), (Units{'h', 0xE4, 'l', 'l', 'o'}));
    EXPECT_EQ(LmMultiByteString2LmString("\xE2\x82\xAC!", out, 4), 4);
    EXPECT_EQ(UnitsOf(out), (Units{0x20AC, '!'}));
}

TEST(MultiByte, StringIntoText) {
    // LmMBSLength: 7-bit text in a code set below 6 ignores n; others count n units.
    const LmString abc("hello"), latin("h\xE4"), euro = Wide({0x61, 0xE4, 0x20AC});
    EXPECT_EQ((std::vector<int>{LmMBSLength(abc, 2), LmMBSLength(abc, 0), LmMBSLength(latin, 2), LmMBSLength(latin, 1),
                                LmMBSLength(euro, 2), LmMBSLength(euro, 65535)}),
              (std::vector<int>{5, 0, 3, 1, 3, 6}));  // the last stops at the terminator

    const struct {
        LmString s;
        int outLength, result;
        Bytes out;  // the whole buffer of outLength + 1 bytes, 0x55 where nothing is written
    } cases[] = {{LmString("abc"), 3, 3, {'a', 'b', 'c', 0x55}},         // just fits: no terminator
                 {LmString("abc"), 5, 3, {'a', 'b', 'c', 0, 0, 0x55}},   // the rest is zeroed
                 {LmString("abcde"), 2, -5, {'a', 'b', 0x55}},           // the negative of the length
                 {LmString("a\xE4"), 4, 3, {'a', 0xC3, 0xA4, 0, 0x55}},  // the Unicode path
                 {LmString("a\xE4"), 2, -1, {'a', 0x55, 0x55}},          // 'ä' would overrun
                 {Wide({0x61, 0x20AC}), 4, 4, {'a', 0xE2, 0x82, 0xAC, 0x55}},
                 {Wide({0x61, 0x20AC}), 3, -1, {'a', 0x55, 0x55, 0x55}},
                 {Wide({0x20AC}), 0, 0, {0x55}},
                 {Wide({0x7F, 0x80}), 8, 3, {0x7F, 0xC2, 0x80, 0, 0x55, 0x55, 0x55, 0x55, 0x55}},
                 {LmString(), 0, 0, {0x55}}};
    for (const auto& c : cases) {
        std::vector<char> out(static_cast<size_t>(c.outLength) + 1, 0x55);
        EXPECT_EQ(LmString2LmMBS(c.s, out.data(), c.outLength), c.result) << c.outLength;
        EXPECT_EQ(Bytes(out.begin(), out.end()), c.out);
    }

    // LmString2MultiByteString: allocation, the caller's buffer and the retry contract.
    char* out = nullptr;
    int outLength = 0;
    EXPECT_EQ(LmString2MultiByteString(euro, out, outLength), 6);
    EXPECT_EQ(outLength, 7);
    EXPECT_EQ(Out(out, 7), (Bytes{0x61, 0xC3, 0xA4, 0xE2, 0x82, 0xAC, 0}));
    delete[] out;
    out = nullptr;
    EXPECT_EQ(LmString2MultiByteString(LmString(), out, outLength), 0);
    EXPECT_EQ(outLength, 1);
    EXPECT_EQ(out[0], 0);
    delete[] out;
    char small[7];
    out = small;
    outLength = 3;
    EXPECT_EQ(LmString2MultiByteString(euro, out, outLength), -1);
    EXPECT_EQ(outLength, 6);
    EXPECT_EQ(out, small);
    outLength = 7;
    EXPECT_EQ(LmString2MultiByteString(euro, out, outLength), 6);
    EXPECT_EQ(Out(out, 7), (Bytes{0x61, 0xC3, 0xA4, 0xE2, 0x82, 0xAC, 0}));
    // Beyond the 2048-byte local buffer: built piecewise, 7-bit and Unicode alike.
    for (const LmString& s : {LmString(std::string(3000, 'q').c_str()), Wide(Units(1000, 0x20AC))}) {
        out = nullptr;
        EXPECT_EQ(LmString2MultiByteString(s, out, outLength), 3000);
        EXPECT_EQ(outLength, 3001);
        EXPECT_EQ(Out(out + 2997, 4), s.GetCodeSet() == 1 ? (Bytes{'q', 'q', 'q', 0}) : (Bytes{0xE2, 0x82, 0xAC, 0}));
        delete[] out;
    }
}

TEST(MultiByte, EveryUnitRoundTrips) {
    // Chunks of 8000 units stay below 32768 bytes; unit 0 ends a text and is left out.
    for (uint32_t first = 1; first <= 0xFFFF; first += 8000) {
        Units units;
        for (uint32_t u = first; u < first + 8000 && u <= 0xFFFF; ++u) units.push_back(static_cast<uint16_t>(u));
        const LmString s = Wide(units);
        const int bytes = LmMBSLength(s, 65535);
        std::vector<char> text(static_cast<size_t>(bytes));
        ASSERT_EQ(LmString2LmMBS(s, text.data(), bytes), bytes);
        LmString back;
        EXPECT_EQ(LmMBS2LmString(text.data(), back, bytes), bytes);
        EXPECT_EQ(UnitsOf(back), units) << first;
    }
}

}  // namespace
