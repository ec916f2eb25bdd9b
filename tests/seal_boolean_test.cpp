// LmSeal (type id 39) and LmBoolean (type id 27): members, disk images, compare,
// hash, text, conversions, nulls and stepping. Disk images and hash codes are frozen:
// every expected image, order and hash here is worked out by hand from the rules.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "lumotypes.h"

namespace {

using Bytes = std::vector<unsigned char>;
constexpr unsigned kMul = 1103515245u;

LmSeal Seal(long long v) {
    LmSeal s;
    s.ConvertFrom(v);
    return s;
}

long long Number(const LmSeal& s) {
    long long v = -5;
    s.ConvertTo(v);
    return v;
}

}  // namespace

TEST(Seal, MembersCompareAndHash) {
    const LmSeal s = Seal(0x123456789ABCLL);
    EXPECT_TRUE(s.high == 0x1234 && s.middle == 0x5678 && s.low == 0x9ABC && Number(Seal(-1)) == 0xFFFFFFFFFFFFLL);
    LmSeal fromInt64;
    fromInt64.ConvertFrom(LmInt64(0x7FFF123456789ABCLL));  // the top 16 bits are dropped
    LmInt64 back;
    s.ConvertTo(back);
    EXPECT_TRUE(fromInt64 == s && back.low == 0x56789ABCu && back.high == 0x1234);
    LmObjId id;
    id.blockId = 7;
    id.low = 0x56789ABCu;
    id.high = 0x1234;
    LmSeal fromId;
    fromId.ConvertFrom(id);  // the object number; the block is no part of it
    EXPECT_TRUE(fromId == s);

    // == is 1 or 0; != and the memory compare answer the first difference of the words,
    // the disk compare that of the bytes; a higher word decides whatever the others hold.
    LmTypeMgr mgr;
    const struct {
        long long a, b;
        int equal, words, bytes;
    } table[] = {{0x000100000000LL, 0x0000FFFFFFFFLL, 0, 1, 1},
                 {0x000000000102LL, 0x000000000201LL, 0, -0xFF, -1},
                 {0x000000000002LL, 0x000000000209LL, 0, -0x207, -2},
                 {0x123456789ABCLL, 0x123456789ABCLL, 1, 0, 0}};
    for (const auto& t : table) {
        LmSeal pair[2] = {Seal(t.a), Seal(t.b)};
        Bytes disk(12);
        mgr.Store(LmSEAL_T, disk.data(), pair, LmFormatLittle, 2);
        int status = -7;
        EXPECT_TRUE((pair[0] == pair[1]) == t.equal && (pair[0] != pair[1]) == t.words);
        EXPECT_EQ(mgr.Cmp(LmSEAL_T, 0, pair, 0, pair + 1, 0, 1, 8, status), t.words);
        EXPECT_EQ(mgr.Cmp(LmSEAL_T, 0, disk.data(), 0, disk.data() + 6, 0, 1, 2, status), t.bytes);
        EXPECT_EQ(status, -7);  // never set
    }
    // Whole elements only: an operand of one element ends the walk at the result so far.
    LmSeal a[2] = {Seal(5), Seal(0xA0000)}, b[2] = {Seal(5), Seal(0x30000)};
    int status = -7;
    EXPECT_TRUE(mgr.Cmp(LmSEAL_T, 12, a, 0, b, 0, 2, 8, status) == 7 &&
                mgr.Cmp(LmSEAL_T, 12, a, 11, b, 0, 2, 8, status) == 0);

    // The word is high ^ middle ^ low = 0xDEF0, in every form.
    Bytes disk(6);
    mgr.Store(LmSEAL_T, disk.data(), const_cast<LmSeal*>(&s), LmFormatBig, 1);
    EXPECT_EQ(mgr.Hash(LmSEAL_T, 0, const_cast<LmSeal*>(&s), 1, 8, status), 0xDEF0u * kMul);
    for (const unsigned char f : {LmFormatLittle, LmFormatBig, static_cast<unsigned char>(0)})
        EXPECT_EQ(mgr.Hash(LmSEAL_T, 6, disk.data(), 1, f, status), 0xDEF0u * kMul);
    EXPECT_TRUE(mgr.Hash(LmSEAL_T, 6, a, 2, 8, status) == 5 * kMul && status == LM_ERR_OUT_OF_DATA);
}

TEST(Seal, RowThroughTheManager) {
    LmTypeMgr mgr;
    const LmTypeDesc* row = mgr.Desc(LmSEAL_T);
    auto* seals = static_cast<LmSeal*>(mgr.Create(LmSEAL_T, 3));
    ASSERT_TRUE(seals != nullptr && seals[0] == LmSeal() && seals[2] == LmSeal());
    seals[0] = Seal(0x123456789ABCLL);
    seals[1] = Seal(0x8000000000FFLL);

    // The same bytes in every format, words most significant byte first.
    const Bytes golden = {0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC, 0x80, 0x00, 0x00, 0x00, 0x00, 0xFF};
    for (const unsigned char f : {LmFormatLittle, LmFormatBig, static_cast<unsigned char>(0x82)}) {
        Bytes disk(12);
        LmSeal loaded[2];
        EXPECT_EQ(mgr.Store(LmSEAL_T, disk.data(), seals, f, 2) + mgr.Load(LmSEAL_T, loaded, disk.data(), f, 2), 24u);
        EXPECT_TRUE(disk == golden && loaded[0] == seals[0] && loaded[1] == seals[1]);
        EXPECT_EQ(mgr.Translate(LmSEAL_T, disk.data(), f, 12, seals, 8, 0, 2), 12u);
        EXPECT_EQ(disk, golden);
    }
    EXPECT_EQ(mgr.DiskLenGet(LmSEAL_T, nullptr, 1, 3, 8) + mgr.DiskLenGetFromMemFile(LmSEAL_T, nullptr, 2, 1), 24u);

    // Text: the 48-bit number in decimal, appended; a scan keeps the low 48 bits.
    LmString out("seal ");
    EXPECT_STREQ(mgr.PrintToLmString(LmSEAL_T, out, seals, nullptr, 1).StrGet(), "seal 20015998343868");
    const struct {
        const char* text;
        long long expected;
    } scans[] = {{"", 0}, {"281474976710657", 1}, {"0x10", 16}, {"abc", 0xFFFFFFFFFFFFLL}};
    for (const auto& t : scans) {
        LmString text(t.text);
        seals[2] = Seal(99);
        EXPECT_TRUE(mgr.ScanFromLmString(LmSEAL_T, &seals[2], text, nullptr, 1) == &seals[2]);
        EXPECT_EQ(Number(seals[2]), t.expected) << t.text;
    }
    EXPECT_EQ(row->ScanFromString(nullptr, out, nullptr, 1), nullptr);

    // ConvertTo carries the seal's id: no string comes out, ConvertFrom reads zeros, and
    // the wrapper gives its strings back through the seal's Delete.
    LmTypeConvertData* w = mgr.ConvertTo(LmSEAL_T, seals, 3);
    EXPECT_TRUE(w->id == LmSEAL_T && w->count == 3 && w->GetString(0) == nullptr);
    EXPECT_STREQ(static_cast<LmString*>(w->data)[1].StrGet(), "140737488355583");
    auto* zeros = static_cast<LmSeal*>(mgr.ConvertFrom(LmSEAL_T, w, 2));
    EXPECT_TRUE(zeros[0] == LmSeal() && zeros[1] == LmSeal());
    delete w;
    mgr.Delete(LmSEAL_T, zeros, 2);
    LmString texts[2] = {LmString("77"), LmString("5")};  // from strings: scanned, a null one left zero
    texts[1].SetNullValue();
    LmTypeConvertData* in = LmTypeConvertData::Make(LmSTRING_T, 2, texts, nullptr);
    zeros = static_cast<LmSeal*>(row->ConvertFrom(in, 2));
    EXPECT_TRUE(Number(zeros[0]) == 77 && zeros[1] == LmSeal());
    delete in;
    mgr.Delete(LmSEAL_T, zeros, 2);
    EXPECT_TRUE(mgr.SetNullValue(LmSEAL_T, seals) == 0 && seals[0] == LmSeal() &&
                mgr.IsNullValue(LmSEAL_T, seals) == 0);
    zeros = static_cast<LmSeal*>(mgr.DefaultValue(LmSEAL_T, 2, 1));
    EXPECT_TRUE(zeros[1] == LmSeal() && mgr.SupportsNullValue(LmSEAL_T) == 0);
    EXPECT_TRUE(mgr.Delete(LmSEAL_T, zeros, 2) == nullptr && mgr.Delete(LmSEAL_T, nullptr, 1) == nullptr);
    EXPECT_EQ(mgr.GetValue(LmSEAL_T, seals, 0, 8, 'N'), LM_ERR_NOT_SUPPORTED);
    mgr.Delete(LmSEAL_T, seals, 3);
}

namespace {
// The bytes false, true, null, a loaded 2 and a loaded 0x80, and the answers for each
// pair (row left, column right), worked out from the rules.
constexpr unsigned char kBytes[5] = {0, 1, 255, 2, 0x80};
constexpr int kEqual[5][5] = {{1, 0, 0, 0, 0}, {0, 1, 0, 1, 1}, {0, 0, 1, 0, 0}, {0, 1, 0, 1, 1}, {0, 1, 0, 1, 1}};
constexpr int kLess[5][5] = {{0, 1, 0, 1, 0}, {0, 0, 0, 1, 0}, {1, 1, 0, 1, 1}, {0, 0, 0, 0, 0}, {1, 1, 0, 1, 0}};
constexpr int kGreater[5][5] = {{0, 0, 1, 0, 1}, {1, 0, 1, 0, 1}, {0, 0, 0, 0, 0}, {1, 1, 1, 0, 1}, {0, 0, 1, 0, 0}};
constexpr int kOrder[5][5] = {
    {0, -1, 1, -1, 1}, {1, 0, 1, -1, 1}, {-1, -1, 0, -1, -1}, {1, 1, 1, 0, 1}, {-1, -1, 1, -1, 0}};
}  // namespace

TEST(Boolean, OperatorsAndCompareByTheNullOrder) {
    LmTypeMgr mgr;
    for (int i = 0; i < 5; ++i) {
        LmBoolean a, b;
        a.value = kBytes[i];
        for (int j = 0; j < 5; ++j) {
            b.value = kBytes[j];
            EXPECT_TRUE((a == b) == kEqual[i][j] && (a < b) == kLess[i][j] && (a > b) == kGreater[i][j]) << i << j;
            for (const unsigned char f : {LmFormatLittle, LmFormatBig, LmFormatMemory}) {
                int status = -1;
                EXPECT_EQ(mgr.Cmp(LmBOOLEAN_T, 1, &a, 1, &b, 0, 1, f, status), kOrder[i][j]) << i << j;
                EXPECT_EQ(status, 0);
            }
        }
        // An int is never null: it compares as the false or true it makes.
        EXPECT_TRUE((a == 7) == kEqual[i][1] && (a == 0) == kEqual[i][0] && (a < 5) == kLess[i][1]);
        EXPECT_TRUE((a > 0) == kGreater[i][0] && (a < 0) == kLess[i][0] && (a > -4) == kGreater[i][1]);
    }
    LmBoolean n(-3);
    EXPECT_TRUE(n.value == 1 && (LmBoolean(2) == LmBoolean(1)) == 1 && n.SetNullValue() == 0 && n.value == 255);
    EXPECT_TRUE(n.IsNullValue() && !LmBoolean(0).IsNullValue() && (n = 0).value == 0);
}

TEST(Boolean, RowThroughTheManager) {
    LmTypeMgr mgr;
    const LmTypeDesc* row = mgr.Desc(LmBOOLEAN_T);
    EXPECT_EQ(mgr.SupportsNullValue(LmBOOLEAN_T), 1);
    auto* values = static_cast<unsigned char*>(mgr.Create(LmBOOLEAN_T, 4));
    ASSERT_TRUE(values != nullptr && values[0] == 0 && values[3] == 0);
    const unsigned char loaded[4] = {1, 255, 2, 0};
    for (const unsigned char f : {LmFormatLittle, LmFormatBig, LmFormatMemory}) {
        unsigned char disk[4];
        EXPECT_EQ(mgr.Load(LmBOOLEAN_T, values, const_cast<unsigned char*>(loaded), f, 4), 4u);
        EXPECT_EQ(mgr.Translate(LmBOOLEAN_T, disk, 1, 4, values, static_cast<unsigned char>(f | 8), 0, 4), 4u);
        EXPECT_EQ(std::memcmp(disk, loaded, 4), 0);
        int status = -1;  // sign-extended bytes: 1 ^ 0xFFFFFFFF ^ 2 ^ 0
        EXPECT_EQ(mgr.Hash(LmBOOLEAN_T, 4, disk, 4, f, status), 0xFFFFFFFCu * kMul);
    }
    EXPECT_EQ(mgr.DiskLenGet(LmBOOLEAN_T, nullptr, 1, 5, 8) + mgr.DiskLenGetFromMemFile(LmBOOLEAN_T, nullptr, 2, 3),
              8u);
    LmString text("old"), yes("t");
    EXPECT_STREQ(mgr.PrintToLmString(LmBOOLEAN_T, text, values, nullptr, 4).StrGet(), "oldTRUE,{NULL},FALSE,FALSE");
    EXPECT_TRUE(mgr.ScanFromLmString(LmBOOLEAN_T, &values[3], yes, nullptr, 1) == &values[3] && values[3] == 1);

    // ConvertTo: "1" for the byte 1, "0" for any other, null for null; back: true if the
    // first character is '1', a missing or null string null.
    values[3] = 0;
    LmTypeConvertData* w = mgr.ConvertTo(LmBOOLEAN_T, values, 3);
    EXPECT_TRUE(std::string(w->GetString(0)->StrGet()) == "1" && w->GetString(1)->IsNullValue());
    EXPECT_STREQ(w->GetString(2)->StrGet(), "0");
    LmString wide(reinterpret_cast<const unsigned short*>(u"1x"));
    *w->GetString(2) = wide;
    auto* back = static_cast<unsigned char*>(mgr.ConvertFrom(LmBOOLEAN_T, w, 4));
    EXPECT_TRUE(back[0] == 1 && back[1] == 255 && back[2] == 1 && back[3] == 255);
    delete w;
    mgr.Delete(LmBOOLEAN_T, back, 4);
    for (const int asNull : {0, 1}) {
        back = static_cast<unsigned char*>(mgr.DefaultValue(LmBOOLEAN_T, 2, asNull));
        EXPECT_TRUE(back[0] == (asNull ? 255 : 0) && back[1] == back[0]);
        mgr.Delete(LmBOOLEAN_T, back, 2);
    }
    EXPECT_TRUE(mgr.SetNullValue(LmBOOLEAN_T, &values[3]) == 0 && mgr.IsNullValue(LmBOOLEAN_T, &values[3]) == 1);

    // Stepping gives true if the old value is less than true, in memory and on disk.
    const unsigned char from[5] = {255, 0, 0x80, 1, 2};
    for (int i = 0; i < 5; ++i) {
        for (const unsigned char f : {LmFormatMemory, LmFormatLittle}) {
            values[0] = from[i];
            EXPECT_EQ(mgr.GetValue(LmBOOLEAN_T, values, 1, f, f == 8 ? 'N' : 'M'), i < 3 ? 0 : LM_ERR_NO_NEXT_VALUE);
            EXPECT_EQ(values[0], i < 3 ? 1 : from[i]);
        }
    }
    EXPECT_TRUE(row->GetValue(values, 0, 8, 2) == 0 && values[0] == 0 && row->GetValue(values, 0, 8, 'O') == 0);
    EXPECT_EQ(row->GetValue(values, 0, 2, 'N') + row->GetValue(values, 0, 8, 'Z'), 2 * LM_ERR_NOT_SUPPORTED);
    mgr.Delete(LmBOOLEAN_T, values, 4);
}
