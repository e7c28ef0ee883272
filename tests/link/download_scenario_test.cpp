// Downloads from the emulated logger in virtual time: the whole program fetches header and
// block over the fake line, and the record on screen is held against the samples the
// firmware really took: value, range and time of each.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <set>

#include "link/scenario.h"
#include "link/timeset.h"
#include "measure/conversion.h"
#include "measure/probe_table.h"
#include "storage/record_file.h"

namespace quillet {
namespace {

using testing::AppOptions;
using testing::EmulatedLoggerApp;
using testing::SteadyLogger;

constexpr double kTickSeconds = 0.87890625;
constexpr double kTicksPerDay = 98304;
constexpr double kAppStart = 46347.5;  // the test clock: 2026-11-21 12:00:00

// How the desktop reads a header and walks its memory from the newest sample to the oldest,
// restated in its own floating-point arithmetic without sharing code with the program or
// the emulator: the running count it gives each sample and the range steps it undoes.
struct DesktopStep {
  int s;
  double count;
  int rangeSteps;
};
struct DesktopReading {
  int bytesPerSample, model, rangeByte;
  std::vector<DesktopStep> walk;
};

DesktopReading ReadAsDesktop(const std::vector<std::uint8_t>& header) {
  auto at = [&header](int position) { return static_cast<double>(header.at(position - 1)); };
  const bool one = at(17) < 64;  // layout 1: one-byte samples, marks and a range byte
  DesktopReading d{one ? 1 : 2, static_cast<int>(at(17)), one ? static_cast<int>(at(22)) : 0, {}};
  const double M = std::pow(2.0, at(1) > 5 ? 0 : at(1)) * 2048 / d.bytesPerSample;
  std::array<double, 5> marks{};  // newest first; 0 where none
  for (int i = 0; one && i < 4; ++i) {
    const double v = at(4 + 2 * i) + 256 * at(5 + 2 * i);
    marks[i] = v == 65535 ? 0 : v;
  }
  const int c = one ? 12 : 11;  // the clock's first byte
  const double c3 = at(c + 3) - 16 * std::floor(at(c + 3) / 16);
  const double days = at(c) / 98304 + at(c + 1) / 384 + at(c + 2) * 2 / 3 + c3 * 512 / 3;
  const double w1 = at(19), w2 = one ? 0 : at(20);
  double H = std::floor((w1 + 256 * w2) / (M / 512));
  if (H > 100 || days == 0) H = 0;
  double f = (days == 0 ? 0 : at(18) + 256 * w1 + 65536 * w2) - H * M / 2, h = H;
  int k = 0;
  for (double s = H == 0 ? f + 1 : f + M / 2 + 1; s >= 1; --s) {
    const double count = f + (M / 2) * h;
    while (k < 5 && marks[k] > count) ++k;
    d.walk.push_back({static_cast<int>(s), count, k});
    if (f == 0) h = std::max(h - 1, 0.0);
    const double step = std::pow(2.0, (H == 0 ? 1 : H) - (h == 0 ? 1 : h));
    f = std::max(f > 0 ? f - step : M / 2 - step, 0.0);
  }
  return d;
}

// The range input a sample taken at `range` is converted with: 1 for two-byte loggers, the
// range code for the models that store one (32 does not), else the divider or plain byte.
double DivisorOf(int model, int range, int bytesPerSample) {
  const std::set<int> rangeCodeModels = {16, 18, 19, 20, 22, 24, 25, 26, 27, 28, 29, 30, 31};
  if (bytesPerSample == 2) return 1;
  return rangeCodeModels.count(model) ? std::ldexp(1.0, -(range % 4)) : range;
}

// Holds the record on screen against the firmware as it answered the last header: each
// stored sample's raw count converted at the range it was taken in, and its time. Where the
// running count is only approximate (more half fills than the memory has address bits), a
// sample next to a range mark may land on the wrong side of it: there the unfolding's rule
// decides, and such samples are counted in the result.
int ExpectRecordIsTheTruth(EmulatedLoggerApp& t, const sim::LoggerConfig& c) {
  const SampleRecord& r = t.s().record;
  const testing::FirmwareTruth& truth = t.truth;
  const DesktopReading d = ReadAsDesktop(truth.header);
  const double n = static_cast<double>(truth.stored.size());
  EXPECT_EQ(r.FullSampleCount.Value(), n);
  EXPECT_EQ(r.RecordSampleCount.Value(), n);
  if (r.RecordSampleCount.Value() != n) return -1;
  const ConversionInputs in{t.s().logger.RangeFactor, t.s().settings.UseFahrenheit, &t.s().scales};
  const sim::TakenSample& first = truth.samples[truth.stored[0]];
  EXPECT_NEAR(r.FullTimes[1], kAppStart - c.elapsedAtStart / 86400 + first.tick / kTicksPerDay, 2.0 / 86400);
  int ruleCases = 0, failures = 0;
  for (const DesktopStep& step : d.walk) {
    const sim::TakenSample& x = truth.samples[truth.stored.at(step.s - 1)];
    double D = DivisorOf(d.model, x.range, d.bytesPerSample);
    const double ruleD = std::ldexp(DivisorOf(d.model, d.rangeByte, d.bytesPerSample), step.rangeSteps);
    if (ruleD != D) {
      EXPECT_NE(step.count, x.counter) << "sample " << step.s;  // only an approximate count does that
      ++ruleCases;
      D = ruleD;
    }
    const Number want =
        ConvertRawToValue(d.bytesPerSample == 1 ? x.raw : x.raw / 16.0 - 2048, d.model, D, in);
    const Number got = r.FullValues[step.s];
    const double wantTime = r.FullTimes[1] + (x.tick - first.tick) / kTicksPerDay;
    const bool ok = want.IsEmpty() == got.IsEmpty() && want.Value() == got.Value() &&
                    r.ShownValues[step.s].Value() == got.Value() &&
                    std::abs(r.FullTimes[step.s] - wantTime) < 1e-6;
    if (!ok && ++failures <= 3) {
      ADD_FAILURE() << "sample " << step.s << " of " << n << ": " << got.Value() << ", want " << want.Value()
                    << " (raw " << x.raw << ", range " << x.range << "), time off by "
                    << (r.FullTimes[step.s] - wantTime) * 86400 << " s";
    }
  }
  EXPECT_EQ(failures, 0);
  return ruleCases;
}

// The clock dialog came once on the way, and no message.
void ExpectAskedNothingButTheClock(const EmulatedLoggerApp& t) {
  EXPECT_EQ(std::count(t.ui.modals.begin(), t.ui.modals.end(), DialogId::frmTimeset), 1);
  EXPECT_TRUE(t.ui.messages.empty());
}

auto Figures(EmulatedLoggerApp& t) {
  return std::tuple(t.s().record.FullMin.Value(), t.s().record.FullMax.Value(), t.s().record.RecordUnitText);
}

std::size_t WrittenBetween(const EmulatedLoggerApp& t, char letter, double fromMs, double toMs) {
  std::size_t n = 0;
  for (double at : t.RequestTimes(letter)) n += at >= fromMs && at <= toMs;
  return n;
}

// A record of three samples from a file (logger 42, "Volt": 1.5, 2.5, -3) stays on screen.
void ExpectThreeSampleRecord(EmulatedLoggerApp& t) {
  const SampleRecord& r = t.s().record;
  EXPECT_EQ(std::tuple(r.FullSampleCount.Value(), r.RecordSampleCount.Value(), r.FullValues[2].Value(),
                       r.FullTimes[3], r.LoggerNumber.Value(), r.RecordUnitText, r.RecordTitle),
            std::tuple(3, 3, 2.5, 46300.75, 42, "Volt", "T1"));
}

TEST(Download, ATemperatureLoggerGivesEverySampleWithItsTimeAndTheRecordsFigures) {
  const sim::LoggerConfig c = SteadyLogger(17, 600, 25);
  EmulatedLoggerApp t(c);
  t.Connect();
  EXPECT_EQ(t.w().Label34.caption, "Temperature");
  const std::string start = t.w().Label2.caption;
  EXPECT_TRUE(start == "21/11/26 11:50:00" || start == "21/11/26 11:49:59") << start;

  ASSERT_TRUE(t.Download());
  ASSERT_FALSE(t.RequestTimes('T').empty());
  // No live poll while the block comes.
  EXPECT_EQ(WrittenBetween(t, 'D', t.RequestTimes('T').front(), t.sched.now_ms()), 0u);
  EXPECT_EQ(ExpectRecordIsTheTruth(t, c), 0);
  const SampleRecord& r = t.s().record;
  ExpectAskedNothingButTheClock(t);
  EXPECT_EQ(std::tuple(t.w().Label40.caption, t.w().Label14.caption, r.RecordUnitText,
                       r.RecordModelCode.Value(), r.LoggerNumber.Value(), r.RecordFromFile),
            std::tuple(std::to_string(t.truth.stored.size()), "100", "degC", 17, 317, 0));
  for (const Control* m : {&t.w().mnuSaveTXT, &t.w().mnuPGraph, &t.w().mnuPData, &t.w().mnuGClip})
    EXPECT_TRUE(m->enabled);
  // The live reading comes back once the download is over.
  const std::size_t polls = t.Count('D');
  t.Run(3000);
  EXPECT_GT(t.Count('D'), polls);
}

TEST(Download, SamplesFromBeforeEachRangeStepAreScaledBackToTheirOwnRange) {
  // 4 counts a volt at code 0; the ramp passes 63.75 V and 127.5 V, so two steps.
  sim::LoggerConfig c = SteadyLogger(18, 1000, 40);
  c.signal.kind = sim::SignalKind::Ramp;
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
}

TEST(Download, MarksAtTheFirstAndAtTheNewestSampleAreUndoneExactly) {
  // A thinned memory (eight half fills, 112 s between samples). The reading outgrows
  // range 0 at the very first sample, so that mark is count 0 and reads as no mark; a
  // step of the signal then outgrows range 1 exactly at the newest sample.
  sim::LoggerConfig c = SteadyLogger(18, 1024 * 128 * 1.5 * kTickSeconds, 100);  // 400 counts at code 0
  const double stepAt = static_cast<double>(sim::Firmware(c).NextSampleTick()) * kTickSeconds;
  c.signal = {sim::SignalKind::Steps, 100, 60, stepAt};
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
  EXPECT_EQ(std::tuple(r.FullValues[1].Value(), r.FullValues[n - 1].Value(), r.FullValues[n].Value()),
            std::tuple(100, 100, 160));
  EXPECT_EQ(ExpectRecordIsTheTruth(t, c), 0);
}

TEST(Download, ACustomLoggerReadsItsLiveByteAsARangeCodeButItsRecordWithThePlainByte) {
  // 20 counts a unit at the plain byte 1; the profile maps u to 10 u.
  const sim::LoggerConfig c = SteadyLogger(32, 300, 10);  // 200 counts
  AppOptions o;
  o.unit32 = "mV";
  EmulatedLoggerApp t(c, o);
  for (int i = 0; i <= 10; ++i) {
    t.s().scales.ScaleTable[i] = Cell::OfNumber(10 * i);
    t.s().scales.ScaleSlope[i] = Cell::OfNumber(10);
  }
  t.Connect();
  EXPECT_EQ(std::tuple(t.w().Label34.caption, t.w().Label19.caption, t.w().Label21.caption),
            std::tuple("Custom", "20.00", "mV"));  // byte 1 read as code 1: half the divisor
  // Between the header and the first block request the link is idle, and a live poll
  // that falls there overwrites the range byte the record takes over. Start so that
  // none does (the header at 6.4 s, the block asked for at 7.2 s, the next poll at 8 s).
  t.Run(1100);
  ASSERT_TRUE(t.Download());
  ASSERT_EQ(WrittenBetween(t, 'D', t.RequestTimes('R').back(), t.RequestTimes('T').front()), 0u);
  EXPECT_EQ(ExpectRecordIsTheTruth(t, c), 0);
  ExpectAskedNothingButTheClock(t);
  EXPECT_EQ(Figures(t), std::tuple(10, 10, "mV"));
}

TEST(Download, ACurrentLoggerIsRefusedUntilAProbeIsChosenAndThenUsesIt) {
  sim::LoggerConfig c = SteadyLogger(16, 300, 12.5);  // 100 counts
  c.probeFactor = 4;                                  // CT-50: 8 counts an ampere
  EmulatedLoggerApp t(c);
  t.Connect();
  t.Do(StartDownload);
  ASSERT_EQ(t.ui.messages.size(), 1u);
  const MessageRequest& m = t.ui.messages[0];
  EXPECT_EQ(std::tuple(m.text, m.title, m.icon), std::tuple("en71", "en72", MsgIcon::Stop));
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
  EXPECT_EQ(std::tuple(t.w().Label34.caption, t.w().Label19.caption, t.w().Label21.caption),
            std::tuple("CT-50", "12.50", "A rms"));
  t.ui.messages.clear();
  ASSERT_TRUE(t.Download());
  EXPECT_EQ(ExpectRecordIsTheTruth(t, c), 0);
  ExpectAskedNothingButTheClock(t);
  EXPECT_EQ(Figures(t), std::tuple(12.5, 12.5, "A rms"));
  EXPECT_EQ(t.s().record.RecordRangeFactor.Value(), 4);
}

TEST(Download, EveryDepthOfThinningUnfoldsToTheSamplesTaken) {
  // 2048 slots of one byte. Noise between 10 and 110 V keeps every slot distinct and
  // never outgrows range 0 (127.5 V).
  const struct {
    int halfFills;
    double ticks;
    const char *rate, *rateUnit;
  } depths[] = {{0, 700, "4,096", "en63"},
                {1, 1500, "4,096", "en63"},
                {2, 3000, "2,048", "en63"},
                {6, 1024 * 32 * 1.5, "128", "en63"},
                {14, 1024 * 8192 * 1.5, "12", "en64"}};
  // (At 14 half fills the interval is past M / 2: the running counts are approximate.)
  for (const auto& depth : depths) {
    SCOPED_TRACE(depth.halfFills);
    sim::LoggerConfig c = SteadyLogger(19, depth.ticks * kTickSeconds, 60, 4800);
    c.signal = {sim::SignalKind::Noise, 60, 50};
    EmulatedLoggerApp t(c, testing::AtSpeed(4800));
    t.Connect();
    ASSERT_TRUE(t.Download());
    EXPECT_EQ(t.s().record.RecordHalfFills.Value(), depth.halfFills);
    // From two half fills on the stored samples lie scattered and all memory comes; a
    // sample taken after the header may trail the block.
    const std::size_t asked = depth.halfFills >= 2 ? 2048u : t.truth.stored.size();
    std::size_t lastBlock = 0;
    for (const sim::LineCommand& command : t.line.Commands())
      if (command.letter == 'T' && command.answered) lastBlock = command.payloadBytes;
    EXPECT_GE(lastBlock, asked);
    EXPECT_EQ(std::tuple(t.w().Label26.caption, t.w().Label4.caption, t.w().Label6.caption),
              std::tuple(std::to_string(asked + 2), depth.rate, depth.rateUnit));
    EXPECT_EQ(ExpectRecordIsTheTruth(t, c), 0);
  }
}

// Block requests go out five times a second; a block not begun gets three seconds, and one
// cut short waits for its time limit. Either is asked for again from its header, without
// asking the user about the unsaved part, and comes whole.
TEST(Download, AStalledBlockOrOneCutShortIsFetchedAgainWholeWithoutAskingAgain) {
  for (bool stalled : {true, false}) {
    SCOPED_TRACE(stalled ? "stalled" : "cut short");
    sim::LoggerConfig c = SteadyLogger(17, stalled ? 600 : 1500);  // 1500: past the first half fill
    if (stalled) {
      c.faults.ignoreBlocks = 20;
    } else {
      c.faults.cutBlockTo = 300;
      c.faults.cutBlocks = 1;
    }
    EmulatedLoggerApp t(c);
    t.Connect();
    const std::size_t headers = t.Count('R');
    t.Do(StartDownload);
    if (!stalled) {  // the block hangs part way: progress shows, the menus wait
      t.Run(8000);
      const double percent = t.s().link.DownloadPercent.Value();
      EXPECT_TRUE(percent > 0 && percent < 100) << percent;
      EXPECT_EQ(std::tuple(t.s().link.BlockPhase, t.s().record.RecordSaved.Value(), t.w().mnuDownload.enabled,
                           t.w().busy),
                std::tuple(1, 0, false, true));
    }
    ASSERT_TRUE(t.RunUntilIdle());
    ExpectAskedNothingButTheClock(t);
    EXPECT_EQ(t.Count('R') - headers, 2u);  // the download's header and the restart's
    EXPECT_GT(t.Count('T'), stalled ? 20u : 1u);
    EXPECT_EQ(t.w().Label26.caption, std::to_string(t.truth.stored.size() + 2));
    EXPECT_EQ(ExpectRecordIsTheTruth(t, c), 0);
  }
}

// A record opened from a file stays on screen when a new logger's header comes, and when
// the download of a logger holding more samples than a record can fails.
TEST(OversizedRecord, AFileRecordStaysThroughANewLoggersHeaderAndADownloadOfMoreThan16384Samples) {
  sim::LoggerConfig c = SteadyLogger(17, 5 * 3600);  // one sample a tick: past the first half fill
  c.memorySizeCode = 4;                              // 32768 one-byte samples
  EmulatedLoggerApp t(c);
  t.OpenThreeSampleRecord();
  t.Connect();
  EXPECT_EQ(std::tuple(t.s().link.LoggerSeen, t.w().Label2.visible, t.w().Label15.visible,
                       t.s().logger.LoggerSerial.Value(), t.s().record.RecordFromFile),
            std::tuple(1, true, false, 317, 1));
  ExpectThreeSampleRecord(t);
  EXPECT_TRUE(t.ui.messages.empty());

  ASSERT_GT(t.s().logger.StoredSamples.Value(), 16384);
  ASSERT_TRUE(t.Download(600000));
  ASSERT_FALSE(t.RequestTimes('T').empty());
  ExpectThreeSampleRecord(t);
  EXPECT_EQ(std::tuple(t.ui.ended, t.ui.fatal.size(), t.w().Label40.caption, t.w().busy),
            std::tuple(false, 0u, "3", false));
  for (const Control* m : {&t.w().mnuFile, &t.w().mnuSetTime, &t.w().mnuDownload, &t.w().mnuDate,
                           &t.w().mnuHelp, &t.w().mnuPort, &t.w().mnuSaveTXT, &t.w().mnuPGraph}) {
    EXPECT_TRUE(m->enabled);
  }
  EXPECT_EQ(std::tuple(t.s().link.LinkMode.Value(), t.s().link.DownloadActive), std::tuple(0, 0));
  // The link goes on: live readings come back.
  const std::size_t polls = t.Count('D');
  t.Run(5000);
  EXPECT_GT(t.Count('D'), polls);
}

// A two-byte (layout 2) logger downloaded at once after it is found: the header is in
// but no live reading has come since, so the range input must come from the header's
// layout and not from whatever an earlier reading or logger left.
TEST(Download, ALayoutTwoLoggerStartedRightAfterTheHeaderGivesEverySampleItsValue) {
  const struct {
    int model, baud;
    double leftOverScale;  // what an earlier logger left as the range input; 0: nothing
    const char* label;
  } cases[] = {{64, 4800, 0, "J Thermocouple"},
               {65, 1200, 0, "K Thermocouple"},
               {66, 4800, 0, "T Thermocouple"},
               {65, 4800, 0.25, "K Thermocouple"}};
  for (const auto& k : cases) {
    SCOPED_TRACE(std::to_string(k.model) + " at " + std::to_string(k.baud));
    const sim::LoggerConfig c = SteadyLogger(k.model, 300, 87.25, k.baud);  // exact in sixteenths
    EmulatedLoggerApp t(c, testing::AtSpeed(k.baud));
    if (k.leftOverScale != 0) t.s().logger.ScaleByte = k.leftOverScale;
    // Until the first header is decoded, and not a millisecond further.
    for (int i = 0; i < 400 && t.s().link.HeaderRead != 1; ++i) t.Run(10);
    ASSERT_EQ(t.s().link.HeaderRead, 1);
    EXPECT_EQ(t.w().Label34.caption, k.label);
    const std::size_t readingsBefore = t.Count('D');
    ASSERT_TRUE(t.Download());
    ASSERT_FALSE(t.RequestTimes('T').empty());
    EXPECT_LE(WrittenBetween(t, 'D', 0, t.RequestTimes('T').front()), readingsBefore + 1);
    ASSERT_GT(t.truth.stored.size(), 300u);
    EXPECT_EQ(ExpectRecordIsTheTruth(t, c), 0);
    const SampleRecord& r = t.s().record;
    EXPECT_EQ(Figures(t), std::tuple(87.25, 87.25, "degC"));
    EXPECT_EQ(std::tuple(r.FullAvg.Value(), r.RecordScaleByte.Value(), r.RecordMemorySize.Value()),
              std::tuple(87.25, 1, 1024));  // 2048 bytes of two-byte slots
    EXPECT_EQ(t.w().Label26.caption, std::to_string(2 * t.truth.stored.size() + 2));
  }
}

// Random loggers: model, memory, depth of thinning, signal and speed drawn from a fixed
// seed. The record must be the firmware's truth sample by sample; where the count walk
// of a deeply thinned memory is approximate next to a range mark, the unfolding's rule
// decides (see ExpectRecordIsTheTruth), and the test says how often that happened.
TEST(DownloadProperty, RandomLoggersUnfoldToTheSamplesTheyTook) {
  std::mt19937 rng(20261121);
  auto uniform = [&rng](double lo, double hi) { return std::uniform_real_distribution<double>(lo, hi)(rng); };
  auto pick = [&rng](int n) { return std::uniform_int_distribution<int>(0, n - 1)(rng); };
  const struct {
    int code;
    double countsPerUnit;  // at range code 0; 0 for the temperature loggers
  } models[] = {{16, 8},   {17, 0},  {18, 4}, {19, 2}, {24, 8}, {25, 0.8}, {26, 4},
                {27, 0.4}, {28, 80}, {30, 8}, {31, 2}, {64, 0}, {65, 0},   {66, 0}};
  const sim::SignalKind kinds[] = {sim::SignalKind::Ramp, sim::SignalKind::Sine, sim::SignalKind::Noise,
                                   sim::SignalKind::Steps};
  int ruleCases = 0, deepRuns = 0;
  for (int run = 0; run < 16; ++run) {
    const auto& model = models[pick(static_cast<int>(std::size(models)))];
    sim::LoggerConfig c;
    c.modelCode = model.code;
    c.serial = 1000 + run;
    c.memorySizeCode = pick(2);
    c.baud = pick(2) ? 4800 : 1200;
    c.probeFactor = 4;
    const double slots = (2048 << c.memorySizeCode) / (model.code >= 64 ? 2 : 1);
    const int halfFills = pick(static_cast<int>(std::log2(slots)) + 5);
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
    SCOPED_TRACE("run " + std::to_string(run) + ": model " + std::to_string(c.modelCode) + ", " +
                 std::to_string(halfFills) + " half fills");
    AppOptions o;
    o.appBaud = pick(2) ? 4800 : 1200;
    o.lastProbe = testing::ProbeChoice{"CT-50", "A rms", "4"};
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
