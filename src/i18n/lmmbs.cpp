// Multi-byte conversion: 16-bit Unicode strings to and from the six-byte form of
// UTF-8, through one table of sequence rows.
#include "lmmbs.h"
#include "lmstring.h"
