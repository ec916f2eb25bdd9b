// The operations of LmString beyond its representation: access, number casts,
// comparison, search, pieces, changes in place, and the list splitter. They measure
// with Len and leave the work to LmStringSplice, LmStrCmp and LmStringIterator.
#include <cstdint>
#include <cstdlib>

#include "lmchar.h"
#include "lmslots.h"
#include "lmstring.h"
#include "lmtext.h"
#include "lmtypemgr.h"

namespace {

// The narrowed text of a 16-bit string: 31 characters and the terminator.
constexpr unsigned NarrowSize = 32;

inline uint16_t Min16(uint16_t a, uint16_t b) { return a < b ? a : b; }

// Bit 0 of the manager's options reads integers as plain decimals.
inline bool DecimalCasts() { return (___LmTypeMgrOptions() & 1) != 0; }

// atoi and atol of a 32-bit long: the decimal reading narrowed to 32 bits.
inline int32_t Atol32(const char* text) { return static_cast<int32_t>(std::atoll(text)); }

// strtol of a 32-bit long with base 0: saturates at the 32-bit range.
inline int32_t Strtol32(const char* text) {
    const long long n = std::strtoll(text, nullptr, 0);
    if (n > INT32_MAX) return INT32_MAX;
    if (n < INT32_MIN) return INT32_MIN;
    return static_cast<int32_t>(n);
}

inline long long NarrowedInt64(const char* text) {
    char narrow[NarrowSize];
    LmNumberTextClean(reinterpret_cast<const uint16_t*>(text), narrow, NarrowSize);
    return std::strtoll(narrow, nullptr, 0);
}

// A one-character text of the given code set and language, for the char forms of
// Find and ReplaceAll; the zero character gives an empty text.
LmString OneByteText(char c, unsigned char codeSet, unsigned char language) {
    const char text[2] = {c, 0};
    LmString s(codeSet, language);
    LmStringSplice(s, text, codeSet, 0, 0, c != 0 ? 1 : 0, 1, LM_SPLICE_ASSIGN, LmFormatLittle);
    return s;
}

}  // namespace

// ---- Access and number casts. ----

// The terminator can be reached and written through the pointer form. A string
// without buffer has no terminator of its own (StrGet is the shared empty text), and
// an index below 0 lies before the buffer: both give the zero character, as beyond
// the end.
LmChar LmString::operator[](int i) const {
    if (data != nullptr && static_cast<unsigned>(i) <= Len())
        return LmChar(const_cast<LmString&>(*this), i * static_cast<int>(Width()));
    return LmChar(static_cast<unsigned short>(0));
}

LmString::operator int() const {
    if (data == nullptr) return 0;
    if (IsWide()) return LmStrToLong(reinterpret_cast<const uint16_t*>(data));  // base 0 whatever the option
    return DecimalCasts() ? Atol32(StrGet()) : Strtol32(StrGet());
}

LmString::operator short() const { return static_cast<short>(operator int()); }

LmString::operator long long() const {
    if (data == nullptr) return 0;
    if (IsWide()) return NarrowedInt64(StrGet());
    return DecimalCasts() ? std::atoll(StrGet()) : std::strtoll(StrGet(), nullptr, 0);
}

LmString::operator double() const {
    double d = 0.0;
    if (data != nullptr) DoubleScanFromString(&d, const_cast<LmString&>(*this), "%.17g", 1);
    return d;
}

namespace {

// The test of Atol and its kin: a number starts with a digit or a minus.
int StartsNumber(const LmString& s) {
    const LmChar first = s[0];
    return first.IsDigit() || first == '-' ? 1 : 0;
}

}  // namespace

int LmString::Atol(int& n) const {
    n = 0;
    if (!StartsNumber(*this)) return -1;
    n = IsWide() ? LmStrToLong(reinterpret_cast<const uint16_t*>(data)) : Atol32(StrGet());
    return 0;
}

int LmString::Atoll(long long& n) const {
    n = 0;
    if (!StartsNumber(*this)) return -1;
    n = IsWide() ? NarrowedInt64(StrGet()) : std::atoll(StrGet());
    return 0;
}

int LmString::Strtol(int& n) const {
    n = 0;
    if (!StartsNumber(*this)) return -1;
    n = IsWide() ? LmStrToLong(reinterpret_cast<const uint16_t*>(data)) : Strtol32(StrGet());
    return 0;
}

int LmString::Strtoll(long long& n) const {
    n = 0;
    if (!StartsNumber(*this)) return -1;
    n = IsWide() ? NarrowedInt64(StrGet()) : std::strtoll(StrGet(), nullptr, 0);
    return 0;
}

// ---- Comparison. ----

int LmString::Compare(const LmString& other, short count, unsigned short option) const {
    if (option == LM_CMP_DEFAULT) option = GetDefaultCmpOp();
    return LmStrCmp(codeSet, language, data, other.codeSet, other.language, other.data, option, count,
                    LmFormatLittle, nullptr);
}

int LmString::operator==(const LmString& other) const {
    if (&other == this) return 1;
    return Compare(other, -1, LM_CMP_DEFAULT) == 0 ? 1 : 0;
}

int LmString::operator!=(const LmString& other) const { return Compare(other, -1, LM_CMP_DEFAULT); }
int LmString::operator<(const LmString& other) const { return Compare(other, -1, LM_CMP_DEFAULT) < 0 ? 1 : 0; }
int LmString::operator<=(const LmString& other) const { return Compare(other, -1, LM_CMP_DEFAULT) <= 0 ? 1 : 0; }
int LmString::operator>(const LmString& other) const { return Compare(other, -1, LM_CMP_DEFAULT) > 0 ? 1 : 0; }
int LmString::operator>=(const LmString& other) const { return Compare(other, -1, LM_CMP_DEFAULT) >= 0 ? 1 : 0; }

// One language for both sides, so that no tailoring can tell them apart.
int LmString::EqualsIgnoreLanguage(const LmString& other) const {
    const unsigned char lang = language == other.language ? language : 0;
    return LmStrCmp(codeSet, lang, data, other.codeSet, lang, other.data, LM_CMP_EXACT, -1, LmFormatLittle,
                    nullptr) == 0
               ? 1
               : 0;
}

// ---- Search. ----

// With wildcards active the pattern gets an asterisk appended and is compared as a
// whole, which turns whole-text matching into prefix matching. The option 65535 has
// the no-wildcard bits set, so it gets no asterisk; only then does it become the
// default option, whose wildcards are read within the pattern's own length.
short LmString::Find(const LmString& pattern, uint16_t start, unsigned short option) const {
    const uint16_t m = pattern.Len();
    LmString starred(pattern.codeSet, pattern.language);
    const LmString* used = &pattern;
    short count = static_cast<short>(m);
    if (LmWildcardsActive(option)) {
        starred = pattern;
        LmStringSplice(starred, "*", LM_CODESET_NATIVE, m, 0, 1, 1, LM_SPLICE_ASSIGN, LmFormatLittle);
        used = &starred;
        count = -1;
    }
    const uint16_t len = Len();
    if (data == nullptr || len == 0 || start > len) return -1;
    if (option == LM_CMP_DEFAULT) option = GetDefaultCmpOp();
    const unsigned width = Width();
    for (unsigned p = start; p + m <= len; ++p) {
        if (LmStrCmp(codeSet, language, data + p * width, used->codeSet, used->language, used->data, option, count,
                     LmFormatLittle, nullptr) == 0)
            return static_cast<short>(p);
    }
    return -1;
}

short LmString::Find(char c, uint16_t start, unsigned short option) const {
    return Find(OneByteText(c, LM_CODESET_NATIVE, 0), start, option);
}

short LmString::Find(unsigned short c, uint16_t start, unsigned short option) const {
    return Find(LmString(c), start, option);
}

short LmString::SubStringPos(const LmString& pattern, unsigned short option) const {
    return Find(pattern, 0, option);
}

// ---- Pieces. ----

// An empty range gives the module's empty value, in the default 8-bit code set
// whatever this string's code set is.
LmString LmString::Copy(uint16_t position, uint16_t n) const {
    const uint16_t len = Len();
    if (data == nullptr || position >= len) return EmptyValue();
    LmString piece(codeSet, language);
    LmStringSplice(piece, data, codeSet, 0, position, Min16(n, static_cast<uint16_t>(len - position)), 1,
                   LM_SPLICE_ASSIGN, LmFormatLittle);
    return piece;
}

LmString LmString::Left(uint16_t n) const { return Copy(0, Min16(n, Len())); }

LmString LmString::Right(uint16_t n) const {
    const uint16_t len = Len();
    const uint16_t k = Min16(n, len);
    return Copy(static_cast<uint16_t>(len - k), k);
}

// ---- Changes in place. ----

// The string is its own source: the splice reads the old buffer into a new one.
LmString& LmString::Cut(uint16_t position, uint16_t n) {
    const uint16_t len = Len();
    if (data == nullptr || position >= len) return *this;
    const uint16_t rest = static_cast<uint16_t>(len - position);
    n = Min16(n, rest);
    LmStringSplice(*this, data, codeSet, position, static_cast<uint16_t>(position + n),
                   static_cast<uint16_t>(rest - n), 1, LM_SPLICE_ASSIGN, LmFormatLittle);
    return *this;
}

LmString& LmString::Insert(const LmString& other, uint16_t position) {
    if (position > Len()) return *this;
    LmStringSplice(*this, other.data, other.codeSet, position, 0, other.Len(), 1, LM_SPLICE_INSERT, LmFormatLittle);
    return *this;
}

// Overwrites what is there; the part of other beyond the end is dropped.
LmString& LmString::Replace(const LmString& other, uint16_t position) {
    const uint16_t len = Len();
    if (position >= len) return *this;
    const uint16_t count = Min16(other.Len(), static_cast<uint16_t>(len - position));
    LmStringSplice(*this, other.data, other.codeSet, position, 0, count, 1, LM_SPLICE_REPLACE, LmFormatLittle);
    return *this;
}

// The search resumes behind the inserted text, so a `to` that holds `from` ends.
// An empty `from` matches everywhere and replaces nothing.
LmString& LmString::ReplaceAll(const LmString& from, const LmString& to, uint16_t start) {
    const uint16_t fromLen = from.Len();
    if (fromLen == 0) return *this;
    const uint16_t toLen = to.Len();
    short p = Find(from, start, LM_CMP_DEFAULT);
    while (p != -1) {
        const auto at = static_cast<uint16_t>(p);  // positions above 32767 come back negative
        Cut(at, fromLen);
        Insert(to, at);
        p = Find(from, static_cast<uint16_t>(at + toLen), LM_CMP_DEFAULT);
    }
    return *this;
}

LmString& LmString::ReplaceAll(char from, char to, uint16_t start) {
    return ReplaceAll(OneByteText(from, LM_CODESET_NATIVE, 0), LmString(to), start);
}

LmString& LmString::ReplaceAll(unsigned short from, unsigned short to, uint16_t start) {
    return ReplaceAll(LmString(from), LmString(to), start);
}

LmString& LmString::Expand(uint16_t n, char c) {
    const uint16_t len = Len();
    const char text[2] = {c, 0};
    if (len < n)
        LmStringSplice(*this, text, GetDefault8CodeSet(), len, 0, 1, static_cast<uint16_t>(n - len), LM_SPLICE_ASSIGN,
                       LmFormatLittle);
    return *this;
}

LmString& LmString::Expand(uint16_t n, unsigned short c) {
    const uint16_t len = Len();
    const uint16_t text[2] = {c, 0};
    if (len < n)
        LmStringSplice(*this, text, GetDefault16CodeSet(), len, 0, 1, static_cast<uint16_t>(n - len),
                       LM_SPLICE_ASSIGN, LmFormatLittle);
    return *this;
}

LmString& LmString::Fill(uint16_t n, char c) {
    const char text[2] = {c, 0};
    LmStringSplice(*this, text, GetDefault8CodeSet(), 0, 0, 1, n, LM_SPLICE_ASSIGN, LmFormatLittle);
    return *this;
}

LmString& LmString::Fill(uint16_t n, unsigned short c) {
    const uint16_t text[2] = {c, 0};
    LmStringSplice(*this, text, GetDefault16CodeSet(), 0, 0, 1, n, LM_SPLICE_ASSIGN, LmFormatLittle);
    return *this;
}

LmString& LmString::LeftTrim() {
    LmStringIterator it(*this);
    uint16_t count = 0;
    while (!it.IsEOS() && (*it).IsSpace()) {
        ++count;
        ++it;
    }
    return Cut(0, count);
}

// The walk starts at the buffer's last unit, the terminator, which counts as space,
// and stops before the first character: that one is never examined, so a text of
// spaces keeps one. A buffer larger than its text is trimmed from the buffer's end.
LmString& LmString::RightTrim() {
    if (data == nullptr) return *this;
    const unsigned width = Width();
    LmStringIterator it(reinterpret_cast<const char*>(data + size - width), codeSet, language, LmFormatMemory);
    int kept = Len() + 1;
    while (it.position > data) {
        const LmChar c = *it;
        --it;
        if (!c.IsSpace()) break;
        --kept;
    }
    return Cut(static_cast<uint16_t>(kept), 65535);
}

LmString& LmString::Trim() {
    LeftTrim();
    return RightTrim();
}

// ---- The list splitter. ----

int LmSplitList(LmString& list, LmString& item, const LmString& separator, unsigned short& position) {
    short f = list.Find(separator, position, LM_CMP_DEFAULT);
    while (f == 0) {  // a separator at the very start is skipped
        ++position;
        f = list.Find(separator, position, LM_CMP_DEFAULT);
    }
    if (f == -1) {
        f = static_cast<short>(list.Len());
        if (list.GetSize() == 0 || position >= static_cast<uint16_t>(f)) return LM_ERR_BAD_POSITION;
    }
    const auto end = static_cast<uint16_t>(f);
    item = list.Copy(position, static_cast<uint16_t>(end - position));
    item.Trim();
    position = static_cast<unsigned short>(end + 1);
    return 0;
}
