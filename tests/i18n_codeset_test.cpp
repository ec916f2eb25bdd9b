// Code sets of lumoi18n: lookup, mapping through Unicode with its substitutes, the
// process-wide defaults, and the case of characters.
#include <gtest/gtest.h>

#include "lumoi18n.h"

namespace {

const LmCodeSet* Set(uint8_t codeSet) { return LmLanguageContext::QueryCodeSet(codeSet); }

TEST(I18nCodeSet, QueryCodeSetKnowsNativeLatin1Cp1252Latin9AndUnicode) {
    EXPECT_EQ(Set(0), Set(1));  // native is code set 1 here
    EXPECT_EQ(LmLanguageContext::GetNativeCodeSet(), 1);
    const struct {
        uint8_t id, width;
        const char* name;
    } sets[] = {{1, 1, "ISO-8859-1"}, {2, 1, "Windows-1252"}, {3, 1, "ISO-8859-15"}, {253, 2, "UCS-2"}};
    for (const auto& s : sets) {
        ASSERT_NE(Set(s.id), nullptr);
        EXPECT_EQ(Set(s.id)->id, s.id);
        EXPECT_EQ(Set(s.id)->width, s.width);
        EXPECT_STREQ(Set(s.id)->name, s.name);
    }
    for (int cs : {4, 100, 224, 225, 252, 254, 255}) EXPECT_EQ(Set(static_cast<uint8_t>(cs)), nullptr) << cs;
}

TEST(I18nCodeSet, MapGoesThroughUnicodeWithSubstitutes) {
    constexpr uint16_t S8 = 0x1A, S16 = 0xFFFD;  // the substitutes of 1-byte code sets and of Unicode
    // {target, value, source, result}. To Unicode and back, code set 0 being the native one; oe, the
    // euro, Han and Y diaeresis are not in ISO-8859-1. Windows-1252: euro 0x80, S caron 0x8A, oe 0x9C,
    // left quote 0x93, trade mark 0x99, Y diaeresis 0x9F, an undefined byte (0x81) for the C1 control
    // of its value, which holds no other C1 control. Between 1-byte code sets: the euro is 0x80 in
    // 1252, 0xA4 in Latin-9 and lacking in Latin-1; Latin-1 0xA4 (currency sign) and 1252 0xBD (one
    // half) are not in Latin-9, Latin-9 0xBD is oe. Same code set: as it stands. An unknown source,
    // or a value too wide for a 1-byte source: the substitute.
    const struct {
        uint8_t to;
        uint16_t value;
        uint8_t from;
        uint16_t expected;
    } cases[] = {{253, 'A', 1, 'A'},     {253, 0xE9, 1, 0xE9},  {253, 0xE9, 0, 0xE9},       {1, 0xE9, 253, 0xE9},
                 {1, 0x153, 253, S8},    {1, 0x20AC, 253, S8},  {1, 0x4E00, 253, 0x1A},     {1, 0x178, 253, S8},
                 {253, 0x80, 2, 0x20AC}, {253, 0x8A, 2, 0x160}, {253, 0x9C, 2, 0x153},      {253, 0x93, 2, 0x201C},
                 {253, 0x81, 2, 0x81},   {253, 0xE9, 2, 0xE9},  {2, 0x20AC, 253, 0x80},     {2, 0x2122, 253, 0x99},
                 {2, 0x178, 253, 0x9F},  {2, 0x80, 253, S8},    {2, 0x100, 253, S8},        {3, 0x80, 2, 0xA4},
                 {1, 0x80, 2, S8},       {3, 0xA4, 1, S8},      {2, 0xA4, 3, 0x80},         {3, 0xBD, 2, S8},
                 {3, 0x9C, 2, 0xBD},     {2, 0xBD, 3, 0x9C},    {1, 0xBD, 3, S8},           {1, 'x', 3, 'x'},
                 {1, 0xA4, 1, 0xA4},     {1, 0xA4, 0, 0xA4},    {253, 0xFFFF, 253, 0xFFFF}, {1, 'A', 99, S8},
                 {253, 'A', 254, S16},   {253, 0x141, 1, S16}};
    for (const auto& c : cases) {
        EXPECT_EQ(Set(c.to)->map(c.value, c.from), c.expected)
            << std::hex << c.value << " from " << int(c.from) << " to " << int(c.to);
    }
    // Every byte of the 1-byte code sets survives the round trip through Unicode.
    for (uint8_t cs : {uint8_t(1), uint8_t(2), uint8_t(3)}) {
        for (uint16_t b = 0; b < 0x100; ++b) {
            const uint16_t u = Set(253)->map(b, cs);
            EXPECT_NE(u, LM_SUBSTITUTE_16);
            EXPECT_EQ(Set(cs)->map(u, 253), b) << int(cs) << " byte " << b;
        }
    }
}

TEST(I18nCodeSet, CaseComesFromTheUnicodeCharacterDatabase) {
    const LmCodeSet* latin1 = Set(1);
    const LmCodeSet* ucs2 = Set(253);
    // {code set, value, upper, lower, second upper}: sharp s is S and S; y diaeresis has an upper case
    // (U+0178) that code set 1 cannot hold; dotless i; title-case Dz; j caron is J and a combining
    // caron; the euro has a record but no case; Windows-1252 answers for its own bytes (s caron).
    const struct {
        const LmCodeSet* set;
        uint16_t value, upper, lower, rest;
    } cases[] = {{latin1, 'a', 'A', 0, 0},     {latin1, 'A', 0, 'a', 0},    {latin1, '5', 0, 0, 0},
                 {latin1, 0xDF, 'S', 0, 'S'},  {latin1, 0xFF, 0x178, 0, 0}, {ucs2, 0x178, 0, 0xFF, 0},
                 {ucs2, 0x142, 0x141, 0, 0},   {ucs2, 0x131, 'I', 0, 0},    {ucs2, 0x1C5, 0x1C4, 0x1C6, 0},
                 {ucs2, 0x1F0, 'J', 0, 0x30C}, {ucs2, 0x20AC, 0, 0, 0},     {Set(2), 0x9A, 0x160, 0, 0}};
    for (const auto& c : cases) {
        const LmUnicodeProps* p = c.set->GetUnicodeProps(c.value, 1);
        ASSERT_NE(p, nullptr) << std::hex << c.value;
        EXPECT_EQ(p->upper, c.upper) << std::hex << c.value;
        EXPECT_EQ(p->lower, c.lower) << std::hex << c.value;
        EXPECT_EQ(p->upperRest.count, c.rest != 0 ? 1 : 0) << std::hex << c.value;
        uint16_t rest = 0;
        p->upperRest.GetAt(0, rest);
        EXPECT_EQ(rest, c.rest) << std::hex << c.value;
    }
    EXPECT_EQ(*ucs2->GetUnicodeProps(0x1F0, 1)->upperRest.At(0), 0x30C);
    // No record, no case.
    EXPECT_EQ(ucs2->GetUnicodeProps(0x391, 1), nullptr);
    EXPECT_EQ(ucs2->GetUnicodeProps(0x4E00, 1), nullptr);
    EXPECT_EQ(latin1->GetUnicodeProps(0x100, 1), nullptr);
}

TEST(I18nCodeSet, DefaultsStartAsDocumentedAndRefuseMeaninglessValues) {
    EXPECT_EQ(LmLanguageContext::GetDefaultCodeSet(), 1);
    EXPECT_EQ(LmLanguageContext::GetDefault8CodeSet(), 1);
    EXPECT_EQ(LmLanguageContext::GetDefault16CodeSet(), 253);
    EXPECT_EQ(LmLanguageContext::GetDefaultLanguage(), 1);
    EXPECT_EQ(LmLanguageContext::GetDefaultCmpOp(), 0);

    LmLanguageContext::SetDefaultCodeSet(253);
    for (int refused : {254, 255, 77}) LmLanguageContext::SetDefaultCodeSet(static_cast<uint8_t>(refused));
    EXPECT_EQ(LmLanguageContext::GetDefaultCodeSet(), 253);
    EXPECT_EQ(LmLanguageContext::GetDefault8CodeSet(), 1);  // does not follow the general one
    LmLanguageContext::SetDefaultCodeSet(0);
    EXPECT_EQ(LmLanguageContext::GetDefaultCodeSet(), 0);
    LmLanguageContext::SetDefaultCodeSet(1);

    LmLanguageContext::SetDefaultLanguage(LM_LANGUAGE_SWEDISH);
    LmLanguageContext::SetDefaultLanguage(254);
    LmLanguageContext::SetDefaultLanguage(255);
    EXPECT_EQ(LmLanguageContext::GetDefaultLanguage(), LM_LANGUAGE_SWEDISH);
    LmLanguageContext::SetDefaultLanguage(1);

    LmLanguageContext::SetDefaultCmpOp(0x60);
    LmLanguageContext::SetDefaultCmpOp(0xFFFF);
    EXPECT_EQ(LmLanguageContext::GetDefaultCmpOp(), 0x60);
    LmLanguageContext::SetDefaultCmpOp(0);
}

TEST(I18nCodeSet, ContextStartsAndStopsNested) {
    const int before = LmI18NContextActive();
    ___LmI18NContext(1);
    ___LmI18NContext(1);
    ___LmI18NContext(0);
    EXPECT_EQ(LmI18NContextActive(), 1);
    ___LmI18NContext(0);
    EXPECT_EQ(LmI18NContextActive(), before);
    EXPECT_NE(LmLanguageContext::QueryCodeSet(1), nullptr);  // queries answer either way
}

}  // namespace
