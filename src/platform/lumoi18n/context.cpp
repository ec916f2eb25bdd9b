// The language context: started and stopped by the type manager's module start,
// the lookup of code sets and languages, and the process-wide defaults.
#include "i18ndata.h"

namespace {

int starts = 0;

// The defaults. Plain statics with constant initial values, so that they answer
// during the static initialisation of other libraries, before any start.
uint8_t defaultCodeSet = LM_CODESET_LATIN1;
uint8_t defaultLanguage = LM_LANGUAGE_GENERIC;
uint16_t defaultCmpOp = 0;

}  // namespace

void ___LmI18NContext(int start) {
    if (start != 0)
        ++starts;
    else if (starts > 0)
        --starts;
}

int LmI18NContextActive() { return starts > 0 ? 1 : 0; }

const LmLanguage* LmLanguageContext::QueryLanguage(uint8_t language) {
    // Ids run from 1 without gaps, so the id is the index plus one.
    if (language == 0 || language > lmLanguageCount) return nullptr;
    return &lmLanguages[language - 1];
}

uint8_t LmLanguageContext::GetNativeCodeSet() { return LM_CODESET_LATIN1; }
uint8_t LmLanguageContext::GetDefaultCodeSet() { return defaultCodeSet; }
// A byte that names no code set (254, 255, unknown ones) would leave new strings
// without tables: it is ignored and the default stays.
void LmLanguageContext::SetDefaultCodeSet(uint8_t codeSet) {
    if (QueryCodeSet(codeSet) != nullptr) defaultCodeSet = codeSet;
}
uint8_t LmLanguageContext::GetDefault8CodeSet() { return LM_CODESET_LATIN1; }
uint8_t LmLanguageContext::GetDefault16CodeSet() { return LM_CODESET_UCS2; }
uint8_t LmLanguageContext::GetDefaultLanguage() { return defaultLanguage; }
// 254 marks the null value and 255 means "the default": neither can be the default.
void LmLanguageContext::SetDefaultLanguage(uint8_t language) {
    if (language < 254) defaultLanguage = language;
}
uint16_t LmLanguageContext::GetDefaultCmpOp() { return defaultCmpOp; }
// 0xFFFF means "the default" and cannot be the default itself.
void LmLanguageContext::SetDefaultCmpOp(uint16_t option) {
    if (option != 0xFFFF) defaultCmpOp = option;
}
