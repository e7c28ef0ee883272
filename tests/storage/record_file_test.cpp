// The record file: what the writer puts on disk byte for byte, what the reader makes of
// each revision and of damaged files, and the Open and Save commands around them.
#include "storage/record_file.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "storage/text_export.h"
#include "support/fake_platform.h"

namespace quillet {
namespace {

using Strings = std::vector<std::string>;
const Strings kWhole = {"10", "20", "30", "40"}, kShown = {"20", "30"};

// A started program holding a downloaded record of four samples, 10..40 a day apart (no
// value format: plain numbers), whose graph shows the middle two when zoomed.
struct Storage : testing::StartedApp {
  explicit Storage(bool saved = false, bool zoomed = false) {
    SampleRecord& r = s().record;
    r.RecordModelCode = 99;
    r.FullSampleCount = r.RecordSampleCount = 4;
    for (int i = 1; i <= 4; ++i) {
      r.FullTimes[i] = r.ShownTimes[i] = 46000 + i;
      r.FullValues[i] = r.ShownValues[i] = 10 * i;
    }
    r.FullMax = r.ShownMax = 40, r.FullMin = r.ShownMin = 10, r.FullAvg = r.ShownAvg = 25;
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
  SampleRecord& r() { return s().record; }
  Strings Paths(Strings names) {
    for (std::string& n : names)
      if (!n.empty()) n = Path(n);
    return names;
  }
  // Opens the named files in turn through the Open command ("" cancels the dialog).
  void Open(const Strings& names) {
    ui.fileAnswers = Paths(names);
    Do(MnuOpen);
  }
  // Runs the Save command; names are picked in the save dialog in turn ("" cancels), and
  // the SaveOpt button given is pressed if the dialog comes up (0: Cancel).
  void Save(const Strings& names, int saveOptButton = 1) {
    ui.saveAnswers = Paths(names);
    ui.onModal = [this, saveOptButton](DialogId id) {
      ASSERT_EQ(id, DialogId::SaveOpt);
      offered = {app->v.SaveOpt.Command1.enabled, app->v.SaveOpt.Command2.enabled};
      (saveOptButton == 1 ? SaveOptEntireRecord
                          : saveOptButton == 2 ? SaveOptDisplayedOnly : SaveOptCancel)(*app);
    };
    ui.modals.clear(), ui.saveFilters.clear(), offered.clear();
    Do(MnuSaveTXT);
  }
  // The statistics line and the sample values of a saved file.
  Strings Saved(const std::string& name) const {
    std::istringstream in(ReadFile(name));
    Strings out;
    for (std::string line; std::getline(in, line);) {
      line.pop_back();  // the CR
      if (line.find('\t') != std::string::npos) out.push_back(line.substr(line.find('\t') + 1));
      if (line.rfind("\"Max", 0) == 0) out.push_back(line);
    }
    return out;
  }
  std::vector<bool> offered;  // Command1, Command2 enabled as SaveOpt opened; empty if it did not
};

// A rev02 file with the given unit and samples lines, texts "T1".."T7", range factor 5, logger 42.
std::string Rev02(const std::string& unit, int count, const std::string& samples) {
  std::ostringstream f;
  f << "\"loggerfile\"\r\n\"rev02\"\r\n" << count << "\r\n";
  for (int i = 1; i <= 7; ++i) f << "\"T" << i << "\"\r\n";
  f << "5\r\n42\r\n\"" << unit << "\"\r\n" << samples;
  return f.str();
}

TEST(RecordFile, AWholeRecordIsWrittenByteForByteAndOpensAgainWithItsStatisticsWorkedOutAfresh) {
  Storage t;
  t.r().FullTimes[1] = 46347.123456789;
  t.r().FullMax = 100, t.r().FullMin = -100, t.r().FullAvg = 7;  // stale figures: the file keeps them as text
  t.r().RecordTitle = "Cold room", t.r().RecordIdent = "North", t.r().RecordRemarks = "door left open";
  t.r().RecordLocation = "Hall 2", t.r().RecordText6 = "x";
  t.r().RecordRangeFactor = 2, t.r().LoggerNumber = 1234;
  t.Do([&] { WriteRecordFile(*t.app, t.Path("whole.txt"), false); });
  EXPECT_EQ(t.ReadFile("whole.txt"),
            "\"loggerfile\"\r\n\"rev02\"\r\n4\r\n\"Cold room\"\r\n\"North\"\r\n\"door left open\"\r\n\"\"\r\n"
            "\"Hall 2\"\r\n\"x\"\r\n\"Max = 100         Min = -100         Avg = 7\"\r\n2\r\n1234\r\n\"degC\"\r\n"
            "46347.12345679\t10\r\n46002.\t20\r\n46003.\t30\r\n46004.\t40\r\n");
  EXPECT_EQ(t.r().RecordSaved.Value(), 1);
  EXPECT_FALSE(t.w().mnuSaveTXT.enabled);
  EXPECT_EQ(std::pair(t.w().Label16.caption, t.w().Label16.foreColor), std::pair(std::string("en62"), 0x00FF00));

  t.r().FullValues[2] = 0, t.r().RecordTitle = "";
  t.Open({"whole.txt"});
  EXPECT_TRUE(t.ui.messages.empty());
  EXPECT_EQ(t.ui.fileFilters, Strings{"txt files (*.txt)|*.txt"});
  const SampleRecord& r = t.r();
  EXPECT_NEAR(r.FullTimes[1], 46347.123456789, 5e-9);
  EXPECT_EQ(std::tuple(r.FullValues[2].Value(), r.ShownValues[4].Value(), r.RecordTitle, r.RecordStats),
            std::tuple(20.0, 40.0, "Cold room", "Max = 100         Min = -100         Avg = 7"));
  EXPECT_EQ(std::tuple(r.FullMin.Value(), r.FullMax.Value(), r.FullAvg.Value(), r.RecordModelCode.Value()),
            std::tuple(10.0, 40.0, 25.0, 2.0));  // 2: the graph's code for degC
  EXPECT_EQ(r.RecordFromFile + r.RecordSaved.Value(), 2);
  const Log1View& w = t.w();
  EXPECT_FALSE(w.mnuSaveTXT.enabled || w.mnuFunc.visible || w.mnuScale.visible || w.Command2.enabled);
  EXPECT_TRUE(w.mnuPGraph.enabled && w.mnuPData.enabled && w.mnuGClip.enabled && w.Command3.enabled);
}

TEST(RecordFile, EachRevisionSampleFormAndUnitReadsBack) {
  // Content, then the model code, range factor, logger, texts and the first sample read.
  for (auto [content, code, factor, logger, texts, time, value] :
       std::vector<std::tuple<std::string, double, double, double, std::string, double, double>>{
           {Rev02("Volt", 2, "46347,5\t12,5\r\n46347,75\t-0,25\r\n"), 4, 5, 42, "T1T2T3T4T5T6T7", 46347.5, 12.5},
           {Rev02("V rms", 1, "46347.5\t1\r\n"), 10, 2, 42, "T1T2T3T4T5T6T7", 46347.5, 1},  // the two volt ranges
           {Rev02("V rms ", 1, "46347.5\t1\r\n"), 11, 1, 42, "T1T2T3T4T5T6T7", 46347.5, 1},
           {Rev02("mV", 1, "46347.5\t1\r\n"), 31, 5, 42, "T1T2T3T4T5T6T7", 46347.5, 1},  // not a unit of the list
           // rev01: texts on one line, samples as comma fields, a range factor 0 reads as 1.
           {"\"loggerfile\",\"rev01\",2\r\n\"a\",\"b\",\"c\",\"d\",\"e\",\"f\",\"g\"\r\n0\r\n7,\"kOhm\"\r\n"
            "46347.5,3.25\r\n46347.6,\"4\"\r\n", 3, 1, 7, "abcdefg", 46347.5, 3.25},
           // Another revision: no texts, the factor right after the count.
           {"\"loggerfile\"\r\n\"rev07\"\r\n1\r\n3\r\n88\r\n\"Amp\"\r\n46347.5,2,5\r\n", 5, 3, 88, "", 46347.5, 2}}) {
    SCOPED_TRACE(content);
    Storage t(true);
    t.r().RecordModelCode = 31;  // kept when the unit is not one of the list
    t.WriteFile("f.txt", content);
    t.Open({"f.txt"});
    EXPECT_TRUE(t.ui.messages.empty());
    const SampleRecord& r = t.r();
    EXPECT_EQ(std::tuple(r.RecordModelCode.Value(), r.RecordRangeFactor.Value(), r.LoggerNumber.Value(),
                         r.RecordTitle + r.RecordIdent + r.RecordRemarks + r.RecordText4 + r.RecordLocation +
                             r.RecordText6 + r.RecordStats,
                         r.FullTimes[1], r.FullValues[1].Value()),
              std::tuple(code, factor, logger, texts, time, value));
  }
}

TEST(RecordFile, AMissingForeignOrDamagedFileIsReportedAndTheDialogOpensAgainWithoutTheUnsavedQuestion) {
  std::string many;
  for (int i = 1; i <= 16385; ++i) many += "46347.5\t" + std::to_string(i) + "\r\n";
  // Content, the messages, and a value read before the damage that stays.
  for (auto [content, messages, kept] : std::vector<std::tuple<std::string, Strings, std::pair<long, double>>>{
           {"", {"en55", "en54"}, {1, 9}},  // no file at all
           {"\"shopping list\"\r\n\"eggs\"\r\n", {"en53", "en54"}, {1, 9}},
           {Rev02("Volt", 3, "46347.5\t1\r\n46347.75\t2\r\n"), {"en56", "en54"}, {2, 2}},  // ends early
           {Rev02("Volt", 3, "46347.5\t1\r\n46347.75\t2\r\n46348 3\r\n"), {"en56", "en54"}, {2, 2}},  // no tab
           {Rev02("Volt", 16385, many), {"en56", "en54"}, {16384, 16384}}}) {  // more than a record holds
    SCOPED_TRACE(messages[0]);
    Storage t;  // unsaved
    t.WriteFile("good.txt", Rev02("Volt", 1, "46347.5\t9\r\n"));
    if (!content.empty()) t.WriteFile("bad.txt", content);
    t.Open({"bad.txt", messages[0] == "en56" ? "" : "good.txt"});
    EXPECT_EQ(t.ui.MessageTexts(), (Strings{"en76", messages[0]}));
    EXPECT_EQ(t.ui.messages[1].title, messages[1]);
    EXPECT_EQ(t.ui.fileFilters.size(), 2u);
    EXPECT_DOUBLE_EQ(t.r().FullValues[kept.first], kept.second);
    EXPECT_EQ(t.s().files.OpenRetry, messages[0] == "en56" ? 1 : 0);
    // A damaged file leaves no statistics; a foreign one carries on after the nested open
    // and empties the texts of the good file.
    EXPECT_EQ(t.r().RecordTitle, messages[0] == "en53" ? "" : "T1");
    EXPECT_EQ(t.r().FullMax.Value(), messages[0] == "en56" ? 40 : 9);
  }
  Storage t;
  t.WriteFile("full.txt", Rev02("Volt", 16384, many));
  t.Open({"full.txt"});
  EXPECT_EQ(t.r().FullSampleCount.Value(), 16384);
  EXPECT_DOUBLE_EQ(t.r().FullMax, 16384);
}

TEST(RecordFile, CancelAtTheUnsavedQuestionOrInTheFileDialogLeavesTheRecordAlone) {
  Storage t;
  t.ui.answer = [](const MessageRequest&) { return MsgAnswer::Cancel; };
  t.Open({});
  EXPECT_EQ(t.ui.messages[0].buttons, MsgButtons::OkCancel);
  EXPECT_EQ(t.ui.messages[0].icon, MsgIcon::Stop);
  EXPECT_TRUE(t.ui.fileFilters.empty());
  t.ui.answer = nullptr;
  t.Open({""});
  EXPECT_EQ(t.ui.fileFilters.size(), 1u);
  EXPECT_EQ(t.ui.MessageTexts(), (Strings{"en76", "en76"}));
  EXPECT_EQ(t.r().FullValues[4].Value(), 40);
  EXPECT_EQ(t.r().RecordFromFile, 0);
}

TEST(SaveCommand, WhatIsSavedAndWhatIsAskedInEachStateOfTheRecordAndTheGraph) {
  const std::string kWholeStats = "\"Max = 40         Min = 10         Avg = 25\"";
  const std::string kShownStats = "\"Max = 30         Min = 20         Avg = 25\"";
  const struct {
    const char* what;
    bool saved, zoomed;
    int button;
    std::vector<bool> offered;
    bool shown;  // the shown part rather than the whole record
    double savedAfter;
    bool saveableAfter;
  } cases[] = {
      {"unzoomed, unsaved: whole, no question", false, false, 1, {}, false, 1, false},
      {"zoomed, saved: the shown part, no question", true, true, 1, {}, true, 1, false},
      {"zoomed, unsaved: entire record, the shown part still to save", false, true, 1, {true, true}, false, 1, true},
      {"zoomed, unsaved: displayed only", false, true, 2, {true, true}, true, 0, false},
      {"unzoomed, saved: displayed only, which is all of it", true, false, 2, {false, true}, false, 1, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    Storage t(c.saved, c.zoomed);
    t.Save({"rec.txt"}, c.button);
    EXPECT_EQ(t.offered, c.offered);
    EXPECT_EQ(t.ui.saveFilters, Strings{"txt files (*.txt)|*.txt"});
    Strings expected = c.shown ? kShown : kWhole;
    expected.insert(expected.begin(), c.shown ? kShownStats : kWholeStats);
    EXPECT_EQ(t.Saved("rec.txt"), expected);
    EXPECT_EQ(t.r().RecordSaved.Value(), c.savedAfter);
    EXPECT_EQ(t.w().mnuSaveTXT.enabled, c.saveableAfter);
    EXPECT_EQ(t.s().files.SaveFileName, t.Path("rec.txt"));
  }
}

TEST(SaveCommand, ADisplayedOnlyChoiceStandsForALaterUnquestionedSaveAndCancelWritesNothing) {
  Storage t(true);
  t.Save({"shown.txt"}, 2);
  t.Save({}, 0);
  EXPECT_EQ(t.offered, (std::vector<bool>{false, false}));
  EXPECT_TRUE(t.ui.saveFilters.empty());

  Storage z(false, true);
  z.Save({""}, 2);  // Cancel in the save dialog
  EXPECT_EQ(z.ui.saveFilters.size(), 1u);
  EXPECT_FALSE(z.FileExists("rec.txt"));
  // Unzoomed again with a new record that is not saved: no question, and still the shown part.
  z.s().graph.GraphZoomed = 0;
  z.r().RecordSampleCount = 1;
  z.Save({"second.txt"});
  EXPECT_TRUE(z.offered.empty());
  EXPECT_EQ(z.Saved("second.txt").back(), "20");
  z.s().link.DownloadPercent = 0;
  z.Save({});
  ASSERT_EQ(z.ui.messages.size(), 1u);
  EXPECT_EQ(std::tuple(z.ui.messages[0].text, z.ui.messages[0].title, z.ui.messages[0].icon),
            std::tuple("No Data to Save.  Download First.", "en54", MsgIcon::Information));
}

TEST(SaveCommand, TxtIsAddedUnlessTheFourthCharacterFromTheEndIsAPoint) {
  for (auto [chosen, saved] : {std::pair{"plain", "plain.txt"}, {"kept.csv", "kept.csv"}, {"four.data", "four.data.txt"},
                               {"one.c", "one.c.txt"}, {".abc", ".abc"}, {"ab", "ab.txt"}})
    EXPECT_EQ(SaveNameFor(chosen), saved);
  Storage t;
  t.Save({"plain"});
  EXPECT_TRUE(t.FileExists("plain.txt"));
}

TEST(SaveCommand, AnExistingFileIsReplacedAfterYesLeftAloneAfterCancelAndNoAsksForAnotherName) {
  Storage t;
  t.WriteFile("old.txt", "keep me");
  t.ui.answer = [](const MessageRequest&) { return MsgAnswer::Cancel; };
  t.Save({"old.txt"});
  EXPECT_EQ(t.ReadFile("old.txt"), "keep me");
  EXPECT_EQ(t.r().RecordSaved.Value(), 0);
  t.ui.answer = [](const MessageRequest&) { return MsgAnswer::No; };
  t.Save({"old.txt", "new"});  // No: the dialog comes again
  EXPECT_EQ(t.ui.saveFilters.size(), 2u);
  EXPECT_EQ(t.ReadFile("old.txt"), "keep me");
  EXPECT_EQ(t.Saved("new.txt").size(), 5u);
  t.ui.answer = nullptr;  // Yes
  t.Save({"old.txt"});
  ASSERT_EQ(t.ui.messages.size(), 3u);
  const MessageRequest& q = t.ui.messages[2];
  EXPECT_EQ(std::tuple(q.text, q.title, q.buttons, q.icon, q.defaultButton),
            std::tuple("en144", "en74", MsgButtons::YesNoCancel, MsgIcon::Stop, 2));
  EXPECT_EQ(t.Saved("old.txt"), t.Saved("new.txt"));
}

TEST(SaveCommand, ARecordFromAFileCanBeSavedOnlyInItsDisplayedPartAndAFailedWriteEndsTheProgram) {
  Storage t;
  t.Save({"orig.txt"});
  t.Open({"orig.txt"});
  ASSERT_EQ(t.r().RecordFromFile, 1);
  t.Save({"copy.txt"}, 2);
  EXPECT_EQ(t.offered, (std::vector<bool>{false, true}));
  EXPECT_EQ(t.Saved("copy.txt").back(), "40");
  t.Save({"no-such-folder/rec.txt"}, 2);
  ASSERT_EQ(t.ui.fatal.size(), 1u);
  EXPECT_EQ(t.ui.fatal[0].first, 75);
  EXPECT_TRUE(t.ui.ended);
}

}  // namespace
}  // namespace quillet
