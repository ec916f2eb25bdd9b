// Characters and iteration: LmChar (one character, held or pointed to),
// LmStringIterator (walks a text and turns it into collation order words) and
// LmCharOperation (the per-character transform behind ToLower and ToUpper).
#ifndef LMCHAR_H
#define LMCHAR_H

#include <cstdint>

#include "lmstring.h"

// ---------------------------------------------------------------------------
// Order word classes. 0 ends the text; the classes below are what the
// classification members of LmChar answer.
// ---------------------------------------------------------------------------
constexpr uint16_t LM_ORDER_FIRST_SYMBOL = 80;  // below: space class
constexpr uint16_t LM_ORDER_FIRST_DIGIT = 0x3F00;
constexpr uint16_t LM_ORDER_FIRST_LETTER = 0x4000;
constexpr uint16_t LM_ORDER_FIRST_HAN = 0x8000;

// The comparison key of an order word in a family: the family in the top byte and
// the word above it; a letter outside the Han family moves its letter bits above
// its case and accent bits, so that masks on the key give the levels: ~127 the
// primary value, ~31 without accent, ~96 without case. Order 0 gives 0.
constexpr uint32_t LmOrderKey(uint16_t order, unsigned char family) {
    if (order == 0) return 0;
    const uint32_t top = static_cast<uint32_t>(family) << 24;
    if (family != LM_FAMILY_HAN && (order & 0xC000) == 0x4000)
        return top | static_cast<uint32_t>(order & 0x407F) << 8 | ((order >> 7) & 0x7Fu);
    return top | static_cast<uint32_t>(order) << 8;
}

// ---------------------------------------------------------------------------
// Decoding of order words: what an order-form key shows when printed. Accents and
// expansions can be lost, and a symbol may only decode to a substitute.
// ---------------------------------------------------------------------------
// The character of an order word (7 when none; 127 for Han); with searchAccents,
// an accented letter is looked up among the characters 128 to 255 of code set 1 and
// `name` (may be null) gets its escape text. Answers 0.
LM_EXPORT int LmConvertOrderToChar(uint16_t order, unsigned char family, unsigned char& c, int searchAccents,
                                   const char** name);
// A description of the order word ("lower letter a with accent acute"). Answers 0.
LM_EXPORT int LmConvertOrderToString(uint16_t order, unsigned char family, LmString& text);
// The fields of a digit, symbol or letter word; LM_ERR_BAD_ARGUMENT for another class.
LM_EXPORT int LmExtractDigitFromOrder(uint16_t order, int& digit, int& expand);
LM_EXPORT int LmExtractSymbolFromOrder(uint16_t order, int& symbol);
LM_EXPORT int LmExtractLetterFromOrder(uint16_t order, int& letterCase, int& accent, int& letter, int& extension);

// ---------------------------------------------------------------------------
// LmChar. In the pointer form the character lives behind `pointer` in the byte
// order `format`, and assignment writes through: s[i] = c changes the string. In
// the value form (pointer null) it lives in `value`.
// ---------------------------------------------------------------------------
class LM_EXPORT LmChar {
public:
    // Pointer form at s.StrGet() + offset (bytes), with s's labels; format 1.
    LmChar(LmString& s, int offset);
    // Always a value form, even of a pointer form; language 255 becomes the default.
    LmChar(const LmChar& other);
    // Value form. Code set 255: the default 8-bit code set; language 255: the default.
    LmChar(char c, unsigned char codeSet = LM_CODESET_DEFAULT, unsigned char language = LM_LANGUAGE_DEFAULT);
    // Value form. Code set 255: the default 16-bit code set; a 1-byte code set keeps
    // the low byte. Without arguments: the zero character of the default 16-bit set.
    LmChar(unsigned short c = 0, unsigned char codeSet = LM_CODESET_DEFAULT,
           unsigned char language = LM_LANGUAGE_DEFAULT);
    // Pointer form. 255 in code set, language, format: default 8-bit set, default
    // language, format 1.
    LmChar(const char* p, unsigned char codeSet = LM_CODESET_DEFAULT, unsigned char language = LM_LANGUAGE_DEFAULT,
           unsigned char format = LM_CODESET_DEFAULT);

    // A value form takes the source as it is. A pointer form keeps its code set: the
    // source is mapped to it and stored through the pointer in the target's format.
    LmChar& operator=(const LmChar& other);
    // Stores without mapping.
    LmChar& operator=(char c);
    LmChar& operator=(unsigned short c);

    // The character in another code set (through Unicode), as a value form with the
    // same language. 0, or the present code set, gives a copy.
    LmChar MapTo(unsigned char codeSet) const;
    // Case. With an iterator, an upper case of several characters hands its further
    // characters to the iterator's overflow.
    LmChar ToLower(LmStringIterator* iterator = nullptr) const;
    LmChar ToUpper(LmStringIterator* iterator = nullptr) const;

    // Classes by the character's order word (collation data, not the character).
    int IsAlpha() const;
    int IsDigit() const;
    int IsHan() const;
    int IsSpace() const;
    int IsSymbol() const;

    // Collation comparison of one character through LmStrCmp; op 0xFFFF is the
    // process-wide default. The char and unsigned short forms compare with a value
    // form in the default 8- or 16-bit code set. != answers the comparison itself.
    int Compare(const LmChar& other, unsigned short op = 0xFFFF) const;
    int operator==(const LmChar& other) const;
    int operator!=(const LmChar& other) const;
    int operator<(const LmChar& other) const;
    int operator<=(const LmChar& other) const;
    int operator>(const LmChar& other) const;
    int operator>=(const LmChar& other) const;
    int operator==(char c) const;
    int operator!=(char c) const;
    int operator<(char c) const;
    int operator<=(char c) const;
    int operator>(char c) const;
    int operator>=(char c) const;
    int operator==(unsigned short c) const;
    int operator!=(unsigned short c) const;
    int operator<(unsigned short c) const;
    int operator<=(unsigned short c) const;
    int operator>(unsigned short c) const;
    int operator>=(unsigned short c) const;

    // The character value: a 1-byte character in the low byte, a 16-bit one in the
    // machine's order whatever the format.
    uint16_t GetValue() const;
    int IsPointerForm() const { return pointer != nullptr ? 1 : 0; }
    unsigned char GetCodeSet() const { return codeSet; }
    unsigned char GetLanguage() const { return language; }
    unsigned char GetFormat() const { return format; }

private:
    friend class LmStringIterator;
    void Put(uint16_t unit);  // stores a machine-order value through the format

    unsigned char* pointer;  // the character's place, or null in the value form
    uint16_t value;          // value form: the character, a 1-byte one in the low byte
    unsigned char codeSet;
    unsigned char language;
    unsigned char format;  // byte order behind the pointer; 1 in the value form
};

// The order word of one character alone: no contraction, expansion or language
// variant. A code set without collation table orders through code set 253.
LM_EXPORT uint16_t LmCharOrder(const LmChar& c);

// ---------------------------------------------------------------------------
// The process-wide wildcard orders: the order words that make a character an
// asterisk, a question mark or an escape of a pattern. While a word is unset (0)
// it reads as the order of '*', '?' or '\\' in code set 1.
// ---------------------------------------------------------------------------
constexpr int LM_WILDCARD_ASTERISK = 0;
constexpr int LM_WILDCARD_QUESTION = 1;
constexpr int LM_WILDCARD_ESCAPE = 2;
LM_EXPORT uint16_t LmWildcardOrderGet(int which);
LM_EXPORT void LmWildcardOrderSet(int which, uint16_t order);

// ---------------------------------------------------------------------------
// LmStringIterator. Walks a text in any code set. Overflow entries (the further
// order words of an expansion, or the further characters of an upper case) are
// delivered before the position moves on.
// ---------------------------------------------------------------------------
class LM_EXPORT LmStringIterator {
public:
    // Scratch form: format 1, no position, code set 0, language 0.
    LmStringIterator();
    // Over a string in memory: its labels (language 255: the default); format 8.
    explicit LmStringIterator(LmString& s);
    // Over a text. 255 in code set, language, format: the default 8-bit (or 16-bit)
    // code set, the default language and format 1.
    LmStringIterator(const char* p, unsigned char codeSet = LM_CODESET_DEFAULT,
                     unsigned char language = LM_LANGUAGE_DEFAULT, unsigned char format = LM_CODESET_DEFAULT);
    LmStringIterator(const unsigned short* p, unsigned char codeSet = LM_CODESET_DEFAULT,
                     unsigned char language = LM_LANGUAGE_DEFAULT, unsigned char format = LM_CODESET_DEFAULT);
    // Over a buffer of its own holding the one character c; format 1.
    explicit LmStringIterator(LmChar& c);
    // Copies never own a buffer.
    LmStringIterator(const LmStringIterator& other);
    LmStringIterator& operator=(const LmStringIterator& other);
    // The start of an owned buffer is kept apart from the position, so an owning
    // iterator can be destroyed wherever it stands.
    ~LmStringIterator() {
        if (owned != 0) delete[] buffer;
    }

    int operator==(const LmStringIterator& other) const { return position == other.position ? 1 : 0; }
    // The next overflow entry as a value form (the entry is used up), otherwise a
    // pointer form at the position.
    LmChar operator*();
    LmStringIterator& operator++();
    LmStringIterator operator++(int);
    LmStringIterator& operator--();  // back one character; the overflow is not considered
    void Step(int forward);
    // At the end: the position's unit is zero (or there is no position) and no
    // overflow list is set.
    int IsEOS() const;
    // Sets the entries to deliver next; code set 255 is the iterator's own.
    void SetOverflow(const LmWCharList* list, unsigned char listCodeSet);

    // The next collation order word; 0 at the end of the text. Mode non-zero keeps
    // the family up to date; mode 0 leaves it alone.
    uint16_t GetNextOrder(int mode);
    // Runs every character through operation into target, then the terminator.
    void Transform(LmStringIterator& target, LmCharOperation& operation);

    unsigned char GetCodeSet() const { return codeSet; }
    unsigned char GetLanguage() const { return language; }
    unsigned char GetFamily() const { return family; }
    unsigned char GetFormat() const { return format; }
    const char* GetPosition() const { return reinterpret_cast<const char*>(position); }

private:
    friend class LmString;
    // The comparison starts its walks behind the shared start of two texts, and the
    // second walk as a copy of the first when both texts have the same labels.
    friend int LmStrCmp(unsigned char codeSet1, unsigned char language1, const void* text1, unsigned char codeSet2,
                        unsigned char language2, const void* text2, unsigned short option, short count,
                        unsigned char format, int* difference);
    // Transform that stops writing where `limit` leaves no room for a character and
    // the terminator; null is no limit. Answers 1 when the text was cut, else 0.
    int TransformInto(LmStringIterator& target, LmCharOperation& operation, const unsigned char* limit);
    void Setup(const void* p, unsigned char textCodeSet, unsigned char textLanguage, unsigned char textFormat);
    int OverflowActive() const { return overflow != nullptr && overflowIndex < overflow->count; }
    void Forward();  // the step rule
    void Back();
    uint16_t UnitAt() const;  // the unit at the position, 0 without position
    // GetNextOrder apart from a plain character of a text with a table of its own.
    uint16_t NextOrderSlow(int mode);
    // A character of the text beyond the table's low records.
    uint16_t OrderAboveLow(uint16_t value, int mode);
    // A value without collation record: it is its own order (the Han path).
    uint16_t OrderWithoutRecord(uint16_t value, int mode);
    // From a record on: language variant, contractions, the family, the expansion, the step.
    uint16_t FinishOrder(const LmCollationRecord* record, const LmCodeSet* set, bool mappedChar, int mode);

    const LmCodeSet* codeSetObject;
    unsigned char codeSet;
    unsigned char language;
    unsigned char family;  // family of the order last delivered
    unsigned char overflowCodeSet;
    int16_t overflowIndex;  // next entry to deliver
    unsigned char format;
    uint16_t owned;  // non-zero: buffer was allocated here
    unsigned char* position;
    const LmWCharList* overflow;
    unsigned char* buffer;  // the owned buffer, freed at destruction
    // Resolved once at construction, so that a plain character costs one table read:
    const LmCollationTable* table;  // the code set's collation table, or code set 253's when it has none
    uint16_t languageBit;           // LmLanguageBit(language): which records may hold a variant for it
    unsigned char textFamily;       // family(language) of the code set object
    unsigned char mapped;           // non-zero: the text orders through code set 253
};

// ---------------------------------------------------------------------------
// The per-character transform of LmString::Transform. Apply gets the character and
// the iterator it came from (may be null) and answers the resulting character.
// ---------------------------------------------------------------------------
class LM_EXPORT LmCharOperation {
public:
    virtual ~LmCharOperation();
    virtual LmChar Apply(const LmChar& c, LmStringIterator* source) = 0;
};

class LM_EXPORT LmCharToLower : public LmCharOperation {
public:
    LmChar Apply(const LmChar& c, LmStringIterator* source) override;
};

class LM_EXPORT LmCharToUpper : public LmCharOperation {
public:
    LmChar Apply(const LmChar& c, LmStringIterator* source) override;
};

#endif
