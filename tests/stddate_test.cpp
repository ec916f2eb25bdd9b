// The standard date and time family: the historical calendar of d_Date against
// integer Julian Day Numbers of both calendars, the time and zone arithmetic, the
// intervals, overlaps, and ids 22 to 25 through the type manager (golden disk images
// and hashes, one-sided disk comparisons, text, conversions, defaults, stepping).
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <tuple>
#include <vector>

#include "lumotypes.h"

namespace {

using Fields = std::tuple<int, int, int>;
using TimeFields = std::tuple<int, int, int, int, int, int>;
using Bytes = std::vector<unsigned>;

Fields Of(const d_Date& d) { return {d.year(), d.month(), d.day()}; }
TimeFields Of(const d_Time& t) {
    const auto& f = t.fields;
    return {f.tz_hour, f.tz_minute, f.hour, f.minute, f.second, f.hundredth};
}
Bytes Of(const void* p, size_t n) {
    return Bytes(static_cast<const unsigned char*>(p), static_cast<const unsigned char*>(p) + n);
}
d_Time Raw(int tzh, int tzm, int h, int m, int s, int hundredth) {
    d_Time t(0);
    t.fields = {static_cast<int8_t>(tzh), static_cast<int8_t>(tzm), static_cast<int8_t>(h),
                static_cast<int8_t>(m),   static_cast<int8_t>(s),   static_cast<int8_t>(hundredth)};
    return t;
}

// ---- The oracle: Julian Day Numbers by the textbook integer formulas. ----
int64_t Jdn(int y, int m, int d, bool gregorian) {
    const int a = (14 - m) / 12;
    const int64_t yy = y + 4800 - a, mm = m + 12 * a - 3;
    const int64_t common = d + (153 * mm + 2) / 5 + 365 * yy + yy / 4;
    return gregorian ? common - yy / 100 + yy / 400 - 32045 : common - 32083;
}
int MonthLength(int y, int m, bool gregorian) {
    static const int kLength[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (y % 4 == 0) && (!gregorian || y % 100 != 0 || y % 400 == 0);
    return m == 2 && leap ? 29 : kLength[m - 1];
}

class StdDate : public ::testing::Test {
protected:
    void SetUp() override {  // 2001-09-09 01:46:40 UTC, two hours east: 03:46:40 local
        bksPinClock(1000000000, 0);
        bksPinTimeZone(120);
        d_Time::set_default_Time_Zone(d_Time::GMT);
    }
    void TearDown() override {
        d_Time::set_default_Time_Zone(d_Time::GMT);
        bksUnpinClock();
        bksUnpinTimeZone();
    }
    LmTypeMgr mgr;
};

// Every day from -4712-01-01 to 4000-12-31, Julian up to 1582-10-04 and Gregorian from
// 1582-10-15. The absolute day is the Julian Day Number less one, except before year 1
// where the truncation towards zero of Y * 365.25 (Y the year, less one in January and
// February) adds one when Y is negative and not a multiple of 4. Weekdays follow the
// absolute day; setAbsDate is reached through the day-of-year constructor.
TEST_F(StdDate, HistoricalCalendarAgainstJulianDayNumbers) {
    const d_Date ref(2000, 1, 1);  // absolute day 2451544
    std::vector<Fields> byJdn;
    struct Day {
        int y, m, d, doy;
        int64_t jdn;
    };
    std::vector<Day> days;
    for (int y = -4712; y <= 4000; ++y) {
        int doy = 0;
        for (int m = 1; m <= 12; ++m) {
            for (int d = 1; d <= MonthLength(y, m, y > 1582 || (y == 1582 && m > 10)); ++d) {
                if (y == 1582 && m == 10 && d > 4 && d < 15) continue;
                const bool gregorian = y > 1582 || (y == 1582 && (m > 10 || (m == 10 && d >= 15)));
                const int64_t jdn = Jdn(y, m, d, gregorian);
                ASSERT_EQ(jdn, static_cast<int64_t>(byJdn.size()));  // the oracle counts every day once
                byJdn.emplace_back(y, m, d);
                days.push_back({y, m, d, ++doy, jdn});
            }
        }
    }
    const auto off = [](int y, int m) {
        const int Y = m > 2 ? y : y - 1;
        return Y < 0 && Y % 4 != 0 ? 1 : 0;
    };
    int failures = 0;
    for (const Day& x : days) {
        const d_Date date(static_cast<short>(x.y), static_cast<unsigned short>(x.m), static_cast<unsigned short>(x.d));
        const int64_t abs = (date != ref) + 2451544;
        const int64_t fromDoy = Jdn(x.y, 1, 1, x.y > 1582) + off(x.y, 1) + x.doy - 1;
        const bool ok = abs == x.jdn - 1 + off(x.y, x.m) && date.day_of_week() == (x.jdn + 1 + off(x.y, x.m)) % 7 &&
                        Of(d_Date(static_cast<short>(x.y), static_cast<unsigned short>(x.doy))) == byJdn[fromDoy];
        if (!ok && ++failures < 5) ADD_FAILURE() << x.y << "-" << x.m << "-" << x.d;
    }
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(d_Date(1, 1, 1).day_of_week(), d_Date::Saturday);  // JDN 1721424, an independent weekday
}

TEST_F(StdDate, CalendarSwitchLeapRuleAndWeekdays) {
    d_Date d(1582, 10, 4);
    EXPECT_EQ(Of(++d), Fields(1582, 10, 15));
    EXPECT_EQ(d.day_of_week(), d_Date::Friday);
    EXPECT_EQ(Of(d_Date(1582, 10, 4) + d_Interval(1)), Fields(1582, 10, 15));
    EXPECT_EQ(Of(d_Date(1582, 10, 15) - d_Interval(1, 23)), Fields(1582, 10, 4));  // 47 hours: one whole day
    EXPECT_EQ(d_Date(1582, 10, 5) != d_Date(1582, 10, 15), 0);  // the missing days are taken without complaint
    EXPECT_EQ(d_Date(1582, 10, 14) != d_Date(1582, 10, 15), 9);
    d_Date zero(0, 1, 1);
    EXPECT_EQ(Of(zero += d_Interval()), Fields(0, 1, 2));  // inexact before year 1
    const std::tuple<short, unsigned short, int> lengths[] = {{1500, 2, 29}, {1700, 2, 28}, {2000, 2, 29},
                                                              {1900, 2, 28}, {2023, 4, 30}, {2023, 12, 31},
                                                              {2023, 0, 0},  {2023, 13, 0}};
    for (const auto& [y, m, n] : lengths) EXPECT_EQ(d_Date::days_in_month(y, m), n) << y << "-" << m;
    EXPECT_EQ(d_Date(1500, 2, 29).days_in_month(), 29);
    EXPECT_EQ(d_Date(2026, 11, 14).day_of_week(), 6);
    EXPECT_EQ(d_Date(2000, 1, 1).day_of_week(), 6);
    EXPECT_EQ(d_Date(2000, 3, 1).day_of_year(), 61);
    EXPECT_EQ(Of(d_Date(2000, 60)), Fields(2000, 2, 29));
    EXPECT_EQ(Of(d_Date(2026, 11, 14).next(d_Date::Saturday)), Fields(2026, 11, 21));
    EXPECT_EQ(Of(d_Date(2026, 11, 14).next(d_Date::Monday)), Fields(2026, 11, 16));
    EXPECT_EQ(Of(d_Date(2026, 11, 14).previous(d_Date::Saturday)), Fields(2026, 11, 7));
    EXPECT_EQ(Of(d_Date(2026, 11, 14).previous(d_Date::Friday)), Fields(2026, 11, 13));
    d_Date p(2001, 3, 1);
    EXPECT_EQ(Of(p--), Fields(2001, 3, 1));
    EXPECT_EQ(Of(p++), Fields(2001, 2, 28));
    EXPECT_EQ(Of(p), Fields(2001, 3, 1));
    EXPECT_EQ(Of(d_Date(2001, 300, 77)), Fields(2001, 44, 77));    // fields cut to their bytes, unchecked
    EXPECT_EQ(Of(++d_Date(32767, 12, 31)), Fields(-32768, 1, 1));  // the year is cut to 16 bits
    EXPECT_EQ(std::make_tuple(d_Date(2001, 2, 3) < d_Date(2001, 2, 4), d_Date(2001, 2, 3) >= d_Date(2001, 2, 4),
                              d_Date(2001, 2, 3) == d_Date(2001, 2, 3)),
              std::make_tuple(1, 0, 1));
    // Days of an interval are its count / 86400 in float, truncated; NaN and 1e30 are -2147483648 days.
    EXPECT_EQ(Of(d_Date(2001, 3, 1) - d_Interval(0, 47, 0, 59.0f)), Fields(2001, 2, 28));
    d_Date nan(2001, 3, 1), huge(2001, 3, 1), inf(2001, 3, 1), min(2001, 3, 1);
    nan += d_Interval::FromSeconds(NAN);
    huge += d_Interval::FromSeconds(1e30f);
    inf -= d_Interval::FromSeconds(-INFINITY);
    min += d_Interval(INT_MIN / 86400 - 1);
    EXPECT_TRUE(Of(nan) == Of(huge) && Of(huge) == Of(inf) && Of(inf) != Of(min));
}

TEST_F(StdDate, TimeFieldsZonesAndOrder) {
    d_Time::set_default_Time_Zone(d_Time::GMT2);
    EXPECT_EQ(Of(d_Time(13, 0, 0.0f)), TimeFields(2, 0, 15, 0, 0, 0));
    EXPECT_EQ(Of(d_Time(13, 0, 0.0f) + d_Interval()), TimeFields(2, 0, 17, 0, 0, 0));
    d_Time t(13, 0, 0.0f);
    EXPECT_EQ(Of(t += d_Interval()), TimeFields(2, 0, 15, 0, 0, 0));
    EXPECT_EQ(Of(d_Time(-1)), TimeFields(2, 0, 25, 59, 59, 0));   // 23:59:59, the zone added
    EXPECT_EQ(Of(d_Time(90000)), TimeFields(2, 0, 27, 0, 0, 0));  // a positive count is not reduced
    EXPECT_EQ(Of(d_Time(3660)), TimeFields(2, 0, 3, 1, 0, 0));
    EXPECT_EQ(Of(d_Time(INT_MIN)), TimeFields(2, 0, 22, 45, 52, 0));  // 24856 days brought in: 20:45:52
    EXPECT_EQ(Of(d_Time(10, 30, 5.5f, -5, -30)), TimeFields(-5, -30, 5, 0, 5, 50));
    EXPECT_EQ(std::make_tuple(t.hour(), t.minute(), t.tz_hour()), std::make_tuple(13, 0, 2));
    t = LmTime(13, 5, 9);  // copied as they are: the zone is not added
    EXPECT_EQ(Of(t), TimeFields(2, 0, 13, 5, 9, 0));
    EXPECT_EQ(Of(d_Time(LmTime(13, 5, 9))), TimeFields(2, 0, 15, 5, 9, 0));
    const LmDateTime when(2001, 2, 3, 13, 5, 9);  // the constructors add the zone, the assignments do not
    d_Timestamp both;
    both = when;
    EXPECT_EQ(std::make_tuple(Of(d_Date(when)), Of(d_Time(when)), Of(both.date()), Of(both.time())),
              std::make_tuple(Fields(2001, 2, 3), TimeFields(2, 0, 15, 5, 9, 0), Fields(2001, 2, 3),
                              TimeFields(2, 0, 13, 5, 9, 0)));
    d_Date fromDateTime(1, 1, 1);
    EXPECT_EQ(Of(fromDateTime = when), Fields(2001, 2, 3));
    EXPECT_EQ(Of(t = when), TimeFields(2, 0, 13, 5, 9, 0));
    d_Time::set_default_Time_Zone(static_cast<d_Time::Time_Zone>(0x1FD));  // read as its low byte
    EXPECT_EQ(d_Time::default_Time_Zone(), d_Time::GMT_3);
    bksPinTimeZone(-330);  // -5:30: -19800 seconds, whole hours truncated
    d_Time::set_default_Time_Zone_to_local();
    EXPECT_EQ(d_Time::default_Time_Zone(), d_Time::GMT_5);
    bksPinTimeZone(180);
    d_Time::set_default_Time_Zone_to_local();
    EXPECT_EQ(d_Time::default_Time_Zone(), d_Time::GMT3);
    bksPinTimeZone(-330);
    d_Time::set_default_Time_Zone_to_local();
    bksPinTimeZone(0);  // a zone of 0 leaves the default
    d_Time::set_default_Time_Zone_to_local();
    EXPECT_EQ(d_Time::default_Time_Zone(), d_Time::GMT_5);
    EXPECT_EQ(Of(d_Time::current()), TimeFields(-5, 0, -4, 46, 40, 0));  // 01:46:40 UTC, local zone 0 now
    // The order: hours, minutes with the zone off, then the truncated difference of the seconds.
    const std::tuple<d_Time, d_Time, int> order[] = {
        {Raw(0, 0, 13, 0, 0, 10), Raw(0, 0, 13, 0, 0, 90), 0},  {Raw(0, 0, 13, 0, 1, 0), Raw(0, 0, 13, 0, 0, 1), 0},
        {Raw(0, 0, 13, 0, 2, 0), Raw(0, 0, 13, 0, 0, 50), 1},   {Raw(2, 0, 15, 0, 0, 0), Raw(0, 0, 14, 0, 0, 0), -1},
        {Raw(0, 30, 13, 50, 0, 0), Raw(0, 0, 13, 0, 0, 0), 20}, {Raw(3, 0, 1, 0, 0, 0), Raw(0, 0, 1, 0, 0, 0), 65533},
    };
    for (const auto& [a, b, r] : order) EXPECT_EQ(a != b, r) << ::testing::PrintToString(Of(a));
    EXPECT_EQ(std::make_tuple(
                  Raw(0, 0, 1, 0, 0, 0) < Raw(0, 0, 2, 0, 0, 0), Raw(0, 0, 1, 0, 0, 10) <= Raw(0, 0, 1, 0, 0, 0),
                  Raw(0, 0, 1, 0, 0, 10) == Raw(0, 0, 1, 0, 0, 0), Raw(0, 0, 1, 0, 0, 0) >= Raw(0, 0, 1, 0, 0, 9)),
              std::make_tuple(1, 1, 1, 1));
}

TEST_F(StdDate, TimeArithmetic) {
    const auto plus = [](d_Time t, d_Interval x) { return Of(t += x); };
    const auto minus = [](d_Time t, d_Interval x) { return Of(t -= x); };
    EXPECT_EQ(plus(Raw(0, 0, 23, 59, 59, 50), d_Interval(0, 0, 0, 0.75f)), TimeFields(0, 0, 0, 0, 0, 25));
    EXPECT_EQ(minus(Raw(0, 0, 0, 0, 10, 50), d_Interval(0, 0, 0, 20.0f)), TimeFields(0, 0, 23, 59, 50, 0));
    EXPECT_EQ(minus(Raw(1, 0, 1, 0, 0, 0), d_Interval(3)), TimeFields(1, 0, 1, 0, 0, 0));  // whole days, zone kept
    // Beyond 65536 days back one step: fmod(-1.0000000150474662e30, 86400) is -13440, so 20:16.
    EXPECT_EQ(plus(Raw(0, 0, 10, 0, 0, 0), d_Interval::FromSeconds(-1e30f)), TimeFields(0, 0, 20, 16, 0, 0));
    // -infinity ends as NaN, no endless day loop; it splits as the integer -2147483648.
    EXPECT_EQ(plus(Raw(0, 0, 10, 0, 0, 0), d_Interval::FromSeconds(-INFINITY)), TimeFields(0, 0, -3, -14, 0, 0));
    // + and - take the whole seconds and add the zone to the result.
    EXPECT_EQ(Of(Raw(1, 30, 2, 40, 5, 99) + d_Interval(0, 1, 0, 0.5f)), TimeFields(1, 30, 4, 70, 5, 50));
    EXPECT_EQ(Of(d_Interval(0, 0, 0, 6.0f) + Raw(0, 0, 23, 59, 58, 0)), TimeFields(0, 0, 0, 0, 4, 0));
    EXPECT_EQ(Of(Raw(0, 0, 0, 0, 1, 0) - d_Interval(0, 0, 0, 2.0f)), TimeFields(0, 0, 23, 59, 59, 0));
    EXPECT_EQ((Raw(2, 0, 15, 30, 45, 99) - Raw(0, 0, 13, 0, 0, 0)).total_seconds(), 9045.0f);  // zone included
    EXPECT_EQ(Of(d_Time(13, 5, 9.25f)), TimeFields(0, 0, 13, 5, 9, 25));
}

TEST_F(StdDate, Intervals) {
    const std::tuple<d_Interval, float, int, int, int, float> reads[] = {
        {d_Interval(1, -1, 0, 0.0f), -90000.0f, -1, -1, 0, 0.0f},
        {d_Interval(1, 1, 1, 1.5f), 90061.5f, 1, 1, 1, 1.5f},
        {d_Interval(0, 0, -1, 1.25f), -61.25f, 0, 0, -1, -1.25f},
        {d_Interval(0, 0, 0, -0.0f), 0.0f, 0, 0, 0, 0.0f},
        {d_Interval(INT_MIN, 0, 0, 0.0f), -2147483648.0f * 86400.0f, -24855, -3, -14,
         (-2147483648.0f * 86400.0f + 2147483648.0f) - 8.0f},  // beyond 32 bits: read as -2147483648
    };
    for (const auto& [i, count, day, hour, minute, second] : reads) {
        EXPECT_FLOAT_EQ(i.total_seconds(), count);
        EXPECT_EQ(std::make_tuple(i.day(), i.hour(), i.minute()), std::make_tuple(day, hour, minute)) << count;
        EXPECT_FLOAT_EQ(i.second(), second);
    }
    const d_Interval nan = d_Interval::FromSeconds(NAN);  // cut as -2147483648: no undefined conversion
    EXPECT_EQ(std::make_tuple(nan.day(), nan.hour(), nan.minute()), std::make_tuple(-24855, -3, -14));
    EXPECT_TRUE(std::isnan(nan.second()));
    // The last float below 2^31 still fits; 2^31 and -2^31 - 256 do not.
    EXPECT_EQ(
        std::make_tuple(d_Interval::FromSeconds(2147483520.0f).day(), d_Interval::FromSeconds(2147483648.0f).day(),
                        d_Interval::FromSeconds(-2147483648.0f).hour(), d_Interval::FromSeconds(-2147483904.0f).day()),
        std::make_tuple(24855, -24855, -3, -24855));
    const d_Interval h(0, 1, 0, 0.0f);
    EXPECT_EQ(std::make_tuple((h * 3).total_seconds(), (2 * h).total_seconds(), (h / 4).total_seconds(),
                              (h / 0).total_seconds(), (-h).total_seconds(), (h - h).is_zero()),
              std::make_tuple(10800.0f, 7200.0f, 900.0f, 3600.0f, -3600.0f, 1));
    EXPECT_EQ(std::make_tuple(h<h * 2, h >= h, h <= h, h> h / 2, h == h / 1, h != h / 2),
              std::make_tuple(1, 1, 1, 1, 1, 1));
}

TEST_F(StdDate, TimestampArithmetic) {
    const auto stamp = [](int y, int mo, int d, const d_Time& t) {
        return d_Timestamp(
            d_Date(static_cast<short>(y), static_cast<unsigned short>(mo), static_cast<unsigned short>(d)), t);
    };
    const auto of = [](const d_Timestamp& s) { return std::make_tuple(Of(s.date()), Of(s.time())); };
    const std::tuple<d_Timestamp, d_Interval, Fields, TimeFields> moves[] = {
        {stamp(2001, 2, 28, Raw(0, 0, 23, 59, 59, 0)), d_Interval(0, 0, 0, 1.0f), {2001, 3, 1}, {0, 0, 0, 0, 0, 0}},
        {stamp(2001, 3, 1, Raw(0, 0, 0, 0, 10, 0)), d_Interval(0, 0, 0, -20.0f), {2001, 2, 28}, {0, 0, 23, 59, 50, 0}},
        {stamp(2001, 3, 1, Raw(0, 0, 0, 0, 10, 0)), d_Interval(-2), {2001, 2, 27}, {0, 0, 0, 0, 10, 0}},
        {stamp(2001, 3, 1, Raw(2, 0, 12, 0, 0, 0)), d_Interval(0, 1), {2001, 3, 1}, {2, 0, 13, 0, 0, 0}},
        // hour - tz_hour of -2 makes the carrier negative as a whole: the rule as it stands.
        {stamp(2001, 3, 5, Raw(3, 0, 1, 0, 0, 0)), d_Interval(), {2001, 2, 22}, {3, 0, 25, 0, 0, 0}},
        {stamp(1582, 10, 4, Raw(0, 0, 12, 0, 0, 0)), d_Interval(1), {1582, 10, 15}, {0, 0, 12, 0, 0, 0}},
    };
    for (const auto& [s, x, date, time] : moves) EXPECT_EQ(of(s + x), std::make_tuple(date, time)) << x.total_seconds();
    EXPECT_EQ(of(stamp(2001, 3, 1, Raw(0, 0, 0, 0, 10, 0)) - d_Interval(0, 0, 0, 20.0f)),
              std::make_tuple(Fields(2001, 2, 28), TimeFields(0, 0, 23, 59, 50, 0)));
    EXPECT_EQ(of(d_Interval(0, 0, 0, 1.0f) + stamp(2001, 2, 28, Raw(0, 0, 23, 59, 59, 0))),
              std::make_tuple(Fields(2001, 3, 1), TimeFields(0, 0, 0, 0, 0, 0)));
    d_Timestamp far = stamp(2001, 3, 1, Raw(0, 0, 0, 0, 0, 0));
    far -= d_Interval::FromSeconds(INFINITY);  // the rules' answer, without a trap
    EXPECT_EQ(far.tz_hour(), 0);
    // Order by date, then time; <= and >= accept equal fields only, not times less than a second apart.
    const d_Timestamp a = stamp(2001, 3, 1, Raw(0, 0, 10, 0, 0, 0)), b = stamp(2001, 3, 1, Raw(0, 0, 10, 0, 0, 50));
    EXPECT_EQ(std::make_tuple(a != b, a == b, a < b, a <= b, a >= b, a <= a, a >= a),
              std::make_tuple(0, 1, 0, 0, 0, 1, 1));
    EXPECT_EQ(
        std::make_tuple(stamp(2001, 3, 2, Raw(0, 0, 0, 0, 0, 0)) != a, stamp(2001, 3, 1, Raw(0, 0, 9, 0, 0, 0)) != a),
        std::make_tuple(1, -1));
    d_Timestamp c = a;
    c = d_Date(2002, 1, 1);
    EXPECT_EQ(of(c), std::make_tuple(Fields(2002, 1, 1), Of(a.time())));
    EXPECT_EQ(std::make_tuple(Of(d_Date(c)), Of(d_Time(c))), std::make_tuple(Fields(2002, 1, 1), Of(a.time())));
}

// The decision table of overlaps, over every signature.
TEST_F(StdDate, Overlaps) {
    const std::tuple<int, int, int, int, int> table[] = {
        {1, 5, 3, 9, 1}, {1, 5, 6, 9, 0}, {1, 5, 9, 3, 1}, {1, 5, 9, 6, 0}, {1, 5, 9, 0, 1},  // the examples
        {5, 1, 3, 9, 1}, {1, 5, 0, 1, 1}, {1, 5, 0, 9, 1}, {1, 5, 0, 0, 0}, {1, 5, 5, 5, 1},
        {1, 5, 6, 0, 1}, {1, 5, 0, 6, 1}, {1, 1, 1, 1, 1}, {1, 5, 2, 2, 1}, {1, 5, -2, -1, 0},
    };
    const auto D = [](int k) { return d_Date(2001, 1, 10) + d_Interval(k); };
    const auto T = [](int k) { return Raw(0, 0, 10, 0, 10 + k, 0); };
    const auto S = [](int k) { return d_Timestamp(d_Date(2001, 1, 10) + d_Interval(k), Raw(0, 0, 10, 0, 0, 0)); };
    const auto ST = [](int k) { return d_Timestamp(d_Date(2001, 1, 10), Raw(0, 0, 10, 0, 10 + k, 0)); };
    for (const auto& [a, b, c, d, r] : table) {
        const auto row = ::testing::PrintToString(std::make_tuple(a, b, c, d));
        EXPECT_EQ(overlaps(D(a), D(b), D(c), D(d)), r) << row;
        EXPECT_EQ(overlaps(T(a), T(b), T(c), T(d)), r) << row;
        EXPECT_EQ(overlaps(S(a), S(b), S(c), S(d)), r) << row;
        EXPECT_EQ(overlaps(D(a), D(b), S(c), S(d)), r) << row;
        EXPECT_EQ(overlaps(S(a), S(b), D(c), D(d)), r) << row;
        EXPECT_EQ(overlaps(T(a), T(b), ST(c), ST(d)), r) << row;
        EXPECT_EQ(overlaps(ST(a), ST(b), T(c), T(d)), r) << row;
    }
    // Half a second apart: equal as times, neither <= nor >= as timestamps.
    const d_Timestamp x(d_Date(2001, 1, 1), Raw(0, 0, 1, 0, 0, 0)), y(d_Date(2001, 1, 1), Raw(0, 0, 1, 0, 0, 50));
    EXPECT_EQ(std::make_tuple(overlaps(x, x, y, y), overlaps(x.time(), x.time(), y, y)), std::make_tuple(0, 1));
}

// ---- Through the type manager. ----

TEST_F(StdDate, RowsDiskImagesAndLifeCycle) {
    for (const char id : {D_DATE_T, D_TIME_T, D_TIMESTAMP_T, D_INTERVAL_T}) {
        const unsigned width = mgr.MemLenGet(id, 1);
        EXPECT_EQ(std::make_tuple(mgr.DiskLenGet(id, nullptr, 2, 3, 8), mgr.IsFixed(id), mgr.SupportsNullValue(id)),
                  std::make_tuple(3 * width, 1, 0));
        void* values = mgr.Create(id, 3);
        EXPECT_EQ(mgr.IsNullValue(id, values), 0);
        EXPECT_EQ(mgr.SetNullValue(id, values), 0);
        EXPECT_EQ(mgr.Delete(id, values, 3), nullptr);
    }
    const d_Date date(2001, 2, 3);
    const d_Time time = Raw(2, 0, 15, 30, 45, 67);
    const d_Timestamp stamp(date, time);
    const d_Interval interval = d_Interval::FromSeconds(1.5f);
    const std::tuple<char, const void*, Bytes, Bytes> images[] = {
        {D_DATE_T, &date, {0xD1, 0x07, 2, 3}, {0x07, 0xD1, 2, 3}},
        {D_TIME_T, &time, {2, 0, 15, 30, 45, 67}, {2, 0, 15, 30, 45, 67}},
        {D_TIMESTAMP_T, &stamp, {0xD1, 0x07, 2, 3, 2, 0, 15, 30, 45, 67}, {0x07, 0xD1, 2, 3, 2, 0, 15, 30, 45, 67}},
        {D_INTERVAL_T, &interval, {0, 0, 0xC0, 0x3F}, {0x3F, 0xC0, 0, 0}},
    };
    for (const auto& [id, value, little, big] : images) {
        unsigned char disk[10], memory[10] = {}, copy[10] = {};
        const unsigned n = static_cast<unsigned>(little.size());
        EXPECT_EQ(mgr.Store(id, disk, const_cast<void*>(value), LmFormatLittle, 1), n);
        EXPECT_EQ(Of(disk, n), little);
        EXPECT_EQ(mgr.Store(id, disk, const_cast<void*>(value), LmFormatBig, 1), n);
        EXPECT_EQ(Of(disk, n), big);
        EXPECT_EQ(mgr.Load(id, memory, disk, LmFormatBig, 1), n);
        EXPECT_EQ(Of(memory, n), Of(value, n));
        EXPECT_EQ(mgr.Translate(id, copy, 8, 0, disk, LmFormatBig, n, 1), n);
        EXPECT_EQ(Of(copy, n), Of(value, n));
    }
    unsigned char stored[10];  // StoreTimeStamp: fields of the stamp record, the fraction added unscaled
    const LmDateTimeNRecord r{2001, 2, 3, 13, 5, 9, 0};
    EXPECT_EQ(mgr.StoreTimeStamp(D_TIMESTAMP_T, stored, LmFormatBig, const_cast<LmDateTimeNRecord*>(&r)), 10);
    EXPECT_EQ(Of(stored, 10), (Bytes{0x07, 0xD1, 2, 3, 0, 0, 13, 5, 9, 0}));
    const LmDateTimeNRecord f{2001, 2, 3, 13, 5, 9, 1};
    EXPECT_EQ(mgr.StoreTimeStamp(D_TIME_T, stored, LmFormatLittle, const_cast<LmDateTimeNRecord*>(&f)), 6);
    EXPECT_EQ(Of(stored, 6), (Bytes{0, 0, 13, 5, 10, 0}));
    EXPECT_EQ(mgr.StoreTimeStamp(D_DATE_T, stored, LmFormatLittle, const_cast<LmDateTimeNRecord*>(&f)), 4);
    EXPECT_EQ(Of(stored, 4), (Bytes{0xD1, 0x07, 2, 3}));
}

std::pair<int, int> Compare(char id, unsigned char format, const void* a, const void* b, unsigned short option = 0,
                            unsigned count = 1, unsigned len1 = 0) {
    int status = 77;
    const int r =
        LmTypeMgr().Cmp(id, len1, const_cast<void*>(a), 0, const_cast<void*>(b), option, count, format, status);
    return {r, status};
}

TEST_F(StdDate, ComparisonsAndHashes) {
    using B = std::vector<unsigned char>;
    const std::tuple<B, B, unsigned short, int> dates[] = {
        {{0xD1, 7, 2, 3}, {0xD1, 7, 2, 4}, 0, -1},       {{0xCF, 7, 2, 3}, {0xFF, 0xFF, 2, 3}, 0, 0},
        {{0xFF, 0xFF, 2, 3}, {0xCF, 7, 2, 3}, 0, 1},     {{0xFB, 0xFF, 2, 3}, {1, 0, 2, 3}, 0, 1},  // years unsigned
        {{0xD1, 7, 5, 3}, {0xD1, 7, 0xFF, 4}, 0, -1},    {{0xD1, 7, 5, 3}, {0xD1, 7, 0xFF, 0xFF}, 0, 0},
        {{0xD1, 7, 0x80, 1}, {0xD1, 7, 1, 0xFF}, 0, -1}, {{0xD1, 7, 5, 3}, {0xD1, 7, 0xFF, 4}, 0x10, 1},
        {{0xD1, 7, 5, 0x80}, {0xD1, 7, 5, 3}, 0, -1},    {{0xCF, 7, 2, 3}, {0xFF, 0xFF, 2, 3}, 0x10, -1},
    };
    for (const auto& [a, b, option, r] : dates) {
        EXPECT_EQ(Compare(D_DATE_T, LmFormatLittle, a.data(), b.data(), option), std::make_pair(r, 0));
        const B a2{a[1], a[0], a[2], a[3]}, b2{b[1], b[0], b[2], b[3]};
        EXPECT_EQ(Compare(D_DATE_T, LmFormatBig, a2.data(), b2.data(), option), std::make_pair(r, 0));
        B sa(10, 0), sb(10, 0);
        std::copy(a.begin(), a.end(), sa.begin());
        std::copy(b.begin(), b.end(), sb.begin());
        sb[9] = 0x80;  // the time bytes decide only at equal dates
        EXPECT_EQ(Compare(D_TIMESTAMP_T, 0x81, sa.data(), sb.data(), option).first, r == 0 ? 1 : r);
    }
    // Memory forms (a format byte of exactly 8): differences; 0x88 reads as a disk form.
    const d_Date d1(2001, 2, 3), d2(2001, 1, 30);
    EXPECT_EQ(Compare(D_DATE_T, 8, &d1, &d2), std::make_pair(4, 0));
    EXPECT_EQ(Compare(D_DATE_T, 0x88, &d1, &d2), std::make_pair(1, 0));
    const d_Time t1 = Raw(0, 0, 13, 0, 0, 10), t2 = Raw(0, 0, 13, 0, 0, 90), t3 = Raw(0, 0, 0x80 - 256, 0, 0, 0);
    EXPECT_EQ(Compare(D_TIME_T, 8, &t1, &t2), std::make_pair(0, 0));
    EXPECT_EQ(Compare(D_TIME_T, 1, &t1, &t2), std::make_pair(-1, 0));
    EXPECT_EQ(Compare(D_TIME_T, 1, &t3, &t1), std::make_pair(-1, 0));  // signed bytes
    const d_Timestamp s1(d1, t1), s2(d2, t2);
    EXPECT_EQ(Compare(D_TIMESTAMP_T, 8, &s1, &s2), std::make_pair(4, 0));
    const d_Date two[2] = {d1, d2};
    EXPECT_EQ(Compare(D_DATE_T, 8, two, two, 0, 2, 4), std::make_pair(0, LM_ERR_OUT_OF_DATA));  // a cut record
    // Golden hashes, worked out by hand from the element words.
    const d_Time time = Raw(2, 0, 15, 30, 45, 67);
    const d_Timestamp stamp(d_Date(2001, 2, 3), time);
    const d_Date date(2001, 2, 3);
    const float interval = 1.5f;
    unsigned char big[10];
    int status = 0;
    const std::tuple<char, const void*, unsigned, unsigned> hashes[] = {
        {D_DATE_T, &date, 1408025927u, 1408025927u},          // 0x07D10203
        {D_TIME_T, &time, 1235339561u, 1657504919u},          // 0x0D1E002D in memory, the chain 0x20EC93 on disk
        {D_TIMESTAMP_T, &stamp, 174190998u, 739406672u},      // the date word XOR the time word
        {D_INTERVAL_T, &interval, 2764046336u, 2764046336u},  // the bits 0x3FC00000
    };
    for (const auto& [id, value, memory, disk] : hashes) {
        EXPECT_EQ(mgr.Hash(id, 0, const_cast<void*>(value), 1, 8, status), memory);
        mgr.Store(id, big, const_cast<void*>(value), LmFormatBig, 1);
        EXPECT_EQ(mgr.Hash(id, 0, big, 1, LmFormatBig, status), disk);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(mgr.Hash(D_DATE_T, 4, const_cast<d_Date*>(two), 2, 8, status), 1408025927u);
    EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
}

TEST_F(StdDate, TextConversionsDefaultsAndSteps) {
    d_Time::set_default_Time_Zone(d_Time::GMT2);
    d_Date date(2001, 2, 3);
    d_Time time = Raw(2, 0, 15, 5, 9, 67);
    d_Timestamp stamp(date, time);
    d_Interval days = d_Interval(1, 1, 1, 1.5f), hours = d_Interval(0, 15);
    const std::tuple<char, void*, const char*> prints[] = {
        {D_DATE_T, &date, "Sat Feb 03"},
        {D_TIME_T, &time, "01:05:09 pm"},
        {D_TIMESTAMP_T, &stamp, "Sat Feb 03 01:05:09 pm"},
        {D_INTERVAL_T, &days, "01 days, 01 hours, 01 minutes, 01 seconds"},
        {D_INTERVAL_T, &hours, "00 days, 03 hours, 00 minutes, 00 seconds"},  // %I without %p loses 12
    };
    for (const auto& [id, value, text] : prints) {
        LmString out;
        EXPECT_STREQ(mgr.PrintToLmString(id, out, value, nullptr, 1).StrGet(), text);
    }
    LmString in("Sun Mar 04 11:06:10 pm");
    EXPECT_EQ(mgr.ScanFromLmString(D_TIMESTAMP_T, &stamp, in, nullptr, 1), &stamp);
    EXPECT_EQ(std::make_tuple(Of(stamp.date()), Of(stamp.time())),
              std::make_tuple(Fields(0, 3, 4), TimeFields(2, 0, 23, 6, 10, 0)));  // the zone is not added
    LmString span("02 days, 03 hours, 04 minutes, 05 seconds");
    mgr.ScanFromLmString(D_INTERVAL_T, &days, span, nullptr, 1);
    EXPECT_EQ(days.total_seconds(), 183845.0f);
    LmString cut("Sat Feb");
    EXPECT_EQ(mgr.ScanFromLmString(D_DATE_T, &date, cut, nullptr, 1), nullptr);
    EXPECT_EQ(Of(date), Fields(0, 2, 0));  // what was read stands
    // Conversions: the Julian Day Number, seconds of the day without the zone, days in.
    const d_Date dates[4] = {d_Date(2000, 1, 1), d_Date(1, 1, 1), d_Date(1582, 10, 4), d_Date(1, 1, 1)};
    const d_Timestamp both(d_Date(2000, 1, 1), Raw(2, 0, 15, 30, 45, 0));
    const d_Interval longer[2] = {d_Interval::FromSeconds(90061.9f), d_Interval::FromSeconds(-0.5f)};
    const std::tuple<char, const void*, unsigned, std::vector<const char*>> to[] = {
        {D_DATE_T, dates, 2, {"2451545", "2299160"}},  // 8 bytes apart: every second value
        {D_TIME_T, &both.time_part, 1, {"48645"}},
        {D_TIMESTAMP_T, &both, 1, {"2451545:48645"}},
        {D_INTERVAL_T, longer, 2, {"90061", "0"}},
    };
    for (const auto& [id, value, count, texts] : to) {
        LmTypeConvertData* data = mgr.ConvertTo(id, const_cast<void*>(value), count);
        for (unsigned i = 0; i < count; ++i) EXPECT_STREQ(data->GetString(static_cast<int>(i))->StrGet(), texts[i]);
        delete data;
    }
    LmString texts[3] = {LmString("2299161"), LmString("2451545:48645"), LmString()};
    texts[2].SetNullValue();
    LmTypeConvertData* wrapper = LmTypeConvertData::Make(LmSTRING_T, 3, texts, nullptr);
    auto* fromDates = static_cast<d_Date*>(mgr.ConvertFrom(D_DATE_T, wrapper, 4));
    EXPECT_EQ(std::make_tuple(Of(fromDates[0]), Of(fromDates[1]), Of(fromDates[2]), Of(fromDates[3])),
              std::make_tuple(Fields(1582, 10, 15), Fields(2000, 1, 1), Fields(0, 0, 0), Fields(0, 0, 0)));
    mgr.Delete(D_DATE_T, fromDates, 4);
    auto* fromStamps = static_cast<d_Timestamp*>(mgr.ConvertFrom(D_TIMESTAMP_T, wrapper, 3));
    EXPECT_EQ(std::make_tuple(Of(fromStamps[0].time()), Of(fromStamps[1].time()), Of(fromStamps[2].date())),
              std::make_tuple(TimeFields(2, 0, 2, 0, 0, 0), TimeFields(2, 0, 15, 30, 45, 0), Fields(0, 0, 0)));
    mgr.Delete(D_TIMESTAMP_T, fromStamps, 3);
    auto* fromSpans = static_cast<d_Interval*>(mgr.ConvertFrom(D_INTERVAL_T, wrapper, 2));
    EXPECT_EQ(std::make_tuple(fromSpans[0].total_seconds(), fromSpans[1].total_seconds()),
              std::make_tuple(2299161.0f * 86400.0f, 2451545.0f * 86400.0f));  // the number counts days
    mgr.Delete(D_INTERVAL_T, fromSpans, 2);
    wrapper->data = nullptr;  // the strings are on the stack
    delete wrapper;
    // Defaults: what an empty text converts to; the Julian Day Number 0 is -4712-01-01.
    auto* defDate = static_cast<d_Date*>(mgr.DefaultValue(D_DATE_T, 1, 1));
    auto* defStamp = static_cast<d_Timestamp*>(mgr.DefaultValue(D_TIMESTAMP_T, 1, 0));
    auto* defSpan = static_cast<d_Interval*>(mgr.DefaultValue(D_INTERVAL_T, 1, 0));
    auto* defTime = static_cast<d_Time*>(mgr.DefaultValue(D_TIME_T, 1, 0));
    EXPECT_EQ(Of(*defTime), TimeFields(2, 0, 2, 0, 0, 0));
    mgr.Delete(D_TIME_T, defTime, 1);
    EXPECT_EQ(std::make_tuple(Of(*defDate), Of(defStamp->time()), defSpan->total_seconds()),
              std::make_tuple(Fields(-4712, 1, 1), TimeFields(2, 0, 2, 0, 0, 0), 0.0f));
    mgr.Delete(D_DATE_T, defDate, 1);
    mgr.Delete(D_TIMESTAMP_T, defStamp, 1);
    mgr.Delete(D_INTERVAL_T, defSpan, 1);
    // Stepping: the next day; 0.01 seconds, which for a time is seldom later.
    d_Date step(2000, 2, 28);
    EXPECT_EQ(mgr.GetValue(D_DATE_T, &step, 0, 8, 'N'), 0);
    EXPECT_EQ(Of(step), Fields(2000, 2, 29));
    EXPECT_EQ(mgr.GetValue(D_DATE_T, &step, 0, 1, 'N'), 0);  // the same bytes as a disk image
    EXPECT_EQ(Of(step), Fields(2000, 3, 1));
    d_Time tenOClock = Raw(0, 0, 10, 0, 0, 0);
    EXPECT_EQ(mgr.GetValue(D_TIME_T, &tenOClock, 0, 8, 'M'), LM_ERR_NO_NEXT_VALUE);
    d_Timestamp lastHundredth(d_Date(2001, 2, 3), Raw(0, 0, 23, 59, 59, 99));
    EXPECT_EQ(mgr.GetValue(D_TIMESTAMP_T, &lastHundredth, 0, 8, 'N'), 0);
    EXPECT_EQ(Of(lastHundredth.date()), Fields(2001, 2, 4));
    d_Interval one(0, 0, 0, 1.0f), inf = d_Interval::FromSeconds(INFINITY);
    EXPECT_EQ(mgr.GetValue(D_INTERVAL_T, &one, 0, 8, 'N'), 0);
    EXPECT_EQ(one.total_seconds(), 1.01f);
    EXPECT_EQ(mgr.GetValue(D_INTERVAL_T, &inf, 0, 8, 'N'), LM_ERR_NO_NEXT_VALUE);
    const auto slot = [this](char id, void* v, unsigned char mode) { return mgr.Desc(id)->GetValue(v, 0, 8, mode); };
    EXPECT_EQ(slot(D_DATE_T, &step, 2) + slot(D_TIME_T, &tenOClock, 2) + slot(D_INTERVAL_T, &one, 2), 0);
    EXPECT_EQ(std::make_tuple(Of(step), Of(tenOClock), one.total_seconds()),
              std::make_tuple(Fields(-32768, 0, 0), TimeFields(2, 0, 2, 0, 0, 0), 0.0f));
    EXPECT_EQ(slot(D_DATE_T, &step, 'O') + slot(D_INTERVAL_T, &one, 'O'), 0);
    EXPECT_EQ(std::make_tuple(Of(step), one.total_seconds()), std::make_tuple(Fields(2001, 9, 9), 0.0f));
    EXPECT_EQ(slot(D_TIMESTAMP_T, &lastHundredth, 'X'), LM_ERR_NOT_SUPPORTED);
}

// The bound evaluators behind the rows: each type's own line.
TEST_F(StdDate, IndexBounds) {
    unsigned char lo[10] = {0xD1, 7, 1, 1}, hi[10] = {0xD1, 7, 12, 31}, value[10] = {0xD1, 7, 7, 1};
    LmIdxBounds range{lo, hi, 10, 10, 0, 0, 0};
    unsigned short op = 2;  // <: six months of 31 places of the 372 of the year
    EXPECT_FLOAT_EQ(mgr.EvalAndBound(D_DATE_T, &range, op, value, 1, 1, nullptr, nullptr), 0.5f);
    const unsigned char tlo[6] = {0, 0, 0, 0, 0, 0}, thi[6] = {0, 0, 23, 59, 59, 0}, tv[6] = {0, 0, 12, 0, 0, 0};
    LmIdxBounds times{const_cast<unsigned char*>(tlo), const_cast<unsigned char*>(thi), 6, 6, 0, 0, 0};
    EXPECT_FLOAT_EQ(mgr.EvalAndBound(D_TIME_T, &times, op, const_cast<unsigned char*>(tv), 1, 1, nullptr, nullptr),
                    0.5f);
    float span = 5.0f, spanLo = 0.0f, spanHi = 9.0f;
    LmIdxBounds spans{&spanLo, &spanHi, 4, 4, 0, 0, 0};
    EXPECT_FLOAT_EQ(mgr.EvalAndBound(D_INTERVAL_T, &spans, op, &span, 1, 1, nullptr, nullptr),
                    mgr.EvalAndBound(LmFLOAT_T, &spans, op, &span, 1, 1, nullptr, nullptr));
    unsigned char slo[10] = {0xD1, 7, 1, 1, 0, 0, 0, 0}, shi[10] = {0xD1, 7, 1, 2, 0, 0, 0, 0},
                  sv[10] = {0xD1, 7, 1, 1, 0, 0, 12, 0};
    LmIdxBounds stamps{slo, shi, 10, 10, 0, 0, 0};
    EXPECT_FLOAT_EQ(mgr.EvalAndBound(D_TIMESTAMP_T, &stamps, op, sv, 1, 1, nullptr, nullptr), 43200.0f / 3601.0f);
}

}  // namespace
