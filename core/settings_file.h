#pragma once
// logger1.ini: five settings, the probe choices of the last loggers and the user's scale
// tables, read back strictly by position. Only the tail of each settings line counts.
#include <string>

namespace quillet {
struct App;

constexpr const char* kSettingsFileName = "logger1.ini";

// Steps 1 to 8: faults go to the caller; what was read before a fault stays.
void ReadSettings(App& app);
// Rewrites the whole file atomically from the present values.
void WriteSettings(App& app);
std::string SettingsPath(const App& app);

}  // namespace quillet
