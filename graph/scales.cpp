#include "graph/scales.h"

#include <cmath>

#include "core/fault.h"
#include "core/int16.h"
#include "hub/state.h"

namespace quillet {

double PickTickStep(double range) {
  if (!(range > 0) || !std::isfinite(range)) throw Fault(kFaultIllegalCall, "value range not above 0");
  const double l = std::log10(range);
  const double decade = Int(l + 100) - 100;
  const double f = l - decade;
  // log10(12) - 1 comes out a hair above log10(1.2) in doubles; the bounds themselves
  // belong to the lower step, hence the small allowance.
  constexpr double kAllowance = 1e-12;
  double m = 1;
  if (f > std::log10(1.2) + kAllowance) m = 2;
  if (f > std::log10(2.4) + kAllowance) m = 5;
  if (f > std::log10(6.0) + kAllowance) m = 10;
  return m * std::pow(10.0, Int(l + 100) - 101);
}

ValueScale PickValueScale(double shownMin, double shownMax, double minimumRange) {
  ValueScale v;
  double r = shownMax - shownMin;
  if (r == 0) r = 1;
  if (minimumRange > shownMax - shownMin) r = minimumRange;
  v.range = r;
  v.tickStep = PickTickStep(r);
  const double mid = (shownMin + shownMax) / 2;
  v.axisBottom = (Int(Checked((mid - r / 2) / v.tickStep) + 10000) - 10000) * v.tickStep;
  if (v.axisBottom < 0 && shownMin >= 0) v.axisBottom = 0;
  v.axisTop = (Int(Checked((mid + r / 2) / v.tickStep) + 10001) - 10000) * v.tickStep;
  return v;
}

NumberFormats PickNumberFormats(double s) {
  // First matching row wins; both ends of a row count as inside it.
  if (s > 1000) return {"####0;-###0", "#####0.0;-###0.0"};
  if (s >= 100) return {"####0;-###0", "####0.0;-###0.0"};
  if (s >= 10) return {"####0;-###0", "####0.0;-###0.0"};
  if (s >= 1) return {"###0.0;-##0.0", "###0.00;-##0.00"};
  if (s >= 0.1) return {"##0.00;-#0.00", "##0.000;-#0.000"};
  return {"#0.000;-0.000", "#0.0000;-0.0000"};
}

namespace {

struct TimeTickRow {
  double upTo;  // span in seconds, inclusive
  TimeTick tick;
};

// clang-format off
constexpr TimeTickRow kTimeTicks[] = {
    {75, {15, 1, TimeLabelKind::Time}},
    {150, {30, 1, TimeLabelKind::Time}},
    {300, {60, 2, TimeLabelKind::Time}},
    {600, {120, 2, TimeLabelKind::HourMinute}},
    {1500, {300, 1, TimeLabelKind::HourMinute}},
    {3000, {600, 2, TimeLabelKind::HourMinute}},
    {4500, {900, 1, TimeLabelKind::HourMinute}},
    {9000, {1800, 2, TimeLabelKind::HourMinute}},
    {18000, {3600, 2, TimeLabelKind::Hour}},
    {36000, {7200, 2, TimeLabelKind::Hour}},
    {72000, {14400, 2, TimeLabelKind::Hour}},
    {108000, {21600, 2, TimeLabelKind::Hour}},
    {144000, {28800, 2, TimeLabelKind::Hour}},
    {216000, {43200, 2, TimeLabelKind::Hour}},
    {432000, {86400, 2, TimeLabelKind::Date}},
    {864000, {172800, 2, TimeLabelKind::Date}},
    {1728000, {345600, 2, TimeLabelKind::Date}},
    {3024000, {604800, 1, TimeLabelKind::Date}},
    {6048000, {1209600, 2, TimeLabelKind::Date}},
    {12096000, {2419200, 2, TimeLabelKind::Date}},
};
// clang-format on

}  // namespace

TimeTick PickTimeTick(double spanSeconds) {
  if (spanSeconds < 50) return {10, 1, TimeLabelKind::Time};
  for (const TimeTickRow& row : kTimeTicks) {
    if (spanSeconds <= row.upTo) return row.tick;
  }
  return {4838400, 2, TimeLabelKind::Date};
}

std::string TimeLabelPattern(TimeLabelKind kind, const DateFormats& fmt) {
  switch (kind) {
    case TimeLabelKind::Time:
      return fmt.FmtTime;
    case TimeLabelKind::HourMinute:
      return fmt.FmtHourMinute;
    case TimeLabelKind::Hour:
      return fmt.FmtHour;
    case TimeLabelKind::Date:
      break;
  }
  return fmt.DateStyle == "US" ? "mm/dd" : "dd/mm";
}

TimeAxis CountTimeAxis(DateTime start, DateTime lastTime, double tickDays) {
  TimeAxis a;
  a.start = a.end = start;
  while (a.end < lastTime) {
    a.end += tickDays;
    if (++a.ticks > 32767) throw Fault(kFaultOverflow, "too many time ticks");
  }
  return a;
}

TimeAxis PickTimeAxis(DateTime firstTime, DateTime lastTime, double tickDays) {
  return CountTimeAxis(Int(Divide(firstTime, tickDays)) * tickDays, lastTime, tickDays);
}

bool ClipSegment(Segment& s, double plotTop, double plotHeight) {
  const double tp = plotTop;
  const double bt = plotTop + plotHeight;
  const double p = plotHeight;
  auto in = [&](double y) { return tp <= y && y <= bt; };
  auto above = [&](double y) { return y < tp; };
  auto below = [&](double y) { return y > bt; };
  if (in(s.y1) && in(s.y2)) return true;
  if (above(s.y1) && above(s.y2)) return false;
  if (below(s.y1) && below(s.y2)) return false;
  if (in(s.y1) && above(s.y2)) {
    const double a = s.y1 - tp, b = tp - s.y2;
    s.x2 = s.x1 + (s.x2 - s.x1) * a / (a + b);
    s.y2 = tp;
    return true;
  }
  if (above(s.y1) && in(s.y2)) {
    const double a = tp - s.y1, b = s.y2 - tp;
    s.x1 = s.x1 + (s.x2 - s.x1) * a / (a + b);
    s.y1 = tp;
    return true;
  }
  if (in(s.y1) && below(s.y2)) {
    const double a = bt - s.y1, b = s.y2 - bt;
    s.x2 = s.x1 + (s.x2 - s.x1) * a / (a + b);
    s.y2 = bt;
    return true;
  }
  if (below(s.y1) && in(s.y2)) {
    const double a = s.y1 - bt, b = bt - s.y2;
    s.x1 = s.x1 + (s.x2 - s.x1) * a / (a + b);
    s.y1 = bt;
    return true;
  }
  if (above(s.y1) && below(s.y2)) {
    const double a = tp - s.y1, b = s.y2 - bt, d = a + p + b;
    s.x1 = s.x1 + (s.x2 - s.x1) * a / d;
    s.x2 = s.x1 + (s.x2 - s.x1) * (p + a) / d;
    s.y1 = tp;
    s.y2 = bt;
    return true;
  }
  if (below(s.y1) && above(s.y2)) {
    const double a = tp - s.y2, b = s.y1 - bt, d = a + p + b;
    s.x1 = s.x1 + (s.x2 - s.x1) * b / d;
    s.x2 = s.x1 + (s.x2 - s.x1) * (p + b) / d;
    s.y1 = bt;
    s.y2 = tp;
    return true;
  }
  return false;  // a value that is not a number lies nowhere
}

}  // namespace quillet
