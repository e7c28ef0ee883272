// The link's supervision in virtual time: requests, the watchdog, speed alternation,
// the port dialog and the start-up fall-backs.
#include "link/link_supervision.h"

#include <gtest/gtest.h>

#include "support/fake_platform.h"

namespace quillet {
namespace {

using testing::StartedApp;
using testing::TimedReply;

// A logger that only answers "D", at one speed, 5 ms after the request, with 11 bits a byte;
// the payload may follow the acknowledge late.
auto LiveOnlyLogger(int speed, double payloadAfter = 0) {
  return [=](const std::string& bytes, double now, int baud, int) {
    std::vector<TimedReply> out;
    if (bytes != std::string{'\0', 'D'} || baud != speed) return out;
    double at = now + 0.005;
    for (std::uint8_t b : {std::uint8_t{0x04}, std::uint8_t{100}, std::uint8_t{0}}) {
      out.push_back({at += 11.0 / speed, b});
      if (b == 0x04) at += payloadAfter;
    }
    return out;
  };
}

void ChoosePortInDialog(StartedApp& t, int option) {
  t.ui.onModal = [&t, option](DialogId) {
    FrmPortChoose(*t.app, option);
    ChoosePort(*t.app);
  };
  t.Do(MnuPort);
}

TEST(LinkSupervision, LivePollsGoOutEveryTwoHundredMillisecondsAndWithNothingAttachedTheSpeedAlternates) {
  StartedApp t;
  t.s().link.LoggerSeen = 1;
  int markTicks = 0;
  for (int ms = 0; ms < 13000; ms += 100) {
    t.Run(100);
    markTicks += t.w().Label35.visible;
  }
  // From 2 s on at the present speed, until two unanswered watchdog ticks change it.
  const std::vector<double> d = t.RequestTimes('D');
  ASSERT_GE(d.size(), 9u);
  for (std::size_t i = 0; i < 9; ++i) {
    EXPECT_EQ(std::tuple(d[i], t.transport.written[i].baud), std::tuple(2000.0 + 200 * i, 1200)) << i;
  }
  std::vector<int> speeds;
  for (const auto& w : t.transport.written)
    if (speeds.empty() || speeds.back() != w.baud) speeds.push_back(w.baud);
  speeds.resize(3);
  EXPECT_EQ(speeds, (std::vector<int>{1200, 4800, 1200}));
  EXPECT_TRUE(markTicks > 0 && markTicks % 10 == 0) << markTicks;  // whole watchdog periods of one second
  EXPECT_EQ(std::tuple(t.w().Label35.caption, t.s().link.LoggerSeen), std::tuple("*", 0));
}

TEST(LinkSupervision, ALoggerThatAnsweredKeepsItsSpeedThroughNineSecondsOfSilence) {
  StartedApp t;
  t.transport.peer = LiveOnlyLogger(1200);
  t.Run(3000);
  ASSERT_EQ(t.s().link.BaudConfirmed.Value(), 1);
  t.transport.peer = nullptr;  // unplugged
  t.s().link.LinkModeSeen = 3;
  t.s().link.ModeTicks = 0;
  for (int i = 1; i <= 10; ++i) {
    EXPECT_EQ(t.s().settings.BaudRate.Value(), 1200) << i;
    t.s().link.LinkMode = 3;  // the live poll keeps going unanswered
    t.Run(1000);
    EXPECT_TRUE(i < 9 || t.s().link.LoggerSeen == 0) << i;
  }
  EXPECT_EQ(t.s().settings.BaudRate.Value(), 4800);
}

TEST(LinkSupervision, WatchdogLeavesAStuckHeaderRequestAfterThreeTicksAndCountsNothingWhenIdle) {
  StartedApp t;
  t.Run(50);
  t.s().link.LinkMode = 1;
  t.w().Label15.visible = true;
  t.Run(3000);  // the watchdog notices the new mode, then two ticks
  EXPECT_EQ(t.s().link.LinkMode.Value(), 1);
  t.Run(1000);
  EXPECT_EQ(std::tuple(t.s().link.LinkMode.Value(), t.w().Label15.visible), std::tuple(3, false));

  StartedApp idle;
  idle.s().link.PollPaused = 1;  // keeps the live poll from starting
  idle.Run(5000);
  EXPECT_EQ(std::tuple(idle.s().link.ModeTicks.Value(), idle.transport.written.size()), std::tuple(0, 0u));
}

TEST(LinkSupervision, AnUnansweredBlockIsRestartedAfterThreeSecondsOrItsTimeLimitPlusFive) {
  for (int begun : {0, 1}) {
    SCOPED_TRACE(begun);
    StartedApp t;
    t.Run(50);
    LinkState& L = t.s().link;
    L.LoggerSeen = L.TimeSetDone = L.DownloadActive = L.HeaderRead = L.PollPaused = 1;
    L.DownloadPercent = begun ? 100 : 0;  // 100: from the record before
    L.BlockTimeLimit = 4;
    L.LinkMode = 2;
    t.Run(1000);  // mode noticed
    for (int i = 1; i <= (begun ? 8 : 2); ++i) {
      t.Run(1000);
      ASSERT_EQ(L.HeaderRead, 1) << "restarted after " << i << " ticks";
      L.LinkMode = 2;
    }
    t.Run(1000);
    // Restarted: the header is read again, and nobody is asked about unsaved data.
    EXPECT_EQ(std::tuple(L.HeaderRead, L.SkipSavePrompt.Value(), L.DownloadActive, t.ui.messages.size()),
              std::tuple(0, 0, 1, 0u));
  }
}

TEST(LinkSupervision, TwentyUnansweredHeaderRequestsGiveUpTheLoggerAndOpenThePortDialog) {
  StartedApp t;
  t.Run(50);
  t.s().link.PollPaused = 1;
  bool portDialogShown = false;
  t.ui.onModal = [&](DialogId d) {
    portDialogShown = d == DialogId::frmPort;
    FrmPortCancel(*t.app);
  };
  for (int ms = 0; ms < 8000 && !portDialogShown; ms += 100) {
    if (t.s().link.LinkMode != 1 && t.ui.messages.empty()) t.s().link.LinkMode = 1;
    t.Run(100);
  }
  EXPECT_EQ(t.Count('R'), 19u);  // the 20th tick sends nothing
  ASSERT_EQ(t.ui.messages.size(), 1u);
  const MessageRequest& m = t.ui.messages[0];
  EXPECT_EQ(std::tuple(m.text, m.title, m.icon),
            std::tuple("en86\nen87\nen158", "en159", MsgIcon::Exclamation));
  EXPECT_TRUE(t.ui.beeps >= 1 && portDialogShown && !t.app->port.PortOpen());
  EXPECT_EQ(t.s().link.PortChosen.Value() + t.s().link.LinkMode.Value() + t.s().link.HeaderRetries, 0);
  const std::size_t sent = t.transport.written.size();
  t.Run(5000);
  EXPECT_EQ(t.transport.written.size(), sent);  // nothing goes out without a chosen port
}

TEST(LinkSupervision, RepliesAreTakenOnlyWhenLedByTheAcknowledgeAndNotAskedForTwice) {
  StartedApp t;
  t.transport.peer = LiveOnlyLogger(1200, 0.7);  // the payload 700 ms after the acknowledge
  t.Run(2700);
  EXPECT_EQ(std::tuple(t.Count('D'), t.s().link.LivePhase), std::tuple(1u, 1));
  t.Run(100);
  EXPECT_EQ(std::tuple(t.s().link.LivePhase, t.s().link.LoggerSeen), std::tuple(0, 1));

  StartedApp junk;
  junk.transport.peer = [](const std::string&, double now, int, int) {
    return std::vector<TimedReply>{{now + 0.01, 0x55}, {now + 0.0123, 0x66}, {now + 0.0146, 1}};
  };
  junk.transport.Inject(500, "xyz");
  junk.Run(600);
  EXPECT_EQ(junk.app->port.InBufferCount(), 3);  // waiting in idle mode, unread
  junk.Run(1500);  // the live poll's request flushes them; its reply is dropped whole
  EXPECT_EQ(std::tuple(junk.s().link.LivePhase, junk.s().link.LoggerSeen, junk.app->port.InBufferCount()),
            std::tuple(0, 0, 0));
}

TEST(LinkSupervision, UpdateRereadsTheHeaderOnlyWithALoggerAndOutsideABlock) {
  StartedApp t;
  for (auto [seen, mode, after] : {std::tuple{0, 0, 0}, {1, 2, 2}, {1, 0, 1}}) {
    t.s().link.LoggerSeen = seen;
    t.s().link.LinkMode = mode;
    Command1Click(*t.app);
    EXPECT_EQ(t.s().link.LinkMode.Value(), after) << seen << " " << mode;
  }
  EXPECT_EQ(t.ui.beeps, 1);
}

TEST(PortDialog, NoLoggerStopsEverySendAndKeepsSpeedAndPort) {
  StartedApp t(2, 1, 4800);
  t.ui.onModal = [&](DialogId d) {
    ASSERT_EQ(d, DialogId::frmPort);
    EXPECT_TRUE(t.app->v.frmPort.Option2.checked);
    FrmPortChoose(*t.app, 5);
    ChoosePort(*t.app);
  };
  t.Do(MnuPort);
  EXPECT_FALSE(t.app->v.frmPort.visible || t.app->port.PortOpen());
  EXPECT_EQ(std::tuple(t.s().link.LinkOff.Value(), t.s().logger.ModelCode.Value(), t.s().settings.ComPort),
            std::tuple(1, 0, 2));
  t.Run(20000);
  EXPECT_EQ(std::tuple(t.transport.written.size(), t.s().settings.BaudRate.Value()), std::tuple(0u, 4800));
  t.s().settings.ComPort = 0;  // the dialog opens on "No Logger" once the settings say port 0
  t.ui.onModal = [&](DialogId) {
    EXPECT_TRUE(t.app->v.frmPort.Option5.checked);
    FrmPortCancel(*t.app);
  };
  t.Do(MnuPort);
}

TEST(PortDialog, ChoosingAPortOpensItAndAsksForTheHeaderUnlessALoggerIsConnected) {
  StartedApp t;
  ChoosePortInDialog(t, 3);
  EXPECT_EQ(std::tuple(t.s().settings.ComPort, t.transport.opened.back(), t.s().link.LinkMode.Value()),
            std::tuple(3, 3, 1));
  t.Run(250);
  EXPECT_EQ(t.Count('R'), 1u);
  t.s().link.LoggerSeen = 1;  // then the dialog does not open
  const std::size_t modals = t.ui.modals.size();
  t.Do(MnuPort);
  EXPECT_EQ(t.ui.modals.size(), modals);
}

TEST(PortDialog, ADeniedPortKeepsTheHeaderModeAndAnUnavailableOneEndsTheProgram) {
  StartedApp t;
  t.transport.openFaults = {{2, 70}, {4, 68}};
  ChoosePortInDialog(t, 2);
  EXPECT_EQ(std::tuple(t.app->v.frmPort.visible, t.s().link.LinkMode.Value(), t.ui.ended),
            std::tuple(false, 1, false));
  ChoosePortInDialog(t, 4);
  ASSERT_EQ(t.ui.fatal.size(), 1u);
  EXPECT_NE(t.ui.fatal[0].second.find("Type mismatch"), std::string::npos);
  EXPECT_EQ(std::tuple(t.ui.fatal[0].first, t.ui.ended, t.FileExists("logger1.ini.tmp~")),
            std::tuple(13, true, false));
}

TEST(StartupPort, AnUnavailablePortTellsTheUserAndAnyOtherFaultFallsBackToPortOne) {
  const struct {
    std::map<int, int> faults;
    bool told;
  } cases[] = {{{{2, 68}}, true}, {{{2, 70}}, false}, {{{2, 70}, {1, 68}}, true}};
  for (const auto& c : cases) {
    testing::TestApp t;
    t.WriteTwoLanguageFile();
    t.WriteSettings(2, 1, 1200, 0, 0);
    t.transport.openFaults = c.faults;
    t.Start();
    EXPECT_TRUE(t.w().shown);  // the window comes up all the same
    if (!c.told) {
      EXPECT_TRUE(t.ui.messages.empty());
      EXPECT_EQ(std::tuple(t.s().settings.ComPort, t.app->port.PortOpen()), std::tuple(1, true));
      continue;
    }
    ASSERT_EQ(t.ui.messages.size(), 1u);
    const MessageRequest& m = t.ui.messages[0];
    EXPECT_EQ(std::tuple(m.text, m.title, m.icon), std::tuple("en59", "en54", MsgIcon::Information));
    EXPECT_EQ(std::tuple(t.ui.modals.at(0), t.s().link.PortChosen.Value()), std::tuple(DialogId::frmPort, 0));
    t.Run(10000);
    EXPECT_TRUE(t.transport.written.empty());
  }
}

}  // namespace
}  // namespace quillet
