// The print and scan languages of the identity values. One engine serves the three
// classes; each class's directive letters, positional fields and way of meeting
// plain format characters are told by its Language record.
//
// Printing walks the format into a buffer of 512 bytes: a longer text is cut at 511
// characters. "%%" is a percent sign; a named directive prints its field as "%u" or
// "%hu" print it; "%h" and "%l" (when the class knows them) skip the letter behind
// them and print the field of their position (0 where the position has none); "%"
// and any other character print that character.
//
// Scanning starts every field at 0 and walks format and text together while both
// have characters left. A directive reads a number as "%u" or "%hu" read it (leading
// blanks and a sign allowed, the low bits kept), into its field or the field of its
// position, and the digits of the number are then skipped in the text; a number that
// does not parse leaves its field as it was. "%%" and an unknown directive skip one
// text character. At the end the fields are written into the value.
#include <charconv>
#include <cstdlib>
#include <cstring>

#include "idcommon.h"
#include "lmtypemgr.h"
#include "scantext.h"

namespace lmidentity {

namespace {

constexpr size_t kTextBuffer = 512;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

uint32_t ReadField(const unsigned char* record, Field f) {
    if (f.width == 2) {
        uint16_t v;
        std::memcpy(&v, record + f.offset, sizeof v);
        return v;
    }
    uint32_t v;
    std::memcpy(&v, record + f.offset, sizeof v);
    return v;
}

void WriteField(unsigned char* record, Field f, unsigned long long n) {
    if (f.width == 2) {
        const auto v = static_cast<uint16_t>(n);
        std::memcpy(record + f.offset, &v, sizeof v);
    } else if (f.width == 4) {
        const auto v = static_cast<uint32_t>(n);
        std::memcpy(record + f.offset, &v, sizeof v);
    }
}

// The field of a named directive letter; width 0 when the class does not know it.
Field NamedField(const Language& language, char letter) {
    if (letter == 0) return Field{0, 0};
    const char* at = std::strchr(language.letters, letter);
    return at != nullptr ? language.fields[at - language.letters] : Field{0, 0};
}

bool IsPositional(const Language& language, char letter) {
    return letter != 0 && std::strchr(language.positional, letter) != nullptr;
}

Field PositionField(const Language& language, unsigned position) {
    return position < sizeof language.positions / sizeof language.positions[0] ? language.positions[position]
                                                                               : Field{0, 0};
}

// A text of at most kTextBuffer - 1 characters.
class TextBuffer {
public:
    void Put(char c) {
        if (n + 1 < kTextBuffer) chars[n++] = c;
    }
    void PutNumber(uint32_t v) {
        char digits[16];
        const auto end = std::to_chars(digits, digits + sizeof digits, v).ptr;
        for (const char* d = digits; d != end; ++d) Put(*d);
    }
    const char* Close() {
        chars[n] = 0;
        return chars;
    }

private:
    char chars[kTextBuffer];
    size_t n = 0;
};

// Reads a number as "%u" or "%hu" does: strtoull's number, its low bits kept by the
// field. Nothing is written when no number stands at text.
void ScanNumber(unsigned char* record, Field field, const char* text) {
    char* end = nullptr;
    const unsigned long long n = std::strtoull(text, &end, 10);
    if (end != text) WriteField(record, field, n);
}

// How a plain format character meets the text; moves f and t.
void MeetPlain(const Language& language, const char*& f, const char*& t) {
    if (language.style != PlainStyle::ObjId) {
        ++f;
        ++t;
        return;
    }
    if (*f == *t) {
        ++f;
        ++t;
    } else if (IsDigit(*t)) {
        // A text without the high part ("low#block"): the format moves behind its '-'.
        const char* dash = std::strchr(f, '-');
        f = dash != nullptr && std::strchr(t, '-') == nullptr ? dash + 1 : f + 1;
    } else {
        ++t;
    }
}

}  // namespace

// Offsets of the fields in the memory records.
const Language ObjIdLanguage = {
    "BLH", {{0, 4}, {4, 4}, {8, 2}}, "hl", {{8, 2}, {4, 4}, {0, 4}}, PlainStyle::ObjId, 0x00, sizeof(LmObjId),
};
const Language ClassIdLanguage = {
    "CV", {{0, 2}, {2, 2}}, "h", {{0, 2}, {2, 2}}, PlainStyle::ClassId, 0xFF, sizeof(LmClassId),
};
const Language RefLanguage = {
    "BLHDCV",
    {{0, 4}, {4, 4}, {8, 2}, {10, 2}, {12, 2}, {14, 2}},
    "hl",
    {{10, 2}, {8, 2}, {4, 4}, {0, 4}, {12, 2}},
    PlainStyle::Ref,
    0x00,
    sizeof(LmRef),
};

LmString& PrintIdentity(LmString& out, const void* value, bool isNull, const char* format, const Language& language) {
    if (isNull) {
        out = LmTypeMgr::GetNullPrintString();
        return out;
    }
    const auto* record = static_cast<const unsigned char*>(value);
    TextBuffer text;
    unsigned position = 0;
    for (const char* f = format; *f != 0;) {
        if (*f != '%') {
            text.Put(*f++);
            continue;
        }
        const char letter = f[1];
        if (letter == 0) break;  // a '%' at the end prints nothing
        f += 2;
        const Field named = NamedField(language, letter);
        if (named.width != 0) {
            text.PutNumber(ReadField(record, named));
        } else if (IsPositional(language, letter)) {
            if (*f != 0) ++f;  // the 'u' of "%hu" and "%lu"
            const Field field = PositionField(language, position++);
            text.PutNumber(field.width != 0 ? ReadField(record, field) : 0);
        } else {
            text.Put(letter);  // "%%" and any unknown directive
        }
    }
    out = text.Close();
    return out;
}

void* ScanIdentity(void* value, LmString& text, const char* format, const Language& language) {
    if (value == nullptr) return nullptr;
    const ScanText narrow(text);
    const ScanText nullText(LmTypeMgr::GetNullPrintString());
    const char* t = narrow.Get();
    auto* record = static_cast<unsigned char*>(value);
    if (std::strncmp(t, nullText.Get(), std::strlen(nullText.Get())) == 0) {
        std::memset(record, language.nullFill, language.recordBytes);
        return value;
    }

    unsigned char fields[sizeof(LmRef)] = {};
    unsigned position = 0;
    const char* f = format;
    while (*f != 0 && *t != 0) {
        if (language.style == PlainStyle::Ref) {
            while (*f == ' ' || *f == '(') ++f;
            while (*t == ' ' || *t == '(') ++t;
            if (*f == 0 || *t == 0) break;
        }
        if (*f != '%') {
            MeetPlain(language, f, t);
            continue;
        }
        const char letter = f[1];
        f += letter != 0 ? 2 : 1;
        Field field = NamedField(language, letter);
        const bool positional = field.width == 0 && IsPositional(language, letter);
        if (positional) {
            if (*f != 0) ++f;
            field = PositionField(language, position++);
        }
        if (field.width == 0 && !positional) {
            ++t;  // "%%" and an unknown directive
            continue;
        }
        if (field.width != 0) ScanNumber(fields, field, t);
        while (IsDigit(*t)) ++t;
    }
    for (const char* l = language.letters; *l != 0; ++l) {
        const Field field = language.fields[l - language.letters];
        std::memcpy(record + field.offset, fields + field.offset, field.width);
    }
    return value;
}

}  // namespace lmidentity
