// The print engine of the date and time format language.
//
// The text is assembled in a fixed buffer of 2560 bytes and cut at its end; each
// directive's number is written digit by digit with the zero padding its printf
// format asks for ("%02.2d": at least two digits, a sign in front), so no directive
// but %f goes through the C library.
#include <cstdio>
#include <cstring>

#include "dtnames.h"
#include "lmdate.h"
#include "lmdtformat.h"
#include "lmstring.h"
#include "lmtypemgr.h"

namespace {

constexpr size_t kOutputSize = 2560;  // the assembled text, terminator included
constexpr size_t kScratchSize = 512;  // one directive's text

// The two digits of 0 to 99.
constexpr char kPairs[201] =
    "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
    "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
    "8081828384858687888990919293949596979899";

// v in decimal with at least `digits` digits, zero-padded, the sign in front: what
// printf gives for "%0W.Pd" with W equal to P, and for "%ld" with one digit. The
// common fields (two digits, a four-digit year) take a table and no loop.
inline size_t FormatInt(char* out, int v, int digits) {
    if (v >= 0 && v <= 99 && digits == 2) {
        out[0] = kPairs[2 * v];
        out[1] = kPairs[2 * v + 1];
        return 2;
    }
    if (v >= 1000 && v <= 9999 && digits == 4) {
        const int hi = v / 100, lo = v % 100;
        out[0] = kPairs[2 * hi];
        out[1] = kPairs[2 * hi + 1];
        out[2] = kPairs[2 * lo];
        out[3] = kPairs[2 * lo + 1];
        return 4;
    }
    char rev[16];
    size_t n = 0;
    uint32_t magnitude = v < 0 ? 0u - static_cast<uint32_t>(v) : static_cast<uint32_t>(v);
    do {
        rev[n++] = static_cast<char>('0' + magnitude % 10);
        magnitude /= 10;
    } while (magnitude != 0);
    while (n < static_cast<size_t>(digits)) rev[n++] = '0';
    size_t at = 0;
    if (v < 0) out[at++] = '-';
    while (n != 0) out[at++] = rev[--n];
    return at;
}

// Seconds and nanoseconds as a decimal fraction, with the fewest of 0, 3, 6 or 9
// decimals that lose nothing ("%0*.*lf" with widths 2, 6, 9 and 12).
size_t FormatSeconds(char* out, int second, int nanoseconds) {
    if (second == 0 && nanoseconds == 0) {
        out[0] = '0';
        out[1] = '0';
        return 2;
    }
    int width = 12, precision = 9;
    if (nanoseconds == 0) {
        width = 2;
        precision = 0;
    } else if (nanoseconds % 1000000 == 0) {
        width = 6;
        precision = 3;
    } else if (nanoseconds % 1000 == 0) {
        width = 9;
        precision = 6;
    }
    const double value = nanoseconds / 1000000000.0 + second;
    const int n = std::snprintf(out, kScratchSize, "%0*.*f", width, precision, value);
    return n > 0 ? static_cast<size_t>(n) : 0;
}

// out becomes the text in the default 8-bit code set and language, as an assignment
// of the text gives it. When out already holds a narrow buffer of exactly the size
// that assignment would make, the text is written into it instead of into a new one.
void Deliver(LmString& out, const char* text, size_t length) {
    if (out.GetSize() == length + 1 && out.Width() == 1) {
        std::memcpy(out.StrGet(), text, length + 1);
        out.SetCodeSet(LmString::GetDefault8CodeSet());
        out.SetLanguage(LmString::GetDefaultLanguage());
        return;
    }
    out = text;
}

bool IsNullRecord(const LmDateTimeNRecord& v) {
    return v.year == -32768 && v.month == -128 && v.day == -128 && v.hour == -128 && v.minute == -128 &&
           v.second == -128 && v.nanoseconds == 0;
}

// A %p or %P in the format itself (not in the compound expansions) puts %I into
// 12-hour mode. A '%' is followed by exactly one examined character.
bool HasAmPm(const char* f) {
    for (; *f != 0; ++f) {
        if (*f != '%') continue;
        ++f;
        if (*f == 'p' || *f == 'P') return true;
        if (*f == 0) break;
    }
    return false;
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

LmString& DateTimePrintEngine(LmString& out, const LmDateTimeNRecord& value, const char* format, int /*flag*/) {
    if (IsNullRecord(value)) {
        out = LmTypeMgr::GetNullPrintString();
        return out;
    }
    if (format == nullptr) format = "";
    const int year = value.year, month = value.month, day = value.day, hour = value.hour;
    const int minute = value.minute, second = value.second, nanoseconds = value.nanoseconds;

    // The display hour and the pm flag of 12-hour mode.
    const bool twelve = HasAmPm(format);
    int displayHour = hour;
    bool pm = false;
    if (twelve) {
        if (hour == 0) {
            displayHour = 12;
        } else if (hour >= 12) {
            pm = true;
            if (hour > 12) displayHour = hour - 12;
        }
    }

    // The text; what does not fit before its last byte is dropped. A directive's text
    // goes straight into it while there is room for the longest number, else through
    // a scratch buffer that is cut to what fits.
    char text[kOutputSize];
    constexpr size_t kLast = kOutputSize - 1;
    size_t n = 0;
    auto put = [&](char c) {
        if (n < kLast) text[n++] = c;
    };
    auto putText = [&](const char* s, size_t len) {
        if (len > kLast - n) len = kLast - n;
        for (size_t i = 0; i < len; ++i) text[n + i] = s[i];
        n += len;
    };
    auto putNumber = [&](int v, int digits) {
        if (n + 16 <= kLast) {
            n += FormatInt(text + n, v, digits);
        } else {
            char scratch[16];
            putText(scratch, FormatInt(scratch, v, digits));
        }
    };

    const char* f = format;
    const char* resume = nullptr;  // behind the compound directive being expanded
    bool printed = false;          // some directive has put text in the output
    bool wildcard = false;         // kept between directives; set by those with a field
    bool groupOpen = false;
    size_t groupMark = 0;

    for (;;) {
        char c = *f++;
        if (c == 0) {
            if (resume == nullptr) break;
            f = resume;
            resume = nullptr;
            continue;
        }
        if (c == ')' && groupOpen) {
            if (!printed) n = groupMark;
            groupOpen = false;
            // The character behind the ')' is handled at once, without the test for
            // ')'. A group at the very end of the format ends the text there.
            c = *f++;
            if (c == 0) break;
        }
        if (c != '%') {
            put(c);
            continue;
        }
        bool conditional = false;
        if (*f == '?') {
            conditional = true;
            ++f;
        }
        if (*f == '(') {
            groupOpen = true;
            groupMark = n;
            ++f;
        }
        const char directive = *f;
        if (directive == 0) break;  // a format cut inside a directive ends there
        ++f;

        // What the directive prints, and for those with a field its wildcard and zero
        // tests. %p and %P have no wildcard test of their own: they keep the state the
        // last field left.
        enum class Kind { Number, Name, Fraction, Literal } kind = Kind::Number;
        int number = 0, digits = 2;
        const char* name = nullptr;
        size_t nameLength = 0;
        bool zero = false;
        switch (directive) {
            case 'D':
            case 'O':
            case 'T':
            case 'V':
            case 'X':
                // A compound. One level: the expansions hold no compound directive.
                if (resume == nullptr) {
                    resume = f;
                    f = Expansion(directive);
                }
                continue;
            case 'A':
            case 'a':
                wildcard = day == -1;
                zero = day == 0;
                kind = Kind::Name;
                name = lmdatetime::WeekdayName(LmDate(value.year, value.month, value.day).GetDayOfTheDate());
                nameLength = directive == 'a' ? 3 : std::strlen(name);
                break;
            case 'B':
            case 'b':
                wildcard = month == -1;
                zero = month == 0;
                if (month >= 1 && month <= 12) {
                    kind = Kind::Name;
                    name = lmdatetime::kMonthNames[month];
                    nameLength = directive == 'b' ? 3 : std::strlen(name);
                } else {
                    number = month;
                    digits = 3;
                }
                break;
            case 'd':
            case 'e':
                wildcard = day == -1;
                zero = day == 0;
                number = day;
                break;
            case 'f':
                wildcard = second == -1;
                zero = second == 0 && nanoseconds == 0;
                kind = Kind::Fraction;
                break;
            case 'H':
                wildcard = hour == -1;
                zero = hour == 0;
                number = hour;
                break;
            case 'I':
                wildcard = hour == -1;
                zero = hour == 0;
                number = twelve ? displayHour : (hour > 12 ? hour - 12 : hour);
                break;
            case 'J':
                wildcard = year == -1 && month == -1 && day == -1;
                zero = year == 0 && month == 0 && day == 0;
                number = (year * 12 + month) * 30 + day;
                digits = 1;
                break;
            case 'M':
                wildcard = minute == -1;
                zero = minute == 0;
                number = minute;
                break;
            case 'm':
                wildcard = month == -1;
                zero = month == 0;
                number = month;
                break;
            case 'N':
                wildcard = nanoseconds == -1;
                zero = nanoseconds == 0;
                number = nanoseconds;
                digits = 1;
                break;
            case 'S':
                wildcard = second == -1;
                zero = second == 0;
                number = second;
                break;
            case 'Y':
                wildcard = year == -1;
                zero = year == 0;
                number = year;
                digits = 4;
                break;
            case 'y':
                wildcard = year == -1;
                zero = year == 0;
                number = year % 100;
                break;
            case 'P':
            case 'p':
                zero = hour == 0;
                kind = Kind::Name;
                name = directive == 'P' ? (pm ? "PM" : "AM") : (pm ? "pm" : "am");
                nameLength = 2;
                break;
            default:
                // %% and any other character: the character itself, then the common
                // rule, so that behind a wildcard a '*' follows it.
                put(directive);
                kind = Kind::Literal;
                break;
        }

        if (wildcard) {
            put('*');  // a wildcard does not count as printed text
            continue;
        }
        if (conditional && kind != Kind::Literal && !printed && zero) continue;  // suppressed
        printed = true;
        switch (kind) {
            case Kind::Number:
                putNumber(number, digits);
                break;
            case Kind::Name:
                putText(name, nameLength);
                break;
            case Kind::Fraction: {
                char scratch[kScratchSize];
                putText(scratch, FormatSeconds(scratch, second, nanoseconds));
                break;
            }
            case Kind::Literal:
                break;
        }
    }
    text[n] = 0;
    Deliver(out, text, n);
    return out;
}
