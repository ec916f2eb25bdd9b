// Identity values: LmClassId (id 16) names a class and its version, LmObjId (id 15)
// an object within a database, LmRef (id 17) an object in any database with its
// class, LmLocalRef an object of the current database with its class (it has no id of
// its own and is stored as LmRef). All four are plain records: no virtual operation,
// no heap, no destructor. Their static members are the handlers of the descriptor
// slots, in the slot shapes of lmtypedesc.h.
//
// Disk forms: no header, no padding, elements end to end, each field least
// significant byte first in every format but LmFormatBig (most significant first).
//   LmClassId  4 bytes: 0-1 classNumber, 2-3 version
//   LmObjId   10 bytes: 0-3 blockId, 4-7 low, 8-9 high
//   LmRef     14 bytes: 0-3 blockId, 4-7 low, 8-9 high, 10-11 databaseId,
//                       12-13 classNumber; version is not stored (Load sets 0)
//
// Print and scan languages: %B blockId, %L low, %H high, %D databaseId, %C
// classNumber, %V version, %% a percent sign; the older positional %h and %l (as in
// "%hu", "%lu") take the fields in a fixed order per class. Exchange formats:
// "(%Cv%V)", "(%H-%L#%B)", "(%D:%H-%L#%B, %C)", and "(%H-%L#%B,%C)" for LmLocalRef.
#ifndef LMIDENTITY_H
#define LMIDENTITY_H

#include <cstdint>

#include "lmtypedesc.h"

class LmString;
class LmRef;
class LmLocalRef;

// The identity hash multiplies the XOR of the element words by this, once.
constexpr uint32_t LmIdentityHashMultiplier = 1103515245u;

// ---------------------------------------------------------------------------
// A class of the schema and its version. Null is both words 0xFFFF, which sorts
// below every other value.
// ---------------------------------------------------------------------------
class LM_EXPORT LmClassId {
public:
    uint16_t classNumber;
    uint16_t version;

    static constexpr unsigned DiskSize = 4;

    // Copies and assignment are the implicit ones: both words.
    // Three-way: an all-ones value below every other; then classNumber, then version.
    int operator!=(const LmClassId& other) const;
    int operator>(const LmClassId& other) const;  // 1 if greater by that order

    int IsNullValue() const { return classNumber > 65534 && version > 65534 ? 1 : 0; }
    int SetNullValue();  // all four bytes 0xFF; 0

    // Count 1 through PrintToString and ScanFromString; a null format is "(%Cv%V)".
    LmString& PrintToLmString(LmString& out, const char* format = nullptr) const;
    LmClassId* ScanFromLmString(const LmString& text, const char* format = nullptr);

    // ---- Descriptor slots of id 16. ----
    static void* Create(unsigned count);  // all zero; null when memory is refused
    static void* Delete(void* value, unsigned count);
    static void Constructor(void* array, unsigned count, unsigned unused);
    static void Destructor(void* array, unsigned count, unsigned unused);
    static void Assignment(void* dest, void* src, unsigned count, int replicate);
    static void Copy(void* dest, void* src, unsigned count, int replicate);
    static unsigned Store(void* dest, const void* src, unsigned char format, unsigned count);
    static unsigned Load(void* dest, const void* src, unsigned char format, unsigned count);
    static unsigned NullSizeGet(unsigned count);
    static unsigned SizeGet(const void* value, unsigned char valueForm, unsigned char format, unsigned count);
    static unsigned SizeGetFromMemFile(MemFile* file, unsigned char format, unsigned count);
    static unsigned Translate(void* dest, unsigned char destFormat, unsigned destLen, void* src,
                              unsigned char srcFormat, unsigned srcLen, unsigned count);
    static int Compare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2,
                       unsigned short option, unsigned count, int& status);
    static unsigned Hash(unsigned char format, unsigned len, void* value, unsigned count, int& status);
    // The share of an index range and the bounds of a scan: no line, the whole range.
    static float EvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned count,
                              LmIdxBounds* out);
    static LmTypeConvertData* ConvertTo(void* value, unsigned count);
    static void* ConvertFrom(LmTypeConvertData* data, unsigned count);
    static void* DefaultValue(unsigned count, int asNull);
    static int IsNull(void* value);
    static int SetNull(void* value);
    static LmString& PrintToString(LmString& out, void* value, const char* format, unsigned count);
    static void* ScanFromString(void* value, LmString& text, const char* format, unsigned count);
};

// ---------------------------------------------------------------------------
// An object within a database: a 48-bit number (high, low) and the BlockId where it
// lies. blockId is no part of the identity: equality, order, hash and the null test
// look at low and high only. The last two bytes are room, cleared by Copy.
// ---------------------------------------------------------------------------
class LM_EXPORT LmObjId {
public:
    uint32_t blockId;
    uint32_t low;
    uint16_t high;
    uint16_t room;

    static constexpr unsigned DiskSize = 10;

    // Copies and assignment are the implicit ones: blockId, low, high and the room.
    int operator==(const LmObjId& other) const { return low == other.low && high == other.high ? 1 : 0; }
    // Three-way: the signed difference of high, else 1 or -1 by low, else 0.
    int operator!=(const LmObjId& other) const;
    LmObjId& operator++();  // steps the 48-bit number; low wrapping to 0 carries into high
    LmObjId& operator--();  // low at 0 borrows from high
    // Adds the sign-extended amount to low; a carry or borrow moves high by 1.
    LmObjId& operator+=(short amount);

    int IsNullValue() const { return low == 0 && high == 0 ? 1 : 0; }
    int SetNullValue();      // blockId, low and high 0; 0
    void SetHighestValue();  // low and high all ones, blockId 0

    // Count 1 through PrintToString and ScanFromString; a null format is "(%H-%L#%B)".
    LmString& PrintToLmString(LmString& out, const char* format = nullptr) const;
    LmObjId* ScanFromLmString(const LmString& text, const char* format = nullptr);

    // ---- Descriptor slots of id 15. ----
    static void* Create(unsigned count);
    static void* Delete(void* value, unsigned count);
    static void Constructor(void* array, unsigned count, unsigned unused);
    static void Destructor(void* array, unsigned count, unsigned unused);
    static void Assignment(void* dest, void* src, unsigned count, int replicate);
    static void Copy(void* dest, void* src, unsigned count, int replicate);  // clears the room too
    static unsigned Store(void* dest, const void* src, unsigned char format, unsigned count);
    static unsigned Load(void* dest, const void* src, unsigned char format, unsigned count);
    static unsigned NullSizeGet(unsigned count);
    static unsigned SizeGet(const void* value, unsigned char valueForm, unsigned char format, unsigned count);
    static unsigned SizeGetFromMemFile(MemFile* file, unsigned char format, unsigned count);
    static unsigned Translate(void* dest, unsigned char destFormat, unsigned destLen, void* src,
                              unsigned char srcFormat, unsigned srcLen, unsigned count);
    static int Compare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2,
                       unsigned short option, unsigned count, int& status);
    static unsigned Hash(unsigned char format, unsigned len, void* value, unsigned count, int& status);
    // The share of an index range on the line high * 65535 + low, and the bounds.
    static float EvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned count,
                              LmIdxBounds* out);
    static LmTypeConvertData* ConvertTo(void* value, unsigned count);
    static void* ConvertFrom(LmTypeConvertData* data, unsigned count);
    static void* DefaultValue(unsigned count, int asNull);
    static int IsNull(void* value);
    static int SetNull(void* value);
    static LmString& PrintToString(LmString& out, void* value, const char* format, unsigned count);
    static void* ScanFromString(void* value, LmString& text, const char* format, unsigned count);
    // The next key: mode 2 all zero, 'O' unchanged, 'M' and 'N' the increment.
    static int GetValue(void* value, unsigned len, unsigned char format, unsigned char mode);
};

// ---------------------------------------------------------------------------
// A reference to an object of any database: the identity of LmObjId, the database
// (0 in a reference made from an LmLocalRef, 65535 an origin id) and the class of
// the target. Equality and the memory order look at high, low and databaseId.
// ---------------------------------------------------------------------------
class LM_EXPORT LmRef {
public:
    uint32_t blockId;
    uint32_t low;
    uint16_t high;
    uint16_t databaseId;
    uint16_t classNumber;
    uint16_t version;  // not stored on disk

    static constexpr unsigned DiskSize = 14;

    // Copies and assignment from an LmRef are the implicit ones: all fields.
    LmRef& operator=(const LmObjId& id);        // the identity; the rest stays
    LmRef& operator=(const LmClassId& cls);     // classNumber and version
    LmRef& operator=(const LmLocalRef& local);  // all fields, databaseId 0
    LmRef& operator=(unsigned short database);  // databaseId
    int operator==(const LmRef& other) const {
        return low == other.low && high == other.high && databaseId == other.databaseId ? 1 : 0;
    }
    // Three-way: the difference of high, then 1 or -1 by low, then by databaseId.
    int operator!=(const LmRef& other) const;

    int IsValid() const;  // an identity, a class, and a database below 65535
    int IsInvalid() const { return IsValid() == 0 ? 1 : 0; }
    int IsValidOriginId() const;  // an identity, and an origin database or a class
    int IsInvalidOriginId() const { return IsValidOriginId() == 0 ? 1 : 0; }

    int IsNullValue() const { return low == 0 && high == 0 ? 1 : 0; }
    int SetNullValue();  // the first ten bytes 0: databaseId, classNumber, version stay

    // Count 1 through PrintToString and ScanFromString; a null format is
    // "(%D:%H-%L#%B, %C)". The slots themselves take a null format as the longer
    // "(%D:%H-%L#%B,%Cv%V)".
    LmString& PrintToLmString(LmString& out, const char* format = nullptr) const;
    LmRef* ScanFromLmString(const LmString& text, const char* format = nullptr);

    // ---- Descriptor slots of id 17. ----
    static void* Create(unsigned count);
    static void* Delete(void* value, unsigned count);
    static void Constructor(void* array, unsigned count, unsigned unused);
    static void Destructor(void* array, unsigned count, unsigned unused);
    static void Assignment(void* dest, void* src, unsigned count, int replicate);
    static void Copy(void* dest, void* src, unsigned count, int replicate);
    static unsigned Store(void* dest, const void* src, unsigned char format, unsigned count);
    static unsigned Load(void* dest, const void* src, unsigned char format, unsigned count);  // version 0
    static unsigned NullSizeGet(unsigned count);
    static unsigned SizeGet(const void* value, unsigned char valueForm, unsigned char format, unsigned count);
    static unsigned SizeGetFromMemFile(MemFile* file, unsigned char format, unsigned count);
    static unsigned Translate(void* dest, unsigned char destFormat, unsigned destLen, void* src,
                              unsigned char srcFormat, unsigned srcLen, unsigned count);
    static int Compare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2,
                       unsigned short option, unsigned count, int& status);
    static unsigned Hash(unsigned char format, unsigned len, void* value, unsigned count, int& status);
    // The share of the whole space of references, whatever the range, and the bounds.
    static float EvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned count,
                              LmIdxBounds* out);
    static LmTypeConvertData* ConvertTo(void* value, unsigned count);
    static void* ConvertFrom(LmTypeConvertData* data, unsigned count);
    static void* DefaultValue(unsigned count, int asNull);
    static int IsNull(void* value);
    static int SetNull(void* value);
    static LmString& PrintToString(LmString& out, void* value, const char* format, unsigned count);
    static void* ScanFromString(void* value, LmString& text, const char* format, unsigned count);
    // As LmObjId's, on the identity part alone; mode 2 clears every field.
    static int GetValue(void* value, unsigned len, unsigned char format, unsigned char mode);
};

// ---------------------------------------------------------------------------
// A reference within the current database: the fields of LmRef in the same places,
// databaseId without meaning. Printed and scanned through the LmRef routines with a
// databaseId of 0.
// ---------------------------------------------------------------------------
class LM_EXPORT LmLocalRef {
public:
    uint32_t blockId;
    uint32_t low;
    uint16_t high;
    uint16_t databaseId;
    uint16_t classNumber;
    uint16_t version;

    // Copies and assignment from an LmLocalRef are the implicit ones: all fields.
    LmLocalRef& operator=(const LmClassId& cls);  // classNumber and version
    LmLocalRef& operator=(const LmObjId& id);     // blockId, low and high
    LmLocalRef& operator=(const LmRef& ref);      // all fields but databaseId
    int operator==(const LmLocalRef& other) const { return low == other.low && high == other.high ? 1 : 0; }
    // The same identity, and the reference's databaseId is 0.
    int operator==(const LmRef& ref) const { return low == ref.low && high == ref.high && ref.databaseId == 0 ? 1 : 0; }
    int operator!=(const LmLocalRef& other) const;  // three-way, as LmObjId's
    // As LmObjId's; an equal identity gives -1 if the reference's databaseId is not 0.
    int operator!=(const LmRef& ref) const;

    // A null format is "(%H-%L#%B,%C)".
    LmString& PrintToLmString(LmString& out, const char* format = nullptr) const;
    // Scans into a scratch LmRef and takes all of it but databaseId.
    LmLocalRef* ScanFromLmString(const LmString& text, const char* format = nullptr);
};

#endif
