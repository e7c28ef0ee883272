#include "graph/draw_graph.h"

#include <cmath>

#include "hub/app.h"
#include "core/formatting.h"
#include "core/int16.h"
#include "graph/scales.h"

namespace quillet {

namespace {

// Slots of the screen fonts among the six installed sizes (the first three are the
// printer's): axis labels, title, footer.
constexpr int kScreenAxisFont = 4;
constexpr int kScreenTitleFont = 5;
constexpr int kScreenFootFont = 6;

constexpr int kBusyText = 57;
constexpr int kFooterText = 58;
constexpr int kTraceColour = Rgb(255, 0, 0);
const char* const kLoggerNoText =
    "                                                                           Logger No:     ";

// Records of these codes are rms readings, which the meter cannot show beyond 1000 / range
// factor.
bool IsRmsRecord(double code) { return code == 7 || code == 10 || code == 11; }

double RmsLimit(const SampleRecord& r) { return Divide(1000, r.RecordRangeFactor); }

bool IsOneOf(double code, std::initializer_list<int> codes) {
  for (int c : codes) {
    if (code == c) return true;
  }
  return false;
}

bool HasFunctionMenu(double code) {
  return !(IsOneOf(code, {0, 5, 7, 10, 11, 31}) || (code >= 20 && code <= 29));
}

long SampleCount(Number count) {
  const double n = std::nearbyint(count.Value());
  if (!(n >= 0 && n <= 2147483647.0)) throw Fault(kFaultOverflow);
  return static_cast<long>(n);
}

int ToCount(double v) {
  if (!(v >= 0 && v <= 32767)) throw Fault(kFaultOverflow);
  return static_cast<int>(v);
}

}  // namespace

void EnableCommandMenus(Log1View& w, bool on) {
  for (Control* c : {&w.mnuFile, &w.mnuSetTime, &w.mnuDownload, &w.mnuDate, &w.mnuHelp, &w.mnuPort})
    c->enabled = on;
}

void DrawFrame(DrawSurface& s, const PlotBox& box, double runOn) {
  const double b = box.Bottom(), rt = box.Right();
  s.Line(box.left, box.top, box.left, b + runOn);
  s.Line(box.left, b, rt, b);
  s.Line(rt, b + runOn, rt, box.top);
  s.Line(rt, box.top, box.left, box.top);
}

void DrawVerticalGrid(DrawSurface& s, const PlotBox& box, int gridIntervals, int minorPerMajor,
                      double tickLength) {
  const double xStep = Divide(box.width, gridIntervals);
  const double b = box.Bottom();
  for (int i = 1; i <= gridIntervals - 1; ++i) {
    const double x = box.left + i * xStep;
    const double t = (i % 2 == 0 || minorPerMajor == 1) ? tickLength : 0;
    s.Line(x, box.top, x, b + t);
  }
}

void DrawTimeLabels(DrawSurface& s, const PlotBox& box, int gridIntervals, int minorPerMajor,
                    DateTime axisStart, double tickDays, const std::string& pattern, double shift,
                    std::vector<std::string>* drawn) {
  const double xStep = Divide(box.width, gridIntervals);
  const double y = box.Bottom() + 0.06 * box.height;
  const int labels = gridIntervals / minorPerMajor;
  for (int i = 0; i <= labels; ++i) {
    std::string text = FormatDateTime(axisStart + tickDays * i, pattern);
    s.TextAt(box.left + minorPerMajor * xStep * i - shift, y, text);
    if (drawn) drawn->push_back(std::move(text));
  }
}

void DrawHorizontalGrid(DrawSurface& s, const PlotBox& box, int tickCount) {
  const double yStep = Divide(box.height, tickCount);
  const double b = box.Bottom();
  for (int i = 1; i <= tickCount - 1; ++i) {
    const double y = b - yStep * i;
    s.Line(box.left, y, box.Right(), y);
  }
}

void DrawValueLabels(DrawSurface& s, const PlotBox& box, double x, int tickCount, double axisBottom,
                     double tickStep, const std::string& pattern, std::vector<std::string>* drawn) {
  const double yStep = Divide(box.height, tickCount);
  const double b = box.Bottom();
  for (int i = 0; i <= tickCount; ++i) {
    std::string text = FormatNumber(axisBottom + tickStep * i, pattern);
    s.TextAt(x, b - yStep * i - 0.02 * box.height, text);
    if (drawn) drawn->push_back(std::move(text));
  }
}

void DrawTrace(DrawSurface& s, const PlotBox& box, const SampleTimes& times, const SampleValues& values,
               long n, const TraceAxes& axes, int colour) {
  const double b = box.Bottom();
  const double timeSpan = axes.timeEnd - axes.timeStart;
  const double valueSpan = axes.valueTop - axes.valueBottom;
  if (n >= 2 && (timeSpan == 0 || valueSpan == 0)) throw Fault(kFaultDivisionByZero);
  auto x = [&](double t) { return box.left + (t - axes.timeStart) / timeSpan * box.width; };
  auto y = [&](double v) { return b - (v - axes.valueBottom) / valueSpan * box.height; };
  double px = x(times[1]), py = y(values[1]);
  for (long i = 2; i <= n; ++i) {
    const double cx = x(times[i]), cy = y(values[i]);
    Segment seg{px, py, cx, cy};
    if (ClipSegment(seg, box.top, box.height)) s.Line(seg.x1, seg.y1, seg.x2, seg.y2, colour);
    px = cx;
    py = cy;
  }
}

void DrawGraph(App& app, DrawSurface& surface) {
  State& s = app.s;
  SampleRecord& r = s.record;
  GraphState& g = s.graph;
  Log1View& w = app.v.log1;

  if (r.RecordSampleCount <= 2) {
    w.Label15.visible = false;
    app.p.ui.Refresh();
    w.busy = false;
    EnableCommandMenus(w, true);
    return;
  }

  w.Label15.foreColor = kGreen;
  w.Label15.caption = LanguageText(app, kBusyText);
  w.Label15.visible = true;
  app.p.ui.Refresh();
  w.busy = true;
  EnableCommandMenus(w, false);
  w.mnuFunc.visible = false;
  surface.Clear();
  if (s.graph.GraphZoomed == 0) w.Command2.enabled = false;
  w.Label40.caption = GeneralNumber(r.RecordSampleCount);
  w.Label40.visible = true;
  app.p.ui.Refresh();

  // Time span of the shown samples.
  const long n = SampleCount(r.RecordSampleCount);
  const double spanDays = r.ShownTimes[n] - r.ShownTimes[1];
  const double spanSeconds = spanDays * kSecondsPerDay;

  // Value range and statistics in one pass over the samples.
  double largest = r.ShownValues[1], smallest = r.ShownValues[1], sum = 0;
  for (long i = 1; i <= n; ++i) {
    const double v = r.ShownValues[i];
    if (v > largest) largest = v;
    if (v < smallest) smallest = v;
    sum += v;
  }
  double minimumRange = 0;
  if (s.graph.GraphZoomed != 1) {
    g.YShownMax = largest;
    g.YShownMin = smallest;
    minimumRange = 10;
  }
  if (IsRmsRecord(r.RecordModelCode)) {
    const double limit = RmsLimit(r) - 0.00001;
    if (g.YShownMax > limit) g.YShownMax = limit;
    if (g.YShownMin < 0) g.YShownMin = 0;
  }
  r.ShownMax = largest;
  r.ShownMin = smallest;
  r.ShownAvg = Checked(sum / n);
  // Unlike the axis, the statistic is held to the limit itself, and the minimum is not held.
  if (IsRmsRecord(r.RecordModelCode) && r.ShownMax > RmsLimit(r)) r.ShownMax = RmsLimit(r);

  // Value axis and its formats.
  const ValueScale vs = PickValueScale(g.YShownMin, g.YShownMax, minimumRange);
  g.YTickStep = vs.tickStep;
  g.YAxisBottom = vs.axisBottom;
  g.YAxisTop = vs.axisTop;
  const NumberFormats nf = PickNumberFormats(g.YAxisTop - g.YAxisBottom);
  g.YLabelFormat = nf.label;
  g.ReadoutFormat = nf.readout;

  // Time axis.
  const TimeTick tick = PickTimeTick(spanSeconds);
  g.TimeTickSeconds = tick.seconds;
  g.MinorPerMajor = tick.minorPerMajor;
  g.TimeLabelFormat = TimeLabelPattern(tick.kind, s.fmt);
  g.TimeTickDays = g.TimeTickSeconds / kSecondsPerDay;
  const TimeAxis axis = PickTimeAxis(r.ShownTimes[1], r.ShownTimes[n], g.TimeTickDays);
  g.AxisTimeStart = axis.start;
  g.AxisTimeEnd = axis.end;
  const int gridIntervals = ToCount(static_cast<double>(axis.ticks) * g.MinorPerMajor);

  // Geometry.
  const std::string& fontName = s.fonts.FontName2;
  surface.SetFont(fontName, s.fonts.FontSizes[kScreenAxisFont], false);
  const double W = surface.Width(), H = surface.Height();
  g.PlotLeft = 0.15 * W;
  g.PlotWidth = 0.75 * W;
  g.PlotTop = 0.15 * H;
  g.PlotHeight = 0.7 * H;
  g.PlotBottomMargin = H - g.PlotTop - g.PlotHeight;
  const PlotBox box{g.PlotLeft, g.PlotTop, g.PlotWidth, g.PlotHeight};
  const double b = box.Bottom();

  DrawFrame(surface, box, 0.025 * g.PlotHeight);
  g.YTickCount = ToCount(Int(Divide(g.YAxisTop - g.YAxisBottom, g.YTickStep) + 0.5));
  if (gridIntervals == 0 || g.YTickCount == 0) throw Fault(kFaultDivisionByZero);
  w.Label8.visible = false;
  w.Picture3.visible = false;

  g.timeLabels.clear();
  g.valueLabels.clear();
  DrawVerticalGrid(surface, box, gridIntervals, g.MinorPerMajor, 0.025 * g.PlotHeight);
  DrawTimeLabels(surface, box, gridIntervals, g.MinorPerMajor, g.AxisTimeStart, g.TimeTickDays,
                 g.TimeLabelFormat, 0.05 * g.PlotWidth, &g.timeLabels);
  DrawHorizontalGrid(surface, box, g.YTickCount);
  DrawValueLabels(surface, box, 0.12 * g.PlotWidth, g.YTickCount, g.YAxisBottom, g.YTickStep, g.YLabelFormat,
                  &g.valueLabels);
  surface.TextAt(0.1 * g.PlotLeft, 0.5 * g.PlotHeight + g.PlotTop, r.RecordUnitText);
  DrawTrace(surface, box, r.ShownTimes, r.ShownValues, n,
            TraceAxes{g.AxisTimeStart, g.AxisTimeEnd, g.YAxisBottom, g.YAxisTop}, kTraceColour);

  // Done: the menus come back.
  w.Label15.caption.clear();
  w.Label15.visible = false;
  app.p.ui.Refresh();
  w.busy = false;
  EnableCommandMenus(w, true);
  const double model = s.logger.ModelCode;
  if (HasFunctionMenu(model)) w.mnuFunc.visible = true;
  if (IsOneOf(model, {20, 21, 22, 23, 29})) w.mnuScale.visible = true;

  surface.SetFont(fontName, s.fonts.FontSizes[kScreenTitleFont], true);
  surface.TextAt(g.PlotLeft, 0.5 * g.PlotTop, r.RecordTitle);

  surface.SetFont(fontName, s.fonts.FontSizes[kScreenFootFont], false);
  surface.TextAt(g.PlotLeft, b + 0.63 * g.PlotBottomMargin,
                 LanguageText(app, kFooterText) + FormatDateTime(r.ShownTimes[1], s.fmt.FmtStamp) +
                     kLoggerNoText + FormatNumber(r.LoggerNumber, "######"));
  s.panel.GraphLoggerNumber = r.LoggerNumber;

  for (Control* c : {&w.Frame2, &w.Label32, &w.Label33, &w.Label27, &w.Label24}) c->visible = true;
  w.Label29.caption = FormatNumber(r.ShownMax, "###0.0");
  w.Label30.caption = FormatNumber(r.ShownMin, "###0.0");
  w.Label31.caption = FormatNumber(r.ShownAvg, "###0.0");
  w.Label29.visible = w.Label30.visible = w.Label31.visible = true;
  app.p.ui.Refresh();

  if (r.RecordFromFile != 0) {
    w.Label18.caption = s.files.OpenFileName;
    w.Label18.visible = true;
    app.p.ui.Refresh();
  } else {
    w.Label18.visible = false;
  }
}

}  // namespace quillet
