// A program outside the project that uses the installed (or embedded) library the way
// an application does; it answers 0 only when every call gives the known result.
#include <lumotypes.h>

#include <cstdio>
#include <cstring>

static int failures = 0;

static void Expect(bool ok, const char* what) {
    if (!ok) {
        std::fprintf(stderr, "consumer: wrong answer from %s\n", what);
        ++failures;
    }
}

int main() {
    ___LmTypemgrContext(1);
    Expect(DefaultTypeMgr(nullptr) != nullptr, "DefaultTypeMgr after start");

    LmTypeMgr mgr;
    // An int is 4 bytes in memory, so three of them take 12.
    Expect(mgr.MemLenGet(LmINT_T, 3) == 12, "MemLenGet(LmINT_T, 3)");
    Expect(std::strcmp(mgr.NameGet(LmINT_T, nullptr), "int") == 0, "NameGet(LmINT_T)");
    char id = 0;
    Expect(mgr.Name2LmTypeId("int", id) == 0 && id == LmINT_T, "Name2LmTypeId(\"int\")");

    // A disk image in most-significant-first order, through the manager's Store slot.
    int value = 0x01020304;
    unsigned char disk[4] = {};
    Expect(mgr.Store(LmINT_T, disk, &value, LmFormatBig, 1) == 4, "Store(LmINT_T)");
    const unsigned char big[4] = {0x01, 0x02, 0x03, 0x04};
    Expect(std::memcmp(disk, big, sizeof big) == 0, "Store(LmINT_T) byte image");

    // One call straight into the base library, so that it is linked as well.
    Expect(CheckLmVersionNumber(14, 0, 0, 0, 0, 1) == 0, "CheckLmVersionNumber(14)");

    ___LmTypemgrContext(0);
    if (failures == 0) std::puts("consumer: ok");
    return failures == 0 ? 0 : 1;
}
