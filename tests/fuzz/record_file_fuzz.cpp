// A record file of either revision, read by the Open command's reader into a started
// application, then drawn as the window draws it.
#include <cstddef>
#include <cstdint>

#include "fuzz_support.h"
#include "graph/draw_graph.h"
#include "storage/record_file.h"
#include "support/recording_surface.h"

QUILLET_FUZZ_TARGET(record_file) {
  using namespace quillet;
  static fuzz::StartedApp t;  // one started program; each input replaces its record
  t.NextInput();
  t.ui.fileAnswers.assign(3, "");  // a file dialog after a failed read is cancelled
  t.WriteFile("rec.txt", std::string(reinterpret_cast<const char*>(data), size));
  t.Do([&] { ReadRecordFile(*t.app, t.dir + "/rec.txt"); });
  testing::RecordingSurface surface;
  t.Do([&] { DrawGraph(*t.app, surface); });
  fuzz::CheckNoInternalError(t.ui);
  return 0;
}
