// LmDateTime: the carry of seconds and minutes over midnight into the date, the zone
// moves, the constants and the text wrappers. Comparison and the rest forward to the
// two parts.
#include "lmdatetime.h"

#include "dtcommon.h"
#include "lmdtformat.h"
#include "lmstring.h"
#include "lmtypemgr.h"
#include "lumobase.h"

namespace {

using lmdatetime::Wrap;

// The same fields as the constants of LmDate and LmTime.
constinit const LmDateTime kNull(-32768, -128, -128, -128, -128, -128);
constinit const LmDateTime kDefault(-4713, 11, 24, 0, 0, 0);
constinit const LmDateTime kZero(0, 1, 1, 0, 0, 0);
constinit const LmDateTime kClear(0, 0, 0, 0, 0, 0);

constexpr unsigned short kAllOptions = 0xFFFF;

inline LmDate& DatePart(LmDateTime& v) noexcept { return v; }
inline LmTime& TimePart(LmDateTime& v) noexcept { return v; }

}  // namespace

LmDateTime::LmDateTime() : LmDate(), LmTime() {}
LmDateTime::LmDateTime(LmDate& date) : LmDate(date), LmTime() {}
LmDateTime::LmDateTime(const LmDate& date) : LmDate(date), LmTime() {}
LmDateTime::LmDateTime(LmTime& time) : LmDate(), LmTime(time) {}
LmDateTime::LmDateTime(const LmTime& time) : LmDate(), LmTime(time) {}

LmDateTime& LmDateTime::operator=(const LmTime& time) noexcept {
    TimePart(*this) = time;
    return *this;
}

int LmDateTime::operator==(const LmDateTime& other) const noexcept {
    return LmDate::Compare(other, kAllOptions) == 0 && LmTime::Compare(other, kAllOptions) == 0 ? 1 : 0;
}

int LmDateTime::operator!=(const LmDateTime& other) const noexcept {
    const int d = LmDate::operator!=(other);
    return d != 0 ? d : LmTime::operator!=(other);
}

// Whole days first; the rest moves the time, and a time that wrapped round midnight
// (found by comparing with the old time) carries one more day.
LmDateTime& LmDateTime::AddSeconds(int n) noexcept {
    int days = n / 86400;
    const int rest = n - 86400 * days;
    const LmTime old = TimePart(*this);
    LmTime t = old;
    if (rest < 0) {
        t -= -rest;
        if (t > old) --days;
    } else {
        t += rest;
        if (t < old) ++days;
    }
    DatePart(*this) += days;
    TimePart(*this) = t;
    return *this;
}

int LmDateTime::Compare(const LmDateTime& other) const noexcept { return Compare(other, kAllOptions); }

int LmDateTime::Compare(const LmDateTime& other, unsigned short options) const noexcept {
    const int d = LmDate::Compare(other, options);
    return d != 0 ? d : LmTime::Compare(other, options);
}

int LmDateTime::IsDateTime() const noexcept { return IsDate() != 0 && IsTime() != 0 ? 1 : 0; }

const LmDateTime& LmDateTime::NullValue() noexcept { return kNull; }
const LmDateTime& LmDateTime::DefaultValue() noexcept { return kDefault; }
const LmDateTime& LmDateTime::ZeroValue() noexcept { return kZero; }
const LmDateTime& LmDateTime::ClearValue() noexcept { return kClear; }

int LmDateTime::IsNullValue() const noexcept {
    return LmDate::IsNullValue() != 0 && LmTime::IsNullValue() != 0 ? 1 : 0;
}
int LmDateTime::IsDefaultValue() const noexcept { return LmDate::IsDefaultValue(); }
int LmDateTime::IsZeroValue() const noexcept {
    return LmDate::IsZeroValue() != 0 && LmTime::IsZeroValue() != 0 ? 1 : 0;
}

int LmDateTime::SetNullValue() noexcept {
    LmDate::SetNullValue();
    return LmTime::SetNullValue();
}
int LmDateTime::SetDefaultValue() noexcept {
    LmDate::SetDefaultValue();
    return LmTime::SetDefaultValue();
}
int LmDateTime::SetZeroValue() noexcept {
    LmDate::SetZeroValue();
    return LmTime::SetZeroValue();
}

LmDateTime& LmDateTime::Now() {
    LmTime::Now();
    Today();
    return *this;
}

LmDateTime& LmDateTime::NowUTC() {
    btime time{};
    bdate date{};
    bksgetsystemtime(&time, &date);
    year = date.year;
    month = static_cast<int8_t>(date.month);
    day = static_cast<int8_t>(date.day);
    hour = static_cast<int8_t>(time.hour);
    minute = static_cast<int8_t>(time.minute);
    second = static_cast<int8_t>(time.second);
    return *this;
}

// The minutes are summed in 64 bits and wrapped, so any zone lumobase answers is
// defined; a real zone (at most 14 hours) never leaves one day either way.
int LmDateTime::ToLocalTime() {
    const int z = bksgettimezone();
    if (z == LM_ERR_NO_TIMEZONE) return z;
    SetMinutesOfDay(Wrap(int64_t{hour} * 60 + minute + z));
    return 0;
}

int LmDateTime::ToUTCTime() {
    const int z = bksgettimezone();
    if (z == LM_ERR_NO_TIMEZONE) return z;
    SetMinutesOfDay(Wrap(int64_t{hour} * 60 + minute - z));
    return 0;
}

// Moves the date by at most one day; hour and minute take what is left, cut to
// their bytes.
void LmDateTime::SetMinutesOfDay(int m) noexcept {
    if (m < 0) {
        DatePart(*this) -= 1;
        const int q = m / 60;
        const int r = m - 60 * q;
        hour = static_cast<int8_t>(r != 0 ? q + 23 : q + 24);
        minute = static_cast<int8_t>(r != 0 ? r + 60 : 0);
    } else if (m >= 1440) {
        DatePart(*this) += 1;
        hour = static_cast<int8_t>((m - 1440) / 60);
        minute = static_cast<int8_t>((m - 1440) % 60);
    } else {
        hour = static_cast<int8_t>(m / 60);
        minute = static_cast<int8_t>(m % 60);
    }
}

// Widened to the nanosecond record with nanoseconds zero.
LmString& LmDateTime::PrintToLmString(LmString& out, const char* format) const {
    if (IsNullValue() != 0) {
        out = LmTypeMgr::GetNullPrintString();
        return out;
    }
    const LmDateTimeNRecord wide{year, month, day, hour, minute, second, 0};
    return DateTimePrintEngine(out, wide, format != nullptr ? format : LmDateTimeFormat, 1);
}

LmDateTime* LmDateTime::ScanFromLmString(LmString& text, const char* format) {
    LmDateTimeNRecord wide{year, month, day, hour, minute, second, 0};
    const bool ok = DateTimeScanEngine(&wide, text, format != nullptr ? format : LmDateTimeFormat, 1) != nullptr;
    year = wide.year;
    month = wide.month;
    day = wide.day;
    hour = wide.hour;
    minute = wide.minute;
    second = wide.second;
    return ok ? this : nullptr;
}
