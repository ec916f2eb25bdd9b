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

TEST(Seal, MembersAndTheirWords) {
    const LmSeal s = Seal(0x123456789ABCLL);
    EXPECT_TRUE(s.high == 0x1234 && s.middle == 0x5678 && s.low == 0x9ABC);
    EXPECT_EQ(Number(Seal(-1)), 0xFFFFFFFFFFFFLL);  // the low 48 bits
    LmSeal fromInt64;
    fromInt64.ConvertFrom(LmInt64(0x7FFF123456789ABCLL));  // the top 16 bits are dropped
    EXPECT_TRUE(fromInt64 == s);
    LmInt64 back;
    s.ConvertTo(back);
    EXPECT_TRUE(back.low == 0x56789ABCu && back.high == 0x1234);
    // == is 1 or 0; != the difference of the first unequal words, left minus right.
    const struct {
        long long a, b;
        int equal, differ;
    } table[] = {{0x000100000000LL, 0x0000FFFFFFFFLL, 0, 1},
                 {0x000000010000LL, 0x00000000FFFFLL, 0, 1},
                 {0x000000000002LL, 0x000000000009LL, 0, -7},
                 {0x123456789ABCLL, 0x123456789ABCLL, 1, 0},
                 {0x0000FFFF0000LL, 0x000000000000LL, 0, 0xFFFF}};
    for (const auto& t : table) {
        EXPECT_EQ(Seal(t.a) == Seal(t.b), t.equal);
        EXPECT_EQ(Seal(t.a) != Seal(t.b), t.differ);
    }
}

TEST(Seal, DiskImageIgnoresTheFormat) {
    LmTypeMgr mgr;
    const LmSeal values[2] = {Seal(0x123456789ABCLL), Seal(0x8000000000FFLL)};
    const Bytes golden = {0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC, 0x80, 0x00, 0x00, 0x00, 0x00, 0xFF};
    for (const unsigned char f : {LmFormatLittle, LmFormatBig, LmFormatMemory, static_cast<unsigned char>(0x82)}) {
        Bytes disk(12);
        EXPECT_EQ(mgr.Store(LmSEAL_T, disk.data(), const_cast<LmSeal*>(values), f, 2), 12u);
        EXPECT_EQ(disk, golden);
        LmSeal loaded[2];
        EXPECT_EQ(mgr.Load(LmSEAL_T, loaded, disk.data(), f, 2), 12u);
        EXPECT_TRUE(loaded[0] == values[0] && loaded[1] == values[1]);
    }
    LmSeal viaTranslate[2];
    EXPECT_EQ(mgr.Translate(LmSEAL_T, viaTranslate, 8, 0, const_cast<unsigned char*>(golden.data()), 2, 12, 2), 12u);
    EXPECT_TRUE(viaTranslate[1] == values[1]);
    EXPECT_EQ(mgr.DiskLenGet(LmSEAL_T, nullptr, 1, 3, 8) + mgr.DiskLenGetFromMemFile(LmSEAL_T, nullptr, 2, 1), 24u);
}

TEST(Seal, CompareAndHash) {
    LmTypeMgr mgr;
    // high 1 is above high 0 whatever the other words hold, in memory and on disk.
    LmSeal pair[2] = {Seal(0x000100000000LL), Seal(0x0000FFFFFFFFLL)};
    Bytes disk(12);
    mgr.Store(LmSEAL_T, disk.data(), pair, 1, 2);
    int status = -7;
    EXPECT_EQ(mgr.Cmp(LmSEAL_T, 0, &pair[0], 0, &pair[1], 0, 1, 8, status), 1);
    EXPECT_EQ(mgr.Cmp(LmSEAL_T, 0, &pair[1], 0, &pair[0], 0, 1, 8, status), -1);
    EXPECT_EQ(mgr.Cmp(LmSEAL_T, 0, disk.data(), 0, disk.data() + 6, 0, 1, 2, status), 1);
    EXPECT_EQ(mgr.Cmp(LmSEAL_T, 0, disk.data() + 6, 0, disk.data(), 0, 1, 1, status), -1);
    LmSeal a[2] = {Seal(5), Seal(0x0000000A0000LL)}, b[2] = {Seal(5), Seal(0x000000030000LL)};
    EXPECT_EQ(mgr.Cmp(LmSEAL_T, 0, a, 0, b, 0, 2, 8, status), 7);  // middle 0xA - 3
    mgr.Store(LmSEAL_T, disk.data(), a, 2, 2);
    Bytes other(12);
    mgr.Store(LmSEAL_T, other.data(), b, 2, 2);
    EXPECT_EQ(mgr.Cmp(LmSEAL_T, 12, disk.data(), 12, other.data(), 0, 2, 2, status), 7);  // byte 0x0A - 0x03
    EXPECT_EQ(mgr.Cmp(LmSEAL_T, 12, disk.data(), 6, other.data(), 0, 2, 2, status), 0);   // only one element fits
    EXPECT_EQ(status, -7);                                                                // never set

    EXPECT_EQ(mgr.Hash(LmSEAL_T, 0, pair, 1, 8, status), kMul);
    EXPECT_EQ(status, 0);
    const LmSeal s = Seal(0x123456789ABCLL);
    EXPECT_EQ(mgr.Hash(LmSEAL_T, 0, const_cast<LmSeal*>(&s), 1, 8, status), 0xA1EC0C30u);  // 0xDEF0 * kMul
    mgr.Store(LmSEAL_T, disk.data(), const_cast<LmSeal*>(&s), 1, 1);
    for (const unsigned char f : {LmFormatLittle, LmFormatBig, static_cast<unsigned char>(0)})
        EXPECT_EQ(mgr.Hash(LmSEAL_T, 6, disk.data(), 1, f, status), 0xA1EC0C30u) << int(f);
}

TEST(Seal, TextConversionsAndRow) {
    LmTypeMgr mgr, legacy(3);
    const LmTypeDesc* row = mgr.Desc(LmSEAL_T);
    EXPECT_TRUE(std::string(row->name) == "LmSeal" && std::string(row->idName) == "LmSEAL_T");
    EXPECT_TRUE(std::string(row->exchangeFormat) == "noop" && row->memLen == 6 && row->fixed == 1);
    EXPECT_EQ(row->EvalAndBound, mgr.Desc(LmRES_T)->EvalAndBound);
    EXPECT_EQ(mgr.SupportsNullValue(LmSEAL_T), 0);

    auto* seals = static_cast<LmSeal*>(mgr.Create(LmSEAL_T, 3));
    ASSERT_NE(seals, nullptr);
    EXPECT_TRUE(seals[0] == LmSeal() && seals[2] == LmSeal());
    seals[0] = Seal(0x123456789ABCLL);
    LmString out("seal ");
    EXPECT_STREQ(mgr.PrintToLmString(LmSEAL_T, out, seals, nullptr, 1).StrGet(), "seal 20015998343868");  // appends
    const struct {
        const char* text;
        long long expected;
    } scans[] = {{"", 0}, {"281474976710657", 1}, {"0x10", 16}, {"abc", 0xFFFFFFFFFFFFLL}, {"-2", 0xFFFFFFFFFFFELL}};
    for (const auto& t : scans) {
        LmString text(t.text);
        seals[1] = Seal(99);
        EXPECT_EQ(mgr.ScanFromLmString(LmSEAL_T, &seals[1], text, nullptr, 1), &seals[1]);
        EXPECT_EQ(Number(seals[1]), t.expected) << t.text;
    }
    EXPECT_EQ(row->ScanFromString(nullptr, out, nullptr, 1), nullptr);

    // ConvertTo carries the seal's id: no string comes out, and ConvertFrom reads zeros.
    LmTypeConvertData* w = mgr.ConvertTo(LmSEAL_T, seals, 3);
    ASSERT_NE(w, nullptr);
    EXPECT_TRUE(w->id == LmSEAL_T && w->count == 3 && w->GetString(0) == nullptr);
    EXPECT_STREQ(static_cast<LmString*>(w->data)[0].StrGet(), "20015998343868");
    auto* back = static_cast<LmSeal*>(mgr.ConvertFrom(LmSEAL_T, w, 2));
    EXPECT_TRUE(back[0] == LmSeal() && back[1] == LmSeal());
    delete w;  // releases the strings through the seal's Delete
    mgr.Delete(LmSEAL_T, back, 2);
    w = row->ConvertTo(seals, 0);  // made by the slot, the wrapper owns nothing until a manager is set
    w->mgr = &mgr;
    delete w;

    EXPECT_EQ(mgr.SetNullValue(LmSEAL_T, seals), 0);  // the fallback: what an empty text gives, zero
    EXPECT_TRUE(seals[0] == LmSeal() && mgr.IsNullValue(LmSEAL_T, seals) == 0);
    back = static_cast<LmSeal*>(mgr.DefaultValue(LmSEAL_T, 2, 1));
    EXPECT_TRUE(back[1] == LmSeal());
    EXPECT_EQ(mgr.Delete(LmSEAL_T, back, 2), nullptr);
    EXPECT_EQ(mgr.GetValue(LmSEAL_T, seals, 0, 8, 'N'), LM_ERR_NOT_SUPPORTED);
    EXPECT_EQ(mgr.Delete(LmSEAL_T, seals, 3), nullptr);
    EXPECT_EQ(mgr.Delete(LmSEAL_T, nullptr, 1), nullptr);
}

namespace {
// The bytes false, true, null, a loaded 2 and a loaded 0x80, and the answers of each
// pair (row left, column right), worked out from the rules.
constexpr unsigned char kBytes[5] = {0, 1, 255, 2, 0x80};
constexpr int kEqual[5][5] = {{1, 0, 0, 0, 0}, {0, 1, 0, 1, 1}, {0, 0, 1, 0, 0}, {0, 1, 0, 1, 1}, {0, 1, 0, 1, 1}};
constexpr int kLess[5][5] = {{0, 1, 0, 1, 0}, {0, 0, 0, 1, 0}, {1, 1, 0, 1, 1}, {0, 0, 0, 0, 0}, {1, 1, 0, 1, 0}};
constexpr int kGreater[5][5] = {{0, 0, 1, 0, 1}, {1, 0, 1, 0, 1}, {0, 0, 0, 0, 0}, {1, 1, 1, 0, 1}, {0, 0, 1, 0, 0}};
constexpr int kOrder[5][5] = {
    {0, -1, 1, -1, 1}, {1, 0, 1, -1, 1}, {-1, -1, 0, -1, -1}, {1, 1, 1, 0, 1}, {-1, -1, 1, -1, 0}};

LmBoolean Byte(unsigned char b) {
    LmBoolean v;
    v.value = b;
    return v;
}
}  // namespace

TEST(Boolean, OperatorsAndCompareByTheNullOrder) {
    LmTypeMgr mgr;
    for (int i = 0; i < 5; ++i) {
        for (int j = 0; j < 5; ++j) {
            const LmBoolean a = Byte(kBytes[i]), b = Byte(kBytes[j]);
            EXPECT_EQ(a == b, kEqual[i][j]) << i << j;
            EXPECT_EQ(a < b, kLess[i][j]) << i << j;
            EXPECT_EQ(a > b, kGreater[i][j]) << i << j;
            for (const unsigned char f : {LmFormatLittle, LmFormatBig, LmFormatMemory}) {
                int status = -1;
                unsigned char x = kBytes[i], y = kBytes[j];
                EXPECT_EQ(mgr.Cmp(LmBOOLEAN_T, 1, &x, 1, &y, 0, 1, f, status), kOrder[i][j]) << i << j;
                EXPECT_EQ(status, 0);
            }
        }
        // An int is never null: 0 or 1 by its truth.
        const LmBoolean a = Byte(kBytes[i]);
        EXPECT_EQ(a == 7, kEqual[i][1]);
        EXPECT_EQ(a == 0, kEqual[i][0]);
        EXPECT_EQ(a < 5, kLess[i][1]);
        EXPECT_EQ(a > 0, kGreater[i][0]);
    }
    EXPECT_EQ(LmBoolean(2) == LmBoolean(1), 1);
    EXPECT_EQ(LmBoolean(2).value, 1);
    LmBoolean n;
    EXPECT_EQ(n.SetNullValue(), 0);
    EXPECT_TRUE(n.IsNullValue() && n.value == 255 && !LmBoolean(0).IsNullValue());
    n = -3;
    EXPECT_EQ(n.value, 1);
}

TEST(Boolean, RowThroughTheManager) {
    LmTypeMgr mgr, legacy(3);
    const LmTypeDesc* row = mgr.Desc(LmBOOLEAN_T);
    EXPECT_EQ(legacy.Desc(LmBOOLEAN_T), row);
    EXPECT_TRUE(std::string(row->name) == "LmBoolean" && std::string(row->exchangeFormat) == "noop");
    EXPECT_TRUE(row->memLen == 1 && row->fixed == 1 && mgr.SupportsNullValue(LmBOOLEAN_T) == 1);
    EXPECT_EQ(row->EvalAndBound, mgr.Desc(LmRES_T)->EvalAndBound);

    auto* values = static_cast<unsigned char*>(mgr.Create(LmBOOLEAN_T, 4));
    ASSERT_NE(values, nullptr);
    EXPECT_TRUE(values[0] == 0 && values[3] == 0);
    const unsigned char loaded[4] = {1, 255, 2, 0};
    for (const unsigned char f : {LmFormatLittle, LmFormatBig, LmFormatMemory}) {
        unsigned char disk[4];
        EXPECT_EQ(mgr.Load(LmBOOLEAN_T, values, const_cast<unsigned char*>(loaded), f, 4), 4u);
        EXPECT_EQ(mgr.Store(LmBOOLEAN_T, disk, values, f, 4), 4u);
        EXPECT_EQ(std::memcmp(disk, loaded, 4), 0);
        int status = -1;
        // Sign-extended bytes: 1 ^ 0xFFFFFFFF ^ 2 ^ 0.
        EXPECT_EQ(mgr.Hash(LmBOOLEAN_T, 4, disk, 4, f, status), 0xFFFFFFFCu * kMul);
    }
    EXPECT_EQ(mgr.DiskLenGet(LmBOOLEAN_T, nullptr, 1, 5, 8) + mgr.Desc(LmBOOLEAN_T)->NullSizeGet(3), 8u);
    LmString text("old");
    EXPECT_STREQ(mgr.PrintToLmString(LmBOOLEAN_T, text, values, nullptr, 4).StrGet(), "oldTRUE,{NULL},FALSE,FALSE");
    LmString yes("t");
    mgr.ScanFromLmString(LmBOOLEAN_T, &values[3], yes, nullptr, 1);
    EXPECT_EQ(values[3], 1);

    // ConvertTo: "1" for the byte 1, "0" for any other, null for null; and back.
    LmTypeConvertData* w = mgr.ConvertTo(LmBOOLEAN_T, values, 3);
    EXPECT_STREQ(w->GetString(0)->StrGet(), "1");
    EXPECT_TRUE(w->GetString(1)->IsNullValue() && std::string(w->GetString(2)->StrGet()) == "0");
    auto* back = static_cast<unsigned char*>(mgr.ConvertFrom(LmBOOLEAN_T, w, 4));
    EXPECT_TRUE(back[0] == 1 && back[1] == 255 && back[2] == 0 && back[3] == 255);  // the missing 4th: null
    delete w;
    mgr.Delete(LmBOOLEAN_T, back, 4);
    LmString wide(reinterpret_cast<const unsigned short*>(u"1x"));
    LmTypeConvertData* one = LmTypeConvertData::Make(LmSTRING_T, 1, &wide, nullptr);
    back = static_cast<unsigned char*>(row->ConvertFrom(one, 1));
    EXPECT_EQ(back[0], 1);
    mgr.Delete(LmBOOLEAN_T, back, 1);
    delete one;
    for (const int asNull : {0, 1}) {
        back = static_cast<unsigned char*>(mgr.DefaultValue(LmBOOLEAN_T, 2, asNull));
        EXPECT_TRUE(back[0] == (asNull ? 255 : 0) && back[1] == back[0]);
        mgr.Delete(LmBOOLEAN_T, back, 2);
    }
    EXPECT_EQ(mgr.SetNullValue(LmBOOLEAN_T, values), 0);
    EXPECT_EQ(mgr.IsNullValue(LmBOOLEAN_T, values), 1);

    // Stepping: true if the old value is less than true.
    const struct {
        unsigned char from;
        int status;
        unsigned char to;
    } steps[] = {{255, 0, 1}, {0, 0, 1}, {0x80, 0, 1}, {1, LM_ERR_NO_NEXT_VALUE, 1}, {2, LM_ERR_NO_NEXT_VALUE, 2}};
    for (const auto& s : steps) {
        values[0] = s.from;
        EXPECT_EQ(mgr.GetValue(LmBOOLEAN_T, values, 0, 8, 'N'), s.status);
        EXPECT_EQ(values[0], s.to);
        values[0] = s.from;
        EXPECT_EQ(mgr.GetValue(LmBOOLEAN_T, values, 1, 1, 'M'), s.status);  // a disk image through the manager
        EXPECT_EQ(values[0], s.to);
    }
    EXPECT_EQ(row->GetValue(values, 0, 8, 2), 0);
    EXPECT_EQ(values[0], 0);
    EXPECT_EQ(row->GetValue(values, 0, 8, 'O') + row->GetValue(values, 0, 2, 'N'), LM_ERR_NOT_SUPPORTED);
    EXPECT_EQ(mgr.Delete(LmBOOLEAN_T, values, 4), nullptr);
}
