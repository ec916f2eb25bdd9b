// LmDate (id 12) and LmTime (id 13) through the type manager: disk images in both
// byte orders, life cycle, translation, the one-sided disk comparisons and the memory
// differences, golden hashes, text by id, conversions, defaults, nulls, stepping and
// time stamps.
#include <gtest/gtest.h>

#include <cstring>
#include <tuple>
#include <vector>

#include "lumotypes.h"

namespace {

using Bytes = std::vector<unsigned>;

Bytes Of(const void* p, size_t n) {
    const auto* b = static_cast<const unsigned char*>(p);
    return Bytes(b, b + n);
}

using Ymd = std::tuple<int, int, int>;
Ymd Fields(const LmDate& d) { return {d.year, d.month, d.day}; }
Ymd Fields(const LmTime& t) { return {t.hour, t.minute, t.second}; }

constexpr unsigned char kLittle = LmFormatLittle, kBig = LmFormatBig, kMemory = LmFormatMemory;

class DateTimeType : public ::testing::Test {
protected:
    // 2001-09-09 01:46:40 UTC, two hours east: 03:46:40 local.
    void SetUp() override {
        bksPinClock(1000000000, 0);
        bksPinTimeZone(120);
    }
    void TearDown() override {
        bksUnpinClock();
        bksUnpinTimeZone();
    }
    LmTypeMgr mgr;
};

struct Cmp {
    int result, status;
    bool operator==(const Cmp&) const = default;
};
std::ostream& operator<<(std::ostream& os, const Cmp& c) { return os << c.result << " status " << c.status; }

Cmp Compare(char id, unsigned char format, const void* a, const void* b, unsigned short option = 0, unsigned count = 1,
            unsigned len1 = 0, unsigned len2 = 0) {
    int status = 77;
    LmTypeMgr mgr;
    const int r = mgr.Cmp(id, len1, const_cast<void*>(a), len2, const_cast<void*>(b), option, count, format, status);
    return {r, status};
}

TEST_F(DateTimeType, DiskImagesInBothByteOrders) {
    const LmDate dates[2] = {LmDate(2001, 2, 3), LmDate::NullValue()};
    unsigned char disk[8];
    EXPECT_EQ(mgr.Store(LmDATE_T, disk, const_cast<LmDate*>(dates), kLittle, 2), 8u);
    EXPECT_EQ(Of(disk, 8), (Bytes{0xD1, 0x07, 0x02, 0x03, 0x00, 0x80, 0x80, 0x80}));
    LmDate back[2] = {LmDate(0, 0, 0), LmDate(0, 0, 0)};
    EXPECT_EQ(mgr.Load(LmDATE_T, back, disk, kLittle, 2), 8u);
    EXPECT_EQ(Fields(back[0]), Ymd(2001, 2, 3));
    EXPECT_EQ(back[1].IsNullValue(), 1);
    EXPECT_EQ(mgr.Store(LmDATE_T, disk, const_cast<LmDate*>(dates), kBig, 2), 8u);
    EXPECT_EQ(Of(disk, 8), (Bytes{0x07, 0xD1, 0x02, 0x03, 0x80, 0x00, 0x80, 0x80}));
    EXPECT_EQ(mgr.Load(LmDATE_T, back, disk, 0x12, 2), 8u);  // only the low nibble counts
    EXPECT_EQ(Fields(back[0]), Ymd(2001, 2, 3));
    EXPECT_EQ(back[1].IsNullValue(), 1);
    // Every nibble but 2 puts the low byte first.
    for (int f : {0, 1, 3, 8, 9, 0x81}) {
        mgr.Store(LmDATE_T, disk, const_cast<LmDate*>(dates), static_cast<unsigned char>(f), 1);
        EXPECT_EQ(Of(disk, 4), (Bytes{0xD1, 0x07, 0x02, 0x03})) << f;
    }
    // A time has the same three bytes in every format.
    const LmTime times[2] = {LmTime(13, 5, 9), LmTime::NullValue()};
    for (unsigned char f : {kLittle, kBig, kMemory}) {
        std::memset(disk, 0xEE, sizeof disk);
        EXPECT_EQ(mgr.Store(LmTIME_T, disk, const_cast<LmTime*>(times), f, 2), 6u);
        EXPECT_EQ(Of(disk, 7), (Bytes{13, 5, 9, 0x80, 0x80, 0x80, 0xEE}));
        LmTime t[2] = {LmTime(0, 0, 0), LmTime(0, 0, 0)};
        EXPECT_EQ(mgr.Load(LmTIME_T, t, disk, f, 2), 6u);
        EXPECT_EQ(Fields(t[0]), Ymd(13, 5, 9));
        EXPECT_EQ(t[1].IsNullValue(), 1);
    }
    // A count of 0 writes and reads nothing.
    std::memset(disk, 0xEE, sizeof disk);
    EXPECT_EQ(mgr.Store(LmDATE_T, disk, const_cast<LmDate*>(dates), kLittle, 0), 0u);
    EXPECT_EQ(mgr.Load(LmTIME_T, back, disk, kLittle, 0), 0u);
    EXPECT_EQ(Of(disk, 8), Bytes(8, 0xEE));
    EXPECT_EQ(Fields(back[0]), Ymd(2001, 2, 3));
    // Sizes: the element length times the count, nothing else looked at.
    EXPECT_EQ(mgr.DiskLenGet(LmDATE_T, nullptr, kBig, 5, 0), 20u);
    EXPECT_EQ(mgr.DiskLenGet(LmTIME_T, nullptr, kLittle, 5, 8), 15u);
    EXPECT_EQ(mgr.Desc(LmDATE_T)->NullSizeGet(3), 12u);
    EXPECT_EQ(mgr.DiskLenGetFromMemFile(LmTIME_T, nullptr, kBig, 4), 12u);
}

TEST_F(DateTimeType, LifeCycleAndAssignment) {
    // Created values hold the present local date and time, not a sentinel.
    auto* one = static_cast<LmDate*>(mgr.Create(LmDATE_T, 1));
    EXPECT_EQ(Fields(*one), Ymd(2001, 9, 9));
    EXPECT_EQ(mgr.Delete(LmDATE_T, one, 1), nullptr);
    auto* three = static_cast<LmTime*>(mgr.Create(LmTIME_T, 3));
    int64_t header = 0;
    std::memcpy(&header, reinterpret_cast<unsigned char*>(three) - 8, 8);
    EXPECT_EQ(header, 3);
    EXPECT_EQ(Fields(three[2]), Ymd(3, 46, 40));
    // Broadcast assigns one value to all, else element by element.
    const LmTime src[3] = {LmTime(1, 2, 3), LmTime(4, 5, 6), LmTime(7, 8, 9)};
    mgr.AssignmentPtrGet(LmTIME_T)(three, const_cast<LmTime*>(src), 3, 1);
    EXPECT_EQ(Fields(three[2]), Ymd(1, 2, 3));
    mgr.CopyPtrGet(LmTIME_T)(three, const_cast<LmTime*>(src), 3, 0);
    EXPECT_EQ(Fields(three[2]), Ymd(7, 8, 9));
    mgr.DestructorPtrGet(LmTIME_T)(three, 3, 0);
    EXPECT_EQ(Fields(three[1]), Ymd(4, 5, 6));
    mgr.ConstructorPtrGet(LmTIME_T)(three, 3, 0);
    EXPECT_EQ(Fields(three[1]), Ymd(3, 46, 40));
    EXPECT_EQ(mgr.Delete(LmTIME_T, three, 3), nullptr);  // the header decides the size
    EXPECT_EQ(mgr.Delete(LmDATE_T, nullptr, 2), nullptr);
    void* none = mgr.Create(LmDATE_T, 0);  // one value for a count of 0 too
    ASSERT_NE(none, nullptr);
    EXPECT_EQ(mgr.Delete(LmDATE_T, none, 0), nullptr);
}

TEST_F(DateTimeType, Translate) {
    const LmDate d(2001, 2, 3);
    unsigned char disk[8];
    std::memset(disk, 0xEE, sizeof disk);
    const unsigned char image[4] = {0xD1, 0x07, 0x02, 0x03};
    // Disk to disk copies min(destLen, srcLen) bytes as they are, after zeroing a
    // longer destination.
    EXPECT_EQ(mgr.Translate(LmDATE_T, disk, kBig, 8, const_cast<unsigned char*>(image), kLittle, 4, 1), 4u);
    EXPECT_EQ(Of(disk, 8), (Bytes{0xD1, 0x07, 0x02, 0x03, 0, 0, 0, 0}));
    EXPECT_EQ(mgr.Translate(LmDATE_T, disk, kBig, 2, const_cast<unsigned char*>(image), kLittle, 4, 1), 2u);
    // Memory to disk stores, disk to memory loads, memory to memory assigns.
    EXPECT_EQ(mgr.Translate(LmDATE_T, disk, kBig, 0, const_cast<LmDate*>(&d), kMemory, 0, 1), 4u);
    EXPECT_EQ(Of(disk, 4), (Bytes{0x07, 0xD1, 0x02, 0x03}));
    LmDate m(0, 0, 0);
    EXPECT_EQ(mgr.Translate(LmDATE_T, &m, kMemory, 0, disk, kBig, 0, 1), 4u);
    EXPECT_EQ(Fields(m), Ymd(2001, 2, 3));
    LmDate n(0, 0, 0);
    EXPECT_EQ(mgr.Translate(LmDATE_T, &n, kMemory, 0, &m, kMemory, 0, 1), 4u);
    EXPECT_EQ(Fields(n), Ymd(2001, 2, 3));
    LmTime t[2] = {LmTime(0, 0, 0), LmTime(0, 0, 0)};
    const unsigned char times[6] = {1, 2, 3, 4, 5, 6};
    EXPECT_EQ(mgr.Translate(LmTIME_T, t, kMemory, 0, const_cast<unsigned char*>(times), kBig, 0, 2), 6u);
    EXPECT_EQ(Fields(t[1]), Ymd(4, 5, 6));
    EXPECT_EQ(mgr.Translate(LmTIME_T, t, kMemory, 0, t + 1, kMemory, 0, 1), 3u);
    EXPECT_EQ(Fields(t[0]), Ymd(4, 5, 6));
}

TEST(DateTimeCompare, DatesInMemoryAndOnDisk) {
    const LmDate a(2001, 7, 5), b(2001, 7, 8), anyMonth(2001, -1, 5), anyYear(-1, 7, 8);
    unsigned char da[4], db[4], dm[4], dy[4], ba[4], bb[4];
    LmTypeMgr mgr;
    for (auto [v, d, f] :
         {std::make_tuple(&a, da, kLittle), std::make_tuple(&b, db, kLittle), std::make_tuple(&anyMonth, dm, kLittle),
          std::make_tuple(&anyYear, dy, kLittle), std::make_tuple(&a, ba, kBig), std::make_tuple(&b, bb, kBig)})
        mgr.Store(LmDATE_T, d, const_cast<LmDate*>(v), f, 1);
    // Memory form: differences of fields, wildcards on either side.
    EXPECT_EQ(Compare(LmDATE_T, kMemory, &a, &b), (Cmp{-3, 0}));
    EXPECT_EQ(Compare(LmDATE_T, kMemory, &b, &a), (Cmp{3, 0}));
    EXPECT_EQ(Compare(LmDATE_T, kMemory, &a, &anyMonth), (Cmp{0, 0}));
    EXPECT_EQ(Compare(LmDATE_T, kMemory, &anyMonth, &a), (Cmp{0, 0}));
    EXPECT_EQ(Compare(LmDATE_T, kMemory, &anyMonth, &a, 0x10), (Cmp{-8, 0}));
    // Disk forms: -1, 0 or 1, and only the second value's wildcards count.
    EXPECT_EQ(Compare(LmDATE_T, kLittle, db, da), (Cmp{1, 0}));
    EXPECT_EQ(Compare(LmDATE_T, kBig, ba, bb), (Cmp{-1, 0}));
    EXPECT_EQ(Compare(LmDATE_T, kLittle, da, dm), (Cmp{0, 0}));
    EXPECT_EQ(Compare(LmDATE_T, kLittle, dm, da), (Cmp{-1, 0}));  // not symmetric
    EXPECT_EQ(Compare(LmDATE_T, kLittle, da, dm, 0x10), (Cmp{1, 0}));
    EXPECT_EQ(Compare(LmDATE_T, kLittle, db, dy), (Cmp{0, 0}));  // year FFFF matches any year
    EXPECT_EQ(Compare(LmDATE_T, kLittle, dy, db), (Cmp{-1, 0}));
    EXPECT_EQ(Compare(LmDATE_T, kLittle, db, dy, 0x10), (Cmp{1, 0}));
    EXPECT_EQ(Compare(LmDATE_T, kLittle, da, dy), (Cmp{-1, 0}));  // the year skipped, the day decides
    // The years compare as signed 16-bit numbers in the format's byte order: 256 and 1
    // are 00 01 and 01 00 low first.
    const unsigned char y256[4] = {0x00, 0x01, 1, 1}, y1[4] = {0x01, 0x00, 1, 1};
    EXPECT_EQ(Compare(LmDATE_T, kLittle, y256, y1), (Cmp{1, 0}));
    EXPECT_EQ(Compare(LmDATE_T, kBig, y256, y1), (Cmp{-1, 0}));
    EXPECT_EQ(Compare(LmDATE_T, 0, y256, y1), (Cmp{1, 0}));  // other nibbles as they stand
    const unsigned char largest[4] = {0xFF, 0x7F, 1, 1}, minus2[4] = {0xFE, 0xFF, 1, 1};
    EXPECT_EQ(Compare(LmDATE_T, kLittle, minus2, largest), (Cmp{-1, 0}));
    // Months and days are signed bytes: 0x80 orders below 0x01.
    const unsigned char lowMonth[4] = {0, 0, 0x80, 1}, month1[4] = {0, 0, 0x01, 1};
    EXPECT_EQ(Compare(LmDATE_T, kLittle, lowMonth, month1), (Cmp{-1, 0}));
    // Arrays: the first difference, and status 2101 when an operand runs out.
    const unsigned char two[8] = {0xD1, 0x07, 2, 3, 0xD1, 0x07, 2, 4};
    const unsigned char twoOther[8] = {0xD1, 0x07, 2, 3, 0xD1, 0x07, 2, 5};
    EXPECT_EQ(Compare(LmDATE_T, kLittle, two, twoOther, 0, 2), (Cmp{-1, 0}));
    EXPECT_EQ(Compare(LmDATE_T, kLittle, two, twoOther, 0, 2, 4, 8), (Cmp{0, LM_ERR_OUT_OF_DATA}));
    EXPECT_EQ(Compare(LmDATE_T, kLittle, two, twoOther, 0, 0), (Cmp{0, 0}));
}

TEST(DateTimeCompare, TimesInMemoryAndOnDisk) {
    const unsigned char t1[3] = {10, 20, 30}, t2[3] = {10, 21, 0}, anyMinute[3] = {10, 0xFF, 30};
    const unsigned char all[3] = {0xFF, 0xFF, 0xFF}, late[3] = {0x80, 0, 0};
    EXPECT_EQ(Compare(LmTIME_T, kMemory, t1, t2), (Cmp{-1, 0}));
    EXPECT_EQ(Compare(LmTIME_T, kMemory, t2, t1), (Cmp{1, 0}));
    EXPECT_EQ(Compare(LmTIME_T, kMemory, anyMinute, t1), (Cmp{0, 0}));
    EXPECT_EQ(Compare(LmTIME_T, kMemory, anyMinute, t1, 0x10), (Cmp{-21, 0}));
    EXPECT_EQ(Compare(LmTIME_T, kMemory, t2, anyMinute), (Cmp{-30, 0}));
    for (unsigned char f : {kLittle, kBig, static_cast<unsigned char>(0)}) {
        EXPECT_EQ(Compare(LmTIME_T, f, t1, t2), (Cmp{-1, 0}));
        EXPECT_EQ(Compare(LmTIME_T, f, t2, t1), (Cmp{1, 0}));
        EXPECT_EQ(Compare(LmTIME_T, f, t1, anyMinute), (Cmp{0, 0}));
        EXPECT_EQ(Compare(LmTIME_T, f, anyMinute, t1), (Cmp{-1, 0}));  // FF is -1 as first value
        EXPECT_EQ(Compare(LmTIME_T, f, t1, anyMinute, 0x10), (Cmp{1, 0}));
        EXPECT_EQ(Compare(LmTIME_T, f, t2, all), (Cmp{0, 0}));
        EXPECT_EQ(Compare(LmTIME_T, f, late, t1), (Cmp{-1, 0}));  // signed bytes
    }
    EXPECT_EQ(Compare(LmTIME_T, kLittle, t1, t2, 0, 0), (Cmp{0, 0}));
}

TEST(DateTimeHash, GoldenWordsInEveryFormat) {
    LmTypeMgr mgr;
    const LmDate dates[3] = {LmDate(2001, 2, 3), LmDate::NullValue(), LmDate(2001, -1, -1)};
    const unsigned expected[3] = {0x53ECC547u, 0x75A24980u, 0xF9E84493u};
    unsigned char disk[4];
    for (int i = 0; i < 3; ++i) {
        int status = 77;
        EXPECT_EQ(mgr.Hash(LmDATE_T, 0, const_cast<LmDate*>(dates + i), 1, kMemory, status), expected[i]);
        EXPECT_EQ(status, 0);
        for (unsigned char f : {kLittle, kBig}) {
            mgr.Store(LmDATE_T, disk, const_cast<LmDate*>(dates + i), f, 1);
            EXPECT_EQ(mgr.Hash(LmDATE_T, 0, disk, 1, f, status), expected[i]) << i << " format " << int(f);
        }
    }
    // The default date hashes by its word ED970B18.
    int status = 0;
    EXPECT_EQ(mgr.Hash(LmDATE_T, 0, const_cast<LmDate*>(&LmDate::DefaultValue()), 1, kMemory, status), 0xDB410938u);
    // XOR over the elements: order does not matter, equal elements cancel.
    const LmDate pair[2] = {LmDate(2001, 2, 3), LmDate(1970, 1, 1)}, swapped[2] = {pair[1], pair[0]};
    EXPECT_EQ(mgr.Hash(LmDATE_T, 0, const_cast<LmDate*>(pair), 2, kMemory, status), 0x2A9EE3DAu);
    EXPECT_EQ(mgr.Hash(LmDATE_T, 0, const_cast<LmDate*>(swapped), 2, kMemory, status), 0x2A9EE3DAu);
    const LmDate same[2] = {LmDate(2001, 2, 3), LmDate(2001, 2, 3)};
    EXPECT_EQ(mgr.Hash(LmDATE_T, 0, const_cast<LmDate*>(same), 2, kMemory, status), 0u);
    EXPECT_EQ(mgr.Hash(LmDATE_T, 0, const_cast<LmDate*>(pair), 0, kMemory, status), 0u);
    // A buffer shorter than the count: the elements read so far, and status 2101.
    EXPECT_EQ(mgr.Hash(LmDATE_T, 4, const_cast<LmDate*>(pair), 2, kMemory, status), 0x53ECC547u);
    EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);

    // Times: hour * 65536 + minute * 256 + second, whatever the format.
    const unsigned char times[6] = {13, 5, 9, 0, 0, 1}, null[3] = {0x80, 0x80, 0x80};
    for (unsigned char f : {kMemory, kLittle, kBig, static_cast<unsigned char>(0x47)}) {
        EXPECT_EQ(mgr.Hash(LmTIME_T, 0, const_cast<unsigned char*>(times), 1, f, status), 0x2B09E2D5u);
        EXPECT_EQ(mgr.Hash(LmTIME_T, 0, const_cast<unsigned char*>(times), 2, f, status), 0xE9439468u);
        EXPECT_EQ(mgr.Hash(LmTIME_T, 0, const_cast<unsigned char*>(null), 1, f, status), 0xBF224980u);
    }
    EXPECT_EQ(mgr.Hash(LmTIME_T, 5, const_cast<unsigned char*>(times), 3, kLittle, status), 0xE9439468u);
    EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
}

TEST_F(DateTimeType, TextByTypeId) {
    LmDate d(2001, 2, 3);
    LmTime t(13, 5, 9);
    LmString out("old");
    EXPECT_STREQ(mgr.PrintToLmString(LmDATE_T, out, &d, nullptr, 1).StrGet(), "Sat 03.Feb 2001");
    EXPECT_STREQ(mgr.PrintToLmString(LmTIME_T, out, &t, nullptr, 1).StrGet(), "01:05:09 pm");
    EXPECT_STREQ(mgr.PrintToLmString(LmDATE_T, out, &d, "%Y-%m-%d", 1).StrGet(), "2001-02-03");
    const LmDate two[2] = {LmDate(2001, 2, 3), LmDate::NullValue()};
    out = "x=";
    EXPECT_STREQ(mgr.PrintToLmString(LmDATE_T, out, const_cast<LmDate*>(two), "%Y", 2).StrGet(), "x=2001,{NULL}");
    // A slot called without a format uses the member default.
    EXPECT_STREQ(mgr.Desc(LmTIME_T)->PrintToString(out, &t, nullptr, 1).StrGet(), "13:05:09");

    LmString text("Mon 24.Dec 2012");
    EXPECT_EQ(mgr.ScanFromLmString(LmDATE_T, &d, text, nullptr, 1), &d);
    EXPECT_EQ(Fields(d), Ymd(2012, 12, 24));
    text = "11:30:00 pm";
    EXPECT_EQ(mgr.ScanFromLmString(LmTIME_T, &t, text, nullptr, 1), &t);
    EXPECT_EQ(Fields(t), Ymd(23, 30, 0));
    text = "{NULL}";
    EXPECT_EQ(mgr.ScanFromLmString(LmTIME_T, &t, text, nullptr, 1), &t);
    EXPECT_EQ(t.IsNullValue(), 1);
    text = "Mon 24.Dec";  // fails at %Y; the fields read replace the value
    EXPECT_EQ(mgr.ScanFromLmString(LmDATE_T, &d, text, nullptr, 1), nullptr);
    EXPECT_EQ(Fields(d), Ymd(0, 12, 24));
    EXPECT_EQ(mgr.Desc(LmDATE_T)->ScanFromString(nullptr, text, "%Y", 1), nullptr);
}

TEST_F(DateTimeType, ConversionsDefaultsAndNulls) {
    const LmDate dates[2] = {LmDate(1970, 1, 1), LmDate::NullValue()};
    LmTypeConvertData* w = mgr.ConvertTo(LmDATE_T, const_cast<LmDate*>(dates), 2);
    ASSERT_NE(w, nullptr);
    EXPECT_STREQ(w->GetString(0)->StrGet(), "2440588");
    EXPECT_EQ(w->GetString(1)->IsNullValue(), 1);
    auto* back = static_cast<LmDate*>(mgr.ConvertFrom(LmDATE_T, w, 3));  // the third has no string
    EXPECT_EQ(Fields(back[0]), Ymd(1970, 1, 1));
    EXPECT_EQ(back[1].IsNullValue(), 1);
    EXPECT_EQ(back[2].IsNullValue(), 1);
    mgr.Delete(LmDATE_T, back, 3);
    delete w;

    const LmTime times[1] = {LmTime(12, 34, 56)};
    w = mgr.ConvertTo(LmTIME_T, const_cast<LmTime*>(times), 1);
    EXPECT_STREQ(w->GetString(0)->StrGet(), "45296");
    *w->GetString(0) = "90000";
    auto* t = static_cast<LmTime*>(mgr.ConvertFrom(LmTIME_T, w, 1));
    EXPECT_EQ(Fields(*t), Ymd(25, 0, 0));
    mgr.Delete(LmTIME_T, t, 1);
    delete w;

    // Defaults: what an empty text converts to (absolute day 0, midnight), or null.
    auto* dd = static_cast<LmDate*>(mgr.DefaultValue(LmDATE_T, 2, 0));
    EXPECT_EQ(std::make_tuple(dd[0].IsDefaultValue(), dd[1].IsDefaultValue()), std::make_tuple(1, 1));
    mgr.Delete(LmDATE_T, dd, 2);
    dd = static_cast<LmDate*>(mgr.DefaultValue(LmDATE_T, 2, 1));
    EXPECT_EQ(std::make_tuple(dd[0].IsNullValue(), dd[1].IsNullValue()), std::make_tuple(1, 1));
    mgr.Delete(LmDATE_T, dd, 2);
    auto* td = static_cast<LmTime*>(mgr.DefaultValue(LmTIME_T, 1, 0));
    EXPECT_EQ(Fields(*td), Ymd(0, 0, 0));
    mgr.Delete(LmTIME_T, td, 1);
    td = static_cast<LmTime*>(mgr.DefaultValue(LmTIME_T, 1, 1));
    EXPECT_EQ(td->IsNullValue(), 1);
    mgr.Delete(LmTIME_T, td, 1);

    LmDate d(2001, 2, 3);
    EXPECT_EQ(mgr.IsNullValue(LmDATE_T, &d), 0);
    EXPECT_EQ(mgr.SetNullValue(LmDATE_T, &d), 0);
    EXPECT_EQ(mgr.IsNullValue(LmDATE_T, &d), 1);
    LmTime u(1, 2, 3);
    EXPECT_EQ(mgr.SetNullValue(LmTIME_T, &u), 0);
    EXPECT_EQ(mgr.IsNullValue(LmTIME_T, &u), 1);
    for (char id : {LmDATE_T, LmTIME_T}) {
        EXPECT_EQ(mgr.SupportsNullValue(id), 1);
        EXPECT_EQ(mgr.SupportsCapability(id, 3), 1);
        EXPECT_EQ(mgr.SupportsCapability(id, 2), 0);
    }
}

TEST_F(DateTimeType, GetValueStepsAndTheWrapAtMidnight) {
    LmDate d(2001, 2, 28);
    const auto slot = mgr.Desc(LmDATE_T)->GetValue;
    EXPECT_EQ(mgr.GetValue(LmDATE_T, &d, 0, kMemory, 'N'), 0);
    EXPECT_EQ(Fields(d), Ymd(2001, 3, 1));
    EXPECT_EQ(mgr.GetValue(LmDATE_T, &d, 0, kMemory, 'M'), 0);
    EXPECT_EQ(Fields(d), Ymd(2001, 3, 2));
    EXPECT_EQ(mgr.GetValue(LmDATE_T, &d, 0, kMemory, 'O'), 0);
    EXPECT_EQ(Fields(d), Ymd(2001, 9, 9));
    EXPECT_EQ(slot(&d, 0, kLittle, 'N'), LM_ERR_NOT_SUPPORTED);  // memory form only
    EXPECT_EQ(slot(&d, 0, kMemory, 'X'), LM_ERR_NOT_SUPPORTED);
    EXPECT_EQ(mgr.GetValue(LmDATE_T, &d, 0, kMemory, 2), LM_ERR_NOT_SUPPORTED);  // the member refuses mode 2
    EXPECT_EQ(slot(&d, 0, kMemory, 2), 0);
    EXPECT_EQ(d.IsNullValue(), 1);
    // The last date of a 16-bit year has no successor: the year wraps below.
    LmDate last(32767, 12, 31);
    EXPECT_EQ(mgr.GetValue(LmDATE_T, &last, 0, kMemory, 'N'), LM_ERR_NO_NEXT_VALUE);
    EXPECT_EQ(Fields(last), Ymd(32767, 12, 31));
    // On a disk image the manager loads, steps and stores with format 1.
    unsigned char disk[4] = {0xD1, 0x07, 12, 31};
    EXPECT_EQ(mgr.GetValue(LmDATE_T, disk, 4, kLittle, 'N'), 0);
    EXPECT_EQ(Of(disk, 4), (Bytes{0xD2, 0x07, 1, 1}));

    LmTime t(23, 59, 58);
    const auto tslot = mgr.Desc(LmTIME_T)->GetValue;
    EXPECT_EQ(mgr.GetValue(LmTIME_T, &t, 0, kMemory, 'N'), 0);
    EXPECT_EQ(Fields(t), Ymd(23, 59, 59));
    EXPECT_EQ(mgr.GetValue(LmTIME_T, &t, 0, kMemory, 'N'), LM_ERR_NO_NEXT_VALUE);
    EXPECT_EQ(Fields(t), Ymd(23, 59, 59));
    EXPECT_EQ(mgr.GetValue(LmTIME_T, &t, 0, kMemory, 'O'), 0);
    EXPECT_EQ(Fields(t), Ymd(3, 46, 40));
    EXPECT_EQ(tslot(&t, 0, kMemory, 2), 0);
    EXPECT_EQ(t.IsNullValue(), 1);
    EXPECT_EQ(tslot(&t, 0, kBig, 'N'), LM_ERR_NOT_SUPPORTED);
    EXPECT_EQ(tslot(&t, 0, kMemory, 'P'), LM_ERR_NOT_SUPPORTED);
}

TEST_F(DateTimeType, TimeStamps) {
    const LmDateTimeNRecord stamp{2001, 2, 3, 13, 5, 9, 123};
    unsigned char dest[8];
    std::memset(dest, 0xEE, sizeof dest);
    EXPECT_EQ(mgr.StoreTimeStamp(LmDATE_T, dest, kBig, const_cast<LmDateTimeNRecord*>(&stamp)), 4);
    EXPECT_EQ(Of(dest, 5), (Bytes{0x07, 0xD1, 0x02, 0x03, 0xEE}));
    EXPECT_EQ(mgr.StoreTimeStamp(LmTIME_T, dest, kLittle, const_cast<LmDateTimeNRecord*>(&stamp)), 3);
    EXPECT_EQ(Of(dest, 5), (Bytes{13, 5, 9, 0x03, 0xEE}));
    EXPECT_EQ(mgr.StoreTimeStamp(LmTIME_T, dest, kLittle, nullptr), LM_ERR_NOT_SUPPORTED);
}

}  // namespace
