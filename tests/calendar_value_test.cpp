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

template <typename T>
Bytes Image(const T& v) {
    unsigned char b[sizeof(T)];
    std::memcpy(b, &v, sizeof b);
    return Bytes(b, b + sizeof b);
}

using Ymd = std::tuple<int, int, int>;
Ymd Of(const LmDate& d) { return {d.year, d.month, d.day}; }
using Hms = std::tuple<int, int, int>;
Hms Of(const LmTime& t) { return {t.hour, t.minute, t.second}; }

// The oracle: days from 1970-01-01 to a civil date and back, by eras of 400 years
// (the well-known public-domain algorithm), in 64 bits.
int64_t DaysFromCivil(int64_t y, int m, int d) {
    y -= m <= 2;
    const int64_t era = (y >= 0 ? y : y - 399) / 400;
    const int64_t yoe = y - era * 400;
    const int64_t doy = (153 * (m > 2 ? m - 3 : m + 9) + 2) / 5 + d - 1;
    const int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 719468;
}

Ymd CivilFromDays(int64_t z) {
    z += 719468;
    const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
    const int64_t doe = z - era * 146097;
    const int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const int64_t mp = (5 * doy + 2) / 153;
    const int d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
    const int m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
    return {static_cast<int>(yoe + era * 400 + (m <= 2)), m, d};
}

constexpr int64_t kJdnOfEpoch = 2440588;  // 1970-01-01

class PinnedClock : public ::testing::Test {
protected:
    // 2001-09-09 01:46:40 UTC, two hours east: 03:46:40 local.
    void SetUp() override {
        bksPinClock(1000000000, 0);
        bksPinTimeZone(120);
    }
    void TearDown() override {
        bksUnpinClock();
        bksUnpinTimeZone();
    }
};

// Reaches the protected helpers.
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

    LmDate d(2001, 2, 3);
    EXPECT_EQ(std::make_tuple(d.IsNullValue(), d.IsDefaultValue(), d.IsZeroValue()), std::make_tuple(0, 0, 0));
    EXPECT_EQ(d.SetNullValue(), 0);
    EXPECT_EQ(std::make_tuple(d.IsNullValue(), d.IsDefaultValue()), std::make_tuple(1, 0));
    EXPECT_EQ(d.SetDefaultValue(), 0);
    EXPECT_EQ(std::make_tuple(d.IsDefaultValue(), d.dayabs()), std::make_tuple(1, 0));
    EXPECT_EQ(d.SetZeroValue(), 0);
    EXPECT_EQ(std::make_tuple(d.IsZeroValue(), static_cast<int>(d)), std::make_tuple(1, 1721060));
    EXPECT_EQ(LmDate(0), LmDate::DefaultValue());

    LmTime t(1, 2, 3);
    EXPECT_EQ(std::make_tuple(t.IsNullValue(), t.IsDefaultValue(), t.IsZeroValue()), std::make_tuple(0, 0, 0));
    EXPECT_EQ(t.SetNullValue(), 0);
    EXPECT_EQ(Of(t), Hms(-128, -128, -128));
    EXPECT_EQ(t.IsNullValue(), 1);
    EXPECT_EQ(t.SetZeroValue(), 0);
    // Midnight is the default and the zero time at once.
    EXPECT_EQ(std::make_tuple(t.IsNullValue(), t.IsDefaultValue(), t.IsZeroValue()), std::make_tuple(0, 1, 1));
    t = LmTime(5, 0, 0);
    EXPECT_EQ(t.SetDefaultValue(), 0);
    EXPECT_EQ(Of(t), Hms(0, 0, 0));
}

TEST(CalendarAbsoluteDays, EveryDayFromMinus4713To9999BothWays) {
    const int64_t first = DaysFromCivil(-4713, 1, 1), last = DaysFromCivil(9999, 12, 31);
    int64_t mismatches = 0;
    for (int64_t z = first; z <= last; ++z) {
        const auto [y, m, d] = CivilFromDays(z);
        const int jdn = static_cast<int>(z + kJdnOfEpoch);
        const LmDate date(static_cast<short>(y), static_cast<char>(m), static_cast<char>(d));
        const LmDate back(jdn);
        if (date.dayabs() != jdn || Of(back) != Ymd(y, m, d)) ++mismatches;
        // Each civil day is a date; the day behind the month's last is not.
        if (date.IsDate() != 1) ++mismatches;
    }
    EXPECT_EQ(mismatches, 0);
    EXPECT_EQ(DaysFromCivil(1970, 1, 1), 0);  // the oracle's own origin
}

TEST(CalendarAbsoluteDays, FixedPointsAndTheEdgesOfExactness) {
    const struct {
        Ymd date;
        int jdn;
    } rows[] = {
        {{-4713, 11, 24}, 0},        {{0, 1, 1}, 1721060},        {{1970, 1, 1}, 2440588},
        {{-4900, 3, 1}, -68569},     {{32767, 12, 31}, 13689325}, {{2000, 2, 29}, 2451604},
        {{-32768, 1, 1}, -10247207}, {{2000, 13, 1}, 2451911},  // month 13 is next January
    };
    for (const auto& r : rows) {
        const auto [y, m, d] = r.date;
        EXPECT_EQ(LmDate(static_cast<short>(y), static_cast<char>(m), static_cast<char>(d)).dayabs(), r.jdn);
    }
    EXPECT_EQ(Of(LmDate(2451911)), Ymd(2001, 1, 1));
    EXPECT_EQ(Of(LmDate(-68569)), Ymd(-4900, 3, 1));
    EXPECT_EQ(Of(LmDate(13689325)), Ymd(32767, 12, 31));
    // Below -68569 the truncating divisions give fields that are no calendar date.
    EXPECT_EQ(Of(LmDate(-68570)), Ymd(-4900, 2, 30));
    // Past the 16-bit year the year wraps; nothing is clamped.
    EXPECT_EQ(Of(LmDate(13689326)), Ymd(-32768, 1, 1));
    // The extremes of the argument wrap in 32 bits as the stored values did, without
    // undefined behaviour (the sanitizer build checks it).
    for (int j : {INT_MIN, INT_MIN + 1, -536870912, 536870911, 536801000, INT_MAX - 68569, INT_MAX}) {
        LmDate d(j);
        d += INT_MAX;
        d -= INT_MAX;
        ++d;
        --d;
        EXPECT_EQ((d + INT_MIN) - d, (d + INT_MIN).dayabs() - d.dayabs());
    }
    // The plain path of dateabs and the wrapping one agree wherever both apply.
    DateProbe probe;
    for (int j : {-499999999, -123456789, -68570, -1, 0, 1721060, 2440588, 13689326, 123456789, 499999999}) {
        EXPECT_EQ(Of(probe.DateAbsWrapping(j)), Of(LmDate(j))) << j;
    }
    EXPECT_EQ(Of(LmDate(500000000)), Of(probe.DateAbsWrapping(500000000)));
    // Null and the extreme fields compute without a check and without overflow.
    for (const LmDate& d : {LmDate::NullValue(), LmDate(32767, 127, 127), LmDate(-32768, -128, -128)}) {
        LmDate e = d + 1;
        e.daynxtmonth();
        e.GetDayOfTheDate();
        EXPECT_EQ(e - d, (d + 1).dayabs() - d.dayabs());
    }
}

TEST(CalendarTests, RealDatesAndMonthEnds) {
    const struct {
        Ymd date;
        int isDate, next, last;
    } rows[] = {
        {{2000, 2, 29}, 1, 1, 1},  {{1900, 2, 29}, 0, 0, 0},  {{2000, 2, 30}, 0, -0, 0}, {{2000, 2, 31}, 0, -1, 0},
        {{2001, 1, 31}, 1, 1, 1},  {{2001, 4, 30}, 1, 1, 1},  {{2001, 4, 29}, 1, 2, 0},  {{2001, 12, 31}, 1, 1, 1},
        {{2001, 0, 5}, 0, 27, 0},  {{2001, 13, 5}, 0, 27, 0}, {{2001, 5, 0}, 0, 32, 0},  {{2001, 5, 32}, 0, 0, 0},
        {{2001, -1, 5}, 0, 26, 0}, {{2001, 5, -1}, 0, 33, 0}, {{-4, 2, 29}, 1, 1, 1},
    };
    for (const auto& r : rows) {
        const auto [y, m, d] = r.date;
        const LmDate date(static_cast<short>(y), static_cast<char>(m), static_cast<char>(d));
        SCOPED_TRACE(::testing::Message() << y << "-" << m << "-" << d);
        EXPECT_EQ(date.IsDate(), r.isDate);
        EXPECT_EQ(date.daynxtmonth(), r.next);
        EXPECT_EQ(date.IsLastDayOfTheMonth(), r.last);
    }
    // The day behind each month's last is refused, in common and leap years.
    for (int y : {1900, 2000, 2001, 2004}) {
        for (int m = 1; m <= 12; ++m) {
            const int64_t next = m == 12 ? DaysFromCivil(y + 1, 1, 1) : DaysFromCivil(y, m + 1, 1);
            const auto length = static_cast<char>(next - DaysFromCivil(y, m, 1));
            EXPECT_EQ(LmDate(static_cast<short>(y), static_cast<char>(m), length).IsLastDayOfTheMonth(), 1);
            EXPECT_EQ(LmDate(static_cast<short>(y), static_cast<char>(m), static_cast<char>(length + 1)).IsDate(), 0);
        }
    }
}

TEST(CalendarWeekday, ZellerAgainstTheAbsoluteDayForYears1To4599) {
    const int64_t first = DaysFromCivil(1, 1, 1), last = DaysFromCivil(4599, 12, 31);
    int64_t mismatches = 0;
    for (int64_t z = first; z <= last; ++z) {
        const auto [y, m, d] = CivilFromDays(z);
        const LmDate date(static_cast<short>(y), static_cast<char>(m), static_cast<char>(d));
        // Absolute day 0 was a Monday.
        if (date.GetDayOfTheDate() != static_cast<int>((z + kJdnOfEpoch) % 7)) ++mismatches;
    }
    EXPECT_EQ(mismatches, 0);

    const struct {
        Ymd date;
        int weekday;
    } rows[] = {
        {{2024, 1, 1}, 0},  {{2026, 11, 14}, 5}, {{1970, 1, 1}, 3},
        {{2000, 2, 29}, 1}, {{4600, 3, 1}, 6},  // Sunday whatever the calendar says (it is a Thursday)
        {{4600, 3, 2}, 6},  {{9999, 12, 31}, 4}, {{4600, 2, 28}, 4},
    };
    for (const auto& r : rows) {
        const auto [y, m, d] = r.date;
        LmDate date(static_cast<short>(y), static_cast<char>(m), static_cast<char>(d));
        EXPECT_EQ(date.GetDayOfTheDate(), r.weekday) << y << "-" << m << "-" << d;
        EXPECT_EQ(date.DayOfTheDate(), r.weekday);
    }
    // The const overload names the day; the other gives its number.
    const LmDate monday(2024, 1, 1);
    LmDate mutableMonday(2024, 1, 1);
    EXPECT_STREQ(monday.PrintDayOfTheDate().StrGet(), "Monday");
    EXPECT_STREQ(mutableMonday.PrintDayOfTheDate().StrGet(), "0");
    const LmDate sunday(2024, 1, 7);
    EXPECT_STREQ(sunday.PrintDayOfTheDate().StrGet(), "Sunday");
}

TEST(CalendarArithmetic, DaysThroughTheAbsoluteDay) {
    LmDate d(2001, 1, 31);
    d += 1;
    EXPECT_EQ(Of(d), Ymd(2001, 2, 1));
    d += 28;
    EXPECT_EQ(Of(d), Ymd(2001, 3, 1));
    d -= 1;
    EXPECT_EQ(Of(d), Ymd(2001, 2, 28));
    EXPECT_EQ(Of(LmDate(2001, 2, 30) + 0), Ymd(2001, 3, 2));
    EXPECT_EQ(Of(++LmDate(2000, 12, 31)), Ymd(2001, 1, 1));
    EXPECT_EQ(Of(--LmDate(2000, 3, 1)), Ymd(2000, 2, 29));
    EXPECT_EQ(Of(LmDate(2000, 3, 1) - 366), Ymd(1999, 3, 1));
    EXPECT_EQ(LmDate(2001, 3, 1) - LmDate(2000, 3, 1), 365);
    EXPECT_EQ(LmDate(1970, 1, 1) - LmDate(2001, 9, 9), -11574);

    DateProbe p;
    const struct {
        int a, b, q, r;
    } rows[] = {{7, 3, 2, 1},
                {-7, 3, -2, -1},
                {7, -3, -2, -1},
                {-7, -3, 2, 1},
                {0, 5, 0, 0},
                {INT_MIN, 1, INT_MIN, 0},
                {INT_MIN, 7, -306783378, -2},
                {5, 0, 0, 0}};
    for (const auto& r : rows) {
        EXPECT_EQ(p.divide(r.a, r.b), r.q) << r.a << "/" << r.b;
        EXPECT_EQ(p.modulo(r.a, r.b), r.r) << r.a << "%" << r.b;
    }
}

TEST(CalendarCompare, OperatorsAndWildcards) {
    const LmDate a(2001, 7, 5), b(2001, 7, 8), c(2002, 1, 1);
    EXPECT_EQ(std::make_tuple(a == a, a == b, a != b, b != a, c != a), std::make_tuple(1, 0, -3, 3, 1));
    EXPECT_EQ(std::make_tuple(a<b, b<a, a <= a, a> b, c> b, a >= a), std::make_tuple(1, 0, 1, 0, 1, 1));
    EXPECT_EQ(std::make_tuple(LmDate(-1, 5, 5) < LmDate(0, 1, 1), LmDate(5, -1, 1) < LmDate(5, 1, 1)),
              std::make_tuple(1, 1));
    const LmDate anyMonth(2001, -1, 5);
    EXPECT_EQ(anyMonth.Compare(a, 0), 0);
    EXPECT_EQ(anyMonth.Compare(a, 0x10), -8);
    EXPECT_EQ(a.Compare(anyMonth, 0), 0);  // either side's wildcard counts in memory
    EXPECT_EQ(anyMonth.Compare(b, 0), -3);
    EXPECT_EQ(LmDate(-1, 3, -1).Compare(LmDate(1999, 3, 31), 0), 0);  // the last field skipped
    EXPECT_EQ(LmDate(2003, 3, 1).Compare(LmDate(2001, 9, 9), 0), 2);
    EXPECT_EQ(LmDate(-1, 3, 1).Compare(LmDate(2001, 9, 9), 0xFFEF), -6);  // bit 0x10 only decides
    EXPECT_EQ(anyMonth == LmDate(2001, 7, 5), 0);                         // operators compare numbers

    const LmTime t1(10, 20, 30), t2(10, 21, 0);
    EXPECT_EQ(std::make_tuple(t1 == t1, t1 != t2, t2 != t1, t1<t2, t2 <= t1, t2> t1, t1 >= t1),
              std::make_tuple(1, -1, 1, 1, 0, 1, 1));
    EXPECT_EQ(LmTime(10, -1, 30).Compare(t1, 0), 0);
    EXPECT_EQ(LmTime(10, -1, 30).Compare(t1, 0x10), -21);
    EXPECT_EQ(LmTime(10, -1, 31).Compare(t2, 0), 31);
    EXPECT_EQ(LmTime(-1, -1, -1).Compare(t2, 0), 0);
}

TEST(TimeValue, SecondsFieldsAndTests) {
    EXPECT_EQ(Of(LmTime(86399)), Hms(23, 59, 59));
    const LmTime late(90000);
    EXPECT_EQ(Of(late), Hms(25, 0, 0));
    EXPECT_EQ(late.IsTime(), 0);
    EXPECT_EQ(Of(LmTime(-3661)), Hms(-1, -1, -1));
    EXPECT_EQ(Of(LmTime(3600 * 200)), Hms(-56, 0, 0));  // cut to the byte, no reduction
    EXPECT_EQ(static_cast<int>(LmTime(12, 34, 56)), 45296);
    EXPECT_EQ(static_cast<int>(LmTime(-1, 0, 0)), -3600);
    EXPECT_EQ(static_cast<int>(LmTime::NullValue()), (-128 * 60 - 128) * 60 - 128);
    const struct {
        Hms t;
        int isTime;
    } rows[] = {{{0, 0, 0}, 1},  {{23, 59, 59}, 1}, {{24, 0, 0}, 0}, {{0, 60, 0}, 0},
                {{0, 0, 60}, 0}, {{-1, 0, 0}, 0},   {{0, -1, 0}, 0}, {{0, 0, -1}, 0}};
    for (const auto& r : rows) {
        const auto [h, m, s] = r.t;
        EXPECT_EQ(LmTime(static_cast<char>(h), static_cast<char>(m), static_cast<char>(s)).IsTime(), r.isTime);
    }
}

TEST(TimeValue, ArithmeticWrapsRoundMidnight) {
    const struct {
        Hms t;
        int n;
        Hms expected;
    } rows[] = {
        {{23, 59, 59}, 1, {0, 0, 0}},        {{0, 0, 0}, -1, {23, 59, 59}},     {{12, 0, 0}, 3600 * 13, {1, 0, 0}},
        {{0, 0, 0}, -86400, {24, 0, 0}},     // an hour of -24 before the last step stays 24
        {{0, 0, 0}, -86399, {24, 0, 1}},     // so does one that the carries bring to -24
        {{0, 0, 0}, -172800, {24, 0, 0}},    // and -48
        {{0, 0, 0}, 3600 * 240, {8, 0, 0}},  // the hour wraps in 8 bits first
        {{10, 30, 30}, 45, {10, 31, 15}},    {{10, 30, 30}, -45, {10, 29, 45}}, {{10, 0, 0}, INT_MAX, {5, 14, 7}},
        {{10, 0, 0}, INT_MIN, {14, 45, 52}},
    };
    for (const auto& r : rows) {
        const auto [h, m, s] = r.t;
        const LmTime t(static_cast<char>(h), static_cast<char>(m), static_cast<char>(s));
        EXPECT_EQ(Of(t + r.n), r.expected) << h << ":" << m << ":" << s << " + " << r.n;
        LmTime u(t);
        u += r.n;
        EXPECT_EQ(Of(u), r.expected);
    }
    // Against the seconds of the day: right, but for the hour 24 of the rule above.
    for (int start = 0; start < 86400; start += 997) {
        for (int n = -3 * 86400; n <= 3 * 86400; n += 7919) {
            const LmTime t(start);
            const int want = ((start + n) % 86400 + 86400) % 86400;
            const LmTime got = t + n;
            const int seconds = static_cast<int>(got) - (got.hour == 24 ? 86400 : 0);
            EXPECT_EQ(seconds, want) << start << " + " << n;
            EXPECT_EQ(got.IsTime() || got.hour == 24, true);
            EXPECT_EQ(Of(t - n), Of(t + -n));
        }
    }
    LmTime t(0, 0, 0);
    EXPECT_EQ(Of(--t), Hms(23, 59, 59));
    EXPECT_EQ(Of(++t), Hms(0, 0, 0));
    t -= 61;
    EXPECT_EQ(Of(t), Hms(23, 58, 59));
    // The difference is a time of day, wrapped.
    EXPECT_EQ(Of(LmTime(1, 0, 0) - LmTime(2, 30, 0)), Hms(22, 30, 0));
    EXPECT_EQ(Of(LmTime(0, 0, 0) - INT_MIN), Of(LmTime(0, 0, 0) + INT_MIN));
    // Fields out of range move as bytes, one carry each.
    EXPECT_EQ(Of(LmTime(0, 0, 127) + 0), Hms(0, 1, 67));
    EXPECT_EQ(Of(LmTime(-128, -128, -128) + 0), Hms(17, 67, -68));
}

TEST_F(PinnedClock, TodayNowAndZones) {
    LmDate d;
    EXPECT_EQ(Of(d), Ymd(2001, 9, 9));
    LmTime t;
    EXPECT_EQ(Of(t), Hms(3, 46, 40));
    d = LmDate(1, 1, 1);
    EXPECT_EQ(Of(d.Today()), Ymd(2001, 9, 9));
    t = LmTime(0, 0, 0);
    EXPECT_EQ(Of(t.Now()), Hms(3, 46, 40));
    EXPECT_EQ(Of(t.NowUTC()), Hms(1, 46, 40));
    EXPECT_EQ(t.ToLocalTime(), 0);
    EXPECT_EQ(Of(t), Hms(3, 46, 40));
    EXPECT_EQ(t.ToUTCTime(), 0);
    EXPECT_EQ(Of(t), Hms(1, 46, 40));
    bksPinTimeZone(-300);
    EXPECT_EQ(Of(LmDate()), Ymd(2001, 9, 8));
    EXPECT_EQ(t.ToLocalTime(), 0);
    EXPECT_EQ(Of(t), Hms(20, 46, 40));
    bksPinTimeZone(LMBASE_NO_TIMEZONE);
    EXPECT_EQ(t.ToLocalTime(), LM_ERR_NO_TIMEZONE);
    EXPECT_EQ(t.ToUTCTime(), LM_ERR_NO_TIMEZONE);
    EXPECT_EQ(Of(t), Hms(20, 46, 40));
    // An offset of any size shifts without overflow.
    bksPinTimeZone(INT_MAX);
    EXPECT_EQ(t.ToLocalTime(), 0);
    EXPECT_EQ(t.ToUTCTime(), 0);
    EXPECT_EQ(Of(t), Hms(20, 46, 40));
}

}  // namespace
