#include "sim/firmware/sim_options.h"

#include <gtest/gtest.h>

#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

namespace quillet::sim {
namespace {

std::vector<std::string> Words(const std::string& line) {
  std::istringstream in(line);
  return {std::istream_iterator<std::string>(in), {}};
}

TEST(SimOptions, DurationsTakeSecondsMinutesHoursDaysWeeksMonthsAndYears) {
  const std::pair<const char*, double> durations[] = {
      {"90", 90},     {"90s", 90},       {"15m", 900},    {"1.5h", 5400}, {"2d", 172800},
      {"1w", 604800}, {"6mo", 15552000}, {"1y", 31536000}};  // months of 30 days, years of 365
  for (auto [text, seconds] : durations) EXPECT_EQ(ParseDuration(text), seconds) << text;
  for (const char* bad : {"", "h", "-3h", "3x", "3 h", "mo"})
    EXPECT_THROW(ParseDuration(bad), std::invalid_argument) << bad;
}

TEST(SimOptions, EveryOptionReachesTheConfiguration) {
  const SimOptions o = ParseSimOptions(
      Words("--model 24 --baud=4800 --serial 65535 --memory 2 --signal sine --level -3.5 "
            "--elapsed 6mo --link /tmp/x --pause-after-ack 40 --ignore-blocks 2 --cut-block 100 "
            "--noise-before-reply 5 --silent-after 1m --silent-for 30s --extra-bytes 0 --range 1 --verbose"));
  const LoggerConfig& c = o.config;
  EXPECT_EQ(std::tuple(c.modelCode, c.baud, c.serial, c.memorySizeCode, c.signal.kind, c.signal.level),
            std::tuple(24, 4800, 65535, 2, SignalKind::Sine, -3.5));
  EXPECT_EQ(std::tuple(c.elapsedAtStart, o.linkPath, c.extraLayout2Bytes, c.startRange, o.verbose, o.help),
            std::tuple(6 * 30 * 86400.0, "/tmp/x", 0, 1, true, false));
  EXPECT_DOUBLE_EQ(c.pauseAfterAck, 0.04);
  const Faults& f = c.faults;
  EXPECT_EQ(std::tuple(f.ignoreBlocks, f.cutBlockTo, f.noiseBeforeReply, f.silentAfter, f.silentFor),
            std::tuple(2, 100, 5, 60.0, 30.0));
}

TEST(SimOptions, BadOptionsAreRefusedWithOneLineThatNamesTheProblem) {
  auto refusal = [](const std::string& args) {
    try {
      ParseSimOptions(Words(args));
    } catch (const std::invalid_argument& e) {
      return std::string(e.what());
    }
    return std::string();
  };
  // Each refusal names the option or the value at fault (12: no thermistor divider).
  const std::pair<const char*, const char*> refusals[] = {{"--baud 2400", "--baud"},
                                                          {"--model 128", "--model"},
                                                          {"--model 1x", "--model"},
                                                          {"--frobnicate", "--frobnicate"},
                                                          {"--serial", "--serial"},
                                                          {"--signal square", "square"},
                                                          {"--silent-after 10", "--silent-for"},
                                                          {"--range 12", "12"}};
  for (auto [args, named] : refusals) EXPECT_NE(refusal(args).find(named), std::string::npos) << named;
  for (const char* args : {"--memory 6", "--elapsed soon"}) {
    EXPECT_NE(refusal(args), "") << args;
    EXPECT_EQ(refusal(args).find('\n'), std::string::npos) << args;
  }
  EXPECT_TRUE(ParseSimOptions({"--help"}).help);
}

}  // namespace
}  // namespace quillet::sim
