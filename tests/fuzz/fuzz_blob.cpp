// Fuzz target: blob disk images of arbitrary bytes through BlobCompare, Hash, SizeGet
// and a bounded Translate into memory, each given exactly the bytes it may read; and
// Load, whose only bound is the image's own total word, on an image padded with zeros
// up to what that word claims (when it claims at most 64 KiB). What loads is stored
// again, and the stored image must load back to equal blobs.
#include <cstdlib>

#include "fuzz_input.h"
#include "lumotypes.h"

namespace {
constexpr unsigned char kFormats[] = {1, 2, 0x81, 0x82, 0};
constexpr uint32_t kLoadReach = 65536;

uint32_t Total(const Block& image, unsigned char format) {
    uint32_t total = 0;
    LongStoreOne(&total, image.get(), format);
    return total;
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzInput in(data, size);
    const unsigned char format = in.Pick(kFormats);
    const unsigned count = in.Byte() % 4u;
    const Block left(in.Take(in.Word() % 512u));
    const Block right(in.Rest());

    int status = 0;
    if (left.size != 0 && right.size != 0) {
        const auto n1 = static_cast<unsigned>(left.size), n2 = static_cast<unsigned>(right.size);
        BlobCompare(format, n1, left.get(), n2, right.get(), 0, count, status);
        LmBlob::Hash(format, n1, left.get(), count, status);
    }
    LmTypeMgr mgr;
    void* blobs = mgr.Create(LmBLOB_T, count);
    if (blobs == nullptr) return 0;
    // A source length of 0 would trust the image's total word: only a real length is given.
    if (right.size != 0)
        mgr.Translate(LmBLOB_T, blobs, 8, 0, right.get(), format, static_cast<unsigned>(right.size), count);

    if (left.size >= 4 && Total(left, format) <= kLoadReach) {
        const Block padded(std::vector<uint8_t>(left.get(), left.get() + left.size), Total(left, format) + 4);
        LmBlob::SizeGet(padded.get(), 0, format, count);
        if (mgr.Load(LmBLOB_T, blobs, padded.get(), format, count) != 0) {
            const unsigned bytes = mgr.DiskLenGet(LmBLOB_T, blobs, format, count, 8);
            const Block out(bytes);
            void* again = mgr.Create(LmBLOB_T, count);
            if (mgr.Store(LmBLOB_T, out.get(), blobs, format, count) != bytes ||
                mgr.Load(LmBLOB_T, again, out.get(), format, count) != bytes ||
                mgr.Cmp(LmBLOB_T, blobs, again, 0, count, 8) != 0 ||
                mgr.Cmp(LmBLOB_T, bytes, out.get(), bytes, out.get(), 0, count, format, status) != 0) {
                std::abort();  // a stored image must load back as it was stored
            }
            mgr.Delete(LmBLOB_T, again, count);
        }
    }
    mgr.Delete(LmBLOB_T, blobs, count);
    return 0;
}
