// The plain number types through the type manager: life cycle, the disk images
// in both byte orders, load, translate and sizes.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <new>
#include <vector>

#include "lumotypes.h"

namespace {

using Bytes = std::vector<uint8_t>;
using Formats = std::initializer_list<unsigned char>;

constexpr unsigned char kFormats[] = {0, 1, 2, 3, 8, 9, 0x12, 0x81, 0x82, 0x42, 0xF2};

bool Swaps(unsigned char format) { return (format & 15) == 2; }

Bytes Of(const void* p, size_t n) {
    const auto* b = static_cast<const uint8_t*>(p);
    return Bytes(b, b + n);
}

// Two values of a type with their disk images, typed by hand: `little` is the
// image least significant byte first (and the memory form on this machine),
// `big` most significant byte first.
template <typename T>
void CheckImages(char id, T first, T second, const Bytes& little, const Bytes& big) {
    SCOPED_TRACE(testing::Message() << "type id " << static_cast<int>(id));
    const LmTypeMgr mgr;
    const unsigned width = sizeof(T);
    const unsigned n = 2 * width;
    ASSERT_EQ(mgr.MemLenGet(id, 1), width);
    ASSERT_EQ(little.size(), n);
    ASSERT_EQ(big.size(), n);
    T values[2] = {first, second};
    ASSERT_EQ(Of(values, n), little) << "the little-endian image is the memory form here";

    // Store: only nibble 2 writes most significant byte first. The bytes after
    // the image stay.
    for (unsigned char format : kFormats) {
        SCOPED_TRACE(testing::Message() << "format " << static_cast<int>(format));
        Bytes out(n + 3, 0xCC);
        EXPECT_EQ(mgr.Store(id, out.data(), values, format, 2), n);
        EXPECT_EQ(Bytes(out.begin(), out.begin() + n), Swaps(format) ? big : little);
        EXPECT_EQ(Bytes(out.begin() + n, out.end()), Bytes(3, 0xCC));
    }
    EXPECT_EQ(mgr.Store(id, nullptr, nullptr, 2, 0), 0u);

    // Load gives the values back from the image of the same order; the other
    // order gives the swapped values.
    T back[2];
    std::memset(back, 0x5A, sizeof back);
    EXPECT_EQ(mgr.Load(id, back, const_cast<uint8_t*>(big.data()), 2, 2), n);
    EXPECT_EQ(Of(back, n), little);
    std::memset(back, 0x5A, sizeof back);
    EXPECT_EQ(mgr.Load(id, back, const_cast<uint8_t*>(big.data()), 0x82, 2), n);
    EXPECT_EQ(Of(back, n), little);
    std::memset(back, 0x5A, sizeof back);
    EXPECT_EQ(mgr.Load(id, back, const_cast<uint8_t*>(little.data()), 1, 2), n);
    EXPECT_EQ(Of(back, n), little);
    std::memset(back, 0x5A, sizeof back);
    EXPECT_EQ(mgr.Load(id, back, const_cast<uint8_t*>(big.data()), 1, 2), n);
    EXPECT_EQ(Of(back, n), big);
    EXPECT_EQ(mgr.Load(id, nullptr, nullptr, 1, 0), 0u);

    // Translate, memory to disk: the Store of the destination form.
    for (unsigned char destFormat : Formats{1, 2, 0x82, 0x21}) {
        SCOPED_TRACE(testing::Message() << "memory to disk " << static_cast<int>(destFormat));
        Bytes out(n, 0xCC);
        EXPECT_EQ(mgr.Translate(id, out.data(), destFormat, 0, values, 8, 0, 2), n);
        EXPECT_EQ(out, Swaps(destFormat) ? big : little);
    }
    // Bit 3 marks the memory form, for any nibble from 8 to 15.
    {
        Bytes out(n, 0xCC);
        EXPECT_EQ(mgr.Translate(id, out.data(), 2, 0, values, 0x0F, 0, 2), n);
        EXPECT_EQ(out, big);
    }

    // Translate, disk to memory: the Load of the source form.
    std::memset(back, 0x5A, sizeof back);
    EXPECT_EQ(mgr.Translate(id, back, 8, 0, const_cast<uint8_t*>(big.data()), 2, 0, 2), n);
    EXPECT_EQ(Of(back, n), little);
    std::memset(back, 0x5A, sizeof back);
    EXPECT_EQ(mgr.Translate(id, back, 8, 0, const_cast<uint8_t*>(big.data()), 0x82, 0, 2), n);
    EXPECT_EQ(Of(back, n), little);
    std::memset(back, 0x5A, sizeof back);
    EXPECT_EQ(mgr.Translate(id, back, 8, 0, const_cast<uint8_t*>(little.data()), 1, 0, 2), n);
    EXPECT_EQ(Of(back, n), little);

    // Translate, memory to memory: element copies; the lengths are not looked at,
    // and a nibble of 10 is a memory form that does not swap.
    std::memset(back, 0x5A, sizeof back);
    EXPECT_EQ(mgr.Translate(id, back, 8, 0, values, 8, 0, 2), n);
    EXPECT_EQ(Of(back, n), little);
    std::memset(back, 0x5A, sizeof back);
    EXPECT_EQ(mgr.Translate(id, back, 0x0A, 1, values, 8, 1, 2), n);
    EXPECT_EQ(Of(back, n), little);

    // Translate, disk to disk: raw bytes, never swapped, whatever the two orders.
    {
        Bytes out(n, 0xCC);
        EXPECT_EQ(mgr.Translate(id, out.data(), 2, n, const_cast<uint8_t*>(little.data()), 1, n, 2), n);
        EXPECT_EQ(out, little);
        out.assign(n, 0xCC);
        EXPECT_EQ(mgr.Translate(id, out.data(), 1, n, const_cast<uint8_t*>(big.data()), 2, n, 2), n);
        EXPECT_EQ(out, big);
    }
    {
        // A longer destination is cleared in full first.
        Bytes out(n + 5, 0xCC);
        EXPECT_EQ(mgr.Translate(id, out.data(), 2, n + 5, const_cast<uint8_t*>(big.data()), 2, n, 2), n);
        Bytes expected = big;
        expected.resize(n + 5, 0);
        EXPECT_EQ(out, expected);
    }
    {
        // A shorter destination takes what fits; nothing after it is written.
        Bytes out(n, 0xCC);
        EXPECT_EQ(mgr.Translate(id, out.data(), 1, width, const_cast<uint8_t*>(little.data()), 1, n, 2), width);
        Bytes expected(little.begin(), little.begin() + width);
        expected.resize(n, 0xCC);
        EXPECT_EQ(out, expected);
    }
    EXPECT_EQ(mgr.Translate(id, nullptr, 1, 0, nullptr, 2, 0, 5), 0u);
}

// Create, Delete, Constructor, Destructor, Assignment and Copy of one type.
template <typename T>
void CheckLifecycle(char id, T a, T b) {
    SCOPED_TRACE(testing::Message() << "type id " << static_cast<int>(id));
    const LmTypeMgr mgr;
    const LmTypeDesc* desc = mgr.Desc(id);
    const Bytes zero(sizeof(T), 0);

    void* made = mgr.Create(id, 3);
    ASSERT_NE(made, nullptr);
    T* arr = static_cast<T*>(made);
    arr[0] = a;
    arr[2] = b;  // the whole array is usable
    EXPECT_EQ(mgr.Delete(id, made, 3), nullptr);
    void* none = mgr.Create(id, 0);
    EXPECT_NE(none, nullptr);
    EXPECT_EQ(mgr.Delete(id, none, 0), nullptr);
    EXPECT_EQ(mgr.Delete(id, nullptr, 7), nullptr);

    // Constructor: zero bytes in `count` elements, nothing after them.
    T buf[5] = {a, a, a, a, a};
    mgr.ConstructorPtrGet(id)(buf, 3, 12345);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(Of(&buf[i], sizeof(T)), zero) << i;
    EXPECT_EQ(Of(&buf[3], sizeof(T)), Of(&a, sizeof(T)));
    EXPECT_EQ(Of(&buf[4], sizeof(T)), Of(&a, sizeof(T)));
    buf[0] = a;
    mgr.ConstructorPtrGet(id)(buf, 1, 0);
    EXPECT_EQ(Of(&buf[0], sizeof(T)), zero);
    EXPECT_EQ(Of(&buf[1], sizeof(T)), zero);  // from before
    mgr.ConstructorPtrGet(id)(nullptr, 0, 0);

    // Destructor: nothing at all.
    const T kept[2] = {a, b};
    T same[2] = {a, b};
    mgr.DestructorPtrGet(id)(same, 2, 0);
    EXPECT_EQ(Of(same, sizeof same), Of(kept, sizeof kept));
    mgr.DestructorPtrGet(id)(nullptr, 9, 0);

    for (LmTypeAssignmentFunc assign : {desc->Assignment, desc->Copy}) {
        T src[3] = {a, b, a};
        T dest[4];
        // Element for element.
        for (T& d : dest) d = b;
        assign(dest, src, 3, 0);
        EXPECT_EQ(Of(dest, 3 * sizeof(T)), Of(src, 3 * sizeof(T)));
        EXPECT_EQ(Of(&dest[3], sizeof(T)), Of(&b, sizeof(T)));
        // Broadcast of the element at src, for any non-zero flag.
        for (int broadcast : {1, -1, 2}) {
            for (T& d : dest) d = b;
            assign(dest, src, 3, broadcast);
            for (int i = 0; i < 3; ++i) EXPECT_EQ(Of(&dest[i], sizeof(T)), Of(&a, sizeof(T))) << i;
            EXPECT_EQ(Of(&dest[3], sizeof(T)), Of(&b, sizeof(T)));
        }
        // Count 0 reads nothing from src and writes nothing.
        for (T& d : dest) d = b;
        assign(dest, nullptr, 0, 0);
        assign(dest, nullptr, 0, 1);
        for (int i = 0; i < 4; ++i) EXPECT_EQ(Of(&dest[i], sizeof(T)), Of(&b, sizeof(T))) << i;
    }

    // A number is never null.
    EXPECT_EQ(mgr.IsNullValue(id, &a), 0);
    EXPECT_EQ(mgr.IsNullValue(id, &b), 0);
    T zeroValue{};
    EXPECT_EQ(mgr.IsNullValue(id, &zeroValue), 0);
    EXPECT_EQ(mgr.SetNullPtrGet(id), nullptr);
}

struct Family {
    char id;
    unsigned width;
    LmTypeStoreFunc store;
    LmTypeLoadFunc load;
    LmTypeNullSizeGetFunc nullSize;
    LmTypeSizeGetFunc size;
    LmTypeCmpFunc cmp;
};

const Family kFamily[] = {
    {Lm1B_T, 1, CharStore, CharStore, CharNullSizeGet, CharSizeGet, CharCompare},
    {LmU1B_T, 1, CharStore, CharStore, CharNullSizeGet, CharSizeGet, ByteCompare},
    {Lm2B_T, 2, ShortStore, ShortStore, ShortNullSizeGet, ShortSizeGet, ShortCompare},
    {LmU2B_T, 2, ShortStore, ShortStore, ShortNullSizeGet, ShortSizeGet, WordCompare},
    {Lm4B_T, 4, LongStore, LongStore, LongNullSizeGet, LongSizeGet, LongCompare},
    {LmU4B_T, 4, LongStore, LongStore, LongNullSizeGet, LongSizeGet, DwordCompare},
    {LmBLOCKID_T, 4, LongStore, LongStore, LongNullSizeGet, LongSizeGet, DwordCompare},
    {LmINT_T, 4, IntStore, IntLoad, IntNullSizeGet, IntSizeGet, IntCompare},
    {LmENUM_T, 4, IntStore, IntLoad, IntNullSizeGet, IntSizeGet, IntCompare},
    {LmUNSIGNED_T, 4, UnsignedStore, UnsignedLoad, IntNullSizeGet, IntSizeGet, UnsignedCompare},
    {LmFLOAT_T, 4, FloatStore, FloatStore, FloatNullSizeGet, FloatSizeGet, FloatCompare},
    {LmDOUBLE_T, 8, DoubleStore, DoubleStore, DoubleNullSizeGet, DoubleSizeGet, DoubleCompare},
    {Lm8B_T, 8, O_8BStore, O_8BStore, O_8BNullSizeGet, O_8BSizeGet, O_8BCompare},
    {LmU8B_T, 8, O_8BStore, O_8BStore, O_8BNullSizeGet, O_8BSizeGet, O_U8BCompare},
};

}  // namespace

TEST(ScalarFamily, SlotsAreTheBaseFunctions) {
    const LmTypeMgr mgr;
    for (const Family& f : kFamily) {
        SCOPED_TRACE(testing::Message() << "type id " << static_cast<int>(f.id));
        const LmTypeDesc* desc = mgr.Desc(f.id);
        EXPECT_EQ(desc->Store, f.store);
        EXPECT_EQ(desc->Load, f.load);
        EXPECT_EQ(desc->NullSizeGet, f.nullSize);
        EXPECT_EQ(desc->SizeGet, f.size);
        EXPECT_EQ(desc->Cmp, f.cmp);
        EXPECT_EQ(mgr.StorePtrGet(f.id), f.store);
        EXPECT_EQ(mgr.LoadPtrGet(f.id), f.load);
        EXPECT_EQ(mgr.CmpFuncPtrGet(f.id), f.cmp);
        EXPECT_EQ(mgr.MemLenGet(f.id, 1), f.width);
        EXPECT_EQ(mgr.IsFixed(f.id), 1);
    }
}

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
    CheckImages<double>(LmDOUBLE_T, 1.0, -2.5,
                        {0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xF0, 0x3F,
                         0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x04, 0xC0},
                        {0x3F, 0xF0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                         0xC0, 0x04, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00});
    CheckImages<int64_t>(Lm8B_T, static_cast<int64_t>(0x8877665544332211u), 1,
                         {0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88,
                          0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00},
                         {0x88, 0x77, 0x66, 0x55, 0x44, 0x33, 0x22, 0x11,
                          0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x01});
    CheckImages<uint64_t>(LmU8B_T, 0x0102030405060708u, 0xFFFFFFFF00000000u,
                          {0x08, 0x07, 0x06, 0x05, 0x04, 0x03, 0x02, 0x01,
                           0x00, 0x00, 0x00, 0x00, 0xFF, 0xFF, 0xFF, 0xFF},
                          {0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08,
                           0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x00, 0x00});
}

TEST(ScalarStore, IntArrayRoundTrip) {
    const LmTypeMgr mgr;
    void* made = mgr.Create(LmINT_T, 3);
    const int32_t values[3] = {1, -1, 0x00010200};
    std::memcpy(made, values, sizeof values);
    uint8_t disk[12];
    EXPECT_EQ(mgr.DiskLenGet(LmINT_T, made, 2, 3, 8), 12u);
    EXPECT_EQ(mgr.Store(LmINT_T, disk, made, 2, 3), 12u);
    const Bytes big = {0x00, 0x00, 0x00, 0x01, 0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x01, 0x02, 0x00};
    EXPECT_EQ(Of(disk, 12), big);

    int32_t back[3] = {};
    EXPECT_EQ(mgr.Load(LmINT_T, back, disk, 2, 3), 12u);
    EXPECT_EQ(back[0], 1);
    EXPECT_EQ(back[1], -1);
    EXPECT_EQ(back[2], 0x00010200);
    EXPECT_EQ(mgr.Load(LmINT_T, back, disk, 1, 3), 12u);
    EXPECT_EQ(back[0], 0x01000000);
    EXPECT_EQ(back[1], -1);
    EXPECT_EQ(back[2], 0x00020100);
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
}

TEST(ScalarLifecycle, ByteTypesStartCleared) {
    const LmTypeMgr mgr;
    for (char id : {Lm1B_T, LmU1B_T}) {
        for (unsigned count : {1u, 2u, 7u, 64u}) {
            // Leave dirty memory behind for the allocator to hand out again.
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

TEST(ScalarSizes, DiskSizesOfEveryGroup) {
    const LmTypeMgr mgr;
    uint8_t data[64] = {};
    for (const Family& f : kFamily) {
        SCOPED_TRACE(testing::Message() << "type id " << static_cast<int>(f.id));
        const LmTypeDesc* desc = mgr.Desc(f.id);
        for (unsigned count : {0u, 1u, 3u, 1000u}) {
            EXPECT_EQ(desc->NullSizeGet(count), count * f.width);
            for (unsigned char format : Formats{1, 2, 8, 0x81, 0x82}) {
                // The value may be null; valueForm 8 says memory values, 1 disk bytes.
                EXPECT_EQ(mgr.DiskLenGet(f.id, nullptr, format, count, 8), count * f.width);
                EXPECT_EQ(mgr.DiskLenGet(f.id, data, format, count, 1), count * f.width);
                // The memory file is not read from and not moved.
                EXPECT_EQ(mgr.DiskLenGetFromMemFile(f.id, nullptr, format, count), count * f.width);
                MemFile file(data, sizeof data);
                EXPECT_EQ(mgr.DiskLenGetFromMemFile(f.id, &file, format, count), count * f.width);
                EXPECT_EQ(file.Position(), 0u);
            }
        }
    }
}
