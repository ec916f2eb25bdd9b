// The identity values LmObjId, LmClassId, LmRef and LmLocalRef: golden disk images
// and hash codes in both byte orders, the compare rules in memory and on disk, the
// print and scan languages, the operators, and the rows of ids 15 to 17 in the
// manager. Images and hashes are persistent: every expected value is worked out by
// hand from the byte layouts.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "lumotypes.h"

namespace {

using Bytes = std::vector<uint8_t>;

const LmObjId kObj{0x01020304u, 0x0A0B0C0Du, 0x1122, 0};
const LmClassId kCls{0x1234, 0x0056};
const LmRef kRef{0x01020304u, 0x0A0B0C0Du, 0x1122, 0x0033, 0x4455, 7};

std::string Text(const LmString& s) { return s.StrGet(); }

// The address of a value that lives to the end of the full expression.
template <typename T>
const T* P(const T& v) {
    return &v;
}

struct Golden {
    char id;
    const void* value;
    Bytes little, big;
    uint32_t hashLittle, hashBig;  // the disk hash reads least significant byte first
};

TEST(Identity, GoldenImagesAndHashesInBothByteOrders) {
    const Golden rows[] = {
        {LmOBJID_T,
         &kObj,
         {4, 3, 2, 1, 0x0D, 0x0C, 0x0B, 0x0A, 0x22, 0x11},
         {1, 2, 3, 4, 0x0A, 0x0B, 0x0C, 0x0D, 0x11, 0x22},
         0x2AF9BF03u,
         0xE895BA7Fu},
        {LmCLID_T, &kCls, {0x34, 0x12, 0x56, 0}, {0x12, 0x34, 0, 0x56}, 0x1F6DAFBAu, 0x89F73DAAu},
        {LmREF_T,
         &kRef,
         {4, 3, 2, 1, 0x0D, 0x0C, 0x0B, 0x0A, 0x22, 0x11, 0x33, 0, 0x55, 0x44},
         {1, 2, 3, 4, 0x0A, 0x0B, 0x0C, 0x0D, 0x11, 0x22, 0, 0x33, 0x44, 0x55},
         0x4941ECECu,
         0x49FD577Fu},
    };
    const LmTypeMgr mgr;
    for (const Golden& g : rows) {
        SCOPED_TRACE(static_cast<int>(g.id));
        void* value = const_cast<void*>(g.value);
        const unsigned size = mgr.DiskLenGet(g.id, value, 1, 1, 8);
        ASSERT_EQ(size, g.little.size());
        EXPECT_EQ(mgr.Desc(g.id)->NullSizeGet(3), 3 * size);
        for (const auto& [format, image, hash] :
             {std::tuple{LmFormatLittle, g.little, g.hashLittle}, std::tuple{LmFormatBig, g.big, g.hashBig}}) {
            Bytes out(size + 1, 0xEE);
            EXPECT_EQ(mgr.Store(g.id, out.data(), value, format, 1), size);
            EXPECT_EQ(Bytes(out.begin(), out.end() - 1), image);
            EXPECT_EQ(out.back(), 0xEE);
            int status = -1;
            EXPECT_EQ(mgr.Hash(g.id, size, out.data(), 1, format, status), hash);
            EXPECT_EQ(status, 0);
            // Load, and the memory form hashes as the little-endian image.
            alignas(8) unsigned char loaded[16];
            std::memset(loaded, 0xEE, sizeof loaded);
            EXPECT_EQ(mgr.Load(g.id, loaded, out.data(), format, 1), size);
            EXPECT_EQ(mgr.Cmp(g.id, loaded, value, 0, 1, 8), 0);
            EXPECT_EQ(mgr.Hash(g.id, 0, loaded, 1, 8, status), g.hashLittle);
        }
    }
    // The version of a reference is not stored: Load sets 0, and == still holds.
    LmRef back{};
    back.version = 9;
    Bytes image(14);
    LmRef::Store(image.data(), &kRef, 1, 1);
    LmRef::Load(&back, image.data(), 1, 1);
    EXPECT_EQ(back.version, 0);
    EXPECT_EQ(back == kRef, 1);
    EXPECT_EQ(back.classNumber, kRef.classNumber);
}

int Cmp(char id, unsigned char format, const void* a, const void* b, unsigned count = 1, unsigned len1 = 0,
        unsigned len2 = 0, int* status = nullptr) {
    int s = -1;
    const int r = LmTypeMgr().Cmp(id, len1, const_cast<void*>(a), len2, const_cast<void*>(b), 0, count, format, s);
    if (status != nullptr) *status = s;
    return r;
}

template <typename T>
Bytes Stored(char id, std::initializer_list<T> values, unsigned char format = 1) {
    const std::vector<T> v(values);
    Bytes out(LmTypeMgr().DiskLenGet(id, nullptr, format, static_cast<unsigned>(v.size()), 8));
    LmTypeMgr().Store(id, out.data(), const_cast<T*>(v.data()), format, static_cast<unsigned>(v.size()));
    return out;
}

TEST(Identity, CompareInMemoryAndOnDisk) {
    // LmObjId: memory gives the signed difference of high, disk the difference of the
    // first unequal bytes 9 down to 4, whatever the byte order.
    const LmObjId a{1, 0xFF, 0x0100, 0}, b{2, 0x100, 0x0001, 0}, c{3, 0x100, 0x0001, 0};
    EXPECT_EQ(Cmp(LmOBJID_T, 8, &a, &b), 255);
    EXPECT_EQ(Cmp(LmOBJID_T, 8, &b, &a), -255);
    EXPECT_EQ(Cmp(LmOBJID_T, 1, Stored(LmOBJID_T, {a}).data(), Stored(LmOBJID_T, {b}).data()), 1);
    EXPECT_EQ(Cmp(LmOBJID_T, 2, Stored(LmOBJID_T, {a}, 2).data(), Stored(LmOBJID_T, {b}, 2).data()), -1);
    EXPECT_EQ(Cmp(LmOBJID_T, 1, Stored(LmOBJID_T, {b}).data(), Stored(LmOBJID_T, {LmObjId{0, 0x1FF, 1, 0}}).data()),
              -255);
    EXPECT_EQ(Cmp(LmOBJID_T, 8, &b, &c), 0);  // blockId is no part of the identity
    EXPECT_EQ(Cmp(LmOBJID_T, 8, &c, P(LmObjId{3, 0x1FF, 1, 0})), -1);

    // LmRef: databaseId ranks last in memory, first on disk.
    const LmRef r1{0, 1, 5, 1, 0, 0}, r2{0, 1, 1, 2, 0, 0}, r3{0, 1, 5, 2, 0, 0};
    EXPECT_EQ(Cmp(LmREF_T, 8, &r1, &r2), 4);
    EXPECT_EQ(Cmp(LmREF_T, 8, &r1, &r3), -1);
    EXPECT_EQ(Cmp(LmREF_T, 1, Stored(LmREF_T, {r1}).data(), Stored(LmREF_T, {r2}).data()), -1);
    EXPECT_EQ(Cmp(LmREF_T, 1, Stored(LmREF_T, {r2}).data(), Stored(LmREF_T, {r1}).data()), 1);
    EXPECT_EQ(Cmp(LmREF_T, 1, Stored(LmREF_T, {r1}).data(), Stored(LmREF_T, {LmRef{0, 2, 5, 1, 0, 0}}).data()), -1);

    // LmClassId: the all-ones value sorts below class 0 version 0 in memory and on
    // disk; on disk a difference becomes -1 when the left operand's first element is
    // all ones, else 1 when the right one's is.
    const LmClassId ones{0xFFFF, 0xFFFF}, zero{0, 0}, v2{1, 2}, v5{1, 5};
    EXPECT_EQ(Cmp(LmCLID_T, 8, &ones, &zero), -1);
    EXPECT_EQ(Cmp(LmCLID_T, 8, &zero, &ones), 1);
    EXPECT_EQ(Cmp(LmCLID_T, 8, &ones, &ones), 0);
    EXPECT_EQ(Cmp(LmCLID_T, 8, &v5, &v2), 1);
    EXPECT_EQ(Cmp(LmCLID_T, 8, &v2, P(LmClassId{2, 0})), -1);
    EXPECT_EQ(Cmp(LmCLID_T, 1, Stored(LmCLID_T, {ones}).data(), Stored(LmCLID_T, {zero}).data()), -1);
    EXPECT_EQ(Cmp(LmCLID_T, 1, Stored(LmCLID_T, {zero}).data(), Stored(LmCLID_T, {ones}).data()), 1);
    EXPECT_EQ(Cmp(LmCLID_T, 1, Stored(LmCLID_T, {v2}).data(), Stored(LmCLID_T, {v5}).data()), -3);
    EXPECT_EQ(Cmp(LmCLID_T, 1, Stored(LmCLID_T, {ones, v5}).data(), Stored(LmCLID_T, {ones, v2}).data(), 2), -1);
    EXPECT_EQ(Cmp(LmCLID_T, 1, Stored(LmCLID_T, {zero, v2}).data(), Stored(LmCLID_T, {ones, v5}).data(), 2), 1);
    EXPECT_EQ(Cmp(LmCLID_T, 1, Stored(LmCLID_T, {zero, v2}).data(), Stored(LmCLID_T, {zero, v5}).data(), 2), -3);
}

TEST(Identity, ElementLoopStopsWhereTheDataEnds) {
    const Bytes left = Stored(LmOBJID_T, {kObj, kObj}), right = Stored(LmOBJID_T, {kObj, LmObjId{0, 1, 1, 0}});
    int status = 0;
    EXPECT_EQ(Cmp(LmOBJID_T, 1, left.data(), right.data(), 2, 0, 0, &status), 0x11);  // byte 9: 0x11 - 0
    EXPECT_EQ(status, 0);
    EXPECT_EQ(Cmp(LmOBJID_T, 1, left.data(), right.data(), 2, 10, 20, &status), 0);
    EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
    EXPECT_EQ(Cmp(LmOBJID_T, 1, left.data(), right.data(), 2, 20, 19, &status), 0);
    EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
    LmObjId loaded[2]{};
    EXPECT_EQ(LmObjId::Load(loaded, right.data(), 1, 2), 20u);
    EXPECT_EQ(loaded[1].low, 1u);
    EXPECT_EQ(Cmp(LmOBJID_T, 1, left.data(), right.data(), 0, 0, 0, &status), 0);
    EXPECT_EQ(status, 0);
    // The hash: two equal elements cancel; a cut second element stops with 2101.
    EXPECT_EQ(LmTypeMgr().Hash(LmOBJID_T, 0, const_cast<uint8_t*>(left.data()), 2, 1, status), 0u);
    EXPECT_EQ(LmTypeMgr().Hash(LmOBJID_T, 15, const_cast<uint8_t*>(left.data()), 2, 1, status), 0x2AF9BF03u);
    EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
    EXPECT_EQ(LmTypeMgr().Hash(LmREF_T, 0, const_cast<LmRef*>(&kRef), 0, 8, status), 0u);
}

TEST(Identity, PrintLanguages) {
    const LmObjId obj{4, 123, 7, 0};
    const LmClassId cls{5, 2};
    const LmRef ref{4, 123, 7, 3, 9, 2};
    LmRef local{4, 123, 7, 3, 9, 2};
    const LmObjId nullObj{5, 0, 0, 0};
    const LmClassId nullCls{0xFFFF, 0xFFFF};
    const LmRef nullRef{5, 0, 0, 3, 9, 2};
    struct Row {
        char id;
        const void* value;
        const char* format;
        const char* text;
    } rows[] = {
        {LmOBJID_T, &obj, nullptr, "(7-123#4)"},
        {LmOBJID_T, &obj, "(%hu-%lu#%lu)", "(7-123#4)"},
        {LmOBJID_T, &obj, "%%%C%H%h", "%C77"},  // an unknown directive is its letter; %h at the end
        {LmOBJID_T, &obj, "%lu.%lu.%lu.%lu.%", "7.123.4.0."},
        {LmCLID_T, &cls, nullptr, "(5v2)"},
        {LmCLID_T, &cls, "%hu.%hu.%hu %lu%B", "5.2.0 luB"},
        {LmREF_T, &ref, nullptr, "(3:7-123#4, 9)"},
        {LmREF_T, &ref, "%hu %hu %lu %lu %hu %hu", "3 7 123 4 9 0"},
        {LmREF_T, &ref, "%V%D", "23"},
        {LmOBJID_T, &nullObj, nullptr, "{NULL}"},
        {LmCLID_T, &nullCls, nullptr, "{NULL}"},
        {LmREF_T, &nullRef, nullptr, "{NULL}"},
    };
    const LmTypeMgr mgr;
    for (const Row& r : rows) {
        LmString out("old");
        EXPECT_EQ(Text(mgr.PrintToLmString(r.id, out, const_cast<void*>(r.value), r.format, 1)), r.text) << r.text;
    }
    LmString out;
    EXPECT_EQ(Text(LmRef::PrintToString(out, &local, nullptr, 1)), "(3:7-123#4,9v2)");
    EXPECT_EQ(Text(ref.PrintToLmString(out)), "(3:7-123#4, 9)");
    EXPECT_EQ(Text(LmLocalRef{4, 123, 7, 3, 9, 2}.PrintToLmString(out)), "(7-123#4,9)");
    EXPECT_EQ(Text(LmLocalRef{4, 123, 7, 3, 9, 2}.PrintToLmString(out, "%D")), "0");
    EXPECT_EQ(Text(obj.PrintToLmString(out)), "(7-123#4)");
    EXPECT_EQ(Text(cls.PrintToLmString(out)), "(5v2)");
    // A text longer than the print buffer is cut at 511 characters.
    const std::string longFormat(600, 'x');
    EXPECT_EQ(Text(obj.PrintToLmString(out, longFormat.c_str())).size(), 511u);
    // BlockId prints "#%lu": the tail of the identity's exchange text.
    uint32_t block = obj.blockId;
    EXPECT_EQ(Text(mgr.PrintToLmString(LmBLOCKID_T, out, &block, nullptr, 1)), "#4");
}

TEST(Identity, ScanLanguages) {
    struct Row {
        char id;
        const char* text;
        const char* format;
        LmRef expect;  // blockId, low, high, databaseId, classNumber, version in LmRef's places
    } rows[] = {
        {LmOBJID_T, "(7-123#4)", nullptr, {4, 123, 7, 0, 0, 0}},
        {LmOBJID_T, "123#4", nullptr, {4, 123, 0, 0, 0, 0}},  // no high part: the format skips its '-'
        {LmOBJID_T, "x(7-123#4)", nullptr, {4, 123, 7, 0, 0, 0}},
        {LmOBJID_T, "7-123#4", nullptr, {4, 123, 7, 0, 0, 0}},  // a digit against '(' skips the '('
        {LmOBJID_T, "7-123#4", "%hu-%lu#%lu", {4, 123, 7, 0, 0, 0}},
        {LmOBJID_T, "(70000-4294967296#-1)", nullptr, {0xFFFFFFFFu, 0, 4464, 0, 0, 0}},  // "%u" keeps low bits
        {LmOBJID_T, "(ab-5#6)", nullptr, {6, 5, 0, 0, 0, 0}},
        {LmOBJID_T, "z5", "%Q%H", {0, 0, 5, 0, 0, 0}},
        {LmOBJID_T, "10 5", "%H%L", {0, 5, 10, 0, 0, 0}},  // the digits of a number are passed over
        {LmOBJID_T, "(7-123#4)", "", {0, 0, 0, 0, 0, 0}},
        {LmOBJID_T, "{NULL}(7-1#2)", nullptr, {0, 0, 0, 0, 0, 0}},
        {LmCLID_T, "(5v2)", nullptr, {0x00020005u, 0, 0, 0, 0, 0}},
        {LmCLID_T, "[5/2]", nullptr, {0x00020005u, 0, 0, 0, 0, 0}},
        {LmCLID_T, "5 2", "%hu %hu", {0x00020005u, 0, 0, 0, 0, 0}},
        {LmCLID_T, "x-5", "%lu%C", {0x00000005u, 0, 0, 0, 0, 0}},  // %l is unknown to a class id
        {LmCLID_T, "{NULL}", nullptr, {0xFFFFFFFFu, 0, 0, 0, 0, 0}},
        {LmREF_T, "( 3:7-123#4, 9)", "(%D:%H-%L#%B, %C)", {4, 123, 7, 3, 9, 0}},
        {LmREF_T, "(3:7-123#4,9v2)", nullptr, {4, 123, 7, 3, 9, 2}},
        {LmREF_T, "3 7 123 4 9 8", "%hu %hu %lu %lu %hu %hu", {4, 123, 7, 3, 9, 0}},
        {LmREF_T, "{NULL}", nullptr, {0, 0, 0, 0, 0, 0}},
    };
    const LmTypeMgr mgr;
    for (const Row& r : rows) {
        alignas(8) unsigned char value[16];
        std::memset(value, 0xEE, sizeof value);
        LmString text(r.text);
        const char* format = r.format != nullptr ? r.format : mgr.ExchangeFormat(r.id, nullptr);
        if (r.id == LmREF_T && r.format == nullptr) format = nullptr;  // the slot's own, longer default
        EXPECT_EQ(mgr.Desc(r.id)->ScanFromString(value, text, format, 1), value);
        const size_t fields = r.id == LmCLID_T ? 4 : (r.id == LmOBJID_T ? 10 : 16);
        EXPECT_EQ(std::memcmp(value, &r.expect, fields), 0) << r.text;
        if (r.id == LmOBJID_T) {
            EXPECT_EQ(value[10], r.text[0] == '{' ? 0 : 0xEE) << "the room";
        }
    }
    // A wide text is read through its native copy; a null target gives null.
    LmString wide(reinterpret_cast<const unsigned short*>(u"(7-123#4)"));
    LmObjId obj{};
    EXPECT_EQ(obj.ScanFromLmString(wide)->low, 123u);
    EXPECT_EQ(LmObjId::ScanFromString(nullptr, wide, nullptr, 1), nullptr);
    // A local reference keeps its own databaseId.
    LmLocalRef local{0, 0, 0, 77, 0, 0};
    local.ScanFromLmString(LmString("(7-123#4,9)"));
    EXPECT_EQ(local.high, 7);
    EXPECT_EQ(local.classNumber, 9);
    EXPECT_EQ(local.databaseId, 77);
    LmClassId cls{};
    EXPECT_EQ(cls.ScanFromLmString(LmString("(3v4)"))->version, 4);
    LmRef ref{};
    EXPECT_EQ(ref.ScanFromLmString(LmString("(1:2-3#4, 5)"))->classNumber, 5);
}

TEST(Identity, ScanNumbersAsTheCLibraryReadsThem) {
    // A field reads its number as the C library's "%u" or "%hu" reads it: the oracle.
    for (const char* number : {"70000", "-1", "4294967296", "99999999999999999999999", "+5", " 12", "0x1F", "x"}) {
        unsigned u = 7;
        unsigned short h = 7;
        (void)std::sscanf(number, "%u", &u);
        (void)std::sscanf(number, "%hu", &h);
        LmRef ref{0, 7, 0, 7, 0, 0};
        ref.ScanFromLmString(LmString(number), "%L%D");
        EXPECT_EQ(ref.low, u == 7 ? 0 : u) << number;  // no number: the field stays 0
        ref.ScanFromLmString(LmString(number), "%D");
        EXPECT_EQ(ref.databaseId, h == 7 ? 0 : h) << number;
    }
}

TEST(Identity, Operators) {
    LmObjId id{9, 0xFFFFFFFFu, 3, 0};
    EXPECT_EQ((++id).low, 0u);
    EXPECT_EQ(id.high, 4);
    EXPECT_EQ((--id).low, 0xFFFFFFFFu);
    EXPECT_EQ(id.high, 3);
    struct Step {
        uint32_t low;
        uint16_t high;
        short amount;
        uint32_t lowAfter;
        uint16_t highAfter;
    } steps[] = {{5, 1, 0, 5, 1},
                 {0, 1, -1, 0xFFFFFFFFu, 0},
                 {0xFFFFFFF0u, 1, 0x20, 0x10, 2},
                 {7, 1, -3, 4, 1},
                 {0x10, 1, 0x7FFF, 0x800F, 1}};
    for (const Step& s : steps) {
        LmObjId v{0, s.low, s.high, 0};
        v += s.amount;
        EXPECT_EQ(v.low, s.lowAfter) << s.amount;
        EXPECT_EQ(v.high, s.highAfter) << s.amount;
    }
    id.SetHighestValue();
    EXPECT_EQ(id.blockId, 0u);
    EXPECT_EQ((id == LmObjId{1, 0xFFFFFFFFu, 0xFFFF, 0}), 1);
    EXPECT_EQ((id == LmObjId{1, 0xFFFFFFFFu, 0xFFFE, 0}), 0);

    EXPECT_EQ((LmClassId{1, 2} > LmClassId{1, 1}), 1);
    EXPECT_EQ((LmClassId{1, 1} > LmClassId{1, 1}), 0);

    LmRef ref{};
    ref = LmObjId{1, 2, 3, 0};
    ref = LmClassId{4, 5};
    ref = static_cast<unsigned short>(6);
    EXPECT_EQ(std::memcmp(&ref, P(LmRef{1, 2, 3, 6, 4, 5}), sizeof ref), 0);
    ref = LmLocalRef{1, 2, 3, 99, 4, 5};
    EXPECT_EQ(ref.databaseId, 0);
    EXPECT_EQ((ref == LmRef{0, 2, 3, 0, 0, 0}), 1);
    EXPECT_EQ((ref == LmRef{0, 2, 3, 1, 0, 0}), 0);
    EXPECT_EQ((ref != LmRef{0, 2, 3, 1, 0, 0}), -1);
    struct Validity {
        LmRef r;
        int valid, origin;
    } validity[] = {{{0, 1, 0, 0, 5, 0}, 1, 1}, {{0, 0, 1, 65534, 5, 0}, 1, 1}, {{0, 0, 0, 1, 5, 0}, 0, 0},
                    {{0, 1, 0, 1, 0, 0}, 0, 0}, {{0, 1, 0, 65535, 5, 0}, 0, 1}, {{0, 1, 0, 65535, 0, 0}, 0, 1}};
    for (const Validity& v : validity) {
        EXPECT_EQ(v.r.IsValid(), v.valid);
        EXPECT_EQ(v.r.IsInvalid(), 1 - v.valid);
        EXPECT_EQ(v.r.IsValidOriginId(), v.origin);
        EXPECT_EQ(v.r.IsInvalidOriginId(), 1 - v.origin);
    }

    LmLocalRef local{};
    local = LmObjId{1, 2, 3, 0};
    local = LmClassId{4, 5};
    EXPECT_EQ(std::memcmp(&local, P(LmLocalRef{1, 2, 3, 0, 4, 5}), sizeof local), 0);
    local = LmRef{7, 8, 9, 10, 11, 12};
    EXPECT_EQ(std::memcmp(&local, P(LmLocalRef{7, 8, 9, 0, 11, 12}), sizeof local), 0);
    EXPECT_EQ((local == LmLocalRef{0, 8, 9, 5, 0, 0}), 1);
    EXPECT_EQ((local != LmLocalRef{0, 8, 7, 5, 0, 0}), 2);
    EXPECT_EQ((local != LmLocalRef{0, 9, 9, 5, 0, 0}), -1);
    EXPECT_EQ((local == LmRef{0, 8, 9, 0, 0, 0}), 1);
    EXPECT_EQ((local == LmRef{0, 8, 9, 1, 0, 0}), 0);
    EXPECT_EQ((local != LmRef{0, 8, 9, 1, 0, 0}), -1);
    EXPECT_EQ((local != LmRef{0, 8, 9, 0, 0, 0}), 0);
    EXPECT_EQ((local != LmRef{0, 7, 9, 0, 0, 0}), 1);
}

TEST(Identity, ManagerRows) {
    const LmTypeMgr mgr;
    for (const char id : {LmOBJID_T, LmCLID_T, LmREF_T}) EXPECT_EQ(mgr.SupportsNullValue(id), 1);

    // Nulls: an object id looks at its identity only; a class id is all ones.
    LmObjId obj{5, 0, 0, 0};
    EXPECT_EQ(mgr.IsNullValue(LmOBJID_T, &obj), 1);
    obj.high = 1;
    EXPECT_EQ(mgr.IsNullValue(LmOBJID_T, &obj), 0);
    LmRef ref = kRef;
    EXPECT_EQ(mgr.SetNullValue(LmREF_T, &ref), 0);
    EXPECT_EQ(std::memcmp(&ref, P(LmRef{0, 0, 0, 0x33, 0x4455, 7}), sizeof ref), 0);
    LmClassId half{0xFFFF, 0};
    EXPECT_EQ(mgr.IsNullValue(LmCLID_T, &half), 0);
    EXPECT_EQ(mgr.SetNullValue(LmCLID_T, &half), 0);
    EXPECT_EQ(half.version, 0xFFFF);

    // Defaults: from the empty text (all fields 0), or null.
    auto* cls = static_cast<LmClassId*>(mgr.DefaultValue(LmCLID_T, 2, 0));
    EXPECT_EQ(cls[1].classNumber + cls[1].version, 0);
    mgr.Delete(LmCLID_T, cls, 2);
    cls = static_cast<LmClassId*>(mgr.DefaultValue(LmCLID_T, 2, 1));
    EXPECT_EQ(cls[1].IsNullValue(), 1);
    mgr.Delete(LmCLID_T, cls, 2);

    // Conversions: the exchange text, and null for null.
    LmObjId two[2] = {{4, 123, 7, 0}, {4, 0, 0, 0}};
    LmTypeConvertData* text = mgr.ConvertTo(LmOBJID_T, two, 2);
    EXPECT_EQ(Text(*text->GetString(0)), "(7-123#4)");
    EXPECT_EQ(text->GetString(1)->IsNullValue(), 1);
    text->GetString(1)->operator=("(1-2#3)");
    auto* back = static_cast<LmObjId*>(mgr.ConvertFrom(LmOBJID_T, text, 3));
    EXPECT_EQ(back[0] == two[0], 1);
    EXPECT_EQ(back[1].blockId, 3u);
    EXPECT_EQ(back[2].IsNullValue(), 1);  // no string: null
    mgr.Delete(LmOBJID_T, back, 3);
    delete text;
    LmClassId clsNull{0xFFFF, 0xFFFF};
    text = mgr.ConvertTo(LmCLID_T, &clsNull, 1);
    auto* cls1 = static_cast<LmClassId*>(mgr.ConvertFrom(LmCLID_T, text, 1));
    EXPECT_EQ(cls1->IsNullValue(), 1);
    mgr.Delete(LmCLID_T, cls1, 1);
    delete text;

    // Copy clears the room, Assignment replicates; Translate in memory and to disk.
    LmObjId src{1, 2, 3, 0x5555}, dst[3];
    std::memset(dst, 0xEE, sizeof dst);
    mgr.CopyPtrGet(LmOBJID_T)(dst, &src, 3, 1);
    EXPECT_EQ(dst[2].room, 0);
    EXPECT_EQ(dst[2] == src, 1);
    LmRef refs[2] = {kRef, kRef}, refTo[2]{};
    EXPECT_EQ(mgr.Translate(LmREF_T, refTo, 8, 0, refs, 8, 0, 2), 32u);
    EXPECT_EQ(refTo[1].version, 7);
    Bytes image(28);
    EXPECT_EQ(mgr.Translate(LmREF_T, image.data(), 0x82, 28, refs, 8, 0, 2), 28u);
    EXPECT_EQ(image[13], 0x55);
    EXPECT_EQ(mgr.Translate(LmREF_T, refTo, 8, 0, image.data(), 2, 28, 2), 28u);
    EXPECT_EQ(refTo[1] == kRef, 1);
    Bytes copy(30, 0xEE);
    EXPECT_EQ(mgr.Translate(LmREF_T, copy.data(), 1, 30, image.data(), 2, 28, 2), 28u);
    EXPECT_EQ(copy[29], 0);
    unsigned char raw[20];
    MemFile file(raw, sizeof raw);
    EXPECT_EQ(mgr.DiskLenGetFromMemFile(LmCLID_T, &file, 1, 5), 20u);
    LmClassId* created = static_cast<LmClassId*>(mgr.Create(LmCLID_T, 2));
    LmClassId one = kCls;
    mgr.AssignmentPtrGet(LmCLID_T)(created, &one, 2, 1);
    EXPECT_EQ(created[1].version, 0x56);
    mgr.ConstructorPtrGet(LmCLID_T)(created, 2, 0);
    EXPECT_EQ(created[1].version, 0);
    EXPECT_EQ(mgr.Delete(LmCLID_T, created, 2), nullptr);
}

TEST(Identity, KeySteps) {
    const LmTypeMgr mgr;
    struct Row {
        char id;
        uint32_t low;
        uint16_t high;
        unsigned char mode;
        int status;
        uint32_t lowAfter;
        uint16_t highAfter;
    } rows[] = {
        {LmOBJID_T, 5, 1, 'N', 0, 6, 1},
        {LmOBJID_T, 0xFFFFFFFFu, 1, 'M', 0, 0, 2},
        {LmOBJID_T, 0xFFFFFFFFu, 0xFFFF, 'N', LM_ERR_NO_NEXT_VALUE, 0xFFFFFFFFu, 0xFFFF},
        {LmOBJID_T, 5, 1, 'O', 0, 5, 1},
        {LmREF_T, 5, 1, 'N', 0, 6, 1},
        {LmREF_T, 0xFFFFFFFFu, 0xFFFF, 'M', LM_ERR_NO_NEXT_VALUE, 0xFFFFFFFFu, 0xFFFF},
        {LmOBJID_T, 5, 1, 'X', LM_ERR_NOT_SUPPORTED, 5, 1},
    };
    for (const Row& r : rows) {
        LmRef v{9, r.low, r.high, 3, 4, 5};  // an LmObjId is the head of it
        EXPECT_EQ(mgr.GetValue(r.id, &v, 0, 8, r.mode), r.status);
        EXPECT_EQ(v.low, r.lowAfter);
        EXPECT_EQ(v.high, r.highAfter);
        EXPECT_EQ(v.blockId + v.databaseId + v.classNumber, 16u);
    }
    LmRef v = kRef;
    EXPECT_EQ(LmRef::GetValue(&v, 0, 8, 2), 0);
    EXPECT_EQ(std::memcmp(&v, P(LmRef{}), sizeof v), 0);
    EXPECT_EQ(LmObjId::GetValue(&v, 0, 1, 'N'), LM_ERR_NOT_SUPPORTED);
    EXPECT_EQ(mgr.GetValue(LmCLID_T, &v, 0, 8, 'N'), LM_ERR_NOT_SUPPORTED);
    // A disk key is stepped through Load and Store.
    Bytes key = Stored(LmOBJID_T, {LmObjId{4, 0xFFFFFFFFu, 1, 0}});
    EXPECT_EQ(mgr.GetValue(LmOBJID_T, key.data(), 10, 1, 'N'), 0);
    EXPECT_EQ(key, (Bytes{4, 0, 0, 0, 0, 0, 0, 0, 2, 0}));
}

}  // namespace
