#pragma once
// The probe chosen for each of the last loggers of model 16, by serial, as logger1.ini
// keeps it: slots 1..11, slot 0 unused, slot 12 a spare that the file does not hold.
#include <string>

#include "core/bounded_table.h"
#include "core/number.h"

namespace quillet {

struct ProbeMemoryTables {
  Table<Number, 0, 12> ProbeSerial, ProbeFactor;
  Table<std::string, 0, 12> ProbeUnit, ProbeLabel;
};

}  // namespace quillet
