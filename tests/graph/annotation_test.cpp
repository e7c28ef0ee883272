// Describe and the clipboard copy: what OK keeps of the typed texts, when the record
// becomes unsaved, and what happens without a complete record.
#include "graph/annotation.h"

#include <gtest/gtest.h>

#include <string>

#include "support/fake_platform.h"

namespace quillet {
namespace {

// A started program with a record from the logger, saved, and the user's typing for the
// Describe dialog (applied when it opens; Cancel unless told to press OK).
struct Annotating : testing::StartedApp {
  Annotating() {
    s().link.DownloadPercent = 100;
    s().record.RecordSaved = 1;
    w().mnuSaveTXT.enabled = false;
    w().Label16.caption = "en62";
    ui.onModal = [this](DialogId id) {
      ASSERT_EQ(id, DialogId::Describe);
      DescribeView& d = app->v.Describe;
      seen = {d.Text1.caption, d.Text2.caption, d.Text3.caption, d.Text5.caption};
      if (type) type(d);
      pressOk ? DescribeOk(*app) : DescribeCancel(*app);
    };
  }
  void Annotate(std::function<void(DescribeView&)> typing = nullptr, bool ok = true) {
    type = std::move(typing);
    pressOk = ok;
    Do(AnnotateGraph);
  }
  void MarkSaved() {
    s().record.RecordSaved = 1;
    w().mnuSaveTXT.enabled = false;
  }
  SampleRecord& r() { return app->s.record; }
  bool MarkedUnsaved() {
    return r().RecordSaved.Value() == 0 && w().mnuSaveTXT.enabled && w().Label16.caption == "en67" &&
           w().Label16.foreColor == 0x00FFFF;
  }
  std::function<void(DescribeView&)> type;
  bool pressOk = true;
  std::vector<std::string> seen;  // the four fields as the dialog opened
};

TEST(Describe, OpensWithTheRecordTextsAndOkStoresTheEditsCutToTheirLimitsMarkingTheRecordUnsaved) {
  Annotating t;
  t.r().RecordTitle = "Old title";
  t.r().RecordIdent = "id";
  t.r().RecordRemarks = "remarks";
  t.r().RecordLocation = "loc";
  std::string umlauts;
  for (int i = 0; i < 45; ++i) umlauts += "\xC3\xBC";  // u with diaeresis, two bytes
  const std::string longTitle(300, 't');
  t.Annotate([&](DescribeView& d) {
    d.Text1.caption = longTitle;  // the title is not cut
    d.Text2.caption = umlauts;    // the limits count characters, not bytes
    d.Text3.caption = std::string(2000, 'r');
    d.Text5.caption = std::string(41, 'l');
  });
  EXPECT_EQ(t.seen, (std::vector<std::string>{"Old title", "id", "remarks", "loc"}));
  EXPECT_EQ(t.r().RecordTitle, longTitle);
  EXPECT_EQ(t.r().RecordIdent, umlauts.substr(0, 80));
  EXPECT_EQ(t.r().RecordRemarks, std::string(1024, 'r'));
  EXPECT_EQ(t.r().RecordLocation, std::string(40, 'l'));
  EXPECT_TRUE(t.MarkedUnsaved());
  EXPECT_FALSE(t.app->v.Describe.visible);
}

TEST(Describe, DoubleQuotesBecomeBlanksInAllSevenTextsOfTheRecord) {
  Annotating t;
  t.r().RecordText4 = "a\"b";
  t.r().RecordText6 = "\"c\"";
  t.r().RecordStats = "Max = \"1\"";
  t.Annotate([](DescribeView& d) {
    d.Text1.caption = "The \"cold\" room";
    d.Text3.caption = "say \"hi\"";
  });
  EXPECT_EQ(t.r().RecordTitle, "The  cold  room");
  EXPECT_EQ(t.r().RecordRemarks, "say  hi ");
  EXPECT_EQ(t.r().RecordText4 + "|" + t.r().RecordText6 + "|" + t.r().RecordStats, "a b| c |Max =  1 ");
}

TEST(Describe, OkWithoutChangesCountsOnlyAfterAnEarlierChangeAndUntilCancelClearsIt) {
  Annotating t;
  t.r().RecordTitle = "Same";
  t.Annotate();  // first use, nothing changed: still saved
  EXPECT_EQ(t.r().RecordSaved.Value(), 1);
  EXPECT_FALSE(t.w().mnuSaveTXT.enabled);
  EXPECT_EQ(t.w().Label16.caption, "en62");
  t.Annotate([](DescribeView& d) { d.Text1.caption = "New"; });
  t.MarkSaved();
  t.Annotate();  // OK with the texts as they stand still marks the record unsaved
  EXPECT_TRUE(t.MarkedUnsaved());
  t.MarkSaved();
  t.Annotate(nullptr, false);
  t.Annotate();
  EXPECT_EQ(t.r().RecordSaved.Value(), 1);
  // A text over its limit counts as changed at every OK: the stored 40 characters differ.
  t.Annotate([](DescribeView& d) { d.Text2.caption = std::string(50, 'x'); });
  t.Annotate(nullptr, false);
  t.MarkSaved();
  t.Annotate([](DescribeView& d) { d.Text2.caption = std::string(50, 'x'); });
  EXPECT_EQ(t.r().RecordSaved.Value(), 0);
}

TEST(Describe, CancelAfterEditsKeepsTheOldTextsAndTheNextOpeningShowsTheRecordAgain) {
  Annotating t;
  t.r().RecordTitle = "Old";
  t.Annotate(
      [](DescribeView& d) {
        d.Text1.caption = "New";
        d.Text3.caption = "lost";
      },
      false);
  EXPECT_EQ(t.r().RecordTitle + "|" + t.r().RecordRemarks, "Old|");
  EXPECT_EQ(t.r().RecordSaved.Value(), 1);
  EXPECT_FALSE(t.app->v.Describe.visible);
  t.Annotate();
  EXPECT_EQ(t.seen[0] + "|" + t.seen[2], "Old|");
}

TEST(GraphToClipboard, OnlyACompleteRecordIsCopiedOtherwiseTheUserIsTold) {
  Annotating t;
  t.s().link.DownloadPercent = 40;
  t.Do(CopyGraphToClipboard);
  EXPECT_EQ(t.ui.clipboardCopies, 0);
  ASSERT_EQ(t.ui.messages.size(), 1u);
  EXPECT_EQ(t.ui.messages[0].text, "No Graph to Copy.  Download First");
  EXPECT_EQ(t.ui.messages[0].title, "en54");
  EXPECT_EQ(t.ui.messages[0].icon, MsgIcon::Information);
  t.s().link.DownloadPercent = 100;
  t.Do(CopyGraphToClipboard);
  EXPECT_EQ(t.ui.clipboardCopies, 1);
  EXPECT_EQ(t.ui.messages.size(), 1u);
}

}  // namespace
}  // namespace quillet
