// The views around a drawing of the graph (where the picture itself is held against
// reference images by the render tests), the panel of the connected logger and Describe.
#include "graph/draw_graph.h"

#include <gtest/gtest.h>

#include "graph/annotation.h"
#include "graph/panel.h"
#include "graph_test_app.h"

namespace quillet {
namespace {

using testing::Captions;
using testing::GraphApp;

TEST(DrawGraph, RmsRecordsHoldTheAxisJustUnderTheMeterLimitAndTheMaximumAtIt) {
  GraphApp t;
  t.FillMinutes({-1, 250, 500});
  SampleRecord& r = t.s().record;
  r.RecordModelCode = 10;
  r.RecordRangeFactor = 2;
  r.RecordFromFile = 1;
  t.s().files.OpenFileName = "/data/cellar.txt";
  t.w().busy = t.w().Command2.enabled = true;
  t.Draw();
  testing::ExpectNear({t.g().YShownMin, t.g().YShownMax}, {0, 499.99999});
  // The statistics with one decimal, the minimum not held; the file's name; the busy
  // state ends, and the whole record has nothing to unzoom.
  const Log1View& w = t.w();
  EXPECT_EQ(Captions({&w.Label40, &w.Label29, &w.Label30, &w.Label31, &w.Label18}),
            "3|500.0|-1.0|249.7|/data/cellar.txt");
  EXPECT_TRUE(w.Label18.visible && w.mnuFile.enabled && !w.busy && !w.Command2.enabled);
  t.FillMinutes({100, 600, 200});
  t.Draw();
  EXPECT_EQ(w.Label29.caption, "500.0");
  r.RecordModelCode = 16;  // other codes are not limited
  t.Draw();
  EXPECT_EQ(w.Label29.caption + " " + t.g().valueLabels.back(), "600.0 650");
  // Two samples leave the old picture and give the menus back.
  const std::size_t drawn = t.surface.lines.size();
  t.FillMinutes({5, 6});
  t.w().busy = t.w().Label15.visible = true;
  t.w().mnuFile.enabled = false;
  t.Draw();
  EXPECT_EQ(t.surface.clears + t.surface.lines.size(), 3 + drawn);
  EXPECT_TRUE(w.mnuFile.enabled && !w.busy && !w.Label15.visible);
}

TEST(DrawGraph, TheFunctionAndScaleMenusReturnOnlyForModelsThatUseThem) {
  GraphApp t;
  t.FillMinutes({1, 2, 3});
  for (auto [model, func, scale] : {std::tuple{16, true, false}, {22, false, true}, {31, false, false}}) {
    t.s().logger.ModelCode = model;
    t.w().mnuFunc.visible = t.w().mnuScale.visible = false;
    t.Draw();
    EXPECT_EQ(std::pair(t.w().mnuFunc.visible, t.w().mnuScale.visible), std::pair(func, scale)) << model;
  }
}

TEST(PanelTick, TheConnectedLoggerIsNamedWithItsSamplesAndAGraphOfAnotherLoggerIsNoted) {
  GraphApp t;
  t.s().link.LoggerSeen = 1;
  t.s().logger.LoggerSerial = 4711;
  t.s().logger.StoredSamples = 12345;
  t.Do(OnPanelTick);
  EXPECT_EQ(t.w().Frame1.caption + "|" + t.w().Label22.caption, "en151 4711en152|12,345");
  t.s().logger.StoredSamples = 0;
  t.FillMinutes({1, 2, 3});
  for (int logger : {815, 4711}) {  // 815: opened from a file of another logger
    t.s().record.LoggerNumber = logger;
    t.Draw();
    t.Do(OnPanelTick);
    EXPECT_EQ(t.w().Label7.visible, logger == 815);
    EXPECT_EQ(t.s().panel.OtherLoggerNotice, logger == 815 ? 1 : 0);
  }
  EXPECT_EQ(t.w().Label7.caption + "|" + t.w().Label22.caption, "en89|");
}

// Opens Describe on a saved record; `typing` edits the fields, then OK or Cancel.
void Annotate(GraphApp& t, std::function<void(DescribeView&)> typing = nullptr, bool ok = true) {
  t.s().record.RecordSaved = 1;
  t.ui.onModal = [&](DialogId) {
    if (typing) typing(t.app->v.Describe);
    ok ? DescribeOk(*t.app) : DescribeCancel(*t.app);
  };
  t.Do(AnnotateGraph);
}

TEST(Describe, OkStoresTheEditsCutToTheirLimitsWithQuotesAsBlanksAndMarksTheRecordUnsaved) {
  GraphApp t;
  SampleRecord& r = t.s().record;
  r.RecordText4 = "a\"b";
  r.RecordText6 = "\"c\"";
  r.RecordStats = "Max = \"1\"";
  std::string umlauts;
  for (int i = 0; i < 45; ++i) umlauts += "\xC3\xBC";  // u with diaeresis, two bytes
  Annotate(t, [&](DescribeView& d) {
    d.Text1.caption = "The \"cold\" room" + std::string(300, 't');  // the title is not cut
    d.Text2.caption = umlauts;                                     // the limits count characters
    d.Text3.caption = std::string(2000, 'r');
    d.Text5.caption = std::string(41, 'l');
  });
  EXPECT_EQ(r.RecordTitle, "The  cold  room" + std::string(300, 't'));
  EXPECT_EQ(r.RecordIdent + r.RecordRemarks + r.RecordLocation,
            umlauts.substr(0, 80) + std::string(1024, 'r') + std::string(40, 'l'));
  EXPECT_EQ(r.RecordText4 + "|" + r.RecordText6 + "|" + r.RecordStats, "a b| c |Max =  1 ");
  EXPECT_EQ(std::tuple(r.RecordSaved.Value(), t.w().Label16.caption, t.w().Label16.foreColor),
            std::tuple(0, "en67", kYellow));
}

TEST(Describe, OkWithoutChangesCountsOnlyAfterAnEarlierChangeAndUntilCancelClearsIt) {
  GraphApp t;
  SampleRecord& r = t.s().record;
  Annotate(t);  // first use, nothing changed: still saved
  EXPECT_EQ(r.RecordSaved.Value(), 1);
  Annotate(t, [](DescribeView& d) { d.Text1.caption = "New"; });
  Annotate(t);  // OK with the texts as they stand still marks the record unsaved
  EXPECT_EQ(r.RecordSaved.Value(), 0);
  Annotate(t, [](DescribeView& d) { d.Text1.caption = "lost"; }, false);
  Annotate(t);
  EXPECT_EQ(std::pair(r.RecordTitle, r.RecordSaved.Value()), std::pair(std::string("New"), 1.0));
  // A text over its limit counts as changed at every OK: the stored 40 characters differ.
  Annotate(t, [](DescribeView& d) { d.Text2.caption = std::string(50, 'x'); });
  Annotate(t, nullptr, false);
  Annotate(t, [](DescribeView& d) { d.Text2.caption = std::string(50, 'x'); });
  EXPECT_EQ(r.RecordSaved.Value(), 0);
}

}  // namespace
}  // namespace quillet
