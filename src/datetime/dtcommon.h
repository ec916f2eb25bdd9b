// Internal: small helpers that the date and time classes share.
#ifndef DTCOMMON_H
#define DTCOMMON_H

#include <cstdint>

namespace lmdatetime {

// The low 32 bits of a wider result, as a signed number: the wrapping arithmetic of a
// 32-bit machine, without undefined behaviour.
constexpr int32_t Wrap(int64_t v) noexcept { return static_cast<int32_t>(v); }

// The first non-zero difference of three fields, this minus other. With wildcards a
// field that is -1 in either value is skipped, and the next one decides.
inline int CompareFields(int a0, int a1, int a2, int b0, int b1, int b2, bool wildcards) noexcept {
    if (!(wildcards && (a0 == -1 || b0 == -1)) && a0 != b0) return a0 - b0;
    if (!(wildcards && (a1 == -1 || b1 == -1)) && a1 != b1) return a1 - b1;
    if (!(wildcards && (a2 == -1 || b2 == -1)) && a2 != b2) return a2 - b2;
    return 0;
}

}  // namespace lmdatetime

#endif
