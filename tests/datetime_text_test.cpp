// The date and time format language: the print engine by directive family, the
// conditional prefix and its groups, wildcards, the scan engine's rules, bad input,
// and round trips through print and scan; the members of LmDate and LmTime.
#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "lumotypes.h"

namespace {

using Record = LmDateTimeNRecord;
using Fields = std::tuple<int, int, int, int, int, int, int>;

Fields Of(const Record& r) { return {r.year, r.month, r.day, r.hour, r.minute, r.second, r.nanoseconds}; }

Record Make(int y, int mo, int d, int h = 0, int mi = 0, int s = 0, int ns = 0) {
    return Record{static_cast<int16_t>(y),
                  static_cast<int8_t>(mo),
                  static_cast<int8_t>(d),
                  static_cast<int8_t>(h),
                  static_cast<int8_t>(mi),
                  static_cast<int8_t>(s),
                  ns};
}

std::string Print(const Record& r, const char* format) {
    LmString out("old text");
    return DateTimePrintEngine(out, r, format, 1).StrGet();
}

struct ScanResult {
    bool ok;
    Fields fields;
    bool operator==(const ScanResult&) const = default;
};
std::ostream& operator<<(std::ostream& os, const ScanResult& r) {
    const auto [y, mo, d, h, mi, s, ns] = r.fields;
    return os << (r.ok ? "ok " : "failed ") << y << "-" << mo << "-" << d << " " << h << ":" << mi << ":" << s << "."
              << ns;
}

ScanResult Scan(const LmString& text, const char* format) {
    Record r = Make(7, 7, 7, 7, 7, 7, 7);  // the engine does not look at the old fields
    const bool ok = DateTimeScanEngine(&r, text, format, 1) == &r;
    return {ok, Of(r)};
}
ScanResult Scan(const char* text, const char* format) { return Scan(LmString(text), format); }
ScanResult Ok(int y, int mo, int d, int h = 0, int mi = 0, int s = 0, int ns = 0) {
    return {true, {y, mo, d, h, mi, s, ns}};
}
ScanResult Failed(int y, int mo, int d, int h = 0, int mi = 0, int s = 0, int ns = 0) {
    return {false, {y, mo, d, h, mi, s, ns}};
}

struct PrintRow {
    Record value;
    const char* format;
    const char* expected;
};

void CheckPrints(const PrintRow* rows, size_t n) {
    for (size_t i = 0; i < n; ++i) EXPECT_EQ(Print(rows[i].value, rows[i].format), rows[i].expected) << rows[i].format;
}

const Record kFeb3 = Make(2001, 2, 3, 13, 5, 9);

TEST(DateTimePrint, NumbersAndNames) {
    const PrintRow rows[] = {
        {kFeb3, "%Y-%m-%d %H:%M:%S", "2001-02-03 13:05:09"},
        {kFeb3, "%a %e.%b %Y", "Sat 03.Feb 2001"},
        {kFeb3, "%A, %B %d", "Saturday, Februar 03"},
        {Make(2001, 1, 1), "%B %b|%A %a", "Januar Jan|Monday Mon"},
        {Make(2001, 9, 9), "%B %b %A", "September Sep Sunday"},
        {Make(5, 13, 0), "%Y %b %B %d", "0005 013 013 00"},
        {Make(-5, 0, -3), "%Y %b %e %m", "-0005 000 -03 00"},
        {Make(12345, -5, 7), "%Y %B %y", "12345 -005 45"},
        {Make(1999, 1, 1), "%y", "99"},
        {Make(2005, 1, 1), "%y", "05"},
        {Make(-1999, 1, 1), "%y", "-99"},
        {Make(1, 1, 10), "%J", "400"},
        {Make(-1, 0, 0), "%J", "-360"},
        {Make(0, 0, 0, 0, 0, 0, 123), "%N|%N", "123|123"},
        {Make(0, 0, 0, 0, 0, 0, -7), "%N", "-7"},
        {Make(0, 0, 0), "%Y %b", "0000 000"},  // a time widened to the record
        {kFeb3, "100%% %Q", "100% Q"},
        {kFeb3, "", ""},
    };
    CheckPrints(rows, std::size(rows));
    EXPECT_EQ(Print(kFeb3, nullptr), "");
}

TEST(DateTimePrint, TwelveHourMode) {
    const PrintRow rows[] = {
        {Make(0, 0, 0, 13, 5, 9), "%I:%M:%S %p", "01:05:09 pm"},
        {Make(0, 0, 0, 0, 5, 9), "%I:%M:%S %p", "12:05:09 am"},
        {Make(0, 0, 0, 12, 0, 0), "%I:%M:%S %p", "12:00:00 pm"},
        {Make(0, 0, 0, 11, 0, 0), "%I %P", "11 AM"},
        {Make(0, 0, 0, 23, 0, 0), "%P %I", "PM 11"},
        {Make(0, 0, 0, -5, 0, 0), "%I%p", "-05am"},  // a negative hour stays, am
        // Without %p in the format itself the hour above 12 loses 12, 0 stays 0.
        {Make(0, 0, 0, 0, 0, 0), "%I", "00"},
        {Make(0, 0, 0, 13, 0, 0), "%I", "01"},
        {Make(0, 0, 0, 12, 0, 0), "%I %H", "12 12"},
        {Make(0, 0, 0, 13, 0, 0), "%%p %I", "%p 01"},       // %%p is no %p
        {Make(0, 0, 0, 13, 0, 0), "%?p %I", "am 01"},       // neither is %?p, so pm stays off
        {Make(0, 0, 0, 13, 5, 9), "%T %p", "13:05:09 pm"},  // %T holds %H
    };
    CheckPrints(rows, std::size(rows));
}

TEST(DateTimePrint, SecondsWithTheirFraction) {
    const PrintRow rows[] = {
        {Make(0, 0, 0, 0, 0, 5, 0), "%f", "05"},
        {Make(0, 0, 0, 0, 0, 5, 500000000), "%f", "05.500"},
        {Make(0, 0, 0, 0, 0, 5, 250000000), "%f", "05.250"},
        {Make(0, 0, 0, 0, 0, 5, 123456), "%f", "05.000123456"},
        {Make(0, 0, 0, 0, 0, 5, 123000), "%f", "05.000123"},
        {Make(0, 0, 0, 0, 0, 0, 0), "%f", "00"},
        {Make(0, 0, 0, 0, 0, 0, 1), "%f", "00.000000001"},
        {Make(0, 0, 0, 0, 0, 59, 999999999), "%f", "59.999999999"},
    };
    CheckPrints(rows, std::size(rows));
}

TEST(DateTimePrint, CompoundsAndNamedFormats) {
    const Record r = Make(2001, 2, 3, 4, 5, 6, 7000000);
    const PrintRow rows[] = {
        {r, "%D", "2001-02-03"},
        {r, "%O", "2001-02-03T04:05:06"},
        {r, "%T", "04:05:06"},
        {r, "%X", "2001-02-03T04:05:06.007"},
        {r, "[%D|%T]", "[2001-02-03|04:05:06]"},
        {r, LmDateTimeFormat, "2001-02-03T04:05:06"},
        {Make(1, 1, 10), "%V", "400.00:00:00"},
        {Make(0, 0, 0, 23, 59, 59, 500000000), LmTimeSpanFormat, "0.23:59:59.500"},
    };
    CheckPrints(rows, std::size(rows));
}

TEST(DateTimePrint, WildcardsAndTheStateTheyLeave) {
    const PrintRow rows[] = {
        {Make(2001, -1, 3), "%Y-%m-%d", "2001-*-03"},
        {Make(-1, -1, -1, -1, -1, -1, -1), "%Y %B %a %e %H %I %M %S %f %N %J %y", "* * * * * * * * * * * *"},
        {Make(-1, 5, 5), "%J", "-205"},           // a wildcard only when all three are
        {Make(0, 0, 0, 0, 0, -1, 5), "%f", "*"},  // the second decides
        {Make(0, 0, 0, 0, 0, 3, -1), "%f", "02.999999999"},
        {Make(0, 0, 0, -1, 0, 0), "%H%p", "**"},  // %p keeps the wildcard state
        {Make(0, 0, 0, -1, 0, 0), "%H %p %M %p", "* * 00 am"},
        {Make(0, -1, 0), "%m%%", "*%*"},  // so does %%, behind its '%'
        {Make(0, -1, 0), "%m%Q", "*Q*"},
        {Make(0, -1, 0), "%m-x", "*-x"},  // a plain character does not
        {Make(0, 0, 0, -1, 0, 0), "%?H", "*"},
    };
    CheckPrints(rows, std::size(rows));
}

TEST(DateTimePrint, ConditionalPrefixAndGroups) {
    const PrintRow rows[] = {
        {Make(0, 0, 0, 0, 5, 0), "%?H:%M", ":05"},
        {Make(0, 0, 0, 3, 5, 0), "%?H:%M", "03:05"},
        {Make(0, 0, 0, 0, 5, 0), "%M %?H", "05 00"},  // no effect once something is printed
        {Make(0, 0, 0), "%?Y-%?m-%?d", "--"},
        {Make(0, 0, 0, 0, 5, 0), "%?(H:)%M", "05"},
        {Make(0, 0, 0, 3, 5, 0), "%?(H:)%M", "03:05"},
        {Make(0, 0, 0, 0, 0, 0, 0), "%?(J.)%H:%M", "00:00"},
        {Make(0, 0, 2, 0, 0, 0, 0), "%?(J.)%H:%M", "2.00:00"},
        {Make(0, 0, 0, 0, 0, 0), "%?(H))x", ")x"},            // the second ')' is a plain character
        {Make(0, 0, 0, 0, 0, 0), "%?(H)%M", "00"},            // '%' behind ')' starts a directive
        {Make(0, 0, 0, 1, 0, 0), "a)b", "a)b"},               // no group open
        {Make(0, 0, 0, 0, 7, 0), "%?(H:%?(M:)%S", ":07:00"},  // one group: the second moves it
        {Make(0, 0, 0, 0, 0, 0), "%?(x%?H)y", "x00y"},        // 'x' is the directive, and printed
        {Make(0, 0, 0, 0, 0, 0), "%(H)y", "00y"},             // a group without '?' keeps what it printed
        {Make(0, 0, 0, 0, 0, 0), "%?(p)y", "y"},              // %p's zero test is on the hour
        {Make(0, 0, 0, 0, 0, 0), "%?%x", "%x"},               // no field, nothing to suppress
        {Make(0, 0, 0), "%?J", ""},
    };
    CheckPrints(rows, std::size(rows));
}

TEST(DateTimePrint, NullCutFormatsAndTheBufferLimit) {
    const Record null = Make(-32768, -128, -128, -128, -128, -128, 0);
    EXPECT_EQ(Print(null, "%Y"), "{NULL}");
    EXPECT_EQ(Print(Make(-32768, -128, -128, -128, -128, -128, 1), "%N"), "1");  // nanoseconds decide too
    // A format cut inside a directive ends there; a group at the very end closes the text.
    for (const char* format : {"%Y%", "%Y%?", "%Y%?(", "%Y%?(m)", "%Y%?(d"})
        EXPECT_EQ(Print(kFeb3, format).substr(0, 4), "2001") << format;
    EXPECT_EQ(Print(kFeb3, "%Y%?(m)"), "200102");
    EXPECT_EQ(Print(kFeb3, "%"), "");
    // The text is cut at 2559 characters, however long the format.
    const std::string longFormat = std::string(3000, 'x') + "%Y";
    EXPECT_EQ(Print(kFeb3, longFormat.c_str()), std::string(2559, 'x'));
    std::string manyYears;
    for (int i = 0; i < 1000; ++i) manyYears += "%Y%B";
    const std::string text = Print(kFeb3, manyYears.c_str());
    EXPECT_EQ(text.size(), 2559u);
    EXPECT_EQ(text.substr(0, 22), "2001Februar2001Februar");
}

TEST(DateTimeScan, NumbersSeparatorsAndFailure) {
    const struct {
        const char* text;
        const char* format;
        ScanResult expected;
    } rows[] = {
        {"2001-02-03", "%Y-%m-%d", Ok(2001, 2, 3)},
        {"2001/02/03", "%Y-%m-%d", Ok(2001, 2, 3)},           // separators are not compared
        {"  2001 -  2- 3 tail", "%Y-%m-%d", Ok(2001, 2, 3)},  // white space before each element
        {"2001-*-03", "%Y-%m-%d", Ok(2001, -1, 3)},
        {"*-*-*", "%Y-%m-%d", Ok(-1, -1, -1)},
        {"01:02", "%H:%M:%S", Failed(0, 0, 0, 1, 2, 0)},  // the text ended at %S
        {"", "%Y", Failed(0, 0, 0)},
        {"", "abc", Ok(0, 0, 0)},  // literals pass the end of the text
        {"x", "", Ok(0, 0, 0)},
        {"+12 -7", "%d%m", Ok(0, -7, 12)},  // a sign and digits are stepped over
        {"+12x-7", "%d%m", Ok(0, 0, 12)},   // 'x' is no number, and no directive steps over it
        {"-x5", "%dx%m", Ok(0, 5, 0)},      // a lone sign is stepped over; the field keeps 0
        {"ab", "%d%m", Ok(0, 0, 0)},        // no number: nothing consumed, no failure
        {"5", "Y%d", Ok(0, 0, 5)},          // a digit that differs from a literal stays
        {"55", "5%d", Ok(0, 0, 5)},         // an equal digit is stepped over
        {"x7", "%%%d", Ok(0, 0, 7)},        // %% steps over any one character
        {"*7", "%%%d", Ok(0, 0, 7)},        // '*' is no wildcard there
        {"x7", "%Q%d", Ok(0, 0, 7)},        // neither is an unknown directive's character
        {"*x7", "%Q%d", Ok(0, 0, 7)},
        {"05 07", "%?(H)%M", Ok(0, 0, 0, 5, 7)},  // an open group makes ')' skippable
        {"05)07", "%H)%M", Ok(0, 0, 0, 5, 7)},    // without a group it is a literal
        {"5", "%d ", Ok(0, 0, 5)},                // a format may end in white space
        {"5x", "%d%", Ok(0, 0, 5)},               // or inside a directive
        {"5x", "%d%?(", Ok(0, 0, 5)},
        {"5", "%d%", Failed(0, 0, 5)},  // but a '%' at the end of the text fails
    };
    for (const auto& r : rows) EXPECT_EQ(Scan(r.text, r.format), r.expected) << r.text << " with " << r.format;
}

TEST(DateTimeScan, NamesCenturyAmPmAndFractions) {
    const struct {
        const char* text;
        const char* format;
        ScanResult expected;
    } rows[] = {
        {"Sat 03.Feb 2001", "%a %e.%b %Y", Ok(2001, 2, 3)},
        {"Sunday 3.Januar 2001", "%A %e.%B %Y", Ok(2001, 1, 3)},
        // Only the characters in common with "Februar" go: the 'y' stays and %Y reads nothing.
        {"Saturday 3.February 2001", "%A %e.%B %Y", Ok(0, 2, 3)},
        {"Sa 3", "%a %d", Ok(0, 0, 0)},  // no weekday: nothing stepped over
        {"sat 3", "%a%d", Ok(0, 0, 0)},  // names are case-sensitive
        {"Dec", "%b", Ok(0, 12, 0)},
        {"0079", "%b%d", Ok(0, 7, 9)},  // a number of three characters
        {"12345", "%b%d", Ok(0, 123, 45)},
        {"-1x9", "%b%d", Ok(0, -1, 9)},
        {"1", "%b", Ok(0, 1, 0)},
        {"*Dec", "%b%d", Ok(0, -1, 0)},
        {"99", "%y", Ok(1999, 0, 0)},
        {"00", "%y", Ok(2000, 0, 0)},
        {"30", "%y", Ok(2030, 0, 0)},
        {"31", "%y", Ok(1931, 0, 0)},
        {"1999", "%y", Ok(3899, 0, 0)},
        {"x", "%y", Ok(2000, 0, 0)},  // the rule applies to the field as it stands
        {"*", "%y", Ok(-1, 0, 0)},
        {"01:05:09 pm", "%I:%M:%S %p", Ok(0, 0, 0, 13, 5, 9)},
        {"12:05:09 am", "%I:%M:%S %p", Ok(0, 0, 0, 0, 5, 9)},
        {"12:00:00 PM", "%I:%M:%S %p", Ok(0, 0, 0, 12, 0, 0)},
        {"*:05:09 pm", "%I:%M:%S %p", Ok(0, 0, 0, 11, 5, 9)},  // a wildcard hour becomes 11
        {"3 Xm5", "%H %p%M", Ok(0, 0, 0, 3, 5, 0)},            // two characters go in any case
        {"3 p", "%H %p", Ok(0, 0, 0, 15, 0, 0)},
        {"05.5", "%f", Ok(0, 0, 0, 0, 0, 5, 500000000)},
        {"05.250", "%S.%N", Ok(0, 0, 0, 0, 0, 5, 250)},
        {"05,5", "%f,%N", Ok(0, 0, 0, 0, 0, 5, 5)},  // a comma ends the number
        {"-1.5", "%f", Ok(0, 0, 0, 0, 0, -1, -500000000)},
        {"*", "%f", Ok(0, 0, 0, 0, 0, -1, -1)},
        {"abc", "%N", Ok(0, 0, 0)},
        {"*", "%N", Ok(0, 0, 0, 0, 0, 0, -1)},
        {"400.00:00:00", "%V", Ok(1, 1, 10)},
        {"-400", "%J", Ok(-1, -1, -10)},
        {"*.01:02:03", "%V", Ok(-1, -1, -1, 1, 2, 3)},
        {"2001-02-03T04:05:06.250", "%X", Ok(2001, 2, 3, 4, 5, 6, 250000000)},
        {"4.000506816", "%f", Ok(0, 0, 0, 0, 0, 4, 506815)},  // the product with 1e9 is truncated
        {"*-02-03T04:05:06", "%O", Ok(-1, 2, 3, 4, 5, 6)},    // the '*' goes back to the first inner directive
        {"*", "%X", Failed(-1, 0, 0)},
    };
    for (const auto& r : rows) EXPECT_EQ(Scan(r.text, r.format), r.expected) << r.text << " with " << r.format;
}

TEST(DateTimeScan, NullTextWideTextAndBadInput) {
    EXPECT_EQ(Scan("{NULL}", "%Y"), Ok(-32768, -128, -128, -128, -128, -128, 0));
    EXPECT_EQ(Scan("{NULL} and more", "%Y"), Ok(-32768, -128, -128, -128, -128, -128, 0));
    EXPECT_EQ(Scan("{NUL", "%Y"), Ok(0, 0, 0));
    EXPECT_EQ(DateTimeScanEngine(nullptr, LmString("2001"), "%Y", 1), nullptr);
    EXPECT_EQ(Scan("2001", nullptr), Ok(0, 0, 0));
    // A 16-bit text is read as its narrow conversion.
    const unsigned short wide[] = {'2', '0', '0', '1', '-', '0', '2', '-', '0', '3', 0};
    EXPECT_EQ(Scan(LmString(wide), "%Y-%m-%d"), Ok(2001, 2, 3));
    // Numbers beyond 32 bits stay at the limit before the field is cut: 2147483647 cut
    // to 16 bits is -1; the century rule then wraps in 32 bits.
    const std::string digits(40, '9');
    EXPECT_EQ(Scan(digits.c_str(), "%Y"), Ok(-1, 0, 0));
    EXPECT_EQ(Scan(("-" + digits).c_str(), "%d"), Ok(0, 0, 0));
    EXPECT_EQ(Scan(digits.c_str(), "%y"), Ok(1899, 0, 0));
    EXPECT_EQ(Scan(digits.c_str(), "%J"), Ok(1456, 4, 7));  // 2147483647 days: year 5965232
    EXPECT_EQ(Scan(("1e999" + digits).c_str(), "%f"), Ok(0, 0, 0, 0, 0, -1, 854775807));  // at the limits
    EXPECT_EQ(Scan("nan", "%f"), Ok(0, 0, 0));
    // Long texts and formats of nothing but '%' or digits end in time.
    const std::string percents(100000, '%');
    EXPECT_EQ(Scan(std::string(60000, '7').c_str(), percents.c_str()).ok, true);
    EXPECT_EQ(Scan(std::string(40000, '%').c_str(), percents.c_str()).ok, false);
    EXPECT_EQ(Scan(std::string(60000, '1').c_str(), std::string(100000, '1').c_str()), Ok(0, 0, 0));
}

TEST(DateTimeScan, RoundTripsOverManyDatesAndEveryNamedFormat) {
    const char* const formats[] = {"%D",
                                   "%O",
                                   "%X",
                                   LmDateFormat,
                                   LmDateTimeFormat,
                                   LmDateTimeNFormat,
                                   "%a %e.%b %Y",
                                   "%a %e.%b %Y %I:%M:%S %p",
                                   "%A %d %B %Y %T"};
    int mismatches = 0;
    for (int jdn = LmDate(-4713, 1, 1).dayabs(); jdn <= LmDate(9999, 12, 31).dayabs(); jdn += 97) {
        const LmDate d(jdn);
        const int seconds = (jdn % 86400 + 86400) % 86400;
        const int nanos = (jdn % 8) * 125000000;
        const Record r = Make(d.year, d.month, d.day, seconds / 3600, seconds / 60 % 60, seconds % 60, nanos);
        for (const char* format : formats) {
            const std::string first = Print(r, format);
            const ScanResult back = Scan(first.c_str(), format);
            const auto [y, mo, dd, h, mi, s, ns] = back.fields;
            const std::string second = Print(Make(y, mo, dd, h, mi, s, ns), format);
            if (!back.ok || first != second) {
                ++mismatches;
                ADD_FAILURE() << format << ": " << first << " came back as " << second;
            }
        }
    }
    EXPECT_EQ(mismatches, 0);
    // The day count of a span, and a time, under their own formats.
    for (int days = 0; days < 20000; days += 37) {
        const Record span =
            Make(days / 360, days % 360 / 30, days % 30, days % 24, days % 60, days % 60, days % 4 * 250000000);
        const std::string text = Print(span, "%V");
        const ScanResult back = Scan(text.c_str(), "%V");
        EXPECT_EQ(back.fields, Of(span)) << text;
        const std::string t = Print(span, "%I:%M:%S %p");
        EXPECT_EQ(Scan(t.c_str(), "%I:%M:%S %p"), Ok(0, 0, 0, span.hour, span.minute, span.second)) << t;
    }
}

TEST(CalendarText, MembersOfLmDateAndLmTime) {
    LmString out;
    const LmDate d(2001, 2, 3);
    EXPECT_STREQ(d.PrintToLmString(out, nullptr).StrGet(), "2001-02-03");
    EXPECT_STREQ(d.PrintToLmString(out, "%a %e.%b %Y").StrGet(), "Sat 03.Feb 2001");
    EXPECT_STREQ(d.PrintToLmString(out, "%H:%M").StrGet(), "00:00");
    EXPECT_STREQ(LmDate::NullValue().PrintToLmString(out, nullptr).StrGet(), "{NULL}");
    const LmTime t(13, 5, 9);
    EXPECT_STREQ(t.PrintToLmString(out, nullptr).StrGet(), "13:05:09");
    EXPECT_STREQ(t.PrintToLmString(out, "%I:%M:%S %p").StrGet(), "01:05:09 pm");
    EXPECT_STREQ(t.PrintToLmString(out, "%Y %b").StrGet(), "0000 000");
    EXPECT_STREQ(LmTime::NullValue().PrintToLmString(out, "%H").StrGet(), "{NULL}");

    LmDate e(1, 1, 1);
    LmString text("2001-02-03");
    EXPECT_EQ(e.ScanFromLmString(text, nullptr), &e);
    EXPECT_EQ(e, LmDate(2001, 2, 3));
    text = "2002-04";  // fails at %d; what was read replaces the value
    EXPECT_EQ(e.ScanFromLmString(text, nullptr), nullptr);
    EXPECT_EQ(e, LmDate(2002, 4, 0));
    text = "{NULL}";
    EXPECT_EQ(e.ScanFromLmString(text, "%Y"), &e);
    EXPECT_EQ(e.IsNullValue(), 1);
    LmTime u(1, 1, 1);
    text = "01:02:03 pm";
    EXPECT_EQ(u.ScanFromLmString(text, "%I:%M:%S %p"), &u);
    EXPECT_EQ(u, LmTime(13, 2, 3));
    text = "7";
    EXPECT_EQ(u.ScanFromLmString(text, nullptr), nullptr);
    EXPECT_EQ(u, LmTime(7, 0, 0));
}

}  // namespace
