// The handlers of LmString (id 11): the life cycle of string arrays, the comparison
// of stored records and index keys read in place (cut keys, mixed families, the old
// form), the hash codes, printing with the order tokens, scanning of the null print
// string and the successor step of a key. Every disk image below is written out by
// hand, and every hash code is worked out from the order words: a letter's key is
// family << 24 | (order & 0x407F) << 8 | (order >> 7) & 0x7F, and a text hashes as
// h = h * 9 + key over its words, the element hashes combined by exclusive or and
// multiplied by 1103515245 at the end, all modulo 2^32.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "lumotypes.h"

// Every allocation through operator new is counted, the library's included, so that
// a test can check that comparing and hashing stored keys allocates nothing.
namespace {
long allocations = 0;
}

[[gnu::noinline]] void* operator new(std::size_t n) {
    ++allocations;
    if (void* p = std::malloc(n != 0 ? n : 1)) return p;
    throw std::bad_alloc();
}
void* operator new(std::size_t n, const std::nothrow_t&) noexcept {
    ++allocations;
    return std::malloc(n != 0 ? n : 1);
}
// Not inlined: the compiler would otherwise see free() meet operator new, or malloc()
// meet operator delete.
[[gnu::noinline]] void operator delete(void* p) noexcept { std::free(p); }
[[gnu::noinline]] void operator delete(void* p, std::size_t) noexcept { std::free(p); }

namespace {

using Bytes = std::vector<uint8_t>;

constexpr unsigned short kWild = 0;                    // every level, wildcards active
constexpr unsigned short kPlain = LM_CMP_NO_WILDCARD;  // every level, no wildcards
constexpr unsigned char kOrderLittle = 0x81;           // order form, least significant byte first
constexpr int kOut = LM_ERR_OUT_OF_DATA;
constexpr uint32_t kMultiplier = 1103515245u;

// ---- Hand-made images. Order words: a 0x500C, b 0x5010, c 0x5014, d 0x5018, the
// asterisk 0x009F; e with accent acute 0x511C. ----

// Current form, code set 1, language 1: L, code set, language, text, 00 FF.
const Bytes kABC = {0x07, 0x00, 0x01, 0x01, 'a', 'b', 'c', 0x00, 0xFF};
const Bytes kABD = {0x07, 0x00, 0x01, 0x01, 'a', 'b', 'd', 0x00, 0xFF};
const Bytes kABCBig = {0x00, 0x07, 0x01, 0x01, 'a', 'b', 'c', 0x00, 0xFF};
// Code set 253: 16-bit units in the store byte order; the closing bytes stay 00 FF.
const Bytes kABCUnicode = {0x0A, 0x00, 0xFD, 0x01, 'a', 0, 'b', 0, 'c', 0, 0x00, 0xFF};
const Bytes kABCUnicodeBig = {0x00, 0x0A, 0xFD, 0x01, 0, 'a', 0, 'b', 0, 'c', 0x00, 0xFF};
// The null value.
const Bytes kNull = {0x04, 0x00, 0x00, 0xFE, 0x00, 0xFF};

// Order form, family 1.
const Bytes kKeyAB = {0x08, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x10, 0x50, 0x00, 0xFF};
const Bytes kKeyABC = {0x0A, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x10, 0x50, 0x14, 0x50, 0x00, 0xFF};
const Bytes kKeyABCD = {0x0C, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x10, 0x50, 0x14, 0x50, 0x18, 0x50, 0x00, 0xFF};
const Bytes kKeyABStar = {0x0A, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x10, 0x50, 0x9F, 0x00, 0x00, 0xFF};
// Cut short: no 00 FF, and L counts as though they stood there.
const Bytes kCutA = {0x06, 0x00, 0xFE, 0x01, 0x0C, 0x50};
const Bytes kCutABC = {0x0A, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x10, 0x50, 0x14, 0x50};
const Bytes kCutABD = {0x0A, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x10, 0x50, 0x18, 0x50};
const Bytes kCutABCStar = {0x0C, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x10, 0x50, 0x14, 0x50, 0x9F, 0x00};
// Cut at a change of family: the family byte carries the mix flag 0x80.
const Bytes kMixedAB = {0x08, 0x00, 0xFE, 0x81, 0x0C, 0x50, 0x10, 0x50, 0x00, 0xFF};

// Old form: T, then the strings, each ended by a zero byte.
const Bytes kOldABC = {0x04, 0x00, 'a', 'b', 'c', 0x00};
const Bytes kOldABD = {0x04, 0x00, 'a', 'b', 'd', 0x00};

// ---- Hash codes worked out by hand. ----
// "abc" in family 1: keys 0x01400C20, 0x01401020, 0x01401420;
// h = ((0x01400C20 * 9) + 0x01401020) * 9 + 0x01401420 = 0x71C47B60.
constexpr uint32_t kWordsABC = 0x71C47B60u;
constexpr uint32_t kHashABC = 0x1A7FC7E0u;   // 0x71C47B60 * 1103515245
constexpr uint32_t kHashNull = 0xA79FA8D1u;  // 0xFEFE7575 * 1103515245
// Native bytes: ((0x61 * 9) + 0x62) * 9 + 0x63 = 8838.
constexpr uint32_t kBytesABC = 8838u;
constexpr uint32_t kHashNativeABC = 0xC437870Eu;   // 8838 * 1103515245
constexpr uint32_t kHashABCAndNull = 0xE54064F1u;  // (0x71C47B60 ^ 0xFEFE7575) * 1103515245

static_assert(kWordsABC * kMultiplier == kHashABC);
static_assert(0xFEFE7575u * kMultiplier == kHashNull);
static_assert(kBytesABC * kMultiplier == kHashNativeABC);
static_assert((kWordsABC ^ 0xFEFE7575u) * kMultiplier == kHashABCAndNull);

struct Answer {
    int result;
    int status;
};

int Sign(int v) { return (v > 0) - (v < 0); }

struct Free {
    void operator()(uint8_t* p) const { std::free(p); }
};
using Block = std::unique_ptr<uint8_t[], Free>;

// A heap copy of exactly these bytes, so that the address sanitizer sees a read past them.
Block Exact(const Bytes& bytes) {
    Block p(static_cast<uint8_t*>(std::malloc(bytes.size() != 0 ? bytes.size() : 1)));
    if (!bytes.empty()) std::memcpy(p.get(), bytes.data(), bytes.size());
    return p;
}

// Compares stored images through the Cmp slot of a factory level (5 current, 3 legacy).
// The lengths are the images' sizes unless given; the status starts at -1.
Answer Cmp(unsigned level, const Bytes& a, const Bytes& b, unsigned short option = kPlain,
           unsigned char format = kOrderLittle, unsigned count = 1, int len1 = -1, int len2 = -1) {
    const LmTypeCmpFunc cmp = LmTypeMgr(level).CmpFuncPtrGet(LmSTRING_T);
    auto x = Exact(a);
    auto y = Exact(b);
    int status = -1;
    const int result =
        cmp(format, len1 < 0 ? static_cast<unsigned>(a.size()) : static_cast<unsigned>(len1), x.get(),
            len2 < 0 ? static_cast<unsigned>(b.size()) : static_cast<unsigned>(len2), y.get(), option, count, status);
    return {Sign(result), status};
}

struct HashAnswer {
    unsigned hash;
    int status;
};

HashAnswer Hash(unsigned level, const Bytes& image, unsigned char format, unsigned count = 1, int len = -1) {
    auto x = Exact(image);
    int status = -1;
    const unsigned h = LmTypeMgr(level).Hash(LmSTRING_T, len < 0 ? static_cast<unsigned>(image.size()) : unsigned(len),
                                             x.get(), count, format, status);
    return {h, status};
}

Bytes Concat(std::initializer_list<Bytes> parts) {
    Bytes out;
    for (const Bytes& part : parts) out.insert(out.end(), part.begin(), part.end());
    return out;
}

// An LmString holding raw units in a code set of its own choice (order words, 16-bit text).
LmString Raw(unsigned char codeSet, unsigned char language, const uint16_t* units) {
    LmString s(codeSet, language);
    LmStringAssignRaw(s, units, codeSet, 65535, LmFormatLittle);
    return s;
}

LmString Latin(const char* text) {
    LmString s(1, 1);
    LmStringAssignRaw(s, text, 1, 65535, LmFormatLittle);
    return s;
}

std::string Text(const LmString& s) { return std::string(s.StrGet()); }

// ---------------------------------------------------------------------------
// Life cycle.
// ---------------------------------------------------------------------------

TEST(StringLifeCycle, CreateAndDeleteSinglesAndBlocks) {
    const LmTypeMgr mgr(5);
    for (unsigned count : {0u, 1u}) {
        auto* one = static_cast<LmString*>(mgr.Create(LmSTRING_T, count));
        ASSERT_NE(one, nullptr);
        EXPECT_EQ(one->GetSize(), 0);
        EXPECT_EQ(one->GetCodeSet(), LmString::GetDefaultCodeSet());
        *one = "text";
        EXPECT_EQ(mgr.Delete(LmSTRING_T, one, count), nullptr);
    }

    // Several: the count stands in the 8 bytes in front of the strings.
    auto* three = static_cast<LmString*>(mgr.Create(LmSTRING_T, 3));
    ASSERT_NE(three, nullptr);
    uint64_t word = 0;
    std::memcpy(&word, reinterpret_cast<unsigned char*>(three) - 8, sizeof word);
    EXPECT_EQ(word, 3u);
    three[0] = "first";
    three[1] = "second";
    three[2] = "third";
    EXPECT_EQ(Text(three[2]), "third");
    EXPECT_EQ(mgr.Delete(LmSTRING_T, three, 3), nullptr);  // the sanitizer checks that all three buffers went
    EXPECT_EQ(mgr.Delete(LmSTRING_T, nullptr, 3), nullptr);

    // The legacy record shares the life cycle, print and scan.
    const LmTypeDesc* current = LmTypeMgr(5).Desc(LmSTRING_T);
    const LmTypeDesc* legacy = LmTypeMgr(3).Desc(LmSTRING_T);
    EXPECT_NE(current, legacy);
    EXPECT_EQ(legacy->Create, current->Create);
    EXPECT_EQ(legacy->Delete, current->Delete);
    EXPECT_EQ(legacy->Copy, current->Copy);
    EXPECT_EQ(legacy->PrintToString, current->PrintToString);
    EXPECT_EQ(legacy->ScanFromString, current->ScanFromString);
    EXPECT_NE(legacy->Cmp, current->Cmp);
    EXPECT_NE(legacy->Hash, current->Hash);
    EXPECT_EQ(legacy->SetNullValue, nullptr);
    EXPECT_EQ(current->Cmp, StringCompare);
    EXPECT_EQ(legacy->Cmp, StringCompareLegacy);
}

TEST(StringLifeCycle, ConstructAssignCopyAndDestroyInPlace) {
    const LmTypeMgr mgr(5);
    alignas(LmString) unsigned char raw[3 * sizeof(LmString)];
    alignas(LmString) unsigned char copies[3 * sizeof(LmString)];
    auto* strings = reinterpret_cast<LmString*>(raw);
    auto* copied = reinterpret_cast<LmString*>(copies);

    mgr.ConstructorPtrGet(LmSTRING_T)(raw, 3, 0);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(strings[i].GetSize(), 0);

    // Element by element, then one source for all.
    LmString sources[3] = {Latin("x"), Latin("yy"), LmString(253, 7)};
    mgr.AssignmentPtrGet(LmSTRING_T)(raw, sources, 3, 0);
    EXPECT_EQ(Text(strings[0]), "x");
    EXPECT_EQ(Text(strings[1]), "yy");
    EXPECT_EQ(strings[2].GetCodeSet(), 253);
    EXPECT_EQ(strings[2].GetLanguage(), 7);
    mgr.AssignmentPtrGet(LmSTRING_T)(raw, sources + 1, 3, 1);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(Text(strings[i]), "yy");

    // Copy constructs on raw memory: each copy has a buffer of its own.
    mgr.CopyPtrGet(LmSTRING_T)(copies, raw, 3, 0);
    strings[1] = "changed";
    EXPECT_EQ(Text(copied[1]), "yy");
    mgr.DestructorPtrGet(LmSTRING_T)(copies, 3, 0);
    mgr.CopyPtrGet(LmSTRING_T)(copies, sources, 3, 1);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(Text(copied[i]), "x");

    mgr.DestructorPtrGet(LmSTRING_T)(copies, 3, 0);
    mgr.DestructorPtrGet(LmSTRING_T)(raw, 3, 0);
}

// ---------------------------------------------------------------------------
// Comparison.
// ---------------------------------------------------------------------------

TEST(StringCompare, WholeRecordsInEveryForm) {
    // Current form in both byte orders; 16-bit and 8-bit texts with the same letters
    // have the same keys.
    EXPECT_EQ(Cmp(5, kABC, kABD, kPlain, 1).result, -1);
    EXPECT_EQ(Cmp(5, kABD, kABC, kPlain, 1).result, 1);
    EXPECT_EQ(Cmp(5, kABC, kABC, kPlain, 1).status, 0);
    EXPECT_EQ(Cmp(5, kABCBig, kABCBig, kPlain, 2).result, 0);
    EXPECT_EQ(Cmp(5, kABCUnicode, kABC, kPlain, 1).result, 0);
    EXPECT_EQ(Cmp(5, kABCUnicodeBig, kABCBig, kPlain, 2).result, 0);
    EXPECT_EQ(Cmp(5, kABCUnicode, kABD, kPlain, 1).result, -1);
    // Lengths of 0 are "all".
    EXPECT_EQ(Cmp(5, kABC, kABD, kPlain, 1, 1, 0, 0).result, -1);
    // Order-form keys, and a record against the key of the same text.
    EXPECT_EQ(Cmp(5, kKeyABC, kKeyABCD).result, -1);
    EXPECT_EQ(Cmp(5, kKeyABC, kKeyABC).result, 0);
    EXPECT_EQ(Cmp(5, kABC, kKeyABC).result, 0);
    EXPECT_EQ(Cmp(5, kKeyABCD, kABC).result, 1);
    // The null value sorts first; two nulls are equal.
    EXPECT_EQ(Cmp(5, kNull, kABC, kPlain, 1).result, -1);
    EXPECT_EQ(Cmp(5, kABC, kNull, kPlain, 1).result, 1);
    EXPECT_EQ(Cmp(5, kNull, kNull, kPlain, 1).result, 0);
    // Old form: no labels, read as native bytes.
    EXPECT_EQ(Cmp(5, kOldABC, kOldABD, kPlain, 1).result, -1);
    EXPECT_EQ(Cmp(3, kOldABC, kOldABD, kPlain, 1).result, -1);
    EXPECT_EQ(Cmp(3, kOldABC, kOldABC, kPlain, 1).result, 0);

    // Memory form, exactly format 8.
    LmString m[2] = {Latin("abc"), Latin("abd")};
    int status = -1;
    EXPECT_EQ(Sign(StringCompare(8, 0, &m[0], 0, &m[1], kPlain, 1, status)), -1);
    EXPECT_EQ(Sign(StringCompare(8, 0, &m[1], 0, &m[0], kPlain, 1, status)), 1);
    EXPECT_EQ(status, 0);
    // A pattern on the right matches in memory too; code sets do not matter.
    LmString pattern = Latin("ab*");
    EXPECT_EQ(StringCompare(8, 0, &m[1], 0, &pattern, kWild, 1, status), 0);
    EXPECT_NE(StringCompare(8, 0, &m[1], 0, &pattern, kPlain, 1, status), 0);
    const uint16_t wide[] = {'a', 'b', 'c', 0};
    LmString unicode = Raw(253, 1, wide);
    EXPECT_EQ(StringCompare(8, 0, &m[0], 0, &unicode, kPlain, 1, status), 0);
    EXPECT_EQ(Sign(StringCompare(8, 0, &m[1], 0, &unicode, kPlain, 1, status)), 1);

    // Count 0: 0 and status 0, the operands unread.
    status = -1;
    EXPECT_EQ(StringCompare(1, 0, nullptr, 0, nullptr, kPlain, 0, status), 0);
    EXPECT_EQ(status, 0);
}

TEST(StringCompare, CutKeysAndTheirBounds) {
    // Left cut (its last two bytes missing), right whole and longer: equal within the
    // three words present, undecided behind them.
    Answer r = Cmp(5, kCutABC, kKeyABCD);
    EXPECT_EQ(r.result, 0);
    EXPECT_EQ(r.status, kOut);
    r = Cmp(5, kCutABC, kKeyABCD, kWild);  // no asterisk on the right: the same
    EXPECT_EQ(r.result, 0);
    EXPECT_EQ(r.status, kOut);
    // A difference within the words present decides; the status still says the
    // data ended.
    r = Cmp(5, kCutABD, kKeyABCD);
    EXPECT_EQ(r.result, 1);
    EXPECT_EQ(r.status, kOut);
    // The right is shorter than what the left holds: decided, no status.
    r = Cmp(5, kCutABC, kKeyAB);
    EXPECT_EQ(r.result, 1);
    EXPECT_EQ(r.status, 0);
    // Skipping spaces always reports the cut, and the primary difference is the result.
    r = Cmp(5, kCutABC, kKeyAB, kPlain | LM_CMP_SKIP_SPACES);
    EXPECT_EQ(r.result, 1);
    EXPECT_EQ(r.status, kOut);
    // 0xFFFF is the process-wide default option, here one that skips spaces.
    const unsigned short saved = LmString::GetDefaultCmpOp();
    LmString::SetDefaultCmpOp(kWild);
    EXPECT_EQ(Cmp(5, kCutABC, kKeyAB, LM_CMP_DEFAULT).status, 0);
    LmString::SetDefaultCmpOp(LM_CMP_SKIP_SPACES);
    EXPECT_EQ(Cmp(5, kCutABC, kKeyAB, LM_CMP_DEFAULT).status, kOut);
    LmString::SetDefaultCmpOp(saved);

    // Right cut: the mirror rules.
    r = Cmp(5, kKeyABCD, kCutABC);
    EXPECT_EQ(r.result, 0);
    EXPECT_EQ(r.status, kOut);
    r = Cmp(5, kKeyAB, kCutABC);
    EXPECT_EQ(r.result, -1);
    EXPECT_EQ(r.status, 0);
    // A cut "Abc" differs from "abcd" in case only: with spaces skipped the primary
    // difference, 0, is the result.
    const Bytes cutUpperABC = {0x0A, 0x00, 0xFE, 0x01, 0x0C, 0x40, 0x10, 0x50, 0x14, 0x50};
    r = Cmp(5, cutUpperABC, kKeyABCD);
    EXPECT_EQ(r.result, 1);
    EXPECT_EQ(r.status, kOut);
    r = Cmp(5, cutUpperABC, kKeyABCD, kPlain | LM_CMP_SKIP_SPACES);
    EXPECT_EQ(r.result, 0);
    EXPECT_EQ(r.status, kOut);

    // Both cut: always reported, compared over the shorter.
    r = Cmp(5, kCutA, kCutABC);
    EXPECT_EQ(r.result, 0);
    EXPECT_EQ(r.status, kOut);
    r = Cmp(5, kCutABD, kCutABC);
    EXPECT_EQ(r.result, 1);
    EXPECT_EQ(r.status, kOut);
    r = Cmp(5, kCutABC, kCutA);  // the right holds one word: only that one is read
    EXPECT_EQ(r.result, 0);
    EXPECT_EQ(r.status, kOut);

    // A cut text of characters ends where its bytes end: in traditional Spanish "ch"
    // is one letter after "c", and the 'h' behind the length is not read.
    const Bytes spanish = {0x08, 0x00, 0x01, 0x04, 'a', 'b', 'c', 'h', 0x00, 0xFF};
    r = Cmp(5, Bytes(spanish.begin(), spanish.begin() + 7), spanish, kPlain, 1);
    EXPECT_EQ(r.result, -1);
    EXPECT_EQ(r.status, kOut);
    r = Cmp(5, spanish, spanish, kPlain, 1, 1, 7, 10);
    EXPECT_EQ(r.result, -1);
    EXPECT_EQ(r.status, kOut);
    EXPECT_EQ(Cmp(5, spanish, spanish, kPlain, 1).result, 0);

    // Only the final byte missing (state 1): the text is whole.
    r = Cmp(5, kKeyABC, kKeyABC, kPlain, kOrderLittle, 1, 11, 12);
    EXPECT_EQ(r.result, 0);
    EXPECT_EQ(r.status, 0);
    r = Cmp(5, kABC, kABC, kPlain, 1, 1, 8, 9);
    EXPECT_EQ(r.result, 0);
    EXPECT_EQ(r.status, 0);
}

TEST(StringCompare, CutKeysAgainstPatterns) {
    // A cut pattern "abc*" against the whole "ab": the limit is the left's two
    // characters, which match; the left is shorter than the pattern's fixed part.
    Answer r = Cmp(5, kKeyAB, kCutABCStar, kWild);
    EXPECT_EQ(r.result, -1);
    EXPECT_EQ(r.status, kOut);
    // Without wildcards the right is compared over its four words: "ab" ends first,
    // which decides.
    r = Cmp(5, kKeyAB, kCutABCStar, kPlain);
    EXPECT_EQ(r.result, -1);
    EXPECT_EQ(r.status, 0);

    // A cut left within the fixed part of "ab*", the asterisk last: decided.
    r = Cmp(5, kCutABC, kKeyABStar, kWild);
    EXPECT_EQ(r.result, 0);
    EXPECT_EQ(r.status, 0);
    // ... not so with spaces skipped, nor when the left ends before the asterisk.
    r = Cmp(5, kCutABC, kKeyABStar, kWild | LM_CMP_SKIP_SPACES);
    EXPECT_EQ(r.status, kOut);
    r = Cmp(5, kCutA, kKeyABStar, kWild);
    EXPECT_EQ(r.result, 0);
    EXPECT_EQ(r.status, kOut);
}

TEST(StringCompare, MixedFamilyKeys) {
    // The mix flag is cleared before comparing and reported in the status.
    Answer r = Cmp(5, kMixedAB, kKeyAB);
    EXPECT_EQ(r.result, 0);
    EXPECT_EQ(r.status, LM_NOTE_ORDER_FIRST);
    r = Cmp(5, kKeyAB, kMixedAB);
    EXPECT_EQ(r.result, 0);
    EXPECT_EQ(r.status, LM_NOTE_ORDER_SECOND);
    r = Cmp(5, kMixedAB, kMixedAB);
    EXPECT_EQ(r.result, 0);
    EXPECT_EQ(r.status, LM_NOTE_ORDER_FIRST);
    // With wildcards active a mixed right key also counts as cut: "abc" matches it
    // within its two words.
    r = Cmp(5, kKeyABC, kMixedAB, kWild);
    EXPECT_EQ(r.result, 0);
    EXPECT_EQ(r.status, LM_NOTE_ORDER_SECOND);
    r = Cmp(5, kKeyABC, kMixedAB, kPlain);
    EXPECT_EQ(r.result, 1);
    EXPECT_EQ(r.status, LM_NOTE_ORDER_SECOND);
    // A note stops an array at its element.
    r = Cmp(5, Concat({kMixedAB, kKeyAB}), Concat({kKeyAB, kKeyABC}), kPlain, kOrderLittle, 2);
    EXPECT_EQ(r.result, 0);
    EXPECT_EQ(r.status, LM_NOTE_ORDER_FIRST);
}

TEST(StringCompare, LongCutKeysAreNotComparedInPart) {
    // Current form, code set 1: a text of 300 bytes, L = 304.
    Bytes record = {0x30, 0x01, 0x01, 0x01};
    record.insert(record.end(), 300, 'a');
    record.push_back(0x00);
    record.push_back(0xFF);
    Bytes other = record;
    other[4 + 299] = 'b';

    // Whole: copied to the heap and compared in full.
    EXPECT_EQ(Cmp(5, record, record, kPlain, 1).result, 0);
    EXPECT_EQ(Cmp(5, record, other, kPlain, 1).result, -1);
    // 254 bytes present of 300: too long to compare in part.
    const Bytes cut254(record.begin(), record.begin() + 4 + 254);
    Answer r = Cmp(5, cut254, record, kPlain, 1);
    EXPECT_EQ(r.result, -1);
    EXPECT_EQ(r.status, LM_ERR_NOT_SUPPORTED);
    r = Cmp(5, record, cut254, kPlain, 1);
    EXPECT_EQ(r.result, -1);
    EXPECT_EQ(r.status, LM_ERR_NOT_SUPPORTED);
    // 253 bytes present: compared within them.
    const Bytes cut253(record.begin(), record.begin() + 4 + 253);
    r = Cmp(5, cut253, other, kPlain, 1);
    EXPECT_EQ(r.result, 0);
    EXPECT_EQ(r.status, kOut);

    const HashAnswer h = Hash(5, cut254, 1);
    EXPECT_EQ(h.hash, 0u);
    EXPECT_EQ(h.status, LM_ERR_NOT_SUPPORTED);
}

TEST(StringCompare, TheOldFormDecision) {
    // The current record of "abc" without its final byte: its last byte cannot be
    // seen. The current table takes it for a record (only the final byte missing);
    // the legacy table for an old-form block whose text is 01 01 'a' 'b' 'c', cut.
    const Bytes cut(kABC.begin(), kABC.end() - 1);
    const Bytes oldLabelsAndText = {0x06, 0x00, 0x01, 0x01, 'a', 'b', 'c', 0x00};

    Answer r = Cmp(5, cut, kABC, kPlain, 1);
    EXPECT_EQ(r.result, 0);
    EXPECT_EQ(r.status, 0);
    EXPECT_NE(Cmp(5, cut, oldLabelsAndText, kPlain, 1).result, 0);

    r = Cmp(3, cut, oldLabelsAndText, kWild, 1);
    EXPECT_EQ(r.result, 0);
    EXPECT_EQ(r.status, 0);
    EXPECT_NE(Cmp(3, cut, kABC, kPlain, 1).result, 0);

    // With the order bit there is no old form.
    r = Cmp(3, kCutABC, kKeyABCD);
    EXPECT_EQ(r.result, 0);
    EXPECT_EQ(r.status, kOut);
}

TEST(StringCompare, ArraysElementByElement) {
    const Bytes a = {0x05, 0x00, 0x01, 0x01, 'a', 0x00, 0xFF};
    const Bytes b = {0x05, 0x00, 0x01, 0x01, 'b', 0x00, 0xFF};
    const Bytes c = {0x05, 0x00, 0x01, 0x01, 'c', 0x00, 0xFF};
    const Bytes x = {0x05, 0x00, 0x01, 0x01, 'x', 0x00, 0xFF};

    Answer r = Cmp(5, Concat({a, b, c}), Concat({a, b, c}), kPlain, 1, 3, 0, 0);
    EXPECT_EQ(r.result, 0);
    EXPECT_EQ(r.status, 0);
    // The second element differs: the third is not read (the right holds only two
    // records, and "all" lengths would let a third read run past them).
    r = Cmp(5, Concat({a, b, c}), Concat({a, x}), kPlain, 1, 3, 0, 0);
    EXPECT_EQ(r.result, -1);
    EXPECT_EQ(r.status, 0);
    // Equal as far as the right goes: fewer than 5 bytes left for a third.
    r = Cmp(5, Concat({a, b, c}), Concat({a, b}), kPlain, 1, 3);
    EXPECT_EQ(r.result, 0);
    EXPECT_EQ(r.status, kOut);
    // Old form: one block for the array, the strings ended by zero bytes.
    const Bytes oldABEmpty = {0x04, 0x00, 'a', 'b', 0x00, 0x00};
    const Bytes oldABC = {0x05, 0x00, 'a', 'b', 0x00, 'c', 0x00};
    EXPECT_EQ(Cmp(3, oldABEmpty, oldABEmpty, kPlain, 1, 2, 0, 0).result, 0);
    EXPECT_EQ(Cmp(3, oldABEmpty, oldABC, kPlain, 1, 2, 0, 0).result, -1);

    // Memory arrays.
    LmString left[3] = {Latin("a"), Latin("b"), Latin("c")};
    LmString right[3] = {Latin("a"), Latin("b"), Latin("d")};
    int status = -1;
    EXPECT_EQ(Sign(StringCompare(8, 0, left, 0, right, kPlain, 2, status)), 0);
    EXPECT_EQ(Sign(StringCompare(8, 0, left, 0, right, kPlain, 3, status)), -1);
    EXPECT_EQ(status, 0);
}

TEST(StringCompare, StoredKeysAreReadInPlaceWithoutAllocation) {
    auto whole = Exact(kKeyABCD);
    auto cut = Exact(kCutABC);
    auto record = Exact(kABCUnicode);
    const LmTypeCmpFunc cmp = LmTypeMgr(5).CmpFuncPtrGet(LmSTRING_T);
    int status = -1;
    int sum = 0;
    const long before = allocations;
    sum += Sign(cmp(kOrderLittle, 10, cut.get(), 14, whole.get(), kPlain, 1, status));
    sum += Sign(cmp(kOrderLittle, 14, whole.get(), 10, cut.get(), kPlain, 1, status));
    sum += Sign(cmp(1, 12, record.get(), 12, record.get(), kPlain, 1, status));
    int hashStatus = -1;
    const unsigned h = LmTypeMgr(5).Hash(LmSTRING_T, 12, record.get(), 1, 1, hashStatus);
    EXPECT_EQ(allocations, before);
    EXPECT_EQ(sum, 0);
    EXPECT_EQ(h, kHashABC);
}

// ---------------------------------------------------------------------------
// Hashing.
// ---------------------------------------------------------------------------

// Two whole keys with their lengths given are decided in place; with the length 0
// ("all") the same keys take the general walk. Both must agree, whatever the words:
// ignorables, expansions, Han characters, keys that are prefixes of each other.
TEST(StringCompare, KeysInPlaceAgreeWithTheWalk) {
    const char* words[] = {"Kaffee", "Kaffeehaus", "Stra\337e", "Strasse", "a b", "ab", "a-b", "\xE9t\xE9",
                           "ete",    "Ete",        "x",              "",        "1a", "a1", "it's", "its"};
    const LmTypeMgr mgr(5);
    const LmTypeCmpFunc cmp = mgr.CmpFuncPtrGet(LmSTRING_T);
    std::vector<std::vector<unsigned char>> keys;
    for (const char* w : words) {
        for (const unsigned char language : {static_cast<unsigned char>(1), static_cast<unsigned char>(2)}) {
            LmString s(w);
            s.SetLanguage(language);
            std::vector<unsigned char> key(64);
            key.resize(mgr.Translate(LmSTRING_T, key.data(), 0x81, 64, &s, 8, 0, 1));
            keys.push_back(key);
        }
    }
    const unsigned short han[] = {0x4E2D, 0x6587, 0};
    LmString wide(han);
    std::vector<unsigned char> hanKey(64);
    hanKey.resize(mgr.Translate(LmSTRING_T, hanKey.data(), 0x81, 64, &wide, 8, 0, 1));
    keys.push_back(hanKey);
    const unsigned short options[] = {LM_CMP_NO_WILDCARD, LM_CMP_NO_WILDCARD | LM_CMP_IGNORE_CASE,
                                      LM_CMP_NO_WILDCARD | LM_CMP_SKIP_SPACES};
    for (const unsigned short option : options) {
        for (auto& a : keys) {
            for (auto& b : keys) {
                int s1 = -1, s2 = -1;
                const int inPlace = cmp(0x81, static_cast<unsigned>(a.size()), a.data(),
                                        static_cast<unsigned>(b.size()), b.data(), option, 1, s1);
                const int walked = cmp(0x81, 0, a.data(), 0, b.data(), option, 1, s2);
                EXPECT_EQ(inPlace, walked);
                EXPECT_EQ(s1, s2);
            }
        }
    }
}

TEST(StringHash, GoldenCodes) {
    // Memory value, disk images in both byte orders and code sets, the order-form key
    // of the same text: one hash.
    LmString abc = Latin("abc");
    int status = -1;
    EXPECT_EQ(LmTypeMgr(5).Hash(LmSTRING_T, 0, &abc, 1, 8, status), kHashABC);
    EXPECT_EQ(status, 0);
    for (const auto& [image, format] : {std::pair{kABC, 1}, std::pair{kABCBig, 2}, std::pair{kABCUnicode, 1},
                                        std::pair{kABCUnicodeBig, 2}, std::pair{kKeyABC, 0x81}}) {
        const HashAnswer h = Hash(5, image, static_cast<unsigned char>(format));
        EXPECT_EQ(h.hash, kHashABC) << "format " << format;
        EXPECT_EQ(h.status, 0);
    }
    // A mixed-family key hashes without its flag; a cut key by the words present.
    EXPECT_EQ(Hash(5, Bytes{0x0A, 0x00, 0xFE, 0x81, 0x0C, 0x50, 0x10, 0x50, 0x14, 0x50, 0x00, 0xFF}, 0x81).hash,
              kHashABC);
    EXPECT_EQ(Hash(5, kCutABC, 0x81).hash, kHashABC);
    EXPECT_EQ(Hash(5, kKeyABCD, 0x81, 1, 10).hash, kHashABC);  // the bytes behind the length are not read
    // Native texts hash their bytes: the old form, and a memory string in code set 0.
    EXPECT_EQ(Hash(5, kOldABC, 1).hash, kHashNativeABC);
    EXPECT_EQ(Hash(3, kOldABC, 1).hash, kHashNativeABC);
    LmString native(uint8_t{0}, uint8_t{1});
    LmStringAssignRaw(native, "abc", 0, 65535, LmFormatLittle);
    EXPECT_EQ(LmTypeMgr(5).Hash(LmSTRING_T, 0, &native, 1, 8, status), kHashNativeABC);

    // The null value, in memory and on disk, in any code set.
    LmString null;
    null.SetNullValue();
    EXPECT_EQ(LmTypeMgr(5).Hash(LmSTRING_T, 0, &null, 1, 8, status), kHashNull);
    EXPECT_EQ(Hash(5, kNull, 1).hash, kHashNull);
    EXPECT_EQ(Hash(5, Bytes{0x04, 0x00, 0xFD, 0xFE, 0x00, 0xFF}, 1).hash, kHashNull);
    EXPECT_EQ(Hash(5, Bytes{0x04, 0x00, 0xFE, 0x00, 0x00, 0xFF}, 0x81).hash, kHashNull);

    // Arrays: exclusive or, then one multiplication.
    EXPECT_EQ(Hash(5, Concat({kABC, kABC}), 1, 2).hash, 0u);
    EXPECT_EQ(Hash(5, Concat({kABC, kNull}), 1, 2).hash, kHashABCAndNull);
    EXPECT_EQ(Hash(5, Concat({kNull, kABCUnicode}), 1, 2).hash, kHashABCAndNull);
    LmString pair[2] = {Latin("abc"), null};
    EXPECT_EQ(LmTypeMgr(5).Hash(LmSTRING_T, 0, pair, 2, 8, status), kHashABCAndNull);
    // The bytes end before the second record: the first one's hash and 2101.
    HashAnswer h = Hash(5, Concat({kABC, kNull}), 1, 2, 9);
    EXPECT_EQ(h.hash, kHashABC);
    EXPECT_EQ(h.status, kOut);
    // Four bytes cannot hold a third record: it is not read.
    h = Hash(5, Concat({kABC, kABC, Bytes{0x06, 0x00, 0x01, 0x01}}), 1, 3);
    EXPECT_EQ(h.hash, 0u);
    EXPECT_EQ(h.status, kOut);
    // Count 0.
    h = Hash(5, kABC, 1, 0);
    EXPECT_EQ(h.hash, 0u);
    EXPECT_EQ(h.status, 0);
}

TEST(StringHash, ExportedFunctions) {
    EXPECT_EQ(HashString(1, 1, "abc", -1, 1), kWordsABC);
    EXPECT_EQ(HashString(0, 1, "abc", -1, 1), kBytesABC);
    // n words; behind the end each word adds 0.
    EXPECT_EQ(HashString(1, 1, "abc", 2, 1), 0x0C807D40u);  // 0x01400C20 * 9 + 0x01401020
    EXPECT_EQ(HashString(1, 1, "ab", 3, 1), 0x0C807D40u * 9);
    EXPECT_EQ(HashString(1, 1, "abc", 0, 1), 0u);
    EXPECT_EQ(HashString(0, LM_LANGUAGE_NULL, "abc", -1, 1), 0xFEFE7575u);
    EXPECT_EQ(HashString(254, 0, "", -1, 1), 0xFEFE7575u);
    // Upper case A: key 0x01400C00; order words ignore the code set.
    EXPECT_EQ(HashString(1, 1, "A", -1, 1), 0x01400C00u);
    const uint16_t wide[] = {'a', 'b', 'c', 0};
    EXPECT_EQ(HashString(253, 1, wide, -1, 8), kWordsABC);
    const uint16_t words[] = {0x500C, 0x5010, 0x5014, 0};
    EXPECT_EQ(HashString(254, 1, words, -1, 1), kWordsABC);
    EXPECT_EQ(HashString(254, 1, words, 5, 1), kWordsABC * 81);

    // The plain sums: signed bytes, 16-bit units in code set 253 only.
    EXPECT_EQ(HashLmString(Latin("abc")), kBytesABC);
    EXPECT_EQ(HashLmString7(Latin("abc")), kBytesABC);
    EXPECT_EQ(HashLmString(Latin("\xE9")), 0xFFFFFFE9u);  // -23 widened
    EXPECT_EQ(HashLmString7(Latin("\xE9")), 0x69u);
    EXPECT_EQ(HashLmString(Latin("a\xE9")), 0x61u * 9 + 0xFFFFFFE9u);
    const uint16_t unicode[] = {'a', 0x00E9, 0};
    EXPECT_EQ(HashLmString(Raw(253, 1, unicode)), 0x61u * 9 + 0xE9);
    const uint16_t high[] = {0x20AC, 0};  // the euro sign: 0x20AC & 127 = 0x2C
    EXPECT_EQ(HashLmString7(Raw(253, 1, high)), 0x2Cu);
    // Another 16-bit code set runs over bytes: 'A' then a zero byte ends it.
    const uint16_t two[] = {'A', 'B', 0};
    EXPECT_EQ(HashLmString(Raw(230, 1, two)), 65u);
    EXPECT_EQ(HashLmString(LmString()), 0u);
}

// ---------------------------------------------------------------------------
// Printing and scanning.
// ---------------------------------------------------------------------------

LmString Print(const LmString& value, const char* format, LmString out = LmString()) {
    LmTypeMgr(5).Desc(LmSTRING_T)->PrintToString(out, const_cast<LmString*>(&value), format, 1);
    return out;
}

TEST(StringPrint, TextsAndNulls) {
    LmString abc = Latin("abc");
    LmString out = Print(abc, "[%s]");
    EXPECT_EQ(Text(out), "[abc]");
    EXPECT_EQ(out.GetCodeSet(), 1);
    // A format that would read more than one text is replaced by "%s".
    EXPECT_EQ(Text(Print(abc, "%d%s")), "abc");
    EXPECT_EQ(Text(Print(abc, "%-5s|")), "abc  |");
    // The result carries the value's code set.
    LmString native(uint8_t{0}, uint8_t{1});
    LmStringAssignRaw(native, "xyz", 0, 65535, LmFormatLittle);
    out = Print(native, "%s");
    EXPECT_EQ(Text(out), "xyz");
    EXPECT_EQ(out.GetCodeSet(), 0);
    // 16-bit Unicode is mapped to a 1-byte code set first.
    const uint16_t wide[] = {'a', 0x00E9, 0};
    out = Print(Raw(253, 1, wide), "<%s>");
    EXPECT_EQ(Text(out), "<a\xE9>");
    EXPECT_EQ(out.GetCodeSet(), 1);

    // Null: the null print string. Empty: the value itself.
    LmString null;
    null.SetNullValue();
    EXPECT_EQ(Text(Print(null, "%s")), "{NULL}");
    LmTypeMgr::SetNullPrintString(LmString("<nil>"));
    EXPECT_EQ(Text(Print(null, "%s")), "<nil>");
    LmTypeMgr::SetNullPrintString(LmString("{NULL}"));
    out = Print(LmString(253, 9), "[%s]", Latin("old"));
    EXPECT_EQ(out.GetSize(), 0);
    EXPECT_EQ(out.GetCodeSet(), 253);
    EXPECT_EQ(out.GetLanguage(), 9);
}

TEST(StringPrint, OrderFormTokens) {
    // The key of "a" and "e with accent acute".
    const uint16_t words[] = {0x500C, 0x511C, 0};
    const LmString key = Raw(254, 1, words);
    EXPECT_EQ(Text(Print(key, "%1M")), "ae");
    LmString out = Print(key, "<%2M>");
    EXPECT_EQ(Text(out), "<a\xE9>");
    EXPECT_EQ(out.GetCodeSet(), 1);
    // Without a token: as "%2M", the format used as it stands.
    EXPECT_EQ(Text(Print(key, "(%s)")), "(a\xE9)");
    // Into a Unicode target the code set 1 result is converted.
    out = Print(key, "%2M", LmString(253, 1));
    EXPECT_EQ(out.GetCodeSet(), 253);
    EXPECT_EQ(out.Len(), 2);
    EXPECT_EQ(reinterpret_cast<const uint16_t*>(out.StrGet())[1], 0x00E9);
    // One item per word.
    EXPECT_EQ(Text(Print(key, "%3M;")), "lower letter a;lower letter e with accent acute;");
    EXPECT_EQ(Text(Print(key, "%4M,")), "a,\\'e,");
    // The first token in the order 1, 2, 3, 4 counts; what is left of another token
    // is no text conversion, and the plain "%s" is used.
    EXPECT_EQ(Text(Print(key, "x%4M %1M")), "ae");
    // A key cut at a change of family says so.
    const LmString mixed = Raw(254, 0x81, words);
    EXPECT_EQ(Text(Print(mixed, "%3M|")), "lower letter a|lower letter e with accent acute|[MIX]|");
    // A null key (family 0) prints as null.
    EXPECT_EQ(Text(Print(Raw(254, 0, words), "%1M")), "{NULL}");
}

TEST(StringScan, NullPrintString) {
    const LmTypeDesc* desc = LmTypeMgr(5).Desc(LmSTRING_T);
    LmString target = Latin("before");
    LmString text = Latin("{NULL}");
    EXPECT_EQ(desc->ScanFromString(&target, text, "%s", 1), &target);
    EXPECT_EQ(target.IsNullValue(), 1);
    // Only the length of the null print string is compared.
    target = "before";
    text = Latin("{NULL} and more");
    desc->ScanFromString(&target, text, nullptr, 1);
    EXPECT_EQ(target.IsNullValue(), 1);
    // Anything else is taken as it is, labels included.
    text = Latin("{NUL");
    desc->ScanFromString(&target, text, "%s", 1);
    EXPECT_EQ(target.IsNullValue(), 0);
    EXPECT_EQ(Text(target), "{NUL");
    const uint16_t wide[] = {'x', 0};
    text = Raw(253, 3, wide);
    desc->ScanFromString(&target, text, "%s", 1);
    EXPECT_EQ(target.GetCodeSet(), 253);
    EXPECT_EQ(target.GetLanguage(), 3);
    EXPECT_EQ(desc->ScanFromString(nullptr, text, "%s", 1), nullptr);
}

// ---------------------------------------------------------------------------
// The successor of a key.
// ---------------------------------------------------------------------------

struct Stepped {
    int status;
    Bytes key;
};

// Steps a key image in a buffer of exactly `buffer` bytes: the image, then 0xEE filler.
Stepped Step(const Bytes& image, unsigned buffer, unsigned char mode, unsigned level = 5,
             unsigned char format = kOrderLittle) {
    Bytes bytes = image;
    bytes.resize(buffer, 0xEE);
    auto exact = Exact(bytes);
    const int status = LmTypeMgr(level).Desc(LmSTRING_T)->GetValue(exact.get(), buffer, format, mode);
    return {status, Bytes(exact.get(), exact.get() + buffer)};
}

TEST(StringNextKey, OrderFormKeys) {
    // 'N': one word more, the letter a (0x500C), and the terminator moves up.
    Stepped s = Step(kKeyAB, 12, 'N');
    EXPECT_EQ(s.status, 0);
    EXPECT_EQ(s.key, (Bytes{0x0A, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x10, 0x50, 0x0C, 0x50, 0x00, 0xFF}));
    // Room for the word, none for the terminator: the key becomes a cut one.
    s = Step(kKeyAB, 10, 'N');
    EXPECT_EQ(s.status, 0);
    EXPECT_EQ(s.key, (Bytes{0x0A, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x10, 0x50, 0x0C, 0x50}));
    // Room for the word and one byte more: only the terminator's first byte moves.
    s = Step(kKeyAB, 11, 'N');
    EXPECT_EQ(s.key, (Bytes{0x0A, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x10, 0x50, 0x0C, 0x50, 0x00}));
    // No room: the last word present becomes 0xFFFE and L stays.
    s = Step(Bytes(kKeyAB.begin(), kKeyAB.begin() + 8), 8, 'N');
    EXPECT_EQ(s.status, 0);
    EXPECT_EQ(s.key, (Bytes{0x08, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0xFE, 0xFF}));

    // 'M': the first wildcard becomes 0xFFFE in place.
    const Bytes aStarB = {0x0A, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x9F, 0x00, 0x10, 0x50, 0x00, 0xFF};
    s = Step(aStarB, 12, 'M');
    EXPECT_EQ(s.status, 0);
    EXPECT_EQ(s.key, (Bytes{0x0A, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0xFE, 0xFF, 0x10, 0x50, 0x00, 0xFF}));
    // ... also the question mark (0x007A).
    const Bytes aQuestion = {0x08, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x7A, 0x00, 0x00, 0xFF};
    s = Step(aQuestion, 10, 'M');
    EXPECT_EQ(s.key, (Bytes{0x08, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0xFE, 0xFF, 0x00, 0xFF}));
    // Without a wildcard 'M' steps as 'N'.
    EXPECT_EQ(Step(kKeyAB, 12, 'M').key, Step(kKeyAB, 12, 'N').key);
}

TEST(StringNextKey, NativeKeysAndRefusals) {
    const Bytes ab = {0x06, 0x00, 0x00, 0x00, 'a', 'b', 0x00, 0xFF};
    Stepped s = Step(ab, 10, 'N');
    EXPECT_EQ(s.status, 0);
    EXPECT_EQ(s.key, (Bytes{0x07, 0x00, 0x00, 0x00, 'a', 'b', 'a', 0x00, 0xFF, 0xEE}));
    s = Step(Bytes{0x07, 0x00, 0x00, 0x00, 'a', '*', 'c', 0x00, 0xFF}, 9, 'M');
    EXPECT_EQ(s.key, (Bytes{0x07, 0x00, 0x00, 0x00, 'a', 0xFF, 'c', 0x00, 0xFF}));
    // No room in code set 0: the last byte present grows by one.
    s = Step(Bytes{0x06, 0x00, 0x00, 0x00, 'a', 'b'}, 6, 'N');
    EXPECT_EQ(s.status, 0);
    EXPECT_EQ(s.key, (Bytes{0x06, 0x00, 0x00, 0x00, 'a', 'c'}));

    // Only format 0x81 and the modes 'M' and 'N'; the key stays untouched.
    const std::pair<unsigned char, unsigned char> refused[] = {
        {1, 'N'}, {0x82, 'N'}, {0x80, 'M'}, {0x81, 'O'}, {0x81, 2}};
    for (const auto& [format, mode] : refused) {
        s = Step(kKeyAB, 12, mode, 5, format);
        EXPECT_EQ(s.status, LM_ERR_NOT_SUPPORTED);
        EXPECT_EQ(Bytes(s.key.begin(), s.key.begin() + 10), kKeyAB);
    }
    // The legacy record does not step keys.
    EXPECT_EQ(Step(kKeyAB, 12, 'N', 3).status, LM_ERR_NOT_SUPPORTED);
    // A buffer too short for the labels.
    EXPECT_EQ(Step(Bytes{0x08, 0x00, 0xFE}, 3, 'N').status, LM_ERR_NOT_SUPPORTED);
}

}  // namespace
