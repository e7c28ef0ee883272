// The firmware model: its header layouts, range steps and marks, live readings,
// calibrations and refusals.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "sim/desktop_reading.h"
#include "sim/firmware/firmware.h"

namespace quillet::sim {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Live = std::array<std::uint8_t, 2>;
constexpr double kTick = 0.87890625;  // seconds

LoggerConfig Signal(int model, SignalKind kind, double level, double amplitude, double periodSeconds) {
  LoggerConfig c;
  c.modelCode = model;
  c.signal.kind = kind;
  c.signal.level = level;
  c.signal.amplitude = amplitude;
  if (periodSeconds > 0) c.signal.periodSeconds = periodSeconds;
  return c;
}

TEST(FirmwareHeader, LayoutOneCarriesMarksClockStatusModelCounterAndRange) {
  // Model 18 counts 4 per volt at range code 0. A staircase of 50 V steps every 100 ticks
  // outgrows the range at ticks 100 (280 counts), 300 (680) and 500 (1080).
  LoggerConfig c = Signal(18, SignalKind::Steps, 20, 50, 100 * kTick);
  c.serial = 0x1234;
  c.memorySizeCode = 1;  // 4096 slots: no half fill by tick 1000
  c.elapsedAtStart = 1000 * kTick;
  const Bytes expected = {
      0x01,                    // memory size code
      0x34, 0x12,              // serial, low byte first
      0xF4, 0x01, 0x2C, 0x01,  // marks 500, 300 (newest first)
      0x64, 0x00, 0xFF, 0xFF,  // mark 100, no fourth mark
      0xE8, 0x03, 0x00, 0x00,  // 1000 ticks
      0x00, 18,                // status, model
      0xE8, 0x03, 0x00, 0x00,  // counter 1000
      0x03,                    // range code 3
  };
  EXPECT_EQ(Firmware(c).Header(), expected);
}

TEST(FirmwareHeader, LayoutTwoCarriesClockStatusModelAndThreeCounterBytesThenExtraBytes) {
  LoggerConfig c;
  c.modelCode = 65;
  c.serial = 7;
  c.memorySizeCode = 2;  // 8192 bytes, 4096 two-byte slots
  c.signal.level = 25.5;
  c.elapsedAtStart = 3000 * kTick + 0.3;
  c.extraLayout2Bytes = 3;
  Firmware fw(c);
  const Bytes expected = {
      0x02, 0x07, 0x00,                    // memory size code, serial
      0,    0,    0,    0,    0,    0, 0,  // positions 4..10 unused
      0xB8, 0x0B, 0x00, 0x00,              // 3000 ticks
      0x00, 0x00, 65,                      // status, -, model
      0xB8, 0x0B, 0x00, 0x00, 0x00,        // counter 3000
      0x00, 0x00, 0x00,                    // extra bytes
  };
  EXPECT_EQ(fw.Header(), expected);
  EXPECT_EQ(fw.Block().size(), 2u * 3001u);
}

TEST(FirmwareRange, MarksAreTheCountsOfTheFirstSamplesInEachNewRangeNewestFirst) {
  LoggerConfig c = Signal(24, SignalKind::Ramp, 10, 0, 0);  // 8 counts per ampere at code 0
  c.signal.slopePerHour = 10;                               // 31.9 A (255 counts) after about 2.2 h
  c.elapsedAtStart = 30 * 3600;
  Firmware fw(c);
  ASSERT_EQ(fw.RangeByte(), 3);
  const auto marks = fw.RangeMarks();
  ASSERT_EQ(marks.size(), 3u);
  EXPECT_GT(marks[0], marks[1]);
  EXPECT_GT(marks[1], marks[2]);
  const auto& samples = fw.Samples();
  for (std::size_t i = 1; i < samples.size(); ++i) {
    if (samples[i].range == samples[i - 1].range) continue;
    EXPECT_EQ(samples[i].range, samples[i - 1].range + 1);
    EXPECT_EQ(marks[2 - (samples[i].range - 1)], samples[i].counter);
  }
  // The desktop undoes exactly the steps that came after each stored sample.
  const auto d = testing::ReadHeaderAsDesktop(fw.Header());
  const auto stored = fw.StoredSamples();
  for (const auto& step : testing::WalkAsDesktop(d))
    ASSERT_EQ(samples[stored[step.s - 1]].range, 3 - step.rangeSteps) << "sample " << step.s;
}

TEST(FirmwareRange, TwoRangesAtOnceOverloadAndTheThermistorsFifthStep) {
  // 200 V from tick 10: 800 counts, 200 at code 2, two marks with the same count.
  LoggerConfig two = Signal(18, SignalKind::Steps, 20, 180, 10 * kTick);
  two.elapsedAtStart = 15 * kTick;
  Firmware fw(two);
  EXPECT_EQ(fw.RangeMarks(), (std::vector<std::uint32_t>{10, 10}));
  EXPECT_EQ(fw.Samples()[10].range, 2);
  EXPECT_EQ(fw.Samples()[10].raw, 200);

  Firmware over(Signal(18, SignalKind::Steady, 1000, 0, 0));  // 4000 counts: 500 even at code 3
  EXPECT_EQ(over.RangeByte(), 3);
  EXPECT_EQ(over.Samples()[0].raw, 255);
  EXPECT_EQ(over.RangeMarks().size(), 3u);

  LoggerConfig t = Signal(17, SignalKind::Ramp, -10, 0, 0);
  t.startRange = 128;  // the divider's top count is at about -7, 5, 21, 41 and 73 degC
  t.signal.slopePerHour = 1;
  t.elapsedAtStart = 100 * 3600.0;
  Firmware th(t);
  EXPECT_EQ(th.RangeByte(), 4);
  const auto marks = th.RangeMarks();
  ASSERT_EQ(marks.size(), 5u);
  EXPECT_EQ(th.StatusByte(), 0x10);
  const auto h = th.Header();
  EXPECT_EQ(h[15], 0x10);
  EXPECT_EQ(h[21], 4);
  for (int i = 0; i < 4; ++i)  // the header keeps the four newest marks
    EXPECT_EQ(h[3 + 2 * i] + 256 * h[4 + 2 * i], static_cast<int>(marks[i] & 0xFFFF));
}

TEST(FirmwareLive, ReadingsFollowEachModelsUnitsAndRangeForThemselves) {
  auto live = [](int model, double level) {
    return Firmware(Signal(model, SignalKind::Steady, level, 0, 0)).LiveReading();
  };
  EXPECT_EQ(live(18, 25.0), (Live{100, 0}));     // 4 counts per volt
  EXPECT_EQ(live(25, 100.0), (Live{80, 0}));     // 0.8 counts per ampere
  EXPECT_EQ(live(64, 32.0), (Live{0x00, 130}));  // (32 + 2048) * 16
  EXPECT_EQ(live(64, -10.25), (Live{0x5C, 0x7F}));
  EXPECT_EQ(live(5, 77.0), (Live{77, 1}));  // unknown model: the count itself
  // 120 V from 10 s on: 480 counts, 240 at code 1; the recording keeps range 0.
  LoggerConfig c = Signal(18, SignalKind::Steps, 20, 100, 10.0);
  c.elapsedAtStart = 10.5;  // last sample at tick 11, 9.67 s
  Firmware fw(c);
  EXPECT_EQ(fw.LiveReading(), (Live{240, 1}));
  EXPECT_EQ(fw.RangeByte(), 0);
  EXPECT_TRUE(fw.RangeMarks().empty());
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
    const auto live = Firmware(Signal(17, SignalKind::Steady, level, 0, 0)).LiveReading();
    ASSERT_EQ(live[1], 16);  // divider 16: room temperature near mid-scale
    const double error = std::abs(celsius(live[0], 16) - level);
    EXPECT_LE(error, std::abs(celsius(live[0] + 1, 16) - level)) << level;
    if (live[0] > 0) {
      EXPECT_LE(error, std::abs(celsius(live[0] - 1, 16) - level)) << level;
    }
  }
}

TEST(FirmwareCalibration, HighAndLowCalibrationsAreNotedWithTheirTime) {
  LoggerConfig c;
  c.modelCode = 64;
  c.elapsedAtStart = 100 * kTick;
  Firmware fw(c);
  fw.Calibrate('H');
  fw.AdvanceTo(200 * kTick);
  fw.Calibrate('L');
  ASSERT_EQ(fw.Calibrations().size(), 2u);
  EXPECT_EQ(fw.Calibrations()[0].letter, 'H');
  EXPECT_EQ(fw.Calibrations()[0].tick, 100u);
  EXPECT_EQ(fw.Calibrations()[1].letter, 'L');
  EXPECT_EQ(fw.Calibrations()[1].tick, 200u);
}

TEST(FirmwareConfig, ALoggerThatCannotExistIsRefusedWithAMessage) {
  auto refused = [](auto change) {
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

}  // namespace
}  // namespace quillet::sim
