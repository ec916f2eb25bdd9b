// LmBlob (id 18): an array of bytes of any length that the type manager stores,
// compares and copies but never interprets.
//
// Three states: the null blob (no record), the empty blob (a record of 0 bytes) and a
// blob of bytes. They are three values, and the difference survives every operation
// and the disk form. Each blob owns its record and bytes; every copy is deep, nothing
// is counted or shared, and the one move is Destroy. Bytes come from malloc; when
// malloc refuses, LmCallMemoryHandler of lumobase hears the size, and a blob that
// wanted a new record stays null while one that wanted new bytes keeps its old ones.
//
// Disk form of an array of blobs, every 4-byte word in the byte order of the format:
//   total   4 bytes   the bytes of everything behind this word
//   per element: length (4 bytes; 0xFFFFFFFF for a null), then length bytes
// so an array of 0 elements is a total of 0, and a null element takes 4 bytes.
#ifndef LMBLOB_H
#define LMBLOB_H

#include <cstdint>

#include "lmtypedesc.h"

class LmString;

// The record of a blob. `data` is null when there are no bytes; the buffer behind it
// may be longer than `size` after a blob has shrunk.
struct LmBlobData {
    void* data;
    int32_t size;
};

class LM_EXPORT LmBlob {
public:
    LmBlob();                      // the empty blob
    LmBlob(const LmBlob& other);   // a deep copy; a null source gives null
    explicit LmBlob(int n);        // n bytes, their content unset
    LmBlob(const void* p, int n);  // a copy of n bytes
    ~LmBlob();

    // Both null: nothing. Source null: null. Target null: a deep copy. Otherwise the
    // bytes are replaced by the reuse rule (see SetTo).
    LmBlob& operator=(const LmBlob& other);
    int operator==(const LmBlob& other) const;  // both null, or equal sizes and bytes
    // Three-way: 0 if both are null, 2 if only the right is, -2 if only the left is;
    // otherwise the sign of memcmp over the smaller size, then -1, 0 or 1 by size.
    int operator!=(const LmBlob& other) const;
    LmBlob& operator+=(const LmBlob& other) { return Append(other); }

    // Appends the other blob's bytes; a null or empty one changes nothing.
    LmBlob& Append(const LmBlob& other);
    // n below 1 changes nothing; a null blob becomes a blob of those n bytes.
    LmBlob& Append(const void* p, int n);
    // The range [start, start + len) as a new blob, len cut at the end (a negative len
    // means up to the end). A null blob, a start outside the bytes or a len of 0
    // give a blob of one zero byte.
    LmBlob CopyFrom(int start, int len) const;
    // Copies len bytes from the start of source to start in this blob, cut to what
    // lies behind start and to the source's length. A null blob, a count below 1 or a
    // start outside the bytes change nothing.
    void CopyTo(const LmBlob& source, int start, int len);
    // Removes len bytes at start, len cut at the end. Removing all of them leaves the
    // empty blob. A null blob, a start outside the bytes or a len below 1 change nothing.
    void Cut(int start, int len);
    // Frees this blob and takes the record of other; other, if it had one, gets an
    // empty record. Nothing if other is this blob.
    void Destroy(LmBlob& other);
    // A record of n bytes holding the old bytes up to n; the rest is unset.
    void Expand(int n);
    int IsNullValue() const { return blob == nullptr ? 1 : 0; }
    int Length() const { return blob != nullptr ? blob->size : 0; }  // 0 for null
    // A null blob gets n unset bytes. 0 frees the bytes; a larger n moves the bytes
    // to a new buffer; a smaller one only changes the size.
    void Resize(unsigned n);
    // The first index of pattern, by memcmp at each position; 65535 if there is none
    // or this blob is null. A null or empty pattern is found at 0.
    int Search(const LmBlob& pattern) const;
    // The bytes at pos, if len is not 0 and pos + len lies within the blob; else null.
    void* Seek(int pos, int len) const;
    int SetNullValue();  // frees everything; 0
    // Replaces the bytes. The reuse rule: a buffer of at least n and at most n + 128
    // bytes is kept; any other is given back and a new one of n bytes taken (none for
    // n 0). A null blob gets a new record.
    void SetTo(const void* p, int n);

    // ---- Descriptor slots of id 18. ----
    static void* Create(unsigned count);  // count empty blobs; null elements where a record is refused
    static void* Delete(void* value, unsigned count);
    static void Constructor(void* array, unsigned count, unsigned unused);
    static void Destructor(void* array, unsigned count, unsigned unused);
    static void Assignment(void* dest, void* src, unsigned count, int replicate);
    static void Copy(void* dest, void* src, unsigned count, int replicate);  // raw targets
    static unsigned Store(void* dest, const void* src, unsigned char format, unsigned count);
    // 0 for an image whose words contradict each other; reads nothing beyond total + 4.
    static unsigned Load(void* dest, const void* src, unsigned char format, unsigned count);
    static unsigned NullSizeGet(unsigned count);  // 4 per element
    static unsigned SizeGet(const void* value, unsigned char valueForm, unsigned char format, unsigned count);
    static unsigned SizeGetFromMemFile(MemFile* file, unsigned char format, unsigned count);
    static unsigned Translate(void* dest, unsigned char destFormat, unsigned destLen, void* src,
                              unsigned char srcFormat, unsigned srcLen, unsigned count);
    static unsigned Hash(unsigned char format, unsigned len, void* value, unsigned count, int& status);
    static LmTypeConvertData* ConvertTo(void* value, unsigned count);
    static void* ConvertFrom(LmTypeConvertData* data, unsigned count);
    static void* DefaultValue(unsigned count, int asNull);
    static int IsNull(void* value);
    static int SetNull(void* value);
    // "%L" the length, "%%" a percent sign, any other "%x" the x; appends to out.
    static LmString& PrintToString(LmString& out, void* value, const char* format, unsigned count);
    // Only the null print text is read (the blob becomes null); a blob has no text form.
    static void* ScanFromString(void* value, LmString& text, const char* format, unsigned count);

private:
    explicit LmBlob(const char* text);  // the text with its terminating zero
    // A length-prefixed image: a signed 32-bit length, the bytes behind it. A
    // negative length makes the blob null.
    LmBlob& operator=(const char* image);
    // The number text of the bytes by atoi and atof; 0 for a null blob.
    explicit operator short() const;
    explicit operator int() const;
    explicit operator double() const;
    // A record of n + 1 bytes, deliberately one more than asked; null when refused.
    static LmBlobData* AllocData(int n);

    LmBlobData* blob;
};

// The compare slot of id 18, in the LmTypeCmpFunc shape. Format 8: the elements by
// operator!=. Any other format: disk images, read in place and never beyond a length
// given; a length of 0 trusts the image's total word.
LM_EXPORT int BlobCompare(unsigned char format, unsigned len1, void* value1, unsigned len2, void* value2,
                          unsigned short option, unsigned count, int& status);

#endif
