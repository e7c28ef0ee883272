#pragma once
// The logger's firmware: its clock, its sampling, its memory with thinning, its range
// steps, and the payloads it answers the commands with. No wire here: framing, speed and
// pacing live in LoggerLine.
//
// Memory. M slots of one sample each (M = 2^m * 2048 / bytes per sample). The first sample
// is taken at tick 0 into slot 1, then one per interval into the next free slot; the
// interval starts at one tick. Each time a sample is due while all M slots are full, the
// logger thins its memory: of the stored samples in time order it keeps the 1st, 3rd, 5th
// ... where they stand and frees the slots of the 2nd, 4th, ...; the freed slots are queued
// in the time order of the samples dropped from them, the interval doubles, and the due
// sample (still at the old interval) goes into the first freed slot. Freed slots keep
// their old bytes until reused.
//
// Counters. The sample counter is the number of samples taken minus one, that is the
// count of the newest sample; it only ever counts up by one. HalfFills counts how often
// half the memory has filled: once when slot M/2 + 1 is first written, then once per
// thinning. The sampling interval is 2^(HalfFills - 1) ticks from the first thinning on.
//
// Range. When a reading outgrows the present range, the range byte steps (code + 1, or the
// thermistor divider halved), possibly several times for one reading, and each step notes
// the count of the sample being taken, which is then stored in the new range. The header
// sends the four newest marks, newest first; from the fifth step on status bit 4 is set.
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "sim/firmware/logger_config.h"
#include "sim/firmware/meter.h"

namespace quillet::sim {

// A sample the firmware took, for property tests.
struct TakenSample {
  std::uint64_t tick = 0;     // when, in ticks since the logger started
  std::uint32_t counter = 0;  // the sample counter's value for it (0 for the first)
  double value = 0.0;         // what the probe saw, engineering units
  std::uint16_t raw = 0;      // what went to memory: the byte, or the 16-bit word
  int range = 0;              // the range byte it was taken at
  int slot = 0;               // 1-based slot holding it, 0 once thinned out
};

struct Calibration {
  char letter = 0;  // 'H' or 'L'
  std::uint64_t tick = 0;
};

// Throws std::invalid_argument, with a one-line message, for a configuration no logger
// could have; returns quietly otherwise.
void ValidateConfig(const LoggerConfig& config);

class Firmware {
 public:
  // Takes the first sample and runs the clock to config.elapsedAtStart, so a logger can
  // start as if it had been recording for months. Throws std::invalid_argument, with a
  // one-line message, for a configuration no logger could have.
  explicit Firmware(const LoggerConfig& config);

  // Runs the clock forward to `loggerSeconds` since start, taking every sample due. An
  // earlier time than the present one changes nothing.
  void AdvanceTo(double loggerSeconds);
  double Seconds() const { return seconds_; }
  std::uint64_t Ticks() const { return ticks_; }

  // Payloads, the bytes after the 0x04 acknowledge, at the present time.
  std::array<std::uint8_t, 2> LiveReading() const;  // "D"
  std::vector<std::uint8_t> Header() const;         // "R": 22 bytes, in layout 2 then the extra bytes
  std::vector<std::uint8_t> Block() const;          // "T": stored samples, or all memory from HalfFills 2
  void Calibrate(char letter);                      // "H" or "L": noted, no effect on readings

  int Layout() const { return bytesPerSample_; }  // 1 for model codes 0..63, 2 for 64..127
  int BytesPerSample() const { return bytesPerSample_; }
  int MemorySlots() const { return slots_; }
  std::uint32_t SampleCounter() const { return static_cast<std::uint32_t>(samples_.size() - 1); }
  int HalfFills() const { return halfFills_; }
  int StoredCount() const { return static_cast<int>(stored_.size()); }
  std::uint64_t IntervalTicks() const { return interval_; }
  std::uint64_t NextSampleTick() const { return nextTick_; }
  int RangeByte() const { return range_; }
  // The count noted at every range step, newest first (the header carries four of them).
  std::vector<std::uint32_t> RangeMarks() const;
  std::uint8_t StatusByte() const;

  // The truth, for property tests.
  const std::vector<TakenSample>& Samples() const { return samples_; }  // every sample, time order
  std::vector<std::size_t> StoredSamples() const;                       // indices into Samples(), time order
  const std::vector<std::uint8_t>& Memory() const { return memory_; }   // slot s at bytes (s-1)*bps ...
  const std::vector<Calibration>& Calibrations() const { return calibrations_; }
  const LoggerConfig& config() const { return config_; }

 private:
  void TakeSample(std::uint64_t tick);
  void Thin();
  void WriteSlot(int slot, std::uint16_t raw);

  LoggerConfig config_;
  Meter meter_;
  int bytesPerSample_ = 1;
  int slots_ = 0;
  std::vector<std::uint8_t> memory_;

  double seconds_ = 0.0;
  std::uint64_t ticks_ = 0;
  std::uint64_t nextTick_ = 0;
  std::uint64_t interval_ = 1;
  int halfFills_ = 0;
  int range_ = 0;
  std::vector<std::uint32_t> steps_;  // count of each range step, oldest first

  std::vector<TakenSample> samples_;
  std::vector<std::size_t> stored_;  // indices into samples_, time order
  std::vector<int> freeSlots_;       // queue of slots to fill, in order
  std::size_t freeHead_ = 0;
  std::vector<Calibration> calibrations_;
};

}  // namespace quillet::sim
