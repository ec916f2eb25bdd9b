// The plain number types: life cycle, store, load, size and translate handlers,
// and their fourteen descriptor records. A value is the machine number; its disk
// form is its bytes alone, in the byte order of the format.
#include <cstdint>
#include <cstring>
#include <new>

#include "lmbounds.h"
#include "lmcompare.h"
#include "lmconvert.h"
#include "lmslots.h"

namespace {

template <typename T>
void* ScalarCreate(unsigned count) {
    // The count is widened as a signed 32-bit number: a count of 2^31 or more asks
    // for an impossible size and the allocator's failure reaches the caller.
    const int64_t bytes = static_cast<int64_t>(static_cast<int32_t>(count)) * static_cast<int64_t>(sizeof(T));
    void* p = ::operator new(static_cast<size_t>(bytes));
    if constexpr (sizeof(T) == 1) {
        // Only the byte types start cleared; one element by a single store.
        if (count == 1)
            *static_cast<T*>(p) = 0;
        else if (count != 0)
            std::memset(p, 0, count);
    }
    return p;
}

void* ScalarDelete(void* value, unsigned) {
    ::operator delete(value);
    return nullptr;
}

template <typename T, LmTypeStoreFunc StoreFn, LmTypeLoadFunc LoadFn>
unsigned ScalarTranslate(void* dest, unsigned char destFormat, unsigned destLen, void* src, unsigned char srcFormat,
                         unsigned srcLen, unsigned count) {
    return TranslateByForm<sizeof(T), StoreFn, LoadFn>(
        dest, destFormat, destLen, src, srcFormat, srcLen, count,
        [](void* d, const void* s, unsigned n) { ScalarAssignment<T>(d, const_cast<void*>(s), n, 0); });
}

template <unsigned Width>
unsigned FixedSizeGetFromMemFile(MemFile*, unsigned char, unsigned count) {
    return count * Width;
}

// int, enum and unsigned ask IntSizeGet; the floating types ask with the nibble.
unsigned IntSizeGetFromMemFile(MemFile*, unsigned char format, unsigned count) {
    return IntSizeGet(nullptr, 8, format, count);
}
unsigned FloatSizeGetFromMemFile(MemFile*, unsigned char format, unsigned count) {
    return FloatSizeGet(nullptr, 8, static_cast<unsigned char>(format & 15), count);
}
unsigned DoubleSizeGetFromMemFile(MemFile*, unsigned char format, unsigned count) {
    return DoubleSizeGet(nullptr, 8, static_cast<unsigned char>(format & 15), count);
}

// The record of one plain number type. Its default is what it converts from an
// empty text.
template <typename T, LmTypeStoreFunc StoreFn, LmTypeLoadFunc LoadFn, LmTypeConvertFromFunc ConvertFromFn>
constexpr LmTypeDesc ScalarRow(const char* name, const char* idName, const char* exchangeFormat,
                               LmTypeNullSizeGetFunc nullSizeGet, LmTypeSizeGetFunc sizeGet,
                               LmTypeSizeGetFromMemFileFunc sizeGetFromMemFile, LmTypeCmpFunc cmp, LmTypeHashFunc hash,
                               LmTypePrintFunc print, LmTypeScanFunc scan, LmTypeConvertToFunc convertTo,
                               LmTypeGetValueFunc getValue, LmTypeEvalAndBoundFunc evalAndBound) {
    return LmTypeDesc{name,
                      idName,
                      ScalarCreate<T>,
                      ScalarDelete,
                      StoreFn,
                      LoadFn,
                      nullSizeGet,
                      sizeGet,
                      sizeGetFromMemFile,
                      cmp,
                      evalAndBound,
                      hash,
                      convertTo,
                      ConvertFromFn,
                      ScalarConstructor<T>,
                      ScalarDestructor,
                      ScalarAssignment<T>,
                      ScalarAssignment<T>,
                      ScalarTranslate<T, StoreFn, LoadFn>,
                      NeverNullValue,
                      nullptr,
                      exchangeFormat,
                      print,
                      scan,
                      static_cast<uint16_t>(sizeof(T)),
                      1,
                      DefaultValueFromText<ConvertFromFn>,
                      getValue,
                      nullptr};
}

}  // namespace

constinit LmTypeDesc LmDesc_o_char = ScalarRow<int8_t, CharStore, CharStore, CharConvertFromLmString>(
    "o_char", "Lm1B_T", "%c", CharNullSizeGet, CharSizeGet, FixedSizeGetFromMemFile<1>, CharCompare, CharHash,
    CharPrintToString, CharScanFromString, CharConvertToLmString, CharGetValue, CharEvalAndBound);
constinit LmTypeDesc LmDesc_o_u1b = ScalarRow<uint8_t, CharStore, CharStore, O_U1BConvertFromLmString>(
    "o_u1b", "LmU1B_T", "%c", CharNullSizeGet, CharSizeGet, FixedSizeGetFromMemFile<1>, ByteCompare, ByteHash,
    CharPrintToString, CharScanFromString, O_U1BConvertToLmString, ByteGetValue, ByteEvalAndBound);
constinit LmTypeDesc LmDesc_o_2b = ScalarRow<int16_t, ShortStore, ShortStore, ShortConvertFromLmString>(
    "o_2b", "Lm2B_T", "%hd", ShortNullSizeGet, ShortSizeGet, FixedSizeGetFromMemFile<2>, ShortCompare, ShortHash,
    ShortPrintToString, ShortScanFromString, ShortConvertToLmString, ShortGetValue, ShortEvalAndBound);
constinit LmTypeDesc LmDesc_o_u2b = ScalarRow<uint16_t, ShortStore, ShortStore, WordConvertFromLmString>(
    "o_u2b", "LmU2B_T", "%hu", ShortNullSizeGet, ShortSizeGet, FixedSizeGetFromMemFile<2>, WordCompare, WordHash,
    ShortPrintToString, ShortScanFromString, WordConvertToLmString, WordGetValue, WordEvalAndBound);
constinit LmTypeDesc LmDesc_o_4b = ScalarRow<int32_t, LongStore, LongStore, IntConvertFromLmString>(
    "o_4b", "Lm4B_T", "%ld", LongNullSizeGet, LongSizeGet, FixedSizeGetFromMemFile<4>, LongCompare, LongHash,
    LongPrintToString, LongScanFromString, IntConvertToLmString, LongGetValue, LongEvalAndBound);
constinit LmTypeDesc LmDesc_o_u4b = ScalarRow<uint32_t, LongStore, LongStore, DwordConvertFromLmString>(
    "o_u4b", "LmU4B_T", "%lu", LongNullSizeGet, LongSizeGet, FixedSizeGetFromMemFile<4>, DwordCompare, LongHash,
    LongPrintToString, LongScanFromString, DwordConvertToLmString, DwordGetValue, DwordEvalAndBound);
constinit LmTypeDesc LmDesc_BlockId = ScalarRow<uint32_t, LongStore, LongStore, DwordConvertFromLmString>(
    "BlockId", "LmBLOCKID_T", "#%lu", LongNullSizeGet, LongSizeGet, FixedSizeGetFromMemFile<4>, DwordCompare, LongHash,
    LongPrintToString, LongScanFromString, DwordConvertToLmString, DwordGetValue, DwordEvalAndBound);
constinit LmTypeDesc LmDesc_int = ScalarRow<int32_t, IntStore, IntLoad, IntConvertFromLmString>(
    "int", "LmINT_T", "%d", IntNullSizeGet, IntSizeGet, IntSizeGetFromMemFile, IntCompare, IntHash, IntPrintToString,
    IntScanFromString, IntConvertToLmString, LongGetValue, IntEvalAndBound);
// enum prints and converts as int, but does not step.
constinit LmTypeDesc LmDesc_enum = ScalarRow<int32_t, IntStore, IntLoad, IntConvertFromLmString>(
    "enum", "LmENUM_T", "%d", IntNullSizeGet, IntSizeGet, IntSizeGetFromMemFile, IntCompare, IntHash, IntPrintToString,
    IntScanFromString, IntConvertToLmString, RefuseGetValue, IntEvalAndBound);
constinit LmTypeDesc LmDesc_unsigned = ScalarRow<uint32_t, UnsignedStore, UnsignedLoad, DwordConvertFromLmString>(
    "unsigned", "LmUNSIGNED_T", "%u", IntNullSizeGet, IntSizeGet, IntSizeGetFromMemFile, UnsignedCompare, IntHash,
    IntPrintToString, IntScanFromString, DwordConvertToLmString, DwordGetValue, UnsignedEvalAndBound);
constinit LmTypeDesc LmDesc_o_float = ScalarRow<float, FloatStore, FloatStore, FloatConvertFromLmString>(
    "o_float", "LmFLOAT_T", "%.17g", FloatNullSizeGet, FloatSizeGet, FloatSizeGetFromMemFile, FloatCompare, FloatHash,
    FloatPrintToString, FloatScanFromString, FloatConvertToLmString, FloatGetValue, FloatEvalAndBound);
constinit LmTypeDesc LmDesc_o_double = ScalarRow<double, DoubleStore, DoubleStore, DoubleConvertFromLmString>(
    "o_double", "LmDOUBLE_T", "%.17g", DoubleNullSizeGet, DoubleSizeGet, DoubleSizeGetFromMemFile, DoubleCompare,
    DoubleHash, DoublePrintToString, DoubleScanFromString, DoubleConvertToLmString, DoubleGetValue, DoubleEvalAndBound);
constinit LmTypeDesc LmDesc_o_8b = ScalarRow<int64_t, O_8BStore, O_8BStore, O_8BConvertFromLmString>(
    "o_8b", "Lm8B_T", "%I64d", O_8BNullSizeGet, O_8BSizeGet, FixedSizeGetFromMemFile<8>, O_8BCompare, O_8BHash,
    O_8BPrintToString, O_8BScanFromString, O_8BConvertToLmString, O_8BGetValue, O_8BEvalAndBound);
constinit LmTypeDesc LmDesc_o_u8b = ScalarRow<uint64_t, O_8BStore, O_8BStore, O_U8BConvertFromLmString>(
    "o_u8b", "LmU8B_T", "%I64u", O_8BNullSizeGet, O_8BSizeGet, FixedSizeGetFromMemFile<8>, O_U8BCompare, O_8BHash,
    O_8BPrintToString, O_8BScanFromString, O_U8BConvertToLmString, O_U8BGetValue, O_U8BEvalAndBound);
