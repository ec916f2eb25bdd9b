// LmString: the string value of the library. A heap buffer of characters labelled
// with a code set byte and a language byte, and the splice through which nearly every
// change of its text passes.
#ifndef LMSTRING_H
#define LMSTRING_H

#include <cstdint>

#include "lmdefs.h"
#include "lumoi18n.h"

class LmString;
class LmChar;
class LmStringIterator;
class LmCharOperation;

// ---------------------------------------------------------------------------
// Code set and language bytes. The width of a character follows from the code set
// byte alone: 1 byte below LM_CODESET_FIRST_WIDE, 2 bytes from there up.
// ---------------------------------------------------------------------------
constexpr uint8_t LM_CODESET_NATIVE = 0;        // the platform's native 1-byte code set
constexpr uint8_t LM_CODESET_FIRST_WIDE = 225;  // first code set of 2-byte characters
constexpr uint8_t LM_CODESET_UNICODE = 253;     // 16-bit Unicode, the pivot of all mapping
constexpr uint8_t LM_CODESET_ORDER = 254;       // the text holds 16-bit order words
constexpr uint8_t LM_CODESET_DEFAULT = 255;     // argument only: the default 8- or 16-bit code set

constexpr uint8_t LM_LANGUAGE_NULL = 254;     // marks the null value
constexpr uint8_t LM_LANGUAGE_DEFAULT = 255;  // argument only: the default language
constexpr uint8_t LM_FAMILY_MIX = 0x80;       // mix flag of a family byte in order form

// The compare option word of LmStrCmp and of every string comparison. 0xFFFF is
// the process-wide default (LmString::GetDefaultCmpOp).
constexpr uint16_t LM_CMP_NO_WILDCARD = 0x0010;    // '*' and '?' of the right operand are plain characters
constexpr uint16_t LM_CMP_IGNORE_CASE = 0x0020;    // case decides nothing
constexpr uint16_t LM_CMP_IGNORE_ACCENT = 0x0040;  // accents decide nothing
constexpr uint16_t LM_CMP_SKIP_SPACES = 0x0080;    // space-class characters vanish; reports through `difference`
constexpr uint16_t LM_CMP_EXACT = 0x0100;          // one level, whole keys, nothing skipped
constexpr uint16_t LM_CMP_SKIP_SYMBOLS = 0x0200;   // symbol-class characters vanish
constexpr uint16_t LM_CMP_DEFAULT = 0xFFFF;
// Wildcards are active unless one of these bits is set.
constexpr bool LmWildcardsActive(uint16_t option) { return (option & (LM_CMP_NO_WILDCARD | LM_CMP_EXACT)) == 0; }

// Modes of LmStringSplice.
constexpr uint16_t LM_SPLICE_REPLACE = 1;  // the `count` characters at `position` are replaced
constexpr uint16_t LM_SPLICE_INSERT = 2;   // the source goes in at `position`, the tail moves behind it
constexpr uint16_t LM_SPLICE_ASSIGN = 3;   // cut at `position`, the source follows, a terminator closes

// The largest buffer, terminator included, and the character limits that follow.
constexpr uint16_t LM_STRING_MAX_BYTES = 65532;
constexpr uint16_t LM_STRING_MAX_CHARS8 = 65531;
constexpr uint16_t LM_STRING_MAX_CHARS16 = 32765;

// Bytes per character of a code set byte.
constexpr unsigned LmCodeSetWidth(uint8_t codeSet) { return codeSet < LM_CODESET_FIRST_WIDE ? 1u : 2u; }
// The character limit of a code set byte: 65531 or 32765.
constexpr uint16_t LmStringMaxChars(uint8_t codeSet) {
    return codeSet < LM_CODESET_FIRST_WIDE ? LM_STRING_MAX_CHARS8 : LM_STRING_MAX_CHARS16;
}

// ---------------------------------------------------------------------------
// Text helpers and the splice.
// ---------------------------------------------------------------------------

// Characters before the terminator: a byte scan below code set 225, a 16-bit scan
// from there up. A null text has length 0.
LM_EXPORT unsigned LmStrLen(unsigned char codeSet, const void* text);
// 16-bit units before the first zero unit; 0 for null.
LM_EXPORT unsigned LmWStrLen(const uint16_t* text);
// Writes `count` copies of `unit`; returns dest.
LM_EXPORT uint16_t* LmWMemSet(uint16_t* dest, uint16_t unit, unsigned count);

// Copies `bytes` bytes. With width 2 and format 2 the source is in big-endian disk
// order and every unit is swapped into the machine's order.
LM_EXPORT void LmCopyChars(void* dest, const void* src, unsigned width, unsigned char format, unsigned bytes);

// The one routine that changes a string's text. Positions and counts are in
// characters; format 255 means 1. See LM_SPLICE_REPLACE, _INSERT, _ASSIGN. A source
// in another code set is converted through Unicode first. A result above 65532
// bytes is cut at the limit (and reported through LUMO_assert when the "debug"
// value "stringOverflow" is set). An unknown mode leaves the string unchanged.
LM_EXPORT void LmStringSplice(LmString& string, const void* source, unsigned char sourceCodeSet, uint16_t position,
                              uint16_t sourceStart, uint16_t count, uint16_t repeat, uint16_t mode,
                              unsigned char format);

// A new terminated copy of `text` converted from one code set to another (0 is the
// native code set on either side), allocated with new[] into `out`. Answers its size
// in bytes.
LM_EXPORT unsigned LmStringConvertBuffer(unsigned char fromCodeSet, unsigned char toCodeSet, const void* text,
                                         unsigned char*& out);

// Converts at most n characters into `buffer`, which is kept when it holds the
// result and otherwise replaced (bufferSize follows). Answers the characters
// converted.
LM_EXPORT int LmStringConvertInto(unsigned char fromCodeSet, unsigned char toCodeSet, const void* text, uint16_t n,
                                  unsigned char*& buffer, uint16_t& bufferSize);

// Fills a fresh string (no buffer) from n characters of `source` in `codeSet`, read
// in `format` (2: big-endian 16-bit units). n 65535 means up to the terminator. A
// null source or n 0 leaves the string without buffer.
LM_EXPORT void LmStringAssignRaw(LmString& string, const void* source, unsigned char codeSet, uint16_t n,
                                 unsigned char format);

// ---------------------------------------------------------------------------
// The comparison of texts.
// ---------------------------------------------------------------------------

// Multi-level collation comparison of two terminated texts (null allowed), and at
// the same time a pattern match: the right text may hold the wildcards. The sign of
// the result orders the operands; 0 is equal or matched. `count` is the number of
// characters looked at, -1 all; `format` the byte order of both texts. With
// LM_CMP_SKIP_SPACES, `difference` (may be null) gets the primary difference.
LM_EXPORT int LmStrCmp(unsigned char codeSet1, unsigned char language1, const void* text1, unsigned char codeSet2,
                       unsigned char language2, const void* text2, unsigned short option, short count,
                       unsigned char format, int* difference);
// The byte matcher of native texts, with the fixed wildcards '*' and '?'.
LM_EXPORT int LmByteWildcardCompare(const char* pattern, const char* text, short count);
// The character index of the first wildcard (the asterisk only with starOnly) within
// `count` characters, or 65535; byteOffset (may be null) gets its byte offset or 65535.
LM_EXPORT uint16_t LmFindWildcard(unsigned char codeSet, unsigned char language, const void* text, int starOnly,
                                  uint16_t count, uint16_t* byteOffset, unsigned char format);

// ---------------------------------------------------------------------------
// LmString. No base, no virtual operations; 16 bytes in memory. Buffers are
// allocated with new[] and belong to the one string that holds them.
//
// The three states of nothing stay distinct:
//   no buffer     data null, size 0, any labels            IsEmpty 1, IsNullValue 0
//   empty text    one terminator, size = width             IsEmpty 1, IsNullValue 0
//   null value    data null, size 0, code set 0, lang 254  IsEmpty 1, IsNullValue 1
// ---------------------------------------------------------------------------
class LM_EXPORT LmString {
public:
    // ---- Construction. All but the copy and the (codeSet, language) pair take the
    // default language. ----
    LmString();                                               // default code set, no buffer
    LmString(unsigned char codeSet, unsigned char language);  // as given, no buffer
    LmString(const LmString& other);                          // a copy, clipped to the limit
    LmString(char c);                                         // one character; zero gives no buffer
    LmString(unsigned char c);
    LmString(unsigned short c);                    // one 16-bit character, not a number
    LmString(short n);                             // "%d"
    LmString(int n);                               // "%d"
    LmString(unsigned int n);                      // "%u"
    LmString(int64_t n);                           // decimal
    LmString(uint64_t n);                          // decimal
    LmString(double d);                            // "%.17g", with Infinity, -Infinity, NaN
    LmString(const char* text);                    // null gives no buffer
    LmString(const char* text, unsigned short n);  // n 65535: up to the terminator
    LmString(const unsigned short* text);          // the 16-bit twins
    LmString(const unsigned short* text, unsigned short n);
    ~LmString();

    // ---- Assignment and appending. ----
    LmString& operator=(const LmString& other);
    LmString& operator=(const char* text);            // relabels: default 8-bit code set and language
    LmString& operator=(const unsigned short* text);  // relabels: default 16-bit code set and language
    LmString& operator+=(const LmString& rhs);        // rhs is converted to this string's code set
    LmString& operator<<(const LmString& rhs);
    LmString& operator<<(char c);
    LmString& operator<<(const char* text);
    LmString& operator<<(const unsigned short* text);
    LmString& operator<<(short n);
    LmString& operator<<(int n);
    LmString& operator<<(unsigned int n);
    LmString& operator<<(int64_t n);
    LmString& operator<<(uint64_t n);
    // A 16-bit character on a 2-byte string, the decimal number on a 1-byte one.
    LmString& operator<<(unsigned short c);
    LmString& operator<<(float f);
    LmString& operator<<(double d);

    // ---- Disposal. ----
    // Destroy and d_deactivate are the destructor's work: the buffer goes and size,
    // code set and language become 0.
    void Destroy();
    void d_deactivate();
    // For raw memory only: no free; no buffer, default code set and language.
    void Init();
    // A move: takes other's buffer and labels; other keeps its labels but no buffer.
    void Destruct(LmString& other);

    // ---- Code sets. ----
    // Converts only when the width changes; the byte becomes codeSet in any case.
    void SetCodeSet(unsigned char codeSet);
    // Converts whenever the code set changes; 0 is LM_ERR_BAD_ARGUMENT.
    int MapToCodeSet(unsigned char codeSet);
    // Relabels when the width stays; otherwise LM_ERR_BAD_ARGUMENT.
    int SetCodeSetCode(unsigned char codeSet);
    // Converts n characters of src (-1: all) into this string's own buffer, in
    // codeSet and src's language. Answers the characters converted, or
    // LM_ERR_BAD_ARGUMENT when src is this string.
    int CopyMapped(const LmString& src, unsigned char codeSet, short n);

    // ---- Small members. ----
    uint16_t Len() const;  // characters up to the terminator
    char* StrGet() const;  // never null: the shared empty text without buffer
    int IsEmpty() const;
    int operator!() const { return IsEmpty(); }
    int IsNullValue() const;
    int SetNullValue();
    int IsWide() const { return codeSet >= LM_CODESET_FIRST_WIDE ? 1 : 0; }
    unsigned Width() const { return LmCodeSetWidth(codeSet); }
    uint16_t GetSize() const { return size; }  // bytes of the buffer, not Len
    unsigned char GetCodeSet() const { return codeSet; }
    unsigned char GetLanguage() const { return language; }
    void SetLanguage(unsigned char lang) { language = lang; }

    // ---- Access and number casts. ----
    // For i up to Len(): the character in the buffer, terminator included; beyond it
    // the zero character. A negative index is not guarded.
    LmChar operator[](int i) const;
    // No buffer: 0. Hexadecimal and octal forms are read unless bit 0 of
    // ___LmTypeMgrOptions asks for decimal (1-byte code sets only).
    operator short() const;
    operator int() const;
    operator long long() const;
    operator double() const;  // "%.17g" scan, with Infinity, -Infinity and NaN
    // 0 and the number, or -1 (and 0) when the text starts with neither a digit nor '-'.
    int Atol(int& n) const;
    int Atoll(long long& n) const;
    int Strtol(int& n) const;
    int Strtoll(long long& n) const;

    // ---- Comparison by LmStrCmp (format 1). An option of 65535 or more is the
    // process-wide default, which may let this string's right operand hold wildcards. ----
    int Compare(const LmString& other, short count = -1, unsigned short option = LM_CMP_DEFAULT) const;
    int operator==(const LmString& other) const;
    int operator!=(const LmString& other) const;  // the comparison's result itself
    int operator<(const LmString& other) const;
    int operator<=(const LmString& other) const;
    int operator>(const LmString& other) const;
    int operator>=(const LmString& other) const;
    int EqualsIgnoreLanguage(const LmString& other) const;

    // ---- Search: the character position of the first match at or after start, or -1.
    // With wildcards active the pattern matches a prefix of the rest. ----
    short Find(const LmString& pattern, uint16_t start = 0, unsigned short option = LM_CMP_DEFAULT) const;
    short Find(char c, uint16_t start = 0, unsigned short option = LM_CMP_DEFAULT) const;
    short Find(unsigned short c, uint16_t start = 0, unsigned short option = LM_CMP_DEFAULT) const;
    short SubStringPos(const LmString& pattern, unsigned short option = LM_CMP_DEFAULT) const;

    // ---- Pieces: new strings in this string's code set and language. ----
    LmString Copy(uint16_t position, uint16_t n = 65535) const;
    LmString Left(uint16_t n) const;
    LmString Right(uint16_t n) const;

    // ---- Changes in place. ----
    LmString& Cut(uint16_t position, uint16_t n = 65535);
    LmString& Insert(const LmString& other, uint16_t position);
    LmString& Replace(const LmString& other, uint16_t position);  // overwrites, never grows
    LmString& ReplaceAll(const LmString& from, const LmString& to, uint16_t start = 0);
    LmString& ReplaceAll(char from, char to, uint16_t start = 0);  // to 0 deletes
    LmString& ReplaceAll(unsigned short from, unsigned short to, uint16_t start = 0);
    LmString& Expand(uint16_t n, char c);  // pads with c up to n characters
    LmString& Expand(uint16_t n, unsigned short c);
    LmString& Fill(uint16_t n, char c);  // n copies of c
    LmString& Fill(uint16_t n, unsigned short c);
    LmString& LeftTrim();
    LmString& RightTrim();  // the first character is never examined
    LmString& Trim();

    // ---- Case. The text runs through LmStringIterator::Transform into a fresh
    // buffer; an upper case of several characters (German sharp s) grows the text. ----
    LmString& Transform(LmCharOperation& operation);
    LmString& ToLower();
    LmString& ToUpper();

    // ---- Statics. ----
    // A static string without buffer, labelled with the defaults at load.
    static LmString& EmptyString();
    // A static empty text (one terminator) in the default 8-bit code set.
    static const LmString& EmptyValue();
    // The process-wide defaults, kept by LmLanguageContext.
    static unsigned char GetDefaultCodeSet();
    static unsigned char GetDefault8CodeSet();
    static unsigned char GetDefault16CodeSet();
    static unsigned char GetDefaultLanguage();
    static unsigned short GetDefaultCmpOp();
    static void SetDefaultCodeSet(unsigned char codeSet);
    static void SetDefaultLanguage(unsigned char language);
    static void SetDefaultCmpOp(unsigned short option);
    // The process-wide wildcard characters, recognised by their order word in every
    // comparison. Each answers 0.
    static int SetAsterisk(const LmChar& c);
    static int SetQuestion(const LmChar& c);
    static int SetEscape(const LmChar& c);

private:
    friend void LmStringSplice(LmString& string, const void* source, unsigned char sourceCodeSet, uint16_t position,
                               uint16_t sourceStart, uint16_t count, uint16_t repeat, uint16_t mode,
                               unsigned char format);
    friend void LmStringAssignRaw(LmString& string, const void* source, unsigned char codeSet, uint16_t n,
                                  unsigned char format);

    void Release();                                                           // frees the buffer, data null
    void AssignText(const void* text, unsigned char textCodeSet);             // text to its terminator, clipped
    LmString& AssignRelabelled(const void* text, unsigned char textCodeSet);  // operator= of a plain text

    unsigned char* data;  // the character buffer, or null
    uint16_t size;        // bytes of the buffer, terminator included; 0 without buffer
    unsigned char codeSet;
    unsigned char language;
};

// The next item of a separated list, trimmed, from position on: 0, or
// LM_ERR_BAD_POSITION when there is none. Start with position 0.
LM_EXPORT int LmSplitList(LmString& list, LmString& item, const LmString& separator, unsigned short& position);

// A string in a's code set and language holding a, then b converted to it.
LM_EXPORT LmString operator+(const LmString& a, const LmString& b);

#endif
