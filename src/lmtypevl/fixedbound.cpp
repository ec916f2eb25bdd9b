// The evaluators of LmIString (id 20) and LmCaseIString (id 21). A fixed-form key is
// a flag byte, a 16-bit length in store order (the text length plus 1), the text and
// a zero; keys of an index hold their text in sort form (flag 0xC0). The line is the
// first four sort bytes of a key read as a big-endian number, zeros to the right.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "fixedsort.h"
#include "lmbounds.h"

using namespace lmbound;
using lmfixed::SortTable;

namespace {

constexpr unsigned kHeader = 3;  // flag byte and length

// The first four bytes of a text as a big-endian number, zeros to the right.
uint32_t StringKeyPrefix32(const unsigned char* bytes, size_t len) {
    uint32_t v = 0;
    for (size_t i = 0; i < 4; ++i) v = v << 8 | (i < len ? bytes[i] : 0u);
    return v;
}

// The text of a range key: its bytes between the header and the closing zero, as
// many as the key's length holds.
struct KeyText {
    const unsigned char* bytes;
    size_t len;
};
KeyText RangeText(const void* key, unsigned len) {
    return {static_cast<const unsigned char*>(key) + kHeader, len > kHeader + 1 ? len - kHeader - 1 : 0u};
}

// A bound of flag 0xC0: the sort bytes (and the high pad 0xFF for the upper bound of
// a wildcard value) with their zero. LmCaseIString caps it at 254 bytes and gives it
// at least the key capacity of the index; a cut upper bound ends in the high pad, so
// that it stays above every key that starts with the value.
void* BuildKey(const std::string& sortBytes, bool upper, bool wildcard, bool folded, unsigned char format,
               unsigned capacity, uint8_t& len) {
    std::string text = sortBytes;
    if (upper && wildcard) text += '\xFF';
    size_t size = text.size() + kHeader + 1;
    if (folded && size > 254) {
        size = 254;
        text.resize(size - kHeader - 1);
        if (upper) text.back() = '\xFF';
    }
    const size_t alloc = folded && capacity > size ? capacity : size;
    // malloc and a fill: the allocator's small-block cache serves malloc, not calloc.
    auto* key = static_cast<unsigned char*>(std::malloc(alloc));
    if (key != nullptr) std::memset(key, 0, alloc);
    if (key == nullptr) {
        LmCallMemoryHandler(alloc);
        return nullptr;
    }
    key[0] = LM_FIXED_STORED_KEY;
    Store16(key + 1, static_cast<uint16_t>(text.size() + 1), format);
    std::memcpy(key + kHeader, text.data(), text.size());
    len = static_cast<uint8_t>(size);
    return key;
}

float FixedEvalAndBound(bool folded, LmIdxBounds* range, unsigned short& op, void* value, unsigned char format,
                        LmIdxBounds* out) {
    op &= 0x800F;
    const auto* v = static_cast<const unsigned char*>(value);
    const unsigned char flag = v[0];
    const unsigned total = Load16(v + 1, format);
    const std::string text(reinterpret_cast<const char*>(v + kHeader),
                           strnlen(reinterpret_cast<const char*>(v + kHeader), total));
    // Wildcards here are not subject to any option.
    const int p = LmIStringFindWildcard(text.c_str());

    const bool ranged = RangeUsable(range, kHeader + 1);
    const KeyText up = ranged ? RangeText(range->upper, range->upperLen) : KeyText{nullptr, 0};
    const KeyText lo = ranged ? RangeText(range->lower, range->lowerLen) : KeyText{nullptr, 0};
    uint32_t hi = ranged ? StringKeyPrefix32(up.bytes, up.len) : 0;
    uint32_t low = ranged ? StringKeyPrefix32(lo.bytes, lo.len) : 0;
    const auto widthOf = [&] { return hi - low + 1; };  // all in 32 bits
    // 2^32 keys wrap the width to 0: the division takes the number itself.
    const auto share = [&](uint32_t r) { return Share(r, widthOf() != 0 ? double(widthOf()) : 4294967296.0); };

    if (p == 0) {
        // A leading wildcard covers the whole range and gives no bound.
        op |= LM_BOUND_INEXACT;
        if (folded) return 1.0f;
        const uint32_t r = widthOf();
        return share(static_cast<int32_t>(r) < 0 ? 0 : r);
    }

    // 3. The sort bytes, cut at the wildcard.
    const size_t cut = p > 0 ? static_cast<size_t>(p) : text.size();
    std::string sortBytes;
    if ((flag & LM_FIXED_SORT_FORM) != 0) {
        sortBytes.assign(text, 0, cut);
    } else {
        const SortTable& table = lmfixed::TableOf(folded);
        sortBytes.resize(2 * cut);
        sortBytes.resize(lmfixed::WriteSortForm(table, reinterpret_cast<const unsigned char*>(text.data()), cut,
                                                reinterpret_cast<unsigned char*>(sortBytes.data()), sortBytes.size()));
    }
    const size_t n = sortBytes.size();
    const auto* sorted = reinterpret_cast<const unsigned char*>(sortBytes.data());

    // 4. A key shorter than four bytes stands for all the keys it starts.
    uint32_t lowNum = StringKeyPrefix32(sorted, n);
    const uint32_t pad = n >= 4 ? 0 : 0xFFu << (8 * (3 - n));
    uint32_t highNum = lowNum + pad;
    if (p > 0) op |= LM_BOUND_INEXACT;

    // 5. LmCaseIString reads the numbers behind the bytes all three keys share.
    if (folded && pad == 0 && ranged) {
        size_t k = 0;
        const size_t limit = std::min({n, up.len, lo.len, size_t{4}});
        while (k < limit && sorted[k] == up.bytes[k] && sorted[k] == lo.bytes[k]) ++k;
        lowNum = highNum = StringKeyPrefix32(sorted + k, n - k);
        hi = StringKeyPrefix32(up.bytes + k, up.len - k);
        low = StringKeyPrefix32(lo.bytes + k, lo.len - k);
    }

    // 7, 8. Numbers beyond the range stand one behind its ends.
    if (highNum < low) highNum = low - 1;
    if (highNum > hi) highNum = hi + 1;
    if (lowNum < low) lowNum = low - 1;
    if (lowNum > hi) lowNum = hi + 1;
    const uint32_t a = highNum - low + 1, b = lowNum - low + 1;
    uint32_t r = (op & LM_BOUND_LT) != 0 ? b : 0;
    if ((op & LM_BOUND_GT) != 0) r += widthOf() - a;
    if ((op & LM_BOUND_EQ) != 0) r += 1 + a - b;
    if (static_cast<int32_t>(r) < 0) r = 0;

    // 9. The bounds.
    if (out != nullptr) {
        const unsigned capacity = out->keyCapacity;
        if (out->lower == nullptr && (op & LM_BOUND_LT) == 0)
            out->lower = BuildKey(sortBytes, false, p > 0, folded, format, capacity, out->lowerLen);
        if (out->upper == nullptr && (op & LM_BOUND_GT) == 0)
            out->upper = BuildKey(sortBytes, true, p > 0, folded, format, capacity, out->upperLen);
    }
    return share(r);
}

}  // namespace

float IStringEvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned,
                          LmIdxBounds* out) {
    return FixedEvalAndBound(false, range, op, value, format, out);
}

float CaseIStringEvalAndBound(LmIdxBounds* range, unsigned short& op, void* value, unsigned char format, unsigned,
                              LmIdxBounds* out) {
    return FixedEvalAndBound(true, range, op, value, format, out);
}
