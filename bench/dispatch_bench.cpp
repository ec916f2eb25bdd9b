// Dispatch cost of the manager against a direct call of the slot function, and the
// element loops of Cmp and Hash over long arrays in each store format.
//
// Run by hand: build-dir/bench/lmbench_dispatch --benchmark_repetitions=5
//   --benchmark_report_aggregates_only=true
// and compare the cases side by side from the same run.
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "lumotypes.h"

namespace {

// The manager is reached through an opaque pointer, as a kernel holds it, so the
// compiler cannot resolve the descriptor at build time.
LmTypeMgr* Manager() {
    static LmTypeMgr mgr(5);
    LmTypeMgr* p = &mgr;
    benchmark::DoNotOptimize(p);
    return p;
}

// One int element compared per iteration through `call`, whose operands the
// compiler must reload every time.
template <typename Call>
void CompareOneInt(benchmark::State& state, Call call) {
    int32_t a = 17, b = 42;
    for (auto _ : state) {
        benchmark::DoNotOptimize(a);
        benchmark::DoNotOptimize(b);
        benchmark::DoNotOptimize(call(&a, &b));
    }
}

void IntCompareDirect(benchmark::State& state) {
    int status = 0;
    CompareOneInt(state, [&](void* a, void* b) { return IntCompare(LmFormatMemory, 0, a, 0, b, 0, 1, status); });
}
BENCHMARK(IntCompareDirect);

void IntCompareThroughPtrGet(benchmark::State& state) {
    LmTypeCmpFunc cmp = Manager()->CmpFuncPtrGet(LmINT_T);
    benchmark::DoNotOptimize(cmp);
    int status = 0;
    CompareOneInt(state, [&](void* a, void* b) { return cmp(LmFormatMemory, 0, a, 0, b, 0, 1, status); });
}
BENCHMARK(IntCompareThroughPtrGet);

void ManagerCmpLong(benchmark::State& state) {
    LmTypeMgr* mgr = Manager();
    int status = 0;
    CompareOneInt(state, [&](void* a, void* b) { return mgr->Cmp(LmINT_T, 0, a, 0, b, 0, 1, LmFormatMemory, status); });
}
BENCHMARK(ManagerCmpLong);

void ManagerCmpShort(benchmark::State& state) {
    LmTypeMgr* mgr = Manager();
    CompareOneInt(state, [&](void* a, void* b) { return mgr->Cmp(LmINT_T, a, b, 0, 1, LmFormatMemory); });
}
BENCHMARK(ManagerCmpShort);

// Two equal 1000-element o_4b arrays in the given form, so the loop runs to the end.
struct Arrays {
    std::vector<int32_t> values;
    std::vector<unsigned char> a, b;
    explicit Arrays(unsigned char format) : values(1000) {
        for (size_t i = 0; i < values.size(); ++i) values[i] = static_cast<int32_t>(i * 7919);
        a.resize(values.size() * 4);
        if (format == LmFormatMemory) {
            std::memcpy(a.data(), values.data(), a.size());
        } else {
            LongStore(a.data(), values.data(), format, static_cast<unsigned>(values.size()));
        }
        b = a;
    }
};

void ManagerCmpArray(benchmark::State& state) {
    const auto format = static_cast<unsigned char>(state.range(0));
    Arrays arrays(format);
    LmTypeMgr* mgr = Manager();
    int status = 0;
    const auto len = static_cast<unsigned>(arrays.a.size());
    for (auto _ : state) {
        benchmark::DoNotOptimize(mgr->Cmp(Lm4B_T, len, arrays.a.data(), len, arrays.b.data(), 0, 1000, format, status));
    }
    state.SetItemsProcessed(state.iterations() * 1000);
}
BENCHMARK(ManagerCmpArray)->Arg(LmFormatMemory)->Arg(LmFormatLittle)->Arg(LmFormatBig);

void ManagerHashArray(benchmark::State& state) {
    const auto format = static_cast<unsigned char>(state.range(0));
    Arrays arrays(format);
    LmTypeMgr* mgr = Manager();
    int status = 0;
    const auto len = static_cast<unsigned>(arrays.a.size());
    for (auto _ : state) {
        benchmark::DoNotOptimize(mgr->Hash(Lm4B_T, len, arrays.a.data(), 1000, format, status));
    }
    state.SetItemsProcessed(state.iterations() * 1000);
}
BENCHMARK(ManagerHashArray)->Arg(LmFormatMemory)->Arg(LmFormatLittle)->Arg(LmFormatBig);

}  // namespace
