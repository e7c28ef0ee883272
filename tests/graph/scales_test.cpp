// The scale rules as pure functions: value ticks and axis ends, number formats, the time
// tick table at its row boundaries, the time axis on round clock times, and clipping.
#include "graph/scales.h"

#include <gtest/gtest.h>

#include "core/formatting.h"
#include "hub/state.h"

namespace quillet {
namespace {

TEST(PickTickStep, RangesAtTheBoundsOfEachStepBelongToTheLowerStep) {
  const struct {
    double range, step;
  } cases[] = {{10, 1},    {12, 1},    {13, 2},   {24, 2},        {25, 5},     {60, 5},
               {61, 10},   {100, 10},  {120, 10}, {121, 20},      {1000, 100}, {1, 0.1},
               {1.2, 0.1}, {2.4, 0.2}, {6, 0.5},  {0.008, 0.001}, {0.5, 0.05}};
  for (const auto& c : cases) {
    EXPECT_DOUBLE_EQ(PickTickStep(c.range), c.step) << "range " << c.range;
  }
}

TEST(PickValueScale, AFlatUnzoomedGraphSpansTenUnitsAroundItsValue) {
  const ValueScale at20 = PickValueScale(20, 20, 10);
  EXPECT_EQ(at20.range, 10);
  EXPECT_EQ(at20.tickStep, 1);
  EXPECT_EQ(at20.axisBottom, 15);
  EXPECT_EQ(at20.axisTop, 26);

  // At 0 the bottom would fall to -5, but data that never dips under zero keeps the axis
  // at zero; the top still lies a step above the range.
  const ValueScale at0 = PickValueScale(0, 0, 10);
  EXPECT_EQ(at0.axisBottom, 0);
  EXPECT_EQ(at0.axisTop, 6);
}

TEST(PickValueScale, NegativeDataKeepsANegativeBottom) {
  const ValueScale v = PickValueScale(-3, 7, 10);
  EXPECT_EQ(v.tickStep, 1);
  EXPECT_EQ(v.axisBottom, -3);
  EXPECT_EQ(v.axisTop, 8);
}

TEST(PickValueScale, AZoomedRangeIsNotWidenedAndItsTopLiesAStepAbove) {
  const ValueScale v = PickValueScale(12, 36, 0);
  EXPECT_EQ(v.range, 24);
  EXPECT_EQ(v.tickStep, 2);
  EXPECT_EQ(v.axisBottom, 12);
  EXPECT_EQ(v.axisTop, 38);
  // A flat zoomed range counts as one unit wide.
  EXPECT_EQ(PickValueScale(5, 5, 0).range, 1);
}

TEST(PickNumberFormats, RowsMatchFromTheTopWithBothEndsInside) {
  const struct {
    double span;
    const char* label;
    const char* readout;
  } cases[] = {
      {1000.5, "####0;-###0", "#####0.0;-###0.0"}, {1000, "####0;-###0", "####0.0;-###0.0"},
      {10, "####0;-###0", "####0.0;-###0.0"},      {9.5, "###0.0;-##0.0", "###0.00;-##0.00"},
      {1, "###0.0;-##0.0", "###0.00;-##0.00"},     {0.5, "##0.00;-#0.00", "##0.000;-#0.000"},
      {0.1, "##0.00;-#0.00", "##0.000;-#0.000"},   {0.05, "#0.000;-0.000", "#0.0000;-0.0000"},
  };
  for (const auto& c : cases) {
    const NumberFormats f = PickNumberFormats(c.span);
    EXPECT_STREQ(f.label, c.label) << "span " << c.span;
    EXPECT_STREQ(f.readout, c.readout) << "span " << c.span;
  }
}

TEST(PickTimeTick, EachRowTakesItsUpperBoundAndTheFirstRowExcludesFifty) {
  const struct {
    double span, tick;
    int minor;
    TimeLabelKind kind;
  } cases[] = {
      {0, 10, 1, TimeLabelKind::Time},
      {49.9, 10, 1, TimeLabelKind::Time},
      {50, 15, 1, TimeLabelKind::Time},
      {75, 15, 1, TimeLabelKind::Time},
      {75.5, 30, 1, TimeLabelKind::Time},
      {300, 60, 2, TimeLabelKind::Time},
      {300.5, 120, 2, TimeLabelKind::HourMinute},
      {1500, 300, 1, TimeLabelKind::HourMinute},
      {2000, 600, 2, TimeLabelKind::HourMinute},
      {4500, 900, 1, TimeLabelKind::HourMinute},
      {9000, 1800, 2, TimeLabelKind::HourMinute},
      {9001, 3600, 2, TimeLabelKind::Hour},
      {216000, 43200, 2, TimeLabelKind::Hour},
      {216001, 86400, 2, TimeLabelKind::Date},
      {3024000, 604800, 1, TimeLabelKind::Date},
      {12096000, 2419200, 2, TimeLabelKind::Date},
      {12096001, 4838400, 2, TimeLabelKind::Date},
  };
  for (const auto& c : cases) {
    const TimeTick t = PickTimeTick(c.span);
    EXPECT_EQ(t.seconds, c.tick) << "span " << c.span;
    EXPECT_EQ(t.minorPerMajor, c.minor) << "span " << c.span;
    EXPECT_EQ(t.kind, c.kind) << "span " << c.span;
  }
}

TEST(TimeLabelPattern, DatesAreMonthFirstOnlyInTheUsStyle) {
  DateFormats f;
  f.FmtTime = "hh:mm:ss";
  f.FmtHourMinute = "h:mm";
  f.FmtHour = "   hh";
  f.DateStyle = "US";
  EXPECT_EQ(TimeLabelPattern(TimeLabelKind::Date, f), "mm/dd");
  EXPECT_EQ(TimeLabelPattern(TimeLabelKind::Hour, f), "   hh");
  f.DateStyle = "Eur";  // as the start-up leaves it
  EXPECT_EQ(TimeLabelPattern(TimeLabelKind::Date, f), "dd/mm");
  EXPECT_EQ(TimeLabelPattern(TimeLabelKind::HourMinute, f), "h:mm");
}

TEST(PickTimeAxis, StartsOnTheRoundClockTimeBeforeTheFirstSampleAndEndsAtOrPastTheLast) {
  const double day = 46347;  // 21/11/26
  const double first = day + (10 * 3600 + 17 * 60 + 23) / 86400.0;
  const double last = first + 2000 / 86400.0;  // 10:50:43
  const TimeAxis a = PickTimeAxis(first, last, 600 / 86400.0);
  EXPECT_EQ(FormatDateTime(a.start, "hh:mm:ss"), "10:10:00");
  EXPECT_EQ(FormatDateTime(a.end, "hh:mm:ss"), "11:00:00");
  EXPECT_EQ(a.ticks, 5);
  EXPECT_LT(a.start, first);
}

TEST(CountTimeAxis, ALastTimeOnTheStartGivesNoIntervalsAndAHugeSpanOverflows) {
  EXPECT_EQ(CountTimeAxis(10, 10, 0.5).ticks, 0);
  EXPECT_EQ(CountTimeAxis(10, 10.2, 0.5).ticks, 1);
  try {
    CountTimeAxis(0, 1e6, 1);
    FAIL() << "no fault";
  } catch (const Fault& f) {
    EXPECT_EQ(f.number(), 6);
  }
}

// Plot from y 100 (top) to 300 (bottom).
bool Clip(Segment& s) { return ClipSegment(s, 100, 200); }

void ExpectSegment(const Segment& s, double x1, double y1, double x2, double y2) {
  EXPECT_DOUBLE_EQ(s.x1, x1);
  EXPECT_DOUBLE_EQ(s.y1, y1);
  EXPECT_DOUBLE_EQ(s.x2, x2);
  EXPECT_DOUBLE_EQ(s.y2, y2);
}

TEST(ClipSegment, SegmentsInsideOrOnTheEdgesStayAndThoseWhollyOutsideAreSkipped) {
  Segment in{0, 150, 10, 250};
  EXPECT_TRUE(Clip(in));
  ExpectSegment(in, 0, 150, 10, 250);
  Segment edges{0, 100, 10, 300};
  EXPECT_TRUE(Clip(edges));
  ExpectSegment(edges, 0, 100, 10, 300);
  Segment above{0, 50, 10, 99};
  EXPECT_FALSE(Clip(above));
  Segment below{0, 301, 10, 400};
  EXPECT_FALSE(Clip(below));
}

TEST(ClipSegment, ASegmentCrossingOneEdgeEndsOnIt) {
  Segment outTop{0, 250, 100, 50};  // in, then above: crosses y 100 at three quarters
  EXPECT_TRUE(Clip(outTop));
  ExpectSegment(outTop, 0, 250, 75, 100);
  Segment inTop{0, 50, 100, 250};  // above, then in
  EXPECT_TRUE(Clip(inTop));
  ExpectSegment(inTop, 25, 100, 100, 250);
  Segment outBottom{0, 150, 100, 350};  // in, then below
  EXPECT_TRUE(Clip(outBottom));
  ExpectSegment(outBottom, 0, 150, 75, 300);
  Segment inBottom{0, 350, 100, 150};  // below, then in
  EXPECT_TRUE(Clip(inBottom));
  ExpectSegment(inBottom, 25, 300, 100, 150);
}

TEST(ClipSegment, ASegmentCrossingBothEdgesMeasuresTheSecondCrossingFromTheMovedStart) {
  // Downward from y 0 to 500: true crossings at x 100 and 300; the second lands at 340.
  Segment down{0, 0, 500, 500};
  EXPECT_TRUE(Clip(down));
  ExpectSegment(down, 100, 100, 340, 300);
  // Upward from y 500 to 0: true crossings at x 200 and 400; the second lands at 440.
  Segment up{0, 500, 500, 0};
  EXPECT_TRUE(Clip(up));
  ExpectSegment(up, 200, 300, 440, 100);
}

}  // namespace
}  // namespace quillet
