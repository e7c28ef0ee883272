#pragma once
// The graph of the record on screen: scales picked from the shown samples, then frame,
// grid, labels, trace, title and footer drawn through a surface, and the statistics of
// the shown samples. The pieces of the picture are free functions so the printout can
// lay out the same rules in its own proportions.
#include <string>
#include <vector>

#include "core/date_time.h"
#include "hub/state.h"
#include "graph/draw_surface.h"

namespace quillet {

struct App;
struct Log1View;

// Draws the shown samples and leaves the scale results in app.s.graph. Two samples or
// fewer leave the old picture as it stands.
void DrawGraph(App& app, DrawSurface& surface);

// The six menus that stay disabled while a drawing or a printout runs.
void EnableCommandMenus(Log1View& w, bool on);

// The plot rectangle in surface units; y grows downward.
struct PlotBox {
  double left = 0, top = 0, width = 0, height = 0;
  double Bottom() const { return top + height; }
  double Right() const { return left + width; }
};

// Left side, bottom, right side and top, in that order; both sides run on below the
// plot by runOn as end ticks.
void DrawFrame(DrawSurface& s, const PlotBox& box, double runOn);

// The inner vertical grid lines. Lines that carry a time label run on below the plot by
// tickLength; a line between two labels stops at the bottom edge.
void DrawVerticalGrid(DrawSurface& s, const PlotBox& box, int gridIntervals, int minorPerMajor,
                      double tickLength);

// One label per time tick, from the axis start on, each starting shift units left of its
// grid line, at 0.06 plot heights under the plot. The texts go to drawn, if given.
void DrawTimeLabels(DrawSurface& s, const PlotBox& box, int gridIntervals, int minorPerMajor,
                    DateTime axisStart, double tickDays, const std::string& pattern, double shift,
                    std::vector<std::string>* drawn);

// The inner horizontal grid lines.
void DrawHorizontalGrid(DrawSurface& s, const PlotBox& box, int tickCount);

// One label per value tick, bottom to top, at the given x and 0.02 plot heights above
// its grid line. The texts go to drawn, if given.
void DrawValueLabels(DrawSurface& s, const PlotBox& box, double x, int tickCount, double axisBottom,
                     double tickStep, const std::string& pattern, std::vector<std::string>* drawn);

// The axes a trace is drawn against.
struct TraceAxes {
  DateTime timeStart = 0, timeEnd = 0;
  double valueBottom = 0, valueTop = 0;
};

// One segment per pair of neighbouring samples 1..n, clipped at the top and bottom of
// the plot, none left out.
void DrawTrace(DrawSurface& s, const PlotBox& box, const SampleTimes& times, const SampleValues& values,
               long n, const TraceAxes& axes, int colour);

}  // namespace quillet
