// GetValue slots of the plain numbers: the next key of a value in memory form.
// Mode 2 writes the smallest value of the type (the nullable family steps a null
// with it); 'O' leaves the value as it is; 'M' and 'N' step to the next value and
// write it only when it is greater than the old one. Only format 8 is served; the
// manager brings disk images into memory form first.
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

#include "lmslots.h"

namespace {

// Values are read and written by bytes: a caller's buffer need not be aligned.
template <typename T>
inline T ReadValue(const void* value) {
    T v;
    std::memcpy(&v, value, sizeof v);
    return v;
}

template <typename T>
inline void WriteValue(void* value, T v) {
    std::memcpy(value, &v, sizeof v);
}

// Plus 1 wraps at the top of the range, so the stepped value of the largest one is
// not greater and the slot answers LM_ERR_NO_NEXT_VALUE.
template <typename T>
int StepInteger(void* value, unsigned char format, unsigned char mode) {
    if (format != LmFormatMemory) return LM_ERR_NOT_SUPPORTED;
    switch (mode) {
        case 2:
            WriteValue<T>(value, std::numeric_limits<T>::min());
            return LM_OK;
        case 'O':
            return LM_OK;
        case 'M':
        case 'N': {
            using U = std::make_unsigned_t<T>;
            const T old = ReadValue<T>(value);
            const T next = static_cast<T>(static_cast<U>(static_cast<U>(old) + 1u));
            if (!(next > old)) return LM_ERR_NO_NEXT_VALUE;
            WriteValue<T>(value, next);
            return LM_OK;
        }
        default:
            return LM_ERR_NOT_SUPPORTED;
    }
}

// The smallest value of the floating types is a negative quiet NaN: the lowest
// value in their order of comparison.
template <typename T>
struct FloatTraits;
template <>
struct FloatTraits<double> {
    using Bits = uint64_t;
    static constexpr Bits kSmallest = 0xFFF8000000000000ull;
};
template <>
struct FloatTraits<float> {
    using Bits = uint32_t;
    static constexpr Bits kSmallest = 0xFFC00000u;
};

// The next float value of x. The subnormals are jumped over on both sides of 0.
// Infinities and NaN restart at -MAX, which only negative infinity is below.
template <typename T>
T NextFloat(T x) {
    constexpr T kMax = std::numeric_limits<T>::max();
    constexpr T kMin = std::numeric_limits<T>::min();
    constexpr T kEps = std::numeric_limits<T>::epsilon();
    if (std::isnan(x) || !std::isfinite(x)) return -kMax;
    if (x == kMax) return x;
    if (x == T(0)) return kMin;
    int e = 0;
    static_cast<void>(std::frexp(x, &e));
    if (x > T(0)) return x < kMin ? kMin : x + kEps * std::ldexp(T(1), e - 1);
    if (!(x < -kMin)) return T(0);
    const T y = x + kEps * std::ldexp(T(1), e - 1);
    int ey = 0;
    static_cast<void>(std::frexp(y, &ey));
    // At the lower edge of a binade the step of the binade above is too long: the
    // spacing below the edge is half of it.
    return ey == e ? y : x + kEps * std::ldexp(T(1), e - 2);
}

template <typename T>
int StepFloat(void* value, unsigned char format, unsigned char mode) {
    if (format != LmFormatMemory) return LM_ERR_NOT_SUPPORTED;
    switch (mode) {
        case 2:
            WriteValue<typename FloatTraits<T>::Bits>(value, FloatTraits<T>::kSmallest);
            return LM_OK;
        case 'M':
        case 'N': {
            const T old = ReadValue<T>(value);
            const T next = NextFloat(old);
            if (!(next > old)) return LM_ERR_NO_NEXT_VALUE;
            WriteValue<T>(value, next);
            return LM_OK;
        }
        default:  // 'O' too: the present has no meaning for a float
            return LM_ERR_NOT_SUPPORTED;
    }
}

}  // namespace

int CharGetValue(void* value, unsigned, unsigned char format, unsigned char mode) {
    return StepInteger<int8_t>(value, format, mode);
}
int ByteGetValue(void* value, unsigned, unsigned char format, unsigned char mode) {
    return StepInteger<uint8_t>(value, format, mode);
}
int ShortGetValue(void* value, unsigned, unsigned char format, unsigned char mode) {
    return StepInteger<int16_t>(value, format, mode);
}
int WordGetValue(void* value, unsigned, unsigned char format, unsigned char mode) {
    return StepInteger<uint16_t>(value, format, mode);
}
int LongGetValue(void* value, unsigned, unsigned char format, unsigned char mode) {
    return StepInteger<int32_t>(value, format, mode);
}
int DwordGetValue(void* value, unsigned, unsigned char format, unsigned char mode) {
    return StepInteger<uint32_t>(value, format, mode);
}
int O_8BGetValue(void* value, unsigned, unsigned char format, unsigned char mode) {
    return StepInteger<int64_t>(value, format, mode);
}
int O_U8BGetValue(void* value, unsigned, unsigned char format, unsigned char mode) {
    return StepInteger<uint64_t>(value, format, mode);
}
int DoubleGetValue(void* value, unsigned, unsigned char format, unsigned char mode) {
    return StepFloat<double>(value, format, mode);
}
int FloatGetValue(void* value, unsigned, unsigned char format, unsigned char mode) {
    return StepFloat<float>(value, format, mode);
}
