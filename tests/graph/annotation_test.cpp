// Describe and the clipboard copy: what OK keeps of the typed texts, when the record
// becomes unsaved, and what happens without a complete record.
#include "graph/annotation.h"

#include <gtest/gtest.h>

#include <string>

#include "hub/app.h"
#include "support/fake_platform.h"

namespace quillet {
namespace {

using testing::TestApp;

// A started program with a record from the logger, saved, and the user's typing for the
// Describe dialog (applied when it opens; Cancel unless told to press OK).
struct Annotating : TestApp {
  Annotating() {
    WriteTwoLanguageFile();  // strings read "en<n>"
    WriteSettings(1, 1, 1200, 0, 0);
    Start();
    app->s.link.DownloadPercent = 100;
    app->s.record.RecordSaved = 1;
    app->v.log1.mnuSaveTXT.enabled = false;
    app->v.log1.Label16.caption = "en62";
    ui.onModal = [this](DialogId id) {
      ASSERT_EQ(id, DialogId::Describe);
      DescribeView& d = app->v.Describe;
      seen = {d.Text1.caption, d.Text2.caption, d.Text3.caption, d.Text5.caption};
      if (type) type(d);
      if (pressOk) {
        DescribeOk(*app);
      } else {
        DescribeCancel(*app);
      }
    };
  }
  void Annotate() {
    Dispatch(*app, [this] { AnnotateGraph(*app); });
  }
  SampleRecord& r() { return app->s.record; }
  bool MarkedUnsaved() const {
    return app->s.record.RecordSaved.Value() == 0 && app->v.log1.mnuSaveTXT.enabled &&
           app->v.log1.Label16.caption == "en67" && app->v.log1.Label16.foreColor == 0x00FFFF;
  }
  std::function<void(DescribeView&)> type;
  bool pressOk = true;
  std::vector<std::string> seen;  // the four fields as the dialog opened
};

TEST(Describe, OpensWithTheRecordTextsAndOkStoresTheEditsMarkingTheRecordUnsaved) {
  Annotating t;
  t.r().RecordTitle = "Old title";
  t.r().RecordIdent = "id";
  t.r().RecordRemarks = "remarks";
  t.r().RecordLocation = "loc";
  t.type = [](DescribeView& d) {
    d.Text1.caption = "Cold room";
    d.Text5.caption = "Hall 2";
  };
  t.Annotate();
  EXPECT_EQ(t.seen, (std::vector<std::string>{"Old title", "id", "remarks", "loc"}));
  EXPECT_EQ(t.r().RecordTitle, "Cold room");
  EXPECT_EQ(t.r().RecordIdent, "id");
  EXPECT_EQ(t.r().RecordRemarks, "remarks");
  EXPECT_EQ(t.r().RecordLocation, "Hall 2");
  EXPECT_TRUE(t.MarkedUnsaved());
  EXPECT_FALSE(t.app->v.Describe.visible);
}

TEST(Describe, OkCutsIdentAndLocationToFortyCharactersAndTheDescriptionTo1024ButNotTheTitle) {
  Annotating t;
  const std::string longTitle(300, 't');
  t.type = [&](DescribeView& d) {
    d.Text1.caption = longTitle;
    d.Text2.caption = std::string(41, 'i');
    d.Text3.caption = std::string(2000, 'r');
    d.Text5.caption = std::string(40, 'l');
  };
  t.Annotate();
  EXPECT_EQ(t.r().RecordTitle, longTitle);
  EXPECT_EQ(t.r().RecordIdent, std::string(40, 'i'));
  EXPECT_EQ(t.r().RecordRemarks, std::string(1024, 'r'));
  EXPECT_EQ(t.r().RecordLocation, std::string(40, 'l'));
}

TEST(Describe, TheLimitsCountCharactersSoNoCharacterIsCutInHalf) {
  Annotating t;
  std::string umlauts;
  for (int i = 0; i < 45; ++i) umlauts += "\xC3\xBC";  // u with diaeresis, two bytes
  t.type = [&](DescribeView& d) { d.Text2.caption = umlauts; };
  t.Annotate();
  EXPECT_EQ(t.r().RecordIdent, umlauts.substr(0, 80));
}

TEST(Describe, DoubleQuotesBecomeBlanksInAllSevenTextsOfTheRecord) {
  Annotating t;
  t.r().RecordText4 = "a\"b";
  t.r().RecordText6 = "\"c\"";
  t.r().RecordStats = "Max = \"1\"";
  t.type = [](DescribeView& d) {
    d.Text1.caption = "The \"cold\" room";
    d.Text3.caption = "say \"hi\"";
  };
  t.Annotate();
  EXPECT_EQ(t.r().RecordTitle, "The  cold  room");
  EXPECT_EQ(t.r().RecordRemarks, "say  hi ");
  EXPECT_EQ(t.r().RecordText4, "a b");
  EXPECT_EQ(t.r().RecordText6, " c ");
  EXPECT_EQ(t.r().RecordStats, "Max =  1 ");
}

TEST(Describe, OkWithoutChangesCountsOnlyAfterAnEarlierChangeAndUntilCancelClearsIt) {
  Annotating t;
  t.r().RecordTitle = "Same";
  t.Annotate();  // first use, nothing changed: no redraw, still saved
  EXPECT_EQ(t.r().RecordSaved.Value(), 1);
  EXPECT_FALSE(t.app->v.log1.mnuSaveTXT.enabled);
  EXPECT_EQ(t.app->v.log1.Label16.caption, "en62");

  t.type = [](DescribeView& d) { d.Text1.caption = "New"; };
  t.Annotate();
  // Saved again; then OK with the texts as they stand still marks the record unsaved.
  t.r().RecordSaved = 1;
  t.app->v.log1.mnuSaveTXT.enabled = false;
  t.type = nullptr;
  t.Annotate();
  EXPECT_TRUE(t.MarkedUnsaved());

  t.r().RecordSaved = 1;
  t.app->v.log1.mnuSaveTXT.enabled = false;
  t.pressOk = false;
  t.Annotate();
  t.pressOk = true;
  t.Annotate();
  EXPECT_EQ(t.r().RecordSaved.Value(), 1);
}

TEST(Describe, ATextOverItsLimitCountsAsChangedAtEveryOk) {
  Annotating t;
  t.type = [](DescribeView& d) { d.Text2.caption = std::string(50, 'x'); };
  t.Annotate();
  t.pressOk = false;
  t.type = nullptr;
  t.Annotate();  // Cancel clears the change mark
  t.r().RecordSaved = 1;
  t.pressOk = true;
  t.type = [](DescribeView& d) { d.Text2.caption = std::string(50, 'x'); };
  t.Annotate();  // the same 50 characters again: the stored 40 differ
  EXPECT_EQ(t.r().RecordSaved.Value(), 0);
}

TEST(Describe, CancelAfterEditsKeepsTheOldTextsAndTheRecordSaved) {
  Annotating t;
  t.r().RecordTitle = "Old";
  t.pressOk = false;
  t.type = [](DescribeView& d) {
    d.Text1.caption = "New";
    d.Text3.caption = "lost";
  };
  t.Annotate();
  EXPECT_EQ(t.r().RecordTitle, "Old");
  EXPECT_EQ(t.r().RecordRemarks, "");
  EXPECT_EQ(t.r().RecordSaved.Value(), 1);
  EXPECT_FALSE(t.app->v.Describe.visible);
  // The next opening shows the record again, not the cancelled typing.
  t.type = nullptr;
  t.Annotate();
  EXPECT_EQ(t.seen[0], "Old");
  EXPECT_EQ(t.seen[2], "");
}

TEST(GraphToClipboard, OnlyACompleteRecordIsCopiedOtherwiseTheUserIsTold) {
  Annotating t;
  t.app->s.link.DownloadPercent = 40;
  Dispatch(*t.app, [&] { CopyGraphToClipboard(*t.app); });
  EXPECT_EQ(t.ui.clipboardCopies, 0);
  ASSERT_EQ(t.ui.messages.size(), 1u);
  EXPECT_EQ(t.ui.messages[0].text, "No Graph to Copy.  Download First");
  EXPECT_EQ(t.ui.messages[0].title, "en54");
  EXPECT_EQ(t.ui.messages[0].icon, MsgIcon::Information);

  t.app->s.link.DownloadPercent = 100;
  Dispatch(*t.app, [&] { CopyGraphToClipboard(*t.app); });
  EXPECT_EQ(t.ui.clipboardCopies, 1);
  EXPECT_EQ(t.ui.messages.size(), 1u);
}

}  // namespace
}  // namespace quillet
