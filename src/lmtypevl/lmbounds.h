// Internal: the frame of EvalAndBound and the evaluators that fill the EvalAndBound
// slot of every ordered type. An evaluator places the value and the index's key range
// on a line, measures the share of the range that the comparison word covers, and
// writes the keys that bound the scan (malloc'ed, the caller's from then on).
#ifndef LMBOUNDS_H
#define LMBOUNDS_H

#include <cstdint>
#include <cstring>

#include "lmtypedesc.h"

// The length of the part of the line [min, max] that the comparison covers for a
// value standing on [lo, hi] (lo = hi for a plain value); `unit` is the width of one
// key. A value beyond the range on the far side covers the whole range and one unit
// more; an equal test adds one unit inside the range. NaN or infinite parts count
// as DBL_MAX.
double BoundOverlap(unsigned short op, double lo, double hi, double min, double max, double unit);

// Copies the value's `size` bytes into a new lower bound unless LM_BOUND_LT is asked
// (keys below the value), and into a new upper bound unless LM_BOUND_GT is; only
// where out has none yet. A failed malloc calls LmCallMemoryHandler and leaves the
// bound null. Nothing happens for a null out.
void BoundFillFromValue(LmIdxBounds* out, const void* value, unsigned short op, unsigned size);

namespace lmbound {

// A key of the index range can be read when it is there and holds `need` bytes.
// A range whose keys cannot both be read is not used: the evaluation goes on as
// without statistics.
inline bool RangeUsable(const LmIdxBounds* range, unsigned need) {
    return range != nullptr && range->lower != nullptr && range->upper != nullptr && range->lowerLen >= need &&
           range->upperLen >= need;
}

// Words of a key in store order: only LmFormatBig is most significant byte first.
inline bool BigFirst(unsigned char format) { return (format & 15u) == 2; }

inline uint16_t Load16(const void* key, unsigned char format) {
    const auto* p = static_cast<const unsigned char*>(key);
    return BigFirst(format) ? static_cast<uint16_t>(p[0] << 8 | p[1]) : static_cast<uint16_t>(p[0] | p[1] << 8);
}

inline uint32_t Load32(const void* key, unsigned char format) {
    const auto* p = static_cast<const unsigned char*>(key);
    uint32_t v = 0;
    for (int i = 0; i < 4; ++i) v |= static_cast<uint32_t>(p[BigFirst(format) ? 3 - i : i]) << (8 * i);
    return v;
}

inline uint64_t Load64(const void* key, unsigned char format) {
    const auto* p = static_cast<const unsigned char*>(key);
    uint64_t v = 0;
    for (int i = 0; i < 8; ++i) v |= static_cast<uint64_t>(p[BigFirst(format) ? 7 - i : i]) << (8 * i);
    return v;
}

inline void Store16(void* key, uint16_t v, unsigned char format) {
    auto* p = static_cast<unsigned char*>(key);
    p[BigFirst(format) ? 1 : 0] = static_cast<unsigned char>(v & 0xFF);
    p[BigFirst(format) ? 0 : 1] = static_cast<unsigned char>(v >> 8);
}

// The share r / width, a ratio of two doubles, converted to float once.
inline float Share(double r, double width) { return static_cast<float>(r / width); }

}  // namespace lmbound

// ---- The evaluators, in the shape of the EvalAndBound slot. ----
#define LM_BOUND_DECL(name)                                                                               \
    float name(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned count, \
               LmIdxBounds* out)

// Plain numbers (scalarbound.cpp).
LM_BOUND_DECL(CharEvalAndBound);      // o_char
LM_BOUND_DECL(ByteEvalAndBound);      // o_u1b
LM_BOUND_DECL(ShortEvalAndBound);     // o_2b
LM_BOUND_DECL(WordEvalAndBound);      // o_u2b
LM_BOUND_DECL(LongEvalAndBound);      // o_4b
LM_BOUND_DECL(DwordEvalAndBound);     // o_u4b, BlockId
LM_BOUND_DECL(IntEvalAndBound);       // int, enum
LM_BOUND_DECL(UnsignedEvalAndBound);  // unsigned
LM_BOUND_DECL(O_8BEvalAndBound);      // o_8b
LM_BOUND_DECL(O_U8BEvalAndBound);     // o_u8b
LM_BOUND_DECL(DoubleEvalAndBound);    // o_double
LM_BOUND_DECL(FloatEvalAndBound);     // o_float, d_Interval

// Strings (stringbound.cpp): one routine for the current and the old form.
float StringEvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned count,
                         LmIdxBounds* out, int oldForm);
LM_BOUND_DECL(StringEvalAndBoundCurrent);  // LmString, factory levels 4 and up
LM_BOUND_DECL(StringEvalAndBoundLegacy);   // LmString, the old form of levels below 4

// Date and time values (datebound.cpp). LmDate's stands beside its class.
LM_BOUND_DECL(TimeEvalAndBound);          // LmTime
LM_BOUND_DECL(DateTimeEvalAndBound);      // LmDateTime
LM_BOUND_DECL(DateTimeNanoEvalAndBound);  // LmDateTimeN, LmTimeSpan
LM_BOUND_DECL(StandardDateEvalAndBound);  // d_Date
LM_BOUND_DECL(StandardTimeEvalAndBound);  // d_Time
LM_BOUND_DECL(TimestampEvalAndBound);     // d_Timestamp

// The types without a line and the boolean (identitybound.cpp); the identity values
// have theirs as members of their classes.
LM_BOUND_DECL(NoLineEvalAndBound);   // LmClassId, LmBlob: 1.0, no bound
LM_BOUND_DECL(BooleanEvalAndBound);  // LmBoolean: a third of a range

// Fixed-form strings (fixedbound.cpp).
LM_BOUND_DECL(IStringEvalAndBound);      // LmIString
LM_BOUND_DECL(CaseIStringEvalAndBound);  // LmCaseIString

#endif
