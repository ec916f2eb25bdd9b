// LmSeal: a 48-bit stamp of three 16-bit words, type id 39.
//
// Its disk form is 6 bytes per element, the words high, middle, low, each most
// significant byte first, whatever the format: comparing the bytes in order is
// comparing the numbers. A seal has no null; a new seal is all zero.
#ifndef LMSEAL_H
#define LMSEAL_H

#include <cstdint>

#include "lmdefs.h"

class LmString;
class LmInt64;
class LmObjId;

class LM_EXPORT LmSeal {
public:
    uint16_t high;    // bits 47 to 32
    uint16_t middle;  // bits 31 to 16
    uint16_t low;     // bits 15 to 0

    LmSeal() noexcept : high(0), middle(0), low(0) {}
    LmSeal(const LmSeal&) noexcept = default;
    LmSeal& operator=(const LmSeal&) noexcept = default;

    // 1 if all three words are equal.
    int operator==(const LmSeal& r) const noexcept { return high == r.high && middle == r.middle && low == r.low; }
    // Three-way: the difference, left minus right, of the first unequal words in the
    // order high, middle, low; 0 if all are equal.
    int operator!=(const LmSeal& r) const noexcept {
        if (high != r.high) return high - r.high;
        if (middle != r.middle) return middle - r.middle;
        return low - r.low;
    }

    // low and middle from the value's low word, high from the low 16 bits of its high word.
    void ConvertFrom(const LmInt64& value) noexcept;
    // low and middle from the object number's low word, high from its high word.
    void ConvertFrom(const LmObjId& id) noexcept;
    // The low 48 bits.
    void ConvertFrom(const long long& value) noexcept;
    // low word middle * 65536 + low, high word high.
    void ConvertTo(LmInt64& value) const noexcept;
    // The 48-bit number.
    void ConvertTo(long long& value) const noexcept;

    // The 48-bit number in decimal, by the LmInt64 print of "%S": appends to target.
    LmString& PrintToLmString(LmString& target) const;
    // Clears the seal; an empty text leaves it 0, any other is scanned as an LmInt64
    // with "%S" (a failure gives -1) and its low 48 bits are kept.
    LmSeal& ScanFromLmString(const LmString& text);
};

static_assert(sizeof(LmSeal) == 6, "memory length of id 39");

#endif
