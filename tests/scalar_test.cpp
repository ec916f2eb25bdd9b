// The plain number types: life cycle, the disk images in both byte orders, load,
// translate and sizes; the compare slots with their shared element loop and the
// index order of floating values; the hash slots. Disk images and hash codes are
// persistent, so every expected image and hash here is worked out by hand.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "lumotypes.h"

namespace {

using Bytes = std::vector<uint8_t>;
using Formats = std::initializer_list<unsigned char>;
using Answer = std::pair<int, int>;           // compare result and status
using HashAnswer = std::pair<unsigned, int>;  // hash and status
constexpr int kOut = LM_ERR_OUT_OF_DATA;
constexpr unsigned char kFormats[] = {0, 1, 2, 3, 8, 9, 0x12, 0x22, 0x41, 0x81, 0x82, 0xF2};

Bytes Of(const void* p, size_t n) {
    const auto* b = static_cast<const uint8_t*>(p);
    return Bytes(b, b + n);
}

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

uint8_t* Ptr(const Bytes& b) { return const_cast<uint8_t*>(b.data()); }

// A heap copy of exactly these bytes, so that the address sanitizer sees a read past them.
std::unique_ptr<uint8_t[]> Exact(const Bytes& bytes) {
    std::unique_ptr<uint8_t[]> p(new uint8_t[bytes.size()]);
    std::memcpy(p.get(), bytes.data(), bytes.size());
    return p;
}

// One compare or hash; the status starts at -1, so that the answer shows what the slot set.
Answer Cmp(LmTypeCmpFunc cmp, unsigned char format, unsigned len1, const void* a, unsigned len2, const void* b,
           unsigned count, unsigned short option = 0) {
    int status = -1;
    const int result = cmp(format, len1, const_cast<void*>(a), len2, const_cast<void*>(b), option, count, status);
    return {result, status};
}

Answer Cmp(LmTypeCmpFunc cmp, unsigned char format, unsigned len1, const Bytes& a, unsigned len2, const Bytes& b,
           unsigned count) {
    return Cmp(cmp, format, len1, a.data(), len2, b.data(), count);
}

HashAnswer Hash(char id, const void* value, unsigned count, unsigned char format, unsigned len = 0) {
    int status = -1;
    const unsigned h = LmTypeMgr().Hash(id, len, const_cast<void*>(value), count, format, status);
    return {h, status};
}

template <typename T>
unsigned HashOf(char id, std::initializer_list<T> values) {
    const HashAnswer a = Hash(id, Little<T>(values).data(), static_cast<unsigned>(values.size()), 8);
    EXPECT_EQ(a.second, LM_OK);
    return a.first;
}

// The family: the base functions in the Store and Load slots, the compare slot, and
// three values (the first two those of the golden images) with the hash of the array
// and the XOR of its element words.
struct Scalar {
    char id;
    unsigned width;
    bool isSigned;
    LmTypeStoreFunc store;
    LmTypeLoadFunc load;
    LmTypeCmpFunc cmp;
    Bytes three;
    unsigned hash;
};

// clang-format off
const Scalar kScalars[] = {
    {Lm1B_T, 1, true, CharStore, CharStore, CharCompare,
     Little<int8_t>({-127, 0x7E, 5}), 1968843122u},  // 0xFFFFFFFA
    {LmU1B_T, 1, false, CharStore, CharStore, ByteCompare,
     Little<uint8_t>({0xFE, 0x01, 5}), 1000904306u},  // 0xFA
    {Lm2B_T, 2, true, ShortStore, ShortStore, ShortCompare,
     Little<int16_t>({-292, 0x1234, 5}), 1719015145u},  // 0xFFFFECED
    {LmU2B_T, 2, false, ShortStore, ShortStore, WordCompare,
     Little<uint16_t>({0xBEEF, 0x0102, 5}), 2419746248u},  // 0xBFE8
    {Lm4B_T, 4, true, LongStore, LongStore, LongCompare,
     Little<int32_t>({0x01020304, -2, 5}), 1635019411u},  // 0xFEFDFCFF
    {LmU4B_T, 4, false, LongStore, LongStore, DwordCompare,
     Little<uint32_t>({0xDEADBEEF, 0x80, 5}), 4026162978u},  // 0xDEADBE6A
    {LmBLOCKID_T, 4, false, LongStore, LongStore, DwordCompare,
     Little<uint32_t>({0x80000001, 0xFF00, 5}), 255315124u},  // 0x8000FF04
    {LmINT_T, 4, true, IntStore, IntLoad, IntCompare,
     Little<int32_t>({0x01020304, -2, 5}), 1635019411u},  // 0xFEFDFCFF
    {LmENUM_T, 4, true, IntStore, IntLoad, IntCompare,
     Little<int32_t>({0x0A0B0C0D, 7, 5}), 3338318947u},  // 0x0A0B0C0F
    {LmUNSIGNED_T, 4, false, UnsignedStore, UnsignedLoad, UnsignedCompare,
     Little<uint32_t>({0xF1F2F3F4, 1, 5}), 2791636272u},  // 0xF1F2F3F0
    {LmFLOAT_T, 4, true, FloatStore, FloatStore, FloatCompare,
     Little<float>({-2.5f, 1.0f, 5.0f}), 1392508928u},  // 0xC0200000 ^ 0x3F800000 ^ 0x40A00000 = 0xBF000000
    {LmDOUBLE_T, 8, true, DoubleStore, DoubleStore, DoubleCompare,
     Little<double>({1.0, -2.5, 5.0}), 4066377728u},  // 0x3FF00000 ^ 0xC0040000 ^ 0x40140000 = 0xBFE00000
    {Lm8B_T, 8, true, O_8BStore, O_8BStore, O_8BCompare,
     Little<int64_t>({static_cast<int64_t>(0x8877665544332211u), 1, 5}), 1332078833u},  // low halves: 0x44332215
    {LmU8B_T, 8, false, O_8BStore, O_8BStore, O_U8BCompare,
     Little<uint64_t>({0x0102030405060708u, 0xFFFFFFFF00000000u, 5}), 3133470345u},  // low halves: 0x0506070D
};
// clang-format on

// Two values of a type with their disk images, typed by hand: `little` least
// significant byte first (the memory form on this machine), `big` most first.
template <typename T>
void CheckImages(char id, T first, T second, const Bytes& little, const Bytes& big) {
    SCOPED_TRACE(testing::Message() << "type id " << static_cast<int>(id));
    const LmTypeMgr mgr;
    const unsigned width = sizeof(T), n = 2 * width;
    T values[2] = {first, second};
    ASSERT_EQ(Of(values, n), little);

    // Store, and Translate from memory: only nibble 2 writes most significant byte
    // first, and nothing after the image is written. Bit 3 marks a memory source.
    for (unsigned char format : kFormats) {
        SCOPED_TRACE(static_cast<int>(format));
        const Bytes expected = Padded((format & 15) == 2 ? big : little, n + 3, 0xCC);
        Bytes out(n + 3, 0xCC);
        EXPECT_EQ(mgr.Store(id, out.data(), values, format, 2), n);
        EXPECT_EQ(out, expected);
        if ((format & 8) != 0) continue;
        out.assign(n + 3, 0xCC);
        const auto memory = static_cast<unsigned char>(format % 2 ? 8 : 0x0F);
        EXPECT_EQ(mgr.Translate(id, out.data(), format, 0, values, memory, 0, 2), n);
        EXPECT_EQ(out, expected);
    }

    // Load, and Translate to memory: the image of the same order gives the values
    // back, the other order the swapped values.
    const struct {
        const Bytes& image;
        unsigned char format;
        const Bytes& expected;
    } loads[] = {{big, 2, little}, {big, 0x82, little}, {little, 1, little}, {big, 1, big}};
    for (const auto& l : loads) {
        T back[2];
        std::memset(back, 0x5A, sizeof back);
        EXPECT_EQ(mgr.Load(id, back, Ptr(l.image), l.format, 2), n);
        EXPECT_EQ(Of(back, n), l.expected);
        std::memset(back, 0x5A, sizeof back);
        EXPECT_EQ(mgr.Translate(id, back, 8, 0, Ptr(l.image), l.format, 0, 2), n);
        EXPECT_EQ(Of(back, n), l.expected);
    }

    // Memory to memory: element copies, the lengths not looked at; nibble 10 is a
    // memory form that does not swap.
    T back[2];
    std::memset(back, 0x5A, sizeof back);
    EXPECT_EQ(mgr.Translate(id, back, 0x0A, 1, values, 8, 1, 2), n);
    EXPECT_EQ(Of(back, n), little);

    // Disk to disk: raw bytes, never swapped; a longer destination is cleared in
    // full first, a shorter one takes what fits and nothing after it is written.
    Bytes out(n + 5, 0xCC);
    EXPECT_EQ(mgr.Translate(id, out.data(), 2, n, Ptr(little), 1, n, 2), n);
    EXPECT_EQ(out, Padded(little, n + 5, 0xCC));
    EXPECT_EQ(mgr.Translate(id, out.data(), 1, n + 5, Ptr(big), 2, n, 2), n);
    EXPECT_EQ(out, Padded(big, n + 5, 0));
    out.assign(n, 0xCC);
    EXPECT_EQ(mgr.Translate(id, out.data(), 1, width, Ptr(little), 1, n, 2), width);
    EXPECT_EQ(out, Padded(Bytes(little.begin(), little.begin() + width), n, 0xCC));

    EXPECT_EQ(mgr.Store(id, nullptr, nullptr, 2, 0), 0u);
    EXPECT_EQ(mgr.Load(id, nullptr, nullptr, 1, 0), 0u);
    EXPECT_EQ(mgr.Translate(id, nullptr, 1, 0, nullptr, 2, 0, 5), 0u);
}

// Create, Delete, Constructor, Destructor, Assignment and Copy of one type.
template <typename T>
void CheckLifecycle(char id, T a, T b) {
    SCOPED_TRACE(testing::Message() << "type id " << static_cast<int>(id));
    const LmTypeMgr mgr;
    const auto image = [](std::initializer_list<T> v) { return Of(v.begin(), v.size() * sizeof(T)); };

    T* made = static_cast<T*>(mgr.Create(id, 3));
    made[2] = b;  // the whole array is usable
    EXPECT_EQ(mgr.Delete(id, made, 3), nullptr);
    void* none = mgr.Create(id, 0);
    EXPECT_NE(none, nullptr);
    EXPECT_EQ(mgr.Delete(id, none, 0), nullptr);
    EXPECT_EQ(mgr.Delete(id, nullptr, 7), nullptr);

    // Constructor: zero bytes in `count` elements, nothing after them. Destructor: nothing.
    T buf[4] = {a, a, a, b};
    mgr.ConstructorPtrGet(id)(buf, 3, 12345);
    EXPECT_EQ(Of(buf, sizeof buf), image({T{}, T{}, T{}, b}));
    buf[0] = a;
    mgr.ConstructorPtrGet(id)(buf, 1, 0);
    mgr.ConstructorPtrGet(id)(nullptr, 0, 0);
    mgr.DestructorPtrGet(id)(buf, 4, 0);
    EXPECT_EQ(Of(buf, sizeof buf), image({T{}, T{}, T{}, b}));

    const LmTypeDesc* desc = mgr.Desc(id);
    for (LmTypeAssignmentFunc assign : {desc->Assignment, desc->Copy}) {
        T src[3] = {a, b, a};
        T dest[4] = {b, b, b, b};
        assign(dest, src, 3, 0);
        EXPECT_EQ(Of(dest, sizeof dest), image({a, b, a, b}));
        // Any non-zero flag writes the element at src into all count elements.
        for (int broadcast : {1, -1}) {
            std::fill(dest, dest + 4, b);
            assign(dest, src, 3, broadcast);
            EXPECT_EQ(Of(dest, sizeof dest), image({a, a, a, b}));
        }
        // Count 0 reads nothing from src and writes nothing.
        assign(dest, nullptr, 0, 0);
        assign(dest, nullptr, 0, 1);
        EXPECT_EQ(Of(dest, sizeof dest), image({a, a, a, b}));
    }
    // A number is never null and has no setter.
    EXPECT_EQ(mgr.IsNullValue(id, &a), 0);
    EXPECT_EQ(mgr.SetNullPtrGet(id), nullptr);
}

}  // namespace

TEST(ScalarStore, GoldenImagesInBothByteOrders) {
    CheckImages<int8_t>(Lm1B_T, -127, 0x7E, {0x81, 0x7E}, {0x81, 0x7E});
    CheckImages<uint8_t>(LmU1B_T, 0xFE, 0x01, {0xFE, 0x01}, {0xFE, 0x01});
    CheckImages<int16_t>(Lm2B_T, -292, 0x1234, {0xDC, 0xFE, 0x34, 0x12}, {0xFE, 0xDC, 0x12, 0x34});
    CheckImages<uint16_t>(LmU2B_T, 0xBEEF, 0x0102, {0xEF, 0xBE, 0x02, 0x01}, {0xBE, 0xEF, 0x01, 0x02});
    CheckImages<int32_t>(Lm4B_T, 0x01020304, -2, {0x04, 0x03, 0x02, 0x01, 0xFE, 0xFF, 0xFF, 0xFF},
                         {0x01, 0x02, 0x03, 0x04, 0xFF, 0xFF, 0xFF, 0xFE});
    CheckImages<uint32_t>(LmU4B_T, 0xDEADBEEF, 0x80, {0xEF, 0xBE, 0xAD, 0xDE, 0x80, 0x00, 0x00, 0x00},
                          {0xDE, 0xAD, 0xBE, 0xEF, 0x00, 0x00, 0x00, 0x80});
    CheckImages<uint32_t>(LmBLOCKID_T, 0x80000001, 0xFF00, {0x01, 0x00, 0x00, 0x80, 0x00, 0xFF, 0x00, 0x00},
                          {0x80, 0x00, 0x00, 0x01, 0x00, 0x00, 0xFF, 0x00});
    CheckImages<int32_t>(LmINT_T, 0x01020304, -2, {0x04, 0x03, 0x02, 0x01, 0xFE, 0xFF, 0xFF, 0xFF},
                         {0x01, 0x02, 0x03, 0x04, 0xFF, 0xFF, 0xFF, 0xFE});
    CheckImages<int32_t>(LmENUM_T, 0x0A0B0C0D, 7, {0x0D, 0x0C, 0x0B, 0x0A, 0x07, 0x00, 0x00, 0x00},
                         {0x0A, 0x0B, 0x0C, 0x0D, 0x00, 0x00, 0x00, 0x07});
    CheckImages<uint32_t>(LmUNSIGNED_T, 0xF1F2F3F4, 1, {0xF4, 0xF3, 0xF2, 0xF1, 0x01, 0x00, 0x00, 0x00},
                          {0xF1, 0xF2, 0xF3, 0xF4, 0x00, 0x00, 0x00, 0x01});
    // -2.5f is 0xC0200000, 1.0f is 0x3F800000.
    CheckImages<float>(LmFLOAT_T, -2.5f, 1.0f, {0x00, 0x00, 0x20, 0xC0, 0x00, 0x00, 0x80, 0x3F},
                       {0xC0, 0x20, 0x00, 0x00, 0x3F, 0x80, 0x00, 0x00});
    // 1.0 is 0x3FF0000000000000, -2.5 is 0xC004000000000000.
    CheckImages<double>(
        LmDOUBLE_T, 1.0, -2.5,
        {0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xF0, 0x3F, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x04, 0xC0},
        {0x3F, 0xF0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xC0, 0x04, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00});
    CheckImages<int64_t>(
        Lm8B_T, static_cast<int64_t>(0x8877665544332211u), 1,
        {0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00},
        {0x88, 0x77, 0x66, 0x55, 0x44, 0x33, 0x22, 0x11, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x01});
    CheckImages<uint64_t>(
        LmU8B_T, 0x0102030405060708u, 0xFFFFFFFF00000000u,
        {0x08, 0x07, 0x06, 0x05, 0x04, 0x03, 0x02, 0x01, 0x00, 0x00, 0x00, 0x00, 0xFF, 0xFF, 0xFF, 0xFF},
        {0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08, 0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x00, 0x00});
}

TEST(ScalarStore, IntArrayRoundTrip) {
    const LmTypeMgr mgr;
    void* made = mgr.Create(LmINT_T, 3);
    const int32_t values[3] = {1, -1, 0x00010200};
    std::memcpy(made, values, sizeof values);
    uint8_t disk[12];
    EXPECT_EQ(mgr.DiskLenGet(LmINT_T, made, 2, 3, 8), 12u);
    EXPECT_EQ(mgr.Store(LmINT_T, disk, made, 2, 3), 12u);
    EXPECT_EQ(Of(disk, 12), (Bytes{0x00, 0x00, 0x00, 0x01, 0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x01, 0x02, 0x00}));
    EXPECT_EQ(mgr.Load(LmINT_T, made, disk, 2, 3), 12u);
    EXPECT_EQ(Of(made, 12), Of(values, 12));
    EXPECT_EQ(mgr.Load(LmINT_T, made, disk, 1, 3), 12u);  // read the other way round: swapped
    EXPECT_EQ(Of(made, 12), Of(disk, 12));
    EXPECT_EQ(mgr.Delete(LmINT_T, made, 3), nullptr);
}

TEST(ScalarLifecycle, CreateConstructAssignCopy) {
    CheckLifecycle<int8_t>(Lm1B_T, -5, 0x33);
    CheckLifecycle<uint8_t>(LmU1B_T, 0xF0, 0x0F);
    CheckLifecycle<int16_t>(Lm2B_T, -300, 0x0102);
    CheckLifecycle<uint16_t>(LmU2B_T, 0xFFFF, 0x0203);
    CheckLifecycle<int32_t>(Lm4B_T, -70000, 0x01020304);
    CheckLifecycle<uint32_t>(LmU4B_T, 0xFFFFFFFF, 0x05060708);
    CheckLifecycle<uint32_t>(LmBLOCKID_T, 0x80000000, 17);
    CheckLifecycle<int32_t>(LmINT_T, -1, 0x11223344);
    CheckLifecycle<uint32_t>(LmUNSIGNED_T, 0xCAFEBABE, 3);
    CheckLifecycle<int32_t>(LmENUM_T, 9, -9);
    CheckLifecycle<float>(LmFLOAT_T, -2.5f, 1e30f);
    CheckLifecycle<double>(LmDOUBLE_T, 1.0, -1e-300);
    CheckLifecycle<int64_t>(Lm8B_T, INT64_MIN, 0x0102030405060708);
    CheckLifecycle<uint64_t>(LmU8B_T, UINT64_MAX, 0x1111222233334444u);

    // Only the byte types start cleared. Dirty memory is left behind first for the
    // allocator to hand out again.
    const LmTypeMgr mgr;
    for (char id : {Lm1B_T, LmU1B_T}) {
        for (unsigned count : {1u, 2u, 7u, 64u}) {
            void* dirty = ::operator new(count);
            std::memset(dirty, 0xEE, count);
            ::operator delete(dirty);
            void* made = mgr.Create(id, count);
            EXPECT_EQ(Of(made, count), Bytes(count, 0)) << static_cast<int>(id) << " count " << count;
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

TEST(ScalarFamily, SlotsAndDiskSizes) {
    const LmTypeMgr mgr;
    uint8_t data[64] = {};
    for (const Scalar& s : kScalars) {
        SCOPED_TRACE(testing::Message() << "type id " << static_cast<int>(s.id));
        const LmTypeDesc* desc = mgr.Desc(s.id);
        EXPECT_EQ(desc->Store, s.store);
        EXPECT_EQ(desc->Load, s.load);
        EXPECT_EQ(desc->Cmp, s.cmp);
        for (unsigned count : {0u, 3u, 1000u}) {
            EXPECT_EQ(desc->NullSizeGet(count), count * s.width);
            for (unsigned char format : kFormats) {
                // The value may be null (valueForm 8: memory values, 1: disk bytes); the
                // memory file is not read from and not moved.
                EXPECT_EQ(mgr.DiskLenGet(s.id, nullptr, format, count, 8), count * s.width);
                EXPECT_EQ(mgr.DiskLenGet(s.id, data, format, count, 1), count * s.width);
                MemFile file(data, sizeof data);
                EXPECT_EQ(mgr.DiskLenGetFromMemFile(s.id, &file, format, count), count * s.width);
                EXPECT_EQ(file.Position(), 0u);
            }
        }
    }
}

TEST(CompareLoop, LengthsAndOutOfData) {
    // count 0 returns 0 and status 0 and reads nothing.
    for (const Scalar& s : kScalars) EXPECT_EQ(Cmp(s.cmp, 2, 8, nullptr, 3, nullptr, 0), Answer(0, LM_OK));

    const Bytes same = Little<int32_t>({10, 20, 30}), second = Little<int32_t>({10, 21, 30});
    EXPECT_EQ(Cmp(LongCompare, 8, 0, same, 12, same, 3), Answer(0, LM_OK));  // len 0: count times the width
    // A difference in the last element that fits comes back with 2101.
    EXPECT_EQ(Cmp(LongCompare, 8, 8, same, 0, second, 3), Answer(-1, kOut));
    EXPECT_EQ(Cmp(LongCompare, 8, 4, Little<int32_t>({2, 5}), 0, Little<int32_t>({1, 5}), 2), Answer(1, kOut));
    // The bound test is strict on the first byte only: with len1 5 the second
    // element is still reached although it does not fit.
    EXPECT_EQ(Cmp(LongCompare, 8, 5, Little<int32_t>({1, 2}), 0, Little<int32_t>({1, 3}), 2), Answer(-1, LM_OK));

    // Buffers of exactly len1 and len2 bytes. value1 ends after two elements: equal
    // as far as the data went, and the third element of value2, which differs, is
    // not read. The same with value2 short.
    const auto v1 = Exact(Little<int32_t>({10, 20})), v2 = Exact(Little<int32_t>({10, 20, 99}));
    EXPECT_EQ(Cmp(LongCompare, 8, 8, v1.get(), 12, v2.get(), 3), Answer(0, kOut));
    EXPECT_EQ(Cmp(LongCompare, 2, 12, v2.get(), 8, v1.get(), 3), Answer(0, kOut));
    // More data than count needs: count decides. The first difference ends the loop;
    // the option word is not read.
    const auto one = Exact(Little<int32_t>({1})), two = Exact(Little<int32_t>({2}));
    EXPECT_EQ(Cmp(LongCompare, 8, 400, one.get(), 400, one.get(), 1), Answer(0, LM_OK));
    EXPECT_EQ(Cmp(LongCompare, 8, 0, one.get(), 0, two.get(), 5, 0x10), Answer(-1, LM_OK));
}

TEST(CompareLoop, EveryTypeStepsByItsWidth) {
    const LmTypeMgr mgr;
    for (const Scalar& s : kScalars) {
        for (unsigned char format : Formats{1, 2, 8}) {
            SCOPED_TRACE(testing::Message() << "type id " << static_cast<int>(s.id) << ", format " << int{format});
            // Three equal elements but for the lowest byte of the third of b.
            const unsigned w = s.width;
            Bytes a(3 * w, 0x00), b(3 * w, 0x00);
            b[2 * w + ((format & 15) == 2 ? w - 1 : 0)] = 0x01;
            EXPECT_EQ(Cmp(s.cmp, format, 0, a, 0, b, 3), Answer(-1, LM_OK));
            EXPECT_EQ(Cmp(s.cmp, format, 0, b, 0, a, 3), Answer(1, LM_OK));
            EXPECT_EQ(Cmp(s.cmp, format, 0, a, 2 * w, b, 3), Answer(0, kOut));
            EXPECT_EQ(Cmp(s.cmp, format, 2 * w, a, 0, b, 3), Answer(0, kOut));
            EXPECT_EQ(Cmp(s.cmp, format, 2 * w + 1, a, 0, b, 3), Answer(-1, LM_OK));
            // The short Cmp of the manager has exact lengths: it reaches the third element.
            EXPECT_EQ(mgr.Cmp(s.id, a.data(), b.data(), 0xFFFF, 3, format), -1);
            EXPECT_EQ(mgr.Cmp(s.id, b.data(), a.data(), 0, 3, format), 1);
        }
    }
}

TEST(CompareOrder, SignedAndUnsignedInEveryWidthAndForm) {
    for (const Scalar& s : kScalars) {
        if (s.id == LmFLOAT_T || s.id == LmDOUBLE_T) continue;
        // low: only the sign bit set; high: every bit but the sign bit.
        Bytes low(s.width, 0x00), high(s.width, 0xFF);
        low[s.width - 1] = 0x80;
        high[s.width - 1] = 0x7F;
        const int lowFirst = s.isSigned ? -1 : 1;
        for (unsigned char format : Formats{8, 1, 2, 0, 3, 0x81, 0x82}) {
            SCOPED_TRACE(testing::Message() << "type id " << static_cast<int>(s.id) << ", format " << int{format});
            const Bytes l = InForm(low, s.width, format), h = InForm(high, s.width, format);
            // With an equal first element in front, the loop reaches the second.
            Bytes l2 = l, h2 = l;
            l2.insert(l2.end(), l.begin(), l.end());
            h2.insert(h2.end(), h.begin(), h.end());
            EXPECT_EQ(Cmp(s.cmp, format, 0, l, 0, h, 1), Answer(lowFirst, LM_OK));
            EXPECT_EQ(Cmp(s.cmp, format, 0, h, 0, l, 1), Answer(-lowFirst, LM_OK));
            EXPECT_EQ(Cmp(s.cmp, format, 0, h, 0, h, 1), Answer(0, LM_OK));
            EXPECT_EQ(Cmp(s.cmp, format, 0, l2, 0, h2, 2), Answer(lowFirst, LM_OK));
            EXPECT_EQ(Cmp(s.cmp, format, 0, h2, 0, l2, 2), Answer(-lowFirst, LM_OK));
        }
    }
}

TEST(CompareOrder, ShortExchangeAndIntSingleElement) {
    // 0x01 0x00 against 0x00 0x02: exchanged for nibble 2 only (0x0100 > 0x0002),
    // as they stand for every other nibble (0x0001 < 0x0200).
    for (LmTypeCmpFunc cmp : {ShortCompare, WordCompare}) {
        for (unsigned char format : Formats{0, 1, 2, 3, 8, 0x0F, 0x82}) {
            EXPECT_EQ(Cmp(cmp, format, 0, {0x01, 0x00}, 0, {0x00, 0x02}, 1).first, (format & 15) == 2 ? 1 : -1);
        }
    }
    // In format 2, 0xFF 0x00 is -256 signed and 65280 unsigned.
    EXPECT_EQ(Cmp(ShortCompare, 2, 0, {0xFF, 0x00}, 0, {0x00, 0x01}, 1).first, -1);
    EXPECT_EQ(Cmp(WordCompare, 2, 0, {0xFF, 0x00}, 0, {0x00, 0x01}, 1).first, 1);

    // One int element: status set to 0, no end computed, so even lengths shorter
    // than an int do not stop it.
    const Bytes one = {0x00, 0x00, 0x00, 0x01}, two = {0x00, 0x00, 0x00, 0x02};
    for (LmTypeCmpFunc cmp : {IntCompare, UnsignedCompare}) {
        EXPECT_EQ(Cmp(cmp, 8, 1, one, 1, two, 1), Answer(-1, LM_OK));  // 0x01000000 < 0x02000000
        EXPECT_EQ(Cmp(cmp, 2, 2, two, 3, one, 1), Answer(1, LM_OK));   // 2 > 1
        EXPECT_EQ(Cmp(cmp, 0x82, 0, one, 0, two, 1), Answer(-1, LM_OK));
        EXPECT_EQ(Cmp(cmp, 0, 0, one, 0, one, 1), Answer(0, LM_OK));
    }
    // The sign sits in the first byte in format 2, in the last one in format 1.
    const Bytes negative = {0xFF, 0xFF, 0xFF, 0xFE}, positive = {0x00, 0x00, 0x00, 0x05};
    EXPECT_EQ(Cmp(IntCompare, 2, 0, negative, 0, positive, 1).first, -1);
    EXPECT_EQ(Cmp(UnsignedCompare, 2, 0, negative, 0, positive, 1).first, 1);
    EXPECT_EQ(Cmp(IntCompare, 1, 0, positive, 0, negative, 1).first, 1);  // 0x05000000 > 0xFEFFFFFF
    EXPECT_EQ(Cmp(UnsignedCompare, 1, 0, positive, 0, negative, 1).first, -1);
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
        {D::signaling_NaN(), -D::infinity(), F::signaling_NaN(), -F::infinity(), -1},
        {D::quiet_NaN(), 0.0, F::quiet_NaN(), 0.0f, -1},
        {D::infinity(), D::quiet_NaN(), F::infinity(), F::quiet_NaN(), 1},
        {-D::infinity(), -D::max(), -F::infinity(), -F::max(), -1},
        {-D::infinity(), -D::infinity(), -F::infinity(), -F::infinity(), 0},
        {D::infinity(), D::infinity(), F::infinity(), F::infinity(), 0},
        {D::infinity(), D::max(), F::infinity(), F::max(), 1},  // above the largest finite value
        {-0.0, 0.0, -0.0f, 0.0f, 0},                            // negative zero equals zero
        {D::denorm_min(), 0.0, F::denorm_min(), 0.0f, 1},       // subnormals rank as finite
        {D::denorm_min(), D::min(), F::denorm_min(), F::min(), -1},
        {-D::denorm_min(), 0.0, -F::denorm_min(), 0.0f, -1},
        {-1.0, 2.0, -1.0f, 2.0f, -1},
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
    // Arrays run the same loop.
    const Bytes a = InForm(Little<double>({1.5, D::quiet_NaN(), 3.0}), 8, 2);
    const Bytes b = InForm(Little<double>({1.5, -D::infinity(), 0.0}), 8, 2);
    EXPECT_EQ(Cmp(DoubleCompare, 2, 0, a, 0, b, 3), Answer(-1, LM_OK));
    EXPECT_EQ(Cmp(DoubleCompare, 2, 8, a, 0, b, 3), Answer(0, kOut));

    const std::pair<double, int> ranks[] = {{D::quiet_NaN(), -2},  {D::signaling_NaN(), -2},
                                            {-D::quiet_NaN(), -2}, {-D::infinity(), -1},
                                            {-D::max(), 0},        {-0.0, 0},
                                            {D::denorm_min(), 0},  {D::max(), 0},
                                            {D::infinity(), 1}};
    for (const auto& [value, rank] : ranks) EXPECT_EQ(LmFloatRank(value), rank) << value;
}

TEST(ScalarHash, HandComputedValues) {
    EXPECT_EQ(HashOf<int32_t>(Lm4B_T, {1}), 1103515245u);
    EXPECT_EQ(HashOf<int32_t>(Lm4B_T, {0}), 0u);
    EXPECT_EQ(HashOf<int32_t>(Lm4B_T, {5, 5}), 0u);              // equal elements cancel
    EXPECT_EQ(HashOf<int32_t>(Lm4B_T, {1, 2}), 3310545735u);     // 3 * 1103515245
    EXPECT_EQ(HashOf<int32_t>(Lm4B_T, {2, 1}), 3310545735u);     // the order does not count
    EXPECT_EQ(HashOf<int32_t>(Lm4B_T, {1, 2, 4}), 3429639419u);  // 7 * 1103515245 mod 2^32

    // Sign extension of the short and byte types: the word of -1 is 0xFFFFFFFF.
    EXPECT_EQ(HashOf<int16_t>(Lm2B_T, {-1}), 3191452051u);
    EXPECT_EQ(HashOf<int16_t>(Lm2B_T, {static_cast<int16_t>(0x80FF)}), 1565630099u);  // 0xFFFF80FF
    EXPECT_EQ(HashOf<uint16_t>(LmU2B_T, {65535}), 212251027u);                        // 0x0000FFFF
    EXPECT_EQ(HashOf<uint16_t>(LmU2B_T, {0x80FF}), 2881396371u);                      // 0x000080FF
    EXPECT_EQ(HashOf<int8_t>(Lm1B_T, {-1}), 3191452051u);
    EXPECT_EQ(HashOf<uint8_t>(LmU1B_T, {0xFF}), 2223513235u);  // 0x000000FF

    // The 32-bit types: the bits.
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
    EXPECT_EQ(HashOf<float>(LmFLOAT_T, {-2.5f}), 2376073216u);  // 0xC0200000
    EXPECT_EQ(HashOf<float>(LmFLOAT_T, {1.0f}), 159383552u);    // 0x3F800000
    EXPECT_EQ(HashOf<float>(LmFLOAT_T, {0.0f}), 0u);
    EXPECT_EQ(HashOf<float>(LmFLOAT_T, {-0.0f}), 2147483648u);  // 0x80000000
}

TEST(ScalarHash, EveryFormatAndTheElementLoop) {
    for (const Scalar& c : kScalars) {
        SCOPED_TRACE(testing::Message() << "type id " << static_cast<int>(c.id));
        const Bytes big = InForm(c.three, c.width, 2);
        for (unsigned char format : kFormats) {
            const Bytes& image = (format & 15) == 2 ? big : c.three;
            EXPECT_EQ(Hash(c.id, image.data(), 3, format), HashAnswer(c.hash, LM_OK)) << int{format};
        }
        // The byte types do not look at the format; the others do read the order.
        EXPECT_EQ(Hash(c.id, c.three.data(), 3, 2).first == c.hash, c.width == 1);
        // Permuted, the array hashes alike.
        Bytes rotated(c.three.begin() + c.width, c.three.end());
        rotated.insert(rotated.end(), c.three.begin(), c.three.begin() + c.width);
        EXPECT_EQ(Hash(c.id, rotated.data(), 3, 1).first, c.hash);
        // count 0: 0 and status 0, nothing read.
        EXPECT_EQ(Hash(c.id, nullptr, 0, 2, 16), HashAnswer(0, LM_OK));
        // Each type steps by its own width: room for one element gives its hash and 2101.
        const unsigned first = Hash(c.id, c.three.data(), 1, 8).first;
        EXPECT_EQ(Hash(c.id, c.three.data(), 3, 8, c.width), HashAnswer(first, kOut));
        EXPECT_EQ(Hash(c.id, big.data(), 3, 2, c.width), HashAnswer(first, kOut));
        EXPECT_EQ(Hash(c.id, c.three.data(), 3, 1, 3 * c.width), HashAnswer(c.hash, LM_OK));
    }
    // Buffers of just the elements given, so that a read past them would be seen.
    // len 4, count 2: the hash of the first element and 2101.
    const std::unique_ptr<int32_t[]> one(new int32_t[1]{1}), two(new int32_t[2]{1, 2});
    EXPECT_EQ(Hash(Lm4B_T, one.get(), 2, 8, 4), HashAnswer(1103515245u, kOut));
    EXPECT_EQ(Hash(LmINT_T, one.get(), 2, 1, 4), HashAnswer(1103515245u, kOut));
    EXPECT_EQ(Hash(Lm4B_T, two.get(), 3, 8, 8), HashAnswer(3310545735u, kOut));
    // More room than count needs: no status. The end test looks at the first byte
    // only: with len 5 the second element is still taken.
    EXPECT_EQ(Hash(Lm4B_T, two.get(), 2, 8, 400), HashAnswer(3310545735u, LM_OK));
    EXPECT_EQ(Hash(Lm4B_T, two.get(), 2, 8, 5), HashAnswer(3310545735u, LM_OK));
}
