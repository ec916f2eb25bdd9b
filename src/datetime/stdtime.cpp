// d_Time (id 23): a time of day with its zone and hundredths; its members, the
// default time zone, handlers and descriptor record.
//
// hour and minute hold the zone's hours and minutes already added; the reads take
// them off. The arithmetic with an interval works on the fields as held: += and -=
// keep the zone out, while + and - add it to the result once more, as the type has
// always done (13:00 in zone 2 holds 15; + of a zero interval gives 17, += keeps 15).
//
// Disk form, 6 bytes in every format: tz_hour, tz_minute, hour, minute, second,
// hundredth.
#include <cstring>

#include "dthandlers.h"
#include "lmbounds.h"
#include "lmdatetime.h"
#include "lmtime.h"
#include "scalarread.h"
#include "stdcommon.h"

using lmstd::Byte;
using lmstd::TruncToInt;

// ---- The default zone. ----

int32_t d_Time::defaultZone = 0;

void d_Time::set_default_Time_Zone(Time_Zone zone) noexcept { defaultZone = zone; }

// bksgettime reports the local zone's offset in seconds in the zone field, which is
// cleared first; an offset of 0 leaves the default as it is.
void d_Time::set_default_Time_Zone_to_local() noexcept {
    btime now{};
    now.zone = 0;
    bksgettime(&now);
    if (now.zone != 0) defaultZone = now.zone / 3600;
}

d_Time::Time_Zone d_Time::default_Time_Zone() noexcept { return static_cast<Time_Zone>(Byte(defaultZone)); }

// ---- Construction. ----

namespace {

// The fields of a time in the default zone, the zone added to the hour.
d_Time::Fields InDefaultZone(int hour, int minute, int second) noexcept {
    const int zone = d_Time::default_Time_Zone();
    return {Byte(zone), 0, Byte(zone + hour), Byte(minute), Byte(second), 0};
}

// The hours, minutes and seconds of both as held, zone included, as one interval.
d_Interval HeldInterval(const d_Time::Fields& f, float seconds) noexcept {
    return d_Interval(0, f.hour, f.minute, seconds);
}

}  // namespace

d_Time::d_Time() {
    btime now{};
    now.zone = 1;  // asks for local time
    bksgettime(&now);
    fields = InDefaultZone(now.hour, now.minute, now.second);
}

d_Time::d_Time(const LmTime& time) noexcept : fields(InDefaultZone(time.hour, time.minute, time.second)) {}

d_Time::d_Time(const LmDateTime& dateTime) noexcept : d_Time(static_cast<const LmTime&>(dateTime)) {}

d_Time::d_Time(const d_Timestamp& stamp) noexcept : fields(stamp.time_part.fields) {}

d_Time::d_Time(unsigned short h, unsigned short m, float s) noexcept : fields(InDefaultZone(h, m, 0)) {
    lmstd::SplitSeconds(s, fields.second, fields.hundredth);
}

d_Time::d_Time(unsigned short h, unsigned short m, float s, short tzh, short tzm) noexcept
    : fields{Byte(tzh), Byte(tzm), Byte(tzh + h), Byte(tzm + m), 0, 0} {
    lmstd::SplitSeconds(s, fields.second, fields.hundredth);
}

d_Time::d_Time(int seconds) noexcept {
    int64_t count = seconds;
    if (count < 0) count += (-count + 86399) / 86400 * 86400;  // the days needed to reach 0
    fields = InDefaultZone(0, 0, 0);
    fields.hour = Byte(fields.tz_hour + count / 3600);
    fields.minute = Byte(count % 3600 / 60);
    fields.second = Byte(count % 60);
}

d_Time& d_Time::operator=(const LmTime& time) noexcept {
    fields = InDefaultZone(0, time.minute, time.second);
    fields.hour = time.hour;
    return *this;
}

d_Time& d_Time::operator=(const LmDateTime& dateTime) noexcept { return *this = static_cast<const LmTime&>(dateTime); }

d_Time& d_Time::operator=(const d_Timestamp& stamp) noexcept {
    fields = stamp.time_part.fields;
    return *this;
}

d_Time d_Time::current() { return d_Time(); }

float d_Time::second() const noexcept { return lmstd::Seconds(fields.second, fields.hundredth); }

// ---- Arithmetic. ----

d_Time& d_Time::operator+=(const d_Interval& interval) noexcept {
    const d_Interval t = HeldInterval(fields, second()) + interval;
    lmstd::SplitTime(d_Interval::FromSeconds(lmstd::AddDaysUntilNotNegative(t.total_seconds())), fields);
    return *this;
}

// The hundredths of the old value are left out.
d_Time& d_Time::operator-=(const d_Interval& interval) noexcept {
    const d_Interval t = HeldInterval(fields, fields.second) - interval;
    lmstd::SplitTime(d_Interval::FromSeconds(lmstd::AddDaysUntilNotNegative(t.total_seconds())), fields);
    return *this;
}

namespace {

// + and -: from the whole seconds, split as by +=, then the zone added once more.
d_Time Shifted(const d_Time& time, const d_Interval& interval, bool add) noexcept {
    const d_Interval held = HeldInterval(time.fields, time.fields.second);
    const d_Interval t = add ? held + interval : held - interval;
    d_Time result = time;
    lmstd::SplitTime(d_Interval::FromSeconds(lmstd::AddDaysUntilNotNegative(t.total_seconds())), result.fields);
    result.fields.hour = Byte(result.fields.hour + time.fields.tz_hour);
    result.fields.minute = Byte(result.fields.minute + time.fields.tz_minute);
    return result;
}

}  // namespace

d_Time operator+(const d_Time& time, const d_Interval& interval) noexcept { return Shifted(time, interval, true); }
d_Time operator+(const d_Interval& interval, const d_Time& time) noexcept { return Shifted(time, interval, true); }
d_Time operator-(const d_Time& time, const d_Interval& interval) noexcept { return Shifted(time, interval, false); }

d_Interval operator-(const d_Time& a, const d_Time& b) noexcept {
    return HeldInterval(a.fields, a.fields.second) - HeldInterval(b.fields, b.fields.second);
}

int operator!=(const d_Time& a, const d_Time& b) noexcept {
    const int hours = a.hour() - b.hour();
    if (hours != 0) return hours;
    const int minutes = a.minute() - b.minute();
    if (minutes != 0) return minutes;
    return TruncToInt(a.second() - b.second());
}
int operator==(const d_Time& a, const d_Time& b) noexcept { return (a != b) == 0; }
int operator<(const d_Time& a, const d_Time& b) noexcept { return (a != b) < 0; }
int operator<=(const d_Time& a, const d_Time& b) noexcept { return (a != b) <= 0; }
int operator>(const d_Time& a, const d_Time& b) noexcept { return (a != b) > 0; }
int operator>=(const d_Time& a, const d_Time& b) noexcept { return (a != b) >= 0; }

// ---- The handlers. ----

namespace {

using namespace lmdatetime;
constexpr unsigned kWidth = 6;

// The six bytes as they are, in every format.
unsigned TimeStore(void* dest, const void* src, unsigned char, unsigned count) {
    if (count != 0) std::memcpy(dest, src, static_cast<size_t>(count) * kWidth);
    return kWidth * count;
}

unsigned TimeTranslate(void* dest, unsigned char destFormat, unsigned destLen, void* src, unsigned char srcFormat,
                       unsigned srcLen, unsigned count) {
    return TranslateByForm<kWidth, TimeStore, TimeStore>(
        dest, destFormat, destLen, src, srcFormat, srcLen, count,
        [](void* d, const void* s, unsigned n) { Assignment<d_Time>(d, const_cast<void*>(s), n, 0); });
}

unsigned TimeHash(unsigned char format, unsigned len, void* value, unsigned count, int& status) {
    const bool memory = (format & 15u) == LmFormatMemory;
    return lmscalar::HashLoop(kWidth, len, value, count, status,
                              [memory](const unsigned char* p) { return lmstd::TimeHashWord(p, memory); });
}

// The seconds of the day without the zone.
LmTypeConvertData* TimeConvertTo(void* value, unsigned count) {
    LmString* strings = ConvertStringsCreate(count);
    if (strings == nullptr) return nullptr;
    const auto* values = static_cast<const unsigned char*>(value);
    for (unsigned i = 0; i < count; ++i) {
        const d_Time::Fields f = Read<d_Time>(values + i * kWidth).fields;
        strings[i] += LmString(((f.hour - f.tz_hour) * 60 + f.minute - f.tz_minute) * 60 + f.second);
    }
    return LmTypeConvertData::Make(LmSTRING_T, count, strings, nullptr);
}

void* TimeConvertFrom(LmTypeConvertData* data, unsigned count) {
    void* values = Create<d_Time>(count);
    if (count == 0 || values == nullptr) return values;
    for (unsigned i = 0; i < count; ++i) {
        const LmString* text = data != nullptr ? data->GetString(static_cast<int>(i)) : nullptr;
        const bool missing = text == nullptr || text->IsNullValue() != 0;
        Write(static_cast<unsigned char*>(values) + i * kWidth,
              missing ? d_Time(0, 0, 0.0f) : d_Time(static_cast<int>(*text)));
    }
    return values;
}

// Printed as an LmDateTime of 0000-01-01 and the time without its zone.
LmString& TimePrintToString(LmString& out, void* value, const char* format, unsigned) {
    return lmstd::WidenedTime({0, 1, 1}, Read<d_Time>(value)).PrintToLmString(out, format);
}

// The time part of what was read, into the default zone without adding it.
void* TimeScanFromString(void* value, LmString& text, const char* format, unsigned) {
    if (value == nullptr) return nullptr;
    LmDateTime read(0, 0, 0, 0, 0, 0);
    const bool ok = lmstd::ScanDateTime(text, format, read);
    d_Time t = Read<d_Time>(value);
    t = static_cast<const LmTime&>(read);
    Write(value, t);
    return ok ? value : nullptr;
}

// Mode 2: d_Time(0). 'O': now. 'M', 'N': 0.01 seconds on, when that is later; since
// times less than a second apart are equal, it seldom is.
int TimeGetValue(void* value, unsigned, unsigned char format, unsigned char mode) {
    if (format != LmFormatMemory) return LM_ERR_NOT_SUPPORTED;
    d_Time v = Read<d_Time>(value);
    switch (mode) {
        case 2:
            v = d_Time(0);
            break;
        case 'O':
            v = d_Time::current();
            break;
        case 'M':
        case 'N': {
            d_Time next = v;
            next += lmstd::kHundredth;
            if (!(next > v)) return LM_ERR_NO_NEXT_VALUE;
            v = next;
            break;
        }
        default:
            return LM_ERR_NOT_SUPPORTED;
    }
    Write(value, v);
    return LM_OK;
}

}  // namespace

// Memory form (a format byte of exactly 8): operator!=. Disk forms: the six bytes as
// signed bytes, -1, 0 or 1.
int d_TimeCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short,
                  unsigned count, int& status) {
    if (format == LmFormatMemory) {
        return lmscalar::CompareLoop(
            kWidth, len1, value1, len2, value2, count, status,
            [](const unsigned char* a, const unsigned char* b) { return Read<d_Time>(a) != Read<d_Time>(b); });
    }
    return lmscalar::CompareLoop(
        kWidth, len1, value1, len2, value2, count, status,
        [](const unsigned char* a, const unsigned char* b) { return lmstd::SignedBytesOrder(a, b, kWidth); });
}

constinit LmTypeDesc LmDesc_d_Time = {"d_Time",
                                      "D_TIME_T",
                                      Create<d_Time>,
                                      Delete<d_Time>,
                                      TimeStore,
                                      TimeStore,
                                      NullSizeGet<kWidth>,
                                      SizeGet<kWidth>,
                                      SizeGetFromMemFile<kWidth>,
                                      d_TimeCompare,
                                      StandardTimeEvalAndBound,
                                      TimeHash,
                                      TimeConvertTo,
                                      TimeConvertFrom,
                                      Constructor<d_Time>,
                                      Destructor,
                                      Assignment<d_Time>,
                                      Assignment<d_Time>,
                                      TimeTranslate,
                                      NeverNullValue,
                                      nullptr,
                                      "%I:%M:%S %p",
                                      TimePrintToString,
                                      TimeScanFromString,
                                      kWidth,
                                      1,
                                      DefaultValueFromText<TimeConvertFrom>,
                                      TimeGetValue,
                                      nullptr};
