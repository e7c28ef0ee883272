// The firmware model: its header layouts, range steps and marks, live readings, refusals,
// and a start as if run for days. (Its memory and thinning are held against the samples it
// took by the download scenarios, through the whole program.)
#include "sim/firmware/firmware.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <tuple>
#include <vector>

namespace quillet::sim {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Live = std::array<std::uint8_t, 2>;
constexpr double kTick = 0.87890625;  // seconds
constexpr double kDay = 86400.0;

LoggerConfig Config(int model, double seconds, Signal signal = {}, int memoryCode = 0) {
  LoggerConfig c;
  c.modelCode = model;
  c.elapsedAtStart = seconds;
  c.signal = signal;
  c.memorySizeCode = memoryCode;
  return c;
}

TEST(FirmwareHeader, LayoutOneCarriesMarksClockStatusModelCounterAndRange) {
  // Model 18 counts 4 per volt at range code 0. A staircase of 50 V steps every 100 ticks
  // outgrows the range at ticks 100 (280 counts), 300 (680) and 500 (1080).
  LoggerConfig c = Config(18, 1000 * kTick, {SignalKind::Steps, 20, 50, 100 * kTick}, 1);  // no half fill yet
  c.serial = 0x1234;
  const Bytes expected = {
      0x01, 0x34, 0x12,                                // memory size code, serial (low byte first)
      0xF4, 0x01, 0x2C, 0x01, 0x64, 0x00, 0xFF, 0xFF,  // marks 500, 300, 100 (newest first), none
      0xE8, 0x03, 0x00, 0x00, 0x00, 18,                // 1000 ticks, status, model
      0xE8, 0x03, 0x00, 0x00, 0x03,                    // counter 1000, range code 3
  };
  EXPECT_EQ(Firmware(c).Header(), expected);
}

TEST(FirmwareHeader,
     LayoutTwoCarriesClockStatusModelAndThreeCounterBytesThenExtraBytesAndSamplesLowByteFirst) {
  LoggerConfig c = Config(65, 3000 * kTick + 0.3, {SignalKind::Steady, 25.5}, 2);  // 4096 two-byte slots
  c.serial = 7;
  c.extraLayout2Bytes = 3;
  Firmware fw(c);
  const Bytes expected = {
      0x02, 0x07, 0x00, 0, 0, 0, 0, 0, 0, 0,  // memory size code, serial, positions 4..10 unused
      0xB8, 0x0B, 0x00, 0x00, 0x00, 0x00, 65,  // 3000 ticks, status, -, model
      0xB8, 0x0B, 0x00, 0x00, 0x00,            // counter 3000
      0x00, 0x00, 0x00,                        // extra bytes
  };
  EXPECT_EQ(fw.Header(), expected);
  const Bytes block = fw.Block();
  ASSERT_EQ(block.size(), 2u * 3001u);
  // Two-byte samples go low byte first: (25.5 + 2048) * 16 = 0x8198.
  EXPECT_EQ(std::vector<int>(block.begin(), block.begin() + 2), (std::vector<int>{0x98, 0x81}));
}

TEST(FirmwareHeader, TheClockKeeps28BitsOfTicksAndALayoutOneHeaderTheLow16BitsOfTheCounter) {
  const Firmware old(Config(17, (268435456.0 + 5) * kTick + 0.5));  // 2^28 + 5 ticks
  EXPECT_EQ(old.Ticks(), 268435461u);
  const Bytes h = old.Header();
  EXPECT_EQ(Bytes(h.begin() + 11, h.begin() + 15), (Bytes{5, 0, 0, 0}));
  const Firmware many(Config(24, 45 * kDay, {}, 3));  // 16384 slots pass 65535 samples in eleven days
  ASSERT_GT(many.SampleCounter(), 65535u);
  EXPECT_EQ(many.Header()[17] + 256 * many.Header()[18], static_cast<int>(many.SampleCounter() & 0xFFFF));
}

TEST(FirmwareRange, TwoRangesAtOnceOverloadAndTheThermistorsFifthStep) {
  // 200 V from tick 10: 800 counts, 200 at code 2, two marks with the same count.
  const Firmware two(Config(18, 15 * kTick, {SignalKind::Steps, 20, 180, 10 * kTick}));
  EXPECT_EQ(two.RangeMarks(), (std::vector<std::uint32_t>{10, 10}));
  EXPECT_EQ(std::tuple(two.Samples()[10].range, two.Samples()[10].raw), std::tuple(2, 200));

  const Firmware over(Config(18, 0, {SignalKind::Steady, 1000}));  // 4000 counts: 500 even at code 3
  EXPECT_EQ(std::tuple(over.RangeByte(), over.Samples()[0].raw, over.RangeMarks().size()),
            std::tuple(3, 255, 3u));

  LoggerConfig t = Config(17, 100 * 3600.0, {SignalKind::Ramp, -10, 5, 3600, 1});
  t.startRange = 128;  // the divider's top count is at about -7, 5, 21, 41 and 73 degC
  const Firmware th(t);
  EXPECT_EQ(th.RangeByte(), 4);
  const auto marks = th.RangeMarks();
  ASSERT_EQ(marks.size(), 5u);
  const Bytes h = th.Header();
  EXPECT_EQ(std::tuple(th.StatusByte(), h[15], h[21]), std::tuple(0x10, 0x10, 4));
  for (int i = 0; i < 4; ++i)  // the header keeps the four newest marks
    EXPECT_EQ(h[3 + 2 * i] + 256 * h[4 + 2 * i], static_cast<int>(marks[i] & 0xFFFF));
  // Each mark is the count of the first sample taken in its new range.
  const auto& samples = th.Samples();
  for (std::size_t i = 1, step = 0; i < samples.size(); ++i) {
    if (samples[i].range != samples[i - 1].range) {
      EXPECT_EQ(marks[4 - step++], samples[i].counter) << i;
    }
  }
}

TEST(FirmwareLive, ReadingsFollowEachModelsUnitsAndRangeForThemselves) {
  auto live = [](int model, double level) {
    return Firmware(Config(model, 0, {SignalKind::Steady, level})).LiveReading();
  };
  EXPECT_EQ(live(25, 100.0), (Live{80, 0}));        // 0.8 counts per ampere
  EXPECT_EQ(live(64, -10.25), (Live{0x5C, 0x7F}));  // (-10.25 + 2048) * 16
  EXPECT_EQ(live(5, 77.0), (Live{77, 1}));          // unknown model: the count itself
  // 120 V from 10 s on: 480 counts, 240 at code 1; the recording keeps range 0.
  const Firmware fw(Config(18, 10.5, {SignalKind::Steps, 20, 100, 10.0}));  // last sample at 9.67 s
  EXPECT_EQ(fw.LiveReading(), (Live{240, 1}));
  EXPECT_EQ(std::tuple(fw.RangeByte(), fw.RangeMarks().size()), std::tuple(0, 0u));
}

TEST(FirmwareLive, AThermistorCountIsTheNearestTheDesktopCanReadBack) {
  // The desktop's reading of a thermistor count n at divider d, in degrees Celsius.
  auto celsius = [](double n, double d) {
    const double x = d * 3.008 / (n * 5 + 3);
    const double rp = 1 / (1 / 5100.0 + 1 / 335671.0);
    const double rx = (rp * x - 5100.0 * 10500.0 / 1e6) / ((10500.0 + 5100.0) / 1e6 + x);
    const double l = std::log(1 / (1 / rx - 1 / 5100.0));
    return 1 / (0.001129241 + 0.0002341077 * l + 8.775468e-8 * l * l * l) - 273.16;
  };
  for (double level = -30; level <= 40; level += 0.7) {
    const auto live = Firmware(Config(17, 0, {SignalKind::Steady, level})).LiveReading();
    ASSERT_EQ(live[1], 16);  // divider 16: room temperature near mid-scale
    const double error = std::abs(celsius(live[0], 16) - level);
    EXPECT_LE(error, std::abs(celsius(live[0] + 1, 16) - level)) << level;
    EXPECT_TRUE(live[0] == 0 || error <= std::abs(celsius(live[0] - 1, 16) - level)) << level;
  }
}

TEST(FirmwareConfig, ALoggerThatCannotExistIsRefusedWithAMessage) {
  auto refused = [](void (*change)(LoggerConfig&)) {
    LoggerConfig c;
    change(c);
    try {
      Firmware fw(c);
    } catch (const std::invalid_argument& e) {
      return std::string(e.what()).size() > 10;
    }
    return false;
  };
  EXPECT_TRUE(refused([](LoggerConfig& c) { c.modelCode = 128; }));
  EXPECT_TRUE(refused([](LoggerConfig& c) { c.baud = 9600; }));
  EXPECT_TRUE(refused([](LoggerConfig& c) { c.memorySizeCode = 6; }));
  EXPECT_TRUE(refused([](LoggerConfig& c) { c.serial = 70000; }));
  EXPECT_TRUE(refused([](LoggerConfig& c) { c.elapsedAtStart = -1; }));
  EXPECT_TRUE(refused([](LoggerConfig& c) { c.startRange = 24; }));  // thermistor divider not a power of two
  EXPECT_TRUE(refused([](LoggerConfig& c) { c.modelCode = 18, c.startRange = 4; }));
  EXPECT_FALSE(refused([](LoggerConfig& c) { c.modelCode = 18, c.startRange = 3; }));
}

TEST(FirmwareStart, StartingAsIfRunForDaysEqualsRunningThereInSmallSteps) {
  // Up to 70 V: range steps on the way.
  const LoggerConfig c = Config(18, 3 * kDay, {SignalKind::Sine, 40, 30, 5 * kDay});
  const Firmware jumped(c);
  Firmware walked(Config(18, 0, c.signal));
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
  EXPECT_EQ(std::tuple(walked.Memory(), walked.Header(), walked.Block()),
            std::tuple(jumped.Memory(), jumped.Header(), jumped.Block()));
}

}  // namespace
}  // namespace quillet::sim
