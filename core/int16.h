#pragma once
// Assignment to a 16-bit integer field: rounded to nearest, ties to even, and fault 6
// (overflow) outside -32768..32767, as the platform's integers behave.
#include <cmath>
#include <cstdint>

#include "core/fault.h"

namespace quillet {

inline std::int16_t ToInt16(double v) {
  const double r = std::nearbyint(v);
  if (!(r >= -32768.0 && r <= 32767.0)) throw Fault(kFaultOverflow);
  return static_cast<std::int16_t>(r);
}

// Int(): the largest whole number not above v.
inline double Int(double v) { return std::floor(v); }

}  // namespace quillet
