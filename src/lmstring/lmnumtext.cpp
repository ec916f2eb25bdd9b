// Number texts: cleaning before strtol, the 16-bit text helpers and the special
// floating values.
#include "lmtext.h"
