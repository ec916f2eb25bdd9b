// Internal: the tables that tools/gen_i18n_tables.py generates into generated/.
#ifndef I18NDATA_H
#define I18NDATA_H

#include <array>
#include <cstddef>

#include "lumoi18n.h"

// Collation tables: code set 1 (values 0..0xFF) and code set 253 (values 0..0x1FF
// and the further runs). Both share their records below 0x100: ISO-8859-1 is the
// first 256 values of Unicode.
extern const LmCollationTable lmLatin1Collation;
extern const LmCollationTable lmUnicodeCollation;

// Languages, ascending by id from 1 without gaps.
extern const LmLanguage lmLanguages[];
extern const uint8_t lmLanguageCount;

// Case of the Unicode values that have a collation record.
extern const LmUnicodePropsRange lmCaseRanges[];
extern const uint16_t lmCaseRangeCount;

// The 1-byte code sets without a collation table of their own: Unicode of the bytes
// 0x80..0xFF, and the same 128 pairs sorted by Unicode value.
extern const uint16_t lmCp1252High[128];
extern const LmUnicodeToByte lmCp1252FromUnicode[128];
extern const uint16_t lmLatin9High[128];
extern const LmUnicodeToByte lmLatin9FromUnicode[128];

// Builders the generated tables use, so that each table is a compact array of order
// words (or case values) plus the few records of the slow paths, and still
// constant-initialised data.

// A record placed over the plain record at `offset` of a run.
struct LmRecordPatch {
    uint16_t offset;
    LmCollationRecord record;
};

template <std::size_t N>
constexpr std::array<LmCollationRecord, N> LmBuildRecords(const uint16_t (&orders)[N], const LmRecordPatch* patches,
                                                          std::size_t patchCount) {
    std::array<LmCollationRecord, N> out{};
    for (std::size_t i = 0; i < N; ++i) out[i].order = orders[i];
    for (std::size_t i = 0; i < patchCount; ++i) out[patches[i].offset] = patches[i].record;
    return out;
}

// A case entry with an upper case of several characters, placed like a record patch.
struct LmPropsPatch {
    uint16_t offset;
    LmUnicodeProps props;
};

// `upper` and `lower` may be null for a run without any case.
template <std::size_t N>
constexpr std::array<LmUnicodeProps, N> LmBuildProps(const uint16_t* upper, const uint16_t* lower,
                                                     const LmPropsPatch* patches, std::size_t patchCount) {
    std::array<LmUnicodeProps, N> out{};
    for (std::size_t i = 0; i < N; ++i) {
        out[i].upper = upper != nullptr ? upper[i] : 0;
        out[i].lower = lower != nullptr ? lower[i] : 0;
    }
    for (std::size_t i = 0; i < patchCount; ++i) out[patches[i].offset] = patches[i].props;
    return out;
}

#endif
