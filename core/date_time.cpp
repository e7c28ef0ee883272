#include "core/date_time.h"

#include <cmath>

#include "core/fault.h"

namespace quillet {

namespace {

// Days from 1970-01-01 to a civil date (Howard Hinnant's algorithm).
std::int64_t DaysFromCivil(std::int64_t y, unsigned m, unsigned d) {
  y -= m <= 2;
  const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
  const unsigned yoe = static_cast<unsigned>(y - era * 400);
  const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + static_cast<std::int64_t>(doe) - 719468;
}

void CivilFromDays(std::int64_t z, int& y, int& m, int& d) {
  z += 719468;
  const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const unsigned doe = static_cast<unsigned>(z - era * 146097);
  const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const std::int64_t yy = static_cast<std::int64_t>(yoe) + era * 400;
  const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const unsigned mp = (5 * doy + 2) / 153;
  d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  y = static_cast<int>(yy + (m <= 2));
}

const std::int64_t kEpochOffset = DaysFromCivil(1899, 12, 30);

// The platform's date range: 0100-01-01 to 9999-12-31.
constexpr double kFirstDay = -657434.0;
constexpr double kDayAfterLast = 2958466.0;

}  // namespace

std::int64_t DaySerial(int year, int month, int day) {
  // Months outside 1..12 roll into neighbouring years, as date arithmetic expects.
  std::int64_t y = year + (month - 1) / 12;
  int m = (month - 1) % 12;
  if (m < 0) {
    m += 12;
    --y;
  }
  return DaysFromCivil(y, static_cast<unsigned>(m + 1), 1) + (day - 1) - kEpochOffset;
}

DateTime MakeDateTime(const DateParts& p) {
  const double days = static_cast<double>(DaySerial(p.year, p.month, p.day));
  const double secs = p.hour * 3600.0 + p.minute * 60.0 + p.second;
  return days + secs / kSecondsPerDay;
}

DateParts SplitDateTime(DateTime t) {
  // Work in whole seconds from the epoch, rounded, so 23:59:59.6 shows as the next day.
  const double totalSeconds = std::round(t * kSecondsPerDay);
  if (!(totalSeconds >= kFirstDay * kSecondsPerDay && totalSeconds < kDayAfterLast * kSecondsPerDay))
    throw Fault(kFaultOverflow, "date out of range");
  std::int64_t secs = static_cast<std::int64_t>(totalSeconds);
  std::int64_t days = secs >= 0 ? secs / 86400 : -((-secs + 86399) / 86400);
  std::int64_t rest = secs - days * 86400;
  DateParts p;
  CivilFromDays(days + kEpochOffset, p.year, p.month, p.day);
  p.hour = static_cast<int>(rest / 3600);
  p.minute = static_cast<int>((rest % 3600) / 60);
  p.second = static_cast<int>(rest % 60);
  return p;
}

int DaysInMonth(int year, int month) {
  static const int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (month < 1 || month > 12) return 31;
  if (month == 2) {
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return leap ? 29 : 28;
  }
  return kDays[month - 1];
}

}  // namespace quillet
