// The type manager frame: id normalisation, factory levels and tables, the
// forwarding and Exchange members, the manager's own services and the module
// functions.
#include <algorithm>
#include <array>
#include <type_traits>

#include "testkit.h"

using namespace lmtest;

namespace {

// The type table as the rest of the database knows it, typed by hand: these
// names, lengths and formats are persistent.
struct TypeRow {
    char id;
    const char* name;
    const char* idName;
    uint16_t memLen;
    uint16_t fixed;
    const char* format;
};

// clang-format off
constexpr TypeRow kTypeTable[LmTypeCountCurrent] = {
    {Lm1B_T, "o_char", "Lm1B_T", 1, 1, "%c"}, {Lm2B_T, "o_2b", "Lm2B_T", 2, 1, "%hd"},
    {Lm4B_T, "o_4b", "Lm4B_T", 4, 1, "%ld"}, {LmDOUBLE_T, "o_double", "LmDOUBLE_T", 8, 1, "%.17g"},
    {LmFLOAT_T, "o_float", "LmFLOAT_T", 4, 1, "%.17g"}, {LmU2B_T, "o_u2b", "LmU2B_T", 2, 1, "%hu"},
    {LmU4B_T, "o_u4b", "LmU4B_T", 4, 1, "%lu"}, {LmINT_T, "int", "LmINT_T", 4, 1, "%d"},
    {LmUNSIGNED_T, "unsigned", "LmUNSIGNED_T", 4, 1, "%u"}, {LmENUM_T, "enum", "LmENUM_T", 4, 1, "%d"},
    {LmU1B_T, "o_u1b", "LmU1B_T", 1, 1, "%c"}, {LmSTRING_T, "LmString", "LmSTRING_T", 16, 0, "%s"},
    {LmDATE_T, "LmDate", "LmDATE_T", 4, 1, "%a %e.%b %Y"}, {LmTIME_T, "LmTime", "LmTIME_T", 3, 1, "%I:%M:%S %p"},
    {LmBLOCKID_T, "BlockId", "LmBLOCKID_T", 4, 1, "#%lu"}, {LmOBJID_T, "LmObjId", "LmOBJID_T", 12, 1, "(%H-%L#%B)"},
    {LmCLID_T, "LmClassId", "LmCLID_T", 4, 1, "(%Cv%V)"}, {LmREF_T, "LmRef", "LmREF_T", 16, 1, "(%D:%H-%L#%B, %C)"},
    {LmBLOB_T, "LmBlob", "LmBLOB_T", 8, 0, "[BLOB,len=%L]"},
    {LmDATIME_T, "LmDateTime", "LmDATIME_T", 8, 1, "%a %e.%b %Y %I:%M:%S %p"},
    {LmISTRING_T, "LmIString", "LmISTRING_T", 16, 0, "%s"},
    {LmCASEISTRING_T, "LmCaseIString", "LmCASEISTRING_T", 16, 0, "%s"},
    {D_DATE_T, "d_Date", "D_DATE_T", 4, 1, "%a %b %e"}, {D_TIME_T, "d_Time", "D_TIME_T", 6, 1, "%I:%M:%S %p"},
    {D_TIMESTAMP_T, "d_Timestamp", "D_TIMESTAMP_T", 10, 1, "%a %b %e %I:%M:%S %p"},
    {D_INTERVAL_T, "d_Interval", "D_INTERVAL_T", 4, 1, "%e days, %I hours, %M minutes, %S seconds"},
    {LmINT64_T, "LmInt64", "LmINT64_T", 8, 1, "%S"}, {LmBOOLEAN_T, "LmBoolean", "LmBOOLEAN_T", 1, 1, "noop"},
    {LmNULL_1B_T, "LmNull_char", "LmNULL_1B_T", 2, 1, "%c"}, {LmNULL_U1B_T, "LmNull_uchar", "LmNULL_U1B_T", 2, 1, "%c"},
    {LmNULL_2B_T, "LmNull_short", "LmNULL_2B_T", 4, 1, "%hd"},
    {LmNULL_U2B_T, "LmNull_ushort", "LmNULL_U2B_T", 4, 1, "%hu"},
    {LmNULL_INT_T, "LmNull_int", "LmNULL_INT_T", 8, 1, "%d"},
    {LmNULL_UNSIGNED_T, "LmNull_unsigned", "LmNULL_UNSIGNED_T", 8, 1, "%u"},
    {LmNULL_4B_T, "LmNull_long", "LmNULL_4B_T", 8, 1, "%ld"},
    {LmNULL_U4B_T, "LmNull_ulong", "LmNULL_U4B_T", 8, 1, "%lu"},
    {LmNULL_FLOAT_T, "LmNull_float", "LmNULL_FLOAT_T", 8, 1, "%.17g"},
    {LmNULL_DOUBLE_T, "LmNull_double", "LmNULL_DOUBLE_T", 16, 1, "%.17g"},
    {LmNULL_LMINT64_T, "LmNull_LmInt64", "LmNULL_LMINT64_T", 12, 1, "%S"},
    {LmSEAL_T, "LmSeal", "LmSEAL_T", 6, 1, "noop"}, {LmDATIME_N_T, "LmDateTimeN", "LmDATIME_N_T", 12, 1, "%X"},
    {LmTIMESPAN_T, "LmTimeSpan", "LmTIMESPAN_T", 12, 1, "%V"}, {Lm8B_T, "o_8b", "Lm8B_T", 8, 1, "%I64d"},
    {LmU8B_T, "o_u8b", "LmU8B_T", 8, 1, "%I64u"}, {LmNULL_8B_T, "LmNull_8b", "LmNULL_8B_T", 16, 1, "%I64d"},
    {LmNULL_U8B_T, "LmNull_u8b", "LmNULL_U8B_T", 16, 1, "%I64u"}, {LmRES_T, "illegal", "LmRES_T", 0, 1, "illegal"},
};
// clang-format on

LmTypeDesc* Current(int id) { return LmTypeTableCurrent[id]; }

// Every operation slot but SetNullValue, which may be empty.
constexpr auto kOperationSlots =
    std::make_tuple(&LmTypeDesc::Create, &LmTypeDesc::Delete, &LmTypeDesc::Store, &LmTypeDesc::Load,
                    &LmTypeDesc::NullSizeGet, &LmTypeDesc::SizeGet, &LmTypeDesc::SizeGetFromMemFile, &LmTypeDesc::Cmp,
                    &LmTypeDesc::EvalAndBound, &LmTypeDesc::Hash, &LmTypeDesc::ConvertTo, &LmTypeDesc::ConvertFrom,
                    &LmTypeDesc::Constructor, &LmTypeDesc::Destructor, &LmTypeDesc::Assignment, &LmTypeDesc::Copy,
                    &LmTypeDesc::Translate, &LmTypeDesc::IsNullValue, &LmTypeDesc::PrintToString,
                    &LmTypeDesc::ScanFromString, &LmTypeDesc::DefaultValue, &LmTypeDesc::GetValue);

// What the legacy record of id 11 keeps of the current one.
constexpr auto kSharedStringSlots =
    std::make_tuple(&LmTypeDesc::Create, &LmTypeDesc::Delete, &LmTypeDesc::Load, &LmTypeDesc::NullSizeGet,
                    &LmTypeDesc::ConvertTo, &LmTypeDesc::ConvertFrom, &LmTypeDesc::Constructor, &LmTypeDesc::Destructor,
                    &LmTypeDesc::Assignment, &LmTypeDesc::Copy, &LmTypeDesc::PrintToString, &LmTypeDesc::ScanFromString,
                    &LmTypeDesc::DefaultValue, &LmTypeDesc::memLen, &LmTypeDesc::fixed);

template <typename Slots, typename F>
void EachSlot(const Slots& slots, F f) {
    std::apply([&](auto... m) { (f(m), ...); }, slots);
}

// ---- Probe records: every slot of every row notes its row, its slot and its
// arguments in slot order, and answers a tag naming both. Row 47 stands for the
// legacy record of id 11. ----
// clang-format off
enum Slot { kCreate, kDelete, kStore, kLoad, kSize, kMemFileSize, kCmp, kEval, kHash, kConstructor, kDestructor,
            kAssignment, kCopy, kTranslate, kIsNull, kSetNull, kScan, kDefault };
// clang-format on

struct Call {
    int row = -1;
    int slot = -1;
    std::array<uintptr_t, 8> arg{};
};
Call last;

// An argument as a word; one passed by reference is noted by its address.
template <typename T, typename V>
uintptr_t Word(V& v) {
    if constexpr (std::is_reference_v<T>)
        return reinterpret_cast<uintptr_t>(&v);
    else if constexpr (std::is_pointer_v<T>)
        return reinterpret_cast<uintptr_t>(v);
    else
        return static_cast<uintptr_t>(v);
}

constexpr unsigned Tag(int row, int slot) { return 0x10000u + static_cast<unsigned>(row * 0x100 + slot); }

// Slot S of row R. Its return and argument types come from the slot it fills.
template <int R, int S, typename Ret, typename... A>
Ret Rec(A... a) {
    last = Call{R, S, {Word<A>(a)...}};
    if constexpr (std::is_pointer_v<Ret>)
        return reinterpret_cast<Ret>(static_cast<uintptr_t>(Tag(R, S)));
    else if constexpr (!std::is_void_v<Ret>)
        return static_cast<Ret>(Tag(R, S));
}

template <int R>
LmString& Print(LmString& out, void*, const char*, unsigned) {
    last.row = R;
    return out;
}

template <int R>
constexpr char kProbeFormat[] = {'p', static_cast<char>('0' + R), '\0'};

// clang-format off
template <size_t... R>
std::array<LmTypeDesc, sizeof...(R)> ProbeRows(std::index_sequence<R...>) {
    return {LmTypeDesc{"probe", "PROBE_T", Rec<R, kCreate>, Rec<R, kDelete>, Rec<R, kStore>, Rec<R, kLoad>, nullptr,
                       Rec<R, kSize>, Rec<R, kMemFileSize>, Rec<R, kCmp>, Rec<R, kEval>, Rec<R, kHash>, nullptr,
                       nullptr, Rec<R, kConstructor>, Rec<R, kDestructor>, Rec<R, kAssignment>, Rec<R, kCopy>,
                       Rec<R, kTranslate>, Rec<R, kIsNull>, Rec<R, kSetNull>, kProbeFormat<R>, Print<R>,
                       Rec<R, kScan>, static_cast<uint16_t>(100 + R), static_cast<uint16_t>(R % 2 + 2),
                       Rec<R, kDefault>, nullptr, nullptr}...};
}
// clang-format on

constexpr int kLegacyStringRow = 47;
const std::array<LmTypeDesc, 48> kProbes = ProbeRows(std::make_index_sequence<48>());

// Saves every record of both tables and puts them back when the test ends.
class SavedRecords {
public:
    SavedRecords() {
        for (int i = 0; i < LmTypeCountCurrent; ++i) saved_[i] = *LmTypeTableCurrent[i];
        saved_[kLegacyStringRow] = *LmTypeTableLegacy[11];
    }
    ~SavedRecords() {
        for (int i = 0; i < LmTypeCountCurrent; ++i) *LmTypeTableCurrent[i] = saved_[i];
        *LmTypeTableLegacy[11] = saved_[kLegacyStringRow];
    }
    void InstallProbes() const {
        for (int i = 0; i < LmTypeCountCurrent; ++i) *LmTypeTableCurrent[i] = kProbes[i];
        *LmTypeTableLegacy[11] = kProbes[kLegacyStringRow];
    }

private:
    std::array<LmTypeDesc, 48> saved_;
};

// The member answered what `slot` of record `row` answers, and the slot saw these
// arguments.
template <typename T>
void Expect(T result, int row, int slot, std::initializer_list<uintptr_t> args) {
    EXPECT_EQ(Word<T>(result), Tag(row, slot));
    EXPECT_EQ(last.row, row);
    EXPECT_EQ(last.slot, slot);
    for (size_t i = 0; i < args.size(); ++i) EXPECT_EQ(last.arg[i], args.begin()[i]) << "argument " << i;
}

uintptr_t P(const void* p) { return reinterpret_cast<uintptr_t>(p); }

void CheckForwarding(const LmTypeMgr& mgr, char id, int row) {
    SCOPED_TRACE(testing::Message() << "id " << static_cast<int>(id) << ", row " << row);
    const LmTypeDesc& probe = kProbes[row];
    int a1 = 0, a2 = 0, status = 0;
    void* v1 = &a1;
    void* v2 = &a2;
    MemFile file(&a1, 4);
    LmIdxBounds bounds{}, limits{};
    unsigned short flags = 4;

    Expect(mgr.Create(id, 7), row, kCreate, {7});
    Expect(mgr.Delete(id, v1, 3), row, kDelete, {P(v1), 3});
    Expect(mgr.DefaultValue(id, 4, 1), row, kDefault, {4, 1});
    Expect(mgr.Store(id, v1, v2, 0x82, 9), row, kStore, {P(v1), P(v2), 0x82, 9});
    Expect(mgr.Load(id, v2, v1, 0x41, 11), row, kLoad, {P(v2), P(v1), 0x41, 11});
    // DiskLenGet takes (value, format, count, valueForm); the slot (value, valueForm, format, count).
    Expect(mgr.DiskLenGet(id, v1, 2, 13, 8), row, kSize, {P(v1), 8, 2, 13});
    Expect(mgr.DiskLenGetFromMemFile(id, &file, 1, 6), row, kMemFileSize, {P(&file), 1, 6});
    // Cmp and Hash move the format to the front and hand on the caller's status.
    Expect(mgr.Cmp(id, 21, v1, 22, v2, 0x120, 0x12345, 0x81, status), row, kCmp,
           {0x81, 21, P(v1), 22, P(v2), 0x120, 0x12345, P(&status)});
    Expect(mgr.Hash(id, 31, v1, 0x10032, 0x88, status), row, kHash, {0x88, 31, P(v1), 0x10032, P(&status)});
    // The short Cmp passes both lengths as 0 and a status of its own.
    Expect(mgr.Cmp(id, v2, v1, 0xFFFF, 5, 2), row, kCmp, {2, 0, P(v2), 0, P(v1), 0xFFFF, 5});
    EXPECT_NE(last.arg[7], P(&status));
    // EvalAndBound does not hand on the evaluation data.
    Expect(mgr.EvalAndBound(id, &bounds, flags, v1, 1, 3, &limits, reinterpret_cast<LmEvalData*>(v2)), row, kEval,
           {P(&bounds), P(&flags), P(v1), 1, 3, P(&limits)});
    Expect(mgr.Translate(id, v1, 2, 40, v2, 8, 41, 42), row, kTranslate, {P(v1), 2, 40, P(v2), 8, 41, 42});
    Expect(mgr.IsNullValue(id, v2), row, kIsNull, {P(v2)});

    EXPECT_EQ(mgr.IsFixed(id), row % 2 + 2);
    EXPECT_EQ(mgr.MemLenGet(id, 3), 3 * (100 + row));
    EXPECT_TRUE(mgr.AssignmentPtrGet(id) == probe.Assignment && mgr.CmpFuncPtrGet(id) == probe.Cmp &&
                mgr.ConstructorPtrGet(id) == probe.Constructor && mgr.CopyPtrGet(id) == probe.Copy &&
                mgr.DestructorPtrGet(id) == probe.Destructor && mgr.IsNullPtrGet(id) == probe.IsNullValue &&
                mgr.LoadPtrGet(id) == probe.Load && mgr.SetNullPtrGet(id) == probe.SetNullValue &&
                mgr.StorePtrGet(id) == probe.Store);
    // Exchange members with a null argument only read.
    EXPECT_TRUE(mgr.ExchangeLmTypeCmpFunc(id, nullptr) == probe.Cmp &&
                mgr.ExchangePrintToLmStringFunc(id, nullptr) == probe.PrintToString &&
                mgr.ExchangeScanFromLmStringFunc(id, nullptr) == probe.ScanFromString &&
                mgr.ExchangeFormat(id, nullptr) == probe.exchangeFormat);
}

int ReplacementCmp(unsigned char, unsigned, void*, unsigned, void*, unsigned short, unsigned, int& status) {
    status = 42;
    return 9;
}
LmString& OtherPrint(LmString& out, void*, const char*, unsigned) { return out; }
void* OtherScan(void*, LmString&, const char*, unsigned) { return nullptr; }
int FilledSetNull(void*) { return 0; }

}  // namespace

TEST(TypeMgrIds, NormalisationFactoryLevelsAndTables) {
    // Below 100, negative ids too, an id stays; from 100 up it is row 46.
    for (int id = -128; id <= 127; ++id) {
        EXPECT_EQ(LmTypeMgr::NormalizeId(static_cast<char>(id)), id < 100 ? id : 46) << id;
        EXPECT_EQ(LmTypeMgr::IsValidType(static_cast<char>(id)), id < 47 || id >= 100 ? 1 : 0) << id;
    }
    const std::pair<unsigned, uint16_t> levels[] = {{0, 0},   {3, 3},  {4, 4},   {5, 5},
                                                    {10, 10}, {11, 3}, {255, 4}, {0xFFFFFFFFu, 4}};
    for (const auto& [factory, level] : levels) {
        LmTypeMgr reset(7);
        reset.SetFactory(factory);
        for (const LmTypeMgr& m : {LmTypeMgr(factory), reset}) {
            EXPECT_EQ(m.LevelGet(), level) << factory;
            EXPECT_EQ(m.TableGet(), level < 4 ? LmTypeTableLegacy : LmTypeTableCurrent) << factory;
        }
    }
    EXPECT_EQ(LmTypeMgr().LevelGet(), 5);
    LmTypeMgr mgr(5);  // SetFactory takes effect at the next call: id 11 switches records
    mgr.SetFactory(2);
    EXPECT_EQ(mgr.Desc(LmSTRING_T), LmTypeTableLegacy[11]);
    mgr.SetFactory(5);
    EXPECT_EQ(mgr.Desc(LmSTRING_T), LmTypeTableCurrent[11]);
}

TEST(TypeMgrTable, GoldenRowsAndTheLegacyTable) {
    for (int id = 0; id < LmTypeCountCurrent; ++id) {
        const TypeRow& row = kTypeTable[id];
        const LmTypeDesc* desc = Current(id);
        SCOPED_TRACE(row.name);
        ASSERT_EQ(row.id, id);
        EXPECT_STREQ(desc->name, row.name);
        EXPECT_STREQ(desc->idName, row.idName);
        EXPECT_EQ(desc->memLen, row.memLen);
        EXPECT_EQ(desc->fixed, row.fixed);
        EXPECT_STREQ(desc->exchangeFormat, row.format);
        EachSlot(kOperationSlots, [&](auto slot) { EXPECT_NE(desc->*slot, nullptr); });
        EXPECT_EQ(desc->reserved, nullptr);
        EXPECT_EQ(std::count(LmTypeTableCurrent, LmTypeTableCurrent + LmTypeCountCurrent, desc), 1);
    }
    // The plain numbers, the fixed-form strings, the standard family, LmInt64, LmSeal and
    // "illegal" have no null of their own.
    for (int id : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 14, 20, 21, 22, 23, 24, 25, 26, 39, 42, 43, 46}) {
        EXPECT_EQ(Current(id)->SetNullValue, nullptr) << id;
    }

    // The legacy table shares every record but that of id 11, whose record has no null:
    // the shared never-null test, no setter, the shared refusing GetValue.
    for (int id = 0; id < LmTypeCountLegacy; ++id) EXPECT_EQ(LmTypeTableLegacy[id] == Current(id), id != 11) << id;
    const LmTypeDesc* cur = Current(11);
    const LmTypeDesc* old = LmTypeTableLegacy[11];
    EXPECT_STREQ(old->name, "LmString");
    EXPECT_STREQ(old->idName, "LmSTRING_T");
    EXPECT_STREQ(old->exchangeFormat, "%s");
    EachSlot(kSharedStringSlots, [&](auto slot) { EXPECT_EQ(old->*slot, cur->*slot); });
    EXPECT_TRUE(old->IsNullValue == Current(LmRES_T)->IsNullValue && old->SetNullValue == nullptr &&
                old->GetValue == Current(LmRES_T)->GetValue && old->reserved == nullptr);
    EXPECT_TRUE(cur->Cmp == StringCompare && old->Cmp == StringCompareLegacy && old->Hash != cur->Hash);
}

// No slot that a type fills still holds an operation of row 46, except where the
// rules give the type that very answer: the never-null test of the types without a
// null, the refusing step of those that cannot step, and an empty null setter.
TEST(TypeMgrTable, EveryRowIsComplete) {
    const auto in = [](std::initializer_list<int> list, int id) {
        return std::count(list.begin(), list.end(), id) != 0;
    };
    const std::initializer_list<int> neverNull = {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10,
                                                  14, 20, 21, 22, 23, 24, 25, 26, 39, 42, 43};
    const std::initializer_list<int> cannotStep = {9, 16, 18, 20, 21, 39};
    const std::initializer_list<int> ownNull = {11, 12, 13, 15, 16, 17, 18, 19, 27, 28, 29, 30,
                                                31, 32, 33, 34, 35, 36, 37, 38, 40, 41, 44, 45};
    const LmTypeDesc* illegal = Current(LmRES_T);
    for (LmTypeDesc** table : {LmTypeTableCurrent, LmTypeTableLegacy}) {
        const int rows = table == LmTypeTableCurrent ? LmTypeCountCurrent : LmTypeCountLegacy;
        for (int id = 0; id < rows; ++id) {
            const LmTypeDesc* desc = table[id];
            const bool oldString = table == LmTypeTableLegacy && id == LmSTRING_T;
            SCOPED_TRACE(std::string(desc->name) + (oldString ? " (legacy)" : ""));
            if (id == LmRES_T) continue;
            EachSlot(kOperationSlots, [&](auto slot) {
                using S = decltype(slot);
                ASSERT_NE(desc->*slot, nullptr);
                if constexpr (std::is_same_v<S, decltype(&LmTypeDesc::IsNullValue)>) {
                    EXPECT_EQ(desc->*slot == illegal->*slot, in(neverNull, id) || oldString);
                } else if constexpr (std::is_same_v<S, decltype(&LmTypeDesc::GetValue)>) {
                    EXPECT_EQ(desc->*slot == illegal->*slot, in(cannotStep, id) || oldString);
                } else {
                    EXPECT_NE(desc->*slot, illegal->*slot);
                }
            });
            EXPECT_EQ(desc->SetNullValue != nullptr, in(ownNull, id) && !oldString);
        }
    }
}

TEST(TypeMgrForward, EveryMemberReachesItsRowAndSlot) {
    const SavedRecords saved;
    saved.InstallProbes();
    const LmTypeMgr mgr(5), legacy(3);
    for (int id = 0; id < LmTypeCountCurrent; ++id) CheckForwarding(mgr, static_cast<char>(id), id);
    for (int id : {100, 101, 127}) CheckForwarding(mgr, static_cast<char>(id), LmRES_T);
    // Levels below 4 reach the same records, but for id 11.
    for (int id = 0; id < LmTypeCountLegacy; ++id) {
        CheckForwarding(legacy, static_cast<char>(id), id == 11 ? kLegacyStringRow : id);
    }
}

TEST(TypeMgrForward, ExchangeWritesTheSharedRecord) {
    const SavedRecords saved;
    const LmTypeMgr cur(5), other(10), old(3);
    // A write shows through every manager and both tables.
    EXPECT_STREQ(cur.ExchangeFormat(Lm4B_T, "x"), "%ld");
    EXPECT_STREQ(old.ExchangeFormat(Lm4B_T, "%ld"), "x");
    // The new compare function is what both Cmp forms call and CmpFuncPtrGet hands out.
    EXPECT_EQ(cur.ExchangeLmTypeCmpFunc(Lm4B_T, ReplacementCmp), LongCompare);
    int a = 1, b = 2, status = 0;
    EXPECT_EQ(old.Cmp(Lm4B_T, 0, &a, 0, &b, 0, 1, 8, status), 9);
    EXPECT_EQ(status, 42);
    EXPECT_EQ(other.Cmp(Lm4B_T, &a, &b, 0, 1, 8), 9);
    EXPECT_EQ(other.ExchangeLmTypeCmpFunc(Lm4B_T, LongCompare), ReplacementCmp);
    EXPECT_EQ(cur.Cmp(Lm4B_T, 0, &a, 0, &b, 0, 1, 8, status), -1);
    const LmTypePrintFunc print = Current(Lm4B_T)->PrintToString;
    const LmTypeScanFunc scan = Current(Lm4B_T)->ScanFromString;
    EXPECT_EQ(cur.ExchangePrintToLmStringFunc(Lm4B_T, OtherPrint), print);
    EXPECT_EQ(old.ExchangePrintToLmStringFunc(Lm4B_T, print), OtherPrint);
    EXPECT_EQ(other.ExchangeScanFromLmStringFunc(Lm4B_T, OtherScan), scan);
    EXPECT_EQ(old.ExchangeScanFromLmStringFunc(Lm4B_T, scan), OtherScan);
    // Id 11 has two records: a change through a legacy manager stays in the old one.
    EXPECT_STREQ(old.ExchangeFormat(LmSTRING_T, "old"), "%s");
    EXPECT_STREQ(cur.ExchangeFormat(LmSTRING_T, "new"), "%s");
    EXPECT_STREQ(old.ExchangeFormat(LmSTRING_T, nullptr), "old");
    EXPECT_STREQ(other.ExchangeFormat(LmSTRING_T, nullptr), "new");
}

TEST(TypeMgrIllegal, OperationsAnswerHarmlessly) {
    // No operation of row 46 looks at its arguments: each answers 0 or a null pointer,
    // or does nothing. Cmp, Hash and EvalAndBound leave status and flags as they were.
    const LmTypeMgr mgr;
    const char id = 100;
    const LmTypeDesc* desc = mgr.Desc(id);
    alignas(8) unsigned char buffer[16];
    std::memset(buffer, 0xA5, sizeof buffer);
    const Bytes untouched = Of(buffer, sizeof buffer);
    LmString& text = *reinterpret_cast<LmString*>(buffer);
    for (const void* none : {mgr.Create(id, 5), mgr.Delete(id, buffer, 5), mgr.DefaultValue(id, 5, 0),
                             static_cast<void*>(desc->ConvertTo(buffer, 1)), desc->ConvertFrom(nullptr, 1),
                             desc->ScanFromString(buffer, text, "%d", 1)}) {
        EXPECT_EQ(none, nullptr);
    }
    int status = 1234;
    unsigned short flags = 3;
    LmIdxBounds bounds{};
    EXPECT_EQ(mgr.Store(id, nullptr, nullptr, 2, 5) + mgr.Load(id, nullptr, nullptr, 2, 5) +
                  mgr.DiskLenGet(id, nullptr, 1, 5, 8) + mgr.DiskLenGetFromMemFile(id, nullptr, 1, 5) +
                  mgr.Translate(id, buffer, 1, 16, nullptr, 8, 16, 4) + desc->NullSizeGet(5) +
                  mgr.Hash(id, 16, buffer, 4, 8, status),
              0u);
    EXPECT_EQ(mgr.IsNullValue(id, nullptr) + mgr.Cmp(id, 4, buffer, 4, buffer + 4, 0, 1, 8, status), 0);
    EXPECT_EQ(mgr.EvalAndBound(id, &bounds, flags, buffer, 1, 1, nullptr, nullptr), 0.0f);
    EXPECT_EQ(std::make_pair(status, flags), std::make_pair(1234, uint16_t{3}));
    desc->Constructor(buffer, 5, 0);
    desc->Destructor(buffer, 5, 0);
    desc->Assignment(buffer, nullptr, 5, 0);
    desc->Copy(buffer, nullptr, 5, 1);
    EXPECT_EQ(desc->GetValue(buffer, 0, 8, 'N'), LM_ERR_NOT_SUPPORTED);
    EXPECT_EQ(mgr.SetNullPtrGet(id), nullptr);
    EXPECT_EQ(&desc->PrintToString(text, buffer, "%d", 1), &text);  // hands back its first argument
    EXPECT_EQ(Of(buffer, sizeof buffer), untouched);
}

TEST(TypeMgrServices, CapabilitiesMemLenAndRetiredMembers) {
    const LmTypeMgr mgr;
    const std::initializer_list<int> counting = {0, 1, 2, 5, 6, 7, 8, 9, 10, 15, 26, 42, 43};  // not BlockId
    const std::initializer_list<int> stamping = {12, 13, 19, 22, 23, 24, 40};
    const auto in = [](std::initializer_list<int> list, int id) { return std::count(list.begin(), list.end(), id); };
    int value = 0;
    for (int id = 0; id <= 127; id = id == LmRES_T ? 100 : id + 1) {
        const char c = static_cast<char>(id);
        EXPECT_EQ(mgr.SupportsCapability(c, 1), mgr.Desc(c)->SetNullValue != nullptr ? 1 : 0) << id;
        EXPECT_EQ(mgr.SupportsNullValue(c), mgr.SupportsCapability(c, 1)) << id;
        EXPECT_EQ(mgr.SupportsCapability(c, 2), in(counting, id)) << id;
        EXPECT_EQ(mgr.SupportsCapability(c, 3), in(stamping, id)) << id;
        EXPECT_EQ(mgr.SupportsCapability(c, 0) + mgr.SupportsCapability(c, 4) + mgr.SupportsCapability(c, 0xFFFF), 0);
        EXPECT_EQ(mgr.ComparePtrGet(c), nullptr) << id;
        EXPECT_EQ(mgr.DiskIsNullValue(c, &value), LM_ERR_NOT_SUPPORTED) << id;
    }
    // Capability 1 follows the SetNullValue slot of the record in force.
    const SavedRecords saved;
    Current(Lm4B_T)->SetNullValue = FilledSetNull;
    EXPECT_EQ(LmTypeMgr(3).SupportsCapability(Lm4B_T, 1), 1);
    LmTypeMgr switching(5);
    EXPECT_EQ(switching.SupportsNullValue(LmSTRING_T), 1);
    switching.SetFactory(2);
    EXPECT_EQ(switching.SupportsNullValue(LmSTRING_T), 0);
    // memLen times the low 16 bits of count, cut to 16 bits: 16 * 4464 = 71424 -> 5888.
    EXPECT_EQ(mgr.MemLenGet(LmSTRING_T, 70000), 5888);
    EXPECT_EQ(mgr.MemLenGet(LmDOUBLE_T, 0x1FFF), 65528);
    EXPECT_EQ(mgr.MemLenGet(LmDOUBLE_T, 0x2000), 0);  // 8 * 8192 = 65536
}

TEST(TypeMgrServices, NamesLookupAndArrayElements) {
    const LmTypeMgr mgr;
    // Without a buffer, the static text; with one, the text and its terminator copied.
    EXPECT_EQ(mgr.NameGet(LmINT_T, nullptr), Current(LmINT_T)->name);
    EXPECT_EQ(mgr.TypeIdNameGet(LmINT_T, nullptr), Current(LmINT_T)->idName);
    char buffer[32];
    std::memset(buffer, 'Z', sizeof buffer);
    EXPECT_EQ(mgr.TypeIdNameGet(LmCASEISTRING_T, buffer), buffer);
    EXPECT_STREQ(buffer, "LmCASEISTRING_T");
    EXPECT_EQ(mgr.NameGet(LmINT_T, buffer), buffer);
    EXPECT_EQ(std::string(buffer, 6), std::string("int\0SE", 6));
    // Exact, case-sensitive type names; the id names are not found; every name finds
    // its own id, through a legacy manager the rows after 27 too.
    for (const char* unknown : {"LmSTRING_T", "INT", "int ", "", "LmStrin"}) {
        char id = 99;
        EXPECT_EQ(mgr.Name2LmTypeId(unknown, id), 1) << unknown;
        EXPECT_EQ(id, 47) << unknown;
    }
    for (const LmTypeMgr& m : {LmTypeMgr(5), LmTypeMgr(3)}) {
        for (int i = 0; i < LmTypeCountCurrent; ++i) {
            char id = -1;
            EXPECT_EQ(m.Name2LmTypeId(kTypeTable[i].name, id), 0);
            EXPECT_EQ(id, i);
        }
    }
    // base + memLen * index; count 0 means no bound, else the index must be below it.
    alignas(16) unsigned char base[256];
    EXPECT_EQ(mgr.GetArrayElement(LmDOUBLE_T, base, 3, 0), base + 24);
    EXPECT_EQ(mgr.GetArrayElement(LmDOUBLE_T, base, 2, 3), base + 16);
    EXPECT_EQ(mgr.GetArrayElement(LmDOUBLE_T, base, 3, 3), nullptr);
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
    EXPECT_EQ(DefaultTypeMgr(nullptr), mgr);  // a null argument only reads
    ___LmTypemgrContext(0);
    EXPECT_EQ(DefaultTypeMgr(nullptr), nullptr);
    EXPECT_EQ(LmI18NContextActive(), 0);
    // A manager of the caller's own becomes the default, and stop frees it.
    ___LmTypemgrContext(1);
    LmTypeMgr* made = DefaultTypeMgr(nullptr);
    auto* own = new LmTypeMgr(3);
    EXPECT_EQ(DefaultTypeMgr(own), own);
    EXPECT_EQ(DefaultTypeMgr(nullptr), own);
    delete made;
    ___LmTypemgrContext(0);
    EXPECT_EQ(DefaultTypeMgr(nullptr), nullptr);
}

TEST(TypeMgrModule, OptionsVersionDescriptionAndInfo) {
    EXPECT_EQ(___LmTypeMgrOptions(), 0);
    ___LmTypeMgrOptions() = 17;
    EXPECT_EQ(___LmTypeMgrOptions(), 17);
    ___LmTypeMgrOptions() = 0;
    // The library's own numbers with the two low flags always set.
    for (int flags : {0, 1, 2, 4, -1}) {
        EXPECT_EQ(LmCheckDll(flags), CheckLmVersionNumber(14, 0, 1, 57, 0, flags | 3)) << flags;
        EXPECT_EQ(LmCheckDll(flags), 0) << flags;
    }
    unsigned major = 99, minor = 99, patch = 99, build = 99, extra = 99, serial = 99;
    const char *module = nullptr, *when = nullptr, *unknown = nullptr, *tag = nullptr, *empty = nullptr;
    EXPECT_STREQ(LmDescribeDll(&major, &minor, &patch, &build, &extra, &module, &when, &unknown, &serial, &tag, &empty),
                 "Lumo Typemanager");
    EXPECT_EQ(std::make_tuple(major, minor, patch, build, extra, serial), std::make_tuple(14u, 0u, 1u, 57u, 0u, 1927u));
    EXPECT_STREQ(module, "lumotypes");
    EXPECT_STRNE(when, "");
    EXPECT_STREQ(unknown, "unknown");
    EXPECT_STREQ(empty, "");
    const char *infoTag = nullptr, *banner = nullptr, *date = nullptr, *infoModule = nullptr;
    unsigned infoSerial = 0;
    GetLmTypeMgrInfo(&infoTag, &infoSerial, &banner, &date, &infoModule);
    EXPECT_STREQ(infoTag, tag);
    EXPECT_EQ(infoSerial, 1927u);
    EXPECT_STREQ(banner, "Lumo Typemanager 14.0.1.57.0 ");
    EXPECT_NE(date, nullptr);
    EXPECT_STREQ(infoModule, "lumotypes");
    GetLmTypeMgrInfo(nullptr, nullptr, nullptr, nullptr, nullptr);  // null out-arguments are skipped
}
