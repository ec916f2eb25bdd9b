// The two descriptor records of LmString (id 11): the current one and the one of
// the legacy table. The null slots are the string's own; the other handlers of
// the string type hold the "illegal" operations until they are part of the library.
#include "lmslots.h"
#include "lmstring.h"

namespace {

int StringIsNullValue(void* value) { return static_cast<LmString*>(value)->IsNullValue(); }
int StringSetNullValue(void* value) { return static_cast<LmString*>(value)->SetNullValue(); }

constexpr LmTypeDesc StringRow() {
    LmTypeDesc row = IllegalRow("LmString", "LmSTRING_T", 16, 0, "%s");
    row.IsNullValue = StringIsNullValue;
    row.SetNullValue = StringSetNullValue;
    return row;
}

// The legacy record knows no null: IsNullValue always answers 0, SetNullValue is empty.
constexpr LmTypeDesc StringLegacyRow() { return IllegalRow("LmString", "LmSTRING_T", 16, 0, "%s"); }

}  // namespace

constinit LmTypeDesc LmDesc_LmString = StringRow();
constinit LmTypeDesc LmDesc_LmStringLegacy = StringLegacyRow();
