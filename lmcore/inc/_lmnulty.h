// The shape of the nullable family: a plain number and a null flag side by side.
//
// Thirteen type ids (28 to 38, 44, 45) are one template told once per base type.
// They have no class of their own for callers: every value is reached through
// LmTypeMgr by its id. This header tells the memory record, the null rule and the
// slots of the template; their bodies and the thirteen descriptor records are in the
// library (src/lmtypes/nullable.cpp), which instantiates them.
//
// Memory form: the base value, then isNull, one signed byte (1 null, 0 a value); the
// rest of the memory length is room. A null holds a value of 0. Disk form of one
// element: the flag byte first (1 null, 0 otherwise), then the base's disk form, so
// a null sorts by its first byte; the value bytes are written in any case. With bit
// 3 of the format set (the memory format) the order is the other way round: value,
// then flag. Only a stored flag byte of exactly 1 reads back as null.
#ifndef LMNULTY_H
#define LMNULTY_H

#include <cstdint>

#include "lmtypedesc.h"
#include "lumobase.h"

// The memory record of one nullable value. Its size is the memory length of the id.
template <typename T>
struct LmNullable {
    T value;
    signed char isNull;
};

// The relation of two values before their numbers are looked at. Nulls sort below
// every value, and two nulls are equal.
enum class LmNullRelation : int {
    equal = 0,    // both null
    less = 1,     // only the left one null
    greater = 2,  // only the right one null
    unknown = 3,  // neither null: the values decide
};

// The flag of the right side counts as null only above 0 as a signed byte.
inline LmNullRelation LmNullRelationOf(signed char leftIsNull, signed char rightIsNull) noexcept {
    const bool left = leftIsNull != 0, right = rightIsNull > 0;
    if (left) return right ? LmNullRelation::equal : LmNullRelation::less;
    return right ? LmNullRelation::greater : LmNullRelation::unknown;
}

// The result a relation stands for: 0, -1 or 1. Relation 3 has none, which is a
// fault of the caller: it is reported, and like any other relation out of range
// it gives -2.
inline int LmNullRelationNumber(LmNullRelation nr) noexcept {
    switch (nr) {
        case LmNullRelation::equal:
            return 0;
        case LmNullRelation::less:
            return -1;
        case LmNullRelation::greater:
            return 1;
        case LmNullRelation::unknown:
            LUMO_assert("nr != unknown", "lmcore\\inc\\_lmnulty", __LINE__);
            return -2;
    }
    return -2;
}

// The slots of one member, in the order of the descriptor. T is the base value;
// Base names the base type's record and its element rules (told in the library).
template <typename T, typename Base>
struct LmNullType {
    using Value = LmNullable<T>;

    static void* Create(unsigned count);
    static void* Delete(void* value, unsigned count);
    static unsigned Store(void* dest, const void* src, unsigned char format, unsigned count);
    static unsigned Load(void* dest, const void* src, unsigned char format, unsigned count);
    static unsigned NullSizeGet(unsigned count);
    static unsigned SizeGet(const void* value, unsigned char valueForm, unsigned char format, unsigned count);
    static unsigned SizeGetFromMemFile(MemFile* file, unsigned char format, unsigned count);
    static int Compare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2,
                       unsigned short option, unsigned count, int& status);
    static float EvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned count,
                              LmIdxBounds* out);
    static unsigned Hash(unsigned char format, unsigned len, void* value, unsigned count, int& status);
    static LmTypeConvertData* ConvertTo(void* value, unsigned count);
    static void* ConvertFrom(LmTypeConvertData* data, unsigned count);
    static void Constructor(void* array, unsigned count, unsigned unused);
    static void Destructor(void* array, unsigned count, unsigned unused);
    static void Assignment(void* dest, void* src, unsigned count, int replicate);
    static void Copy(void* dest, void* src, unsigned count, int replicate);
    static unsigned Translate(void* dest, unsigned char destFormat, unsigned destLen, void* src,
                              unsigned char srcFormat, unsigned srcLen, unsigned count);
    static int IsNull(void* value);
    static int SetNull(void* value);
    static LmString& PrintToString(LmString& out, void* value, const char* format, unsigned count);
    static void* ScanFromString(void* value, LmString& text, const char* format, unsigned count);
    static void* DefaultValue(unsigned count, int asNull);
    static int GetValue(void* value, unsigned len, unsigned char format, unsigned char mode);
};

#endif
