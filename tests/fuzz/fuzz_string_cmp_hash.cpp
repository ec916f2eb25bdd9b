// Fuzz target: Cmp and Hash of id 11 on arbitrary stored bytes with arbitrary
// lengths, at both factory levels, and on strings in memory.
//
// A length given to Cmp or Hash is the number of bytes present, and each operand
// block here is exactly that long. A length of 0 means "all": the records are then
// read as far as their own length words say, so zeros follow the input in that case.
#include "fuzz_input.h"
#include "lumotypes.h"

namespace {
constexpr unsigned char kFormats[] = {1, 2, 0x81, 0x82, 8};
constexpr unsigned char kCodeSets[] = {0, 1, 2, 3, 253, 254};
constexpr unsigned char kLanguages[] = {0, 1, 2, 3, 4, 5, 13, 254, 0x85};
constexpr unsigned kRecordReach = 65538;
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzInput in(data, size);
    const LmTypeMgr mgr(in.Byte() & 1 ? 5u : 3u);
    const unsigned char format = in.Pick(kFormats);
    const unsigned short option = in.Word();
    const unsigned count = in.Byte() % 4u;
    const uint8_t lengthMode = in.Byte();
    int status = 0;

    if (format == 8) {
        const unsigned n = count == 0 ? 1 : count;
        auto* left = static_cast<LmString*>(mgr.Create(LmSTRING_T, n));
        auto* right = static_cast<LmString*>(mgr.Create(LmSTRING_T, n));
        if (left != nullptr && right != nullptr) {
            FillStrings(in, kCodeSets, kLanguages, left, n, 64);
            FillStrings(in, kCodeSets, kLanguages, right, n, 64);
            mgr.Cmp(LmSTRING_T, 0, left, 0, right, option, count, format, status);
            mgr.Hash(LmSTRING_T, 0, left, count, format, status);
        }
        if (left != nullptr) mgr.Delete(LmSTRING_T, left, n);
        if (right != nullptr) mgr.Delete(LmSTRING_T, right, n);
        return 0;
    }

    const size_t leftSize = in.Left() == 0 ? 0 : in.Word() % (in.Left() + 1);
    const std::vector<uint8_t> leftBytes = in.Take(leftSize);
    const std::vector<uint8_t> rightBytes = in.Rest();
    // Bit 0 and 1 of the mode: the left or the right length is 0, "all".
    const bool leftAll = (lengthMode & 1) != 0;
    const bool rightAll = (lengthMode & 2) != 0;
    const Block left(leftBytes, leftAll || leftBytes.size() < 2 ? (count + 1) * kRecordReach : 0);
    const Block right(rightBytes, rightAll || rightBytes.size() < 2 ? (count + 1) * kRecordReach : 0);
    const unsigned len1 = leftAll ? 0u : static_cast<unsigned>(leftBytes.size());
    const unsigned len2 = rightAll ? 0u : static_cast<unsigned>(rightBytes.size());

    // Through the pointer a kernel takes once, as an index scan does.
    const LmTypeCmpFunc cmp = mgr.CmpFuncPtrGet(LmSTRING_T);
    cmp(format, len1, left.get(), len2, right.get(), option, count, status);
    mgr.Hash(LmSTRING_T, len1, left.get(), count, format, status);
    mgr.Hash(LmSTRING_T, len2, right.get(), count, format, status);
    return 0;
}
