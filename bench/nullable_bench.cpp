// Compare and hash of stored nullable keys beside the same values of their base
// types: 1000 LmNull_int and LmNull_double disk images, least significant byte first,
// one in ten of them null, against 1000 int and o_double images of the same values.
// Each iteration compares every neighbouring pair (count 1) and hashes every key, as
// index code does, through the slot taken once.
//
// Run by hand: build-rel/bench/lmbench_nullable --benchmark_repetitions=5
//   --benchmark_report_aggregates_only=true
// and compare each nullable case with its base case from the same run.
#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "lumotypes.h"

namespace {

constexpr unsigned kKeys = 1000;

struct Keys {
    std::vector<unsigned char> bytes;
    unsigned width = 0;
    unsigned char* At(unsigned i) { return bytes.data() + static_cast<size_t>(i) * width; }
};

template <typename T>
Keys& StoredKeys(char id) {
    static Keys keys[64];
    Keys& k = keys[static_cast<int>(id)];
    if (!k.bytes.empty()) return k;
    const LmTypeMgr mgr;
    const bool nullable = id >= LmNULL_1B_T;
    std::mt19937 random(7);
    k.width = mgr.DiskLenGet(id, nullptr, LmFormatLittle, 1, LmFormatMemory);
    k.bytes.resize(static_cast<size_t>(kKeys) * k.width);
    for (unsigned i = 0; i < kKeys; ++i) {
        const T v = static_cast<T>(static_cast<int32_t>(random() % 2000000) - 1000000) / T(3);
        LmNullable<T> n{v, static_cast<signed char>(random() % 10 == 0 ? 1 : 0)};
        mgr.Store(id, k.At(i), nullable ? static_cast<void*>(&n) : const_cast<T*>(&v), LmFormatLittle, 1);
    }
    return k;
}

template <typename T>
void KeyCmp(benchmark::State& state, char id) {
    Keys& k = StoredKeys<T>(id);
    const LmTypeCmpFunc cmp = LmTypeMgr().CmpFuncPtrGet(id);
    int status = 0;
    for (auto _ : state) {
        int sum = 0;
        for (unsigned i = 0; i + 1 < kKeys; ++i)
            sum += cmp(LmFormatLittle, k.width, k.At(i), k.width, k.At(i + 1), 0, 1, status);
        benchmark::DoNotOptimize(sum);
    }
}

template <typename T>
void KeyHash(benchmark::State& state, char id) {
    Keys& k = StoredKeys<T>(id);
    const LmTypeHashFunc hash = LmTypeMgr().Desc(id)->Hash;
    int status = 0;
    for (auto _ : state) {
        unsigned sum = 0;
        for (unsigned i = 0; i < kKeys; ++i) sum += hash(LmFormatLittle, k.width, k.At(i), 1, status);
        benchmark::DoNotOptimize(sum);
    }
}

void IntCmp(benchmark::State& state, char id) { KeyCmp<int32_t>(state, id); }
void IntHash(benchmark::State& state, char id) { KeyHash<int32_t>(state, id); }
void DoubleCmp(benchmark::State& state, char id) { KeyCmp<double>(state, id); }
void DoubleHash(benchmark::State& state, char id) { KeyHash<double>(state, id); }

BENCHMARK_CAPTURE(IntCmp, int, LmINT_T);
BENCHMARK_CAPTURE(IntCmp, LmNull_int, LmNULL_INT_T);
BENCHMARK_CAPTURE(IntHash, int, LmINT_T);
BENCHMARK_CAPTURE(IntHash, LmNull_int, LmNULL_INT_T);
BENCHMARK_CAPTURE(DoubleCmp, o_double, LmDOUBLE_T);
BENCHMARK_CAPTURE(DoubleCmp, LmNull_double, LmNULL_DOUBLE_T);
BENCHMARK_CAPTURE(DoubleHash, o_double, LmDOUBLE_T);
BENCHMARK_CAPTURE(DoubleHash, LmNull_double, LmNULL_DOUBLE_T);

}  // namespace
