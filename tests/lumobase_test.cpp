// The base services the type manager stands on: store, load and size functions,
// the memory file, configuration, assertion and memory reports, the version
// check and the clock.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <initializer_list>
#include <string>
#include <vector>

#include "lumobase.h"

namespace {

using Bytes = std::vector<uint8_t>;
using Formats = std::initializer_list<unsigned char>;

typedef unsigned (*StoreFunc)(void*, const void*, unsigned char, unsigned);
typedef unsigned (*StoreOneFunc)(void*, const void*, unsigned char);
typedef unsigned (*SizeFunc)(const void*, unsigned char, unsigned char, unsigned);
typedef unsigned (*NullSizeFunc)(unsigned);

struct StoreCase {
    const char* name;
    StoreFunc store;
    unsigned width;
};

const StoreCase kStores[] = {
    {"CharStore", CharStore, 1},         {"ShortStore", ShortStore, 2},       {"LongStore", LongStore, 4},
    {"O_8BStore", O_8BStore, 8},         {"FloatStore", FloatStore, 4},       {"DoubleStore", DoubleStore, 8},
    {"IntStore", IntStore, 4},           {"IntLoad", IntLoad, 4},             {"UnsignedStore", UnsignedStore, 4},
    {"UnsignedLoad", UnsignedLoad, 4},
};

// Two elements of the given width: bytes 0x01, 0x02, ... in source order, and
// the same with each element reversed.
Bytes Counting(unsigned width) {
    Bytes b(2 * width);
    for (size_t i = 0; i < b.size(); ++i) b[i] = static_cast<uint8_t>(i + 1);
    return b;
}

Bytes Reversed(unsigned width) {
    Bytes b = Counting(width);
    for (size_t at = 0; at < b.size(); at += width) {
        for (unsigned i = 0; i < width / 2; ++i) std::swap(b[at + i], b[at + width - 1 - i]);
    }
    return b;
}

struct AssertSeen {
    std::string message;
    std::string stem;
    int line = 0;
    int calls = 0;
};
AssertSeen seen;

void RecordAssert(const char* message, const char* stem, int line) {
    seen.message = message;
    seen.stem = stem;
    seen.line = line;
    ++seen.calls;
}

size_t memorySeen = 0;
void RecordMemory(size_t size) { memorySeen = size; }

// Sets TZ for the life of the object and puts the old value back afterwards.
class ZoneEnv {
public:
    explicit ZoneEnv(const char* tz) {
        const char* old = std::getenv("TZ");
        hadOld_ = old != nullptr;
        if (hadOld_) old_ = old;
        setenv("TZ", tz, 1);
        tzset();
    }
    ~ZoneEnv() {
        if (hadOld_) setenv("TZ", old_.c_str(), 1);
        else unsetenv("TZ");
        tzset();
    }
    ZoneEnv(const ZoneEnv&) = delete;
    ZoneEnv& operator=(const ZoneEnv&) = delete;

private:
    bool hadOld_ = false;
    std::string old_;
};

void ExpectDate(const bdate& d, int year, int month, int day) {
    EXPECT_EQ(d.year, year);
    EXPECT_EQ(d.month, month);
    EXPECT_EQ(d.day, day);
}

void ExpectTime(const btime& t, int hour, int minute, int second) {
    EXPECT_EQ(t.hour, hour);
    EXPECT_EQ(t.minute, minute);
    EXPECT_EQ(t.second, second);
}

}  // namespace

TEST(BaseStore, OnlyNibbleTwoSwaps) {
    for (const StoreCase& s : kStores) {
        SCOPED_TRACE(s.name);
        const Bytes src = Counting(s.width);
        for (unsigned char format : Formats{0, 1, 3, 8, 9, 0x0F, 0x81, 0x12, 0x82, 0xF2, 2}) {
            Bytes dest(src.size() + 2, 0xCC);
            EXPECT_EQ(s.store(dest.data(), src.data(), format, 2), 2 * s.width) << static_cast<int>(format);
            const Bytes expected = (format & 15) == 2 ? Reversed(s.width) : src;
            EXPECT_EQ(Bytes(dest.begin(), dest.begin() + 2 * s.width), expected) << static_cast<int>(format);
            EXPECT_EQ(dest[2 * s.width], 0xCC);
            EXPECT_EQ(dest[2 * s.width + 1], 0xCC);
        }
        EXPECT_EQ(s.store(nullptr, nullptr, 2, 0), 0u);
    }

    // The disk form of int and unsigned is 4 bytes; Store and Load agree.
    const int32_t value = -2;
    uint8_t disk[4];
    EXPECT_EQ(IntStore(disk, &value, 2, 1), 4u);
    EXPECT_EQ(Bytes(disk, disk + 4), (Bytes{0xFF, 0xFF, 0xFF, 0xFE}));
    int32_t back = 0;
    EXPECT_EQ(IntLoad(&back, disk, 2, 1), 4u);
    EXPECT_EQ(back, -2);
    EXPECT_EQ(IntSizeGet(nullptr, 8, 2, 1), 4u);
    EXPECT_EQ(IntSizeGet(nullptr, 8, 1, 1), 4u);
}

TEST(BaseStore, StoreOneSteps) {
    const struct {
        StoreOneFunc one;
        unsigned width;
    } cases[] = {{ShortStoreOne, 2}, {LongStoreOne, 4}, {O_8BStoreOne, 8}};
    for (const auto& c : cases) {
        const Bytes src = Counting(c.width);
        for (unsigned char format : Formats{0, 1, 2, 3, 8, 0x82}) {
            Bytes dest(c.width + 1, 0xCC);
            EXPECT_EQ(c.one(dest.data(), src.data(), format), c.width);
            const Bytes all = (format & 15) == 2 ? Reversed(c.width) : src;
            EXPECT_EQ(Bytes(dest.begin(), dest.begin() + c.width), Bytes(all.begin(), all.begin() + c.width));
            EXPECT_EQ(dest[c.width], 0xCC);  // one element only
        }
    }
}

TEST(BaseStore, Sizes) {
    const struct {
        SizeFunc size;
        NullSizeFunc nullSize;
        unsigned width;
    } cases[] = {
        {CharSizeGet, CharNullSizeGet, 1},   {ShortSizeGet, ShortNullSizeGet, 2},
        {LongSizeGet, LongNullSizeGet, 4},   {IntSizeGet, IntNullSizeGet, 4},
        {FloatSizeGet, FloatNullSizeGet, 4}, {DoubleSizeGet, DoubleNullSizeGet, 8},
        {O_8BSizeGet, O_8BNullSizeGet, 8},
    };
    const uint8_t data[64] = {};
    for (const auto& c : cases) {
        for (unsigned count : {0u, 1u, 5u, 100000u}) {
            EXPECT_EQ(c.nullSize(count), count * c.width);
            for (unsigned char format : Formats{1, 2, 8}) {
                EXPECT_EQ(c.size(nullptr, 8, format, count), count * c.width);
                EXPECT_EQ(c.size(data, 1, format, count), count * c.width);
            }
        }
    }
}

TEST(BaseMemFile, Seek) {
    const uint8_t data[10] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
    MemFile file(data, sizeof data);
    EXPECT_EQ(file.Length(), 10u);
    EXPECT_EQ(file.Position(), 0u);
    uint32_t granted = 99;

    EXPECT_EQ(file.Seek(0, MemFile::FromStart, 4, granted), data);
    EXPECT_EQ(granted, 4u);
    EXPECT_EQ(file.Seek(8, MemFile::FromStart, 4, granted), data + 8);
    EXPECT_EQ(granted, 2u);  // fewer near the end
    EXPECT_EQ(file.Position(), 8u);
    EXPECT_EQ(file.Seek(1, MemFile::FromCurrent, 1, granted), data + 9);
    EXPECT_EQ(granted, 1u);
    EXPECT_EQ(file.Seek(-3, MemFile::FromEnd, 100, granted), data + 7);
    EXPECT_EQ(granted, 3u);
    EXPECT_EQ(file.Seek(0, MemFile::FromEnd, 4, granted), data + 10);
    EXPECT_EQ(granted, 0u);  // at the end
    EXPECT_EQ(file.Position(), 10u);
    EXPECT_EQ(file.Seek(-10, MemFile::FromCurrent, 0, granted), data);
    EXPECT_EQ(granted, 0u);

    // Out of range: null, nothing granted, the position kept.
    EXPECT_EQ(file.Seek(5, MemFile::FromStart, 1, granted), data + 5);
    granted = 99;
    EXPECT_EQ(file.Seek(11, MemFile::FromStart, 1, granted), nullptr);
    EXPECT_EQ(granted, 0u);
    EXPECT_EQ(file.Position(), 5u);
    granted = 99;
    EXPECT_EQ(file.Seek(-1, MemFile::FromStart, 1, granted), nullptr);
    EXPECT_EQ(granted, 0u);
    EXPECT_EQ(file.Seek(-6, MemFile::FromCurrent, 1, granted), nullptr);
    EXPECT_EQ(file.Seek(1, MemFile::FromEnd, 1, granted), nullptr);
    EXPECT_EQ(file.Position(), 5u);

    MemFile empty(nullptr, 0);
    granted = 99;
    EXPECT_EQ(empty.Seek(0, MemFile::FromStart, 1, granted), nullptr);
    EXPECT_EQ(granted, 0u);
}

TEST(BaseConfig, SetQueryRemoveClear) {
    LmConfig config;
    uint16_t value = 77;
    EXPECT_EQ(config.QueryValue("debug", "stringOverflow", value), 0);
    EXPECT_EQ(value, 77);  // left as it was

    EXPECT_EQ(config.SetValue("debug", "stringOverflow", 1), 1);
    EXPECT_EQ(config.QueryValue("debug", "stringOverflow", value), 1);
    EXPECT_EQ(value, 1);
    EXPECT_EQ(config.SetValue("debug", "stringOverflow", 65535), 1);  // replaced
    EXPECT_EQ(config.QueryValue("debug", "stringOverflow", value), 1);
    EXPECT_EQ(value, 65535);

    // Names are case-sensitive, and section and key both count.
    value = 5;
    EXPECT_EQ(config.QueryValue("Debug", "stringOverflow", value), 0);
    EXPECT_EQ(config.QueryValue("debug", "stringoverflow", value), 0);
    EXPECT_EQ(config.QueryValue("other", "stringOverflow", value), 0);
    EXPECT_EQ(value, 5);

    // Null or empty names are refused.
    EXPECT_EQ(config.SetValue(nullptr, "k", 1), 0);
    EXPECT_EQ(config.SetValue("s", nullptr, 1), 0);
    EXPECT_EQ(config.SetValue("", "k", 1), 0);
    EXPECT_EQ(config.SetValue("s", "", 1), 0);
    EXPECT_EQ(config.QueryValue(nullptr, "k", value), 0);
    EXPECT_EQ(config.QueryValue("s", "", value), 0);

    EXPECT_EQ(config.SetValue("index", "oldIndexUnicodeOrder", 3), 1);
    EXPECT_EQ(config.RemoveValue("debug", "stringOverflow"), 1);
    EXPECT_EQ(config.RemoveValue("debug", "stringOverflow"), 0);
    EXPECT_EQ(config.QueryValue("debug", "stringOverflow", value), 0);
    EXPECT_EQ(config.QueryValue("index", "oldIndexUnicodeOrder", value), 1);
    EXPECT_EQ(value, 3);
    EXPECT_EQ(config.RemoveValue(nullptr, "x"), 0);

    config.Clear();
    EXPECT_EQ(config.QueryValue("index", "oldIndexUnicodeOrder", value), 0);
    EXPECT_EQ(config.SetValue("index", "oldIndexUnicodeOrder", 4), 1);  // usable after a clear
    EXPECT_EQ(config.QueryValue("index", "oldIndexUnicodeOrder", value), 1);
    EXPECT_EQ(value, 4);
}

TEST(BaseConfig, DefaultConfigIsTheOneProcessConfiguration) {
    LmConfig* process = DefaultConfig(-1);
    ASSERT_NE(process, nullptr);
    EXPECT_EQ(DefaultConfig(-1), process);
    for (int which : {0, 1, -2, 2147483647}) EXPECT_EQ(DefaultConfig(which), nullptr) << which;

    EXPECT_EQ(process->SetValue("debug", "stringOverflow", 1), 1);
    uint16_t value = 0;
    EXPECT_EQ(DefaultConfig(-1)->QueryValue("debug", "stringOverflow", value), 1);
    EXPECT_EQ(value, 1);
    EXPECT_EQ(process->RemoveValue("debug", "stringOverflow"), 1);
}

TEST(BaseReport, AssertReachesTheInstalledHandler) {
    seen = AssertSeen{};
    const LmAssertHandler original = LmSetAssertHandler(RecordAssert);
    ASSERT_NE(original, nullptr);
    LUMO_assert("String overflow", "lmstring", 412);
    EXPECT_EQ(seen.calls, 1);
    EXPECT_EQ(seen.message, "String overflow");
    EXPECT_EQ(seen.stem, "lmstring");
    EXPECT_EQ(seen.line, 412);

    // Null puts the default back: the caller goes on, one line goes to stderr.
    EXPECT_EQ(LmSetAssertHandler(nullptr), RecordAssert);
    testing::internal::CaptureStderr();
    LUMO_assert("format combination not supported", "lmstrdisk", 7);
    const std::string err = testing::internal::GetCapturedStderr();
    EXPECT_EQ(err, "lumo assertion: format combination not supported [lmstrdisk:7]\n");
    EXPECT_EQ(seen.calls, 1);
    EXPECT_EQ(LmSetAssertHandler(nullptr), original);
}

TEST(BaseReport, MemoryHandler) {
    memorySeen = 0;
    const LmMemoryHandler original = LmSetMemoryHandler(RecordMemory);
    ASSERT_NE(original, nullptr);
    LmCallMemoryHandler(123456);
    EXPECT_EQ(memorySeen, 123456u);
    EXPECT_EQ(LmSetMemoryHandler(nullptr), RecordMemory);
    // The default does nothing, and the caller goes on.
    LmCallMemoryHandler(1);
    EXPECT_EQ(memorySeen, 123456u);
    EXPECT_EQ(LmSetMemoryHandler(nullptr), original);
}

TEST(BaseVersion, FlagsChooseTheChecks) {
    // This base library is 14.0.1.57.0.
    EXPECT_EQ(CheckLmVersionNumber(14, 0, 1, 57, 0, 3), 0);
    EXPECT_EQ(CheckLmVersionNumber(14, 0, 99, 99, 99, 3), 0);  // patch, build and extra are not compared
    // Flag 1: equal major numbers.
    EXPECT_EQ(CheckLmVersionNumber(15, 0, 1, 57, 0, 1), -1);
    EXPECT_EQ(CheckLmVersionNumber(13, 0, 1, 57, 0, 1), -1);
    EXPECT_EQ(CheckLmVersionNumber(15, 0, 1, 57, 0, 0), 0);
    EXPECT_EQ(CheckLmVersionNumber(15, 0, 1, 57, 0, 2), 0);
    // Flag 2: the caller's minor number not above ours.
    EXPECT_EQ(CheckLmVersionNumber(14, 1, 1, 57, 0, 2), -1);
    EXPECT_EQ(CheckLmVersionNumber(14, 1, 1, 57, 0, 1), 0);
    EXPECT_EQ(CheckLmVersionNumber(14, 1, 1, 57, 0, 3), -1);
    // Other bits are ignored.
    EXPECT_EQ(CheckLmVersionNumber(13, 9, 0, 0, 0, 4), 0);
    EXPECT_EQ(CheckLmVersionNumber(13, 0, 0, 0, 0, 4 | 1), -1);
}

TEST(BaseClock, PinnedClockAndZone) {
    // 1000000000 s after the epoch is 2001-09-09 01:46:40 UTC.
    bksPinClock(1000000000, 123456789);
    bksPinTimeZone(120);

    EXPECT_EQ(bksgettimezone(), 120);
    bdate date{};
    btime time{};
    bksgetdate(&date);
    ExpectDate(date, 2001, 9, 9);
    time.zone = 1;
    bksgettime(&time);
    ExpectTime(time, 3, 46, 40);
    EXPECT_EQ(time.zone, 7200);  // seconds east of UTC

    date = bdate{};
    time = btime{};
    bksgetsystemtime(&time, &date);
    ExpectDate(date, 2001, 9, 9);
    ExpectTime(time, 1, 46, 40);

    int nanos = 0;
    date = bdate{};
    time = btime{};
    bksGetHiresTime(date, time, nanos);
    ExpectDate(date, 2001, 9, 9);
    ExpectTime(time, 3, 46, 40);
    EXPECT_EQ(nanos, 123456789);
    nanos = 0;
    bksGetHiresTimeUTC(date, time, nanos);
    ExpectDate(date, 2001, 9, 9);
    ExpectTime(time, 1, 46, 40);
    EXPECT_EQ(nanos, 123456789);

    // Five hours west: the local date is the day before.
    bksPinTimeZone(-300);
    EXPECT_EQ(bksgettimezone(), -300);
    bksgetdate(&date);
    ExpectDate(date, 2001, 9, 8);
    bksgettime(&time);
    ExpectTime(time, 20, 46, 40);
    EXPECT_EQ(time.zone, -18000);

    // A leap day, and the second before the epoch.
    bksPinTimeZone(0);
    bksPinClock(951782400 + 86399, 0);  // 2000-02-29 23:59:59
    bksgetsystemtime(&time, &date);
    ExpectDate(date, 2000, 2, 29);
    ExpectTime(time, 23, 59, 59);
    bksPinClock(-1, 0);
    bksgetsystemtime(&time, &date);
    ExpectDate(date, 1969, 12, 31);
    ExpectTime(time, 23, 59, 59);

    // A zone that cannot be told.
    bksPinTimeZone(LMBASE_NO_TIMEZONE);
    EXPECT_EQ(bksgettimezone(), -2171);

    bksUnpinTimeZone();
    bksUnpinClock();
}

TEST(BaseClock, UnpinnedFollowsTheSystem) {
    {
        // An hour and a half east of UTC.
        const ZoneEnv zone("XYZ-1:30");
        EXPECT_EQ(bksgettimezone(), 90);
        bksPinClock(1000000000, 0);
        bdate date{};
        btime time{};
        bksgettime(&time);
        ExpectTime(time, 3, 16, 40);
        EXPECT_EQ(time.zone, 5400);
        bksgetdate(&date);
        ExpectDate(date, 2001, 9, 9);
        bksUnpinClock();
    }
    bdate date{};
    btime time{};
    bksgetsystemtime(&time, &date);
    EXPECT_GE(date.year, 2024);
    EXPECT_GE(date.month, 1);
    EXPECT_LE(date.month, 12);
    EXPECT_LE(time.hour, 23);
}
