// Reading and zooming the graph with the mouse, on a drawn record of 101 samples a minute
// apart from noon with values 0.1 to 100.1: the plot spans 12:00 to 14:00 from x 150 to
// 900 (6.25 units a minute) and 0 to 110 from y 850 up to 150.
#include "graph/zoom.h"

#include <gtest/gtest.h>

#include <vector>

#include "graph_test_app.h"

namespace quillet {
namespace {

using testing::GraphApp;

double XAtMinute(double m) { return 150 + 6.25 * m; }
double YAtValue(double v) { return 850 - v * 700 / 110; }

// The same places on whatever axes the last drawing left.
double XAt(const GraphState& g, double minutesAfterNoon) {
  const double t = testing::kNoon + minutesAfterNoon / 1440;
  return 150 + (t - g.AxisTimeStart) / (g.AxisTimeEnd - g.AxisTimeStart) * 750;
}
double YAt(const GraphState& g, double v) {
  return 850 - (v - g.YAxisBottom) / (g.YAxisTop - g.YAxisBottom) * 700;
}

struct Zoomable : GraphApp {
  Zoomable() {
    std::vector<double> values;
    for (int i = 0; i <= 100; ++i) values.push_back(i + 0.1);
    FillMinutes(values);
    s().record.RecordUnitText = "degC";
    Draw();
  }
  void Down(double x, double y) {
    Dispatch(*app, [&] { GraphMouseDown(*app, x, y); });
  }
  void Move(int buttons, double x, double y) {
    Dispatch(*app, [&] { GraphMouseMove(*app, buttons, x, y); });
  }
  void Up(double x, double y) {
    Dispatch(*app, [&] { GraphMouseUp(*app, x, y); });
  }
  void Drag(double x1, double y1, double x2, double y2) {
    Down(x1, y1);
    Move(1, x2, y2);
    Up(x2, y2);
  }
  void Unzoom() {
    Dispatch(*app, [&] { UnzoomGraph(*app); });
  }
  double Count() { return s().record.RecordSampleCount; }
};

TEST(Zoom, TheLayoutOfTheseTestsIsTheOneDrawn) {
  Zoomable t;
  EXPECT_EQ(t.g().YAxisBottom, 0);
  EXPECT_EQ(t.g().YAxisTop, 110);
  EXPECT_NEAR(TimeAtX(t.g(), XAtMinute(60)), testing::kNoon + 1 / 24.0, 1e-9);
  EXPECT_NEAR(ValueAtY(t.g(), YAtValue(55)), 55, 1e-9);
  // The index comes from the place in the span alone: minute 20 of 100 with 101 samples.
  EXPECT_EQ(IndexAtTime(t.s().record, TimeAtX(t.g(), XAtMinute(20))), 20);
  EXPECT_EQ(IndexAtTime(t.s().record, testing::kNoon - 1), 1);
  EXPECT_EQ(IndexAtTime(t.s().record, testing::kNoon + 1), 101);
}

TEST(Zoom, ADragEitherWayCutsTheShownSamplesToTheSelection) {
  Zoomable right, left;
  right.Drag(XAtMinute(20), YAtValue(30), XAtMinute(60), YAtValue(80));
  left.Drag(XAtMinute(60), YAtValue(80), XAtMinute(20), YAtValue(30));
  for (Zoomable* t : {&right, &left}) {
    const SampleRecord& r = t->s().record;
    EXPECT_EQ(t->s().graph.GraphZoomed, 1);
    EXPECT_EQ(t->Count(), 41);  // samples 20 to 60
    EXPECT_EQ(r.ShownTimes[1], r.FullTimes[20]);
    EXPECT_EQ(r.ShownTimes[41], r.FullTimes[60]);
    EXPECT_NEAR(t->g().YShownMax, 80, 1e-9);
    EXPECT_NEAR(t->g().YShownMin, 30, 1e-9);
    // The zoom copy is single precision; the whole record keeps its doubles.
    EXPECT_EQ(r.ShownValues[1].Value(), static_cast<double>(19.1f));
    EXPECT_EQ(r.FullValues[20].Value(), 19.1);
    EXPECT_EQ(r.FullSampleCount, 101);
    EXPECT_TRUE(t->w().Command2.enabled);
    EXPECT_TRUE(t->w().mnuSaveTXT.enabled);
    EXPECT_EQ(t->s().files.DisplayedSaved, 0);
    EXPECT_TRUE(t->w().Label16.visible);
    EXPECT_TRUE(t->w().Label14.visible);
    EXPECT_TRUE(t->w().ProgressBar1.visible);
    EXPECT_FALSE(t->w().Shape1.visible);
  }
}

TEST(Zoom, ARecordFromAFileDoesNotBringBackTheDownloadProgress) {
  Zoomable t;
  t.s().record.RecordFromFile = 1;
  t.w().Label14.visible = t.w().Label17.visible = t.w().ProgressBar1.visible = true;
  t.Drag(XAtMinute(20), YAtValue(30), XAtMinute(60), YAtValue(80));
  EXPECT_EQ(t.s().graph.GraphZoomed, 1);
  EXPECT_TRUE(t.w().Label16.visible);
  EXPECT_FALSE(t.w().Label14.visible);
  EXPECT_FALSE(t.w().Label17.visible);
  EXPECT_FALSE(t.w().ProgressBar1.visible);
}

TEST(Zoom, ReleasingPastTheRightEdgeRunsToTheLastSampleAndTakesTheValueUnderThePointer) {
  Zoomable t;
  t.Drag(XAtMinute(50), YAtValue(60), 980, 950);
  const SampleRecord& r = t.s().record;
  EXPECT_EQ(t.Count(), 52);  // samples 50 to 101
  EXPECT_EQ(r.ShownTimes[52], r.FullTimes[101]);
  EXPECT_NEAR(t.g().YShownMin, -100.0 * 110 / 700, 1e-9);  // under the axis bottom
}

TEST(Zoom, ADragAlongOneAxisOnlyChangesNothing) {
  Zoomable t;
  const GraphState before = t.g();
  t.Drag(XAtMinute(20), YAtValue(30), XAtMinute(20) + 1, YAtValue(80));  // same index
  t.Drag(XAtMinute(20), YAtValue(30), XAtMinute(60), YAtValue(30));      // same value
  EXPECT_EQ(t.s().graph.GraphZoomed, 0);
  EXPECT_EQ(t.Count(), 101);
  EXPECT_EQ(t.g().YShownMin, before.YShownMin);
  EXPECT_EQ(t.g().YShownMax, before.YShownMax);
  EXPECT_FALSE(t.w().Shape1.visible);
  EXPECT_FALSE(t.w().Command2.enabled);
}

TEST(Zoom, NoZoomStartsWhileABlockArrivesOrADrawingRuns) {
  Zoomable t;
  t.s().link.BlockPhase = 1;
  t.Drag(XAtMinute(20), YAtValue(30), XAtMinute(60), YAtValue(80));
  EXPECT_EQ(t.Count(), 101);
  t.s().link.BlockPhase = 0;
  t.w().busy = true;
  t.Drag(XAtMinute(20), YAtValue(30), XAtMinute(60), YAtValue(80));
  EXPECT_EQ(t.Count(), 101);
  EXPECT_EQ(t.s().graph.GraphZoomed, 0);
}

TEST(Zoom, ATwoSampleDragSetsTheValueRangeButLeavesTheTimeAxisUntilTheNextZoomedDrawing) {
  Zoomable t;
  t.Drag(XAtMinute(20), YAtValue(30), XAtMinute(21), YAtValue(80));
  EXPECT_EQ(t.s().graph.GraphZoomed, 0);
  EXPECT_EQ(t.Count(), 101);
  EXPECT_NEAR(t.g().YShownMax, 80, 1e-9);
  EXPECT_NEAR(t.g().YShownMin, 30, 1e-9);
  // An unzoomed graph forgets that range at its next drawing.
  t.Draw();
  EXPECT_NEAR(t.g().YShownMax, 100.1, 1e-9);

  // A zoomed graph keeps it and shows it the next time it is drawn. Samples 10 to 90
  // are shown, from 12:09; 12:29 and 12:30 fall on neighbouring indexes 20 and 21.
  t.Drag(XAtMinute(10), YAtValue(10), XAtMinute(90), YAtValue(100));
  t.Draw();
  t.Drag(XAt(t.g(), 29), YAt(t.g(), 40), XAt(t.g(), 30), YAt(t.g(), 50));
  EXPECT_EQ(t.Count(), 81);
  EXPECT_NEAR(t.g().YShownMax, 50, 1e-9);
  t.Draw();
  EXPECT_EQ(t.g().YAxisBottom, 40);
  EXPECT_EQ(t.g().YAxisTop, 51);
}

TEST(Zoom, AValueRangeNarrowerThanTheLimitIsWidenedToItAroundItsMiddle) {
  Zoomable t;
  t.Drag(XAtMinute(20), 500, XAtMinute(60), 500.02);
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
  t.Drag(XAtMinute(20), YAtValue(30), XAtMinute(60), YAtValue(80));
  t.Draw();
  // The second drag picks samples of the present selection (20 to 60, from 12:19 on):
  // 12:25 and 12:45 are its indexes 6 and 26, the record's samples 25 to 45.
  t.Drag(XAt(t.g(), 25), YAt(t.g(), 40), XAt(t.g(), 45), YAt(t.g(), 70));
  EXPECT_EQ(t.s().graph.GraphZoomed, 1);
  EXPECT_EQ(t.Count(), 21);
  EXPECT_EQ(t.s().record.ShownTimes[1], t.s().record.FullTimes[25]);

  t.s().record.RecordSaved = 0;
  t.Unzoom();
  const SampleRecord& r = t.s().record;
  EXPECT_EQ(t.s().graph.GraphZoomed, 0);
  EXPECT_EQ(t.Count(), 101);
  for (long i = 1; i <= 101; ++i) {
    ASSERT_EQ(r.ShownValues[i].Value(), r.FullValues[i].Value());
    ASSERT_EQ(r.ShownTimes[i], r.FullTimes[i]);
  }
  EXPECT_FALSE(t.w().Command2.enabled);
  EXPECT_EQ(t.w().Label16.caption, "en67");
  EXPECT_EQ(t.w().Label16.foreColor, kYellow);
  EXPECT_TRUE(t.w().mnuSaveTXT.enabled);

  t.Drag(XAtMinute(20), YAtValue(30), XAtMinute(60), YAtValue(80));
  t.s().record.RecordSaved = 1;
  t.Unzoom();
  EXPECT_EQ(t.w().Label16.caption, "en62");
  EXPECT_EQ(t.w().Label16.foreColor, kGreen);
  EXPECT_FALSE(t.w().mnuSaveTXT.enabled);
  EXPECT_EQ(t.s().files.DisplayedSaved, 0);
}

TEST(Zoom, TheRectangleFollowsThePointerFromTheAnchorAndOutOfThePlot) {
  Zoomable t;
  t.Down(500, 500);
  EXPECT_TRUE(t.w().Shape1.visible);
  t.Move(1, 300, 700);
  EXPECT_EQ(t.w().Shape1Box.left, 300);
  EXPECT_EQ(t.w().Shape1Box.top, 500);
  EXPECT_EQ(t.w().Shape1Box.width, 200);
  EXPECT_EQ(t.w().Shape1Box.height, 200);
  t.Move(1, 980, 100);
  EXPECT_EQ(t.w().Shape1Box.left, 500);
  EXPECT_EQ(t.w().Shape1Box.top, 100);
  EXPECT_EQ(t.w().Shape1Box.width, 480);
  EXPECT_EQ(t.w().Shape1Box.height, 400);
}

TEST(Zoom, PressingOutsideThePlotAndDraggingInShowsNoRectangleAndZoomsNothing) {
  Zoomable t;
  t.Down(100, 500);
  t.Move(1, XAtMinute(60), YAtValue(55));
  EXPECT_FALSE(t.w().Shape1.visible);
  EXPECT_TRUE(t.w().Label10.visible);  // the readout still follows
  t.Up(XAtMinute(60), YAtValue(55));
  EXPECT_EQ(t.s().graph.GraphZoomed, 0);
  EXPECT_EQ(t.Count(), 101);
}

TEST(Readout, ThePointerOverThePlotShowsItsDateTimeValueAndUnit) {
  Zoomable t;
  t.Move(0, XAtMinute(60), YAtValue(55));
  const Log1View& w = t.w();
  EXPECT_EQ(w.Label25.caption, "21/11/26");
  EXPECT_EQ(w.Label9.caption, "13:00:00");
  EXPECT_EQ(w.Label10.caption, "55.0");
  EXPECT_EQ(w.Label12.caption, "degC");
  for (const Control* c : {&w.Label25, &w.Label9, &w.Label10, &w.Label12}) EXPECT_TRUE(c->visible);

  t.Move(0, 100, YAtValue(55));
  for (const Control* c : {&w.Label25, &w.Label9, &w.Label10, &w.Label12}) EXPECT_FALSE(c->visible);
}

TEST(Readout, NothingFollowsThePointerBeforeARecordIsComplete) {
  Zoomable t;
  t.s().link.DownloadPercent = 40;
  t.w().Label10.visible = false;
  t.Down(500, 500);
  t.Move(1, 300, 700);
  EXPECT_FALSE(t.w().Label10.visible);
  EXPECT_EQ(t.w().Shape1Box.width, 0);
}

}  // namespace
}  // namespace quillet
