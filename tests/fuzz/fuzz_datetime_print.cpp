// Fuzz target: the date and time print engine on an arbitrary nanosecond record under
// a format taken from the input, and the stored forms of ids 12 and 13 read from the
// same bytes: Load, Translate, Cmp and Hash in every format, with fields of any value.
//
// The format is a heap block of exactly its length and terminator; each stored
// operand is exactly as long as the length the functions are given, a whole number
// of elements, as the element loops require.
#include <cstring>

#include "fuzz_input.h"
#include "lumotypes.h"

namespace {
constexpr unsigned char kFormats[] = {1, 2, 8, 0, 0x81, 0x42};
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzInput in(data, size);
    const unsigned char format = in.Pick(kFormats);
    const unsigned short option = in.Word();
    std::vector<uint8_t> fields = in.Take(24);
    fields.resize(24);
    const std::vector<uint8_t> formatBytes = in.Rest();
    const Block formatBlock(formatBytes, 1);

    LmDateTimeNRecord record;
    std::memcpy(&record, fields.data(), sizeof record);
    LmString out("previous");
    DateTimePrintEngine(out, record, reinterpret_cast<const char*>(formatBlock.get()), 1);

    // The same record through the members and the print slots by id.
    const LmTypeMgr mgr;
    LmDate date(record.year, record.month, record.day);
    LmTime time(record.hour, record.minute, record.second);
    const char* fmt = reinterpret_cast<const char*>(formatBlock.get());
    mgr.PrintToLmString(LmDATE_T, out, &date, fmt, 1);
    mgr.PrintToLmString(LmTIME_T, out, &time, fmt, 1);
    date.GetDayOfTheDate();
    date.IsDate();
    date += static_cast<int>(record.nanoseconds);
    time += static_cast<int>(record.nanoseconds);

    // Stored dates and times: the 24 bytes as 6 dates or 8 times, and both halves as
    // two operands.
    for (const char id : {LmDATE_T, LmTIME_T}) {
        const unsigned width = id == LmDATE_T ? 4u : 3u;
        const std::vector<uint8_t> a(fields.begin(), fields.begin() + 12), b(fields.begin() + 12, fields.end());
        const Block left(a), right(b);
        const unsigned count = 12u / width;
        int status = 0;
        mgr.Cmp(id, 12, left.get(), 12, right.get(), option, count, format, status);
        mgr.Cmp(id, 12, left.get(), 12 - width, right.get(), option, count, format, status);
        mgr.Hash(id, 12, left.get(), count, format, status);
        mgr.Hash(id, 12 - width, right.get(), count, format, status);
        const Block memory(12), disk(12);
        mgr.Load(id, memory.get(), left.get(), format, count);
        mgr.Cmp(id, 0, memory.get(), 0, left.get(), option, count, LmFormatMemory, status);
        mgr.Translate(id, disk.get(), format, 12, memory.get(), LmFormatMemory, 0, count);
        mgr.Translate(id, disk.get(), 1, 12, right.get(), 2, 12, count);
        mgr.Translate(id, memory.get(), LmFormatMemory, 0, disk.get(), format, 12, count);
        mgr.GetValue(id, memory.get(), 0, LmFormatMemory, 'N');
        mgr.GetValue(id, disk.get(), width, LmFormatLittle, 'M');
        LmTypeConvertData* strings = mgr.ConvertTo(id, memory.get(), count);
        void* values = mgr.ConvertFrom(id, strings, count);
        mgr.Delete(id, values, count);
        delete strings;
    }
    return 0;
}
