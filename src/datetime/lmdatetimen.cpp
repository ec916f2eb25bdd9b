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
    int64_t q = n / base;
    int64_t t = n % base + field;
    q += t / base;
    t %= base;
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

// Step 5. A date-time whose first four bytes are a real date moves in the calendar;
// anything else (a span, or a date-time such as the clear value) by 30-day months and
// 12-month years, keeping a negative remainder while nothing above it is set.
void AddDaysCore(Record& v, int n, bool span) noexcept {
    if (n == 0) return;
    LmDate date(v.year, static_cast<char>(v.month), static_cast<char>(v.day));
    if (!span && date.IsDate() != 0) {
        date += n;
        v.year = date.year;
        v.month = date.month;
        v.day = date.day;
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

// Step 1.
void AddNanosCore(Record& v, int64_t n, bool span) noexcept {
    if (n == 0) return;
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
inline void SetTime(Record& v, const LmTime& t) noexcept {
    v.hour = t.hour;
    v.minute = t.minute;
    v.second = t.second;
}

// The seven fields as LmDateTime::Compare has them, then the nanoseconds.
int CompareRecords(const Record& a, const Record& b, unsigned short options) noexcept {
    const bool wildcards = (options & LM_CMP_NO_WILDCARD) == 0;
    int r = lmdatetime::CompareFields(a.year, a.month, a.day, b.year, b.month, b.day, wildcards);
    if (r != 0) return r;
    r = lmdatetime::CompareFields(a.hour, a.minute, a.second, b.hour, b.minute, b.second, wildcards);
    if (r != 0) return r;
    if (wildcards && (a.nanoseconds == -1 || b.nanoseconds == -1)) return 0;
    return a.nanoseconds < b.nanoseconds ? -1 : (a.nanoseconds > b.nanoseconds ? 1 : 0);
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
    return CompareRecords(*this, other, options);
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
    return CompareRecords(*this, other, options);
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

// The later operand less the earlier: whole days by the calendar, a borrow of one
// second when the nanoseconds are short and of one day when the time of day is; the
// days then split into 360-day years and 30-day months.
LmTimeSpan LmTimeSpan::Difference(const LmTimeSpan& a, const LmTimeSpan& b) noexcept {
    Record x = a.IsNullValue() != 0 ? kSpanClear : a;
    Record y = b.IsNullValue() != 0 ? kSpanClear : b;
    const bool aLater = CompareRecords(x, y, LM_CMP_NO_WILDCARD) >= 0;
    Record& hi = aLater ? x : y;
    Record& lo = aLater ? y : x;
    int days = DateOf(hi) - DateOf(lo);
    if (hi.nanoseconds < lo.nanoseconds) {
        hi.nanoseconds = Wrap(int64_t{hi.nanoseconds} + kNanos);
        LmTime t = TimeOf(lo);
        SetTime(lo, ++t);
    }
    if (TimeOf(hi) < TimeOf(lo) && days >= 1) {
        --days;
        hi.hour = static_cast<int8_t>(hi.hour + 24);
    }
    LmTimeSpan result;
    const int years = days / 360;
    result.year = static_cast<int16_t>(years);
    result.month = static_cast<int8_t>(days / 30 - 12 * years);
    result.day = static_cast<int8_t>(days - 30 * (days / 30));
    result.nanoseconds = Wrap(int64_t{hi.nanoseconds} - lo.nanoseconds);
    SetTime(result, TimeOf(hi) - TimeOf(lo));
    return result;
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
