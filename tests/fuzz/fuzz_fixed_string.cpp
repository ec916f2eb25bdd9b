// Fuzz target: the stored forms of LmIString (id 20) and LmCaseIString (id 21).
// Cmp of two stored arrays with arbitrary lengths, Load, SizeGet, and Translate
// into memory, a plain image and a sort-form key; the same texts compared in memory
// and matched as patterns.
//
// A length given to Cmp or Translate is the number of bytes present, and the block
// is exactly that long. A length of 0 means "all", and Load and SizeGet have no
// length: the array is then read as far as its own T says, so zeros follow the
// input up to the largest array (3 + 65535 bytes).
#include <string>

#include "fuzz_input.h"
#include "lumotypes.h"

namespace {
constexpr unsigned char kFormats[] = {1, 2, 0x81, 0x82, 0x21};
constexpr unsigned char kTargets[] = {1, 2, 0x81, 0x82, 8};
constexpr size_t kArrayReach = 3 + 65535;

template <class T>
void Run(char id, FuzzInput& in) {
    const LmTypeMgr mgr;
    const unsigned char format = in.Pick(kFormats);
    const unsigned char target = in.Pick(kTargets);
    const unsigned short option = in.Word();
    const unsigned count = in.Byte() % 4u;
    const uint8_t lengthMode = in.Byte();
    const unsigned targetLength = in.Word() % 300u;
    const size_t leftSize = in.Left() == 0 ? 0 : in.Word() % (in.Left() + 1);
    const std::vector<uint8_t> leftBytes = in.Take(leftSize);
    const std::vector<uint8_t> rightBytes = in.Rest();

    const bool leftAll = (lengthMode & 1) != 0 || leftBytes.empty();
    const bool rightAll = (lengthMode & 2) != 0 || rightBytes.empty();
    const Block left(leftBytes, leftAll ? kArrayReach : 0);
    const Block right(rightBytes, rightAll ? kArrayReach : 0);
    const Block padded(rightBytes, kArrayReach);
    const unsigned len1 = leftAll ? 0u : static_cast<unsigned>(leftBytes.size());
    const unsigned len2 = rightAll ? 0u : static_cast<unsigned>(rightBytes.size());
    int status = 0;
    mgr.Cmp(id, len1, left.get(), len2, right.get(), option, count, format, status);

    const unsigned n = count == 0 ? 1 : count;
    T* values = static_cast<T*>(mgr.Create(id, n));
    mgr.Load(id, values, padded.get(), format, n);
    mgr.DiskLenGet(id, padded.get(), format, n, 0);
    mgr.DiskLenGet(id, padded.get(), static_cast<unsigned char>(format | 0x80), n, 0);
    mgr.DiskLenGet(id, values, target, n, LmFormatMemory);

    // Translate from the left bytes, with their own length (0: as far as T says).
    Block out(target == 8 ? 0 : targetLength);
    if (target == 8) {
        T* back = static_cast<T*>(mgr.Create(id, n));
        mgr.Translate(id, back, 8, 0, left.get(), format, len1, n);
        mgr.Cmp(id, back, values, option, n, LmFormatMemory);
        mgr.Delete(id, back, n);
    } else {
        mgr.Translate(id, out.get(), target, targetLength, left.get(), format, len1, n);
        Block key(targetLength);
        mgr.Translate(id, key.get(), target, targetLength, values, LmFormatMemory, 0, n);
    }

    // The texts as patterns and values in memory.
    const std::string pattern(reinterpret_cast<const char*>(leftBytes.data()), leftBytes.size());
    const T p(pattern.c_str());
    for (unsigned i = 0; i < n; ++i) {
        mgr.Cmp(id, values + i, const_cast<T*>(&p), option, 1, LmFormatMemory);
        mgr.Cmp(id, const_cast<T*>(&p), values + i, option, 1, LmFormatMemory);
        LmCaseIStringMatch(p.StrGet(), values[i].StrGet(), values[i].GetFlag(), p.GetFlag());
    }
    mgr.Delete(id, values, n);
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzInput in(data, size);
    if ((in.Byte() & 1) != 0) {
        Run<LmCaseIString>(LmCASEISTRING_T, in);
    } else {
        Run<LmIString>(LmISTRING_T, in);
    }
    return 0;
}
