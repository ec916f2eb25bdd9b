// The standard family's day arithmetic on its own calendar, worked out in doubles,
// next to the integer LmDate operations on the same dates (the peer):
//   - the absolute day and back: d_Date ++ against LmDate ++ (dayabs and dateabs);
//   - + of an interval of 30 days against LmDate + 30;
//   - the absolute day alone: d_Date != (a day difference) against LmDate -;
//   - day_of_week against LmDate::GetDayOfTheDate.
//
// Run by hand from a Release build: build-rel/bench/lmbench_stddate
//   --benchmark_repetitions=5 --benchmark_report_aggregates_only=true
// and compare the pairs side by side from the same run.
#include <benchmark/benchmark.h>

#include <vector>

#include "lumotypes.h"

namespace {

// 4096 dates of the Gregorian years 1600 to 9000, where both calendars agree, as
// both types.
struct Dates {
    std::vector<LmDate> lm;
    std::vector<d_Date> std;
    Dates() {
        for (int i = 0; i < 4096; ++i) {
            const LmDate d(2305448 + i * 660);  // 1600-01-01 onwards
            lm.push_back(d);
            std.emplace_back(d);
        }
    }
};

const Dates& Sample() {
    static const Dates dates;
    return dates;
}

void StdDateNextDay(benchmark::State& state) {
    std::vector<d_Date> dates = Sample().std;
    for (auto _ : state) {
        for (d_Date& d : dates) ++d;
        benchmark::DoNotOptimize(dates.data());
        for (d_Date& d : dates) --d;
    }
    state.SetItemsProcessed(state.iterations() * 2 * static_cast<int64_t>(dates.size()));
}
BENCHMARK(StdDateNextDay);

void LmDateNextDay(benchmark::State& state) {
    std::vector<LmDate> dates = Sample().lm;
    for (auto _ : state) {
        for (LmDate& d : dates) ++d;
        benchmark::DoNotOptimize(dates.data());
        for (LmDate& d : dates) --d;
    }
    state.SetItemsProcessed(state.iterations() * 2 * static_cast<int64_t>(dates.size()));
}
BENCHMARK(LmDateNextDay);

void StdDatePlusInterval(benchmark::State& state) {
    const std::vector<d_Date>& dates = Sample().std;
    const d_Interval month(30);
    for (auto _ : state) {
        for (const d_Date& d : dates) benchmark::DoNotOptimize(d + month);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(dates.size()));
}
BENCHMARK(StdDatePlusInterval);

void LmDatePlusDays(benchmark::State& state) {
    const std::vector<LmDate>& dates = Sample().lm;
    for (auto _ : state) {
        for (const LmDate& d : dates) benchmark::DoNotOptimize(d + 30);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(dates.size()));
}
BENCHMARK(LmDatePlusDays);

void StdDateDayDifference(benchmark::State& state) {
    const std::vector<d_Date>& dates = Sample().std;
    const d_Date ref(2000, 1, 1);
    for (auto _ : state) {
        for (const d_Date& d : dates) benchmark::DoNotOptimize(d != ref);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(dates.size()));
}
BENCHMARK(StdDateDayDifference);

void LmDateDayDifference(benchmark::State& state) {
    const std::vector<LmDate>& dates = Sample().lm;
    const LmDate ref(2000, 1, 1);
    for (auto _ : state) {
        for (const LmDate& d : dates) benchmark::DoNotOptimize(d - ref);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(dates.size()));
}
BENCHMARK(LmDateDayDifference);

void StdDateDayOfWeek(benchmark::State& state) {
    const std::vector<d_Date>& dates = Sample().std;
    for (auto _ : state) {
        for (const d_Date& d : dates) benchmark::DoNotOptimize(d.day_of_week());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(dates.size()));
}
BENCHMARK(StdDateDayOfWeek);

void LmDateDayOfWeek(benchmark::State& state) {
    const std::vector<LmDate>& dates = Sample().lm;
    for (auto _ : state) {
        for (const LmDate& d : dates) benchmark::DoNotOptimize(d.GetDayOfTheDate());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(dates.size()));
}
BENCHMARK(LmDateDayOfWeek);

}  // namespace
