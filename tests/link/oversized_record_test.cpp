// A logger whose memory holds more samples than a record can: the download ends without
// a record, and the program carries on with what it had on screen.
#include <gtest/gtest.h>

#include <sstream>

#include "storage/record_file.h"
#include "support/emulated_logger.h"

namespace quillet {
namespace {

using testing::EmulatedLoggerApp;

TEST(OversizedRecord, ALoggerHoldingMoreThan16384SamplesEndsTheDownloadAndKeepsTheRecordOnScreen) {
  sim::LoggerConfig c;
  c.modelCode = 17;
  c.serial = 317;
  c.memorySizeCode = 4;          // 32768 one-byte samples
  c.elapsedAtStart = 5 * 3600;   // one sample a tick: past the first half fill
  c.signal.kind = sim::SignalKind::Steady;
  EmulatedLoggerApp t(c);
  t.OpenThreeSampleRecord();
  ASSERT_EQ(t.s().record.FullSampleCount.Value(), 3);

  t.plugged = true;
  t.Connect();
  ASSERT_EQ(t.s().link.LoggerSeen, 1);
  ASSERT_GT(t.s().logger.StoredSamples.Value(), 16384);
  ASSERT_TRUE(t.Download(600000));
  ASSERT_FALSE(t.RequestTimes('T').empty());

  EXPECT_FALSE(t.ui.ended);
  EXPECT_TRUE(t.ui.fatal.empty());
  const SampleRecord& r = t.s().record;
  EXPECT_EQ(r.FullSampleCount.Value(), 3);
  EXPECT_EQ(r.RecordSampleCount.Value(), 3);
  EXPECT_EQ(r.FullValues[2].Value(), 2.5);
  EXPECT_EQ(r.RecordUnitText, "Volt");
  EXPECT_EQ(r.LoggerNumber.Value(), 42);
  EXPECT_EQ(t.w().Label40.caption, "3");
  EXPECT_FALSE(t.w().busy);
  for (const Control* m : {&t.w().mnuFile, &t.w().mnuSetTime, &t.w().mnuDownload, &t.w().mnuDate,
                           &t.w().mnuHelp, &t.w().mnuPort, &t.w().mnuSaveTXT, &t.w().mnuPGraph}) {
    EXPECT_TRUE(m->enabled);
  }
  EXPECT_EQ(t.s().link.LinkMode, 0);
  EXPECT_EQ(t.s().link.DownloadActive, 0);
  // The link goes on: live readings come back, and a file can still be saved.
  const std::size_t polls = t.Count('D');
  t.Run(5000);
  EXPECT_GT(t.Count('D'), polls);
}

}  // namespace
}  // namespace quillet
