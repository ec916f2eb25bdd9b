// Fuzz target: ScanFromLmString of an arbitrary text, narrow or 16-bit, into one
// value of every type id (0 to 46 and the reserved 100) under the type's exchange
// format or one of the formats the library knows, then PrintToLmString of that value
// under the same format. The plain numbers also get formats made of the input
// itself. The value, the format and the text are heap blocks of exactly their size.
// The 64-bit integer's and the boolean's text languages run on the same text and
// format.
#include <string>

#include "fuzz_input.h"
#include "lumotypes.h"

namespace {

constexpr unsigned char kCodeSets[] = {0, 1, 253};
constexpr unsigned char kLanguages[] = {0, 1, 254};
const char* const kFormats[] = {"%c",
                                "%hd",
                                "%ld",
                                "%.17g",
                                "%hu",
                                "%lu",
                                "%d",
                                "%u",
                                "%s",
                                "%a %e.%b %Y",
                                "%I:%M:%S %p",
                                "#%lu",
                                "(%H-%L#%B)",
                                "(%Cv%V)",
                                "(%D:%H-%L#%B, %C)",
                                "[BLOB,len=%L]",
                                "%a %e.%b %Y %I:%M:%S %p",
                                "%a %b %e",
                                "%a %b %e %I:%M:%S %p",
                                "%e days, %I hours, %M minutes, %S seconds",
                                "%S",
                                "noop",
                                "%X",
                                "%V",
                                "%I64d",
                                "%I64u",
                                "illegal",
                                "ldexp(",
                                "%x",
                                "%o"};

// The ids of the plain numbers, whose formats may be anything.
bool IsPlainNumber(int id) { return (id >= 0 && id <= 10) || id == 14 || id == 42 || id == 43; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzInput in(data, size);
    const uint8_t idByte = in.Byte();
    const char id = static_cast<char>(idByte % 48 == 47 ? 100 : idByte % 48);
    const uint8_t mode = in.Byte();
    LmTypeMgr mgr;
    const LmTypeDesc* desc = mgr.Desc(id);

    // The format: the exchange format, one of the list, or for plain numbers text of the input.
    std::string format;
    if (mode % 3 == 0) {
        format = desc->exchangeFormat;
    } else if (mode % 3 == 1 || !IsPlainNumber(id)) {
        format = in.Pick(kFormats);
    } else {
        const std::vector<uint8_t> raw = in.Take(in.Byte() % 64);
        for (const uint8_t b : raw) format += b == 0 ? '%' : static_cast<char>(b);
    }
    const Block formatBlock(std::vector<uint8_t>(format.begin(), format.end()), 1);
    const char* fmt = reinterpret_cast<const char*>(formatBlock.get());

    LmString text;
    FillStrings(in, kCodeSets, kLanguages, &text, 1, 4096);

    const unsigned count = (id == 0 || id == 10) ? 1u + mode / 3 % 4 : 1u;
    const Block value(static_cast<size_t>(desc->memLen) * count);
    desc->Constructor(value.get(), count, 0);
    mgr.ScanFromLmString(id, value.get(), text, fmt, count);
    LmString out("previous");
    mgr.PrintToLmString(id, out, value.get(), fmt, count);
    desc->Destructor(value.get(), count, 0);

    long long n = 0;
    LmInt64ScanText(n, text, fmt);
    LmInt64PrintText(out, n, fmt);
    unsigned char b = 0;
    LmBooleanScanText(b, text);
    LmBooleanPrintText(out, b);
    return 0;
}
