#pragma once
// The text of logger1.ini for tests: the settings lines, the probe memory entries 1..11,
// 62 empty scale rows and the profile unit row. Header-only, so the window tests use it too.
#include <map>
#include <sstream>
#include <string>

namespace quillet::testing {

struct ProbeEntry {
  std::string serial, factor, unit, label;
};

struct SettingsOptions {
  int comPort = 1, language = 1, baud = 1200, fahrenheit = 0, usDate = 0;
  std::map<int, ProbeEntry> probes;  // memory entry (1..11) -> what it holds
  std::string unit32;                // the unit of the custom profile (model 32)
};

inline std::string SettingsFileText(const SettingsOptions& o) {
  std::ostringstream f;
  f << "\"[PORT etc]\"\n\"comm port =  " << o.comPort << "\"\n\"language =  " << o.language
    << "\"\n\"baud =  " << o.baud << "\"\n\"Fahrenheit =  " << o.fahrenheit
    << "\"\n\"US Date Format =  " << o.usDate << "\"\n\"[probe data]\"\n";
  for (int i = 1; i <= 11; ++i) {
    auto it = o.probes.find(i);
    if (it == o.probes.end()) {
      f << ",,\"\",\"\"\n";
    } else {
      const ProbeEntry& p = it->second;
      f << p.serial << "," << p.factor << ",\"" << p.unit << "\",\"" << p.label << "\"\n";
    }
  }
  for (int i = 0; i <= 61; ++i) f << ",,,,,,,\n";
  // Units of the profile models 20, 21, 22, 23, 29, 30, 31, 32.
  f << "\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"" << o.unit32 << "\"\n";
  return f.str();
}

}  // namespace quillet::testing
