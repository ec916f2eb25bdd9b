// Code sets: the mapping through Unicode, the family, the case lookup, and the code
// set objects themselves.
#include "i18ndata.h"

namespace {

// The objects. Code set 1 is ISO-8859-1, whose bytes are the first 256 Unicode values,
// so it needs no mapping tables; 2 and 3 have none of their own collation and order
// through code set 253.
constinit const LmCodeSet latin1(&lmLatin1Collation, LM_CODESET_LATIN1, 1, "ISO-8859-1", nullptr, nullptr, 0);
constinit const LmCodeSet cp1252(nullptr, LM_CODESET_CP1252, 1, "Windows-1252", lmCp1252High, lmCp1252FromUnicode, 128);
constinit const LmCodeSet latin9(nullptr, LM_CODESET_LATIN9, 1, "ISO-8859-15", lmLatin9High, lmLatin9FromUnicode, 128);
constinit const LmCodeSet ucs2(&lmUnicodeCollation, LM_CODESET_UCS2, 2, "UCS-2", nullptr, nullptr, 0);

}  // namespace

const LmCodeSet* LmLanguageContext::QueryCodeSet(uint8_t codeSet) {
    switch (codeSet) {
        case LM_CODESET_NATIVE_BYTE:
        case LM_CODESET_LATIN1:
            return &latin1;
        case LM_CODESET_CP1252:
            return &cp1252;
        case LM_CODESET_LATIN9:
            return &latin9;
        case LM_CODESET_UCS2:
            return &ucs2;
        default:
            return nullptr;
    }
}

// Every code set here holds Latin script only, for every language.
uint8_t LmCodeSet::family(uint8_t) const { return LM_FAMILY_LATIN; }

uint16_t LmCodeSet::map(uint16_t value, uint8_t fromCodeSet) const {
    const LmCodeSet* source = LmLanguageContext::QueryCodeSet(fromCodeSet);
    if (source == nullptr) return width == 1 ? LM_SUBSTITUTE_8 : LM_SUBSTITUTE_16;
    if (source == this) return value;
    return FromUnicode(source->ToUnicode(value));
}

uint16_t LmCodeSet::ToUnicode(uint16_t value) const {
    if (width != 1) return value;
    if (value > 0xFF) return LM_SUBSTITUTE_16;  // not a byte: no character of this code set
    if (value < 0x80 || toUnicodeHigh == nullptr) return value;
    return toUnicodeHigh[value - 0x80];
}

uint16_t LmCodeSet::FromUnicode(uint16_t unicode) const {
    if (width != 1) return unicode;
    if (unicode < 0x80) return unicode;
    if (toUnicodeHigh == nullptr) return unicode <= 0xFF ? unicode : LM_SUBSTITUTE_8;
    // Binary search of the pairs sorted by Unicode value.
    int lo = 0;
    int hi = fromUnicodeCount - 1;
    while (lo <= hi) {
        const int mid = (lo + hi) / 2;
        const uint16_t u = fromUnicode[mid].unicode;
        if (u == unicode) return fromUnicode[mid].byte;
        if (u < unicode)
            lo = mid + 1;
        else
            hi = mid - 1;
    }
    return LM_SUBSTITUTE_8;
}

const LmUnicodeProps* LmCodeSet::GetUnicodeProps(uint16_t value, uint8_t) const {
    const uint16_t unicode = ToUnicode(value);
    if (width == 1 && unicode == LM_SUBSTITUTE_16) return nullptr;
    return LmUnicodePropsOf(unicode);
}
