#pragma once
// What the last drawing of the graph left for the readouts, the zoom, the printout and
// the next drawing, and the state of a zoom drag.
#include <cstdint>
#include <string>
#include <vector>

#include "core/bounded_table.h"
#include "core/date_time.h"
#include "core/number.h"

namespace quillet {

struct GraphState {
  // Value range asked for. Kept between drawings only while the graph is zoomed.
  double YShownMin = 0, YShownMax = 0;
  // Values at the bottom and top edge of the plot, grid distance and number of intervals.
  double YAxisBottom = 0, YAxisTop = 0;
  double YTickStep = 0;
  int YTickCount = 0;
  std::string YLabelFormat;
  std::string ReadoutFormat;  // one decimal more: cursor readout and printed statistics
  // Distance of the time labels, grid intervals per label (1 or 2), their pattern.
  double TimeTickSeconds = 0, TimeTickDays = 0;
  int MinorPerMajor = 1;
  std::string TimeLabelFormat;
  DateTime AxisTimeStart = 0, AxisTimeEnd = 0;  // left and right edge of the plot
  // The plot rectangle in surface units, and the height of the surface under it.
  double PlotLeft = 0, PlotTop = 0, PlotWidth = 0, PlotHeight = 0;
  double PlotBottomMargin = 0;
  // The axis labels as drawn, in drawing order (for the command-line axes report).
  std::vector<std::string> timeLabels, valueLabels;

  // The zoom drag: the mouse-down inside the plot, and the two ends of the selection.
  std::int16_t ZoomDragging = 0;
  double ZoomAnchorX = 0, ZoomAnchorY = 0;
  long ZoomIndexA = 0, ZoomIndexB = 0;
  double ZoomValueA = 0, ZoomValueB = 0;

  std::int16_t GraphZoomed = 0;
  std::int16_t DescribeChanged = 0;  // OK in Describe found a text changed; only Cancel clears it
};

// The logger panel's memory of what it shows.
struct PanelState {
  Number PanelSerial;
  std::int16_t PanelTitled = 0;
  std::int16_t OtherLoggerNotice = 0;
  Number GraphLoggerNumber;
};

struct Fonts {
  std::string FontName1 = "Arial", FontName2 = "Arial";
  Table<int, 1, 6> FontSizes;
};

}  // namespace quillet
