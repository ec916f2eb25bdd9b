// LmBlob: its three states (null, empty, bytes) through every slot of id 18 with the
// golden disk images in both byte orders and the hash codes; the class members; and
// images that are cut or forged, which must give 0 or LM_ERR_OUT_OF_DATA and never a
// read beyond the bytes given.
#include "testkit.h"

using namespace lmtest;

namespace {

std::string Text(const LmString& s) { return s.StrGet(); }

// The bytes of a blob as a string, "<null>" for the null blob.
std::string Of(const LmBlob& b) {
    if (b.IsNullValue() != 0) return "<null>";
    const void* p = b.Seek(0, b.Length());
    return p != nullptr ? std::string(static_cast<const char*>(p), static_cast<size_t>(b.Length())) : std::string();
}

LmBlob Null() {
    LmBlob b;
    b.SetNullValue();
    return b;
}

struct State {
    const char* name;
    LmBlob value;
    Bytes little, big;  // the disk images
    unsigned memoryHash, diskHash;
    const char* printed;
};

TEST(Blob, ThreeStatesThroughEverySlot) {
    const State states[] = {
        {"null",
         Null(),
         {4, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF},
         {0, 0, 0, 4, 0xFF, 0xFF, 0xFF, 0xFF},
         0,
         0x071939B4u,
         "{NULL}"},  // the null text replaces, a blob's text appends
        {"empty", LmBlob(), {4, 0, 0, 0, 0, 0, 0, 0}, {0, 0, 0, 4, 0, 0, 0, 0}, 0, 0x071939B4u, "x[BLOB,len=0]"},
        {"zero byte",
         LmBlob("", 1),
         {5, 0, 0, 0, 1, 0, 0, 0, 0},
         {0, 0, 0, 5, 0, 0, 0, 1, 0},
         0x41C64E6Du,
         0x48DF8821u,
         "x[BLOB,len=1]"},
        {"abc",
         LmBlob("abc", 3),
         {7, 0, 0, 0, 3, 0, 0, 0, 'a', 'b', 'c'},
         {0, 0, 0, 7, 0, 0, 0, 3, 'a', 'b', 'c'},
         0xC552EB47u,
         0xCC6C24FBu,
         "x[BLOB,len=3]"},
    };
    const LmTypeMgr mgr;
    for (const State& s : states) {
        SCOPED_TRACE(s.name);
        void* value = const_cast<LmBlob*>(&s.value);
        const unsigned size = mgr.DiskLenGet(LmBLOB_T, value, 1, 1, 8);
        ASSERT_EQ(size, s.little.size());
        int status = -1;
        EXPECT_EQ(mgr.Hash(LmBLOB_T, 0, value, 1, 8, status), s.memoryHash);
        for (const auto& [format, image] : {std::pair{LmFormatLittle, s.little}, std::pair{LmFormatBig, s.big}}) {
            Bytes out(size + 1, 0xEE);
            EXPECT_EQ(mgr.Store(LmBLOB_T, out.data(), value, format, 1), size);
            EXPECT_EQ(Bytes(out.begin(), out.end() - 1), image);
            EXPECT_EQ(mgr.DiskLenGet(LmBLOB_T, out.data(), format, 1, 1), size);
            const auto exact = Exact(image);
            EXPECT_EQ(mgr.Hash(LmBLOB_T, size, exact.get(), 1, format, status), s.diskHash);
            EXPECT_EQ(status, 0);
            EXPECT_EQ(mgr.Cmp(LmBLOB_T, size, exact.get(), size, exact.get(), 0, 1, format, status), 0);
            EXPECT_EQ(status, 0);
            // Load over a blob of other bytes, and by Translate into a fresh one.
            LmBlob loaded("old bytes", 9), translated;
            EXPECT_EQ(mgr.Load(LmBLOB_T, &loaded, exact.get(), format, 1), size);
            EXPECT_EQ(mgr.Translate(LmBLOB_T, &translated, 8, 0, exact.get(), format, size, 1), size);
            EXPECT_EQ(Of(loaded), Of(s.value));
            EXPECT_EQ(Of(translated), Of(s.value));
            EXPECT_EQ(mgr.Cmp(LmBLOB_T, &loaded, value, 0, 1, 8), 0);
        }
        EXPECT_EQ(mgr.IsNullValue(LmBLOB_T, value), s.value.IsNullValue());
        LmString printed("x");
        EXPECT_EQ(Text(mgr.PrintToLmString(LmBLOB_T, printed, value, nullptr, 1)), s.printed);
        // Conversions carry the state only: a null string or an empty one.
        LmTypeConvertData* text = mgr.ConvertTo(LmBLOB_T, value, 1);
        EXPECT_EQ(text->GetString(0)->IsNullValue(), s.value.IsNullValue());
        EXPECT_EQ(text->GetString(0)->Len(), 0);
        auto* back = static_cast<LmBlob*>(mgr.ConvertFrom(LmBLOB_T, text, 1));
        EXPECT_EQ(back->IsNullValue(), s.value.IsNullValue());
        EXPECT_EQ(back->Length(), 0);
        mgr.Delete(LmBLOB_T, back, 1);
        delete text;
        // Copy into raw memory, Assignment over a blob, memory Translate: deep copies.
        alignas(LmBlob) unsigned char raw[sizeof(LmBlob)];
        mgr.CopyPtrGet(LmBLOB_T)(raw, value, 1, 0);
        auto* copy = reinterpret_cast<LmBlob*>(raw);
        LmBlob assigned("zz", 2), moved(7);
        mgr.AssignmentPtrGet(LmBLOB_T)(&assigned, value, 1, 1);
        EXPECT_EQ(mgr.Translate(LmBLOB_T, &moved, 8, 0, value, 8, 0, 1), 8u);
        for (const LmBlob* b : {copy, &assigned, &moved}) {
            EXPECT_EQ(Of(*b), Of(s.value));
            if (s.value.Length() != 0) {
                EXPECT_NE(b->Seek(0, 1), s.value.Seek(0, 1));
            }
        }
        copy->~LmBlob();
    }
}

TEST(Blob, ArraysAndLifeCycleSlots) {
    const LmTypeMgr mgr;
    auto* blobs = static_cast<LmBlob*>(mgr.Create(LmBLOB_T, 3));
    blobs[0].SetNullValue();
    blobs[2].SetTo("ab", 2);
    Bytes image(mgr.DiskLenGet(LmBLOB_T, blobs, 1, 3, 8));
    EXPECT_EQ(image.size(), 18u);
    EXPECT_EQ(mgr.Store(LmBLOB_T, image.data(), blobs, 1, 3), 18u);
    EXPECT_EQ(image, (Bytes{14, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 2, 0, 0, 0, 'a', 'b'}));
    auto* loaded = static_cast<LmBlob*>(mgr.Create(LmBLOB_T, 3));
    EXPECT_EQ(mgr.Load(LmBLOB_T, loaded, image.data(), 1, 3), 18u);
    EXPECT_EQ(Of(loaded[0]) + "|" + Of(loaded[1]) + "|" + Of(loaded[2]), "<null>||ab");
    EXPECT_EQ(mgr.Cmp(LmBLOB_T, loaded, blobs, 0, 3, 8), 0);
    loaded[2].SetTo("ac", 2);
    EXPECT_LT(mgr.Cmp(LmBLOB_T, blobs, loaded, 0, 3, 8), 0);
    int status = -1;
    EXPECT_EQ(mgr.Hash(LmBLOB_T, 0, blobs, 3, 8, status), 2u * 1103515245u);
    // Zero elements: a total of 0.
    Bytes none(4, 0xEE);
    EXPECT_EQ(mgr.Store(LmBLOB_T, none.data(), blobs, 2, 0), 4u);
    EXPECT_EQ(none, Bytes(4, 0));
    EXPECT_EQ(mgr.Load(LmBLOB_T, loaded, none.data(), 2, 0), 4u);
    EXPECT_EQ(mgr.Desc(LmBLOB_T)->NullSizeGet(3), 12u);
    MemFile file(image.data(), 18), cut(image.data(), 3);
    EXPECT_EQ(mgr.DiskLenGetFromMemFile(LmBLOB_T, &file, 1, 3), 18u);
    EXPECT_EQ(mgr.DiskLenGetFromMemFile(LmBLOB_T, &cut, 1, 3), 0u);
    // Destructor makes null; Constructor empty; Assignment replicates.
    mgr.DestructorPtrGet(LmBLOB_T)(loaded, 3, 0);
    EXPECT_EQ(loaded[1].IsNullValue(), 1);
    mgr.ConstructorPtrGet(LmBLOB_T)(loaded, 3, 0);
    EXPECT_EQ(Of(loaded[1]), "");
    mgr.AssignmentPtrGet(LmBLOB_T)(loaded, &blobs[2], 3, 1);
    EXPECT_EQ(Of(loaded[0]) + Of(loaded[1]), "abab");
    EXPECT_EQ(mgr.Delete(LmBLOB_T, loaded, 3), nullptr);
    EXPECT_EQ(mgr.Delete(LmBLOB_T, blobs, 3), nullptr);
    EXPECT_EQ(mgr.Delete(LmBLOB_T, nullptr, 3), nullptr);
    // Defaults: empty blobs, or null ones.
    for (int asNull : {0, 1}) {
        auto* d = static_cast<LmBlob*>(mgr.DefaultValue(LmBLOB_T, 2, asNull));
        EXPECT_EQ(Of(d[1]), asNull != 0 ? "<null>" : "");
        mgr.Delete(LmBLOB_T, d, 2);
    }
    EXPECT_EQ(mgr.SupportsNullValue(LmBLOB_T), 1);
    EXPECT_EQ(mgr.GetValue(LmBLOB_T, &none, 0, 8, 'N'), LM_ERR_NOT_SUPPORTED);
    EXPECT_EQ(mgr.Desc(LmBLOB_T), LmTypeMgr(3).Desc(LmBLOB_T));
}

TEST(Blob, ScanReadsOnlyTheNullText) {
    LmBlob b("abc", 3);
    for (const char* text : {"abc", "{NULL}x", ""}) {
        LmString s(text);
        EXPECT_EQ(LmTypeMgr().ScanFromLmString(LmBLOB_T, &b, s, nullptr, 1), &b);
        EXPECT_EQ(Of(b), "abc");
    }
    LmString nullText("{NULL}");
    LmTypeMgr().ScanFromLmString(LmBLOB_T, &b, nullText, nullptr, 1);
    EXPECT_EQ(b.IsNullValue(), 1);
    EXPECT_EQ(LmBlob::ScanFromString(nullptr, nullText, nullptr, 1), nullptr);
    LmString out;
    LmBlob five(5);
    EXPECT_EQ(Text(LmBlob::PrintToString(out, &five, "%%L=%L%q%", 1)), "%L=5q");
}

TEST(Blob, Members) {
    const LmBlob null = Null(), empty, abc("abc", 3);
    // Three-way order, and equality.
    EXPECT_EQ(null != empty, -2);
    EXPECT_EQ(empty != null, 2);
    EXPECT_EQ(null != null, 0);
    EXPECT_EQ(empty != empty, 0);
    EXPECT_EQ((LmBlob("ab", 2) != abc), -1);
    EXPECT_EQ((abc != LmBlob("ab", 2)), 1);
    EXPECT_GT((LmBlob("abd", 3) != abc), 0);
    EXPECT_EQ(null == null, 1);
    EXPECT_EQ(null == empty, 0);
    EXPECT_EQ((abc == LmBlob("abc", 3)), 1);
    EXPECT_EQ((abc == LmBlob("abd", 3)), 0);
    EXPECT_EQ((abc == LmBlob("ab", 2)), 0);
    // Search.
    EXPECT_EQ(empty.Search(empty), 0);
    EXPECT_EQ(null.Search(empty), 65535);
    EXPECT_EQ(abc.Search(null), 0);
    EXPECT_EQ(abc.Search(LmBlob("bc", 2)), 1);
    EXPECT_EQ(abc.Search(LmBlob("cd", 2)), 65535);
    // Pieces.
    EXPECT_EQ(Of(null.CopyFrom(0, 1)), std::string(1, '\0'));
    EXPECT_EQ(Of(abc.CopyFrom(1, 5)), "bc");
    EXPECT_EQ(Of(abc.CopyFrom(1, 1)), "b");
    EXPECT_EQ(Of(abc.CopyFrom(0, -1)), "abc");
    EXPECT_EQ(Of(abc.CopyFrom(3, 1)), "");
    EXPECT_EQ(Of(abc.CopyFrom(4, 1)), std::string(1, '\0'));
    EXPECT_EQ(Of(abc.CopyFrom(1, 0)), std::string(1, '\0'));
    // Seek.
    EXPECT_EQ(abc.Seek(3, 1), nullptr);
    EXPECT_EQ(abc.Seek(0, 0), nullptr);
    EXPECT_EQ(abc.Seek(-1, 1), nullptr);
    EXPECT_EQ(static_cast<char*>(abc.Seek(1, 2))[0], 'b');
    EXPECT_EQ(null.Seek(0, 1), nullptr);
    // Changes: each row starts from "abcd".
    struct Change {
        const char* name;
        void (*apply)(LmBlob&);
        const char* after;
    } changes[] = {
        {"cut all", [](LmBlob& b) { b.Cut(0, 4); }, ""},
        {"cut middle", [](LmBlob& b) { b.Cut(1, 2); }, "ad"},
        {"cut to end", [](LmBlob& b) { b.Cut(2, 9); }, "ab"},
        {"cut nothing", [](LmBlob& b) { b.Cut(1, 0); }, "abcd"},
        {"cut beyond", [](LmBlob& b) { b.Cut(5, 1); }, "abcd"},
        {"cut at end", [](LmBlob& b) { b.Cut(4, 1); }, "abcd"},
        {"append", [](LmBlob& b) { b += LmBlob("ef", 2); }, "abcdef"},
        {"append self", [](LmBlob& b) { b.Append(b); }, "abcdabcd"},
        {"append null", [](LmBlob& b) { b.Append(Null()); }, "abcd"},
        {"append none", [](LmBlob& b) { b.Append("x", 0); }, "abcd"},
        {"copy to", [](LmBlob& b) { b.CopyTo(LmBlob("xyz", 3), 2, 5); }, "abxy"},
        {"copy to short", [](LmBlob& b) { b.CopyTo(LmBlob("xyz", 3), 0, 1); }, "xbcd"},
        {"copy to beyond", [](LmBlob& b) { b.CopyTo(LmBlob("xyz", 3), 5, 1); }, "abcd"},
        {"copy from null", [](LmBlob& b) { b.CopyTo(Null(), 0, 2); }, "abcd"},
        {"expand", [](LmBlob& b) { b.Expand(2); }, "ab"},
        {"resize down", [](LmBlob& b) { b.Resize(3); }, "abc"},
        {"resize 0", [](LmBlob& b) { b.Resize(0); }, ""},
        {"set to", [](LmBlob& b) { b.SetTo("q", 1); }, "q"},
        {"set to nothing", [](LmBlob& b) { b.SetTo("q", -1); }, ""},
        {"set null", [](LmBlob& b) { b.SetNullValue(); }, "<null>"},
        {"assign null", [](LmBlob& b) { b = Null(); }, "<null>"},
        {"assign", [](LmBlob& b) { b = LmBlob("xy", 2); }, "xy"},
        {"assign self", [](LmBlob& b) { b = *&b; }, "abcd"},
    };
    for (const Change& c : changes) {
        LmBlob b("abcd", 4);
        c.apply(b);
        EXPECT_EQ(Of(b), c.after) << c.name;
    }
    // Growing keeps the old bytes in front; a null blob grows from nothing.
    LmBlob grown("ab", 2), fromNull = Null();
    grown.Expand(5);
    EXPECT_EQ(Of(grown).substr(0, 2), "ab");
    grown.Resize(9);
    EXPECT_EQ(grown.Length(), 9);
    EXPECT_EQ(Of(grown).substr(0, 2), "ab");
    fromNull.Resize(3);
    EXPECT_EQ(fromNull.Length(), 3);
    fromNull.SetNullValue();
    fromNull.Expand(2);
    EXPECT_EQ(fromNull.Length(), 2);
    fromNull = Null();
    fromNull.Append("hi", 2);
    EXPECT_EQ(Of(fromNull), "hi");
    fromNull = Null();
    fromNull.SetTo("hi", 2);
    EXPECT_EQ(Of(fromNull), "hi");
    fromNull = Null();
    fromNull = abc;
    EXPECT_EQ(Of(fromNull), "abc");
    // Destroy moves the record; the other keeps an empty one.
    LmBlob to("x", 1), from("yz", 2), none = Null();
    to.Destroy(from);
    EXPECT_EQ(Of(to) + "|" + Of(from), "yz|");
    to.Destroy(to);
    EXPECT_EQ(Of(to), "yz");
    to.Destroy(none);
    EXPECT_EQ(Of(to) + "|" + Of(none), "<null>|<null>");
    // Constructors.
    EXPECT_EQ(LmBlob(4).Length(), 4);
    EXPECT_EQ(LmBlob(-4).Length(), 0);
    EXPECT_EQ(LmBlob(nullptr, 4).Length(), 0);
    EXPECT_EQ(Of(LmBlob(abc)), "abc");
    EXPECT_EQ(LmBlob(null).IsNullValue(), 1);
    EXPECT_EQ(null.Length(), 0);
}

TEST(Blob, ReuseRuleKeepsABufferUpTo128BytesTooLong) {
    const std::string bytes(300, 'k');
    LmBlob keep(bytes.data(), 200), renew(bytes.data(), 200), exact(bytes.data(), 228);
    const void* before = keep.Seek(0, 1);
    keep.SetTo(bytes.data(), 100);
    EXPECT_EQ(keep.Seek(0, 1), before);
    EXPECT_EQ(Of(keep), bytes.substr(0, 100));
    before = renew.Seek(0, 1);
    renew.SetTo(bytes.data(), 50);
    EXPECT_NE(renew.Seek(0, 1), before);
    EXPECT_EQ(renew.Length(), 50);
    before = exact.Seek(0, 1);
    exact.SetTo(bytes.data(), 100);
    EXPECT_EQ(exact.Seek(0, 1), before);
    exact.SetTo(bytes.data(), 101);
    EXPECT_NE(exact.Seek(0, 1), before);  // 100 bytes are now 1 short
    // Resize down keeps the buffer; up moves it.
    before = exact.Seek(0, 1);
    exact.Resize(10);
    EXPECT_EQ(exact.Seek(0, 1), before);
    exact.Resize(11);
    EXPECT_NE(exact.Seek(0, 1), before);
}

size_t refusedSize = 0;

TEST(Blob, MemoryRefusalGoesToTheHandler) {
    const LmMemoryHandler old = LmSetMemoryHandler([](size_t size) { refusedSize = size; });
    LmBlob b("ab", 2);
    b.Append("x", 0x7FFFFFFF);  // more bytes than a blob can count
    EXPECT_EQ(refusedSize, 0x80000001u);
    EXPECT_EQ(Of(b), "ab");
    LmSetMemoryHandler(old);
}

// A disk image built from words (least significant byte first) and bytes.
Bytes Image(std::initializer_list<uint32_t> words, const std::string& tail = "") {
    Bytes out;
    for (uint32_t w : words)
        for (int i = 0; i < 4; ++i) out.push_back(static_cast<uint8_t>(w >> (8 * i)));
    out.insert(out.end(), tail.begin(), tail.end());
    return out;
}

TEST(Blob, CorruptImagesLoadAsNothing) {
    struct Row {
        const char* name;
        Bytes image;
        unsigned count;
        unsigned result;
        const char* first;  // the first target after the Load, which started as "old"
    } rows[] = {
        {"negative total", Image({0x80000000u, 3}, "abc"), 1, 0, "old"},
        {"total all ones", Image({0xFFFFFFFFu}), 1, 0, "old"},
        {"bytes beyond the total", Image({5, 3}, "abc"), 1, 0, "old"},
        {"length word beyond the total", Image({0}), 1, 0, "old"},
        {"second element missing", Image({7, 3}, "abc"), 2, 0, "abc"},
        {"negative length", Image({0x7FFFFFFFu, 0x80000000u}), 1, 0, "old"},
        {"null element", Image({4, 0xFFFFFFFFu}), 1, 8, "<null>"},
    };
    for (const Row& r : rows) {
        LmBlob targets[2] = {LmBlob("old", 3), LmBlob("old", 3)};
        const auto exact = Exact(r.image);
        EXPECT_EQ(LmBlob::Load(targets, exact.get(), 1, r.count), r.result) << r.name;
        EXPECT_EQ(Of(targets[0]), r.first) << r.name;
        EXPECT_EQ(Of(targets[1]), "old") << r.name;
    }
    // Translate and SizeGet refuse what does not fit in the length given.
    LmBlob target, abc("abc", 3);
    const Bytes image = Image({7, 3}, "abc");
    const auto exact = Exact(image);
    EXPECT_EQ(LmBlob::Translate(&target, 8, 0, exact.get(), 1, 10, 1), 0u);
    EXPECT_EQ(LmBlob::Translate(&target, 8, 0, exact.get(), 1, 3, 1), 0u);
    Bytes small(10, 0xEE);
    EXPECT_EQ(LmBlob::Translate(small.data(), 1, 10, &abc, 8, 0, 1), 0u);
    EXPECT_EQ(small, Bytes(10, 0xEE));
    Bytes copy(13, 0xEE);
    EXPECT_EQ(LmBlob::Translate(copy.data(), 1, 13, exact.get(), 1, 11, 1), 11u);
    EXPECT_EQ(copy, Image({7, 3}, std::string("abc\0\0", 5)));
    EXPECT_EQ(LmBlob::SizeGet(Image({0xFFFFFFFFu}).data(), 1, 1, 1), 4u);
}

TEST(Blob, DiskCompareAndHashWalk) {
    struct Row {
        const char* name;
        Bytes left, right;
        unsigned len1, len2, count;
        int sign, status;
    } rows[] = {
        {"null, empty", Image({4, 0xFFFFFFFFu}), Image({4, 0}), 0, 0, 1, -2, 0},
        {"empty, null", Image({4, 0}), Image({4, 0xFFFFFFFFu}), 0, 0, 1, 2, 0},
        {"null, null", Image({4, 0xFFFFFFFFu}), Image({4, 0xFFFFFFFFu}), 0, 0, 1, 0, 0},
        {"shorter first", Image({6, 2}, "ab"), Image({7, 3}, "abc"), 0, 0, 1, -1, 0},
        {"bytes decide", Image({7, 3}, "abd"), Image({7, 3}, "abc"), 11, 11, 1, 1, 0},
        {"four bytes past", Image({6, 2}, "abXXXX"), Image({6, 2}, "abYYYY"), 14, 14, 1, -1, 0},
        {"cut length word", Image({7, 3}, "abc"), Image({7, 3}, "abc"), 6, 11, 1, 0, LM_ERR_OUT_OF_DATA},
        {"no total", Image({}, "abc"), Image({7, 3}, "abc"), 3, 11, 1, 0, LM_ERR_OUT_OF_DATA},
        {"cut bytes", Image({7, 3}, "ab"), Image({7, 3}, "abc"), 10, 11, 1, 0, 0},
        {"no elements", Image({}), Image({}), 0, 0, 0, 0, 0},
        // Two equal blobs: the walk steps four bytes too far into the second element.
        {"array walk", Image({12, 2}, std::string("ab\x02\0\0\0cd", 8)),
         Image({12, 2}, std::string("ab\x02\0\0\0cd", 8)), 16, 16, 2, 0, LM_ERR_OUT_OF_DATA},
    };
    for (const Row& r : rows) {
        const auto left = Exact(r.left), right = Exact(r.right);
        int status = -1;
        const int order = BlobCompare(1, r.len1, left.get(), r.len2, right.get(), 0, r.count, status);
        EXPECT_EQ(order == 2 || order == -2 ? order : (order > 0) - (order < 0), r.sign) << r.name;  // nulls: +-2
        EXPECT_EQ(status, r.status) << r.name;
    }
    // The disk hash: the smaller of the size at the position and what is left less 4.
    struct HashRow {
        Bytes image;
        unsigned len, count;
        uint32_t word;
        int status;
    } hashes[] = {
        {Image({7, 3}, "abc"), 0, 1, 7, 0},
        {Image({7, 3}, "abc"), 11, 3, 7, 0},
        {Image({7, 3}, "abc"), 9, 1, 5, 0},
        {Image({7, 3}, "abc"), 2, 1, 0, LM_ERR_OUT_OF_DATA},
        {Image({2, 0}, "ab"), 0, 1, 2, 0},
        {Image({0, 0, 0, 0}), 16, 2, 4 ^ 4, 0},
        {Image({0, 0, 0}), 10, 2, 4, LM_ERR_OUT_OF_DATA},
    };
    for (const HashRow& h : hashes) {
        const auto image = Exact(h.image);
        int status = -1;
        EXPECT_EQ(LmBlob::Hash(1, h.len, image.get(), h.count, status), h.word * 1103515245u) << h.len;
        EXPECT_EQ(status, h.status) << h.len;
    }
}

}  // namespace
