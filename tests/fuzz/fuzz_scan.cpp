// Placeholder.
#include "fuzz_input.h"
#include "lumotypes.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzInput in(data, size);
    return in.Byte() == 0 ? 0 : 0;
}
