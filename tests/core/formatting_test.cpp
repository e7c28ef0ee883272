#include "core/formatting.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "core/fault.h"

namespace quillet {
namespace {

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

int FaultOf(void (*action)()) {
  try {
    action();
  } catch (const Fault& f) {
    return f.number();
  }
  return 0;
}

TEST(FormatNumber, EmptyNumberGivesEmptyTextWhateverThePattern) {
  for (const char* pattern :
       {"", "###0.00", "#,###", "00", "####.##", "######", "####0;-###0", "#0.000;-0.000", "#####.########"})
    EXPECT_EQ(FormatNumber(Number::Empty(), pattern), "") << pattern;
  // A real zero stays visible where the pattern asks for a digit.
  EXPECT_EQ(FormatNumber(0.0, "###0.00"), "0.00");
}

TEST(FormatNumber, EmptyPatternGivesThePlainForm) {
  ExpectFormats({
      {0.5, "", "0.5"},
      {1234.5, "", "1234.5"},
      {-2, "", "-2"},
      {0, "", "0"},
      {1.0 / 3.0, "", "0.333333333333333"},
      {1e20, "", "1E+20"},
      {0.00001, "", "1E-05"},
  });
}

TEST(FormatNumber, OptionalDigitsVanishRequiredDigitsStayAndThePointAlwaysShows) {
  ExpectFormats({
      // Live value.
      {3.14159, "###0.00", "3.14"},
      {255, "###0.00", "255.00"},
      {0, "###0.00", "0.00"},
      {-3.14159, "###0.00", "-3.14"},
      // Profile preview: one forced integer digit, or none at all.
      {0, "###0.##", "0."},
      {0.5, "###0.##", "0.5"},
      {1.25, "###0.##", "1.25"},
      {100, "###0.##", "100."},
      {1.999, "###0.##", "2."},
      {-7.1, "###0.##", "-7.1"},
      {0.5, "####.##", ".5"},
      {0, "####.##", "."},
      {20, "####.##", "20."},
      {12.345, "####.##", "12.35"},
      {-0.25, "####.##", "-.25"},
      // Clock parts.
      {0, "00", "00"},
      {5, "00", "05"},
      {59, "00", "59"},
      // Logger number and sample count.
      {0, "######", ""},
      {1234, "######", "1234"},
      {42.5, "######", "43"},
      // Statistics labels and data printout.
      {0, "###0.0", "0.0"},
      {21.25, "###0.0", "21.3"},
      {-21.25, "###0.0", "-21.3"},
      {98.6, "##0.0", "98.6"},
      {1234.56, "##0.0", "1234.6"},
      {3, "#0.00", "3.00"},
      {0.004, "#0.00", "0.00"},
      {0.005, "#0.00", "0.01"},
      // A required digit forces every place to its right.
      {5, "0##", "005"},
  });
}

TEST(FormatNumber, RoundsHalfAwayFromZeroAtTheDecimalTheUserWrote) {
  // 2.675, 1.005, 25.05 and 5.55 lie just under the half in binary; they round as
  // written, not as stored.
  ExpectFormats({
      {2.675, "###0.00", "2.68"},
      {1.005, "###0.00", "1.01"},
      {0.125, "###0.00", "0.13"},
      {-0.125, "###0.00", "-0.13"},
      {9.995, "###0.00", "10.00"},
      {25.05, "####0.0;-###0.0", "25.1"},
      {5.55, "###0.0;-##0.0", "5.6"},
      {2.5, "####0;-###0", "3"},
      {-2.5, "####0;-###0", "-3"},
      {0.5, "#,###", "1"},
      {0.4, "#,###", ""},
      {0.00004, "###0.####", "0."},
      {0.00005, "###0.####", "0.0001"},
  });
}

TEST(FormatNumber, CommaGroupsTheIntegerDigitsByThree) {
  ExpectFormats({
      {0, "#,###", ""},
      {999, "#,###", "999"},
      {1000, "#,###", "1,000"},
      {4096, "#,###", "4,096"},
      {16384, "#,###", "16,384"},
      {1234567, "#,###", "1,234,567"},
      {12.4, "#,###", "12"},
      {-1234, "#,###", "-1,234"},
      {1234.5, "#,##0.00", "1,234.50"},
      {0.5, "#,##0.00", "0.50"},
      // Commas closing the integer places divide by a thousand.
      {1234567, "#,##0,", "1,235"},
  });
}

TEST(FormatNumber, RecordFileTimesKeepEightDecimalsAndValuesTheirModelFormat) {
  ExpectFormats({
      {46347.5, "#####.########", "46347.5"},
      {46347.0 + 47109.0 / 86400.0, "#####.########", "46347.54524306"},
      {46347.0 + 1.0 / 86400.0, "#####.########", "46347.00001157"},
      {46347.123456789, "#####.########", "46347.12345679"},
      {36526, "#####.########", "36526."},
      {0, "#####.########", "."},
      {1.23456, "###0.####", "1.2346"},
      {0.0001, "###0.####", "0.0001"},
      {-40.5, "###0.####", "-40.5"},
      {12.5, "###0.##", "12.5"},
      {19.95, "###0.#", "20."},
      {19.94, "###0.#", "19.9"},
      {-0.04, "###0.#", "-0."},
      {0.0005, "###0.###", "0.001"},
      {3.1, "###0.###", "3.1"},
      {1000.0004, "###0.###", "1000."},
  });
}

TEST(FormatNumber, AxisAndReadoutFormatsShowNegativesThroughTheirSecondSection) {
  ExpectFormats({
      {0, "####0;-###0", "0"},
      {1234, "####0;-###0", "1234"},
      {-5, "####0;-###0", "-5"},
      {-123456, "####0;-###0", "-123456"},
      {1500, "#####0.0;-###0.0", "1500.0"},
      {-1500.25, "#####0.0;-###0.0", "-1500.3"},
      {0, "#####0.0;-###0.0", "0.0"},
      {-7.25, "####0.0;-###0.0", "-7.3"},
      {-3, "###0.0;-##0.0", "-3.0"},
      {7.5, "###0.0;-##0.0", "7.5"},
      {2.675, "###0.00;-##0.00", "2.68"},
      {-1.005, "###0.00;-##0.00", "-1.01"},
      {0.5, "##0.00;-#0.00", "0.50"},
      {-0.125, "##0.00;-#0.00", "-0.13"},
      {0.999, "##0.00;-#0.00", "1.00"},
      {0.1235, "##0.000;-#0.000", "0.124"},
      {-0.0005, "##0.000;-#0.000", "-0.001"},
      {0.05, "#0.000;-0.000", "0.050"},
      {-0.05, "#0.000;-0.000", "-0.050"},
      {0.0995, "#0.000;-0.000", "0.100"},
      {0.01234, "#0.0000;-0.0000", "0.0123"},
      {-0.00005, "#0.0000;-0.0000", "-0.0001"},
      // The section goes by the sign before rounding.
      {-0.4, "####0;-###0", "-0"},
      // A negative section without a sign of its own shows none.
      {-5, "0;0", "5"},
      {-5, "0;(0)", "(5)"},
      // An empty negative section falls back to the first, with a minus.
      {-2, "0.0;", "-2.0"},
      // A third section is for zero.
      {0, "0;-0;zero", "zero"},
      {3, "0;-0;zero", "3"},
  });
}

TEST(FormatNumber, SingleSectionPutsAMinusInFrontEvenWhenTheValueRoundsToZero) {
  ExpectFormats({
      {-0.001, "0.00", "-0.00"},
      {-0.001, "###0.00", "-0.00"},
      {-0.004, "####.##", "-."},
      {-0.0, "0.00", "0.00"},
      {-12, "$0", "-$12"},
  });
}

TEST(FormatNumber, LiteralTextStandsWhereThePatternPutsIt) {
  ExpectFormats({
      {5, "0 V", "5 V"},
      {1234.5, "$#,##0.00", "$1,234.50"},
      {12345, "##-##", "123-45"},
      {5, "##-##", "-5"},
      {1.5, "0.0 mA", "1.5 mA"},
  });
}

TEST(FormatNumber, IntegerDigitsBeyondThePlaceholdersAllShow) {
  ExpectFormats({
      {123, "00", "123"},
      {123456, "####0;-###0", "123456"},
      {1234567, "######", "1234567"},
      {123456.25, "#####.########", "123456.25"},
      {1e20, "0.00", "100000000000000000000.00"},
      {123456789012345.0, "0", "123456789012345"},
  });
}

TEST(FormatNumber, AValueThatIsNotFiniteIsFault6) {
  EXPECT_EQ(FaultOf([] { FormatNumber(std::numeric_limits<double>::infinity(), "0.0"); }), 6);
  EXPECT_EQ(FaultOf([] { FormatNumber(std::nan(""), ""); }), 6);
}

TEST(GeneralNumber, ShowsUpToFifteenDigitsWithoutTrailingZeros) {
  struct Case {
    double value;
    const char* expected;
  };
  for (const Case& c : std::vector<Case>{
           {0, "0"},
           {-0.0, "0"},
           {0.5, "0.5"},
           {-0.25, "-0.25"},
           {12.5, "12.5"},
           {100, "100"},
           {0.1 + 0.2, "0.3"},
           {123456789012345.0, "123456789012345"},
           {1e15, "1E+15"},
           {1e20, "1E+20"},
           {0.0001, "0.0001"},
           {0.00001, "1E-05"},
           {-1.5e-7, "-1.5E-07"},
       })
    EXPECT_EQ(GeneralNumber(c.value), c.expected) << c.value;
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

struct DateCase {
  double value;
  const char* pattern;
  const char* expected;
};

void ExpectDates(const std::vector<DateCase>& cases) {
  for (const DateCase& c : cases)
    EXPECT_EQ(FormatDateTime(c.value, c.pattern), c.expected)
        << "value " << c.value << " pattern \"" << c.pattern << "\"";
}

TEST(FormatDateTime, MonthFirstPatternsUseATwelveHourClock) {
  ExpectDates({
      {kAfternoon, "mm/dd/yy hh:mm:ss am/pm", "11/21/26 01:05:09 pm"},
      {kMorning, "mm/dd/yy hh:mm:ss am/pm", "03/04/07 09:07:05 am"},
      {kMidnight, "mm/dd/yy hh:mm:ss am/pm", "01/02/00 12:30:00 am"},
      {kNoon, "mm/dd/yy hh:mm:ss am/pm", "12/31/99 12:00:00 pm"},
      {kAfternoon, "m/d/yy hh:mm:ss am/pm", "11/21/26 01:05:09 pm"},
      {kMorning, "m/d/yy hh:mm:ss am/pm", "3/4/07 09:07:05 am"},
      {kMidnight, "m/d/yy hh:mm:ss am/pm", "1/2/00 12:30:00 am"},
      {kAfternoon, "m/d/yy", "11/21/26"},
      {kMorning, "m/d/yy", "3/4/07"},
      {kNoon, "m/d/yy", "12/31/99"},
      {kAfternoon, "hh:mm:ss am/pm", "01:05:09 pm"},
      {kMidnight, "hh:mm:ss am/pm", "12:30:00 am"},
      {kNoon, "hh:mm:ss am/pm", "12:00:00 pm"},
      {kAfternoon, "h:mm am/pm", "1:05 pm"},
      {kMorning, "h:mm am/pm", "9:07 am"},
      {kMidnight, "h:mm am/pm", "12:30 am"},
      {kAfternoon, "h am/pm", "1 pm"},
      {kMidnight, "h am/pm", "12 am"},
      {kNoon, "h am/pm", "12 pm"},
      {kAfternoon, "mm/dd", "11/21"},
      {kMorning, "mm/dd", "03/04"},
  });
}

TEST(FormatDateTime, DayFirstPatternsUseATwentyFourHourClock) {
  ExpectDates({
      {kAfternoon, "dd/mm/yy hh:mm:ss", "21/11/26 13:05:09"},
      {kMorning, "dd/mm/yy hh:mm:ss", "04/03/07 09:07:05"},
      {kMidnight, "dd/mm/yy hh:mm:ss", "02/01/00 00:30:00"},
      {kAfternoon, "d/m/yy hh:mm:ss", "21/11/26 13:05:09"},
      {kMorning, "d/m/yy hh:mm:ss", "4/3/07 09:07:05"},
      {kNoon, "d/m/yy hh:mm:ss", "31/12/99 12:00:00"},
      {kAfternoon, "d/m/yy", "21/11/26"},
      {kMorning, "d/m/yy", "4/3/07"},
      {kAfternoon, "hh:mm:ss", "13:05:09"},
      {kMidnight, "hh:mm:ss", "00:30:00"},
      {kAfternoon, "h:mm", "13:05"},
      {kMorning, "h:mm", "9:07"},
      {kMidnight, "h:mm", "0:30"},
      {kAfternoon, "   hh", "   13"},
      {kMorning, "   hh", "   09"},
      {kMidnight, "   hh", "   00"},
      {kAfternoon, "dd/mm", "21/11"},
      {kMorning, "dd/mm", "04/03"},
  });
}

TEST(FormatDateTime, RoundsToTheSecondSoTheLastFractionRollsIntoTheNextDay) {
  const double almostMidnight = At(36525, 23, 59, 59.6);  // 1999-12-31 23:59:59.6
  ExpectDates({
      {almostMidnight, "mm/dd/yy hh:mm:ss am/pm", "01/01/00 12:00:00 am"},
      {almostMidnight, "d/m/yy hh:mm:ss", "1/1/00 00:00:00"},
      {At(36525, 23, 59, 59.4), "d/m/yy hh:mm:ss", "31/12/99 23:59:59"},
      {At(36525, 10, 17, 22.5), "hh:mm:ss", "10:17:23"},
  });
}

TEST(FormatDateTime, OtherTokensAndCases) {
  ExpectDates({
      {kAfternoon, "yyyy-mm-dd", "2026-11-21"},
      {kNoon, "dd.mm.yyyy", "31.12.1999"},
      {kMidnight, "yyyy", "2000"},
      {kAfternoon, "hh:nn", "13:05"},
      {kAfternoon, "h:m:s", "13:5:9"},
      {kAfternoon, "hhmm", "1305"},
      {kAfternoon, "hh:mm AM/PM", "01:05 PM"},
      {kMorning, "hh:mm AM/PM", "09:07 AM"},
      {kMorning, "h a/p", "9 a"},
      {kAfternoon, "MM/DD/YY HH:MM", "11/21/26 13:05"},
      {kAfternoon, "y", "325"},
      {kAfternoon, "at h", "at 13"},
      {kAfternoon, "", ""},
  });
}

TEST(FormatDateTime, ADateOutsideTheYears100To9999IsFault6) {
  EXPECT_EQ(FaultOf([] { FormatDateTime(1e20, "m/d/yy"); }), 6);
  EXPECT_EQ(FaultOf([] { FormatDateTime(-700000, "m/d/yy"); }), 6);
  EXPECT_EQ(FaultOf([] { FormatDateTime(std::nan(""), "hh"); }), 6);
  EXPECT_EQ(FormatDateTime(2958465.5, "yyyy-mm-dd hh"), "9999-12-31 12");
  EXPECT_EQ(FormatDateTime(-657434, "yyyy-mm-dd"), "0100-01-01");
}

TEST(LeadingNumber, ReadsTheLongestLeadingDecimalNumber) {
  struct Case {
    const char* text;
    double expected;
  };
  for (const Case& c : std::vector<Case>{
           {"12abc", 12},   {"  -3.5x", -3.5}, {"abc", 0},     {"", 0},
           {"   ", 0},      {"-", 0},          {".", 0},       {".5", 0.5},
           {"-.25", -0.25}, {"+7", 7},         {"5.", 5},      {"1e3", 1000},
           {"1E-2x", 0.01}, {"2.5e+2", 250},   {"12E", 12},    {"12e+", 12},
           {"12Ex5", 12},   {"1.2.3", 1.2},    {"4800", 4800}, {"46347.54524306", 46347.54524306},
           {"\t8", 8},      {"12 34", 12},     {"1e-400", 0},  {"0.000e999", 0},
       })
    EXPECT_EQ(LeadingNumber(c.text), c.expected) << '"' << c.text << '"';
}

TEST(LeadingNumber, ANumberBeyondTheRangeOfADoubleIsFault6) {
  EXPECT_EQ(FaultOf([] { LeadingNumber("1e400"); }), 6);
  EXPECT_EQ(FaultOf([] { LeadingNumber("-0.5e99999999999"); }), 6);
}

}  // namespace
}  // namespace quillet
