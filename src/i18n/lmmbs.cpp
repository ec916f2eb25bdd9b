// Multi-byte conversion: 16-bit Unicode strings to and from the early six-byte form
// of UTF-8, through one table of sequence rows. Stateless: the table is the only
// data, and it is constant. Only 16-bit units pass: a decoded value above 0xFFFF is
// kept in its low 16 bits.
#include <cstdint>
#include <cstring>

#include "lmmbs.h"
#include "lmstring.h"

namespace {

// One row per sequence length; row n decodes a sequence of n bytes. A value below
// the row's lowest value is an overlong form. The row of zeros ends the table.
struct SequenceRow {
    int32_t firstMask;   // bits of the first byte that name the length
    int32_t firstValue;  // what they hold for this length
    int32_t shift;       // bits below the first byte's payload
    int32_t valueMask;   // bits a sequence of this length carries
    int32_t lowest;      // the smallest value this length may carry
};

constexpr SequenceRow kSequenceRows[] = {
    {0x80, 0x00, 0, 0x7F, 0},
    {0xE0, 0xC0, 6, 0x7FF, 0x80},
    {0xF0, 0xE0, 12, 0xFFFF, 0x800},
    {0xF8, 0xF0, 18, 0x1FFFFF, 0x10000},
    {0xFC, 0xF8, 24, 0x3FFFFFF, 0x200000},
    {0xFE, 0xFC, 30, 0x7FFFFFFF, 0x4000000},
    {0, 0, 0, 0, 0},
};

// The longest sequence, and what LmMBS2LmString reads before it gives up with -2.
constexpr int kMaxSequence = 6;
constexpr int kTooLong = 32768;
// A batch of LmMBS2LmString: 256 units and their closing zero.
constexpr unsigned kBatchUnits = 256;

inline uint16_t ReadUnit(const unsigned char* p) {
    uint16_t unit;
    std::memcpy(&unit, p, 2);
    return unit;
}

// Decodes one sequence of at most n bytes (n > 0, in not null) into *out: the bytes
// used, or -1. The running value is kept in 64 bits; every value mask is narrower
// than 32 bits, so the result is what a 32-bit accumulator gives.
int DecodeSequence(uint16_t* out, const unsigned char* in, uint64_t n) {
    const unsigned first = in[0];
    uint64_t value = first;
    uint64_t count = 0;
    for (const SequenceRow* row = kSequenceRows; row->firstMask != 0; ++row) {
        ++count;
        if ((first & static_cast<unsigned>(row->firstMask)) == static_cast<unsigned>(row->firstValue)) {
            value &= static_cast<uint64_t>(row->valueMask);
            if (value < static_cast<uint64_t>(row->lowest)) return -1;  // overlong form
            *out = static_cast<uint16_t>(value);
            return static_cast<int>(count);
        }
        if (count >= n) return -1;  // the sequence goes on beyond the bytes given
        const unsigned next = in[count] ^ 0x80u;
        if (next > 63) return -1;  // not a continuation byte
        value = value * 64 + next;
    }
    return -1;  // the first byte names no row
}

// Encodes one value: the bytes written to out (room for kMaxSequence), or -1 when
// no row takes it.
int EncodeValue(char* out, uint32_t c) {
    int count = 0;
    for (const SequenceRow* row = kSequenceRows; row->firstMask != 0; ++row) {
        ++count;
        if (c > static_cast<uint32_t>(row->valueMask)) continue;
        int shift = row->shift;
        out[0] = static_cast<char>((c >> shift) | static_cast<uint32_t>(row->firstValue));
        for (int i = 1; i < count; ++i) {
            shift -= 6;
            out[i] = static_cast<char>(0x80u | ((c >> shift) & 0x3Fu));
        }
        return count;
    }
    return -1;
}

// The number of bytes EncodeValue writes for c, or -1.
int EncodedLength(uint32_t c) {
    int count = 0;
    for (const SequenceRow* row = kSequenceRows; row->firstMask != 0; ++row) {
        ++count;
        if (c <= static_cast<uint32_t>(row->valueMask)) return count;
    }
    return -1;
}

// The units of s in code set 253: s's own buffer when it is Unicode already, else a
// converted copy held in `copy`.
const unsigned char* UnicodeUnits(const LmString& s, LmString& copy) {
    if (s.GetCodeSet() == LM_CODESET_UNICODE) return reinterpret_cast<const unsigned char*>(s.StrGet());
    copy.CopyMapped(s, LM_CODESET_UNICODE, -1);
    return reinterpret_cast<const unsigned char*>(copy.StrGet());
}

// Appends `count` batch units to out: what `out += batch` does for a batch string in
// code set 253 holding these units and a zero.
void AppendBatch(LmString& out, const uint16_t* batch, unsigned count) {
    LmStringSplice(out, batch, LM_CODESET_UNICODE, out.Len(), 0, static_cast<uint16_t>(count), 1, LM_SPLICE_ASSIGN,
                   LmFormatLittle);
}

// True when p points into the buffer of s.
bool PointsInto(const char* p, const LmString& s) {
    if (p == nullptr || s.GetSize() == 0) return false;
    const auto at = reinterpret_cast<uintptr_t>(p);
    const auto begin = reinterpret_cast<uintptr_t>(s.StrGet());
    return at >= begin && at - begin < s.GetSize();
}

// The 7-bit path of LmString2LmMBS for a 1-byte text: sets *result and answers true,
// or answers false when a byte with the top bit set asks for the Unicode path.
bool SevenBitCopy(const unsigned char* text, char* out, int outLength, int* result) {
    int i = 0;
    for (; i < outLength; ++i) {
        const unsigned char b = text[i];
        if ((b & 0x80) != 0) return false;
        if (b == 0) {
            std::memset(out + i, 0, static_cast<size_t>(outLength - i));
            *result = i;
            return true;
        }
        out[i] = static_cast<char>(b);
    }
    // out is full: a text that just fits has no terminator; a longer one answers the
    // negative of its whole length, so that a caller knows what to ask for.
    int length = i;
    for (; text[length] != 0; ++length)
        if ((text[length] & 0x80) != 0) return false;
    *result = length == i ? i : -length;
    return true;
}

}  // namespace

int LmMultiByte2WChar(unsigned short* out, char* in, unsigned long long n) {
    if (in == nullptr) return 0;
    if (n == 0) return -1;
    uint16_t unit = 0;
    const int used = DecodeSequence(&unit, reinterpret_cast<const unsigned char*>(in), n);
    if (used > 0 && out != nullptr) *out = unit;  // a null out only measures
    return used;
}

// Units at or beyond outLength are decoded into a scratch cell, so that the result
// tells the length needed. A null out or a negative outLength writes nothing. A null
// in is one empty step: it counts one unit, writes none, and ends the loop.
int LmMultiByteStr2WCharStr(unsigned short* out, int outLength, char* in, int n) {
    if (out == nullptr || outLength < 0) outLength = 0;
    unsigned short scratch = 0;
    int units = 0;
    while (n > 0) {
        unsigned short* cell = units < outLength ? out + units : &scratch;
        const int used = LmMultiByte2WChar(cell, in, static_cast<unsigned long long>(n));
        if (used < 0) return -1;
        ++units;
        if (used == 0) break;
        in += used;
        n -= used;
    }
    return units;
}

// wchar_t is signed here: a negative c is taken as the unsigned value it holds, which
// no row takes, rather than as a one-byte form of its low bits.
int LmWChar2MultiByte(char* out, wchar_t c) {
    if (out == nullptr) return 0;
    return EncodeValue(out, static_cast<uint32_t>(c));
}

// The text stops at the first unit 0: a zero byte, or a longer sequence whose value
// is 0 in its low 16 bits (0x10000, say), as a zero unit cannot stand inside a
// string. The result is then the bytes in front of that sequence.
//
// A text taken from out's own buffer (in points into it) is kept alive until the end
// rather than read after out has been destroyed.
int LmMBS2LmString(const char* in, LmString& out, int n) {
    LmString held(LM_CODESET_NATIVE, 0);
    if (PointsInto(in, out)) held.Destruct(out);
    const unsigned char language = out.GetLanguage();
    out.Destroy();
    out.SetLanguage(language);
    out.SetCodeSet(LM_CODESET_UNICODE);
    if (n <= 0) return 0;

    // The batch: the units go in behind each other; a full batch of 256 goes to out
    // at once, so that out is not spliced for every unit.
    uint16_t batch[kBatchUnits + 1];
    unsigned fill = 0;
    int consumed = 0;
    int result = -1;
    const auto* text = reinterpret_cast<const unsigned char*>(in);
    while (text != nullptr) {
        uint16_t unit = text[consumed];
        int used = 1;
        if (unit >= 0x80) {
            used = DecodeSequence(&unit, text + consumed, static_cast<uint64_t>(n - consumed));
            if (used < 0) break;
        }
        if (unit == 0) {
            result = consumed;
            break;
        }
        batch[fill++] = unit;
        consumed += used;
        if (fill == kBatchUnits) {
            batch[fill] = 0;
            AppendBatch(out, batch, fill);
            fill = 0;
        }
        if (consumed >= kTooLong) {
            result = -2;
            break;
        }
        if (consumed >= n) {
            result = consumed;
            break;
        }
    }
    // What the batch holds is appended in every case: a failure leaves the good
    // prefix. An empty batch changes out only when out has no buffer yet.
    if (fill != 0 || out.GetSize() == 0) {
        batch[fill] = 0;
        AppendBatch(out, batch, fill);
    }
    return result;
}

int LmMultiByteString2LmString(const LmString& in, LmString& out) {
    return LmMBS2LmString(in.StrGet(), out, in.Len());
}

int LmMultiByteString2LmString(const char* in, LmString& out, int n) { return LmMBS2LmString(in, out, n); }

// The units are counted up to n or the terminator, whichever comes first: the text
// is never read beyond its end.
int LmMBSLength(const LmString& s, unsigned short n) {
    if (n == 0) return 0;
    if (s.GetCodeSet() < 6) {
        const auto* text = reinterpret_cast<const unsigned char*>(s.StrGet());
        size_t i = 0;
        while (text[i] != 0 && text[i] < 0x80) ++i;
        if (text[i] == 0) return static_cast<int>(i);  // all 7-bit: n does not matter
    }
    LmString copy(LM_CODESET_UNICODE, 0);
    const unsigned char* p = UnicodeUnits(s, copy);
    int total = 0;
    for (unsigned i = 0; i < n; ++i, p += 2) {
        const uint16_t unit = ReadUnit(p);
        if (unit == 0) break;
        const int bytes = EncodedLength(unit);
        if (bytes < 0) return -1;
        total += bytes;
    }
    return total;
}

int LmString2LmMBS(const LmString& s, char* out, int outLength) {
    if (outLength < 0) outLength = 0;
    if (s.GetCodeSet() < 27) {
        int result = 0;
        if (SevenBitCopy(reinterpret_cast<const unsigned char*>(s.StrGet()), out, outLength, &result)) return result;
    }
    LmString copy(LM_CODESET_UNICODE, 0);
    int written = 0;
    for (const unsigned char* p = UnicodeUnits(s, copy);; p += 2) {
        const uint16_t unit = ReadUnit(p);
        if (unit == 0) break;
        if (unit < 127) {
            if (written >= outLength) return -written;
            out[written++] = static_cast<char>(unit);
            continue;
        }
        char bytes[kMaxSequence];
        const int count = EncodeValue(bytes, unit);
        if (count < 0) return -1;
        if (count > outLength - written) return -written;  // the unit's bytes would overrun out
        std::memcpy(out + written, bytes, static_cast<size_t>(count));
        written += count;
    }
    if (written < outLength) out[written] = 0;
    return written;
}

// The piecewise build measures the whole text first and then encodes it straight
// into its place, so a byte text longer than a string may hold (65531 bytes) is not
// cut. A buffer allocated here is the caller's, to be freed with delete[].
int LmString2MultiByteString(const LmString& s, char*& out, int& outLength) {
    char local[2048];
    const bool callerBuffer = out != nullptr && outLength > 0;
    if (!callerBuffer) {
        out = nullptr;
        outLength = 0;
    }
    const int r = callerBuffer ? LmString2LmMBS(s, out, outLength)
                               : LmString2LmMBS(s, local, static_cast<int>(sizeof local));
    if (r > 0) {
        if (!callerBuffer) {
            out = new char[static_cast<size_t>(r) + 1];
            std::memcpy(out, local, static_cast<size_t>(r));
            out[r] = 0;
            outLength = r + 1;
        }
        return r;
    }

    LmString copy(LM_CODESET_UNICODE, 0);
    const unsigned char* units = UnicodeUnits(s, copy);
    int total = 0;
    for (const unsigned char* p = units;; p += 2) {
        const uint16_t unit = ReadUnit(p);
        if (unit == 0) break;
        const int bytes = EncodedLength(unit);
        if (bytes < 0) return -1;
        total += bytes;
    }
    if (out == nullptr) {
        out = new char[static_cast<size_t>(total) + 1];
        outLength = total + 1;
    }
    if (outLength <= total) {
        outLength = total;  // the size to retry with
        return -1;
    }
    int written = 0;
    for (const unsigned char* p = units;; p += 2) {
        const uint16_t unit = ReadUnit(p);
        if (unit == 0) break;
        written += EncodeValue(out + written, unit);
    }
    out[written] = 0;
    return written;
}
