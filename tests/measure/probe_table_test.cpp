// Probes of model 16 loggers in virtual time: probes.dat, the memory per logger serial,
// the three probe dialogs and what they leave behind.
#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <vector>

#include "hub/app.h"
#include "log1/startup.h"
#include "measure/probe_table.h"
#include "support/fake_platform.h"

namespace quillet {
namespace {

using testing::TestApp;
using testing::TimedReply;

struct Row {
  std::string label, unit, factor;
};

// A probes.dat of three groups of three sections of ten rows; rows not given read
// "Future","",1.
struct ProbesDat {
  std::string titles[3] = {"AC Probes", "DC Probes", "Future"};
  std::map<std::pair<int, int>, Row> rows;  // (group, row 1..30)
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

ProbesDat TwoGroups() {
  ProbesDat p;
  p.rows[{1, 1}] = {"CT-20", "A rms", "10"};
  p.rows[{1, 2}] = {"CT-50", "A rms", "4"};
  p.rows[{1, 11}] = {"CT-300", "A rms", "0.5"};
  p.rows[{2, 1}] = {"HD-2", "A dc", "100"};
  return p;
}

struct Remembered {
  int serial;
  std::string factor, unit, label;
};

// logger1.ini with port 1, language 1 and the given probe memory entries 1..11.
std::string SettingsWith(const std::map<int, Remembered>& memory) {
  std::ostringstream f;
  f << "\"[PORT etc]\"\n\"comm port =  1\"\n\"language =  1\"\n\"baud =  1200\"\n\"Fahrenheit =  0\"\n"
       "\"US Date Format =  0\"\n\"[probe data]\"\n";
  for (int i = 1; i <= 11; ++i) {
    auto it = memory.find(i);
    if (it == memory.end()) {
      f << ",,\"\",\"\"\n";
    } else {
      const Remembered& m = it->second;
      f << m.serial << "," << m.factor << ",\"" << m.unit << "\",\"" << m.label << "\"\n";
    }
  }
  for (int i = 0; i <= 61; ++i) f << ",,,,,,,\n";
  f << "\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\"\n";
  return f.str();
}

// A model 16 logger with layout 1 at 1200 bit/s: a header with the given serial and a
// live reading of 100 in range code 0, the plain range. Bytes take 11 bits each.
auto CurrentLogger(int serial) {
  return [serial](const std::string& bytes, double now, int baud, int) {
    std::vector<TimedReply> out;
    if (baud != 1200) return out;
    std::vector<std::uint8_t> payload;
    if (bytes == std::string{'\0', 'R'}) {
      payload.assign(22, 0);
      payload[0] = 0;  // 2048 slots
      payload[1] = static_cast<std::uint8_t>(serial % 256);
      payload[2] = static_cast<std::uint8_t>(serial / 256);
      for (int i = 3; i <= 10; ++i) payload[i] = 0xFF;  // no range marks
      payload[12] = 1;                                  // a little running time
      payload[16] = 16;                                 // model code
      payload[17] = 9;                                  // samples counted
      payload[21] = 0;                                  // range code
    } else if (bytes == std::string{'\0', 'D'}) {
      payload = {100, 0};
    } else {
      return out;
    }
    const double byteTime = 11.0 / 1200;
    double at = now + 0.005;
    out.push_back({at += byteTime, 0x04});
    for (std::uint8_t b : payload) out.push_back({at += byteTime, b});
    return out;
  };
}

struct ProbeApp : TestApp {
  ProbeApp(int serial, const std::string& probes, const std::string& settings = SettingsWith({})) {
    WriteTwoLanguageFile();
    WriteFile("logger1.ini", settings);
    if (!probes.empty()) WriteFile("probes.dat", probes, true);
    transport.peer = CurrentLogger(serial);
    Start();
  }
  // The first live poll finds the logger, and its header follows.
  void Connect() { Run(3000); }
  State& s() { return app->s; }
  Log1View& w() { return app->v.log1; }
};

TEST(ProbeTable, AConnectedLoggerGetsItsMenusFromTheGroupTitles) {
  ProbeApp t(77, TwoGroups().Text());
  t.Connect();
  ASSERT_EQ(t.s().logger.ModelCode.Value(), 16);
  EXPECT_TRUE(t.w().mnuFunc.visible);
  EXPECT_EQ(t.w().func01.caption, "AC Probes");
  EXPECT_EQ(t.w().func02.caption, "DC Probes");
  EXPECT_EQ(t.w().func03.caption, "Future");
  EXPECT_TRUE(t.w().func01.visible);
  EXPECT_TRUE(t.w().func02.visible);
  EXPECT_FALSE(t.w().func03.visible);
}

TEST(ProbeTable, AnUnusedFirstGroupLeavesFunc01AsItWas) {
  ProbesDat p = TwoGroups();
  p.titles[0] = "Future";
  for (bool before : {true, false}) {
    ProbeApp t(77, p.Text());
    t.w().func01.visible = before;
    t.Connect();
    ASSERT_EQ(t.s().logger.ModelCode.Value(), 16);
    EXPECT_EQ(t.w().func01.caption, "Future");
    EXPECT_EQ(t.w().func01.visible, before);
    EXPECT_TRUE(t.w().func02.visible);
  }
}

TEST(ProbeTable, AZeroFactorRememberedLoadsAsOneAndIsStoredAsOne) {
  ProbeApp t(300, TwoGroups().Text(), SettingsWith({{4, {300, "0", "A rms", "CT-0"}}}));
  t.Connect();
  EXPECT_EQ(t.s().logger.RangeFactor.Value(), 1);
  EXPECT_EQ(t.s().measure.ProbeSlot.Value(), 4);
  EXPECT_EQ(t.s().probes.ProbeFactor[4].Value(), 1);
  EXPECT_EQ(t.s().probes.ProbeFactor[11].Value(), 1);
  EXPECT_EQ(t.s().logger.LiveUnitText, "A rms");
  EXPECT_EQ(t.s().measure.ProbeUnset, 0);
  EXPECT_EQ(t.w().Label34.caption, "CT-0");
  EXPECT_TRUE(t.w().Label34.visible);
  // The live reading divides by the factor: 100 / (1 * 2 * 1).
  t.Run(2000);
  EXPECT_EQ(t.w().Label19.caption, "50.00");
  EXPECT_TRUE(t.ui.messages.empty());
}

TEST(ProbeTable, AnEmptyUnitLeavesTheLoggerWithoutAProbe) {
  ProbeApp t(300, TwoGroups().Text(), SettingsWith({{2, {300, "4", "", "CT-50"}}}));
  t.Connect();
  EXPECT_EQ(t.s().measure.ProbeUnset, 1);
  EXPECT_EQ(t.s().logger.LiveUnitText, "");
  EXPECT_EQ(t.s().logger.RangeFactor.Value(), 4);
  EXPECT_EQ(t.w().Label34.caption, "CT-50");
  // Without a unit neither value nor unit is shown.
  t.Run(2000);
  EXPECT_FALSE(t.w().Label19.visible);
}

std::map<int, Remembered> TenLoggers() {
  std::map<int, Remembered> m;
  for (int i = 1; i <= 10; ++i) m[i] = {100 + i, std::to_string(i), "u" + std::to_string(i), "p" + std::to_string(i)};
  m[11] = {110, "10", "u10", "p10"};
  return m;
}

TEST(ProbeTable, AnEleventhLoggerDropsTheOldestAndTakesTheLastChoiceInEntryTen) {
  std::map<int, Remembered> memory = TenLoggers();
  memory[11] = {103, "3", "A dc", "last"};
  ProbeApp t(999, TwoGroups().Text(), SettingsWith(memory));
  t.Connect();
  const ProbeMemoryTables& m = t.s().probes;
  for (int i = 1; i <= 9; ++i) {
    EXPECT_EQ(m.ProbeSerial[i].Value(), 101 + i) << i;
    EXPECT_EQ(m.ProbeLabel[i], "p" + std::to_string(i + 1)) << i;
  }
  EXPECT_EQ(t.s().measure.ProbeSlot.Value(), 10);
  for (int i : {10, 11}) {
    EXPECT_EQ(m.ProbeSerial[i].Value(), 999) << i;
    EXPECT_EQ(m.ProbeFactor[i].Value(), 3) << i;
    EXPECT_EQ(m.ProbeUnit[i], "A dc") << i;
    EXPECT_EQ(m.ProbeLabel[i], "last") << i;
  }
  EXPECT_EQ(t.s().logger.RangeFactor.Value(), 3);
  EXPECT_EQ(t.w().Label34.caption, "last");
}

TEST(ProbeTable, ALoggerSeenBeforeKeepsItsPlaceAndItsProbe) {
  ProbeApp t(105, TwoGroups().Text(), SettingsWith(TenLoggers()));
  t.Connect();
  const ProbeMemoryTables& m = t.s().probes;
  for (int i = 1; i <= 10; ++i) EXPECT_EQ(m.ProbeSerial[i].Value(), 100 + i) << i;
  EXPECT_EQ(t.s().measure.ProbeSlot.Value(), 5);
  EXPECT_EQ(t.s().logger.RangeFactor.Value(), 5);
  EXPECT_EQ(t.s().logger.LiveUnitText, "u5");
  EXPECT_EQ(t.w().Label34.caption, "p5");
  EXPECT_EQ(m.ProbeSerial[11].Value(), 105);
  EXPECT_EQ(m.ProbeLabel[11], "p5");
}

TEST(ProbeTable, TheRememberedProbesAreSavedAtExit) {
  ProbeApp t(999, TwoGroups().Text(), SettingsWith(TenLoggers()));
  t.Connect();
  bool close = false;
  Dispatch(*t.app, [&] { close = EndProgram(*t.app); });
  ASSERT_TRUE(close);
  const std::string ini = t.ReadFile("logger1.ini");
  EXPECT_NE(ini.find("102,2,\"u2\",\"p2\"\n"), std::string::npos) << ini;
  EXPECT_EQ(ini.find("101,1,"), std::string::npos);
  EXPECT_NE(ini.find("999,10,\"u10\",\"p10\"\n999,10,\"u10\",\"p10\"\n"), std::string::npos) << ini;
}

TEST(ProbeTable, AMissingOrShortFileEndsTheProgramWithoutSavingTheSettings) {
  const std::string whole = TwoGroups().Text();
  for (const std::string& probes : {std::string(), whole.substr(0, whole.rfind("\"Future\""))}) {
    ProbeApp t(77, probes);
    const std::string before = t.ReadFile("logger1.ini");
    t.Connect();
    ASSERT_EQ(t.ui.messages.size(), 1u);
    EXPECT_EQ(t.ui.messages[0].text, "Probes.dat is missing.");
    EXPECT_EQ(t.ui.messages[0].title, "Cannot run program");
    EXPECT_EQ(t.ui.messages[0].icon, MsgIcon::Information);
    EXPECT_EQ(t.ui.messages[0].buttons, MsgButtons::Ok);
    EXPECT_TRUE(t.ui.ended);
    EXPECT_TRUE(t.ui.fatal.empty());
    const std::size_t written = t.transport.written.size();
    t.Run(5000);
    EXPECT_EQ(t.transport.written.size(), written);  // nothing runs any more
    EXPECT_EQ(t.ReadFile("logger1.ini"), before);
  }
}

TEST(ProbeTable, AFactorThatIsNoNumberLeavesTheLoggerWithoutAProbeAndSaysNothing) {
  ProbesDat p = TwoGroups();
  p.rows[{2, 5}] = {"HD-X", "A dc", "fast"};
  ProbeApp t(300, p.Text(), SettingsWith({{1, {300, "4", "A rms", "CT-50"}}}));
  t.Connect();
  ASSERT_EQ(t.s().logger.ModelCode.Value(), 16);
  EXPECT_TRUE(t.ui.messages.empty());
  EXPECT_FALSE(t.ui.ended);
  EXPECT_EQ(t.s().logger.RangeFactor.Value(), 1);
  EXPECT_EQ(t.s().measure.ProbeUnset, 1);
  EXPECT_EQ(t.s().logger.LiveUnitText, "");
  // The first group was read, the second never finished: no identification either.
  EXPECT_EQ(t.w().func01.caption, "AC Probes");
  EXPECT_FALSE(t.w().func02.visible);
  EXPECT_EQ(t.s().probes.ProbeSerial[11].Value(), 0);
}

// ---- the dialogs ----------------------------------------------------------------------

TEST(ProbeDialogs, OpeningFillsCaptionsAndHidesWhatIsUnused) {
  ProbesDat p = TwoGroups();
  p.rows[{1, 21}] = {"FX-600", "A rms", "0.3"};
  ProbeApp t(77, p.Text());
  t.Connect();
  t.ui.onModal = [&](DialogId id) {
    ASSERT_EQ(id, DialogId::Func1);
    const ProbeDialogView& d = t.app->v.Func1;
    EXPECT_EQ(d.caption, "AC Probes");
    EXPECT_EQ(d.Label2.caption, "Section 1.2");
    EXPECT_TRUE(d.Label1.visible && d.Label2.visible && d.Label3.visible);
    EXPECT_EQ(d.Option[1].caption, "CT-20");
    EXPECT_EQ(d.Option[21].caption, "FX-600");
    for (int n = 1; n <= 30; ++n) EXPECT_EQ(d.Option[n].visible, n == 1 || n == 2 || n == 11 || n == 21) << n;
    ProbeDialogCancel(*t.app, 1);
  };
  Dispatch(*t.app, [&] { Func01(*t.app); });
  ASSERT_EQ(t.ui.modals.back(), DialogId::Func1);
  // An unused section caption is hidden.
  t.ui.onModal = [&](DialogId) {
    EXPECT_EQ(t.app->v.FUNC3.caption, "Future");
    EXPECT_FALSE(t.app->v.FUNC3.Label1.visible);
    ProbeDialogCancel(*t.app, 3);
  };
  t.app->s.probeTable.groups[3].sectionTitles[1] = "Future";
  Dispatch(*t.app, [&] { Func03(*t.app); });
}

TEST(ProbeDialogs, OkWithNothingChosenKeepsTheDialogOpen) {
  ProbeApp t(77, TwoGroups().Text());
  t.Connect();
  t.ui.onModal = [&](DialogId) {
    ProbeDialogOk(*t.app, 1);
    EXPECT_TRUE(t.app->v.Func1.visible);
    ProbeDialogChoose(*t.app, 1, 11);
    ProbeDialogChoose(*t.app, 1, 2);
    EXPECT_FALSE(t.app->v.Func1.Option[11].checked);
    ProbeDialogOk(*t.app, 1);
    EXPECT_FALSE(t.app->v.Func1.visible);
  };
  Dispatch(*t.app, [&] { Func01(*t.app); });
  EXPECT_EQ(t.s().logger.RangeFactor.Value(), 4);
  EXPECT_EQ(t.s().logger.LiveUnitText, "A rms");
  EXPECT_EQ(t.w().Label34.caption, "CT-50");
  EXPECT_EQ(t.w().Label21.caption, "A rms");
  EXPECT_TRUE(t.ui.messages.empty());  // no record on screen: nothing to rescale
}

TEST(ProbeDialogs, AChoiceInFunc01IsRememberedAndTheHeaderIsReadAgain) {
  ProbeApp t(4321, TwoGroups().Text());
  t.Connect();
  const double slot = t.s().measure.ProbeSlot.Value();
  ASSERT_EQ(slot, 10);
  const std::size_t headers = t.RequestTimes('R').size();
  t.ui.onModal = [&](DialogId) {
    ProbeDialogChoose(*t.app, 1, 1);
    ProbeDialogOk(*t.app, 1);
  };
  Dispatch(*t.app, [&] { Func01(*t.app); });
  EXPECT_EQ(t.s().link.LinkMode.Value(), 1);
  for (int i : {10, 11}) {
    EXPECT_EQ(t.s().probes.ProbeSerial[i].Value(), 4321);
    EXPECT_EQ(t.s().probes.ProbeFactor[i].Value(), 10);
    EXPECT_EQ(t.s().probes.ProbeUnit[i], "A rms");
    EXPECT_EQ(t.s().probes.ProbeLabel[i], "CT-20");
  }
  t.Run(1000);
  EXPECT_GT(t.RequestTimes('R').size(), headers);
  // The fresh header finds the logger in its slot with the probe just chosen.
  EXPECT_EQ(t.s().measure.ProbeSlot.Value(), 10);
  EXPECT_EQ(t.s().probes.ProbeSerial[9].Value(), 0);
  EXPECT_EQ(t.w().Label34.caption, "CT-20");
  EXPECT_EQ(t.s().logger.RangeFactor.Value(), 10);
}

TEST(ProbeDialogs, CancelChangesNothingButTheMemoryStillTakesThePresentProbe) {
  ProbeApp t(4321, TwoGroups().Text(), SettingsWith({{11, {1, "2", "A dc", "HD-100"}}}));
  t.Connect();
  t.s().probes.ProbeLabel[10] = "edited";
  Dispatch(*t.app, [&] { Func02(*t.app); });  // the scripted user cancels
  EXPECT_EQ(t.s().logger.RangeFactor.Value(), 2);
  EXPECT_EQ(t.w().Label34.caption, "HD-100");
  EXPECT_EQ(t.s().probes.ProbeLabel[10], "HD-100");
  EXPECT_EQ(t.s().link.LinkMode.Value(), 0);  // only func01 asks for the header again
}

// A downloaded record of one sample, raw 100 in range 1, as converted with factor 10.
void PutRecordOnScreen(ProbeApp& t) {
  SampleRecord& r = t.s().record;
  r.BlockData = std::string(1, static_cast<char>(100)) + "  ";
  r.RecordMemorySize = 2048;
  r.RecordHalfFills = 0;
  r.RecordFillPosition = 0;
  r.RecordStoredSamples = 1;
  r.FullSampleCount = r.RecordSampleCount = 1;
  r.RecordScaleByte = 1;
  r.RecordLastTime = 46347.5;
  r.RecordInterval = 1.0 / 98304;
  r.RecordRangeFactor = 10;
  r.RecordUnitText = "A rms";
  r.FullValues[1] = 5;
  r.RecordFromFile = 0;
  t.s().link.DownloadPercent = 100;
  t.s().panel.GraphLoggerNumber = t.s().logger.LoggerSerial;
}

void ChooseInFunc(ProbeApp& t, int group, int option) {
  t.ui.onModal = [&t, group, option](DialogId) {
    ProbeDialogChoose(*t.app, group, option);
    ProbeDialogOk(*t.app, group);
  };
}

TEST(ProbeDialogs, YesToTheRescaleQuestionReconvertsTheRecordOnScreen) {
  ProbeApp t(77, TwoGroups().Text());
  t.Connect();
  PutRecordOnScreen(t);
  ChooseInFunc(t, 2, 1);
  Dispatch(*t.app, [&] { Func02(*t.app); });
  ASSERT_EQ(t.ui.messages.size(), 1u);
  const MessageRequest& q = t.ui.messages[0];
  EXPECT_EQ(q.text, "Do you want to rescale the displayed graph?");
  EXPECT_EQ(q.title, "Graph Rescaling");
  EXPECT_EQ(q.buttons, MsgButtons::YesNo);
  EXPECT_EQ(q.icon, MsgIcon::Question);
  const SampleRecord& r = t.s().record;
  EXPECT_EQ(r.RecordUnitText, "A dc");
  EXPECT_EQ(r.RecordRangeFactor.Value(), 100);
  EXPECT_DOUBLE_EQ(r.FullValues[1].Value(), 0.5);  // 100 / (100 * 2 * 1)
}

TEST(ProbeDialogs, NoToTheRescaleQuestionLeavesTheRecordAlone) {
  ProbeApp t(77, TwoGroups().Text());
  t.Connect();
  PutRecordOnScreen(t);
  t.ui.answer = [](const MessageRequest&) { return MsgAnswer::No; };
  ChooseInFunc(t, 1, 2);
  Dispatch(*t.app, [&] { Func01(*t.app); });
  EXPECT_EQ(t.ui.messages.size(), 1u);
  EXPECT_EQ(t.s().record.RecordUnitText, "A rms");
  EXPECT_EQ(t.s().record.FullValues[1].Value(), 5);
  EXPECT_EQ(t.s().logger.RangeFactor.Value(), 4);
}

TEST(ProbeDialogs, NoQuestionWhileARecordFromAFileOrAnotherLoggersGraphIsOnScreen) {
  ProbeApp t(77, TwoGroups().Text());
  t.Connect();
  PutRecordOnScreen(t);
  t.s().record.RecordFromFile = 1;
  t.s().measure.RescaleApproved = 1;  // a Yes from before counts for nothing on a file's record
  ChooseInFunc(t, 1, 2);
  Dispatch(*t.app, [&] { Func01(*t.app); });
  EXPECT_TRUE(t.ui.messages.empty());
  EXPECT_EQ(t.s().record.RecordUnitText, "A rms");
  EXPECT_EQ(t.s().record.FullValues[1].Value(), 5);

  t.s().record.RecordFromFile = 0;
  t.s().panel.OtherLoggerNotice = 1;
  ChooseInFunc(t, 2, 1);
  Dispatch(*t.app, [&] { Func02(*t.app); });
  EXPECT_TRUE(t.ui.messages.empty());
  EXPECT_EQ(t.s().measure.RescaleApproved, 0);
  EXPECT_EQ(t.s().record.RecordUnitText, "A rms");
}

TEST(ProbeDialogs, Func3AsksNothingAndActsOnTheApprovalGivenBefore) {
  ProbesDat p = TwoGroups();
  p.titles[2] = "Spare";
  p.rows[{3, 1}] = {"SP-1", "A", "20"};
  ProbeApp t(77, p.Text());
  t.Connect();
  EXPECT_TRUE(t.w().func03.visible);
  PutRecordOnScreen(t);
  t.s().measure.ProbeUnset = 1;
  t.s().measure.RescaleApproved = 1;
  ChooseInFunc(t, 3, 1);
  Dispatch(*t.app, [&] { Func03(*t.app); });
  EXPECT_TRUE(t.ui.messages.empty());
  EXPECT_EQ(t.s().measure.ProbeUnset, 1);
  EXPECT_EQ(t.w().Label34.caption, "SP-1");
  EXPECT_EQ(t.s().record.RecordUnitText, "A");
  EXPECT_DOUBLE_EQ(t.s().record.FullValues[1].Value(), 2.5);  // 100 / (20 * 2 * 1)
}

TEST(ProbeDialogs, AZeroFactorChosenCountsAsOne) {
  ProbesDat p = TwoGroups();
  p.rows[{1, 3}] = {"CT-0", "A rms", "0"};
  ProbeApp t(77, p.Text());
  t.Connect();
  ChooseInFunc(t, 1, 3);
  Dispatch(*t.app, [&] { Func01(*t.app); });
  EXPECT_EQ(t.s().logger.RangeFactor.Value(), 1);
  t.Run(3000);  // the live reading goes on
  EXPECT_FALSE(t.ui.ended);
  EXPECT_EQ(t.w().Label19.caption, "50.00");
}

}  // namespace
}  // namespace quillet
