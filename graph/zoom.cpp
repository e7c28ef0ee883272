#include "graph/zoom.h"

#include <cmath>
#include <limits>
#include <utility>

#include "hub/app.h"
#include "core/formatting.h"
#include "core/int16.h"
#include "graph/panel.h"

namespace quillet {

namespace {

constexpr int kSavedText = 62;
constexpr int kUnsavedText = 67;

// The narrowest value range a zoom can reach, and the half width it is widened to.
constexpr double kNarrowestRange = 0.007;
constexpr double kHalfMinimumRange = 0.004;

long ShownCount(const SampleRecord& r) {
  const double n = std::nearbyint(r.RecordSampleCount.Value());
  if (!(n >= 0 && n <= 2147483647.0)) throw Fault(kFaultOverflow);
  return static_cast<long>(n);
}

// Zoomed values pass through single precision.
float ToSingle(double v) {
  const float f = static_cast<float>(v);
  if (!std::isfinite(f)) throw Fault(kFaultOverflow);
  return f;
}

}  // namespace

DateTime TimeAtX(const GraphState& g, double x) {
  return g.AxisTimeStart + Divide((x - g.PlotLeft) * (g.AxisTimeEnd - g.AxisTimeStart), g.PlotWidth);
}

double ValueAtY(const GraphState& g, double y) {
  const double b = g.PlotTop + g.PlotHeight;
  return g.YAxisBottom + Divide((b - y) * (g.YAxisTop - g.YAxisBottom), g.PlotHeight);
}

long IndexAtTime(const SampleRecord& r, DateTime t) {
  const long n = ShownCount(r);
  const double first = r.ShownTimes[1];
  double i = Int(Divide((t - first) * n, r.ShownTimes[n] - first));
  if (i < 1) i = 1;
  if (i > n) i = n;
  return static_cast<long>(i);
}

bool InsidePlot(const GraphState& g, double x, double y) {
  return g.PlotLeft < x && x < g.PlotLeft + g.PlotWidth && g.PlotTop < y && y < g.PlotTop + g.PlotHeight;
}

void GraphMouseDown(App& app, double x, double y) {
  GraphState& g = app.s.graph;
  Log1View& w = app.v.log1;
  if (!InsidePlot(g, x, y)) return;
  g.ZoomAnchorX = x;
  g.ZoomAnchorY = y;
  w.Shape1Box = Box{x, y, 0, 0};
  g.ZoomIndexA = IndexAtTime(app.s.record, TimeAtX(g, x));
  g.ZoomValueA = ValueAtY(g, y);
  g.ZoomDragging = 1;
  w.Shape1.visible = true;
}

void GraphMouseMove(App& app, int buttons, double x, double y) {
  State& s = app.s;
  GraphState& g = s.graph;
  Log1View& w = app.v.log1;
  if (s.link.DownloadPercent != 100) return;
  if (buttons != 0) {
    // The rectangle follows the pointer out of the plot.
    w.Shape1Box.left = x > g.ZoomAnchorX ? g.ZoomAnchorX : x;
    w.Shape1Box.top = y > g.ZoomAnchorY ? g.ZoomAnchorY : y;
    w.Shape1Box.height = std::abs(y - g.ZoomAnchorY);
    w.Shape1Box.width = std::abs(x - g.ZoomAnchorX);
  }
  if (InsidePlot(g, x, y)) {
    // The position under the pointer, not the nearest sample.
    const DateTime t = TimeAtX(g, x);
    w.Label25.caption = FormatDateTime(t, s.fmt.FmtDate);
    w.Label9.caption = FormatDateTime(t, s.fmt.FmtTime);
    w.Label10.caption = FormatNumber(ValueAtY(g, y), g.ReadoutFormat);
    w.Label12.caption = s.record.RecordUnitText;
    w.Label25.visible = w.Label9.visible = w.Label10.visible = w.Label12.visible = true;
    app.p.ui.Refresh();
  } else {
    w.Label9.visible = w.Label10.visible = w.Label12.visible = w.Label25.visible = false;
  }
}

void GraphMouseUp(App& app, double x, double y) {
  State& s = app.s;
  GraphState& g = s.graph;
  Log1View& w = app.v.log1;
  if (g.ZoomDragging != 1) return;
  g.ZoomDragging = 0;
  // Outside the plot the index is held to the samples; the value is not held.
  g.ZoomIndexB = IndexAtTime(s.record, TimeAtX(g, x));
  g.ZoomValueB = ValueAtY(g, y);
  w.Shape1.visible = false;
  // A drag along one axis only selects nothing, and no zoom starts while a data block
  // arrives or a drawing runs.
  if (g.ZoomIndexA == g.ZoomIndexB || g.ZoomValueA == g.ZoomValueB || s.link.BlockPhase == 1 || w.busy)
    return;
  ApplyZoomSelection(app);
  w.Label16.visible = true;
  app.p.ui.Refresh();
  if (s.record.RecordFromFile != 1) {
    w.Label14.visible = w.Label17.visible = w.ProgressBar1.visible = true;
    app.p.ui.Refresh();
  }
}

void ApplyZoomSelection(App& app) {
  State& s = app.s;
  GraphState& g = s.graph;
  SampleRecord& r = s.record;
  Log1View& w = app.v.log1;
  if (g.ZoomIndexB <= g.ZoomIndexA) std::swap(g.ZoomIndexA, g.ZoomIndexB);
  if (g.ZoomValueA <= g.ZoomValueB) std::swap(g.ZoomValueA, g.ZoomValueB);
  g.YShownMax = g.ZoomValueA;
  g.YShownMin = g.ZoomValueB;
  const double mid = (g.ZoomValueA + g.ZoomValueB) / 2;
  if (g.YShownMax - g.YShownMin <= kNarrowestRange) {
    g.YShownMax = mid + kHalfMinimumRange;
    g.YShownMin = mid - kHalfMinimumRange;
  }
  // Fewer than three samples leave the time axis alone. The value range stays set all
  // the same: a graph already zoomed shows it at its next drawing.
  if (g.ZoomIndexB - g.ZoomIndexA < 2) return;

  const long n = ShownCount(r);
  for (long i = 1; i <= n; ++i) {
    r.ZoomValues[i] = ToSingle(r.ShownValues[i]);
    r.ZoomTimes[i] = r.ShownTimes[i];
  }
  const long count = g.ZoomIndexB - g.ZoomIndexA + 1;
  r.RecordSampleCount = static_cast<double>(count);
  for (long i = 1; i <= count; ++i) {
    const long j = i + g.ZoomIndexA - 1;
    r.ShownValues[i] = r.ZoomValues[j];
    r.ShownTimes[i] = r.ZoomTimes[j];
  }
  w.Command2.enabled = true;
  s.graph.GraphZoomed = 1;
  w.mnuSaveTXT.enabled = true;
  w.Label16.visible = w.Label14.visible = w.Label17.visible = w.ProgressBar1.visible = false;
  s.files.DisplayedSaved = 0;
  RedrawGraph(app);
}

void UnzoomGraph(App& app) {
  State& s = app.s;
  SampleRecord& r = s.record;
  Log1View& w = app.v.log1;
  w.Command2.enabled = false;
  r.RecordSampleCount = r.FullSampleCount;
  const long n = ShownCount(r);
  for (long i = 1; i <= n; ++i) {
    r.ShownValues[i] = r.FullValues[i];
    r.ShownTimes[i] = r.FullTimes[i];
  }
  s.graph.GraphZoomed = 0;
  if (r.RecordSaved != 0) {
    w.Label16.caption = LanguageText(app, kSavedText);
    w.Label16.foreColor = kGreen;
    w.mnuSaveTXT.enabled = false;
  } else {
    w.Label16.caption = LanguageText(app, kUnsavedText);
    w.Label16.foreColor = kYellow;
    w.mnuSaveTXT.enabled = true;
  }
  w.Label16.visible = true;
  s.files.DisplayedSaved = 0;
  RedrawGraph(app);
  app.p.ui.Refresh();
}

}  // namespace quillet
