// Assertion and memory-failure reporting, and the version check.
#include "lumobase.h"

#include <cstdio>

namespace {

void DefaultAssertHandler(const char* message, const char* stem, int line) {
    std::fprintf(stderr, "lumo assertion: %s [%s:%d]\n", message ? message : "", stem ? stem : "", line);
}

void DefaultMemoryHandler(size_t) {}

LmAssertHandler assertHandler = DefaultAssertHandler;
LmMemoryHandler memoryHandler = DefaultMemoryHandler;

constexpr unsigned kMajor = 14;
constexpr unsigned kMinor = 0;

}  // namespace

void LUMO_assert(const char* message, const char* stem, int line) { assertHandler(message, stem, line); }

LmAssertHandler LmSetAssertHandler(LmAssertHandler handler) {
    const LmAssertHandler old = assertHandler;
    assertHandler = handler ? handler : DefaultAssertHandler;
    return old;
}

void LmCallMemoryHandler(size_t size) { memoryHandler(size); }

LmMemoryHandler LmSetMemoryHandler(LmMemoryHandler handler) {
    const LmMemoryHandler old = memoryHandler;
    memoryHandler = handler ? handler : DefaultMemoryHandler;
    return old;
}

int CheckLmVersionNumber(unsigned major, unsigned minor, unsigned, unsigned, unsigned, int flags) {
    if ((flags & 1) && major != kMajor) return -1;
    if ((flags & 2) && minor > kMinor) return -1;
    return 0;
}
