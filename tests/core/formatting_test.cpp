// Dates and the picture formatting of numbers and date-times.
#include "core/formatting.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "support/fake_platform.h"

namespace quillet {
namespace {

using testing::FaultOf;

TEST(DaySerial, CountsDaysFromTheLastDaysOf1899AndRollsOverflowingPartsIntoTheNeighbours) {
  for (auto [y, m, d, expected] : std::vector<std::tuple<int, int, int, long long>>{
           {1899, 12, 29, -1}, {1900, 3, 1, 61}, {100, 1, 1, -657434}, {9999, 12, 31, 2958465}})
    EXPECT_EQ(DaySerial(y, m, d), expected) << y << "-" << m << "-" << d;  // 1900 has no 29 February
  EXPECT_DOUBLE_EQ(MakeDateTime({2026, 11, 21, 6, 0, 0}), 46347.25);
  EXPECT_EQ(DaySerial(2025, 13, 1), DaySerial(2026, 1, 1));
  EXPECT_EQ(DaySerial(2026, 0, 1), DaySerial(2025, 12, 1));
  for (auto [y, m, days] : {std::tuple{2024, 2, 29}, {2023, 2, 28}, {2000, 2, 29}, {1900, 2, 28}})
    EXPECT_EQ(DaysInMonth(y, m), days) << y << "-" << m;
}

TEST(FormatNumber, FollowsThePatternsPlacesSectionsAndLiteralsRoundingHalfAwayFromZero) {
  for (auto [value, pattern, expected] : std::vector<std::tuple<Number, const char*, const char*>>{
           {Number::Empty(), "0.00", ""}, {1e20, "", "1E+20"}, {-1.5e-7, "", "-1.5E-07"},
           {0, "###0.##", "0."}, {1.999, "###0.##", "2."}, {-0.25, "####.##", "-.25"}, {5, "0##", "005"},
           {0.4, "#,###", ""}, {0.00005, "###0.####", "0.0001"},
           // Half away from zero at the decimal the user wrote, not as the binary value lies.
           {2.675, "###0.00", "2.68"}, {9.995, "###0.00", "10.00"},
           // Commas group by three; commas closing the integer places divide by a thousand.
           {1234567, "#,###", "1,234,567"}, {1234567, "#,##0,", "1,235"},
           {46347.0 + 47109.0 / 86400.0, "#####.########", "46347.54524306"},  // record file times
           {1e20, "0.00", "100000000000000000000.00"},
           // The section goes by the sign before rounding; one section puts a minus in front.
           {-1500.25, "#####0.0;-###0.0", "-1500.3"}, {0, "#####0.0;-###0.0", "0.0"},
           {-0.4, "####0;-###0", "-0"}, {-5, "0;(0)", "(5)"}, {-2, "0.0;", "-2.0"}, {0, "0;-0;zero", "zero"},
           {-0.001, "0.00", "-0.00"}, {1.5, "0.0 mA", "1.5 mA"}, {5, "##-##", "-5"}})
    EXPECT_EQ(FormatNumber(value, pattern), expected) << value.Value() << " \"" << pattern << "\"";
  EXPECT_EQ(FaultOf([] { FormatNumber(std::numeric_limits<double>::infinity(), "0.0"); }), 6);
}

TEST(FormatDateTime, MonthFirstPatternsUseATwelveHourClockAndDayFirstOnesTwentyFourHours) {
  // 2026-11-21 13:05:09, 2007-03-04 09:07:05 and 2000-01-02 00:30:00.
  const double pm = 46347 + 47109 / 86400.0, am = 39145 + 32825 / 86400.0, night = 36527 + 1800 / 86400.0;
  for (auto [value, pattern, expected] : std::vector<std::tuple<double, const char*, const char*>>{
           {pm, "mm/dd/yy hh:mm:ss am/pm", "11/21/26 01:05:09 pm"},
           {night, "mm/dd/yy hh:mm am/pm", "01/02/00 12:30 am"},
           {am, "m/d/yy hh:mm:ss AM/PM", "3/4/07 09:07:05 AM"},
           {am, "dd/mm/yy hh:mm:ss", "04/03/07 09:07:05"},
           {36525 + 86399.6 / 86400, "d/m/yy h:mm:ss", "1/1/00 0:00:00"},  // rounded to the second
           {pm, "yyyy-mm-dd hh:nn", "2026-11-21 13:05"}, {pm, "hhmm", "1305"}, {am, "h a/p", "9 a"},
           {pm, "MM/DD/YY HH:MM", "11/21/26 13:05"}, {pm, "y", "325"}, {pm, "at h", "at 13"}})
    EXPECT_EQ(FormatDateTime(value, pattern), expected) << value << " \"" << pattern << "\"";
  // The parts come back rounded to the second, within the years 100 to 9999.
  for (int s = 0; s < 86400; s += 7) {
    const DateParts out = SplitDateTime(MakeDateTime({2026, 11, 21, s / 3600, s / 60 % 60, s % 60}));
    ASSERT_EQ(out.day * 86400 + out.hour * 3600 + out.minute * 60 + out.second, 21 * 86400 + s);
  }
  for (double t : {-657435.0, 2958466.0, 1e300}) EXPECT_EQ(FaultOf([t] { SplitDateTime(t); }), 6) << t;
}

TEST(LeadingNumber, ReadsTheLongestLeadingDecimalNumber) {
  for (auto [text, expected] : std::vector<std::pair<const char*, double>>{
           {"  -3.5x", -3.5}, {"   ", 0}, {"abc", 0}, {"-.25", -0.25}, {"+7", 7}, {"1E-2x", 0.01},
           {"2.5e+2", 250}, {"12E", 12}, {"12e+", 12}, {"1.2.3", 1.2}, {"\t8", 8}, {"1e-400", 0},
           {"0.000e999", 0}})
    EXPECT_EQ(LeadingNumber(text), expected) << '"' << text << '"';
  for (const char* text : {"1e400", "-0.5e99999999999"})
    EXPECT_EQ(FaultOf([text] { LeadingNumber(text); }), 6) << text;
}

}  // namespace
}  // namespace quillet
