// LmTypeMgr: names a type by its id and forwards every operation to the type's
// descriptor record; the module functions of the library.
#ifndef LMTYPEMGR_H
#define LMTYPEMGR_H

#include "lmconvert.h"
#include "lmtypedesc.h"

class LM_EXPORT LmTypeMgr {
public:
    // factory: 0..10 stay themselves, 11 is level 3, 12 and up are level 4.
    // Levels below 4 use the legacy table.
    LmTypeMgr(unsigned factory = 5) noexcept { SetFactory(factory); }

    void SetFactory(unsigned factory) noexcept {
        const unsigned lvl = factory < 11 ? factory : (factory == 11 ? 3u : 4u);
        table = lvl < 4 ? LmTypeTableLegacy : LmTypeTableCurrent;
        level = static_cast<uint16_t>(lvl);
    }

    uint16_t LevelGet() const noexcept { return level; }
    LmTypeDesc** TableGet() const noexcept { return table; }

    // Ids below 100 (negative ones too) stay as they are; 100 and up become
    // min(id - 54, 46), which is 46, "illegal", for every one of them.
    static int NormalizeId(char id) noexcept {
        const int i = static_cast<signed char>(id);
        return i < 100 ? i : (i - 54 < 46 ? i - 54 : 46);
    }
    static int IsValidType(char id) noexcept { return NormalizeId(id) < LmTypeCountCurrent ? 1 : 0; }

    // The descriptor of an id in the table in force. Ids are not checked.
    LmTypeDesc* Desc(char id) const noexcept { return table[NormalizeId(id)]; }

    // ---- Forwarding members: one normalisation, two loads, one indirect call. ----
    void* Create(char id, unsigned count) const { return Desc(id)->Create(count); }
    void* Delete(char id, void* value, unsigned count) const { return Desc(id)->Delete(value, count); }
    void* DefaultValue(char id, unsigned count, int asNull) const { return Desc(id)->DefaultValue(count, asNull); }
    unsigned Store(char id, void* dest, void* src, unsigned char format, unsigned count) const {
        return Desc(id)->Store(dest, src, format, count);
    }
    unsigned Load(char id, void* dest, void* src, unsigned char format, unsigned count) const {
        return Desc(id)->Load(dest, src, format, count);
    }
    unsigned DiskLenGet(char id, void* value, unsigned char format, unsigned count, unsigned char valueForm) const {
        return Desc(id)->SizeGet(value, valueForm, format, count);
    }
    unsigned DiskLenGetFromMemFile(char id, MemFile* file, unsigned char format, unsigned count) const {
        return Desc(id)->SizeGetFromMemFile(file, format, count);
    }
    int Cmp(char id, unsigned len1, void* value1, unsigned len2, void* value2, unsigned short option, unsigned count,
            unsigned char format, int& status) const {
        return Desc(id)->Cmp(format, len1, value1, len2, value2, option, count, status);
    }
    // Short form: exact bounds (both lengths 0) and a status of its own, dropped.
    int Cmp(char id, void* value1, void* value2, unsigned short option, unsigned count, unsigned char format) const {
        int status;  // written by the slot and dropped here: never read
        return Desc(id)->Cmp(format, 0, value1, 0, value2, option, count, status);
    }
    unsigned Hash(char id, unsigned len, void* value, unsigned count, unsigned char format, int& status) const {
        return Desc(id)->Hash(format, len, value, count, status);
    }
    float EvalAndBound(char id, LmIdxBounds* bounds, unsigned short& flags, void* value, unsigned char format,
                       unsigned count, LmIdxBounds* limits, LmEvalData* /*evalData: not handed on*/) const {
        return Desc(id)->EvalAndBound(bounds, flags, value, format, count, limits);
    }
    unsigned Translate(char id, void* dest, unsigned char destFormat, unsigned destLen, void* src,
                       unsigned char srcFormat, unsigned srcLen, unsigned count) const {
        return Desc(id)->Translate(dest, destFormat, destLen, src, srcFormat, srcLen, count);
    }
    int IsNullValue(char id, void* value) const { return Desc(id)->IsNullValue(value); }
    unsigned short IsFixed(char id) const noexcept { return Desc(id)->fixed; }
    // memLen times the low 16 bits of count, truncated to 16 bits.
    unsigned short MemLenGet(char id, unsigned count) const noexcept {
        return static_cast<unsigned short>(Desc(id)->memLen * (count & 0xFFFFu));
    }

    LmTypeAssignmentFunc AssignmentPtrGet(char id) const noexcept { return Desc(id)->Assignment; }
    LmTypeCmpFunc CmpFuncPtrGet(char id) const noexcept { return Desc(id)->Cmp; }
    LmTypeConstructorFunc ConstructorPtrGet(char id) const noexcept { return Desc(id)->Constructor; }
    LmTypeCopyFunc CopyPtrGet(char id) const noexcept { return Desc(id)->Copy; }
    LmTypeDestructorFunc DestructorPtrGet(char id) const noexcept { return Desc(id)->Destructor; }
    LmTypeIsNullFunc IsNullPtrGet(char id) const noexcept { return Desc(id)->IsNullValue; }
    LmTypeLoadFunc LoadPtrGet(char id) const noexcept { return Desc(id)->Load; }
    LmTypeSetNullFunc SetNullPtrGet(char id) const noexcept { return Desc(id)->SetNullValue; }
    LmTypeStoreFunc StorePtrGet(char id) const noexcept { return Desc(id)->Store; }

    // Kept for callers of an older interface: there is no such comparison.
    typedef int (*LmCompareFunc)(void*, void*);
    LmCompareFunc ComparePtrGet(char /*id*/) const noexcept { return nullptr; }
    int DiskIsNullValue(char /*id*/, void* /*value*/) const noexcept { return LM_ERR_NOT_SUPPORTED; }

    // ---- Exchange members: write the shared static record, for every manager and
    // both tables where the record is shared. A null argument only reads. ----
    const char* ExchangeFormat(char id, const char* format) const noexcept {
        return Exchange(Desc(id)->exchangeFormat, format);
    }
    LmTypePrintFunc ExchangePrintToLmStringFunc(char id, LmTypePrintFunc func) const noexcept {
        return Exchange(Desc(id)->PrintToString, func);
    }
    LmTypeScanFunc ExchangeScanFromLmStringFunc(char id, LmTypeScanFunc func) const noexcept {
        return Exchange(Desc(id)->ScanFromString, func);
    }
    LmTypeCmpFunc ExchangeLmTypeCmpFunc(char id, LmTypeCmpFunc func) const noexcept {
        return Exchange(Desc(id)->Cmp, func);
    }

    // ---- Services that do work of their own. ----
    // Capability 1: the SetNullValue slot is filled. 2: the value can count.
    // 3: StoreTimeStamp can write the value. Anything else: 0.
    unsigned short SupportsCapability(char id, unsigned short capability) const noexcept;
    unsigned short SupportsNullValue(char id) const noexcept { return SupportsCapability(id, 1); }
    // base + memLen * index; null if count is not 0 and index is not below it.
    void* GetArrayElement(char id, void* base, unsigned index, unsigned count) const noexcept;
    // With a null buffer, the static text; else the text copied into buffer.
    char* NameGet(char id, char* buffer) const noexcept;
    char* TypeIdNameGet(char id, char* buffer) const noexcept;
    // 0 and the id for an exact (case-sensitive) type name; else 1 and id 47.
    int Name2LmTypeId(const char* name, char& id) const noexcept;

    // Steps a value to the next key (mode 'M' or 'N') or to the present ('O'), in
    // memory (format 8), on a key of id 11, or on a disk image (formats 1 and 0x81).
    // 0, LM_ERR_NO_NEXT_VALUE or LM_ERR_NOT_SUPPORTED.
    int GetValue(char id, void* value, unsigned len, unsigned char format, unsigned char mode) const;
    // The type's own null, or else what it converts from an empty text. Answers 0 or
    // the slot's status.
    int SetNullValue(char id, void* value) const;
    // Writes the stamp record (fields of LmDateTimeN) into dest as the date or time
    // type of the id; bytes written or a status. Ask capability 3 first.
    int StoreTimeStamp(char id, void* dest, unsigned char format, void* stamp) const;
    // A null format is the type's exchange format. One element replaces out's text;
    // an array is appended, its elements separated by ",".
    LmString& PrintToLmString(char id, LmString& out, void* value, const char* format, unsigned count) const;
    void* ScanFromLmString(char id, void* value, LmString& text, const char* format, unsigned count) const;

    // An array of values as a wrapper of strings that owns them; null when the type
    // has no conversion.
    LmTypeConvertData* ConvertTo(char id, void* value, unsigned count) const;
    // A new array of count values from a wrapper, which then owns its strings.
    void* ConvertFrom(char id, LmTypeConvertData* data, unsigned count) const;

    // The text that stands for a null value in print and scan: "{NULL}" from load on.
    static const LmString& GetNullPrintString();
    static void SetNullPrintString(const LmString& text);

protected:
    // The old one-string form of an array: every element followed by a delimiter
    // that occurs in none of them, so the last character names the delimiter.
    LmString* ConvertToLmStringOld(void* value, char id, unsigned count) const;
    // Its reader: consumes text and answers a new array of count values.
    void* ConvertFromLmStringOld(LmString* text, char id, unsigned count) const;

private:
    template <typename T>
    static T Exchange(T& slot, T replacement) noexcept {
        const T old = slot;
        if (replacement != nullptr) slot = replacement;
        return old;
    }

    LmTypeDesc** table;
    uint16_t level;
};

// ---- Module functions. ----
// Non-zero: starts the language context, then makes a default manager of factory
// level 5. Zero: stops the language context, then frees the default manager.
LM_EXPORT void ___LmTypemgrContext(int start);
// One static int for callers; the library never reads it.
LM_EXPORT int& ___LmTypeMgrOptions();
// The default manager in force; a non-null argument replaces it first.
LM_EXPORT LmTypeMgr* DefaultTypeMgr(LmTypeMgr* mgr);
LM_EXPORT int LmCheckDll(int flags);
LM_EXPORT const char* LmDescribeDll(unsigned* major, unsigned* minor, unsigned* patch, unsigned* build, unsigned* extra,
                                    const char** module, const char** buildDateTime, const char** unknown,
                                    unsigned* serial, const char** buildTag, const char** empty);
LM_EXPORT void GetLmTypeMgrInfo(const char** buildTag, unsigned* serial, const char** banner, const char** buildDate,
                                const char** module);

#endif
