// The handlers of LmString (id 11): life cycle of string arrays, comparison and
// hashing of strings in memory or read in place from disk images and index keys,
// printing and scanning, the successor step of an order-form key; and at the end the
// two descriptor records, the current one and the one of the legacy table.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <vector>

#include "lmbounds.h"
#include "lmchar.h"
#include "lmslots.h"
#include "lmstring.h"
#include "lmstrslots.h"
#include "lmtypemgr.h"

namespace {

static_assert(sizeof(LmString) == 16, "an array of strings steps by 16 bytes");

constexpr uint32_t kHashMultiplier = 1103515245u;
constexpr uint32_t kNullHash = 0xFEFE7575u;
// Stored texts up to this many bytes are copied to the stack, longer ones to the heap.
constexpr unsigned kStackText = 254;
// A cut key with this many bytes present is too long to be compared or hashed in part.
constexpr unsigned kPartLimit = 254;
// The count word in front of a block of several strings.
constexpr size_t kCountWord = 8;

// Four zero bytes: an empty text of either width, never written.
alignas(4) constexpr unsigned char kEmptyText[4] = {0, 0, 0, 0};

inline unsigned Min(unsigned a, unsigned b) { return a < b ? a : b; }

// ---- Life cycle. One string comes alone from the allocator. Several come in one
// block: the count in its first 8 bytes, the strings behind it, and the caller holds
// the address behind the count. ----

void* StringCreate(unsigned count) {
    if (count <= 1) {
        void* raw = ::operator new(sizeof(LmString), std::nothrow);
        return raw != nullptr ? new (raw) LmString() : nullptr;
    }
    // Saturates, so that a count beyond the address space is refused by the allocator.
    size_t bytes = 0;
    if (__builtin_mul_overflow(static_cast<size_t>(count), sizeof(LmString), &bytes) ||
        __builtin_add_overflow(bytes, kCountWord, &bytes)) {
        bytes = SIZE_MAX;
    }
    auto* block = static_cast<unsigned char*>(::operator new(bytes, std::nothrow));
    if (block == nullptr) return nullptr;
    const uint64_t n = count;
    std::memcpy(block, &n, sizeof n);
    auto* strings = reinterpret_cast<LmString*>(block + kCountWord);
    for (unsigned i = 0; i < count; ++i) new (strings + i) LmString();
    return strings;
}

// The count word of a block decides how many strings go, not the caller's count.
void* StringDelete(void* value, unsigned count) {
    if (value == nullptr) return nullptr;
    auto* strings = static_cast<LmString*>(value);
    if (count > 1) {
        unsigned char* block = static_cast<unsigned char*>(value) - kCountWord;
        uint64_t n = 0;
        std::memcpy(&n, block, sizeof n);
        for (uint64_t i = n; i > 0; --i) strings[i - 1].~LmString();
        ::operator delete(block);
    } else {
        strings->~LmString();
        ::operator delete(value);
    }
    return nullptr;
}

void StringConstructor(void* array, unsigned count, unsigned) {
    auto* strings = static_cast<LmString*>(array);
    for (unsigned i = 0; i < count; ++i) new (strings + i) LmString();
}

void StringDestructor(void* array, unsigned count, unsigned) {
    auto* strings = static_cast<LmString*>(array);
    for (unsigned i = 0; i < count; ++i) strings[i].~LmString();
}

// `single` non-zero: every element becomes the one source string.
void StringAssignment(void* dest, void* src, unsigned count, int single) {
    auto* to = static_cast<LmString*>(dest);
    const auto* from = static_cast<const LmString*>(src);
    for (unsigned i = 0; i < count; ++i) to[i] = single != 0 ? from[0] : from[i];
}

// As StringAssignment, into raw memory.
void StringCopy(void* dest, void* src, unsigned count, int single) {
    auto* to = static_cast<LmString*>(dest);
    const auto* from = static_cast<const LmString*>(src);
    for (unsigned i = 0; i < count; ++i) new (to + i) LmString(single != 0 ? from[0] : from[i]);
}

// ---- Stored operands of comparison and hash, read in place. ----

// One operand in disk form, walked element by element.
struct StoredSide {
    const unsigned char* p;  // the next record; in the old form the next string
    unsigned left;           // bytes present from p on, when bounded
    bool bounded;            // the caller gave a length (0 is "all")
    bool decided;            // the form is known; the old form reads its one word only once
    bool oldForm;            // one old-form block: length word, strings ended by a zero byte
    unsigned oldLeft;        // old form: bytes of the block from p on
};

StoredSide MakeSide(const void* value, unsigned length) {
    return StoredSide{static_cast<const unsigned char*>(value), length, length != 0, false, false, 0};
}

// One element as read from a side.
struct StoredText {
    const unsigned char* text;  // in place, or the terminated scratch copy
    unsigned textBytes;         // length of the text in bytes
    unsigned present;           // bytes of the text present
    unsigned advance;           // bytes from the element's start to the next element
    unsigned char codeSet;
    unsigned char language;
    bool labels;  // a record of its own (current or order form)
    int state;    // 0 whole, 1 only the final byte missing, 2 cut short

    // Characters present: all of them unless the text is cut short.
    unsigned Chars() const { return (state == 2 ? present : textBytes) / LmCodeSetWidth(codeSet); }
};

enum class ReadResult { Ok, OutOfData, GiveUp };

ReadResult ReadElement(StoredSide& side, unsigned char format, int legacy, StoredText& e) {
    if (!side.decided) {
        if (side.bounded && side.left < 2) return ReadResult::OutOfData;
        const unsigned L = ReadWord(side.p, format);
        // Only the last byte tells the forms apart: 0xFF closes a current record, 0
        // the old block. When the length hides it, the table level decides.
        if ((format & LM_STRFMT_ORDER) != 0) {
            side.oldForm = false;
        } else if (!side.bounded || L + 2 <= side.left) {
            side.oldForm = side.p[L + 1] == 0;
        } else {
            side.oldForm = legacy != 0;
        }
        side.decided = true;
        if (side.oldForm) {
            side.oldLeft = L;
            side.p += 2;
            if (side.bounded) side.left -= 2;
        }
    }
    if (side.oldForm) {
        // No labels: code set 0, language 0. The text length runs to the end of the
        // block less its final zero; the string itself ends at its first zero byte.
        const unsigned inBlock = side.bounded ? Min(side.left, side.oldLeft) : side.oldLeft;
        e.codeSet = 0;
        e.language = 0;
        e.labels = false;
        e.textBytes = side.oldLeft != 0 ? side.oldLeft - 1 : 0;
        e.state = side.bounded && side.left < side.oldLeft ? 2 : 0;
        e.present = Min(inBlock, e.textBytes);
        e.text = side.p;
        const void* zero = inBlock != 0 ? std::memchr(side.p, 0, inBlock) : nullptr;
        e.advance =
            zero != nullptr ? static_cast<unsigned>(static_cast<const unsigned char*>(zero) - side.p) + 1 : inBlock;
    } else {
        if (side.bounded && side.left < 4) return ReadResult::OutOfData;
        const unsigned L = ReadWord(side.p, format);
        e.codeSet = side.p[2];
        e.language = side.p[3];
        e.labels = true;
        e.textBytes = L >= 4 ? L - 4 : 0;
        e.state = 0;
        // A cut key claims two bytes more than it holds; state 1 misses the final byte only.
        if (side.bounded && side.left - 2 < L) e.state = side.left - 1 == L ? 1 : 2;
        e.present = side.bounded ? Min(side.left - 4, e.textBytes) : e.textBytes;
        e.text = side.p + 4;
        e.advance = e.textBytes + 6;
    }
    // Long keys are not compared or hashed in part.
    if (e.present < e.textBytes && e.present >= kPartLimit) return ReadResult::GiveUp;
    return ReadResult::Ok;
}

// Moves a side to its next element. Fewer than 5 bytes left of a bounded side cannot
// hold one more: false.
bool Advance(StoredSide& side, const StoredText& e) {
    side.p += e.advance;
    if (side.oldForm) side.oldLeft = side.oldLeft > e.advance ? side.oldLeft - e.advance : 0;
    if (!side.bounded) return true;
    side.left = side.left > e.advance ? side.left - e.advance : 0;
    return side.left >= 5;
}

// The terminated copy of a stored text: on the stack up to kStackText bytes, else
// from malloc.
class Scratch {
public:
    Scratch() = default;
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    ~Scratch() { std::free(heap); }

    // Null when memory is refused; the text then compares and hashes as a null text.
    const unsigned char* Hold(const unsigned char* text, unsigned bytes) {
        unsigned char* to = stack;
        if (bytes > kStackText) {
            std::free(heap);
            heap = static_cast<unsigned char*>(std::malloc(bytes + 2));
            if (heap == nullptr) {
                LmCallMemoryHandler(bytes + 2);
                return nullptr;
            }
            to = heap;
        }
        std::memcpy(to, text, bytes);
        to[bytes] = 0;  // a zero unit of either width
        to[bytes + 1] = 0;
        return to;
    }

private:
    unsigned char stack[kStackText + 2];
    unsigned char* heap = nullptr;
};

// A record's text is closed by 00 FF, which is no terminator of a 16-bit text: it is
// copied and closed with a zero unit. A whole old-form string ends at its own zero
// byte and stays in place. A cut order text (state 2) stays in place too, bounded by
// a count: its words are read one at a time. A cut text of characters is copied all
// the same, because reading a character can look at the one behind it (a
// contraction), which would lie beyond the bytes given; being cut, it is shorter than
// kPartLimit, so the copy stays on the stack.
void PrepareText(StoredText& e, Scratch& scratch) {
    if (e.textBytes == 0 || (e.state == 2 && e.present == 0)) {
        e.text = kEmptyText;
    } else if (e.state == 2) {
        if (e.codeSet != LM_CODESET_ORDER) e.text = scratch.Hold(e.text, e.present);
    } else if (e.labels) {
        e.text = scratch.Hold(e.text, e.textBytes);
    }
    if (e.state == 1) e.state = 0;
}

// Two whole order-form keys of one family, compared in place without wildcards: the
// words up to the first difference are the same on both sides and decide nothing at
// any level, and the first differing words decide at the primary level when both are
// significant (not of the space or symbol class). Answers false when the walk of
// LmStrCmp is needed after all; otherwise `result` is what it would give.
bool QuickKeyCompare(const StoredText& x, const StoredText& y, int& result) {
    const unsigned n1 = x.textBytes / 2, n2 = y.textBytes / 2;
    const unsigned n = Min(n1, n2);
    // Order words are read low byte first whatever the byte order, as an order
    // text's walk reads them; a zero word ends a text.
    const auto word = [](const unsigned char* p, unsigned i) {
        return static_cast<uint16_t>(p[2 * i] | p[2 * i + 1] << 8);
    };
    // Four words at a time: the first lane that differs or holds a zero word (a zero
    // lane flags only itself and lanes above it), then the rest one by one.
    unsigned i = 0;
    for (; i + 4 <= n; i += 4) {
        uint64_t a, b;
        std::memcpy(&a, x.text + 2 * i, 8);
        std::memcpy(&b, y.text + 2 * i, 8);
        const uint64_t stop = (a ^ b) | ((a - 0x0001000100010001ull) & ~a & 0x8000800080008000ull);
        if (stop != 0) {
            i += static_cast<unsigned>(__builtin_ctzll(stop)) / 16;
            break;
        }
    }
    if (i + 4 > n)
        while (i < n && word(x.text, i) == word(y.text, i) && word(x.text, i) != 0) ++i;
    const uint16_t o1 = i < n1 ? word(x.text, i) : uint16_t{0};
    const uint16_t o2 = i < n2 ? word(y.text, i) : uint16_t{0};
    if (o1 == o2) {  // both ended: the same text
        result = 0;
        return o1 == 0;
    }
    const unsigned char family = x.language;
    const auto significant = [family](uint16_t o) {
        return o == 0 || o >= LM_ORDER_FIRST_DIGIT || family >= LM_FAMILY_HAN;
    };
    if (!significant(o1) || !significant(o2)) return false;
    const int64_t primary =
        static_cast<int64_t>(LmOrderKey(o1, family) & ~127u) - static_cast<int64_t>(LmOrderKey(o2, family) & ~127u);
    if (primary == 0) return false;
    result = primary > INT32_MAX ? INT32_MAX : primary < -INT32_MAX ? -INT32_MAX : static_cast<int>(primary);
    return true;
}

// The usual call of an index: one whole order-form key on each side, of one family,
// with the lengths given. Decided in place when QuickKeyCompare can; false otherwise.
bool QuickWholeKeys(unsigned char format, unsigned length1, const void* value1, unsigned length2, const void* value2,
                    int& result) {
    const auto* p1 = static_cast<const unsigned char*>(value1);
    const auto* p2 = static_cast<const unsigned char*>(value2);
    if (length1 < 6 || length2 < 6 || p1[2] != LM_CODESET_ORDER || p2[2] != LM_CODESET_ORDER || p1[3] != p2[3] ||
        (p1[3] & LM_FAMILY_MIX) != 0)
        return false;
    const unsigned L1 = ReadWord(p1, format), L2 = ReadWord(p2, format);
    if (L1 < 4 || L2 < 4 || L1 + 2 > length1 || L2 + 2 > length2) return false;
    // Without the order bit, a final 0 would make the record an old-form block.
    if ((format & LM_STRFMT_ORDER) == 0 && (p1[L1 + 1] == 0 || p2[L2 + 1] == 0)) return false;
    StoredText x{p1 + 4, L1 - 4, L1 - 4, L1 + 2, LM_CODESET_ORDER, p1[3], true, 0};
    StoredText y{p2 + 4, L2 - 4, L2 - 4, L2 + 2, LM_CODESET_ORDER, p2[3], true, 0};
    return QuickKeyCompare(x, y, result);
}

}  // namespace

// ---- Comparison. ----

int StringCompareCore(unsigned char format, unsigned length1, void* value1, unsigned length2, void* value2,
                      unsigned short option, unsigned count, int& status, int legacy) {
    status = LM_OK;
    if (count == 0) return 0;
    if (option == LM_CMP_DEFAULT) option = LmString::GetDefaultCmpOp();
    const bool skipSpaces = (option & LM_CMP_SKIP_SPACES) != 0;
    const bool wildcards = LmWildcardsActive(option);
    int result = 0;

    if (format == LmFormatMemory) {
        const auto* s1 = static_cast<const LmString*>(value1);
        const auto* s2 = static_cast<const LmString*>(value2);
        for (unsigned i = 0; i < count && result == 0; ++i) {
            int difference = 0;
            result = LmStrCmp(s1[i].GetCodeSet(), s1[i].GetLanguage(), s1[i].StrGet(), s2[i].GetCodeSet(),
                              s2[i].GetLanguage(), s2[i].StrGet(), option, -1, LmFormatMemory, &difference);
        }
        return result;
    }

    const auto nibble = static_cast<unsigned char>(format & 15u);
    StoredSide side1 = MakeSide(value1, length1);
    StoredSide side2 = MakeSide(value2, length2);
    Scratch scratch1, scratch2;
    for (unsigned i = 0;;) {
        StoredText x{}, y{};
        const ReadResult r1 = ReadElement(side1, format, legacy, x);
        const ReadResult r2 = r1 == ReadResult::GiveUp ? r1 : ReadElement(side2, format, legacy, y);
        if (r1 == ReadResult::GiveUp || r2 == ReadResult::GiveUp) {
            status = LM_ERR_NOT_SUPPORTED;
            return -1;
        }
        if (r1 != ReadResult::Ok || r2 != ReadResult::Ok) {
            status = LM_ERR_OUT_OF_DATA;
            return result;
        }
        if (!wildcards && (option & LM_CMP_EXACT) == 0 && x.state < 2 && y.state < 2 && x.codeSet == LM_CODESET_ORDER &&
            y.codeSet == LM_CODESET_ORDER && x.language == y.language && (x.language & LM_FAMILY_MIX) == 0 &&
            QuickKeyCompare(x, y, result)) {
            // Decided in place, with no copy.
        } else if (PrepareText(x, scratch1), PrepareText(y, scratch2), x.text == nullptr || y.text == nullptr) {
            // A text whose copy found no memory orders by the nulls.
            result = (x.text != nullptr ? 1 : 0) - (y.text != nullptr ? 1 : 0);
        } else {
            bool cut1 = x.state == 2;
            bool cut2 = y.state == 2;
            // An order-form key of mixed families is cut at the change: its order is
            // only known up to there.
            if (x.codeSet == LM_CODESET_ORDER && (x.language & LM_FAMILY_MIX) != 0) {
                status = LM_NOTE_ORDER_FIRST;
                x.language = static_cast<unsigned char>(x.language & ~LM_FAMILY_MIX);
            }
            if (y.codeSet == LM_CODESET_ORDER && (y.language & LM_FAMILY_MIX) != 0) {
                status = status != LM_OK ? LM_NOTE_ORDER_FIRST : LM_NOTE_ORDER_SECOND;
                y.language = static_cast<unsigned char>(y.language & ~LM_FAMILY_MIX);
                if (wildcards) cut2 = true;
            }

            const int t = (cut1 ? 1 : 0) + (cut2 ? 2 : 0);
            const unsigned a = x.Chars();
            const unsigned b = y.Chars();
            unsigned limit = 0;
            if (t != 0) {
                const uint16_t w = wildcards ? LmFindWildcard(y.codeSet, y.language, y.text, 1,
                                                              static_cast<uint16_t>(Min(b, 65535)), nullptr, nibble)
                                             : uint16_t{65535};
                if (w != 65535) {
                    limit = Min(w, a);
                    // A left key cut within the fixed part of a pattern that ends in its
                    // asterisk is decided by what is present.
                    const bool decided = t == 1 && !skipSpaces && w + 1u == b && a >= w;
                    if (!decided && status == LM_OK) status = LM_ERR_OUT_OF_DATA;
                } else if (t == 1) {
                    limit = a;
                    if ((b >= a || skipSpaces) && status == LM_OK) status = LM_ERR_OUT_OF_DATA;
                } else if (t == 2) {
                    limit = b;
                    if ((a >= b || skipSpaces) && status == LM_OK) status = LM_ERR_OUT_OF_DATA;
                } else {
                    limit = Min(a, b);
                    if (status == LM_OK) status = LM_ERR_OUT_OF_DATA;
                }
            }

            int difference = 0;
            result = LmStrCmp(x.codeSet, x.language, x.text, y.codeSet, y.language, y.text, option,
                              t != 0 ? static_cast<short>(limit) : short{-1}, nibble, &difference);
            if (t != 0) {
                if (result == 0 && a != b) {
                    if (t == 1 && limit == b) result = 1;
                    if (t == 2 && limit == a) result = -1;
                }
                if (skipSpaces) result = difference;
            }
        }

        if (++i == count || result != 0 || status != LM_OK) return result;
        const bool more1 = Advance(side1, x);
        const bool more2 = Advance(side2, y);
        if (!more1 || !more2) {
            status = LM_ERR_OUT_OF_DATA;
            return result;
        }
    }
}

// The usual call of an index, two whole keys, is decided before the general walk sets
// up its scratch buffers.
int StringCompare(unsigned char format, unsigned length1, void* value1, unsigned length2, void* value2,
                  unsigned short option, unsigned count, int& status) {
    int result;
    if (count == 1 && (format & LmFormatMemory) == 0 &&
        (option & (LM_CMP_NO_WILDCARD | LM_CMP_EXACT)) == LM_CMP_NO_WILDCARD &&
        QuickWholeKeys(format, length1, value1, length2, value2, result)) {
        status = LM_OK;
        return result;
    }
    return StringCompareCore(format, length1, value1, length2, value2, option, count, status, 0);
}

int StringCompareLegacy(unsigned char format, unsigned length1, void* value1, unsigned length2, void* value2,
                        unsigned short option, unsigned count, int& status) {
    return StringCompareCore(format, length1, value1, length2, value2, option, count, status, 1);
}

// ---- Hashing. ----

// Keys are hashed by their collation orders, so texts that compare equal under the
// exact option hash alike in every code set. Native texts hash their bytes.
uint32_t HashString(unsigned char codeSet, unsigned char language, const void* text, int n, unsigned char format) {
    if (language == LM_LANGUAGE_NULL || (codeSet == LM_CODESET_ORDER && language == 0)) return kNullHash;
    if (n == 0) return 0;
    if (text == nullptr) text = kEmptyText;
    uint32_t h = 0;
    if (codeSet == LM_CODESET_NATIVE) {
        const auto* p = static_cast<const unsigned char*>(text);
        if (n > 0) {
            // n characters; past the terminator each adds 0 and the position stays.
            for (int i = 0; i < n; ++i) {
                h = h * 9 + *p;
                if (*p != 0) ++p;
            }
        } else {
            for (; *p != 0; ++p) h = h * 9 + *p;
        }
        return h;
    }
    LmStringIterator it(static_cast<const char*>(text), codeSet, language, format);
    if (n > 0) {
        // After the end every further word is 0: the loop goes on without reading,
        // as an order text would otherwise be read past its terminator.
        int i = 0;
        for (; i < n; ++i) {
            const uint16_t o = it.GetNextOrder(1);
            if (o == 0) break;
            h = h * 9 + LmOrderKey(o, it.GetFamily());
        }
        for (; i < n; ++i) h *= 9;
    } else {
        while (!it.IsEOS()) {
            const uint16_t o = it.GetNextOrder(1);
            h = h * 9 + LmOrderKey(o, it.GetFamily());
        }
    }
    return h;
}

namespace {
// h = h * 9 + (unit & mask): 16-bit units in code set 253, otherwise signed bytes up
// to the first zero byte.
uint32_t PlainHash(const LmString& s, uint32_t mask) {
    uint32_t h = 0;
    if (s.GetCodeSet() == LM_CODESET_UNICODE) {
        for (const char* p = s.StrGet();; p += 2) {
            uint16_t unit;
            std::memcpy(&unit, p, 2);
            if (unit == 0) break;
            h = h * 9 + (unit & mask);
        }
    } else {
        for (const char* p = s.StrGet(); *p != 0; ++p)
            h = h * 9 + (static_cast<uint32_t>(static_cast<int32_t>(*p)) & mask);
    }
    return h;
}
}  // namespace

uint32_t HashLmString(const LmString& s) { return PlainHash(s, 0xFFFFFFFFu); }

uint32_t HashLmString7(const LmString& s) { return PlainHash(s, 127u); }

// Element hashes are combined by exclusive or and multiplied once at the end, also
// when the loop leaves early.
unsigned StringHashCore(unsigned char format, unsigned length, void* value, unsigned count, int& status, int legacy) {
    status = LM_OK;
    if (count == 0) return 0;
    uint32_t h = 0;
    if (format == LmFormatMemory) {
        const auto* s = static_cast<const LmString*>(value);
        for (unsigned i = 0; i < count; ++i) {
            unsigned char language = s[i].GetLanguage();
            if (s[i].GetCodeSet() == LM_CODESET_ORDER) language = static_cast<unsigned char>(language & ~LM_FAMILY_MIX);
            h ^= HashString(s[i].GetCodeSet(), language, s[i].StrGet(), -1, LmFormatMemory);
        }
        return h * kHashMultiplier;
    }

    const auto nibble = static_cast<unsigned char>(format & 15u);
    StoredSide side = MakeSide(value, length);
    Scratch scratch;
    for (unsigned i = 0;;) {
        StoredText e{};
        const ReadResult r = ReadElement(side, format, legacy, e);
        if (r == ReadResult::GiveUp) {
            status = LM_ERR_NOT_SUPPORTED;
            return 0;
        }
        if (r == ReadResult::OutOfData) {
            status = LM_ERR_OUT_OF_DATA;
            break;
        }
        const int n = e.state == 2 ? static_cast<int>(e.Chars()) : -1;
        PrepareText(e, scratch);
        if (e.codeSet == LM_CODESET_ORDER) e.language = static_cast<unsigned char>(e.language & ~LM_FAMILY_MIX);
        h ^= HashString(e.codeSet, e.language, e.text, n, nibble);
        if (++i == count) break;
        if (!Advance(side, e)) {
            status = LM_ERR_OUT_OF_DATA;
            break;
        }
    }
    return h * kHashMultiplier;
}

unsigned StringHash(unsigned char format, unsigned length, void* value, unsigned count, int& status) {
    return StringHashCore(format, length, value, count, status, 0);
}

unsigned StringHashLegacy(unsigned char format, unsigned length, void* value, unsigned count, int& status) {
    return StringHashCore(format, length, value, count, status, 1);
}

// ---- Printing and scanning. ----

// A print format takes one text: at most one conversion, "%s" with flags, width and
// precision. Anything else would read arguments that are not there, and is replaced
// by "%s".
static bool IsTextFormat(const char* format) {
    int conversions = 0;
    for (const char* c = format; *c != 0; ++c) {
        if (*c != '%') continue;
        ++c;
        if (*c == '%') continue;
        while (*c != 0 && std::strchr("-+ #0", *c) != nullptr) ++c;
        while (*c >= '0' && *c <= '9') ++c;
        if (*c == '.') {
            ++c;
            while (*c >= '0' && *c <= '9') ++c;
        }
        if (*c != 's') return false;
        ++conversions;
    }
    return conversions <= 1;
}

// The formatted text in a buffer of `size` bytes; a format that is not one of a
// single text is taken as "%s".
std::vector<char> FormatText(const char* format, const char* text, size_t size) {
    std::vector<char> out(size != 0 ? size : 1);
    if (!IsTextFormat(format)) format = "%s";
    std::snprintf(out.data(), out.size(), format, text);
    return out;
}

namespace {

// The code set a printed text goes to: the target's, or the default, or native (0).
// `narrow` asks for a 1-byte code set, as the formatting works on bytes.
unsigned char PrintCodeSet(const LmString& target, bool narrow) {
    unsigned char cs = target.GetCodeSet();
    if (cs == LM_CODESET_NATIVE || cs == LM_CODESET_ORDER || (narrow && cs >= LM_CODESET_FIRST_WIDE)) {
        cs = narrow ? LmString::GetDefault8CodeSet() : LmString::GetDefaultCodeSet();
    }
    return cs;
}

// target = a text of code set 1, converted to the target's code set when that is not 1.
void AssignCodeSet1(LmString& target, const char* text) {
    const unsigned char cs = PrintCodeSet(target, false);
    LmString latin(LM_CODESET_LATIN1, LmString::GetDefaultLanguage());
    LmStringAssignRaw(latin, text, LM_CODESET_LATIN1, 65535, LmFormatLittle);
    if (cs == LM_CODESET_LATIN1) {
        target = latin;
        return;
    }
    LmString converted(cs, latin.GetLanguage());
    converted += latin;
    target = converted;
}

// An order-form key: the format token chooses how each order word is shown.
LmString& PrintOrderKey(LmString& target, const LmString& value, const char* format) {
    // Read everything before target is written: it may be the value itself.
    const unsigned n = value.Len();
    std::vector<uint16_t> words(n);
    if (n != 0) std::memcpy(words.data(), value.StrGet(), n * 2u);
    const unsigned char family = value.GetLanguage();
    const size_t workSize = std::strlen(format) + (n + 256u) * 2u;

    static constexpr const char* kTokens[] = {"%1M", "%2M", "%3M", "%4M"};
    int token = 0;
    std::string fmt(format);
    for (int i = 0; i < 4 && token == 0; ++i) {
        const size_t at = fmt.find(kTokens[i]);
        if (at != std::string::npos) {
            token = i + 1;
            fmt.replace(at, 3, "%s");
        }
    }

    if (token == 3 || token == 4) {
        std::string joined;
        for (const uint16_t o : words) {
            if (token == 3) {
                LmString description;
                LmConvertOrderToString(o, family, description);
                joined += FormatText(fmt.c_str(), description.StrGet(), workSize).data();
            } else {
                unsigned char c = 7;
                const char* name = nullptr;
                LmConvertOrderToChar(o, family, c, 1, &name);
                const char one[2] = {static_cast<char>(c), 0};
                joined += FormatText(fmt.c_str(), name != nullptr ? name : one, workSize).data();
            }
        }
        if (token == 3) {
            if ((family & LM_FAMILY_MIX) != 0) joined += FormatText(fmt.c_str(), "[MIX]", workSize).data();
            target = joined.c_str();
        } else {
            AssignCodeSet1(target, joined.c_str());
        }
        return target;
    }

    // One character per order word, as one text; accents are searched but for "%1M".
    std::string chars;
    chars.reserve(n);
    for (const uint16_t o : words) {
        unsigned char c = 7;
        LmConvertOrderToChar(o, family, c, token == 1 ? 0 : 1, nullptr);
        chars += static_cast<char>(c);
    }
    const std::vector<char> text = FormatText(fmt.c_str(), chars.c_str(), workSize);
    if (token == 1) {
        target = text.data();
    } else {
        AssignCodeSet1(target, text.data());
    }
    return target;
}

}  // namespace

LmString& StringPrintToString(LmString& target, void* value, const char* format, unsigned) {
    const LmString& v = *static_cast<const LmString*>(value);
    if (v.IsNullValue()) {
        target = LmTypeMgr::GetNullPrintString();
        return target;
    }
    if (v.IsEmpty()) {
        target = v;
        return target;
    }
    if (format == nullptr) format = "%s";
    const unsigned char codeSet = v.GetCodeSet();
    if (codeSet == LM_CODESET_ORDER) return PrintOrderKey(target, v, format);
    const size_t size = v.Len() + 512u + std::strlen(format);
    if (codeSet == LM_CODESET_UNICODE) {
        // Formatting works on bytes: the text is mapped to a 1-byte code set first.
        LmString narrow(PrintCodeSet(target, true), v.GetLanguage());
        narrow += v;
        const std::vector<char> text = FormatText(format, narrow.StrGet(), size);
        target = text.data();
        target.SetCodeSet(narrow.GetCodeSet());
        return target;
    }
    const std::vector<char> text = FormatText(format, v.StrGet(), size);
    target = text.data();
    target.SetCodeSet(codeSet);
    return target;
}

// Only the length of the null print string is compared, so a longer text that
// begins with it scans as null too.
void* StringScanFromString(void* target, LmString& text, const char*, unsigned) {
    if (target == nullptr) return nullptr;
    auto& s = *static_cast<LmString*>(target);
    const LmString& nullText = LmTypeMgr::GetNullPrintString();
    const int order = LmStrCmp(text.GetCodeSet(), text.GetLanguage(), text.StrGet(), nullText.GetCodeSet(),
                               nullText.GetLanguage(), nullText.StrGet(), LmString::GetDefaultCmpOp(),
                               static_cast<short>(nullText.Len()), LmFormatLittle, nullptr);
    if (order == 0) {
        s.SetNullValue();
    } else {
        s = text;
    }
    return target;
}

// ---- The successor of an order-form key, in place. ----

namespace {

// A 16-bit word low byte first, cut where the buffer ends (`room` bytes from `at`).
inline void PutWord(unsigned char* at, uint16_t word, unsigned room) {
    if (room > 0) at[0] = static_cast<unsigned char>(word & 0xFF);
    if (room > 1) at[1] = static_cast<unsigned char>(word >> 8);
}

}  // namespace

int StringNextKey(void* key, unsigned bufferLength, unsigned char format, unsigned char mode) {
    if (format != (LM_STRFMT_ORDER | LmFormatLittle) || (mode != 'M' && mode != 'N')) return LM_ERR_NOT_SUPPORTED;
    if (key == nullptr || bufferLength < 4) return LM_ERR_NOT_SUPPORTED;  // not even the labels
    auto* k = static_cast<unsigned char*>(key);
    unsigned L = static_cast<unsigned>(k[0] | k[1] << 8);
    const unsigned char codeSet = k[2];
    const unsigned char language = k[3];
    unsigned char* text = k + 4;
    const unsigned room = bufferLength - 4;
    const unsigned textLength = L >= 4 ? L - 4 : 0;
    const unsigned width = LmCodeSetWidth(codeSet);

    if (mode == 'M') {
        // The first wildcard becomes the highest character: everything with the
        // prefix sorts below the key.
        const unsigned span = textLength + 2 > room ? room : textLength;
        uint16_t offset = 65535;
        const uint16_t at = LmFindWildcard(codeSet, language, text, 0, static_cast<uint16_t>(Min(span / width, 65535)),
                                           &offset, LmFormatLittle);
        if (at != 65535 && offset < room) {
            if (codeSet == LM_CODESET_NATIVE) {
                text[offset] = 255;
            } else {
                PutWord(text + offset, 0xFFFE, room - offset);
            }
            return LM_OK;
        }
    }

    // One character more: the terminator moves up by one character and the letter
    // 'a', the smallest letter, goes in its place.
    const unsigned p = Min(textLength, room);
    const unsigned q = p + width;
    if (q < room) {
        const unsigned char first = text[p];
        const bool second = q + 1 < room;
        const unsigned char next = second ? text[p + 1] : 0;
        text[q] = first;
        if (second) text[q + 1] = next;
    }
    if (q <= room) {
        if (codeSet == LM_CODESET_NATIVE) {
            text[p] = 97;
        } else {
            const uint16_t letterA = LmCharOrder(LmChar('a', LmString::GetDefault8CodeSet(), 0));
            PutWord(text + p, letterA, room - p);
        }
        L += width;
        k[0] = static_cast<unsigned char>(L & 0xFF);
        k[1] = static_cast<unsigned char>((L >> 8) & 0xFF);
        return LM_OK;
    }
    // No room for a character more: the last one present grows instead.
    if (room < width) return LM_ERR_NO_NEXT_VALUE;
    if (codeSet == LM_CODESET_NATIVE) {
        ++text[room - width];
    } else {
        PutWord(text + room - width, 0xFFFE, width);
    }
    return LM_OK;
}

namespace {

int StringIsNullValue(void* value) { return static_cast<LmString*>(value)->IsNullValue(); }
int StringSetNullValue(void* value) { return static_cast<LmString*>(value)->SetNullValue(); }

// The slots both records share.
constexpr LmTypeDesc StringSharedSlots(LmTypeDesc row) {
    row.Create = StringCreate;
    row.Delete = StringDelete;
    row.Constructor = StringConstructor;
    row.Destructor = StringDestructor;
    row.Assignment = StringAssignment;
    row.Copy = StringCopy;
    row.PrintToString = StringPrintToString;
    row.ScanFromString = StringScanFromString;
    row.Load = StringLoad;
    row.NullSizeGet = StringNullSizeGet;
    row.ConvertTo = StringConvertToLmString;
    row.ConvertFrom = StringConvertFromLmString;
    row.DefaultValue = StringDefaultValue;
    return row;
}

constexpr LmTypeDesc StringRow() {
    LmTypeDesc row = StringSharedSlots(IllegalRow("LmString", "LmSTRING_T", 16, 0, "%s"));
    row.Store = StringStore;
    row.SizeGet = StringSizeGet;
    row.SizeGetFromMemFile = StringSizeGetFromMemFile;
    row.Translate = StringTranslate;
    row.Cmp = StringCompare;
    row.Hash = StringHash;
    row.EvalAndBound = StringEvalAndBoundCurrent;
    row.IsNullValue = StringIsNullValue;
    row.SetNullValue = StringSetNullValue;
    row.GetValue = StringNextKey;
    return row;
}

// The legacy record knows no null (IsNullValue always answers 0, SetNullValue is
// empty) and does not step keys.
constexpr LmTypeDesc StringLegacyRow() {
    LmTypeDesc row = StringSharedSlots(IllegalRow("LmString", "LmSTRING_T", 16, 0, "%s"));
    row.Store = StringStoreLegacy;
    row.SizeGet = StringSizeGetLegacy;
    row.SizeGetFromMemFile = StringSizeGetFromMemFileLegacy;
    row.Translate = StringTranslateLegacy;
    row.Cmp = StringCompareLegacy;
    row.Hash = StringHashLegacy;
    row.EvalAndBound = StringEvalAndBoundLegacy;
    return row;
}

}  // namespace

constinit LmTypeDesc LmDesc_LmString = StringRow();
constinit LmTypeDesc LmDesc_LmStringLegacy = StringLegacyRow();
