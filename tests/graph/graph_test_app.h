#pragma once
// A started application whose record on screen the test fills, and a recording surface
// of 1000 by 1000 units: the plot then runs from x 150 to 900 and from y 150 to 850.
#include <vector>

#include "graph/draw_graph.h"
#include "hub/app.h"
#include "support/fake_platform.h"
#include "support/recording_surface.h"

namespace quillet::testing {

constexpr double kNoon = 46347.5;  // 21/11/26 12:00:00
constexpr double kSecond = 1 / 86400.0;

struct GraphApp : TestApp {
  GraphApp() {
    WriteTwoLanguageFile();           // strings read "en<n>"
    WriteSettings(1, 1, 1200, 0, 0);  // day-first dates
    Start();
    app->s.link.DownloadPercent = 100;
  }
  // Fills the whole record and the shown part with the same samples.
  void Fill(const std::vector<double>& times, const std::vector<double>& values) {
    SampleRecord& r = app->s.record;
    r.FullSampleCount = r.RecordSampleCount = static_cast<double>(times.size());
    for (std::size_t i = 0; i < times.size(); ++i) {
      const long k = static_cast<long>(i) + 1;
      r.FullTimes[k] = r.ShownTimes[k] = times[i];
      r.FullValues[k] = r.ShownValues[k] = values[i];
    }
  }
  // n samples a minute apart from noon with the given values.
  void FillMinutes(const std::vector<double>& values) {
    std::vector<double> times;
    for (std::size_t i = 0; i < values.size(); ++i)
      times.push_back(kNoon + 60 * kSecond * static_cast<double>(i));
    Fill(times, values);
  }
  void Draw() {
    Dispatch(*app, [this] { DrawGraph(*app, surface); });
  }
  GraphState& g() { return app->s.graph; }

  RecordingSurface surface{1000, 1000};
};

}  // namespace quillet::testing
