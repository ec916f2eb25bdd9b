// The base services the type manager stands on: store and load functions, the
// memory file, configuration, assertion and memory reports, the version check and
// the clock.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <initializer_list>
#include <string>
#include <vector>

#include "lumobase.h"

namespace {

using Bytes = std::vector<uint8_t>;
using Formats = std::initializer_list<unsigned char>;

// Two elements of the given width, bytes 1, 2, 3, ... in source order, each element
// reversed if `reversed`.
Bytes Counting(unsigned width, bool reversed) {
    Bytes b(2 * width);
    for (size_t i = 0; i < b.size(); ++i) {
        b[i] = static_cast<uint8_t>(reversed ? i / width * width + width - i % width : i + 1);
    }
    return b;
}

struct AssertSeen {
    std::string message, stem;
    int line = 0, calls = 0;
} seen;

void RecordAssert(const char* message, const char* stem, int line) { seen = {message, stem, line, seen.calls + 1}; }

size_t memorySeen = 0;
void RecordMemory(size_t size) { memorySeen = size; }

std::string Moment(const bdate& d, const btime& t) {
    char text[40];
    std::snprintf(text, sizeof text, "%d-%02d-%02d %02d:%02d:%02d", d.year, d.month, d.day, t.hour, t.minute, t.second);
    return text;
}

}  // namespace

TEST(BaseStore, OnlyNibbleTwoSwaps) {
    // Two elements of each Store function, or one of each StoreOne function, whose
    // result is the step by which code walks a disk buffer.
    typedef unsigned (*StoreFunc)(void*, const void*, unsigned char, unsigned);
    const struct {
        StoreFunc store;
        unsigned width, count;
    } stores[] = {
        // clang-format off
        {CharStore, 1, 2},   {ShortStore, 2, 2}, {LongStore, 4, 2}, {O_8BStore, 8, 2},     {FloatStore, 4, 2},
        {DoubleStore, 8, 2}, {IntStore, 4, 2},   {IntLoad, 4, 2},   {UnsignedStore, 4, 2}, {UnsignedLoad, 4, 2},
        // clang-format on
        {[](void* d, const void* s, unsigned char f, unsigned) { return ShortStoreOne(d, s, f); }, 2, 1},
        {[](void* d, const void* s, unsigned char f, unsigned) { return LongStoreOne(d, s, f); }, 4, 1},
        {[](void* d, const void* s, unsigned char f, unsigned) { return O_8BStoreOne(d, s, f); }, 8, 1},
    };
    for (const auto& s : stores) {
        for (unsigned char format : Formats{0, 1, 2, 3, 8, 9, 0x0F, 0x12, 0x81, 0x82, 0xF2}) {
            Bytes dest(2 * s.width + 2, 0xCC), expected = Counting(s.width, (format & 15) == 2);
            EXPECT_EQ(s.store(dest.data(), Counting(s.width, false).data(), format, 2), s.count * s.width);
            expected.resize(s.count * s.width);
            expected.resize(dest.size(), 0xCC);
            EXPECT_EQ(dest, expected) << "width " << s.width << ", count " << s.count << ", format " << int{format};
        }
    }
    EXPECT_EQ(LongStore(nullptr, nullptr, 2, 0), 0u);
}

TEST(BaseMemFile, Seek) {
    const uint8_t data[10] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
    MemFile file(data, sizeof data);
    EXPECT_EQ(file.Length(), 10u);
    uint32_t granted = 99;
    EXPECT_EQ(file.Seek(8, MemFile::FromStart, 4, granted), data + 8);
    EXPECT_EQ(granted, 2u);  // fewer near the end
    EXPECT_EQ(file.Seek(-3, MemFile::FromEnd, 100, granted), data + 7);
    EXPECT_EQ(granted, 3u);
    EXPECT_EQ(file.Seek(3, MemFile::FromCurrent, 4, granted), data + 10);
    EXPECT_EQ(granted, 0u);  // at the end

    // Out of range: null, nothing granted, the position kept.
    EXPECT_EQ(file.Seek(-5, MemFile::FromCurrent, 1, granted), data + 5);
    for (auto [offset, origin] : {std::pair{11, MemFile::FromStart}, std::pair{-1, MemFile::FromStart},
                                  std::pair{-6, MemFile::FromCurrent}, std::pair{1, MemFile::FromEnd}}) {
        granted = 99;
        EXPECT_EQ(file.Seek(offset, origin, 1, granted), nullptr) << offset;
        EXPECT_EQ(granted, 0u);
        EXPECT_EQ(file.Position(), 5u);
    }
    MemFile empty(nullptr, 0);
    EXPECT_EQ(empty.Seek(0, MemFile::FromStart, 1, granted), nullptr);
}

TEST(BaseConfig, SetQueryRemoveClearAndTheProcessConfiguration) {
    LmConfig config;
    uint16_t value = 77;
    EXPECT_EQ(config.QueryValue("debug", "stringOverflow", value), 0);
    EXPECT_EQ(value, 77);  // left as it was
    EXPECT_EQ(config.SetValue("debug", "stringOverflow", 1), 1);
    EXPECT_EQ(config.SetValue("debug", "stringOverflow", 65535), 1);  // replaces
    EXPECT_EQ(config.QueryValue("debug", "stringOverflow", value), 1);
    EXPECT_EQ(value, 65535);
    // Names are case-sensitive, section and key both count; null or empty names are refused.
    EXPECT_EQ(config.QueryValue("Debug", "stringOverflow", value) +
                  config.QueryValue("debug", "stringoverflow", value) + config.QueryValue(nullptr, "k", value) +
                  config.SetValue(nullptr, "k", 1) + config.SetValue("s", "", 1) + config.SetValue("", "k", 1),
              0);

    EXPECT_EQ(config.SetValue("index", "oldIndexUnicodeOrder", 3), 1);
    EXPECT_EQ(config.RemoveValue("debug", "stringOverflow"), 1);
    EXPECT_EQ(config.RemoveValue("debug", "stringOverflow"), 0);
    EXPECT_EQ(config.QueryValue("index", "oldIndexUnicodeOrder", value), 1);
    EXPECT_EQ(value, 3);
    config.Clear();
    EXPECT_EQ(config.QueryValue("index", "oldIndexUnicodeOrder", value), 0);

    LmConfig* process = DefaultConfig(-1);
    ASSERT_NE(process, nullptr);
    EXPECT_EQ(DefaultConfig(-1), process);
    for (int which : {0, 1, -2, 2147483647}) EXPECT_EQ(DefaultConfig(which), nullptr) << which;
}

TEST(BaseReport, AssertAndMemoryHandlers) {
    seen = AssertSeen{};
    const LmAssertHandler original = LmSetAssertHandler(RecordAssert);
    LUMO_assert("String overflow", "lmstring", 412);
    EXPECT_EQ(seen.calls, 1);
    EXPECT_EQ(seen.message, "String overflow");
    EXPECT_EQ(seen.stem, "lmstring");
    EXPECT_EQ(seen.line, 412);
    // Null puts the default back: one line goes to stderr and the caller goes on.
    EXPECT_EQ(LmSetAssertHandler(nullptr), RecordAssert);
    testing::internal::CaptureStderr();
    LUMO_assert("format combination not supported", "lmstrdisk", 7);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "lumo assertion: format combination not supported [lmstrdisk:7]\n");
    EXPECT_EQ(seen.calls, 1);
    EXPECT_EQ(LmSetAssertHandler(nullptr), original);

    const LmMemoryHandler memoryDefault = LmSetMemoryHandler(RecordMemory);
    LmCallMemoryHandler(123456);
    EXPECT_EQ(memorySeen, 123456u);
    EXPECT_EQ(LmSetMemoryHandler(nullptr), RecordMemory);
    LmCallMemoryHandler(1);  // the default does nothing
    EXPECT_EQ(memorySeen, 123456u);
    EXPECT_EQ(LmSetMemoryHandler(nullptr), memoryDefault);
}

TEST(BaseVersion, FlagsChooseTheChecks) {
    // This base library is 14.0.1.57.0. Flag 1: equal major numbers. Flag 2: the
    // caller's minor number not above ours. Patch, build, extra and other bits do not count.
    const struct {
        unsigned major, minor;
        int flags, result;
    } cases[] = {{14, 0, 3, 0}, {15, 0, 1, -1}, {13, 0, 1, -1}, {15, 0, 2, 0}, {14, 1, 2, -1},
                 {14, 1, 1, 0}, {14, 1, 3, -1}, {13, 9, 4, 0},  {13, 0, 5, -1}};
    for (const auto& c : cases) {
        EXPECT_EQ(CheckLmVersionNumber(c.major, c.minor, 99, 99, 99, c.flags), c.result)
            << c.major << "." << c.minor << " flags " << c.flags;
    }
}

TEST(BaseClock, PinnedAndUnpinned) {
    // 1000000000 s after the epoch is 2001-09-09 01:46:40 UTC; two hours east.
    bksPinClock(1000000000, 123456789);
    bksPinTimeZone(120);
    EXPECT_EQ(bksgettimezone(), 120);
    bdate date{};
    btime time{};
    int nanos = 0;
    bksgetdate(&date);
    bksgettime(&time);
    EXPECT_EQ(Moment(date, time), "2001-09-09 03:46:40");
    EXPECT_EQ(time.zone, 7200);  // seconds east of UTC
    bksgetsystemtime(&time, &date);
    EXPECT_EQ(Moment(date, time), "2001-09-09 01:46:40");
    bksGetHiresTime(date, time, nanos);
    EXPECT_EQ(Moment(date, time) + std::to_string(nanos), "2001-09-09 03:46:40123456789");
    nanos = 0;
    bksGetHiresTimeUTC(date, time, nanos);
    EXPECT_EQ(Moment(date, time), "2001-09-09 01:46:40");
    EXPECT_EQ(nanos, 123456789);
    int64_t epochSeconds = 0;
    int millis = 0;
    bksGetEpochTime(epochSeconds, millis);
    EXPECT_EQ(std::make_pair(epochSeconds, millis), std::make_pair(int64_t{1000000000}, 123));

    // Five hours west: the local date is the day before.
    bksPinTimeZone(-300);
    bksgetdate(&date);
    bksgettime(&time);
    EXPECT_EQ(Moment(date, time), "2001-09-08 20:46:40");
    EXPECT_EQ(time.zone, -18000);
    bksPinClock(-1, 0);  // the second before the epoch
    bksgetsystemtime(&time, &date);
    EXPECT_EQ(Moment(date, time), "1969-12-31 23:59:59");
    bksPinClock(3600, 0);  // the first second of an hour
    bksgetsystemtime(&time, &date);
    EXPECT_EQ(Moment(date, time), "1970-01-01 01:00:00");
    bksPinTimeZone(LMBASE_NO_TIMEZONE);
    EXPECT_EQ(bksgettimezone(), -2171);
    bksUnpinTimeZone();

    // Unpinned, the zone follows TZ: an hour and a half east of UTC.
    const char* oldTz = std::getenv("TZ");
    const std::string saved = oldTz != nullptr ? oldTz : "";
    setenv("TZ", "XYZ-1:30", 1);
    tzset();
    EXPECT_EQ(bksgettimezone(), 90);
    bksPinClock(1000000000, 0);
    bksgetdate(&date);
    bksgettime(&time);
    EXPECT_EQ(Moment(date, time), "2001-09-09 03:16:40");
    EXPECT_EQ(time.zone, 5400);
    bksUnpinClock();
    if (oldTz != nullptr)
        setenv("TZ", saved.c_str(), 1);
    else
        unsetenv("TZ");
    tzset();
    // Unpinned, the clock follows the system.
    bksgetsystemtime(&time, &date);
    EXPECT_GE(date.year, 2024);
}
