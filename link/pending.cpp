// Conversations that arrive with the download work: the probe table and the clock
// dialog. Until then a model 16 logger has no probe and the clock dialog is not shown.
#include "core/app.h"
#include "link/live_reading.h"
#include "measure/probe_table.h"

namespace quillet {

void LoadProbeTable(App& app) {
  app.s.ProbeUnset = 1;
  app.s.logger.LiveUnitText.clear();
}

void HideTimesetDialog(App& app) { (void)app; }

}  // namespace quillet
