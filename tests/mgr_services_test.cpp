// The manager's value services: stepping values to the next key in memory and on
// disk, the null fallback, time stamps, printing and scanning through the manager.
#include <cmath>
#include <limits>

#include "testkit.h"

namespace {

using lmtest::Bytes;
using Result = std::pair<int, uint64_t>;  // status, the value's bytes least significant first
const LmTypeMgr mgr(5);
constexpr unsigned char kOddModes[] = {2, 0, 'A', 'n'}, kModes[] = {'M', 'N', 'O'}, kKeyRefused[] = {1, 2, 8};

// A memory value of `width` bytes through the slot itself, where mode 2 is reachable.
Result SlotStep(char id, unsigned width, uint64_t bits, unsigned char mode, unsigned char format = 8) {
    unsigned char buffer[8] = {};
    std::memcpy(buffer, &bits, width);
    const int status = mgr.Desc(id)->GetValue(buffer, width, format, mode);
    uint64_t out = 0;
    std::memcpy(&out, buffer, width);
    return {status, out};
}

template <typename T>
std::pair<int, T> Next(char id, T x, unsigned char mode = 'N') {
    const int status = mgr.GetValue(id, &x, sizeof x, 8, mode);
    return {status, x};
}

Bytes DiskStep(char id, Bytes image, unsigned char format, int expected, unsigned char mode = 'N') {
    EXPECT_EQ(mgr.GetValue(id, image.data(), static_cast<unsigned>(image.size()), format, mode), expected);
    return image;
}

TEST(MgrGetValue, IntegersAtTheirLimits) {
    struct Row {
        char id;
        unsigned width;
        uint64_t smallest, largest;
    };
    const Row rows[] = {{Lm1B_T, 1, 0x80, 0x7F},
                        {LmU1B_T, 1, 0, 0xFF},
                        {Lm2B_T, 2, 0x8000, 0x7FFF},
                        {LmU2B_T, 2, 0, 0xFFFF},
                        {Lm4B_T, 4, 0x80000000u, 0x7FFFFFFFu},
                        {LmINT_T, 4, 0x80000000u, 0x7FFFFFFFu},
                        {LmU4B_T, 4, 0, 0xFFFFFFFFu},
                        {LmUNSIGNED_T, 4, 0, 0xFFFFFFFFu},
                        {LmBLOCKID_T, 4, 0, 0xFFFFFFFFu},
                        {Lm8B_T, 8, 0x8000000000000000ull, 0x7FFFFFFFFFFFFFFFull},
                        {LmU8B_T, 8, 0, ~0ull}};
    for (const Row& r : rows) {
        SCOPED_TRACE(static_cast<int>(r.id));
        EXPECT_EQ(SlotStep(r.id, r.width, r.largest, 2), Result(0, r.smallest));
        EXPECT_EQ(SlotStep(r.id, r.width, r.smallest, 'N'), Result(0, r.smallest + 1));
        EXPECT_EQ(SlotStep(r.id, r.width, r.largest - 1, 'M'), Result(0, r.largest));
        EXPECT_EQ(SlotStep(r.id, r.width, r.largest, 'N'), Result(2091, r.largest));  // wraps: not greater
        EXPECT_EQ(SlotStep(r.id, r.width, 5, 'O'), Result(0, 5));
        EXPECT_EQ(SlotStep(r.id, r.width, 5, 'N', 1), Result(-2999, 5));  // slots take format 8 only
        EXPECT_EQ(SlotStep(r.id, r.width, 5, 'X'), Result(-2999, 5));
    }
    EXPECT_EQ(Next<int8_t>(Lm1B_T, -1), std::make_pair(0, int8_t{0}));
    EXPECT_EQ(Next<int64_t>(Lm8B_T, -1, 'M'), std::make_pair(0, int64_t{0}));
    // Through the manager mode 2 and unknown modes are refused before the value is
    // looked at; 'O' keeps the value; enum never steps while int does.
    for (unsigned char mode : kOddModes) EXPECT_EQ(mgr.GetValue(Lm4B_T, nullptr, 0, 8, mode), -2999);
    EXPECT_EQ(Next<int32_t>(Lm4B_T, 0x7FFFFFFF), std::make_pair(2091, int32_t{0x7FFFFFFF}));
    EXPECT_EQ(Next<int32_t>(Lm4B_T, 41, 'O'), std::make_pair(0, int32_t{41}));
    EXPECT_EQ(Next<int32_t>(LmINT_T, 41), std::make_pair(0, int32_t{42}));
    for (unsigned char mode : kModes) EXPECT_EQ(Next<int32_t>(LmENUM_T, 41, mode), std::make_pair(-2999, 41));
    EXPECT_EQ(SlotStep(LmENUM_T, 4, 41, 2), Result(-2999, 41));
    EXPECT_EQ(DiskStep(LmENUM_T, {41, 0, 0, 0}, 1, -2999), (Bytes{41, 0, 0, 0}));
}

TEST(MgrGetValue, NextFloatValue) {
    constexpr double inf = std::numeric_limits<double>::infinity();
    // 0 jumps the subnormals; 1 gains one unit in the last place (2^-52); -2 leaves its
    // binade with 2^-51, so the half step 2^-52 of the binade below decides.
    EXPECT_EQ(Next(LmDOUBLE_T, 0.0), std::make_pair(0, 2.2250738585072014e-308));
    EXPECT_EQ(Next(LmDOUBLE_T, 1.0), std::make_pair(0, 1.0000000000000002));
    EXPECT_EQ(Next(LmDOUBLE_T, -2.0), std::make_pair(0, -1.9999999999999998));
    EXPECT_EQ(Next(LmDOUBLE_T, -1.0, 'M'), std::make_pair(0, -0x1.fffffffffffffp-1));
    EXPECT_EQ(Next(LmDOUBLE_T, 0x1p-1074), std::make_pair(0, 0x1p-1022));  // a subnormal: MIN
    EXPECT_EQ(Next(LmDOUBLE_T, -0x1p-1022), std::make_pair(0, 0.0));       // -MIN: 0
    EXPECT_EQ(Next(LmDOUBLE_T, -inf), std::make_pair(0, -1.7976931348623157e308));
    EXPECT_EQ(Next(LmDOUBLE_T, inf), std::make_pair(2091, inf));
    EXPECT_EQ(Next(LmDOUBLE_T, 1.7976931348623157e308).first, 2091);
    EXPECT_EQ(Next(LmDOUBLE_T, std::nan("")).first, 2091);
    EXPECT_EQ(Next(LmDOUBLE_T, 1.0, 'O'), std::make_pair(-2999, 1.0));
    // The float twins: MIN 2^-126, one unit 2^-23 above 1, -2 + 2^-23 below -2.
    constexpr float finf = std::numeric_limits<float>::infinity();
    EXPECT_EQ(Next(LmFLOAT_T, 0.0f), std::make_pair(0, 1.17549435e-38f));
    EXPECT_EQ(Next(LmFLOAT_T, 1.0f), std::make_pair(0, 1.00000011920928955078125f));
    EXPECT_EQ(Next(LmFLOAT_T, -2.0f), std::make_pair(0, -1.99999988079071044921875f));
    EXPECT_EQ(Next(LmFLOAT_T, -finf), std::make_pair(0, -3.40282347e38f));
    EXPECT_EQ(Next(LmFLOAT_T, finf), std::make_pair(2091, finf));
    EXPECT_EQ(Next(LmFLOAT_T, 3.40282347e38f).first, 2091);
    EXPECT_EQ(Next(LmFLOAT_T, 1.0f, 'O').first, -2999);
    // Mode 2: a negative quiet NaN, the lowest value of their order.
    EXPECT_EQ(SlotStep(LmDOUBLE_T, 8, 0, 2), Result(0, 0xFFF8000000000000ull));
    EXPECT_EQ(SlotStep(LmFLOAT_T, 4, 0, 2), Result(0, 0xFFC00000u));
}

TEST(MgrGetValue, DiskImagesAndStringKeys) {
    // Formats 1 and 0x81 keep bit 0: loaded and stored least significant byte first.
    EXPECT_EQ(DiskStep(Lm4B_T, {5, 0, 0, 0}, 1, 0), (Bytes{6, 0, 0, 0}));
    EXPECT_EQ(DiskStep(Lm4B_T, {0xFF, 0, 0, 0}, 0x81, 0), (Bytes{0, 1, 0, 0}));
    EXPECT_EQ(DiskStep(Lm4B_T, {0xFF, 0xFF, 0xFF, 0x7F}, 1, 2091), (Bytes{0xFF, 0xFF, 0xFF, 0x7F}));
    EXPECT_EQ(DiskStep(Lm4B_T, {9, 0, 0, 0}, 1, 0, 'O'), (Bytes{9, 0, 0, 0}));
    // 5 most significant byte first, read through 0x81 (and 2, which becomes 0) as
    // 0x05000000: the low byte, which is the first one, grows.
    EXPECT_EQ(DiskStep(Lm4B_T, {0, 0, 0, 5}, 0x81, 0), (Bytes{1, 0, 0, 5}));
    EXPECT_EQ(DiskStep(Lm4B_T, {0, 0, 0, 5}, 2, 0), (Bytes{1, 0, 0, 5}));
    // 1.0 becomes 0x3FF0000000000001; 0.0f becomes 0x00800000.
    EXPECT_EQ(DiskStep(LmDOUBLE_T, {0, 0, 0, 0, 0, 0, 0xF0, 0x3F}, 1, 0), (Bytes{1, 0, 0, 0, 0, 0, 0xF0, 0x3F}));
    EXPECT_EQ(DiskStep(LmFLOAT_T, {0, 0, 0, 0}, 0x81, 0), (Bytes{0, 0, 0x80, 0}));
    EXPECT_EQ(DiskStep(LmDOUBLE_T, Bytes(8, 0), 1, -2999, 'O'), Bytes(8, 0));
    // A buffer shorter than the image is not read; a type without Create is refused.
    EXPECT_EQ(DiskStep(Lm4B_T, {5, 0, 0}, 1, -2999), (Bytes{5, 0, 0}));
    EXPECT_EQ(DiskStep(static_cast<char>(100), {5, 0, 0, 0}, 1, -2999), (Bytes{5, 0, 0, 0}));
    // Id 11 hands every format to the key step as it stands: only 0x81 is taken.
    const Bytes ab = {0x06, 0, 0, 0, 'a', 'b', 0, 0xFF, 0xEE, 0xEE};
    EXPECT_EQ(DiskStep(LmSTRING_T, ab, 0x81, 0), (Bytes{0x07, 0, 0, 0, 'a', 'b', 'a', 0, 0xFF, 0xEE}));
    for (unsigned char format : kKeyRefused) EXPECT_EQ(DiskStep(LmSTRING_T, ab, format, -2999), ab);
    EXPECT_EQ(DiskStep(LmSTRING_T, ab, 0x81, -2999, 'O'), ab);
}

TEST(MgrServices, NullStampPrintAndScan) {
    // No null of their own: the zero they convert from an empty text.
    int32_t v = 77;
    double d = 2.5;
    EXPECT_EQ(mgr.SupportsNullValue(Lm4B_T), 0);
    EXPECT_EQ(std::make_pair(mgr.SetNullValue(Lm4B_T, &v), v), std::make_pair(0, 0));
    EXPECT_EQ(std::make_pair(mgr.SetNullValue(LmDOUBLE_T, &d), d), std::make_pair(0, 0.0));
    EXPECT_EQ(mgr.SetNullValue(static_cast<char>(100), &v), 0);
    LmString s("abc");
    EXPECT_EQ(mgr.SetNullValue(LmSTRING_T, &s), 0);  // its own slot
    EXPECT_TRUE(s.IsNullValue());
    // No stamp, no call; the rows without a source hand their Store slot a null one.
    unsigned char dest[16] = {};
    EXPECT_EQ(mgr.StoreTimeStamp(LmDATIME_N_T, dest, 1, nullptr), -2999);
    EXPECT_EQ(mgr.StoreTimeStamp(static_cast<char>(100), dest, 1, dest + 8), 0);

    // An array print appends "1,2,3"; one element replaces what out held.
    int32_t values[3] = {1, 2, 3};
    LmString out("x=");
    EXPECT_STREQ(mgr.PrintToLmString(Lm4B_T, out, values, nullptr, 3).StrGet(), "x=1,2,3");
    EXPECT_STREQ(mgr.PrintToLmString(Lm4B_T, out, values + 2, nullptr, 1).StrGet(), "3");
    // The character printer gets the whole array in one call.
    char chars[3] = {'a', 'b', 'c'};
    EXPECT_STREQ(mgr.PrintToLmString(Lm1B_T, out, chars, nullptr, 3).StrGet(), "abc");
    LmString text("-12");
    EXPECT_EQ(mgr.ScanFromLmString(Lm4B_T, &v, text, nullptr, 1), &v);
    EXPECT_EQ(v, -12);
    EXPECT_STREQ(LmTypeMgr::GetNullPrintString().StrGet(), "{NULL}");
}

}  // namespace
