// The handlers of LmString (id 11): the life cycle of string arrays, the comparison
// of stored records and index keys read in place (cut keys, mixed families, the old
// form), the hash codes, printing with the order tokens, scanning of the null print
// string and the successor step of a key. Every disk image below is written out by
// hand, and every hash code is worked out from the order words: a letter's key is
// family << 24 | (order & 0x407F) << 8 | (order >> 7) & 0x7F, and a text hashes as
// h = h * 9 + key over its words, the element hashes combined by exclusive or and
// multiplied by 1103515245 at the end, all modulo 2^32.
#include "testkit.h"

using namespace lmtest;

namespace {

constexpr unsigned short kWild = 0;                    // every level, wildcards active
constexpr unsigned short kPlain = LM_CMP_NO_WILDCARD;  // every level, no wildcards
constexpr unsigned short kSkip = kPlain | LM_CMP_SKIP_SPACES;
constexpr unsigned char kKey = 0x81;  // order form, least significant byte first
constexpr int kOut = LM_ERR_OUT_OF_DATA, kNo = LM_ERR_NOT_SUPPORTED;
constexpr int kFirst = LM_NOTE_ORDER_FIRST, kSecond = LM_NOTE_ORDER_SECOND;

// Order words: a 0x500C, b 0x5010, c 0x5014, d 0x5018, the asterisk 0x009F.
// Current form, code set 1, language 1: L, code set, language, text, 00 FF.
const Bytes kABC = Hex("0700 0101 616263 00FF"), kABD = Hex("0700 0101 616264 00FF");
const Bytes kABCBig = Hex("0007 0101 616263 00FF");
const Bytes kABCUnicode = Hex("0A00 FD01 610062006300 00FF"), kABCUnicodeBig = Hex("000A FD01 006100620063 00FF");
const Bytes kNull = Hex("0400 00FE 00FF");
// Order form, family 1; cut short: no 00 FF, and L counts as though they stood there.
const Bytes kKeyAB = Hex("0800 FE01 0C501050 00FF"), kKeyABC = Hex("0A00 FE01 0C5010501450 00FF");
const Bytes kKeyABCD = Hex("0C00 FE01 0C50105014501850 00FF"), kKeyABStar = Hex("0A00 FE01 0C5010509F00 00FF");
const Bytes kCutA = Hex("0600 FE01 0C50"), kCutABC = Hex("0A00 FE01 0C5010501450");
const Bytes kCutABD = Hex("0A00 FE01 0C5010501850"), kCutABCStar = Hex("0C00 FE01 0C50105014509F00");
const Bytes kCutUpperABC = Hex("0A00 FE01 0C4010501450");
const Bytes kMixedAB = Hex("0800 FE81 0C501050 00FF");  // cut at a change of family: the mix flag 0x80
// Old form: T, then the strings, each ended by a zero byte.
const Bytes kOldABC = Hex("0400 616263 00"), kOldABD = Hex("0400 616264 00");

// "abc" in family 1: keys 0x01400C20, 0x01401020, 0x01401420, so
// h = ((0x01400C20 * 9) + 0x01401020) * 9 + 0x01401420 = 0x71C47B60. Native bytes:
// ((0x61 * 9) + 0x62) * 9 + 0x63 = 8838. The null value: 0xFEFE7575.
constexpr uint32_t kWordsABC = 0x71C47B60u, kBytesABC = 8838u, kMultiplier = 1103515245u;
constexpr uint32_t kHashABC = 0x1A7FC7E0u, kHashNull = 0xA79FA8D1u, kHashNativeABC = 0xC437870Eu;
constexpr uint32_t kHashABCAndNull = 0xE54064F1u;
static_assert(kWordsABC * kMultiplier == kHashABC && 0xFEFE7575u * kMultiplier == kHashNull);
static_assert(kBytesABC * kMultiplier == kHashNativeABC);
static_assert((kWordsABC ^ 0xFEFE7575u) * kMultiplier == kHashABCAndNull);

using Answer = std::pair<int, int>;  // the sign of the result (or the hash), the status

// Compares stored images through the Cmp slot of a factory level (5 current, 3 legacy).
// The lengths are the images' sizes unless given; the status starts at -1.
Answer Cmp(unsigned level, const Bytes& a, const Bytes& b, unsigned short option = kPlain, unsigned char format = kKey,
           unsigned count = 1, int len1 = -1, int len2 = -1) {
    const LmTypeCmpFunc cmp = LmTypeMgr(level).CmpFuncPtrGet(LmSTRING_T);
    auto x = Exact(a), y = Exact(b);
    int status = -1;
    const int result =
        cmp(format, len1 < 0 ? static_cast<unsigned>(a.size()) : static_cast<unsigned>(len1), x.get(),
            len2 < 0 ? static_cast<unsigned>(b.size()) : static_cast<unsigned>(len2), y.get(), option, count, status);
    return {Sign(result), status};
}

std::pair<unsigned, int> Hash(unsigned level, const Bytes& image, unsigned char format, unsigned count = 1,
                              int len = -1) {
    auto x = Exact(image);
    int status = -1;
    const unsigned h = LmTypeMgr(level).Hash(LmSTRING_T, len < 0 ? static_cast<unsigned>(image.size()) : unsigned(len),
                                             x.get(), count, format, status);
    return {h, status};
}

unsigned HashMemory(LmString* values, unsigned count) {
    int status = -1;
    const unsigned h = LmTypeMgr(5).Hash(LmSTRING_T, 0, values, count, 8, status);
    EXPECT_EQ(status, 0);
    return h;
}

LmString Latin(const char* text) { return Raw(1, 1, text); }
std::string Text(const LmString& s) { return std::string(s.StrGet()); }

}  // namespace

TEST(StringLifeCycle, SinglesBlocksAndArraysInPlace) {
    const LmTypeMgr mgr(5);
    for (unsigned count : {0u, 1u}) {
        auto* one = static_cast<LmString*>(mgr.Create(LmSTRING_T, count));
        ASSERT_NE(one, nullptr);
        EXPECT_EQ(StateOf(*one), (State{LmString::GetDefaultCodeSet(), 1, {}}));
        *one = "text";
        EXPECT_EQ(mgr.Delete(LmSTRING_T, one, count), nullptr);
    }
    // Several: the count stands in the 8 bytes in front of the strings.
    auto* three = static_cast<LmString*>(mgr.Create(LmSTRING_T, 3));
    uint64_t word = 0;
    std::memcpy(&word, reinterpret_cast<unsigned char*>(three) - 8, sizeof word);
    EXPECT_EQ(word, 3u);
    three[0] = "first";
    three[2] = "third";
    EXPECT_EQ(mgr.Delete(LmSTRING_T, three, 3), nullptr);  // the sanitizer checks that the buffers went
    EXPECT_EQ(mgr.Delete(LmSTRING_T, nullptr, 3), nullptr);

    alignas(LmString) unsigned char raw[3 * sizeof(LmString)], copies[3 * sizeof(LmString)];
    auto* strings = reinterpret_cast<LmString*>(raw);
    auto* copied = reinterpret_cast<LmString*>(copies);
    mgr.ConstructorPtrGet(LmSTRING_T)(raw, 3, 0);
    EXPECT_EQ(strings[2].GetSize(), 0);
    // Element by element, then one source for all.
    LmString sources[3] = {Latin("x"), Latin("yy"), LmString(253, 7)};
    mgr.AssignmentPtrGet(LmSTRING_T)(raw, sources, 3, 0);
    EXPECT_EQ(Text(strings[0]) + Text(strings[1]), "xyy");
    EXPECT_EQ(StateOf(strings[2]), (State{253, 7, {}}));
    mgr.AssignmentPtrGet(LmSTRING_T)(raw, sources + 1, 3, 1);
    EXPECT_EQ(Text(strings[0]) + Text(strings[2]), "yyyy");
    // Copy constructs on raw memory: each copy has a buffer of its own.
    mgr.CopyPtrGet(LmSTRING_T)(copies, raw, 3, 0);
    strings[1] = "changed";
    EXPECT_EQ(Text(copied[1]), "yy");
    mgr.DestructorPtrGet(LmSTRING_T)(copies, 3, 0);
    mgr.CopyPtrGet(LmSTRING_T)(copies, sources, 3, 1);
    EXPECT_EQ(Text(copied[0]) + Text(copied[2]), "xx");
    mgr.DestructorPtrGet(LmSTRING_T)(copies, 3, 0);
    mgr.DestructorPtrGet(LmSTRING_T)(raw, 3, 0);
}

TEST(StringCompare, StoredOperandsByRule) {
    const Bytes spanish = Hex("0800 0104 61626368 00FF");  // traditional Spanish: "ch" is one letter after "c"
    const Bytes cut = Bytes(kABC.begin(), kABC.end() - 1), oldLabelsAndText = Hex("0600 0101 616263 00");
    Bytes record = Cat({Hex("3001 0101"), Bytes(300, 'a'), Hex("00FF")}), other = record;  // L = 304
    other[4 + 299] = 'b';
    const Bytes cut254(record.begin(), record.begin() + 4 + 254), cut253(record.begin(), record.begin() + 4 + 253);
    const Bytes a = Hex("0500 0101 61 00FF"), b = Hex("0500 0101 62 00FF"), c = Hex("0500 0101 63 00FF");
    const Bytes x = Hex("0500 0101 78 00FF"), oldABEmpty = Hex("0400 6162 00 00"), oldABC = Hex("0500 6162 00 63 00");
    const struct {
        unsigned level;
        const Bytes &a, &b;
        unsigned short option;
        unsigned char format;
        unsigned count;
        int len1, len2;
        Answer expected;
    } cases[] = {
        // Whole records in both byte orders; 16-bit and 8-bit texts of the same letters have
        // the same keys; lengths of 0 are "all"; a record equals the key of its text.
        {5, kABC, kABD, kPlain, 1, 1, -1, -1, {-1, 0}},
        {5, kABD, kABC, kPlain, 1, 1, -1, -1, {1, 0}},
        {5, kABCBig, kABCBig, kPlain, 2, 1, -1, -1, {0, 0}},
        {5, kABCUnicode, kABC, kPlain, 1, 1, -1, -1, {0, 0}},
        {5, kABCUnicodeBig, kABCBig, kPlain, 2, 1, -1, -1, {0, 0}},
        {5, kABC, kABD, kPlain, 1, 1, 0, 0, {-1, 0}},
        {5, kKeyABC, kKeyABCD, kPlain, kKey, 1, -1, -1, {-1, 0}},
        {5, kABC, kKeyABC, kPlain, kKey, 1, -1, -1, {0, 0}},
        {5, kKeyABCD, kABC, kPlain, kKey, 1, -1, -1, {1, 0}},
        // The null value sorts first; two nulls are equal. Old form: native bytes.
        {5, kNull, kABC, kPlain, 1, 1, -1, -1, {-1, 0}},
        {5, kABC, kNull, kPlain, 1, 1, -1, -1, {1, 0}},
        {5, kNull, kNull, kPlain, 1, 1, -1, -1, {0, 0}},
        {5, kOldABC, kOldABD, kPlain, 1, 1, -1, -1, {-1, 0}},
        {3, kOldABC, kOldABD, kPlain, 1, 1, -1, -1, {-1, 0}},
        // Left cut (last two bytes missing), right whole and longer: equal within the
        // words present, undecided behind them; a difference among them decides; a
        // shorter right decides without status, unless spaces are skipped.
        {5, kCutABC, kKeyABCD, kPlain, kKey, 1, -1, -1, {0, kOut}},
        {5, kCutABC, kKeyABCD, kWild, kKey, 1, -1, -1, {0, kOut}},
        {5, kCutABD, kKeyABCD, kPlain, kKey, 1, -1, -1, {1, kOut}},
        {5, kCutABC, kKeyAB, kPlain, kKey, 1, -1, -1, {1, 0}},
        {5, kCutABC, kKeyAB, kSkip, kKey, 1, -1, -1, {1, kOut}},
        {5, kKeyABCD, kCutABC, kPlain, kKey, 1, -1, -1, {0, kOut}},
        {5, kKeyAB, kCutABC, kPlain, kKey, 1, -1, -1, {-1, 0}},
        // "Abc" cut against "abcd": case only; with spaces skipped the primary difference, 0.
        {5, kCutUpperABC, kKeyABCD, kPlain, kKey, 1, -1, -1, {1, kOut}},
        {5, kCutUpperABC, kKeyABCD, kSkip, kKey, 1, -1, -1, {0, kOut}},
        // Both cut: always reported, compared over the shorter.
        {5, kCutA, kCutABC, kPlain, kKey, 1, -1, -1, {0, kOut}},
        {5, kCutABD, kCutABC, kPlain, kKey, 1, -1, -1, {1, kOut}},
        {5, kCutABC, kCutA, kPlain, kKey, 1, -1, -1, {0, kOut}},
        // A cut text of characters ends where its bytes end: the 'h' behind the length is not read.
        {5, Bytes(spanish.begin(), spanish.begin() + 7), spanish, kPlain, 1, 1, -1, -1, {-1, kOut}},
        {5, spanish, spanish, kPlain, 1, 1, 7, 10, {-1, kOut}},
        {5, spanish, spanish, kPlain, 1, 1, -1, -1, {0, 0}},
        // Only the final byte missing (state 1): the text is whole.
        {5, kKeyABC, kKeyABC, kPlain, kKey, 1, 11, 12, {0, 0}},
        {5, kABC, kABC, kPlain, 1, 1, 8, 9, {0, 0}},
        // Patterns: a cut "abc*" against "ab" is limited to the left's two characters;
        // without wildcards "ab" ends first. A cut left within the fixed part of "ab*"
        // is decided, not so with spaces skipped, nor when it ends before the asterisk.
        {5, kKeyAB, kCutABCStar, kWild, kKey, 1, -1, -1, {-1, kOut}},
        {5, kKeyAB, kCutABCStar, kPlain, kKey, 1, -1, -1, {-1, 0}},
        {5, kCutABC, kKeyABStar, kWild, kKey, 1, -1, -1, {0, 0}},
        {5, kCutABC, kKeyABStar, kWild | LM_CMP_SKIP_SPACES, kKey, 1, -1, -1, {0, kOut}},
        {5, kCutA, kKeyABStar, kWild, kKey, 1, -1, -1, {0, kOut}},
        // Mixed families: the flag is cleared and reported; with wildcards a mixed right
        // key also counts as cut. A note stops an array at its element.
        {5, kMixedAB, kKeyAB, kPlain, kKey, 1, -1, -1, {0, kFirst}},
        {5, kKeyAB, kMixedAB, kPlain, kKey, 1, -1, -1, {0, kSecond}},
        {5, kMixedAB, kMixedAB, kPlain, kKey, 1, -1, -1, {0, kFirst}},
        {5, kKeyABC, kMixedAB, kWild, kKey, 1, -1, -1, {0, kSecond}},
        {5, kKeyABC, kMixedAB, kPlain, kKey, 1, -1, -1, {1, kSecond}},
        {5, Cat({kMixedAB, kKeyAB}), Cat({kKeyAB, kKeyABC}), kPlain, kKey, 2, -1, -1, {0, kFirst}},
        // Long texts are copied to the heap whole; 254 bytes present of 300 are too many to
        // compare in part, 253 are compared within them.
        {5, record, record, kPlain, 1, 1, -1, -1, {0, 0}},
        {5, record, other, kPlain, 1, 1, -1, -1, {-1, 0}},
        {5, cut254, record, kPlain, 1, 1, -1, -1, {-1, kNo}},
        {5, record, cut254, kPlain, 1, 1, -1, -1, {-1, kNo}},
        {5, cut253, other, kPlain, 1, 1, -1, -1, {0, kOut}},
        // "abc" without its final byte: the current table takes it for a record, the legacy
        // table for an old-form block 01 01 'a' 'b' 'c', cut. With the order bit there is no old form.
        {5, cut, kABC, kPlain, 1, 1, -1, -1, {0, 0}},
        {5, cut, oldLabelsAndText, kPlain, 1, 1, -1, -1, {-1, 0}},
        {3, cut, oldLabelsAndText, kWild, 1, 1, -1, -1, {0, 0}},
        {3, cut, kABC, kPlain, 1, 1, -1, -1, {1, 0}},
        {3, kCutABC, kKeyABCD, kPlain, kKey, 1, -1, -1, {0, kOut}},
        // Arrays element by element: the second differs, the third is not read (the right
        // holds two records and "all" lengths would run past them); fewer than 5 bytes left.
        {5, Cat({a, b, c}), Cat({a, b, c}), kPlain, 1, 3, 0, 0, {0, 0}},
        {5, Cat({a, b, c}), Cat({a, x}), kPlain, 1, 3, 0, 0, {-1, 0}},
        {5, Cat({a, b, c}), Cat({a, b}), kPlain, 1, 3, -1, -1, {0, kOut}},
        {3, oldABEmpty, oldABEmpty, kPlain, 1, 2, 0, 0, {0, 0}},
        {3, oldABEmpty, oldABC, kPlain, 1, 2, 0, 0, {-1, 0}},
    };
    for (const auto& t : cases) {
        EXPECT_EQ(Cmp(t.level, t.a, t.b, t.option, t.format, t.count, t.len1, t.len2), t.expected)
            << "row " << (&t - cases);
    }
    // 0xFFFF is the process-wide default option, here one that skips spaces.
    const unsigned short saved = LmString::GetDefaultCmpOp();
    LmString::SetDefaultCmpOp(kWild);
    EXPECT_EQ(Cmp(5, kCutABC, kKeyAB, LM_CMP_DEFAULT).second, 0);
    LmString::SetDefaultCmpOp(LM_CMP_SKIP_SPACES);
    EXPECT_EQ(Cmp(5, kCutABC, kKeyAB, LM_CMP_DEFAULT).second, kOut);
    LmString::SetDefaultCmpOp(saved);
    EXPECT_EQ(Hash(5, cut254, 1), std::make_pair(0u, kNo));
    int status = -1;  // count 0: 0 and status 0, the operands unread
    EXPECT_EQ(StringCompare(1, 0, nullptr, 0, nullptr, kPlain, 0, status) + status, 0);
}

TEST(StringCompare, MemoryOperands) {
    LmString m[3] = {Latin("abc"), Latin("abd"), Latin("ab*")}, unicode = Raw(253, 1, u"abc");
    LmString right[2] = {Latin("abc"), Latin("abe")};
    int status = -1;
    EXPECT_EQ(Sign(StringCompare(8, 0, &m[0], 0, &m[1], kPlain, 1, status)), -1);
    EXPECT_EQ(Sign(StringCompare(8, 0, &m[1], 0, &m[0], kPlain, 1, status)), 1);
    EXPECT_EQ(status, 0);
    // A pattern on the right matches in memory too; code sets do not matter.
    EXPECT_EQ(StringCompare(8, 0, &m[1], 0, &m[2], kWild, 1, status), 0);
    EXPECT_NE(StringCompare(8, 0, &m[1], 0, &m[2], kPlain, 1, status), 0);
    EXPECT_EQ(StringCompare(8, 0, &m[0], 0, &unicode, kPlain, 1, status), 0);
    EXPECT_EQ(Sign(StringCompare(8, 0, &m[1], 0, &unicode, kPlain, 1, status)), 1);
    EXPECT_EQ(Sign(StringCompare(8, 0, m, 0, right, kPlain, 1, status)), 0);  // arrays
    EXPECT_EQ(Sign(StringCompare(8, 0, m, 0, right, kPlain, 2, status)), -1);
}

// Two whole keys with their lengths given are decided in place; with the length 0
// ("all") the same keys take the general walk. Both must agree, whatever the words:
// ignorables, expansions, Han characters, keys that are prefixes of each other.
TEST(StringCompare, KeysInPlaceAgreeWithTheWalk) {
    const char* words[] = {"Kaffee", "Kaffeehaus", "Stra\337e", "Strasse", "a b", "ab", "a-b",  "\xE9t\xE9",
                           "ete",    "Ete",        "x",         "",        "1a",  "a1", "it's", "its"};
    const LmTypeMgr mgr(5);
    const LmTypeCmpFunc cmp = mgr.CmpFuncPtrGet(LmSTRING_T);
    std::vector<Bytes> keys;
    auto add = [&](LmString s) {
        Bytes key(64);
        key.resize(mgr.Translate(LmSTRING_T, key.data(), 0x81, 64, &s, 8, 0, 1));
        keys.push_back(key);
    };
    for (const char* w : words) {
        for (int language : {1, 2}) add(Raw(1, static_cast<unsigned char>(language), w));
    }
    add(Wide(u"\u4E2D\u6587"));
    for (const unsigned short option : {kPlain, static_cast<unsigned short>(kPlain | LM_CMP_IGNORE_CASE), kSkip}) {
        for (auto& a : keys) {
            for (auto& b : keys) {
                int s1 = -1, s2 = -1;
                const int inPlace = cmp(0x81, static_cast<unsigned>(a.size()), a.data(),
                                        static_cast<unsigned>(b.size()), b.data(), option, 1, s1);
                EXPECT_EQ(inPlace, cmp(0x81, 0, a.data(), 0, b.data(), option, 1, s2));
                EXPECT_EQ(s1, s2);
            }
        }
    }
}

TEST(StringHash, GoldenCodes) {
    // Memory value, disk images in both byte orders and code sets, the order-form key of
    // the same text, a mixed-family key without its flag, a cut key by the words present,
    // bytes behind the length not read: one hash.
    LmString abc = Latin("abc"), null, native = Raw(0, 1, "abc");
    null.SetNullValue();
    EXPECT_EQ(HashMemory(&abc, 1), kHashABC);
    const std::pair<Bytes, unsigned char> images[] = {{kABC, 1},        {kABCBig, 2},
                                                      {kABCUnicode, 1}, {kABCUnicodeBig, 2},
                                                      {kKeyABC, kKey},  {Hex("0A00 FE81 0C5010501450 00FF"), kKey},
                                                      {kCutABC, kKey}};
    for (const auto& [image, format] : images) EXPECT_EQ(Hash(5, image, format), std::make_pair(kHashABC, 0));
    EXPECT_EQ(Hash(5, kKeyABCD, kKey, 1, 10).first, kHashABC);
    // Native texts hash their bytes: the old form, and a memory string in code set 0.
    EXPECT_EQ(Hash(5, kOldABC, 1).first, kHashNativeABC);
    EXPECT_EQ(Hash(3, kOldABC, 1).first, kHashNativeABC);
    EXPECT_EQ(HashMemory(&native, 1), kHashNativeABC);
    // The null value, in memory and on disk, in any code set.
    EXPECT_EQ(HashMemory(&null, 1), kHashNull);
    for (const char* image : {"0400 00FE 00FF", "0400 FDFE 00FF"}) EXPECT_EQ(Hash(5, Hex(image), 1).first, kHashNull);
    EXPECT_EQ(Hash(5, Hex("0400 FE00 00FF"), kKey).first, kHashNull);
    // Arrays: exclusive or, then one multiplication. The bytes end before the second
    // record: the first one's hash and 2101. Four bytes cannot hold a third record.
    LmString pair[2] = {Latin("abc"), null};
    EXPECT_EQ(HashMemory(pair, 2), kHashABCAndNull);
    EXPECT_EQ(Hash(5, Cat({kABC, kABC}), 1, 2).first, 0u);
    EXPECT_EQ(Hash(5, Cat({kNull, kABCUnicode}), 1, 2).first, kHashABCAndNull);
    EXPECT_EQ(Hash(5, Cat({kABC, kNull}), 1, 2, 9), std::make_pair(kHashABC, kOut));
    EXPECT_EQ(Hash(5, Cat({kABC, kABC, Hex("0600 0101")}), 1, 3), std::make_pair(0u, kOut));
    EXPECT_EQ(Hash(5, kABC, 1, 0), std::make_pair(0u, 0));

    EXPECT_EQ(HashString(1, 1, "abc", -1, 1), kWordsABC);
    EXPECT_EQ(HashString(0, 1, "abc", -1, 1), kBytesABC);
    EXPECT_EQ(HashString(1, 1, "abc", 2, 1), 0x0C807D40u);     // n words: 0x01400C20 * 9 + 0x01401020
    EXPECT_EQ(HashString(1, 1, "ab", 3, 1), 0x0C807D40u * 9);  // behind the end each word adds 0
    EXPECT_EQ(HashString(1, 1, "abc", 0, 1), 0u);
    EXPECT_EQ(HashString(0, LM_LANGUAGE_NULL, "abc", -1, 1) + HashString(254, 0, "", -1, 1), 2 * 0xFEFE7575u);
    EXPECT_EQ(HashString(1, 1, "A", -1, 1), 0x01400C00u);
    EXPECT_EQ(HashString(253, 1, u"abc", -1, 8), kWordsABC);
    const uint16_t words[] = {0x500C, 0x5010, 0x5014, 0};
    EXPECT_EQ(HashString(254, 1, words, -1, 1), kWordsABC);
    EXPECT_EQ(HashString(254, 1, words, 5, 1), kWordsABC * 81);
    // The plain sums: signed bytes, 16-bit units in code set 253 only; another 16-bit
    // code set runs over bytes, so 'A' and a zero byte end it.
    EXPECT_EQ(HashLmString(Latin("abc")) + HashLmString7(Latin("abc")), 2 * kBytesABC);
    EXPECT_EQ(HashLmString(Latin("a\xE9")), 0x61u * 9 + 0xFFFFFFE9u);  // -23 widened
    EXPECT_EQ(HashLmString7(Latin("\xE9")), 0x69u);
    EXPECT_EQ(HashLmString(Raw(253, 1, u"a\u00E9")), 0x61u * 9 + 0xE9);
    EXPECT_EQ(HashLmString7(Raw(253, 1, u"\u20AC")), 0x2Cu);  // 0x20AC & 127
    EXPECT_EQ(HashLmString(Raw(230, 1, u"AB")), 65u);
    EXPECT_EQ(HashLmString(LmString()), 0u);
}

TEST(StringPrint, TextsNullsAndOrderTokens) {
    const auto print = [](const LmString& value, const char* format, LmString out = LmString()) {
        LmTypeMgr(5).Desc(LmSTRING_T)->PrintToString(out, const_cast<LmString*>(&value), format, 1);
        return out;
    };
    LmString abc = Latin("abc"), null;
    null.SetNullValue();
    EXPECT_EQ(StateOf(print(abc, "[%s]")), (State{1, 1, Of("[abc]", 6)}));
    EXPECT_EQ(Text(print(abc, "%d%s")), "abc");  // a format that would read more than one text is "%s"
    EXPECT_EQ(Text(print(abc, "%-5s|")), "abc  |");
    EXPECT_EQ(StateOf(print(Raw(0, 1, "xyz"), "%s")), (State{0, 1, Of("xyz", 4)}));  // the value's code set
    EXPECT_EQ(StateOf(print(Raw(253, 1, u"a\u00E9"), "<%s>")), (State{1, 1, Of("<a\xE9>", 5)}));
    EXPECT_EQ(Text(print(null, "%s")), "{NULL}");
    LmTypeMgr::SetNullPrintString(LmString("<nil>"));
    EXPECT_EQ(Text(print(null, "%s")), "<nil>");
    LmTypeMgr::SetNullPrintString(LmString("{NULL}"));
    EXPECT_EQ(StateOf(print(LmString(253, 9), "[%s]", Latin("old"))), (State{253, 9, {}}));  // empty: the value

    const uint16_t words[] = {0x500C, 0x511C, 0};  // "a" and "e with accent acute"
    const LmString key = Raw(254, 1, words);
    EXPECT_EQ(Text(print(key, "%1M")), "ae");
    EXPECT_EQ(StateOf(print(key, "<%2M>")), (State{1, 1, Of("<a\xE9>", 5)}));
    EXPECT_EQ(Text(print(key, "(%s)")), "(a\xE9)");  // no token: as "%2M", the format as it stands
    EXPECT_EQ(StateOf(print(key, "%2M", LmString(253, 1))), (State{253, 1, {'a', 0, 0xE9, 0, 0, 0}}));
    EXPECT_EQ(Text(print(key, "%3M;")), "lower letter a;lower letter e with accent acute;");
    EXPECT_EQ(Text(print(key, "%4M,")), "a,\\'e,");
    EXPECT_EQ(Text(print(key, "x%4M %1M")), "ae");  // the first token of 1, 2, 3, 4 counts
    EXPECT_EQ(Text(print(Raw(254, 0x81, words), "%3M|")), "lower letter a|lower letter e with accent acute|[MIX]|");
    EXPECT_EQ(Text(print(Raw(254, 0, words), "%1M")), "{NULL}");  // family 0 is null

    // Scanning: the null print string over its own length gives null; anything else is
    // taken as it is, labels included.
    const LmTypeDesc* desc = LmTypeMgr(5).Desc(LmSTRING_T);
    LmString target = Latin("before"), text = Latin("{NULL} and more");
    EXPECT_EQ(desc->ScanFromString(&target, text, nullptr, 1), &target);
    EXPECT_EQ(target.IsNullValue(), 1);
    text = Latin("{NUL");
    desc->ScanFromString(&target, text, "%s", 1);
    EXPECT_EQ(StateOf(target), (State{1, 1, Of("{NUL", 5)}));
    text = Raw(253, 3, u"x");
    desc->ScanFromString(&target, text, "%s", 1);
    EXPECT_EQ(StateOf(target), (State{253, 3, {'x', 0, 0, 0}}));
    EXPECT_EQ(desc->ScanFromString(nullptr, text, "%s", 1), nullptr);
}

TEST(StringNextKey, StepsAndRefusals) {
    // {image, buffer, mode, format, level, status, the whole buffer after}: the image
    // is followed by 0xEE filler up to the buffer size.
    const struct {
        Bytes image;
        unsigned buffer;
        unsigned char mode, format;
        unsigned level;
        int status;
        Bytes after;
    } cases[] = {
        // 'N': one word more, the letter a, and the terminator moves up; with room for the
        // word only, the key becomes a cut one; with one byte more only 00 moves.
        {kKeyAB, 12, 'N', kKey, 5, 0, Hex("0A00 FE01 0C5010500C50 00FF")},
        {kKeyAB, 10, 'N', kKey, 5, 0, Hex("0A00 FE01 0C5010500C50")},
        {kKeyAB, 11, 'N', kKey, 5, 0, Hex("0A00 FE01 0C5010500C50 00")},
        {Hex("0800 FE01 0C501050"), 8, 'N', kKey, 5, 0, Hex("0800 FE01 0C50FEFF")},  // no room: the last word 0xFFFE
        // 'M': the first wildcard, asterisk or question mark, becomes 0xFFFE in place.
        {Hex("0A00 FE01 0C509F001050 00FF"), 12, 'M', kKey, 5, 0, Hex("0A00 FE01 0C50FEFF1050 00FF")},
        {Hex("0800 FE01 0C507A00 00FF"), 10, 'M', kKey, 5, 0, Hex("0800 FE01 0C50FEFF 00FF")},
        {kKeyAB, 12, 'M', kKey, 5, 0, Hex("0A00 FE01 0C5010500C50 00FF")},  // no wildcard: as 'N'
        // Code set 0: the byte 'a'; '*' becomes 255; no room: the last byte grows by one.
        {Hex("0600 0000 6162 00FF"), 10, 'N', kKey, 5, 0, Hex("0700 0000 616261 00FF EE")},
        {Hex("0700 0000 612A63 00FF"), 9, 'M', kKey, 5, 0, Hex("0700 0000 61FF63 00FF")},
        {Hex("0600 0000 6162"), 6, 'N', kKey, 5, 0, Hex("0600 0000 6163")},
        // Only format 0x81 and the modes 'M' and 'N'; the legacy record steps nothing; a
        // buffer too short for the labels.
        {kKeyAB, 12, 'N', 1, 5, kNo, Cat({kKeyAB, Hex("EEEE")})},
        {kKeyAB, 12, 'N', 0x82, 5, kNo, Cat({kKeyAB, Hex("EEEE")})},
        {kKeyAB, 12, 'M', 0x80, 5, kNo, Cat({kKeyAB, Hex("EEEE")})},
        {kKeyAB, 12, 'O', kKey, 5, kNo, Cat({kKeyAB, Hex("EEEE")})},
        {kKeyAB, 12, 2, kKey, 5, kNo, Cat({kKeyAB, Hex("EEEE")})},
        {kKeyAB, 12, 'N', kKey, 3, kNo, Cat({kKeyAB, Hex("EEEE")})},
        {Hex("0800 FE"), 3, 'N', kKey, 5, kNo, Hex("0800 FE")},
    };
    for (const auto& c : cases) {
        Bytes bytes = c.image;
        bytes.resize(c.buffer, 0xEE);
        auto exact = Exact(bytes);
        EXPECT_EQ(LmTypeMgr(c.level).Desc(LmSTRING_T)->GetValue(exact.get(), c.buffer, c.format, c.mode), c.status)
            << "row " << (&c - cases);
        EXPECT_EQ(Of(exact.get(), c.buffer), c.after) << "row " << (&c - cases);
    }
}
