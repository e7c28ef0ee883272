// The scale rules as pure functions: value ticks and axis ends, number formats, the time
// tick table at its row boundaries, the time axis on round clock times, and clipping.
#include "graph/scales.h"

#include <gtest/gtest.h>

#include "core/formatting.h"
#include "hub/state.h"
#include "support/fake_platform.h"

namespace quillet {
namespace {

TEST(PickTickStep, RangesAtTheBoundsOfEachStepBelongToTheLowerStep) {
  for (auto [range, step] : {std::pair{10.0, 1.0},
                             {12, 1},
                             {13, 2},
                             {24, 2},
                             {25, 5},
                             {60, 5},
                             {61, 10},
                             {120, 10},
                             {121, 20},
                             {1000, 100},
                             {1, 0.1},
                             {1.2, 0.1},
                             {2.4, 0.2},
                             {6, 0.5},
                             {0.008, 0.001},
                             {0.5, 0.05}})
    EXPECT_DOUBLE_EQ(PickTickStep(range), step) << "range " << range;
}

TEST(PickValueScale, FlatUnzoomedGraphsSpanTenUnitsAndZoomedRangesAreKept) {
  const struct {
    double lo, hi, widen, range, step, bottom, top;
  } cases[] = {
      {20, 20, 10, 10, 1, 15, 26},
      {0, 0, 10, 10, 1, 0, 6},  // data that never dips under zero keeps the axis at zero
      {-3, 7, 10, 10, 1, -3, 8},
      {12, 36, 0, 24, 2, 12, 38},   // zoomed: not widened, the top a step above
      {5, 5, 0, 1, 0.1, 4.5, 5.6},  // a flat zoomed range counts as one unit wide
  };
  for (const auto& c : cases) {
    const ValueScale v = PickValueScale(c.lo, c.hi, c.widen);
    EXPECT_EQ(v.range, c.range) << c.lo << ".." << c.hi;
    EXPECT_DOUBLE_EQ(v.tickStep, c.step) << c.lo << ".." << c.hi;
    EXPECT_DOUBLE_EQ(v.axisBottom, c.bottom) << c.lo << ".." << c.hi;
    EXPECT_DOUBLE_EQ(v.axisTop, c.top) << c.lo << ".." << c.hi;
  }
}

TEST(PickNumberFormats, RowsMatchFromTheTopWithBothEndsInside) {
  const struct {
    double span;
    const char *label, *readout;
  } cases[] = {
      {1000.5, "####0;-###0", "#####0.0;-###0.0"}, {1000, "####0;-###0", "####0.0;-###0.0"},
      {10, "####0;-###0", "####0.0;-###0.0"},      {9.5, "###0.0;-##0.0", "###0.00;-##0.00"},
      {1, "###0.0;-##0.0", "###0.00;-##0.00"},     {0.5, "##0.00;-#0.00", "##0.000;-#0.000"},
      {0.1, "##0.00;-#0.00", "##0.000;-#0.000"},   {0.05, "#0.000;-0.000", "#0.0000;-0.0000"},
  };
  for (const auto& c : cases) {
    EXPECT_STREQ(PickNumberFormats(c.span).label, c.label) << "span " << c.span;
    EXPECT_STREQ(PickNumberFormats(c.span).readout, c.readout) << "span " << c.span;
  }
}

TEST(PickTimeTick, EachRowTakesItsUpperBoundAndTheFirstRowExcludesFifty) {
  using K = TimeLabelKind;
  const struct {
    double span, tick;
    int minor;
    TimeLabelKind kind;
  } cases[] = {
      {0, 10, 1, K::Time},
      {49.9, 10, 1, K::Time},
      {50, 15, 1, K::Time},
      {75, 15, 1, K::Time},
      {75.5, 30, 1, K::Time},
      {300, 60, 2, K::Time},
      {300.5, 120, 2, K::HourMinute},
      {1500, 300, 1, K::HourMinute},
      {2000, 600, 2, K::HourMinute},
      {4500, 900, 1, K::HourMinute},
      {9000, 1800, 2, K::HourMinute},
      {9001, 3600, 2, K::Hour},
      {216000, 43200, 2, K::Hour},
      {216001, 86400, 2, K::Date},
      {3024000, 604800, 1, K::Date},
      {12096000, 2419200, 2, K::Date},
      {12096001, 4838400, 2, K::Date},
  };
  for (const auto& c : cases) {
    const TimeTick t = PickTimeTick(c.span);
    EXPECT_EQ(t.seconds, c.tick) << "span " << c.span;
    EXPECT_EQ(t.minorPerMajor, c.minor) << "span " << c.span;
    EXPECT_EQ(t.kind, c.kind) << "span " << c.span;
  }
}

TEST(TimeAxis, LabelsAreMonthFirstOnlyInTheUsStyleAndTheAxisStartsOnARoundClockTime) {
  DateFormats f;
  f.FmtHourMinute = "h:mm";
  f.FmtHour = "   hh";
  f.DateStyle = "US";
  EXPECT_EQ(TimeLabelPattern(TimeLabelKind::Date, f), "mm/dd");
  EXPECT_EQ(TimeLabelPattern(TimeLabelKind::Hour, f), "   hh");
  f.DateStyle = "Eur";  // as the start-up leaves it
  EXPECT_EQ(TimeLabelPattern(TimeLabelKind::Date, f), "dd/mm");
  EXPECT_EQ(TimeLabelPattern(TimeLabelKind::HourMinute, f), "h:mm");

  const double first = 46347 + (10 * 3600 + 17 * 60 + 23) / 86400.0;  // 21/11/26 10:17:23
  const TimeAxis a = PickTimeAxis(first, first + 2000 / 86400.0, 600 / 86400.0);
  EXPECT_EQ(FormatDateTime(a.start, "hh:mm:ss") + " " + FormatDateTime(a.end, "hh:mm:ss"),
            "10:10:00 11:00:00");
  EXPECT_EQ(a.ticks, 5);
  EXPECT_EQ(CountTimeAxis(10, 10, 0.5).ticks, 0);  // a last time on the start: no intervals
  EXPECT_EQ(CountTimeAxis(10, 10.2, 0.5).ticks, 1);
  EXPECT_EQ(testing::FaultOf([] { CountTimeAxis(0, 1e6, 1); }), 6);
}

TEST(ClipSegment, ToThePlotFromY100To300) {
  const struct {
    Segment in;
    bool kept;
    Segment out;
  } cases[] = {
      {{0, 150, 10, 250}, true, {0, 150, 10, 250}},  // inside
      {{0, 100, 10, 300}, true, {0, 100, 10, 300}},  // on the edges
      {{0, 50, 10, 99}, false, {}},                  // wholly above
      {{0, 301, 10, 400}, false, {}},                // wholly below
      {{0, 250, 100, 50}, true, {0, 250, 75, 100}},  // in, then above: crosses y 100 at three quarters
      {{0, 50, 100, 250}, true, {25, 100, 100, 250}},
      {{0, 150, 100, 350}, true, {0, 150, 75, 300}},
      {{0, 350, 100, 150}, true, {25, 300, 100, 150}},
      // Both edges: the second crossing is measured from the moved start (true: 300, 400).
      {{0, 0, 500, 500}, true, {100, 100, 340, 300}},
      {{0, 500, 500, 0}, true, {200, 300, 440, 100}},
  };
  for (const auto& c : cases) {
    Segment s = c.in;
    ASSERT_EQ(ClipSegment(s, 100, 200), c.kept)
        << c.in.x1 << "," << c.in.y1 << " " << c.in.x2 << "," << c.in.y2;
    if (!c.kept) continue;
    EXPECT_DOUBLE_EQ(s.x1, c.out.x1);
    EXPECT_DOUBLE_EQ(s.y1, c.out.y1);
    EXPECT_DOUBLE_EQ(s.x2, c.out.x2);
    EXPECT_DOUBLE_EQ(s.y2, c.out.y2);
  }
}

}  // namespace
}  // namespace quillet
