#pragma once
// Probes of model 16 loggers: the table of probes.dat and the choice remembered per
// logger serial.
namespace quillet {
struct App;
void LoadProbeTable(App& app);
}  // namespace quillet
