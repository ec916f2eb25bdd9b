// The hash slots of the plain numbers. The word of an element is computed from
// its value, not from its stored bytes, so every format of a value hashes alike.
#include "lmslots.h"
#include "scalarread.h"

using namespace lmscalar;

namespace {

template <typename T>
inline T ReadShort(const unsigned char* p, unsigned char format) {
    if (DirectForm(format)) return ReadDirect<T>(p);
    T v;
    ShortStoreOne(&v, p, format);
    return v;
}

inline uint32_t ReadLong(const unsigned char* p, unsigned char format) {
    if (DirectForm(format)) return ReadDirect<uint32_t>(p);
    uint32_t v;
    LongStoreOne(&v, p, format);
    return v;
}

}  // namespace

// The byte types never look at the format.
unsigned CharHash(unsigned char, unsigned len, void* value, unsigned count, int& status) {
    return HashLoop(1, len, value, count, status, [](const unsigned char* p) {
        return static_cast<uint32_t>(static_cast<int32_t>(static_cast<int8_t>(*p)));
    });
}

unsigned ByteHash(unsigned char, unsigned len, void* value, unsigned count, int& status) {
    return HashLoop(1, len, value, count, status, [](const unsigned char* p) { return static_cast<uint32_t>(*p); });
}

unsigned ShortHash(unsigned char format, unsigned len, void* value, unsigned count, int& status) {
    return HashLoop(2, len, value, count, status, [format](const unsigned char* p) {
        return static_cast<uint32_t>(static_cast<int32_t>(ReadShort<int16_t>(p, format)));
    });
}

unsigned WordHash(unsigned char format, unsigned len, void* value, unsigned count, int& status) {
    return HashLoop(2, len, value, count, status,
                    [format](const unsigned char* p) { return static_cast<uint32_t>(ReadShort<uint16_t>(p, format)); });
}

// o_4b, o_u4b and BlockId: the 32 bits.
unsigned LongHash(unsigned char format, unsigned len, void* value, unsigned count, int& status) {
    return HashLoop(4, len, value, count, status, [format](const unsigned char* p) { return ReadLong(p, format); });
}

// int, enum and unsigned: the 32 bits, stepped by the width IntSizeGet gives.
unsigned IntHash(unsigned char format, unsigned len, void* value, unsigned count, int& status) {
    return HashLoop(IntWidth(format), len, value, count, status, [format](const unsigned char* p) {
        if (DirectForm(format)) return ReadDirect<uint32_t>(p);
        uint32_t v;
        IntLoad(&v, p, format, 1);
        return v;
    });
}

// o_float: the 32 bits of the float, not its value.
unsigned FloatHash(unsigned char format, unsigned len, void* value, unsigned count, int& status) {
    return HashLoop(4, len, value, count, status, [format](const unsigned char* p) { return ReadLong(p, format); });
}

// o_double: low half XOR high half. Each half is read in its disk order; the order
// of the two halves does not matter to the XOR.
unsigned DoubleHash(unsigned char format, unsigned len, void* value, unsigned count, int& status) {
    return HashLoop(8, len, value, count, status,
                    [format](const unsigned char* p) { return ReadLong(p, format) ^ ReadLong(p + 4, format); });
}

// o_8b and o_u8b: the low 32 bits only. Stored hashes depend on the high half
// being left out.
unsigned O_8BHash(unsigned char format, unsigned len, void* value, unsigned count, int& status) {
    return HashLoop(8, len, value, count, status, [format](const unsigned char* p) {
        if (DirectForm(format)) return ReadDirect<uint32_t>(p);
        uint64_t v;
        O_8BStoreOne(&v, p, format);
        return static_cast<uint32_t>(v);
    });
}
