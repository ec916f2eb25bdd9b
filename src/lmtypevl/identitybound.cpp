// The evaluators of the identity values and of the types without a line. An object
// id stands on a line of its own, its 16-bit word times 65535 (not 65536: positions
// of neighbouring words overlap slightly, which an estimate tolerates) plus its
// 32-bit word. A reference is placed on the whole space of references, whatever the
// range. Class ids and blobs cover everything; a boolean a third of a range.
#include <cstdint>

#include "lmbounds.h"
#include "lmidentity.h"

using namespace lmbound;

namespace {

// 4294967295 squared, as a double: the size of the space of references.
constexpr double kReferenceSpace = 1.8446744065119617e+19;

double ObjIdLine(const void* key, unsigned char format) {
    const auto* k = static_cast<const unsigned char*>(key);
    uint16_t high = 0;
    uint32_t low = 0;
    ShortStoreOne(&high, k + 8, format);
    LongStoreOne(&low, k + 4, format);
    return static_cast<double>(high) * 65535.0 + static_cast<double>(low);
}

}  // namespace

float LmObjId::EvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned count,
                            LmIdxBounds* out) {
    double r = 0, lower = 0, upper = 0;
    if (RangeUsable(range, 10)) {
        upper = ObjIdLine(range->upper, format);
        lower = ObjIdLine(range->lower, format);
        const double v = ObjIdLine(value, format);
        r = BoundOverlap(op, v, v, lower, upper, 1.0);
    }
    BoundFillFromValue(out, value, op, 10 * count);
    return Share(r, upper - lower + 1);
}

float LmRef::EvalAndBound(LmIdxBounds*, unsigned short& op, void* value, unsigned char format, unsigned count,
                          LmIdxBounds* out) {
    const auto* k = static_cast<const unsigned char*>(value);
    uint16_t words[2] = {0, 0};  // high, databaseId
    uint32_t low = 0;
    ShortStore(words, k + 8, format, 2);
    LongStoreOne(&low, k + 4, format);
    const double p = (words[1] * 65535.0 + words[0]) * 4294967295.0 + low;
    op &= 0x800F;
    double r = 0;
    if ((op & LM_BOUND_LT) != 0) r += p;
    if ((op & LM_BOUND_GT) != 0) r += kReferenceSpace - (p + 1.0);
    if ((op & LM_BOUND_EQ) != 0) r += 1.0;
    BoundFillFromValue(out, value, op, 14 * count);
    return Share(r, kReferenceSpace);
}

float NoLineEvalAndBound(LmIdxBounds*, unsigned short&, void*, unsigned char, unsigned, LmIdxBounds*) { return 1.0f; }

float LmClassId::EvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned count,
                              LmIdxBounds* out) {
    return NoLineEvalAndBound(range, op, value, format, count, out);
}

float BooleanEvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char, unsigned count,
                          LmIdxBounds* out) {
    BoundFillFromValue(out, value, op, count);
    return range != nullptr ? static_cast<float>(1.0 / 3.0) : 0.0f;
}
