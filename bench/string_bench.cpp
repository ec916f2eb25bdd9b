// The string hot path of every index, on 20,000 dictionary words (German and
// American English, tools/bench-setup.sh): LmStrCmp of adjacent words in code set 1
// and 253, Cmp of id 11 on stored records and on order-form keys, Hash of id 11, and
// the building of order-form keys with Translate. When ICU is found at configure
// time (Debian's libicu-dev), its collator runs on the same words as a peer:
// ucol_strcoll next to LmStrCmp, memcmp of ucol_getSortKey keys next to Cmp of our
// keys, ucol_getSortKey next to Translate. ICU is a peer here only, never a
// dependency of the library. Run by hand:
//   build-dir/bench/lmbench_string [--benchmark_filter=...]
#include <benchmark/benchmark.h>

#include <cstring>
#include <string>
#include <vector>

#include "lumotypes.h"
#include "wordlist.h"

#ifdef LM_BENCH_ICU
#include <unicode/ucol.h>
#endif

namespace {

// The words of one list in every form the cases need, built once.
struct Corpus {
    WordList words;
    std::vector<std::vector<uint16_t>> latin1Utf16;  // the Latin-1 words as UTF-16, for the peer
    std::vector<std::vector<uint8_t>> records;       // current-form records of the Latin-1 words
    std::vector<std::vector<uint8_t>> keys;          // order-form keys of the same words
    std::vector<LmString> strings;                   // the same words in memory
    size_t pairs() const { return words.latin1.empty() ? 0 : words.latin1.size() - 1; }
};

constexpr unsigned short kNoWildcards = LM_CMP_NO_WILDCARD;
constexpr unsigned kKeyCapacity = 254;  // the usual key length of an index

Corpus MakeCorpus(const char* path, unsigned char language) {
    Corpus c;
    c.words = LoadWordList(path);
    const LmTypeMgr mgr;
    for (const std::string& w : c.words.latin1) {
        c.latin1Utf16.emplace_back(w.begin(), w.end());
        for (auto& unit : c.latin1Utf16.back()) unit &= 0xFF;
        c.latin1Utf16.back().push_back(0);
        LmString s(w.c_str());
        s.SetCodeSet(1);
        s.SetLanguage(language);
        c.strings.push_back(s);
        std::vector<uint8_t> rec(mgr.DiskLenGet(LmSTRING_T, &s, LmFormatLittle, 1, LmFormatMemory));
        mgr.Store(LmSTRING_T, rec.data(), &s, LmFormatLittle, 1);
        c.records.push_back(std::move(rec));
        std::vector<uint8_t> key(kKeyCapacity);
        const unsigned n = mgr.Translate(LmSTRING_T, key.data(), LM_STRFMT_ORDER | LmFormatLittle, kKeyCapacity, &s,
                                         LmFormatMemory, 0, 1);
        key.resize(n);
        key.shrink_to_fit();
        c.keys.push_back(std::move(key));
    }
    return c;
}

const Corpus& German() {
    static const Corpus c = MakeCorpus("/usr/share/dict/ngerman", 2);
    return c;
}
const Corpus& English() {
    static const Corpus c = MakeCorpus("/usr/share/dict/american-english", 1);
    return c;
}

bool Ready(benchmark::State& state, const Corpus& c) {
    if (c.pairs() != 0) return true;
    state.SkipWithError("word list missing: run tools/bench-setup.sh");
    return false;
}

void PerPair(benchmark::State& state, const Corpus& c) {
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * c.pairs()));
    state.counters["ns_per_pair"] = benchmark::Counter(
        static_cast<double>(c.pairs()), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// ---- LmStrCmp of adjacent words. ----

void StrCmpLatin1(benchmark::State& state, const Corpus& c, unsigned char language) {
    if (!Ready(state, c)) return;
    for (auto _ : state) {
        for (size_t i = 0; i < c.pairs(); ++i)
            benchmark::DoNotOptimize(LmStrCmp(1, language, c.words.latin1[i].c_str(), 1, language,
                                              c.words.latin1[i + 1].c_str(), kNoWildcards, -1, 1, nullptr));
    }
    PerPair(state, c);
}

void StrCmpUtf16(benchmark::State& state, const Corpus& c, unsigned char language) {
    if (!Ready(state, c)) return;
    for (auto _ : state) {
        for (size_t i = 0; i < c.pairs(); ++i)
            benchmark::DoNotOptimize(LmStrCmp(253, language, c.latin1Utf16[i].data(), 253, language,
                                              c.latin1Utf16[i + 1].data(), kNoWildcards, -1, 8, nullptr));
    }
    PerPair(state, c);
}

// ---- Cmp of id 11 through the pointer a kernel takes once. ----

void CmpRecords(benchmark::State& state, const Corpus& c) {
    if (!Ready(state, c)) return;
    const LmTypeCmpFunc cmp = LmTypeMgr().CmpFuncPtrGet(LmSTRING_T);
    int status = 0;
    for (auto _ : state) {
        for (size_t i = 0; i < c.pairs(); ++i) {
            auto& a = c.records[i];
            auto& b = c.records[i + 1];
            benchmark::DoNotOptimize(cmp(LmFormatLittle, static_cast<unsigned>(a.size()),
                                         const_cast<uint8_t*>(a.data()), static_cast<unsigned>(b.size()),
                                         const_cast<uint8_t*>(b.data()), kNoWildcards, 1, status));
        }
    }
    PerPair(state, c);
}

void CmpKeys(benchmark::State& state, const Corpus& c) {
    if (!Ready(state, c)) return;
    const LmTypeCmpFunc cmp = LmTypeMgr().CmpFuncPtrGet(LmSTRING_T);
    int status = 0;
    for (auto _ : state) {
        for (size_t i = 0; i < c.pairs(); ++i) {
            auto& a = c.keys[i];
            auto& b = c.keys[i + 1];
            benchmark::DoNotOptimize(cmp(LM_STRFMT_ORDER | LmFormatLittle, static_cast<unsigned>(a.size()),
                                         const_cast<uint8_t*>(a.data()), static_cast<unsigned>(b.size()),
                                         const_cast<uint8_t*>(b.data()), kNoWildcards, 1, status));
        }
    }
    PerPair(state, c);
}

// ---- Hash of id 11, in memory and on the stored records. ----

void HashMemory(benchmark::State& state, const Corpus& c) {
    if (!Ready(state, c)) return;
    const LmTypeMgr mgr;
    int status = 0;
    for (auto _ : state) {
        for (size_t i = 0; i < c.pairs(); ++i)
            benchmark::DoNotOptimize(
                mgr.Hash(LmSTRING_T, 0, const_cast<LmString*>(&c.strings[i]), 1, LmFormatMemory, status));
    }
    PerPair(state, c);
}

void HashRecords(benchmark::State& state, const Corpus& c) {
    if (!Ready(state, c)) return;
    const LmTypeMgr mgr;
    int status = 0;
    for (auto _ : state) {
        for (size_t i = 0; i < c.pairs(); ++i) {
            auto& a = c.records[i];
            benchmark::DoNotOptimize(mgr.Hash(LmSTRING_T, static_cast<unsigned>(a.size()),
                                              const_cast<uint8_t*>(a.data()), 1, LmFormatLittle, status));
        }
    }
    PerPair(state, c);
}

// ---- Key building. ----

void BuildKeys(benchmark::State& state, const Corpus& c) {
    if (!Ready(state, c)) return;
    const LmTypeMgr mgr;
    uint8_t key[kKeyCapacity];
    for (auto _ : state) {
        for (size_t i = 0; i < c.pairs(); ++i) {
            benchmark::DoNotOptimize(mgr.Translate(LmSTRING_T, key, LM_STRFMT_ORDER | LmFormatLittle, kKeyCapacity,
                                                   const_cast<LmString*>(&c.strings[i]), LmFormatMemory, 0, 1));
            benchmark::ClobberMemory();
        }
    }
    PerPair(state, c);
}

BENCHMARK_CAPTURE(StrCmpLatin1, german, German(), 2);
BENCHMARK_CAPTURE(StrCmpLatin1, english, English(), 1);
BENCHMARK_CAPTURE(StrCmpUtf16, german, German(), 2);
BENCHMARK_CAPTURE(StrCmpUtf16, english, English(), 1);
BENCHMARK_CAPTURE(CmpRecords, german, German());
BENCHMARK_CAPTURE(CmpKeys, german, German());
BENCHMARK_CAPTURE(CmpKeys, english, English());
BENCHMARK_CAPTURE(HashMemory, german, German());
BENCHMARK_CAPTURE(HashRecords, german, German());
BENCHMARK_CAPTURE(BuildKeys, german, German());

#ifdef LM_BENCH_ICU
// ---- The peer: ICU's collator on the same words. ----

UCollator* Collator(const char* locale) {
    UErrorCode err = U_ZERO_ERROR;
    UCollator* coll = ucol_open(locale, &err);
    return U_FAILURE(err) ? nullptr : coll;
}

std::vector<std::vector<uint8_t>> SortKeys(const Corpus& c, UCollator* coll) {
    std::vector<std::vector<uint8_t>> keys;
    for (const auto& w : c.latin1Utf16) {
        std::vector<uint8_t> key(512);
        const int32_t n = ucol_getSortKey(coll, reinterpret_cast<const UChar*>(w.data()), -1, key.data(), 512);
        key.resize(static_cast<size_t>(n));
        key.shrink_to_fit();
        keys.push_back(std::move(key));
    }
    return keys;
}

void IcuStrcoll(benchmark::State& state, const Corpus& c, const char* locale) {
    if (!Ready(state, c)) return;
    UCollator* coll = Collator(locale);
    for (auto _ : state) {
        for (size_t i = 0; i < c.pairs(); ++i)
            benchmark::DoNotOptimize(ucol_strcoll(coll, reinterpret_cast<const UChar*>(c.latin1Utf16[i].data()), -1,
                                                  reinterpret_cast<const UChar*>(c.latin1Utf16[i + 1].data()), -1));
    }
    ucol_close(coll);
    PerPair(state, c);
}

void IcuSortKeyMemcmp(benchmark::State& state, const Corpus& c, const char* locale) {
    if (!Ready(state, c)) return;
    UCollator* coll = Collator(locale);
    const auto keys = SortKeys(c, coll);
    ucol_close(coll);
    for (auto _ : state) {
        for (size_t i = 0; i < c.pairs(); ++i) {
            const auto& a = keys[i];
            const auto& b = keys[i + 1];
            const size_t n = a.size() < b.size() ? a.size() : b.size();
            int r = std::memcmp(a.data(), b.data(), n);
            if (r == 0) r = a.size() < b.size() ? -1 : (a.size() > b.size() ? 1 : 0);
            benchmark::DoNotOptimize(r);
        }
    }
    PerPair(state, c);
}

void IcuGetSortKey(benchmark::State& state, const Corpus& c, const char* locale) {
    if (!Ready(state, c)) return;
    UCollator* coll = Collator(locale);
    uint8_t key[512];
    for (auto _ : state) {
        for (size_t i = 0; i < c.pairs(); ++i) {
            benchmark::DoNotOptimize(
                ucol_getSortKey(coll, reinterpret_cast<const UChar*>(c.latin1Utf16[i].data()), -1, key, 512));
            benchmark::ClobberMemory();
        }
    }
    ucol_close(coll);
    PerPair(state, c);
}

BENCHMARK_CAPTURE(IcuStrcoll, german, German(), "de");
BENCHMARK_CAPTURE(IcuStrcoll, english, English(), "en");
BENCHMARK_CAPTURE(IcuSortKeyMemcmp, german, German(), "de");
BENCHMARK_CAPTURE(IcuSortKeyMemcmp, english, English(), "en");
BENCHMARK_CAPTURE(IcuGetSortKey, german, German(), "de");
#endif

}  // namespace
