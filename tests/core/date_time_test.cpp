#include "core/date_time.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/fake_platform.h"

namespace quillet {
namespace {

TEST(DaySerial, CountsDaysFromTheLastDaysOf1899AndRollsOverflowingPartsIntoTheNeighbours) {
  for (auto [y, m, d, expected] : std::vector<std::tuple<int, int, int, long long>>{
           {1899, 12, 30, 0}, {1899, 12, 29, -1}, {1900, 3, 1, 61},  // 1900 has no 29 February
           {2026, 11, 21, 46347}, {100, 1, 1, -657434}, {9999, 12, 31, 2958465}})
    EXPECT_EQ(DaySerial(y, m, d), expected) << y << "-" << m << "-" << d;
  EXPECT_EQ(DaySerial(2025, 13, 1), DaySerial(2026, 1, 1));
  EXPECT_EQ(DaySerial(2026, 0, 1), DaySerial(2025, 12, 1));
  EXPECT_EQ(DaySerial(2026, -12, 1), DaySerial(2024, 12, 1));
  EXPECT_EQ(DaySerial(2024, 2, 30), DaySerial(2024, 3, 1));
  for (auto [y, m, days] : {std::tuple{2024, 2, 29}, {2023, 2, 28}, {2000, 2, 29}, {1900, 2, 28}, {2026, 4, 30}})
    EXPECT_EQ(DaysInMonth(y, m), days) << y << "-" << m;
}

TEST(DateTime, SplitGivesBackThePartsRoundedToTheSecond) {
  EXPECT_DOUBLE_EQ(MakeDateTime({2026, 11, 21, 6, 0, 0}), 46347.25);
  for (auto [value, p] : std::vector<std::pair<double, DateParts>>{
           {36525 + 86399.6 / 86400.0, {2000, 1, 1, 0, 0, 0}},
           {36525 + 86399.4 / 86400.0, {1999, 12, 31, 23, 59, 59}},
           {-0.25, {1899, 12, 29, 18, 0, 0}}}) {
    const DateParts o = SplitDateTime(value);
    EXPECT_EQ(std::vector<int>({o.year, o.month, o.day, o.hour, o.minute, o.second}),
              std::vector<int>({p.year, p.month, p.day, p.hour, p.minute, p.second}))
        << value;
  }
  for (int s = 0; s < 86400; s += 7) {
    const DateParts out = SplitDateTime(MakeDateTime({2026, 11, 21, s / 3600, s / 60 % 60, s % 60}));
    ASSERT_EQ(out.day * 86400 + out.hour * 3600 + out.minute * 60 + out.second, 21 * 86400 + s);
  }
  for (double t : {-657435.0, 2958466.0, 1e300}) EXPECT_EQ(testing::FaultOf([t] { SplitDateTime(t); }), 6) << t;
}

}  // namespace
}  // namespace quillet
