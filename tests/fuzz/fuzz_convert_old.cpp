// Fuzz target: the old one-string form. An arbitrary text (narrow or 16-bit) is read
// as an array of one of the types, written back into one string, and that string is
// read and written once more. The text must be consumed, and the second writing must
// give the first one's text again, unless the first was cut at the string limit or
// had to fall back to the delimiter ",", or the type is o_u8b, whose values from 2^63
// up print unsigned but read back through the signed cast, or LmTimeSpan, whose
// seconds pass through a double. Everything goes back through Delete.
#include <cstdlib>
#include <cstring>

#include "fuzz_input.h"
#include "lumotypes.h"

namespace {
struct OldForm : LmTypeMgr {
    explicit OldForm(unsigned factory) : LmTypeMgr(factory) {}
    using LmTypeMgr::ConvertFromLmStringOld;
    using LmTypeMgr::ConvertToLmStringOld;
};

// The built types, "illegal", LmDate and the date-time values.
constexpr char kIds[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 14, 42, 43, 46, 12, 19, 40, 41};
constexpr unsigned char kCodeSets[] = {0, 1, 2, 3, 253, 254};
constexpr unsigned char kLanguages[] = {0, 1, 5, 254};

void Check(bool ok) {
    if (!ok) std::abort();
}

bool SameText(const LmString& a, const LmString& b) {
    return a.GetCodeSet() == b.GetCodeSet() && a.Len() == b.Len() &&
           std::memcmp(a.StrGet(), b.StrGet(), static_cast<size_t>(a.Len()) * a.Width()) == 0;
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzInput in(data, size);
    const char id = in.Pick(kIds);
    const unsigned count = in.Byte() % 65u;
    // The legacy table has no rows beyond 27.
    OldForm mgr((in.Byte() & 1) != 0 && id < 28 ? 3 : 5);
    const unsigned char codeSet = in.Pick(kCodeSets);
    const unsigned char language = in.Pick(kLanguages);
    const unsigned width = LmCodeSetWidth(codeSet);
    const std::vector<uint8_t> raw = TerminatedText(in.Take(4096), width);

    LmString text(codeSet, language);
    LmStringAssignRaw(text, raw.data(), codeSet, static_cast<uint16_t>(raw.size() / width - 1), 1);
    text.SetLanguage(language);

    void* values = mgr.ConvertFromLmStringOld(&text, id, count);
    Check(text.Len() == 0);
    if (values == nullptr) return 0;
    LmString* first = mgr.ConvertToLmStringOld(values, id, count);
    mgr.Delete(id, values, count);
    if (first == nullptr) return 0;
    const unsigned len = first->Len();
    Check(count == 0 ? len == 0 : len >= count);

    LmString again(*first);
    values = mgr.ConvertFromLmStringOld(&again, id, count);
    LmString* second = mgr.ConvertToLmStringOld(values, id, count);
    const bool comma = len != 0 && first->StrGet()[(len - 1) * first->Width()] == ',';
    // LmTimeSpan's seconds go through a double and are cut to whole nanoseconds, and a
    // span of 0 seconds reads back as null: its texts need not repeat.
    if (!comma && id != LmU8B_T && id != LmTIMESPAN_T && len < LmStringMaxChars(first->GetCodeSet())) {
        Check(SameText(*first, *second));
    }
    mgr.Delete(id, values, count);
    mgr.Delete(LmSTRING_T, second, 1);
    mgr.Delete(LmSTRING_T, first, 1);
    return 0;
}
