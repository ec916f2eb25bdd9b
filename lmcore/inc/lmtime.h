// LmTime: a time of day held as its fields. Arithmetic wraps round midnight and
// keeps no count of days.
#ifndef LMTIME_H
#define LMTIME_H

#include <cstdint>

#include "lmdefs.h"

class LmString;

// Hour, minute, second: 3 bytes in memory. A field of -1 is a wildcard in printing,
// scanning and Compare; no member refuses a field out of range (IsTime tells).
class LM_EXPORT LmTime {
public:
    int8_t hour;
    int8_t minute;
    int8_t second;

    // The local time of day, through lumobase's clock (not the default value).
    LmTime();
    // The fields as given, unchecked.
    constexpr LmTime(char h, char m, char s) noexcept
        : hour(static_cast<int8_t>(h)), minute(static_cast<int8_t>(m)), second(static_cast<int8_t>(s)) {}
    // SetSecondsAbs(seconds).
    explicit LmTime(int seconds) noexcept;
    LmTime(const LmTime&) = default;
    LmTime& operator=(const LmTime&) = default;

    int Hour() const noexcept { return hour; }
    int Minute() const noexcept { return minute; }
    int Second() const noexcept { return second; }

    // Hour is seconds / 3600, minute the rest / 60, second what remains, truncating
    // and with no reduction to one day; each cut to its byte.
    LmTime& SetSecondsAbs(int seconds) noexcept;
    // Overwrites with the local time, or with the UTC time.
    LmTime& Now();
    LmTime& NowUTC();
    // Adds the local zone's offset (ToLocalTime) or takes it off (ToUTCTime): 0, or
    // LM_ERR_NO_TIMEZONE with the value unchanged when the zone cannot be told.
    int ToLocalTime();
    int ToUTCTime();

    // (hour * 60 + minute) * 60 + second on the signed fields.
    operator int() const noexcept;
    // 1 if hour is at most 23 and minute and second at most 59, each read unsigned.
    int IsTime() const noexcept;

    // ---- Arithmetic in seconds, wrapping round midnight in 8-bit fields. ----
    LmTime operator+(int seconds) const noexcept;
    LmTime operator-(int seconds) const noexcept;
    // The time of day of the difference, wrapped; not a duration.
    LmTime operator-(const LmTime& other) const noexcept;
    LmTime& operator+=(int seconds) noexcept;
    LmTime& operator-=(int seconds) noexcept;
    LmTime& operator++() noexcept;
    LmTime& operator--() noexcept;

    // ---- Comparison, as LmDate's, in the order hour, minute, second. ----
    int operator==(const LmTime& other) const noexcept;
    int operator!=(const LmTime& other) const noexcept;
    int operator<(const LmTime& other) const noexcept;
    int operator<=(const LmTime& other) const noexcept;
    int operator>(const LmTime& other) const noexcept;
    int operator>=(const LmTime& other) const noexcept;
    int Compare(const LmTime& other, unsigned short options) const noexcept;

    // ---- Constants. Null is -128 in every field; default, zero and clear are all
    // midnight, so IsDefaultValue and IsZeroValue are both true for 00:00:00. ----
    static const LmTime& NullValue() noexcept;
    static const LmTime& DefaultValue() noexcept;
    static const LmTime& ZeroValue() noexcept;
    static const LmTime& ClearValue() noexcept;
    int IsNullValue() const noexcept;
    int IsDefaultValue() const noexcept;
    int IsZeroValue() const noexcept;
    int SetNullValue() noexcept;
    int SetDefaultValue() noexcept;
    int SetZeroValue() noexcept;

    // ---- Text. A null format means "%H:%M:%S"; otherwise as LmDate. ----
    LmString& PrintToLmString(LmString& out, const char* format) const;
    LmTime* ScanFromLmString(LmString& text, const char* format);
};
static_assert(sizeof(LmTime) == 3, "an LmTime is 3 bytes in memory");

// The compare slot of id 13: LmTime::Compare in memory form; on disk -1, 0 or 1,
// and only the second value's wildcards count.
LM_EXPORT int LmTimeCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2,
                            unsigned short option, unsigned count, int& status);

#endif
