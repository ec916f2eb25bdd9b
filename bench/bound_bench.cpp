// EvalAndBound as a query optimiser calls it: an o_4b range, and a string prefix
// pattern (the first three letters of a word and an asterisk) over 20,000 dictionary
// words (German and American English, tools/bench-setup.sh) against the range of the
// whole list. The peers: one Cmp of the o_4b keys, and one Translate that builds the
// order-form key of the same pattern text, the work any bound of it starts from.
// Run by hand:
//   build-dir/bench/lmbench_bound [--benchmark_filter=...]
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "lumotypes.h"
#include "wordlist.h"

namespace {

constexpr unsigned kKeyCapacity = 254;
const LmTypeMgr mgr;

struct Patterns {
    std::vector<LmString> texts;             // the pattern in memory
    std::vector<std::vector<uint8_t>> keys;  // its order-form key, the value of the evaluation
    std::vector<uint8_t> lower, upper;       // the range: keys of the first and last word
};

std::vector<uint8_t> KeyOf(LmString& s) {
    std::vector<uint8_t> key(kKeyCapacity);
    key.resize(mgr.Translate(LmSTRING_T, key.data(), LM_STRFMT_ORDER | LmFormatLittle, kKeyCapacity, &s, LmFormatMemory,
                             0, 1));
    return key;
}

Patterns MakePatterns(const char* path, unsigned char language) {
    Patterns p;
    const WordList words = LoadWordList(path);
    if (words.latin1.empty()) return p;
    for (const std::string& w : words.latin1) {
        LmString s(LM_CODESET_LATIN1, language);
        s = (w.substr(0, 3) + "*").c_str();
        s.SetLanguage(language);
        p.texts.push_back(s);
        p.keys.push_back(KeyOf(p.texts.back()));
    }
    LmString first(LM_CODESET_LATIN1, language), last(LM_CODESET_LATIN1, language);
    first = words.latin1.front().c_str();
    last = words.latin1.back().c_str();
    first.SetLanguage(language);
    last.SetLanguage(language);
    p.lower = KeyOf(first);
    p.upper = KeyOf(last);
    return p;
}

const Patterns& German() {
    static const Patterns p = MakePatterns("/usr/share/dict/ngerman", 2);
    return p;
}
const Patterns& English() {
    static const Patterns p = MakePatterns("/usr/share/dict/american-english", 1);
    return p;
}

void PerItem(benchmark::State& state, size_t n) {
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * n));
    state.counters["ns_per_item"] = benchmark::Counter(
        static_cast<double>(n), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// ---- o_4b: a range of 1,000,000 keys, values spread over it. ----

std::vector<int32_t> LongValues() {
    std::vector<int32_t> v(1000);
    for (size_t i = 0; i < v.size(); ++i) v[i] = static_cast<int32_t>(i * 997 % 1000000);
    return v;
}

void LongEvalAndBound(benchmark::State& state) {
    const std::vector<int32_t> values = LongValues();
    int32_t lo = 0, hi = 999999;
    LmIdxBounds range{&lo, &hi, 4, 4, 0, 0, 0};
    const auto op = static_cast<unsigned short>(state.range(0));
    for (auto _ : state) {
        for (const int32_t& v : values) {
            LmIdxBounds out{};
            unsigned short word = op;
            benchmark::DoNotOptimize(
                mgr.EvalAndBound(Lm4B_T, &range, word, const_cast<int32_t*>(&v), LmFormatLittle, 1, &out, nullptr));
            std::free(out.lower);
            std::free(out.upper);
        }
    }
    PerItem(state, values.size());
}
BENCHMARK(LongEvalAndBound)->Arg(LM_BOUND_EQ)->Arg(LM_BOUND_GT | LM_BOUND_EQ);

void LongCmpPeer(benchmark::State& state) {
    const std::vector<int32_t> values = LongValues();
    const LmTypeCmpFunc cmp = mgr.CmpFuncPtrGet(Lm4B_T);
    int32_t lo = 0;
    int status = 0;
    for (auto _ : state) {
        for (const int32_t& v : values)
            benchmark::DoNotOptimize(cmp(LmFormatLittle, 4, const_cast<int32_t*>(&v), 4, &lo, 0, 1, status));
    }
    PerItem(state, values.size());
}
BENCHMARK(LongCmpPeer);

// ---- Strings: a prefix pattern, and the key build of the same text. ----

void PrefixEvalAndBound(benchmark::State& state, const Patterns& p) {
    if (p.keys.empty()) {
        state.SkipWithError("word list missing: run tools/bench-setup.sh");
        return;
    }
    LmIdxBounds range{const_cast<uint8_t*>(p.lower.data()),
                      const_cast<uint8_t*>(p.upper.data()),
                      static_cast<uint8_t>(p.lower.size()),
                      static_cast<uint8_t>(p.upper.size()),
                      0,
                      0,
                      0};
    for (auto _ : state) {
        for (const auto& key : p.keys) {
            LmIdxBounds out{};
            out.keyCapacity = 32;
            unsigned short op = LM_BOUND_EQ;
            benchmark::DoNotOptimize(mgr.EvalAndBound(LmSTRING_T, &range, op, const_cast<uint8_t*>(key.data()),
                                                      LmFormatLittle, 1, &out, nullptr));
            std::free(out.lower);
            std::free(out.upper);
        }
    }
    PerItem(state, p.keys.size());
}

void KeyBuildPeer(benchmark::State& state, const Patterns& p) {
    if (p.texts.empty()) {
        state.SkipWithError("word list missing: run tools/bench-setup.sh");
        return;
    }
    uint8_t key[kKeyCapacity];
    for (auto _ : state) {
        for (const LmString& s : p.texts)
            benchmark::DoNotOptimize(mgr.Translate(LmSTRING_T, key, LM_STRFMT_ORDER | LmFormatLittle, kKeyCapacity,
                                                   const_cast<LmString*>(&s), LmFormatMemory, 0, 1));
    }
    PerItem(state, p.texts.size());
}

BENCHMARK_CAPTURE(PrefixEvalAndBound, German, German());
BENCHMARK_CAPTURE(KeyBuildPeer, German, German());
BENCHMARK_CAPTURE(PrefixEvalAndBound, English, English());
BENCHMARK_CAPTURE(KeyBuildPeer, English, English());

}  // namespace
