#pragma once
// Date-time values: days since 1899-12-30 with the time of day as the fraction, in local
// time — the serial date of spreadsheets, so record files interchange with them.
#include <cstdint>

namespace quillet {

using DateTime = double;

struct DateParts {
  int year = 1899;
  int month = 12;
  int day = 30;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

constexpr double kSecondsPerDay = 86400.0;

// Whole days from 1899-12-30 to the given civil date (proleptic Gregorian).
std::int64_t DaySerial(int year, int month, int day);
DateTime MakeDateTime(const DateParts& p);
// Splits a date-time into its parts, the time of day rounded to the nearest second, as
// the platform does when it shows a date. Before 1899-12-30 the count stays linear:
// -0.25 is 1899-12-29 18:00. Outside the years 100 to 9999, or not a number at all, it
// is Fault 6 (overflow).
DateParts SplitDateTime(DateTime t);
int DaysInMonth(int year, int month);

}  // namespace quillet
