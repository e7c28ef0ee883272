#include "sim/firmware/sim_options.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace quillet::sim {
namespace {

std::string Refusal(const std::vector<std::string>& args) {
  try {
    ParseSimOptions(args);
  } catch (const std::invalid_argument& e) {
    return e.what();
  }
  return "";
}

TEST(SimOptions, DurationsTakeSecondsMinutesHoursDaysWeeksMonthsAndYears) {
  for (auto [text, seconds] : {std::pair{"90", 90.0},
                               {"90s", 90},
                               {"15m", 900},
                               {"1.5h", 5400},
                               {"2d", 172800},
                               {"1w", 604800},
                               {"6mo", 6 * 30 * 86400},
                               {"1y", 365 * 86400}})
    EXPECT_EQ(ParseDuration(text), seconds) << text;
  for (const char* bad : {"", "h", "-3h", "3x", "3 h", "mo"})
    EXPECT_THROW(ParseDuration(bad), std::invalid_argument) << bad;
}

TEST(SimOptions, EveryOptionReachesTheConfiguration) {
  const SimOptions o = ParseSimOptions({"--model",     "24",
                                        "--baud=4800", "--serial",
                                        "65535",       "--memory",
                                        "2",           "--signal",
                                        "sine",        "--level",
                                        "-3.5",        "--elapsed",
                                        "6mo",         "--link",
                                        "/tmp/x",      "--pause-after-ack",
                                        "40",          "--ignore-blocks",
                                        "2",           "--cut-block",
                                        "100",         "--noise-before-reply",
                                        "5",           "--silent-after",
                                        "1m",          "--silent-for",
                                        "30s",         "--extra-bytes",
                                        "0",           "--range",
                                        "1",           "--verbose"});
  const LoggerConfig& c = o.config;
  EXPECT_EQ(c.modelCode, 24);
  EXPECT_EQ(c.baud, 4800);
  EXPECT_EQ(c.serial, 65535);
  EXPECT_EQ(c.memorySizeCode, 2);
  EXPECT_EQ(c.signal.kind, SignalKind::Sine);
  EXPECT_EQ(c.signal.level, -3.5);
  EXPECT_EQ(c.elapsedAtStart, 6 * 30 * 86400.0);
  EXPECT_EQ(o.linkPath, "/tmp/x");
  EXPECT_DOUBLE_EQ(c.pauseAfterAck, 0.04);
  EXPECT_EQ(c.faults.ignoreBlocks, 2);
  EXPECT_EQ(c.faults.cutBlockTo, 100);
  EXPECT_EQ(c.faults.noiseBeforeReply, 5);
  EXPECT_EQ(c.faults.silentAfter, 60.0);
  EXPECT_EQ(c.faults.silentFor, 30.0);
  EXPECT_EQ(c.extraLayout2Bytes, 0);
  EXPECT_EQ(c.startRange, 1);
  EXPECT_TRUE(o.verbose);
  EXPECT_FALSE(o.help);
}

TEST(SimOptions, BadOptionsAreRefusedWithOneLineThatNamesTheProblem) {
  for (auto [args, named] : std::vector<std::pair<std::vector<std::string>, std::string>>{
           {{"--baud", "2400"}, "--baud"},
           {{"--model", "128"}, "--model"},
           {{"--model", "1x"}, "--model"},
           {{"--frobnicate"}, "--frobnicate"},
           {{"--serial"}, "--serial"},
           {{"--signal", "square"}, "square"},
           {{"--silent-after", "10"}, "--silent-for"},
           {{"--range", "12"}, "12"}})  // 12: no thermistor divider
    EXPECT_NE(Refusal(args).find(named), std::string::npos) << named;
  for (const auto& args : std::vector<std::vector<std::string>>{{"--memory", "6"}, {"--elapsed", "soon"}})
    EXPECT_EQ(Refusal(args).find('\n'), std::string::npos);
  EXPECT_TRUE(ParseSimOptions({"--help"}).help);
}

}  // namespace
}  // namespace quillet::sim
