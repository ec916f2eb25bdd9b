// Print and scan slots of the plain numbers and the boolean, and the print and scan
// languages of the 64-bit integer and of the three-state boolean.
//
// A plain number goes through the C library's formatter under the caller's format.
// Formats are written for a platform whose long is 32 bits: "%ld" and "%lu" mean
// 32-bit values and "%I64d", "%I64u" 64-bit ones. So every format is first translated
// for this C library into a small local buffer, and the value travels through a
// temporary of the width the format's conversion names. Whatever the format, the
// formatter gets an argument of the type it expects and a scan writes the value's
// own bytes only. Only the first conversion of a format takes the value: a print
// shows any later or unusable conversion as its plain text, and a scan ends after it.
#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include "lmslots.h"
#include "lmstring.h"
#include "lmtext.h"
#include "lmtypemgr.h"
#include "scantext.h"

namespace {

constexpr size_t kPrintBufferSize = 512;  // one formatted value; a longer result is cut
constexpr size_t kFormatCap = 128;        // a translated format; a longer one is cut
constexpr size_t kScanTail = 2;           // room for the "%n" a scan format gets behind its conversion

// What the conversion that takes the value hands over or stores.
enum class ArgKind : uint8_t {
    None,      // no usable conversion: a print formats only text, a scan stores nothing
    Signed,    // d, i; n in a scan
    Unsigned,  // o, u, x, X
    Real,      // a, e, f, g and their capitals
    Chars,     // c
};

// The length modifier as this C library reads it; a 32-bit long has none.
enum class Length : uint8_t { None, Char, Short, Long32, Long64, LongDouble, Bad };

struct Conversion {
    char format[kFormatCap];
    ArgKind kind = ArgKind::None;
    uint8_t bytes = 0;          // width of the argument: 1, 2, 4, 8; a real 4, 8 or 16
    unsigned chars = 1;         // a c scan: characters stored
    bool plainDecimal = false;  // a scan format of one bare d or u conversion: strtol reads the same
};

// Writes a translated format and never beyond its buffer. A piece that does not fit
// is not written, and nothing after it: the format is cut there.
class FormatWriter {
public:
    FormatWriter(char* buffer, size_t reserve) : at(buffer), left(kFormatCap - 1 - reserve) {}
    bool Put(const char* text, size_t n) {
        if (cut || n > left) {
            cut = true;
            return false;
        }
        std::memcpy(at, text, n);
        at += n;
        left -= n;
        return true;
    }
    bool Put(char c) { return Put(&c, 1); }
    bool Stop() {
        cut = true;
        return false;
    }
    // Terminates the text and answers the terminator's position; the reserve lies behind it.
    char* Close() {
        *at = 0;
        return at;
    }
    bool Cut() const { return cut; }

private:
    char* at;
    size_t left;
    bool cut = false;
};

// One conversion directive, from the character behind its '%'.
struct Directive {
    const char* body;         // behind the '%': flags, width, precision (a scan's '*' too)
    const char* lengthBegin;  // where the length modifier starts
    const char* end;          // behind the conversion, or at the character that broke it
    const char* setEnd;       // a scan set: behind its closing ']'
    Length length = Length::None;
    char conversion = 0;  // 0: not a directive this code hands to the C library
    unsigned width = 0;
    bool hasWidth = false;
    bool suppress = false;
};

inline bool IsDigit(char c) { return c >= '0' && c <= '9'; }

Length ReadLength(const char*& s) {
    switch (*s) {
        case 'h':
            if (s[1] == 'h') {
                s += 2;
                return Length::Char;
            }
            ++s;
            return Length::Short;
        case 'l':
            if (s[1] == 'l') {
                s += 2;
                return Length::Long64;
            }
            ++s;
            return Length::Long32;
        case 'I':
            if (s[1] == '6' && s[2] == '4') {
                s += 3;
                return Length::Long64;
            }
            if (s[1] == '3' && s[2] == '2') {
                s += 3;
                return Length::Long32;
            }
            return Length::Bad;
        case 'q':
        case 'j':
        case 'z':
        case 't':
            ++s;
            return Length::Long64;
        case 'L':
            ++s;
            return Length::LongDouble;
        default:
            return Length::None;
    }
}

Directive ParseDirective(const char* s, bool scan) {
    Directive sp{};
    sp.body = s;
    sp.end = s;
    if (scan) {
        if (*s == '*') {
            sp.suppress = true;
            ++s;
        }
    } else {
        while (*s == '-' || *s == '+' || *s == ' ' || *s == '#' || *s == '0' || *s == '\'') ++s;
    }
    while (IsDigit(*s)) {
        sp.hasWidth = true;
        const unsigned d = static_cast<unsigned>(*s - '0');
        sp.width = sp.width > 100000000u ? sp.width : sp.width * 10 + d;
        ++s;
    }
    // Argument positions, widths taken from the arguments and allocating scans need
    // arguments of their own: not handed on.
    if (*s == '$' || *s == '*' || (scan && *s == 'm')) {
        sp.end = s;
        return sp;
    }
    if (!scan && *s == '.') {
        ++s;
        if (*s == '*') {
            sp.end = s;
            return sp;
        }
        while (IsDigit(*s)) ++s;
    }
    sp.lengthBegin = s;
    sp.length = ReadLength(s);
    if (sp.length == Length::Bad || *s == 0) {
        sp.end = s;
        return sp;
    }
    sp.conversion = *s++;
    sp.end = s;
    if (scan && sp.conversion == '[') {
        // The set runs to the next ']'; one right after '[' or "[^" belongs to it.
        if (*s == '^') ++s;
        if (*s == ']') ++s;
        while (*s != 0 && *s != ']') ++s;
        if (*s == 0) {
            sp.conversion = 0;
            sp.end = s;
            return sp;
        }
        sp.setEnd = s + 1;
    }
    return sp;
}

bool IsIntegerConversion(char c) { return c == 'd' || c == 'i' || c == 'o' || c == 'u' || c == 'x' || c == 'X'; }
bool IsRealConversion(char c) { return std::strchr("aAeEfFgG", c) != nullptr && c != 0; }

uint8_t IntegerBytes(Length length) {
    switch (length) {
        case Length::Char:
            return 1;
        case Length::Short:
            return 2;
        case Length::Long64:
        case Length::LongDouble:
            return 8;
        default:
            return 4;
    }
}

// The length modifier of the translated directive.
const char* IntegerLengthText(Length length) {
    switch (length) {
        case Length::Char:
            return "hh";
        case Length::Short:
            return "h";
        case Length::Long64:
        case Length::LongDouble:
            return "ll";
        default:
            return "";
    }
}

// A print's field width and precision are capped. A printed number is at most some
// 4500 characters at precision 4096 (the exact decimal expansion of a double has at
// most 1074 fractional and 767 significant digits), so with the width at 16384 the
// first 511 characters, all that is kept, are the same as under any larger numbers,
// while the C library is spared fields of gigabytes.
constexpr unsigned kPrintWidthCap = 16384;
constexpr unsigned kPrintPrecisionCap = 4096;

// The width of a scan's c conversion is capped above the longest text a scan reads
// (65531 characters), so that the buffer it stores into is sized by the width.
constexpr unsigned kScanCharsCap = 65536;

// Copies a directive's body (flags, width, '.', precision), each number capped;
// answers the length written, never more than n.
size_t CopyCappedBody(char* dest, const char* body, size_t n, unsigned widthCap, unsigned precisionCap) {
    size_t at = 0, i = 0;
    // Flags, '0' among them, come before the width.
    while (i < n && std::strchr("-+ #0'", body[i]) != nullptr) dest[at++] = body[i++];
    bool precision = false;
    while (i < n) {
        if (!IsDigit(body[i])) {
            precision = precision || body[i] == '.';
            dest[at++] = body[i++];
            continue;
        }
        unsigned long long v = 0;
        while (i < n && IsDigit(body[i])) {
            if (v <= widthCap) v = v * 10 + static_cast<unsigned>(body[i] - '0');
            ++i;
        }
        const unsigned cap = precision ? precisionCap : widthCap;
        at += static_cast<size_t>(std::snprintf(dest + at, 8, "%u", v > cap ? cap : static_cast<unsigned>(v)));
    }
    return at;
}

// Writes '%', the body of a directive up to its length modifier (its numbers capped
// when widthCap is not 0), the given modifier and the conversion, as one piece.
bool PutDirective(FormatWriter& w, const Directive& sp, const char* lengthText, unsigned widthCap = 0,
                  unsigned precisionCap = 0) {
    char piece[kFormatCap + 8];
    char capped[kFormatCap + 8];
    size_t body = static_cast<size_t>(sp.lengthBegin - sp.body);
    const char* bodyText = sp.body;
    if (widthCap != 0 && body < kFormatCap) {
        body = CopyCappedBody(capped, sp.body, body, widthCap, precisionCap);
        bodyText = capped;
    }
    const size_t len = std::strlen(lengthText);
    if (body + len + 2 > kFormatCap) return w.Stop();  // cannot fit: the format is cut here
    piece[0] = '%';
    std::memcpy(piece + 1, bodyText, body);
    std::memcpy(piece + 1 + body, lengthText, len);
    piece[1 + body + len] = sp.conversion;
    return w.Put(piece, body + len + 2);
}

// The kind and width a print conversion takes, and its modifier for this C library.
bool PrintKind(const Directive& sp, Conversion& c, const char*& lengthText) {
    if (sp.conversion == 0) return false;
    if (IsIntegerConversion(sp.conversion)) {
        c.kind = sp.conversion == 'd' || sp.conversion == 'i' ? ArgKind::Signed : ArgKind::Unsigned;
        c.bytes = IntegerBytes(sp.length);
        lengthText = IntegerLengthText(sp.length);
        return true;
    }
    if (IsRealConversion(sp.conversion)) {
        if (sp.length != Length::None && sp.length != Length::Long32 && sp.length != Length::LongDouble) return false;
        c.kind = ArgKind::Real;
        c.bytes = sp.length == Length::LongDouble ? 16 : 8;
        lengthText = sp.length == Length::LongDouble ? "L" : "";
        return true;
    }
    if (sp.conversion == 'c' && sp.length == Length::None) {
        c.kind = ArgKind::Chars;
        c.bytes = 4;
        lengthText = "";
        return true;
    }
    return false;
}

// A print format: the first usable conversion takes the value, every other one
// becomes plain text.
void TranslatePrint(const char* format, Conversion& c) {
    FormatWriter w(c.format, 0);
    bool taken = false;
    const char* s = format;
    while (*s != 0 && !w.Cut()) {
        if (*s != '%') {
            w.Put(*s++);
            continue;
        }
        if (s[1] == '%') {
            w.Put("%%", 2);
            s += 2;
            continue;
        }
        const Directive sp = ParseDirective(s + 1, false);
        const char* lengthText = "";
        if (!taken && PrintKind(sp, c, lengthText)) {
            taken = PutDirective(w, sp, lengthText, kPrintWidthCap, kPrintPrecisionCap);
        } else {
            // Shown as plain text: every '%' of it doubled, the conversion's own too.
            for (const char* p = s; p < sp.end; ++p) {
                if (*p == '%') {
                    w.Put("%%", 2);
                } else {
                    w.Put(*p);
                }
            }
        }
        s = sp.end;
    }
    if (!taken) c.kind = ArgKind::None;
    w.Close();
}

// The kind and width a scan conversion stores, and its modifier for this C library.
bool ScanKind(const Directive& sp, Conversion& c, const char*& lengthText) {
    if (IsIntegerConversion(sp.conversion) || sp.conversion == 'n') {
        c.kind =
            sp.conversion == 'd' || sp.conversion == 'i' || sp.conversion == 'n' ? ArgKind::Signed : ArgKind::Unsigned;
        c.bytes = IntegerBytes(sp.length);
        lengthText = IntegerLengthText(sp.length);
        return true;
    }
    if (IsRealConversion(sp.conversion)) {
        switch (sp.length) {
            case Length::None:
                c.bytes = 4;
                lengthText = "";
                break;
            case Length::Long32:
                c.bytes = 8;
                lengthText = "l";
                break;
            case Length::LongDouble:
                c.bytes = 16;
                lengthText = "L";
                break;
            default:
                return false;
        }
        c.kind = ArgKind::Real;
        return true;
    }
    if (sp.conversion == 'c' && sp.length == Length::None) {
        c.kind = ArgKind::Chars;
        c.chars = sp.hasWidth && sp.width > 1 ? (sp.width < kScanCharsCap ? sp.width : kScanCharsCap) : 1;
        lengthText = "";
        return true;
    }
    return false;
}

bool IsScanConversion(char c) { return c != 0 && std::strchr("diouxXaAeEfFgGcsp[n", c) != nullptr; }

// A scan format up to and including the first conversion that stores: what follows
// it cannot change the value. Conversions that store nothing before it stay. Behind
// the value's conversion comes "%n", which tells whether the conversion succeeded.
void TranslateScan(const char* format, Conversion& c) {
    FormatWriter w(c.format, kScanTail);
    c.kind = ArgKind::None;
    const char* s = format;
    while (*s != 0 && !w.Cut()) {
        if (*s != '%') {
            w.Put(*s++);
            continue;
        }
        if (s[1] == '%') {
            w.Put("%%", 2);
            s += 2;
            continue;
        }
        const Directive sp = ParseDirective(s + 1, true);
        if (!IsScanConversion(sp.conversion)) break;  // the C library would stop here: nothing is stored
        if (sp.suppress) {
            if (sp.conversion == 'n') {
                s = sp.end;  // reads nothing, stores nothing
                continue;
            }
            if (sp.conversion == '[') {
                w.Put(s, static_cast<size_t>(sp.setEnd - s));
            } else {
                const bool integer = IsIntegerConversion(sp.conversion);
                if (!integer && sp.length != Length::None && sp.length != Length::Long32 &&
                    sp.length != Length::LongDouble)
                    break;
                PutDirective(w, sp,
                             integer ? IntegerLengthText(sp.length) : (sp.length == Length::LongDouble ? "L" : ""));
            }
            s = sp.conversion == '[' ? sp.setEnd : sp.end;
            continue;
        }
        const char* lengthText = "";
        const bool chars = sp.conversion == 'c';
        if (!ScanKind(sp, c, lengthText) ||
            !PutDirective(w, sp, lengthText, chars ? kScanCharsCap : 0, chars ? kScanCharsCap : 0)) {
            c.kind = ArgKind::None;
            break;
        }
        c.plainDecimal = s == format && !sp.hasWidth && (sp.conversion == 'd' || sp.conversion == 'u');
        char* end = w.Close();
        std::memcpy(end, "%n", 3);  // the reserve held back for it
        return;
    }
    c.kind = ArgKind::None;
    w.Close();
}

// A bare decimal conversion: '%', a length modifier or none, 'd' or 'u', and
// nothing else. The common formats need no translation: such a print is written
// here digit by digit, and such a scan is strtol's, with the same text and value.
bool ReadBareDecimal(const char* format, Conversion& c) {
    if (format[0] != '%') return false;
    const char* s = format + 1;
    const Length length = ReadLength(s);
    if (length == Length::Bad || (s[0] != 'd' && s[0] != 'u') || s[1] != 0) return false;
    c.kind = s[0] == 'd' ? ArgKind::Signed : ArgKind::Unsigned;
    c.bytes = IntegerBytes(length);
    c.plainDecimal = true;
    return true;
}

// The text "%d" or "%u" of the given width gives for a number.
size_t WriteDecimal(char* buffer, bool negative, unsigned long long magnitude) {
    char reversed[24];
    size_t n = 0;
    do {
        reversed[n++] = static_cast<char>('0' + magnitude % 10);
        magnitude /= 10;
    } while (magnitude != 0);
    size_t at = 0;
    if (negative) buffer[at++] = '-';
    while (n > 0) buffer[at++] = reversed[--n];
    buffer[at] = 0;
    return at;
}

// ---- Numbers between the value's type and the conversion's. ----

// A real into an integer type: clamped to its range, NaN as 0.
template <typename I, typename R>
I ClampToInteger(R r) {
    if (std::isnan(r)) return 0;
    if (r >= static_cast<R>(std::numeric_limits<I>::max())) return std::numeric_limits<I>::max();
    if (r <= static_cast<R>(std::numeric_limits<I>::min())) return std::numeric_limits<I>::min();
    return static_cast<I>(r);
}

// The value as an argument of type A of the conversion: integers keep their bits
// modulo A's width, reals and integers convert by value.
template <typename A, typename V>
A AsArgument(V v) {
    if constexpr (std::is_integral_v<A> && std::is_floating_point_v<V>)
        return ClampToInteger<A>(v);
    else
        return static_cast<A>(v);
}

template <typename V>
int FormatValue(char* buffer, const Conversion& c, V v) {
    switch (c.kind) {
        case ArgKind::Signed:
            if (c.bytes == 8) return std::snprintf(buffer, kPrintBufferSize, c.format, AsArgument<long long>(v));
            return std::snprintf(buffer, kPrintBufferSize, c.format, AsArgument<int>(v));
        case ArgKind::Unsigned:
            if (c.bytes == 8)
                return std::snprintf(buffer, kPrintBufferSize, c.format, AsArgument<unsigned long long>(v));
            return std::snprintf(buffer, kPrintBufferSize, c.format, AsArgument<unsigned>(v));
        case ArgKind::Real:
            if (c.bytes == 16) return std::snprintf(buffer, kPrintBufferSize, c.format, AsArgument<long double>(v));
            return std::snprintf(buffer, kPrintBufferSize, c.format, AsArgument<double>(v));
        case ArgKind::Chars:
            return std::snprintf(buffer, kPrintBufferSize, c.format, AsArgument<int>(v));
        case ArgKind::None:
            break;
    }
    // No conversion is left in the format; the argument is only there to be ignored.
    return std::snprintf(buffer, kPrintBufferSize, c.format, 0);
}

// One formatted value into buffer, cut at its size; answers the length up to the
// first zero byte, which is all that reaches a string.
template <typename V>
size_t FormatInto(char* buffer, const Conversion& c, V v) {
    if (FormatValue(buffer, c, v) < 0) buffer[0] = 0;
    return std::strlen(buffer);
}

// A bare decimal conversion of the value, as the C library's formatter writes it:
// the argument FormatValue would pass, narrowed to the conversion's width, then its
// decimal digits.
template <typename V>
size_t FormatDecimal(char* buffer, const Conversion& c, V v) {
    if (c.kind == ArgKind::Signed) {
        long long a = c.bytes == 8 ? AsArgument<long long>(v) : AsArgument<int>(v);
        if (c.bytes == 1) a = static_cast<signed char>(a);
        if (c.bytes == 2) a = static_cast<short>(a);
        const auto u = static_cast<unsigned long long>(a);
        return WriteDecimal(buffer, a < 0, a < 0 ? 0ULL - u : u);
    }
    unsigned long long u = c.bytes == 8 ? AsArgument<unsigned long long>(v) : AsArgument<unsigned>(v);
    if (c.bytes == 1) u = static_cast<unsigned char>(u);
    if (c.bytes == 2) u = static_cast<unsigned short>(u);
    return WriteDecimal(buffer, false, u);
}

// out takes a printed text as the assignment of a plain text gives it: default 8-bit
// code set and language, a buffer of exactly the text.
template <typename V>
LmString& PrintNumber(LmString& out, V v, const char* format) {
    Conversion c;
    char buffer[kPrintBufferSize];
    if (ReadBareDecimal(format, c)) {
        FormatDecimal(buffer, c, v);
    } else {
        TranslatePrint(format, c);
        FormatInto(buffer, c, v);
    }
    out = buffer;
    return out;
}

// The scanned number into the value's type: integers keep their low bits, reals and
// integers convert by value.
template <typename V, typename T>
void StoreScanned(V& v, T t) {
    if constexpr (std::is_integral_v<V> && std::is_floating_point_v<T>)
        v = ClampToInteger<V>(t);
    else
        v = static_cast<V>(t);
}

template <typename V, typename T>
bool ScanAs(V& v, const char* text, const char* format) {
    T t{};
    int done = -1;
    std::sscanf(text, format, &t, &done);  // the result is not looked at: "%n" tells
    if (done < 0) return false;
    StoreScanned(v, t);
    return true;
}

// A bare "%d" or "%u" of any width: the C library's scan reads such a number with
// strtol or strtoul and keeps its low bits, so the same call gives the same value.
template <typename V>
bool ScanPlainDecimal(V& v, const Conversion& c, const char* text) {
    char* end = nullptr;
    if (c.kind == ArgKind::Signed) {
        const long long n = std::strtoll(text, &end, 10);
        if (end == text) return false;
        switch (c.bytes) {
            case 1:
                StoreScanned(v, static_cast<signed char>(n));
                break;
            case 2:
                StoreScanned(v, static_cast<short>(n));
                break;
            case 4:
                StoreScanned(v, static_cast<int>(n));
                break;
            default:
                StoreScanned(v, n);
        }
    } else {
        const unsigned long long n = std::strtoull(text, &end, 10);
        if (end == text) return false;
        switch (c.bytes) {
            case 1:
                StoreScanned(v, static_cast<unsigned char>(n));
                break;
            case 2:
                StoreScanned(v, static_cast<unsigned short>(n));
                break;
            case 4:
                StoreScanned(v, static_cast<unsigned>(n));
                break;
            default:
                StoreScanned(v, n);
        }
    }
    return true;
}

// The scan of one value; false when the conversion stored nothing.
template <typename V>
bool ScanNumber(V& v, const Conversion& c, const char* text) {
    if (c.plainDecimal) return ScanPlainDecimal(v, c, text);
    switch (c.kind) {
        case ArgKind::Signed:
            if (c.bytes == 1) return ScanAs<V, signed char>(v, text, c.format);
            if (c.bytes == 2) return ScanAs<V, short>(v, text, c.format);
            if (c.bytes == 4) return ScanAs<V, int>(v, text, c.format);
            return ScanAs<V, long long>(v, text, c.format);
        case ArgKind::Unsigned:
            if (c.bytes == 1) return ScanAs<V, unsigned char>(v, text, c.format);
            if (c.bytes == 2) return ScanAs<V, unsigned short>(v, text, c.format);
            if (c.bytes == 4) return ScanAs<V, unsigned>(v, text, c.format);
            return ScanAs<V, unsigned long long>(v, text, c.format);
        case ArgKind::Real:
            if (c.bytes == 4) return ScanAs<V, float>(v, text, c.format);
            if (c.bytes == 8) return ScanAs<V, double>(v, text, c.format);
            return ScanAs<V, long double>(v, text, c.format);
        case ArgKind::Chars: {
            // The conversion stores up to its width in characters (never more than the
            // text holds); the buffer is sized by the capped width, which is what a
            // checking C library takes it to write. The value gets the first character.
            const size_t room = static_cast<size_t>(c.chars) + 1;
            char small[64];
            std::vector<char> large;
            char* chars = small;
            if (room > sizeof small) {
                large.resize(room);
                chars = large.data();
            }
            chars[0] = 0;
            int done = -1;
            std::sscanf(text, c.format, chars, &done);
            if (done < 0) return false;
            StoreScanned(v, static_cast<unsigned char>(chars[0]));
            return true;
        }
        case ArgKind::None:
            break;
    }
    return false;
}

// The scan slot of a plain number: the value's bytes are read and written through
// a local, so an unaligned value is fine.
template <typename V>
void* ScanIntoValue(void* value, LmString& text, const char* format) {
    if (value == nullptr) return nullptr;
    const ScanText narrow(text);
    Conversion c;
    if (!ReadBareDecimal(format, c)) TranslateScan(format, c);
    if (c.kind == ArgKind::None) return value;
    V v;
    std::memcpy(&v, value, sizeof v);
    if (ScanNumber(v, c, narrow.Get())) std::memcpy(value, &v, sizeof v);
    return value;
}

template <typename V>
V ReadValue(const void* value) {
    V v;
    std::memcpy(&v, value, sizeof v);
    return v;
}

// A slot called directly must have a format; a null one is read as the family's own.
inline const char* OrDefault(const char* format, const char* exchangeFormat) {
    return format != nullptr ? format : exchangeFormat;
}

// ---- The floating family. ----

constexpr const char kRealFormat[] = "%.17g";
constexpr const char kLdexpFormat[] = "ldexp(";

// ASCII comparison, ignoring case, of two whole texts.
bool EqualsIgnoringCase(const char* a, const char* b) {
    for (; *a != 0 && *b != 0; ++a, ++b) {
        if (std::tolower(static_cast<unsigned char>(*a)) != std::tolower(static_cast<unsigned char>(*b))) return false;
    }
    return *a == *b;
}

// "ldexp(" is taken only exactly, terminator included: a longer format that begins
// with those letters is an ordinary one. It begins with no '%' by itself.
inline bool IsLdexpFormat(const char* format) { return std::strcmp(format, kLdexpFormat) == 0; }

double QuietNaN() {
    const uint64_t bits = 0xFFF8000000000000ULL;
    double d;
    std::memcpy(&d, &bits, sizeof d);
    return d;
}

LmString& PrintDouble(LmString& out, double v, const char* format) {
    char buffer[kPrintBufferSize];
    buffer[0] = 0;
    if (IsLdexpFormat(format)) {
        // Mantissa and exponent go to the format, which has no conversion for them,
        // so the text is the format itself.
        int exponent = 0;
        const double mantissa = std::frexp(v, &exponent);
        std::snprintf(buffer, kPrintBufferSize, format, mantissa, exponent);
    } else if (std::strcmp(format, kRealFormat) == 0) {
        if (std::isnan(v)) {
            std::memcpy(buffer, "NaN", 4);
        } else if (std::isinf(v)) {
            std::strcpy(buffer, v < 0 ? "-Infinity" : "Infinity");
        } else {
            std::snprintf(buffer, kPrintBufferSize, kRealFormat, v);
        }
    } else {
        Conversion c;
        TranslatePrint(format, c);
        FormatInto(buffer, c, v);
    }
    out = buffer;
    return out;
}

// The "%.17g" scan: strtod, with the three words of the values that have no digits.
// This C library's strtod reads "inf" and "nan" spellings of its own; they are the
// three words' business here, so a text that starts with them converts nothing.
double ScanRealText(const char* text) {
    const char* p = text;
    while (std::isspace(static_cast<unsigned char>(*p))) ++p;
    if (*p == '+' || *p == '-') ++p;
    const bool word = *p == 'i' || *p == 'I' || *p == 'n' || *p == 'N';
    errno = 0;
    char* end = const_cast<char*>(text);
    double v = word ? 0.0 : std::strtod(text, &end);
    if (end == text) {
        v = 0.0;
        if (EqualsIgnoringCase(text, "-Infinity")) {
            v = -std::numeric_limits<double>::infinity();
        } else if (EqualsIgnoringCase(text, "Infinity")) {
            v = std::numeric_limits<double>::infinity();
        } else if (EqualsIgnoringCase(text, "NaN")) {
            v = QuietNaN();
        }
    }
    if (errno == ERANGE && !std::isinf(v)) v = std::atof(text);  // underflow
    return v;
}

// The double scan under the two formats of its own; false for any other format.
bool ScanOwnFormats(double& v, LmString& text, const char* format) {
    if (IsLdexpFormat(format)) {
        // The format holds no conversion, so mantissa and exponent keep what they
        // start with: the value's own parts, and the value stays as it was.
        int exponent = 0;
        const double mantissa = std::frexp(v, &exponent);
        v = std::ldexp(mantissa, exponent);
        return true;
    }
    if (std::strcmp(format, kRealFormat) == 0) {
        const ScanText narrow(text);
        v = ScanRealText(narrow.Get());
        return true;
    }
    return false;
}

// ---- Boolean. ----

constexpr unsigned char kBooleanNull = 255;

// ---- The 64-bit integer's print language. ----

inline bool IsInt64Conversion(char c) { return c == 'S' || c == 'd' || c == 'i' || c == 'o' || c == 'x' || c == 'X'; }

unsigned Int64Base(char conversion) {
    switch (conversion) {
        case 'o':
            return 8;
        case 'x':
        case 'X':
            return 16;
        default:
            return 10;
    }
}

// One conversion of copy into text; copy is run down to 0, except for the smallest
// value, which has a fixed text and stays.
void AppendInt64Conversion(std::string& text, long long& copy, char conversion) {
    const unsigned base = Int64Base(conversion);
    const char* prefix = base == 8 ? "0" : (conversion == 'x' ? "0x" : (conversion == 'X' ? "0X" : ""));
    unsigned long long magnitude = static_cast<unsigned long long>(copy);
    if (copy < 0) {
        magnitude = 0ULL - magnitude;
        if (static_cast<long long>(magnitude) < 0) {
            // The smallest value has no positive twin: its text is written out.
            text += prefix;
            text += base == 10 ? "-9223372036854775808" : (base == 8 ? "1000000000000000000000" : "8000000000000000");
            return;
        }
        text += '-';
    }
    text += prefix;
    const char* digits = conversion == 'X' ? "0123456789ABCDEF" : "0123456789abcdef";
    char reversed[64];
    size_t n = 0;
    do {
        reversed[n++] = digits[magnitude % base];
        magnitude /= base;
    } while (magnitude != 0);
    copy = 0;
    while (n > 0) text += reversed[--n];
}

// A digit of the scan language: 0 to 9, or a letter by its upper case from A as 10;
// -1 for any other character.
int Int64Digit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'z') return c - 'a' + 10;
    if (c >= 'A' && c <= 'Z') return c - 'A' + 10;
    return -1;
}

}  // namespace

// ---- The character family: o_char and o_u1b. ----

// Printable bytes under the format, the others as "0x%02x"; the pieces follow one
// another with no separator, so an array prints as one text.
LmString& CharPrintToString(LmString& out, void* value, const char* format, unsigned count) {
    Conversion c;
    TranslatePrint(OrDefault(format, "%c"), c);
    const auto* bytes = static_cast<const unsigned char*>(value);
    std::string text;
    char buffer[kPrintBufferSize];
    for (unsigned i = 0; i < count; ++i) {
        const unsigned char b = bytes[i];
        if (std::isprint(b)) {
            text.append(buffer, FormatInto(buffer, c, b));
        } else {
            const int n = std::snprintf(buffer, kPrintBufferSize, "0x%02x", b);
            text.append(buffer, static_cast<size_t>(n));
        }
    }
    out = text.c_str();
    return out;
}

// Each element from the current text position: "0x%x" first, whose low byte is the
// element, then the format. The position then moves one character on, whatever was read.
void* CharScanFromString(void* value, LmString& text, const char* format, unsigned count) {
    if (value == nullptr) return nullptr;
    const ScanText narrow(text);
    Conversion c;
    TranslateScan(OrDefault(format, "%c"), c);
    auto* bytes = static_cast<unsigned char*>(value);
    const char* p = narrow.Get();
    size_t left = std::strlen(p);
    for (unsigned i = 0; i < count && left > 0; ++i, ++p, --left) {
        unsigned hex = 0;
        if (std::sscanf(p, "0x%x", &hex) == 1) {
            bytes[i] = static_cast<unsigned char>(hex);
        } else if (c.kind != ArgKind::None) {
            ScanNumber(bytes[i], c, p);
        }
    }
    return value;
}

// ---- Short family (o_2b, o_u2b): 16 bits, widened to int. ----

LmString& ShortPrintToString(LmString& out, void* value, const char* format, unsigned) {
    return PrintNumber(out, static_cast<int>(ReadValue<int16_t>(value)), OrDefault(format, "%hd"));
}

void* ShortScanFromString(void* value, LmString& text, const char* format, unsigned) {
    return ScanIntoValue<int16_t>(value, text, OrDefault(format, "%hd"));
}

// ---- Long family (o_4b, o_u4b, BlockId) and int family (int, unsigned, enum): 32 bits. ----

LmString& LongPrintToString(LmString& out, void* value, const char* format, unsigned) {
    return PrintNumber(out, ReadValue<int32_t>(value), OrDefault(format, "%ld"));
}

void* LongScanFromString(void* value, LmString& text, const char* format, unsigned) {
    return ScanIntoValue<int32_t>(value, text, OrDefault(format, "%ld"));
}

LmString& IntPrintToString(LmString& out, void* value, const char* format, unsigned) {
    return PrintNumber(out, ReadValue<int32_t>(value), OrDefault(format, "%d"));
}

void* IntScanFromString(void* value, LmString& text, const char* format, unsigned) {
    return ScanIntoValue<int32_t>(value, text, OrDefault(format, "%d"));
}

// ---- 64-bit family (o_8b, o_u8b). ----

LmString& O_8BPrintToString(LmString& out, void* value, const char* format, unsigned) {
    return PrintNumber(out, ReadValue<int64_t>(value), OrDefault(format, "%I64d"));
}

void* O_8BScanFromString(void* value, LmString& text, const char* format, unsigned) {
    return ScanIntoValue<int64_t>(value, text, OrDefault(format, "%I64d"));
}

// ---- Floating family. ----

LmString& DoublePrintToString(LmString& out, void* value, const char* format, unsigned) {
    return PrintDouble(out, ReadValue<double>(value), OrDefault(format, kRealFormat));
}

void* DoubleScanFromString(void* value, LmString& text, const char* format, unsigned) {
    if (value == nullptr) return nullptr;
    format = OrDefault(format, kRealFormat);
    double v = ReadValue<double>(value);
    if (ScanOwnFormats(v, text, format)) {
        std::memcpy(value, &v, sizeof v);
        return value;
    }
    return ScanIntoValue<double>(value, text, format);
}

// The two formats of its own widen to double and print as a double would; any
// other format gets the widened value directly.
LmString& FloatPrintToString(LmString& out, void* value, const char* format, unsigned) {
    format = OrDefault(format, kRealFormat);
    const double v = static_cast<double>(ReadValue<float>(value));
    if (IsLdexpFormat(format) || std::strcmp(format, kRealFormat) == 0) return PrintDouble(out, v, format);
    return PrintNumber(out, v, format);
}

void* FloatScanFromString(void* value, LmString& text, const char* format, unsigned) {
    if (value == nullptr) return nullptr;
    format = OrDefault(format, kRealFormat);
    double v = static_cast<double>(ReadValue<float>(value));
    if (ScanOwnFormats(v, text, format)) {
        const auto f = static_cast<float>(v);
        std::memcpy(value, &f, sizeof f);
        return value;
    }
    return ScanIntoValue<float>(value, text, format);
}

// ---- Boolean slots (one byte). Format and count play no part. ----

LmString& BooleanPrintToString(LmString& out, void* value, const char*, unsigned) {
    return LmBooleanPrintText(out, *static_cast<const unsigned char*>(value));
}

void* BooleanScanFromString(void* value, LmString& text, const char*, unsigned) {
    if (value == nullptr) return nullptr;
    LmBooleanScanText(*static_cast<unsigned char*>(value), text);
    return value;
}

LmString& LmBooleanPrintText(LmString& out, unsigned char value) {
    if (value == kBooleanNull) {
        out = LmTypeMgr::GetNullPrintString();
    } else if (value == 1) {
        out = "TRUE";
    } else {
        out = "FALSE";
    }
    return out;
}

unsigned char& LmBooleanScanText(unsigned char& value, const LmString& text) {
    const ScanText narrow(text);
    const ScanText nullText(LmTypeMgr::GetNullPrintString());
    const char* t = narrow.Get();
    if (std::strncmp(t, nullText.Get(), std::strlen(nullText.Get())) == 0) {
        value = kBooleanNull;
    } else {
        value = std::strcmp(t, "T") == 0 || std::strcmp(t, "t") == 0 || std::strcmp(t, "TRUE") == 0 ||
                        std::strcmp(t, "true") == 0 || std::strcmp(t, "1") == 0
                    ? 1
                    : 0;
    }
    return value;
}

// ---- The 64-bit integer's languages. ----

LmString& LmInt64PrintText(LmString& out, long long value, const char* format) {
    if (format == nullptr) format = "%S";
    long long copy = value;
    std::string text;
    for (const char* f = format; *f != 0; ++f) {
        if (*f == '%' && IsInt64Conversion(f[1])) {
            AppendInt64Conversion(text, copy, f[1]);
            ++f;
        } else {
            // A '%' that starts no conversion is written, and the next character is
            // an ordinary one again.
            text += *f;
        }
    }
    const size_t n = text.size() < 65535 ? text.size() : 65535;
    LmStringSplice(out, text.c_str(), LM_CODESET_NATIVE, out.Len(), 0, static_cast<uint16_t>(n), 1, LM_SPLICE_ASSIGN,
                   LmFormatLittle);
    return out;
}

// Format and text walk together; the number of a conversion is stored when its
// digits end. Any failure makes the value -1.
long long& LmInt64ScanText(long long& value, const LmString& text, const char* format) {
    if (format == nullptr) format = "%S";
    const ScanText narrow(text);
    const char* t = narrow.Get();
    const char* f = format;
    while (*f != 0 && *t != 0) {
        if (*f != '%' || !IsInt64Conversion(f[1])) {
            if (*f++ != *t++) return value = -1;
            continue;
        }
        const char conversion = f[1];
        f += 2;
        bool minus = false;
        if (*t == '-') {
            minus = true;
            ++t;
        } else if (*t == '+') {
            ++t;
        }
        unsigned base = 10;
        if (t[0] == '0' && (t[1] == 'x' || t[1] == 'X')) {
            base = 16;
            t += 2;
        } else if (t[0] == '0') {
            base = 8;
        }
        if (conversion != 'S' && base != Int64Base(conversion)) return value = -1;
        const char terminator = *f;
        unsigned long long n = 0;
        for (; *t != 0 && *t != terminator; ++t) {
            const int d = Int64Digit(*t);
            if (d < 0 || static_cast<unsigned>(d) >= base) return value = -1;
            n = n * base + static_cast<unsigned>(d);
        }
        value = static_cast<long long>(minus ? 0ULL - n : n);
        if (*t != terminator) break;
    }
    return value;
}
