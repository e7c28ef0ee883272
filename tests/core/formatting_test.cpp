#include "core/formatting.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "support/fake_platform.h"

namespace quillet {
namespace {

using testing::FaultOf;

struct NumberCase {
  Number value;
  const char* pattern;
  const char* expected;
};

void ExpectFormats(const std::vector<NumberCase>& cases) {
  for (const NumberCase& c : cases)
    EXPECT_EQ(FormatNumber(c.value, c.pattern), c.expected)
        << "value " << c.value.Value() << " pattern \"" << c.pattern << "\"";
}

TEST(FormatNumber, EmptyNumbersVanishAndAnEmptyPatternGivesThePlainForm) {
  for (const char* pattern :
       {"", "###0.00", "#,###", "00", "####.##", "######", "####0;-###0", "#####.########"})
    EXPECT_EQ(FormatNumber(Number::Empty(), pattern), "") << pattern;
  ExpectFormats({{0.5, "", "0.5"},
                 {-2, "", "-2"},
                 {0, "", "0"},
                 {1.0 / 3.0, "", "0.333333333333333"},
                 {1e20, "", "1E+20"},
                 {0.00001, "", "1E-05"}});
  EXPECT_EQ(FaultOf([] { FormatNumber(std::numeric_limits<double>::infinity(), "0.0"); }), 6);
  EXPECT_EQ(FaultOf([] { FormatNumber(std::nan(""), ""); }), 6);
}

TEST(FormatNumber, OptionalDigitsVanishRequiredDigitsStayAndThePointAlwaysShows) {
  ExpectFormats({
      {3.14159, "###0.00", "3.14"},
      {0, "###0.00", "0.00"},
      {-3.14159, "###0.00", "-3.14"},
      {0, "###0.##", "0."},
      {0.5, "###0.##", "0.5"},
      {100, "###0.##", "100."},
      {1.999, "###0.##", "2."},
      {0.5, "####.##", ".5"},
      {0, "####.##", "."},
      {20, "####.##", "20."},
      {-0.25, "####.##", "-.25"},
      {5, "00", "05"},
      {0, "######", ""},
      {42.5, "######", "43"},
      {-21.25, "###0.0", "-21.3"},
      {1234.56, "##0.0", "1234.6"},
      {0.004, "#0.00", "0.00"},
      {0.005, "#0.00", "0.01"},
      {5, "0##", "005"},  // a required digit forces the rest
      // Half away from zero at the decimal the user wrote, not as the binary value lies.
      {2.675, "###0.00", "2.68"},
      {1.005, "###0.00", "1.01"},
      {-0.125, "###0.00", "-0.13"},
      {9.995, "###0.00", "10.00"},
      {25.05, "####0.0;-###0.0", "25.1"},
      {5.55, "###0.0;-##0.0", "5.6"},
      {-2.5, "####0;-###0", "-3"},
      {0.5, "#,###", "1"},
      {0.4, "#,###", ""},
      {0.00004, "###0.####", "0."},
      {0.00005, "###0.####", "0.0001"},
      // Commas group by three; commas closing the integer places divide by a thousand.
      {999, "#,###", "999"},
      {1234567, "#,###", "1,234,567"},
      {-1234, "#,###", "-1,234"},
      {1234.5, "#,##0.00", "1,234.50"},
      {0.5, "#,##0.00", "0.50"},
      {1234567, "#,##0,", "1,235"},
      // Record file times keep eight decimals.
      {46347.0 + 47109.0 / 86400.0, "#####.########", "46347.54524306"},
      {36526, "#####.########", "36526."},
      {46347.123456789, "#####.########", "46347.12345679"},
      {0, "#####.########", "."},
      {19.95, "###0.#", "20."},
      {-0.04, "###0.#", "-0."},
      {1000.0004, "###0.###", "1000."},
      // Integer digits beyond the placeholders all show.
      {123, "00", "123"},
      {1234567, "######", "1234567"},
      {1e20, "0.00", "100000000000000000000.00"},
      {123456789012345.0, "0", "123456789012345"},
  });
}

TEST(FormatNumber, SectionsGoByTheSignBeforeRoundingAndLiteralTextStandsInPlace) {
  ExpectFormats({
      {1234, "####0;-###0", "1234"},
      {-123456, "####0;-###0", "-123456"},
      {-1500.25, "#####0.0;-###0.0", "-1500.3"},
      {0, "#####0.0;-###0.0", "0.0"},
      {-3, "###0.0;-##0.0", "-3.0"},
      {-1.005, "###0.00;-##0.00", "-1.01"},
      {0.999, "##0.00;-#0.00", "1.00"},
      {-0.0005, "##0.000;-#0.000", "-0.001"},
      {0.0995, "#0.000;-0.000", "0.100"},
      {-0.05, "#0.000;-0.000", "-0.050"},
      {-0.00005, "#0.0000;-0.0000", "-0.0001"},
      {-0.4, "####0;-###0", "-0"},  // the section is chosen before rounding
      {-5, "0;0", "5"},
      {-5, "0;(0)", "(5)"},
      {-2, "0.0;", "-2.0"},
      {0, "0;-0;zero", "zero"},
      {3, "0;-0;zero", "3"},
      // One section puts a minus in front even when the value rounds to zero.
      {-0.001, "0.00", "-0.00"},
      {-0.004, "####.##", "-."},
      {-0.0, "0.00", "0.00"},
      {-12, "$0", "-$12"},
      {5, "0 V", "5 V"},
      {1.5, "0.0 mA", "1.5 mA"},
      {1234.5, "$#,##0.00", "$1,234.50"},
      {12345, "##-##", "123-45"},
      {5, "##-##", "-5"},
  });
}

TEST(GeneralNumber, ShowsUpToFifteenDigitsWithoutTrailingZeros) {
  for (auto [value, expected] :
       std::vector<std::pair<double, const char*>>{{0, "0"},
                                                   {-0.0, "0"},
                                                   {-0.25, "-0.25"},
                                                   {100, "100"},
                                                   {0.1 + 0.2, "0.3"},
                                                   {123456789012345.0, "123456789012345"},
                                                   {1e15, "1E+15"},
                                                   {0.0001, "0.0001"},
                                                   {-1.5e-7, "-1.5E-07"}})
    EXPECT_EQ(GeneralNumber(value), expected) << value;
}

// Date-times built from independently known day counts: 2026-11-21 is day 46347,
// 2007-03-04 day 39145, 1999-12-31 day 36525.
constexpr double At(double day, int hour, int minute, double second) {
  return day + (hour * 3600 + minute * 60 + second) / 86400.0;
}
const double kAfternoon = At(46347, 13, 5, 9);  // 2026-11-21 13:05:09
const double kMorning = At(39145, 9, 7, 5);     // 2007-03-04 09:07:05
const double kMidnight = At(36527, 0, 30, 0);   // 2000-01-02 00:30:00
const double kNoon = At(36525, 12, 0, 0);       // 1999-12-31 12:00:00

TEST(FormatDateTime, MonthFirstPatternsUseATwelveHourClockAndDayFirstOnesTwentyFourHours) {
  struct Case {
    double value;
    const char* pattern;
    const char* expected;
  };
  for (const Case& c :
       std::vector<Case>{{kAfternoon, "mm/dd/yy hh:mm:ss am/pm", "11/21/26 01:05:09 pm"},
                         {kMidnight, "mm/dd/yy hh:mm:ss am/pm", "01/02/00 12:30:00 am"},
                         {kNoon, "mm/dd/yy hh:mm:ss am/pm", "12/31/99 12:00:00 pm"},
                         {kMorning, "m/d/yy hh:mm:ss am/pm", "3/4/07 09:07:05 am"},
                         {kMorning, "h:mm am/pm", "9:07 am"},
                         {kAfternoon, "h am/pm", "1 pm"},
                         {kMidnight, "h am/pm", "12 am"},
                         {kMorning, "mm/dd", "03/04"},
                         {kMorning, "dd/mm/yy hh:mm:ss", "04/03/07 09:07:05"},
                         {kNoon, "d/m/yy hh:mm:ss", "31/12/99 12:00:00"},
                         {kMidnight, "h:mm", "0:30"},
                         {kMorning, "   hh", "   09"},
                         {kAfternoon, "dd/mm", "21/11"},
                         // Rounded to the second, so the last fraction of a day rolls into the next.
                         {At(36525, 23, 59, 59.6), "mm/dd/yy hh:mm:ss am/pm", "01/01/00 12:00:00 am"},
                         {At(36525, 23, 59, 59.4), "d/m/yy hh:mm:ss", "31/12/99 23:59:59"},
                         {At(36525, 10, 17, 22.5), "hh:mm:ss", "10:17:23"},
                         // Other tokens and cases.
                         {kAfternoon, "yyyy-mm-dd", "2026-11-21"},
                         {kAfternoon, "hh:nn", "13:05"},
                         {kAfternoon, "h:m:s", "13:5:9"},
                         {kAfternoon, "hhmm", "1305"},
                         {kAfternoon, "hh:mm AM/PM", "01:05 PM"},
                         {kMorning, "h a/p", "9 a"},
                         {kAfternoon, "MM/DD/YY HH:MM", "11/21/26 13:05"},
                         {kAfternoon, "y", "325"},
                         {kAfternoon, "at h", "at 13"},
                         {kAfternoon, "", ""},
                         {2958465.5, "yyyy-mm-dd hh", "9999-12-31 12"},
                         {-657434, "yyyy-mm-dd", "0100-01-01"}})
    EXPECT_EQ(FormatDateTime(c.value, c.pattern), c.expected) << c.value << " \"" << c.pattern << "\"";
  EXPECT_EQ(FaultOf([] { FormatDateTime(1e20, "m/d/yy"); }), 6);
  EXPECT_EQ(FaultOf([] { FormatDateTime(-700000, "m/d/yy"); }), 6);
  EXPECT_EQ(FaultOf([] { FormatDateTime(std::nan(""), "hh"); }), 6);
}

TEST(LeadingNumber, ReadsTheLongestLeadingDecimalNumber) {
  for (auto [text, expected] :
       std::vector<std::pair<const char*, double>>{{"12abc", 12},
                                                   {"  -3.5x", -3.5},
                                                   {"abc", 0},
                                                   {"", 0},
                                                   {"   ", 0},
                                                   {"-", 0},
                                                   {".", 0},
                                                   {".5", 0.5},
                                                   {"-.25", -0.25},
                                                   {"+7", 7},
                                                   {"5.", 5},
                                                   {"1e3", 1000},
                                                   {"1E-2x", 0.01},
                                                   {"2.5e+2", 250},
                                                   {"12E", 12},
                                                   {"12e+", 12},
                                                   {"12Ex5", 12},
                                                   {"1.2.3", 1.2},
                                                   {"\t8", 8},
                                                   {"12 34", 12},
                                                   {"1e-400", 0},
                                                   {"0.000e999", 0},
                                                   {"46347.54524306", 46347.54524306}})
    EXPECT_EQ(LeadingNumber(text), expected) << '"' << text << '"';
  EXPECT_EQ(FaultOf([] { LeadingNumber("1e400"); }), 6);
  EXPECT_EQ(FaultOf([] { LeadingNumber("-0.5e99999999999"); }), 6);
}

}  // namespace
}  // namespace quillet
