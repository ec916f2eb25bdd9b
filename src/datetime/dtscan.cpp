// The scan engine of the date and time format language.
//
// The input is the terminated text of a string and is read in place; every step
// forward is bounded by its terminator, and every pass over the format moves on by
// at least one character, so no text or format, however long or cut short, reads
// outside its buffer or keeps the walk going.
//
// Numbers are read as the C library's "%d" reads them on a platform with a 32-bit
// long: white space, an optional sign, digits; a value beyond the 32-bit range stays
// at its limit. A number that does not parse leaves its field as it was.
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "dtnames.h"
#include "lmdtformat.h"
#include "lmstring.h"
#include "lmtypemgr.h"
#include "scantext.h"

namespace {

// White space as the C locale has it (blank, tab, newline, vertical tab, form feed,
// carriage return), whatever locale the application has set.
constexpr std::array<bool, 256> kSpace = [] {
    std::array<bool, 256> t{};
    for (const char c : {' ', '\t', '\n', '\v', '\f', '\r'}) t[static_cast<unsigned char>(c)] = true;
    return t;
}();
inline bool IsSpace(char c) { return kSpace[static_cast<unsigned char>(c)]; }
inline bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The value of "%d" at p, where no white space stands: true and the value when a
// digit follows the optional sign. Answers in end the pointer behind the sign and all
// its digits. A number beyond 32 bits is held at the limit.
inline bool ReadInt(const char* p, int& value, const char*& end) {
    const char sign = *p;
    if (sign == '+' || sign == '-') ++p;
    unsigned digit = static_cast<unsigned char>(*p) - '0';
    if (digit > 9) {
        end = p;
        return false;
    }
    const char* const first = p;
    uint32_t v = digit;  // nine digits cannot leave 32 bits
    while ((digit = static_cast<unsigned char>(*++p) - '0') <= 9 && p - first < 9) v = v * 10 + digit;
    int64_t wide = v;
    for (; digit <= 9; digit = static_cast<unsigned char>(*++p) - '0') {
        if (wide <= INT32_MAX) wide = wide * 10 + digit;
    }
    end = p;
    if (sign == '-') wide = -wide;
    value = wide > INT32_MAX ? INT32_MAX : (wide < INT32_MIN ? INT32_MIN : static_cast<int>(wide));
    return true;
}

// The value of "%3d" at p: at most three characters, the sign counted.
void ReadInt3(const char* p, int& value) {
    const char sign = *p;
    int left = 3;
    if (sign == '+' || sign == '-') {
        ++p;
        --left;
    }
    if (!IsDigit(*p)) return;
    int v = 0;
    for (; left != 0 && IsDigit(*p); ++p, --left) v = v * 10 + (*p - '0');
    value = sign == '-' ? -v : v;
}

// Steps over n characters, never beyond the terminator.
const char* Skip(const char* p, int n) {
    while (n-- > 0 && *p != 0) ++p;
    return p;
}

// The characters that text and name have in common from the start.
size_t Common(const char* text, const char* name) {
    size_t n = 0;
    while (name[n] != 0 && text[n] == name[n]) ++n;
    return n;
}

// The index of the name whose first three characters begin text, or -1.
template <size_t N>
int MatchName(const char* text, const char* const (&names)[N], size_t first) {
    for (size_t i = first; i < N; ++i)
        if (std::strncmp(text, names[i], 3) == 0) return static_cast<int>(i);
    return -1;
}

// A double truncated toward zero to a 64-bit integer, held at the limits of the
// range; NaN is 0.
int64_t Truncate(double d) {
    if (std::isnan(d)) return 0;
    if (d >= 9223372036854775808.0) return INT64_MAX;
    if (d < -9223372036854775808.0) return INT64_MIN;
    return static_cast<int64_t>(d);
}

// The named format a compound directive expands to.
const char* Expansion(char directive) {
    switch (directive) {
        case 'D':
            return LmDateFormat;
        case 'O':
            return LmDateTimeFormat;
        case 'T':
            return LmTimeFormat;
        case 'V':
            return LmTimeSpanFormat;
        default:
            return LmDateTimeNFormat;
    }
}

}  // namespace

LmDateTimeNRecord* DateTimeScanEngine(LmDateTimeNRecord* target, const LmString& text, const char* format,
                                      int /*flag*/) {
    if (target == nullptr) return nullptr;
    const ScanText input(text);
    const char* in = input.Get();
    {
        const ScanText null(LmTypeMgr::GetNullPrintString());
        const char* n = null.Get();
        // Every text begins with an empty null print string.
        if (*n == 0 || (*in == *n && std::strncmp(in, n, std::strlen(n)) == 0)) {
            *target = LmDateTimeNRecord{-32768, -128, -128, -128, -128, -128, 0};
            return target;
        }
    }
    if (format == nullptr) format = "";

    // The earlier contents of target are not used: a field without a directive is 0.
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0, nanoseconds = 0;
    bool am = false, pm = false, failed = false, groupOpen = false;
    const char* f = format;
    const char* resume = nullptr;  // behind the compound directive being expanded

    for (;;) {
        while (IsSpace(*f)) ++f;
        while (IsSpace(*in)) ++in;
        if (*f == 0) {
            if (resume == nullptr) break;
            f = resume;
            resume = nullptr;
            continue;
        }
        if (*f == ')' && groupOpen) {
            groupOpen = false;
            if (*++f == 0) continue;
        }
        if (*f != '%') {
            // A literal. Separators are not compared: any non-digit matches.
            if (*in == 0 || (IsDigit(*in) && *in != *f)) {
                ++f;
            } else {
                ++f;
                ++in;
            }
            continue;
        }
        if (*in == 0) {
            failed = true;  // the text ended where a directive is due
            break;
        }
        ++f;
        if (*f == '?') ++f;
        if (*f == '(') {
            groupOpen = true;
            ++f;
        }
        const char directive = *f;
        if (directive == 0) break;  // a format cut inside a directive ends there
        ++f;
        bool wildcard = false;
        if (*in == '*' && directive != '%') {
            wildcard = true;
            ++in;
        }
        // A number field: "%d", then a sign and digits stepped over.
        auto number = [&](int& field) {
            if (wildcard) {
                field = -1;
                return;
            }
            ReadInt(in, field, in);
        };

        switch (directive) {
            case 'D':
            case 'O':
            case 'T':
            case 'V':
            case 'X':
                // A compound: the '*' is given back for the first inner directive. One
                // level: the expansions hold no compound directive.
                if (wildcard) --in;
                if (resume == nullptr) {
                    resume = f;
                    f = Expansion(directive);
                }
                break;
            case 'A':
            case 'a':
                // The weekday is read over and thrown away.
                if (const int w = MatchName(in, lmdatetime::kWeekdayNames, 0); !wildcard && w >= 0) {
                    in += Common(in, lmdatetime::kWeekdayNames[w]);
                }
                break;
            case 'B':
            case 'b':
                if (wildcard) {
                    month = -1;
                } else if (const int m = MatchName(in, lmdatetime::kMonthNames, 1); m > 0) {
                    month = m;
                    in += Common(in, lmdatetime::kMonthNames[m]);
                } else {
                    ReadInt3(in, month);
                    in = Skip(in, 3);
                }
                break;
            case 'd':
            case 'e':
                number(day);
                break;
            case 'f':
                if (wildcard) {
                    second = -1;
                    nanoseconds = -1;
                } else {
                    char* end = nullptr;
                    const double d = std::strtod(in, &end);
                    if (end != in) {
                        const int64_t whole = Truncate(d);
                        second =
                            static_cast<int>(whole > INT32_MAX ? INT32_MAX : (whole < INT32_MIN ? INT32_MIN : whole));
                        nanoseconds = static_cast<int>(Truncate(d * 1000000000.0) % 1000000000);
                    }
                    while (IsDigit(*in) || *in == '+' || *in == '-' || *in == '.') ++in;
                }
                break;
            case 'H':
            case 'I':
                number(hour);
                break;
            case 'J':
                if (wildcard) {
                    year = month = day = -1;
                } else {
                    int count = 0;
                    if (ReadInt(in, count, in)) {
                        year = count / 360;
                        month = count % 360 / 30;
                        day = count % 30;
                    }
                }
                break;
            case 'M':
                number(minute);
                break;
            case 'm':
                number(month);
                break;
            case 'N':
                if (wildcard) {
                    nanoseconds = -1;
                } else {
                    nanoseconds = 0;  // atol gives 0 for no number
                    ReadInt(in, nanoseconds, in);
                }
                break;
            case 'P':
            case 'p':
                if (!wildcard) {
                    if (*in == 'P' || *in == 'p') pm = true;
                    if (*in == 'A' || *in == 'a') am = true;
                    in = Skip(in, 2);
                }
                break;
            case 'S':
                number(second);
                break;
            case 'Y':
                number(year);
                break;
            case 'y':
                number(year);
                // The century rule, on the number as read, whatever its length.
                if (!wildcard) year = static_cast<int32_t>(int64_t{year} + (year > 30 ? 1900 : 2000));
                break;
            case '%':
            default:
                // %% and any other character step over one character of the text.
                in = Skip(in, 1);
                break;
        }
    }

    if (pm) {
        if (hour < 12) hour += 12;
    } else if (am && hour == 12) {
        hour = 0;
    }
    target->year = static_cast<int16_t>(year);
    target->month = static_cast<int8_t>(month);
    target->day = static_cast<int8_t>(day);
    target->hour = static_cast<int8_t>(hour);
    target->minute = static_cast<int8_t>(minute);
    target->second = static_cast<int8_t>(second);
    target->nanoseconds = nanoseconds;
    return failed ? nullptr : target;
}
