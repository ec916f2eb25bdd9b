// Internal: the built-in sort code of the fixed-form strings. A byte maps to a
// primary code and a secondary code; a secondary below 9 is an accent mark, one of 9
// and above a second letter. The sort form of a text is its primary codes, each
// followed by its second letter where it has one. The codes are persistent data.
#ifndef FIXEDSORT_H
#define FIXEDSORT_H

#include <cstddef>
#include <cstdint>

#include "lmistring.h"

namespace lmfixed {

// Secondary codes from here up are a second letter, stored as a byte of its own.
constexpr uint8_t kSecondLetter = 9;

struct SortCode {
    uint8_t primary;
    uint8_t secondary;
};

struct SortTable {
    SortCode code[256];
};

constexpr uint8_t HexDigit(char c) { return static_cast<uint8_t>(c <= '9' ? c - '0' : c - 'a' + 10); }

// 64 entries written as two runs of 32 hexadecimal bytes with a blank between.
constexpr void ParseTable(const char* text, uint8_t* out) {
    for (int i = 0, at = 0; i < 64; ++i, at += 2) {
        if (i == 32) ++at;
        out[i] = static_cast<uint8_t>(HexDigit(text[at]) << 4 | HexDigit(text[at + 1]));
    }
}

// The tables A (64..127), B and C (192..255) of both types and the exceptions of
// 128..159; everything else follows the range rules.
constexpr SortTable MakeSortTable(bool folded) {
    uint8_t a[64] = {}, b[64] = {}, c[64] = {};
    ParseTable(folded ? "40545b5e61696f7173797f818385879097999b9d9fa5abadafb3b74243444546 "
                        "41545b5e61696f7173797f818385879097999b9d9fa5abadafb3b74748494a4b"
                      : "40545b5e61696f7173797f818385879097999b9d9fa5abadafb3b74243444546 "
                        "414e5a5c60646e7072747e808284868a96989a9c9ea0aaacaeb0b64748494a4b",
               a);
    ParseTable(folded ? "5454545454bdb95e6969696979797979638990909090904cbba5a5a5a5b3bf9d "
                        "5454545454bdb95e6969696979797979638990909090904dbba5a5a5a5b3bfb3"
                      : "5454545454bdb95e6969696979797979638990909090904cbba5a5a5a5b3bf9c "
                        "4e4e4e4e4ebcb85c646464647474747462888a8a8a8a8a4dbaa0a0a0a0b0beb0",
               b);
    ParseTable(folded ? "030204050100000103020401030204010000030204050100000302040102009d "
                        "0302040501000001030204010302040100000302040501000003020401020001"
                      : "030204050100000103020401030204010000030204050100000302040102009c "
                        "0302040501000001030204010302040100000302040501000003020401020001",
               c);
    SortTable t{};
    for (int i = 0; i < 256; ++i) {
        SortCode& s = t.code[i];
        if (i < 64) {
            s = {static_cast<uint8_t>(i), 0};
        } else if (i < 128) {
            s = {a[i - 64], 0};
        } else if (i < 160) {
            s = {static_cast<uint8_t>(i + 96), 0};
        } else if (i < 192) {
            s = {static_cast<uint8_t>(i + 16), 0};
        } else {
            s = {b[i - 192], c[i - 192]};
        }
    }
    t.code[140] = {144, 'i'};
    t.code[156] = folded ? SortCode{144, 'i'} : SortCode{138, 'd'};
    t.code[159] = {179, 1};
    return t;
}

inline constexpr SortTable kFoldedTable = MakeSortTable(true);  // LmCaseIString
inline constexpr SortTable kPlainTable = MakeSortTable(false);  // LmIString

inline const SortTable& TableOf(bool folded) { return folded ? kFoldedTable : kPlainTable; }

// True for LmCaseIString.
template <class Self>
constexpr bool kFolded = false;
template <>
inline constexpr bool kFolded<LmCaseIString> = true;

// Bytes of the sort form of a text, which ends at a zero byte or after `len` bytes;
// the terminator is not counted.
inline size_t SortFormLength(const SortTable& table, const unsigned char* text, size_t len) {
    size_t n = 0;
    for (size_t i = 0; i < len && text[i] != 0; ++i) n += table.code[text[i]].secondary >= kSecondLetter ? 2 : 1;
    return n;
}

// Writes the sort form of a text (ending at a zero byte or after `len` bytes) into
// out, at most `room` bytes; a byte whose form does not fit whole is left out, and
// so is everything behind it. Answers the bytes written; no terminator is written.
inline size_t WriteSortForm(const SortTable& table, const unsigned char* text, size_t len, unsigned char* out,
                            size_t room) {
    size_t at = 0;
    for (size_t i = 0; i < len && text[i] != 0; ++i) {
        const SortCode s = table.code[text[i]];
        const size_t need = s.secondary >= kSecondLetter ? 2 : 1;
        if (at + need > room) break;
        out[at++] = s.primary;
        if (need == 2) out[at++] = s.secondary;
    }
    return at;
}

// Maps a sort form back to a text of `capacity` bytes at most (a terminator
// included). Two-byte forms are searched among the bytes with a second letter; a
// single code goes back to the first byte of the ranges below 64, table A, the
// ranges 128..191 and table B, in that order, that has it as its whole form. A code
// that no byte gives stays as it is. Answers the text bytes written.
size_t TextFromSortForm(const SortTable& table, const unsigned char* form, size_t formBytes, char* out,
                        size_t capacity);

}  // namespace lmfixed

#endif
