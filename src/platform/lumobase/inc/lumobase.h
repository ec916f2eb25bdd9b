// lumobase: the base services the type manager stands on. Per-primitive store, load
// and size functions, a memory file, configuration, assertion and memory-failure
// reporting, the version check, and the clock and time-zone functions.
#ifndef LUMOBASE_H
#define LUMOBASE_H

#include <cstddef>
#include <cstdint>

#define LMBASE_EXPORT __attribute__((visibility("default")))

// ---------------------------------------------------------------------------
// Per-primitive store, load and size functions.
//
// A store format is one byte; only its low nibble matters here. Nibble 2 is disk
// form most significant byte first and is the only value that swaps bytes: every
// other nibble (1, 8, and the unused ones) moves bytes as they stand, which on
// this little-endian platform is least significant byte first.
//
// Each Store function copies `count` elements from src to dest and returns the
// bytes moved. A byte swap is its own inverse, so the same function also loads.
// ---------------------------------------------------------------------------
LMBASE_EXPORT unsigned CharStore(void* dest, const void* src, unsigned char format, unsigned count);
LMBASE_EXPORT unsigned ShortStore(void* dest, const void* src, unsigned char format, unsigned count);
LMBASE_EXPORT unsigned LongStore(void* dest, const void* src, unsigned char format, unsigned count);
LMBASE_EXPORT unsigned O_8BStore(void* dest, const void* src, unsigned char format, unsigned count);
LMBASE_EXPORT unsigned FloatStore(void* dest, const void* src, unsigned char format, unsigned count);
LMBASE_EXPORT unsigned DoubleStore(void* dest, const void* src, unsigned char format, unsigned count);

// `int` and `unsigned` are the only primitives whose disk width callers must not
// assume: they ask IntSizeGet. Here the disk form is 4 bytes in either order.
LMBASE_EXPORT unsigned IntStore(void* dest, const void* src, unsigned char format, unsigned count);
LMBASE_EXPORT unsigned IntLoad(void* dest, const void* src, unsigned char format, unsigned count);
LMBASE_EXPORT unsigned UnsignedStore(void* dest, const void* src, unsigned char format, unsigned count);
LMBASE_EXPORT unsigned UnsignedLoad(void* dest, const void* src, unsigned char format, unsigned count);

// One element; the result (2, 4 or 8) is the step a caller walks a disk buffer by.
LMBASE_EXPORT unsigned ShortStoreOne(void* dest, const void* src, unsigned char format);
LMBASE_EXPORT unsigned LongStoreOne(void* dest, const void* src, unsigned char format);
LMBASE_EXPORT unsigned O_8BStoreOne(void* dest, const void* src, unsigned char format);

// Disk size of `count` elements. `value` may be null; valueForm bit 8 says that
// value points at memory values. A primitive's size does not depend on either.
LMBASE_EXPORT unsigned CharSizeGet(const void* value, unsigned char valueForm, unsigned char format, unsigned count);
LMBASE_EXPORT unsigned ShortSizeGet(const void* value, unsigned char valueForm, unsigned char format, unsigned count);
LMBASE_EXPORT unsigned LongSizeGet(const void* value, unsigned char valueForm, unsigned char format, unsigned count);
LMBASE_EXPORT unsigned IntSizeGet(const void* value, unsigned char valueForm, unsigned char format, unsigned count);
LMBASE_EXPORT unsigned FloatSizeGet(const void* value, unsigned char valueForm, unsigned char format, unsigned count);
LMBASE_EXPORT unsigned DoubleSizeGet(const void* value, unsigned char valueForm, unsigned char format, unsigned count);
LMBASE_EXPORT unsigned O_8BSizeGet(const void* value, unsigned char valueForm, unsigned char format, unsigned count);

// Disk size of `count` null values. A primitive has no null form of its own, so
// this is the size of `count` values.
LMBASE_EXPORT unsigned CharNullSizeGet(unsigned count);
LMBASE_EXPORT unsigned ShortNullSizeGet(unsigned count);
LMBASE_EXPORT unsigned LongNullSizeGet(unsigned count);
LMBASE_EXPORT unsigned IntNullSizeGet(unsigned count);
LMBASE_EXPORT unsigned FloatNullSizeGet(unsigned count);
LMBASE_EXPORT unsigned DoubleNullSizeGet(unsigned count);
LMBASE_EXPORT unsigned O_8BNullSizeGet(unsigned count);

// ---------------------------------------------------------------------------
// MemFile: a read-only window on bytes that a caller owns, with a position.
// ---------------------------------------------------------------------------
class LMBASE_EXPORT MemFile {
public:
    enum Origin { FromStart = 0, FromCurrent = 1, FromEnd = 2 };

    MemFile(const void* data, uint32_t length) noexcept;

    uint32_t Position() const noexcept { return position_; }
    uint32_t Length() const noexcept { return length_; }

    // Moves the position to `offset` from `origin` and returns a pointer to the
    // byte there. `granted` receives how many of the `wanted` bytes lie inside the
    // file from that point (fewer near the end, 0 at the end). A target outside
    // 0..length leaves the position unchanged, grants 0 and returns null.
    const unsigned char* Seek(int64_t offset, Origin origin, uint32_t wanted, uint32_t& granted) noexcept;

private:
    const unsigned char* data_;
    uint32_t length_;
    uint32_t position_;
};

// ---------------------------------------------------------------------------
// LmConfig: 16-bit configuration values by section and key.
//
// The library only reads. The embedding application sets values at start-up,
// before other threads run; tests set and clear them around a case.
// ---------------------------------------------------------------------------
class LMBASE_EXPORT LmConfig {
public:
    // Looks up section/key. Found: writes the value and answers 1. Not found:
    // leaves `value` as it was and answers 0. Names are case-sensitive.
    int QueryValue(const char* section, const char* key, uint16_t& value) const;

    // Sets or replaces a value. Null or empty names are refused with 0; else 1.
    int SetValue(const char* section, const char* key, uint16_t value);

    // Removes one value; answers 1 if it was there.
    int RemoveValue(const char* section, const char* key);

    // Removes every value.
    void Clear();

    LmConfig();
    ~LmConfig();
    LmConfig(const LmConfig&) = delete;
    LmConfig& operator=(const LmConfig&) = delete;

private:
    struct Entries;
    Entries* entries_;
};

// The process configuration for `which` == -1; null for any other number.
LMBASE_EXPORT LmConfig* DefaultConfig(int which);

// ---------------------------------------------------------------------------
// Assertions and memory failure.
// ---------------------------------------------------------------------------
typedef void (*LmAssertHandler)(const char* message, const char* stem, int line);

// Reports an internal condition. The default handler writes one line to stderr
// ("lumo assertion: <message> [<stem>:<line>]"); the caller goes on either way.
LMBASE_EXPORT void LUMO_assert(const char* message, const char* stem, int line);

// Installs a handler and returns the one it replaces; null restores the default.
LMBASE_EXPORT LmAssertHandler LmSetAssertHandler(LmAssertHandler handler);

typedef void (*LmMemoryHandler)(size_t size);

// Called with the size of a request that malloc refused. The default handler
// does nothing; the caller goes on with the null result.
LMBASE_EXPORT void LmCallMemoryHandler(size_t size);
LMBASE_EXPORT LmMemoryHandler LmSetMemoryHandler(LmMemoryHandler handler);

// ---------------------------------------------------------------------------
// Version check.
//
// Compares a caller's version numbers with those of this base library
// (14.0.1.57.0). Flag 1: the major numbers must be equal. Flag 2: the caller's
// minor number must not be above ours. Other flag bits are ignored. Answers 0
// when every check asked for holds, else -1.
// ---------------------------------------------------------------------------
LMBASE_EXPORT int CheckLmVersionNumber(unsigned major, unsigned minor, unsigned patch, unsigned build, unsigned extra,
                                       int flags);

// ---------------------------------------------------------------------------
// Clock and time zone.
// ---------------------------------------------------------------------------
struct bdate {
    int16_t year;
    uint8_t month;
    uint8_t day;
};

struct btime {
    uint8_t hour;
    uint8_t minute;
    uint8_t second;
    uint8_t room;
    int32_t zone;  // seconds east of UTC, filled by bksgettime
};

// Status of bksgettimezone when the zone cannot be told.
#define LMBASE_NO_TIMEZONE (-2171)

LMBASE_EXPORT void bksgetdate(bdate* date);                     // local date
LMBASE_EXPORT void bksgettime(btime* time);                     // local time and zone offset in seconds
LMBASE_EXPORT void bksgetsystemtime(btime* time, bdate* date);  // UTC time and date
LMBASE_EXPORT int bksgettimezone();                             // offset in minutes, or LMBASE_NO_TIMEZONE
LMBASE_EXPORT void bksGetHiresTime(bdate& date, btime& time, int& nanoseconds);     // local
LMBASE_EXPORT void bksGetHiresTimeUTC(bdate& date, btime& time, int& nanoseconds);  // UTC
// Seconds since 1970-01-01 00:00:00 UTC and the milliseconds within that second
// (0 to 999), as the C library's millisecond clock gives them.
LMBASE_EXPORT void bksGetEpochTime(int64_t& seconds, int& milliseconds);

// Pinning, for tests and for callers that replay a recorded moment. A pinned
// clock answers the given instant (seconds and nanoseconds since 1970-01-01
// UTC) until unpinned. A pinned zone answers the given offset in minutes; pinning
// it to LMBASE_NO_TIMEZONE makes the zone unknown. Unpinned, both follow the
// system clock and the process's local zone (TZ).
LMBASE_EXPORT void bksPinClock(int64_t secondsSinceEpoch, int32_t nanoseconds);
LMBASE_EXPORT void bksUnpinClock();
LMBASE_EXPORT void bksPinTimeZone(int32_t offsetMinutes);
LMBASE_EXPORT void bksUnpinTimeZone();

#endif
