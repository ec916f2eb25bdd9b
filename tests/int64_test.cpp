// LmInt64, type id 26. Every operator is checked against two oracles written here:
// the compiler's 128-bit integers, and the word rules of the type (the multiplication
// walk, the restoring division, single-bit shift steps), over boundary and random
// operands; so the native operations of the class are proved equal to the rules they
// replace. Disk images and hash codes are frozen: golden bytes, hand-computed hashes.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <vector>

#include "lumotypes.h"

namespace {

using u64 = unsigned long long;
__extension__ typedef __int128 i128;
constexpr long long kMin = -0x7FFFFFFFFFFFFFFFLL - 1, kMax = 0x7FFFFFFFFFFFFFFFLL;

long long Wrap(i128 v) { return static_cast<long long>(static_cast<u64>(v)); }
u64 Magnitude(long long v) { return v < 0 ? 0 - static_cast<u64>(v) : static_cast<u64>(v); }

std::vector<long long> Operands() {
    std::vector<long long> v = {kMin, kMax, -1, 0, 1, 7, -7, kMin + 1, 0xFFFFFFFFLL, -0x100000000LL};
    for (int k = 0; k < 63; ++k) v.insert(v.end(), {1LL << k, -(1LL << k), (1LL << k) - 1});
    std::mt19937_64 rng(26);
    for (int i = 0; i < 60; ++i) v.push_back(static_cast<long long>(rng() >> (rng() % 64)) * (i % 2 ? 1 : -1));
    return v;
}

// The multiplication walk: the smallest value first, then bits 62 to 0 of the right magnitude.
long long WalkMultiply(long long a, long long b) {
    if (a == kMin || b == kMin) return (a == kMin ? b : a) % 2 != 0 ? kMin : 0;
    u64 acc = 0;
    for (int bit = 62; bit >= 0; --bit) acc = acc * 2 + ((Magnitude(b) >> bit & 1) ? static_cast<u64>(a) : 0);
    return static_cast<long long>(b < 0 ? 0 - acc : acc);
}

// The restoring division, the smallest dividend marked and taken as its complement.
long long WalkDivide(long long a, long long b, bool remainder) {
    const bool negative = remainder ? a < 0 : ((a < 0) != (b < 0)), marked = a == kMin;
    const u64 ua = marked ? static_cast<u64>(~a) : Magnitude(a), ub = Magnitude(b);
    u64 q = 0, r = b == kMin ? ua : 0;
    for (int bit = 62; bit >= 0 && b != 0 && b != kMin; --bit) {
        r = r << 1 | (ua >> bit & 1);
        q <<= 1;
        if (r >= ub) r -= ub, q |= 1;
    }
    if (marked && ++r == ub) ++q, r = 0;
    return static_cast<long long>(negative ? 0 - (remainder ? r : q) : (remainder ? r : q));
}

long long StepShift(long long a, unsigned n, bool right) {
    u64 v = static_cast<u64>(a);
    for (unsigned i = 0; i < n; ++i) v = right ? (v >> 1 | (v & 1ULL << 63)) : v << 1;
    return static_cast<long long>(v);
}

std::vector<unsigned char> Stored(long long v, unsigned char format) {
    LmInt64 x(v);
    std::vector<unsigned char> out(8);
    EXPECT_EQ(LmTypeMgr().Store(LmINT64_T, out.data(), &x, format, 1), 8u);
    return out;
}

int divideReports = 0;
void CountReport(const char* message, const char*, int) {
    divideReports += std::strcmp(message, "LmInt64 divide by zero") == 0;
}

}  // namespace

TEST(Int64, OperatorsAgainstOracles) {
    const std::vector<long long> ops = Operands();
    for (const long long a : ops) {
        const LmInt64 x(a);
        ASSERT_TRUE(x.low == static_cast<uint32_t>(a) && x.high == static_cast<int32_t>(a >> 32));
        ASSERT_TRUE((-x).Get8b() == Wrap(-i128(a)) && (~x).Get8b() == ~a);
        ASSERT_EQ(x.Abs().Get8b(), a == kMin ? kMin : std::llabs(a));
        for (const long long b : ops) {
            const LmInt64 y(b);
            ASSERT_EQ((x + y).Get8b(), Wrap(i128(a) + b)) << a << " " << b;
            ASSERT_EQ((x - y).Get8b(), Wrap(i128(a) - b));
            ASSERT_TRUE((x & y).Get8b() == (a & b) && (x | y).Get8b() == (a | b));
            ASSERT_EQ((x * y).Get8b(), Wrap(i128(a) * b)) << a << " * " << b;
            ASSERT_EQ((x * y).Get8b(), WalkMultiply(a, b));
            ASSERT_TRUE((x == y) == (a == b) && (x != y) == (a != b) && (x < y) == (a < b));
            ASSERT_TRUE((x <= y) == (a <= b) && (x > y) == (a > b) && (x >= y) == (a >= b));
            if (b == 0) continue;
            ASSERT_EQ((x / y).Get8b(), Wrap(i128(a) / b)) << a << " / " << b;
            ASSERT_EQ((x % y).Get8b(), Wrap(i128(a) % b)) << a << " % " << b;
            ASSERT_TRUE((x / y).Get8b() == WalkDivide(a, b, false) &&
                        x.Division(y, 5).Get8b() == WalkDivide(a, b, true));
        }
        for (unsigned n : {0u, 1u, 31u, 32u, 33u, 63u, 64u, 65u, 1000u}) {
            ASSERT_EQ((x >> n).Get8b(), StepShift(a, n, true)) << a << " >> " << n;
            ASSERT_EQ((x << n).Get8b(), StepShift(a, n, false)) << a << " << " << n;
        }
        ASSERT_TRUE((x >> 0xFFFFFFFFu).Get8b() == (a < 0 ? -1 : 0) && (x << 0xFFFFFFFFu).Get8b() == 0);
    }
}

TEST(Int64, CompoundAndPrefixStoreAndReturnTheNewValue) {
    const LmInt64 b(-3);
    for (const LmInt64 x : {LmInt64(kMin), LmInt64(-5), LmInt64(6u), LmInt64(kMax)}) {
        LmInt64 v;
        EXPECT_TRUE(((v = x) += b) == x + b && v == x + b);
        EXPECT_TRUE(((v = x) -= b) == x - b && v == x - b);
        EXPECT_TRUE(((v = x) *= b) == x * b && v == x * b);
        EXPECT_TRUE(((v = x) /= b) == x / b && v == x / b);
        EXPECT_TRUE(((v = x) %= b) == x % b && v == x % b);
        EXPECT_TRUE(((v = x) >>= 3) == x >> 3 && v == x >> 3);
        EXPECT_TRUE(((v = x) <<= 3) == x << 3 && v == x << 3);
        EXPECT_TRUE(++(v = x) == x + 1 && v == x + 1);
        EXPECT_TRUE(--(v = x) == x - 1 && v == x - 1);
    }
    LmInt64 v;
    v = 0xFFFFFFFFu;  // zero-extended, as the unsigned constructors are
    EXPECT_TRUE(v.high == 0 && LmInt64(~0ULL).GetU8b() == ~0ULL && LmInt64(5u, -2).Get8b() == -0x200000000LL + 5);
}

TEST(Int64, EdgeCasesOfTheRules) {
    const LmInt64 min(kMin);
    EXPECT_TRUE(min / -1 == min && (min % -1).Get8b() == 0 && (min / min).Get8b() == 1 && min.Abs() == min);
    EXPECT_TRUE((LmInt64(7) / -2).Get8b() == -3 && (LmInt64(7) % -2).Get8b() == 1);
    EXPECT_TRUE((LmInt64(-7) / 2).Get8b() == -3 && (LmInt64(-7) % 2).Get8b() == -1);
    EXPECT_EQ((LmInt64(-1) >> 1).Get8b(), -1);
    // Division by 0 is reported once per division and gives the word rule's result.
    const LmAssertHandler previous = LmSetAssertHandler(CountReport);
    for (const long long a : {kMin, -9LL, 0LL, 9LL, kMax}) {
        EXPECT_EQ((LmInt64(a) / 0).Get8b(), 0);
        EXPECT_EQ((LmInt64(a) % 0).Get8b(), a == kMin ? -1 : 0) << a;
    }
    LmSetAssertHandler(previous);
    EXPECT_EQ(divideReports, 10);
}

TEST(Int64, FromDoubleThroughSevenDigits) {
    const struct {
        double d;
        long long expected;
    } table[] = {{1e19, kMax},
                 {-1e19, -kMax},
                 {1e308, kMax},
                 {-HUGE_VAL, -kMax},
                 {NAN, 0},
                 {-NAN, 0},
                 {0.99, 0},
                 {4.9e-324, 0},
                 {-2.75, -2},
                 {1.0, 1},
                 {1234567.0, 1234567},
                 {12345678.0, 12345680},
                 {123456789.0, 123456800},
                 {9999999.5, 10000000},
                 {9223372036854774784.0, 9223372000000000000LL}};
    for (const auto& c : table) EXPECT_EQ(LmInt64(c.d).Get8b(), c.expected) << c.d;
    // Oracle: the seven digits of "%.6e" as one integer, scaled by its exponent.
    std::mt19937_64 rng(64);
    for (int i = 0; i < 2000; ++i) {
        const double d =
            std::ldexp(static_cast<double>(rng() >> 11), static_cast<int>(rng() % 63) - 52) * (i % 2 ? -1 : 1);
        char text[32];
        std::snprintf(text, sizeof text, "%.6e", std::fabs(d));
        long long digits = text[0] - '0', e = std::atoi(text + 9);
        for (int k = 2; k < 8; ++k) digits = digits * 10 + (text[k] - '0');
        for (; e > 6; --e) digits *= 10;
        for (; e < 6; ++e) digits /= 10;
        EXPECT_EQ(LmInt64(d).Get8b(), d < 0 ? -digits : digits) << text;
    }
}

TEST(Int64, DiskImagesInBothByteOrders) {
    using B = std::vector<unsigned char>;
    EXPECT_EQ(Stored(1, LmFormatBig), (B{0, 0, 0, 1, 0, 0, 0, 0}));
    EXPECT_EQ(Stored(0x0123456789ABCDEFLL, LmFormatBig), (B{0x89, 0xAB, 0xCD, 0xEF, 0x01, 0x23, 0x45, 0x67}));
    EXPECT_EQ(Stored(0x0123456789ABCDEFLL, 0x82), Stored(0x0123456789ABCDEFLL, LmFormatBig));
    EXPECT_EQ(Stored(0x0123456789ABCDEFLL, LmFormatLittle), (B{0xEF, 0xCD, 0xAB, 0x89, 0x67, 0x45, 0x23, 0x01}));
    LmTypeMgr mgr;
    const LmInt64 values[2] = {LmInt64(kMin), LmInt64(0x0123456789ABCDEFLL)};
    unsigned char disk[16], again[16];
    for (const unsigned char f : {LmFormatLittle, LmFormatBig}) {
        EXPECT_EQ(mgr.Store(LmINT64_T, disk, const_cast<LmInt64*>(values), f, 2), 16u);
        LmInt64 back[2];
        EXPECT_EQ(mgr.Translate(LmINT64_T, back, LmFormatMemory, 0, disk, f, 16, 2), 16u);
        EXPECT_EQ(std::memcmp(back, values, 16), 0);
        EXPECT_EQ(mgr.Translate(LmINT64_T, again, f, 16, back, LmFormatMemory, 0, 2), 16u);
        EXPECT_EQ(std::memcmp(again, disk, 16), 0);
    }
    EXPECT_EQ(mgr.DiskLenGet(LmINT64_T, nullptr, 2, 5, 8) + mgr.Desc(LmINT64_T)->NullSizeGet(2) +
                  mgr.DiskLenGetFromMemFile(LmINT64_T, nullptr, 1, 3),
              80u);
}

TEST(Int64, CompareAndHashInEveryForm) {
    LmTypeMgr mgr;
    const std::vector<long long> ops = Operands();
    int status = -1;
    for (size_t i = 0; i + 1 < ops.size(); ++i) {
        LmInt64 pair[2] = {LmInt64(ops[i]), LmInt64(ops[i + 1])};
        const int expected = ops[i] < ops[i + 1] ? -1 : (ops[i] > ops[i + 1] ? 1 : 0);
        const unsigned word = pair[0].low ^ static_cast<uint32_t>(pair[0].high);
        for (const int f : {8, 1, 2, 0x82}) {
            unsigned char disk[16];
            mgr.Store(LmINT64_T, disk, pair, static_cast<unsigned char>(f), 2);
            char* p = f == 8 ? reinterpret_cast<char*>(pair) : reinterpret_cast<char*>(disk);
            ASSERT_EQ(mgr.Cmp(LmINT64_T, 8, p, 8, p + 8, 0, 1, static_cast<unsigned char>(f), status), expected);
            ASSERT_EQ(mgr.Hash(LmINT64_T, 8, p, 1, static_cast<unsigned char>(f), status), word * 1103515245u) << f;
        }
    }
    // Words are low XOR high, so 1 and 0x100000001 differ (o_8b keeps only low), and
    // LmInt64 hashes like a double of the same bits.
    LmInt64 two[2] = {LmInt64(0x100000001LL), LmInt64(1)};
    EXPECT_EQ(mgr.Hash(LmINT64_T, 0, two, 2, 8, status), 1103515245u);
    EXPECT_EQ(mgr.Hash(LmINT64_T, 0, two, 1, 8, status), mgr.Hash(LmDOUBLE_T, 0, two, 1, 8, status));
    // The shared element loop: the second operand ends after one element.
    EXPECT_TRUE(mgr.Cmp(LmINT64_T, 16, two, 8, two, 0, 2, 8, status) == 0 && status == LM_ERR_OUT_OF_DATA);
    EXPECT_TRUE(mgr.Hash(LmINT64_T, 8, two, 2, 8, status) == 0u && status == LM_ERR_OUT_OF_DATA);
}

TEST(Int64, RowThroughTheManager) {
    LmTypeMgr mgr;
    const LmTypeDesc* row = mgr.Desc(LmINT64_T);
    EXPECT_TRUE(row->Constructor == mgr.Desc(Lm8B_T)->Constructor && row->Copy == mgr.Desc(Lm8B_T)->Copy);
    EXPECT_EQ(mgr.SupportsCapability(LmINT64_T, 2), 1);

    auto* values = static_cast<LmInt64*>(mgr.Create(LmINT64_T, 3));
    ASSERT_TRUE(values != nullptr && values[0].GetU8b() == 0 && values[2].GetU8b() == 0);
    values[0] = kMin;
    values[1] = -255;
    LmString text("x=");  // an array print appends; the second conversion prints what the first left
    EXPECT_STREQ(mgr.PrintToLmString(LmINT64_T, text, values, "%S|%x", 2).StrGet(),
                 "x=-9223372036854775808|0x8000000000000000,-255|0x0");
    LmString in("0x1F");
    EXPECT_TRUE(mgr.ScanFromLmString(LmINT64_T, &values[2], in, nullptr, 1) == &values[2] && values[2] == 31);
    EXPECT_TRUE(mgr.IsNullValue(LmINT64_T, values) == 0 && mgr.SetNullValue(LmINT64_T, values) == 0);
    EXPECT_EQ(values[0].Get8b(), 0);  // the fallback: what an empty text gives

    values[0] = kMax;
    LmTypeConvertData* w = mgr.ConvertTo(LmINT64_T, values, 3);
    EXPECT_STREQ(w->GetString(0)->StrGet(), "9223372036854775807");
    w->GetString(2)->SetNullValue();
    auto* back = static_cast<LmInt64*>(mgr.ConvertFrom(LmINT64_T, w, 4));  // null and missing: the created 0
    EXPECT_TRUE(back[0] == kMax && back[1] == -255 && back[2] == 0 && back[3] == 0);
    delete w;
    EXPECT_EQ(mgr.Delete(LmINT64_T, back, 4), nullptr);
    back = static_cast<LmInt64*>(mgr.DefaultValue(LmINT64_T, 2, 1));
    EXPECT_TRUE(back[0] == 0 && back[1] == 0);
    mgr.Delete(LmINT64_T, back, 2);

    // Stepping: 'M' and 'N' by the increment while greater; mode 2 gives 0, not the smallest value.
    EXPECT_TRUE(mgr.GetValue(LmINT64_T, &values[1], 0, 8, 'N') == 0 && values[1] == -254);
    EXPECT_TRUE(mgr.GetValue(LmINT64_T, &values[0], 0, 8, 'M') == LM_ERR_NO_NEXT_VALUE && values[0] == kMax);
    EXPECT_TRUE(row->GetValue(&values[0], 0, 8, 'O') == 0 && values[0] == kMax);
    EXPECT_TRUE(row->GetValue(&values[0], 0, 8, 2) == 0 && values[0] == 0);
    EXPECT_EQ(row->GetValue(&values[0], 0, 1, 'N') + row->GetValue(values, 0, 8, 'X'), 2 * LM_ERR_NOT_SUPPORTED);
    unsigned char disk[8] = {0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0};
    EXPECT_EQ(mgr.GetValue(LmINT64_T, disk, 8, LmFormatLittle, 'N'), 0);
    EXPECT_EQ(Stored(0x100000000LL, LmFormatLittle), std::vector<unsigned char>(disk, disk + 8));
    EXPECT_EQ(mgr.Delete(LmINT64_T, values, 3), nullptr);
}
