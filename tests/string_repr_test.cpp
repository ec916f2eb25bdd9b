// LmString: the three states of nothing, construction, assignment, appending,
// disposal, the code set changes and the module statics.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "lumotypes.h"

namespace {

using Bytes = std::vector<uint8_t>;

// The whole buffer, terminator and anything behind an inner zero included.
Bytes BufferOf(const LmString& s) {
    const auto* p = reinterpret_cast<const uint8_t*>(s.StrGet());
    return Bytes(p, p + s.GetSize());
}

std::string TextOf(const LmString& s) { return std::string(s.StrGet()); }

// The 16-bit units before the terminator.
std::vector<uint16_t> UnitsOf(const LmString& s) {
    std::vector<uint16_t> units(s.Len());
    std::memcpy(units.data(), s.StrGet(), units.size() * 2);
    return units;
}

// The code sets of the i18n library: 1 Latin-1 (native), 3 Latin-9, 253 Unicode.
constexpr unsigned char kLatin1 = 1;
constexpr unsigned char kLatin9 = 3;
constexpr unsigned char kUnicode = 253;
constexpr uint8_t kSub8 = 0x1A;  // what a 1-byte code set holds for a character it lacks

TEST(StringNothing, ThreeStatesStayDistinct) {
    // No buffer: the default labels, the shared empty text.
    LmString none;
    EXPECT_EQ(none.GetSize(), 0);
    EXPECT_EQ(none.GetCodeSet(), 1);
    EXPECT_EQ(none.GetLanguage(), 1);
    ASSERT_NE(none.StrGet(), nullptr);
    EXPECT_EQ(none.StrGet()[0], 0);
    EXPECT_EQ(none.StrGet()[1], 0);  // also an empty 16-bit text
    EXPECT_EQ(none.Len(), 0);
    EXPECT_EQ(none.IsEmpty(), 1);
    EXPECT_EQ(!none, 1);
    EXPECT_EQ(none.IsNullValue(), 0);

    // Empty text: one terminator of the character's width.
    LmString empty("");
    EXPECT_EQ(BufferOf(empty), (Bytes{0}));
    EXPECT_NE(empty.StrGet(), none.StrGet());
    EXPECT_EQ(empty.IsEmpty(), 1);
    EXPECT_EQ(empty.IsNullValue(), 0);
    const unsigned short wideEmpty[] = {0};
    LmString empty16(wideEmpty);
    EXPECT_EQ(empty16.GetCodeSet(), kUnicode);
    EXPECT_EQ(BufferOf(empty16), (Bytes{0, 0}));
    EXPECT_EQ(empty16.IsEmpty(), 1);

    // Null value: set on a string with text; the buffer goes.
    LmString null("abc");
    EXPECT_EQ(null.SetNullValue(), 0);
    EXPECT_EQ(null.GetSize(), 0);
    EXPECT_EQ(null.GetCodeSet(), 0);
    EXPECT_EQ(null.GetLanguage(), LM_LANGUAGE_NULL);
    EXPECT_EQ(null.IsEmpty(), 1);
    EXPECT_EQ(null.IsNullValue(), 1);
    EXPECT_EQ(null.StrGet(), none.StrGet());

    // A stored null in order form: code set 254, language 0. Language 0 alone is not null.
    EXPECT_EQ(LmString(LM_CODESET_ORDER, 0).IsNullValue(), 1);
    EXPECT_EQ(LmString(LM_CODESET_ORDER, 1).IsNullValue(), 0);
    EXPECT_EQ(LmString(kLatin1, 0).IsNullValue(), 0);
    EXPECT_EQ(LmString(kUnicode, LM_LANGUAGE_NULL).IsNullValue(), 1);

    // A null pointer gives no buffer, an empty text gives one.
    EXPECT_EQ(LmString(static_cast<const char*>(nullptr)).GetSize(), 0);
    EXPECT_EQ(LmString(static_cast<const unsigned short*>(nullptr)).GetSize(), 0);

    // A 2-byte string whose first unit is zero is empty; one with a non-zero
    // first unit whose low byte is zero is not.
    const unsigned short highOnly[] = {0x0100, 0};
    EXPECT_EQ(LmString(highOnly).IsEmpty(), 0);
}

TEST(StringNothing, AppendingEmptyToNoBufferMakesEmptyText) {
    LmString a;
    const LmString b;
    ASSERT_EQ(a.GetSize(), 0);
    a += b;
    EXPECT_EQ(BufferOf(a), (Bytes{0}));
    EXPECT_EQ(a.IsEmpty(), 1);

    // The zero character appends nothing but still gives a buffer.
    LmString c(kUnicode, 1);
    c << '\0';
    EXPECT_EQ(BufferOf(c), (Bytes{0, 0}));
}

TEST(StringConstruct, CharactersAndTexts) {
    LmString c('x');
    EXPECT_EQ(BufferOf(c), (Bytes{'x', 0}));
    EXPECT_EQ(c.GetCodeSet(), kLatin1);
    EXPECT_EQ(LmString('\0').GetSize(), 0);
    EXPECT_EQ(BufferOf(LmString(static_cast<unsigned char>(0xE9))), (Bytes{0xE9, 0}));

    // unsigned short is one 16-bit character, not a number.
    LmString w(static_cast<unsigned short>(0x263A));
    EXPECT_EQ(w.GetCodeSet(), kUnicode);
    EXPECT_EQ(BufferOf(w), (Bytes{0x3A, 0x26, 0, 0}));
    EXPECT_EQ(LmString(static_cast<unsigned short>(0)).GetSize(), 0);

    LmString t("hello");
    EXPECT_EQ(t.GetSize(), 6);
    EXPECT_EQ(t.Len(), 5);
    EXPECT_EQ(TextOf(t), "hello");

    // The pair form takes its labels as they are and builds no text.
    LmString pair(77, 9);
    EXPECT_EQ(pair.GetCodeSet(), 77);
    EXPECT_EQ(pair.GetLanguage(), 9);
    EXPECT_EQ(pair.GetSize(), 0);

    // Counted forms: n characters, 65535 to the terminator, 0 no buffer.
    EXPECT_EQ(BufferOf(LmString("abcdef", 3)), (Bytes{'a', 'b', 'c', 0}));
    EXPECT_EQ(BufferOf(LmString("abc", 65535)), (Bytes{'a', 'b', 'c', 0}));
    EXPECT_EQ(LmString("abc", 0).GetSize(), 0);

    // A counted source with an inner zero stays whole: Len stops at the zero, size does not.
    LmString inner("ab\0cd", 5);
    EXPECT_EQ(inner.Len(), 2);
    EXPECT_EQ(BufferOf(inner), (Bytes{'a', 'b', 0, 'c', 'd', 0}));
    // A copy measures the text with its length and drops what is behind the zero.
    LmString innerCopy(inner);
    EXPECT_EQ(BufferOf(innerCopy), (Bytes{'a', 'b', 0}));

    const unsigned short wide[] = {0x41, 0x263A, 0x42, 0};
    LmString w3(wide);
    EXPECT_EQ(w3.Len(), 3);
    EXPECT_EQ(w3.GetSize(), 8);
    EXPECT_EQ(LmString(wide, 2).Len(), 2);
    EXPECT_EQ(BufferOf(LmString(wide, 2)), (Bytes{0x41, 0, 0x3A, 0x26, 0, 0}));
}

TEST(StringConstruct, Numbers) {
    EXPECT_EQ(TextOf(LmString(static_cast<short>(-12))), "-12");
    EXPECT_EQ(TextOf(LmString(std::numeric_limits<int>::min())), "-2147483648");
    EXPECT_EQ(TextOf(LmString(4294967295u)), "4294967295");
    EXPECT_EQ(TextOf(LmString(std::numeric_limits<int64_t>::min())), "-9223372036854775808");
    EXPECT_EQ(TextOf(LmString(std::numeric_limits<uint64_t>::max())), "18446744073709551615");
    EXPECT_EQ(TextOf(LmString(1.5)), "1.5");
    EXPECT_EQ(TextOf(LmString(0.1)), "0.10000000000000001");
    EXPECT_EQ(TextOf(LmString(-0.0)), "-0");
    EXPECT_EQ(TextOf(LmString(std::numeric_limits<double>::infinity())), "Infinity");
    EXPECT_EQ(TextOf(LmString(-std::numeric_limits<double>::infinity())), "-Infinity");
    EXPECT_EQ(TextOf(LmString(std::nan(""))), "NaN");
    EXPECT_EQ(TextOf(LmString(-std::nan(""))), "NaN");
    // Numbers are 1-byte texts whatever the default code set is.
    EXPECT_EQ(LmString(7).GetCodeSet(), kLatin1);
    EXPECT_EQ(LmString(7).GetSize(), 2);
}

TEST(StringConstruct, LabelsFollowTheDefaults) {
    const unsigned char language = LmString::GetDefaultLanguage();
    const unsigned char codeSet = LmString::GetDefaultCodeSet();
    LmString::SetDefaultLanguage(5);
    LmString::SetDefaultCodeSet(kLatin9);
    EXPECT_EQ(LmLanguageContext::GetDefaultLanguage(), 5);
    EXPECT_EQ(LmLanguageContext::GetDefaultCodeSet(), kLatin9);
    LmString none;
    EXPECT_EQ(none.GetCodeSet(), kLatin9);
    EXPECT_EQ(none.GetLanguage(), 5);
    // Texts and characters take the 8-bit default, not the default code set.
    EXPECT_EQ(LmString("a").GetCodeSet(), kLatin1);
    EXPECT_EQ(LmString("a").GetLanguage(), 5);
    none.Init();
    EXPECT_EQ(none.GetCodeSet(), kLatin9);
    LmString::SetDefaultLanguage(language);
    LmString::SetDefaultCodeSet(codeSet);

    const unsigned short option = LmString::GetDefaultCmpOp();
    LmString::SetDefaultCmpOp(0x20);
    EXPECT_EQ(LmLanguageContext::GetDefaultCmpOp(), 0x20);
    LmString::SetDefaultCmpOp(option);

    EXPECT_EQ(LmString::GetDefault8CodeSet(), LmLanguageContext::GetDefault8CodeSet());
    EXPECT_EQ(LmString::GetDefault16CodeSet(), kUnicode);
}

TEST(StringConstruct, CopyKeepsLabels) {
    const unsigned short wide[] = {0x263A, 0};
    LmString w(wide);
    w.SetLanguage(7);
    LmString copy(w);
    EXPECT_EQ(copy.GetCodeSet(), kUnicode);
    EXPECT_EQ(copy.GetLanguage(), 7);
    EXPECT_EQ(BufferOf(copy), BufferOf(w));
    EXPECT_NE(copy.StrGet(), w.StrGet());

    LmString bare(kUnicode, 7);
    LmString bareCopy(bare);
    EXPECT_EQ(bareCopy.GetSize(), 0);
    EXPECT_EQ(bareCopy.GetCodeSet(), kUnicode);
    EXPECT_EQ(bareCopy.GetLanguage(), 7);
}

TEST(StringAssign, CopyAndPlainTexts) {
    LmString a("abc");
    const char* before = a.StrGet();
    LmString& alias = a;
    a = alias;  // self-assignment does nothing
    EXPECT_EQ(a.StrGet(), before);
    EXPECT_EQ(TextOf(a), "abc");

    const unsigned short wide[] = {0x41, 0x263A, 0};
    LmString w(wide);
    w.SetLanguage(9);
    a = w;
    EXPECT_EQ(a.GetCodeSet(), kUnicode);
    EXPECT_EQ(a.GetLanguage(), 9);
    EXPECT_EQ(UnitsOf(a), (std::vector<uint16_t>{0x41, 0x263A}));

    // A plain text relabels the string.
    a = "xy";
    EXPECT_EQ(a.GetCodeSet(), kLatin1);
    EXPECT_EQ(a.GetLanguage(), 1);
    EXPECT_EQ(BufferOf(a), (Bytes{'x', 'y', 0}));
    a = wide;
    EXPECT_EQ(a.GetCodeSet(), kUnicode);
    EXPECT_EQ(a.GetLanguage(), 1);
    EXPECT_EQ(a.Len(), 2);
    a = static_cast<const char*>(nullptr);
    EXPECT_EQ(a.GetSize(), 0);
    EXPECT_EQ(a.GetCodeSet(), kLatin1);

    // The source may be this string's own text.
    LmString own("abcd");
    own = own.StrGet() + 2;
    EXPECT_EQ(BufferOf(own), (Bytes{'c', 'd', 0}));

    // Assigning a string without buffer leaves none.
    LmString full("abc");
    full = LmString(kUnicode, 3);
    EXPECT_EQ(full.GetSize(), 0);
    EXPECT_EQ(full.GetCodeSet(), kUnicode);
    EXPECT_EQ(full.GetLanguage(), 3);
}

TEST(StringAppend, SameAndOtherCodeSets) {
    LmString a("ab");
    a += LmString("cd");
    EXPECT_EQ(BufferOf(a), (Bytes{'a', 'b', 'c', 'd', 0}));
    a += a;  // its own text
    EXPECT_EQ(TextOf(a), "abcdabcd");

    // 16-bit onto 1-byte: converted through Unicode; a character the code set
    // lacks becomes the substitute. The left side keeps its labels.
    LmString narrow("A");
    narrow.SetLanguage(4);
    const unsigned short wide[] = {0xE9, 0x263A, 0x42, 0};
    narrow += LmString(wide);
    EXPECT_EQ(narrow.GetCodeSet(), kLatin1);
    EXPECT_EQ(narrow.GetLanguage(), 4);
    EXPECT_EQ(BufferOf(narrow), (Bytes{'A', 0xE9, kSub8, 'B', 0}));

    // 1-byte onto 16-bit: every byte becomes its Unicode unit.
    LmString w(wide, 1);
    w += LmString("\xC4z");
    EXPECT_EQ(UnitsOf(w), (std::vector<uint16_t>{0xE9, 0xC4, 'z'}));
    EXPECT_EQ(w.GetSize(), 8);

    // Code set 0 onto a 2-byte string is converted from the native code set.
    LmString nativeText("\xE9!");
    nativeText.SetCodeSet(LM_CODESET_NATIVE);
    LmString w2(kUnicode, 1);
    w2 += nativeText;
    EXPECT_EQ(UnitsOf(w2), (std::vector<uint16_t>{0xE9, '!'}));

    // Code set 0 onto a 1-byte string of another code set is copied unchanged;
    // the same byte labelled Latin-1 is mapped (the currency sign is not in Latin-9).
    LmString euro("x");
    euro.SetCodeSet(kLatin9);
    LmString nativeCurrency("\xA4");
    nativeCurrency.SetCodeSet(LM_CODESET_NATIVE);
    euro += nativeCurrency;
    euro += LmString("\xA4\xE9");
    EXPECT_EQ(BufferOf(euro), (Bytes{'x', 0xA4, kSub8, 0xE9, 0}));
}

TEST(StringAppend, ShiftForms) {
    LmString s("n=");
    s << 42 << ',' << static_cast<short>(-3) << ',' << 7u << ',' << static_cast<int64_t>(-5) << ','
      << static_cast<uint64_t>(6) << ',' << 1.5 << ',' << 0.1f << ',' << "end";
    EXPECT_EQ(TextOf(s), "n=42,-3,7,-5,6,1.5,0.10000000149011612,end");

    const unsigned short wide[] = {0x263A, 0};
    LmString t("");
    t << wide << LmString("!");
    EXPECT_EQ(BufferOf(t), (Bytes{kSub8, '!', 0}));

    // unsigned short: a character on a 2-byte string, a number on a 1-byte one.
    LmString w(kUnicode, 1);
    w << static_cast<unsigned short>(65);
    EXPECT_EQ(UnitsOf(w), (std::vector<uint16_t>{'A'}));
    LmString n("");
    n << static_cast<unsigned short>(65);
    EXPECT_EQ(TextOf(n), "65");

    // operator+ takes the left side's labels and converts the right side.
    LmString left(wide);
    left.SetLanguage(6);
    LmString sum = left + LmString("\xE9");
    EXPECT_EQ(sum.GetCodeSet(), kUnicode);
    EXPECT_EQ(sum.GetLanguage(), 6);
    EXPECT_EQ(UnitsOf(sum), (std::vector<uint16_t>{0x263A, 0xE9}));
    EXPECT_EQ(TextOf(LmString("ab") + LmString("cd")), "abcd");
}

TEST(StringDispose, DestroyInitDestruct) {
    const unsigned short wide[] = {0x41, 0};
    LmString s(wide);
    s.SetLanguage(3);
    s.Destroy();
    EXPECT_EQ(s.GetSize(), 0);
    EXPECT_EQ(s.GetCodeSet(), 0);
    EXPECT_EQ(s.GetLanguage(), 0);
    EXPECT_EQ(s.StrGet()[0], 0);
    // What follows is a native string: raw bytes are taken as they come.
    LmStringAssignRaw(s, "\xE9z", s.GetCodeSet(), 2, LmFormatLittle);
    EXPECT_EQ(s.GetCodeSet(), LM_CODESET_NATIVE);
    EXPECT_EQ(BufferOf(s), (Bytes{0xE9, 'z', 0}));

    LmString d("abc");
    d.d_deactivate();
    EXPECT_EQ(d.GetSize(), 0);
    EXPECT_EQ(d.GetCodeSet(), 0);

    // Destruct is a move; the source keeps its labels without buffer.
    LmString from(wide);
    from.SetLanguage(8);
    const char* text = from.StrGet();
    LmString to("old");
    to.Destruct(from);
    EXPECT_EQ(to.StrGet(), text);
    EXPECT_EQ(to.GetCodeSet(), kUnicode);
    EXPECT_EQ(to.GetLanguage(), 8);
    EXPECT_EQ(to.GetSize(), 4);
    EXPECT_EQ(from.GetSize(), 0);
    EXPECT_EQ(from.GetCodeSet(), kUnicode);
    EXPECT_EQ(from.GetLanguage(), 8);
    EXPECT_EQ(from.IsEmpty(), 1);
    to.Destruct(to);
    EXPECT_EQ(to.StrGet(), text);
}

TEST(StringCodeSet, ThreeChangesDiffer) {
    // SetCodeSet between two 1-byte code sets changes no byte.
    LmString a("\xE9\xA4");
    a.SetCodeSet(kLatin9);
    EXPECT_EQ(a.GetCodeSet(), kLatin9);
    EXPECT_EQ(BufferOf(a), (Bytes{0xE9, 0xA4, 0}));
    // MapToCodeSet between the same two maps every character.
    LmString b("\xE9\xA4");
    EXPECT_EQ(b.MapToCodeSet(kLatin9), LM_OK);
    EXPECT_EQ(b.GetCodeSet(), kLatin9);
    EXPECT_EQ(BufferOf(b), (Bytes{0xE9, kSub8, 0}));
    EXPECT_EQ(b.MapToCodeSet(kLatin9), LM_OK);
    EXPECT_EQ(b.MapToCodeSet(LM_CODESET_NATIVE), LM_ERR_BAD_ARGUMENT);
    EXPECT_EQ(b.GetCodeSet(), kLatin9);

    // SetCodeSet to another width converts; size follows.
    LmString c("A\xE9");
    c.SetCodeSet(kUnicode);
    EXPECT_EQ(c.GetSize(), 6);
    EXPECT_EQ(UnitsOf(c), (std::vector<uint16_t>{'A', 0xE9}));
    // Back to 0 converts to the native code set, and the byte becomes 0.
    c.SetCodeSet(LM_CODESET_NATIVE);
    EXPECT_EQ(c.GetCodeSet(), 0);
    EXPECT_EQ(BufferOf(c), (Bytes{'A', 0xE9, 0}));
    // Without buffer only the byte changes.
    LmString d;
    d.SetCodeSet(kUnicode);
    EXPECT_EQ(d.GetCodeSet(), kUnicode);
    EXPECT_EQ(d.GetSize(), 0);

    // SetCodeSetCode relabels within one width only.
    LmString e("\xA4");
    EXPECT_EQ(e.SetCodeSetCode(kLatin9), LM_OK);
    EXPECT_EQ(e.GetCodeSet(), kLatin9);
    EXPECT_EQ(BufferOf(e), (Bytes{0xA4, 0}));
    EXPECT_EQ(e.SetCodeSetCode(kUnicode), LM_ERR_BAD_ARGUMENT);
    EXPECT_EQ(e.GetCodeSet(), kLatin9);
    LmString f(kUnicode, 1);
    EXPECT_EQ(f.SetCodeSetCode(230), LM_OK);
    EXPECT_EQ(f.GetCodeSet(), 230);
}

TEST(StringCodeSet, CopyMapped) {
    LmString s("abc");
    EXPECT_EQ(s.CopyMapped(s, kUnicode, -1), LM_ERR_BAD_ARGUMENT);
    EXPECT_EQ(s.GetCodeSet(), kLatin1);

    LmString src("\xE9\xA4z");
    src.SetLanguage(4);
    LmString target("a much longer text than the source");
    const char* kept = target.StrGet();
    const uint16_t keptSize = target.GetSize();
    EXPECT_EQ(target.CopyMapped(src, kLatin9, -1), 3);
    EXPECT_EQ(target.StrGet(), kept);  // large enough: the buffer stays
    EXPECT_EQ(target.GetSize(), keptSize);
    EXPECT_EQ(target.GetCodeSet(), kLatin9);
    EXPECT_EQ(target.GetLanguage(), 4);
    EXPECT_EQ(target.Len(), 3);
    EXPECT_EQ(Bytes(target.StrGet(), target.StrGet() + 4), (Bytes{0xE9, kSub8, 'z', 0}));
    EXPECT_EQ(target.StrGet()[keptSize - 1], 0);  // nothing of the old text remains
    EXPECT_EQ(target.StrGet()[10], 0);

    LmString small("");
    EXPECT_EQ(small.CopyMapped(src, kUnicode, 2), 2);
    EXPECT_EQ(small.GetSize(), 6);  // replaced by a buffer of (2 + 1) * 2 bytes
    EXPECT_EQ(UnitsOf(small), (std::vector<uint16_t>{0xE9, 0xA4}));
}

TEST(StringStatics, EmptyStringAndEmptyValue) {
    LmString& e = LmString::EmptyString();
    EXPECT_EQ(e.GetSize(), 0);
    EXPECT_EQ(e.GetCodeSet(), 1);
    EXPECT_EQ(e.GetLanguage(), 1);
    EXPECT_EQ(&e, &LmString::EmptyString());
    const LmString& v = LmString::EmptyValue();
    EXPECT_EQ(BufferOf(v), (Bytes{0}));
    EXPECT_EQ(v.GetCodeSet(), LmString::GetDefault8CodeSet());
    EXPECT_EQ(v.GetLanguage(), 1);
    // Every string without buffer hands out the one shared empty text.
    EXPECT_EQ(LmString().StrGet(), e.StrGet());
}

TEST(StringCase, UpperAndLower) {
    LmString s(
        "stra\xDF"
        "e");
    s.ToUpper();
    EXPECT_EQ(TextOf(s), "STRASSE");
    EXPECT_EQ(s.GetSize(), 8);  // the distance the transform moved
    EXPECT_EQ(s.GetCodeSet(), kLatin1);
    s.ToLower();
    EXPECT_EQ(TextOf(s), "strasse");

    LmString accents(
        "\xC0"
        "B\xE9"
        "1!");
    accents.ToLower();
    EXPECT_EQ(BufferOf(accents), (Bytes{0xE0, 'b', 0xE9, '1', '!', 0}));
    accents.ToUpper();
    EXPECT_EQ(BufferOf(accents), (Bytes{0xC0, 'B', 0xC9, '1', '!', 0}));

    const unsigned short wide[] = {0xDF, 0x101, 0};  // sharp s, a with macron
    LmString w(wide);
    w.ToUpper();
    EXPECT_EQ(UnitsOf(w), (std::vector<uint16_t>{'S', 'S', 0x100}));
    EXPECT_EQ(w.GetSize(), 8);

    // Code set 0 goes by the C library: only the ASCII letters change.
    LmString native("ab\xE9");
    native.SetCodeSet(LM_CODESET_NATIVE);
    native.ToUpper();
    EXPECT_EQ(BufferOf(native), (Bytes{'A', 'B', 0xE9, 0}));

    // Nothing to do without buffer.
    LmString none;
    none.ToUpper();
    EXPECT_EQ(none.GetSize(), 0);
}

TEST(StringCase, UpperCaseGrowsUpToTheLimit) {
    // Half the limit of sharp s doubles to exactly the limit.
    std::string text(32765, '\xDF');
    LmString s(text.c_str());
    s.ToUpper();
    EXPECT_EQ(s.Len(), 65530);
    EXPECT_EQ(s.GetSize(), 65531);
    EXPECT_EQ(s.StrGet()[65529], 'S');

    // Beyond it the text is cut at the limit.
    std::string more(40000, '\xDF');
    LmString t(more.c_str());
    t.ToUpper();
    EXPECT_EQ(t.Len(), 65531);
    EXPECT_EQ(t.GetSize(), LM_STRING_MAX_BYTES);
}

}  // namespace
