// The nanosecond date-time: a span added to LmDateTimeN values, Difference of two
// date-times, and Cmp of 1000 stored LmDateTimeN values. The peers work on the same
// instants with std::chrono (sys_time<nanoseconds>): the bare addition or subtraction
// of two counts, and the same followed by the split into civil fields that the
// field form of LmDateTimeN holds at all times. Stored Cmp has o_8b arrays of the
// same length as its peer.
//
// Run by hand from a Release build: build-rel/bench/lmbench_datetimen
//   --benchmark_repetitions=5 --benchmark_report_aggregates_only=true
// and compare the cases side by side from the same run.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <cstring>
#include <vector>

#include "lumotypes.h"

namespace {

using namespace std::chrono;
using Instant = sys_time<nanoseconds>;

constexpr int kValues = 1024;

// 1024 date-times over the years 1900 to 2100, with the same instants for chrono,
// and spans of up to about 40 days.
struct Moments {
    std::vector<LmDateTimeN> values;
    std::vector<Instant> instants;
    std::vector<LmTimeSpan> spans;
    std::vector<nanoseconds> counts;
    Moments() {
        uint64_t x = 88172645463325252ull;
        const auto next = [&x] {
            x ^= x << 13;
            x ^= x >> 7;
            x ^= x << 17;
            return x;
        };
        for (int i = 0; i < kValues; ++i) {
            const auto day = static_cast<int>(next() % 73000) - 25567;  // 1900 .. 2100
            const auto ns = static_cast<long long>(next() % 86400000000000ull);
            const Instant t = sys_days{days{day}} + nanoseconds{ns};
            instants.push_back(t);
            const year_month_day ymd{floor<days>(t)};
            const hh_mm_ss<nanoseconds> tod{t - floor<days>(t)};
            values.emplace_back(static_cast<short>(int{ymd.year()}), static_cast<char>(unsigned{ymd.month()}),
                                static_cast<char>(unsigned{ymd.day()}), static_cast<char>(tod.hours().count()),
                                static_cast<char>(tod.minutes().count()), static_cast<char>(tod.seconds().count()),
                                static_cast<int>(tod.subseconds().count()));
            const auto span = static_cast<long long>(next() % 3500000000000000ull);
            counts.emplace_back(span);
            spans.push_back(LmTimeSpan(0.0).SetTotalNanoSeconds(span));
        }
    }
};

const Moments& Data() {
    static const Moments m;
    return m;
}

// Fields of an instant, as the peer's form of the result.
struct CivilFields {
    int y;
    unsigned m, d;
    long long h, mi, s, ns;
};
CivilFields Split(Instant t) {
    const auto dp = floor<days>(t);
    const year_month_day ymd{dp};
    const hh_mm_ss<nanoseconds> tod{t - dp};
    return {int{ymd.year()},       unsigned{ymd.month()}, unsigned{ymd.day()},     tod.hours().count(),
            tod.minutes().count(), tod.seconds().count(), tod.subseconds().count()};
}

// ---- A span added to a date-time. ----

void AddSpan(benchmark::State& state) {
    const Moments& m = Data();
    std::vector<LmDateTimeN> out(kValues);
    for (auto _ : state) {
        for (int i = 0; i < kValues; ++i) {
            LmDateTimeN v = m.values[i];
            v.AddNanoSeconds(m.spans[i].GetTotalNanoSeconds());
            out[i] = v;
        }
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kValues);
}
BENCHMARK(AddSpan);

void ChronoAdd(benchmark::State& state) {
    const Moments& m = Data();
    std::vector<Instant> out(kValues);
    for (auto _ : state) {
        for (int i = 0; i < kValues; ++i) out[i] = m.instants[i] + m.counts[i];
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kValues);
}
BENCHMARK(ChronoAdd);

void ChronoAddFields(benchmark::State& state) {
    const Moments& m = Data();
    std::vector<CivilFields> out(kValues);
    for (auto _ : state) {
        for (int i = 0; i < kValues; ++i) out[i] = Split(m.instants[i] + m.counts[i]);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kValues);
}
BENCHMARK(ChronoAddFields);

// ---- The distance between two date-times. ----

void Difference(benchmark::State& state) {
    const Moments& m = Data();
    std::vector<LmTimeSpan> out(kValues);
    for (auto _ : state) {
        for (int i = 0; i < kValues; ++i) out[i] = LmTimeSpan::Difference(m.values[i], m.values[kValues - 1 - i]);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kValues);
}
BENCHMARK(Difference);

void ChronoDifference(benchmark::State& state) {
    const Moments& m = Data();
    std::vector<nanoseconds> out(kValues);
    for (auto _ : state) {
        for (int i = 0; i < kValues; ++i) {
            const auto d = m.instants[i] - m.instants[kValues - 1 - i];
            out[i] = d < nanoseconds::zero() ? -d : d;
        }
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kValues);
}
BENCHMARK(ChronoDifference);

// The duration split into days and a time of day, as a span holds it.
void ChronoDifferenceFields(benchmark::State& state) {
    const Moments& m = Data();
    std::vector<CivilFields> out(kValues);
    for (auto _ : state) {
        for (int i = 0; i < kValues; ++i) {
            auto d = m.instants[i] - m.instants[kValues - 1 - i];
            if (d < nanoseconds::zero()) d = -d;
            const auto whole = floor<days>(d);
            const hh_mm_ss<nanoseconds> tod{d - whole};
            const auto n = static_cast<int>(whole.count());
            out[i] = {n / 360,
                      static_cast<unsigned>(n / 30 % 12),
                      static_cast<unsigned>(n % 30),
                      tod.hours().count(),
                      tod.minutes().count(),
                      tod.seconds().count(),
                      tod.subseconds().count()};
        }
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kValues);
}
BENCHMARK(ChronoDifferenceFields);

// ---- Cmp of 1000 stored values: two equal arrays, so the loop runs to the end. ----

constexpr unsigned kStored = 1000;

void StoredCmp(benchmark::State& state, char id, unsigned width) {
    const auto format = static_cast<unsigned char>(state.range(0));
    const Moments& m = Data();
    LmTypeMgr mgr;
    const unsigned step = format == LmFormatMemory ? mgr.Desc(id)->memLen : width;
    std::vector<unsigned char> x(static_cast<size_t>(step) * kStored), y;
    if (id == LmDATIME_N_T) {
        if (format == LmFormatMemory) {
            std::memcpy(x.data(), m.values.data(), x.size());
        } else {
            mgr.Store(id, x.data(), const_cast<LmDateTimeN*>(m.values.data()), format, kStored);
        }
    } else {
        std::vector<int64_t> counts;
        for (unsigned i = 0; i < kStored; ++i) counts.push_back(m.instants[i].time_since_epoch().count());
        mgr.Store(id, x.data(), counts.data(), format == LmFormatMemory ? LmFormatLittle : format, kStored);
    }
    y = x;
    // Arg 2 of the wild variant: the second array's nanoseconds are the wildcard -1, so
    // every element is compared field by field and still found equal.
    if (state.range(1) != 0) {
        for (unsigned i = 0; i < kStored; ++i) std::memset(y.data() + i * step + (step == 12 ? 8 : 7), 0xFF, 4);
    }
    const auto len = static_cast<unsigned>(x.size());
    int status = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(mgr.Cmp(id, len, x.data(), len, y.data(), 0, kStored, format, status));
    state.SetItemsProcessed(state.iterations() * kStored);
}
void DateTimeNCmpArray(benchmark::State& state) { StoredCmp(state, LmDATIME_N_T, 11); }
void O8bCmpArray(benchmark::State& state) { StoredCmp(state, Lm8B_T, 8); }
BENCHMARK(DateTimeNCmpArray)->ArgsProduct({{LmFormatMemory, LmFormatLittle, LmFormatBig}, {0, 1}});
BENCHMARK(O8bCmpArray)->ArgsProduct({{LmFormatMemory, LmFormatLittle, LmFormatBig}, {0}});

}  // namespace
