// LmDateTimeN and LmTimeSpan: the twins over the nanosecond record. Same fields,
// same disk form, one arithmetic chain; a date-time counts days in the real calendar
// as long as its date is a real date, a span counts 30-day months and 360-day years.
#ifndef LMDATETIMEN_H
#define LMDATETIMEN_H

#include <cstdint>

#include "lmdate.h"
#include "lmdatetime.h"
#include "lmdefs.h"
#include "lmdtformat.h"
#include "lmtime.h"

class LmString;

// A calendar date-time with nanoseconds, 12 bytes in memory: the seven fields lie as
// in LmDateTime, then nanoseconds (0 to 999999999). A field of -1 is a wildcard.
class LM_EXPORT LmDateTimeN : public LmDateTimeNRecord {
public:
    // The null value; the clock is not read.
    LmDateTimeN() noexcept : LmDateTimeNRecord{-32768, -128, -128, -128, -128, -128, 0} {}
    constexpr LmDateTimeN(const LmDateTimeN&) noexcept = default;
    constexpr LmDateTimeN& operator=(const LmDateTimeN&) noexcept = default;
    // Year, month, day, hour, minute, second and nanoseconds as given, unchecked.
    constexpr LmDateTimeN(short y, char mo, char d, char h, char mi, char s, int ns) noexcept
        : LmDateTimeNRecord{y,
                            static_cast<int8_t>(mo),
                            static_cast<int8_t>(d),
                            static_cast<int8_t>(h),
                            static_cast<int8_t>(mi),
                            static_cast<int8_t>(s),
                            ns} {}
    // The date at midnight; the time on year, month and day 0; both; a date-time.
    // Nanoseconds are 0 in each.
    explicit LmDateTimeN(const LmDate& date) noexcept;
    explicit LmDateTimeN(const LmTime& time) noexcept;
    LmDateTimeN(const LmDate& date, const LmTime& time) noexcept;
    LmDateTimeN(const LmDateTime& value) noexcept;
    // 0000-01-01 00:00:00 moved on by the seconds.
    explicit LmDateTimeN(double seconds) noexcept;
    // The seven fields of the date-time; nanoseconds 0.
    LmDateTimeN& operator=(const LmDateTime& value) noexcept;

    // The first seven fields as LmDateTime::Compare with the options; then, unless a
    // nanoseconds field is -1 without option bit 0x10, the nanoseconds: -1, 0 or 1.
    int Compare(const LmDateTimeN& other, unsigned short options) const noexcept;

    // ---- The arithmetic chain, entered at each member's unit: each field keeps its
    // floor remainder and carries the quotient on (cut to 32 bits from the minutes
    // on). Days move in the real calendar while the date is a real date, else by the
    // 30-day rule. ----
    LmDateTimeN& AddDays(int n) noexcept;
    LmDateTimeN& AddHours(int n) noexcept;
    LmDateTimeN& AddMinutes(int n) noexcept;
    LmDateTimeN& AddSeconds(int n) noexcept;
    LmDateTimeN& AddSeconds(long long n) noexcept;
    // The seconds times 10^9, truncated; NaN moves nothing and a count beyond 64 bits
    // saturates.
    LmDateTimeN& AddSeconds(double seconds) noexcept;
    LmDateTimeN& AddNanoSeconds(int n) noexcept;
    LmDateTimeN& AddNanoSeconds(long long n) noexcept;

    // Days since 0000-01-01, and the totals built on them (nanoseconds wrap in 64 bits).
    int GetTotalDays() const noexcept;
    long long GetTotalSeconds() const noexcept;
    long long GetTotalNanoSeconds() const noexcept;
    double GetTotalSeconds_f() const noexcept;
    // 0000-01-01 00:00:00 moved on by the count.
    LmDateTimeN& SetTotalDays(int days) noexcept;
    LmDateTimeN& SetTotalSeconds(double seconds) noexcept;
    LmDateTimeN& SetTotalSeconds(long long seconds) noexcept;
    LmDateTimeN& SetTotalNanoSeconds(long long nanoseconds) noexcept;
    // The zero value, 0000-01-01 00:00:00.
    LmDateTimeN& SetZero() noexcept;

    // The local or UTC moment from lumobase's high-resolution clock.
    LmDateTimeN& Now();
    LmDateTimeN& NowUTC();
    // Moves by the local zone's offset in minutes through the chain: 0, or
    // LM_ERR_NO_TIMEZONE with the value unchanged when the zone cannot be told.
    int ToLocalTime();
    int ToUTCTime();
    // The first seven fields form a real date and time; nanoseconds are not looked at.
    int IsValidDateTime() const noexcept;

    // ---- Constants: null (-32768, -128 in the five small fields, 0), default
    // (-4713-11-24), zero (0000-01-01) and clear (all 0). ----
    static const LmDateTimeN& NullValue() noexcept;
    static const LmDateTimeN& DefaultValue() noexcept;
    static const LmDateTimeN& ZeroValue() noexcept;
    static const LmDateTimeN& ClearValue() noexcept;
    int IsNullValue() const noexcept;
    int IsDefaultValue() const noexcept;
    int IsZeroValue() const noexcept;
    int SetNullValue() noexcept;
    int SetDefaultValue() noexcept;

    // ---- Text through the engines; a null format means "%X". ----
    LmString& PrintToLmString(LmString& out, const char* format) const;
    LmDateTimeN* ScanFromLmString(LmString& text, const char* format);
};
static_assert(sizeof(LmDateTimeN) == 12, "an LmDateTimeN is 12 bytes in memory");

// A duration in the same fields: whole 360-day years, 30-day months (0 to 11), days
// (0 to 29), hours, minutes, seconds and nanoseconds. A negative span keeps its sign
// in the highest field that is not zero.
class LM_EXPORT LmTimeSpan : public LmDateTimeNRecord {
public:
    // The null value.
    LmTimeSpan() noexcept : LmDateTimeNRecord{-32768, -128, -128, -128, -128, -128, 0} {}
    constexpr LmTimeSpan(const LmTimeSpan&) noexcept = default;
    constexpr LmTimeSpan& operator=(const LmTimeSpan&) noexcept = default;
    // The days split into years, months and days; the rest as given, unchecked.
    LmTimeSpan(int days, int hours, int minutes, int seconds, int nanoseconds) noexcept;
    // Year, month, day, hour, minute, second and nanoseconds as given, unchecked.
    constexpr LmTimeSpan(int y, int mo, int d, int h, int mi, int s, int ns) noexcept
        : LmDateTimeNRecord{static_cast<int16_t>(y),
                            static_cast<int8_t>(mo),
                            static_cast<int8_t>(d),
                            static_cast<int8_t>(h),
                            static_cast<int8_t>(mi),
                            static_cast<int8_t>(s),
                            ns} {}
    // A span of the seconds.
    explicit LmTimeSpan(double seconds) noexcept;

    int Compare(const LmTimeSpan& other, unsigned short options) const noexcept;

    LmTimeSpan& AddDays(int n) noexcept;
    LmTimeSpan& AddHours(int n) noexcept;
    LmTimeSpan& AddMinutes(int n) noexcept;
    LmTimeSpan& AddSeconds(int n) noexcept;
    LmTimeSpan& AddSeconds(long long n) noexcept;
    LmTimeSpan& AddSeconds(double seconds) noexcept;
    LmTimeSpan& AddNanoSeconds(int n) noexcept;
    LmTimeSpan& AddNanoSeconds(long long n) noexcept;

    // (year * 12 + month) * 30 + day, and the totals built on it.
    int GetTotalDays() const noexcept;
    long long GetTotalSeconds() const noexcept;
    long long GetTotalNanoSeconds() const noexcept;
    double GetTotalSeconds_f() const noexcept;
    LmTimeSpan& SetTotalDays(int days) noexcept;
    LmTimeSpan& SetTotalSeconds(double seconds) noexcept;
    LmTimeSpan& SetTotalSeconds(long long seconds) noexcept;
    LmTimeSpan& SetTotalNanoSeconds(long long nanoseconds) noexcept;
    // The clear value: nothing at all.
    LmTimeSpan& SetZero() noexcept;

    // Each into its field, cut to the field's width, unchecked.
    LmTimeSpan& SetYears(int n) noexcept;
    LmTimeSpan& SetMonths(int n) noexcept;
    LmTimeSpan& SetDays(int n) noexcept;
    LmTimeSpan& SetHours(int n) noexcept;
    LmTimeSpan& SetMinutes(int n) noexcept;
    LmTimeSpan& SetSeconds(int n) noexcept;
    LmTimeSpan& SetNanoSeconds(int n) noexcept;

    // The distance between two moments read as calendar date-times, as a span that is
    // never negative; a null operand counts as the clear value. Whole days come from the
    // calendar and split into 360-day years and 30-day months. When the later moment's
    // nanoseconds are the smaller, a second is borrowed by stepping the earlier time on
    // with LmTime's ++, which wraps at 23:59:59 without moving the date: such a pair
    // comes out a day too long. The rule is kept as it stands.
    static LmTimeSpan Difference(const LmTimeSpan& a, const LmTimeSpan& b) noexcept;
    static LmTimeSpan Difference(const LmDateTimeN& a, const LmDateTimeN& b) noexcept;

    // ---- Constants: null and default as LmDateTimeN's; zero and clear all 0. ----
    static const LmTimeSpan& NullValue() noexcept;
    static const LmTimeSpan& DefaultValue() noexcept;
    static const LmTimeSpan& ZeroValue() noexcept;
    static const LmTimeSpan& ClearValue() noexcept;
    int IsNullValue() const noexcept;
    int IsDefaultValue() const noexcept;
    int IsZeroValue() const noexcept;
    int SetNullValue() noexcept;
    int SetDefaultValue() noexcept;

    // ---- Text through the engines; a null format means "%V". ----
    LmString& PrintToLmString(LmString& out, const char* format) const;
    LmTimeSpan* ScanFromLmString(LmString& text, const char* format);
};
static_assert(sizeof(LmTimeSpan) == 12, "an LmTimeSpan is 12 bytes in memory");

// The compare slots of ids 40 and 41, one function under two names. Memory form
// (low nibble 8): Compare with the options. Disk forms: -1, 0 or 1.
LM_EXPORT int LmDateTimeNCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2,
                                 unsigned short option, unsigned count, int& status);
LM_EXPORT int LmTimeSpanCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2,
                                unsigned short option, unsigned count, int& status);

#endif
