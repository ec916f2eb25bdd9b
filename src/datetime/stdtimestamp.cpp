// d_Timestamp (id 24): a d_Date and a d_Time side by side; its members, handlers and
// descriptor record.
//
// Disk form, 10 bytes: the d_Date at offset 0 (year by ShortStore, month, day), the
// six bytes of the d_Time at offset 4.
#include <cstring>

#include "dthandlers.h"
#include "lmbounds.h"
#include "lmdatetime.h"
#include "lmtime.h"
#include "scalarread.h"
#include "stdcommon.h"

using lmstd::TruncToInt;
using lmstd::Wrap;

d_Timestamp& d_Timestamp::operator=(const d_Date& date) noexcept {
    date_part = date;
    return *this;
}

d_Timestamp& d_Timestamp::operator=(const LmDateTime& dateTime) noexcept {
    date_part = dateTime;
    time_part = static_cast<const LmTime&>(dateTime);
    return *this;
}

d_Timestamp d_Timestamp::current() { return d_Timestamp(d_Date::current(), d_Time::current()); }

// The interval goes onto the time of day, without the zone and with the day of the
// month in it as a carrier. A negative sum borrows the days that bring it to 0 or
// above; the whole days then move the absolute day, and the time is rebuilt in the
// value's zone.
d_Timestamp& d_Timestamp::Move(const d_Interval& interval, bool add) noexcept {
    const d_Time::Fields f = time_part.fields;
    const int day = date_part.fields.day;
    d_Interval t(day, f.hour - f.tz_hour, f.minute - f.tz_minute, lmstd::Seconds(f.second, f.hundredth));
    t = add ? t + interval : t - interval;
    const int64_t absoluteDay = d_DateAccess::Abs(date_part);
    int64_t moved = 0;
    if (t.total_seconds() < 0.0f) {
        const int64_t k = int64_t{TruncToInt(-t.total_seconds() / lmstd::kSecondsPerDay)} + 1;
        t += d_Interval(Wrap(k), 0, 0, 0.0f);
        moved = absoluteDay - (k + day);
    } else {
        moved = absoluteDay + TruncToInt(t.total_seconds() / lmstd::kSecondsPerDay) - day;
    }
    d_DateAccess::SetAbs(date_part, Wrap(moved));
    time_part = d_Time(static_cast<unsigned short>(t.hour()), static_cast<unsigned short>(t.minute()), t.second(),
                       f.tz_hour, f.tz_minute);
    return *this;
}

d_Timestamp& d_Timestamp::operator+=(const d_Interval& interval) noexcept { return Move(interval, true); }
d_Timestamp& d_Timestamp::operator-=(const d_Interval& interval) noexcept { return Move(interval, false); }

d_Timestamp operator+(const d_Timestamp& stamp, const d_Interval& interval) noexcept {
    return d_Timestamp(stamp) += interval;
}
d_Timestamp operator+(const d_Interval& interval, const d_Timestamp& stamp) noexcept {
    return d_Timestamp(stamp) += interval;
}
d_Timestamp operator-(const d_Timestamp& stamp, const d_Interval& interval) noexcept {
    return d_Timestamp(stamp) -= interval;
}

namespace {
// All ten bytes alike: what <= and >= accept beside the order.
bool SameFields(const d_Timestamp& a, const d_Timestamp& b) noexcept { return std::memcmp(&a, &b, sizeof a) == 0; }
}  // namespace

int operator!=(const d_Timestamp& a, const d_Timestamp& b) noexcept {
    const int days = a.date_part != b.date_part;
    return days != 0 ? days : a.time_part != b.time_part;
}
int operator==(const d_Timestamp& a, const d_Timestamp& b) noexcept { return (a != b) == 0; }
int operator<(const d_Timestamp& a, const d_Timestamp& b) noexcept { return (a != b) < 0; }
int operator>(const d_Timestamp& a, const d_Timestamp& b) noexcept { return (a != b) > 0; }
int operator<=(const d_Timestamp& a, const d_Timestamp& b) noexcept { return a < b || SameFields(a, b); }
int operator>=(const d_Timestamp& a, const d_Timestamp& b) noexcept { return a > b || SameFields(a, b); }

// ---- The handlers. ----

namespace {

using namespace lmdatetime;
constexpr unsigned kWidth = 10;

unsigned StampStore(void* dest, const void* src, unsigned char format, unsigned count) {
    auto* d = static_cast<unsigned char*>(dest);
    const auto* s = static_cast<const unsigned char*>(src);
    for (unsigned i = 0; i < count; ++i, d += kWidth, s += kWidth) {
        ShortStore(d, s, format, 1);
        std::memcpy(d + 2, s + 2, kWidth - 2);
    }
    return kWidth * count;
}

unsigned StampTranslate(void* dest, unsigned char destFormat, unsigned destLen, void* src, unsigned char srcFormat,
                        unsigned srcLen, unsigned count) {
    return TranslateByForm<kWidth, StampStore, StampStore>(
        dest, destFormat, destLen, src, srcFormat, srcLen, count,
        [](void* d, const void* s, unsigned n) { Assignment<d_Timestamp>(d, const_cast<void*>(s), n, 0); });
}

// The date word XOR the time word.
unsigned StampHash(unsigned char format, unsigned len, void* value, unsigned count, int& status) {
    const bool memory = (format & 15u) == LmFormatMemory, swap = (format & 15u) == LmFormatBig;
    return lmscalar::HashLoop(kWidth, len, value, count, status, [memory, swap](const unsigned char* p) {
        return lmstd::DateHashWord(p, swap) ^ lmstd::TimeHashWord(p + 4, memory);
    });
}

// The Julian Day Number, ":", the seconds of the day without the zone.
LmTypeConvertData* StampConvertTo(void* value, unsigned count) {
    LmString* strings = ConvertStringsCreate(count);
    if (strings == nullptr) return nullptr;
    const auto* values = static_cast<const unsigned char*>(value);
    const LmString colon(":");
    for (unsigned i = 0; i < count; ++i) {
        const auto v = Read<d_Timestamp>(values + i * kWidth);
        const d_Time::Fields& f = v.time_part.fields;
        strings[i] += LmString(d_DateAccess::Abs(v.date_part) + 1);
        strings[i] += colon;
        strings[i] += LmString(((f.hour - f.tz_hour) * 60 + f.minute - f.tz_minute) * 60 + f.second);
    }
    return LmTypeConvertData::Make(LmSTRING_T, count, strings, nullptr);
}

// The number in front of the ":" for the date, the one behind it for the time.
d_Timestamp StampFromText(const LmString* text) {
    d_Timestamp v(d_Date(0, 0, 0), d_Time(0, 0, 0.0f));
    if (text == nullptr || text->IsNullValue() != 0) return v;
    d_DateAccess::SetAbs(v.date_part, Wrap(int64_t{static_cast<int>(*text)} - 1));
    const short colon = text->Find(':');
    if (colon >= 0) v.time_part = d_Time(static_cast<int>(text->Copy(static_cast<uint16_t>(colon + 1))));
    return v;
}

void* StampConvertFrom(LmTypeConvertData* data, unsigned count) {
    void* values = Create<d_Timestamp>(count);
    if (count == 0 || values == nullptr) return values;
    for (unsigned i = 0; i < count; ++i) {
        Write(static_cast<unsigned char*>(values) + i * kWidth,
              StampFromText(data != nullptr ? data->GetString(static_cast<int>(i)) : nullptr));
    }
    return values;
}

LmString& StampPrintToString(LmString& out, void* value, const char* format, unsigned) {
    const auto v = Read<d_Timestamp>(value);
    return lmstd::WidenedTime(v.date_part.fields, v.time_part).PrintToLmString(out, format);
}

// The date as read, the time part into the default zone without adding it.
void* StampScanFromString(void* value, LmString& text, const char* format, unsigned) {
    if (value == nullptr) return nullptr;
    LmDateTime read(0, 0, 0, 0, 0, 0);
    const bool ok = lmstd::ScanDateTime(text, format, read);
    auto v = Read<d_Timestamp>(value);
    v = read;
    Write(value, v);
    return ok ? value : nullptr;
}

// Mode 2: 0-0-0 at 00:00. 'O': now. 'M', 'N': 0.01 seconds on, when that is later: in
// practice only where the date moves.
int StampGetValue(void* value, unsigned, unsigned char format, unsigned char mode) {
    if (format != LmFormatMemory) return LM_ERR_NOT_SUPPORTED;
    auto v = Read<d_Timestamp>(value);
    switch (mode) {
        case 2:
            v = d_Timestamp(d_Date(0, 0, 0), d_Time(0, 0, 0.0f));
            break;
        case 'O':
            v = d_Timestamp::current();
            break;
        case 'M':
        case 'N': {
            d_Timestamp next = v;
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

// Memory form (a format byte of exactly 8): operator!=. Disk forms: the stored date
// with its wildcards, then the six bytes of the time as signed bytes.
int d_TimestampCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2,
                       unsigned short option, unsigned count, int& status) {
    if (format == LmFormatMemory) {
        return lmscalar::CompareLoop(kWidth, len1, value1, len2, value2, count, status,
                                     [](const unsigned char* a, const unsigned char* b) {
                                         return Read<d_Timestamp>(a) != Read<d_Timestamp>(b);
                                     });
    }
    return lmscalar::CompareLoop(kWidth, len1, value1, len2, value2, count, status,
                                 [format, option](const unsigned char* a, const unsigned char* b) {
                                     const int date = lmstd::StoredDateOrder(a, b, format, option);
                                     return date != 0 ? date : lmstd::SignedBytesOrder(a + 4, b + 4, 6);
                                 });
}

constinit LmTypeDesc LmDesc_d_Timestamp = {"d_Timestamp",
                                           "D_TIMESTAMP_T",
                                           Create<d_Timestamp>,
                                           Delete<d_Timestamp>,
                                           StampStore,
                                           StampStore,
                                           NullSizeGet<kWidth>,
                                           SizeGet<kWidth>,
                                           SizeGetFromMemFile<kWidth>,
                                           d_TimestampCompare,
                                           TimestampEvalAndBound,
                                           StampHash,
                                           StampConvertTo,
                                           StampConvertFrom,
                                           Constructor<d_Timestamp>,
                                           Destructor,
                                           Assignment<d_Timestamp>,
                                           Assignment<d_Timestamp>,
                                           StampTranslate,
                                           NeverNullValue,
                                           nullptr,
                                           "%a %b %e %I:%M:%S %p",
                                           StampPrintToString,
                                           StampScanFromString,
                                           kWidth,
                                           1,
                                           DefaultValueFromText<StampConvertFrom>,
                                           StampGetValue,
                                           nullptr};
