// GetNextOrder, the inner loop of every string comparison and hash: walks 20,000
// dictionary words in code set 1 (Latin-1) and code set 253 (UTF-16) and reports
// the time per character. Set up with tools/bench-setup.sh; run by hand:
//   build-dir/bench/lmbench_iterator [--benchmark_filter=...]
#include <benchmark/benchmark.h>

#include "lumotypes.h"
#include "wordlist.h"

namespace {

const WordList& German() {
    static const WordList list = LoadWordList("/usr/share/dict/ngerman");
    return list;
}
const WordList& English() {
    static const WordList list = LoadWordList("/usr/share/dict/american-english");
    return list;
}

template <typename Word>
uint32_t WalkOrders(const Word& text, unsigned char codeSet, unsigned char language, unsigned char format) {
    LmStringIterator it(text, codeSet, language, format);
    uint32_t sum = 0;
    for (uint16_t order = it.GetNextOrder(1); order != 0; order = it.GetNextOrder(1)) sum += order;
    return sum;
}

void WalkLatin1(benchmark::State& state, const WordList& list, unsigned char language) {
    if (list.latin1.empty()) {
        state.SkipWithError("word list missing: run tools/bench-setup.sh");
        return;
    }
    for (auto _ : state) {
        for (const std::string& w : list.latin1) benchmark::DoNotOptimize(WalkOrders(w.c_str(), 1, language, 1));
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * list.latin1Chars));
    state.counters["ns_per_char"] =
        benchmark::Counter(static_cast<double>(list.latin1Chars),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void WalkUtf16(benchmark::State& state, const WordList& list, unsigned char language) {
    if (list.utf16.empty()) {
        state.SkipWithError("word list missing: run tools/bench-setup.sh");
        return;
    }
    for (auto _ : state) {
        for (const auto& w : list.utf16)
            benchmark::DoNotOptimize(WalkOrders(reinterpret_cast<const unsigned short*>(w.data()), 253, language, 8));
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * list.utf16Units));
    state.counters["ns_per_char"] =
        benchmark::Counter(static_cast<double>(list.utf16Units),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// Language 1 is the generic order, 2 German (with its variant records).
BENCHMARK_CAPTURE(WalkLatin1, german_generic, German(), 1);
BENCHMARK_CAPTURE(WalkLatin1, german_german, German(), 2);
BENCHMARK_CAPTURE(WalkUtf16, german_generic, German(), 1);
BENCHMARK_CAPTURE(WalkLatin1, english_generic, English(), 1);
BENCHMARK_CAPTURE(WalkUtf16, english_generic, English(), 1);

}  // namespace
