// The manager's value services that do work of their own: stepping a value to the
// next key, the null fallback, time stamps, printing and scanning by type id.
#include "lmslots.h"
#include "lmstring.h"
#include "lmtypemgr.h"
