// Reading and zooming the graph with the mouse, on a drawn record of 101 samples a minute
// apart from noon with values 0.1 to 100.1: the plot spans 12:00 to 14:00 from x 150 to
// 900 (6.25 units a minute) and 0 to 110 from y 850 up to 150.
#include "graph/zoom.h"

#include <gtest/gtest.h>

#include "graph_test_app.h"

namespace quillet {
namespace {

using testing::ExpectNear;
using testing::kNoon;

struct Zoomable : testing::GraphApp {
  Zoomable() {
    std::vector<double> values;
    for (int i = 0; i <= 100; ++i) values.push_back(i + 0.1);
    FillMinutes(values);
    s().record.RecordUnitText = "degC";
    Draw();
  }
  // The shown sample count and value range.
  std::vector<double> Shown() { return {s().record.RecordSampleCount, g().YShownMin, g().YShownMax}; }
  // Which of the zoom's marks on the window are on.
  std::string On() {
    const Log1View& v = w();
    return std::string(v.Command2.enabled ? " Command2" : "") + (v.mnuSaveTXT.enabled ? " mnuSaveTXT" : "") +
           (v.Label14.visible ? " Label14" : "") + (v.Label16.visible ? " Label16" : "") +
           (v.Label17.visible ? " Label17" : "") + (v.ProgressBar1.visible ? " ProgressBar1" : "") +
           (v.Shape1.visible ? " Shape1" : "");
  }
};

TEST(Zoom, ADragEitherWayCutsTheShownSamplesToTheSelection) {
  for (bool leftwards : {false, true}) {
    Zoomable t;
    leftwards ? t.DragMinutes(60, 80, 20, 30) : t.DragMinutes(20, 30, 60, 80);
    const SampleRecord& r = t.s().record;
    ExpectNear(t.Shown(), {41, 30, 80});  // samples 20 to 60
    EXPECT_TRUE(r.ShownTimes[1] == r.FullTimes[20] && r.ShownTimes[41] == r.FullTimes[60]) << leftwards;
    // The zoom copy is single precision; the whole record keeps its doubles.
    EXPECT_EQ(std::tuple(r.ShownValues[1].Value(), r.FullValues[20].Value(), r.FullSampleCount.Value()),
              std::tuple(static_cast<double>(19.1f), 19.1, 101));
    EXPECT_EQ(t.g().GraphZoomed + t.s().files.DisplayedSaved, 1);
    EXPECT_EQ(t.On(), " Command2 mnuSaveTXT Label14 Label16 Label17 ProgressBar1");
  }
  Zoomable f;  // a record from a file does not bring back the download progress
  f.s().record.RecordFromFile = 1;
  f.w().Label14.visible = f.w().Label17.visible = f.w().ProgressBar1.visible = true;
  f.DragMinutes(20, 30, 60, 80);
  EXPECT_EQ(f.On(), " Command2 mnuSaveTXT Label16");
  // Released past the right edge: the selection runs to the last sample, and the value
  // under the pointer is taken as it is, under the axis bottom.
  Zoomable e;
  e.Drag(e.X(50), e.Y(60), 980, 950);
  ExpectNear(e.Shown(), {52, -100.0 * 110 / 700, 60});
  EXPECT_EQ(e.s().record.ShownTimes[52], e.s().record.FullTimes[101]);
}

TEST(Zoom, NoZoomAlongOneAxisOnlyWhileABlockArrivesOrADrawingRunsOrFromOutsideThePlot) {
  Zoomable t;
  const std::vector<double> before = t.Shown();
  const std::string marks = t.On();
  t.Drag(t.X(20), t.Y(30), t.X(20) + 1, t.Y(80));  // same index
  t.DragMinutes(20, 30, 60, 30);                   // same value
  t.s().link.BlockPhase = 1;
  t.DragMinutes(20, 30, 60, 80);
  t.s().link.BlockPhase = 0;
  t.w().busy = true;
  t.DragMinutes(20, 30, 60, 80);
  t.w().busy = false;
  t.Down(100, 500);  // outside the plot, then dragged in: no rectangle, but the readout follows
  t.Move(1, t.X(60), t.Y(55));
  EXPECT_TRUE(!t.w().Shape1.visible && t.w().Label10.visible);
  t.Up(t.X(60), t.Y(55));
  EXPECT_EQ(t.Shown(), before);
  EXPECT_EQ(t.On(), marks);
  EXPECT_EQ(t.g().GraphZoomed, 0);
}

TEST(Zoom, ATwoSampleDragSetsTheValueRangeButLeavesTheTimeAxisUntilTheNextZoomedDrawing) {
  Zoomable t;
  t.DragMinutes(20, 30, 21, 80);
  EXPECT_EQ(t.g().GraphZoomed, 0);
  ExpectNear(t.Shown(), {101, 30, 80});
  t.Draw();  // an unzoomed graph forgets that range at its next drawing
  EXPECT_NEAR(t.g().YShownMax, 100.1, 1e-9);
  // A zoomed graph keeps it and shows it the next time it is drawn. Samples 10 to 90
  // are shown, from 12:09; 12:29 and 12:30 fall on neighbouring indexes 20 and 21.
  t.DragMinutes(10, 10, 90, 100);
  t.Draw();
  t.DragMinutes(29, 40, 30, 50);
  ExpectNear(t.Shown(), {81, 40, 50});
  t.Draw();
  EXPECT_EQ(t.g().valueLabels.front() + " " + t.g().valueLabels.back(), "40 51");
  EXPECT_TRUE(t.w().Command2.enabled);
  // A value range narrower than the limit is widened to it around its middle, and the
  // narrow axis still gets its ticks.
  t.Drag(t.X(20), 500, t.X(60), 500.02);
  const double mid = t.g().YAxisBottom + (350 - 0.01) * (t.g().YAxisTop - t.g().YAxisBottom) / 700;
  ExpectNear({t.g().YShownMin, t.g().YShownMax}, {mid - 0.004, mid + 0.004});
  t.Draw();
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
  EXPECT_EQ(t.Shown()[0], 21);
  EXPECT_EQ(t.s().record.ShownTimes[1], t.s().record.FullTimes[25]);
  for (int saved : {0, 1}) {
    t.s().record.RecordSaved = saved;
    t.Do(UnzoomGraph);
    const SampleRecord& r = t.s().record;
    EXPECT_EQ(t.Shown()[0], 101);
    for (long i = 1; i <= 101; ++i) {
      ASSERT_EQ(r.ShownValues[i].Value(), r.FullValues[i].Value());
      ASSERT_EQ(r.ShownTimes[i], r.FullTimes[i]);
    }
    EXPECT_EQ(t.g().GraphZoomed + t.s().files.DisplayedSaved + t.w().Command2.enabled, 0);
    EXPECT_EQ(std::tuple(t.w().Label16.caption, t.w().Label16.foreColor, t.w().mnuSaveTXT.enabled),
              std::tuple(saved ? "en62" : "en67", saved ? kGreen : kYellow, !saved));
    t.Draw();
    t.DragMinutes(20, 30, 60, 80);
  }
}

TEST(Zoom, PlacesOnThePlotGiveTimesValuesAndIndexesAndTheRectangleAndReadoutFollowThePointer) {
  Zoomable t;
  EXPECT_NEAR(TimeAtX(t.g(), 150 + 6.25 * 60), kNoon + 1 / 24.0, 1e-9);
  EXPECT_NEAR(ValueAtY(t.g(), 850 - 55 * 700 / 110.0), 55, 1e-9);
  EXPECT_EQ(IndexAtTime(t.s().record, TimeAtX(t.g(), t.X(20))), 20);
  EXPECT_EQ(IndexAtTime(t.s().record, kNoon - 1), 1);  // held to the record
  EXPECT_EQ(IndexAtTime(t.s().record, kNoon + 1), 101);
  const Log1View& w = t.w();
  t.Down(500, 500);
  EXPECT_TRUE(w.Shape1.visible);
  // From the anchor, and out of the plot.
  for (auto [x, y, box] :
       {std::tuple{300, 700, Box{300, 500, 200, 200}}, {980, 100, Box{500, 100, 480, 400}}}) {
    t.Move(1, x, y);
    ExpectNear({w.Shape1Box.left, w.Shape1Box.top, w.Shape1Box.width, w.Shape1Box.height},
               {box.left, box.top, box.width, box.height});
  }
  t.Move(0, t.X(60), t.Y(55));
  EXPECT_EQ(testing::Captions({&w.Label25, &w.Label9, &w.Label10, &w.Label12}),
            "21/11/26|13:00:00|55.0|degC");
  EXPECT_TRUE(w.Label25.visible && w.Label9.visible && w.Label10.visible && w.Label12.visible);
  t.Move(0, 100, t.Y(55));
  EXPECT_FALSE(w.Label25.visible || w.Label9.visible || w.Label10.visible || w.Label12.visible);
  t.s().link.DownloadPercent = 40;  // before a record is complete nothing follows the pointer
  t.Down(500, 500);
  t.Move(1, 300, 700);
  EXPECT_FALSE(w.Label10.visible);
  EXPECT_EQ(w.Shape1Box.width, 0);
}

}  // namespace
}  // namespace quillet
