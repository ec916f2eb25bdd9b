// EvalAndBound of the ordered values: the share of a key range that a comparison
// covers and the keys that bound the scan. Expected shares are worked out from the
// overlap rule on the line: > covers max - v, < covers v - min, = one key, each of a
// width of max - min + 1 keys.
#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "lumotypes.h"

namespace {

using Bytes = std::vector<uint8_t>;
const LmTypeMgr mgr;

constexpr unsigned short EQ = LM_BOUND_EQ, LT = LM_BOUND_LT, GT = LM_BOUND_GT;

// The bounds of an evaluation, freed at the end of the scope.
struct Bounds : LmIdxBounds {
    Bounds() : LmIdxBounds{} {}
    Bounds(const Bounds&) = delete;
    ~Bounds() {
        std::free(lower);
        std::free(upper);
    }
    Bytes Lower() const {
        return lower ? Bytes(static_cast<uint8_t*>(lower), static_cast<uint8_t*>(lower) + lowerLen) : Bytes{};
    }
    Bytes Upper() const {
        return upper ? Bytes(static_cast<uint8_t*>(upper), static_cast<uint8_t*>(upper) + upperLen) : Bytes{};
    }
};

template <typename T>
Bytes Disk(char id, T v, unsigned char format = 1) {
    Bytes out(mgr.DiskLenGet(id, &v, format, 1, LmFormatMemory));
    mgr.Store(id, out.data(), &v, format, 1);
    return out;
}

// One evaluation with a range of the two keys (none if both are empty).
float Eval(char id, Bytes value, Bytes lower, Bytes upper, unsigned short op, Bounds* out = nullptr,
           unsigned char format = 1, unsigned count = 1) {
    LmIdxBounds range{
        lower.data(), upper.data(), static_cast<uint8_t>(lower.size()), static_cast<uint8_t>(upper.size()), 0, 0, 0};
    unsigned short word = op;
    const float share = mgr.EvalAndBound(id, lower.empty() && upper.empty() ? nullptr : &range, word, value.data(),
                                         format, count, out, nullptr);
    EXPECT_EQ(word, op) << "the comparison word stays";
    return share;
}

// A value and a range of three values of one type, stored in one format.
template <typename T>
float On(char id, T value, T lower, T upper, unsigned short op, unsigned char format = LmFormatLittle) {
    return Eval(id, Disk(id, value, format), Disk(id, lower, format), Disk(id, upper, format), op, nullptr, format);
}

TEST(ScalarBounds, WorkedExamplesOfLong) {
    struct Case {
        int32_t value;
        unsigned short op;
        float share;
    };
    const Case cases[] = {
        {15, EQ, 0.1f},      {15, LT, 0.5f}, {15, LT | EQ, 0.6f}, {15, GT, 0.4f}, {15, GT | EQ, 0.5f},
        {15, LT | GT, 0.9f}, {25, GT, 0.0f}, {25, LT, 1.0f},      {25, EQ, 0.0f}, {5, GT, 1.0f},
        {5, LT, 0.0f},       {10, EQ, 0.1f}, {19, GT | EQ, 0.1f}, {15, 7, 1.0f},
    };
    for (const unsigned char format : {LmFormatLittle, LmFormatBig})
        for (const Case& c : cases)
            EXPECT_FLOAT_EQ(On<int32_t>(Lm4B_T, c.value, 10, 19, c.op, format), c.share) << c.value << " " << c.op;
    // Without statistics the share is 0; a range whose keys are cut short or missing
    // is not used; an inverted range gives 0, not a NaN.
    EXPECT_EQ(Eval(Lm4B_T, Disk(Lm4B_T, 15), {}, {}, LT), 0.0f);
    EXPECT_EQ(Eval(Lm4B_T, Disk(Lm4B_T, 15), {1, 0, 0}, Disk(Lm4B_T, 19), LT), 0.0f);
    EXPECT_EQ(On<int32_t>(Lm4B_T, 15, 19, 10, 7), 0.0f);
}

// Every type reads its own width, sign and byte order.
TEST(ScalarBounds, LinesOfEveryType) {
    EXPECT_FLOAT_EQ(On<int8_t>(Lm1B_T, 0, -128, 127, LT), 0.5f);
    EXPECT_FLOAT_EQ(On<uint8_t>(LmU1B_T, 128, 0, 255, LT), 0.5f);
    EXPECT_FLOAT_EQ(On<int16_t>(Lm2B_T, 0, -32768, 32767, GT), 32767.0f / 65536);
    EXPECT_FLOAT_EQ(On<uint16_t>(LmU2B_T, 32768, 0, 65535, GT, LmFormatBig), 32767.0f / 65536);
    EXPECT_FLOAT_EQ(On<uint32_t>(LmU4B_T, 3000000000u, 0, 3999999999u, LT, LmFormatBig), 0.75f);
    EXPECT_FLOAT_EQ(On<uint32_t>(LmBLOCKID_T, 7, 0, 9, EQ), 0.1f);
    EXPECT_FLOAT_EQ(On<int32_t>(LmINT_T, -5, -10, 9, LT, LmFormatBig), 0.25f);
    EXPECT_FLOAT_EQ(On<int32_t>(LmENUM_T, 2, 0, 3, EQ), 0.25f);
    EXPECT_FLOAT_EQ(On<uint32_t>(LmUNSIGNED_T, 4294967295u, 0, 4294967295u, EQ), float(1.0 / 4294967296.0));
    EXPECT_FLOAT_EQ(On<int64_t>(Lm8B_T, int64_t{-1} << 40, int64_t{-1} << 41, 0, GT, LmFormatBig), 0.5f);
    // 64-bit keys close together collapse to one double: the integers tell.
    const uint64_t top = uint64_t{1} << 63;
    EXPECT_FLOAT_EQ(On<uint64_t>(LmU8B_T, top + 1, top, top + 2, EQ), 1.0f);
    EXPECT_FLOAT_EQ(On<uint64_t>(LmU8B_T, top + 1, top, top + 2, LT), 1.0f);
    EXPECT_FLOAT_EQ(On<uint64_t>(LmU8B_T, top + 1, top, top + 2, GT), 1.0f);
    EXPECT_FLOAT_EQ(On<uint64_t>(LmU8B_T, top + 4096, top, top + 2, EQ), 0.0f);       // a double of its own
    EXPECT_FLOAT_EQ(On<uint64_t>(LmU8B_T, ~uint64_t{0}, 0, ~uint64_t{0}, LT), 1.0f);  // all of it on the line
    const int64_t big = int64_t{1} << 60;
    EXPECT_FLOAT_EQ(On<int64_t>(Lm8B_T, big + 1, big, big + 2, LT), 1.0f);
    EXPECT_FLOAT_EQ(On<int64_t>(Lm8B_T, big - 1000, big, big + 2, EQ), 0.0f);
    EXPECT_FLOAT_EQ(On<int64_t>(Lm8B_T, -big, -big - 2, -big + 2, GT), 1.0f);
}

TEST(ScalarBounds, FloatingRule) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr float kFloor = 1.1920928955078125e-07f;
    EXPECT_EQ(On<double>(LmDOUBLE_T, 1.0, 0.0, 1e300, EQ), kFloor);
    EXPECT_FLOAT_EQ(On<double>(LmDOUBLE_T, 5.0, 0.0, 9.0, LT), 0.5f);
    EXPECT_EQ(On<double>(LmDOUBLE_T, 20.0, 0.0, 9.0, EQ), 0.0f);
    // A NaN in the range makes r DBL_MAX, and the width too: the share is 1.
    EXPECT_EQ(On<double>(LmDOUBLE_T, 1.0, nan, 9.0, EQ), 1.0f);
    EXPECT_EQ(On<double>(LmDOUBLE_T, 1.0, -DBL_MAX, DBL_MAX, 7), 1.0f);
    EXPECT_FLOAT_EQ(On<double>(LmDOUBLE_T, 0.25, 0.0, 0.5, GT | EQ, LmFormatBig), 1.25f / 1.5f);
    EXPECT_FLOAT_EQ(On<float>(LmFLOAT_T, 2.0f, 0.0f, 3.0f, GT), 0.25f);
    EXPECT_EQ(On<float>(LmFLOAT_T, 1.0f, 0.0f, 1e30f, EQ), kFloor);
    // A float has no guards: a NaN width falls to the floor rather than giving a NaN.
    EXPECT_EQ(On<float>(LmFLOAT_T, 1.0f, std::numeric_limits<float>::quiet_NaN(), 1.0f, EQ), kFloor);
}

TEST(ScalarBounds, BoundsFromTheValue) {
    struct Case {
        unsigned short op;
        bool lower, upper;
    };
    const Case cases[] = {{EQ, true, true},       {LT, false, true},       {LT | EQ, false, true}, {GT, true, false},
                          {GT | EQ, true, false}, {LT | GT, false, false}, {7, false, false}};
    const Bytes two = {1, 2, 3, 4, 5, 6, 7, 8};  // two o_4b values
    for (const Case& c : cases) {
        Bounds out;
        EXPECT_EQ(Eval(Lm4B_T, two, {}, {}, c.op, &out, 1, 2), 0.0f);
        EXPECT_EQ(out.Lower(), c.lower ? two : Bytes{}) << c.op;
        EXPECT_EQ(out.Upper(), c.upper ? two : Bytes{}) << c.op;
    }
    // A bound the caller set stays; no memory is taken for it.
    Bounds narrowed;
    uint8_t mine[4] = {9, 9, 9, 9};
    narrowed.lower = std::malloc(4);
    std::memcpy(narrowed.lower, mine, 4);
    narrowed.lowerLen = 4;
    void* const kept = narrowed.lower;
    Eval(Lm4B_T, Disk(Lm4B_T, 3), {}, {}, GT, &narrowed);
    EXPECT_EQ(narrowed.lower, kept);
    EXPECT_EQ(narrowed.upper, nullptr);
    EXPECT_EQ(narrowed.Lower(), (Bytes{9, 9, 9, 9}));
    // Sizes by the type: o_double asks DoubleSizeGet, o_u1b takes count bytes.
    Bounds d, c;
    Eval(LmDOUBLE_T, Disk(LmDOUBLE_T, 1.0), {}, {}, EQ, &d);
    Eval(LmU1B_T, {1, 2, 3}, {}, {}, EQ, &c, 1, 3);
    EXPECT_EQ(d.lowerLen, 8);
    EXPECT_EQ(c.Upper(), (Bytes{1, 2, 3}));
    // The reserved ids do nothing.
    unsigned short word = EQ;
    EXPECT_EQ(mgr.EvalAndBound(static_cast<char>(100), nullptr, word, mine, 1, 1, nullptr, nullptr), 0.0f);
}

// For every ordered scalar: every key that satisfies the predicate lies within the
// written bounds by the type's own Cmp, and the share grows with the value under <
// and falls under >.
template <typename T>
void CheckProperties(char id, std::vector<T> keys, unsigned char format) {
    std::sort(keys.begin(), keys.end(), [&](T a, T b) {
        return mgr.Cmp(id, Disk(id, a, format).data(), Disk(id, b, format).data(), 0, 1, format) < 0;
    });
    const Bytes lower = Disk(id, keys.front(), format), upper = Disk(id, keys.back(), format);
    float lastBelow = -1, lastAbove = 2;
    for (const T v : keys) {
        const Bytes value = Disk(id, v, format);
        const float below = Eval(id, value, lower, upper, LT, nullptr, format);
        const float above = Eval(id, value, lower, upper, GT, nullptr, format);
        EXPECT_GE(below, lastBelow) << int(id);
        EXPECT_LE(above, lastAbove) << int(id);
        EXPECT_GE(below, 0.0f);
        EXPECT_LE(above, 1.0f);
        lastBelow = below;
        lastAbove = above;
        for (unsigned short op = 1; op <= 7; ++op) {
            Bounds out;
            Eval(id, value, lower, upper, op, &out, format);
            for (const T k : keys) {
                Bytes key = Disk(id, k, format);
                const int order = mgr.Cmp(id, key.data(), const_cast<uint8_t*>(value.data()), 0, 1, format);
                const bool qualifies =
                    ((op & EQ) && order == 0) || ((op & LT) && order < 0) || ((op & GT) && order > 0);
                if (!qualifies) continue;
                if (out.lower) {
                    EXPECT_GE(mgr.Cmp(id, key.data(), out.lower, 0, 1, format), 0) << int(id) << " " << op;
                }
                if (out.upper) {
                    EXPECT_LE(mgr.Cmp(id, key.data(), out.upper, 0, 1, format), 0) << int(id) << " " << op;
                }
            }
        }
    }
}

template <typename T>
std::vector<T> Sample(T lo, T hi, std::mt19937_64& rng) {
    std::vector<T> v{lo, hi};
    for (int i = 0; i < 14; ++i) {
        if constexpr (std::is_floating_point_v<T>) {
            v.push_back(std::uniform_real_distribution<T>(lo, hi)(rng));
        } else {
            v.push_back(static_cast<T>(
                std::uniform_int_distribution<int64_t>(0, INT64_MAX)(rng) % (hi / 2 - lo / 2 + 1) * 2 + lo));
        }
    }
    return v;
}

TEST(ScalarBounds, PropertiesOfEveryOrderedScalar) {
    std::mt19937_64 rng(20240611);
    for (const unsigned char format : {LmFormatLittle, LmFormatBig}) {
        CheckProperties<int8_t>(Lm1B_T, Sample<int8_t>(-128, 127, rng), format);
        CheckProperties<uint8_t>(LmU1B_T, Sample<uint8_t>(0, 255, rng), format);
        CheckProperties<int16_t>(Lm2B_T, Sample<int16_t>(-30000, 30000, rng), format);
        CheckProperties<uint16_t>(LmU2B_T, Sample<uint16_t>(0, 65535, rng), format);
        CheckProperties<int32_t>(Lm4B_T, Sample<int32_t>(-2000000000, 2000000000, rng), format);
        CheckProperties<uint32_t>(LmU4B_T, Sample<uint32_t>(0, 4000000000u, rng), format);
        CheckProperties<uint32_t>(LmBLOCKID_T, Sample<uint32_t>(0, 4000000000u, rng), format);
        CheckProperties<int32_t>(LmINT_T, Sample<int32_t>(-2000000000, 2000000000, rng), format);
        CheckProperties<int32_t>(LmENUM_T, Sample<int32_t>(0, 50, rng), format);
        CheckProperties<uint32_t>(LmUNSIGNED_T, Sample<uint32_t>(0, 4000000000u, rng), format);
        CheckProperties<int64_t>(Lm8B_T, Sample<int64_t>(INT64_MIN / 2, INT64_MAX / 2, rng), format);
        CheckProperties<uint64_t>(LmU8B_T, Sample<uint64_t>(0, UINT64_MAX - 1, rng), format);
        CheckProperties<double>(LmDOUBLE_T, Sample<double>(-1e300, 1e300, rng), format);
        CheckProperties<float>(LmFLOAT_T, Sample<float>(-1e30f, 1e30f, rng), format);
    }
    // Object ids by high and low; the line takes 65535 per high word, so it keeps their
    // order for low words below that. (Their Cmp reads a key low byte first in every
    // byte order, so only that order is the order of the line.)
    std::vector<LmObjId> ids;
    for (const uint16_t low : Sample<uint16_t>(0, 65534, rng))
        ids.push_back(LmObjId{low, low, static_cast<uint16_t>(low % 3), 0});
    CheckProperties<LmObjId>(LmOBJID_T, ids, LmFormatLittle);
}

// The identity lines and the values without one.
TEST(ScalarBounds, IdentityValues) {
    // An object id: high * 65535 + low, not 65536; the block id plays no part.
    const auto id = [](uint32_t low, uint16_t high) { return LmObjId{77, low, high, 0}; };
    EXPECT_FLOAT_EQ(On<LmObjId>(LmOBJID_T, id(49, 0), id(0, 0), id(99, 0), LT), 0.49f);
    EXPECT_FLOAT_EQ(On<LmObjId>(LmOBJID_T, id(0, 1), id(0, 0), id(9, 1), LT, LmFormatBig), 65535.0f / 65545);
    EXPECT_EQ(Eval(LmOBJID_T, Disk(LmOBJID_T, id(5, 0)), {}, {}, EQ), 0.0f);
    // A reference: (databaseId * 65535 + high) * 4294967295 + low on the space of all
    // references, 4294967295 squared, whatever the range.
    LmRef ref{};
    ref.databaseId = 1;
    Bounds out;
    EXPECT_FLOAT_EQ(Eval(LmREF_T, Disk(LmREF_T, ref), {1}, {2}, LT, &out), float(65535 / 4294967295.0));
    EXPECT_EQ(out.Upper().size(), 14u);
    EXPECT_EQ(out.lower, nullptr);
    EXPECT_FLOAT_EQ(Eval(LmREF_T, Disk(LmREF_T, ref, LmFormatBig), {}, {}, GT | EQ, nullptr, LmFormatBig),
                    float(1 - 65535 / 4294967295.0));
    // Class ids and blobs have no line: the whole range, no bound, the word as it was.
    for (const char type : {LmCLID_T, LmBLOB_T}) {
        Bounds none;
        uint8_t bytes[8] = {};
        unsigned short word = LT | LM_CMP_NO_WILDCARD;
        EXPECT_EQ(mgr.EvalAndBound(type, nullptr, word, bytes, 1, 1, &none, nullptr), 1.0f);
        EXPECT_EQ(word, LT | LM_CMP_NO_WILDCARD);
        EXPECT_TRUE(none.lower == nullptr && none.upper == nullptr);
    }
}

}  // namespace
