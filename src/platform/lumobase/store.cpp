// Per-primitive store, load and size functions.
#include "lumobase.h"

#include <cstring>

namespace {

// Only nibble 2 is most significant byte first; everything else moves as it stands.
inline bool Swaps(unsigned char format) { return (format & 15) == 2; }

template <unsigned Width>
unsigned StoreElements(void* dest, const void* src, unsigned char format, unsigned count) {
    const size_t bytes = static_cast<size_t>(count) * Width;
    if (!Swaps(format) || Width == 1) {
        if (bytes != 0) std::memmove(dest, src, bytes);
        return static_cast<unsigned>(bytes);
    }
    auto* d = static_cast<unsigned char*>(dest);
    const auto* s = static_cast<const unsigned char*>(src);
    for (size_t i = 0; i < count; ++i, d += Width, s += Width) {
        unsigned char tmp[Width];
        for (unsigned b = 0; b < Width; ++b) tmp[b] = s[Width - 1 - b];
        std::memcpy(d, tmp, Width);
    }
    return static_cast<unsigned>(bytes);
}

inline unsigned Times(unsigned count, unsigned width) { return count * width; }

}  // namespace

unsigned CharStore(void* dest, const void* src, unsigned char format, unsigned count) {
    return StoreElements<1>(dest, src, format, count);
}
unsigned ShortStore(void* dest, const void* src, unsigned char format, unsigned count) {
    return StoreElements<2>(dest, src, format, count);
}
unsigned LongStore(void* dest, const void* src, unsigned char format, unsigned count) {
    return StoreElements<4>(dest, src, format, count);
}
unsigned O_8BStore(void* dest, const void* src, unsigned char format, unsigned count) {
    return StoreElements<8>(dest, src, format, count);
}
unsigned FloatStore(void* dest, const void* src, unsigned char format, unsigned count) {
    return StoreElements<4>(dest, src, format, count);
}
unsigned DoubleStore(void* dest, const void* src, unsigned char format, unsigned count) {
    return StoreElements<8>(dest, src, format, count);
}

// The disk form of int and unsigned is 4 bytes, so store and load are the 32-bit
// swap in both directions.
unsigned IntStore(void* dest, const void* src, unsigned char format, unsigned count) {
    return StoreElements<4>(dest, src, format, count);
}
unsigned IntLoad(void* dest, const void* src, unsigned char format, unsigned count) {
    return StoreElements<4>(dest, src, format, count);
}
unsigned UnsignedStore(void* dest, const void* src, unsigned char format, unsigned count) {
    return StoreElements<4>(dest, src, format, count);
}
unsigned UnsignedLoad(void* dest, const void* src, unsigned char format, unsigned count) {
    return StoreElements<4>(dest, src, format, count);
}

unsigned ShortStoreOne(void* dest, const void* src, unsigned char format) {
    return StoreElements<2>(dest, src, format, 1);
}
unsigned LongStoreOne(void* dest, const void* src, unsigned char format) {
    return StoreElements<4>(dest, src, format, 1);
}
unsigned O_8BStoreOne(void* dest, const void* src, unsigned char format) {
    return StoreElements<8>(dest, src, format, 1);
}

unsigned CharSizeGet(const void*, unsigned char, unsigned char, unsigned count) { return Times(count, 1); }
unsigned ShortSizeGet(const void*, unsigned char, unsigned char, unsigned count) { return Times(count, 2); }
unsigned LongSizeGet(const void*, unsigned char, unsigned char, unsigned count) { return Times(count, 4); }
unsigned IntSizeGet(const void*, unsigned char, unsigned char, unsigned count) { return Times(count, 4); }
unsigned FloatSizeGet(const void*, unsigned char, unsigned char, unsigned count) { return Times(count, 4); }
unsigned DoubleSizeGet(const void*, unsigned char, unsigned char, unsigned count) { return Times(count, 8); }
unsigned O_8BSizeGet(const void*, unsigned char, unsigned char, unsigned count) { return Times(count, 8); }

unsigned CharNullSizeGet(unsigned count) { return Times(count, 1); }
unsigned ShortNullSizeGet(unsigned count) { return Times(count, 2); }
unsigned LongNullSizeGet(unsigned count) { return Times(count, 4); }
unsigned IntNullSizeGet(unsigned count) { return Times(count, 4); }
unsigned FloatNullSizeGet(unsigned count) { return Times(count, 4); }
unsigned DoubleNullSizeGet(unsigned count) { return Times(count, 8); }
unsigned O_8BNullSizeGet(unsigned count) { return Times(count, 8); }
