// LmBoolean: a three-state truth value in one byte, type id 27.
//
// 0 is false, 255 is null, every other byte counts as true; this class only makes
// 0, 1 and 255, but Load can bring in any byte. A null sorts below false and true,
// and < and > compare the bytes as signed numbers, so a loaded byte above 127 other
// than 255 sorts below false. The disk form is the byte, whatever the format.
#ifndef LMBOOLEAN_H
#define LMBOOLEAN_H

#include <cstdint>

#include "lmdefs.h"

class LM_EXPORT LmBoolean {
public:
    static constexpr unsigned char NullByte = 255;

    unsigned char value;

    LmBoolean() noexcept : value(0) {}
    LmBoolean(const LmBoolean&) noexcept = default;
    // 1 if v is not 0, else 0: an int never makes a null.
    LmBoolean(int v) noexcept : value(v != 0 ? 1 : 0) {}
    LmBoolean& operator=(const LmBoolean&) noexcept = default;
    LmBoolean& operator=(int v) noexcept { return *this = LmBoolean(v); }

    // A null equals only a null; otherwise both 0 or both not 0.
    int operator==(const LmBoolean& r) const noexcept {
        if (IsNullValue() || r.IsNullValue()) return IsNullValue() && r.IsNullValue();
        return (value == 0) == (r.value == 0);
    }
    // 0 for a null left side; otherwise both 0 or both not 0.
    int operator==(int r) const noexcept { return !IsNullValue() && (value == 0) == (r == 0); }
    // A null left side is less than anything but a null; nothing is less than a null.
    int operator<(const LmBoolean& r) const noexcept {
        if (IsNullValue()) return !r.IsNullValue();
        if (r.IsNullValue()) return 0;
        return Signed() < r.Signed();
    }
    // A null left side is greater than nothing; anything but a null is greater than a null.
    int operator>(const LmBoolean& r) const noexcept {
        if (IsNullValue()) return 0;
        if (r.IsNullValue()) return 1;
        return Signed() > r.Signed();
    }
    // The int as the value it makes, never null.
    int operator<(int r) const noexcept { return *this < LmBoolean(r); }
    int operator>(int r) const noexcept { return *this > LmBoolean(r); }

    int IsNullValue() const noexcept { return value == NullByte; }
    int SetNullValue() noexcept {
        value = NullByte;
        return 0;
    }

private:
    signed char Signed() const noexcept { return static_cast<signed char>(value); }
};

static_assert(sizeof(LmBoolean) == 1, "memory length of id 27");

#endif
