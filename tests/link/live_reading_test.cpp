// The live reading against the emulated logger: detection at either speed, the value
// with its unit, overload, and what shows when no unit is known.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/emulated_logger.h"

namespace quillet {
namespace {

using testing::AppOptions;
using testing::EmulatedLoggerApp;
using testing::ProbeChoice;

sim::LoggerConfig Steady(int model, double level, int baud = 1200) {
  sim::LoggerConfig c;
  c.modelCode = model;
  c.baud = baud;
  c.serial = 4711;
  c.elapsedAtStart = 120;
  c.signal.kind = sim::SignalKind::Steady;
  c.signal.level = level;
  return c;
}

TEST(LiveReading, ALoggerIsFoundAtEitherSpeedAndShowsItsValueFromTheReadingAfterItsHeader) {
  for (int speed : {1200, 4800}) {
    SCOPED_TRACE(speed);
    AppOptions o;
    o.appBaud = speed == 1200 ? 4800 : 1200;          // the program starts at the other speed
    EmulatedLoggerApp t(Steady(18, 25.0, speed), o);  // 100 counts in range code 0
    std::vector<std::string> readings;
    t.app->onLiveReadingShown = [&] {
      const Log1View& w = t.w();
      readings.push_back((w.Label19.visible ? w.Label19.caption : "-") + "|" + w.Label21.caption +
                         (w.Label21.visible ? "" : "(hidden)"));
    };
    t.Run(12000);
    ASSERT_GE(readings.size(), 2u);
    // The first reply does not say what the logger is: nothing shows until its header.
    EXPECT_TRUE(readings[0] == "-|" || readings[0] == "-|(hidden)") << readings[0];
    EXPECT_EQ(readings[1], "25.00|V rms");
    EXPECT_EQ(t.s().settings.BaudRate.Value(), speed);
    EXPECT_EQ(t.w().Label13.caption, "COM 1");
    EXPECT_EQ(t.w().Label34.caption, "Q21");
    EXPECT_EQ(t.Count('R'), 1u);  // one header per logger found
  }
}

TEST(LiveReading, TheValueAndUnitShowOnlyWhenBothAreKnownAndInRange) {
  AppOptions f;
  f.fahrenheit = 1;
  AppOptions noUnit;
  noUnit.lastProbe = ProbeChoice{"NU-1", "", "2"};
  sim::LoggerConfig probe = Steady(16, 10.0);
  probe.probeFactor = 2;
  const struct {
    sim::LoggerConfig config;
    AppOptions options;
    const char *label, *value, *unit;
    bool valueShown;
    int unitShown;  // -1: either
  } cases[] = {
      {Steady(18, 600.0), {}, "Q21", "OL", "V rms", true, 0},      // the top of the last range: overload
      {Steady(18, 500.0), {}, "Q21", "500.00", "V rms", true, 1},  // 250 counts in range code 3
      {probe, noUnit, "NU-1", nullptr, "", false, -1},             // a probe with no unit
      {Steady(64, 32.0), f, "J Thermocouple", "89.60", "degF", true, 1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.label);
    EmulatedLoggerApp t(c.config, c.options);
    t.Run(7000);
    EXPECT_EQ(t.w().Label34.caption, c.label);
    EXPECT_TRUE(t.w().Label34.visible);
    if (c.value) {
      EXPECT_EQ(t.w().Label19.caption, c.value);
    }
    EXPECT_EQ(t.w().Label21.caption, c.unit);
    EXPECT_EQ(t.w().Label19.visible, c.valueShown);
    if (c.unitShown >= 0) {
      EXPECT_EQ(t.w().Label21.visible, c.unitShown == 1);
    }
    EXPECT_GE(t.Count('D'), 3u);  // the readings come, whether they show or not
  }
}

TEST(LiveReading, ALoggerTakenAwayIsForgottenAndFoundAgainWithItsHeader) {
  EmulatedLoggerApp t(Steady(17, 21.0));
  t.Run(5000);
  ASSERT_EQ(t.s().link.LoggerSeen, 1);
  t.plugged = false;
  t.Run(5000);
  EXPECT_EQ(t.s().link.LoggerSeen, 0);
  t.plugged = true;
  t.Run(8000);  // the speed was kept: the next poll finds it
  EXPECT_EQ(t.s().link.LoggerSeen, 1);
  EXPECT_EQ(t.Count('R'), 2u);
  EXPECT_EQ(t.w().Label21.caption, "degC");
  EXPECT_TRUE(t.w().Label19.visible);
}

// A logger that answers "D" only after 400 ms, over a line that hands each three-byte reply
// over in one read (as a pseudo-terminal does). The poll repeats "D" every 200 ms until an
// acknowledge comes, so two requests are out; the first reply's acknowledge and payload
// are taken in one read, the payload is dropped, and the second reply's acknowledge is
// then read as the first's payload. The live exchange has no place to tell the two apart:
// the read in the acknowledge phase takes all waiting bytes and looks at the first only,
// and the flush before a request comes before either reply has arrived. Kept as it is;
// the value is right again from the next exchange on.
TEST(LiveReading, ASlowLoggerWhoseReplyComesInOneReadIsReadOutOfStepOnce) {
  sim::LoggerConfig c = Steady(18, 25.0);
  c.turnaround = 0.4;
  EmulatedLoggerApp t(c);
  auto byteWise = t.transport.peer;
  t.transport.peer = [byteWise](const std::string& bytes, double now, int baud, int stopBits) {
    std::vector<testing::TimedReply> out = byteWise(bytes, now, baud, stopBits);
    if (out.size() == 3) {
      for (testing::TimedReply& r : out) r.atSeconds = out.back().atSeconds;
    }
    return out;
  };
  std::vector<std::string> values;
  t.app->onLiveReadingShown = [&] {
    if (t.w().Label19.visible) values.push_back(t.w().Label19.caption);
  };
  t.Run(20000);
  ASSERT_GE(values.size(), 3u);
  EXPECT_NE(values[0], "25.00");  // the acknowledge 0x04 read as the count
  EXPECT_EQ(values.back(), "25.00");
}

}  // namespace
}  // namespace quillet
