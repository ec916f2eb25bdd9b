// LmChar and LmStringIterator: the value and pointer forms with write-through, mapping
// between code sets, case, the classes taken from the order words; the walk and its
// step rule with overflow entries, and the collation orders of GetNextOrder on every
// way a text reaches it (code sets and byte orders, contractions, expansions, language
// variants, Han, order texts, copies of iterators) and the character transform.
#include "testkit.h"

using namespace lmtest;

namespace {

using Fields = std::tuple<int, int, int, int, int>;  // value, code set, language, pointer form, format

constexpr unsigned char kLatin1 = 1, kCp1252 = 2 /* no collation table */, kLatin9 = 3, kUnicode = 253;
constexpr unsigned char kGeneric = 1, kGerman = 2, kSwedish = 3, kSpanishTraditional = 4, kDanish = 5;
constexpr unsigned char kLatin = 1, kHan = 20;  // families

Fields FieldsOf(const LmChar& c) {
    return {c.GetValue(), c.GetCodeSet(), c.GetLanguage(), c.IsPointerForm(), c.GetFormat()};
}
LmChar Wide(uint16_t value, unsigned char codeSet = kUnicode) {
    return LmChar(static_cast<unsigned short>(value), codeSet);
}

// Letter words, 01 cc aaaaa lllll ee: case 1 is lower, letter 3 is A.
constexpr uint16_t Lower(int letter, int accent = 0, int extension = 0) {
    return static_cast<uint16_t>(0x5000 | accent << 7 | letter << 2 | extension);
}
constexpr uint16_t Upper(int letter, int accent = 0, int extension = 0) {
    return static_cast<uint16_t>(Lower(letter, accent, extension) & ~0x1000);
}
constexpr int kA = 3, kB = 4, kC = 5, kD = 6, kE = 7, kH = 10, kL = 14, kS = 21, kX = 26, kY = 27, kZ = 28;

Units Orders(LmStringIterator& it, int mode = 1) {
    Units out;
    for (uint16_t w; out.size() < 100 && (w = it.GetNextOrder(mode)) != 0;) out.push_back(w);
    return out;
}
// The next order word with the family after it.
std::pair<int, int> Next(LmStringIterator& it, int mode = 1) {
    const uint16_t word = it.GetNextOrder(mode);
    return {word, it.GetFamily()};
}
LmWCharList ListOf(const uint16_t* items, uint16_t count) {
    LmWCharList list{};
    list.count = count;
    list.items = items;
    return list;
}

}  // namespace

TEST(CharForms, PointerAndValueForms) {
    LmString s("abc");
    LmChar c(s, 1);
    EXPECT_EQ(FieldsOf(c), Fields('b', kLatin1, 1, 1, 1));
    c = 'X';
    LmChar copy(c);  // always a value form: later writes do not reach it
    c = 'Y';
    EXPECT_EQ(FieldsOf(copy), Fields('X', kLatin1, 1, 0, 1));
    EXPECT_EQ(LmChar(s, 3).GetValue(), 0);  // the terminator is a character too
    // Assigning a character maps it to the target's code set; the offset is in bytes.
    // Plain values are stored as they are, without mapping.
    LmString w = Wide(u"\u263A\u00E9");
    LmChar(s, 0) = LmChar(w, 2);
    LmChar(s, 2) = LmChar(w, 0);
    EXPECT_EQ(BufferOf(s), (Bytes{0xE9, 'Y', 0x1A, 0}));
    LmChar(w, 0) = LmChar('\xC4', kLatin1);
    EXPECT_EQ(BufferOf(w), (Bytes{0xC4, 0, 0xE9, 0, 0, 0}));
    LmChar(s, 0) = static_cast<unsigned short>(0xA4);
    LmChar(w, 2) = static_cast<unsigned short>(0x2605);
    LmChar(w, 0) = 'q';
    EXPECT_EQ(BufferOf(s), (Bytes{0xA4, 'Y', 0x1A, 0}));
    EXPECT_EQ(BufferOf(w), (Bytes{'q', 0, 0x05, 0x26, 0, 0}));
    // Behind the pointer big-endian units, as on a disk page; a copy holds the machine's
    // value; a character is mapped, then swapped; equal formats store it as it stands.
    uint8_t disk[] = {0x26, 0x3A, 0x00, 0x41, 0, 0};
    const LmChar first(reinterpret_cast<const char*>(disk), kUnicode, 1, LmFormatBig);
    EXPECT_EQ(FieldsOf(LmChar(first)), Fields(0x263A, kUnicode, 1, 0, 1));
    LmChar second(reinterpret_cast<const char*>(disk + 2), kUnicode, 1, LmFormatBig);
    second = static_cast<unsigned short>(0x1234);
    EXPECT_EQ(Of(disk, 4), Hex("263A 1234"));
    second = LmChar('\xA4', kLatin9);  // the euro sign
    EXPECT_EQ(Of(disk, 4), Hex("263A 20AC"));
    LmChar little(reinterpret_cast<const char*>(disk), kUnicode, 1, LmFormatLittle);
    little = Wide(0x0102);
    EXPECT_EQ(Of(disk, 2), Hex("0201"));

    const unsigned char cs8 = LmString::GetDefault8CodeSet();
    EXPECT_EQ(FieldsOf(LmChar('a')), Fields('a', cs8, LmString::GetDefaultLanguage(), 0, 1));
    EXPECT_EQ(LmChar('\xFF').GetValue(), 0xFF);  // not sign-extended
    EXPECT_EQ(FieldsOf(LmChar()), Fields(0, kUnicode, 1, 0, 1));
    EXPECT_EQ(Wide(0x1241, kLatin1).GetValue(), 0x41);  // a 1-byte code set keeps the low byte
    EXPECT_EQ(Wide(0x1241, 230).GetValue(), 0x1241);
    EXPECT_EQ(FieldsOf(LmChar('x', 7, 9)), Fields('x', 7, 9, 0, 1));
    EXPECT_EQ(FieldsOf(LmChar("q")), Fields('q', cs8, 1, 1, 1));
    LmChar v('a');  // a value-form target takes the source whole, labels included
    v = LmChar(static_cast<unsigned short>(0x263A), kUnicode, 4);
    EXPECT_EQ(FieldsOf(v), Fields(0x263A, kUnicode, 4, 0, 1));
    LmString z("z");  // a language of 255 on a string's character becomes the default in a copy
    z.SetLanguage(LM_LANGUAGE_DEFAULT);
    const LmChar onString(z, 0);
    EXPECT_EQ(onString.GetLanguage(), LM_LANGUAGE_DEFAULT);
    EXPECT_EQ(LmChar(onString).GetLanguage(), LmString::GetDefaultLanguage());
}

TEST(CharMapAndCase, ThroughUnicode) {
    const LmChar e('\xE9', kLatin1, 5);
    EXPECT_EQ(FieldsOf(e.MapTo(kUnicode)), Fields(0xE9, kUnicode, 5, 0, 1));
    EXPECT_EQ(LmChar('\xA4', kLatin1).MapTo(kLatin9).GetValue(), 0x1A);  // the currency sign is not in Latin-9
    EXPECT_EQ(LmChar('\xA4', kLatin9).MapTo(kUnicode).GetValue(), 0x20AC);
    EXPECT_EQ(LmChar('\x80', kCp1252).MapTo(kLatin9).GetValue(), 0xA4);  // the euro sign in both
    EXPECT_EQ(LmChar('\xC4', LM_CODESET_NATIVE).MapTo(kUnicode).GetValue(), 0xC4);
    // Target 0 or the own code set: a copy, labels unchanged. The order code set maps nothing.
    EXPECT_EQ(FieldsOf(e.MapTo(LM_CODESET_NATIVE)), Fields(0xE9, kLatin1, 5, 0, 1));
    EXPECT_EQ(FieldsOf(e.MapTo(kLatin1)), Fields(0xE9, kLatin1, 5, 0, 1));
    EXPECT_EQ(FieldsOf(e.MapTo(LM_CODESET_ORDER)), Fields(0xE9, LM_CODESET_ORDER, 5, 0, 1));
    // y diaeresis has its upper case U+0178 in Latin-9 (0xBE) but not in Latin-1; code set
    // 0 goes by the C library.
    const std::pair<LmChar, Fields> cases[] = {
        {LmChar('\xC9', kLatin1, 6).ToLower(), {0xE9, kLatin1, 6, 0, 1}},
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
    for (const auto& [c, fields] : cases) EXPECT_EQ(FieldsOf(c), fields);
    LmCharToUpper toUpper;
    LmCharOperation& op = toUpper;  // the transform is reached through its base
    EXPECT_EQ(op.Apply(LmChar('\xE0', kLatin1), nullptr).GetValue(), 0xC0);
    // Sharp s: upper case S, the second S through the iterator's overflow only; the
    // position holds while the overflow has an entry. Lowering never expands.
    LmString text("\xDF");
    LmStringIterator it(text), it2(text);
    EXPECT_EQ(LmChar(text, 0).ToUpper(&it).GetValue(), 'S');
    EXPECT_EQ((++it).GetPosition(), text.StrGet());
    EXPECT_EQ(FieldsOf(*it), Fields('S', kLatin1, 1, 0, 1));
    EXPECT_EQ((++it).GetPosition(), text.StrGet() + 1);
    EXPECT_EQ(LmChar(text, 0).ToLower(&it2).GetValue(), 0xDF);
    EXPECT_EQ((++it2).IsEOS(), 1);
}

TEST(CharClass, OrderWordsClassesAndWildcardOrders) {
    // Code set 0 orders as the native one, a code set without table through Unicode
    // (0x80 is the euro there), and a character without record, and an order word, by
    // its value, which also gives its class: a Cyrillic letter is a symbol, a common Han
    // character a letter. The terminator is a space.
    const std::tuple<LmChar, uint16_t, const char*> cases[] = {
        {LmChar('A', kLatin1), 0x400C, "a"},
        {LmChar('\xE9', kLatin1), 0x511C, "a"},
        {LmChar('\xDF', kLatin1), 0x5055, "a"},
        {LmChar('7', kLatin1), 0x3F46, "d"},
        {LmChar('*', kLatin1), 159, "y"},
        {LmChar('\t', kLatin1), 9, "s"},
        {LmChar('\0', kLatin1), 0, "s"},
        {LmChar('\x80', kLatin1), 13, "s"},
        {LmChar('A', LM_CODESET_NATIVE), 0x400C, "a"},
        {LmChar('\xE9', kCp1252), 0x511C, "a"},
        {LmChar('\x80', kCp1252), LmCharOrder(Wide(0x20AC)), "y"},
        {Wide(0x9F8D), 0x9F8D, "h"},
        {Wide(0x4E2D), 0x4E2D, "a"},
        {Wide(0x0416), 0x0416, "y"},
        {Wide(0x5E54, LM_CODESET_ORDER), 0x5E54, "a"}};
    for (const auto& [c, order, cls] : cases) {
        EXPECT_EQ(LmCharOrder(c), order) << std::hex << c.GetValue();
        const std::string got = std::string(c.IsAlpha() ? "a" : "") + (c.IsDigit() ? "d" : "") +
                                (c.IsHan() ? "h" : "") + (c.IsSpace() ? "s" : "") + (c.IsSymbol() ? "y" : "");
        EXPECT_EQ(got, cls) << std::hex << c.GetValue();
    }
    LmString s("a5");  // the pointer form reads the character where it lives
    EXPECT_EQ(LmChar(s, 0).IsAlpha() + LmChar(s, 1).IsDigit(), 2);
    EXPECT_EQ(LmWildcardOrderGet(3), 0);
    LmWildcardOrderSet(LM_WILDCARD_QUESTION, 32);
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_QUESTION), 32);
    LmWildcardOrderSet(LM_WILDCARD_QUESTION, 0);  // unset: read lazily again
    EXPECT_EQ(LmWildcardOrderGet(LM_WILDCARD_QUESTION), 122);
}

TEST(IteratorWalk, StepsOverflowAndCharacters) {
    LmString s("ab");
    LmStringIterator it(s);
    EXPECT_EQ(std::make_tuple(it.GetCodeSet(), it.GetLanguage(), it.GetFormat(), it.GetFamily()),
              std::make_tuple(kLatin1, kGeneric, LmFormatMemory, kLatin));
    EXPECT_EQ(FieldsOf(*it), Fields('a', kLatin1, 1, 1, 8));
    const LmStringIterator before = it++;
    EXPECT_EQ(before.GetPosition(), s.StrGet());
    EXPECT_EQ(it.GetPosition(), s.StrGet() + 1);
    EXPECT_EQ((it == before) * 2 + (--it == before), 1);
    it.Step(1);
    EXPECT_EQ(it.IsEOS(), 0);
    EXPECT_EQ((++it).IsEOS(), 1);
    it.Step(0);
    *it = 'q';  // writing through the iterator's character changes the string
    EXPECT_STREQ(s.StrGet(), "aq");
    const unsigned short wide[] = {0x263A, 0x41, 0};  // 16-bit texts step by two bytes
    LmStringIterator w(wide);
    EXPECT_EQ((*++w).GetValue(), 0x41);
    EXPECT_EQ(w.GetPosition(), reinterpret_cast<const char*>(wide) + 2);
    s.SetLanguage(LM_LANGUAGE_DEFAULT);
    EXPECT_EQ(LmStringIterator(s).GetLanguage(), LmString::GetDefaultLanguage());
    LmString none;  // walked over the shared empty text
    LmStringIterator n(none), scratch;
    EXPECT_EQ(n.IsEOS() + n.GetNextOrder(1), 1);
    // The scratch iterator: no position, code set 0, language 0, format 1.
    EXPECT_EQ(std::make_tuple(scratch.GetCodeSet(), scratch.GetLanguage(), scratch.GetFormat(), scratch.IsEOS()),
              std::make_tuple(0, 0, 1, 1));
    EXPECT_EQ(scratch.GetNextOrder(1), 0);
    EXPECT_EQ((++scratch).GetPosition(), nullptr);

    // Overflow entries are used up by reading (255: the iterator's code set); while they
    // remain the position stays; stepping back ignores them. At the terminator an
    // unexhausted list keeps the text from ending; used up, the position steps past it.
    const uint16_t entries[] = {'X', 'Y'};
    const LmWCharList list = ListOf(entries, 2);
    LmStringIterator o(s);
    o.SetOverflow(&list, LM_CODESET_DEFAULT);
    EXPECT_EQ(FieldsOf(*o), Fields('X', kLatin1, 1, 0, 1));
    EXPECT_EQ((++o).GetPosition(), s.StrGet());
    EXPECT_EQ((*o).GetValue(), 'Y');
    EXPECT_EQ((++o).GetPosition(), s.StrGet() + 1);
    o.SetOverflow(&list, LM_CODESET_DEFAULT);
    EXPECT_EQ((--o).GetPosition(), s.StrGet());
    const char text[] = {'a', 0, 0};
    LmStringIterator end(text + 1, kLatin1, kGeneric);
    end.SetOverflow(&list, kUnicode);
    EXPECT_EQ(end.IsEOS(), 0);
    EXPECT_EQ(FieldsOf(*end), Fields('X', kUnicode, 1, 0, 1));
    EXPECT_EQ((*++end).GetValue(), 'Y');
    EXPECT_EQ(end.IsEOS(), 0);  // still set, though used up
    EXPECT_EQ((++end).IsEOS(), 1);
    EXPECT_EQ(end.GetPosition(), text + 2);

    // Over one character: copies and assigned iterators do not own, so the buffer is
    // freed once; an owning iterator may be destroyed anywhere, and reassigned.
    LmChar c(static_cast<unsigned short>(0xE9), kUnicode, kSwedish);
    LmStringIterator over(c);
    EXPECT_EQ(std::make_tuple(over.GetCodeSet(), over.GetLanguage()), std::make_tuple(kUnicode, kSwedish));
    {
        LmStringIterator copy(over), assigned;
        assigned = over;
        EXPECT_EQ(assigned.GetPosition(), over.GetPosition());
    }
    EXPECT_EQ(Orders(over), Units{Lower(kE, 2)});
    LmChar a('a', kLatin1, kGeneric);
    LmStringIterator other(a);
    over = other;
    EXPECT_EQ(over.GetNextOrder(1), Lower(kA));
}

TEST(IteratorOrder, CodeSetsContractionsExpansionsAndVariants) {
    const struct {
        const void* text;
        unsigned char codeSet, language, format;
        Units words;
    } cases[] = {// Code set 0 is the native one; a 16-bit text in either byte order (format 2 most
                 // significant first); an order text is read low byte first whatever the format.
                 {"Ab1 *", 0, kGeneric, 1, {Upper(kA), Lower(kB), 0x3F0A, 32, 159}},
                 {"\0A\0\xE4\x4E\x2D\0", kUnicode, kGeneric, 2, {Upper(kA), Lower(kA, 6), 0x4E2D}},
                 {"A\0\xE4\0\x2D\x4E\0", kUnicode, kGeneric, 8, {Upper(kA), Lower(kA, 6), 0x4E2D}},
                 {"\x0C\x40\x2D\x4E\x10\x50\0", LM_CODESET_ORDER, 7, 2, {0x400C, 0x4E2D, 0x5010}},
                 // Contractions: c before a non-follower is c, and that character is not lost; dz
                 // before a character other than s is dz; through Unicode for code set 2.
                 {"chx", kLatin1, kSpanishTraditional, 1, {Lower(kC, 0, 2), Lower(kX)}},
                 {"all", kLatin1, kSpanishTraditional, 1, {Lower(kA), Lower(kL, 0, 2)}},
                 {"cx", kLatin1, kSpanishTraditional, 1, {Lower(kC), Lower(kX)}},
                 {"ch", kLatin1, kGeneric, 1, {Lower(kC), Lower(kH)}},
                 {"ch", kCp1252, kSpanishTraditional, 1, {Lower(kC, 0, 2)}},
                 {"dza", kLatin1, LM_LANGUAGE_HUNGARIAN, 1, {Lower(kD, 0, 2), Lower(kA)}},
                 {"Aab", kLatin1, kDanish, 1, {Upper(kZ, 0, 3), Lower(kB)}},
                 // Expansions: German marks the first s with accent 28. Language variants: one text,
                 // two orders; a language that names nothing is generic, also one that shares
                 // German's variant bit (ids 16 apart).
                 {"\xDF", kLatin1, kGeneric, 1, {Lower(kS, 0, 1), Lower(kS)}},
                 {"\xDF", kLatin1, kGerman, 1, {Lower(kS, 28), Lower(kS)}},
                 {"\xDF", kLatin1, 18, 1, {Lower(kS, 0, 1), Lower(kS)}},
                 {"\xE4", kLatin1, kSwedish, 1, {Lower(kZ, 6, 2)}},
                 {"\xE4", kLatin1, 200, 1, {Lower(kA, 6)}},
                 {"\xDF\0\xE4\0\0", kUnicode, kSwedish, 8, {Lower(kS, 0, 1), Lower(kS), Lower(kZ, 6, 2)}},
                 // A code set without table orders through Unicode; in Latin-1 0x80 is a control.
                 {"A\x80\x9F", kCp1252, kGeneric, 1, {Upper(kA), LmCharOrder(Wide(0x20AC)), Upper(kY, 6)}},
                 {"\x80", kLatin1, kGeneric, 1, {13}},
                 // A code set lumoi18n does not know maps every character to 0xFFFD, which has no
                 // record; its terminator still ends the text.
                 {"ab\0c", 200, kGeneric, 1, {0xFFFD, 0xFFFD}},
                 {"a\0\0\0c\0", 230, kGeneric, 1, {0xFFFD}}};
    for (const auto& c : cases) {
        LmStringIterator it =
            c.codeSet >= 225
                ? LmStringIterator(static_cast<const unsigned short*>(c.text), c.codeSet, c.language, c.format)
                : LmStringIterator(static_cast<const char*>(c.text), c.codeSet, c.language, c.format);
        EXPECT_EQ(Orders(it), c.words) << "row " << (&c - cases);
    }
    LmStringIterator cp("\x80", kCp1252, kGeneric), unknown("ab", 200, kGeneric);
    EXPECT_EQ(Next(cp).second, kLatin);  // the family still comes from the text's own code set
    Orders(unknown);
    EXPECT_EQ(unknown.GetFamily(), 0);  // no code set, and the substitute leaves the family alone

    // A text ending right after a contraction's first character: its order, then the
    // position stands on the terminator. An expansion holds the position until its
    // further word is delivered. Entries in a character code set are ordered like text
    // characters, in place of the position.
    const char c[] = "c", sharp[] = "\xDFz";
    LmStringIterator it(c, kLatin1, kSpanishTraditional), ex(sharp, kLatin1, kGeneric), over(c, kLatin1, kGeneric);
    EXPECT_EQ(it.GetNextOrder(1), Lower(kC));
    EXPECT_EQ(it.GetPosition(), c + 1);
    EXPECT_EQ(ex.GetNextOrder(1), Lower(kS, 0, 1));
    EXPECT_EQ(ex.GetPosition(), sharp);
    EXPECT_EQ(ex.IsEOS(), 0);
    EXPECT_EQ(ex.GetNextOrder(1), Lower(kS));
    EXPECT_EQ(ex.GetPosition(), sharp + 1);
    const uint16_t entries[] = {'b', 0xE9};
    const LmWCharList list = ListOf(entries, 2);
    over.SetOverflow(&list, kUnicode);
    EXPECT_EQ(Orders(over), (Units{Lower(kB), Lower(kE, 2)}));
    EXPECT_EQ(over.GetPosition(), c + 1);
    // A copy carries what the original resolved at construction, and so does the
    // comparison engine's form: made first, assigned later.
    LmStringIterator swedish("b\xE4\xDF", kLatin1, kSwedish);
    EXPECT_EQ(swedish.GetNextOrder(1), Lower(kB));
    LmStringIterator copy(swedish), scratch;
    scratch = swedish;
    const Units rest{Lower(kZ, 6, 2), Lower(kS, 0, 1), Lower(kS)};
    EXPECT_EQ(Orders(copy), rest);
    EXPECT_EQ(Orders(scratch), rest);
}

TEST(IteratorOrder, FamiliesHanAndTransform) {
    // Without a record the character's code is its order, and the family becomes Han; a
    // record sets the code set's family again. From 0xFFF0 up, and in mode 0, the family
    // stays; mode 0 leaves it as the last normal call left it, for a plain letter too.
    const unsigned short text[] = {0x4E2D, 'a', 0x2010, 0x0416, 0xFFFD, 'b', 0};
    LmStringIterator han(text, kUnicode, kGeneric), quiet(text, kUnicode, kGeneric), tail(text + 4, kUnicode, kGeneric);
    EXPECT_EQ(Next(han), std::make_pair(0x4E2D, +kHan));
    EXPECT_EQ(Next(han), std::make_pair(+Lower(kA), +kLatin));
    EXPECT_EQ(Next(han), std::make_pair(0xE0, +kLatin));  // U+2010 has a record in the runs: symbol 0xE0
    EXPECT_EQ(Next(han), std::make_pair(0x0416, +kHan));
    EXPECT_EQ(Next(han), std::make_pair(0xFFFD, +kHan));
    EXPECT_EQ(Next(han, 0), std::make_pair(+Lower(kB), +kHan));
    EXPECT_EQ(Next(tail), std::make_pair(0xFFFD, +kLatin));
    EXPECT_EQ(Next(quiet, 0), std::make_pair(0x4E2D, +kLatin));
    LmWildcardOrderSet(LM_WILDCARD_ASTERISK, 0x4E2D);  // the asterisk order is a wildcard, not Han
    LmStringIterator star(text, kUnicode, kGeneric);
    EXPECT_EQ(Next(star), std::make_pair(0x4E2D, +kLatin));
    LmWildcardOrderSet(LM_WILDCARD_ASTERISK, 0);
    // At the end the position stays and 0 keeps coming; an order text keeps its family
    // and steps past its terminator.
    LmString s("Ab");
    LmStringIterator it(s);
    Orders(it);
    EXPECT_EQ(it.GetNextOrder(1), 0);
    EXPECT_EQ(it.GetPosition(), s.StrGet() + 2);
    const uint8_t words[] = {0x0C, 0x40, 0x10, 0x50, 0x00, 0x00};
    LmStringIterator order(reinterpret_cast<const unsigned short*>(words), LM_CODESET_ORDER, 7, LmFormatBig);
    Orders(order);
    EXPECT_EQ(order.GetFamily(), 7);
    EXPECT_EQ(order.GetPosition(), reinterpret_cast<const char*>(words) + 6);

    LmStringIterator source("q\xDFz", kLatin1, kGeneric);
    uint8_t out[12];
    std::memset(out, 0xEE, sizeof out);
    LmStringIterator target(reinterpret_cast<const unsigned short*>(out), kUnicode, kGeneric);
    LmCharToUpper upper;
    source.Transform(target, upper);
    EXPECT_EQ(Of(out, 12), Hex("5100 5300 5300 5A00 0000 EEEE"));
    EXPECT_EQ(target.GetPosition(), reinterpret_cast<const char*>(out) + 10);  // just behind the terminator
}
