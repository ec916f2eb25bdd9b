// GetValue slots of the plain numbers: the next key of a value in memory form.
#include "lmslots.h"

// Placeholders until the stepping is written.
int CharGetValue(void*, unsigned, unsigned char, unsigned char) { return LM_ERR_NOT_SUPPORTED; }
int ByteGetValue(void*, unsigned, unsigned char, unsigned char) { return LM_ERR_NOT_SUPPORTED; }
int ShortGetValue(void*, unsigned, unsigned char, unsigned char) { return LM_ERR_NOT_SUPPORTED; }
int WordGetValue(void*, unsigned, unsigned char, unsigned char) { return LM_ERR_NOT_SUPPORTED; }
int LongGetValue(void*, unsigned, unsigned char, unsigned char) { return LM_ERR_NOT_SUPPORTED; }
int DwordGetValue(void*, unsigned, unsigned char, unsigned char) { return LM_ERR_NOT_SUPPORTED; }
int O_8BGetValue(void*, unsigned, unsigned char, unsigned char) { return LM_ERR_NOT_SUPPORTED; }
int O_U8BGetValue(void*, unsigned, unsigned char, unsigned char) { return LM_ERR_NOT_SUPPORTED; }
int DoubleGetValue(void*, unsigned, unsigned char, unsigned char) { return LM_ERR_NOT_SUPPORTED; }
int FloatGetValue(void*, unsigned, unsigned char, unsigned char) { return LM_ERR_NOT_SUPPORTED; }
