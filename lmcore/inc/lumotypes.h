// Umbrella header of the type manager: includes every public header.
#ifndef LUMOTYPES_H
#define LUMOTYPES_H

#include "lmblob.h"
#include "lmboolean.h"
#include "lmchar.h"
#include "lmcompare.h"
#include "lmconvert.h"
#include "lmdate.h"
#include "lmdefs.h"
#include "lmdtformat.h"
#include "lmidentity.h"
#include "lmistring.h"
#include "lmint64.h"
#include "lmmbs.h"
#include "lmseal.h"
#include "lmstring.h"
#include "lmstrtype.h"
#include "lmtext.h"
#include "lmtime.h"
#include "lmtypedesc.h"
#include "lmtypemgr.h"
#include "lumobase.h"
#include "lumoi18n.h"

#endif
