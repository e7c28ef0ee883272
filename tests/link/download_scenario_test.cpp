// Downloads from the emulated logger in virtual time: the whole program fetches header and
// block over the fake line, and the record on screen is held against the samples the
// firmware really took: value, range and time of each.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "link/timeset.h"
#include "measure/conversion.h"
#include "measure/probe_table.h"
#include "sim/desktop_reading.h"
#include "storage/record_file.h"
#include "support/emulated_logger.h"

namespace quillet {
namespace {

using sim::testing::DesktopHeader;
using sim::testing::DesktopSample;
using sim::testing::ReadHeaderAsDesktop;
using sim::testing::WalkAsDesktop;
using testing::AppOptions;
using testing::EmulatedLoggerApp;
using testing::ProbeChoice;

constexpr double kTickSeconds = 0.87890625;
constexpr double kTicksPerDay = 98304;
constexpr double kAppStart = 46347.5;  // the test clock: 2026-11-21 12:00:00
constexpr double kTwoSeconds = 2.0 / 86400;

// Models whose stored samples read their range byte as a range code; 32 is not one.
bool RecordRangeForm(int model) {
  const int models[] = {16, 18, 19, 20, 22, 24, 25, 26, 27, 28, 29, 30, 31};
  return std::find(std::begin(models), std::end(models), model) != std::end(models);
}

// The range input a sample taken at `range` is converted with.
double DivisorOf(int model, int range, int bytesPerSample) {
  if (bytesPerSample == 2) return 1;  // the live reading's 1 stands for two-byte loggers
  if (RecordRangeForm(model)) return std::ldexp(1.0, -(range % 4));
  return range;  // the thermistor's divider, or a plain byte
}

// Holds the record on screen against the firmware as it answered the last header: one
// entry per stored sample, each with the raw count it stored, converted at the range it
// was taken in, and its time. Where the unfolding's running count is only approximate
// (more half fills than the memory has address bits), a sample next to a range mark can
// land on the wrong side of it; there the unfolding's rule is what the record must hold,
// and such samples are counted in the result.
int ExpectRecordIsTheTruth(EmulatedLoggerApp& t, const sim::LoggerConfig& c) {
  const double loggerStart = kAppStart - c.elapsedAtStart / 86400;
  const SampleRecord& r = t.s().record;
  const testing::FirmwareTruth& truth = t.truth;
  const DesktopHeader d = ReadHeaderAsDesktop(truth.header);
  const std::size_t n = truth.stored.size();
  EXPECT_EQ(r.RecordSampleCount.Value(), static_cast<double>(n));
  EXPECT_EQ(r.FullSampleCount.Value(), static_cast<double>(n));
  if (r.RecordSampleCount.Value() != static_cast<double>(n)) return -1;

  const double scaleNow = DivisorOf(d.model, d.rangeByte, d.bytesPerSample);
  const ConversionInputs in{t.s().logger.RangeFactor, t.s().settings.UseFahrenheit, &t.s().scales};
  const double firstTime = r.FullTimes[1];
  EXPECT_NEAR(firstTime, loggerStart + truth.samples[truth.stored[0]].tick / kTicksPerDay, kTwoSeconds);

  int ruleCases = 0, failures = 0;
  for (const DesktopSample& step : WalkAsDesktop(d)) {
    const sim::TakenSample& x = truth.samples[truth.stored.at(step.s - 1)];
    const double N = d.bytesPerSample == 1 ? x.raw : x.raw / 16.0 - 2048;
    double D = DivisorOf(d.model, x.range, d.bytesPerSample);
    const double ruleD = std::ldexp(scaleNow, step.rangeSteps);
    if (ruleD != D) {
      // Only an approximate count can put a sample on the other side of a mark.
      EXPECT_NE(step.count, x.counter) << "sample " << step.s;
      ++ruleCases;
      D = ruleD;
    }
    const Number want = ConvertRawToValue(N, d.model, D, in);
    const Number got = r.FullValues[step.s];
    const double wantTime = firstTime + (x.tick - truth.samples[truth.stored[0]].tick) / kTicksPerDay;
    const bool ok = want.IsEmpty() == got.IsEmpty() && want.Value() == got.Value() &&
                    r.ShownValues[step.s].Value() == got.Value() &&
                    std::abs(r.FullTimes[step.s] - wantTime) < 1e-6;
    if (!ok && ++failures <= 3) {
      ADD_FAILURE() << "sample " << step.s << " of " << n << ": value " << got.Value() << " want "
                    << want.Value() << " (raw " << x.raw << ", range " << x.range << ", count " << x.counter
                    << "), time off by " << (r.FullTimes[step.s] - wantTime) * 86400 << " s";
    }
  }
  EXPECT_EQ(failures, 0);
  return ruleCases;
}

sim::LoggerConfig Logger(int model, double elapsedSeconds) {
  sim::LoggerConfig c;
  c.modelCode = model;
  c.serial = 300 + model;
  c.elapsedAtStart = elapsedSeconds;
  c.signal.kind = sim::SignalKind::Steady;
  return c;
}

// Payload bytes of the last block reply.
std::size_t LastBlockBytes(const EmulatedLoggerApp& t) {
  for (auto it = t.line.Commands().rbegin(); it != t.line.Commands().rend(); ++it) {
    if (it->letter == 'T' && it->answered) return it->payloadBytes;
  }
  return 0;
}

std::size_t WrittenBetween(const EmulatedLoggerApp& t, char letter, double fromMs, double toMs) {
  std::size_t n = 0;
  for (double at : t.RequestTimes(letter)) n += at >= fromMs && at <= toMs;
  return n;
}

TEST(Download, ATemperatureLoggerGivesEverySampleWithItsTimeAndTheRecordsFigures) {
  sim::LoggerConfig c = Logger(17, 600);
  c.signal.level = 25;
  EmulatedLoggerApp t(c);
  t.Connect();
  EXPECT_EQ(t.w().Label34.caption, "Temperature");
  EXPECT_EQ(t.w().Label4.caption, "4,096");  // samples an hour at one tick
  EXPECT_EQ(t.w().Label6.caption, "en63");
  const std::string start = t.w().Label2.caption;
  EXPECT_TRUE(start == "21/11/26 11:50:00" || start == "21/11/26 11:49:59") << start;

  ASSERT_TRUE(t.Download());
  ASSERT_FALSE(t.RequestTimes('T').empty());
  EXPECT_EQ(WrittenBetween(t, 'D', t.RequestTimes('T').front(), t.sched.now_ms()),
            0u);  // none while the block comes
  EXPECT_EQ(std::count(t.ui.modals.begin(), t.ui.modals.end(), DialogId::frmTimeset), 1);
  EXPECT_TRUE(t.ui.messages.empty());

  EXPECT_EQ(ExpectRecordIsTheTruth(t, c), 0);
  const SampleRecord& r = t.s().record;
  const int n = static_cast<int>(r.RecordSampleCount.Value());
  EXPECT_GT(n, 680);  // one sample a tick for ten minutes
  EXPECT_EQ(t.w().Label40.caption, std::to_string(n));
  EXPECT_EQ(t.w().Label14.caption, "100");
  EXPECT_EQ(t.w().Label26.caption, std::to_string(n + 2));
  double sum = 0, lo = 1e9, hi = -1e9;
  for (int i = 1; i <= n; ++i) {
    const double v = r.FullValues[i];
    EXPECT_NEAR(v, 25, 0.3);
    sum += v, lo = std::min(lo, v), hi = std::max(hi, v);
  }
  EXPECT_EQ(std::tuple(r.FullMin.Value(), r.FullMax.Value()), std::tuple(lo, hi));
  EXPECT_NEAR(r.FullAvg, sum / n, 1e-9);
  EXPECT_EQ(std::tuple(r.RecordUnitText, r.RecordModelCode.Value(), r.LoggerNumber.Value(), r.RecordFromFile),
            std::tuple("degC", 17.0, 317.0, 0));
  for (const Control* m : {&t.w().mnuSaveTXT, &t.w().mnuPGraph, &t.w().mnuPData, &t.w().mnuGClip})
    EXPECT_TRUE(m->enabled);
  // The live reading comes back once the download is over.
  const std::size_t polls = t.Count('D');
  t.Run(3000);
  EXPECT_GT(t.Count('D'), polls);
}

TEST(Download, ALayoutTwoLoggerGivesTwoByteSamplesInItsTemperatureUnit) {
  sim::LoggerConfig c = Logger(65, 400);
  c.signal.level = 123.5;  // exact in sixteenths of a degree
  EmulatedLoggerApp t(c);
  t.Connect();
  EXPECT_EQ(t.w().Label34.caption, "K Thermocouple");
  ASSERT_TRUE(t.Download());
  EXPECT_EQ(ExpectRecordIsTheTruth(t, c), 0);
  const SampleRecord& r = t.s().record;
  const int n = static_cast<int>(r.RecordSampleCount.Value());
  EXPECT_GT(n, 450);
  EXPECT_EQ(t.w().Label26.caption, std::to_string(2 * n + 2));
  EXPECT_EQ(r.RecordMemorySize.Value(), 1024);  // 2048 bytes of two-byte slots
  EXPECT_EQ(r.FullMin.Value(), 123.5);
  EXPECT_EQ(r.FullMax.Value(), 123.5);
  EXPECT_EQ(r.RecordUnitText, "degC");
}

TEST(Download, SamplesFromBeforeEachRangeStepAreScaledBackToTheirOwnRange) {
  // 4 counts a volt at code 0; the ramp passes 63.75 V and 127.5 V, so two steps.
  sim::LoggerConfig c = Logger(18, 1000);
  c.signal.kind = sim::SignalKind::Ramp;
  c.signal.level = 40;
  c.signal.slopePerHour = 360;
  EmulatedLoggerApp t(c);
  t.Connect();
  ASSERT_TRUE(t.Download());
  ASSERT_EQ(t.fw().RangeMarks().size(), 2u);
  EXPECT_EQ(ExpectRecordIsTheTruth(t, c), 0);
  // Each value within half a count of its own range of the voltage the logger saw.
  const SampleRecord& r = t.s().record;
  for (std::size_t s = 1; s <= t.truth.stored.size(); ++s) {
    const sim::TakenSample& x = t.truth.samples[t.truth.stored[s - 1]];
    EXPECT_NEAR(r.FullValues[static_cast<long>(s)], x.value, std::ldexp(0.125, x.range) + 1e-9) << s;
  }
  EXPECT_GT(r.FullMax.Value(), 130);
  EXPECT_LT(r.FullMin.Value(), 41);
  EXPECT_EQ(t.w().Label21.caption, "V rms");
}

TEST(Download, MarksAtTheFirstAndAtTheNewestSampleAreUndoneExactly) {
  // A thinned memory (eight half fills, 112 s between samples). The reading outgrows
  // range 0 at the very first sample, so that mark is count 0 and reads as no mark; a
  // step of the signal then outgrows range 1 exactly at the newest sample.
  sim::LoggerConfig c = Logger(18, 1024 * 128 * 1.5 * kTickSeconds);
  sim::Firmware probe(c);
  const double stepAt = static_cast<double>(probe.NextSampleTick()) * kTickSeconds;
  c.signal.kind = sim::SignalKind::Steps;
  c.signal.level = 100;  // 400 counts at code 0, 200 at code 1
  c.signal.amplitude = 60;
  c.signal.periodSeconds = stepAt;
  c.elapsedAtStart = stepAt + 1;
  EmulatedLoggerApp t(c);
  t.Connect();
  ASSERT_TRUE(t.Download());
  const std::vector<std::uint32_t> marks = t.fw().RangeMarks();
  ASSERT_EQ(marks.size(), 2u);
  EXPECT_EQ(marks[1], 0u);
  const SampleRecord& r = t.s().record;
  ASSERT_EQ(r.RecordHalfFills.Value(), 8);
  const long n = static_cast<long>(r.RecordSampleCount.Value());
  EXPECT_EQ(marks[0], t.truth.samples[t.truth.stored.back()].counter);
  EXPECT_EQ(r.FullValues[n].Value(), 160);
  EXPECT_EQ(r.FullValues[n - 1].Value(), 100);
  EXPECT_EQ(r.FullValues[1].Value(), 100);
  EXPECT_EQ(ExpectRecordIsTheTruth(t, c), 0);
}

TEST(Download, ACustomLoggerReadsItsLiveByteAsARangeCodeButItsRecordWithThePlainByte) {
  // 20 counts a unit at the plain byte 1; the profile maps u to 10 u.
  sim::LoggerConfig c = Logger(32, 300);
  c.signal.level = 10;  // 200 counts
  AppOptions o;
  o.unit32 = "mV";
  EmulatedLoggerApp t(c, o);
  for (int i = 0; i <= 10; ++i) {
    t.s().scales.ScaleTable[i] = Cell::OfNumber(10 * i);
    t.s().scales.ScaleSlope[i] = Cell::OfNumber(10);
  }
  t.Connect();
  EXPECT_EQ(t.w().Label34.caption, "Custom");
  EXPECT_EQ(t.w().Label19.caption, "20.00");  // byte 1 read as code 1: half the divisor
  EXPECT_EQ(t.w().Label21.caption, "mV");
  // Between the header and the first block request the link is idle, and a live poll
  // that falls there overwrites the range byte the record takes over. Start so that
  // none does (the header at 6.4 s, the block asked for at 7.2 s, the next poll at 8 s).
  t.Run(1100);
  ASSERT_TRUE(t.Download());
  ASSERT_EQ(WrittenBetween(t, 'D', t.RequestTimes('R').back(), t.RequestTimes('T').front()), 0u);
  EXPECT_EQ(ExpectRecordIsTheTruth(t, c), 0);
  EXPECT_EQ(t.s().record.FullMin.Value(), 10);
  EXPECT_EQ(t.s().record.FullMax.Value(), 10);
  EXPECT_EQ(t.s().record.RecordUnitText, "mV");
}

TEST(Download, ACurrentLoggerIsRefusedUntilAProbeIsChosenAndThenUsesIt) {
  sim::LoggerConfig c = Logger(16, 300);
  c.probeFactor = 4;      // CT-50: 8 counts an ampere
  c.signal.level = 12.5;  // 100 counts
  EmulatedLoggerApp t(c);
  t.Connect();
  t.Do(StartDownload);
  ASSERT_EQ(t.ui.messages.size(), 1u);
  EXPECT_EQ(t.ui.messages[0].text, "en71");
  EXPECT_EQ(t.ui.messages[0].title, "en72");
  EXPECT_EQ(t.ui.messages[0].icon, MsgIcon::Stop);
  t.Run(3000);
  EXPECT_EQ(t.Count('T'), 0u);

  t.Run(100);  // past the reply of the live reading sent at this moment
  t.ui.onModal = [&t](DialogId d) {
    if (d == DialogId::Func1) {
      ProbeDialogChoose(*t.app, 1, 1);
      ProbeDialogOk(*t.app, 1);
    } else if (d == DialogId::frmTimeset) {
      SetClock(*t.app);
    }
  };
  t.Do(Func01);
  t.Run(3000);  // the header is read again and a reading shows
  EXPECT_EQ(t.w().Label34.caption, "CT-50");
  EXPECT_EQ(t.w().Label19.caption, "12.50");
  EXPECT_EQ(t.w().Label21.caption, "A rms");
  ASSERT_TRUE(t.Download());
  EXPECT_EQ(t.ui.messages.size(), 1u);
  EXPECT_EQ(ExpectRecordIsTheTruth(t, c), 0);
  EXPECT_EQ(t.s().record.FullMax.Value(), 12.5);
  EXPECT_EQ(t.s().record.FullMin.Value(), 12.5);
  EXPECT_EQ(t.s().record.RecordRangeFactor.Value(), 4);
  EXPECT_EQ(t.s().record.RecordUnitText, "A rms");
}

TEST(Download, EveryDepthOfThinningUnfoldsToTheSamplesTaken) {
  // 2048 slots of one byte. Noise between 10 and 110 V keeps every slot distinct and
  // never outgrows range 0 (127.5 V).
  struct Depth {
    int halfFills;
    double ticks;
    const char* rate;
    const char* rateUnit;
  };
  const Depth depths[] = {
      {0, 700, "4,096", "en63"},
      {1, 1500, "4,096", "en63"},
      {2, 3000, "2,048", "en63"},
      {6, 1024 * 32 * 1.5, "128", "en63"},
      {14, 1024 * 8192 * 1.5, "12", "en64"},  // an interval past M / 2: counts approximate
  };
  for (const Depth& depth : depths) {
    SCOPED_TRACE(depth.halfFills);
    sim::LoggerConfig c = Logger(19, depth.ticks * kTickSeconds);
    c.baud = 4800;
    c.signal.kind = sim::SignalKind::Noise;
    c.signal.level = 60;
    c.signal.amplitude = 50;
    AppOptions o;
    o.appBaud = 4800;
    EmulatedLoggerApp t(c, o);
    t.Connect();
    ASSERT_TRUE(t.Download());
    const SampleRecord& r = t.s().record;
    EXPECT_EQ(r.RecordHalfFills.Value(), depth.halfFills);
    const std::size_t stored = t.truth.stored.size();
    // From two half fills on the stored samples lie scattered and all memory comes.
    const std::size_t asked = depth.halfFills >= 2 ? 2048u : stored;
    EXPECT_GE(LastBlockBytes(t), asked);  // a sample taken after the header may trail
    EXPECT_EQ(t.w().Label26.caption, std::to_string(asked + 2));
    EXPECT_EQ(t.w().Label4.caption, depth.rate);
    EXPECT_EQ(t.w().Label6.caption, depth.rateUnit);
    EXPECT_EQ(ExpectRecordIsTheTruth(t, c), 0);
  }
}

TEST(Download, AStalledBlockIsRestartedByTheWatchdogAndTheClockIsNotAskedAgain) {
  // Block requests go out five times a second; a block not begun gets three seconds.
  sim::LoggerConfig c = Logger(17, 600);
  c.faults.ignoreBlocks = 20;
  EmulatedLoggerApp t(c);
  t.Connect();
  const std::size_t headers = t.Count('R');
  ASSERT_TRUE(t.Download());
  EXPECT_TRUE(t.ui.messages.empty());
  EXPECT_EQ(std::count(t.ui.modals.begin(), t.ui.modals.end(), DialogId::frmTimeset), 1);
  EXPECT_EQ(t.Count('R') - headers, 2u);  // the download's header and the restart's
  EXPECT_GT(t.Count('T'), 20u);
  EXPECT_EQ(ExpectRecordIsTheTruth(t, c), 0);
}

TEST(Download, ABlockCutShortIsFetchedAgainWholeWithoutAskingAgain) {
  sim::LoggerConfig c = Logger(17, 1500);  // 1700 samples, half the memory past full
  c.faults.cutBlockTo = 300;
  c.faults.cutBlocks = 1;
  EmulatedLoggerApp t(c);
  t.Connect();
  t.Do(StartDownload);
  t.Run(8000);
  // The block hangs part way: progress shows, the menus wait.
  EXPECT_EQ(t.s().link.BlockPhase, 1);
  EXPECT_LT(t.s().link.DownloadPercent.Value(), 100);
  EXPECT_GT(t.s().link.DownloadPercent.Value(), 0);
  EXPECT_EQ(t.s().record.RecordSaved.Value(), 0);
  EXPECT_FALSE(t.w().mnuDownload.enabled);
  EXPECT_TRUE(t.w().busy);
  ASSERT_TRUE(t.RunUntilIdle());
  EXPECT_TRUE(t.ui.messages.empty());  // the restart does not ask about the unsaved part
  EXPECT_EQ(std::count(t.ui.modals.begin(), t.ui.modals.end(), DialogId::frmTimeset), 1);
  EXPECT_EQ(t.w().Label26.caption, std::to_string(t.truth.stored.size() + 2));
  EXPECT_EQ(ExpectRecordIsTheTruth(t, c), 0);
}

TEST(Download, AHeaderOfANewLoggerLeavesARecordOpenedFromAFileAlone) {
  sim::LoggerConfig c = Logger(17, 600);
  c.signal.level = 30;
  EmulatedLoggerApp t(c);
  t.OpenThreeSampleRecord();
  const SampleRecord& r = t.s().record;
  ASSERT_EQ(r.RecordFromFile, 1);
  ASSERT_EQ(r.FullSampleCount.Value(), 3);

  t.plugged = true;
  t.Run(10000);
  ASSERT_EQ(t.s().link.LoggerSeen, 1);
  ASSERT_GE(t.Count('R'), 1u);
  EXPECT_EQ(t.w().Label34.caption, "Temperature");
  EXPECT_TRUE(t.w().Label2.visible);
  EXPECT_FALSE(t.w().Label15.visible);
  EXPECT_EQ(t.s().logger.LoggerSerial.Value(), 317);
  EXPECT_EQ(r.RecordFromFile, 1);
  EXPECT_EQ(r.FullSampleCount.Value(), 3);
  EXPECT_EQ(r.RecordSampleCount.Value(), 3);
  EXPECT_EQ(r.FullValues[2].Value(), 2.5);
  EXPECT_EQ(r.FullTimes[3], 46300.75);
  EXPECT_EQ(r.LoggerNumber.Value(), 42);
  EXPECT_EQ(r.RecordUnitText, "Volt");
  EXPECT_EQ(r.RecordTitle, "T1");
  EXPECT_TRUE(t.ui.messages.empty());
}

// Random loggers: model, memory, depth of thinning, signal and speed drawn from a fixed
// seed. The record must be the firmware's truth sample by sample; where the count walk
// of a deeply thinned memory is approximate next to a range mark, the unfolding's rule
// decides (see ExpectRecordIsTheTruth), and the test says how often that happened.
TEST(DownloadProperty, RandomLoggersUnfoldToTheSamplesTheyTook) {
  std::mt19937 rng(20261121);
  auto uniform = [&rng](double lo, double hi) { return std::uniform_real_distribution<double>(lo, hi)(rng); };
  auto pick = [&rng](int n) { return std::uniform_int_distribution<int>(0, n - 1)(rng); };
  struct Model {
    int code;
    double countsPerUnit;  // at range code 0; 0 for the temperature loggers
  };
  const Model models[] = {{16, 8},   {17, 0},  {18, 4}, {19, 2}, {24, 8}, {25, 0.8}, {26, 4},
                          {27, 0.4}, {28, 80}, {30, 8}, {31, 2}, {64, 0}, {65, 0},   {66, 0}};
  const sim::SignalKind kinds[] = {sim::SignalKind::Ramp, sim::SignalKind::Sine, sim::SignalKind::Noise,
                                   sim::SignalKind::Steps};
  int ruleCases = 0, deepRuns = 0;
  for (int run = 0; run < 16; ++run) {
    const Model& model = models[pick(static_cast<int>(std::size(models)))];
    sim::LoggerConfig c;
    c.modelCode = model.code;
    c.serial = 1000 + run;
    c.memorySizeCode = pick(2);
    c.baud = pick(2) ? 4800 : 1200;
    c.probeFactor = 4;
    const double slots = (2048 << c.memorySizeCode) / (model.code >= 64 ? 2 : 1);
    const int deepest = static_cast<int>(std::log2(slots)) + 4;
    const int halfFills = pick(deepest + 1);
    deepRuns += std::pow(2.0, halfFills - 1) > slots / 2;
    const double ticks = halfFills == 0 ? slots / 2 * uniform(0.02, 0.95)
                                        : slots / 2 * std::pow(2.0, halfFills - 1) * uniform(1.05, 1.95);
    c.elapsedAtStart = ticks * kTickSeconds;
    // The signal: from the middle of range 0 to several times its top for range models,
    // through the thermistor's range steps, or across the thermocouples' span.
    sim::Signal& g = c.signal;
    g.kind = kinds[pick(static_cast<int>(std::size(kinds)))];
    g.seed = static_cast<std::uint64_t>(run) + 1;
    const double top = model.countsPerUnit > 0 ? 255 / model.countsPerUnit : 0;
    if (model.code == 17) {
      g.level = uniform(0, 40);
      g.amplitude = uniform(1, 60);
    } else if (model.code >= 64) {
      g.level = uniform(-50, 300);
      g.amplitude = uniform(1, 200);
    } else {
      g.level = top * uniform(0.1, 0.9);
      g.amplitude = top * uniform(0.05, 3);
    }
    g.periodSeconds = c.elapsedAtStart * uniform(0.1, 1);
    g.slopePerHour = g.amplitude / (c.elapsedAtStart / 3600);
    // Keep any thinning out of the minutes the test runs, so the block the program asks
    // for is the memory its header described.
    for (;;) {
      sim::Firmware probe(c);
      const double ticksToThinning = static_cast<double>(probe.NextSampleTick() - probe.Ticks()) +
                                     (probe.MemorySlots() - probe.StoredCount()) * probe.IntervalTicks();
      if (ticksToThinning * kTickSeconds > 300) break;
      c.elapsedAtStart += 600;
    }
    std::ostringstream what;
    what << "run " << run << ": model " << c.modelCode << ", memory code " << c.memorySizeCode << ", "
         << halfFills << " half fills, " << c.baud << " bit/s, signal kind " << static_cast<int>(g.kind);
    SCOPED_TRACE(what.str());

    AppOptions o;
    o.appBaud = pick(2) ? 4800 : 1200;
    o.lastProbe = ProbeChoice{"CT-50", "A rms", "4"};
    EmulatedLoggerApp t(c, o);
    t.Run(12000);  // found, header read, a reading shown
    ASSERT_EQ(t.s().link.LoggerSeen, 1);
    ASSERT_TRUE(t.Download());
    ASSERT_TRUE(t.ui.messages.empty() || t.ui.messages[0].title == "Be Careful");
    const int cases = ExpectRecordIsTheTruth(t, c);
    ASSERT_GE(cases, 0);
    ruleCases += cases;
  }
  EXPECT_GT(deepRuns, 0);  // the draw reaches approximate counts
  RecordProperty("samples decided by the rule next to a mark", ruleCases);
}

}  // namespace
}  // namespace quillet
