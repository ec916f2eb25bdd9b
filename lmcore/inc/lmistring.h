// The fixed-form strings LmIString (id 20) and LmCaseIString (id 21): plain 8-bit
// text without code set or language, ordered by a built-in sort code of one
// Latin-1 style character set instead of the collation tables. LmCaseIString folds
// lower case onto upper case; LmIString keeps them apart. Both share every member
// through LmFixedString; only the sort code and the matching rules differ.
#ifndef LMISTRING_H
#define LMISTRING_H

#include <cstdint>

#include "lmdefs.h"

// Flag bits of a fixed-form string. A value built by the class has flag 0; on a key
// the top bit says that the text is held in sort form, and 0x40 that the text needs
// no copy before matching.
constexpr unsigned char LM_FIXED_SORT_FORM = 0x80;
constexpr unsigned char LM_FIXED_NO_COPY = 0x40;
// The flag byte of a stored array of plain text ('@'), and of a key in sort form.
constexpr unsigned char LM_FIXED_STORED_PLAIN = 0x40;
constexpr unsigned char LM_FIXED_STORED_KEY = 0xC0;

class LmIString;
class LmCaseIString;

// The members of both classes. `Self` is the class itself. Positions and counts are
// in bytes. A string owns its buffer, allocated to the exact length + 1; an empty
// string has no buffer at all (null data).
template <class Self>
class LM_EXPORT LmFixedString {
public:
    LmFixedString() noexcept : data(nullptr), flag(0) {}
    LmFixedString(const LmFixedString& other);    // the text; the flag becomes 0
    LmFixedString(char c);                        // one character; zero gives empty
    LmFixedString(short n);                       // "%d"
    LmFixedString(int n);                         // "%d"
    LmFixedString(unsigned int n);                // "%u"
    LmFixedString(double d);                      // "%f"
    LmFixedString(long long n);                   // radix 10
    LmFixedString(unsigned long long n);          // radix 10
    LmFixedString(const char* text);              // null or "" gives empty
    LmFixedString(const char* text, unsigned n);  // at most n bytes; n 0 gives empty
    ~LmFixedString();

    // The byte text in a new exact buffer; the flag is cleared.
    Self& operator=(const LmFixedString& other);
    Self& operator=(const char* text);
    Self& operator+=(const LmFixedString& other);
    Self& operator+=(const char* text);
    Self operator+(const LmFixedString& other) const;
    Self operator+(const char* text) const;

    int operator!() const { return data == nullptr ? 1 : 0; }
    // The byte itself, without any test: the string must hold it.
    char& operator[](int i) { return data[i]; }
    // Empty: 0. Otherwise the leading decimal number (atoi, atof, _atoi64 forms).
    // Explicit, so that a string never takes part in arithmetic unasked.
    explicit operator short() const;
    explicit operator int() const;
    explicit operator double() const;
    explicit operator long long() const;

    // The sort comparison of the type, wildcards off.
    int operator==(const LmFixedString& other) const;
    int operator!=(const LmFixedString& other) const;
    int operator<(const LmFixedString& other) const;
    int operator<=(const LmFixedString& other) const;
    int operator>(const LmFixedString& other) const;
    int operator>=(const LmFixedString& other) const;

    // n bytes from position: empty for a position above Len or n 0; n is clipped.
    Self Copy(unsigned position, unsigned n) const;
    // Removes n bytes (clipped) at position; cutting everything leaves no buffer.
    Self& Cut(unsigned position, unsigned n);
    // Grows to n bytes, filling with c behind the text.
    Self& Expand(unsigned n, char c);
    // The first n bytes become c; a shorter text grows to n bytes.
    Self& Fill(unsigned n, char c);
    // A position above Len inserts at the end.
    Self& Insert(const LmFixedString& other, unsigned position);
    // Overwrites within the text, never grows; a position above Len does nothing.
    Self& Replace(const LmFixedString& other, unsigned position);
    Self& SpaceToZero();  // blanks become the character '0'
    Self& ZeroToSpace();  // the character '0' becomes a blank
    // Position of the first byte-exact occurrence of other, or -1.
    int SubStringPos(const LmFixedString& other) const;
    // 'A'..'Z' and 192..222 but 215 down by 32; 255 to 159; 140 to 156.
    Self& ToLower();
    // 'a'..'z' and 224..254 but 247 up by 32; 159 to 255; 156 to 140.
    Self& ToUpper();

    unsigned Len() const;
    const char* StrGet() const { return data != nullptr ? data : ""; }
    unsigned char GetFlag() const { return flag; }
    void SetFlag(unsigned char f) { flag = f; }

protected:
    // Takes a buffer made by new[] (or null) as the text; the old one goes.
    void Adopt(char* text);

    char* data;  // terminated byte text, or null for empty
    unsigned char flag;
};

// The simple string that keeps lower case apart from upper case.
class LM_EXPORT LmIString : public LmFixedString<LmIString> {
public:
    using LmFixedString<LmIString>::LmFixedString;
    using LmFixedString<LmIString>::operator=;
};

// The simple string that orders lower case as upper case.
class LM_EXPORT LmCaseIString : public LmFixedString<LmCaseIString> {
public:
    using LmFixedString<LmCaseIString>::LmFixedString;
    using LmFixedString<LmCaseIString>::operator=;
};

extern template class LmFixedString<LmIString>;
extern template class LmFixedString<LmCaseIString>;

// The sort comparison of two terminated texts (null allowed): the first difference
// of sort codes, at most n codes (0: all). A side whose flag has the top bit is
// already in sort form. Bit 0x20 of flagA adds accent marks to the primary code.
LM_EXPORT int LmCaseIStringSortCompare(const char* a, const char* b, unsigned n, unsigned char flagA,
                                       unsigned char flagB);
LM_EXPORT int LmIStringSortCompare(const char* a, const char* b, unsigned n, unsigned char flagA, unsigned char flagB);
// 1 when text matches pattern, with '*', '?' and the escape '\\' (\n, \r, \t give
// the control characters). LmCaseIString compares primary and secondary codes;
// LmIString compares the bytes as they stand.
LM_EXPORT int LmCaseIStringMatch(const char* pattern, const char* text, unsigned char flagPattern,
                                 unsigned char flagText);
LM_EXPORT int LmIStringMatch(const char* pattern, const char* text, unsigned char flagPattern, unsigned char flagText);
// Position of the first '*', '?' or '\\' of a text, -1 for none or a null text.
LM_EXPORT int LmIStringFindWildcard(const char* text);

#endif
