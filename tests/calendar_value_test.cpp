// LmDate and LmTime as values: the constants and their bytes, absolute days against
// a second day-count algorithm, tests, weekdays, arithmetic, comparison with
// wildcards, and the clock (pinned).
#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <tuple>
#include <vector>

#include "lumotypes.h"

namespace {

using Bytes = std::vector<unsigned>;
using Fields = std::tuple<int, int, int>;

template <typename T>
Bytes Image(const T& v) {
    unsigned char b[sizeof(T)];
    std::memcpy(b, &v, sizeof b);
    return Bytes(b, b + sizeof b);
}
Fields Of(const LmDate& d) { return {d.year, d.month, d.day}; }
Fields Of(const LmTime& t) { return {t.hour, t.minute, t.second}; }
LmDate D(int y, int m, int d) { return LmDate(static_cast<short>(y), static_cast<char>(m), static_cast<char>(d)); }
LmTime T(int h, int m, int s) { return LmTime(static_cast<char>(h), static_cast<char>(m), static_cast<char>(s)); }

// The oracle: days from 1970-01-01 to a civil date and back, by eras of 400 years
// (the well-known public-domain algorithm), in 64 bits.
int64_t DaysFromCivil(int64_t y, int m, int d) {
    y -= m <= 2;
    const int64_t era = (y >= 0 ? y : y - 399) / 400, yoe = y - era * 400;
    const int64_t doy = (153 * (m > 2 ? m - 3 : m + 9) + 2) / 5 + d - 1;
    return era * 146097 + yoe * 365 + yoe / 4 - yoe / 100 + doy - 719468;
}
Fields CivilFromDays(int64_t z) {
    z += 719468;
    const int64_t era = (z >= 0 ? z : z - 146096) / 146097, doe = z - era * 146097;
    const int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100), mp = (5 * doy + 2) / 153;
    const int m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
    return {static_cast<int>(yoe + era * 400 + (m <= 2)), m, static_cast<int>(doy - (153 * mp + 2) / 5 + 1)};
}
// A status, then the fields as they are after it (arguments are evaluated in any order).
template <typename V>
std::pair<int, Fields> After(int status, const V& v) {
    return {status, Of(v)};
}
constexpr int64_t kJdnOfEpoch = 2440588;  // 1970-01-01; absolute day 0 was a Monday

struct DateProbe : LmDate {
    DateProbe() : LmDate(0, 1, 1) {}
    using LmDate::DateAbsWrapping;
    using LmDate::divide;
    using LmDate::modulo;
};

TEST(CalendarConstants, BytesInMemoryAndTheirTests) {
    EXPECT_EQ(Image(LmDate::NullValue()), (Bytes{0x00, 0x80, 0x80, 0x80}));
    EXPECT_EQ(Image(LmDate::DefaultValue()), (Bytes{0x97, 0xED, 0x0B, 0x18}));
    EXPECT_EQ(Image(LmDate::ZeroValue()), (Bytes{0x00, 0x00, 0x01, 0x01}));
    EXPECT_EQ(Image(LmDate::ClearValue()), (Bytes{0x00, 0x00, 0x00, 0x00}));
    EXPECT_EQ(Image(LmTime::NullValue()), (Bytes{0x80, 0x80, 0x80}));
    for (const LmTime* t : {&LmTime::DefaultValue(), &LmTime::ZeroValue(), &LmTime::ClearValue()})
        EXPECT_EQ(Image(*t), (Bytes{0, 0, 0}));
    LmDate d = D(2001, 2, 3);
    EXPECT_EQ(std::make_tuple(d.IsNullValue(), d.IsDefaultValue(), d.IsZeroValue()), std::make_tuple(0, 0, 0));
    EXPECT_EQ(d.SetNullValue(), 0);
    EXPECT_EQ(std::make_tuple(d.IsNullValue(), d.IsDefaultValue()), std::make_tuple(1, 0));
    EXPECT_EQ(d.SetDefaultValue(), 0);
    EXPECT_EQ(std::make_tuple(d.IsDefaultValue(), d.dayabs()), std::make_tuple(1, 0));
    EXPECT_EQ(d.SetZeroValue(), 0);
    EXPECT_EQ(std::make_tuple(d.IsZeroValue(), static_cast<int>(d)), std::make_tuple(1, 1721060));
    EXPECT_EQ(LmDate(0), LmDate::DefaultValue());
    LmTime t = T(1, 2, 3);
    EXPECT_EQ(std::make_tuple(t.IsNullValue(), t.IsDefaultValue(), t.IsZeroValue()), std::make_tuple(0, 0, 0));
    EXPECT_EQ(After(t.SetNullValue(), t), std::make_pair(0, Fields(-128, -128, -128)));
    EXPECT_EQ(t.IsNullValue(), 1);
    // Midnight is the default and the zero time at once.
    EXPECT_EQ(t.SetZeroValue(), 0);
    EXPECT_EQ(std::make_tuple(t.IsDefaultValue(), t.IsZeroValue()), std::make_tuple(1, 1));
    t = T(5, 0, 0);
    EXPECT_EQ(After(t.SetDefaultValue(), t), std::make_pair(0, Fields(0, 0, 0)));
}

TEST(CalendarAbsoluteDays, EveryDayFromMinus4713To9999BothWays) {
    int64_t mismatches = 0;
    for (int64_t z = DaysFromCivil(-4713, 1, 1); z <= DaysFromCivil(9999, 12, 31); ++z) {
        const auto [y, m, d] = CivilFromDays(z);
        const LmDate date = D(y, m, d);
        const int jdn = static_cast<int>(z + kJdnOfEpoch);
        if (date.dayabs() != jdn || Of(LmDate(jdn)) != Fields(y, m, d) || date.IsDate() != 1) ++mismatches;
    }
    EXPECT_EQ(mismatches, 0);
}

TEST(CalendarAbsoluteDays, FixedPointsAndTheEdgesOfExactness) {
    const struct {
        Fields date;
        int jdn;
    } rows[] = {{{-4713, 11, 24}, 0},       {{0, 1, 1}, 1721060},        {{1970, 1, 1}, 2440588},
                {{-4900, 3, 1}, -68569},    {{32767, 12, 31}, 13689325}, {{2000, 2, 29}, 2451604},
                {{2000, 13, 1}, 2451911},      // month 13 is next January
                {{-32768, 1, 1}, -10247207}};  // a day off the calendar below -4900-03-01
    for (const auto& r : rows) {
        const auto [y, m, d] = r.date;
        EXPECT_EQ(D(y, m, d).dayabs(), r.jdn) << y;
        if (m <= 12 && y > -5000) {
            EXPECT_EQ(Of(LmDate(r.jdn)), r.date);
        }
    }
    EXPECT_EQ(Of(LmDate(-68570)), Fields(-4900, 2, 30));    // no calendar date below -68569
    EXPECT_EQ(Of(LmDate(13689326)), Fields(-32768, 1, 1));  // the year wraps; nothing clamps
    // The plain path of dateabs and the wrapping one agree wherever both apply; the
    // extremes wrap in 32 bits without undefined behaviour (the sanitizer build checks).
    DateProbe probe;
    for (int j : {-499999999, -123456789, -68570, 0, 2440588, 13689326, 499999999, 500000000})
        EXPECT_EQ(Of(probe.DateAbsWrapping(j)), Of(LmDate(j))) << j;
    for (int j : {INT_MIN, -536870912, 536870911, INT_MAX - 68569, INT_MAX}) {
        LmDate d(j);
        d += INT_MAX;
        ++d;
        --d;
        EXPECT_EQ((d + INT_MIN) - d, (d + INT_MIN).dayabs() - d.dayabs());
    }
    // Null and extreme fields compute unchecked; the next month goes through a byte.
    for (const LmDate& d : {LmDate::NullValue(), D(32767, 127, 127)}) {
        EXPECT_EQ(std::make_pair((d + 1) - d, d.daynxtmonth()),
                  std::make_pair((d + 1).dayabs() - d.dayabs(), D(d.year, d.month + 1, 1).dayabs() - d.dayabs()));
    }
}

TEST(CalendarTests, RealDatesAndMonthEnds) {
    const struct {
        Fields date;
        int isDate, next, last;
    } rows[] = {{{2000, 2, 29}, 1, 1, 1}, {{1900, 2, 29}, 0, 0, 0},  {{2000, 2, 31}, 0, -1, 0},
                {{2001, 4, 29}, 1, 2, 0}, {{2001, 0, 5}, 0, 27, 0},  {{2001, 13, 5}, 0, 27, 0},
                {{2001, 5, 0}, 0, 32, 0}, {{2001, -1, 5}, 0, 26, 0}, {{2001, 5, -1}, 0, 33, 0}};
    for (const auto& r : rows) {
        const auto [y, m, d] = r.date;
        EXPECT_EQ(std::make_tuple(D(y, m, d).IsDate(), D(y, m, d).daynxtmonth(), D(y, m, d).IsLastDayOfTheMonth()),
                  std::make_tuple(r.isDate, r.next, r.last))
            << y << "-" << m << "-" << d;
    }
    for (int y : {1900, 2000, 2001, 2004}) {
        for (int m = 1; m <= 12; ++m) {
            const int length = static_cast<int>(DaysFromCivil(y + m / 12, m % 12 + 1, 1) - DaysFromCivil(y, m, 1));
            EXPECT_EQ(std::make_tuple(D(y, m, length).IsLastDayOfTheMonth(), D(y, m, length + 1).IsDate()),
                      std::make_tuple(1, 0));
        }
    }
}

TEST(CalendarWeekday, ZellerAgainstTheAbsoluteDayForYears1To4599) {
    int64_t mismatches = 0;
    for (int64_t z = DaysFromCivil(1, 1, 1); z <= DaysFromCivil(4599, 12, 31); ++z) {
        const auto [y, m, d] = CivilFromDays(z);
        if (D(y, m, d).GetDayOfTheDate() != static_cast<int>((z + kJdnOfEpoch) % 7)) ++mismatches;
    }
    EXPECT_EQ(mismatches, 0);
    // 4600-03-01 (a Thursday) and its neighbours report Sunday: the sum turns negative.
    const std::pair<Fields, int> rows[] = {{{2024, 1, 1}, 0},  {{2026, 11, 14}, 5}, {{1970, 1, 1}, 3},
                                           {{4600, 2, 28}, 4}, {{4600, 3, 1}, 6},   {{4600, 3, 2}, 6}};
    for (const auto& [date, weekday] : rows) {
        LmDate d = D(std::get<0>(date), std::get<1>(date), std::get<2>(date));
        const int both[2] = {d.GetDayOfTheDate(), d.DayOfTheDate()};
        EXPECT_EQ(std::make_pair(both[0], both[1]), std::make_pair(weekday, weekday));
    }
    // The const overload names the day; the other gives its number.
    const LmDate monday = D(2024, 1, 1), sunday = D(2024, 1, 7);
    LmDate mutableMonday = monday;
    EXPECT_STREQ(monday.PrintDayOfTheDate().StrGet(), "Monday");
    EXPECT_STREQ(sunday.PrintDayOfTheDate().StrGet(), "Sunday");
    EXPECT_STREQ(mutableMonday.PrintDayOfTheDate().StrGet(), "0");
}

TEST(CalendarArithmetic, DaysThroughTheAbsoluteDay) {
    LmDate d = D(2001, 1, 31);
    EXPECT_EQ(Of(d += 1), Fields(2001, 2, 1));
    EXPECT_EQ(Of(d += 28), Fields(2001, 3, 1));
    EXPECT_EQ(Of(d -= 1), Fields(2001, 2, 28));
    EXPECT_EQ(Of(D(2001, 2, 30) + 0), Fields(2001, 3, 2));
    EXPECT_EQ(Of(++D(2000, 12, 31)), Fields(2001, 1, 1));
    EXPECT_EQ(Of(--D(2000, 3, 1)), Fields(2000, 2, 29));
    EXPECT_EQ(Of(D(2000, 3, 1) - 366), Fields(1999, 3, 1));
    EXPECT_EQ(std::make_pair(D(2001, 3, 1) - D(2000, 3, 1), D(1970, 1, 1) - D(2001, 9, 9)),
              std::make_pair(365, -11574));
    DateProbe p;
    const int rows[][4] = {{7, 3, 2, 1},   {-7, 3, -2, -1},          {7, -3, -2, -1},
                           {-7, -3, 2, 1}, {INT_MIN, 1, INT_MIN, 0}, {INT_MIN, 7, -306783378, -2},
                           {5, 0, 0, 0}};  // a zero divisor gives 0
    for (const auto& r : rows)
        EXPECT_EQ(std::make_pair(p.divide(r[0], r[1]), p.modulo(r[0], r[1])), std::make_pair(r[2], r[3])) << r[0];
}

TEST(CalendarCompare, OperatorsAndWildcards) {
    const LmDate a = D(2001, 7, 5), b = D(2001, 7, 8), c = D(2002, 1, 1), anyMonth = D(2001, -1, 5);
    EXPECT_EQ(std::make_tuple(a == a, a == b, a != b, b != a, c != a), std::make_tuple(1, 0, -3, 3, 1));
    EXPECT_EQ(std::make_tuple((a < b), (b < a), a <= a, (a > b), (c > b), a >= a), std::make_tuple(1, 0, 1, 0, 1, 1));
    EXPECT_EQ(std::make_tuple(D(-1, 5, 5) < D(0, 1, 1), anyMonth == a), std::make_tuple(1, 0));  // numbers only
    EXPECT_EQ(std::make_tuple(anyMonth.Compare(a, 0), anyMonth.Compare(a, 0x10), a.Compare(anyMonth, 0)),
              std::make_tuple(0, -8, 0));
    EXPECT_EQ(std::make_tuple(anyMonth.Compare(b, 0), D(-1, 3, -1).Compare(D(1999, 3, 31), 0)), std::make_tuple(-3, 0));
    EXPECT_EQ(std::make_tuple(D(2003, 3, 1).Compare(D(2001, 9, 9), 0), D(-1, 3, 1).Compare(D(2001, 9, 9), 0xFFEF)),
              std::make_tuple(2, -6));
    const LmTime t1 = T(10, 20, 30), t2 = T(10, 21, 0);
    EXPECT_EQ(std::make_tuple(t1 == t1, t1 == t2, t1 != t2, t2 != t1, (t1 < t2), t2 <= t1, (t2 > t1), t1 >= t1),
              std::make_tuple(1, 0, -1, 1, 1, 0, 1, 1));
    EXPECT_EQ(std::make_tuple(T(10, -1, 30).Compare(t1, 0), T(10, -1, 30).Compare(t1, 0x10),
                              T(10, -1, 31).Compare(t2, 0), T(-1, -1, -1).Compare(t2, 0)),
              std::make_tuple(0, -21, 31, 0));
}

TEST(TimeValue, SecondsFieldsAndTests) {
    EXPECT_EQ(std::make_tuple(Of(LmTime(86399)), Of(LmTime(90000)), LmTime(90000).IsTime()),
              std::make_tuple(Fields(23, 59, 59), Fields(25, 0, 0), 0));
    EXPECT_EQ(std::make_pair(Of(LmTime(-3661)), Of(LmTime(3600 * 200))),
              std::make_pair(Fields(-1, -1, -1), Fields(-56, 0, 0)));
    EXPECT_EQ(std::make_pair(static_cast<int>(T(12, 34, 56)), static_cast<int>(T(-1, 0, 0))),
              std::make_pair(45296, -3600));
    const std::pair<Fields, int> rows[] = {{{0, 0, 0}, 1},  {{23, 59, 59}, 1}, {{24, 0, 0}, 0}, {{0, 60, 0}, 0},
                                           {{0, 0, 60}, 0}, {{-1, 0, 0}, 0},   {{0, -1, 0}, 0}, {{0, 0, -1}, 0}};
    for (const auto& [t, isTime] : rows) EXPECT_EQ(T(std::get<0>(t), std::get<1>(t), std::get<2>(t)).IsTime(), isTime);
}

TEST(TimeValue, ArithmeticWrapsRoundMidnight) {
    const struct {
        Fields t;
        int n;
        Fields expected;
    } rows[] = {{{23, 59, 59}, 1, {0, 0, 0}},          {{0, 0, 0}, -1, {23, 59, 59}},
                {{12, 0, 0}, 3600 * 13, {1, 0, 0}},    {{10, 30, 30}, -45, {10, 29, 45}},
                {{0, 0, 0}, -86400, {24, 0, 0}},     // an hour of -24 before the last step stays 24
                {{0, 0, 0}, -86399, {24, 0, 1}},     // also when the carries bring it there
                {{0, 0, 0}, -172800, {24, 0, 0}},    // and -48
                {{0, 0, 0}, 3600 * 240, {8, 0, 0}},  // the hour wraps in 8 bits first
                {{10, 0, 0}, INT_MAX, {5, 14, 7}},     {{10, 0, 0}, INT_MIN, {14, 45, 52}},
                {{0, 0, 127}, 0, {0, 1, 67}},  // one carry per field, in bytes
                {{-128, -128, -128}, 0, {17, 67, -68}}};
    for (const auto& r : rows) {
        const LmTime t = T(std::get<0>(r.t), std::get<1>(r.t), std::get<2>(r.t));
        LmTime u = t;
        EXPECT_EQ(std::make_pair(Of(t + r.n), Of(u += r.n)), std::make_pair(r.expected, r.expected)) << r.n;
    }
    // Against the seconds of the day: right, but for the hour 24 of the rule above.
    for (int start = 0; start < 86400; start += 997) {
        for (int n = -3 * 86400; n <= 3 * 86400; n += 7919) {
            const LmTime t(start), got = t + n;
            EXPECT_EQ(static_cast<int>(got) - (got.hour == 24 ? 86400 : 0), ((start + n) % 86400 + 86400) % 86400);
            EXPECT_EQ(Of(t - n), Of(t + -n));
        }
    }
    LmTime t = T(0, 0, 0);
    EXPECT_EQ(Of(--t), Fields(23, 59, 59));
    EXPECT_EQ(Of(++t), Fields(0, 0, 0));
    EXPECT_EQ(Of(t -= 61), Fields(23, 58, 59));
    EXPECT_EQ(Of(T(1, 0, 0) - T(2, 30, 0)), Fields(22, 30, 0));  // a time of day, wrapped
    EXPECT_EQ(Of(T(0, 0, 0) - INT_MIN), Of(T(0, 0, 0) + INT_MIN));
}

TEST(CalendarClock, TodayNowAndZonesPinned) {
    bksPinClock(1000000000, 0);  // 2001-09-09 01:46:40 UTC
    bksPinTimeZone(120);
    LmDate d = D(1, 1, 1);
    LmTime t = T(0, 0, 0);
    EXPECT_EQ(std::make_tuple(Of(LmDate()), Of(LmTime()), Of(d.Today()), Of(t.Now())),
              std::make_tuple(Fields(2001, 9, 9), Fields(3, 46, 40), Fields(2001, 9, 9), Fields(3, 46, 40)));
    EXPECT_EQ(Of(t.NowUTC()), Fields(1, 46, 40));
    LmInt64 ms(-1);
    bksPinClock(-1, 999999999);  // 1969-12-31 23:59:59.999 UTC: -1 s and 999 ms
    EXPECT_EQ(GetSystemTimeInMSSinceTheEpoch(ms), 0);
    EXPECT_EQ(ms.Get8b(), -1LL);
    bksPinClock(4102444800LL, 5000000);  // 2100-01-01 00:00:00.005 UTC, past 32 bits of ms
    GetSystemTimeInMSSinceTheEpoch(ms);
    EXPECT_EQ(ms.Get8b(), 4102444800005LL);
    bksPinClock(1000000000, 0);
    EXPECT_EQ(After(t.ToLocalTime(), t), std::make_pair(0, Fields(3, 46, 40)));
    EXPECT_EQ(After(t.ToUTCTime(), t), std::make_pair(0, Fields(1, 46, 40)));
    bksPinTimeZone(-300);
    EXPECT_EQ(Of(LmDate()), Fields(2001, 9, 8));
    EXPECT_EQ(After(t.ToLocalTime(), t), std::make_pair(0, Fields(20, 46, 40)));
    bksPinTimeZone(LMBASE_NO_TIMEZONE);
    EXPECT_EQ(After(t.ToLocalTime(), t), std::make_pair(LM_ERR_NO_TIMEZONE, Fields(20, 46, 40)));
    EXPECT_EQ(After(t.ToUTCTime(), t), std::make_pair(LM_ERR_NO_TIMEZONE, Fields(20, 46, 40)));
    bksPinTimeZone(INT_MAX);  // any offset shifts without overflow: INT_MAX * 60 wraps to -60
    EXPECT_EQ(After(t.ToLocalTime(), t), std::make_pair(0, Fields(20, 45, 40)));
    EXPECT_EQ(After(t.ToUTCTime(), t), std::make_pair(0, Fields(20, 46, 40)));
    bksUnpinClock();
    bksUnpinTimeZone();
}

}  // namespace
