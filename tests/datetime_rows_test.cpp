// LmDateTime (id 19), LmDateTimeN (id 40) and LmTimeSpan (id 41) through the type
// manager: golden disk images in both byte orders, translation, comparison on memory
// and disk forms, golden hashes, text by id, conversions, defaults, nulls, stepping,
// time stamps and capabilities.
#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>
#include <tuple>
#include <vector>

#include "lumotypes.h"

namespace {

using Bytes = std::vector<unsigned>;
using Fields = std::tuple<int, int, int, int, int, int, int>;
constexpr unsigned char kLittle = LmFormatLittle, kBig = LmFormatBig, kMemory = LmFormatMemory;

Bytes Of(const void* p, size_t n) {
    return Bytes(static_cast<const unsigned char*>(p), static_cast<const unsigned char*>(p) + n);
}
Fields Of(const LmDateTimeNRecord& v) { return {v.year, v.month, v.day, v.hour, v.minute, v.second, v.nanoseconds}; }
Fields Of(const LmDateTime& v) { return {v.year, v.month, v.day, v.hour, v.minute, v.second, 0}; }

class DateTimeRows : public ::testing::Test {
protected:
    void SetUp() override {  // 2001-09-09 01:46:40.25 UTC, two hours east
        bksPinClock(1000000000, 250000000);
        bksPinTimeZone(120);
    }
    void TearDown() override {
        bksUnpinClock();
        bksUnpinTimeZone();
    }
    std::pair<int, int> Cmp(char id, unsigned char format, const void* a, const void* b, unsigned short option = 0,
                            unsigned count = 1, unsigned len1 = 0, unsigned len2 = 0) {
        int status = 77;
        const int r =
            mgr.Cmp(id, len1, const_cast<void*>(a), len2, const_cast<void*>(b), option, count, format, status);
        return {r, status};
    }
    LmTypeMgr mgr;
};

TEST_F(DateTimeRows, GoldenDiskImagesInBothByteOrders) {
    LmDateTime dt[2] = {LmDateTime(2001, 2, 3, 13, 5, 9), LmDateTime::NullValue()};
    unsigned char disk[24];
    EXPECT_EQ(mgr.Store(LmDATIME_T, disk, dt, kLittle, 2), 14u);
    EXPECT_EQ(Of(disk, 14), (Bytes{0xD1, 0x07, 2, 3, 13, 5, 9, 0x00, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80}));
    EXPECT_EQ(mgr.Store(LmDATIME_T, disk, dt, kBig, 2), 14u);
    EXPECT_EQ(Of(disk, 14), (Bytes{0x07, 0xD1, 2, 3, 13, 5, 9, 0x80, 0x00, 0x80, 0x80, 0x80, 0x80, 0x80}));
    LmDateTime back[2] = {LmDateTime::ClearValue(), LmDateTime::ClearValue()};
    EXPECT_EQ(mgr.Load(LmDATIME_T, back, disk, 0x12, 2), 14u);  // only the low nibble counts
    EXPECT_EQ(std::make_pair(Of(back[0]), back[1].IsNullValue()), std::make_pair(Of(dt[0]), 1));

    LmDateTimeN n[2] = {LmDateTimeN(2001, 2, 3, 13, 5, 9, 123456789), LmDateTimeN::NullValue()};
    EXPECT_EQ(mgr.Store(LmDATIME_N_T, disk, n, kLittle, 2), 22u);
    EXPECT_EQ(Of(disk, 22), (Bytes{0xD1, 0x07, 2,    3,    13,   5,    9,    0x15, 0xCD, 0x5B, 0x07,
                                   0x00, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0,    0,    0,    0}));
    EXPECT_EQ(mgr.Store(LmTIMESPAN_T, disk, n, kBig, 1), 11u);
    EXPECT_EQ(Of(disk, 11), (Bytes{0x07, 0xD1, 2, 3, 13, 5, 9, 0x07, 0x5B, 0xCD, 0x15}));
    LmDateTimeN nb;
    EXPECT_EQ(mgr.Load(LmDATIME_N_T, &nb, disk, kBig, 1), 11u);
    EXPECT_EQ(Of(nb), Of(n[0]));
    // Sizes are the disk width times the count; a count of 0 touches nothing.
    EXPECT_EQ(
        std::make_tuple(mgr.DiskLenGet(LmDATIME_T, nullptr, kBig, 5, 0), mgr.DiskLenGet(LmTIMESPAN_T, nullptr, 1, 3, 8),
                        mgr.Desc(LmDATIME_N_T)->NullSizeGet(2), mgr.Store(LmDATIME_N_T, disk, n, kLittle, 0)),
        std::make_tuple(35u, 33u, 22u, 0u));
    EXPECT_EQ(
        std::make_tuple(mgr.Desc(LmDATIME_T)->memLen, mgr.Desc(LmDATIME_N_T)->memLen, mgr.Desc(LmTIMESPAN_T)->fixed),
        std::make_tuple(uint16_t{8}, uint16_t{12}, uint16_t{1}));
    // Translate: disk to disk copies and zeroes a longer destination; memory to memory assigns.
    unsigned char wide[16];
    std::memset(wide, 0xEE, sizeof wide);
    mgr.Store(LmDATIME_N_T, disk, n, kLittle, 1);
    EXPECT_EQ(mgr.Translate(LmDATIME_N_T, wide, kLittle, 16, disk, kBig, 11, 1), 11u);
    EXPECT_EQ(Of(wide + 11, 5), Bytes(5, 0));
    LmTimeSpan s[1];
    EXPECT_EQ(mgr.Translate(LmTIMESPAN_T, s, kMemory, 0, disk, kLittle, 11, 1), 11u);
    EXPECT_EQ(Of(s[0]), Of(n[0]));
    LmDateTime m;
    EXPECT_EQ(mgr.Translate(LmDATIME_T, &m, kMemory, 8, dt, kMemory, 8, 1), 8u);
    EXPECT_EQ(Of(m), Of(dt[0]));
}

TEST_F(DateTimeRows, CompareInMemoryAndOnDisk) {
    LmDateTime a(2001, 2, 3, 13, 5, 9), b(2001, 2, 3, 10, 5, 9), wild(2001, -1, 3, -1, 5, 9);
    EXPECT_EQ(Cmp(LmDATIME_T, kMemory, &a, &b), std::make_pair(3, 0));  // a field difference in memory
    EXPECT_EQ(Cmp(LmDATIME_T, kMemory, &wild, &b), std::make_pair(0, 0));
    unsigned char da[7], db[7], dw[7];
    for (unsigned char f : {kLittle, kBig}) {
        mgr.Store(LmDATIME_T, da, &a, f, 1);
        mgr.Store(LmDATIME_T, db, &b, f, 1);
        mgr.Store(LmDATIME_T, dw, &wild, f, 1);
        EXPECT_EQ(Cmp(LmDATIME_T, f, da, db), std::make_pair(1, 0));
        EXPECT_EQ(Cmp(LmDATIME_T, f, db, da), std::make_pair(-1, 0));
        EXPECT_EQ(Cmp(LmDATIME_T, f, da, dw), std::make_pair(0, 0));   // the second value's wildcards count
        EXPECT_EQ(Cmp(LmDATIME_T, f, dw, da), std::make_pair(-1, 0));  // the first value's do not
        EXPECT_EQ(Cmp(LmDATIME_T, f, da, dw, LM_CMP_NO_WILDCARD), std::make_pair(1, 0));
    }
    LmDateTime years[2] = {LmDateTime(-1, 1, 1, 0, 0, 0), LmDateTime(300, 1, 1, 0, 0, 0)};
    mgr.Store(LmDATIME_T, da, years, kBig, 1);
    mgr.Store(LmDATIME_T, db, years + 1, kBig, 1);
    EXPECT_EQ(std::make_pair(Cmp(LmDATIME_T, kBig, db, da), Cmp(LmDATIME_T, kBig, da, db)),
              std::make_pair(std::make_pair(0, 0), std::make_pair(-1, 0)));  // a year of -1 is a wildcard

    // Nanosecond values: fields, then nanoseconds; only the second value's -1 is wild on disk.
    LmDateTimeN x[2] = {LmDateTimeN(2001, 2, 3, 0, 0, 0, 5), LmDateTimeN(2001, 2, 3, 0, 0, 0, 7)};
    LmDateTimeN y[2] = {LmDateTimeN(2001, 2, 3, 0, 0, 0, 5), LmDateTimeN(2001, 2, 3, 0, 0, 0, -1)};
    EXPECT_EQ(Cmp(LmDATIME_N_T, kMemory, x, y, 0, 2), std::make_pair(0, 0));
    EXPECT_EQ(Cmp(LmTIMESPAN_T, kMemory, y, x, 0, 2), std::make_pair(0, 0));
    EXPECT_EQ(Cmp(LmTIMESPAN_T, kMemory, y, x, LM_CMP_NO_WILDCARD, 2), std::make_pair(-1, 0));
    unsigned char nx[22], ny[22];
    for (unsigned char f : {kLittle, kBig}) {
        mgr.Store(LmDATIME_N_T, nx, x, f, 2);
        mgr.Store(LmDATIME_N_T, ny, y, f, 2);
        EXPECT_EQ(Cmp(LmDATIME_N_T, f, nx, ny, 0, 2), std::make_pair(0, 0));
        EXPECT_EQ(Cmp(LmTIMESPAN_T, f, ny, nx, 0, 2), std::make_pair(-1, 0));
        EXPECT_EQ(Cmp(LmDATIME_N_T, f, nx, ny, LM_CMP_NO_WILDCARD, 2), std::make_pair(1, 0));
        EXPECT_EQ(Cmp(LmDATIME_N_T, f, nx + 11, nx, 0, 1), std::make_pair(1, 0));
        // A stored value cut short: the elements that fit, and status 2101.
        EXPECT_EQ(Cmp(LmDATIME_N_T, f, nx, nx, 0, 2, 11, 22), std::make_pair(0, LM_ERR_OUT_OF_DATA));
        EXPECT_EQ(Cmp(LmDATIME_N_T, f, nx, nx, 0, 2, 22, 11), std::make_pair(0, LM_ERR_OUT_OF_DATA));
    }
    const unsigned char two[14] = {};
    EXPECT_EQ(Cmp(LmDATIME_T, kLittle, two, two, 0, 3, 14, 14), std::make_pair(0, LM_ERR_OUT_OF_DATA));
    EXPECT_EQ(Cmp(LmDATIME_N_T, kMemory, x, x, 0, 0), std::make_pair(0, 0));
}

// The words are worked out by hand: 2001-02-03 13:05:09 is 07DC070A; with 123456789
// nanoseconds 0087CA1F; the null date-time 80800000; 0001-02-03 04:05:06 with
// nanoseconds -1 is FFFAF8FA.
TEST_F(DateTimeRows, GoldenHashesInEveryFormat) {
    LmDateTime dt[2] = {LmDateTime(2001, 2, 3, 13, 5, 9), LmDateTime::NullValue()};
    LmDateTimeN n[3] = {LmDateTimeN(2001, 2, 3, 13, 5, 9, 123456789), LmDateTimeN::NullValue(),
                        LmDateTimeN(1, 2, 3, 4, 5, 6, -1)};
    const unsigned dtHash[2] = {0x5E900B42u, 0xB6800000u}, nHash[3] = {0xCC608133u, 0xB6800000u, 0x81142E72u};
    unsigned char disk[11];
    int status = 77;
    for (int i = 0; i < 3; ++i) {
        for (char id : {LmDATIME_N_T, LmTIMESPAN_T}) {
            EXPECT_EQ(mgr.Hash(id, 0, const_cast<LmDateTimeN*>(n + i), 1, kMemory, status), nHash[i]) << i;
            for (unsigned char f : {kLittle, kBig}) {
                mgr.Store(id, disk, n + i, f, 1);
                EXPECT_EQ(mgr.Hash(id, 0, disk, 1, f, status), nHash[i]) << i << " format " << int(f);
            }
        }
        if (i == 2) break;
        EXPECT_EQ(mgr.Hash(LmDATIME_T, 0, const_cast<LmDateTime*>(dt + i), 1, kMemory, status), dtHash[i]);
        for (unsigned char f : {kLittle, kBig}) {
            mgr.Store(LmDATIME_T, disk, dt + i, f, 1);
            EXPECT_EQ(mgr.Hash(LmDATIME_T, 0, disk, 1, f, status), dtHash[i]) << i << " format " << int(f);
        }
    }
    EXPECT_EQ(status, 0);
    // XOR over the elements with one multiplication; a short buffer stops with 2101.
    EXPECT_EQ(mgr.Hash(LmDATIME_N_T, 0, const_cast<LmDateTimeN*>(n), 2, kMemory, status), 0x8007CA1Fu * 1103515245u);
    EXPECT_EQ(mgr.Hash(LmDATIME_N_T, 12, const_cast<LmDateTimeN*>(n), 2, kMemory, status), nHash[0]);
    EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
    unsigned char two[14];
    mgr.Store(LmDATIME_T, two, dt, kLittle, 2);
    EXPECT_EQ(mgr.Hash(LmDATIME_T, 0, two, 2, kLittle, status), (0x07DC070Au ^ 0x80800000u) * 1103515245u);
    EXPECT_EQ(mgr.Hash(LmDATIME_T, 7, two, 2, kLittle, status), dtHash[0]);
    EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
}

TEST_F(DateTimeRows, TextByTypeId) {
    LmDateTime dt(2001, 2, 3, 13, 5, 9);
    LmString out("old");
    EXPECT_STREQ(mgr.PrintToLmString(LmDATIME_T, out, &dt, nullptr, 1).StrGet(), "Sat 03.Feb 2001 01:05:09 pm");
    LmString text("Mon 24.Dec 2012 11:30:00 pm");
    EXPECT_EQ(mgr.ScanFromLmString(LmDATIME_T, &dt, text, nullptr, 1), &dt);
    EXPECT_EQ(Of(dt), Fields(2012, 12, 24, 23, 30, 0, 0));
    LmDateTimeN n(2001, 2, 3, 4, 5, 6, 500000000);
    EXPECT_STREQ(mgr.PrintToLmString(LmDATIME_N_T, out, &n, nullptr, 1).StrGet(), "2001-02-03T04:05:06.500");
    LmTimeSpan s(400, 1, 2, 3, 4);
    mgr.PrintToLmString(LmTIMESPAN_T, out, &s, nullptr, 1);
    LmTimeSpan back(0, 0, 0, 0, 0);
    EXPECT_EQ(mgr.ScanFromLmString(LmTIMESPAN_T, &back, out, nullptr, 1), &back);
    EXPECT_EQ(Of(back), Of(s));
    char id = 0;
    EXPECT_EQ(mgr.Name2LmTypeId("LmTimeSpan", id), 0);
    EXPECT_EQ(id, 41);
}

TEST_F(DateTimeRows, ConversionsDefaultsNulls) {
    LmDateTime dt[2] = {LmDateTime(1970, 1, 1, 1, 0, 2), LmDateTime::NullValue()};
    LmTypeConvertData* w = mgr.ConvertTo(LmDATIME_T, dt, 2);
    EXPECT_EQ(std::make_pair(std::string(w->GetString(0)->StrGet()), w->GetString(1)->IsNullValue()),
              std::make_pair(std::string("2440588:3602"), 1));
    *w->GetString(1) = ":90";
    auto* back = static_cast<LmDateTime*>(mgr.ConvertFrom(LmDATIME_T, w, 3));
    EXPECT_EQ(std::make_tuple(Of(back[0]), Of(back[1]), back[2].IsNullValue()),
              std::make_tuple(Of(dt[0]), Fields(0, 0, 0, 0, 1, 30, 0), 1));
    mgr.Delete(LmDATIME_T, back, 3);
    delete w;

    LmDateTimeN n[3] = {LmDateTimeN(1970, 1, 1, 1, 0, 2, 5), LmDateTimeN(1970, 1, 1, 0, 0, 0, 0),
                        LmDateTimeN::NullValue()};
    w = mgr.ConvertTo(LmDATIME_N_T, n, 3);
    EXPECT_EQ(std::make_tuple(std::string(w->GetString(0)->StrGet()), std::string(w->GetString(1)->StrGet()),
                              w->GetString(2)->IsNullValue()),
              std::make_tuple(std::string("2440588:3602.5"), std::string("2440588:0"), 1));
    *w->GetString(2) = "2440588";
    auto* nb = static_cast<LmDateTimeN*>(mgr.ConvertFrom(LmDATIME_N_T, w, 4));
    EXPECT_EQ(std::make_tuple(Of(nb[0]), Of(nb[1]), Of(nb[2]), nb[3].IsNullValue()),
              std::make_tuple(Of(n[0]), Of(n[1]), Of(n[1]), 1));
    mgr.Delete(LmDATIME_N_T, nb, 4);
    *w->GetString(0) = ":3600.7";  // no date number: the zero date-time with the nanoseconds
    nb = static_cast<LmDateTimeN*>(mgr.ConvertFrom(LmDATIME_N_T, w, 1));
    EXPECT_EQ(Of(*nb), Fields(0, 1, 1, 0, 0, 0, 7));
    mgr.Delete(LmDATIME_N_T, nb, 1);
    delete w;

    LmTimeSpan s[2] = {LmTimeSpan(0, 0, 1, 0, 0, 1, 500000000), LmTimeSpan::NullValue()};
    w = mgr.ConvertTo(LmTIMESPAN_T, s, 2);
    EXPECT_EQ(std::make_pair(std::string(w->GetString(0)->StrGet()), w->GetString(1)->IsNullValue()),
              std::make_pair(std::string("86401.5"), 1));
    auto* sb = static_cast<LmTimeSpan*>(mgr.ConvertFrom(LmTIMESPAN_T, w, 2));
    EXPECT_EQ(std::make_pair(Of(sb[0]), sb[1].IsNullValue()), std::make_pair(Of(s[0]), 1));
    mgr.Delete(LmTIMESPAN_T, sb, 2);
    delete w;

    // Defaults: LmDateTime from an empty text (absolute day 0 at midnight) or null; the
    // nanosecond pair as Create leaves them, null. Create of LmDateTime reads the clock.
    auto* d0 = static_cast<LmDateTime*>(mgr.DefaultValue(LmDATIME_T, 2, 0));
    auto* d1 = static_cast<LmDateTime*>(mgr.DefaultValue(LmDATIME_T, 2, 1));
    auto* s1 = static_cast<LmTimeSpan*>(mgr.DefaultValue(LmTIMESPAN_T, 3, 1));
    auto* c = static_cast<LmDateTime*>(mgr.Create(LmDATIME_T, 1));
    EXPECT_EQ(std::make_tuple(Of(d0[1]), d1[1].IsNullValue(), s1[2].IsNullValue(), Of(*c)),
              std::make_tuple(Of(LmDateTime::DefaultValue()), 1, 1, Fields(2001, 9, 9, 3, 46, 40, 0)));
    mgr.Delete(LmDATIME_T, d0, 2);
    mgr.Delete(LmDATIME_T, d1, 2);
    mgr.Delete(LmTIMESPAN_T, s1, 3);
    mgr.Delete(LmDATIME_T, c, 1);
    for (char id : {LmDATIME_T, LmDATIME_N_T, LmTIMESPAN_T}) {
        LmDateTimeN v(2001, 1, 1, 0, 0, 0, 0);
        EXPECT_EQ(mgr.IsNullValue(id, &v), 0);
        EXPECT_EQ(mgr.SetNullValue(id, &v), 0);
        EXPECT_EQ(mgr.IsNullValue(id, &v), 1);
    }
    EXPECT_EQ(std::make_tuple(mgr.SupportsCapability(LmDATIME_T, 3), mgr.SupportsCapability(LmDATIME_N_T, 3),
                              mgr.SupportsCapability(LmTIMESPAN_T, 3)),
              std::make_tuple(uint16_t{1}, uint16_t{1}, uint16_t{0}));
}

TEST_F(DateTimeRows, SteppingAndStamps) {
    LmDateTime dt(2000, 2, 28, 23, 59, 59);
    EXPECT_EQ(mgr.GetValue(LmDATIME_T, &dt, 0, kMemory, 'N'), 0);
    EXPECT_EQ(Of(dt), Fields(2000, 2, 29, 0, 0, 0, 0));
    EXPECT_EQ(mgr.GetValue(LmDATIME_T, &dt, 0, kMemory, 'O'), 0);
    EXPECT_EQ(Of(dt), Fields(2001, 9, 9, 3, 46, 40, 0));
    const LmTypeGetValueFunc dtSlot = mgr.Desc(LmDATIME_T)->GetValue, nSlot = mgr.Desc(LmDATIME_N_T)->GetValue,
                             sSlot = mgr.Desc(LmTIMESPAN_T)->GetValue;
    EXPECT_EQ(std::make_tuple(dtSlot(&dt, 0, kLittle, 'N'), dtSlot(&dt, 0, kMemory, 'X'), dtSlot(&dt, 0, kMemory, 2)),
              std::make_tuple(LM_ERR_NOT_SUPPORTED, LM_ERR_NOT_SUPPORTED, 0));
    EXPECT_EQ(dt.IsNullValue(), 1);
    dt = LmDateTime(32767, 12, 31, 23, 59, 59);  // the year wraps: no successor
    EXPECT_EQ(mgr.GetValue(LmDATIME_T, &dt, 0, kMemory, 'N'), LM_ERR_NO_NEXT_VALUE);
    unsigned char disk[7] = {0xD0, 0x07, 12, 31, 23, 59, 59};  // on a disk image: load, step, store
    EXPECT_EQ(mgr.GetValue(LmDATIME_T, disk, 7, kLittle, 'N'), 0);
    EXPECT_EQ(Of(disk, 7), (Bytes{0xD1, 0x07, 1, 1, 0, 0, 0}));

    LmDateTimeN n(2000, 12, 31, 23, 59, 59, 999999999);
    EXPECT_EQ(mgr.GetValue(LmDATIME_N_T, &n, 0, kMemory, 'N'), 0);
    EXPECT_EQ(Of(n), Fields(2001, 1, 1, 0, 0, 0, 0));
    EXPECT_EQ(mgr.GetValue(LmDATIME_N_T, &n, 0, kMemory, 'O'), 0);
    EXPECT_EQ(Of(n), Fields(2001, 9, 9, 3, 46, 40, 250000000));
    EXPECT_EQ(nSlot(&n, 0, kMemory, 2), 0);
    EXPECT_EQ(Of(n), Fields(-32768, -128, -128, -128, -128, -128, INT_MIN));
    LmTimeSpan s(0, 0, 0, 0, 0, 0, 0);
    EXPECT_EQ(std::make_tuple(sSlot(&s, 0, kMemory, 'O'), sSlot(&s, 0, kMemory, 'N'), sSlot(&s, 0, kBig, 'N')),
              std::make_tuple(0, 0, LM_ERR_NOT_SUPPORTED));
    EXPECT_EQ(Of(s), Fields(0, 0, 0, 0, 0, 0, 1));
    s = LmTimeSpan(32767, 11, 29, 23, 59, 59, 999999999);  // saturated: no successor
    EXPECT_EQ(sSlot(&s, 0, kMemory, 'N'), LM_ERR_NO_NEXT_VALUE);

    LmDateTimeNRecord stamp{2001, 2, 3, 13, 5, 9, 123456789};
    unsigned char dest[12];
    std::memset(dest, 0xEE, sizeof dest);
    EXPECT_EQ(mgr.StoreTimeStamp(LmDATIME_T, dest, kBig, &stamp), 7);
    EXPECT_EQ(Of(dest, 8), (Bytes{0x07, 0xD1, 2, 3, 13, 5, 9, 0xEE}));
    EXPECT_EQ(mgr.StoreTimeStamp(LmDATIME_N_T, dest, kBig, &stamp), 11);
    EXPECT_EQ(Of(dest, 12), (Bytes{0x07, 0xD1, 2, 3, 13, 5, 9, 0x07, 0x5B, 0xCD, 0x15, 0xEE}));
}

}  // namespace
