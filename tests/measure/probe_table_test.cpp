// Probes of model 16 loggers: probes.dat, the memory per logger serial and the probe dialogs.
#include "measure/probe_table.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <map>

#include "log1/startup.h"
#include "support/emulated_logger.h"

namespace quillet {
namespace {

using testing::ProbeEntry;

struct ProbeApp : testing::TestApp {
  explicit ProbeApp(const std::map<int, ProbeEntry>& memory = {}) {
    WriteTwoLanguageFile();
    WriteFile("logger1.ini", testing::SettingsFileText({1, 1, 1200, 0, 0, memory, ""}));
    // Groups "AC Probes", "DC Probes" and "Spare", all "Future" but for HD-2 in group 2 and
    // SP-1 and SP-0 in group 3.
    WriteFile("probes.dat",
              testing::ProbesDatText({"AC Probes", "DC Probes", "Spare"}, {{{2, 1}, "\"HD-2\",\"A dc\",100"},
                                                                           {{3, 1}, "\"SP-1\",\"A\",20"},
                                                                           {{3, 2}, "\"SP-0\",\"A\",0"}}),
              true);
    Start();
  }
  // What the header of a model 16 logger of this serial sets off.
  void Connect(int serial) {
    s().logger.LoggerSerial = serial, s().link.LoggerSeen = 1;
    Do(LoadProbeTable);
  }
  void Choose(int g, int option) {
    ui.onModal = [this, g, option](DialogId) { ProbeDialogChoose(*app, g, option), ProbeDialogOk(*app, g); };
    Do(g == 1 ? Func01 : g == 2 ? Func02 : Func03);
  }
  // A downloaded record of a model 16 logger: one sample, raw 100, as converted with factor 10.
  void PutRecordOnScreen() {
    s().logger.ModelCode = 16, s().logger.RecordReplyFormat = 1;
    SampleRecord& r = s().record;
    r.BlockData = std::string(1, static_cast<char>(100)) + "  ";
    r.RecordStoredSamples = r.FullSampleCount = r.RecordSampleCount = r.RecordScaleByte = 1;
    r.RecordRangeFactor = 10, r.RecordUnitText = "A rms", r.FullValues[1] = 5;
    s().link.DownloadPercent = 100;
  }
  std::tuple<std::string, double, double> Record() {
    const SampleRecord& r = s().record;
    return {r.RecordUnitText, r.RecordRangeFactor.Value(), r.FullValues[1].Value()};
  }
};

TEST(ProbeTable, ANewLoggerTakesTheLastChoiceAndPushesTheOldestOutOfTheMemorySavedAtExit) {
  std::map<int, ProbeEntry> memory;
  for (int i = 1; i <= 11; ++i) memory[i] = {std::to_string(100 + i), "5", "u", "p" + std::to_string(i)};
  memory[11].factor = "0";  // a zero factor counts as one
  ProbeApp t(memory);
  t.Connect(999);
  t.Connect(999);  // seen before: it keeps its place
  EXPECT_EQ(std::tuple(t.s().logger.RangeFactor.Value(), t.w().Label34.caption, t.s().measure.ProbeSlot),
            std::tuple(1, "p11", 10));
  ASSERT_TRUE(EndProgram(*t.app));
  const std::string ini = t.ReadFile("logger1.ini");
  EXPECT_NE(ini.find("\"[probe data]\"\n102,5,\"u\",\"p2\"\n"), std::string::npos) << ini;
  EXPECT_NE(ini.find("110,5,\"u\",\"p10\"\n999,1,\"u\",\"p11\"\n999,1,\"u\",\"p11\"\n"), std::string::npos);
}

TEST(ProbeTable, AMissingFileEndsTheProgramWithoutSavingTheSettings) {
  testing::EmulatedLoggerApp t(sim::LoggerConfig{.modelCode = 16, .signal = {}, .faults = {}});
  const std::string ini = t.ReadFile("logger1.ini");
  std::remove((t.dir + "/prog/probes.dat").c_str());
  t.Connect();  // the header of a model 16 logger loads the probe table
  ASSERT_EQ(t.ui.messages.size(), 1u);
  const MessageRequest& m = t.ui.messages[0];
  EXPECT_EQ(std::tuple(m.text, m.title, m.icon, m.buttons),
            std::tuple("Probes.dat is missing.", "Cannot run program", MsgIcon::Information, MsgButtons::Ok));
  EXPECT_TRUE(t.ui.ended && t.ui.fatal.empty());
  const std::size_t written = t.transport.written.size();
  t.Run(5000);
  EXPECT_EQ(t.transport.written.size(), written);  // nothing runs any more
  EXPECT_EQ(t.ReadFile("logger1.ini"), ini);
}

TEST(ProbeDialogs, TheRescaleQuestionComesOnlyForTheLoggersOwnDownloadAndFunc3ActsOnTheAnswerGivenBefore) {
  const std::tuple<std::string, double, double> kept{"A rms", 10, 5}, rescaled{"A dc", 100, 0.5};
  ProbeApp t;
  t.Connect(77);
  t.PutRecordOnScreen();
  t.s().record.RecordFromFile = 1;
  t.s().measure.RescaleApproved = 1;  // a Yes from before counts for nothing on a file's record
  t.Choose(2, 1);
  EXPECT_EQ(t.Record(), kept);
  t.s().record.RecordFromFile = 0, t.s().panel.OtherLoggerNotice = 1;  // the graph of another logger
  t.Choose(2, 1);
  EXPECT_EQ(std::pair(t.Record(), t.s().measure.RescaleApproved), std::pair(kept, std::int16_t{0}));
  t.s().panel.OtherLoggerNotice = 0;
  for (MsgAnswer answer : {MsgAnswer::No, MsgAnswer::Yes}) {
    t.ui.answer = [answer](const MessageRequest&) { return answer; };
    t.Choose(2, 1);
    EXPECT_EQ(t.Record(), answer == MsgAnswer::Yes ? rescaled : kept);  // yes: 100 / (100 * 2 * 1)
    EXPECT_EQ(t.s().logger.RangeFactor.Value(), 100);
  }
  ASSERT_EQ(t.ui.messages.size(), 2u);
  const MessageRequest& q = t.ui.messages[0];
  EXPECT_EQ(std::tuple(q.text, q.title, q.buttons, q.icon),
            std::tuple("Do you want to rescale the displayed graph?", "Graph Rescaling", MsgButtons::YesNo,
                       MsgIcon::Question));
  t.s().probeTable.groups[3].sectionTitles[1] = "Future";
  t.ui.onModal = [&](DialogId id) {
    const ProbeDialogView& d = t.app->v.FUNC3;
    EXPECT_EQ(std::tuple(id, d.caption, d.Label1.visible, d.Option[1].visible, d.Option[3].visible),
              std::tuple(DialogId::FUNC3, "Spare", false, true, false));
    ProbeDialogCancel(*t.app, 3);
  };
  t.Do(Func03);
  t.s().measure.ProbeUnset = 1;
  t.Choose(3, 1);  // asks nothing
  EXPECT_EQ(std::tuple(t.ui.messages.size(), t.s().measure.ProbeUnset, t.w().Label34.caption),
            std::tuple(2u, 1, "SP-1"));
  EXPECT_EQ(t.Record(), std::tuple("A", 20.0, 2.5));  // 100 / (20 * 2 * 1)
  t.Choose(3, 2);
  EXPECT_EQ(t.s().logger.RangeFactor.Value(), 1);  // a zero factor counts as one
  // The record is not saved: the program asks before it ends, and stays on Cancel.
  t.ui.answer = [](const MessageRequest&) { return MsgAnswer::Cancel; };
  EXPECT_FALSE(EndProgram(*t.app));
  const MessageRequest& end = t.ui.messages.back();
  EXPECT_EQ(std::tuple(end.text, end.title, end.defaultButton), std::tuple("en143", "en74", 2));
  t.s().record.RecordSaved = 1;
  EXPECT_TRUE(EndProgram(*t.app));  // a saved record: no question
}

}  // namespace
}  // namespace quillet
