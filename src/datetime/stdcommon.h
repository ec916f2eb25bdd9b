// Internal: what the standard date and time family shares: the float-to-integer cut
// of the x86 machines, the day loop of the time arithmetic, the split of a count of
// seconds into time fields, and the widening into the record of the format engines.
#ifndef STDCOMMON_H
#define STDCOMMON_H

#include <cmath>
#include <cstdint>

#include "dtcommon.h"
#include "lmdatetime.h"
#include "lmstddate.h"
#include "lmstring.h"

// The library's own way to the absolute day of a d_Date, which the class keeps private.
struct d_DateAccess {
    static int Abs(const d_Date& date) noexcept { return date.getAbsDate(); }
    static void SetAbs(d_Date& date, int absoluteDay) noexcept { date.setAbsDate(absoluteDay); }
};

namespace lmstd {

constexpr float kSecondsPerDay = 86400.0f;

// The step of GetValue for the times and the intervals: 0.01 seconds.
inline constexpr d_Interval kHundredth = d_Interval::FromSeconds(0.01f);

// A float count truncated to a 32-bit integer. Where the value does not fit (NaN, the
// infinities, 1e30) the x86 conversion answers the integer -2147483648, and so does
// this: C++ leaves that conversion undefined.
inline int32_t TruncToInt(double v) noexcept {
    return v > -2147483649.0 && v < 2147483648.0 ? static_cast<int32_t>(v) : INT32_MIN;
}

using lmdatetime::Wrap;  // the low 32 bits of a wider sum

// The low byte of a number, as a signed byte field holds it.
inline int8_t Byte(int64_t v) noexcept { return static_cast<int8_t>(static_cast<uint8_t>(v & 0xFF)); }

// While the count is below 0, one day is added. A day that no longer moves the float
// (below 65536 days back, or -infinity) would loop for ever: such a count is brought
// into the day in one step, which is where the loop ends while its sums are exact,
// and -infinity becomes NaN.
inline float AddDaysUntilNotNegative(float t) noexcept {
    if (!(t < 0.0f)) return t;
    if (t < -65536.0f * kSecondsPerDay) {
        t = std::fmod(t, kSecondsPerDay);
        return t < 0.0f ? t + kSecondsPerDay : t;
    }
    while (t < 0.0f) t += kSecondsPerDay;
    return t;
}

// A second and the hundredths behind it, from a float count of seconds: the
// truncated count, then the truncated (s - second) * 100.0 of the stored byte.
inline void SplitSeconds(float s, int8_t& second, int8_t& hundredth) noexcept {
    second = Byte(TruncToInt(s));
    hundredth = Byte(TruncToInt((s - second) * 100.0));
}

// The hours, minutes and seconds of a count of seconds into the time fields, as the
// reads of d_Interval give them; the zone bytes are not touched.
inline void SplitTime(const d_Interval& t, d_Time::Fields& f) noexcept {
    f.hour = Byte(t.hour());
    f.minute = Byte(t.minute());
    SplitSeconds(t.second(), f.second, f.hundredth);
}

// The LmDateTime a value of the family is printed as, each field cut to its byte.
inline LmDateTime Widened(int year, int month, int day, int hour, int minute, int second) noexcept {
    return LmDateTime(static_cast<short>(year), Byte(month), Byte(day), Byte(hour), Byte(minute), Byte(second));
}

// A date and the time of a d_Time as they are printed: hour and minute without the
// zone, the truncated seconds.
inline LmDateTime WidenedTime(const d_Date::Fields& date, const d_Time& time) noexcept {
    return Widened(date.year, date.month, date.day, time.fields.hour - time.fields.tz_hour,
                   time.fields.minute - time.fields.tz_minute, TruncToInt(time.second()));
}

// hundredth / 100.0 + second, as the float read of d_Time gives it.
inline float Seconds(int8_t second, int8_t hundredth) noexcept {
    return static_cast<float>(hundredth / 100.0 + second);
}

// The hash word of a stored or held time. Memory form, from the reads: (hour << 24)
// + the seconds truncated to 16 bits + (minute << 16). A disk form is a chain over its
// six bytes: byte 0 * 16 XOR byte 1, then times 16 XOR each next byte.
inline uint32_t TimeHashWord(const unsigned char* p, bool memory) noexcept {
    if (memory) {
        const auto field = [p](int i) { return static_cast<int>(static_cast<int8_t>(p[i])); };
        const auto hour = static_cast<uint16_t>(field(2) - field(0));
        const auto minute = static_cast<uint16_t>(field(3) - field(1));
        const auto second = static_cast<uint16_t>(TruncToInt(Seconds(Byte(field(4)), Byte(field(5)))));
        return (static_cast<uint32_t>(hour) << 24) + second + (static_cast<uint32_t>(minute) << 16);
    }
    uint32_t g = static_cast<uint32_t>(p[0]) * 16 ^ p[1];
    for (int i = 2; i < 6; ++i) g = g * 16 ^ p[i];
    return g;
}

// The hash word of a stored or held date: (year, unsigned, << 16) + month * 256 + day.
// The year is read in the store order, swapped for nibble 2 only.
inline uint32_t DateHashWord(const unsigned char* p, bool swapYear) noexcept {
    const uint32_t year = swapYear ? (p[0] << 8 | p[1]) : (p[1] << 8 | p[0]);
    return (year << 16) + static_cast<uint32_t>(p[2]) * 256 + p[3];
}

// The order of two stored dates (stddate.cpp): -1, 0 or 1, with the one-sided
// wildcards of the second value unless option bit 0x10 is set.
int StoredDateOrder(const unsigned char* a, const unsigned char* b, unsigned char format,
                    unsigned short option) noexcept;

// The first difference of n signed bytes, as -1 or 1; 0 if all are equal.
inline int SignedBytesOrder(const unsigned char* a, const unsigned char* b, unsigned n) noexcept {
    for (unsigned i = 0; i < n; ++i) {
        const int x = static_cast<int8_t>(a[i]), y = static_cast<int8_t>(b[i]);
        if (x != y) return x < y ? -1 : 1;
    }
    return 0;
}

// Reads text under format into an LmDateTime by its own scan: the fields read so far
// stand also when the text ends early, which answers false.
inline bool ScanDateTime(LmString& text, const char* format, LmDateTime& value) {
    value = LmDateTime(0, 0, 0, 0, 0, 0);
    return value.ScanFromLmString(text, format) != nullptr;
}

}  // namespace lmstd

#endif
