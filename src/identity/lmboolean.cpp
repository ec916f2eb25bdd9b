// LmBoolean, type id 27: its handlers and descriptor record. The members are
// inline in lmboolean.h; the text language of the type (TRUE, FALSE, the null print
// string) is in scalartext.cpp.
//
// The disk form is the byte itself in every format, so the Load of one element is
// the byte as it stands: Cmp and Hash read it in place for every format.
#include "lmboolean.h"

#include <cstring>
#include <new>

#include "lmbounds.h"
#include "lmcompare.h"
#include "lmconvert.h"
#include "lmslots.h"
#include "lmstring.h"
#include "scalarread.h"

using namespace lmscalar;

namespace {

void* BooleanCreate(unsigned count) {
    void* p = ::operator new(count, std::nothrow);
    if (p != nullptr && count != 0) std::memset(p, 0, count);
    return p;
}

void* BooleanDelete(void* value, unsigned) {
    ::operator delete(value, std::nothrow);
    return nullptr;
}

unsigned BooleanSize(const void*, unsigned char, unsigned char, unsigned count) { return count; }
unsigned BooleanNullSize(unsigned count) { return count; }
unsigned BooleanSizeFromMemFile(MemFile*, unsigned char, unsigned count) { return count; }

unsigned BooleanTranslate(void* dest, unsigned char destFormat, unsigned destLen, void* src, unsigned char srcFormat,
                          unsigned srcLen, unsigned count) {
    return TranslateByForm<1, CharStore, CharStore>(
        dest, destFormat, destLen, src, srcFormat, srcLen, count,
        [](void* d, const void* s, unsigned n) { ScalarAssignment<uint8_t>(d, const_cast<void*>(s), n, 0); });
}

// The word of an element is the byte, sign-extended: a null is 0xFFFFFFFF.
unsigned BooleanHash(unsigned char, unsigned len, void* value, unsigned count, int& status) {
    return HashLoop(1, len, value, count, status, [](const unsigned char* p) {
        return static_cast<uint32_t>(static_cast<int32_t>(static_cast<int8_t>(*p)));
    });
}

// Per element: the string null value for a null, "1" for the byte 1, "0" for any
// other byte.
LmTypeConvertData* BooleanConvertToLmString(void* value, unsigned count) {
    auto* strings = static_cast<LmString*>(LmDesc_LmString.Create(count));
    if (strings == nullptr) return nullptr;
    CreatedArray owned(strings, LmDesc_LmString.Delete, count);
    const auto* bytes = static_cast<const unsigned char*>(value);
    for (unsigned i = 0; i < count; ++i) {
        if (bytes[i] == LmBoolean::NullByte)
            strings[i].SetNullValue();
        else
            strings[i] += LmString(bytes[i] == 1 ? "1" : "0");
    }
    return owned.Wrap(LmSTRING_T);
}

// The first character of a text, of one or two bytes; 0 for an empty text.
unsigned FirstCharacter(const LmString& text) {
    if (text.Len() == 0) return 0;
    if (text.Width() == 1) return static_cast<unsigned char>(text.StrGet()[0]);
    uint16_t unit = 0;
    std::memcpy(&unit, text.StrGet(), sizeof unit);
    return unit;
}

// True if the first character is '1', else false; a missing or null string is null.
void* BooleanConvertFromLmString(LmTypeConvertData* data, unsigned count) {
    auto* values = static_cast<LmBoolean*>(BooleanCreate(count));
    if (values == nullptr) return nullptr;
    for (unsigned i = 0; i < count; ++i) {
        const LmString* text = data != nullptr ? data->GetString(static_cast<int>(i)) : nullptr;
        if (text == nullptr || text->IsNullValue() != 0)
            values[i].SetNullValue();
        else
            values[i] = FirstCharacter(*text) == '1' ? 1 : 0;
    }
    return values;
}

int BooleanIsNull(void* value) { return static_cast<const LmBoolean*>(value)->IsNullValue(); }
int BooleanSetNull(void* value) { return static_cast<LmBoolean*>(value)->SetNullValue(); }

// With asNull: the created values, each made null. Otherwise what an empty text
// gives: false.
void* BooleanDefaultValue(unsigned count, int asNull) {
    if (asNull == 0) return DefaultFromText(BooleanConvertFromLmString, count);
    auto* values = static_cast<LmBoolean*>(BooleanCreate(count));
    if (values == nullptr) return nullptr;
    for (unsigned i = 0; i < count; ++i) values[i].SetNullValue();
    return values;
}

// Mode 2 gives false; 'M' and 'N' give true if the old value is less than true (a
// null, false, or a loaded byte above 127), else there is no next value.
int BooleanGetValue(void* value, unsigned, unsigned char format, unsigned char mode) {
    if (format != LmFormatMemory) return LM_ERR_NOT_SUPPORTED;
    auto* v = static_cast<LmBoolean*>(value);
    switch (mode) {
        case 2:
            *v = 0;
            return LM_OK;
        case 'O':
            return LM_OK;
        case 'M':
        case 'N':
            if (!(*v < LmBoolean(1))) return LM_ERR_NO_NEXT_VALUE;
            *v = 1;
            return LM_OK;
        default:
            return LM_ERR_NOT_SUPPORTED;
    }
}

}  // namespace

// A null orders below false and true; two nulls are equal; otherwise by the less
// and greater of LmBoolean.
int BooleanCompare(unsigned char, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short,
                   unsigned count, int& status) {
    return CompareLoop(1, len1, value1, len2, value2, count, status,
                       [](const unsigned char* a, const unsigned char* b) {
                           LmBoolean x, y;
                           x.value = *a;
                           y.value = *b;
                           if (x.IsNullValue() || y.IsNullValue()) return y.IsNullValue() - x.IsNullValue();
                           return x < y ? -1 : (x > y ? 1 : 0);
                       });
}

constinit LmTypeDesc LmDesc_LmBoolean = {
    "LmBoolean",
    "LmBOOLEAN_T",
    BooleanCreate,
    BooleanDelete,
    CharStore,
    CharStore,
    BooleanNullSize,
    BooleanSize,
    BooleanSizeFromMemFile,
    BooleanCompare,
    BooleanEvalAndBound,
    BooleanHash,
    BooleanConvertToLmString,
    BooleanConvertFromLmString,
    ScalarConstructor<uint8_t>,  // the life-cycle slots of the one-byte numbers
    ScalarDestructor,
    ScalarAssignment<uint8_t>,
    ScalarAssignment<uint8_t>,
    BooleanTranslate,
    BooleanIsNull,
    BooleanSetNull,
    "noop",
    BooleanPrintToString,
    BooleanScanFromString,
    1,
    1,
    BooleanDefaultValue,
    BooleanGetValue,
    nullptr,
};
