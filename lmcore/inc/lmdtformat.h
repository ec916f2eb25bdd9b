// The format language of every date and time value: a relative of the printf and
// strftime languages with a '*' wildcard for any field, the conditional prefix %? with
// its groups, and the fixed day-count form %J for durations.
//
// Both engines work on one form only, the seven fields and nanoseconds of the
// nanosecond date-time record. Every other date and time type widens itself into
// that form, calls the engine, and narrows the result back.
#ifndef LMDTFORMAT_H
#define LMDTFORMAT_H

#include <cstdint>

#include "lmdefs.h"

class LmString;

// The fields of a nanosecond date-time, in the memory layout that LmDateTimeN and
// LmTimeSpan share (12 bytes). A field of -1 is a wildcard. The null value is year
// -32768, the five small fields -128 and nanoseconds 0.
struct LmDateTimeNRecord {
    int16_t year;
    int8_t month;
    int8_t day;
    int8_t hour;
    int8_t minute;
    int8_t second;
    int32_t nanoseconds;
};
static_assert(sizeof(LmDateTimeNRecord) == 12, "the nanosecond date-time is 12 bytes in memory");

// The named formats: the compound directives expand to them, and the classes use them
// as their default formats.
inline constexpr char LmDateFormat[] = "%Y-%m-%d";                // %D
inline constexpr char LmDateTimeFormat[] = "%Y-%m-%dT%H:%M:%S";   // %O
inline constexpr char LmTimeFormat[] = "%H:%M:%S";                // %T
inline constexpr char LmDateTimeNFormat[] = "%Y-%m-%dT%H:%M:%f";  // %X
inline constexpr char LmTimeSpanFormat[] = "%J.%H:%M:%f";         // %V

// Prints value under format into out (its text is replaced) and answers out. The
// null record prints as LmTypeMgr::GetNullPrintString(). A result longer than 2559
// characters is cut there. A null format prints nothing. flag is not looked at.
//
// Directives: %Y %y %m %B %b %d %e %A %a %H %I %M %S %f %N %J %p %P %%, and the
// compounds %D %O %T %X %V. %?x prints nothing for a zero field while nothing has been
// printed yet; %?( opens a group that a later ')' takes back when still nothing has
// been printed. A wildcard field prints '*'.
LM_EXPORT LmString& DateTimePrintEngine(LmString& out, const LmDateTimeNRecord& value, const char* format, int flag);

// Reads text under format into target and answers target, or null when the text ends
// where a directive is due (the fields read so far are stored either way). A text
// that begins with the null print string gives the null record. Literals match any
// non-digit; a '*' in the text makes the field a wildcard. A null target answers null;
// a null format reads nothing. flag is not looked at.
LM_EXPORT LmDateTimeNRecord* DateTimeScanEngine(LmDateTimeNRecord* target, const LmString& text, const char* format,
                                                int flag);

#endif
