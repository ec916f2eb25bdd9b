// LmInt64: a signed 64-bit integer of two 32-bit words, type id 26.
//
// Every operation works modulo 2^64 in two's complement; overflow wraps and is not
// reported. The memory form is the word `low` and then the word `high` (with the
// sign); the disk form keeps that word order in both byte orders, each word in the
// byte order of the format, so a big-endian image is not a big-endian 64-bit number.
//
// The results are those of the word-by-word rules of the type (the multiplication
// walk, the restoring division with the smallest value's special cases, shifts of
// single-bit steps, the constructor from double through "%E" text). Where a native
// 64-bit operation gives the identical result it is used; the tests prove each one
// equal to the word rule it replaces.
#ifndef LMINT64_H
#define LMINT64_H

#include <bit>
#include <cstdint>
#include <cstring>

#include "lmdefs.h"

class LmString;

static_assert(std::endian::native == std::endian::little, "the word order low, high is the native 64-bit order");

class LM_EXPORT LmInt64 {
public:
    uint32_t low;  // low word
    int32_t high;  // high word, with the sign

    LmInt64() noexcept : low(0), high(0) {}
    LmInt64(const LmInt64&) noexcept = default;
    LmInt64(int v) noexcept { Set(static_cast<long long>(v)); }
    LmInt64(unsigned int v) noexcept { Set(static_cast<long long>(v)); }
    // long is 64 bits on this platform (int64_t is a long): taken as __int64.
    LmInt64(long v) noexcept { Set(static_cast<long long>(v)); }
    LmInt64(unsigned long v) noexcept { SetBits(static_cast<uint64_t>(v)); }
    LmInt64(long long v) noexcept { Set(v); }
    LmInt64(unsigned long long v) noexcept { SetBits(v); }
    LmInt64(unsigned int lowWord, int highWord) noexcept : low(lowWord), high(highWord) {}
    // Through "%E" text: seven significant digits, a fraction cut off, a magnitude
    // below 1 gives 0, one above 9223372036854774784.0 (infinities too) gives
    // 0x7FFFFFFFFFFFFFFF with the sign of the double; NaN gives 0.
    LmInt64(double v) noexcept;

    LmInt64& operator=(const LmInt64&) noexcept = default;
    LmInt64& operator=(int v) noexcept { return *this = LmInt64(v); }
    LmInt64& operator=(unsigned int v) noexcept { return *this = LmInt64(v); }
    LmInt64& operator=(long v) noexcept { return *this = LmInt64(v); }
    LmInt64& operator=(unsigned long v) noexcept { return *this = LmInt64(v); }
    LmInt64& operator=(long long v) noexcept { return *this = LmInt64(v); }
    LmInt64& operator=(unsigned long long v) noexcept { return *this = LmInt64(v); }

    // ---- Arithmetic and bits, with the carry from low into high. ----
    LmInt64 operator+(const LmInt64& r) const noexcept { return Of(Bits() + r.Bits()); }
    LmInt64 operator-(const LmInt64& r) const noexcept { return Of(Bits() - r.Bits()); }
    LmInt64 operator-() const noexcept { return Of(0 - Bits()); }
    LmInt64 operator~() const noexcept { return Of(~Bits()); }
    LmInt64 operator&(const LmInt64& r) const noexcept { return Of(Bits() & r.Bits()); }
    LmInt64 operator|(const LmInt64& r) const noexcept { return Of(Bits() | r.Bits()); }
    // The product modulo 2^64. The word rule (the smallest value times an odd value
    // is the smallest value, times an even one 0; otherwise a walk over bits 62 to 0
    // of the right magnitude) gives exactly the wrapped machine product.
    LmInt64 operator*(const LmInt64& r) const noexcept { return Of(Bits() * r.Bits()); }
    LmInt64 operator/(const LmInt64& r) const noexcept { return Division(r, 0); }
    LmInt64 operator%(const LmInt64& r) const noexcept { return Division(r, 1); }
    // n single-bit steps; >> is arithmetic. A count above 63 runs all its steps, so
    // << leaves 0 and >> leaves 0 or -1.
    LmInt64 operator>>(unsigned n) const noexcept {
        return n < 64 ? Of(static_cast<uint64_t>(Get8b() >> n)) : Of(high < 0 ? ~0ULL : 0);
    }
    LmInt64 operator<<(unsigned n) const noexcept { return n < 64 ? Of(Bits() << n) : Of(0); }

    // Prefix only. These and the compound operators store the result and return the
    // new value by value, as every operation of the class returns its result.
    LmInt64 operator++() noexcept { return *this = *this + LmInt64(1); }
    LmInt64 operator--() noexcept { return *this = *this - LmInt64(1); }
    LmInt64 operator+=(const LmInt64& r) noexcept { return *this = *this + r; }
    LmInt64 operator-=(const LmInt64& r) noexcept { return *this = *this - r; }
    LmInt64 operator*=(const LmInt64& r) noexcept { return *this = *this * r; }
    LmInt64 operator/=(const LmInt64& r) noexcept { return *this = *this / r; }
    LmInt64 operator%=(const LmInt64& r) noexcept { return *this = *this % r; }
    LmInt64 operator>>=(unsigned n) noexcept { return *this = *this >> n; }
    LmInt64 operator<<=(unsigned n) noexcept { return *this = *this << n; }

    // ---- Comparison: high signed, then low unsigned. ----
    bool operator==(const LmInt64& r) const noexcept { return Bits() == r.Bits(); }
    bool operator!=(const LmInt64& r) const noexcept { return Bits() != r.Bits(); }
    bool operator<(const LmInt64& r) const noexcept { return Get8b() < r.Get8b(); }
    bool operator<=(const LmInt64& r) const noexcept { return Get8b() <= r.Get8b(); }
    bool operator>(const LmInt64& r) const noexcept { return Get8b() > r.Get8b(); }
    bool operator>=(const LmInt64& r) const noexcept { return Get8b() >= r.Get8b(); }

    // The magnitude; the smallest value has none and stays as it is.
    LmInt64 Abs() const noexcept { return high < 0 ? -*this : *this; }

    // remainder 0: the quotient, truncated towards 0; otherwise the remainder, with
    // the sign of the dividend. The smallest value / -1 is the smallest value again
    // and % -1 is 0. Division by 0 is reported through LUMO_assert ("LmInt64 divide
    // by zero") and gives 0, or -1 as the remainder of the smallest value.
    LmInt64 Division(const LmInt64& right, int remainder) const noexcept {
        const long long a = Get8b();
        const long long b = right.Get8b();
        if (b == 0) return DivideByZero(remainder);
        // The one quotient that does not fit: the smallest value / -1 wraps.
        if (b == -1) return remainder != 0 ? LmInt64() : -*this;
        return LmInt64(remainder != 0 ? a % b : a / b);
    }

    long long Get8b() const noexcept { return static_cast<long long>(Bits()); }
    unsigned long long GetU8b() const noexcept { return Bits(); }

    // The print language of the type (%S, %d, %i, %o, %x, %X; a null format is "%S").
    // Appends to target and returns it.
    LmString& PrintToLmString(LmString& target, const char* format = nullptr) const;
    // Its scan language; a failure makes the value -1, an empty text leaves it.
    LmInt64& ScanFromLmString(const LmString& text, const char* format = nullptr);

private:
    // The two words as one native integer. memcpy, not bit_cast: GCC then keeps a
    // value in one register instead of splitting it into its words.
    uint64_t Bits() const noexcept {
        uint64_t v;
        std::memcpy(&v, this, sizeof v);
        return v;
    }
    void SetBits(uint64_t v) noexcept { std::memcpy(static_cast<void*>(this), &v, sizeof v); }
    void Set(long long v) noexcept { SetBits(static_cast<uint64_t>(v)); }
    static LmInt64 Of(uint64_t v) noexcept {
        LmInt64 r;
        r.SetBits(v);
        return r;
    }
    // Reports the division by 0 and gives the result of the word rule.
    LmInt64 DivideByZero(int remainder) const noexcept;
};

static_assert(sizeof(LmInt64) == 8, "memory length of id 26");

#endif
