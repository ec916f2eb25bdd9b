// The disk forms of LmString: the current record, the old form of the legacy table and
// the order form of index keys, with StringTranslate between all of them. Every byte
// image below is worked out by hand from the record layout and the order words of the
// collation data (letter word 01 cc aaaaa lllll ee: 'a' 0x500C, 'b' 0x5010, 'c'
// 0x5014, 's' 0x5054; a character without record, such as U+4E00, is its own word in
// family 20).
#include "testkit.h"

using namespace lmtest;

namespace {

constexpr unsigned char kLatin1 = 1, kUnicode = 253, kOrder = 254;
constexpr unsigned char kGeneric = 1, kGerman = 2;
constexpr unsigned char kLittle = LmFormatLittle, kBig = LmFormatBig, kMemory = LmFormatMemory;
constexpr unsigned char kKey = LM_STRFMT_ORDER, kZeroSet = LM_STRFMT_CODESET_ZERO,
                        kNativeSet = LM_STRFMT_CODESET_NATIVE;
constexpr uint8_t kFill = 0xEE;  // bytes a call must not touch

const LmTypeMgr current(5);
const LmTypeMgr legacy(3);

LmString Make(const void* text, unsigned char codeSet, unsigned char language, uint16_t n = 65535) {
    return Raw(codeSet, language, text, n);
}

unsigned Translate(const LmTypeMgr& mgr, void* dest, unsigned char targetFormat, unsigned targetLength, void* src,
                   unsigned char sourceFormat, unsigned sourceLength, unsigned count) {
    return mgr.Translate(LmSTRING_T, dest, targetFormat, targetLength, src, sourceFormat, sourceLength, count);
}

// A translation into a disk target of targetLength bytes inside a larger buffer of
// untouched bytes: the result and the first `shown` bytes (default: the result).
// Nothing may be written behind max(result, targetLength).
std::pair<unsigned, Bytes> ToDisk(const LmTypeMgr& mgr, unsigned char targetFormat, unsigned targetLength, void* src,
                                  unsigned char sourceFormat, unsigned sourceLength, unsigned count,
                                  unsigned shown = 0) {
    Bytes buffer(targetLength + 16u, kFill);
    const unsigned result =
        Translate(mgr, buffer.data(), targetFormat, targetLength, src, sourceFormat, sourceLength, count);
    for (size_t i = std::max(result, targetLength); i < buffer.size(); ++i) EXPECT_EQ(buffer[i], kFill) << i;
    return {result, Bytes(buffer.begin(), buffer.begin() + (shown == 0 ? result : shown))};
}

// A disk source is copied into a heap block of exactly its length, so that a read past
// sourceLength is a fault under the address sanitizer.
std::pair<unsigned, Bytes> FromDisk(const Bytes& record, unsigned char sourceFormat, unsigned sourceLength,
                                    unsigned char targetFormat, unsigned targetLength, unsigned count = 1,
                                    const LmTypeMgr& mgr = current) {
    auto source = Exact(Bytes(record.begin(), record.begin() + sourceLength));
    return ToDisk(mgr, targetFormat, targetLength, source.get(), sourceFormat, sourceLength, count);
}

// The current record in both byte orders and what it loads back as.
struct RecordCase {
    const char* name;
    LmString (*make)();
    const char *little, *big;
    State loaded;
};

const RecordCase kRecords[] = {
    {"abc",
     [] { return Make("abc", kLatin1, kGeneric); },
     "0700 0101 616263 00FF",
     "0007 0101 616263 00FF",
     {kLatin1, kGeneric, Hex("61626300")}},
    {"two 16-bit units",
     [] { return Make(u"\u00E9\u263A", kUnicode, kGeneric); },
     "0800 FD01 E9003A26 00FF",
     "0008 FD01 00E9263A 00FF",
     {kUnicode, kGeneric, Hex("E9003A260000")}},
    {"no buffer",
     [] { return LmString(kLatin1, kGerman); },
     "0400 0102 00FF",
     "0004 0102 00FF",
     {kLatin1, kGerman, {}}},
    // An empty text has a buffer in memory and none after a load; the labels stay.
    {"empty text", [] { return Make("", kLatin1, 9); }, "0400 0109 00FF", "0004 0109 00FF", {kLatin1, 9, {}}},
    {"empty 16-bit text",
     [] { return Make(u"", kUnicode, kGeneric); },
     "0400 FD01 00FF",
     "0004 FD01 00FF",
     {kUnicode, kGeneric, {}}},
    {"null value",
     [] {
         LmString s;
         s.SetNullValue();
         return s;
     },
     "0400 00FE 00FF",
     "0004 00FE 00FF",
     {0, LM_LANGUAGE_NULL, {}}},
    // The record follows size, not Len: the bytes behind an inner zero are kept.
    {"inner zero",
     [] { return Make("ab\0cd", kLatin1, kGeneric, 5); },
     "0900 0101 6162006364 00FF",
     "0009 0101 6162006364 00FF",
     {kLatin1, kGeneric, Hex("616200636400")}}};
const Bytes kAbcLittle = Hex(kRecords[0].little), kNullLittle = Hex(kRecords[5].little);
const Bytes kAbcKey = Hex("0A00 FE01 0C5010501450 00FF"), kAbcKeyBig = Hex("000A FE01 500C50105014 00FF");
const Bytes kOld = Hex("0400 6162 00 00");  // "ab" and "" in the old form

}  // namespace

TEST(StringDisk, GoldenRecordsStoreSizeAndLoad) {
    for (const RecordCase& c : kRecords) {
        SCOPED_TRACE(c.name);
        LmString s = c.make();
        for (const auto& [format, image] : {std::pair{kLittle, Hex(c.little)}, std::pair{kBig, Hex(c.big)}}) {
            Bytes out(image.size() + 4, kFill);
            EXPECT_EQ(StringStore(out.data(), &s, format, 1), image.size());
            EXPECT_EQ(out, Cat({image, Bytes(4, kFill)}));
            EXPECT_EQ(StringSizeGet(&s, kMemory, format, 1), image.size());
            EXPECT_EQ(current.DiskLenGet(LmSTRING_T, &s, format, 1, kMemory), image.size());
            EXPECT_EQ(StringSizeGet(image.data(), format, format, 1), image.size());  // the image measures itself
            EXPECT_EQ(current.Store(LmSTRING_T, out.data(), &s, format, 1), image.size());
            // Loading: the old buffer goes before the record is read; both tables load.
            LmString back("old text"), viaLegacy("old");
            EXPECT_EQ(StringLoad(&back, image.data(), format, 1), image.size());
            EXPECT_EQ(StateOf(back), c.loaded);
            EXPECT_EQ(legacy.Load(LmSTRING_T, &viaLegacy, const_cast<uint8_t*>(image.data()), format, 1), image.size());
            EXPECT_EQ(StateOf(viaLegacy), c.loaded);
        }
    }
    // Arrays are records back to back.
    LmString pair[2] = {kRecords[0].make(), kRecords[5].make()};
    const Bytes both = Cat({kAbcLittle, kNullLittle});
    Bytes out(both.size(), kFill);
    EXPECT_EQ(StringStore(out.data(), pair, kLittle, 2), 15u);
    EXPECT_EQ(out, both);
    EXPECT_EQ(StringSizeGet(pair, kMemory, kLittle, 2) + StringSizeGet(both.data(), kLittle, kLittle, 2), 30u);
    LmString two[2];
    EXPECT_EQ(StringLoad(two, Cat({Hex(kRecords[1].big), Hex(kRecords[0].big)}).data(), kBig, 2), 19u);
    EXPECT_EQ(StateOf(two[0]), kRecords[1].loaded);
    EXPECT_EQ(StateOf(two[1]), kRecords[0].loaded);
    EXPECT_EQ(current.Desc(LmSTRING_T)->NullSizeGet(3) + legacy.Desc(LmSTRING_T)->NullSizeGet(2), 18u + 12u);
    // A length word of 0, and a count of 0, read nothing and leave the target alone.
    LmString kept("kept");
    EXPECT_EQ(StringLoad(&kept, Hex("0000 0101 00FF").data(), kLittle, 1), 0u);
    EXPECT_EQ(StringLoad(&kept, kAbcLittle.data(), kLittle, 0), 0u);
    EXPECT_EQ(StateOf(kept), (State{1, 1, Of("kept", 5)}));
}

TEST(StringDisk, OldFormStoreSizeAndLoad) {
    LmString pair[2] = {Make("ab", kLatin1, kGerman), Make("", kLatin1, kGerman)};
    for (const auto& [format, image] : {std::pair{kLittle, kOld}, std::pair{kBig, Hex("0004 6162 00 00")}}) {
        Bytes out(8, kFill);
        EXPECT_EQ(legacy.Store(LmSTRING_T, out.data(), pair, format, 2), 6u);
        EXPECT_EQ(out, Cat({image, {kFill, kFill}}));
    }
    // Memory: 2 + count + the Len of each. Disk: T + 2, T read in the target's order.
    Bytes image = kOld;
    EXPECT_EQ(legacy.DiskLenGet(LmSTRING_T, pair, kLittle, 2, kMemory), 6u);
    EXPECT_EQ(legacy.DiskLenGet(LmSTRING_T, image.data(), kLittle, 1, kLittle), 6u);
    EXPECT_EQ(legacy.DiskLenGet(LmSTRING_T, image.data(), kBig, 1, kLittle), 0x0400u + 2);
    EXPECT_EQ(StringSizeGet(image.data(), kLittle, kLittle, 2), 6u);  // the current size sees the final zero
    // Loading: plain texts in the default 8-bit code set and language, one after the
    // other; a string the array has no text for gets none.
    LmString loaded[3] = {LmString(), LmString(), Make("x", kLatin1, 7)};
    EXPECT_EQ(StringLoad(loaded, Hex("0004 6162 00 00").data(), kBig, 3), 6u);
    EXPECT_EQ(StateOf(loaded[0]), (State{kLatin1, kGeneric, Hex("616200")}));
    EXPECT_EQ(StateOf(loaded[1]), (State{kLatin1, kGeneric, {0}}));
    EXPECT_EQ(StateOf(loaded[2]), (State{kLatin1, kGeneric, {}}));
    EXPECT_EQ(StringLoad(loaded, kOld.data(), kLittle, 0), 6u);
    // A 16-bit string gives its first Len bytes, as the size counts them.
    LmString wide = Make(u"AB", kUnicode, kGeneric);
    Bytes out(5, kFill);
    EXPECT_EQ(legacy.Store(LmSTRING_T, out.data(), &wide, kLittle, 1), 5u);
    EXPECT_EQ(out, Hex("0300 4100 00"));
    EXPECT_EQ(legacy.DiskLenGet(LmSTRING_T, &wide, kLittle, 1, kMemory), 5u);
}

TEST(StringDisk, SizesOfOrderTargetsAndMemFiles) {
    LmString abc = Make("abc", kLatin1, kGeneric), native = Make("abc", 0, kGeneric);  // B = 5
    LmString order = Make(u"\u500C", kOrder, kGeneric), wide = kRecords[1].make();     // B = 4, 6
    const std::tuple<LmString*, unsigned char, unsigned> memory[] = {{&abc, kLittle, 9},
                                                                     {&abc, kKey | kLittle, 5 * 4 + 4},
                                                                     {&abc, kKey | kZeroSet | kLittle, 9},  // no words
                                                                     {&native, kKey | kLittle, 9},
                                                                     {&native, kKey | kNativeSet | kBig, 5 * 4 + 4},
                                                                     {&order, kKey | kLittle, 8},
                                                                     {&wide, kKey | kBig, 6 * 2 + 4},
                                                                     {&wide, kKey | kZeroSet | kLittle, 10}};
    for (const auto& [s, target, size] : memory) EXPECT_EQ(StringSizeGet(s, kMemory, target, 1), size) << int{target};
    // A disk image: L scaled by the code set byte of the record, in 16 bits.
    Bytes image = kAbcLittle, wideImage = Hex(kRecords[1].little), huge = Hex("0050 0101");
    EXPECT_EQ(StringSizeGet(image.data(), kLittle, kKey | kLittle, 1), 7u * 4 + 2);
    EXPECT_EQ(StringSizeGet(wideImage.data(), kLittle, kKey | kLittle, 1), 8u * 2 + 2);
    EXPECT_EQ(StringSizeGet(huge.data(), kLittle, kKey | kLittle, 1), 0x4000u + 2);  // 0x14000 in 16 bits
    image[2] = 0;
    EXPECT_EQ(StringSizeGet(image.data(), kLittle, kKey | kLittle, 1), 9u);
    EXPECT_EQ(StringSizeGet(image.data(), kLittle, kKey | kNativeSet | kLittle, 1), 30u);
    // Several records: the step also takes the scaled L. "abc" (L 7, scaled 28) sends the
    // reader to offset 30, where it finds L 5.
    Bytes two(40, 0);
    std::memcpy(two.data(), kAbcLittle.data(), 9);
    two[30] = 0x05;
    two[32] = kLatin1;
    EXPECT_EQ(StringSizeGet(two.data(), kLittle, kKey | kLittle, 2), 30u + 22);

    // "abc" and "de": 9 + 8 bytes, behind 3 bytes that are not ours; the file does not move.
    Bytes data = Hex("AAAAAA 0700 0101 616263 00FF 0600 0101 6465 00FF");
    MemFile file(data.data(), static_cast<uint32_t>(data.size()));
    uint32_t granted = 0;
    file.Seek(3, MemFile::FromStart, 0, granted);
    EXPECT_EQ(current.DiskLenGetFromMemFile(LmSTRING_T, &file, kLittle, 2), 17u);
    EXPECT_EQ(current.DiskLenGetFromMemFile(LmSTRING_T, &file, kKey | kLittle, 1), 7u * 4 + 2);
    EXPECT_EQ(file.Position(), 3u);
    // A record that runs past the end while more are to come: 65535 for it and each one
    // after it; the last string is taken at its word.
    MemFile cut(data.data() + 3, 8), firstOnly(data.data() + 3, 10);
    EXPECT_EQ(current.DiskLenGetFromMemFile(LmSTRING_T, &cut, kLittle, 3), 3u * 65535);
    EXPECT_EQ(current.DiskLenGetFromMemFile(LmSTRING_T, &cut, kLittle, 1), 9u);
    EXPECT_EQ(current.DiskLenGetFromMemFile(LmSTRING_T, &firstOnly, kLittle, 2), 65535u);
    // An old-form array answers its one record; no word to read: 0.
    Bytes old = kOld;
    MemFile oldFile(old.data(), 6), atEnd(data.data(), 4), none(nullptr, 0);
    EXPECT_EQ(current.DiskLenGetFromMemFile(LmSTRING_T, &oldFile, kLittle, 2), 6u);
    EXPECT_EQ(legacy.DiskLenGetFromMemFile(LmSTRING_T, &oldFile, kLittle, 1), 6u);
    EXPECT_EQ(legacy.DiskLenGetFromMemFile(LmSTRING_T, &oldFile, kLittle, 2), 65535u);
    EXPECT_EQ(legacy.DiskLenGetFromMemFile(LmSTRING_T, &oldFile, kBig, 1), 0x0400u + 2);
    atEnd.Seek(0, MemFile::FromEnd, 0, granted);
    EXPECT_EQ(current.DiskLenGetFromMemFile(LmSTRING_T, &atEnd, kLittle, 1) +
                  legacy.DiskLenGetFromMemFile(LmSTRING_T, &atEnd, kLittle, 1) +
                  current.DiskLenGetFromMemFile(LmSTRING_T, &none, kLittle, 1),
              0u);
}

TEST(StringTranslate, IntoMemory) {
    LmString from[2] = {kRecords[1].make(), kRecords[5].make()}, to[2];
    EXPECT_EQ(Translate(current, to, kMemory, 0, from, kMemory, 0, 2), 32u);
    EXPECT_EQ(StateOf(to[1]), StateOf(from[1]));
    EXPECT_EQ(StateOf(to[0]), StateOf(from[0]));
    const State abcWords{kOrder, kGeneric, Hex("0C5010501450 0000")};
    // {source, format, sourceLength, count, result, states}: a plain record is loaded
    // whatever sourceLength says; a key, whole or cut without its 00 FF, as a record with
    // the words in the machine's order; cut within its words, L falls to what is there.
    // Strings the key has no record for take the last labels and no text: 6 each. With
    // sourceLength 5 no string is read, and with 3 the labels are read all the same.
    const struct {
        Bytes source;
        unsigned char format;
        unsigned length, count, result;
        std::vector<State> states;
    } cases[] = {{Hex(kRecords[0].big), kBig, 0, 1, 9, {kRecords[0].loaded}},
                 {kAbcKey, kKey | kLittle, 12, 1, 12, {abcWords}},
                 {kAbcKey, kKey | kLittle, 10, 1, 12, {abcWords}},
                 {kAbcKeyBig, kKey | kBig, 10, 1, 12, {abcWords}},
                 {kAbcKey, kKey | kLittle, 8, 1, 10, {{kOrder, kGeneric, Hex("0C501050 0000")}}},
                 {kAbcKey, kKey | kLittle, 10, 3, 24, {abcWords, {kOrder, kGeneric, {}}, {kOrder, kGeneric, {}}}},
                 {kAbcKey, kKey | kLittle, 5, 1, 6, {{kOrder, kGeneric, {}}}},
                 {kAbcKey, kKey | kLittle, 3, 1, 6, {{kOrder, kGeneric, {}}}},
                 {Hex("0600 FE01 0C50 00FF 0600 FE14 004E 00FF"),
                  kKey | kLittle,
                  16,
                  2,
                  16,
                  {{kOrder, kGeneric, Hex("0C500000")}, {kOrder, 20, Hex("004E0000")}}},
                 // The longest key that comes this way: 259 bytes of a record claiming 261.
                 {Cat({Hex("0301 0101"), Bytes(255, 'x')}),
                  kKey | kLittle,
                  259,
                  1,
                  261,
                  {{kLatin1, kGeneric, Cat({Bytes(255, 'x'), {0}})}}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "row " << (&c - cases));
        std::vector<LmString> strings(c.count, LmString("old"));
        if (c.count == 3) strings[1] = Make("x", kLatin1, kGerman);
        auto source = Exact(Bytes(c.source.begin(), c.source.begin() + std::max(c.length, 4u)));
        EXPECT_EQ(Translate(current, strings.data(), kMemory, 0,
                            c.length == 0 ? const_cast<uint8_t*>(c.source.data()) : source.get(), c.format, c.length,
                            c.count),
                  c.result);
        for (unsigned i = 0; i < c.count; ++i) EXPECT_EQ(StateOf(strings[i]), c.states[i]) << i;
    }
    // The legacy table loads both forms.
    LmString loaded[2];
    Bytes old = kOld, abc = kAbcLittle;
    EXPECT_EQ(Translate(legacy, loaded, kMemory, 0, old.data(), kLittle, 6, 2), 6u);
    EXPECT_EQ(StateOf(loaded[0]), (State{kLatin1, kGeneric, Hex("616200")}));
    EXPECT_EQ(Translate(legacy, loaded, kMemory, 0, abc.data(), kLittle, 9, 1), 9u);
    EXPECT_EQ(StateOf(loaded[0]), kRecords[0].loaded);
}

TEST(StringTranslateDeathTest, KeyOf260BytesEndsTheProcess) {
    Bytes key = Cat({Hex("0401 0101"), Bytes(256, 'x')});  // L 260: the record claims 262 bytes
    EXPECT_DEATH(
        {
            LmString s;
            Translate(current, &s, kMemory, 0, key.data(), kKey | kLittle, 260, 1);
        },
        "260 bytes exceeds the 259-byte key buffer");
}

TEST(StringTranslate, BetweenDiskFormsWithoutOrderWords) {
    LmString abc = kRecords[0].make(), wide = kRecords[1].make(), orderWords = Make(u"\u500C", kOrder, kGeneric);
    LmString native0 = Make("ab", 0, kGerman);
    // {target format, target length, shown, result, bytes} from memory: the target is
    // zeroed behind the record; the code set is stored as it is, bit 0x20 or not; a target
    // too small keeps what fits and L still tells the whole record (a cut through a
    // swapped unit keeps its high byte); a memory source of order words or code set 0 is
    // stored in the target's order.
    const struct {
        LmString* s;
        unsigned char format;
        unsigned length, shown, result;
        const char* bytes;
    } memory[] = {{&abc, kLittle, 12, 12, 9, "0700 0101 616263 00FF 000000"},
                  {&wide, kBig, 10, 0, 10, "0008 FD01 00E9263A 00FF"},
                  {&abc, kZeroSet | kLittle, 9, 0, 9, "0700 0101 616263 00FF"},
                  {&abc, kLittle, 6, 0, 6, "0700 0101 6162"},
                  {&wide, kBig, 7, 0, 7, "0008 FD01 00E926"},
                  {&orderWords, kKey | kBig, 8, 0, 8, "0006 FE01 500C 00FF"},
                  {&native0, kKey | kLittle, 10, 10, 8, "0600 0002 6162 00FF 0000"}};
    for (const auto& c : memory) {
        EXPECT_EQ(ToDisk(current, c.format, c.length, c.s, kMemory, 0, 1, c.shown),
                  std::make_pair(c.result, Hex(c.bytes)))
            << c.bytes;
    }
    // Disk to disk: a copy, cut at the target; the effective code set goes to offset 2:
    // bit 0x20 writes a non-zero set as 0, bit 0x40 writes 0 as the native set, 0x20
    // first. A key copies as it stands into a key target; a cut key (L + 2 beyond
    // sourceLength) is read no further, the bytes it lacks are zero. A text written as
    // code set 0 copies with its characters: no words are built. An old-form source
    // becomes a record: L + 3, code set 0 (native under 0x40), language 0, the old bytes
    // and 0xFF, which the answer leaves out.
    Bytes native = kAbcLittle;
    native[2] = 0;
    const Bytes key = Hex("0800 FE01 0C501050 00FF");
    const struct {
        const Bytes& source;
        unsigned char sourceFormat;
        unsigned sourceLength;
        unsigned char format;
        unsigned length, result;
        const char* bytes;
    } disk[] = {
        {kAbcLittle, kLittle, 9, kLittle, 5, 5, "0700 0101 61"},
        {kAbcLittle, kZeroSet | kLittle, 9, kZeroSet | kLittle, 9, 9, "0700 0001 616263 00FF"},
        {native, kNativeSet | kZeroSet | kLittle, 9, kNativeSet | kZeroSet | kLittle, 9, 9, "0700 0101 616263 00FF"},
        {key, kKey | kLittle, 10, kKey | kLittle, 10, 10, "0800 FE01 0C501050 00FF"},
        {key, kKey | kLittle, 8, kKey | kLittle, 12, 10, "0800 FE01 0C501050 0000"},
        {kAbcLittle, kLittle, 9, kKey | kZeroSet | kLittle, 9, 9, "0700 0001 616263 00FF"},
        {kOld, kLittle, 6, kLittle, 12, 8, "0700 0000 6162 0000"},
        {kOld, kLittle, 6, kKey | kLittle, 9, 8, "0700 0000 6162 0000"},
        {kOld, kNativeSet | kLittle, 6, kNativeSet | kLittle, 9, 8, "0700 0100 6162 0000"},
        {Hex("0004 6162 00 00"), kBig, 6, kBig, 9, 8, "0007 0000 6162 0000"},
        {kOld, kLittle, 6, kLittle, 6, 6, "0700 0000 6162"}};
    for (const auto& c : disk) {
        EXPECT_EQ(FromDisk(c.source, c.sourceFormat, c.sourceLength, c.format, c.length),
                  std::make_pair(c.result, Hex(c.bytes)))
            << c.bytes;
    }
    // The upgraded record carries its 0xFF behind the answer, and loads back as one text.
    EXPECT_EQ(FromDisk(kOld, kLittle, 6, kLittle, 9).first, 8u);
    LmString s;
    EXPECT_EQ(StringLoad(&s, Hex("0700 0000 6162 0000 FF").data(), kLittle, 1), 9u);
    EXPECT_EQ(StateOf(s), (State{0, 0, Hex("61620000")}));
    // Unequal formats are not moved: the report, 0, and the target as it was.
    AssertLog log;
    Bytes abcCopy = kAbcLittle;
    EXPECT_EQ(ToDisk(current, kBig, 12, abcCopy.data(), kLittle, 9, 1, 12), std::make_pair(0u, Bytes(12, kFill)));
    EXPECT_EQ(ToDisk(current, kLittle, 12, abcCopy.data(), kKey | kLittle, 9, 1).first, 0u);
    EXPECT_EQ(AssertLog::Entries(), std::vector<std::string>(2, "format combination not supported|src\\lmtypes"));
}

// In this process "oldIndexUnicodeOrder" has no value, so the flag is on: a Unicode
// text copied into a record is narrowed to the first byte of each unit.
TEST(StringTranslate, UnicodeNarrowing) {
    DefaultConfig(-1)->RemoveValue("debug", "oldIndexUnicodeOrder");
    const Bytes little = Hex("0800 FD01 61006200 00FF"), big = Hex("0008 FD01 00610062 00FF");
    // L becomes (8 - 4) / 2 + 4 = 6; offsets 2 and 3 both get the effective code set. The
    // first byte of a big-endian unit is its high byte. A plain disk-to-disk copy narrows
    // too and stays labelled 253. Too small: no 00 FF. Units a cut source lacks are zero.
    EXPECT_EQ(FromDisk(little, kLittle, 10, kKey | kZeroSet | kLittle, 10),
              std::make_pair(8u, Hex("0600 0000 6162 00FF")));
    EXPECT_EQ(FromDisk(big, kBig, 10, kKey | kZeroSet | kBig, 10).second, Hex("0006 0000 0000 00FF"));
    EXPECT_EQ(FromDisk(little, kLittle, 10, kLittle, 10).second, Hex("0600 FDFD 6162 00FF"));
    EXPECT_EQ(FromDisk(little, kLittle, 10, kKey | kZeroSet | kLittle, 7),
              std::make_pair(7u, Hex("0600 0000 6162 00")));
    EXPECT_EQ(FromDisk(little, kLittle, 6, kKey | kZeroSet | kLittle, 8).second, Hex("0600 0000 6100 00FF"));
    LmString s = Make(u"ab", kUnicode, kGerman);  // from memory, through the image
    EXPECT_EQ(ToDisk(current, kKey | kZeroSet | kLittle, 10, &s, kMemory, 0, 1, 10),
              std::make_pair(8u, Hex("0600 0000 6162 00FF 0000")));
}

// The flag is decided once per process, so each state is shown in a process of its own.
TEST(StringTranslate, NarrowingFlagIsReadOnce) {
    const std::string style = GTEST_FLAG_GET(death_test_style);
    GTEST_FLAG_SET(death_test_style, "threadsafe");  // a fresh process, the flag undecided
    static const Bytes record = Hex("0800 FD01 61006200 00FF");
    static const Bytes narrowed = Hex("0600 0000 6162 00FF"), copied = Hex("0800 0001 61006200 00FF");
    const auto copy = [] { return FromDisk(record, kLittle, 10, kKey | kZeroSet | kLittle, 10).second; };
    // A non-zero value turns narrowing off, and a later change is not seen; a value of
    // 0 leaves it on, and so does no value at all.
    EXPECT_EXIT(
        {
            DefaultConfig(-1)->SetValue("debug", "oldIndexUnicodeOrder", 1);
            const bool first = copy() == copied;
            DefaultConfig(-1)->RemoveValue("debug", "oldIndexUnicodeOrder");
            std::exit(first && copy() == copied ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
    EXPECT_EXIT(
        {
            DefaultConfig(-1)->SetValue("debug", "oldIndexUnicodeOrder", 0);
            const bool first = copy() == narrowed;
            DefaultConfig(-1)->SetValue("debug", "oldIndexUnicodeOrder", 1);
            std::exit(first && copy() == narrowed ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
    GTEST_FLAG_SET(death_test_style, style);
}

TEST(StringTranslateKey, OrderWordsFamiliesAndCapacity) {
    LmString abc = kRecords[0].make(), sharpS = Make("\xDF", kLatin1, kGeneric), null = kRecords[5].make();
    LmString empty = Make("", kLatin1, kGeneric), wide = Make(u"ab", kUnicode, kGeneric);
    LmString sharpGerman = Make("\xDF", kLatin1, kGerman),
             pair[2] = {Make("a", kLatin1, kGeneric), Make("b", kLatin1, kGerman)};
    LmString mixed[3] = {Make(u"a\u4E00b", kUnicode, kGeneric), Make(u"\u4E00a", kUnicode, kGeneric),
                         Make(u"\u4E00", kUnicode, kGeneric)};
    LmString many = Make(std::string(200, 'a').c_str(), kLatin1, kGeneric);
    Bytes manyKey = Hex("2A01 FE01");  // above 256 bytes the last word gives way to 00 FF: 147 words, L 298
    for (int i = 0; i < 147; ++i) manyKey.insert(manyKey.end(), {0x0C, 0x50});
    manyKey.insert(manyKey.end(), {0x00, 0xFF});
    // An expansion gives two words, the language decides which; a null key has family 0,
    // so it reads as null again; the key ends at the first change of family and says so in
    // its top bit; several strings give one key after the other. Room for exactly the key,
    // or for the closing pair itself: complete. A key of at most 256 bytes cut at its
    // capacity has no 00 FF; a word is written whole, so with an odd room the last one
    // ends a byte behind it. Fewer than 5 bytes: nothing; the second string needs 5 of its own.
    const struct {
        LmString* s;
        unsigned count;
        unsigned char format;
        unsigned length, result;
        Bytes bytes;
    } cases[] = {
        {&abc, 1, kKey | kLittle, 300, 12, kAbcKey},
        {&abc, 1, kKey | kBig, 300, 12, kAbcKeyBig},
        {&wide, 1, kKey | kBig, 300, 10, Hex("0008 FE01 500C5010 00FF")},
        {&sharpS, 1, kKey | kLittle, 300, 10, Hex("0800 FE01 55505450 00FF")},
        {&sharpGerman, 1, kKey | kLittle, 300, 10, Hex("0800 FE01 545E5450 00FF")},
        {&null, 1, kKey | kNativeSet | kLittle, 300, 6, Hex("0400 FE00 00FF")},
        {&empty, 1, kKey | kBig, 300, 6, Hex("0004 FE01 00FF")},
        {&mixed[0], 1, kKey | kLittle, 300, 8, Hex("0600 FE81 0C50 00FF")},
        {&mixed[1], 1, kKey | kLittle, 300, 8, Hex("0600 FE94 004E 00FF")},  // the first word takes the Han family
        {&mixed[2], 1, kKey | kLittle, 300, 8, Hex("0600 FE14 004E 00FF")},
        {pair, 2, kKey | kLittle, 300, 16, Hex("0600 FE01 0C50 00FF 0600 FE01 1050 00FF")},
        {&abc, 1, kKey | kLittle, 12, 12, kAbcKey},
        {&abc, 1, kKey | kLittle, 11, 12, kAbcKey},
        {&abc, 1, kKey | kLittle, 8, 8, Hex("0800 FE01 0C501050")},
        {&abc, 1, kKey | kBig, 8, 8, Hex("0008 FE01 500C5010")},
        {&abc, 1, kKey | kLittle, 7, 8, Hex("0800 FE01 0C501050")},
        {&abc, 1, kKey | kLittle, 5, 6, Hex("0600 FE01 0C50")},
        {&abc, 1, kKey | kLittle, 4, 0, {}},
        {pair, 2, kKey | kLittle, 12, 8, Hex("0600 FE01 0C50 00FF")},
        {&many, 1, kKey | kLittle, 300, 300, manyKey}};
    for (const auto& c : cases) {
        EXPECT_EQ(ToDisk(current, c.format, c.length, c.s, kMemory, 0, c.count), std::make_pair(c.result, c.bytes))
            << "row " << (&c - cases);
    }
    LmString back;
    StringLoad(&back, Hex("0400 FE00 00FF").data(), kLittle, 1);
    EXPECT_EQ(back.IsNullValue(), 1);
    const Bytes cut256 = ToDisk(current, kKey | kLittle, 256, &many, kMemory, 0, 1).second;  // 126 words, L 256
    EXPECT_EQ(Cat({Bytes(cut256.begin(), cut256.begin() + 4), Bytes(cut256.end() - 2, cut256.end())}),
              Hex("0001 FE01 0C50"));

    // From records in either byte order the same keys; code set 0 builds words under bit
    // 0x40 only, a set made 0 by 0x20 copies; an old-form array gives one key per text,
    // language 0; sourceLength ends the text, here at the wildcard of "ab*"; a text with
    // nothing inside sourceLength reads as empty.
    Bytes native = kAbcLittle;
    native[2] = 0;
    const Bytes abStar = Hex("0700 0101 61622A 00FF");
    const struct {
        Bytes source;
        unsigned char sourceFormat;
        unsigned sourceLength;
        unsigned char format;
        unsigned length, count, result;
        Bytes bytes;
    } disk[] = {
        {kAbcLittle, kLittle, 9, kKey | kLittle, 300, 1, 12, kAbcKey},
        {Hex(kRecords[0].big), kBig, 9, kKey | kBig, 300, 1, 12, kAbcKeyBig},
        {kNullLittle, kLittle, 6, kKey | kNativeSet | kLittle, 300, 1, 6, Hex("0400 FE00 00FF")},
        {Hex("000A FD01 00614E000062 00FF"), kBig, 12, kKey | kBig, 300, 1, 8, Hex("0006 FE81 500C 00FF")},
        {native, kLittle, 9, kKey | kZeroSet | kNativeSet | kLittle, 300, 1, 12, kAbcKey},
        {kAbcLittle, kLittle, 9, kKey | kZeroSet | kNativeSet | kLittle, 300, 1, 9, Hex("0700 0001 616263 00FF")},
        {kOld, kLittle, 6, kKey | kNativeSet | kLittle, 300, 2, 16, Hex("0800 FE01 0C501050 00FF 0400 FE01 00FF")},
        {Cat({kAbcLittle, kNullLittle}), kLittle, 15, kKey | kNativeSet | kLittle, 300, 2, 18,
         Cat({kAbcKey, Hex("0400 FE00 00FF")})},
        {abStar, kLittle, 6, kKey | kLittle, 200, 1, 8, Hex("0800 FE01 0C501050")},
        {abStar, kLittle, 6, kKey | kLittle, 300, 1, 8, Hex("0600 FE01 0C50 00FF")},
        {Hex("0400 FD01 00FF"), kLittle, 4, kKey | kLittle, 300, 1, 6, Hex("0400 FE01 00FF")},
        // Traditional Spanish "ch": a contraction looks at the character behind the last one.
        {Hex("0600 0104 6368 00FF"), kLittle, 8, kKey | kLittle, 300, 1, 8, Hex("0600 FE01 1650 00FF")}};
    for (const auto& c : disk) {
        EXPECT_EQ(FromDisk(c.source, c.sourceFormat, c.sourceLength, c.format, c.length, c.count),
                  std::make_pair(c.result, c.bytes))
            << "row " << (&c - disk);
    }
    // A whole 16-bit record ends at its closing pair: the final 0xFF is zeroed for the
    // walk and put back; a record inside a longer source reads the same. sourceLength 5
    // ends after 'c', yet the 'h' behind it still joins.
    Bytes wideRecord = Hex("0800 FD01 61006200 00FF 3344"), ch = Hex("0600 0104 6368 00FF");
    const Bytes before = wideRecord;
    for (unsigned length : {10u, 12u}) {
        Bytes target(16, kFill);
        EXPECT_EQ(Translate(current, target.data(), kKey | kLittle, 16, wideRecord.data(), kLittle, length, 1), 10u);
        EXPECT_EQ(Bytes(target.begin(), target.begin() + 10), Hex("0800 FE01 0C501050 00FF"));
        EXPECT_EQ(wideRecord, before);
    }
    Bytes target(10, kFill);
    EXPECT_EQ(Translate(current, target.data(), kKey | kLittle, 10, ch.data(), kLittle, 5, 1), 6u);
    EXPECT_EQ(Bytes(target.begin(), target.begin() + 6), Hex("0600 FE01 1650"));
}

TEST(StringTranslateKey, LengthBeyond16BitsIsReported) {
    // 33000 words and the closing pair: 66006 bytes, L 66004, stored as 0x01D4.
    LmString s = Make(std::string(33000, 'a').c_str(), kLatin1, kGeneric);
    AssertLog log;
    Bytes target(66010, kFill);
    EXPECT_EQ(Translate(current, target.data(), kKey | kLittle, 66010, &s, kMemory, 0, 1), 66006u);
    EXPECT_EQ(Bytes(target.begin(), target.begin() + 6), Hex("D401 FE01 0C50"));
    EXPECT_EQ(Bytes(target.begin() + 66002, target.end()), Hex("0C50 00FF EEEEEEEE"));
    EXPECT_EQ(AssertLog::Entries(), std::vector<std::string>{"(o_u4b)_nLen == nLen|src\\lmtypes"});
}

TEST(StringDisk, LegacyTranslateDownAndUp) {
    LmString pair[2] = {Make("ab", kLatin1, kGeneric), Make("", kLatin1, kGeneric)}, copies[2];
    EXPECT_EQ(ToDisk(legacy, kBig, 8, pair, kMemory, 0, 2, 8), std::make_pair(6u, Hex("0004 6162 00 00 0000")));
    EXPECT_EQ(ToDisk(legacy, kLittle, 4, pair, kMemory, 0, 2).second, Hex("0400 6162"));
    // A current record loses its labels: L falls by 3, the text and its zero follow; a
    // 16-bit text goes down as it is; an old-form source is copied, its word in the
    // target's order.
    const struct {
        Bytes source;
        unsigned char format;
        unsigned length, shown;
        const char* bytes;
    } cases[] = {{kAbcLittle, kLittle, 6, 0, "0400 616263 00"},
                 {kAbcLittle, kBig, 9, 9, "0004 616263 00 000000"},
                 {kAbcLittle, kLittle, 4, 0, "0400 6162"},
                 {Hex(kRecords[1].little), kLittle, 7, 0, "0500 E9003A26 00"},
                 {kOld, kBig, 6, 0, "0004 6162 00 00"}};
    for (const auto& c : cases) {
        Bytes source = c.source;
        EXPECT_EQ(
            ToDisk(legacy, c.format, c.length, source.data(), kLittle, static_cast<unsigned>(source.size()), 1, c.shown)
                .second,
            Hex(c.bytes));
    }
    EXPECT_EQ(Translate(legacy, copies, kMemory, 0, pair, kMemory, 0, 2), 32u);
    EXPECT_EQ(StateOf(copies[0]), StateOf(pair[0]));
    EXPECT_EQ(StateOf(copies[1]), StateOf(pair[1]));
}
