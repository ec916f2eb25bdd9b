// Clock and time-zone functions on the POSIX clock, with pinning for tests.
#include "lumobase.h"

#include <ctime>

namespace {

bool clockPinned = false;
int64_t pinnedSeconds = 0;
int32_t pinnedNanos = 0;

bool zonePinned = false;
int32_t pinnedZoneMinutes = 0;

void Now(int64_t& seconds, int32_t& nanos) {
    if (clockPinned) {
        seconds = pinnedSeconds;
        nanos = pinnedNanos;
        return;
    }
    timespec ts{};
    clock_gettime(CLOCK_REALTIME, &ts);
    seconds = ts.tv_sec;
    nanos = static_cast<int32_t>(ts.tv_nsec);
}

// Offset of local time from UTC at `seconds`, in seconds; false if unknown. Wide,
// so that a pinned offset of any size is exact.
bool ZoneSecondsAt(int64_t seconds, int64_t& offset) {
    if (zonePinned) {
        if (pinnedZoneMinutes == LMBASE_NO_TIMEZONE) return false;
        offset = int64_t{pinnedZoneMinutes} * 60;
        return true;
    }
    const time_t t = static_cast<time_t>(seconds);
    tm local{};
    if (localtime_r(&t, &local) == nullptr) return false;
    offset = local.tm_gmtoff;
    return true;
}

// Civil date and time of a count of seconds since 1970-01-01 (proleptic Gregorian).
void Split(int64_t seconds, bdate& date, btime& time) {
    int64_t days = seconds / 86400;
    int64_t rest = seconds % 86400;
    if (rest < 0) {
        rest += 86400;
        --days;
    }
    time.hour = static_cast<uint8_t>(rest / 3600);
    time.minute = static_cast<uint8_t>(rest / 60 % 60);
    time.second = static_cast<uint8_t>(rest % 60);
    time.room = 0;
    // Days to civil date, after H. Hinnant's public-domain algorithm.
    const int64_t z = days + 719468;
    const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
    const int64_t doe = z - era * 146097;
    const int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const int64_t mp = (5 * doy + 2) / 153;
    const int64_t d = doy - (153 * mp + 2) / 5 + 1;
    const int64_t m = mp < 10 ? mp + 3 : mp - 9;
    const int64_t y = yoe + era * 400 + (m <= 2 ? 1 : 0);
    date.year = static_cast<int16_t>(y);
    date.month = static_cast<uint8_t>(m);
    date.day = static_cast<uint8_t>(d);
}

void Local(bdate& date, btime& time, int32_t& nanos) {
    int64_t seconds = 0;
    Now(seconds, nanos);
    int64_t offset = 0;
    if (!ZoneSecondsAt(seconds, offset)) offset = 0;
    Split(seconds + offset, date, time);
    time.zone = static_cast<int32_t>(offset);
}

void Utc(bdate& date, btime& time, int32_t& nanos) {
    int64_t seconds = 0;
    Now(seconds, nanos);
    Split(seconds, date, time);
    time.zone = 0;
}

}  // namespace

void bksgetdate(bdate* date) {
    btime time{};
    int32_t nanos = 0;
    Local(*date, time, nanos);
}

void bksgettime(btime* time) {
    bdate date{};
    int32_t nanos = 0;
    Local(date, *time, nanos);
}

void bksgetsystemtime(btime* time, bdate* date) {
    int32_t nanos = 0;
    Utc(*date, *time, nanos);
}

int bksgettimezone() {
    int64_t seconds = 0;
    int32_t nanos = 0;
    Now(seconds, nanos);
    int64_t offset = 0;
    if (!ZoneSecondsAt(seconds, offset)) return LMBASE_NO_TIMEZONE;
    return static_cast<int>(offset / 60);
}

void bksGetHiresTime(bdate& date, btime& time, int& nanoseconds) {
    int32_t nanos = 0;
    Local(date, time, nanos);
    nanoseconds = nanos;
}

void bksGetHiresTimeUTC(bdate& date, btime& time, int& nanoseconds) {
    int32_t nanos = 0;
    Utc(date, time, nanos);
    nanoseconds = nanos;
}

void bksGetEpochTime(int64_t& seconds, int& milliseconds) {
    int32_t nanos = 0;
    Now(seconds, nanos);
    milliseconds = nanos / 1000000;
}

void bksPinClock(int64_t secondsSinceEpoch, int32_t nanoseconds) {
    clockPinned = true;
    pinnedSeconds = secondsSinceEpoch;
    pinnedNanos = nanoseconds;
}

void bksUnpinClock() { clockPinned = false; }

void bksPinTimeZone(int32_t offsetMinutes) {
    zonePinned = true;
    pinnedZoneMinutes = offsetMinutes;
}

void bksUnpinTimeZone() { zonePinned = false; }
