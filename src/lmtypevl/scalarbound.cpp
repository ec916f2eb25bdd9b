// The evaluators of the plain numbers. A key's place on the line is its own value as
// a double; the range's width is upper - lower + 1 keys. 64-bit keys close to one
// another collapse to one double, which the in-range rule mends; floating keys get a
// floor, so that a predicate that matches at all never has a share of 0.
#include <cfloat>
#include <cmath>
#include <cstdint>

#include "lmbounds.h"

using namespace lmbound;

namespace {

// What sets a row apart: how a key is read, how wide it is on disk, how the width of
// the range is computed, and the rule that runs after the overlap.
enum class Rule { None, InRangeSigned, InRangeUnsigned, Float, FloatGuarded };

template <typename T>
struct Row {
    T (*read)(const void* key, unsigned char format);
    unsigned width;  // bytes of one key
    bool intWidth;   // the width of the range is computed in int
    Rule rule;
};

int8_t ReadChar(const void* key, unsigned char) { return static_cast<int8_t>(*static_cast<const uint8_t*>(key)); }
uint8_t ReadByte(const void* key, unsigned char) { return *static_cast<const uint8_t*>(key); }
int16_t ReadShort(const void* key, unsigned char format) { return static_cast<int16_t>(Load16(key, format)); }
uint16_t ReadWord(const void* key, unsigned char format) { return Load16(key, format); }
int32_t ReadLong(const void* key, unsigned char format) { return static_cast<int32_t>(Load32(key, format)); }
uint32_t ReadDword(const void* key, unsigned char format) { return Load32(key, format); }
int32_t ReadInt(const void* key, unsigned char format) {
    int32_t v = 0;
    IntLoad(&v, key, format, 1);
    return v;
}
uint32_t ReadUnsigned(const void* key, unsigned char format) {
    uint32_t v = 0;
    IntLoad(&v, key, format, 1);
    return v;
}
int64_t Read8B(const void* key, unsigned char format) { return static_cast<int64_t>(Load64(key, format)); }
uint64_t ReadU8B(const void* key, unsigned char format) { return Load64(key, format); }
double ReadDouble(const void* key, unsigned char format) {
    double v = 0;
    DoubleStore(&v, key, format, 1);
    return v;
}
float ReadFloat(const void* key, unsigned char format) {
    float v = 0;
    FloatStore(&v, key, format, 1);
    return v;
}

// The place of a key on the line. An unsigned 64-bit key above the signed range is
// halved (keeping its low bit for the rounding) and doubled.
template <typename T>
double Line(T v) {
    if constexpr (std::is_same_v<T, uint64_t>) {
        if ((v >> 63) != 0) return static_cast<double>(static_cast<int64_t>(v >> 1 | (v & 1))) * 2.0;
    }
    return static_cast<double>(v);
}

template <typename T>
float Evaluate(const Row<T>& row, LmIdxBounds* range, unsigned short op, void* value, unsigned char format,
               unsigned size, LmIdxBounds* out) {
    const T v = row.read(value, format);
    const bool ranged = RangeUsable(range, row.width);
    T lower{}, upper{};
    double r = 0;
    if (ranged) {
        upper = row.read(range->upper, format);
        lower = row.read(range->lower, format);
        r = BoundOverlap(op, Line(v), Line(v), Line(lower), Line(upper), 1.0);
        // 64-bit keys close together collapse to one double: a value inside the range
        // (by the integers) always covers something.
        if ((row.rule == Rule::InRangeSigned || row.rule == Rule::InRangeUnsigned) && r == 0 &&
            ((op & LM_BOUND_GT) != 0 || lower <= v) && ((op & LM_BOUND_LT) != 0 || v <= upper))
            r = 1.0;
    }
    BoundFillFromValue(out, value, op, size);

    if (row.rule == Rule::Float || row.rule == Rule::FloatGuarded) {
        double width = Line(upper) - Line(lower);
        if (row.rule == Rule::FloatGuarded) {
            if (!std::isfinite(r)) r = DBL_MAX;
            if (!std::isfinite(width)) width = DBL_MAX;
        }
        width += 1.0;
        if (r == 0) return 0.0f;
        const double share = r / width;
        constexpr double kFloor = 1.1920928955078125e-07;  // 2^-23
        return static_cast<float>(share > kFloor ? share : kFloor);
    }
    if (row.intWidth) return Share(r, static_cast<int>(upper) - static_cast<int>(lower) + 1);
    return Share(r, Line(upper) - Line(lower) + 1.0);
}

constexpr Row<int8_t> kChar{ReadChar, 1, true, Rule::None};
constexpr Row<uint8_t> kByte{ReadByte, 1, true, Rule::None};
constexpr Row<int16_t> kShort{ReadShort, 2, true, Rule::None};
constexpr Row<uint16_t> kWord{ReadWord, 2, true, Rule::None};
constexpr Row<int32_t> kLong{ReadLong, 4, false, Rule::None};
constexpr Row<uint32_t> kDword{ReadDword, 4, false, Rule::None};
constexpr Row<int32_t> kInt{ReadInt, 4, false, Rule::None};
constexpr Row<uint32_t> kUnsigned{ReadUnsigned, 4, false, Rule::None};
constexpr Row<int64_t> k8B{Read8B, 8, false, Rule::InRangeSigned};
constexpr Row<uint64_t> kU8B{ReadU8B, 8, false, Rule::InRangeUnsigned};
constexpr Row<double> kDouble{ReadDouble, 8, false, Rule::FloatGuarded};
constexpr Row<float> kFloat{ReadFloat, 4, false, Rule::Float};

}  // namespace

// The comparison word is not changed by any of these.
float CharEvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned count,
                       LmIdxBounds* out) {
    return Evaluate(kChar, range, op, value, format, count, out);
}
float ByteEvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned count,
                       LmIdxBounds* out) {
    return Evaluate(kByte, range, op, value, format, count, out);
}
float ShortEvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned count,
                        LmIdxBounds* out) {
    return Evaluate(kShort, range, op, value, format, 2 * count, out);
}
float WordEvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned count,
                       LmIdxBounds* out) {
    return Evaluate(kWord, range, op, value, format, 2 * count, out);
}
float LongEvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned count,
                       LmIdxBounds* out) {
    return Evaluate(kLong, range, op, value, format, 4 * count, out);
}
float DwordEvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned count,
                        LmIdxBounds* out) {
    return Evaluate(kDword, range, op, value, format, 4 * count, out);
}
float IntEvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned count,
                      LmIdxBounds* out) {
    return Evaluate(kInt, range, op, value, format, 4 * count, out);
}
float UnsignedEvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned count,
                           LmIdxBounds* out) {
    return Evaluate(kUnsigned, range, op, value, format, 4 * count, out);
}
float O_8BEvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned count,
                       LmIdxBounds* out) {
    return Evaluate(k8B, range, op, value, format, 8 * count, out);
}
float O_U8BEvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned count,
                        LmIdxBounds* out) {
    return Evaluate(kU8B, range, op, value, format, 8 * count, out);
}
float DoubleEvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned count,
                         LmIdxBounds* out) {
    return Evaluate(kDouble, range, op, value, format, DoubleSizeGet(nullptr, 8, format, count), out);
}
float FloatEvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned count,
                        LmIdxBounds* out) {
    return Evaluate(kFloat, range, op, value, format, FloatSizeGet(nullptr, 8, format, count), out);
}
