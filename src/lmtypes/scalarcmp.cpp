// The compare slots of the plain numbers, and the index order of floating values.
#include <cmath>

#include "lmcompare.h"
#include "scalarread.h"

using namespace lmscalar;

namespace {

template <typename T>
inline int Order(T a, T b) {
    return a < b ? -1 : (b < a ? 1 : 0);
}

// A total order for index keys: every NaN below negative infinity, NaNs equal to
// each other, finite values by number (negative zero equals zero).
inline int FloatOrder(double a, double b) {
    const int ra = LmFloatRank(a);
    const int rb = LmFloatRank(b);
    if (ra == 0 && rb == 0) return b > a ? -1 : (a > b ? 1 : 0);
    return Order(ra, rb);
}

// ---- Readers for the formats that are not read directly. ----
inline int16_t ShortOther(const unsigned char* p, unsigned char format) {
    // Exchanged in place for nibble 2, else taken as it stands: no call out.
    uint16_t v = ReadDirect<uint16_t>(p);
    if ((format & 15u) == 2) v = static_cast<uint16_t>((v >> 8) | (v << 8));
    return static_cast<int16_t>(v);
}
inline uint32_t LongOther(const unsigned char* p, unsigned char format) {
    uint32_t v;
    LongStoreOne(&v, p, format);
    return v;
}
inline uint32_t IntOther(const unsigned char* p, unsigned char format) {
    uint32_t v;
    IntLoad(&v, p, format, 1);
    return v;
}
inline uint64_t O_8BOther(const unsigned char* p, unsigned char format) {
    uint64_t v;
    O_8BStoreOne(&v, p, format);
    return v;
}
inline float FloatOther(const unsigned char* p, unsigned char format) {
    float v;
    FloatStore(&v, p, format, 1);
    return v;
}
inline double DoubleOther(const unsigned char* p, unsigned char format) {
    double v;
    DoubleStore(&v, p, format, 1);
    return v;
}

// One compare slot: T is the element as ordered, Raw the bits read. The direct
// loop makes no call per element.
template <typename T, typename Raw, Raw (*Other)(const unsigned char*, unsigned char), typename OrderFn>
inline int CompareScalar(size_t width, unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2,
                         unsigned count, int& status, OrderFn order) {
    if (DirectForm(format)) {
        return CompareLoop(width, len1, value1, len2, value2, count, status,
                           [order](const unsigned char* a, const unsigned char* b) {
                               return order(ReadDirect<T>(a), ReadDirect<T>(b));
                           });
    }
    return CompareLoop(width, len1, value1, len2, value2, count, status,
                       [format, order](const unsigned char* a, const unsigned char* b) {
                           Raw x = Other(a, format), y = Other(b, format);
                           T tx, ty;
                           std::memcpy(&tx, &x, sizeof tx);
                           std::memcpy(&ty, &y, sizeof ty);
                           return order(tx, ty);
                       });
}

const auto kOrderSigned = [](auto a, auto b) { return Order(a, b); };
const auto kOrderFloat = [](auto a, auto b) { return FloatOrder(static_cast<double>(a), static_cast<double>(b)); };

}  // namespace

int LmFloatRank(double value) noexcept {
    if (std::isnan(value)) return -2;
    if (std::isinf(value)) return value < 0 ? -1 : 1;
    return 0;
}

// The byte types never look at the format.
int CharCompare(unsigned char, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short, unsigned count,
                int& status) {
    return CompareLoop(1, len1, value1, len2, value2, count, status,
                       [](const unsigned char* a, const unsigned char* b) {
                           return Order(static_cast<int8_t>(*a), static_cast<int8_t>(*b));
                       });
}

int ByteCompare(unsigned char, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short, unsigned count,
                int& status) {
    return CompareLoop(1, len1, value1, len2, value2, count, status,
                       [](const unsigned char* a, const unsigned char* b) { return Order(*a, *b); });
}

int ShortCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short,
                 unsigned count, int& status) {
    return CompareScalar<int16_t, int16_t, ShortOther>(2, format, len1, value1, len2, value2, count, status,
                                                       kOrderSigned);
}

int WordCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short,
                unsigned count, int& status) {
    return CompareScalar<uint16_t, int16_t, ShortOther>(2, format, len1, value1, len2, value2, count, status,
                                                        kOrderSigned);
}

int LongCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short,
                unsigned count, int& status) {
    return CompareScalar<int32_t, uint32_t, LongOther>(4, format, len1, value1, len2, value2, count, status,
                                                       kOrderSigned);
}

int DwordCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short,
                 unsigned count, int& status) {
    return CompareScalar<uint32_t, uint32_t, LongOther>(4, format, len1, value1, len2, value2, count, status,
                                                        kOrderSigned);
}

int IntCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short,
               unsigned count, int& status) {
    if (count == 1) {
        // The common case of index code: no width, no end, status set once.
        status = LM_OK;
        const auto* a = static_cast<const unsigned char*>(value1);
        const auto* b = static_cast<const unsigned char*>(value2);
        if (DirectForm(format)) return Order(ReadDirect<int32_t>(a), ReadDirect<int32_t>(b));
        return Order(static_cast<int32_t>(IntOther(a, format)), static_cast<int32_t>(IntOther(b, format)));
    }
    return CompareScalar<int32_t, uint32_t, IntOther>(IntWidth(format), format, len1, value1, len2, value2, count,
                                                      status, kOrderSigned);
}

// Read through IntLoad like int (not UnsignedLoad), then ordered unsigned.
int UnsignedCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short,
                    unsigned count, int& status) {
    return CompareScalar<uint32_t, uint32_t, IntOther>(IntWidth(format), format, len1, value1, len2, value2, count,
                                                       status, kOrderSigned);
}

int O_8BCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short,
                unsigned count, int& status) {
    return CompareScalar<int64_t, uint64_t, O_8BOther>(8, format, len1, value1, len2, value2, count, status,
                                                       kOrderSigned);
}

int O_U8BCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short,
                 unsigned count, int& status) {
    return CompareScalar<uint64_t, uint64_t, O_8BOther>(8, format, len1, value1, len2, value2, count, status,
                                                        kOrderSigned);
}

int FloatCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short,
                 unsigned count, int& status) {
    return CompareScalar<float, float, FloatOther>(4, format, len1, value1, len2, value2, count, status, kOrderFloat);
}

int DoubleCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short,
                  unsigned count, int& status) {
    return CompareScalar<double, double, DoubleOther>(8, format, len1, value1, len2, value2, count, status,
                                                      kOrderFloat);
}
