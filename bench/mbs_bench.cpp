// UTF-8 round trips of 20,000 dictionary words (German and American English,
// tools/bench-setup.sh) held as 16-bit strings: LmString2LmMBS or
// LmString2MultiByteString into a byte text, then LmMBS2LmString back into a string.
// The peer is a plain hand-written UTF-8 codec of 16-bit units into a byte buffer and
// back into a std::u16string. Encoding and decoding also run on their own. Run by hand:
//   build-dir/bench/lmbench_mbs [--benchmark_filter=...]
#include <benchmark/benchmark.h>

#include <cstring>
#include <string>
#include <vector>

#include "lumotypes.h"
#include "wordlist.h"

namespace {

constexpr int kTextCapacity = 256;  // a word takes at most 3 bytes a unit; the lists hold none this long

struct Corpus {
    WordList words;
    std::vector<LmString> strings;        // the words in code set 253
    std::vector<std::string> utf8;        // their byte texts, for the decoders
    std::vector<std::u16string> units16;  // the same units, for the peer
};

Corpus MakeCorpus(const char* path) {
    Corpus c;
    c.words = LoadWordList(path);
    for (const auto& units : c.words.utf16) {
        LmString s(units.data());
        s.SetCodeSetCode(LM_CODESET_UNICODE);
        char text[kTextCapacity];
        const int n = LmString2LmMBS(s, text, kTextCapacity);
        if (n < 0) continue;
        c.strings.push_back(s);
        c.utf8.emplace_back(text, static_cast<size_t>(n));
        c.units16.emplace_back(units.begin(), units.end() - 1);
    }
    return c;
}

const Corpus& German() {
    static const Corpus c = MakeCorpus("/usr/share/dict/ngerman");
    return c;
}
const Corpus& English() {
    static const Corpus c = MakeCorpus("/usr/share/dict/american-english");
    return c;
}

bool Ready(benchmark::State& state, const Corpus& c) {
    if (!c.strings.empty()) return true;
    state.SkipWithError("word list missing: run tools/bench-setup.sh");
    return false;
}

void PerWord(benchmark::State& state, const Corpus& c) {
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * c.strings.size()));
    state.counters["ns_per_word"] =
        benchmark::Counter(static_cast<double>(c.strings.size()),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// ---- The peer: UTF-8 of 16-bit units, at most three bytes a unit. ----

int PeerEncode(const std::u16string& in, char* out) {
    auto* p = reinterpret_cast<unsigned char*>(out);
    for (const char16_t ch : in) {
        const unsigned c = ch;
        if (c < 0x80) {
            *p++ = static_cast<unsigned char>(c);
        } else if (c < 0x800) {
            *p++ = static_cast<unsigned char>(0xC0 | (c >> 6));
            *p++ = static_cast<unsigned char>(0x80 | (c & 0x3F));
        } else {
            *p++ = static_cast<unsigned char>(0xE0 | (c >> 12));
            *p++ = static_cast<unsigned char>(0x80 | ((c >> 6) & 0x3F));
            *p++ = static_cast<unsigned char>(0x80 | (c & 0x3F));
        }
    }
    *p = 0;
    return static_cast<int>(p - reinterpret_cast<unsigned char*>(out));
}

// Decodes n bytes; false on a malformed or overlong sequence.
bool PeerDecode(const char* in, int n, std::u16string& out) {
    out.clear();
    const auto* p = reinterpret_cast<const unsigned char*>(in);
    const unsigned char* end = p + n;
    while (p < end) {
        unsigned c = *p++;
        if (c >= 0x80) {
            const int extra = (c & 0xE0) == 0xC0 ? 1 : (c & 0xF0) == 0xE0 ? 2 : -1;
            if (extra < 0 || end - p < extra) return false;
            c &= extra == 1 ? 0x1Fu : 0x0Fu;
            for (int k = 0; k < extra; ++k) {
                if ((*p & 0xC0) != 0x80) return false;
                c = (c << 6) | (*p++ & 0x3Fu);
            }
            if (c < (extra == 1 ? 0x80u : 0x800u)) return false;
        }
        out.push_back(static_cast<char16_t>(c));
    }
    return true;
}

// ---- Round trips. ----

void RoundTripLmMBS(benchmark::State& state, const Corpus& c) {
    if (!Ready(state, c)) return;
    char text[kTextCapacity];
    LmString back;
    for (auto _ : state) {
        for (const LmString& s : c.strings) {
            const int n = LmString2LmMBS(s, text, kTextCapacity);
            benchmark::DoNotOptimize(LmMBS2LmString(text, back, n));
        }
    }
    PerWord(state, c);
}

// LmString2MultiByteString with no buffer: it allocates one per word, as a caller
// that does not know the length would have it.
void RoundTripAllocating(benchmark::State& state, const Corpus& c) {
    if (!Ready(state, c)) return;
    LmString back;
    for (auto _ : state) {
        for (const LmString& s : c.strings) {
            char* text = nullptr;
            int length = 0;
            const int n = LmString2MultiByteString(s, text, length);
            benchmark::DoNotOptimize(LmMBS2LmString(text, back, n));
            delete[] text;
        }
    }
    PerWord(state, c);
}

void RoundTripPeer(benchmark::State& state, const Corpus& c) {
    if (!Ready(state, c)) return;
    char text[kTextCapacity];
    std::u16string back;
    for (auto _ : state) {
        for (const std::u16string& s : c.units16) {
            const int n = PeerEncode(s, text);
            benchmark::DoNotOptimize(PeerDecode(text, n, back));
        }
    }
    PerWord(state, c);
}

// ---- Each direction alone. ----

void EncodeLmMBS(benchmark::State& state, const Corpus& c) {
    if (!Ready(state, c)) return;
    char text[kTextCapacity];
    for (auto _ : state) {
        for (const LmString& s : c.strings) {
            benchmark::DoNotOptimize(LmString2LmMBS(s, text, kTextCapacity));
            benchmark::ClobberMemory();
        }
    }
    PerWord(state, c);
}

void EncodePeer(benchmark::State& state, const Corpus& c) {
    if (!Ready(state, c)) return;
    char text[kTextCapacity];
    for (auto _ : state) {
        for (const std::u16string& s : c.units16) {
            benchmark::DoNotOptimize(PeerEncode(s, text));
            benchmark::ClobberMemory();
        }
    }
    PerWord(state, c);
}

void DecodeLmMBS(benchmark::State& state, const Corpus& c) {
    if (!Ready(state, c)) return;
    LmString back;
    for (auto _ : state) {
        for (const std::string& t : c.utf8)
            benchmark::DoNotOptimize(LmMBS2LmString(t.data(), back, static_cast<int>(t.size())));
    }
    PerWord(state, c);
}

void DecodePeer(benchmark::State& state, const Corpus& c) {
    if (!Ready(state, c)) return;
    std::u16string back;
    for (auto _ : state) {
        for (const std::string& t : c.utf8)
            benchmark::DoNotOptimize(PeerDecode(t.data(), static_cast<int>(t.size()), back));
    }
    PerWord(state, c);
}

BENCHMARK_CAPTURE(RoundTripLmMBS, german, German());
BENCHMARK_CAPTURE(RoundTripAllocating, german, German());
BENCHMARK_CAPTURE(RoundTripPeer, german, German());
BENCHMARK_CAPTURE(RoundTripLmMBS, english, English());
BENCHMARK_CAPTURE(RoundTripPeer, english, English());
BENCHMARK_CAPTURE(EncodeLmMBS, german, German());
BENCHMARK_CAPTURE(EncodePeer, german, German());
BENCHMARK_CAPTURE(DecodeLmMBS, german, German());
BENCHMARK_CAPTURE(DecodePeer, german, German());

}  // namespace
