// Number texts: cleaning before strtol, the 16-bit text helpers and the special
// floating values.
#include <bit>
#include <climits>
#include <cstdlib>
#include <cwctype>
#include <limits>

#include "lmtext.h"

namespace {

// The buffer of a cleaned number text: 31 characters and the terminator.
constexpr unsigned NumberBufferSize = 32;

// One cleaning loop for narrow and 16-bit sources. Until the number has begun, a
// run of zeros collapses to one zero; a sign keeps the number from being begun and
// ends a run, so "-007" becomes "-07" and "000x1F" becomes "0x1F". The collapsing
// lets long zero-padded numbers fit the 31 characters strtol gets.
template <typename Unit>
char* CleanNumberText(const Unit* source, char* dest, unsigned size) {
    if (dest == nullptr || size == 0) return dest;  // no room even for the terminator
    unsigned written = 0;
    if (source != nullptr) {
        const Unit* p = source;
        while (*p != 0 && std::iswspace(static_cast<wint_t>(static_cast<unsigned>(*p)))) ++p;
        bool begun = false;
        bool inZeros = false;
        for (; *p != 0 && written < size - 1; ++p) {
            const unsigned c = static_cast<unsigned>(*p);
            if (c >= 256) break;  // beyond one byte the number cannot go on
            if (!begun) {
                if (c == '0') {
                    if (inZeros) continue;
                    inZeros = true;
                } else if (c == '+' || c == '-') {
                    inZeros = false;
                } else {
                    begun = true;  // 'x' or 'X' behind a run keeps the one zero before it
                }
            }
            dest[written++] = static_cast<char>(c);
        }
    }
    dest[written] = 0;
    return dest;
}

// strtol of a 32-bit long: the 64-bit reading saturated to the 32-bit range, which
// is where a 32-bit strtol stops too.
int32_t Strtol32(const char* text) {
    const long long n = std::strtoll(text, nullptr, 0);
    if (n > INT32_MAX) return INT32_MAX;
    if (n < INT32_MIN) return INT32_MIN;
    return static_cast<int32_t>(n);
}

}  // namespace

char* LmNumberTextClean(const char* source, char* dest, unsigned size) {
    return CleanNumberText(reinterpret_cast<const unsigned char*>(source), dest, size);
}

char* LmNumberTextClean(const uint16_t* source, char* dest, unsigned size) {
    return CleanNumberText(source, dest, size);
}

int32_t LmStrToLong(const char* text) {
    char buffer[NumberBufferSize];
    return Strtol32(LmNumberTextClean(text, buffer, NumberBufferSize));
}

int32_t LmStrToLong(const uint16_t* text) {
    char buffer[NumberBufferSize];
    return Strtol32(LmNumberTextClean(text, buffer, NumberBufferSize));
}

long long LmStrToInt64(const char* text) {
    char buffer[NumberBufferSize];
    return std::strtoll(LmNumberTextClean(text, buffer, NumberBufferSize), nullptr, 0);
}

// ---- 16-bit texts. ----

int LmWStrCmp(const uint16_t* a, const uint16_t* b) {
    if (a == nullptr || b == nullptr) return (a != nullptr ? 1 : 0) - (b != nullptr ? 1 : 0);
    while (*a != 0 && *a == *b) {
        ++a;
        ++b;
    }
    return static_cast<int>(*a) - static_cast<int>(*b);
}

int LmWStrNCmp(const uint16_t* a, const uint16_t* b, unsigned count) {
    if (a == nullptr || b == nullptr) return (a != nullptr ? 1 : 0) - (b != nullptr ? 1 : 0);
    for (unsigned i = 0; i < count; ++i) {
        if (a[i] != b[i]) return static_cast<int>(a[i]) - static_cast<int>(b[i]);
        if (a[i] == 0) break;
    }
    return 0;
}

uint16_t* LmWStrCpy(uint16_t* dest, const uint16_t* src) {
    while ((*dest++ = *src++) != 0) {
    }
    return dest;
}

uint16_t* LmWStrNCpy(uint16_t* dest, const uint16_t* src, unsigned count) {
    for (unsigned i = 0; i < count; ++i) {
        dest[i] = src[i];
        if (src[i] == 0) break;
    }
    return dest;
}

// ---- The quiet NaN and the infinities. ----

double LmQuietNaN() { return std::bit_cast<double>(0xFFF8000000000000ull); }
double LmNegativeInfinity() { return -std::numeric_limits<double>::infinity(); }
double LmPositiveInfinity() { return std::numeric_limits<double>::infinity(); }
