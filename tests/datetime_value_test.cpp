// LmDateTime as a value: its layout and constants, the carry over midnight against a
// count of seconds worked out independently, comparison, the zone moves on a pinned
// zone (the unknown zone too), and text.
#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <cstring>
#include <random>
#include <tuple>
#include <vector>

#include "lumotypes.h"

namespace {

using Fields = std::tuple<int, int, int, int, int, int>;

LmDateTime DT(int y, int mo, int d, int h, int mi, int s) {
    return LmDateTime(static_cast<short>(y), static_cast<char>(mo), static_cast<char>(d), static_cast<char>(h),
                      static_cast<char>(mi), static_cast<char>(s));
}
Fields Of(const LmDateTime& v) { return {v.year, v.month, v.day, v.hour, v.minute, v.second}; }

// The oracle: seconds since 1970-01-01 through std::chrono's civil calendar.
int64_t Seconds(const LmDateTime& v) {
    using namespace std::chrono;
    const sys_days d{year{v.year} / month{static_cast<unsigned>(v.month)} / day{static_cast<unsigned>(v.day)}};
    return int64_t{d.time_since_epoch().count()} * 86400 + v.hour * 3600 + v.minute * 60 + v.second;
}
Fields FromSeconds(int64_t s) {
    using namespace std::chrono;
    int64_t days = s / 86400, rest = s % 86400;
    if (rest < 0) rest += 86400, --days;
    const year_month_day ymd{sys_days{std::chrono::days{days}}};
    return {int{ymd.year()},  unsigned{ymd.month()}, unsigned{ymd.day()},
            int(rest / 3600), int(rest / 60 % 60),   int(rest % 60)};
}

TEST(DateTimeValue, LayoutAndConstants) {
    const LmDateTime v = DT(2001, 3, 1, 0, 0, 10);
    unsigned char b[8];
    std::memcpy(b, &v, 8);
    EXPECT_EQ(std::vector<unsigned>(b, b + 8), (std::vector<unsigned>{0xD1, 0x07, 3, 1, 0, 0, 10, 0}));
    EXPECT_EQ(std::make_tuple(Of(LmDateTime::NullValue()), Of(LmDateTime::DefaultValue()), Of(LmDateTime::ZeroValue()),
                              Of(LmDateTime::Null())),
              std::make_tuple(Fields(-32768, -128, -128, -128, -128, -128), Fields(-4713, 11, 24, 0, 0, 0),
                              Fields(0, 1, 1, 0, 0, 0), Fields(0, 0, 0, 0, 0, 0)));  // Null() is the clear value
    // The default looks at the date only; zero and null at both parts.
    EXPECT_EQ(std::make_tuple(DT(-4713, 11, 24, 12, 0, 0).IsDefaultValue(), DT(0, 1, 1, 0, 0, 0).IsZeroValue(),
                              DT(0, 1, 1, 0, 0, 1).IsZeroValue(), DT(1, 1, 1, 0, 0, 0).IsZeroValue(),
                              LmDateTime(LmDate::NullValue(), LmTime(0, 0, 0)).IsNullValue(),
                              LmDateTime(LmDate(0, 0, 0), LmTime::NullValue()).IsNullValue()),
              std::make_tuple(1, 1, 0, 0, 0, 0));
    LmDateTime w = v;
    EXPECT_EQ(w.SetNullValue() + w.IsNullValue(), 1);
    EXPECT_EQ(w.SetDefaultValue(), 0);
    EXPECT_EQ(Of(w), Of(LmDateTime::DefaultValue()));
    EXPECT_EQ(w.SetZeroValue(), 0);
    EXPECT_EQ(Of(w), Of(LmDateTime::ZeroValue()));
}

// Carries at every boundary, each checked against the chrono oracle.
TEST(DateTimeValue, AddSecondsAgainstOracle) {
    const struct {
        Fields start;
        int n;
    } rows[] = {
        {{2001, 3, 1, 0, 0, 10}, -20},        {{2000, 2, 28, 23, 59, 59}, 1},      {{1900, 2, 28, 23, 59, 59}, 1},
        {{2000, 2, 29, 23, 59, 59}, 1},       {{1999, 12, 31, 23, 59, 59}, 1},     {{2000, 1, 1, 0, 0, 0}, -1},
        {{2024, 5, 17, 13, 14, 15}, 86400},   {{2024, 5, 17, 13, 14, 15}, -86400}, {{2024, 5, 17, 13, 14, 15}, INT_MAX},
        {{2024, 5, 17, 13, 14, 15}, INT_MIN}, {{-4713, 11, 24, 0, 0, 0}, -1},      {{2024, 5, 17, 0, 0, 0}, 0},
    };
    for (const auto& r : rows) {
        const auto [y, mo, d, h, mi, s] = r.start;
        LmDateTime v = DT(y, mo, d, h, mi, s);
        const int64_t expected = Seconds(v) + r.n;
        v.AddSeconds(r.n);
        EXPECT_EQ(Of(v), FromSeconds(expected)) << y << "-" << mo << "-" << d << " + " << r.n;
    }
    std::mt19937 gen(19);
    std::uniform_int_distribution<int> year(-4000, 9999), mon(1, 12), dd(1, 28), hh(0, 23), ms(0, 59);
    std::uniform_int_distribution<int> n(INT_MIN, INT_MAX);
    for (int i = 0; i < 2000; ++i) {
        LmDateTime v = DT(year(gen), mon(gen), dd(gen), hh(gen), ms(gen), ms(gen));
        const int k = i % 2 != 0 ? n(gen) : n(gen) % 200000;
        const int64_t expected = Seconds(v) + k;
        v.AddSeconds(k);
        ASSERT_EQ(Of(v), FromSeconds(expected)) << k;
    }
}

TEST(DateTimeValue, CompareAndEquality) {
    const LmDateTime a = DT(2001, 3, 1, 10, 0, 0), b = DT(2001, 3, 1, 9, 59, 59);
    EXPECT_GT(a.Compare(b), 0);
    EXPECT_LT(b.Compare(a), 0);
    EXPECT_EQ(std::make_pair(a.Compare(a), a.Compare(b, 0)), std::make_pair(0, 1));  // the hour decides: 10 - 9
    // Wildcards count only without option bit 0x10, on either side.
    const LmDateTime wild = DT(2001, -1, 1, -1, 0, 0);
    EXPECT_EQ(std::make_pair(wild.Compare(a, 0), a.Compare(wild, 0)), std::make_pair(0, 0));
    EXPECT_LT(wild.Compare(a, LM_CMP_NO_WILDCARD), 0);
    EXPECT_LT(wild.Compare(a), 0);
    EXPECT_EQ(std::make_tuple(a == a, a == b, wild == a, a != a, a != b), std::make_tuple(1, 0, 0, 0, 1));
    EXPECT_EQ(DT(2001, 3, 5, 0, 0, 0) != DT(2001, 3, 1, 23, 0, 0), 4);  // the date's difference first
    EXPECT_EQ(std::make_tuple(DT(2000, 2, 29, 23, 59, 59).IsDateTime(), DT(1900, 2, 29, 0, 0, 0).IsDateTime(),
                              DT(2000, 2, 29, 24, 0, 0).IsDaTime()),
              std::make_tuple(1, 0, 0));
    LmDateTime c = a;
    c = LmTime(1, 2, 3);
    EXPECT_EQ(Of(c), Fields(2001, 3, 1, 1, 2, 3));
}

TEST(DateTimeValue, ZonesAndClockPinned) {
    const struct {
        int zone;
        Fields start;
        Fields local, utc;
    } rows[] = {
        {60, {2001, 3, 1, 0, 10, 7}, {2001, 3, 1, 1, 10, 7}, {2001, 2, 28, 23, 10, 7}},
        {-60, {2001, 3, 1, 0, 0, 7}, {2001, 2, 28, 23, 0, 7}, {2001, 3, 1, 1, 0, 7}},
        {840, {2000, 2, 28, 23, 30, 0}, {2000, 2, 29, 13, 30, 0}, {2000, 2, 28, 9, 30, 0}},
        {-840, {2000, 12, 31, 12, 0, 0}, {2000, 12, 30, 22, 0, 0}, {2001, 1, 1, 2, 0, 0}},
        {330, {2024, 1, 1, 20, 0, 59}, {2024, 1, 2, 1, 30, 59}, {2024, 1, 1, 14, 30, 59}},
    };
    for (const auto& r : rows) {
        bksPinTimeZone(r.zone);
        const auto [y, mo, d, h, mi, s] = r.start;
        LmDateTime v = DT(y, mo, d, h, mi, s), u = v;
        EXPECT_EQ(v.ToLocalTime(), 0);
        EXPECT_EQ(Of(v), r.local) << r.zone;
        EXPECT_EQ(u.ToUTCTime(), 0);
        EXPECT_EQ(Of(u), r.utc) << r.zone;
    }
    bksPinTimeZone(LMBASE_NO_TIMEZONE);
    LmDateTime v = DT(2001, 3, 1, 0, 10, 0);
    EXPECT_EQ(v.ToLocalTime(), LM_ERR_NO_TIMEZONE);
    EXPECT_EQ(v.ToUTCTime(), LM_ERR_NO_TIMEZONE);
    EXPECT_EQ(Of(v), Fields(2001, 3, 1, 0, 10, 0));
    bksPinTimeZone(INT_MAX);  // far beyond a day: moves one day only, the fields cut, no overflow
    EXPECT_EQ(v.ToLocalTime(), 0);
    bksPinClock(1000000000, 0);  // 2001-09-09 01:46:40 UTC, two hours east
    bksPinTimeZone(120);
    EXPECT_EQ(
        std::make_tuple(Of(LmDateTime()), Of(LmDateTime().NowUTC()), Of(LmDateTime(LmDate(1999, 1, 2))),
                        Of(LmDateTime(LmTime(4, 5, 6))), Of(v.Now())),
        std::make_tuple(Fields(2001, 9, 9, 3, 46, 40), Fields(2001, 9, 9, 1, 46, 40), Fields(1999, 1, 2, 3, 46, 40),
                        Fields(2001, 9, 9, 4, 5, 6), Fields(2001, 9, 9, 3, 46, 40)));
    bksUnpinTimeZone();
    bksUnpinClock();
}

TEST(DateTimeValue, Text) {
    LmString out;
    DT(2001, 3, 1, 7, 8, 9).PrintToLmString(out, nullptr);
    EXPECT_STREQ(out.StrGet(), "2001-03-01T07:08:09");
    EXPECT_STREQ(LmDateTime::NullValue().PrintToLmString(out, nullptr).StrGet(), "{NULL}");
    LmDateTime v = DT(0, 0, 0, 0, 0, 0);
    LmString text("1999-12-31T23:59:58");
    EXPECT_EQ(v.ScanFromLmString(text, nullptr), &v);
    EXPECT_EQ(Of(v), Fields(1999, 12, 31, 23, 59, 58));
    LmString cut("2004-05");
    EXPECT_EQ(v.ScanFromLmString(cut, nullptr), nullptr);
    EXPECT_EQ(Of(v), Fields(2004, 5, 0, 0, 0, 0));  // what the scan made of the text replaces the value
}

}  // namespace
