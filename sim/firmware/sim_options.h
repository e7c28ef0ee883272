#pragma once
// Command line of quillet-sim.
#include <string>
#include <vector>

#include "sim/firmware/logger_config.h"

namespace quillet::sim {

struct SimOptions {
  LoggerConfig config;
  std::string linkPath;  // symlink to the slave device, empty for none
  bool verbose = false;
  bool help = false;
};

// Reads the arguments after the program name; "--name value" and "--name=value" both work.
// Throws std::invalid_argument with a one-line message for an unknown option, a missing
// or malformed value, or a configuration no logger could have.
SimOptions ParseSimOptions(const std::vector<std::string>& args);

// Seconds in "90s", "15m", "3h", "2d", "1w", "6mo" (30-day months), "1y" (365 days) or a
// bare number of seconds; fractions are allowed ("1.5h"). Throws std::invalid_argument.
double ParseDuration(const std::string& text);

std::string SimUsage();

}  // namespace quillet::sim
