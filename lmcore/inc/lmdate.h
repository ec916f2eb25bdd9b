// LmDate: a calendar date held as its fields, in the proleptic Gregorian calendar
// with astronomical years (year 0 exists). Absolute days are Julian Day Numbers
// worked out in integers, so the date whose absolute day is 0 is -4713-11-24.
#ifndef LMDATE_H
#define LMDATE_H

#include <cstdint>

#include "lmdefs.h"

class LmString;
class LmInt64;

// The weekday of a date. The numbers are fixed: 0 is Monday, 6 is Sunday.
enum LmDaysOfTheWeek {
    LmMonday = 0,
    LmTuesday = 1,
    LmWednesday = 2,
    LmThursday = 3,
    LmFriday = 4,
    LmSaturday = 5,
    LmSunday = 6,
};

// Year, month, day: 4 bytes in memory. A field of -1 is a wildcard in printing,
// scanning and Compare; no member refuses a field out of range (IsDate tells).
class LM_EXPORT LmDate {
public:
    int16_t year;
    int8_t month;
    int8_t day;

    // Today's local date, through lumobase's clock (not the default value).
    LmDate();
    // The fields as given, unchecked.
    constexpr LmDate(short y, char m, char d) noexcept
        : year(y), month(static_cast<int8_t>(m)), day(static_cast<int8_t>(d)) {}
    // The date of an absolute day: dateabs(absoluteDay).
    explicit LmDate(int absoluteDay) noexcept;
    LmDate(const LmDate&) = default;
    LmDate& operator=(const LmDate&) = default;

    int Year() const noexcept { return year; }
    int Month() const noexcept { return month; }
    int Day() const noexcept { return day; }

    // Overwrites the fields with today's local date.
    LmDate& Today();

    // ---- Absolute days. ----
    operator int() const noexcept { return dayabs(); }
    // The Julian Day Number of the fields. Month 13 is legal and continues into the
    // next January. With 16- and 8-bit fields no step can overflow.
    int dayabs() const noexcept {
        const int y = year, m = month, d = day;
        const int c = (m - 14) / 12;  // -1 for January and February, else 0
        return d - 32075 + 1461 * (y + 4800 + c) / 4 + 367 * (m - 2 - c * 12) / 12 - 3 * ((y + 4900 + c) / 100) / 4;
    }
    // Sets the fields from an absolute day; exact from -68569 (-4900-03-01) upward.
    // The year is cut to 16 bits and nothing is checked.
    LmDate& dateabs(int absoluteDay) noexcept {
        // Within this range no step leaves 32 bits; beyond it the steps wrap.
        if (absoluteDay <= -500000000 || absoluteDay >= 500000000) return DateAbsWrapping(absoluteDay);
        int L = absoluteDay + 68569;
        const int N = 4 * L / 146097;
        L -= (146097 * N + 3) / 4;
        const int I = 4000 * (L + 1) / 1461001;
        L = L - 1461 * I / 4 + 31;
        const auto J = static_cast<int8_t>(80 * L / 2447);  // carried in 8 bits
        day = static_cast<int8_t>(L - 2447 * J / 80);
        const int K = J / 11;
        month = static_cast<int8_t>(J + 2 - 12 * K);
        year = static_cast<int16_t>(100 * (N - 49) + I + K);
        return *this;
    }
    // Absolute day of the first of the next month minus this one's.
    int daynxtmonth() const noexcept;

    // ---- Tests. ----
    int IsDate() const noexcept;
    int IsLastDayOfTheMonth() const noexcept;
    LmDaysOfTheWeek GetDayOfTheDate() const noexcept;
    LmDaysOfTheWeek DayOfTheDate() noexcept { return GetDayOfTheDate(); }
    // The English name of the weekday ("no day" outside 0 to 6).
    LmString PrintDayOfTheDate() const;
    // The weekday's number in decimal: "0" for a Monday. Differs from the const
    // overload on purpose.
    LmString PrintDayOfTheDate();

    // ---- Arithmetic, in days, through the absolute day. ----
    LmDate& operator++() noexcept;
    LmDate& operator--() noexcept;
    LmDate operator+(int days) const noexcept;
    LmDate operator-(int days) const noexcept;
    LmDate& operator+=(int days) noexcept;
    LmDate& operator-=(int days) noexcept;
    int operator-(const LmDate& other) const noexcept;

    // ---- Comparison on the signed fields, in the order year, month, day. ----
    int operator==(const LmDate& other) const noexcept;
    // The first non-zero field difference, this minus other.
    int operator!=(const LmDate& other) const noexcept;
    int operator<(const LmDate& other) const noexcept;
    int operator<=(const LmDate& other) const noexcept;
    int operator>(const LmDate& other) const noexcept;
    int operator>=(const LmDate& other) const noexcept;
    // The first non-zero field difference. Without bit 0x10 in options a field that
    // is -1 in either value is skipped; with it every field counts as a number.
    int Compare(const LmDate& other, unsigned short options) const noexcept;

    // ---- Constants. Null is out of every field's range; default is absolute day 0;
    // zero is 0000-01-01; clear is all zero bytes. ----
    static const LmDate& NullValue() noexcept;
    static const LmDate& DefaultValue() noexcept;
    static const LmDate& ZeroValue() noexcept;
    static const LmDate& ClearValue() noexcept;
    int IsNullValue() const noexcept;
    int IsDefaultValue() const noexcept;
    int IsZeroValue() const noexcept;
    int SetNullValue() noexcept;
    int SetDefaultValue() noexcept;
    int SetZeroValue() noexcept;

    // ---- Text. A null format means "%Y-%m-%d". The null value prints as the null
    // print string. A scan replaces the fields with what it read, also when it fails,
    // and answers null on failure. ----
    LmString& PrintToLmString(LmString& out, const char* format) const;
    LmDate* ScanFromLmString(LmString& text, const char* format);

protected:
    // dateabs in the wrapping arithmetic of 32-bit integers, for any argument.
    LmDate& DateAbsWrapping(int absoluteDay) noexcept;

    // Truncating division and a remainder whose sign follows the pair of signs
    // (modulo(7, -3) is -1). A zero divisor gives 0.
    int divide(int a, int b) const noexcept;
    int modulo(int a, int b) const noexcept;
};
static_assert(sizeof(LmDate) == 4, "an LmDate is 4 bytes in memory");

// The compare slot of id 12. Memory form (low nibble 8): LmDate::Compare, a field
// difference with the wildcards of both sides. Disk forms: -1, 0 or 1, and only the
// second value's wildcards count.
LM_EXPORT int LmDateCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2,
                            unsigned short option, unsigned count, int& status);

// Milliseconds since 1970-01-01 00:00:00 UTC from lumobase's clock: its seconds times
// 1000 plus its milliseconds, in LmInt64 arithmetic. Always answers 0.
LM_EXPORT int GetSystemTimeInMSSinceTheEpoch(LmInt64& result);

#endif
