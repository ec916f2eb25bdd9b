// Fuzz target: LmStrCmp on arbitrary texts, code sets, languages and options, with
// LmFindWildcard on the pattern and LmByteWildcardCompare on native texts. Texts
// are terminated and exactly as long as their units and terminator.
#include "fuzz_input.h"
#include "lumotypes.h"

namespace {
constexpr unsigned char kCodeSets[] = {0, 1, 2, 3, 253, 254};
constexpr unsigned char kLanguages[] = {0, 1, 2, 3, 4, 5, 6, 12, 13, 254, 255};
constexpr unsigned char kFormats[] = {1, 2};
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzInput in(data, size);
    const unsigned char codeSet1 = in.Pick(kCodeSets);
    const unsigned char codeSet2 = in.Pick(kCodeSets);
    const unsigned char language1 = in.Pick(kLanguages);
    const unsigned char language2 = in.Pick(kLanguages);
    const unsigned short option = in.Word();
    const auto count = static_cast<short>(in.Word());
    const unsigned char format = in.Pick(kFormats);
    const uint8_t flags = in.Byte();
    const size_t leftSize = in.Left() == 0 ? 0 : in.Byte() % (in.Left() + 1);
    const Block left(TerminatedText(in.Take(leftSize), LmCodeSetWidth(codeSet1)));
    const Block right(TerminatedText(in.Rest(), LmCodeSetWidth(codeSet2)));
    const void* text1 = (flags & 1) != 0 ? nullptr : left.get();
    const void* text2 = (flags & 2) != 0 ? nullptr : right.get();

    int difference = 0;
    LmStrCmp(codeSet1, language1, text1, codeSet2, language2, text2, option, count, format,
             (flags & 4) != 0 ? &difference : nullptr);
    uint16_t offset = 0;
    if (text2 != nullptr)
        LmFindWildcard(codeSet2, language2, text2, flags & 8, static_cast<uint16_t>(count), &offset, format);
    if (codeSet1 == 0 && codeSet2 == 0)
        LmByteWildcardCompare(static_cast<const char*>(text2), static_cast<const char*>(text1), count);
    return 0;
}
