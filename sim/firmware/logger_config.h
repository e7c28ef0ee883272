#pragma once
// What an emulated logger is: its identity, what it measures, how long it has been
// running, and the faults it is told to show on the wire.
#include <cstdint>

namespace quillet::sim {

// One tick of the logger's clock: 98304 ticks a day.
inline constexpr double kSecondsPerTick = 0.87890625;
inline constexpr double kTicksPerDay = 98304.0;

enum class SignalKind {
  Steady,  // level
  Ramp,    // level + slopePerHour * hours since start
  Sine,    // level + amplitude * sin(2 pi t / period)
  Steps,   // staircase: level + amplitude * whole periods since start
  Noise,   // level + amplitude * uniform(-1, 1), a fixed draw per tick from the seed
};

// What the probe sees, in the engineering units of the model: degrees Celsius for the
// thermistor and thermocouple models, amperes or volts for the current and voltage models,
// the input quantity (mV, V, mA) for the profile models, and the raw count for a model
// whose meaning the logger does not know.
struct Signal {
  SignalKind kind = SignalKind::Steady;
  double level = 20.0;
  double amplitude = 5.0;
  double periodSeconds = 3600.0;
  double slopePerHour = 1.0;
  std::uint64_t seed = 1;
};

// Faults shown on the wire. Counts of -1 mean "every time".
struct Faults {
  int ignoreBlocks = 0;       // the first K "T" requests get no reply at all
  int cutBlockTo = -1;        // a block reply stops after this many payload bytes; -1 never
  int cutBlocks = -1;         // how many block replies are cut (after the ignored ones)
  int noiseBeforeReply = 0;   // noise bytes (never 0x04) sent ahead of a reply's 0x04
  int noisyReplies = -1;      // how many replies get the noise
  double silentAfter = -1.0;  // caller seconds after the line's start when silence begins; < 0 never
  double silentFor = 0.0;     // how long the silence lasts
  double silentEvery = 0.0;   // > 0: the silence comes back this many seconds after each start
};

struct LoggerConfig {
  int modelCode = 17;      // 0..63 one-byte samples (header layout 1), 64..127 two-byte (layout 2)
  int baud = 1200;         // 1200 or 4800
  int serial = 1234;       // 0..65535
  int memorySizeCode = 0;  // m: 2^m * 2048 bytes of memory, 0..5

  Signal signal;
  double elapsedAtStart = 0.0;  // seconds the logger has been recording when the line starts

  // The range byte at start: the range code 0..3 for the range-form models, the divider
  // (a power of two up to 128) of the thermistor model, the plain byte of the others.
  // -1 takes the model's own: code 0, divider 16, byte 1.
  int startRange = -1;
  double probeFactor = 1.0;  // model 16: the range factor of the clipped-on probe

  int extraLayout2Bytes = 4;     // bytes sent after the 22 of a layout 2 header
  double turnaround = 0.001;     // seconds from a complete command to the start of the reply
  double pauseAfterAck = 0.0;  // seconds between the 0x04 and the payload; none by default, as a real logger
  Faults faults;
};

}  // namespace quillet::sim
