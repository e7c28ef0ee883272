#include "core/formatting.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "support/fake_platform.h"

namespace quillet {
namespace {

using testing::FaultOf;

TEST(FormatNumber, FollowsThePatternsPlaceholdersSectionsAndLiteralsRoundingHalfAwayFromZero) {
  struct Case {
    Number value;
    const char* pattern;
    const char* expected;
  };
  for (const Case& c : std::vector<Case>{
           {Number::Empty(), "###0.00", ""},
           {0.5, "", "0.5"},
           {1e20, "", "1E+20"},
           {3.14159, "###0.00", "3.14"},
           {0, "###0.##", "0."},  // the point always shows
           {100, "###0.##", "100."},
           {1.999, "###0.##", "2."},
           {-0.25, "####.##", "-.25"},
           {0, "####.##", "."},
           {5, "00", "05"},
           {0, "######", ""},
           {42.5, "######", "43"},
           {5, "0##", "005"},  // a required digit forces the rest
           // Half away from zero at the decimal the user wrote, not as the binary value lies.
           {2.675, "###0.00", "2.68"},
           {-0.125, "###0.00", "-0.13"},
           {9.995, "###0.00", "10.00"},
           {0.4, "#,###", ""},
           {0.00004, "###0.####", "0."},
           {0.00005, "###0.####", "0.0001"},
           // Commas group by three; commas closing the integer places divide by a thousand.
           {1234567, "#,###", "1,234,567"},
           {1234.5, "#,##0.00", "1,234.50"},
           {1234567, "#,##0,", "1,235"},
           {46347.0 + 47109.0 / 86400.0, "#####.########", "46347.54524306"},  // record file times
           {1e20, "0.00", "100000000000000000000.00"},  // integer digits beyond the placeholders all show
           // The section goes by the sign before rounding.
           {-1500.25, "#####0.0;-###0.0", "-1500.3"},
           {0, "#####0.0;-###0.0", "0.0"},
           {-0.4, "####0;-###0", "-0"},
           {-5, "0;(0)", "(5)"},
           {-2, "0.0;", "-2.0"},
           {0, "0;-0;zero", "zero"},
           {-0.001, "0.00", "-0.00"},  // one section puts a minus in front even of a zero
           {-12, "$0", "-$12"},
           {1.5, "0.0 mA", "1.5 mA"},
           {5, "##-##", "-5"},
       })
    EXPECT_EQ(FormatNumber(c.value, c.pattern), c.expected)
        << "value " << c.value.Value() << " pattern \"" << c.pattern << "\"";
  EXPECT_EQ(FaultOf([] { FormatNumber(std::numeric_limits<double>::infinity(), "0.0"); }), 6);
  for (auto [value, expected] : std::vector<std::pair<double, const char*>>{
           {0, "0"}, {-0.25, "-0.25"}, {100, "100"}, {1e15, "1E+15"}, {-1.5e-7, "-1.5E-07"}})
    EXPECT_EQ(GeneralNumber(value), expected) << value;
}

// Date-times from independently known day counts: 2026-11-21 is day 46347, 2007-03-04
// day 39145, 1999-12-31 day 36525.
constexpr double At(double day, int hour, int minute, double second) {
  return day + (hour * 3600 + minute * 60 + second) / 86400.0;
}

TEST(FormatDateTime, MonthFirstPatternsUseATwelveHourClockAndDayFirstOnesTwentyFourHours) {
  const double afternoon = At(46347, 13, 5, 9), morning = At(39145, 9, 7, 5), midnight = At(36527, 0, 30, 0);
  struct Case {
    double value;
    const char* pattern;
    const char* expected;
  };
  for (const Case& c : std::vector<Case>{
           {afternoon, "mm/dd/yy hh:mm:ss am/pm", "11/21/26 01:05:09 pm"},
           {midnight, "mm/dd/yy hh:mm:ss am/pm", "01/02/00 12:30:00 am"},
           {morning, "m/d/yy hh:mm:ss am/pm", "3/4/07 09:07:05 am"},
           {morning, "dd/mm/yy hh:mm:ss", "04/03/07 09:07:05"},
           {midnight, "h:mm", "0:30"},
           // Rounded to the second, so the last fraction of a day rolls into the next.
           {At(36525, 23, 59, 59.6), "d/m/yy hh:mm:ss", "1/1/00 00:00:00"},
           {afternoon, "yyyy-mm-dd", "2026-11-21"},
           {afternoon, "hh:nn", "13:05"},
           {afternoon, "hhmm", "1305"},
           {afternoon, "hh:mm AM/PM", "01:05 PM"},
           {morning, "h a/p", "9 a"},
           {afternoon, "MM/DD/YY HH:MM", "11/21/26 13:05"},
           {afternoon, "y", "325"},
           {afternoon, "at h", "at 13"},
       })
    EXPECT_EQ(FormatDateTime(c.value, c.pattern), c.expected) << c.value << " \"" << c.pattern << "\"";
  EXPECT_EQ(FaultOf([] { FormatDateTime(1e20, "m/d/yy"); }), 6);
}

TEST(LeadingNumber, ReadsTheLongestLeadingDecimalNumber) {
  for (auto [text, expected] : std::vector<std::pair<const char*, double>>{
           {"  -3.5x", -3.5}, {"abc", 0}, {"-.25", -0.25}, {"+7", 7}, {"1E-2x", 0.01}, {"2.5e+2", 250},
           {"12E", 12}, {"12e+", 12}, {"1.2.3", 1.2}, {"\t8", 8}, {"1e-400", 0}, {"0.000e999", 0}})
    EXPECT_EQ(LeadingNumber(text), expected) << '"' << text << '"';
  EXPECT_EQ(FaultOf([] { LeadingNumber("1e400"); }), 6);
  EXPECT_EQ(FaultOf([] { LeadingNumber("-0.5e99999999999"); }), 6);
}

}  // namespace
}  // namespace quillet
