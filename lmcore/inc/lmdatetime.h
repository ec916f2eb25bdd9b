// LmDateTime: an LmDate and an LmTime side by side, to the second. It has no
// arithmetic of its own beyond carrying seconds and minutes over midnight into the
// date; everything else forwards to the two parts.
#ifndef LMDATETIME_H
#define LMDATETIME_H

#include <cstdint>

#include "lmdate.h"
#include "lmdefs.h"
#include "lmtime.h"

class LmString;

// 8 bytes in memory: year (16 bits), month, day, hour, minute, second (8 bits each)
// and one byte of room. The parts are the bases, so dt.year and dt.hour are the
// fields and static_cast<LmDate&>(dt) is the date part. A field of -1 is a wildcard.
class LM_EXPORT LmDateTime : public LmDate, public LmTime {
public:
    // Today's date and the current local time, through lumobase's clock.
    LmDateTime();
    // The date, and the current local time.
    explicit LmDateTime(LmDate& date);
    explicit LmDateTime(const LmDate& date);
    // Today's date, and the time.
    explicit LmDateTime(LmTime& time);
    explicit LmDateTime(const LmTime& time);
    // Both parts as given.
    constexpr LmDateTime(const LmDate& date, const LmTime& time) noexcept : LmDate(date), LmTime(time) {}
    // The six fields as given, unchecked.
    constexpr LmDateTime(short y, char mo, char d, char h, char mi, char s) noexcept
        : LmDate(y, mo, d), LmTime(h, mi, s) {}
    constexpr LmDateTime(const LmDateTime& other) noexcept = default;

    // Both parts, field by field (so self-assignment changes nothing).
    constexpr LmDateTime& operator=(const LmDateTime& other) noexcept = default;
    // The time part alone; the date stays.
    LmDateTime& operator=(const LmTime& time) noexcept;

    // 1 when both parts are equal as numbers (no wildcards), else 0.
    int operator==(const LmDateTime& other) const noexcept;
    // The date's field difference; if that is 0, the time's.
    int operator!=(const LmDateTime& other) const noexcept;

    // Moves by n seconds; a time carried over midnight moves the date.
    LmDateTime& AddSeconds(int n) noexcept;

    // Date, then time, as numbers.
    int Compare(const LmDateTime& other) const noexcept;
    // LmDate::Compare with the options; if 0, LmTime::Compare with them.
    int Compare(const LmDateTime& other, unsigned short options) const noexcept;

    // 1 when the date is a real date and the time a real time of day.
    int IsDateTime() const noexcept;
    int IsDaTime() const noexcept { return IsDateTime(); }

    // ---- Constants, built from those of the two parts. Null() is the clear value
    // (all zero), not the null value. ----
    static const LmDateTime& NullValue() noexcept;
    static const LmDateTime& DefaultValue() noexcept;
    static const LmDateTime& ZeroValue() noexcept;
    static const LmDateTime& ClearValue() noexcept;
    static const LmDateTime& Null() noexcept { return ClearValue(); }
    int IsNullValue() const noexcept;
    // Only the date is compared with the default; the time is not looked at.
    int IsDefaultValue() const noexcept;
    int IsZeroValue() const noexcept;
    int SetNullValue() noexcept;
    int SetDefaultValue() noexcept;
    int SetZeroValue() noexcept;

    // The local date and time; the UTC date and time from one reading of the clock.
    LmDateTime& Now();
    LmDateTime& NowUTC();
    // Adds the local zone's offset in minutes (ToLocalTime) or takes it off
    // (ToUTCTime), moving the date by at most one day; seconds stay. Answers 0, or
    // LM_ERR_NO_TIMEZONE with the value unchanged when the zone cannot be told.
    int ToLocalTime();
    int ToUTCTime();

    // ---- Text. A null format means "%Y-%m-%dT%H:%M:%S". The null value prints as
    // the null print string. A scan replaces the fields with what it read, also when
    // it fails, and answers null on failure. ----
    LmString& PrintToLmString(LmString& out, const char* format) const;
    LmDateTime* ScanFromLmString(LmString& text, const char* format);

    int8_t room = 0;  // the byte after the second: zero, and not part of the value

private:
    // Sets hour and minute from minutes of the day m, moving the date by one day
    // when m is below 0 or at least 1440.
    void SetMinutesOfDay(int m) noexcept;
};
static_assert(sizeof(LmDateTime) == 8, "an LmDateTime is 8 bytes in memory");

// The compare slot of id 19. Memory form (low nibble 8): Compare with the options.
// Disk forms: -1, 0 or 1; without option bit 0x10 the second value's wildcards
// match anything, as LmDateCompare and LmTimeCompare have them.
LM_EXPORT int LmDateTimeCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2,
                                unsigned short option, unsigned count, int& status);

#endif
