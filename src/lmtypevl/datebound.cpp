// The evaluators of the date and time values. The keys of LmTime, LmDateTime,
// LmDateTimeN and LmTimeSpan may leave fields open: the bound then opens up to the
// field's whole range, in the copies of the value that make the bounds, and
// LM_BOUND_INEXACT tells the caller to filter. The standard family (d_Date, d_Time,
// d_Timestamp) counts its keys on lines of its own and sets no such bit.
#include <cstdint>
#include <cstring>

#include "lmbounds.h"
#include "lmcompare.h"
#include "lmstring.h"

using namespace lmbound;

namespace {

constexpr unsigned short kWordMask = 0x8007;  // the comparison, and bit 15 as it came in
constexpr unsigned char kWildByte = 0xFF;
constexpr unsigned char kLowByte = 0x80, kHighByte = 0x7F;

// The bounds made from the value by this call, to be patched: a bound the caller set
// before stays as it is.
struct Copies {
    unsigned char* lower;
    unsigned char* upper;
};

Copies FillFromValue(LmIdxBounds* out, const void* value, unsigned short op, unsigned size) {
    if (out == nullptr) return {nullptr, nullptr};
    const bool hadLower = out->lower != nullptr, hadUpper = out->upper != nullptr;
    BoundFillFromValue(out, value, op, size);
    return {hadLower ? nullptr : static_cast<unsigned char*>(out->lower),
            hadUpper ? nullptr : static_cast<unsigned char*>(out->upper)};
}

// Writes both sides' bytes of `n` fields at `at` into the copies that exist.
void Patch(const Copies& c, unsigned at, const unsigned char* lower, const unsigned char* upper, unsigned n) {
    if (c.lower != nullptr) std::memcpy(c.lower + at, lower, n);
    if (c.upper != nullptr) std::memcpy(c.upper + at, upper, n);
}

inline int Signed(unsigned char b) { return static_cast<int8_t>(b); }

// The byte fields of a key from `first` on: while no field was wild, a field is kept
// on both sides unless it is 0xFF (and wildcards are on); from a wild field on, every
// field becomes 0x80 below and 0x7F above, and the word tells the caller to filter.
void OpenFields(const unsigned char* value, unsigned n, bool literal, unsigned short& op, unsigned char* lower,
                unsigned char* upper) {
    for (unsigned i = 0; i < n; ++i) {
        if ((op & LM_BOUND_INEXACT) == 0 && (value[i] != kWildByte || literal)) {
            lower[i] = upper[i] = value[i];
        } else {
            lower[i] = kLowByte;
            upper[i] = kHighByte;
            op |= LM_BOUND_INEXACT;
        }
    }
}

// ---- LmTime: hour, minute, second. ----

// A wild hour on the lower side counts 128, not -128: the hour is read unsigned.
int TimeLine(const unsigned char* t, bool hourUnsigned) {
    const int hour = hourUnsigned ? t[0] : Signed(t[0]);
    return (hour * 60 + Signed(t[1])) * 60 + Signed(t[2]);
}

// ---- LmDateTime and the nanosecond pair: year (16 bits), five byte fields. ----

// The year markers: 0xFFFE, turned for good into 0xFFFF (and the nanosecond marker
// into -1) by the first use with a disk format. Every writer stores the same value.
uint16_t dateTimeYearMarker = 0xFFFE;
uint16_t dateTimeNYearMarker = 0xFFFE;
uint32_t nanosecondMarker = 0xFFFFFFFE;

double DateTimeLine(int year, const unsigned char* f) {
    return ((((static_cast<double>(year) * 12 + Signed(f[0])) * 31 + Signed(f[1])) * 24 + Signed(f[2])) * 60 +
            Signed(f[3])) *
               60 +
           Signed(f[4]);
}

double DateTimeKeyLine(const void* key, unsigned char format) {
    const auto* k = static_cast<const unsigned char*>(key);
    return DateTimeLine(static_cast<int16_t>(Load16(k, format)), k + 2);
}

// The first seven bytes of a date-time key, opened where wild; answers the share.
float DateTimeBody(LmIdxBounds* range, unsigned short& op, const unsigned char* v, unsigned char format,
                   const Copies& c, uint16_t& yearMarker, bool literal) {
    if ((format & 15u) != LmFormatMemory) yearMarker = 0xFFFF;
    int status = 0;
    const bool wildYear = !literal && ShortCompare(format, 2, const_cast<unsigned char*>(v), 2, &yearMarker,
                                                   LM_CMP_NO_WILDCARD, 1, status) == 0;
    int lowYear = static_cast<int16_t>(Load16(v, format)), highYear = lowYear;
    if (wildYear) {
        lowYear = -32768;
        highYear = 32767;
        op |= LM_BOUND_INEXACT;
        unsigned char lo[2], hi[2];
        Store16(lo, 0x8000, format);
        Store16(hi, 0x7FFF, format);
        Patch(c, 0, lo, hi, 2);
    }
    unsigned char lower[5], upper[5];
    OpenFields(v + 2, 5, literal, op, lower, upper);
    Patch(c, 2, lower, upper, 5);
    double min = 0, max = 0;
    if (RangeUsable(range, 7)) {
        min = DateTimeKeyLine(range->lower, format);
        max = DateTimeKeyLine(range->upper, format);
    }
    const double r = BoundOverlap(op, DateTimeLine(lowYear, lower), DateTimeLine(highYear, upper), min, max, 1.0);
    return Share(r, max - min + 1.0);
}

float DateTimeNEvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned count,
                            LmIdxBounds* out) {
    const bool literal = (op & LM_CMP_NO_WILDCARD) != 0;
    op &= kWordMask;
    const auto* v = static_cast<const unsigned char*>(value);
    const Copies c = FillFromValue(out, value, op, 11 * count);
    const float share = DateTimeBody(range, op, v, format, c, dateTimeNYearMarker, literal);
    if (out != nullptr && (op & LM_BOUND_INEXACT) != 0) {
        out->lowerFlags = static_cast<uint16_t>(out->lowerFlags & ~1u);
        out->upperFlags = static_cast<uint16_t>(out->upperFlags & ~1u);
    }
    // The nanoseconds: wild like the year, or behind a wild field. The upper bound says
    // 1000000000, one above the largest real value; they are not on the line.
    if ((format & 15u) != LmFormatMemory) nanosecondMarker = 0xFFFFFFFF;
    int status = 0;
    const bool wild = (op & LM_BOUND_INEXACT) != 0 ||
                      (!literal && LongCompare(format, 4, const_cast<unsigned char*>(v + 7), 4, &nanosecondMarker,
                                               LM_CMP_NO_WILDCARD, 1, status) == 0);
    unsigned char lower[4], upper[4];
    std::memcpy(lower, v + 7, 4);
    std::memcpy(upper, v + 7, 4);
    if (wild) {
        const uint32_t low = 0, high = 1000000000;
        LongStoreOne(lower, &low, format);
        LongStoreOne(upper, &high, format);
        op |= LM_BOUND_INEXACT;
    }
    Patch(c, 7, lower, upper, 4);
    return share;
}

// ---- The standard family. ----

int StandardDateLine(const void* key, unsigned char format) {
    const auto* k = static_cast<const unsigned char*>(key);
    int16_t year = 0;
    ShortStore(&year, k, format, 1);
    return ((year + 40000) * 12 + Signed(k[2])) * 31 + Signed(k[3]);
}

int StandardTimeLine(const void* key) {
    const auto* k = static_cast<const unsigned char*>(key);
    return (Signed(k[2]) * 60 + Signed(k[3])) * 60 + Signed(k[4]);
}

double TimestampLine(const void* key, unsigned char format) {
    const auto* k = static_cast<const unsigned char*>(key);
    int16_t year = 0;
    ShortStore(&year, k, format, 1);
    // The hour adds to the day without its factor 24, and the second plays no part.
    return ((((static_cast<double>(year) + 40000) * 12 + Signed(k[2])) * 31 + Signed(k[3]) + Signed(k[6])) * 60 +
            Signed(k[7])) *
           60;
}

// The count of d_Date and d_Time for a place d keys above the range's lower end.
float StandardCount(unsigned short op, int d, int width) {
    int count = (op & LM_BOUND_LT) != 0 ? d : 0;
    if ((op & LM_BOUND_GT) != 0) count += width - d - 1;
    if ((op & LM_BOUND_EQ) != 0) count += 1;
    return Share(count < 0 ? 0 : count, width);
}

}  // namespace

float TimeEvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char, unsigned count,
                       LmIdxBounds* out) {
    const bool literal = (op & LM_CMP_NO_WILDCARD) != 0;
    op &= kWordMask;
    const Copies c = FillFromValue(out, value, op, 3 * count);
    unsigned char lower[3], upper[3];
    OpenFields(static_cast<const unsigned char*>(value), 3, literal, op, lower, upper);
    Patch(c, 0, lower, upper, 3);
    int min = 0, max = 0;
    if (RangeUsable(range, 3)) {
        min = TimeLine(static_cast<const unsigned char*>(range->lower), false);
        max = TimeLine(static_cast<const unsigned char*>(range->upper), false);
    }
    return Share(BoundOverlap(op, TimeLine(lower, true), TimeLine(upper, true), min, max, 1.0), max - min + 1);
}

float DateTimeEvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned count,
                           LmIdxBounds* out) {
    const bool literal = (op & LM_CMP_NO_WILDCARD) != 0;
    op &= kWordMask;
    const Copies c = FillFromValue(out, value, op, 7 * count);
    return DateTimeBody(range, op, static_cast<const unsigned char*>(value), format, c, dateTimeYearMarker, literal);
}

float DateTimeNanoEvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format,
                               unsigned count, LmIdxBounds* out) {
    return DateTimeNEvalAndBound(range, op, value, format, count, out);
}

// d_Date: a wild year covers everything; a wild month or day is tested on the bounds
// made now (with none, a month of 0xFF is -1), and the day is read from the byte
// behind the last field taken from the value, which after a wild month is the month
// byte itself.
float StandardDateEvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format,
                               unsigned count, LmIdxBounds* out) {
    op &= 0x800F;
    const auto* v = static_cast<const unsigned char*>(value);
    const Copies c = FillFromValue(out, value, op, 4 * count);
    int lower = 0, upper = 0;
    if (RangeUsable(range, 4)) {
        lower = StandardDateLine(range->lower, format);
        upper = StandardDateLine(range->upper, format);
    }
    const int width = upper - lower + 1;
    int16_t year = 0;
    ShortStore(&year, v, format, 1);
    const bool wildYear = static_cast<uint16_t>(year) == 0xFFFF;
    if (wildYear) {
        int16_t lo = -32768, hi = 32767;
        if (c.lower != nullptr) ShortStore(c.lower, &lo, format, 1);
        if (c.upper != nullptr) ShortStore(c.upper, &hi, format, 1);
    }
    int position = wildYear ? 480000 : (year + 40000) * 12;
    const unsigned char* next = v + 2;
    const auto field = [&](unsigned at, int whole) {
        const bool wild =
            (c.lower != nullptr && c.lower[at] == kWildByte) || (c.upper != nullptr && c.upper[at] == kWildByte);
        if (!wild) return Signed(*next++);
        if (c.upper != nullptr) c.upper[at] = kHighByte;
        if (c.lower != nullptr) c.lower[at] = kLowByte;
        return whole;
    };
    position = (position + field(2, 12)) * 31;
    position += field(3, 31);
    if (wildYear) return Share(width, width);
    return StandardCount(op, position - lower, width);
}

float StandardTimeEvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char, unsigned count,
                               LmIdxBounds* out) {
    op &= 0x800F;
    int lower = 0, upper = 0;
    if (RangeUsable(range, 5)) {
        lower = StandardTimeLine(range->lower);
        upper = StandardTimeLine(range->upper);
    }
    BoundFillFromValue(out, value, op, 6 * count);
    return StandardCount(op, StandardTimeLine(value) - lower, upper - lower + 1);
}

float TimestampEvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned count,
                            LmIdxBounds* out) {
    op &= 0x800F;
    double lower = 0, upper = 0;
    if (RangeUsable(range, 8)) {
        lower = TimestampLine(range->lower, format);
        upper = TimestampLine(range->upper, format);
    }
    BoundFillFromValue(out, value, op, 10 * count);
    const double d = TimestampLine(value, format) - lower + 1, width = upper - lower + 1;
    double r = (op & LM_BOUND_LT) != 0 ? d - 1 : 0;
    if ((op & LM_BOUND_GT) != 0) r += width - d;
    if ((op & LM_BOUND_EQ) != 0) r += 1;
    return Share(r > 0 ? r : 0, width);
}
