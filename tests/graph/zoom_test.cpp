// Reading and zooming the graph with the mouse, on a drawn record of 101 samples a minute
// apart from noon with values 0.1 to 100.1: the plot spans 12:00 to 14:00 from x 150 to
// 900 (6.25 units a minute) and 0 to 110 from y 850 up to 150.
#include "graph/zoom.h"

#include <gtest/gtest.h>

#include <vector>

#include "graph_test_app.h"

namespace quillet {
namespace {

// Places on whatever axes the last drawing left: minutes after noon, values.
double XAt(const GraphState& g, double minutesAfterNoon) {
  const double t = testing::kNoon + minutesAfterNoon / 1440;
  return 150 + (t - g.AxisTimeStart) / (g.AxisTimeEnd - g.AxisTimeStart) * 750;
}
double YAt(const GraphState& g, double v) {
  return 850 - (v - g.YAxisBottom) / (g.YAxisTop - g.YAxisBottom) * 700;
}

struct Zoomable : testing::GraphApp {
  Zoomable() {
    std::vector<double> values;
    for (int i = 0; i <= 100; ++i) values.push_back(i + 0.1);
    FillMinutes(values);
    s().record.RecordUnitText = "degC";
    Draw();
  }
  double X(double minute) { return XAt(g(), minute); }
  double Y(double value) { return YAt(g(), value); }
  void Down(double x, double y) {
    Do([&] { GraphMouseDown(*app, x, y); });
  }
  void Move(int buttons, double x, double y) {
    Do([&] { GraphMouseMove(*app, buttons, x, y); });
  }
  void Up(double x, double y) {
    Do([&] { GraphMouseUp(*app, x, y); });
  }
  void Drag(double x1, double y1, double x2, double y2) {
    Down(x1, y1);
    Move(1, x2, y2);
    Up(x2, y2);
  }
  // From minute m1 at value v1 to minute m2 at value v2, on the axes as drawn now.
  void DragMinutes(double m1, double v1, double m2, double v2) { Drag(X(m1), Y(v1), X(m2), Y(v2)); }
  double Count() { return s().record.RecordSampleCount; }
};

TEST(Zoom, TheLayoutOfTheseTestsIsTheOneDrawnAndIndexesComeFromThePlaceInTheSpan) {
  Zoomable t;
  EXPECT_EQ(t.g().YAxisBottom, 0);
  EXPECT_EQ(t.g().YAxisTop, 110);
  EXPECT_NEAR(t.X(60), 150 + 6.25 * 60, 1e-6);
  EXPECT_NEAR(TimeAtX(t.g(), t.X(60)), testing::kNoon + 1 / 24.0, 1e-9);
  EXPECT_NEAR(ValueAtY(t.g(), 850 - 55 * 700 / 110.0), 55, 1e-9);
  EXPECT_EQ(IndexAtTime(t.s().record, TimeAtX(t.g(), t.X(20))), 20);
  EXPECT_EQ(IndexAtTime(t.s().record, testing::kNoon - 1), 1);
  EXPECT_EQ(IndexAtTime(t.s().record, testing::kNoon + 1), 101);
}

TEST(Zoom, ADragEitherWayCutsTheShownSamplesToTheSelection) {
  for (bool leftwards : {false, true}) {
    SCOPED_TRACE(leftwards);
    Zoomable t;
    leftwards ? t.DragMinutes(60, 80, 20, 30) : t.DragMinutes(20, 30, 60, 80);
    const SampleRecord& r = t.s().record;
    EXPECT_EQ(t.s().graph.GraphZoomed, 1);
    EXPECT_EQ(t.Count(), 41);  // samples 20 to 60
    EXPECT_EQ(r.ShownTimes[1], r.FullTimes[20]);
    EXPECT_EQ(r.ShownTimes[41], r.FullTimes[60]);
    EXPECT_NEAR(t.g().YShownMax, 80, 1e-9);
    EXPECT_NEAR(t.g().YShownMin, 30, 1e-9);
    // The zoom copy is single precision; the whole record keeps its doubles.
    EXPECT_EQ(r.ShownValues[1].Value(), static_cast<double>(19.1f));
    EXPECT_EQ(r.FullValues[20].Value(), 19.1);
    EXPECT_EQ(r.FullSampleCount, 101);
    EXPECT_TRUE(t.w().Command2.enabled && t.w().mnuSaveTXT.enabled && t.w().Label16.visible);
    EXPECT_TRUE(t.w().Label14.visible && t.w().ProgressBar1.visible);
    EXPECT_FALSE(t.w().Shape1.visible);
    EXPECT_EQ(t.s().files.DisplayedSaved, 0);
  }
  Zoomable f;  // a record from a file does not bring back the download progress
  f.s().record.RecordFromFile = 1;
  f.w().Label14.visible = f.w().Label17.visible = f.w().ProgressBar1.visible = true;
  f.DragMinutes(20, 30, 60, 80);
  EXPECT_EQ(f.s().graph.GraphZoomed, 1);
  EXPECT_TRUE(f.w().Label16.visible);
  EXPECT_FALSE(f.w().Label14.visible || f.w().Label17.visible || f.w().ProgressBar1.visible);
}

TEST(Zoom, ReleasingPastTheRightEdgeRunsToTheLastSampleAndTakesTheValueUnderThePointer) {
  Zoomable t;
  t.Drag(t.X(50), t.Y(60), 980, 950);
  EXPECT_EQ(t.Count(), 52);  // samples 50 to 101
  EXPECT_EQ(t.s().record.ShownTimes[52], t.s().record.FullTimes[101]);
  EXPECT_NEAR(t.g().YShownMin, -100.0 * 110 / 700, 1e-9);  // under the axis bottom
}

TEST(Zoom, NoZoomAlongOneAxisOnlyWhileABlockArrivesOrADrawingRunsOrFromOutsideThePlot) {
  Zoomable t;
  const GraphState before = t.g();
  t.Drag(t.X(20), t.Y(30), t.X(20) + 1, t.Y(80));  // same index
  t.DragMinutes(20, 30, 60, 30);                   // same value
  EXPECT_EQ(t.g().YShownMin, before.YShownMin);
  EXPECT_EQ(t.g().YShownMax, before.YShownMax);
  EXPECT_FALSE(t.w().Shape1.visible || t.w().Command2.enabled);
  t.s().link.BlockPhase = 1;
  t.DragMinutes(20, 30, 60, 80);
  t.s().link.BlockPhase = 0;
  t.w().busy = true;
  t.DragMinutes(20, 30, 60, 80);
  t.w().busy = false;
  t.Down(100, 500);  // outside the plot, then dragged in: no rectangle
  t.Move(1, t.X(60), t.Y(55));
  EXPECT_FALSE(t.w().Shape1.visible);
  EXPECT_TRUE(t.w().Label10.visible);  // the readout still follows
  t.Up(t.X(60), t.Y(55));
  EXPECT_EQ(t.Count(), 101);
  EXPECT_EQ(t.s().graph.GraphZoomed, 0);
}

TEST(Zoom, ATwoSampleDragSetsTheValueRangeButLeavesTheTimeAxisUntilTheNextZoomedDrawing) {
  Zoomable t;
  t.DragMinutes(20, 30, 21, 80);
  EXPECT_EQ(t.s().graph.GraphZoomed, 0);
  EXPECT_EQ(t.Count(), 101);
  EXPECT_NEAR(t.g().YShownMax, 80, 1e-9);
  EXPECT_NEAR(t.g().YShownMin, 30, 1e-9);
  t.Draw();  // an unzoomed graph forgets that range at its next drawing
  EXPECT_NEAR(t.g().YShownMax, 100.1, 1e-9);
  // A zoomed graph keeps it and shows it the next time it is drawn. Samples 10 to 90
  // are shown, from 12:09; 12:29 and 12:30 fall on neighbouring indexes 20 and 21.
  t.DragMinutes(10, 10, 90, 100);
  t.Draw();
  t.DragMinutes(29, 40, 30, 50);
  EXPECT_EQ(t.Count(), 81);
  EXPECT_NEAR(t.g().YShownMax, 50, 1e-9);
  t.Draw();
  EXPECT_EQ(t.g().YAxisBottom, 40);
  EXPECT_EQ(t.g().YAxisTop, 51);
}

TEST(Zoom, AValueRangeNarrowerThanTheLimitIsWidenedToItAroundItsMiddle) {
  Zoomable t;
  t.Drag(t.X(20), 500, t.X(60), 500.02);
  const double mid = 55 - 0.01 * 110 / 700;
  EXPECT_EQ(t.s().graph.GraphZoomed, 1);
  EXPECT_NEAR(t.g().YShownMax, mid + 0.004, 1e-9);
  EXPECT_NEAR(t.g().YShownMin, mid - 0.004, 1e-9);
  t.Draw();  // a narrow zoomed axis still gets its ticks
  EXPECT_GT(t.g().YTickCount, 0);
  EXPECT_EQ(t.g().YLabelFormat, "#0.000;-0.000");
}

TEST(Zoom, ZoomingTwiceThenUnzoomingBringsTheWholeRecordBackInOneStep) {
  Zoomable t;
  t.DragMinutes(20, 30, 60, 80);
  t.Draw();
  // The second drag picks samples of the present selection (20 to 60, from 12:19 on):
  // 12:25 and 12:45 are its indexes 6 and 26, the record's samples 25 to 45.
  t.DragMinutes(25, 40, 45, 70);
  EXPECT_EQ(t.Count(), 21);
  EXPECT_EQ(t.s().record.ShownTimes[1], t.s().record.FullTimes[25]);
  for (int saved : {0, 1}) {
    t.s().record.RecordSaved = saved;
    t.Do(UnzoomGraph);
    const SampleRecord& r = t.s().record;
    EXPECT_EQ(t.s().graph.GraphZoomed, 0);
    EXPECT_EQ(t.Count(), 101);
    for (long i = 1; i <= 101; ++i) {
      ASSERT_EQ(r.ShownValues[i].Value(), r.FullValues[i].Value());
      ASSERT_EQ(r.ShownTimes[i], r.FullTimes[i]);
    }
    EXPECT_FALSE(t.w().Command2.enabled);
    EXPECT_EQ(t.w().Label16.caption, saved ? "en62" : "en67");
    EXPECT_EQ(t.w().Label16.foreColor, saved ? kGreen : kYellow);
    EXPECT_EQ(t.w().mnuSaveTXT.enabled, !saved);
    EXPECT_EQ(t.s().files.DisplayedSaved, 0);
    t.Draw();
    t.DragMinutes(20, 30, 60, 80);
  }
}

TEST(Zoom, TheRectangleFollowsThePointerFromTheAnchorAndOutOfThePlot) {
  Zoomable t;
  t.Down(500, 500);
  EXPECT_TRUE(t.w().Shape1.visible);
  for (auto [x, y, box] :
       {std::tuple{300, 700, Box{300, 500, 200, 200}}, {980, 100, Box{500, 100, 480, 400}}}) {
    t.Move(1, x, y);
    EXPECT_EQ(t.w().Shape1Box.left, box.left);
    EXPECT_EQ(t.w().Shape1Box.top, box.top);
    EXPECT_EQ(t.w().Shape1Box.width, box.width);
    EXPECT_EQ(t.w().Shape1Box.height, box.height);
  }
}

TEST(Readout, ThePointerOverACompleteRecordsPlotShowsItsDateTimeValueAndUnit) {
  Zoomable t;
  t.Move(0, t.X(60), t.Y(55));
  const Log1View& w = t.w();
  EXPECT_EQ(w.Label25.caption + " " + w.Label9.caption + " " + w.Label10.caption + " " + w.Label12.caption,
            "21/11/26 13:00:00 55.0 degC");
  for (const Control* c : {&w.Label25, &w.Label9, &w.Label10, &w.Label12}) EXPECT_TRUE(c->visible);
  t.Move(0, 100, t.Y(55));
  for (const Control* c : {&w.Label25, &w.Label9, &w.Label10, &w.Label12}) EXPECT_FALSE(c->visible);
  t.s().link.DownloadPercent = 40;  // before a record is complete nothing follows the pointer
  t.Down(500, 500);
  t.Move(1, 300, 700);
  EXPECT_FALSE(t.w().Label10.visible);
  EXPECT_EQ(t.w().Shape1Box.width, 0);
}

}  // namespace
}  // namespace quillet
