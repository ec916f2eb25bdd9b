// Conversions to and from arrays of strings, the old one-string form and the
// default values. Every text below is worked out from the rules: numbers print in
// decimal, the unsigned 32-bit types and the floating ones through "%.17g", and text
// comes back through the number casts of LmString cut to the type's width. Who frees
// what is checked by the sanitizer build: a leak or a double free fails it.
#include "testkit.h"

namespace {

struct OldForm : LmTypeMgr {
    using LmTypeMgr::ConvertFromLmStringOld;
    using LmTypeMgr::ConvertToLmStringOld;
};

const unsigned short* U(const char16_t* s) { return reinterpret_cast<const unsigned short*>(s); }
// The fields of a destroyed wrapper, read from its storage.
const volatile LmTypeConvertData* Dead(LmTypeConvertData* w) { return w; }
std::string Text(const LmString* s) { return s == nullptr ? "<none>" : std::string(s->StrGet()); }

// Value i of an array of the id, widened to 64 bits.
uint64_t Value(LmTypeMgr& mgr, char id, void* array, unsigned i) {
    uint64_t v = 0;
    std::memcpy(&v, static_cast<char*>(array) + mgr.MemLenGet(id, i), mgr.MemLenGet(id, 1));
    return v;
}

}  // namespace

TEST(Convert, WrapperOwnership) {
    LmTypeMgr mgr;
    LmTypeConvertData empty;
    EXPECT_TRUE(empty.mgr == nullptr && empty.data == nullptr && empty.count == 0 && empty.id == 100);
    EXPECT_EQ(empty.GetString(0), nullptr);

    int32_t ints[3] = {10, -7, 2147483647};
    LmTypeConvertData* w = mgr.ConvertTo(LmINT_T, ints, 3);
    ASSERT_NE(w, nullptr);
    EXPECT_TRUE(w->id == LmSTRING_T && w->count == 3 && w->mgr == &mgr);
    EXPECT_EQ(Text(w->GetString(2)), "2147483647");
    EXPECT_EQ(w->GetString(3), nullptr);
    EXPECT_EQ(w->GetString(-1), nullptr);
    void* back = mgr.ConvertFrom(LmINT_T, w, 5);  // the last two have no string: 0
    const int32_t expected[5] = {10, -7, 2147483647, 0, 0};
    EXPECT_EQ(std::memcmp(back, expected, sizeof expected), 0);
    mgr.Delete(LmINT_T, back, 5);
    w->id = LmDATE_T;  // the same array under another id gives no strings
    EXPECT_EQ(w->GetString(0), nullptr);
    w->id = LmSTRING_T;
    w->~LmTypeConvertData();  // the owner frees its strings
    EXPECT_TRUE(Dead(w)->id == 100 && Dead(w)->data == nullptr && Dead(w)->count == 0);
    ::operator delete(w);

    // Made by a slot directly, a wrapper owns nothing and keeps its data.
    int8_t letters[2] = {'A', -1};
    w = CharConvertToLmString(letters, 2);
    EXPECT_EQ(w->mgr, nullptr);
    EXPECT_EQ(Text(w->GetString(0)) + " " + Text(w->GetString(1)), "65 -1");
    void* strings = w->data;
    w->~LmTypeConvertData();
    EXPECT_TRUE(Dead(w)->id == 100 && Dead(w)->data == strings && Dead(w)->count == 0);
    mgr.Delete(LmSTRING_T, strings, 2);
    ::operator delete(w);
    // After the manager's ConvertFrom the same kind of wrapper owns its strings.
    w = CharConvertToLmString(letters, 2);
    back = mgr.ConvertFrom(Lm1B_T, w, 2);
    EXPECT_EQ(w->mgr, &mgr);
    EXPECT_EQ(std::memcmp(back, letters, 2), 0);
    mgr.Delete(Lm1B_T, back, 2);
    delete w;
}

TEST(Convert, Numbers) {
    LmTypeMgr mgr;
    // text null: the value's own text is expected, and the value must come back.
    // Otherwise the text is read and gives value.
    struct Case {
        char id;
        uint64_t value;
        const char* text;
        bool fromText;
    } cases[] = {
        {Lm1B_T, 0x41, "65", false},
        {Lm1B_T, 0x80, "-128", false},
        {LmU1B_T, 200, "200", false},
        {Lm2B_T, 0x8000, "-32768", false},
        {LmU2B_T, 65535, "65535", false},
        {Lm4B_T, 0xFFFFFFFF, "-1", false},
        {LmENUM_T, 5, "5", false},
        {LmU4B_T, 4000000000u, "4000000000", false},
        {LmBLOCKID_T, 2147483648u, "2147483648", false},
        {LmUNSIGNED_T, 4294967295u, "4294967295", false},
        {Lm8B_T, 0x8000000000000000u, "-9223372036854775808", false},
        {LmU8B_T, 12345678901234u, "12345678901234", false},
        {LmDOUBLE_T, 0xFE37E43C8800759Cu /* -1e300 */, "-1.0000000000000001e+300", false},
        {LmFLOAT_T, 0x3DCCCCCDu /* 0.1f */, "0.10000000149011612", false},
        // Text to value: cut to the width; the unsigned 32-bit types truncate a double
        // to 64 bits and keep the low 32, a number beyond 64 bits gives 0.
        {Lm1B_T, 0x7F, "-129", true},
        {LmU1B_T, 44, "300", true},
        {LmU2B_T, 4464, "70000", true},
        {Lm4B_T, 16, "0x10", true},
        {Lm4B_T, 0, nullptr, true},
        {LmU4B_T, 4294967295u, "-1", true},
        {LmU4B_T, 0, "4294967296.9", true},
        {LmU4B_T, 3000000000u, "3000000000.7", true},
        {LmU4B_T, 0, "1e30", true},
        {LmU8B_T, 0xFFFFFFFFFFFFFFFFu, "-1", true},
        {LmFLOAT_T, 0x3F000000u /* 0.5f */, "0.5", true},
    };
    for (const Case& c : cases) {
        LmTypeConvertData* w;
        if (c.fromText) {
            auto* s = static_cast<LmString*>(mgr.Create(LmSTRING_T, 1));
            c.text != nullptr ? (void)(*s = c.text) : (void)s->SetNullValue();
            w = LmTypeConvertData::Make(LmSTRING_T, 1, s, nullptr);
        } else {
            w = mgr.ConvertTo(c.id, const_cast<uint64_t*>(&c.value), 1);
            EXPECT_EQ(Text(w->GetString(0)), c.text) << int(c.id);
        }
        void* back = mgr.ConvertFrom(c.id, w, 1);
        EXPECT_EQ(Value(mgr, c.id, back, 0), c.value) << int(c.id) << " " << (c.text ? c.text : "null");
        mgr.Delete(c.id, back, 1);
        delete w;
    }
}

TEST(Convert, StringsKeepLabelsAndNull) {
    LmTypeMgr mgr;
    auto* in = static_cast<LmString*>(mgr.Create(LmSTRING_T, 3));
    in[0] = LmString(U(u"x\u00e9"), 2);
    in[0].SetLanguage(3);
    in[1].SetNullValue();
    in[2] = "";
    LmTypeConvertData* w = mgr.ConvertTo(LmSTRING_T, in, 3);
    auto* out = static_cast<LmString*>(mgr.ConvertFrom(LmSTRING_T, w, 4));
    EXPECT_TRUE(out[0].GetCodeSet() == in[0].GetCodeSet() && out[0].GetLanguage() == 3 && out[0].Len() == 2);
    EXPECT_EQ(std::memcmp(out[0].StrGet(), in[0].StrGet(), 6), 0);
    EXPECT_EQ(out[1].IsNullValue(), 1);
    EXPECT_TRUE(out[2].IsNullValue() == 0 && out[2].IsEmpty() == 1);
    EXPECT_EQ(out[3].IsNullValue(), 1);  // no string: null
    mgr.Delete(LmSTRING_T, out, 4);
    mgr.Delete(LmSTRING_T, in, 3);
    delete w;
}

TEST(Convert, OldOneStringForm) {
    OldForm mgr;
    char all[255];  // every candidate delimiter 1..254
    for (int c = 1; c <= 255; ++c) all[c - 1] = static_cast<char>(c == 255 ? 0 : c);
    struct Write {
        const char* a;
        const char* b;
        std::string expected;
    } writes[] = {
        {"ab", "c",
         "ab\x01"
         "c\x01"},
        {"\x01x", "\x02", "\x01x\x03\x02\x03"},
        {all, "", std::string(all) + ",,"},
    };
    auto* in = static_cast<LmString*>(mgr.Create(LmSTRING_T, 2));
    for (const Write& t : writes) {
        in[0] = t.a;
        in[1] = t.b;
        LmString* one = mgr.ConvertToLmStringOld(in, LmSTRING_T, 2);
        EXPECT_EQ(Text(one), t.expected);
        mgr.Delete(LmSTRING_T, one, 1);
    }
    in[0] = "ab";
    in[1] = "c";
    LmString* one = mgr.ConvertToLmStringOld(in, LmSTRING_T, 2);
    auto* back = static_cast<LmString*>(mgr.ConvertFromLmStringOld(one, LmSTRING_T, 3));
    EXPECT_EQ(one->Len(), 0);  // consumed
    EXPECT_EQ(Text(&back[0]) + "|" + Text(&back[1]), "ab|c");
    EXPECT_TRUE(back[2].IsEmpty() == 1 && back[2].IsNullValue() == 0);  // behind the last delimiter
    mgr.Delete(LmSTRING_T, back, 3);
    mgr.Delete(LmSTRING_T, one, 1);
    mgr.Delete(LmSTRING_T, in, 2);

    int32_t ints[2] = {5, -6};
    one = mgr.ConvertToLmStringOld(ints, Lm4B_T, 2);
    EXPECT_EQ(Text(one), "5\x01-6\x01");
    mgr.Delete(LmSTRING_T, one, 1);
    one = mgr.ConvertToLmStringOld(ints, Lm4B_T, 0);
    EXPECT_EQ(one->Len(), 0);
    mgr.Delete(LmSTRING_T, one, 1);
    EXPECT_EQ(mgr.ConvertToLmStringOld(ints, LmRES_T, 2), nullptr);

    // Reading: the last character is the delimiter, in 16-bit texts too.
    LmString narrow("12,-3,"), wide(U(u"7;8;"), 4), rest("1;2;"), empty("");
    auto* v = mgr.ConvertFromLmStringOld(&narrow, Lm4B_T, 4);
    const int32_t expected[4] = {12, -3, 0, 0};
    EXPECT_EQ(std::memcmp(v, expected, sizeof expected), 0);
    mgr.Delete(Lm4B_T, v, 4);
    v = mgr.ConvertFromLmStringOld(&wide, Lm4B_T, 2);
    EXPECT_TRUE(Value(mgr, Lm4B_T, v, 0) == 7 && Value(mgr, Lm4B_T, v, 1) == 8);
    mgr.Delete(Lm4B_T, v, 2);
    back = static_cast<LmString*>(mgr.ConvertFromLmStringOld(&empty, LmSTRING_T, 1));
    EXPECT_TRUE(back->IsEmpty() == 1 && back->IsNullValue() == 0);
    mgr.Delete(LmSTRING_T, back, 1);
    EXPECT_EQ(mgr.ConvertFromLmStringOld(&rest, LmRES_T, 2), nullptr);
    EXPECT_EQ(rest.Len(), 0);  // consumed all the same
}

TEST(Convert, DefaultsAndNullRows) {
    LmTypeMgr mgr, legacy(3);
    for (int asNull = 0; asNull < 2; ++asNull) {
        for (char id : {Lm4B_T, LmDOUBLE_T}) {  // asNull is not looked at: zeros
            void* v = mgr.DefaultValue(id, 3, asNull);
            for (unsigned i = 0; i < 3; ++i) EXPECT_EQ(Value(mgr, id, v, i), 0u) << int(id);
            mgr.Delete(id, v, 3);
        }
        for (LmTypeMgr* m : {&mgr, &legacy}) {  // empty text, or null
            auto* s = static_cast<LmString*>(m->DefaultValue(LmSTRING_T, 2, asNull));
            EXPECT_TRUE(s[0].IsNullValue() == asNull && s[1].IsNullValue() == asNull && s[1].IsEmpty() == 1);
            m->Delete(LmSTRING_T, s, 2);
        }
        EXPECT_EQ(mgr.DefaultValue(LmRES_T, 5, asNull), nullptr);
    }
    // Numbers are never null and have no null setter; strings have both, but not in
    // the legacy table; "illegal" answers 0, has none, and leaves a status alone.
    int32_t values[] = {0, -1, 0x7FFFFFFF};
    for (int32_t& x : values) EXPECT_EQ(mgr.IsNullValue(LmINT_T, &x), 0);
    for (char id : {Lm1B_T, Lm4B_T, LmDOUBLE_T, LmBLOCKID_T, Lm8B_T, LmU8B_T, LmRES_T})
        EXPECT_EQ(mgr.SetNullPtrGet(id), nullptr) << int(id);
    LmString null;
    null.SetNullValue();
    EXPECT_TRUE(mgr.IsNullValue(LmSTRING_T, &null) == 1 && legacy.IsNullValue(LmSTRING_T, &null) == 0);
    EXPECT_TRUE(mgr.SetNullPtrGet(LmSTRING_T) != nullptr && legacy.SetNullPtrGet(LmSTRING_T) == nullptr);
    EXPECT_EQ(mgr.IsNullValue(100, &null), 0);
    int status = 77;
    EXPECT_EQ(mgr.Cmp(100, 0, &null, 0, &null, 0, 1, 8, status), 0);
    EXPECT_EQ(status, 77);
    LmTypeConvertData wrapper;
    EXPECT_EQ(mgr.ConvertTo(100, values, 1), nullptr);
    EXPECT_EQ(mgr.ConvertFrom(100, &wrapper, 1), nullptr);
    EXPECT_EQ(wrapper.mgr, &mgr);
}
