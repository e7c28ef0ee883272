// The live reading against the emulated logger: detection at either speed, the value
// with its unit, overload, and what shows when no unit is known.
#include <gtest/gtest.h>

#include "link/scenario.h"
#include "log1/startup.h"

namespace quillet {
namespace {

using testing::AppOptions;
using testing::EmulatedLoggerApp;
using testing::SteadyLogger;

// What the panel showed of the value and its unit at each reading in `ms`: "-" for a hidden value.
std::vector<std::string> Readings(EmulatedLoggerApp& t, double ms) {
  std::vector<std::string> readings;
  t.app->onLiveReadingShown = [&t, &readings] {
    const Log1View& w = t.w();
    readings.push_back((w.Label19.visible ? w.Label19.caption : "-") + "|" + w.Label21.caption +
                       (w.Label21.visible ? "" : "(hidden)"));
  };
  t.Run(ms);
  t.app->onLiveReadingShown = nullptr;
  return readings;
}

TEST(LiveReading, ALoggerIsFoundAtEitherSpeedAndShowsItsValueAndUnitOnlyWhenBothAreKnownAndInRange) {
  AppOptions at1200, at4800 = testing::AtSpeed(4800), fahrenheit, noUnit;
  fahrenheit.fahrenheit = 1;
  noUnit.lastProbe = testing::ProbeChoice{"NU-1", "", "2"};
  sim::LoggerConfig probe = SteadyLogger(16, 120, 10);
  probe.probeFactor = 2;
  const struct {
    sim::LoggerConfig config;
    AppOptions options;
    const char *label, *shown;
  } cases[] = {
      {SteadyLogger(18, 120, 25, 4800), at1200, "Q21", "25.00|V rms"},  // 100 counts in range code 0
      {SteadyLogger(18, 120, 25), at4800, "Q21", "25.00|V rms"},        // each found from the other speed
      {SteadyLogger(18, 120, 600), at1200, "Q21", "OL|V rms(hidden)"},  // the top of the last range
      {SteadyLogger(18, 120, 500), at1200, "Q21", "500.00|V rms"},      // 250 counts in range code 3
      {probe, noUnit, "NU-1", "-|"},                                    // a probe with no unit
      {SteadyLogger(64, 120, 32), fahrenheit, "J Thermocouple", "89.60|degF"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.label) + " " + c.shown);
    EmulatedLoggerApp t(c.config, c.options);
    const std::vector<std::string> readings = Readings(t, 12000);
    ASSERT_GE(readings.size(), 3u);
    // The first reply does not say what the logger is: nothing shows until its header.
    EXPECT_TRUE(readings[0] == "-|" || readings[0] == "-|(hidden)") << readings[0];
    EXPECT_EQ(readings[1], c.shown);
    EXPECT_EQ(std::tuple(t.w().Label34.caption, t.w().Label34.visible, t.w().Label13.caption),
              std::tuple(c.label, true, "COM 1"));
    EXPECT_EQ(t.Count('R'), 1u);      // one header per logger found
    ASSERT_TRUE(EndProgram(*t.app));  // the speed it was found at is kept for the next start
    EXPECT_NE(t.ReadFile("logger1.ini").find("\"baud =  " + std::to_string(c.config.baud) + "\""),
              std::string::npos);
  }
}

TEST(LiveReading, ALoggerTakenAwayIsForgottenAndFoundAgainWithItsHeader) {
  EmulatedLoggerApp t(SteadyLogger(17, 120, 21));
  t.Run(5000);
  ASSERT_EQ(t.s().link.LoggerSeen, 1);
  t.plugged = false;
  t.Run(5000);
  EXPECT_EQ(t.s().link.LoggerSeen, 0);
  t.plugged = true;
  t.Run(8000);  // the speed was kept: the next poll finds it
  EXPECT_EQ(std::tuple(t.s().link.LoggerSeen, t.Count('R'), t.w().Label21.caption, t.w().Label19.visible),
            std::tuple(1, 2u, "degC", true));
}

// A logger that answers "D" only after 400 ms, each reply handed over in one read (as a
// pseudo-terminal does): the poll has repeated "D" meanwhile, the acknowledge phase takes
// the first reply whole and looks at its first byte only, and the second reply's acknowledge
// is read as the payload. Kept as it is: the value is right from the next exchange on.
TEST(LiveReading, ASlowLoggerWhoseReplyComesInOneReadIsReadOutOfStepOnce) {
  sim::LoggerConfig c = SteadyLogger(18, 120, 25);
  c.turnaround = 0.4;
  EmulatedLoggerApp t(c);
  auto byteWise = t.transport.peer;
  t.transport.peer = [byteWise](const std::string& bytes, double now, int baud, int stopBits) {
    std::vector<testing::TimedReply> out = byteWise(bytes, now, baud, stopBits);
    if (out.size() == 3)
      for (testing::TimedReply& r : out) r.atSeconds = out.back().atSeconds;
    return out;
  };
  std::vector<std::string> readings = Readings(t, 20000);
  std::erase_if(readings, [](const std::string& r) { return r[0] == '-'; });
  ASSERT_GE(readings.size(), 3u);
  EXPECT_NE(readings[0], "25.00|V rms");  // the acknowledge 0x04 read as the count
  EXPECT_EQ(readings.back(), "25.00|V rms");
}

}  // namespace
}  // namespace quillet
