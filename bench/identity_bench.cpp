// Compare and hash of stored identity keys, and compare of blob images, each beside
// memcmp of the same bytes.
//
// Keys: 1000 LmObjId (10 bytes) and LmRef (14 bytes) disk images, least significant
// byte first, made from object numbers that rise in small random steps, as the keys
// of one index do; each iteration walks all neighbouring pairs. Blobs: two 4 KiB
// images that differ in their last byte.
//
// Run by hand: build-rel/bench/lmbench_identity --benchmark_repetitions=5
//   --benchmark_report_aggregates_only=true
// and compare the cases side by side from the same run.
#include <benchmark/benchmark.h>

#include <cstring>
#include <random>
#include <vector>

#include "lumotypes.h"

namespace {

constexpr unsigned kKeys = 1000;

struct Keys {
    std::vector<unsigned char> bytes;
    unsigned width = 0;
    const unsigned char* At(unsigned i) const { return bytes.data() + static_cast<size_t>(i) * width; }
};

// The stored keys of id 15 or 17.
const Keys& StoredKeys(char id) {
    static Keys keys[2];
    Keys& k = keys[id == LmREF_T ? 1 : 0];
    if (!k.bytes.empty()) return k;
    std::mt19937 random(id);
    uint64_t number = 0x0000123400000000ull;
    k.width = LmTypeMgr().DiskLenGet(id, nullptr, LmFormatLittle, 1, LmFormatMemory);
    k.bytes.resize(static_cast<size_t>(kKeys) * k.width);
    for (unsigned i = 0; i < kKeys; ++i) {
        number += 1 + random() % 5000;
        LmRef ref{static_cast<uint32_t>(random()),
                  static_cast<uint32_t>(number),
                  static_cast<uint16_t>(number >> 32),
                  static_cast<uint16_t>(random() % 3),
                  static_cast<uint16_t>(random() % 100),
                  0};
        LmObjId obj{ref.blockId, ref.low, ref.high, 0};
        LmTypeMgr().Store(id, k.bytes.data() + static_cast<size_t>(i) * k.width,
                          id == LmREF_T ? static_cast<void*>(&ref) : static_cast<void*>(&obj), LmFormatLittle, 1);
    }
    return k;
}

void KeyCmp(benchmark::State& state, char id) {
    const Keys& k = StoredKeys(id);
    const LmTypeCmpFunc cmp = LmTypeMgr().CmpFuncPtrGet(id);
    int status = 0;
    for (auto _ : state) {
        int sum = 0;
        for (unsigned i = 0; i + 1 < kKeys; ++i)
            sum += cmp(LmFormatLittle, k.width, const_cast<unsigned char*>(k.At(i)), k.width,
                       const_cast<unsigned char*>(k.At(i + 1)), 0, 1, status);
        benchmark::DoNotOptimize(sum);
    }
}

void KeyHash(benchmark::State& state, char id) {
    const Keys& k = StoredKeys(id);
    const LmTypeMgr mgr;
    const LmTypeDesc* desc = mgr.Desc(id);
    int status = 0;
    for (auto _ : state) {
        unsigned sum = 0;
        for (unsigned i = 0; i + 1 < kKeys; ++i)
            sum += desc->Hash(LmFormatLittle, k.width, const_cast<unsigned char*>(k.At(i)), 1, status);
        benchmark::DoNotOptimize(sum);
    }
}

void KeyMemcmp(benchmark::State& state, char id) {
    const Keys& k = StoredKeys(id);
    size_t width = k.width;
    benchmark::DoNotOptimize(width);  // a length known at run time only, as the slots have it
    for (auto _ : state) {
        int sum = 0;
        for (unsigned i = 0; i + 1 < kKeys; ++i) sum += std::memcmp(k.At(i), k.At(i + 1), width) < 0;
        benchmark::DoNotOptimize(sum);
    }
}

BENCHMARK_CAPTURE(KeyCmp, LmObjId, LmOBJID_T);
BENCHMARK_CAPTURE(KeyHash, LmObjId, LmOBJID_T);
BENCHMARK_CAPTURE(KeyMemcmp, LmObjId, LmOBJID_T);
BENCHMARK_CAPTURE(KeyCmp, LmRef, LmREF_T);
BENCHMARK_CAPTURE(KeyHash, LmRef, LmREF_T);
BENCHMARK_CAPTURE(KeyMemcmp, LmRef, LmREF_T);

// Two stored 4 KiB blobs that differ in their last byte.
struct BlobImages {
    std::vector<unsigned char> left, right;
    BlobImages() {
        std::vector<unsigned char> bytes(4096);
        for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<unsigned char>(i * 7);
        LmBlob a(bytes.data(), 4096);
        bytes.back() ^= 1;
        LmBlob b(bytes.data(), 4096);
        left.resize(LmBlob::SizeGet(&a, LmFormatMemory, LmFormatLittle, 1));
        right.resize(left.size());
        LmBlob::Store(left.data(), &a, LmFormatLittle, 1);
        LmBlob::Store(right.data(), &b, LmFormatLittle, 1);
    }
};

void BlobCmp(benchmark::State& state) {
    static BlobImages images;
    const auto n = static_cast<unsigned>(images.left.size());
    int status = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(
            BlobCompare(LmFormatLittle, n, images.left.data(), n, images.right.data(), 0, 1, status));
}
BENCHMARK(BlobCmp);

void BlobMemcmp(benchmark::State& state) {
    static BlobImages images;
    size_t n = images.left.size();
    benchmark::DoNotOptimize(n);
    for (auto _ : state) benchmark::DoNotOptimize(std::memcmp(images.left.data(), images.right.data(), n));
}
BENCHMARK(BlobMemcmp);

}  // namespace
