// Internal helpers shared by the string sources.
#ifndef LMSTRPRIV_H
#define LMSTRPRIV_H

#include <cstdint>
#include <cstring>

// Reports a text cut at the 65532-byte limit: LUMO_assert "String overflow" when
// the "debug" value "stringOverflow" is non-zero, nothing otherwise.
void LmStringOverflow(int line);

// Four zero bytes that read as an empty 8- or 16-bit text and are never written.
extern const unsigned char LmStringZeroText[4];

// The 16-bit unit at p in the machine's order; p need not be aligned.
inline uint16_t LmReadUnit(const void* p) {
    uint16_t unit;
    std::memcpy(&unit, p, 2);
    return unit;
}

inline void LmWriteUnit(void* p, uint16_t unit) { std::memcpy(p, &unit, 2); }

#endif
