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
// on the axis), and the program started with the given logger1.ini, by default unit "mV".
struct CustomLoggerApp : testing::EmulatedLoggerApp {
  explicit CustomLoggerApp(const std::string& settings = "") : EmulatedLoggerApp(Logger(), Options(settings)) {}
  static sim::LoggerConfig Logger() {
    sim::LoggerConfig c;
    c.modelCode = 32;
    c.signal.level = 12.5;
    c.elapsedAtStart = 300;
    return c;
  }
  static testing::AppOptions Options(const std::string& settings) {
    testing::AppOptions o;
    o.unit32 = "mV";
    o.settings = settings;
    return o;
  }
  // Finds the logger and downloads its memory; no live poll falls between header and block.
  void DownloadAll() {
    Run(6100);
    ASSERT_TRUE(Download());
    ASSERT_GT(app->s.record.RecordSampleCount.Value(), 100);
  }
  std::vector<double> Values() {
    std::vector<double> v;
    for (long i = 1; i <= static_cast<long>(app->s.record.FullSampleCount.Value()); ++i)
      v.push_back(app->s.record.FullValues[i].Value());
    return v;
  }
};

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
  // Model 17 has no profile; nothing opens while a block is awaited.
  const std::vector<std::tuple<int, bool, bool, bool>> cases = {
      {20, false, true, false}, {22, false, true, true}, {17, false, false, false}, {32, true, false, false}};
  for (auto [model, blockAwaited, opens, guarded] : cases) {
    ProfileApp t;
    t.app->s.logger.ModelCode = model;
    if (blockAwaited) t.app->s.link.LinkMode = kModeBlock;
    int pausedInside = -1;
    bool visibleInside = false;
    t.ui.onModal = [&](DialogId d) {
      const F f = d == DialogId::input100mv ? F::Mv100 : F::V10;
      pausedInside = t.app->s.link.PollPaused;
      visibleInside = t.v(f).visible;
      ProfileCancel(*t.app, f);
    };
    t.Do(MnuScale);
    const auto dialog = model == 20 ? DialogId::input100mv : DialogId::input10v;
    EXPECT_EQ(std::tuple(t.ui.modals, visibleInside, pausedInside, t.app->s.link.PollPaused),
              std::tuple(std::vector<DialogId>(opens, dialog), opens, opens ? guarded : -1, 0))
        << model;
  }
}

TEST(ScaleCommand,
     RescalesTheDownloadedRecordThroughTheNewProfileUnlessAGuardedRunFindsNoTableOrItCameFromAFile) {
  CustomLoggerApp t;
  for (int i = 0; i <= 10; ++i) {
    t.app->s.scales.ScaleTable[i] = Cell::OfNumber(10 * i);
    t.app->s.scales.ScaleSlope[i] = Cell::OfNumber(10);
  }
  t.DownloadAll();
  SampleRecord& r = t.app->s.record;
  EXPECT_EQ(std::tuple(t.Values().front(), r.RecordUnitText), std::tuple(12.5, "mV"));
  r.RecordSaved = 1;
  t.ui.onModal = [&t](DialogId d) {
    ASSERT_EQ(d, DialogId::custom);
    EnterNewProfile(t);
  };
  t.Do(MnuScale);
  const std::vector<double> rescaled = t.Values();
  EXPECT_EQ(rescaled, std::vector<double>(rescaled.size(), 1.25));  // 0 + 5 * 0.25
  EXPECT_EQ(std::tuple(r.RecordUnitText, r.RecordSaved.Value(), t.w().Label16.caption,
                       t.w().Label16.foreColor, t.w().mnuSaveTXT.enabled),
            std::tuple("bar", 0.0, "en67", kYellow, true));

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
  ASSERT_EQ(r.RecordFromFile, 1);
  const std::vector<double> opened = t.Values();
  t.ui.onModal = [&t](DialogId) {
    ProfileView(*t.app, F::Custom).Text[5].caption = "99";
    ProfileFieldEnter(*t.app, F::Custom, 5);
    ProfileOk(*t.app, F::Custom);
  };
  t.Do(MnuScale);
  EXPECT_EQ(std::tuple(t.Values(), r.RecordUnitText), std::tuple(opened, "bar"));
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
  t.DownloadAll();
  EXPECT_EQ(std::tuple(t.Values(), t.app->s.record.RecordUnitText),
            std::tuple(std::vector<double>(t.Values().size(), 1.25), "bar"));
}

}  // namespace
}  // namespace quillet
