#pragma once
// The empty number: a field or result that has no value yet. In arithmetic and
// comparison it counts as 0; formatted for display it gives the empty text, which is
// what keeps it apart from a real 0 on screen and in files.

namespace quillet {

class Number {
 public:
  constexpr Number() = default;
  constexpr Number(double v) : has_(true), v_(v) {}  // NOLINT: numbers flow in freely

  static constexpr Number Empty() { return Number(); }

  constexpr bool IsEmpty() const { return !has_; }
  constexpr double Value() const { return has_ ? v_ : 0.0; }
  constexpr operator double() const { return Value(); }  // NOLINT: 0 in arithmetic

 private:
  bool has_ = false;
  double v_ = 0.0;
};

}  // namespace quillet
