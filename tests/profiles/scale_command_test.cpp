// The Scale command: which dialog each model opens and how, the rescale of a downloaded
// record through the new profile, and the profile that survives a restart.
#include <gtest/gtest.h>

#include "link/download.h"
#include "log1/scale_menu.h"
#include "log1/startup.h"
#include "profiles/profile_test_app.h"
#include "storage/record_file.h"
#include "support/emulated_logger.h"

namespace quillet {
namespace {

using testing::ProfileApp;
using F = ProfileFamily;

// A model 32 logger on the line whose input reads 12.5 units (250 counts, position 1.25
// on the axis), and the program started with the given logger1.ini.
struct CustomLoggerApp : testing::TestApp {
  explicit CustomLoggerApp(const std::string& settings) : line(Config(), 0.0) {
    WriteTwoLanguageFile();
    WriteFile("logger1.ini", settings);
    WriteFile("probes.dat", testing::SmallProbesDat(), true);
    transport.peer = [this](const std::string& bytes, double now, int baud, int stopBits) {
      std::vector<testing::TimedReply> out;
      for (const sim::TimedByte& b :
           line.Receive(std::vector<std::uint8_t>(bytes.begin(), bytes.end()), now, baud, stopBits))
        out.push_back({b.at, b.byte});
      return out;
    };
    Start();
  }
  static sim::LoggerConfig Config() {
    sim::LoggerConfig c;
    c.modelCode = 32;
    c.elapsedAtStart = 300;
    c.signal.kind = sim::SignalKind::Steady;
    c.signal.level = 12.5;
    return c;
  }
  // Finds the logger and downloads its memory; no live poll falls between header and block.
  void Download() {
    Run(6100);
    Do(StartDownload);
    for (int waited = 0; waited < 300000 && app->s.link.DownloadActive != 0; waited += 250) Run(250);
    ASSERT_EQ(app->s.link.DownloadActive, 0);
    ASSERT_GT(app->s.record.RecordSampleCount.Value(), 100);
  }
  std::vector<double> Values() {
    std::vector<double> v;
    for (long i = 1; i <= static_cast<long>(app->s.record.FullSampleCount.Value()); ++i)
      v.push_back(app->s.record.FullValues[i].Value());
    return v;
  }
  sim::LoggerLine line;
};

std::string Settings() {
  testing::AppOptions o;
  o.unit32 = "mV";
  return testing::SettingsText(1200, o);
}

// In the custom dialog: 5 at row 20, 15 at row 40, the unit "bar", OK without saving.
void EnterNewProfile(testing::TestApp& t) {
  App& app = *t.app;
  ProfileClearAll(app, F::Custom);
  ProfileUnitChanged(app, F::Custom, "bar");
  for (auto [field, text] : {std::pair{3, "5"}, std::pair{5, "15"}}) {
    ProfileView(app, F::Custom).Text[field].caption = text;
    ProfileFieldEnter(app, F::Custom, field);
  }
  t.ui.answer = [](const MessageRequest&) { return MsgAnswer::No; };
  ProfileOk(app, F::Custom);
}

TEST(ScaleCommand, OpensTheDialogOfTheModelModallyAndPausesThePollOnAGuardedRun) {
  for (auto [model, opens, dialog, guarded] : {std::tuple{20, true, DialogId::input100mv, false},
                                               {22, true, DialogId::input10v, true},
                                               {17, false, DialogId::custom, false}}) {
    ProfileApp t;
    t.app->s.logger.ModelCode = model;
    int pausedInside = -1;
    bool visibleInside = false;
    t.ui.onModal = [&t, &pausedInside, &visibleInside](DialogId d) {
      pausedInside = t.app->s.link.PollPaused;
      for (F f : {F::Mv100, F::V10}) {
        if (FamilySpec(f).dialog != d) continue;
        visibleInside = t.v(f).visible;
        ProfileCancel(*t.app, f);
      }
    };
    t.Do(MnuScale);
    EXPECT_EQ(t.ui.modals, opens ? std::vector<DialogId>{dialog} : std::vector<DialogId>{}) << model;
    EXPECT_EQ(visibleInside, opens) << model;
    EXPECT_EQ(pausedInside, opens ? guarded : -1) << model;
    EXPECT_EQ(t.app->s.link.PollPaused, 0) << model;
  }
  ProfileApp t;  // nothing while a block is awaited
  t.app->s.logger.ModelCode = 32;
  t.app->s.link.LinkMode = kModeBlock;
  t.Do(MnuScale);
  EXPECT_TRUE(t.ui.modals.empty());
}

TEST(ScaleCommand, RescalesTheDownloadedRecordThroughTheNewProfileUnlessAGuardedRunFindsNoTableOrItCameFromAFile) {
  CustomLoggerApp t(Settings());
  for (int i = 0; i <= 10; ++i) {
    t.app->s.scales.ScaleTable[i] = Cell::OfNumber(10 * i);
    t.app->s.scales.ScaleSlope[i] = Cell::OfNumber(10);
  }
  t.Download();
  EXPECT_EQ(t.Values().front(), 12.5);
  EXPECT_EQ(t.app->s.record.RecordUnitText, "mV");
  t.app->s.record.RecordSaved = 1;
  t.ui.onModal = [&t](DialogId d) {
    ASSERT_EQ(d, DialogId::custom);
    EnterNewProfile(t);
  };
  t.Do(MnuScale);
  const std::vector<double> rescaled = t.Values();
  EXPECT_EQ(rescaled, std::vector<double>(rescaled.size(), 1.25));  // 0 + 5 * 0.25
  EXPECT_EQ(t.app->s.record.RecordUnitText, "bar");
  EXPECT_EQ(t.app->s.record.RecordSaved.Value(), 0);
  EXPECT_EQ(t.w().Label16.caption, "en67");
  EXPECT_EQ(t.w().Label16.foreColor, kYellow);
  EXPECT_TRUE(t.w().mnuSaveTXT.enabled);

  // The record stays a model 32 record; the logger now says it is a 10 V one, whose
  // dialog is cancelled: the guarded run ends on the invalid table.
  t.app->s.logger.ModelCode = 22;
  t.app->s.scales.ScaleTable[1] = Cell::OfNumber(1000);
  t.ui.onModal = [&t](DialogId d) {
    ASSERT_EQ(d, DialogId::input10v);
    ProfileCancel(*t.app, F::V10);
  };
  t.Do(MnuScale);
  EXPECT_EQ(t.app->s.profiles.ScaleTableInvalid, 1);
  EXPECT_EQ(t.Values(), rescaled);

  // A record opened from a file is final: the next profile changes nothing in it.
  t.app->s.logger.ModelCode = 32;
  t.Do([&t] { WriteRecordFile(*t.app, t.dir + "/rec.txt", false); });
  t.Do([&t] { ReadRecordFile(*t.app, t.dir + "/rec.txt"); });
  ASSERT_EQ(t.app->s.record.RecordFromFile, 1);
  const std::vector<double> opened = t.Values();
  t.ui.onModal = [&t](DialogId) {
    ProfileView(*t.app, F::Custom).Text[5].caption = "99";
    ProfileFieldEnter(*t.app, F::Custom, 5);
    ProfileOk(*t.app, F::Custom);
  };
  t.Do(MnuScale);
  EXPECT_EQ(t.Values(), opened);
  EXPECT_EQ(t.app->s.record.RecordUnitText, "bar");
}

TEST(ScaleCommand, AProfileSurvivesARestartAndConvertsTheNextDownload) {
  std::string ini;
  {
    ProfileApp first;
    first.Open(F::Custom);
    first.Do([&first] { EnterNewProfile(first); });
    ASSERT_EQ(first.P().ScaleTableInvalid, 0);
    first.Do([&first] { EndProgram(*first.app); });
    ini = first.ReadFile("logger1.ini");
  }
  CustomLoggerApp t(ini);
  EXPECT_EQ(t.app->s.UnitByModel[32], "bar");
  t.Download();
  EXPECT_EQ(t.Values(), std::vector<double>(t.Values().size(), 1.25));
  EXPECT_EQ(t.app->s.record.RecordUnitText, "bar");
}

}  // namespace
}  // namespace quillet
