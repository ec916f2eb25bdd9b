// Umbrella header of the type manager: includes every public header.
#ifndef LUMOTYPES_H
#define LUMOTYPES_H

#include "lumobase.h"
#include "lumoi18n.h"
#include "lmdefs.h"
#include "lmtypedesc.h"
#include "lmtypemgr.h"
#include "lmcompare.h"
#include "lmstring.h"
#include "lmchar.h"

#endif
