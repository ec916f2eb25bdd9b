// Dates and times: LmDate's absolute day and its inverse next to the era-based
// civil-day algorithm on the same dates; printing and scanning of LmDate and LmTime
// by type id next to strftime and strptime and to a hand-written fixed-width printer
// and parser (the floor); Cmp and Hash of stored dates next to those of o_4b.
//
// Run by hand from a Release build: build-rel/bench/lmbench_datetime
//   --benchmark_repetitions=5 --benchmark_report_aggregates_only=true
// and compare the cases side by side from the same run.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <ctime>
#include <vector>

#include "lumotypes.h"

namespace {

// The peer: days from 1970-01-01 to a civil date and back, by eras of 400 years, in
// the same 32-bit integers.
int DaysFromCivil(int y, int m, int d) {
    y -= m <= 2;
    const int era = (y >= 0 ? y : y - 399) / 400;
    const int yoe = y - era * 400;
    const int doy = (153 * (m > 2 ? m - 3 : m + 9) + 2) / 5 + d - 1;
    const int doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 719468;
}

struct Civil {
    int y, m, d;
};

Civil CivilFromDays(int z) {
    z += 719468;
    const int era = (z >= 0 ? z : z - 146096) / 146097;
    const int doe = z - era * 146097;
    const int yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const int doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const int mp = (5 * doy + 2) / 153;
    const int d = doy - (153 * mp + 2) / 5 + 1;
    const int m = mp < 10 ? mp + 3 : mp - 9;
    return {yoe + era * 400 + (m <= 2), m, d};
}

constexpr int kJdnOfEpoch = 2440588;

// 4096 dates spread over the years -4000 to 9000, as dates and as absolute days.
struct Dates {
    std::vector<LmDate> dates;
    std::vector<int> days;
    Dates() {
        for (int i = 0; i < 4096; ++i) {
            const int jdn = 260000 + i * 1159;
            days.push_back(jdn);
            dates.emplace_back(jdn);
        }
    }
};

const Dates& Sample() {
    static const Dates d;
    return d;
}

void DayAbs(benchmark::State& state) {
    const auto& s = Sample();
    for (auto _ : state) {
        int sum = 0;
        for (const LmDate& d : s.dates) sum += d.dayabs();
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(s.dates.size()));
}
BENCHMARK(DayAbs);

void PeerDaysFromCivil(benchmark::State& state) {
    const auto& s = Sample();
    for (auto _ : state) {
        int sum = 0;
        for (const LmDate& d : s.dates) sum += DaysFromCivil(d.year, d.month, d.day) + kJdnOfEpoch;
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(s.dates.size()));
}
BENCHMARK(PeerDaysFromCivil);

void DateAbs(benchmark::State& state) {
    const auto& s = Sample();
    std::vector<LmDate> out(s.days.size(), LmDate(0, 0, 0));
    for (auto _ : state) {
        for (size_t i = 0; i < s.days.size(); ++i) out[i].dateabs(s.days[i]);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(s.days.size()));
}
BENCHMARK(DateAbs);

void PeerCivilFromDays(benchmark::State& state) {
    const auto& s = Sample();
    std::vector<LmDate> out(s.days.size(), LmDate(0, 0, 0));
    for (auto _ : state) {
        for (size_t i = 0; i < s.days.size(); ++i) {
            const Civil c = CivilFromDays(s.days[i] - kJdnOfEpoch);
            out[i] = LmDate(static_cast<short>(c.y), static_cast<char>(c.m), static_cast<char>(c.d));
        }
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(s.days.size()));
}
BENCHMARK(PeerCivilFromDays);

// ---- Text by type id. ----

// The manager is reached through an opaque pointer, as a kernel holds it.
LmTypeMgr* Manager() {
    static LmTypeMgr mgr(5);
    LmTypeMgr* p = &mgr;
    benchmark::DoNotOptimize(p);
    return p;
}

constexpr size_t kTexts = 1024;

// The sample's dates and times of day, as values, as struct tm and as texts.
struct Texts {
    std::vector<LmDate> dates;
    std::vector<LmTime> times;
    std::vector<tm> dateTm, timeTm;
    std::vector<LmString> dateText, timeText;
    Texts() {
        for (size_t i = 0; i < kTexts; ++i) {
            const LmDate d(2440588 + static_cast<int>(i) * 37);
            const int seconds = static_cast<int>(i * 7919 % 86400);
            const LmTime t(seconds);
            dates.push_back(d);
            times.push_back(t);
            tm a{};
            a.tm_year = d.year - 1900;
            a.tm_mon = d.month - 1;
            a.tm_mday = d.day;
            dateTm.push_back(a);
            tm b{};
            b.tm_hour = t.hour;
            b.tm_min = t.minute;
            b.tm_sec = t.second;
            timeTm.push_back(b);
            LmString text;
            dateText.push_back(d.PrintToLmString(text, "%Y-%m-%d"));
            timeText.push_back(t.PrintToLmString(text, "%H:%M:%S"));
        }
    }
};

const Texts& TextSample() {
    static const Texts t;
    return t;
}

// The floor: fixed-width digits written and read by hand.
inline char* Put2(char* p, int v) {
    p[0] = static_cast<char>('0' + v / 10);
    p[1] = static_cast<char>('0' + v % 10);
    return p + 2;
}
inline int Get2(const char* p) { return (p[0] - '0') * 10 + (p[1] - '0'); }

void FloorDateText(char* buf, const LmDate& d) {
    const int y = d.year;
    buf[0] = static_cast<char>('0' + y / 1000);
    buf[1] = static_cast<char>('0' + y / 100 % 10);
    Put2(buf + 2, y % 100);
    buf[4] = '-';
    Put2(buf + 5, d.month);
    buf[7] = '-';
    Put2(buf + 8, d.day);
    buf[10] = 0;
}

void FloorTimeText(char* buf, const LmTime& t) {
    Put2(buf, t.hour);
    buf[2] = ':';
    Put2(buf + 3, t.minute);
    buf[5] = ':';
    Put2(buf + 6, t.second);
    buf[8] = 0;
}

template <typename Body>
void OverTexts(benchmark::State& state, Body body) {
    for (auto _ : state) {
        for (size_t i = 0; i < kTexts; ++i) body(i);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(kTexts));
}

void PrintDateById(benchmark::State& state) {
    const auto& t = TextSample();
    LmTypeMgr* mgr = Manager();
    LmString out;
    OverTexts(state, [&](size_t i) {
        mgr->PrintToLmString(LmDATE_T, out, const_cast<LmDate*>(&t.dates[i]), "%Y-%m-%d", 1);
        benchmark::DoNotOptimize(out.StrGet());
    });
}
BENCHMARK(PrintDateById);

void PeerStrftimeDate(benchmark::State& state) {
    const auto& t = TextSample();
    char buf[64];
    OverTexts(state, [&](size_t i) {
        benchmark::DoNotOptimize(std::strftime(buf, sizeof buf, "%Y-%m-%d", &t.dateTm[i]));
        benchmark::DoNotOptimize(buf);
    });
}
BENCHMARK(PeerStrftimeDate);

// The floor into an LmString, as the print by id delivers it, and into a buffer alone.
void FloorPrintDate(benchmark::State& state) {
    const auto& t = TextSample();
    LmString out;
    char buf[16];
    OverTexts(state, [&](size_t i) {
        FloorDateText(buf, t.dates[i]);
        out = buf;
        benchmark::DoNotOptimize(out.StrGet());
    });
}
BENCHMARK(FloorPrintDate);

void FloorPrintDateToBuffer(benchmark::State& state) {
    const auto& t = TextSample();
    char buf[16];
    OverTexts(state, [&](size_t i) {
        FloorDateText(buf, t.dates[i]);
        benchmark::DoNotOptimize(buf);
    });
}
BENCHMARK(FloorPrintDateToBuffer);

void PrintTimeById(benchmark::State& state) {
    const auto& t = TextSample();
    LmTypeMgr* mgr = Manager();
    LmString out;
    OverTexts(state, [&](size_t i) {
        mgr->PrintToLmString(LmTIME_T, out, const_cast<LmTime*>(&t.times[i]), "%H:%M:%S", 1);
        benchmark::DoNotOptimize(out.StrGet());
    });
}
BENCHMARK(PrintTimeById);

void PeerStrftimeTime(benchmark::State& state) {
    const auto& t = TextSample();
    char buf[64];
    OverTexts(state, [&](size_t i) {
        benchmark::DoNotOptimize(std::strftime(buf, sizeof buf, "%H:%M:%S", &t.timeTm[i]));
        benchmark::DoNotOptimize(buf);
    });
}
BENCHMARK(PeerStrftimeTime);

void FloorPrintTime(benchmark::State& state) {
    const auto& t = TextSample();
    LmString out;
    char buf[16];
    OverTexts(state, [&](size_t i) {
        FloorTimeText(buf, t.times[i]);
        out = buf;
        benchmark::DoNotOptimize(out.StrGet());
    });
}
BENCHMARK(FloorPrintTime);

void ScanDateById(benchmark::State& state) {
    auto& t = const_cast<Texts&>(TextSample());
    LmTypeMgr* mgr = Manager();
    LmDate d(0, 0, 0);
    OverTexts(state, [&](size_t i) {
        benchmark::DoNotOptimize(mgr->ScanFromLmString(LmDATE_T, &d, t.dateText[i], "%Y-%m-%d", 1));
    });
}
BENCHMARK(ScanDateById);

void PeerStrptimeDate(benchmark::State& state) {
    const auto& t = TextSample();
    tm out{};
    OverTexts(state, [&](size_t i) {
        benchmark::DoNotOptimize(strptime(t.dateText[i].StrGet(), "%Y-%m-%d", &out));
        benchmark::DoNotOptimize(out);
    });
}
BENCHMARK(PeerStrptimeDate);

void FloorScanDate(benchmark::State& state) {
    const auto& t = TextSample();
    LmDate d(0, 0, 0);
    OverTexts(state, [&](size_t i) {
        const char* p = t.dateText[i].StrGet();
        d = LmDate(static_cast<short>(Get2(p) * 100 + Get2(p + 2)), static_cast<char>(Get2(p + 5)),
                   static_cast<char>(Get2(p + 8)));
        benchmark::DoNotOptimize(d);
    });
}
BENCHMARK(FloorScanDate);

void ScanTimeById(benchmark::State& state) {
    auto& t = const_cast<Texts&>(TextSample());
    LmTypeMgr* mgr = Manager();
    LmTime v(0, 0, 0);
    OverTexts(state, [&](size_t i) {
        benchmark::DoNotOptimize(mgr->ScanFromLmString(LmTIME_T, &v, t.timeText[i], "%H:%M:%S", 1));
    });
}
BENCHMARK(ScanTimeById);

void PeerStrptimeTime(benchmark::State& state) {
    const auto& t = TextSample();
    tm out{};
    OverTexts(state, [&](size_t i) {
        benchmark::DoNotOptimize(strptime(t.timeText[i].StrGet(), "%H:%M:%S", &out));
        benchmark::DoNotOptimize(out);
    });
}
BENCHMARK(PeerStrptimeTime);

void FloorScanTime(benchmark::State& state) {
    const auto& t = TextSample();
    LmTime v(0, 0, 0);
    OverTexts(state, [&](size_t i) {
        const char* p = t.timeText[i].StrGet();
        v = LmTime(static_cast<char>(Get2(p)), static_cast<char>(Get2(p + 3)), static_cast<char>(Get2(p + 6)));
        benchmark::DoNotOptimize(v);
    });
}
BENCHMARK(FloorScanTime);

// ---- Cmp and Hash of stored arrays: 1000 dates and 1000 o_4b values, two equal
// arrays so that the loop runs to the end, in each store format. ----

struct StoredArrays {
    std::vector<unsigned char> dates, dates2, longs, longs2;
    explicit StoredArrays(unsigned char format) {
        std::vector<LmDate> d;
        std::vector<int32_t> l;
        for (int i = 0; i < 1000; ++i) {
            d.emplace_back(2440588 + i * 7);
            l.push_back(i * 7919);
        }
        dates.resize(4000);
        longs.resize(4000);
        LmTypeMgr mgr;
        mgr.Store(LmDATE_T, dates.data(), d.data(), format == LmFormatMemory ? LmFormatLittle : format, 1000);
        if (format == LmFormatMemory) std::memcpy(dates.data(), d.data(), 4000);
        mgr.Store(Lm4B_T, longs.data(), l.data(), format == LmFormatMemory ? LmFormatLittle : format, 1000);
        dates2 = dates;
        longs2 = longs;
    }
};

void StoredCmp(benchmark::State& state, char id) {
    const auto format = static_cast<unsigned char>(state.range(0));
    StoredArrays a(format);
    LmTypeMgr* mgr = Manager();
    auto& x = id == LmDATE_T ? a.dates : a.longs;
    auto& y = id == LmDATE_T ? a.dates2 : a.longs2;
    int status = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(mgr->Cmp(id, 4000, x.data(), 4000, y.data(), 0, 1000, format, status));
    state.SetItemsProcessed(state.iterations() * 1000);
}
void DateCmpArray(benchmark::State& state) { StoredCmp(state, LmDATE_T); }
void LongCmpArray(benchmark::State& state) { StoredCmp(state, Lm4B_T); }
BENCHMARK(DateCmpArray)->Arg(LmFormatMemory)->Arg(LmFormatLittle)->Arg(LmFormatBig);
BENCHMARK(LongCmpArray)->Arg(LmFormatMemory)->Arg(LmFormatLittle)->Arg(LmFormatBig);

void StoredHash(benchmark::State& state, char id) {
    const auto format = static_cast<unsigned char>(state.range(0));
    StoredArrays a(format);
    LmTypeMgr* mgr = Manager();
    auto& x = id == LmDATE_T ? a.dates : a.longs;
    int status = 0;
    for (auto _ : state) benchmark::DoNotOptimize(mgr->Hash(id, 4000, x.data(), 1000, format, status));
    state.SetItemsProcessed(state.iterations() * 1000);
}
void DateHashArray(benchmark::State& state) { StoredHash(state, LmDATE_T); }
void LongHashArray(benchmark::State& state) { StoredHash(state, Lm4B_T); }
BENCHMARK(DateHashArray)->Arg(LmFormatMemory)->Arg(LmFormatLittle)->Arg(LmFormatBig);
BENCHMARK(LongHashArray)->Arg(LmFormatMemory)->Arg(LmFormatLittle)->Arg(LmFormatBig);

}  // namespace
