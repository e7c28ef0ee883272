// The Save command: which samples it writes in each state of the graph and the record,
// the SaveOpt question, the file name rules and the replace question.
#include "storage/text_export.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "hub/app.h"
#include "storage/record_file.h"
#include "support/fake_platform.h"

namespace quillet {
namespace {

using testing::TestApp;

const char* const kFilter = "txt files (*.txt)|*.txt";

// A started program holding a downloaded record of four samples, 10..40, whose graph
// shows the middle two when zoomed.
struct Saving : TestApp {
  Saving() {
    WriteTwoLanguageFile();  // strings read "en<n>"
    WriteSettings(1, 1, 1200, 0, 0);
    Start();
    SampleRecord& r = app->s.record;
    r.RecordModelCode = 99;  // no value format: plain numbers
    r.FullSampleCount = 4;
    r.RecordSampleCount = 4;
    for (int i = 1; i <= 4; ++i) {
      r.FullTimes[i] = r.ShownTimes[i] = 46000 + i;
      r.FullValues[i] = r.ShownValues[i] = 10 * i;
    }
    r.FullMax = 40;
    r.FullMin = 10;
    r.FullAvg = 25;
    r.RecordUnitText = "degC";
    r.RecordSaved = 0;
    app->s.link.DownloadPercent = 100;
    app->v.log1.mnuSaveTXT.enabled = true;
  }
  void Zoom() {
    SampleRecord& r = app->s.record;
    r.RecordSampleCount = 2;
    for (int i = 1; i <= 2; ++i) {
      r.ShownTimes[i] = r.FullTimes[i + 1];
      r.ShownValues[i] = r.FullValues[i + 1];
    }
    r.ShownMax = 30;
    r.ShownMin = 20;
    r.ShownAvg = 25;
    app->s.graph.GraphZoomed = 1;
    app->s.files.DisplayedSaved = 0;
  }
  // Runs the Save command; names are picked in the save dialog in turn ("" cancels), and
  // the SaveOpt button given is pressed if the dialog comes up (0: Cancel).
  void Save(std::vector<std::string> names, int saveOptButton = 1) {
    for (std::string& n : names) {
      if (!n.empty()) n = Path(n);
    }
    ui.saveAnswers = names;
    ui.onModal = [this, saveOptButton](DialogId id) {
      ASSERT_EQ(id, DialogId::SaveOpt);
      saveOptOffered = {app->v.SaveOpt.Command1.enabled, app->v.SaveOpt.Command2.enabled};
      if (saveOptButton == 1) SaveOptEntireRecord(*app);
      if (saveOptButton == 2) SaveOptDisplayedOnly(*app);
      if (saveOptButton == 0) SaveOptCancel(*app);
    };
    ui.modals.clear();
    ui.saveFilters.clear();
    Dispatch(*app, [this] { MnuSaveTXT(*app); });
  }
  std::string Path(const std::string& name) const { return dir + "/" + name; }
  bool SaveOptShown() const { return !ui.modals.empty(); }
  // The sample values of a saved file, as the third field of each sample line.
  std::vector<std::string> SavedValues(const std::string& name) const {
    std::istringstream in(ReadFile(name));
    std::vector<std::string> values;
    std::string line;
    for (int n = 1; std::getline(in, line); ++n) {
      if (n >= 14) values.push_back(line.substr(line.find('\t') + 1, line.size() - line.find('\t') - 2));
    }
    return values;
  }
  std::vector<bool> saveOptOffered;  // Command1, Command2 enabled as SaveOpt opened
};

const std::vector<std::string> kWhole = {"10", "20", "30", "40"};
const std::vector<std::string> kShown = {"20", "30"};

TEST(SaveCommand, AnUnzoomedUnsavedRecordIsSavedWholeWithoutAQuestion) {
  Saving t;
  t.Save({"rec.txt"});
  EXPECT_FALSE(t.SaveOptShown());
  EXPECT_EQ(t.ui.saveFilters, std::vector<std::string>{kFilter});
  EXPECT_EQ(t.SavedValues("rec.txt"), kWhole);
  EXPECT_EQ(t.app->s.record.RecordSaved.Value(), 1);
  EXPECT_FALSE(t.app->v.log1.mnuSaveTXT.enabled);
  EXPECT_EQ(t.app->s.files.SaveFileName, t.Path("rec.txt"));
}

TEST(SaveCommand, AZoomedSavedRecordSavesItsShownPartWithoutAQuestion) {
  Saving t;
  t.app->s.record.RecordSaved = 1;
  t.Zoom();
  t.Save({"part.txt"});
  EXPECT_FALSE(t.SaveOptShown());
  EXPECT_EQ(t.SavedValues("part.txt"), kShown);
  EXPECT_EQ(t.app->s.files.DisplayedSaved, 1);
  EXPECT_EQ(t.app->s.record.RecordSaved.Value(), 1);
}

TEST(SaveCommand, AZoomedUnsavedRecordOffersBothChoices) {
  for (int button : {1, 2}) {
    Saving t;
    t.Zoom();
    t.Save({"z.txt"}, button);
    EXPECT_TRUE(t.SaveOptShown());
    EXPECT_EQ(t.saveOptOffered, (std::vector<bool>{true, true}));
    EXPECT_EQ(t.SavedValues("z.txt"), button == 1 ? kWhole : kShown) << "button " << button;
    EXPECT_EQ(t.app->s.record.RecordSaved.Value(), button == 1 ? 1 : 0);
  }
}

TEST(SaveCommand, AnUnzoomedSavedRecordOffersTheDisplayedGraphOnlyUntilThatIsSaved) {
  Saving t;
  t.app->s.record.RecordSaved = 1;
  t.Save({"shown.txt"}, 2);
  EXPECT_EQ(t.saveOptOffered, (std::vector<bool>{false, true}));
  EXPECT_EQ(t.SavedValues("shown.txt"), kWhole);  // unzoomed, the shown part is all of it
  t.Save({}, 0);
  EXPECT_EQ(t.saveOptOffered, (std::vector<bool>{false, false}));
}

TEST(SaveCommand, ADisplayedOnlyChoiceStandsForALaterUnquestionedSave) {
  Saving t;
  t.Zoom();
  t.Save({"first.txt"}, 2);
  // Unzoomed again with a new record that is not saved: no question, and still the shown part.
  t.app->s.graph.GraphZoomed = 0;
  t.app->s.record.RecordSampleCount = 1;
  t.Save({"second.txt"});
  EXPECT_FALSE(t.SaveOptShown());
  EXPECT_EQ(t.SavedValues("second.txt"), std::vector<std::string>{"20"});
}

TEST(SaveCommand, CancelInSaveOptOrInTheFileDialogWritesNothing) {
  Saving t;
  t.Zoom();
  t.Save({}, 0);
  EXPECT_TRUE(t.SaveOptShown());
  EXPECT_TRUE(t.ui.saveFilters.empty());
  t.Save({""}, 1);
  EXPECT_EQ(t.ui.saveFilters.size(), 1u);
  EXPECT_EQ(t.app->s.record.RecordSaved.Value(), 0);
  EXPECT_TRUE(t.ui.messages.empty());
}

TEST(SaveCommand, WithoutACompleteRecordTheUserIsToldAndNoFileDialogOpens) {
  Saving t;
  t.app->s.link.DownloadPercent = 0;
  t.Save({});
  EXPECT_TRUE(t.ui.saveFilters.empty());
  ASSERT_EQ(t.ui.messages.size(), 1u);
  EXPECT_EQ(t.ui.messages[0].text, "No Data to Save.  Download First.");
  EXPECT_EQ(t.ui.messages[0].title, "en54");
  EXPECT_EQ(t.ui.messages[0].icon, MsgIcon::Information);
}

TEST(SaveCommand, TxtIsAddedUnlessTheFourthCharacterFromTheEndIsAPoint) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"plain", "plain.txt"}, {"kept.csv", "kept.csv"},       {"four.data", "four.data.txt"},
      {"one.c", "one.c.txt"}, {"already.txt", "already.txt"}, {".abc", ".abc"}};
  for (const auto& [chosen, saved] : cases) {
    Saving t;
    t.Save({chosen});
    EXPECT_TRUE(t.FileExists(saved)) << chosen;
    EXPECT_EQ(t.app->s.files.SaveFileName, t.Path(saved));
  }
  EXPECT_EQ(SaveNameFor("ab"), "ab.txt");
  EXPECT_EQ(SaveNameFor(""), ".txt");
}

TEST(SaveCommand, AnExistingFileIsReplacedAfterYesAndLeftAloneAfterCancel) {
  Saving t;
  t.WriteFile("old.txt", "keep me");
  t.ui.answer = [](const MessageRequest&) { return MsgAnswer::Cancel; };
  t.Save({"old.txt"});
  EXPECT_EQ(t.ui.saveFilters.size(), 1u);
  EXPECT_EQ(t.ReadFile("old.txt"), "keep me");
  EXPECT_EQ(t.app->s.record.RecordSaved.Value(), 0);

  t.ui.answer = [](const MessageRequest&) { return MsgAnswer::Yes; };
  t.Save({"old.txt"});
  ASSERT_EQ(t.ui.messages.size(), 2u);
  const MessageRequest& q = t.ui.messages[1];
  EXPECT_EQ(q.text, "en144");
  EXPECT_EQ(q.title, "en74");
  EXPECT_EQ(q.buttons, MsgButtons::YesNoCancel);
  EXPECT_EQ(q.icon, MsgIcon::Stop);
  EXPECT_EQ(q.defaultButton, 2);
  EXPECT_EQ(t.SavedValues("old.txt"), kWhole);
}

TEST(SaveCommand, NoAtTheReplaceQuestionBringsBackTheFileDialogNotSaveOpt) {
  Saving t;
  t.Zoom();
  t.WriteFile("old.txt", "keep me");
  t.ui.answer = [](const MessageRequest&) { return MsgAnswer::No; };
  t.Save({"old.txt", "new"}, 2);
  EXPECT_EQ(t.ui.modals.size(), 1u);
  EXPECT_EQ(t.ui.saveFilters.size(), 2u);
  EXPECT_EQ(t.ReadFile("old.txt"), "keep me");
  EXPECT_EQ(t.SavedValues("new.txt"), kShown);
}

TEST(SaveCommand, ARecordFromAFileCanBeSavedOnlyInItsDisplayedPart) {
  Saving t;
  t.Save({"orig.txt"});
  t.ui.fileAnswers = {t.Path("orig.txt")};
  Dispatch(*t.app, [&] { MnuOpen(*t.app); });
  ASSERT_EQ(t.app->s.record.RecordFromFile, 1);
  t.Save({"copy.txt"}, 2);
  EXPECT_EQ(t.saveOptOffered, (std::vector<bool>{false, true}));
  EXPECT_EQ(t.SavedValues("copy.txt"), kWhole);
}

TEST(SaveCommand, AFailureWhileWritingEndsTheProgramWithTheRunTimeErrorReport) {
  Saving t;
  t.Save({"no-such-folder/rec.txt"});
  ASSERT_EQ(t.ui.fatal.size(), 1u);
  EXPECT_EQ(t.ui.fatal[0].first, 75);
  EXPECT_TRUE(t.ui.ended);
}

}  // namespace
}  // namespace quillet
