// d_Interval (id 25): a signed count of seconds in one float; its members, handlers
// and descriptor record. The memory and the disk form are the float, so the row
// holds the float handlers: FloatStore, FloatCompare, FloatHash and the float line of
// the bound evaluation.
#include <cmath>

#include "dthandlers.h"
#include "lmbounds.h"
#include "lmcompare.h"
#include "stdcommon.h"

using lmstd::TruncToInt;

d_Interval::d_Interval(int days, int hours, int minutes, float seconds) noexcept {
    // Each magnitude in float, so that no integer product can overflow.
    const auto magnitude = [](int v) { return static_cast<float>(std::fabs(static_cast<double>(v))); };
    float count = magnitude(minutes) * 60.0f;
    count += std::fabs(seconds);
    count += magnitude(hours) * 3600.0f;
    count += magnitude(days) * lmstd::kSecondsPerDay;
    value = days < 0 || hours < 0 || minutes < 0 || seconds < 0.0f ? -count : count;
}

int d_Interval::day() const noexcept { return TruncToInt(value) / 86400; }
int d_Interval::hour() const noexcept { return TruncToInt(value) % 86400 / 3600; }
int d_Interval::minute() const noexcept { return TruncToInt(value) % 3600 / 60; }
float d_Interval::second() const noexcept {
    const int32_t whole = TruncToInt(value);
    return (value - static_cast<float>(whole)) + static_cast<float>(whole % 60);
}

d_Interval& d_Interval::operator+=(const d_Interval& other) noexcept {
    value += other.value;
    return *this;
}
d_Interval& d_Interval::operator-=(const d_Interval& other) noexcept {
    value -= other.value;
    return *this;
}
d_Interval& d_Interval::operator*=(int factor) noexcept {
    value *= static_cast<float>(factor);
    return *this;
}
d_Interval& d_Interval::operator/=(int divisor) noexcept {
    if (divisor != 0) value /= static_cast<float>(divisor);
    return *this;
}

d_Interval operator+(const d_Interval& a, const d_Interval& b) noexcept { return d_Interval(a) += b; }
d_Interval operator-(const d_Interval& a, const d_Interval& b) noexcept { return d_Interval(a) -= b; }
d_Interval operator*(const d_Interval& a, int factor) noexcept { return d_Interval(a) *= factor; }
d_Interval operator*(int factor, const d_Interval& a) noexcept { return d_Interval(a) *= factor; }
d_Interval operator/(const d_Interval& a, int divisor) noexcept { return d_Interval(a) /= divisor; }
int operator==(const d_Interval& a, const d_Interval& b) noexcept { return a.total_seconds() == b.total_seconds(); }
int operator!=(const d_Interval& a, const d_Interval& b) noexcept { return a.total_seconds() != b.total_seconds(); }
int operator<(const d_Interval& a, const d_Interval& b) noexcept { return a.total_seconds() < b.total_seconds(); }
int operator<=(const d_Interval& a, const d_Interval& b) noexcept { return a.total_seconds() <= b.total_seconds(); }
int operator>(const d_Interval& a, const d_Interval& b) noexcept { return a.total_seconds() > b.total_seconds(); }
int operator>=(const d_Interval& a, const d_Interval& b) noexcept { return a.total_seconds() >= b.total_seconds(); }

namespace {

using namespace lmdatetime;
constexpr unsigned kWidth = 4;

unsigned IntervalSizeGetFromMemFile(MemFile*, unsigned char format, unsigned count) {
    return FloatSizeGet(nullptr, 8, static_cast<unsigned char>(format & 15), count);
}

unsigned IntervalTranslate(void* dest, unsigned char destFormat, unsigned destLen, void* src, unsigned char srcFormat,
                           unsigned srcLen, unsigned count) {
    return TranslateByForm<kWidth, FloatStore, FloatStore>(
        dest, destFormat, destLen, src, srcFormat, srcLen, count,
        [](void* d, const void* s, unsigned n) { Assignment<d_Interval>(d, const_cast<void*>(s), n, 0); });
}

// The decimal of the truncated count.
LmTypeConvertData* IntervalConvertTo(void* value, unsigned count) {
    LmString* strings = ConvertStringsCreate(count);
    if (strings == nullptr) return nullptr;
    const auto* values = static_cast<const unsigned char*>(value);
    for (unsigned i = 0; i < count; ++i) {
        strings[i] += LmString(TruncToInt(Read<d_Interval>(values + i * kWidth).total_seconds()));
    }
    return LmTypeConvertData::Make(LmSTRING_T, count, strings, nullptr);
}

// The number counts days here, unlike the seconds that ConvertTo writes; a missing or
// null string leaves the zero interval.
void* IntervalConvertFrom(LmTypeConvertData* data, unsigned count) {
    void* values = Create<d_Interval>(count);
    if (count == 0 || values == nullptr) return values;
    for (unsigned i = 0; i < count; ++i) {
        const LmString* text = data != nullptr ? data->GetString(static_cast<int>(i)) : nullptr;
        if (text != nullptr && text->IsNullValue() == 0) {
            Write(static_cast<unsigned char*>(values) + i * kWidth, d_Interval(static_cast<int>(*text), 0, 0, 0.0f));
        }
    }
    return values;
}

// Printed as an LmDateTime of year 0, month 1 and the reads: the days cut to a byte.
LmString& IntervalPrintToString(LmString& out, void* value, const char* format, unsigned) {
    const auto v = Read<d_Interval>(value);
    return lmstd::Widened(0, 1, v.day(), v.hour(), v.minute(), TruncToInt(v.second())).PrintToLmString(out, format);
}

// A new interval of the day, hour, minute and second read.
void* IntervalScanFromString(void* value, LmString& text, const char* format, unsigned) {
    if (value == nullptr) return nullptr;
    LmDateTime read(0, 0, 0, 0, 0, 0);
    const bool ok = lmstd::ScanDateTime(text, format, read);
    Write(value, d_Interval(read.day, read.hour, read.minute, static_cast<float>(read.second)));
    return ok ? value : nullptr;
}

// Mode 2 is the zero interval, 'O' keeps the value, 'M' and 'N' add 0.01 seconds
// when that makes the float grow.
int IntervalGetValue(void* value, unsigned, unsigned char format, unsigned char mode) {
    if (format != LmFormatMemory) return LM_ERR_NOT_SUPPORTED;
    const auto v = Read<d_Interval>(value);
    switch (mode) {
        case 2:
            Write(value, d_Interval());
            return LM_OK;
        case 'O':
            return LM_OK;
        case 'M':
        case 'N': {
            const d_Interval next = v + lmstd::kHundredth;
            if (!(next > v)) return LM_ERR_NO_NEXT_VALUE;
            Write(value, next);
            return LM_OK;
        }
        default:
            return LM_ERR_NOT_SUPPORTED;
    }
}

}  // namespace

constinit LmTypeDesc LmDesc_d_Interval = {"d_Interval",
                                          "D_INTERVAL_T",
                                          Create<d_Interval>,
                                          Delete<d_Interval>,
                                          FloatStore,
                                          FloatStore,
                                          FloatNullSizeGet,
                                          FloatSizeGet,
                                          IntervalSizeGetFromMemFile,
                                          FloatCompare,
                                          FloatEvalAndBound,
                                          FloatHash,
                                          IntervalConvertTo,
                                          IntervalConvertFrom,
                                          Constructor<d_Interval>,
                                          Destructor,
                                          Assignment<d_Interval>,
                                          Assignment<d_Interval>,
                                          IntervalTranslate,
                                          NeverNullValue,
                                          nullptr,
                                          "%e days, %I hours, %M minutes, %S seconds",
                                          IntervalPrintToString,
                                          IntervalScanFromString,
                                          kWidth,
                                          1,
                                          DefaultValueFromText<IntervalConvertFrom>,
                                          IntervalGetValue,
                                          nullptr};
