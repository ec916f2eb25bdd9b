// LmChar: one character in the value or the pointer form; its mapping between code
// sets, its case and its class. The case transforms LmCharToLower and LmCharToUpper.
#include <cctype>

#include "lmchar.h"

namespace {

inline unsigned char ResolveLanguage(unsigned char language) {
    return language == LM_LANGUAGE_DEFAULT ? LmLanguageContext::GetDefaultLanguage() : language;
}

inline unsigned char Resolved(unsigned char codeSet) {
    return codeSet == LM_CODESET_NATIVE ? LmLanguageContext::GetNativeCodeSet() : codeSet;
}

}  // namespace

// ---- Construction. ----

LmChar::LmChar(LmString& s, int offset)
    : pointer(reinterpret_cast<unsigned char*>(s.StrGet()) + offset),
      value(0),
      codeSet(s.GetCodeSet()),
      language(s.GetLanguage()),
      format(LmFormatLittle) {}

LmChar::LmChar(const LmChar& other)
    : pointer(nullptr),
      value(other.GetValue()),
      codeSet(other.codeSet),
      language(ResolveLanguage(other.language)),
      format(LmFormatLittle) {}

LmChar::LmChar(char c, unsigned char cs, unsigned char lang)
    : pointer(nullptr),
      value(static_cast<unsigned char>(c)),
      codeSet(cs == LM_CODESET_DEFAULT ? LmLanguageContext::GetDefault8CodeSet() : cs),
      language(ResolveLanguage(lang)),
      format(LmFormatLittle) {}

LmChar::LmChar(unsigned short c, unsigned char cs, unsigned char lang)
    : pointer(nullptr),
      value(c),
      codeSet(cs == LM_CODESET_DEFAULT ? LmLanguageContext::GetDefault16CodeSet() : cs),
      language(ResolveLanguage(lang)),
      format(LmFormatLittle) {
    if (codeSet < LM_CODESET_FIRST_WIDE) value &= 0xFF;
}

LmChar::LmChar(const char* p, unsigned char cs, unsigned char lang, unsigned char fmt)
    : pointer(reinterpret_cast<unsigned char*>(const_cast<char*>(p))),
      value(0),
      codeSet(cs == LM_CODESET_DEFAULT ? LmLanguageContext::GetDefault8CodeSet() : cs),
      language(ResolveLanguage(lang)),
      format(fmt == 255 ? LmFormatLittle : fmt) {}

// ---- Value access. ----

uint16_t LmChar::GetValue() const {
    const unsigned char* at = pointer != nullptr ? pointer : reinterpret_cast<const unsigned char*>(&value);
    if (codeSet < LM_CODESET_FIRST_WIDE) return pointer != nullptr ? *pointer : static_cast<uint16_t>(value & 0xFF);
    uint16_t unit = 0;
    ShortStoreOne(&unit, at, format);
    return unit;
}

// A 1-byte character is one byte, also in the value form; a 16-bit one goes
// through the character's format.
void LmChar::Put(uint16_t unit) {
    if (codeSet < LM_CODESET_FIRST_WIDE) {
        if (pointer != nullptr) {
            *pointer = static_cast<unsigned char>(unit);
        } else {
            value = static_cast<uint16_t>(unit & 0xFF);
        }
        return;
    }
    ShortStoreOne(pointer != nullptr ? static_cast<void*>(pointer) : static_cast<void*>(&value), &unit, format);
}

// ---- Assignment. ----

LmChar& LmChar::operator=(const LmChar& other) {
    if (&other == this) return *this;
    if (pointer == nullptr) {
        // A value form becomes the source; a pointer-form source hands over its
        // character read, in the machine's order.
        value = other.pointer != nullptr ? other.GetValue() : other.value;
        format = other.pointer != nullptr ? LmFormatLittle : other.format;
        codeSet = other.codeSet;
        language = other.language;
        return *this;
    }
    const LmChar mapped = other.MapTo(codeSet);
    Put(mapped.GetValue());
    return *this;
}

LmChar& LmChar::operator=(char c) {
    Put(static_cast<unsigned char>(c));
    return *this;
}

LmChar& LmChar::operator=(unsigned short c) {
    Put(c);
    return *this;
}

// ---- Mapping and case. ----

// A code set that lumoi18n does not know (254 among them) has nothing to map
// through: the value is kept as it is and only the label changes.
LmChar LmChar::MapTo(unsigned char target) const {
    if (target == LM_CODESET_NATIVE || target == codeSet) return LmChar(*this);
    const LmCodeSet* to = LmLanguageContext::QueryCodeSet(target);
    uint16_t v = GetValue();
    if (to != nullptr) v = to->map(v, Resolved(codeSet));
    return LmChar(static_cast<unsigned short>(v), target, language);
}

LmChar LmChar::ToLower(LmStringIterator*) const {
    const unsigned char lang = ResolveLanguage(language);
    if (codeSet == LM_CODESET_NATIVE) {
        return LmChar(static_cast<char>(std::tolower(GetValue() & 0xFF)), LM_CODESET_NATIVE, lang);
    }
    const LmCodeSet* set = LmLanguageContext::QueryCodeSet(codeSet);
    const LmUnicodeProps* props = set != nullptr ? set->GetUnicodeProps(GetValue(), lang) : nullptr;
    if (props == nullptr || props->lower == 0) return LmChar(*this);
    return LmChar(static_cast<unsigned short>(props->lower), LM_CODESET_UNICODE, lang).MapTo(codeSet);
}

// Unlike the lower case, an upper case can be longer than one character: the
// first is the result, the others go to the iterator's overflow.
LmChar LmChar::ToUpper(LmStringIterator* iterator) const {
    const unsigned char lang = ResolveLanguage(language);
    if (codeSet == LM_CODESET_NATIVE) {
        return LmChar(static_cast<char>(std::toupper(GetValue() & 0xFF)), LM_CODESET_NATIVE, lang);
    }
    const LmCodeSet* set = LmLanguageContext::QueryCodeSet(codeSet);
    const LmUnicodeProps* props = set != nullptr ? set->GetUnicodeProps(GetValue(), lang) : nullptr;
    if (props == nullptr) return LmChar(*this);
    if (props->upperRest.count > 0 && iterator != nullptr) iterator->SetOverflow(&props->upperRest, LM_CODESET_DEFAULT);
    if (props->upper == 0) return LmChar(*this);
    return LmChar(static_cast<unsigned short>(props->upper), LM_CODESET_UNICODE, lang).MapTo(codeSet);
}

// ---- Class. ----

uint16_t LmCharOrder(const LmChar& c) {
    uint16_t value = c.GetValue();
    if (c.GetCodeSet() == LM_CODESET_ORDER) return value;  // already an order word
    const unsigned char codeSet = Resolved(c.GetCodeSet());
    const LmCodeSet* set = LmLanguageContext::QueryCodeSet(codeSet);
    const LmCollationTable* table = set != nullptr ? set->collation : nullptr;
    if (table == nullptr) {
        const LmCodeSet* unicode = LmLanguageContext::QueryCodeSet(LM_CODESET_UNICODE);
        if (unicode != nullptr) {
            value = unicode->map(value, codeSet);
            table = unicode->collation;
        }
    }
    if (table == nullptr) return value;
    const LmCollationRecord* record = table->lookup(value);
    return record != nullptr ? record->order : value;  // no record: the value orders as itself
}

int LmChar::IsSpace() const { return LmCharOrder(*this) < LM_ORDER_FIRST_SYMBOL ? 1 : 0; }

int LmChar::IsSymbol() const {
    const uint16_t order = LmCharOrder(*this);
    return order >= LM_ORDER_FIRST_SYMBOL && order < LM_ORDER_FIRST_DIGIT ? 1 : 0;
}

int LmChar::IsDigit() const {
    const uint16_t order = LmCharOrder(*this);
    return order >= LM_ORDER_FIRST_DIGIT && order < LM_ORDER_FIRST_LETTER ? 1 : 0;
}

int LmChar::IsAlpha() const {
    const uint16_t order = LmCharOrder(*this);
    return order >= LM_ORDER_FIRST_LETTER && order < LM_ORDER_FIRST_HAN ? 1 : 0;
}

int LmChar::IsHan() const { return LmCharOrder(*this) >= LM_ORDER_FIRST_HAN ? 1 : 0; }

// ---- The case transforms. ----

LmCharOperation::~LmCharOperation() = default;

LmChar LmCharToLower::Apply(const LmChar& c, LmStringIterator* source) { return c.ToLower(source); }

LmChar LmCharToUpper::Apply(const LmChar& c, LmStringIterator* source) { return c.ToUpper(source); }

// ---- Comparison. ----

namespace {

// The character alone with a terminator, as LmStrCmp reads it. A pointer form's
// bytes are taken as they stand and read in format 1 whatever the character's own
// format says. Copying keeps the comparison to this one character: the characters
// behind it in its string never take part in a contraction.
void CharText(unsigned char (&text)[4], const unsigned char* pointer, const uint16_t& value, unsigned char codeSet) {
    const unsigned width = LmCodeSetWidth(codeSet);
    const unsigned char* from = pointer != nullptr ? pointer : reinterpret_cast<const unsigned char*>(&value);
    text[0] = text[1] = text[2] = text[3] = 0;
    if (width == 1 && pointer == nullptr) {
        text[0] = static_cast<unsigned char>(value & 0xFF);
        return;
    }
    for (unsigned i = 0; i < width; ++i) text[i] = from[i];
}

}  // namespace

// One character on each side, count 1: an expansion decides by its first order word.
int LmChar::Compare(const LmChar& other, unsigned short op) const {
    unsigned char left[4], right[4];
    CharText(left, pointer, value, codeSet);
    CharText(right, other.pointer, other.value, other.codeSet);
    return LmStrCmp(codeSet, language, left, other.codeSet, other.language, right,
                    op == LM_CMP_DEFAULT ? LmLanguageContext::GetDefaultCmpOp() : op, 1, LmFormatLittle, nullptr);
}

int LmChar::operator==(const LmChar& other) const { return Compare(other) == 0 ? 1 : 0; }
int LmChar::operator!=(const LmChar& other) const { return Compare(other); }
int LmChar::operator<(const LmChar& other) const { return Compare(other) < 0 ? 1 : 0; }
int LmChar::operator<=(const LmChar& other) const { return Compare(other) <= 0 ? 1 : 0; }
int LmChar::operator>(const LmChar& other) const { return Compare(other) > 0 ? 1 : 0; }
int LmChar::operator>=(const LmChar& other) const { return Compare(other) >= 0 ? 1 : 0; }

// A plain character is taken in the default 8-bit or 16-bit code set and the default
// language: these are collation comparisons, so with a case-ignoring default 'A' == 'a'.
int LmChar::operator==(char c) const { return Compare(LmChar(c)) == 0 ? 1 : 0; }
int LmChar::operator!=(char c) const { return Compare(LmChar(c)); }
int LmChar::operator<(char c) const { return Compare(LmChar(c)) < 0 ? 1 : 0; }
int LmChar::operator<=(char c) const { return Compare(LmChar(c)) <= 0 ? 1 : 0; }
int LmChar::operator>(char c) const { return Compare(LmChar(c)) > 0 ? 1 : 0; }
int LmChar::operator>=(char c) const { return Compare(LmChar(c)) >= 0 ? 1 : 0; }
int LmChar::operator==(unsigned short c) const { return Compare(LmChar(c)) == 0 ? 1 : 0; }
int LmChar::operator!=(unsigned short c) const { return Compare(LmChar(c)); }
int LmChar::operator<(unsigned short c) const { return Compare(LmChar(c)) < 0 ? 1 : 0; }
int LmChar::operator<=(unsigned short c) const { return Compare(LmChar(c)) <= 0 ? 1 : 0; }
int LmChar::operator>(unsigned short c) const { return Compare(LmChar(c)) > 0 ? 1 : 0; }
int LmChar::operator>=(unsigned short c) const { return Compare(LmChar(c)) >= 0 ? 1 : 0; }
