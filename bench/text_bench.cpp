// Print and scan by type id of int (id 7), double (id 3) and LmString (id 11), next
// to the C library calls they wrap, on the same values: snprintf "%d" with strtol
// and sscanf "%d", snprintf "%.17g" with strtod. The values rotate through a small
// set of mixed lengths; the target string is reused from one call to the next, as a
// caller printing a column of values would.
//
// Run by hand: build-dir/bench/lmbench_text --benchmark_repetitions=5
//   --benchmark_report_aggregates_only=true
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <type_traits>
#include <vector>

#include "lumotypes.h"

namespace {

// Reached through an opaque pointer, as a kernel holds it.
LmTypeMgr* Manager() {
    static LmTypeMgr mgr(5);
    LmTypeMgr* p = &mgr;
    benchmark::DoNotOptimize(p);
    return p;
}

constexpr int32_t kInts[] = {0, 7, -42, 1234, -98765, 2147483647, 31337, -2147483647 - 1};
constexpr double kDoubles[] = {0.1, -2.5, 3.141592653589793, 1e-300, 6.02214076e23, 42.0, -0.0078125, 1.0 / 3.0};
constexpr size_t kCount = 8;

std::vector<LmString> Texts(const char* format, bool real) {
    std::vector<LmString> texts;
    char buffer[64];
    for (size_t i = 0; i < kCount; ++i) {
        if (real) {
            std::snprintf(buffer, sizeof buffer, format, kDoubles[i]);
        } else {
            std::snprintf(buffer, sizeof buffer, format, kInts[i]);
        }
        texts.emplace_back(buffer);
    }
    return texts;
}

// ---- int (id 7) and double (id 3), each next to the C library. ----

// Print by type id: the values rotate, the target string is reused.
template <typename T, size_t N>
void PrintById(benchmark::State& state, char id, const T (&source)[N], const char* format) {
    LmTypeMgr* mgr = Manager();
    LmString out;
    T values[N];
    std::copy(std::begin(source), std::end(source), values);
    size_t i = 0;
    for (auto _ : state) {
        mgr->PrintToLmString(id, out, &values[i], format, 1);
        benchmark::DoNotOptimize(out.StrGet());
        i = (i + 1) % N;
    }
}
BENCHMARK_CAPTURE(PrintById, int, LmINT_T, kInts, "%d");
BENCHMARK_CAPTURE(PrintById, double, LmDOUBLE_T, kDoubles, "%.17g");

template <typename T, size_t N>
void PrintSnprintf(benchmark::State& state, const T (&source)[N], const char* format) {
    char buffer[512];
    size_t i = 0;
    for (auto _ : state) {
        T v = source[i];
        benchmark::DoNotOptimize(v);
        benchmark::DoNotOptimize(std::snprintf(buffer, sizeof buffer, format, v));
        benchmark::ClobberMemory();
        i = (i + 1) % N;
    }
}
BENCHMARK_CAPTURE(PrintSnprintf, int, kInts, "%d");
BENCHMARK_CAPTURE(PrintSnprintf, double, kDoubles, "%.17g");

// Scan by type id of the texts the C library prints for the same values; the last
// argument names the value's type.
template <typename T>
void ScanById(benchmark::State& state, char id, const char* format, T) {
    LmTypeMgr* mgr = Manager();
    std::vector<LmString> texts = Texts(format, std::is_floating_point_v<T>);
    T v = 0;
    size_t i = 0;
    for (auto _ : state) {
        mgr->ScanFromLmString(id, &v, texts[i], format, 1);
        benchmark::DoNotOptimize(v);
        i = (i + 1) % kCount;
    }
}
BENCHMARK_CAPTURE(ScanById, int, LmINT_T, "%d", int32_t{0});
BENCHMARK_CAPTURE(ScanById, double, LmDOUBLE_T, "%.17g", 0.0);

void IntScanStrtol(benchmark::State& state) {
    std::vector<LmString> texts = Texts("%d", false);
    size_t i = 0;
    for (auto _ : state) {
        const char* t = texts[i].StrGet();
        benchmark::DoNotOptimize(t);
        benchmark::DoNotOptimize(static_cast<int>(std::strtol(t, nullptr, 10)));
        i = (i + 1) % kCount;
    }
}
BENCHMARK(IntScanStrtol);

void IntScanSscanf(benchmark::State& state) {
    std::vector<LmString> texts = Texts("%d", false);
    int v = 0;
    size_t i = 0;
    for (auto _ : state) {
        std::sscanf(texts[i].StrGet(), "%d", &v);
        benchmark::DoNotOptimize(v);
        i = (i + 1) % kCount;
    }
}
BENCHMARK(IntScanSscanf);

void DoubleScanStrtod(benchmark::State& state) {
    std::vector<LmString> texts = Texts("%.17g", true);
    size_t i = 0;
    for (auto _ : state) {
        const char* t = texts[i].StrGet();
        benchmark::DoNotOptimize(t);
        benchmark::DoNotOptimize(std::strtod(t, nullptr));
        i = (i + 1) % kCount;
    }
}
BENCHMARK(DoubleScanStrtod);

// ---- LmString, id 11: no C library peer; the text copy is the work. ----

void StringPrintById(benchmark::State& state) {
    LmTypeMgr* mgr = Manager();
    std::vector<LmString> texts = Texts("value %d", false);
    LmString out;
    size_t i = 0;
    for (auto _ : state) {
        mgr->PrintToLmString(LmSTRING_T, out, &texts[i], "%s", 1);
        benchmark::DoNotOptimize(out.StrGet());
        i = (i + 1) % kCount;
    }
}
BENCHMARK(StringPrintById);

void StringScanById(benchmark::State& state) {
    LmTypeMgr* mgr = Manager();
    std::vector<LmString> texts = Texts("value %d", false);
    LmString v;
    size_t i = 0;
    for (auto _ : state) {
        mgr->ScanFromLmString(LmSTRING_T, &v, texts[i], "%s", 1);
        benchmark::DoNotOptimize(v.StrGet());
        i = (i + 1) % kCount;
    }
}
BENCHMARK(StringScanById);

}  // namespace
