// The month and weekday names of the date and time texts. The first two month
// names lack their final y: stored texts and formats depend on these spellings.
#include "dtnames.h"

namespace lmdatetime {

const char* const kMonthNames[13] = {"",     "Januar", "Februar",   "March",   "April",    "May",     "June",
                                     "July", "August", "September", "October", "November", "December"};

const char* const kWeekdayNames[7] = {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"};

const char kNoDay[] = "no day";

}  // namespace lmdatetime
