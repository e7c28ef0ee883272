// A two-byte (layout 2) logger downloaded at once after it is found: the header is in
// but no live reading has come since, so the range input must come from the header's
// layout and not from whatever an earlier reading or logger left.
#include <gtest/gtest.h>

#include "support/emulated_logger.h"

namespace quillet {
namespace {

using testing::AppOptions;
using testing::EmulatedLoggerApp;

sim::LoggerConfig LayoutTwoLogger(int model, int baud) {
  sim::LoggerConfig c;
  c.modelCode = model;
  c.serial = 900 + model;
  c.baud = baud;
  c.elapsedAtStart = 300;
  c.signal.kind = sim::SignalKind::Steady;
  c.signal.level = 87.25;  // exact in sixteenths of a degree
  return c;
}

struct Case {
  int model;
  int baud;
  double leftOverScale;  // what an earlier logger left as the range input; 0: nothing
};

class LayoutTwoDownload : public ::testing::TestWithParam<Case> {};

TEST_P(LayoutTwoDownload, StartedRightAfterTheHeaderGivesEverySampleItsValue) {
  const Case k = GetParam();
  AppOptions o;
  o.appBaud = k.baud;
  EmulatedLoggerApp t(LayoutTwoLogger(k.model, k.baud), o);
  if (k.leftOverScale != 0) t.s().logger.ScaleByte = k.leftOverScale;
  // Until the first header is decoded, and not a millisecond further.
  for (int i = 0; i < 400 && t.s().link.HeaderRead != 1; ++i) t.Run(10);
  ASSERT_EQ(t.s().link.HeaderRead, 1);
  const std::size_t readingsBefore = t.Count('D');
  ASSERT_TRUE(t.Download());
  // No live reading came between the header and the block.
  ASSERT_FALSE(t.RequestTimes('T').empty());
  std::size_t between = 0;
  for (double at : t.RequestTimes('D')) between += at < t.RequestTimes('T').front();
  EXPECT_LE(between, readingsBefore + 1);

  const SampleRecord& r = t.s().record;
  const int n = static_cast<int>(r.RecordSampleCount.Value());
  ASSERT_EQ(n, static_cast<int>(t.truth.stored.size()));
  ASSERT_GT(n, 300);
  for (int i = 1; i <= n; ++i) {
    ASSERT_FALSE(r.FullValues[i].IsEmpty()) << "sample " << i;
    ASSERT_EQ(r.FullValues[i].Value(), 87.25) << "sample " << i;
  }
  EXPECT_EQ(r.FullMin.Value(), 87.25);
  EXPECT_EQ(r.FullMax.Value(), 87.25);
  EXPECT_EQ(r.FullAvg.Value(), 87.25);
  EXPECT_EQ(r.RecordScaleByte.Value(), 1);
}

INSTANTIATE_TEST_SUITE_P(Models64To66, LayoutTwoDownload,
                         ::testing::Values(Case{64, 4800, 0}, Case{65, 1200, 0}, Case{66, 4800, 0},
                                           Case{65, 4800, 0.25}));

}  // namespace
}  // namespace quillet
