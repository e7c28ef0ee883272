// The record file: what the writer puts on disk byte for byte, what the reader makes of
// every revision and of damaged files, and the Open command's retries and Cancel.
#include "storage/record_file.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <string>

#include "hub/app.h"
#include "support/fake_platform.h"

namespace quillet {
namespace {

using testing::TestApp;

const char* const kFilter = "txt files (*.txt)|*.txt";

struct Started : TestApp {
  Started() {
    WriteTwoLanguageFile();  // strings read "en<n>"
    WriteSettings(1, 1, 1200, 0, 0);
    Start();
  }
  void Do(void (*action)(App&)) {
    Dispatch(*app, [this, action] { action(*app); });
  }
  std::string Path(const std::string& name) const { return dir + "/" + name; }
  void Write(const std::string& path, bool displayedOnly) {
    Dispatch(*app, [&] { WriteRecordFile(*app, Path(path), displayedOnly); });
  }
  // Opens the named files in turn through the Open command ("" cancels the dialog).
  void Open(std::vector<std::string> names) {
    for (std::string& n : names) {
      if (!n.empty()) n = Path(n);
    }
    ui.fileAnswers = names;
    Do(MnuOpen);
  }
  SampleRecord& r() { return app->s.record; }
  std::vector<std::string> MessageTexts() const {
    std::vector<std::string> t;
    for (const MessageRequest& m : ui.messages) t.push_back(m.text);
    return t;
  }
};

// A rev02 file with the given samples lines, texts "T1".."T7", range factor 1, logger 42.
std::string Rev02(const std::string& unit, int count, const std::string& samples) {
  std::ostringstream f;
  f << "\"loggerfile\"\r\n\"rev02\"\r\n" << count << "\r\n";
  for (int i = 1; i <= 7; ++i) f << "\"T" << i << "\"\r\n";
  f << "1\r\n42\r\n\"" << unit << "\"\r\n" << samples;
  return f.str();
}

std::string ReplaceOnce(std::string s, const std::string& from, const std::string& to) {
  s.replace(s.find(from), from.size(), to);
  return s;
}

void FillRecord(SampleRecord& r, int modelCode, const std::vector<double>& times, const std::vector<double>& values) {
  r.RecordModelCode = modelCode;
  r.FullSampleCount = static_cast<double>(times.size());
  r.RecordSampleCount = static_cast<double>(times.size());
  for (std::size_t i = 0; i < times.size(); ++i) {
    r.FullTimes[static_cast<long>(i) + 1] = r.ShownTimes[static_cast<long>(i) + 1] = times[i];
    r.FullValues[static_cast<long>(i) + 1] = r.ShownValues[static_cast<long>(i) + 1] = values[i];
  }
}

TEST(RecordFile, AWholeRecordIsWrittenByteForByteWithCrLfAndTabbedSamples) {
  Started t;
  SampleRecord& r = t.r();
  FillRecord(r, 22, {46347.123456789, 46348.0}, {1.5, -0.125});
  r.FullMax = 1.5;
  r.FullMin = -0.125;
  r.FullAvg = 0.6875;
  r.RecordTitle = "Cold room";
  r.RecordIdent = "North";
  r.RecordRemarks = "door left open";
  r.RecordText4 = "";
  r.RecordLocation = "Hall 2";
  r.RecordText6 = "x";
  r.RecordRangeFactor = 2;
  r.LoggerNumber = 1234;
  r.RecordUnitText = "degC";
  t.Write("whole.txt", false);

  EXPECT_EQ(t.ReadFile("whole.txt"),
            "\"loggerfile\"\r\n\"rev02\"\r\n2\r\n\"Cold room\"\r\n\"North\"\r\n\"door left open\"\r\n\"\"\r\n"
            "\"Hall 2\"\r\n\"x\"\r\n\"Max = 1.5         Min = -0.125         Avg = 0.688\"\r\n2\r\n1234\r\n"
            "\"degC\"\r\n46347.12345679\t1.5\r\n46348.\t-0.125\r\n");
  EXPECT_EQ(r.RecordStats, "Max = 1.5         Min = -0.125         Avg = 0.688");
  EXPECT_EQ(r.RecordSaved.Value(), 1);
  EXPECT_FALSE(t.app->v.log1.mnuSaveTXT.enabled);
  EXPECT_EQ(t.app->v.log1.Label16.caption, "en62");
  EXPECT_EQ(t.app->v.log1.Label16.foreColor, 0x00FF00);
  EXPECT_FALSE(t.FileExists("whole.txt.tmp~"));
}

TEST(RecordFile, TheShownPartIsWrittenWithItsOwnStatisticsAndLeavesTheRecordUnsaved) {
  Started t;
  SampleRecord& r = t.r();
  FillRecord(r, 99, {46347.5, 46347.75, 46348.0}, {10, 20, 30});  // a code without a format
  r.RecordSampleCount = 2;
  r.ShownTimes[1] = 46347.75;
  r.ShownValues[1] = 1.0 / 3.0;
  r.ShownTimes[2] = 46348.0;
  r.ShownValues[2] = 2.5;
  r.ShownMax = 2.5;
  r.ShownMin = 1.0 / 3.0;
  r.ShownAvg = 1.25;
  r.FullMax = 30;
  r.RecordSaved = 0;
  t.app->s.graph.GraphZoomed = 1;
  t.app->v.log1.mnuSaveTXT.enabled = true;
  t.Write("part.txt", true);

  const std::string f = t.ReadFile("part.txt");
  EXPECT_NE(f.find("\r\n2\r\n"), std::string::npos);
  EXPECT_NE(f.find("\"Max = 2.5         Min = 0.333333333333333         Avg = 1.25\""), std::string::npos);
  const std::string tail = "\r\n46347.75\t0.333333333333333\r\n46348.\t2.5\r\n";
  ASSERT_GT(f.size(), tail.size());
  EXPECT_EQ(f.substr(f.size() - tail.size()), tail);
  EXPECT_EQ(t.app->s.files.DisplayedSaved, 1);
  EXPECT_EQ(r.RecordSaved.Value(), 0);
  EXPECT_FALSE(t.app->v.log1.mnuSaveTXT.enabled);
}

TEST(RecordFile, AfterSavingTheWholeOfAZoomedRecordItsShownPartCanStillBeSaved) {
  Started t;
  FillRecord(t.r(), 17, {46347.5}, {1});
  t.app->s.graph.GraphZoomed = 1;
  t.app->v.log1.Label16.caption = "unsaved";
  t.Write("z.txt", false);
  EXPECT_TRUE(t.app->v.log1.mnuSaveTXT.enabled);
  EXPECT_EQ(t.app->v.log1.Label16.caption, "unsaved");
}

TEST(RecordFile, ARecordWrittenAndOpenedAgainKeepsItsSamplesAndTextsAndRecomputesItsStatistics) {
  Started t;
  SampleRecord& r = t.r();
  std::vector<double> times, values;
  for (int i = 0; i < 500; ++i) {
    times.push_back(46347.0 + i * (1.0 / 1440.0) + 1e-9);  // minutes, not round in days
    values.push_back(-20.0 + i * 0.07);
  }
  FillRecord(r, 17, times, values);  // values to two decimals
  r.FullMax = 100;  // stale figures: the file keeps them as text only
  r.FullMin = -100;
  r.FullAvg = 7;
  r.RecordTitle = "Freezer";
  r.RecordIdent = "Unit 7";
  r.RecordRemarks = "defrost at noon";
  r.RecordText4 = "four";
  r.RecordLocation = "Store";
  r.RecordText6 = "six";
  r.RecordRangeFactor = 1;
  r.LoggerNumber = 5150;
  r.RecordUnitText = "degC";
  r.RecordSaved = 1;
  t.Write("round.txt", false);

  FillRecord(r, 17, {0}, {0});
  r.RecordTitle = r.RecordStats = "";
  t.Open({"round.txt"});

  EXPECT_TRUE(t.ui.messages.empty());
  EXPECT_EQ(t.ui.fileFilters, std::vector<std::string>{kFilter});
  EXPECT_EQ(t.app->s.files.OpenFileName, t.Path("round.txt"));
  ASSERT_EQ(r.FullSampleCount.Value(), 500);
  EXPECT_EQ(r.RecordSampleCount.Value(), 500);
  for (long i = 1; i <= 500; ++i) {
    EXPECT_NEAR(r.FullTimes[i], times[i - 1], 5e-9) << i;
    EXPECT_NEAR(r.FullValues[i], std::round(values[i - 1] * 100) / 100, 1e-9) << i;
    EXPECT_EQ(r.ShownTimes[i], r.FullTimes[i]);
    EXPECT_EQ(r.ShownValues[i].Value(), r.FullValues[i].Value());
  }
  EXPECT_EQ(r.RecordTitle, "Freezer");
  EXPECT_EQ(r.RecordIdent, "Unit 7");
  EXPECT_EQ(r.RecordRemarks, "defrost at noon");
  EXPECT_EQ(r.RecordText4, "four");
  EXPECT_EQ(r.RecordLocation, "Store");
  EXPECT_EQ(r.RecordText6, "six");
  EXPECT_EQ(r.RecordStats, "Max = 100.         Min = -100.         Avg = 7.");
  EXPECT_DOUBLE_EQ(r.FullMin, -20);
  EXPECT_DOUBLE_EQ(r.FullMax, 14.93);
  EXPECT_NEAR(r.FullAvg, -2.535, 1e-9);
  EXPECT_EQ(r.LoggerNumber.Value(), 5150);
  EXPECT_EQ(r.RecordUnitText, "degC");
  EXPECT_EQ(r.RecordModelCode.Value(), 2);  // the graph's code for degC
  EXPECT_EQ(r.RecordFromFile, 1);
  EXPECT_EQ(r.RecordSaved.Value(), 1);
  const Log1View& w = t.app->v.log1;
  EXPECT_FALSE(w.mnuSaveTXT.enabled);
  EXPECT_TRUE(w.mnuPGraph.enabled && w.mnuPData.enabled && w.mnuGClip.enabled);
  EXPECT_FALSE(w.mnuFunc.visible || w.mnuScale.visible || w.ProgressBar1.visible);
  EXPECT_FALSE(w.Command2.enabled);
  EXPECT_TRUE(w.Command3.enabled);
  EXPECT_EQ(w.Label16.caption, "en62");
  EXPECT_TRUE(w.Label16.visible);
  EXPECT_EQ(t.app->s.link.DownloadPercent.Value(), 100);
}

TEST(RecordFile, SampleLinesWithDecimalCommasReadAsPoints) {
  Started t;
  t.WriteFile("comma.txt", Rev02("Volt", 2, "46347,5\t12,5\r\n46347,75\t-0,25\r\n"));
  t.Open({"comma.txt"});
  EXPECT_TRUE(t.ui.messages.empty());
  EXPECT_DOUBLE_EQ(t.r().FullTimes[1], 46347.5);
  EXPECT_DOUBLE_EQ(t.r().FullValues[1], 12.5);
  EXPECT_DOUBLE_EQ(t.r().FullTimes[2], 46347.75);
  EXPECT_DOUBLE_EQ(t.r().FullValues[2], -0.25);
  EXPECT_DOUBLE_EQ(t.r().FullAvg, 6.125);
  EXPECT_EQ(t.r().RecordModelCode.Value(), 4);
}

TEST(RecordFile, ARev01FileHoldsItsTextsOnOneLineAndItsSamplesAsCommaFields) {
  Started t;
  t.WriteFile("old.txt",
              "\"loggerfile\",\"rev01\",2\r\n\"a\",\"b\",\"c\",\"d\",\"e\",\"f\",\"g\"\r\n0\r\n7,\"kOhm\"\r\n"
              "46347.5,3.25\r\n46347.6,\"4\"\r\n");
  t.Open({"old.txt"});
  EXPECT_TRUE(t.ui.messages.empty());
  const SampleRecord& r = t.r();
  EXPECT_EQ(r.RecordTitle + r.RecordIdent + r.RecordRemarks + r.RecordText4 + r.RecordLocation + r.RecordText6 +
                r.RecordStats,
            "abcdefg");
  EXPECT_EQ(r.RecordRangeFactor.Value(), 1);  // a stored 0 reads as 1
  EXPECT_EQ(r.LoggerNumber.Value(), 7);
  EXPECT_EQ(r.RecordModelCode.Value(), 3);
  EXPECT_DOUBLE_EQ(r.FullTimes[2], 46347.6);
  EXPECT_DOUBLE_EQ(r.FullValues[1], 3.25);
  EXPECT_DOUBLE_EQ(r.FullValues[2], 4);
}

TEST(RecordFile, AnotherRevisionHasNoTextsAndReadsItsRangeFactorRightAfterTheCount) {
  Started t;
  t.r().RecordTitle = "old title";
  t.WriteFile("other.txt", "\"loggerfile\"\r\n\"rev07\"\r\n1\r\n3\r\n88\r\n\"Amp\"\r\n46347.5,2,5\r\n");
  t.Open({"other.txt"});
  EXPECT_TRUE(t.ui.messages.empty());
  EXPECT_EQ(t.r().RecordTitle, "");
  EXPECT_EQ(t.r().RecordRangeFactor.Value(), 3);
  EXPECT_EQ(t.r().LoggerNumber.Value(), 88);
  EXPECT_EQ(t.r().RecordModelCode.Value(), 5);
  EXPECT_DOUBLE_EQ(t.r().FullValues[1], 2);  // commas separate fields here
}

TEST(RecordFile, UnitTextsChooseTheGraphCodeAndTheTwoVoltRangesSetTheirRangeFactor) {
  struct Case {
    const char* unit;
    double code, rangeFactor;
  };
  for (const Case& c : {Case{"V rms", 10, 2}, Case{"V rms ", 11, 1}, Case{"A rms", 7, 5}, Case{"% RH", 6, 5},
                        Case{"degF", 1, 5}, Case{"mV", 31, 5}, Case{"volt", 31, 5}}) {
    Started t;
    t.r().RecordModelCode = 31;  // kept when the unit is not one of the list
    t.WriteFile("u.txt", ReplaceOnce(Rev02(c.unit, 1, "46347.5\t1\r\n"), "\r\n1\r\n42", "\r\n5\r\n42"));
    t.Open({"u.txt"});
    EXPECT_TRUE(t.ui.messages.empty()) << c.unit;
    EXPECT_EQ(t.r().RecordModelCode.Value(), c.code) << '"' << c.unit << '"';
    EXPECT_EQ(t.r().RecordRangeFactor.Value(), c.rangeFactor) << '"' << c.unit << '"';
    EXPECT_EQ(t.r().RecordUnitText, c.unit);
  }
}

TEST(RecordFile, AMissingFileIsReportedAndTheDialogOpensAgainWithoutAskingAboutUnsavedData) {
  Started t;
  t.r().RecordSaved = 0;
  t.app->s.link.DownloadPercent = 100;
  t.WriteFile("good.txt", Rev02("Volt", 1, "46347.5\t9\r\n"));
  t.Open({"gone.txt", "good.txt"});
  ASSERT_EQ(t.MessageTexts(), (std::vector<std::string>{"en76", "en55"}));
  EXPECT_EQ(t.ui.messages[0].buttons, MsgButtons::OkCancel);
  EXPECT_EQ(t.ui.messages[0].icon, MsgIcon::Stop);
  EXPECT_EQ(t.ui.messages[1].title, "en54");
  EXPECT_EQ(t.ui.messages[1].icon, MsgIcon::Information);
  EXPECT_EQ(t.ui.fileFilters.size(), 2u);
  EXPECT_DOUBLE_EQ(t.r().FullValues[1], 9);
  EXPECT_EQ(t.r().RecordTitle, "T1");
  EXPECT_EQ(t.app->s.files.OpenRetry, 0);
}

TEST(RecordFile, CancelAtTheUnsavedQuestionOrInTheFileDialogLeavesTheRecordAlone) {
  Started t;
  FillRecord(t.r(), 17, {46347.5}, {3});
  t.r().RecordSaved = 0;
  t.app->s.link.DownloadPercent = 100;
  t.ui.answer = [](const MessageRequest&) { return MsgAnswer::Cancel; };
  t.Open({});
  EXPECT_EQ(t.MessageTexts(), std::vector<std::string>{"en76"});
  EXPECT_TRUE(t.ui.fileFilters.empty());

  t.ui.answer = nullptr;
  t.Open({""});
  EXPECT_EQ(t.ui.fileFilters.size(), 1u);
  EXPECT_EQ(t.MessageTexts().size(), 2u);  // only the question again
  EXPECT_DOUBLE_EQ(t.r().FullValues[1], 3);
  EXPECT_EQ(t.r().RecordFromFile, 0);
  EXPECT_TRUE(t.ui.fatal.empty());
}

TEST(RecordFile, AFileOfAnotherKindIsRefusedAndAGoodFileChosenNextLosesItsTexts) {
  Started t;
  t.WriteFile("notes.txt", "\"shopping list\"\r\n\"eggs\"\r\n");
  t.WriteFile("good.txt", Rev02("Volt", 2, "46347.5\t1\r\n46347.75\t3\r\n"));
  t.Open({"notes.txt", "good.txt"});
  EXPECT_EQ(t.MessageTexts(), std::vector<std::string>{"en53"});
  EXPECT_EQ(t.ui.messages[0].title, "en54");
  EXPECT_DOUBLE_EQ(t.r().FullValues[2], 3);
  EXPECT_DOUBLE_EQ(t.r().FullAvg, 2);
  EXPECT_EQ(t.r().RecordFromFile, 1);
  // The refused read carries on after the nested open and empties the texts.
  EXPECT_EQ(t.r().RecordTitle, "");
  EXPECT_EQ(t.r().RecordStats, "");
  EXPECT_FALSE(t.app->v.log1.Command2.enabled);
  EXPECT_EQ(t.app->s.files.OpenRetry, 0);
}

TEST(RecordFile, ADamagedFileKeepsWhatWasReadWithoutStatisticsAndOffersTheDialogAgain) {
  struct Case {
    const char* what;
    std::string content;
  };
  const Case cases[] = {
      {"ends early", Rev02("Volt", 3, "46347.5\t1\r\n46347.75\t2\r\n")},
      {"no tab", Rev02("Volt", 3, "46347.5\t1\r\n46347.75\t2\r\n46348 3\r\n")},
      {"empty", ""},
      {"texts cut short", "\"loggerfile\"\r\n\"rev02\"\r\n1\r\n\"a\"\r\n"},
      {"letters for a number", ReplaceOnce(Rev02("Volt", 1, "46347.5\t1\r\n"), "\r\n42\r\n", "\r\nforty\r\n")},
  };
  for (const Case& c : cases) {
    Started t;
    t.r().FullMax = 999;
    t.r().FullValues[1] = -5;
    t.WriteFile("bad.txt", c.content);
    t.Open({"bad.txt", ""});
    EXPECT_EQ(t.MessageTexts(), std::vector<std::string>{"en56"}) << c.what;
    EXPECT_EQ(t.ui.fileFilters.size(), 2u) << c.what;
    EXPECT_EQ(t.r().FullMax.Value(), 999) << c.what;
    EXPECT_EQ(t.r().RecordFromFile, 0) << c.what;
    EXPECT_EQ(t.app->s.files.OpenRetry, 1) << c.what;
    EXPECT_TRUE(t.ui.fatal.empty()) << c.what;
    if (std::string(c.what) == "ends early") {
      EXPECT_DOUBLE_EQ(t.r().FullValues[1], 1);
      EXPECT_DOUBLE_EQ(t.r().FullValues[2], 2);
    }
  }
}

TEST(RecordFile, MoreSamplesThanARecordHoldsIsADamagedFile) {
  Started t;
  std::string samples;
  for (int i = 1; i <= 16385; ++i) samples += "46347.5\t" + std::to_string(i) + "\r\n";
  t.WriteFile("big.txt", Rev02("Volt", 16385, samples));
  t.Open({"big.txt", ""});
  EXPECT_EQ(t.MessageTexts(), std::vector<std::string>{"en56"});
  EXPECT_DOUBLE_EQ(t.r().FullValues[16384], 16384);

  t.ui.messages.clear();
  t.WriteFile("full.txt", Rev02("Volt", 16384, samples));
  t.Open({"full.txt"});
  EXPECT_TRUE(t.ui.messages.empty());
  EXPECT_EQ(t.r().FullSampleCount.Value(), 16384);
  EXPECT_DOUBLE_EQ(t.r().FullMax, 16384);
}

}  // namespace
}  // namespace quillet
