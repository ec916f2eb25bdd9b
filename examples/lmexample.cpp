// The road of a few plain numbers through the type manager: create by type id,
// store in both byte orders, load back, compare in memory and on disk, hash. Then
// the road of one string attribute: create, scan, store, hash, build index keys,
// compare stored keys, step a key, load back, print, delete; the index bounds of a
// pattern. Then values as text by type id, conversions, nulls, key stepping and the
// multi-byte form. Then an object reference and a blob through store, load and print.
// Last, a date and a time: scanned and printed by type id, stored, compared with a
// wildcard.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "lumotypes.h"

namespace {

void PrintHex(const char* label, const unsigned char* bytes, unsigned len) {
    std::printf("    %-14s", label);
    for (unsigned i = 0; i < len; ++i) std::printf("%02X%s", bytes[i], (i + 1) % 4 == 0 && i + 1 < len ? " " : "");
    std::printf("\n");
}

// Fills `count` elements of a freshly created array with the given values.
template <typename T>
void Fill(void* array, std::initializer_list<T> values) {
    std::memcpy(array, values.begin(), values.size() * sizeof(T));
}

void Show(LmTypeMgr& mgr, char id, void* values, unsigned count) {
    std::printf("\n%s (%s), %u elements of %u bytes in memory\n", mgr.NameGet(id, nullptr),
                mgr.TypeIdNameGet(id, nullptr), count, mgr.MemLenGet(id, 1));

    // Store in both byte orders.
    const unsigned size = mgr.DiskLenGet(id, values, LmFormatLittle, count, LmFormatMemory);
    std::vector<unsigned char> little(size), big(size);
    const unsigned wroteLittle = mgr.Store(id, little.data(), values, LmFormatLittle, count);
    const unsigned wroteBig = mgr.Store(id, big.data(), values, LmFormatBig, count);
    std::printf("  disk size %u; stored %u bytes little-endian, %u bytes big-endian\n", size, wroteLittle, wroteBig);
    PrintHex("little-endian", little.data(), size);
    PrintHex("big-endian", big.data(), size);

    // Load back from the big-endian image and compare with the original in memory.
    void* loaded = mgr.Create(id, count);
    const unsigned read = mgr.Load(id, loaded, big.data(), LmFormatBig, count);
    int status = 0;
    const int inMemory = mgr.Cmp(id, 0, values, 0, loaded, 0xFFFF, count, LmFormatMemory, status);
    std::printf("  loaded %u bytes back; memory compare original vs loaded: %d (status %d)\n", read, inMemory, status);

    // Compare straight on disk images: first the whole images, then with the
    // second operand cut short by one element.
    const unsigned width = size / count;
    const int onDisk = mgr.Cmp(id, size, little.data(), size, little.data(), 0xFFFF, count, LmFormatLittle, status);
    std::printf("  disk compare of the little-endian image with itself: %d (status %d)\n", onDisk, status);
    const int shortCmp = mgr.Cmp(id, size, big.data(), size - width, big.data(), 0xFFFF, count, LmFormatBig, status);
    std::printf("  disk compare with the second image %u bytes short: %d (status %d = out of data)\n", width, shortCmp,
                status);

    // The hash of a value is the same in every form.
    int hs = 0;
    const unsigned hMem = mgr.Hash(id, 0, values, count, LmFormatMemory, hs);
    const unsigned hLittle = mgr.Hash(id, size, little.data(), count, LmFormatLittle, hs);
    const unsigned hBig = mgr.Hash(id, size, big.data(), count, LmFormatBig, hs);
    std::printf("  hash: memory %08X, little-endian %08X, big-endian %08X -> %s\n", hMem, hLittle, hBig,
                hMem == hLittle && hLittle == hBig ? "agree" : "DISAGREE");

    mgr.Delete(id, loaded, count);
}

void PrintLine(const char* label, const LmString& text) {
    // A Latin-1 text, its bytes from 0x80 up as escapes.
    std::printf("  %-34s \"", label);
    for (const char* p = text.StrGet(); *p != 0; ++p) {
        const auto c = static_cast<unsigned char>(*p);
        if (c < 0x80) {
            std::putchar(c);
        } else {
            std::printf("\\x%02X", c);
        }
    }
    std::printf("\"\n");
}

// Builds the order-form index key of a string with Translate (target bit 0x80) into
// a buffer of `capacity` bytes; answers the key's length.
unsigned BuildKey(LmTypeMgr& mgr, LmString& value, unsigned char* key, unsigned capacity) {
    std::memset(key, 0, capacity);
    return mgr.Translate(LmSTRING_T, key, LM_STRFMT_ORDER | LmFormatLittle, capacity, &value, LmFormatMemory, 0, 1);
}

void StringRoad(LmTypeMgr& mgr) {
    std::printf("\n%s (%s): the road of one string attribute\n", mgr.NameGet(LmSTRING_T, nullptr),
                mgr.TypeIdNameGet(LmSTRING_T, nullptr));

    // 1. Create by id and scan from a text (German collation, language 2).
    auto* value = static_cast<LmString*>(mgr.Create(LmSTRING_T, 1));
    LmString text(
        "Stra\xDF"
        "enbahn");
    text.SetLanguage(2);
    mgr.ScanFromLmString(LmSTRING_T, value, text, nullptr, 1);
    PrintLine("scanned", *value);
    std::printf("  code set %u, language %u, %u characters\n", value->GetCodeSet(), value->GetLanguage(), value->Len());

    // 2. Size and store in format 2 (big-endian).
    const unsigned size = mgr.DiskLenGet(LmSTRING_T, value, LmFormatBig, 1, LmFormatMemory);
    std::vector<unsigned char> disk(size);
    const unsigned wrote = mgr.Store(LmSTRING_T, disk.data(), value, LmFormatBig, 1);
    std::printf("  disk size %u, stored %u bytes\n", size, wrote);
    PrintHex("big-endian", disk.data(), wrote);

    // 3. Hash: the memory value and the disk image give the same code.
    int status = 0;
    const unsigned hMem = mgr.Hash(LmSTRING_T, 0, value, 1, LmFormatMemory, status);
    const unsigned hDisk = mgr.Hash(LmSTRING_T, wrote, disk.data(), 1, LmFormatBig, status);
    std::printf("  hash: memory %08X, disk %08X -> %s\n", hMem, hDisk, hMem == hDisk ? "agree" : "DISAGREE");

    // 4. Order-form index keys of this value and of a second one.
    LmString other("Strasse");
    other.SetLanguage(2);
    unsigned char key1[64], key2[64], cut[10];
    const unsigned len1 = BuildKey(mgr, *value, key1, sizeof key1);
    const unsigned len2 = BuildKey(mgr, other, key2, sizeof key2);
    const unsigned lenCut = BuildKey(mgr, *value, cut, sizeof cut);
    PrintHex("key", key1, len1);
    PrintHex("key \"Strasse\"", key2, len2);
    std::printf("  a key built into 10 bytes: result %u, its length word claims %u bytes: cut short\n", lenCut,
                (cut[0] | cut[1] << 8) + 2u);
    PrintHex("key cut at 10", cut, sizeof cut);

    // 5. Compare stored keys in place, through the pointer an index scan takes once.
    const LmTypeCmpFunc cmp = mgr.CmpFuncPtrGet(LmSTRING_T);
    const unsigned char keyFormat = LM_STRFMT_ORDER | LmFormatLittle;
    int r = cmp(keyFormat, len1, key1, len2, key2, LM_CMP_NO_WILDCARD, 1, status);
    std::printf("  key compare with \"Strasse\": %d (status %d)\n", r, status);
    r = cmp(keyFormat, sizeof cut, cut, len1, key1, LM_CMP_NO_WILDCARD, 1, status);
    std::printf("  cut key against the whole key: %d (status %d = out of data)\n", r, status);

    // 6. Step the key to the next longer one, the upper bound of a prefix search.
    unsigned char next[64];
    std::memcpy(next, key1, sizeof next);
    status = mgr.GetValue(LmSTRING_T, next, sizeof next, keyFormat, 'N');
    const unsigned lenNext = static_cast<unsigned>(next[0] | next[1] << 8) + 2;
    std::printf("  GetValue 'N': status %d\n", status);
    PrintHex("next key", next, lenNext);

    // 7. Print the key as text: load it as an order-form string, then "%1M" and "%3M; ".
    LmString keyText;
    mgr.Load(LmSTRING_T, &keyText, key1, keyFormat, 1);
    LmString shown;
    mgr.PrintToLmString(LmSTRING_T, shown, &keyText, "%1M", 1);
    PrintLine("key printed with %1M", shown);
    mgr.PrintToLmString(LmSTRING_T, shown, &keyText, "%3M; ", 1);
    std::printf("  key printed with %%3M:\n%s\n", shown.StrGet());

    // 8. Load the stored record back, print it, delete both.
    auto* loaded = static_cast<LmString*>(mgr.Create(LmSTRING_T, 1));
    const unsigned read = mgr.Load(LmSTRING_T, loaded, disk.data(), LmFormatBig, 1);
    LmString printed;
    mgr.PrintToLmString(LmSTRING_T, printed, loaded, nullptr, 1);
    std::printf("  loaded %u bytes back; equal to the original: %s\n", read,
                mgr.Cmp(LmSTRING_T, value, loaded, LM_CMP_EXACT, 1, LmFormatMemory) == 0 ? "yes" : "no");
    PrintLine("printed", printed);
    mgr.Delete(LmSTRING_T, loaded, 1);
    mgr.Delete(LmSTRING_T, value, 1);
    std::printf("  deleted\n");
}

// The bounds of a pattern: a query asks for "Mü*" in German on an index of keys from
// "Aachen" to "Zwiebel". The pattern goes in as its order-form key; the share of the
// index and the two keys that bound the scan come back, the keys readable once they
// are loaded as order-form strings.
void BoundRoad(LmTypeMgr& mgr) {
    std::printf("\nIndex bounds of a pattern\n");
    LmString pattern("M\xFC*"), first("Aachen"), last("Zwiebel");
    unsigned char value[64], lower[64], upper[64];
    const unsigned char keyFormat = LM_STRFMT_ORDER | LmFormatLittle;
    LmString* texts[] = {&pattern, &first, &last};
    unsigned char* keys[] = {value, lower, upper};
    unsigned lens[3];
    for (int i = 0; i < 3; ++i) {
        texts[i]->SetLanguage(2);
        lens[i] = BuildKey(mgr, *texts[i], keys[i], 64);
    }
    PrintHex("pattern key", value, lens[0]);
    LmIdxBounds range{lower, upper, static_cast<uint8_t>(lens[1]), static_cast<uint8_t>(lens[2]), 0, 0, 0};
    LmIdxBounds out{};
    out.keyCapacity = 32;
    unsigned short op = LM_BOUND_EQ;
    const float share = mgr.EvalAndBound(LmSTRING_T, &range, op, value, LmFormatLittle, 1, &out, nullptr);
    std::printf("  share of the index %.3g; comparison word %#x (0x8: the bounds are a superset)\n", share, op);
    const char* names[] = {"lower bound", "upper bound"};
    void* bounds[] = {out.lower, out.upper};
    const unsigned boundLens[] = {out.lowerLen, out.upperLen};
    for (int i = 0; i < 2; ++i) {
        PrintHex(names[i], static_cast<unsigned char*>(bounds[i]), boundLens[i]);
        LmString key;
        mgr.Load(LmSTRING_T, &key, bounds[i], keyFormat, 1);
        LmString shown;
        mgr.PrintToLmString(LmSTRING_T, shown, &key, "%2M", 1);
        PrintLine(names[i], shown);
        mgr.PrintToLmString(LmSTRING_T, shown, &key, "%3M; ", 1);
        std::printf("    %s\n", shown.StrGet());
        std::free(bounds[i]);  // the caller's, from the standard allocator
    }
}

// Values as text by type id: print and scan under the exchange formats, arrays,
// conversion to strings and back into another type, null and default values, key
// stepping, and a Unicode string through the multi-byte form.
void TextRoad(LmTypeMgr& mgr) {
    std::printf("\nValues as text, by type id\n");
    char id = 0;
    mgr.Name2LmTypeId("o_double", id);
    std::printf("  the type named \"o_double\" has id %d, exchange format \"%s\"\n", id,
                mgr.ExchangeFormat(id, nullptr));

    // An array prints element by element, separated by ","; one element replaces the text.
    void* ints = mgr.Create(LmINT_T, 3);
    Fill<int32_t>(ints, {1, -2, 0x01020304});
    LmString out("ints: ");
    mgr.PrintToLmString(LmINT_T, out, ints, nullptr, 3);
    PrintLine("int array, appended", out);
    mgr.PrintToLmString(LmINT_T, out, ints, nullptr, 1);
    PrintLine("one int, replacing", out);

    // o_4b's exchange format "%ld" is a 32-bit long: printed and scanned at 32 bits.
    int32_t word = 0;
    LmString text("-2147483648");
    mgr.ScanFromLmString(Lm4B_T, &word, text, nullptr, 1);
    mgr.PrintToLmString(Lm4B_T, out, &word, nullptr, 1);
    PrintLine("o_4b scanned with \"%ld\", printed", out);

    // Floating values spell their specials; "ldexp(" keeps every bit.
    double d[2] = {1.0 / 3.0, 0.0};
    d[1] = -d[0] / 0.0;
    out = "";  // the array path appends
    mgr.PrintToLmString(LmDOUBLE_T, out, d, nullptr, 2);
    PrintLine("double array with -infinity", out);
    text = "INFINITY";
    mgr.ScanFromLmString(LmDOUBLE_T, &d[1], text, nullptr, 1);
    std::printf("  %-34s %g\n", "\"INFINITY\" scanned", d[1]);

    // Characters: an o_char array prints as one text, unprintable bytes as 0x..;
    // the scan reads 0x41 as the letter A.
    char chars[3] = {'L', 'm', 7};
    out = "";
    mgr.PrintToLmString(Lm1B_T, out, chars, nullptr, 3);
    PrintLine("o_char array", out);
    text = "0x41";
    mgr.ScanFromLmString(Lm1B_T, chars, text, nullptr, 1);
    std::printf("  %-34s '%c'\n", "o_char scanned from \"0x41\"", chars[0]);

    // Schema evolution: int values to strings, and the strings into doubles.
    LmTypeConvertData* strings = mgr.ConvertTo(LmINT_T, ints, 3);
    PrintLine("ConvertTo: second string", *strings->GetString(1));
    auto* asDoubles = static_cast<double*>(mgr.ConvertFrom(LmDOUBLE_T, strings, 3));
    std::printf("  %-34s %g %g %g\n", "ConvertFrom into o_double", asDoubles[0], asDoubles[1], asDoubles[2]);
    mgr.Delete(LmDOUBLE_T, asDoubles, 3);
    delete strings;  // the wrapper owns its strings

    // Null and default values: a number's null is its zero; a string has its own.
    mgr.SetNullValue(LmINT_T, ints);
    auto* noString = static_cast<LmString*>(mgr.DefaultValue(LmSTRING_T, 1, 1));
    std::printf("  %-34s %d; null string: IsNullValue %d\n", "SetNullValue of an int gives", *static_cast<int*>(ints),
                mgr.IsNullValue(LmSTRING_T, noString));
    mgr.Delete(LmSTRING_T, noString, 1);
    mgr.Delete(LmINT_T, ints, 3);

    // Key stepping: the next value of a stored o_4b, and the next double above 1.
    unsigned char disk[4] = {5, 0, 0, 0};
    int status = mgr.GetValue(Lm4B_T, disk, sizeof disk, LmFormatLittle, 'N');
    std::printf("  %-34s status %d, image %02X %02X %02X %02X\n", "GetValue 'N' of the stored o_4b 5", status, disk[0],
                disk[1], disk[2], disk[3]);
    d[0] = 1.0;
    status = mgr.GetValue(LmDOUBLE_T, d, 0, LmFormatMemory, 'N');
    mgr.PrintToLmString(LmDOUBLE_T, out, d, nullptr, 1);
    PrintLine("next double above 1", out);

    // A Unicode string into the multi-byte form and back.
    const unsigned short wide[] = {'S', 't', 'r', 'a', 0xDF, 'e', ' ', 0x20AC, 0};
    LmString unicode(wide);
    char bytes[32];
    const int n = LmString2LmMBS(unicode, bytes, sizeof bytes);
    PrintHex("multi-byte", reinterpret_cast<unsigned char*>(bytes), static_cast<unsigned>(n));
    LmString back;
    const int used = LmMBS2LmString(bytes, back, n);
    std::printf("  read back %d bytes into %u characters, equal: %s\n", used, back.Len(),
                back.Compare(unicode, -1, LM_CMP_EXACT) == 0 ? "yes" : "no");
}

// The road of an object reference and a blob: a reference made from an object id
// and a class id, stored in both byte orders, loaded back (without its version, which
// is not on disk), compared and printed; the identity stepped to the next key; then a
// blob in its three states stored as one array, loaded back and printed.
void IdentityRoad(LmTypeMgr& mgr) {
    std::printf("\nAn object reference and a blob\n");
    const LmObjId object{4711, 123456, 7, 0};
    const LmClassId cls{42, 3};
    LmRef ref{};
    ref = object;
    ref = cls;
    ref = static_cast<unsigned short>(2);  // the database
    LmString out;
    PrintLine("reference, exchange format", mgr.PrintToLmString(LmREF_T, out, &ref, nullptr, 1));
    PrintLine("reference, with its version", LmRef::PrintToString(out, &ref, nullptr, 1));

    unsigned char little[LmRef::DiskSize], big[LmRef::DiskSize];
    mgr.Store(LmREF_T, little, &ref, LmFormatLittle, 1);
    mgr.Store(LmREF_T, big, &ref, LmFormatBig, 1);
    PrintHex("little-endian", little, sizeof little);
    PrintHex("big-endian", big, sizeof big);
    LmRef loaded{};
    mgr.Load(LmREF_T, &loaded, big, LmFormatBig, 1);
    std::printf("  loaded back: version %u (not stored), equal to the original: %s\n", loaded.version,
                loaded == ref ? "yes" : "no");
    int status = 0;
    std::printf("  hash of the memory value %08X, of the little-endian key %08X\n",
                mgr.Hash(LmREF_T, 0, &ref, 1, LmFormatMemory, status),
                mgr.Hash(LmREF_T, sizeof little, little, 1, LmFormatLittle, status));

    // The next key of the stored object id, and the text of an id scanned back.
    unsigned char key[LmObjId::DiskSize], oldKey[LmObjId::DiskSize];
    mgr.Store(LmOBJID_T, key, const_cast<LmObjId*>(&object), LmFormatLittle, 1);
    std::memcpy(oldKey, key, sizeof key);
    status = mgr.GetValue(LmOBJID_T, key, sizeof key, LmFormatLittle, 'N');
    LmObjId next{};
    mgr.Load(LmOBJID_T, &next, key, LmFormatLittle, 1);
    std::printf("  GetValue 'N' of the stored object id: status %d, disk order against the old key %d\n", status,
                mgr.Cmp(LmOBJID_T, key, oldKey, 0, 1, LmFormatLittle));
    PrintLine("the next object id", next.PrintToLmString(out));
    LmObjId scanned{};
    scanned.ScanFromLmString(LmString("123456#4711"));
    PrintLine("\"123456#4711\" scanned, printed", scanned.PrintToLmString(out));

    // A blob: null, empty and bytes are three values, on disk too.
    auto* blobs = static_cast<LmBlob*>(mgr.Create(LmBLOB_T, 3));
    blobs[0].SetNullValue();
    blobs[2].SetTo("blob bytes", 10);
    const unsigned size = mgr.DiskLenGet(LmBLOB_T, blobs, LmFormatLittle, 3, LmFormatMemory);
    std::vector<unsigned char> image(size);
    mgr.Store(LmBLOB_T, image.data(), blobs, LmFormatLittle, 3);
    PrintHex("three blobs", image.data(), size);
    auto* back = static_cast<LmBlob*>(mgr.Create(LmBLOB_T, 3));
    const unsigned read = mgr.Load(LmBLOB_T, back, image.data(), LmFormatLittle, 3);
    std::printf("  loaded %u bytes; memory compare with the originals: %d\n", read,
                mgr.Cmp(LmBLOB_T, back, blobs, 0, 3, LmFormatMemory));
    out = "";  // the array path appends
    PrintLine("printed", mgr.PrintToLmString(LmBLOB_T, out, back, nullptr, 3));
    mgr.Delete(LmBLOB_T, back, 3);
    mgr.Delete(LmBLOB_T, blobs, 3);
}

// A date and a time by type id: scanned from their exchange texts, printed under
// other formats, stored, stepped, and a stored date compared with a wildcard month.
void DateRoad(LmTypeMgr& mgr) {
    std::printf("\nDates and times by type id\n");
    auto* date = static_cast<LmDate*>(mgr.Create(LmDATE_T, 1));  // holds today
    auto* time = static_cast<LmTime*>(mgr.Create(LmTIME_T, 1));  // holds the present time
    LmString text("Sat 3.Feb 2001");
    mgr.ScanFromLmString(LmDATE_T, date, text, nullptr, 1);  // "%a %e.%b %Y"
    text = "01:05:09 pm";
    mgr.ScanFromLmString(LmTIME_T, time, text, nullptr, 1);  // "%I:%M:%S %p"
    LmString out;
    PrintLine("date, exchange format", mgr.PrintToLmString(LmDATE_T, out, date, nullptr, 1));
    PrintLine("date, \"%A %d %B %Y\"", mgr.PrintToLmString(LmDATE_T, out, date, "%A %d %B %Y", 1));
    PrintLine("time, \"%H:%M:%S\"", mgr.PrintToLmString(LmTIME_T, out, time, "%H:%M:%S", 1));
    std::printf("  %-34s %d (weekday %d, 0 is Monday)\n", "absolute day of the date", date->dayabs(),
                date->GetDayOfTheDate());

    unsigned char little[4], big[4];
    mgr.Store(LmDATE_T, little, date, LmFormatLittle, 1);
    mgr.Store(LmDATE_T, big, date, LmFormatBig, 1);
    PrintHex("little-endian", little, 4);
    PrintHex("big-endian", big, 4);
    // A stored pattern with a wildcard month matches as the second operand only.
    LmDate pattern(2001, -1, 3);
    unsigned char stored[4];
    mgr.Store(LmDATE_T, stored, &pattern, LmFormatLittle, 1);
    int status = 0;
    std::printf("  %-34s %d, reversed %d\n", "stored date vs 2001-*-03",
                mgr.Cmp(LmDATE_T, 4, little, 4, stored, 0, 1, LmFormatLittle, status),
                mgr.Cmp(LmDATE_T, 4, stored, 4, little, 0, 1, LmFormatLittle, status));
    mgr.GetValue(LmTIME_T, time, 0, LmFormatMemory, 'N');
    PrintLine("time stepped by 'N'", mgr.PrintToLmString(LmTIME_T, out, time, nullptr, 1));
    mgr.Delete(LmDATE_T, date, 1);
    mgr.Delete(LmTIME_T, time, 1);
}

}  // namespace

int main() {
    ___LmTypemgrContext(1);
    LmTypeMgr& mgr = *DefaultTypeMgr(nullptr);
    const char* banner = nullptr;
    GetLmTypeMgrInfo(nullptr, nullptr, &banner, nullptr, nullptr);
    std::printf("%s, factory level %u\n", banner, mgr.LevelGet());

    void* ints = mgr.Create(LmINT_T, 3);
    Fill<int32_t>(ints, {1, -2, 0x01020304});
    Show(mgr, LmINT_T, ints, 3);

    void* shorts = mgr.Create(Lm2B_T, 3);
    Fill<int16_t>(shorts, {-1, 256, 0x1234});
    Show(mgr, Lm2B_T, shorts, 3);

    void* doubles = mgr.Create(LmDOUBLE_T, 2);
    Fill<double>(doubles, {1.0, -0.5});
    Show(mgr, LmDOUBLE_T, doubles, 2);

    void* u8 = mgr.Create(LmU8B_T, 2);
    Fill<uint64_t>(u8, {0x0102030405060708ull, 42});
    Show(mgr, LmU8B_T, u8, 2);

    // LmInt64 computes by its own rules and keeps the word low in front on disk, so its
    // big-endian image is not a big-endian 64-bit number.
    auto* int64s = static_cast<LmInt64*>(mgr.Create(LmINT64_T, 2));
    int64s[0] = LmInt64(-7) / LmInt64(2) * LmInt64(0x10000000000LL);  // -3 * 2^40
    int64s[1] = LmInt64(12345678.0);                                   // seven digits: 12345680
    Show(mgr, LmINT64_T, int64s, 2);
    LmString int64Text;
    int64s[0].PrintToLmString(int64Text, "%S = %x");  // the second conversion prints the rest, 0
    PrintLine("LmInt64 under \"%S = %x\"", int64Text);

    mgr.Delete(LmINT_T, ints, 3);
    mgr.Delete(LmINT64_T, int64s, 2);
    mgr.Delete(Lm2B_T, shorts, 3);
    mgr.Delete(LmDOUBLE_T, doubles, 2);
    mgr.Delete(LmU8B_T, u8, 2);

    StringRoad(mgr);
    BoundRoad(mgr);
    TextRoad(mgr);
    IdentityRoad(mgr);
    DateRoad(mgr);

    ___LmTypemgrContext(0);
    std::printf("\nmodule stopped; default manager is %s\n", DefaultTypeMgr(nullptr) == nullptr ? "gone" : "still set");
    return 0;
}
