// The overlap of the nullable family. A null is a point below the base's line: a
// range whose lower key is null says that the index holds nulls, and a comparison
// that reaches down to them gets a fixed share of the line instead of a length.
// No NaN or overflow guard is made; a null's place is 0.
#include <algorithm>

#include "lmbounds.h"

double NullBoundOverlap(unsigned short op, LmNullPoint value, LmNullPoint lower, LmNullPoint upper) {
    const double v = value.at, l = lower.at, u = upper.at;
    const bool allValues = !value.null && !lower.null && !upper.null;
    // A value against a range that runs from the nulls up to a value.
    const bool valueOverNulls = !value.null && lower.null && !upper.null;
    double r = 0;
    if ((op & LM_BOUND_GT) != 0) {
        if (allValues) {
            const double t = u - (l > v ? l - 1.0 : v);
            if (t > 0) r += t;
        } else if (!upper.null && (value.null || lower.null)) {
            r += 0.5;
        }
    }
    if ((op & LM_BOUND_LT) != 0) {
        if (allValues) {
            const double t = (v > u ? u + 1.0 : v) - l;
            if (t > 0) r += t;
        } else if (valueOverNulls) {
            r += 0.5;
        }
    }
    if ((op & LM_BOUND_EQ) != 0) {
        if (allValues) {
            const double t = std::min(u, v) + 1.0 - std::max(l, v);
            if (t > 0) r += t;
        } else if (valueOverNulls) {
            r += 0.1;
        } else if (value.null && lower.null) {
            r += 0.001;
        }
    }
    return r;
}

// A count of 0 becomes one key where the value lies within the range by the
// integers (a null lower key and a value count as within it from below), and a
// null value under a range that holds values is one key too. The rule for a null
// value and a null lower key whose value field lies above the value's cannot arise:
// a loaded null holds 0 in both.
double NullInt64Count(unsigned short op, double r, LmNullPoint value, LmNullPoint lower, LmNullPoint upper,
                      bool lowerAtMost, bool upperAtLeast) {
    if (r == 0 && ((op & LM_BOUND_GT) != 0 || lowerAtMost || (lower.null && !value.null)) &&
        ((op & LM_BOUND_LT) != 0 || upperAtLeast))
        r = 1.0;
    if (value.null && !upper.null) r = 1.0;
    return r;
}
