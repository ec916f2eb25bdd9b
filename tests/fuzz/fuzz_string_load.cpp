// Fuzz target: StringLoad (through the Load slot of id 11) on arbitrary images, and
// the loaded strings stored back.
//
// A Load has no length argument: it reads each record as far as the record's own
// length word says, and an old-form array as far as its total word says. So the
// image is followed here by zeros up to the farthest reach the words can claim
// (65537 bytes a record); within that, nothing may be read or written amiss.
#include "fuzz_input.h"
#include "lumotypes.h"

namespace {
constexpr unsigned char kFormats[] = {1, 2, 0x81, 0x82, 0x21, 0x42};
constexpr unsigned kRecordReach = 65538;
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzInput in(data, size);
    const unsigned char format = in.Pick(kFormats);
    const unsigned count = in.Byte() % 4u;
    const LmTypeMgr mgr(in.Byte() & 1 ? 5u : 3u);
    const Block image(in.Rest(), (count + 1) * kRecordReach);

    void* strings = mgr.Create(LmSTRING_T, count);
    if (strings == nullptr) return 0;
    mgr.Load(LmSTRING_T, strings, image.get(), format, count);

    // What was loaded stores again into a block of exactly the size asked for.
    const unsigned n = count == 0 ? 1 : count;
    const unsigned storeFormat = format & 0x0F;
    const unsigned bytes = mgr.DiskLenGet(LmSTRING_T, strings, static_cast<unsigned char>(storeFormat), n, 8);
    const Block out(bytes);
    if (bytes != 0) mgr.Store(LmSTRING_T, out.get(), strings, static_cast<unsigned char>(storeFormat), n);
    mgr.Delete(LmSTRING_T, strings, count);
    return 0;
}
