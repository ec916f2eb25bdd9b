// The plain number types: life cycle, the disk images in both byte orders, load,
// translate and sizes; the compare slots with their shared element loop and the
// index order of floating values; the hash slots. Disk images and hash codes are
// persistent, so every expected image and hash here is worked out by hand.
#include <cmath>
#include <limits>
#include <new>

#include "testkit.h"

using namespace lmtest;

namespace {

using Formats = std::initializer_list<unsigned char>;
using Answer = std::pair<int, int>;  // result (or hash) and status
constexpr int kOut = LM_ERR_OUT_OF_DATA;
constexpr unsigned char kFormats[] = {0, 1, 2, 3, 8, 9, 0x12, 0x22, 0x41, 0x81, 0x82, 0xF2};

template <typename T>
Bytes Little(std::initializer_list<T> values) {
    return Of(values.begin(), values.size() * sizeof(T));
}

// Elements given least significant byte first, each reversed for nibble 2.
Bytes InForm(Bytes b, unsigned width, unsigned char format) {
    for (size_t at = 0; (format & 15) == 2 && at + width <= b.size(); at += width) {
        for (unsigned i = 0; i < width / 2; ++i) std::swap(b[at + i], b[at + width - 1 - i]);
    }
    return b;
}

Bytes Padded(Bytes b, size_t n, uint8_t fill) {
    b.resize(n, fill);
    return b;
}

Answer Cmp(LmTypeCmpFunc cmp, unsigned char format, unsigned len1, const void* a, unsigned len2, const void* b,
           unsigned count, unsigned short option = 0) {
    int status = -1;  // so that the answer shows what the slot set
    const int result = cmp(format, len1, const_cast<void*>(a), len2, const_cast<void*>(b), option, count, status);
    return {result, status};
}
Answer Cmp(LmTypeCmpFunc cmp, unsigned char format, unsigned len1, const Bytes& a, unsigned len2, const Bytes& b,
           unsigned count) {
    return Cmp(cmp, format, len1, a.data(), len2, b.data(), count);
}

Answer Hash(char id, const void* value, unsigned count, unsigned char format, unsigned len = 0) {
    int status = -1;
    const unsigned h = LmTypeMgr().Hash(id, len, const_cast<void*>(value), count, format, status);
    return {static_cast<int>(h), status};
}
unsigned HashOf(char id, const Bytes& memory, unsigned width) {
    const Answer a = Hash(id, memory.data(), static_cast<unsigned>(memory.size() / width), 8);
    EXPECT_EQ(a.second, LM_OK);
    return static_cast<unsigned>(a.first);
}

// One row per type: the slots, three values (the first two make the golden images,
// `big` their most-significant-first image typed by hand) and the hash of the three.
struct Scalar {
    char id;
    unsigned width;
    bool isSigned;
    LmTypeStoreFunc store, load;
    LmTypeCmpFunc cmp;
    Bytes three;
    const char* big;
    unsigned hash;  // of the XOR of the element words, times 1103515245
};

// clang-format off
const Scalar kScalars[] = {
    {Lm1B_T, 1, true, CharStore, CharStore, CharCompare, Little<int8_t>({-127, 0x7E, 5}), "81 7E", 1968843122u},
    {LmU1B_T, 1, false, CharStore, CharStore, ByteCompare, Little<uint8_t>({0xFE, 1, 5}), "FE 01", 1000904306u},
    {Lm2B_T, 2, true, ShortStore, ShortStore, ShortCompare, Little<int16_t>({-292, 0x1234, 5}), "FEDC 1234",
     1719015145u},
    {LmU2B_T, 2, false, ShortStore, ShortStore, WordCompare, Little<uint16_t>({0xBEEF, 0x0102, 5}), "BEEF 0102",
     2419746248u},
    {Lm4B_T, 4, true, LongStore, LongStore, LongCompare, Little<int32_t>({0x01020304, -2, 5}), "01020304 FFFFFFFE",
     1635019411u},
    {LmU4B_T, 4, false, LongStore, LongStore, DwordCompare, Little<uint32_t>({0xDEADBEEF, 0x80, 5}),
     "DEADBEEF 00000080", 4026162978u},
    {LmBLOCKID_T, 4, false, LongStore, LongStore, DwordCompare, Little<uint32_t>({0x80000001, 0xFF00, 5}),
     "80000001 0000FF00", 255315124u},
    {LmINT_T, 4, true, IntStore, IntLoad, IntCompare, Little<int32_t>({0x01020304, -2, 5}), "01020304 FFFFFFFE",
     1635019411u},
    {LmENUM_T, 4, true, IntStore, IntLoad, IntCompare, Little<int32_t>({0x0A0B0C0D, 7, 5}), "0A0B0C0D 00000007",
     3338318947u},
    {LmUNSIGNED_T, 4, false, UnsignedStore, UnsignedLoad, UnsignedCompare, Little<uint32_t>({0xF1F2F3F4, 1, 5}),
     "F1F2F3F4 00000001", 2791636272u},
    // -2.5f is 0xC0200000, 1.0f 0x3F800000; the hash takes the bits.
    {LmFLOAT_T, 4, true, FloatStore, FloatStore, FloatCompare, Little<float>({-2.5f, 1.0f, 5.0f}),
     "C0200000 3F800000", 1392508928u},
    // A double hashes as the XOR of its halves: 0x3FF00000 ^ 0xC0040000 ^ 0x40140000.
    {LmDOUBLE_T, 8, true, DoubleStore, DoubleStore, DoubleCompare, Little<double>({1.0, -2.5, 5.0}),
     "3FF0000000000000 C004000000000000", 4066377728u},
    // The 64-bit integers hash their low halves.
    {Lm8B_T, 8, true, O_8BStore, O_8BStore, O_8BCompare,
     Little<int64_t>({static_cast<int64_t>(0x8877665544332211u), 1, 5}), "8877665544332211 0000000000000001",
     1332078833u},
    {LmU8B_T, 8, false, O_8BStore, O_8BStore, O_U8BCompare,
     Little<uint64_t>({0x0102030405060708u, 0xFFFFFFFF00000000u, 5}), "0102030405060708 FFFFFFFF00000000",
     3133470345u},
};
// clang-format on

std::string Id(const Scalar& s) { return "type id " + std::to_string(s.id); }

}  // namespace

TEST(ScalarStore, GoldenImagesInBothByteOrders) {
    const LmTypeMgr mgr;
    for (const Scalar& s : kScalars) {
        SCOPED_TRACE(Id(s));
        const unsigned n = 2 * s.width;
        const Bytes little(s.three.begin(), s.three.begin() + n), big = Hex(s.big);
        void* values = const_cast<uint8_t*>(s.three.data());
        ASSERT_EQ(big, InForm(little, s.width, 2));
        // Store: only nibble 2 writes most significant byte first, nothing after the
        // image is written. Translate from a memory source (bit 3) stores the same.
        for (unsigned char format : kFormats) {
            const Bytes expected = Padded((format & 15) == 2 ? big : little, n + 3, 0xCC);
            Bytes out(n + 3, 0xCC), viaTranslate(n + 3, 0xCC);
            EXPECT_EQ(mgr.Store(s.id, out.data(), values, format, 2), n);
            EXPECT_EQ(out, expected) << int{format};
            if ((format & 8) != 0) continue;
            EXPECT_EQ(mgr.Translate(s.id, viaTranslate.data(), format, 0, values, format % 2 ? 8 : 0x0F, 0, 2), n);
            EXPECT_EQ(viaTranslate, expected) << int{format};
        }
        // Load, and Translate to memory: the image of the same order gives the values
        // back, the other order the swapped values.
        const std::tuple<const Bytes&, unsigned char, const Bytes&> loads[] = {
            {big, 2, little}, {big, 0x82, little}, {little, 1, little}, {big, 1, big}};
        for (const auto& [image, format, expected] : loads) {
            Bytes back(n, 0x5A), viaTranslate(n, 0x5A);
            EXPECT_EQ(mgr.Load(s.id, back.data(), const_cast<uint8_t*>(image.data()), format, 2), n);
            EXPECT_EQ(back, expected);
            EXPECT_EQ(mgr.Translate(s.id, viaTranslate.data(), 8, 0, const_cast<uint8_t*>(image.data()), format, 0, 2),
                      n);
            EXPECT_EQ(viaTranslate, expected);
        }
        // Memory to memory: element copies, the lengths not looked at; nibble 10 does not
        // swap. Disk to disk: raw bytes, never swapped; a longer destination is cleared in
        // full first, a shorter one takes what fits and nothing after it is written.
        Bytes back(n, 0x5A), out(n + 5, 0xCC);
        EXPECT_EQ(mgr.Translate(s.id, back.data(), 0x0A, 1, values, 8, 1, 2), n);
        EXPECT_EQ(back, little);
        EXPECT_EQ(mgr.Translate(s.id, out.data(), 1, n + 5, const_cast<uint8_t*>(big.data()), 2, n, 2), n);
        EXPECT_EQ(out, Padded(big, n + 5, 0));
        out.assign(n, 0xCC);
        EXPECT_EQ(mgr.Translate(s.id, out.data(), 1, s.width, const_cast<uint8_t*>(little.data()), 1, n, 2), s.width);
        EXPECT_EQ(out, Padded(Bytes(little.begin(), little.begin() + s.width), n, 0xCC));
        EXPECT_EQ(mgr.Store(s.id, nullptr, nullptr, 2, 0) + mgr.Load(s.id, nullptr, nullptr, 1, 0) +
                      mgr.Translate(s.id, nullptr, 1, 0, nullptr, 2, 0, 5),
                  0u);
        // Slots and sizes: count times the width, whatever the format; the memory file
        // is not read from and not moved.
        const LmTypeDesc* desc = mgr.Desc(s.id);
        EXPECT_TRUE(desc->Store == s.store && desc->Load == s.load && desc->Cmp == s.cmp);
        for (const auto& [count, format] : {std::pair<unsigned, unsigned char>{0, 2}, {3, 8}, {1000, 0x81}}) {
            MemFile file(values, 24);
            EXPECT_EQ(desc->NullSizeGet(count), count * s.width);
            EXPECT_EQ(mgr.DiskLenGet(s.id, nullptr, format, count, 8), count * s.width);
            EXPECT_EQ(mgr.DiskLenGet(s.id, values, format, count, 1), count * s.width);
            EXPECT_EQ(mgr.DiskLenGetFromMemFile(s.id, &file, format, count), count * s.width);
            EXPECT_EQ(file.Position(), 0u);
        }
    }
}

TEST(ScalarLifecycle, CreateConstructAssignCopy) {
    const LmTypeMgr mgr;
    for (const Scalar& s : kScalars) {
        SCOPED_TRACE(Id(s));
        const unsigned w = s.width;
        const Bytes a(s.three.begin(), s.three.begin() + w), b(s.three.begin() + w, s.three.begin() + 2 * w);
        const auto image = [&](std::initializer_list<const Bytes*> parts) {
            Bytes out;
            for (const Bytes* p : parts) out.insert(out.end(), p->begin(), p->end());
            return out;
        };
        const Bytes zero(w, 0);
        auto* made = static_cast<uint8_t*>(mgr.Create(s.id, 3));
        std::memcpy(made + 2 * w, b.data(), w);  // the whole array is usable
        EXPECT_EQ(mgr.Delete(s.id, made, 3), nullptr);
        void* none = mgr.Create(s.id, 0);
        EXPECT_NE(none, nullptr);
        EXPECT_EQ(mgr.Delete(s.id, none, 0), nullptr);
        EXPECT_EQ(mgr.Delete(s.id, nullptr, 7), nullptr);

        // Constructor: zero bytes in `count` elements, nothing after them. Destructor: nothing.
        Bytes buf = image({&a, &a, &a, &b});
        mgr.ConstructorPtrGet(s.id)(buf.data(), 3, 12345);
        mgr.ConstructorPtrGet(s.id)(nullptr, 0, 0);
        mgr.DestructorPtrGet(s.id)(buf.data(), 4, 0);
        EXPECT_EQ(buf, image({&zero, &zero, &zero, &b}));
        for (LmTypeAssignmentFunc assign : {mgr.Desc(s.id)->Assignment, mgr.Desc(s.id)->Copy}) {
            Bytes src = image({&a, &b, &a}), dest = image({&b, &b, &b, &b});
            assign(dest.data(), src.data(), 3, 0);
            EXPECT_EQ(dest, image({&a, &b, &a, &b}));
            // Any non-zero flag writes the element at src into all count elements.
            for (int broadcast : {1, -1}) {
                dest = image({&b, &b, &b, &b});
                assign(dest.data(), src.data(), 3, broadcast);
                EXPECT_EQ(dest, image({&a, &a, &a, &b}));
            }
            assign(dest.data(), nullptr, 0, 0);  // count 0 reads and writes nothing
            assign(dest.data(), nullptr, 0, 1);
            EXPECT_EQ(dest, image({&a, &a, &a, &b}));
        }
    }
    // Only the byte types start cleared. Dirty memory is left behind first for the
    // allocator to hand out again.
    for (char id : {Lm1B_T, LmU1B_T}) {
        for (unsigned count : {1u, 2u, 7u, 64u}) {
            void* dirty = ::operator new(count);
            std::memset(dirty, 0xEE, count);
            ::operator delete(dirty);
            void* made = mgr.Create(id, count);
            EXPECT_EQ(Of(made, count), Bytes(count, 0)) << int{id} << " count " << count;
            mgr.Delete(id, made, count);
        }
    }
}

TEST(ScalarLifecycle, ImpossibleCountReachesTheAllocator) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the address sanitizer reports an impossible allocation instead of throwing";
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
    GTEST_SKIP() << "the address sanitizer reports an impossible allocation instead of throwing";
#endif
#endif
    // The count is widened as a signed number: 2^31 elements ask for a negative size.
    const LmTypeMgr mgr;
    EXPECT_THROW(mgr.Create(Lm4B_T, 0x80000000u), std::bad_alloc);
    EXPECT_THROW(mgr.Create(LmDOUBLE_T, 0xFFFFFFFFu), std::bad_alloc);
}

TEST(CompareLoop, LengthsStepsAndOutOfData) {
    const LmTypeMgr mgr;
    for (const Scalar& s : kScalars) {
        SCOPED_TRACE(Id(s));
        EXPECT_EQ(Cmp(s.cmp, 2, 8, nullptr, 3, nullptr, 0), Answer(0, LM_OK));  // count 0 reads nothing
        for (unsigned char format : Formats{1, 2, 8}) {
            // Three equal elements but for the lowest byte of the third of b.
            const unsigned w = s.width;
            Bytes a(3 * w, 0x00), b(3 * w, 0x00);
            b[2 * w + ((format & 15) == 2 ? w - 1 : 0)] = 0x01;
            EXPECT_EQ(Cmp(s.cmp, format, 0, a, 0, b, 3), Answer(-1, LM_OK)) << int{format};
            EXPECT_EQ(Cmp(s.cmp, format, 0, b, 0, a, 3), Answer(1, LM_OK));
            EXPECT_EQ(Cmp(s.cmp, format, 0, a, 2 * w, b, 3), Answer(0, kOut));
            EXPECT_EQ(Cmp(s.cmp, format, 2 * w, a, 0, b, 3), Answer(0, kOut));
            // The bound test is strict on the first byte only: one byte more reaches the third.
            EXPECT_EQ(Cmp(s.cmp, format, 2 * w + 1, a, 0, b, 3), Answer(-1, LM_OK));
            // The short Cmp of the manager has exact lengths: it reaches the third element.
            EXPECT_EQ(mgr.Cmp(s.id, a.data(), b.data(), 0xFFFF, 3, format), -1);
            EXPECT_EQ(mgr.Cmp(s.id, b.data(), a.data(), 0, 3, format), 1);
        }
    }
    // A difference in the last element that fits comes back with 2101; len 0 is
    // count times the width.
    const Bytes same = Little<int32_t>({10, 20, 30}), second = Little<int32_t>({10, 21, 30});
    EXPECT_EQ(Cmp(LongCompare, 8, 0, same, 12, same, 3), Answer(0, LM_OK));
    EXPECT_EQ(Cmp(LongCompare, 8, 8, same, 0, second, 3), Answer(-1, kOut));
    EXPECT_EQ(Cmp(LongCompare, 8, 4, Little<int32_t>({2, 5}), 0, Little<int32_t>({1, 5}), 2), Answer(1, kOut));
    // Buffers of exactly len1 and len2 bytes: equal as far as the data went, and the
    // third element of v2, which differs, is not read. The first difference ends the
    // loop; the option word is not read.
    const auto v1 = Exact(Little<int32_t>({10, 20})), v2 = Exact(Little<int32_t>({10, 20, 99}));
    const auto one = Exact(Little<int32_t>({1})), two = Exact(Little<int32_t>({2}));
    EXPECT_EQ(Cmp(LongCompare, 8, 8, v1.get(), 12, v2.get(), 3), Answer(0, kOut));
    EXPECT_EQ(Cmp(LongCompare, 2, 12, v2.get(), 8, v1.get(), 3), Answer(0, kOut));
    EXPECT_EQ(Cmp(LongCompare, 8, 0, one.get(), 0, two.get(), 5, 0x10), Answer(-1, LM_OK));
}

TEST(CompareOrder, SignedAndUnsignedInEveryWidthAndForm) {
    for (const Scalar& s : kScalars) {
        SCOPED_TRACE(Id(s));
        if (s.id == LmFLOAT_T || s.id == LmDOUBLE_T) continue;
        // low: only the sign bit set; high: every bit but the sign bit.
        Bytes low(s.width, 0x00), high(s.width, 0xFF);
        low[s.width - 1] = 0x80;
        high[s.width - 1] = 0x7F;
        const int lowFirst = s.isSigned ? -1 : 1;
        for (unsigned char format : Formats{8, 1, 2, 0, 3, 0x81, 0x82}) {
            const Bytes l = InForm(low, s.width, format), h = InForm(high, s.width, format);
            EXPECT_EQ(Cmp(s.cmp, format, 0, l, 0, h, 1), Answer(lowFirst, LM_OK)) << int{format};
            EXPECT_EQ(Cmp(s.cmp, format, 0, h, 0, l, 1), Answer(-lowFirst, LM_OK)) << int{format};
        }
    }
    // One int element: status 0, no end computed, so even lengths shorter than an
    // int do not stop it. The sign sits in the first byte in format 2, the last in 1.
    const Bytes one = Hex("00000001"), two = Hex("00000002"), negative = Hex("FFFFFFFE"), positive = Hex("00000005");
    for (LmTypeCmpFunc cmp : {IntCompare, UnsignedCompare}) {
        EXPECT_EQ(Cmp(cmp, 8, 1, one, 1, two, 1), Answer(-1, LM_OK));  // 0x01000000 < 0x02000000
        EXPECT_EQ(Cmp(cmp, 2, 2, two, 3, one, 1), Answer(1, LM_OK));
        EXPECT_EQ(Cmp(cmp, 0x82, 0, one, 0, two, 1), Answer(-1, LM_OK));
        const int signedOrder = cmp == IntCompare ? -1 : 1;
        EXPECT_EQ(Cmp(cmp, 2, 0, negative, 0, positive, 1).first, signedOrder);
        EXPECT_EQ(Cmp(cmp, 1, 0, positive, 0, negative, 1).first, -signedOrder);  // 0x05000000 vs 0xFEFFFFFF
    }
}

TEST(CompareOrder, FloatingIndexOrder) {
    using D = std::numeric_limits<double>;
    using F = std::numeric_limits<float>;
    const struct {
        double a, b;
        float fa, fb;
        int expected;
    } cases[] = {
        {D::quiet_NaN(), -D::infinity(), F::quiet_NaN(), -F::infinity(), -1},  // NaN below negative infinity
        {D::quiet_NaN(), D::quiet_NaN(), F::quiet_NaN(), F::quiet_NaN(), 0},   // NaNs are all equal
        {D::signaling_NaN(), -D::quiet_NaN(), F::signaling_NaN(), -F::quiet_NaN(), 0},
        {D::quiet_NaN(), 0.0, F::quiet_NaN(), 0.0f, -1},
        {D::infinity(), D::quiet_NaN(), F::infinity(), F::quiet_NaN(), 1},
        {-D::infinity(), -D::max(), -F::infinity(), -F::max(), -1},
        {-D::infinity(), -D::infinity(), -F::infinity(), -F::infinity(), 0},
        {D::infinity(), D::infinity(), F::infinity(), F::infinity(), 0},
        {D::infinity(), D::max(), F::infinity(), F::max(), 1},  // above the largest finite value
        {-0.0, 0.0, -0.0f, 0.0f, 0},                            // negative zero equals zero
        {D::denorm_min(), 0.0, F::denorm_min(), 0.0f, 1},       // subnormals rank as finite
        {-D::denorm_min(), 0.0, -F::denorm_min(), 0.0f, -1},
        {1.0, std::nextafter(1.0, 2.0), 1.0f, std::nextafter(1.0f, 2.0f), -1},  // no epsilon
    };
    for (const auto& c : cases) {
        for (unsigned char format : Formats{8, 1, 2, 0x82}) {
            SCOPED_TRACE(testing::Message() << c.a << " vs " << c.b << ", format " << int{format});
            const Bytes da = InForm(Little<double>({c.a}), 8, format), db = InForm(Little<double>({c.b}), 8, format);
            const Bytes fa = InForm(Little<float>({c.fa}), 4, format), fb = InForm(Little<float>({c.fb}), 4, format);
            EXPECT_EQ(Cmp(DoubleCompare, format, 0, da, 0, db, 1), Answer(c.expected, LM_OK));
            EXPECT_EQ(Cmp(DoubleCompare, format, 0, db, 0, da, 1), Answer(-c.expected, LM_OK));
            EXPECT_EQ(Cmp(FloatCompare, format, 0, fa, 0, fb, 1), Answer(c.expected, LM_OK));
            EXPECT_EQ(Cmp(FloatCompare, format, 0, fb, 0, fa, 1), Answer(-c.expected, LM_OK));
        }
    }
    const std::pair<double, int> ranks[] = {{D::quiet_NaN(), -2}, {-D::quiet_NaN(), -2}, {-D::infinity(), -1},
                                            {-D::max(), 0},       {D::denorm_min(), 0},  {D::infinity(), 1}};
    for (const auto& [value, rank] : ranks) EXPECT_EQ(LmFloatRank(value), rank) << value;
}

TEST(ScalarHash, HandComputedValues) {
    // XOR of the element words times 1103515245, modulo 2^32.
    const struct {
        char id;
        Bytes memory;
        unsigned width, hash;
    } cases[] = {
        {Lm4B_T, Little<int32_t>({1}), 4, 1103515245u},
        {Lm4B_T, Little<int32_t>({5, 5}), 4, 0u},               // equal elements cancel
        {Lm4B_T, Little<int32_t>({2, 1}), 4, 3310545735u},      // 3 * 1103515245, in any order
        {Lm4B_T, Little<int32_t>({1, 2, 4}), 4, 3429639419u},   // 7 * 1103515245 mod 2^32
        {Lm2B_T, Little<int16_t>({-1}), 2, 3191452051u},        // sign extended: 0xFFFFFFFF
        {Lm2B_T, Little<int16_t>({-32513}), 2, 1565630099u},    // 0xFFFF80FF
        {LmU2B_T, Little<uint16_t>({0x80FF}), 2, 2881396371u},  // 0x000080FF
        {Lm1B_T, Little<int8_t>({-1}), 1, 3191452051u},
        {LmU1B_T, Little<uint8_t>({0xFF}), 1, 2223513235u},
        {LmUNSIGNED_T, Little<uint32_t>({0xFFFFFFFF}), 4, 3191452051u},
        {Lm8B_T, Little<int64_t>({0x100000001}), 8, 1103515245u},  // the low half alone
        {Lm8B_T, Little<int64_t>({0x100000000}), 8, 0u},
        {LmDOUBLE_T, Little<double>({-2.5}), 8, 4189323264u},  // 0xC0040000: low half XOR high half
        {LmDOUBLE_T, Little<double>({-0.0}), 8, 2147483648u},
        {LmFLOAT_T, Little<float>({-0.0f}), 4, 2147483648u},  // the bits, so the two zeros differ
        {LmFLOAT_T, Little<float>({0.0f}), 4, 0u},
    };
    for (const auto& c : cases) EXPECT_EQ(HashOf(c.id, c.memory, c.width), c.hash) << int{c.id};
}

TEST(ScalarHash, EveryFormatAndTheElementLoop) {
    for (const Scalar& c : kScalars) {
        SCOPED_TRACE(Id(c));
        const Bytes big = InForm(c.three, c.width, 2);
        for (unsigned char format : kFormats) {
            const Bytes& image = (format & 15) == 2 ? big : c.three;
            EXPECT_EQ(Hash(c.id, image.data(), 3, format), Answer(static_cast<int>(c.hash), LM_OK)) << int{format};
        }
        // The byte types do not look at the format; the others do read the order.
        EXPECT_EQ(Hash(c.id, c.three.data(), 3, 2).first == static_cast<int>(c.hash), c.width == 1);
        // Permuted, the array hashes alike.
        const Bytes rotated =
            Cat({Bytes(c.three.begin() + c.width, c.three.end()), Bytes(c.three.begin(), c.three.begin() + c.width)});
        EXPECT_EQ(Hash(c.id, rotated.data(), 3, 1).first, static_cast<int>(c.hash));
        EXPECT_EQ(Hash(c.id, nullptr, 0, 2, 16), Answer(0, LM_OK));  // count 0: nothing read
        // Each type steps by its own width: room for one element gives its hash and 2101.
        const int first = Hash(c.id, c.three.data(), 1, 8).first;
        EXPECT_EQ(Hash(c.id, c.three.data(), 3, 8, c.width), Answer(first, kOut));
        EXPECT_EQ(Hash(c.id, big.data(), 3, 2, c.width), Answer(first, kOut));
        EXPECT_EQ(Hash(c.id, c.three.data(), 3, 1, 3 * c.width), Answer(static_cast<int>(c.hash), LM_OK));
    }
    // Buffers of just the elements given. len 4, count 2: the first element's hash
    // and 2101; more room than count needs: no status. The end test looks at the
    // first byte only: with len 5 the second element is still taken.
    const auto one = Exact(Little<int32_t>({1})), two = Exact(Little<int32_t>({1, 2}));
    EXPECT_EQ(Hash(Lm4B_T, one.get(), 2, 8, 4), Answer(1103515245, kOut));
    EXPECT_EQ(Hash(LmINT_T, one.get(), 2, 1, 4), Answer(1103515245, kOut));
    EXPECT_EQ(Hash(Lm4B_T, two.get(), 3, 8, 8), Answer(static_cast<int>(3310545735u), kOut));
    EXPECT_EQ(Hash(Lm4B_T, two.get(), 2, 8, 400), Answer(static_cast<int>(3310545735u), LM_OK));
    EXPECT_EQ(Hash(Lm4B_T, two.get(), 2, 8, 5), Answer(static_cast<int>(3310545735u), LM_OK));
}
