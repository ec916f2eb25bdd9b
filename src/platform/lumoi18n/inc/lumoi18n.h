// lumoi18n: code sets, languages and collation tables for the string classes.
//
// Everything here is static data of the library: code sets, languages, collation
// tables and case tables are built at compile time, never freed and read-only after
// start. Only the process-wide defaults of LmLanguageContext can change.
#ifndef LUMOI18N_H
#define LUMOI18N_H

#include <cstdint>

#define LMI18N_EXPORT __attribute__((visibility("default")))

// Starts (non-zero) or stops (0) the language context. Starts and stops nest:
// the context is up while more starts than stops have been made. Every query of
// this header answers before the context is started too.
LMI18N_EXPORT void ___LmI18NContext(int start);

// Non-zero while the language context is up.
LMI18N_EXPORT int LmI18NContextActive();

// ---------------------------------------------------------------------------
// Code set and language bytes, families, substitutes.
// ---------------------------------------------------------------------------
constexpr uint8_t LM_CODESET_NATIVE_BYTE = 0;  // the platform's native code set (code set 1 here)
constexpr uint8_t LM_CODESET_LATIN1 = 1;       // ISO-8859-1, with a collation table of its own
constexpr uint8_t LM_CODESET_CP1252 = 2;       // Windows-1252, ordered through code set 253
constexpr uint8_t LM_CODESET_LATIN9 = 3;       // ISO-8859-15, ordered through code set 253
constexpr uint8_t LM_CODESET_UCS2 = 253;       // 16-bit Unicode, the pivot of all mapping
constexpr uint8_t LM_CODESET_ORDERS = 254;     // order words; no code set object

constexpr uint8_t LM_LANGUAGE_GENERIC = 1;  // the untailored default order
constexpr uint8_t LM_LANGUAGE_GERMAN = 2;
constexpr uint8_t LM_LANGUAGE_SWEDISH = 3;
constexpr uint8_t LM_LANGUAGE_SPANISH_TRADITIONAL = 4;
constexpr uint8_t LM_LANGUAGE_DANISH = 5;
constexpr uint8_t LM_LANGUAGE_NORWEGIAN = 6;
constexpr uint8_t LM_LANGUAGE_FINNISH = 7;
constexpr uint8_t LM_LANGUAGE_ENGLISH = 8;
constexpr uint8_t LM_LANGUAGE_FRENCH = 9;
constexpr uint8_t LM_LANGUAGE_ITALIAN = 10;
constexpr uint8_t LM_LANGUAGE_DUTCH = 11;
constexpr uint8_t LM_LANGUAGE_SPANISH = 12;
constexpr uint8_t LM_LANGUAGE_HUNGARIAN = 13;

constexpr uint8_t LM_FAMILY_LATIN = 1;  // every code set of this library, for every language
constexpr uint8_t LM_FAMILY_HAN = 20;   // characters without collation record

// What map answers for a character the target code set cannot hold. The 1-byte
// substitute is the control SUB rather than '?', so that an unmappable character
// never turns into a wildcard of a pattern; it orders as the undefined ordering
// indicator (13). 0xFFFD, the Unicode replacement character, is what code set 253
// answers for a value that is no character of its source: a value above 0xFF in a
// 1-byte code set, or any value of an unknown code set.
constexpr uint16_t LM_SUBSTITUTE_8 = 0x1A;
constexpr uint16_t LM_SUBSTITUTE_16 = 0xFFFD;

class LmLanguage;
struct LmCollationRecord;

// ---------------------------------------------------------------------------
// Lists: a count and a pointer to constant entries. GetAt copies an entry and
// answers 0, or non-zero (leaving `out` alone) when the index is out of range;
// At answers a pointer to an entry or null.
// ---------------------------------------------------------------------------
template <typename T>
class LmConstList {
public:
    uint16_t count;
    const T* items;

    int GetAt(int index, T& out) const {
        if (index < 0 || index >= count) return 1;
        out = items[index];
        return 0;
    }
    const T* At(int index) const { return index < 0 || index >= count ? nullptr : items + index; }
};

// 16-bit values: characters, or the further order words of an expansion.
class LmWCharList : public LmConstList<uint16_t> {};
class LmLanguageList : public LmConstList<const LmLanguage*> {};
class LmCollationRecordList : public LmConstList<const LmCollationRecord*> {};

// ---------------------------------------------------------------------------
// Collation. An order word has the layout that LmConvertOrderToChar decodes:
//   1..79 space class (13 the undefined ordering indicator), 80..0x3EFF symbols
//   (80 + index in the symbol table), 0x3F00 + 10 * digit, 0x4000..0x7FFF letters,
//   0x8000 up Han. A letter word is 01 cc aaaaa lllll ee: case (0 upper, 1 lower),
//   accent (0 none, 1..14 the named accents, 15..31 further marks), letter (3 = A
//   .. 28 = Z), extension (non-zero for a letter beyond its base).
// ---------------------------------------------------------------------------
struct LmCollationRecord {
    const uint8_t* familySource;            // byte holding the family, or null: the code set's family
    LmCollationRecordList successors;       // parallel to followers
    LmLanguageList languages;               // languages with a record of their own
    LmCollationRecordList languageRecords;  // parallel to languages
    uint16_t order;                         // order word
    LmWCharList expansion;                  // further order words
    LmWCharList followers;                  // characters that can complete a contraction
    uint16_t hasContraction;
    uint16_t hasLanguageVariants;  // non-zero with languages; holds the LmLanguageBit of each of them
    uint16_t hasExpansion;
};

// The bit of a language in a record's hasLanguageVariants. A clear bit says that the
// record has no variant for the language; a set one only that the list may have one
// (ids 16 apart share a bit).
constexpr uint16_t LmLanguageBit(uint8_t language) { return static_cast<uint16_t>(1u << (language & 15u)); }

// A run of records for the consecutive values first .. first + count - 1.
struct LmCollationRange {
    uint16_t first;
    uint16_t count;
    const LmCollationRecord* records;
};

class LMI18N_EXPORT LmCollationTable {
public:
    constexpr LmCollationTable(const LmCollationRecord* lowRecords, uint16_t lowCount, const LmCollationRange* runs,
                               uint16_t runCount)
        : low(lowRecords), lowLimit(lowCount), ranges(runs), rangeCount(runCount) {}

    // The record of a value, or null. Values below the low limit (0x100 for a 1-byte
    // table, 0x200 for the Unicode table) always have one, and take no null test; from
    // there up only the values of the runs have one, and null means that the character
    // has no collation data (it orders by its value, as a Han character).
    virtual const LmCollationRecord* lookup(uint16_t value) const;
    // The answer of lookup, with the low records read in place rather than through the
    // call: the inner loop of every string comparison takes this path per character.
    const LmCollationRecord* Find(uint16_t value) const { return value < lowLimit ? &low[value] : lookup(value); }

    const LmCollationRecord* low;  // records of 0 .. lowLimit - 1
    uint16_t lowLimit;
    const LmCollationRange* ranges;  // further runs, ascending
    uint16_t rangeCount;
};

// ---------------------------------------------------------------------------
// Case of one character, in Unicode values. upperRest holds the further characters
// of an upper case that is longer than one character (ß: upper 'S', rest "S").
// ---------------------------------------------------------------------------
struct LmUnicodeProps {
    uint16_t upper;  // 0: no upper case
    LmWCharList upperRest;
    uint16_t lower;  // 0: no lower case
};

// The case table: a run of consecutive Unicode values.
struct LmUnicodePropsRange {
    uint16_t first;
    uint16_t count;
    const LmUnicodeProps* props;
};

// Looks up the case of a Unicode value; null when the value has no entry.
LMI18N_EXPORT const LmUnicodeProps* LmUnicodePropsOf(uint16_t unicode);

// ---------------------------------------------------------------------------
// Languages.
// ---------------------------------------------------------------------------
class LMI18N_EXPORT LmLanguage {
public:
    uint8_t id;         // language byte
    uint16_t tailored;  // non-zero: collation records may carry a variant for this language
    const char* name;   // English name, e.g. "Swedish"
    const char* tag;    // language tag, e.g. "sv"
};

// ---------------------------------------------------------------------------
// Code sets. A 1-byte code set is described by the Unicode values of its bytes
// 0x80..0xFF (bytes below 0x80 are ASCII) and a sorted reverse table; the Unicode
// code set maps by identity. A code set without collation table orders its
// characters through code set 253's table.
// ---------------------------------------------------------------------------
struct LmUnicodeToByte {
    uint16_t unicode;
    uint8_t byte;
};

class LMI18N_EXPORT LmCodeSet {
public:
    constexpr LmCodeSet(const LmCollationTable* table, uint8_t codeSet, uint8_t charWidth, const char* codeSetName,
                        const uint16_t* upperHalf, const LmUnicodeToByte* reverse, uint16_t reverseLen)
        : collation(table),
          id(codeSet),
          width(charWidth),
          name(codeSetName),
          toUnicodeHigh(upperHalf),
          fromUnicode(reverse),
          fromUnicodeCount(reverseLen) {}

    // The collation family of this code set's characters for a language.
    virtual uint8_t family(uint8_t language) const;
    // The value in this code set of the character `value` of code set `fromCodeSet`
    // (0 is the native code set), through Unicode. A character this code set cannot
    // hold gives LM_SUBSTITUTE_8 (1-byte) or LM_SUBSTITUTE_16; an unknown source
    // code set gives the substitute too. Equal code sets give the value unchanged.
    virtual uint16_t map(uint16_t value, uint8_t fromCodeSet) const;

    const LmCollationTable* collation;  // null: order through code set 253

    // The case of the character `value` of this code set, or null when it has none.
    // The language is not consulted: no language here has case rules of its own.
    const LmUnicodeProps* GetUnicodeProps(uint16_t value, uint8_t language) const;

    // Unicode value of a character of this code set (LM_SUBSTITUTE_16 if undefined).
    uint16_t ToUnicode(uint16_t value) const;
    // This code set's value of a Unicode character, or the substitute.
    uint16_t FromUnicode(uint16_t unicode) const;

    uint8_t id;                          // code set byte
    uint8_t width;                       // bytes per character: 1 or 2
    const char* name;                    // e.g. "ISO-8859-1"
    const uint16_t* toUnicodeHigh;       // 1-byte: Unicode of bytes 0x80..0xFF; null: the byte itself
    const LmUnicodeToByte* fromUnicode;  // 1-byte: sorted by unicode, for values from 0x80 up
    uint16_t fromUnicodeCount;
};

// ---------------------------------------------------------------------------
// The language context: lookup of code sets and languages, process-wide defaults.
// The defaults are plain statics, meant to be set at start-up (no lock).
// ---------------------------------------------------------------------------
class LMI18N_EXPORT LmLanguageContext {
public:
    // 0 gives the native code set; an unknown byte (254 included) gives null.
    static const LmCodeSet* QueryCodeSet(uint8_t codeSet);
    // The language object, or null for a byte that names no language.
    static const LmLanguage* QueryLanguage(uint8_t language);

    static uint8_t GetNativeCodeSet();     // 1
    static uint8_t GetDefault8CodeSet();   // 1
    static uint8_t GetDefault16CodeSet();  // 253

    // The settable defaults. A setter ignores a value that cannot be a default and
    // keeps the old one: a code set byte without code set object (254, 255, unknown
    // ones), the language bytes 254 (null) and 255 (default), the option 0xFFFF.
    static uint8_t GetDefaultCodeSet();  // 1 at start
    static void SetDefaultCodeSet(uint8_t codeSet);
    static uint8_t GetDefaultLanguage();  // 1 at start
    static void SetDefaultLanguage(uint8_t language);
    static uint16_t GetDefaultCmpOp();  // 0 at start: all levels, wildcards active
    static void SetDefaultCmpOp(uint16_t option);
};

#endif
