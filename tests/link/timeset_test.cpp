// The clock dialog and the calibration commands in virtual time: stepping the parts, the
// running clock, OK and Cancel on both roads, and "H"/"L" on the wire.
#include "link/timeset.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

#include "hub/app.h"
#include "core/date_time.h"
#include "log1/startup.h"
#include "link/download.h"
#include "link/link_supervision.h"
#include "sim/firmware/logger_line.h"
#include "support/fake_platform.h"

namespace quillet {
namespace {

using testing::TestApp;
using testing::TimedReply;

constexpr double kNov21Noon2026 = 46347.5;  // the test clock's start: 2026-11-21 12:00:00
constexpr int kMonth = 1, kDay = 2, kYear = 3, kHour = 4, kMinute = 5, kSecond = 6;

struct Started : TestApp {
  explicit Started(DateTime start = kNov21Noon2026, int usDate = 0, int language = 1) : TestApp(start) {
    WriteTwoLanguageFile();  // strings read "en<n>" and "de<n>"
    WriteSettings(1, language, 1200, 0, usDate);
    Start();
  }
  // One user action, as its own event.
  void Do(void (*action)(App&)) {
    Dispatch(*app, [this, action] { action(*app); });
  }
  void Up(int part, int times = 1) {
    for (int i = 0; i < times; ++i) Dispatch(*app, [this, part] { TimesetUpClick(*app, part); });
  }
  void Down(int part, int times = 1) {
    for (int i = 0; i < times; ++i) Dispatch(*app, [this, part] { TimesetDownClick(*app, part); });
  }
  std::string Text(int part) { return app->v.frmTimeset.Text(part).caption; }
  // Opens the dialog from the menu with the shown clock at the given moment.
  void OpenFromMenuAt(DateTime shown, std::function<void()> user) {
    app->s.clock.ClockOffset = clock.Now() - shown;
    ui.onModal = [user](DialogId) { user(); };
    Do(MnuSetTime);
  }
  std::size_t Count(char letter) const { return RequestTimes(letter).size(); }
};

DateTime At(int y, int mo, int d, int h = 12, int mi = 0, int s = 0) {
  return MakeDateTime({y, mo, d, h, mi, s});
}

// The emulated logger on the far end of the fake line.
struct WithLogger : Started {
  explicit WithLogger(int model) : line(Config(model)) {
    transport.peer = [this](const std::string& bytes, double now, int baud, int stopBits) {
      std::vector<TimedReply> out;
      for (const sim::TimedByte& b :
           line.Receive(std::vector<std::uint8_t>(bytes.begin(), bytes.end()), now, baud, stopBits)) {
        out.push_back({b.at, b.byte});
      }
      return out;
    };
    Run(5000);  // found by the live poll at 2 s, then its header is read
  }
  static sim::LoggerConfig Config(int model) {
    sim::LoggerConfig c;
    c.modelCode = model;
    c.elapsedAtStart = 600.0;  // a block of about 700 samples
    return c;
  }
  sim::LoggerLine line;
};

TEST(Timeset, EachUpDownWrapsItsOwnPartAndNeverCarriesIntoAnother) {
  Started t;  // opens on 21 November 2026, 12:00:00
  t.OpenFromMenuAt(At(2026, 11, 21, 12, 0, 0), [&] {
    t.Up(kMonth);
    EXPECT_EQ(t.Text(kMonth), "12");
    t.Up(kMonth);
    EXPECT_EQ(t.Text(kMonth), "1");
    EXPECT_EQ(t.Text(kYear), "2026");
    t.Down(kMonth);
    EXPECT_EQ(t.Text(kMonth), "12");
    t.Up(kMonth, 11);  // back to November: 30 days

    t.Up(kDay, 9);
    EXPECT_EQ(t.Text(kDay), "30");
    t.Up(kDay);
    EXPECT_EQ(t.Text(kDay), "1");
    EXPECT_EQ(t.Text(kMonth), "11");
    t.Down(kDay);
    EXPECT_EQ(t.Text(kDay), "30");

    t.Up(kHour, 11);
    EXPECT_EQ(t.Text(kHour), "23");
    t.Up(kHour);
    EXPECT_EQ(t.Text(kHour), "0");
    t.Down(kHour);
    EXPECT_EQ(t.Text(kHour), "23");

    t.Down(kMinute);
    EXPECT_EQ(t.Text(kMinute), "59");
    EXPECT_EQ(t.Text(kHour), "23");
    t.Up(kMinute);
    EXPECT_EQ(t.Text(kMinute), "0");
    t.Down(kSecond);
    EXPECT_EQ(t.Text(kSecond), "59");
    EXPECT_EQ(t.Text(kMinute), "0");
    t.Up(kSecond);
    EXPECT_EQ(t.Text(kSecond), "0");

    t.Up(kYear, 3);
    EXPECT_EQ(t.Text(kYear), "2029");
    t.Down(kYear, 1000);
    EXPECT_EQ(t.Text(kYear), "1029");
    t.Do(TimesetCancel);
  });
}

TEST(Timeset, FebruaryHasTwentyNineDaysInEveryFourthYearCountedWhenTheDialogOpens) {
  Started t;
  auto lastDayOfFebruary = [&](int year) {
    std::string last;
    t.OpenFromMenuAt(At(year, 2, 1), [&] {
      t.Down(kDay);
      last = t.Text(kDay);
      t.Do(TimesetCancel);
    });
    return last;
  };
  EXPECT_EQ(lastDayOfFebruary(2024), "29");
  EXPECT_EQ(lastDayOfFebruary(2023), "28");
  EXPECT_EQ(lastDayOfFebruary(2100), "29");  // no century rule

  // Stepping the year does not change the length of February until the next opening.
  t.OpenFromMenuAt(At(2024, 2, 1), [&] {
    t.Up(kYear);
    t.Down(kDay);
    EXPECT_EQ(t.Text(kDay), "29");
    t.Do(TimesetCancel);
  });
}

TEST(Timeset, TheDialogsClockRunsWithCarriesAndNamesTheMonthFromTheLanguage) {
  Started t;
  t.OpenFromMenuAt(At(2026, 12, 31, 23, 59, 59), [&] {
    t.Run(1000);
    EXPECT_EQ(t.Text(kYear), "2027");
    EXPECT_EQ(t.Text(kMonth), "1");
    EXPECT_EQ(t.Text(kDay), "1");
    EXPECT_EQ(t.Text(kHour), "0");
    EXPECT_EQ(t.Text(kMinute), "0");
    EXPECT_EQ(t.Text(kSecond), "0");
    EXPECT_EQ(t.app->v.frmTimeset.Label7.caption, " 1 en102  2027");
    EXPECT_EQ(t.app->v.frmTimeset.Label8.caption, "00:00:00");
    t.Do(TimesetCancel);
  });
  t.Do(MnuUsa);
  t.OpenFromMenuAt(At(2026, 2, 28, 23, 59, 59), [&] {
    t.Run(1000);
    EXPECT_EQ(t.app->v.frmTimeset.Label7.caption, "en104  1,  2026");
    t.Do(TimesetCancel);
  });
}

TEST(Timeset, ADayTooHighForAHandSteppedMonthIsCutBackAtTheNextTick) {
  Started t;
  t.OpenFromMenuAt(At(2026, 1, 31, 8, 0, 0), [&] {
    t.Up(kMonth);
    EXPECT_EQ(t.Text(kDay), "31");  // the steps themselves never carry
    t.Run(1000);
    EXPECT_EQ(t.Text(kMonth), "2");
    EXPECT_EQ(t.Text(kDay), "28");
    EXPECT_EQ(t.app->v.frmTimeset.Label8.caption, "08:00:01");
    t.Do(TimesetCancel);
  });
}

TEST(Timeset, OkSetsTheOffsetSoThePanelClockShowsTheTimeSet) {
  Started t;
  t.OpenFromMenuAt(t.clock.Now(), [&] {
    t.Up(kHour, 2);
    t.Down(kMinute);  // 14:59:00 today
    t.Do(SetClock);
  });
  EXPECT_FALSE(t.app->v.frmTimeset.visible);
  EXPECT_EQ(t.app->s.link.TimeSetDone, 1);
  EXPECT_NEAR(t.app->s.clock.ClockOffset * 86400.0, -(2 * 3600.0 + 59 * 60.0), 1e-3);
  t.Run(100);
  EXPECT_EQ(t.app->v.log1.Label1.caption, "14:59:00");
  t.Run(61000);
  EXPECT_EQ(t.app->v.log1.Label1.caption, "15:00:01");
}

TEST(Timeset, OkOnTheUntouchedClockLeavesAnOffsetOfUnderASecondAndTheClockStopsWhenHidden) {
  Started t;
  t.Run(250);  // the clock opens a quarter second into a second
  t.OpenFromMenuAt(t.clock.Now(), [&] {
    t.Run(3000);  // the parts tick along with the PC's clock
    t.Do(SetClock);
  });
  EXPECT_LT(std::abs(t.app->s.clock.ClockOffset * 86400.0), 1.0);
  const std::string second = t.Text(kSecond);
  t.Run(5000);
  EXPECT_EQ(t.Text(kSecond), second);
}

TEST(Timeset, AYearOutsideTheDateRangeIsRefusedAtOkAndTheDialogStays) {
  Started t;
  bool stayed = false;
  t.OpenFromMenuAt(t.clock.Now(), [&] {
    t.Down(kYear, 2026 - 99);
    t.Do(SetClock);
    stayed = t.app->v.frmTimeset.visible;
    t.Do(TimesetCancel);
  });
  EXPECT_TRUE(stayed);
  EXPECT_EQ(t.app->s.link.TimeSetDone, 0);
  EXPECT_TRUE(t.ui.fatal.empty());
}

TEST(Timeset, CancelOnTheWayToADownloadStopsItSilently) {
  WithLogger t(17);
  ASSERT_EQ(t.app->s.link.LoggerSeen, 1);
  t.app->v.log1.Command2.enabled = true;  // as after a zoom
  t.ui.onModal = [&t](DialogId d) {
    if (d == DialogId::frmTimeset) t.Do(TimesetCancel);
  };
  t.Do(StartDownload);
  EXPECT_EQ(t.ui.modals.back(), DialogId::frmTimeset);
  EXPECT_EQ(t.app->s.link.DownloadActive, 0);
  EXPECT_EQ(t.app->s.link.DownloadRefused, 0);
  EXPECT_FALSE(t.app->v.log1.Command2.enabled);
  t.Run(5000);
  EXPECT_EQ(t.Count('T'), 0u);
  EXPECT_TRUE(t.ui.messages.empty());

  // The next download asks again.
  const std::size_t modals = t.ui.modals.size();
  t.Do(StartDownload);
  EXPECT_EQ(t.ui.modals.size(), modals + 1);
}

TEST(Timeset, OkOnTheWayToADownloadLetsItRunAndIsNotAskedAgain) {
  WithLogger t(17);
  t.ui.onModal = [&t](DialogId d) {
    if (d == DialogId::frmTimeset) t.Do(SetClock);
  };
  t.Do(StartDownload);
  EXPECT_EQ(t.app->s.link.DownloadActive, 1);
  EXPECT_EQ(t.app->s.link.TimeSetDone, 1);
  t.Run(20000);
  EXPECT_GE(t.Count('T'), 1u);
  EXPECT_EQ(t.app->s.link.DownloadPercent.Value(), 100);
  const std::size_t modals = t.ui.modals.size();
  t.Do(StartDownload);
  EXPECT_EQ(t.ui.modals.size(), modals);
  EXPECT_EQ(t.app->s.link.DownloadActive, 1);
}

TEST(Timeset, CancelFromTheMenuChangesNothingAndTheDownloadStillAsks) {
  WithLogger t(17);
  t.OpenFromMenuAt(t.clock.Now(), [&] {
    t.Up(kHour);
    t.Do(TimesetCancel);
  });
  EXPECT_EQ(t.app->s.link.DownloadRefused, 0);
  EXPECT_EQ(t.app->s.link.SetTimeFromMenu, 0);
  EXPECT_EQ(t.app->s.link.TimeSetDone, 0);

  t.ui.onModal = nullptr;  // the user confirms the clock as it stands
  const std::size_t modals = t.ui.modals.size();
  t.Do(StartDownload);
  EXPECT_EQ(t.ui.modals.size(), modals + 1);
  EXPECT_EQ(t.app->s.link.DownloadActive, 1);
}

TEST(Timeset, TheMenuMovesTheShownSampleTimesAndWaitsWhileAHeaderOrBlockIsAwaited) {
  WithLogger t(17);
  const std::string first = t.app->v.log1.Label2.caption;
  ASSERT_NE(first, "Label2");
  t.OpenFromMenuAt(t.clock.Now(), [&] {
    t.Up(kYear);
    t.Do(SetClock);
  });
  const std::string moved = t.app->v.log1.Label2.caption;
  EXPECT_NE(moved, first);
  EXPECT_EQ(moved.substr(0, 8), first.substr(0, 6) + "27");  // dd/mm/yy, a year on

  for (int mode : {1, 2}) {
    t.app->s.link.LinkMode = mode;
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
    t.transport.peer = nullptr;  // unplugged while the user looks at the clock
    t.app->s.link.HeaderRetries = 15;
    t.app->s.link.LinkMode = 1;
    t.Run(1500);
  };
  t.Do(StartDownload);
  EXPECT_TRUE(hidden);
  EXPECT_FALSE(t.app->v.frmTimeset.visible);
  ASSERT_EQ(t.ui.messages.size(), 1u);
  EXPECT_EQ(t.ui.messages[0].title, "en159");
}

TEST(Timeset, TheDialogTakesItsWordsFromTheSelectedLanguage) {
  Started t(kNov21Noon2026, 0, 2);
  const FrmTimesetView& d = t.app->v.frmTimeset;
  EXPECT_EQ(d.caption, "de95");
  EXPECT_EQ(d.Label9.caption, "de94");
  EXPECT_EQ(d.Label1.caption, "de96");
  EXPECT_EQ(d.Label6.caption, "de101");
  EXPECT_EQ(d.Command2.caption, "de120");
  EXPECT_EQ(d.Command3.caption, "de119");
}

TEST(Calibration, CtrlWUnlocksHighAndLowCalOnlyOnModelsSixtyFourToSixtySix) {
  Started t;
  for (int model : {1, 17, 63, 67, 127}) {
    t.app->s.logger.ModelCode = model;
    Dispatch(*t.app, [&t] { Log1KeyPress(*t.app, 23); });
  }
  t.app->s.logger.ModelCode = 65;
  for (int key : {22, 24, 87, 119}) Dispatch(*t.app, [&t, key] { Log1KeyPress(*t.app, key); });
  EXPECT_FALSE(t.app->v.log1.Command5.enabled);
  EXPECT_FALSE(t.app->v.log1.Command6.enabled);
  for (int model : {64, 66}) {
    Started u;
    u.app->s.logger.ModelCode = model;
    Dispatch(*u.app, [&u] { Log1KeyPress(*u.app, 23); });
    EXPECT_TRUE(u.app->v.log1.Command5.enabled) << model;
    EXPECT_TRUE(u.app->v.log1.Command6.enabled) << model;
  }
}

TEST(Calibration, HighAndLowCalSendTheirLetterAloneAndWaitForNothing) {
  WithLogger t(64);
  ASSERT_EQ(t.app->s.logger.ModelCode.Value(), 64);
  t.Do(Command5Click);  // still locked
  EXPECT_EQ(t.Count('H'), 0u);

  Dispatch(*t.app, [&t] { Log1KeyPress(*t.app, 23); });
  const int threshold = t.app->port.RThreshold();
  const double mode = t.app->s.link.LinkMode.Value();
  t.Do(Command5Click);
  t.Do(Command6Click);
  EXPECT_EQ(t.Count('H'), 1u);
  EXPECT_EQ(t.Count('L'), 1u);
  EXPECT_EQ(t.app->port.RThreshold(), threshold);
  EXPECT_EQ(t.app->s.link.LinkMode.Value(), mode);
  t.Run(100);
  ASSERT_EQ(t.line.firmware().Calibrations().size(), 2u);
  EXPECT_EQ(t.line.firmware().Calibrations()[0].letter, 'H');
  EXPECT_EQ(t.line.firmware().Calibrations()[1].letter, 'L');

  // The logger going away does not lock them again, and "H" goes out with nobody there.
  t.transport.peer = nullptr;
  t.Run(15000);
  ASSERT_EQ(t.app->s.link.LoggerSeen, 0);
  t.Do(Command5Click);
  EXPECT_EQ(t.Count('H'), 2u);
}

}  // namespace
}  // namespace quillet
