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

#include "link/link_supervision.h"
#include "support/emulated_logger.h"

namespace quillet {
namespace {

using testing::EmulatedLoggerApp;

constexpr double kMinute = 60000;

double HeapInUse() { return static_cast<double>(mallinfo2().uordblks); }

TEST(Soak, ADayOfALoggerThatComesAndGoesWithADownloadEveryHour) {
  const char* env = std::getenv("QUILLET_SOAK_HOURS");
  const int hours = env ? std::atoi(env) : 0;
  if (hours <= 0) GTEST_SKIP() << "set QUILLET_SOAK_HOURS to run";

  sim::LoggerConfig c;
  c.modelCode = 17;
  c.elapsedAtStart = 1800;
  c.signal.kind = sim::SignalKind::Sine;
  c.signal.level = 21;
  c.signal.amplitude = 4;
  EmulatedLoggerApp t(c);
  int records = 0;
  t.app->onRecordComplete = [&records] { ++records; };
  t.Connect();

  int asked = 0, finds = 0, longestFindMs = 0;
  double heapAfterFirstHour = 0, heapPeak = 0, farEndLast = 0;
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
    const int before = records;
    ++asked;
    ASSERT_TRUE(t.Download(3 * kMinute)) << "hour " << hour << ": the download did not end";
    ASSERT_EQ(records, before + 1) << "hour " << hour;
    EXPECT_FALSE(t.s().record.FullValues[1].IsEmpty());
    t.Run(3 * kMinute - 1);
    // The test's own logs of the wire and of the user's answers, not the program's.
    t.transport.written.clear();
    t.ui.messages.clear();
    t.ui.modals.clear();
    // The emulator keeps every command and every sample it took: that is the far end's
    // history, not the program's, and is taken off the heap figure.
    const double farEnd = static_cast<double>(t.line.Commands().capacity() * sizeof(sim::LineCommand) +
                                              t.fw().Samples().capacity() * sizeof(sim::TakenSample));
    const double heap = HeapInUse() - farEnd;
    // By the end of the second hour the logger's memory is full and the record has its
    // whole size: from there on the heap must stay flat.
    if (hour == 1) heapAfterFirstHour = heap;
    heapPeak = std::max(heapPeak, heap);
    farEndLast = farEnd;
    if (std::getenv("QUILLET_SOAK_VERBOSE")) std::printf("hour %d: %.0f kB, messages %zu, modals %zu\n", hour + 1, heap / 1024, t.ui.messages.size(), t.ui.modals.size());
  }
  const double growth = heapPeak - heapAfterFirstHour;
  std::printf(
      "soak: %d h, %d downloads, %d records, logger found again %d times (longest %.1f s); heap in use without "
      "the emulator's history (%.0f kB): after hour 2 %.0f kB, peak %.0f kB, growth %.0f kB\n",
      hours, asked, records, finds, longestFindMs / 1000.0, farEndLast / 1024, heapAfterFirstHour / 1024,
      heapPeak / 1024, growth / 1024);
  EXPECT_EQ(records, asked);
  EXPECT_LT(growth, 256 * 1024);
  // The panel at the end: the logger found, its reading and unit shown.
  t.Run(10000);
  EXPECT_EQ(t.s().link.LoggerSeen, 1);
  EXPECT_EQ(t.w().Label13.caption, "COM 1");
  EXPECT_TRUE(t.w().Label19.visible);
  EXPECT_EQ(t.w().Label21.caption, "degC");
  const double shown = std::stod(t.w().Label19.caption);
  EXPECT_NEAR(shown, 21, 4.5);
}

}  // namespace
}  // namespace quillet
