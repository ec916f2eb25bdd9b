// A small reader over a fuzz input: bytes taken from the front for the choices of a
// run, the rest handed on as data. Every copy the targets make is sized exactly, so
// that the address sanitizer sees any read beyond the length a function was given.
#ifndef LM_FUZZ_INPUT_H
#define LM_FUZZ_INPUT_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

#include "lmstring.h"

class FuzzInput {
public:
    FuzzInput(const uint8_t* data, size_t size) : p(data), n(size) {}

    uint8_t Byte() {
        if (n == 0) return 0;
        --n;
        return *p++;
    }
    uint16_t Word() { return static_cast<uint16_t>(Byte() | Byte() << 8); }
    // One of the given choices, picked by the next byte.
    template <typename T, size_t N>
    T Pick(const T (&choices)[N]) {
        return choices[Byte() % N];
    }
    // The next `count` bytes (fewer at the end) as an exactly sized heap block.
    std::vector<uint8_t> Take(size_t count) {
        if (count > n) count = n;
        std::vector<uint8_t> out(p, p + count);
        p += count;
        n -= count;
        return out;
    }
    std::vector<uint8_t> Rest() { return Take(n); }
    size_t Left() const { return n; }

private:
    const uint8_t* p;
    size_t n;
};

// A terminated text of 1- or 2-byte units from raw bytes: whole units only, then a
// zero unit. The block is exactly as long as that.
inline std::vector<uint8_t> TerminatedText(const std::vector<uint8_t>& raw, unsigned width) {
    std::vector<uint8_t> out(raw.begin(), raw.begin() + static_cast<std::ptrdiff_t>(raw.size() / width * width));
    out.insert(out.end(), width, 0);
    return out;
}

// Fills `count` strings of a fresh array from the input: a code set and a language
// picked from the given ones, then a text of up to `maxText` bytes.
template <size_t C, size_t L>
void FillStrings(FuzzInput& in, const unsigned char (&codeSets)[C], const unsigned char (&languages)[L],
                 LmString* strings, unsigned count, unsigned maxText = 256) {
    for (unsigned i = 0; i < count; ++i) {
        const unsigned char codeSet = in.Pick(codeSets);
        const unsigned char language = in.Pick(languages);
        const unsigned width = LmCodeSetWidth(codeSet);
        const std::vector<uint8_t> text = TerminatedText(in.Take(in.Byte() % maxText), width);
        strings[i].SetCodeSet(codeSet);
        LmStringAssignRaw(strings[i], text.data(), codeSet, static_cast<uint16_t>(text.size() / width - 1), 1);
        strings[i].SetLanguage(language);
    }
}

// A heap block of exactly `bytes` + `padding` bytes (new[] of 0 bytes included, so
// that a pointer exists that may not be read), the bytes first, zeros behind.
struct Block {
    Block(const std::vector<uint8_t>& bytes, size_t padding = 0)
        : size(bytes.size() + padding), data(new uint8_t[size]()) {
        if (!bytes.empty()) std::memcpy(data.get(), bytes.data(), bytes.size());
    }
    explicit Block(size_t bytes) : size(bytes), data(new uint8_t[bytes]()) {}
    uint8_t* get() const { return data.get(); }
    size_t size;
    std::unique_ptr<uint8_t[]> data;
};

#endif
