// The standard date and time family: d_Date, d_Time, d_Timestamp and d_Interval
// (ids 22 to 25), with the free overlaps functions and the operators.
//
// The family keeps a calendar of its own. d_Date follows the historical calendar,
// Julian up to 1582-10-04 and Gregorian from 1582-10-15, worked out with floating-
// point formulas; its absolute day is one less than the Julian Day Number. LmDate is
// proleptic Gregorian in integers: the two agree from 1582-10-15 on.
//
// None of the four has a null value, and nothing is checked: an impossible date
// stays as it is given, and days_in_month answers 0 for a bad month. Where a float
// count is cut to an integer and does not fit (NaN, the infinities, 1e30), the
// integer is -2147483648, as the conversion of the x86 machines gives it.
#ifndef LMSTDDATE_H
#define LMSTDDATE_H

#include <cstdint>

#include "lmdefs.h"

class LmDate;
class LmDateTime;
class LmTime;
class d_Date;
class d_Time;
class d_Timestamp;

// A signed count of seconds in one float.
class LM_EXPORT d_Interval {
public:
    // The zero interval.
    constexpr d_Interval() noexcept : value(0.0f) {}
    // |minutes| * 60 + |seconds| + |hours| * 3600 + |days| * 86400, added in float in
    // that order; negative as a whole if any of the four is negative, so
    // d_Interval(1, -1, 0, 0) is -90000 seconds.
    explicit d_Interval(int days, int hours = 0, int minutes = 0, float seconds = 0.0f) noexcept;

    // The reads: the truncated count split into days, hours of the day, minutes of the
    // hour, and the seconds of the minute with the fraction of the count.
    int day() const noexcept;
    int hour() const noexcept;
    int minute() const noexcept;
    float second() const noexcept;
    int is_zero() const noexcept { return value == 0.0f ? 1 : 0; }
    float total_seconds() const noexcept { return value; }

    d_Interval operator-() const noexcept { return FromSeconds(-value); }
    d_Interval& operator+=(const d_Interval& other) noexcept;
    d_Interval& operator-=(const d_Interval& other) noexcept;
    d_Interval& operator*=(int factor) noexcept;
    // A divisor of 0 leaves the value as it is.
    d_Interval& operator/=(int divisor) noexcept;

    // The interval of a count of seconds as it stands.
    static constexpr d_Interval FromSeconds(float seconds) noexcept {
        d_Interval i;
        i.value = seconds;
        return i;
    }

private:
    float value;
};
static_assert(sizeof(d_Interval) == 4, "a d_Interval is 4 bytes in memory");

LM_EXPORT d_Interval operator+(const d_Interval& a, const d_Interval& b) noexcept;
LM_EXPORT d_Interval operator-(const d_Interval& a, const d_Interval& b) noexcept;
LM_EXPORT d_Interval operator*(const d_Interval& a, int factor) noexcept;
LM_EXPORT d_Interval operator*(int factor, const d_Interval& a) noexcept;
LM_EXPORT d_Interval operator/(const d_Interval& a, int divisor) noexcept;
// Floating comparison of the counts.
LM_EXPORT int operator==(const d_Interval& a, const d_Interval& b) noexcept;
LM_EXPORT int operator!=(const d_Interval& a, const d_Interval& b) noexcept;
LM_EXPORT int operator<(const d_Interval& a, const d_Interval& b) noexcept;
LM_EXPORT int operator<=(const d_Interval& a, const d_Interval& b) noexcept;
LM_EXPORT int operator>(const d_Interval& a, const d_Interval& b) noexcept;
LM_EXPORT int operator>=(const d_Interval& a, const d_Interval& b) noexcept;

// The day difference of the absolute days, a minus b.
LM_EXPORT int operator!=(const d_Date& a, const d_Date& b) noexcept;

// A date of the historical calendar: 4 bytes in memory.
class LM_EXPORT d_Date {
public:
    enum Weekday : int { Sunday = 0, Monday, Tuesday, Wednesday, Thursday, Friday, Saturday };
    enum Month : int {
        January = 1,
        February,
        March,
        April,
        May,
        June,
        July,
        August,
        September,
        October,
        November,
        December
    };

    // The stored fields, the disk form's order.
    struct Fields {
        int16_t year;
        uint8_t month;
        uint8_t day;
    } fields;

    // The local date through lumobase's clock.
    d_Date();
    // The fields as given, each cut to its width, unchecked.
    d_Date(short year, unsigned short month, unsigned short day) noexcept;
    // January 1st of the year, moved on by dayOfYear - 1 days.
    d_Date(short year, unsigned short dayOfYear) noexcept;
    // The three fields copied.
    d_Date(const LmDate& date) noexcept;
    d_Date(const LmDateTime& dateTime) noexcept;
    d_Date(const d_Timestamp& stamp) noexcept;
    d_Date(const d_Date&) = default;
    d_Date& operator=(const d_Date&) = default;
    d_Date& operator=(const LmDate& date) noexcept;
    d_Date& operator=(const LmDateTime& dateTime) noexcept;
    d_Date& operator=(const d_Timestamp& stamp) noexcept;

    static d_Date current();

    short year() const noexcept { return fields.year; }
    unsigned short month() const noexcept { return fields.month; }
    unsigned short day() const noexcept { return fields.day; }

    // (absolute day + 2) modulo 7, the truncating remainder: 0 is Sunday.
    Weekday day_of_week() const noexcept;
    unsigned short day_of_year() const noexcept;
    unsigned short days_in_month() const noexcept;
    // 31, 30, or 29 and 28 by the leap rule; 0 for a month outside 1 to 12.
    static unsigned short days_in_month(short year, unsigned short month) noexcept;
    // Divisible by 4, and not by 100 unless by 400 or below 1600 (the Julian years).
    static int is_leap_year(short year) noexcept;
    int is_leap_year() const noexcept { return is_leap_year(fields.year); }

    // The next (previous) day of that weekday: the same weekday moves a whole week.
    d_Date& next(Weekday day) noexcept;
    d_Date& previous(Weekday day) noexcept;

    // One day on or back through the absolute day; the postfix forms answer the old value.
    d_Date& operator++() noexcept;
    d_Date& operator--() noexcept;
    d_Date operator++(int) noexcept;
    d_Date operator--(int) noexcept;
    // The interval's truncated days (count / 86400, in float); the rest is dropped.
    d_Date& operator+=(const d_Interval& interval) noexcept;
    d_Date& operator-=(const d_Interval& interval) noexcept;

private:
    friend int operator!=(const d_Date& a, const d_Date& b) noexcept;
    friend class d_Timestamp;
    friend struct d_DateAccess;
    // The absolute day, in doubles: the Julian Day Number less one.
    int getAbsDate() const noexcept;
    void setAbsDate(int absoluteDay) noexcept;
};
static_assert(sizeof(d_Date) == 4, "a d_Date is 4 bytes in memory");

LM_EXPORT int operator==(const d_Date& a, const d_Date& b) noexcept;
LM_EXPORT int operator<(const d_Date& a, const d_Date& b) noexcept;
LM_EXPORT int operator<=(const d_Date& a, const d_Date& b) noexcept;
LM_EXPORT int operator>(const d_Date& a, const d_Date& b) noexcept;
LM_EXPORT int operator>=(const d_Date& a, const d_Date& b) noexcept;
LM_EXPORT d_Date operator+(const d_Date& date, const d_Interval& interval) noexcept;
LM_EXPORT d_Date operator+(const d_Interval& interval, const d_Date& date) noexcept;
LM_EXPORT d_Date operator-(const d_Date& date, const d_Interval& interval) noexcept;

// A time of day with its zone: 6 bytes in memory. hour and minute hold the zone's
// hours and minutes already added; the reads take them off again.
class LM_EXPORT d_Time {
public:
    // A signed number of hours.
    enum Time_Zone : int {
        GMT = 0,
        GMT1 = 1,
        GMT2,
        GMT3,
        GMT4,
        GMT5,
        GMT6,
        GMT7,
        GMT8,
        GMT9,
        GMT10,
        GMT11,
        GMT12,
        GMT_1 = -1,
        GMT_2 = -2,
        GMT_3 = -3,
        GMT_4 = -4,
        GMT_5 = -5,
        GMT_6 = -6,
        GMT_7 = -7,
        GMT_8 = -8,
        GMT_9 = -9,
        GMT_10 = -10,
        GMT_11 = -11,
        GMT_12 = -12,
        USeastern = GMT_5,
        UScentral = GMT_6,
        USmountain = GMT_7,
        USpacific = GMT_8
    };

    struct Fields {
        int8_t tz_hour;
        int8_t tz_minute;
        int8_t hour;    // with tz_hour added
        int8_t minute;  // with tz_minute added
        int8_t second;
        int8_t hundredth;
    } fields;

    // The local time in the default zone: tz_hour is the zone, hour the local hour
    // plus the zone, hundredth 0.
    d_Time();
    // The same with the given hour, minute and second.
    d_Time(const LmTime& time) noexcept;
    d_Time(const LmDateTime& dateTime) noexcept;
    // The six bytes of the time part.
    d_Time(const d_Timestamp& stamp) noexcept;
    // In the default zone: hour is zone + h, second the truncated s, hundredth the
    // truncated (s - second) * 100.0.
    d_Time(unsigned short h, unsigned short m, float s) noexcept;
    // In the given zone: hour is tzh + h, minute tzm + m.
    d_Time(unsigned short h, unsigned short m, float s, short tzh, short tzm) noexcept;
    // A negative count is first brought into one day; a positive one is not reduced.
    explicit d_Time(int seconds) noexcept;
    d_Time(const d_Time&) = default;
    d_Time& operator=(const d_Time&) = default;
    // Unlike the constructor the zone is not added: the fields are copied as they are,
    // into the default zone, hundredth 0.
    d_Time& operator=(const LmTime& time) noexcept;
    d_Time& operator=(const LmDateTime& dateTime) noexcept;
    d_Time& operator=(const d_Timestamp& stamp) noexcept;

    static d_Time current();

    // hour - tz_hour and minute - tz_minute, cut to 16 bits.
    unsigned short hour() const noexcept { return static_cast<unsigned short>(fields.hour - fields.tz_hour); }
    unsigned short minute() const noexcept { return static_cast<unsigned short>(fields.minute - fields.tz_minute); }
    // hundredth / 100.0 + second.
    float second() const noexcept;
    short tz_hour() const noexcept { return fields.tz_hour; }
    short tz_minute() const noexcept { return fields.tz_minute; }

    // Moves the time round the clock; the zone bytes stay and the zone is not added
    // again. -= leaves the hundredths of the old value out, on purpose.
    d_Time& operator+=(const d_Interval& interval) noexcept;
    d_Time& operator-=(const d_Interval& interval) noexcept;

    // The default zone: a 32-bit static, 0 at load, read as its low byte.
    static void set_default_Time_Zone(Time_Zone zone) noexcept;
    // From the local zone's offset that bksgettime reports, in whole hours, when it
    // reports one.
    static void set_default_Time_Zone_to_local() noexcept;
    static Time_Zone default_Time_Zone() noexcept;

private:
    static int32_t defaultZone;
};
static_assert(sizeof(d_Time) == 6, "a d_Time is 6 bytes in memory");

// The order of two times: the difference of the hours, else of the minutes (each
// with the zone taken off, cut to 16 bits), else the truncated difference of the
// seconds, so times less than a second apart are equal.
LM_EXPORT int operator!=(const d_Time& a, const d_Time& b) noexcept;
LM_EXPORT int operator==(const d_Time& a, const d_Time& b) noexcept;
LM_EXPORT int operator<(const d_Time& a, const d_Time& b) noexcept;
LM_EXPORT int operator<=(const d_Time& a, const d_Time& b) noexcept;
LM_EXPORT int operator>(const d_Time& a, const d_Time& b) noexcept;
LM_EXPORT int operator>=(const d_Time& a, const d_Time& b) noexcept;
// The hours, minutes and whole seconds of both as held, zone included.
LM_EXPORT d_Interval operator-(const d_Time& a, const d_Time& b) noexcept;
// From the whole seconds; the zone's hours and minutes are then added to the result,
// a second time for a value whose zone is not 0.
LM_EXPORT d_Time operator+(const d_Time& time, const d_Interval& interval) noexcept;
LM_EXPORT d_Time operator+(const d_Interval& interval, const d_Time& time) noexcept;
LM_EXPORT d_Time operator-(const d_Time& time, const d_Interval& interval) noexcept;

// A date and a time: 10 bytes in memory.
class LM_EXPORT d_Timestamp {
public:
    d_Date date_part;
    d_Time time_part;

    // The current date and time.
    d_Timestamp() = default;
    d_Timestamp(const d_Date& date, const d_Time& time) noexcept : date_part(date), time_part(time) {}
    d_Timestamp(short year, unsigned short month, unsigned short day, unsigned short hour = 0,
                unsigned short minute = 0, float second = 0.0f) noexcept
        : date_part(year, month, day), time_part(hour, minute, second) {}
    d_Timestamp(const d_Timestamp&) = default;
    d_Timestamp& operator=(const d_Timestamp&) = default;
    // The date part alone.
    d_Timestamp& operator=(const d_Date& date) noexcept;
    // The date, and the time as d_Time::operator=(const LmTime&) takes it.
    d_Timestamp& operator=(const LmDateTime& dateTime) noexcept;

    static d_Timestamp current();

    const d_Date& date() const noexcept { return date_part; }
    const d_Time& time() const noexcept { return time_part; }
    short year() const noexcept { return date_part.year(); }
    unsigned short month() const noexcept { return date_part.month(); }
    unsigned short day() const noexcept { return date_part.day(); }
    unsigned short hour() const noexcept { return time_part.hour(); }
    unsigned short minute() const noexcept { return time_part.minute(); }
    float second() const noexcept { return time_part.second(); }
    short tz_hour() const noexcept { return time_part.tz_hour(); }
    short tz_minute() const noexcept { return time_part.tz_minute(); }

    // The interval goes onto the time of day, with the day of the month carried in
    // it; whole days move the date, and the time is rebuilt in the value's zone.
    d_Timestamp& operator+=(const d_Interval& interval) noexcept;
    d_Timestamp& operator-=(const d_Interval& interval) noexcept;

private:
    d_Timestamp& Move(const d_Interval& interval, bool add) noexcept;
};
static_assert(sizeof(d_Timestamp) == 10, "a d_Timestamp is 10 bytes in memory");

// The date difference, or at equal dates the d_Time order.
LM_EXPORT int operator!=(const d_Timestamp& a, const d_Timestamp& b) noexcept;
LM_EXPORT int operator==(const d_Timestamp& a, const d_Timestamp& b) noexcept;
// By date, then time; <= and >= also accept two values whose fields are all equal.
LM_EXPORT int operator<(const d_Timestamp& a, const d_Timestamp& b) noexcept;
LM_EXPORT int operator<=(const d_Timestamp& a, const d_Timestamp& b) noexcept;
LM_EXPORT int operator>(const d_Timestamp& a, const d_Timestamp& b) noexcept;
LM_EXPORT int operator>=(const d_Timestamp& a, const d_Timestamp& b) noexcept;
LM_EXPORT d_Timestamp operator+(const d_Timestamp& stamp, const d_Interval& interval) noexcept;
LM_EXPORT d_Timestamp operator+(const d_Interval& interval, const d_Timestamp& stamp) noexcept;
LM_EXPORT d_Timestamp operator-(const d_Timestamp& stamp, const d_Interval& interval) noexcept;

// 1 if the range from a to b (either way round) and the range from c to d overlap.
// A second range given in reverse counts when it spans the first: (1, 5) with (9, 0)
// overlaps. The mixed forms compare the date part or the time part of the timestamps
// with the other pair.
LM_EXPORT int overlaps(const d_Date& a, const d_Date& b, const d_Date& c, const d_Date& d) noexcept;
LM_EXPORT int overlaps(const d_Time& a, const d_Time& b, const d_Time& c, const d_Time& d) noexcept;
LM_EXPORT int overlaps(const d_Timestamp& a, const d_Timestamp& b, const d_Timestamp& c, const d_Timestamp& d) noexcept;
LM_EXPORT int overlaps(const d_Date& a, const d_Date& b, const d_Timestamp& c, const d_Timestamp& d) noexcept;
LM_EXPORT int overlaps(const d_Time& a, const d_Time& b, const d_Timestamp& c, const d_Timestamp& d) noexcept;
LM_EXPORT int overlaps(const d_Timestamp& a, const d_Timestamp& b, const d_Date& c, const d_Date& d) noexcept;
LM_EXPORT int overlaps(const d_Timestamp& a, const d_Timestamp& b, const d_Time& c, const d_Time& d) noexcept;

// The compare slots of ids 22, 23 and 24. A format byte of exactly 8 is the memory
// form, compared by operator!= (a signed difference for the dates). Every other byte
// is a disk form: -1, 0 or 1. On a stored date a year of 0xFFFF, a month or a day
// of 0xFF in the second value matches anything unless option bit 0x10 is set.
LM_EXPORT int d_DateCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2,
                            unsigned short option, unsigned count, int& status);
LM_EXPORT int d_TimeCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2,
                            unsigned short option, unsigned count, int& status);
LM_EXPORT int d_TimestampCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2,
                                 unsigned short option, unsigned count, int& status);

#endif
