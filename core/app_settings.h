#pragma once
// The five settings of logger1.ini, the edition of this build, and the date and time
// patterns in force.
#include <cstdint>
#include <string>

#include "core/number.h"

namespace quillet {

struct AppSettings {
  std::int16_t ComPort = 0;   // 1..4; 0 means none ("No Logger")
  Number LanguageIndex;       // 1..8 when valid
  Number BaudRate = 1200;     // 1200 or 4800
  Number UseFahrenheit;       // 1 degF, 0 degC
  Number UsDateFormat;        // 1 month first, 0 day first
  // Not in the file: fixed at start, it chooses the about box and the window title.
  std::int16_t EditionFlag = 1;
};

// Date and time patterns, set by mnuUsa or mnuEur.
struct DateFormats {
  std::string FmtStampLong, FmtStamp, FmtDate, FmtTime, FmtHourMinute, FmtHour;
  std::string DateStyle;
};

}  // namespace quillet
