#pragma once
// The rules that pick the graph's scales, shared by the screen and the printout: value
// ticks and axis ends, number formats, time ticks and time axis ends, and the clipping of
// a trace segment at the top and bottom of the plot. Pure functions over plain numbers.
#include <string>

#include "core/date_time.h"

namespace quillet {

struct DateFormats;

// Distance between value grid lines for a value range R: 1, 2, 5 or 10 times a power of
// ten, so that R = 10 or 12 gives 1, 13 or 24 gives 2, 25 or 60 gives 5, 61 or 100 gives 10.
double PickTickStep(double range);

struct ValueScale {
  double range = 0;  // the range the ticks were picked for
  double tickStep = 0;
  double axisBottom = 0, axisTop = 0;
};

// Value axis for the range asked for. A range narrower than minimumRange is widened to
// it around its middle. The bottom never dips under zero for a minimum that doesn't; the
// top lies strictly above the range, by up to one step.
ValueScale PickValueScale(double shownMin, double shownMax, double minimumRange);

struct NumberFormats {
  const char* label;    // axis labels
  const char* readout;  // one decimal more
};

// Formats for a value axis of the given span (top minus bottom).
NumberFormats PickNumberFormats(double axisSpan);

enum class TimeLabelKind { Time, HourMinute, Hour, Date };

struct TimeTick {
  double seconds;
  int minorPerMajor;  // grid intervals per label
  TimeLabelKind kind;
};

// Time label distance for a shown time span in seconds.
TimeTick PickTimeTick(double spanSeconds);

// The date pattern of a kind of time label in the format set in force.
std::string TimeLabelPattern(TimeLabelKind kind, const DateFormats& fmt);

struct TimeAxis {
  DateTime start = 0, end = 0;
  int ticks = 0;  // label intervals from start to end
};

// Steps from start by tickDays until the last sample time is reached or passed. More
// than 32767 steps overflow the counter (fault 6).
TimeAxis CountTimeAxis(DateTime start, DateTime lastTime, double tickDays);

// The time axis of a graph: it starts at the last multiple of tickDays (counted from day
// zero) at or before the first sample, so labels fall on round clock times.
TimeAxis PickTimeAxis(DateTime firstTime, DateTime lastTime, double tickDays);

struct Segment {
  double x1, y1, x2, y2;
};

// Clips a trace segment against the top and bottom edge of the plot; x is never clipped.
// Returns false when the segment lies wholly above or wholly below. A segment that
// crosses both edges finds its second crossing from the already moved start, so it lands
// somewhat past the true crossing; the drawing has always been that way.
bool ClipSegment(Segment& s, double plotTop, double plotHeight);

}  // namespace quillet
