#include "sim/firmware/firmware.h"

#include <cmath>
#include <stdexcept>
#include <string>

#include "sim/firmware/signal.h"

namespace quillet::sim {
namespace {

constexpr int kHeaderBytes = 22;
constexpr int kBaseMemoryBytes = 2048;  // memory size code m gives 2^m times this
constexpr int kLargestMemoryCode = 5;
constexpr int kFirstTwoByteModel = 64;  // model codes 64..127 store two bytes a sample
constexpr int kLastModel = 127;
constexpr std::uint32_t kTickMask = 0x0FFFFFFF;  // the clock is a 28-bit tick counter
constexpr int kMarksInHeader = 4;
constexpr std::uint16_t kNoMark = 0xFFFF;                 // an unused mark reads as erased memory
constexpr std::uint8_t kStatusManySteps = 0x10;           // bit 4: more range steps than marks
constexpr double kLongestRun = 100.0 * 365.25 * 86400.0;  // past this the intervals overflow
constexpr int kMostExtraBytes = 64;
constexpr int kMostNoiseBytes = 4096;

void Require(bool ok, const std::string& message) {
  if (!ok) throw std::invalid_argument(message);
}

bool Finite(double x) { return std::isfinite(x); }

const LoggerConfig& Validated(const LoggerConfig& c) {
  Require(c.modelCode >= 0 && c.modelCode <= kLastModel,
          "model code " + std::to_string(c.modelCode) + " is not 0..127");
  Require(c.baud == 1200 || c.baud == 4800, "line speed " + std::to_string(c.baud) + " is not 1200 or 4800");
  Require(c.serial >= 0 && c.serial <= 0xFFFF,
          "serial number " + std::to_string(c.serial) + " is not 0..65535");
  Require(c.memorySizeCode >= 0 && c.memorySizeCode <= kLargestMemoryCode,
          "memory size code " + std::to_string(c.memorySizeCode) + " is not 0..5");
  Require(Finite(c.elapsedAtStart) && c.elapsedAtStart >= 0.0 && c.elapsedAtStart <= kLongestRun,
          "elapsed time must be from 0 to 100 years");
  const Signal& s = c.signal;
  Require(Finite(s.level) && Finite(s.amplitude) && Finite(s.slopePerHour), "signal values must be finite");
  Require(Finite(s.periodSeconds) && s.periodSeconds > 0.0, "signal period must be above 0 seconds");
  Require(Finite(c.probeFactor) && c.probeFactor > 0.0, "probe factor must be above 0");
  Require(c.extraLayout2Bytes >= 0 && c.extraLayout2Bytes <= kMostExtraBytes,
          "extra header bytes must be 0..64");
  Require(Finite(c.turnaround) && c.turnaround >= 0.0, "turnaround must not be negative");
  Require(Finite(c.pauseAfterAck) && c.pauseAfterAck >= 0.0, "pause after acknowledge must not be negative");
  const Faults& f = c.faults;
  Require(f.ignoreBlocks >= 0, "ignored block count must not be negative");
  Require(f.cutBlockTo >= -1 && f.cutBlocks >= -1, "block cut must be -1 (none) or more");
  Require(f.noiseBeforeReply >= 0 && f.noiseBeforeReply <= kMostNoiseBytes && f.noisyReplies >= -1,
          "noise bytes must be 0..4096");
  Require(Finite(f.silentAfter) && Finite(f.silentFor) && f.silentFor >= 0.0,
          "silence must have a finite start and a length not below 0");
  return c;
}

}  // namespace

void ValidateConfig(const LoggerConfig& config) {
  Validated(config);
  Meter(config.modelCode, config.startRange, config.probeFactor);
}

Firmware::Firmware(const LoggerConfig& config)
    : config_(Validated(config)), meter_(config_.modelCode, config_.startRange, config_.probeFactor) {
  bytesPerSample_ = config_.modelCode >= kFirstTwoByteModel ? 2 : 1;
  slots_ = (kBaseMemoryBytes << config_.memorySizeCode) / bytesPerSample_;
  memory_.assign(static_cast<std::size_t>(slots_) * bytesPerSample_, 0xFF);
  freeSlots_.reserve(slots_);
  for (int slot = 1; slot <= slots_; ++slot) freeSlots_.push_back(slot);
  range_ = meter_.StartRange();
  TakeSample(0);
  AdvanceTo(config_.elapsedAtStart);
}

void Firmware::AdvanceTo(double loggerSeconds) {
  if (!(loggerSeconds > seconds_)) return;
  seconds_ = loggerSeconds;
  ticks_ = static_cast<std::uint64_t>(std::floor(loggerSeconds / kSecondsPerTick));
  while (nextTick_ <= ticks_) TakeSample(nextTick_);
}

void Firmware::TakeSample(std::uint64_t tick) {
  const std::size_t stored = stored_.size();
  if (stored == static_cast<std::size_t>(slots_)) {
    Thin();
  } else if (halfFills_ == 0 && stored == static_cast<std::size_t>(slots_ / 2)) {
    ++halfFills_;  // the first sample into the second half: nothing to thin yet
  }

  const auto counter = static_cast<std::uint32_t>(samples_.size());
  const double value = SignalValue(config_.signal, static_cast<double>(tick) * kSecondsPerTick);
  int steps = 0;
  const Meter::Reading reading = meter_.MeasureWithSteps(value, range_, steps);
  for (int i = 0; i < steps; ++i) steps_.push_back(counter);

  const int slot = freeSlots_.at(freeHead_++);
  WriteSlot(slot, reading.raw);
  samples_.push_back({tick, counter, value, reading.raw, range_, slot});
  stored_.push_back(samples_.size() - 1);
  nextTick_ = tick + interval_;
}

void Firmware::Thin() {
  // Keep the 1st, 3rd, 5th ... stored sample in place; the slots of the others are
  // reused in the time order of the samples they held.
  std::vector<std::size_t> kept;
  kept.reserve(stored_.size() / 2 + 1);
  freeSlots_.clear();
  freeHead_ = 0;
  for (std::size_t i = 0; i < stored_.size(); ++i) {
    if (i % 2 == 0) {
      kept.push_back(stored_[i]);
    } else {
      TakenSample& dropped = samples_[stored_[i]];
      freeSlots_.push_back(dropped.slot);
      dropped.slot = 0;
    }
  }
  stored_.swap(kept);
  interval_ *= 2;
  ++halfFills_;
}

void Firmware::WriteSlot(int slot, std::uint16_t raw) {
  const std::size_t at = static_cast<std::size_t>(slot - 1) * bytesPerSample_;
  if (bytesPerSample_ == 1) {
    memory_.at(at) = static_cast<std::uint8_t>(raw);
  } else {
    memory_.at(at) = static_cast<std::uint8_t>(raw & 0xFF);  // low byte first
    memory_.at(at + 1) = static_cast<std::uint8_t>(raw >> 8);
  }
}

std::array<std::uint8_t, 2> Firmware::LiveReading() const {
  // The live reading ranges for itself and leaves the recording's range alone.
  int range = range_;
  int steps = 0;
  const Meter::Reading r = meter_.MeasureWithSteps(SignalValue(config_.signal, seconds_), range, steps);
  if (bytesPerSample_ == 2)
    return {static_cast<std::uint8_t>(r.raw & 0xFF), static_cast<std::uint8_t>(r.raw >> 8)};
  return {static_cast<std::uint8_t>(r.raw), static_cast<std::uint8_t>(range)};
}

std::vector<std::uint8_t> Firmware::Header() const {
  std::vector<std::uint8_t> h(kHeaderBytes, 0);
  auto put16 = [&h](int at, std::uint32_t v) {
    h[at] = static_cast<std::uint8_t>(v & 0xFF);
    h[at + 1] = static_cast<std::uint8_t>((v >> 8) & 0xFF);
  };
  const auto ticks = static_cast<std::uint32_t>(ticks_ & kTickMask);
  const std::uint32_t counter = SampleCounter();
  // Positions count from 1 on the wire; h[i] is position i + 1.
  h[0] = static_cast<std::uint8_t>(config_.memorySizeCode);
  put16(1, static_cast<std::uint32_t>(config_.serial));
  h[16] = static_cast<std::uint8_t>(config_.modelCode);
  h[17] = static_cast<std::uint8_t>(counter & 0xFF);
  h[18] = static_cast<std::uint8_t>((counter >> 8) & 0xFF);
  h[21] = static_cast<std::uint8_t>(range_);
  if (Layout() == 1) {
    const std::vector<std::uint32_t> marks = RangeMarks();
    for (int i = 0; i < kMarksInHeader; ++i)
      put16(3 + 2 * i, i < static_cast<int>(marks.size()) ? marks[i] & 0xFFFF : kNoMark);
    put16(11, ticks & 0xFFFF);
    put16(13, ticks >> 16);
    h[15] = StatusByte();
  } else {
    put16(10, ticks & 0xFFFF);
    put16(12, ticks >> 16);
    h[14] = StatusByte();
    h[19] = static_cast<std::uint8_t>((counter >> 16) & 0xFF);
    h.resize(h.size() + config_.extraLayout2Bytes, 0);
  }
  return h;
}

std::vector<std::uint8_t> Firmware::Block() const {
  // Before the first thinning the stored samples fill slots 1.. in time order; after it
  // they lie scattered, and the whole memory goes out.
  const std::size_t bytes =
      halfFills_ >= 2 ? memory_.size() : stored_.size() * static_cast<std::size_t>(bytesPerSample_);
  return {memory_.begin(), memory_.begin() + static_cast<std::ptrdiff_t>(bytes)};
}

void Firmware::Calibrate(char letter) { calibrations_.push_back({letter, ticks_}); }

std::vector<std::uint32_t> Firmware::RangeMarks() const { return {steps_.rbegin(), steps_.rend()}; }

std::uint8_t Firmware::StatusByte() const {
  return steps_.size() > static_cast<std::size_t>(kMarksInHeader) ? kStatusManySteps : 0;
}

std::vector<std::size_t> Firmware::StoredSamples() const { return stored_; }

}  // namespace quillet::sim
