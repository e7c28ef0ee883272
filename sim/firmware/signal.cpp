#include "sim/firmware/signal.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace quillet::sim {

std::uint64_t Mix64(std::uint64_t x) {
  x += 0x9E3779B97F4A7C15ull;
  x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9ull;
  x = (x ^ (x >> 27)) * 0x94D049BB133111EBull;
  return x ^ (x >> 31);
}

double SignalValue(const Signal& signal, double seconds) {
  switch (signal.kind) {
    case SignalKind::Steady:
      return signal.level;
    case SignalKind::Ramp:
      return signal.level + signal.slopePerHour * seconds / 3600.0;
    case SignalKind::Sine:
      if (!(signal.periodSeconds > 0.0)) return signal.level;
      return signal.level +
             signal.amplitude * std::sin(2.0 * std::numbers::pi * seconds / signal.periodSeconds);
    case SignalKind::Steps:
      if (!(signal.periodSeconds > 0.0)) return signal.level;
      return signal.level + signal.amplitude * std::floor(seconds / signal.periodSeconds);
    case SignalKind::Noise: {
      const auto tick = static_cast<std::uint64_t>(std::max(0.0, std::floor(seconds / kSecondsPerTick)));
      const std::uint64_t draw = Mix64(signal.seed * 0x632BE59BD9B4E019ull ^ Mix64(tick));
      const double u = static_cast<double>(draw >> 11) / 9007199254740992.0;  // [0, 1)
      return signal.level + signal.amplitude * (2.0 * u - 1.0);
    }
  }
  return signal.level;
}

}  // namespace quillet::sim
