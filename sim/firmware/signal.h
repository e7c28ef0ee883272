#pragma once
// The quantity the emulated probe sees, as a function of the logger's time.
#include <cstdint>

#include "sim/firmware/logger_config.h"

namespace quillet::sim {

// Value of `signal` at `seconds` since the logger started, in the model's engineering units.
// Deterministic: the noise is a fixed draw per clock tick from the seed, so the same time
// always gives the same value however the clock got there.
double SignalValue(const Signal& signal, double seconds);

// A well-mixed 64-bit hash (splitmix64's finaliser), the emulator's only source of noise.
std::uint64_t Mix64(std::uint64_t x);

}  // namespace quillet::sim
