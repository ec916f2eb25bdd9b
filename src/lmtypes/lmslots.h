// Internal: the shared slot functions and the descriptor records of every row.
#ifndef LMSLOTS_H
#define LMSLOTS_H

#include <cstring>

#include "lmconvert.h"
#include "lmtypedesc.h"

// ---- Operations of row 46, "illegal". None looks at its arguments. ----
void* IllegalCreate(unsigned count);
void* IllegalDelete(void* value, unsigned count);
unsigned IllegalStore(void* dest, const void* src, unsigned char format, unsigned count);
unsigned IllegalNullSizeGet(unsigned count);
unsigned IllegalSizeGet(const void* value, unsigned char valueForm, unsigned char format, unsigned count);
unsigned IllegalSizeGetFromMemFile(MemFile* file, unsigned char format, unsigned count);
int IllegalCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2,
                   unsigned short option, unsigned count, int& status);
float IllegalEvalAndBound(LmIdxBounds* bounds, unsigned short& flags, void* value, unsigned char format, unsigned count,
                          LmIdxBounds* limits);
unsigned IllegalHash(unsigned char format, unsigned len, void* value, unsigned count, int& status);
LmTypeConvertData* IllegalConvertTo(void* value, unsigned count);
void* IllegalConvertFrom(LmTypeConvertData* data, unsigned count);
void IllegalConstructor(void* array, unsigned count, unsigned unused);
void IllegalAssignment(void* dest, void* src, unsigned count, int broadcast);
unsigned IllegalTranslate(void* dest, unsigned char destFormat, unsigned destLen, void* src, unsigned char srcFormat,
                          unsigned srcLen, unsigned count);
LmString& IllegalPrintToString(LmString& out, void* value, const char* format, unsigned count);
void* IllegalScanFromString(void* value, LmString& text, const char* format, unsigned count);
void* IllegalDefaultValue(unsigned count, int asNull);

// The IsNullValue slot of every type that has no null: always 0.
int NeverNullValue(void* value);
// The GetValue slot of every type that cannot step: always LM_ERR_NOT_SUPPORTED.
int RefuseGetValue(void* value, unsigned len, unsigned char format, unsigned char mode);

// A record that holds the "illegal" operations under a type's own name, id name,
// memory length, fixed flag and exchange format, until the type's handlers come.
constexpr LmTypeDesc IllegalRow(const char* name, const char* idName, uint16_t memLen, uint16_t fixed,
                                const char* exchangeFormat) {
    return LmTypeDesc{name,
                      idName,
                      IllegalCreate,
                      IllegalDelete,
                      IllegalStore,
                      IllegalStore,
                      IllegalNullSizeGet,
                      IllegalSizeGet,
                      IllegalSizeGetFromMemFile,
                      IllegalCompare,
                      IllegalEvalAndBound,
                      IllegalHash,
                      IllegalConvertTo,
                      IllegalConvertFrom,
                      IllegalConstructor,
                      IllegalConstructor,
                      IllegalAssignment,
                      IllegalAssignment,
                      IllegalTranslate,
                      NeverNullValue,
                      nullptr,
                      exchangeFormat,
                      IllegalPrintToString,
                      IllegalScanFromString,
                      memLen,
                      fixed,
                      IllegalDefaultValue,
                      RefuseGetValue,
                      nullptr};
}

// ---- Life-cycle slots of the plain numbers, shared by the small value classes
// of the same width (the 64-bit integer, the boolean). ----
template <typename T>
void ScalarConstructor(void* array, unsigned count, unsigned) {
    if (count == 1)
        *static_cast<T*>(array) = T{};
    else if (count != 0)
        std::memset(array, 0, static_cast<size_t>(count) * sizeof(T));
}

inline void ScalarDestructor(void*, unsigned, unsigned) {}

// Assignment and Copy: element for element, or the one element at src into all
// count elements. src and dest must not overlap.
template <typename T>
void ScalarAssignment(void* dest, void* src, unsigned count, int broadcast) {
    if (count == 0) return;
    T* d = static_cast<T*>(dest);
    if (broadcast == 0) {
        std::memcpy(d, src, static_cast<size_t>(count) * sizeof(T));
        return;
    }
    const T v = *static_cast<const T*>(src);
    for (unsigned i = 0; i < count; ++i) d[i] = v;
}

// ---- The Translate shape shared by the plain numbers and the small value
// classes. Bit 3 of a format (value 8) marks the memory form. ----
template <unsigned Width, LmTypeStoreFunc StoreFn, LmTypeLoadFunc LoadFn, typename CopyElements>
unsigned TranslateByForm(void* dest, unsigned char destFormat, unsigned destLen, void* src, unsigned char srcFormat,
                         unsigned srcLen, unsigned count, CopyElements copy) {
    const bool destMemory = (destFormat & 8) != 0;
    const bool srcMemory = (srcFormat & 8) != 0;
    if (!destMemory && srcMemory) return StoreFn(dest, src, static_cast<unsigned char>(destFormat & 15), count);
    if (!destMemory) {
        // Disk to disk: the image moves as it is, whatever the two byte orders.
        const unsigned n = destLen < srcLen ? destLen : srcLen;
        if (n < destLen) std::memset(dest, 0, destLen);
        if (n != 0) std::memcpy(dest, src, n);
        return n;
    }
    if (!srcMemory) return LoadFn(dest, src, srcFormat, count);
    copy(dest, src, count);
    return count * Width;
}

// ---- Print and scan of the plain numbers and the boolean (scalartext.cpp). ----
LmString& CharPrintToString(LmString& out, void* value, const char* format, unsigned count);
void* CharScanFromString(void* value, LmString& text, const char* format, unsigned count);
LmString& ShortPrintToString(LmString& out, void* value, const char* format, unsigned count);
void* ShortScanFromString(void* value, LmString& text, const char* format, unsigned count);
LmString& LongPrintToString(LmString& out, void* value, const char* format, unsigned count);
void* LongScanFromString(void* value, LmString& text, const char* format, unsigned count);
LmString& IntPrintToString(LmString& out, void* value, const char* format, unsigned count);
void* IntScanFromString(void* value, LmString& text, const char* format, unsigned count);
LmString& O_8BPrintToString(LmString& out, void* value, const char* format, unsigned count);
void* O_8BScanFromString(void* value, LmString& text, const char* format, unsigned count);
LmString& DoublePrintToString(LmString& out, void* value, const char* format, unsigned count);
void* DoubleScanFromString(void* value, LmString& text, const char* format, unsigned count);
LmString& FloatPrintToString(LmString& out, void* value, const char* format, unsigned count);
void* FloatScanFromString(void* value, LmString& text, const char* format, unsigned count);
LmString& BooleanPrintToString(LmString& out, void* value, const char* format, unsigned count);
void* BooleanScanFromString(void* value, LmString& text, const char* format, unsigned count);

// ---- Conversions to and from arrays of strings (convert.cpp). The exported ones
// of o_char, o_2b, o_u2b and o_u1b are in lmconvert.h. ----
LmTypeConvertData* IntConvertToLmString(void* value, unsigned count);  // o_4b, int, enum
void* IntConvertFromLmString(LmTypeConvertData* data, unsigned count);
LmTypeConvertData* DwordConvertToLmString(void* value, unsigned count);  // o_u4b, unsigned, BlockId
void* DwordConvertFromLmString(LmTypeConvertData* data, unsigned count);
LmTypeConvertData* DoubleConvertToLmString(void* value, unsigned count);
void* DoubleConvertFromLmString(LmTypeConvertData* data, unsigned count);
LmTypeConvertData* FloatConvertToLmString(void* value, unsigned count);
void* FloatConvertFromLmString(LmTypeConvertData* data, unsigned count);
LmTypeConvertData* O_8BConvertToLmString(void* value, unsigned count);
void* O_8BConvertFromLmString(LmTypeConvertData* data, unsigned count);
LmTypeConvertData* O_U8BConvertToLmString(void* value, unsigned count);
void* O_U8BConvertFromLmString(LmTypeConvertData* data, unsigned count);
LmTypeConvertData* StringConvertToLmString(void* value, unsigned count);
void* StringConvertFromLmString(LmTypeConvertData* data, unsigned count);

// The strings of a ConvertTo slot, made by the Create slot of id 11.
LmString* ConvertStringsCreate(unsigned count);

// An array from a Create slot, given back through the matching Delete slot if the
// scope ends before it is handed on: an exception of the allocator while the array
// is filled leaves nothing behind.
class CreatedArray {
public:
    CreatedArray(void* array, LmTypeDeleteFunc erase, unsigned count) noexcept
        : array_(array), erase_(erase), count_(count) {}
    CreatedArray(const CreatedArray&) = delete;
    CreatedArray& operator=(const CreatedArray&) = delete;
    ~CreatedArray() {
        if (array_ != nullptr) erase_(array_, count_);
    }
    void* Release() noexcept {
        void* array = array_;
        array_ = nullptr;
        return array;
    }
    // The array handed over to a wrapper without a manager, as a ConvertTo slot does.
    LmTypeConvertData* Wrap(char id) {
        LmTypeConvertData* wrapper = LmTypeConvertData::Make(id, count_, array_, nullptr);
        array_ = nullptr;
        return wrapper;
    }

private:
    void* array_;
    LmTypeDeleteFunc erase_;
    unsigned count_;
};

// ---- Default values (convert.cpp). ----
// What the type's ConvertFrom makes of count empty texts, through a wrapper that
// owns nothing.
void* DefaultFromText(LmTypeConvertFromFunc convertFrom, unsigned count);
template <LmTypeConvertFromFunc ConvertFromFn>
void* DefaultValueFromText(unsigned count, int /*asNull: not looked at*/) {
    return DefaultFromText(ConvertFromFn, count);
}
// Id 11: from text, or with asNull the created strings each made null.
void* StringDefaultValue(unsigned count, int asNull);

// ---- GetValue slots of the plain numbers (scalarstep.cpp): memory form only. ----
int CharGetValue(void* value, unsigned len, unsigned char format, unsigned char mode);   // o_char
int ByteGetValue(void* value, unsigned len, unsigned char format, unsigned char mode);   // o_u1b
int ShortGetValue(void* value, unsigned len, unsigned char format, unsigned char mode);  // o_2b
int WordGetValue(void* value, unsigned len, unsigned char format, unsigned char mode);   // o_u2b
int LongGetValue(void* value, unsigned len, unsigned char format, unsigned char mode);   // o_4b, int
int DwordGetValue(void* value, unsigned len, unsigned char format, unsigned char mode);  // o_u4b, unsigned, BlockId
int O_8BGetValue(void* value, unsigned len, unsigned char format, unsigned char mode);
int O_U8BGetValue(void* value, unsigned len, unsigned char format, unsigned char mode);
int DoubleGetValue(void* value, unsigned len, unsigned char format, unsigned char mode);
int FloatGetValue(void* value, unsigned len, unsigned char format, unsigned char mode);

// ---- Descriptor records. ----
extern LmTypeDesc LmDesc_o_char, LmDesc_o_2b, LmDesc_o_4b, LmDesc_o_double, LmDesc_o_float, LmDesc_o_u2b, LmDesc_o_u4b,
    LmDesc_int, LmDesc_unsigned, LmDesc_enum, LmDesc_o_u1b, LmDesc_BlockId, LmDesc_o_8b, LmDesc_o_u8b;
extern LmTypeDesc LmDesc_LmString, LmDesc_LmStringLegacy, LmDesc_LmDate, LmDesc_LmTime, LmDesc_LmObjId,
    LmDesc_LmClassId, LmDesc_LmRef, LmDesc_LmBlob, LmDesc_LmDateTime, LmDesc_LmIString, LmDesc_LmCaseIString,
    LmDesc_d_Date, LmDesc_d_Time, LmDesc_d_Timestamp, LmDesc_d_Interval, LmDesc_LmInt64, LmDesc_LmBoolean;
extern LmTypeDesc LmDesc_LmNull_char, LmDesc_LmNull_uchar, LmDesc_LmNull_short, LmDesc_LmNull_ushort, LmDesc_LmNull_int,
    LmDesc_LmNull_unsigned, LmDesc_LmNull_long, LmDesc_LmNull_ulong, LmDesc_LmNull_float, LmDesc_LmNull_double,
    LmDesc_LmNull_LmInt64, LmDesc_LmNull_8b, LmDesc_LmNull_u8b;
extern LmTypeDesc LmDesc_LmSeal, LmDesc_LmDateTimeN, LmDesc_LmTimeSpan, LmDesc_illegal;

// ---- Hash slots of the plain numbers. ----
unsigned CharHash(unsigned char format, unsigned len, void* value, unsigned count, int& status);
unsigned ByteHash(unsigned char format, unsigned len, void* value, unsigned count, int& status);
unsigned ShortHash(unsigned char format, unsigned len, void* value, unsigned count, int& status);
unsigned WordHash(unsigned char format, unsigned len, void* value, unsigned count, int& status);
unsigned LongHash(unsigned char format, unsigned len, void* value, unsigned count, int& status);
unsigned IntHash(unsigned char format, unsigned len, void* value, unsigned count, int& status);
unsigned FloatHash(unsigned char format, unsigned len, void* value, unsigned count, int& status);
unsigned DoubleHash(unsigned char format, unsigned len, void* value, unsigned count, int& status);
unsigned O_8BHash(unsigned char format, unsigned len, void* value, unsigned count, int& status);
#endif
