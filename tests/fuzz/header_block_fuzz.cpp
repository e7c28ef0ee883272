// A header and a block as `quillet-cli decode` takes them: DecodeHeader with the timing,
// FinishBlock with DecodeRecord, the conversion of the header's model and the statistics,
// then DrawGraph into a recording surface. The first 22 bytes are the header; one more
// byte says whether the values are in Fahrenheit; the rest is the block.
#include <cstddef>
#include <cstdint>

#include "fuzz_support.h"
#include "graph/draw_graph.h"
#include "link/download.h"
#include "measure/temperature_unit.h"
#include "support/recording_surface.h"

QUILLET_FUZZ_TARGET(header_block) {
  using namespace quillet;
  if (size < 23) return 0;
  static fuzz::OfflineApp t;
  t.Reset();
  App& app = *t.app;
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  app.s.settings.UseFahrenheit = bytes[22] & 1;
  t.Do([&] {
    ShowTemperatureUnitChecks(app);
    app.s.logger.ScaleByte = 1;
    app.s.clock.ClockOffset = 0;
    DecodeHeader(app, bytes.substr(0, 22));
  });
  if (app.ended || !t.ui.fatal.empty()) return 0;  // the program would have ended here
  t.Do([&] {
    app.port.SetRThreshold(0);
    app.port.Input();
    t.transport.Feed(bytes.substr(23));
    FinishBlock(app);
  });
  if (app.ended) return 0;
  testing::RecordingSurface surface;
  t.Do([&] { DrawGraph(app, surface); });
  fuzz::CheckNoInternalError(t.ui);
  return 0;
}
