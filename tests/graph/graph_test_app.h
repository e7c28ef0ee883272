#pragma once
// A started application whose record on screen the test fills, and a recording surface
// of 1000 by 1000 units: the plot then runs from x 150 to 900 and from y 150 to 850.
#include <gtest/gtest.h>

#include <vector>

#include "graph/draw_graph.h"
#include "graph/zoom.h"
#include "hub/app.h"
#include "support/fake_platform.h"
#include "support/recording_surface.h"

namespace quillet::testing {

constexpr double kNoon = 46347.5;  // 21/11/26 12:00:00

inline void ExpectNear(const std::vector<double>& got, const std::vector<double>& want) {
  ASSERT_EQ(got.size(), want.size());
  for (std::size_t i = 0; i < got.size(); ++i) EXPECT_NEAR(got[i], want[i], 1e-4) << "number " << i;
}

// The captions of some controls, joined by "|".
inline std::string Captions(std::initializer_list<const Control*> controls) {
  std::string out;
  for (const Control* c : controls) out += (out.empty() ? "" : "|") + c->caption;
  return out;
}

struct GraphApp : TestApp {
  GraphApp() {
    WriteTwoLanguageFile();           // strings read "en<n>"
    WriteSettings(1, 1, 1200, 0, 0);  // day-first dates
    Start();
    app->s.link.DownloadPercent = 100;
  }
  // The whole record and the shown part: samples a minute apart from noon.
  void FillMinutes(const std::vector<double>& values) {
    SampleRecord& r = app->s.record;
    r.FullSampleCount = r.RecordSampleCount = static_cast<double>(values.size());
    for (long k = 1; k <= static_cast<long>(values.size()); ++k) {
      r.FullTimes[k] = r.ShownTimes[k] = kNoon + (k - 1) / 1440.0;
      r.FullValues[k] = r.ShownValues[k] = values[k - 1];
    }
  }
  void Draw() { Do([this] { DrawGraph(*app, surface); }); }
  GraphState& g() { return app->s.graph; }
  // Places on the axes the last drawing left: minutes after noon, values.
  double X(double minute) {
    return 150 + (kNoon + minute / 1440 - g().AxisTimeStart) / (g().AxisTimeEnd - g().AxisTimeStart) * 750;
  }
  double Y(double value) { return 850 - (value - g().YAxisBottom) / (g().YAxisTop - g().YAxisBottom) * 700; }
  void Down(double x, double y) { Do([&] { GraphMouseDown(*app, x, y); }); }
  void Move(int buttons, double x, double y) { Do([&] { GraphMouseMove(*app, buttons, x, y); }); }
  void Up(double x, double y) { Do([&] { GraphMouseUp(*app, x, y); }); }
  void Drag(double x1, double y1, double x2, double y2) { Down(x1, y1), Move(1, x2, y2), Up(x2, y2); }
  // From minute m1 at value v1 to minute m2 at value v2, on the axes as drawn now.
  void DragMinutes(double m1, double v1, double m2, double v2) { Drag(X(m1), Y(v1), X(m2), Y(v2)); }

  RecordingSurface surface{1000, 1000};
};

}  // namespace quillet::testing
