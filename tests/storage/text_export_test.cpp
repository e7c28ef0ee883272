// The Save command: which samples it writes in each state of the graph and the record,
// the SaveOpt question, the file name rules and the replace question.
#include "storage/text_export.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "storage/record_file.h"
#include "support/fake_platform.h"

namespace quillet {
namespace {

using Strings = std::vector<std::string>;
const Strings kWhole = {"10", "20", "30", "40"};
const Strings kShown = {"20", "30"};

// A started program holding a downloaded record of four samples, 10..40, whose graph
// shows the middle two when zoomed.
struct Saving : testing::StartedApp {
  explicit Saving(bool saved = false, bool zoomed = false) {
    SampleRecord& r = s().record;
    r.RecordModelCode = 99;  // no value format: plain numbers
    r.FullSampleCount = r.RecordSampleCount = 4;
    for (int i = 1; i <= 4; ++i) {
      r.FullTimes[i] = r.ShownTimes[i] = 46000 + i;
      r.FullValues[i] = r.ShownValues[i] = 10 * i;
    }
    r.FullMax = 40, r.FullMin = 10, r.FullAvg = 25;
    r.RecordUnitText = "degC";
    r.RecordSaved = saved ? 1 : 0;
    s().link.DownloadPercent = 100;
    w().mnuSaveTXT.enabled = true;
    if (!zoomed) return;
    r.RecordSampleCount = 2;
    for (int i = 1; i <= 2; ++i) r.ShownTimes[i] = r.FullTimes[i + 1], r.ShownValues[i] = r.FullValues[i + 1];
    r.ShownMax = 30, r.ShownMin = 20, r.ShownAvg = 25;
    s().graph.GraphZoomed = 1;
  }
  // Runs the Save command; names are picked in the save dialog in turn ("" cancels), and
  // the SaveOpt button given is pressed if the dialog comes up (0: Cancel).
  void Save(Strings names, int saveOptButton = 1) {
    for (std::string& n : names)
      if (!n.empty()) n = Path(n);
    ui.saveAnswers = names;
    ui.onModal = [this, saveOptButton](DialogId id) {
      ASSERT_EQ(id, DialogId::SaveOpt);
      offered = {app->v.SaveOpt.Command1.enabled, app->v.SaveOpt.Command2.enabled};
      if (saveOptButton == 1) SaveOptEntireRecord(*app);
      if (saveOptButton == 2) SaveOptDisplayedOnly(*app);
      if (saveOptButton == 0) SaveOptCancel(*app);
    };
    ui.modals.clear();
    ui.saveFilters.clear();
    offered.clear();
    Do(MnuSaveTXT);
  }
  // The sample values of a saved file, as the second field of each sample line.
  Strings SavedValues(const std::string& name) const {
    std::istringstream in(ReadFile(name));
    Strings values;
    std::string line;
    for (int n = 1; std::getline(in, line); ++n)
      if (n >= 14) values.push_back(line.substr(line.find('\t') + 1, line.size() - line.find('\t') - 2));
    return values;
  }
  std::vector<bool> offered;  // Command1, Command2 enabled as SaveOpt opened; empty if it did not
};

TEST(SaveCommand, WhatIsSavedAndWhatIsAskedInEachStateOfTheRecordAndTheGraph) {
  const struct {
    const char* what;
    bool saved, zoomed;
    int button;
    std::vector<bool> offered;
    Strings values;
    double savedAfter;
  } cases[] = {
      {"unzoomed, unsaved: whole, no question", false, false, 1, {}, kWhole, 1},
      {"zoomed, saved: the shown part, no question", true, true, 1, {}, kShown, 1},
      {"zoomed, unsaved: entire record", false, true, 1, {true, true}, kWhole, 1},
      {"zoomed, unsaved: displayed only", false, true, 2, {true, true}, kShown, 0},
      {"unzoomed, saved: displayed only, which is all of it", true, false, 2, {false, true}, kWhole, 1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    Saving t(c.saved, c.zoomed);
    t.Save({"rec.txt"}, c.button);
    EXPECT_EQ(t.offered, c.offered);
    EXPECT_EQ(t.ui.saveFilters, Strings{"txt files (*.txt)|*.txt"});
    EXPECT_EQ(t.SavedValues("rec.txt"), c.values);
    EXPECT_EQ(t.s().record.RecordSaved.Value(), c.savedAfter);
    if (!c.saved && !c.zoomed) {
      EXPECT_FALSE(t.w().mnuSaveTXT.enabled);
    }
    EXPECT_EQ(t.s().files.SaveFileName, t.Path("rec.txt"));
  }
}

TEST(SaveCommand, ADisplayedOnlyChoiceStandsUntilThatIsSavedAndForALaterUnquestionedSave) {
  Saving t(true);
  t.Save({"shown.txt"}, 2);
  t.Save({}, 0);
  EXPECT_EQ(t.offered, (std::vector<bool>{false, false}));

  Saving z(false, true);
  z.Save({"first.txt"}, 2);
  // Unzoomed again with a new record that is not saved: no question, and still the shown part.
  z.s().graph.GraphZoomed = 0;
  z.s().record.RecordSampleCount = 1;
  z.Save({"second.txt"});
  EXPECT_TRUE(z.offered.empty());
  EXPECT_EQ(z.SavedValues("second.txt"), Strings{"20"});
}

TEST(SaveCommand, CancelOrNoCompleteRecordWritesNothing) {
  Saving t(false, true);
  t.Save({}, 0);
  EXPECT_EQ(t.ui.modals.size(), 1u);
  EXPECT_TRUE(t.ui.saveFilters.empty());
  t.Save({""}, 1);
  EXPECT_EQ(t.ui.saveFilters.size(), 1u);
  EXPECT_EQ(t.s().record.RecordSaved.Value(), 0);
  EXPECT_TRUE(t.ui.messages.empty());
  t.s().link.DownloadPercent = 0;
  t.Save({});
  EXPECT_TRUE(t.ui.saveFilters.empty());
  ASSERT_EQ(t.ui.messages.size(), 1u);
  EXPECT_EQ(t.ui.messages[0].text, "No Data to Save.  Download First.");
  EXPECT_EQ(t.ui.messages[0].title, "en54");
  EXPECT_EQ(t.ui.messages[0].icon, MsgIcon::Information);
}

TEST(SaveCommand, TxtIsAddedUnlessTheFourthCharacterFromTheEndIsAPoint) {
  for (auto [chosen, saved] : {std::pair{"plain", "plain.txt"},
                               {"kept.csv", "kept.csv"},
                               {"four.data", "four.data.txt"},
                               {"one.c", "one.c.txt"},
                               {"already.txt", "already.txt"},
                               {".abc", ".abc"}}) {
    Saving t;
    t.Save({chosen});
    EXPECT_TRUE(t.FileExists(saved)) << chosen;
    EXPECT_EQ(t.s().files.SaveFileName, t.Path(saved));
  }
  EXPECT_EQ(SaveNameFor("ab"), "ab.txt");
  EXPECT_EQ(SaveNameFor(""), ".txt");
}

TEST(SaveCommand, AnExistingFileIsReplacedAfterYesLeftAloneAfterCancelAndNoAsksForAnotherName) {
  Saving t;
  t.WriteFile("old.txt", "keep me");
  t.ui.answer = [](const MessageRequest&) { return MsgAnswer::Cancel; };
  t.Save({"old.txt"});
  EXPECT_EQ(t.ReadFile("old.txt"), "keep me");
  EXPECT_EQ(t.s().record.RecordSaved.Value(), 0);
  t.ui.answer = nullptr;  // Yes
  t.Save({"old.txt"});
  ASSERT_EQ(t.ui.messages.size(), 2u);
  const MessageRequest& q = t.ui.messages[1];
  EXPECT_EQ(q.text + q.title, "en144en74");
  EXPECT_EQ(q.buttons, MsgButtons::YesNoCancel);
  EXPECT_EQ(q.icon, MsgIcon::Stop);
  EXPECT_EQ(q.defaultButton, 2);
  EXPECT_EQ(t.SavedValues("old.txt"), kWhole);

  Saving z(false, true);
  z.WriteFile("old.txt", "keep me");
  z.ui.answer = [](const MessageRequest&) { return MsgAnswer::No; };
  z.Save({"old.txt", "new"}, 2);
  EXPECT_EQ(z.ui.modals.size(), 1u);  // the file dialog again, not SaveOpt
  EXPECT_EQ(z.ui.saveFilters.size(), 2u);
  EXPECT_EQ(z.ReadFile("old.txt"), "keep me");
  EXPECT_EQ(z.SavedValues("new.txt"), kShown);
}

TEST(SaveCommand, ARecordFromAFileCanBeSavedOnlyInItsDisplayedPartAndAFailedWriteEndsTheProgram) {
  Saving t;
  t.Save({"orig.txt"});
  t.ui.fileAnswers = {t.Path("orig.txt")};
  t.Do(MnuOpen);
  ASSERT_EQ(t.s().record.RecordFromFile, 1);
  t.Save({"copy.txt"}, 2);
  EXPECT_EQ(t.offered, (std::vector<bool>{false, true}));
  EXPECT_EQ(t.SavedValues("copy.txt"), kWhole);
  t.Save({"no-such-folder/rec.txt"}, 2);
  ASSERT_EQ(t.ui.fatal.size(), 1u);
  EXPECT_EQ(t.ui.fatal[0].first, 75);
  EXPECT_TRUE(t.ui.ended);
}

}  // namespace
}  // namespace quillet
