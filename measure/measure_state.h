#pragma once
// The measurement model's part of the state: the probes of probes.dat, the unit names of
// the temperature loggers, and the probe choice in progress.
#include <cstdint>
#include <string>

#include "core/bounded_table.h"
#include "core/number.h"

namespace quillet {

using TempUnitTable = Table<std::string, 0, 4>;  // TempUnitNames

// The probes of probes.dat: three function groups of three sections of ten rows. Rows
// are numbered 1..30 within their group, so section 2 holds rows 11..20.
struct ProbeRow {
  std::string label, unit;
  Number factor;
};

struct ProbeGroup {
  std::string title;
  Table<std::string, 1, 3> sectionTitles;
  Table<ProbeRow, 1, 30> rows;
};

struct ProbeTable {
  Table<ProbeGroup, 1, 3> groups;
};

struct MeasureState {
  std::int16_t ProbeUnset = 0;        // a model 16 logger has no probe yet
  // The last reading of probes.dat met a factor that is no number (and left the probe unset).
  std::int16_t ProbeFactorNotNumber = 0;
  Number ProbeSlot;                   // its slot in the probe memory
  std::int16_t RescaleApproved = 0;   // the user agreed to convert the record on screen again
};

}  // namespace quillet
