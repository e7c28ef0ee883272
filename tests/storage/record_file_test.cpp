// The record file: what the writer puts on disk byte for byte, what the reader makes of
// every revision and of damaged files, and the Open command's retries and Cancel.
#include "storage/record_file.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <string>

#include "support/fake_platform.h"

namespace quillet {
namespace {

using Strings = std::vector<std::string>;

struct Started : testing::StartedApp {
  void Write(const std::string& name, bool displayedOnly) {
    Do([&] { WriteRecordFile(*app, Path(name), displayedOnly); });
  }
  // Opens the named files in turn through the Open command ("" cancels the dialog).
  void Open(Strings names) {
    for (std::string& n : names)
      if (!n.empty()) n = Path(n);
    ui.fileAnswers = names;
    Do(MnuOpen);
  }
  SampleRecord& r() { return app->s.record; }
  void Fill(int modelCode, const std::vector<double>& times, const std::vector<double>& values) {
    r().RecordModelCode = modelCode;
    r().FullSampleCount = r().RecordSampleCount = static_cast<double>(times.size());
    for (std::size_t i = 0; i < times.size(); ++i) {
      r().FullTimes[static_cast<long>(i) + 1] = r().ShownTimes[static_cast<long>(i) + 1] = times[i];
      r().FullValues[static_cast<long>(i) + 1] = r().ShownValues[static_cast<long>(i) + 1] = values[i];
    }
  }
  void SetTexts(const Strings& t) {
    r().RecordTitle = t[0], r().RecordIdent = t[1], r().RecordRemarks = t[2], r().RecordText4 = t[3];
    r().RecordLocation = t[4], r().RecordText6 = t[5];
  }
  Strings Texts() {
    return {r().RecordTitle, r().RecordIdent,    r().RecordRemarks,
            r().RecordText4, r().RecordLocation, r().RecordText6};
  }
};

// A rev02 file with the given samples lines, texts "T1".."T7", range factor 1, logger 42.
std::string Rev02(const std::string& unit, int count, const std::string& samples,
                  const std::string& factor = "1") {
  std::ostringstream f;
  f << "\"loggerfile\"\r\n\"rev02\"\r\n" << count << "\r\n";
  for (int i = 1; i <= 7; ++i) f << "\"T" << i << "\"\r\n";
  f << factor << "\r\n42\r\n\"" << unit << "\"\r\n" << samples;
  return f.str();
}

TEST(RecordFile, AWholeRecordIsWrittenByteForByteWithCrLfAndTabbedSamples) {
  Started t;
  t.Fill(22, {46347.123456789, 46348.0}, {1.5, -0.125});
  t.r().FullMax = 1.5;
  t.r().FullMin = -0.125;
  t.r().FullAvg = 0.6875;
  t.SetTexts({"Cold room", "North", "door left open", "", "Hall 2", "x"});
  t.r().RecordRangeFactor = 2;
  t.r().LoggerNumber = 1234;
  t.r().RecordUnitText = "degC";
  t.Write("whole.txt", false);
  EXPECT_EQ(t.ReadFile("whole.txt"),
            "\"loggerfile\"\r\n\"rev02\"\r\n2\r\n\"Cold room\"\r\n\"North\"\r\n\"door left open\"\r\n\"\"\r\n"
            "\"Hall 2\"\r\n\"x\"\r\n\"Max = 1.5         Min = -0.125         Avg = 0.688\"\r\n2\r\n1234\r\n"
            "\"degC\"\r\n46347.12345679\t1.5\r\n46348.\t-0.125\r\n");
  EXPECT_EQ(t.r().RecordSaved.Value(), 1);
  EXPECT_FALSE(t.w().mnuSaveTXT.enabled);
  EXPECT_EQ(t.w().Label16.caption, "en62");
  EXPECT_EQ(t.w().Label16.foreColor, 0x00FF00);
  EXPECT_FALSE(t.FileExists("whole.txt.tmp~"));
}

TEST(RecordFile, TheShownPartIsWrittenWithItsOwnStatisticsAndTheWholeOfAZoomedRecordLeavesItSaveable) {
  Started t;
  t.Fill(99, {46347.5, 46347.75, 46348.0}, {10, 20, 30});  // a code without a format
  SampleRecord& r = t.r();
  r.RecordSampleCount = 2;
  r.ShownTimes[1] = 46347.75;
  r.ShownValues[1] = r.ShownMin = 1.0 / 3.0;
  r.ShownTimes[2] = 46348.0;
  r.ShownValues[2] = r.ShownMax = 2.5;
  r.ShownAvg = 1.25;
  r.RecordSaved = 0;
  t.s().graph.GraphZoomed = 1;
  t.w().mnuSaveTXT.enabled = true;
  t.Write("part.txt", true);
  const std::string f = t.ReadFile("part.txt");
  EXPECT_NE(f.find("\r\n2\r\n"), std::string::npos);
  EXPECT_NE(f.find("\"Max = 2.5         Min = 0.333333333333333         Avg = 1.25\""), std::string::npos);
  const std::string tail = "\r\n46347.75\t0.333333333333333\r\n46348.\t2.5\r\n";
  EXPECT_EQ(f.substr(f.size() - tail.size()), tail);
  EXPECT_EQ(t.s().files.DisplayedSaved, 1);
  EXPECT_EQ(r.RecordSaved.Value(), 0);
  EXPECT_FALSE(t.w().mnuSaveTXT.enabled);

  t.w().Label16.caption = "unsaved";
  t.Write("z.txt", false);
  EXPECT_TRUE(t.w().mnuSaveTXT.enabled);  // the shown part can still be saved
  EXPECT_EQ(t.w().Label16.caption, "unsaved");
}

TEST(RecordFile, ARecordWrittenAndOpenedAgainKeepsItsSamplesAndTextsAndRecomputesItsStatistics) {
  Started t;
  std::vector<double> times, values;
  for (int i = 0; i < 500; ++i) {
    times.push_back(46347.0 + i * (1.0 / 1440.0) + 1e-9);  // minutes, not round in days
    values.push_back(-20.0 + i * 0.07);
  }
  t.Fill(17, times, values);  // values to two decimals
  t.r().FullMax = 100;        // stale figures: the file keeps them as text only
  t.r().FullMin = -100;
  t.r().FullAvg = 7;
  t.SetTexts({"Freezer", "Unit 7", "defrost at noon", "four", "Store", "six"});
  t.r().RecordRangeFactor = 1;
  t.r().LoggerNumber = 5150;
  t.r().RecordUnitText = "degC";
  t.r().RecordSaved = 1;
  t.Write("round.txt", false);
  t.Fill(17, {0}, {0});
  t.SetTexts({"", "", "", "", "", ""});
  t.Open({"round.txt"});

  const SampleRecord& r = t.r();
  EXPECT_TRUE(t.ui.messages.empty());
  EXPECT_EQ(t.ui.fileFilters, Strings{"txt files (*.txt)|*.txt"});
  EXPECT_EQ(t.s().files.OpenFileName, t.Path("round.txt"));
  ASSERT_EQ(r.FullSampleCount.Value(), 500);
  EXPECT_EQ(r.RecordSampleCount.Value(), 500);
  for (long i = 1; i <= 500; ++i) {
    EXPECT_NEAR(r.FullTimes[i], times[i - 1], 5e-9) << i;
    EXPECT_NEAR(r.FullValues[i], std::round(values[i - 1] * 100) / 100, 1e-9) << i;
    EXPECT_EQ(r.ShownTimes[i], r.FullTimes[i]);
    EXPECT_EQ(r.ShownValues[i].Value(), r.FullValues[i].Value());
  }
  EXPECT_EQ(t.Texts(), (Strings{"Freezer", "Unit 7", "defrost at noon", "four", "Store", "six"}));
  EXPECT_EQ(r.RecordStats, "Max = 100.         Min = -100.         Avg = 7.");
  EXPECT_DOUBLE_EQ(r.FullMin, -20);
  EXPECT_DOUBLE_EQ(r.FullMax, 14.93);
  EXPECT_NEAR(r.FullAvg, -2.535, 1e-9);
  EXPECT_EQ(r.LoggerNumber.Value(), 5150);
  EXPECT_EQ(r.RecordModelCode.Value(), 2);  // the graph's code for degC
  EXPECT_EQ(r.RecordFromFile + r.RecordSaved.Value(), 2);
  const Log1View& w = t.w();
  EXPECT_FALSE(w.mnuSaveTXT.enabled || w.mnuFunc.visible || w.mnuScale.visible || w.ProgressBar1.visible);
  EXPECT_TRUE(w.mnuPGraph.enabled && w.mnuPData.enabled && w.mnuGClip.enabled && w.Command3.enabled);
  EXPECT_FALSE(w.Command2.enabled);
  EXPECT_EQ(w.Label16.caption, "en62");
  EXPECT_EQ(t.s().link.DownloadPercent.Value(), 100);
}

TEST(RecordFile, EachRevisionAndSampleFormReadsBack) {
  const struct {
    const char* what;
    std::string content;
    double code, factor, logger;
    std::string texts;
    std::vector<std::pair<double, double>> samples;
  } cases[] = {
      {"decimal commas",
       Rev02("Volt", 2, "46347,5\t12,5\r\n46347,75\t-0,25\r\n"),
       4,
       1,
       42,
       "T1T2T3T4T5T6T7",
       {{46347.5, 12.5}, {46347.75, -0.25}}},
      {"rev01: texts on one line, samples as comma fields",
       "\"loggerfile\",\"rev01\",2\r\n\"a\",\"b\",\"c\",\"d\",\"e\",\"f\",\"g\"\r\n0\r\n7,\"kOhm\"\r\n"
       "46347.5,3.25\r\n46347.6,\"4\"\r\n",
       3,
       1,
       7,
       "abcdefg",
       {{46347.5, 3.25}, {46347.6, 4}}},  // a stored range factor 0 reads as 1
      {"another revision: no texts, the factor right after the count",
       "\"loggerfile\"\r\n\"rev07\"\r\n1\r\n3\r\n88\r\n\"Amp\"\r\n46347.5,2,5\r\n",
       5,
       3,
       88,
       "",
       {{46347.5, 2}}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    Started t;
    t.r().RecordTitle = "old title";
    t.WriteFile("f.txt", c.content);
    t.Open({"f.txt"});
    EXPECT_TRUE(t.ui.messages.empty());
    const SampleRecord& r = t.r();
    EXPECT_EQ(r.RecordModelCode.Value(), c.code);
    EXPECT_EQ(r.RecordRangeFactor.Value(), c.factor);
    EXPECT_EQ(r.LoggerNumber.Value(), c.logger);
    EXPECT_EQ(r.RecordTitle + r.RecordIdent + r.RecordRemarks + r.RecordText4 + r.RecordLocation +
                  r.RecordText6 + r.RecordStats,
              c.texts);
    for (std::size_t i = 0; i < c.samples.size(); ++i) {
      EXPECT_DOUBLE_EQ(r.FullTimes[static_cast<long>(i) + 1], c.samples[i].first);
      EXPECT_DOUBLE_EQ(r.FullValues[static_cast<long>(i) + 1], c.samples[i].second);
    }
  }
}

TEST(RecordFile, UnitTextsChooseTheGraphCodeAndTheTwoVoltRangesSetTheirRangeFactor) {
  for (auto [unit, code, factor] : {std::tuple{"V rms", 10, 2},
                                    {"V rms ", 11, 1},
                                    {"A rms", 7, 5},
                                    {"% RH", 6, 5},
                                    {"degF", 1, 5},
                                    {"mV", 31, 5},
                                    {"volt", 31, 5}}) {
    Started t;
    t.r().RecordModelCode = 31;  // kept when the unit is not one of the list
    t.WriteFile("u.txt", Rev02(unit, 1, "46347.5\t1\r\n", "5"));
    t.Open({"u.txt"});
    EXPECT_TRUE(t.ui.messages.empty()) << unit;
    EXPECT_EQ(t.r().RecordModelCode.Value(), code) << '"' << unit << '"';
    EXPECT_EQ(t.r().RecordRangeFactor.Value(), factor) << '"' << unit << '"';
  }
}

TEST(RecordFile, AMissingFileIsReportedAndTheDialogOpensAgainWithoutAskingAboutUnsavedData) {
  Started t;
  t.r().RecordSaved = 0;
  t.s().link.DownloadPercent = 100;
  t.WriteFile("good.txt", Rev02("Volt", 1, "46347.5\t9\r\n"));
  t.Open({"gone.txt", "good.txt"});
  ASSERT_EQ(t.ui.MessageTexts(), (Strings{"en76", "en55"}));
  EXPECT_EQ(t.ui.messages[0].buttons, MsgButtons::OkCancel);
  EXPECT_EQ(t.ui.messages[0].icon, MsgIcon::Stop);
  EXPECT_EQ(t.ui.messages[1].title, "en54");
  EXPECT_EQ(t.ui.messages[1].icon, MsgIcon::Information);
  EXPECT_EQ(t.ui.fileFilters.size(), 2u);
  EXPECT_DOUBLE_EQ(t.r().FullValues[1], 9);
  EXPECT_EQ(t.r().RecordTitle, "T1");
  EXPECT_EQ(t.s().files.OpenRetry, 0);
}

TEST(RecordFile, CancelAtTheUnsavedQuestionOrInTheFileDialogLeavesTheRecordAlone) {
  Started t;
  t.Fill(17, {46347.5}, {3});
  t.r().RecordSaved = 0;
  t.s().link.DownloadPercent = 100;
  t.ui.answer = [](const MessageRequest&) { return MsgAnswer::Cancel; };
  t.Open({});
  EXPECT_EQ(t.ui.MessageTexts(), Strings{"en76"});
  EXPECT_TRUE(t.ui.fileFilters.empty());
  t.ui.answer = nullptr;
  t.Open({""});
  EXPECT_EQ(t.ui.fileFilters.size(), 1u);
  EXPECT_EQ(t.ui.messages.size(), 2u);  // only the question again
  EXPECT_DOUBLE_EQ(t.r().FullValues[1], 3);
  EXPECT_EQ(t.r().RecordFromFile, 0);
  EXPECT_TRUE(t.ui.fatal.empty());
}

TEST(RecordFile, AFileOfAnotherKindIsRefusedAndAGoodFileChosenNextLosesItsTexts) {
  Started t;
  t.WriteFile("notes.txt", "\"shopping list\"\r\n\"eggs\"\r\n");
  t.WriteFile("good.txt", Rev02("Volt", 2, "46347.5\t1\r\n46347.75\t3\r\n"));
  t.Open({"notes.txt", "good.txt"});
  EXPECT_EQ(t.ui.MessageTexts(), Strings{"en53"});
  EXPECT_EQ(t.ui.messages[0].title, "en54");
  EXPECT_DOUBLE_EQ(t.r().FullValues[2], 3);
  EXPECT_DOUBLE_EQ(t.r().FullAvg, 2);
  EXPECT_EQ(t.r().RecordFromFile, 1);
  // The refused read carries on after the nested open and empties the texts.
  EXPECT_EQ(t.r().RecordTitle + t.r().RecordStats, "");
  EXPECT_FALSE(t.w().Command2.enabled);
  EXPECT_EQ(t.s().files.OpenRetry, 0);
}

TEST(RecordFile, ADamagedFileKeepsWhatWasReadWithoutStatisticsAndOffersTheDialogAgain) {
  std::string many;
  for (int i = 1; i <= 16385; ++i) many += "46347.5\t" + std::to_string(i) + "\r\n";
  std::string letters = Rev02("Volt", 1, "46347.5\t1\r\n");
  letters.replace(letters.find("\r\n42\r\n"), 6, "\r\nforty\r\n");
  const std::pair<const char*, std::string> cases[] = {
      {"ends early", Rev02("Volt", 3, "46347.5\t1\r\n46347.75\t2\r\n")},
      {"no tab", Rev02("Volt", 3, "46347.5\t1\r\n46347.75\t2\r\n46348 3\r\n")},
      {"empty", ""},
      {"texts cut short", "\"loggerfile\"\r\n\"rev02\"\r\n1\r\n\"a\"\r\n"},
      {"letters for a number", letters},
      {"more samples than a record holds", Rev02("Volt", 16385, many)},
  };
  for (const auto& [what, content] : cases) {
    SCOPED_TRACE(what);
    Started t;
    t.r().FullMax = 999;
    t.r().FullValues[1] = -5;
    t.WriteFile("bad.txt", content);
    t.Open({"bad.txt", ""});
    EXPECT_EQ(t.ui.MessageTexts(), Strings{"en56"});
    EXPECT_EQ(t.ui.fileFilters.size(), 2u);
    EXPECT_EQ(t.r().FullMax.Value(), 999);
    EXPECT_EQ(t.r().RecordFromFile, 0);
    EXPECT_EQ(t.s().files.OpenRetry, 1);
    EXPECT_TRUE(t.ui.fatal.empty());
    if (what == std::string("ends early")) {
      EXPECT_DOUBLE_EQ(t.r().FullValues[2], 2);
    }
    if (content.size() > 100000) {
      EXPECT_DOUBLE_EQ(t.r().FullValues[16384], 16384);  // what was read is kept
    }
  }
  Started t;
  t.WriteFile("full.txt", Rev02("Volt", 16384, many));
  t.Open({"full.txt"});
  EXPECT_TRUE(t.ui.messages.empty());
  EXPECT_EQ(t.r().FullSampleCount.Value(), 16384);
  EXPECT_DOUBLE_EQ(t.r().FullMax, 16384);
}

}  // namespace
}  // namespace quillet
