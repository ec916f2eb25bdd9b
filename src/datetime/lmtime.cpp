// LmTime: the clock, seconds to fields and back, arithmetic that wraps round
// midnight in 8-bit fields, zone shifts and comparison with wildcards.
#include "lmtime.h"

#include "dtcommon.h"
#include "lmdtformat.h"
#include "lmstring.h"
#include "lmtypemgr.h"
#include "lumobase.h"

namespace {

using lmdatetime::Wrap;

// Default and zero are copies of clear: all three are midnight.
constinit const LmTime kNull(-128, -128, -128);
constexpr LmTime kClear(0, 0, 0);
constinit const LmTime kDefault(kClear);
constinit const LmTime kZero(kClear);

inline int8_t Byte(int v) noexcept { return static_cast<int8_t>(v); }

}  // namespace

LmTime::LmTime() : hour(0), minute(0), second(0) { Now(); }

LmTime::LmTime(int seconds) noexcept : hour(0), minute(0), second(0) { SetSecondsAbs(seconds); }

LmTime& LmTime::SetSecondsAbs(int seconds) noexcept {
    const int h = seconds / 3600;
    const int rest = seconds - h * 3600;
    hour = Byte(h);
    minute = Byte(rest / 60);
    second = Byte(rest - rest / 60 * 60);
    return *this;
}

LmTime& LmTime::Now() {
    btime now{};
    now.zone = 1;  // asks for local time
    bksgettime(&now);
    hour = static_cast<int8_t>(now.hour);
    minute = static_cast<int8_t>(now.minute);
    second = static_cast<int8_t>(now.second);
    return *this;
}

LmTime& LmTime::NowUTC() {
    btime now{};
    bdate date{};
    bksgetsystemtime(&now, &date);
    hour = static_cast<int8_t>(now.hour);
    minute = static_cast<int8_t>(now.minute);
    second = static_cast<int8_t>(now.second);
    return *this;
}

int LmTime::ToLocalTime() {
    const int z = bksgettimezone();
    if (z == LM_ERR_NO_TIMEZONE) return z;
    *this = *this + Wrap(int64_t{z} * 60);
    return 0;
}

int LmTime::ToUTCTime() {
    const int z = bksgettimezone();
    if (z == LM_ERR_NO_TIMEZONE) return z;
    *this = *this + Wrap(int64_t{z} * -60);
    return 0;
}

LmTime::operator int() const noexcept { return (hour * 60 + minute) * 60 + second; }

int LmTime::IsTime() const noexcept {
    return static_cast<uint8_t>(hour) <= 23 && static_cast<uint8_t>(minute) <= 59 && static_cast<uint8_t>(second) <= 59
               ? 1
               : 0;
}

// Each field moves in wrapping 8-bit arithmetic; one carry per field. An hour of
// exactly -24 or -48 before the last step comes out as 24: stored times depend on it.
LmTime LmTime::operator+(int n) const noexcept {
    const int H = n / 3600;
    const int T = n / 60;
    LmTime t(*this);
    t.hour = Byte(t.hour + H);
    t.minute = Byte(t.minute + (T - 60 * H));
    t.second = Byte(t.second + (n - 60 * T));
    if (t.second >= 60) {
        t.minute = Byte(t.minute + 1);
        t.second = Byte(t.second - 60);
    } else if (t.second < 0) {
        t.minute = Byte(t.minute - 1);
        t.second = Byte(t.second + 60);
    }
    if (t.minute >= 60) {
        t.hour = Byte(t.hour + 1);
        t.minute = Byte(t.minute - 60);
    } else if (t.minute < 0) {
        t.hour = Byte(t.hour - 1);
        t.minute = Byte(t.minute + 60);
    }
    if (t.hour >= 24) {
        t.hour = Byte(t.hour - 24 * (t.hour / 24));
    } else if (t.hour < 0) {
        t.hour = Byte(t.hour + 24 * (1 - t.hour / 24));
    }
    return t;
}

LmTime LmTime::operator-(int seconds) const noexcept { return *this + Wrap(-int64_t{seconds}); }
LmTime LmTime::operator-(const LmTime& other) const noexcept { return *this + -static_cast<int>(other); }
LmTime& LmTime::operator+=(int seconds) noexcept { return *this = *this + seconds; }
LmTime& LmTime::operator-=(int seconds) noexcept { return *this = *this - seconds; }
LmTime& LmTime::operator++() noexcept { return *this = *this + 1; }
LmTime& LmTime::operator--() noexcept { return *this = *this + -1; }

int LmTime::operator==(const LmTime& other) const noexcept {
    return hour == other.hour && minute == other.minute && second == other.second ? 1 : 0;
}

int LmTime::operator!=(const LmTime& other) const noexcept {
    if (hour != other.hour) return hour - other.hour;
    if (minute != other.minute) return minute - other.minute;
    return second - other.second;
}

int LmTime::operator<(const LmTime& other) const noexcept { return Compare(other, LM_CMP_NO_WILDCARD) < 0 ? 1 : 0; }
int LmTime::operator<=(const LmTime& other) const noexcept { return Compare(other, LM_CMP_NO_WILDCARD) <= 0 ? 1 : 0; }
int LmTime::operator>(const LmTime& other) const noexcept { return Compare(other, LM_CMP_NO_WILDCARD) > 0 ? 1 : 0; }
int LmTime::operator>=(const LmTime& other) const noexcept { return Compare(other, LM_CMP_NO_WILDCARD) >= 0 ? 1 : 0; }

int LmTime::Compare(const LmTime& other, unsigned short options) const noexcept {
    return lmdatetime::CompareFields(hour, minute, second, other.hour, other.minute, other.second,
                                     (options & LM_CMP_NO_WILDCARD) == 0);
}

const LmTime& LmTime::NullValue() noexcept { return kNull; }
const LmTime& LmTime::DefaultValue() noexcept { return kDefault; }
const LmTime& LmTime::ZeroValue() noexcept { return kZero; }
const LmTime& LmTime::ClearValue() noexcept { return kClear; }

int LmTime::IsNullValue() const noexcept { return *this == kNull; }
int LmTime::IsDefaultValue() const noexcept { return *this == kDefault; }
int LmTime::IsZeroValue() const noexcept { return *this == kZero; }

int LmTime::SetNullValue() noexcept {
    if (this != &kNull) *this = kNull;
    return 0;
}
int LmTime::SetDefaultValue() noexcept {
    if (this != &kDefault) *this = kDefault;
    return 0;
}
int LmTime::SetZeroValue() noexcept {
    if (this != &kZero) *this = kZero;
    return 0;
}

// Widened to the nanosecond record with year, month and day zero.
LmString& LmTime::PrintToLmString(LmString& out, const char* format) const {
    if (IsNullValue() != 0) {
        out = LmTypeMgr::GetNullPrintString();
        return out;
    }
    const LmDateTimeNRecord wide{0, 0, 0, hour, minute, second, 0};
    return DateTimePrintEngine(out, wide, format != nullptr ? format : LmTimeFormat, 1);
}

LmTime* LmTime::ScanFromLmString(LmString& text, const char* format) {
    LmDateTimeNRecord wide{0, 0, 0, hour, minute, second, 0};
    const bool ok = DateTimeScanEngine(&wide, text, format != nullptr ? format : LmTimeFormat, 1) != nullptr;
    hour = wide.hour;
    minute = wide.minute;
    second = wide.second;
    return ok ? this : nullptr;
}
