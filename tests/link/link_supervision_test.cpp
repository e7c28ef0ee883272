// The link's supervision in virtual time: requests, the watchdog, speed alternation,
// the port dialog and the start-up fall-backs.
#include <gtest/gtest.h>

#include <algorithm>

#include "log1/startup.h"
#include "link/link_supervision.h"
#include "support/fake_platform.h"

namespace quillet {
namespace {

using testing::TestApp;
using testing::TimedReply;

// A logger that only answers "D", at one speed, 5 ms after the request, with 11 bits a byte.
auto LiveOnlyLogger(int speed, std::uint8_t b1 = 100, std::uint8_t b2 = 0) {
  return [=](const std::string& bytes, double now, int baud, int) {
    std::vector<TimedReply> out;
    if (bytes != std::string{'\0', 'D'} || baud != speed) return out;
    const double byteTime = 11.0 / speed;
    double at = now + 0.005;
    for (std::uint8_t b : {std::uint8_t{0x04}, b1, b2}) out.push_back({at += byteTime, b});
    return out;
  };
}

struct Started : TestApp {
  Started(int comPort = 1, int baud = 1200) {
    WriteTwoLanguageFile();
    WriteSettings(comPort, 1, baud, 0, 0);
    Start();
  }
};

TEST(LinkSupervision, LivePollsGoOutEveryTwoHundredMillisecondsAtThePresentSpeed) {
  Started t;
  t.Run(3900);
  const auto d = t.RequestTimes('D');
  ASSERT_GE(d.size(), 5u);
  EXPECT_DOUBLE_EQ(d[0], 2000);
  for (std::size_t i = 1; i < d.size(); ++i) EXPECT_DOUBLE_EQ(d[i] - d[i - 1], 200);
  for (const auto& w : t.transport.written) EXPECT_EQ(w.baud, 1200);
}

TEST(LinkSupervision, WithNothingAttachedTheSpeedAlternatesAndTheMarkShowsForOneTick) {
  Started t;
  t.app->s.link.LoggerSeen = 1;
  std::vector<int> speeds;
  bool markSeen = false;
  int markTicks = 0;
  for (int ms = 0; ms < 13000; ms += 100) {
    t.Run(100);
    if (t.app->v.log1.Label35.visible) {
      markSeen = true;
      ++markTicks;
    }
  }
  for (const auto& w : t.transport.written) {
    if (speeds.empty() || speeds.back() != w.baud) speeds.push_back(w.baud);
  }
  EXPECT_TRUE(markSeen);
  EXPECT_EQ(markTicks % 10, 0);  // whole watchdog periods of one second each
  EXPECT_EQ(t.app->v.log1.Label35.caption, "*");
  ASSERT_GE(speeds.size(), 3u);
  EXPECT_EQ(speeds[0], 1200);
  EXPECT_EQ(speeds[1], 4800);
  EXPECT_EQ(speeds[2], 1200);
  EXPECT_EQ(t.app->s.link.LoggerSeen, 0);
}

TEST(LinkSupervision, ALoggerAtTwelveHundredIsFoundFromFourThousandEightHundredAndTheSpeedIsSaved) {
  Started t(1, 4800);
  t.transport.peer = LiveOnlyLogger(1200);
  double foundAt = -1;
  for (int ms = 0; ms < 10000 && foundAt < 0; ms += 100) {
    t.Run(100);
    if (t.app->s.link.LoggerSeen == 1) foundAt = t.sched.now_ms();
  }
  ASSERT_GT(foundAt, 0);
  // The first poll at 2 s goes unanswered at 4800; two watchdog ticks later the speed
  // changes, and the next live poll finds the logger.
  EXPECT_LE(foundAt, 2000 + 4500);
  EXPECT_EQ(t.app->s.settings.BaudRate.Value(), 1200);
  EXPECT_EQ(t.app->v.log1.Label13.caption, "COM 1");
  EXPECT_EQ(t.app->s.link.LinkMode.Value(), 1);  // the header is asked for next
  ASSERT_TRUE(EndProgram(*t.app));
  EXPECT_NE(t.ReadFile("logger1.ini").find("\"baud =  1200\""), std::string::npos);
}

TEST(LinkSupervision, ALoggerThatAnsweredKeepsItsSpeedThroughNineSecondsOfSilence) {
  Started t;
  t.transport.peer = LiveOnlyLogger(1200);
  t.Run(3000);
  ASSERT_EQ(t.app->s.link.BaudConfirmed.Value(), 1);
  t.transport.peer = nullptr;  // unplugged
  t.app->s.link.LinkMode = 3;
  t.app->s.link.LinkModeSeen = 3;
  t.app->s.link.ModeTicks = 0;
  for (int i = 1; i <= 9; ++i) {
    t.Run(1000);
    t.app->s.link.LinkMode = 3;  // the live poll keeps going unanswered
  }
  EXPECT_EQ(t.app->s.link.LoggerSeen, 0);
  EXPECT_EQ(t.app->s.settings.BaudRate.Value(), 1200);
  t.Run(1000);
  EXPECT_EQ(t.app->s.settings.BaudRate.Value(), 4800);
}

TEST(LinkSupervision, WatchdogLeavesAStuckHeaderRequestForTheLiveReadingAfterThreeTicks) {
  Started t;
  t.Run(50);
  t.app->s.link.LinkMode = 1;
  t.app->v.log1.Label15.visible = true;
  t.Run(1000);  // the watchdog notices the new mode
  t.Run(2000);
  EXPECT_EQ(t.app->s.link.LinkMode.Value(), 1);
  t.Run(1000);
  EXPECT_EQ(t.app->s.link.LinkMode.Value(), 3);
  EXPECT_FALSE(t.app->v.log1.Label15.visible);
}

TEST(LinkSupervision, WatchdogInIdleModeKeepsTheTickCountAtZero) {
  Started t;
  t.app->s.link.PollPaused = 1;  // keeps the live poll from starting
  t.Run(5000);
  EXPECT_EQ(t.app->s.link.ModeTicks.Value(), 0);
  EXPECT_TRUE(t.transport.written.empty());
}

TEST(LinkSupervision, AnUnansweredBlockIsRestartedAfterThreeSecondsWhenNoneHasBegun) {
  Started t;
  t.Run(50);
  t.app->s.link.LoggerSeen = 1;
  t.app->s.link.TimeSetDone = 1;
  t.app->s.link.DownloadPercent = 0;
  t.app->s.link.DownloadActive = 1;
  t.app->s.link.HeaderRead = 1;
  t.app->s.link.LinkMode = 2;
  t.app->s.link.PollPaused = 1;
  t.Run(1000);  // mode noticed
  t.Run(2000);
  EXPECT_EQ(t.app->s.link.HeaderRead, 1);
  t.app->s.link.LinkMode = 2;
  t.Run(1000);
  // Restarted: the header is read again, and nobody is asked about unsaved data.
  EXPECT_EQ(t.app->s.link.HeaderRead, 0);
  EXPECT_EQ(t.app->s.link.SkipSavePrompt.Value(), 0);
  EXPECT_EQ(t.app->s.link.DownloadActive, 1);
  EXPECT_TRUE(t.ui.messages.empty());
}

TEST(LinkSupervision, ABlockThatHasBegunIsGivenItsTimeLimitPlusFiveSeconds) {
  Started t;
  t.Run(50);
  LinkState& L = t.app->s.link;
  L.LoggerSeen = 1;
  L.TimeSetDone = 1;
  L.DownloadPercent = 100;  // from the record before
  L.BlockTimeLimit = 4;
  L.DownloadActive = 1;
  L.HeaderRead = 1;
  L.LinkMode = 2;
  L.PollPaused = 1;
  t.Run(1000);
  for (int i = 1; i <= 8; ++i) {
    t.Run(1000);
    ASSERT_EQ(L.HeaderRead, 1) << "restarted after " << i << " ticks";
    L.LinkMode = 2;
  }
  t.Run(1000);  // the ninth tick: 4 + 5
  EXPECT_EQ(L.HeaderRead, 0);
}

TEST(LinkSupervision, TwentyUnansweredHeaderRequestsGiveUpTheLoggerAndOpenThePortDialog) {
  Started t;
  t.Run(50);
  t.app->s.link.PollPaused = 1;
  bool portDialogShown = false;
  t.ui.onModal = [&](DialogId d) {
    if (d == DialogId::frmPort) {
      portDialogShown = true;
      FrmPortCancel(*t.app);
    }
  };
  for (int ms = 0; ms < 8000 && !portDialogShown; ms += 100) {
    if (t.app->s.link.LinkMode != 1 && t.ui.messages.empty()) t.app->s.link.LinkMode = 1;
    t.Run(100);
  }
  EXPECT_EQ(t.RequestTimes('R').size(), 19u);  // the 20th tick sends nothing
  ASSERT_EQ(t.ui.messages.size(), 1u);
  EXPECT_EQ(t.ui.messages[0].text, "en86\nen87\nen158");
  EXPECT_EQ(t.ui.messages[0].title, "en159");
  EXPECT_EQ(t.ui.messages[0].icon, MsgIcon::Exclamation);
  EXPECT_GE(t.ui.beeps, 1);
  EXPECT_TRUE(portDialogShown);
  EXPECT_FALSE(t.app->port.PortOpen());
  EXPECT_EQ(t.app->s.link.PortChosen.Value(), 0);
  EXPECT_EQ(t.app->s.link.LinkMode.Value(), 0);
  EXPECT_EQ(t.app->s.link.HeaderRetries, 0);
  const std::size_t sent = t.transport.written.size();
  t.Run(5000);
  EXPECT_EQ(t.transport.written.size(), sent);  // nothing goes out without a chosen port
}

TEST(LinkSupervision, ARequestIsNotRepeatedOnceItsAcknowledgeHasCome) {
  Started t;
  // Acknowledge at once, the payload only 700 ms later.
  t.transport.peer = [](const std::string& bytes, double now, int baud, int) {
    std::vector<TimedReply> out;
    if (bytes == std::string{'\0', 'D'} && baud == 1200) {
      out.push_back({now + 0.01, 0x04});
      out.push_back({now + 0.7, 10});
      out.push_back({now + 0.71, 0});
    }
    return out;
  };
  t.Run(2100);
  ASSERT_EQ(t.RequestTimes('D').size(), 1u);
  t.Run(600);
  EXPECT_EQ(t.RequestTimes('D').size(), 1u);
  EXPECT_EQ(t.app->s.link.LivePhase, 1);
  t.Run(100);
  EXPECT_EQ(t.app->s.link.LivePhase, 0);
  EXPECT_EQ(t.app->s.link.LoggerSeen, 1);
}

TEST(LinkSupervision, BytesWaitingInIdleModeStayUnreadUntilTheNextRequestFlushesThem) {
  Started t;
  t.transport.Inject(500, "xyz");
  t.Run(600);
  EXPECT_EQ(t.app->port.InBufferCount(), 3);
  t.Run(1500);  // the live poll starts and its request flushes the buffer first
  ASSERT_FALSE(t.RequestTimes('D').empty());
  EXPECT_EQ(t.app->port.InBufferCount(), 0);
}

TEST(LinkSupervision, AReplyNotLedByTheAcknowledgeIsDroppedWhole) {
  Started t;
  t.transport.peer = [](const std::string&, double now, int, int) {
    return std::vector<TimedReply>{{now + 0.01, 0x55}, {now + 0.0123, 0x66}, {now + 0.0146, 1}};
  };
  t.Run(2100);
  EXPECT_EQ(t.app->s.link.LivePhase, 0);
  EXPECT_EQ(t.app->s.link.LoggerSeen, 0);
  EXPECT_EQ(t.app->port.InBufferCount(), 0);
}

TEST(LinkSupervision, NoLoggerStopsEverySendAndKeepsSpeedAndPort) {
  Started t(2, 4800);
  t.ui.onModal = [&](DialogId d) {
    ASSERT_EQ(d, DialogId::frmPort);
    EXPECT_TRUE(t.app->v.frmPort.Option2.checked);
    FrmPortChoose(*t.app, 5);
    ChoosePort(*t.app);
  };
  Dispatch(*t.app, [&] { MnuPort(*t.app); });
  EXPECT_FALSE(t.app->v.frmPort.visible);
  EXPECT_FALSE(t.app->port.PortOpen());
  EXPECT_EQ(t.app->s.link.LinkOff.Value(), 1);
  EXPECT_EQ(t.app->s.logger.ModelCode.Value(), 0);
  EXPECT_EQ(t.app->s.settings.ComPort, 2);
  t.Run(20000);
  EXPECT_TRUE(t.transport.written.empty());
  EXPECT_EQ(t.app->s.settings.BaudRate.Value(), 4800);
  // The port dialog opens on "No Logger" once the settings say port 0.
  t.app->s.settings.ComPort = 0;
  t.ui.onModal = [&](DialogId) {
    EXPECT_TRUE(t.app->v.frmPort.Option5.checked);
    FrmPortCancel(*t.app);
  };
  Dispatch(*t.app, [&] { MnuPort(*t.app); });
}

TEST(LinkSupervision, ChoosingAPortOpensItAndAsksForTheHeader) {
  Started t;
  t.ui.onModal = [&](DialogId) {
    FrmPortChoose(*t.app, 3);
    ChoosePort(*t.app);
  };
  Dispatch(*t.app, [&] { MnuPort(*t.app); });
  EXPECT_EQ(t.app->s.settings.ComPort, 3);
  EXPECT_EQ(t.transport.opened.back(), 3);
  EXPECT_EQ(t.app->s.link.LinkMode.Value(), 1);
  t.Run(250);
  EXPECT_EQ(t.RequestTimes('R').size(), 1u);
}

TEST(LinkSupervision, ThePortMenuDoesNothingWhileALoggerIsConnected) {
  Started t;
  t.app->s.link.LoggerSeen = 1;
  Dispatch(*t.app, [&] { MnuPort(*t.app); });
  EXPECT_TRUE(t.ui.modals.empty() || t.ui.modals.back() != DialogId::frmPort);
}

TEST(LinkSupervision, APortDeniedInTheDialogKeepsTheHeaderModeAndClosesTheDialog) {
  Started t;
  t.transport.openFaults[2] = 70;
  t.ui.onModal = [&](DialogId) {
    FrmPortChoose(*t.app, 2);
    ChoosePort(*t.app);
  };
  Dispatch(*t.app, [&] { MnuPort(*t.app); });
  EXPECT_FALSE(t.app->v.frmPort.visible);
  EXPECT_EQ(t.app->s.link.LinkMode.Value(), 1);
  EXPECT_FALSE(t.ui.ended);
}

TEST(LinkSupervision, AnUnavailablePortInTheDialogEndsTheProgramWithTheRunTimeReport) {
  Started t;
  t.transport.openFaults[4] = 68;
  t.ui.onModal = [&](DialogId) {
    FrmPortChoose(*t.app, 4);
    ChoosePort(*t.app);
  };
  Dispatch(*t.app, [&] { MnuPort(*t.app); });
  ASSERT_EQ(t.ui.fatal.size(), 1u);
  EXPECT_EQ(t.ui.fatal[0].first, 13);
  EXPECT_NE(t.ui.fatal[0].second.find("Type mismatch"), std::string::npos);
  EXPECT_TRUE(t.ui.ended);
  EXPECT_FALSE(t.FileExists("logger1.ini.tmp~"));
}

TEST(LinkSupervision, UpdateRereadsTheHeaderOnlyWithALoggerAndOutsideABlock) {
  Started t;
  Command1Click(*t.app);
  EXPECT_EQ(t.app->s.link.LinkMode.Value(), 0);
  t.app->s.link.LoggerSeen = 1;
  t.app->s.link.LinkMode = 2;
  Command1Click(*t.app);
  EXPECT_EQ(t.app->s.link.LinkMode.Value(), 2);
  t.app->s.link.LinkMode = 0;
  Command1Click(*t.app);
  EXPECT_EQ(t.app->s.link.LinkMode.Value(), 1);
  EXPECT_EQ(t.ui.beeps, 1);
}

// Start-up fault branches.

TEST(StartupPort, AnUnavailablePortAtStartTellsTheUserAndOpensThePortDialog) {
  TestApp t;
  t.WriteTwoLanguageFile();
  t.WriteSettings(2, 1, 1200, 0, 0);
  t.transport.openFaults[2] = 68;
  t.Start();
  ASSERT_EQ(t.ui.messages.size(), 1u);
  EXPECT_EQ(t.ui.messages[0].text, "en59");
  EXPECT_EQ(t.ui.messages[0].title, "en54");
  EXPECT_EQ(t.ui.messages[0].icon, MsgIcon::Information);
  ASSERT_FALSE(t.ui.modals.empty());
  EXPECT_EQ(t.ui.modals[0], DialogId::frmPort);
  EXPECT_EQ(t.app->s.link.PortChosen.Value(), 0);
  EXPECT_TRUE(t.app->v.log1.shown);  // the window comes up all the same
}

TEST(StartupPort, AnyOtherFaultAtStartFallsBackToPortOneSilently) {
  TestApp t;
  t.WriteTwoLanguageFile();
  t.WriteSettings(3, 1, 1200, 0, 0);
  t.transport.openFaults[3] = 70;
  t.Start();
  EXPECT_TRUE(t.ui.messages.empty());
  EXPECT_EQ(t.app->s.settings.ComPort, 1);
  EXPECT_EQ(t.transport.opened.back(), 1);
  EXPECT_TRUE(t.app->port.PortOpen());
}

TEST(StartupPort, WhenTheDefaultPortFailsTooTheUserIsToldAndAsked) {
  TestApp t;
  t.WriteTwoLanguageFile();
  t.WriteSettings(3, 1, 1200, 0, 0);
  t.transport.openFaults[3] = 70;
  t.transport.openFaults[1] = 68;
  t.Start();
  ASSERT_EQ(t.ui.messages.size(), 1u);
  EXPECT_EQ(t.ui.messages[0].text, "en59");
  EXPECT_EQ(t.ui.modals[0], DialogId::frmPort);
  EXPECT_EQ(t.app->s.link.PortChosen.Value(), 0);
  t.Run(10000);
  EXPECT_TRUE(t.transport.written.empty());
}

}  // namespace
}  // namespace quillet
