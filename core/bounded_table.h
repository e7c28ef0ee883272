#pragma once
// A fixed table with its stated bounds, lower bound included: an index outside them is
// fault 9, as the platform's arrays behave, never undefined behaviour.
#include <array>
#include <cmath>
#include <cstddef>

#include "core/fault.h"

namespace quillet {

template <typename T, int Lo, int Hi>
class Table {
 public:
  static_assert(Hi >= Lo);
  static constexpr int kLower = Lo;
  static constexpr int kUpper = Hi;

  T& operator[](long i) { return items_[Slot(i)]; }
  const T& operator[](long i) const { return items_[Slot(i)]; }
  // Indexes computed in floating point are rounded as the platform rounds them.
  T& at(double i) { return (*this)[RoundIndex(i)]; }
  const T& at(double i) const { return (*this)[RoundIndex(i)]; }


 private:
  static long RoundIndex(double i) {
    if (!std::isfinite(i) || i < -2147483648.0 || i > 2147483647.0) throw Fault(kFaultOverflow);
    return static_cast<long>(std::nearbyint(i));  // ties to even
  }
  static std::size_t Slot(long i) {
    if (i < Lo || i > Hi) throw Fault(kFaultSubscript);
    return static_cast<std::size_t>(i - Lo);
  }
  std::array<T, static_cast<std::size_t>(Hi - Lo + 1)> items_{};
};

}  // namespace quillet
