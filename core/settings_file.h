#pragma once
// logger1.ini: five settings, the probe choices of the last loggers and the user's scale
// tables, read back strictly by position. Only the tail of each settings line counts.
#include <string>

#include "core/app_settings.h"
#include "core/probe_memory.h"
#include "core/scale_tables.h"

namespace quillet {

constexpr const char* kSettingsFileName = "logger1.ini";

// Where the file's values live in the state.
struct SettingsFields {
  AppSettings& settings;
  ProbeMemoryTables& probes;
  ScaleTables& scales;
  UnitTable& unitByModel;
};

// Faults go to the caller; what was read before a fault stays.
void ReadSettingsFile(const std::string& path, const SettingsFields& f);
// Rewrites the whole file atomically from the present values.
void WriteSettingsFile(const std::string& path, const SettingsFields& f);

}  // namespace quillet
