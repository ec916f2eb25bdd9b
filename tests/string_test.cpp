// LmString: the three states of nothing, construction, assignment and appending, the
// splice with its modes and limits, the code set changes, and the string operations
// (number casts, search, pieces, changes in place, trims, the list splitter, case).
#include <cmath>
#include <limits>

#include "testkit.h"

using namespace lmtest;

namespace {

constexpr unsigned char kLatin1 = 1, kLatin9 = 3, kUnicode = 253;
constexpr uint8_t kSub8 = 0x1A;  // what a 1-byte code set holds for a character it lacks
const Bytes kWideBytes{0xE9, 0, 0x3A, 0x26, 0x42, 0, 0, 0};
const unsigned short kWide[] = {0xE9, 0x263A, 0x42, 0};

Bytes Text(const char* text) { return Of(text, std::strlen(text) + 1); }  // terminator included

// Sets the manager's option bits and the default compare option; restores both.
struct Defaults {
    Defaults(int options, unsigned short cmpOp)
        : oldOptions(___LmTypeMgrOptions()), oldCmpOp(LmString::GetDefaultCmpOp()) {
        ___LmTypeMgrOptions() = options;
        LmString::SetDefaultCmpOp(cmpOp);
    }
    ~Defaults() {
        ___LmTypeMgrOptions() = oldOptions;
        LmString::SetDefaultCmpOp(oldCmpOp);
        DefaultConfig(-1)->RemoveValue("debug", "stringOverflow");
    }
    int oldOptions;
    unsigned short oldCmpOp;
};

TEST(StringNothing, ThreeStatesStayDistinct) {
    LmString none, empty(""), empty16(Wide(u"")), null("abc");
    EXPECT_EQ(null.SetNullValue(), 0);
    EXPECT_EQ(StateOf(none), (State{1, 1, {}}));
    EXPECT_EQ(StateOf(empty), (State{1, 1, {0}}));
    EXPECT_EQ(StateOf(empty16), (State{kUnicode, 1, {0, 0}}));
    EXPECT_EQ(StateOf(null), (State{0, LM_LANGUAGE_NULL, {}}));
    // Without buffer StrGet is the one shared empty text, long enough for a 16-bit one.
    EXPECT_TRUE(none.StrGet() == LmString::EmptyString().StrGet() && null.StrGet() == none.StrGet());
    EXPECT_EQ(none.StrGet()[0] | none.StrGet()[1], 0);
    for (const LmString* s : {&none, &empty, &empty16, &null}) {
        EXPECT_EQ(s->Len() + s->IsEmpty() + !*s, 2);
        EXPECT_EQ(s->IsNullValue(), s == &null ? 1 : 0);
    }
    // A stored null in order form is code set 254 with language 0; language 0 alone is not null.
    EXPECT_EQ(LmString(LM_CODESET_ORDER, 0).IsNullValue() + LmString(kUnicode, LM_LANGUAGE_NULL).IsNullValue(), 2);
    EXPECT_EQ(LmString(LM_CODESET_ORDER, 1).IsNullValue() + LmString(kLatin1, 0).IsNullValue(), 0);
    EXPECT_EQ(Wide(u"\u0100").IsEmpty(), 0);  // the first 16-bit unit decides, not its low byte
    // Empty onto no buffer: the string moves to the state empty text.
    LmString a, c(kUnicode, 1);
    a += LmString();
    EXPECT_EQ(BufferOf(a), (Bytes{0}));
    c << '\0';  // appends nothing but still reallocates
    EXPECT_EQ(BufferOf(c), (Bytes{0, 0}));
    EXPECT_EQ(StateOf(LmString::EmptyString()), (State{1, 1, {}}));
    EXPECT_EQ(StateOf(LmString::EmptyValue()), (State{LmString::GetDefault8CodeSet(), 1, {0}}));
}

TEST(StringConstruct, CharactersTextsAndNumbers) {
    LmString::SetDefaultCodeSet(kUnicode);  // characters, texts and numbers take the 8- or 16-bit default
    const struct {
        LmString s;
        State state;
    } cases[] = {{LmString('x'), {1, 1, {'x', 0}}},
                 {LmString(static_cast<unsigned char>(0xE9)), {1, 1, {0xE9, 0}}},
                 {LmString('\0'), {1, 1, {}}},
                 {LmString(static_cast<unsigned short>(0x263A)), {kUnicode, 1, {0x3A, 0x26, 0, 0}}},  // not a number
                 {LmString(static_cast<unsigned short>(0)), {kUnicode, 1, {}}},
                 {LmString(77, 9), {77, 9, {}}},  // the pair form takes its labels as they are
                 {LmString(static_cast<const char*>(nullptr)), {1, 1, {}}},
                 {LmString("abcdef", 3), {1, 1, Text("abc")}},  // counted: 65535 to the terminator, 0 no buffer
                 {LmString("abc", 65535), {1, 1, Text("abc")}},
                 {LmString("abc", 0), {1, 1, {}}},
                 {LmString(kWide, 2), {kUnicode, 1, {0xE9, 0, 0x3A, 0x26, 0, 0}}},
                 {LmString(static_cast<short>(-12)), {1, 1, Text("-12")}},
                 {LmString(std::numeric_limits<int>::min()), {1, 1, Text("-2147483648")}},
                 {LmString(4294967295u), {1, 1, Text("4294967295")}},
                 {LmString(std::numeric_limits<int64_t>::min()), {1, 1, Text("-9223372036854775808")}},
                 {LmString(std::numeric_limits<uint64_t>::max()), {1, 1, Text("18446744073709551615")}},
                 {LmString(0.1), {1, 1, Text("0.10000000000000001")}},
                 {LmString(-std::numeric_limits<double>::infinity()), {1, 1, Text("-Infinity")}},
                 {LmString(-std::nan("")), {1, 1, Text("NaN")}}};
    LmString::SetDefaultCodeSet(kLatin1);
    for (const auto& c : cases) EXPECT_EQ(StateOf(c.s), c.state);
    // An inner zero stays in the buffer and ends Len; a copy measures by Len and drops what is behind it.
    const LmString inner("ab\0cd", 5);
    EXPECT_EQ(inner.Len(), 2);
    EXPECT_EQ(BufferOf(inner), (Bytes{'a', 'b', 0, 'c', 'd', 0}));
    EXPECT_EQ(BufferOf(LmString(inner)), (Bytes{'a', 'b', 0}));
}

TEST(StringConstruct, LabelsAssignmentAndDisposal) {
    LmString::SetDefaultLanguage(5);
    LmString::SetDefaultCodeSet(kLatin9);
    LmString none;
    EXPECT_EQ(StateOf(none), (State{kLatin9, 5, {}}));
    EXPECT_EQ(StateOf(LmString("a")), (State{kLatin1, 5, {'a', 0}}));  // texts take the 8-bit default
    none.SetLanguage(9);
    none.Init();
    EXPECT_EQ(StateOf(none), (State{kLatin9, 5, {}}));
    LmString::SetDefaultLanguage(1);
    LmString::SetDefaultCodeSet(kLatin1);
    // Copies keep the source's labels, with or without buffer; so does assignment.
    LmString w(kWide), a("abc");
    w.SetLanguage(7);
    const LmString copy(w);
    EXPECT_EQ(StateOf(copy), (State{kUnicode, 7, kWideBytes}));
    EXPECT_NE(copy.StrGet(), w.StrGet());
    EXPECT_EQ(StateOf(LmString(LmString(kUnicode, 7))), (State{kUnicode, 7, {}}));
    const char* before = a.StrGet();
    LmString& alias = a;
    a = alias;  // self-assignment does nothing
    EXPECT_EQ(a.StrGet(), before);
    a = w;
    EXPECT_EQ(StateOf(a), (State{kUnicode, 7, kWideBytes}));
    a = "xy";  // a plain text relabels the string
    EXPECT_EQ(StateOf(a), (State{kLatin1, 1, {'x', 'y', 0}}));
    w = kWide;
    EXPECT_EQ(StateOf(w), (State{kUnicode, 1, kWideBytes}));
    w = static_cast<const char*>(nullptr);
    EXPECT_EQ(StateOf(w), (State{kLatin1, 1, {}}));
    LmString own("abcd");
    own = own.StrGet() + 2;  // the source may be this string's own text
    EXPECT_EQ(BufferOf(own), (Bytes{'c', 'd', 0}));

    // Destroy clears all four fields: what follows is a native string. Destruct is a
    // move; the source keeps its labels without buffer.
    LmString s(kWide), from(kWide), to("old");
    s.Destroy();
    EXPECT_EQ(StateOf(s), (State{0, 0, {}}));
    LmStringAssignRaw(s, "\xE9z", s.GetCodeSet(), 2, LmFormatLittle);
    EXPECT_EQ(BufferOf(s), (Bytes{0xE9, 'z', 0}));
    from.SetLanguage(8);
    const char* text = from.StrGet();
    to.Destruct(from);
    EXPECT_EQ(to.StrGet(), text);
    EXPECT_EQ(StateOf(to), (State{kUnicode, 8, kWideBytes}));
    EXPECT_EQ(StateOf(from), (State{kUnicode, 8, {}}));
    to.Destruct(to);
    EXPECT_EQ(to.StrGet(), text);
}

TEST(StringAppend, SameAndOtherCodeSets) {
    LmString a("ab");
    a += LmString("cd");
    a += a;
    EXPECT_EQ(BufferOf(a), Text("abcdabcd"));
    // 16-bit onto 1-byte: converted, the lacking character substituted; the left side keeps its labels.
    LmString narrow("A"), w(kWide, 1);
    narrow.SetLanguage(4);
    narrow += LmString(kWide);
    EXPECT_EQ(StateOf(narrow), (State{kLatin1, 4, {'A', 0xE9, kSub8, 'B', 0}}));
    w += LmString("\xC4z");  // 1-byte onto 16-bit: every byte becomes its Unicode unit
    EXPECT_EQ(StateOf(w), (State{kUnicode, 1, {0xE9, 0, 0xC4, 0, 'z', 0, 0, 0}}));
    // Code set 0 onto a 2-byte string is converted from the native code set; onto a 1-byte
    // string of another code set it is copied unchanged, while the same byte labelled
    // Latin-1 is mapped (the currency sign is not in Latin-9).
    LmString native("\xA4!"), w2(kUnicode, 1), latin9("x");
    native.SetCodeSet(LM_CODESET_NATIVE);
    w2 += native;
    EXPECT_EQ(BufferOf(w2), (Bytes{0xA4, 0, '!', 0, 0, 0}));
    latin9.SetCodeSet(kLatin9);
    latin9 += native;
    latin9 += LmString("\xA4\xE9");
    EXPECT_EQ(BufferOf(latin9), (Bytes{'x', 0xA4, '!', kSub8, 0xE9, 0}));

    LmString s("n=");
    s << 42 << ',' << static_cast<short>(-3) << ',' << 7u << ',' << static_cast<int64_t>(-5) << ','
      << static_cast<uint64_t>(6) << ',' << 1.5 << ',' << 0.1f << ',' << "end" << LmString("!") << kWide;
    EXPECT_STREQ(s.StrGet(), "n=42,-3,7,-5,6,1.5,0.10000000149011612,end!\xE9\x1A\x42");
    // unsigned short: a character on a 2-byte string, a number on a 1-byte one.
    LmString w3(kUnicode, 1), n("");
    w3 << static_cast<unsigned short>(65);
    n << static_cast<unsigned short>(65);
    EXPECT_EQ(BufferOf(w3), (Bytes{'A', 0, 0, 0}));
    EXPECT_EQ(BufferOf(n), Text("65"));
    // operator+ takes the left side's labels and converts the right side.
    LmString left(kWide + 1, 1);
    left.SetLanguage(6);
    EXPECT_EQ(StateOf(left + LmString("\xE9")), (State{kUnicode, 6, {0x3A, 0x26, 0xE9, 0, 0, 0}}));
}

TEST(StringSplice, ModesFillsAndRawAssignment) {
    // {start text, source, source code set, position, sourceStart, count, repeat, mode, result}
    const unsigned short two[] = {0x263A, 0x263B, 0}, star[] = {0x2605, 0};
    const struct {
        LmString s;
        const void* src;
        unsigned char cs;
        uint16_t pos, start, count, repeat, mode;
        Bytes result;
    } cases[] = {
        {LmString("abcdef"), "XY", kLatin1, 2, 0, 2, 1, LM_SPLICE_REPLACE, Text("abXYef")},
        {LmString("abc"), "XY", kLatin1, 1, 0, 2, 1, LM_SPLICE_INSERT, Text("aXYbc")},
        {LmString("abc"), "!", kLatin1, 3, 0, 1, 1, LM_SPLICE_INSERT, Text("abc!")},  // at the end: appends
        {LmString("abcdef"), "XY", kLatin1, 2, 0, 2, 1, LM_SPLICE_ASSIGN, Text("abXY")},
        {LmString("Q"), "012345", kLatin1, 1, 2, 3, 1, LM_SPLICE_ASSIGN, Text("Q234")},  // sourceStart picks a piece
        {LmString("Q234"), nullptr, kLatin1, 2, 0, 0, 1, LM_SPLICE_ASSIGN, Text("Q2")},  // no source: only cut
        {LmString("ab"), "xyz", kLatin1, 2, 1, 1, 3, LM_SPLICE_ASSIGN, Text("abxxx")},   // a fill: sourceStart ignored
        {LmString("ab"), "-", kLatin1, 0, 0, 1, 0, LM_SPLICE_ASSIGN, {0}},
        {LmString(kUnicode, 1), star, kUnicode, 0, 0, 1, 2, LM_SPLICE_ASSIGN, {0x05, 0x26, 0x05, 0x26, 0, 0}},
        {Wide(u"abc"),
         two,
         kUnicode,
         1,
         0,
         2,
         1,
         LM_SPLICE_INSERT,
         {'a', 0, 0x3A, 0x26, 0x3B, 0x26, 'b', 0, 'c', 0, 0, 0}},
        {Wide(u"a\u263A\u263Bc"),
         two,
         kUnicode,
         2,
         1,
         1,
         1,
         LM_SPLICE_REPLACE,
         {'a', 0, 0x3A, 0x26, 0x3B, 0x26, 'c', 0, 0, 0}},
        // A source in another code set is converted first.
        {LmString("[]"), two, kUnicode, 1, 0, 1, 1, LM_SPLICE_INSERT, {'[', kSub8, ']', 0}},
        {LmString(two), "\xC4", kLatin1, 0, 0, 1, 1, LM_SPLICE_REPLACE, {0xC4, 0, 0x3B, 0x26, 0, 0}},
        // Replace and insert with a null or empty source, and unknown modes, change nothing.
        {LmString("ab"), "", kLatin1, 1, 0, 0, 1, LM_SPLICE_INSERT, Text("ab")},
        {LmString("ab"), nullptr, kLatin1, 1, 0, 1, 1, LM_SPLICE_REPLACE, Text("ab")},
        {LmString("ab"), u"\0x", kUnicode, 1, 0, 1, 1, LM_SPLICE_INSERT, Text("ab")},
        {LmString("ab"), "x", kLatin1, 0, 0, 1, 1, 4, Text("ab")},
        {LmString("ab"), "x", kLatin1, 0, 0, 1, 1, 0, Text("ab")}};
    for (const auto& c : cases) {
        LmString s = c.s;
        LmStringSplice(s, c.src, c.cs, c.pos, c.start, c.count, c.repeat, c.mode, 1);
        EXPECT_EQ(BufferOf(s), c.result) << c.s.StrGet() << " mode " << c.mode;
    }
    LmString own("abcde");
    LmStringSplice(own, own.StrGet(), kLatin1, 1, 3, 2, 1, LM_SPLICE_ASSIGN, 255);  // its own source; 255 is 1
    EXPECT_EQ(BufferOf(own), Text("ade"));

    // Disk bytes most significant first come into memory in the machine's order.
    const uint8_t disk[] = {0x00, 0x41, 0x26, 0x3A, 0x00, 0x00};
    LmString w(kUnicode, 2);
    LmStringAssignRaw(w, disk, kUnicode, 2, LmFormatBig);
    EXPECT_EQ(StateOf(w), (State{kUnicode, 2, {0x41, 0x00, 0x3A, 0x26, 0, 0}}));
    uint8_t out[4] = {9, 9, 9, 9};
    LmCopyChars(out, disk + 1, 1, LmFormatBig, 2);  // 1-byte characters are never swapped
    LmCopyChars(out + 2, disk + 2, 2, LmFormatLittle, 2);
    EXPECT_EQ(Of(out, 4), (Bytes{0x41, 0x26, 0x26, 0x3A}));
    // Null source or count 0: no buffer; 65535: to the terminator; an inner zero is kept.
    LmString a(kLatin1, 1), b(kLatin1, 1);
    LmStringAssignRaw(a, nullptr, kLatin1, 3, 1);
    LmStringAssignRaw(a, "abc", kLatin1, 0, 1);
    EXPECT_EQ(a.GetSize(), 0);
    LmStringAssignRaw(a, "abc", kLatin1, 65535, 1);
    EXPECT_EQ(BufferOf(a), Text("abc"));
    LmStringAssignRaw(b, "a\0b", kLatin1, 3, 1);
    EXPECT_EQ(BufferOf(b), (Bytes{'a', 0, 'b', 0}));
}

TEST(StringLimits, TextIsCutAtTheLimitAndReportedWhenConfigured) {
    Defaults restore(0, 0);
    AssertLog log;
    LmString s(std::string(65531, 'a').c_str()), big("");
    EXPECT_EQ(s.GetSize(), LM_STRING_MAX_BYTES);
    s += LmString("b");
    EXPECT_EQ(s.GetSize(), LM_STRING_MAX_BYTES);
    EXPECT_EQ(s.StrGet()[65530], 'a');
    EXPECT_EQ(LmString(std::string(70000, 'c').c_str()).Len(), 65531);  // clipped before the splice
    // Into a full string: the source comes first, the old tail gives way; the head stays.
    LmStringSplice(s, "XY", kLatin1, 0, 0, 2, 1, LM_SPLICE_INSERT, 1);
    EXPECT_EQ(s.Len(), 65531);
    EXPECT_EQ(std::string(s.StrGet(), 4), "XYaa");
    LmStringSplice(s, "r", kLatin1, 1, 0, 1, 3, LM_SPLICE_REPLACE, 1);
    EXPECT_EQ(std::string(s.StrGet(), 5), "Xrrra");
    EXPECT_EQ(s.Len(), 65531);
    LmStringSplice(big, "z", kLatin1, 0, 0, 1, 65535, LM_SPLICE_ASSIGN, 1);  // a fill is cut too
    EXPECT_EQ(big.GetSize(), LM_STRING_MAX_BYTES);
    EXPECT_EQ(big.StrGet()[65530], 'z');
    // A 2-byte string stops at 32765 characters, also when converted to.
    std::vector<unsigned short> text(32770, 0x263A);
    text.back() = 0;
    LmString w(text.data()), n(std::string(40000, 'q').c_str());
    w << static_cast<unsigned short>('A');
    EXPECT_EQ(w.Len(), 32765);
    EXPECT_EQ(UnitsOf(w).back(), 0x263A);
    n.SetCodeSet(kUnicode);
    EXPECT_EQ(n.GetSize(), LM_STRING_MAX_BYTES);
    EXPECT_EQ(UnitsOf(n).back(), 'q');
    EXPECT_TRUE(AssertLog::Entries().empty());  // silent unless configured

    DefaultConfig(-1)->SetValue("debug", "stringOverflow", 1);
    LmString t(std::string(65531, 'a').c_str()), m(std::string(40000, 'q').c_str());
    EXPECT_TRUE(AssertLog::Entries().empty());  // at the limit, not above it
    t << 'b';
    EXPECT_EQ(AssertLog::Entries(), std::vector<std::string>{"String overflow|src\\lmstring"});
    EXPECT_EQ(t.Len(), 65531);  // the operation went on
    m.SetCodeSet(kUnicode);     // the conversion reports too
    EXPECT_EQ(AssertLog::Entries().size(), 2u);
    DefaultConfig(-1)->SetValue("debug", "stringOverflow", 0);  // 0 is off
    t << 'c';
    EXPECT_EQ(AssertLog::Entries().size(), 2u);
}

TEST(StringCodeSet, ThreeChangesDifferAndConversions) {
    // Between two 1-byte code sets SetCodeSet changes no byte, MapToCodeSet maps.
    LmString a("\xE9\xA4"), b("\xE9\xA4");
    a.SetCodeSet(kLatin9);
    EXPECT_EQ(StateOf(a), (State{kLatin9, 1, {0xE9, 0xA4, 0}}));
    EXPECT_EQ(b.MapToCodeSet(kLatin9), LM_OK);
    EXPECT_EQ(StateOf(b), (State{kLatin9, 1, {0xE9, kSub8, 0}}));
    EXPECT_EQ(b.MapToCodeSet(kLatin9), LM_OK);
    EXPECT_EQ(b.MapToCodeSet(LM_CODESET_NATIVE), LM_ERR_BAD_ARGUMENT);
    EXPECT_EQ(b.GetCodeSet(), kLatin9);
    // SetCodeSet to another width converts; back to 0 converts to native and the byte becomes 0.
    LmString c("A\xE9"), d;
    c.SetCodeSet(kUnicode);
    EXPECT_EQ(StateOf(c), (State{kUnicode, 1, {'A', 0, 0xE9, 0, 0, 0}}));
    c.SetCodeSet(LM_CODESET_NATIVE);
    EXPECT_EQ(StateOf(c), (State{0, 1, {'A', 0xE9, 0}}));
    d.SetCodeSet(kUnicode);
    EXPECT_EQ(StateOf(d), (State{kUnicode, 1, {}}));
    // SetCodeSetCode relabels within one width only.
    LmString e("\xA4"), f(kUnicode, 1);
    EXPECT_EQ(e.SetCodeSetCode(kLatin9) + f.SetCodeSetCode(230), LM_OK);
    EXPECT_EQ(e.SetCodeSetCode(kUnicode), LM_ERR_BAD_ARGUMENT);
    EXPECT_EQ(StateOf(e), (State{kLatin9, 1, {0xA4, 0}}));
    EXPECT_EQ(f.GetCodeSet(), 230);
    // CopyMapped refuses its own string; it keeps a large enough buffer, cleared behind the text.
    EXPECT_EQ(e.CopyMapped(e, kUnicode, -1), LM_ERR_BAD_ARGUMENT);
    LmString src("\xE9\xA4z"), target("a much longer text than the source"), small("");
    src.SetLanguage(4);
    const char* kept = target.StrGet();
    EXPECT_EQ(target.CopyMapped(src, kLatin9, -1), 3);
    EXPECT_EQ(target.StrGet(), kept);
    Bytes expected{0xE9, kSub8, 'z'};
    expected.resize(35);
    EXPECT_EQ(StateOf(target), (State{kLatin9, 4, expected}));
    EXPECT_EQ(small.CopyMapped(src, kUnicode, 2), 2);  // replaced by a buffer of (2 + 1) * 2 bytes
    EXPECT_EQ(StateOf(small), (State{kUnicode, 4, {0xE9, 0, 0xA4, 0, 0, 0}}));

    EXPECT_EQ(LmStrLen(kLatin1, nullptr) + LmWStrLen(nullptr), 0u);
    EXPECT_EQ(LmStrLen(225, "a\0\0b\0\0") * 10 + LmStrLen(LM_CODESET_NATIVE, "a\0\0b"), 21u);  // 224 is 1-byte
    uint16_t units[4] = {1, 1, 1, 1};
    EXPECT_EQ(LmWMemSet(units, 0x2605, 3), units);
    EXPECT_EQ(Units(units, units + 4), (Units{0x2605, 0x2605, 0x2605, 1}));
    unsigned char* out = nullptr;
    EXPECT_EQ(LmStringConvertBuffer(kUnicode, LM_CODESET_NATIVE, u"\u00C4\u263A", out), 3u);  // 0 is native
    EXPECT_EQ(Of(out, 3), (Bytes{0xC4, 0x1A, 0}));
    delete[] out;
    EXPECT_EQ(LmStringConvertBuffer(kLatin1, kLatin1, nullptr, out), 1u);
    EXPECT_EQ(out[0], 0);
    delete[] out;
    // Into: the count is the argument; a large enough buffer is kept and cleared.
    auto* buffer = new unsigned char[10];
    std::memset(buffer, 'x', 10);
    uint16_t size = 10;
    unsigned char* before = buffer;
    EXPECT_EQ(LmStringConvertInto(kLatin1, kUnicode, "abc", 2, buffer, size), 2);
    EXPECT_EQ(buffer, before);
    EXPECT_EQ(Of(buffer, 10), (Bytes{'a', 0, 'b', 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(LmStringConvertInto(kLatin1, kUnicode, "abcdefgh", 8, buffer, size), 8);
    EXPECT_EQ(size, 18);                                                         // replaced by one of (8 + 1) * 2 bytes
    EXPECT_EQ(LmStringConvertInto(kLatin1, kLatin1, "ab", 5, buffer, size), 2);  // the source ends first
    delete[] buffer;
}

TEST(StringCase, UpperLowerAndTheDoubledBuffer) {
    LmString s("ma\xDFstab"), accents("\xC0Q\xE9!1"), native("ab\xE9"), none, w = Wide(u"\u00DF\u0101");
    EXPECT_EQ(StateOf(s.ToUpper()), (State{kLatin1, 1, Text("MASSSTAB")}));
    EXPECT_STREQ(s.ToLower().StrGet(), "massstab");
    EXPECT_EQ(BufferOf(accents.ToLower()), (Bytes{0xE0, 'q', 0xE9, '!', '1', 0}));
    EXPECT_EQ(BufferOf(accents.ToUpper()), (Bytes{0xC0, 'Q', 0xC9, '!', '1', 0}));
    EXPECT_EQ(BufferOf(w.ToUpper()), (Bytes{'S', 0, 'S', 0, 0x00, 0x01, 0, 0}));
    native.SetCodeSet(LM_CODESET_NATIVE);  // code set 0 goes by the C library: only ASCII letters change
    EXPECT_EQ(BufferOf(native.ToUpper()), (Bytes{'A', 'B', 0xE9, 0}));
    EXPECT_EQ(none.ToUpper().GetSize(), 0);
    // Half the limit of sharp s doubles to exactly the limit. Beyond it the doubled
    // size wraps in 16 bits: 2 * 40001 = 80002 becomes 14466, and the text is cut
    // there; 32768 bytes double to 0, which holds only the terminator.
    LmString half(std::string(32765, '\xDF').c_str()), more(std::string(40000, '\xDF').c_str());
    LmString wrap(std::string(32767, 'a').c_str());
    EXPECT_EQ(half.ToUpper().Len(), 65530);
    EXPECT_EQ(half.GetSize(), 65531);
    EXPECT_EQ(more.ToUpper().Len(), 14465);
    EXPECT_EQ(more.GetSize(), 14466);
    EXPECT_EQ(wrap.ToUpper().GetSize(), 1);
}

TEST(StringOps, NumberTextsAndCasts) {
    char buf[32];
    EXPECT_STREQ(LmNumberTextClean("  -000x1F", buf, 32), "-0x1F");      // run collapsed, zero kept before x
    EXPECT_STREQ(LmNumberTextClean("+00-00 007", buf, 32), "+0-0 007");  // a sign ends a run; a blank begins
    EXPECT_STREQ(LmNumberTextClean("123456", buf, 4), "123");
    const uint16_t wide[] = {0x09, '0', '0', '4', '2', 0x263A, '9', 0};  // tab skipped, stop at U+263A
    EXPECT_STREQ(LmNumberTextClean(wide, buf, 32), "042");
    EXPECT_EQ(LmStrToLong(wide), 34);
    EXPECT_EQ(LmStrToLong("99999999999"), INT32_MAX);
    EXPECT_EQ(LmStrToLong("-0x80000001"), INT32_MIN);
    EXPECT_EQ(LmStrToInt64((std::string(40, '0') + "12").c_str()), 10);  // "012" fits the 31 characters
    const uint16_t ab[] = {'a', 'b', 0}, ad[] = {'a', 'd', 0}, empty[] = {0};
    EXPECT_EQ((std::vector<int>{LmWStrCmp(nullptr, nullptr), LmWStrCmp(nullptr, empty), LmWStrCmp(empty, nullptr),
                                LmWStrCmp(ab, ad), LmWStrCmp(ab, empty), LmWStrNCmp(ab, ad, 1), LmWStrNCmp(ad, ab, 2)}),
              (std::vector<int>{0, -1, 1, -2, 'a', 0, 2}));
    uint16_t out[4] = {9, 9, 9, 9}, part[4] = {9, 9, 9, 9};
    EXPECT_EQ(LmWStrCpy(out, ab), out + 3);
    LmWStrNCpy(part, ad, 1);
    EXPECT_EQ(Units(out, out + 4), (Units{'a', 'b', 0, 9}));
    EXPECT_EQ(Units(part, part + 2), (Units{'a', 9}));
    EXPECT_EQ(std::bit_cast<uint64_t>(LmQuietNaN()), 0xFFF8000000000000ull);
    EXPECT_EQ(std::bit_cast<uint64_t>(LmNegativeInfinity()), 0xFFF0000000000000ull);

    const LmString octal("010"), hex("0x1A"), big("0x1FFFFFFFF"), none, wideHex = Wide(u"  0x10");
    {
        Defaults clear(0, 0);
        EXPECT_EQ(static_cast<int>(octal), 8);
        EXPECT_EQ(static_cast<short>(hex), 26);
        EXPECT_EQ(static_cast<int>(big), INT32_MAX);  // a 32-bit strtol saturates
        EXPECT_EQ(static_cast<long long>(big), 0x1FFFFFFFFll);
        EXPECT_EQ(static_cast<int>(none) + static_cast<double>(none) + static_cast<double>(LmString("abc")), 0.0);
        EXPECT_EQ(static_cast<double>(LmString("iNfInItY")), LmPositiveInfinity());
    }
    {
        Defaults decimal(1, 0);
        EXPECT_EQ(static_cast<int>(octal), 10);
        EXPECT_EQ(static_cast<long long>(hex), 0);               // atoll stops at the x
        EXPECT_EQ(static_cast<int>(LmString("4294967297")), 1);  // narrowed to 32 bits
        EXPECT_EQ(static_cast<int>(wideHex), 16);                // 16-bit text: the narrowed text with base 0
    }
    // {result, number}: the number is reset to 0 when the text starts with neither a digit nor '-'.
    using Got = std::pair<int, long long>;
    auto atol = [](const LmString& t) {
        int n = 7;
        return Got(t.Atol(n), n);
    };
    auto strtol = [](const LmString& t) {
        int n = 7;
        return Got(t.Strtol(n), n);
    };
    auto atoll = [](const LmString& t) {
        long long n = 7;
        return Got(t.Atoll(n), n);
    };
    auto strtoll = [](const LmString& t) {
        long long n = 7;
        return Got(t.Strtoll(n), n);
    };
    EXPECT_EQ(atol(LmString("-5")), Got(0, -5));
    EXPECT_EQ(atol(wideHex), Got(-1, 0));  // the first character is a blank
    EXPECT_EQ(atol(LmString("0x10")), Got(0, 0));
    EXPECT_EQ(strtol(LmString("0x10")), Got(0, 16));
    EXPECT_EQ(atol(Wide(u"077")), Got(0, 63));
    EXPECT_EQ(strtoll(LmString("-0x10")), Got(0, -16));
    EXPECT_EQ(atoll(LmString("12abc")), Got(0, 12));
    EXPECT_EQ(strtoll(none), Got(-1, 0));
}

TEST(StringOps, ComparisonFindAndPieces) {
    Defaults all(0, 0);  // every level, wildcards active
    const LmString abc("abc"), pattern("a*"), upper("ABC");
    EXPECT_LT(abc.Compare(LmString("abd")), 0);
    EXPECT_EQ((abc == pattern) + (abc == abc) + (abc < upper) + (upper >= abc), 4);  // the right operand is the pattern
    EXPECT_EQ(pattern == abc, 0);
    EXPECT_NE(abc != upper, 0);
    EXPECT_EQ(abc.Compare(upper, -1, LM_CMP_IGNORE_CASE), 0);
    LmString german("abc");
    german.SetLanguage(LM_LANGUAGE_GERMAN);
    EXPECT_EQ(abc.EqualsIgnoreLanguage(german) * 2 + abc.EqualsIgnoreLanguage(upper), 2);

    const LmString s("abcabc"), wide = Wide(u"abcabc");
    const struct {
        const char* pattern;
        uint16_t start;
        unsigned short option;
        short expected;
    } cases[] = {{"bc", 0, LM_CMP_DEFAULT, 1},
                 {"bc", 2, LM_CMP_DEFAULT, 4},
                 {"bcd", 4, LM_CMP_DEFAULT, -1},
                 {"ca", 0, 0, 2},  // with the appended asterisk "ca*" matches a prefix of the rest
                 {"CA", 0, LM_CMP_IGNORE_CASE, 2},
                 {"a?c", 1, 0, 3},
                 {"a?c", 0, LM_CMP_NO_WILDCARD, -1},  // the question mark is a plain character
                 {"c*b", 0, LM_CMP_DEFAULT, 2},       // default wildcards read within three characters
                 {"", 2, LM_CMP_DEFAULT, 2},
                 {"x", 7, 0, -1}};
    for (const auto& c : cases) {
        EXPECT_EQ(s.Find(LmString(c.pattern), c.start, c.option), c.expected) << c.pattern << " " << c.start;
        EXPECT_EQ(wide.Find(LmString(c.pattern), c.start, c.option), c.expected) << "16-bit " << c.pattern;
    }
    EXPECT_EQ(s.Find('c'), 2);
    EXPECT_EQ(s.Find(static_cast<unsigned short>('c'), 3), 5);
    EXPECT_EQ(s.Find(static_cast<unsigned short>(0), 3), 3);  // a pattern without buffer matches at start
    EXPECT_EQ(s.SubStringPos(LmString("cab")), 2);
    EXPECT_EQ(LmString().Find(LmString("")) + LmString("").Find(LmString("")), -2);

    LmString p("abcdef");
    EXPECT_EQ(p[1].GetValue(), 'b');
    EXPECT_EQ(p[6].IsPointerForm(), 1);  // the terminator can be reached
    EXPECT_EQ(p[7].GetCodeSet(), 253);   // beyond: the value-form zero character
    EXPECT_EQ(p[-1].IsPointerForm(), 0);
    p[0] = 'X';
    p.SetLanguage(LM_LANGUAGE_GERMAN);
    EXPECT_EQ(StateOf(p.Copy(2, 3)), (State{kLatin1, LM_LANGUAGE_GERMAN, Text("cde")}));
    EXPECT_STREQ(p.Copy(4).StrGet(), "ef");
    EXPECT_STREQ(p.Left(2).StrGet(), "Xb");
    EXPECT_STREQ(p.Left(99).StrGet(), "Xbcdef");
    EXPECT_STREQ(p.Right(2).StrGet(), "ef");
    EXPECT_STREQ(p.Right(99).StrGet(), "Xbcdef");
    EXPECT_EQ(p.Right(0).GetSize(), 1);
    const LmString w3 = Wide(u"abc");
    const LmString emptyRange = w3.Copy(3), noCount = w3.Copy(1, 0);
    EXPECT_EQ(std::pair(emptyRange.GetCodeSet(), emptyRange.GetSize()), std::pair(uint8_t{1}, uint16_t{1}));
    // Count 0 at a position below Len: an empty text in this string's code set.
    EXPECT_EQ(std::pair(noCount.GetCodeSet(), noCount.GetSize()), std::pair(uint8_t{253}, uint16_t{2}));
    EXPECT_EQ(UnitsOf(w3.Right(2)), (Units{'b', 'c'}));
}

TEST(StringOps, ChangesInPlaceTrimsAndSplit) {
    Defaults all(0, 0);
    LmString s("abcdef"), w = Wide(u"ab"), t("abc"), r("abcdef");
    EXPECT_STREQ(s.Cut(1, 2).StrGet(), "adef");
    EXPECT_STREQ(s.Cut(3, 100).StrGet(), "ade");
    EXPECT_EQ(s.Cut(0, 65535).GetSize(), 1);  // an empty text with a buffer of one width
    EXPECT_EQ(w.Cut(0, 65535).GetSize(), 2);
    EXPECT_STREQ(t.Insert(LmString("XY"), 3).StrGet(), "abcXY");  // at Len: appends
    EXPECT_STREQ(t.Insert(LmString("Q"), 6).StrGet(), "abcXY");
    EXPECT_STREQ(t.Insert(t, 1).StrGet(), "aabcXYbcXY");
    EXPECT_STREQ(r.Replace(LmString("XYZ"), 4).StrGet(), "abcdXY");  // never grows
    EXPECT_STREQ(r.Replace(LmString("Q"), 6).StrGet(), "abcdXY");
    EXPECT_STREQ(r.Replace(LmString("Q"), 0).StrGet(), "QbcdXY");
    LmString a("abca"), b("banana"), c("banana"), e("abc"), u = Wide(u"aba");
    EXPECT_STREQ(a.ReplaceAll(LmString("a"), LmString("aa")).StrGet(), "aabcaa");  // resumes behind "aa"
    EXPECT_STREQ(b.ReplaceAll('a', '\0').StrGet(), "bnn");
    EXPECT_STREQ(c.ReplaceAll(LmString("an"), LmString("AN"), 2).StrGet(), "banANa");
    EXPECT_STREQ(e.ReplaceAll(LmString(""), LmString("x")).StrGet(), "abc");
    EXPECT_EQ(UnitsOf(u.ReplaceAll(static_cast<unsigned short>('a'), static_cast<unsigned short>(0x263A))),
              (Units{0x263A, 'b', 0x263A}));
    {
        Defaults ignoreCase(0, LM_CMP_IGNORE_CASE);
        LmString d("bAnana");
        EXPECT_STREQ(d.ReplaceAll(LmString("an"), LmString("x")).StrGet(), "bxxa");
    }
    LmString x("ab"), y("ab"), v = Wide(u"ab");
    EXPECT_STREQ(x.Expand(5, '.').StrGet(), "ab...");
    EXPECT_STREQ(x.Expand(1, '.').StrGet(), "ab...");
    EXPECT_EQ(StateOf(y.Expand(3, static_cast<unsigned short>(0xE9))), (State{kLatin1, 1, Text("ab\xE9")}));
    EXPECT_STREQ(y.Fill(3, 'z').StrGet(), "zzz");
    EXPECT_EQ(y.Fill(0, 'z').GetSize(), 1);
    EXPECT_EQ(UnitsOf(v.Fill(2, static_cast<unsigned short>(0x263A))), (Units{0x263A, 0x263A}));

    LmString l("   "), rt("   "), both("  a b  "), wt = Wide(u"  x  "), inner("a b");
    EXPECT_EQ(l.LeftTrim().GetSize(), 1);
    EXPECT_STREQ(rt.RightTrim().StrGet(), " ");  // the first character is never examined
    EXPECT_STREQ(both.Trim().StrGet(), "a b");
    EXPECT_EQ(UnitsOf(wt.Trim()), (Units{'x'}));
    // A buffer larger than its text is trimmed from the buffer's end: the walk passes
    // the two zeros and stops at b, keeping Len + 1 - 2.
    inner.Expand(4, '\0');
    EXPECT_EQ(inner.GetSize(), 5);
    EXPECT_STREQ(inner.RightTrim().StrGet(), "a ");

    auto split = [](const char* list, const char* separator) {
        LmString text(list), item;
        std::vector<std::string> items;
        unsigned short position = 0;
        int rc;
        while ((rc = LmSplitList(text, item, LmString(separator), position)) == 0) items.push_back(item.StrGet());
        EXPECT_EQ(rc, LM_ERR_BAD_POSITION);
        return items;
    };
    EXPECT_EQ(split(",a, b ,,c", ","), (std::vector<std::string>{"a", "b", "", "c"}));
    EXPECT_EQ(split("a::b:c", "::"), (std::vector<std::string>{"a", ":b:c"}));  // one character skipped
    EXPECT_EQ(split(nullptr, ","), std::vector<std::string>{});                 // no buffer
}

}  // namespace
