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
using Fields = std::tuple<int, int, int>;

Bytes Of(const void* p, size_t n) {
    return Bytes(static_cast<const unsigned char*>(p), static_cast<const unsigned char*>(p) + n);
}
Fields Of(const LmDate& d) { return {d.year, d.month, d.day}; }
Fields Of(const LmTime& t) { return {t.hour, t.minute, t.second}; }

constexpr unsigned char kLittle = LmFormatLittle, kBig = LmFormatBig, kMemory = LmFormatMemory;

class DateTimeType : public ::testing::Test {
protected:
    void SetUp() override {  // 2001-09-09 01:46:40 UTC, two hours east: 03:46:40 local
        bksPinClock(1000000000, 0);
        bksPinTimeZone(120);
    }
    void TearDown() override {
        bksUnpinClock();
        bksUnpinTimeZone();
    }
    LmTypeMgr mgr;
};

// The result and the status of a comparison.
std::pair<int, int> Compare(char id, unsigned char format, const void* a, const void* b, unsigned short option = 0,
                            unsigned count = 1, unsigned len1 = 0, unsigned len2 = 0) {
    int status = 77;
    const int r =
        LmTypeMgr().Cmp(id, len1, const_cast<void*>(a), len2, const_cast<void*>(b), option, count, format, status);
    return {r, status};
}
const std::pair<int, int> kLess{-1, 0}, kEqual{0, 0}, kGreater{1, 0};

TEST_F(DateTimeType, DiskImagesInBothByteOrders) {
    LmDate dates[2] = {LmDate(2001, 2, 3), LmDate::NullValue()}, back[2] = {LmDate(0, 0, 0), LmDate(0, 0, 0)};
    unsigned char disk[8];
    EXPECT_EQ(mgr.Store(LmDATE_T, disk, dates, kLittle, 2), 8u);
    EXPECT_EQ(Of(disk, 8), (Bytes{0xD1, 0x07, 0x02, 0x03, 0x00, 0x80, 0x80, 0x80}));
    EXPECT_EQ(mgr.Load(LmDATE_T, back, disk, kLittle, 2), 8u);
    EXPECT_EQ(std::make_pair(Of(back[0]), back[1].IsNullValue()), std::make_pair(Fields(2001, 2, 3), 1));
    EXPECT_EQ(mgr.Store(LmDATE_T, disk, dates, kBig, 2), 8u);
    EXPECT_EQ(Of(disk, 8), (Bytes{0x07, 0xD1, 0x02, 0x03, 0x80, 0x00, 0x80, 0x80}));
    back[0] = LmDate(0, 0, 0);
    EXPECT_EQ(mgr.Load(LmDATE_T, back, disk, 0x12, 2), 8u);  // only the low nibble counts
    EXPECT_EQ(std::make_pair(Of(back[0]), back[1].IsNullValue()), std::make_pair(Fields(2001, 2, 3), 1));
    for (int f : {0, 1, 3, 8, 9, 0x81}) {  // every nibble but 2 puts the low byte first
        mgr.Store(LmDATE_T, disk, dates, static_cast<unsigned char>(f), 1);
        EXPECT_EQ(Of(disk, 4), (Bytes{0xD1, 0x07, 0x02, 0x03})) << f;
    }
    // A time has the same three bytes in every format.
    LmTime times[2] = {LmTime(13, 5, 9), LmTime::NullValue()}, t[2] = {LmTime(0, 0, 0), LmTime(0, 0, 0)};
    for (unsigned char f : {kLittle, kBig, kMemory}) {
        std::memset(disk, 0xEE, sizeof disk);
        EXPECT_EQ(mgr.Store(LmTIME_T, disk, times, f, 2), 6u);
        EXPECT_EQ(Of(disk, 7), (Bytes{13, 5, 9, 0x80, 0x80, 0x80, 0xEE}));
        EXPECT_EQ(mgr.Load(LmTIME_T, t, disk, f, 2), 6u);
        EXPECT_EQ(std::make_pair(Of(t[0]), t[1].IsNullValue()), std::make_pair(Fields(13, 5, 9), 1));
    }
    // A count of 0 writes and reads nothing; sizes are the element length times the count.
    std::memset(disk, 0xEE, sizeof disk);
    EXPECT_EQ(mgr.Store(LmDATE_T, disk, dates, kLittle, 0) + mgr.Load(LmTIME_T, back, disk, kLittle, 0), 0u);
    EXPECT_EQ(std::make_pair(Of(disk, 8), Of(back[0])), std::make_pair(Bytes(8, 0xEE), Fields(2001, 2, 3)));
    EXPECT_EQ(
        std::make_tuple(mgr.DiskLenGet(LmDATE_T, nullptr, kBig, 5, 0), mgr.DiskLenGet(LmTIME_T, nullptr, 1, 5, 8),
                        mgr.Desc(LmDATE_T)->NullSizeGet(3), mgr.DiskLenGetFromMemFile(LmTIME_T, nullptr, kBig, 4)),
        std::make_tuple(20u, 15u, 12u, 12u));
}

TEST_F(DateTimeType, LifeCycleAssignmentAndTranslate) {
    auto* one = static_cast<LmDate*>(mgr.Create(LmDATE_T, 1));  // the present date, not a sentinel
    EXPECT_EQ(Of(*one), Fields(2001, 9, 9));
    EXPECT_EQ(mgr.Delete(LmDATE_T, one, 1), nullptr);
    auto* three = static_cast<LmTime*>(mgr.Create(LmTIME_T, 3));
    int64_t header = 0;
    std::memcpy(&header, reinterpret_cast<unsigned char*>(three) - 8, 8);
    EXPECT_EQ(std::make_pair(header, Of(three[2])), std::make_pair(int64_t{3}, Fields(3, 46, 40)));
    LmTime src[3] = {LmTime(1, 2, 3), LmTime(4, 5, 6), LmTime(7, 8, 9)};
    mgr.AssignmentPtrGet(LmTIME_T)(three, src, 3, 1);  // broadcast: the one value to all
    EXPECT_EQ(Of(three[2]), Fields(1, 2, 3));
    mgr.CopyPtrGet(LmTIME_T)(three, src, 3, 0);
    mgr.DestructorPtrGet(LmTIME_T)(three, 3, 0);
    EXPECT_EQ(std::make_pair(Of(three[1]), Of(three[2])), std::make_pair(Fields(4, 5, 6), Fields(7, 8, 9)));
    mgr.ConstructorPtrGet(LmTIME_T)(three, 3, 0);
    EXPECT_EQ(Of(three[1]), Fields(3, 46, 40));
    EXPECT_EQ(mgr.Delete(LmTIME_T, three, 3), nullptr);  // the header decides the size
    EXPECT_EQ(mgr.Delete(LmDATE_T, nullptr, 2), nullptr);
    void* none = mgr.Create(LmDATE_T, 0);  // one value for a count of 0 too
    EXPECT_NE(none, nullptr);
    EXPECT_EQ(mgr.Delete(LmDATE_T, none, 0), nullptr);

    // Disk to disk copies min(destLen, srcLen) bytes as they are, after zeroing a
    // longer destination; memory to disk stores, disk to memory loads, memory to memory
    // assigns.
    LmDate d(2001, 2, 3), m(0, 0, 0), n(0, 0, 0);
    unsigned char disk[8], image[4] = {0xD1, 0x07, 0x02, 0x03};
    std::memset(disk, 0xEE, sizeof disk);
    EXPECT_EQ(mgr.Translate(LmDATE_T, disk, kBig, 8, image, kLittle, 4, 1), 4u);
    EXPECT_EQ(Of(disk, 8), (Bytes{0xD1, 0x07, 0x02, 0x03, 0, 0, 0, 0}));
    EXPECT_EQ(mgr.Translate(LmDATE_T, disk, kBig, 2, image, kLittle, 4, 1), 2u);
    EXPECT_EQ(mgr.Translate(LmDATE_T, disk, kBig, 0, &d, kMemory, 0, 1), 4u);
    EXPECT_EQ(Of(disk, 4), (Bytes{0x07, 0xD1, 0x02, 0x03}));
    EXPECT_EQ(mgr.Translate(LmDATE_T, &m, kMemory, 0, disk, kBig, 0, 1), 4u);
    EXPECT_EQ(mgr.Translate(LmDATE_T, &n, kMemory, 0, &m, kMemory, 0, 1), 4u);
    EXPECT_EQ(Of(n), Fields(2001, 2, 3));
    LmTime t[2] = {LmTime(0, 0, 0), LmTime(0, 0, 0)};
    unsigned char times[6] = {1, 2, 3, 4, 5, 6};
    EXPECT_EQ(mgr.Translate(LmTIME_T, t, kMemory, 0, times, kBig, 0, 2), 6u);
    EXPECT_EQ(mgr.Translate(LmTIME_T, t, kMemory, 0, t + 1, kMemory, 0, 1), 3u);
    EXPECT_EQ(Of(t[0]), Fields(4, 5, 6));
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
    EXPECT_EQ(std::make_tuple(Compare(LmDATE_T, kMemory, &a, &b), Compare(LmDATE_T, kMemory, &b, &a),
                              Compare(LmDATE_T, kMemory, &a, &anyMonth), Compare(LmDATE_T, kMemory, &anyMonth, &a),
                              Compare(LmDATE_T, kMemory, &anyMonth, &a, 0x10)),
              std::make_tuple(std::make_pair(-3, 0), std::make_pair(3, 0), kEqual, kEqual, std::make_pair(-8, 0)));
    // Disk forms: -1, 0 or 1, and only the second value's wildcards count.
    EXPECT_EQ(std::make_tuple(Compare(LmDATE_T, kLittle, db, da), Compare(LmDATE_T, kBig, ba, bb),
                              Compare(LmDATE_T, kLittle, da, dm), Compare(LmDATE_T, kLittle, dm, da),
                              Compare(LmDATE_T, kLittle, da, dm, 0x10)),
              std::make_tuple(kGreater, kLess, kEqual, kLess, kGreater));
    EXPECT_EQ(std::make_tuple(Compare(LmDATE_T, kLittle, db, dy), Compare(LmDATE_T, kLittle, dy, db),
                              Compare(LmDATE_T, kLittle, db, dy, 0x10), Compare(LmDATE_T, kLittle, da, dy)),
              std::make_tuple(kEqual, kLess, kGreater, kLess));  // year FFFF matches; then the day decides
    // Years are signed 16-bit numbers in the format's byte order; months and days signed bytes.
    const unsigned char y256[4] = {0x00, 0x01, 1, 1}, y1[4] = {0x01, 0x00, 1, 1};
    const unsigned char largest[4] = {0xFF, 0x7F, 1, 1}, minus2[4] = {0xFE, 0xFF, 1, 1};
    const unsigned char lowMonth[4] = {0, 0, 0x80, 1}, month1[4] = {0, 0, 0x01, 1};
    EXPECT_EQ(std::make_tuple(Compare(LmDATE_T, kLittle, y256, y1), Compare(LmDATE_T, kBig, y256, y1),
                              Compare(LmDATE_T, 0, y256, y1), Compare(LmDATE_T, kLittle, minus2, largest),
                              Compare(LmDATE_T, kLittle, lowMonth, month1)),
              std::make_tuple(kGreater, kLess, kGreater, kLess, kLess));
    // Arrays: the first difference, and status 2101 when an operand runs out.
    const unsigned char two[8] = {0xD1, 0x07, 2, 3, 0xD1, 0x07, 2, 4}, other[8] = {0xD1, 0x07, 2, 3, 0xD1, 0x07, 2, 5};
    EXPECT_EQ(std::make_tuple(Compare(LmDATE_T, kLittle, two, other, 0, 2),
                              Compare(LmDATE_T, kLittle, two, other, 0, 2, 4, 8),
                              Compare(LmDATE_T, kLittle, two, other, 0, 0)),
              std::make_tuple(kLess, std::make_pair(0, LM_ERR_OUT_OF_DATA), kEqual));
}

TEST(DateTimeCompare, TimesInMemoryAndOnDisk) {
    const unsigned char t1[3] = {10, 20, 30}, t2[3] = {10, 21, 0}, anyMinute[3] = {10, 0xFF, 30};
    const unsigned char all[3] = {0xFF, 0xFF, 0xFF}, late[3] = {0x80, 0, 0};
    EXPECT_EQ(
        std::make_tuple(Compare(LmTIME_T, kMemory, t1, t2), Compare(LmTIME_T, kMemory, anyMinute, t1),
                        Compare(LmTIME_T, kMemory, anyMinute, t1, 0x10), Compare(LmTIME_T, kMemory, t2, anyMinute)),
        std::make_tuple(kLess, kEqual, std::make_pair(-21, 0), std::make_pair(-30, 0)));
    for (unsigned char f : {kLittle, kBig, static_cast<unsigned char>(0)}) {
        EXPECT_EQ(std::make_tuple(Compare(LmTIME_T, f, t1, t2), Compare(LmTIME_T, f, t2, t1),
                                  Compare(LmTIME_T, f, t1, anyMinute), Compare(LmTIME_T, f, anyMinute, t1),
                                  Compare(LmTIME_T, f, t1, anyMinute, 0x10), Compare(LmTIME_T, f, t2, all),
                                  Compare(LmTIME_T, f, late, t1)),
                  std::make_tuple(kLess, kGreater, kEqual, kLess, kGreater, kEqual, kLess));
    }
}

TEST(DateTimeHash, GoldenWordsInEveryFormat) {
    LmTypeMgr mgr;
    LmDate dates[3] = {LmDate(2001, 2, 3), LmDate::NullValue(), LmDate(2001, -1, -1)};
    const unsigned expected[3] = {0x53ECC547u, 0x75A24980u, 0xF9E84493u};  // words 07D10203, 7FFF7F80, 07D0FEFF
    unsigned char disk[4];
    int status = 77;
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(mgr.Hash(LmDATE_T, 0, dates + i, 1, kMemory, status), expected[i]);
        for (unsigned char f : {kLittle, kBig}) {
            mgr.Store(LmDATE_T, disk, dates + i, f, 1);
            EXPECT_EQ(mgr.Hash(LmDATE_T, 0, disk, 1, f, status), expected[i]) << i << " format " << int(f);
        }
    }
    EXPECT_EQ(status, 0);
    EXPECT_EQ(mgr.Hash(LmDATE_T, 0, const_cast<LmDate*>(&LmDate::DefaultValue()), 1, kMemory, status), 0xDB410938u);
    // XOR over the elements: order does not matter, equal elements cancel.
    LmDate pair[2] = {LmDate(2001, 2, 3), LmDate(1970, 1, 1)}, swapped[2] = {pair[1], pair[0]};
    LmDate same[2] = {pair[0], pair[0]};
    EXPECT_EQ(std::make_tuple(
                  mgr.Hash(LmDATE_T, 0, pair, 2, kMemory, status), mgr.Hash(LmDATE_T, 0, swapped, 2, kMemory, status),
                  mgr.Hash(LmDATE_T, 0, same, 2, kMemory, status), mgr.Hash(LmDATE_T, 0, pair, 0, kMemory, status)),
              std::make_tuple(0x2A9EE3DAu, 0x2A9EE3DAu, 0u, 0u));
    // A buffer shorter than the count: the elements read so far, and status 2101.
    EXPECT_EQ(mgr.Hash(LmDATE_T, 4, pair, 2, kMemory, status), 0x53ECC547u);
    EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
    // Times: hour * 65536 + minute * 256 + second, whatever the format.
    unsigned char times[6] = {13, 5, 9, 0, 0, 1}, null[3] = {0x80, 0x80, 0x80};
    for (unsigned char f : {kMemory, kLittle, kBig, static_cast<unsigned char>(0x47)}) {
        EXPECT_EQ(
            std::make_tuple(mgr.Hash(LmTIME_T, 0, times, 1, f, status), mgr.Hash(LmTIME_T, 0, times, 2, f, status),
                            mgr.Hash(LmTIME_T, 0, null, 1, f, status)),
            std::make_tuple(0x2B09E2D5u, 0xE9439468u, 0xBF224980u));
    }
    EXPECT_EQ(mgr.Hash(LmTIME_T, 5, times, 3, kLittle, status), 0xE9439468u);
    EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
}

TEST_F(DateTimeType, TextByTypeId) {
    LmDate d(2001, 2, 3);
    LmTime t(13, 5, 9);
    LmString out("old");
    EXPECT_STREQ(mgr.PrintToLmString(LmDATE_T, out, &d, nullptr, 1).StrGet(), "Sat 03.Feb 2001");
    EXPECT_STREQ(mgr.PrintToLmString(LmTIME_T, out, &t, nullptr, 1).StrGet(), "01:05:09 pm");
    LmDate two[2] = {LmDate(2001, 2, 3), LmDate::NullValue()};
    out = "x=";
    EXPECT_STREQ(mgr.PrintToLmString(LmDATE_T, out, two, "%Y", 2).StrGet(), "x=2001,{NULL}");
    // A slot called without a format uses the member default.
    EXPECT_STREQ(mgr.Desc(LmTIME_T)->PrintToString(out, &t, nullptr, 1).StrGet(), "13:05:09");
    LmString text("Mon 24.Dec 2012");
    EXPECT_EQ(mgr.ScanFromLmString(LmDATE_T, &d, text, nullptr, 1), &d);
    EXPECT_EQ(Of(d), Fields(2012, 12, 24));
    text = "11:30:00 pm";
    EXPECT_EQ(mgr.ScanFromLmString(LmTIME_T, &t, text, nullptr, 1), &t);
    EXPECT_EQ(Of(t), Fields(23, 30, 0));
    text = "{NULL}";
    EXPECT_EQ(mgr.ScanFromLmString(LmTIME_T, &t, text, nullptr, 1), &t);
    EXPECT_EQ(t.IsNullValue(), 1);
    text = "Mon 24.Dec";  // fails at %Y; the fields read replace the value
    EXPECT_EQ(mgr.ScanFromLmString(LmDATE_T, &d, text, nullptr, 1), nullptr);
    EXPECT_EQ(Of(d), Fields(0, 12, 24));
    EXPECT_EQ(mgr.Desc(LmDATE_T)->ScanFromString(nullptr, text, "%Y", 1), nullptr);
}

TEST_F(DateTimeType, ConversionsDefaultsNullsStepsAndStamps) {
    LmDate dates[2] = {LmDate(1970, 1, 1), LmDate::NullValue()};
    LmTypeConvertData* w = mgr.ConvertTo(LmDATE_T, dates, 2);
    EXPECT_EQ(std::make_pair(std::string(w->GetString(0)->StrGet()), w->GetString(1)->IsNullValue()),
              std::make_pair(std::string("2440588"), 1));
    auto* back = static_cast<LmDate*>(mgr.ConvertFrom(LmDATE_T, w, 3));  // the third has no string
    EXPECT_EQ(std::make_tuple(Of(back[0]), back[1].IsNullValue(), back[2].IsNullValue()),
              std::make_tuple(Fields(1970, 1, 1), 1, 1));
    mgr.Delete(LmDATE_T, back, 3);
    delete w;
    LmTime times[1] = {LmTime(12, 34, 56)};
    w = mgr.ConvertTo(LmTIME_T, times, 1);
    EXPECT_STREQ(w->GetString(0)->StrGet(), "45296");
    *w->GetString(0) = "90000";
    auto* t = static_cast<LmTime*>(mgr.ConvertFrom(LmTIME_T, w, 1));
    EXPECT_EQ(Of(*t), Fields(25, 0, 0));
    mgr.Delete(LmTIME_T, t, 1);
    delete w;
    // Defaults: what an empty text converts to (absolute day 0, midnight), or null.
    auto* dd = static_cast<LmDate*>(mgr.DefaultValue(LmDATE_T, 2, 0));
    auto* dn = static_cast<LmDate*>(mgr.DefaultValue(LmDATE_T, 2, 1));
    auto* td = static_cast<LmTime*>(mgr.DefaultValue(LmTIME_T, 1, 0));
    auto* tn = static_cast<LmTime*>(mgr.DefaultValue(LmTIME_T, 1, 1));
    EXPECT_EQ(std::make_tuple(dd[1].IsDefaultValue(), dn[1].IsNullValue(), Of(*td), tn->IsNullValue()),
              std::make_tuple(1, 1, Fields(0, 0, 0), 1));
    mgr.Delete(LmDATE_T, dd, 2);
    mgr.Delete(LmDATE_T, dn, 2);
    mgr.Delete(LmTIME_T, td, 1);
    mgr.Delete(LmTIME_T, tn, 1);
    LmDate d(2001, 2, 3);
    LmTime u(1, 2, 3);
    EXPECT_EQ(std::make_pair(mgr.SetNullValue(LmDATE_T, &d), mgr.SetNullValue(LmTIME_T, &u)), std::make_pair(0, 0));
    EXPECT_EQ(std::make_pair(mgr.IsNullValue(LmDATE_T, &d), mgr.IsNullValue(LmTIME_T, &u)), std::make_pair(1, 1));
    for (char id : {LmDATE_T, LmTIME_T}) {
        EXPECT_EQ(
            std::make_tuple(mgr.SupportsNullValue(id), mgr.SupportsCapability(id, 3), mgr.SupportsCapability(id, 2)),
            std::make_tuple(1, 1, 0));
    }

    // Stepping: a day or a second; 'O' is the present; the wrap has no successor.
    const LmTypeGetValueFunc dateSlot = mgr.Desc(LmDATE_T)->GetValue, timeSlot = mgr.Desc(LmTIME_T)->GetValue;
    d = LmDate(2001, 2, 28);
    EXPECT_EQ(mgr.GetValue(LmDATE_T, &d, 0, kMemory, 'N'), 0);
    EXPECT_EQ(mgr.GetValue(LmDATE_T, &d, 0, kMemory, 'M'), 0);
    EXPECT_EQ(Of(d), Fields(2001, 3, 2));
    EXPECT_EQ(mgr.GetValue(LmDATE_T, &d, 0, kMemory, 'O'), 0);
    EXPECT_EQ(Of(d), Fields(2001, 9, 9));
    EXPECT_EQ(std::make_tuple(dateSlot(&d, 0, kLittle, 'N'), dateSlot(&d, 0, kMemory, 'X'),
                              mgr.GetValue(LmDATE_T, &d, 0, kMemory, 2), Of(d)),
              std::make_tuple(LM_ERR_NOT_SUPPORTED, LM_ERR_NOT_SUPPORTED, LM_ERR_NOT_SUPPORTED, Fields(2001, 9, 9)));
    EXPECT_EQ(dateSlot(&d, 0, kMemory, 2), 0);
    EXPECT_EQ(d.IsNullValue(), 1);
    d = LmDate(32767, 12, 31);  // the year wraps below: no successor
    EXPECT_EQ(mgr.GetValue(LmDATE_T, &d, 0, kMemory, 'N'), LM_ERR_NO_NEXT_VALUE);
    EXPECT_EQ(Of(d), Fields(32767, 12, 31));
    unsigned char disk[4] = {0xD1, 0x07, 12, 31};  // on a disk image: load, step, store
    EXPECT_EQ(mgr.GetValue(LmDATE_T, disk, 4, kLittle, 'N'), 0);
    EXPECT_EQ(Of(disk, 4), (Bytes{0xD2, 0x07, 1, 1}));
    u = LmTime(23, 59, 58);
    EXPECT_EQ(mgr.GetValue(LmTIME_T, &u, 0, kMemory, 'N'), 0);
    EXPECT_EQ(mgr.GetValue(LmTIME_T, &u, 0, kMemory, 'N'), LM_ERR_NO_NEXT_VALUE);
    EXPECT_EQ(Of(u), Fields(23, 59, 59));
    EXPECT_EQ(mgr.GetValue(LmTIME_T, &u, 0, kMemory, 'O'), 0);
    EXPECT_EQ(Of(u), Fields(3, 46, 40));
    EXPECT_EQ(std::make_pair(timeSlot(&u, 0, kBig, 'N'), timeSlot(&u, 0, kMemory, 'P')),
              std::make_pair(LM_ERR_NOT_SUPPORTED, LM_ERR_NOT_SUPPORTED));
    EXPECT_EQ(timeSlot(&u, 0, kMemory, 2), 0);
    EXPECT_EQ(u.IsNullValue(), 1);

    // Time stamps: the date from the leading fields, the time from the hour field on.
    LmDateTimeNRecord stamp{2001, 2, 3, 13, 5, 9, 123};
    unsigned char dest[8];
    std::memset(dest, 0xEE, sizeof dest);
    EXPECT_EQ(mgr.StoreTimeStamp(LmDATE_T, dest, kBig, &stamp), 4);
    EXPECT_EQ(Of(dest, 5), (Bytes{0x07, 0xD1, 0x02, 0x03, 0xEE}));
    EXPECT_EQ(mgr.StoreTimeStamp(LmTIME_T, dest, kLittle, &stamp), 3);
    EXPECT_EQ(Of(dest, 5), (Bytes{13, 5, 9, 0x03, 0xEE}));
    EXPECT_EQ(mgr.StoreTimeStamp(LmTIME_T, dest, kLittle, nullptr), LM_ERR_NOT_SUPPORTED);
}

}  // namespace
