// The record file as each revision and a damaged file read back, and the Open and Save commands.
#include "storage/record_file.h"

#include <gtest/gtest.h>

#include <sstream>

#include "storage/text_export.h"
#include "support/fake_platform.h"

namespace quillet {
namespace {

using Strings = std::vector<std::string>;

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
    r.ShownMax = 30, r.ShownMin = 20;
    s().graph.GraphZoomed = 1;
  }
  SampleRecord& r() { return s().record; }
  // Opens the named files in turn through the Open command ("" cancels the dialog).
  void Open(Strings names) {
    for (std::string& n : names) n = n.empty() ? n : Path(n);
    ui.fileAnswers = names;
    Do(MnuOpen);
  }
  // Runs the Save command; names are picked in the save dialog in turn ("" cancels), and
  // the SaveOpt button given is pressed if the dialog comes up (0: Cancel).
  void Save(Strings names, int saveOptButton = 1) {
    for (std::string& n : names) n = n.empty() ? n : Path(n);
    ui.saveAnswers = names;
    ui.onModal = [this, saveOptButton](DialogId) {
      offered = {app->v.SaveOpt.Command1.enabled, app->v.SaveOpt.Command2.enabled};
      (saveOptButton == 1 ? SaveOptEntireRecord : saveOptButton ? SaveOptDisplayedOnly : SaveOptCancel)(*app);
    };
    ui.saveFilters.clear(), offered.clear();
    Do(MnuSaveTXT);
  }
  // The sample values of a saved file.
  Strings Saved(const std::string& name) const {
    std::istringstream in(ReadFile(name));
    Strings values;
    for (std::string line; std::getline(in, line, '\r');)  // CR LF line ends
      if (const auto tab = line.find('\t'); tab != std::string::npos) values.push_back(line.substr(tab + 1));
    return values;
  }
  std::vector<bool> offered;  // Command1, Command2 enabled as SaveOpt opened; empty if it did not
};

// A rev02 file with the given unit and samples lines, texts "T1".."T7", range factor 5, logger 42.
std::string Rev02(const std::string& unit, int count, const std::string& samples) {
  return "\"loggerfile\"\r\n\"rev02\"\r\n" + std::to_string(count) +
         "\r\n\"T1\"\r\n\"T2\"\r\n\"T3\"\r\n\"T4\"\r\n\"T5\"\r\n\"T6\"\r\n\"T7\"\r\n5\r\n42\r\n\"" + unit +
         "\"\r\n" + samples;
}

TEST(RecordFile, EachRevisionSampleFormAndUnitReadsBack) {
  const std::string t17 = "T1T2T3T4T5T6T7";
  // Content, then the model code, range factor, logger, texts and the value of the sample at 46347.5.
  for (auto [content, code, factor, logger, texts, value] :
       std::vector<std::tuple<std::string, double, double, double, std::string, double>>{
           {Rev02("Volt", 2, "46347,5\t12,5\r\n46347,75\t-0,25\r\n"), 4, 5, 42, t17, 12.5},
           {Rev02("V rms", 1, "46347.5\t1\r\n"), 10, 2, 42, t17, 1},  // the two volt ranges
           {Rev02("V rms ", 1, "46347.5\t1\r\n"), 11, 1, 42, t17, 1},
           // rev01: texts on one line, samples as comma fields, a range factor 0 reads as 1.
           {"\"loggerfile\",\"rev01\",2\r\n\"a\",\"b\",\"c\",\"d\",\"e\",\"f\",\"g\"\r\n0\r\n7,\"kOhm\"\r\n"
            "46347.5,3.25\r\n46347.6,\"4\"\r\n", 3, 1, 7, "abcdefg", 3.25},
           // Another revision: no texts, the factor right after the count.
           {"\"loggerfile\"\r\n\"rev07\"\r\n1\r\n3\r\n88\r\n\"Amp\"\r\n46347.5,2\r\n", 5, 3, 88, "", 2}}) {
    SCOPED_TRACE(content);
    Storage t(true);
    t.WriteFile("f.txt", content);
    t.Open({"f.txt"});
    EXPECT_TRUE(t.ui.messages.empty());
    const SampleRecord& r = t.r();
    EXPECT_EQ(std::tuple(r.RecordModelCode.Value(), r.RecordRangeFactor.Value(), r.LoggerNumber.Value(),
                         r.RecordTitle + r.RecordIdent + r.RecordRemarks + r.RecordText4 + r.RecordLocation +
                             r.RecordText6 + r.RecordStats,
                         r.FullTimes[1], r.FullValues[1].Value()),
              std::tuple(code, factor, logger, texts, 46347.5, value));
    EXPECT_EQ(r.RecordFromFile + r.RecordSaved.Value(), 2);
  }
  // The number form of the values a record file holds, by model.
  for (auto [code, format] :
       {std::pair{16.0, "###0.####"}, {28, "###0.####"}, {17, "###0.##"}, {18, "###0.##"}, {20, "###0.##"},
        {25, "###0.##"}, {26, "###0.##"}, {64, "###0.##"}, {19, "###0.#"}, {31, "###0.#"}, {22, "###0.###"},
        {30, "###0.###"}, {99, ""}})
    EXPECT_EQ(RecordValueFormat(code), format) << code;
}

TEST(RecordFile, ADamagedFileKeepsWhatWasReadWithoutStatisticsAndOffersTheDialogAgain) {
  for (const char* last : {"", "46348 3\r\n"}) {
    SCOPED_TRACE(last);  // the file ends early; a line without a tab
    Storage t;
    t.WriteFile("bad.txt", Rev02("Volt", 3, std::string("46347.5\t1\r\n46347.75\t2\r\n") + last));
    t.ui.answer = [](const MessageRequest&) { return MsgAnswer::Cancel; };
    t.Open({});  // Cancel at the question about the unsaved record: no dialog
    EXPECT_EQ(std::tuple(t.ui.messages[0].text, t.ui.messages[0].buttons, t.ui.messages[0].icon),
              std::tuple("en76", MsgButtons::OkCancel, MsgIcon::Stop));
    EXPECT_TRUE(t.ui.fileFilters.empty());
    t.ui.answer = nullptr;
    t.Open({"bad.txt", ""});
    EXPECT_EQ(t.ui.MessageTexts(), (Strings{"en76", "en76", "en56"}));  // not asked again
    EXPECT_EQ(t.ui.fileFilters, Strings(2, "txt files (*.txt)|*.txt"));
    EXPECT_EQ(std::tuple(t.r().FullValues[2].Value(), t.r().FullMax.Value(), t.r().RecordFromFile),
              std::tuple(2.0, 40.0, 0));
  }
}

TEST(SaveCommand, WhatIsSavedAndWhatIsAskedInEachStateOfTheRecordAndTheGraph) {
  const Strings whole = {"10", "20", "30", "40"}, shown = {"20", "30"};
  const struct {
    const char* what;
    bool saved, zoomed;
    int button;
    std::vector<bool> offered;
    const Strings& values;
    double savedAfter;
    bool saveableAfter;
  } cases[] = {
      {"unzoomed, unsaved: whole, no question", false, false, 1, {}, whole, 1, false},
      {"zoomed, saved: the shown part, no question", true, true, 1, {}, shown, 1, false},
      {"zoomed, unsaved: entire record, the shown part saveable", false, true, 1, {1, 1}, whole, 1, true},
      {"zoomed, unsaved: displayed only", false, true, 2, {true, true}, shown, 0, false},
      {"unzoomed, saved: displayed only, which is all of it", true, false, 2, {false, true}, whole, 1, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    Storage t(c.saved, c.zoomed);
    t.Save({"rec.txt"}, c.button);
    const Strings filters = {"txt files (*.txt)|*.txt"};
    EXPECT_EQ(std::tuple(t.offered, t.ui.saveFilters, t.Saved("rec.txt"), t.r().RecordSaved.Value(),
                         t.w().mnuSaveTXT.enabled),
              std::tuple(c.offered, filters, c.values, c.savedAfter, c.saveableAfter));
  }
  Storage t;  // the file itself, byte for byte
  t.r().FullTimes[1] = 46347.123456789;
  t.r().RecordTitle = "Cold room", t.r().RecordText4 = "x";
  t.r().RecordRangeFactor = 2, t.r().LoggerNumber = 1234;
  t.Save({"whole"});
  EXPECT_EQ(t.ReadFile("whole.txt"),
            "\"loggerfile\"\r\n\"rev02\"\r\n4\r\n\"Cold room\"\r\n\"\"\r\n\"\"\r\n\"x\"\r\n\"\"\r\n\"\"\r\n"
            "\"Max = 40         Min = 10         Avg = 25\"\r\n2\r\n1234\r\n\"degC\"\r\n"
            "46347.12345679\t10\r\n46002.\t20\r\n46003.\t30\r\n46004.\t40\r\n");
  EXPECT_EQ(t.w().Label16.caption + " " + std::to_string(t.w().Label16.foreColor), "en62 65280");  // green
}

TEST(SaveCommand, ADisplayedOnlyChoiceStandsForALaterSaveAndCancelOrNoCompleteRecordWritesNothing) {
  Storage t(false, true);
  t.Save({}, 0);  // Cancel in SaveOpt
  t.Save({""}, 2);  // Cancel in the save dialog
  EXPECT_EQ(t.ui.saveFilters.size(), 1u);
  // Unzoomed again with a new record that is not saved: no question, and still the shown part.
  t.s().graph.GraphZoomed = 0;
  t.r().RecordSampleCount = 1;
  t.Save({"second.txt"});
  EXPECT_EQ(std::tuple(t.offered.size(), t.Saved("second.txt")), std::tuple(0u, Strings{"20"}));
  t.s().link.DownloadPercent = 0;
  t.Save({});
  ASSERT_EQ(t.ui.messages.size(), 1u);
  EXPECT_EQ(std::tuple(t.ui.messages[0].text, t.ui.messages[0].title, t.ui.messages[0].icon),
            std::tuple("No Data to Save.  Download First.", "en54", MsgIcon::Information));
  for (auto [chosen, saved] :
       {std::pair{"kept.csv", "kept.csv"}, {".abc", ".abc"}, {"a.data", "a.data.txt"}, {"ab", "ab.txt"}})
    EXPECT_EQ(SaveNameFor(chosen), saved);  // .txt unless the fourth character from the end is a point
}

TEST(SaveCommand, AnExistingFileIsLeftAloneAfterCancelAndNoAndReplacedAfterYesAndAFailedWriteEndsTheProgram) {
  Storage t;
  t.WriteFile("old.txt", "keep me");
  t.ui.answer = [](const MessageRequest&) { return MsgAnswer::Cancel; };
  t.Save({"old.txt"});
  t.ui.answer = [](const MessageRequest&) { return MsgAnswer::No; };
  t.Save({"old.txt", "new.txt"});  // No: the dialog comes again
  EXPECT_EQ(t.ReadFile("old.txt"), "keep me");
  t.ui.answer = nullptr;  // Yes
  t.Save({"old.txt"});
  ASSERT_EQ(t.ui.messages.size(), 3u);
  const MessageRequest& q = t.ui.messages[2];
  EXPECT_EQ(std::tuple(q.text, q.title, q.buttons, q.icon, q.defaultButton),
            std::tuple("en144", "en74", MsgButtons::YesNoCancel, MsgIcon::Stop, 2));
  EXPECT_EQ(t.ReadFile("old.txt"), t.ReadFile("new.txt"));
  t.Save({"no-such-folder/rec.txt"});
  EXPECT_EQ(t.ui.fatal.size() == 1 ? t.ui.fatal[0].first : 0, kFaultPathAccess);
  EXPECT_TRUE(t.ui.ended);
}

}  // namespace
}  // namespace quillet
