// probes.dat, read when a model 16 logger's header comes in and by the probe dialogs.
#include <cstddef>
#include <cstdint>

#include "fuzz_support.h"
#include "measure/probe_table.h"

QUILLET_FUZZ_TARGET(probes) {
  using namespace quillet;
  static fuzz::StartedApp t;
  t.NextInput();  // a missing or short file ends the program: the next input starts again
  t.ui.fileAnswers.assign(3, "");  // a file dialog after a failed read is cancelled
  t.WriteFile("probes.dat", std::string(reinterpret_cast<const char*>(data), size), true);
  t.app->s.logger.ModelCode = 16;
  t.Do([&] { LoadProbeTable(*t.app); });
  t.app->ended = false;
  t.Do([&] { OpenProbeDialog(*t.app, 1); });
  fuzz::CheckNoInternalError(t.ui);
  return 0;
}
