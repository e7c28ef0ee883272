// Conversations that arrive with the download work: the probe table. Until then a model
// 16 logger has no probe.
#include "core/app.h"
#include "link/live_reading.h"
#include "measure/probe_table.h"

namespace quillet {

void LoadProbeTable(App& app) {
  app.s.ProbeUnset = 1;
  app.s.logger.LiveUnitText.clear();
}

}  // namespace quillet
