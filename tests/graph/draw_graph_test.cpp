// The graph as drawn: scales of worked records asserted on the results and on the
// surface calls, the busy state around the drawing, the statistics frame and the menus,
// and the panel of the connected logger as the 100 ms tick keeps it.
#include "graph/draw_graph.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "graph/panel.h"
#include "graph_test_app.h"

namespace quillet {
namespace {

using testing::GraphApp;
using testing::kNoon;
using testing::kSecond;
using Strings = std::vector<std::string>;

const int kRed = Rgb(255, 0, 0);

void ExpectLine(const testing::RecordingSurface::LineCall& l, double x1, double y1, double x2, double y2) {
  EXPECT_DOUBLE_EQ(l.x1, x1);
  EXPECT_DOUBLE_EQ(l.y1, y1);
  EXPECT_DOUBLE_EQ(l.x2, x2);
  EXPECT_DOUBLE_EQ(l.y2, y2);
}

TEST(DrawGraph, AFlatGraphAtTwentySpansFifteenToTwentySixWithEveryCallInItsPlace) {
  GraphApp t;
  t.FillMinutes(std::vector<double>(10, 20.0));
  t.s().record.LoggerNumber = 42;
  t.s().record.RecordTitle = "Cellar";
  t.s().record.RecordUnitText = "degC";
  t.Draw();
  const GraphState& g = t.g();
  EXPECT_EQ(g.YTickCount, 11);
  EXPECT_EQ(g.YLabelFormat, "####0;-###0");
  EXPECT_EQ(g.ReadoutFormat, "####0.0;-###0.0");
  // Nine minutes: two-minute labels with a plain grid line between each two.
  EXPECT_EQ(g.TimeTickSeconds, 120);
  EXPECT_EQ(g.MinorPerMajor, 2);
  EXPECT_EQ(g.timeLabels, (Strings{"12:00", "12:02", "12:04", "12:06", "12:08", "12:10"}));
  EXPECT_EQ(g.valueLabels, (Strings{"15", "16", "17", "18", "19", "20", "21", "22", "23", "24", "25", "26"}));
  EXPECT_DOUBLE_EQ(g.PlotLeft + g.PlotTop + g.PlotWidth + g.PlotHeight + g.PlotBottomMargin,
                   150 + 150 + 750 + 700 + 150);

  const auto& l = t.surface.lines;
  ASSERT_EQ(l.size(), 4u + 9u + 10u + 9u);
  // Frame: the sides run on 17.5 below the plot.
  ExpectLine(l[0], 150, 150, 150, 867.5);
  ExpectLine(l[1], 150, 850, 900, 850);
  ExpectLine(l[2], 900, 867.5, 900, 150);
  ExpectLine(l[3], 900, 150, 150, 150);
  EXPECT_EQ(l[0].colour, kDefaultColor);
  // Vertical grid: only the labelled lines run on below the plot.
  for (int i = 1; i <= 9; ++i) {
    EXPECT_DOUBLE_EQ(l[3 + i].x1, 150 + 75 * i);
    EXPECT_DOUBLE_EQ(l[3 + i].y2, i % 2 == 0 ? 867.5 : 850) << "grid line " << i;
  }
  EXPECT_DOUBLE_EQ(l[13].y1, 850 - 700.0 / 11);
  // The trace is bright red, at 5/11 of the plot height.
  const auto trace = t.surface.LinesIn(kRed);
  ASSERT_EQ(trace.size(), 9u);
  EXPECT_DOUBLE_EQ(trace[0].x1, 150);
  EXPECT_NEAR(trace[0].y1, 850 - 700.0 * 5 / 11, 1e-9);
  EXPECT_NEAR(trace[8].x2, 150 + 750.0 * 9 / 10, 1e-4);

  const auto& x = t.surface.texts;
  ASSERT_EQ(x.size(), 6u + 12u + 3u);
  EXPECT_NEAR(x[0].x, 150 - 37.5, 1e-9);  // a time label starts 0.05 plot widths left of its line
  EXPECT_DOUBLE_EQ(x[0].y, 892);
  EXPECT_EQ(x[0].font, "Arial 9");
  EXPECT_NEAR(x[7].x, 90, 1e-9);  // value labels at 0.12 plot widths
  EXPECT_NEAR(x[7].y, 850 - 700.0 / 11 - 14, 1e-9);
  EXPECT_EQ(x[18].text, "degC");
  EXPECT_DOUBLE_EQ(x[18].x + x[18].y, 15 + 500);
  EXPECT_EQ(x[19].text + "|" + x[19].font, "Cellar|Arial 12 bold");
  EXPECT_DOUBLE_EQ(x[19].y, 75);
  EXPECT_EQ(x[20].text,
            "en5821/11/26 12:00:00" + std::string(75, ' ') + "Logger No:" + std::string(5, ' ') + "42");
  EXPECT_EQ(x[20].font, "Arial 8");
  EXPECT_DOUBLE_EQ(x[20].x, 150);
  EXPECT_DOUBLE_EQ(x[20].y, 850 + 0.63 * 150);
  EXPECT_EQ(t.s().panel.GraphLoggerNumber, 42);
}

TEST(DrawGraph, TheAxesFollowTheDataAndTheTraceLiesWhereItsValuesAre) {
  GraphApp t;
  t.FillMinutes(std::vector<double>(5, 0.0));
  t.Draw();
  EXPECT_EQ(t.g().YAxisBottom, 0);
  EXPECT_EQ(t.g().YAxisTop, 6);
  for (const auto& l : t.surface.LinesIn(kRed)) EXPECT_DOUBLE_EQ(l.y1 + l.y2, 2 * 850);  // on the bottom edge
  t.FillMinutes({-3, 0, 7, 2});
  t.Draw();
  EXPECT_EQ(t.g().valueLabels.front() + " " + t.g().valueLabels[3] + " " + t.g().valueLabels.back(),
            "-3 0 8");
  // A six-hundred second tick starts on the ten minutes before the first sample.
  const double first = 46347 + (10 * 3600 + 17 * 60 + 23) * kSecond;
  t.Fill({first, first + 1000 * kSecond, first + 2000 * kSecond}, {1, 2, 3});
  t.Draw();
  EXPECT_EQ(t.g().TimeTickSeconds, 600);
  EXPECT_EQ(t.g().timeLabels, (Strings{"10:10", "10:20", "10:30", "10:40", "10:50", "11:00"}));
  const auto trace = t.surface.LinesIn(kRed);
  ASSERT_EQ(trace.size(), 2u);
  EXPECT_NEAR(trace[0].x1, 150 + 750 * 443.0 / 3000, 1e-4);  // 443 of the axis's 3000 seconds in
}

TEST(DrawGraph, TwoSamplesLeaveTheOldPictureAndGiveTheMenusBack) {
  GraphApp t;
  t.FillMinutes({1, 2, 3});
  t.Draw();
  const std::size_t drawn = t.surface.lines.size();
  t.FillMinutes({5, 6});
  t.w().mnuFile.enabled = t.w().mnuPort.enabled = false;
  t.w().busy = t.w().Label15.visible = true;
  t.Draw();
  EXPECT_EQ(t.surface.clears, 1);
  EXPECT_EQ(t.surface.lines.size(), drawn);
  EXPECT_FALSE(t.w().busy || t.w().Label15.visible);
  EXPECT_TRUE(t.w().mnuFile.enabled && t.w().mnuPort.enabled);
}

TEST(DrawGraph, TheStatisticsFrameShowsOneDecimalTheBusyStateEndsAndAFileIsNamed) {
  GraphApp t;
  t.FillMinutes({1.25, 4, 2, 0.5});
  t.w().Command2.enabled = true;
  t.s().record.RecordFromFile = 1;
  t.s().files.OpenFileName = "/data/cellar.txt";
  t.Draw();
  const Log1View& w = t.w();
  EXPECT_EQ(w.Label40.caption + " " + w.Label29.caption + " " + w.Label30.caption + " " + w.Label31.caption,
            "4 4.0 0.5 1.9");  // 7.75 / 4 = 1.9375
  EXPECT_DOUBLE_EQ(t.s().record.ShownAvg, 1.9375);
  for (const Control* c : {&w.Frame2, &w.Label24, &w.Label27, &w.Label32, &w.Label33, &w.Label29, &w.Label30,
                           &w.Label31, &w.Label40, &w.Label18})
    EXPECT_TRUE(c->visible);
  EXPECT_EQ(w.Label18.caption, "/data/cellar.txt");
  EXPECT_FALSE(w.Label8.visible || w.Picture3.visible || w.busy || w.Label15.visible);
  EXPECT_FALSE(w.Command2.enabled);  // the whole record: nothing to unzoom
  EXPECT_EQ(w.Label15.caption, "");
  for (const Control* c : {&w.mnuFile, &w.mnuSetTime, &w.mnuDownload, &w.mnuDate, &w.mnuHelp, &w.mnuPort})
    EXPECT_TRUE(c->enabled);
}

TEST(DrawGraph, RmsRecordsHoldTheAxisJustUnderTheMeterLimitAndTheMaximumAtIt) {
  GraphApp t;
  t.FillMinutes({-1, 250, 500});
  t.s().record.RecordModelCode = 10;
  t.s().record.RecordRangeFactor = 2;
  t.Draw();
  EXPECT_DOUBLE_EQ(t.g().YShownMax, 499.99999);
  EXPECT_EQ(t.g().YShownMin, 0);
  EXPECT_EQ(t.s().record.ShownMax, 500);
  EXPECT_EQ(t.s().record.ShownMin, -1);  // the minimum is not held
  EXPECT_EQ(t.w().Label29.caption, "500.0");
  t.FillMinutes({100, 600, 200});
  t.Draw();
  EXPECT_EQ(t.s().record.ShownMax, 500);
  t.s().record.RecordModelCode = 16;  // other codes are not limited
  t.Draw();
  EXPECT_EQ(t.s().record.ShownMax, 600);
  EXPECT_EQ(t.g().YShownMax, 600);
}

TEST(DrawGraph, TheFunctionMenuReturnsOnlyForModelsThatUseIt) {
  GraphApp t;
  t.FillMinutes({1, 2, 3});
  for (auto [model, func, scale] : {std::tuple{0, false, false},
                                    {16, true, false},
                                    {22, false, true},
                                    {29, false, true},
                                    {31, false, false}}) {
    t.s().logger.ModelCode = model;
    t.w().mnuFunc.visible = t.w().mnuScale.visible = false;
    t.Draw();
    EXPECT_EQ(t.w().mnuFunc.visible, func) << "model " << model;
    EXPECT_EQ(t.w().mnuScale.visible, scale) << "model " << model;
  }
}

TEST(DrawGraph, AZoomedGraphKeepsItsValueRangeAndClipsTheTraceToIt) {
  GraphApp t;
  t.FillMinutes({20, 50, 60, 20, 0, -10});
  t.s().graph.GraphZoomed = 1;
  t.g().YShownMin = 12;
  t.g().YShownMax = 36;
  t.w().Command2.enabled = true;
  t.Draw();
  EXPECT_EQ(t.g().YAxisBottom, 12);
  EXPECT_EQ(t.g().YAxisTop, 38);
  EXPECT_TRUE(t.w().Command2.enabled);
  // Up through the top, wholly above (skipped), down through the top, down through the
  // bottom, wholly below (skipped).
  const auto trace = t.surface.LinesIn(kRed);
  ASSERT_EQ(trace.size(), 3u);
  EXPECT_DOUBLE_EQ(trace[0].y2, 150);
  EXPECT_DOUBLE_EQ(trace[1].y1, 150);
  EXPECT_DOUBLE_EQ(trace[2].y2, 850);
}

TEST(DrawGraph, EverySamplePairOfAFullRecordIsDrawn) {
  GraphApp t;
  std::vector<double> times, values;
  for (int i = 0; i < 16384; ++i) {
    times.push_back(kNoon + i * 60 * kSecond);
    values.push_back(i % 7 - 3.5);
  }
  t.Fill(times, values);
  t.Draw();
  EXPECT_EQ(t.surface.LinesIn(kRed).size(), 16383u);
  EXPECT_EQ(t.g().TimeLabelFormat, "dd/mm");  // over eleven days: date labels
  // Four-day ticks counted from day zero: the axis starts three days before the record.
  EXPECT_EQ(t.g().timeLabels.front(), "18/11");
}

TEST(PanelTick, TheConnectedLoggerIsNamedWithItsSamplesAndAGraphOfAnotherLoggerIsNoted) {
  GraphApp t;
  t.s().link.LoggerSeen = 1;
  t.s().logger.LoggerSerial = 4711;
  t.s().logger.StoredSamples = 12345;
  t.Do(OnPanelTick);
  EXPECT_EQ(t.w().Frame1.caption, "en151 4711en152");
  EXPECT_EQ(t.w().Label22.caption, "12,345");
  EXPECT_TRUE(t.w().Label22.visible);
  t.s().logger.StoredSamples = 0;
  t.FillMinutes({1, 2, 3});
  for (int logger : {815, 4711}) {  // 815: opened from a file of another logger
    t.s().record.LoggerNumber = logger;
    t.Draw();
    t.Do(OnPanelTick);
    EXPECT_EQ(t.w().Label22.caption, "");
    EXPECT_EQ(t.w().Label7.visible, logger == 815);
    EXPECT_EQ(t.s().panel.OtherLoggerNotice, logger == 815 ? 1 : 0);
  }
  EXPECT_EQ(t.w().Label7.caption, "en89");
}

}  // namespace
}  // namespace quillet
