// The language context: started and stopped by the type manager's module start.
#include "lumoi18n.h"

namespace {
int starts = 0;
}

void ___LmI18NContext(int start) {
    if (start != 0) ++starts;
    else if (starts > 0) --starts;
}

int LmI18NContextActive() { return starts > 0 ? 1 : 0; }
