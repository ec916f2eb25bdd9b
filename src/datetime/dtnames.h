// Internal: the month and weekday names of the date and time texts, spelled as the
// stored texts and the format language have them ("Januar", "Februar" stay).
#ifndef DTNAMES_H
#define DTNAMES_H

namespace lmdatetime {

// Index 1 to 12; index 0 is unused (an empty text).
extern const char* const kMonthNames[13];
// Index 0 (Monday) to 6 (Sunday), as LmDaysOfTheWeek.
extern const char* const kWeekdayNames[7];
// The text of a weekday number outside 0 to 6.
extern const char kNoDay[];

// The full name of a weekday number, or kNoDay outside 0 to 6.
inline const char* WeekdayName(int weekday) { return weekday >= 0 && weekday <= 6 ? kWeekdayNames[weekday] : kNoDay; }

}  // namespace lmdatetime

#endif
