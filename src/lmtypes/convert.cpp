// Conversions of values to and from arrays of strings, the wrapper that carries
// them, the manager's conversion members, and the default values built on them.
//
// A ConvertTo slot turns count values into count strings made by the Create slot
// of id 11 and hands them over in a wrapper without a manager: called directly, the
// wrapper owns nothing. A ConvertFrom slot makes a new array with the type's own
// Create slot and reads element i from the wrapper's string i; a missing or null
// string gives what the type makes of an empty text (strings: null).
#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

#include "lmconvert.h"
#include "lmslots.h"
#include "lmstring.h"
#include "lmtypemgr.h"

// ---- The wrapper. ----

LmTypeConvertData* LmTypeConvertData::Make(char id, unsigned count, void* data, LmTypeMgr* mgr) {
    auto* wrapper = new LmTypeConvertData;
    wrapper->mgr = mgr;
    wrapper->data = data;
    wrapper->count = count;
    wrapper->id = id;
    return wrapper;
}

// Index and count compare as signed numbers, so a count of 2^31 or more gives
// nothing. A negative index is refused as well: it would address before the array.
LmString* LmTypeConvertData::GetString(int index) {
    if (index < 0 || index >= static_cast<int32_t>(count) || id != LmSTRING_T || data == nullptr) return nullptr;
    return static_cast<LmString*>(data) + index;
}

// Only a wrapper with a manager owns its array. One without keeps data, so that
// its maker can still release the array itself. The fields are written through
// volatile access: a caller that destroys a wrapper in place and then looks at it
// must find it empty, and the compiler would otherwise drop the stores as the
// object ends.
LmTypeConvertData::~LmTypeConvertData() {
    if (mgr != nullptr && data != nullptr) {
        mgr->Desc(id)->Delete(data, count);
        *static_cast<void* volatile*>(&data) = nullptr;
    }
    *static_cast<volatile char*>(&id) = 100;
    *static_cast<volatile uint32_t*>(&count) = 0;
}

// The strings of a ConvertTo slot: the Create slot of id 11 in the default
// manager's table, or in the current table before the module has started.
LmString* ConvertStringsCreate(unsigned count) {
    const LmTypeMgr* mgr = DefaultTypeMgr(nullptr);
    const LmTypeDesc* desc = mgr != nullptr ? mgr->Desc(LmSTRING_T) : LmTypeTableCurrent[static_cast<int>(LmSTRING_T)];
    return static_cast<LmString*>(desc->Create(count));
}

namespace {

// The shared ConvertTo shape of the numbers, which have no null: the text of each
// value is appended to a fresh string.
template <typename T, LmString (*ToText)(T)>
LmTypeConvertData* NumbersToText(void* value, unsigned count) {
    LmString* strings = ConvertStringsCreate(count);
    if (strings == nullptr) return nullptr;
    CreatedArray owned(strings, LmDesc_LmString.Delete, count);
    const T* values = static_cast<const T*>(value);
    for (unsigned i = 0; i < count; ++i) strings[i] += ToText(values[i]);
    return owned.Wrap(LmSTRING_T);
}

// The shared ConvertFrom shape of the numbers. The wrapper may hold fewer strings
// than count; the rest, like null strings, read as an empty text.
template <typename T, T (*FromText)(const LmString&)>
void* NumbersFromText(const LmTypeDesc& desc, LmTypeConvertData* data, unsigned count) {
    T* values = static_cast<T*>(desc.Create(count));
    if (count == 0 || values == nullptr) return values;
    CreatedArray owned(values, desc.Delete, count);
    const LmString emptyText;
    for (unsigned i = 0; i < count; ++i) {
        const LmString* text = data != nullptr ? data->GetString(static_cast<int>(i)) : nullptr;
        values[i] = FromText(text == nullptr || text->IsNullValue() != 0 ? emptyText : *text);
    }
    return owned.Release();
}

// Value to text, one per member. o_char gives its number, not its character; the
// unsigned 32-bit types go through double so that values above 2^31 - 1 survive.
LmString CharText(int8_t v) { return LmString(static_cast<short>(v)); }
LmString ByteText(uint8_t v) { return LmString(static_cast<unsigned>(v)); }
LmString ShortText(int16_t v) { return LmString(static_cast<short>(v)); }
LmString WordText(uint16_t v) { return LmString(static_cast<unsigned>(v)); }
LmString IntText(int32_t v) { return LmString(static_cast<int>(v)); }
LmString DwordText(uint32_t v) { return LmString(static_cast<double>(v)); }
LmString DoubleText(double v) { return LmString(v); }
LmString FloatText(float v) { return LmString(static_cast<double>(v)); }
LmString O_8BText(int64_t v) { return LmString(v); }
LmString O_U8BText(uint64_t v) { return LmString(v); }

// Text to value through the number casts of LmString, cut to the width of the type.
int8_t CharFromText(const LmString& s) { return static_cast<int8_t>(static_cast<short>(s)); }
uint8_t ByteFromText(const LmString& s) { return static_cast<uint8_t>(static_cast<int>(s)); }
int16_t ShortFromText(const LmString& s) { return static_cast<short>(s); }
uint16_t WordFromText(const LmString& s) { return static_cast<uint16_t>(static_cast<int>(s)); }
int32_t IntFromText(const LmString& s) { return static_cast<int>(s); }
// Truncated toward zero to a 64-bit integer, of which the low 32 bits are kept. A
// number outside the 64-bit range, NaN and the infinities have no such integer and
// give 0, as the machine's own conversion does.
uint32_t DwordFromText(const LmString& s) {
    const double d = static_cast<double>(s);
    if (!(d >= -9223372036854775808.0 && d < 9223372036854775808.0)) return 0;
    return static_cast<uint32_t>(static_cast<uint64_t>(static_cast<int64_t>(d)));
}
double DoubleFromText(const LmString& s) { return static_cast<double>(s); }
float FloatFromText(const LmString& s) { return static_cast<float>(static_cast<double>(s)); }
int64_t O_8BFromText(const LmString& s) { return static_cast<long long>(s); }
uint64_t O_U8BFromText(const LmString& s) { return static_cast<uint64_t>(static_cast<long long>(s)); }

// The character at index i of a text of 1- or 2-byte units in memory order.
unsigned UnitAt(const unsigned char* text, unsigned width, unsigned i) {
    if (width == 1) return text[i];
    uint16_t unit = 0;
    std::memcpy(&unit, text + 2 * i, 2);
    return unit;
}

bool HoldsUnit(const LmString& s, unsigned unit) {
    const auto* text = reinterpret_cast<const unsigned char*>(s.StrGet());
    const unsigned width = s.Width();
    const unsigned n = s.Len();
    for (unsigned i = 0; i < n; ++i)
        if (UnitAt(text, width, i) == unit) return true;
    return false;
}

// The unit that a one-byte character of the default 8-bit code set becomes in a
// code set, or 0 when it does not stay one character there.
unsigned DelimiterUnit(char c, unsigned char codeSet) {
    LmString text(codeSet, 0);
    text += LmString(c);
    if (text.Len() != 1) return 0;
    return UnitAt(reinterpret_cast<const unsigned char*>(text.StrGet()), text.Width(), 0);
}

void AppendUnit(std::vector<unsigned char>& out, unsigned unit, unsigned width) {
    if (width == 1) {
        out.push_back(static_cast<unsigned char>(unit));
        return;
    }
    const auto u = static_cast<uint16_t>(unit);
    unsigned char bytes[2];
    std::memcpy(bytes, &u, 2);
    out.insert(out.end(), bytes, bytes + 2);
}

}  // namespace

// ---- The ConvertTo and ConvertFrom slots. Each ConvertFrom creates through the
// record of its first id; the other ids of a member share that Create. ----

LmTypeConvertData* CharConvertToLmString(void* value, unsigned count) {
    return NumbersToText<int8_t, CharText>(value, count);
}
void* CharConvertFromLmString(LmTypeConvertData* data, unsigned count) {
    return NumbersFromText<int8_t, CharFromText>(LmDesc_o_char, data, count);
}
LmTypeConvertData* O_U1BConvertToLmString(void* value, unsigned count) {
    return NumbersToText<uint8_t, ByteText>(value, count);
}
void* O_U1BConvertFromLmString(LmTypeConvertData* data, unsigned count) {
    return NumbersFromText<uint8_t, ByteFromText>(LmDesc_o_u1b, data, count);
}
LmTypeConvertData* ShortConvertToLmString(void* value, unsigned count) {
    return NumbersToText<int16_t, ShortText>(value, count);
}
void* ShortConvertFromLmString(LmTypeConvertData* data, unsigned count) {
    return NumbersFromText<int16_t, ShortFromText>(LmDesc_o_2b, data, count);
}
LmTypeConvertData* WordConvertToLmString(void* value, unsigned count) {
    return NumbersToText<uint16_t, WordText>(value, count);
}
void* WordConvertFromLmString(LmTypeConvertData* data, unsigned count) {
    return NumbersFromText<uint16_t, WordFromText>(LmDesc_o_u2b, data, count);
}
LmTypeConvertData* IntConvertToLmString(void* value, unsigned count) {
    return NumbersToText<int32_t, IntText>(value, count);
}
void* IntConvertFromLmString(LmTypeConvertData* data, unsigned count) {
    return NumbersFromText<int32_t, IntFromText>(LmDesc_o_4b, data, count);
}
LmTypeConvertData* DwordConvertToLmString(void* value, unsigned count) {
    return NumbersToText<uint32_t, DwordText>(value, count);
}
void* DwordConvertFromLmString(LmTypeConvertData* data, unsigned count) {
    return NumbersFromText<uint32_t, DwordFromText>(LmDesc_o_u4b, data, count);
}
LmTypeConvertData* DoubleConvertToLmString(void* value, unsigned count) {
    return NumbersToText<double, DoubleText>(value, count);
}
void* DoubleConvertFromLmString(LmTypeConvertData* data, unsigned count) {
    return NumbersFromText<double, DoubleFromText>(LmDesc_o_double, data, count);
}
LmTypeConvertData* FloatConvertToLmString(void* value, unsigned count) {
    return NumbersToText<float, FloatText>(value, count);
}
void* FloatConvertFromLmString(LmTypeConvertData* data, unsigned count) {
    return NumbersFromText<float, FloatFromText>(LmDesc_o_float, data, count);
}
LmTypeConvertData* O_8BConvertToLmString(void* value, unsigned count) {
    return NumbersToText<int64_t, O_8BText>(value, count);
}
void* O_8BConvertFromLmString(LmTypeConvertData* data, unsigned count) {
    return NumbersFromText<int64_t, O_8BFromText>(LmDesc_o_8b, data, count);
}
LmTypeConvertData* O_U8BConvertToLmString(void* value, unsigned count) {
    return NumbersToText<uint64_t, O_U8BText>(value, count);
}
void* O_U8BConvertFromLmString(LmTypeConvertData* data, unsigned count) {
    return NumbersFromText<uint64_t, O_U8BFromText>(LmDesc_o_u8b, data, count);
}

// Strings are copied with their code set and language; a null stays null.
LmTypeConvertData* StringConvertToLmString(void* value, unsigned count) {
    LmString* strings = ConvertStringsCreate(count);
    if (strings == nullptr) return nullptr;
    CreatedArray owned(strings, LmDesc_LmString.Delete, count);
    const LmString* values = static_cast<const LmString*>(value);
    for (unsigned i = 0; i < count; ++i) {
        if (values[i].IsNullValue() != 0)
            strings[i].SetNullValue();
        else
            strings[i] = values[i];
    }
    return owned.Wrap(LmSTRING_T);
}

void* StringConvertFromLmString(LmTypeConvertData* data, unsigned count) {
    auto* strings = static_cast<LmString*>(LmDesc_LmString.Create(count));
    if (count == 0 || strings == nullptr) return strings;
    CreatedArray owned(strings, LmDesc_LmString.Delete, count);
    for (unsigned i = 0; i < count; ++i) {
        const LmString* text = data != nullptr ? data->GetString(static_cast<int>(i)) : nullptr;
        if (text == nullptr || text->IsNullValue() != 0)
            strings[i].SetNullValue();
        else
            strings[i] = *text;
    }
    return owned.Release();
}

// ---- Defaults. ----

void* DefaultFromText(LmTypeConvertFromFunc convertFrom, unsigned count) {
    // The empty texts are the caller's array, not the Create slot's: the wrapper has
    // no manager and releases nothing, and the array goes here after it, in reverse
    // order, also when the allocator throws on the way.
    const std::unique_ptr<LmString[]> texts(new LmString[count]);
    const std::unique_ptr<LmTypeConvertData> wrapper(LmTypeConvertData::Make(LmSTRING_T, count, texts.get(), nullptr));
    return convertFrom(wrapper.get(), count);
}

void* StringDefaultValue(unsigned count, int asNull) {
    if (asNull == 0) return DefaultFromText(StringConvertFromLmString, count);
    auto* strings = static_cast<LmString*>(LmDesc_LmString.Create(count));
    if (strings == nullptr) return nullptr;
    for (unsigned i = 0; i < count; ++i) strings[i].SetNullValue();
    return strings;
}

// ---- The manager's members. ----

LmTypeConvertData* LmTypeMgr::ConvertTo(char id, void* value, unsigned count) const {
    const LmTypeConvertToFunc convertTo = Desc(id)->ConvertTo;
    if (convertTo == nullptr) return nullptr;
    LmTypeConvertData* wrapper = convertTo(value, count);
    // The manager makes the wrapper the owner of its strings.
    if (wrapper != nullptr) wrapper->mgr = const_cast<LmTypeMgr*>(this);
    return wrapper;
}

void* LmTypeMgr::ConvertFrom(char id, LmTypeConvertData* data, unsigned count) const {
    if (data != nullptr) data->mgr = const_cast<LmTypeMgr*>(this);
    const LmTypeConvertFromFunc convertFrom = Desc(id)->ConvertFrom;
    if (convertFrom == nullptr) return nullptr;
    return convertFrom(data, count);
}

// Every element is followed by the delimiter, the last too, so the reader finds the
// delimiter in the last character. The delimiter is the first of the characters 1
// to 254 that occurs in no element, else ",". The elements are looked at as they
// stand in the result's code set, where the reader will search. The wrapper and its
// strings are released here.
LmString* LmTypeMgr::ConvertToLmStringOld(void* value, char id, unsigned count) const {
    LmTypeConvertData* wrapper = ConvertTo(id, value, count);
    if (wrapper == nullptr) return nullptr;
    auto* out = static_cast<LmString*>(Desc(LmSTRING_T)->Create(1));
    if (out == nullptr) {
        delete wrapper;
        return nullptr;
    }
    const unsigned char codeSet = out->GetCodeSet();
    const unsigned width = out->Width();

    std::vector<LmString> texts(count, LmString(codeSet, 0));
    for (unsigned i = 0; i < count; ++i) {
        const LmString* s = wrapper->GetString(static_cast<int>(i));
        if (s != nullptr) texts[i] += *s;
    }
    unsigned delimiter = 0;
    for (int c = 1; c <= 254 && delimiter == 0; ++c) {
        const unsigned unit = DelimiterUnit(static_cast<char>(c), codeSet);
        if (unit == 0) continue;
        bool occurs = false;
        for (unsigned i = 0; i < count && !occurs; ++i) occurs = HoldsUnit(texts[i], unit);
        if (!occurs) delimiter = unit;
    }
    if (delimiter == 0) delimiter = DelimiterUnit(',', codeSet);
    if (delimiter == 0) delimiter = ',';

    std::vector<unsigned char> body;
    for (unsigned i = 0; i < count; ++i) {
        const auto* text = reinterpret_cast<const unsigned char*>(texts[i].StrGet());
        body.insert(body.end(), text, text + static_cast<size_t>(texts[i].Len()) * width);
        AppendUnit(body, delimiter, width);
    }
    delete wrapper;
    // A text beyond the string limit is cut there, like every other.
    size_t chars = body.size() / width;
    if (chars > LmStringMaxChars(codeSet)) chars = LmStringMaxChars(codeSet);
    if (chars != 0) {
        AppendUnit(body, 0, width);
        LmStringSplice(*out, body.data(), codeSet, 0, 0, static_cast<uint16_t>(chars), 1, LM_SPLICE_ASSIGN,
                       LmFormatLittle);
    }
    return out;
}

// The delimiter is the last character of the text (of an empty text ","). Each
// element is cut off the front together with its delimiter, in the text's code set
// and language; the element behind the last delimiter stays as Create left it. The
// text is consumed, and the wrapper and its strings are released here.
void* LmTypeMgr::ConvertFromLmStringOld(LmString* text, char id, unsigned count) const {
    const unsigned char codeSet = text->GetCodeSet();
    const unsigned width = text->Width();
    const auto* units = reinterpret_cast<const unsigned char*>(text->StrGet());
    const unsigned len = text->Len();
    const unsigned delimiter = len == 0 ? static_cast<unsigned>(',') : UnitAt(units, width, len - 1);

    unsigned elements = 1;
    for (unsigned i = 0; i < len; ++i)
        if (UnitAt(units, width, i) == delimiter) ++elements;
    auto* strings = static_cast<LmString*>(Desc(LmSTRING_T)->Create(elements));
    if (strings == nullptr) return nullptr;

    unsigned start = 0;
    unsigned e = 0;
    for (unsigned i = 0; i < len; ++i) {
        if (UnitAt(units, width, i) != delimiter) continue;
        strings[e] = LmString(codeSet, text->GetLanguage());
        LmStringSplice(strings[e], units, codeSet, 0, static_cast<uint16_t>(start), static_cast<uint16_t>(i - start), 1,
                       LM_SPLICE_ASSIGN, LmFormatLittle);
        ++e;
        start = i + 1;
    }
    // What is left behind the last delimiter stays in the text: nothing, as the
    // delimiter is the last character.
    if (start != 0)
        LmStringSplice(*text, units, codeSet, 0, static_cast<uint16_t>(start), static_cast<uint16_t>(len - start), 1,
                       LM_SPLICE_ASSIGN, LmFormatLittle);

    LmTypeConvertData* wrapper = LmTypeConvertData::Make(LmSTRING_T, elements, strings, const_cast<LmTypeMgr*>(this));
    const LmTypeConvertFromFunc convertFrom = Desc(id)->ConvertFrom;
    void* values = convertFrom != nullptr ? convertFrom(wrapper, count) : nullptr;
    delete wrapper;
    return values;
}
