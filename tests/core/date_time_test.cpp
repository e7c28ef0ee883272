#include "core/date_time.h"

#include <gtest/gtest.h>

#include <vector>

#include "core/fault.h"

namespace quillet {
namespace {

TEST(DaySerial, CountsDaysFromTheLastDaysOf1899) {
  struct Case {
    int year, month, day;
    long long expected;
  };
  for (const Case& c : std::vector<Case>{
           {1899, 12, 30, 0},
           {1899, 12, 31, 1},
           {1899, 12, 29, -1},
           {1900, 1, 1, 2},
           {1900, 3, 1, 61},  // 1900 has no 29 February
           {2000, 1, 1, 36526},
           {2024, 2, 29, 45351},
           {2026, 11, 21, 46347},
           {100, 1, 1, -657434},
           {9999, 12, 31, 2958465},
       })
    EXPECT_EQ(DaySerial(c.year, c.month, c.day), c.expected) << c.year << "-" << c.month << "-" << c.day;
}

TEST(DaySerial, MonthsAndDaysOutsideTheirRangeRollIntoTheNeighbours) {
  EXPECT_EQ(DaySerial(2025, 13, 1), DaySerial(2026, 1, 1));
  EXPECT_EQ(DaySerial(2026, 0, 1), DaySerial(2025, 12, 1));
  EXPECT_EQ(DaySerial(2026, -11, 1), DaySerial(2025, 1, 1));
  EXPECT_EQ(DaySerial(2026, -12, 1), DaySerial(2024, 12, 1));
  EXPECT_EQ(DaySerial(2026, 3, 0), DaySerial(2026, 2, 28));
  EXPECT_EQ(DaySerial(2024, 2, 30), DaySerial(2024, 3, 1));
}

TEST(DateTime, TimeOfDayIsTheFractionOfTheDay) {
  EXPECT_DOUBLE_EQ(MakeDateTime({2026, 11, 21, 12, 0, 0}), 46347.5);
  EXPECT_DOUBLE_EQ(MakeDateTime({2026, 11, 21, 6, 0, 0}), 46347.25);
  EXPECT_DOUBLE_EQ(MakeDateTime({1899, 12, 30, 0, 0, 1}), 1.0 / 86400.0);
}

TEST(DateTime, SplitGivesBackThePartsRoundedToTheSecond) {
  struct Case {
    double value;
    DateParts expected;
  };
  for (const Case& c : std::vector<Case>{
           {46347.5, {2026, 11, 21, 12, 0, 0}},
           {46347 + 47109 / 86400.0, {2026, 11, 21, 13, 5, 9}},
           {36525 + 86399.6 / 86400.0, {2000, 1, 1, 0, 0, 0}},
           {36525 + 86399.4 / 86400.0, {1999, 12, 31, 23, 59, 59}},
           {0, {1899, 12, 30, 0, 0, 0}},
           {-0.25, {1899, 12, 29, 18, 0, 0}},
           {45351.75, {2024, 2, 29, 18, 0, 0}},
       }) {
    const DateParts p = SplitDateTime(c.value);
    EXPECT_EQ(p.year, c.expected.year) << c.value;
    EXPECT_EQ(p.month, c.expected.month) << c.value;
    EXPECT_EQ(p.day, c.expected.day) << c.value;
    EXPECT_EQ(p.hour, c.expected.hour) << c.value;
    EXPECT_EQ(p.minute, c.expected.minute) << c.value;
    EXPECT_EQ(p.second, c.expected.second) << c.value;
  }
}

TEST(DateTime, EverySecondOfADaySurvivesMakeAndSplit) {
  for (int s = 0; s < 86400; s += 7) {
    const DateParts in{2026, 11, 21, s / 3600, s / 60 % 60, s % 60};
    const DateParts out = SplitDateTime(MakeDateTime(in));
    ASSERT_EQ(out.day, 21) << s;
    ASSERT_EQ(out.hour * 3600 + out.minute * 60 + out.second, s);
  }
}

TEST(DateTime, OutsideTheYears100To9999SplittingIsFault6) {
  for (double t : {-657435.0, 2958466.0, 1e300}) {
    try {
      SplitDateTime(t);
      ADD_FAILURE() << t;
    } catch (const Fault& f) {
      EXPECT_EQ(f.number(), 6);
    }
  }
}

TEST(DaysInMonth, FebruaryFollowsTheGregorianLeapYears) {
  EXPECT_EQ(DaysInMonth(2024, 2), 29);
  EXPECT_EQ(DaysInMonth(2023, 2), 28);
  EXPECT_EQ(DaysInMonth(2000, 2), 29);
  EXPECT_EQ(DaysInMonth(1900, 2), 28);
  EXPECT_EQ(DaysInMonth(2026, 4), 30);
  EXPECT_EQ(DaysInMonth(2026, 12), 31);
}

}  // namespace
}  // namespace quillet
