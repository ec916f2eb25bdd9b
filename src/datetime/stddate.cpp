// d_Date (id 22): a date of the historical calendar, Julian up to 1582-10-04 and
// Gregorian from 1582-10-15, worked out in doubles; its members, handlers and
// descriptor record.
//
// The absolute day is one less than the Julian Day Number: 1582-10-04 is 2299159 and
// the next day, 1582-10-15, 2299160. The ten days between do not exist, and
// getAbsDate takes them without complaint (1582-10-05 falls on 2299170, the value of
// 1582-10-15 before the Gregorian shift). Before year 1 the truncation towards zero
// makes getAbsDate one too high where the year of the formula is not a multiple of 4:
// 0000-01-01 comes back as 0000-01-02. Both stay as they are.
//
// Disk form, 4 bytes: the year by ShortStore (high byte first for store format 2),
// then month and day.
#include <cmath>

#include "dthandlers.h"
#include "lmbounds.h"
#include "lmdate.h"
#include "lmdatetime.h"
#include "scalarread.h"
#include "stdcommon.h"

using lmstd::TruncToInt;
using lmstd::Wrap;

// ---- The calendar. ----

int d_Date::getAbsDate() const noexcept {
    double y = fields.year, m = fields.month + 1;
    if (fields.month <= 2) {
        y = fields.year - 1;
        m = fields.month + 13;
    }
    double a = std::trunc(y * 365.25) + std::trunc(m * 30.6001) + fields.day + 1720994;
    if (a >= 2299170) {
        const int c = static_cast<int>(std::trunc(y / 100));
        a = a + 2 - c + c / 4;  // the Gregorian days dropped
    }
    return static_cast<int>(a);
}

void d_Date::setAbsDate(int absoluteDay) noexcept {
    const int64_t n = absoluteDay;
    int64_t a = n + 1;
    if (a > 2299160) {
        const auto x = static_cast<int64_t>(std::trunc((static_cast<double>(a) - 1867216.25) / 36524.25));
        a = n + 2 + x - x / 4;
    }
    const int64_t b = a + 1524;
    const auto c = static_cast<int64_t>(std::trunc((static_cast<double>(b) - 122.1) / 365.25));
    const auto d = static_cast<int64_t>(std::trunc(static_cast<double>(c) * 365.25));
    const auto e = static_cast<int64_t>(std::trunc(static_cast<double>(b - d) / 30.6001));
    const int64_t day = b - static_cast<int64_t>(std::floor(static_cast<double>(e) * 30.6001)) - d;
    const int64_t month = e < 14 ? e - 1 : e - 13;
    const int64_t year = month >= 3 ? c - 4716 : c - 4715;
    fields = {static_cast<int16_t>(year), static_cast<uint8_t>(month), static_cast<uint8_t>(day)};
}

d_Date::d_Date() {
    bdate today{};
    bksgetdate(&today);
    fields = {today.year, today.month, today.day};
}

d_Date::d_Date(short year, unsigned short month, unsigned short day) noexcept
    : fields{year, static_cast<uint8_t>(month), static_cast<uint8_t>(day)} {}

d_Date::d_Date(short year, unsigned short dayOfYear) noexcept : fields{year, 1, 1} {
    setAbsDate(getAbsDate() + dayOfYear - 1);
}

d_Date::d_Date(const LmDate& date) noexcept { *this = date; }
d_Date::d_Date(const LmDateTime& dateTime) noexcept { *this = static_cast<const LmDate&>(dateTime); }
d_Date::d_Date(const d_Timestamp& stamp) noexcept : fields(stamp.date_part.fields) {}

d_Date& d_Date::operator=(const LmDate& date) noexcept {
    fields = {date.year, static_cast<uint8_t>(date.month), static_cast<uint8_t>(date.day)};
    return *this;
}

d_Date& d_Date::operator=(const LmDateTime& dateTime) noexcept { return *this = static_cast<const LmDate&>(dateTime); }

d_Date& d_Date::operator=(const d_Timestamp& stamp) noexcept {
    fields = stamp.date_part.fields;
    return *this;
}

d_Date d_Date::current() { return d_Date(); }

d_Date::Weekday d_Date::day_of_week() const noexcept { return static_cast<Weekday>((getAbsDate() + 2) % 7); }

unsigned short d_Date::day_of_year() const noexcept {
    return static_cast<unsigned short>(getAbsDate() - d_Date(fields.year, 1, 1).getAbsDate() + 1);
}

unsigned short d_Date::days_in_month() const noexcept { return days_in_month(fields.year, fields.month); }

unsigned short d_Date::days_in_month(short year, unsigned short month) noexcept {
    switch (month) {
        case 4:
        case 6:
        case 9:
        case 11:
            return 30;
        case 2:
            return is_leap_year(year) != 0 ? 29 : 28;
        default:
            return month >= 1 && month <= 12 ? 31 : 0;
    }
}

int d_Date::is_leap_year(short year) noexcept {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0 || year < 1600) ? 1 : 0;
}

d_Date& d_Date::next(Weekday day) noexcept {
    int k = day - day_of_week();
    if (k < 1) k += 7;
    setAbsDate(getAbsDate() + k);
    return *this;
}

d_Date& d_Date::previous(Weekday day) noexcept {
    int k = day_of_week() - day;
    if (k < 1) k += 7;
    setAbsDate(getAbsDate() - k);
    return *this;
}

d_Date& d_Date::operator++() noexcept {
    setAbsDate(getAbsDate() + 1);
    return *this;
}
d_Date& d_Date::operator--() noexcept {
    setAbsDate(getAbsDate() - 1);
    return *this;
}
d_Date d_Date::operator++(int) noexcept {
    const d_Date old = *this;
    ++*this;
    return old;
}
d_Date d_Date::operator--(int) noexcept {
    const d_Date old = *this;
    --*this;
    return old;
}

// The truncated days of the count, divided in float.
d_Date& d_Date::operator+=(const d_Interval& interval) noexcept {
    setAbsDate(Wrap(int64_t{getAbsDate()} + TruncToInt(interval.total_seconds() / lmstd::kSecondsPerDay)));
    return *this;
}
d_Date& d_Date::operator-=(const d_Interval& interval) noexcept {
    setAbsDate(Wrap(int64_t{getAbsDate()} - TruncToInt(interval.total_seconds() / lmstd::kSecondsPerDay)));
    return *this;
}

int operator!=(const d_Date& a, const d_Date& b) noexcept { return a.getAbsDate() - b.getAbsDate(); }
int operator==(const d_Date& a, const d_Date& b) noexcept { return (a != b) == 0; }
int operator<(const d_Date& a, const d_Date& b) noexcept { return (a != b) < 0; }
int operator<=(const d_Date& a, const d_Date& b) noexcept { return (a != b) <= 0; }
int operator>(const d_Date& a, const d_Date& b) noexcept { return (a != b) > 0; }
int operator>=(const d_Date& a, const d_Date& b) noexcept { return (a != b) >= 0; }
d_Date operator+(const d_Date& date, const d_Interval& interval) noexcept { return d_Date(date) += interval; }
d_Date operator+(const d_Interval& interval, const d_Date& date) noexcept { return d_Date(date) += interval; }
d_Date operator-(const d_Date& date, const d_Interval& interval) noexcept { return d_Date(date) -= interval; }

// ---- The handlers. ----

namespace lmstd {

// The order of two stored dates: the years unsigned, then month and day. A year of
// 0xFFFF, a month or a day of 0xFF in the second value matches anything unless
// option bit 0x10 is set; where one of the two bytes is so skipped, the other is
// compared as a signed byte.
int StoredDateOrder(const unsigned char* a, const unsigned char* b, unsigned char format,
                    unsigned short option) noexcept {
    const bool wildcards = (option & LM_CMP_NO_WILDCARD) == 0;
    const bool swap = (format & 15u) == LmFormatBig;
    const unsigned y1 = swap ? (a[0] << 8 | a[1]) : (a[1] << 8 | a[0]);
    const unsigned y2 = swap ? (b[0] << 8 | b[1]) : (b[1] << 8 | b[0]);
    if (y1 != y2 && (!wildcards || y2 != 0xFFFF)) return y1 < y2 ? -1 : 1;
    if (wildcards && b[2] == 0xFF) return b[3] == 0xFF ? 0 : SignedBytesOrder(a + 3, b + 3, 1);
    if (wildcards && b[3] == 0xFF) return SignedBytesOrder(a + 2, b + 2, 1);
    return SignedBytesOrder(a + 2, b + 2, 2);
}

}  // namespace lmstd

namespace {

using namespace lmdatetime;
constexpr unsigned kWidth = 4;

unsigned DateStore(void* dest, const void* src, unsigned char format, unsigned count) {
    auto* d = static_cast<unsigned char*>(dest);
    const auto* s = static_cast<const unsigned char*>(src);
    for (unsigned i = 0; i < count; ++i, d += kWidth, s += kWidth) {
        ShortStore(d, s, format, 1);
        d[2] = s[2];
        d[3] = s[3];
    }
    return kWidth * count;
}

unsigned DateTranslate(void* dest, unsigned char destFormat, unsigned destLen, void* src, unsigned char srcFormat,
                       unsigned srcLen, unsigned count) {
    return TranslateByForm<kWidth, DateStore, DateStore>(
        dest, destFormat, destLen, src, srcFormat, srcLen, count,
        [](void* d, const void* s, unsigned n) { Assignment<d_Date>(d, const_cast<void*>(s), n, 0); });
}

// The year is read directly in memory and through the store order on a disk form:
// only nibble 2 swaps it, so the test is on the nibble alone.
unsigned DateHash(unsigned char format, unsigned len, void* value, unsigned count, int& status) {
    const bool swap = (format & 15u) == LmFormatBig;
    return lmscalar::HashLoop(kWidth, len, value, count, status,
                              [swap](const unsigned char* p) { return lmstd::DateHashWord(p, swap); });
}

// The Julian Day Number. The values are taken 8 bytes apart, twice their length, as
// the type always has: with a count above 1 every second value is read and the walk
// runs count * 4 bytes past the array. Count 1 is the only safe use.
LmTypeConvertData* DateConvertTo(void* value, unsigned count) {
    LmString* strings = ConvertStringsCreate(count);
    if (strings == nullptr) return nullptr;
    const auto* values = static_cast<const unsigned char*>(value);
    for (unsigned i = 0; i < count; ++i) {
        strings[i] += LmString(d_DateAccess::Abs(Read<d_Date>(values + static_cast<size_t>(i) * 8)) + 1);
    }
    return LmTypeConvertData::Make(LmSTRING_T, count, strings, nullptr);
}

void* DateConvertFrom(LmTypeConvertData* data, unsigned count) {
    void* values = Create<d_Date>(count);
    if (count == 0 || values == nullptr) return values;
    for (unsigned i = 0; i < count; ++i) {
        const LmString* text = data != nullptr ? data->GetString(static_cast<int>(i)) : nullptr;
        d_Date date(0, 0, 0);
        if (text != nullptr && text->IsNullValue() == 0) {
            d_DateAccess::SetAbs(date, Wrap(int64_t{static_cast<int>(*text)} - 1));
        }
        Write(static_cast<unsigned char*>(values) + i * kWidth, date);
    }
    return values;
}

// Printed as an LmDateTime of the date at midnight.
LmString& DatePrintToString(LmString& out, void* value, const char* format, unsigned) {
    const auto d = Read<d_Date>(value);
    return lmstd::Widened(d.fields.year, d.fields.month, d.fields.day, 0, 0, 0).PrintToLmString(out, format);
}

void* DateScanFromString(void* value, LmString& text, const char* format, unsigned) {
    if (value == nullptr) return nullptr;
    LmDateTime read(0, 0, 0, 0, 0, 0);
    const bool ok = lmstd::ScanDateTime(text, format, read);
    d_Date date(0, 0, 0);
    date = read;
    Write(value, date);
    return ok ? value : nullptr;
}

// Mode 2: year -32768, month 0, day 0. 'O': today. 'M', 'N': the next absolute day,
// when it is later.
int DateGetValue(void* value, unsigned, unsigned char format, unsigned char mode) {
    if (format != LmFormatMemory) return LM_ERR_NOT_SUPPORTED;
    d_Date v = Read<d_Date>(value);
    switch (mode) {
        case 2:
            v = d_Date(-32768, 0, 0);
            break;
        case 'O':
            v = d_Date::current();
            break;
        case 'M':
        case 'N': {
            d_Date next = v;
            ++next;
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

// Memory form (a format byte of exactly 8): the day difference. Disk forms: -1, 0, 1.
int d_DateCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short option,
                  unsigned count, int& status) {
    if (format == LmFormatMemory) {
        return lmscalar::CompareLoop(
            kWidth, len1, value1, len2, value2, count, status,
            [](const unsigned char* a, const unsigned char* b) { return Read<d_Date>(a) != Read<d_Date>(b); });
    }
    return lmscalar::CompareLoop(kWidth, len1, value1, len2, value2, count, status,
                                 [format, option](const unsigned char* a, const unsigned char* b) {
                                     return lmstd::StoredDateOrder(a, b, format, option);
                                 });
}

constinit LmTypeDesc LmDesc_d_Date = {"d_Date",
                                      "D_DATE_T",
                                      Create<d_Date>,
                                      Delete<d_Date>,
                                      DateStore,
                                      DateStore,
                                      NullSizeGet<kWidth>,
                                      SizeGet<kWidth>,
                                      SizeGetFromMemFile<kWidth>,
                                      d_DateCompare,
                                      StandardDateEvalAndBound,
                                      DateHash,
                                      DateConvertTo,
                                      DateConvertFrom,
                                      Constructor<d_Date>,
                                      Destructor,
                                      Assignment<d_Date>,
                                      Assignment<d_Date>,
                                      DateTranslate,
                                      NeverNullValue,
                                      nullptr,
                                      "%a %b %e",
                                      DatePrintToString,
                                      DateScanFromString,
                                      kWidth,
                                      1,
                                      DefaultValueFromText<DateConvertFrom>,
                                      DateGetValue,
                                      nullptr};
