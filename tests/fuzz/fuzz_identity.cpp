// Fuzz target: the print and scan languages of the identity values. An arbitrary
// text is scanned under a format taken from the input (or a known one) into an
// LmObjId, LmClassId, LmRef and LmLocalRef, each a heap block of exactly its size, and
// each value is printed under the same format. Then a value made of input bytes is
// printed under the exchange format and scanned back, which must give the same fields.
#include <cstdlib>
#include <cstring>
#include <string>

#include "fuzz_input.h"
#include "lumotypes.h"

namespace {

const char* const kFormats[] = {
    "(%H-%L#%B)", "(%Cv%V)", "(%D:%H-%L#%B, %C)", "(%D:%H-%L#%B,%Cv%V)", "(%hu-%lu#%lu)", "%hu %hu %lu %lu %hu %hu",
    "%%%B%Q%",    ""};

template <typename T>
void ScanAndPrint(LmString& text, const char* format) {
    const Block value(sizeof(T));
    T* v = reinterpret_cast<T*>(value.get());
    v->ScanFromLmString(text, format);
    LmString out;
    v->PrintToLmString(out, format);
}

// Print under the exchange format, scan back: the fields must return.
template <typename T>
void RoundTrip(FuzzInput& in, size_t fields) {
    T v{};
    const std::vector<uint8_t> bytes = in.Take(fields);
    if (!bytes.empty()) std::memcpy(&v, bytes.data(), bytes.size());
    if (v.IsNullValue() != 0) return;
    LmString text;
    T::PrintToString(text, &v, nullptr, 1);
    T back{};
    T::ScanFromString(&back, text, nullptr, 1);
    if (std::memcmp(&v, &back, fields) != 0) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzInput in(data, size);
    const uint8_t choice = in.Byte();
    const std::vector<uint8_t> formatBytes = TerminatedText(in.Take(in.Byte() % 64u), 1);
    const char* format = choice < 128 ? reinterpret_cast<const char*>(formatBytes.data()) : kFormats[choice % 8];
    RoundTrip<LmObjId>(in, 10);
    RoundTrip<LmClassId>(in, 4);
    RoundTrip<LmRef>(in, 16);

    const bool wide = (choice & 1) != 0;
    const std::vector<uint8_t> raw = TerminatedText(in.Rest(), wide ? 2 : 1);
    LmString text = wide ? LmString(reinterpret_cast<const unsigned short*>(raw.data()))
                         : LmString(reinterpret_cast<const char*>(raw.data()));
    ScanAndPrint<LmObjId>(text, format);
    ScanAndPrint<LmClassId>(text, format);
    ScanAndPrint<LmRef>(text, format);
    ScanAndPrint<LmLocalRef>(text, format);
    return 0;
}
