// Fuzz target: Translate of id 11 between every pair of forms, at both factory
// levels, with arbitrary lengths.
//
// The source block is exactly sourceLength bytes (at least the four bytes of a
// record's header, which are read in any case), except where the translation is a
// Load of disk records (target in memory, source without the order bit): a Load
// reads as far as the records' own length words say, so zeros follow the input
// there (and the legacy table loads every disk source so). A disk target is exactly targetLength bytes, except when the source is in
// memory and the target is a plain record: the record is written whole, and the
// caller sizes the target with DiskLenGet first, as this target does; and an
// order-form target of odd length, whose last word may end one byte behind it.
#include "fuzz_input.h"
#include "lumotypes.h"

namespace {
constexpr unsigned char kSourceFormats[] = {1, 2, 0x81, 0x82, 8};
constexpr unsigned char kTargetFormats[] = {1, 2, 8, 0x81, 0x82, 0xA1, 0xC1, 0xE2, 0x21, 0x41};
constexpr unsigned char kCodeSets[] = {0, 1, 2, 3, 253, 254};
constexpr unsigned char kLanguages[] = {0, 1, 2, 3, 4, 5, 13, 254};
constexpr unsigned kRecordReach = 65538;
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzInput in(data, size);
    const bool legacy = (in.Byte() & 1) == 0;
    const LmTypeMgr mgr(legacy ? 3u : 5u);
    const unsigned char sourceFormat = in.Pick(kSourceFormats);
    const unsigned char targetFormat = in.Pick(kTargetFormats);
    const unsigned count = 1 + in.Byte() % 3u;
    const unsigned targetLength = in.Word() % 600u;
    const bool sourceMemory = (sourceFormat & 8) != 0;
    const bool targetMemory = (targetFormat & 8) != 0;

    void* sourceStrings = nullptr;
    std::vector<uint8_t> sourceBytes;
    size_t padding = 0;
    unsigned sourceLength = 0;
    if (sourceMemory) {
        sourceStrings = mgr.Create(LmSTRING_T, count);
        if (sourceStrings == nullptr) return 0;
        FillStrings(in, kCodeSets, kLanguages, static_cast<LmString*>(sourceStrings), count);
    } else {
        sourceBytes = in.Rest();
        // Keys longer than 259 bytes never come to the truncated-key load.
        if (targetMemory && !legacy && (sourceFormat & 0x80) != 0 && sourceBytes.size() > 259)
            sourceBytes.resize(259);
        sourceLength = static_cast<unsigned>(sourceBytes.size());
        // The legacy table loads every disk source into memory with StringLoad.
        if (targetMemory && (legacy || (sourceFormat & 0x80) == 0)) padding = count * kRecordReach;
        // Building a key, a contraction looks at the character behind the last one
        // present even when sourceLength ends there (a cut "c" of traditional Spanish
        // may be the start of "ch"): one character of zeros follows.
        if (!targetMemory && (targetFormat & 0x80) != 0) padding = 2;
        // The first record's length word, code set and language are read whatever
        // sourceLength says: a disk source always has its four header bytes.
        if (sourceBytes.size() + padding < 4) padding = 4 - sourceBytes.size();
    }
    const Block sourceBlock(sourceBytes, padding);
    void* source = sourceMemory ? sourceStrings : static_cast<void*>(sourceBlock.get());

    void* targetStrings = nullptr;
    size_t room = targetLength;
    if (targetMemory) {
        targetStrings = mgr.Create(LmSTRING_T, count);
        if (targetStrings == nullptr) {
            if (sourceStrings != nullptr) mgr.Delete(LmSTRING_T, sourceStrings, count);
            return 0;
        }
    } else {
        if (sourceMemory && (targetFormat & 0x80) == 0) {
            const unsigned need = mgr.DiskLenGet(LmSTRING_T, sourceStrings, targetFormat, count, 8);
            if (need > room) room = need;
        }
        // An order word is written whole: with an odd targetLength the last word of a
        // key ends one byte behind it.
        if ((targetFormat & 0x80) != 0 && room % 2 != 0) ++room;
    }
    const Block targetBlock(targetMemory ? 0 : room);
    void* target = targetMemory ? targetStrings : static_cast<void*>(targetBlock.get());

    mgr.Translate(LmSTRING_T, target, targetFormat, targetLength, source, sourceFormat, sourceLength, count);

    if (targetStrings != nullptr) mgr.Delete(LmSTRING_T, targetStrings, count);
    if (sourceStrings != nullptr) mgr.Delete(LmSTRING_T, sourceStrings, count);
    return 0;
}
