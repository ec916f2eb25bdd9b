// Dates and times: LmDate's absolute day and its inverse next to the era-based
// civil-day algorithm on the same dates.
//
// Run by hand from a Release build: build-rel/bench/lmbench_datetime
//   --benchmark_repetitions=5 --benchmark_report_aggregates_only=true
// and compare the cases side by side from the same run.
#include <benchmark/benchmark.h>

#include <cstdint>
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

}  // namespace
