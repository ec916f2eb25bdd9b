// The hash slots of the plain numbers. Hash codes are stored by hash indexes, so
// every expected value here is frozen: the XOR of the element words, times
// 1103515245, modulo 2^32, worked out by hand.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <vector>

#include "lumotypes.h"

namespace {

using Bytes = std::vector<uint8_t>;
using Formats = std::initializer_list<unsigned char>;

template <typename T>
Bytes Little(std::initializer_list<T> values) {
    Bytes out(values.size() * sizeof(T));
    std::memcpy(out.data(), values.begin(), out.size());
    return out;
}

Bytes Big(Bytes little, unsigned width) {
    for (size_t at = 0; at + width <= little.size(); at += width) {
        for (unsigned i = 0; i < width / 2; ++i) std::swap(little[at + i], little[at + width - 1 - i]);
    }
    return little;
}

unsigned HashOf(char id, const Bytes& bytes, unsigned count, unsigned char format, int& status, unsigned len = 0) {
    const LmTypeMgr mgr;
    return mgr.Hash(id, len, const_cast<uint8_t*>(bytes.data()), count, format, status);
}

template <typename T>
unsigned HashOf(char id, std::initializer_list<T> values) {
    int status = -1;
    const unsigned h = HashOf(id, Little<T>(values), static_cast<unsigned>(values.size()), 8, status);
    EXPECT_EQ(status, LM_OK);
    return h;
}

// Three values of each type and the hash of the array, from the words of its
// elements: for example o_2b -292, 0x1234, 5 has the words 0xFFFFFEDC, 0x1234
// and 5, XOR 0xFFFFECED, times the multiplier 1719015145.
struct ArrayCase {
    char id;
    unsigned width;
    Bytes little;
    unsigned hash;
};

std::vector<ArrayCase> ArrayCases() {
    return {
        {Lm1B_T, 1, Little<int8_t>({-127, 0x7E, 5}), 1968843122u},                       // 0xFFFFFFFA
        {LmU1B_T, 1, Little<uint8_t>({0xFE, 0x01, 5}), 1000904306u},                     // 0xFA
        {Lm2B_T, 2, Little<int16_t>({-292, 0x1234, 5}), 1719015145u},                    // 0xFFFFECED
        {LmU2B_T, 2, Little<uint16_t>({0xBEEF, 0x0102, 5}), 2419746248u},                // 0xBFE8
        {Lm4B_T, 4, Little<int32_t>({0x01020304, -2, 5}), 1635019411u},                  // 0xFEFDFCFF
        {LmU4B_T, 4, Little<uint32_t>({0xDEADBEEF, 0x80, 5}), 4026162978u},              // 0xDEADBE6A
        {LmBLOCKID_T, 4, Little<uint32_t>({0x80000001, 0xFF00, 5}), 255315124u},         // 0x8000FF04
        {LmINT_T, 4, Little<int32_t>({0x01020304, -2, 5}), 1635019411u},                 // 0xFEFDFCFF
        {LmENUM_T, 4, Little<int32_t>({0x0A0B0C0D, 7, 5}), 3338318947u},                 // 0x0A0B0C0F
        {LmUNSIGNED_T, 4, Little<uint32_t>({0xF1F2F3F4, 1, 5}), 2791636272u},            // 0xF1F2F3F0
        // 0xC0200000 ^ 0x3F800000 ^ 0x40A00000 = 0xBF000000
        {LmFLOAT_T, 4, Little<float>({-2.5f, 1.0f, 5.0f}), 1392508928u},
        // 0x3FF00000 ^ 0xC0040000 ^ 0x40140000 = 0xBFE00000 (the low halves are 0)
        {LmDOUBLE_T, 8, Little<double>({1.0, -2.5, 5.0}), 4066377728u},
        // low halves only: 0x44332211 ^ 1 ^ 5 = 0x44332215
        {Lm8B_T, 8, Little<int64_t>({static_cast<int64_t>(0x8877665544332211u), 1, 5}), 1332078833u},
        // 0x05060708 ^ 0 ^ 5 = 0x0506070D
        {LmU8B_T, 8, Little<uint64_t>({0x0102030405060708u, 0xFFFFFFFF00000000u, 5}), 3133470345u},
    };
}

}  // namespace

TEST(ScalarHash, HandComputedValues) {
    EXPECT_EQ(HashOf<int32_t>(Lm4B_T, {1}), 1103515245u);
    EXPECT_EQ(HashOf<int32_t>(Lm4B_T, {0}), 0u);
    EXPECT_EQ(HashOf<int32_t>(Lm4B_T, {5, 5}), 0u);             // equal elements cancel
    EXPECT_EQ(HashOf<int32_t>(Lm4B_T, {1, 2}), 3310545735u);    // 3 * 1103515245
    EXPECT_EQ(HashOf<int32_t>(Lm4B_T, {2, 1}), 3310545735u);    // the order does not count
    EXPECT_EQ(HashOf<int32_t>(Lm4B_T, {1, 2, 4}), 3429639419u); // 7 * 1103515245 mod 2^32

    // Sign extension of the short and byte types: the word of -1 is 0xFFFFFFFF.
    EXPECT_EQ(HashOf<int16_t>(Lm2B_T, {-1}), 3191452051u);
    EXPECT_EQ(HashOf<int16_t>(Lm2B_T, {static_cast<int16_t>(0x80FF)}), 1565630099u);  // 0xFFFF80FF
    EXPECT_EQ(HashOf<uint16_t>(LmU2B_T, {65535}), 212251027u);                        // 0x0000FFFF
    EXPECT_EQ(HashOf<uint16_t>(LmU2B_T, {0x80FF}), 2881396371u);                      // 0x000080FF
    EXPECT_EQ(HashOf<int8_t>(Lm1B_T, {-1}), 3191452051u);
    EXPECT_EQ(HashOf<uint8_t>(LmU1B_T, {0xFF}), 2223513235u);                         // 0x000000FF

    // The 32-bit types.
    EXPECT_EQ(HashOf<uint32_t>(LmU4B_T, {1}), 1103515245u);
    EXPECT_EQ(HashOf<uint32_t>(LmBLOCKID_T, {1}), 1103515245u);
    EXPECT_EQ(HashOf<int32_t>(LmINT_T, {1}), 1103515245u);
    EXPECT_EQ(HashOf<int32_t>(LmENUM_T, {1}), 1103515245u);
    EXPECT_EQ(HashOf<uint32_t>(LmUNSIGNED_T, {1}), 1103515245u);
    EXPECT_EQ(HashOf<uint32_t>(LmUNSIGNED_T, {0xFFFFFFFF}), 3191452051u);

    // o_8b and o_u8b: the low half alone.
    EXPECT_EQ(HashOf<int64_t>(Lm8B_T, {1}), 1103515245u);
    EXPECT_EQ(HashOf<int64_t>(Lm8B_T, {0x100000001}), 1103515245u);
    EXPECT_EQ(HashOf<int64_t>(Lm8B_T, {0x100000000}), 0u);
    EXPECT_EQ(HashOf<uint64_t>(LmU8B_T, {0xFFFFFFFF00000001u}), 1103515245u);

    // o_double: low half XOR high half of the bits.
    EXPECT_EQ(HashOf<double>(LmDOUBLE_T, {1.0}), 1496317952u);   // 0x3FF00000
    EXPECT_EQ(HashOf<double>(LmDOUBLE_T, {-2.5}), 4189323264u);  // 0xC0040000
    EXPECT_EQ(HashOf<double>(LmDOUBLE_T, {0.0}), 0u);
    EXPECT_EQ(HashOf<double>(LmDOUBLE_T, {-0.0}), 2147483648u);  // 0x80000000

    // o_float: the bits, not the value, so the two zeros differ.
    EXPECT_EQ(HashOf<float>(LmFLOAT_T, {-2.5f}), 2376073216u);   // 0xC0200000
    EXPECT_EQ(HashOf<float>(LmFLOAT_T, {1.0f}), 159383552u);     // 0x3F800000
    EXPECT_EQ(HashOf<float>(LmFLOAT_T, {0.0f}), 0u);
    EXPECT_EQ(HashOf<float>(LmFLOAT_T, {-0.0f}), 2147483648u);   // 0x80000000
}

TEST(ScalarHash, EveryFormatGivesOneHash) {
    for (const ArrayCase& c : ArrayCases()) {
        SCOPED_TRACE(testing::Message() << "type id " << static_cast<int>(c.id));
        const Bytes big = Big(c.little, c.width);
        int status = -1;
        EXPECT_EQ(HashOf(c.id, c.little, 3, 8, status), c.hash);
        EXPECT_EQ(status, LM_OK);
        for (unsigned char format : Formats{1, 0x81, 0, 3, 0x41}) {
            status = -1;
            EXPECT_EQ(HashOf(c.id, c.little, 3, format, status), c.hash) << static_cast<int>(format);
            EXPECT_EQ(status, LM_OK);
        }
        for (unsigned char format : Formats{2, 0x82, 0x22}) {
            status = -1;
            EXPECT_EQ(HashOf(c.id, big, 3, format, status), c.hash) << static_cast<int>(format);
            EXPECT_EQ(status, LM_OK);
        }
        // The byte types do not look at the format; the others do read the order.
        if (c.width == 1) {
            EXPECT_EQ(HashOf(c.id, c.little, 3, 2, status), c.hash);
        } else {
            EXPECT_NE(HashOf(c.id, c.little, 3, 2, status), c.hash);
        }
        // Permuted, the array hashes alike.
        Bytes rotated(c.little.begin() + c.width, c.little.end());
        rotated.insert(rotated.end(), c.little.begin(), c.little.begin() + c.width);
        EXPECT_EQ(HashOf(c.id, rotated, 3, 1, status), c.hash);
    }
}

TEST(ScalarHash, ElementLoopAndStatus) {
    const LmTypeMgr mgr;
    // count 0: 0 and status 0, nothing read.
    for (const ArrayCase& c : ArrayCases()) {
        int status = 9;
        EXPECT_EQ(mgr.Hash(c.id, 0, nullptr, 0, 8, status), 0u);
        EXPECT_EQ(status, LM_OK);
        status = LM_ERR_OUT_OF_DATA;
        EXPECT_EQ(mgr.Hash(c.id, 16, nullptr, 0, 2, status), 0u);
        EXPECT_EQ(status, LM_OK);
    }

    // len 4, count 2: the hash of the first element and 2101. The buffer holds
    // just that element, so a read of the second would be seen.
    {
        std::unique_ptr<int32_t[]> one(new int32_t[1]{1});
        int status = -1;
        EXPECT_EQ(mgr.Hash(Lm4B_T, 4, one.get(), 2, 8, status), 1103515245u);
        EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
        EXPECT_EQ(mgr.Hash(LmINT_T, 4, one.get(), 2, 1, status), 1103515245u);
        EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
    }
    {
        std::unique_ptr<int32_t[]> two(new int32_t[2]{1, 2});
        int status = -1;
        EXPECT_EQ(mgr.Hash(Lm4B_T, 8, two.get(), 3, 8, status), 3310545735u);
        EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
        // More room than count needs: no status, nothing past count read.
        EXPECT_EQ(mgr.Hash(Lm4B_T, 400, two.get(), 2, 8, status), 3310545735u);
        EXPECT_EQ(status, LM_OK);
        // The end test looks at the first byte only: with len 5 the second
        // element is still taken.
        EXPECT_EQ(mgr.Hash(Lm4B_T, 5, two.get(), 2, 8, status), 3310545735u);
        EXPECT_EQ(status, LM_OK);
    }

    // Each type steps by its own width.
    for (const ArrayCase& c : ArrayCases()) {
        SCOPED_TRACE(testing::Message() << "type id " << static_cast<int>(c.id));
        int status = -1;
        const unsigned first = mgr.Hash(c.id, 0, const_cast<uint8_t*>(c.little.data()), 1, 8, status);
        EXPECT_EQ(status, LM_OK);
        EXPECT_EQ(mgr.Hash(c.id, c.width, const_cast<uint8_t*>(c.little.data()), 3, 8, status), first);
        EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
        const Bytes big = Big(c.little, c.width);
        EXPECT_EQ(mgr.Hash(c.id, c.width, const_cast<uint8_t*>(big.data()), 3, 2, status), first);
        EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
        EXPECT_EQ(mgr.Hash(c.id, 3 * c.width, const_cast<uint8_t*>(c.little.data()), 3, 1, status), c.hash);
        EXPECT_EQ(status, LM_OK);
    }
}
