// The free overlaps functions of the standard family: one decision for every pair of
// ranges, written once over the order of the values compared.
#include "lmstddate.h"

namespace {

// With lo the smaller and hi the larger of a and b: c or d within [lo, hi], or c at
// or before lo with d at or after hi, overlap. Otherwise a d after lo does not; and
// what is left is a second range given in reverse, which overlaps when c is at or
// after hi, that is when it spans the first range.
template <typename T>
int Overlap(const T& a, const T& b, const T& c, const T& d) noexcept {
    const bool swapped = b < a;
    const T& lo = swapped ? b : a;
    const T& hi = swapped ? a : b;
    if (lo <= c && c <= hi) return 1;
    if (lo <= d && d <= hi) return 1;
    if (c <= lo && d >= hi) return 1;
    if (d > lo) return 0;
    return c >= hi ? 1 : 0;
}

}  // namespace

int overlaps(const d_Date& a, const d_Date& b, const d_Date& c, const d_Date& d) noexcept {
    return Overlap(a, b, c, d);
}
int overlaps(const d_Time& a, const d_Time& b, const d_Time& c, const d_Time& d) noexcept {
    return Overlap(a, b, c, d);
}
// The four timestamps are compared in the field order of d_Timestamp.
int overlaps(const d_Timestamp& a, const d_Timestamp& b, const d_Timestamp& c, const d_Timestamp& d) noexcept {
    return Overlap(a, b, c, d);
}
int overlaps(const d_Date& a, const d_Date& b, const d_Timestamp& c, const d_Timestamp& d) noexcept {
    return Overlap(a, b, c.date(), d.date());
}
int overlaps(const d_Time& a, const d_Time& b, const d_Timestamp& c, const d_Timestamp& d) noexcept {
    return Overlap(a, b, c.time(), d.time());
}
int overlaps(const d_Timestamp& a, const d_Timestamp& b, const d_Date& c, const d_Date& d) noexcept {
    return Overlap(a.date(), b.date(), c, d);
}
int overlaps(const d_Timestamp& a, const d_Timestamp& b, const d_Time& c, const d_Time& d) noexcept {
    return Overlap(a.time(), b.time(), c, d);
}
