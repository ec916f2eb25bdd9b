// The operations of LmString beyond its representation: access, number casts,
// comparison, search, pieces, changes in place, and the list splitter.
#include "lmchar.h"
#include "lmstring.h"
