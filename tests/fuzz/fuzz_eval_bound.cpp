// Fuzz target: EvalAndBound by type id with arbitrary key bytes, comparison words and
// ranges, at both factory levels. The range keys are exactly as long as their
// lengths say, and so is a bound the caller set before; the bounds handed back are
// freed, so that a leak on any path is a failure of the sanitizer build.
//
// The value has no length of its own: a scalar is count elements, a string record or
// a fixed-form key is as long as its length word says. The target makes the length
// word fit the bytes it has, as a query layer hands over a whole value.
#include <cstdlib>

#include "fuzz_input.h"
#include "lumotypes.h"

namespace {
constexpr char kIds[] = {Lm1B_T,      Lm2B_T,      Lm4B_T,          LmDOUBLE_T, LmFLOAT_T, LmU2B_T,
                         LmU4B_T,     LmINT_T,     LmUNSIGNED_T,    LmENUM_T,   LmU1B_T,   LmSTRING_T,
                         LmBLOCKID_T, LmISTRING_T, LmCASEISTRING_T, Lm8B_T,     LmU8B_T};
constexpr unsigned char kFormats[] = {1, 2, 0x81, 0x82};

unsigned ScalarWidth(char id) {
    switch (id) {
        case Lm1B_T:
        case LmU1B_T:
            return 1;
        case Lm2B_T:
        case LmU2B_T:
            return 2;
        case LmDOUBLE_T:
        case Lm8B_T:
        case LmU8B_T:
        case LmBLOB_T:
            return 8;
        case LmOBJID_T:
            return 10;
        case LmREF_T:
            return 14;
        default:
            return 4;
    }
}

// The value's own length word, made to fit the bytes given.
std::vector<uint8_t> WholeValue(char id, std::vector<uint8_t> bytes, unsigned char format, bool oldForm,
                                unsigned count) {
    const bool big = (format & 15) == 2;
    auto fit = [&](size_t at, size_t header) {
        if (bytes.size() < at + header) bytes.resize(at + header, 0);
        const size_t most = bytes.size() - at - 2;
        size_t word = big ? (bytes[at] << 8 | bytes[at + 1]) : (bytes[at] | bytes[at + 1] << 8);
        if (word > most) word = most;
        bytes[at] = static_cast<uint8_t>(big ? word >> 8 : word & 0xFF);
        bytes[at + 1] = static_cast<uint8_t>(big ? word & 0xFF : word >> 8);
    };
    if (id == LmSTRING_T) {
        fit(0, oldForm ? 2 : 4);
    } else if (id == LmISTRING_T || id == LmCASEISTRING_T) {
        fit(1, 3);
    } else if (bytes.size() < ScalarWidth(id) * count) {
        bytes.resize(ScalarWidth(id) * count, 0);
    }
    return bytes;
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzInput in(data, size);
    bool legacy = (in.Byte() & 1) != 0;
    const char id = in.Pick(kIds);
    // The legacy table has the ids up to 27 only.
    if (id >= LmTypeCountLegacy) legacy = false;
    const LmTypeMgr mgr(legacy ? 3u : 5u);
    unsigned short op = in.Word();
    const unsigned char format = in.Pick(kFormats);
    const unsigned count = 1 + in.Byte() % 3u;
    const uint8_t mode = in.Byte();
    const uint8_t keyCapacity = in.Byte();
    const std::vector<uint8_t> lowerKey = in.Take(in.Byte());
    const std::vector<uint8_t> upperKey = in.Take(in.Byte());
    const std::vector<uint8_t> preset = in.Take((mode & 8) != 0 ? in.Byte() : 0);
    const std::vector<uint8_t> value = WholeValue(id, in.Rest(), format, legacy, count);

    const Block lower(lowerKey), upper(upperKey), valueBlock(value);
    LmIdxBounds range{(mode & 2) != 0 ? nullptr : lower.get(),
                      (mode & 4) != 0 ? nullptr : upper.get(),
                      static_cast<uint8_t>(lowerKey.size()),
                      static_cast<uint8_t>(upperKey.size()),
                      0xFFFF,
                      0xFFFF,
                      0};
    LmIdxBounds out{};
    out.keyCapacity = keyCapacity;
    if (!preset.empty()) {
        // A bound the caller set: the evaluator keeps it and may read it.
        void* own = std::malloc(preset.size());
        std::memcpy(own, preset.data(), preset.size());
        ((mode & 16) != 0 ? out.lower : out.upper) = own;
        ((mode & 16) != 0 ? out.lowerLen : out.upperLen) = static_cast<uint8_t>(preset.size());
    }
    const bool withRange = (mode & 1) != 0;
    const bool withOut = (mode & 32) == 0;
    mgr.EvalAndBound(id, withRange ? &range : nullptr, op, valueBlock.get(), format, count, withOut ? &out : nullptr,
                     nullptr);
    std::free(out.lower);
    std::free(out.upper);
    return 0;
}
