// LmDateTimeN and LmTimeSpan as values: the arithmetic chain against nanosecond
// counts worked out in 128-bit integers over std::chrono's civil days, the 30-day
// rule of spans, Difference, totals, comparison, zones and the text round trip.
#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <cmath>
#include <random>
#include <tuple>

#include "lumotypes.h"

namespace {

__extension__ typedef __int128 i128;
using Fields = std::tuple<int, int, int, int, int, int, int>;
constexpr i128 kSec = 1000000000, kDay = kSec * 86400;

Fields Of(const LmDateTimeNRecord& v) { return {v.year, v.month, v.day, v.hour, v.minute, v.second, v.nanoseconds}; }
LmDateTimeN N(int y, int mo, int d, int h, int mi, int s, int ns) {
    return LmDateTimeN(static_cast<short>(y), static_cast<char>(mo), static_cast<char>(d), static_cast<char>(h),
                       static_cast<char>(mi), static_cast<char>(s), ns);
}

// The oracle: a date-time as nanoseconds since 1970, and back.
i128 Instant(const LmDateTimeNRecord& v) {
    using namespace std::chrono;
    const sys_days d{year{v.year} / month{static_cast<unsigned>(v.month)} / day{static_cast<unsigned>(v.day)}};
    return i128{d.time_since_epoch().count()} * kDay + i128{v.hour * 3600 + v.minute * 60 + v.second} * kSec +
           v.nanoseconds;
}
Fields FromInstant(i128 t) {
    i128 days = t / kDay, rest = t % kDay;
    if (rest < 0) rest += kDay, --days;
    const std::chrono::year_month_day ymd{std::chrono::sys_days{std::chrono::days{static_cast<long long>(days)}}};
    const auto s = static_cast<long long>(rest / kSec);
    return {int{ymd.year()},
            static_cast<int>(unsigned{ymd.month()}),
            static_cast<int>(unsigned{ymd.day()}),
            int(s / 3600),
            int(s / 60 % 60),
            int(s % 60),
            int(rest % kSec)};
}
// A span's total in 30-day months and 360-day years.
i128 SpanTotal(const LmDateTimeNRecord& v) {
    return (i128{v.year} * 360 + v.month * 30 + v.day) * kDay + i128{v.hour * 3600 + v.minute * 60 + v.second} * kSec +
           v.nanoseconds;
}

// Each Add member with its unit in nanoseconds.
enum Unit { kNs, kS, kMin, kH, kD };
constexpr i128 kUnit[] = {1, kSec, 60 * kSec, 3600 * kSec, kDay};
template <typename T>
void Add(T& v, Unit u, long long n) {
    switch (u) {
        case kNs:
            v.AddNanoSeconds(n);
            break;
        case kS:
            v.AddSeconds(n);
            break;
        case kMin:
            v.AddMinutes(static_cast<int>(n));
            break;
        case kH:
            v.AddHours(static_cast<int>(n));
            break;
        case kD:
            v.AddDays(static_cast<int>(n));
            break;
    }
}

TEST(NanoArithmetic, DateTimeAgainstOracle) {
    std::mt19937_64 gen(40);
    std::uniform_int_distribution<int> year(-700, 9999), mon(1, 12), dd(1, 31), hh(0, 23), ms(0, 59);
    std::uniform_int_distribution<int> ns(0, 999999999);
    // Above -4900 (where absolute days stay exact), and seconds within 32 bits of minutes (a larger carry wraps).
    const long long limit[] = {LLONG_MAX, 120000000000LL, INT_MAX, 30000000, 1200000};
    for (int i = 0; i < 5000; ++i) {
        const int y = year(gen), m = mon(gen);
        LmDateTimeN v = N(y, m, 1, hh(gen), ms(gen), ms(gen), ns(gen));
        v.day =
            static_cast<int8_t>(1 + dd(gen) % (LmDate(static_cast<short>(y), static_cast<char>(m), 1).daynxtmonth()));
        const Unit u = static_cast<Unit>(i % 5);
        long long n = std::uniform_int_distribution<long long>(-limit[u], limit[u])(gen);
        if (i % 3 == 0) n %= 100000;  // small steps cross single boundaries
        const i128 expected = Instant(v) + kUnit[u] * n;
        Add(v, u, n);
        ASSERT_EQ(Of(v), FromInstant(expected)) << "unit " << u << " n " << n;
    }
}

// A date-time moves in the calendar exactly when LmDate::IsDate says its date is real,
// over every year and every month-end.
TEST(NanoArithmetic, CalendarOrThirtyDayRule) {
    for (int y = -32768; y <= 32767; y += (y > -5000 && y < 2500) ? 1 : 97) {
        for (int m = 0; m <= 13; ++m) {
            for (int d : {0, 1, 28, 29, 30, 31, 32}) {
                const LmDate date(static_cast<short>(y), static_cast<char>(m), static_cast<char>(d));
                const int n = d * 977 - y * 3 + (m - 6) * 40000;  // near and far, both ways
                LmDateTimeN v(date);
                v.AddDays(n);
                if (date.IsDate() != 0) {
                    ASSERT_EQ(Of(v), Of(LmDateTimeN(date + n))) << y << "-" << m << "-" << d;
                } else if (y > -32000 && y < 32000) {  // the 30-day rule keeps the count of 30-day months
                    ASSERT_EQ((v.year * 12 + v.month) * 30 + v.day, (y * 12 + m) * 30 + d + n) << y << "-" << m;
                }
            }
        }
    }
}

TEST(NanoArithmetic, BoundaryCarries) {
    const struct {
        Fields start;
        Unit unit;
        long long n;
        Fields expected;
    } rows[] = {
        {{2000, 2, 28, 23, 59, 59, 0}, kS, 1, {2000, 2, 29, 0, 0, 0, 0}},
        {{1900, 2, 28, 23, 59, 59, 999999999}, kNs, 1, {1900, 3, 1, 0, 0, 0, 0}},
        {{2000, 1, 1, 0, 0, 0, 0}, kNs, -1, {1999, 12, 31, 23, 59, 59, 999999999}},
        {{2001, 3, 1, 0, 0, 10, 0}, kS, -20, {2001, 2, 28, 23, 59, 50, 0}},
        {{0, 1, 1, 0, 0, 0, 0}, kD, 60, {0, 3, 1, 0, 0, 0, 0}},  // year 0 is a leap year
        {{0, 0, 0, 0, 0, 0, 0}, kD, 31, {0, 1, 1, 0, 0, 0, 0}},  // no real date: the 30-day rule
        {{0, 0, 0, 0, 0, 0, 0}, kD, -1, {0, 0, -1, 0, 0, 0, 0}},
        {{32767, 12, 31, 23, 0, 0, 0}, kH, 1, {-32768, 1, 1, 0, 0, 0, 0}},  // the calendar's year wraps
        {{2000, 6, 15, 12, 0, 0, 0}, kNs, 0, {2000, 6, 15, 12, 0, 0, 0}},
    };
    for (const auto& r : rows) {
        const auto [y, mo, d, h, mi, s, ns] = r.start;
        LmDateTimeN v = N(y, mo, d, h, mi, s, ns);
        Add(v, r.unit, r.n);
        EXPECT_EQ(Of(v), r.expected) << y << "-" << mo << "-" << d << " unit " << r.unit;
    }
    // A double count is truncated to nanoseconds; NaN is none and huge ones saturate.
    LmDateTimeN v = N(2000, 1, 1, 0, 0, 0, 0);
    EXPECT_EQ(Of(v.AddSeconds(1.5)), Fields(2000, 1, 1, 0, 0, 1, 500000000));
    EXPECT_EQ(Of(v.AddSeconds(-0.25)), Fields(2000, 1, 1, 0, 0, 1, 250000000));
    EXPECT_EQ(Of(v.AddSeconds(std::nan(""))), Fields(2000, 1, 1, 0, 0, 1, 250000000));
    EXPECT_EQ(Of(LmDateTimeN(2.0)), Fields(0, 1, 1, 0, 0, 2, 0));
    LmDateTimeN far = N(2000, 1, 1, 0, 0, 0, 0);
    far.AddSeconds(1e300);
    EXPECT_EQ(Of(far), FromInstant(Instant(N(2000, 1, 1, 0, 0, 0, 0)) + LLONG_MAX));
}

// Spans keep their total in 30-day months exactly, normalised while it is not negative.
TEST(NanoArithmetic, SpanThirtyDayRule) {
    std::mt19937_64 gen(41);
    for (int i = 0; i < 5000; ++i) {
        LmTimeSpan v(static_cast<int>(gen() % 20000) - 10000, 0, 0, 0, 0);
        const i128 start = SpanTotal(v);
        const Unit u = static_cast<Unit>(i % 5);
        const long long lim = u == kNs ? LLONG_MAX / 4 : (u == kS ? 100000000000LL : 2000000);
        const long long n = std::uniform_int_distribution<long long>(-lim, lim)(gen);
        Add(v, u, n);
        ASSERT_EQ(SpanTotal(v), start + kUnit[u] * n) << u << " " << n;
        ASSERT_TRUE(v.nanoseconds >= 0 && v.nanoseconds < 1000000000 && v.second >= 0 && v.second < 60 &&
                    v.minute >= 0 && v.minute < 60 && v.hour >= 0 && v.hour < 24);
        if (SpanTotal(v) >= 0) {
            ASSERT_TRUE(v.day >= 0 && v.day < 30 && v.month >= 0 && v.month < 12);
        }
    }
    const struct {
        LmTimeSpan start;
        Unit unit;
        long long n;
        Fields expected;
    } rows[] = {
        {LmTimeSpan(0, 0, 0, 23, 59, 59, 0), kS, 1, {0, 0, 1, 0, 0, 0, 0}},
        {LmTimeSpan(0, 0, 29, 0, 0, 0, 0), kD, 1, {0, 1, 0, 0, 0, 0, 0}},
        {LmTimeSpan(0, 11, 29, 0, 0, 0, 0), kD, 1, {1, 0, 0, 0, 0, 0, 0}},
        {LmTimeSpan(0, 0, 0, 0, 0, 0, 0), kNs, -1, {0, 0, -1, 23, 59, 59, 999999999}},
        {LmTimeSpan(32767, 0, 0, 0, 0, 0, 0), kD, 360, {32767, 0, 0, 0, 0, 0, 0}},  // the only saturation
        {LmTimeSpan(-32768, 0, 0, 0, 0, 0, 0), kD, -360, {-32768, 0, 0, 0, 0, 0, 0}},
        {LmTimeSpan(0, 1, 0, 0, 0, 0, 0), kD, -1, {0, 0, 29, 0, 0, 0, 0}},
    };
    for (const auto& r : rows) {
        LmTimeSpan v = r.start;
        Add(v, r.unit, r.n);
        EXPECT_EQ(Of(v), r.expected) << "row " << (&r - rows);
    }
    // The day split of the constructor.
    const std::pair<int, Fields> splits[] = {
        {-1, {0, 0, -1, 1, 2, 3, 4}},         {-31, {0, -2, 29, 1, 2, 3, 4}}, {45, {0, 1, 15, 1, 2, 3, 4}},
        {400, {1, 1, 10, 1, 2, 3, 4}},        {360, {1, 0, 0, 1, 2, 3, 4}},   {-400, {-2, 10, 20, 1, 2, 3, 4}},
        {INT_MAX, {32767, 4, 7, 1, 2, 3, 4}},
    };
    for (const auto& [days, expected] : splits) EXPECT_EQ(Of(LmTimeSpan(days, 1, 2, 3, 4)), expected) << days;
}

TEST(NanoArithmetic, Difference) {
    const LmTimeSpan a(2001, 1, 1, 0, 0, 0, 0), b(2001, 1, 2, 12, 0, 0, 500000000);
    EXPECT_EQ(Of(LmTimeSpan::Difference(a, b)), Fields(0, 0, 1, 12, 0, 0, 500000000));
    EXPECT_EQ(Of(LmTimeSpan::Difference(b, a)), Fields(0, 0, 1, 12, 0, 0, 500000000));
    EXPECT_EQ(Of(LmTimeSpan::Difference(a, LmTimeSpan())), Of(LmTimeSpan::Difference(a, LmTimeSpan::ClearValue())));
    // The borrowed second wraps an earlier 23:59:59 without its date: a day too long.
    EXPECT_EQ(Of(LmTimeSpan::Difference(N(2000, 12, 31, 23, 59, 59, 999999999), N(2001, 1, 2, 12, 0, 0, 0))),
              Fields(0, 0, 2, 12, 0, 0, 1));
    std::mt19937_64 gen(42);
    std::uniform_int_distribution<int> year(1, 4000), mon(1, 12), dd(1, 28), hh(0, 23), ms(0, 59), ns(0, 999999999);
    for (int i = 0; i < 3000; ++i) {
        const LmDateTimeN x = N(year(gen), mon(gen), dd(gen), hh(gen), ms(gen), ms(gen), ns(gen));
        LmDateTimeN y = i % 4 == 0 ? x : N(year(gen), mon(gen), dd(gen), hh(gen), ms(gen), ms(gen), ns(gen));
        if (i % 4 == 1) y = x, y.AddNanoSeconds(static_cast<long long>(gen() % 200000000000000ULL));
        const bool xLater = Instant(x) >= Instant(y);
        const LmDateTimeN& lo = xLater ? y : x;
        const LmDateTimeN& hi = xLater ? x : y;
        // The borrow of a second does not carry a day when the earlier time is 23:59:59.
        if (hi.nanoseconds < lo.nanoseconds && lo.hour == 23 && lo.minute == 59 && lo.second == 59) continue;
        const LmTimeSpan d = LmTimeSpan::Difference(x, y);
        ASSERT_EQ(SpanTotal(d), Instant(hi) - Instant(lo));
        ASSERT_TRUE(d.month >= 0 && d.month < 12 && d.day >= 0 && d.day < 30 && d.hour >= 0 && d.hour < 24);
    }
}

// Difference step by step on LmDate and LmTime, for any field values.
Fields LiteralDifference(LmDateTimeNRecord hi, LmDateTimeNRecord lo) {
    const auto date = [](const LmDateTimeNRecord& v) { return LmDate(v.year, char(v.month), char(v.day)); };
    const auto time = [](const LmDateTimeNRecord& v) { return LmTime(char(v.hour), char(v.minute), char(v.second)); };
    if (LmTimeSpan(hi.year, hi.month, hi.day, hi.hour, hi.minute, hi.second, hi.nanoseconds)
            .Compare(LmTimeSpan(lo.year, lo.month, lo.day, lo.hour, lo.minute, lo.second, lo.nanoseconds),
                     LM_CMP_NO_WILDCARD) < 0) {
        std::swap(hi, lo);
    }
    int days = date(hi) - date(lo);
    LmTime loTime = time(lo);
    if (hi.nanoseconds < lo.nanoseconds) hi.nanoseconds += 1000000000, ++loTime;
    LmTime hiTime = time(hi);
    if (hiTime < loTime && days >= 1) --days, hiTime.hour = static_cast<int8_t>(hiTime.hour + 24);
    const LmTime t = hiTime - loTime;
    return {int16_t(days / 360),
            int8_t(days / 30 - 12 * (days / 360)),
            int8_t(days % 30),
            t.hour,
            t.minute,
            t.second,
            hi.nanoseconds - lo.nanoseconds};
}

TEST(NanoArithmetic, DifferenceOfAnyFields) {
    std::mt19937_64 gen(43);
    std::uniform_int_distribution<int> year(-3000, 3000), field(-3, 62), ns(-1, 999999999);
    for (int i = 0; i < 20000; ++i) {
        const auto f = [&] { return static_cast<char>(field(gen) % (i % 2 != 0 ? 60 : 62)); };
        const LmDateTimeN a(static_cast<short>(year(gen)), f(), f(), f(), f(), f(), ns(gen));
        const LmDateTimeN b = i % 3 == 0 ? LmDateTimeN(a.year, a.month, a.day, f(), f(), f(), ns(gen))
                                         : LmDateTimeN(static_cast<short>(year(gen)), f(), f(), f(), f(), f(), ns(gen));
        ASSERT_EQ(Of(LmTimeSpan::Difference(a, b)), LiteralDifference(a, b)) << i;
    }
}

TEST(NanoValue, ConstantsTotalsAndCompare) {
    EXPECT_EQ(Of(LmDateTimeN()), Of(LmDateTimeN::NullValue()));
    EXPECT_EQ(Of(LmTimeSpan()), Fields(-32768, -128, -128, -128, -128, -128, 0));
    EXPECT_EQ(Of(LmDateTimeN::DefaultValue()), Of(LmTimeSpan::DefaultValue()));
    EXPECT_EQ(Of(LmDateTimeN::DefaultValue()), Fields(-4713, 11, 24, 0, 0, 0, 0));
    EXPECT_EQ(Of(LmDateTimeN::ZeroValue()), Fields(0, 1, 1, 0, 0, 0, 0));
    EXPECT_EQ(Of(LmTimeSpan::ZeroValue()), Fields());
    LmDateTimeN z = N(5, 5, 5, 5, 5, 5, 5);
    LmTimeSpan s(5, 5, 5, 5, 5, 5, 5);
    EXPECT_EQ(std::make_pair(z.SetZero().IsZeroValue(), s.SetZero().IsZeroValue()), std::make_pair(1, 1));
    EXPECT_EQ(z.SetDefaultValue(), 0);
    EXPECT_EQ(z.IsDefaultValue(), 1);
    EXPECT_EQ(s.SetNullValue(), 0);
    EXPECT_EQ(s.IsNullValue(), 1);
    EXPECT_EQ(N(-32768, -128, -128, -128, -128, -128, 1).IsNullValue(), 0);  // every field counts
    // Totals: days since 0000-01-01, or of 30-day months.
    EXPECT_EQ(LmDateTimeN::ZeroValue().GetTotalDays(), 0);
    EXPECT_EQ(N(0, 3, 1, 0, 0, 0, 0).GetTotalDays(), 60);
    EXPECT_EQ(N(0, 3, 1, 1, 0, 2, 7).GetTotalSeconds(), 60 * 86400LL + 3602);
    EXPECT_EQ(N(0, 3, 1, 1, 0, 2, 7).GetTotalNanoSeconds(), (60 * 86400LL + 3602) * 1000000000LL + 7);
    EXPECT_DOUBLE_EQ(LmTimeSpan(0, 0, 1, 0, 0, 1, 500000000).GetTotalSeconds_f(), 86401.5);
    EXPECT_DOUBLE_EQ(N(0, 1, 2, 0, 0, 1, 250000000).GetTotalSeconds_f(), 86401.25);
    EXPECT_EQ(LmTimeSpan(1, 2, 3, 0, 0, 0, 0).GetTotalDays(), 423);
    EXPECT_EQ(Of(LmTimeSpan().SetTotalDays(423)), Fields(1, 2, 3, 0, 0, 0, 0));
    EXPECT_EQ(Of(LmDateTimeN().SetTotalSeconds(86401LL)), Fields(0, 1, 2, 0, 0, 1, 0));
    EXPECT_EQ(Of(LmTimeSpan().SetTotalNanoSeconds(-1)), Fields(0, 0, -1, 23, 59, 59, 999999999));
    EXPECT_EQ(Of(LmTimeSpan().SetTotalSeconds(1.25)), Fields(0, 0, 0, 0, 0, 1, 250000000));
    // Compare: fields with the date-time rule, then nanoseconds as -1, 0 or 1.
    const LmDateTimeN a = N(2001, 1, 1, 0, 0, 0, 5), b = N(2001, 1, 1, 0, 0, 0, 900);
    EXPECT_EQ(std::make_pair(a.Compare(b, 0), b.Compare(a, 0)), std::make_pair(-1, 1));
    EXPECT_EQ(N(2001, 3, 1, 0, 0, 0, 0).Compare(a, 0), 2);  // a field difference
    const LmDateTimeN wild = N(2001, 1, 1, 0, 0, 0, -1);
    EXPECT_EQ(std::make_pair(wild.Compare(b, 0), b.Compare(wild, 0)), std::make_pair(0, 0));
    EXPECT_EQ(wild.Compare(b, LM_CMP_NO_WILDCARD), -1);
    EXPECT_EQ(N(2001, -1, 1, 0, 0, 0, 9).Compare(a, 0), 1);
    EXPECT_EQ(std::make_pair(a.IsValidDateTime(), N(2001, 2, 29, 0, 0, 0, -5).IsValidDateTime()), std::make_pair(1, 0));
    EXPECT_EQ(Of(LmDateTimeN(LmDateTime(2001, 2, 3, 4, 5, 6))), Fields(2001, 2, 3, 4, 5, 6, 0));
    EXPECT_EQ(Of(LmDateTimeN(LmTime(4, 5, 6))), Fields(0, 0, 0, 4, 5, 6, 0));
}

TEST(NanoValue, ClockAndZonesPinned) {
    bksPinClock(1000000000, 123456789);  // 2001-09-09 01:46:40.123456789 UTC
    bksPinTimeZone(-840);
    EXPECT_EQ(Of(LmDateTimeN().NowUTC()), Fields(2001, 9, 9, 1, 46, 40, 123456789));
    EXPECT_EQ(Of(LmDateTimeN().Now()), Fields(2001, 9, 8, 11, 46, 40, 123456789));
    LmDateTimeN v = N(2000, 3, 1, 0, 10, 0, 7);
    EXPECT_EQ(v.ToLocalTime(), 0);
    EXPECT_EQ(Of(v), Fields(2000, 2, 29, 10, 10, 0, 7));
    EXPECT_EQ(v.ToUTCTime(), 0);
    EXPECT_EQ(Of(v), Fields(2000, 3, 1, 0, 10, 0, 7));
    bksPinTimeZone(LMBASE_NO_TIMEZONE);
    EXPECT_EQ(std::make_pair(v.ToLocalTime(), v.ToUTCTime()), std::make_pair(LM_ERR_NO_TIMEZONE, LM_ERR_NO_TIMEZONE));
    EXPECT_EQ(Of(v), Fields(2000, 3, 1, 0, 10, 0, 7));
    bksPinTimeZone(INT_MIN);  // beyond any real zone: defined, whatever it gives
    EXPECT_EQ(v.ToUTCTime(), 0);
    bksUnpinTimeZone();
    bksUnpinClock();
}

// print -> scan -> print gives the same text and value, for both default formats.
TEST(NanoValue, TextRoundTrip) {
    const LmDateTimeN values[] = {N(2001, 2, 3, 4, 5, 6, 500000000), N(-4713, 11, 24, 0, 0, 0, 0),
                                  N(9999, 12, 31, 23, 59, 59, 999999999), N(2001, 2, 3, 4, 5, 6, 123000),
                                  LmDateTimeN::NullValue()};
    for (const auto& v : values) {
        LmString first, second;
        v.PrintToLmString(first, nullptr);
        LmDateTimeN back = N(1, 1, 1, 1, 1, 1, 1);
        ASSERT_EQ(back.ScanFromLmString(first, nullptr), &back) << first.StrGet();
        EXPECT_EQ(Of(back), Of(v)) << first.StrGet();
        EXPECT_STREQ(back.PrintToLmString(second, nullptr).StrGet(), first.StrGet());
    }
    LmString text;
    EXPECT_STREQ(N(2001, 2, 3, 4, 5, 6, 500000000).PrintToLmString(text, nullptr).StrGet(), "2001-02-03T04:05:06.500");
    const LmTimeSpan spans[] = {LmTimeSpan(400, 1, 2, 3, 4), LmTimeSpan(0, 0, 0, 0, 0, 5, 123456789),
                                LmTimeSpan(0, 23, 59, 59, 999999999)};
    for (const auto& v : spans) {
        LmString first, second;
        v.PrintToLmString(first, nullptr);
        LmTimeSpan back(1, 1, 1, 1, 1, 1, 1);
        ASSERT_EQ(back.ScanFromLmString(first, nullptr), &back) << first.StrGet();
        EXPECT_EQ(back.GetTotalNanoSeconds(), v.GetTotalNanoSeconds()) << first.StrGet();
        EXPECT_STREQ(back.PrintToLmString(second, nullptr).StrGet(), first.StrGet());
    }
}

}  // namespace
