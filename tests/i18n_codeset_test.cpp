// Code sets of lumoi18n: lookup, mapping through Unicode with its substitutes, the
// process-wide defaults, and the case of characters.
#include <gtest/gtest.h>

#include "lumoi18n.h"

namespace {

const LmCodeSet* Set(uint8_t codeSet) { return LmLanguageContext::QueryCodeSet(codeSet); }

TEST(I18nCodeSet, QueryCodeSetKnowsNativeLatin1Cp1252Latin9AndUnicode) {
    ASSERT_NE(Set(0), nullptr);
    EXPECT_EQ(Set(0), Set(1));  // native is code set 1 here
    EXPECT_EQ(LmLanguageContext::GetNativeCodeSet(), 1);
    EXPECT_EQ(Set(1)->id, 1);
    EXPECT_EQ(Set(1)->width, 1);
    EXPECT_STREQ(Set(1)->name, "ISO-8859-1");
    EXPECT_EQ(Set(2)->id, 2);
    EXPECT_STREQ(Set(2)->name, "Windows-1252");
    EXPECT_EQ(Set(3)->id, 3);
    EXPECT_STREQ(Set(3)->name, "ISO-8859-15");
    EXPECT_EQ(Set(253)->id, 253);
    EXPECT_EQ(Set(253)->width, 2);
    for (int cs : {4, 100, 224, 225, 252, 254, 255}) EXPECT_EQ(Set(static_cast<uint8_t>(cs)), nullptr) << cs;
}

TEST(I18nCodeSet, MapGoesThroughUnicodeWithSubstitutes) {
    const LmCodeSet* latin1 = Set(1);
    const LmCodeSet* cp1252 = Set(2);
    const LmCodeSet* latin9 = Set(3);
    const LmCodeSet* ucs2 = Set(253);

    // ASCII and Latin-1 letters to and from Unicode.
    EXPECT_EQ(ucs2->map('A', 1), 'A');
    EXPECT_EQ(ucs2->map(0xE9, 1), 0xE9);
    EXPECT_EQ(ucs2->map(0xE9, 0), 0xE9);  // code set 0 is the native one
    EXPECT_EQ(latin1->map(0xE9, 253), 0xE9);
    EXPECT_EQ(latin1->map(0x153, 253), LM_SUBSTITUTE_8);  // oe: not in ISO-8859-1
    EXPECT_EQ(latin1->map(0x20AC, 253), LM_SUBSTITUTE_8);
    EXPECT_EQ(latin1->map(0x4E00, 253), 0x1A);

    // Windows-1252: the euro at 0x80, s caron at 0x8A, oe at 0x9C, quotes at 0x93.
    EXPECT_EQ(ucs2->map(0x80, 2), 0x20AC);
    EXPECT_EQ(ucs2->map(0x8A, 2), 0x160);
    EXPECT_EQ(ucs2->map(0x9C, 2), 0x153);
    EXPECT_EQ(ucs2->map(0x93, 2), 0x201C);
    EXPECT_EQ(ucs2->map(0x81, 2), 0x81);  // undefined byte: the C1 control of its value
    EXPECT_EQ(ucs2->map(0xE9, 2), 0xE9);
    EXPECT_EQ(cp1252->map(0x20AC, 253), 0x80);
    EXPECT_EQ(cp1252->map(0x2122, 253), 0x99);           // trade mark sign
    EXPECT_EQ(cp1252->map(0x178, 253), 0x9F);            // Y diaeresis
    EXPECT_EQ(cp1252->map(0x80, 253), LM_SUBSTITUTE_8);  // the C1 control 0x80 is not in it
    EXPECT_EQ(cp1252->map(0x100, 253), LM_SUBSTITUTE_8);

    // Between 1-byte code sets: Windows-1252 0x80 is the euro, which ISO-8859-15 has
    // at 0xA4 and ISO-8859-1 lacks; ISO-8859-1 0xA4 is the currency sign, which
    // ISO-8859-15 lacks.
    EXPECT_EQ(latin9->map(0x80, 2), 0xA4);
    EXPECT_EQ(latin1->map(0x80, 2), LM_SUBSTITUTE_8);
    EXPECT_EQ(latin9->map(0xA4, 1), LM_SUBSTITUTE_8);
    EXPECT_EQ(cp1252->map(0xA4, 3), 0x80);
    EXPECT_EQ(latin9->map(0x9C, 2), 0xBD);             // oe: 0x9C in Windows-1252, 0xBD in ISO-8859-15
    EXPECT_EQ(latin9->map(0xBD, 2), LM_SUBSTITUTE_8);  // one half: 0xBD in Windows-1252, not in ISO-8859-15
    EXPECT_EQ(cp1252->map(0xBD, 3), 0x9C);
    EXPECT_EQ(latin1->map(0xBD, 3), LM_SUBSTITUTE_8);
    EXPECT_EQ(latin1->map('x', 3), 'x');

    // Same code set: the value as it stands. Unknown source code set: the substitute.
    EXPECT_EQ(latin1->map(0xA4, 1), 0xA4);
    EXPECT_EQ(latin1->map(0xA4, 0), 0xA4);
    EXPECT_EQ(ucs2->map(0xFFFF, 253), 0xFFFF);
    EXPECT_EQ(latin1->map('A', 99), LM_SUBSTITUTE_8);
    EXPECT_EQ(ucs2->map('A', 254), LM_SUBSTITUTE_16);
    // A value too wide for a 1-byte source code set is no character of it.
    EXPECT_EQ(ucs2->map(0x141, 1), LM_SUBSTITUTE_16);
}

TEST(I18nCodeSet, EveryByteOfTheOneByteSetsSurvivesTheRoundTripThroughUnicode) {
    for (uint8_t cs : {uint8_t(1), uint8_t(2), uint8_t(3)}) {
        const LmCodeSet* set = Set(cs);
        for (uint16_t b = 0; b < 0x100; ++b) {
            const uint16_t u = Set(253)->map(b, cs);
            EXPECT_NE(u, LM_SUBSTITUTE_16);
            EXPECT_EQ(set->map(u, 253), b) << int(cs) << " byte " << b;
        }
    }
}

TEST(I18nCodeSet, CaseComesFromTheUnicodeCharacterDatabase) {
    const LmCodeSet* latin1 = Set(1);
    const LmCodeSet* ucs2 = Set(253);

    const LmUnicodeProps* a = latin1->GetUnicodeProps('a', 1);
    ASSERT_NE(a, nullptr);
    EXPECT_EQ(a->upper, 'A');
    EXPECT_EQ(a->lower, 0);
    EXPECT_EQ(a->upperRest.count, 0);
    EXPECT_EQ(latin1->GetUnicodeProps('A', 1)->lower, 'a');
    EXPECT_EQ(latin1->GetUnicodeProps('A', 1)->upper, 0);
    EXPECT_EQ(latin1->GetUnicodeProps('5', 1)->upper, 0);
    EXPECT_EQ(latin1->GetUnicodeProps('5', 1)->lower, 0);

    // Sharp s: upper case S, and a second S in upperRest.
    const LmUnicodeProps* sharp = latin1->GetUnicodeProps(0xDF, 1);
    ASSERT_NE(sharp, nullptr);
    EXPECT_EQ(sharp->upper, 'S');
    ASSERT_EQ(sharp->upperRest.count, 1);
    uint16_t rest = 0;
    EXPECT_EQ(sharp->upperRest.GetAt(0, rest), 0);
    EXPECT_EQ(rest, 'S');
    EXPECT_EQ(sharp->lower, 0);

    // y diaeresis: its upper case U+0178 is a Unicode value that code set 1 cannot hold.
    EXPECT_EQ(latin1->GetUnicodeProps(0xFF, 1)->upper, 0x178);
    EXPECT_EQ(latin1->map(0x178, 253), LM_SUBSTITUTE_8);
    EXPECT_EQ(ucs2->GetUnicodeProps(0x178, 1)->lower, 0xFF);

    // Latin Extended-A and -B, and the title-case digraph dz: upper DZ, lower dz.
    EXPECT_EQ(ucs2->GetUnicodeProps(0x142, 1)->upper, 0x141);
    EXPECT_EQ(ucs2->GetUnicodeProps(0x131, 1)->upper, 'I');  // dotless i
    EXPECT_EQ(ucs2->GetUnicodeProps(0x1C5, 1)->upper, 0x1C4);
    EXPECT_EQ(ucs2->GetUnicodeProps(0x1C5, 1)->lower, 0x1C6);
    EXPECT_EQ(ucs2->GetUnicodeProps(0x1F0, 1)->upper, 'J');  // j caron: J and a combining caron
    EXPECT_EQ(*ucs2->GetUnicodeProps(0x1F0, 1)->upperRest.At(0), 0x30C);
    EXPECT_EQ(ucs2->GetUnicodeProps(0x20AC, 1)->upper, 0);  // euro: a record, no case

    // Windows-1252 answers for its own bytes: 0x9A is s caron, 0x8A S caron.
    EXPECT_EQ(Set(2)->GetUnicodeProps(0x9A, 1)->upper, 0x160);
    EXPECT_EQ(Set(2)->map(Set(2)->GetUnicodeProps(0x9A, 1)->upper, 253), 0x8A);

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
    EXPECT_EQ(LmLanguageContext::GetDefaultCodeSet(), 253);
    LmLanguageContext::SetDefaultCodeSet(254);  // order words: no code set
    LmLanguageContext::SetDefaultCodeSet(255);
    LmLanguageContext::SetDefaultCodeSet(77);
    EXPECT_EQ(LmLanguageContext::GetDefaultCodeSet(), 253);
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
    // The 8- and 16-bit defaults do not follow the general one.
    EXPECT_EQ(LmLanguageContext::GetDefault8CodeSet(), 1);
}

TEST(I18nCodeSet, ContextStartsAndStopsNested) {
    const int before = LmI18NContextActive();
    ___LmI18NContext(1);
    ___LmI18NContext(1);
    EXPECT_EQ(LmI18NContextActive(), 1);
    ___LmI18NContext(0);
    EXPECT_EQ(LmI18NContextActive(), 1);
    ___LmI18NContext(0);
    EXPECT_EQ(LmI18NContextActive(), before);
    // Queries answer whether the context is up or not.
    EXPECT_NE(LmLanguageContext::QueryCodeSet(1), nullptr);
}

}  // namespace
