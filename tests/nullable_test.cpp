// The nullable family, ids 28 to 38, 44 and 45: one table over the thirteen members.
// Each member is checked against its base type's own slots (its disk image, print,
// conversion, hash of one value and step are the base's) and against the rules of
// the null flag worked out by hand; a few golden images and hashes pin the frozen
// forms.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "lumotypes.h"

namespace {

using Bytes = std::vector<uint8_t>;
const LmTypeMgr mgr;
constexpr unsigned char kDiskFormats[] = {LmFormatLittle, LmFormatBig};
constexpr uint32_t kNullWord = 0xFEFE7575u;

template <typename T>
LmNullable<T> Of(T v) {
    LmNullable<T> n{};
    n.value = v;
    return n;
}
template <typename T>
LmNullable<T> Null() {
    LmNullable<T> n{};
    n.isNull = 1;
    return n;
}

template <typename T>
Bytes Stored(char id, std::vector<LmNullable<T>> values, unsigned char format) {
    const auto n = static_cast<unsigned>(values.size());
    Bytes out(mgr.DiskLenGet(id, values.data(), format, n, LmFormatMemory));
    EXPECT_EQ(mgr.Store(id, out.data(), values.data(), format, n), out.size());
    return out;
}

template <typename T>
Bytes BaseImage(char base, T v, unsigned char format) {
    Bytes out(mgr.DiskLenGet(base, &v, format, 1, LmFormatMemory));
    mgr.Store(base, out.data(), &v, format, 1);
    return out;
}

template <typename T>
bool Same(const T& a, const T& b) {
    return std::memcmp(&a, &b, sizeof(T)) == 0;
}

std::string Text(const LmString& s) { return s.StrGet(); }

// The share of one evaluation with a range of two stored keys.
template <typename T>
float Share(char id, LmNullable<T> v, LmNullable<T> lower, LmNullable<T> upper, unsigned short op) {
    Bytes value = Stored<T>(id, {v}, LmFormatBig), lo = Stored<T>(id, {lower}, LmFormatBig),
          hi = Stored<T>(id, {upper}, LmFormatBig);
    LmIdxBounds range{lo.data(), hi.data(), static_cast<uint8_t>(lo.size()), static_cast<uint8_t>(hi.size()), 0, 0, 0};
    unsigned short word = op;
    const float share = mgr.EvalAndBound(id, &range, word, value.data(), LmFormatBig, 1, nullptr, nullptr);
    EXPECT_EQ(word, op);
    return share;
}

// Every rule of the family on one member. low is the smallest value of the base's
// index order; low < mid < high.
template <typename T>
void CheckMember(char id, char base, T low, T mid, T high) {
    SCOPED_TRACE(mgr.NameGet(id, nullptr));
    using N = LmNullable<T>;
    const LmTypeDesc* desc = mgr.Desc(id);
    const LmTypeDesc* baseDesc = mgr.Desc(base);
    EXPECT_EQ(mgr.MemLenGet(id, 1), sizeof(N));

    // Disk form: flag first, then the base's image; in memory form value, then flag.
    // Only a stored flag of exactly 1 reads back as null, and a null holds 0.
    for (const unsigned char format : {LmFormatLittle, LmFormatBig, LmFormatMemory}) {
        const Bytes image = BaseImage(base, mid, format), zero = BaseImage(base, T{}, format);
        const auto element = [&](const Bytes& value, uint8_t flag) {
            Bytes e = value;
            if (format == LmFormatMemory)
                e.push_back(flag);
            else
                e.insert(e.begin(), flag);
            return e;
        };
        Bytes expected = element(image, 0);
        const Bytes null = element(zero, 1);
        expected.insert(expected.end(), null.begin(), null.end());
        Bytes stored = Stored<T>(id, {Of(mid), Null<T>()}, format);
        EXPECT_EQ(stored, expected) << int(format);
        EXPECT_EQ(mgr.DiskLenGet(id, nullptr, format, 3, LmFormatMemory), 3 * (image.size() + 1));
        if (format == LmFormatMemory) continue;
        stored[0] = 2;                                                       // a flag of 2 is not null
        std::memcpy(&stored[image.size() + 2], image.data(), image.size());  // a value under the null flag
        N back[2] = {Null<T>(), Of(high)};
        EXPECT_EQ(mgr.Load(id, back, stored.data(), format, 2), stored.size());
        EXPECT_TRUE(back[0].isNull == 0 && Same(back[0].value, mid));
        EXPECT_TRUE(back[1].isNull == 1 && Same(back[1].value, T{}));
    }

    // Nulls below every value, two nulls equal whatever their value fields hold.
    std::vector<N> ordered = {Null<T>(), Of(low), Of(mid), Of(high)};
    for (const unsigned char format : {LmFormatLittle, LmFormatBig, LmFormatMemory}) {
        for (size_t i = 0; i < ordered.size(); ++i) {
            for (size_t j = 0; j < ordered.size(); ++j) {
                N a = ordered[i], b = ordered[j];
                Bytes x = Stored<T>(id, {a}, format), y = Stored<T>(id, {b}, format);
                void* left = format == LmFormatMemory ? static_cast<void*>(&a) : x.data();
                void* right = format == LmFormatMemory ? static_cast<void*>(&b) : y.data();
                EXPECT_EQ(mgr.Cmp(id, left, right, 0, 1, format), (i > j) - (i < j)) << i << " " << j;
            }
        }
    }
    N junk = Null<T>();
    junk.value = high;
    N clean = Null<T>();
    EXPECT_EQ(mgr.Cmp(id, &junk, &clean, 0, 1, LmFormatMemory), 0);

    // Hash: a value hashes as the base hashes it in form 8, a null is a constant, and
    // nothing is multiplied on top; every form alike.
    int status = -1;
    T copy = mid;
    const unsigned midHash = baseDesc->Hash(LmFormatMemory, 0, &copy, 1, status);
    for (const unsigned char format : kDiskFormats) {
        EXPECT_EQ(mgr.Hash(id, 0, Stored<T>(id, {Of(mid), Null<T>()}, format).data(), 2, format, status),
                  midHash ^ kNullWord);
        EXPECT_EQ(mgr.Hash(id, 0, Stored<T>(id, {Null<T>(), Null<T>()}, format).data(), 2, format, status), 0u);
    }
    N pair[2] = {Of(mid), junk};
    EXPECT_EQ(mgr.Hash(id, 0, pair, 2, LmFormatMemory, status), midHash ^ kNullWord);
    EXPECT_EQ(mgr.Hash(id, 0, pair, 1, LmFormatMemory, status), midHash);
    EXPECT_EQ(mgr.Hash(id, 0, &junk, 1, LmFormatMemory, status), kNullWord);
    EXPECT_EQ(mgr.Hash(id, 0, Stored<T>(id, {junk}, LmFormatLittle).data(), 1, LmFormatLittle, status), kNullWord);
    EXPECT_EQ(status, LM_OK);

    // Text: a null prints the null print string; a value prints and scans as the base.
    LmString text("old"), valueText, baseText;
    EXPECT_EQ(Text(mgr.PrintToLmString(id, text, &junk, nullptr, 1)), "{NULL}");
    N one = Of(mid);
    mgr.PrintToLmString(base, baseText, &copy, nullptr, 1);
    EXPECT_EQ(Text(mgr.PrintToLmString(id, valueText, &one, nullptr, 1)), Text(baseText));
    N scanned = Null<T>();
    mgr.ScanFromLmString(id, &scanned, baseText, nullptr, 1);
    EXPECT_TRUE(scanned.isNull == 0 && Same(scanned.value, mid));
    LmString wide(LM_CODESET_UNICODE, 1), wideNull(LM_CODESET_UNICODE, 1);
    wide += baseText;
    wideNull += LmString("{NULL}");
    scanned = Null<T>();
    mgr.ScanFromLmString(id, &scanned, wide, nullptr, 1);
    EXPECT_TRUE(scanned.isNull == 0 && Same(scanned.value, mid));
    mgr.ScanFromLmString(id, &scanned, wideNull, nullptr, 1);
    EXPECT_EQ(scanned.isNull, 1);
    EXPECT_EQ(desc->ScanFromString(nullptr, wide, nullptr, 1), nullptr);
    for (const char* nullText : {"", "{NULL}", "{NULL} and more"}) {
        LmString in(nullText);
        mgr.ScanFromLmString(id, &scanned, in, nullptr, 1);
        EXPECT_TRUE(scanned.isNull == 1 && Same(scanned.value, T{})) << nullText;
    }

    // Conversions: the base's texts, a null string for a null and back.
    N two[2] = {Of(mid), Null<T>()};
    LmTypeConvertData* strings = mgr.ConvertTo(id, two, 2);
    LmTypeConvertData* baseStrings = mgr.ConvertTo(base, &copy, 1);
    ASSERT_TRUE(strings != nullptr && baseStrings != nullptr);
    EXPECT_EQ(Text(*strings->GetString(0)), Text(*baseStrings->GetString(0)));
    EXPECT_NE(strings->GetString(1)->IsNullValue(), 0);
    auto* back = static_cast<N*>(mgr.ConvertFrom(id, strings, 3));
    auto* baseBack = static_cast<T*>(mgr.ConvertFrom(base, baseStrings, 1));
    EXPECT_TRUE(back[0].isNull == 0 && Same(back[0].value, *baseBack));
    EXPECT_TRUE(back[1].isNull == 1 && back[2].isNull == 1);
    mgr.Delete(id, back, 3);
    mgr.Delete(base, baseBack, 1);
    delete strings;
    delete baseStrings;

    // Life cycle: assignment moves value and flag, Copy every byte; Translate is Store,
    // Load, an element copy, or a byte copy with zero fill between two disk forms.
    N three[3], source[2] = {Of(mid), Null<T>()};
    desc->Constructor(three, 3, 0);
    desc->Assignment(three, source, 1, 1);
    desc->Assignment(three + 1, source, 2, 0);
    EXPECT_TRUE(Same(three[0].value, mid) && three[0].isNull == 0 && three[2].isNull == 1);
    std::memset(static_cast<void*>(three), 0x5A, sizeof three);
    desc->Copy(three, source, 3, 1);
    EXPECT_EQ(std::memcmp(&three[2], &source[0], sizeof(N)), 0);
    const Bytes disk = Stored<T>(id, {source[0], source[1]}, LmFormatBig);
    Bytes moved(disk.size() + 3, 0xEE);
    EXPECT_EQ(mgr.Translate(id, moved.data(), LmFormatBig, 0, source, LmFormatMemory, 0, 2), disk.size());
    EXPECT_TRUE(std::equal(disk.begin(), disk.end(), moved.begin()));
    EXPECT_EQ(mgr.Translate(id, three, LmFormatMemory, 0, moved.data(), LmFormatBig, 0, 2), disk.size());
    EXPECT_TRUE(Same(three[0].value, mid) && three[1].isNull == 1);
    EXPECT_EQ(mgr.Translate(id, three, LmFormatMemory, 0, source, LmFormatMemory, 0, 2), 2 * sizeof(N));
    EXPECT_EQ(mgr.Translate(id, moved.data(), LmFormatLittle, static_cast<unsigned>(moved.size()),
                            const_cast<uint8_t*>(disk.data()), LmFormatBig, static_cast<unsigned>(disk.size()), 2),
              disk.size());
    EXPECT_EQ(moved, [&] { Bytes b = disk; b.resize(moved.size(), 0); return b; }());
    EXPECT_EQ(desc->NullSizeGet(3), disk.size() / 2 * 3);
    EXPECT_EQ(desc->SizeGetFromMemFile(nullptr, LmFormatLittle, 3), disk.size() / 2 * 3);

    // Created, constructed and default values are null; SetNullValue makes one so.
    auto* made = static_cast<N*>(mgr.DefaultValue(id, 2, 0));
    EXPECT_TRUE(made[0].isNull == 1 && made[1].isNull == 1 && mgr.IsNullValue(id, &made[1]) != 0);
    mgr.Delete(id, made, 2);
    N set = Of(high);
    EXPECT_EQ(mgr.SetNullValue(id, &set), 0);
    EXPECT_TRUE(set.isNull == 1 && Same(set.value, T{}));
    set.isNull = -1;
    EXPECT_NE(mgr.IsNullValue(id, &set), 0);

    // Stepping: a null takes the base's smallest value, a value steps as the base's.
    T smallest = high, next = mid;
    baseDesc->GetValue(&smallest, 0, LmFormatMemory, 2);
    baseDesc->GetValue(&next, 0, LmFormatMemory, 'N');
    N stepNull = Null<T>(), stepValue = Of(mid), top = Of(high);
    EXPECT_EQ(desc->GetValue(&stepNull, 0, LmFormatMemory, 'N'), 0);
    EXPECT_TRUE(stepNull.isNull == 0 && Same(stepNull.value, smallest));
    EXPECT_EQ(mgr.GetValue(id, &stepValue, 0, LmFormatMemory, 'M'), 0);
    EXPECT_TRUE(Same(stepValue.value, next));
    EXPECT_EQ(mgr.GetValue(id, &top, 0, LmFormatMemory, 'N'), LM_ERR_NO_NEXT_VALUE);
    EXPECT_EQ(desc->GetValue(&stepValue, 0, LmFormatMemory, 'O'), LM_ERR_NOT_SUPPORTED);
    EXPECT_EQ(desc->GetValue(&stepValue, 0, LmFormatMemory, 2), LM_ERR_NOT_SUPPORTED);
    EXPECT_EQ(desc->GetValue(&stepValue, 0, LmFormatLittle, 'N'), LM_ERR_NOT_SUPPORTED);

    // Bounds of range 10 to 19: shares of o_4b for every member, a count of keys for
    // LmNull_LmInt64. A null lower key grants fixed shares.
    const bool counts = id == LmNULL_LMINT64_T;
    struct Case {
        unsigned short op;
        float share, count;
    };
    for (const Case& c :
         {Case{1, 0.1f, 1}, Case{2, 0.5f, 5}, Case{3, 0.6f, 6}, Case{4, 0.4f, 4}, Case{5, 0.5f, 5}, Case{6, 0.9f, 9}}) {
        EXPECT_FLOAT_EQ(Share<T>(id, Of(T(15)), Of(T(10)), Of(T(19)), c.op), counts ? c.count : c.share) << c.op;
    }
    EXPECT_FLOAT_EQ(Share<T>(id, Of(T(5)), Null<T>(), Of(T(10)), LM_BOUND_EQ), counts ? 0.1f : float(0.1 / 11));
    EXPECT_FLOAT_EQ(Share<T>(id, Null<T>(), Null<T>(), Of(T(10)), LM_BOUND_EQ), counts ? 1.0f : float(0.001 / 11));
    EXPECT_EQ(Share<T>(id, Null<T>(), Of(T(1)), Of(T(10)), LM_BOUND_LT), counts ? 1.0f : 0.0f);
    EXPECT_FLOAT_EQ(Share<T>(id, Null<T>(), Of(T(1)), Of(T(10)), LM_BOUND_GT), counts ? 1.0f : 0.05f);
    LmIdxBounds out{};
    unsigned short word = LM_BOUND_EQ;
    Bytes key = Stored<T>(id, {Of(mid), Null<T>()}, LmFormatLittle);
    EXPECT_EQ(mgr.EvalAndBound(id, nullptr, word, key.data(), LmFormatLittle, 2, &out, nullptr), 0.0f);
    EXPECT_EQ(Bytes(static_cast<uint8_t*>(out.upper), static_cast<uint8_t*>(out.upper) + out.upperLen), key);
    EXPECT_EQ(out.lowerLen, key.size());
    std::free(out.lower);
    std::free(out.upper);
}

TEST(Nullable, EveryMemberKeepsTheRulesOfTheFamily) {
    const double nan = std::numeric_limits<double>::quiet_NaN(), inf = std::numeric_limits<double>::infinity();
    CheckMember<int8_t>(LmNULL_1B_T, Lm1B_T, -128, 65, 127);
    CheckMember<uint8_t>(LmNULL_U1B_T, LmU1B_T, 0, 65, 255);
    CheckMember<int16_t>(LmNULL_2B_T, Lm2B_T, -32768, -7, 32767);
    CheckMember<uint16_t>(LmNULL_U2B_T, LmU2B_T, 0, 300, 65535);
    CheckMember<int32_t>(LmNULL_INT_T, LmINT_T, INT32_MIN, -70000, INT32_MAX);
    CheckMember<uint32_t>(LmNULL_UNSIGNED_T, LmUNSIGNED_T, 0, 3000000000u, UINT32_MAX);
    CheckMember<int32_t>(LmNULL_4B_T, Lm4B_T, INT32_MIN, 70000, INT32_MAX);
    CheckMember<uint32_t>(LmNULL_U4B_T, LmU4B_T, 0, 70000, UINT32_MAX);
    CheckMember<float>(LmNULL_FLOAT_T, LmFLOAT_T, float(nan), 1.5f, float(inf));
    CheckMember<double>(LmNULL_DOUBLE_T, LmDOUBLE_T, nan, -2.25, inf);
    CheckMember<LmInt64>(LmNULL_LMINT64_T, LmINT64_T, LmInt64(INT64_MIN), LmInt64(0x123456789LL), LmInt64(INT64_MAX));
    CheckMember<int64_t>(LmNULL_8B_T, Lm8B_T, INT64_MIN, -0x123456789LL, INT64_MAX);
    CheckMember<uint64_t>(LmNULL_U8B_T, LmU8B_T, 0, 0x8000000000000001ULL, UINT64_MAX);
}

// Frozen images and hashes, by hand.
TEST(Nullable, GoldenImagesAndHashes) {
    const Bytes little = Stored<int32_t>(LmNULL_INT_T, {Of(5), Null<int32_t>()}, LmFormatLittle);
    EXPECT_EQ(little, (Bytes{0, 5, 0, 0, 0, 1, 0, 0, 0, 0}));
    EXPECT_EQ(Stored<int32_t>(LmNULL_INT_T, {Of(5)}, LmFormatBig), (Bytes{0, 0, 0, 0, 5}));
    EXPECT_EQ(Stored<int32_t>(LmNULL_INT_T, {Null<int32_t>()}, LmFormatMemory), (Bytes{0, 0, 0, 0, 1}));
    EXPECT_EQ(Stored<LmInt64>(LmNULL_LMINT64_T, {Of(LmInt64(0x0102030405060708LL))}, LmFormatBig),
              (Bytes{0, 5, 6, 7, 8, 1, 2, 3, 4}));
    EXPECT_EQ(Stored<double>(LmNULL_DOUBLE_T, {Of(1.0)}, LmFormatLittle), (Bytes{0, 0, 0, 0, 0, 0, 0, 0xF0, 0x3F}));
    int status = 0;
    Bytes one = Stored<int32_t>(LmNULL_INT_T, {Of(1), Null<int32_t>()}, LmFormatLittle);
    EXPECT_EQ(mgr.Hash(LmNULL_INT_T, 0, one.data(), 1, LmFormatLittle, status), 0x41C64E6Du);
    EXPECT_EQ(mgr.Hash(LmNULL_INT_T, 0, one.data(), 2, LmFormatLittle, status), 0xBF383B18u);
    // o_8b hashes its low word alone, LmInt64 low XOR high.
    Bytes wide = Stored<int64_t>(LmNULL_8B_T, {Of(int64_t{0x100000001})}, LmFormatLittle);
    Bytes words = Stored<LmInt64>(LmNULL_LMINT64_T, {Of(LmInt64(0x100000001LL))}, LmFormatLittle);
    EXPECT_EQ(mgr.Hash(LmNULL_8B_T, 0, wide.data(), 1, LmFormatLittle, status), 0x41C64E6Du);
    EXPECT_EQ(mgr.Hash(LmNULL_LMINT64_T, 0, words.data(), 1, LmFormatLittle, status), 0u);
}

// Bytes from a page: a cut record reads what is present, its missing value bytes as
// 0; data that ends while elements remain is status 2101. Blocks are exactly as
// long as the length given.
TEST(Nullable, CutRecordsAndTheWalk) {
    const auto cmp = [](Bytes a, Bytes b, unsigned count, int& status) {
        std::unique_ptr<uint8_t[]> left(new uint8_t[a.size()]), right(new uint8_t[b.size()]);
        std::memcpy(left.get(), a.data(), a.size());
        std::memcpy(right.get(), b.data(), b.size());
        return mgr.Cmp(LmNULL_INT_T, static_cast<unsigned>(a.size()), left.get(), static_cast<unsigned>(b.size()),
                       right.get(), 0, count, LmFormatLittle, status);
    };
    int status = -1;
    EXPECT_EQ(cmp({0, 5, 0}, {0, 5, 0, 0, 0}, 1, status), 0);
    EXPECT_EQ(cmp({0}, {0, 1, 0, 0, 0}, 1, status), -1);
    EXPECT_EQ(cmp({1}, {1, 9, 9, 9, 9}, 1, status), 0);
    EXPECT_EQ(cmp({2}, {1}, 1, status), 1);  // a flag of 2 is a value, above a null
    EXPECT_EQ(cmp({0, 5, 0, 0, 0}, {0, 5, 0, 0, 0, 0, 6, 0, 0, 0}, 2, status), 0);
    EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
    EXPECT_EQ(cmp({0, 5, 0, 0, 0, 1}, {0, 5, 0, 0, 0, 0, 6, 0, 0, 0}, 2, status), -1);
    EXPECT_EQ(status, LM_OK);
    Bytes cut = {0, 1, 0};
    std::unique_ptr<uint8_t[]> block(new uint8_t[3]);
    std::memcpy(block.get(), cut.data(), 3);
    EXPECT_EQ(mgr.Hash(LmNULL_INT_T, 3, block.get(), 2, LmFormatLittle, status), 0x41C64E6Du);
    EXPECT_EQ(status, LM_ERR_OUT_OF_DATA);
}

std::string lastReport;
void Report(const char* message, const char* stem, int) { lastReport = std::string(message) + " in " + stem; }

TEST(Nullable, RelationOfTwoFlags) {
    EXPECT_EQ(LmNullRelationOf(1, 1), LmNullRelation::equal);
    EXPECT_EQ(LmNullRelationOf(-1, 0), LmNullRelation::less);     // any left flag but 0
    EXPECT_EQ(LmNullRelationOf(0, -1), LmNullRelation::unknown);  // a right flag only above 0
    EXPECT_EQ(LmNullRelationOf(0, 2), LmNullRelation::greater);
    const LmAssertHandler previous = LmSetAssertHandler(Report);
    EXPECT_EQ(LmNullRelationNumber(static_cast<LmNullRelation>(7)), -2);
    EXPECT_EQ(lastReport, "");
    EXPECT_EQ(LmNullRelationNumber(LmNullRelation::unknown), -2);
    EXPECT_EQ(lastReport, "nr != unknown in lmcore\\inc\\_lmnulty");
    LmSetAssertHandler(previous);
    EXPECT_EQ(LmNullRelationNumber(LmNullRelation::greater), 1);
}

}  // namespace
