// The disk forms of LmString: the current record, the old form of the legacy table and
// the order form of index keys, with StringTranslate between all of them. Every byte
// image below is worked out by hand from the record layout and the order words of the
// collation data (letter word 01 cc aaaaa lllll ee: 'a' 0x500C, 'b' 0x5010, 'c'
// 0x5014, 's' 0x5054; a character without record, such as U+4E00, is its own word in
// family 20).
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "lumotypes.h"

namespace {

using Bytes = std::vector<uint8_t>;
using State = std::tuple<int, int, Bytes>;  // code set, language, the whole buffer

constexpr unsigned char kLatin1 = 1, kUnicode = 253, kOrder = 254;
constexpr unsigned char kGeneric = 1, kGerman = 2, kSpanishTraditional = 4;
constexpr unsigned char kLittle = LmFormatLittle, kBig = LmFormatBig, kMemory = LmFormatMemory;
constexpr unsigned char kKey = LM_STRFMT_ORDER, kZeroSet = LM_STRFMT_CODESET_ZERO,
                        kNativeSet = LM_STRFMT_CODESET_NATIVE;
constexpr uint8_t kFill = 0xEE;  // bytes a call must not touch

const LmTypeMgr current(5);
const LmTypeMgr legacy(3);

// A string with the given labels and n characters of text (65535: up to the terminator).
void Set(LmString& s, const void* text, unsigned char codeSet, unsigned char language, uint16_t n = 65535) {
    s.Destroy();
    s.SetCodeSet(codeSet);
    s.SetLanguage(language);
    LmStringAssignRaw(s, text, codeSet, n, kLittle);
}

State StateOf(const LmString& s) {
    return {s.GetCodeSet(), s.GetLanguage(), Bytes(s.StrGet(), s.StrGet() + s.GetSize())};
}

unsigned Translate(const LmTypeMgr& mgr, void* dest, unsigned char targetFormat, unsigned targetLength, void* src,
                   unsigned char sourceFormat, unsigned sourceLength, unsigned count) {
    return mgr.Translate(LmSTRING_T, dest, targetFormat, targetLength, src, sourceFormat, sourceLength, count);
}

// A translation into a disk target of targetLength bytes inside a larger buffer of
// untouched bytes: the result and the first `shown` bytes (default: the result).
struct DiskOut {
    unsigned result;
    Bytes bytes;
    bool untouchedBehind;  // nothing written behind max(result, targetLength)
};

DiskOut ToDisk(const LmTypeMgr& mgr, unsigned char targetFormat, unsigned targetLength, void* src,
               unsigned char sourceFormat, unsigned sourceLength, unsigned count, unsigned shown = 0) {
    Bytes buffer(targetLength + 16u, kFill);
    const unsigned result =
        Translate(mgr, buffer.data(), targetFormat, targetLength, src, sourceFormat, sourceLength, count);
    const unsigned end = result > targetLength ? result : targetLength;
    bool untouched = true;
    for (size_t i = end; i < buffer.size(); ++i) untouched = untouched && buffer[i] == kFill;
    if (shown == 0) shown = result;
    return {result, Bytes(buffer.begin(), buffer.begin() + shown), untouched};
}

DiskOut KeyOf(LmString* strings, unsigned count, unsigned char targetFormat, unsigned targetLength) {
    return ToDisk(current, targetFormat, targetLength, strings, kMemory, 0, count);
}

// A disk source is copied into a heap block of exactly its length, so that a read past
// sourceLength is a fault under the address sanitizer.
DiskOut KeyOfDisk(const Bytes& record, unsigned char sourceFormat, unsigned sourceLength, unsigned char targetFormat,
                  unsigned targetLength, unsigned count = 1) {
    Bytes source(record.begin(), record.begin() + sourceLength);
    return ToDisk(current, targetFormat, targetLength, source.data(), sourceFormat, sourceLength, count);
}

// The assertions raised while one of these lives; the handler before it comes back.
class AssertLog {
public:
    AssertLog() : previous(LmSetAssertHandler(Record)) { Entries().clear(); }
    ~AssertLog() { LmSetAssertHandler(previous); }
    AssertLog(const AssertLog&) = delete;
    AssertLog& operator=(const AssertLog&) = delete;

    static std::vector<std::pair<std::string, std::string>>& Entries() {
        static std::vector<std::pair<std::string, std::string>> entries;
        return entries;
    }

private:
    static void Record(const char* message, const char* stem, int) { Entries().emplace_back(message, stem); }
    LmAssertHandler previous;
};

// ---------------------------------------------------------------------------
// Current form.
// ---------------------------------------------------------------------------

struct RecordCase {
    const char* name;
    void (*make)(LmString&);
    Bytes little;
    Bytes big;
    State loaded;  // what the image loads back as
};

const uint16_t kTwoUnits[] = {0x00E9, 0x263A, 0};

const RecordCase kRecords[] = {
    {"abc",
     [](LmString& s) { Set(s, "abc", kLatin1, kGeneric); },
     {0x07, 0x00, 0x01, 0x01, 0x61, 0x62, 0x63, 0x00, 0xFF},
     {0x00, 0x07, 0x01, 0x01, 0x61, 0x62, 0x63, 0x00, 0xFF},
     {kLatin1, kGeneric, {0x61, 0x62, 0x63, 0x00}}},
    {"two 16-bit units",
     [](LmString& s) { Set(s, kTwoUnits, kUnicode, kGeneric); },
     {0x08, 0x00, 0xFD, 0x01, 0xE9, 0x00, 0x3A, 0x26, 0x00, 0xFF},
     {0x00, 0x08, 0xFD, 0x01, 0x00, 0xE9, 0x26, 0x3A, 0x00, 0xFF},
     {kUnicode, kGeneric, {0xE9, 0x00, 0x3A, 0x26, 0x00, 0x00}}},
    {"no buffer",
     [](LmString& s) { s = LmString(kLatin1, kGerman); },
     {0x04, 0x00, 0x01, 0x02, 0x00, 0xFF},
     {0x00, 0x04, 0x01, 0x02, 0x00, 0xFF},
     {kLatin1, kGerman, {}}},
    // An empty text has a buffer in memory and none after a load; the labels stay.
    {"empty text",
     [](LmString& s) { Set(s, "", kLatin1, 9); },
     {0x04, 0x00, 0x01, 0x09, 0x00, 0xFF},
     {0x00, 0x04, 0x01, 0x09, 0x00, 0xFF},
     {kLatin1, 9, {}}},
    {"empty 16-bit text",
     [](LmString& s) { Set(s, kTwoUnits + 2, kUnicode, kGeneric); },
     {0x04, 0x00, 0xFD, 0x01, 0x00, 0xFF},
     {0x00, 0x04, 0xFD, 0x01, 0x00, 0xFF},
     {kUnicode, kGeneric, {}}},
    {"null value",
     [](LmString& s) { s.SetNullValue(); },
     {0x04, 0x00, 0x00, 0xFE, 0x00, 0xFF},
     {0x00, 0x04, 0x00, 0xFE, 0x00, 0xFF},
     {0, LM_LANGUAGE_NULL, {}}},
    // The record follows size, not Len: the bytes behind an inner zero are kept.
    {"inner zero",
     [](LmString& s) { Set(s, "ab\0cd", kLatin1, kGeneric, 5); },
     {0x09, 0x00, 0x01, 0x01, 0x61, 0x62, 0x00, 0x63, 0x64, 0x00, 0xFF},
     {0x00, 0x09, 0x01, 0x01, 0x61, 0x62, 0x00, 0x63, 0x64, 0x00, 0xFF},
     {kLatin1, kGeneric, {0x61, 0x62, 0x00, 0x63, 0x64, 0x00}}},
};

TEST(StringDiskStore, GoldenRecordsInBothByteOrders) {
    for (const RecordCase& c : kRecords) {
        SCOPED_TRACE(c.name);
        LmString s;
        c.make(s);
        for (const auto& [format, image] : {std::pair{kLittle, c.little}, std::pair{kBig, c.big}}) {
            Bytes out(image.size() + 4, kFill);
            EXPECT_EQ(StringStore(out.data(), &s, format, 1), image.size());
            EXPECT_EQ(Bytes(out.begin(), out.begin() + static_cast<long>(image.size())), image);
            EXPECT_EQ(out[image.size()], kFill);
            EXPECT_EQ(StringSizeGet(&s, kMemory, format, 1), image.size());
            EXPECT_EQ(current.DiskLenGet(LmSTRING_T, &s, format, 1, kMemory), image.size());
            // The disk image measures itself the same way.
            EXPECT_EQ(StringSizeGet(image.data(), format, format, 1), image.size());
            Bytes viaMgr(image.size(), kFill);
            EXPECT_EQ(current.Store(LmSTRING_T, viaMgr.data(), &s, format, 1), image.size());
            EXPECT_EQ(viaMgr, image);
        }
    }
    // An array is its records back to back.
    LmString pair[2];
    kRecords[0].make(pair[0]);
    kRecords[5].make(pair[1]);
    Bytes expected = kRecords[0].little;
    expected.insert(expected.end(), kRecords[5].little.begin(), kRecords[5].little.end());
    Bytes out(expected.size(), kFill);
    EXPECT_EQ(StringStore(out.data(), pair, kLittle, 2), 15u);
    EXPECT_EQ(out, expected);
    EXPECT_EQ(StringSizeGet(pair, kMemory, kLittle, 2), 15u);
    EXPECT_EQ(StringSizeGet(expected.data(), kLittle, kLittle, 2), 15u);
    EXPECT_EQ(current.Desc(LmSTRING_T)->NullSizeGet(3), 18u);
    EXPECT_EQ(legacy.Desc(LmSTRING_T)->NullSizeGet(2), 12u);
}

TEST(StringDiskLoad, GoldenRecordsLoadBack) {
    for (const RecordCase& c : kRecords) {
        SCOPED_TRACE(c.name);
        for (const auto& [format, image] : {std::pair{kLittle, c.little}, std::pair{kBig, c.big}}) {
            LmString s("old text");  // its buffer goes before the record is read
            EXPECT_EQ(StringLoad(&s, image.data(), format, 1), image.size());
            EXPECT_EQ(StateOf(s), c.loaded);
            LmString viaMgr("old"), viaLegacy("old");
            Bytes copy = image;
            EXPECT_EQ(current.Load(LmSTRING_T, &viaMgr, copy.data(), format, 1), image.size());
            EXPECT_EQ(legacy.Load(LmSTRING_T, &viaLegacy, copy.data(), format, 1), image.size());
            EXPECT_EQ(StateOf(viaMgr), c.loaded);
            EXPECT_EQ(StateOf(viaLegacy), c.loaded);
        }
    }
    LmString inner;
    StringLoad(&inner, kRecords[6].little.data(), kLittle, 1);
    EXPECT_EQ(inner.Len(), 2);  // Len stops at the inner zero, the bytes behind it are there
    LmString null;
    StringLoad(&null, kRecords[5].big.data(), kBig, 1);
    EXPECT_EQ(null.IsNullValue(), 1);

    // Two records back to back.
    Bytes both = kRecords[1].big;
    both.insert(both.end(), kRecords[0].big.begin(), kRecords[0].big.end());
    LmString two[2];
    EXPECT_EQ(StringLoad(two, both.data(), kBig, 2), 19u);
    EXPECT_EQ(StateOf(two[0]), kRecords[1].loaded);
    EXPECT_EQ(StateOf(two[1]), kRecords[0].loaded);

    // A length word of 0, and a count of 0, read nothing and leave the target alone.
    LmString kept("kept");
    const State before = StateOf(kept);
    const Bytes zero{0x00, 0x00, 0x01, 0x01, 0x00, 0xFF};
    EXPECT_EQ(StringLoad(&kept, zero.data(), kLittle, 1), 0u);
    EXPECT_EQ(StringLoad(&kept, kRecords[0].little.data(), kLittle, 0), 0u);
    EXPECT_EQ(StateOf(kept), before);
}

// ---------------------------------------------------------------------------
// Old form.
// ---------------------------------------------------------------------------

TEST(StringDiskOldForm, StoreSizeAndLoad) {
    LmString pair[2];
    Set(pair[0], "ab", kLatin1, kGerman);
    Set(pair[1], "", kLatin1, kGerman);
    const Bytes little{0x04, 0x00, 0x61, 0x62, 0x00, 0x00};
    const Bytes big{0x00, 0x04, 0x61, 0x62, 0x00, 0x00};
    for (const auto& [format, image] : {std::pair{kLittle, little}, std::pair{kBig, big}}) {
        Bytes out(8, kFill);
        EXPECT_EQ(legacy.Store(LmSTRING_T, out.data(), pair, format, 2), 6u);
        EXPECT_EQ(Bytes(out.begin(), out.begin() + 6), image);
        EXPECT_EQ(out[6], kFill);
    }
    // Memory: 2 + count + the Len of each. Disk: T + 2, T read in the target's order.
    EXPECT_EQ(legacy.DiskLenGet(LmSTRING_T, pair, kLittle, 2, kMemory), 6u);
    Bytes image = little;
    EXPECT_EQ(legacy.DiskLenGet(LmSTRING_T, image.data(), kLittle, 1, kLittle), 6u);
    EXPECT_EQ(legacy.DiskLenGet(LmSTRING_T, image.data(), kBig, 1, kLittle), 0x0400u + 2);
    // The current size function sees the final zero and answers for the whole array.
    EXPECT_EQ(StringSizeGet(image.data(), kLittle, kLittle, 2), 6u);

    // Loading: plain texts in the default 8-bit code set and language, one after the
    // other; a string the array has no text for gets none.
    LmString loaded[3];
    Set(loaded[2], "x", kLatin1, 7);
    EXPECT_EQ(StringLoad(loaded, big.data(), kBig, 3), 6u);
    EXPECT_EQ(StateOf(loaded[0]), (State{kLatin1, kGeneric, {0x61, 0x62, 0x00}}));
    EXPECT_EQ(StateOf(loaded[1]), (State{kLatin1, kGeneric, {0x00}}));
    EXPECT_EQ(StateOf(loaded[2]), (State{kLatin1, kGeneric, {}}));
    EXPECT_EQ(StringLoad(loaded, little.data(), kLittle, 0), 6u);

    // A 16-bit string gives its first Len bytes, as the size counts them.
    LmString wide;
    const uint16_t units[] = {0x41, 0x42, 0};
    Set(wide, units, kUnicode, kGeneric);
    Bytes out(5, kFill);
    EXPECT_EQ(legacy.Store(LmSTRING_T, out.data(), &wide, kLittle, 1), 5u);
    EXPECT_EQ(out, (Bytes{0x03, 0x00, 0x41, 0x00, 0x00}));
    EXPECT_EQ(legacy.DiskLenGet(LmSTRING_T, &wide, kLittle, 1, kMemory), 5u);
}

// ---------------------------------------------------------------------------
// Sizes.
// ---------------------------------------------------------------------------

TEST(StringDiskSize, OrderTargetsReserveRoomForOrderWords) {
    LmString abc, native, order, wide;
    Set(abc, "abc", kLatin1, kGeneric);  // B = 5
    Set(native, "abc", 0, kGeneric);
    const uint16_t words[] = {0x500C, 0};
    Set(order, words, kOrder, kGeneric);       // B = 4
    Set(wide, kTwoUnits, kUnicode, kGeneric);  // B = 6
    const struct {
        LmString* s;
        unsigned char target;
        unsigned size;
    } memory[] = {
        {&abc, kLittle, 9},
        {&abc, kKey | kLittle, 5 * 4 + 4},
        {&abc, kKey | kZeroSet | kLittle, 9},  // written as code set 0: no words
        {&native, kKey | kLittle, 9},
        {&native, kKey | kNativeSet | kBig, 5 * 4 + 4},
        {&order, kKey | kLittle, 8},
        {&wide, kKey | kBig, 6 * 2 + 4},
        {&wide, kKey | kZeroSet | kLittle, 10},
    };
    for (const auto& c : memory) {
        EXPECT_EQ(StringSizeGet(c.s, kMemory, c.target, 1), c.size) << int(c.target) << " " << int(c.s->GetCodeSet());
    }

    // A disk image: L scaled by the code set byte of the record, in 16 bits.
    Bytes image = kRecords[0].little;
    EXPECT_EQ(StringSizeGet(image.data(), kLittle, kKey | kLittle, 1), 7u * 4 + 2);
    image[2] = 0;
    EXPECT_EQ(StringSizeGet(image.data(), kLittle, kKey | kLittle, 1), 9u);
    EXPECT_EQ(StringSizeGet(image.data(), kLittle, kKey | kNativeSet | kLittle, 1), 30u);
    Bytes wideImage = kRecords[1].little;
    EXPECT_EQ(StringSizeGet(wideImage.data(), kLittle, kKey | kLittle, 1), 8u * 2 + 2);
    Bytes huge{0x00, 0x50, 0x01, 0x01};  // L 0x5000, times 4 is 0x14000: 0x4000 in 16 bits
    EXPECT_EQ(StringSizeGet(huge.data(), kLittle, kKey | kLittle, 1), 0x4000u + 2);

    // Several records: the step to the next one also takes the scaled L. The first
    // "abc" (L 7, scaled 28) sends the reader to offset 30, where it finds L 5.
    Bytes two(40, 0);
    std::memcpy(two.data(), kRecords[0].little.data(), 9);
    two[30] = 0x05;
    two[32] = kLatin1;
    EXPECT_EQ(StringSizeGet(two.data(), kLittle, kKey | kLittle, 2), 30u + 22);
}

TEST(StringDiskSize, FromMemFile) {
    // "abc" and "de": 9 + 8 bytes, behind 3 bytes that are not ours.
    Bytes data{0xAA, 0xAA, 0xAA, 0x07, 0x00, 0x01, 0x01, 0x61, 0x62, 0x63,
               0x00, 0xFF, 0x06, 0x00, 0x01, 0x01, 0x64, 0x65, 0x00, 0xFF};
    MemFile file(data.data(), static_cast<uint32_t>(data.size()));
    uint32_t granted = 0;
    file.Seek(3, MemFile::FromStart, 0, granted);
    EXPECT_EQ(current.DiskLenGetFromMemFile(LmSTRING_T, &file, kLittle, 2), 17u);
    EXPECT_EQ(current.DiskLenGetFromMemFile(LmSTRING_T, &file, kLittle, 1), 9u);
    EXPECT_EQ(current.DiskLenGetFromMemFile(LmSTRING_T, &file, kKey | kLittle, 1), 7u * 4 + 2);
    EXPECT_EQ(file.Position(), 3u);  // the file does not move

    // A record that runs past the end of the file while more are to come: 65535 for
    // this string and each one after it.
    MemFile cut(data.data() + 3, 8);
    EXPECT_EQ(current.DiskLenGetFromMemFile(LmSTRING_T, &cut, kLittle, 2), 2u * 65535);
    EXPECT_EQ(current.DiskLenGetFromMemFile(LmSTRING_T, &cut, kLittle, 3), 3u * 65535);
    // The last string is taken at its word.
    EXPECT_EQ(current.DiskLenGetFromMemFile(LmSTRING_T, &cut, kLittle, 1), 9u);
    MemFile firstOnly(data.data() + 3, 10);  // the second word lies behind the end
    EXPECT_EQ(current.DiskLenGetFromMemFile(LmSTRING_T, &firstOnly, kLittle, 2), 65535u);

    // An old-form array answers its one record.
    Bytes old{0x04, 0x00, 0x61, 0x62, 0x00, 0x00};
    MemFile oldFile(old.data(), 6);
    EXPECT_EQ(current.DiskLenGetFromMemFile(LmSTRING_T, &oldFile, kLittle, 2), 6u);
    EXPECT_EQ(legacy.DiskLenGetFromMemFile(LmSTRING_T, &oldFile, kLittle, 1), 6u);
    EXPECT_EQ(legacy.DiskLenGetFromMemFile(LmSTRING_T, &oldFile, kLittle, 2), 65535u);
    MemFile oldBig(old.data(), 6);
    EXPECT_EQ(legacy.DiskLenGetFromMemFile(LmSTRING_T, &oldBig, kBig, 1), 0x0400u + 2);

    // No word to read: 0.
    MemFile atEnd(data.data(), 4);
    atEnd.Seek(0, MemFile::FromEnd, 0, granted);
    EXPECT_EQ(current.DiskLenGetFromMemFile(LmSTRING_T, &atEnd, kLittle, 1), 0u);
    EXPECT_EQ(legacy.DiskLenGetFromMemFile(LmSTRING_T, &atEnd, kLittle, 1), 0u);
    MemFile none(nullptr, 0);
    EXPECT_EQ(current.DiskLenGetFromMemFile(LmSTRING_T, &none, kLittle, 1), 0u);
}

// ---------------------------------------------------------------------------
// Translate into memory.
// ---------------------------------------------------------------------------

TEST(StringTranslateLoad, MemoryTargets) {
    LmString from[2], to[2];
    kRecords[1].make(from[0]);
    from[1].SetNullValue();
    EXPECT_EQ(Translate(current, to, kMemory, 0, from, kMemory, 0, 2), 32u);
    EXPECT_EQ(StateOf(to[0]), StateOf(from[0]));
    EXPECT_EQ(StateOf(to[1]), StateOf(from[1]));

    // A plain record is loaded, whatever sourceLength says.
    Bytes record = kRecords[0].big;
    LmString s;
    EXPECT_EQ(Translate(current, &s, kMemory, 0, record.data(), kBig, 0, 1), 9u);
    EXPECT_EQ(StateOf(s), kRecords[0].loaded);

    // Keys. Whole: loaded as a record. The order words come into the machine's order.
    const Bytes key{0x0A, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x10, 0x50, 0x14, 0x50, 0x00, 0xFF};
    const Bytes keyBig{0x00, 0x0A, 0xFE, 0x01, 0x50, 0x0C, 0x50, 0x10, 0x50, 0x14, 0x00, 0xFF};
    const State abcWords{kOrder, kGeneric, {0x0C, 0x50, 0x10, 0x50, 0x14, 0x50, 0x00, 0x00}};
    for (const auto& [format, image] : {std::pair{kLittle, key}, std::pair{kBig, keyBig}}) {
        for (unsigned length : {12u, 10u}) {  // whole, and cut short without its 00 FF
            Bytes source(image.begin(), image.begin() + length);
            LmString k("old");
            EXPECT_EQ(Translate(current, &k, kMemory, 0, source.data(), kKey | format, length, 1), 12u);
            EXPECT_EQ(StateOf(k), abcWords);
        }
    }
    // A key cut within its words: L falls to what is there.
    Bytes shorter(key.begin(), key.begin() + 8);
    LmString k;
    EXPECT_EQ(Translate(current, &k, kMemory, 0, shorter.data(), kKey | kLittle, 8, 1), 10u);
    EXPECT_EQ(StateOf(k), (State{kOrder, kGeneric, {0x0C, 0x50, 0x10, 0x50, 0x00, 0x00}}));

    // Strings the key has no record for take the last labels and no text: 6 each.
    Bytes cut(key.begin(), key.begin() + 10);
    LmString keys[3];
    Set(keys[1], "x", kLatin1, kGerman);
    EXPECT_EQ(Translate(current, keys, kMemory, 0, cut.data(), kKey | kLittle, 10, 3), 12u + 6 + 6);
    EXPECT_EQ(StateOf(keys[0]), abcWords);
    EXPECT_EQ(StateOf(keys[1]), (State{kOrder, kGeneric, {}}));
    EXPECT_EQ(StateOf(keys[2]), (State{kOrder, kGeneric, {}}));
    // sourceLength 5: no string is read, the labels come from offsets 2 and 3.
    Bytes five(key.begin(), key.begin() + 5);
    LmString none("old");
    EXPECT_EQ(Translate(current, &none, kMemory, 0, five.data(), kKey | kLittle, 5, 1), 6u);
    EXPECT_EQ(StateOf(none), (State{kOrder, kGeneric, {}}));
    // The labels of the first record are read whatever sourceLength says: with 3 the
    // language at offset 3 still labels the string.
    LmString labelsOnly("old");
    EXPECT_EQ(Translate(current, &labelsOnly, kMemory, 0, five.data(), kKey | kLittle, 3, 1), 6u);
    EXPECT_EQ(StateOf(labelsOnly), (State{kOrder, kGeneric, {}}));

    // Two whole keys with a count of 2 go the same way, one after the other.
    Bytes pair{0x06, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x00, 0xFF, 0x06, 0x00, 0xFE, 0x14, 0x00, 0x4E, 0x00, 0xFF};
    LmString both[2];
    EXPECT_EQ(Translate(current, both, kMemory, 0, pair.data(), kKey | kLittle, 16, 2), 16u);
    EXPECT_EQ(StateOf(both[0]), (State{kOrder, kGeneric, {0x0C, 0x50, 0x00, 0x00}}));
    EXPECT_EQ(StateOf(both[1]), (State{kOrder, 20, {0x00, 0x4E, 0x00, 0x00}}));

    // The longest key that comes this way: 259 bytes of a record claiming 261.
    Bytes longKey(259, 'x');
    longKey[0] = 0x03;
    longKey[1] = 0x01;  // L 259
    longKey[2] = kLatin1;
    longKey[3] = kGeneric;
    LmString text;
    EXPECT_EQ(Translate(current, &text, kMemory, 0, longKey.data(), kKey | kLittle, 259, 1), 261u);
    EXPECT_EQ(text.Len(), 255);
    EXPECT_EQ(std::string(text.StrGet()), std::string(255, 'x'));
}

TEST(StringTranslateLoadDeathTest, KeyOf260BytesEndsTheProcess) {
    Bytes key(260, 'x');
    key[0] = 0x04;
    key[1] = 0x01;  // L 260: the record claims 262 bytes
    key[2] = kLatin1;
    key[3] = kGeneric;
    EXPECT_DEATH(
        {
            LmString s;
            Translate(current, &s, kMemory, 0, key.data(), kKey | kLittle, 260, 1);
        },
        "260 bytes exceeds the 259-byte key buffer");
}

// ---------------------------------------------------------------------------
// Translate between disk forms without order words.
// ---------------------------------------------------------------------------

TEST(StringTranslateStore, MemoryToDisk) {
    LmString abc, wide;
    kRecords[0].make(abc);
    kRecords[1].make(wide);
    // The target is zeroed behind the record.
    DiskOut out = ToDisk(current, kLittle, 12, &abc, kMemory, 0, 1, 12);
    EXPECT_EQ(out.result, 9u);
    EXPECT_EQ(out.bytes, (Bytes{0x07, 0x00, 0x01, 0x01, 0x61, 0x62, 0x63, 0x00, 0xFF, 0x00, 0x00, 0x00}));
    EXPECT_TRUE(out.untouchedBehind);
    out = ToDisk(current, kBig, 10, &wide, kMemory, 0, 1);
    EXPECT_EQ(out.bytes, kRecords[1].big);
    // The memory string's code set is stored as it is, bit 0x20 or not.
    out = ToDisk(current, kZeroSet | kLittle, 9, &abc, kMemory, 0, 1);
    EXPECT_EQ(out.bytes, kRecords[0].little);
    // A target too small keeps what fits; L still tells the whole record.
    out = ToDisk(current, kLittle, 6, &abc, kMemory, 0, 1);
    EXPECT_EQ(out.result, 6u);
    EXPECT_EQ(out.bytes, (Bytes{0x07, 0x00, 0x01, 0x01, 0x61, 0x62}));
    EXPECT_TRUE(out.untouchedBehind);
    out = ToDisk(current, kBig, 7, &wide, kMemory, 0, 1);  // a cut through a swapped unit keeps its high byte
    EXPECT_EQ(out.bytes, (Bytes{0x00, 0x08, 0xFD, 0x01, 0x00, 0xE9, 0x26}));
    EXPECT_TRUE(out.untouchedBehind);
}

TEST(StringTranslateCopy, DiskToDisk) {
    Bytes abc = kRecords[0].little;
    DiskOut out = ToDisk(current, kLittle, 12, abc.data(), kLittle, 9, 1, 12);
    EXPECT_EQ(out.result, 9u);
    EXPECT_EQ(out.bytes, (Bytes{0x07, 0x00, 0x01, 0x01, 0x61, 0x62, 0x63, 0x00, 0xFF, 0x00, 0x00, 0x00}));
    out = ToDisk(current, kLittle, 5, abc.data(), kLittle, 9, 1);
    EXPECT_EQ(out.bytes, (Bytes{0x07, 0x00, 0x01, 0x01, 0x61}));
    EXPECT_TRUE(out.untouchedBehind);
    // The effective code set goes to offset 2: bit 0x20 writes a non-zero set as 0, bit
    // 0x40 writes 0 as the native set (1), and 0x20 is tested first.
    out = ToDisk(current, kZeroSet | kLittle, 9, abc.data(), kZeroSet | kLittle, 9, 1);
    EXPECT_EQ(out.bytes, (Bytes{0x07, 0x00, 0x00, 0x01, 0x61, 0x62, 0x63, 0x00, 0xFF}));
    Bytes native = kRecords[0].little;
    native[2] = 0;
    out = ToDisk(current, kNativeSet | kZeroSet | kLittle, 9, native.data(), kNativeSet | kZeroSet | kLittle, 9, 1);
    EXPECT_EQ(out.bytes, kRecords[0].little);

    // Unequal formats are not moved: the assertion, 0, and the target as it was.
    {
        AssertLog log;
        out = ToDisk(current, kBig, 12, abc.data(), kLittle, 9, 1, 12);
        EXPECT_EQ(out.result, 0u);
        EXPECT_EQ(out.bytes, Bytes(12, kFill));
        out = ToDisk(current, kLittle, 12, abc.data(), kKey | kLittle, 9, 1, 12);
        EXPECT_EQ(out.result, 0u);
        const std::pair<std::string, std::string> entry{"format combination not supported", "src\\lmtypes"};
        EXPECT_EQ(AssertLog::Entries(), (std::vector{entry, entry}));
    }

    // A key in order form copies as it stands into a key target, a block move.
    const Bytes key{0x08, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x10, 0x50, 0x00, 0xFF};
    out = KeyOfDisk(key, kKey | kLittle, 10, kKey | kLittle, 10);
    EXPECT_EQ(out.result, 10u);
    EXPECT_EQ(out.bytes, key);
    // A cut key (L + 2 beyond sourceLength) is read no further than sourceLength; the
    // bytes it lacks are zero and the record size is the answer.
    out = KeyOfDisk(key, kKey | kLittle, 8, kKey | kLittle, 12);
    EXPECT_EQ(out.result, 10u);
    EXPECT_EQ(out.bytes, (Bytes{0x08, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x10, 0x50, 0x00, 0x00}));
    // A text written as code set 0 copies with its characters: no words are built.
    out = KeyOfDisk(kRecords[0].little, kLittle, 9, kKey | kZeroSet | kLittle, 9);
    EXPECT_EQ(out.bytes, (Bytes{0x07, 0x00, 0x00, 0x01, 0x61, 0x62, 0x63, 0x00, 0xFF}));
    // A memory source in such a case is stored in the target's order first.
    LmString orderWords;
    const uint16_t words[] = {0x500C, 0};
    Set(orderWords, words, kOrder, kGeneric);
    out = ToDisk(current, kKey | kBig, 8, &orderWords, kMemory, 0, 1);
    EXPECT_EQ(out.bytes, (Bytes{0x00, 0x06, 0xFE, 0x01, 0x50, 0x0C, 0x00, 0xFF}));
    LmString native0;
    Set(native0, "ab", 0, kGerman);
    out = ToDisk(current, kKey | kLittle, 10, &native0, kMemory, 0, 1, 10);
    EXPECT_EQ(out.result, 8u);
    EXPECT_EQ(out.bytes, (Bytes{0x06, 0x00, 0x00, 0x02, 0x61, 0x62, 0x00, 0xFF, 0x00, 0x00}));
}

TEST(StringTranslateCopy, OldFormBecomesARecord) {
    // "ab" and "" in the old form: L + 3 = 7, code set 0, language 0, the old bytes, and
    // 0xFF behind them. The answer leaves that 0xFF out.
    const Bytes old{0x04, 0x00, 0x61, 0x62, 0x00, 0x00};
    DiskOut out = KeyOfDisk(old, kLittle, 6, kLittle, 12);
    EXPECT_EQ(out.result, 8u);
    out = ToDisk(current, kLittle, 12, Bytes(old).data(), kLittle, 6, 1, 12);
    EXPECT_EQ(out.bytes, (Bytes{0x07, 0x00, 0x00, 0x00, 0x61, 0x62, 0x00, 0x00, 0xFF, 0x00, 0x00, 0x00}));
    // A key target without bit 0x40 keeps code set 0, so this is the copy too; with 0x40
    // the native set is written.
    out = ToDisk(current, kKey | kLittle, 9, Bytes(old).data(), kLittle, 6, 1, 9);
    EXPECT_EQ(out.bytes, (Bytes{0x07, 0x00, 0x00, 0x00, 0x61, 0x62, 0x00, 0x00, 0xFF}));
    out = ToDisk(current, kNativeSet | kLittle, 9, Bytes(old).data(), kNativeSet | kLittle, 6, 1, 9);
    EXPECT_EQ(out.bytes, (Bytes{0x07, 0x00, 0x01, 0x00, 0x61, 0x62, 0x00, 0x00, 0xFF}));
    const Bytes oldBig{0x00, 0x04, 0x61, 0x62, 0x00, 0x00};
    out = ToDisk(current, kBig, 9, Bytes(oldBig).data(), kBig, 6, 1, 9);
    EXPECT_EQ(out.bytes, (Bytes{0x00, 0x07, 0x00, 0x00, 0x61, 0x62, 0x00, 0x00, 0xFF}));
    // Without room for the 0xFF, and cut shorter still.
    out = ToDisk(current, kLittle, 8, Bytes(old).data(), kLittle, 6, 1);
    EXPECT_EQ(out.bytes, (Bytes{0x07, 0x00, 0x00, 0x00, 0x61, 0x62, 0x00, 0x00}));
    EXPECT_TRUE(out.untouchedBehind);
    out = ToDisk(current, kLittle, 6, Bytes(old).data(), kLittle, 6, 1);
    EXPECT_EQ(out.bytes, (Bytes{0x07, 0x00, 0x00, 0x00, 0x61, 0x62}));
    EXPECT_TRUE(out.untouchedBehind);
    // The upgraded record loads back as one text.
    Bytes record{0x07, 0x00, 0x00, 0x00, 0x61, 0x62, 0x00, 0x00, 0xFF};
    LmString s;
    EXPECT_EQ(StringLoad(&s, record.data(), kLittle, 1), 9u);
    EXPECT_EQ(StateOf(s), (State{0, 0, {0x61, 0x62, 0x00, 0x00}}));
}

// In this process "oldIndexUnicodeOrder" has no value, so the flag is on: a Unicode
// text copied into a record is narrowed to the first byte of each unit.
TEST(StringTranslateCopy, UnicodeNarrowing) {
    DefaultConfig(-1)->RemoveValue("debug", "oldIndexUnicodeOrder");
    const uint16_t units[] = {0x61, 0x62, 0};
    const Bytes little{0x08, 0x00, 0xFD, 0x01, 0x61, 0x00, 0x62, 0x00, 0x00, 0xFF};
    const Bytes big{0x00, 0x08, 0xFD, 0x01, 0x00, 0x61, 0x00, 0x62, 0x00, 0xFF};
    // L becomes (8 - 4) / 2 + 4 = 6; offsets 2 and 3 both get the effective code set.
    DiskOut out = KeyOfDisk(little, kLittle, 10, kKey | kZeroSet | kLittle, 10);
    EXPECT_EQ(out.result, 8u);
    EXPECT_EQ(out.bytes, (Bytes{0x06, 0x00, 0x00, 0x00, 0x61, 0x62, 0x00, 0xFF}));
    // The first byte of a big-endian unit is its high byte.
    out = KeyOfDisk(big, kBig, 10, kKey | kZeroSet | kBig, 10);
    EXPECT_EQ(out.bytes, (Bytes{0x00, 0x06, 0x00, 0x00, 0x00, 0x00, 0x00, 0xFF}));
    // A plain disk-to-disk copy narrows too, and the record stays labelled 253.
    out = KeyOfDisk(little, kLittle, 10, kLittle, 10);
    EXPECT_EQ(out.bytes, (Bytes{0x06, 0x00, 0xFD, 0xFD, 0x61, 0x62, 0x00, 0xFF}));
    // From memory, through the image.
    LmString s;
    Set(s, units, kUnicode, kGerman);
    out = ToDisk(current, kKey | kZeroSet | kLittle, 10, &s, kMemory, 0, 1, 10);
    EXPECT_EQ(out.result, 8u);
    EXPECT_EQ(out.bytes, (Bytes{0x06, 0x00, 0x00, 0x00, 0x61, 0x62, 0x00, 0xFF, 0x00, 0x00}));
    // Too small for the whole record: no 00 FF, the text up to targetLength.
    out = KeyOfDisk(little, kLittle, 10, kKey | kZeroSet | kLittle, 7);
    EXPECT_EQ(out.result, 7u);
    EXPECT_EQ(out.bytes, (Bytes{0x06, 0x00, 0x00, 0x00, 0x61, 0x62, 0x00}));
    EXPECT_TRUE(out.untouchedBehind);
    // A record cut by sourceLength: units it does not hold narrow to zero.
    out = KeyOfDisk(little, kLittle, 6, kKey | kZeroSet | kLittle, 8);
    EXPECT_EQ(out.bytes, (Bytes{0x06, 0x00, 0x00, 0x00, 0x61, 0x00, 0x00, 0xFF}));
}

// The flag is decided once per process, so each state is shown in a process of its own.
TEST(StringTranslateCopy, NarrowingFlagIsReadOnce) {
    const std::string style = GTEST_FLAG_GET(death_test_style);
    GTEST_FLAG_SET(death_test_style, "threadsafe");  // a fresh process, the flag undecided
    static const Bytes record{0x08, 0x00, 0xFD, 0x01, 0x61, 0x00, 0x62, 0x00, 0x00, 0xFF};
    static const Bytes narrowed{0x06, 0x00, 0x00, 0x00, 0x61, 0x62, 0x00, 0xFF};
    static const Bytes copied{0x08, 0x00, 0x00, 0x01, 0x61, 0x00, 0x62, 0x00, 0x00, 0xFF};
    const auto copy = [] { return KeyOfDisk(record, kLittle, 10, kKey | kZeroSet | kLittle, 10).bytes; };
    // A non-zero value turns narrowing off, and a later change is not seen.
    EXPECT_EXIT(
        {
            DefaultConfig(-1)->SetValue("debug", "oldIndexUnicodeOrder", 1);
            const bool first = copy() == copied;
            DefaultConfig(-1)->RemoveValue("debug", "oldIndexUnicodeOrder");
            std::exit(first && copy() == copied ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
    // A value of 0 leaves it on; so does no value at all.
    EXPECT_EXIT(
        {
            DefaultConfig(-1)->SetValue("debug", "oldIndexUnicodeOrder", 0);
            const bool first = copy() == narrowed;
            DefaultConfig(-1)->SetValue("debug", "oldIndexUnicodeOrder", 1);
            const bool second = copy() == narrowed;
            DefaultConfig(-1)->RemoveValue("debug", "oldIndexUnicodeOrder");
            std::exit(first && second ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
    GTEST_FLAG_SET(death_test_style, style);
}

// ---------------------------------------------------------------------------
// The order form.
// ---------------------------------------------------------------------------

TEST(StringTranslateKey, OrderWordsAndFamilies) {
    const Bytes abcKey{0x0A, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x10, 0x50, 0x14, 0x50, 0x00, 0xFF};
    const Bytes abcKeyBig{0x00, 0x0A, 0xFE, 0x01, 0x50, 0x0C, 0x50, 0x10, 0x50, 0x14, 0x00, 0xFF};
    LmString abc;
    kRecords[0].make(abc);
    DiskOut out = KeyOf(&abc, 1, kKey | kLittle, 300);
    EXPECT_EQ(out.result, 12u);
    EXPECT_EQ(out.bytes, abcKey);
    EXPECT_TRUE(out.untouchedBehind);
    EXPECT_EQ(KeyOf(&abc, 1, kKey | kBig, 300).bytes, abcKeyBig);
    // The same from a record in either byte order.
    EXPECT_EQ(KeyOfDisk(kRecords[0].little, kLittle, 9, kKey | kLittle, 300).bytes, abcKey);
    EXPECT_EQ(KeyOfDisk(kRecords[0].big, kBig, 9, kKey | kLittle, 300).bytes, abcKey);
    EXPECT_EQ(KeyOfDisk(kRecords[0].big, kBig, 9, kKey | kBig, 300).bytes, abcKeyBig);
    // A 16-bit text gives the same words.
    LmString wide;
    const uint16_t ab[] = {0x61, 0x62, 0};
    Set(wide, ab, kUnicode, kGeneric);
    EXPECT_EQ(KeyOf(&wide, 1, kKey | kBig, 300).bytes,
              (Bytes{0x00, 0x08, 0xFE, 0x01, 0x50, 0x0C, 0x50, 0x10, 0x00, 0xFF}));
    // An expansion gives two words; the language decides which.
    LmString sharpS;
    Set(sharpS, "\xDF", kLatin1, kGeneric);
    EXPECT_EQ(KeyOf(&sharpS, 1, kKey | kLittle, 300).bytes,
              (Bytes{0x08, 0x00, 0xFE, 0x01, 0x55, 0x50, 0x54, 0x50, 0x00, 0xFF}));
    sharpS.SetLanguage(kGerman);  // first s with accent 28: 0x5054 | 28 << 7
    EXPECT_EQ(KeyOf(&sharpS, 1, kKey | kLittle, 300).bytes,
              (Bytes{0x08, 0x00, 0xFE, 0x01, 0x54, 0x5E, 0x54, 0x50, 0x00, 0xFF}));

    // Null and empty texts: the family of a null is 0, so it reads as null again.
    LmString null, empty;
    null.SetNullValue();
    Set(empty, "", kLatin1, kGeneric);
    out = KeyOf(&null, 1, kKey | kNativeSet | kLittle, 300);  // code set 0 made native: a key
    EXPECT_EQ(out.bytes, (Bytes{0x04, 0x00, 0xFE, 0x00, 0x00, 0xFF}));
    LmString back;
    StringLoad(&back, out.bytes.data(), kLittle, 1);
    EXPECT_EQ(back.IsNullValue(), 1);
    EXPECT_EQ(KeyOf(&empty, 1, kKey | kBig, 300).bytes, (Bytes{0x00, 0x04, 0xFE, 0x01, 0x00, 0xFF}));
    EXPECT_EQ(KeyOfDisk(kRecords[5].little, kLittle, 6, kKey | kNativeSet | kLittle, 300).bytes,
              (Bytes{0x04, 0x00, 0xFE, 0x00, 0x00, 0xFF}));

    // The key ends at the first change of family, and says so in its top bit.
    const uint16_t hanInside[] = {0x61, 0x4E00, 0x62, 0};
    const uint16_t hanFirst[] = {0x4E00, 0x61, 0};
    const uint16_t hanOnly[] = {0x4E00, 0};
    LmString mixed;
    Set(mixed, hanInside, kUnicode, kGeneric);
    EXPECT_EQ(KeyOf(&mixed, 1, kKey | kLittle, 300).bytes, (Bytes{0x06, 0x00, 0xFE, 0x81, 0x0C, 0x50, 0x00, 0xFF}));
    Set(mixed, hanFirst, kUnicode, kGeneric);  // the first word takes the Han family
    EXPECT_EQ(KeyOf(&mixed, 1, kKey | kLittle, 300).bytes, (Bytes{0x06, 0x00, 0xFE, 0x94, 0x00, 0x4E, 0x00, 0xFF}));
    Set(mixed, hanOnly, kUnicode, kGeneric);
    EXPECT_EQ(KeyOf(&mixed, 1, kKey | kLittle, 300).bytes, (Bytes{0x06, 0x00, 0xFE, 0x14, 0x00, 0x4E, 0x00, 0xFF}));
    const Bytes mixedRecordBig{0x00, 0x0A, 0xFD, 0x01, 0x00, 0x61, 0x4E, 0x00, 0x00, 0x62, 0x00, 0xFF};
    EXPECT_EQ(KeyOfDisk(mixedRecordBig, kBig, 12, kKey | kBig, 300).bytes,
              (Bytes{0x00, 0x06, 0xFE, 0x81, 0x50, 0x0C, 0x00, 0xFF}));

    // Code set 0 builds words under bit 0x40 only; a set made 0 by bit 0x20 copies.
    Bytes native = kRecords[0].little;
    native[2] = 0;
    EXPECT_EQ(KeyOfDisk(native, kLittle, 9, kKey | kZeroSet | kNativeSet | kLittle, 300).bytes, abcKey);
    EXPECT_EQ(KeyOfDisk(kRecords[0].little, kLittle, 9, kKey | kZeroSet | kNativeSet | kLittle, 300).bytes,
              (Bytes{0x07, 0x00, 0x00, 0x01, 0x61, 0x62, 0x63, 0x00, 0xFF}));
    // An old-form array gives one key per text, language 0.
    const Bytes old{0x04, 0x00, 0x61, 0x62, 0x00, 0x00};
    out = KeyOfDisk(old, kLittle, 6, kKey | kNativeSet | kLittle, 300, 2);
    EXPECT_EQ(out.result, 16u);
    EXPECT_EQ(out.bytes, (Bytes{0x08, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x10, 0x50, 0x00, 0xFF,  //
                                0x04, 0x00, 0xFE, 0x01, 0x00, 0xFF}));
    // Several strings: one key after the other.
    LmString pair[2];
    Set(pair[0], "a", kLatin1, kGeneric);
    Set(pair[1], "b", kLatin1, kGerman);
    out = KeyOf(pair, 2, kKey | kLittle, 300);
    EXPECT_EQ(out.result, 16u);
    EXPECT_EQ(out.bytes, (Bytes{0x06, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x00, 0xFF,  //
                                0x06, 0x00, 0xFE, 0x01, 0x10, 0x50, 0x00, 0xFF}));
    Bytes records = kRecords[0].little;
    records.insert(records.end(), kRecords[5].little.begin(), kRecords[5].little.end());
    out = KeyOfDisk(records, kLittle, 15, kKey | kNativeSet | kLittle, 300, 2);
    EXPECT_EQ(out.result, 18u);
    EXPECT_EQ(Bytes(out.bytes.begin() + 12, out.bytes.end()), (Bytes{0x04, 0x00, 0xFE, 0x00, 0x00, 0xFF}));
}

TEST(StringTranslateKey, CapacityAndCutKeys) {
    LmString abc;
    kRecords[0].make(abc);
    // Room for exactly the key: complete.
    EXPECT_EQ(KeyOf(&abc, 1, kKey | kLittle, 12).bytes,
              (Bytes{0x0A, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x10, 0x50, 0x14, 0x50, 0x00, 0xFF}));
    // A key of at most 256 bytes cut at its capacity has no 00 FF, and its L + 2
    // exceeds targetLength by two.
    DiskOut out = KeyOf(&abc, 1, kKey | kLittle, 8);
    EXPECT_EQ(out.result, 8u);
    EXPECT_EQ(out.bytes, (Bytes{0x08, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x10, 0x50}));
    EXPECT_TRUE(out.untouchedBehind);
    out = KeyOf(&abc, 1, kKey | kBig, 8);
    EXPECT_EQ(out.bytes, (Bytes{0x00, 0x08, 0xFE, 0x01, 0x50, 0x0C, 0x50, 0x10}));
    // A word is written whole: with an odd room the last one ends a byte behind it.
    out = KeyOf(&abc, 1, kKey | kLittle, 7);
    EXPECT_EQ(out.result, 8u);
    EXPECT_EQ(out.bytes, (Bytes{0x08, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x10, 0x50}));
    EXPECT_TRUE(out.untouchedBehind);
    out = KeyOf(&abc, 1, kKey | kLittle, 5);
    EXPECT_EQ(out.bytes, (Bytes{0x06, 0x00, 0xFE, 0x01, 0x0C, 0x50}));
    EXPECT_TRUE(out.untouchedBehind);
    out = KeyOf(&abc, 1, kKey | kLittle, 11);  // the closing pair itself
    EXPECT_EQ(out.result, 12u);
    EXPECT_EQ(out.bytes, (Bytes{0x0A, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x10, 0x50, 0x14, 0x50, 0x00, 0xFF}));
    EXPECT_TRUE(out.untouchedBehind);
    // Fewer than 5 bytes: nothing.
    out = KeyOf(&abc, 1, kKey | kLittle, 4);
    EXPECT_EQ(out.result, 0u);
    EXPECT_EQ(ToDisk(current, kKey | kLittle, 4, &abc, kMemory, 0, 1, 4).bytes, Bytes(4, kFill));
    // The second of two strings needs 5 bytes of its own.
    LmString pair[2];
    Set(pair[0], "a", kLatin1, kGeneric);
    Set(pair[1], "b", kLatin1, kGeneric);
    out = KeyOf(pair, 2, kKey | kLittle, 12);
    EXPECT_EQ(out.result, 8u);
    EXPECT_TRUE(out.untouchedBehind);

    // Above 256 bytes the last word gives way to the closing pair: 147 words of 'a',
    // 00 FF, and L 298.
    LmString many;
    const std::string as(200, 'a');
    Set(many, as.c_str(), kLatin1, kGeneric);
    out = KeyOf(&many, 1, kKey | kLittle, 300);
    EXPECT_EQ(out.result, 300u);
    Bytes expected{0x2A, 0x01, 0xFE, 0x01};
    for (int i = 0; i < 147; ++i) expected.insert(expected.end(), {0x0C, 0x50});
    expected.insert(expected.end(), {0x00, 0xFF});
    EXPECT_EQ(out.bytes, expected);
    EXPECT_TRUE(out.untouchedBehind);
    // At 256 the key is cut short: 126 words, L 256.
    out = KeyOf(&many, 1, kKey | kLittle, 256);
    EXPECT_EQ(out.result, 256u);
    EXPECT_EQ(Bytes(out.bytes.begin(), out.bytes.begin() + 4), (Bytes{0x00, 0x01, 0xFE, 0x01}));
    EXPECT_EQ(Bytes(out.bytes.end() - 2, out.bytes.end()), (Bytes{0x0C, 0x50}));
}

TEST(StringTranslateKey, SourceLengthBounds) {
    // sourceLength ends the text at the wildcard of "ab*": the words of "ab", cut short
    // at a small capacity, closed over the last word at a large one.
    const Bytes abStar{0x07, 0x00, 0x01, 0x01, 0x61, 0x62, 0x2A, 0x00, 0xFF};
    DiskOut out = KeyOfDisk(abStar, kLittle, 6, kKey | kLittle, 200);
    EXPECT_EQ(out.result, 8u);
    EXPECT_EQ(out.bytes, (Bytes{0x08, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x10, 0x50}));
    out = KeyOfDisk(abStar, kLittle, 6, kKey | kLittle, 300);
    EXPECT_EQ(out.bytes, (Bytes{0x06, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x00, 0xFF}));
    // A text with nothing inside sourceLength reads as empty.
    const Bytes emptyWide{0x04, 0x00, 0xFD, 0x01, 0x00, 0xFF};
    EXPECT_EQ(KeyOfDisk(emptyWide, kLittle, 4, kKey | kLittle, 300).bytes, (Bytes{0x04, 0x00, 0xFE, 0x01, 0x00, 0xFF}));

    // A whole 16-bit record ends at its closing pair: the final 0xFF is zeroed for the
    // walk and put back. A record inside a longer source reads the same.
    Bytes wide{0x08, 0x00, 0xFD, 0x01, 0x61, 0x00, 0x62, 0x00, 0x00, 0xFF, 0x33, 0x44};
    const Bytes before = wide;
    const Bytes abKey{0x08, 0x00, 0xFE, 0x01, 0x0C, 0x50, 0x10, 0x50, 0x00, 0xFF};
    for (unsigned length : {10u, 12u}) {
        Bytes target(16, kFill);
        EXPECT_EQ(Translate(current, target.data(), kKey | kLittle, 16, wide.data(), kLittle, length, 1), 10u);
        EXPECT_EQ(Bytes(target.begin(), target.begin() + 10), abKey);
        EXPECT_EQ(wide, before);
    }

    // The one read the collation forces: a contraction looks at the character behind
    // the last one, even where sourceLength ends before it. Traditional Spanish "ch".
    const Bytes ch{0x06, 0x00, 0x01, kSpanishTraditional, 0x63, 0x68, 0x00, 0xFF};
    EXPECT_EQ(KeyOfDisk(ch, kLittle, 8, kKey | kLittle, 300).bytes,
              (Bytes{0x06, 0x00, 0xFE, 0x01, 0x16, 0x50, 0x00, 0xFF}));
    Bytes cutAfterC = ch;  // sourceLength 5 ends after 'c'; the 'h' behind it still joins
    Bytes target(10, kFill);
    EXPECT_EQ(Translate(current, target.data(), kKey | kLittle, 10, cutAfterC.data(), kLittle, 5, 1), 6u);
    EXPECT_EQ(Bytes(target.begin(), target.begin() + 6), (Bytes{0x06, 0x00, 0xFE, 0x01, 0x16, 0x50}));
}

TEST(StringTranslateKey, LengthBeyond16BitsIsReported) {
    // 33000 words and the closing pair: 66006 bytes, L 66004, stored as 0x01D4.
    LmString s;
    const std::string text(33000, 'a');
    Set(s, text.c_str(), kLatin1, kGeneric);
    AssertLog log;
    Bytes target(66010, kFill);
    EXPECT_EQ(Translate(current, target.data(), kKey | kLittle, 66010, &s, kMemory, 0, 1), 66006u);
    EXPECT_EQ(Bytes(target.begin(), target.begin() + 6), (Bytes{0xD4, 0x01, 0xFE, 0x01, 0x0C, 0x50}));
    EXPECT_EQ(Bytes(target.begin() + 66002, target.end()), (Bytes{0x0C, 0x50, 0x00, 0xFF, kFill, kFill, kFill, kFill}));
    const std::pair<std::string, std::string> entry{"(o_u4b)_nLen == nLen", "src\\lmtypes"};
    EXPECT_EQ(AssertLog::Entries(), std::vector{entry});
}

// ---------------------------------------------------------------------------
// The legacy table.
// ---------------------------------------------------------------------------

TEST(StringDiskLegacy, TranslateDownAndUp) {
    LmString pair[2];
    Set(pair[0], "ab", kLatin1, kGeneric);
    Set(pair[1], "", kLatin1, kGeneric);
    DiskOut out = ToDisk(legacy, kBig, 8, pair, kMemory, 0, 2, 8);
    EXPECT_EQ(out.result, 6u);
    EXPECT_EQ(out.bytes, (Bytes{0x00, 0x04, 0x61, 0x62, 0x00, 0x00, 0x00, 0x00}));
    out = ToDisk(legacy, kLittle, 4, pair, kMemory, 0, 2);
    EXPECT_EQ(out.bytes, (Bytes{0x04, 0x00, 0x61, 0x62}));
    EXPECT_TRUE(out.untouchedBehind);

    // A current record loses its labels: L falls by 3, the text and its zero follow.
    Bytes abc = kRecords[0].little;
    out = ToDisk(legacy, kLittle, 6, abc.data(), kLittle, 9, 1);
    EXPECT_EQ(out.bytes, (Bytes{0x04, 0x00, 0x61, 0x62, 0x63, 0x00}));
    out = ToDisk(legacy, kBig, 9, abc.data(), kLittle, 9, 1, 9);
    EXPECT_EQ(out.result, 6u);
    EXPECT_EQ(out.bytes, (Bytes{0x00, 0x04, 0x61, 0x62, 0x63, 0x00, 0x00, 0x00, 0x00}));
    out = ToDisk(legacy, kLittle, 4, abc.data(), kLittle, 9, 1);
    EXPECT_EQ(out.bytes, (Bytes{0x04, 0x00, 0x61, 0x62}));
    EXPECT_TRUE(out.untouchedBehind);
    // A 16-bit text goes down as it is.
    Bytes wide{0x08, 0x00, 0xFD, 0x01, 0x61, 0x00, 0x62, 0x00, 0x00, 0xFF};
    EXPECT_EQ(ToDisk(legacy, kLittle, 7, wide.data(), kLittle, 10, 1).bytes,
              (Bytes{0x05, 0x00, 0x61, 0x00, 0x62, 0x00, 0x00}));
    // An old-form source is copied, its word in the target's order.
    Bytes old{0x04, 0x00, 0x61, 0x62, 0x00, 0x00};
    EXPECT_EQ(ToDisk(legacy, kBig, 6, old.data(), kLittle, 6, 1).bytes, (Bytes{0x00, 0x04, 0x61, 0x62, 0x00, 0x00}));

    // Into memory: the load of the current table reads both forms.
    LmString loaded[2];
    EXPECT_EQ(Translate(legacy, loaded, kMemory, 0, old.data(), kLittle, 6, 2), 6u);
    EXPECT_EQ(StateOf(loaded[0]), (State{kLatin1, kGeneric, {0x61, 0x62, 0x00}}));
    EXPECT_EQ(Translate(legacy, loaded, kMemory, 0, abc.data(), kLittle, 9, 1), 9u);
    EXPECT_EQ(StateOf(loaded[0]), kRecords[0].loaded);
    LmString copies[2];
    EXPECT_EQ(Translate(legacy, copies, kMemory, 0, pair, kMemory, 0, 2), 32u);
    EXPECT_EQ(StateOf(copies[0]), StateOf(pair[0]));
    EXPECT_EQ(StateOf(copies[1]), StateOf(pair[1]));
}

}  // namespace
