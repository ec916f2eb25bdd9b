// The compare functions of the plain number types, in the LmTypeCmpFunc shape,
// and the rank of a floating value in index order.
#ifndef LMCOMPARE_H
#define LMCOMPARE_H

#include "lmtypedesc.h"

#define LM_CMP_DECL(name)                                                                              \
    LM_EXPORT int name(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2, \
                       unsigned short option, unsigned count, int& status)

LM_CMP_DECL(CharCompare);      // o_char: signed bytes
LM_CMP_DECL(ByteCompare);      // o_u1b: unsigned bytes
LM_CMP_DECL(ShortCompare);     // o_2b
LM_CMP_DECL(WordCompare);      // o_u2b
LM_CMP_DECL(LongCompare);      // o_4b
LM_CMP_DECL(DwordCompare);     // o_u4b, BlockId
LM_CMP_DECL(IntCompare);       // int, enum
LM_CMP_DECL(UnsignedCompare);  // unsigned
LM_CMP_DECL(O_8BCompare);      // o_8b
LM_CMP_DECL(O_U8BCompare);     // o_u8b
LM_CMP_DECL(FloatCompare);     // o_float, d_Interval
LM_CMP_DECL(DoubleCompare);    // o_double
LM_CMP_DECL(Int64Compare);     // LmInt64
LM_CMP_DECL(BooleanCompare);   // LmBoolean: a null below false and true
LM_CMP_DECL(SealCompare);      // LmSeal: the first difference, of words or of bytes
LM_CMP_DECL(StringCompare);        // LmString, current and order forms
LM_CMP_DECL(StringCompareLegacy);  // LmString at factory levels below 4

// The fixed-form strings: their sort codes, wildcards, keys in sort form.
LM_CMP_DECL(LmIStringCompare);      // LmIString
LM_CMP_DECL(LmCaseIStringCompare);  // LmCaseIString, lower case folded onto upper case

#undef LM_CMP_DECL

// Index order of floating values: NaN -2, negative infinity -1, finite 0 (zero and
// subnormals included), positive infinity 1.
LM_EXPORT int LmFloatRank(double value) noexcept;

#endif
