// The compare slots of the plain numbers: the element loop shared by all of them,
// signed and unsigned order in every width and form, and the index order of
// floating values.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <memory>
#include <vector>

#include "lumotypes.h"

namespace {

using Bytes = std::vector<uint8_t>;
using Formats = std::initializer_list<unsigned char>;

struct Member {
    const char* name;
    LmTypeCmpFunc cmp;
    unsigned width;
    bool isSigned;
};

const Member kMembers[] = {
    {"CharCompare", CharCompare, 1, true},       {"ByteCompare", ByteCompare, 1, false},
    {"ShortCompare", ShortCompare, 2, true},     {"WordCompare", WordCompare, 2, false},
    {"LongCompare", LongCompare, 4, true},       {"DwordCompare", DwordCompare, 4, false},
    {"IntCompare", IntCompare, 4, true},         {"UnsignedCompare", UnsignedCompare, 4, false},
    {"O_8BCompare", O_8BCompare, 8, true},       {"O_U8BCompare", O_U8BCompare, 8, false},
};

// The disk image of `count` elements given least significant byte first: as
// they stand for every nibble but 2, each element reversed for nibble 2.
Bytes InForm(const Bytes& little, unsigned width, unsigned char format) {
    Bytes out = little;
    if ((format & 15) == 2 && width > 1) {
        for (size_t at = 0; at + width <= out.size(); at += width) {
            for (unsigned i = 0; i < width / 2; ++i) std::swap(out[at + i], out[at + width - 1 - i]);
        }
    }
    return out;
}

template <typename T>
Bytes Little(std::initializer_list<T> values) {
    Bytes out(values.size() * sizeof(T));
    std::memcpy(out.data(), values.begin(), out.size());
    return out;
}

int CmpBytes(LmTypeCmpFunc cmp, unsigned char format, unsigned len1, const Bytes& a, unsigned len2, const Bytes& b,
        unsigned count, int& status) {
    return cmp(format, len1, const_cast<uint8_t*>(a.data()), len2, const_cast<uint8_t*>(b.data()), 0, count,
               status);
}

// A heap copy of exactly the given bytes, so that the address sanitizer sees
// any read past them.
std::unique_ptr<uint8_t[]> Exact(const Bytes& bytes) {
    std::unique_ptr<uint8_t[]> p(new uint8_t[bytes.size()]);
    std::memcpy(p.get(), bytes.data(), bytes.size());
    return p;
}

}  // namespace

TEST(CompareLoop, CountZeroReadsNothing) {
    for (const Member& m : kMembers) {
        for (LmTypeCmpFunc cmp : {m.cmp, FloatCompare, DoubleCompare}) {
            for (unsigned char format : Formats{1, 2, 8}) {
                int status = 77;
                EXPECT_EQ(cmp(format, 0, nullptr, 0, nullptr, 0, 0, status), 0) << m.name;
                EXPECT_EQ(status, LM_OK);
                status = LM_ERR_OUT_OF_DATA;
                EXPECT_EQ(cmp(format, 8, nullptr, 3, nullptr, 0xFFFF, 0, status), 0) << m.name;
                EXPECT_EQ(status, LM_OK);
            }
        }
    }
}

TEST(CompareLoop, LengthsAndOutOfData) {
    int status = -1;
    const Bytes same = Little<int32_t>({10, 20, 30});

    // len 0 means count times the width.
    EXPECT_EQ(CmpBytes(LongCompare, 8, 0, same, 0, same, 3, status), 0);
    EXPECT_EQ(status, LM_OK);
    EXPECT_EQ(CmpBytes(LongCompare, 8, 12, same, 12, same, 3, status), 0);
    EXPECT_EQ(status, LM_OK);

    // value1 ends after two elements: equal as far as the data went, and the
    // third element of value2, which differs, is not compared.
    const Bytes third = Little<int32_t>({10, 20, 99});
    status = -1;
    EXPECT_EQ(CmpBytes(LongCompare, 8, 8, same, 12, third, 3, status), 0);
    EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
    // The same with value2 short.
    status = -1;
    EXPECT_EQ(CmpBytes(LongCompare, 8, 12, third, 8, same, 3, status), 0);
    EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);

    // Buffers of exactly len1 and len2 bytes on the heap: the loop stops before
    // it could read past value1, and value2's third element is not read.
    {
        const auto v1 = Exact(Little<int32_t>({10, 20}));
        const auto v2 = Exact(third);
        status = -1;
        EXPECT_EQ(LongCompare(8, 8, v1.get(), 12, v2.get(), 0, 3, status), 0);
        EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
        status = -1;
        EXPECT_EQ(LongCompare(2, 12, v2.get(), 8, v1.get(), 0, 3, status), 0);
        EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
    }

    // A difference in the last element that fits comes back with 2101.
    const Bytes second = Little<int32_t>({10, 21, 30});
    status = -1;
    EXPECT_EQ(CmpBytes(LongCompare, 8, 8, same, 0, second, 3, status), -1);
    EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
    status = -1;
    EXPECT_EQ(CmpBytes(LongCompare, 8, 8, second, 0, same, 3, status), 1);
    EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
    status = -1;
    EXPECT_EQ(CmpBytes(LongCompare, 8, 4, Little<int32_t>({1, 5}), 0, Little<int32_t>({2, 5}), 2, status), -1);
    EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);

    // The bound test is strict on the first byte only: with len1 5 the second
    // element is still reached although it does not fit.
    status = -1;
    EXPECT_EQ(CmpBytes(LongCompare, 8, 5, Little<int32_t>({1, 2}), 0, Little<int32_t>({1, 3}), 2, status), -1);
    EXPECT_EQ(status, LM_OK);

    // More data than count needs: count decides, and nothing after is read.
    {
        const auto v1 = Exact(Little<int32_t>({1, 2}));
        const auto v2 = Exact(Little<int32_t>({1, 2}));
        status = -1;
        EXPECT_EQ(LongCompare(8, 400, v1.get(), 400, v2.get(), 0, 2, status), 0);
        EXPECT_EQ(status, LM_OK);
    }

    // The first difference ends the loop: nothing after it is read.
    {
        const auto v1 = Exact(Little<int32_t>({1}));
        const auto v2 = Exact(Little<int32_t>({2}));
        status = -1;
        EXPECT_EQ(LongCompare(8, 0, v1.get(), 0, v2.get(), 0, 5, status), -1);
        EXPECT_EQ(status, LM_OK);
    }

    // The option word is not read.
    EXPECT_EQ(LongCompare(8, 0, const_cast<uint8_t*>(same.data()), 0, const_cast<uint8_t*>(second.data()), 0xFFFF,
                          3, status),
              -1);
    EXPECT_EQ(LongCompare(8, 0, const_cast<uint8_t*>(same.data()), 0, const_cast<uint8_t*>(second.data()), 0x10, 3,
                          status),
              -1);
}

TEST(CompareLoop, EveryMemberStepsByItsWidth) {
    for (const Member& m : kMembers) {
        SCOPED_TRACE(m.name);
        for (unsigned char format : Formats{1, 2, 8}) {
            // Three equal elements, then the third of value2 made greater.
            Bytes a(3 * m.width, 0x00), b(3 * m.width, 0x00);
            b[2 * m.width + ((format & 15) == 2 ? 0 : m.width - 1)] = 0x01;
            int status = -1;
            EXPECT_EQ(CmpBytes(m.cmp, format, 0, a, 0, b, 3, status), -1);
            EXPECT_EQ(status, LM_OK);
            EXPECT_EQ(CmpBytes(m.cmp, format, 0, b, 0, a, 3, status), 1);
            EXPECT_EQ(CmpBytes(m.cmp, format, 0, a, 2 * m.width, b, 3, status), 0);
            EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
            EXPECT_EQ(CmpBytes(m.cmp, format, 2 * m.width, a, 0, b, 3, status), 0);
            EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
            EXPECT_EQ(CmpBytes(m.cmp, format, 2 * m.width + 1, a, 0, b, 3, status), -1);
            EXPECT_EQ(status, LM_OK);
        }
    }
}

TEST(CompareOrder, SignedAndUnsignedInEveryWidthAndForm) {
    for (const Member& m : kMembers) {
        SCOPED_TRACE(m.name);
        // low: only the sign bit set; high: every bit but the sign bit. Both given
        // least significant byte first.
        Bytes low(m.width, 0x00), high(m.width, 0xFF);
        low[m.width - 1] = 0x80;
        high[m.width - 1] = 0x7F;
        const int lowFirst = m.isSigned ? -1 : 1;
        for (unsigned char format : Formats{8, 1, 2, 0, 3, 0x81, 0x82}) {
            SCOPED_TRACE(static_cast<int>(format));
            // The byte types do not look at the format.
            const unsigned char form = m.width == 1 ? 8 : format;
            const Bytes l = InForm(low, m.width, form), h = InForm(high, m.width, form);
            for (unsigned count : {1u, 2u}) {
                Bytes l2 = l, h2 = h;
                if (count == 2) {
                    // An equal first element, so the loop reaches the second.
                    l2.insert(l2.begin(), l.begin(), l.end());
                    h2.insert(h2.begin(), l.begin(), l.end());
                }
                int status = -1;
                EXPECT_EQ(CmpBytes(m.cmp, format, 0, l2, 0, h2, count, status), lowFirst);
                EXPECT_EQ(status, LM_OK);
                EXPECT_EQ(CmpBytes(m.cmp, format, 0, h2, 0, l2, count, status), -lowFirst);
                EXPECT_EQ(CmpBytes(m.cmp, format, 0, h2, 0, h2, count, status), 0);
            }
        }
    }

    // The spelled-out cases.
    int status = 0;
    uint8_t b80 = 0x80, b7f = 0x7F;
    EXPECT_EQ(ByteCompare(8, 0, &b80, 0, &b7f, 0, 1, status), 1);
    EXPECT_EQ(CharCompare(8, 0, &b80, 0, &b7f, 0, 1, status), -1);
    uint32_t all = 0xFFFFFFFF, one = 1;
    EXPECT_EQ(UnsignedCompare(8, 0, &all, 0, &one, 0, 1, status), 1);
    EXPECT_EQ(IntCompare(8, 0, &all, 0, &one, 0, 1, status), -1);
    EXPECT_EQ(DwordCompare(1, 0, &all, 0, &one, 0, 1, status), 1);
    EXPECT_EQ(LongCompare(1, 0, &all, 0, &one, 0, 1, status), -1);
}

TEST(CompareOrder, ShortCompareExchangesBytesForNibbleTwo) {
    int status = 0;
    Bytes a = {0x00, 0x01}, b = {0x00, 0x02};
    EXPECT_EQ(CmpBytes(ShortCompare, 2, 0, a, 0, b, 1, status), -1);  // 0x0001 < 0x0002
    EXPECT_EQ(CmpBytes(ShortCompare, 1, 0, a, 0, b, 1, status), -1);  // 0x0100 < 0x0200

    // 0x01 0x00 against 0x00 0x02: the two forms answer differently.
    a = {0x01, 0x00};
    for (LmTypeCmpFunc cmp : {ShortCompare, WordCompare}) {
        EXPECT_EQ(CmpBytes(cmp, 2, 0, a, 0, b, 1, status), 1);      // 0x0100 > 0x0002
        EXPECT_EQ(CmpBytes(cmp, 0x82, 0, a, 0, b, 1, status), 1);
        EXPECT_EQ(CmpBytes(cmp, 1, 0, a, 0, b, 1, status), -1);     // 0x0001 < 0x0200
        EXPECT_EQ(CmpBytes(cmp, 8, 0, a, 0, b, 1, status), -1);
        EXPECT_EQ(CmpBytes(cmp, 0, 0, a, 0, b, 1, status), -1);     // any other nibble: as it stands
        EXPECT_EQ(CmpBytes(cmp, 3, 0, a, 0, b, 1, status), -1);
        EXPECT_EQ(CmpBytes(cmp, 0x0F, 0, a, 0, b, 1, status), -1);
    }
    // Sign in format 2: 0xFF 0x00 is -256 signed, 65280 unsigned.
    a = {0xFF, 0x00};
    b = {0x00, 0x01};
    EXPECT_EQ(CmpBytes(ShortCompare, 2, 0, a, 0, b, 1, status), -1);
    EXPECT_EQ(CmpBytes(WordCompare, 2, 0, a, 0, b, 1, status), 1);
}

TEST(CompareOrder, IntCompareSingleElement) {
    // One element: status is set to 0, nothing else is looked at; even lengths
    // shorter than an int do not stop it.
    const Bytes a = {0x00, 0x00, 0x00, 0x01}, b = {0x00, 0x00, 0x00, 0x02};
    for (LmTypeCmpFunc cmp : {IntCompare, UnsignedCompare}) {
        int status = 55;
        EXPECT_EQ(CmpBytes(cmp, 8, 1, a, 1, b, 1, status), -1);  // 0x01000000 < 0x02000000
        EXPECT_EQ(status, LM_OK);
        status = LM_ERR_OUT_OF_DATA;
        EXPECT_EQ(CmpBytes(cmp, 1, 0, b, 0, a, 1, status), 1);
        EXPECT_EQ(status, LM_OK);
        status = 55;
        EXPECT_EQ(CmpBytes(cmp, 2, 2, a, 3, b, 1, status), -1);  // 1 < 2
        EXPECT_EQ(status, LM_OK);
        EXPECT_EQ(CmpBytes(cmp, 0x82, 0, b, 0, a, 1, status), 1);
        EXPECT_EQ(CmpBytes(cmp, 0, 0, a, 0, a, 1, status), 0);
    }
    // In format 2 the sign sits in the first byte.
    const Bytes negative = {0xFF, 0xFF, 0xFF, 0xFE}, positive = {0x00, 0x00, 0x00, 0x05};
    int status = 0;
    EXPECT_EQ(CmpBytes(IntCompare, 2, 0, negative, 0, positive, 1, status), -1);
    EXPECT_EQ(CmpBytes(UnsignedCompare, 2, 0, negative, 0, positive, 1, status), 1);
    // Read least significant byte first they are 0xFEFFFFFF and 0x05000000.
    EXPECT_EQ(CmpBytes(IntCompare, 1, 0, negative, 0, positive, 1, status), -1);
    EXPECT_EQ(CmpBytes(UnsignedCompare, 1, 0, negative, 0, positive, 1, status), 1);
    EXPECT_EQ(CmpBytes(IntCompare, 1, 0, positive, 0, negative, 1, status), 1);
}

TEST(CompareOrder, FloatingIndexOrder) {
    const double qnan = std::numeric_limits<double>::quiet_NaN();
    const double snan = std::numeric_limits<double>::signaling_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    const double max = std::numeric_limits<double>::max();
    const double min = std::numeric_limits<double>::min();
    const double sub = std::numeric_limits<double>::denorm_min();
    const float fqnan = std::numeric_limits<float>::quiet_NaN();
    const float fsnan = std::numeric_limits<float>::signaling_NaN();
    const float finf = std::numeric_limits<float>::infinity();
    const float fmax = std::numeric_limits<float>::max();
    const float fmin = std::numeric_limits<float>::min();
    const float fsub = std::numeric_limits<float>::denorm_min();

    struct Case {
        double a, b;
        float fa, fb;
        int expected;
    };
    const Case cases[] = {
        {qnan, -inf, fqnan, -finf, -1},       // NaN below negative infinity
        {-inf, qnan, -finf, fqnan, 1},
        {qnan, qnan, fqnan, fqnan, 0},        // NaNs are equal
        {snan, qnan, fsnan, fqnan, 0},
        {-qnan, qnan, -fqnan, fqnan, 0},
        {-qnan, -inf, -fqnan, -finf, -1},
        {snan, -inf, fsnan, -finf, -1},
        {qnan, 0.0, fqnan, 0.0f, -1},
        {inf, qnan, finf, fqnan, 1},
        {-inf, -max, -finf, -fmax, -1},
        {-inf, -inf, -finf, -finf, 0},
        {inf, inf, finf, finf, 0},
        {inf, max, finf, fmax, 1},            // above the largest finite value
        {max, inf, fmax, finf, -1},
        {-0.0, 0.0, -0.0f, 0.0f, 0},          // negative zero equals zero
        {0.0, -0.0, 0.0f, -0.0f, 0},
        {sub, 0.0, fsub, 0.0f, 1},            // subnormals rank with the finite values
        {sub, min, fsub, fmin, -1},
        {-sub, 0.0, -fsub, 0.0f, -1},
        {1.0, 2.0, 1.0f, 2.0f, -1},
        {2.0, 1.0, 2.0f, 1.0f, 1},
        {-1.0, 1.0, -1.0f, 1.0f, -1},
        {1.0, 1.0, 1.0f, 1.0f, 0},
        {1.0, std::nextafter(1.0, 2.0), 1.0f, std::nextafter(1.0f, 2.0f), -1},  // no epsilon
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.a << " vs " << c.b);
        for (unsigned char format : Formats{8, 1, 2, 0x82}) {
            SCOPED_TRACE(static_cast<int>(format));
            int status = -1;
            const Bytes da = InForm(Little<double>({c.a}), 8, format), db = InForm(Little<double>({c.b}), 8, format);
            EXPECT_EQ(CmpBytes(DoubleCompare, format, 0, da, 0, db, 1, status), c.expected);
            EXPECT_EQ(status, LM_OK);
            const Bytes fa = InForm(Little<float>({c.fa}), 4, format), fb = InForm(Little<float>({c.fb}), 4, format);
            EXPECT_EQ(CmpBytes(FloatCompare, format, 0, fa, 0, fb, 1, status), c.expected);
            EXPECT_EQ(status, LM_OK);
        }
    }

    // Arrays run the same loop.
    int status = -1;
    const Bytes a = InForm(Little<double>({1.5, qnan, 3.0}), 8, 2), b = InForm(Little<double>({1.5, -inf, 0.0}), 8, 2);
    EXPECT_EQ(CmpBytes(DoubleCompare, 2, 0, a, 0, b, 3, status), -1);
    EXPECT_EQ(CmpBytes(DoubleCompare, 2, 8, a, 0, b, 3, status), 0);
    EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
    const Bytes fa = Little<float>({fqnan, 2.0f}), fb = Little<float>({fqnan, 1.0f});
    EXPECT_EQ(CmpBytes(FloatCompare, 1, 0, fa, 0, fb, 2, status), 1);
    EXPECT_EQ(status, LM_OK);
}

TEST(CompareOrder, FloatRank) {
    EXPECT_EQ(LmFloatRank(std::numeric_limits<double>::quiet_NaN()), -2);
    EXPECT_EQ(LmFloatRank(std::numeric_limits<double>::signaling_NaN()), -2);
    EXPECT_EQ(LmFloatRank(-std::numeric_limits<double>::quiet_NaN()), -2);
    EXPECT_EQ(LmFloatRank(-std::numeric_limits<double>::infinity()), -1);
    EXPECT_EQ(LmFloatRank(-std::numeric_limits<double>::max()), 0);
    EXPECT_EQ(LmFloatRank(-0.0), 0);
    EXPECT_EQ(LmFloatRank(0.0), 0);
    EXPECT_EQ(LmFloatRank(std::numeric_limits<double>::denorm_min()), 0);
    EXPECT_EQ(LmFloatRank(std::numeric_limits<double>::max()), 0);
    EXPECT_EQ(LmFloatRank(std::numeric_limits<double>::infinity()), 1);
    EXPECT_EQ(LmFloatRank(static_cast<double>(std::numeric_limits<float>::infinity())), 1);
}

TEST(CompareManager, ShortFormHasExactBounds) {
    const LmTypeMgr mgr;
    const char ids[] = {Lm1B_T, LmU1B_T, Lm2B_T, LmU2B_T, Lm4B_T, LmU4B_T, LmBLOCKID_T, LmINT_T, LmENUM_T,
                        LmUNSIGNED_T, LmFLOAT_T, LmDOUBLE_T, Lm8B_T, LmU8B_T};
    for (char id : ids) {
        SCOPED_TRACE(static_cast<int>(id));
        const unsigned width = mgr.MemLenGet(id, 1);
        // Equal but for the most significant byte of the third element.
        Bytes a(3 * width, 0x00), b(3 * width, 0x00);
        b[3 * width - 1] = 0x01;
        // The short form reaches the third element: its lengths are exact.
        EXPECT_EQ(mgr.Cmp(id, a.data(), b.data(), 0xFFFF, 3, 8), -1);
        EXPECT_EQ(mgr.Cmp(id, b.data(), a.data(), 0, 3, 1), 1);
        EXPECT_EQ(mgr.Cmp(id, a.data(), a.data(), 0, 3, 8), 0);
        EXPECT_EQ(mgr.Cmp(id, nullptr, nullptr, 0, 0, 8), 0);
        // The long form with value2 cut after two elements does not.
        int status = -1;
        EXPECT_EQ(mgr.Cmp(id, 0, a.data(), 2 * width, b.data(), 0, 3, 8, status), 0);
        EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
        EXPECT_EQ(mgr.Cmp(id, 0, a.data(), 0, b.data(), 0, 3, 8, status), -1);
        EXPECT_EQ(status, LM_OK);
    }
}
