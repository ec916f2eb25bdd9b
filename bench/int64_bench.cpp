// LmInt64 +, *, / and % against native long long on the same operands: one pass
// over 1024 operand pairs per iteration, the results summed so that none is dropped.
#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "lumotypes.h"

namespace {

constexpr size_t kPairs = 1024;

struct Operands {
    std::vector<long long> a, b;
    std::vector<LmInt64> x, y;
    Operands() {
        std::mt19937_64 rng(1964);
        for (size_t i = 0; i < kPairs; ++i) {
            const auto left = static_cast<long long>(rng());
            // Divisors of every magnitude, never 0.
            auto right = static_cast<long long>(rng() >> (rng() % 63));
            if (right == 0) right = 3;
            if (i % 2 != 0) right = -right;
            a.push_back(left);
            b.push_back(right);
            x.emplace_back(left);
            y.emplace_back(right);
        }
    }
};

const Operands& Data() {
    static const Operands data;
    return data;
}

template <typename Op>
void Native(benchmark::State& state, Op op) {
    const Operands& d = Data();
    for (auto _ : state) {
        long long sum = 0;
        for (size_t i = 0; i < kPairs; ++i) sum += op(d.a[i], d.b[i]);
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * kPairs));
}

template <typename Op>
void Class(benchmark::State& state, Op op) {
    const Operands& d = Data();
    for (auto _ : state) {
        LmInt64 sum;
        for (size_t i = 0; i < kPairs; ++i) sum += op(d.x[i], d.y[i]);
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * kPairs));
}

// Native + and * wrap through unsigned arithmetic, as the class does.
long long Add(long long a, long long b) {
    return static_cast<long long>(static_cast<unsigned long long>(a) + static_cast<unsigned long long>(b));
}
long long Mul(long long a, long long b) {
    return static_cast<long long>(static_cast<unsigned long long>(a) * static_cast<unsigned long long>(b));
}

void BM_NativeAdd(benchmark::State& s) { Native(s, Add); }
void BM_Int64Add(benchmark::State& s) {
    Class(s, [](const LmInt64& a, const LmInt64& b) { return a + b; });
}
void BM_NativeMul(benchmark::State& s) { Native(s, Mul); }
void BM_Int64Mul(benchmark::State& s) {
    Class(s, [](const LmInt64& a, const LmInt64& b) { return a * b; });
}
void BM_NativeDiv(benchmark::State& s) {
    Native(s, [](long long a, long long b) { return a / b; });
}
void BM_Int64Div(benchmark::State& s) {
    Class(s, [](const LmInt64& a, const LmInt64& b) { return a / b; });
}
void BM_NativeMod(benchmark::State& s) {
    Native(s, [](long long a, long long b) { return a % b; });
}
void BM_Int64Mod(benchmark::State& s) {
    Class(s, [](const LmInt64& a, const LmInt64& b) { return a % b; });
}

}  // namespace

BENCHMARK(BM_NativeAdd);
BENCHMARK(BM_Int64Add);
BENCHMARK(BM_NativeMul);
BENCHMARK(BM_Int64Mul);
BENCHMARK(BM_NativeDiv);
BENCHMARK(BM_Int64Div);
BENCHMARK(BM_NativeMod);
BENCHMARK(BM_Int64Mod);
