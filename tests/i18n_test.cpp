// lumoi18n: code sets and their mapping through Unicode, case, the process-wide
// defaults, and the collation data: order words of hand-picked characters worked out
// from the layout of a letter's word (01 cc aaaaa lllll ee: case 0 upper / 1 lower,
// accent, letter 3 = A .. 28 = Z, extension), expansions, language variants and
// contractions, and word lists sorted by those words as a speaker of each language
// expects them.
#include <algorithm>
#include <string_view>

#include "testkit.h"

using namespace lmtest;

namespace {

const LmCodeSet* Set(uint8_t codeSet) { return LmLanguageContext::QueryCodeSet(codeSet); }
const LmCollationRecord* Unicode(uint16_t value) { return Set(LM_CODESET_UCS2)->collation->lookup(value); }
uint16_t Order(uint16_t value) { return Unicode(value) != nullptr ? Unicode(value)->order : 0xFFFF; }

// The record a language sees for a character (its variant when it has one), and the
// word of one character or a contraction of several; 0 when they do not contract.
const LmCollationRecord* ForLanguage(uint16_t value, uint8_t language) {
    const LmCollationRecord* r = Unicode(value);
    for (int i = 0; i < r->languages.count; ++i) {
        if ((*r->languages.At(i))->id == language) return *r->languageRecords.At(i);
    }
    return r;
}
uint16_t Word(uint8_t language, std::u16string_view chars) {
    const LmCollationRecord* r = ForLanguage(chars[0], language);
    for (size_t i = 1; i < chars.size() && r != nullptr; ++i) {
        const LmCollationRecord* next = nullptr;
        for (int k = 0; k < r->followers.count; ++k) {
            if (*r->followers.At(k) == chars[i]) r->successors.GetAt(k, next);
        }
        r = next;
    }
    return r != nullptr ? r->order : 0;
}

// The words of the space-separated texts in each language.
void ExpectWords(std::initializer_list<uint8_t> languages, std::u16string_view texts, const Units& words) {
    for (uint8_t lang : languages) {
        std::u16string_view rest = texts;
        for (uint16_t word : words) {
            const std::u16string_view text = rest.substr(0, rest.find(u' '));
            EXPECT_EQ(Word(lang, text), word) << int{lang} << " " << std::hex << int{text[0]};
            rest.remove_prefix(std::min(rest.size(), text.size() + 1));
        }
        EXPECT_TRUE(rest.empty());
    }
}

void ExpectOrders(std::u16string_view chars, const Units& words) {
    ASSERT_EQ(chars.size(), words.size());
    for (size_t i = 0; i < chars.size(); ++i) EXPECT_EQ(Order(chars[i]), words[i]) << std::hex << int{chars[i]};
}

// A three-level key from the iterator's words, as a comparison orders them: primary
// (space and symbol words skipped), then the accents, then the case.
Units Drain(LmStringIterator& it) {
    Units words;
    for (uint16_t w; words.size() < 100 && (w = it.GetNextOrder(1)) != 0;) words.push_back(w);
    return words;
}
Units Orders(const std::u16string& word, uint8_t codeSet, uint8_t language) {
    if (codeSet == LM_CODESET_UCS2) {
        LmStringIterator it(reinterpret_cast<const unsigned short*>(word.c_str()), codeSet, language, 1);
        return Drain(it);
    }
    std::string narrow;  // every test word is Latin-1
    for (char16_t c : word) narrow.push_back(static_cast<char>(c));
    LmStringIterator it(narrow.c_str(), codeSet, language, 1);
    return Drain(it);
}
std::tuple<Units, Units, Units> KeyOf(const Units& words) {
    std::tuple<Units, Units, Units> k;
    for (uint16_t w : words) {
        if (w < 0x3F00) continue;
        const bool letter = w >= 0x4000 && w <= 0x7FFF;
        std::get<0>(k).push_back(letter ? static_cast<uint16_t>(w & 0x407F) : w);
        std::get<1>(k).push_back(letter ? static_cast<uint16_t>((w >> 7) & 0x1F) : 0);
        std::get<2>(k).push_back(letter ? static_cast<uint16_t>((w >> 12) & 0x3) : 0);
    }
    return k;
}
// Sorts a shuffled copy of `expected` and compares, in code sets 1, 253 and 1252.
void ExpectSorted(const std::vector<std::u16string>& expected, uint8_t language) {
    for (uint8_t cs : {LM_CODESET_LATIN1, LM_CODESET_UCS2, LM_CODESET_CP1252}) {
        std::vector<std::u16string> words(expected.rbegin(), expected.rend());
        std::rotate(words.begin(), words.begin() + static_cast<long>(words.size() / 2), words.end());
        std::stable_sort(words.begin(), words.end(), [&](const auto& a, const auto& b) {
            return KeyOf(Orders(a, cs, language)) < KeyOf(Orders(b, cs, language));
        });
        EXPECT_TRUE(words == expected) << "language " << int{language} << ", code set " << int{cs};
    }
}

}  // namespace

TEST(I18nCodeSet, LookupMappingCaseDefaultsAndContext) {
    EXPECT_EQ(Set(0), Set(1));  // native is code set 1 here
    EXPECT_EQ(LmLanguageContext::GetNativeCodeSet(), 1);
    const std::tuple<uint8_t, uint8_t, const char*> sets[] = {
        {1, 1, "ISO-8859-1"}, {2, 1, "Windows-1252"}, {3, 1, "ISO-8859-15"}, {253, 2, "UCS-2"}};
    for (const auto& [id, width, name] : sets) {
        ASSERT_NE(Set(id), nullptr);
        EXPECT_EQ(std::make_tuple(Set(id)->id, Set(id)->width, std::string(Set(id)->name)),
                  std::make_tuple(id, width, std::string(name)));
    }
    for (int cs : {4, 224, 225, 254, 255}) EXPECT_EQ(Set(static_cast<uint8_t>(cs)), nullptr) << cs;

    // {target, value, source, result}: through Unicode, code set 0 being the native one.
    // Windows-1252 holds the euro at 0x80, S caron 0x8A, oe 0x9C, trade mark 0x99, Y
    // diaeresis 0x9F, and an undefined byte (0x81) as the C1 control of its value. The
    // euro is 0xA4 in Latin-9 and lacking in Latin-1; Latin-9 0xBD is oe. An unknown
    // source, or a value too wide for a 1-byte source: the substitute (0x1A, or 0xFFFD).
    constexpr uint16_t S8 = 0x1A, S16 = 0xFFFD;
    const uint16_t cases[][4] = {{253, 0xE9, 0, 0xE9}, {1, 0xE9, 253, 0xE9},   {1, 0x153, 253, S8},
                                 {1, 0x4E00, 253, S8}, {253, 0x80, 2, 0x20AC}, {253, 0x8A, 2, 0x160},
                                 {253, 0x81, 2, 0x81}, {2, 0x2122, 253, 0x99}, {2, 0x178, 253, 0x9F},
                                 {2, 0x80, 253, S8},   {3, 0x80, 2, 0xA4},     {3, 0xA4, 1, S8},
                                 {3, 0x9C, 2, 0xBD},   {1, 0xBD, 3, S8},       {1, 0xA4, 0, 0xA4},
                                 {1, 'A', 99, S8},     {253, 'A', 254, S16},   {253, 0x141, 1, S16}};
    for (const auto& c : cases) {
        EXPECT_EQ(Set(static_cast<uint8_t>(c[0]))->map(c[1], static_cast<uint8_t>(c[2])), c[3])
            << std::hex << c[1] << " from " << c[2] << " to " << c[0];
    }
    // Every byte of the 1-byte code sets survives the round trip through Unicode.
    for (uint8_t cs : {uint8_t{1}, uint8_t{2}, uint8_t{3}}) {
        for (uint16_t b = 0; b < 0x100; ++b)
            EXPECT_EQ(Set(cs)->map(Set(253)->map(b, cs), 253), b) << int{cs} << " " << b;
    }
    // {code set, value, upper, lower, second upper}: sharp s is S and S; y diaeresis has an
    // upper case that code set 1 cannot hold; dotless i; title-case Dz; j caron is J and a
    // combining caron; the euro has a record but no case; 1252 answers for its own bytes.
    const struct {
        uint8_t set;
        uint16_t value, upper, lower, rest;
    } props[] = {{1, 'a', 'A', 0, 0},         {1, 'A', 0, 'a', 0},     {1, 0xDF, 'S', 0, 'S'},
                 {1, 0xFF, 0x178, 0, 0},      {253, 0x131, 'I', 0, 0}, {253, 0x1C5, 0x1C4, 0x1C6, 0},
                 {253, 0x1F0, 'J', 0, 0x30C}, {253, 0x20AC, 0, 0, 0},  {2, 0x9A, 0x160, 0, 0}};
    for (const auto& c : props) {
        const LmUnicodeProps* p = Set(c.set)->GetUnicodeProps(c.value, 1);
        ASSERT_NE(p, nullptr) << std::hex << c.value;
        uint16_t rest = 0;
        p->upperRest.GetAt(0, rest);
        EXPECT_EQ(Units({p->upper, p->lower, static_cast<uint16_t>(p->upperRest.count), rest}),
                  Units({c.upper, c.lower, static_cast<uint16_t>(c.rest != 0), c.rest}))
            << std::hex << c.value;
    }
    EXPECT_EQ(Set(253)->GetUnicodeProps(0x391, 1), nullptr);  // no record, no case
    EXPECT_EQ(Set(1)->GetUnicodeProps(0x100, 1), nullptr);

    // Defaults: as documented; meaningless values are refused; the 8-bit default does not
    // follow the general one.
    EXPECT_EQ(std::make_tuple(LmLanguageContext::GetDefaultCodeSet(), LmLanguageContext::GetDefault8CodeSet(),
                              LmLanguageContext::GetDefault16CodeSet(), LmLanguageContext::GetDefaultLanguage(),
                              LmLanguageContext::GetDefaultCmpOp()),
              std::make_tuple(1, 1, 253, 1, 0));
    LmLanguageContext::SetDefaultCodeSet(253);
    for (int refused : {254, 255, 77}) LmLanguageContext::SetDefaultCodeSet(static_cast<uint8_t>(refused));
    EXPECT_EQ(LmLanguageContext::GetDefaultCodeSet() * 10 + LmLanguageContext::GetDefault8CodeSet(), 2531);
    LmLanguageContext::SetDefaultCodeSet(0);
    EXPECT_EQ(LmLanguageContext::GetDefaultCodeSet(), 0);
    LmLanguageContext::SetDefaultLanguage(LM_LANGUAGE_SWEDISH);
    LmLanguageContext::SetDefaultLanguage(254);
    LmLanguageContext::SetDefaultLanguage(255);
    EXPECT_EQ(LmLanguageContext::GetDefaultLanguage(), LM_LANGUAGE_SWEDISH);
    LmLanguageContext::SetDefaultCmpOp(0x60);
    LmLanguageContext::SetDefaultCmpOp(0xFFFF);
    EXPECT_EQ(LmLanguageContext::GetDefaultCmpOp(), 0x60);
    // The context starts and stops nested; queries answer either way.
    const int before = LmI18NContextActive();
    ___LmI18NContext(1);
    ___LmI18NContext(1);
    ___LmI18NContext(0);
    EXPECT_EQ(LmI18NContextActive(), 1);
    ___LmI18NContext(0);
    EXPECT_EQ(LmI18NContextActive(), before);
}

TEST(I18nCollation, OrderWordsOfPlainCharactersAndTables) {
    // Letters: A, Z, a, z, a acute (accent 2), A acute, a diaeresis (6), c cedilla (letter
    // 5, accent 1), o stroke (17, 8), o double acute (14), c caron (9), z dot above (12),
    // eth (d with extension 2). Digits 0x3F00 + 10 * digit, bit 0 for superscript two.
    // Spaces below 80: space, tab, no-break space, em space; controls and the zero width
    // joiner are the undefined ordering indicator 13. Symbols at the words of their table.
    ExpectOrders(
        u"AZaz\u00E1\u00C1\u00E4\u00E7\u00F8\u0151\u010D\u017C\u00F0",
        {0x400C, 0x4070, 0x500C, 0x5070, 0x510C, 0x410C, 0x530C, 0x5094, 0x5444, 0x5744, 0x5494, 0x5670, 0x501A});
    ExpectOrders(u"059\u00B2 \t\u00A0\u2003\u0001\u009F\u200D",
                 {0x3F00, 0x3F32, 0x3F5A, 0x3F15, 32, 9, 33, 37, 13, 13, 13});
    ExpectOrders(u"\u00AD\u00B4\u00B5\u00D7\u00BF\\_-,;:!?/.'\"()[]{}@$*&#%+`^~<=>|",
                 {115, 168, 190, 179, 219, 160, 112, 116, 117, 118, 119, 120, 122, 124, 126, 132, 135, 140, 142,
                  144, 145, 146, 147, 153, 156, 159, 161, 162, 163, 165, 169, 171, 176, 181, 183, 185, 187});
    EXPECT_EQ(Order(0), 0);
    // Symbols of the two blocks come after the named ones, in code point order.
    EXPECT_TRUE(220 <= Order(0x2014) && Order(0x2014) < Order(0x201C) && Order(0x201C) < Order(0x20AC) &&
                Order(0x20AC) < 0x3F00);
    // Expansions carry the extension bit and further words: sharp s (s with extension 1,
    // then s), ae, oe, thorn (t, then h), dz caron (d, then z keeping the caron), one half
    // (1 with bit 0, fraction slash, 2). German sharp s is s with accent 28, then s.
    const std::pair<uint16_t, Units> expansions[] = {
        {0xDF, {0x5055, 0x5054}}, {0xC6, {0x400D, 0x401C}},  {0x153, {0x5045, 0x501C}},
        {0xFE, {0x5059, 0x5028}}, {0x1C6, {0x5019, 0x54F0}}, {0xBD, {0x3F0B, Order(0x2044), 0x3F14}}};
    for (const auto& [c, words] : expansions) {
        const LmCollationRecord* r = Unicode(c);
        Units got{r->order};
        for (int i = 0; i < r->expansion.count; ++i) got.push_back(*r->expansion.At(i));
        EXPECT_EQ(got, words) << std::hex << c;
        EXPECT_EQ(r->hasExpansion, 1);
    }
    EXPECT_EQ(ForLanguage(0xDF, LM_LANGUAGE_GERMAN)->order, 0x5E54);
    for (char16_t c : std::u16string_view(u"bB0 \u00E9")) {  // plain characters take none of the slow paths
        const LmCollationRecord* r = Unicode(c);
        EXPECT_EQ(r->hasExpansion + r->hasContraction + r->hasLanguageVariants, 0) << int{c};
        EXPECT_EQ(r->familySource, nullptr);
    }
    // Masking case and accent of every accented letter, either case, leaves the plain
    // upper-case letter; the accent field itself is never empty.
    const std::u16string_view accented =
        u"\u00C0\u00C1\u00C2\u00C3\u00C4\u00C5\u00C7\u00C8\u00C9\u00CA\u00CB\u00CC"
        u"\u00CD\u00CE\u00CF\u00D1\u00D2\u00D3\u00D4\u00D5\u00D6\u00D8\u00D9\u00DA"
        u"\u00DB\u00DC\u00DD\u011F\u0142\u0160\u017A";
    const std::u16string_view base = u"AAAAAACEEEEIIIINOOOOOOUUUUYGLSZ";
    for (size_t i = 0; i < base.size(); ++i) {
        EXPECT_EQ(Order(accented[i]) & ~0x3F80, Order(base[i])) << std::hex << int{accented[i]};
        EXPECT_NE(Order(accented[i]) & 0x0F80, 0);
        if (accented[i] < 0x100) {
            EXPECT_EQ(Order(static_cast<uint16_t>(accented[i] + 0x20)) & ~0x3F80, Order(base[i]));  // lower case
        }
    }
    // The tables: every value below 0x200 has a record, Latin-1 agrees with Unicode below
    // 0x100; above 0x1FF only General Punctuation and Currency Symbols have records.
    const LmCollationTable* latin1 = Set(LM_CODESET_LATIN1)->collation;
    for (uint16_t v = 0; v < 0x200; ++v) ASSERT_NE(Unicode(v), nullptr) << v;
    for (uint16_t v = 0; v < 0x100; ++v) EXPECT_EQ(latin1->lookup(v)->order, Order(v)) << v;
    for (char16_t v : std::u16string_view(u"\u0200\u0391\u1FFF\u2065\u20CF\u4E00\uFFFF"))
        EXPECT_EQ(Unicode(v), nullptr);
    for (char16_t v : std::u16string_view(u"\u2000\u2064\u2066\u206F\u20A0\u20C0"))  // the ends of the runs
        EXPECT_NE(Unicode(v), nullptr) << int{v};
    EXPECT_EQ(latin1->lookup(0x100), nullptr);
    EXPECT_EQ(Set(LM_CODESET_CP1252)->collation, nullptr);
    EXPECT_EQ(Set(LM_CODESET_LATIN9)->collation, nullptr);
}

TEST(I18nCollation, LanguagesVariantsAndContractions) {
    constexpr uint8_t sv = LM_LANGUAGE_SWEDISH, fi = LM_LANGUAGE_FINNISH, da = LM_LANGUAGE_DANISH,
                      nb = LM_LANGUAGE_NORWEGIAN, trad = LM_LANGUAGE_SPANISH_TRADITIONAL, hu = LM_LANGUAGE_HUNGARIAN;
    // Swedish and Finnish: z + extension 1, 2, 3 for a ring, a diaeresis, o diaeresis, the
    // accent keeping the mark; ae sorts with a diaeresis, o stroke with o diaeresis; no aa.
    ExpectWords({sv, fi}, u"\u00E5 \u00C5 \u00E4 \u00E6 \u00F6 \u00F8 \u00D8 aa",
                {0x53F1, 0x43F1, 0x5372, 0x5072, 0x5373, 0x5473, 0x4473, 0});
    ExpectWords({LM_LANGUAGE_GENERIC, LM_LANGUAGE_GERMAN, LM_LANGUAGE_ENGLISH}, u"\u00E4", {0x530C});
    // Danish and Norwegian: ae z + 1, o stroke z + 2, a ring z + 3; aa, in every case
    // combination with the case of the first letter, as a ring without the mark.
    ExpectWords({da, nb}, u"\u00E6 \u00E4 \u00F8 \u00E5 \u00C5 a aa aA Aa ab aaa",
                {0x5071, 0x5371, 0x5472, 0x53F3, 0x43F3, 0x500C, 0x5073, 0x5073, 0x4073, 0, 0});
    // Traditional Spanish: ch and ll with extension 2 after c and l; both Spanish put n
    // tilde after n. Hungarian: dz (d + 2) contracts further to dzs (d + 3); cs, zs; o
    // diaeresis and o double acute after o.
    ExpectWords({trad}, u"c ch cH Ch cs ll LL", {0x5014, 0x5016, 0x5016, 0x4016, 0, 0x503A, 0x403A});
    ExpectWords({LM_LANGUAGE_SPANISH, trad}, u"\u00F1", {0x52C3});
    ExpectWords({LM_LANGUAGE_SPANISH}, u"ch", {0});
    ExpectWords({LM_LANGUAGE_FRENCH}, u"\u00F1", {0x52C0});
    ExpectWords({hu}, u"d dz dzs dzS DZS dzz dzss cs ch zs \u00F6 \u0151",
                {0x5018, 0x501A, 0x501B, 0x501B, 0x401B, 0, 0, 0x5016, 0, 0x5072, 0x5346, 0x5746});
    for (uint8_t lang : {sv, fi, da, nb}) EXPECT_EQ(ForLanguage(0xE6, lang)->hasExpansion, 0);  // ae is one letter
    // List access out of range is refused and leaves the output alone.
    const LmCollationRecord* a = ForLanguage('a', da);
    uint16_t out = 0;
    EXPECT_NE(a->followers.GetAt(a->followers.count, out), 0);
    EXPECT_EQ(out, 0);
    EXPECT_EQ(a->followers.At(-1), nullptr);

    for (uint8_t id = 1; id <= 13; ++id) EXPECT_EQ(LmLanguageContext::QueryLanguage(id)->id, id);
    EXPECT_STREQ(LmLanguageContext::QueryLanguage(sv)->name, "Swedish");
    EXPECT_STREQ(LmLanguageContext::QueryLanguage(trad)->tag, "es-trad");
    EXPECT_EQ(LmLanguageContext::QueryLanguage(LM_LANGUAGE_GENERIC)->tailored +
                  LmLanguageContext::QueryLanguage(LM_LANGUAGE_ENGLISH)->tailored,
              0);
    EXPECT_NE(LmLanguageContext::QueryLanguage(LM_LANGUAGE_GERMAN)->tailored, 0);
    for (int id : {0, 14, 254, 255}) EXPECT_EQ(LmLanguageContext::QueryLanguage(static_cast<uint8_t>(id)), nullptr);
    // Every variant names a tailored language whose bit its record holds, and only records
    // with a list hold any bit: the low records of code set 253 and those of its runs.
    const LmCollationTable* table = Set(LM_CODESET_UCS2)->collation;
    int variants = 0;
    auto check = [&](const LmCollationRecord& r, unsigned value) {
        EXPECT_EQ(r.languages.count, r.languageRecords.count);
        EXPECT_EQ(r.hasLanguageVariants != 0, r.languages.count != 0) << value;
        EXPECT_EQ(r.hasExpansion != 0, r.expansion.count != 0);
        for (int i = 0; i < r.languages.count; ++i, ++variants) {
            EXPECT_NE(r.hasLanguageVariants & LmLanguageBit((*r.languages.At(i))->id), 0) << value;
            EXPECT_NE((*r.languages.At(i))->tailored, 0);
        }
    };
    for (unsigned v = 0; v < table->lowLimit; ++v) check(table->low[v], v);
    for (unsigned k = 0; k < table->rangeCount; ++k)
        for (unsigned i = 0; i < table->ranges[k].count; ++i)
            check(table->ranges[k].records[i], table->ranges[k].first + i);
    EXPECT_GT(variants, 40);
    for (int cs : {0, 1, 2, 3, 253}) {
        for (int lang : {0, 1, 3, 200})
            EXPECT_EQ(Set(static_cast<uint8_t>(cs))->family(static_cast<uint8_t>(lang)), LM_FAMILY_LATIN);
    }
}

TEST(CollationWordlist, EachLanguageSortsAsItsSpeakersExpect) {
    // Swedish and Finnish: z < a ring < a diaeresis < o diaeresis, with ae as a diaeresis
    // and o stroke as o diaeresis; the generic order keeps them next to a and o.
    ExpectSorted({u"apa", u"zebra", u"zon", u"\u00c5ngstr\u00f6m", u"\u00e5sna", u"\u00e6rt", u"\u00e4rt", u"\u00f6ga",
                  u"\u00f8ga", u"\u00f6sa"},
                 LM_LANGUAGE_SWEDISH);
    ExpectSorted({u"apa", u"zebra", u"\u00e5sna", u"\u00e4rt", u"\u00f6ga"}, LM_LANGUAGE_FINNISH);
    ExpectSorted({u"apa", u"\u00e4rt", u"\u00e5sna", u"\u00f6ga", u"\u00f6sa", u"zebra"}, LM_LANGUAGE_GENERIC);
    // Danish and Norwegian: z < ae < o stroke < a ring; aa is a ring, so Aalborg follows al.
    ExpectSorted({u"abe", u"zebra", u"\u00e6ble", u"\u00e4ble", u"\u00f6l", u"\u00f8l", u"\u00e5l", u"Aalborg",
                  u"aalegr\u00f8d", u"\u00e5r"},
                 LM_LANGUAGE_DANISH);
    ExpectSorted({u"abe", u"zebra", u"\u00e6ble", u"\u00f8l", u"\u00e5l", u"Aalborg"}, LM_LANGUAGE_NORWEGIAN);
    ExpectSorted({u"Aalborg", u"abe", u"\u00e5l", u"zebra"}, LM_LANGUAGE_GENERIC);
    // Traditional Spanish contracts ch and ll; modern Spanish does not; n tilde after n.
    ExpectSorted(
        {u"cuna", u"cz", u"chico", u"Chile", u"dama", u"luz", u"lz", u"llama", u"Lleida", u"nube", u"\u00f1u", u"oca"},
        LM_LANGUAGE_SPANISH_TRADITIONAL);
    ExpectSorted({u"chico", u"cuna", u"cz", u"llama", u"luz", u"nube", u"\u00f1u", u"oca"}, LM_LANGUAGE_SPANISH);
    // Hungarian: c < cs, d < dz < dzs, g < gy, o < o diaeresis, s < sz, z < zs.
    ExpectSorted({u"cukor", u"csak", u"Csongor", u"dzadza", u"Dzs\u00f3", u"dzsungel", u"eb"}, LM_LANGUAGE_HUNGARIAN);
    ExpectSorted({u"gumi", u"gyar", u"olaj", u"\u00f3ra", u"\u00f6k\u00f6r", u"sz\u00f3", u"zab", u"zsir"},
                 LM_LANGUAGE_HUNGARIAN);
    ExpectSorted({u"csak", u"cukor", u"dzadza", u"dzsungel"}, LM_LANGUAGE_GENERIC);
    // German keeps umlauts next to their vowel and sharp s as ss; generic sharp s is a
    // letter of its own after every s.
    ExpectSorted({u"Apfel", u"\u00c4rger", u"Bar", u"B\u00e4r", u"Bart", u"Zucker"}, LM_LANGUAGE_GERMAN);
    ExpectSorted({u"Masse", u"Ma\u00dfe", u"Massel", u"Ma\u00dfstab", u"Mast"}, LM_LANGUAGE_GERMAN);
    ExpectSorted({u"Masse", u"Massel", u"Mast", u"Ma\u00dfe", u"Ma\u00dfstab"}, LM_LANGUAGE_GENERIC);
    // Hand-picked texts through the iterator: Danish aa is one word, a lone a at the end
    // stays a; Spanish ch through Windows-1252 (no table: mapped to 253); Hungarian dzs is
    // one word; digits, space, Han (its value).
    EXPECT_EQ(Orders(u"aab", LM_CODESET_LATIN1, LM_LANGUAGE_DANISH), (Units{0x5073, 0x5010}));
    EXPECT_EQ(Orders(u"ba", LM_CODESET_LATIN1, LM_LANGUAGE_DANISH), (Units{0x5010, 0x500C}));
    EXPECT_EQ(Orders(u"Ch!", LM_CODESET_CP1252, LM_LANGUAGE_SPANISH_TRADITIONAL), (Units{0x4016, 120}));
    EXPECT_EQ(Orders(u"dzsa", LM_CODESET_UCS2, LM_LANGUAGE_HUNGARIAN), (Units{0x501B, 0x500C}));
    EXPECT_EQ(Orders(u"dz", LM_CODESET_LATIN1, LM_LANGUAGE_HUNGARIAN), (Units{0x501A}));
    EXPECT_EQ(Orders(u"0 9\u4e00", LM_CODESET_UCS2, LM_LANGUAGE_GENERIC), (Units{0x3F00, 32, 0x3F5A, 0x4E00}));
}
