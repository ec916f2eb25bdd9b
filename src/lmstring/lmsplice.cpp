// The splice through which the string's text changes, the conversion of texts
// between code sets, and the plain text helpers under both.
#include <cstring>
#include <memory>

#include "lmchar.h"
#include "lmstring.h"
#include "lmstrpriv.h"

const unsigned char LmStringZeroText[4] = {0, 0, 0, 0};

void LmStringOverflow(int line) {
    LmConfig* config = DefaultConfig(-1);
    if (config == nullptr) return;
    uint16_t flag = 0;
    config->QueryValue("debug", "stringOverflow", flag);
    if (flag != 0) LUMO_assert("String overflow", "src\\lmstring", line);
}

namespace {

inline unsigned Min(unsigned a, unsigned b) { return a < b ? a : b; }

// The first unit of a text, read through ShortStoreOne in a 2-byte code set.
unsigned FirstUnit(const void* text, unsigned char codeSet) {
    if (codeSet < LM_CODESET_FIRST_WIDE) return *static_cast<const unsigned char*>(text);
    uint16_t unit = 0;
    ShortStoreOne(&unit, text, LmFormatLittle);
    return unit;
}

// Maps up to `count` characters of `text` into `out`, which is zeroed and has room
// for them and a terminator. Answers the characters converted.
unsigned ConvertChars(unsigned char fromCodeSet, unsigned char toCodeSet, const void* text, unsigned count,
                      unsigned char* out) {
    if (fromCodeSet == LM_CODESET_NATIVE) fromCodeSet = LmLanguageContext::GetNativeCodeSet();
    if (toCodeSet == LM_CODESET_NATIVE) toCodeSet = LmLanguageContext::GetNativeCodeSet();
    LmStringIterator source(static_cast<const char*>(text), fromCodeSet, LM_LANGUAGE_DEFAULT, LM_CODESET_DEFAULT);
    LmStringIterator target(reinterpret_cast<const char*>(out), toCodeSet, LM_LANGUAGE_DEFAULT, LM_CODESET_DEFAULT);
    unsigned done = 0;
    while (done < count && !source.IsEOS()) {
        *target = *source;  // LmChar assignment maps through Unicode
        ++target;
        ++source;
        ++done;
    }
    if (toCodeSet == LM_CODESET_UNICODE) {
        *target = LmChar(static_cast<unsigned short>(0), toCodeSet);
    } else {
        *target = LmChar('\0', toCodeSet);
    }
    return done;
}

}  // namespace

unsigned LmWStrLen(const uint16_t* text) {
    if (text == nullptr) return 0;
    // Byte reads: a 16-bit text on a disk page need not be aligned.
    const auto* p = reinterpret_cast<const unsigned char*>(text);
    unsigned n = 0;
    while ((p[0] | p[1]) != 0) {
        p += 2;
        ++n;
    }
    return n;
}

unsigned LmStrLen(unsigned char codeSet, const void* text) {
    if (text == nullptr) return 0;
    if (codeSet < LM_CODESET_FIRST_WIDE) return static_cast<unsigned>(std::strlen(static_cast<const char*>(text)));
    return LmWStrLen(static_cast<const uint16_t*>(text));
}

uint16_t* LmWMemSet(uint16_t* dest, uint16_t unit, unsigned count) {
    auto* p = reinterpret_cast<unsigned char*>(dest);
    for (unsigned i = 0; i < count; ++i) LmWriteUnit(p + 2 * i, unit);
    return dest;
}

void LmCopyChars(void* dest, const void* src, unsigned width, unsigned char format, unsigned bytes) {
    if (bytes == 0) return;
    if (width == 2 && (format & 0x0F) == LmFormatBig) {
        auto* d = static_cast<unsigned char*>(dest);
        const auto* s = static_cast<const unsigned char*>(src);
        for (unsigned i = 0; i + 1 < bytes; i += 2) ShortStoreOne(d + i, s + i, LmFormatBig);
        return;
    }
    std::memmove(dest, src, bytes);
}

void LmStringSplice(LmString& string, const void* source, unsigned char sourceCodeSet, uint16_t position,
                    uint16_t sourceStart, uint16_t count, uint16_t repeat, uint16_t mode, unsigned char format) {
    if (mode < LM_SPLICE_REPLACE || mode > LM_SPLICE_ASSIGN) return;  // no such change: nothing happens
    if (format == 255) format = LmFormatLittle;
    if (mode != LM_SPLICE_ASSIGN && (source == nullptr || FirstUnit(source, sourceCodeSet) == 0)) return;

    const unsigned width = string.Width();
    const auto* src = static_cast<const unsigned char*>(source);
    std::unique_ptr<unsigned char[]> converted;  // the source in the string's code set, when it needs one
    unsigned srcAvailable = ~0u;  // bytes that can be read at src; a caller's text is trusted
    const bool convert = sourceCodeSet != LM_CODESET_NATIVE ? sourceCodeSet != string.codeSet
                                                            : LmCodeSetWidth(LM_CODESET_NATIVE) != width;
    if (src != nullptr && convert) {
        unsigned char* buffer = nullptr;
        srcAvailable = LmStringConvertBuffer(sourceCodeSet, string.codeSet, src, buffer);
        converted.reset(buffer);
        src = buffer;
    }

    // Byte offsets; the character sums stay in 16 bits.
    const unsigned posB = position * width;
    const unsigned endB = static_cast<uint16_t>(position + count) * width;
    const unsigned srcB = sourceStart * width;
    const unsigned srcEndB = static_cast<uint16_t>(sourceStart + count) * width;
    const unsigned srcBytes = srcEndB > srcB ? srcEndB - srcB : 0;
    const unsigned oldSize = string.size;

    long wanted;
    if (mode == LM_SPLICE_REPLACE) {
        wanted = static_cast<long>(srcBytes) * repeat + oldSize - static_cast<long>(endB) + posB;
    } else if (mode == LM_SPLICE_INSERT) {
        wanted = static_cast<long>(srcBytes) * repeat + (oldSize != 0 ? oldSize : width);
    } else {
        wanted = static_cast<long>(srcBytes) * repeat + width + posB;
    }
    bool overflow = false;
    if (wanted > LM_STRING_MAX_BYTES) {
        LmStringOverflow(__LINE__);
        wanted = LM_STRING_MAX_BYTES;
        overflow = true;
    }
    if (wanted < static_cast<long>(width)) wanted = width;  // a replace past the end still keeps a terminator
    const unsigned newSize = static_cast<unsigned>(wanted);

    // The buffer is taken before the string changes: a refused allocation leaves the
    // string as it was.
    auto* fresh = new unsigned char[newSize]();
    string.size = static_cast<uint16_t>(newSize);
    const unsigned char* old = string.data;

    // Every copy stays inside the new buffer; after an overflow the source comes
    // first and the old tail gives way.
    const unsigned budget = newSize > posB ? newSize - posB : 0;
    if (old != nullptr) {
        LmCopyChars(fresh, old, width, format, Min(Min(posB, oldSize), newSize));
        if (mode != LM_SPLICE_ASSIGN) {
            const unsigned from = mode == LM_SPLICE_INSERT ? posB : endB;
            const unsigned to = mode == LM_SPLICE_INSERT ? posB + srcBytes : posB + repeat * srcBytes;
            if (from < oldSize && to < newSize && (!overflow || budget > srcBytes)) {
                unsigned n = Min(oldSize - from, newSize - to);
                if (overflow) n = Min(n, newSize - posB - srcBytes);
                LmCopyChars(fresh + to, old + from, width, format, n);
            }
        }
    }
    if (src != nullptr && posB < newSize) {
        if (repeat == 1) {
            unsigned n = Min(srcBytes, budget);
            n = Min(n, srcAvailable > srcB ? srcAvailable - srcB : 0);
            LmCopyChars(fresh + posB, src + srcB, width, format, n);
        } else {
            // The fill repeats the source's first character; sourceStart plays no part.
            const unsigned chars = Min(repeat, budget / width);
            if (width == 1) {
                std::memset(fresh + posB, src[0], chars);
            } else {
                LmWMemSet(reinterpret_cast<uint16_t*>(fresh + posB), LmReadUnit(src), chars);
            }
        }
    }
    // The terminator: a text cut at the limit is closed here, and every buffer ends
    // in one character of zero bits.
    std::memset(fresh + newSize - width, 0, width);

    delete[] string.data;
    string.data = fresh;
}

// Buffer bytes for `count` characters converted into a code set, terminator
// included; a text beyond the byte limit is cut to fit (and reported when asked).
static unsigned ConvertedBytes(unsigned char toCodeSet, unsigned& count, int line) {
    const unsigned targetWidth = LmCodeSetWidth(toCodeSet);
    const unsigned bytes = (count + 1) * targetWidth;
    if (bytes <= LM_STRING_MAX_BYTES) return bytes;
    LmStringOverflow(line);
    count = LM_STRING_MAX_BYTES / targetWidth - 1;
    return LM_STRING_MAX_BYTES;
}

unsigned LmStringConvertBuffer(unsigned char fromCodeSet, unsigned char toCodeSet, const void* text,
                               unsigned char*& out) {
    unsigned count = LmStrLen(fromCodeSet, text);
    const unsigned bytes = ConvertedBytes(toCodeSet, count, __LINE__);
    out = new unsigned char[bytes]();
    ConvertChars(fromCodeSet, toCodeSet, text, count, out);
    return bytes;
}

int LmStringConvertInto(unsigned char fromCodeSet, unsigned char toCodeSet, const void* text, uint16_t n,
                        unsigned char*& buffer, uint16_t& bufferSize) {
    unsigned count = n;
    const unsigned bytes = ConvertedBytes(toCodeSet, count, __LINE__);
    if (buffer != nullptr && bufferSize >= bytes) {
        std::memset(buffer, 0, bufferSize);  // no old bytes survive behind the new terminator
    } else {
        delete[] buffer;
        buffer = new unsigned char[bytes]();
        bufferSize = static_cast<uint16_t>(bytes);
    }
    return static_cast<int>(ConvertChars(fromCodeSet, toCodeSet, text, count, buffer));
}

void LmStringAssignRaw(LmString& string, const void* source, unsigned char codeSet, uint16_t n, unsigned char format) {
    if (source == nullptr || n == 0) {
        string.data = nullptr;
        return;
    }
    unsigned count = n == 65535 ? LmStrLen(codeSet, source) : n;
    count = Min(count, LmStringMaxChars(codeSet));
    LmStringSplice(string, source, codeSet, 0, 0, static_cast<uint16_t>(count), 1, LM_SPLICE_ASSIGN, format);
}
