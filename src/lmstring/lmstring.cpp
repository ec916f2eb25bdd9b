// LmString: construction, assignment, appending, disposal, code set changes, case
// transforms, the module statics and the forwarders to the process-wide defaults.
#include <cmath>
#include <cstdio>
#include <cstring>

#include "lmchar.h"
#include "lmstring.h"
#include "lmstrpriv.h"

namespace {

// The shared empty text: StrGet hands it out when there is no buffer, so it lives in
// writable data. Four bytes read as an empty 8- or 16-bit text.
alignas(4) unsigned char sharedEmptyText[4] = {0, 0, 0, 0};

inline unsigned Min(unsigned a, unsigned b) { return a < b ? a : b; }

// The double printing of the number formats: "%.17g", with the three spellings of
// the values that have no digits.
void FormatDouble(double d, char* out, size_t outSize) {
    if (std::isnan(d)) {
        std::snprintf(out, outSize, "%s", "NaN");
    } else if (std::isinf(d)) {
        std::snprintf(out, outSize, "%s", d < 0 ? "-Infinity" : "Infinity");
    } else {
        std::snprintf(out, outSize, "%.17g", d);
    }
}

}  // namespace

// ---- Statics. ----

LmString& LmString::EmptyString() {
    static LmString empty;
    return empty;
}

const LmString& LmString::EmptyValue() {
    static const LmString value = [] {
        LmString v(GetDefault8CodeSet(), GetDefaultLanguage());
        LmStringSplice(v, LmStringZeroText, v.codeSet, 0, 0, 0, 1, LM_SPLICE_ASSIGN, LmFormatLittle);
        return v;
    }();
    return value;
}

namespace {
// Both statics are built when the library is loaded, with the defaults of that moment.
[[maybe_unused]] const LmString& loadedEmptyString = LmString::EmptyString();
[[maybe_unused]] const LmString& loadedEmptyValue = LmString::EmptyValue();
}  // namespace

unsigned char LmString::GetDefaultCodeSet() { return LmLanguageContext::GetDefaultCodeSet(); }
unsigned char LmString::GetDefault8CodeSet() { return LmLanguageContext::GetDefault8CodeSet(); }
unsigned char LmString::GetDefault16CodeSet() { return LmLanguageContext::GetDefault16CodeSet(); }
unsigned char LmString::GetDefaultLanguage() { return LmLanguageContext::GetDefaultLanguage(); }
unsigned short LmString::GetDefaultCmpOp() { return LmLanguageContext::GetDefaultCmpOp(); }
void LmString::SetDefaultCodeSet(unsigned char cs) { LmLanguageContext::SetDefaultCodeSet(cs); }
void LmString::SetDefaultLanguage(unsigned char lang) { LmLanguageContext::SetDefaultLanguage(lang); }
void LmString::SetDefaultCmpOp(unsigned short option) { LmLanguageContext::SetDefaultCmpOp(option); }

// ---- Helpers. ----

void LmString::Release() {
    delete[] data;
    data = nullptr;
}

void LmString::AssignText(const void* text, unsigned char textCodeSet) {
    if (text == nullptr) return;
    const unsigned n = Min(LmStrLen(textCodeSet, text), LmStringMaxChars(textCodeSet));
    LmStringSplice(*this, text, textCodeSet, 0, 0, static_cast<uint16_t>(n), 1, LM_SPLICE_ASSIGN, LmFormatLittle);
}

// ---- Construction. ----

LmString::LmString() : data(nullptr), size(0), codeSet(GetDefaultCodeSet()), language(GetDefaultLanguage()) {}

LmString::LmString(unsigned char cs, unsigned char lang) : data(nullptr), size(0), codeSet(cs), language(lang) {}

LmString::LmString(const LmString& other) {
    data = nullptr;
    size = 0;
    if (&other == this) return;  // built from itself: the labels stay, no text
    codeSet = other.codeSet;
    language = other.language;
    if (other.data != nullptr) AssignText(other.data, other.codeSet);
}

LmString::LmString(char c) : data(nullptr), size(0), codeSet(GetDefault8CodeSet()), language(GetDefaultLanguage()) {
    const char text[2] = {c, 0};
    if (c != 0) AssignText(text, codeSet);
}

LmString::LmString(unsigned char c) : LmString(static_cast<char>(c)) {}

LmString::LmString(unsigned short c)
    : data(nullptr), size(0), codeSet(GetDefault16CodeSet()), language(GetDefaultLanguage()) {
    const uint16_t text[2] = {c, 0};
    if (c != 0) AssignText(text, codeSet);
}

LmString::LmString(short n) : LmString(static_cast<int>(n)) {}

LmString::LmString(int n) : data(nullptr), size(0), codeSet(GetDefault8CodeSet()), language(GetDefaultLanguage()) {
    char text[16];
    std::snprintf(text, sizeof text, "%d", n);
    AssignText(text, codeSet);
}

LmString::LmString(unsigned int n)
    : data(nullptr), size(0), codeSet(GetDefault8CodeSet()), language(GetDefaultLanguage()) {
    char text[16];
    std::snprintf(text, sizeof text, "%u", n);
    AssignText(text, codeSet);
}

LmString::LmString(int64_t n) : data(nullptr), size(0), codeSet(GetDefault8CodeSet()), language(GetDefaultLanguage()) {
    char text[24];
    std::snprintf(text, sizeof text, "%lld", static_cast<long long>(n));
    AssignText(text, codeSet);
}

LmString::LmString(uint64_t n) : data(nullptr), size(0), codeSet(GetDefault8CodeSet()), language(GetDefaultLanguage()) {
    char text[24];
    std::snprintf(text, sizeof text, "%llu", static_cast<unsigned long long>(n));
    AssignText(text, codeSet);
}

LmString::LmString(double d) : data(nullptr), size(0), codeSet(GetDefault8CodeSet()), language(GetDefaultLanguage()) {
    char text[64];
    FormatDouble(d, text, sizeof text);
    AssignText(text, codeSet);
}

LmString::LmString(const char* text)
    : data(nullptr), size(0), codeSet(GetDefault8CodeSet()), language(GetDefaultLanguage()) {
    AssignText(text, codeSet);
}

LmString::LmString(const char* text, unsigned short n)
    : data(nullptr), size(0), codeSet(GetDefault8CodeSet()), language(GetDefaultLanguage()) {
    LmStringAssignRaw(*this, text, codeSet, n, LmFormatLittle);
}

LmString::LmString(const unsigned short* text)
    : data(nullptr), size(0), codeSet(GetDefault16CodeSet()), language(GetDefaultLanguage()) {
    AssignText(text, codeSet);
}

LmString::LmString(const unsigned short* text, unsigned short n)
    : data(nullptr), size(0), codeSet(GetDefault16CodeSet()), language(GetDefaultLanguage()) {
    LmStringAssignRaw(*this, text, codeSet, n, LmFormatLittle);
}

LmString::~LmString() { Destroy(); }

// ---- Assignment and appending. ----

LmString& LmString::operator=(const LmString& other) {
    if (&other == this) return *this;
    Release();
    size = 0;
    codeSet = 0;
    language = 0;
    codeSet = other.codeSet;
    if (other.data != nullptr) AssignText(other.data, other.codeSet);
    language = other.language;  // last, as the text is copied under the source's code set alone
    return *this;
}

// Assigning a plain text relabels the string. The old buffer goes only after the
// splice, so a text taken from this very string stays readable.
LmString& LmString::operator=(const char* text) { return AssignRelabelled(text, GetDefault8CodeSet()); }

LmString& LmString::operator=(const unsigned short* text) { return AssignRelabelled(text, GetDefault16CodeSet()); }

// A plain text in the default code set of its width and the default language; a
// null text leaves no buffer.
LmString& LmString::AssignRelabelled(const void* text, unsigned char textCodeSet) {
    codeSet = textCodeSet;
    if (text == nullptr) {
        Release();
        size = 0;
    } else {
        AssignText(text, codeSet);
    }
    language = GetDefaultLanguage();
    return *this;
}

LmString& LmString::operator+=(const LmString& rhs) {
    LmStringSplice(*this, rhs.StrGet(), rhs.codeSet, Len(), 0, rhs.Len(), 1, LM_SPLICE_ASSIGN, LmFormatLittle);
    return *this;
}

LmString& LmString::operator<<(const LmString& rhs) { return *this += rhs; }
LmString& LmString::operator<<(char c) { return *this += LmString(c); }
LmString& LmString::operator<<(const char* text) { return *this += LmString(text); }
LmString& LmString::operator<<(const unsigned short* text) { return *this += LmString(text); }
LmString& LmString::operator<<(short n) { return *this += LmString(n); }
LmString& LmString::operator<<(int n) { return *this += LmString(n); }
LmString& LmString::operator<<(unsigned int n) { return *this += LmString(n); }
LmString& LmString::operator<<(int64_t n) { return *this += LmString(n); }
LmString& LmString::operator<<(uint64_t n) { return *this += LmString(n); }
LmString& LmString::operator<<(float f) { return *this += LmString(static_cast<double>(f)); }
LmString& LmString::operator<<(double d) { return *this += LmString(d); }

// The meaning of the argument follows the left operand: a character on a 2-byte
// string, a number on a 1-byte one.
LmString& LmString::operator<<(unsigned short c) {
    if (IsWide()) return *this += LmString(c);
    return *this += LmString(static_cast<unsigned int>(c));
}

LmString operator+(const LmString& a, const LmString& b) {
    LmString result(a.GetCodeSet(), a.GetLanguage());
    result += a;
    result += b;
    return result;
}

// ---- Disposal. ----

void LmString::Destroy() {
    Release();
    size = 0;
    codeSet = 0;
    language = 0;
}

void LmString::d_deactivate() { Destroy(); }

void LmString::Init() {
    data = nullptr;
    size = 0;
    codeSet = GetDefaultCodeSet();
    language = GetDefaultLanguage();
}

void LmString::Destruct(LmString& other) {
    if (&other == this) return;
    Release();
    data = other.data;
    size = other.size;
    codeSet = other.codeSet;
    language = other.language;
    other.data = nullptr;
    other.size = 0;
}

// ---- Code sets. ----

void LmString::SetCodeSet(unsigned char cs) {
    if (data != nullptr && LmCodeSetWidth(cs) != Width()) {
        unsigned char* fresh = nullptr;
        size = static_cast<uint16_t>(LmStringConvertBuffer(codeSet, cs, data, fresh));
        Release();
        data = fresh;
    }
    codeSet = cs;
}

int LmString::MapToCodeSet(unsigned char cs) {
    if (cs == LM_CODESET_NATIVE) return LM_ERR_BAD_ARGUMENT;
    if (cs == codeSet) return LM_OK;
    if (data != nullptr) {
        unsigned char* fresh = nullptr;
        size = static_cast<uint16_t>(LmStringConvertBuffer(codeSet, cs, data, fresh));
        Release();
        data = fresh;
    }
    codeSet = cs;
    return LM_OK;
}

int LmString::SetCodeSetCode(unsigned char cs) {
    if (LmCodeSetWidth(cs) != Width()) return LM_ERR_BAD_ARGUMENT;
    codeSet = cs;
    return LM_OK;
}

int LmString::CopyMapped(const LmString& src, unsigned char cs, short n) {
    if (&src == this) return LM_ERR_BAD_ARGUMENT;
    const unsigned char from = src.codeSet;
    codeSet = cs;
    language = src.language;
    const uint16_t count = n == -1 ? src.Len() : static_cast<uint16_t>(n);
    return LmStringConvertInto(from, cs, src.StrGet(), count, data, size);
}

// ---- Small members. ----

uint16_t LmString::Len() const {
    if (data == nullptr) return 0;
    return static_cast<uint16_t>(LmStrLen(codeSet, data));
}

char* LmString::StrGet() const { return reinterpret_cast<char*>(data != nullptr ? data : sharedEmptyText); }

int LmString::IsEmpty() const {
    if (data == nullptr) return 1;
    if (codeSet < LM_CODESET_FIRST_WIDE) return data[0] == 0 ? 1 : 0;
    uint16_t unit = 0;
    ShortStoreOne(&unit, data, LmFormatLittle);
    return unit == 0 ? 1 : 0;
}

// A stored null in order form reads as code set 254 with language 0.
int LmString::IsNullValue() const {
    return language == LM_LANGUAGE_NULL || (codeSet == LM_CODESET_ORDER && language == 0) ? 1 : 0;
}

int LmString::SetNullValue() {
    Release();
    size = 0;
    codeSet = 0;
    language = LM_LANGUAGE_NULL;
    return 0;
}

// ---- Case. ----

LmString& LmString::Transform(LmCharOperation& operation) {
    if (size == 0) return *this;
    // Twice the old size, in 16 bits, leaves room for upper cases of two characters.
    // From a size of 32768 on the doubling wraps. The text is then cut at the wrapped
    // size rather than written beyond it, as is a text that grows beyond twice its
    // size; a wrapped size below one character still holds the terminator.
    const auto doubled = static_cast<uint16_t>(2u * size);
    const unsigned capacity = doubled < Width() ? Width() : doubled;
    auto* fresh = new unsigned char[capacity]();
    LmStringIterator source(*this);
    LmStringIterator target(reinterpret_cast<const char*>(fresh), codeSet, LM_LANGUAGE_DEFAULT, LM_CODESET_DEFAULT);
    source.TransformInto(target, operation, fresh + capacity);
    Release();
    data = fresh;
    size = static_cast<uint16_t>(target.position - fresh);
    return *this;
}

LmString& LmString::ToLower() {
    LmCharToLower operation;
    return Transform(operation);
}

LmString& LmString::ToUpper() {
    LmCharToUpper operation;
    return Transform(operation);
}
