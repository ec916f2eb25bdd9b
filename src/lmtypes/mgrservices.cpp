// The manager's value services that do work of their own: stepping a value to the
// next key, the null fallback, time stamps, printing and scanning by type id.
#include <cstddef>

#include "lmdtformat.h"
#include "lmslots.h"
#include "lmstring.h"
#include "lmtypemgr.h"

namespace {

// The text scanned into a value whose type has neither a null of its own nor an
// assignment. Built at first use, like the null print string, so that it sees the
// defaults of lumoi18n whatever the order of static construction.
const LmString& ScanFallbackString() {
    static const LmString text("0");
    return text;
}

}  // namespace

int LmTypeMgr::GetValue(char id, void* value, unsigned len, unsigned char format, unsigned char mode) const {
    // Mode 2 belongs to the slots alone; nothing else is looked at before this.
    if (mode != 'M' && mode != 'N' && mode != 'O') return LM_ERR_NOT_SUPPORTED;
    const LmTypeDesc* desc = Desc(id);
    // A string key is stepped in place, in whatever form the caller gives it.
    if (NormalizeId(id) == LmSTRING_T) return desc->GetValue(value, len, format, mode);
    if (format == LmFormatMemory) return desc->GetValue(value, len, LmFormatMemory, mode);

    // A disk image: only bit 0 and the order bit are kept, so format 2 becomes 0 and
    // an image in most significant byte order is read and written least significant
    // byte first. The callers hand formats 1 and 0x81 here.
    const unsigned char f = static_cast<unsigned char>(format & (LM_STRFMT_ORDER | LmFormatLittle));
    // A fixed image longer than the caller's buffer is not touched; a len of 0 leaves
    // the size of the buffer to the caller.
    if (len != 0 && desc->fixed != 0 && desc->NullSizeGet(1) > len) return LM_ERR_NOT_SUPPORTED;
    void* copy = desc->Create(1);
    if (copy == nullptr) return LM_ERR_NOT_SUPPORTED;
    int status = LM_ERR_NOT_SUPPORTED;
    if (desc->Load(copy, value, f, 1) != 0) {
        status = desc->GetValue(copy, 0, LmFormatMemory, mode);
        if (status == LM_OK && desc->Store(value, copy, f, 1) == 0) status = LM_ERR_NOT_SUPPORTED;
    }
    desc->Delete(copy, 1);
    return status;
}

int LmTypeMgr::SetNullValue(char id, void* value) const {
    const LmTypeDesc* desc = Desc(id);
    if (desc->SetNullValue != nullptr) {
        const int status = desc->SetNullValue(value);
        if (status != LM_ERR_NOT_SUPPORTED) return status;
    }
    if (desc->Assignment != nullptr) {
        // A type without a null of its own takes what it converts from an empty text:
        // for a number, its zero.
        void* converted = nullptr;
        {
            // The wrapper owns the one empty string and gives it back at the end of
            // this block, before the assignment.
            LmTypeConvertData wrapper;
            wrapper.mgr = const_cast<LmTypeMgr*>(this);
            wrapper.data = Desc(LmSTRING_T)->Create(1);
            wrapper.count = 1;
            wrapper.id = LmSTRING_T;
            if (desc->ConvertFrom != nullptr) converted = desc->ConvertFrom(&wrapper, 1);
        }
        // A type that converts nothing ("illegal") leaves the value as it was: no
        // assignment reads through a null source.
        if (converted != nullptr) {
            desc->Assignment(value, converted, 1, 1);
            desc->Delete(converted, 1);
        }
    } else if (desc->ScanFromString != nullptr) {
        // The slot gets a copy, so that no scan can change the shared text.
        LmString text(ScanFallbackString());
        desc->ScanFromString(value, text, desc->exchangeFormat, 1);
    }
    return LM_OK;
}

// The stamp record has the memory layout of LmDateTimeN. Each date and time type
// takes its own source from it: ids 12, 19 and 40 (LmDate, LmDateTime, LmDateTimeN)
// the record itself, id 13 (LmTime) its hour field, ids 22, 23 and 24 (d_Date,
// d_Time, d_Timestamp) a value built from its fields, the float second adding the
// fraction unscaled. The standard family is not part of the library yet and its
// Store slots are the harmless ones of "illegal"; until it comes, those ids hand a
// null source to their Store slot, as every id without a source does: ask
// capability 3 first.
int LmTypeMgr::StoreTimeStamp(char id, void* dest, unsigned char format, void* stamp) const {
    if (stamp == nullptr) return LM_ERR_NOT_SUPPORTED;
    const void* source = nullptr;
    switch (static_cast<signed char>(id)) {
        case LmDATE_T:
        case LmDATIME_T:
        case LmDATIME_N_T:
            source = stamp;
            break;
        case LmTIME_T:
            source = static_cast<const unsigned char*>(stamp) + offsetof(LmDateTimeNRecord, hour);
            break;
        default:
            break;
    }
    return static_cast<int>(Desc(id)->Store(dest, source, format, 1));
}

LmString& LmTypeMgr::PrintToLmString(char id, LmString& out, void* value, const char* format, unsigned count) const {
    const LmTypeDesc* desc = Desc(id);
    if (desc->PrintToString == nullptr) return out;
    if (format == nullptr) format = desc->exchangeFormat;
    // The printer of o_char and o_u1b prints a character array as one text.
    if (count < 2 || desc->PrintToString == CharPrintToString) return desc->PrintToString(out, value, format, count);
    // An array is appended to what out held, while one element replaces it.
    const LmString separator(",");
    for (unsigned i = 0; i < count; ++i) {
        if (i != 0) out += separator;
        LmString element;
        out += desc->PrintToString(element, GetArrayElement(id, value, i, count), format, 1);
    }
    return out;
}

void* LmTypeMgr::ScanFromLmString(char id, void* value, LmString& text, const char* format, unsigned count) const {
    const LmTypeDesc* desc = Desc(id);
    if (desc->ScanFromString == nullptr) return value;
    // Splitting a text into elements is the slot's business.
    return desc->ScanFromString(value, text, format != nullptr ? format : desc->exchangeFormat, count);
}
