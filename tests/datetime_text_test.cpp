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
Record Clock(int h, int mi = 0, int s = 0, int ns = 0) { return Make(0, 0, 0, h, mi, s, ns); }

std::string Print(const Record& r, const char* format) {
    LmString out("old text");
    return DateTimePrintEngine(out, r, format, 1).StrGet();
}

// A scan's success and the fields it stored.
using Scanned = std::pair<bool, Fields>;
Scanned Scan(const LmString& text, const char* format) {
    Record r = Make(7, 7, 7, 7, 7, 7, 7);  // the engine does not look at the old fields
    const bool ok = DateTimeScanEngine(&r, text, format, 1) == &r;
    return {ok, Of(r)};
}
Scanned Scan(const char* text, const char* format) { return Scan(LmString(text), format); }
Scanned Ok(int y, int mo, int d, int h = 0, int mi = 0, int s = 0, int ns = 0) {
    return {true, {y, mo, d, h, mi, s, ns}};
}
Scanned Failed(int y, int mo, int d, int h = 0, int mi = 0, int s = 0) { return {false, {y, mo, d, h, mi, s, 0}}; }

struct PrintRow {
    Record value;
    const char* format;
    const char* expected;
};
void CheckPrints(std::initializer_list<PrintRow> rows) {
    for (const auto& r : rows) EXPECT_EQ(Print(r.value, r.format), r.expected) << r.format;
}

const Record kFeb3 = Make(2001, 2, 3, 13, 5, 9);

TEST(DateTimePrint, NumbersNamesAndTwelveHourMode) {
    CheckPrints({{kFeb3, "%Y-%m-%d %H:%M:%S|%a %e.%b %Y|%A, %B %d|%y",
                  "2001-02-03 13:05:09|Sat 03.Feb 2001|Saturday, Februar 03|01"},
                 {Make(2001, 1, 1), "%B %b|%A %a", "Januar Jan|Monday Mon"},
                 {Make(5, 13, 0), "%Y %b %B %d", "0005 013 013 00"},  // a month out of range is a number
                 {Make(-5, 0, -3), "%Y %b %e %m", "-0005 000 -03 00"},
                 {Make(12345, -5, 7), "%Y %B %y", "12345 -005 45"},
                 {Make(-1999, 1, 10), "%y %J", "-99 -719600"},  // (year * 12 + month) * 30 + day
                 {Make(0, 0, 0, 0, 0, 0, -7), "%N|%N|%J", "-7|-7|0"},
                 {kFeb3, "100%% %Q", "100% Q"},
                 {kFeb3, "", ""},
                 {Clock(13, 5, 9), "%I:%M:%S %p|%P|%H", "01:05:09 pm|PM|13"},
                 {Clock(0, 5, 9), "%I:%M:%S %p", "12:05:09 am"},
                 {Clock(12), "%I %p", "12 pm"},
                 {Clock(11), "%I %P", "11 AM"},
                 {Clock(-5), "%I%p", "-05am"},  // a negative hour stays, am
                 {Clock(0), "%I", "00"},        // without %p the hour above 12 loses 12, 0 stays 0
                 {Clock(13), "%I", "01"},
                 {Clock(13), "%%p %I", "%p 01"},  // %%p is no %p
                 {Clock(13), "%?p %I", "am 01"},  // neither is %?p, so pm stays off
                 {Clock(13, 5, 9), "%T %p", "13:05:09 pm"}});
    EXPECT_EQ(Print(kFeb3, nullptr), "");
}

TEST(DateTimePrint, SecondsFractionsAndCompounds) {
    CheckPrints({{Clock(0, 0, 5, 0), "%f", "05"},
                 {Clock(0, 0, 5, 500000000), "%f", "05.500"},
                 {Clock(0, 0, 5, 123456), "%f", "05.000123456"},
                 {Clock(0, 0, 5, 123000), "%f", "05.000123"},
                 {Clock(0, 0, 0, 0), "%f", "00"},
                 {Clock(0, 0, 59, 999999999), "%f", "59.999999999"},
                 {Make(2001, 2, 3, 4, 5, 6, 7000000), "%D|%O|%T|%X",
                  "2001-02-03|2001-02-03T04:05:06|04:05:06|2001-02-03T04:05:06.007"},
                 {Make(1, 1, 10), "%V", "400.00:00:00"},
                 {Clock(23, 59, 59, 500000000), LmTimeSpanFormat, "0.23:59:59.500"}});
}

TEST(DateTimePrint, WildcardsAndTheStateTheyLeave) {
    CheckPrints({{Make(2001, -1, 3), "%Y-%m-%d", "2001-*-03"},
                 {Make(-1, -1, -1, -1, -1, -1, -1), "%Y %B %a %e %H %I %M %S %f %N %J %y", "* * * * * * * * * * * *"},
                 {Make(-1, 5, 5), "%J", "-205"},   // a wildcard only when all three are
                 {Clock(0, 0, -1, 5), "%f", "*"},  // the second decides
                 {Clock(0, 0, 3, -1), "%f", "02.999999999"},
                 {Clock(-1), "%H%p", "**"},  // %p keeps the wildcard state
                 {Clock(-1), "%H %p %M %p", "* * 00 am"},
                 {Make(0, -1, 0), "%m%%|%m%Q|%m-x", "*%*|*Q*|*-x"},  // so do %% and %Q behind their character
                 {Clock(-1), "%?H", "*"}});
}

TEST(DateTimePrint, ConditionalPrefixAndGroups) {
    CheckPrints({{Clock(0, 5), "%?H:%M", ":05"},
                 {Clock(0, 0, 0, 500000000), "%?f", "00.500"},  // %f's zero test is on both fields
                 {Clock(0, 0, 5, 0), "%?f", "05"},
                 {Clock(3, 5), "%?H:%M", "03:05"},
                 {Clock(0, 5), "%M %?H", "05 00"},  // no effect once something is printed
                 {Make(0, 0, 0), "%?Y-%?m-%?d|%?J", "--|"},
                 {Clock(0, 5), "%?(H:)%M", "05"},
                 {Clock(3, 5), "%?(H:)%M", "03:05"},
                 {Make(0, 0, 2), "%?(J.)%H:%M", "2.00:00"},
                 {Clock(0), "%?(H))x", ")x"},               // the second ')' is a plain character
                 {Clock(0), "%?(H)%M", "00"},               // a '%' behind ')' starts a directive
                 {Clock(1), "a)b", "a)b"},                  // no group open
                 {Clock(0, 7), "%?(H:%?(M:)%S", ":07:00"},  // one group: the second moves it
                 {Clock(0), "%?(x%?H)y", "x00y"},           // 'x' is the directive, and printed
                 {Clock(0), "%(H)y", "00y"},                // a group without '?' keeps what it printed
                 {Clock(0), "%?(p)y", "y"},                 // %p's zero test is on the hour
                 {Clock(0), "%?%x|%?(%H)", "%x|%H"}});      // "%?(%" is the directive %% in a group
}

TEST(DateTimePrint, NullCutFormatsAndTheBufferLimit) {
    EXPECT_EQ(Print(Make(-32768, -128, -128, -128, -128, -128, 0), "%Y"), "{NULL}");
    EXPECT_EQ(Print(Make(-32768, -128, -128, -128, -128, -128, 1), "%N"), "1");  // nanoseconds decide too
    // A format cut inside a directive ends there; so does a group at the very end.
    for (const char* format : {"%Y%", "%Y%?", "%Y%?(", "%Y%?(m)", "%Y%?(d"})
        EXPECT_EQ(Print(kFeb3, format).substr(0, 4), "2001") << format;
    EXPECT_EQ(Print(kFeb3, "%Y%?(m)") + Print(kFeb3, "%"), "200102");
    // The text is cut at 2559 characters, however long the format.
    EXPECT_EQ(Print(kFeb3, (std::string(3000, 'x') + "%Y").c_str()), std::string(2559, 'x'));
    std::string manyYears;
    for (int i = 0; i < 1000; ++i) manyYears += "%Y%B";
    const std::string text = Print(kFeb3, manyYears.c_str());
    EXPECT_EQ(std::make_pair(text.size(), text.substr(0, 22)),
              std::make_pair(size_t{2559}, std::string("2001Februar2001Februar")));
}

struct ScanRow {
    const char* text;
    const char* format;
    Scanned expected;
};
void CheckScans(std::initializer_list<ScanRow> rows) {
    for (const auto& r : rows) EXPECT_EQ(Scan(r.text, r.format), r.expected) << r.text << " with " << r.format;
}

TEST(DateTimeScan, NumbersSeparatorsAndFailure) {
    CheckScans({{"2001-02-03", "%Y-%m-%d", Ok(2001, 2, 3)},
                {"  2001 /  2- 3 tail", "%Y-%m-%d", Ok(2001, 2, 3)},  // separators are not compared
                {"2001-*-03", "%Y-%m-%d", Ok(2001, -1, 3)},
                {"01:02", "%H:%M:%S", Failed(0, 0, 0, 1, 2, 0)},  // the text ended at %S
                {"", "%Y", Failed(0, 0, 0)},
                {"", "abc", Ok(0, 0, 0)},                 // literals pass the end of the text
                {"+12 -7", "%d%m", Ok(0, -7, 12)},        // a sign and digits are stepped over
                {"+12x-7", "%d%m", Ok(0, 0, 12)},         // 'x' is no number; nothing steps over it
                {"-x5", "%dx%m", Ok(0, 5, 0)},            // a lone sign is stepped over
                {"5", "Y%d", Ok(0, 0, 5)},                // a digit that differs from a literal stays
                {"55", "5%d", Ok(0, 0, 5)},               // an equal digit is stepped over
                {"*7", "%%%d", Ok(0, 0, 7)},              // %% steps over any one character, '*' too
                {"*x7", "%Q%d", Ok(0, 0, 7)},             // an unknown directive's '*' and one character
                {"05 07", "%?(H)%M", Ok(0, 0, 0, 5, 7)},  // an open group makes ')' skippable
                {"05)07", "%H)%M", Ok(0, 0, 0, 5, 7)},    // without a group it is a literal
                {"5", "%d ", Ok(0, 0, 5)},                // a format may end in white space
                {"5x", "%d%?(", Ok(0, 0, 5)},             // or inside a directive
                {"5", "%d%", Failed(0, 0, 5)}});          // but a '%' at the end of the text fails
}

TEST(DateTimeScan, NamesCenturyAmPmAndFractions) {
    CheckScans({{"Sat 03.Feb 2001", "%a %e.%b %Y", Ok(2001, 2, 3)},
                {"Sunday 3.Januar 2001", "%A %e.%B %Y", Ok(2001, 1, 3)},
                // Only the characters in common with "Februar" go: the 'y' stays, %Y reads nothing.
                {"Saturday 3.February 2001", "%A %e.%B %Y", Ok(0, 2, 3)},
                {"sat 3", "%a%d", Ok(0, 0, 0)},  // names are case-sensitive; no name, nothing consumed
                {"Dec", "%b", Ok(0, 12, 0)},
                {"12345", "%b%d", Ok(0, 123, 45)},  // a number of three characters, the sign counted
                {"-1x9", "%b%d", Ok(0, -1, 9)},
                {"1", "%b", Ok(0, 1, 0)},
                {"*Dec", "%b%d", Ok(0, -1, 0)},
                {"99", "%y", Ok(1999, 0, 0)},
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
                {"05.5", "%f", Ok(0, 0, 0, 0, 0, 5, 500000000)},
                {"05,5", "%f,%N", Ok(0, 0, 0, 0, 0, 5, 5)},  // a comma ends the number
                {"-1.5", "%f", Ok(0, 0, 0, 0, 0, -1, -500000000)},
                {"4.000506816", "%f", Ok(0, 0, 0, 0, 0, 4, 506815)},  // the product with 1e9 is truncated
                {"*", "%f", Ok(0, 0, 0, 0, 0, -1, -1)},
                {"abc", "%N", Ok(0, 0, 0)},
                {"*", "%N", Ok(0, 0, 0, 0, 0, 0, -1)},
                {"400.00:00:00", "%V", Ok(1, 1, 10)},
                {"-400", "%J", Ok(-1, -1, -10)},
                {"*.01:02:03", "%V", Ok(-1, -1, -1, 1, 2, 3)},
                {"*-02-03T04:05:06", "%O", Ok(-1, 2, 3, 4, 5, 6)},  // the '*' goes to the first inner directive
                {"*", "%X", Failed(-1, 0, 0)}});
}

TEST(DateTimeScan, NullTextWideTextAndBadInput) {
    const Scanned null = Ok(-32768, -128, -128, -128, -128, -128, 0);
    EXPECT_EQ(std::make_tuple(Scan("{NULL}", "%Y"), Scan("{NULL} and more", "%Y"), Scan("{NUL", "%Y")),
              std::make_tuple(null, null, Ok(0, 0, 0)));
    // The null print string in force decides; every text begins with an empty one.
    LmTypeMgr::SetNullPrintString(LmString("<nil>"));
    EXPECT_EQ(std::make_tuple(Scan("<nil>x", "%Y"), Scan("{NULL}", "%Y").first,
                              Print(Make(-32768, -128, -128, -128, -128, -128, 0), "%Y")),
              std::make_tuple(null, true, std::string("<nil>")));
    LmTypeMgr::SetNullPrintString(LmString(""));
    EXPECT_EQ(Scan("2001", "%Y"), null);
    LmTypeMgr::SetNullPrintString(LmString("{NULL}"));
    EXPECT_EQ(DateTimeScanEngine(nullptr, LmString("2001"), "%Y", 1), nullptr);
    EXPECT_EQ(Scan("2001", nullptr), Ok(0, 0, 0));
    const unsigned short wide[] = {'2', '0', '0', '1', '-', '0', '2', '-', '0', '3', 0};
    EXPECT_EQ(Scan(LmString(wide), "%Y-%m-%d"), Ok(2001, 2, 3));  // read as its narrow conversion
    // Numbers beyond 32 bits stay at the limit before the field is cut: 2147483647 is -1
    // in 16 bits, and as days year 5965232 (1456 in 16 bits); %y wraps in 32 bits.
    const std::string digits(40, '9');
    EXPECT_EQ(std::make_tuple(Scan(digits.c_str(), "%Y"), Scan(("-" + digits).c_str(), "%d"),
                              Scan(digits.c_str(), "%y"), Scan(digits.c_str(), "%J")),
              std::make_tuple(Ok(-1, 0, 0), Ok(0, 0, 0), Ok(1899, 0, 0), Ok(1456, 4, 7)));
    EXPECT_EQ(Scan(("1e999" + digits).c_str(), "%f"), Ok(0, 0, 0, 0, 0, -1, 854775807));  // at the limits
    EXPECT_EQ(Scan("9223372036.854775808", "%f"), Ok(0, 0, 0, 0, 0, -1, 854775807));      // times 1e9 is 2^63
    EXPECT_EQ(Scan("nan", "%f"), Ok(0, 0, 0));
    // Long texts and formats of nothing but '%' or digits end in time.
    const std::string percents(100000, '%');
    EXPECT_EQ(Scan(std::string(60000, '7').c_str(), percents.c_str()).first, true);
    EXPECT_EQ(Scan(std::string(40000, '%').c_str(), percents.c_str()).first, false);
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
        const Record r =
            Make(d.year, d.month, d.day, seconds / 3600, seconds / 60 % 60, seconds % 60, (jdn % 8) * 125000000);
        for (const char* format : formats) {
            const std::string first = Print(r, format);
            const auto [ok, fields] = Scan(first.c_str(), format);
            const auto [y, mo, dd, h, mi, s, ns] = fields;
            const std::string second = Print(Make(y, mo, dd, h, mi, s, ns), format);
            if (!ok || first != second) ADD_FAILURE() << format << ": " << first << " came back as " << second;
            mismatches += !ok || first != second;
        }
    }
    EXPECT_EQ(mismatches, 0);
    // The day count of a span, and a time in 12-hour form.
    for (int days = 0; days < 20000; days += 37) {
        const Record span =
            Make(days / 360, days % 360 / 30, days % 30, days % 24, days % 60, days % 60, days % 4 * 250000000);
        EXPECT_EQ(Scan(Print(span, "%V").c_str(), "%V").second, Of(span));
        EXPECT_EQ(Scan(Print(span, "%I:%M:%S %p").c_str(), "%I:%M:%S %p"),
                  Ok(0, 0, 0, span.hour, span.minute, span.second));
    }
}

TEST(CalendarText, MembersOfLmDateAndLmTime) {
    LmString out;
    const LmDate d(2001, 2, 3);
    const LmTime t(13, 5, 9);
    // Each print replaces the text of out.
    EXPECT_STREQ(d.PrintToLmString(out, nullptr).StrGet(), "2001-02-03");
    EXPECT_STREQ(d.PrintToLmString(out, "%a %e.%b %Y|%H:%M").StrGet(), "Sat 03.Feb 2001|00:00");
    EXPECT_STREQ(LmDate::NullValue().PrintToLmString(out, nullptr).StrGet(), "{NULL}");
    EXPECT_STREQ(t.PrintToLmString(out, nullptr).StrGet(), "13:05:09");
    EXPECT_STREQ(t.PrintToLmString(out, "%I:%M:%S %p|%Y %b").StrGet(), "01:05:09 pm|0000 000");
    EXPECT_STREQ(LmTime::NullValue().PrintToLmString(out, "%H").StrGet(), "{NULL}");
    // A scan stores what it read, also when it fails, and answers null then.
    LmDate e(1, 1, 1);
    LmString text("2001-02-03");
    EXPECT_EQ(e.ScanFromLmString(text, nullptr), &e);
    EXPECT_EQ(e, LmDate(2001, 2, 3));
    text = "2002-04";
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
