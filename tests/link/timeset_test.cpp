// The clock dialog and the calibration commands in virtual time: stepping the parts, the
// running clock, OK and Cancel on both roads, and "H"/"L" on the wire.
#include "link/timeset.h"

#include <gtest/gtest.h>

#include "core/date_time.h"
#include "link/download.h"
#include "link/link_supervision.h"
#include "link/scenario.h"
#include "log1/language.h"
#include "log1/startup.h"

namespace quillet {
namespace {

using testing::StartedApp;

constexpr int kMonth = 1, kDay = 2, kYear = 3, kHour = 4, kMinute = 5, kSecond = 6;

// Steps a part of the open dialog up (positive) or down (negative), one event a click.
void Step(testing::TestApp& t, int part, int times) {
  for (int i = 0; i < std::abs(times); ++i)
    t.Do([&t, part, times] { times > 0 ? TimesetUpClick(*t.app, part) : TimesetDownClick(*t.app, part); });
}
std::string Text(testing::TestApp& t, int part) { return t.app->v.frmTimeset.Text(part).caption; }
// Opens the dialog from the menu with the shown clock at the given moment; the user does
// `user` in it.
void OpenFromMenuAt(testing::TestApp& t, DateTime shown, const std::function<void()>& user) {
  t.s().clock.ClockOffset = t.clock.Now() - shown;
  t.ui.onModal = [user](DialogId) { user(); };
  t.Do(MnuSetTime);
}

// The emulated logger found by the live poll at 2 s, then its header read.
struct WithLogger : testing::EmulatedLoggerApp {
  explicit WithLogger(int model) : EmulatedLoggerApp(testing::SteadyLogger(model, 600)) { Connect(); }
};

TEST(Timeset, EachUpDownWrapsItsOwnPartNeverCarriesIntoAnotherAndOkRefusesAYearBeforeOneHundred) {
  StartedApp t;
  OpenFromMenuAt(t, MakeDateTime({2026, 11, 21, 12, 0, 0}), [&] {
    // part, clicks, what the part then reads
    const struct {
      int part, clicks;
      const char* expected;
    } steps[] = {{kMonth, 1, "12"},   {kMonth, 1, "1"},  {kYear, 0, "2026"}, {kMonth, -1, "12"},
                 {kMonth, 11, "11"},  {kDay, 9, "30"},   {kDay, 1, "1"},     {kMonth, 0, "11"},
                 {kDay, -1, "30"},    {kHour, 11, "23"}, {kHour, 1, "0"},    {kHour, -1, "23"},
                 {kMinute, -1, "59"}, {kHour, 0, "23"},  {kMinute, 1, "0"},  {kSecond, -1, "59"},
                 {kMinute, 0, "0"},   {kSecond, 1, "0"}, {kYear, 3, "2029"}, {kYear, -1000, "1029"},
                 {kYear, -930, "99"}};
    for (const auto& s : steps) {
      Step(t, s.part, s.clicks);
      EXPECT_EQ(Text(t, s.part), s.expected) << "part " << s.part << " after " << s.clicks;
    }
    t.Do(SetClock);  // outside the date range: the dialog stays
    EXPECT_EQ(std::tuple(t.app->v.frmTimeset.visible, t.s().link.TimeSetDone, t.ui.fatal.size()),
              std::tuple(true, 0, 0u));
    t.Do(TimesetCancel);
  });
}

TEST(Timeset, FebruaryHasTwentyNineDaysInEveryFourthYearCountedWhenTheDialogOpens) {
  StartedApp t;
  for (auto [year, up, last] :
       {std::tuple{2024, 0, "29"}, {2023, 0, "28"}, {2100, 0, "29"}, {2024, 1, "29"}}) {
    OpenFromMenuAt(t, MakeDateTime({year, 2, 1, 12, 0, 0}), [&] {
      Step(t, kYear, up);  // stepping the year changes nothing until the next opening
      Step(t, kDay, -1);
      EXPECT_EQ(Text(t, kDay), last) << year << " " << up;
      t.Do(TimesetCancel);
    });
  }
}

TEST(Timeset, TheDialogsClockRunsWithCarriesAndCutsAHandSteppedDayBack) {
  StartedApp t;
  const FrmTimesetView& d = t.app->v.frmTimeset;
  OpenFromMenuAt(t, MakeDateTime({2026, 12, 31, 23, 59, 59}), [&] {
    t.Run(1000);
    std::string parts;
    for (int p = kMonth; p <= kSecond; ++p) parts += Text(t, p) + " ";
    EXPECT_EQ(std::tuple(parts, d.Label7.caption, d.Label8.caption),
              std::tuple("1 1 2027 0 0 0 ", " 1 en102  2027", "00:00:00"));
    t.Do(TimesetCancel);
  });
  t.Do(MnuUsa);
  OpenFromMenuAt(t, MakeDateTime({2026, 2, 28, 23, 59, 59}), [&] {
    t.Run(1000);
    EXPECT_EQ(d.Label7.caption, "en104  1,  2026");
    t.Do(TimesetCancel);
  });
  OpenFromMenuAt(t, MakeDateTime({2026, 1, 31, 8, 0, 0}), [&] {
    Step(t, kMonth, 1);
    EXPECT_EQ(Text(t, kDay), "31");  // the steps themselves never carry
    t.Run(1000);
    EXPECT_EQ(Text(t, kMonth) + "/" + Text(t, kDay) + " " + d.Label8.caption, "2/28 08:00:01");
    t.Do(TimesetCancel);
  });
}

TEST(Timeset, OkSetsTheOffsetSoThePanelClockShowsTheTimeSetAndTheDialogsClockStops) {
  StartedApp t;
  OpenFromMenuAt(t, t.clock.Now(), [&] {
    Step(t, kHour, 2);
    Step(t, kMinute, -1);  // 14:59:00 today
    t.Do(SetClock);
  });
  EXPECT_EQ(std::tuple(t.app->v.frmTimeset.visible, t.s().link.TimeSetDone), std::tuple(false, 1));
  EXPECT_NEAR(t.s().clock.ClockOffset * 86400.0, -(2 * 3600.0 + 59 * 60.0), 1e-3);
  t.Run(100);
  EXPECT_EQ(t.w().Label1.caption, "14:59:00");
  t.Run(61000);
  EXPECT_EQ(t.w().Label1.caption, "15:00:01");

  StartedApp u;
  u.Run(250);  // the clock opens a quarter second into a second
  OpenFromMenuAt(u, u.clock.Now(), [&] {
    u.Run(3000);  // the parts tick along with the PC's clock
    u.Do(SetClock);
  });
  EXPECT_LT(std::abs(u.s().clock.ClockOffset * 86400.0), 1.0);
  const std::string second = Text(u, kSecond);
  u.Run(5000);
  EXPECT_EQ(Text(u, kSecond), second);
}

TEST(Timeset, OnTheWayToADownloadOkLetsItRunOnceAndForAllAndCancelStopsItSilentlyUntilTheNext) {
  for (bool ok : {true, false}) {
    SCOPED_TRACE(ok);
    WithLogger t(17);
    ASSERT_EQ(t.s().link.LoggerSeen, 1);
    t.w().Command2.enabled = true;  // as after a zoom
    t.ui.onModal = [&t, ok](DialogId d) {
      if (d == DialogId::frmTimeset) t.Do(ok ? SetClock : TimesetCancel);
    };
    t.Do(StartDownload);
    EXPECT_EQ(std::tuple(t.ui.modals.back(), t.s().link.DownloadActive, t.s().link.TimeSetDone,
                         t.s().link.DownloadRefused, t.w().Command2.enabled),
              std::tuple(DialogId::frmTimeset, ok, ok, 0, false));
    t.Run(20000);
    EXPECT_EQ(std::tuple(t.Count('T') > 0, t.s().link.DownloadPercent.Value() == 100, t.ui.messages.size()),
              std::tuple(ok, ok, 0u));
    const std::size_t modals = t.ui.modals.size();
    t.Do(StartDownload);  // Cancel asks again, OK is not asked again
    EXPECT_EQ(t.ui.modals.size(), modals + (ok ? 0 : 1));
  }
}

TEST(Timeset, TheMenuMovesTheShownSampleTimesCancelChangesNothingAndItWaitsForAReply) {
  WithLogger t(17);
  OpenFromMenuAt(t, t.clock.Now(), [&] {
    Step(t, kHour, 1);
    t.Do(TimesetCancel);
  });
  EXPECT_EQ(t.s().link.DownloadRefused + t.s().link.SetTimeFromMenu + t.s().link.TimeSetDone, 0);
  const std::string first = t.w().Label2.caption;
  OpenFromMenuAt(t, t.clock.Now(), [&] {
    Step(t, kYear, 1);
    t.Do(SetClock);
  });
  EXPECT_EQ(t.w().Label2.caption.substr(0, 8), first.substr(0, 6) + "27");  // dd/mm/yy, a year on
  for (int mode : {1, 2}) {
    t.s().link.LinkMode = mode;
    const std::size_t modals = t.ui.modals.size();
    t.Do(MnuSetTime);
    EXPECT_EQ(t.ui.modals.size(), modals) << "mode " << mode;
  }
}

TEST(Timeset, AHeaderGivenUpBehindTheDialogHidesIt) {
  WithLogger t(17);
  bool hidden = false;
  t.ui.onModal = [&](DialogId d) {
    if (d == DialogId::frmPort) {
      hidden = !t.app->v.frmTimeset.visible;
      t.Do(FrmPortCancel);
      return;
    }
    t.plugged = false;  // unplugged while the user looks at the clock
    t.s().link.HeaderRetries = 15;
    t.s().link.LinkMode = 1;
    t.Run(1500);
  };
  t.Do(StartDownload);
  EXPECT_EQ(std::tuple(hidden, t.app->v.frmTimeset.visible), std::tuple(true, false));
  ASSERT_EQ(t.ui.messages.size(), 1u);
  EXPECT_EQ(t.ui.messages[0].title, "en159");
}

TEST(Calibration, CtrlWUnlocksHighAndLowCalOnlyOnModelsSixtyFourToSixtySix) {
  for (int model : {1, 17, 63, 64, 65, 66, 67, 127}) {
    StartedApp t;
    t.s().logger.ModelCode = model;
    for (int key : {22, 24, 87, 119}) t.Do([&t, key] { Log1KeyPress(*t.app, key); });
    EXPECT_FALSE(t.w().Command5.enabled);
    t.Do([&t] { Log1KeyPress(*t.app, 23); });
    const bool unlocked = model >= 64 && model <= 66;
    EXPECT_EQ(std::tuple(t.w().Command5.enabled, t.w().Command6.enabled), std::tuple(unlocked, unlocked))
        << model;
  }
}

TEST(Calibration, HighAndLowCalSendTheirLetterAloneAndWaitForNothing) {
  WithLogger t(64);
  ASSERT_EQ(t.s().logger.ModelCode.Value(), 64);
  t.Do(Command5Click);  // still locked
  EXPECT_EQ(t.Count('H'), 0u);
  t.Do([&t] { Log1KeyPress(*t.app, 23); });
  const int threshold = t.app->port.RThreshold();
  const double mode = t.s().link.LinkMode.Value();
  t.Do(Command5Click);
  t.Do(Command6Click);
  EXPECT_EQ(std::tuple(t.Count('H'), t.Count('L'), t.app->port.RThreshold(), t.s().link.LinkMode.Value()),
            std::tuple(1u, 1u, threshold, mode));
  t.Run(100);
  ASSERT_EQ(t.fw().Calibrations().size(), 2u);
  EXPECT_EQ(std::tuple(t.fw().Calibrations()[0].letter, t.fw().Calibrations()[1].letter),
            std::tuple('H', 'L'));
  // The logger going away does not lock them again, and "H" goes out with nobody there.
  t.plugged = false;
  t.Run(15000);
  ASSERT_EQ(t.s().link.LoggerSeen, 0);
  t.Do(Command5Click);
  EXPECT_EQ(t.Count('H'), 2u);
}

}  // namespace
}  // namespace quillet
