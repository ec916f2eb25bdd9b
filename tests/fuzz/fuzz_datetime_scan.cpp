// Fuzz target: the date and time scan engine on an arbitrary text, narrow or 16-bit,
// under a format taken from the input, then the print engine on what it read under
// the same format; and the same text through the members of LmDate and LmTime and
// the scan slots of ids 12 and 13.
//
// The format is a heap block of exactly its length and terminator, so that any read
// behind it is caught.
#include "fuzz_input.h"
#include "lumotypes.h"

namespace {
constexpr unsigned char kCodeSets[] = {0, 1, 253};
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzInput in(data, size);
    const size_t formatLength = in.Word();
    const std::vector<uint8_t> formatBytes = in.Take(formatLength);
    const Block formatBlock(formatBytes, 1);
    const char* fmt = reinterpret_cast<const char*>(formatBlock.get());
    // The rest of the input is the text, in a code set picked first.
    const unsigned char codeSet = in.Pick(kCodeSets);
    const unsigned width = LmCodeSetWidth(codeSet);
    const std::vector<uint8_t> raw = TerminatedText(in.Rest(), width);
    const size_t chars = raw.size() / width - 1;
    LmString text(codeSet, 1);
    LmStringAssignRaw(text, raw.data(), codeSet, static_cast<uint16_t>(chars < 65534 ? chars : 65534), 1);

    LmDateTimeNRecord record{};
    DateTimeScanEngine(&record, text, fmt, 1);
    LmString out("previous");
    DateTimePrintEngine(out, record, fmt, 1);
    DateTimeScanEngine(&record, out, fmt, 1);

    LmDate date(0, 0, 0);
    LmTime time(0, 0, 0);
    date.ScanFromLmString(text, fmt);
    time.ScanFromLmString(text, fmt);
    date.PrintToLmString(out, fmt);
    time.PrintToLmString(out, fmt);
    const LmTypeMgr mgr;
    mgr.ScanFromLmString(LmDATE_T, &date, text, nullptr, 1);
    mgr.ScanFromLmString(LmTIME_T, &time, text, nullptr, 1);
    mgr.PrintToLmString(LmDATE_T, out, &date, nullptr, 1);
    mgr.PrintToLmString(LmTIME_T, out, &time, nullptr, 1);
    return 0;
}
