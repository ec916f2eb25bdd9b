// LmDateTimeN and LmTimeSpan: the arithmetic chain they share, their totals, the
// constants, Difference and the text wrappers.
//
// The chain carries nanoseconds into seconds, minutes, hours and days. Every sum is
// taken so that no argument overflows: a carry is split off before it is added, so
// the quotients and remainders are exact for any count.
#include "lmdatetimen.h"

#include <cmath>
#include <limits>

#include "dtcommon.h"
#include "lmstring.h"
#include "lumobase.h"

namespace {

using lmdatetime::Wrap;
using Record = LmDateTimeNRecord;

constexpr int64_t kNanos = 1000000000;

constinit const LmDateTimeN kNull(-32768, -128, -128, -128, -128, -128, 0);
constinit const LmDateTimeN kDefault(-4713, 11, 24, 0, 0, 0, 0);
constinit const LmDateTimeN kZero(0, 1, 1, 0, 0, 0, 0);
constinit const LmDateTimeN kClear(0, 0, 0, 0, 0, 0, 0);
constinit const LmTimeSpan kSpanNull(-32768, -128, -128, -128, -128, -128, 0);
constinit const LmTimeSpan kSpanDefault(-4713, 11, 24, 0, 0, 0, 0);
constinit const LmTimeSpan kSpanClear(0, 0, 0, 0, 0, 0, 0);

// The absolute day of 0000-01-01, the origin of a date-time's day count.
constexpr int kDayZero = 1721060;

// field + n = quotient * base + remainder with the remainder in [0, base): floor
// division, exact for any n because the carry of n is split off first.
inline int64_t FloorCarry(int64_t field, int64_t n, int64_t base, int64_t& remainder) noexcept {
    int64_t q = 0, t = 0;
    if (n > -(int64_t{1} << 62) && n < (int64_t{1} << 62)) {  // field + n cannot overflow: one division
        t = field + n;
        q = t / base;
        t %= base;
    } else {
        q = n / base;
        t = n % base + field;
        q += t / base;
        t %= base;
    }
    if (t < 0) {
        t += base;
        --q;
    }
    remainder = t;
    return q;
}

inline int16_t ClampYear(int64_t y) noexcept {
    return static_cast<int16_t>(y < -32768 ? -32768 : (y > 32767 ? 32767 : y));
}

// LmDate::dateabs where it is exact (from -4900-03-01 on, the year then cut to 16
// bits), by the era-based civil-day algorithm, which is the shorter chain.
constexpr int kExactFrom = -68569, kExactBelow = 500000000;
inline void SetCivil(Record& v, int absoluteDay) noexcept {
    const int z = absoluteDay - 2440588 + 719468;  // days since 0000-03-01
    const int era = (z >= 0 ? z : z - 146096) / 146097;
    const int doe = z - era * 146097;
    const int yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const int doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const int mp = (5 * doy + 2) / 153;
    const int m = mp < 10 ? mp + 3 : mp - 9;
    v.day = static_cast<int8_t>(doy - (153 * mp + 2) / 5 + 1);
    v.month = static_cast<int8_t>(m);
    v.year = static_cast<int16_t>(yoe + era * 400 + (m <= 2 ? 1 : 0));
}

// LmDate::IsDate: day 1 to 31 and month 1 to 12 read unsigned, and a day that the
// month has. Where the absolute-day formula is the Gregorian calendar the month's
// length is that of the calendar; before, the formula itself is asked.
inline bool IsRealDate(int year, int month, int day) noexcept {
    if (static_cast<uint8_t>(day - 1) >= 31 || static_cast<uint8_t>(month - 1) >= 12) return false;
    if (year >= -4700) {
        static constexpr int8_t kLength[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
        const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
        return day <= kLength[month - 1] + (month == 2 && leap ? 1 : 0);
    }
    const LmDate date(static_cast<short>(year), static_cast<char>(month), static_cast<char>(day));
    return date.daynxtmonth() > 0;
}

// Step 5. A date-time whose first four bytes are a real date moves in the calendar;
// anything else (a span, or a date-time such as the clear value) by 30-day months and
// 12-month years, keeping a negative remainder while nothing above it is set.
void AddDaysCore(Record& v, int n, bool span) noexcept {
    if (n == 0) return;
    // A real date (LmDate::IsDate) moves by LmDate::operator+=, through its absolute day.
    if (!span && IsRealDate(v.year, v.month, v.day)) {
        LmDate date(v.year, static_cast<char>(v.month), static_cast<char>(v.day));
        const int target = Wrap(int64_t{date.dayabs()} + n);
        if (target >= kExactFrom && target < kExactBelow) {
            SetCivil(v, target);
        } else {
            date.dateabs(target);
            v.year = date.year;
            v.month = date.month;
            v.day = date.day;
        }
        return;
    }
    int64_t total = int64_t{v.day} + n;
    int64_t q = total / 30, r = total % 30;
    if (r < 0 && (q != 0 || v.month != 0 || v.year != 0)) {
        r += 30;
        --q;
    }
    v.day = static_cast<int8_t>(r);
    if (q == 0) return;
    total = v.month + q;
    q = total / 12;
    r = total % 12;
    if (r < 0 && (q != 0 || v.year != 0)) {
        r += 12;
        --q;
    }
    v.month = static_cast<int8_t>(r);
    if (q == 0) return;
    v.year = ClampYear(v.year + q);
}

// Steps 4, 3 and 2: each stores its remainder and hands the carry on, cut to 32 bits
// from the minutes on.
void AddHoursCore(Record& v, int n, bool span) noexcept {
    if (n == 0) return;
    int64_t r = 0;
    const int64_t q = FloorCarry(v.hour, n, 24, r);
    v.hour = static_cast<int8_t>(r);
    AddDaysCore(v, Wrap(q), span);
}

void AddMinutesCore(Record& v, int n, bool span) noexcept {
    if (n == 0) return;
    int64_t r = 0;
    const int64_t q = FloorCarry(v.minute, n, 60, r);
    v.minute = static_cast<int8_t>(r);
    AddHoursCore(v, Wrap(q), span);
}

void AddSecondsCore(Record& v, int64_t n, bool span) noexcept {
    if (n == 0) return;
    int64_t r = 0;
    const int64_t q = FloorCarry(v.second, n, 60, r);
    v.second = static_cast<int8_t>(r);
    AddMinutesCore(v, Wrap(q), span);
}

// Step 1. When every field below the day is in its range, the four carries are those
// of one count of nanoseconds in the day: the same result with two wide divisions
// instead of eight. (No carry of a count of nanoseconds leaves 32 bits.)
void AddNanosCore(Record& v, int64_t n, bool span) noexcept {
    if (n == 0) return;
    constexpr int64_t kDay = 86400 * kNanos;
    if (v.nanoseconds >= 0 && v.nanoseconds < kNanos && static_cast<uint8_t>(v.second) < 60 &&
        static_cast<uint8_t>(v.minute) < 60 && static_cast<uint8_t>(v.hour) < 24 && n > -(int64_t{1} << 62) &&
        n < (int64_t{1} << 62)) {
        int64_t t = ((v.hour * 60 + v.minute) * 60 + v.second) * kNanos + v.nanoseconds + n;
        int64_t days = t / kDay;
        t %= kDay;
        if (t < 0) {
            t += kDay;
            --days;
        }
        const auto seconds = static_cast<int32_t>(t / kNanos);
        v.nanoseconds = static_cast<int32_t>(t - seconds * kNanos);
        v.hour = static_cast<int8_t>(seconds / 3600);
        v.minute = static_cast<int8_t>(seconds / 60 % 60);
        v.second = static_cast<int8_t>(seconds % 60);
        AddDaysCore(v, static_cast<int>(days), span);
        return;
    }
    int64_t r = 0;
    const int64_t q = FloorCarry(v.nanoseconds, n, kNanos, r);
    v.nanoseconds = static_cast<int32_t>(r);
    AddSecondsCore(v, q, span);
}

// The truncated product with 10^9; NaN is no count and the range saturates.
int64_t NanosOf(double seconds) noexcept {
    const double n = std::trunc(seconds * 1e9);
    if (std::isnan(n)) return 0;
    if (n >= 9223372036854775807.0) return std::numeric_limits<int64_t>::max();
    if (n <= -9223372036854775808.0) return std::numeric_limits<int64_t>::min();
    return static_cast<int64_t>(n);
}

inline LmDate DateOf(const Record& v) noexcept {
    return LmDate(v.year, static_cast<char>(v.month), static_cast<char>(v.day));
}
inline LmTime TimeOf(const Record& v) noexcept {
    return LmTime(static_cast<char>(v.hour), static_cast<char>(v.minute), static_cast<char>(v.second));
}

inline bool SameFields(const Record& a, const Record& b) noexcept {
    return a.year == b.year && a.month == b.month && a.day == b.day && a.hour == b.hour && a.minute == b.minute &&
           a.second == b.second && a.nanoseconds == b.nanoseconds;
}

// D * 86400 + the seconds of the day; then in nanoseconds, wrapping in 64 bits.
inline int64_t TotalSeconds(int days, const Record& v) noexcept {
    return int64_t{days} * 86400 + static_cast<int>(TimeOf(v));
}
inline int64_t TotalNanos(int64_t seconds, const Record& v) noexcept {
    return static_cast<int64_t>(static_cast<uint64_t>(seconds) * static_cast<uint64_t>(kNanos) +
                                static_cast<uint64_t>(int64_t{v.nanoseconds}));
}

void ReadClock(Record& v, bool utc) {
    bdate date{};
    btime time{};
    int nanos = 0;
    if (utc) {
        bksGetHiresTimeUTC(date, time, nanos);
    } else {
        bksGetHiresTime(date, time, nanos);
    }
    v = Record{date.year,
               static_cast<int8_t>(date.month),
               static_cast<int8_t>(date.day),
               static_cast<int8_t>(time.hour),
               static_cast<int8_t>(time.minute),
               static_cast<int8_t>(time.second),
               nanos};
}

}  // namespace

// ---------------------------------------------------------------------------
// LmDateTimeN
// ---------------------------------------------------------------------------

LmDateTimeN::LmDateTimeN(const LmDate& date) noexcept : LmDateTimeN(date.year, date.month, date.day, 0, 0, 0, 0) {}
LmDateTimeN::LmDateTimeN(const LmTime& time) noexcept : LmDateTimeN(0, 0, 0, time.hour, time.minute, time.second, 0) {}
LmDateTimeN::LmDateTimeN(const LmDate& date, const LmTime& time) noexcept
    : LmDateTimeN(date.year, date.month, date.day, time.hour, time.minute, time.second, 0) {}
LmDateTimeN::LmDateTimeN(const LmDateTime& value) noexcept
    : LmDateTimeN(value.year, value.month, value.day, value.hour, value.minute, value.second, 0) {}
LmDateTimeN::LmDateTimeN(double seconds) noexcept : LmDateTimeN(kZero) { AddSeconds(seconds); }

LmDateTimeN& LmDateTimeN::operator=(const LmDateTime& value) noexcept { return *this = LmDateTimeN(value); }

int LmDateTimeN::Compare(const LmDateTimeN& other, unsigned short options) const noexcept {
    return lmdatetime::CompareNanoRecords(*this, other, options);
}

LmDateTimeN& LmDateTimeN::AddDays(int n) noexcept {
    AddDaysCore(*this, n, false);
    return *this;
}
LmDateTimeN& LmDateTimeN::AddHours(int n) noexcept {
    AddHoursCore(*this, n, false);
    return *this;
}
LmDateTimeN& LmDateTimeN::AddMinutes(int n) noexcept {
    AddMinutesCore(*this, n, false);
    return *this;
}
LmDateTimeN& LmDateTimeN::AddSeconds(int n) noexcept {
    AddSecondsCore(*this, n, false);
    return *this;
}
LmDateTimeN& LmDateTimeN::AddSeconds(long long n) noexcept {
    AddSecondsCore(*this, n, false);
    return *this;
}
LmDateTimeN& LmDateTimeN::AddSeconds(double seconds) noexcept {
    AddNanosCore(*this, NanosOf(seconds), false);
    return *this;
}
LmDateTimeN& LmDateTimeN::AddNanoSeconds(int n) noexcept {
    AddNanosCore(*this, n, false);
    return *this;
}
LmDateTimeN& LmDateTimeN::AddNanoSeconds(long long n) noexcept {
    AddNanosCore(*this, n, false);
    return *this;
}

int LmDateTimeN::GetTotalDays() const noexcept { return Wrap(int64_t{DateOf(*this).dayabs()} - kDayZero); }
long long LmDateTimeN::GetTotalSeconds() const noexcept { return TotalSeconds(GetTotalDays(), *this); }
long long LmDateTimeN::GetTotalNanoSeconds() const noexcept { return TotalNanos(GetTotalSeconds(), *this); }
double LmDateTimeN::GetTotalSeconds_f() const noexcept {
    return static_cast<double>(GetTotalSeconds()) + nanoseconds / 1000000000.0;
}

LmDateTimeN& LmDateTimeN::SetTotalDays(int days) noexcept { return SetZero().AddDays(days); }
LmDateTimeN& LmDateTimeN::SetTotalSeconds(double seconds) noexcept { return SetZero().AddSeconds(seconds); }
LmDateTimeN& LmDateTimeN::SetTotalSeconds(long long seconds) noexcept { return SetZero().AddSeconds(seconds); }
LmDateTimeN& LmDateTimeN::SetTotalNanoSeconds(long long n) noexcept { return SetZero().AddNanoSeconds(n); }
LmDateTimeN& LmDateTimeN::SetZero() noexcept { return *this = kZero; }

LmDateTimeN& LmDateTimeN::Now() {
    ReadClock(*this, false);
    return *this;
}
LmDateTimeN& LmDateTimeN::NowUTC() {
    ReadClock(*this, true);
    return *this;
}

int LmDateTimeN::ToLocalTime() {
    const int z = bksgettimezone();
    if (z == LM_ERR_NO_TIMEZONE) return z;
    AddMinutes(z);
    return 0;
}
int LmDateTimeN::ToUTCTime() {
    const int z = bksgettimezone();
    if (z == LM_ERR_NO_TIMEZONE) return z;
    AddMinutes(Wrap(-int64_t{z}));
    return 0;
}

int LmDateTimeN::IsValidDateTime() const noexcept { return LmDateTime(DateOf(*this), TimeOf(*this)).IsDateTime(); }

const LmDateTimeN& LmDateTimeN::NullValue() noexcept { return kNull; }
const LmDateTimeN& LmDateTimeN::DefaultValue() noexcept { return kDefault; }
const LmDateTimeN& LmDateTimeN::ZeroValue() noexcept { return kZero; }
const LmDateTimeN& LmDateTimeN::ClearValue() noexcept { return kClear; }
int LmDateTimeN::IsNullValue() const noexcept { return SameFields(*this, kNull) ? 1 : 0; }
int LmDateTimeN::IsDefaultValue() const noexcept { return SameFields(*this, kDefault) ? 1 : 0; }
int LmDateTimeN::IsZeroValue() const noexcept { return SameFields(*this, kZero) ? 1 : 0; }
int LmDateTimeN::SetNullValue() noexcept {
    *this = kNull;
    return 0;
}
int LmDateTimeN::SetDefaultValue() noexcept {
    *this = kDefault;
    return 0;
}

LmString& LmDateTimeN::PrintToLmString(LmString& out, const char* format) const {
    return DateTimePrintEngine(out, *this, format != nullptr ? format : LmDateTimeNFormat, 1);
}
LmDateTimeN* LmDateTimeN::ScanFromLmString(LmString& text, const char* format) {
    return DateTimeScanEngine(this, text, format != nullptr ? format : LmDateTimeNFormat, 1) != nullptr ? this
                                                                                                        : nullptr;
}

// ---------------------------------------------------------------------------
// LmTimeSpan
// ---------------------------------------------------------------------------

// The days go to day, month and year by 30 and 12; a negative rest is kept as it is
// while nothing above it is set.
LmTimeSpan::LmTimeSpan(int days, int hours, int minutes, int seconds, int ns) noexcept
    : LmTimeSpan(0, 0, 0, hours, minutes, seconds, ns) {
    int q = days / 30, r = days % 30;
    if (r < 0) {
        if (q == 0) {
            day = static_cast<int8_t>(r);
            return;
        }
        r += 30;
        --q;
    }
    day = static_cast<int8_t>(r);
    if (q == 0) return;
    int q2 = q / 12, r2 = q % 12;
    if (r2 < 0 && q2 != 0) {
        r2 += 12;
        --q2;
    }
    month = static_cast<int8_t>(r2);
    if (q2 == 0) return;
    year = ClampYear(q2);
}

LmTimeSpan::LmTimeSpan(double seconds) noexcept : LmTimeSpan(kSpanClear) { AddSeconds(seconds); }

int LmTimeSpan::Compare(const LmTimeSpan& other, unsigned short options) const noexcept {
    return lmdatetime::CompareNanoRecords(*this, other, options);
}

LmTimeSpan& LmTimeSpan::AddDays(int n) noexcept {
    AddDaysCore(*this, n, true);
    return *this;
}
LmTimeSpan& LmTimeSpan::AddHours(int n) noexcept {
    AddHoursCore(*this, n, true);
    return *this;
}
LmTimeSpan& LmTimeSpan::AddMinutes(int n) noexcept {
    AddMinutesCore(*this, n, true);
    return *this;
}
LmTimeSpan& LmTimeSpan::AddSeconds(int n) noexcept {
    AddSecondsCore(*this, n, true);
    return *this;
}
LmTimeSpan& LmTimeSpan::AddSeconds(long long n) noexcept {
    AddSecondsCore(*this, n, true);
    return *this;
}
LmTimeSpan& LmTimeSpan::AddSeconds(double seconds) noexcept {
    AddNanosCore(*this, NanosOf(seconds), true);
    return *this;
}
LmTimeSpan& LmTimeSpan::AddNanoSeconds(int n) noexcept {
    AddNanosCore(*this, n, true);
    return *this;
}
LmTimeSpan& LmTimeSpan::AddNanoSeconds(long long n) noexcept {
    AddNanosCore(*this, n, true);
    return *this;
}

int LmTimeSpan::GetTotalDays() const noexcept { return (year * 12 + month) * 30 + day; }
long long LmTimeSpan::GetTotalSeconds() const noexcept { return TotalSeconds(GetTotalDays(), *this); }
long long LmTimeSpan::GetTotalNanoSeconds() const noexcept { return TotalNanos(GetTotalSeconds(), *this); }
double LmTimeSpan::GetTotalSeconds_f() const noexcept {
    return static_cast<double>(GetTotalSeconds()) + nanoseconds / 1000000000.0;
}

LmTimeSpan& LmTimeSpan::SetTotalDays(int days) noexcept { return SetZero().AddDays(days); }
LmTimeSpan& LmTimeSpan::SetTotalSeconds(double seconds) noexcept { return SetZero().AddSeconds(seconds); }
LmTimeSpan& LmTimeSpan::SetTotalSeconds(long long seconds) noexcept { return SetZero().AddSeconds(seconds); }
LmTimeSpan& LmTimeSpan::SetTotalNanoSeconds(long long n) noexcept { return SetZero().AddNanoSeconds(n); }
LmTimeSpan& LmTimeSpan::SetZero() noexcept { return *this = kSpanClear; }

LmTimeSpan& LmTimeSpan::SetYears(int n) noexcept {
    year = static_cast<int16_t>(n);
    return *this;
}
LmTimeSpan& LmTimeSpan::SetMonths(int n) noexcept {
    month = static_cast<int8_t>(n);
    return *this;
}
LmTimeSpan& LmTimeSpan::SetDays(int n) noexcept {
    day = static_cast<int8_t>(n);
    return *this;
}
LmTimeSpan& LmTimeSpan::SetHours(int n) noexcept {
    hour = static_cast<int8_t>(n);
    return *this;
}
LmTimeSpan& LmTimeSpan::SetMinutes(int n) noexcept {
    minute = static_cast<int8_t>(n);
    return *this;
}
LmTimeSpan& LmTimeSpan::SetSeconds(int n) noexcept {
    second = static_cast<int8_t>(n);
    return *this;
}
LmTimeSpan& LmTimeSpan::SetNanoSeconds(int n) noexcept {
    nanoseconds = n;
    return *this;
}

namespace {

// A time of day as three ints, so that Difference keeps it in registers.
struct Hms {
    int h, m, s;
};

inline bool IsTimeOfDay(const Hms& t) noexcept {
    return static_cast<uint8_t>(t.h) <= 23 && static_cast<uint8_t>(t.m) <= 59 && static_cast<uint8_t>(t.s) <= 59;
}

// LmTime's prefix ++: on a real time of day one second on, 23:59:59 wrapping to
// 00:00:00; anything else goes through LmTime itself.
inline void Increment(Hms& t) noexcept {
    if (IsTimeOfDay(t)) {
        if (++t.s == 60 && (t.s = 0, ++t.m == 60) && (t.m = 0, ++t.h == 24)) t.h = 0;
        return;
    }
    LmTime x(static_cast<char>(t.h), static_cast<char>(t.m), static_cast<char>(t.s));
    ++x;
    t = {x.hour, x.minute, x.second};
}

// LmTime's operator< : the first field that differs, as numbers.
inline bool Earlier(const Hms& a, const Hms& b) noexcept {
    if (a.h != b.h) return a.h < b.h;
    if (a.m != b.m) return a.m < b.m;
    return a.s < b.s;
}

// LmTime's hi - lo. When lo is a time of day, hi's minute and second are in range,
// its hour below 48 and the seconds of hi are not fewer than lo's, that is the
// difference of the seconds folded into one day; anything else goes through LmTime.
inline Hms Minus(const Hms& hi, const Hms& lo) noexcept {
    const int diff = (hi.h * 60 + hi.m) * 60 + hi.s - ((lo.h * 60 + lo.m) * 60 + lo.s);
    if (IsTimeOfDay(lo) && hi.h >= 0 && hi.h < 48 && static_cast<unsigned>(hi.m) <= 59 &&
        static_cast<unsigned>(hi.s) <= 59 && diff >= 0) {
        return {diff / 3600 % 24, diff / 60 % 60, diff % 60};
    }
    const LmTime x = LmTime(static_cast<char>(hi.h), static_cast<char>(hi.m), static_cast<char>(hi.s)) -
                     LmTime(static_cast<char>(lo.h), static_cast<char>(lo.m), static_cast<char>(lo.s));
    return {x.hour, x.minute, x.second};
}

}  // namespace

// The later operand less the earlier: whole days by the calendar, a borrow of one
// second when the nanoseconds are short and of one day when the time of day is; the
// days then split into 360-day years and 30-day months.
LmTimeSpan LmTimeSpan::Difference(const LmTimeSpan& a, const LmTimeSpan& b) noexcept {
    const Record& x = a.IsNullValue() != 0 ? kSpanClear : a;
    const Record& y = b.IsNullValue() != 0 ? kSpanClear : b;
    const bool aLater = lmdatetime::CompareNanoRecords(x, y, LM_CMP_NO_WILDCARD) >= 0;
    const Record& hi = aLater ? x : y;
    const Record& lo = aLater ? y : x;
    int days = DateOf(hi).dayabs() - DateOf(lo).dayabs();
    Hms hiTime{hi.hour, hi.minute, hi.second}, loTime{lo.hour, lo.minute, lo.second};
    int32_t hiNanos = hi.nanoseconds;
    if (hiNanos < lo.nanoseconds) {
        hiNanos = Wrap(int64_t{hiNanos} + kNanos);
        Increment(loTime);
    }
    if (Earlier(hiTime, loTime) && days >= 1) {
        --days;
        hiTime.h = static_cast<int8_t>(hiTime.h + 24);
    }
    const Hms t = Minus(hiTime, loTime);
    const int years = days / 360;
    return LmTimeSpan(years, days / 30 - 12 * years, days - 30 * (days / 30), t.h, t.m, t.s,
                      Wrap(int64_t{hiNanos} - lo.nanoseconds));
}

LmTimeSpan LmTimeSpan::Difference(const LmDateTimeN& a, const LmDateTimeN& b) noexcept {
    const auto span = [](const LmDateTimeN& v) {
        return LmTimeSpan(v.year, v.month, v.day, v.hour, v.minute, v.second, v.nanoseconds);
    };
    return Difference(span(a), span(b));
}

const LmTimeSpan& LmTimeSpan::NullValue() noexcept { return kSpanNull; }
const LmTimeSpan& LmTimeSpan::DefaultValue() noexcept { return kSpanDefault; }
const LmTimeSpan& LmTimeSpan::ZeroValue() noexcept { return kSpanClear; }
const LmTimeSpan& LmTimeSpan::ClearValue() noexcept { return kSpanClear; }
int LmTimeSpan::IsNullValue() const noexcept { return SameFields(*this, kSpanNull) ? 1 : 0; }
int LmTimeSpan::IsDefaultValue() const noexcept { return SameFields(*this, kSpanDefault) ? 1 : 0; }
int LmTimeSpan::IsZeroValue() const noexcept { return SameFields(*this, kSpanClear) ? 1 : 0; }
int LmTimeSpan::SetNullValue() noexcept {
    *this = kSpanNull;
    return 0;
}
int LmTimeSpan::SetDefaultValue() noexcept {
    *this = kSpanDefault;
    return 0;
}

LmString& LmTimeSpan::PrintToLmString(LmString& out, const char* format) const {
    return DateTimePrintEngine(out, *this, format != nullptr ? format : LmTimeSpanFormat, 1);
}
LmTimeSpan* LmTimeSpan::ScanFromLmString(LmString& text, const char* format) {
    return DateTimeScanEngine(this, text, format != nullptr ? format : LmTimeSpanFormat, 1) != nullptr ? this : nullptr;
}
