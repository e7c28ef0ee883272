// Probes of model 16 loggers: probes.dat, the memory per logger serial, the three probe
// dialogs and what they leave behind.
#include "measure/probe_table.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <map>

#include "log1/startup.h"
#include "support/emulated_logger.h"

namespace quillet {
namespace {

using testing::ProbeEntry;
using Rows = std::map<std::pair<int, int>, std::array<const char*, 3>>;  // (group, row): label, unit, factor

// probes.dat: three groups of three sections of ten rows, "Future","",1 unless given.
// CT-20, CT-50 and CT-300 in group 1, HD-2 in group 2, group 3 unused.
std::string ProbesDat(Rows rows = {}, const char* third = "Future") {
  rows.insert({{{1, 1}, {"CT-20", "A rms", "10"}}, {{1, 2}, {"CT-50", "A rms", "4"}},
               {{1, 11}, {"CT-300", "A rms", "0.5"}}, {{2, 1}, {"HD-2", "A dc", "100"}}});
  std::ostringstream f;
  for (int g = 1; g <= 3; ++g) {
    f << '"' << (g == 1 ? "AC Probes" : g == 2 ? "DC Probes" : third) << "\"\n";
    for (int n = 1; n <= 30; ++n) {
      if (n % 10 == 1) f << "\"Section " << g << "." << n / 10 + 1 << "\"\n";
      const auto r = rows.count({g, n}) ? rows[{g, n}] : std::array<const char*, 3>{"Future", "", "1"};
      f << '"' << r[0] << "\",\"" << r[1] << "\"," << r[2] << "\n";
    }
  }
  return f.str();
}

struct ProbeApp : testing::TestApp {
  explicit ProbeApp(const std::string& probes = ProbesDat(), const std::map<int, ProbeEntry>& memory = {}) {
    WriteTwoLanguageFile();
    WriteFile("logger1.ini", testing::SettingsFileText({1, 1, 1200, 0, 0, memory, ""}));
    WriteFile("probes.dat", probes, true);
    Start();
  }
  // What the header of a model 16 logger of this serial sets off.
  void Connect(int serial) {
    s().logger.LoggerSerial = serial, s().link.LoggerSeen = 1;
    Do(LoadProbeTable);
  }
  void Choose(int group, int option) {
    ui.onModal = [this, group, option](DialogId) {
      ProbeDialogChoose(*app, group, option), ProbeDialogOk(*app, group);
    };
    Do(group == 1 ? Func01 : group == 2 ? Func02 : Func03);
  }
  // A downloaded record of a model 16 logger: one sample, raw 100, as converted with factor 10.
  void PutRecordOnScreen() {
    s().logger.ModelCode = 16, s().logger.RecordReplyFormat = 1;
    SampleRecord& r = s().record;
    r.BlockData = std::string(1, static_cast<char>(100)) + "  ";
    r.RecordMemorySize = 2048;
    r.RecordStoredSamples = r.FullSampleCount = r.RecordSampleCount = r.RecordScaleByte = 1;
    r.RecordRangeFactor = 10, r.RecordUnitText = "A rms", r.FullValues[1] = 5;
    s().link.DownloadPercent = 100;
  }
  std::tuple<double, std::string, std::string> Probe() {
    return {s().logger.RangeFactor.Value(), s().logger.LiveUnitText, w().Label34.caption};
  }
  std::tuple<std::string, double, double> Record() {
    return {s().record.RecordUnitText, s().record.RecordRangeFactor.Value(), s().record.FullValues[1].Value()};
  }
};

TEST(ProbeTable, ALoggerSeenBeforeKeepsItsPlaceAndANewOneDropsTheOldestAndTakesTheLastChoice) {
  std::map<int, ProbeEntry> memory;
  for (int i = 1; i <= 10; ++i) memory[i] = {std::to_string(100 + i), "5", "u", "p" + std::to_string(i)};
  memory[3] = {"300", "0", "", "CT-0"};  // a zero factor counts as one; no unit: no probe
  memory[11] = {"103", "3", "A dc", "last"};
  ProbeApp seen(ProbesDat(), memory);
  seen.Connect(300);
  EXPECT_EQ(seen.Probe(), std::tuple(1.0, "", "CT-0"));
  EXPECT_EQ(std::tuple(seen.s().measure.ProbeSlot.Value(), seen.s().measure.ProbeUnset,
                       seen.s().probes.ProbeLabel[11]),
            std::tuple(3, 1, "CT-0"));
  ProbeApp t(ProbesDat(), memory);
  t.Connect(999);
  EXPECT_EQ(t.Probe(), std::tuple(3.0, "A dc", "last"));
  EXPECT_EQ(t.s().measure.ProbeSlot.Value(), 10);
  ASSERT_TRUE(EndProgram(*t.app));
  const std::string ini = t.ReadFile("logger1.ini");
  EXPECT_NE(ini.find("\"[probe data]\"\n102,5,\"u\",\"p2\"\n300,0,\"\",\"CT-0\"\n104,"), std::string::npos) << ini;
  EXPECT_NE(ini.find("110,5,\"u\",\"p10\"\n999,3,\"A dc\",\"last\"\n999,3,\"A dc\",\"last\"\n"), std::string::npos);
}

TEST(ProbeTable, AMissingFileEndsTheProgramWithoutSavingTheSettings) {
  testing::EmulatedLoggerApp t(sim::LoggerConfig{.modelCode = 16});
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
  ProbeApp t(ProbesDat({{{3, 1}, {"SP-1", "A", "20"}}, {{3, 2}, {"SP-0", "A", "0"}}}, "Spare"));
  t.Connect(77);
  t.PutRecordOnScreen();
  t.s().record.RecordFromFile = 1;
  t.s().measure.RescaleApproved = 1;  // a Yes from before counts for nothing on a file's record
  t.Choose(2, 1);
  EXPECT_EQ(t.Record(), kept);
  t.s().record.RecordFromFile = 0, t.s().panel.OtherLoggerNotice = 1;  // the graph of another logger
  t.Choose(2, 1);
  EXPECT_EQ(std::pair(t.Record(), t.s().measure.RescaleApproved), std::pair(kept, std::int16_t{0}));
  EXPECT_TRUE(t.ui.messages.empty());
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
}

}  // namespace
}  // namespace quillet
