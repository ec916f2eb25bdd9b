// Fuzz target: the slots of the fixed-length types that read stored bytes (Load,
// Cmp, Hash, Translate, the manager's GetValue on a disk image) on arbitrary images,
// by type id, then the print of what was loaded.
//
// A fixed type's disk image has no length of its own: Load reads count elements
// and trusts the caller, so it is given exactly that many. Cmp and Hash get the
// bytes present, in whole elements, as their lengths, or 0 ("all") with the image
// padded to count elements. Every block is exactly as long as what the slot may read.
#include "fuzz_input.h"
#include "lumotypes.h"

namespace {
// The plain numbers, LmInt64, LmBoolean, LmSeal.
constexpr char kIds[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 14, 26, 42, 43, 27, 39};
constexpr unsigned char kFormats[] = {1, 2, 8, 0, 0x81, 0x82};
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzInput in(data, size);
    const LmTypeMgr mgr;
    const char id = in.Pick(kIds);
    const unsigned char format = in.Pick(kFormats);
    const unsigned count = in.Byte() % 5u;
    const uint8_t lengthMode = in.Byte();
    const unsigned short option = in.Word();
    const LmTypeDesc* desc = mgr.Desc(id);
    const unsigned width = (format & 15) == 8 ? desc->memLen : desc->NullSizeGet(1);
    const unsigned all = count * width;

    const size_t leftSize = in.Left() == 0 ? 0 : in.Word() % (in.Left() + 1);
    const std::vector<uint8_t> leftBytes = in.Take(leftSize);
    const std::vector<uint8_t> rightBytes = in.Rest();
    // An element is read whole once its first byte lies below the end: lengths in
    // valid use are whole elements, so an image is padded to whole elements, at least
    // one, and to count elements when its length is 0.
    const auto padding = [&](size_t have, bool toAll) {
        size_t want = have == 0 ? width : (have + width - 1) / width * width;
        if (toAll && want < all) want = all;
        return want - have;
    };
    const bool leftAll = (lengthMode & 1) != 0;
    const bool rightAll = (lengthMode & 2) != 0;
    const Block left(leftBytes, padding(leftBytes.size(), leftAll));
    const Block right(rightBytes, padding(rightBytes.size(), rightAll));
    const auto len1 = static_cast<unsigned>(leftAll ? 0 : left.size);
    const auto len2 = static_cast<unsigned>(rightAll ? 0 : right.size);
    int status = 0;
    mgr.Cmp(id, len1, left.get(), len2, right.get(), option, count, format, status);
    mgr.Hash(id, len1, left.get(), count, format, status);
    mgr.Hash(id, len2, right.get(), count, format, status);
    if (format == 8) return 0;

    // The elements present, loaded, translated both ways, printed and stepped.
    const unsigned n = static_cast<unsigned>(left.size / width);
    const Block memory(static_cast<size_t>(n) * desc->memLen);
    if (n != 0) {
        mgr.Load(id, memory.get(), left.get(), format, n);
        LmString text;
        mgr.PrintToLmString(id, text, memory.get(), nullptr, n);
        const Block disk(static_cast<size_t>(n) * width);
        mgr.Translate(id, disk.get(), format, static_cast<unsigned>(disk.size), memory.get(), 8, 0, n);
        mgr.Translate(id, memory.get(), 8, 0, disk.get(), format, static_cast<unsigned>(disk.size), n);
        mgr.Translate(id, disk.get(), format, static_cast<unsigned>(disk.size), right.get(),
                      static_cast<unsigned char>(format ^ 3), static_cast<unsigned>(right.size), n);
        mgr.GetValue(id, left.get(), width, format, lengthMode & 4 ? 'M' : 'N');
    }
    return 0;
}
