#include "sim/firmware/logger_line.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace quillet::sim {
namespace {

using Bytes = std::vector<std::uint8_t>;

const Bytes kLive = {0x00, 'D'};
const Bytes kHeader = {0x00, 'R'};
const Bytes kBlock = {0x00, 'T'};

LoggerConfig Quick(int baud = 1200) {
  LoggerConfig c;
  c.baud = baud;
  c.pauseAfterAck = 0.0;
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

TEST(LoggerLine, RepliesToCommandsHeardTogetherFollowEachOther) {
  LoggerLine line(Quick());
  const auto reply = line.Receive({0x00, 'D', 0x00, 'D'}, 1.0, 1200, 2);
  ASSERT_EQ(reply.size(), 6u);
  for (int k = 0; k < 6; ++k) EXPECT_NEAR(reply[k].at, 1.001 + (k + 1) * 11.0 / 1200, 1e-9);
  // A command heard while a reply is still going out waits for the line.
  const auto later = line.Receive(kLive, 1.01, 1200, 2);
  EXPECT_NEAR(later[0].at, reply.back().at + 11.0 / 1200, 1e-9);
}

TEST(LoggerLine, HeaderRepliesHaveTheLengthOfTheirLayout) {
  LoggerLine one(Quick());
  EXPECT_EQ(one.Receive(kHeader, 0.5, 1200, 2).size(), 1u + 22u);
  LoggerConfig c = Quick();
  c.modelCode = 64;
  c.extraLayout2Bytes = 4;
  LoggerLine two(c);
  EXPECT_EQ(two.Receive(kHeader, 0.5, 1200, 2).size(), 1u + 22u + 4u);
}

TEST(LoggerLine, TheFirmwareClockFollowsTheCallersClock) {
  LoggerConfig c = Quick();
  c.elapsedAtStart = 3600.0;
  LoggerLine line(c, 100.0);
  line.Receive(kLive, 160.0, 1200, 2);
  EXPECT_DOUBLE_EQ(line.firmware().Seconds(), 3660.0);
  const auto header = Values(line.Receive(kHeader, 160.0, 1200, 2));
  const int ticks = header[12] + 256 * header[13] + 65536 * header[14];
  EXPECT_EQ(ticks, 4164);  // 3660 s / 0.87890625 s
}

TEST(LoggerLine, ABlockReplyIsTheMemoryTheHeaderAnnounced) {
  LoggerConfig c = Quick(4800);
  c.elapsedAtStart = 300.0;
  LoggerLine line(c);
  line.Receive(kHeader, 0.0, 4800, 2);
  const auto block = Values(line.Receive(kBlock, 0.1, 4800, 2));
  ASSERT_EQ(block.size(), 1u + line.firmware().Block().size());
  EXPECT_EQ(Bytes(block.begin() + 1, block.end()), line.firmware().Block());
}

TEST(LoggerLine, TheFirstBlockRequestsCanBeIgnoredAndABlockCutShortOnceOrEveryTime) {
  LoggerConfig c = Quick();
  c.faults.ignoreBlocks = 2;
  LoggerLine line(c);
  EXPECT_TRUE(line.Receive(kBlock, 1.0, 1200, 2).empty());
  EXPECT_FALSE(line.Receive(kLive, 1.5, 1200, 2).empty());  // only blocks are ignored
  EXPECT_TRUE(line.Receive(kBlock, 2.0, 1200, 2).empty());
  const std::size_t whole = line.Receive(kBlock, 3.0, 1200, 2).size();
  EXPECT_EQ(whole, 1u + line.firmware().Block().size());
  ASSERT_EQ(line.Commands().size(), 4u);
  EXPECT_FALSE(line.Commands()[0].answered);
  EXPECT_TRUE(line.Commands()[3].answered);

  c = Quick();
  c.elapsedAtStart = 100.0;  // 114 samples
  c.faults.cutBlockTo = 10;
  for (int cuts : {1, -1}) {
    c.faults.cutBlocks = cuts;
    LoggerLine cut(c);
    EXPECT_EQ(cut.Receive(kBlock, 0.0, 1200, 2).size(), 11u);
    const std::size_t again = cut.Receive(kBlock, 5.0, 1200, 2).size();
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
  EXPECT_EQ(Values(line.Receive(kLive, 2.0, 1200, 2)).size(), 3u);
}

TEST(LoggerLine, ASilentLoggerHearsNothingAndLosesWhatWouldArriveInTheSilence) {
  LoggerConfig c = Quick();
  c.elapsedAtStart = 200.0;
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
  // The logger kept recording through the silence.
  EXPECT_DOUBLE_EQ(line.firmware().Seconds(), 215.0);
}

TEST(LoggerLine, CalibrationCommandsAreAcknowledgedAndNoted) {
  LoggerConfig c = Quick();
  c.modelCode = 65;
  LoggerLine line(c);
  EXPECT_EQ(Values(line.Receive({0x00, 'H'}, 1.0, 1200, 2)), Bytes{0x04});
  EXPECT_EQ(Values(line.Receive({0x00, 'L'}, 2.0, 1200, 2)), Bytes{0x04});
  ASSERT_EQ(line.firmware().Calibrations().size(), 2u);
  EXPECT_EQ(line.firmware().Calibrations()[1].letter, 'L');
}

TEST(LoggerLine, CommandsHeardWhileTheBlockGoesOutAreNotAnswered) {
  LoggerLine line(Quick());
  const auto block = line.Receive(kBlock, 1.0, 1200, 2);
  ASSERT_GT(block.size(), 1u);
  EXPECT_TRUE(line.Receive(kHeader, block.back().at - 0.001, 1200, 2).empty());
  EXPECT_EQ(line.Receive(kHeader, block.back().at + 0.001, 1200, 2).size(), 1u + 22u);
}

}  // namespace
}  // namespace quillet::sim
