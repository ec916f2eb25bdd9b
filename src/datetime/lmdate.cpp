// LmDate: absolute days by the integer formulas of Fliegel and Van Flandern, the
// weekday by a Zeller congruence, tests, arithmetic through the absolute day, and
// comparison with wildcards.
//
// Every sum and product runs as the 32-bit two's complement arithmetic that the
// stored results were first made with: an absolute day near the ends of the int
// range wraps instead of overflowing, so no argument is undefined behaviour.
#include "lmdate.h"

#include <cstdlib>

#include "dtcommon.h"
#include "dtnames.h"
#include "lmdtformat.h"
#include "lmint64.h"
#include "lmstring.h"
#include "lmtypemgr.h"
#include "lumobase.h"

namespace {

using lmdatetime::Wrap;

constinit const LmDate kNull(-32768, -128, -128);
constinit const LmDate kDefault(-4713, 11, 24);
constinit const LmDate kZero(0, 1, 1);
constinit const LmDate kClear(0, 0, 0);

}  // namespace

LmDate::LmDate() : year(0), month(0), day(0) { Today(); }

LmDate::LmDate(int absoluteDay) noexcept : year(0), month(0), day(0) { dateabs(absoluteDay); }

LmDate& LmDate::Today() {
    bdate now{};
    bksgetdate(&now);
    year = now.year;
    month = static_cast<int8_t>(now.month);
    day = static_cast<int8_t>(now.day);
    return *this;
}

LmDate& LmDate::DateAbsWrapping(int j) noexcept {
    int32_t L = Wrap(int64_t{j} + 68569);
    const int32_t N = Wrap(int64_t{4} * L) / 146097;
    L = Wrap(int64_t{L} - Wrap(int64_t{146097} * N + 3) / 4);
    const int32_t I = Wrap(int64_t{4000} * Wrap(int64_t{L} + 1)) / 1461001;
    L = Wrap(int64_t{L} - Wrap(int64_t{1461} * I) / 4 + 31);
    // J is carried in 8 bits.
    const auto J = static_cast<int8_t>(Wrap(int64_t{80} * L) / 2447);
    day = static_cast<int8_t>(Wrap(int64_t{L} - 2447 * J / 80));
    const int K = J / 11;
    month = static_cast<int8_t>(J + 2 - 12 * K);
    year = static_cast<int16_t>(Wrap(int64_t{100} * (int64_t{N} - 49) + I + K));
    return *this;
}

// The first of month + 1 goes through an 8-bit month field, as a scratch date holds it.
int LmDate::daynxtmonth() const noexcept {
    const LmDate next(year, static_cast<char>(month + 1), 1);
    return next.dayabs() - dayabs();
}

// 02-30, and 02-29 of a common year, are refused by the subtraction, not by a table.
int LmDate::IsDate() const noexcept {
    const auto d = static_cast<uint8_t>(day);
    const auto m = static_cast<uint8_t>(month);
    if (d < 1 || d > 31 || m < 1 || m > 12) return 0;
    return daynxtmonth() > 0 ? 1 : 0;
}

int LmDate::IsLastDayOfTheMonth() const noexcept { return daynxtmonth() == 1 ? 1 : 0; }

// A Zeller congruence on the fields. Its sum turns negative for some far dates (from
// 4600-03-01 on), and a negative remainder reports Sunday: stored weekdays depend on it.
LmDaysOfTheWeek LmDate::GetDayOfTheDate() const noexcept {
    const int Y = year + (month - 14) / 12;
    const int M = (month + 10) - 12 * ((month + 10) / 13);  // March 1 ... February 12
    const int C = Y / 100;
    const int R = Y - 100 * C;
    const int S = day - 2 * C + 77 + (5 * R) / 4 + (13 * M - 1) / 5 + Y / 400;
    const int T = S % 7;
    return static_cast<LmDaysOfTheWeek>(T <= 0 ? 6 : T - 1);
}

LmString LmDate::PrintDayOfTheDate() const { return LmString(lmdatetime::WeekdayName(GetDayOfTheDate())); }

LmString LmDate::PrintDayOfTheDate() { return LmString(static_cast<int>(GetDayOfTheDate())); }

LmDate& LmDate::operator++() noexcept { return dateabs(Wrap(int64_t{dayabs()} + 1)); }
LmDate& LmDate::operator--() noexcept { return dateabs(Wrap(int64_t{dayabs()} - 1)); }
LmDate& LmDate::operator+=(int days) noexcept { return dateabs(Wrap(int64_t{dayabs()} + days)); }
LmDate& LmDate::operator-=(int days) noexcept { return dateabs(Wrap(int64_t{dayabs()} - days)); }

LmDate LmDate::operator+(int days) const noexcept {
    LmDate result(*this);
    return result += days;
}

LmDate LmDate::operator-(int days) const noexcept {
    LmDate result(*this);
    return result -= days;
}

int LmDate::operator-(const LmDate& other) const noexcept { return dayabs() - other.dayabs(); }

int LmDate::operator==(const LmDate& other) const noexcept {
    return year == other.year && month == other.month && day == other.day ? 1 : 0;
}

int LmDate::operator!=(const LmDate& other) const noexcept {
    if (year != other.year) return year - other.year;
    if (month != other.month) return month - other.month;
    return day - other.day;
}

int LmDate::operator<(const LmDate& other) const noexcept { return Compare(other, LM_CMP_NO_WILDCARD) < 0 ? 1 : 0; }
int LmDate::operator<=(const LmDate& other) const noexcept { return Compare(other, LM_CMP_NO_WILDCARD) <= 0 ? 1 : 0; }
int LmDate::operator>(const LmDate& other) const noexcept { return Compare(other, LM_CMP_NO_WILDCARD) > 0 ? 1 : 0; }
int LmDate::operator>=(const LmDate& other) const noexcept { return Compare(other, LM_CMP_NO_WILDCARD) >= 0 ? 1 : 0; }

int LmDate::Compare(const LmDate& other, unsigned short options) const noexcept {
    return lmdatetime::CompareFields(year, month, day, other.year, other.month, other.day,
                                     (options & LM_CMP_NO_WILDCARD) == 0);
}

const LmDate& LmDate::NullValue() noexcept { return kNull; }
const LmDate& LmDate::DefaultValue() noexcept { return kDefault; }
const LmDate& LmDate::ZeroValue() noexcept { return kZero; }
const LmDate& LmDate::ClearValue() noexcept { return kClear; }

int LmDate::IsNullValue() const noexcept { return *this == kNull; }
int LmDate::IsDefaultValue() const noexcept { return *this == kDefault; }
int LmDate::IsZeroValue() const noexcept { return *this == kZero; }

int LmDate::SetNullValue() noexcept {
    if (this != &kNull) *this = kNull;
    return 0;
}
int LmDate::SetDefaultValue() noexcept {
    if (this != &kDefault) *this = kDefault;
    return 0;
}
int LmDate::SetZeroValue() noexcept {
    if (this != &kZero) *this = kZero;
    return 0;
}

// Quotient and remainder of the magnitudes, taken in unsigned arithmetic so that the
// smallest int has a magnitude; each negated when the signs differ.
int LmDate::divide(int a, int b) const noexcept {
    if (b == 0) return 0;
    const uint32_t q = static_cast<uint32_t>(std::abs(int64_t{a})) / static_cast<uint32_t>(std::abs(int64_t{b}));
    return static_cast<int32_t>((a < 0) != (b < 0) ? 0u - q : q);
}

int LmDate::modulo(int a, int b) const noexcept {
    if (b == 0) return 0;
    const uint32_t r = static_cast<uint32_t>(std::abs(int64_t{a})) % static_cast<uint32_t>(std::abs(int64_t{b}));
    return static_cast<int32_t>((a < 0) != (b < 0) ? 0u - r : r);
}

// Widened to the nanosecond record with the time and nanoseconds zero.
LmString& LmDate::PrintToLmString(LmString& out, const char* format) const {
    if (IsNullValue() != 0) {
        out = LmTypeMgr::GetNullPrintString();
        return out;
    }
    const LmDateTimeNRecord wide{year, month, day, 0, 0, 0, 0};
    return DateTimePrintEngine(out, wide, format != nullptr ? format : LmDateFormat, 1);
}

LmDate* LmDate::ScanFromLmString(LmString& text, const char* format) {
    LmDateTimeNRecord wide{year, month, day, 0, 0, 0, 0};
    const bool ok = DateTimeScanEngine(&wide, text, format != nullptr ? format : LmDateFormat, 1) != nullptr;
    year = wide.year;
    month = wide.month;
    day = wide.day;
    return ok ? this : nullptr;
}

int GetSystemTimeInMSSinceTheEpoch(LmInt64& result) {
    int64_t seconds = 0;
    int milliseconds = 0;
    bksGetEpochTime(seconds, milliseconds);
    result = LmInt64(static_cast<long long>(seconds)) * LmInt64(1000) + LmInt64(milliseconds);
    return 0;
}
