// LmString: the three states of nothing, construction, assignment, appending,
// disposal, the code set changes, the statics and case.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <tuple>
#include <vector>

#include "lumotypes.h"

namespace {

using Bytes = std::vector<uint8_t>;
using State = std::tuple<int, int, Bytes>;  // code set, language, the buffer

// The whole buffer, terminator and anything behind an inner zero included; its length is the size.
Bytes BufferOf(const LmString& s) { return Bytes(s.StrGet(), s.StrGet() + s.GetSize()); }
State StateOf(const LmString& s) { return {s.GetCodeSet(), s.GetLanguage(), BufferOf(s)}; }
Bytes Text(const char* text) { return Bytes(text, text + std::strlen(text) + 1); }  // terminator included

constexpr unsigned char kLatin1 = 1, kLatin9 = 3, kUnicode = 253;
constexpr uint8_t kSub8 = 0x1A;  // what a 1-byte code set holds for a character it lacks
const unsigned short kWide[] = {0xE9, 0x263A, 0x42, 0};
const Bytes kWideBytes{0xE9, 0, 0x3A, 0x26, 0x42, 0, 0, 0};

TEST(StringNothing, ThreeStatesStayDistinct) {
    const unsigned short wideEmpty[] = {0};
    LmString none, empty(""), empty16(wideEmpty), null("abc");
    EXPECT_EQ(null.SetNullValue(), 0);
    EXPECT_EQ(StateOf(none), (State{1, 1, {}}));
    EXPECT_EQ(StateOf(empty), (State{1, 1, {0}}));
    EXPECT_EQ(StateOf(empty16), (State{kUnicode, 1, {0, 0}}));
    EXPECT_EQ(StateOf(null), (State{0, LM_LANGUAGE_NULL, {}}));
    // Without buffer StrGet is the one shared empty text, long enough for a 16-bit one.
    EXPECT_EQ(none.StrGet(), LmString::EmptyString().StrGet());
    EXPECT_EQ(null.StrGet(), none.StrGet());
    EXPECT_NE(empty.StrGet(), none.StrGet());
    EXPECT_EQ(none.StrGet()[0] | none.StrGet()[1], 0);
    for (const LmString* s : {&none, &empty, &empty16, &null}) {
        EXPECT_EQ(s->Len(), 0);
        EXPECT_EQ(s->IsEmpty() + !*s, 2);
        EXPECT_EQ(s->IsNullValue(), s == &null ? 1 : 0);
    }
    // A stored null in order form is code set 254 with language 0; language 0 alone is not null.
    EXPECT_EQ(LmString(LM_CODESET_ORDER, 0).IsNullValue(), 1);
    EXPECT_EQ(LmString(LM_CODESET_ORDER, 1).IsNullValue(), 0);
    EXPECT_EQ(LmString(kLatin1, 0).IsNullValue(), 0);
    EXPECT_EQ(LmString(kUnicode, LM_LANGUAGE_NULL).IsNullValue(), 1);
    // The same questions through the type manager; the legacy record knows no null.
    LmString viaMgr("abc");
    const LmTypeMgr mgr, legacy(3);
    EXPECT_EQ(mgr.IsNullValue(LmSTRING_T, &viaMgr), 0);
    EXPECT_EQ(mgr.SetNullPtrGet(LmSTRING_T)(&viaMgr), 0);
    EXPECT_EQ(StateOf(viaMgr), (State{0, LM_LANGUAGE_NULL, {}}));
    EXPECT_EQ(mgr.IsNullValue(LmSTRING_T, &viaMgr), 1);
    EXPECT_EQ(legacy.IsNullValue(LmSTRING_T, &viaMgr), 0);
    EXPECT_EQ(legacy.SetNullPtrGet(LmSTRING_T), nullptr);
    const unsigned short highOnly[] = {0x0100, 0};
    EXPECT_EQ(LmString(highOnly).IsEmpty(), 0);  // the first 16-bit unit decides, not its low byte

    // Empty onto no buffer: the string moves to the state empty text.
    LmString a, c(kUnicode, 1);
    a += LmString();
    EXPECT_EQ(BufferOf(a), (Bytes{0}));
    c << '\0';  // appends nothing but still reallocates
    EXPECT_EQ(BufferOf(c), (Bytes{0, 0}));
    // The statics: no buffer with the labels at load, and an empty text in the 8-bit default.
    EXPECT_EQ(StateOf(LmString::EmptyString()), (State{1, 1, {}}));
    EXPECT_EQ(StateOf(LmString::EmptyValue()), (State{LmString::GetDefault8CodeSet(), 1, {0}}));
}

TEST(StringConstruct, CharactersTextsAndNumbers) {
    LmString::SetDefaultCodeSet(kUnicode);  // characters, texts and numbers take the 8- or 16-bit default
    const struct {
        LmString s;
        State state;
    } cases[] = {
        {LmString('x'), {1, 1, {'x', 0}}},
        {LmString(static_cast<unsigned char>(0xE9)), {1, 1, {0xE9, 0}}},
        {LmString('\0'), {1, 1, {}}},
        {LmString(static_cast<unsigned short>(0x263A)), {kUnicode, 1, {0x3A, 0x26, 0, 0}}},  // not a number
        {LmString(static_cast<unsigned short>(0)), {kUnicode, 1, {}}},
        {LmString(77, 9), {77, 9, {}}},  // the pair form takes its labels as they are
        {LmString(static_cast<const char*>(nullptr)), {1, 1, {}}},
        {LmString(static_cast<const unsigned short*>(nullptr)), {kUnicode, 1, {}}},
        // Counted forms: n characters, 65535 to the terminator, 0 no buffer.
        {LmString("abcdef", 3), {1, 1, Text("abc")}},
        {LmString("abc", 65535), {1, 1, Text("abc")}},
        {LmString("abc", 0), {1, 1, {}}},
        {LmString(kWide), {kUnicode, 1, kWideBytes}},
        {LmString(kWide, 2), {kUnicode, 1, {0xE9, 0, 0x3A, 0x26, 0, 0}}},
        {LmString(static_cast<short>(-12)), {1, 1, Text("-12")}},
        {LmString(std::numeric_limits<int>::min()), {1, 1, Text("-2147483648")}},
        {LmString(4294967295u), {1, 1, Text("4294967295")}},
        {LmString(std::numeric_limits<int64_t>::min()), {1, 1, Text("-9223372036854775808")}},
        {LmString(std::numeric_limits<uint64_t>::max()), {1, 1, Text("18446744073709551615")}},
        {LmString(0.1), {1, 1, Text("0.10000000000000001")}},
        {LmString(-0.0), {1, 1, Text("-0")}},
        {LmString(std::numeric_limits<double>::infinity()), {1, 1, Text("Infinity")}},
        {LmString(-std::numeric_limits<double>::infinity()), {1, 1, Text("-Infinity")}},
        {LmString(-std::nan("")), {1, 1, Text("NaN")}},
    };
    LmString::SetDefaultCodeSet(kLatin1);
    for (const auto& c : cases) EXPECT_EQ(StateOf(c.s), c.state);
    // An inner zero stays in the buffer and ends Len; a copy measures by Len and drops what is behind it.
    const LmString inner("ab\0cd", 5);
    EXPECT_EQ(inner.Len(), 2);
    EXPECT_EQ(BufferOf(inner), (Bytes{'a', 'b', 0, 'c', 'd', 0}));
    EXPECT_EQ(BufferOf(LmString(inner)), (Bytes{'a', 'b', 0}));
    EXPECT_EQ(LmString(kWide).Len(), 3);
}

TEST(StringConstruct, LabelsFollowTheDefaults) {
    LmString::SetDefaultLanguage(5);
    LmString::SetDefaultCodeSet(kLatin9);
    EXPECT_EQ(LmLanguageContext::GetDefaultLanguage(), 5);
    LmString none;
    EXPECT_EQ(StateOf(none), (State{kLatin9, 5, {}}));
    EXPECT_EQ(StateOf(LmString("a")), (State{kLatin1, 5, {'a', 0}}));  // texts take the 8-bit default
    none.SetLanguage(9);
    none.Init();
    EXPECT_EQ(StateOf(none), (State{kLatin9, 5, {}}));
    LmString::SetDefaultLanguage(1);
    LmString::SetDefaultCodeSet(kLatin1);
    LmString::SetDefaultCmpOp(0x20);
    EXPECT_EQ(LmLanguageContext::GetDefaultCmpOp(), 0x20);
    LmString::SetDefaultCmpOp(0);
    EXPECT_EQ(LmString::GetDefault16CodeSet(), kUnicode);

    // Copies keep the source's labels, with or without buffer; so does assignment.
    LmString w(kWide), a("abc");
    w.SetLanguage(7);
    const LmString copy(w);
    EXPECT_EQ(StateOf(copy), (State{kUnicode, 7, kWideBytes}));
    EXPECT_NE(copy.StrGet(), w.StrGet());
    const LmString bare(kUnicode, 7);
    EXPECT_EQ(StateOf(LmString(bare)), (State{kUnicode, 7, {}}));
    const char* before = a.StrGet();
    LmString& alias = a;
    a = alias;  // self-assignment does nothing
    EXPECT_EQ(a.StrGet(), before);
    EXPECT_STREQ(a.StrGet(), "abc");
    a = w;
    EXPECT_EQ(StateOf(a), (State{kUnicode, 7, kWideBytes}));
    a = LmString(kUnicode, 3);
    EXPECT_EQ(StateOf(a), (State{kUnicode, 3, {}}));
    // A plain text relabels the string.
    a = "xy";
    EXPECT_EQ(StateOf(a), (State{kLatin1, 1, {'x', 'y', 0}}));
    w = kWide;
    EXPECT_EQ(StateOf(w), (State{kUnicode, 1, kWideBytes}));
    w = static_cast<const char*>(nullptr);
    EXPECT_EQ(StateOf(w), (State{kLatin1, 1, {}}));
    LmString own("abcd");
    own = own.StrGet() + 2;  // the source may be this string's own text
    EXPECT_EQ(BufferOf(own), (Bytes{'c', 'd', 0}));
}

TEST(StringAppend, SameAndOtherCodeSets) {
    LmString a("ab");
    a += LmString("cd");
    a += a;
    EXPECT_EQ(BufferOf(a), (Bytes{'a', 'b', 'c', 'd', 'a', 'b', 'c', 'd', 0}));
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
    EXPECT_EQ(BufferOf(n), (Bytes{'6', '5', 0}));
    // operator+ takes the left side's labels and converts the right side.
    LmString left(kWide + 1, 1);
    left.SetLanguage(6);
    EXPECT_EQ(StateOf(left + LmString("\xE9")), (State{kUnicode, 6, {0x3A, 0x26, 0xE9, 0, 0, 0}}));
}

TEST(StringDispose, DestroyInitDestruct) {
    LmString s(kWide), d("abc");
    s.SetLanguage(3);
    s.Destroy();
    d.d_deactivate();
    EXPECT_EQ(StateOf(s), (State{0, 0, {}}));
    EXPECT_EQ(StateOf(d), (State{0, 0, {}}));
    EXPECT_EQ(s.StrGet()[0], 0);
    // What follows is a native string: raw bytes are taken as they come.
    LmStringAssignRaw(s, "\xE9z", s.GetCodeSet(), 2, LmFormatLittle);
    EXPECT_EQ(BufferOf(s), (Bytes{0xE9, 'z', 0}));

    // Destruct is a move; the source keeps its labels without buffer.
    LmString from(kWide), to("old");
    from.SetLanguage(8);
    const char* text = from.StrGet();
    to.Destruct(from);
    EXPECT_EQ(to.StrGet(), text);
    EXPECT_EQ(StateOf(to), (State{kUnicode, 8, kWideBytes}));
    EXPECT_EQ(StateOf(from), (State{kUnicode, 8, {}}));
    EXPECT_EQ(from.IsEmpty(), 1);
    to.Destruct(to);
    EXPECT_EQ(to.StrGet(), text);
}

TEST(StringCodeSet, ThreeChangesDiffer) {
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
    EXPECT_EQ(e.SetCodeSetCode(kLatin9), LM_OK);
    EXPECT_EQ(e.SetCodeSetCode(kUnicode), LM_ERR_BAD_ARGUMENT);
    EXPECT_EQ(StateOf(e), (State{kLatin9, 1, {0xA4, 0}}));
    EXPECT_EQ(f.SetCodeSetCode(230), LM_OK);
    EXPECT_EQ(f.GetCodeSet(), 230);

    // CopyMapped refuses its own string; it keeps a large enough buffer, cleared behind the text.
    EXPECT_EQ(e.CopyMapped(e, kUnicode, -1), LM_ERR_BAD_ARGUMENT);
    EXPECT_EQ(e.GetCodeSet(), kLatin9);
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
}

TEST(StringCase, UpperAndLower) {
    LmString s("ma\xDFstab"), accents("\xC0Q\xE9!1"), native("ab\xE9"), none;
    const unsigned short wide[] = {0xDF, 0x101, 0};  // sharp s, a with macron
    LmString w(wide);
    EXPECT_EQ(StateOf(s.ToUpper()), (State{kLatin1, 1, {'M', 'A', 'S', 'S', 'S', 'T', 'A', 'B', 0}}));
    EXPECT_STREQ(s.ToLower().StrGet(), "massstab");
    EXPECT_EQ(BufferOf(accents.ToLower()), (Bytes{0xE0, 'q', 0xE9, '!', '1', 0}));
    EXPECT_EQ(BufferOf(accents.ToUpper()), (Bytes{0xC0, 'Q', 0xC9, '!', '1', 0}));
    EXPECT_EQ(BufferOf(w.ToUpper()), (Bytes{'S', 0, 'S', 0, 0x00, 0x01, 0, 0}));
    native.SetCodeSet(LM_CODESET_NATIVE);  // code set 0 goes by the C library: only ASCII letters change
    EXPECT_EQ(BufferOf(native.ToUpper()), (Bytes{'A', 'B', 0xE9, 0}));
    EXPECT_EQ(none.ToUpper().GetSize(), 0);

    // Half the limit of sharp s doubles to exactly the limit. Beyond it the doubled
    // size wraps in 16 bits: 2 * 40001 = 80002 becomes 14466, and the text is cut there.
    LmString half(std::string(32765, '\xDF').c_str()), more(std::string(40000, '\xDF').c_str());
    EXPECT_EQ(half.ToUpper().Len(), 65530);
    EXPECT_EQ(half.GetSize(), 65531);
    EXPECT_EQ(half.StrGet()[65529], 'S');
    EXPECT_EQ(more.ToUpper().Len(), 14465);
    EXPECT_EQ(more.GetSize(), 14466);
}

}  // namespace
