// Values carried as text: the wrapper of an array of strings between the ConvertTo
// and ConvertFrom slots, and the exported conversion functions of the numbers.
#ifndef LMCONVERT_H
#define LMCONVERT_H

#include <cstdint>

#include "lmdefs.h"

class LmString;
class LmTypeMgr;

// An array in transit. A wrapper with a manager owns its array and releases it
// through that manager's Delete slot of its id; one without a manager owns nothing.
// Id 100 marks an empty wrapper.
struct LM_EXPORT LmTypeConvertData {
    LmTypeMgr* mgr = nullptr;
    void* data = nullptr;
    uint32_t count = 0;
    char id = 100;

    LmTypeConvertData() = default;
    LmTypeConvertData(const LmTypeConvertData&) = delete;
    LmTypeConvertData& operator=(const LmTypeConvertData&) = delete;
    ~LmTypeConvertData();

    static LmTypeConvertData* Make(char id, unsigned count, void* data, LmTypeMgr* mgr);
    // The element at index of a wrapper of id 11; null otherwise or out of range.
    LmString* GetString(int index);
};

LM_EXPORT LmTypeConvertData* CharConvertToLmString(void* value, unsigned count);
LM_EXPORT void* CharConvertFromLmString(LmTypeConvertData* data, unsigned count);
LM_EXPORT LmTypeConvertData* ShortConvertToLmString(void* value, unsigned count);
LM_EXPORT void* ShortConvertFromLmString(LmTypeConvertData* data, unsigned count);
LM_EXPORT LmTypeConvertData* WordConvertToLmString(void* value, unsigned count);
LM_EXPORT void* WordConvertFromLmString(LmTypeConvertData* data, unsigned count);
LM_EXPORT LmTypeConvertData* O_U1BConvertToLmString(void* value, unsigned count);
LM_EXPORT void* O_U1BConvertFromLmString(LmTypeConvertData* data, unsigned count);

#endif
