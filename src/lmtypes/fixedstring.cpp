// LmIString and LmCaseIString: the members both classes share, their sort
// comparison and their pattern match. The handlers of ids 20 and 21 are in
// fixedstrtype.cpp.
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "fixedsort.h"
#include "lmcompare.h"
#include "lmistring.h"
#include "lmstring.h"

using namespace lmfixed;

namespace {

// A new exact buffer holding n bytes of text, or null for none.
char* NewText(const char* text, size_t n) {
    if (n == 0) return nullptr;
    char* p = new char[n + 1];
    std::memcpy(p, text, n);
    p[n] = 0;
    return p;
}

// Two texts one after the other in a new exact buffer.
char* JoinTexts(const char* a, size_t na, const char* b, size_t nb) {
    if (na + nb == 0) return nullptr;
    char* p = new char[na + nb + 1];
    if (na != 0) std::memcpy(p, a, na);
    if (nb != 0) std::memcpy(p + na, b, nb);
    p[na + nb] = 0;
    return p;
}

size_t TextLen(const char* text) { return text != nullptr ? std::strlen(text) : 0; }

template <typename... Args>
char* Formatted(const char* format, Args... args) {
    char buffer[512];  // "%f" of the largest double takes 316 bytes
    const int n = std::snprintf(buffer, sizeof buffer, format, args...);
    return NewText(buffer, n > 0 ? static_cast<size_t>(n) : 0);
}

// The leading decimal number as a 32-bit long reads it: beyond its range the
// largest or smallest value.
long ReadLong32(const char* text) {
    const long long v = std::strtoll(text, nullptr, 10);
    return v > INT_MAX ? INT_MAX : v < INT_MIN ? INT_MIN : static_cast<long>(v);
}

}  // namespace

// ---- Construction and assignment. ----

template <class Self>
LmFixedString<Self>::LmFixedString(const LmFixedString& other)
    : data(NewText(other.data, TextLen(other.data))), flag(0) {}

template <class Self>
LmFixedString<Self>::LmFixedString(char c) : data(NewText(&c, c != 0 ? 1 : 0)), flag(0) {}

template <class Self>
LmFixedString<Self>::LmFixedString(short n) : data(Formatted("%d", static_cast<int>(n))), flag(0) {}

template <class Self>
LmFixedString<Self>::LmFixedString(int n) : data(Formatted("%d", n)), flag(0) {}

template <class Self>
LmFixedString<Self>::LmFixedString(unsigned int n) : data(Formatted("%u", n)), flag(0) {}

template <class Self>
LmFixedString<Self>::LmFixedString(double d) : data(Formatted("%f", d)), flag(0) {}

template <class Self>
LmFixedString<Self>::LmFixedString(long long n) : data(Formatted("%lld", n)), flag(0) {}

template <class Self>
LmFixedString<Self>::LmFixedString(unsigned long long n) : data(Formatted("%llu", n)), flag(0) {}

template <class Self>
LmFixedString<Self>::LmFixedString(const char* text) : data(NewText(text, TextLen(text))), flag(0) {}

template <class Self>
LmFixedString<Self>::LmFixedString(const char* text, unsigned n)
    : data(text != nullptr ? NewText(text, strnlen(text, n)) : nullptr), flag(0) {}

template <class Self>
LmFixedString<Self>::~LmFixedString() {
    delete[] data;
}

template <class Self>
void LmFixedString<Self>::Adopt(char* text) {
    delete[] data;
    data = text;
}

// The new text is built before the old one goes, so a string may be assigned or
// appended to itself.
template <class Self>
Self& LmFixedString<Self>::operator=(const LmFixedString& other) {
    return *this = other.data;
}

template <class Self>
Self& LmFixedString<Self>::operator=(const char* text) {
    Adopt(NewText(text, TextLen(text)));
    flag = 0;
    return static_cast<Self&>(*this);
}

template <class Self>
Self& LmFixedString<Self>::operator+=(const LmFixedString& other) {
    return *this += other.data;
}

template <class Self>
Self& LmFixedString<Self>::operator+=(const char* text) {
    Adopt(JoinTexts(data, TextLen(data), text, TextLen(text)));
    flag = 0;
    return static_cast<Self&>(*this);
}

template <class Self>
Self LmFixedString<Self>::operator+(const LmFixedString& other) const {
    return *this + other.data;
}

template <class Self>
Self LmFixedString<Self>::operator+(const char* text) const {
    Self result;
    result.Adopt(JoinTexts(data, TextLen(data), text, TextLen(text)));
    return result;
}

// ---- Number casts. ----

template <class Self>
LmFixedString<Self>::operator short() const {
    return static_cast<short>(static_cast<int>(*this));
}

template <class Self>
LmFixedString<Self>::operator int() const {
    return data != nullptr ? static_cast<int>(ReadLong32(data)) : 0;
}

template <class Self>
LmFixedString<Self>::operator double() const {
    return data != nullptr ? std::strtod(data, nullptr) : 0.0;
}

template <class Self>
LmFixedString<Self>::operator long long() const {
    return data != nullptr ? std::strtoll(data, nullptr, 10) : 0;
}

// ---- Comparison: the type's own, in memory, wildcards off. ----

namespace {
template <class Self>
int Order(const Self& a, const Self& b) {
    int status = 0;
    const LmTypeCmpFunc cmp = kFolded<Self> ? LmCaseIStringCompare : LmIStringCompare;
    return cmp(LmFormatMemory, 0, const_cast<Self*>(&a), 0, const_cast<Self*>(&b), LM_CMP_NO_WILDCARD, 1, status);
}
}  // namespace

template <class Self>
int LmFixedString<Self>::operator==(const LmFixedString& other) const {
    return Order(static_cast<const Self&>(*this), static_cast<const Self&>(other)) == 0 ? 1 : 0;
}
template <class Self>
int LmFixedString<Self>::operator!=(const LmFixedString& other) const {
    return Order(static_cast<const Self&>(*this), static_cast<const Self&>(other)) != 0 ? 1 : 0;
}
template <class Self>
int LmFixedString<Self>::operator<(const LmFixedString& other) const {
    return Order(static_cast<const Self&>(*this), static_cast<const Self&>(other)) < 0 ? 1 : 0;
}
template <class Self>
int LmFixedString<Self>::operator<=(const LmFixedString& other) const {
    return Order(static_cast<const Self&>(*this), static_cast<const Self&>(other)) <= 0 ? 1 : 0;
}
template <class Self>
int LmFixedString<Self>::operator>(const LmFixedString& other) const {
    return Order(static_cast<const Self&>(*this), static_cast<const Self&>(other)) > 0 ? 1 : 0;
}
template <class Self>
int LmFixedString<Self>::operator>=(const LmFixedString& other) const {
    return Order(static_cast<const Self&>(*this), static_cast<const Self&>(other)) >= 0 ? 1 : 0;
}

// ---- Pieces and changes. ----

template <class Self>
unsigned LmFixedString<Self>::Len() const {
    return static_cast<unsigned>(TextLen(data));
}

template <class Self>
Self LmFixedString<Self>::Copy(unsigned position, unsigned n) const {
    Self result;
    const unsigned len = Len();
    if (position <= len && n != 0) result.Adopt(NewText(data + position, n < len - position ? n : len - position));
    return result;
}

template <class Self>
Self& LmFixedString<Self>::Cut(unsigned position, unsigned n) {
    const unsigned len = Len();
    if (position < len && n != 0) {
        if (n > len - position) n = len - position;
        Adopt(JoinTexts(data, position, data + position + n, len - position - n));
    }
    return static_cast<Self&>(*this);
}

template <class Self>
Self& LmFixedString<Self>::Expand(unsigned n, char c) {
    const unsigned len = Len();
    if (n > len) {
        char* p = new char[n + 1];
        if (len != 0) std::memcpy(p, data, len);
        std::memset(p + len, c, n - len);
        p[n] = 0;
        Adopt(p);
    }
    return static_cast<Self&>(*this);
}

template <class Self>
Self& LmFixedString<Self>::Fill(unsigned n, char c) {
    if (n == 0) return static_cast<Self&>(*this);
    if (Len() < n) {
        char* p = new char[n + 1];
        p[n] = 0;
        Adopt(p);
    }
    std::memset(data, c, n);
    return static_cast<Self&>(*this);
}

template <class Self>
Self& LmFixedString<Self>::Insert(const LmFixedString& other, unsigned position) {
    const unsigned len = Len();
    const unsigned add = other.Len();
    if (position > len) position = len;
    if (add != 0) {
        char* p = new char[len + add + 1];
        if (position != 0) std::memcpy(p, data, position);
        std::memcpy(p + position, other.data, add);
        if (len != position) std::memcpy(p + position + add, data + position, len - position);
        p[len + add] = 0;
        Adopt(p);
    }
    return static_cast<Self&>(*this);
}

template <class Self>
Self& LmFixedString<Self>::Replace(const LmFixedString& other, unsigned position) {
    const unsigned len = Len();
    if (position < len) {
        const unsigned n = other.Len();
        std::memmove(data + position, other.StrGet(), n < len - position ? n : len - position);
    }
    return static_cast<Self&>(*this);
}

template <class Self>
Self& LmFixedString<Self>::SpaceToZero() {
    for (char* p = data; p != nullptr && *p != 0; ++p)
        if (*p == ' ') *p = '0';
    return static_cast<Self&>(*this);
}

template <class Self>
Self& LmFixedString<Self>::ZeroToSpace() {
    for (char* p = data; p != nullptr && *p != 0; ++p)
        if (*p == '0') *p = ' ';
    return static_cast<Self&>(*this);
}

template <class Self>
int LmFixedString<Self>::SubStringPos(const LmFixedString& other) const {
    const char* at = std::strstr(StrGet(), other.StrGet());
    return at != nullptr ? static_cast<int>(at - StrGet()) : -1;
}

template <class Self>
Self& LmFixedString<Self>::ToLower() {
    for (auto* p = reinterpret_cast<unsigned char*>(data); p != nullptr && *p != 0; ++p) {
        const unsigned char c = *p;
        if ((c >= 'A' && c <= 'Z') || (c >= 192 && c <= 222 && c != 215)) {
            *p = static_cast<unsigned char>(c + 32);
        } else if (c == 255) {
            *p = 159;
        } else if (c == 140) {
            *p = 156;
        }
    }
    return static_cast<Self&>(*this);
}

template <class Self>
Self& LmFixedString<Self>::ToUpper() {
    for (auto* p = reinterpret_cast<unsigned char*>(data); p != nullptr && *p != 0; ++p) {
        const unsigned char c = *p;
        if ((c >= 'a' && c <= 'z') || (c >= 224 && c <= 254 && c != 247)) {
            *p = static_cast<unsigned char>(c - 32);
        } else if (c == 159) {
            *p = 255;
        } else if (c == 156) {
            *p = 140;
        }
    }
    return static_cast<Self&>(*this);
}

template class LmFixedString<LmIString>;
template class LmFixedString<LmCaseIString>;

// ---- The sort comparison. ----

namespace {

// The codes of one side, one at a time: a text in sort form as it stands, a plain
// text mapped byte by byte. With `accents` (bit 0x20 of the left flag) an accent
// mark is added to the primary code and a second letter lowers it by one and is
// dropped; without, the accents are ignored and a second letter is a code of its own.
class CodeStream {
public:
    CodeStream(const SortTable& codes, const char* text, bool inSortForm, bool withAccents)
        : table(codes), p(reinterpret_cast<const unsigned char*>(text)), sortForm(inSortForm), accents(withAccents) {}

    // The next code; 0 at the end, and 0 again on every later call.
    unsigned Next() {
        if (pending != 0) {
            const unsigned c = pending;
            pending = 0;
            return c;
        }
        if (*p == 0) return 0;
        const unsigned char b = *p++;
        if (sortForm) return b;
        const SortCode s = table.code[b];
        if (accents) return s.secondary < kSecondLetter ? s.primary + s.secondary : s.primary - 1u;
        if (s.secondary >= kSecondLetter) pending = s.secondary;
        return s.primary;
    }

private:
    const SortTable& table;
    const unsigned char* p;
    bool sortForm;
    bool accents;
    unsigned pending = 0;
};

int SortCompare(const SortTable& table, const char* a, const char* b, unsigned n, unsigned char flagA,
                unsigned char flagB) {
    if (a == nullptr || b == nullptr) return (a != nullptr ? 1 : 0) - (b != nullptr ? 1 : 0);
    if (*a == 0 || *b == 0) return static_cast<unsigned char>(*a) - static_cast<unsigned char>(*b);
    const bool accents = (flagA & 0x20) != 0;
    CodeStream x(table, a, (flagA & LM_FIXED_SORT_FORM) != 0, accents);
    CodeStream y(table, b, (flagB & LM_FIXED_SORT_FORM) != 0, accents);
    for (unsigned i = 0; n == 0 || i < n; ++i) {
        const unsigned cx = x.Next();
        const unsigned cy = y.Next();
        if (cx != cy) return static_cast<int>(cx) - static_cast<int>(cy);
        if (cx == 0) break;
    }
    return 0;
}

// One pattern byte against one text byte. LmCaseIString compares primary and
// secondary codes, a side in sort form as it stands; against a text in sort form a
// plain pattern byte may differ in its accent. LmIString compares the bytes.
bool SameByte(bool folded, unsigned char pb, unsigned char tb, bool patternSorted, bool textSorted) {
    if (!folded) return pb == tb;
    const SortCode ps = patternSorted ? SortCode{pb, 0} : kFoldedTable.code[pb];
    const SortCode ts = textSorted ? SortCode{tb, 0} : kFoldedTable.code[tb];
    if (ps.primary != ts.primary) return false;
    if (ps.secondary == ts.secondary) return true;
    return textSorted && !patternSorted && ps.secondary < kSecondLetter;
}

// The walk of both texts with backtracking to the last asterisk. Nothing is written,
// so the copies that a text without bit 0x40 would otherwise need are not made.
int Match(bool folded, const char* pattern, const char* text, unsigned char flagPattern, unsigned char flagText) {
    const auto* p = reinterpret_cast<const unsigned char*>(pattern != nullptr ? pattern : "");
    const auto* t = reinterpret_cast<const unsigned char*>(text != nullptr ? text : "");
    const bool patternSorted = folded && (flagPattern & LM_FIXED_SORT_FORM) != 0;
    const bool textSorted = folded && (flagText & LM_FIXED_SORT_FORM) != 0;
    const unsigned char* starPattern = nullptr;  // just behind the last asterisk
    const unsigned char* starText = nullptr;     // where its match began
    while (*p != 0 || *t != 0) {
        if (*p == '*') {
            starPattern = ++p;
            starText = t;
            continue;
        }
        if (*p == '?') {
            if (*t == 0) return 0;
            if (textSorted) return 1;
            ++p;
            ++t;
            continue;
        }
        unsigned char pb = *p;
        size_t step = 1;
        if (pb == '\\') {
            pb = p[1];
            if (pb == 0) return 0;
            pb = pb == 'n' ? 10 : pb == 'r' ? 13 : pb == 't' ? 9 : pb;
            step = 2;
        }
        if (*t != 0 && pb != 0 && SameByte(folded, pb, *t, patternSorted, textSorted)) {
            p += step;
            ++t;
            continue;
        }
        if (*t == 0 || starPattern == nullptr) return 0;
        t = ++starText;
        p = starPattern;
    }
    return 1;
}

}  // namespace

int LmCaseIStringSortCompare(const char* a, const char* b, unsigned n, unsigned char flagA, unsigned char flagB) {
    return SortCompare(kFoldedTable, a, b, n, flagA, flagB);
}

int LmIStringSortCompare(const char* a, const char* b, unsigned n, unsigned char flagA, unsigned char flagB) {
    return SortCompare(kPlainTable, a, b, n, flagA, flagB);
}

int LmCaseIStringMatch(const char* pattern, const char* text, unsigned char flagPattern, unsigned char flagText) {
    return Match(true, pattern, text, flagPattern, flagText);
}

int LmIStringMatch(const char* pattern, const char* text, unsigned char flagPattern, unsigned char flagText) {
    return Match(false, pattern, text, flagPattern, flagText);
}

int LmIStringFindWildcard(const char* text) {
    if (text == nullptr) return -1;
    const size_t at = std::strcspn(text, "*?\\");
    return text[at] != 0 ? static_cast<int>(at) : -1;
}

// ---- Sort form back to text. ----

size_t lmfixed::TextFromSortForm(const SortTable& table, const unsigned char* form, size_t formBytes, char* out,
                                 size_t capacity) {
    // The byte of each single code: the preferred ranges come in ascending byte order.
    unsigned char single[256] = {};
    for (int b = 255; b > 0; --b) {
        const SortCode s = table.code[b];
        if (s.secondary < kSecondLetter) single[s.primary] = static_cast<unsigned char>(b);
    }
    size_t n = 0;
    for (size_t i = 0; i < formBytes && form[i] != 0 && n + 1 < capacity; ++n) {
        unsigned char c = single[form[i]] != 0 ? single[form[i]] : form[i];
        size_t used = 1;
        if (i + 1 < formBytes && form[i + 1] >= kSecondLetter) {
            for (int b = 128; b < 256; ++b)
                if (table.code[b].primary == form[i] && table.code[b].secondary == form[i + 1]) {
                    c = static_cast<unsigned char>(b);
                    used = 2;
                    break;
                }
        }
        out[n] = static_cast<char>(c);
        i += used;
    }
    if (capacity != 0) out[n] = 0;
    return n;
}
