// The logger's side of the line: framing, speed and pacing of the replies, the faults it
// shows on the wire, and the same logger behind a pseudo-terminal.
#include "sim/firmware/logger_line.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include "sim/firmware/logger_pty.h"

namespace quillet::sim {
namespace {

using Bytes = std::vector<std::uint8_t>;

const Bytes kLive = {0x00, 'D'}, kHeader = {0x00, 'R'}, kBlock = {0x00, 'T'};

LoggerConfig Quick(int baud = 1200, double elapsed = 0) {
  LoggerConfig c;
  c.baud = baud;
  c.elapsedAtStart = elapsed;
  c.turnaround = 0.001;
  return c;
}

Bytes Values(const std::vector<TimedByte>& reply) {
  Bytes b;
  for (const TimedByte& t : reply) b.push_back(t.byte);
  return b;
}

TEST(LoggerLine, ALiveRequestGetsTheAcknowledgeAndTwoBytesPacedAtTheLineSpeedAfterAnyPause) {
  for (auto [baud, pause] : {std::pair{1200, 0.0}, {4800, 0.0}, {1200, 0.05}}) {
    LoggerConfig c = Quick(baud);
    c.pauseAfterAck = pause;  // delays only the payload
    LoggerLine line(c, 10.0);
    const auto reply = line.Receive(kLive, 12.0, baud, 2);
    ASSERT_EQ(reply.size(), 3u);
    EXPECT_EQ(reply[0].byte, 0x04);
    for (int k = 0; k < 3; ++k)
      EXPECT_NEAR(reply[k].at, 12.0 + 0.001 + (k + 1) * 11.0 / baud + (k > 0 ? pause : 0), 1e-9) << baud;
  }
}

TEST(LoggerLine, ALoggerAtAnotherSpeedGivesNothingAndLosesTheHalfCommand) {
  LoggerLine line(Quick(1200));
  EXPECT_TRUE(line.Receive(kLive, 1.0, 4800, 2).empty());
  EXPECT_TRUE(line.Receive({0x00}, 2.0, 4800, 2).empty());
  EXPECT_TRUE(line.Receive({'D'}, 2.1, 1200, 2).empty());  // the 0x00 arrived garbled
  EXPECT_TRUE(line.Commands().empty());
  EXPECT_EQ(line.Receive(kLive, 3.0, 1200, 1).size(), 3u);  // one stop bit is fine
}

TEST(LoggerLine, ACommandSplitAcrossTwoWritesIsAnsweredWhenItsLetterArrivesAndStrayBytesAreIgnored) {
  LoggerLine line(Quick());
  EXPECT_TRUE(line.Receive({0x00}, 1.0, 1200, 2).empty());
  const auto reply = line.Receive({'D'}, 1.2, 1200, 2);
  ASSERT_EQ(reply.size(), 3u);
  EXPECT_NEAR(reply[0].at, 1.2 + 0.001 + 11.0 / 1200, 1e-9);
  EXPECT_TRUE(line.Receive({0x00, 'X', 'D', 0x44, 0x55}, 2.0, 1200, 2).empty());
  EXPECT_EQ(line.Receive({0x00, 0x00, 'D'}, 3.0, 1200, 2).size(), 3u);
  EXPECT_EQ(line.Commands().size(), 2u);
}

TEST(LoggerLine, RepliesWaitForTheLineAndCommandsHeardWhileTheBlockGoesOutAreNotAnswered) {
  LoggerLine line(Quick());
  const auto reply = line.Receive({0x00, 'D', 0x00, 'D'}, 1.0, 1200, 2);
  ASSERT_EQ(reply.size(), 6u);
  for (int k = 0; k < 6; ++k) EXPECT_NEAR(reply[k].at, 1.001 + (k + 1) * 11.0 / 1200, 1e-9);
  // A command heard while a reply is still going out waits for the line.
  EXPECT_NEAR(line.Receive(kLive, 1.01, 1200, 2).at(0).at, reply.back().at + 11.0 / 1200, 1e-9);
  const auto block = line.Receive(kBlock, 2.0, 1200, 2);
  ASSERT_GT(block.size(), 1u);
  EXPECT_TRUE(line.Receive(kHeader, block.back().at - 0.001, 1200, 2).empty());
  EXPECT_EQ(line.Receive(kHeader, block.back().at + 0.001, 1200, 2).size(), 1u + 22u);
}

TEST(LoggerLine, TheFirstBlockRequestsCanBeIgnoredAndABlockCutShortOnceOrEveryTime) {
  LoggerConfig c = Quick();
  c.faults.ignoreBlocks = 2;
  LoggerLine line(c);
  EXPECT_TRUE(line.Receive(kBlock, 1.0, 1200, 2).empty());
  EXPECT_FALSE(line.Receive(kLive, 1.5, 1200, 2).empty());  // only blocks are ignored
  EXPECT_TRUE(line.Receive(kBlock, 2.0, 1200, 2).empty());
  const Bytes whole = Values(line.Receive(kBlock, 3.0, 1200, 2));
  EXPECT_EQ(Bytes(whole.begin() + 1, whole.end()), line.firmware().Block());
  ASSERT_EQ(line.Commands().size(), 4u);
  EXPECT_EQ(std::tuple(line.Commands()[0].answered, line.Commands()[3].answered), std::tuple(false, true));

  c = Quick(1200, 100.0);  // 114 samples
  c.faults.cutBlockTo = 10;
  for (int cuts : {1, -1}) {
    c.faults.cutBlocks = cuts;
    LoggerLine cut(c);
    EXPECT_EQ(cut.Receive(kBlock, 0.0, 1200, 2).size(), 11u);
    const std::size_t again = cut.Receive(kBlock, 5.0, 1200, 2).size();  // the clock has moved on
    EXPECT_EQ(again, cuts == 1 ? 1u + cut.firmware().Block().size() : 11u);
  }
}

TEST(LoggerLine, NoiseBytesComeBeforeTheAcknowledgeAndAreNeverOne) {
  LoggerConfig c = Quick();
  c.faults.noiseBeforeReply = 40;
  c.faults.noisyReplies = 1;
  LoggerLine line(c);
  const Bytes noisy = Values(line.Receive(kLive, 1.0, 1200, 2));
  ASSERT_EQ(noisy.size(), 43u);
  EXPECT_EQ(std::count(noisy.begin(), noisy.begin() + 40, 0x04), 0);
  EXPECT_EQ(noisy[40], 0x04);
  EXPECT_EQ(line.Receive(kLive, 2.0, 1200, 2).size(), 3u);
}

TEST(LoggerLine, ASilentLoggerHearsNothingAndLosesWhatWouldArriveInTheSilence) {
  LoggerConfig c = Quick(1200, 200.0);
  c.faults.silentAfter = 10.0;
  c.faults.silentFor = 5.0;
  LoggerLine line(c, 100.0);
  // A block begun before the silence stops arriving when it starts.
  const auto block = line.Receive(kBlock, 109.9, 1200, 2);
  EXPECT_FALSE(block.empty());
  EXPECT_LT(block.size(), 1u + line.firmware().Block().size());
  EXPECT_TRUE(std::all_of(block.begin(), block.end(), [](const TimedByte& b) { return b.at < 110.0; }));
  EXPECT_TRUE(line.Receive(kLive, 111.0, 1200, 2).empty());
  EXPECT_EQ(line.Commands().size(), 1u);
  EXPECT_EQ(line.Receive(kLive, 115.0, 1200, 2).size(), 3u);
  EXPECT_DOUBLE_EQ(line.firmware().Seconds(), 215.0);  // it kept recording through the silence
}

TEST(LoggerLine, CalibrationCommandsAreAcknowledgedAndNotedWithTheirTime) {
  LoggerConfig c = Quick(1200, 100 * 0.87890625);
  c.modelCode = 65;
  LoggerLine line(c);
  EXPECT_EQ(Values(line.Receive({0x00, 'H'}, 0.0, 1200, 2)), Bytes{0x04});
  EXPECT_EQ(Values(line.Receive({0x00, 'L'}, 100 * 0.87890625, 1200, 2)), Bytes{0x04});
  const auto& noted = line.firmware().Calibrations();
  ASSERT_EQ(noted.size(), 2u);
  EXPECT_EQ(std::tuple(noted[0].letter, noted[0].tick, noted[1].letter, noted[1].tick),
            std::tuple('H', 100u, 'L', 200u));
}

TEST(LoggerPty, AnApplicationOnTheSlaveGetsALiveReadingOnlyAtTheLoggersSpeed) {
  LoggerPty pty(Quick(4800));
  std::atomic<bool> stop{false};
  std::thread server([&] { pty.Serve(stop); });
  const int fd = open(pty.SlavePath().c_str(), O_RDWR | O_NOCTTY);
  ASSERT_GE(fd, 0) << pty.SlavePath();
  for (speed_t speed : {B1200, B4800}) {
    termios tio{};
    ASSERT_EQ(tcgetattr(fd, &tio), 0);
    cfmakeraw(&tio);
    tio.c_cflag |= CSTOPB | CLOCAL | CREAD;
    cfsetispeed(&tio, speed);
    cfsetospeed(&tio, speed);
    ASSERT_EQ(tcsetattr(fd, TCSANOW, &tio), 0);
    ASSERT_EQ(write(fd, kLive.data(), 2), 2);
    Bytes reply;  // up to three bytes, within 0.3 s at the wrong speed and 2 s at the right one
    const auto wait = std::chrono::duration<double>(speed == B1200 ? 0.3 : 2);
    const auto end = std::chrono::steady_clock::now() + wait;
    while (reply.size() < 3 && std::chrono::steady_clock::now() < end) {
      pollfd pfd{fd, POLLIN, 0};
      if (poll(&pfd, 1, 20) <= 0) continue;
      std::uint8_t buf[64];
      const ssize_t n = read(fd, buf, sizeof buf);
      if (n > 0) reply.insert(reply.end(), buf, buf + n);
    }
    EXPECT_EQ(reply.size(), speed == B1200 ? 0u : 3u);
    EXPECT_TRUE(reply.empty() || reply[0] == 0x04);
  }
  close(fd);
  stop = true;
  server.join();
}

}  // namespace
}  // namespace quillet::sim
