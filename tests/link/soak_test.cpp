// A day of the window's state in virtual time: the link polls a logger that is plugged
// in for five minutes and pulled for two, over and over, and a download is asked for
// every hour. Each download must end with a record, the link must find the logger again
// after every pull, the heap must stay flat, and the panel must show the reading at the
// end. Runs only when QUILLET_SOAK_HOURS is set (for example 24); it takes a while.
#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "link/scenario.h"

namespace quillet {
namespace {

constexpr double kMinute = 60000;

TEST(Soak, ADayOfALoggerThatComesAndGoesWithADownloadEveryHour) {
  const int hours = std::getenv("QUILLET_SOAK_HOURS") ? std::atoi(std::getenv("QUILLET_SOAK_HOURS")) : 0;
  if (hours <= 0) GTEST_SKIP() << "set QUILLET_SOAK_HOURS to run";
  sim::LoggerConfig c = testing::SteadyLogger(17, 1800);
  c.signal = {sim::SignalKind::Sine, 21, 4};
  testing::EmulatedLoggerApp t(c);
  int records = 0, finds = 0, longestFindMs = 0;
  t.app->onRecordComplete = [&records] { ++records; };
  t.Connect();
  double heapAfterSecondHour = 0, heapPeak = 0, farEnd = 0;
  for (int hour = 0; hour < hours; ++hour) {
    // Eight cycles of five minutes plugged in and two pulled, then four plugged.
    for (int cycle = 0; cycle < 8; ++cycle) {
      t.plugged = true;
      const double back = t.sched.now_ms();
      bool found = false;
      for (int step = 0; step < 5 * 60; ++step) {
        t.Run(1000);
        if (!found && t.s().link.LoggerSeen == 1) {
          found = true;
          ++finds;
          longestFindMs = std::max(longestFindMs, static_cast<int>(t.sched.now_ms() - back));
        }
      }
      ASSERT_TRUE(found) << "hour " << hour << " cycle " << cycle;
      t.plugged = false;
      t.Run(2 * kMinute);
      EXPECT_EQ(t.s().link.LoggerSeen, 0) << "the pull was not noticed, hour " << hour;
    }
    t.plugged = true;
    t.Run(kMinute);
    ASSERT_TRUE(t.Download(3 * kMinute)) << "hour " << hour << ": the download did not end";
    ASSERT_EQ(records, hour + 1) << "hour " << hour;
    EXPECT_FALSE(t.s().record.FullValues[1].IsEmpty());
    t.Run(3 * kMinute - 1);
    // The test's own logs of the wire and of the user's answers are not the program's, and
    // neither is the emulator's history of every command and sample, nor the copy of it the
    // fixture takes at each header as the truth: off the heap figure.
    t.transport.written.clear();
    t.ui.messages.clear();
    t.ui.modals.clear();
    const std::size_t samples = t.fw().Samples().capacity() + t.truth.samples.capacity();
    farEnd = static_cast<double>(t.line.Commands().capacity() * sizeof(sim::LineCommand) +
                                 samples * sizeof(sim::TakenSample) +
                                 t.truth.stored.capacity() * sizeof(std::size_t));
    const double heap = static_cast<double>(mallinfo2().uordblks) - farEnd;
    // By the end of the second hour the logger's memory is full and the record has its
    // whole size: from there on the heap must stay flat.
    if (hour == 1) heapAfterSecondHour = heap;
    heapPeak = std::max(heapPeak, heap);
  }
  std::printf(
      "soak: %d h, %d records, logger found again %d times (longest %.1f s); heap in use without the "
      "emulator's history (%.0f kB): after hour 2 %.0f kB, peak %.0f kB\n",
      hours, records, finds, longestFindMs / 1000.0, farEnd / 1024, heapAfterSecondHour / 1024,
      heapPeak / 1024);
  EXPECT_LT(heapPeak - heapAfterSecondHour, 256 * 1024);
  // The panel at the end: the logger found, its reading and unit shown.
  t.Run(10000);
  EXPECT_EQ(
      std::tuple(t.s().link.LoggerSeen, t.w().Label13.caption, t.w().Label19.visible, t.w().Label21.caption),
      std::tuple(1, "COM 1", true, "degC"));
  EXPECT_NEAR(std::stod(t.w().Label19.caption), 21, 4.5);
}

}  // namespace
}  // namespace quillet
