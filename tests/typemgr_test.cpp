// The type manager frame: id normalisation, factory levels and tables, the
// forwarding members, the Exchange members, the manager's own services and the
// module functions.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <iterator>
#include <type_traits>
#include <utility>

#include "lumotypes.h"

namespace {

// ---------------------------------------------------------------------------
// The type table as the rest of the database knows it. Typed by hand: these
// names, lengths and formats are persistent, so the code must match this list.
// ---------------------------------------------------------------------------
struct TypeRow {
    char id;
    const char* name;
    const char* idName;
    uint16_t memLen;
    uint16_t fixed;
    const char* format;
};

constexpr TypeRow kTypeTable[LmTypeCountCurrent] = {
    {Lm1B_T, "o_char", "Lm1B_T", 1, 1, "%c"},
    {Lm2B_T, "o_2b", "Lm2B_T", 2, 1, "%hd"},
    {Lm4B_T, "o_4b", "Lm4B_T", 4, 1, "%ld"},
    {LmDOUBLE_T, "o_double", "LmDOUBLE_T", 8, 1, "%.17g"},
    {LmFLOAT_T, "o_float", "LmFLOAT_T", 4, 1, "%.17g"},
    {LmU2B_T, "o_u2b", "LmU2B_T", 2, 1, "%hu"},
    {LmU4B_T, "o_u4b", "LmU4B_T", 4, 1, "%lu"},
    {LmINT_T, "int", "LmINT_T", 4, 1, "%d"},
    {LmUNSIGNED_T, "unsigned", "LmUNSIGNED_T", 4, 1, "%u"},
    {LmENUM_T, "enum", "LmENUM_T", 4, 1, "%d"},
    {LmU1B_T, "o_u1b", "LmU1B_T", 1, 1, "%c"},
    {LmSTRING_T, "LmString", "LmSTRING_T", 16, 0, "%s"},
    {LmDATE_T, "LmDate", "LmDATE_T", 4, 1, "%a %e.%b %Y"},
    {LmTIME_T, "LmTime", "LmTIME_T", 3, 1, "%I:%M:%S %p"},
    {LmBLOCKID_T, "BlockId", "LmBLOCKID_T", 4, 1, "#%lu"},
    {LmOBJID_T, "LmObjId", "LmOBJID_T", 12, 1, "(%H-%L#%B)"},
    {LmCLID_T, "LmClassId", "LmCLID_T", 4, 1, "(%Cv%V)"},
    {LmREF_T, "LmRef", "LmREF_T", 16, 1, "(%D:%H-%L#%B, %C)"},
    {LmBLOB_T, "LmBlob", "LmBLOB_T", 8, 0, "[BLOB,len=%L]"},
    {LmDATIME_T, "LmDateTime", "LmDATIME_T", 8, 1, "%a %e.%b %Y %I:%M:%S %p"},
    {LmISTRING_T, "LmIString", "LmISTRING_T", 16, 0, "%s"},
    {LmCASEISTRING_T, "LmCaseIString", "LmCASEISTRING_T", 16, 0, "%s"},
    {D_DATE_T, "d_Date", "D_DATE_T", 4, 1, "%a %b %e"},
    {D_TIME_T, "d_Time", "D_TIME_T", 6, 1, "%I:%M:%S %p"},
    {D_TIMESTAMP_T, "d_Timestamp", "D_TIMESTAMP_T", 10, 1, "%a %b %e %I:%M:%S %p"},
    {D_INTERVAL_T, "d_Interval", "D_INTERVAL_T", 4, 1, "%e days, %I hours, %M minutes, %S seconds"},
    {LmINT64_T, "LmInt64", "LmINT64_T", 8, 1, "%S"},
    {LmBOOLEAN_T, "LmBoolean", "LmBOOLEAN_T", 1, 1, "noop"},
    {LmNULL_1B_T, "LmNull_char", "LmNULL_1B_T", 2, 1, "%c"},
    {LmNULL_U1B_T, "LmNull_uchar", "LmNULL_U1B_T", 2, 1, "%c"},
    {LmNULL_2B_T, "LmNull_short", "LmNULL_2B_T", 4, 1, "%hd"},
    {LmNULL_U2B_T, "LmNull_ushort", "LmNULL_U2B_T", 4, 1, "%hu"},
    {LmNULL_INT_T, "LmNull_int", "LmNULL_INT_T", 8, 1, "%d"},
    {LmNULL_UNSIGNED_T, "LmNull_unsigned", "LmNULL_UNSIGNED_T", 8, 1, "%u"},
    {LmNULL_4B_T, "LmNull_long", "LmNULL_4B_T", 8, 1, "%ld"},
    {LmNULL_U4B_T, "LmNull_ulong", "LmNULL_U4B_T", 8, 1, "%lu"},
    {LmNULL_FLOAT_T, "LmNull_float", "LmNULL_FLOAT_T", 8, 1, "%.17g"},
    {LmNULL_DOUBLE_T, "LmNull_double", "LmNULL_DOUBLE_T", 16, 1, "%.17g"},
    {LmNULL_LMINT64_T, "LmNull_LmInt64", "LmNULL_LMINT64_T", 12, 1, "%S"},
    {LmSEAL_T, "LmSeal", "LmSEAL_T", 6, 1, "noop"},
    {LmDATIME_N_T, "LmDateTimeN", "LmDATIME_N_T", 12, 1, "%X"},
    {LmTIMESPAN_T, "LmTimeSpan", "LmTIMESPAN_T", 12, 1, "%V"},
    {Lm8B_T, "o_8b", "Lm8B_T", 8, 1, "%I64d"},
    {LmU8B_T, "o_u8b", "LmU8B_T", 8, 1, "%I64u"},
    {LmNULL_8B_T, "LmNull_8b", "LmNULL_8B_T", 16, 1, "%I64d"},
    {LmNULL_U8B_T, "LmNull_u8b", "LmNULL_U8B_T", 16, 1, "%I64u"},
    {LmRES_T, "illegal", "LmRES_T", 0, 1, "illegal"},
};

// Every row a member may be called on: the 47 ids and three of the reserved ones.
constexpr int kReserved[] = {100, 101, 127};

int RowOf(int id) { return id < 100 ? id : 46; }

// The records of the two tables by id constant.
LmTypeDesc* Current(int id) { return LmTypeTableCurrent[id]; }
LmTypeDesc* Legacy(int id) { return LmTypeTableLegacy[id]; }

// ---------------------------------------------------------------------------
// Probe records. Every slot of every row gets a function of its own that notes
// its row, its slot and its arguments in slot order, and answers a value that
// names the row and the slot. Row 47 stands for the legacy record of id 11.
// ---------------------------------------------------------------------------
enum Slot {
    kCreate, kDelete, kStore, kLoad, kNullSizeGet, kSizeGet, kSizeGetFromMemFile, kCmp, kEvalAndBound, kHash,
    kConvertTo, kConvertFrom, kConstructor, kDestructor, kAssignment, kCopy, kTranslate, kIsNullValue,
    kSetNullValue, kPrintToString, kScanFromString, kDefaultValue, kGetValue
};

struct Call {
    int row = -1;
    int slot = -1;
    std::array<uintptr_t, 8> arg{};
};
Call last;

template <typename T>
uintptr_t Word(T v) {
    if constexpr (std::is_pointer_v<T>) return reinterpret_cast<uintptr_t>(v);
    else return static_cast<uintptr_t>(v);
}

template <typename... A>
void Note(int row, int slot, A... a) {
    last.row = row;
    last.slot = slot;
    last.arg = {Word(a)...};
}

constexpr unsigned Tag(int row, int slot) { return 0x10000u + static_cast<unsigned>(row) * 0x100u + slot; }
void* TagPtr(int row, int slot) { return reinterpret_cast<void*>(static_cast<uintptr_t>(Tag(row, slot))); }

template <int Row>
struct Probe {
    static void* Create(unsigned count) {
        Note(Row, kCreate, count);
        return TagPtr(Row, kCreate);
    }
    static void* Delete(void* value, unsigned count) {
        Note(Row, kDelete, value, count);
        return TagPtr(Row, kDelete);
    }
    static unsigned Store(void* dest, const void* src, unsigned char format, unsigned count) {
        Note(Row, kStore, dest, src, format, count);
        return Tag(Row, kStore);
    }
    static unsigned Load(void* dest, const void* src, unsigned char format, unsigned count) {
        Note(Row, kLoad, dest, src, format, count);
        return Tag(Row, kLoad);
    }
    static unsigned NullSizeGet(unsigned count) {
        Note(Row, kNullSizeGet, count);
        return Tag(Row, kNullSizeGet);
    }
    static unsigned SizeGet(const void* value, unsigned char valueForm, unsigned char format, unsigned count) {
        Note(Row, kSizeGet, value, valueForm, format, count);
        return Tag(Row, kSizeGet);
    }
    static unsigned SizeGetFromMemFile(MemFile* file, unsigned char format, unsigned count) {
        Note(Row, kSizeGetFromMemFile, file, format, count);
        return Tag(Row, kSizeGetFromMemFile);
    }
    static int Cmp(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2,
                   unsigned short option, unsigned count, int& status) {
        Note(Row, kCmp, format, len1, value1, len2, value2, option, count, &status);
        status = 5000 + Row;
        return -(Row + 2);
    }
    static float EvalAndBound(LmIdxBounds* bounds, unsigned short& flags, void* value, unsigned char format,
                              unsigned count, LmIdxBounds* limits) {
        Note(Row, kEvalAndBound, bounds, &flags, value, format, count, limits);
        flags = static_cast<unsigned short>(600 + Row);
        return static_cast<float>(Row) + 0.25f;
    }
    static unsigned Hash(unsigned char format, unsigned len, void* value, unsigned count, int& status) {
        Note(Row, kHash, format, len, value, count, &status);
        status = 7000 + Row;
        return Tag(Row, kHash);
    }
    static LmTypeConvertData* ConvertTo(void* value, unsigned count) {
        Note(Row, kConvertTo, value, count);
        return nullptr;
    }
    static void* ConvertFrom(LmTypeConvertData* data, unsigned count) {
        Note(Row, kConvertFrom, data, count);
        return nullptr;
    }
    static void Constructor(void* array, unsigned count, unsigned unused) {
        Note(Row, kConstructor, array, count, unused);
    }
    static void Destructor(void* array, unsigned count, unsigned unused) {
        Note(Row, kDestructor, array, count, unused);
    }
    static void Assignment(void* dest, void* src, unsigned count, int broadcast) {
        Note(Row, kAssignment, dest, src, count, broadcast);
    }
    static void Copy(void* dest, void* src, unsigned count, int broadcast) {
        Note(Row, kCopy, dest, src, count, broadcast);
    }
    static unsigned Translate(void* dest, unsigned char destFormat, unsigned destLen, void* src,
                              unsigned char srcFormat, unsigned srcLen, unsigned count) {
        Note(Row, kTranslate, dest, destFormat, destLen, src, srcFormat, srcLen, count);
        return Tag(Row, kTranslate);
    }
    static int IsNullValue(void* value) {
        Note(Row, kIsNullValue, value);
        return 300 + Row;
    }
    static int SetNullValue(void* value) {
        Note(Row, kSetNullValue, value);
        return 0;
    }
    static LmString& PrintToString(LmString& out, void* value, const char* format, unsigned count) {
        Note(Row, kPrintToString, &out, value, format, count);
        return out;
    }
    static void* ScanFromString(void* value, LmString& text, const char* format, unsigned count) {
        Note(Row, kScanFromString, value, &text, format, count);
        return nullptr;
    }
    static void* DefaultValue(unsigned count, int asNull) {
        Note(Row, kDefaultValue, count, asNull);
        return TagPtr(Row, kDefaultValue);
    }
    static int GetValue(void* value, unsigned len, unsigned char format, unsigned char mode) {
        Note(Row, kGetValue, value, len, format, mode);
        return 0;
    }
};

template <int Row>
constexpr LmTypeDesc ProbeRow() {
    using P = Probe<Row>;
    return LmTypeDesc{"probe", "PROBE_T", P::Create, P::Delete, P::Store, P::Load, P::NullSizeGet, P::SizeGet,
                      P::SizeGetFromMemFile, P::Cmp, P::EvalAndBound, P::Hash, P::ConvertTo, P::ConvertFrom,
                      P::Constructor, P::Destructor, P::Assignment, P::Copy, P::Translate, P::IsNullValue,
                      P::SetNullValue, "probe", P::PrintToString, P::ScanFromString,
                      static_cast<uint16_t>(100 + Row), static_cast<uint16_t>(Row % 2 + 2), P::DefaultValue,
                      P::GetValue, nullptr};
}

template <size_t... I>
constexpr std::array<LmTypeDesc, sizeof...(I)> ProbeRows(std::index_sequence<I...>) {
    return {ProbeRow<static_cast<int>(I)>()...};
}

constexpr int kLegacyStringRow = 47;
const std::array<LmTypeDesc, 48> kProbes = ProbeRows(std::make_index_sequence<48>());

// Puts the probe records in place of every record of both tables for the life of
// the object, and puts the real ones back afterwards.
class ProbedTables {
public:
    ProbedTables() {
        for (int i = 0; i < LmTypeCountCurrent; ++i) {
            saved_[i] = *LmTypeTableCurrent[i];
            *LmTypeTableCurrent[i] = kProbes[i];
        }
        saved_[kLegacyStringRow] = *LmTypeTableLegacy[11];
        *LmTypeTableLegacy[11] = kProbes[kLegacyStringRow];
    }
    ~ProbedTables() {
        for (int i = 0; i < LmTypeCountCurrent; ++i) *LmTypeTableCurrent[i] = saved_[i];
        *LmTypeTableLegacy[11] = saved_[kLegacyStringRow];
    }
    ProbedTables(const ProbedTables&) = delete;
    ProbedTables& operator=(const ProbedTables&) = delete;

private:
    std::array<LmTypeDesc, 48> saved_;
};

void ExpectCall(int row, int slot, std::initializer_list<uintptr_t> args) {
    EXPECT_EQ(last.row, row);
    EXPECT_EQ(last.slot, slot);
    size_t i = 0;
    for (uintptr_t a : args) {
        EXPECT_EQ(last.arg[i], a) << "argument " << i << " of slot " << slot;
        ++i;
    }
    last = Call{};
}

uintptr_t P(const void* p) { return reinterpret_cast<uintptr_t>(p); }

// Calls every forwarding member of `mgr` with `id` and checks that each reaches
// slot after slot of record `row`, with the arguments in the order of the slot.
void CheckForwarding(const LmTypeMgr& mgr, char id, int row) {
    SCOPED_TRACE(testing::Message() << "id " << static_cast<int>(id) << ", row " << row);
    const LmTypeDesc& probe = kProbes[row];
    int a1 = 0, a2 = 0;
    void* v1 = &a1;
    void* v2 = &a2;

    EXPECT_EQ(mgr.Create(id, 7), TagPtr(row, kCreate));
    ExpectCall(row, kCreate, {7});
    EXPECT_EQ(mgr.Delete(id, v1, 3), TagPtr(row, kDelete));
    ExpectCall(row, kDelete, {P(v1), 3});
    EXPECT_EQ(mgr.DefaultValue(id, 4, 1), TagPtr(row, kDefaultValue));
    ExpectCall(row, kDefaultValue, {4, 1});
    EXPECT_EQ(mgr.Store(id, v1, v2, 0x82, 9), Tag(row, kStore));
    ExpectCall(row, kStore, {P(v1), P(v2), 0x82, 9});
    EXPECT_EQ(mgr.Load(id, v2, v1, 0x41, 11), Tag(row, kLoad));
    ExpectCall(row, kLoad, {P(v2), P(v1), 0x41, 11});

    // DiskLenGet takes (value, format, count, valueForm); the slot (value, valueForm, format, count).
    EXPECT_EQ(mgr.DiskLenGet(id, v1, 2, 13, 8), Tag(row, kSizeGet));
    ExpectCall(row, kSizeGet, {P(v1), 8, 2, 13});
    MemFile file(&a1, 4);
    EXPECT_EQ(mgr.DiskLenGetFromMemFile(id, &file, 1, 6), Tag(row, kSizeGetFromMemFile));
    ExpectCall(row, kSizeGetFromMemFile, {P(&file), 1, 6});

    // Cmp, long form: format moves to the front, the caller's status is the slot's.
    int status = -1;
    EXPECT_EQ(mgr.Cmp(id, 21, v1, 22, v2, 0x120, 23, 0x81, status), -(row + 2));
    ExpectCall(row, kCmp, {0x81, 21, P(v1), 22, P(v2), 0x120, 23, P(&status)});
    EXPECT_EQ(status, 5000 + row);

    // Cmp, short form: both lengths 0 and a status of its own.
    status = -1;
    EXPECT_EQ(mgr.Cmp(id, v2, v1, 0xFFFF, 5, 2), -(row + 2));
    EXPECT_EQ(last.row, row);
    EXPECT_EQ(last.slot, kCmp);
    EXPECT_EQ(last.arg[0], 2u);
    EXPECT_EQ(last.arg[1], 0u);
    EXPECT_EQ(last.arg[2], P(v2));
    EXPECT_EQ(last.arg[3], 0u);
    EXPECT_EQ(last.arg[4], P(v1));
    EXPECT_EQ(last.arg[5], 0xFFFFu);
    EXPECT_EQ(last.arg[6], 5u);
    EXPECT_NE(last.arg[7], P(&status));
    EXPECT_EQ(status, -1);

    // Hash: format moves to the front.
    status = -1;
    EXPECT_EQ(mgr.Hash(id, 31, v1, 32, 0x88, status), Tag(row, kHash));
    ExpectCall(row, kHash, {0x88, 31, P(v1), 32, P(&status)});
    EXPECT_EQ(status, 7000 + row);

    // EvalAndBound: the evaluation data is not handed on.
    LmIdxBounds bounds{}, limits{};
    unsigned short flags = 4;
    EXPECT_EQ(mgr.EvalAndBound(id, &bounds, flags, v1, 1, 3, &limits, reinterpret_cast<LmEvalData*>(v2)),
              static_cast<float>(row) + 0.25f);
    ExpectCall(row, kEvalAndBound, {P(&bounds), P(&flags), P(v1), 1, 3, P(&limits)});
    EXPECT_EQ(flags, 600 + row);

    EXPECT_EQ(mgr.Translate(id, v1, 2, 40, v2, 8, 41, 42), Tag(row, kTranslate));
    ExpectCall(row, kTranslate, {P(v1), 2, 40, P(v2), 8, 41, 42});
    EXPECT_EQ(mgr.IsNullValue(id, v2), 300 + row);
    ExpectCall(row, kIsNullValue, {P(v2)});

    // Fields.
    EXPECT_EQ(mgr.IsFixed(id), row % 2 + 2);
    EXPECT_EQ(mgr.MemLenGet(id, 3), 3 * (100 + row));

    // Pointer members hand out the slot itself.
    EXPECT_EQ(mgr.AssignmentPtrGet(id), probe.Assignment);
    EXPECT_EQ(mgr.CmpFuncPtrGet(id), probe.Cmp);
    EXPECT_EQ(mgr.ConstructorPtrGet(id), probe.Constructor);
    EXPECT_EQ(mgr.CopyPtrGet(id), probe.Copy);
    EXPECT_EQ(mgr.DestructorPtrGet(id), probe.Destructor);
    EXPECT_EQ(mgr.IsNullPtrGet(id), probe.IsNullValue);
    EXPECT_EQ(mgr.LoadPtrGet(id), probe.Load);
    EXPECT_EQ(mgr.SetNullPtrGet(id), probe.SetNullValue);
    EXPECT_EQ(mgr.StorePtrGet(id), probe.Store);

    // Exchange members with a null argument only read.
    EXPECT_EQ(mgr.ExchangeLmTypeCmpFunc(id, nullptr), probe.Cmp);
    EXPECT_EQ(mgr.ExchangePrintToLmStringFunc(id, nullptr), probe.PrintToString);
    EXPECT_EQ(mgr.ExchangeScanFromLmStringFunc(id, nullptr), probe.ScanFromString);
    EXPECT_EQ(mgr.ExchangeFormat(id, nullptr), probe.exchangeFormat);
    EXPECT_EQ(mgr.CmpFuncPtrGet(id), probe.Cmp);
}

// Restores one descriptor record when it goes out of scope.
class RecordGuard {
public:
    explicit RecordGuard(LmTypeDesc* record) : record_(record), saved_(*record) {}
    ~RecordGuard() { *record_ = saved_; }
    RecordGuard(const RecordGuard&) = delete;
    RecordGuard& operator=(const RecordGuard&) = delete;

private:
    LmTypeDesc* record_;
    LmTypeDesc saved_;
};

int probeCmpCalls = 0;
int CountingCmp(unsigned char, unsigned, void*, unsigned, void*, unsigned short, unsigned, int& status) {
    ++probeCmpCalls;
    status = 42;
    return 9;
}
LmString& OtherPrint(LmString& out, void*, const char*, unsigned) { return out; }
void* OtherScan(void* value, LmString&, const char*, unsigned) { return value; }
int FilledSetNull(void*) { return 0; }

}  // namespace

TEST(TypeMgrIds, NormalisationAndValidity) {
    // Below 100, negative ids too, an id stays as it is.
    for (int id = -128; id < 100; ++id) EXPECT_EQ(LmTypeMgr::NormalizeId(static_cast<char>(id)), id);
    // 100 and up: min(id - 54, 46), so always 46.
    for (int id = 100; id <= 127; ++id) EXPECT_EQ(LmTypeMgr::NormalizeId(static_cast<char>(id)), 46) << id;

    for (int id = 0; id <= 46; ++id) EXPECT_EQ(LmTypeMgr::IsValidType(static_cast<char>(id)), 1) << id;
    for (int id = 47; id <= 99; ++id) EXPECT_EQ(LmTypeMgr::IsValidType(static_cast<char>(id)), 0) << id;
    for (int id = 100; id <= 127; ++id) EXPECT_EQ(LmTypeMgr::IsValidType(static_cast<char>(id)), 1) << id;
    // The plain signed comparison lets negative ids through.
    EXPECT_EQ(LmTypeMgr::IsValidType(-1), 1);
    EXPECT_EQ(LmTypeMgr::IsValidType(-128), 1);
}

TEST(TypeMgrFactory, LevelsAndTables) {
    struct Case {
        unsigned factory;
        uint16_t level;
        bool legacy;
    };
    const Case cases[] = {
        {0, 0, true},   {1, 1, true},   {2, 2, true},   {3, 3, true},    {4, 4, false},     {5, 5, false},
        {6, 6, false},  {9, 9, false},  {10, 10, false}, {11, 3, true},  {12, 4, false},    {13, 4, false},
        {255, 4, false}, {65536 + 5, 4, false}, {0xFFFFFFFFu, 4, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.factory);
        const LmTypeMgr made(c.factory);
        EXPECT_EQ(made.LevelGet(), c.level);
        EXPECT_EQ(made.TableGet(), c.legacy ? LmTypeTableLegacy : LmTypeTableCurrent);

        LmTypeMgr reset(7);
        reset.SetFactory(c.factory);
        EXPECT_EQ(reset.LevelGet(), c.level);
        EXPECT_EQ(reset.TableGet(), c.legacy ? LmTypeTableLegacy : LmTypeTableCurrent);
    }
    const LmTypeMgr byDefault;
    EXPECT_EQ(byDefault.LevelGet(), 5);
    EXPECT_EQ(byDefault.TableGet(), LmTypeTableCurrent);

    // SetFactory takes effect at the next call: id 11 switches records.
    LmTypeMgr mgr(5);
    EXPECT_EQ(mgr.Desc(LmSTRING_T), LmTypeTableCurrent[11]);
    mgr.SetFactory(2);
    EXPECT_EQ(mgr.Desc(LmSTRING_T), LmTypeTableLegacy[11]);
    mgr.SetFactory(5);
    EXPECT_EQ(mgr.Desc(LmSTRING_T), LmTypeTableCurrent[11]);
}

TEST(TypeMgrTable, GoldenRowsOfTheCurrentTable) {
    const LmTypeMgr mgr;
    for (int id = 0; id < LmTypeCountCurrent; ++id) {
        const TypeRow& row = kTypeTable[id];
        SCOPED_TRACE(row.name);
        ASSERT_EQ(row.id, id);
        const LmTypeDesc* desc = LmTypeTableCurrent[id];
        ASSERT_NE(desc, nullptr);
        EXPECT_STREQ(desc->name, row.name);
        EXPECT_STREQ(desc->idName, row.idName);
        EXPECT_EQ(desc->memLen, row.memLen);
        EXPECT_EQ(desc->fixed, row.fixed);
        EXPECT_STREQ(desc->exchangeFormat, row.format);

        // The same values through the manager.
        const char c = static_cast<char>(id);
        EXPECT_STREQ(mgr.NameGet(c, nullptr), row.name);
        EXPECT_STREQ(mgr.TypeIdNameGet(c, nullptr), row.idName);
        EXPECT_EQ(mgr.MemLenGet(c, 1), row.memLen);
        EXPECT_EQ(mgr.IsFixed(c), row.fixed);
        EXPECT_STREQ(mgr.ExchangeFormat(c, nullptr), row.format);

        // No slot is empty but SetNullValue and the reserved one.
        EXPECT_NE(desc->Create, nullptr);
        EXPECT_NE(desc->Delete, nullptr);
        EXPECT_NE(desc->Store, nullptr);
        EXPECT_NE(desc->Load, nullptr);
        EXPECT_NE(desc->NullSizeGet, nullptr);
        EXPECT_NE(desc->SizeGet, nullptr);
        EXPECT_NE(desc->SizeGetFromMemFile, nullptr);
        EXPECT_NE(desc->Cmp, nullptr);
        EXPECT_NE(desc->EvalAndBound, nullptr);
        EXPECT_NE(desc->Hash, nullptr);
        EXPECT_NE(desc->ConvertTo, nullptr);
        EXPECT_NE(desc->ConvertFrom, nullptr);
        EXPECT_NE(desc->Constructor, nullptr);
        EXPECT_NE(desc->Destructor, nullptr);
        EXPECT_NE(desc->Assignment, nullptr);
        EXPECT_NE(desc->Copy, nullptr);
        EXPECT_NE(desc->Translate, nullptr);
        EXPECT_NE(desc->IsNullValue, nullptr);
        EXPECT_NE(desc->PrintToString, nullptr);
        EXPECT_NE(desc->ScanFromString, nullptr);
        EXPECT_NE(desc->DefaultValue, nullptr);
        EXPECT_NE(desc->GetValue, nullptr);
        EXPECT_EQ(desc->reserved, nullptr);

        // Every record is a record of its own.
        for (int other = 0; other < id; ++other) EXPECT_NE(LmTypeTableCurrent[other], desc) << other;
    }

    // The plain numbers and "illegal" have no null of their own.
    for (int id : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 14, 42, 43, 46}) {
        EXPECT_EQ(LmTypeTableCurrent[id]->SetNullValue, nullptr) << id;
    }
}

TEST(TypeMgrTable, LegacyTableSharesAllButIdEleven) {
    for (int id = 0; id < LmTypeCountLegacy; ++id) {
        if (id == 11) continue;
        EXPECT_EQ(LmTypeTableLegacy[id], LmTypeTableCurrent[id]) << id;
    }
    const LmTypeDesc* cur = LmTypeTableCurrent[11];
    const LmTypeDesc* old = LmTypeTableLegacy[11];
    ASSERT_NE(old, cur);

    // What the legacy string record keeps of the current one.
    EXPECT_STREQ(old->name, "LmString");
    EXPECT_STREQ(old->idName, "LmSTRING_T");
    EXPECT_STREQ(old->exchangeFormat, cur->exchangeFormat);
    EXPECT_EQ(old->memLen, 16);
    EXPECT_EQ(old->fixed, 0);
    EXPECT_EQ(old->Create, cur->Create);
    EXPECT_EQ(old->Delete, cur->Delete);
    EXPECT_EQ(old->Load, cur->Load);
    EXPECT_EQ(old->NullSizeGet, cur->NullSizeGet);
    EXPECT_EQ(old->ConvertTo, cur->ConvertTo);
    EXPECT_EQ(old->ConvertFrom, cur->ConvertFrom);
    EXPECT_EQ(old->Constructor, cur->Constructor);
    EXPECT_EQ(old->Destructor, cur->Destructor);
    EXPECT_EQ(old->Assignment, cur->Assignment);
    EXPECT_EQ(old->Copy, cur->Copy);
    EXPECT_EQ(old->PrintToString, cur->PrintToString);
    EXPECT_EQ(old->ScanFromString, cur->ScanFromString);
    EXPECT_EQ(old->DefaultValue, cur->DefaultValue);

    // The old record has no null: the shared never-null test of the numbers and
    // of "illegal", no setter, and the shared refusing GetValue.
    EXPECT_EQ(old->IsNullValue, Current(LmRES_T)->IsNullValue);
    EXPECT_EQ(old->IsNullValue, Current(Lm4B_T)->IsNullValue);
    EXPECT_EQ(old->SetNullValue, nullptr);
    EXPECT_EQ(old->GetValue, Current(LmRES_T)->GetValue);
    EXPECT_EQ(old->GetValue, Current(LmENUM_T)->GetValue);
    EXPECT_EQ(old->reserved, nullptr);

    const LmTypeMgr legacy(3);
    EXPECT_STREQ(legacy.NameGet(LmSTRING_T, nullptr), "LmString");
    EXPECT_EQ(legacy.SupportsNullValue(LmSTRING_T), 0);
}

TEST(TypeMgrForward, EveryMemberReachesItsRowAndSlot) {
    const ProbedTables probed;
    const LmTypeMgr mgr(5);
    for (int id = 0; id < LmTypeCountCurrent; ++id) CheckForwarding(mgr, static_cast<char>(id), id);
    for (int id : kReserved) CheckForwarding(mgr, static_cast<char>(id), RowOf(id));

    // Levels below 4 reach the same records, but for id 11.
    const LmTypeMgr legacy(3);
    for (int id = 0; id < LmTypeCountLegacy; ++id) {
        CheckForwarding(legacy, static_cast<char>(id), id == 11 ? kLegacyStringRow : id);
    }
}

TEST(TypeMgrForward, ExchangeWritesTheSharedRecord) {
    const RecordGuard guard4b(Current(Lm4B_T));
    const RecordGuard guardString(Current(LmSTRING_T));
    const RecordGuard guardOldString(Legacy(LmSTRING_T));
    const LmTypeMgr cur(5);
    const LmTypeMgr other(10);
    const LmTypeMgr old(3);

    // Format: a null only reads; a write shows through every manager and both tables.
    EXPECT_STREQ(cur.ExchangeFormat(Lm4B_T, nullptr), "%ld");
    EXPECT_STREQ(cur.ExchangeFormat(Lm4B_T, nullptr), "%ld");
    EXPECT_STREQ(cur.ExchangeFormat(Lm4B_T, "x"), "%ld");
    EXPECT_STREQ(other.ExchangeFormat(Lm4B_T, nullptr), "x");
    EXPECT_STREQ(old.ExchangeFormat(Lm4B_T, nullptr), "x");
    EXPECT_STREQ(old.ExchangeFormat(Lm4B_T, "%ld"), "x");
    EXPECT_STREQ(cur.ExchangeFormat(Lm4B_T, nullptr), "%ld");

    // Compare function: the new one is what Cmp calls and CmpFuncPtrGet hands out.
    EXPECT_EQ(cur.ExchangeLmTypeCmpFunc(Lm4B_T, nullptr), LongCompare);
    EXPECT_EQ(cur.ExchangeLmTypeCmpFunc(Lm4B_T, CountingCmp), LongCompare);
    int a = 1, b = 2, status = 0;
    probeCmpCalls = 0;
    EXPECT_EQ(old.Cmp(Lm4B_T, 0, &a, 0, &b, 0, 1, 8, status), 9);
    EXPECT_EQ(status, 42);
    EXPECT_EQ(other.Cmp(Lm4B_T, &a, &b, 0, 1, 8), 9);
    EXPECT_EQ(probeCmpCalls, 2);
    EXPECT_EQ(old.CmpFuncPtrGet(Lm4B_T), CountingCmp);
    EXPECT_EQ(other.ExchangeLmTypeCmpFunc(Lm4B_T, LongCompare), CountingCmp);
    EXPECT_EQ(cur.Cmp(Lm4B_T, 0, &a, 0, &b, 0, 1, 8, status), -1);
    EXPECT_EQ(status, 0);

    // Print and scan functions.
    const LmTypePrintFunc print = Current(Lm4B_T)->PrintToString;
    const LmTypeScanFunc scan = Current(Lm4B_T)->ScanFromString;
    EXPECT_EQ(cur.ExchangePrintToLmStringFunc(Lm4B_T, nullptr), print);
    EXPECT_EQ(cur.ExchangePrintToLmStringFunc(Lm4B_T, OtherPrint), print);
    EXPECT_EQ(old.ExchangePrintToLmStringFunc(Lm4B_T, nullptr), OtherPrint);
    EXPECT_EQ(Legacy(Lm4B_T)->PrintToString, OtherPrint);
    EXPECT_EQ(old.ExchangePrintToLmStringFunc(Lm4B_T, print), OtherPrint);
    EXPECT_EQ(cur.ExchangeScanFromLmStringFunc(Lm4B_T, nullptr), scan);
    EXPECT_EQ(other.ExchangeScanFromLmStringFunc(Lm4B_T, OtherScan), scan);
    EXPECT_EQ(old.ExchangeScanFromLmStringFunc(Lm4B_T, nullptr), OtherScan);
    EXPECT_EQ(cur.ExchangeScanFromLmStringFunc(Lm4B_T, scan), OtherScan);
    EXPECT_EQ(Current(Lm4B_T)->ScanFromString, scan);

    // Id 11 has two records: a change through a legacy manager stays in the old one.
    EXPECT_STREQ(old.ExchangeFormat(LmSTRING_T, "old"), "%s");
    EXPECT_STREQ(cur.ExchangeFormat(LmSTRING_T, nullptr), "%s");
    EXPECT_STREQ(old.ExchangeFormat(LmSTRING_T, nullptr), "old");
    EXPECT_STREQ(cur.ExchangeFormat(LmSTRING_T, "new"), "%s");
    EXPECT_STREQ(old.ExchangeFormat(LmSTRING_T, nullptr), "old");
    EXPECT_STREQ(other.ExchangeFormat(LmSTRING_T, nullptr), "new");
}

TEST(TypeMgrFields, MemLenGetAndTheRetiredMembers) {
    const LmTypeMgr mgr;
    // memLen times the low 16 bits of count, cut to 16 bits: 16 * 4464 = 71424 -> 5888.
    EXPECT_EQ(mgr.MemLenGet(LmSTRING_T, 70000), 5888);
    EXPECT_EQ(mgr.MemLenGet(LmU8B_T, 4), 32);
    EXPECT_EQ(mgr.MemLenGet(Lm4B_T, 0x10000), 0);
    EXPECT_EQ(mgr.MemLenGet(Lm4B_T, 0x10003), 12);
    EXPECT_EQ(mgr.MemLenGet(LmDOUBLE_T, 0x2000), 0);      // 8 * 8192 = 65536
    EXPECT_EQ(mgr.MemLenGet(LmDOUBLE_T, 0x1FFF), 65528);
    EXPECT_EQ(mgr.MemLenGet(LmTIME_T, 0), 0);

    int value = 0;
    for (int id = 0; id < LmTypeCountCurrent; ++id) {
        const char c = static_cast<char>(id);
        EXPECT_EQ(mgr.ComparePtrGet(c), nullptr) << id;
        EXPECT_EQ(mgr.DiskIsNullValue(c, &value), LM_ERR_NOT_SUPPORTED) << id;
        EXPECT_EQ(mgr.DiskIsNullValue(c, nullptr), LM_ERR_NOT_SUPPORTED) << id;
    }
    for (int id : kReserved) {
        EXPECT_EQ(mgr.ComparePtrGet(static_cast<char>(id)), nullptr);
        EXPECT_EQ(mgr.DiskIsNullValue(static_cast<char>(id), nullptr), LM_ERR_NOT_SUPPORTED);
    }
    const LmTypeMgr old(3);
    EXPECT_EQ(old.ComparePtrGet(LmSTRING_T), nullptr);
    EXPECT_EQ(old.DiskIsNullValue(LmSTRING_T, nullptr), LM_ERR_NOT_SUPPORTED);
}

TEST(TypeMgrIllegal, ReservedIdsAnswerHarmlessly) {
    const LmTypeMgr mgr;
    alignas(8) unsigned char buffer[16];
    std::memset(buffer, 0xA5, sizeof buffer);
    unsigned char untouched[16];
    std::memcpy(untouched, buffer, sizeof buffer);

    for (int raw : {46, 100, 101, 127}) {
        const char id = static_cast<char>(raw);
        SCOPED_TRACE(raw);
        EXPECT_EQ(mgr.Desc(id), Current(LmRES_T));
        EXPECT_STREQ(mgr.NameGet(id, nullptr), "illegal");
        EXPECT_STREQ(mgr.TypeIdNameGet(id, nullptr), "LmRES_T");
        EXPECT_EQ(mgr.MemLenGet(id, 5), 0);
        EXPECT_EQ(mgr.IsFixed(id), 1);

        // The operations do not look at their arguments: null pointers are fine.
        EXPECT_EQ(mgr.Create(id, 5), nullptr);
        EXPECT_EQ(mgr.Delete(id, buffer, 5), nullptr);
        EXPECT_EQ(mgr.DefaultValue(id, 5, 0), nullptr);
        EXPECT_EQ(mgr.Store(id, nullptr, nullptr, 2, 5), 0u);
        EXPECT_EQ(mgr.Load(id, nullptr, nullptr, 2, 5), 0u);
        EXPECT_EQ(mgr.DiskLenGet(id, nullptr, 1, 5, 8), 0u);
        EXPECT_EQ(mgr.DiskLenGetFromMemFile(id, nullptr, 1, 5), 0u);
        EXPECT_EQ(mgr.Translate(id, buffer, 1, 16, nullptr, 8, 16, 4), 0u);
        EXPECT_EQ(mgr.IsNullValue(id, nullptr), 0);

        // Cmp and Hash leave the caller's status as it was.
        int status = 1234;
        EXPECT_EQ(mgr.Cmp(id, 4, buffer, 4, buffer + 4, 0, 1, 8, status), 0);
        EXPECT_EQ(status, 1234);
        status = -77;
        EXPECT_EQ(mgr.Cmp(id, nullptr, nullptr, 0, 3, 2), 0);
        EXPECT_EQ(mgr.Hash(id, 16, buffer, 4, 8, status), 0u);
        EXPECT_EQ(status, -77);

        unsigned short flags = 3;
        LmIdxBounds bounds{};
        EXPECT_EQ(mgr.EvalAndBound(id, &bounds, flags, buffer, 1, 1, nullptr, nullptr), 0.0f);
        EXPECT_EQ(flags, 3);

        const LmTypeDesc* desc = mgr.Desc(id);
        EXPECT_EQ(desc->NullSizeGet(5), 0u);
        EXPECT_EQ(desc->ConvertTo(buffer, 1), nullptr);
        EXPECT_EQ(desc->ConvertFrom(nullptr, 1), nullptr);
        desc->Constructor(nullptr, 5, 0);
        desc->Destructor(nullptr, 5, 0);
        desc->Assignment(nullptr, nullptr, 5, 0);
        desc->Copy(nullptr, nullptr, 5, 1);
        EXPECT_EQ(desc->GetValue(nullptr, 0, 8, 'N'), LM_ERR_NOT_SUPPORTED);
        EXPECT_EQ(desc->SetNullValue, nullptr);
        EXPECT_EQ(mgr.SetNullPtrGet(id), nullptr);
        EXPECT_EQ(mgr.SupportsNullValue(id), 0);

        // PrintToString hands back its first argument, which it does not touch;
        // ScanFromString answers a null pointer.
        LmString& text = *reinterpret_cast<LmString*>(buffer);
        EXPECT_EQ(&desc->PrintToString(text, buffer, "%d", 1), &text);
        EXPECT_EQ(desc->ScanFromString(buffer, text, "%d", 1), nullptr);
    }
    EXPECT_EQ(std::memcmp(buffer, untouched, sizeof buffer), 0);
}

TEST(TypeMgrServices, Capabilities) {
    const LmTypeMgr mgr;
    const int counting[] = {0, 1, 2, 5, 6, 7, 8, 9, 10, 15, 26, 42, 43};
    const int stamping[] = {12, 13, 19, 22, 23, 24, 40};
    for (int id = 0; id < LmTypeCountCurrent; ++id) {
        const char c = static_cast<char>(id);
        const bool counts = std::find(std::begin(counting), std::end(counting), id) != std::end(counting);
        const bool stamps = std::find(std::begin(stamping), std::end(stamping), id) != std::end(stamping);
        EXPECT_EQ(mgr.SupportsCapability(c, 2), counts ? 1 : 0) << id;
        EXPECT_EQ(mgr.SupportsCapability(c, 3), stamps ? 1 : 0) << id;
        EXPECT_EQ(mgr.SupportsCapability(c, 1), LmTypeTableCurrent[id]->SetNullValue != nullptr ? 1 : 0) << id;
        EXPECT_EQ(mgr.SupportsNullValue(c), mgr.SupportsCapability(c, 1)) << id;
        const std::initializer_list<unsigned short> others = {0, 4, 5, 0x101, 0xFFFF};
        for (const unsigned short other : others) EXPECT_EQ(mgr.SupportsCapability(c, other), 0) << id;
    }
    // BlockId is a number but does not count.
    EXPECT_EQ(mgr.SupportsCapability(LmBLOCKID_T, 2), 0);
    // Capabilities 2 and 3 look at the raw id.
    for (int id : kReserved) {
        EXPECT_EQ(mgr.SupportsCapability(static_cast<char>(id), 1), 0);
        EXPECT_EQ(mgr.SupportsCapability(static_cast<char>(id), 2), 0);
        EXPECT_EQ(mgr.SupportsCapability(static_cast<char>(id), 3), 0);
    }

    // Capability 1 follows the slot of the record in force.
    const RecordGuard guard(Current(Lm4B_T));
    EXPECT_EQ(mgr.SupportsNullValue(Lm4B_T), 0);
    Current(Lm4B_T)->SetNullValue = FilledSetNull;
    EXPECT_EQ(mgr.SupportsNullValue(Lm4B_T), 1);
    EXPECT_EQ(LmTypeMgr(3).SupportsCapability(Lm4B_T, 1), 1);
}

TEST(TypeMgrServices, NamesAndLookup) {
    const LmTypeMgr mgr;
    // Without a buffer: the static text of the record.
    EXPECT_EQ(mgr.NameGet(LmINT_T, nullptr), Current(LmINT_T)->name);
    EXPECT_EQ(mgr.TypeIdNameGet(LmINT_T, nullptr), Current(LmINT_T)->idName);

    // With a buffer: the text and its terminator, nothing after it.
    char buffer[32];
    std::memset(buffer, 'Z', sizeof buffer);
    EXPECT_EQ(mgr.NameGet(LmINT_T, buffer), buffer);
    EXPECT_STREQ(buffer, "int");
    EXPECT_EQ(buffer[4], 'Z');
    std::memset(buffer, 'Z', sizeof buffer);
    EXPECT_EQ(mgr.TypeIdNameGet(LmCASEISTRING_T, buffer), buffer);
    EXPECT_STREQ(buffer, "LmCASEISTRING_T");
    EXPECT_EQ(buffer[16], 'Z');
    EXPECT_STREQ(mgr.NameGet(static_cast<char>(100), buffer), "illegal");

    struct Lookup {
        const char* name;
        int result;
        int id;
    };
    const Lookup lookups[] = {
        {"int", 0, 7},          {"o_char", 0, 0},     {"LmString", 0, 11},  {"o_u8b", 0, 43},
        {"LmNull_u8b", 0, 45},  {"illegal", 0, 46},   {"LmSTRING_T", 1, 47}, {"Lm1B_T", 1, 47},
        {"INT", 1, 47},         {"int ", 1, 47},      {"", 1, 47},           {"LmStrin", 1, 47},
    };
    for (const Lookup& l : lookups) {
        SCOPED_TRACE(l.name);
        char id = 99;
        EXPECT_EQ(mgr.Name2LmTypeId(l.name, id), l.result);
        EXPECT_EQ(static_cast<int>(id), l.id);
    }
    // Every name of the table finds its own id.
    for (int i = 0; i < LmTypeCountCurrent; ++i) {
        char id = -1;
        EXPECT_EQ(mgr.Name2LmTypeId(kTypeTable[i].name, id), 0);
        EXPECT_EQ(static_cast<int>(id), i);
    }
    // A legacy manager finds the same ids, the rows after 27 included.
    const LmTypeMgr old(3);
    char id = -1;
    EXPECT_EQ(old.Name2LmTypeId("LmString", id), 0);
    EXPECT_EQ(static_cast<int>(id), 11);
    EXPECT_EQ(old.Name2LmTypeId("o_8b", id), 0);
    EXPECT_EQ(static_cast<int>(id), 42);
}

TEST(TypeMgrServices, GetArrayElement) {
    const LmTypeMgr mgr;
    alignas(16) unsigned char base[256];
    // count 0 means no bound.
    EXPECT_EQ(mgr.GetArrayElement(LmDOUBLE_T, base, 3, 0), base + 24);
    EXPECT_EQ(mgr.GetArrayElement(LmDOUBLE_T, base, 2, 3), base + 16);
    EXPECT_EQ(mgr.GetArrayElement(LmDOUBLE_T, base, 3, 3), nullptr);
    EXPECT_EQ(mgr.GetArrayElement(LmDOUBLE_T, base, 4, 3), nullptr);
    EXPECT_EQ(mgr.GetArrayElement(LmDOUBLE_T, base, 0, 1), base);
    EXPECT_EQ(mgr.GetArrayElement(LmTIME_T, base, 5, 0), base + 15);
    EXPECT_EQ(mgr.GetArrayElement(LmSTRING_T, base, 2, 10), base + 32);
    EXPECT_EQ(mgr.GetArrayElement(LmNULL_LMINT64_T, base, 2, 10), base + 24);
    // "illegal" has a length of 0: every element is at the base.
    EXPECT_EQ(mgr.GetArrayElement(static_cast<char>(100), base, 9, 0), base);
}

TEST(TypeMgrModule, StartStopAndDefaultManager) {
    ASSERT_EQ(DefaultTypeMgr(nullptr), nullptr);
    ASSERT_EQ(LmI18NContextActive(), 0);

    ___LmTypemgrContext(1);
    EXPECT_EQ(LmI18NContextActive(), 1);
    LmTypeMgr* mgr = DefaultTypeMgr(nullptr);
    ASSERT_NE(mgr, nullptr);
    EXPECT_EQ(mgr->LevelGet(), 5);
    EXPECT_EQ(mgr->TableGet(), LmTypeTableCurrent);
    // A null argument only reads.
    EXPECT_EQ(DefaultTypeMgr(nullptr), mgr);
    EXPECT_EQ(DefaultTypeMgr(nullptr), mgr);

    ___LmTypemgrContext(0);
    EXPECT_EQ(DefaultTypeMgr(nullptr), nullptr);
    EXPECT_EQ(LmI18NContextActive(), 0);

    // A manager of the caller's own becomes the default, and stop frees it.
    ___LmTypemgrContext(1);
    LmTypeMgr* made = DefaultTypeMgr(nullptr);
    auto* own = new LmTypeMgr(3);
    EXPECT_EQ(DefaultTypeMgr(own), own);
    EXPECT_EQ(DefaultTypeMgr(nullptr), own);
    delete made;  // replaced, so the caller gives it back
    ___LmTypemgrContext(0);
    EXPECT_EQ(DefaultTypeMgr(nullptr), nullptr);
    EXPECT_EQ(LmI18NContextActive(), 0);
}

TEST(TypeMgrModule, OptionsAndVersion) {
    int& options = ___LmTypeMgrOptions();
    EXPECT_EQ(&options, &___LmTypeMgrOptions());
    EXPECT_EQ(options, 0);
    options = 17;
    EXPECT_EQ(___LmTypeMgrOptions(), 17);
    options = 0;

    // The library's own numbers with the two low flags always set.
    for (int flags : {0, 1, 2, 3, 4, -1}) {
        EXPECT_EQ(LmCheckDll(flags), CheckLmVersionNumber(14, 0, 1, 57, 0, flags | 3)) << flags;
        EXPECT_EQ(LmCheckDll(flags), 0) << flags;
    }
}

TEST(TypeMgrModule, DescriptionAndInfo) {
    unsigned major = 99, minor = 99, patch = 99, build = 99, extra = 99, serial = 99;
    const char *module = nullptr, *when = nullptr, *unknown = nullptr, *tag = nullptr, *empty = nullptr;
    EXPECT_STREQ(LmDescribeDll(&major, &minor, &patch, &build, &extra, &module, &when, &unknown, &serial, &tag,
                               &empty),
                 "Lumo Typemanager");
    EXPECT_EQ(major, 14u);
    EXPECT_EQ(minor, 0u);
    EXPECT_EQ(patch, 1u);
    EXPECT_EQ(build, 57u);
    EXPECT_EQ(extra, 0u);
    EXPECT_STREQ(module, "lumotypes");
    ASSERT_NE(when, nullptr);
    EXPECT_STRNE(when, "");
    EXPECT_STREQ(unknown, "unknown");
    EXPECT_EQ(serial, 1927u);
    ASSERT_NE(tag, nullptr);
    EXPECT_STREQ(empty, "");

    const char *infoTag = nullptr, *banner = nullptr, *date = nullptr, *infoModule = nullptr;
    unsigned infoSerial = 0;
    GetLmTypeMgrInfo(&infoTag, &infoSerial, &banner, &date, &infoModule);
    EXPECT_STREQ(infoTag, tag);
    EXPECT_EQ(infoSerial, 1927u);
    EXPECT_STREQ(banner, "Lumo Typemanager 14.0.1.57.0 ");
    ASSERT_NE(date, nullptr);
    EXPECT_STREQ(infoModule, "lumotypes");

    // Null out-arguments are skipped; the banner lives in one static buffer.
    GetLmTypeMgrInfo(nullptr, nullptr, nullptr, nullptr, nullptr);
    infoSerial = 0;
    GetLmTypeMgrInfo(nullptr, &infoSerial, nullptr, nullptr, nullptr);
    EXPECT_EQ(infoSerial, 1927u);
    const char* again = nullptr;
    GetLmTypeMgrInfo(nullptr, nullptr, &again, nullptr, nullptr);
    EXPECT_EQ(again, banner);
    EXPECT_STREQ(again, "Lumo Typemanager 14.0.1.57.0 ");
    const char* onlyModule = nullptr;
    GetLmTypeMgrInfo(nullptr, nullptr, nullptr, nullptr, &onlyModule);
    EXPECT_STREQ(onlyModule, "lumotypes");
}
