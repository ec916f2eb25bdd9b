// Helpers the test programs share: byte images written as hex, the whole state of a
// string, exactly sized heap copies (so that the address sanitizer sees a read past
// them) and a recorder of the reports that reach LUMO_assert.
#ifndef LM_TESTKIT_H
#define LM_TESTKIT_H

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "lumotypes.h"

namespace lmtest {

using Bytes = std::vector<uint8_t>;
using Units = std::vector<uint16_t>;
using State = std::tuple<int, int, Bytes>;  // code set, language, the whole buffer

// "07 00 01 01 61" -> {7, 0, 1, 1, 0x61}; blanks are ignored.
inline Bytes Hex(const char* text) {
    Bytes out;
    for (const char* p = text; *p != 0;) {
        if (*p == ' ') {
            ++p;
            continue;
        }
        out.push_back(static_cast<uint8_t>(std::strtoul(std::string(p, 2).c_str(), nullptr, 16)));
        p += 2;
    }
    return out;
}

inline Bytes Of(const void* p, size_t n) {
    const auto* b = static_cast<const uint8_t*>(p);
    return Bytes(b, b + n);
}

inline Bytes Cat(std::initializer_list<Bytes> parts) {
    Bytes out;
    for (const Bytes& part : parts) out.insert(out.end(), part.begin(), part.end());
    return out;
}

// The whole buffer, terminator and anything behind an inner zero included.
inline Bytes BufferOf(const LmString& s) { return Of(s.StrGet(), s.GetSize()); }
inline State StateOf(const LmString& s) { return {s.GetCodeSet(), s.GetLanguage(), BufferOf(s)}; }
inline Units UnitsOf(const LmString& s) {
    Units u(s.Len());
    if (!u.empty()) std::memcpy(u.data(), s.StrGet(), u.size() * 2);
    return u;
}

inline LmString Wide(const char16_t* text) { return LmString(reinterpret_cast<const unsigned short*>(text)); }

// A string with exactly these labels and `n` characters of raw text (65535: up to the terminator).
inline LmString Raw(unsigned char codeSet, unsigned char language, const void* text, uint16_t n = 65535) {
    LmString s(codeSet, language);
    LmStringAssignRaw(s, text, codeSet, n, LmFormatLittle);
    return s;
}

inline int Sign(int v) { return (v > 0) - (v < 0); }

struct FreeBytes {
    void operator()(uint8_t* p) const { std::free(p); }
};
using Block = std::unique_ptr<uint8_t[], FreeBytes>;

inline Block Exact(const Bytes& bytes) {
    Block p(static_cast<uint8_t*>(std::malloc(bytes.empty() ? 1 : bytes.size())));
    if (!bytes.empty()) std::memcpy(p.get(), bytes.data(), bytes.size());
    return p;
}

// The reports raised while one of these lives, as "message|stem"; the handler before
// it comes back at the end.
class AssertLog {
public:
    AssertLog() : previous(LmSetAssertHandler(Record)) { Entries().clear(); }
    ~AssertLog() { LmSetAssertHandler(previous); }
    AssertLog(const AssertLog&) = delete;
    AssertLog& operator=(const AssertLog&) = delete;
    static std::vector<std::string>& Entries() {
        static std::vector<std::string> entries;
        return entries;
    }

private:
    static void Record(const char* message, const char* stem, int line) {
        Entries().push_back(std::string(message) + "|" + stem + (line > 0 ? "" : "|no line"));
    }
    LmAssertHandler previous;
};

}  // namespace lmtest

#endif
