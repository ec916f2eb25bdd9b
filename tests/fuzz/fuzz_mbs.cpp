// Fuzz target: the multi-byte decoders on arbitrary bytes and an arbitrary n up to
// the data length, and the round trip of what decodes back through the encoders. All
// inputs and outputs are exactly sized heap blocks.
#include <cstdlib>
#include <cstring>

#include "fuzz_input.h"
#include "lumotypes.h"

namespace {

constexpr unsigned char kCodeSets[] = {0, 1, 2, 3, 30, 225, 253, 254};

void Check(bool ok) {
    if (!ok) std::abort();
}

bool SameUnits(const LmString& s, const uint16_t* units, size_t count) {
    return s.Len() == count && (count == 0 || std::memcmp(s.StrGet(), units, count * 2) == 0);
}

// A decoded string re-encodes to bytes that decode to the same units.
void RoundTrip(const LmString& s, unsigned outLength) {
    const int bytes = LmMBSLength(s, 65535);
    Check(bytes >= 0);
    Block text(static_cast<size_t>(bytes));
    Check(LmString2LmMBS(s, reinterpret_cast<char*>(text.get()), bytes) == bytes);
    LmString back;
    Check(LmMBS2LmString(reinterpret_cast<const char*>(text.get()), back, bytes) == (bytes >= 32768 ? -2 : bytes));
    if (bytes < 32768) Check(SameUnits(back, reinterpret_cast<const uint16_t*>(s.StrGet()), s.Len()));

    char* out = nullptr;
    int length = 0;
    Check(LmString2MultiByteString(s, out, length) == bytes && length == bytes + 1);
    Check(std::memcmp(out, text.get(), static_cast<size_t>(bytes)) == 0 && out[bytes] == 0);
    delete[] out;

    // A short buffer of the caller: either the whole text or a negative count, and
    // the retry contract of LmString2MultiByteString.
    Block small(outLength);
    const int r = LmString2LmMBS(s, reinterpret_cast<char*>(small.get()), static_cast<int>(outLength));
    Check(r == bytes || (r <= 0 && bytes > static_cast<int>(outLength)));
    if (outLength > 0) {
        out = reinterpret_cast<char*>(small.get());
        length = static_cast<int>(outLength);
        const int m = LmString2MultiByteString(s, out, length);
        Check(m == bytes || (m == -1 && length == bytes));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzInput in(data, size);
    const unsigned char codeSet = in.Pick(kCodeSets);
    const unsigned outLength = in.Byte() % 8;
    const uint16_t word = in.Word();
    const std::vector<uint8_t> raw = in.Rest();
    const Block bytes(raw);
    auto* text = reinterpret_cast<char*>(bytes.get());
    const int n = static_cast<int>(word % (raw.size() + 1));

    // One sequence, and the whole text into a short buffer and into none.
    unsigned short unit = 0;
    const int one = LmMultiByte2WChar(&unit, text, static_cast<unsigned long long>(n));
    Check(one == -1 || (one >= 1 && one <= 6 && one <= n));
    Block units(outLength * 2);
    const int counted = LmMultiByteStr2WCharStr(reinterpret_cast<unsigned short*>(units.get()),
                                                static_cast<int>(outLength), text, n);
    Check(counted == LmMultiByteStr2WCharStr(nullptr, 0, text, n));
    Check(counted == -1 || counted <= n);

    // Into a string. A decode that took all n bytes without a zero unit agrees with
    // the unit decoder, then goes round.
    LmString s;
    const int r = LmMBS2LmString(text, s, n);
    Check(r >= -2 && r <= n);
    Check(s.GetCodeSet() == LM_CODESET_UNICODE);
    if (r == n && n > 0 && n <= LM_STRING_MAX_CHARS16) {
        Check(counted == s.Len());
        const size_t head = outLength < s.Len() ? outLength : s.Len();
        Check(std::memcmp(units.get(), s.StrGet(), head * 2) == 0);
    }
    if (r >= 0) RoundTrip(s, outLength);

    // The same bytes as a 1-byte string (or 16-bit units) on the encoding side.
    LmString labelled;
    labelled.SetCodeSet(codeSet);
    const std::vector<uint8_t> terminated = TerminatedText(raw, LmCodeSetWidth(codeSet));
    LmStringAssignRaw(labelled, terminated.data(), codeSet,
                      static_cast<uint16_t>(terminated.size() / LmCodeSetWidth(codeSet) - 1), 1);
    LmString unicode;
    unicode.CopyMapped(labelled, LM_CODESET_UNICODE, -1);
    Check(LmMBSLength(labelled, 65535) == LmMBSLength(unicode, 65535));
    RoundTrip(unicode, outLength);
    LmString decoded(labelled);
    LmMultiByteString2LmString(decoded, decoded);
    return 0;
}
