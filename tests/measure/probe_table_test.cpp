// Probes of model 16 loggers in virtual time: probes.dat, the memory per logger serial,
// the three probe dialogs and what they leave behind.
#include "measure/probe_table.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <vector>

#include "log1/startup.h"
#include "support/fake_platform.h"
#include "support/settings_text.h"

namespace quillet {
namespace {

using testing::ProbeEntry;
using testing::TimedReply;

struct Row {
  std::string label, unit, factor;
};

// A probes.dat of three groups of three sections of ten rows; rows not given read
// "Future","",1. By default: CT-20, CT-50 and CT-300 in group 1, HD-2 in group 2.
struct ProbesDat {
  std::string titles[3] = {"AC Probes", "DC Probes", "Future"};
  std::map<std::pair<int, int>, Row> rows = {{{1, 1}, {"CT-20", "A rms", "10"}},
                                             {{1, 2}, {"CT-50", "A rms", "4"}},
                                             {{1, 11}, {"CT-300", "A rms", "0.5"}},
                                             {{2, 1}, {"HD-2", "A dc", "100"}}};
  std::string Text() const {
    std::ostringstream f;
    for (int g = 1; g <= 3; ++g) {
      f << '"' << titles[g - 1] << "\"\n";
      for (int section = 1; section <= 3; ++section) {
        f << "\"Section " << g << "." << section << "\"\n";
        for (int r = 1; r <= 10; ++r) {
          auto it = rows.find({g, (section - 1) * 10 + r});
          const Row row = it != rows.end() ? it->second : Row{"Future", "", "1"};
          f << '"' << row.label << "\",\"" << row.unit << "\"," << row.factor << "\n";
        }
      }
    }
    return f.str();
  }
};

// A model 16 logger with layout 1 at 1200 bit/s: a header with the given serial and a
// live reading of 100 in range code 0, the plain range. Bytes take 11 bits each.
auto CurrentLogger(int serial) {
  return [serial](const std::string& bytes, double now, int baud, int) {
    std::vector<TimedReply> out;
    std::vector<std::uint8_t> payload;
    if (baud == 1200 && bytes == std::string{'\0', 'R'}) {
      payload.assign(22, 0);  // memory code 0: 2048 slots
      payload[1] = static_cast<std::uint8_t>(serial % 256);
      payload[2] = static_cast<std::uint8_t>(serial / 256);
      for (int i = 3; i <= 10; ++i) payload[i] = 0xFF;  // no range marks
      payload[12] = 1;                                  // a little running time
      payload[16] = 16;                                 // model code
      payload[17] = 9;                                  // samples counted
    } else if (baud == 1200 && bytes == std::string{'\0', 'D'}) {
      payload = {100, 0};
    } else {
      return out;
    }
    double at = now + 0.005;
    out.push_back({at += 11.0 / 1200, 0x04});
    for (std::uint8_t b : payload) out.push_back({at += 11.0 / 1200, b});
    return out;
  };
}

// Started with the logger found by the first live poll and its header read.
struct ProbeApp : testing::TestApp {
  ProbeApp(int serial, const std::string& probes, const std::map<int, ProbeEntry>& memory = {},
           bool connect = true) {
    WriteTwoLanguageFile();
    testing::SettingsOptions o;
    o.probes = memory;
    WriteFile("logger1.ini", SettingsFileText(o));
    if (!probes.empty()) WriteFile("probes.dat", probes, true);
    transport.peer = CurrentLogger(serial);
    Start();
    if (connect) Run(3000);
  }
  void Choose(int group, int option) {
    ui.onModal = [this, group, option](DialogId) {
      ProbeDialogChoose(*app, group, option);
      ProbeDialogOk(*app, group);
    };
    Do(group == 1 ? Func01 : group == 2 ? Func02 : Func03);
  }
  // A downloaded record of one sample, raw 100 in range 1, as converted with factor 10.
  void PutRecordOnScreen() {
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
    r.RecordFromFile = 0;
    s().link.DownloadPercent = 100;
    s().panel.GraphLoggerNumber = s().logger.LoggerSerial;
  }
};

std::map<int, ProbeEntry> TenLoggers() {
  std::map<int, ProbeEntry> m;
  for (int i = 1; i <= 10; ++i) {
    const std::string n = std::to_string(i);
    m[i] = {std::to_string(100 + i), n, "u" + n, "p" + n};
  }
  m[11] = {"110", "10", "u10", "p10"};
  return m;
}

TEST(ProbeTable, AConnectedLoggerGetsItsMenusFromTheGroupTitlesAndAnUnusedFirstGroupIsLeftAlone) {
  ProbeApp t(77, ProbesDat().Text());
  ASSERT_EQ(t.s().logger.ModelCode.Value(), 16);
  EXPECT_TRUE(t.w().mnuFunc.visible);
  EXPECT_EQ(t.w().func01.caption + t.w().func02.caption + t.w().func03.caption, "AC ProbesDC ProbesFuture");
  EXPECT_TRUE(t.w().func01.visible && t.w().func02.visible && !t.w().func03.visible);
  ProbesDat p;
  p.titles[0] = "Future";
  for (bool before : {true, false}) {
    ProbeApp u(77, p.Text(), {}, false);
    u.w().func01.visible = before;
    u.Run(3000);
    EXPECT_EQ(u.w().func01.caption, "Future");
    EXPECT_EQ(u.w().func01.visible, before);
    EXPECT_TRUE(u.w().func02.visible);
  }
}

TEST(ProbeTable, TheRememberedProbeOfTheLoggerIsUsedAndAZeroFactorCountsAsOne) {
  const struct {
    int serial;
    std::map<int, ProbeEntry> memory;
    double slot, factor;
    std::string unit, label, value;
  } cases[] = {
      {300, {{4, {"300", "0", "A rms", "CT-0"}}}, 4, 1, "A rms", "CT-0", "50.00"},  // 100 / (1 * 2 * 1)
      {300, {{2, {"300", "4", "", "CT-50"}}}, 2, 4, "", "CT-50", ""},  // no unit: no probe, nothing shown
      {105, TenLoggers(), 5, 5, "u5", "p5", "10.00"},                  // seen before: keeps its place
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.label);
    ProbeApp t(c.serial, ProbesDat().Text(), c.memory);
    const ProbeMemoryTables& m = t.s().probes;
    EXPECT_EQ(
        std::tuple(t.s().measure.ProbeSlot.Value(), t.s().logger.RangeFactor.Value(),
                   m.ProbeFactor[static_cast<int>(c.slot)].Value(), t.s().logger.LiveUnitText,
                   t.s().measure.ProbeUnset, t.w().Label34.caption, m.ProbeSerial[11].Value(),
                   m.ProbeLabel[11]),
        std::tuple(c.slot, c.factor, c.factor, c.unit, c.unit.empty() ? 1 : 0, c.label, c.serial, c.label));
    t.Run(2000);
    EXPECT_EQ(t.w().Label19.visible, !c.unit.empty());
    if (!c.unit.empty()) {
      EXPECT_EQ(t.w().Label19.caption, c.value);
    }
    EXPECT_TRUE(t.ui.messages.empty());
  }
}

TEST(ProbeTable, AnEleventhLoggerDropsTheOldestTakesTheLastChoiceAndIsSavedAtExit) {
  std::map<int, ProbeEntry> memory = TenLoggers();
  memory[11] = {"103", "3", "A dc", "last"};
  ProbeApp t(999, ProbesDat().Text(), memory);
  const ProbeMemoryTables& m = t.s().probes;
  for (int i = 1; i <= 9; ++i) {
    EXPECT_EQ(m.ProbeSerial[i].Value(), 101 + i) << i;
    EXPECT_EQ(m.ProbeLabel[i], "p" + std::to_string(i + 1)) << i;
  }
  EXPECT_EQ(t.s().measure.ProbeSlot.Value(), 10);
  for (int i : {10, 11})
    EXPECT_EQ(std::tuple(m.ProbeSerial[i].Value(), m.ProbeFactor[i].Value(), m.ProbeUnit[i], m.ProbeLabel[i]),
              std::tuple(999, 3, "A dc", "last"))
        << i;
  EXPECT_EQ(t.s().logger.RangeFactor.Value(), 3);
  bool close = false;
  t.Do([&] { close = EndProgram(*t.app); });
  ASSERT_TRUE(close);
  const std::string ini = t.ReadFile("logger1.ini");
  EXPECT_NE(ini.find("102,2,\"u2\",\"p2\"\n"), std::string::npos) << ini;
  EXPECT_EQ(ini.find("101,1,"), std::string::npos);
  EXPECT_NE(ini.find("999,3,\"A dc\",\"last\"\n999,3,\"A dc\",\"last\"\n"), std::string::npos) << ini;
}

TEST(ProbeTable, AMissingOrShortFileEndsTheProgramWithoutSavingTheSettings) {
  const std::string whole = ProbesDat().Text();
  for (const std::string& probes : {std::string(), whole.substr(0, whole.rfind("\"Future\""))}) {
    ProbeApp t(77, probes);
    ASSERT_EQ(t.ui.messages.size(), 1u);
    const MessageRequest& m = t.ui.messages[0];
    EXPECT_EQ(
        std::tuple(m.text, m.title, m.icon, m.buttons),
        std::tuple("Probes.dat is missing.", "Cannot run program", MsgIcon::Information, MsgButtons::Ok));
    EXPECT_TRUE(t.ui.ended && t.ui.fatal.empty());
    const std::size_t written = t.transport.written.size();
    t.Run(5000);
    EXPECT_EQ(t.transport.written.size(), written);  // nothing runs any more
    EXPECT_EQ(t.ReadFile("logger1.ini"), testing::SettingsFileText({}));
  }
}

TEST(ProbeTable, AFactorThatIsNoNumberLeavesTheLoggerWithoutAProbeAndSaysNothing) {
  ProbesDat p;
  p.rows[{2, 5}] = {"HD-X", "A dc", "fast"};
  ProbeApp t(300, p.Text(), {{1, {"300", "4", "A rms", "CT-50"}}});
  ASSERT_EQ(t.s().logger.ModelCode.Value(), 16);
  EXPECT_TRUE(t.ui.messages.empty() && !t.ui.ended);
  EXPECT_EQ(std::tuple(t.s().logger.RangeFactor.Value(), t.s().measure.ProbeUnset, t.s().logger.LiveUnitText),
            std::tuple(1, 1, ""));
  // The first group was read, the second never finished: no identification either.
  EXPECT_EQ(t.w().func01.caption, "AC Probes");
  EXPECT_FALSE(t.w().func02.visible);
  EXPECT_EQ(t.s().probes.ProbeSerial[11].Value(), 0);
}

TEST(ProbeDialogs, OpeningFillsCaptionsHidesWhatIsUnusedAndOkWantsAChoice) {
  ProbesDat p;
  p.rows[{1, 21}] = {"FX-600", "A rms", "0.3"};
  ProbeApp t(77, p.Text());
  t.ui.onModal = [&](DialogId id) {
    ASSERT_EQ(id, DialogId::Func1);
    ProbeDialogView& d = t.app->v.Func1;
    EXPECT_EQ(d.caption, "AC Probes");
    EXPECT_EQ(d.Label2.caption, "Section 1.2");
    EXPECT_TRUE(d.Label1.visible && d.Label2.visible && d.Label3.visible);
    EXPECT_EQ(d.Option[21].caption, "FX-600");
    for (int n = 1; n <= 30; ++n) EXPECT_EQ(d.Option[n].visible, n == 1 || n == 2 || n == 11 || n == 21) << n;
    ProbeDialogOk(*t.app, 1);
    EXPECT_TRUE(d.visible);  // nothing chosen yet
    ProbeDialogChoose(*t.app, 1, 11);
    ProbeDialogChoose(*t.app, 1, 2);
    EXPECT_FALSE(d.Option[11].checked);
    ProbeDialogOk(*t.app, 1);
    EXPECT_FALSE(d.visible);
  };
  t.Do(Func01);
  EXPECT_EQ(t.s().logger.RangeFactor.Value(), 4);
  EXPECT_EQ(t.w().Label34.caption + "|" + t.w().Label21.caption, "CT-50|A rms");
  EXPECT_TRUE(t.ui.messages.empty());  // no record on screen: nothing to rescale
  t.ui.onModal = [&](DialogId) {
    EXPECT_EQ(t.app->v.FUNC3.caption, "Future");
    EXPECT_FALSE(t.app->v.FUNC3.Label1.visible);  // an unused section caption is hidden
    ProbeDialogCancel(*t.app, 3);
  };
  t.s().probeTable.groups[3].sectionTitles[1] = "Future";
  t.Do(Func03);
}

TEST(ProbeDialogs, AChoiceInFunc01IsRememberedAndTheHeaderIsReadAgainWhileCancelChangesNothing) {
  ProbeApp t(4321, ProbesDat().Text(), {{11, {"1", "2", "A dc", "HD-100"}}});
  ASSERT_EQ(t.s().measure.ProbeSlot.Value(), 10);
  t.s().probes.ProbeLabel[10] = "edited";
  t.Do(Func02);  // the scripted user cancels
  EXPECT_EQ(t.s().logger.RangeFactor.Value(), 2);
  EXPECT_EQ(t.w().Label34.caption, "HD-100");
  EXPECT_EQ(t.s().probes.ProbeLabel[10], "HD-100");  // the memory still takes the present probe
  EXPECT_EQ(t.s().link.LinkMode.Value(), 0);         // only func01 asks for the header again

  const std::size_t headers = t.Count('R');
  t.Choose(1, 1);
  EXPECT_EQ(t.s().link.LinkMode.Value(), 1);
  const ProbeMemoryTables& m = t.s().probes;
  for (int i : {10, 11})
    EXPECT_EQ(std::tuple(m.ProbeSerial[i].Value(), m.ProbeFactor[i].Value(), m.ProbeUnit[i], m.ProbeLabel[i]),
              std::tuple(4321, 10, "A rms", "CT-20"))
        << i;
  t.Run(1000);
  EXPECT_GT(t.Count('R'), headers);
  // The fresh header finds the logger in its slot with the probe just chosen.
  EXPECT_EQ(std::tuple(t.s().measure.ProbeSlot.Value(), m.ProbeSerial[9].Value(), t.w().Label34.caption,
                       t.s().logger.RangeFactor.Value()),
            std::tuple(10, 0, "CT-20", 10));
}

TEST(ProbeDialogs, TheRescaleQuestionReconvertsTheRecordOnScreenOnYesOnly) {
  for (bool yes : {true, false}) {
    ProbeApp t(77, ProbesDat().Text());
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
  ProbeApp t(77, ProbesDat().Text());
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

TEST(ProbeDialogs, Func3AsksNothingActsOnTheApprovalGivenBeforeAndAZeroFactorCountsAsOne) {
  ProbesDat p;
  p.titles[2] = "Spare";
  p.rows[{3, 1}] = {"SP-1", "A", "20"};
  p.rows[{1, 3}] = {"CT-0", "A rms", "0"};
  ProbeApp t(77, p.Text());
  EXPECT_TRUE(t.w().func03.visible);
  t.PutRecordOnScreen();
  t.s().measure.ProbeUnset = 1;
  t.s().measure.RescaleApproved = 1;
  t.Choose(3, 1);
  EXPECT_TRUE(t.ui.messages.empty());
  EXPECT_EQ(std::tuple(t.s().measure.ProbeUnset, t.w().Label34.caption, t.s().record.RecordUnitText,
                       t.s().record.FullValues[1].Value()),
            std::tuple(1, "SP-1", "A", 2.5));  // 100 / (20 * 2 * 1)

  ProbeApp zero(77, p.Text());
  zero.Choose(1, 3);
  EXPECT_EQ(zero.s().logger.RangeFactor.Value(), 1);
  zero.Run(3000);  // the live reading goes on
  EXPECT_FALSE(zero.ui.ended);
  EXPECT_EQ(zero.w().Label19.caption, "50.00");
}

}  // namespace
}  // namespace quillet
