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

// The output buffer; what does not fit is dropped.
class Output {
public:
    void Put(char c) {
        if (n < kOutputSize - 1) text[n++] = c;
    }
    void Put(const char* s, size_t len) {
        if (len > kOutputSize - 1 - n) len = kOutputSize - 1 - n;
        std::memcpy(text + n, s, len);
        n += len;
    }
    size_t Mark() const { return n; }
    void Back(size_t mark) { n = mark; }
    const char* Close() {
        text[n] = 0;
        return text;
    }

private:
    char text[kOutputSize];
    size_t n = 0;
};

// v in decimal with at least `digits` digits, zero-padded, the sign in front: what
// printf gives for "%0W.Pd" with W equal to P, and for "%ld" with one digit.
size_t FormatInt(char* out, int v, int digits) {
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
        case 'X':
            return LmDateTimeNFormat;
        default:
            return nullptr;
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

    Output text;
    char scratch[kScratchSize];
    const char* f = format;
    const char* resume = nullptr;  // behind the compound directive being expanded
    bool printed = false;          // some directive has put text in the output
    bool wildcard = false;         // kept between directives; set by those with a field
    bool groupOpen = false;
    size_t groupMark = 0;
    bool afterGroup = false;  // the character behind a group's ')' skips the ')' test

    for (;;) {
        const char c = *f;
        if (c == 0) {
            if (resume == nullptr) break;
            f = resume;
            resume = nullptr;
            continue;
        }
        if (c == ')' && groupOpen && !afterGroup) {
            if (!printed) text.Back(groupMark);
            groupOpen = false;
            afterGroup = true;
            ++f;
            continue;
        }
        afterGroup = false;
        if (c != '%') {
            text.Put(c);
            ++f;
            continue;
        }
        ++f;
        bool conditional = false;
        if (*f == '?') {
            conditional = true;
            ++f;
        }
        if (*f == '(') {
            groupOpen = true;
            groupMark = text.Mark();
            ++f;
        }
        const char directive = *f;
        if (directive == 0) break;  // a format cut inside a directive ends there
        ++f;

        if (const char* expansion = Expansion(directive)) {
            // One level: the expansions hold no compound directive.
            if (resume == nullptr) {
                resume = f;
                f = expansion;
            }
            continue;
        }

        // The directive's text, and for those with a field its wildcard and zero tests.
        const char* piece = scratch;
        size_t length = 0;
        bool hasField = true;
        bool zero = false;
        switch (directive) {
            case 'A':
            case 'a': {
                wildcard = day == -1;
                zero = day == 0;
                piece = lmdatetime::WeekdayName(LmDate(value.year, value.month, value.day).GetDayOfTheDate());
                length = directive == 'a' ? 3 : std::strlen(piece);
                break;
            }
            case 'B':
            case 'b':
                wildcard = month == -1;
                zero = month == 0;
                if (month >= 1 && month <= 12) {
                    piece = lmdatetime::kMonthNames[month];
                    length = directive == 'b' ? 3 : std::strlen(piece);
                } else {
                    length = FormatInt(scratch, month, 3);
                }
                break;
            case 'd':
            case 'e':
                wildcard = day == -1;
                zero = day == 0;
                length = FormatInt(scratch, day, 2);
                break;
            case 'f':
                wildcard = second == -1;
                zero = second == 0 && nanoseconds == 0;
                length = FormatSeconds(scratch, second, nanoseconds);
                break;
            case 'H':
                wildcard = hour == -1;
                zero = hour == 0;
                length = FormatInt(scratch, hour, 2);
                break;
            case 'I':
                wildcard = hour == -1;
                zero = hour == 0;
                length = FormatInt(scratch, twelve ? displayHour : (hour > 12 ? hour - 12 : hour), 2);
                break;
            case 'J':
                wildcard = year == -1 && month == -1 && day == -1;
                zero = year == 0 && month == 0 && day == 0;
                length = FormatInt(scratch, (year * 12 + month) * 30 + day, 1);
                break;
            case 'M':
                wildcard = minute == -1;
                zero = minute == 0;
                length = FormatInt(scratch, minute, 2);
                break;
            case 'm':
                wildcard = month == -1;
                zero = month == 0;
                length = FormatInt(scratch, month, 2);
                break;
            case 'N':
                wildcard = nanoseconds == -1;
                zero = nanoseconds == 0;
                length = FormatInt(scratch, nanoseconds, 1);
                break;
            case 'S':
                wildcard = second == -1;
                zero = second == 0;
                length = FormatInt(scratch, second, 2);
                break;
            case 'Y':
                wildcard = year == -1;
                zero = year == 0;
                length = FormatInt(scratch, year, 4);
                break;
            case 'y':
                wildcard = year == -1;
                zero = year == 0;
                length = FormatInt(scratch, year % 100, 2);
                break;
            case 'P':
            case 'p':
                // No wildcard test of its own: it keeps the state the last field left.
                zero = hour == 0;
                piece = directive == 'P' ? (pm ? "PM" : "AM") : (pm ? "pm" : "am");
                length = 2;
                break;
            default:
                // %% and any other character: the character itself, then the common
                // rule, so that behind a wildcard a '*' follows it.
                text.Put(directive);
                hasField = false;
                break;
        }

        if (wildcard) {
            text.Put('*');  // a wildcard does not count as printed text
        } else if (hasField && conditional && !printed && zero) {
            // suppressed
        } else {
            text.Put(piece, length);
            printed = true;
        }
    }
    out = text.Close();
    return out;
}
