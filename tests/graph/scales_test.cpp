// The scale rules as pure functions, at the bounds of their rows, and clipping.
#include "graph/scales.h"

#include <gtest/gtest.h>

#include "core/formatting.h"
#include "graph_test_app.h"
#include "hub/state.h"

namespace quillet {
namespace {

using testing::ExpectNear;

TEST(Scales, ValuesOnTheBoundOfARowBelongToTheLowerRow) {
  // log10(12) - 1 comes out a hair above log10(1.2): both must give the lower step.
  for (auto [range, step] : {std::pair{12.0, 1.0}, {13, 2}, {24, 2}, {25, 5}, {60, 5}, {61, 10}, {1.2, 0.1}})
    EXPECT_DOUBLE_EQ(PickTickStep(range), step) << "range " << range;
  for (auto [span, label, readout] :
       {std::tuple{1000.5, "####0;-###0", "#####0.0;-###0.0"}, {1000, "####0;-###0", "####0.0;-###0.0"},
        {10, "####0;-###0", "####0.0;-###0.0"}, {9.5, "###0.0;-##0.0", "###0.00;-##0.00"},
        {1, "###0.0;-##0.0", "###0.00;-##0.00"}, {0.1, "##0.00;-#0.00", "##0.000;-#0.000"},
        {0.05, "#0.000;-0.000", "#0.0000;-0.0000"}})
    EXPECT_EQ(std::string(PickNumberFormats(span).label) + " " + PickNumberFormats(span).readout,
              std::string(label) + " " + readout);
  // The first row takes 50 seconds up to its bound of 75; beyond the last row, eight weeks.
  for (auto [span, seconds] : {std::pair{49.9, 10.0}, {50, 15}, {75, 15}, {75.5, 30}, {12096001, 4838400}})
    EXPECT_EQ(PickTimeTick(span).seconds, seconds) << "span " << span;
  // Flat unzoomed graphs span ten units, a flat zoomed range one; an axis of data that
  // never dips under zero stays at zero.
  for (auto [lo, hi, widen, range, step, bottom, top] : {std::tuple{20.0, 20.0, 10.0, 10.0, 1.0, 15.0, 26.0},
                                                         {0, 0, 10, 10, 1, 0, 6},
                                                         {12, 36, 0, 24, 2, 12, 38},
                                                         {5, 5, 0, 1, 0.1, 4.5, 5.6},
                                                         {-3, 7, 0, 10, 1, -3, 8}}) {
    const ValueScale v = PickValueScale(lo, hi, widen);
    ExpectNear({v.range, v.tickStep, v.axisBottom, v.axisTop}, {range, step, bottom, top});
  }
}

TEST(Scales, TimeLabelsAreMonthFirstOnlyInTheUsStyleAndTheAxisStartsOnARoundClockTime) {
  DateFormats f;
  f.FmtHourMinute = "h:mm";
  f.FmtHour = "   hh";
  f.DateStyle = "US";
  using Kind = TimeLabelKind;
  EXPECT_EQ(TimeLabelPattern(Kind::Date, f) + TimeLabelPattern(Kind::Hour, f), "mm/dd   hh");
  f.DateStyle = "Eur";
  EXPECT_EQ(TimeLabelPattern(Kind::Date, f) + TimeLabelPattern(Kind::HourMinute, f), "dd/mmh:mm");
  const double first = 46347 + (10 * 3600 + 17 * 60 + 23) / 86400.0;  // 21/11/26 10:17:23
  const TimeAxis a = PickTimeAxis(first, first + 2000 / 86400.0, 600 / 86400.0);
  EXPECT_EQ(FormatDateTime(a.start, "hh:mm:ss") + " " + FormatDateTime(a.end, "hh:mm:ss"),
            "10:10:00 11:00:00");
  EXPECT_EQ(a.ticks, 5);
  EXPECT_EQ(CountTimeAxis(10, 10, 0.5).ticks, 0);  // a last time on the start: no intervals
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
    ASSERT_EQ(ClipSegment(s, 100, 200), c.kept) << "case " << &c - cases;
    if (c.kept) ExpectNear({s.x1, s.y1, s.x2, s.y2}, {c.out.x1, c.out.y1, c.out.x2, c.out.y2});
  }
}

}  // namespace
}  // namespace quillet
