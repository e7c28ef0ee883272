#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "sim/desktop_reading.h"
#include "sim/firmware/firmware.h"

namespace quillet::sim {
namespace {

using testing::DesktopHeader;
using testing::ReadHeaderAsDesktop;
using testing::WalkAsDesktop;

constexpr double kTick = 0.87890625;  // seconds
constexpr double kDay = 86400.0;

LoggerConfig Config(int model, int memoryCode, double elapsedSeconds) {
  LoggerConfig c;
  c.modelCode = model;
  c.memorySizeCode = memoryCode;
  c.elapsedAtStart = elapsedSeconds;
  c.signal.kind = SignalKind::Noise;  // every slot different enough to catch a misplaced one
  c.signal.level = model >= 64 ? 100.0 : 20.0;
  c.signal.amplitude = model >= 64 ? 90.0 : 15.0;
  return c;
}

std::uint16_t StoredWord(const std::vector<std::uint8_t>& block, int bytesPerSample, int position) {
  if (bytesPerSample == 1) return block.at(position - 1);
  return static_cast<std::uint16_t>(block.at(2 * position - 1) * 256 + block.at(2 * position - 2));
}

// Everything the desktop derives from header and block must match what the firmware did:
// the count, slot, raw value and time of every stored sample.
void ExpectDesktopReadsTheTruth(const Firmware& fw, const std::string& what) {
  SCOPED_TRACE(what);
  const DesktopHeader d = ReadHeaderAsDesktop(fw.Header());
  const std::vector<std::uint8_t> block = fw.Block();
  const std::vector<std::size_t> stored = fw.StoredSamples();
  const auto& samples = fw.Samples();

  ASSERT_EQ(d.storedSamples, stored.size());
  ASSERT_EQ(d.blockBytes, block.size());
  EXPECT_EQ(d.halfFills, fw.HalfFills());
  const double interval = d.halfFills == 0 ? 1 : std::pow(2.0, d.halfFills - 1);
  EXPECT_EQ(interval, fw.IntervalTicks());
  // The clock is past the newest sample but not yet at the next one.
  const double nowTicks = std::round(d.elapsedDays * 98304);
  EXPECT_LE(samples[stored.back()].tick, nowTicks);
  EXPECT_GT(samples[stored.back()].tick + interval, nowTicks);

  // The desktop's running count steps back 2^(H - h) at a time and stops at 0 within a
  // half fill; once that step passes M / 2 (more than log2(M) half fills) its counts for
  // the oldest samples are approximate. Slots, values and times stay exact.
  const bool exactCounts = interval <= d.memorySize / 2;
  int mismatches = 0;
  for (const auto& step : WalkAsDesktop(d)) {
    const TakenSample& truth = samples[stored.at(step.s - 1)];
    const bool ok = (!exactCounts || truth.counter == step.count) && truth.slot == step.position &&
                    truth.raw == StoredWord(block, d.bytesPerSample, step.position) &&
                    truth.tick == static_cast<std::uint64_t>(interval * (step.s - 1));
    if (!ok && ++mismatches <= 3)
      ADD_FAILURE() << "sample " << step.s << ": desktop count " << step.count << " slot " << step.position
                    << ", firmware count " << truth.counter << " slot " << truth.slot << " tick "
                    << truth.tick;
  }
  EXPECT_EQ(mismatches, 0);
}

TEST(FirmwareMemory, BeforeAndPastHalfFullTheStoredSamplesLieInTimeOrderAndOnlyTheyAreSent) {
  for (auto [ticks, halfFills, stored] : {std::tuple{0, 0, 1}, {500, 0, 501}, {1500, 1, 1501}}) {  // M = 2048
    Firmware fw(Config(17, 0, ticks * kTick));
    EXPECT_EQ(fw.HalfFills(), halfFills);
    EXPECT_EQ(fw.SampleCounter(), static_cast<std::uint32_t>(ticks));
    EXPECT_EQ(fw.StoredCount(), stored);
    EXPECT_EQ(fw.IntervalTicks(), 1u);
    EXPECT_EQ(fw.Block().size(), static_cast<std::size_t>(stored));
    ExpectDesktopReadsTheTruth(fw, "at tick " + std::to_string(ticks));
  }
}

TEST(FirmwareMemory, TheFirstThinningKeepsEveryOtherSampleAndDoublesTheInterval) {
  // 2048 samples at ticks 0..2047 fill the memory; the one due at tick 2048 thins it.
  Firmware fw(Config(17, 0, 2048 * kTick));
  EXPECT_EQ(fw.HalfFills(), 2);
  EXPECT_EQ(fw.IntervalTicks(), 2u);
  EXPECT_EQ(fw.StoredCount(), 1025);
  EXPECT_EQ(fw.NextSampleTick(), 2050u);
  const auto& samples = fw.Samples();
  EXPECT_EQ(samples.back().tick, 2048u);
  EXPECT_EQ(samples.back().slot, 2);  // the slot of the first sample dropped, tick 1
  EXPECT_EQ(samples[1].slot, 0);
  EXPECT_EQ(samples[2].slot, 3);
  // Slot 4 held tick 3, dropped at the thinning and not yet reused: its old byte stays.
  EXPECT_EQ(samples[3].slot, 0);
  EXPECT_EQ(fw.Memory()[3], samples[3].raw);
  EXPECT_EQ(fw.Block().size(), 2048u);
  ExpectDesktopReadsTheTruth(fw, "depth 2, just thinned");
  fw.AdvanceTo(2500 * kTick);
  EXPECT_EQ(fw.SampleCounter(), 2048u + 226u);
  ExpectDesktopReadsTheTruth(fw, "depth 2");
  fw.AdvanceTo(50 * kTick);  // the clock never runs backwards
  EXPECT_EQ(fw.SampleCounter(), 2048u + 226u);
}

TEST(FirmwareMemory, TheDesktopFindsEverySampleAtEveryDepth) {
  // One-byte and two-byte loggers, small and large memories, from minutes to years.
  struct Case {
    int model, memoryCode;
    double seconds;
  };
  const Case cases[] = {
      {17, 0, 3000 * kTick},   {17, 0, 4096 * kTick}, {17, 0, 4097 * kTick}, {17, 0, 6143 * kTick},
      {18, 0, 1.0 * kDay},     {17, 1, 3.5 * kDay},   {17, 0, 30 * kDay},    {24, 2, 45 * kDay},
      {64, 0, 1025 * kTick},   {64, 0, 2 * kDay},     {65, 2, 12 * kDay},    {66, 0, 400 * kDay},
      {17, 0, 7 * 365 * kDay},
  };
  for (const Case& c : cases) {
    Firmware fw(Config(c.model, c.memoryCode, c.seconds));
    ExpectDesktopReadsTheTruth(fw, "model " + std::to_string(c.model) + " memory " +
                                       std::to_string(c.memoryCode) + " at " + std::to_string(c.seconds) +
                                       " s, half fills " + std::to_string(fw.HalfFills()));
  }
}

TEST(FirmwareMemory, ALayoutOneHeaderCarriesOnlyTheLowSixteenBitsOfTheCounter) {
  // 16384 one-byte slots pass 65535 samples after about eleven days.
  Firmware fw(Config(24, 3, 45 * kDay));
  ASSERT_GT(fw.SampleCounter(), 65535u);
  const auto h = fw.Header();
  EXPECT_EQ(h[17] + 256 * h[18], static_cast<int>(fw.SampleCounter() & 0xFFFF));
}

TEST(FirmwareMemory, WatchedSampleBySampleTheLayoutHoldsAfterEverySample) {
  Firmware fw(Config(64, 0, 0.0));  // M = 1024: thinnings come quickly
  for (int tick = 1; tick <= 9000; tick += 7) {
    fw.AdvanceTo(tick * kTick);
    if (tick % 21 == 1 || tick < 1100) ExpectDesktopReadsTheTruth(fw, "tick " + std::to_string(tick));
    if (::testing::Test::HasFailure()) break;
  }
  EXPECT_GE(fw.HalfFills(), 5);
}

TEST(FirmwareMemory, TwoByteSamplesGoLowByteFirst) {
  LoggerConfig c = Config(65, 0, 10 * kTick);
  c.signal.kind = SignalKind::Steady;
  c.signal.level = 25.5;  // (25.5 + 2048) * 16 = 0x8198
  const auto block = Firmware(c).Block();
  ASSERT_EQ(block.size(), 22u);
  EXPECT_EQ(block[0], 0x98);
  EXPECT_EQ(block[1], 0x81);
}

TEST(FirmwareStart, StartingAsIfRunForDaysEqualsRunningThereInSmallSteps) {
  LoggerConfig c = Config(18, 0, 3 * kDay);
  c.signal.kind = SignalKind::Sine;
  c.signal.level = 40;
  c.signal.amplitude = 30;  // up to 70 V: range steps on the way
  c.signal.periodSeconds = 5 * kDay;
  const Firmware jumped(c);

  c.elapsedAtStart = 0;
  Firmware walked(c);
  double t = 0;
  for (int i = 0; t < 3 * kDay; ++i) {
    t = std::min(3 * kDay, t + 37.3 + (i % 13) * 311.0);
    walked.AdvanceTo(t);
    walked.LiveReading();
  }
  ASSERT_EQ(walked.Samples().size(), jumped.Samples().size());
  for (std::size_t i = 0; i < jumped.Samples().size(); ++i) {
    const TakenSample &a = jumped.Samples()[i], &b = walked.Samples()[i];
    ASSERT_TRUE(a.tick == b.tick && a.raw == b.raw && a.range == b.range && a.slot == b.slot)
        << "sample " << i;
  }
  EXPECT_GT(jumped.RangeMarks().size(), 0u);
  EXPECT_EQ(walked.Memory(), jumped.Memory());
  EXPECT_EQ(walked.Header(), jumped.Header());
  EXPECT_EQ(walked.Block(), jumped.Block());
}

TEST(FirmwareStart, MonthsOfTheLargestMemoryCostFewSamples) {
  // Sampling slows down as the memory thins, so months cost few samples: the whole
  // history stays a few hundred thousand samples even for 64 KiB. (Its speed is a
  // benchmark's business, not a test's.)
  Firmware fw(Config(17, 5, 180 * kDay));
  EXPECT_LT(fw.Samples().size(), 400000u);
  EXPECT_GE(fw.HalfFills(), 8);
}

TEST(FirmwareClock, TheHeaderCarriesA28BitTickCount) {
  const double ticks = 268435456.0 + 5;  // 2^28 + 5
  Firmware fw(Config(17, 0, ticks * kTick + 0.5));
  const auto h = fw.Header();
  EXPECT_EQ(std::vector<int>(h.begin() + 11, h.begin() + 15), (std::vector<int>{5, 0, 0, 0}));
  EXPECT_EQ(fw.Ticks(), 268435461u);
}

}  // namespace
}  // namespace quillet::sim
