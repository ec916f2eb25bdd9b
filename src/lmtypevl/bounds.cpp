// The frame every evaluator shares: the overlap of a comparison with the index range
// on a line, and the bounds copied from the value.
#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdlib>

#include "lmbounds.h"

namespace {

// A NaN or infinite part counts as the largest double and is taken; another is
// taken only above 0.
inline double Part(double t) { return std::isfinite(t) ? (t > 0 ? t : 0.0) : DBL_MAX; }

}  // namespace

double BoundOverlap(unsigned short op, double lo, double hi, double min, double max, double unit) {
    double r = 0;
    if ((op & LM_BOUND_GT) != 0) r += Part(max - (min > hi ? min - unit : hi));
    if ((op & LM_BOUND_LT) != 0) r += Part((lo > max ? max + unit : lo) - min);
    if ((op & LM_BOUND_EQ) != 0) {
        // A NaN of the range reaches t: std::min and std::max give their first
        // argument when a comparison fails.
        double t = std::min(max, hi) - std::max(min, lo);
        if (!std::isfinite(t)) t = DBL_MAX;
        t += unit;
        if (t > 0) r += t;
    }
    return r;
}

namespace {

void* CopyOf(const void* value, unsigned size, uint8_t& len) {
    void* key = std::malloc(size);
    if (key == nullptr) {
        LmCallMemoryHandler(size);
        return nullptr;
    }
    if (size != 0) std::memcpy(key, value, size);
    len = static_cast<uint8_t>(size);
    return key;
}

}  // namespace

void BoundFillFromValue(LmIdxBounds* out, const void* value, unsigned short op, unsigned size) {
    if (out == nullptr) return;
    // Keys below the value are not asked for: the value is a lower bound.
    if (out->lower == nullptr && (op & LM_BOUND_LT) == 0) out->lower = CopyOf(value, size, out->lowerLen);
    if (out->upper == nullptr && (op & LM_BOUND_GT) == 0) out->upper = CopyOf(value, size, out->upperLen);
}
