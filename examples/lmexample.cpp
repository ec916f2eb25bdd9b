// The road of a few plain numbers through the type manager: create by type id,
// store in both byte orders, load back, compare in memory and on disk, hash.
#include <cstdio>
#include <cstring>
#include <vector>

#include "lumotypes.h"

namespace {

void PrintHex(const char* label, const unsigned char* bytes, unsigned len) {
    std::printf("    %-14s", label);
    for (unsigned i = 0; i < len; ++i) std::printf("%02X%s", bytes[i], (i + 1) % 4 == 0 && i + 1 < len ? " " : "");
    std::printf("\n");
}

// Fills `count` elements of a freshly created array with the given values.
template <typename T>
void Fill(void* array, std::initializer_list<T> values) {
    std::memcpy(array, values.begin(), values.size() * sizeof(T));
}

void Show(LmTypeMgr& mgr, char id, void* values, unsigned count) {
    std::printf("\n%s (%s), %u elements of %u bytes in memory\n", mgr.NameGet(id, nullptr),
                mgr.TypeIdNameGet(id, nullptr), count, mgr.MemLenGet(id, 1));

    // Store in both byte orders.
    const unsigned size = mgr.DiskLenGet(id, values, LmFormatLittle, count, LmFormatMemory);
    std::vector<unsigned char> little(size), big(size);
    const unsigned wroteLittle = mgr.Store(id, little.data(), values, LmFormatLittle, count);
    const unsigned wroteBig = mgr.Store(id, big.data(), values, LmFormatBig, count);
    std::printf("  disk size %u; stored %u bytes little-endian, %u bytes big-endian\n", size, wroteLittle, wroteBig);
    PrintHex("little-endian", little.data(), size);
    PrintHex("big-endian", big.data(), size);

    // Load back from the big-endian image and compare with the original in memory.
    void* loaded = mgr.Create(id, count);
    const unsigned read = mgr.Load(id, loaded, big.data(), LmFormatBig, count);
    int status = 0;
    const int inMemory = mgr.Cmp(id, 0, values, 0, loaded, 0xFFFF, count, LmFormatMemory, status);
    std::printf("  loaded %u bytes back; memory compare original vs loaded: %d (status %d)\n", read, inMemory, status);

    // Compare straight on disk images: first the whole images, then with the
    // second operand cut short by one element.
    const unsigned width = size / count;
    const int onDisk = mgr.Cmp(id, size, little.data(), size, little.data(), 0xFFFF, count, LmFormatLittle, status);
    std::printf("  disk compare of the little-endian image with itself: %d (status %d)\n", onDisk, status);
    const int shortCmp = mgr.Cmp(id, size, big.data(), size - width, big.data(), 0xFFFF, count, LmFormatBig, status);
    std::printf("  disk compare with the second image %u bytes short: %d (status %d = out of data)\n", width, shortCmp,
                status);

    // The hash of a value is the same in every form.
    int hs = 0;
    const unsigned hMem = mgr.Hash(id, 0, values, count, LmFormatMemory, hs);
    const unsigned hLittle = mgr.Hash(id, size, little.data(), count, LmFormatLittle, hs);
    const unsigned hBig = mgr.Hash(id, size, big.data(), count, LmFormatBig, hs);
    std::printf("  hash: memory %08X, little-endian %08X, big-endian %08X -> %s\n", hMem, hLittle, hBig,
                hMem == hLittle && hLittle == hBig ? "agree" : "DISAGREE");

    mgr.Delete(id, loaded, count);
}

}  // namespace

int main() {
    ___LmTypemgrContext(1);
    LmTypeMgr& mgr = *DefaultTypeMgr(nullptr);
    const char* banner = nullptr;
    GetLmTypeMgrInfo(nullptr, nullptr, &banner, nullptr, nullptr);
    std::printf("%s, factory level %u\n", banner, mgr.LevelGet());

    void* ints = mgr.Create(LmINT_T, 3);
    Fill<int32_t>(ints, {1, -2, 0x01020304});
    Show(mgr, LmINT_T, ints, 3);

    void* shorts = mgr.Create(Lm2B_T, 3);
    Fill<int16_t>(shorts, {-1, 256, 0x1234});
    Show(mgr, Lm2B_T, shorts, 3);

    void* doubles = mgr.Create(LmDOUBLE_T, 2);
    Fill<double>(doubles, {1.0, -0.5});
    Show(mgr, LmDOUBLE_T, doubles, 2);

    void* u8 = mgr.Create(LmU8B_T, 2);
    Fill<uint64_t>(u8, {0x0102030405060708ull, 42});
    Show(mgr, LmU8B_T, u8, 2);

    mgr.Delete(LmINT_T, ints, 3);
    mgr.Delete(Lm2B_T, shorts, 3);
    mgr.Delete(LmDOUBLE_T, doubles, 2);
    mgr.Delete(LmU8B_T, u8, 2);

    ___LmTypemgrContext(0);
    std::printf("\nmodule stopped; default manager is %s\n", DefaultTypeMgr(nullptr) == nullptr ? "gone" : "still set");
    return 0;
}
