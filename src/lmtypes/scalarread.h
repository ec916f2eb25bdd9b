// Internal: reading one plain number from memory or from a disk image, and the
// element loops that the compare and hash slots share.
#ifndef SCALARREAD_H
#define SCALARREAD_H

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "lmdefs.h"

namespace lmscalar {

// Forms 8 and 1 hold the value as this little-endian machine keeps it, so an
// element is read straight from the bytes. Other nibbles go through lumobase.
inline bool DirectForm(unsigned char format) {
    const unsigned nibble = format & 15u;
    return nibble == 8 || nibble == 1;
}

template <typename T>
inline T ReadDirect(const unsigned char* p) {
    T v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

// Disk width of int, enum and unsigned: 4 in form 8, else what IntSizeGet says.
inline unsigned IntWidth(unsigned char format) {
    return (format & 15u) == 8 ? 4u : IntSizeGet(nullptr, 8, static_cast<unsigned char>(format & 15u), 1);
}

// The element loop of every compare slot. The bound test runs after an element is
// compared and before the result is tested, so a difference in the last element
// that fits comes back with LM_ERR_OUT_OF_DATA; an element is reached only if its
// first byte lies below the end of its operand.
template <typename ElementOrder>
inline int CompareLoop(size_t width, unsigned len1, const void* value1, unsigned len2, const void* value2,
                       unsigned count, int& status, ElementOrder order) {
    status = LM_OK;
    if (count == 0) return 0;
    const size_t total = static_cast<size_t>(count) * width;
    const size_t end1 = len1 != 0 ? len1 : total;
    const size_t end2 = len2 != 0 ? len2 : total;
    const auto* p1 = static_cast<const unsigned char*>(value1);
    const auto* p2 = static_cast<const unsigned char*>(value2);
    size_t at1 = 0, at2 = 0;
    int result = 0;
    for (unsigned left = count;;) {
        --left;
        if (result != 0 || status != LM_OK) return result;
        result = order(p1 + at1, p2 + at2);
        if (left == 0) return result;
        if (at1 + width >= end1) {
            status = LM_ERR_OUT_OF_DATA;
        } else {
            at1 += width;
            if (at2 + width < end2) {
                at2 += width;
                status = LM_OK;
            } else {
                status = LM_ERR_OUT_OF_DATA;
            }
        }
    }
}

// The element loop of every hash slot: XOR of the element words, multiplied once
// at the end, so the hash does not depend on the order of the elements. (The
// nullable family XORs finished hashes and multiplies by 1: nothing of its own.)
template <uint32_t Multiplier = 1103515245u, typename ElementWord>
inline unsigned HashLoop(size_t width, unsigned len, const void* value, unsigned count, int& status, ElementWord word) {
    status = LM_OK;
    if (count == 0) return 0;
    const size_t end = len != 0 ? len : static_cast<size_t>(count) * width;
    const auto* p = static_cast<const unsigned char*>(value);
    size_t at = 0;
    uint32_t h = 0;
    for (unsigned left = count;;) {
        --left;
        if (status != LM_OK) break;
        h ^= word(p + at);
        if (left == 0) break;
        if (at + width < end) {
            at += width;
            status = LM_OK;
        } else {
            status = LM_ERR_OUT_OF_DATA;
        }
    }
    return h * Multiplier;
}

}  // namespace lmscalar

#endif
