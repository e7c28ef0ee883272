// Probes of model 16 loggers: probes.dat, the memory per logger serial, the three probe
// dialogs and what they leave behind.
#include "measure/probe_table.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <map>
#include <sstream>

#include "log1/startup.h"
#include "support/emulated_logger.h"
#include "support/fake_platform.h"
#include "support/settings_text.h"

namespace quillet {
namespace {

using testing::ProbeEntry;

struct Row {
  std::string label, unit, factor;
};

// probes.dat: three groups of three sections of ten rows; rows not given read
// "Future","",1. CT-20, CT-50 and CT-300 in group 1, HD-2 in group 2, group 3 unused.
std::string ProbesDat(std::map<std::pair<int, int>, Row> rows = {},
                      std::array<const char*, 3> titles = {"AC Probes", "DC Probes", "Future"}) {
  rows.insert({{{1, 1}, {"CT-20", "A rms", "10"}}, {{1, 2}, {"CT-50", "A rms", "4"}},
               {{1, 11}, {"CT-300", "A rms", "0.5"}}, {{2, 1}, {"HD-2", "A dc", "100"}}});
  std::ostringstream f;
  for (int g = 1; g <= 3; ++g) {
    f << '"' << titles[g - 1] << "\"\n";
    for (int n = 1; n <= 30; ++n) {
      if (n % 10 == 1) f << "\"Section " << g << "." << n / 10 + 1 << "\"\n";
      auto it = rows.find({g, n});
      const Row r = it != rows.end() ? it->second : Row{"Future", "", "1"};
      f << '"' << r.label << "\",\"" << r.unit << "\"," << r.factor << "\n";
    }
  }
  return f.str();
}

struct ProbeApp : testing::TestApp {
  explicit ProbeApp(const std::string& probes, const std::map<int, ProbeEntry>& memory = {}) {
    WriteTwoLanguageFile();
    testing::SettingsOptions o;
    o.probes = memory;
    WriteFile("logger1.ini", SettingsFileText(o));
    if (!probes.empty()) WriteFile("probes.dat", probes, true);
    Start();
  }
  // What the header of a model 16 logger of this serial sets off.
  void Connect(int serial) {
    s().logger.LoggerSerial = serial;
    s().link.LoggerSeen = 1;
    Do(LoadProbeTable);
  }
  void Choose(int group, int option) {
    ui.onModal = [this, group, option](DialogId) {
      ProbeDialogChoose(*app, group, option);
      ProbeDialogOk(*app, group);
    };
    Do(group == 1 ? Func01 : group == 2 ? Func02 : Func03);
  }
  // A downloaded record of a model 16 logger: one sample, raw 100 in range 1, as
  // converted with factor 10.
  void PutRecordOnScreen() {
    s().logger.ModelCode = 16;
    s().logger.RecordReplyFormat = 1;
    SampleRecord& r = s().record;
    r.BlockData = std::string(1, static_cast<char>(100)) + "  ";
    r.RecordMemorySize = 2048;
    r.RecordHalfFills = r.RecordFillPosition = 0;
    r.RecordStoredSamples = r.FullSampleCount = r.RecordSampleCount = r.RecordScaleByte = 1;
    r.RecordLastTime = 46347.5;
    r.RecordInterval = 1.0 / 98304;
    r.RecordRangeFactor = 10;
    r.RecordUnitText = "A rms";
    r.FullValues[1] = 5;
    s().link.DownloadPercent = 100;
    s().panel.GraphLoggerNumber = s().logger.LoggerSerial;
  }
  std::tuple<double, std::string, std::string> Probe() {
    return {s().logger.RangeFactor.Value(), s().logger.LiveUnitText, w().Label34.caption};
  }
};

TEST(ProbeTable, TheMenusFollowTheGroupTitlesAndAnUnusedFirstGroupLeavesItsMenuAlone) {
  ProbeApp t(ProbesDat());
  t.Connect(77);
  EXPECT_EQ(t.w().func01.caption + t.w().func02.caption + t.w().func03.caption, "AC ProbesDC ProbesFuture");
  EXPECT_TRUE(t.w().func01.visible && t.w().func02.visible && !t.w().func03.visible);
  for (bool before : {true, false}) {
    ProbeApp u(ProbesDat({}, {"Future", "DC Probes", "Future"}));
    u.w().func01.visible = before;
    u.Connect(77);
    EXPECT_EQ(u.w().func01.visible, before);
  }
}

TEST(ProbeTable, ALoggerSeenBeforeKeepsItsPlaceAndANewOneDropsTheOldestAndTakesTheLastChoice) {
  std::map<int, ProbeEntry> memory;
  for (int i = 1; i <= 10; ++i) memory[i] = {std::to_string(100 + i), "5", "u", "p" + std::to_string(i)};
  memory[4] = {"300", "0", "", "CT-0"};  // a zero factor counts as one; no unit: no probe
  memory[11] = {"103", "3", "A dc", "last"};
  ProbeApp seen(ProbesDat(), memory);
  seen.Connect(300);
  EXPECT_EQ(seen.Probe(), std::tuple(1.0, "", "CT-0"));
  EXPECT_EQ(std::tuple(seen.s().measure.ProbeSlot.Value(), seen.s().measure.ProbeUnset,
                       seen.s().probes.ProbeSerial[11].Value(), seen.s().probes.ProbeLabel[11]),
            std::tuple(4, 1, 300, "CT-0"));

  ProbeApp t(ProbesDat(), memory);
  t.Connect(999);
  const ProbeMemoryTables& m = t.s().probes;
  for (int i = 1; i <= 9; ++i) EXPECT_EQ(m.ProbeLabel[i], memory[i + 1].label) << i;
  EXPECT_EQ(std::tuple(t.s().measure.ProbeSlot.Value(), t.s().measure.ProbeUnset), std::tuple(10, 0));
  EXPECT_EQ(t.Probe(), std::tuple(3.0, "A dc", "last"));
  bool close = false;
  t.Do([&] { close = EndProgram(*t.app); });
  ASSERT_TRUE(close);
  const std::string ini = t.ReadFile("logger1.ini");
  EXPECT_NE(ini.find("102,5,\"u\",\"p2\"\n"), std::string::npos) << ini;
  EXPECT_EQ(ini.find("101,5,"), std::string::npos);
  EXPECT_NE(ini.find("999,3,\"A dc\",\"last\"\n999,3,\"A dc\",\"last\"\n"), std::string::npos) << ini;
}

TEST(ProbeTable, AMissingOrShortFileEndsTheProgramAndAFactorThatIsNoNumberLeavesNoProbe) {
  const std::string whole = ProbesDat();
  for (const std::string& probes : {std::string(), whole.substr(0, whole.rfind("\"Future\""))}) {
    testing::EmulatedLoggerApp t(sim::LoggerConfig{.modelCode = 16});
    const std::string ini = t.ReadFile("logger1.ini");
    if (probes.empty()) std::remove((t.app->p.places.programDir + "/probes.dat").c_str());
    if (!probes.empty()) t.WriteFile("probes.dat", probes, true);
    t.Connect();
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
  ProbeApp t(ProbesDat({{{2, 5}, {"HD-X", "A dc", "fast"}}}), {{1, {"300", "4", "A rms", "CT-50"}}});
  t.Connect(300);
  EXPECT_TRUE(t.ui.messages.empty() && !t.ui.ended);
  EXPECT_EQ(std::tuple(t.s().logger.RangeFactor.Value(), t.s().measure.ProbeUnset, t.s().logger.LiveUnitText),
            std::tuple(1, 1, ""));
  // The first group was read, the second never finished: no identification either.
  EXPECT_EQ(t.w().func01.caption, "AC Probes");
  EXPECT_FALSE(t.w().func02.visible);
  EXPECT_EQ(t.s().probes.ProbeSerial[11].Value(), 0);
}

TEST(ProbeDialogs, AChoiceIsRememberedAndOnlyFunc01AsksForAFreshHeaderWhileCancelChangesNothing) {
  ProbeApp t(ProbesDat(), {{11, {"1", "2", "A dc", "HD-100"}}});
  t.Connect(4321);
  t.s().probes.ProbeLabel[10] = "edited";
  t.Do(Func02);  // the scripted user cancels
  EXPECT_EQ(t.Probe(), std::tuple(2.0, "A dc", "HD-100"));
  EXPECT_EQ(t.s().probes.ProbeLabel[10], "HD-100");  // the memory still takes the present probe
  EXPECT_EQ(t.s().link.LinkMode.Value(), 0);
  t.Choose(1, 1);
  EXPECT_EQ(t.s().link.LinkMode.Value(), 1);
  EXPECT_EQ(t.w().Label21.caption, "A rms");
  const ProbeMemoryTables& m = t.s().probes;
  for (int i : {10, 11})
    EXPECT_EQ(std::tuple(m.ProbeSerial[i].Value(), m.ProbeFactor[i].Value(), m.ProbeUnit[i], m.ProbeLabel[i]),
              std::tuple(4321, 10, "A rms", "CT-20"))
        << i;
  t.Connect(4321);  // the fresh header finds the logger in its slot with the probe just chosen
  EXPECT_EQ(std::tuple(t.s().measure.ProbeSlot.Value(), m.ProbeSerial[9].Value()), std::tuple(10, 0));
  EXPECT_EQ(t.Probe(), std::tuple(10.0, "A rms", "CT-20"));
}

TEST(ProbeDialogs, TheRescaleQuestionReconvertsTheRecordOnScreenOnYesOnly) {
  for (bool yes : {true, false}) {
    ProbeApp t(ProbesDat());
    t.Connect(77);
    t.PutRecordOnScreen();
    if (!yes) t.ui.answer = [](const MessageRequest&) { return MsgAnswer::No; };
    t.Choose(2, 1);
    ASSERT_EQ(t.ui.messages.size(), 1u);
    const MessageRequest& q = t.ui.messages[0];
    EXPECT_EQ(std::tuple(q.text, q.title, q.buttons, q.icon),
              std::tuple("Do you want to rescale the displayed graph?", "Graph Rescaling", MsgButtons::YesNo,
                         MsgIcon::Question));
    const SampleRecord& r = t.s().record;  // yes: 100 / (100 * 2 * 1)
    EXPECT_EQ(std::tuple(r.RecordUnitText, r.RecordRangeFactor.Value(), r.FullValues[1].Value()),
              yes ? std::tuple("A dc", 100.0, 0.5) : std::tuple("A rms", 10.0, 5.0));
    EXPECT_EQ(t.s().logger.RangeFactor.Value(), 100);
  }
}

TEST(ProbeDialogs, NoQuestionWhileARecordFromAFileOrAnotherLoggersGraphIsOnScreen) {
  ProbeApp t(ProbesDat());
  t.Connect(77);
  t.PutRecordOnScreen();
  t.s().record.RecordFromFile = 1;
  t.s().measure.RescaleApproved = 1;  // a Yes from before counts for nothing on a file's record
  t.Choose(1, 2);
  t.s().record.RecordFromFile = 0;
  t.s().panel.OtherLoggerNotice = 1;
  t.Choose(2, 1);
  EXPECT_TRUE(t.ui.messages.empty());
  EXPECT_EQ(t.s().measure.RescaleApproved, 0);
  EXPECT_EQ(t.s().record.RecordUnitText, "A rms");
  EXPECT_EQ(t.s().record.FullValues[1].Value(), 5);
}

TEST(ProbeDialogs, Func3HidesUnusedSectionsAsksNothingAndActsOnTheApprovalGivenBefore) {
  ProbeApp t(ProbesDat({{{3, 1}, {"SP-1", "A", "20"}}, {{3, 2}, {"SP-0", "A", "0"}}},
                       {"AC Probes", "DC Probes", "Spare"}));
  t.Connect(77);
  EXPECT_TRUE(t.w().func03.visible);
  t.s().probeTable.groups[3].sectionTitles[1] = "Future";
  t.ui.onModal = [&](DialogId id) {
    ASSERT_EQ(id, DialogId::FUNC3);
    EXPECT_EQ(t.app->v.FUNC3.caption, "Spare");
    EXPECT_FALSE(t.app->v.FUNC3.Label1.visible);
    EXPECT_TRUE(t.app->v.FUNC3.Option[1].visible && !t.app->v.FUNC3.Option[3].visible);
    ProbeDialogCancel(*t.app, 3);
  };
  t.Do(Func03);
  t.PutRecordOnScreen();
  t.s().measure.ProbeUnset = 1;
  t.s().measure.RescaleApproved = 1;
  t.Choose(3, 1);
  EXPECT_TRUE(t.ui.messages.empty());
  EXPECT_EQ(std::tuple(t.s().measure.ProbeUnset, t.w().Label34.caption, t.s().record.RecordUnitText,
                       t.s().record.FullValues[1].Value()),
            std::tuple(1, "SP-1", "A", 2.5));  // 100 / (20 * 2 * 1)
  t.Choose(3, 2);
  EXPECT_EQ(t.s().logger.RangeFactor.Value(), 1);  // a zero factor counts as one
}

}  // namespace
}  // namespace quillet
