#pragma once
// What the printouts keep between their steps: the answers of PrintOpt, and how the last
// printout ended.
#include <cstdint>

namespace quillet {

struct PrintingState {
  std::int16_t PrintCancelled = 0;  // 1 = Cancel in PrintOpt
  std::int16_t PrintShownOnly = 0;  // 1 = the shown samples, 0 = the whole record
  // The fault that sent the last printout to its ending (32755 for Cancel in the printer
  // dialog), 0 when it ran through.
  int PrintFault = 0;
};

}  // namespace quillet
